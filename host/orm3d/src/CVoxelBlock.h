#pragma once

#include "C3DVolume.h"
#include "CVolumeGeometry.h"
#include "SVoxelArrays.h"

#include <QVector>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// The voxels of a volume and what is made of them once. Never changed after it was made, so that any number of volumes may share it.
class CVoxelBlock
{
public:
    using PCoordinates = std::shared_ptr<const SVoxelArrays::Coordinates>;

    CVoxelBlock();
    CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels);
    /// Voxels numbered from nFirstID on. All arrays must have the same length.
    CVoxelBlock(float fVoxelSize, PCoordinates pCoordinates, OrmArray<float> vecValues, long nFirstID);
    CVoxelBlock(const CVoxelBlock&) = delete;
    CVoxelBlock& operator=(const CVoxelBlock&) = delete;

    std::size_t size() const { return m_vecValues.size(); }
    const OrmArray<float>& coordinates(std::size_t nAxis) const { return (*m_pCoordinates)[nAxis]; }
    /// The same, to be shared.
    const PCoordinates& coordinates() const { return m_pCoordinates; }
    const OrmArray<float>& values() const { return m_vecValues; }
    /// The number of a voxel.
    long id(std::size_t nVoxel) const { return m_vecIDs.empty() ? m_nFirstID + static_cast<long>(nVoxel) : m_vecIDs[nVoxel]; }
    /// Its OpenGL name.
    quint32 name(std::size_t nVoxel) const { return static_cast<quint32>(id(nVoxel)); }
    /// The voxels of a name, in no order.
    std::vector<quint32> voxelsNamed(quint32 nName) const;

    /// All voxels as records; made at the first call, unless the block was made of them.
    const QVector<C3DVolume::Voxel>& voxels() const;
    /// The voxels as they are drawn; made at the first call.
    const CVolumeGeometry& geometry() const;

private:
    float m_fVoxelSize = 1.0f; ///< millimetres
    PCoordinates m_pCoordinates;
    OrmArray<float> m_vecValues;
    long m_nFirstID = 0;
    std::vector<long> m_vecIDs;                                  ///< empty where each number follows the one before
    mutable QVector<C3DVolume::Voxel> m_vecVoxels;               ///< empty until needed
    mutable std::unique_ptr<const CVolumeGeometry> m_pGeometry;  ///< null until needed
    mutable std::vector<std::pair<quint32, quint32>> m_vecNames; ///< name and voxel, sorted; empty until needed, and without m_vecIDs
};
