#pragma once

#include "CAxisBand.h"
#include "CVoxelLattice.h"
#include "bVolumeGrid.h"

#include <array>
#include <functional>
#include <vector>

/// A grid of amounts. Margins, subdivision and averaging are noted, not carried out: the values are computed row by row when they are
/// asked for, so that a refined grid takes hardly more memory than the volume that it was made of. Values below 0 count as 0.
class fVolumeGrid : public bVolumeGrid
{
public:
    fVolumeGrid();
    ~fVolumeGrid() override;

    /// Makes the grid of a volume's voxels and the lattice found for them.
    void assign(const CVoxelLattice& objLattice, const C3DVolume& objVolume);
    /// Adds a margin of empty cells on every side. False, with the grid as it was, if it would have too many cells.
    bool paddingVoxels(unsigned long nMargin);
    /// Splits every cell into n x n x n parts. Amounts are densities: a part has 1 / n^3 of what trilinear interpolation between the
    /// cells' centres gives at its own centre. False, with the grid as it was, for n of 0 or too many cells.
    bool subdivide(unsigned long nParts);
    /// Replaces every cell by the mean of its 3 x 3 x 3 neighbourhood, as often as said. Outside the grid there are zeros.
    void average(long nPasses);
    /// Brings the grid up to date: cells below the minimum become 0. A minimum of 0 leaves nothing to do, since no cell is below it.
    void update(double fMinimum);

    /// Gets the amounts of a row along x, to be changed in place.
    using FnRow = std::function<void(long nY, long nZ, float* pAmounts)>;
    /// Computes all amounts once, lets the function change them, and goes on from there.
    void change(const FnRow& fnRow);

    /// The amount in a cell, computed for it alone.
    double value(long nX, long nY, long nZ) const;
    /// The sum of the amounts that the grid was made of.
    double sourceTotal() const { return m_fSourceTotal; }

    // What the amounts are computed from: a block of cells, one band per axis and a factor.
    const std::vector<float>& source() const { return m_vecSource; } ///< x fastest, then y, then z
    long sourceCells(int nAxis) const { return m_anBlockCells[static_cast<std::size_t>(nAxis)]; }
    const CAxisBand& band(int nAxis) const { return m_abandAxes[static_cast<std::size_t>(nAxis)]; }
    double factor() const { return m_fFactor; }

private:
    std::vector<float> m_vecSource;
    std::array<long, 3> m_anBlockCells = {0, 0, 0}; ///< cells of m_vecSource
    std::array<CAxisBand, 3> m_abandAxes;
    double m_fFactor = 1.0; ///< what subdivision takes off every amount
    double m_fSourceTotal = 0.0;
};
