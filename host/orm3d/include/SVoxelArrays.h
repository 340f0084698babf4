#pragma once

#include "OrmArray.h"

/// Voxels as two arrays, in the order of the voxels: half the memory of records, and fit to be drawn as they are.
struct SVoxelArrays
{
    OrmArray<float> m_vecPositions; ///< x, y, z of each centre, millimetres
    OrmArray<float> m_vecValues;    ///< amounts
};
