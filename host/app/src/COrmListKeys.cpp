#include "COrmListKeys.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <QKeyEvent>

namespace
{
bool isSelected(const QAbstractItemView& objView)
{
    return objView.selectionModel() != nullptr && objView.selectionModel()->isSelected(objView.currentIndex());
}

bool chooses(int nKey)
{
    return nKey == Qt::Key_Space || nKey == Qt::Key_Select || nKey == Qt::Key_Return || nKey == Qt::Key_Enter;
}
} // namespace

COrmListKeys::COrmListKeys(QWidget* pWindow) : QObject(pWindow)
{
    const QList<QAbstractItemView*> lstViews = pWindow->findChildren<QAbstractItemView*>();
    for (QAbstractItemView* pView : lstViews)
    {
        if (pView->window() == pWindow) // the list of a combo box stands in a window of its own, where keys choose anyway
            pView->installEventFilter(this);
    }
}

bool COrmListKeys::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::KeyPress && pEvent->type() != QEvent::KeyRelease)
        return false;
    auto* pView = qobject_cast<QAbstractItemView*>(pWatched);
    const auto* pKey = static_cast<QKeyEvent*>(pEvent);
    if (pView == nullptr || pKey->isAutoRepeat())
        return false;
    if (pEvent->type() == QEvent::KeyPress)
    {
        m_pPressedIn = pView;
        m_objBefore = pView->currentIndex();
        m_bSelectedBefore = isSelected(*pView);
        return false;
    }
    const bool bPressedHere = m_pPressedIn == pView;
    m_pPressedIn = nullptr;
    const QModelIndex objNow = pView->currentIndex();
    const bool bArrived = objNow != m_objBefore || !m_bSelectedBefore;
    if (bPressedHere && objNow.isValid() && isSelected(*pView) && (bArrived || chooses(pKey->key())))
        emit pView->clicked(objNow);
    return false;
}
