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

private:
    struct SRun
    {
        int nExit = -1;
        QStringList lstErrors; ///< lines
    };
    QString path(const QString& strName) const { return m_pFolder->filePath(strName); }
    static SRun run(const QString& strPreamble, const QString& strProgram, const QStringList& lstArguments);
    /// Writing fails as on a full disk: no file may grow at all.
    SRun compareWithoutRoom(const QStringList& lstArguments) const
    {
        return run(QStringLiteral("trap '' XFSZ; ulimit -f 0; "), QStringLiteral("ormcompare"),
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

QTEST_GUILESS_MAIN(TestFaultsCompare)

#include "tst_faults_compare.moc"
