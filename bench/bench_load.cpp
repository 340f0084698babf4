// From the press of Load to the new tiles on the screen, for 1 and for 12 results in the tool's window: the counter "of_parts" is that
// time, less what the bare progress display takes for its own show and 15 repaints per result, divided by the sum of reading and refining
// the same results and of one frame of them. Needs a display, a virtual one will do.

#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "COrmProcess.h"
#include "CToolWindow.h"
#include "LoadStudy.h"

#include <benchmark/benchmark.h>

using BenchRatio::secondsOf;

namespace
{
constexpr int nSteps = 15;

void readAndRefine(const CLoadStudy& objStudy)
{
    for (const QString& strFile : objStudy.files())
    {
        SSOLAAnalysis objAnalysis;
        CLoadStudy::read(strFile, objAnalysis);
        CLoadStudy::refine(objAnalysis);
        benchmark::DoNotOptimize(objAnalysis.objVolume.values().data());
    }
}

/// What the display costs without any work behind it.
void showDisplay(int nResults)
{
    for (int i = 0; i < nResults; ++i)
    {
        COrmProcess::startLongProcess(nSteps, eLongProcessAnalysis, false, QStringLiteral("Aborting..."));
        QCoreApplication::processEvents();
        for (int nStep = 1; nStep <= nSteps; ++nStep)
        {
            COrmProcess::setProcessMessage(QStringLiteral("Loading..."), nStep, nSteps, nullptr);
        }
    }
    COrmProcess::endLongProcess(eLongProcessGeneral);
}

void pressOfLoad(benchmark::State& state)
{
    const auto nResults = static_cast<int>(state.range(0));
    const CLoadStudy objStudy(nResults);
    double fPress = 0.0;
    double fDisplay = 0.0;
    double fReadAndRefine = 0.0;
    double fFrame = 0.0;
    for (auto objUnused : state)
    {
        static_cast<void>(objUnused);
        CToolWindow objTool;
        objTool.open(objStudy.folder());
        objTool.chooseSequence(QStringLiteral("SOLA ") + CLoadStudy::sequenceID());
        BenchDisplay::untilShown(objTool.view(), [&] { objTool.view().update(); });
        const double fPressed = secondsOf([&] { BenchDisplay::untilShown(objTool.view(), [&] { objTool.load(objStudy.results()); }); });
        if (objTool.tiles().size() != nResults)
        {
            state.SkipWithError("not every result was loaded");
            return;
        }
        fPress += fPressed;
        fFrame += secondsOf([&] { BenchDisplay::untilShown(objTool.view(), [&] { objTool.view().setRotation(0.0, 10.0, 0.0); }); });
        fDisplay += secondsOf([&] { showDisplay(nResults); });
        fReadAndRefine += secondsOf([&] { readAndRefine(objStudy); });
        state.SetIterationTime(fPressed);
    }
    const double fRuns = static_cast<double>(state.iterations()) / 1e3;
    state.counters["of_parts"] = (fPress - fDisplay) / (fReadAndRefine + fFrame);
    state.counters["press_ms"] = fPress / fRuns;
    state.counters["display_ms"] = fDisplay / fRuns;
    state.counters["read_refine_ms"] = fReadAndRefine / fRuns;
    state.counters["frame_ms"] = fFrame / fRuns;
}
} // namespace

BENCHMARK(pressOfLoad)->Arg(1)->Arg(12)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
