#include "SVolumeLook.h"

#include "OrmColorScale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
/// The least float that is above 0 and not below a number.
float leastFrom(double fLeast)
{
    using Limits = std::numeric_limits<float>;
    if (!(fLeast > 0.0))
        return Limits::denorm_min();
    if (fLeast > static_cast<double>(Limits::max()))
        return Limits::infinity();
    const auto fNearest = static_cast<float>(fLeast);
    return static_cast<double>(fNearest) < fLeast ? std::nextafter(fNearest, Limits::infinity()) : fNearest;
}
} // namespace

bool SVolumeLook::operator==(const SVolumeLook& sOther) const
{
    const OrmColorScale::SRange sRange = m_objPalette.range();
    const OrmColorScale::SRange sOtherRange = sOther.m_objPalette.range();
    return m_objPalette.lut() == sOther.m_objPalette.lut() && sRange.m_fMin == sOtherRange.m_fMin && sRange.m_fMax == sOtherRange.m_fMax &&
           sRange.m_bLog == sOtherRange.m_bLog && m_fThreshold == sOther.m_fThreshold;
}

SDrawnValues SVolumeLook::drawn(float fHighest) const
{
    const OrmColorScale::SRange sRange = OrmColorScale::drawnRange(m_objPalette.range());
    const double fThreshold = m_objPalette.logScale() == 0 ? m_fThreshold * static_cast<double>(fHighest) : 0.0;
    return {leastFrom(std::max({fThreshold, std::min(sRange.m_fMin, sRange.m_fMax)})), fHighest};
}
