#include "CStudyWriter.h"
#include "OrmSequenceScanner.h"
#include "OrmTestMain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
const QByteArray g_arrClick = "[photographic image]\n";

QByteArray sequenceText(const QString& strID)
{
    return "[Sequence Information]\nSequence=" + strID.toUtf8() + "\n[Click Numbers]\nCount=1\n1=click\n";
}

/// A sequence with one click in the folder.
void makeSequence(const QString& strFolder, const QString& strID, const QString& strFile = QStringLiteral("SequenceInfo.txt"))
{
    CStudyWriter::writeFile(strFolder + QStringLiteral("/click/ClickInfo.txt"), g_arrClick);
    CStudyWriter::writeFile(strFolder + QLatin1Char('/') + strFile, sequenceText(strID));
}

struct SResult
{
    QStringList m_lstIDs;
    SScanOutcome m_sOutcome;
};

SResult scan(const QStringList& lstPaths, const OrmSequenceScanner::FnProgress& fnProgress = OrmSequenceScanner::FnProgress())
{
    SResult sResult;
    sResult.m_sOutcome = OrmSequenceScanner::scan(
        lstPaths, [&sResult](const SSequenceFacts& s) { sResult.m_lstIDs.append(s.m_strSequenceID); }, fnProgress);
    return sResult;
}
} // namespace

class TestScanner : public QObject
{
    Q_OBJECT

private slots:
    void sequencesAreFoundAtAnyDepthInOrder();
    void sequenceFileIsAPathToo();
    void pathsThatLeadNowhereAreTold_data();
    void pathsThatLeadNowhereAreTold();
    void fileNamesMatchSequenceStarTxt_data();
    void fileNamesMatchSequenceStarTxt();
    void strayFileDoesNotHideTheStudy();
    void usualFileNameGoesFirst();
    void linksAreNotFollowedAndLoopsEnd();
    void whatIsNoRegularFileIsTold();
    void clickFoldersAreNotSearched();
    void depthIsBounded();
    void overlappingPathsFindEachSequenceOnce();
    void searchIsCancelledByItsCaller();
    void progressIsToldPerFolder();
    void oneBadSequenceDoesNotStopTheRest();
    void namesThatCannotBeShownAreTold();
};

void TestScanner::sequencesAreFoundAtAnyDepthInOrder()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.filePath(QStringLiteral("z")), QStringLiteral("Z"));
    makeSequence(objRoot.filePath(QStringLiteral("a/b/c/d")), QStringLiteral("D"));
    makeSequence(objRoot.filePath(QStringLiteral("a/x")), QStringLiteral("X"));
    makeSequence(objRoot.filePath(QStringLiteral("a/x/inner")), QStringLiteral("I"));
    const SResult sResult = scan({objRoot.path()});
    QCOMPARE(sResult.m_lstIDs, (QStringList{"D", "X", "I", "Z"}));
    QCOMPARE(sResult.m_sOutcome.m_nSequences, 4);
    QVERIFY(sResult.m_sOutcome.m_lstProblems.isEmpty());
    QVERIFY(!sResult.m_sOutcome.m_bCancelled);
}

void TestScanner::sequenceFileIsAPathToo()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.path(), QStringLiteral("S"), QStringLiteral("Sequence 2.txt"));
    QCOMPARE(scan({objRoot.filePath(QStringLiteral("Sequence 2.txt"))}).m_lstIDs, QStringList{"S"});
    const QString strBefore = QDir::currentPath();
    QVERIFY(QDir::setCurrent(objRoot.path()));
    const QStringList lstRelative = scan({QStringLiteral(".")}).m_lstIDs;
    QVERIFY(QDir::setCurrent(strBefore));
    QCOMPARE(lstRelative, QStringList{"S"});
}

void TestScanner::pathsThatLeadNowhereAreTold_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("problem");
    QTest::newRow("nothing there") << QStringLiteral("%/none") << QStringLiteral("%/none does not exist.");
    QTest::newRow("empty") << QString() << QStringLiteral("A folder without a name does not exist.");
    QTest::newRow("another file") << QStringLiteral("%/notes.txt")
                                  << QStringLiteral("%/notes.txt is neither a folder nor a sequence file (Sequence*.txt).");
    QTest::newRow("a folder without sequences") << QStringLiteral("%/sub") << QStringLiteral("There is no sequence under %/sub.");
    QTest::newRow("a link to nowhere") << QStringLiteral("%/dangling") << QStringLiteral("%/dangling does not exist.");
}

void TestScanner::pathsThatLeadNowhereAreTold()
{
    QFETCH(QString, path);
    QFETCH(QString, problem);
    const QTemporaryDir objRoot;
    CStudyWriter::writeFile(objRoot.filePath(QStringLiteral("notes.txt")), "x");
    CStudyWriter::writeFile(objRoot.filePath(QStringLiteral("sub/file")), "x");
    QVERIFY(QFile::link(objRoot.filePath(QStringLiteral("missing")), objRoot.filePath(QStringLiteral("dangling"))));
    path.replace(QLatin1Char('%'), objRoot.path());
    problem.replace(QLatin1Char('%'), objRoot.path());
    const SResult sResult = scan({path});
    QCOMPARE(sResult.m_sOutcome.m_lstProblems, QStringList{problem});
    QVERIFY(sResult.m_lstIDs.isEmpty());
}

void TestScanner::fileNamesMatchSequenceStarTxt_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    QTest::newRow("usual") << QStringLiteral("SequenceInfo.txt") << true;
    QTest::newRow("shortest") << QStringLiteral("Sequence.txt") << true;
    QTest::newRow("any middle") << QStringLiteral("Sequence 2026 (b).txt") << true;
    QTest::newRow("lower case") << QStringLiteral("sequenceinfo.txt") << false;
    QTest::newRow("upper case extension") << QStringLiteral("SequenceInfo.TXT") << false;
    QTest::newRow("something before") << QStringLiteral("MySequence.txt") << false;
    QTest::newRow("something behind") << QStringLiteral("SequenceInfo.txt.bak") << false;
    QTest::newRow("no extension") << QStringLiteral("SequenceInfo") << false;
}

void TestScanner::fileNamesMatchSequenceStarTxt()
{
    QFETCH(QString, name);
    QFETCH(bool, matches);
    QCOMPARE(OrmSequenceScanner::isSequenceFileName(name), matches);
    const QTemporaryDir objRoot;
    makeSequence(objRoot.path(), QStringLiteral("S"), name);
    QCOMPARE(scan({objRoot.path()}).m_lstIDs.size(), matches ? 1 : 0);
}

void TestScanner::strayFileDoesNotHideTheStudy()
{
    const QTemporaryDir objRoot;
    CStudyWriter::writeFile(objRoot.filePath(QStringLiteral("Sequences to check.txt")), "call Anna\n");
    makeSequence(objRoot.filePath(QStringLiteral("one")), QStringLiteral("1"));
    const SResult sResult = scan({objRoot.path()});
    QCOMPARE(sResult.m_lstIDs, QStringList{"1"});
    QCOMPARE(sResult.m_sOutcome.m_lstProblems.size(), 1);
    QVERIFY(sResult.m_sOutcome.m_lstProblems.first().contains(QStringLiteral("Sequences to check.txt")));
}

void TestScanner::usualFileNameGoesFirst()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.path(), QStringLiteral("backup"), QStringLiteral("Sequence-backup.txt"));
    makeSequence(objRoot.path(), QStringLiteral("usual"));
    QCOMPARE(scan({objRoot.path()}).m_lstIDs, QStringList{"usual"});
    // Where the usual one is damaged, the next one serves.
    CStudyWriter::writeFile(objRoot.filePath(QStringLiteral("SequenceInfo.txt")), "damaged");
    const SResult sResult = scan({objRoot.path()});
    QCOMPARE(sResult.m_lstIDs, QStringList{"backup"});
    QCOMPARE(sResult.m_sOutcome.m_lstProblems.size(), 1);
}

void TestScanner::linksAreNotFollowedAndLoopsEnd()
{
    const QTemporaryDir objRoot;
    const QTemporaryDir objElsewhere;
    makeSequence(objElsewhere.path(), QStringLiteral("elsewhere"));
    makeSequence(objRoot.filePath(QStringLiteral("in/here")), QStringLiteral("here"));
    QVERIFY(QFile::link(objElsewhere.path(), objRoot.filePath(QStringLiteral("in/link"))));
    QVERIFY(QFile::link(objRoot.path(), objRoot.filePath(QStringLiteral("in/loop"))));
    QVERIFY(QFile::link(QStringLiteral("self"), objRoot.filePath(QStringLiteral("in/self"))));
    QCOMPARE(scan({objRoot.path()}).m_lstIDs, QStringList{"here"});
    // A path that the user gives may be a link.
    QCOMPARE(scan({objRoot.filePath(QStringLiteral("in/link"))}).m_lstIDs, QStringList{"elsewhere"});
}

void TestScanner::whatIsNoRegularFileIsTold()
{
    const QTemporaryDir objRoot;
    const QString strFifo = objRoot.filePath(QStringLiteral("a/SequenceInfo.txt"));
    const QString strFolder = objRoot.filePath(QStringLiteral("b/SequenceInfo.txt"));
    const QString strLink = objRoot.filePath(QStringLiteral("c/SequenceInfo.txt"));
    for (const char* pName : {"a", "b", "c"})
        QVERIFY(QDir(objRoot.path()).mkdir(QLatin1String(pName)));
    QCOMPARE(mkfifo(qPrintable(strFifo), 0600), 0);
    QVERIFY(QDir().mkdir(strFolder));
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), strLink));
    QElapsedTimer objTimer;
    objTimer.start();
    const SResult sResult = scan({objRoot.path()});
    QVERIFY(objTimer.elapsed() < 5000); // nothing waits for the pipe
    QVERIFY(sResult.m_lstIDs.isEmpty());
    const QString strAll = sResult.m_sOutcome.m_lstProblems.join(QLatin1Char('\n'));
    QVERIFY2(strAll.contains(objRoot.filePath(QStringLiteral("a")) + QStringLiteral(" is not a regular file")), qPrintable(strAll));
    QVERIFY2(strAll.contains(objRoot.filePath(QStringLiteral("c")) + QStringLiteral(" is not a regular file")), qPrintable(strAll));
    // Named by the user, it is refused without waiting too.
    QCOMPARE(scan({strFifo}).m_sOutcome.m_lstProblems.size(), 1);
}

void TestScanner::clickFoldersAreNotSearched()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.path(), QStringLiteral("outer"));
    makeSequence(objRoot.filePath(QStringLiteral("click/deep")), QStringLiteral("in a click"));
    makeSequence(objRoot.filePath(QStringLiteral("XML/deep")), QStringLiteral("in the results"));
    makeSequence(objRoot.filePath(QStringLiteral("more")), QStringLiteral("beside"));
    QCOMPARE(scan({objRoot.path()}).m_lstIDs, (QStringList{"outer", "beside"}));
}

void TestScanner::depthIsBounded()
{
    const QTemporaryDir objRoot;
    QString strFolder = objRoot.path();
    for (int nDepth = 1; nDepth <= OrmSequenceScanner::s_nMaxDepth + 1; ++nDepth)
    {
        strFolder += QStringLiteral("/f");
        if (nDepth >= OrmSequenceScanner::s_nMaxDepth)
            makeSequence(strFolder, QStringLiteral("depth %1").arg(nDepth));
    }
    const SResult sResult = scan({objRoot.path()});
    QCOMPARE(sResult.m_lstIDs, QStringList{QStringLiteral("depth %1").arg(OrmSequenceScanner::s_nMaxDepth)});
    QCOMPARE(sResult.m_sOutcome.m_lstProblems.size(), 1);
    QVERIFY(sResult.m_sOutcome.m_lstProblems.first().contains(QStringLiteral("nested too deep")));
}

void TestScanner::overlappingPathsFindEachSequenceOnce()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.filePath(QStringLiteral("a")), QStringLiteral("A"));
    makeSequence(objRoot.filePath(QStringLiteral("b")), QStringLiteral("B"));
    const SResult sResult = scan({objRoot.filePath(QStringLiteral("b")), objRoot.path()});
    QCOMPARE(sResult.m_lstIDs, (QStringList{"B", "A"}));
}

void TestScanner::searchIsCancelledByItsCaller()
{
    const QTemporaryDir objRoot;
    for (int nFolder = 10; nFolder < 40; ++nFolder)
        makeSequence(objRoot.filePath(QString::number(nFolder)), QString::number(nFolder));
    SResult sResult;
    sResult.m_sOutcome = OrmSequenceScanner::scan(
        {objRoot.path()}, [&sResult](const SSequenceFacts& s) { sResult.m_lstIDs.append(s.m_strSequenceID); },
        [&sResult](const SScanProgress&) { return sResult.m_lstIDs.size() < 3; });
    QVERIFY(sResult.m_sOutcome.m_bCancelled);
    QCOMPARE(sResult.m_lstIDs, (QStringList{"10", "11", "12"}));
    QVERIFY(sResult.m_sOutcome.m_lstProblems.isEmpty());
}

void TestScanner::progressIsToldPerFolder()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.filePath(QStringLiteral("a")), QStringLiteral("A"));
    QVERIFY(QDir(objRoot.path()).mkpath(QStringLiteral("b/c")));
    QStringList lstFolders;
    qint64 nLast = -1;
    const SResult sResult = scan({objRoot.path()},
                                 [&](const SScanProgress& sProgress)
                                 {
                                     if (sProgress.m_nFolders < nLast)
                                         lstFolders.append(QStringLiteral("went back"));
                                     nLast = sProgress.m_nFolders;
                                     lstFolders.append(sProgress.m_strFolder);
                                     return true;
                                 });
    for (const char* pFolder : {"a", "b", "b/c"})
        QVERIFY2(lstFolders.contains(objRoot.filePath(QLatin1String(pFolder))), pFolder);
    QVERIFY(!lstFolders.contains(QStringLiteral("went back")));
    QCOMPARE(sResult.m_sOutcome.m_nFolders, 4);
}

void TestScanner::oneBadSequenceDoesNotStopTheRest()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.filePath(QStringLiteral("1")), QStringLiteral("1"));
    CStudyWriter::writeFile(objRoot.filePath(QStringLiteral("2/SequenceInfo.txt")), QByteArray(100, '\0'));
    CStudyWriter::writeFile(objRoot.filePath(QStringLiteral("3/SequenceInfo.txt")),
                            sequenceText(QStringLiteral("3"))); // its click is missing
    makeSequence(objRoot.filePath(QStringLiteral("4")), QStringLiteral("4"));
    const SResult sResult = scan({objRoot.path()});
    QCOMPARE(sResult.m_lstIDs, (QStringList{"1", "4"}));
    QVERIFY(sResult.m_sOutcome.m_lstProblems.size() >= 2);
    QVERIFY(sResult.m_sOutcome.m_lstProblems.join(QLatin1Char('\n')).contains(QStringLiteral("Sequence 3")));
}

void TestScanner::namesThatCannotBeShownAreTold()
{
    const QTemporaryDir objRoot;
    makeSequence(objRoot.filePath(QStringLiteral("good")), QStringLiteral("good"));
    const QByteArray arrName = QFile::encodeName(objRoot.path()) + "/bad\xFF\xFEname";
    QCOMPARE(mkdir(arrName.constData(), 0700), 0);
    const SResult sResult = scan({objRoot.path()});
    const int nRemoved = rmdir(arrName.constData()); // not seen by the temporary folder's own clean-up
    QCOMPARE(nRemoved, 0);
    QCOMPARE(sResult.m_lstIDs, QStringList{"good"});
    QCOMPARE(sResult.m_sOutcome.m_lstProblems.size(), 1);
    QVERIFY(sResult.m_sOutcome.m_lstProblems.first().contains(QStringLiteral("has a name that cannot be shown")));
}

ORM_TEST_MAIN(TestScanner)
#include "tst_scanner.moc"
