#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

/// How often a widget was asked to paint itself. The frames that reach the screen tell less: each repaint of anything in the window,
/// be it the blink of a text cursor, brings one.
class CPaintCount : public QObject
{
public:
    explicit CPaintCount(QWidget& objWidget) { objWidget.installEventFilter(this); }

    int count() const { return m_nPaints; }
    void clear() { m_nPaints = 0; }

    bool eventFilter(QObject* /*pObject*/, QEvent* pEvent) override
    {
        m_nPaints += pEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_nPaints = 0;
};
