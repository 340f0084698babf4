#pragma once

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

/// Surfaces whose inside is known.
namespace Shapes
{
struct SSurface
{
    std::vector<float> m_vecVertices;    ///< x, y, z
    std::vector<quint32> m_vecTriangles; ///< counter-clockwise seen from outside

    quint32 add(double fX, double fY, double fZ)
    {
        m_vecVertices.insert(m_vecVertices.end(), {static_cast<float>(fX), static_cast<float>(fY), static_cast<float>(fZ)});
        return static_cast<quint32>(m_vecVertices.size() / 3 - 1);
    }
    void addTriangle(quint32 a, quint32 b, quint32 c) { m_vecTriangles.insert(m_vecTriangles.end(), {a, b, c}); }
    /// Turns every triangle round.
    void invert()
    {
        for (std::size_t i = 0; i + 2 < m_vecTriangles.size(); i += 3)
            std::swap(m_vecTriangles[i + 1], m_vecTriangles[i + 2]);
    }
    /// Adds another surface.
    void append(const SSurface& sOther)
    {
        const auto nShift = static_cast<quint32>(m_vecVertices.size() / 3);
        m_vecVertices.insert(m_vecVertices.end(), sOther.m_vecVertices.begin(), sOther.m_vecVertices.end());
        for (const quint32 n : sOther.m_vecTriangles)
            m_vecTriangles.push_back(n + nShift);
    }
};

/// A box with corners at (fX1, fY1, fZ1) and (fX2, fY2, fZ2).
inline SSurface box(double fX1, double fY1, double fZ1, double fX2, double fY2, double fZ2)
{
    SSurface sBox;
    for (int i = 0; i < 8; ++i)
        sBox.add((i & 1) != 0 ? fX2 : fX1, (i & 2) != 0 ? fY2 : fY1, (i & 4) != 0 ? fZ2 : fZ1);
    const quint32 anFaces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    for (const auto& anFace : anFaces)
    {
        sBox.addTriangle(anFace[0], anFace[1], anFace[2]);
        sBox.addTriangle(anFace[0], anFace[2], anFace[3]);
    }
    return sBox;
}

/// A torus about the z axis, or with nRings = 0 ... a ball: see below.
inline SSurface torus(double fRadius, double fTube, int nAround, int nTube)
{
    constexpr double fTurn = 6.283185307179586;
    SSurface sTorus;
    for (int i = 0; i < nAround; ++i)
    {
        for (int j = 0; j < nTube; ++j)
        {
            const double fA = fTurn * i / nAround;
            const double fB = fTurn * j / nTube;
            const double fR = fRadius + fTube * std::cos(fB);
            sTorus.add(fR * std::cos(fA), fR * std::sin(fA), fTube * std::sin(fB));
        }
    }
    const auto at = [&](int i, int j) { return static_cast<quint32>((i % nAround) * nTube + j % nTube); };
    for (int i = 0; i < nAround; ++i)
    {
        for (int j = 0; j < nTube; ++j)
        {
            sTorus.addTriangle(at(i, j), at(i + 1, j), at(i + 1, j + 1));
            sTorus.addTriangle(at(i, j), at(i + 1, j + 1), at(i, j + 1));
        }
    }
    return sTorus;
}

/// A ball of triangles, an octahedron subdivided nSteps times; its corners lie on the sphere.
inline SSurface ball(double fRadius, int nSteps, double fX = 0.0, double fY = 0.0, double fZ = 0.0)
{
    using Point = std::array<double, 3>;
    std::vector<Point> vecPoints = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
    std::vector<quint32> vecTriangles = {0, 2, 4, 2, 1, 4, 1, 3, 4, 3, 0, 4, 2, 0, 5, 1, 2, 5, 3, 1, 5, 0, 3, 5};
    for (int nStep = 0; nStep < nSteps; ++nStep)
    {
        std::map<std::pair<quint32, quint32>, quint32> mapMiddles;
        const auto middle = [&](quint32 a, quint32 b)
        {
            const auto [it, bNew] = mapMiddles.try_emplace(std::minmax(a, b), static_cast<quint32>(vecPoints.size()));
            if (bNew)
            {
                Point afMiddle = {vecPoints[a][0] + vecPoints[b][0], vecPoints[a][1] + vecPoints[b][1], vecPoints[a][2] + vecPoints[b][2]};
                const double fLength = std::hypot(afMiddle[0], afMiddle[1], afMiddle[2]);
                for (double& f : afMiddle)
                    f /= fLength;
                vecPoints.push_back(afMiddle);
            }
            return it->second;
        };
        std::vector<quint32> vecFiner;
        for (std::size_t i = 0; i + 2 < vecTriangles.size(); i += 3)
        {
            const quint32 a = vecTriangles[i];
            const quint32 b = vecTriangles[i + 1];
            const quint32 c = vecTriangles[i + 2];
            const quint32 ab = middle(a, b);
            const quint32 bc = middle(b, c);
            const quint32 ca = middle(c, a);
            vecFiner.insert(vecFiner.end(), {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca});
        }
        vecTriangles = std::move(vecFiner);
    }
    SSurface sBall;
    for (const Point& point : vecPoints)
        sBall.add(fX + fRadius * point[0], fY + fRadius * point[1], fZ + fRadius * point[2]);
    sBall.m_vecTriangles = std::move(vecTriangles);
    return sBall;
}
} // namespace Shapes
