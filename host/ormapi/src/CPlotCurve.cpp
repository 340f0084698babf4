#include "CPlotCurve.h"

#include "COrmXYPlotAxis.h"

#include <qwt_clipper.h>
#include <qwt_graphic.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double fLineWidth = 2.0;
constexpr int nSmallestPoint = 1;
constexpr int nLargestPoint = 64; ///< pixels
constexpr int nBarOpacity = 150;  ///< of 255; the outline is opaque

QwtSymbol::Style symbolStyle(int nPointStyle)
{
    switch (nPointStyle)
    {
    case 1:
        return QwtSymbol::Rect;
    case 2:
        return QwtSymbol::Diamond;
    case 3:
        return QwtSymbol::Triangle;
    case 4:
        return QwtSymbol::XCross;
    default:
        return QwtSymbol::Ellipse;
    }
}

/// Fills a bar and outlines it inside its edges.
void drawBar(QPainter* pPainter, const QRectF& rectBar, const QPen& penLine)
{
    QColor clrFill = penLine.color();
    clrFill.setAlpha(nBarOpacity);
    const double fInside = std::min({penLine.widthF() / 2.0, rectBar.width() / 2.0, rectBar.height() / 2.0});
    QPen penOutline(penLine);
    penOutline.setJoinStyle(Qt::MiterJoin);
    pPainter->setPen(penOutline);
    pPainter->setBrush(clrFill);
    pPainter->drawRect(rectBar.adjusted(fInside, fInside, -fInside, -fInside));
}
} // namespace

CPlotCurve::CPlotCurve(const QString& strName) : m_strName(strName)
{
    setRenderHint(QwtPlotItem::RenderAntialiased);
}

void CPlotCurve::setValues(const QVector<double>& vecX, const QVector<double>& vecY, bool bLogarithmic)
{
    QVector<QPointF> vecPoints;
    m_vecLastOfPart.clear();
    for (int i = 0; i < std::min(vecX.size(), vecY.size()); ++i)
    {
        const double fY = vecY.at(i);
        if (std::isfinite(vecX.at(i)) && (bLogarithmic ? COrmXYPlotAxis::isLogarithmic(fY) : std::isfinite(fY)))
            vecPoints.append(QPointF(vecX.at(i), fY));
        else if (!vecPoints.isEmpty() && (m_vecLastOfPart.isEmpty() || m_vecLastOfPart.last() < vecPoints.size() - 1))
            m_vecLastOfPart.append(vecPoints.size() - 1);
    }
    if (!vecPoints.isEmpty() && (m_vecLastOfPart.isEmpty() || m_vecLastOfPart.last() < vecPoints.size() - 1))
        m_vecLastOfPart.append(vecPoints.size() - 1);
    setSamples(vecPoints);
}

void CPlotCurve::setLook(const DISPLAY_SETTINGS& sSettings, double fScale)
{
    const bool bPointsOnly = sSettings.nDisplayMode == COrmXYPlot::PointsMode;
    m_bBars = sSettings.nDisplayMode == COrmXYPlot::BarsMode;
    m_bAllPoints = bPointsOnly || (sSettings.nDisplayMode == COrmXYPlot::LineAndPointsMode && sSettings.objPointProperties.bPointVisible);
    setStyle(bPointsOnly ? QwtPlotCurve::NoCurve : QwtPlotCurve::Lines);
    setPen(sSettings.lineColor, fLineWidth * fScale, Qt::SolidLine);
    const int nSize = std::clamp(sSettings.objPointProperties.nPointSize, nSmallestPoint, nLargestPoint);
    const int nPixels = static_cast<int>(std::lround(nSize * fScale));
    const QColor clrPoint = sSettings.objPointProperties.pointColor;
    setSymbol(new QwtSymbol(symbolStyle(sSettings.objPointProperties.nPointStyle), QBrush(clrPoint), QPen(clrPoint, fScale),
                            QSize(nPixels, nPixels)));
    itemChanged();
    legendChanged();
}

CPlotCurve::SPlace CPlotCurve::place(int nPoint, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap) const
{
    SPlace sPlace;
    sPlace.m_ptNumber = sample(nPoint);
    const double fTop = objYMap.transform(sPlace.m_ptNumber.y());
    if (!m_bBars)
    {
        sPlace.m_ptPixel = QPointF(objXMap.transform(sPlace.m_ptNumber.x()), fTop);
        return sPlace;
    }
    const double fMiddle = sPlace.m_ptNumber.x() + m_sBar.m_fOffset;
    const double fLeft = objXMap.transform(fMiddle - m_sBar.m_fWidth / 2.0);
    const double fRight = objXMap.transform(fMiddle + m_sBar.m_fWidth / 2.0);
    // A logarithmic axis has no 0 to stand on: there bars rise from its lower end.
    const bool bHasZero = objYMap.s1() <= 0.0;
    const double fBase = objYMap.transform(bHasZero ? 0.0 : objYMap.s1());
    sPlace.m_rectBar = QRectF(QPointF(fLeft, fTop), QPointF(fRight, fBase)).normalized();
    sPlace.m_ptPixel = QPointF((fLeft + fRight) / 2.0, fTop);
    return sPlace;
}

QwtGraphic CPlotCurve::legendIcon(int, const QSizeF& objSize) const
{
    QwtGraphic objIcon;
    if (objSize.isEmpty())
        return objIcon;
    objIcon.setDefaultSize(objSize);
    objIcon.setRenderHint(QwtGraphic::RenderPensUnscaled, true);
    QPainter objPainter(&objIcon);
    objPainter.setRenderHint(QPainter::Antialiasing);
    if (m_bBars)
    {
        const double fWidth = objSize.width() / 2.0;
        drawBar(&objPainter, QRectF((objSize.width() - fWidth) / 2.0, 0.0, fWidth, objSize.height()), pen());
        return objIcon;
    }
    if (style() != QwtPlotCurve::NoCurve)
    {
        objPainter.setPen(pen());
        objPainter.drawLine(QPointF(0.0, objSize.height() / 2.0), QPointF(objSize.width(), objSize.height() / 2.0));
    }
    if (m_bAllPoints && symbol() != nullptr)
        symbol()->drawSymbol(&objPainter, QRectF(QPointF(), objSize).center());
    return objIcon;
}

void CPlotCurve::drawCurve(QPainter* pPainter, int nStyle, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap, const QRectF& rectCanvas,
                           int nFrom, int nTo) const
{
    if (m_bBars)
    {
        for (int i = nFrom; i <= nTo; ++i)
        {
            QRectF rectBar = place(i, objXMap, objYMap).m_rectBar;
            // A value of 0 is seen as such: only a missing one leaves its place empty.
            if (rectBar.height() < pen().widthF())
                rectBar.setTop(rectBar.bottom() - pen().widthF());
            // A part of a bar far outside is cut off, so that its outline is not computed there.
            const QRectF rectSeen = rectBar & rectCanvas.adjusted(-pen().widthF(), -pen().widthF(), pen().widthF(), pen().widthF());
            if (rectSeen.isValid())
                drawBar(pPainter, rectSeen, pen());
        }
        return;
    }
    for (const int nLast : m_vecLastOfPart)
    {
        if (nFrom <= std::min(nLast, nTo))
            QwtPlotCurve::drawCurve(pPainter, nStyle, objXMap, objYMap, rectCanvas, nFrom, std::min(nLast, nTo));
        nFrom = std::max(nFrom, nLast + 1);
    }
}

void CPlotCurve::drawLines(QPainter* pPainter, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap, const QRectF& rectCanvas, int nFrom,
                           int nTo) const
{
    QPolygonF objPoints;
    // On whole pixels, so that a level line is as sharp as the grid.
    for (int i = nFrom; i <= nTo; ++i)
        objPoints.append(QPointF(std::round(objXMap.transform(sample(i).x())), std::round(objYMap.transform(sample(i).y()))));
    const double fEdge = pen().widthF();
    objPoints = QwtClipper::clipPolygonF(rectCanvas.adjusted(-fEdge, -fEdge, fEdge, fEdge), objPoints);
    // One by one: as the outline of a single shape, wide lines that go up and down take several times as long.
    QVector<QLineF> vecLines;
    for (int i = 1; i < objPoints.size(); ++i)
        vecLines.append(QLineF(objPoints.at(i - 1), objPoints.at(i)));
    pPainter->drawLines(vecLines);
}

void CPlotCurve::drawSymbols(QPainter* pPainter, const QwtSymbol& objSymbol, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap,
                             const QRectF& rectCanvas, int nFrom, int nTo) const
{
    if (m_bBars)
        return;
    if (m_bAllPoints)
    {
        QwtPlotCurve::drawSymbols(pPainter, objSymbol, objXMap, objYMap, rectCanvas, nFrom, nTo);
        return;
    }
    int nFirst = 0;
    for (const int nLast : m_vecLastOfPart)
    {
        if (nFirst == nLast && nFirst >= nFrom && nLast <= nTo)
            QwtPlotCurve::drawSymbols(pPainter, objSymbol, objXMap, objYMap, rectCanvas, nFirst, nLast);
        nFirst = nLast + 1;
    }
}
