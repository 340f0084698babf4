#include "MeasuringTestTools.h"

#include <QMenu>
#include <QSignalSpy>
#include <QWindow>

using namespace ViewTest;

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::MouseButtons)
Q_DECLARE_METATYPE(Qt::KeyboardModifiers)

namespace
{
const Qt::KeyboardModifiers eAlt = Qt::AltModifier;

const QVector<float> vecNone = {0.0f, 0.0f, 0.0f, 0.0f};
} // namespace

/// What the pointer does with the measuring tool on: which presses, drags and releases are the tool's, and what they make of its rectangle.
class tst_view_measuring : public QObject
{
    Q_OBJECT

private slots:
    void presses_data();
    void presses();
    void aPressDuringADragIsIgnored();
    void pressTellsTheResult();
    void drags_data();
    void drags();
    void releases_data();
    void releases();
    void aDragDrawsInAllTiles();
    void aDragWithControlDrawsInTheActiveTile();
    void aDragWithControlNeedsNoPress();
    void aDragStopsAtTheEdgesOfItsTile_data();
    void aDragStopsAtTheEdgesOfItsTile();
    void aDragFromOutsideDrawsNothing();
    void aPressKeepsTheEndOfTheLastDrag();
    void aReleaseBelowAPixelChangesNothing_data();
    void aReleaseBelowAPixelChangesNothing();
    void aClickOffAllTiles_data();
    void aClickOffAllTiles();
    void theWidgetsOwnEvents();
};

void tst_view_measuring::presses_data()
{
    QTest::addColumn<Qt::MouseButton>("eButton");
    QTest::addColumn<Qt::KeyboardModifiers>("eModifiers");
    QTest::addColumn<bool>("bTool");
    QTest::newRow("left") << Qt::LeftButton << eNone << true;
    QTest::newRow("left, control") << Qt::LeftButton << eControl << true;
    QTest::newRow("left, shift") << Qt::LeftButton << eShift << false;
    QTest::newRow("left, alt") << Qt::LeftButton << eAlt << false;
    QTest::newRow("left, control and shift") << Qt::LeftButton << (eControl | eShift) << false;
    QTest::newRow("right") << Qt::RightButton << eNone << false;
    QTest::newRow("right, control") << Qt::RightButton << eControl << false;
    QTest::newRow("middle") << Qt::MiddleButton << eNone << false;
    QTest::newRow("middle, control") << Qt::MiddleButton << eControl << false;
    QTest::newRow("back") << Qt::BackButton << eNone << false;
}

void tst_view_measuring::presses()
{
    QFETCH(Qt::MouseButton, eButton);
    QFETCH(Qt::KeyboardModifiers, eModifiers);
    QFETCH(bool, bTool);
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QStringList lstBefore = {QStringLiteral("SEQA"), QStringLiteral("SEQC")};
    view.getSelectedList() = lstBefore;
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 1).center();
    pointer.moveTo(pt);
    QCOMPARE(view.m_nActiveResult, 1);
    view.m_nToolHit = 9;
    pointer.m_eModifiers = eModifiers;
    pointer.press(eButton);
    QCOMPARE(view.m_bToolDragging, bTool);
    QCOMPARE(view.m_nToolHit, 0);
    QCOMPARE(view.getSelectedList(), bTool ? lstBefore : QStringList{QStringLiteral("SEQB")});
    QVERIFY(!view.m_pContextMenu->isVisible());
    QCOMPARE(view.m_nContextResult, -1);
    QCOMPARE(view.m_dragStart.x, bTool ? double(pt.x()) : 0.0);
    QCOMPARE(view.m_dragStart.y, bTool ? double(pt.y()) : 0.0);
    // Outside of all tiles: the tool's own press leaves the selection alone there too.
    pointer.release(eButton);
    view.getSelectedList() = lstBefore;
    pointer.moveTo(QPoint(880, 200));
    QCOMPARE(view.m_nActiveResult, -1);
    pointer.press(eButton);
    QCOMPARE(view.m_bToolDragging, bTool);
    QCOMPARE(view.getSelectedList(), bTool ? lstBefore : QStringList());
    QVERIFY(!view.m_pContextMenu->isVisible());
}

void tst_view_measuring::aPressDuringADragIsIgnored()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    view.getSelectedList().append(QStringLiteral("SEQC"));
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 1).center();
    pointer.moveTo(pt);
    pointer.press();
    view.m_nToolHit = 9;
    view.m_nContextResult = 2;
    QSignalSpy spy(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
    for (const Qt::MouseButton eButton : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
    {
        pointer.press(eButton);
    }
    QCOMPARE(view.getSelectedList(), QStringList{QStringLiteral("SEQC")});
    QVERIFY(spy.isEmpty());
    QVERIFY(!view.m_pContextMenu->isVisible());
    QCOMPARE(view.m_nContextResult, -1); // what comes first in every press
    QCOMPARE(view.m_nToolHit, 9);
    QVERIFY(view.m_bToolDragging);
}

void tst_view_measuring::pressTellsTheResult()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    QSignalSpy spyCombo(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
    QSignalSpy spyPlot(&view, SIGNAL(updatePlotTab()));
    CPointer pointer(view);
    pointer.moveTo(pictureOf(view, 1).center());
    pointer.press();
    QCOMPARE(spyCombo.size(), 1);
    QCOMPARE(spyCombo[0].at(0).toString(), QStringLiteral("SEQ"));
    QCOMPARE(spyCombo[0].at(1).toString(), QStringLiteral("B"));
    QCOMPARE(spyPlot.size(), 0);
    pointer.release();
    QCOMPARE(spyCombo.size(), 1);
    QCOMPARE(spyPlot.size(), 1);
    // Off all tiles nothing is told of a result, not even that there is none.
    pointer.moveTo(QPoint(880, 200));
    pointer.press();
    pointer.release();
    QCOMPARE(spyCombo.size(), 1);
}

void tst_view_measuring::drags_data()
{
    QTest::addColumn<bool>("bOn");
    QTest::addColumn<bool>("bPressed");
    QTest::addColumn<Qt::MouseButtons>("eButtons");
    QTest::addColumn<Qt::KeyboardModifiers>("eModifiers");
    QTest::addColumn<int>("nTiles"); // whose rectangles move; 0: the pointer hovers
    const Qt::MouseButtons eLeft = Qt::LeftButton;
    const Qt::MouseButtons eBoth = Qt::LeftButton | Qt::RightButton;
    const Qt::MouseButtons eRight = Qt::RightButton;
    const Qt::MouseButtons eNoButton = Qt::NoButton;
    QTest::newRow("left after a press") << true << true << eLeft << eNone << 3;
    QTest::newRow("left without a press") << true << false << eLeft << eNone << 0;
    QTest::newRow("left, control after a press") << true << true << eLeft << eControl << 1;
    QTest::newRow("left, control without a press") << true << false << eLeft << eControl << 1;
    QTest::newRow("left, shift after a press") << true << true << eLeft << eShift << 0;
    QTest::newRow("left, control and shift") << true << true << eLeft << (eControl | eShift) << 0;
    QTest::newRow("left and right") << true << true << eBoth << eNone << 0;
    QTest::newRow("left and right, control") << true << true << eBoth << eControl << 0;
    QTest::newRow("right") << true << true << eRight << eNone << 0;
    QTest::newRow("right, control") << true << false << eRight << eControl << 0;
    QTest::newRow("no button after a press") << true << true << eNoButton << eNone << 0;
    QTest::newRow("no button, control") << true << false << eNoButton << eControl << 0;
    QTest::newRow("tool off, left") << false << false << eLeft << eNone << 0;
    QTest::newRow("tool off, left, control") << false << false << eLeft << eControl << 0;
}

void tst_view_measuring::drags()
{
    QFETCH(bool, bOn);
    QFETCH(bool, bPressed);
    QFETCH(Qt::MouseButtons, eButtons);
    QFETCH(Qt::KeyboardModifiers, eModifiers);
    QFETCH(int, nTiles);
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 1).center();
    pointer.moveTo(pt);
    if (bPressed)
    {
        pointer.press();
    }
    else
    {
        view.m_dragStart = Coord3d(pt.x(), pt.y(), 0.0);
    }
    if (!bOn)
    {
        view.onSelectVoxelS(false);
    }
    pointer.m_eButtons = eButtons;
    pointer.m_eModifiers = eModifiers;
    const int nPaints = restOf(view);
    // Onto the next tile, which a hovering pointer makes the active one.
    pointer.moveTo(pictureOf(view, 2).center());
    QVERIFY(restOf(view) > nPaints);
    QCOMPARE(view.m_nActiveResult, nTiles == 0 ? 2 : 1);
    QCOMPARE(view.m_bToolMoved, nTiles != 0);
    for (int i = 0; i < 3; ++i)
    {
        const bool bMoved = nTiles == 3 || (nTiles == 1 && i == 1);
        QCOMPARE(rectangleOf(view.getAnalysisParams()[i]) != vecNone, bMoved);
        QVERIFY(selectedVoxels(view, i).isEmpty()); // nothing is picked before the release
    }
    QCOMPARE(view.m_bToolDragging, bPressed);
}

void tst_view_measuring::releases_data()
{
    QTest::addColumn<bool>("bOn");
    QTest::addColumn<Qt::MouseButton>("eButton");
    QTest::addColumn<Qt::KeyboardModifiers>("eModifiers");
    QTest::addColumn<bool>("bSelects");
    QTest::newRow("left") << true << Qt::LeftButton << eNone << true;
    QTest::newRow("left, control") << true << Qt::LeftButton << eControl << true;
    QTest::newRow("left, shift") << true << Qt::LeftButton << eShift << false;
    QTest::newRow("left, control and shift") << true << Qt::LeftButton << (eControl | eShift) << false;
    QTest::newRow("right") << true << Qt::RightButton << eNone << false;
    QTest::newRow("middle, control") << true << Qt::MiddleButton << eControl << false;
    QTest::newRow("tool off, left") << false << Qt::LeftButton << eNone << false;
    QTest::newRow("tool off, left, control") << false << Qt::LeftButton << eControl << false;
}

void tst_view_measuring::releases()
{
    QFETCH(bool, bOn);
    QFETCH(Qt::MouseButton, eButton);
    QFETCH(Qt::KeyboardModifiers, eModifiers);
    QFETCH(bool, bSelects);
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 0).center();
    pointer.moveTo(pt);
    pointer.press();
    pointer.moveTo(pt + QPoint(40, 30));
    QVERIFY(view.m_bToolMoved);
    view.setSelectVoxel(bOn);
    view.m_nToolHit = 9;
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    const int nPaints = restOf(view);
    pointer.m_eModifiers = eModifiers;
    pointer.release(eButton);
    QVERIFY(!view.m_bToolDragging);
    // A drag that the tool's end cuts short still counts as moved at the tool's next release.
    QCOMPARE(view.m_bToolMoved, !bOn);
    QCOMPARE(view.m_nToolHit, bOn ? 0 : 9);
    QCOMPARE(spy.size(), bSelects ? 1 : 0);
    QCOMPARE(selectedVoxels(view, 0).isEmpty(), !bSelects);
    QCOMPARE(restOf(view) > nPaints, bSelects);
}

void tst_view_measuring::aDragDrawsInAllTiles()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptFrom = pictureOf(view, 1).center() + QPoint(-50, 40);
    const QPoint ptTo = pictureOf(view, 1).center() + QPoint(30, -60);
    pointer.moveTo(ptFrom);
    pointer.press();
    pointer.moveTo(ptFrom + QPoint(7, -9));
    pointer.moveTo(ptTo);
    const QVector<float> vecExpected = drawnRectangle(view, 1, ptFrom, ptTo);
    QVERIFY(allAreAbout(view, vecExpected));
    pointer.release();
    QVERIFY(allAreAbout(view, topFirst(vecExpected)));
    QCOMPARE(view.m_nActiveResult, 1);
    view.makeCurrent();
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
}

void tst_view_measuring::aDragWithControlDrawsInTheActiveTile()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 1).center();
    pointer.drag(pt + QPoint(-20, -20), pt + QPoint(20, 20));
    const QVector<float> vecOthers = rectangleOf(view.getAnalysisParams()[0]);
    pointer.m_eModifiers = eControl;
    pointer.drag(pt + QPoint(-60, -50), pt + QPoint(80, 45));
    QVERIFY(
        isAbout(rectangleOf(view.getAnalysisParams()[1]), topFirst(drawnRectangle(view, 1, pt + QPoint(-60, -50), pt + QPoint(80, 45)))));
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[0]), vecOthers));
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[2]), vecOthers));
}

void tst_view_measuring::aDragWithControlNeedsNoPress()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptFrom = pictureOf(view, 0).center() + QPoint(-40, -30);
    pointer.drag(ptFrom, ptFrom + QPoint(20, 20));
    const QVector<float> vecOthers = rectangleOf(view.getAnalysisParams()[1]);
    // The button went down elsewhere; the first tile keeps the start of its last drag while the pointer stays on it.
    pointer.m_eModifiers = eControl;
    pointer.m_eButtons = Qt::LeftButton;
    const QPoint ptTo = ptFrom + QPoint(90, 75);
    pointer.moveTo(ptTo);
    QVERIFY(!view.m_bToolDragging);
    QVERIFY(view.m_bToolMoved);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[0]), drawnRectangle(view, 0, ptFrom, ptTo)));
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[1]), vecOthers));
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[2]), vecOthers));
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.release();
    QCOMPARE(spy.size(), 1);
    QVERIFY(!selectedVoxels(view, 0).isEmpty());
    // On any other tile a hover has zeroed the corners, so there the drag begins at the window's corner.
    pointer.m_eModifiers = eNone;
    pointer.moveTo(pictureOf(view, 1).center());
    pointer.m_eModifiers = eControl;
    pointer.m_eButtons = Qt::LeftButton;
    pointer.moveTo(pictureOf(view, 1).center() + QPoint(5, 5));
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[1]),
                    drawnRectangle(view, 1, QPoint(0, 0), pictureOf(view, 1).center() + QPoint(5, 5))));
}

void tst_view_measuring::aDragStopsAtTheEdgesOfItsTile_data()
{
    QTest::addColumn<QPoint>("ptTo"); // from the picture's lower left corner, in hundredths of its size
    QTest::addColumn<QPoint>("ptStop");
    QTest::newRow("left") << QPoint(-20, 30) << QPoint(0, 30);
    QTest::newRow("right, over the next tile") << QPoint(150, 70) << QPoint(100, 70);
    QTest::newRow("below") << QPoint(30, -10) << QPoint(30, 0);
    QTest::newRow("above") << QPoint(70, 120) << QPoint(70, 100);
    QTest::newRow("over a corner") << QPoint(-15, 130) << QPoint(0, 100);
}

void tst_view_measuring::aDragStopsAtTheEdgesOfItsTile()
{
    QFETCH(QPoint, ptTo);
    QFETCH(QPoint, ptStop);
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRect rect = pictureOf(view, 1);
    const auto fnPlace = [&](const QPoint& pt)
    { return rect.topLeft() + QPoint(pt.x() * rect.width() / 100, pt.y() * rect.height() / 100); };
    CPointer pointer(view);
    pointer.moveTo(rect.center());
    pointer.press();
    pointer.moveTo(fnPlace(ptTo));
    QCOMPARE(view.m_dragEnd.x, double(fnPlace(ptStop).x()));
    QCOMPARE(view.m_dragEnd.y, double(fnPlace(ptStop).y()));
    QCOMPARE(view.m_nActiveResult, 1);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[2]), drawnRectangle(view, 1, rect.center(), fnPlace(ptStop))));
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.release();
    QCOMPARE(spy.size(), 1);
}

void tst_view_measuring::aDragFromOutsideDrawsNothing()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    pointer.drag(pictureOf(view, 0).center() - QPoint(50, 50), pictureOf(view, 0).center() + QPoint(50, 50));
    const QVector<float> vecBefore = rectangleOf(view.getAnalysisParams()[0]);
    const QSet<int> setBefore = selectedVoxels(view, 0);
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.moveTo(QPoint(880, 200));
    pointer.press();
    QVERIFY(view.m_bToolDragging);
    const int nPaints = restOf(view);
    pointer.moveTo(pictureOf(view, 0).center());
    QVERIFY(view.m_bToolMoved);
    QCOMPARE(view.m_nActiveResult, -1); // the drag does not hover
    QCOMPARE(restOf(view), nPaints);
    pointer.release();
    QCOMPARE(rectangleOf(view.getAnalysisParams()[0]), vecBefore);
    QCOMPARE(selectedVoxels(view, 0), setBefore);
    QVERIFY(spy.isEmpty()); // it moved, and its corners are less than a pixel apart
}

void tst_view_measuring::aPressKeepsTheEndOfTheLastDrag()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 0).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    pointer.moveTo(ptMiddle);
    pointer.press();
    QCOMPARE(view.m_dragStart.x, double(ptMiddle.x()));
    QCOMPARE(view.m_dragStart.y, double(ptMiddle.y()));
    QCOMPARE(view.m_dragEnd.x, double(ptMiddle.x() + 70));
    QCOMPARE(view.m_dragEnd.y, double(ptMiddle.y() + 40));
    // So a release that nothing moved before takes one pixel at the press, not what lies up to there.
    pointer.release();
    QCOMPARE(view.m_dragEnd.x, double(ptMiddle.x()));
    QCOMPARE(view.m_dragEnd.y, double(ptMiddle.y()));
}

void tst_view_measuring::aReleaseBelowAPixelChangesNothing_data()
{
    QTest::addColumn<QPoint>("ptMove");
    QTest::newRow("no width") << QPoint(0, 40);
    QTest::newRow("no height") << QPoint(40, 0);
    QTest::newRow("neither") << QPoint(0, 0);
}

void tst_view_measuring::aReleaseBelowAPixelChangesNothing()
{
    QFETCH(QPoint, ptMove);
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 1).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    const QSet<int> setBefore = selectedVoxels(view, 1);
    const QSet<int> setOther = selectedVoxels(view, 2);
    QVERIFY(!setBefore.isEmpty());
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.moveTo(ptMiddle);
    pointer.press();
    pointer.moveTo(ptMiddle + QPoint(30, 30));
    pointer.moveTo(ptMiddle + ptMove);
    const int nPaints = restOf(view);
    pointer.release();
    QCOMPARE(restOf(view), nPaints);
    QVERIFY(spy.isEmpty());
    QCOMPARE(selectedVoxels(view, 1), setBefore);
    QCOMPARE(selectedVoxels(view, 2), setOther);
    QVERIFY(!view.m_bToolDragging);
    QVERIFY(!view.m_bToolMoved);
}

void tst_view_measuring::aClickOffAllTiles_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("eModifiers");
    QTest::addColumn<bool>("bClears");
    QTest::newRow("plain") << eNone << true;
    QTest::newRow("with control") << eControl << false;
}

void tst_view_measuring::aClickOffAllTiles()
{
    QFETCH(Qt::KeyboardModifiers, eModifiers);
    QFETCH(bool, bClears);
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 1).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    QVERIFY(!selectedVoxels(view, 0).isEmpty());
    const QVector<float> vecBefore = rectangleOf(view.getAnalysisParams()[2]);
    QSignalSpy spyPlot(&view, SIGNAL(updatePlotTab()));
    QSignalSpy spyCombo(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
    pointer.m_eModifiers = eModifiers;
    pointer.click(QPoint(880, 200));
    QCOMPARE(spyPlot.size(), 1);
    QVERIFY(spyCombo.isEmpty());
    for (int i = 0; i < 3; ++i)
    {
        QCOMPARE(selectedVoxels(view, i).isEmpty(), bClears);
    }
    QCOMPARE(rectangleOf(view.getAnalysisParams()[2]), vecBefore);
    QVERIFY(!view.doVoxelSelection(1.0, 1.0, 2.0, 2.0, false));
    QVERIFY(!view.doVoxelSelection(1.0, 1.0, 2.0, 2.0, true));
}

void tst_view_measuring::theWidgetsOwnEvents()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRect rect = pictureOf(view, 1);
    const auto fnPos = [&](const QPoint& pt) { return QPoint(pt.x(), view.height() - pt.y()); };
    const QPoint ptFrom = rect.center() + QPoint(-50, -40);
    const QPoint ptTo = rect.center() + QPoint(45, 60);
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    QWindow* pWindow = view.windowHandle();
    QTest::mouseMove(pWindow, fnPos(ptFrom));
    QTRY_COMPARE(view.m_nActiveResult, 1);
    QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, fnPos(ptFrom));
    QTRY_VERIFY(view.m_bToolDragging);
    QTest::mouseMove(pWindow, fnPos(ptTo));
    QTRY_VERIFY(view.m_bToolMoved);
    QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, fnPos(ptTo));
    QTRY_VERIFY(!view.m_bToolDragging);
    QCOMPARE(spy.size(), 1);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[0]), topFirst(drawnRectangle(view, 1, ptFrom, ptTo))));
}

ORM_TEST_MAIN(tst_view_measuring)
#include "tst_view_measuring.moc"
