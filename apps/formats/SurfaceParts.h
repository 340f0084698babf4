#pragma once

#include "SOpenSurface.h"

/// What the readers of surfaces share.
namespace SurfaceParts
{
/// Most vertices and triangles of a surface: their indexes and counts must fit the result documents.
constexpr qint64 nMostParts = 100'000'000;

/// Appends a coordinate as it is kept. False for one that is not finite or too large.
bool addCoordinate(double fValue, std::vector<float>& vecVertices);

/// Appends a polygon as a fan of triangles around its first corner.
void addPolygon(const std::vector<qint64>& vecCorners, std::vector<quint32>& vecTriangles);

/// An empty text for a surface that can be used, else what it lacks: vertices, faces, or vertices for all of its corners.
QString problemOf(const SOpenSurface& surface);
} // namespace SurfaceParts
