#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

class CVoxelBlock;

/// The voxels of a volume as they lie on their grid: by ascending z, then y, then x. A number in this order is called a place here.
class CGridOrder
{
public:
    /// @param fVoxelSize pitch of the grid, millimetres
    CGridOrder(const CVoxelBlock& objVoxels, float fVoxelSize);

    /// The voxel at a place.
    std::size_t voxel(std::size_t nPlace) const { return m_vecVoxels.empty() ? nPlace : m_vecVoxels[nPlace]; }
    /// The first place of each row, which is what has the same z and y, and the number of places.
    const std::vector<quint32>& rows() const { return m_vecRows; }
    /// The first row of each plane, which is what has the same z, and the number of rows.
    const std::vector<quint32>& planes() const { return m_vecPlanes; }

private:
    class CCells;
    bool findRows(const CCells& objCells, std::size_t nVoxels);

    std::vector<quint32> m_vecVoxels; ///< empty where the voxels come in this order, as most loaders give them
    std::vector<quint32> m_vecRows;
    std::vector<quint32> m_vecPlanes;
};
