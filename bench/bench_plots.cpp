// Totals and plots over 64 results of 50,000 voxels in the tool's window, beside reading each voxel value once in the same run. The
// counter "of_reading" is the time of one rebuild of the plot divided by that of the reading. Needs a display, a virtual one will do.

#include "AnalysisRecords.h"
#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "C3DSGNode.h"
#include "COrmXYPlot.h"
#include "LongitudinalStudyBrowserView.h"
#include "LongitudinalStudyBrowserWnd.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTabWidget>

#include <cmath>
#include <cstdlib>
#include <vector>

namespace
{
constexpr int kResults = 64;
constexpr int kVoxels = 50000;
constexpr int kWarmUps = 3;

/// A bar of voxels whose values differ from result to result.
C3DVolume volume(int nResult)
{
    QVector<C3DVolume::Voxel> vecVoxels;
    vecVoxels.reserve(kVoxels);
    for (int i = 0; i < kVoxels; ++i)
    {
        const float fValue = static_cast<float>((nResult + 1) * (1.0 + std::sin(0.001 * i)));
        const int nRow = i / 50;
        const int nPlane = nRow / 50;
        vecVoxels.append(
            {static_cast<float>(i % 50), static_cast<float>(nRow % 50), static_cast<float>(nPlane), C3DSGNode::m_nObjectCount++, fValue});
    }
    C3DVolume objVolume{QString()};
    if (!objVolume.takeVoxelData(1.0f, vecVoxels, 0.0f, 2.0f * kResults))
    {
        std::abort();
    }
    return objVolume;
}

/// The window on its plots tab, with its results.
class CPlots
{
public:
    CPlots()
    {
        m_wnd.resize(1500, 900);
        sAnalysisBase objResult;
        objResult.strSequenceID = QStringLiteral("Sequence");
        for (int i = 0; i < kResults; ++i)
        {
            objResult.strResultName = QStringLiteral("Day %1").arg(i);
            objResult.objVolume = volume(i);
            objResult.dReducedChi2 = 1.0 + 0.1 * std::sin(i);
            objResult.dFinalVoxelSize = 1.0;
            objResult.dStartingVoxelSize = 4.0;
            m_pView->getAnalysisParams().append(objResult);
        }
        m_wnd.findChild<QTabWidget*>(QStringLiteral("m_p3DBrowserTabWidget"))->setCurrentIndex(1);
        m_wnd.show();
        QCoreApplication::processEvents();
    }

    /// Builds the plot of a measure again.
    void rebuild(int nMeasure)
    {
        if (!QMetaObject::invokeMethod(&m_wnd, "onActivatePlotSelectCB", Qt::DirectConnection, Q_ARG(int, nMeasure)))
        {
            std::abort();
        }
        // The event loop, in which a slot is otherwise called, would do this.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// Paints what has changed.
    static void paint() { QCoreApplication::processEvents(); }

    /// Adds up every value of every result.
    double read()
    {
        double fSum = 0.0;
        for (const sAnalysisBase& objResult : qAsConst(m_pView->getAnalysisParams()))
        {
            for (const float fValue : objResult.objVolume.values())
            {
                fSum += static_cast<double>(fValue);
            }
        }
        return fSum;
    }
    /// The sum of the points of the plot.
    double plotted()
    {
        double fSum = 0.0;
        const COrmXYPlot::DATALINE_INFO* pLine = m_pPlot->dataLines().value(QStringLiteral("Quantification Profile"));
        for (int i = 0; pLine != nullptr && i < pLine->nVals; ++i)
        {
            fSum += pLine->vecY.at(i);
        }
        return fSum;
    }

private:
    CLongitudinalStudyBrowserWnd m_wnd{nullptr};
    CLongitudinalStudyBrowserView* m_pView = m_wnd.findChild<CLongitudinalStudyBrowserView*>();
    COrmXYPlot* m_pPlot = m_wnd.findChild<COrmXYPlot*>();
};

/// The plot of a measure, with its picture on the screen or without.
void plot(benchmark::State& state)
{
    const auto nMeasure = static_cast<int>(state.range(0));
    const bool bPaint = state.range(1) != 0;
    CPlots objPlots;
    double fRead = 0.0;
    BenchRatio::compare(
        state, "of_reading",
        [&]
        {
            objPlots.rebuild(nMeasure);
            if (bPaint)
            {
                CPlots::paint();
            }
        },
        [&] { benchmark::DoNotOptimize(fRead = objPlots.read()); }, kWarmUps);
    objPlots.rebuild(0);
    if (std::fabs(objPlots.plotted() - fRead) > 1e-5 * fRead)
    {
        state.SkipWithError("the plot does not show the totals");
    }
}
BENCHMARK(plot)->ArgNames({"measure", "painted"})->ArgsProduct({{0, 1, 2}, {0, 1}})->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
