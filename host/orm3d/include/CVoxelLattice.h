#pragma once

#include "C3DVolume.h"

#include <QString>

#include <array>

/// The regular grid that a volume's voxels lie on: cubic cells, at most one voxel in each, voxels at cell centres.
/// Cells are numbered from the lowest corner of the voxels' box, x fastest, then y, then z.
class CVoxelLattice
{
public:
    /// No grid has more cells than this, so that a few voxels far apart cannot ask for boundless memory.
    static constexpr qint64 nMaxCells = 64'000'000;
    /// A voxel may lie off its cell's centre by this fraction of the pitch, along each axis.
    static constexpr double fTolerance = 0.01;

    /// Finds the grid of voxels given by their coordinates. False, with one sentence in @p pstrReason (may be null), when the pitch is not
    /// above 0 and finite, a coordinate is not finite, a voxel is off the grid, two share a cell, or the box has more than nMaxCells
    /// cells. No voxels at all give a grid without cells.
    /// @param pCoordinates x, y, z of the first voxel
    /// @param nStride      floats from one voxel's x to the next one's
    bool fit(const float* pCoordinates, qint64 nVoxels, std::size_t nStride, double fPitch, QString* pstrReason);
    /// The same for the voxels of a volume.
    bool fit(const C3DVolume& objVolume, QString* pstrReason);

    /// Number of cells along an axis (0 x, 1 y, 2 z).
    qint64 cells(int nAxis) const { return m_anCells[static_cast<std::size_t>(nAxis)]; }
    qint64 cellCount() const { return m_anCells[0] * m_anCells[1] * m_anCells[2]; }
    /// Centre of the first cell along an axis, millimetres.
    double origin(int nAxis) const { return m_afOrigin[static_cast<std::size_t>(nAxis)]; }
    double pitch() const { return m_fPitch; }
    /// The cell of a voxel that the grid was found from, by its coordinates.
    quint32 cellOf(float fX, float fY, float fZ) const;

    /// Parts into which a voxel of this edge is split along each axis to be shown smoothly: 4 from 1 mm on, 2 from 0.5 mm on, else 1.
    static int subdivision(float fVoxelSize);
    /// Number of cells after a margin of cells on every side and a subdivision; -1 for more than nMaxCells.
    qint64 refinedCellCount(qint64 nMargin, qint64 nSubdivision) const;

private:
    struct SCoordinates;
    bool fit(const SCoordinates& sCoordinates, double fPitch, QString* pstrReason);
    bool fitAxis(const SCoordinates& sCoordinates, std::size_t nAxis, QString* pstrReason);
    bool isFree(const SCoordinates& sCoordinates, QString* pstrReason) const;

    double m_fPitch = 1.0;
    std::array<double, 3> m_afOrigin = {0.0, 0.0, 0.0};
    std::array<qint64, 3> m_anCells = {0, 0, 0};
};
