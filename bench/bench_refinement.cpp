// Refinement of a source volume, beside a plain one in the same run: the counter "of_plain" is our time, from voxels to voxels, divided by
// the reference's, which ends with the smoothed grid. "of_unlimited" is the time with a surface divided by that without one.

#include "BenchRatio.h"
#include "PlainRefinement.h"
#include "VolumeInterp.h"
#include "VolumeSmoothingAverage.h"
#include "VolumeSurfaceConversion.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

using BenchRatio::compare;

namespace
{
constexpr int nMargin = 2;
constexpr int nParts = 4;
constexpr int nPasses = 5;

/// A cube of amounts like a source's: a bright middle, something everywhere.
PlainRefinement::SCube makeCube(int nEdge)
{
    PlainRefinement::SCube sCube(nEdge);
    const double fMiddle = 0.5 * (nEdge - 1);
    for (int nZ = 0; nZ < nEdge; ++nZ)
    {
        for (int nY = 0; nY < nEdge; ++nY)
        {
            for (int nX = 0; nX < nEdge; ++nX)
            {
                const double fDistance = std::hypot(nX - fMiddle, nY - fMiddle, nZ - fMiddle) / nEdge;
                sCube.at(nX, nY, nZ) =
                    static_cast<float>(1000.0 * std::exp(-4.0 * fDistance * fDistance) + (nX * 7 + nY * 5 + nZ * 3) % 11);
            }
        }
    }
    return sCube;
}

C3DVolume makeVolume(const PlainRefinement::SCube& sCube)
{
    QVector<C3DVolume::Voxel> vecVoxels;
    for (int nZ = 0; nZ < sCube.m_nEdge; ++nZ)
    {
        for (int nY = 0; nY < sCube.m_nEdge; ++nY)
        {
            for (int nX = 0; nX < sCube.m_nEdge; ++nX)
                vecVoxels.append({static_cast<float>(nX), static_cast<float>(nY), static_cast<float>(nZ), 1, sCube.at(nX, nY, nZ)});
        }
    }
    C3DVolume objVolume(QStringLiteral("Source"));
    if (!objVolume.takeVoxelData(1.0f, vecVoxels, 0.0f, 1000.0f))
        std::abort();
    return objVolume;
}

/// A ball of about that many triangles that holds most of a cube of nEdge cells.
IA3D::mesh makeSurface(int nEdge, int nTriangles)
{
    const int nRings = std::max(3, static_cast<int>(std::sqrt(nTriangles / 4.0)));
    const int nAround = 2 * nRings;
    constexpr double fPi = 3.141592653589793;
    std::vector<float> vecVertices;
    std::vector<quint32> vecTriangles;
    for (int i = 0; i <= nRings; ++i)
    {
        for (int j = 0; j < nAround; ++j)
        {
            const double fHeight = -std::cos(fPi * i / nRings);
            const double fWidth = i == 0 || i == nRings ? 0.0 : std::sin(fPi * i / nRings);
            for (const double f : {fWidth * std::cos(2.0 * fPi * j / nAround), fWidth * std::sin(2.0 * fPi * j / nAround), fHeight})
                vecVertices.push_back(static_cast<float>(0.5 * (nEdge - 1) + 0.5 * nEdge * f));
        }
    }
    const auto at = [=](int i, int j) { return static_cast<quint32>((i == 0 || i == nRings ? 0 : j % nAround) + i * nAround); };
    for (int i = 0; i < nRings; ++i)
    {
        for (int j = 0; j < nAround; ++j)
        {
            if (i > 0)
                vecTriangles.insert(vecTriangles.end(), {at(i, j), at(i, j + 1), at(i + 1, j)});
            if (i + 1 < nRings)
                vecTriangles.insert(vecTriangles.end(), {at(i, j + 1), at(i + 1, j + 1), at(i + 1, j)});
        }
    }
    C3DMesh objMesh(QStringLiteral("Surface"));
    IA3D::mesh objSurface;
    if (!objMesh.loadMeshData(vecVertices, vecTriangles) || !objMesh.isClosed() || !VolumeSurfaceConversion::convert(objMesh, objSurface))
        std::abort();
    return objSurface;
}

/// All steps of the host from a volume to its refined form.
C3DVolume refined(const C3DVolume& objSource, IA3D::mesh* pSurface, bool bAllCells = false)
{
    C3DVolume objVolume(objSource);
    IA3D::mesh_utils::viewinfo sView;
    fVolumeGrid objGrid;
    bool bDone = VolumeSurfaceConversion::convert(objVolume, objGrid) && objGrid.paddingVoxels(nMargin) &&
                 VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(nParts);
    objGrid.update(0.0);
    VolumeSmoothingAverage(objGrid).process(nPasses);
    bDone = bDone && (pSurface ? VolumeSurfaceConversion::convert(objGrid, objVolume, *pSurface, sView, bAllCells)
                               : VolumeSurfaceConversion::convert(objGrid, objVolume, bAllCells));
    if (!bDone)
        std::abort();
    return objVolume;
}

/// Whether both ways give the same amounts.
bool isSame(const C3DVolume& objOurs, const PlainRefinement::SCube& sPlain)
{
    if (objOurs.voxels().size() != static_cast<int>(sPlain.m_vecAmounts.size()))
        return false;
    for (int i = 0; i < objOurs.voxels().size(); ++i)
    {
        const float fExpected = sPlain.m_vecAmounts[static_cast<std::size_t>(i)];
        if (!(std::abs(objOurs.voxels().at(i).fValue - fExpected) <= 1e-5f * std::max(fExpected, 0.01f)))
            return false;
    }
    return true;
}

void refinement(benchmark::State& state)
{
    const PlainRefinement::SCube sCube = makeCube(static_cast<int>(state.range(0)));
    const C3DVolume objVolume = makeVolume(sCube);
    if (!isSame(refined(objVolume, nullptr, true), PlainRefinement::refined(sCube, nMargin, nParts, nPasses)))
        state.SkipWithError("other amounts than the reference");
    compare(
        state, "of_plain", [&] { benchmark::DoNotOptimize(refined(objVolume, nullptr).values().data()); },
        [&] { benchmark::DoNotOptimize(PlainRefinement::refined(sCube, nMargin, nParts, nPasses).m_vecAmounts.data()); });
    state.counters["voxels"] = static_cast<double>(refined(objVolume, nullptr).getNoOfVoxels());
}

void refinementInSurface(benchmark::State& state)
{
    const int nEdge = static_cast<int>(state.range(0));
    const C3DVolume objVolume = makeVolume(makeCube(nEdge));
    IA3D::mesh objSurface = makeSurface(nEdge, 20000);
    compare(
        state, "of_unlimited", [&] { benchmark::DoNotOptimize(refined(objVolume, &objSurface).values().data()); },
        [&] { benchmark::DoNotOptimize(refined(objVolume, nullptr).values().data()); });
    state.counters["voxels"] = static_cast<double>(refined(objVolume, &objSurface).getNoOfVoxels());
}
} // namespace

BENCHMARK(refinement)->Arg(20)->Arg(30)->Arg(40)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(refinementInSurface)->Arg(20)->Arg(30)->Arg(40)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
