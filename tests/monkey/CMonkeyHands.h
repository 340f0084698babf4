#pragma once

#include <QEvent>
#include <QPoint>
#include <QString>

class QWidget;

/// Pointer and keyboard as the window system delivers them: to a window at a place, whatever is there by then.
class CMonkeyHands
{
public:
    /// All places are those of a widget; they may lie beside it. Nothing happens to a widget that is not on the screen.
    void move(const QWidget* pWidget, const QPoint& ptAt, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);
    void press(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);
    void release(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);
    void click(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);
    /// A notch up or down at the place; to the widget there.
    void wheel(QWidget* pWidget, const QPoint& ptAt, bool bUp, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);
    /// To what has the keyboard in the window of the widget.
    void key(const QWidget* pWidget, int nKey, Qt::KeyboardModifiers eModifiers = Qt::NoModifier, const QString& strText = QString());

    /// Delivers everything that waits, deletions too.
    static void settle();

private:
    void send(const QWidget* pWidget, const QPoint& ptAt, Qt::MouseButton eButton, QEvent::Type eType, Qt::KeyboardModifiers eModifiers);

    Qt::MouseButtons m_eHeld = Qt::NoButton;
    int m_nTime = 0; ///< ms, as the events tell it: clicks far apart are no double clicks
};
