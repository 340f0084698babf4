#include "COrmXYPlotAxis.h"

#include "OrmColorBarTicks.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace COrmXYPlotAxis
{
namespace
{
constexpr double fFewSteps = 20.0;    ///< up to here points stand in the middle of a step's width
constexpr double fEdgeOfX = 0.02;     ///< of the range, kept free at both ends otherwise
constexpr double fEdgeOfY = 0.03;     ///< of the y axis, kept free at both ends
constexpr double fLowestLog = 1e-140; ///< drawing ends at 1e-150 and 1e150
constexpr double fHighestLog = 1e140;
constexpr std::size_t nFewTicks = 3;

/// Multiples of the step in a range; rounding does not cost the ones at its ends.
std::vector<double> multiples(const SRange& sShown, double fStep, double fMost)
{
    const double fFirst = std::ceil(sShown.m_fLower / fStep - 1e-6);
    const double fLast = std::floor(sShown.m_fUpper / fStep + 1e-6);
    std::vector<double> vecTicks;
    const auto nTicks = static_cast<int>(std::clamp(fLast - fFirst + 1.0, 0.0, fMost));
    vecTicks.reserve(static_cast<std::size_t>(nTicks));
    for (int i = 0; i < nTicks; ++i)
        vecTicks.push_back((fFirst + i) * fStep);
    return vecTicks;
}

constexpr double fLargest = std::numeric_limits<double>::max();
constexpr double fFurthest = fLargest / 8.0; ///< up to here a little may be added to an end

/// A range that is wide enough for its ticks to differ and for a picture of it to be computed.
SRange drawable(const SRange& sData)
{
    constexpr double fSmallest = 1e-300;
    constexpr double fNarrowest = 1e-10; // of the greater end
    const double fGreater = std::max(std::fabs(sData.m_fLower), std::fabs(sData.m_fUpper));
    if (sData.width() == 0.0)
    {
        const double fHalf = fGreater == 0.0 ? 0.5 : std::max(fGreater / 2.0, fSmallest);
        return {sData.m_fLower - fHalf, sData.m_fUpper + fHalf};
    }
    const double fMargin = std::max(fGreater * fNarrowest, fSmallest);
    if (sData.width() >= fMargin)
        return sData;
    return {sData.m_fLower - fMargin, sData.m_fUpper + fMargin};
}

/// The axis of numbers near the end of what doubles hold. What lies further apart than they can tell is not shown.
SAxis axisOfLargest(const SRange& sData, int nMostTicks)
{
    SRange sShown = {0.0, sData.m_fUpper};
    if (sData.m_fUpper <= 0.0)
        sShown = {sData.m_fLower, 0.0};
    else if (sData.m_fLower < 0.0)
        sShown = {std::max(sData.m_fLower, -2.0 * fFurthest), std::min(sData.m_fUpper, 2.0 * fFurthest)};
    return {sShown, yTicks(sShown, nMostTicks), {}};
}

void extend(SRange& sRange, double fValue, bool bFirst)
{
    sRange.m_fLower = bFirst ? fValue : std::min(sRange.m_fLower, fValue);
    sRange.m_fUpper = bFirst ? fValue : std::max(sRange.m_fUpper, fValue);
}

double wishedStep(const SRange& sShown, double fStep, bool bWhole, double fMost)
{
    if (fStep > 0.0 && std::isfinite(fStep))
        return fStep;
    const double fRound = OrmColorBarTicks::niceStep(sShown.width() > 0.0 ? sShown.width() / fMost : 1.0);
    return bWhole ? std::max(1.0, fRound) : fRound;
}

/// These multiples of the powers of ten, as far as they are in the range.
std::vector<double> ofEachDecade(const SRange& sShown, const std::vector<int>& vecFactors, int nStride)
{
    std::vector<double> vecTicks;
    const int nFirst = static_cast<int>(std::floor(std::log10(sShown.m_fLower)));
    const int nLast = static_cast<int>(std::ceil(std::log10(sShown.m_fUpper)));
    for (int nDecade = nFirst; nDecade <= nLast; ++nDecade)
    {
        if (nDecade % nStride != 0)
            continue;
        for (const int nFactor : vecFactors)
        {
            const double fTick = nFactor * std::pow(10.0, nDecade);
            if (fTick >= sShown.m_fLower * (1.0 - 1e-9) && fTick <= sShown.m_fUpper * (1.0 + 1e-9))
                vecTicks.push_back(fTick);
        }
    }
    return vecTicks;
}
} // namespace

bool isLogarithmic(double fValue)
{
    return fValue >= fLowestLog && fValue <= fHighestLog;
}

void SDataRanges::add(const QVector<double>& vecX, const QVector<double>& vecY)
{
    for (int i = 0; i < std::min(vecX.size(), vecY.size()); ++i)
    {
        const double fX = vecX.at(i);
        const double fY = vecY.at(i);
        if (!std::isfinite(fX) || !std::isfinite(fY))
        {
            ++m_nMissing;
            continue;
        }
        extend(m_sX, fX, m_nPoints == 0);
        extend(m_sY, fY, m_nPoints == 0);
        m_bWholeX = m_bWholeX && fX == std::floor(fX);
        ++m_nPoints;
        if (isLogarithmic(fY))
        {
            extend(m_sYLogarithmic, fY, m_nLogarithmicPoints == 0);
            ++m_nLogarithmicPoints;
        }
    }
}

SAxis xAxis(const SRange& sData, double fStep, bool bWhole, int nMostTicks)
{
    const double fWished = wishedStep(sData, fStep, bWhole, std::max(1, nMostTicks));
    const double fEdge = sData.width() <= fFewSteps * fWished ? fWished / 2.0 : sData.width() * fEdgeOfX;
    return {{sData.m_fLower - fEdge, sData.m_fUpper + fEdge}, xTicks(sData, fStep, bWhole, nMostTicks), {}};
}

std::vector<double> xTicks(const SRange& sShown, double fStep, bool bWhole, int nMostTicks)
{
    const double fMost = std::max(1, nMostTicks);
    const double fWished = wishedStep(sShown, fStep, bWhole, fMost);
    const double fExcess = sShown.width() / fWished / fMost;
    return multiples(sShown, fExcess > 1.0 ? fWished * OrmColorBarTicks::niceStep(fExcess) : fWished, fMost + 1.0);
}

SAxis yAxis(const SRange& sData, bool bFromZero, int nMostTicks)
{
    SRange sShown = sData;
    if (bFromZero)
        sShown = {std::min(0.0, sData.m_fLower), std::max(0.0, sData.m_fUpper)};
    if (sShown.m_fUpper > fFurthest || sShown.m_fLower < -fFurthest)
        return axisOfLargest(sShown, nMostTicks);
    sShown = drawable(sShown);
    const double fStep = OrmColorBarTicks::niceStep(sShown.width() / std::max(1, nMostTicks));
    const SRange sSnapped = {std::floor(sShown.m_fLower / fStep + 1e-6) * fStep, std::ceil(sShown.m_fUpper / fStep - 1e-6) * fStep};
    const double fEdge = sSnapped.width() * fEdgeOfY;
    // Bars stand on the axis itself.
    const double fBelow = bFromZero && sSnapped.m_fLower == 0.0 ? 0.0 : fEdge;
    const double fAbove = bFromZero && sSnapped.m_fUpper == 0.0 ? 0.0 : fEdge;
    return {{sSnapped.m_fLower - fBelow, sSnapped.m_fUpper + fAbove}, yTicks(sSnapped, std::max(1, nMostTicks) + 2), {}};
}

std::vector<double> yTicks(const SRange& sShown, int nMostTicks)
{
    const double fMost = std::max(1, nMostTicks);
    return multiples(sShown, OrmColorBarTicks::niceStep(sShown.width() / fMost), fMost + 1.0);
}

SAxis logarithmicAxis(const SRange& sData, int nMostTicks)
{
    constexpr double fSmallestEdge = 0.05; // decades
    const double fLower = std::log10(sData.m_fLower);
    const double fUpper = std::log10(sData.m_fUpper);
    const double fEdge = std::max(fSmallestEdge, (fUpper - fLower) * 0.05);
    return logarithmicTicks({std::pow(10.0, fLower - fEdge), std::pow(10.0, fUpper + fEdge)}, nMostTicks);
}

SAxis logarithmicTicks(const SRange& sShown, int nMostTicks)
{
    SAxis sAxis = {sShown, {}, {}};
    const auto nMost = static_cast<std::size_t>(std::max(static_cast<int>(nFewTicks), nMostTicks));
    const std::vector<int> vecAll = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const std::vector<double> vecFinest = ofEachDecade(sShown, vecAll, 1);
    if (vecFinest.size() < nFewTicks)
    {
        sAxis.m_vecTicks = yTicks(sShown, static_cast<int>(nMost));
        return sAxis;
    }
    constexpr std::size_t nMostMinorTicks = 120;
    if (vecFinest.size() <= nMostMinorTicks)
        sAxis.m_vecMinorTicks = vecFinest;
    for (const std::vector<int>& vecFactors : {vecAll, {1, 2, 3, 5}, {1, 2, 5}, {1, 3}, {1}})
    {
        sAxis.m_vecTicks = ofEachDecade(sShown, vecFactors, 1);
        if (sAxis.m_vecTicks.size() <= nMost)
            return sAxis;
    }
    for (int nStride = 2; sAxis.m_vecTicks.size() > nMost; ++nStride)
        sAxis.m_vecTicks = ofEachDecade(sShown, {1}, nStride);
    return sAxis;
}

SRange zoomed(const SRange& sShown, const SRange& sWhole, double fCentre, double fFactor, double fNarrowest)
{
    const double fWidth = std::min(std::max(sShown.width() * fFactor, fNarrowest), sWhole.width());
    const double fReal = sShown.width() > 0.0 ? fWidth / sShown.width() : 1.0;
    const double fLower = fCentre - (fCentre - sShown.m_fLower) * fReal;
    return moved({fLower, fLower + fWidth}, sWhole, 0.0);
}

SRange moved(const SRange& sShown, const SRange& sWhole, double fBy)
{
    if (sShown.width() >= sWhole.width())
        return sWhole;
    const double fLower = std::clamp(sShown.m_fLower + fBy, sWhole.m_fLower, sWhole.m_fUpper - sShown.width());
    return {fLower, std::min(fLower + sShown.width(), sWhole.m_fUpper)};
}
} // namespace COrmXYPlotAxis
