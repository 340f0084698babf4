#include "ColorScaleTools.h"
#include "OrmTestMain.h"

#include <QGroupBox>
#include <QToolButton>

using ColorScaleTest::CPanel;
using WindowTest::call;
using WindowTest::paint;
using WindowTest::SViewNumbers;

/// The range of the panel that sets the colour scale of each kind: boxes, handles and the reset.
class tst_colorscale : public QObject
{
    Q_OBJECT

private slots:
    void kindsHaveTheirPanels();
    void panelShowsTheResultsRange();
    void boxesAreBoundedByTheResults();
    void boxesShowAnyMagnitude();
    void panelWithoutResultsIsOff();
    void panelOfTheOtherKindIsOff();
    void resetOfARangeByALoad();
    void typedMinimum();
    void typedMinimumBelowTheRange();
    void typedMaximum();
    void typedMaximumAboveTheRange();
    void typedMaximumSetsTheStep();
    void typingPassesThroughItsDigits();
    void typedEndsMayCross();
    void typedNumbersOfTheOtherKind();
    void upperHandle();
    void lowerHandle();
    void handlesOnARangeThatDoesNotBeginAtZero();
    void handlesByKeyboard();
    void userRangeReachesTheVolumes();
    void resetButton();
    void resetButtonWithNothingToReset();
    void resetButtonTakesBothKinds();
    void kindsKeepTheirRanges();
};

void tst_colorscale::kindsHaveTheirPanels()
{
    CPanel objPanel;
    auto* pSOLA = objPanel.tool().get<QGroupBox>("m_pSOLAGB");
    auto* pNOVA = objPanel.tool().get<QGroupBox>("m_pNOVAGB");
    auto* pVoxels = objPanel.tool().get<QGroupBox>("m_pDisplayVoxelsGB");
    QVERIFY(pSOLA->isVisible());
    QVERIFY(!pNOVA->isVisible());
    QCOMPARE(pVoxels->title(), QStringLiteral("Display Voxels [SOLA]"));
    QVERIFY(pVoxels->isEnabled());
    objPanel.chooseKind(1);
    QVERIFY(!pSOLA->isVisible());
    QVERIFY(pNOVA->isVisible());
    QCOMPARE(pVoxels->title(), QStringLiteral("Display Voxels [NOVA]"));
    QVERIFY(pVoxels->isEnabled());
}

void tst_colorscale::panelShowsTheResultsRange()
{
    CPanel objPanel(true, true, 20.0f, 200.0f);
    QCOMPARE(objPanel.minimum()->value(), 20.0);
    QCOMPARE(objPanel.maximum()->value(), 200.0);
    QCOMPARE(objPanel.handles(), QList<int>({0, 100}));
    // A second result of the kind widens it.
    objPanel.load(0, QStringLiteral("third"), 5.0f, 300.0f);
    objPanel.settle(true);
    QCOMPARE(objPanel.minimum()->value(), 5.0);
    QCOMPARE(objPanel.maximum()->value(), 300.0);
}

void tst_colorscale::boxesAreBoundedByTheResults()
{
    CPanel objPanel(true, true, 20.0f, 200.0f);
    QCOMPARE(objPanel.minimum()->minimum(), 0.0);
    QCOMPARE(objPanel.minimum()->maximum(), 200.0);
    QCOMPARE(objPanel.maximum()->minimum(), 20.0);
    QCOMPARE(objPanel.maximum()->maximum(), 20000.0);
    QCOMPARE(objPanel.minimum()->decimals(), 15);
    QCOMPARE(objPanel.maximum()->decimals(), 15);
    QCOMPARE(objPanel.minimum()->singleStep(), static_cast<double>(180.0f / 1000.0f));
    QCOMPARE(objPanel.maximum()->singleStep(), static_cast<double>(180.0f / 1000.0f * 10.0f));
    QVERIFY(objPanel.minimum()->scientificNotation());
    QVERIFY(objPanel.maximum()->scientificNotation());
    objPanel.chooseKind(1);
    QCOMPARE(objPanel.minimum()->singleStep(), static_cast<double>(10.0f / 100.0f));
    QCOMPARE(objPanel.maximum()->maximum(), 1200.0);
}

void tst_colorscale::boxesShowAnyMagnitude()
{
    CPanel objPanel(true, false, 2e-9f, 3e-7f);
    QCOMPARE(static_cast<float>(objPanel.minimum()->value()), 2e-9f);
    QCOMPARE(objPanel.maximum()->cleanText(), QStringLiteral("3e-7"));
}

void tst_colorscale::panelWithoutResultsIsOff()
{
    CPanel objPanel(false, false);
    QVERIFY(!objPanel.tool().get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    QCOMPARE(objPanel.currentRange(), QList<float>({-1.0f, -1.0f, -1.0f, -1.0f}));
    for (const int nHandle : objPanel.handles())
    {
        QVERIFY(nHandle >= 0 && nHandle <= 100);
    }
    QCOMPARE(objPanel.minimum()->singleStep(), 0.0);
    // Nothing of the view is marked by the panel's own calls.
    objPanel.view().setColorPaletteModified(false);
    call(objPanel.tool(), "sourceColorspanSliderChanged", Q_ARG(int, 10), Q_ARG(int, 20));
    objPanel.check("m_pReverseColorMapCheck")->click();
    objPanel.check("m_pLogarithmicScaleCheck")->click();
    objPanel.table()->setCurrentIndex(5);
    QVERIFY(!SViewNumbers::paletteModified(objPanel.view()));
}

void tst_colorscale::panelOfTheOtherKindIsOff()
{
    CPanel objPanel(true, false);
    objPanel.chooseKind(1);
    QVERIFY(!objPanel.tool().get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    for (const int nHandle : objPanel.handles())
    {
        QVERIFY(nHandle >= 0 && nHandle <= 100);
    }
}

void tst_colorscale::resetOfARangeByALoad()
{
    CPanel objPanel;
    CPanel::type(objPanel.minimum(), QStringLiteral("50"));
    objPanel.settle(false);
    QCOMPARE(objPanel.minimum()->value(), 50.0);
    objPanel.settle(true);
    QCOMPARE(objPanel.minimum()->value(), 0.0);
    QCOMPARE(objPanel.handles(), QList<int>({0, 100}));
}

void tst_colorscale::typedMinimum()
{
    CPanel objPanel;
    CPanel::type(objPanel.minimum(), QStringLiteral("100"));
    QCOMPARE(objPanel.handles(), QList<int>({50, 100}));
    QVERIFY(SViewNumbers::usesCustomRange(objPanel.view()));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({100.0f, 200.0f, -1.0f, -1.0f}));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
}

void tst_colorscale::typedMinimumBelowTheRange()
{
    CPanel objPanel(true, true, 100.0f, 200.0f);
    CPanel::type(objPanel.minimum(), QStringLiteral("0"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
    QCOMPARE(objPanel.handles(), QList<int>({0, 100}));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).first(), 0.0f);
    // Negative numbers stop at 0.
    CPanel::type(objPanel.minimum(), QStringLiteral("40"));
    objPanel.minimum()->setValue(-3.0);
    QCOMPARE(objPanel.minimum()->value(), 0.0);
}

void tst_colorscale::typedMaximum()
{
    CPanel objPanel;
    CPanel::type(objPanel.maximum(), QStringLiteral("150"));
    QCOMPARE(objPanel.handles(), QList<int>({0, 75}));
    QVERIFY(SViewNumbers::usesCustomRange(objPanel.view()));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({0.0f, 150.0f, -1.0f, -1.0f}));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
}

void tst_colorscale::typedMaximumAboveTheRange()
{
    CPanel objPanel;
    CPanel::type(objPanel.minimum(), QStringLiteral("50"));
    QCOMPARE(objPanel.handles(), QList<int>({25, 100}));
    CPanel::type(objPanel.maximum(), QStringLiteral("400"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 400.0f, 2.0f, 12.0f}));
    QCOMPARE(objPanel.handles(), QList<int>({25, 100}));
    // The next look finds all positions on the wider range.
    objPanel.tool().window().updateUIControls();
    QCOMPARE(objPanel.handles(), QList<int>({12, 100}));
    QCOMPARE(objPanel.minimum()->value(), 50.0);
}

void tst_colorscale::typedMaximumSetsTheStep()
{
    CPanel objPanel;
    CPanel::type(objPanel.maximum(), QStringLiteral("150"));
    QCOMPARE(objPanel.maximum()->singleStep(), 3.0);
    QCOMPARE(objPanel.minimum()->singleStep(), static_cast<double>(0.2f));
    CPanel::type(objPanel.maximum(), QStringLiteral("40"));
    QCOMPARE(objPanel.maximum()->singleStep(), 1.0);
    // Stepping is typing.
    objPanel.maximum()->stepBy(1);
    QCOMPARE(objPanel.maximum()->value(), 41.0);
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).at(1), 41.0f);
}

void tst_colorscale::typingPassesThroughItsDigits()
{
    CPanel objPanel;
    CPanel::type(objPanel.minimum(), QStringLiteral("50"));
    objPanel.maximum()->setFocus();
    objPanel.maximum()->selectAll();
    QTest::keyClicks(objPanel.maximum(), QStringLiteral("16"));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({50.0f, 16.0f, -1.0f, -1.0f}));
    QTest::keyClicks(objPanel.maximum(), QStringLiteral("0"));
    QTest::keyClick(objPanel.maximum(), Qt::Key_Return);
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({50.0f, 160.0f, -1.0f, -1.0f}));
    // On its way the upper handle took the lower one along; the next look puts that right.
    QCOMPARE(objPanel.slider()->upperValue(), 80);
    objPanel.tool().window().updateUIControls();
    QCOMPARE(objPanel.handles(), QList<int>({25, 80}));
}

void tst_colorscale::typedEndsMayCross()
{
    CPanel objPanel;
    CPanel::type(objPanel.maximum(), QStringLiteral("60"));
    CPanel::type(objPanel.minimum(), QStringLiteral("120"));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({120.0f, 60.0f, -1.0f, -1.0f}));
    QCOMPARE(objPanel.minimum()->value(), 120.0);
    QCOMPARE(objPanel.maximum()->value(), 60.0);
    for (const int nHandle : objPanel.handles())
    {
        QVERIFY(nHandle >= 0 && nHandle <= 100);
    }
}

void tst_colorscale::typedNumbersOfTheOtherKind()
{
    CPanel objPanel;
    objPanel.chooseKind(1);
    objPanel.settle(true);
    QCOMPARE(objPanel.minimum()->value(), 2.0);
    CPanel::type(objPanel.minimum(), QStringLiteral("7"));
    QCOMPARE(objPanel.handles(), QList<int>({50, 100}));
    CPanel::type(objPanel.maximum(), QStringLiteral("9.5"));
    QCOMPARE(objPanel.handles(), QList<int>({50, 75}));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({0.0f, 200.0f, 7.0f, 9.5f}));
    CPanel::type(objPanel.minimum(), QStringLiteral("1"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 1.0f, 12.0f}));
    CPanel::type(objPanel.maximum(), QStringLiteral("24"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 1.0f, 24.0f}));
}

void tst_colorscale::upperHandle()
{
    CPanel objPanel;
    QSignalSpy objSpy(objPanel.maximum(), SIGNAL(valueChanged(double)));
    objPanel.slider()->setUpperValue(50);
    QCOMPARE(objPanel.maximum()->value(), 100.0);
    QCOMPARE(objSpy.size(), 0); // the box is told in silence
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({0.0f, 100.0f, -1.0f, -1.0f}));
    QVERIFY(SViewNumbers::usesCustomRange(objPanel.view()));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
    // And back: what the handle gave, typed, is where the handle stands.
    CPanel::type(objPanel.maximum(), QStringLiteral("60"));
    CPanel::type(objPanel.maximum(), QStringLiteral("100"));
    QCOMPARE(objPanel.slider()->upperValue(), 50);
}

void tst_colorscale::lowerHandle()
{
    CPanel objPanel;
    QSignalSpy objSpy(objPanel.minimum(), SIGNAL(valueChanged(double)));
    objPanel.slider()->setLowerValue(25);
    QCOMPARE(objPanel.minimum()->value(), 50.0);
    QCOMPARE(objSpy.size(), 0);
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({50.0f, 200.0f, -1.0f, -1.0f}));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    objPanel.chooseKind(1);
    objPanel.settle(true);
    objPanel.slider()->setLowerValue(50);
    QCOMPARE(objPanel.minimum()->value(), 5.0); // half of the width from 2 to 12
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({50.0f, 200.0f, 5.0f, 12.0f}));
    objPanel.slider()->setUpperValue(80);
    QCOMPARE(objPanel.maximum()->value(), 8.0);
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({50.0f, 200.0f, 5.0f, 8.0f}));
}

void tst_colorscale::handlesOnARangeThatDoesNotBeginAtZero()
{
    CPanel objPanel(true, true, 100.0f, 200.0f);
    objPanel.slider()->setUpperValue(50);
    QCOMPARE(objPanel.maximum()->value(), 100.0); // 50, stopped by the box's own lower bound
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).at(1), 100.0f);
    objPanel.slider()->setLowerValue(10);
    QCOMPARE(objPanel.minimum()->value(), 10.0);
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).at(0), 100.0f);
    objPanel.slider()->setLowerValue(0);
    QCOMPARE(objPanel.minimum()->value(), 0.0); // the box keeps the number that was not raised
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).at(0), 100.0f);
}

void tst_colorscale::handlesByKeyboard()
{
    CPanel objPanel;
    QSpanSlider* pSlider = objPanel.slider();
    pSlider->setFocus();
    pSlider->setActiveHandle(QSpanSlider::PartLower);
    QTest::keyClick(pSlider, Qt::Key_Right);
    QCOMPARE(objPanel.handles(), QList<int>({1, 100}));
    QCOMPARE(objPanel.minimum()->value(), 2.0);
    pSlider->setActiveHandle(QSpanSlider::PartUpper);
    QTest::keyClick(pSlider, Qt::Key_Left);
    QCOMPARE(objPanel.handles(), QList<int>({1, 99}));
    QCOMPARE(objPanel.maximum()->value(), 198.0);
}

void tst_colorscale::userRangeReachesTheVolumes()
{
    CPanel objPanel;
    CPanel::type(objPanel.minimum(), QStringLiteral("10"));
    CPanel::type(objPanel.maximum(), QStringLiteral("90"));
    paint(objPanel.tool());
    QCOMPARE(objPanel.volume(0).m_objPalette.imageMin(), 10.0);
    QCOMPARE(objPanel.volume(0).m_objPalette.imageMax(), 90.0);
    QCOMPARE(objPanel.view().getSOLAColorPalette()->imageMin(), 10.0);
    QCOMPARE(objPanel.view().getSOLAColorPalette()->imageMax(), 90.0);
}

void tst_colorscale::resetButton()
{
    CPanel objPanel(true, true, 20.0f, 200.0f);
    CPanel::type(objPanel.maximum(), QStringLiteral("400"));
    CPanel::type(objPanel.minimum(), QStringLiteral("10"));
    paint(objPanel.tool());
    QCOMPARE(objPanel.currentRange(), QList<float>({10.0f, 400.0f, 2.0f, 12.0f}));
    TestWidgets::click(objPanel.tool().get<QToolButton>("m_pResetColorBarMaxMinButton"));
    QCOMPARE(objPanel.currentRange(), QList<float>({20.0f, 200.0f, 2.0f, 12.0f}));
    QCOMPARE(objPanel.minimum()->value(), 20.0);
    QCOMPARE(objPanel.maximum()->value(), 200.0);
    QCOMPARE(objPanel.handles(), QList<int>({0, 100}));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({20.0f, 200.0f, -1.0f, -1.0f}));
    paint(objPanel.tool());
    QCOMPARE(objPanel.volume(0).m_objPalette.imageMin(), 20.0);
    QCOMPARE(objPanel.volume(0).m_objPalette.imageMax(), 200.0);
}

void tst_colorscale::resetButtonWithNothingToReset()
{
    CPanel objPanel;
    QSignalSpy objMinimum(objPanel.minimum(), SIGNAL(valueChanged(double)));
    QSignalSpy objMaximum(objPanel.maximum(), SIGNAL(valueChanged(double)));
    // A custom range that is under way is dropped: the view goes back to the current one.
    objPanel.view().setCustomRange(1.0f, 2.0f, 3.0f, 4.0f);
    TestWidgets::click(objPanel.tool().get<QToolButton>("m_pResetColorBarMaxMinButton"));
    QCOMPARE(objMinimum.size() + objMaximum.size(), 0);
    QVERIFY(!SViewNumbers::usesCustomRange(objPanel.view()));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
}

void tst_colorscale::resetButtonTakesBothKinds()
{
    CPanel objPanel;
    objPanel.view().setCurrentMinMax(-5.0f, 500.0f, -6.0f, 600.0f);
    objPanel.chooseKind(1);
    TestWidgets::click(objPanel.tool().get<QToolButton>("m_pResetColorBarMaxMinButton"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
    QCOMPARE(objPanel.maximum()->value(), 12.0);
    QCOMPARE(objPanel.minimum()->value(), 2.0);
}

void tst_colorscale::kindsKeepTheirRanges()
{
    CPanel objPanel;
    objPanel.chooseKind(1);
    objPanel.settle(true);
    objPanel.chooseKind(0);
    CPanel::type(objPanel.minimum(), QStringLiteral("50"));
    CPanel::type(objPanel.maximum(), QStringLiteral("150"));
    objPanel.chooseKind(1);
    QCOMPARE(objPanel.minimum()->value(), 2.0);
    QCOMPARE(objPanel.maximum()->value(), 12.0);
    CPanel::type(objPanel.maximum(), QStringLiteral("11"));
    objPanel.chooseKind(0);
    QCOMPARE(objPanel.minimum()->value(), 50.0);
    QCOMPARE(objPanel.maximum()->value(), 150.0);
    QCOMPARE(objPanel.handles(), QList<int>({25, 75}));
    objPanel.chooseKind(1);
    QCOMPARE(objPanel.maximum()->value(), 11.0);
}

ORM_TEST_MAIN(tst_colorscale)
#include "tst_colorscale.moc"
