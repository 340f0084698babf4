#include "RemovingTestTools.h"

#include "OrmTestMain.h"
#include "QDoubleSpinBoxEx.h"

#include <QTimer>
#include <QToolButton>

using RemovingTest::addSequences;
using RemovingTest::g_pntElsewhere;
using RemovingTest::g_pntHome;
using RemovingTest::isFree;
using RemovingTest::lines;
using RemovingTest::listed;
using RemovingTest::load;
using RemovingTest::remove;
using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::paint;

namespace
{
/// Opens the menu of the remove button and chooses the entry. Returns which entries are enabled. A null text closes the menu.
QList<bool> clear(CToolWindow& objTool, const QString& strEntry)
{
    QList<bool> lstEnabled;
    QTimer objLook;
    objLook.setInterval(5);
    QObject::connect(&objLook, &QTimer::timeout,
                     [&]
                     {
                         auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                         if (pMenu == nullptr)
                         {
                             return;
                         }
                         objLook.stop();
                         QPoint pntEntry;
                         for (QAction* pAction : pMenu->actions())
                         {
                             lstEnabled.append(pAction->isEnabled());
                             if (pAction->text() == strEntry)
                             {
                                 pntEntry = pMenu->actionGeometry(pAction).center();
                             }
                         }
                         if (pntEntry.isNull())
                         {
                             pMenu->close();
                         }
                         else
                         {
                             QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier, pntEntry);
                         }
                     });
    objLook.start();
    TestWidgets::click(objTool.get<QToolButton>("m_pClear3DViewButton"));
    return lstEnabled;
}
} // namespace

/// The menu of the remove button: the selected results or all of them leave the view.
class tst_clearing : public QObject
{
    Q_OBJECT

private slots:
    void menuEntriesAreEnabledAsTheyApply_data();
    void menuEntriesAreEnabledAsTheyApply();
    void allResultsGo();
    void allResultsLoadAgainAndCountTwice();
    void keysLeftByAllResultsStillCount();
    void selectedResultGoes();
    void entriesAreKnownInAnyCase_data();
    void entriesAreKnownInAnyCase();
    void fortyResultsGoAtOnce();
};

void tst_clearing::menuEntriesAreEnabledAsTheyApply_data()
{
    QTest::addColumn<QStringList>("lstSOLA");
    QTest::addColumn<QStringList>("lstNOVA");
    QTest::addColumn<bool>("bSelected");
    QTest::addColumn<bool>("bAll");
    const QStringList lstNone = {QStringLiteral("SOLA")};
    const QStringList lstNoNOVA = {QStringLiteral("NOVA")};
    const QStringList lstOne = {QStringLiteral("SOLA"), QStringLiteral("A")};
    const QStringList lstOneNOVA = {QStringLiteral("NOVA"), QStringLiteral("B")};
    QTest::newRow("nothing listed, nothing selected") << lstNone << lstNoNOVA << false << false;
    QTest::newRow("nothing listed, one selected") << lstNone << lstNoNOVA << true << false;
    QTest::newRow("SOLA listed, nothing selected") << lstOne << lstNoNOVA << false << true;
    QTest::newRow("NOVA listed, nothing selected") << lstNone << lstOneNOVA << false << true;
    QTest::newRow("both listed, one selected") << lstOne << lstOneNOVA << true << true;
}

void tst_clearing::menuEntriesAreEnabledAsTheyApply()
{
    QFETCH(QStringList, lstSOLA);
    QFETCH(QStringList, lstNOVA);
    QFETCH(bool, bSelected);
    QFETCH(bool, bAll);
    CToolWindow objTool;
    QList<QString> lstGivenSOLA = lstSOLA;
    QList<QString> lstGivenNOVA = lstNOVA;
    objTool.window().updateSequenceNameList(lstGivenSOLA);
    objTool.window().updateSequenceNameList(lstGivenNOVA);
    if (bSelected)
    {
        objTool.view().getSelectedList().append(QStringLiteral("key"));
    }
    QMenu* pMenu = objTool.get<QToolButton>("m_pClear3DViewButton")->menu();
    for (const bool bBefore : {false, true})
    {
        for (QAction* pAction : pMenu->actions())
        {
            pAction->setEnabled(bBefore);
        }
        call(objTool, "aboutToShowClearMenu");
        QCOMPARE(pMenu->actions().size(), 2);
        QCOMPARE(pMenu->actions().at(0)->isEnabled(), bSelected);
        QCOMPARE(pMenu->actions().at(1)->isEnabled(), bAll);
    }
}

void tst_clearing::allResultsGo()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("NOVA N1"), {QStringLiteral("dye")});
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    QVERIFY(!lines(objTool).isEmpty());
    const QStringList lstSequences = listed(objTool);
    objTool.window().move(g_pntElsewhere);
    const QList<bool> lstEnabled = {true, true};
    QCOMPARE(clear(objTool, QStringLiteral("All Results")), lstEnabled);
    QCOMPARE(objTool.host().calls(), QStringList()); // nobody is asked
    QCOMPARE(objTool.tiles(), QStringList());
    QCOMPARE(objTool.view().getLoadedResult(), QStringList());
    QCOMPARE(lines(objTool), QStringList());
    QCOMPARE(listed(objTool), lstSequences);
    QCOMPARE(objTool.savedResults().size(), 2);
    QVERIFY(isFree(objTool, "m_pSOLAGB"));
    QVERIFY(isFree(objTool, "m_pNOVAGB"));
    for (const char* pName : {"m_pClear3DViewButton", "m_pWaveLengthCB", "m_pPlotSelectCB", "m_pSelectVoxelButton"})
    {
        QVERIFY2(!objTool.get<QWidget>(pName)->isEnabled(), pName);
    }
    QCOMPARE(objTool.window().pos(), g_pntElsewhere);
}

void tst_clearing::allResultsLoadAgainAndCountTwice()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    clear(objTool, QStringLiteral("All Results"));
    // The window still knows the two: what is loaded next is not its only result, and the plot appears.
    QCOMPARE(lines(objTool), QStringList());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("two")});
    QVERIFY(!lines(objTool).isEmpty());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one")});
    const QStringList lstTiles = {QStringLiteral("S1two"), QStringLiteral("S1one")};
    QCOMPARE(objTool.tiles(), lstTiles);
    // With the sequence both entries of each key go.
    objTool.window().move(g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA S1"));
    QCOMPARE(objTool.window().pos(), g_pntHome);
}

void tst_clearing::keysLeftByAllResultsStillCount()
{
    // The view is empty, but the window's own list of what it loaded is not: it neither goes home nor comes back once it has hidden.
    CStudyWriter objStudy;
    addSequences(objStudy, {QStringLiteral("A"), QStringLiteral("B")});
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA A"), {QStringLiteral("R")});
    clear(objTool, QStringLiteral("All Results"));
    objTool.window().move(g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA B"));
    QCOMPARE(objTool.window().pos(), g_pntElsewhere);
    QVERIFY(objTool.window().isVisible());
    remove(objTool, QStringLiteral("SOLA A"));
    QVERIFY(!objTool.window().isVisible());
    // The next show brings everything back, since the host still has the two, and a close forgets the keys.
    call(objTool, "onInitialUpdate");
    objTool.window().showNormal();
    QCOMPARE(listed(objTool).size(), 2);
    QVERIFY(objTool.window().close());
    objTool.window().show();
    objTool.window().move(g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA A"));
    QCOMPARE(objTool.window().pos(), g_pntHome);
}

void tst_clearing::selectedResultGoes()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("NOVA N1"), {QStringLiteral("dye")});
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    // What was loaded last is selected.
    const QList<bool> lstEnabled = {true, true};
    QCOMPARE(clear(objTool, QStringLiteral("Selected Result")), lstEnabled);
    QCOMPARE(objTool.host().calls(), QStringList());
    const QStringList lstLeft = {QStringLiteral("S1one"), QStringLiteral("N1dye")};
    QCOMPARE(objTool.tiles(), lstLeft);
    QVERIFY(!isFree(objTool, "m_pSOLAGB"));
    objTool.view().getSelectedList() = QStringList(QStringLiteral("N1dye"));
    clear(objTool, QStringLiteral("Selected Result"));
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("S1one")));
    QVERIFY(isFree(objTool, "m_pNOVAGB"));
    // A click on bare ground selects nothing, and the entry is off.
    objTool.view().getSelectedList().clear();
    const QList<bool> lstOff = {false, true};
    QCOMPARE(clear(objTool, QString()), lstOff);
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("S1one")));
    QCOMPARE(listed(objTool).size(), 3);
    // It can be loaded again.
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("two")});
    QCOMPARE(objTool.tiles().size(), 2);
}

void tst_clearing::entriesAreKnownInAnyCase_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nLeft"); // of two results, the later of which is selected
    QTest::newRow("all") << QStringLiteral("ALL results") << 0;
    QTest::newRow("selected") << QStringLiteral("selected RESULT") << 1;
    QTest::newRow("neither") << QStringLiteral("All Results ") << 2;
}

void tst_clearing::entriesAreKnownInAnyCase()
{
    QFETCH(QString, strText);
    QFETCH(int, nLeft);
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    auto* pMaximum = objTool.get<QDoubleSpinBoxEx>("m_pColorBarMaxSpinbox");
    const double dFull = pMaximum->value();
    pMaximum->setValue(dFull / 2.0);
    paint(objTool);
    QAction objEntry(strText);
    call(objTool, "onClickClearButton", Q_ARG(QAction*, &objEntry));
    QCOMPARE(objTool.tiles().size(), nLeft);
    // What was typed is forgotten in every case; without a result there is no range.
    QCOMPARE(pMaximum->value(), nLeft == 0 ? -1.0 : dFull);
}

void tst_clearing::fortyResultsGoAtOnce()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("S"));
    SResultDocument objDocument;
    objDocument.strSequenceID = QStringLiteral("S");
    QStringList lstNames;
    for (int i = 1; i <= 40; ++i)
    {
        lstNames.append(QStringLiteral("result %1").arg(i));
        objStudy.addResult(QStringLiteral("S"), lstNames.last(), objDocument);
    }
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S"), lstNames);
    QCOMPARE(objTool.tiles().size(), 40);
    objTool.view().getSelectedList() = objTool.view().getLoadedResult();
    clear(objTool, QStringLiteral("Selected Result"));
    // The walk that takes them out passes one over each time it has taken the first: one is left.
    QCOMPARE(objTool.tiles().size(), 1);
    clear(objTool, QStringLiteral("All Results"));
    QCOMPARE(objTool.tiles(), QStringList());
}

ORM_TEST_MAIN(tst_clearing)
#include "tst_clearing.moc"
