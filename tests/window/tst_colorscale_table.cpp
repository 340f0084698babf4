#include "CPaintCount.h"
#include "ColorRangeMath.h"
#include "ColorScaleTools.h"
#include "OrmColorTables.h"
#include "OrmTestMain.h"
#include "QtThumbWheel.h"

#include <QSpinBox>
#include <QToolButton>

using ColorScaleTest::CPanel;
using WindowTest::call;
using WindowTest::paint;
using WindowTest::SViewNumbers;

namespace
{
QString tableOf(const C3DVolume& objVolume)
{
    return QStringLiteral("%1 %2 %3")
        .arg(static_cast<int>(objVolume.m_objPalette.m_eColorTableType))
        .arg(static_cast<double>(objVolume.m_objPalette.m_fColorTableLow))
        .arg(static_cast<double>(objVolume.m_objPalette.m_fColorTableHigh));
}
} // namespace

/// The colours of the panel that sets the colour scale of each kind: table, span, order, scale and opacity.
class tst_colorscale_table : public QObject
{
    Q_OBJECT

private slots:
    void stripShowsTheTable_data();
    void stripShowsTheTable();
    void stripShowsTheWholeTable();
    void tableReachesOneKind();
    void tableKeepsTheSpan();
    void spanReachesOneKind();
    void reverseReachesBothKinds();
    void logScaleReachesBothKinds();
    void mipReachesBothKinds();
    void panelFollowsThePalette();
    void panelFollowsThePaletteInSilence();
    void opacityFromEitherControl();
    void opacityIsHandedOnOnce();
    void everyChangeAsksForAPaint_data();
    void everyChangeAsksForAPaint();
};

void tst_colorscale_table::stripShowsTheTable_data()
{
    QTest::addColumn<int>("nIndex");
    QTest::addColumn<int>("nType");
    const QList<int> lstTypes = {0, 8, 9, 10, 11, 12, 13, 14, 23, 25, 24, 1, 26};
    for (int i = 0; i < lstTypes.size(); ++i)
    {
        QTest::addRow("entry %d", i) << i << lstTypes.at(i);
    }
}

void tst_colorscale_table::stripShowsTheTable()
{
    QFETCH(int, nIndex);
    QFETCH(int, nType);
    CPanel objPanel;
    objPanel.table()->setCurrentIndex(nIndex == 0 ? 1 : 0);
    objPanel.table()->setCurrentIndex(nIndex);
    QCOMPARE(static_cast<int>(objPanel.strip()->paletteCT()), nType);
    // Strip, list and voxels show one table.
    QCOMPARE(static_cast<int>(objPanel.volume(0).m_objPalette.m_eColorTableType), nType);
    QCOMPARE(getCTNameForColorTable(objPanel.strip()->paletteCT()), objPanel.table()->currentText());
    objPanel.table()->setCurrentIndex(-1); // none: the first of the plain ramps
    QCOMPARE(objPanel.strip()->paletteCT(), ORM_CT_RED);
}

void tst_colorscale_table::stripShowsTheWholeTable()
{
    CPanel objPanel;
    objPanel.table()->setCurrentText(QStringLiteral("Rainbow"));
    QCoreApplication::processEvents();
    const QImage imgWhole = objPanel.strip()->grab().toImage();
    objPanel.tableSlider()->setSpan(40, 60);
    QCOMPARE(objPanel.strip()->grab().toImage(), imgWhole);
    objPanel.check("m_pReverseColorMapCheck")->click();
    QVERIFY(objPanel.strip()->grab().toImage() != imgWhole);
}

void tst_colorscale_table::tableReachesOneKind()
{
    CPanel objPanel;
    objPanel.load(0, QStringLiteral("third"), 1.0f, 5.0f);
    objPanel.settle(true);
    const QString strNOVA = tableOf(objPanel.volume(2));
    objPanel.table()->setCurrentText(QStringLiteral("Jet"));
    QCOMPARE(tableOf(objPanel.volume(0)), QStringLiteral("26 0 1"));
    QCOMPARE(tableOf(objPanel.volume(1)), QStringLiteral("26 0 1"));
    QCOMPARE(tableOf(objPanel.volume(2)), strNOVA);
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    paint(objPanel.tool());
    QCOMPARE(objPanel.view().getSOLAColorPalette()->colorTableType(), ORM_CT_JET);
    objPanel.chooseKind(1);
    objPanel.table()->setCurrentText(QStringLiteral("Cyan"));
    QCOMPARE(tableOf(objPanel.volume(0)), QStringLiteral("26 0 1"));
    QCOMPARE(tableOf(objPanel.volume(2)), QStringLiteral("11 0 1"));
}

void tst_colorscale_table::tableKeepsTheSpan()
{
    CPanel objPanel;
    objPanel.tableSlider()->setSpan(25, 75);
    objPanel.table()->setCurrentText(QStringLiteral("Rainbow"));
    QCOMPARE(tableOf(objPanel.volume(0)), QStringLiteral("1 0.25 0.75"));
}

void tst_colorscale_table::spanReachesOneKind()
{
    CPanel objPanel;
    objPanel.table()->setCurrentText(QStringLiteral("Jet"));
    const QString strNOVA = tableOf(objPanel.volume(1));
    objPanel.tableSlider()->setLowerValue(50);
    QCOMPARE(tableOf(objPanel.volume(0)), QStringLiteral("26 0.5 1"));
    objPanel.tableSlider()->setUpperValue(75);
    QCOMPARE(tableOf(objPanel.volume(0)), QStringLiteral("26 0.5 0.75"));
    QCOMPARE(tableOf(objPanel.volume(1)), strNOVA);
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
}

void tst_colorscale_table::reverseReachesBothKinds()
{
    CPanel objPanel;
    objPanel.tableSlider()->setSpan(25, 75);
    QCheckBox* pReverse = objPanel.check("m_pReverseColorMapCheck");
    TestWidgets::click(pReverse);
    QVERIFY(pReverse->isChecked());
    QVERIFY(objPanel.volume(0).m_objPalette.reversed() != 0);
    QVERIFY(objPanel.volume(1).m_objPalette.reversed() != 0);
    QVERIFY(objPanel.strip()->isPaletteCTReversed());
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    QVERIFY(tableOf(objPanel.volume(0)).endsWith(QLatin1String("0.25 0.75")));
    // The other kind shows the box as it stands.
    paint(objPanel.tool());
    objPanel.chooseKind(1);
    QVERIFY(pReverse->isChecked());
    TestWidgets::click(pReverse);
    QVERIFY(objPanel.volume(0).m_objPalette.reversed() == 0);
    QVERIFY(objPanel.volume(1).m_objPalette.reversed() == 0);
}

void tst_colorscale_table::logScaleReachesBothKinds()
{
    CPanel objPanel;
    QCheckBox* pLog = objPanel.check("m_pLogarithmicScaleCheck");
    const QList<int> lstHandles = objPanel.handles();
    TestWidgets::click(pLog);
    QVERIFY(objPanel.volume(0).m_objPalette.logScale() != 0);
    QVERIFY(objPanel.volume(1).m_objPalette.logScale() != 0);
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    // Slider and boxes stay linear.
    QCOMPARE(objPanel.handles(), lstHandles);
    objPanel.slider()->setUpperValue(50);
    QCOMPARE(objPanel.maximum()->value(), 100.0);
    paint(objPanel.tool());
    objPanel.chooseKind(1);
    QVERIFY(pLog->isChecked());
    TestWidgets::click(pLog);
    QVERIFY(objPanel.volume(0).m_objPalette.logScale() == 0);
}

void tst_colorscale_table::mipReachesBothKinds()
{
    CPanel objPanel;
    QCheckBox* pMIP = objPanel.check("m_pMIPCheck");
    pMIP->setChecked(true);
    pMIP->setChecked(false);
    QVERIFY(!objPanel.volume(0).m_bMIP);
    QVERIFY(!objPanel.volume(1).m_bMIP);
    objPanel.view().setColorPaletteModified(false);
    pMIP->click();
    QVERIFY(objPanel.volume(0).m_bMIP);
    QVERIFY(objPanel.volume(1).m_bMIP);
    QVERIFY(!SViewNumbers::paletteModified(objPanel.view()));
    // Half checked is not checked.
    call(objPanel.tool(), "onCheckMIP", Q_ARG(int, 1));
    QVERIFY(!objPanel.volume(0).m_bMIP);
    call(objPanel.tool(), "onCheckMIP", Q_ARG(int, 2));
    QVERIFY(objPanel.volume(0).m_bMIP);
}

void tst_colorscale_table::panelFollowsThePalette()
{
    CPanel objPanel;
    objPanel.volume(1).setColorTable(11, 0.2f, 0.9f);
    objPanel.volume(1).setColorMapReversed(1);
    objPanel.volume(1).setLogScale(1);
    objPanel.view().setColorPaletteModified(true);
    objPanel.chooseKind(1); // as of the last frame: the palette from before
    paint(objPanel.tool());
    call(objPanel.tool(), "updateColorPaletteForCurrentTab");
    QCOMPARE(objPanel.table()->currentText(), QStringLiteral("Rainbow"));
    QCOMPARE(objPanel.tableSlider()->lowerValue(), ColorRangeMath::toInt(static_cast<double>(0.2f * 100.0f)));
    QCOMPARE(objPanel.tableSlider()->upperValue(), ColorRangeMath::toInt(static_cast<double>(0.9f * 100.0f)));
    QVERIFY(objPanel.check("m_pReverseColorMapCheck")->isChecked());
    QVERIFY(objPanel.check("m_pLogarithmicScaleCheck")->isChecked());
    QCOMPARE(objPanel.strip()->paletteCT(), ORM_CT_RAINBOW);
    objPanel.chooseKind(0);
    QVERIFY(!objPanel.check("m_pReverseColorMapCheck")->isChecked());
    QVERIFY(!objPanel.check("m_pLogarithmicScaleCheck")->isChecked());
    QVERIFY(objPanel.table()->currentText() != QLatin1String("Rainbow"));
}

void tst_colorscale_table::panelFollowsThePaletteInSilence()
{
    CPanel objPanel;
    objPanel.volume(0).setColorTable(12, 0.5f, 0.75f);
    objPanel.view().setColorPaletteModified(true);
    paint(objPanel.tool());
    QSignalSpy objTable(objPanel.table(), SIGNAL(currentIndexChanged(int)));
    QSignalSpy objSpan(objPanel.tableSlider(), SIGNAL(spanChanged(int, int)));
    QSignalSpy objReverse(objPanel.check("m_pReverseColorMapCheck"), SIGNAL(toggled(bool)));
    QSignalSpy objLog(objPanel.check("m_pLogarithmicScaleCheck"), SIGNAL(toggled(bool)));
    call(objPanel.tool(), "updateColorPaletteForCurrentTab");
    QCOMPARE(objPanel.table()->currentText(), QStringLiteral("Jet"));
    QCOMPARE(objPanel.tableSlider()->lowerValue(), 50);
    QCOMPARE(objTable.size() + objSpan.size() + objReverse.size() + objLog.size(), 0);
    QVERIFY(!objPanel.table()->signalsBlocked());
    QVERIFY(!objPanel.tableSlider()->signalsBlocked());
}

void tst_colorscale_table::opacityFromEitherControl()
{
    CPanel objPanel;
    auto* pSlider = objPanel.tool().get<QSlider>("m_pOpacitySlider");
    auto* pBox = objPanel.tool().get<QSpinBox>("m_pOpacitySpinBox");
    pSlider->setValue(30);
    QCOMPARE(pBox->value(), 30);
    QCOMPARE(SViewNumbers::meshOpacity(objPanel.view()), 0.3f);
    pBox->setValue(85);
    QCOMPARE(pSlider->value(), 85);
    QCOMPARE(SViewNumbers::meshOpacity(objPanel.view()), 0.85f);
    paint(objPanel.tool());
    QCOMPARE(objPanel.view().getAnalysisParams().first().objMesh.m_fOpacity, 0.85f);
}

void tst_colorscale_table::opacityIsHandedOnOnce()
{
    // Slider and box feed each other; that ends with the value that both have.
    CPanel objPanel;
    QSignalSpy objSlider(objPanel.tool().get<QSlider>("m_pOpacitySlider"), SIGNAL(valueChanged(int)));
    QSignalSpy objBox(objPanel.tool().get<QSpinBox>("m_pOpacitySpinBox"), SIGNAL(valueChanged(int)));
    objPanel.tool().get<QSlider>("m_pOpacitySlider")->setValue(20);
    QCOMPARE(objSlider.size(), 1);
    QCOMPARE(objBox.size(), 1);
    QCOMPARE(objSlider.first().first().toInt(), 20);
    QCOMPARE(objBox.first().first().toInt(), 20);
}

void tst_colorscale_table::everyChangeAsksForAPaint_data()
{
    QTest::addColumn<int>("nChange");
    for (const char* pName : {"minimum", "maximum", "lower handle", "upper handle", "reset", "table", "span", "reverse", "log scale", "MIP",
                              "opacity", "wheel", "preferences"})
    {
        static int s_nChange = 0;
        QTest::newRow(pName) << s_nChange++;
    }
}

void tst_colorscale_table::everyChangeAsksForAPaint()
{
    QFETCH(int, nChange);
    CPanel objPanel;
    QCoreApplication::processEvents();
    CPaintCount objPaints(objPanel.view());
    QCoreApplication::processEvents();
    objPaints.clear();
    const QList<std::function<void()>> lstChanges = {[&]() { objPanel.minimum()->setValue(30.0); },
                                                     [&]() { objPanel.maximum()->setValue(130.0); },
                                                     [&]() { objPanel.slider()->setLowerValue(20); },
                                                     [&]() { objPanel.slider()->setUpperValue(80); },
                                                     [&]() { objPanel.tool().get<QToolButton>("m_pResetColorBarMaxMinButton")->click(); },
                                                     [&]() { objPanel.table()->setCurrentIndex(11); },
                                                     [&]() { objPanel.tableSlider()->setSpan(10, 90); },
                                                     [&]() { objPanel.check("m_pReverseColorMapCheck")->click(); },
                                                     [&]() { objPanel.check("m_pLogarithmicScaleCheck")->click(); },
                                                     [&]() { objPanel.check("m_pMIPCheck")->click(); },
                                                     [&]() { objPanel.tool().get<QSlider>("m_pOpacitySlider")->setValue(10); },
                                                     [&]() { objPanel.tool().get<QtThumbWheel>("m_pThumWheel")->setValue(10); },
                                                     [&]() { call(objPanel.tool(), "updateUserPreferences"); }};
    QCOMPARE(objPaints.count(), 0);
    lstChanges.at(nChange)();
    QTRY_VERIFY(objPaints.count() > 0);
}

ORM_TEST_MAIN(tst_colorscale_table)
#include "tst_colorscale_table.moc"
