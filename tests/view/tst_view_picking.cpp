#include "ViewTestTools.h"

#include <QAction>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>

using namespace ViewTest;

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::KeyboardModifiers)

namespace
{
/// A place counted from the bottom left as a widget's position.
QPoint widgetPos(const CRecordingView& view, const QPoint& pt)
{
    return {pt.x(), view.getGLHeight() - pt.y()};
}

void moveTo(CRecordingView& view, const QPoint& pt)
{
    QMouseEvent objEvent(QEvent::MouseMove, widgetPos(view, pt), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &objEvent);
}

void press(CRecordingView& view, Qt::MouseButton eButton, Qt::KeyboardModifiers eModifiers = Qt::NoModifier)
{
    QMouseEvent objEvent(QEvent::MouseButtonPress, QPoint(1, 1), eButton, eButton, eModifiers);
    QCoreApplication::sendEvent(&view, &objEvent);
}

void loadThree(CRecordingView& view)
{
    for (const char* pszName : {"A", "B", "C"})
    {
        view.load(result(QString::fromLatin1(pszName)));
    }
    view.picture();
}

QRect activeRectangle(const CRecordingView& view)
{
    int nX = 0;
    int nY = 0;
    int nWidth = 0;
    int nHeight = 0;
    view.getActiveViewParams(nX, nY, nWidth, nHeight);
    return {nX, nY, nWidth, nHeight};
}
} // namespace

/// What the pointer does to highlight, selection and menu, and what leaves the view through them.
class tst_view_picking : public QObject
{
    Q_OBJECT

private slots:
    void withoutResultsThePointerIsIgnored();
    void hoverFindsTheTile();
    void edgesAndMarginsAreOutside();
    void firstTileAloneKeepsItsDrag();
    void pressSelectsOneResult_data();
    void pressSelectsOneResult();
    void pressOutsideClearsTheSelection_data();
    void pressOutsideClearsTheSelection();
    void pressWithoutAMoveIsOutside();
    void wheelAndKeysChangeNothing();
    void rightPressOpensTheMenu();
    void menuRemovesTheResultItWasOpenedOn();
    void removalKeepsSelectionAndHighlight();
    void removingTheLastTileLeavesTheActiveIndex();
    void removingSelectedPassesOverTheFirst();
    void removingWithoutASelectionDoesNothing();
    void cursors_data();
    void cursors();
    void handlesArePickedByThePointer_data();
    void handlesArePickedByThePointer();
    void ofHandlesWithinReachTheFirstDrawnIsPicked();
    void hitRecords();
};

void tst_view_picking::withoutResultsThePointerIsIgnored()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.setSelectVoxel(true);
    view.setCursor(Qt::WaitCursor);
    view.m_nContextResult = 5;
    QSignalSpy spy(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
    moveTo(view, QPoint(100, 100));
    press(view, Qt::LeftButton, Qt::ShiftModifier);
    press(view, Qt::RightButton);
    QCOMPARE(view.cursor().shape(), Qt::WaitCursor);
    QCOMPARE(view.m_nContextResult, 5);
    QVERIFY(spy.isEmpty());
}

void tst_view_picking::hoverFindsTheTile()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    for (const int i : {1, 0, 2})
    {
        const int nPaints = restOf(view);
        moveTo(view, pictureOf(view, i).center());
        QCOMPARE(view.m_nActiveResult, i);
        QCOMPARE(view.getHighListedResult(), QStringLiteral("SEQ") + QChar('A' + i));
        QCOMPARE(activeRectangle(view), pictureOf(view, i));
        const Singleton* pRecord = Singleton::getInstance();
        QCOMPARE(QRect(pRecord->m_nX, pRecord->m_nY, pRecord->m_nWidth, pRecord->m_nHeight), pictureOf(view, i));
        QTRY_VERIFY(view.m_nPaints > nPaints);
    }
    moveTo(view, QPoint(880, 200)); // the strip of the bars
    QCOMPARE(view.m_nActiveResult, -1);
    QVERIFY(view.getHighListedResult().isEmpty());
    QCOMPARE(activeRectangle(view), QRect(0, 0, 0, 0));
}

void tst_view_picking::edgesAndMarginsAreOutside()
{
    CRecordingView view;
    show(view, QSize(900, 500));
    SResultRecipe objRecipe;
    objRecipe.objSize = Coord3d(20, 10, 10);
    view.load(result(QStringLiteral("A"), objRecipe));
    view.load(result(QStringLiteral("B"), objRecipe));
    view.picture();
    const QRect rect = pictureOf(view, 1);
    QVERIFY(rect.height() < view.tileHeight() - 20); // bars above and below
    const auto fnActive = [&](const QPoint& pt)
    {
        moveTo(view, pt);
        return view.m_nActiveResult;
    };
    QCOMPARE(fnActive(QPoint(rect.x() + 1, rect.y() + 1)), 1);
    QCOMPARE(fnActive(QPoint(rect.x(), rect.center().y())), -1);
    QCOMPARE(fnActive(QPoint(rect.x() + rect.width(), rect.center().y())), -1);
    QCOMPARE(fnActive(QPoint(rect.center().x(), rect.y())), -1);
    QCOMPARE(fnActive(QPoint(rect.x() + rect.width() - 1, rect.center().y())), 1);
    QCOMPARE(fnActive(QPoint(rect.center().x(), rect.y() + rect.height() + 5)), -1);
    QCOMPARE(fnActive(QPoint(rect.center().x(), rect.y() - 5)), -1);
    QCOMPARE(fnActive(QPoint(2 * view.tileWidth() + 3, rect.center().y())), -1);
}

void tst_view_picking::firstTileAloneKeepsItsDrag()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    const auto fnDragAfterAMove = [&](int nResult)
    {
        moveTo(view, pictureOf(view, nResult).center());
        view.m_dragStart = Coord3d(5, 6, 7);
        view.m_dragEnd = Coord3d(8, 9, 10);
        moveTo(view, pictureOf(view, nResult).center() + QPoint(3, 3));
        return QVector<double>{view.m_dragStart.x, view.m_dragStart.y, view.m_dragEnd.x, view.m_dragEnd.y};
    };
    QCOMPARE(fnDragAfterAMove(0), (QVector<double>{5, 6, 8, 9}));
    QCOMPARE(fnDragAfterAMove(1), (QVector<double>{0, 0, 0, 0}));
    QCOMPARE(fnDragAfterAMove(2), (QVector<double>{0, 0, 0, 0}));
    QCOMPARE(view.m_dragStart.z, 7.0); // only x and y are used
}

void tst_view_picking::pressSelectsOneResult_data()
{
    QTest::addColumn<Qt::MouseButton>("eButton");
    QTest::addColumn<Qt::KeyboardModifiers>("eModifiers");
    QTest::addColumn<bool>("bTool");
    QTest::addColumn<bool>("bSelects");
    QTest::addColumn<bool>("bTells");
    QTest::addColumn<bool>("bMenu");
    const Qt::KeyboardModifiers eNone = Qt::NoModifier;
    const Qt::KeyboardModifiers eControl = Qt::ControlModifier;
    const Qt::KeyboardModifiers eBoth = Qt::ControlModifier | Qt::ShiftModifier;
    QTest::newRow("left") << Qt::LeftButton << eNone << false << true << true << false;
    QTest::newRow("left, control") << Qt::LeftButton << eControl << false << true << true << false;
    QTest::newRow("left, shift") << Qt::LeftButton << Qt::KeyboardModifiers(Qt::ShiftModifier) << false << true << true << false;
    QTest::newRow("right") << Qt::RightButton << eNone << false << true << false << true;
    QTest::newRow("right, control") << Qt::RightButton << eControl << false << true << false << true;
    QTest::newRow("middle") << Qt::MiddleButton << eNone << false << true << false << false;
    QTest::newRow("back") << Qt::BackButton << eNone << false << true << false << false;
    QTest::newRow("tool: left is the tool's") << Qt::LeftButton << eNone << true << false << false << false;
    QTest::newRow("tool: left, control is the tool's") << Qt::LeftButton << eControl << true << false << false << false;
    QTest::newRow("tool: left, control and shift") << Qt::LeftButton << eBoth << true << true << true << false;
    QTest::newRow("tool: right, no menu") << Qt::RightButton << eNone << true << true << false << false;
    QTest::newRow("tool: middle") << Qt::MiddleButton << eNone << true << true << false << false;
}

void tst_view_picking::pressSelectsOneResult()
{
    QFETCH(Qt::MouseButton, eButton);
    QFETCH(Qt::KeyboardModifiers, eModifiers);
    QFETCH(bool, bTool);
    QFETCH(bool, bSelects);
    QFETCH(bool, bTells);
    QFETCH(bool, bMenu);
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    const QStringList lstBefore = {QStringLiteral("SEQA"), QStringLiteral("SEQC")};
    view.getSelectedList() = lstBefore;
    view.setSelectVoxel(bTool);
    moveTo(view, pictureOf(view, 1).center());
    QSignalSpy spy(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
    const int nPaints = restOf(view);
    press(view, eButton, eModifiers);
    QCOMPARE(restOf(view) > nPaints, bSelects);
    QCOMPARE(view.getSelectedList(), bSelects ? QStringList{QStringLiteral("SEQB")} : lstBefore);
    QCOMPARE(view.m_nContextResult, bMenu ? 1 : -1);
    QCOMPARE(view.m_pContextMenu->isVisible(), bMenu);
    view.m_pContextMenu->hide();
    if (bTells)
    {
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.first().at(0).toString(), QStringLiteral("SEQ"));
        QCOMPARE(spy.first().at(1).toString(), QStringLiteral("B"));
    }
    else if (!bTool)
    {
        QVERIFY(spy.isEmpty());
    }
}

void tst_view_picking::pressOutsideClearsTheSelection_data()
{
    QTest::addColumn<QPoint>("ptOutside");
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    const QRect rect = pictureOf(view, 2);
    QTest::newRow("strip of the bars") << QPoint(880, 200);
    QTest::newRow("margin right of the tiles") << QPoint(3 * view.tileWidth() + 4, rect.center().y());
    QTest::newRow("bar above a picture") << QPoint(rect.center().x(), rect.y() + rect.height() + 9);
    QTest::newRow("bar below a picture") << QPoint(rect.center().x(), rect.y() - 9);
    QTest::newRow("edge of a picture") << QPoint(rect.x(), rect.center().y());
}

void tst_view_picking::pressOutsideClearsTheSelection()
{
    QFETCH(QPoint, ptOutside);
    for (const Qt::MouseButton eButton : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
    {
        CRecordingView view;
        show(view, QSize(900, 400));
        loadThree(view);
        view.getSelectedList().append(QStringLiteral("SEQA"));
        // From the last tile, since a picture's left edge is the right edge of the one before it.
        moveTo(view, pictureOf(view, 2).center());
        moveTo(view, ptOutside);
        QSignalSpy spy(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
        press(view, eButton);
        QVERIFY(view.getSelectedList().isEmpty());
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.first().at(0).toString(), QString());
        QCOMPARE(spy.first().at(1).toString(), QString());
        QVERIFY(!view.m_pContextMenu->isVisible());
    }
}

void tst_view_picking::pressWithoutAMoveIsOutside()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    view.m_nActiveResult = -1;
    view.getSelectedList().append(QStringLiteral("SEQA"));
    QMouseEvent objEvent(QEvent::MouseButtonPress, widgetPos(view, pictureOf(view, 0).center()), Qt::LeftButton, Qt::LeftButton,
                         Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &objEvent);
    QVERIFY(view.getSelectedList().isEmpty());
}

void tst_view_picking::wheelAndKeysChangeNothing()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    const QPoint pt = pictureOf(view, 1).center();
    moveTo(view, pt);
    const QImage imgBefore = view.picture();
    QWheelEvent objWheel(widgetPos(view, pt), view.mapToGlobal(widgetPos(view, pt)), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view, &objWheel);
    QVERIFY(!objWheel.isAccepted());
    for (const Qt::Key eKey : {Qt::Key_Left, Qt::Key_Plus, Qt::Key_Escape, Qt::Key_Delete})
    {
        QKeyEvent objKey(QEvent::KeyPress, eKey, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &objKey);
        QVERIFY(!objKey.isAccepted());
    }
    QCOMPARE(view.picture(), imgBefore);
    QCOMPARE(view.m_nActiveResult, 1);
    QCOMPARE(view.getAnalysisParams().size(), 3);
}

void tst_view_picking::rightPressOpensTheMenu()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    moveTo(view, pictureOf(view, 2).center());
    press(view, Qt::RightButton);
    QVERIFY(view.m_pContextMenu->isVisible());
    QCOMPARE(view.m_nContextResult, 2);
    view.m_pContextMenu->hide();
    press(view, Qt::MiddleButton); // any next press ends what the menu was opened on
    QCOMPARE(view.m_nContextResult, -1);
}

void tst_view_picking::menuRemovesTheResultItWasOpenedOn()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    QSignalSpy spy(&view, SIGNAL(upadteAnlysisParameters(QString, QString)));
    view.m_pRemoveAction->trigger(); // no menu was opened
    QCOMPARE(view.getAnalysisParams().size(), 3);
    QVERIFY(spy.isEmpty());
    moveTo(view, pictureOf(view, 1).center());
    press(view, Qt::RightButton);
    view.m_pContextMenu->hide();
    const int nPaints = restOf(view);
    view.m_bResultsChanged = false;
    view.m_pRemoveAction->trigger();
    QVERIFY(view.m_bResultsChanged);
    QVERIFY(restOf(view) > nPaints);
    QCOMPARE(view.getAnalysisParams().size(), 2);
    QCOMPARE(view.getAnalysisParams()[1].strResultName, QStringLiteral("C"));
    QCOMPARE(view.getLoadedResult(), (QStringList{QStringLiteral("SEQA"), QStringLiteral("SEQC")}));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().at(0).toString(), QStringLiteral("SEQ"));
    QCOMPARE(spy.first().at(1).toString(), QStringLiteral("B"));
}

void tst_view_picking::removalKeepsSelectionAndHighlight()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    moveTo(view, pictureOf(view, 1).center());
    press(view, Qt::RightButton);
    view.m_pContextMenu->hide();
    // A key that the caller never added is no obstacle.
    view.getLoadedResult().removeAll(QStringLiteral("SEQB"));
    view.onClickRemoveAction();
    QCOMPARE(view.getLoadedResult().size(), 2);
    QCOMPARE(view.getSelectedList(), QStringList{QStringLiteral("SEQB")});
    QCOMPARE(view.getHighListedResult(), QStringLiteral("SEQB"));
    QCOMPARE(view.m_nActiveResult, 1);
    // Its frame is drawn around nobody.
    const QImage img = view.picture();
    QCOMPARE(countOf(img, pictureOf(view, 1).adjusted(-2, -2, 2, 2), isRed), 0);
}

void tst_view_picking::removingTheLastTileLeavesTheActiveIndex()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    loadThree(view);
    moveTo(view, pictureOf(view, 2).center());
    press(view, Qt::RightButton);
    view.m_pContextMenu->hide();
    view.onClickRemoveAction();
    QCOMPARE(view.m_nActiveResult, 2);
    view.picture();
    // A press and the menu's entry before the next move find nobody, and nothing is lost.
    press(view, Qt::LeftButton);
    QVERIFY(view.getSelectedList().isEmpty());
    view.m_nContextResult = 2;
    view.onClickRemoveAction();
    QCOMPARE(view.getAnalysisParams().size(), 2);
    moveTo(view, QPoint(880, 200));
    QCOMPARE(view.m_nActiveResult, -1);
}

void tst_view_picking::removingSelectedPassesOverTheFirst()
{
    CRecordingView view;
    for (const char* pszName : {"A", "B", "C", "D"})
    {
        view.load(result(QString::fromLatin1(pszName)));
    }
    view.getSelectedList() = QStringList{QStringLiteral("SEQA"), QStringLiteral("SEQB"), QStringLiteral("SEQC"), QStringLiteral("seqd")};
    QSignalSpy spy(&view, SIGNAL(upadteAnlysisParameters(QString, QString)));
    view.onClickRemoveSelectedAction();
    // After A the walk goes on at index 1, so B, which has moved to index 0, is passed over; case counts.
    QCOMPARE(view.getLoadedResult(), (QStringList{QStringLiteral("SEQB"), QStringLiteral("SEQD")}));
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy[0].at(1).toString(), QStringLiteral("A"));
    QCOMPARE(spy[1].at(1).toString(), QStringLiteral("C"));
}

void tst_view_picking::removingWithoutASelectionDoesNothing()
{
    CRecordingView view;
    view.load(result(QStringLiteral("A")));
    view.m_bResultsChanged = false;
    QSignalSpy spy(&view, SIGNAL(upadteAnlysisParameters(QString, QString)));
    view.onClickRemoveSelectedAction();
    QCOMPARE(view.getAnalysisParams().size(), 1);
    QVERIFY(spy.isEmpty());
    QVERIFY(!view.m_bResultsChanged);
}

void tst_view_picking::cursors_data()
{
    QTest::addColumn<int>("nHit");
    QTest::addColumn<bool>("bTool");
    QTest::addColumn<int>("nShape");
    for (const bool bTool : {false, true})
    {
        const QByteArray byTool = bTool ? ", tool on" : ", tool off";
        const int nOther = bTool ? Qt::CrossCursor : Qt::ArrowCursor;
        QTest::newRow("301" + byTool) << 301 << bTool << int(Qt::SizeFDiagCursor);
        QTest::newRow("303" + byTool) << 303 << bTool << int(Qt::SizeFDiagCursor);
        QTest::newRow("302" + byTool) << 302 << bTool << int(Qt::SizeBDiagCursor);
        QTest::newRow("304" + byTool) << 304 << bTool << int(Qt::SizeBDiagCursor);
        QTest::newRow("0" + byTool) << 0 << bTool << nOther;
        QTest::newRow("300" + byTool) << 300 << bTool << nOther;
        QTest::newRow("305" + byTool) << 305 << bTool << nOther;
    }
}

void tst_view_picking::cursors()
{
    QFETCH(int, nHit);
    QFETCH(bool, bTool);
    CRecordingView view;
    view.setSelectVoxel(bTool);
    view.changeMouseCursor(nHit);
    QTEST(int(view.cursor().shape()), "nShape");
}

void tst_view_picking::handlesArePickedByThePointer_data()
{
    QTest::addColumn<QPointF>("ptScene");
    QTest::addColumn<int>("nShape");
    QTest::newRow("x1, y1") << QPointF(-5, 4) << int(Qt::SizeFDiagCursor);
    QTest::newRow("x2, y2") << QPointF(5, -4) << int(Qt::SizeFDiagCursor);
    QTest::newRow("x2, y1") << QPointF(5, 4) << int(Qt::SizeBDiagCursor);
    QTest::newRow("x1, y2") << QPointF(-5, -4) << int(Qt::SizeBDiagCursor);
    QTest::newRow("between") << QPointF(0, 4) << int(Qt::CrossCursor);
    QTest::newRow("middle") << QPointF(0, 0) << int(Qt::CrossCursor);
    // The region is ten pixels wide and high, so five to each side; a millimetre is about nineteen.
    QTest::newRow("inside the region") << QPointF(-5.2, 4.2) << int(Qt::SizeFDiagCursor);
    QTest::newRow("outside it, left") << QPointF(-5.5, 4) << int(Qt::CrossCursor);
    QTest::newRow("outside it, above") << QPointF(-5, 4.5) << int(Qt::CrossCursor);
}

void tst_view_picking::handlesArePickedByThePointer()
{
    QFETCH(QPointF, ptScene);
    CRecordingView view;
    show(view, QSize(900, 400));
    for (const char* pszName : {"A", "B"})
    {
        sAnalysisBase objResult = result(QString::fromLatin1(pszName));
        objResult.fSelectLeft = -5.0f;
        objResult.fSelectTop = 4.0f;
        objResult.fSelectRight = 5.0f;
        objResult.fSelectBottom = -4.0f;
        view.load(objResult);
    }
    view.setSelectVoxel(true);
    view.picture();
    const QRect rect = pictureOf(view, 1);
    const double fScale = rect.width() / 20.0;
    moveTo(view, QPoint(rect.x() + qRound((ptScene.x() + 10.0) * fScale), rect.y() + qRound((ptScene.y() + 10.0) * fScale)));
    QTEST(int(view.cursor().shape()), "nShape");
    view.makeCurrent();
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
    // Where the rectangle has no width there is nothing to hit.
    view.getAnalysisParams()[1].fSelectRight = -5.0f;
    moveTo(view, QPoint(rect.x() + qRound(5.0 * fScale), rect.y() + qRound(14.0 * fScale)));
    QCOMPARE(int(view.cursor().shape()), int(Qt::CrossCursor));
    moveTo(view, QPoint(880, 200));
    QCOMPARE(int(view.cursor().shape()), int(Qt::CrossCursor));
}

void tst_view_picking::ofHandlesWithinReachTheFirstDrawnIsPicked()
{
    // All four within ten pixels, more than which no record of hits ever holds.
    CRecordingView view;
    show(view, QSize(900, 400));
    sAnalysisBase objResult = result(QStringLiteral("A"));
    objResult.fSelectLeft = -0.1f;
    objResult.fSelectTop = 0.1f;
    objResult.fSelectRight = 0.1f;
    objResult.fSelectBottom = -0.1f;
    view.load(objResult);
    view.setSelectVoxel(true);
    view.picture();
    const auto fnPickedAt = [&](const QPoint& pt)
    {
        moveTo(view, pictureOf(view, 0).center() + pt);
        QMouseEvent objEvent(QEvent::MouseMove, widgetPos(view, pictureOf(view, 0).center() + pt), Qt::NoButton, Qt::NoButton,
                             Qt::NoModifier);
        return view.doSelection(&objEvent);
    };
    QCOMPARE(fnPickedAt(QPoint(0, 0)), 301L);
    // Farther out only some are left: of 302 and 303 the latter is drawn first, of 302 and 304 the former.
    view.getAnalysisParams()[0].fSelectLeft = -2.0f;
    QCOMPARE(fnPickedAt(QPoint(0, 0)), 303L);
    view.getAnalysisParams()[0].fSelectBottom = -2.0f;
    QCOMPARE(fnPickedAt(QPoint(0, 0)), 302L);
    view.getAnalysisParams()[0].fSelectRight = 2.0f;
    view.getAnalysisParams()[0].fSelectLeft = -0.1f;
    view.getAnalysisParams()[0].fSelectTop = 2.0f;
    view.getAnalysisParams()[0].fSelectBottom = -0.1f;
    QCOMPARE(fnPickedAt(QPoint(0, 0)), 304L);
}

void tst_view_picking::hitRecords()
{
    // Count, nearest, farthest, names.
    unsigned int anHits[] = {1, 0x20000000u, 0x30000000u, 11, 2, 0x60000000u, 0x70000000u, 0, 12, 1, 0x40000000u, 0x40000000u, 13};
    QList<long> lstNames;
    QVERIFY(processHits(3, anHits, &lstNames, false));
    QCOMPARE(lstNames, (QList<long>{11, 0, 12, 13}));
    lstNames.clear();
    QVERIFY(processHits(3, anHits, &lstNames, true));
    QCOMPARE(lstNames, (QList<long>{12, 13, 11})); // the deepest first, without name 0
    lstNames.clear();
    QVERIFY(!processHits(0, anHits, &lstNames, true));
    QVERIFY(!processHits(0, nullptr, &lstNames, false));
    unsigned int anNameless[] = {1, 0, 0, 0};
    QVERIFY(!processHits(1, anNameless, &lstNames, true));
    QVERIFY(processHits(1, anNameless, &lstNames, false));
    const HitSet objNear = {1, 0.25f, 0.9f};
    const HitSet objFar = {2, 0.5f, 0.6f};
    QVERIFY(objNear < objFar);
    QVERIFY(!(objFar < objNear));
}

ORM_TEST_MAIN(tst_view_picking)
#include "tst_view_picking.moc"
