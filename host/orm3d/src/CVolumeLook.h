#pragma once

#include "COrmPalette.h"
#include "CVolumeGeometry.h"

#include <array>
#include <memory>
#include <vector>

/// Which voxels of a volume are drawn, in which colours and in which order, for one state of palette, threshold and projection.
class CVolumeLook
{
public:
    /// What a look is made for.
    struct SState
    {
        COrmPalette m_objPalette;  ///< keeps its table alive, so that the table's address tells it apart from any other
        double m_fThreshold = 0.0; ///< fraction of the highest value below which nothing is drawn on a linear scale
        bool m_bMIP = false;       ///< opaque

        bool operator==(const SState& sOther) const;
    };

    /// @param pFormer a look of the same geometry from which to take what stays the same; may be null
    CVolumeLook(const CVolumeGeometry& objGeometry, const SState& sState, const CVolumeLook* pFormer);

    const SState& state() const { return m_sState; }
    /// The first place that is drawn; all after it are drawn, too.
    std::size_t first() const { return m_nFirst; }
    /// Red, green, blue, alpha of each place from first() on.
    const quint8* colors() const { return m_vecColors.data(); }
    /// The drawn places back to front, counted from first(); made when first asked for.
    const std::vector<quint32>& backToFront(const CVolumeGeometry& objGeometry, bool bNearerWithX, bool bNearerWithY,
                                            bool bNearerWithZ) const;

private:
    using Orders = std::array<std::vector<quint32>, 8>; ///< by the three directions; empty until needed

    SState m_sState;
    std::size_t m_nFirst = 0;
    std::vector<quint8> m_vecColors;
    std::shared_ptr<Orders> m_pOrders;
};
