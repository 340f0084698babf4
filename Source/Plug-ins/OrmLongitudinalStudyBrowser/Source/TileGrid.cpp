#include "TileGrid.h"

#include <cmath>
#include <limits>

namespace
{
/// Truncates; numbers out of range go to the nearest end, what is no number to 0.
int truncated(double fValue)
{
    if (std::isnan(fValue))
    {
        return 0;
    }
    if (fValue >= std::numeric_limits<int>::max())
    {
        return std::numeric_limits<int>::max();
    }
    if (fValue <= std::numeric_limits<int>::min())
    {
        return std::numeric_limits<int>::min();
    }
    return static_cast<int>(fValue);
}
} // namespace

namespace TileGrid
{
int columns(int nResults)
{
    return nResults < MaxColumns ? nResults : MaxColumns;
}

int rows(int nResults)
{
    return (nResults + MaxColumns - 1) / MaxColumns;
}

void tileSize(int nResults, int nGLWidth, int nGLHeight, int nTextHeight, int& nTileWidth, int& nTileHeight)
{
    if (nResults <= 0)
    {
        return;
    }
    nTileWidth = (nGLWidth - StripRoom) / columns(nResults) - TileGap;
    nTileHeight = (nGLHeight - rows(nResults) * nTextHeight) / rows(nResults) - TileGap;
}

int tileLeft(int nResult, int nTileWidth)
{
    return nResult % MaxColumns * nTileWidth;
}

int tileBottom(int nResult, int nGLHeight, int nTileHeight, int nTextHeight)
{
    return nGLHeight - nTileHeight - nTextHeight - nResult / MaxColumns * (nTileHeight + nTextHeight) - BandDistance;
}

int bandBottom(int nResult, int nGLHeight, int nTileHeight, int nTextHeight)
{
    return nGLHeight - nTextHeight - nResult / MaxColumns * (nTileHeight + nTextHeight);
}

int SRect::width() const
{
    return truncated(fWidth);
}

int SRect::height() const
{
    return truncated(fHeight);
}

bool SRect::contains(double fX, double fY) const
{
    return fX > nX && fX < nX + fWidth && fY > nY && fY < nY + fHeight;
}

SRect letterbox(int nX, int nY, int nWidth, int nHeight, double fBoxWidth, double fBoxHeight)
{
    // A flat box makes the proportion infinite or no number; both take one of the two branches and stay harmless.
    const double fAspect = std::fabs(fBoxWidth) / std::fabs(fBoxHeight);
    SRect rect;
    if (fAspect > static_cast<double>(nWidth) / nHeight)
    {
        rect.fWidth = nWidth;
        rect.fHeight = nWidth / fAspect;
    }
    else
    {
        rect.fHeight = nHeight;
        rect.fWidth = nHeight * fAspect;
    }
    rect.nX = nX + truncated((nWidth - rect.fWidth) / 2.0);
    rect.nY = nY + truncated((nHeight - rect.fHeight) / 2.0);
    return rect;
}
} // namespace TileGrid
