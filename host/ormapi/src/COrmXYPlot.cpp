#include "COrmXYPlot.h"

#include "COrmXYPlotAxis.h"
#include "OrmColorBarTicks.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{
constexpr double fLineWidth = 2.0;
constexpr int nLabelSpacing = 8; ///< pixels between the labels of the x axis
constexpr int nMostTicksOfYAxis = 8;
constexpr double fEdgePart = 0.03; ///< of the y axis, kept free at both ends so that points there are whole
constexpr int nSmallestPoint = 1;
constexpr int nLargestPoint = 64; ///< pixels

/// Axis numbers: one format for the whole axis, the same way of writing as on colour bars.
class CNumberScale : public QwtScaleDraw
{
public:
    QwtText label(double fValue) const override
    {
        const QList<double> lstTicks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
        if (lstTicks.size() < 2)
            return {OrmColorBarTicks::text(fValue, 6), QwtText::PlainText};
        const double fStep = std::fabs(lstTicks.at(1) - lstTicks.at(0));
        return {OrmColorBarTicks::text(fValue, OrmColorBarTicks::formatFor(lstTicks.first(), lstTicks.last(), fStep)), QwtText::PlainText};
    }
};

/// A curve whose line is interrupted where a value is missing.
class CLine : public QwtPlotCurve
{
public:
    explicit CLine(const QString& strName) : QwtPlotCurve(QwtText(strName, QwtText::PlainText))
    {
        setRenderHint(QwtPlotItem::RenderAntialiased);
        setLegendAttribute(QwtPlotCurve::LegendShowLine);
        setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
        setLegendIconSize(QSize(28, 12));
    }

    void setValues(const QVector<double>& vecX, const QVector<double>& vecY)
    {
        QVector<QPointF> vecPoints;
        m_vecLastOfPart.clear();
        for (int i = 0; i < std::min(vecX.size(), vecY.size()); ++i)
        {
            if (std::isfinite(vecX.at(i)) && std::isfinite(vecY.at(i)))
                vecPoints.append(QPointF(vecX.at(i), vecY.at(i)));
            else if (!vecPoints.isEmpty())
                m_vecLastOfPart.append(vecPoints.size() - 1);
        }
        m_vecLastOfPart.append(vecPoints.size() - 1);
        setSamples(vecPoints);
    }

protected:
    void drawCurve(QPainter* pPainter, int nStyle, const QwtScaleMap& objXMap, const QwtScaleMap& objYMap, const QRectF& objCanvas,
                   int nFrom, int nTo) const override
    {
        for (const int nLast : m_vecLastOfPart)
        {
            if (nFrom <= std::min(nLast, nTo))
                QwtPlotCurve::drawCurve(pPainter, nStyle, objXMap, objYMap, objCanvas, nFrom, std::min(nLast, nTo));
            nFrom = std::max(nFrom, nLast + 1);
        }
    }

private:
    QVector<int> m_vecLastOfPart; ///< indexes of the points after which the line is interrupted
};

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

void applyLook(CLine& objLine, const DISPLAY_SETTINGS& sSettings)
{
    const bool bPointsOnly = sSettings.nDisplayMode == COrmXYPlot::PointsMode;
    const bool bPoints = bPointsOnly || objLine.dataSize() == 1 ||
                         (sSettings.nDisplayMode == COrmXYPlot::LineAndPointsMode && sSettings.objPointProperties.bPointVisible);
    objLine.setStyle(bPointsOnly ? QwtPlotCurve::NoCurve : QwtPlotCurve::Lines);
    objLine.setPen(sSettings.lineColor, fLineWidth);
    if (!bPoints)
    {
        objLine.setSymbol(nullptr);
        return;
    }
    const int nSize = std::clamp(sSettings.objPointProperties.nPointSize, nSmallestPoint, nLargestPoint);
    const QColor clrPoint = sSettings.objPointProperties.pointColor;
    objLine.setSymbol(
        new QwtSymbol(symbolStyle(sSettings.objPointProperties.nPointStyle), QBrush(clrPoint), QPen(clrPoint), QSize(nSize, nSize)));
}

/// A range whose width and whose ticks are numbers: not wider than doubles reach, not so narrow that they cannot tell its ticks apart.
std::pair<double, double> drawableRange(double fMin, double fMax)
{
    constexpr double fFurthest = std::numeric_limits<double>::max() / 16.0;
    constexpr double fNarrowest = 1e-10; // of the greater end
    if (fMax - fMin > 2.0 * fFurthest)
        return {std::max(fMin, -fFurthest), std::min(fMax, fFurthest)};
    const double fMargin = std::max(std::fabs(fMin), std::fabs(fMax)) * fNarrowest;
    if (fMax == fMin || fMax - fMin >= fMargin)
        return {fMin, fMax};
    return {fMin - fMargin, fMax + fMargin};
}

QwtText axisTitle(const QString& strLabel)
{
    return {strLabel, QwtText::PlainText};
}
} // namespace

/// What is drawn, and the ranges it is drawn over.
struct COrmXYPlot::SPrivate
{
    QwtPlot* m_pPlot = nullptr;          ///< child of the widget
    QwtLegend* m_pLegend = nullptr;      ///< owned by the plot
    QwtPlotGrid* m_pGrid = nullptr;      ///< owned by the plot
    QHash<QString, CLine*> m_hashCurves; ///< owned by the plot
    QString m_strXLabel;
    QString m_strYLabel;
    int m_nDisplayMode = COrmXYPlot::LineMode;
    double m_fXStep = 0.0; ///< wished step of the x axis; 0 or less: none
    double m_fXMin = 0.0;
    double m_fXMax = 0.0;
    double m_fYMin = 0.0;
    double m_fYMax = 0.0;
    bool m_bWholeX = true; ///< all x values are whole numbers
    QSize m_objLegendSize; ///< pixels the legend needs

    void showNoScales() const
    {
        m_pPlot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(0.0, 1.0));
        m_pPlot->setAxisScaleDiv(QwtPlot::yLeft, QwtScaleDiv(0.0, 1.0));
        m_pGrid->setVisible(false);
    }

    void setTicks(int nAxis, double fLower, double fUpper, const QList<double>& lstTicks) const
    {
        m_pPlot->setAxisScaleDiv(nAxis, QwtScaleDiv(fLower, fUpper, QList<double>(), QList<double>(), lstTicks));
    }

    /// Pixels of the drawing area, as far as they are known before the layout.
    int canvasWidth() const
    {
        const int nAxis = m_pPlot->axisWidget(QwtPlot::yLeft)->sizeHint().width();
        return std::max(1, m_pPlot->width() - nAxis - 2 * nLabelSpacing);
    }
};

COrmXYPlot::COrmXYPlot(QWidget* pParent, const char* pName) : QWidget(pParent), m_p(std::make_unique<SPrivate>())
{
    setObjectName(QString::fromUtf8(pName));
    setAccessibleName(tr("Plot"));

    m_p->m_pPlot = new QwtPlot(this);
    // A chart goes to paper and into reports: it is dark on white whatever the desktop's colours are.
    QPalette objPalette(Qt::white);
    for (const QPalette::ColorRole eRole : {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::Light})
        objPalette.setColor(eRole, Qt::white);
    for (const QPalette::ColorRole eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::Dark})
        objPalette.setColor(eRole, Qt::black);
    m_p->m_pPlot->setPalette(objPalette);
    m_p->m_pPlot->setAutoFillBackground(true);
    m_p->m_pPlot->setContentsMargins(8, 8, 16, 8);
    m_p->m_pPlot->plotLayout()->setAlignCanvasToScales(true);
    if (auto* pCanvas = qobject_cast<QwtPlotCanvas*>(m_p->m_pPlot->canvas()))
        pCanvas->setFrameStyle(QFrame::NoFrame);
    for (const int nAxis : {QwtPlot::xBottom, QwtPlot::yLeft})
        m_p->m_pPlot->setAxisScaleDraw(nAxis, new CNumberScale);

    m_p->m_pGrid = new QwtPlotGrid;
    m_p->m_pGrid->setMajorPen(QPen(QColor(224, 224, 224), 1.0));
    m_p->m_pGrid->attach(m_p->m_pPlot);

    m_p->m_pLegend = new QwtLegend;
    m_p->m_pPlot->insertLegend(m_p->m_pLegend, QwtPlot::TopLegend);

    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSizeConstraint(QLayout::SetNoConstraint);
    pLayout->addWidget(m_p->m_pPlot);
    m_p->showNoScales();
}

COrmXYPlot::~COrmXYPlot()
{
    qDeleteAll(m_hashDataLines);
}

void COrmXYPlot::setXAxisLabel(QString strLabel)
{
    m_p->m_strXLabel = strLabel;
    m_p->m_pPlot->setAxisTitle(QwtPlot::xBottom, axisTitle(strLabel));
}

void COrmXYPlot::setYAxisLabel(QString strLabel)
{
    m_p->m_strYLabel = strLabel;
    m_p->m_pPlot->setAxisTitle(QwtPlot::yLeft, axisTitle(strLabel));
}

QString COrmXYPlot::xAxisLabel() const
{
    return m_p->m_strXLabel;
}

QString COrmXYPlot::yAxisLabel() const
{
    return m_p->m_strYLabel;
}

bool COrmXYPlot::getDisplaySettings(QString strName, DISPLAY_SETTINGS& settings)
{
    const DATALINE_INFO* pLine = m_hashDataLines.value(strName);
    if (pLine == nullptr)
        return false;
    settings = pLine->objDisplaySettings;
    return true;
}

void COrmXYPlot::setDisplaySettings(QString strName, DISPLAY_SETTINGS settings)
{
    DATALINE_INFO* pLine = m_hashDataLines.value(strName);
    if (pLine == nullptr)
        return;
    pLine->objDisplaySettings = settings;
    m_p->m_nDisplayMode = settings.nDisplayMode;
    applyLook(*m_p->m_hashCurves.value(strName), settings);
    m_p->m_pPlot->replot();
}

int COrmXYPlot::getCurrentDisplayMode()
{
    return m_p->m_nDisplayMode;
}

void COrmXYPlot::setCurrentDisplayMode(int nDisplayMode)
{
    m_p->m_nDisplayMode = nDisplayMode;
    for (auto it = m_hashDataLines.constBegin(); it != m_hashDataLines.constEnd(); ++it)
    {
        it.value()->objDisplaySettings.nDisplayMode = nDisplayMode;
        applyLook(*m_p->m_hashCurves.value(it.key()), it.value()->objDisplaySettings);
    }
    m_p->m_pPlot->replot();
}

void COrmXYPlot::clear()
{
    qDeleteAll(m_p->m_hashCurves);
    m_p->m_hashCurves.clear();
    qDeleteAll(m_hashDataLines);
    m_hashDataLines.clear();
    m_p->showNoScales();
    m_p->m_pPlot->replot();
}

bool COrmXYPlot::determineRanges()
{
    bool bFound = false;
    m_p->m_bWholeX = true;
    for (const DATALINE_INFO* pLine : qAsConst(m_hashDataLines))
    {
        for (int i = 0; i < std::min(pLine->vecX.size(), pLine->vecY.size()); ++i)
        {
            const double fX = pLine->vecX.at(i);
            const double fY = pLine->vecY.at(i);
            if (!std::isfinite(fX) || !std::isfinite(fY))
                continue;
            m_p->m_fXMin = bFound ? std::min(m_p->m_fXMin, fX) : fX;
            m_p->m_fXMax = bFound ? std::max(m_p->m_fXMax, fX) : fX;
            m_p->m_fYMin = bFound ? std::min(m_p->m_fYMin, fY) : fY;
            m_p->m_fYMax = bFound ? std::max(m_p->m_fYMax, fY) : fY;
            m_p->m_bWholeX = m_p->m_bWholeX && fX == std::floor(fX);
            bFound = true;
        }
    }
    return bFound;
}

void COrmXYPlot::calculateLegendWidthAndHeight()
{
    m_p->m_pPlot->updateLegend();
    const int nWidth = std::max(1, m_p->m_pPlot->width());
    m_p->m_objLegendSize = QSize(nWidth, m_p->m_pLegend->heightForWidth(nWidth));
}

void COrmXYPlot::calculateLayout()
{
    if (m_hashDataLines.isEmpty())
        return;
    auto [fYMin, fYMax] = drawableRange(m_p->m_fYMin, m_p->m_fYMax);
    double fYStep = 0.0;
    const QwtScaleEngine* pEngine = m_p->m_pPlot->axisScaleEngine(QwtPlot::yLeft);
    pEngine->autoScale(nMostTicksOfYAxis, fYMin, fYMax, fYStep);
    const double fEdge = (fYMax - fYMin) * fEdgePart;
    m_p->setTicks(QwtPlot::yLeft, fYMin - fEdge, fYMax + fEdge,
                  pEngine->divideScale(fYMin, fYMax, nMostTicksOfYAxis, 0, fYStep).ticks(QwtScaleDiv::MajorTick));

    const QFontMetrics objMetrics(m_p->m_pPlot->axisFont(QwtPlot::xBottom));
    const auto fnLabelWidth = [&objMetrics](double fValue) { return objMetrics.horizontalAdvance(OrmColorBarTicks::text(fValue, 6)); };
    const int nLabelWidth =
        std::max({fnLabelWidth(m_p->m_fXMin), fnLabelWidth(m_p->m_fXMax), objMetrics.horizontalAdvance(QLatin1Char('0'))});
    const int nMostTicks = std::max(1, m_p->canvasWidth() / (nLabelWidth + nLabelSpacing));
    const COrmXYPlotAxis::SXAxis sAxis = COrmXYPlotAxis::layout(m_p->m_fXMin, m_p->m_fXMax, m_p->m_fXStep, m_p->m_bWholeX, nMostTicks);
    QList<double> lstTicks;
    for (int i = 0; i < sAxis.m_nTicks; ++i)
        lstTicks.append(sAxis.m_fFirst + i * sAxis.m_fStep);
    m_p->setTicks(QwtPlot::xBottom, sAxis.m_fLower, sAxis.m_fUpper, lstTicks);
    m_p->m_pGrid->setVisible(true);
    m_p->m_pPlot->replot();
}

void COrmXYPlot::setXAxisRangeStep(double fStep)
{
    m_p->m_fXStep = fStep;
    calculateLayout();
}

double COrmXYPlot::xAxisRangeStep() const
{
    return m_p->m_fXStep;
}

QImage COrmXYPlot::getPrintImage()
{
    if (size().isEmpty())
        resize(sizeHint());
    ensurePolished();
    // What was changed a moment ago is laid out by events that may still be waiting.
    const QList<QWidget*> lstChildren = findChildren<QWidget*>();
    for (QWidget* pChild : lstChildren)
        QCoreApplication::sendPostedEvents(pChild, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(this, QEvent::LayoutRequest);
    return grab().toImage();
}

QSize COrmXYPlot::sizeHint() const
{
    return {640, 480};
}

QSize COrmXYPlot::minimumSizeHint() const
{
    return {240, 180};
}

void COrmXYPlot::resizeEvent(QResizeEvent* pEvent)
{
    QWidget::resizeEvent(pEvent);
    calculateLegendWidthAndHeight();
    calculateLayout();
}

void COrmXYPlot::changeEvent(QEvent* pEvent)
{
    QWidget::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange || pEvent->type() == QEvent::StyleChange)
        calculateLayout();
}

void COrmXYPlot::require(bool bHolds, const char* pCondition, int nLine)
{
    if (!bHolds)
        qt_assert_x("addDataLine", pCondition, "OrmXYPlot", nLine);
}

COrmXYPlot::DATALINE_INFO* COrmXYPlot::lineForNewValues(const QString& strName, int nVals)
{
    DATALINE_INFO* pLine = m_hashDataLines.value(strName);
    if (pLine == nullptr)
        pLine = new DATALINE_INFO;
    pLine->vecX.clear();
    pLine->vecY.clear();
    pLine->vecExtraA.clear();
    pLine->vecExtraB.clear();
    pLine->nVals = nVals;
    pLine->nExtraA = 0;
    pLine->nExtraB = 0;
    pLine->vecX.reserve(nVals);
    pLine->vecY.reserve(nVals);
    return pLine;
}

bool COrmXYPlot::takeNewValues(const QString& strName, DATALINE_INFO* pLine)
{
    if (!m_hashDataLines.contains(strName))
        m_hashDataLines.insert(strName, pLine);
    if (!determineRanges())
    {
        clear();
        return false;
    }
    CLine*& pCurve = m_p->m_hashCurves[strName];
    if (pCurve == nullptr)
    {
        pCurve = new CLine(strName);
        pCurve->attach(m_p->m_pPlot);
    }
    pCurve->setValues(pLine->vecX, pLine->vecY);
    applyLook(*pCurve, pLine->objDisplaySettings);
    calculateLegendWidthAndHeight();
    calculateLayout();
    return true;
}
