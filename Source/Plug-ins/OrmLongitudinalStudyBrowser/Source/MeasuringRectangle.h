#pragma once

#include "Coord3d.h"

/// The measuring tool's rectangle under the pointer: which corner stays while another is drawn, and where the pointer may draw it. Window
/// pixels with the origin at the bottom left. Plain arithmetic.
namespace MeasuringRectangle
{
/// Names of the corners, as they are in a selection pass.
constexpr long CornerLeftTop = 301;
constexpr long CornerRightTop = 302;
constexpr long CornerRightBottom = 303;
constexpr long CornerLeftBottom = 304;

struct SEdges
{
    double fLeft = 0.0;
    double fTop = 0.0;
    double fRight = 0.0;
    double fBottom = 0.0;
};

/// The rectangle between two opposite corners, whichever they are.
SEdges edgesBetween(const Coord3d& ptFirst, const Coord3d& ptSecond);

/// Writes x and y of the corner opposite of a named one. False, with nothing written, for any other name.
bool oppositeCorner(long nCorner, const SEdges& objEdges, Coord3d& ptOpposite);

/// The drawing rectangle of a tile, as the view keeps it for the tile under the pointer.
struct STile
{
    int nX = 0;
    int nY = 0;
    int nWidth = 0;
    int nHeight = 0;

    /// Whether the tile is to be taken for none. True for four zeros; the comparisons run in a chain, each with the outcome of the one
    /// before it, so they are true for a few other rectangles too, such as one of 1 pixel height on the lower edge of the window.
    bool isNone() const;
    /// Whether a point lies inside; the edges are outside.
    bool contains(double fX, double fY) const;
    /// Moves x and y of a point that is not inside onto the nearest edge.
    void clamp(Coord3d& pt) const;
};
} // namespace MeasuringRectangle
