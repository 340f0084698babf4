#pragma once

#include "IA3DMesh.h"
#include "bVolumeGrid.h"

#include <cstddef>
#include <vector>

/// Which cells of a grid have their centre inside a surface, as runs along x. Decided by rays through the cells' centres: triangles are
/// spread over the rays that they are on, each with the same rounding for both triangles of an edge, so that a ray through an edge
/// or a corner counts it once. The cost is proportional to triangles, rays and crossings.
///
/// Inside a closed surface is what it winds around, whichever way it is turned and also where it overlaps itself. A surface with gaps has
/// rays that leak: there each cell takes the majority of the rays along x, y and z that cross the surface an even number of times.
class CInsideRuns
{
public:
    /// Cells from m_nFirst up to but not including m_nEnd of a row.
    struct SRun
    {
        long m_nFirst = 0;
        long m_nEnd = 0;
    };

    CInsideRuns(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid);

    /// False if the surface crosses the grid so often that it cannot be the skin of anything; nothing is inside then.
    bool isUsable() const { return m_bUsable; }
    /// Whether no cell is inside.
    bool isEmpty() const { return m_vecRuns.empty(); }
    /// The runs of a row, by ascending x.
    const SRun* begin(long nY, long nZ) const { return m_vecRuns.data() + m_vecStart[row(nY, nZ)]; }
    const SRun* end(long nY, long nZ) const { return m_vecRuns.data() + m_vecStart[row(nY, nZ) + 1]; }

private:
    std::size_t row(long nY, long nZ) const { return static_cast<std::size_t>(nZ * m_nHeight + nY); }
    void takeWinding(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid);
    void takeMajority(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid);

    long m_nHeight;                      ///< cells along y
    std::vector<std::size_t> m_vecStart; ///< where in m_vecRuns a row begins, and the end
    std::vector<SRun> m_vecRuns;
    bool m_bUsable = true;
};
