#include "CPlainUser.h"
#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QApplication>
#include <QListWidget>

#include <sys/stat.h>

namespace
{
bool setMode(const QString& strPath, unsigned nMode)
{
    return chmod(QFile::encodeName(strPath).constData(), nMode) == 0;
}
} // namespace

/// A press of Load by a user who may not read everything. Where the tests run as root they act as one who owns nothing.
class TestFaultsPermission : public QObject
{
    Q_OBJECT

private slots:
    void whatMayNotBeReadLeavesTheRest_data();
    void whatMayNotBeReadLeavesTheRest();
};

void TestFaultsPermission::whatMayNotBeReadLeavesTheRest_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strClosed"); // below the folder of results; %1: the kind
    QTest::addColumn<unsigned>("nMode");
    QTest::addColumn<QStringList>("lstTiles"); // without the one that was loaded before
    for (const int nKind : {0, 1})
    {
        const char* pKind = nKind == 0 ? "SOLA" : "NOVA";
        const QStringList lstBoth = {"SEQ1second", "SEQ1fourth"};
        QTest::addRow("%s, nothing", pKind) << nKind << "%1_3.xml" << 0644U << QStringList{"SEQ1second", "SEQ1third", "SEQ1fourth"};
        QTest::addRow("%s, a result", pKind) << nKind << "%1_3.xml" << 0000U << lstBoth;
        QTest::addRow("%s, a result that may be written", pKind) << nKind << "%1_3.xml" << 0222U << lstBoth;
        QTest::addRow("%s, the index", pKind) << nKind << "%1.txt" << 0000U << QStringList();
        QTest::addRow("%s, a folder that may not be entered", pKind) << nKind << "." << 0666U << QStringList();
        QTest::addRow("%s, a folder that may not be listed", pKind)
            << nKind << "." << 0711U << QStringList{"SEQ1second", "SEQ1third", "SEQ1fourth"};
    }
}

void TestFaultsPermission::whatMayNotBeReadLeavesTheRest()
{
    QFETCH(int, nKind);
    QFETCH(QString, strClosed);
    QFETCH(unsigned, nMode);
    QFETCH(QStringList, lstTiles);
    const QString strKind = nKind == 0 ? QStringLiteral("SOLA") : QStringLiteral("NOVA");
    CStudyWriter objStudy;
    QVERIFY(setMode(objStudy.folder(), 0755));
    objStudy.addSequence("SEQ1", nKind == 0 ? SSequenceLook::luminescent() : SSequenceLook::fluorescent());
    for (const char* pName : {"first", "second", "third", "fourth"})
        objStudy.addResult("SEQ1", pName, SResultDocument(nKind));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(strKind + " SEQ1");
    objTool.load({"first"});
    TestWidgets::selectEntries(objTool.get<QListWidget>("m_pResultWidget"), {"second", "third", "fourth"});
    objTool.host().clear();
    const QString strPath = objStudy.sequenceFolder("SEQ1") + "XML/" + (strClosed.contains("%1") ? strClosed.arg(strKind) : QString());
    QVERIFY(setMode(strPath, nMode));
    {
        const CPlainUser objUser(CPlainUser::Acts);
        QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
    }
    QVERIFY(setMode(strPath, 0755));
    QCOMPARE(objTool.tiles(), QStringList("SEQ1first") + lstTiles);
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QStringList lstBoxes; // one for each that did not load
    for (int nRefused = lstTiles.size(); nRefused < 3; ++nRefused)
        lstBoxes.append("box information: Unable to load analysis data");
    QCOMPARE(objTool.host().callsOf("box"), lstBoxes);
    const QString strLog = objTool.host().hostLog().join('\n');
    QVERIFY2(lstBoxes.isEmpty() || strLog.contains("Permission denied"), qPrintable(strLog));
    // With the right to read it all loads.
    objTool.load({"third"});
    QVERIFY(objTool.tiles().contains("SEQ1third"));
}

ORM_TEST_MAIN(TestFaultsPermission)
#include "tst_faults_permission.moc"
