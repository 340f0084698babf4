#include "MeshTopology.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace
{
/// Calls fnEdge(smaller vertex, greater vertex, 0 or 1 for the direction) for every edge of every triangle that has a length.
template <typename FnEdge>
void forEachEdge(const quint32* pTriangles, qint64 nTriangles, FnEdge fnEdge)
{
    for (qint64 i = 0; i < nTriangles; ++i)
    {
        const quint32* pCorners = pTriangles + 3 * i;
        for (int nCorner = 0; nCorner < 3; ++nCorner)
        {
            const quint32 nFrom = pCorners[nCorner];
            const quint32 nTo = pCorners[(nCorner + 1) % 3];
            if (nFrom != nTo)
                fnEdge(std::min(nFrom, nTo), std::max(nFrom, nTo), nFrom < nTo ? 0U : 1U);
        }
    }
}

/// Whether the edges of one vertex, given as (greater vertex, direction), come in pairs of opposite direction.
bool isBalanced(std::vector<quint64>::iterator itFrom, std::vector<quint64>::iterator itTo)
{
    std::sort(itFrom, itTo);
    while (itFrom != itTo)
    {
        const quint64 nVertex = *itFrom >> 1;
        qint64 nBalance = 0;
        for (; itFrom != itTo && *itFrom >> 1 == nVertex; ++itFrom)
            nBalance += (*itFrom & 1U) != 0 ? 1 : -1;
        if (nBalance != 0)
            return false;
    }
    return true;
}
} // namespace

namespace MeshTopology
{
bool isClosed(const quint32* pTriangles, qint64 nTriangles, qint64 nVertices)
{
    if (nTriangles <= 0)
        return false;
    // Edges are gathered at their smaller vertex, where there are only a few of them.
    std::vector<std::size_t> vecStart(static_cast<std::size_t>(nVertices) + 1, 0);
    forEachEdge(pTriangles, nTriangles, [&](quint32 nLow, quint32, quint32) { ++vecStart[nLow + 1U]; });
    for (std::size_t i = 1; i < vecStart.size(); ++i)
        vecStart[i] += vecStart[i - 1];
    std::vector<quint64> vecEdges(vecStart.back());
    std::vector<std::size_t> vecNext(vecStart.begin(), vecStart.end() - 1);
    forEachEdge(pTriangles, nTriangles,
                [&](quint32 nLow, quint32 nHigh, quint32 nDirection)
                { vecEdges[vecNext[nLow]++] = static_cast<quint64>(nHigh) << 1 | nDirection; });
    for (std::size_t i = 0; i + 1 < vecStart.size(); ++i)
    {
        if (!isBalanced(vecEdges.begin() + static_cast<std::ptrdiff_t>(vecStart[i]),
                        vecEdges.begin() + static_cast<std::ptrdiff_t>(vecStart[i + 1])))
            return false;
    }
    return true;
}

double signedVolume(const float* pVertices, const quint32* pTriangles, qint64 nTriangles)
{
    if (nTriangles <= 0)
        return 0.0;
    // Tetrahedra from a point of the surface, so that a surface far from the origin loses no digits.
    const float* pApex = pVertices + 3 * static_cast<std::size_t>(pTriangles[0]);
    double fSixfold = 0.0;
    for (qint64 i = 0; i < nTriangles; ++i)
    {
        double afEdge[3][3];
        for (int nCorner = 0; nCorner < 3; ++nCorner)
        {
            const float* pCorner = pVertices + 3 * static_cast<std::size_t>(pTriangles[3 * i + nCorner]);
            for (int nAxis = 0; nAxis < 3; ++nAxis)
                afEdge[nCorner][nAxis] = static_cast<double>(pCorner[nAxis]) - static_cast<double>(pApex[nAxis]);
        }
        fSixfold += afEdge[0][0] * (afEdge[1][1] * afEdge[2][2] - afEdge[1][2] * afEdge[2][1]) +
                    afEdge[0][1] * (afEdge[1][2] * afEdge[2][0] - afEdge[1][0] * afEdge[2][2]) +
                    afEdge[0][2] * (afEdge[1][0] * afEdge[2][1] - afEdge[1][1] * afEdge[2][0]);
    }
    return fSixfold / 6.0;
}
} // namespace MeshTopology
