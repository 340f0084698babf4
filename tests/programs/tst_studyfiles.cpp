#include "BatchTables.h"
#include "StudyFiles.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <thread>

namespace
{
bool write(const QString& strFile, const QByteArray& aBytes)
{
    QFile file(strFile);
    return file.open(QIODevice::WriteOnly) && file.write(aBytes) == aBytes.size();
}

QByteArray contents(const QString& strFile)
{
    QFile file(strFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}
} // namespace

Q_DECLARE_METATYPE(SStudyTable)

/// The folders of a batch, and the tables over all of them.
class tst_StudyFiles : public QObject
{
    Q_OBJECT

private slots:
    void tablesAreJoined_data();
    void tablesAreJoined();
    void strangeTablesAreNamed();
    void everyChangeIsSeen();
    void folderChangesAsAWhole();
    void unfinishedWorkLeavesTheOldFiles();
    void harmIsSeen_data();
    void harmIsSeen();
    void folderIsTakenOnce();
    void stoppedAsItBeginsItLeavesNothing();
    void folderThatCannotBeMadeIsSaid();
};

void tst_StudyFiles::tablesAreJoined_data()
{
    QTest::addColumn<QVector<SStudyTable>>("lstTables");
    QTest::addColumn<QByteArray>("aAll");
    QTest::newRow("none") << QVector<SStudyTable>{} << QByteArray();
    QTest::newRow("two") << QVector<SStudyTable>{{"m1", "a,b\r\n1,2\r\n3,4\r\n"}, {"m2", "a,b\r\n5,6\r\n"}}
                         << QByteArray("study,a,b\r\nm1,1,2\r\nm1,3,4\r\nm2,5,6\r\n");
    QTest::newRow("one without lines") << QVector<SStudyTable>{{"m1", "a,b\r\n"}} << QByteArray("study,a,b\r\n");
    QTest::newRow("name to quote") << QVector<SStudyTable>{{"m \"1\",\n2", "a\r\n1\r\n"}}
                                   << QByteArray("study,a\r\n\"m \"\"1\"\",\n2\",1\r\n");
    QTest::newRow("line end in a field") << QVector<SStudyTable>{{"m1", "a\r\n\"x\r\ny \"\"z\"\"\"\r\n7\r\n"}}
                                         << QByteArray("study,a\r\nm1,\"x\r\ny \"\"z\"\"\"\r\nm1,7\r\n");
}

void tst_StudyFiles::tablesAreJoined()
{
    QFETCH(QVector<SStudyTable>, lstTables);
    QStringList lstStrange;
    const QByteArray aJoined = BatchTables::joined(lstTables, lstStrange);
    QTEST(aJoined, "aAll");
    QCOMPARE(lstStrange, QStringList());
}

void tst_StudyFiles::strangeTablesAreNamed()
{
    QStringList lstStrange;
    const QByteArray aJoined =
        BatchTables::joined({{"m1", "a\r\n1\r\n"}, {"m2", "b\r\n1\r\n"}, {"m3", ""}, {"m4", "a\r\n2\r\n"}}, lstStrange);
    QCOMPARE(aJoined, QByteArray("study,a\r\nm1,1\r\nm4,2\r\n"));
    QCOMPARE(lstStrange, (QStringList{"m2", "m3"}));
}

void tst_StudyFiles::everyChangeIsSeen()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath("a/b"));
    QVERIFY(write(folder.filePath("a/b/one.xml"), "1234") && write(folder.filePath("a/.hidden"), "x"));
    const auto print = [&folder](const QStringList& lstArguments = {"--log"})
    { return StudyFiles::fingerprint({folder.filePath("a")}, lstArguments); };
    QStringList lstPrints{print(), print({"--log", "--rotate=3"}), print({}), print({"--log\n"})};
    QCOMPARE(print(), lstPrints.constFirst());
    QFile file(folder.filePath("a/b/one.xml"));
    QVERIFY(write(file.fileName(), "12345"));
    lstPrints.append(print());
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1'000'000'000'123), QFileDevice::FileModificationTime));
    lstPrints.append(print());
    QVERIFY(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1'000'000'000'124), QFileDevice::FileModificationTime));
    lstPrints.append(print());
    file.close();
    QVERIFY(write(folder.filePath("a/two.xml"), ""));
    lstPrints.append(print());
    QVERIFY(QFile::rename(folder.filePath("a/two.xml"), folder.filePath("a/b/two.xml")));
    lstPrints.append(print());
    QVERIFY(QFile::link("nowhere", folder.filePath("a/link")));
    lstPrints.append(print());
    QVERIFY(write(folder.filePath("a/nowhere"), "z"));
    lstPrints.append(print());
    QCOMPARE(QSet<QString>(lstPrints.cbegin(), lstPrints.cend()).size(), lstPrints.size());
    // Where the study lies is no part of what is shown.
    QVERIFY(QFile::rename(folder.filePath("a"), folder.filePath("c")));
    QCOMPARE(StudyFiles::fingerprint({folder.filePath("c/")}, {"--log"}), lstPrints.constLast());
}

void tst_StudyFiles::folderChangesAsAWhole()
{
    const QTemporaryDir objTemporary;
    const QString strFolder = objTemporary.filePath("new/folder");
    {
        CStudyFolder folder(strFolder);
        QVERIFY(!folder.isUpToDate("one"));
        QCOMPARE(folder.begin(), QString());
        QVERIFY(write(folder.newFile(StudyFiles::table()), "1") && write(folder.newFile(StudyFiles::figure()), "f1") &&
                write(folder.newFile(StudyFiles::plot(1, 2)), "p1"));
        QVERIFY(!QFile::exists(strFolder + "/table.csv"));
        QCOMPARE(folder.commit("one", true), QString());
        QVERIFY(folder.isUpToDate("one") && folder.isOf("one") && !folder.isUpToDate("two"));
    }
    QVERIFY(write(strFolder + "/notes.txt", "mine"));
    CStudyFolder folder(strFolder);
    QCOMPARE(folder.begin(), QString());
    QVERIFY(write(folder.newFile(StudyFiles::table()), "22"));
    QCOMPARE(folder.commit("two", false), QString());
    QCOMPARE(contents(strFolder + "/table.csv"), QByteArray("22"));
    QVERIFY2(!QFile::exists(strFolder + "/figure.png") && !QFile::exists(strFolder + "/plot-NOVA-voxelsize.png"), "of older inputs");
    QCOMPARE(contents(strFolder + "/notes.txt"), QByteArray("mine"));
    QVERIFY(!folder.isUpToDate("two") && folder.isOf("two"));
}

void tst_StudyFiles::unfinishedWorkLeavesTheOldFiles()
{
    const QTemporaryDir objTemporary;
    const QString strFolder = objTemporary.path();
    CStudyFolder folder(strFolder);
    QCOMPARE(folder.begin(), QString());
    QVERIFY(write(folder.newFile(StudyFiles::table()), "1"));
    QCOMPARE(folder.commit("one", true), QString());
    {
        CStudyFolder second(strFolder);
        folder.abandon();
        QCOMPARE(second.begin(), QString());
        QVERIFY(write(second.newFile(StudyFiles::table()), "2"));
        second.abandon();
    }
    QCOMPARE(contents(strFolder + "/table.csv"), QByteArray("1"));
    QVERIFY(folder.isUpToDate("one"));
    QCOMPARE(QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), (QStringList{".made.json", "table.csv"}));
    folder.forget();
    QCOMPARE(QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

void tst_StudyFiles::harmIsSeen_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("aBytes");
    QTest::newRow("file cut off") << "figure.png" << QByteArray("f");
    QTest::newRow("table emptied") << "table.csv" << QByteArray();
    QTest::newRow("record emptied") << ".made.json" << QByteArray();
    QTest::newRow("record of nothing") << ".made.json" << QByteArray("{}");
    QTest::newRow("record without files") << ".made.json" << QByteArray("{\"fingerprint\":\"one\",\"complete\":true}");
    QTest::newRow("record of strange types") << ".made.json"
                                             << QByteArray("{\"fingerprint\":[1],\"complete\":\"yes\",\"files\":{\"table.csv\":\"3\"}}");
    QTest::newRow("no record at all") << ".made.json" << QByteArray(300'000, '[');
}

void tst_StudyFiles::harmIsSeen()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, aBytes);
    const QTemporaryDir objTemporary;
    CStudyFolder folder(objTemporary.path());
    QCOMPARE(folder.begin(), QString());
    QVERIFY(write(folder.newFile(StudyFiles::table()), "123") && write(folder.newFile(StudyFiles::figure()), "figure"));
    QCOMPARE(folder.commit("one", true), QString());
    QVERIFY(folder.isUpToDate("one"));
    QVERIFY(write(objTemporary.filePath(strFile), aBytes));
    QVERIFY(!folder.isUpToDate("one"));
    QVERIFY(!folder.isOf("one"));
}

void tst_StudyFiles::folderIsTakenOnce()
{
    const QTemporaryDir objTemporary;
    CStudyFolder first(objTemporary.path());
    QCOMPARE(first.begin(), QString());
    QVERIFY(write(first.newFile(StudyFiles::table()), "1"));
    CStudyFolder second(objTemporary.path());
    QCOMPARE(second.begin(), QString("Another run is writing to %1; wait for its end.").arg(objTemporary.path()));
    second.forget();
    QCOMPARE(first.commit("one", true), QString());
    QVERIFY(first.isUpToDate("one"));
}

void tst_StudyFiles::stoppedAsItBeginsItLeavesNothing()
{
    const QTemporaryDir root;
    const QString strFolder = root.filePath("out");
    int nBegun = 0;
    for (int nRound = 0; nRound < 400; ++nRound)
    {
        CStudyFolder folder(strFolder);
        std::atomic<bool> bGo{false};
        QString strWrong;
        std::thread beginner(
            [&]
            {
                while (!bGo)
                {
                }
                strWrong = folder.begin();
            });
        bGo = true;
        // From before the beginning to behind its end.
        QElapsedTimer timer;
        timer.start();
        while (timer.nsecsElapsed() < 1000 * nRound)
        {
        }
        folder.abandon();
        beginner.join();
        QVERIFY2(strWrong.isEmpty() || strWrong == QLatin1String("Stopped."), qPrintable(strWrong));
        nBegun += strWrong.isEmpty() ? 1 : 0;
        const QStringList lstLeft = QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        QVERIFY2(lstLeft.isEmpty(), qPrintable(lstLeft.join(' ')));
    }
    qInfo("%d of 400 had begun", nBegun);
}

void tst_StudyFiles::folderThatCannotBeMadeIsSaid()
{
    const QTemporaryDir objTemporary;
    QVERIFY(write(objTemporary.filePath("file"), "x"));
    CStudyFolder folder(objTemporary.filePath("file/folder"));
    QCOMPARE(folder.begin(), QString("The folder %1 cannot be made.").arg(objTemporary.filePath("file/folder")));
}

QTEST_GUILESS_MAIN(tst_StudyFiles)
#include "tst_studyfiles.moc"
