// The most memory that a load needs at once, from the press of Load to the record in the view, beside the size of the document and what the
// loaded result's own arrays take: the counter "of_needed" is the one divided by the sum of the others. Counted are allocations of the
// process. The window is hidden meanwhile: what drawing takes, the driver's copies included, is not the load's. Needs a display, a
// virtual one will do.

#include "../tests/ormparser/MemoryMeter.h"

#include "BenchDisplay.h"
#include "CToolWindow.h"
#include "LoadStudy.h"

#include <benchmark/benchmark.h>

#include <QFileInfo>
#include <QListWidget>

namespace
{
constexpr double fMiB = 1048576.0;

/// What a loaded result is made of: surface, maps, coordinates and values of the voxels, and the raw values where they are others.
double bytesOf(sAnalysisBase& objRecord)
{
    const C3DVolume& objVolume = objRecord.objVolume;
    const std::size_t nVertices = objRecord.objMesh.vertices().size() / 3;
    std::size_t nFloats = objRecord.objMesh.vertices().size() + objRecord.objMesh.triangles().size() +
                          static_cast<std::size_t>(objRecord.mapPhotonDensity.size()) * nVertices;
    nFloats += objVolume.positions().size() + objVolume.values().size();
    if (objRecord.objRawVolume.values().data() != objVolume.values().data())
    {
        nFloats += objRecord.objRawVolume.values().size();
    }
    return static_cast<double>(nFloats * sizeof(float));
}

/// Loads one result with the window hidden, so that nothing is drawn.
void load(CToolWindow& objTool, const QString& strResult)
{
    auto* pList = objTool.get<QListWidget>("m_pResultWidget");
    pList->clearSelection();
    for (QListWidgetItem* pItem : pList->findItems(strResult, Qt::MatchExactly))
    {
        pItem->setSelected(true);
    }
    QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
}

void peakOfLoad(benchmark::State& state)
{
    const CLoadStudy objStudy(2);
    for (auto objUnused : state)
    {
        static_cast<void>(objUnused);
        CToolWindow objTool;
        objTool.open(objStudy.folder());
        objTool.chooseSequence(QStringLiteral("SOLA ") + CLoadStudy::sequenceID());
        objTool.window().hide();
        load(objTool, objStudy.results().first()); // what display and window allocate once is there from now on
        const long long nBefore = MemoryMeter::restart();
        load(objTool, objStudy.results().last());
        const long long nPeak = MemoryMeter::peak();
        const long long nKept = MemoryMeter::g_nLive;
        if (objTool.tiles().size() != 2)
        {
            state.SkipWithError("not every result was loaded");
            return;
        }
        const double fDocument = static_cast<double>(QFileInfo(objStudy.files().last()).size());
        const double fResult = bytesOf(objTool.view().getAnalysisParams().last());
        state.counters["of_needed"] = static_cast<double>(nPeak - nBefore) / (fDocument + fResult);
        state.counters["document_MiB"] = fDocument / fMiB;
        state.counters["result_MiB"] = fResult / fMiB;
        state.counters["kept_MiB"] = static_cast<double>(nKept - nBefore) / fMiB;
    }
}
} // namespace

BENCHMARK(peakOfLoad)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
