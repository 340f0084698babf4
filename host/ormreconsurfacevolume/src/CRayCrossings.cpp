#include "CRayCrossings.h"

#include "COrmProcess.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr std::size_t nCrossingsPerRay = 16;      ///< on average, far more than any skin has
constexpr std::size_t nCrossingsAnyway = 1000000; ///< so many are always believed
constexpr std::size_t nLinesPerTriangle = 64;     ///< on average, lines of rays that a triangle reaches over
constexpr std::size_t nTrianglesPerBreath = 65536;
} // namespace

/// A crossing and its ray.
struct CRayCrossings::SFound
{
    std::size_t m_nRay;
    SCrossing m_sCrossing;
};

/// A corner of a triangle: its place along the rays, across them, and along the third axis, there also as the first cell from it on.
struct CRayCrossings::SCorner
{
    std::array<double, 3> m_afPlace;
    int m_nLine;
};

CRayCrossings::CRayCrossings(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid, std::size_t nAxis)
{
    const Coord3d objFirst = objGrid.cellCentre(0, 0, 0);
    const std::array<double, 3> afFirst = {objFirst.x, objFirst.y, objFirst.z};
    for (std::size_t i = 0; i < 3; ++i)
    {
        m_afOrigin[i] = afFirst[(nAxis + i) % 3];
        m_anCells[i] = objGrid.cells(static_cast<int>((nAxis + i) % 3));
    }
    m_fCellSize = objGrid.cellSize();
    const std::size_t nRays = static_cast<std::size_t>(m_anCells[1]) * static_cast<std::size_t>(m_anCells[2]);
    m_vecStart.assign(nRays + 1, 0);
    m_nMostCrossings = nCrossingsPerRay * nRays + nCrossingsAnyway;
    std::size_t nLinesLeft = nLinesPerTriangle * objMesh.m_vecTriangles.size() + nCrossingsAnyway;

    std::vector<SFound> vecFound;
    std::size_t nDone = 0;
    for (const IA3D::mesh::_Triangle& triangle : objMesh.m_vecTriangles)
    {
        if (++nDone % nTrianglesPerBreath == 0)
            COrmProcess::keepAlive();
        SCorner asCorners[3];
        const unsigned int anCorners[3] = {triangle.a, triangle.b, triangle.c};
        for (std::size_t i = 0; i < 3; ++i)
        {
            const IA3D::mesh::_Point& point = objMesh.m_vecPoints[anCorners[i]];
            const std::array<double, 3> afPoint = {point.x, point.y, point.z};
            asCorners[i].m_afPlace = {afPoint[nAxis], afPoint[(nAxis + 1) % 3], afPoint[(nAxis + 2) % 3]};
            asCorners[i].m_nLine = firstCellFrom(asCorners[i].m_afPlace[2], 2);
        }
        if (!cross(asCorners, vecFound, nLinesLeft))
        {
            m_bUsable = false;
            return;
        }
    }

    for (const SFound& sFound : vecFound)
        ++m_vecStart[sFound.m_nRay + 1];
    for (std::size_t i = 1; i < m_vecStart.size(); ++i)
        m_vecStart[i] += m_vecStart[i - 1];
    m_vecCrossings.resize(vecFound.size());
    std::vector<std::size_t> vecNext(m_vecStart.begin(), m_vecStart.end() - 1);
    for (const SFound& sFound : vecFound)
        m_vecCrossings[vecNext[sFound.m_nRay]++] = sFound.m_sCrossing;
    for (std::size_t nRay = 0; nRay < nRays; ++nRay)
        std::sort(m_vecCrossings.begin() + static_cast<std::ptrdiff_t>(m_vecStart[nRay]),
                  m_vecCrossings.begin() + static_cast<std::ptrdiff_t>(m_vecStart[nRay + 1]),
                  [](const SCrossing& s1, const SCrossing& s2) { return s1.m_nCell < s2.m_nCell; });
}

/// The first cell along an axis whose centre is at the place or beyond it; the number of cells where none is.
int CRayCrossings::firstCellFrom(double fPlace, std::size_t nAxis) const
{
    const double fCell = std::ceil((fPlace - m_afOrigin[nAxis]) / m_fCellSize);
    return fCell > 0.0 ? static_cast<int>(std::min(fCell, static_cast<double>(m_anCells[nAxis]))) : 0;
}

/// Adds the crossings of one triangle; false when there are too many. A triangle is cut by planes of rays into segments, a segment by the
/// rays of its plane. Ends of segments and rays are compared as cell numbers only, and the end of a segment is computed from its edge
/// alone, lower corner first: what belongs to one triangle never belongs to its neighbour, too, and nothing is lost between them.
bool CRayCrossings::cross(const SCorner* pCorners, std::vector<SFound>& vecFound, std::size_t& nLinesLeft) const
{
    const int nLowLine = std::min({pCorners[0].m_nLine, pCorners[1].m_nLine, pCorners[2].m_nLine});
    const int nHighLine = std::max({pCorners[0].m_nLine, pCorners[1].m_nLine, pCorners[2].m_nLine});
    if (nLowLine == nHighLine)
        return true;
    const int nAcross1 = firstCellFrom(std::min({pCorners[0].m_afPlace[1], pCorners[1].m_afPlace[1], pCorners[2].m_afPlace[1]}), 1);
    const int nAcross2 = firstCellFrom(std::max({pCorners[0].m_afPlace[1], pCorners[1].m_afPlace[1], pCorners[2].m_afPlace[1]}), 1);
    if (nAcross2 == 0 || nAcross1 == m_anCells[1])
        return true; // beside all rays
    for (int nLine = nLowLine; nLine < nHighLine; ++nLine)
    {
        if (nLinesLeft-- == 0)
            return false;
        const double fLine = centre(nLine, 2);
        double afEnd[2][2] = {{0.0, 0.0}, {0.0, 0.0}}; // where the edge that goes up, and the one that goes down, meet the plane
        for (std::size_t i = 0; i < 3; ++i)
        {
            const SCorner& sFrom = pCorners[i];
            const SCorner& sTo = pCorners[(i + 1) % 3];
            const bool bUp = sFrom.m_nLine < sTo.m_nLine;
            const SCorner& sLow = bUp ? sFrom : sTo;
            const SCorner& sHigh = bUp ? sTo : sFrom;
            if (nLine < sLow.m_nLine || nLine >= sHigh.m_nLine)
                continue;
            const double fPart = (fLine - sLow.m_afPlace[2]) / (sHigh.m_afPlace[2] - sLow.m_afPlace[2]);
            for (std::size_t nAxis = 0; nAxis < 2; ++nAxis)
                afEnd[bUp ? 0 : 1][nAxis] = sLow.m_afPlace[nAxis] + fPart * (sHigh.m_afPlace[nAxis] - sLow.m_afPlace[nAxis]);
        }
        const int anRay[2] = {firstCellFrom(afEnd[0][1], 1), firstCellFrom(afEnd[1][1], 1)};
        const std::size_t nLow = anRay[0] < anRay[1] ? 0 : 1;
        const double* pLow = afEnd[nLow];
        const double* pHigh = afEnd[1 - nLow];
        if (vecFound.size() + static_cast<std::size_t>(std::abs(anRay[1] - anRay[0])) > m_nMostCrossings)
            return false;
        for (int nRay = anRay[nLow]; nRay < anRay[1 - nLow]; ++nRay)
        {
            const double fPart = (centre(nRay, 1) - pLow[1]) / (pHigh[1] - pLow[1]);
            const int nCell = firstCellFrom(pLow[0] + fPart * (pHigh[0] - pLow[0]), 0);
            const std::size_t nAt =
                static_cast<std::size_t>(nLine) * static_cast<std::size_t>(m_anCells[1]) + static_cast<std::size_t>(nRay);
            vecFound.push_back({nAt, {nCell, nLow == 0 ? 1 : -1}});
        }
    }
    return true;
}
