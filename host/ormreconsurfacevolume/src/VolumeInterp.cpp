#include "VolumeInterp.h"

#include "CInsideRuns.h"

#include <algorithm>

VolumeInterp::VolumeInterp(fVolumeGrid& objGrid, IA3D::mesh* pMesh, double fMinimum)
    : m_objGrid(objGrid), m_pMesh(pMesh), m_fMinimum(fMinimum)
{
}

bool VolumeInterp::triLinearInterp(unsigned long nFactor)
{
    if (!m_objGrid.subdivide(nFactor))
        return false;
    m_objGrid.update(m_fMinimum);
    if (!m_pMesh || m_pMesh->is_empty())
        return true;
    const CInsideRuns objInside(*m_pMesh, m_objGrid);
    if (!objInside.isUsable())
        return true;
    const long nWidth = m_objGrid.cells(0);
    m_objGrid.change(
        [&](long nY, long nZ, float* pAmounts)
        {
            long nDone = 0;
            for (const CInsideRuns::SRun* p = objInside.begin(nY, nZ); p != objInside.end(nY, nZ); ++p)
            {
                std::fill(pAmounts + nDone, pAmounts + p->m_nFirst, 0.0f);
                nDone = p->m_nEnd;
            }
            std::fill(pAmounts + nDone, pAmounts + nWidth, 0.0f);
        });
    return true;
}
