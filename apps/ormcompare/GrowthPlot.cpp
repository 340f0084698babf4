#include "GrowthPlot.h"

#include "COrmXYPlot.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace
{
constexpr int kWidth = 900;
constexpr int kHeight = 560;
/// The plot gives a third of its height to the legend at most, which has a line of its own for each series.
constexpr int kHeightOfASeries = 100;
constexpr int kMaxHeight = 10'000;
constexpr std::size_t kPointStyles = 5; ///< that the plot knows

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

/// @param nSeries number of the series in its plot: where the colours begin again, the points change
void addSeries(COrmXYPlot& plot, const SGrowthSeries& series, std::size_t nSeries)
{
    const QColor color(kColors.at(nSeries % kColors.size()));
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
    look.objPointProperties.nPointStyle = static_cast<int>(nSeries / kColors.size() % kPointStyles);
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
        plot.setLogarithmic(true);
        std::size_t nSeries = 0;
        for (const SGrowthSeries& series : lstSeries)
        {
            if (series.m_strKind == QLatin1String(pszKind) && !series.m_objFit.m_lstUsed.isEmpty())
            {
                addSeries(plot, series, nSeries++);
                const QString strValue =
                    series.m_strValue == QLatin1String("total") ? QStringLiteral("total") : QStringLiteral("in the region");
                plot.setYAxisLabel(QStringLiteral("%1, %2 [%3]").arg(series.m_strKind, strValue, series.m_strUnit));
            }
        }
        if (nSeries > 0)
        {
            plot.setXAxisLabel(QStringLiteral("Days since the first time point"));
            plot.resize(kWidth, std::clamp(kHeightOfASeries * static_cast<int>(nSeries), kHeight, kMaxHeight));
            lstPlots.append(plot.getPrintImage());
        }
    }
    if (lstPlots.isEmpty())
    {
        return {};
    }
    const int nHeight =
        std::accumulate(lstPlots.cbegin(), lstPlots.cend(), 0, [](int nSum, const QImage& plot) { return nSum + plot.height(); });
    QImage picture(kWidth, nHeight, QImage::Format_RGB32);
    QPainter painter(&picture);
    int nTop = 0;
    for (const QImage& plot : qAsConst(lstPlots))
    {
        painter.drawImage(0, nTop, plot);
        nTop += plot.height();
    }
    return picture;
}
