#include "VolumeSurfaceConversion.h"

#include "CGridSweep.h"
#include "CInsideRuns.h"
#include "COrmLog.h"
#include "COrmProcess.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

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

/// What a grid becomes.
struct SKept
{
    QVector<C3DVolume::Voxel> m_vecVoxels;
    float m_fMin = 0.0f; ///< of the values; 0 without any
    float m_fMax = 0.0f;
};

/// The voxels in the parts of the cells that held one, with value 0: what a grid without any amount gives.
SKept emptyVoxels(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside)
{
    SKept sKept;
    forEachRun(objGrid, objSweep, pInside,
               [&](const double*, long nCount, long nFirst, long nY, long nZ)
               {
                   for (long nX = nFirst; nX < nFirst + nCount; ++nX)
                   {
                       if (!objGrid.isFilled(nX, nY, nZ))
                           continue;
                       const Coord3d objCentre = objGrid.cellCentre(nX, nY, nZ);
                       sKept.m_vecVoxels.append({static_cast<float>(objCentre.x), static_cast<float>(objCentre.y),
                                                 static_cast<float>(objCentre.z), C3DSGNode::m_nObjectCount++, 0.0f});
                   }
               });
    return sKept;
}

/// The cells from fLeast on, scaled to the total that the grid was made of. They are counted first and written once.
SKept keptVoxels(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside, double fLeast, double fHighest)
{
    double fSum = 0.0;
    double fLowest = fHighest;
    qint64 nKept = 0;
    forEachRun(objGrid, objSweep, pInside,
               [&](const double* pAmounts, long nCount, long, long, long)
               {
                   for (long i = 0; i < nCount; ++i)
                   {
                       const bool bKept = pAmounts[i] >= fLeast;
                       fSum += bKept ? pAmounts[i] : 0.0;
                       fLowest = bKept && pAmounts[i] < fLowest ? pAmounts[i] : fLowest;
                       nKept += bKept ? 1 : 0;
                   }
               });
    constexpr double fMost = std::numeric_limits<float>::max();
    const double fScale = fSum > 0.0 ? objGrid.sourceTotal() / fSum : 1.0;
    const auto scaled = [=](double fAmount) { return static_cast<float>(std::min(fAmount * fScale, fMost)); };

    SKept sKept;
    sKept.m_fMin = scaled(fLowest);
    sKept.m_fMax = scaled(fHighest);
    sKept.m_vecVoxels.reserve(static_cast<int>(nKept));
    std::vector<float> vecX;
    for (long nX = 0; nX < objGrid.cells(0); ++nX)
        vecX.push_back(static_cast<float>(objGrid.cellCentre(nX, 0, 0).x));
    forEachRun(objGrid, objSweep, pInside,
               [&](const double* pAmounts, long nCount, long nFirst, long nY, long nZ)
               {
                   const auto nInRun = std::count_if(pAmounts, pAmounts + nCount, [=](double fAmount) { return fAmount >= fLeast; });
                   const int nBefore = sKept.m_vecVoxels.size();
                   sKept.m_vecVoxels.resize(nBefore + static_cast<int>(nInRun));
                   C3DVolume::Voxel* pVoxel = sKept.m_vecVoxels.data() + nBefore;
                   const Coord3d objRow = objGrid.cellCentre(0, nY, nZ);
                   const auto fY = static_cast<float>(objRow.y);
                   const auto fZ = static_cast<float>(objRow.z);
                   long nID = C3DSGNode::m_nObjectCount;
                   C3DSGNode::m_nObjectCount += static_cast<long>(nInRun);
                   for (long i = 0; i < nCount; ++i)
                   {
                       if (pAmounts[i] >= fLeast)
                           *pVoxel++ = {vecX[static_cast<std::size_t>(nFirst + i)], fY, fZ, nID++, scaled(pAmounts[i])};
                   }
               });
    return sKept;
}

SKept voxelsOf(const fVolumeGrid& objGrid, const IA3D::mesh* pMesh, bool bAllCells)
{
    std::unique_ptr<const CInsideRuns> pInside;
    if (pMesh && !pMesh->is_empty())
        pInside = std::make_unique<const CInsideRuns>(*pMesh, objGrid);
    const CInsideRuns* pKept = pInside && !pInside->isEmpty() ? pInside.get() : nullptr;
    CGridSweep objSweep(objGrid);
    if (!(objGrid.sourceTotal() > 0.0))
    {
        SKept sKept = emptyVoxels(objGrid, objSweep, pKept);
        return sKept.m_vecVoxels.isEmpty() && pKept ? emptyVoxels(objGrid, objSweep, nullptr) : sKept;
    }
    double fHighest = highestAmount(objGrid, objSweep, pKept);
    if (!(fHighest > 0.0) && pKept)
    {
        pKept = nullptr;
        fHighest = highestAmount(objGrid, objSweep, nullptr);
    }
    return keptVoxels(objGrid, objSweep, pKept, bAllCells ? 0.0 : fLeastFraction * fHighest, fHighest);
}

bool writeGrid(const fVolumeGrid& objGrid, C3DVolume& objTarget, const IA3D::mesh* pMesh, bool bAllCells)
{
    try
    {
        SKept sKept = voxelsOf(objGrid, pMesh, bAllCells);
        return objTarget.takeVoxelData(static_cast<float>(objGrid.cellSize()), std::move(sKept.m_vecVoxels), sKept.m_fMin, sKept.m_fMax);
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
