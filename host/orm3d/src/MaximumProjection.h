#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <vector>

class CVolumeGeometry;

/// Which voxels of a volume a maximum intensity projection shows. Each voxel is an opaque square of whole pixels about its centre, and
/// a higher value covers a lower one, so that most voxels of a dense volume are covered completely and need not be drawn.
namespace MaximumProjection
{
/// A view in parallel, onto a rectangle of pixels.
struct SView
{
    std::array<double, 16> m_afClip; ///< from scene to clip coordinates, column by column; its last row is 0, 0, 0, 1
    int m_nWidth;                    ///< of the rectangle, pixels
    int m_nHeight;
};

/// A square in the form of a vertex array.
struct SSquare
{
    float m_fX; ///< centre in pixels from the lower left corner; whole or half numbers, so that the edges are those of pixels
    float m_fY;
    quint8 m_anColor[4]; ///< red, green, blue, alpha
};

/// The squares that are seen at least in part, by ascending value: drawn in this order they give the picture of all.
/// @param nFirst  the first place that is drawn
/// @param pColors red, green, blue, alpha of each place from nFirst on
/// @param nSize   edge of a square, pixels, at least 1
std::vector<SSquare> seenSquares(const CVolumeGeometry& objGeometry, std::size_t nFirst, const quint8* pColors, const SView& sView,
                                 int nSize);
} // namespace MaximumProjection
