#pragma once

#include "C3DMesh.h"
#include "C3DVolume.h"
#include "IA3DMesh.h"
#include "fVolumeGrid.h"

/// The ways between the objects of the scene and those of the volume library. All results tell success; on failure the target stays as
/// it was and the reason goes to the log.
class VolumeSurfaceConversion
{
public:
    VolumeSurfaceConversion() = delete;

    /// The surface with normals, ranges and the plain default colour.
    static bool convert(C3DMesh& objSource, IA3D::mesh& objTarget);
    /// The grid that the volume's voxels lie on. Fails for voxels off any grid, two in a cell, or a box of too many cells.
    static bool convert(C3DVolume& objSource, fVolumeGrid& objTarget);
    /// Replaces the volume's voxels by the grid's cells, with new numbers and the grid's cell size. Cells below a thousandth of the
    /// highest one are left out, and the rest is scaled so that the total is the one that the grid was made of.
    /// A grid whose total is 0 gives the cells that held a voxel, with value 0.
    /// @param bAllCells also keeps the cells below a thousandth
    static bool convert(fVolumeGrid& objSource, C3DVolume& objTarget, bool bAllCells);
    /// The same with the cells alone whose centre lies inside the surface; all cells if none does. The view changes nothing.
    static bool convert(fVolumeGrid& objSource, C3DVolume& objTarget, IA3D::mesh& objMesh, IA3D::mesh_utils::viewinfo& objView,
                        bool bAllCells);
};
