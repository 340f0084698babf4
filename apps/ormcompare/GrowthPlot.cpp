#include "GrowthPlot.h"

#include "COrmXYPlot.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr QSize kPlotSize(900, 560);

/// Colours that people with colour blindness tell apart as well. Source: B. Wong, Points of view: Color blindness, Nature Methods 8 (2011),
/// page 441; its yellow is left out, which is too light for a line on white.
constexpr std::array<QRgb, 7> kColors = {0xff0072b2, 0xffd55e00, 0xff009e73, 0xffcc79a7, 0xff56b4e9, 0xffe69f00, 0xff000000};

QString days(double fDays)
{
    return QString::number(fDays, 'g', 3);
}

/// What the legend says of a fit.
QString fitName(const SGrowthSeries& series)
{
    const std::optional<double> fDoubling = series.m_objFit.doublingTime();
    const std::optional<SInterval> interval = series.m_objFit.doublingTimeInterval();
    QString strText = fDoubling ? QStringLiteral("doubles in %1 days").arg(days(*fDoubling)) : QStringLiteral("does not grow");
    if (fDoubling && interval)
    {
        strText += std::isinf(interval->m_fHigh) ? QStringLiteral(" (95 %: %1 or more, or no growth)").arg(days(interval->m_fLow))
                                                 : QStringLiteral(" (95 %: %1 to %2)").arg(days(interval->m_fLow), days(interval->m_fHigh));
    }
    return QStringLiteral("%1: %2").arg(series.m_strSubject, strText);
}

void addSeries(COrmXYPlot& plot, const SGrowthSeries& series, const QColor& color)
{
    QVector<double> lstDays;
    QVector<double> lstValues;
    for (const SGrowthPoint& point : series.m_objFit.m_lstUsed)
    {
        lstDays.append(point.m_fDays);
        lstValues.append(point.m_fValue);
    }
    DISPLAY_SETTINGS look;
    look.lineColor = color;
    look.nDisplayMode = COrmXYPlot::PointsMode;
    look.objPointProperties.pointColor = color;
    look.objPointProperties.bPointVisible = true;
    look.objPointProperties.nPointSize = 9;
    plot.addDataLine(series.m_strSubject, lstDays.data(), lstValues.data(), lstDays.size());
    plot.setDisplaySettings(series.m_strSubject, look);
    if (!series.m_objFit.m_objLine)
    {
        return;
    }
    // On a logarithmic axis the growth is a straight line: its ends are enough.
    const auto [pFirst, pLast] = std::minmax_element(lstDays.cbegin(), lstDays.cend());
    std::array<double, 2> aDays = {*pFirst, *pLast};
    std::array<double, 2> aValues{};
    const SLineFit& line = *series.m_objFit.m_objLine;
    std::transform(aDays.cbegin(), aDays.cend(), aValues.begin(),
                   [&line](double fDay) { return std::exp(line.m_fIntercept + line.m_fSlope * fDay); });
    look.nDisplayMode = COrmXYPlot::LineMode;
    plot.addDataLine(fitName(series), aDays.data(), aValues.data(), static_cast<int>(aDays.size()));
    plot.setDisplaySettings(fitName(series), look);
}
} // namespace

QImage GrowthPlot::draw(const QVector<SGrowthSeries>& lstSeries)
{
    QVector<QImage> lstPlots;
    for (const char* pszKind : {"SOLA", "NOVA"})
    {
        COrmXYPlot plot;
        plot.resize(kPlotSize);
        plot.setLogarithmic(true);
        std::size_t nSeries = 0;
        for (const SGrowthSeries& series : lstSeries)
        {
            if (series.m_strKind == QLatin1String(pszKind) && !series.m_objFit.m_lstUsed.isEmpty())
            {
                addSeries(plot, series, QColor(kColors.at(nSeries++ % kColors.size())));
                const QString strValue =
                    series.m_strValue == QLatin1String("total") ? QStringLiteral("total") : QStringLiteral("in the region");
                plot.setYAxisLabel(QStringLiteral("%1, %2 [%3]").arg(series.m_strKind, strValue, series.m_strUnit));
            }
        }
        if (nSeries > 0)
        {
            plot.setXAxisLabel(QStringLiteral("Days since the first time point"));
            lstPlots.append(plot.getPrintImage());
        }
    }
    if (lstPlots.isEmpty())
    {
        return {};
    }
    QImage picture(kPlotSize.width(), kPlotSize.height() * lstPlots.size(), QImage::Format_RGB32);
    QPainter painter(&picture);
    for (int nPlot = 0; nPlot < lstPlots.size(); ++nPlot)
    {
        painter.drawImage(0, kPlotSize.height() * nPlot, lstPlots.at(nPlot));
    }
    return picture;
}
