#include "CVolumeGeometry.h"

#include "CVoxelBlock.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>

namespace
{
constexpr int nBitsPerAxis = 21;                                ///< three axes fit into 64 bits
constexpr double fOpacityThrough = 0.95;                        ///< of a stretch of highest values as long as the source
constexpr double fOverlap = 4.0;                                ///< squares of two voxels cover four times a voxel's square
constexpr float fLowest = std::numeric_limits<float>::lowest(); ///< stands for values that are no number

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

/// A coordinate as a step of the grid, clamped to what a key can hold.
quint64 gridStep(float fCoordinate, double fLow, double fPitch)
{
    constexpr double fMost = (1 << nBitsPerAxis) - 1;
    const double fStep = std::round((fCoordinate - fLow) / fPitch);
    return fStep > 0.0 ? static_cast<quint64>(std::min(fStep, fMost)) : 0; // not a number gives 0
}
} // namespace

CVolumeGeometry::CVolumeGeometry(const CVoxelBlock& objVoxels, float fVoxelSize)
    : m_objVoxels(objVoxels), m_fVoxelSize(fVoxelSize), m_vecOrder(objVoxels.size()), m_vecValues(objVoxels.size())
{
    const auto finiteValue = [&](std::size_t nVoxel)
    {
        const float fValue = objVoxels.values()[nVoxel];
        return std::isfinite(fValue) ? fValue : fLowest;
    };
    OrmArray<quint64> vecKeys(size());
    for (std::size_t i = 0; i < size(); ++i)
        vecKeys[i] = static_cast<quint64>(orderedBits(finiteValue(i))) << 32 | i;
    sortByUpperHalf(vecKeys);
    for (std::size_t nPlace = 0; nPlace < size(); ++nPlace)
    {
        m_vecOrder[nPlace] = static_cast<quint32>(vecKeys[nPlace]);
        m_vecValues[nPlace] = finiteValue(m_vecOrder[nPlace]);
    }
    if (size() > 0 && m_vecValues.back() > fLowest)
        m_fHighest = m_vecValues.back();
    OrmArray<quint64>().swap(vecKeys);

    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        const OrmArray<float>& vecOfVoxels = objVoxels.coordinates(nAxis);
        m_avecCoordinates[nAxis].resize(size());
        std::transform(m_vecOrder.begin(), m_vecOrder.end(), m_avecCoordinates[nAxis].begin(),
                       [&](quint32 nVoxel) { return vecOfVoxels[nVoxel]; });
        for (const float fCoordinate : vecOfVoxels)
            m_afExtent[nAxis] = std::max(m_afExtent[nAxis], std::isfinite(fCoordinate) ? std::abs(fCoordinate) : 0.0f);
    }
}

quint32 CVolumeGeometry::name(std::size_t nPlace) const
{
    return m_objVoxels.name(m_vecOrder[nPlace]);
}

void CVolumeGeometry::sortByGrid() const
{
    std::array<float, 3> afLow;
    afLow.fill(std::numeric_limits<float>::max());
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        for (const float fCoordinate : m_objVoxels.coordinates(nAxis))
            afLow[nAxis] = std::min(afLow[nAxis], fCoordinate);
    }
    const auto step = [&](std::size_t nAxis, std::size_t nVoxel)
    { return gridStep(m_objVoxels.coordinates(nAxis)[nVoxel], afLow[nAxis], m_fVoxelSize); };
    OrmArray<quint64> vecCells(size());
    for (std::size_t i = 0; i < size(); ++i)
        vecCells[i] = step(2, i) << (2 * nBitsPerAxis) | step(1, i) << nBitsPerAxis | step(0, i);

    std::vector<quint32> vecVoxels(size()); // by cell
    std::iota(vecVoxels.begin(), vecVoxels.end(), 0U);
    if (!std::is_sorted(vecCells.begin(), vecCells.end())) // most loaders give the voxels in this order already
        std::sort(vecVoxels.begin(), vecVoxels.end(), [&](quint32 n1, quint32 n2) { return vecCells[n1] < vecCells[n2]; });

    std::vector<quint32> vecPlaces(size()); // by voxel
    for (std::size_t nPlace = 0; nPlace < size(); ++nPlace)
        vecPlaces[m_vecOrder[nPlace]] = static_cast<quint32>(nPlace);
    m_vecGrid.resize(size());
    for (std::size_t i = 0; i < size(); ++i)
    {
        m_vecGrid[i] = vecPlaces[vecVoxels[i]];
        const quint64 nChanged = i == 0 ? ~quint64(0) : vecCells[vecVoxels[i]] ^ vecCells[vecVoxels[i - 1]];
        if (nChanged >> (2 * nBitsPerAxis) != 0)
            m_vecPlanes.push_back(static_cast<quint32>(m_vecRows.size()));
        if (nChanged >> nBitsPerAxis != 0)
            m_vecRows.push_back(static_cast<quint32>(i));
    }
    m_vecPlanes.push_back(static_cast<quint32>(m_vecRows.size()));
    m_vecRows.push_back(static_cast<quint32>(size()));
}

const float* CVolumeGeometry::positions() const
{
    if (m_vecPositions.empty())
    {
        m_vecPositions.resize(3 * size());
        for (std::size_t i = 0; i < m_vecPositions.size(); ++i)
            m_vecPositions[i] = m_avecCoordinates[i % 3][i / 3];
    }
    return m_vecPositions.data();
}

std::vector<quint8> CVolumeGeometry::opacities() const
{
    std::vector<quint8> vecOpacities(size(), 0);
    if (!(m_fHighest > 0.0f))
        return vecOpacities;
    const auto nBulk = m_vecValues.end() - std::lower_bound(m_vecValues.begin(), m_vecValues.end(), m_fHighest / 2.0f);
    const double fThickness = std::cbrt(static_cast<double>(nBulk));
    const double fRate = std::log(1.0 - fOpacityThrough) / (fOverlap * fThickness * static_cast<double>(m_fHighest));
    for (std::size_t nPlace = size(); nPlace-- > 0 && m_vecValues[nPlace] > 0.0f;)
        vecOpacities[nPlace] = static_cast<quint8>(std::lround(255.0 * -std::expm1(fRate * static_cast<double>(m_vecValues[nPlace]))));
    return vecOpacities;
}

std::vector<quint32> CVolumeGeometry::backToFront(std::size_t nFirst, bool bNearerWithX, bool bNearerWithY, bool bNearerWithZ) const
{
    if (m_vecPlanes.empty())
        sortByGrid();
    std::vector<quint32> vecOrder;
    vecOrder.reserve(size() - nFirst);
    const std::size_t nPlanes = m_vecPlanes.size() - 1;
    for (std::size_t i = 0; i < nPlanes; ++i)
    {
        const std::size_t nPlane = bNearerWithZ ? i : nPlanes - 1 - i;
        const std::size_t nRows = m_vecPlanes[nPlane + 1] - m_vecPlanes[nPlane];
        for (std::size_t j = 0; j < nRows; ++j)
        {
            const std::size_t nRow = m_vecPlanes[nPlane] + (bNearerWithY ? j : nRows - 1 - j);
            const std::size_t nLength = m_vecRows[nRow + 1] - m_vecRows[nRow];
            for (std::size_t k = 0; k < nLength; ++k)
            {
                const quint32 nPlace = m_vecGrid[m_vecRows[nRow] + (bNearerWithX ? k : nLength - 1 - k)];
                if (nPlace >= nFirst)
                    vecOrder.push_back(static_cast<quint32>(nPlace - nFirst));
            }
        }
    }
    return vecOrder;
}
