#pragma once

#include <cstddef>

/// Totals of voxel values.
namespace FiniteSum
{
/// The sum of the values that are finite, added in double precision.
double of(const float* pValues, std::size_t nValues);
} // namespace FiniteSum
