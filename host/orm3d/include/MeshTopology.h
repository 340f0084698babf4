#pragma once

#include <QtGlobal>

/// What the triangles of a surface tell about it, whatever the form of its vertices.
namespace MeshTopology
{
/// Whether the triangles leave no gap and all turn the same way: along every edge they run as often in the one direction as in the other.
/// Such a surface has an inside. A surface without triangles is not closed.
/// @param pTriangles three vertex indexes per triangle, all below nVertices
bool isClosed(const quint32* pTriangles, qint64 nTriangles, qint64 nVertices);

/// The volume that a closed surface encloses; below 0 if its triangles are counter-clockwise seen from inside.
/// @param pVertices x, y, z of each vertex
double signedVolume(const float* pVertices, const quint32* pTriangles, qint64 nTriangles);
} // namespace MeshTopology
