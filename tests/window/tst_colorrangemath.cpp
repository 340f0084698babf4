#include "ColorRangeMath.h"
#include "OrmTestMain.h"
#include "QSpanSlider.h"

#include <limits>

namespace
{
constexpr float s_fInfinity = std::numeric_limits<float>::infinity();
constexpr float s_fNaN = std::numeric_limits<float>::quiet_NaN();
} // namespace

/// What the boxes and sliders of the colour scale compute, without a window.
class tst_colorrangemath : public QObject
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
};

void tst_colorrangemath::wholeNumbers_data()
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

void tst_colorrangemath::wholeNumbers()
{
    QFETCH(double, fValue);
    QFETCH(int, nExpected);
    QCOMPARE(ColorRangeMath::toInt(fValue), nExpected);
}

void tst_colorrangemath::positionsOfValues_data()
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

void tst_colorrangemath::positionsOfValues()
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

void tst_colorrangemath::valuesOfPositions_data()
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

void tst_colorrangemath::valuesOfPositions()
{
    QFETCH(int, nPosition);
    QFETCH(float, fLow);
    QFETCH(float, fHigh);
    QFETCH(float, fShown);
    QFETCH(float, fStored);
    QCOMPARE(ColorRangeMath::valueAt(nPosition, fLow, fHigh), fShown);
    QCOMPARE(ColorRangeMath::storedValueAt(nPosition, fLow, fHigh), fStored);
}

void tst_colorrangemath::directionsAgreeFromZero()
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

void tst_colorrangemath::positionsStayOnTheSlider_data()
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

void tst_colorrangemath::positionsStayOnTheSlider()
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

void tst_colorrangemath::steps_data()
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

void tst_colorrangemath::steps()
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

void tst_colorrangemath::fractions()
{
    QCOMPARE(ColorRangeMath::fractionOfPosition(25, 100.0f), 0.25f);
    QCOMPARE(ColorRangeMath::fractionOfPosition(100, 100.0f), 1.0f);
    QCOMPARE(ColorRangeMath::positionOfFraction(0.25f, 100.0f), 25);
    QCOMPARE(ColorRangeMath::positionOfFraction(1.0f, 100.0f), 100);
    QCOMPARE(ColorRangeMath::positionOfFraction(0.259f, 100.0f), 25);
    QCOMPARE(ColorRangeMath::positionOfFraction(s_fNaN, 100.0f), 0);
}

ORM_TEST_MAIN(tst_colorrangemath)
#include "tst_colorrangemath.moc"
