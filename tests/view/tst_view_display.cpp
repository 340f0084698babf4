#include "ViewTestTools.h"

using namespace ViewTest;

/// Which density map a surface shows, and the switches of the layers.
class tst_view_display : public QObject
{
    Q_OBJECT

private slots:
    void plainSurfaceHasThePreferredColor();
    void surfaceWithoutAMapIsLeftToTheMesh();
    void densityMapsGoToTheNamedResult_data();
    void densityMapsGoToTheNamedResult();
    void densityMapKeepsOrResetsThePalette();
    void densityMapWaitsForTheSurface();
    void displaySlotsStoreAndRepaint();
};

void tst_view_display::plainSurfaceHasThePreferredColor()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    const S3DViewSettings objKept = objSettings;
    CRecordingView view;
    show(view, QSize(500, 400));
    view.load(result(QStringLiteral("A")));
    view.onStateChangeDisplayVoxels(false);
    view.onStateChangePhotonDensityMapCB(0);
    view.setMeshOpacity(1.0f);
    objSettings.clrSurface = QColor(255, 0, 0);
    COrmPreference::set3DViewPreferences(objSettings);
    QImage img = view.picture();
    const QPoint ptMiddle = pictureOf(view, 0).center();
    QRgb rgb = pixelAt(img, ptMiddle.x(), ptMiddle.y());
    QVERIFY(qRed(rgb) > 150 && qGreen(rgb) < 10 && qBlue(rgb) < 10);
    objSettings.clrSurface = QColor(0, 0, 255);
    COrmPreference::set3DViewPreferences(objSettings);
    img = view.picture(); // read anew by every frame
    rgb = pixelAt(img, ptMiddle.x(), ptMiddle.y());
    QVERIFY(qBlue(rgb) > 150 && qRed(rgb) < 10 && qGreen(rgb) < 10);
    COrmPreference::set3DViewPreferences(objKept);
}

void tst_view_display::surfaceWithoutAMapIsLeftToTheMesh()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    const S3DViewSettings objKept = objSettings;
    CRecordingView view;
    show(view, QSize(500, 400));
    view.load(result(QStringLiteral("A")));
    view.onStateChangeDisplayVoxels(false);
    view.setMeshOpacity(1.0f);
    const QImage imgBefore = view.picture();
    QVERIFY(countOf(imgBefore, pictureOf(view, 0), isNotBlack) > 100);
    // With maps asked for, the preferred color is no matter, even where there is none to show.
    objSettings.clrSurface = QColor(255, 0, 0);
    COrmPreference::set3DViewPreferences(objSettings);
    QCOMPARE(view.picture(), imgBefore);
    COrmPreference::set3DViewPreferences(objKept);
}

void tst_view_display::densityMapsGoToTheNamedResult_data()
{
    QTest::addColumn<QString>("strSequence");
    QTest::addColumn<QString>("strResult");
    QTest::addColumn<QString>("strWavelength");
    QTest::addColumn<QVector<bool>>("vecChanged"); // "Day", "DAY", "Other"
    const QVector<bool> vecNone = {false, false, false};
    const QVector<bool> vecBoth = {true, true, false};
    QTest::newRow("names that differ in case are one") << "SEQ"
                                                       << "day"
                                                       << "560" << vecBoth;
    QTest::newRow("sequence in another case") << "seq"
                                              << "Day"
                                              << "560" << vecBoth;
    QTest::newRow("another result") << "SEQ"
                                    << "Other"
                                    << "560" << QVector<bool>{false, false, true};
    QTest::newRow("unknown result") << "SEQ"
                                    << "Night"
                                    << "560" << vecNone;
    QTest::newRow("unknown sequence") << "QES"
                                      << "Day"
                                      << "560" << vecNone;
    QTest::newRow("unknown wavelength") << "SEQ"
                                        << "Day"
                                        << "561" << vecNone;
    QTest::newRow("wavelength with blanks") << "SEQ"
                                            << "Day"
                                            << " 560" << vecNone;
    QTest::newRow("wavelength in another case") << "SEQ"
                                                << "Other"
                                                << "FILTER A" << vecNone;
    QTest::newRow("wavelength as it is") << "SEQ"
                                         << "Other"
                                         << "Filter A" << QVector<bool>{false, false, true};
}

void tst_view_display::densityMapsGoToTheNamedResult()
{
    QFETCH(QString, strSequence);
    QFETCH(QString, strResult);
    QFETCH(QString, strWavelength);
    QFETCH(QVector<bool>, vecChanged);
    CRecordingView view;
    show(view, QSize(900, 400));
    for (const char* pszName : {"Day", "DAY", "Other"})
    {
        sAnalysisBase objResult = result(QString::fromLatin1(pszName));
        objResult.addPhotonDensity(QStringLiteral("560"), {0, 0, 0, 0, 9, 9, 9, 9});
        objResult.addPhotonDensity(QStringLiteral("Filter A"), {0, 9, 0, 9, 0, 9, 0, 9});
        view.load(objResult);
    }
    view.onStateChangeDisplayVoxels(false);
    view.setMeshOpacity(1.0f);
    const QImage imgBefore = view.picture();
    const int nPaints = restOf(view);
    view.applyPhotonDensityMap(strSequence, strResult, strWavelength);
    QTRY_VERIFY(view.m_nPaints > nPaints); // matched or not
    const QImage imgAfter = view.picture();
    for (int i = 0; i < 3; ++i)
    {
        const QRect rect = pictureOf(view, i);
        const QRect rectImage(rect.x(), 400 - rect.y() - rect.height(), rect.width(), rect.height());
        QCOMPARE(imgBefore.copy(rectImage) != imgAfter.copy(rectImage), vecChanged[i]);
    }
}

void tst_view_display::densityMapKeepsOrResetsThePalette()
{
    CRecordingView view;
    for (const int nKind : {0, 1})
    {
        sAnalysisBase objResult = result(QStringLiteral("R"), box(20, 20, 20, nKind));
        objResult.addPhotonDensity(QStringLiteral("560"), {0, 1, 2, 3, 4, 5, 6, 7});
        view.setAnalysisParms(objResult);
        view.getAnalysisParams().last().objMesh.getColorPalette()->setColorTableType(static_cast<ORM_COLORTABLE_TYPES>(7), 0.1f, 0.9f);
        view.getAnalysisParams().last().objMesh.getColorPalette()->setReversed(1);
    }
    view.applyPhotonDensityMap(QStringLiteral("SEQ"), QStringLiteral("R"), QStringLiteral("560"));
    COrmPalette* pSOLA = view.getAnalysisParams()[0].objMesh.getColorPalette();
    QCOMPARE(int(pSOLA->colorTableType()), 7);
    QVERIFY(pSOLA->reversed() != 0);
    COrmPalette* pNOVA = view.getAnalysisParams()[1].objMesh.getColorPalette();
    QCOMPARE(int(pNOVA->colorTableType()), 2);
    QCOMPARE(pNOVA->getColorTableLow(), 0.0f);
    QCOMPARE(pNOVA->getColorTableHigh(), 1.0f);
    QCOMPARE(pNOVA->reversed(), 0);
    QVERIFY(view.getAnalysisParams()[0].objMesh.m_bShowPhotonDensity);
    view.onStateChangePhotonDensityMapCB(0);
    view.applyPhotonDensityMap(QStringLiteral("SEQ"), QStringLiteral("R"), QStringLiteral("560"));
    QVERIFY(!view.getAnalysisParams()[0].objMesh.m_bShowPhotonDensity);
}

void tst_view_display::densityMapWaitsForTheSurface()
{
    CRecordingView view;
    show(view, QSize(500, 400));
    sAnalysisBase objResult = result(QStringLiteral("A"));
    objResult.addPhotonDensity(QStringLiteral("560"), {0, 9, 0, 9, 0, 9, 0, 9});
    view.load(objResult);
    view.onStateChangeDisplayVoxels(false);
    view.setMeshOpacity(1.0f);
    const QImage imgWithoutMap = view.picture();
    view.onStateChangeDisplaySurfaceCB(false);
    view.applyPhotonDensityMap(QStringLiteral("SEQ"), QStringLiteral("A"), QStringLiteral("560"));
    view.picture();
    view.onStateChangeDisplaySurfaceCB(true);
    const QImage imgWithMap = view.picture();
    QVERIFY(imgWithMap != imgWithoutMap);
    // Off and on again needs no new mapping.
    view.onStateChangePhotonDensityMapCB(0);
    QVERIFY(view.picture() != imgWithMap);
    view.onStateChangePhotonDensityMapCB(1);
    QCOMPARE(view.picture(), imgWithMap);
    // A check box in its third state counts as on.
    view.onStateChangePhotonDensityMapCB(2);
    QVERIFY(view.m_bShowPhotonDensity);
}

void tst_view_display::displaySlotsStoreAndRepaint()
{
    CRecordingView view;
    show(view, QSize(300, 200));
    const char* const apszSlots[] = {"onStateChangeDisplaySurfaceCB", "onStateChangeDisplayVoxels"};
    for (const char* pszSlot : apszSlots)
    {
        const int nPaints = restOf(view);
        QVERIFY(QMetaObject::invokeMethod(&view, pszSlot, Q_ARG(bool, false)));
        QTRY_VERIFY(view.m_nPaints > nPaints);
    }
    const int nPaints = restOf(view);
    QVERIFY(QMetaObject::invokeMethod(&view, "onStateChangePhotonDensityMapCB", Q_ARG(int, 0)));
    QTRY_VERIFY(view.m_nPaints > nPaints);
    QVERIFY(!view.m_bShowPhotonDensity);
    // Forgetting all results leaves the flags as they are.
    view.clear3DView();
    QVERIFY(!view.m_bShowPhotonDensity);
}

ORM_TEST_MAIN(tst_view_display)
#include "tst_view_display.moc"
