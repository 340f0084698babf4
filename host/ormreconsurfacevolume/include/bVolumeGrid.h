#pragma once

#include "Coord3d.h"
#include "VoxelIndex.h"

#include <QList>
#include <QMutex>

#include <array>
#include <vector>

/// A box of cubic cells in space, and which cells of the volume that it was made of held a voxel.
class bVolumeGrid
{
public:
    bVolumeGrid();
    virtual ~bVolumeGrid();
    bVolumeGrid(const bVolumeGrid&) = delete;
    bVolumeGrid& operator=(const bVolumeGrid&) = delete;

    /// Number of cells along an axis (0 x, 1 y, 2 z), as the grid stands now.
    long cells(int nAxis) const { return m_anCells[static_cast<std::size_t>(nAxis)]; }
    qint64 cellCount() const;
    /// Edge of a cell, millimetres.
    double cellSize() const { return m_fCellSize; }
    /// Centre of a cell, millimetres.
    Coord3d cellCentre(long nX, long nY, long nZ) const;
    /// Whether a cell is, or is part of, one that held a voxel.
    bool isFilled(long nX, long nY, long nZ) const;
    /// The cells that held a voxel, in the grid as it was made.
    const QList<VoxelIndex>& filledCells() const { return m_lstFilled; }

protected:
    /// Adds cells on every side.
    void growBox(long nMargin);
    /// Splits every cell into nParts along each axis.
    void splitCells(long nParts);

    std::vector<bool> m_vecFilled; ///< whether a cell held a voxel, by VoxelIndex, in the grid as it was made
    QList<VoxelIndex> m_lstFilled; ///< the cells that held one, in the order of the voxels
    mutable QMutex m_objMutex;     ///< held while the grid is changed

    std::array<long, 3> m_anSourceCells = {0, 0, 0}; ///< cells of the grid as it was made
    std::array<long, 3> m_anCells = {0, 0, 0};       ///< cells of the grid as it stands
    std::array<double, 3> m_afOrigin = {0, 0, 0};    ///< centre of the first cell as it stands, millimetres
    double m_fCellSize = 1.0;                        ///< millimetres
    long m_nMargin = 0;                              ///< cells as they stand before the first source cell's first part
    long m_nParts = 1;                               ///< cells as they stand to a source cell, along each axis
};
