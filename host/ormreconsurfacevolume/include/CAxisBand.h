#pragma once

#include <vector>

/// A linear operation along one axis of a grid, held as a band matrix: each cell of the result is a weighted sum of a few
/// neighbouring cells of the source. Widening, subdividing and averaging a grid work on each axis for itself, so that any chain of them
/// is one such band per axis, and the grid in the end is computed by three short sums per cell instead of step by step.
/// What lies outside the source counts as 0.
class CAxisBand
{
public:
    /// Leaves a line of nSource cells as it is.
    explicit CAxisBand(long nSource = 0);

    /// Adds nMargin cells of value 0 at both ends.
    void widen(long nMargin);
    /// Splits each cell into nParts (above 0), interpolating linearly between the cells' centres at the centres of the parts.
    void subdivide(long nParts);
    /// Replaces each cell by the mean of itself and its two neighbours; beyond the ends there are zeros.
    void average();

    long sourceSize() const { return m_nSource; }
    /// Number of cells of the result.
    long size() const { return static_cast<long>(m_vecFirst.size()); }
    /// Number of weights of every cell.
    long width() const { return m_nWidth; }
    /// The first source cell that a cell depends on; it and the next width() - 1 ones exist.
    long first(long nCell) const { return m_vecFirst[static_cast<std::size_t>(nCell)]; }
    /// The width() weights of a cell.
    const double* weights(long nCell) const { return m_vecWeights.data() + nCell * m_nWidth; }

private:
    struct SRow;
    std::vector<SRow> rows() const;
    void setRows(const std::vector<SRow>& vecRows);

    long m_nSource = 0;
    long m_nWidth = 0;
    std::vector<long> m_vecFirst;
    std::vector<double> m_vecWeights;
};
