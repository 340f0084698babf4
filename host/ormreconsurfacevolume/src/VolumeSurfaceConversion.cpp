#include "VolumeSurfaceConversion.h"

#include "CGridSweep.h"
#include "CInsideRuns.h"
#include "COrmLog.h"
#include "COrmProcess.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

namespace
{
constexpr double fLeastFraction = 1e-3; ///< of the highest amount: what is below it is not worth a voxel

/// Calls fnRun(first amount, number of amounts, x of the first, y, z) for every run of cells to be kept.
template <typename FnRun>
void forEachRun(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside, FnRun fnRun)
{
    const long nWidth = objGrid.cells(0);
    for (long nZ = 0; nZ < objGrid.cells(2); ++nZ)
    {
        COrmProcess::keepAlive();
        const double* pRow = objSweep.plane(nZ);
        for (long nY = 0; nY < objGrid.cells(1); ++nY, pRow += nWidth)
        {
            if (!pInside)
            {
                fnRun(pRow, nWidth, 0L, nY, nZ);
                continue;
            }
            for (const CInsideRuns::SRun* p = pInside->begin(nY, nZ); p != pInside->end(nY, nZ); ++p)
                fnRun(pRow + p->m_nFirst, p->m_nEnd - p->m_nFirst, p->m_nFirst, nY, nZ);
        }
    }
}

double highestAmount(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside)
{
    double fHighest = 0.0;
    forEachRun(objGrid, objSweep, pInside,
               [&](const double* pAmounts, long nCount, long, long, long)
               {
                   for (long i = 0; i < nCount; ++i)
                       fHighest = std::max(fHighest, pAmounts[i]);
               });
    return fHighest;
}

/// A cell of the grid as a voxel.
C3DVolume::Voxel voxelAt(const fVolumeGrid& objGrid, long nX, long nY, long nZ, double fAmount)
{
    constexpr double fMost = std::numeric_limits<float>::max();
    const Coord3d objCentre = objGrid.cellCentre(nX, nY, nZ);
    return {static_cast<float>(objCentre.x), static_cast<float>(objCentre.y), static_cast<float>(objCentre.z), C3DSGNode::m_nObjectCount++,
            static_cast<float>(std::min(fAmount, fMost))};
}

/// The parts of the cells that held a voxel, with value 0: what a grid without any amount gives.
QVector<C3DVolume::Voxel> emptyVoxels(const fVolumeGrid& objGrid, const CInsideRuns* pInside)
{
    QVector<C3DVolume::Voxel> vecVoxels;
    const auto keepRow = [&](long nFirst, long nEnd, long nY, long nZ)
    {
        for (long nX = nFirst; nX < nEnd; ++nX)
        {
            if (objGrid.isFilled(nX, nY, nZ))
                vecVoxels.append(voxelAt(objGrid, nX, nY, nZ, 0.0));
        }
    };
    for (long nZ = 0; nZ < objGrid.cells(2); ++nZ)
    {
        COrmProcess::keepAlive();
        for (long nY = 0; nY < objGrid.cells(1); ++nY)
        {
            if (!pInside)
            {
                keepRow(0, objGrid.cells(0), nY, nZ);
                continue;
            }
            for (const CInsideRuns::SRun* p = pInside->begin(nY, nZ); p != pInside->end(nY, nZ); ++p)
                keepRow(p->m_nFirst, p->m_nEnd, nY, nZ);
        }
    }
    return vecVoxels;
}

/// The cells from fLeast on, scaled to the total that the grid was made of.
QVector<C3DVolume::Voxel> keptVoxels(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside, double fLeast)
{
    double fKept = 0.0;
    qint64 nKept = 0;
    forEachRun(objGrid, objSweep, pInside,
               [&](const double* pAmounts, long nCount, long, long, long)
               {
                   for (long i = 0; i < nCount; ++i)
                   {
                       const bool bKept = pAmounts[i] >= fLeast;
                       fKept += bKept ? pAmounts[i] : 0.0;
                       nKept += bKept ? 1 : 0;
                   }
               });
    const double fScale = fKept > 0.0 ? objGrid.sourceTotal() / fKept : 1.0;

    QVector<C3DVolume::Voxel> vecVoxels;
    vecVoxels.reserve(static_cast<int>(nKept));
    forEachRun(objGrid, objSweep, pInside,
               [&](const double* pAmounts, long nCount, long nFirst, long nY, long nZ)
               {
                   const auto nInRun = std::count_if(pAmounts, pAmounts + nCount, [=](double fAmount) { return fAmount >= fLeast; });
                   const int nBefore = vecVoxels.size();
                   vecVoxels.resize(nBefore + static_cast<int>(nInRun));
                   C3DVolume::Voxel* pVoxel = vecVoxels.data() + nBefore;
                   for (long i = 0; i < nCount; ++i)
                   {
                       if (pAmounts[i] >= fLeast)
                           *pVoxel++ = voxelAt(objGrid, nFirst + i, nY, nZ, pAmounts[i] * fScale);
                   }
               });
    return vecVoxels;
}

bool replaceVoxels(C3DVolume& objTarget, double fCellSize, QVector<C3DVolume::Voxel> vecVoxels)
{
    const auto isLess = [](const C3DVolume::Voxel& voxel1, const C3DVolume::Voxel& voxel2) { return voxel1.fValue < voxel2.fValue; };
    const auto pairEnds = std::minmax_element(vecVoxels.cbegin(), vecVoxels.cend(), isLess);
    const float fMin = vecVoxels.isEmpty() ? 0.0f : pairEnds.first->fValue;
    const float fMax = vecVoxels.isEmpty() ? 0.0f : pairEnds.second->fValue;
    return objTarget.takeVoxelData(static_cast<float>(fCellSize), std::move(vecVoxels), fMin, fMax);
}

bool writeGrid(const fVolumeGrid& objGrid, C3DVolume& objTarget, const IA3D::mesh* pMesh, bool bAllCells)
{
    try
    {
        std::unique_ptr<const CInsideRuns> pInside;
        if (pMesh && !pMesh->is_empty())
            pInside = std::make_unique<const CInsideRuns>(*pMesh, objGrid);
        const CInsideRuns* pKept = pInside && !pInside->isEmpty() ? pInside.get() : nullptr;
        if (!(objGrid.sourceTotal() > 0.0))
        {
            QVector<C3DVolume::Voxel> vecVoxels = emptyVoxels(objGrid, pKept);
            if (vecVoxels.isEmpty() && pKept)
                vecVoxels = emptyVoxels(objGrid, nullptr);
            return replaceVoxels(objTarget, objGrid.cellSize(), std::move(vecVoxels));
        }
        CGridSweep objSweep(objGrid);
        double fHighest = highestAmount(objGrid, objSweep, pKept);
        if (!(fHighest > 0.0) && pKept)
        {
            pKept = nullptr;
            fHighest = highestAmount(objGrid, objSweep, nullptr);
        }
        const double fLeast = bAllCells ? 0.0 : fLeastFraction * fHighest;
        return replaceVoxels(objTarget, objGrid.cellSize(), keptVoxels(objGrid, objSweep, pKept, fLeast));
    }
    catch (const std::bad_alloc&)
    {
        ORM_LOG(3, QStringLiteral("A volume stays unrefined: there is not enough memory for %1 cells.").arg(objGrid.cellCount()));
        return false;
    }
}

IA3D::mesh::_Vector unitVector(double fX, double fY, double fZ)
{
    const double fLength = std::hypot(fX, fY, fZ);
    if (!(fLength > 0.0) || !std::isfinite(fLength))
        return {0.0, 0.0, 1.0};
    return {fX / fLength, fY / fLength, fZ / fLength};
}
} // namespace

bool VolumeSurfaceConversion::convert(C3DMesh& objSource, IA3D::mesh& objTarget)
{
    const std::vector<float>& vecVertices = objSource.vertices();
    const std::vector<quint32>& vecTriangles = objSource.triangles();
    IA3D::mesh objResult;
    objResult.m_vecPoints.reserve(vecVertices.size() / 3);
    for (std::size_t i = 0; i + 2 < vecVertices.size(); i += 3)
        objResult.m_vecPoints.push_back({vecVertices[i], vecVertices[i + 1], vecVertices[i + 2]});

    std::vector<IA3D::mesh::_Vector> vecSums(objResult.m_vecPoints.size());
    objResult.m_vecTriangles.reserve(vecTriangles.size() / 3);
    objResult.m_vecTriangleNormals.reserve(vecTriangles.size() / 3);
    for (std::size_t i = 0; i + 2 < vecTriangles.size(); i += 3)
    {
        const IA3D::mesh::_Triangle triangle{vecTriangles[i], vecTriangles[i + 1], vecTriangles[i + 2]};
        const IA3D::mesh::_Point& a = objResult.m_vecPoints[triangle.a];
        const IA3D::mesh::_Point& b = objResult.m_vecPoints[triangle.b];
        const IA3D::mesh::_Point& c = objResult.m_vecPoints[triangle.c];
        const IA3D::mesh::_Vector cross{(b.y - a.y) * (c.z - a.z) - (b.z - a.z) * (c.y - a.y),
                                        (b.z - a.z) * (c.x - a.x) - (b.x - a.x) * (c.z - a.z),
                                        (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)};
        for (const unsigned int nCorner : {triangle.a, triangle.b, triangle.c})
            vecSums[nCorner] = {vecSums[nCorner].x + cross.x, vecSums[nCorner].y + cross.y, vecSums[nCorner].z + cross.z};
        objResult.m_vecTriangles.push_back(triangle);
        objResult.m_vecTriangleNormals.push_back(unitVector(cross.x, cross.y, cross.z));
    }
    objResult.m_vecPointNormals.reserve(vecSums.size());
    for (const IA3D::mesh::_Vector& sum : vecSums)
        objResult.m_vecPointNormals.push_back(unitVector(sum.x, sum.y, sum.z));

    Coord3d objMin;
    Coord3d objMax;
    objSource.getBBox(objMin, objMax);
    objResult.m_pairRangeX = {objMin.x, objMax.x};
    objResult.m_pairRangeY = {objMin.y, objMax.y};
    objResult.m_pairRangeZ = {objMin.z, objMax.z};
    objTarget = std::move(objResult);
    return true;
}

bool VolumeSurfaceConversion::convert(C3DVolume& objSource, fVolumeGrid& objTarget)
{
    CVoxelLattice objLattice;
    QString strReason;
    if (!objLattice.fit(objSource.voxels(), static_cast<double>(objSource.getVoxelSize()), &strReason))
    {
        ORM_LOG(3, QStringLiteral("A volume has no grid: %1").arg(strReason));
        return false;
    }
    objTarget.assign(objLattice, objSource.voxels());
    return true;
}

bool VolumeSurfaceConversion::convert(fVolumeGrid& objSource, C3DVolume& objTarget, bool bAllCells)
{
    return writeGrid(objSource, objTarget, nullptr, bAllCells);
}

bool VolumeSurfaceConversion::convert(fVolumeGrid& objSource, C3DVolume& objTarget, IA3D::mesh& objMesh,
                                      IA3D::mesh_utils::viewinfo& /*view*/, bool bAllCells)
{
    return writeGrid(objSource, objTarget, &objMesh, bAllCells);
}
