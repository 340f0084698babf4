#pragma once

#include <QVector>

#include <limits>
#include <optional>

/// A value at a time.
struct SGrowthPoint
{
    double m_fDays = std::numeric_limits<double>::quiet_NaN();  ///< since the first time point; NaN: unknown
    double m_fValue = std::numeric_limits<double>::quiet_NaN(); ///< NaN: none
};

/// A straight line y = intercept + slope x.
struct SLineFit
{
    int m_nPoints = 0;                                       ///< points it was fitted to
    double m_fSlope = 0.0;                                   ///< of the line
    double m_fIntercept = 0.0;                               ///< of the line
    double m_fR2 = std::numeric_limits<double>::quiet_NaN(); ///< coefficient of determination; NaN where all y are equal
    std::optional<double> m_fSlopeError;                     ///< standard error of the slope; none for two points
    QVector<double> m_lstResiduals;                          ///< y minus the line, for each point
};

/// Two ends of an interval.
struct SInterval
{
    double m_fLow = 0.0;
    double m_fHigh = 0.0; ///< may be infinite
};

/// Growth as value = A exp(rate t), t in days.
struct SGrowthFit
{
    int m_nLeftOut = 0;                 ///< points without a day, or without a value above 0
    QVector<SGrowthPoint> m_lstUsed;    ///< the others, in the order given
    std::optional<SLineFit> m_objLine;  ///< of ln(value) against days; none without two different days
    std::optional<SInterval> m_objRate; ///< 95 % confidence interval of the rate, per day; none for fewer than three points

    /// Value at day 0.
    double start() const;
    /// Days in which the value doubles; none where it does not grow.
    std::optional<double> doublingTime() const;
    /// 95 % confidence interval of the doubling time, days. Its upper end is infinite where the rate's interval contains no growth; none
    /// where there is no interval of the rate, or none of its rates is growth.
    std::optional<SInterval> doublingTimeInterval() const;
};

/// Log-linear growth.
namespace GrowthFit
{
/// Fits a straight line by ordinary least squares. None where the x are not two different numbers at least. All numbers are to be finite,
/// and both lists of one length.
/// Source: N. R. Draper, H. Smith, Applied Regression Analysis, 3rd edition, Wiley 1998, chapter 1.
std::optional<SLineFit> line(const QVector<double>& lstX, const QVector<double>& lstY);

/// Half the width of the two-sided 95 % confidence interval of a slope: its standard error times the 97.5 % quantile of Student's t
/// distribution with points - 2 degrees of freedom (same source, section 1.4). None for a line through two points.
std::optional<double> halfInterval(const SLineFit& fit);

/// Fits value = A exp(rate t) by ordinary least squares of ln(value) against the days.
SGrowthFit fit(const QVector<SGrowthPoint>& lstPoints);
} // namespace GrowthFit
