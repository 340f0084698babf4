#include "CMeshGeometry.h"

#include "MeshTopology.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

CMeshGeometry::CMeshGeometry(std::vector<float> vecVertices, std::vector<quint32> vecTriangles)
    : m_vecVertices(std::move(vecVertices)), m_vecTriangles(std::move(vecTriangles))
{
    if (m_vecVertices.empty())
        return;
    float afMin[3] = {m_vecVertices[0], m_vecVertices[1], m_vecVertices[2]};
    float afMax[3] = {afMin[0], afMin[1], afMin[2]};
    for (std::size_t i = 0; i + 2 < m_vecVertices.size(); i += 3)
    {
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
        {
            afMin[nAxis] = std::min(afMin[nAxis], m_vecVertices[i + nAxis]);
            afMax[nAxis] = std::max(afMax[nAxis], m_vecVertices[i + nAxis]);
        }
    }
    m_objMin = Coord3d(afMin[0], afMin[1], afMin[2]);
    m_objMax = Coord3d(afMax[0], afMax[1], afMax[2]);
}

const CMeshGeometry::SDerived& CMeshGeometry::derived() const
{
    if (!m_pDerived)
    {
        auto pDerived = std::make_unique<SDerived>();
        pDerived->m_bClosed = MeshTopology::isClosed(m_vecTriangles.data(), triangleCount(), vertexCount());
        pDerived->m_bInsideOut =
            pDerived->m_bClosed && MeshTopology::signedVolume(m_vecVertices.data(), m_vecTriangles.data(), triangleCount()) < 0.0;
        pDerived->m_vecNormals = computedNormals(pDerived->m_bInsideOut);
        m_pDerived = std::move(pDerived);
    }
    return *m_pDerived;
}

std::vector<float> CMeshGeometry::computedNormals(bool bInsideOut) const
{
    std::vector<double> vecSums(m_vecVertices.size(), 0.0);
    const double fSign = bInsideOut ? -1.0 : 1.0;
    for (std::size_t i = 0; i + 2 < m_vecTriangles.size(); i += 3)
    {
        const std::size_t anAt[3] = {3 * static_cast<std::size_t>(m_vecTriangles[i]), 3 * static_cast<std::size_t>(m_vecTriangles[i + 1]),
                                     3 * static_cast<std::size_t>(m_vecTriangles[i + 2])};
        double afFirst[3];
        double afSecond[3];
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
        {
            const double fApex = m_vecVertices[anAt[0] + nAxis];
            afFirst[nAxis] = m_vecVertices[anAt[1] + nAxis] - fApex;
            afSecond[nAxis] = m_vecVertices[anAt[2] + nAxis] - fApex;
        }
        // The cross product is as long as twice the triangle's area: adding it up weighs by area.
        const double afNormal[3] = {afFirst[1] * afSecond[2] - afFirst[2] * afSecond[1],
                                    afFirst[2] * afSecond[0] - afFirst[0] * afSecond[2],
                                    afFirst[0] * afSecond[1] - afFirst[1] * afSecond[0]};
        for (const std::size_t nAt : anAt)
        {
            for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
                vecSums[nAt + nAxis] += fSign * afNormal[nAxis];
        }
    }
    std::vector<float> vecNormals(m_vecVertices.size(), 0.0f);
    for (std::size_t i = 0; i + 2 < vecSums.size(); i += 3)
    {
        const double fLength = std::hypot(vecSums[i], vecSums[i + 1], vecSums[i + 2]);
        if (!(fLength > 0.0) || !std::isfinite(fLength))
        {
            vecNormals[i + 2] = 1.0f; // a vertex of no triangle, or of triangles without area
            continue;
        }
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            vecNormals[i + nAxis] = static_cast<float>(vecSums[i + nAxis] / fLength);
    }
    return vecNormals;
}
