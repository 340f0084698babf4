#pragma once

#include "COrmXYPlot.h"

#include <qwt_plot_curve.h>

/// A data line on the sheet: as a line that is interrupted where a value is missing, as points, or as bars.
class CPlotCurve : public QwtPlotCurve
{
public:
    /// The room that one bar takes at a point, in units of the x axis.
    struct SBar
    {
        double m_fOffset = 0.0; ///< of its middle from the point
        double m_fWidth = 0.8;
    };

    /// One point that can be shown.
    struct SPlace
    {
        QPointF m_ptPixel;  ///< on the canvas; of a bar the middle of its free end
        QRectF m_rectBar;   ///< on the canvas; empty unless bars are shown
        QPointF m_ptNumber; ///< its two numbers
    };

    explicit CPlotCurve(const QString& strName);

    const QString& name() const { return m_strName; }

    /// Takes the points with two finite numbers; on a logarithmic axis those that it can show.
    void setValues(const QVector<double>& vecX, const QVector<double>& vecY, bool bLogarithmic);
    /// @param fScale magnifies lines and points
    void setLook(const DISPLAY_SETTINGS& sSettings, double fScale);
    void setBar(const SBar& sBar) { m_sBar = sBar; }

    /// Where a point stands.
    SPlace place(int nPoint, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap) const;

    QwtGraphic legendIcon(int nIndex, const QSizeF& objSize) const override;

protected:
    void drawCurve(QPainter* pPainter, int nStyle, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap, const QRectF& rectCanvas,
                   int nFrom, int nTo) const override;
    void drawLines(QPainter* pPainter, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap, const QRectF& rectCanvas, int nFrom,
                   int nTo) const override;
    void drawSymbols(QPainter* pPainter, const QwtSymbol& objSymbol, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap,
                     const QRectF& rectCanvas, int nFrom, int nTo) const override;

private:
    QString m_strName;
    SBar m_sBar;
    bool m_bBars = false;
    bool m_bAllPoints = false;    ///< else only those without a neighbour, which no line shows
    QVector<int> m_vecLastOfPart; ///< indexes of the points after which the line is interrupted
};
