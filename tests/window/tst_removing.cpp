#include "RemovingTestTools.h"

#include "COrmUtilityFns.h"
#include "OrmTestMain.h"
#include "QDoubleSpinBoxEx.h"

#include <QToolButton>

using RemovingTest::addSequences;
using RemovingTest::g_pntElsewhere;
using RemovingTest::g_pntHome;
using RemovingTest::isFree;
using RemovingTest::lines;
using RemovingTest::listed;
using RemovingTest::load;
using RemovingTest::question;
using RemovingTest::remove;
using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::paint;
using WindowTest::SViewNumbers;

namespace
{
/// A record that its reader takes and the window then refuses: its names are known from then on, and its unit is locked.
SResultDocument refusedLate(int nKind, const QString& strSequenceID)
{
    SResultDocument objDocument(nKind);
    objDocument.strSequenceID = strSequenceID + QStringLiteral(" or another");
    return objDocument;
}

/// The sizes that a widget gets.
class CSizes : public QObject
{
public:
    explicit CSizes(QWidget& objWidget) { objWidget.installEventFilter(this); }
    const QList<QSize>& sizes() const { return m_lstSizes; }

private:
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::Resize)
        {
            m_lstSizes.append(static_cast<QResizeEvent*>(pEvent)->size());
        }
        return false;
    }
    QList<QSize> m_lstSizes;
};
} // namespace

/// What takes a sequence out of the window, and what is left then.
class tst_removing : public QObject
{
    Q_OBJECT

private slots:
    void contextMenuNeedsASelectedEntry();
    void questionNamesTheEntry();
    void otherAnswersLeaveEverything_data();
    void otherAnswersLeaveEverything();
    void sequenceGoesWithItsTiles();
    void unitIsFreeWhenTheLastResultOfItsKindGoes_data();
    void unitIsFreeWhenTheLastResultOfItsKindGoes();
    void resultThatWasReadButRefused_data();
    void resultThatWasReadButRefused();
    void idWithinAnotherTakesItsTilesToo();
    void pointerFindsNothingWhereOnlyKeysAreLeft();
    void resultsOfTheOtherKindGoToo();
    void sequenceLastChosenGoesNotTheOneAskedAbout();
    void idOfNoListRemovesNothing();
    void withoutACurrentEntryNothingIsAsked();
    void windowGoesHomeWhenNothingIsLoaded();
    void windowStaysWhileSomethingIsLoaded();
    void lastSequenceLeavesAnEmptyWindow();
    void hostSequenceComesBackUnloaded();
    void controlsAfterTheLastResult();
    void rangeBoxesForgetWhatWasTyped();
    void plotKeepsWhatIsLeft();
    void windowIsNudged();
    void everythingLoadsAgain();
};

void tst_removing::contextMenuNeedsASelectedEntry()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    const auto popup = []() { return QApplication::activePopupWidget(); };
    call(objTool, "onMouseClicked", Q_ARG(QPoint, QPoint(3, 3)));
    QVERIFY(popup() == nullptr);
    pList->setCurrentRow(1, QItemSelectionModel::NoUpdate); // current, not selected
    call(objTool, "onMouseClicked", Q_ARG(QPoint, QPoint(3, 3)));
    QVERIFY(popup() == nullptr);
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    QContextMenuEvent objEvent(QContextMenuEvent::Mouse, pList->visualItemRect(pList->item(1)).center());
    QApplication::sendEvent(pList->viewport(), &objEvent);
    auto* pMenu = qobject_cast<QMenu*>(popup());
    QVERIFY(pMenu != nullptr);
    QCOMPARE(pMenu->actions().size(), 1);
    QCOMPARE(pMenu->actions().first()->text(), QStringLiteral("Remove"));
    QCOMPARE(pMenu->pos(), QCursor::pos()); // not where the event was
    pMenu->hide();
}

void tst_removing::questionNamesTheEntry()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    remove(objTool, QStringLiteral("NOVA N1"));
    QCOMPARE(objTool.host().calls(), QStringList(question(QStringLiteral("NOVA N1"))));
    const SMessageRequest& sBox = objTool.host().boxes().first();
    QCOMPARE(sBox.pParent, static_cast<QWidget*>(nullptr));
    QCOMPARE(sBox.strCaption, COrmUtilityFns::getAppName());
    QVERIFY(!sBox.bTextButtons);
    const QList<int> lstButtons = {QMessageBox::Yes, QMessageBox::No | QMessageBox::Default, 0};
    QCOMPARE(sBox.lstButtons, lstButtons);
}

void tst_removing::otherAnswersLeaveEverything_data()
{
    QTest::addColumn<int>("nAnswer");
    QTest::newRow("No") << int(QMessageBox::No);
    QTest::newRow("Escape") << int(QMessageBox::Cancel);
    QTest::newRow("none") << 0;
    QTest::newRow("another yes") << int(QMessageBox::YesToAll);
}

void tst_removing::otherAnswersLeaveEverything()
{
    QFETCH(int, nAnswer);
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one")});
    objTool.window().move(g_pntElsewhere);
    const QStringList lstBefore = listed(objTool);
    objTool.host().setAnswer([nAnswer](const SMessageRequest&) { return nAnswer; });
    call(objTool, "onClickRemoveAction");
    QCOMPARE(objTool.host().calls(), QStringList(question(QStringLiteral("SOLA S1"))));
    QCOMPARE(listed(objTool), lstBefore);
    QCOMPARE(objTool.savedResults().size(), 2);
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("S1one")));
    QVERIFY(!isFree(objTool, "m_pSOLAGB"));
    QCOMPARE(objTool.window().pos(), g_pntElsewhere);
}

void tst_removing::sequenceGoesWithItsTiles()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    load(objTool, QStringLiteral("SOLA S2"), {QStringLiteral("one")});
    load(objTool, QStringLiteral("NOVA N1"), {QStringLiteral("dye")});
    remove(objTool, QStringLiteral("SOLA S1"));
    QCOMPARE(objTool.host().calls(), QStringList(question(QStringLiteral("SOLA S1"))));
    const QStringList lstSequences = {QStringLiteral("SOLA S2"), QStringLiteral("NOVA N1")};
    QCOMPARE(listed(objTool), lstSequences);
    const QStringList lstLeft = {QStringLiteral("S2one"), QStringLiteral("N1dye")};
    QCOMPARE(objTool.tiles(), lstLeft);
    QCOMPARE(objTool.view().getLoadedResult(), lstLeft);
    // The list that was built anew has chosen its first entry, and shows no results.
    QCOMPARE(objTool.savedResults(), QStringList());
    QVERIFY(objTool.get<QGroupBox>("m_pSOLAGB")->isVisible());
    QVERIFY(objTool.get<QListWidget>("m_pSequenceNameLW")->selectedItems().isEmpty());
    remove(objTool, QStringLiteral("NOVA N1"));
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA S2")));
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("S2one")));
}

void tst_removing::unitIsFreeWhenTheLastResultOfItsKindGoes_data()
{
    QTest::addColumn<int>("nKind");
    QTest::newRow("SOLA") << 0;
    QTest::newRow("NOVA") << 1;
}

void tst_removing::unitIsFreeWhenTheLastResultOfItsKindGoes()
{
    QFETCH(int, nKind);
    const QString strKind = nKind == 0 ? QStringLiteral("SOLA ") : QStringLiteral("NOVA ");
    const char* pOwn = nKind == 0 ? "m_pSOLAGB" : "m_pNOVAGB";
    const char* pOther = nKind == 0 ? "m_pNOVAGB" : "m_pSOLAGB";
    const QString strOther = nKind == 0 ? QStringLiteral("NOVA C") : QStringLiteral("SOLA C");
    CStudyWriter objStudy;
    for (const QString& strID : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")})
    {
        const int nOwnKind = strID == QLatin1String("C") ? 1 - nKind : nKind;
        objStudy.addSequence(strID, nOwnKind == 0 ? SSequenceLook::luminescent() : SSequenceLook::fluorescent());
        SResultDocument objDocument(nOwnKind);
        objDocument.strSequenceID = strID;
        objStudy.addResult(strID, QStringLiteral("R"), objDocument);
    }
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, strOther, {QStringLiteral("R")});
    load(objTool, strKind + QStringLiteral("A"), {QStringLiteral("R")});
    load(objTool, strKind + QStringLiteral("B"), {QStringLiteral("R")});
    QVERIFY(!isFree(objTool, pOwn));
    QVERIFY(!isFree(objTool, pOther));
    remove(objTool, strKind + QStringLiteral("A"));
    QVERIFY(!isFree(objTool, pOwn));
    remove(objTool, strKind + QStringLiteral("B"));
    QVERIFY(isFree(objTool, pOwn));
    QVERIFY(!isFree(objTool, pOther));
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("CR")));
}

void tst_removing::resultThatWasReadButRefused_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<bool>("bOtherTile");
    QTest::addColumn<bool>("bFree"); // the unit, after the removal
    QTest::newRow("SOLA, with a tile elsewhere") << 0 << true << true;
    QTest::newRow("NOVA, with a tile elsewhere") << 1 << true << false;
    QTest::newRow("SOLA, nothing in the view") << 0 << false << false;
    QTest::newRow("NOVA, nothing in the view") << 1 << false << false;
}

void tst_removing::resultThatWasReadButRefused()
{
    QFETCH(int, nKind);
    QFETCH(bool, bOtherTile);
    QFETCH(bool, bFree);
    const QString strEntry = nKind == 0 ? QStringLiteral("SOLA A") : QStringLiteral("NOVA A");
    const QString strOther = nKind == 0 ? QStringLiteral("NOVA C") : QStringLiteral("SOLA C");
    const char* pOwn = nKind == 0 ? "m_pSOLAGB" : "m_pNOVAGB";
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("A"), nKind == 0 ? SSequenceLook::luminescent() : SSequenceLook::fluorescent());
    objStudy.addResult(QStringLiteral("A"), QStringLiteral("R"), refusedLate(nKind, QStringLiteral("A")));
    objStudy.addSequence(QStringLiteral("C"), nKind == 1 ? SSequenceLook::luminescent() : SSequenceLook::fluorescent());
    SResultDocument objDocument(1 - nKind);
    objDocument.strSequenceID = QStringLiteral("C");
    objStudy.addResult(QStringLiteral("C"), QStringLiteral("R"), objDocument);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    if (bOtherTile)
    {
        load(objTool, strOther, {QStringLiteral("R")});
    }
    load(objTool, strEntry, {QStringLiteral("R")});
    QCOMPARE(objTool.tiles().size(), bOtherTile ? 1 : 0);
    QVERIFY(!isFree(objTool, pOwn)); // a reader that got past the names has locked it
    remove(objTool, strEntry);
    QCOMPARE(isFree(objTool, pOwn), bFree);
    QCOMPARE(objTool.tiles().size(), bOtherTile ? 1 : 0);
    // The next clearing of the whole view frees it in any case.
    QVERIFY(objTool.window().close());
    QVERIFY(isFree(objTool, pOwn));
}

void tst_removing::idWithinAnotherTakesItsTilesToo()
{
    CStudyWriter objStudy;
    addSequences(objStudy, {QStringLiteral("M1"), QStringLiteral("M10"), QStringLiteral("xM1x"), QStringLiteral("m1")});
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    for (const QString& strID : {QStringLiteral("M10"), QStringLiteral("m1"), QStringLiteral("M1"), QStringLiteral("xM1x")})
    {
        load(objTool, QStringLiteral("SOLA ") + strID, {QStringLiteral("R")});
    }
    objTool.window().move(g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA M1"));
    // Case differs, so that one stays; the other two stay on the list but not in the view.
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("m1R")));
    const QStringList lstSequences = {QStringLiteral("SOLA M10"), QStringLiteral("SOLA m1"), QStringLiteral("SOLA xM1x")};
    QStringList lstListed = listed(objTool);
    lstListed.sort();
    QStringList lstExpected = lstSequences;
    lstExpected.sort();
    QCOMPARE(lstListed, lstExpected);
    // Their keys are still known, so that they count as loaded.
    const QStringList lstKeys = {QStringLiteral("M10R"), QStringLiteral("m1R"), QStringLiteral("xM1xR")};
    QCOMPARE(objTool.view().getLoadedResult(), lstKeys);
    objTool.chooseSequence(QStringLiteral("SOLA M10"));
    objTool.host().clear();
    objTool.load({QStringLiteral("R")});
    QCOMPARE(objTool.host().callsOf(QStringLiteral("box")), QStringList(QStringLiteral("box information: R  is already loaded")));
    QCOMPARE(objTool.window().pos(), g_pntElsewhere);
}

void tst_removing::pointerFindsNothingWhereOnlyKeysAreLeft()
{
    // The view has lost its tiles while the key of one is still known, and the pointer has been over the last of them.
    CStudyWriter objStudy;
    addSequences(objStudy, {QStringLiteral("M1"), QStringLiteral("M10")});
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA M1"), {QStringLiteral("R")});
    load(objTool, QStringLiteral("SOLA M10"), {QStringLiteral("R")});
    CLongitudinalStudyBrowserView& objView = objTool.view();
    const QPoint pntLastTile((objView.width() - 110) * 3 / 4, objView.height() / 2);
    TestWidgets::moveOver(&objView, pntLastTile);
    QTRY_COMPARE(objView.getHighListedResult(), QStringLiteral("M10R"));
    remove(objTool, QStringLiteral("SOLA M1"));
    QCOMPARE(objTool.tiles(), QStringList());
    QCOMPARE(objView.getLoadedResult(), QStringList(QStringLiteral("M10R")));
    for (const bool bTool : {false, true})
    {
        objTool.get<QToolButton>("m_pSelectVoxelButton")->setChecked(bTool);
        for (const Qt::KeyboardModifiers eModifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)})
        {
            QTest::mousePress(&objView, Qt::LeftButton, eModifiers, pntLastTile);
            QMouseEvent objDrag(QEvent::MouseMove, pntLastTile + QPoint(30, 20), Qt::LeftButton, Qt::LeftButton, eModifiers);
            QApplication::sendEvent(&objView, &objDrag);
            QTest::mouseRelease(&objView, Qt::LeftButton, eModifiers, pntLastTile + QPoint(30, 20));
        }
        QTest::mouseClick(&objView, Qt::RightButton, Qt::NoModifier, pntLastTile);
        QVERIFY(QApplication::activePopupWidget() == nullptr);
        paint(objTool);
    }
    QCOMPARE(objView.getSelectedList(), QStringList());
    QCOMPARE(objTool.host().callsOf(QStringLiteral("log")), QStringList());
}

void tst_removing::resultsOfTheOtherKindGoToo()
{
    // A sequence of both kinds. A click on one entry takes the results of the other one away unless they have the same names.
    CStudyWriter objStudy;
    SSequenceLook sLook;
    sLook.bFluorescent = true;
    sLook.bTransIllumination = true;
    objStudy.addSequence(QStringLiteral("B"), sLook);
    for (const int nKind : {0, 1})
    {
        SResultDocument objDocument(nKind);
        objDocument.strSequenceID = QStringLiteral("B");
        objStudy.addResult(QStringLiteral("B"), QStringLiteral("R"), objDocument);
    }
    SResultDocument objSOLA;
    objSOLA.strSequenceID = QStringLiteral("B");
    objStudy.addResult(QStringLiteral("B"), QStringLiteral("light"), objSOLA);
    objStudy.addIndexEntry(QStringLiteral("B"), 1, QStringLiteral("light"), QStringLiteral("nothing.xml"));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("NOVA B"), {QStringLiteral("R")});
    load(objTool, QStringLiteral("SOLA B"), {QStringLiteral("light")});
    QCOMPARE(objTool.tiles().size(), 2);
    remove(objTool, QStringLiteral("SOLA B"));
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("NOVA B")));
    QCOMPARE(objTool.tiles(), QStringList());
    QVERIFY(isFree(objTool, "m_pSOLAGB"));
    // Nothing has been said of the image sources: the other unit stays as it is.
    QVERIFY(!isFree(objTool, "m_pNOVAGB"));
}

void tst_removing::sequenceLastChosenGoesNotTheOneAskedAbout()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.get<QListWidget>("m_pSequenceNameLW")->setCurrentRow(1); // by a key, without a click
    objTool.host().clear();
    objTool.host().setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
    call(objTool, "onClickRemoveAction");
    QCOMPARE(objTool.host().calls(), QStringList(question(QStringLiteral("SOLA S2"))));
    const QStringList lstLeft = {QStringLiteral("SOLA S2"), QStringLiteral("NOVA N1")};
    QCOMPARE(listed(objTool), lstLeft);
}

void tst_removing::idOfNoListRemovesNothing()
{
    // The entry counts as NOVA by its ID, which no NOVA list holds.
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("a NOVA b"));
    objStudy.addSequence(QStringLiteral("c"), SSequenceLook::fluorescent());
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.window().move(g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA a NOVA b"));
    QCOMPARE(objTool.host().calls(), QStringList(question(QStringLiteral("SOLA a NOVA b"))));
    QCOMPARE(listed(objTool).size(), 2);
    QCOMPARE(objTool.window().pos(), g_pntHome); // the end is the same
}

void tst_removing::withoutACurrentEntryNothingIsAsked()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    call(objTool, "onClickRemoveAction");
    QCOMPARE(objTool.host().calls(), QStringList());
    QCOMPARE(listed(objTool).size(), 3);
}

void tst_removing::windowGoesHomeWhenNothingIsLoaded()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.window().move(g_pntElsewhere);
    QTRY_COMPARE(objTool.window().pos(), g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA S2"));
    const QStringList lstLeft = {QStringLiteral("SOLA S1"), QStringLiteral("NOVA N1")};
    QCOMPARE(listed(objTool), lstLeft);
    QCOMPARE(objTool.window().pos(), g_pntHome);
    QVERIFY(objTool.window().isVisible());
}

void tst_removing::windowStaysWhileSomethingIsLoaded()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one")});
    objTool.window().move(g_pntElsewhere);
    remove(objTool, QStringLiteral("SOLA S2"));
    QCOMPARE(objTool.window().pos(), g_pntElsewhere);
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("S1one")));
    QVERIFY(objTool.get<QToolButton>("m_pClear3DViewButton")->isEnabled());
    remove(objTool, QStringLiteral("SOLA S1"));
    QCOMPARE(objTool.window().pos(), g_pntHome);
}

void tst_removing::lastSequenceLeavesAnEmptyWindow()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("S"));
    SResultDocument objDocument;
    objDocument.strSequenceID = QStringLiteral("S");
    objStudy.addResult(QStringLiteral("S"), QStringLiteral("R"), objDocument);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S"), {QStringLiteral("R")});
    // The window hides itself, and comes back.
    QStringList lstShown;
    struct SShown : public QObject
    {
        explicit SShown(QStringList& lst) : lstShown(lst) {}
        bool eventFilter(QObject*, QEvent* pEvent) override
        {
            if (pEvent->type() == QEvent::Hide || pEvent->type() == QEvent::Show)
            {
                lstShown.append(pEvent->type() == QEvent::Hide ? QStringLiteral("hidden") : QStringLiteral("shown"));
            }
            return false;
        }
        QStringList& lstShown;
    } objFilter(lstShown);
    objTool.window().installEventFilter(&objFilter);
    remove(objTool, QStringLiteral("SOLA S"));
    const QStringList lstExpected = {QStringLiteral("hidden"), QStringLiteral("shown")};
    QCOMPARE(lstShown, lstExpected);
    QVERIFY(objTool.window().isVisible());
    QVERIFY(!objTool.window().isMinimized());
    QCOMPARE(objTool.window().pos(), g_pntHome);
    QCOMPARE(listed(objTool), QStringList());
    QCOMPARE(objTool.savedResults(), QStringList());
    QCOMPARE(objTool.tiles(), QStringList());
    QVERIFY(isFree(objTool, "m_pSOLAGB"));
    for (const char* pName : {"m_pClear3DViewButton", "m_pWaveLengthCB", "m_pPlotSelectCB", "m_pSelectVoxelButton", "m_pDisplayVoxelsGB",
                              "m_pDisplaySurfaceGB", "m_pLoadButton"})
    {
        QVERIFY2(!objTool.get<QWidget>(pName)->isEnabled(), pName);
    }
    // It can be used again: a sequence that is reported now is listed.
    paint(objTool);
    CStudy objMore;
    objTool.open(objMore.folder());
    QVERIFY(listed(objTool).contains(QStringLiteral("SOLA S1")));
}

void tst_removing::hostSequenceComesBackUnloaded()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S2"), {QStringLiteral("one")});
    remove(objTool, QStringLiteral("SOLA S2"));
    QVERIFY(!listed(objTool).contains(QStringLiteral("SOLA S2")));
    call(objTool, "onInitialUpdate"); // the next use of the menu entry
    const QStringList lstExpected = {QStringLiteral("SOLA S1"), QStringLiteral("SOLA S2"), QStringLiteral("NOVA N1")};
    QCOMPARE(listed(objTool), lstExpected);
    QCOMPARE(objTool.tiles(), QStringList());
    load(objTool, QStringLiteral("SOLA S2"), {QStringLiteral("one")});
    QCOMPARE(objTool.tiles(), QStringList(QStringLiteral("S2one")));
}

void tst_removing::controlsAfterTheLastResult()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    TestWidgets::click(objTool.get<QToolButton>("m_pSelectVoxelButton"));
    QVERIFY(SViewNumbers::selectsVoxels(objTool.view()));
    QVERIFY(objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    QVERIFY(objTool.get<QComboBox>("m_pWaveLengthCB")->isEnabled());
    QVERIFY(!lines(objTool).isEmpty());
    remove(objTool, QStringLiteral("SOLA S1"));
    QVERIFY(!SViewNumbers::selectsVoxels(objTool.view()));
    QVERIFY(!objTool.get<QToolButton>("m_pSelectVoxelButton")->isChecked());
    for (const char* pName :
         {"m_pDisplayVoxelsGB", "m_pWaveLengthCB", "m_pClear3DViewButton", "m_pPlotSelectCB", "m_pSelectVoxelButton", "m_pLoadButton"})
    {
        QVERIFY2(!objTool.get<QWidget>(pName)->isEnabled(), pName);
    }
    QVERIFY(objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->isEnabled()); // sequences are listed
    QCOMPARE(lines(objTool), QStringList());
}

void tst_removing::rangeBoxesForgetWhatWasTyped()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one")});
    load(objTool, QStringLiteral("SOLA S2"), {QStringLiteral("one")});
    auto* pMaximum = objTool.get<QDoubleSpinBoxEx>("m_pColorBarMaxSpinbox");
    const double dBefore = pMaximum->value();
    pMaximum->setValue(dBefore / 2.0);
    paint(objTool);
    QVERIFY(pMaximum->value() < dBefore);
    remove(objTool, QStringLiteral("SOLA S2"));
    float fLow = 0.0f;
    float fHigh = 0.0f;
    float fOther = 0.0f;
    objTool.view().getMinMax(&fLow, &fHigh, &fOther, &fOther);
    QCOMPARE(pMaximum->value(), double(fHigh));
    QCOMPARE(pMaximum->value(), dBefore);
}

void tst_removing::plotKeepsWhatIsLeft()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
    load(objTool, QStringLiteral("SOLA S2"), {QStringLiteral("one")});
    remove(objTool, QStringLiteral("SOLA S2"));
    QVERIFY(!lines(objTool).isEmpty());
    QVERIFY(objTool.get<QComboBox>("m_pPlotSelectCB")->isEnabled());
}

void tst_removing::windowIsNudged()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one")});
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    objTool.host().setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
    const QSize szBefore = objTool.window().size();
    const CSizes objSizes(objTool.window());
    call(objTool, "onClickRemoveAction");
    // Once for the list, once for the view.
    const QList<QSize> lstExpected = {szBefore + QSize(1, 0), szBefore, szBefore + QSize(1, 0), szBefore};
    QCOMPARE(objSizes.sizes(), lstExpected);
    QCOMPARE(objTool.window().size(), szBefore);
}

void tst_removing::everythingLoadsAgain()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    for (int nRound = 0; nRound < 3; ++nRound)
    {
        load(objTool, QStringLiteral("NOVA N1"), {QStringLiteral("dye"), QStringLiteral("dye 2")});
        load(objTool, QStringLiteral("SOLA S1"), {QStringLiteral("one"), QStringLiteral("two")});
        const QStringList lstTiles = {QStringLiteral("S1one"), QStringLiteral("S1two"), QStringLiteral("N1dye"), QStringLiteral("N1dye 2")};
        QCOMPARE(objTool.tiles(), lstTiles);
        QVERIFY(!isFree(objTool, "m_pSOLAGB"));
        QVERIFY(!isFree(objTool, "m_pNOVAGB"));
        remove(objTool, QStringLiteral("NOVA N1"));
        QVERIFY(isFree(objTool, "m_pNOVAGB"));
        remove(objTool, QStringLiteral("SOLA S1"));
        QVERIFY(isFree(objTool, "m_pSOLAGB"));
        QCOMPARE(objTool.tiles(), QStringList());
        call(objTool, "onInitialUpdate");
    }
}

ORM_TEST_MAIN(tst_removing)
#include "tst_removing.moc"
