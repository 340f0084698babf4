#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

/// ormcompare where nothing more can be written, and where a listed result has gone before it is loaded.
class TestFaultsCompare : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void noRoomLeavesNothingHalf_data();
    void noRoomLeavesNothingHalf();
    void otherFilesAreTried();
    void aResultThatHasGoneLeavesTheOthers();
    void anInputThatHasGoneIsTold_data();
    void anInputThatHasGoneIsTold();
    void anIndexThatHasGoneLeavesAGap();

private:
    struct SRun
    {
        int nExit = -1;
        QStringList lstErrors; ///< lines
    };
    QString path(const QString& strName) const { return m_pFolder->filePath(strName); }
    static SRun run(const QString& strPreamble, const QString& strProgram, const QStringList& lstArguments);
    /// Writing fails as on a full disk: no file may grow at all. Nor could a build that counts what it runs write its counts.
    SRun compareWithoutRoom(const QStringList& lstArguments) const
    {
        return run(QStringLiteral("trap '' XFSZ; export LLVM_PROFILE_FILE=/dev/null; ulimit -f 0; "), QStringLiteral("ormcompare"),
                   QStringList{path(QStringLiteral("study"))} + lstArguments);
    }
    QStringList written() const
    {
        return QDir(path(QStringLiteral("out"))).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_pFolder;
};

TestFaultsCompare::SRun TestFaultsCompare::run(const QString& strPreamble, const QString& strProgram, const QStringList& lstArguments)
{
    QProcess objProcess;
    objProcess.start(QStringLiteral("bash"), QStringList{QStringLiteral("-c"), strPreamble + QStringLiteral("exec \"$0\" \"$@\""),
                                                         QStringLiteral(ORM_BINARY_DIR "/bin/") + strProgram} +
                                                 lstArguments);
    SRun sRun;
    constexpr int nPatience = 200'000; // ms
    if (objProcess.waitForFinished(nPatience) && objProcess.exitStatus() == QProcess::NormalExit)
        sRun.nExit = objProcess.exitCode();
    sRun.lstErrors = QString::fromUtf8(objProcess.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return sRun;
}

void TestFaultsCompare::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pFolder->isValid());
    QVERIFY(QDir(m_pFolder->path()).mkdir(QStringLiteral("out")));
    const SRun sRun = run(QString(), QStringLiteral("ormphantom"),
                          {path(QStringLiteral("study")), QStringLiteral("--timepoints"), QStringLiteral("2"), QStringLiteral("--vertices"),
                           QStringLiteral("300")});
    QCOMPARE(sRun.nExit, 0);
}

void TestFaultsCompare::noRoomLeavesNothingHalf_data()
{
    QTest::addColumn<QString>("strOption");
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<bool>("bOld");
    const QList<QPair<QString, QString>> lstOutputs = {{"--view", "view.png"},   {"--view", "view.eps"},     {"--view", "view.tif"},
                                                       {"--window", "all.png"},  {"--plot", "flux.png"},     {"--table", "table.csv"},
                                                       {"--report", "all.json"}, {"--growth", "growth.csv"}, {"--growth", "growth.png"}};
    for (const auto& [strOption, strFile] : lstOutputs)
    {
        for (const bool bOld : {false, true})
            QTest::addRow("%s %s, %s", qPrintable(strOption), qPrintable(strFile), bOld ? "old file" : "no old file")
                << strOption << strFile << bOld;
    }
}

void TestFaultsCompare::noRoomLeavesNothingHalf()
{
    QFETCH(QString, strOption);
    QFETCH(QString, strFile);
    QFETCH(bool, bOld);
    const QByteArray byOld("what was there before");
    const QString strPath = path(QStringLiteral("out/") + strFile);
    if (bOld)
    {
        QFile objFile(strPath);
        QVERIFY(objFile.open(QIODevice::WriteOnly) && objFile.write(byOld) == byOld.size());
    }
    const QString strBefore = strOption == QLatin1String("--plot") ? QStringLiteral("SOLA:quantification=") : QString();
    const SRun sRun = compareWithoutRoom({QStringLiteral("--quiet"), strOption, strBefore + strPath});
    QCOMPARE(sRun.nExit, 1);
    QVERIFY2(sRun.lstErrors.size() == 1, qPrintable(sRun.lstErrors.join(QLatin1Char('\n'))));
    QVERIFY2(sRun.lstErrors.first().contains(strFile), qPrintable(sRun.lstErrors.first()));
    QVERIFY2(sRun.lstErrors.first().contains(QString::fromLocal8Bit(strerror(EFBIG))), qPrintable(sRun.lstErrors.first()));
    QCOMPARE(written(), bOld ? QStringList{strFile} : QStringList());
    if (bOld)
    {
        QFile objFile(strPath);
        QVERIFY(objFile.open(QIODevice::ReadOnly));
        QCOMPARE(objFile.readAll(), byOld);
    }
}

/// The first file that cannot be written does not keep the others from being tried.
void TestFaultsCompare::otherFilesAreTried()
{
    const SRun sRun = compareWithoutRoom({QStringLiteral("--quiet"), QStringLiteral("--view"), path(QStringLiteral("out/view.png")),
                                          QStringLiteral("--table"), path(QStringLiteral("out/table.csv")), QStringLiteral("--report"),
                                          path(QStringLiteral("out/all.json"))});
    QCOMPARE(sRun.nExit, 1);
    QCOMPARE(sRun.lstErrors.size(), 3);
    QCOMPARE(written(), QStringList());
}

void TestFaultsCompare::aResultThatHasGoneLeavesTheOthers()
{
    const QStringList lstSequences = QDir(path(QStringLiteral("study"))).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    const auto fnFile = [this](const QString& strSequence)
    { return path(QStringLiteral("study/")) + strSequence + QStringLiteral("/XML/SOLA_1.xml"); };
    const auto itGone = std::find_if(lstSequences.begin(), lstSequences.end(),
                                     [&fnFile](const QString& strSequence) { return QFile::exists(fnFile(strSequence)); });
    QVERIFY(itGone != lstSequences.end());
    QVERIFY(QFile::remove(fnFile(*itGone)));
    const QString strTable = path(QStringLiteral("out/table.csv"));
    const SRun sRun = run(QString(), QStringLiteral("ormcompare"),
                          {path(QStringLiteral("study")), QStringLiteral("--quiet"), QStringLiteral("--table"), strTable});
    QCOMPARE(sRun.nExit, 1);
    QVERIFY2(sRun.lstErrors.size() == 1, qPrintable(sRun.lstErrors.join(QLatin1Char('\n'))));
    QVERIFY2(sRun.lstErrors.first().contains(*itGone + QLatin1Char('/')), qPrintable(sRun.lstErrors.first()));
    QVERIFY2(sRun.lstErrors.first().contains(QStringLiteral("Unable to read analysis data")), qPrintable(sRun.lstErrors.first()));
    QFile objTable(strTable);
    QVERIFY(objTable.open(QIODevice::ReadOnly));
    QVERIFY(objTable.readAll().count('\n') > 2); // a heading and more than one of the other results
}

void TestFaultsCompare::anInputThatHasGoneIsTold_data()
{
    QTest::addColumn<QString>("strGone");
    QTest::addColumn<QString>("strProgram");
    QTest::addColumn<QStringList>("lstArguments"); // %1: the folder of the test
    QTest::addColumn<QString>("strReason");
    const QString strSequence = "study/PM20260302_L";
    const QStringList lstView = {"--quiet", "--view", "%1/out/view.png"};
    QTest::newRow("ormcompare, study") << "study"
                                       << "ormcompare" << QStringList{"%1/study"} + lstView << "%1/study is no folder.";
    QTest::newRow("ormcompare, one of two folders")
        << strSequence << "ormcompare" << QStringList{"%1/study/PM20260305_L", "%1/study/PM20260302_L"} + lstView
        << "%1/study/PM20260302_L is no folder.";
    QTest::newRow("ormcompare, sequence information")
        << strSequence + "/SequenceInfo.txt"
        << "ormcompare" << QStringList{"%1/study/PM20260302_L"} + lstView << "There is no sequence under %1/study/PM20260302_L.";
    QTest::newRow("ormcompare, picture for --like") << "out/look.png"
                                                    << "ormcompare" << QStringList{"%1/study", "--like", "%1/out/look.png"} + lstView
                                                    << "%1/out/look.png cannot be repeated: there is no such file.";
    const QStringList lstExport = {"%1/study/PM20260302_L", "--load", "SOLA *mm", "--surface", "%1/out/surface.vtp"};
    QTest::newRow("ormexport, study") << "study"
                                      << "ormexport" << lstExport << "There is no saved result under %1/study/PM20260302_L.";
    QTest::newRow("ormexport, index") << strSequence + "/XML/SOLA.txt"
                                      << "ormexport" << lstExport << "There is no saved result under %1/study/PM20260302_L.";
    QTest::newRow("ormexport, result") << strSequence + "/XML/SOLA_1.xml"
                                       << "ormexport" << lstExport << "%1/study/PM20260302_L/XML/SOLA_1.xml: No such file or directory.";
    const QStringList lstImport = {"--surface", "%1/surface.ply", "--volume",   "%1/volume.nii", "--kind",    "SOLA", "--subject",
                                   "M",         "--date",         "2026-03-02", "--out",         "%1/out/new"};
    for (const char* pFile : {"surface.ply", "volume.nii"})
        QTest::addRow("ormimport, %s", pFile) << QString(pFile) << "ormimport" << lstImport
                                              << QStringLiteral("%1/") + pFile + ": No such file or directory.";
}

/// What a caller saw a moment ago is not there any more. ormcompare shows what is left, and says by its end that it is not all.
void TestFaultsCompare::anInputThatHasGoneIsTold()
{
    QFETCH(QString, strGone);
    QFETCH(QString, strProgram);
    QFETCH(QStringList, lstArguments);
    QFETCH(QString, strReason);
    QFile objSurface(path(QStringLiteral("surface.ply")));
    QVERIFY(objSurface.open(QIODevice::WriteOnly));
    objSurface.write("ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\nelement face 1\n"
                     "property list uchar int vertex_indices\nend_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n");
    objSurface.close();
    const QFileInfo objGone(path(strGone));
    QVERIFY(objGone.isDir() ? QDir(objGone.filePath()).removeRecursively() : !objGone.exists() || QFile::remove(objGone.filePath()));
    lstArguments.replaceInStrings(QStringLiteral("%1"), m_pFolder->path());
    const SRun sRun = run(QString(), strProgram, lstArguments);
    QCOMPARE(sRun.nExit, 1);
    const QString strErrors = sRun.lstErrors.join(QLatin1Char('\n'));
    QVERIFY2(strErrors.contains(strReason.replace(QStringLiteral("%1"), m_pFolder->path())), qPrintable(strErrors));
    const bool bRest = strProgram == QLatin1String("ormcompare") && !lstArguments.contains(QStringLiteral("--like"));
    QCOMPARE(written(), bRest ? QStringList{QStringLiteral("view.png")} : QStringList());
}

/// A sequence whose list of results has gone is one without results: a time point without numbers.
void TestFaultsCompare::anIndexThatHasGoneLeavesAGap()
{
    QVERIFY(QFile::remove(path(QStringLiteral("study/PM20260302_L/XML/SOLA.txt"))));
    const QString strTable = path(QStringLiteral("out/table.csv"));
    const SRun sRun = run(QString(), QStringLiteral("ormcompare"),
                          {path(QStringLiteral("study")), QStringLiteral("--quiet"), QStringLiteral("--table"), strTable});
    QCOMPARE(sRun.nExit, 0);
    QFile objTable(strTable);
    QVERIFY(objTable.open(QIODevice::ReadOnly));
    const QByteArray byTable = objTable.readAll();
    QVERIFY2(byTable.contains("\r\nSOLA,PM20260302_L,,,,,,,,,,Phantom mouse,2026-03-02T09:30:00,0\r\n"), byTable);
    QVERIFY2(byTable.contains("\r\nSOLA,PM20260305_L,\"Day 3, "), byTable);
}

QTEST_GUILESS_MAIN(TestFaultsCompare)

#include "tst_faults_compare.moc"
