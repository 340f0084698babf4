#pragma once

#include "IA3DMesh.h"
#include "bVolumeGrid.h"

#include <array>
#include <cstddef>
#include <vector>

/// Where the rays through the cell centres of a grid, all along one axis, cross a surface.
class CRayCrossings
{
public:
    /// A crossing on its ray.
    struct SCrossing
    {
        int m_nCell = 0; ///< the first cell whose centre is at the crossing or beyond it; the number of cells where none is
        int m_nTurn = 0; ///< 1 or -1: in which direction the surface winds around what lies beyond
    };

    /// @param nAxis the axis of the rays: 0 x, 1 y, 2 z
    CRayCrossings(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid, std::size_t nAxis);

    /// False if there are more crossings than any skin can have; there are none then.
    bool isUsable() const { return m_bUsable; }
    /// Rays are counted along the axis after theirs first (y for x, z for y, x for z), then along the one after that.
    std::size_t rays() const { return m_vecStart.size() - 1; }
    /// The crossings of a ray, by ascending cell.
    const SCrossing* begin(std::size_t nRay) const { return m_vecCrossings.data() + m_vecStart[nRay]; }
    const SCrossing* end(std::size_t nRay) const { return m_vecCrossings.data() + m_vecStart[nRay + 1]; }

private:
    struct SFound;
    struct SCorner;
    bool cross(const SCorner* pCorners, std::vector<SFound>& vecFound, std::size_t& nLinesLeft) const;
    int firstCellFrom(double fPlace, std::size_t nAxis) const;
    double centre(int nCell, std::size_t nAxis) const { return m_afOrigin[nAxis] + nCell * m_fCellSize; }

    std::array<double, 3> m_afOrigin; ///< along the rays, across them, and the third axis
    std::array<long, 3> m_anCells;
    double m_fCellSize;
    std::size_t m_nMostCrossings; ///< that can be believed
    std::vector<std::size_t> m_vecStart;
    std::vector<SCrossing> m_vecCrossings;
    bool m_bUsable = true;
};
