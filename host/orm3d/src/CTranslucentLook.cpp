#include "CTranslucentLook.h"

#include "CGridOrder.h"
#include "CVoxelBlock.h"
#include "CVoxelColors.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double fOpacityThrough = 0.95; ///< of a stretch of highest values as long as the source
constexpr double fOverlap = 4.0;         ///< squares of two voxels cover four times a voxel's square

std::size_t count(const CVoxelBlock& objVoxels, const SDrawnValues& sValues)
{
    const OrmArray<float>& vecValues = objVoxels.values();
    return static_cast<std::size_t>(
        std::count_if(vecValues.begin(), vecValues.end(), [=](float fValue) { return sValues.contains(fValue); }));
}

/// The rate of CVoxelColors for squares of two voxels drawn one over the other. Through as many voxels of the highest value as lie along
/// the edge of a cube of all voxels from half of that value on, the opacity is 0.95, whatever grid or range.
double opacityRate(const CVoxelBlock& objVoxels)
{
    const float fHighest = objVoxels.highest();
    const double fThickness = std::cbrt(static_cast<double>(count(objVoxels, {fHighest / 2.0f, fHighest})));
    return std::log(1.0 - fOpacityThrough) / (fOverlap * fThickness * static_cast<double>(fHighest));
}
} // namespace

CTranslucentLook::CTranslucentLook(const CVoxelBlock& objVoxels, const SVolumeLook& sLook, const CTranslucentLook* pFormer)
    : m_sLook(sLook), m_sDrawn(sLook.drawn(objVoxels.highest())), m_nDrawn(count(objVoxels, m_sDrawn)), m_vecColors(4 * objVoxels.size())
{
    // Less is drawn by nothing but a higher least value: as many voxels are the same voxels.
    m_pOrders = pFormer && pFormer->m_nDrawn == m_nDrawn ? pFormer->m_pOrders : std::make_shared<Orders>();
    const CVoxelColors objColors(sLook.m_objPalette, m_sDrawn, opacityRate(objVoxels));
    for (std::size_t i = 0; i < objVoxels.size(); ++i)
    {
        const float fValue = objVoxels.values()[i];
        if (m_sDrawn.contains(fValue))
            objColors.write(fValue, m_vecColors.data() + 4 * i);
    }
}

const OrmArray<quint32>& CTranslucentLook::backToFront(const CVoxelBlock& objVoxels, bool bNearerWithX, bool bNearerWithY,
                                                       bool bNearerWithZ) const
{
    OrmArray<quint32>& vecOrder = (*m_pOrders)[(bNearerWithX ? 1U : 0U) + (bNearerWithY ? 2U : 0U) + (bNearerWithZ ? 4U : 0U)];
    if (!vecOrder.empty())
        return vecOrder;
    vecOrder.reserve(m_nDrawn);
    const CGridOrder& objGrid = objVoxels.gridOrder();
    const std::size_t nPlanes = objGrid.planes().size() - 1;
    for (std::size_t i = 0; i < nPlanes; ++i)
    {
        const std::size_t nPlane = bNearerWithZ ? i : nPlanes - 1 - i;
        const std::size_t nRows = objGrid.planes()[nPlane + 1] - objGrid.planes()[nPlane];
        for (std::size_t j = 0; j < nRows; ++j)
        {
            const std::size_t nRow = objGrid.planes()[nPlane] + (bNearerWithY ? j : nRows - 1 - j);
            const std::size_t nLength = objGrid.rows()[nRow + 1] - objGrid.rows()[nRow];
            for (std::size_t k = 0; k < nLength; ++k)
            {
                const std::size_t nVoxel = objGrid.voxel(objGrid.rows()[nRow] + (bNearerWithX ? k : nLength - 1 - k));
                if (m_sDrawn.contains(objVoxels.values()[nVoxel]))
                    vecOrder.push_back(static_cast<quint32>(nVoxel));
            }
        }
    }
    return vecOrder;
}
