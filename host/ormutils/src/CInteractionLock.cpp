#include "CInteractionLock.h"

#include <QAction>
#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace
{
/// Input by which a user could start something. Closing, painting, entering and leaving are none.
bool isInput(QEvent::Type eType)
{
    switch (eType)
    {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool isDrag(QEvent::Type eType)
{
    return eType == QEvent::DragEnter || eType == QEvent::DragMove || eType == QEvent::Drop;
}
} // namespace

CInteractionLock::CInteractionLock(QObject* pParent) : QObject(pParent)
{
    m_objDrained.setSingleShot(true);
    m_objDrained.setInterval(0);
    connect(&m_objDrained, &QTimer::timeout, this, [this] { QCoreApplication::instance()->removeEventFilter(this); });
}

const char* CInteractionLock::exemptProperty()
{
    return "ormAnswersDuringLock";
}

void CInteractionLock::setLocked(bool bLocked)
{
    if (bLocked == m_bLocked)
        return;
    m_bLocked = bLocked;
    if (bLocked)
    {
        m_objDrained.stop();
        QCoreApplication::instance()->installEventFilter(this); // moves to the front if it is there already
    }
    else
        m_objDrained.start(); // a timer of 0 ms comes after the events that the window system has queued
}

bool CInteractionLock::isExempt(QObject* pObject) const
{
    auto* pWidget = qobject_cast<QWidget*>(pObject);
    if (auto* pAction = qobject_cast<QAction*>(pObject))
        pWidget = pAction->parentWidget();
    else if (const auto* pWindow = qobject_cast<QWindow*>(pObject))
    {
        const QWidgetList lstWindows = QApplication::topLevelWidgets();
        for (QWidget* pTopLevel : lstWindows)
            if (pTopLevel->windowHandle() == pWindow)
                pWidget = pTopLevel;
    }
    // A popup of an exempt window belongs to it.
    for (; pWidget; pWidget = pWidget->window()->parentWidget())
        if (pWidget->window()->property(exemptProperty()).toBool())
            return true;
    return false;
}

bool CInteractionLock::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (!isInput(pEvent->type()))
        return false;
    // After the lock only what comes from the window system itself is stale, and that always arrives at a window first.
    if (!m_bLocked && !pObject->isWindowType())
        return false;
    if (isExempt(pObject))
        return false;
    pEvent->setAccepted(!isDrag(pEvent->type()));
    return true;
}
