#pragma once

#include "Coord3d.h"

#include <QtGlobal>

#include <memory>
#include <vector>

/// Vertices and triangles of a surface, and what follows from them alone. Never changed after it was made, so that any
/// number of meshes may share it.
class CMeshGeometry
{
public:
    CMeshGeometry() = default;
    /// @param vecVertices  finite coordinates x, y, z
    /// @param vecTriangles three indexes below the number of vertices per triangle
    CMeshGeometry(std::vector<float> vecVertices, std::vector<quint32> vecTriangles);
    CMeshGeometry(const CMeshGeometry&) = delete;
    CMeshGeometry& operator=(const CMeshGeometry&) = delete;

    const std::vector<float>& vertices() const { return m_vecVertices; }
    const std::vector<quint32>& triangles() const { return m_vecTriangles; }
    qint64 vertexCount() const { return static_cast<qint64>(m_vecVertices.size() / 3); }
    qint64 triangleCount() const { return static_cast<qint64>(m_vecTriangles.size() / 3); }
    const Coord3d& min() const { return m_objMin; }
    const Coord3d& max() const { return m_objMax; }

    /// Whether the surface has an inside; decided at the first call.
    bool isClosed() const { return derived().m_bClosed; }
    /// Whether the triangles of a closed surface turn counter-clockwise seen from inside.
    bool isInsideOut() const { return derived().m_bInsideOut; }
    /// One normal of unit length per vertex, weighted by the triangles' areas; outwards where the surface is closed.
    const std::vector<float>& normals() const { return derived().m_vecNormals; }

private:
    struct SDerived
    {
        bool m_bClosed = false;
        bool m_bInsideOut = false;
        std::vector<float> m_vecNormals;
    };
    const SDerived& derived() const;
    std::vector<float> computedNormals(bool bInsideOut) const;

    std::vector<float> m_vecVertices;
    std::vector<quint32> m_vecTriangles;
    Coord3d m_objMin;
    Coord3d m_objMax;
    mutable std::unique_ptr<const SDerived> m_pDerived; ///< null until it is needed
};
