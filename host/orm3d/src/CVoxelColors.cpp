#include "CVoxelColors.h"

#include "OrmColorTables.h"

#include <algorithm>
#include <cmath>
#include <limits>

CVoxelColors::CVoxelColors(const COrmPalette& objPalette, const SDrawnValues& sDrawn, double fOpacityRate)
    : m_objPalette(objPalette), m_objPlaces(objPalette.range()), m_fOpacityRate(fOpacityRate), m_nFirst(bitsOf(sDrawn.m_fLeast))
{
    constexpr quint32 nMostRanges = 8192;
    if (!(sDrawn.m_fLeast <= sDrawn.m_fHighest))
        return;
    const quint32 nSpan = bitsOf(sDrawn.m_fHighest) - m_nFirst;
    while (nSpan >> m_nShift >= nMostRanges)
        ++m_nShift;
    const quint32 nGreatest = bitsOf(std::numeric_limits<float>::max());
    const auto colorAt = [&](quint32 nBits)
    {
        const quint32 nFinite = std::min(nBits, nGreatest);
        float fValue = 0.0f;
        std::memcpy(&fValue, &nFinite, sizeof fValue);
        return compute(fValue);
    };
    int nColor = colorAt(m_nFirst);
    for (quint32 nRange = 0; nRange <= nSpan >> m_nShift; ++nRange)
    {
        const int nNext = colorAt(m_nFirst + ((nRange + 1) << m_nShift));
        m_vecColors.push_back(nColor == nNext ? nColor : -1);
        nColor = nNext;
    }
}

int CVoxelColors::compute(float fValue) const
{
    constexpr int nLast = OrmColorTables::nTableSize - 1;
    const auto f = static_cast<double>(fValue);
    const int nEntry = OrmColorScale::toIndex(m_objPlaces.position(f) * nLast, nLast + 1);
    return nEntry * nOpacities + OrmColorScale::toIndex(-std::expm1(m_fOpacityRate * f) * (nOpacities - 1), nOpacities);
}
