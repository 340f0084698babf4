#pragma once

#include "C3DVolume.h"
#include "CVolumeGeometry.h"

#include <QVector>

#include <memory>
#include <utility>
#include <vector>

/// The voxels of a volume and what is made of them once. Never changed after it was made, so that any number of volumes may share it.
class CVoxelBlock
{
public:
    CVoxelBlock() = default;
    CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels);
    CVoxelBlock(const CVoxelBlock&) = delete;
    CVoxelBlock& operator=(const CVoxelBlock&) = delete;

    const QVector<C3DVolume::Voxel>& voxels() const { return m_vecVoxels; }
    /// The voxels as they are drawn; made at the first call.
    const CVolumeGeometry& geometry() const;
    /// The OpenGL name of a voxel.
    quint32 name(int nVoxel) const { return static_cast<quint32>(m_vecVoxels.at(nVoxel).nID); }
    /// The voxels of a name, in no order.
    std::vector<quint32> voxelsNamed(quint32 nName) const;

private:
    enum class ENames
    {
        Unknown,
        Consecutive, ///< each voxel's name follows the one before
        Sorted       ///< they are in m_vecNames
    };
    bool isConsecutive() const;

    float m_fVoxelSize = 1.0f; ///< millimetres
    QVector<C3DVolume::Voxel> m_vecVoxels;
    mutable std::unique_ptr<const CVolumeGeometry> m_pGeometry;  ///< null until needed
    mutable ENames m_eNames = ENames::Unknown;                   ///< Unknown until needed
    mutable std::vector<std::pair<quint32, quint32>> m_vecNames; ///< name and voxel
};
