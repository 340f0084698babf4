#pragma once

#include "CPlotSheet.h"

#include <QRect>
#include <QStringList>
#include <QWidget>

class QToolButton;

/// What the pointer and the keys do on a plot: the numbers of the point under the pointer, a part of the data pulled up with the left
/// button or by the wheel, moved with the middle button, and the way back. It lies over the sheet and lets all events through, so that
/// nothing of it gets into the plot's picture.
class CPlotPointer : public QWidget
{
    Q_OBJECT

public:
    CPlotPointer(QWidget* pPlot, CPlotSheet* pSheet);

    /// Forgets points, drags and what was pointed at: the data have changed.
    void reset();
    /// Follows a change of what the sheet shows.
    void follow();
    /// Keys of the plot: plus and minus, the arrows, Home and Escape. False for any other.
    bool takeKey(const QKeyEvent& objKey);
    /// The lines of text about the points under the pointer; empty for none.
    const QStringList& told() const { return m_lstTold; }

signals:
    /// Something else is told, or nothing any more.
    void toldChanged();

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    enum EDrag
    {
        NoDrag,
        BandDrag, ///< pulls up a rectangle
        MoveDrag  ///< moves what is shown
    };

    bool press(const QMouseEvent& objEvent);
    bool move(const QMouseEvent& objEvent);
    bool release(const QMouseEvent& objEvent);
    void endDrag();
    void tell(const QList<CPlotSheet::SFound>& lstFound);
    void tellNext(int nStep);
    void zoomTo(const QRectF& rectCanvas);
    void zoomAround(const QPointF& ptCanvas, double fFactor);
    void moveBy(const QPointF& ptPixels);
    QRectF canvasRect() const;
    QStringList textOf(const CPlotSheet::SFound& sFound) const;
    void paintTold(QPainter& objPainter) const;

    CPlotSheet* m_pSheet; ///< not owned
    QToolButton* m_pBack; ///< shows everything; seen only while a part is shown
    EDrag m_eDrag = NoDrag;
    QPoint m_ptPress;                     ///< on the canvas
    QPoint m_ptLast;                      ///< on the canvas
    QList<CPlotSheet::SFound> m_lstFound; ///< under the pointer
    QStringList m_lstTold;
    int m_nTold = -1; ///< of all points, the one that the keys have reached
};
