#pragma once

#include "IA3DMesh.h"

class C3DVolume;

/// By what part of its edge a voxel is refined, so that sources look smooth at a common voxel size: a quarter from 1 mm on, a
/// half from 0.5 mm on; 0 for finer ones, which stay as they are.
/// @param fVoxelSize edge of a voxel, millimetres
float refinementFactor(float fVoxelSize);

/// Refines the volume in place: its voxels are split, interpolated trilinearly and smoothed, and cut at the surface unless
/// that is empty. The sum of the values stays what it was. A volume without a grid stays as it is. Where memory runs short the
/// volume stays as it is too, and std::bad_alloc says so.
/// @param fFactor edge of a refined voxel as a part of the present one, above 0 and at most 1
void interpolateSourceVoxels(C3DVolume* pVolume, IA3D::mesh& mesh, IA3D::mesh_utils::viewinfo& info, float fFactor);
