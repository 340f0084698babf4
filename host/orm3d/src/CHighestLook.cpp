#include "CHighestLook.h"

#include "CVoxelBlock.h"
#include "CVoxelColors.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>

namespace
{
/// A number that is ordered as the finite float is.
quint32 orderedBits(float fValue)
{
    quint32 nBits = 0;
    std::memcpy(&nBits, &fValue, sizeof nBits);
    return (nBits & 0x80000000U) != 0 ? ~nBits : nBits | 0x80000000U;
}

/// Sorts by the upper half of the numbers, digit by digit: what is equal in it keeps its order.
void sortByUpperHalf(OrmArray<quint64>& vecKeys)
{
    constexpr int nDigitBits = 11;
    constexpr std::size_t nDigits = 1 << nDigitBits;
    OrmArray<quint64> vecSorted(vecKeys.size());
    for (int nShift = 32; nShift < 64; nShift += nDigitBits)
    {
        const auto digit = [=](quint64 nKey) { return static_cast<std::size_t>(nKey >> nShift) % nDigits; };
        std::array<std::size_t, nDigits> anNext{}; // where the next number with this digit goes
        for (const quint64 nKey : vecKeys)
            ++anNext[digit(nKey)];
        std::exclusive_scan(anNext.begin(), anNext.end(), anNext.begin(), std::size_t(0));
        for (const quint64 nKey : vecKeys)
            vecSorted[anNext[digit(nKey)]++] = nKey;
        vecKeys.swap(vecSorted);
    }
}
} // namespace

CValueOrder::CValueOrder(const CVoxelBlock& objVoxels) : m_vecValues(objVoxels.size())
{
    const auto finiteValue = [&](std::size_t nVoxel)
    {
        const float fValue = objVoxels.values()[nVoxel];
        return std::isfinite(fValue) ? fValue : std::numeric_limits<float>::lowest();
    };
    OrmArray<quint64> vecKeys(size());
    for (std::size_t i = 0; i < size(); ++i)
        vecKeys[i] = static_cast<quint64>(orderedBits(finiteValue(i))) << 32 | i;
    sortByUpperHalf(vecKeys);
    std::transform(vecKeys.begin(), vecKeys.end(), m_vecValues.begin(),
                   [&](quint64 nKey) { return finiteValue(static_cast<quint32>(nKey)); });
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        m_avecCoordinates[nAxis].resize(size());
        std::transform(vecKeys.begin(), vecKeys.end(), m_avecCoordinates[nAxis].begin(),
                       [&](quint64 nKey) { return objVoxels.position(static_cast<quint32>(nKey))[nAxis]; });
    }
}

CHighestLook::CHighestLook(const CVoxelBlock& objVoxels, const SVolumeLook& sLook) : m_sLook(sLook)
{
    const SDrawnValues sDrawn = sLook.drawn(objVoxels.highest());
    const OrmArray<float>& vecValues = objVoxels.valueOrder().values();
    const auto itFirst = std::lower_bound(vecValues.begin(), vecValues.end(), sDrawn.m_fLeast);
    m_nFirst = static_cast<std::size_t>(itFirst - vecValues.begin());
    m_vecColors.resize(4 * (vecValues.size() - m_nFirst));
    const CVoxelColors objColors(sLook.m_objPalette, sDrawn, -std::numeric_limits<double>::infinity());
    quint8* pColor = m_vecColors.data();
    for (auto it = itFirst; it != vecValues.end(); ++it, pColor += 4)
        objColors.write(*it, pColor);
}
