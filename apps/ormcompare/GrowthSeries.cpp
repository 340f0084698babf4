#include "GrowthSeries.h"

#include "OrmCsv.h"

#include <QMap>

#include <cmath>

namespace
{
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// What the results of one sequence add up to.
struct SSequencePoint
{
    QString m_strSequence;
    double m_fDays = kNone;
    QVector<double> m_lstValues;
};

/// A series before its fit.
struct SCollected
{
    SGrowthSeries m_objSeries;
    QVector<SSequencePoint> m_lstPoints; ///< in the order of the report
};

/// The series and points of a report, each found by its names.
class CCollection
{
public:
    explicit CCollection(bool bMeasured) : m_strValue(bMeasured ? QStringLiteral("selected_total") : QStringLiteral("total")) {}

    SSequencePoint& point(const QString& strKind, const QString& strSequence, const SResultTime& time)
    {
        const QStringList lstName{time.m_strSubject, strKind};
        if (!m_mapSeries.contains(lstName))
        {
            m_mapSeries.insert(lstName, m_lstSeries.size());
            SCollected collected;
            collected.m_objSeries.m_strSubject = time.m_strSubject;
            collected.m_objSeries.m_strKind = strKind;
            collected.m_objSeries.m_strValue = m_strValue;
            m_lstSeries.append(collected);
        }
        const int nSeries = m_mapSeries.value(lstName);
        QVector<SSequencePoint>& lstPoints = m_lstSeries[nSeries].m_lstPoints;
        const QStringList lstPointName{strKind, strSequence};
        if (!m_mapPoints.contains(lstPointName))
        {
            m_mapPoints.insert(lstPointName, lstPoints.size());
            lstPoints.append({strSequence, time.m_fDays, {}});
        }
        return lstPoints[m_mapPoints.value(lstPointName)];
    }
    void setUnit(const QString& strSubject, const QString& strKind, const QString& strUnit)
    {
        m_lstSeries[m_mapSeries.value({strSubject, strKind})].m_objSeries.m_strUnit = strUnit;
    }
    const QVector<SCollected>& series() const { return m_lstSeries; }

private:
    QString m_strValue;
    QVector<SCollected> m_lstSeries;
    QMap<QStringList, int> m_mapSeries; ///< subject and kind
    QMap<QStringList, int> m_mapPoints; ///< kind and sequence, which has one subject
};

/// The geometric mean; NaN where there is no number, or one that has no logarithm.
double geometricMean(const QVector<double>& lstValues)
{
    double fSum = 0.0;
    for (const double fValue : lstValues)
    {
        fSum += fValue > 0.0 ? std::log(fValue) : kNone;
    }
    // A single value stays what it is to its last digit.
    return lstValues.size() == 1 && lstValues.constFirst() > 0.0 ? lstValues.constFirst()
           : lstValues.isEmpty()                                 ? kNone
                                                                 : std::exp(fSum / lstValues.size());
}

QString number(const std::optional<double>& fNumber)
{
    return fNumber ? OrmCsv::number(*fNumber) : QString();
}

QString numbers(const QVector<double>& lstNumbers)
{
    QStringList lstTexts;
    for (const double fNumber : lstNumbers)
    {
        lstTexts.append(OrmCsv::number(fNumber));
    }
    return lstTexts.join(QLatin1Char(' '));
}

QString aboutInterval(const SGrowthFit& fit)
{
    if (!fit.m_objLine)
    {
        return QStringLiteral("no fit: fewer than two days with a value");
    }
    if (!fit.m_objRate)
    {
        return QStringLiteral("none: fewer than three points");
    }
    const std::optional<SInterval> interval = fit.doublingTimeInterval();
    if (!interval)
    {
        return QStringLiteral("none: no growth");
    }
    return std::isinf(interval->m_fHigh) ? QStringLiteral("unbounded: contains no growth") : QStringLiteral("bounded");
}

QStringList fields(const SGrowthSeries& series)
{
    const SGrowthFit& fit = series.m_objFit;
    const SLineFit line = fit.m_objLine.value_or(SLineFit());
    const auto ifFitted = [&fit](double fNumber) { return fit.m_objLine ? OrmCsv::number(fNumber) : QString(); };
    const SInterval none{kNone, kNone};
    const SInterval rate = fit.m_objRate.value_or(none);
    const SInterval doubling = fit.doublingTimeInterval().value_or(none);
    QVector<double> lstDays;
    for (const SGrowthPoint& point : fit.m_lstUsed)
    {
        lstDays.append(point.m_fDays);
    }
    return {series.m_strSubject,
            series.m_strKind,
            series.m_strUnit,
            series.m_strValue,
            QString::number(fit.m_lstUsed.size()),
            QString::number(fit.m_nLeftOut),
            ifFitted(line.m_fSlope),
            number(line.m_fSlopeError),
            OrmCsv::number(rate.m_fLow),
            OrmCsv::number(rate.m_fHigh),
            ifFitted(fit.start()),
            number(fit.doublingTime()),
            OrmCsv::number(doubling.m_fLow),
            OrmCsv::number(doubling.m_fHigh),
            aboutInterval(fit),
            ifFitted(line.m_fR2),
            numbers(lstDays),
            numbers(line.m_lstResiduals)};
}
} // namespace

QVector<SGrowthSeries> GrowthSeries::of(const SCompareReport& report)
{
    CCollection collection(report.m_bMeasured);
    for (const SLoadedResult& result : report.m_lstResults)
    {
        collection.point(result.m_strKind, result.m_strSequence, result.m_objTime)
            .m_lstValues.append(report.m_bMeasured ? result.m_fSelectedTotal : result.m_fTotal);
        collection.setUnit(result.m_objTime.m_strSubject, result.m_strKind, result.m_strUnit);
    }
    for (const SFailedResult& failed : report.m_lstFailed)
    {
        collection.point(failed.m_strKind, failed.m_strSequence, failed.m_objTime);
    }
    for (const SEmptyTimePoint& empty : report.m_lstEmpty)
    {
        collection.point(empty.m_strKind, empty.m_strSequence, empty.m_objTime);
    }
    QVector<SGrowthSeries> lstSeries;
    for (const SCollected& collected : collection.series())
    {
        QVector<SGrowthPoint> lstPoints;
        for (const SSequencePoint& point : collected.m_lstPoints)
        {
            lstPoints.append({point.m_fDays, geometricMean(point.m_lstValues)});
        }
        lstSeries.append(collected.m_objSeries);
        lstSeries.last().m_objFit = GrowthFit::fit(lstPoints);
    }
    return lstSeries;
}

QByteArray GrowthSeries::csv(const QVector<SGrowthSeries>& lstSeries)
{
    QByteArray aTable = OrmCsv::line({"subject", "kind", "unit", "value", "points", "left_out", "rate_per_day", "rate_standard_error",
                                      "rate_low_95", "rate_high_95", "value_at_day_0", "doubling_time_days", "doubling_time_low_95",
                                      "doubling_time_high_95", "doubling_time_interval", "r2", "days", "residuals"});
    for (const SGrowthSeries& series : lstSeries)
    {
        aTable += OrmCsv::line(fields(series));
    }
    return aTable;
}
