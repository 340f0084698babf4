// A monkey at the window: random events, and what must hold after each of them.

#include "CMonkey.h"
#include "OrmTestMain.h"

class tst_Monkey : public QObject
{
    Q_OBJECT

private slots:
    void play();
    void widestView();
};

namespace
{
constexpr int s_nEvents = 2000;
constexpr quint32 s_nSeed = 1;

/// A number from the environment, so that anyone can play as long as wished and with any seed.
quint32 fromEnvironment(const char* pName, quint32 nOtherwise)
{
    if (!qEnvironmentVariableIsSet(pName))
    {
        return nOtherwise;
    }
    bool bNumber = false;
    const quint32 nValue = qEnvironmentVariable(pName).toUInt(&bNumber);
    if (!bNumber)
    {
        qFatal("%s is no number", pName);
    }
    return nValue;
}
} // namespace

void tst_Monkey::play()
{
    const int nEvents = static_cast<int>(fromEnvironment("ORM_MONKEY_EVENTS", s_nEvents));
    CMonkey objMonkey(fromEnvironment("ORM_MONKEY_SEED", s_nSeed));
    const QString strBroken = objMonkey.run(nEvents);
    QVERIFY2(strBroken.isNull(), qPrintable(strBroken));

    const CMonkey::SMet& sMet = objMonkey.met();
    qInfo("%d events: up to %d tiles, %d loads, %d refused, %d closes in the middle of one, %d sequences and %d times results removed, "
          "%d events with both kinds, %d with selected voxels",
          nEvents, sMet.nMostTiles, sMet.nLoads, sMet.nRefusals, sMet.nClosesRefused, sMet.nSequencesRemoved, sMet.nTilesRemoved,
          sMet.nBothKinds, sMet.nMeasured);
    if (nEvents < s_nEvents)
    {
        return; // too few to demand anything of
    }
    QVERIFY(sMet.nMostTiles > 4);
    QVERIFY(sMet.nLoads > 0);
    QVERIFY(sMet.nRefusals > 0);
    QVERIFY(sMet.nClosesRefused > 0);
    QVERIFY(sMet.nSequencesRemoved > 0);
    QVERIFY(sMet.nTilesRemoved > 0);
    QVERIFY(sMet.nBothKinds > 0);
    QVERIFY(sMet.nMeasured > 0);
}

/// Wider than a viewport of OpenGL can be, and with hardly any height.
void tst_Monkey::widestView()
{
    const CMonkeyStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA M1"));
    objTool.load({QStringLiteral("a"), QStringLiteral("b")});
    objTool.chooseSequence(QStringLiteral("NOVA FL"));
    objTool.load({QStringLiteral("a")});
    QCOMPARE(objTool.tiles().size(), 3);

    CLongitudinalStudyBrowserView objView(nullptr);
    for (sAnalysisBase& objRecord : objTool.view().getAnalysisParams())
    {
        objView.setAnalysisParms(objRecord);
        objView.getLoadedResult().append(objRecord.strSequenceID + objRecord.strResultName);
    }
    objView.resize(17000, 64);
    objView.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objView));
    objView.settle();
    QCOMPARE(objView.getGLWidth(), 17000);
    CMonkeyHands objHands;
    for (const int nX : {0, 5000, 12000, 16390, 16999})
    {
        objHands.move(&objView, QPoint(nX, 40));
        objHands.click(&objView, QPoint(nX, 40), Qt::LeftButton);
    }
    QVERIFY(objView.containsSOLAResults());
    QVERIFY(objView.containsNOVAResults());
    objView.resize(400, 300);
    objView.settle();
    QVERIFY(!objView.getPrintImage().isNull());
    for (const QString& strEntry : objTool.host().hostLog())
    {
        QVERIFY2(!strEntry.contains(QStringLiteral("OpenGL reports error")), qPrintable(strEntry));
    }
}

ORM_TEST_MAIN(tst_Monkey)
#include "tst_monkey.moc"
