#pragma once

#include "COrmPalette.h"

/// The values of those voxels of a volume that are drawn; none where the least is above the highest.
struct SDrawnValues
{
    float m_fLeast;   ///< above 0
    float m_fHighest; ///< finite

    bool contains(float fValue) const { return fValue >= m_fLeast && fValue <= m_fHighest; }
};

/// How a volume is to look.
struct SVolumeLook
{
    COrmPalette m_objPalette;  ///< keeps its table alive, so that the table's address tells it apart from any other
    double m_fThreshold = 0.0; ///< fraction of the highest value below which nothing is drawn on a linear scale

    bool operator==(const SVolumeLook& sOther) const;
    /// What is drawn of a volume with this highest finite value. A voxel without any amount never is.
    SDrawnValues drawn(float fHighest) const;
};
