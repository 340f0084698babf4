#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <vector>

/// Voxels as opaque squares of whole pixels about their centres. Where one square may lie over another, most voxels of a dense volume are
/// covered completely and need not be drawn.
namespace VoxelSquares
{
/// The centres of voxels, as separate arrays.
struct SCentres
{
    std::array<const float*, 3> m_apCoordinates; ///< x, y and z in scene coordinates
    const quint8* m_pColors;                     ///< red, green, blue, alpha of each; null for white ones
    std::size_t m_nCentres;
};

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

/// The squares of those whose centres are in the view and that are seen at least in part when each one lies over all before it. Drawn in
/// this order they give the picture of all.
/// @param nSize edge of a square, pixels, at least 1
std::vector<SSquare> seen(const SCentres& sCentres, const SView& sView, int nSize);
} // namespace VoxelSquares
