#include "ViewTestTools.h"

using namespace ViewTest;

namespace
{
SResultRecipe valued(int nKind, float fMin, float fMax)
{
    SResultRecipe objRecipe;
    objRecipe.nKind = nKind;
    objRecipe.fMin = fMin;
    objRecipe.fMax = fMax;
    return objRecipe;
}

QVector<float> currentRange(const CRecordingView& view)
{
    QVector<float> vecRange(4);
    view.getMinMax(&vecRange[0], &vecRange[1], &vecRange[2], &vecRange[3]);
    return vecRange;
}

QVector<float> aggregate(const CRecordingView& view)
{
    QVector<float> vecRange(4);
    view.getAggregateMinMax(&vecRange[0], &vecRange[1], &vecRange[2], &vecRange[3]);
    return vecRange;
}

/// Minimum and maximum of the palettes of all volumes, in tile order.
QVector<double> volumeRanges(CRecordingView& view)
{
    QVector<double> vecRanges;
    for (sAnalysisBase& objResult : view.getAnalysisParams())
    {
        vecRanges << objResult.objVolume.getColorPalette()->imageMin() << objResult.objVolume.getColorPalette()->imageMax();
    }
    return vecRanges;
}

void oneFrame(CRecordingView& view)
{
    view.grabFramebuffer();
}

/// The texts of a frame that are units or titles, with where they stand.
QStringList barTexts(const QList<STextCall>& lstCalls, const QStringList& lstWanted)
{
    QStringList lstFound;
    for (const STextCall& objCall : lstCalls)
    {
        if (lstWanted.contains(objCall.strText))
        {
            lstFound.append(QStringLiteral("%1 at %2,%3 in %4,%5 %6x%7 box %8x%9")
                                .arg(objCall.strText)
                                .arg(objCall.fX)
                                .arg(objCall.fY)
                                .arg(objCall.rectViewport.x())
                                .arg(objCall.rectViewport.y())
                                .arg(objCall.rectViewport.width())
                                .arg(objCall.rectViewport.height())
                                .arg(objCall.fRight - objCall.fLeft)
                                .arg(objCall.fTop - objCall.fBottom));
        }
    }
    return lstFound;
}
} // namespace

/// Ranges over all results of a kind, how they reach volumes and bars, and where the bars stand.
class tst_view_colorbars : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void aggregateOfTheLoadedResults_data();
    void aggregateOfTheLoadedResults();
    void otherKindsCountAsFluorescentButGetNoRange();
    void newResultsSpreadTheAggregate();
    void customRangeLivesForOneFrame();
    void customRangeWinsOverTheAggregate();
    void currentRangeEndsACustomOne();
    void laterResultsOverwriteACustomRange();
    void customRangesPerKind();
    void paletteIsCopiedOnTheFlagsOnly();
    void firstResultOfAKindStandsForIt();
    void removingTheLastResultKeepsTheRange();
    void removingAKindLeavesOneBar();
    void barsStandInTheirPlaces_data();
    void barsStandInTheirPlaces();
    void textsAreInThePreferredColorAndSize();
    void emptyUnitsLeaveTheTitleInItsPlace();
    void minimumEqualToMaximumIsPassedOn();
    void changedRangeTakesTwoPaints();
    void voxelsHaveTheColorsOfTheBar_data();
    void voxelsHaveTheColorsOfTheBar();
    void smallWindowsKeepTheTexts();
};

void tst_view_colorbars::cleanup()
{
    COrmPreference::setStore(QString());
}

void tst_view_colorbars::aggregateOfTheLoadedResults_data()
{
    QTest::addColumn<QVector<float>>("vecValues"); // kind, minimum, maximum of each result
    QTest::addColumn<QVector<float>>("vecRange");
    QTest::newRow("nothing") << QVector<float>{} << QVector<float>{-1, -1, -1, -1};
    QTest::newRow("one SOLA") << QVector<float>{0, 2, 8} << QVector<float>{2, 8, -1, -1};
    QTest::newRow("one NOVA") << QVector<float>{1, 2, 8} << QVector<float>{-1, -1, 2, 8};
    QTest::newRow("widened below") << QVector<float>{0, 2, 8, 0, 1, 7} << QVector<float>{1, 8, -1, -1};
    QTest::newRow("widened above") << QVector<float>{0, 2, 8, 0, 3, 9} << QVector<float>{2, 9, -1, -1};
    QTest::newRow("inside") << QVector<float>{0, 2, 8, 0, 3, 7} << QVector<float>{2, 8, -1, -1};
    QTest::newRow("both kinds apart") << QVector<float>{0, 2, 8, 1, 100, 900, 0, 1, 5, 1, 50, 800} << QVector<float>{1, 8, 50, 900};
    QTest::newRow("zero is a value") << QVector<float>{0, 0, 0} << QVector<float>{0, 0, -1, -1};
    QTest::newRow("negative values") << QVector<float>{0, -5, -2} << QVector<float>{-5, -2, -1, -1};
}

void tst_view_colorbars::aggregateOfTheLoadedResults()
{
    QFETCH(QVector<float>, vecValues);
    CRecordingView view;
    for (int i = 0; i + 2 < vecValues.size(); i += 3)
    {
        view.load(result(QString::number(i), valued(static_cast<int>(vecValues[i]), vecValues[i + 1], vecValues[i + 2])));
    }
    QTEST(aggregate(view), "vecRange");
    QCOMPARE(currentRange(view), (QVector<float>{-1, -1, -1, -1})); // it only tells
}

void tst_view_colorbars::otherKindsCountAsFluorescentButGetNoRange()
{
    CRecordingView view;
    view.load(result(QStringLiteral("N"), valued(1, 5, 6)));
    view.getAnalysisParams()[0].nAnalysisType = 2;
    QCOMPARE(aggregate(view), (QVector<float>{-1, -1, 5, 6}));
    const QVector<double> vecBefore = volumeRanges(view);
    view.setCurrentMinMax(1, 2, 3, 4);
    view.updateAggregateMinMax();
    QCOMPARE(volumeRanges(view), vecBefore);
}

void tst_view_colorbars::newResultsSpreadTheAggregate()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("N1"), valued(1, 5, 6)));
    oneFrame(view);
    QCOMPARE(currentRange(view), (QVector<float>{-1, -1, 5, 6}));
    view.load(result(QStringLiteral("N2"), valued(1, 2, 4)));
    QCOMPARE(currentRange(view), (QVector<float>{-1, -1, 5, 6})); // only a frame moves it
    oneFrame(view);
    QCOMPARE(currentRange(view), (QVector<float>{-1, -1, 2, 6}));
    QCOMPARE(volumeRanges(view), (QVector<double>{2, 6, 2, 6}));
    QCOMPARE(view.getNOVAColorPalette()->imageMin(), 2.0);
    QCOMPARE(view.getNOVAColorPalette()->imageMax(), 6.0);
}

void tst_view_colorbars::customRangeLivesForOneFrame()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.picture();
    view.setCustomRange(2, 5, -1, -1);
    view.setColorPaletteModified(true);
    QVERIFY(view.m_bUseCustomRange);
    QCOMPARE(volumeRanges(view), (QVector<double>{1, 10})); // nothing before the frame
    oneFrame(view);
    QVERIFY(!view.m_bUseCustomRange);
    QCOMPARE(volumeRanges(view), (QVector<double>{2, 5}));
    QCOMPARE(view.getSOLAColorPalette()->imageMin(), 2.0);
    QCOMPARE(view.getSOLAColorPalette()->imageMax(), 5.0);
    // The slider's full extent stays, and the custom values stay in the palettes.
    QCOMPARE(currentRange(view), (QVector<float>{1, 10, -1, -1}));
    oneFrame(view);
    QCOMPARE(volumeRanges(view), (QVector<double>{2, 5}));
}

void tst_view_colorbars::customRangeWinsOverTheAggregate()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.setCustomRange(3, 4, -1, -1);
    QVERIFY(view.m_bResultsChanged);
    oneFrame(view);
    QCOMPARE(currentRange(view), (QVector<float>{1, 10, -1, -1}));
    QCOMPARE(volumeRanges(view), (QVector<double>{3, 4}));
    QCOMPARE(view.getSOLAColorPalette()->imageMax(), 4.0);
}

void tst_view_colorbars::currentRangeEndsACustomOne()
{
    CRecordingView view;
    view.setCustomRange(3, 4, 5, 6);
    view.setCurrentMinMax(7, 8, 9, 10);
    QVERIFY(!view.m_bUseCustomRange);
    QCOMPARE(currentRange(view), (QVector<float>{7, 8, 9, 10}));
    view.setCustomRange(3, 4, 5, 6);
    QCOMPARE(currentRange(view), (QVector<float>{7, 8, 9, 10}));
}

void tst_view_colorbars::laterResultsOverwriteACustomRange()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S1"), valued(0, 1, 10)));
    view.setCustomRange(3, 4, -1, -1);
    oneFrame(view);
    QCOMPARE(volumeRanges(view), (QVector<double>{3, 4}));
    view.load(result(QStringLiteral("S2"), valued(0, 2, 20)));
    oneFrame(view);
    QCOMPARE(volumeRanges(view), (QVector<double>{1, 20, 1, 20}));
}

void tst_view_colorbars::customRangesPerKind()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.load(result(QStringLiteral("N"), valued(1, 100, 200)));
    view.picture();
    view.setCustomRange(3, 4, 120, 130);
    view.setColorPaletteModified(true);
    oneFrame(view);
    QCOMPARE(volumeRanges(view), (QVector<double>{3, 4, 120, 130}));
    QCOMPARE(view.getSOLAColorPalette()->imageMax(), 4.0);
    QCOMPARE(view.getNOVAColorPalette()->imageMax(), 130.0);
}

void tst_view_colorbars::paletteIsCopiedOnTheFlagsOnly()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.picture();
    const int nBefore = view.getSOLAColorPalette()->colorTableType();
    COrmPalette* pVolume = view.getAnalysisParams()[0].objVolume.getColorPalette();
    const auto eOther = static_cast<ORM_COLORTABLE_TYPES>(nBefore == 5 ? 6 : 5);
    pVolume->setColorTableType(eOther, 0.1f, 0.9f);
    pVolume->setReversed(1);
    oneFrame(view);
    QCOMPARE(int(view.getSOLAColorPalette()->colorTableType()), nBefore);
    view.setColorPaletteModified(true);
    oneFrame(view);
    QVERIFY(!view.m_bColorPaletteModified);
    QCOMPARE(view.getSOLAColorPalette()->colorTableType(), eOther);
    QCOMPARE(view.getSOLAColorPalette()->getColorTableLow(), 0.1f);
    QVERIFY(view.getSOLAColorPalette()->reversed() != 0);
    // A copy: what is done to it does nothing to the volume.
    view.getSOLAColorPalette()->setReversed(0);
    QVERIFY(view.getAnalysisParams()[0].objVolume.getColorPalette()->reversed() != 0);
}

void tst_view_colorbars::firstResultOfAKindStandsForIt()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    for (int i = 0; i < 4; ++i)
    {
        sAnalysisBase objResult = result(QString::number(i), valued(i / 2, 1, 10));
        objResult.objVolume.getColorPalette()->setColorTableType(static_cast<ORM_COLORTABLE_TYPES>(3 + i), 0.0f, 1.0f);
        view.load(objResult);
    }
    oneFrame(view);
    QCOMPARE(int(view.getSOLAColorPalette()->colorTableType()), 3);
    QCOMPARE(int(view.getNOVAColorPalette()->colorTableType()), 5);
}

void tst_view_colorbars::removingTheLastResultKeepsTheRange()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.picture();
    view.getSelectedList().append(QStringLiteral("SEQS"));
    view.onClickRemoveSelectedAction();
    QVERIFY(view.m_bResultsChanged);
    oneFrame(view);
    QVERIFY(!view.m_bResultsChanged);
    QCOMPARE(currentRange(view), (QVector<float>{1, 10, -1, -1}));
    view.load(result(QStringLiteral("N"), valued(1, 4, 5)));
    oneFrame(view);
    QCOMPARE(currentRange(view), (QVector<float>{-1, -1, 4, 5}));
}

void tst_view_colorbars::removingAKindLeavesOneBar()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    const QStringList lstTitles = {QStringLiteral("SOLA Results"), QStringLiteral("NOVA Results")};
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.load(result(QStringLiteral("N"), valued(1, 4, 5)));
    QCOMPARE(barTexts(view.textsOfAFrame(), lstTitles).size(), 2);
    view.getSelectedList().append(QStringLiteral("SEQS"));
    view.onClickRemoveSelectedAction();
    QCOMPARE(barTexts(view.textsOfAFrame(), lstTitles), QStringList{QStringLiteral("NOVA Results at 5,8 in 410,0 110x300 box 110x300")});
    QCOMPARE(currentRange(view), (QVector<float>{-1, -1, 4, 5}));
}

void tst_view_colorbars::barsStandInTheirPlaces_data()
{
    QTest::addColumn<QVector<int>>("vecKinds");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QStringList>("lstTexts");
    const QString strUnitHeight = QString::number(
        []
        {
            QFont font = QApplication::font();
            font.setPointSize(7);
            return QFontMetrics(font).height() + 8;
        }());
    const auto fnTexts = [&](const char* pszKind, const char* pszUnit, const char* pszPlace)
    {
        return QStringList{QStringLiteral("%1 at 5,%2 in %3").arg(QLatin1String(pszUnit), strUnitHeight, QLatin1String(pszPlace)),
                           QStringLiteral("%1 Results at 5,8 in %2").arg(QLatin1String(pszKind), QLatin1String(pszPlace))};
    };
    QTest::newRow("only SOLA") << QVector<int>{0} << QSize(500, 300) << fnTexts("SOLA", "photons/sec", "410,0 110x300 box 110x300");
    QTest::newRow("only NOVA") << QVector<int>{1, 1} << QSize(501, 301) << fnTexts("NOVA", "pmol", "411,0 110x301 box 110x301");
    QTest::newRow("both, NOVA below and first")
        << QVector<int>{0, 1} << QSize(500, 300)
        << fnTexts("NOVA", "pmol", "410,0 110x145 box 110x150") + fnTexts("SOLA", "photons/sec", "410,150 110x145 box 110x150");
    QTest::newRow("both, odd height") << QVector<int>{0, 1} << QSize(500, 301)
                                      << fnTexts("NOVA", "pmol", "410,0 110x145 box 110x150") +
                                             fnTexts("SOLA", "photons/sec", "410,150 110x145 box 110x150");
    QTest::newRow("nothing loaded") << QVector<int>{} << QSize(500, 300) << QStringList();
}

void tst_view_colorbars::barsStandInTheirPlaces()
{
    QFETCH(QVector<int>, vecKinds);
    QFETCH(QSize, size);
    CRecordingView view;
    show(view, size);
    view.setSOLAUnit(QStringLiteral("photons/sec"));
    view.setNOVAUnit(QStringLiteral("pmol"));
    for (const int nKind : vecKinds)
    {
        sAnalysisBase objResult = result(QStringLiteral("R"), valued(nKind, 1, 10));
        objResult.objVolume.getColorPalette()->setColorTableType(ORM_CT_GRAYS, 0.0f, 1.0f);
        view.load(objResult);
    }
    const QStringList lstWanted = {QStringLiteral("SOLA Results"), QStringLiteral("NOVA Results"), QStringLiteral("photons/sec"),
                                   QStringLiteral("pmol")};
    QTEST(barTexts(view.textsOfAFrame(), lstWanted), "lstTexts");

    // The bar itself: 30 wide, from 30 up to 15 below the top, or half of that where there are two, squeezed by box and viewport.
    const QImage img = view.picture();
    const int nLeft = size.width() - 90 + 5;
    const bool bTwo = vecKinds.contains(0) && vecKinds.contains(1);
    const QRect rectColumn(nLeft + 12, 0, 1, size.height());
    if (vecKinds.isEmpty())
    {
        QCOMPARE(countOf(img, QRect(nLeft - 5, 0, 95, size.height()), isNotBlack), 0);
    }
    else if (!bTwo)
    {
        const QRect rectTop = boundsOf(img, rectColumn, [](QRgb rgb) { return qGray(rgb) > 240; });
        QVERIFY(qAbs(rectTop.bottom() - (size.height() - 16)) <= 1);
        QVERIFY(isBlack(pixelAt(img, nLeft + 12, size.height() - 8)));
        const QRect rectWidth = boundsOf(img, QRect(nLeft - 5, size.height() / 2 + 3, 37, 1), [](QRgb rgb) { return qGray(rgb) > 60; });
        QVERIFY(qAbs(rectWidth.left() - nLeft) <= 1);
        QVERIFY(qAbs(rectWidth.right() - (nLeft + 29)) <= 2);
    }
    else
    {
        const int nHalf = size.height() / 2;
        const int nViewport = (size.height() - 10) / 2;
        const double fSqueeze = double(nViewport) / nHalf;
        for (const int nBottom : {0, nHalf})
        {
            const QRect rectTop = boundsOf(img, QRect(nLeft + 12, nBottom, 1, nHalf), [](QRgb rgb) { return qGray(rgb) > 240; });
            QVERIFY(qAbs(rectTop.bottom() - (nBottom + (30 + nHalf - 40) * fSqueeze - 1)) <= 1.5);
        }
    }
}

void tst_view_colorbars::textsAreInThePreferredColorAndSize()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    QCOMPARE(objSettings.nFontSize, 8);
    objSettings.clrText = QColor(0, 255, 255);
    objSettings.nFontSize = 10;
    COrmPreference::set3DViewPreferences(objSettings);
    CRecordingView view;
    show(view, QSize(500, 300));
    view.setSOLAUnit(QStringLiteral("photons/sec"));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    int nTexts = 0;
    for (const STextCall& objCall : view.textsOfAFrame())
    {
        if (objCall.strText == QStringLiteral("photons/sec") || objCall.strText == QStringLiteral("SOLA Results"))
        {
            ++nTexts;
            QCOMPARE(objCall.clr, QColor(0, 255, 255));
            QCOMPARE(objCall.font.pointSize(), 9);
            QCOMPARE(objCall.font.family(), QApplication::font().family());
            QCOMPARE(objCall.nListBase, 2000);
            QCOMPARE(objCall.fZ, 0.0);
        }
    }
    QCOMPARE(nTexts, 2);
    const auto fnIsCyan = [](QRgb rgb) { return qRed(rgb) < 40 && qGreen(rgb) > 180 && qBlue(rgb) > 180; };
    QVERIFY(countOf(view.picture(), QRect(410, 0, 90, 28), fnIsCyan) > 30);
}

void tst_view_colorbars::emptyUnitsLeaveTheTitleInItsPlace()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    const QStringList lstTitle = {QStringLiteral("SOLA Results")};
    QCOMPARE(barTexts(view.textsOfAFrame(), lstTitle), QStringList{QStringLiteral("SOLA Results at 5,8 in 410,0 110x300 box 110x300")});
}

void tst_view_colorbars::minimumEqualToMaximumIsPassedOn()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 4, 4)));
    view.picture();
    QCOMPARE(volumeRanges(view), (QVector<double>{4, 4}));
}

void tst_view_colorbars::changedRangeTakesTwoPaints()
{
    CRecordingView view;
    show(view, QSize(500, 300));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.picture();
    const int nAtRest = restOf(view);
    view.setCustomRange(2, 5, -1, -1);
    view.setColorPaletteModified(true);
    view.update();
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 2); // drawn with the old range, pushed, drawn again
    QCOMPARE(restOf(view), nAtRest + 2);
    // The same range again changes nothing, so there is nothing to heal.
    view.setCustomRange(2, 5, -1, -1);
    view.setColorPaletteModified(true);
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 3);
    QCOMPARE(restOf(view), nAtRest + 3);
    // A picture taken at once would show the old volumes beside the new bar; settling paints until they agree.
    view.setCustomRange(1, 3, -1, -1);
    QCOMPARE(view.settle(), 2);
    QCOMPARE(view.settle(), 1);
}

void tst_view_colorbars::voxelsHaveTheColorsOfTheBar_data()
{
    QTest::addColumn<int>("nTable");
    QTest::addColumn<bool>("bReversed");
    QTest::addColumn<bool>("bLog");
    QTest::addColumn<float>("fLow");
    QTest::addColumn<float>("fHigh");
    for (const int nTable : {0, 1, 4, 9, 12})
    {
        QTest::addRow("table %d", nTable) << nTable << false << false << 0.0f << 1.0f;
        QTest::addRow("table %d reversed", nTable) << nTable << true << false << 0.0f << 1.0f;
        QTest::addRow("table %d log", nTable) << nTable << false << true << 0.0f << 1.0f;
        QTest::addRow("table %d spanned, log, reversed", nTable) << nTable << true << true << 0.2f << 0.9f;
    }
}

/// One voxel that fills the middle of its tile, in maximum intensity projection: its pixel is the palette's colour of its value, and
/// the same colour stands in the bar at the height of that value.
void tst_view_colorbars::voxelsHaveTheColorsOfTheBar()
{
    QFETCH(int, nTable);
    QFETCH(bool, bReversed);
    QFETCH(bool, bLog);
    QFETCH(float, fLow);
    QFETCH(float, fHigh);
    CRecordingView view;
    show(view, QSize(500, 300));
    SResultRecipe objRecipe = valued(0, 4.0f, 4.0f);
    objRecipe.objSize = Coord3d(3, 3, 3);
    objRecipe.nVoxelEdge = 1;
    view.load(result(QStringLiteral("S"), objRecipe));
    C3DVolume& objVolume = view.getAnalysisParams()[0].objVolume;
    objVolume.setColorTable(nTable, fLow, fHigh);
    objVolume.setColorMapReversed(bReversed ? 1 : 0);
    objVolume.setLogScale(bLog ? 1 : 0);
    view.onStateChangeDisplaySurfaceCB(false);
    view.picture();
    view.setCustomRange(1.0f, 10.0f, -1, -1);
    view.setColorPaletteModified(true);
    const QImage img = view.picture();
    const COrmPalette* pBar = view.getSOLAColorPalette();
    QCOMPARE(pBar->imageMin(), 1.0);
    QCOMPARE(pBar->imageMax(), 10.0);
    const QRgb rgbExpected = pBar->colorForValue(4.0);
    const QRgb rgbVoxel = pixelAt(img, view.tileWidth() / 2, 150);
    QVERIFY2(qAbs(qRed(rgbVoxel) - qRed(rgbExpected)) <= 1 && qAbs(qGreen(rgbVoxel) - qGreen(rgbExpected)) <= 1 &&
                 qAbs(qBlue(rgbVoxel) - qBlue(rgbExpected)) <= 1,
             qPrintable(QStringLiteral("%1 instead of %2").arg(rgbVoxel, 0, 16).arg(rgbExpected, 0, 16)));
    const int nRow = 30 + static_cast<int>(pBar->position(4.0) * (300 - 45));
    const QRgb rgbBar = pixelAt(img, 410 + 5 + 10, nRow);
    const QRgb rgbRow = pBar->lut()[qBound(0, qRound((nRow - 30 + 0.5) / (300 - 45) * 255.0), 255)];
    const auto fnFar = [](QRgb rgbA, QRgb rgbB)
    { return qMax(qAbs(qRed(rgbA) - qRed(rgbB)), qMax(qAbs(qGreen(rgbA) - qGreen(rgbB)), qAbs(qBlue(rgbA) - qBlue(rgbB)))); };
    QVERIFY2(fnFar(rgbBar, rgbRow) <= 4, qPrintable(QStringLiteral("bar %1, table %2").arg(rgbBar, 0, 16).arg(rgbRow, 0, 16)));
    QVERIFY2(fnFar(rgbBar, rgbVoxel) <= 8, qPrintable(QStringLiteral("bar %1, voxel %2").arg(rgbBar, 0, 16).arg(rgbVoxel, 0, 16)));
}

void tst_view_colorbars::smallWindowsKeepTheTexts()
{
    QWidget wnd;
    wnd.resize(900, 700);
    CRecordingView view(&wnd);
    view.resize(300, 60);
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    view.load(result(QStringLiteral("S"), valued(0, 1, 10)));
    view.load(result(QStringLiteral("N"), valued(1, 4, 5)));
    const QStringList lstTitles = {QStringLiteral("SOLA Results"), QStringLiteral("NOVA Results")};
    QCOMPARE(barTexts(view.textsOfAFrame(), lstTitles), (QStringList{QStringLiteral("NOVA Results at 5,8 in 210,0 110x25 box 110x30"),
                                                                     QStringLiteral("SOLA Results at 5,8 in 210,30 110x25 box 110x30")}));
}

ORM_TEST_MAIN(tst_view_colorbars)
#include "tst_view_colorbars.moc"
