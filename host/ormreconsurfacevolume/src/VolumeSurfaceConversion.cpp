#include "VolumeSurfaceConversion.h"

#include "CGridSweep.h"
#include "CInsideRuns.h"
#include "COrmLog.h"
#include "COrmProcess.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <numeric>
#include <utility>
#include <vector>

namespace
{
constexpr float fLeastFraction = 1e-3f; ///< of the highest amount: what is below it is not worth a voxel

/// Combines numbers in an order in which a processor can take several at once.
template <typename Value, typename FnCombine>
Value combined(const float* pNumbers, std::size_t nNumbers, Value start, FnCombine fnCombine)
{
    constexpr std::size_t nLanes = 16;
    std::array<Value, nLanes> aLanes;
    aLanes.fill(start);
    const std::size_t nWhole = nNumbers - nNumbers % nLanes;
    for (std::size_t i = 0; i < nWhole; i += nLanes)
    {
        for (std::size_t nLane = 0; nLane < nLanes; ++nLane)
            aLanes[nLane] = fnCombine(aLanes[nLane], static_cast<Value>(pNumbers[i + nLane]));
    }
    for (std::size_t i = nWhole; i < nNumbers; ++i)
        aLanes[i - nWhole] = fnCombine(aLanes[i - nWhole], static_cast<Value>(pNumbers[i]));
    return std::accumulate(aLanes.begin(), aLanes.end(), start, fnCombine);
}

const auto fnHigher = [](float f1, float f2) { return f1 < f2 ? f2 : f1; };
const auto fnLower = [](float f1, float f2) { return f2 < f1 ? f2 : f1; };

/// Calls fnRun(first amount, number of amounts, x of the first, y, z) for every run of cells to be kept.
template <typename FnRun>
void forEachRun(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside, FnRun fnRun)
{
    const CInsideRuns::SRun sWhole = {0, objGrid.cells(0)};
    for (long nZ = 0; nZ < objGrid.cells(2); ++nZ)
    {
        COrmProcess::keepAlive();
        for (long nY = 0; nY < objGrid.cells(1); ++nY)
        {
            const CInsideRuns::SRun* pBegin = pInside ? pInside->begin(nY, nZ) : &sWhole;
            const CInsideRuns::SRun* pEnd = pInside ? pInside->end(nY, nZ) : &sWhole + 1;
            if (pBegin == pEnd)
                continue;
            const float* pRow = objSweep.row(nY, nZ);
            for (const CInsideRuns::SRun* p = pBegin; p != pEnd; ++p)
                fnRun(pRow + p->m_nFirst, static_cast<std::size_t>(p->m_nEnd - p->m_nFirst), p->m_nFirst, nY, nZ);
        }
    }
}

/// What is known of a grid's amounts before any of them is kept.
struct SBounds
{
    float m_fHighest = 0.0f;
    std::size_t m_nMost = 0; ///< no more amounts than these are worth a voxel
};

SBounds boundsOf(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside, float fFraction)
{
    SBounds sBounds;
    forEachRun(objGrid, objSweep, pInside,
               [&](const float* pAmounts, std::size_t nCount, long, long, long)
               {
                   sBounds.m_fHighest = combined(pAmounts, nCount, sBounds.m_fHighest, fnHigher);
                   const float fLeast = fFraction * sBounds.m_fHighest; // of all that was seen so far, so that too many are counted
                   sBounds.m_nMost += static_cast<std::size_t>(
                       std::count_if(pAmounts, pAmounts + nCount, [=](float fAmount) { return fAmount >= fLeast; }));
               });
    return sBounds;
}

/// What a grid becomes.
struct SKept
{
    SVoxelArrays m_sVoxels;
    float m_fMin = 0.0f; ///< of the values; 0 without any
    float m_fMax = 0.0f;
};

/// The voxels in the parts of the cells that held one, with value 0: what a grid without any amount gives.
SKept emptyVoxels(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside)
{
    SKept sKept;
    OrmArray<float>& vecPositions = sKept.m_sVoxels.m_vecPositions;
    forEachRun(objGrid, objSweep, pInside,
               [&](const float*, std::size_t nCount, long nFirst, long nY, long nZ)
               {
                   for (long nX = nFirst; nX < nFirst + static_cast<long>(nCount); ++nX)
                   {
                       if (!objGrid.isFilled(nX, nY, nZ))
                           continue;
                       const Coord3d objCentre = objGrid.cellCentre(nX, nY, nZ);
                       for (const double fCoordinate : {objCentre.x, objCentre.y, objCentre.z})
                           vecPositions.push_back(static_cast<float>(fCoordinate));
                   }
               });
    sKept.m_sVoxels.m_vecValues.resize(vecPositions.size() / 3, 0.0f);
    return sKept;
}

/// The cells from a fraction of the highest on, scaled to the total that the grid was made of.
SKept keptVoxels(const fVolumeGrid& objGrid, CGridSweep& objSweep, const CInsideRuns* pInside, const SBounds& sBounds, float fFraction)
{
    SKept sKept;
    OrmArray<float>& vecPositions = sKept.m_sVoxels.m_vecPositions;
    OrmArray<float>& vecValues = sKept.m_sVoxels.m_vecValues;
    vecPositions.resize(3 * (sBounds.m_nMost + 1)); // one more, which is written to and not kept
    vecValues.resize(sBounds.m_nMost + 1);
    std::vector<float> vecCentres;
    for (long nX = 0; nX < objGrid.cells(0); ++nX)
        vecCentres.push_back(static_cast<float>(objGrid.cellCentre(nX, 0, 0).x));

    const float fLeast = fFraction * sBounds.m_fHighest;
    std::size_t nKept = 0;
    forEachRun(objGrid, objSweep, pInside,
               [&](const float* pAmounts, std::size_t nCount, long nFirst, long nY, long nZ)
               {
                   const Coord3d objRow = objGrid.cellCentre(0, nY, nZ);
                   const auto fY = static_cast<float>(objRow.y);
                   const auto fZ = static_cast<float>(objRow.z);
                   const float* pCentres = vecCentres.data() + nFirst;
                   float* pPositions = vecPositions.data();
                   float* pValues = vecValues.data();
                   for (std::size_t i = 0; i < nCount; ++i) // without a branch: what is not kept is overwritten
                   {
                       pPositions[3 * nKept] = pCentres[i];
                       pPositions[3 * nKept + 1] = fY;
                       pPositions[3 * nKept + 2] = fZ;
                       pValues[nKept] = pAmounts[i];
                       nKept += pAmounts[i] >= fLeast ? 1 : 0;
                   }
               });
    vecPositions.resize(3 * nKept);
    vecValues.resize(nKept);

    constexpr double fMost = std::numeric_limits<float>::max();
    const double fSum = combined(vecValues.data(), nKept, 0.0, std::plus<>());
    const double fScale = fSum > 0.0 ? objGrid.sourceTotal() / fSum : objSweep.unit();
    std::transform(vecValues.begin(), vecValues.end(), vecValues.begin(),
                   [=](float fAmount) { return static_cast<float>(std::min(static_cast<double>(fAmount) * fScale, fMost)); });
    sKept.m_fMax = combined(vecValues.data(), nKept, 0.0f, fnHigher);
    sKept.m_fMin = combined(vecValues.data(), nKept, sKept.m_fMax, fnLower);
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
        return sKept.m_sVoxels.m_vecValues.empty() && pKept ? emptyVoxels(objGrid, objSweep, nullptr) : sKept;
    }
    const float fFraction = bAllCells ? 0.0f : fLeastFraction;
    SBounds sBounds = boundsOf(objGrid, objSweep, pKept, fFraction);
    if (!(sBounds.m_fHighest > 0.0f) && pKept)
    {
        pKept = nullptr;
        sBounds = boundsOf(objGrid, objSweep, nullptr, fFraction);
    }
    return keptVoxels(objGrid, objSweep, pKept, sBounds, fFraction);
}

bool writeGrid(const fVolumeGrid& objGrid, C3DVolume& objTarget, const IA3D::mesh* pMesh, bool bAllCells)
{
    try
    {
        SKept sKept = voxelsOf(objGrid, pMesh, bAllCells);
        return objTarget.takeVoxels(static_cast<float>(objGrid.cellSize()), std::move(sKept.m_sVoxels), sKept.m_fMin, sKept.m_fMax);
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
    if (!objLattice.fit(objSource, &strReason))
    {
        ORM_LOG(3, QStringLiteral("A volume has no grid: %1").arg(strReason));
        return false;
    }
    objTarget.assign(objLattice, objSource);
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
