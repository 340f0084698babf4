#include "GrowthFit.h"

#include <boost/math/distributions/students_t.hpp>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
constexpr double kUpperQuantile = 0.975; ///< of a two-sided interval of 95 %
const double g_fLn2 = std::log(2.0);

bool allEqual(const QVector<double>& lstNumbers)
{
    return std::all_of(lstNumbers.cbegin(), lstNumbers.cend(), [&](double fNumber) { return fNumber == lstNumbers.constFirst(); });
}

/// The mean; exactly the number itself where all are the same.
double mean(const QVector<double>& lstNumbers)
{
    if (allEqual(lstNumbers))
    {
        return lstNumbers.constFirst();
    }
    return std::accumulate(lstNumbers.cbegin(), lstNumbers.cend(), 0.0) / lstNumbers.size();
}
} // namespace

std::optional<SLineFit> GrowthFit::line(const QVector<double>& lstX, const QVector<double>& lstY)
{
    const int nPoints = lstX.size();
    if (nPoints < 2 || allEqual(lstX))
    {
        return std::nullopt;
    }
    // About the means the sums stay small, so that little is lost in their differences.
    const double fMeanX = mean(lstX);
    const double fMeanY = mean(lstY);
    double fSumXX = 0.0;
    double fSumXY = 0.0;
    double fSumYY = 0.0;
    for (int nAt = 0; nAt < nPoints; ++nAt)
    {
        fSumXX += (lstX.at(nAt) - fMeanX) * (lstX.at(nAt) - fMeanX);
        fSumXY += (lstX.at(nAt) - fMeanX) * (lstY.at(nAt) - fMeanY);
        fSumYY += (lstY.at(nAt) - fMeanY) * (lstY.at(nAt) - fMeanY);
    }
    SLineFit fit;
    fit.m_nPoints = nPoints;
    fit.m_fSlope = fSumXY / fSumXX;
    fit.m_fIntercept = fMeanY - fit.m_fSlope * fMeanX;
    double fSquares = 0.0;
    for (int nAt = 0; nAt < nPoints; ++nAt)
    {
        fit.m_lstResiduals.append(lstY.at(nAt) - fMeanY - fit.m_fSlope * (lstX.at(nAt) - fMeanX));
        fSquares += fit.m_lstResiduals.constLast() * fit.m_lstResiduals.constLast();
    }
    if (fSumYY > 0.0)
    {
        fit.m_fR2 = std::max(0.0, 1.0 - fSquares / fSumYY);
    }
    if (nPoints > 2)
    {
        fit.m_fSlopeError = std::sqrt(fSquares / (nPoints - 2) / fSumXX);
    }
    return fit;
}

std::optional<double> GrowthFit::halfInterval(const SLineFit& fit)
{
    if (!fit.m_fSlopeError)
    {
        return std::nullopt;
    }
    const boost::math::students_t_distribution<double> student(fit.m_nPoints - 2);
    return boost::math::quantile(student, kUpperQuantile) * *fit.m_fSlopeError;
}

SGrowthFit GrowthFit::fit(const QVector<SGrowthPoint>& lstPoints)
{
    SGrowthFit growth;
    QVector<double> lstDays;
    QVector<double> lstLogarithms;
    for (const SGrowthPoint& point : lstPoints)
    {
        if (!std::isfinite(point.m_fDays) || !std::isfinite(point.m_fValue) || point.m_fValue <= 0.0)
        {
            ++growth.m_nLeftOut;
            continue;
        }
        growth.m_lstUsed.append(point);
        lstDays.append(point.m_fDays);
        lstLogarithms.append(std::log(point.m_fValue));
    }
    growth.m_objLine = line(lstDays, lstLogarithms);
    if (const std::optional<double> fHalf = growth.m_objLine ? halfInterval(*growth.m_objLine) : std::nullopt)
    {
        growth.m_objRate = SInterval{growth.m_objLine->m_fSlope - *fHalf, growth.m_objLine->m_fSlope + *fHalf};
    }
    return growth;
}

double SGrowthFit::start() const
{
    return m_objLine ? std::exp(m_objLine->m_fIntercept) : std::numeric_limits<double>::quiet_NaN();
}

std::optional<double> SGrowthFit::doublingTime() const
{
    return m_objLine && m_objLine->m_fSlope > 0.0 ? std::optional<double>(g_fLn2 / m_objLine->m_fSlope) : std::nullopt;
}

std::optional<SInterval> SGrowthFit::doublingTimeInterval() const
{
    if (!m_objRate || m_objRate->m_fHigh <= 0.0)
    {
        return std::nullopt;
    }
    const bool bBounded = m_objRate->m_fLow > 0.0;
    return SInterval{g_fLn2 / m_objRate->m_fHigh, bBounded ? g_fLn2 / m_objRate->m_fLow : std::numeric_limits<double>::infinity()};
}
