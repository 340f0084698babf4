#include "COrmToolPluginBase.h"

#include "COrmLog.h"
#include "COrmPreference.h"
#include "COrmSequenceDataset.h"
#include "COrmSignalHandler.h"

#include <QAbstractItemView>

namespace
{
const QLatin1String s_strSOLA("SOLA ");
const QLatin1String s_strNOVA("NOVA ");

/// The first entry of a flat list of the window for which the data of a role is @p strText; only of lists that can be used now.
QModelIndex findEntry(const QWidget* pWindow, int nRole, const QString& strText, QAbstractItemView** ppView)
{
    const QList<QAbstractItemView*> lstViews = pWindow->findChildren<QAbstractItemView*>();
    for (QAbstractItemView* pView : lstViews)
    {
        const QAbstractItemModel* pModel = pView->model();
        const int nRows = pModel != nullptr && pView->isEnabled() && !pView->isHidden() ? pModel->rowCount(pView->rootIndex()) : 0;
        for (int nRow = 0; nRow < nRows; ++nRow)
        {
            const QModelIndex objIndex = pModel->index(nRow, 0, pView->rootIndex());
            if (objIndex.data(nRole).toString() == strText)
            {
                *ppView = pView;
                return objIndex;
            }
        }
    }
    return {};
}
} // namespace

COrmToolPluginBase::COrmToolPluginBase() : m_pAction(nullptr) {}

COrmToolPluginBase::~COrmToolPluginBase() = default;

QMenu* COrmToolPluginBase::pluginMenu()
{
    return nullptr;
}

QIcon COrmToolPluginBase::pluginIcon()
{
    return {};
}

QString COrmToolPluginBase::MenuItemBefore()
{
    return {};
}

bool COrmToolPluginBase::isVisible()
{
    return m_bVisible;
}

void COrmToolPluginBase::signalAddWidgetToWorkspace(QWidget* pWidget)
{
    addWidgetToWorkspace(pWidget);
}

void COrmToolPluginBase::signalUpdateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked)
{
    updateToolPluginValidity(pAction, bEnabled, bChecked);
}

bool COrmToolPluginBase::defaultVisibilityForPluggin()
{
    return true;
}

void COrmToolPluginBase::onSignalDatasetChanged(COrmDataset* /*pDataset*/) {}

void COrmToolPluginBase::onSignalSequenceChanged(COrmSequenceDataset* /*pSequence*/) {}

void COrmToolPluginBase::onSignalDatasetRemoved(COrmDataset* /*pDataset*/) {}

void COrmToolPluginBase::onSignalSequenceAdded(COrmSequenceDataset* /*pSequence*/) {}

void COrmToolPluginBase::onSignalSequenceRemoved(COrmSequenceDataset* /*pSequence*/) {}

void COrmToolPluginBase::onSignalROIModified(QString /*strName*/) {}

void COrmToolPluginBase::onSignalROIDeleted() {}

void COrmToolPluginBase::onSignalupdateROIList() {}

void COrmToolPluginBase::onSignalCopyToClipboard(QString /*strObjectName*/) {}

bool COrmToolPluginBase::selectSequence(const COrmSequenceDataset* pSequence)
{
    if (pSequence == nullptr)
        return false;
    const QString strID = pSequence->getSequenceID();
    const SSequenceFacts& sFacts = pSequence->getFacts();
    QStringList lstTexts = {s_strSOLA + strID, s_strNOVA + strID};
    if (sFacts.m_nSOLAResults == 0 && sFacts.m_nNOVAResults > 0)
        lstTexts.swapItemsAt(0, 1);
    for (const QPointer<QWidget>& pWindow : qAsConst(m_lstWindows))
    {
        if (!pWindow)
            continue;
        QAbstractItemView* pView = nullptr;
        QModelIndex objEntry;
        for (const QString& strText : qAsConst(lstTexts))
            objEntry = objEntry.isValid() ? objEntry : findEntry(pWindow, Qt::DisplayRole, strText, &pView);
        if (!objEntry.isValid())
            objEntry = findEntry(pWindow, Qt::UserRole, strID, &pView);
        if (!objEntry.isValid())
            continue;
        pView->setCurrentIndex(objEntry);
        pView->scrollTo(objEntry);
        emit pView->clicked(objEntry);
        return true;
    }
    return false;
}

void COrmToolPluginBase::addWidgetToWorkspace(QWidget* pWidget)
{
    if (pWidget == nullptr)
        return;
    if (!m_lstWindows.contains(pWidget))
        m_lstWindows.append(pWidget);
    if (auto* pHub = qobject_cast<COrmSignalHandler*>(COrmPreference::getSignalHandler()))
        emit pHub->signalAddWidgetToWorkspace(pWidget);
}

void COrmToolPluginBase::updateToolPluginValidity(QAction* pAction, bool bEnabled, bool /*bChecked*/)
{
    if (pAction == nullptr)
        return;
    // A tool can open sequences from disk by itself, so its entry is usable with nothing open in the host.
    pAction->setEnabled(true);
    ORM_LOG(1, QStringLiteral("%1 asked for its menu entry to be %2: it stays enabled.")
                   .arg(pAction->text(), bEnabled ? QStringLiteral("enabled") : QStringLiteral("disabled")));
}
