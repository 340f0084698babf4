#pragma once

#include "IA3DMesh.h"
#include "fVolumeGrid.h"

/// Interpolation of a grid between its cells.
class VolumeInterp
{
public:
    /// @param pMesh    the surface outside of which everything becomes 0; null for no surface
    /// @param fMinimum amounts below it become 0 after the interpolation
    /// Grid and mesh stay the caller's and must outlive this object.
    VolumeInterp(fVolumeGrid& objGrid, IA3D::mesh* pMesh, double fMinimum);

    /// Subdivides every cell by the factor along each axis, with trilinear interpolation of densities: the total is kept but for what
    /// would lie outside the grid. False, with the grid as it was, for a factor of 0 or too many cells.
    bool triLinearInterp(unsigned long nFactor);

private:
    fVolumeGrid& m_objGrid;
    IA3D::mesh* m_pMesh;
    double m_fMinimum;
};
