#include "CPaintCount.h"
#include "ColorsTestTools.h"
#include "OrmTestMain.h"

#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>

using namespace ColorsTest;

namespace
{
/// Both kinds from files: "low" 2 to 80 and "high" 10 to 200 of SOLA, "dye" 0.5 to 4 of NOVA.
class CLoadedTool : public CColorTool
{
public:
    CLoadedTool()
    {
        write(0, QStringLiteral("low"), ramp(2.0f, 80.0f));
        write(0, QStringLiteral("high"), ramp(10.0f, 200.0f));
        write(1, QStringLiteral("dye"), ramp(0.5f, 4.0f));
    }
    void loadAll()
    {
        load(0, {QStringLiteral("low"), QStringLiteral("high")});
        load(1, {QStringLiteral("dye")});
    }
    /// What a user might set for the kind that is shown.
    void setUp(const char* pTable, int nLow, int nHigh, double fMin, double fMax)
    {
        table()->setCurrentText(QLatin1String(pTable));
        tableSlider()->setSpan(nLow, nHigh);
        typeRange(fMin, fMax);
        settle();
    }
    QString paletteOf(int nTile) { return describe(*records()[nTile].objVolume.getColorPalette()); }

    /// How often the view paints from now on, as long as the event loop has something to do.
    int paintsUntilRest(const std::function<void()>& fnChange)
    {
        rest();
        const CPaintCount objPaints(view());
        fnChange();
        rest();
        return objPaints.count();
    }
    void rest()
    {
        for (int i = 0; i < 100; ++i)
        {
            QGuiApplication::sync(); // also what the window system still has to say to what was done before
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }
};
} // namespace

/// The colour scale over the life of results: loading, changing, switching kinds, removing, loading again.
class tst_colors_life : public QObject
{
    Q_OBJECT

private slots:
    void loadedResultsShareTheirKindsScale();
    void panelAgreesAfterEachChange();
    void kindsKeepTheirLooks();
    void tableOfOneKindLeavesTheOther();
    void secondLoadOfAKindTakesTheLooks();
    void loadingRemovingAndLoadingAgain();
    void removingAKindLeavesTheOther();
    void rangeIsDrawnOneFrameLateAndHealed();
    void resetBringsTheResultsRangeBack();
    void rangeWidenedByTypingLastsUntilTheNextLoad();
    void returnEndsANumberAndNothingElse();
    void opacityRunsThroughBothControls();
    void numbersStandWholeInTheirBoxes_data();
    void numbersStandWholeInTheirBoxes();
};

void tst_colors_life::loadedResultsShareTheirKindsScale()
{
    CLoadedTool objTool;
    objTool.loadAll();
    QCOMPARE(objTool.records().size(), 3);
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 200.0f, 0.5f, 4.0f}));
    QCOMPARE(objTool.disagreement(1), QString());
    objTool.chooseKind(0);
    QCOMPARE(objTool.disagreement(0), QString());
    QCOMPARE(objTool.minimum()->value(), 2.0);
    QCOMPARE(objTool.maximum()->value(), 200.0);
}

void tst_colors_life::panelAgreesAfterEachChange()
{
    CLoadedTool objTool;
    objTool.loadAll();
    const QList<std::function<void()>> lstChanges = {
        [&] { objTool.table()->setCurrentText(QStringLiteral("Rainbow")); },
        [&] { objTool.tableSlider()->setLowerValue(13); },
        [&] { objTool.tableSlider()->setUpperValue(71); },
        [&] { objTool.check("m_pReverseColorMapCheck")->click(); },
        [&] { objTool.check("m_pLogarithmicScaleCheck")->click(); },
        [&] { objTool.check("m_pMIPCheck")->click(); },
        [&] { objTool.slider()->setUpperValue(60); },
        [&] { CColorTool::type(objTool.maximum(), 3.0); },
        [&] { CColorTool::type(objTool.minimum(), 1.25); },
        [&] { CColorTool::type(objTool.maximum(), 77.0); },
        [&] { objTool.slider()->setLowerValue(3); },
        [&] { CColorTool::type(objTool.maximum(), 2.0); }, // upside down by now
        [&] { objTool.tool().get<QToolButton>("m_pResetColorBarMaxMinButton")->click(); },
    };
    for (const int nKind : {1, 0})
    {
        objTool.chooseKind(nKind);
        for (int i = 0; i < lstChanges.size(); ++i)
        {
            const QString strBefore = CColorTool::describe(*objTool.view().getSOLAColorPalette()) +
                                      CColorTool::describe(*objTool.view().getNOVAColorPalette()) +
                                      QString::number(objTool.records().first().objVolume.m_bMIP);
            lstChanges.at(i)();
            objTool.settle();
            const QString strDisagreement = objTool.disagreement(nKind);
            QVERIFY2(strDisagreement.isEmpty(), qPrintable(QStringLiteral("kind %1, change %2: ").arg(nKind).arg(i) + strDisagreement));
            const QString strAfter = CColorTool::describe(*objTool.view().getSOLAColorPalette()) +
                                     CColorTool::describe(*objTool.view().getNOVAColorPalette()) +
                                     QString::number(objTool.records().first().objVolume.m_bMIP);
            QVERIFY2(strAfter != strBefore, qPrintable(QStringLiteral("kind %1, change %2").arg(nKind).arg(i)));
        }
    }
}

void tst_colors_life::kindsKeepTheirLooks()
{
    CLoadedTool objTool;
    objTool.loadAll();
    objTool.setUp("Jet", 10, 90, 1.0, 3.0);

    objTool.chooseKind(0);

    objTool.setUp("EosB", 30, 100, 20.0, 150.0);
    const QString strSOLA = QStringLiteral("EosB 30-100 20..150");
    const QString strNOVA = QStringLiteral("Jet 10-90 1..3");

    for (const int nKind : {0, 1, 0, 1})
    {
        objTool.chooseKind(nKind);
        QCOMPARE(objTool.disagreement(nKind), QString());
        QCOMPARE(CColorTool::describe(*objTool.view().getSOLAColorPalette()), strSOLA);
        QCOMPARE(CColorTool::describe(*objTool.view().getNOVAColorPalette()), strNOVA);
        QCOMPARE(objTool.table()->currentText(), nKind == 0 ? QStringLiteral("EosB") : QStringLiteral("Jet"));
    }
    // A boxes' change acts on both, and both show it.
    objTool.check("m_pReverseColorMapCheck")->click();
    objTool.check("m_pLogarithmicScaleCheck")->click();
    objTool.settle();
    objTool.chooseKind(0);
    QCOMPARE(objTool.disagreement(0), QString());
    QCOMPARE(objTool.paletteOf(0), strSOLA + QStringLiteral(" reversed log"));
    QCOMPARE(objTool.paletteOf(2), strNOVA + QStringLiteral(" reversed log"));
}

void tst_colors_life::tableOfOneKindLeavesTheOther()
{
    CLoadedTool objTool;
    objTool.loadAll();
    objTool.chooseKind(0);
    for (int nTable = 0; nTable < objTool.table()->count(); ++nTable)
    {
        const QString strNOVA = objTool.paletteOf(2);
        objTool.table()->setCurrentIndex(nTable);
        objTool.tableSlider()->setSpan(nTable, 50 + nTable);
        objTool.settle();
        QCOMPARE(objTool.paletteOf(2), strNOVA);
        QCOMPARE(CColorTool::describe(*objTool.view().getNOVAColorPalette()), strNOVA);
        QVERIFY(objTool.paletteOf(0).startsWith(objTool.table()->currentText()));
        QCOMPARE(objTool.paletteOf(1), objTool.paletteOf(0));
    }
}

void tst_colors_life::secondLoadOfAKindTakesTheLooks()
{
    CLoadedTool objTool;
    objTool.load(0, {QStringLiteral("low")});
    objTool.setUp("Rainbow", 20, 80, 10.0, 50.0);
    objTool.check("m_pReverseColorMapCheck")->click();
    objTool.check("m_pLogarithmicScaleCheck")->click();
    objTool.check("m_pMIPCheck")->click();
    objTool.settle();
    objTool.load(0, {QStringLiteral("high")});
    QCOMPARE(objTool.disagreement(0), QString());
    QCOMPARE(objTool.paletteOf(1), QStringLiteral("Rainbow 20-80 2..200 reversed log"));
}

void tst_colors_life::loadingRemovingAndLoadingAgain()
{
    CLoadedTool objTool;
    objTool.loadAll();
    const QStringList lstKeys = objTool.tool().tiles();
    objTool.chooseKind(0);
    objTool.setUp("Rainbow", 10, 60, 20.0, 900.0);
    objTool.check("m_pLogarithmicScaleCheck")->click();
    objTool.check("m_pReverseColorMapCheck")->click();
    objTool.settle();
    QCOMPARE(objTool.disagreement(0), QString());
    objTool.remove(lstKeys);
    QCOMPARE(objTool.records().size(), 0);
    // Whatever the panel kept, tiles, bars and panel say one thing again, and the scale is that of the results.
    for (int nRound = 0; nRound < 2; ++nRound)
    {
        objTool.loadAll();
        QCOMPARE(objTool.tool().tiles(), lstKeys);
        QCOMPARE(objTool.disagreement(1), QString());
        objTool.chooseKind(0);
        QCOMPARE(objTool.disagreement(0), QString());
        QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 200.0f, 0.5f, 4.0f}));
        QCOMPARE(objTool.records().first().objVolume.getColorPalette()->imageMax(), 200.0);
        QCOMPARE(objTool.records().last().objVolume.getColorPalette()->imageMax(), 4.0);
        objTool.remove(lstKeys);
    }
}

void tst_colors_life::removingAKindLeavesTheOther()
{
    CLoadedTool objTool;
    objTool.loadAll();
    objTool.chooseKind(0);
    objTool.setUp("Jet", 0, 100, 30.0, 60.0);
    const QStringList lstKeys = objTool.tool().tiles();
    const QImage imgBoth = objTool.picture();
    objTool.remove(lstKeys.mid(0, 2));
    QCOMPARE(objTool.currentRange(), QList<float>({-1.0f, -1.0f, 0.5f, 4.0f}));
    QVERIFY(!objTool.view().containsSOLAResults());
    QCOMPARE(objTool.disagreement(0), QString());
    objTool.chooseKind(1);
    QVERIFY(objTool.tool().get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    QCOMPARE(objTool.disagreement(1), QString());
    objTool.chooseKind(0);
    QVERIFY(!objTool.tool().get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    QVERIFY(objTool.slider()->lowerValue() >= 0 && objTool.slider()->upperValue() <= 100);
    // One bar at full height where two stood: its colours go on beyond the middle.
    const SBarPlace objBar(objTool.view(), 1, false);
    const int nMiddle = objTool.view().getGLHeight() / 2;
    const QImage imgOne = objTool.picture();
    const auto fnAt = [&](const QImage& img, int nRow) { return img.pixel(objBar.nColumn, img.height() - 1 - nRow); };
    QVERIFY(fnAt(imgOne, nMiddle + 5) != qRgb(0, 0, 0));
    QCOMPARE(text(fnAt(imgBoth, nMiddle - 8)), text(qRgb(0, 0, 0))); // between the bars
    QVERIFY(fnAt(imgOne, nMiddle - 8) != qRgb(0, 0, 0));
}

void tst_colors_life::rangeIsDrawnOneFrameLateAndHealed()
{
    CLoadedTool objTool;
    objTool.loadAll();
    objTool.rest();
    // The frame of the change shows the old colours, and pushes the new range; one more shows it; then there is rest.
    QCOMPARE(objTool.paintsUntilRest([&] { objTool.slider()->setUpperValue(70); }), 2);
    QVERIFY(!SViewParts::usesCustomRange(objTool.view()));
    QCOMPARE(objTool.paintsUntilRest([&] { objTool.slider()->setLowerValue(20); }), 2);
    QCOMPARE(objTool.paintsUntilRest([&] { CColorTool::type(objTool.maximum(), 3.0); }), 2);
    QCOMPARE(objTool.paintsUntilRest([&] { objTool.maximum()->stepBy(1); }), 2);
    // What goes straight into the palettes is shown by the next frame.
    QCOMPARE(objTool.paintsUntilRest([&] { objTool.table()->setCurrentText(QStringLiteral("Jet")); }), 1);
    QCOMPARE(objTool.paintsUntilRest([&] { objTool.check("m_pMIPCheck")->click(); }), 1);
    // The very first picture after a change still has the voxels of before beside the bar of now.
    objTool.tool().get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    objTool.setCheck("m_pMIPCheck", true);
    const int nTile = objTool.records().size() - 1;
    const QPoint ptVoxel = objTool.pixelOf(nTile, objTool.records().last().objVolume.voxels().at(12));
    objTool.typeRange(0.5, 4.0);
    const QImage imgBefore = objTool.picture();
    objTool.slider()->setUpperValue(60);
    const QImage imgFirst = objTool.view().getPrintImage();
    const QImage imgHealed = objTool.picture();
    QCOMPARE(text(imgFirst.pixel(ptVoxel)), text(imgBefore.pixel(ptVoxel)));
    QVERIFY(imgHealed.pixel(ptVoxel) != imgBefore.pixel(ptVoxel));
}

void tst_colors_life::resetBringsTheResultsRangeBack()
{
    CLoadedTool objTool;
    objTool.loadAll();
    objTool.setUp("Rainbow", 0, 100, 0.0, 40.0);
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 200.0f, 0.0f, 40.0f}));
    auto* pReset = objTool.tool().get<QToolButton>("m_pResetColorBarMaxMinButton");
    TestWidgets::click(pReset);
    objTool.settle();
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 200.0f, 0.5f, 4.0f}));
    QCOMPARE(objTool.disagreement(1), QString());
    // Once more, with nothing that the boxes have to change.
    QSignalSpy objMinimum(objTool.minimum(), SIGNAL(valueChanged(double)));
    QSignalSpy objMaximum(objTool.maximum(), SIGNAL(valueChanged(double)));
    TestWidgets::click(pReset);
    QVERIFY(!SViewParts::usesCustomRange(objTool.view()));
    objTool.settle();
    QCOMPARE(objMinimum.size() + objMaximum.size(), 0);
    QCOMPARE(objTool.disagreement(1), QString());
    // With the lower handle at 0 the box shows 0, which isn't the results' minimum.
    objTool.slider()->setLowerValue(10);
    objTool.slider()->setLowerValue(0);
    QCOMPARE(objTool.minimum()->value(), 0.0);
    objTool.settle();
    QCOMPARE(objTool.records().last().objVolume.getColorPalette()->imageMin(), 0.5);
    TestWidgets::click(pReset);
    objTool.settle();
    QCOMPARE(objTool.minimum()->value(), 0.5);
    QCOMPARE(objTool.disagreement(1), QString());
}

void tst_colors_life::rangeWidenedByTypingLastsUntilTheNextLoad()
{
    CLoadedTool objTool;
    objTool.load(0, {QStringLiteral("low")});
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 80.0f, -1.0f, -1.0f}));
    CColorTool::type(objTool.maximum(), 8000.0);
    objTool.settle();
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 8000.0f, -1.0f, -1.0f}));
    CColorTool::type(objTool.maximum(), 9000.0); // a hundred times the results' maximum is the most
    QCOMPARE(objTool.maximum()->value(), 8000.0);
    CColorTool::type(objTool.maximum(), 4001.0);
    objTool.settle();
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 8000.0f, -1.0f, -1.0f}));
    QCOMPARE(objTool.slider()->upperValue(), 50);
    QCOMPARE(objTool.disagreement(0), QString());
    objTool.load(0, {QStringLiteral("high")});
    QCOMPARE(objTool.currentRange(), QList<float>({2.0f, 200.0f, -1.0f, -1.0f}));
    QCOMPARE(objTool.disagreement(0), QString());
}

/// Even with results selected that could be loaded.
void tst_colors_life::returnEndsANumberAndNothingElse()
{
    CLoadedTool objTool;
    objTool.load(0, {QStringLiteral("low")});
    TestWidgets::selectEntries(objTool.tool().get<QListWidget>("m_pResultWidget"), {QStringLiteral("low"), QStringLiteral("high")});
    QVERIFY(objTool.tool().get<QPushButton>("m_pLoadButton")->isEnabled());
    objTool.tool().host().clear();
    objTool.typeRange(10.0, 60.0);
    QTest::keyClick(objTool.tool().get<QSpinBox>("m_pOpacitySpinBox"), Qt::Key_Return);
    QTest::keyClick(objTool.maximum(), Qt::Key_Enter);
    objTool.settle();
    QCOMPARE(objTool.tool().host().calls(), QStringList());
    QCOMPARE(objTool.records().size(), 1);
    QCOMPARE(objTool.maximum()->value(), 60.0);
    QCOMPARE(objTool.paletteOf(0), QStringLiteral("Green 0-100 10..60"));
}

void tst_colors_life::opacityRunsThroughBothControls()
{
    CLoadedTool objTool;
    objTool.loadAll();
    auto* pSlider = objTool.tool().get<QSlider>("m_pOpacitySlider");
    auto* pBox = objTool.tool().get<QSpinBox>("m_pOpacitySpinBox");
    QSignalSpy objSlider(pSlider, SIGNAL(valueChanged(int)));
    QSignalSpy objBox(pBox, SIGNAL(valueChanged(int)));
    // Both signals drive the slot: it runs twice with one value, and paints once.
    QCOMPARE(objTool.paintsUntilRest([&] { pBox->setValue(15); }), 1);
    QCOMPARE(objSlider.size() + objBox.size(), 2);
    QCOMPARE(objSlider.first().first().toInt(), 15);
    QCOMPARE(objBox.first().first().toInt(), 15);
    QCOMPARE(SViewParts::meshOpacity(objTool.view()), static_cast<float>(15 / 100.0));
}

void tst_colors_life::numbersStandWholeInTheirBoxes_data()
{
    QTest::addColumn<float>("fMin");
    QTest::addColumn<float>("fMax");
    QTest::newRow("photons") << 20.721f << 1.10018e5f;
    QTest::newRow("small") << 2.0437e-4f << 0.48209f;
    QTest::newRow("tiny") << 1.2346e-12f << 6.5432e-11f;
    QTest::newRow("huge") << 1.2346e12f << 6.5432e15f;
}

/// A number that is cut off in front of its exponent would say something else.
void tst_colors_life::numbersStandWholeInTheirBoxes()
{
    QFETCH(float, fMin);
    QFETCH(float, fMax);
    CColorTool objTool;
    objTool.write(0, QStringLiteral("one"), ramp(fMin, fMax));
    objTool.load(0, {QStringLiteral("one")});
    for (const QSize& size : {QSize(1200, 800), QSize(10, 10)})
    {
        objTool.tool().window().resize(size);
        QCoreApplication::processEvents();
        for (QDoubleSpinBoxEx* pBox : {objTool.minimum(), objTool.maximum()})
        {
            const auto* pEdit = pBox->findChild<QLineEdit*>();
            const int nText = pEdit->fontMetrics().horizontalAdvance(pEdit->text());
            QVERIFY2(pEdit->contentsRect().width() >= nText,
                     qPrintable(QStringLiteral("\"%1\" needs %2 of %3 pixels").arg(pEdit->text()).arg(nText).arg(pEdit->width())));
        }
    }
}

ORM_TEST_MAIN(tst_colors_life)
#include "tst_colors_life.moc"
