#pragma once

#include "fVolumeGrid.h"

#include <vector>

/// Computes the amounts of a grid row by row. A plane of source cells is spread out along x and y when the first row needs it, and
/// forgotten when no later one does: a sweep holds a few planes, whatever the height of the grid.
///
/// Amounts are given in parts of unit(), so that none is above 1 but for rounding and single precision holds the highest and the smallest
/// ones alike. All terms of their sums are positive: they are exact to 1e-6 of themselves.
class CGridSweep
{
public:
    /// The grid must not change while the sweep is used.
    explicit CGridSweep(const fVolumeGrid& objGrid);

    /// The amounts of a row of cells along x, in parts of unit(); valid until the next call. Rows may be asked for in any order,
    /// but ascending z is cheap.
    const float* row(long nY, long nZ);
    /// What an amount of 1 stands for.
    double unit() const { return m_fSourceUnit * m_objGrid.factor(); }

private:
    const float* spreadPlane(long nSourceZ);
    void spreadRow(const float* pSource, float* pOut) const;

    const fVolumeGrid& m_objGrid;
    long m_nWidth;                               ///< cells along x
    long m_nHeight;                              ///< cells along y
    long m_nSourceWidth;                         ///< source cells along x
    long m_nSourceHeight;                        ///< source cells along y
    double m_fSourceUnit = 1.0;                  ///< an amount just above all source cells
    std::vector<bool> m_vecEmpty;                ///< which source planes are all 0
    std::vector<float> m_vecRow;                 ///< the last row
    std::vector<float> m_vecRows;                ///< source rows spread along x
    std::vector<std::vector<float>> m_vecSpread; ///< source planes spread along x and y: plane z is at z modulo their number
    std::vector<long> m_vecSpreadZ;              ///< which source plane that is; -1 for none yet
};
