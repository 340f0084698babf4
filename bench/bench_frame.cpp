// A frame of the comparative view at 1, 4, 12 and 48 tiles, beside a plain way to draw the same surfaces and voxels in the same run and
// context: the counter "of_plain" is our time divided by the reference's. "of_quarter" is the time of 48 tiles divided by that of 12. Needs
// a display, a virtual one will do.

#include "AnalysisRecords.h"
#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "COrmPreference.h"
#include "LongitudinalStudyBrowserView.h"
#include "PlainTiles.h"
#include "TileGrid.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

using BenchRatio::compare;

namespace
{
constexpr double fPi = 3.14159265358979;
constexpr int nViewWidth = 1000;
constexpr int nViewHeight = 700;

/// A closed, slightly lumpy body of 40 x 50 x 40 mm with about 10,000 triangles, as large as the surface of a head.
C3DMesh bodySurface()
{
    constexpr quint32 nRings = 71;
    constexpr quint32 nSides = 71;
    std::vector<float> vecVertices = {0.0f, -25.0f, 0.0f};
    for (quint32 nRing = 1; nRing <= nRings; ++nRing)
    {
        const double fLatitude = fPi * (nRing / (nRings + 1.0) - 0.5);
        for (quint32 nSide = 0; nSide < nSides; ++nSide)
        {
            const double fLongitude = 2.0 * fPi * nSide / nSides;
            const double fRadius = 20.0 + std::sin(5.0 * fLongitude) * std::cos(4.0 * fLatitude);
            vecVertices.push_back(static_cast<float>(fRadius * std::cos(fLatitude) * std::cos(fLongitude)));
            vecVertices.push_back(static_cast<float>(25.0 * std::sin(fLatitude)));
            vecVertices.push_back(static_cast<float>(-fRadius * std::cos(fLatitude) * std::sin(fLongitude)));
        }
    }
    vecVertices.insert(vecVertices.end(), {0.0f, 25.0f, 0.0f});
    const quint32 nTop = 1 + nRings * nSides;
    std::vector<quint32> vecTriangles;
    const auto fnVertex = [](quint32 nRing, quint32 nSide) { return 1 + (nRing - 1) * nSides + nSide % nSides; };
    for (quint32 nSide = 0; nSide < nSides; ++nSide)
    {
        vecTriangles.insert(vecTriangles.end(), {0, fnVertex(1, nSide + 1), fnVertex(1, nSide)});
        vecTriangles.insert(vecTriangles.end(), {nTop, fnVertex(nRings, nSide), fnVertex(nRings, nSide + 1)});
        for (quint32 nRing = 1; nRing < nRings; ++nRing)
        {
            const quint32 anCorners[] = {fnVertex(nRing, nSide), fnVertex(nRing, nSide + 1), fnVertex(nRing + 1, nSide + 1),
                                         fnVertex(nRing + 1, nSide)};
            vecTriangles.insert(vecTriangles.end(), {anCorners[0], anCorners[1], anCorners[2], anCorners[0], anCorners[2], anCorners[3]});
        }
    }
    C3DMesh objMesh{QString()};
    if (!objMesh.loadMeshData(vecVertices, vecTriangles) || !objMesh.isClosed())
    {
        std::abort();
    }
    return objMesh;
}

/// A ball of about 50,000 voxels of 0.25 mm whose values fall off from the middle.
C3DVolume sourceVolume(bool bMIP)
{
    constexpr int nRadius = 23;
    std::vector<C3DVolume::Voxel> vecVoxels;
    for (int nZ = -nRadius; nZ <= nRadius; ++nZ)
    {
        for (int nY = -nRadius; nY <= nRadius; ++nY)
        {
            for (int nX = -nRadius; nX <= nRadius; ++nX)
            {
                const int nSquare = nX * nX + nY * nY + nZ * nZ;
                if (nSquare <= nRadius * nRadius)
                {
                    vecVoxels.push_back({0.25f * static_cast<float>(nX), 0.25f * static_cast<float>(nY), 0.25f * static_cast<float>(nZ),
                                         C3DSGNode::m_nObjectCount++, static_cast<float>(1e5 * std::exp(-nSquare / 180.0))});
                }
            }
        }
    }
    C3DVolume objVolume{QString()};
    if (!objVolume.loadVoxelData(0.25f, vecVoxels.size(), vecVoxels.data(), 0.0f, 1e5f))
    {
        std::abort();
    }
    objVolume.setColorTable(bMIP ? 9 : 2, 0.0f, 1.0f);
    objVolume.setMIP(bMIP);
    return objVolume;
}

/// The view with a number of equal results, and the reference in its context.
class CTiles : public CLongitudinalStudyBrowserView
{
public:
    CTiles(int nTiles, bool bMIP) : CLongitudinalStudyBrowserView(nullptr), m_bMIP(bMIP)
    {
        resize(nViewWidth, nViewHeight);
        show();
        sAnalysisBase objResult;
        objResult.strSequenceID = QStringLiteral("Sequence");
        objResult.objMesh = bodySurface();
        objResult.objVolume = sourceVolume(bMIP);
        for (int i = 0; i < nTiles; ++i)
        {
            objResult.strResultName = QStringLiteral("Day %1").arg(i);
            // Each tile has data of its own, as results from files have.
            objResult.objMesh.loadMeshData(objResult.objMesh.vertices(), objResult.objMesh.triangles());
            QVector<C3DVolume::Voxel> vecVoxels = objResult.objVolume.voxels();
            objResult.objVolume.loadVoxelData(0.25f, static_cast<unsigned long>(vecVoxels.size()), vecVoxels.data(), 0.0f, 1e5f);
            setAnalysisParms(objResult);
            getLoadedResult().append(objResult.strSequenceID + objResult.strResultName);
        }
        getSelectedList().append(getLoadedResult().first());
        QCoreApplication::processEvents();
        settle();
        makeCurrent();
        for (sAnalysisBase& objLoaded : getAnalysisParams())
        {
            m_vecPlain.push_back(CPlainTiles::makeTile(objLoaded.objMesh, objLoaded.objVolume));
        }
    }

    /// A frame of the view, turned a little further.
    void frame()
    {
        turn();
        makeCurrent();
        paintGL();
        glFinish();
    }

    /// The same surfaces and voxels by the plain way.
    void plainFrame()
    {
        turn();
        drawPlain();
        glFinish();
    }

    /// How many pixels of the first tile differ much between the two ways, as a share of those that show something: first of the
    /// voxels without the surface, then of the surface alone, of which only the place can be compared.
    double difference()
    {
        const QStringList lstSelected = getSelectedList();
        getSelectedList().clear(); // its frame is not the reference's business
        m_bShowSurface = false;
        const double fVoxels = difference(48);
        m_bShowSurface = true;
        m_bShowVoxels = false;
        const double fSurface = difference(254);
        m_bShowVoxels = true;
        getSelectedList() = lstSelected;
        return std::max(fVoxels, fSurface);
    }

private:
    void drawPlain()
    {
        makeCurrent();
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_COLOR_MATERIAL);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        for (size_t i = 0; i < m_vecPlain.size(); ++i)
        {
            const auto nResult = static_cast<int>(i);
            const TileGrid::SRect rect = TileGrid::letterbox(TileGrid::tileLeft(nResult, m_nTileWidth),
                                                             TileGrid::tileBottom(nResult, m_nGLHeight, m_nTileHeight, m_nTextHeight),
                                                             m_nTileWidth, m_nTileHeight, m_dBoxMaxX - m_dBoxMinX, m_dBoxMaxY - m_dBoxMinY);
            glViewport(rect.nX, rect.nY, rect.width(), rect.height());
            glMatrixMode(GL_PROJECTION);
            glLoadIdentity();
            glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, -500.0, 500.0);
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            setupLights(true);
            glRotated(m_fRotationY, 0.0, 1.0, 0.0);
            Coord3d objMin;
            Coord3d objMax;
            getAnalysisParams().at(nResult).objMesh.getBBox(objMin, objMax);
            glTranslated(-(objMin.x + objMax.x) / 2.0, -(objMin.y + objMax.y) / 2.0, -(objMin.z + objMax.z) / 2.0);
            if (m_bShowVoxels)
            {
                CPlainTiles::drawVoxels(m_vecPlain[i], m_bMIP, rect.width() / (m_dBoxMaxX - m_dBoxMinX), static_cast<double>(m_fRotationY));
            }
            if (m_bShowSurface)
            {
                CPlainTiles::drawSurface(m_vecPlain[i], 0.5f);
            }
        }
        glDisable(GL_LIGHTING);
        glDisable(GL_COLOR_MATERIAL);
    }

    double difference(int nTolerated)
    {
        m_fRotationY = 19.0f;
        makeCurrent();
        paintGL();
        const std::vector<quint8> vecOurs = firstTile();
        drawPlain();
        const std::vector<quint8> vecPlain = firstTile();
        int nDiffer = 0;
        int nShown = 0;
        for (size_t i = 0; i + 3 < vecOurs.size(); i += 4)
        {
            int nFarthest = 0;
            for (size_t n = 0; n < 3; ++n)
            {
                nFarthest = std::max(nFarthest, std::abs(int(vecOurs[i + n]) - int(vecPlain[i + n])));
            }
            const bool bOurs = vecOurs[i] + vecOurs[i + 1] + vecOurs[i + 2] > 0;
            const bool bPlain = vecPlain[i] + vecPlain[i + 1] + vecPlain[i + 2] > 0;
            nDiffer += nFarthest > nTolerated || bOurs != bPlain ? 1 : 0;
            nShown += bOurs ? 1 : 0;
        }
        return nShown > 0 ? static_cast<double>(nDiffer) / nShown : 1.0;
    }

    /// Within the quarter in which the reference's voxels are in order.
    void turn()
    {
        m_fTurn = m_fTurn >= 70.0f ? 5.0f : m_fTurn + 1.0f;
        m_fRotationY = m_fTurn;
    }

    std::vector<quint8> firstTile()
    {
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        const int nBottom = TileGrid::tileBottom(0, m_nGLHeight, m_nTileHeight, m_nTextHeight);
        std::vector<quint8> vecPixels(static_cast<size_t>(m_nTileWidth) * static_cast<size_t>(m_nTileHeight) * 4);
        glReadPixels(0, nBottom, m_nTileWidth, m_nTileHeight, GL_RGBA, GL_UNSIGNED_BYTE, vecPixels.data());
        return vecPixels;
    }

    bool m_bMIP;
    float m_fTurn = 5.0f;
    std::vector<SPlainTile> m_vecPlain;
};

constexpr int kWarmUps = 3; ///< shaders are built by the first frames

void frame(benchmark::State& state)
{
    CTiles objTiles(static_cast<int>(state.range(0)), state.range(1) != 0);
    if (objTiles.difference() > 0.03)
    {
        state.SkipWithError("the reference draws something else");
        return;
    }
    compare(
        state, "of_plain", [&] { objTiles.frame(); }, [&] { objTiles.plainFrame(); }, kWarmUps);
}

void fortyEightTiles(benchmark::State& state)
{
    CTiles objQuarter(12, state.range(0) != 0);
    CTiles objTiles(48, state.range(0) != 0);
    compare(
        state, "of_quarter", [&] { objTiles.frame(); }, [&] { objQuarter.frame(); }, kWarmUps);
}
} // namespace

BENCHMARK(frame)
    ->ArgNames({"tiles", "mip"})
    ->ArgsProduct({{1, 4, 12, 48}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(1.0);
BENCHMARK(fortyEightTiles)->ArgName("mip")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(1.0);

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
