#pragma once

#include "fVolumeGrid.h"

#include <vector>

/// Computes the planes of a grid one after the other. A plane of source cells is spread out along x and y when the
/// first plane needs it, and forgotten when no later one does: a sweep holds a few planes, whatever the height of the grid.
class CGridSweep
{
public:
    /// The grid must not change while the sweep is used.
    explicit CGridSweep(const fVolumeGrid& objGrid);

    /// The amounts of a plane, x fastest; valid until the next call. Planes may be asked for in any order, but ascending is cheap.
    const double* plane(long nZ);
    /// Whether every amount of the plane is 0, which is known without computing it.
    bool isEmpty(long nZ) const;

private:
    const double* spreadPlane(long nSourceZ);

    const fVolumeGrid& m_objGrid;
    long m_nWidth;                                ///< cells along x
    long m_nHeight;                               ///< cells along y
    long m_nSourceWidth;                          ///< source cells along x
    long m_nSourceHeight;                         ///< source cells along y
    std::vector<bool> m_vecEmpty;                 ///< which source planes are all 0
    std::vector<double> m_vecPlane;               ///< the last plane
    std::vector<double> m_vecRows;                ///< source rows spread along x
    std::vector<std::vector<double>> m_vecSpread; ///< source planes spread along x and y: plane z is at z modulo their number
    std::vector<long> m_vecSpreadZ;               ///< which source plane that is; -1 for none yet
};
