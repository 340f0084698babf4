#include "OrmColorBarTicks.h"
#include "OrmColorScale.h"

#include <QTest>

#include <cmath>

using OrmColorBarTicks::SFont;
using OrmColorBarTicks::SLayout;
using OrmColorBarTicks::STick;
using OrmColorScale::SRange;

namespace
{
constexpr double fRoom = 50.0;

/// A font with the proportions of DejaVu Sans at 96 dots per inch, so that the tables below hold on every machine.
SFont proportionalFont(double fPointSize)
{
    const double fEm = fPointSize * 96.0 / 72.0;
    SFont sFont;
    sFont.m_fPointSize = fPointSize;
    sFont.m_fAscent = 0.928 * fEm;
    sFont.m_fDigitHeight = 0.742 * fEm;
    sFont.m_fnWidth = [fEm](const QString& strText)
    {
        double fWidth = 0.0;
        for (const QChar c : strText)
            fWidth += c == QLatin1Char('.') ? 0.318 : c == QLatin1Char('-') ? 0.361 : c == QLatin1Char('e') ? 0.615 : 0.636;
        return fWidth * fEm;
    };
    return sFont;
}

SLayout layoutOf(const SRange& sRange, double fHeight, double fPointSize = 7.0)
{
    return OrmColorBarTicks::layout(sRange, fHeight, fRoom, fPointSize, proportionalFont);
}

QStringList labelsOf(const SLayout& sLayout)
{
    QStringList lstLabels;
    for (const STick& sTick : sLayout.m_vecTicks)
    {
        if (!sTick.m_strLabel.isEmpty())
            lstLabels.append(sTick.m_strLabel);
    }
    return lstLabels;
}

/// Half a unit of the last digit of a label.
double precisionOf(const QString& strLabel)
{
    const QStringList lstParts = strLabel.split(QLatin1Char('e'));
    const int nPoint = lstParts.first().indexOf(QLatin1Char('.'));
    const int nDecimals = nPoint < 0 ? 0 : lstParts.first().size() - nPoint - 1;
    int nExponent = lstParts.size() > 1 ? lstParts.last().toInt() : 0;
    if (nPoint < 0) // 120 may stand for two figures
    {
        for (int i = lstParts.first().size() - 1; i > 0 && lstParts.first().at(i) == QLatin1Char('0'); --i)
            ++nExponent;
    }
    return 0.5 * std::pow(10.0, nExponent - nDecimals);
}
} // namespace

class TestColorBarTicks : public QObject
{
    Q_OBJECT

private slots:
    void labelsOfKnownBars_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<bool>("bLog");
        QTest::addColumn<double>("fHeight");
        QTest::addColumn<QString>("strExpected");
        QTest::newRow("one exponent for the whole bar") << 21.0 << 2.5e5 << false << 150.0 << "0.5e5 1.0e5 1.5e5 2.0e5 2.5e5";
        QTest::newRow("steps of two") << 0.0 << 2.1e5 << false << 60.0 << "0 1e5 2e5";
        QTest::newRow("plain decimals") << 0.004 << 0.043 << false << 120.0 << "0.01 0.02 0.03 0.04";
        QTest::newRow("as many digits as the step needs")
            << 1.2e7 << 1.25e7 << false << 150.0 << "1.20e7 1.21e7 1.22e7 1.23e7 1.24e7 1.25e7";
        QTest::newRow("largest plain number") << 0.0 << 9999.0 << false << 60.0 << "0 5000";
        QTest::newRow("smallest exponent") << 0.0 << 10000.0 << false << 60.0 << "0 0.5e4 1.0e4";
        QTest::newRow("smallest plain number") << 0.0 << 0.001 << false << 60.0 << "0 0.0005 0.0010";
        QTest::newRow("negative exponent") << 0.0 << 0.00099 << false << 60.0 << "0 5e-4";
        QTest::newRow("through zero") << -5.0 << 5.0 << false << 120.0 << "-4 -2 0 2 4";
        QTest::newRow("downwards") << 10.0 << 0.0 << false << 60.0 << "10 5 0";
        QTest::newRow("not more than eight steps") << 0.0 << 8.0 << false << 2000.0 << "0 1 2 3 4 5 6 7 8";
        QTest::newRow("one value") << 100.0 << 100.0 << false << 300.0 << "100";
        QTest::newRow("one negative value") << -1.0 << -1.0 << false << 300.0 << "-1";
        QTest::newRow("one value, log") << 2500000.0 << 2500000.0 << true << 300.0 << "2.5e6";
        QTest::newRow("no values") << 0.0 << 0.0 << true << 300.0 << "0";
        QTest::newRow("both ends of a low bar") << 21.0 << 2.5e5 << false << 15.0 << "21 2.5e5";
        QTest::newRow("upper end of a very low bar") << 21.0 << 2.5e5 << false << 9.0 << "2.5e5";
        QTest::newRow("a bar of one pixel") << 0.0 << 10.0 << false << 1.0 << "10";
        QTest::newRow("ends that read alike get more figures") << 1.201e7 << 1.204e7 << false << 15.0 << "1.201e7 1.204e7";
        QTest::newRow("too many digits for the room") << 1.2000031e7 << 1.2000039e7 << false << 300.0 << "1.2e7";
        QTest::newRow("only the ends have room") << 1.200031e7 << 1.200039e7 << false << 300.0 << "1.20003e7 1.20004e7";
        QTest::newRow("log, 1 2 5") << 1.0 << 100.0 << true << 100.0 << "1 2 5 10 20 50 100";
        QTest::newRow("log, 1 3") << 1.0 << 100.0 << true << 60.0 << "1 3 10 30 100";
        QTest::newRow("log, decades") << 1.0 << 1e4 << true << 80.0 << "1e0 1e1 1e2 1e3 1e4";
        QTest::newRow("log, every third decade") << 1e-9 << 1e9 << true << 110.0 << "1e-9 1e-6 1e-3 1e0 1e3 1e6 1e9";
        QTest::newRow("log, minimum 0 starts at a thousandth") << 0.0 << 1000.0 << true << 60.0 << "1 10 100 1000";
        QTest::newRow("log, below one decade") << 1.2e7 << 1.25e7 << true << 150.0 << "1.20e7 1.21e7 1.22e7 1.23e7 1.24e7 1.25e7";
        QTest::newRow("log, crowded ones dropped") << 1.0 << 9.0 << true << 190.0 << "1 2 3 4 5 6 7 9";
        QTest::newRow("log, one label of a decade is not enough") << 3.0 << 31.0 << true << 25.0 << "3 31";
        QTest::newRow("log of negative numbers is linear") << -10.0 << 0.0 << true << 60.0 << "-10 -5 0";
    }

    void labelsOfKnownBars()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(bool, bLog);
        QFETCH(double, fHeight);
        QFETCH(QString, strExpected);
        QCOMPARE(labelsOf(layoutOf({fMin, fMax, bLog}, fHeight)).join(QLatin1Char(' ')), strExpected);
    }

    void everyBarIsReadable_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<bool>("bLog");
        const struct
        {
            const char* m_pName;
            double m_fMin;
            double m_fMax;
        } arrRanges[] = {{"18 decades", 1e-9, 1e9},
                         {"narrow and far from 0", 1.2e7, 1.25e7},
                         {"narrower", 1.20003e7, 1.20004e7},
                         {"counts", 21.0, 2.5e5},
                         {"from 0", 0.0, 3.7},
                         {"one value", -1.0, -1.0},
                         {"through 0", -3e-4, 7e-4},
                         {"negative", -9.5e8, -1.5e-3},
                         {"downwards", 2.5e5, 21.0},
                         {"fractions", 0.1, 0.93},
                         {"tiny", 1.1e-38, 3.3e-38},
                         {"denormal", 1e-45, 3e-44},
                         {"whole range of floats", -3.4e38, 3.4e38},
                         {"positive floats", 1e-45, 3.4e38},
                         {"just over a decade", 0.9, 9.1},
                         {"just under a decade", 1.1, 9.9},
                         {"next to each other", 16777216.0, 16777217.0}};
        for (const auto& sRange : arrRanges)
        {
            QTest::newRow(qPrintable(QStringLiteral("linear, %1").arg(QLatin1String(sRange.m_pName))))
                << sRange.m_fMin << sRange.m_fMax << false;
            QTest::newRow(qPrintable(QStringLiteral("log, %1").arg(QLatin1String(sRange.m_pName))))
                << sRange.m_fMin << sRange.m_fMax << true;
        }
    }

    /// At every height: labels inside, apart from each other, at their values.
    void everyBarIsReadable()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(bool, bLog);
        const SRange sRange = {fMin, fMax, bLog};
        for (const double fPointSize : {5.0, 6.5, 7.0, 8.0})
        {
            for (int nHeight = 15; nHeight <= 2000; nHeight += fPointSize == 7.0 ? 1 : 13)
            {
                const SLayout sLayout = layoutOf(sRange, nHeight, fPointSize);
                const QString strWhere =
                    QStringLiteral("%1 pt, %2 px: %3").arg(fPointSize).arg(nHeight).arg(labelsOf(sLayout).join(QLatin1Char(' ')));
                QVERIFY2(sLayout.m_fPointSize >= std::min(6.5, fPointSize) && sLayout.m_fPointSize <= fPointSize, qPrintable(strWhere));
                const SFont sFont = proportionalFont(sLayout.m_fPointSize);
                double fLabelTop = -1.0;
                double fLastPosition = -1.0;
                int nLabels = 0;
                for (const STick& sTick : sLayout.m_vecTicks)
                {
                    QVERIFY2(sTick.m_fPosition >= 0.0 && sTick.m_fPosition <= 1.0 && sTick.m_fPosition > fLastPosition,
                             qPrintable(strWhere));
                    fLastPosition = sTick.m_fPosition;
                    if (sTick.m_strLabel.isEmpty())
                        continue;
                    ++nLabels;
                    QVERIFY2(sFont.m_fnWidth(sTick.m_strLabel) <= fRoom, qPrintable(strWhere));
                    QVERIFY2(sTick.m_fBaseline >= 0.0, qPrintable(strWhere));
                    QVERIFY2(sTick.m_fBaseline <= nHeight, qPrintable(strWhere));
                    QVERIFY2(std::fabs(sTick.m_fBaseline + sFont.m_fDigitHeight / 2.0 - sTick.m_fPosition * nHeight) <=
                                 sFont.m_fDigitHeight / 2.0 + 1e-9,
                             qPrintable(strWhere));
                    QVERIFY2(std::round(sTick.m_fBaseline) >= std::round(fLabelTop), qPrintable(strWhere));
                    fLabelTop = sTick.m_fBaseline + sFont.m_fDigitHeight;
                    const double fSaid = sTick.m_strLabel.toDouble();
                    const double fMeant = OrmColorScale::valueAt(sRange, sTick.m_fPosition);
                    QVERIFY2(std::fabs(fSaid - fMeant) <= precisionOf(sTick.m_strLabel) * 1.001 + std::fabs(fMeant) * 1e-9,
                             qPrintable(strWhere));
                }
                QVERIFY2(nLabels >= 1, qPrintable(strWhere));
                const OrmColorScale::SRange sDrawn = OrmColorScale::drawnRange(sRange);
                if (sDrawn.m_fMin != sDrawn.m_fMax && QByteArray(QTest::currentDataTag()).contains("next to each other") == false)
                    QVERIFY2(nLabels >= 2, qPrintable(strWhere));
                QVERIFY2(nLabels <= nHeight / sFont.m_fDigitHeight + 1.0, qPrintable(strWhere));
            }
        }
    }

    void marksStandBetweenTheLabelsOfWideDecadesOnly()
    {
        const SLayout sWide = layoutOf({1.0, 1000.0, true}, 63.0); // 21 pixels a decade
        QCOMPARE(labelsOf(sWide).size(), 4);
        QCOMPARE(static_cast<int>(sWide.m_vecTicks.size()), 4 + 3 * 8);
        const SLayout sNarrow = layoutOf({1.0, 1000.0, true}, 57.0); // 19 pixels a decade
        QCOMPARE(static_cast<int>(sNarrow.m_vecTicks.size()), labelsOf(sNarrow).size());
    }

    void fontShrinksBeforeDigitsAreDropped()
    {
        // Eight characters: too wide at 8 points, not at 7 and a half.
        const SRange sRange = {-1.9e-30, 1.9e-30, false};
        const auto fnWidthAt = [](double fPointSize) { return proportionalFont(fPointSize).m_fnWidth(QStringLiteral("-1.5e-30")); };
        const double fTooNarrow = (fnWidthAt(8.0) + fnWidthAt(7.5)) / 2.0;
        const SLayout sLayout = OrmColorBarTicks::layout(sRange, 300.0, fTooNarrow, 8.0, proportionalFont);
        QCOMPARE(sLayout.m_fPointSize, 7.5);
        QVERIFY(labelsOf(sLayout).size() > 2);
        const SLayout sEnds = OrmColorBarTicks::layout(sRange, 300.0, 36.0, 8.0, proportionalFont);
        QCOMPARE(sEnds.m_fPointSize, 6.5);
        QCOMPARE(labelsOf(sEnds), QStringList({QStringLiteral("-2e-30"), QStringLiteral("2e-30")}));
        QVERIFY(labelsOf(OrmColorBarTicks::layout(sRange, 200.0, 3.0, 8.0, proportionalFont)).isEmpty());
    }

    void lowestLabelRestsOnTheBarsBottom()
    {
        const SLayout sLayout = layoutOf({0.0, 1.0, false}, 100.0);
        QCOMPARE(sLayout.m_vecTicks.front().m_fPosition, 0.0);
        QCOMPARE(sLayout.m_vecTicks.front().m_fBaseline, 0.0);
        QVERIFY(sLayout.m_vecTicks.back().m_fBaseline < 100.0);
    }

    void niceSteps_data()
    {
        QTest::addColumn<double>("fLength");
        QTest::addColumn<double>("fExpected");
        QTest::newRow("1") << 1.0 << 1.0;
        QTest::newRow("just above 1") << 1.01 << 2.0;
        QTest::newRow("2") << 2.0 << 2.0;
        QTest::newRow("3") << 3.0 << 5.0;
        QTest::newRow("5.1") << 5.1 << 10.0;
        QTest::newRow("0.07") << 0.07 << 0.1;
        QTest::newRow("0.001") << 0.001 << 0.001;
        QTest::newRow("nothing") << 0.0 << 1.0;
        QTest::newRow("not a number") << std::nan("") << 1.0;
        QTest::newRow("infinite") << HUGE_VAL << 1.0;
        QTest::newRow("negative") << -3.0 << 1.0;
    }

    void niceSteps()
    {
        QFETCH(double, fLength);
        QFETCH(double, fExpected);
        QCOMPARE(OrmColorBarTicks::niceStep(fLength), fExpected);
    }

    void numbersWithFigures_data()
    {
        QTest::addColumn<double>("fValue");
        QTest::addColumn<int>("nFigures");
        QTest::addColumn<QString>("strExpected");
        QTest::newRow("0") << 0.0 << 2 << "0";
        QTest::newRow("rounded up into the next power") << 9.96 << 2 << "10";
        QTest::newRow("plain") << 1234.0 << 2 << "1200";
        QTest::newRow("exponent") << 12345.0 << 2 << "1.2e4";
        QTest::newRow("zeros behind the point") << 0.5 << 3 << "0.5";
        QTest::newRow("small") << 0.00123 << 2 << "0.0012";
        QTest::newRow("smaller") << 0.000123 << 2 << "1.2e-4";
        QTest::newRow("negative") << -2.5e-7 << 2 << "-2.5e-7";
        QTest::newRow("no figures count as one") << 2.6e7 << 0 << "3e7";
    }

    void numbersWithFigures()
    {
        QFETCH(double, fValue);
        QFETCH(int, nFigures);
        QFETCH(QString, strExpected);
        QCOMPARE(OrmColorBarTicks::text(fValue, nFigures), strExpected);
    }
};

QTEST_APPLESS_MAIN(TestColorBarTicks)
#include "tst_colorbarticks.moc"
