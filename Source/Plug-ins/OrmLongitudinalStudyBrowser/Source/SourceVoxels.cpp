#include "SourceVoxels.h"

#include "C3DVolume.h"
#include "VolumeInterp.h"
#include "VolumeSmoothingAverage.h"
#include "VolumeSurfaceConversion.h"
#include "fVolumeGrid.h"

#include <new>

namespace
{

/// Empty voxels around the volume: room for what interpolation and smoothing carry outwards.
constexpr unsigned long g_nMargin = 2;
constexpr long g_nSmoothingPasses = 5;

} // namespace

float refinementFactor(float fVoxelSize)
{
    if (fVoxelSize >= 1.0f)
    {
        return 0.25f;
    }
    return fVoxelSize >= 0.5f ? 0.5f : 0.0f;
}

void interpolateSourceVoxels(C3DVolume* pVolume, IA3D::mesh& mesh, IA3D::mesh_utils::viewinfo& info, float fFactor)
{
    fVolumeGrid objGrid;
    if (!VolumeSurfaceConversion::convert(*pVolume, objGrid))
    {
        return;
    }
    objGrid.paddingVoxels(g_nMargin);
    const unsigned long nParts = static_cast<unsigned long>(1.0 / static_cast<double>(fFactor));
    VolumeInterp objInterpolation(objGrid, nullptr, 0.0);
    objInterpolation.triLinearInterp(nParts);
    objGrid.update(0.0);
    VolumeSmoothingAverage objSmoothing(objGrid);
    objSmoothing.process(g_nSmoothingPasses);
    const bool bWritten = mesh.is_empty() ? VolumeSurfaceConversion::convert(objGrid, *pVolume, false)
                                          : VolumeSurfaceConversion::convert(objGrid, *pVolume, mesh, info, false);
    if (!bWritten)
    {
        // Coarse voxels beside refined ones would pass for many times the source.
        throw std::bad_alloc();
    }
}
