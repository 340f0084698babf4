#include "CProcessorMeter.h"
#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "DriverRun.h"
#include "OrmFaults.h"
#include "OrmTestMain.h"

#include <QAction>
#include <QElapsedTimer>

#include <functional>
#include <malloc.h>
#include <unistd.h>

namespace
{
constexpr qint64 g_nMegabyte = 1048576;
#ifdef __SANITIZE_ADDRESS__
constexpr int g_nMoreMemory = 5; ///< the sanitizers take theirs
#else
constexpr int g_nMoreMemory = 1;
#endif

/// A figure of /proc/self/status in bytes, "VmRSS" for what is resident, "VmHWM" for the most that was since forgetPeak().
qint64 memory(const char* pName)
{
    QFile objFile("/proc/self/status");
    if (!objFile.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& baLine : objFile.readAll().split('\n'))
    {
        if (baLine.startsWith(pName))
            return baLine.mid(qstrlen(pName) + 1).simplified().split(' ').first().toLongLong() * 1024;
    }
    return -1;
}

bool forgetPeak()
{
    QFile objFile("/proc/self/clear_refs");
    return objFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && objFile.write("5") == 1;
}

void removeSelected(CToolWindow& objTool)
{
    QAction objRemove(QStringLiteral("Selected Result"));
    QMetaObject::invokeMethod(&objTool.window(), "onClickClearButton", Q_ARG(QAction*, &objRemove));
}

/// Does it 1,000 times, or 100 times in a plain run, and demands that the resident memory is then what it was after 30 times before.
void staysFlat(const char* pWhat, const std::function<void()>& fnOnce)
{
    const int nTimes = triesAll() ? 1000 : 100;
    constexpr int nWarmUp = 30;
    qint64 nBefore = 0;
    for (int nTime = 0; nTime < nWarmUp + nTimes && !QTest::currentTestFailed(); ++nTime)
    {
        if (nTime == nWarmUp)
        {
            malloc_trim(0);
            nBefore = memory("VmRSS");
        }
        fnOnce();
    }
    malloc_trim(0);
    const qint64 nAfter = memory("VmRSS");
    qInfo("resident before %lld KiB, after %d %s %lld KiB", static_cast<long long>(nBefore / 1024), nTimes, pWhat,
          static_cast<long long>(nAfter / 1024));
    QVERIFY(nBefore > 0);
    QVERIFY2(20 * nAfter <= 21 * nBefore, qPrintable(QString("%1 -> %2").arg(nBefore).arg(nAfter)));
}

/// An index of so many results, all of one file.
QByteArray indexOf(int nResults)
{
    QByteArray baIndex;
    for (int i = 0; i < nResults; ++i)
        baIndex += "[SOLA_" + QByteArray::number(i) + "]\nMenuName=Result " + QByteArray::number(i) + "\nFileName=SOLA_1.xml\n";
    return baIndex;
}
} // namespace

using Content = std::function<void(const QString& strFile)>;
Q_DECLARE_METATYPE(Content)

/// What loads and refusals cost, and what large studies do.
class TestFaultsMemory : public QObject
{
    Q_OBJECT

private slots:
    void manyLoadsLeaveTheMemoryFlat();
    void manyChangesOfTheListLeaveTheMemoryFlat();
    void aRefusedFileCostsLittle_data();
    void aRefusedFileCostsLittle();
    void aLongListCostsNoMoreCalls();
    void manySequencesCostNoMoreCalls();
    void nothingIsLost();
};

void TestFaultsMemory::manyLoadsLeaveTheMemoryFlat()
{
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1");
    SResultDocument objDocument;
    objDocument.setSphere(3);
    objStudy.addResult("SEQ1", "R", objDocument);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA SEQ1");
    staysFlat("loads and removals",
              [&]
              {
                  objTool.load({"R"});
                  QCOMPARE(objTool.tiles(), QStringList("SEQ1R"));
                  QCoreApplication::processEvents();
                  removeSelected(objTool);
                  QVERIFY(objTool.tiles().isEmpty());
                  QCoreApplication::processEvents();
                  objTool.host().clear();
              });
}

void TestFaultsMemory::manyChangesOfTheListLeaveTheMemoryFlat()
{
    constexpr int nResults = 1000;
    CStudyWriter objStudy;
    for (const char* pID : {"SEQ1", "SEQ2"})
    {
        objStudy.addSequence(pID);
        CStudyWriter::writeFile(objStudy.sequenceFolder(pID) + "XML/SOLA.txt", indexOf(nResults));
    }
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    staysFlat("changes between lists of 1,000 results",
              [&]
              {
                  for (const char* pEntry : {"SOLA SEQ1", "SOLA SEQ2"})
                  {
                      objTool.chooseSequence(pEntry);
                      QCOMPARE(objTool.savedResults().size(), nResults);
                      QCoreApplication::processEvents();
                  }
                  objTool.host().clear();
              });
}

void TestFaultsMemory::aRefusedFileCostsLittle_data()
{
    QTest::addColumn<Content>("fnWrite");
    QTest::addColumn<qint64>("nMayRead"); // of its bytes; the rest must not be read
    const auto bytes = [](const std::function<QByteArray()>& fnBytes)
    { return Content([fnBytes](const QString& strFile) { CStudyWriter::writeFile(strFile, fnBytes()); }); };
    const auto add = [&](const char* pTitle, const std::function<QByteArray()>& fnBytes)
    { QTest::newRow(pTitle) << bytes(fnBytes) << static_cast<qint64>(fnBytes().size()); };
    const auto sound = [] { return SResultDocument().toXml(); };
    add("a lying number of vertices", [=] { return sound().replace("Vertices Count=\"66\"", "Vertices Count=\"2147483647\""); });
    add("a lying number of voxels", [=] { return sound().replace("Kind=\"SOLA\" Count=\"64\"", "Kind=\"SOLA\" Count=\"2147483647\""); });
    add("a lying height map", [=] { return sound().replace("Width=\"4\" Height=\"3\"", "Width=\"46341\" Height=\"46341\""); });
    add("lying densities", [=] { return sound().replace("Total.Vertices=\"66\"", "Total.Vertices=\"2147483647\""); });
    add("a lying results table", [=] { return sound().replace("Results Count=\"4\"", "Results Count=\"2147483647\""); });
    add("1 MB of open tags", [] { return QByteArray("<a>").repeated(349525); });
    add("1 MB of rows that nobody asks for", [=] { return sound().replace("</Orm3.0.SOLA.Data>", QByteArray("<x/>").repeated(260000)); });
    add("1 MB of digits and one that is none",
        [=] { return sound().replace("Triangles.Values><Text.Data>", "Triangles.Values><Text.Data>x" + QByteArray(1000000, '0')); });
    add("48 MB of digits and an early end",
        [=] {
            return sound()
                .replace("Triangles.Values><Text.Data>", "Triangles.Values><Text.Data>" + QByteArray(50000000, '0'))
                .left(49000000);
        });
    QTest::newRow("more than 1 GiB") << Content(
                                            [](const QString& strFile)
                                            {
                                                CStudyWriter::writeFile(strFile, "<");
                                                QVERIFY(truncate(QFile::encodeName(strFile).constData(), (qint64(1) << 30) + 1) == 0);
                                            })
                                     << qint64(0);
}

void TestFaultsMemory::aRefusedFileCostsLittle()
{
    QFETCH(Content, fnWrite);
    QFETCH(qint64, nMayRead);
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1");
    objStudy.addResult("SEQ1", "sound", SResultDocument());
    fnWrite(objStudy.addResult("SEQ1", "refused", SResultDocument()));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"sound"}); // what the first load alone costs
    TestWidgets::selectEntries(objTool.get<QListWidget>("m_pResultWidget"), {"refused"});
    QCoreApplication::processEvents();
    objTool.host().clear();
    malloc_trim(0);
    QVERIFY(forgetPeak());
    const qint64 nBefore = memory("VmRSS");
    const CProcessorMeter objMeter;
    QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
    const double fSeconds = objMeter.seconds();
    const bool bQuick = objMeter.isWithinPatience(nMayRead);
    const qint64 nMost = memory("VmHWM") - nBefore;
    QCOMPARE(objTool.host().callsOf("box"), QStringList("box information: Unable to load analysis data"));
    QCOMPARE(objTool.tiles(), QStringList("SEQ1sound"));
    qInfo("%lld KiB beyond the file, %.0f ms of the processor", static_cast<long long>((nMost - nMayRead) / 1024), 1000 * fSeconds);
    QVERIFY2(nMost - nMayRead <= g_nMoreMemory * 32 * g_nMegabyte, qPrintable(QString::number(nMost)));
    QVERIFY2(bQuick, "it took long");
}

void TestFaultsMemory::aLongListCostsNoMoreCalls()
{
    long anChoosing[2] = {};
    long anLoading[2] = {};
    const int anResults[2] = {10, 10000};
    for (int i = 0; i < 2; ++i)
    {
        CStudyWriter objStudy;
        objStudy.addSequence("SEQ1");
        objStudy.addResult("SEQ1", "R", SResultDocument());
        CStudyWriter::writeFile(objStudy.sequenceFolder("SEQ1") + "XML/SOLA.txt", indexOf(anResults[i]));
        CToolWindow objTool;
        objTool.open(objStudy.folder());
        const QByteArray baFolder = QFile::encodeName(objStudy.folder());
        OrmFaults::SPlan sPlan;
        sPlan.eKind = OrmFaults::EKind::File;
        sPlan.pFolder = baFolder.constData();
        QElapsedTimer objTimer;
        objTimer.start();
        OrmFaults::begin(sPlan);
        objTool.chooseSequence("SOLA SEQ1");
        anChoosing[i] = OrmFaults::end().nCalls;
        const qint64 nChoosing = objTimer.restart();
        QCOMPARE(objTool.savedResults().size(), anResults[i]);
        QListWidget* pResults = objTool.get<QListWidget>("m_pResultWidget");
        pResults->setCurrentRow(anResults[i] - 1);
        objTimer.restart();
        OrmFaults::begin(sPlan);
        QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
        anLoading[i] = OrmFaults::end().nCalls;
        qInfo("%d results: listed in %lld ms, the last one loaded in %lld ms", anResults[i], static_cast<long long>(nChoosing),
              static_cast<long long>(objTimer.elapsed()));
        QCOMPARE(objTool.tiles(), QStringList("SEQ1" + pResults->item(anResults[i] - 1)->text()));
    }
    QVERIFY(anChoosing[0] > 0 && anLoading[0] > anChoosing[0]);
    QCOMPARE(anChoosing[1], anChoosing[0]);
    QCOMPARE(anLoading[1], anLoading[0]);
}

void TestFaultsMemory::manySequencesCostNoMoreCalls()
{
    long anLoading[2] = {};
    const int anSequences[2] = {5, 500};
    for (int i = 0; i < 2; ++i)
    {
        CStudyWriter objStudy;
        for (int nSequence = 0; nSequence < anSequences[i]; ++nSequence)
            objStudy.addSequence(QString("SEQ%1").arg(nSequence));
        SResultDocument objDocument;
        objDocument.strSequenceID = "SEQ3";
        objStudy.addResult("SEQ3", "R", objDocument);
        QElapsedTimer objTimer;
        objTimer.start();
        CToolWindow objTool;
        objTool.open(objStudy.folder());
        const qint64 nOpening = objTimer.elapsed();
        QCOMPARE(objTool.get<QListWidget>("m_pSequenceNameLW")->count(), anSequences[i]);
        const QByteArray baFolder = QFile::encodeName(objStudy.folder());
        OrmFaults::SPlan sPlan;
        sPlan.eKind = OrmFaults::EKind::File;
        sPlan.pFolder = baFolder.constData();
        objTimer.restart();
        OrmFaults::begin(sPlan);
        objTool.chooseSequence("SOLA SEQ3");
        objTool.load({"R"});
        anLoading[i] = OrmFaults::end().nCalls;
        qInfo("%d sequences: opened and listed in %lld ms, one chosen and its result loaded in %lld ms", anSequences[i],
              static_cast<long long>(nOpening), static_cast<long long>(objTimer.elapsed()));
        QCOMPARE(objTool.tiles(), QStringList("SEQ3R"));
    }
    QVERIFY(anLoading[0] > 0);
    QCOMPARE(anLoading[1], anLoading[0]);
}

void TestFaultsMemory::nothingIsLost()
{
    const SDriverRun objSound = runLeakCheck({"life"});
    QVERIFY2(objSound.nExit == 0, qPrintable(objSound.strOutput));
    // The check notices what is lost.
    const SDriverRun objLeaking = runLeakCheck({"leak"});
    QVERIFY2(objLeaking.nExit != 0 && objLeaking.strOutput.contains("LeakSanitizer: detected memory leaks"),
             qPrintable(objLeaking.strOutput));
    QFile objSuppressions(ORM_SOURCE_DIR "/tests/faults/leaks.supp");
    QVERIFY(objSuppressions.open(QIODevice::ReadOnly));
    int nEntries = 0;
    for (const QByteArray& baLine : objSuppressions.readAll().split('\n'))
        nEntries += baLine.startsWith("leak:") ? 1 : 0;
    QVERIFY(nEntries <= 10);
}

int main(int nArguments, char** ppArguments)
{
    allowLongFunctions();
    return runOrmTest<TestFaultsMemory>(nArguments, ppArguments);
}

#include "tst_faults_memory.moc"
