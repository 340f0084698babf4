#include "../view/ViewTestTools.h"
#include "WindowTestTools.h"

#include "COrmPalettePixmapView.h"
#include "ColorRangeMath.h"
#include "OrmColorTables.h"
#include "OrmTestMain.h"
#include "QDoubleSpinBoxEx.h"
#include "QSpanSlider.h"
#include "QtThumbWheel.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QToolButton>

#include <limits>

using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::entries;
using WindowTest::paint;
using WindowTest::SViewNumbers;

namespace
{
constexpr float s_fInfinity = std::numeric_limits<float>::infinity();
constexpr float s_fNaN = std::numeric_limits<float>::quiet_NaN();

/// The window with results of known values: SOLA from fSOLAMin to fSOLAMax, NOVA from 2 to 12; the panel shows SOLA.
class CPanel
{
public:
    explicit CPanel(bool bSOLA = true, bool bNOVA = true, float fSOLAMin = 0.0f, float fSOLAMax = 200.0f)
    {
        m_objTool.open(m_objStudy.folder());
        m_objTool.chooseSequence(QStringLiteral("SOLA S1"));
        if (bSOLA)
        {
            load(0, QStringLiteral("first"), fSOLAMin, fSOLAMax);
        }
        if (bNOVA)
        {
            load(1, QStringLiteral("second"), 2.0f, 12.0f);
        }
        settle(true);
    }

    void load(int nKind, const QString& strName, float fMin, float fMax)
    {
        ViewTest::SResultRecipe sRecipe;
        sRecipe.nKind = nKind;
        sRecipe.strSequence = QStringLiteral("OTHER");
        sRecipe.fMin = fMin;
        sRecipe.fMax = fMax;
        sAnalysisBase sResult = ViewTest::result(strName, sRecipe);
        m_objTool.view().setAnalysisParms(sResult);
        m_objTool.view().getLoadedResult().append(sResult.strSequenceID + sResult.strResultName);
    }
    /// Shows everything, and brings the panel into line: with true the user's range is that of the results.
    void settle(bool bReset)
    {
        paint(m_objTool);
        if (bReset)
        {
            // The end of a load does this; with nothing selected it does nothing else.
            call(m_objTool, "onClickLoadButton");
        }
        m_objTool.window().updateUIControls();
        paint(m_objTool);
        m_objTool.window().updateUIControls();
    }
    void chooseKind(int nKind)
    {
        m_objTool.chooseSequence(nKind == 0 ? QStringLiteral("SOLA S1") : QStringLiteral("NOVA N1"));
        paint(m_objTool);
    }

    CToolWindow& tool() { return m_objTool; }
    CLongitudinalStudyBrowserView& view() { return m_objTool.view(); }
    C3DVolume& volume(int nTile) { return view().getAnalysisParams()[nTile].objVolume; }
    QDoubleSpinBoxEx* minimum() { return m_objTool.get<QDoubleSpinBoxEx>("m_pColorBarMinSpinbox"); }
    QDoubleSpinBoxEx* maximum() { return m_objTool.get<QDoubleSpinBoxEx>("m_pColorBarMaxSpinbox"); }
    QSpanSlider* slider() { return m_objTool.get<QSpanSlider>("m_pColorBarMinMaxSlider"); }
    QSpanSlider* tableSlider() { return m_objTool.get<QSpanSlider>("m_pSourceColorTableSlider"); }
    QComboBox* table() { return m_objTool.get<QComboBox>("m_pColorTableCB"); }
    QCheckBox* check(const char* pName) { return m_objTool.get<QCheckBox>(pName); }
    COrmPalettePixmapView* strip() { return m_objTool.window().findChild<COrmPalettePixmapView*>(); }
    QList<int> handles() { return {slider()->lowerValue(), slider()->upperValue()}; }
    QList<float> currentRange()
    {
        float f[4];
        view().getMinMax(&f[0], &f[1], &f[2], &f[3]);
        return {f[0], f[1], f[2], f[3]};
    }

private:
    CStudy m_objStudy;
    CToolWindow m_objTool;
};

/// Puts a number in as a whole, as pasting does.
void type(QDoubleSpinBox* pBox, const QString& strNumber)
{
    auto* pEdit = pBox->findChild<QLineEdit*>();
    pEdit->selectAll();
    pEdit->insert(strNumber);
    QTest::keyClick(pBox, Qt::Key_Return);
}

QString tableOf(const C3DVolume& objVolume)
{
    return QStringLiteral("%1 %2 %3")
        .arg(static_cast<int>(objVolume.m_objPalette.m_eColorTableType))
        .arg(static_cast<double>(objVolume.m_objPalette.m_fColorTableLow))
        .arg(static_cast<double>(objVolume.m_objPalette.m_fColorTableHigh));
}
} // namespace

/// The panel that sets the colour scale of each kind.
class tst_colorscale : public QObject
{
    Q_OBJECT

private slots:
    void wholeNumbers_data();
    void wholeNumbers();
    void positionsOfValues_data();
    void positionsOfValues();
    void valuesOfPositions_data();
    void valuesOfPositions();
    void directionsAgreeFromZero();
    void positionsStayOnTheSlider_data();
    void positionsStayOnTheSlider();
    void steps_data();
    void steps();
    void fractions();

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

void tst_colorscale::wholeNumbers_data()
{
    QTest::addColumn<double>("fValue");
    QTest::addColumn<int>("nExpected");
    QTest::newRow("0") << 0.0 << 0;
    QTest::newRow("cut, not rounded") << 49.999 << 49;
    QTest::newRow("cut towards 0") << -49.999 << -49;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << std::numeric_limits<int>::max();
    QTest::newRow("minus infinity") << -std::numeric_limits<double>::infinity() << std::numeric_limits<int>::min();
    QTest::newRow("beyond int") << 1e300 << std::numeric_limits<int>::max();
    QTest::newRow("below int") << -1e300 << std::numeric_limits<int>::min();
    QTest::newRow("highest int") << 2147483647.0 << std::numeric_limits<int>::max();
    QTest::newRow("lowest int") << -2147483648.0 << std::numeric_limits<int>::min();
}

void tst_colorscale::wholeNumbers()
{
    QFETCH(double, fValue);
    QFETCH(int, nExpected);
    QCOMPARE(ColorRangeMath::toInt(fValue), nExpected);
}

void tst_colorscale::positionsOfValues_data()
{
    QTest::addColumn<float>("fMinimum");
    QTest::addColumn<float>("fMaximum");
    QTest::addColumn<float>("fLow");
    QTest::addColumn<float>("fHigh");
    QTest::addColumn<int>("nLower");
    QTest::addColumn<int>("nUpper");
    const auto row = [](const char* pName, float fMinimum, float fMaximum, float fLow, float fHigh, int nLower, int nUpper)
    { QTest::newRow(pName) << fMinimum << fMaximum << fLow << fHigh << nLower << nUpper; };
    row("whole range", 0.0f, 200.0f, 0.0f, 200.0f, 0, 100);
    row("middle", 100.0f, 100.0f, 0.0f, 200.0f, 50, 50);
    row("quarters", 50.0f, 150.0f, 0.0f, 200.0f, 25, 75);
    row("range from 100", 150.0f, 175.0f, 100.0f, 200.0f, 50, 75);
    row("cut towards 0", 1.99f, 198.01f, 0.0f, 200.0f, 0, 99);
    row("below and above", -20.0f, 240.0f, 0.0f, 200.0f, -10, 120);
    row("upside down", 0.0f, 10.0f, 10.0f, 0.0f, 100, 0);
    row("tiny values", 2e-12f, 8e-12f, 0.0f, 16e-12f, 12, 50);
    row("large values", 2e12f, 8e12f, 0.0f, 16e12f, 12, 50);
}

void tst_colorscale::positionsOfValues()
{
    QFETCH(float, fMinimum);
    QFETCH(float, fMaximum);
    QFETCH(float, fLow);
    QFETCH(float, fHigh);
    QFETCH(int, nLower);
    QFETCH(int, nUpper);
    QCOMPARE(ColorRangeMath::lowerPosition(fMinimum, fLow, fHigh), nLower);
    QCOMPARE(ColorRangeMath::upperPosition(fMaximum, fLow, fHigh), nUpper);
    QCOMPARE(ColorRangeMath::lowerPositionOfTyped(static_cast<double>(fMinimum), fLow, fHigh), nLower);
    QCOMPARE(ColorRangeMath::upperPositionOfTyped(static_cast<double>(fMaximum), fLow, fHigh), nUpper);
}

void tst_colorscale::valuesOfPositions_data()
{
    QTest::addColumn<int>("nPosition");
    QTest::addColumn<float>("fLow");
    QTest::addColumn<float>("fHigh");
    QTest::addColumn<float>("fShown");
    QTest::addColumn<float>("fStored");
    QTest::newRow("lowest") << 0 << 0.0f << 200.0f << 0.0f << 0.0f;
    QTest::newRow("middle") << 50 << 0.0f << 200.0f << 100.0f << 100.0f;
    QTest::newRow("highest") << 100 << 0.0f << 200.0f << 200.0f << 200.0f;
    QTest::newRow("range from 100, middle: raised to its low end") << 50 << 100.0f << 200.0f << 50.0f << 100.0f;
    QTest::newRow("range from 100, highest: its width only") << 100 << 100.0f << 200.0f << 100.0f << 100.0f;
    QTest::newRow("range from 10, highest") << 100 << 10.0f << 200.0f << 190.0f << 190.0f;
    QTest::newRow("range from 100, lowest: raised") << 0 << 100.0f << 200.0f << 0.0f << 100.0f;
    QTest::newRow("empty range") << 50 << -1.0f << -1.0f << 0.0f << 0.0f;
}

void tst_colorscale::valuesOfPositions()
{
    QFETCH(int, nPosition);
    QFETCH(float, fLow);
    QFETCH(float, fHigh);
    QFETCH(float, fShown);
    QFETCH(float, fStored);
    QCOMPARE(ColorRangeMath::valueAt(nPosition, fLow, fHigh), fShown);
    QCOMPARE(ColorRangeMath::storedValueAt(nPosition, fLow, fHigh), fStored);
}

void tst_colorscale::directionsAgreeFromZero()
{
    // Not to the last bit: a value of a position may be cut to the position before.
    for (int nPosition = 0; nPosition <= 100; ++nPosition)
    {
        const float fValue = ColorRangeMath::valueAt(nPosition, 0.0f, 200.0f);
        const int nLower = ColorRangeMath::lowerPosition(fValue, 0.0f, 200.0f);
        QVERIFY2(nLower == nPosition || nLower == nPosition - 1, qPrintable(QString::number(nPosition)));
        const int nUpper = ColorRangeMath::upperPosition(fValue, 0.0f, 200.0f);
        QVERIFY2(nUpper == nPosition || nUpper == nPosition - 1, qPrintable(QString::number(nPosition)));
    }
}

void tst_colorscale::positionsStayOnTheSlider_data()
{
    QTest::addColumn<float>("fMinimum");
    QTest::addColumn<float>("fMaximum");
    QTest::addColumn<float>("fLow");
    QTest::addColumn<float>("fHigh");
    const auto row = [](const char* pName, float fMinimum, float fMaximum, float fLow, float fHigh)
    { QTest::newRow(pName) << fMinimum << fMaximum << fLow << fHigh; };
    row("no results", -1.0f, -1.0f, -1.0f, -1.0f);
    row("empty range, values above", 5.0f, 9.0f, 1.0f, 1.0f);
    row("empty range, values below", -5.0f, -9.0f, 1.0f, 1.0f);
    row("values far outside", -1e30f, 1e30f, 0.0f, 1e-30f);
    row("infinite range", 0.0f, 1.0f, 0.0f, s_fInfinity);
    row("range of no numbers", 0.0f, 1.0f, s_fNaN, s_fNaN);
    row("values that are no numbers", s_fNaN, s_fNaN, 0.0f, 1.0f);
}

void tst_colorscale::positionsStayOnTheSlider()
{
    QFETCH(float, fMinimum);
    QFETCH(float, fMaximum);
    QFETCH(float, fLow);
    QFETCH(float, fHigh);
    QSpanSlider objSlider;
    objSlider.setRange(0, 100);
    objSlider.setUpperValue(ColorRangeMath::upperPosition(fMaximum, fLow, fHigh));
    objSlider.setLowerValue(ColorRangeMath::lowerPosition(fMinimum, fLow, fHigh));
    QVERIFY(objSlider.lowerValue() >= 0 && objSlider.lowerValue() <= objSlider.upperValue() && objSlider.upperValue() <= 100);
    objSlider.setUpperValue(ColorRangeMath::upperPositionOfTyped(static_cast<double>(fMaximum), fLow, fHigh));
    objSlider.setLowerValue(ColorRangeMath::lowerPositionOfTyped(static_cast<double>(fMinimum), fLow, fHigh));
    QVERIFY(objSlider.lowerValue() >= 0 && objSlider.lowerValue() <= objSlider.upperValue() && objSlider.upperValue() <= 100);
}

void tst_colorscale::steps_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<float>("fLow");
    QTest::addColumn<float>("fHigh");
    QTest::addColumn<float>("fHighest");
    QTest::addColumn<float>("fMinimumStep");
    QTest::addColumn<float>("fMaximumStep");
    QTest::newRow("SOLA") << 0 << 0.0f << 200.0f << 200.0f << 0.2f << 2.0f;
    QTest::newRow("NOVA, ten times coarser") << 1 << 0.0f << 200.0f << 200.0f << 2.0f << 20.0f;
    QTest::newRow("range from 100") << 0 << 100.0f << 200.0f << 200.0f << 0.1f << 1.0f;
    QTest::newRow("range wider than the results") << 0 << 0.0f << 400.0f << 200.0f << 0.4f << 8.0f;
    QTest::newRow("range far below the results") << 0 << 0.0f << 10.0f << 200.0f << 0.01f << 0.01f;
    QTest::newRow("no results") << 0 << -1.0f << -1.0f << -1.0f << 0.0f << 0.0f;
}

void tst_colorscale::steps()
{
    QFETCH(int, nKind);
    QFETCH(float, fLow);
    QFETCH(float, fHigh);
    QFETCH(float, fHighest);
    QFETCH(float, fMinimumStep);
    QFETCH(float, fMaximumStep);
    QCOMPARE(ColorRangeMath::minimumStep(nKind, fLow, fHigh), fMinimumStep);
    QCOMPARE(ColorRangeMath::maximumStep(nKind, fLow, fHigh, fHighest), fMaximumStep);
    QCOMPARE(ColorRangeMath::maximumStepOfTyped(500.0), 10.0);
    QCOMPARE(ColorRangeMath::maximumStepOfTyped(50.0), 1.0);
    QCOMPARE(ColorRangeMath::maximumStepOfTyped(49.9), 1.0);
    QCOMPARE(ColorRangeMath::maximumStepOfTyped(0.0), 1.0);
}

void tst_colorscale::fractions()
{
    QCOMPARE(ColorRangeMath::fractionOfPosition(25, 100.0f), 0.25f);
    QCOMPARE(ColorRangeMath::fractionOfPosition(100, 100.0f), 1.0f);
    QCOMPARE(ColorRangeMath::positionOfFraction(0.25f, 100.0f), 25);
    QCOMPARE(ColorRangeMath::positionOfFraction(1.0f, 100.0f), 100);
    QCOMPARE(ColorRangeMath::positionOfFraction(0.259f, 100.0f), 25);
    QCOMPARE(ColorRangeMath::positionOfFraction(s_fNaN, 100.0f), 0);
}

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
    type(objPanel.minimum(), QStringLiteral("50"));
    objPanel.settle(false);
    QCOMPARE(objPanel.minimum()->value(), 50.0);
    objPanel.settle(true);
    QCOMPARE(objPanel.minimum()->value(), 0.0);
    QCOMPARE(objPanel.handles(), QList<int>({0, 100}));
}

void tst_colorscale::typedMinimum()
{
    CPanel objPanel;
    type(objPanel.minimum(), QStringLiteral("100"));
    QCOMPARE(objPanel.handles(), QList<int>({50, 100}));
    QVERIFY(SViewNumbers::usesCustomRange(objPanel.view()));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({100.0f, 200.0f, -1.0f, -1.0f}));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
}

void tst_colorscale::typedMinimumBelowTheRange()
{
    CPanel objPanel(true, true, 100.0f, 200.0f);
    type(objPanel.minimum(), QStringLiteral("0"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
    QCOMPARE(objPanel.handles(), QList<int>({0, 100}));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).first(), 0.0f);
    // Negative numbers stop at 0.
    type(objPanel.minimum(), QStringLiteral("40"));
    objPanel.minimum()->setValue(-3.0);
    QCOMPARE(objPanel.minimum()->value(), 0.0);
}

void tst_colorscale::typedMaximum()
{
    CPanel objPanel;
    type(objPanel.maximum(), QStringLiteral("150"));
    QCOMPARE(objPanel.handles(), QList<int>({0, 75}));
    QVERIFY(SViewNumbers::usesCustomRange(objPanel.view()));
    QVERIFY(SViewNumbers::paletteModified(objPanel.view()));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({0.0f, 150.0f, -1.0f, -1.0f}));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 2.0f, 12.0f}));
}

void tst_colorscale::typedMaximumAboveTheRange()
{
    CPanel objPanel;
    type(objPanel.minimum(), QStringLiteral("50"));
    QCOMPARE(objPanel.handles(), QList<int>({25, 100}));
    type(objPanel.maximum(), QStringLiteral("400"));
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
    type(objPanel.maximum(), QStringLiteral("150"));
    QCOMPARE(objPanel.maximum()->singleStep(), 3.0);
    QCOMPARE(objPanel.minimum()->singleStep(), static_cast<double>(0.2f));
    type(objPanel.maximum(), QStringLiteral("40"));
    QCOMPARE(objPanel.maximum()->singleStep(), 1.0);
    // Stepping is typing.
    objPanel.maximum()->stepBy(1);
    QCOMPARE(objPanel.maximum()->value(), 41.0);
    QCOMPARE(SViewNumbers::customRange(objPanel.view()).at(1), 41.0f);
}

void tst_colorscale::typingPassesThroughItsDigits()
{
    CPanel objPanel;
    type(objPanel.minimum(), QStringLiteral("50"));
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
    type(objPanel.maximum(), QStringLiteral("60"));
    type(objPanel.minimum(), QStringLiteral("120"));
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
    type(objPanel.minimum(), QStringLiteral("7"));
    QCOMPARE(objPanel.handles(), QList<int>({50, 100}));
    type(objPanel.maximum(), QStringLiteral("9.5"));
    QCOMPARE(objPanel.handles(), QList<int>({50, 75}));
    QCOMPARE(SViewNumbers::customRange(objPanel.view()), QList<float>({0.0f, 200.0f, 7.0f, 9.5f}));
    type(objPanel.minimum(), QStringLiteral("1"));
    QCOMPARE(objPanel.currentRange(), QList<float>({0.0f, 200.0f, 1.0f, 12.0f}));
    type(objPanel.maximum(), QStringLiteral("24"));
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
    type(objPanel.maximum(), QStringLiteral("60"));
    type(objPanel.maximum(), QStringLiteral("100"));
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
    type(objPanel.minimum(), QStringLiteral("10"));
    type(objPanel.maximum(), QStringLiteral("90"));
    paint(objPanel.tool());
    QCOMPARE(objPanel.volume(0).m_objPalette.imageMin(), 10.0);
    QCOMPARE(objPanel.volume(0).m_objPalette.imageMax(), 90.0);
    QCOMPARE(objPanel.view().getSOLAColorPalette()->imageMin(), 10.0);
    QCOMPARE(objPanel.view().getSOLAColorPalette()->imageMax(), 90.0);
}

void tst_colorscale::resetButton()
{
    CPanel objPanel(true, true, 20.0f, 200.0f);
    type(objPanel.maximum(), QStringLiteral("400"));
    type(objPanel.minimum(), QStringLiteral("10"));
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
    type(objPanel.minimum(), QStringLiteral("50"));
    type(objPanel.maximum(), QStringLiteral("150"));
    objPanel.chooseKind(1);
    QCOMPARE(objPanel.minimum()->value(), 2.0);
    QCOMPARE(objPanel.maximum()->value(), 12.0);
    type(objPanel.maximum(), QStringLiteral("11"));
    objPanel.chooseKind(0);
    QCOMPARE(objPanel.minimum()->value(), 50.0);
    QCOMPARE(objPanel.maximum()->value(), 150.0);
    QCOMPARE(objPanel.handles(), QList<int>({25, 75}));
    objPanel.chooseKind(1);
    QCOMPARE(objPanel.maximum()->value(), 11.0);
}

void tst_colorscale::stripShowsTheTable_data()
{
    QTest::addColumn<int>("nIndex");
    QTest::addColumn<int>("nType");
    const QList<int> lstTypes = {0, 8, 9, 10, 11, 12, 13, 14, 23, 25, 24, 1, 26};
    for (int i = 0; i < lstTypes.size(); ++i)
    {
        QTest::addRow("entry %d", i) << i << lstTypes.at(i);
    }
}

void tst_colorscale::stripShowsTheTable()
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

void tst_colorscale::stripShowsTheWholeTable()
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

void tst_colorscale::tableReachesOneKind()
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

void tst_colorscale::tableKeepsTheSpan()
{
    CPanel objPanel;
    objPanel.tableSlider()->setSpan(25, 75);
    objPanel.table()->setCurrentText(QStringLiteral("Rainbow"));
    QCOMPARE(tableOf(objPanel.volume(0)), QStringLiteral("1 0.25 0.75"));
}

void tst_colorscale::spanReachesOneKind()
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

void tst_colorscale::reverseReachesBothKinds()
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

void tst_colorscale::logScaleReachesBothKinds()
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

void tst_colorscale::mipReachesBothKinds()
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

void tst_colorscale::panelFollowsThePalette()
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

void tst_colorscale::panelFollowsThePaletteInSilence()
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

void tst_colorscale::opacityFromEitherControl()
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

void tst_colorscale::opacityIsHandedOnOnce()
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

void tst_colorscale::everyChangeAsksForAPaint_data()
{
    QTest::addColumn<int>("nChange");
    for (const char* pName : {"minimum", "maximum", "lower handle", "upper handle", "reset", "table", "span", "reverse", "log scale", "MIP",
                              "opacity", "wheel", "preferences"})
    {
        static int s_nChange = 0;
        QTest::newRow(pName) << s_nChange++;
    }
}

void tst_colorscale::everyChangeAsksForAPaint()
{
    QFETCH(int, nChange);
    CPanel objPanel;
    QCoreApplication::processEvents();
    QSignalSpy objFrames(&objPanel.view(), SIGNAL(frameSwapped()));
    QCoreApplication::processEvents();
    objFrames.clear();
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
    QCOMPARE(objFrames.size(), 0);
    lstChanges.at(nChange)();
    QTRY_VERIFY(!objFrames.isEmpty());
}

ORM_TEST_MAIN(tst_colorscale)
#include "tst_colorscale.moc"
