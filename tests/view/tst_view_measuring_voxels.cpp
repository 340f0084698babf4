#include "MeasuringTestTools.h"

#include <QSignalSpy>
#include <QVector3D>

using namespace ViewTest;

/// Which voxels a rectangle selects, and what their sum is.
class tst_view_measuring_voxels : public QObject
{
    Q_OBJECT

private slots:
    void sumsAreThoseUnderTheRectangle_data();
    void sumsAreThoseUnderTheRectangle();
    void theWholePictureSelectsAll();
    void twoHalvesAddUp_data();
    void twoHalvesAddUp();
    void besideTheSubjectNothingIsSelected();
    void aClickSelectsOnePixel();
    void theBoxIsNotTurned();
    void hiddenVoxelsCount();
    void withControlTheOthersKeepTheirs();
    void withControlATileWithoutARectangleIsPickedInItsMiddle();
    void theRectangleOutlivesAResize();
    void theRectangleOutlivesATurn();
    void selectionsAreReplaced();
};

void tst_view_measuring_voxels::sumsAreThoseUnderTheRectangle_data()
{
    QTest::addColumn<int>("nActive");
    QTest::addColumn<QRectF>("rectPart");
    QTest::addColumn<QVector3D>("vecAngles");
    const QRectF rectQuarter(QPointF(52, 49), QPointF(96, 94));
    const QRectF rectMiddle(QPointF(43, 31), QPointF(57, 64));
    const QRectF rectSliver(QPointF(38, 5), QPointF(46, 92));
    const QRectF rectUpwards(QPointF(60, 70), QPointF(38, 22));
    QTest::newRow("middle") << 0 << rectMiddle << QVector3D();
    QTest::newRow("middle, of another tile") << 1 << rectMiddle << QVector3D();
    QTest::newRow("quarter") << 2 << rectQuarter << QVector3D();
    QTest::newRow("sliver") << 0 << rectSliver << QVector3D();
    QTest::newRow("drawn from the upper right") << 1 << rectUpwards << QVector3D();
    QTest::newRow("turned as the wheel turns") << 0 << rectMiddle << QVector3D(0, 33, 0);
    QTest::newRow("turned to the side") << 1 << rectQuarter << QVector3D(0, 90, 0);
    QTest::newRow("turned to the back") << 2 << rectMiddle << QVector3D(0, 180, 0);
    QTest::newRow("turned the other way") << 0 << rectSliver << QVector3D(0, -127, 0);
    QTest::newRow("turned about x") << 1 << rectMiddle << QVector3D(50, 0, 0);
    QTest::newRow("turned about z") << 2 << rectUpwards << QVector3D(0, 0, 71);
    QTest::newRow("turned about all three") << 0 << rectMiddle << QVector3D(20, 130, -40);
}

void tst_view_measuring_voxels::sumsAreThoseUnderTheRectangle()
{
    QFETCH(int, nActive);
    QFETCH(QRectF, rectPart);
    QFETCH(QVector3D, vecAngles);
    const Coord3d objAngles(double(vecAngles.x()), double(vecAngles.y()), double(vecAngles.z()));
    CRecordingView view;
    showMeasuring(view, threeResults());
    turn(view, objAngles);
    const QRectF rect = partOf(view, nActive, rectPart);
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    drag(view, rect);
    QCOMPARE(spy.size(), 1);
    for (int i = 0; i < 3; ++i)
    {
        const SUnder objUnder = voxelsUnder(view, i, movedTo(view, rect, nActive, i).normalized(), objAngles);
        QCOMPARE(objUnder.nUnsure, 0); // the test's own choice is no question of rounding
        QVERIFY(!objUnder.setVoxels.isEmpty());
        QVERIFY(objUnder.setVoxels.size() < view.getAnalysisParams()[i].objVolume.getNoOfVoxels());
        QCOMPARE(selectedVoxels(view, i), objUnder.setVoxels);
        QVERIFY(std::fabs(selectedSum(view, i) - objUnder.fSum) <= 1e-6 * objUnder.fSum);
    }
}

void tst_view_measuring_voxels::theWholePictureSelectsAll()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRect rect = pictureOf(view, 1);
    CPointer pointer(view);
    pointer.drag(rect.topLeft() + QPoint(1, 1), rect.topLeft() + QPoint(2 * rect.width(), 2 * rect.height()));
    for (int i = 0; i < 3; ++i)
    {
        C3DVolume& objVolume = view.getAnalysisParams()[i].objVolume;
        QCOMPARE(selectedVoxels(view, i).size(), int(objVolume.getNoOfVoxels()));
        QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), objVolume.getTotalFluxForSelectedVoxels(false));
    }
}

void tst_view_measuring_voxels::twoHalvesAddUp_data()
{
    QTest::addColumn<QRectF>("rectFirst");
    QTest::addColumn<QRectF>("rectSecond");
    QTest::newRow("left and right") << QRectF(QPointF(1, 1), QPointF(47, 99)) << QRectF(QPointF(99, 99), QPointF(47, 1));
    QTest::newRow("below and above") << QRectF(QPointF(1, 1), QPointF(99, 53)) << QRectF(QPointF(99, 99), QPointF(1, 53));
}

void tst_view_measuring_voxels::twoHalvesAddUp()
{
    QFETCH(QRectF, rectFirst);
    QFETCH(QRectF, rectSecond);
    CRecordingView view;
    showMeasuring(view, threeResults());
    drag(view, partOf(view, 0, rectFirst));
    const QList<QSet<int>> lstFirst = allSelected(view);
    QList<double> lstSums;
    for (int i = 0; i < 3; ++i)
    {
        lstSums.append(selectedSum(view, i));
    }
    drag(view, partOf(view, 0, rectSecond));
    const QList<QSet<int>> lstSecond = allSelected(view);
    for (int i = 0; i < 3; ++i)
    {
        C3DVolume& objVolume = view.getAnalysisParams()[i].objVolume;
        QVERIFY(!lstFirst[i].isEmpty());
        QVERIFY(!lstSecond[i].isEmpty());
        QVERIFY(!lstFirst[i].intersects(lstSecond[i]));
        QCOMPARE(lstFirst[i].size() + lstSecond[i].size(), int(objVolume.getNoOfVoxels()));
        const double fTotal = double(objVolume.getTotalFluxForSelectedVoxels(false));
        QVERIFY(std::fabs(lstSums[i] + selectedSum(view, i) - fTotal) <= 1e-6 * fTotal);
    }
}

void tst_view_measuring_voxels::besideTheSubjectNothingIsSelected()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    drag(view, partOf(view, 0, QRectF(QPointF(40, 40), QPointF(60, 60))));
    QVERIFY(!selectedVoxels(view, 0).isEmpty());
    QSignalSpy spy(&view, SIGNAL(updatePlotTab()));
    const QRectF rect = partOf(view, 0, QRectF(QPointF(2, 5), QPointF(12, 95)));
    drag(view, rect);
    QCOMPARE(spy.size(), 1);
    for (int i = 0; i < 3; ++i)
    {
        QVERIFY(selectedVoxels(view, i).isEmpty());
        QCOMPARE(selectedSum(view, i), 0.0);
    }
    QVERIFY(!view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 0));
    QVERIFY(view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), false));
    QVERIFY(!view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), -1));
    QVERIFY(!view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 3));
}

void tst_view_measuring_voxels::aClickSelectsOnePixel()
{
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A")), result(QStringLiteral("B"))});
    // Four voxels lie behind each other; the click goes to the pixel that they are in.
    const Coord3d ptVoxel = voxelPlace(view, 1, 9, Coord3d());
    const QPoint pt(qRound(ptVoxel.x), qRound(ptVoxel.y));
    const QRectF rect(pt.x() - 0.5, pt.y() - 0.5, 1.0, 1.0);
    CPointer pointer(view);
    pointer.click(pt);
    for (int i = 0; i < 2; ++i)
    {
        const SUnder objUnder = voxelsUnder(view, i, movedTo(view, rect, 1, i));
        QCOMPARE(objUnder.nUnsure, 0);
        QCOMPARE(objUnder.setVoxels.size(), 4);
        QCOMPARE(selectedVoxels(view, i), objUnder.setVoxels);
    }
    pointer.click(pt + QPoint(4, 0));
    QVERIFY(selectedVoxels(view, 1).isEmpty());
}

void tst_view_measuring_voxels::theBoxIsNotTurned()
{
    SResultRecipe objRecipe;
    objRecipe.objSize = Coord3d(20.0, 12.0, 6.2);
    objRecipe.nVoxelEdge = 9;
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A"), objRecipe)});
    const Coord3d objAngles(0.0, 90.0, 0.0);
    turn(view, objAngles);
    const QRect rect = pictureOf(view, 0);
    CPointer pointer(view);
    pointer.drag(rect.topLeft() + QPoint(1, 1), rect.topLeft() + QPoint(2 * rect.width(), 2 * rect.height()));
    // What the turn has brought before or behind the box is out of the measurement: two of nine layers, here.
    const SUnder objUnder = voxelsUnder(view, 0, QRectF(rect), objAngles);
    QCOMPARE(objUnder.nUnsure, 0);
    QCOMPARE(objUnder.setVoxels.size(), 7 * 81);
    QCOMPARE(selectedVoxels(view, 0), objUnder.setVoxels);
}

void tst_view_measuring_voxels::hiddenVoxelsCount()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRectF rect = partOf(view, 0, QRectF(QPointF(43, 31), QPointF(57, 64)));
    drag(view, rect);
    const QList<QSet<int>> lstSelected = allSelected(view);
    view.onStateChangeDisplayVoxels(false);
    for (sAnalysisBase& objResult : view.getAnalysisParams())
    {
        objResult.objVolume.setMIP(false);
        objResult.objVolume.setDisplayThreshold(0.9);
        objResult.objVolume.getColorPalette()->SetImageMinMax(1e6, 2e6);
    }
    view.clearVoxelSelection(false);
    QVERIFY(view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), false));
    QVERIFY(!lstSelected[0].isEmpty());
    QCOMPARE(allSelected(view), lstSelected);
}

void tst_view_measuring_voxels::withControlTheOthersKeepTheirs()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRectF arectParts[] = {QRectF(QPointF(40, 25), QPointF(52, 60)), QRectF(QPointF(45, 40), QPointF(58, 75)),
                                 QRectF(QPointF(48, 33), QPointF(61, 55))};
    for (int i = 0; i < 3; ++i)
    {
        drag(view, partOf(view, i, arectParts[i]), Qt::ControlModifier);
    }
    for (int i = 0; i < 3; ++i)
    {
        const SUnder objUnder = voxelsUnder(view, i, partOf(view, i, arectParts[i]));
        QCOMPARE(objUnder.nUnsure, 0);
        QVERIFY(!objUnder.setVoxels.isEmpty());
        QCOMPARE(selectedVoxels(view, i), objUnder.setVoxels);
    }
    // Off all tiles Control clears nothing; a plain drag puts all at one place again.
    CPointer pointer(view);
    pointer.m_eModifiers = Qt::ControlModifier;
    pointer.click(QPoint(880, 200));
    QVERIFY(!selectedVoxels(view, 0).isEmpty());
    drag(view, partOf(view, 1, arectParts[0]));
    QCOMPARE(rectangleOf(view.getAnalysisParams()[0]).size(), 4);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[0]), rectangleOf(view.getAnalysisParams()[2])));
    QCOMPARE(selectedVoxels(view, 0), voxelsUnder(view, 0, partOf(view, 0, arectParts[0])).setVoxels);
}

void tst_view_measuring_voxels::withControlATileWithoutARectangleIsPickedInItsMiddle()
{
    // An odd number of voxels: one column of them is in the very middle.
    SResultRecipe objRecipe;
    objRecipe.nVoxelEdge = 5;
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A"), objRecipe), result(QStringLiteral("B"), objRecipe)});
    drag(view, partOf(view, 0, QRectF(QPointF(43, 43), QPointF(48, 48))), Qt::ControlModifier);
    const QPointF ptMiddle = windowPlace(view, 1, QPointF(0, 0));
    const SUnder objUnder = voxelsUnder(view, 1, QRectF(ptMiddle.x() - 0.5, ptMiddle.y() - 0.5, 1.0, 1.0));
    QCOMPARE(objUnder.setVoxels.size(), 5);
    QCOMPARE(selectedVoxels(view, 1), objUnder.setVoxels);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[1]), {0.0f, 0.0f, 0.0f, 0.0f}));
}

void tst_view_measuring_voxels::theRectangleOutlivesAResize()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    drag(view, partOf(view, 1, QRectF(QPointF(43, 31), QPointF(57, 64))));
    const QList<QSet<int>> lstSelected = allSelected(view);
    const QVector<float> vecRectangle = rectangleOf(view.getAnalysisParams()[1]);
    for (const QSize& size : {QSize(1400, 900), QSize(500, 700), QSize(700, 250)})
    {
        view.resize(size);
        QTRY_COMPARE(view.getGLWidth(), size.width());
        const QImage img = view.picture();
        QCOMPARE(allSelected(view), lstSelected);
        QCOMPARE(rectangleOf(view.getAnalysisParams()[1]), vecRectangle);
        // It is drawn at its place of the scene in every tile; selected again it selects the same.
        for (int i = 0; i < 3; ++i)
        {
            const QPointF ptFrom = windowPlace(view, i, QPointF(double(vecRectangle[0]), double(vecRectangle[3])));
            const QPointF ptTo = windowPlace(view, i, QPointF(double(vecRectangle[2]), double(vecRectangle[1])));
            const QRect rectSeen = boundsOf(img, pictureOf(view, i), isGreen);
            const QRect rectExpected = QRectF(ptFrom, ptTo).toAlignedRect();
            QVERIFY(rectExpected.adjusted(-3, -3, 3, 3).contains(rectSeen));
            QVERIFY(rectSeen.contains(rectExpected.adjusted(5, 5, -5, -5)));
        }
        view.onSelectVoxelS(false);
        view.onSelectVoxelS(true);
        QCOMPARE(allSelected(view), lstSelected);
        QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[1]), vecRectangle));
        view.getAnalysisParams()[1].fSelectLeft = vecRectangle[0];
        view.getAnalysisParams()[1].fSelectTop = vecRectangle[1];
        view.getAnalysisParams()[1].fSelectRight = vecRectangle[2];
        view.getAnalysisParams()[1].fSelectBottom = vecRectangle[3];
    }
}

void tst_view_measuring_voxels::theRectangleOutlivesATurn()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRectF rect = partOf(view, 0, QRectF(QPointF(52, 31), QPointF(63, 64)));
    drag(view, rect);
    const QList<QSet<int>> lstSelected = allSelected(view);
    const Coord3d objAngles(0.0, 64.0, 0.0);
    turn(view, objAngles);
    QCOMPARE(allSelected(view), lstSelected); // a turn alone picks nothing
    view.updateVoxelSelections();
    QVERIFY(allSelected(view) != lstSelected);
    for (int i = 0; i < 3; ++i)
    {
        QCOMPARE(selectedVoxels(view, i), voxelsUnder(view, i, movedTo(view, rect, 0, i), objAngles).setVoxels);
    }
}

void tst_view_measuring_voxels::selectionsAreReplaced()
{
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A")), result(QStringLiteral("B"))});
    C3DVolume& objVolume = view.getAnalysisParams()[1].objVolume;
    const auto fnNumber = [&](int nVoxel) { return objVolume.getVoxelByNum(nVoxel)->nID; };
    objVolume.addToVoxelSelection(fnNumber(1));
    QList<long> lstVoxels = {fnNumber(5), fnNumber(3), 987654321};
    view.processVoxelSelection(&lstVoxels, 1);
    QCOMPARE(selectedVoxels(view, 1), (QSet<int>{3, 5}));
    QVERIFY(selectedVoxels(view, 0).isEmpty());
    view.processVoxelSelection(&lstVoxels, -1);
    QCOMPARE(selectedVoxels(view, 1), (QSet<int>{3, 5}));
    // The active result alone, and none where none is active.
    view.m_nActiveResult = 0;
    view.clearVoxelSelection(true);
    QCOMPARE(selectedVoxels(view, 1).size(), 2);
    view.m_nActiveResult = -1;
    view.clearVoxelSelection(true);
    QCOMPARE(selectedVoxels(view, 1).size(), 2);
    view.m_nActiveResult = 1;
    view.clearVoxelSelection(true);
    QVERIFY(selectedVoxels(view, 1).isEmpty());
}

ORM_TEST_MAIN(tst_view_measuring_voxels)
#include "tst_view_measuring_voxels.moc"
