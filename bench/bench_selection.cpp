// A selection pass over a quarter of a tile, in volumes of 50,000, 200,000 and 1,000,000 voxels, beside plain passes of the same hits in
// the same run and context. "of_hits" is the time of our pass divided by that of a pass which names the hits alone, a point each in
// immediate mode; "of_all" the same with every voxel named so; "of_budget" our time divided by a tenth of the first plus 5 ns for each
// voxel of the volume; "ns_a_voxel" our time divided by the number of voxels. Then a move of the pointer over 48 tiles with the measuring
// tool on: "of_pick" is its time divided by that of the pick of the four corners of the measuring rectangle alone, "of_bare_pass" divided
// by that of the same pass over four points with no attributes of their own. Needs a display, a virtual one will do.

#include "AnalysisRecords.h"
#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "LongitudinalStudyBrowserView.h"
#include "TileGrid.h"

#include <benchmark/benchmark.h>

#include <QMouseEvent>

#include <cmath>
#include <cstdlib>
#include <set>
#include <vector>

#include <GL/glu.h>

namespace
{
constexpr int kViewWidth = 1000;
constexpr int kViewHeight = 700;
constexpr int kWarmUps = 3;      ///< shaders are built by the first frames and passes
constexpr float kEdge = 40.0f;   ///< of the volume, millimetres
constexpr float kCorner = 10.0f; ///< of the measuring rectangle

/// A cube of kEdge millimetres.
C3DMesh cubeSurface()
{
    std::vector<float> vecVertices;
    for (int i = 0; i < 8; ++i)
    {
        for (const int nBit : {1, 2, 4})
        {
            vecVertices.push_back((i & nBit) != 0 ? kEdge / 2.0f : -kEdge / 2.0f);
        }
    }
    C3DMesh objMesh{QString()};
    if (!objMesh.loadMeshData(vecVertices,
                              {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4, 2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5}))
    {
        std::abort();
    }
    return objMesh;
}

/// About this many voxels, filling the cube.
C3DVolume fullVolume(int nVoxels)
{
    const int nSide = qRound(std::cbrt(nVoxels));
    const float fPitch = kEdge / static_cast<float>(nSide);
    std::vector<C3DVolume::Voxel> vecVoxels;
    const auto fnPlace = [&](int n) { return fPitch * (static_cast<float>(n) + 0.5f) - kEdge / 2.0f; };
    for (int nZ = 0; nZ < nSide; ++nZ)
    {
        for (int nY = 0; nY < nSide; ++nY)
        {
            for (int nX = 0; nX < nSide; ++nX)
            {
                const double fSquare = std::pow(fnPlace(nX), 2) + std::pow(fnPlace(nY), 2) + std::pow(fnPlace(nZ), 2);
                vecVoxels.push_back({fnPlace(nX), fnPlace(nY), fnPlace(nZ), C3DSGNode::m_nObjectCount++,
                                     static_cast<float>(1e5 * std::exp(-fSquare / 200.0))});
            }
        }
    }
    C3DVolume objVolume{QString()};
    if (!objVolume.loadVoxelData(fPitch, vecVoxels.size(), vecVoxels.data(), 0.0f, 1e5f))
    {
        std::abort();
    }
    return objVolume;
}

/// The view with a number of equal results.
class CMeasured : public CLongitudinalStudyBrowserView
{
public:
    CMeasured(int nTiles, int nVoxels) : CLongitudinalStudyBrowserView(nullptr)
    {
        resize(kViewWidth, kViewHeight);
        show();
        sAnalysisBase objResult;
        objResult.strSequenceID = QStringLiteral("Sequence");
        objResult.objMesh = cubeSurface();
        objResult.objVolume = fullVolume(nVoxels);
        for (int i = 0; i < nTiles; ++i)
        {
            objResult.strResultName = QStringLiteral("Day %1").arg(i);
            setAnalysisParms(objResult);
            getLoadedResult().append(objResult.strSequenceID + objResult.strResultName);
        }
        m_fRotationY = 30.0f;
        QCoreApplication::processEvents();
        settle();
        makeCurrent();
    }

    C3DVolume& volume() { return getAnalysisParams().first().objVolume; }

    /// The names under the lower left quarter of the first tile, by a pass in the order of calls of the measuring tool.
    const std::vector<GLuint>& pass(const std::function<void()>& fnName)
    {
        setupViewForResult(0);
        GLint anViewport[4];
        glGetIntegerv(GL_VIEWPORT, anViewport);
        m_vecHits.assign(4 * static_cast<size_t>(volume().getNoOfVoxels()), 0U);
        glPushAttrib(GL_COLOR_BUFFER_BIT);
        glSelectBuffer(static_cast<GLsizei>(m_vecHits.size()), m_vecHits.data());
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glRenderMode(GL_SELECT);
        glLoadIdentity();
        gluPickMatrix(anViewport[0] + anViewport[2] / 4.0, anViewport[1] + anViewport[3] / 4.0, anViewport[2] / 2.0, anViewport[3] / 2.0,
                      anViewport);
        glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, m_dBoxMinZ, m_dBoxMaxZ);
        glRotatef(m_fRotationY, 0.0f, 1.0f, 0.0f);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glInitNames();
        glPushName(0);
        fnName();
        const GLint nHits = glRenderMode(GL_RENDER);
        glPopName();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopAttrib();
        m_vecHits.resize(nHits > 0 ? 4 * static_cast<size_t>(nHits) : 0);
        return m_vecHits;
    }

    /// The pass over the corners of a rectangle in the last tile that a move of the pointer takes, with the bare points as the corners.
    void barePass()
    {
        const QPoint pointer = placeInLastTile();
        makeCurrent();
        setupViewForResult(getAnalysisParams().size() - 1);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_LIGHTING);
        glDisable(GL_LIGHT0);
        GLuint anHits[100] = {};
        GLint anViewport[4];
        glGetIntegerv(GL_VIEWPORT, anViewport);
        glSelectBuffer(100, anHits);
        glPushAttrib(GL_COLOR_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glRenderMode(GL_SELECT);
        glLoadIdentity();
        gluPickMatrix(pointer.x(), height() - pointer.y(), 10.0, 10.0, anViewport);
        glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, m_dBoxMinZ, m_dBoxMaxZ);
        glMatrixMode(GL_MODELVIEW);
        glInitNames();
        glPushName(0);
        glPushMatrix();
        for (GLuint nCorner = 0; nCorner < 4; ++nCorner)
        {
            glLoadName(301 + nCorner);
            glBegin(GL_POINTS);
            glVertex2f(nCorner % 2 == 0 ? -kCorner : kCorner, nCorner / 2 == 0 ? -kCorner : kCorner);
            glEnd();
        }
        benchmark::DoNotOptimize(glRenderMode(GL_RENDER));
        glPopMatrix();
        glPopName();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopAttrib();
    }

    /// Puts a rectangle into the tiles for the measuring tool, which is on from here on.
    void measure()
    {
        for (sAnalysisBase& objResult : getAnalysisParams())
        {
            objResult.fSelectLeft = objResult.fSelectTop = -kCorner;
            objResult.fSelectRight = objResult.fSelectBottom = kCorner;
        }
        setSelectVoxel(true);
    }

    /// Moves the pointer to another place in the last tile.
    void hoverLast()
    {
        const QPointF pointer = placeInLastTile();
        QMouseEvent event(QEvent::MouseMove, pointer, pointer, pointer, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        mouseMoveEvent(&event);
    }
    /// Looks for a corner of the measuring rectangle under the pointer, as a move of the pointer does.
    void pickHandle()
    {
        const QPointF pointer = placeInLastTile();
        QMouseEvent event(QEvent::MouseMove, pointer, pointer, pointer, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        makeCurrent();
        benchmark::DoNotOptimize(doSelection(&event));
    }
    bool isLastActive() const { return m_nActiveResult == m_lstAnalysisParams.size() - 1; }

private:
    /// Another place in the last tile at each call.
    QPoint placeInLastTile()
    {
        m_nStep = (m_nStep + 1) % 8;
        const int nLast = getAnalysisParams().size() - 1;
        const int nX = TileGrid::tileLeft(nLast, m_nTileWidth) + m_nTileWidth / 2 + m_nStep;
        const int nY = TileGrid::tileBottom(nLast, m_nGLHeight, m_nTileHeight, m_nTextHeight) + m_nTileHeight / 2;
        return {nX, m_nGLHeight - nY};
    }

    std::vector<GLuint> m_vecHits;
    int m_nStep = 0;
};

void nameOne(const C3DVolume::Voxel& objVoxel)
{
    glLoadName(static_cast<GLuint>(objVoxel.nID));
    glBegin(GL_POINTS);
    glVertex3f(objVoxel.x, objVoxel.y, objVoxel.z);
    glEnd();
}

std::multiset<GLuint> namesOf(const std::vector<GLuint>& vecHits)
{
    std::multiset<GLuint> setNames;
    for (size_t i = 3; i < vecHits.size(); i += 4)
    {
        setNames.insert(vecHits[i]);
    }
    return setNames;
}

void pass(benchmark::State& state)
{
    CMeasured objView(1, static_cast<int>(state.range(0)));
    C3DVolume& objVolume = objView.volume();
    const auto fnOurs = [&] { objView.pass([&] { objVolume.render(false, GL_SELECT); }); };
    const auto fnAll = [&]
    {
        objView.pass(
            [&]
            {
                for (const C3DVolume::Voxel& objVoxel : objVolume.voxels())
                {
                    nameOne(objVoxel);
                }
            });
    };
    const std::multiset<GLuint> setNames = namesOf(objView.pass([&] { objVolume.render(false, GL_SELECT); }));
    std::vector<C3DVolume::Voxel> vecHits;
    for (const C3DVolume::Voxel& objVoxel : objVolume.voxels())
    {
        if (setNames.count(static_cast<GLuint>(objVoxel.nID)) != 0)
        {
            vecHits.push_back(objVoxel);
        }
    }
    const auto fnHits = [&]
    {
        objView.pass(
            [&]
            {
                for (const C3DVolume::Voxel& objVoxel : vecHits)
                {
                    nameOne(objVoxel);
                }
            });
    };
    const auto nVoxels = static_cast<double>(objVolume.getNoOfVoxels());
    if (setNames.empty() || 2.0 * static_cast<double>(setNames.size()) > nVoxels)
    {
        state.SkipWithError("the rectangle is not over a part of the volume");
        return;
    }
    const std::vector<double> vecTimes = BenchRatio::medians(state, {fnOurs, fnHits, fnAll}, kWarmUps);
    state.counters["of_hits"] = vecTimes[0] / vecTimes[1];
    state.counters["of_all"] = vecTimes[0] / vecTimes[2];
    state.counters["of_budget"] = vecTimes[0] / (0.1 * vecTimes[1] + 5e-9 * nVoxels);
    state.counters["ns_a_voxel"] = 1e9 * vecTimes[0] / nVoxels;
    state.counters["hits"] = static_cast<double>(vecHits.size());
}

void hover(benchmark::State& state)
{
    CMeasured objView(48, 1000);
    objView.measure();
    objView.hoverLast();
    if (!objView.isLastActive())
    {
        state.SkipWithError("the pointer is not over the last tile");
        return;
    }
    const std::vector<double> vecTimes =
        BenchRatio::medians(state, {[&] { objView.hoverLast(); }, [&] { objView.pickHandle(); }, [&] { objView.barePass(); }}, kWarmUps);
    state.counters["of_pick"] = vecTimes[0] / vecTimes[1];
    state.counters["of_bare_pass"] = vecTimes[0] / vecTimes[2];
}
} // namespace

// Naming every voxel takes a second at a million, so that the passes are few.
BENCHMARK(pass)->ArgName("voxels")->Arg(50000)->Iterations(40)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(pass)->ArgName("voxels")->Arg(200000)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(pass)->ArgName("voxels")->Arg(1000000)->Iterations(7)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(hover)->Iterations(5000)->UseManualTime()->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
