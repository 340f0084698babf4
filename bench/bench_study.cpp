// A large study from its opening to its end, in the tool's window as a person uses it: 64 results of 65,538 vertices in eight sequences are
// loaded, looked at, turned, measured, plotted, exported and removed. Each step is a measurement of its own, in the order of the steps, and
// a step that is repeated, in a small study, gives its median. Counters: "wall_ms" by the clock on the wall, "longest_ms" of it the longest
// time in which the window hears nothing, "rss_mb" the resident memory of the process after the step and "used_mb" what of it is in use.
// The steps of a size belong together: pick them by their size only. Needs a display, a virtual one will do.

#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "COrmImageExporter.h"
#include "COrmXYPlot.h"
#include "CStudyWriter.h"
#include "CToolWindow.h"

#include <benchmark/benchmark.h>

#include <QComboBox>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QThread>
#include <QWheelEvent>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <memory>
#include <unistd.h>
#include <vector>

using BenchRatio::secondsOf;

namespace
{
/// Notes how long the window hears nothing: the longest handling of a single event.
class CTimedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* pReceiver, QEvent* pEvent) override
    {
        if (QThread::currentThread() != thread() || m_nDepth > 0)
        {
            return QApplication::notify(pReceiver, pEvent);
        }
        QElapsedTimer objClock;
        objClock.start();
        ++m_nDepth;
        const bool bTaken = QApplication::notify(pReceiver, pEvent);
        --m_nDepth;
        m_fLongest = std::max(m_fLongest, static_cast<double>(objClock.nsecsElapsed()) / 1e6);
        return bTaken;
    }

    /// Milliseconds since the last call.
    static double takeLongest()
    {
        const double fLongest = m_fLongest;
        m_fLongest = 0.0;
        return fLongest;
    }

private:
    inline static int m_nDepth = 0;
    inline static double m_fLongest = 0.0;
};

struct SSize
{
    int nSequences;
    int nResultsEach;
    int nSphereSteps; ///< of SResultDocument::setSphere()
    bool bRepeats;    ///< whether steps that can be repeated are

    int results() const { return nSequences * nResultsEach; }
};
constexpr SSize kSmall = {3, 2, 4, true};
constexpr SSize kLarge = {8, 8, 6, false};

constexpr int kRepeats = 3; // odd, so that switches end as they are when they are repeated once

double residentMegabytes()
{
    long nAll = 0;
    long nResident = 0;
    std::FILE* pFile = std::fopen("/proc/self/statm", "r");
    if (pFile == nullptr || std::fscanf(pFile, "%ld %ld", &nAll, &nResident) != 2)
    {
        std::abort();
    }
    std::fclose(pFile);
    return static_cast<double>(nResident * sysconf(_SC_PAGESIZE)) / 1e6;
}

double usedMegabytes()
{
    const struct mallinfo2 objInfo = mallinfo2();
    return static_cast<double>(objInfo.uordblks + objInfo.hblkhd) / 1e6;
}

/// The study on disk.
class CLargeStudy
{
public:
    explicit CLargeStudy(const SSize& objSize) : m_objSize(objSize)
    {
        SResultDocument objDocument;
        objDocument.lstNames = QStringList({"560", "580", "600", "620", "640"});
        objDocument.setSphere(objSize.nSphereSteps, 21.0f);
        for (int i = 0; i < objSize.nSequences; ++i)
        {
            objDocument.strSequenceID = sequenceID(i);
            m_objWriter.addSequence(sequenceID(i), SSequenceLook::luminescent());
            for (int n = 0; n < objSize.nResultsEach; ++n)
            {
                objDocument.setCube(9, 1.0, static_cast<float>(1 + i * objSize.nResultsEach + n));
                m_objWriter.addResult(sequenceID(i), result(n), objDocument);
            }
        }
    }

    QString folder() const { return m_objWriter.folder(); }
    static QString sequenceID(int nSequence) { return QStringLiteral("DAY%1").arg(nSequence, 2, 10, QLatin1Char('0')); }
    static QString result(int nResult) { return QStringLiteral("Result %1").arg(nResult); }
    QStringList results() const
    {
        QStringList lstNames;
        for (int i = 0; i < m_objSize.nResultsEach; ++i)
        {
            lstNames.append(result(i));
        }
        return lstNames;
    }

private:
    SSize m_objSize;
    CStudyWriter m_objWriter;
};

/// A study and its window, with what a person does to them.
class CSession
{
public:
    explicit CSession(const SSize& objSize) : m_objSize(objSize), m_objStudy(objSize), m_objTool(std::make_unique<CToolWindow>())
    {
        malloc_trim(0); // what writing the study took
    }

    CToolWindow& tool() { return *m_objTool; }
    const SSize& size() const { return m_objSize; }

    void open() { m_objTool->open(m_objStudy.folder()); }
    void choose(int nSequence) { m_objTool->chooseSequence(QStringLiteral("SOLA ") + CLargeStudy::sequenceID(nSequence)); }
    void selectResults() { TestWidgets::selectEntries(m_objTool->get<QListWidget>("m_pResultWidget"), m_objStudy.results()); }
    void pressLoad() { TestWidgets::click(m_objTool->get<QPushButton>("m_pLoadButton")); }
    void loadSequences(int nFirst, int nEnd)
    {
        for (int i = nFirst; i < nEnd; ++i)
        {
            choose(i);
            selectResults();
            pressLoad();
        }
    }

    /// The middle of the picture of a tile of the first row.
    QPoint tilePlace(int nTile) const { return {m_rectFirst.center().x() + nTile * m_nTileStep, m_rectFirst.center().y()}; }
    /// Finds the first two tiles of the first row with the pointer.
    void findTiles()
    {
        constexpr int nStep = 8; // pixels
        CLongitudinalStudyBrowserView& view = m_objTool->view();
        for (int nY = 0; nY < view.height(); nY += nStep)
        {
            std::vector<QRect> vecFound;
            for (int nX = 0; nX < view.width() && vecFound.size() < 2; nX += nStep)
            {
                move({nX, nY});
                const QRect rect = tileUnderPointer();
                if (!rect.isEmpty() && (vecFound.empty() || vecFound.back() != rect))
                {
                    vecFound.push_back(rect);
                }
            }
            if (vecFound.size() == 2)
            {
                m_rectFirst = vecFound.front();
                m_nTileStep = vecFound.back().left() - vecFound.front().left();
                return;
            }
        }
        TestWidgets::fail(QStringLiteral("The pointer finds no tiles"));
    }
    QRect firstTile() const { return m_rectFirst; }

    void move(const QPoint& pt) { mouse(QEvent::MouseMove, pt, Qt::NoButton); }
    void press(const QPoint& pt)
    {
        m_eButtons = Qt::LeftButton;
        mouse(QEvent::MouseButtonPress, pt, Qt::LeftButton);
    }
    void release(const QPoint& pt)
    {
        m_eButtons = Qt::NoButton;
        mouse(QEvent::MouseButtonRelease, pt, Qt::LeftButton);
    }
    void turnWheel()
    {
        auto* pWheel = m_objTool->window().findChild<QWidget*>(QStringLiteral("m_pThumWheel"));
        const QPointF pt = pWheel->rect().center();
        QWheelEvent objEvent(pt, pWheel->mapToGlobal(pt.toPoint()), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                             Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(pWheel, &objEvent);
    }
    void showTab(int nTab) { m_objTool->get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(nTab); }
    void plot(int nMeasure)
    {
        auto* pCombo = m_objTool->get<QComboBox>("m_pPlotSelectCB");
        pCombo->setCurrentIndex(nMeasure);
        emit pCombo->activated(nMeasure);
    }
    void chooseNextWavelength()
    {
        auto* pCombo = m_objTool->get<QComboBox>("m_pWaveLengthCB");
        pCombo->setCurrentIndex((pCombo->currentIndex() + 1) % pCombo->count());
    }
    void remove(const QString& strEntry)
    {
        for (const QMenu* pMenu : m_objTool->window().findChildren<QMenu*>())
        {
            for (QAction* pAction : pMenu->actions())
            {
                if (pAction->text() == strEntry)
                {
                    pAction->trigger();
                    return;
                }
            }
        }
        TestWidgets::fail(QStringLiteral("No menu has ") + strEntry);
    }
    void removeSequence()
    {
        m_objTool->host().setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
        if (!QMetaObject::invokeMethod(&m_objTool->window(), "onClickRemoveAction", Qt::DirectConnection))
        {
            std::abort();
        }
    }
    void end() { m_objTool.reset(); }

private:
    QRect tileUnderPointer()
    {
        int nLeft = 0;
        int nBottom = 0;
        int nWidth = 0;
        int nHeight = 0;
        m_objTool->view().getActiveViewParams(nLeft, nBottom, nWidth, nHeight);
        return {nLeft, m_objTool->view().height() - nBottom - nHeight, nWidth, nHeight};
    }
    void mouse(QEvent::Type eType, const QPoint& pt, Qt::MouseButton eButton)
    {
        QMouseEvent objEvent(eType, pt, m_objTool->view().mapToGlobal(pt), eButton, m_eButtons, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_objTool->view(), &objEvent);
    }

    SSize m_objSize;
    CLargeStudy m_objStudy;
    std::unique_ptr<CToolWindow> m_objTool;
    Qt::MouseButtons m_eButtons = Qt::NoButton;
    QRect m_rectFirst;
    int m_nTileStep = 0;
};

/// What ends a step.
enum EEnd
{
    eSettled, ///< no event is waiting
    eFrame    ///< the frames that it asked for are on the screen
};

/// A step: what is done, how often, and what must hold in the end.
struct SStep
{
    const char* pName;
    EEnd eEnd;
    int nRepeats;
    std::function<void(CSession&, int)> fnDo;                                        ///< gets the running number of the repetition
    std::function<int(const CSession&)> fnParts = [](const CSession&) { return 1; }; ///< equal parts that it consists of
};

/// Does it as one event and returns when everything that follows from it is done.
void doAsEvent(const SStep& objStep, CSession& objSession, int nRepeat)
{
    bool bDone = false;
    const auto fnPost = [&]
    {
        QMetaObject::invokeMethod(
            qApp,
            [&]
            {
                objStep.fnDo(objSession, nRepeat);
                bDone = true;
            },
            Qt::QueuedConnection);
    };
    if (objStep.eEnd == eFrame)
    {
        BenchDisplay::untilShown(objSession.tool().view(), fnPost);
        return;
    }
    fnPost();
    while (!bDone)
    {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void requireTiles(CSession& objSession, int nTiles)
{
    if (objSession.tool().tiles().size() != nTiles)
    {
        TestWidgets::fail(QStringLiteral("There are %1 tiles instead of %2").arg(objSession.tool().tiles().size()).arg(nTiles));
    }
}

void saveAndForget(QImage imgPicture)
{
    const QTemporaryDir objFolder;
    QString strPath = objFolder.filePath(QStringLiteral("picture.png"));
    if (!COrmImageExporter().saveImage(imgPicture, strPath))
    {
        TestWidgets::fail(QStringLiteral("The picture was not written"));
    }
}

std::vector<SStep> steps()
{
    const auto fnResultsEach = [](const CSession& s) { return s.size().nResultsEach; };
    const auto fnResults = [](const CSession& s) { return s.size().results(); };
    const auto fnOfMiddle = [](const CSession& s) { return s.size().results() - 2 * s.size().nResultsEach; };
    const auto fnLoadAll = [](CSession& s, int)
    {
        s.loadSequences(0, s.size().nSequences);
        requireTiles(s, s.size().results());
    };
    const auto fnRemoveAll = [](CSession& s, int)
    {
        s.remove(QStringLiteral("All Results"));
        requireTiles(s, 0);
    };
    const auto fnCopy = [](CSession& s, int) { TestWidgets::click(s.tool().get<QAbstractButton>("m_pCopyToClipboardButton")); };
    const auto fnCheck = [](const char* pName)
    { return [pName](CSession& s, int) { TestWidgets::get<QAbstractButton>(&s.tool().window(), pName)->click(); }; };
    const auto fnPlot = [](int nMeasure) { return [nMeasure](CSession& s, int) { s.plot(nMeasure); }; };
    return {
        {"open the study", eSettled, 1, [](CSession& s, int) { s.open(); }},
        {"choose a sequence", eSettled, kRepeats, [](CSession& s, int i) { s.choose(i % s.size().nSequences); }},
        {"select the results of a sequence", eSettled, kRepeats, [](CSession& s, int) { s.selectResults(); }},
        {"load the first sequence, per result", eFrame, 1, [](CSession& s, int) { s.loadSequences(0, 1); }, fnResultsEach},
        {"load the next sequences, per result", eFrame, 1, [](CSession& s, int) { s.loadSequences(1, s.size().nSequences - 1); },
         fnOfMiddle},
        {"load the last sequence, per result", eFrame, 1,
         [](CSession& s, int)
         {
             s.loadSequences(s.size().nSequences - 1, s.size().nSequences);
             requireTiles(s, s.size().results());
         },
         fnResultsEach},
        {"a frame", eFrame, kRepeats, [](CSession& s, int) { s.tool().view().update(); }},
        {"resize", eFrame, kRepeats,
         [](CSession& s, int i) { s.tool().window().resize(i % 2 == 0 ? QSize(1400, 900) : QSize(1200, 800)); }},
        {"turn by a notch of the wheel", eFrame, kRepeats, [](CSession& s, int) { s.turnWheel(); }},
        {"find the tiles", eFrame, 1, [](CSession& s, int) { s.findTiles(); }},
        {"move the pointer to another tile", eFrame, kRepeats, [](CSession& s, int i) { s.move(s.tilePlace(i % 2)); }},
        {"choose another tile", eFrame, kRepeats,
         [](CSession& s, int i)
         {
             s.move(s.tilePlace(i % 2));
             s.press(s.tilePlace(i % 2));
             s.release(s.tilePlace(i % 2));
         }},
        {"next wavelength", eFrame, kRepeats, [](CSession& s, int) { s.chooseNextWavelength(); }},
        {"move an end of the colour range", eFrame, kRepeats,
         [](CSession& s, int i) { s.tool().get<QSpanSlider>("m_pColorBarMinMaxSlider")->setUpperValue(90 - 5 * i); }},
        {"back to the whole range", eFrame, 1,
         [](CSession& s, int) { s.tool().get<QSpanSlider>("m_pColorBarMinMaxSlider")->setUpperValue(100); }},
        {"another colour table", eFrame, kRepeats,
         [](CSession& s, int i) { s.tool().get<QComboBox>("m_pColorTableCB")->setCurrentIndex(1 + i % 2); }},
        {"reverse the colours", eFrame, 2, fnCheck("m_pReverseColorMapCheck")},
        {"logarithmic scale on or off", eFrame, 2, fnCheck("m_pLogarithmicScaleCheck")},
        {"projection on or off", eFrame, 2, fnCheck("m_pMIPCheck")},
        {"another opacity", eFrame, kRepeats, [](CSession& s, int i) { s.tool().get<QSlider>("m_pOpacitySlider")->setValue(40 + i); }},
        {"measuring tool on", eFrame, 1, fnCheck("m_pSelectVoxelButton")},
        {"press at the corner of a rectangle", eSettled, 1,
         [](CSession& s, int)
         {
             const QRect rect = s.firstTile();
             s.move(rect.center());
             s.press(rect.topLeft() + QPoint(rect.width() / 4, rect.height() / 4));
         }},
        {"draw the rectangle", eFrame, kRepeats,
         [](CSession& s, int i) { s.move(s.firstTile().center() + QPoint(i, i) + s.firstTile().bottomRight() / 100); }},
        {"release", eFrame, 1,
         [](CSession& s, int) { s.release(s.firstTile().center() + QPoint(kRepeats, kRepeats) + s.firstTile().bottomRight() / 100); }},
        {"move the pointer while measuring", eFrame, kRepeats, [](CSession& s, int i) { s.move(s.tilePlace(i % 2)); }},
        {"tab with the plots", eSettled, 1, [](CSession& s, int) { s.showTab(1); }},
        {"plot the totals", eSettled, kRepeats, fnPlot(0)},
        {"plot the fit", eSettled, kRepeats, fnPlot(1)},
        {"plot the voxel sizes", eSettled, kRepeats, fnPlot(2)},
        {"copy the plot", eSettled, kRepeats, fnCopy},
        {"export the plot", eSettled, kRepeats,
         [](CSession& s, int) { saveAndForget(s.tool().window().findChild<COrmXYPlot*>()->getPrintImage()); }},
        {"tab with the view", eFrame, 1, [](CSession& s, int) { s.showTab(0); }},
        {"copy the view", eSettled, kRepeats, fnCopy},
        {"export the view", eSettled, kRepeats, [](CSession& s, int) { saveAndForget(s.tool().view().getPrintImage()); }},
        {"measuring tool off", eFrame, 1, fnCheck("m_pSelectVoxelButton")},
        {"choose the tile to be removed", eFrame, 1,
         [](CSession& s, int)
         {
             s.move(s.tilePlace(0));
             s.press(s.tilePlace(0));
             s.release(s.tilePlace(0));
         }},
        {"remove one result", eFrame, 1,
         [](CSession& s, int)
         {
             s.remove(QStringLiteral("Selected Result"));
             requireTiles(s, s.size().results() - 1);
         }},
        {"remove a sequence", eFrame, 1,
         [](CSession& s, int)
         {
             s.choose(s.size().nSequences - 1);
             s.removeSequence();
             requireTiles(s, s.size().results() - 1 - s.size().nResultsEach);
         }},
        {"remove all", eFrame, 1, fnRemoveAll},
        {"bring the removed sequence back", eSettled, 1,
         [](CSession& s, int)
         {
             s.tool().window().hide();
             QMetaObject::invokeMethod(&s.tool().window(), "onInitialUpdate");
             s.tool().window().show();
         }},
        {"load all again, per result", eFrame, 1, fnLoadAll, fnResults},
        {"remove all again", eFrame, 1, fnRemoveAll},
        {"load all once more, per result", eFrame, 1, fnLoadAll, fnResults},
        {"close the window", eSettled, 1, [](CSession& s, int) { s.tool().window().close(); }},
        {"end", eSettled, 1, [](CSession& s, int) { s.end(); }},
    };
}

double median(std::vector<double> vecTimes)
{
    const auto itMiddle = vecTimes.begin() + static_cast<std::ptrdiff_t>(vecTimes.size() / 2);
    std::nth_element(vecTimes.begin(), itMiddle, vecTimes.end());
    return *itMiddle;
}

/// The study that is worked at; null between two.
std::unique_ptr<CSession> s_pSession;

void measure(benchmark::State& state, const SStep& objStep, const SSize& objSize, bool bFirst, bool bLast)
{
    if (bFirst)
    {
        s_pSession.reset();
        s_pSession = std::make_unique<CSession>(objSize);
        state.counters["rss_before_mb"] = residentMegabytes();
        state.counters["used_before_mb"] = usedMegabytes();
    }
    if (!s_pSession)
    {
        state.SkipWithError("the steps before it were not done");
        return;
    }
    int nFrames = 0;
    CSession& objSession = *s_pSession;
    const int nRepeats = objSize.bRepeats ? objStep.nRepeats : 1;
    const auto objFrames = QObject::connect(&objSession.tool().view(), &QOpenGLWidget::frameSwapped, qApp, [&nFrames] { ++nFrames; });
    std::vector<double> vecProcessor;
    std::vector<double> vecWall;
    std::vector<double> vecLongest;
    for (auto objUnused : state)
    {
        static_cast<void>(objUnused);
        for (int i = 0; i < nRepeats; ++i)
        {
            QElapsedTimer objClock;
            objClock.start();
            CTimedApplication::takeLongest();
            vecProcessor.push_back(secondsOf([&] { doAsEvent(objStep, objSession, i); }) / objStep.fnParts(objSession));
            vecWall.push_back(static_cast<double>(objClock.nsecsElapsed()) / 1e6 / objStep.fnParts(objSession));
            vecLongest.push_back(CTimedApplication::takeLongest());
        }
        state.SetIterationTime(median(vecProcessor));
    }
    QObject::disconnect(objFrames);
    state.counters["frames"] = static_cast<double>(nFrames) / nRepeats;
    state.counters["wall_ms"] = median(vecWall);
    state.counters["longest_ms"] = median(vecLongest);
    if (bLast)
    {
        s_pSession.reset();
    }
    state.counters["rss_mb"] = residentMegabytes();
    state.counters["used_mb"] = usedMegabytes();
}

void registerStudy(const SSize& objSize)
{
    const auto pSteps = std::make_shared<std::vector<SStep>>(steps());
    for (std::size_t i = 0; i < pSteps->size(); ++i)
    {
        char acName[128];
        std::snprintf(acName, sizeof acName, "study/results:%d/%02zu %s", objSize.results(), i + 1, (*pSteps)[i].pName);
        benchmark::RegisterBenchmark(acName, [=](benchmark::State& state)
                                     { measure(state, (*pSteps)[i], objSize, i == 0, i + 1 == pSteps->size()); })
            ->Iterations(1)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}
} // namespace

int main(int argc, char** argv)
{
    qAddPostRoutine([] { s_pSession.reset(); }); // of steps that were picked without those after them
    registerStudy(kSmall);
    registerStudy(kLarge);
    return BenchDisplay::run<CTimedApplication>(argc, argv);
}
