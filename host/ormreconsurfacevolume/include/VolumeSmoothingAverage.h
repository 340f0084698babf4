#pragma once

#include "fVolumeGrid.h"

/// Smoothing of a grid by averaging.
class VolumeSmoothingAverage
{
public:
    /// The grid stays the caller's and must outlive this object.
    explicit VolumeSmoothingAverage(fVolumeGrid& objGrid);

    /// Replaces every cell by the mean of its 3 x 3 x 3 neighbourhood, nPasses times. Outside the grid there are zeros.
    void process(long nPasses);

private:
    fVolumeGrid& m_objGrid;
};
