// A frame that a change of the colour range causes, beside a plain repaint of the same scene in the same run: 12 tiles of 50,000 voxels
// in the tool's window. Each change of the range causes two frames, one that is drawn before the volumes have the range and one that
// shows it; the counter "of_repaint" is the time of a change with its frames divided by that of as many plain repaints. Needs a display,
// a virtual one will do.

#include "AnalysisRecords.h"
#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "COrmPreference.h"
#include "LongitudinalStudyBrowserView.h"
#include "LongitudinalStudyBrowserWnd.h"
#include "QDoubleSpinBoxEx.h"
#include "QSpanSlider.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QListWidget>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

namespace
{
constexpr int kTiles = 12;
constexpr int kRadius = 23; ///< voxels, of the ball that each volume is
constexpr int kWarmUps = 3;
constexpr float kHighest = 1e5f;

/// The least surface there is around the voxels: drawing it costs next to nothing, so the repaint is that of the voxels.
C3DMesh boxSurface()
{
    std::vector<float> vecVertices;
    for (int i = 0; i < 8; ++i)
    {
        for (const int nBit : {1, 2, 4})
        {
            vecVertices.push_back((i & nBit) != 0 ? 10.0f : -10.0f);
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

/// A ball of about 50,000 voxels whose values fall off from the middle, a little differently in each tile.
C3DVolume ball(int nTile)
{
    std::vector<C3DVolume::Voxel> vecVoxels;
    for (int nZ = -kRadius; nZ <= kRadius; ++nZ)
    {
        for (int nY = -kRadius; nY <= kRadius; ++nY)
        {
            for (int nX = -kRadius; nX <= kRadius; ++nX)
            {
                const int nSquare = nX * nX + nY * nY + nZ * nZ;
                if (nSquare <= kRadius * kRadius)
                {
                    const double fValue = static_cast<double>(kHighest) * std::exp(-nSquare / (180.0 + nTile) - 1e-4 * (nX + 2 * nY));
                    vecVoxels.push_back({0.25f * static_cast<float>(nX), 0.25f * static_cast<float>(nY), 0.25f * static_cast<float>(nZ),
                                         C3DSGNode::m_nObjectCount++, static_cast<float>(fValue)});
                }
            }
        }
    }
    C3DVolume objVolume{QString()};
    if (!objVolume.loadVoxelData(0.25f, vecVoxels.size(), vecVoxels.data(), 0.0f, kHighest))
    {
        std::abort();
    }
    return objVolume;
}

template <class T>
T* widget(QWidget& wnd, const char* pszName)
{
    T* pFound = wnd.findChild<T*>(QLatin1String(pszName));
    if (pFound == nullptr)
    {
        std::abort();
    }
    return pFound;
}

/// The window with its tiles and with the panel of their kind.
class CPanel
{
public:
    CPanel(bool bMIP, bool bLog)
    {
        // A sequence of the kind has to be listed for the panel to show the kind; it needs no files.
        QList<QString> lstSequences = {QStringLiteral("SOLA"), QStringLiteral("Listed")};
        m_wnd.updateSequenceNameList(lstSequences);
        m_wnd.resize(1500, 900);
        m_wnd.show();
        auto* pList = widget<QListWidget>(m_wnd, "m_pSequenceNameLW");
        call("onClickSequenceNameWidgetItem", Q_ARG(QListWidgetItem*, pList->item(0)));
        sAnalysisBase objResult;
        objResult.strSequenceID = QStringLiteral("Sequence");
        objResult.objMesh = boxSurface();
        for (int i = 0; i < kTiles; ++i)
        {
            objResult.strResultName = QStringLiteral("Day %1").arg(i);
            objResult.objVolume = ball(i);
            m_pView->setAnalysisParms(objResult);
            m_pView->getLoadedResult().append(objResult.strSequenceID + objResult.strResultName);
        }
        rest();
        call("onClickLoadButton"); // with nothing selected: only the end of a load, which brings the panel into line
        m_wnd.updateUIControls();
        rest();
        widget<QCheckBox>(m_wnd, "m_pMIPCheck")->setChecked(bMIP);
        if (bLog)
        {
            widget<QCheckBox>(m_wnd, "m_pLogarithmicScaleCheck")->click();
        }
        rest();
    }

    /// Moves a handle of the range's slider by one position, to and fro in the lower or upper half. Returns whether that was two frames.
    bool moveHandle(bool bUpper)
    {
        m_nStep = (m_nStep + 1) % 40;
        const int nPlace = 5 + (m_nStep < 20 ? m_nStep : 40 - m_nStep);
        if (bUpper)
        {
            m_pSlider->setUpperValue(100 - nPlace);
        }
        else
        {
            m_pSlider->setLowerValue(nPlace);
        }
        return m_pView->settle() == 2;
    }
    /// The same by numbers in the boxes.
    bool typeNumber(bool bUpper)
    {
        m_nStep = (m_nStep + 1) % 40;
        const double fPlace = 0.05 + 0.01 * (m_nStep < 20 ? m_nStep : 40 - m_nStep);
        widget<QDoubleSpinBoxEx>(m_wnd, bUpper ? "m_pColorBarMaxSpinbox" : "m_pColorBarMinSpinbox")
            ->setValue(static_cast<double>(kHighest) * (bUpper ? 1.0 - fPlace : fPlace));
        return m_pView->settle() == 2;
    }
    /// Paints twice what is there.
    bool repaint()
    {
        m_pView->update();
        const int nFirst = m_pView->settle();
        m_pView->update();
        return nFirst == 1 && m_pView->settle() == 1;
    }
    bool isReady()
    {
        float f[4] = {};
        m_pView->getMinMax(&f[0], &f[1], &f[2], &f[3]);
        return m_pView->getAnalysisParams().size() == kTiles && m_pSlider->upperValue() == 100 && f[1] == kHighest;
    }

private:
    template <class... Arguments>
    void call(const char* pszSlot, Arguments... arguments)
    {
        if (!QMetaObject::invokeMethod(&m_wnd, pszSlot, Qt::DirectConnection, arguments...))
        {
            std::abort();
        }
    }
    void rest()
    {
        QCoreApplication::processEvents();
        m_pView->settle();
    }

    CLongitudinalStudyBrowserWnd m_wnd{nullptr};
    CLongitudinalStudyBrowserView* m_pView = m_wnd.findChild<CLongitudinalStudyBrowserView*>();
    QSpanSlider* m_pSlider = widget<QSpanSlider>(m_wnd, "m_pColorBarMinMaxSlider");
    int m_nStep = 0;
};

void measure(benchmark::State& state, bool (CPanel::*pfnChange)(bool))
{
    const bool bUpper = state.range(0) != 0;
    CPanel objPanel(state.range(1) != 0, state.range(2) != 0);
    if (!objPanel.isReady())
    {
        state.SkipWithError("the panel does not show the tiles' range");
        return;
    }
    bool bFrames = true;
    BenchRatio::compare(
        state, "of_repaint", [&] { bFrames = (objPanel.*pfnChange)(bUpper) && bFrames; }, [&] { bFrames = objPanel.repaint() && bFrames; },
        kWarmUps);
    if (!bFrames)
    {
        state.SkipWithError("other frames were painted than two for each change");
    }
}

void slider(benchmark::State& state)
{
    measure(state, &CPanel::moveHandle);
}

void typing(benchmark::State& state)
{
    measure(state, &CPanel::typeNumber);
}
} // namespace

BENCHMARK(slider)
    ->ArgNames({"upper", "mip", "log"})
    ->ArgsProduct({{1, 0}, {0, 1}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(1.0);
BENCHMARK(typing)
    ->ArgNames({"upper", "mip", "log"})
    ->ArgsProduct({{1, 0}, {0, 1}, {0}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(1.0);

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
