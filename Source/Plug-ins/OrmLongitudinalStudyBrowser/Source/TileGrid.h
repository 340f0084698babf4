#pragma once

/// The geometry of the tiles of the comparative view, in whole window pixels with the origin at the bottom left. Plain arithmetic.
namespace TileGrid
{
constexpr int MaxColumns = 4;   ///< whatever the shape of the window
constexpr int StripRoom = 110;  ///< pixels set aside at the right for the colour bars
constexpr int TileGap = 5;      ///< pixels taken off each tile's width and height; the pitch is that of abutting tiles
constexpr int BandDistance = 2; ///< pixels between a tile's upper edge and its name band

/// Columns of the grid for a number of results: as many as there are, at most four; 0 for none.
int columns(int nResults);
/// Rows of the grid: four results to a row, rounded up; 0 for none.
int rows(int nResults);

/// Sets the tile size for a surface of nGLWidth x nGLHeight with nTextHeight pixels for a name above each row. Divisions truncate; a window
/// too small gives sizes of 0 or below. Without results the size stays as it was.
void tileSize(int nResults, int nGLWidth, int nGLHeight, int nTextHeight, int& nTileWidth, int& nTileHeight);

/// Left edge of the tile of a result.
int tileLeft(int nResult, int nTileWidth);
/// Bottom edge of the tile of a result.
int tileBottom(int nResult, int nGLHeight, int nTileHeight, int nTextHeight);
/// Bottom edge of the name band above the tile of a result.
int bandBottom(int nResult, int nGLHeight, int nTileHeight, int nTextHeight);

/// A rectangle with whole corner and exact size.
struct SRect
{
    int nX = 0;
    int nY = 0;
    double fWidth = 0.0;
    double fHeight = 0.0;

    /// The sizes as pixels, truncated.
    int width() const;
    int height() const;
    /// Whether a point lies inside; the edges are outside.
    bool contains(double fX, double fY) const;
};

/// The largest rectangle of the proportions of a box of fBoxWidth x fBoxHeight that fits into a tile, centred in it. A box or tile
/// without extent gives a rectangle without extent or one that fills the tile in one direction, never a fault.
SRect letterbox(int nX, int nY, int nWidth, int nHeight, double fBoxWidth, double fBoxHeight);
} // namespace TileGrid
