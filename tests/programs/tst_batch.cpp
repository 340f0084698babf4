#include "ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace
{
const char* const g_pszStrange = "a 'b' \"c\"\n$d";
const QSize g_size(300, 200); ///< of the figures, pixels: what is drawn costs more than all the rest

QByteArray contents(const QString& strFile)
{
    QFile file(strFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool append(const QString& strFile, const QByteArray& aBytes)
{
    QFile file(strFile);
    return file.open(QIODevice::Append) && file.write(aBytes) == aBytes.size();
}

/// A copy of a folder with all times as they are.
bool copyFolder(const QString& strFrom, const QString& strTo)
{
    return QProcess::execute("cp", {"-a", strFrom, strTo}) == 0;
}

QStringList everythingIn(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

/// The processes that one has started and that still run.
QList<qint64> childrenOf(qint64 nProcess)
{
    QList<qint64> lstChildren;
    for (const QString& strProcess : QDir("/proc").entryList(QDir::Dirs))
    {
        const QByteArray aFacts = contents("/proc/" + strProcess + "/stat");
        const QList<QByteArray> lstFacts = aFacts.mid(aFacts.lastIndexOf(')') + 2).split(' ');
        if (lstFacts.size() > 1 && lstFacts.at(1).toLongLong() == nProcess && lstFacts.at(0) != "Z")
        {
            lstChildren.append(strProcess.toLongLong());
        }
    }
    return lstChildren;
}

bool runs(qint64 nProcess)
{
    const QByteArray aFacts = contents(QString("/proc/%1/stat").arg(nProcess));
    return !aFacts.isEmpty() && !aFacts.mid(aFacts.lastIndexOf(')')).startsWith(") Z");
}

/// An environment without a display.
QProcessEnvironment withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* pszName : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XAUTHORITY"})
    {
        environment.remove(QLatin1String(pszName));
    }
    return environment;
}
} // namespace

/// Many studies in one call.
class tst_Batch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void everyStudyGetsItsFiles();
    void everyPictureSaysHowItWasMade();
    void whatIsUpToDateIsSkipped();
    void changedInputsAndOptionsAreSeen();
    void crashCostsOneStudy();
    void stopLeavesNothingHalf_data();
    void stopLeavesNothingHalf();
    void killedBatchTakesItsStudiesAlong();
    void oneAtATimeInAFolder();
    void wrongFoldersAreReasons_data();
    void wrongFoldersAreReasons();
    void fullDiskIsAReason();
    void displayIsMade();
    void displayEndsWithTheProgram();
    void missingServerIsSaid();
    void studyWithoutResultsFails();

private:
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    /// Studies of one to three time points: a sound one, a strange name with only NOVA, and one with a damaged result; besides a folder of
    /// none.
    void makeStudies();
    /// Takes studies away from the root for the rest of the test.
    bool without(const QStringList& lstStudies) const
    {
        return std::all_of(lstStudies.begin(), lstStudies.end(),
                           [this](const QString& strStudy) { return QDir(path("root/" + strStudy)).removeRecursively(); });
    }
    /// Makes the folder what a batch of all studies leaves.
    bool putMade() const { return copyFolder(path("made"), path("out")); }
    QStringList batchArguments(const QStringList& lstArguments = {}) const
    {
        return QStringList{"--study-per-folder", path("root"), "--out",
                           path("out"),          "--size",     QString("%1x%2").arg(g_size.width()).arg(g_size.height())} +
               lstArguments;
    }
    SProgramRun batch(const QStringList& lstArguments = {}) const { return runProgram("ormcompare", batchArguments(lstArguments)); }
    QTemporaryDir m_objFolder;
    SProgramRun m_made; ///< of a batch of all studies, which left what is in "made"
};

void tst_Batch::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    makeStudies();
    QVERIFY(copyFolder(path("root"), path("pristine")));
    m_made = batch({"--jobs", "2"});
    QVERIFY(QDir().rename(path("out"), path("made")));
}

void tst_Batch::init()
{
    QVERIFY(QDir(path("out")).removeRecursively() && QDir(path("root")).removeRecursively());
    QVERIFY(copyFolder(path("pristine"), path("root")));
}

void tst_Batch::makeStudies()
{
    QVERIFY(QDir().mkpath(path("root/notes")));
    QVERIFY(append(path("root/notes/plan.txt"), "nothing") && append(path("root/file"), "nothing"));
    const auto make = [this](const QString& strName, const QString& strPoints, const QString& strKind) {
        return runProgram("ormphantom", {path("root/" + strName), "--timepoints", strPoints, "--vertices", "60", "--kind", strKind})
            .m_nExit;
    };
    QCOMPARE(make("plain", "3", "SOLA"), 0);
    QCOMPARE(make(QLatin1String(g_pszStrange), "1", "NOVA"), 0);
    QCOMPARE(make("broken", "2", "both"), 0);
    QFile damaged(path("root/broken/PM20260305_L/XML/SOLA_1.xml"));
    QVERIFY(damaged.resize(damaged.size() / 2));
}

void tst_Batch::everyStudyGetsItsFiles()
{
    const SProgramRun& run = m_made;
    QVERIFY(putMade());
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(run.m_strError, QString("ormcompare: broken: SOLA PM20260305_L/Day 3, 1 mm: Unable to read analysis data.\n"));
    QVERIFY2(run.m_strOut.contains("[3/3] "), qPrintable(run.m_strOut));
    QVERIFY2(run.m_strOut.contains("3 studies: 2 made, 0 up to date, 1 failed; 1 other folders hold no sequence\n"),
             qPrintable(run.m_strOut));
    QCOMPARE(everythingIn(path("out")), (QStringList{QLatin1String(g_pszStrange), "all.csv", "broken", "growth.csv", "plain"}));
    const QStringList lstCommon{".made.json", "figure.png", "growth.csv", "growth.png"};
    const QStringList lstSola{"plot-SOLA-chi2.png", "plot-SOLA-quantification.png", "plot-SOLA-voxelsize.png"};
    const QStringList lstNova{"plot-NOVA-chi2.png", "plot-NOVA-quantification.png", "plot-NOVA-voxelsize.png"};
    QCOMPARE(everythingIn(path("out/plain")), lstCommon + lstSola + QStringList{"table.csv"});
    QCOMPARE(everythingIn(path(QString("out/") + g_pszStrange)), lstCommon + lstNova + QStringList{"table.csv"});
    QCOMPARE(everythingIn(path("out/broken")), lstCommon + lstNova + lstSola + QStringList{"table.csv"});
    QCOMPARE(QImage(path("out/plain/figure.png")).size(), g_size);

    const QByteArray aAll = contents(path("out/all.csv"));
    QVERIFY(aAll.startsWith("study,kind,sequence,name,"));
    QCOMPARE(aAll.count("\r\n"), 1 + 3 + 1 + 4);
    QCOMPARE(aAll.count("\r\nplain,SOLA,"), 3);
    QCOMPARE(aAll.count("\r\n\"a 'b' \"\"c\"\"\n$d\",NOVA,"), 1);
    QVERIFY2(aAll.contains("\r\nbroken,SOLA,PM20260305_L,\"Day 3, 1 mm\",,,,,,,,,Phantom mouse,2026-03-05T09:30:00,3\r\n"), aAll);
    const QByteArray aGrowth = contents(path("out/growth.csv"));
    QCOMPARE(aGrowth.count("\r\n"), 1 + 1 + 1 + 2);
    QVERIFY2(aGrowth.contains(
                 "\",Phantom mouse,NOVA,pmol M-\xc2\xb9 cm-\xc2\xb9,total,1,0,,,,,,,,,no fit: fewer than two days with a value,,0,\r\n"),
             aGrowth);
}

void tst_Batch::everyPictureSaysHowItWasMade()
{
    const QStringList lstPictures = QDir(path("made/broken")).entryList({"*.png"}, QDir::Files);
    QCOMPARE(lstPictures.size(), 8);
    for (const QString& strPicture : lstPictures)
    {
        const QImage picture(path("made/broken/" + strPicture));
        QVERIFY2(picture.text("Software").startsWith("ormcompare "), qPrintable(strPicture));
        const QString strState = picture.text("OrmelleState");
        for (const char* pszPart : {"\"results\":[{\"kind\":\"SOLA\",\"name\":\"Day 0, 1 mm\",\"sequence\":\"PM20260302_L\"}",
                                    "\"unit\":\"photons/sec\"", "--size=300x200", "\"rotation\":"})
        {
            QVERIFY2(strState.contains(QLatin1String(pszPart)), qPrintable(strPicture + ": " + pszPart + " in " + strState));
        }
    }
}

void tst_Batch::whatIsUpToDateIsSkipped()
{
    QVERIFY(putMade());
    const QByteArray aAll = contents(path("out/all.csv"));
    const QDateTime made = QFileInfo(path("out/plain/figure.png")).lastModified();
    const SProgramRun run = batch();
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strOut.contains("3 studies: 0 made, 2 up to date, 1 failed"), qPrintable(run.m_strOut));
    QCOMPARE(QFileInfo(path("out/plain/figure.png")).lastModified(), made);
    QCOMPARE(contents(path("out/all.csv")), aAll);
    // A call of one study is the same as its part of a batch.
    QVERIFY(without({"broken"}));
    QVERIFY(QDir(path("out/plain")).removeRecursively());
    QCOMPARE(runProgram("ormcompare", QStringList{path("root/plain"), "--out", path("out/plain")} + batchArguments().mid(4)).m_nExit, 0);
    QVERIFY(batch({"--quiet"}).m_strOut.isEmpty());
    QVERIFY(batch().m_strOut.contains("2 studies: 0 made, 2 up to date, 0 failed"));
    QVERIFY(QFile::remove(path("out/plain/plot-SOLA-chi2.png")));
    QVERIFY(batch().m_strOut.contains("2 studies: 1 made, 1 up to date, 0 failed"));
    QVERIFY(QFile::exists(path("out/plain/plot-SOLA-chi2.png")));
}

void tst_Batch::changedInputsAndOptionsAreSeen()
{
    QVERIFY(putMade() && without({"broken"}));
    QVERIFY(append(path("root/plain/PM20260302_L/PM20260302_L_001/ClickInfo.txt"), "# seen\n"));
    QVERIFY(batch().m_strOut.contains(" 1 made, 1 up to date"));
    const QByteArray aFigure = contents(path("out/plain/figure.png"));
    QVERIFY(batch({"--rotate", "90"}).m_strOut.contains(" 2 made, 0 up to date"));
    QVERIFY(contents(path("out/plain/figure.png")) != aFigure);
    QVERIFY(batch({"--rotate", "90"}).m_strOut.contains(" 0 made, 2 up to date"));
    QVERIFY(batch().m_strOut.contains(" 2 made, 0 up to date"));
    QCOMPARE(contents(path("out/plain/figure.png")), aFigure);
    const SProgramRun run = batch({"--load", "NOVA *"});
    QVERIFY2(run.m_strError.contains("plain: No saved result matches \"NOVA *\"."), qPrintable(run.m_strError));
    QVERIFY2(!QFile::exists(path("out/plain/plot-SOLA-chi2.png")), "of other options");
    QVERIFY(!contents(path("out/all.csv")).contains("SOLA"));
}

void tst_Batch::crashCostsOneStudy()
{
    QVERIFY(putMade());
    for (const char* pszStudy : {"plain", "broken"})
    {
        QVERIFY(append(path("root/" + QString(pszStudy) + "/PM20260302_L/SequenceInfo.txt"), "# once more\n"));
    }
    QProcess process;
    process.start(ORM_BINARY_DIR "/bin/ormcompare", batchArguments());
    QVERIFY(process.waitForStarted());
    QTRY_COMPARE_WITH_TIMEOUT(childrenOf(process.processId()).size(), 1, 60'000);
    QCOMPARE(::kill(static_cast<pid_t>(childrenOf(process.processId()).constFirst()), SIGKILL), 0); // "broken" comes first
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), QByteArray("ormcompare: broken: the program ended early, with signal 9.\n"));
    QVERIFY(process.readAllStandardOutput().contains("1 made, 1 up to date, 1 failed"));
    QCOMPARE(everythingIn(path("out/broken")), QStringList());
    QVERIFY(!contents(path("out/all.csv")).contains("broken"));
    QVERIFY(contents(path("out/all.csv")).contains("plain"));
}

void tst_Batch::stopLeavesNothingHalf_data()
{
    QTest::addColumn<int>("nSignal");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("terminate") << SIGTERM;
    QTest::newRow("hang-up") << SIGHUP;
}

void tst_Batch::stopLeavesNothingHalf()
{
    QFETCH(int, nSignal);
    QProcess process;
    process.start(ORM_BINARY_DIR "/bin/ormcompare", batchArguments({"--jobs", "2"}));
    QVERIFY(process.waitForStarted());
    QTRY_COMPARE_WITH_TIMEOUT(childrenOf(process.processId()).size(), 2, 60'000);
    const QList<qint64> lstChildren = childrenOf(process.processId());
    QCOMPARE(::kill(static_cast<pid_t>(process.processId()), nSignal), 0);
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    const QByteArray aErrors = process.readAllStandardError();
    QVERIFY2(aErrors.contains("ormcompare: Stopped: ") && aErrors.contains(" of 3 studies are not done.\n"), aErrors);
    for (const qint64 nChild : lstChildren)
    {
        QVERIFY(!runs(nChild));
    }
    QVERIFY(!QFile::exists(path("out/all.csv")));
    for (const QString& strStudy : everythingIn(path("out")))
    {
        const QStringList lstFiles = everythingIn(path("out/" + strStudy));
        QVERIFY2(lstFiles.isEmpty() || lstFiles.contains(".made.json"), qPrintable(lstFiles.join(' ')));
        QVERIFY(!lstFiles.contains(".new") && !lstFiles.contains(".lock"));
    }
    // What was begun is in nobody's way.
    QVERIFY(without({"broken", "plain"}));
    QVERIFY(batch().m_strOut.contains(" 0 failed; 1 other folders"));
}

void tst_Batch::killedBatchTakesItsStudiesAlong()
{
    QProcess process;
    process.start(ORM_BINARY_DIR "/bin/ormcompare", batchArguments());
    QVERIFY(process.waitForStarted());
    QTRY_COMPARE_WITH_TIMEOUT(childrenOf(process.processId()).size(), 1, 60'000);
    const qint64 nChild = childrenOf(process.processId()).constFirst();
    process.kill();
    QVERIFY(process.waitForFinished(60'000));
    QTRY_VERIFY_WITH_TIMEOUT(!runs(nChild), 60'000);
    // What it left behind is in nobody's way.
    QVERIFY(without({"broken", "plain"}));
    QVERIFY(batch().m_strOut.contains("1 studies: 1 made, 0 up to date, 0 failed"));
}

void tst_Batch::oneAtATimeInAFolder()
{
    QVERIFY(without({"broken"}));
    QVERIFY(QDir().mkpath(path("out/plain")));
    QLockFile lock(path("out/.ormcompare.lock"));
    QVERIFY(lock.tryLock());
    SProgramRun run = batch();
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(run.m_strError, QString("ormcompare: Another run is writing to %1; wait for its end.\n").arg(path("out")));
    lock.unlock();
    QLockFile studyLock(path("out/plain/.lock"));
    QVERIFY(studyLock.tryLock());
    run = batch();
    QVERIFY2(
        run.m_strError.contains(QString("ormcompare: plain: Another run is writing to %1; wait for its end.\n").arg(path("out/plain"))),
        qPrintable(run.m_strError));
    QVERIFY2(run.m_strOut.contains("1 made, 0 up to date, 1 failed"), qPrintable(run.m_strOut));
}

void tst_Batch::wrongFoldersAreReasons_data()
{
    QTest::addColumn<QString>("strRoot");
    QTest::addColumn<QString>("strOut");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("no root") << "nowhere"
                             << "out"
                             << "nowhere is no folder.";
    QTest::newRow("root is a file") << "root/file"
                                    << "out"
                                    << "root/file is no folder.";
    QTest::newRow("root is empty") << "root/notes"
                                   << "out"
                                   << "root/notes holds sequences.";
    QTest::newRow("out cannot be made") << "root"
                                        << "root/file/out"
                                        << "root/file/out cannot be made.";
    QTest::newRow("out is no place to write") << "root"
                                              << "/proc/self/task"
                                              << "The folder /proc/self/task cannot be written to.";
}

void tst_Batch::wrongFoldersAreReasons()
{
    QFETCH(QString, strRoot);
    QFETCH(QString, strOut);
    QFETCH(QString, strReason);
    const SProgramRun run =
        runProgram("ormcompare", {"--study-per-folder", path(strRoot), "--out", strOut.startsWith('/') ? strOut : path(strOut)});
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(run.m_strError.count('\n'), 1);
    QVERIFY2(run.m_strError.contains(strReason), qPrintable(run.m_strError));
}

void tst_Batch::fullDiskIsAReason()
{
    QVERIFY(without({"broken", g_pszStrange}));
    // A limit on the size of files, in KiB, meets what a full disk meets.
    const QString strLimited =
        QString("trap '' XFSZ; ulimit -f %1; exec \"$0\" \"$@\"").arg(QFile(path("made/plain/figure.png")).size() / 1024);
    QProcess process;
    process.start("bash", QStringList{"-c", strLimited, ORM_BINARY_DIR "/bin/ormcompare"} + batchArguments());
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitCode(), 1);
    const QByteArray aErrors = process.readAllStandardError();
    QVERIFY2(aErrors.contains("ormcompare: plain: The picture was not saved as \"figure.png\": "), aErrors);
    QVERIFY(!everythingIn(path("out/plain")).contains("figure.png"));
    QVERIFY(everythingIn(path("out/plain")).contains("table.csv"));
    QVERIFY(contents(path("out/all.csv")).contains("\r\nplain,"));
    QVERIFY(batch().m_strOut.contains("1 studies: 1 made, 0 up to date, 0 failed"));
    QVERIFY(everythingIn(path("out/plain")).contains("figure.png"));
}

void tst_Batch::displayIsMade()
{
    QVERIFY(without({"broken"}));
    QProcess process;
    process.setProcessEnvironment(withoutDisplay());
    process.start(ORM_BINARY_DIR "/bin/ormcompare", batchArguments({"--jobs", "2"}));
    QVERIFY(process.waitForFinished(120'000));
    QVERIFY2(process.readAllStandardOutput().contains("2 made, 0 up to date, 0 failed"), process.readAllStandardError());
}

void tst_Batch::displayEndsWithTheProgram()
{
    for (const bool bKill : {false, true})
    {
        QProcess process;
        process.setProcessEnvironment(withoutDisplay());
        process.start(ORM_BINARY_DIR "/bin/ormcompare", {path("root/plain"), "--size", "300x200", "--frames", bKill ? "100000" : "1"});
        QVERIFY(process.waitForStarted());
        QTRY_COMPARE_WITH_TIMEOUT(childrenOf(process.processId()).size(), 1, 60'000);
        const qint64 nServer = childrenOf(process.processId()).constFirst();
        // The fork is this program for a moment.
        QTRY_VERIFY_WITH_TIMEOUT(!runs(nServer) || contents(QString("/proc/%1/cmdline").arg(nServer)).startsWith("Xvfb"), 60'000);
        if (bKill)
        {
            process.kill();
        }
        QVERIFY(process.waitForFinished(120'000));
        QTRY_VERIFY_WITH_TIMEOUT(!runs(nServer), 60'000);
        QCOMPARE(bKill ? 0 : process.exitCode(), 0);
    }
}

void tst_Batch::missingServerIsSaid()
{
    QProcessEnvironment environment = withoutDisplay();
    environment.insert("PATH", m_objFolder.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(ORM_BINARY_DIR "/bin/ormcompare", {path("root/plain"), "--view", path("never.png")});
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(),
             QByteArray("ormcompare: There is no display, and Xvfb, which makes one, is missing: install the package xvfb.\n"));
}

void tst_Batch::studyWithoutResultsFails()
{
    QCOMPARE(runProgram("ormphantom", {path("bare/one"), "--timepoints", "1", "--vertices", "60", "--kind", "SOLA"}).m_nExit, 0);
    QVERIFY(QDir(path("bare/one/PM20260302_L/XML")).removeRecursively());
    QVERIFY(QDir().mkpath(path("bare/two/seq")));
    QVERIFY(append(path("bare/two/seq/SequenceInfo.txt"), "[nothing]\n"));
    const SProgramRun run = runProgram("ormcompare", {"--study-per-folder", path("bare"), "--out", path("out")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("ormcompare: one: There is no saved result to show.\n"), qPrintable(run.m_strError));
    QVERIFY2(run.m_strError.contains("ormcompare: two: "), qPrintable(run.m_strError));
    QVERIFY(!QFile::exists(path("out/one/figure.png")));
    QVERIFY2(contents(path("out/all.csv")).contains("\r\none,SOLA,PM20260302_L,,,,,,,,,,Phantom mouse,2026-03-02T09:30:00,0\r\n"),
             contents(path("out/all.csv")));
}

QTEST_GUILESS_MAIN(tst_Batch)
#include "tst_batch.moc"
