#pragma once

#include "C3DVolume.h"
#include "CGridOrder.h"
#include "CHighestLook.h"
#include "OrmArray.h"

#include <QVector>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// The voxels of a volume and what is made of them once. Never changed after it was made, so that any number of volumes may share it.
class CVoxelBlock
{
public:
    using PArray = std::shared_ptr<const OrmArray<float>>;

    CVoxelBlock();
    CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels);
    /// Voxels numbered from nFirstID on, with three coordinates for each value.
    CVoxelBlock(float fVoxelSize, PArray pPositions, PArray pValues, long nFirstID);
    CVoxelBlock(const CVoxelBlock&) = delete;
    CVoxelBlock& operator=(const CVoxelBlock&) = delete;

    std::size_t size() const { return m_pValues->size(); }
    /// x, y, z of the centres of all voxels, to be shared.
    const PArray& positions() const { return m_pPositions; }
    /// x, y, z of a voxel's centre.
    const float* position(std::size_t nVoxel) const { return m_pPositions->data() + 3 * nVoxel; }
    const OrmArray<float>& values() const { return *m_pValues; }
    /// The same, to be shared.
    const PArray& sharedValues() const { return m_pValues; }
    /// The number of a voxel.
    long id(std::size_t nVoxel) const { return m_vecIDs.empty() ? m_nFirstID + static_cast<long>(nVoxel) : m_vecIDs[nVoxel]; }
    /// Its OpenGL name.
    quint32 name(std::size_t nVoxel) const { return static_cast<quint32>(id(nVoxel)); }
    /// The voxels of a name, in no order.
    std::vector<quint32> voxelsNamed(quint32 nName) const;

    /// All voxels as records; made at the first call, unless the block was made of them.
    const QVector<C3DVolume::Voxel>& voxels() const;
    /// The highest finite value, 0 without any, and the largest absolute finite coordinate along each axis; found at the first call.
    float highest() const;
    const std::array<float, 3>& extent() const;
    /// The orders in which the voxels are drawn; made at the first call.
    const CGridOrder& gridOrder() const;
    const CValueOrder& valueOrder() const;

private:
    float m_fVoxelSize = 1.0f; ///< millimetres
    PArray m_pPositions;       ///< never null, as the next one
    PArray m_pValues;
    long m_nFirstID = 0;
    std::vector<long> m_vecIDs;                    ///< empty where each number follows the one before
    mutable QVector<C3DVolume::Voxel> m_vecVoxels; ///< empty until needed
    mutable std::optional<float> m_fHighest;       ///< empty until needed, as the next one
    mutable std::optional<std::array<float, 3>> m_afExtent;
    mutable std::unique_ptr<const CGridOrder> m_pGridOrder; ///< null until needed, as the next one
    mutable std::unique_ptr<const CValueOrder> m_pValueOrder;
    mutable std::vector<std::pair<quint32, quint32>> m_vecNames; ///< name and voxel, sorted; empty until needed, and without m_vecIDs
};
