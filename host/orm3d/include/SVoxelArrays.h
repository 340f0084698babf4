#pragma once

#include "OrmArray.h"

#include <array>

/// Voxels as separate arrays with one element per voxel each: half the memory of records, and all that a loop over one of
/// their numbers reads.
struct SVoxelArrays
{
    using Coordinates = std::array<OrmArray<float>, 3>;

    Coordinates m_avecCoordinates; ///< centres along x, y and z, millimetres
    OrmArray<float> m_vecValues;   ///< amounts
};
