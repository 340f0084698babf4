#pragma once

#include <QtGlobal>

/// A cell of a grid, counted with x fastest, then y, then z.
struct VoxelIndex
{
    quint32 nCell = 0;
};

Q_DECLARE_TYPEINFO(VoxelIndex, Q_MOVABLE_TYPE);
