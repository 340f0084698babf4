#pragma once

#include <array>
#include <cstddef>
#include <utility>
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

    /// Number of cells of the result.
    long size() const { return static_cast<long>(m_vecFirst.size()); }
    /// The most source cells that a cell depends on.
    long width() const { return m_nStride; }
    /// The first source cell that a cell depends on.
    long first(long nCell) const { return m_vecFirst[static_cast<std::size_t>(nCell)]; }
    /// How many source cells, from first() on, it depends on; may be 0.
    long count(long nCell) const { return m_vecCount[static_cast<std::size_t>(nCell)]; }
    /// The weights of these cells.
    const double* weights(long nCell) const { return m_vecWeights.data() + nCell * m_nStride; }

private:
    using Terms = std::array<std::pair<long, double>, 3>; ///< cells of the present result, which may lie outside of it, and their weights
    template <typename FnTerms>
    void combine(long nCells, FnTerms fnTerms);

    long m_nStride = 0;
    std::vector<long> m_vecFirst;
    std::vector<long> m_vecCount;
    std::vector<double> m_vecWeights; ///< m_nStride for each cell
};
