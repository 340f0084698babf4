#include "CVolumeGeometry.h"

#include "CVoxelBlock.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

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

/// A coordinate as a step of the grid, clamped to what a key can hold.
quint64 gridStep(float fCoordinate, double fLow, double fPitch)
{
    constexpr double fMost = (1 << nBitsPerAxis) - 1;
    const double fStep = std::round((fCoordinate - fLow) / fPitch);
    return fStep > 0.0 ? static_cast<quint64>(std::min(fStep, fMost)) : 0; // not a number gives 0
}
} // namespace

CVolumeGeometry::CVolumeGeometry(const CVoxelBlock& objVoxels, float fVoxelSize)
{
    const std::size_t nVoxels = objVoxels.size();
    const auto finiteValue = [&](std::size_t nVoxel)
    {
        const float fValue = objVoxels.values()[nVoxel];
        return std::isfinite(fValue) ? fValue : fLowest;
    };
    std::vector<quint64> vecKeys(nVoxels);
    for (std::size_t i = 0; i < nVoxels; ++i)
        vecKeys[i] = static_cast<quint64>(orderedBits(finiteValue(i))) << 32 | i;
    std::sort(vecKeys.begin(), vecKeys.end());

    m_vecValues.resize(nVoxels);
    m_vecNames.resize(nVoxels);
    std::vector<quint32> vecOrder(nVoxels);
    for (std::size_t nPlace = 0; nPlace < nVoxels; ++nPlace)
    {
        const auto nVoxel = static_cast<quint32>(vecKeys[nPlace]);
        vecOrder[nPlace] = nVoxel;
        m_vecNames[nPlace] = objVoxels.name(nVoxel);
        m_vecValues[nPlace] = finiteValue(nVoxel);
    }
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        std::vector<float>& vecCoordinates = m_avecCoordinates[nAxis];
        vecCoordinates.reserve(nVoxels);
        for (const quint32 nVoxel : vecOrder)
            vecCoordinates.push_back(objVoxels.coordinates(nAxis)[nVoxel]);
        for (const float fCoordinate : vecCoordinates)
        {
            if (std::isfinite(fCoordinate))
                m_afExtent[nAxis] = std::max(m_afExtent[nAxis], std::abs(fCoordinate));
        }
    }
    if (nVoxels > 0 && m_vecValues.back() > fLowest)
        m_fHighest = m_vecValues.back();
    sortByGrid(vecOrder, fVoxelSize);
}

void CVolumeGeometry::sortByGrid(const std::vector<quint32>& vecVoxels, float fVoxelSize)
{
    const std::size_t nVoxels = size();
    float afLow[3] = {std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        for (const float fCoordinate : m_avecCoordinates[nAxis])
            afLow[nAxis] = std::min(afLow[nAxis], fCoordinate);
    }
    const auto step = [&](std::size_t nAxis, std::size_t nPlace)
    { return gridStep(m_avecCoordinates[nAxis][nPlace], afLow[nAxis], fVoxelSize); };

    std::vector<std::pair<quint64, quint32>> vecCells(nVoxels); // cell and place, by voxel
    for (std::size_t nPlace = 0; nPlace < nVoxels; ++nPlace)
    {
        const quint64 nCell = step(2, nPlace) << (2 * nBitsPerAxis) | step(1, nPlace) << nBitsPerAxis | step(0, nPlace);
        vecCells[vecVoxels[nPlace]] = {nCell, static_cast<quint32>(nPlace)};
    }
    if (!std::is_sorted(vecCells.begin(), vecCells.end())) // most loaders give the voxels in this order already
        std::sort(vecCells.begin(), vecCells.end());

    m_vecGrid.resize(nVoxels);
    for (std::size_t i = 0; i < nVoxels; ++i)
    {
        m_vecGrid[i] = vecCells[i].second;
        const quint64 nChanged = i == 0 ? ~quint64(0) : vecCells[i].first ^ vecCells[i - 1].first;
        if (nChanged >> (2 * nBitsPerAxis) != 0)
            m_vecPlanes.push_back(static_cast<quint32>(m_vecRows.size()));
        if (nChanged >> nBitsPerAxis != 0)
            m_vecRows.push_back(static_cast<quint32>(i));
    }
    m_vecPlanes.push_back(static_cast<quint32>(m_vecRows.size()));
    m_vecRows.push_back(static_cast<quint32>(nVoxels));
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
