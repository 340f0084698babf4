#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "CWalkRecorder.h"
#include "OrmTestMain.h"

#include "COrmProcess.h"
#include "ResultDocumentWalk.h"

#include <cstdlib>
#include <functional>
#include <new>

#include <sys/stat.h>

namespace
{

/// Which allocation fails: the one with this number among those of that many bytes, or among all of them. Single-threaded.
struct SFailure
{
    bool bArmed = false;
    bool bForEver = false;  ///< all later ones of that kind fail too
    std::size_t nBytes = 0; ///< 0: of any size
    long nCountdown = 0;
    long nSeen = 0; ///< allocations of that kind since arming
};
SFailure g_objFailure;
std::size_t g_nLargest = 0; ///< largest allocation asked for, bytes

bool failsNow(std::size_t nBytes)
{
    g_nLargest = nBytes > g_nLargest ? nBytes : g_nLargest;
    if (!g_objFailure.bArmed || (g_objFailure.nBytes != 0 && g_objFailure.nBytes != nBytes))
    {
        return false;
    }
    ++g_objFailure.nSeen;
    return g_objFailure.bForEver ? g_objFailure.nSeen >= g_objFailure.nCountdown : g_objFailure.nSeen == g_objFailure.nCountdown;
}

} // namespace

// All plain forms, so that what one of them hands out another one may take back.
void* operator new(std::size_t nBytes, const std::nothrow_t&) noexcept
{
    return failsNow(nBytes) ? nullptr : std::malloc(nBytes == 0 ? 1 : nBytes);
}

void* operator new(std::size_t nBytes)
{
    void* pBlock = ::operator new(nBytes, std::nothrow);
    if (pBlock == nullptr)
    {
        throw std::bad_alloc();
    }
    return pBlock;
}

void* operator new[](std::size_t nBytes)
{
    return ::operator new(nBytes);
}

void* operator new[](std::size_t nBytes, const std::nothrow_t&) noexcept
{
    return ::operator new(nBytes, std::nothrow);
}

void operator delete(void* pBlock) noexcept
{
    std::free(pBlock);
}

void operator delete(void* pBlock, std::size_t) noexcept
{
    std::free(pBlock);
}

void operator delete[](void* pBlock) noexcept
{
    std::free(pBlock);
}

void operator delete[](void* pBlock, std::size_t) noexcept
{
    std::free(pBlock);
}

void operator delete(void* pBlock, const std::nothrow_t&) noexcept
{
    std::free(pBlock);
}

void operator delete[](void* pBlock, const std::nothrow_t&) noexcept
{
    std::free(pBlock);
}

/// Files and machines that mean no good: memory that runs short, counts that lie, files that are no results. A message, nothing
/// thrown, and the other results still load.
class tst_results_badinput : public QObject
{
    Q_OBJECT

private slots:
    void rowsThatFindNoMemorySayTheirMessage_data();
    void rowsThatFindNoMemorySayTheirMessage();
    void aHeightMapWithoutMemoryIsPassedOverInSilence();
    void anyFailedAllocationEndsQuietly_data();
    void anyFailedAllocationEndsQuietly();
    void countsAreNotBelieved_data();
    void countsAreNotBelieved();

    void badFilesDontHurt_data();
    void badFilesDontHurt();
    void truncatedDocumentsDontHurt_data();
    void truncatedDocumentsDontHurt();
};

namespace
{

/// Reads the file with the failure given; returns whether it was read.
bool readWith(int nKind, const QString& strFile, const SFailure& objFailure, CWalkRecorder& objMessages)
{
    SSOLAAnalysis objSOLA;
    SNOVAAnalysis objNOVA;
    const ResultDocument::STarget objTarget = nKind == 1
                                                  ? ResultDocument::STarget{objNOVA, objNOVA.nImageSourceCount, objNOVA.lstImageSources}
                                                  : ResultDocument::STarget{objSOLA, objSOLA.nWavelengthCount, objSOLA.lstWavelengths};
    g_objFailure = objFailure;
    const bool bRead = ResultDocument::read(nKind == 1 ? ResultDocument::nova() : ResultDocument::sola(), objMessages, strFile, objTarget);
    g_objFailure.bArmed = false;
    return bRead;
}

/// A document whose density rows have a size that nothing else has.
SResultDocument documentWithLongRows(int nKind, const QString& strVersion)
{
    SResultDocument objDocument(nKind, strVersion);
    objDocument.setSphere(3);
    return objDocument;
}

void addKindsAndVersions()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strVersion");
    for (const int nKind : {0, 1})
    {
        for (const char* pVersion : {"1.0", "2.0"})
        {
            QTest::addRow("%s %s", nKind == 1 ? "NOVA" : "SOLA", pVersion) << nKind << QString(pVersion);
        }
    }
}

} // namespace

void tst_results_badinput::rowsThatFindNoMemorySayTheirMessage_data()
{
    addKindsAndVersions();
}

void tst_results_badinput::rowsThatFindNoMemorySayTheirMessage()
{
    QFETCH(int, nKind);
    QFETCH(QString, strVersion);
    CStudyWriter objStudy;
    const SResultDocument objDocument = documentWithLongRows(nKind, strVersion);
    const QString strFile = objStudy.addResult("SEQ1", "R", objDocument);
    SFailure objFailure;
    objFailure.bArmed = true;
    objFailure.nBytes = sizeof(float) * static_cast<std::size_t>(objDocument.vertexCount());
    QStringList lstSeen;
    for (long n = 1;; ++n)
    {
        objFailure.nCountdown = n;
        CWalkRecorder objMessages(nKind);
        if (readWith(nKind, strFile, objFailure, objMessages))
        {
            QCOMPARE(g_objFailure.nSeen, n - 1); // every one of them has failed once
            break;
        }
        QCOMPARE(objMessages.lstFailures.size(), 1);
        lstSeen.append(objMessages.lstFailures.first());
        QVERIFY2(n < 20, "it never ends");
    }
    const QString strChannel = nKind == 1 ? "hint: " : "log 1: ";
    const QString strSimulated = strChannel + "Unable to allocate memory for simulated photon density maps.";
    const QString strMeasured = strChannel + "Unable to allocate memory for measured photon density maps.";
    const QString strScratch = strChannel + "Unable to read simulated photon density information.";
    // Two rows of each block. In version 2.0 a scratch row comes before each, and the measured block speaks of simulated densities too.
    const QStringList lstExpected =
        strVersion == "1.0"
            ? QStringList({strSimulated, strSimulated, strMeasured, strMeasured})
            : QStringList({strScratch, strSimulated, strScratch, strSimulated, strScratch, strSimulated, strScratch, strSimulated});
    QCOMPARE(lstSeen, lstExpected);
}

void tst_results_badinput::aHeightMapWithoutMemoryIsPassedOverInSilence()
{
    for (const int nKind : {0, 1})
    {
        CStudyWriter objStudy;
        SResultDocument objDocument(nKind);
        objDocument.nMapWidth = 37;
        objDocument.nMapHeight = 29;
        const QString strFile = objStudy.addResult("SEQ1", "R", objDocument);
        SFailure objFailure;
        objFailure.bArmed = true;
        objFailure.nBytes = sizeof(float) * 37 * 29;
        objFailure.nCountdown = 1;
        CWalkRecorder objMessages(nKind);
        QVERIFY(readWith(nKind, strFile, objFailure, objMessages));
        QVERIFY(g_objFailure.nSeen > 0);
        QStringList lstSaid = objMessages.lstFailures;
        lstSaid.removeAll("log 1: Registration matrices are not present in the  result XML file.");
        QCOMPARE(lstSaid, QStringList());
    }
}

void tst_results_badinput::anyFailedAllocationEndsQuietly_data()
{
    addKindsAndVersions();
}

void tst_results_badinput::anyFailedAllocationEndsQuietly()
{
    QFETCH(int, nKind);
    QFETCH(QString, strVersion);
    CStudyWriter objStudy;
    SResultDocument objDocument(nKind, strVersion);
    objDocument.setSphere(0);
    objDocument.setCube(2, 1.0);
    const QString strFile = objStudy.addResult("SEQ1", "R", objDocument);
    for (const bool bForEver : {false, true})
    {
        bool bRead = false;
        for (long n = 1; !bRead || g_objFailure.nSeen >= n; ++n)
        {
            SFailure objFailure;
            objFailure.bArmed = true;
            objFailure.bForEver = bForEver;
            objFailure.nCountdown = n;
            CWalkRecorder objMessages(nKind);
            bRead = readWith(nKind, strFile, objFailure, objMessages); // an exception that came out would end the program
            QVERIFY2(n < 100000, "it never ends");
        }
        QVERIFY(bRead);
    }
}

void tst_results_badinput::countsAreNotBelieved_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strVersion");
    QTest::addColumn<QByteArray>("byOld");
    QTest::addColumn<QByteArray>("byNew");
    for (const char* pVersion : {"1.0", "2.0"})
    {
        QTest::addRow("vertices %s", pVersion) << 0 << QString(pVersion) << QByteArray("Total.Vertices=\"66\"")
                                               << QByteArray("Total.Vertices=\"2147483647\"");
        QTest::addRow("pixels %s", pVersion) << 0 << QString(pVersion) << QByteArray("Width=\"4\" Height=\"3\"")
                                             << QByteArray("Width=\"46341\" Height=\"46341\"");
        QTest::addRow("wavelengths %s", pVersion) << 0 << QString(pVersion) << QByteArray("Wavelengths Count=\"2\" Views=\"0\"")
                                                  << QByteArray("Wavelengths Count=\"2147483647\" Views=\"2\"");
        QTest::addRow("image sources %s", pVersion)
            << 1 << QString(pVersion) << QByteArray("Imagesource Count=\"2\"") << QByteArray("Imagesource Count=\"2147483647\"");
        QTest::addRow("clicks %s", pVersion) << 1 << QString(pVersion) << QByteArray("ClickNumber Count=\"5\"")
                                             << QByteArray("ClickNumber Count=\"2147483647\"");
        QTest::addRow("rows %s", pVersion) << 0 << QString(pVersion) << QByteArray("Results Count=\"4\"")
                                           << QByteArray("Results Count=\"2147483647\"");
    }
}

void tst_results_badinput::countsAreNotBelieved()
{
    QFETCH(int, nKind);
    QFETCH(QString, strVersion);
    QFETCH(QByteArray, byOld);
    QFETCH(QByteArray, byNew);
    CStudyWriter objStudy;
    SResultDocument objDocument(nKind, strVersion);
    objDocument.replace(byOld, byNew);
    if (byNew.contains("Views"))
    {
        objDocument.replace("Total.WaveLengths=\"2\"", "Total.WaveLengths=\"2147483647\"");
    }
    const QString strFile = objStudy.addResult("SEQ1", "R", objDocument);
    // Above this no allocation of a sound small document lies; what a count claims is far beyond.
    const std::size_t nLargest = 16 * 1024 * 1024;
    g_nLargest = 0;
    CWalkRecorder objMessages(nKind);
    QElapsedTimer objTimer;
    objTimer.start();
    QVERIFY(!readWith(nKind, strFile, SFailure(), objMessages));
    QVERIFY2(objTimer.elapsed() < 5000, "a count was counted through");
    QVERIFY2(g_nLargest < nLargest, qPrintable(QString::number(g_nLargest)));
    QCOMPARE(objMessages.lstFailures.size(), 1);
}

namespace
{

const QString g_strUnable = QStringLiteral("Unable to load analysis data");

void checkAtRest()
{
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
    QVERIFY(!COrmProcess::isUserInteractionDisabled());
}

} // namespace

/// Puts something in the place of a sound result's file.
using Replacement = std::function<void(const QString& strFile)>;
Q_DECLARE_METATYPE(Replacement)

void tst_results_badinput::badFilesDontHurt_data()
{
    QTest::addColumn<Replacement>("fnReplace");
    const auto bytes = [](const QByteArray& by)
    { return Replacement([by](const QString& strFile) { CStudyWriter::writeFile(strFile, by); }); };
    const QByteArray bySound = SResultDocument().toXml();
    QTest::newRow("missing") << Replacement([](const QString& strFile) { QVERIFY(QFile::remove(strFile)); });
    QTest::newRow("empty") << bytes(QByteArray());
    QTest::newRow("one byte") << bytes("<");
    QTest::newRow("zeros") << bytes(QByteArray(4096, '\0'));
    QTest::newRow("settings text") << bytes("[SOLA_1]\nMenuName=a\n");
    QTest::newRow("gzip") << bytes(QByteArray::fromHex("1f8b0800000000000003"));
    QTest::newRow("UTF-16 without a mark") << bytes(
        QByteArray(reinterpret_cast<const char*>(QString::fromUtf8(bySound).utf16()), 2 * bySound.size()));
    QTest::newRow("unknown encoding") << bytes(QByteArray(bySound).replace("UTF-8", "FOO-9").replace("SEQ1", "SEQ\xE9"));
    QTest::newRow("document type") << bytes(
        QByteArray(bySound).replace("<Ormelle.Result", "<!DOCTYPE x [<!ENTITY a \"aaaa\">]><Ormelle.Result"));
    QTest::newRow("deep") << bytes(QByteArray("<a>").repeated(200000));
    QTest::newRow("two roots") << bytes(bySound + "<Ormelle.Result Version=\"2.0\"/>");
    QTest::newRow("vertex count lies") << bytes(QByteArray(bySound).replace("Vertices Count=\"66\"", "Vertices Count=\"2147483647\""));
    QTest::newRow("triangle index lies") << bytes(
        QByteArray(bySound).replace("Triangles.Values><Text.Data>", "Triangles.Values><Text.Data>FFFFFFFF"));
    QTest::newRow("voxel count lies") << bytes(
        QByteArray(bySound).replace("Kind=\"SOLA\" Count=\"64\"", "Kind=\"SOLA\" Count=\"2000000000\""));
    QTest::newRow("voxel size 0") << bytes(QByteArray(bySound).replace("VoxelSize=\"1\"", "VoxelSize=\"0\""));
    QTest::newRow("density counts lie") << bytes(QByteArray(bySound).replace("Total.Vertices=\"66\"", "Total.Vertices=\"2147483647\""));
    QTest::newRow("results count lies") << bytes(QByteArray(bySound).replace("Results Count=\"4\"", "Results Count=\"2147483647\""));
    QTest::newRow("folder") << Replacement(
        [](const QString& strFile)
        {
            QVERIFY(QFile::remove(strFile));
            QVERIFY(QDir().mkpath(strFile));
        });
    QTest::newRow("pipe") << Replacement(
        [](const QString& strFile)
        {
            QVERIFY(QFile::remove(strFile));
            QCOMPARE(mkfifo(strFile.toLocal8Bit().constData(), 0600), 0);
        });
    QTest::newRow("dangling link") << Replacement(
        [](const QString& strFile)
        {
            QVERIFY(QFile::remove(strFile));
            QVERIFY(QFile::link("nothing.xml", strFile));
        });
    QTest::newRow("loop of links") << Replacement(
        [](const QString& strFile)
        {
            QVERIFY(QFile::remove(strFile));
            QVERIFY(QFile::link(QFileInfo(strFile).fileName(), strFile));
        });
}

void tst_results_badinput::badFilesDontHurt()
{
    QFETCH(Replacement, fnReplace);
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1");
    objStudy.addResult("SEQ1", "before", SResultDocument());
    const QString strFile = objStudy.addResult("SEQ1", "bad", SResultDocument());
    objStudy.addResult("SEQ1", "after", SResultDocument());
    fnReplace(strFile);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.host().clear();
    objTool.load({"before", "bad", "after"});
    QCOMPARE(objTool.tiles(), QStringList({"SEQ1before", "SEQ1after"}));
    QCOMPARE(objTool.host().callsOf("box"), QStringList("box information: " + g_strUnable));
    QVERIFY2(!objTool.host().hostLog().isEmpty() || !objTool.host().callsOf("log 3").isEmpty(), "nobody said why");
    checkAtRest();
}

void tst_results_badinput::truncatedDocumentsDontHurt_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strVersion");
    QTest::newRow("SOLA 1.0") << 0 << "1.0";
    QTest::newRow("SOLA 2.0") << 0 << "2.0";
    QTest::newRow("NOVA 2.0") << 1 << "2.0";
}

void tst_results_badinput::truncatedDocumentsDontHurt()
{
    QFETCH(int, nKind);
    QFETCH(QString, strVersion);
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1", nKind == 1 ? SSequenceLook::fluorescent() : SSequenceLook::luminescent());
    SResultDocument objDocument(nKind, strVersion);
    const QString strFile = objStudy.addResult("SEQ1", "R", objDocument);
    const QByteArray bySound = objDocument.toXml();
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(nKind == 1 ? "NOVA SEQ1" : "SOLA SEQ1");
    const int nCuts = 25;
    for (int i = 0; i < nCuts; ++i)
    {
        const int nLength = static_cast<int>(qint64(bySound.size() - 2) * i / (nCuts - 1)); // the last line end alone may be missing
        CStudyWriter::writeFile(strFile, bySound.left(nLength));
        objTool.host().clear();
        objTool.load({"R"});
        QVERIFY2(objTool.tiles().isEmpty(), qPrintable(QStringLiteral("%1 of %2 bytes were accepted").arg(nLength).arg(bySound.size())));
        QCOMPARE(objTool.host().callsOf("box"), QStringList("box information: " + g_strUnable));
        checkAtRest();
    }
    CStudyWriter::writeFile(strFile, bySound);
    objTool.load({"R"});
    QCOMPARE(objTool.tiles(), QStringList("SEQ1R"));
}

ORM_TEST_MAIN(tst_results_badinput)
#include "tst_results_badinput.moc"
