#include "CPlotSheet.h"

#include "COrmPlainText.h"
#include "OrmColorBarTicks.h"

#include <qwt_legend.h>
#include <qwt_legend_label.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>
#include <qwt_text_label.h>

#include <QCoreApplication>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

using COrmXYPlotAxis::SAxis;
using COrmXYPlotAxis::SRange;

namespace
{
// A sheet of this size is drawn in the widget's own font; larger ones are magnified in proportion.
constexpr double fPlainWidth = 1000.0;
constexpr double fPlainHeight = 700.0;
constexpr double fLargestScale = 12.0;

constexpr double fLabelSpacing = 1.2; ///< between the labels of the x axis, in heights of the type
constexpr double fTickSpacing = 2.6;  ///< from a tick of the y axis to the next, in heights of the type
constexpr int nMostTicksOfYAxis = 9;
constexpr double fReach = 14.0;      ///< pixels from the pointer within which a point is found
constexpr double fSameSpot = 1.5;    ///< pixels within which points are on the same spot
constexpr double fBarPart = 0.7;     ///< of the distance between points that their bars take together
constexpr double fLoneBarPart = 0.3; ///< of a whole number, where there is a single point
const QColor clrGrid(224, 224, 224);
const QColor clrRemark(96, 96, 96);

/// Axis numbers: one format for the whole of a linear axis, the same way of writing as on colour bars.
class CNumberScale : public QwtScaleDraw
{
public:
    explicit CNumberScale(bool bLogarithmic = false) : m_bLogarithmic(bLogarithmic) {}

    QwtText label(double fValue) const override
    {
        const QList<double> lstTicks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
        if (lstTicks.size() < 2 || m_bLogarithmic)
            return {OrmColorBarTicks::text(fValue, 6), QwtText::PlainText};
        const double fStep = std::fabs(lstTicks.at(1) - lstTicks.at(0));
        return {OrmColorBarTicks::text(fValue, OrmColorBarTicks::formatFor(lstTicks.first(), lstTicks.last(), fStep)), QwtText::PlainText};
    }

private:
    bool m_bLogarithmic; ///< each number by itself
};

QFont magnified(QFont objFont, double fScale)
{
    if (objFont.pixelSize() > 0)
        objFont.setPixelSize(std::max(1, static_cast<int>(std::lround(objFont.pixelSize() * fScale))));
    else
        objFont.setPointSizeF(objFont.pointSizeF() * fScale);
    return objFont;
}

QList<double> toList(const std::vector<double>& vecValues)
{
    QList<double> lstValues;
    for (const double fValue : vecValues)
        lstValues.append(fValue);
    return lstValues;
}
} // namespace

CPlotSheet::CPlotSheet(QWidget* pParent) : QwtPlot(pParent)
{
    setAutoReplot(false);
    // A chart goes to paper and into reports: it is dark on white whatever the desktop's colours are.
    QPalette objPalette(Qt::white);
    for (const QPalette::ColorRole eRole : {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::Light})
        objPalette.setColor(eRole, Qt::white);
    for (const QPalette::ColorRole eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::Dark})
        objPalette.setColor(eRole, Qt::black);
    setPalette(objPalette);
    setAutoFillBackground(true);
    plotLayout()->setAlignCanvasToScales(true);
    if (auto* pCanvas = qobject_cast<QwtPlotCanvas*>(canvas()))
    {
        pCanvas->setFrameStyle(QFrame::NoFrame);
        pCanvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
    }
    for (const int nAxis : {QwtPlot::xBottom, QwtPlot::yLeft})
        setAxisScaleDraw(nAxis, new CNumberScale);

    m_pGrid = new QwtPlotGrid;
    m_pGrid->attach(this);
    m_pMessage = new QwtPlotTextLabel;
    m_pMessage->attach(this);
    m_pLegend = new QwtLegend;
    insertLegend(m_pLegend, QwtPlot::TopLegend);
}

void CPlotSheet::setXLabel(const QString& strLabel)
{
    m_strXLabel = strLabel;
    touch();
}

void CPlotSheet::setYLabel(const QString& strLabel)
{
    m_strYLabel = strLabel;
    touch();
}

void CPlotSheet::setLogarithmic(bool bLogarithmic)
{
    if (bLogarithmic == m_bLogarithmic)
        return;
    m_bLogarithmic = bLogarithmic;
    m_optZoom.reset();
    setAxisScaleDraw(QwtPlot::yLeft, new CNumberScale(bLogarithmic));
    setAxisScaleEngine(QwtPlot::yLeft, bLogarithmic ? static_cast<QwtScaleEngine*>(new QwtLogScaleEngine) : new QwtLinearScaleEngine);
    for (const SLine& sLine : qAsConst(m_lstLines))
        sLine.m_pCurve->setValues(sLine.m_vecX, sLine.m_vecY, bLogarithmic);
    touch();
}

CPlotSheet::SLine* CPlotSheet::lineOf(const QString& strName)
{
    const auto it =
        std::find_if(m_lstLines.begin(), m_lstLines.end(), [&strName](const SLine& sLine) { return sLine.m_strName == strName; });
    return it != m_lstLines.end() ? &*it : nullptr;
}

void CPlotSheet::setLine(const QString& strName, const QVector<double>& vecX, const QVector<double>& vecY, const DISPLAY_SETTINGS& sLook)
{
    SLine* pLine = lineOf(strName);
    if (pLine == nullptr)
    {
        m_lstLines.append(SLine{strName, new CPlotCurve(strName), {}, {}, sLook});
        pLine = &m_lstLines.last();
        pLine->m_pCurve->attach(this);
    }
    pLine->m_vecX = vecX;
    pLine->m_vecY = vecY;
    pLine->m_sLook = sLook;
    pLine->m_pCurve->setValues(vecX, vecY, m_bLogarithmic);
}

void CPlotSheet::setLook(const QString& strName, const DISPLAY_SETTINGS& sLook)
{
    SLine* pLine = lineOf(strName);
    if (pLine != nullptr)
        pLine->m_sLook = sLook;
}

void CPlotSheet::removeLines()
{
    // Off the sheet first: that may find no memory, and nothing may be thrown out of the curve's destructor, which would do it.
    while (!m_lstLines.isEmpty())
    {
        m_lstLines.first().m_pCurve->detach();
        delete m_lstLines.first().m_pCurve;
        m_lstLines.removeFirst();
    }
    m_sRanges = COrmXYPlotAxis::SDataRanges();
    touch();
}

QStringList CPlotSheet::lineNames() const
{
    QStringList lstNames;
    for (const SLine& sLine : m_lstLines)
        lstNames.append(sLine.m_strName);
    return lstNames;
}

bool CPlotSheet::showsBars() const
{
    return std::any_of(m_lstLines.begin(), m_lstLines.end(),
                       [](const SLine& sLine) { return sLine.m_sLook.nDisplayMode == COrmXYPlot::BarsMode; });
}

bool CPlotSheet::hasPoints() const
{
    return (m_bLogarithmic ? m_sRanges.m_nLogarithmicPoints : m_sRanges.m_nPoints) > 0;
}

// ---- What is shown ------------------------------------------------------------------------------------------------------

void CPlotSheet::setView(const SView& sView)
{
    m_optZoom = SZoom{sView, m_sRanges};
    touch();
}

void CPlotSheet::showEverything()
{
    m_optZoom.reset();
    touch();
}

bool CPlotSheet::isZoomed() const
{
    // A part of other data would hide what has changed.
    return m_optZoom && hasPoints() && m_optZoom->m_sRanges.hasSameRanges(m_sRanges);
}

CPlotSheet::SView CPlotSheet::wholeView() const
{
    SRange sX = COrmXYPlotAxis::xAxis(m_sRanges.m_sX, m_fXStep, m_sRanges.m_bWholeX, mostXTicks()).m_sRange;
    if (showsBars())
    {
        constexpr double fRoom = 0.5; // beside the outermost points, in whole numbers
        sX = {std::min(sX.m_fLower, m_sRanges.m_sX.m_fLower - fRoom), std::max(sX.m_fUpper, m_sRanges.m_sX.m_fUpper + fRoom)};
    }
    const SAxis sY = m_bLogarithmic ? COrmXYPlotAxis::logarithmicAxis(m_sRanges.m_sYLogarithmic, mostYTicks())
                                    : COrmXYPlotAxis::yAxis(m_sRanges.m_sY, showsBars(), mostYTicks());
    return {sX, sY.m_sRange};
}

CPlotSheet::SView CPlotSheet::view() const
{
    return isZoomed() ? m_optZoom->m_sView : wholeView();
}

CPlotSheet::SNarrowest CPlotSheet::narrowest() const
{
    constexpr double fDeepest = 1e-6; // of the whole
    const SView sWhole = wholeView();
    return {m_sRanges.m_bWholeX ? std::min(1.0, sWhole.m_sX.width()) : sWhole.m_sX.width() * fDeepest,
            evenY(sWhole.m_sY).width() * fDeepest};
}

SRange CPlotSheet::evenY(const SRange& sY) const
{
    return m_bLogarithmic ? SRange{std::log10(sY.m_fLower), std::log10(sY.m_fUpper)} : sY;
}

SRange CPlotSheet::yOfEven(const SRange& sEven) const
{
    return m_bLogarithmic ? SRange{std::pow(10.0, sEven.m_fLower), std::pow(10.0, sEven.m_fUpper)} : sEven;
}

// ---- Layout -------------------------------------------------------------------------------------------------------------

double CPlotSheet::scale() const
{
    return std::clamp(std::min(width() / fPlainWidth, height() / fPlainHeight), 1.0, fLargestScale);
}

QFont CPlotSheet::typeFont() const
{
    return magnified(font(), scale());
}

double CPlotSheet::widestXNumber() const
{
    const QFontMetricsF objMetrics(typeFont());
    const auto fnWidth = [&objMetrics](double fValue) { return objMetrics.horizontalAdvance(OrmColorBarTicks::text(fValue, 6)); };
    return std::max({fnWidth(m_sRanges.m_sX.m_fLower), fnWidth(m_sRanges.m_sX.m_fUpper), fnWidth(0.0)});
}

int CPlotSheet::mostXTicks() const
{
    // As far as the drawing area is known before the layout.
    const QFontMetricsF objMetrics(typeFont());
    const double fCanvas = width() - axisWidget(QwtPlot::yLeft)->sizeHint().width() - 2.0 * objMetrics.height();
    return static_cast<int>(std::max(1.0, fCanvas / (widestXNumber() + fLabelSpacing * objMetrics.height())));
}

int CPlotSheet::mostYTicks() const
{
    const double fType = QFontMetricsF(typeFont()).height();
    const double fCanvas = height() - 5.0 * fType; // legend, numbers and label of the x axis
    return static_cast<int>(std::clamp(fCanvas / (fTickSpacing * fType), 2.0, static_cast<double>(nMostTicksOfYAxis)));
}

void CPlotSheet::touch()
{
    m_bStale = true;
    update();
    QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

void CPlotSheet::settle()
{
    if (m_bStale)
        layOut();
}

bool CPlotSheet::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::LayoutRequest)
        settle();
    return QwtPlot::event(pEvent);
}

void CPlotSheet::paintEvent(QPaintEvent* pEvent)
{
    // Whoever paints without letting events run first gets no lines on axes of before.
    settle();
    QwtPlot::paintEvent(pEvent);
}

void CPlotSheet::layOut()
{
    m_bStale = false;
    applyType();
    elideLabels();
    placeBars();
    m_pMessage->setVisible(!hasPoints());
    m_pGrid->setVisible(hasPoints());
    tellWhatIsMissing();
    applyAxes();
    // What was changed a moment ago is laid out by events that may still be waiting: in the legend, where alone there is anything to lay
    // out.
    const QList<QWidget*> lstParts = m_pLegend->findChildren<QWidget*>();
    for (QWidget* pPart : lstParts)
        QCoreApplication::sendPostedEvents(pPart, QEvent::LayoutRequest);
    updateLayout();
    replot();
    emit laidOut();
}

void CPlotSheet::applyType()
{
    const double fScale = scale();
    const auto nMargin = static_cast<int>(std::lround(8.0 * fScale));
    setContentsMargins(nMargin, nMargin, 2 * nMargin, nMargin);
    plotLayout()->setSpacing(static_cast<int>(std::lround(6.0 * fScale)));
    m_pGrid->setMajorPen(QPen(clrGrid, std::lround(fScale)));
    for (const int nAxis : {QwtPlot::xBottom, QwtPlot::yLeft})
    {
        setAxisFont(nAxis, typeFont());
        QwtScaleDraw* pDraw = axisScaleDraw(nAxis);
        pDraw->setTickLength(QwtScaleDiv::MajorTick, 6.0 * fScale);
        pDraw->setTickLength(QwtScaleDiv::MinorTick, 3.0 * fScale);
        pDraw->setSpacing(4.0 * fScale);
        pDraw->setPenWidth(std::max(1, static_cast<int>(std::lround(fScale))));
        axisWidget(nAxis)->setSpacing(static_cast<int>(std::lround(4.0 * fScale)));
        axisWidget(nAxis)->setMargin(0);
    }
    // Room for half a number beyond the ends, whether or not one stands there: else the lines would jump while they are moved.
    const QFontMetrics objType(typeFont());
    const int nHalfHeight = (objType.height() + 1) / 2;
    const int nHalfWidth = static_cast<int>(std::ceil(widestXNumber() / 2.0));
    axisWidget(QwtPlot::yLeft)->setMinBorderDist(nHalfHeight, nHalfHeight);
    axisWidget(QwtPlot::xBottom)->setMinBorderDist(nHalfWidth, nHalfWidth);
    for (const SLine& sLine : qAsConst(m_lstLines))
        sLine.m_pCurve->setLook(sLine.m_sLook, fScale);
}

void CPlotSheet::elideLabels()
{
    const double fScale = scale();
    const QFontMetrics objType(typeFont());
    const QMargins objMargins = contentsMargins();
    const int nWidth = std::max(1, width() - objMargins.left() - objMargins.right());
    const QSize objIcon(objType.height() * 2, objType.height() * 2 / 3);
    const int nName = std::max(1, nWidth - objIcon.width() - 2 * objType.height());
    for (const SLine& sLine : qAsConst(m_lstLines))
    {
        QwtText objName(COrmPlainText::elided(sLine.m_strName, objType, nName), QwtText::PlainText);
        objName.setFont(typeFont());
        sLine.m_pCurve->setLegendIconSize(objIcon);
        sLine.m_pCurve->setTitle(objName);
    }
    const QList<QwtLegendLabel*> lstLabels = m_pLegend->findChildren<QwtLegendLabel*>();
    for (QwtLegendLabel* pLabel : lstLabels)
    {
        pLabel->setSpacing(static_cast<int>(std::lround(4.0 * fScale)));
        pLabel->setMargin(static_cast<int>(std::lround(2.0 * fScale)));
    }

    QFont fontLabel = typeFont();
    fontLabel.setBold(true);
    const QFontMetrics objLabel(fontLabel);
    const auto fnTitle = [&](const QString& strText, int nRoom)
    {
        QwtText objText(COrmPlainText::elided(strText, objLabel, std::max(1, nRoom)), QwtText::PlainText);
        objText.setFont(fontLabel);
        objText.setColor(Qt::black);
        return objText;
    };
    // Beside legend, numbers, label and remark of the x axis, and beside the numbers of the y axis.
    const int nAbove = m_lstLines.isEmpty() ? 0 : m_pLegend->heightForWidth(nWidth);
    setAxisTitle(QwtPlot::xBottom, fnTitle(m_strXLabel, nWidth * 3 / 4));
    setAxisTitle(QwtPlot::yLeft, fnTitle(m_strYLabel, height() - nAbove - 6 * objLabel.height()));
}

void CPlotSheet::measureLegend()
{
    updateLegend();
}

/// The bars of all lines stand side by side.
void CPlotSheet::placeBars()
{
    if (!showsBars())
        return;
    QVector<double> vecX;
    for (const SLine& sLine : qAsConst(m_lstLines))
    {
        for (int i = 0; i < static_cast<int>(sLine.m_pCurve->dataSize()); ++i)
            vecX.append(sLine.m_pCurve->sample(i).x());
    }
    std::sort(vecX.begin(), vecX.end());
    double fDistance = 0.0;
    for (int i = 1; i < vecX.size(); ++i)
    {
        const double fBetween = vecX.at(i) - vecX.at(i - 1);
        if (fBetween > 0.0 && (fDistance == 0.0 || fBetween < fDistance))
            fDistance = fBetween;
    }
    const double fTogether = fDistance > 0.0 ? std::min(fDistance, 1.0) * fBarPart : fLoneBarPart;
    const double fWidth = fTogether / m_lstLines.size();
    for (int i = 0; i < m_lstLines.size(); ++i)
        m_lstLines.at(i).m_pCurve->setBar({-fTogether / 2.0 + (i + 0.5) * fWidth, fWidth});
}

void CPlotSheet::applyAxes()
{
    const auto fnSet = [this](int nAxis, const SAxis& sAxis)
    {
        setAxisScaleDiv(nAxis, QwtScaleDiv(sAxis.m_sRange.m_fLower, sAxis.m_sRange.m_fUpper, toList(sAxis.m_vecMinorTicks), QList<double>(),
                                           toList(sAxis.m_vecTicks)));
    };
    if (!hasPoints())
    {
        const SAxis sNone = {{m_bLogarithmic ? 1.0 : 0.0, m_bLogarithmic ? 10.0 : 1.0}, {}, {}};
        fnSet(QwtPlot::xBottom, {{0.0, 1.0}, {}, {}});
        fnSet(QwtPlot::yLeft, sNone);
        return;
    }
    const SView sView = view();
    const SRange& sData = m_sRanges.m_sX;
    // Numbers stand where there can be points; and the room for those of the x axis depends on the numbers beside the other one.
    const SRange sNumbers = {std::max(sView.m_sX.m_fLower, sData.m_fLower), std::min(sView.m_sX.m_fUpper, sData.m_fUpper)};
    SAxis sY = m_bLogarithmic ? COrmXYPlotAxis::logarithmicTicks(sView.m_sY, mostYTicks()) : SAxis{sView.m_sY, {}, {}};
    if (!m_bLogarithmic)
        sY.m_vecTicks = isZoomed() ? COrmXYPlotAxis::yTicks(sView.m_sY, mostYTicks())
                                   : COrmXYPlotAxis::yAxis(m_sRanges.m_sY, showsBars(), mostYTicks()).m_vecTicks;
    fnSet(QwtPlot::yLeft, sY);
    updateAxes();
    fnSet(QwtPlot::xBottom, {sView.m_sX, COrmXYPlotAxis::xTicks(sNumbers, m_fXStep, m_sRanges.m_bWholeX, mostXTicks()), {}});
}

void CPlotSheet::tellWhatIsMissing()
{
    const auto fnRemark = [this](const QString& strText)
    {
        QwtText objText(strText, QwtText::PlainText);
        objText.setFont(typeFont());
        objText.setColor(clrRemark);
        objText.setRenderFlags(Qt::AlignCenter | Qt::TextWordWrap);
        return objText;
    };
    QStringList lstRemarks;
    const int nHidden = m_bLogarithmic ? m_sRanges.m_nPoints - m_sRanges.m_nLogarithmicPoints : 0;
    if (m_sRanges.m_nMissing > 0)
        lstRemarks.append(m_sRanges.m_nMissing == 1 ? tr("1 value is missing.")
                                                    : tr("%n values are missing.", nullptr, int(m_sRanges.m_nMissing)));
    if (nHidden > 0 && hasPoints())
        lstRemarks.append(nHidden == 1 ? tr("1 value has no place on the logarithmic axis.")
                                       : tr("%n values have no place on the logarithmic axis.", nullptr, nHidden));
    setFooter(fnRemark(lstRemarks.join(QLatin1Char(' '))));
    m_pMessage->setText(fnRemark(nHidden > 0 ? tr("There is no value above 0: turn the logarithmic axis off to see these values.")
                                             : tr("Nothing to plot")));
}

void CPlotSheet::resizeEvent(QResizeEvent* pEvent)
{
    QwtPlot::resizeEvent(pEvent);
    layOut();
}

// ---- Finding points -----------------------------------------------------------------------------------------------------

QList<CPlotSheet::SFound> CPlotSheet::allPoints() const
{
    const QwtScaleMap objXMap = canvasMap(QwtPlot::xBottom);
    const QwtScaleMap objYMap = canvasMap(QwtPlot::yLeft);
    QList<SFound> lstFound;
    for (const SLine& sLine : m_lstLines)
    {
        for (int i = 0; i < static_cast<int>(sLine.m_pCurve->dataSize()); ++i)
            lstFound.append(SFound{sLine.m_pCurve, sLine.m_pCurve->place(i, objXMap, objYMap)});
    }
    std::stable_sort(lstFound.begin(), lstFound.end(),
                     [](const SFound& sOne, const SFound& sOther) { return sOne.m_sPlace.m_ptPixel.x() < sOther.m_sPlace.m_ptPixel.x(); });
    return lstFound;
}

QList<CPlotSheet::SFound> CPlotSheet::pointsAt(const QPointF& ptCanvas) const
{
    const double fWithin = fReach * scale();
    const QRectF rectCanvas = canvas()->contentsRect();
    double fNearest = fWithin;
    QList<SFound> lstNear;
    for (const SFound& sFound : allPoints())
    {
        const QPointF ptPoint = sFound.m_sPlace.m_ptPixel;
        if (sFound.m_sPlace.m_rectBar.contains(ptCanvas))
            return {sFound};
        // Beside the canvas nothing is seen.
        if (!rectCanvas.adjusted(-1.0, -1.0, 1.0, 1.0).contains(ptPoint))
            continue;
        const double fDistance = std::hypot(ptPoint.x() - ptCanvas.x(), ptPoint.y() - ptCanvas.y());
        if (fDistance > fWithin)
            continue;
        fNearest = std::min(fNearest, fDistance);
        lstNear.append(sFound);
    }
    const auto itNearest = std::find_if(lstNear.begin(), lstNear.end(),
                                        [&](const SFound& sFound)
                                        {
                                            const QPointF ptPoint = sFound.m_sPlace.m_ptPixel;
                                            return std::hypot(ptPoint.x() - ptCanvas.x(), ptPoint.y() - ptCanvas.y()) <= fNearest;
                                        });
    if (itNearest == lstNear.end())
        return {};
    const QPointF ptNearest = itNearest->m_sPlace.m_ptPixel;
    QList<SFound> lstFound;
    for (const SFound& sFound : qAsConst(lstNear))
    {
        const QPointF ptPoint = sFound.m_sPlace.m_ptPixel;
        if (std::hypot(ptPoint.x() - ptNearest.x(), ptPoint.y() - ptNearest.y()) <= fSameSpot)
            lstFound.append(sFound);
    }
    return lstFound;
}
