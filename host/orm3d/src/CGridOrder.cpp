#include "CGridOrder.h"

#include "CVoxelBlock.h"

#include <algorithm>
#include <array>
#include <utility>

namespace
{
constexpr int nBitsPerAxis = 21; ///< three axes fit into 64 bits

} // namespace

/// The cells of a grid as numbers that rise with z, then y, then x.
class CGridOrder::CCells
{
public:
    CCells(const CVoxelBlock& objVoxels, float fVoxelSize) : m_objVoxels(objVoxels), m_fPerMillimetre(1.0 / static_cast<double>(fVoxelSize))
    {
        constexpr double fMiddle = 1 << (nBitsPerAxis - 1); // the first voxel's cell, so that there is room on either side of it
        for (std::size_t nAxis = 0; nAxis < 3 && objVoxels.size() > 0; ++nAxis)
            m_afOffset[nAxis] = fMiddle + 0.5 - static_cast<double>(objVoxels.position(0)[nAxis]) * m_fPerMillimetre;
    }
    quint64 operator[](std::size_t nVoxel) const
    {
        return step(2, nVoxel) << (2 * nBitsPerAxis) | step(1, nVoxel) << nBitsPerAxis | step(0, nVoxel);
    }

private:
    /// A coordinate in steps of the grid, clamped to what fits.
    quint64 step(std::size_t nAxis, std::size_t nVoxel) const
    {
        constexpr double fMost = (1 << nBitsPerAxis) - 1;
        const double fStep = static_cast<double>(m_objVoxels.position(nVoxel)[nAxis]) * m_fPerMillimetre + m_afOffset[nAxis];
        return fStep > 0.0 ? static_cast<quint64>(std::min(fStep, fMost)) : 0; // not a number gives 0
    }

    const CVoxelBlock& m_objVoxels;
    double m_fPerMillimetre; ///< cells
    std::array<double, 3> m_afOffset = {0.0, 0.0, 0.0};
};

CGridOrder::CGridOrder(const CVoxelBlock& objVoxels, float fVoxelSize)
{
    const CCells objCells(objVoxels, fVoxelSize);
    if (findRows(objCells, objVoxels.size()))
        return;
    std::vector<std::pair<quint64, quint32>> vecCells(objVoxels.size());
    for (std::size_t i = 0; i < vecCells.size(); ++i)
        vecCells[i] = {objCells[i], static_cast<quint32>(i)};
    std::sort(vecCells.begin(), vecCells.end());
    for (const auto& pairCell : vecCells)
        m_vecVoxels.push_back(pairCell.second);
    findRows(objCells, objVoxels.size());
}

/// Finds where rows and planes begin. False where the voxels are not in order.
bool CGridOrder::findRows(const CCells& objCells, std::size_t nVoxels)
{
    m_vecRows.clear();
    m_vecPlanes.clear();
    quint64 nBefore = 0;
    for (std::size_t nPlace = 0; nPlace < nVoxels; ++nPlace)
    {
        const quint64 nCell = objCells[voxel(nPlace)];
        if (nCell < nBefore)
            return false;
        const quint64 nChanged = nPlace == 0 ? ~quint64(0) : nCell ^ nBefore;
        if (nChanged >> (2 * nBitsPerAxis) != 0)
            m_vecPlanes.push_back(static_cast<quint32>(m_vecRows.size()));
        if (nChanged >> nBitsPerAxis != 0)
            m_vecRows.push_back(static_cast<quint32>(nPlace));
        nBefore = nCell;
    }
    m_vecPlanes.push_back(static_cast<quint32>(m_vecRows.size()));
    m_vecRows.push_back(static_cast<quint32>(nVoxels));
    return true;
}
