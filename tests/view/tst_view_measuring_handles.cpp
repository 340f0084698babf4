#include "MeasuringTestTools.h"

#include <QSignalSpy>

using namespace ViewTest;

/// The corners of the measuring rectangle under the pointer, and what becomes of the rectangle when the tool or its results go.
class tst_view_measuring_handles : public QObject
{
    Q_OBJECT

private slots:
    void handles_data();
    void handles();
    void handlesOfARectangleThatIsStillDrawn();
    void aClickOnAHandleLeavesTheOppositeCorner_data();
    void aClickOnAHandleLeavesTheOppositeCorner();
    void switching();
    void setSelectVoxelStoresTheFlagAlone();
    void switchingOffDuringADrag();
    void removingTheActiveResultDuringADrag();
    void removingAllResultsDuringADrag();
    void aPressAfterARemovalTakesTheLastTile();
};

void tst_view_measuring_handles::handles_data()
{
    QTest::addColumn<QPoint>("ptHandle"); // from the picture's middle, as are the corners that stay
    QTest::addColumn<QPoint>("ptStays");
    QTest::addColumn<int>("nShape");
    QTest::newRow("301: left top") << QPoint(-60, 40) << QPoint(70, -30) << int(Qt::SizeFDiagCursor);
    QTest::newRow("302: right top") << QPoint(70, 40) << QPoint(-60, -30) << int(Qt::SizeBDiagCursor);
    QTest::newRow("303: right bottom") << QPoint(70, -30) << QPoint(-60, 40) << int(Qt::SizeFDiagCursor);
    QTest::newRow("304: left bottom") << QPoint(-60, -30) << QPoint(70, 40) << int(Qt::SizeBDiagCursor);
}

void tst_view_measuring_handles::handles()
{
    QFETCH(QPoint, ptHandle);
    QFETCH(QPoint, ptStays);
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 1).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    pointer.moveTo(ptMiddle);
    QCOMPARE(int(view.cursor().shape()), int(Qt::CrossCursor));
    // A little beside the corner: the region is ten pixels wide.
    const QPoint ptGrip = ptMiddle + ptHandle + QPoint(2, -3);
    pointer.moveTo(ptGrip);
    QTEST(int(view.cursor().shape()), "nShape");
    view.setCursor(Qt::WaitCursor);
    pointer.press();
    QTEST(int(view.cursor().shape()), "nShape");
    QVERIFY(std::fabs(view.m_dragStart.x - (ptMiddle + ptStays).x()) < 1e-3);
    QVERIFY(std::fabs(view.m_dragStart.y - (ptMiddle + ptStays).y()) < 1e-3);
    QCOMPARE(view.m_dragEnd.x, double(ptGrip.x()));
    QCOMPARE(view.m_dragEnd.y, double(ptGrip.y()));
    const QPoint ptTo = ptMiddle + ptHandle + QPoint(-20, 15);
    pointer.moveTo(ptTo);
    QTEST(int(view.cursor().shape()), "nShape"); // it stays while the drag lasts
    const QVector<float> vecExpected = drawnRectangle(view, 1, ptMiddle + ptStays, ptTo);
    QVERIFY(allAreAbout(view, vecExpected));
    pointer.release();
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[2]), topFirst(vecExpected)));
    // The corner can be drawn over the one that stays.
    pointer.moveTo(ptTo);
    pointer.press();
    pointer.moveTo(ptMiddle + ptStays * 1.3);
    pointer.release();
    QVERIFY(
        isAbout(rectangleOf(view.getAnalysisParams()[0]), topFirst(drawnRectangle(view, 1, ptMiddle + ptStays, ptMiddle + ptStays * 1.3))));
}

void tst_view_measuring_handles::handlesOfARectangleThatIsStillDrawn()
{
    // With the lower left corner first, as a drag leaves it whose release is not the tool's, 301 is at the bottom and keeps what it kept.
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 0).center();
    pointer.moveTo(ptMiddle + QPoint(-60, -30));
    pointer.press();
    pointer.moveTo(ptMiddle + QPoint(70, 40));
    pointer.m_eModifiers = eShift;
    pointer.release();
    pointer.m_eModifiers = eNone;
    QVERIFY(view.getAnalysisParams()[0].fSelectTop < view.getAnalysisParams()[0].fSelectBottom);
    pointer.moveTo(ptMiddle + QPoint(-60, -30));
    QCOMPARE(int(view.cursor().shape()), int(Qt::SizeFDiagCursor));
    pointer.press();
    QVERIFY(std::fabs(view.m_dragStart.x - (ptMiddle.x() + 70)) < 1e-3);
    QVERIFY(std::fabs(view.m_dragStart.y - (ptMiddle.y() - 30)) < 1e-3);
}

void tst_view_measuring_handles::aClickOnAHandleLeavesTheOppositeCorner_data()
{
    handles_data();
}

void tst_view_measuring_handles::aClickOnAHandleLeavesTheOppositeCorner()
{
    QFETCH(QPoint, ptHandle);
    QFETCH(QPoint, ptStays);
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 1).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.click(ptMiddle + ptHandle);
    QCOMPARE(spy.size(), 1);
    const QVector<float> vecExpected = drawnRectangle(view, 1, ptMiddle + ptStays, ptMiddle + ptStays);
    for (const sAnalysisBase& objResult : view.getAnalysisParams())
    {
        QVERIFY(isAbout(rectangleOf(objResult), vecExpected));
        QCOMPARE(objResult.fSelectLeft, objResult.fSelectRight);
        QCOMPARE(objResult.fSelectTop, objResult.fSelectBottom);
    }
    // Neither rectangle nor corners are left to be seen or picked.
    pointer.moveTo(ptMiddle + ptStays);
    QCOMPARE(int(view.cursor().shape()), int(Qt::CrossCursor));
    const QImage img = view.picture();
    QCOMPARE(countOf(img, img.rect(), isGreen), 0);
}

void tst_view_measuring_handles::switching()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    QCOMPARE(int(view.cursor().shape()), int(Qt::CrossCursor));
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 1).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    QList<QSet<int>> lstSelected;
    QList<QVector<float>> lstRectangles;
    for (int i = 0; i < 3; ++i)
    {
        lstSelected.append(selectedVoxels(view, i));
        lstRectangles.append(rectangleOf(view.getAnalysisParams()[i]));
        QVERIFY(!lstSelected[i].isEmpty());
    }
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    int nPaints = restOf(view);
    view.onSelectVoxelS(false);
    QVERIFY(!view.m_bSelectVoxel);
    QCOMPARE(int(view.cursor().shape()), int(Qt::ArrowCursor));
    QVERIFY(restOf(view) > nPaints);
    for (int i = 0; i < 3; ++i)
    {
        QVERIFY(selectedVoxels(view, i).isEmpty());
        QCOMPARE(rectangleOf(view.getAnalysisParams()[i]), lstRectangles[i]);
    }
    // Presses, drags and turns in between do not harm what was drawn.
    pointer.drag(ptMiddle, ptMiddle + QPoint(10, 10));
    nPaints = restOf(view);
    view.onSelectVoxelS(true);
    QVERIFY(view.m_bSelectVoxel);
    QCOMPARE(int(view.cursor().shape()), int(Qt::CrossCursor));
    QVERIFY(restOf(view) > nPaints);
    for (int i = 0; i < 3; ++i)
    {
        QCOMPARE(selectedVoxels(view, i), lstSelected[i]);
        QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[i]), lstRectangles[i]));
    }
    QVERIFY(spy.isEmpty());
}

void tst_view_measuring_handles::setSelectVoxelStoresTheFlagAlone()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 1).center();
    pointer.drag(ptMiddle + QPoint(-60, -30), ptMiddle + QPoint(70, 40));
    const QSet<int> setBefore = selectedVoxels(view, 1);
    view.setCursor(Qt::WaitCursor);
    const int nPaints = restOf(view);
    view.setSelectVoxel(false);
    QVERIFY(!view.m_bSelectVoxel);
    QCOMPARE(selectedVoxels(view, 1), setBefore);
    view.clearVoxelSelection(false);
    view.setSelectVoxel(true);
    QVERIFY(selectedVoxels(view, 1).isEmpty());
    QCOMPARE(int(view.cursor().shape()), int(Qt::WaitCursor));
    QCOMPARE(restOf(view), nPaints);
}

void tst_view_measuring_handles::switchingOffDuringADrag()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 0).center();
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.moveTo(ptMiddle);
    pointer.press();
    pointer.moveTo(ptMiddle + QPoint(40, 40));
    const QVector<float> vecDrawn = rectangleOf(view.getAnalysisParams()[0]);
    view.onSelectVoxelS(false);
    pointer.moveTo(ptMiddle + QPoint(60, 60));
    QCOMPARE(rectangleOf(view.getAnalysisParams()[0]), vecDrawn);
    pointer.release();
    QVERIFY(!view.m_bToolDragging);
    QVERIFY(spy.isEmpty());
    QVERIFY(selectedVoxels(view, 0).isEmpty());
    // What was drawn counts when the tool comes back, and the drag that was cut short as a movement: a click draws from there on.
    view.onSelectVoxelS(true);
    QVERIFY(!selectedVoxels(view, 0).isEmpty());
    QVERIFY(view.m_bToolMoved);
    pointer.moveTo(ptMiddle + QPoint(10, 10));
    pointer.press();
    pointer.release();
    QVERIFY(!view.m_bToolMoved);
    QCOMPARE(spy.size(), 1);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[0]),
                    topFirst(drawnRectangle(view, 0, ptMiddle + QPoint(10, 10), ptMiddle + QPoint(40, 40)))));
}

void tst_view_measuring_handles::removingTheActiveResultDuringADrag()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    for (const Qt::KeyboardModifiers eModifiers : {eControl, eNone})
    {
        const int nLast = view.getAnalysisParams().size() - 1;
        const QPoint ptStart = pictureOf(view, nLast).center();
        pointer.m_eModifiers = eModifiers;
        pointer.moveTo(ptStart);
        pointer.press();
        pointer.moveTo(ptStart + QPoint(30, 30));
        const QString strKey = view.getLoadedResult().last();
        view.getSelectedList() = QStringList{strKey};
        view.onClickRemoveSelectedAction();
        QCOMPARE(view.getAnalysisParams().size(), nLast);
        QCOMPARE(view.m_nActiveResult, nLast); // past the end
        pointer.moveTo(ptStart + QPoint(35, 33));
        view.picture();
        pointer.release();
        QVERIFY(!view.m_bToolDragging);
        QCOMPARE(spy.size(), 1);
        spy.clear();
        view.onSelectVoxelS(false);
        view.onSelectVoxelS(true);
    }
    QCOMPARE(view.getLoadedResult(), QStringList{QStringLiteral("SEQA")});
}

void tst_view_measuring_handles::removingAllResultsDuringADrag()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint ptMiddle = pictureOf(view, 0).center();
    pointer.moveTo(ptMiddle);
    pointer.press();
    pointer.moveTo(ptMiddle + QPoint(30, 30));
    view.clear3DView();
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    pointer.moveTo(ptMiddle + QPoint(40, 40)); // nobody listens any more
    view.picture();
    pointer.release();
    QCOMPARE(spy.size(), 1);
    QVERIFY(!view.m_bToolDragging);
    view.onSelectVoxelS(false);
    view.onSelectVoxelS(true);
    pointer.click(ptMiddle);
    view.picture();
    // A key without a result of its own: the press has no tile to fall back on.
    view.getLoadedResult().append(QStringLiteral("SEQlost"));
    view.m_nActiveResult = 3;
    pointer.press();
    QCOMPARE(view.m_nActiveResult, -1);
    pointer.release();
}

void tst_view_measuring_handles::aPressAfterARemovalTakesTheLastTile()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    pointer.moveTo(pictureOf(view, 2).center());
    view.getSelectedList() = QStringList{QStringLiteral("SEQC")};
    view.onClickRemoveSelectedAction();
    QCOMPARE(view.m_nActiveResult, 2);
    QSignalSpy spy(&view, SIGNAL(updateWavelengthCombo(QString, QString)));
    pointer.press();
    QCOMPARE(view.m_nActiveResult, 1);
    QVERIFY(view.m_bToolDragging);
    QVERIFY(spy.isEmpty()); // there is no such result to tell of
    view.picture();
    pointer.release();
}

ORM_TEST_MAIN(tst_view_measuring_handles)
#include "tst_view_measuring_handles.moc"
