#include "CInsideRuns.h"

#include "COrmLog.h"
#include "CRayCrossings.h"
#include "MeshTopology.h"

#include <array>

namespace
{
bool isClosed(const IA3D::mesh& objMesh)
{
    std::vector<quint32> vecTriangles;
    vecTriangles.reserve(3 * objMesh.m_vecTriangles.size());
    for (const IA3D::mesh::_Triangle& triangle : objMesh.m_vecTriangles)
        vecTriangles.insert(vecTriangles.end(), {triangle.a, triangle.b, triangle.c});
    return MeshTopology::isClosed(vecTriangles.data(), static_cast<qint64>(objMesh.m_vecTriangles.size()),
                                  static_cast<qint64>(objMesh.m_vecPoints.size()));
}

void reportUnusable()
{
    ORM_LOG(2, QStringLiteral("A surface crosses itself too often to have an inside: it does not limit the volume."));
}
} // namespace

CInsideRuns::CInsideRuns(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid) : m_nHeight(objGrid.cells(1))
{
    if (isClosed(objMesh))
        takeWinding(objMesh, objGrid);
    else
        takeMajority(objMesh, objGrid);
}

void CInsideRuns::takeWinding(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid)
{
    const CRayCrossings objCrossings(objMesh, objGrid, 0);
    m_vecStart.assign(objCrossings.rays() + 1, 0);
    m_bUsable = objCrossings.isUsable();
    if (!m_bUsable)
        return reportUnusable();
    for (std::size_t nRay = 0; nRay < objCrossings.rays(); ++nRay)
    {
        int nWinding = 0;
        long nFirst = 0;
        for (const CRayCrossings::SCrossing* p = objCrossings.begin(nRay); p != objCrossings.end(nRay); ++p)
        {
            const bool bWasInside = nWinding != 0;
            nWinding += p->m_nTurn;
            if (!bWasInside)
                nFirst = p->m_nCell;
            else if (nWinding == 0 && p->m_nCell > nFirst)
                m_vecRuns.push_back({nFirst, p->m_nCell});
        }
        m_vecStart[nRay + 1] = m_vecRuns.size();
    }
}

void CInsideRuns::takeMajority(const IA3D::mesh& objMesh, const bVolumeGrid& objGrid)
{
    const std::array<std::size_t, 3> anCells = {static_cast<std::size_t>(objGrid.cells(0)), static_cast<std::size_t>(objGrid.cells(1)),
                                                static_cast<std::size_t>(objGrid.cells(2))};
    const std::array<std::size_t, 3> anStep = {1, anCells[0], anCells[0] * anCells[1]};
    m_vecStart.assign(anCells[1] * anCells[2] + 1, 0);
    std::vector<signed char> vecVotes(anCells[0] * anCells[1] * anCells[2], 0); // for the inside, less those for the outside
    std::vector<bool> vecInsideVote(vecVotes.size(), false);
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        const CRayCrossings objCrossings(objMesh, objGrid, nAxis);
        m_bUsable = objCrossings.isUsable();
        if (!m_bUsable)
            return reportUnusable();
        const std::size_t nNext = (nAxis + 1) % 3;
        const std::size_t nThird = (nAxis + 2) % 3;
        for (std::size_t nRay = 0; nRay < objCrossings.rays(); ++nRay)
        {
            const CRayCrossings::SCrossing* p = objCrossings.begin(nRay);
            const CRayCrossings::SCrossing* pEnd = objCrossings.end(nRay);
            if ((pEnd - p) % 2 != 0)
                continue; // a leak
            std::size_t nCell = (nRay % anCells[nNext]) * anStep[nNext] + (nRay / anCells[nNext]) * anStep[nThird];
            bool bInside = false;
            for (std::size_t i = 0; i < anCells[nAxis]; ++i, nCell += anStep[nAxis])
            {
                for (; p != pEnd && static_cast<std::size_t>(p->m_nCell) <= i; ++p)
                    bInside = !bInside;
                vecVotes[nCell] = static_cast<signed char>(vecVotes[nCell] + (bInside ? 1 : -1));
                if (bInside)
                    vecInsideVote[nCell] = true;
            }
        }
    }
    const auto isInside = [&](std::size_t nCell) // a draw keeps what is there
    { return vecVotes[nCell] > 0 || (vecVotes[nCell] == 0 && vecInsideVote[nCell]); };
    for (std::size_t nRow = 0; nRow + 1 < m_vecStart.size(); ++nRow)
    {
        const std::size_t nFirstCell = nRow * anCells[0];
        for (std::size_t i = 0; i < anCells[0]; ++i)
        {
            if (!isInside(nFirstCell + i))
                continue;
            const std::size_t nFirst = i;
            while (i < anCells[0] && isInside(nFirstCell + i))
                ++i;
            m_vecRuns.push_back({static_cast<long>(nFirst), static_cast<long>(i)});
        }
        m_vecStart[nRow + 1] = m_vecRuns.size();
    }
}
