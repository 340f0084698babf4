#include "OrmColorScale.h"

#include <algorithm>
#include <cmath>

namespace OrmColorScale
{
namespace
{
double clampedFraction(double fFraction)
{
    return fFraction > 0.0 ? std::min(fFraction, 1.0) : 0.0; // not a number gives 0
}
} // namespace

SRange drawnRange(const SRange& sRange)
{
    SRange sDrawn = sRange;
    if (!sDrawn.m_bLog)
        return sDrawn;
    if (!(std::max(sDrawn.m_fMin, sDrawn.m_fMax) > 0.0))
    {
        sDrawn.m_bLog = false;
        return sDrawn;
    }
    if (sDrawn.m_fMin <= 0.0)
        sDrawn.m_fMin = sDrawn.m_fMax * fLogFloor;
    if (sDrawn.m_fMax <= 0.0)
        sDrawn.m_fMax = sDrawn.m_fMin * fLogFloor;
    return sDrawn;
}

bool isPoint(const SRange& sRange)
{
    const SRange sDrawn = drawnRange(sRange);
    return sDrawn.m_fMin == sDrawn.m_fMax;
}

CPlaces::CPlaces(const SRange& sRange)
    : m_sDrawn(drawnRange(sRange)),
      m_fWidth(m_sDrawn.m_bLog ? std::log(m_sDrawn.m_fMax / m_sDrawn.m_fMin) : m_sDrawn.m_fMax - m_sDrawn.m_fMin),
      m_fWithoutLog(m_sDrawn.m_fMin < m_sDrawn.m_fMax ? 0.0 : 1.0)
{
}

double CPlaces::position(double fValue) const
{
    if (std::isnan(fValue))
        return 0.0;
    if (m_sDrawn.m_fMin == m_sDrawn.m_fMax)
        return fValue < m_sDrawn.m_fMin ? 0.0 : fValue > m_sDrawn.m_fMin ? 1.0 : 0.5;
    if (!m_sDrawn.m_bLog)
        return clampedFraction((fValue - m_sDrawn.m_fMin) / m_fWidth);
    if (fValue <= 0.0)
        return m_fWithoutLog;
    return clampedFraction(std::log(fValue / m_sDrawn.m_fMin) / m_fWidth);
}

double position(const SRange& sRange, double fValue)
{
    return CPlaces(sRange).position(fValue);
}

double valueAt(const SRange& sRange, double fPosition)
{
    const SRange sDrawn = drawnRange(sRange);
    const double fFraction = clampedFraction(fPosition);
    if (!sDrawn.m_bLog)
        return sDrawn.m_fMin + fFraction * (sDrawn.m_fMax - sDrawn.m_fMin);
    return sDrawn.m_fMin * std::pow(sDrawn.m_fMax / sDrawn.m_fMin, fFraction);
}

bool isBelow(const SRange& sRange, double fValue)
{
    const SRange sDrawn = drawnRange(sRange);
    return !(fValue >= std::min(sDrawn.m_fMin, sDrawn.m_fMax));
}

int toIndex(double fValue, int nCount)
{
    constexpr double fHalf = 0.5;
    if (!(fValue > 0.0))
        return 0;
    return fValue >= nCount - 1 ? nCount - 1 : static_cast<int>(fValue + fHalf);
}
} // namespace OrmColorScale
