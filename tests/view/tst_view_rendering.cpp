#include "ViewTestTools.h"

#include <QSignalSpy>

using namespace ViewTest;

namespace
{
QStringList namesOf(CRecordingView& view)
{
    QStringList lstNames;
    for (const sAnalysisBase& objResult : view.getAnalysisParams())
    {
        lstNames.append(objResult.strResultName);
    }
    return lstNames;
}

/// Which colour the frame of a tile has: the upper and the lower edge must agree.
QString frameColor(const QImage& img, const QRect& rect)
{
    const auto fnAlong = [&](int nY, bool (*fnTest)(QRgb))
    { return countOf(img, QRect(rect.x() + 5, nY, rect.width() - 10, 3), fnTest) >= rect.width() - 10; };
    const int nTop = rect.y() + rect.height() - 2;
    if (fnAlong(rect.y() - 1, isRed) && fnAlong(nTop, isRed))
    {
        return QStringLiteral("red");
    }
    if (fnAlong(rect.y() - 1, isBlue) && fnAlong(nTop, isBlue))
    {
        return QStringLiteral("blue");
    }
    const QRect rectEdge(rect.x() + 5, rect.y() - 1, rect.width() - 10, 3);
    return countOf(img, rectEdge, isRed) + countOf(img, rectEdge, isBlue) == 0 ? QStringLiteral("none") : QStringLiteral("broken");
}
} // namespace

/// How results enter the view, are drawn and leave it.
class tst_view_rendering : public QObject
{
    Q_OBJECT

private slots:
    void luminescentStandBeforeFluorescent();
    void insertionIsLostWhereTheFlagIsOld();
    void otherKindsAreNotStored();
    void fluorescentSurfaceGetsItsTable();
    void clearingForgetsInOrder();
    void commonBoxHoldsAllSurfaces();
    void tenMillimetresAreTheSameInEveryTile();
    void resultsStandCentredAndTouchTheirFrame();
    void rotationIsSharedAndAboutTheCentre();
    void framesFollowSelectionHighlightAndOpacity_data();
    void framesFollowSelectionHighlightAndOpacity();
    void equalKeysAreFramedTogether();
    void hiddenLayersLeaveTheFrames();
    void surfaceLiesOverTheVolume();
    void wholeSubjectIsDrawn();
    void measuringRectangle_data();
    void measuringRectangle();
    void handlesBelongToTheActiveTile();
    void kindsAreThoseOfTheLastFrame();
};

void tst_view_rendering::luminescentStandBeforeFluorescent()
{
    CRecordingView view;
    show(view, QSize(700, 300));
    view.load(result(QStringLiteral("N1"), box(20, 20, 20, 1)));
    view.load(result(QStringLiteral("N2"), box(20, 20, 20, 1)));
    view.picture();
    view.load(result(QStringLiteral("S1"), box(20, 20, 20, 0)));
    QCOMPARE(namesOf(view), (QStringList{QStringLiteral("S1"), QStringLiteral("N1"), QStringLiteral("N2")}));
    view.load(result(QStringLiteral("S2"), box(20, 20, 20, 0)));
    view.load(result(QStringLiteral("N3"), box(20, 20, 20, 1)));
    QCOMPARE(namesOf(view),
             (QStringList{QStringLiteral("S1"), QStringLiteral("S2"), QStringLiteral("N1"), QStringLiteral("N2"), QStringLiteral("N3")}));
    // The keys keep the order of loading.
    QCOMPARE(view.getLoadedResult(), (QStringList{QStringLiteral("SEQN1"), QStringLiteral("SEQN2"), QStringLiteral("SEQS1"),
                                                  QStringLiteral("SEQS2"), QStringLiteral("SEQN3")}));
    QVERIFY(view.m_bResultsChanged);
    view.picture();
    QVERIFY(!view.m_bResultsChanged);
}

void tst_view_rendering::insertionIsLostWhereTheFlagIsOld()
{
    CRecordingView view;
    show(view, QSize(700, 300));
    view.load(result(QStringLiteral("N"), box(20, 20, 20, 1)));
    view.picture();
    QVERIFY(view.containsNOVAResults());
    view.clear3DView();
    // No frame since: the view still believes in a fluorescent result, finds no place before it and stores nothing.
    view.load(result(QStringLiteral("S")));
    QVERIFY(view.getAnalysisParams().isEmpty());
    QVERIFY(view.m_bResultsChanged);
    view.getLoadedResult().clear();
    view.picture();
    view.load(result(QStringLiteral("S")));
    QCOMPARE(namesOf(view), QStringList{QStringLiteral("S")});
}

void tst_view_rendering::otherKindsAreNotStored()
{
    CRecordingView view;
    for (const int nKind : {-1, 2, 7})
    {
        view.m_bResultsChanged = false;
        sAnalysisBase objResult = result(QStringLiteral("X"), box(20, 20, 20, nKind));
        view.setAnalysisParms(objResult);
        QVERIFY(view.getAnalysisParams().isEmpty());
        QVERIFY(view.m_bResultsChanged);
    }
}

void tst_view_rendering::fluorescentSurfaceGetsItsTable()
{
    CRecordingView view;
    for (const int nKind : {0, 1})
    {
        sAnalysisBase objResult = result(QStringLiteral("R%1").arg(nKind), box(20, 20, 20, nKind));
        objResult.objMesh.getColorPalette()->setColorTableType(static_cast<ORM_COLORTABLE_TYPES>(5), 0.25f, 0.75f);
        objResult.objMesh.getColorPalette()->setReversed(1);
        view.setAnalysisParms(objResult);
        QCOMPARE(int(objResult.objMesh.getColorPalette()->colorTableType()), 5); // the caller's record is left alone
    }
    COrmPalette* pSOLA = view.getAnalysisParams()[0].objMesh.getColorPalette();
    QCOMPARE(int(pSOLA->colorTableType()), 5);
    QVERIFY(pSOLA->reversed() != 0);
    COrmPalette* pNOVA = view.getAnalysisParams()[1].objMesh.getColorPalette();
    QCOMPARE(int(pNOVA->colorTableType()), 2);
    QCOMPARE(pNOVA->getColorTableLow(), 0.0f);
    QCOMPARE(pNOVA->getColorTableHigh(), 1.0f);
    QCOMPARE(pNOVA->reversed(), 0);
}

void tst_view_rendering::clearingForgetsInOrder()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("A")));
    view.getSelectedList().append(QStringLiteral("SEQA"));
    view.getHighListedResult() = QStringLiteral("SEQA");
    view.m_nActiveResult = 0;
    view.picture();
    QSignalSpy spy(&view, SIGNAL(upadteAnlysisParameters(QString, QString)));
    bool bEmptyWhenTold = false;
    connect(&view, &CLongitudinalStudyBrowserView::upadteAnlysisParameters, &view,
            [&]() { bEmptyWhenTold = view.getAnalysisParams().isEmpty() && view.getLoadedResult().isEmpty(); });
    const int nPaints = restOf(view);
    view.clear3DView();
    QVERIFY(bEmptyWhenTold);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().at(0).toString(), QString());
    QCOMPARE(spy.first().at(1).toString(), QString());
    // What the next move and frame settle is left alone.
    QCOMPARE(view.getSelectedList(), QStringList{QStringLiteral("SEQA")});
    QCOMPARE(view.getHighListedResult(), QStringLiteral("SEQA"));
    QCOMPARE(view.m_nActiveResult, 0);
    QVERIFY(view.containsSOLAResults());
    QTRY_VERIFY(view.m_nPaints > nPaints);
    QVERIFY(!view.containsSOLAResults());
    QCOMPARE(countOf(view.picture(), QRect(0, 0, 500, 300), isNotBlack), 0);
}

void tst_view_rendering::commonBoxHoldsAllSurfaces()
{
    CRecordingView view;
    show(view, QSize(700, 300));
    SResultRecipe objFirst = box(10, 20, 30);
    objFirst.objCenter = Coord3d(100, 0, 0);
    SResultRecipe objSecond = box(10, 20, 30);
    objSecond.objCenter = Coord3d(100, 40, -6);
    view.load(result(QStringLiteral("A"), objFirst));
    view.load(result(QStringLiteral("B"), objSecond));
    view.picture();
    // As large as the extent of both where they lie, about the origin.
    QCOMPARE(view.m_dBoxMinX, -5.0);
    QCOMPARE(view.m_dBoxMaxX, 5.0);
    QCOMPARE(view.m_dBoxMinY, -30.0);
    QCOMPARE(view.m_dBoxMaxY, 30.0);
    QCOMPARE(view.m_dBoxMinZ, -18.0);
    QCOMPARE(view.m_dBoxMaxZ, 18.0);
    view.clear3DView();
    view.picture();
    QCOMPARE(view.m_dBoxMaxX, 0.0);
    QCOMPARE(view.m_dBoxMinY, 0.0);
}

void tst_view_rendering::tenMillimetresAreTheSameInEveryTile()
{
    CRecordingView view;
    show(view, QSize(1200, 800));
    const Coord3d aobjSizes[] = {Coord3d(10, 10, 10), Coord3d(20, 16, 12), Coord3d(10, 4, 4), Coord3d(4, 10, 6), Coord3d(10, 10, 2)};
    int nName = 0;
    for (const Coord3d& objSize : aobjSizes)
    {
        SResultRecipe objRecipe = box(objSize.x, objSize.y, objSize.z);
        objRecipe.objCenter = Coord3d(0.0, 0.0, 0.0);
        objRecipe.nVoxelEdge = 1;
        view.load(result(QStringLiteral("R%1").arg(nName++), objRecipe));
    }
    view.onStateChangeDisplayVoxels(false);
    view.setMeshOpacity(1.0f);
    const QImage img = view.picture();
    const double fPixelsPerMm = pictureOf(view, 0).width() / 20.0;
    QVERIFY(fPixelsPerMm > 5.0);
    const QRect rectTen = boundsOf(img, pictureOf(view, 0), isNotBlack);
    QVERIFY(qAbs(rectTen.width() - 10 * fPixelsPerMm) <= 1.0);
    for (int i = 0; i < 5; ++i)
    {
        const QRect rectSeen = boundsOf(img, pictureOf(view, i), isNotBlack);
        QVERIFY2(qAbs(rectSeen.width() - aobjSizes[i].x * fPixelsPerMm) <= 1.0, qPrintable(QString::number(i)));
        QVERIFY2(qAbs(rectSeen.height() - aobjSizes[i].y * fPixelsPerMm) <= 1.0, qPrintable(QString::number(i)));
        if (aobjSizes[i].x == 10.0)
        {
            QCOMPARE(rectSeen.width(), rectTen.width());
        }
        if (aobjSizes[i].y == 10.0)
        {
            QCOMPARE(rectSeen.height(), rectTen.height());
        }
    }
}

void tst_view_rendering::resultsStandCentredAndTouchTheirFrame()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    SResultRecipe objBig = box(30, 30, 30);
    SResultRecipe objSmall = box(12, 6, 6);
    objSmall.objCenter = Coord3d(6.0, -9.0, 3.0); // elsewhere, but inside the big one: it must stand in the middle all the same
    view.load(result(QStringLiteral("Big"), objBig));
    view.load(result(QStringLiteral("Small"), objSmall));
    view.onStateChangeDisplayVoxels(false);
    view.setMeshOpacity(1.0f);
    const QImage img = view.picture();
    const QRect rectBig = boundsOf(img, pictureOf(view, 0).adjusted(-3, -3, 3, 3), isNotBlack);
    // To the pixel, but for how an edge that falls on one is rounded.
    QVERIFY(pictureOf(view, 0).contains(rectBig));
    QVERIFY(rectBig.contains(pictureOf(view, 0).adjusted(1, 1, -1, -1)));
    const QRect rectSmall = boundsOf(img, pictureOf(view, 1), isNotBlack);
    QVERIFY(qAbs(rectSmall.center().x() - pictureOf(view, 1).center().x()) <= 1);
    QVERIFY(qAbs(rectSmall.center().y() - pictureOf(view, 1).center().y()) <= 1);
}

void tst_view_rendering::rotationIsSharedAndAboutTheCentre()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    SResultRecipe objOne = box(30, 10, 6);
    SResultRecipe objTwo = box(20, 10, 12);
    objTwo.objCenter = Coord3d(5.0, 0.0, 9.0);
    view.load(result(QStringLiteral("One"), objOne));
    view.load(result(QStringLiteral("Two"), objTwo));
    view.onStateChangeDisplayVoxels(false);
    view.setMeshOpacity(1.0f);
    view.picture();
    restOf(view);
    const double fPixelsPerMm = pictureOf(view, 0).width() / 30.0;
    const int nPaints = view.m_nPaints;
    view.setRotation(0.0, 90.0, 0.0);
    QTRY_VERIFY(view.m_nPaints > nPaints); // it asks for its repaint itself
    const QImage img = view.picture();
    // A quarter turn about the vertical axis: what was deep is wide now, and stays in the middle of its tile.
    const double afWidth[] = {6.0, 12.0};
    for (int i = 0; i < 2; ++i)
    {
        const QRect rectSeen = boundsOf(img, pictureOf(view, i), isNotBlack);
        QVERIFY(qAbs(rectSeen.width() - afWidth[i] * fPixelsPerMm) <= 1.0);
        QVERIFY(qAbs(rectSeen.height() - 10.0 * fPixelsPerMm) <= 1.0);
        QVERIFY(qAbs(rectSeen.center().x() - pictureOf(view, i).center().x()) <= 1);
    }
}

void tst_view_rendering::framesFollowSelectionHighlightAndOpacity_data()
{
    QTest::addColumn<QString>("strSelected");
    QTest::addColumn<QString>("strHighlighted");
    QTest::addColumn<float>("fOpacity");
    QTest::addColumn<QString>("strColor");
    const QString strKey = QStringLiteral("SEQDay");
    QTest::newRow("neither") << ""
                             << "" << 0.5f << "none";
    QTest::newRow("selected") << strKey << "" << 0.5f << "red";
    QTest::newRow("highlighted") << "" << strKey << 0.5f << "blue";
    QTest::newRow("both") << strKey << strKey << 0.5f << "red";
    QTest::newRow("selection minds case") << "seqday"
                                          << "" << 0.5f << "none";
    QTest::newRow("highlight ignores case") << ""
                                            << "seqDAY" << 0.5f << "blue";
    QTest::newRow("both, the highlight in another case") << strKey << "SEQDAY" << 0.5f << "red";
    QTest::newRow("another selected, this one highlighted") << "SEQOther" << strKey << 0.5f << "blue";
    QTest::newRow("selected, invisible") << strKey << "" << 0.0f << "none";
    QTest::newRow("highlighted, invisible") << "" << strKey << 0.0f << "none";
    QTest::newRow("both, invisible") << strKey << strKey << 0.0f << "none";
    QTest::newRow("both, opaque") << strKey << strKey << 1.0f << "red";
    QTest::newRow("a part of the key") << "SEQ"
                                       << "Day" << 0.5f << "none";
}

void tst_view_rendering::framesFollowSelectionHighlightAndOpacity()
{
    QFETCH(QString, strSelected);
    QFETCH(QString, strHighlighted);
    QFETCH(float, fOpacity);
    CRecordingView view;
    show(view, QSize(700, 400));
    view.load(result(QStringLiteral("Wide"), box(60, 30, 20)));
    view.load(result(QStringLiteral("Day"), box(20, 10, 10)));
    view.getSelectedList().append(strSelected);
    view.getHighListedResult() = strHighlighted;
    view.setMeshOpacity(fOpacity);
    const QImage img = view.picture();
    QTEST(frameColor(img, pictureOf(view, 1)), "strColor");
    QCOMPARE(frameColor(img, pictureOf(view, 0)), QStringLiteral("none"));
}

void tst_view_rendering::equalKeysAreFramedTogether()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    view.load(result(QStringLiteral("Twice"), box(20, 20, 20)));
    view.load(result(QStringLiteral("Once"), box(20, 20, 20)));
    view.load(result(QStringLiteral("Twice"), box(10, 10, 10)));
    view.getSelectedList().append(QStringLiteral("SEQTwice"));
    QImage img = view.picture();
    QCOMPARE(frameColor(img, pictureOf(view, 0)), QStringLiteral("red"));
    QCOMPARE(frameColor(img, pictureOf(view, 1)), QStringLiteral("none"));
    QCOMPARE(frameColor(img, pictureOf(view, 2)), QStringLiteral("red"));
    view.getSelectedList().clear();
    view.getHighListedResult() = QStringLiteral("SEQTwice");
    img = view.picture();
    QCOMPARE(frameColor(img, pictureOf(view, 0)), QStringLiteral("blue"));
    QCOMPARE(frameColor(img, pictureOf(view, 1)), QStringLiteral("none"));
    QCOMPARE(frameColor(img, pictureOf(view, 2)), QStringLiteral("blue"));
}

void tst_view_rendering::hiddenLayersLeaveTheFrames()
{
    CRecordingView view;
    show(view, QSize(500, 400));
    view.load(result(QStringLiteral("A")));
    view.getSelectedList().append(QStringLiteral("SEQA"));
    view.onStateChangeDisplaySurfaceCB(false);
    view.onStateChangeDisplayVoxels(false);
    QImage img = view.picture();
    QCOMPARE(frameColor(img, pictureOf(view, 0)), QStringLiteral("red"));
    QCOMPARE(countOf(img, pictureOf(view, 0).adjusted(3, 3, -3, -3), isNotBlack), 0);
    view.onStateChangeDisplayVoxels(true);
    img = view.picture();
    const QRect rectVoxels = boundsOf(img, pictureOf(view, 0).adjusted(3, 3, -3, -3), isNotBlack);
    QVERIFY(rectVoxels.width() > 10);
    view.onStateChangeDisplaySurfaceCB(true);
    img = view.picture();
    QVERIFY(boundsOf(img, pictureOf(view, 0).adjusted(3, 3, -3, -3), isNotBlack).width() > rectVoxels.width());
}

void tst_view_rendering::surfaceLiesOverTheVolume()
{
    CRecordingView view;
    show(view, QSize(500, 400));
    sAnalysisBase objResult = result(QStringLiteral("A"));
    objResult.objVolume.getColorPalette()->setColorTableType(ORM_CT_GRAYS, 0.0f, 1.0f);
    view.load(objResult);
    view.onStateChangeDisplaySurfaceCB(false);
    QImage img = view.picture();
    const QRect rect = pictureOf(view, 0);
    // The volume alone: its brightest voxel, in the middle of the tile's upper right part.
    const QRect rectVoxels = boundsOf(img, rect, isNotBlack);
    const QPoint pt(rectVoxels.right() - 5, rectVoxels.bottom() - 5);
    const int nVoxel = qGray(pixelAt(img, pt.x(), pt.y()));
    QVERIFY(nVoxel > 200);
    view.onStateChangeDisplaySurfaceCB(true);
    view.setMeshOpacity(1.0f);
    img = view.picture();
    const int nSurface = qGray(pixelAt(img, pt.x(), pt.y()));
    view.onStateChangeDisplayVoxels(false);
    QCOMPARE(view.picture(), img); // nothing shines through
    view.onStateChangeDisplayVoxels(true);
    view.setMeshOpacity(0.5f);
    img = view.picture();
    const int nBoth = qGray(pixelAt(img, pt.x(), pt.y()));
    QVERIFY(qAbs(nBoth - (nVoxel + nSurface) / 2) <= 3);
}

void tst_view_rendering::wholeSubjectIsDrawn()
{
    CRecordingView view;
    show(view, QSize(500, 400));
    // The tiles' projection ends a millimetre before their centre; the subject must not be cut open there.
    sAnalysisBase objResult = result(QStringLiteral("A"), box(20, 20, 20));
    objResult.objVolume = cubeVolume(1, 1.0f, 1.0f, Coord3d(-6.0, 6.0, 9.0));
    objResult.objVolume.setMIP(true);
    view.load(objResult);
    view.setMeshOpacity(1.0f);
    view.onStateChangeDisplayVoxels(false);
    QImage img = view.picture();
    const QRect rect = pictureOf(view, 0);
    QCOMPARE(countOf(img, rect, isNotBlack), rect.width() * rect.height());
    view.onStateChangeDisplayVoxels(true);
    view.onStateChangeDisplaySurfaceCB(false);
    img = view.picture();
    const QRect rectVoxel = boundsOf(img, rect, isNotBlack);
    QVERIFY(!rectVoxel.isNull());
    const double fScale = rect.width() / 20.0;
    QVERIFY(qAbs(rectVoxel.center().x() - (rect.x() + 4.0 * fScale)) <= 2.0);
    QVERIFY(qAbs(rectVoxel.center().y() - (rect.y() + 16.0 * fScale)) <= 2.0);
}

void tst_view_rendering::measuringRectangle_data()
{
    QTest::addColumn<bool>("bToolOn");
    QTest::addColumn<QRectF>("rectSelect"); // x1, y1 and the distances to x2, y2
    QTest::addColumn<bool>("bShown");
    QTest::addColumn<bool>("bHandles");
    QTest::newRow("tool off") << false << QRectF(-5, -4, 10, 8) << false << false;
    QTest::newRow("tool on") << true << QRectF(-5, -4, 10, 8) << true << true;
    QTest::newRow("no rectangle") << true << QRectF(2, 3, 0, 0) << false << false;
    QTest::newRow("no width, a line") << true << QRectF(2, -4, 0, 8) << true << false;
    QTest::newRow("no height, a line") << true << QRectF(-5, 3, 10, 0) << true << false;
    QTest::newRow("upside down") << true << QRectF(5, 4, -10, -8) << true << true;
}

void tst_view_rendering::measuringRectangle()
{
    QFETCH(bool, bToolOn);
    QFETCH(QRectF, rectSelect);
    QFETCH(bool, bShown);
    QFETCH(bool, bHandles);
    CRecordingView view;
    show(view, QSize(500, 400));
    sAnalysisBase objResult = result(QStringLiteral("A"), box(20, 20, 20));
    objResult.fSelectLeft = static_cast<float>(rectSelect.x());
    objResult.fSelectTop = static_cast<float>(rectSelect.y());
    objResult.fSelectRight = static_cast<float>(rectSelect.x() + rectSelect.width());
    objResult.fSelectBottom = static_cast<float>(rectSelect.y() + rectSelect.height());
    view.load(objResult);
    view.setSelectVoxel(bToolOn);
    view.m_nActiveResult = 0;
    const QImage img = view.picture();
    const QRect rect = pictureOf(view, 0);
    const QRect rectGreen = boundsOf(img, rect, isGreen);
    QCOMPARE(!rectGreen.isNull(), bShown);
    // 5 pixels square at each corner.
    const double fScale = rect.width() / 20.0;
    int nCorners = 0;
    for (const double fX : {rectSelect.left(), rectSelect.left() + rectSelect.width()})
    {
        for (const double fY : {rectSelect.top(), rectSelect.top() + rectSelect.height()})
        {
            const QPoint ptCorner(rect.x() + static_cast<int>((fX + 10.0) * fScale), rect.y() + static_cast<int>((fY + 10.0) * fScale));
            nCorners += countOf(img, QRect(ptCorner.x() - 3, ptCorner.y() - 3, 7, 7), isGreen) >= 24 ? 1 : 0;
        }
    }
    QCOMPARE(nCorners, bHandles ? 4 : 0);
    if (bHandles)
    {
        QVERIFY(qAbs(rectGreen.width() - qAbs(rectSelect.width()) * fScale) <= 8);
        QVERIFY(qAbs(rectGreen.height() - qAbs(rectSelect.height()) * fScale) <= 8);
        // Dashed: between the corners about half of each side is drawn.
        const QRect rectSide(rectGreen.x() + 10, rectGreen.y(), rectGreen.width() - 20, 6);
        const int nDrawn = countOf(img, rectSide, isGreen);
        QVERIFY(nDrawn > rectSide.width() / 2 && nDrawn < 2 * rectSide.width());
    }
}

void tst_view_rendering::handlesBelongToTheActiveTile()
{
    CRecordingView view;
    show(view, QSize(900, 400));
    for (const char* pszName : {"A", "B"})
    {
        sAnalysisBase objResult = result(QString::fromLatin1(pszName), box(20, 20, 20));
        objResult.fSelectLeft = -5.0f;
        objResult.fSelectTop = -4.0f;
        objResult.fSelectRight = 5.0f;
        objResult.fSelectBottom = 4.0f;
        view.load(objResult);
    }
    view.setSelectVoxel(true);
    view.m_nActiveResult = -1;
    QImage img = view.picture();
    const int nRectangle = countOf(img, pictureOf(view, 0), isGreen);
    QCOMPARE(countOf(img, pictureOf(view, 1), isGreen), nRectangle);
    view.m_nActiveResult = 1;
    img = view.picture();
    QCOMPARE(countOf(img, pictureOf(view, 0), isGreen), nRectangle);
    QVERIFY(countOf(img, pictureOf(view, 1), isGreen) > nRectangle + 30);
    // The second tile, drawn after a rectangle has switched the depth test off, still looks like the first.
    view.getAnalysisParams()[1].fSelectLeft = view.getAnalysisParams()[1].fSelectRight = 0.0f;
    view.getAnalysisParams()[1].fSelectTop = view.getAnalysisParams()[1].fSelectBottom = 0.0f;
    img = view.picture();
    view.setSelectVoxel(false);
    const QImage imgPlain = view.picture();
    const QRect rect = pictureOf(view, 1);
    QCOMPARE(img.copy(rect.x(), 400 - rect.y() - rect.height(), rect.width(), rect.height()),
             imgPlain.copy(rect.x(), 400 - rect.y() - rect.height(), rect.width(), rect.height()));
}

void tst_view_rendering::kindsAreThoseOfTheLastFrame()
{
    CRecordingView view;
    show(view, QSize(500, 400));
    view.load(result(QStringLiteral("S")));
    QVERIFY(!view.containsSOLAResults());
    view.picture();
    QVERIFY(view.containsSOLAResults());
    QVERIFY(!view.containsNOVAResults());
    view.load(result(QStringLiteral("N"), box(20, 20, 20, 1)));
    QVERIFY(!view.containsNOVAResults());
    view.picture();
    QVERIFY(view.containsNOVAResults());
    view.getAnalysisParams().removeFirst();
    QVERIFY(view.containsSOLAResults());
    view.picture();
    QVERIFY(!view.containsSOLAResults());
}

ORM_TEST_MAIN(tst_view_rendering)
#include "tst_view_rendering.moc"
