#include "CMonkeyHands.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

// What Qt's own test library uses.
extern Q_GUI_EXPORT void qt_handleMouseEvent(QWindow*, const QPointF&, const QPointF&, Qt::MouseButtons, Qt::MouseButton, QEvent::Type,
                                             Qt::KeyboardModifiers, int);
extern Q_GUI_EXPORT void qt_handleKeyEvent(QWindow*, QEvent::Type, int, Qt::KeyboardModifiers, const QString&, bool, ushort);

namespace
{
/// A menu may be gone as soon as it was clicked or left by a key.
using CGuarded = QPointer<const QWidget>;

/// Above any interval of a double click.
constexpr int s_nBetweenClicks = 2000;
constexpr int s_nNotch = 120;

QWindow* windowOf(const QWidget* pWidget)
{
    return pWidget->isVisible() ? pWidget->window()->windowHandle() : nullptr;
}
} // namespace

void CMonkeyHands::send(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, QEvent::Type eType,
                        Qt::KeyboardModifiers eModifiers)
{
    QWindow* pWindow = windowOf(pWidget);
    if (pWindow == nullptr)
    {
        return;
    }
    const QPoint ptWindow = pWidget->mapTo(pWidget->window(), ptAt);
    qt_handleMouseEvent(pWindow, ptWindow, pWindow->mapToGlobal(ptWindow), m_eHeld, eButton, eType, eModifiers, m_nTime);
    settle();
}

void CMonkeyHands::move(const QWidget* pWidget, const QPoint& ptAt, Qt::KeyboardModifiers eModifiers)
{
    m_nTime += s_nBetweenClicks;
    send(pWidget, ptAt, Qt::NoButton, QEvent::MouseMove, eModifiers);
}

void CMonkeyHands::press(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers)
{
    m_nTime += s_nBetweenClicks;
    m_eHeld |= eButton;
    send(pWidget, ptAt, eButton, QEvent::MouseButtonPress, eModifiers);
}

void CMonkeyHands::release(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers)
{
    ++m_nTime;
    m_eHeld &= ~Qt::MouseButtons(eButton);
    send(pWidget, ptAt, eButton, QEvent::MouseButtonRelease, eModifiers);
}

void CMonkeyHands::click(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers)
{
    const CGuarded pGuarded(pWidget);
    press(pWidget, ptAt, eButton, eModifiers);
    if (pGuarded == nullptr)
    {
        m_eHeld &= ~Qt::MouseButtons(eButton);
        return;
    }
    release(pWidget, ptAt, eButton, eModifiers);
}

void CMonkeyHands::wheel(QWidget* pWidget, const QPoint& ptAt, bool bUp, Qt::KeyboardModifiers eModifiers)
{
    const QPoint ptAngle(0, bUp ? s_nNotch : -s_nNotch);
    QWheelEvent objEvent(ptAt, pWidget->mapToGlobal(ptAt), QPoint(), ptAngle, Qt::NoButton, eModifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(pWidget, &objEvent);
    settle();
}

void CMonkeyHands::key(const QWidget* pWidget, int nKey, Qt::KeyboardModifiers eModifiers, const QString& strText)
{
    QWindow* pWindow = windowOf(pWidget);
    if (pWindow == nullptr)
    {
        return;
    }
    const CGuarded pGuarded(pWidget);
    qt_handleKeyEvent(pWindow, QEvent::KeyPress, nKey, eModifiers, strText, false, 1);
    settle();
    // Where the key has closed the window it goes up elsewhere.
    pWindow = pGuarded == nullptr ? nullptr : windowOf(pWidget);
    if (pWindow != nullptr)
    {
        qt_handleKeyEvent(pWindow, QEvent::KeyRelease, nKey, eModifiers, strText, false, 1);
        settle();
    }
}

void CMonkeyHands::settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
