#pragma once

#include "OrmArray.h"
#include "SVolumeLook.h"

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <memory>

class CVoxelBlock;

/// A volume drawn as translucent voxels: which ones, in which colours and in which order.
class CTranslucentLook
{
public:
    /// @param pFormer a look of the same voxels from which to take what stays the same; may be null
    CTranslucentLook(const CVoxelBlock& objVoxels, const SVolumeLook& sLook, const CTranslucentLook* pFormer);

    const SVolumeLook& look() const { return m_sLook; }
    /// Red, green, blue, alpha of each voxel; of those that are not drawn anything.
    const quint8* colors() const { return m_vecColors.data(); }
    /// The drawn voxels from the farthest to the nearest; found when first asked for. Voxels lie on a grid and are seen in parallel, so
    /// that the order depends on nothing but the directions in which the axes approach the viewer.
    const OrmArray<quint32>& backToFront(const CVoxelBlock& objVoxels, bool bNearerWithX, bool bNearerWithY, bool bNearerWithZ) const;

private:
    using Orders = std::array<OrmArray<quint32>, 8>; ///< by the three directions; empty until needed

    SVolumeLook m_sLook;
    SDrawnValues m_sDrawn;
    std::size_t m_nDrawn; ///< number of voxels
    OrmArray<quint8> m_vecColors;
    std::shared_ptr<Orders> m_pOrders;
};
