#include "COrmFilterEdit.h"

#include <QKeyEvent>

COrmFilterEdit::COrmFilterEdit(QWidget* pParent) : QLineEdit(pParent)
{
    setClearButtonEnabled(true);
}

bool COrmFilterEdit::event(QEvent* pEvent)
{
    // No shortcut of the window may take the key away.
    if (pEvent->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Escape)
    {
        pEvent->accept();
        return true;
    }
    return QLineEdit::event(pEvent);
}

void COrmFilterEdit::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key())
    {
    case Qt::Key_Escape:
        if (text().isEmpty())
            emit leaveRequested();
        else
            clear();
        break;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit leaveRequested();
        break;
    default:
        QLineEdit::keyPressEvent(pEvent);
    }
}
