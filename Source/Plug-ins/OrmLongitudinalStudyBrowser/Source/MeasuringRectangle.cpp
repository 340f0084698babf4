#include "MeasuringRectangle.h"

#include <algorithm>

namespace MeasuringRectangle
{
SEdges edgesBetween(const Coord3d& ptFirst, const Coord3d& ptSecond)
{
    return {std::min(ptFirst.x, ptSecond.x), std::max(ptFirst.y, ptSecond.y), std::max(ptFirst.x, ptSecond.x),
            std::min(ptFirst.y, ptSecond.y)};
}

bool oppositeCorner(long nCorner, const SEdges& objEdges, Coord3d& ptOpposite)
{
    const bool bLeft = nCorner == CornerLeftTop || nCorner == CornerLeftBottom;
    const bool bTop = nCorner == CornerLeftTop || nCorner == CornerRightTop;
    if (!bLeft && nCorner != CornerRightTop && nCorner != CornerRightBottom)
    {
        return false;
    }
    ptOpposite.x = bLeft ? objEdges.fRight : objEdges.fLeft;
    ptOpposite.y = bTop ? objEdges.fBottom : objEdges.fTop;
    return true;
}

bool STile::isNone() const
{
    const int nFirst = nX == nWidth ? 1 : 0;
    const int nSecond = nFirst == nY ? 1 : 0;
    return nSecond == nHeight;
}

bool STile::contains(double fX, double fY) const
{
    return fX > nX && fX < nX + nWidth && fY > nY && fY < nY + nHeight;
}

void STile::clamp(Coord3d& pt) const
{
    if (!contains(pt.x, pt.y))
    {
        pt.x = std::max<double>(nX, std::min<double>(pt.x, nX + nWidth));
        pt.y = std::max<double>(nY, std::min<double>(pt.y, nY + nHeight));
    }
}
} // namespace MeasuringRectangle
