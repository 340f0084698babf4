#include "COrmXYPlotAxis.h"
#include "COrmXYPlotTable.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using COrmXYPlotAxis::SAxis;
using COrmXYPlotAxis::SDataRanges;
using COrmXYPlotAxis::SRange;
using COrmXYPlotTable::SColumn;

namespace
{
constexpr double fNan = std::numeric_limits<double>::quiet_NaN();
constexpr double fInfinity = std::numeric_limits<double>::infinity();
constexpr double fLargest = std::numeric_limits<double>::max();

bool areSame(const std::vector<double>& vecSeen, const QVector<double>& vecWanted)
{
    if (static_cast<int>(vecSeen.size()) != vecWanted.size())
        return false;
    for (int i = 0; i < vecWanted.size(); ++i)
    {
        if (std::fabs(vecSeen[static_cast<std::size_t>(i)] - vecWanted.at(i)) > 1e-9 * std::max(1e-300, std::fabs(vecWanted.at(i))))
            return false;
    }
    return true;
}

QByteArray text(const std::vector<double>& vecValues)
{
    QByteArray by;
    for (const double fValue : vecValues)
        by += QByteArray::number(fValue) + ' ';
    return by;
}
} // namespace

/// The arithmetic of axes, and the table of a plot's numbers.
class TestXYPlotAxis : public QObject
{
    Q_OBJECT

private slots:
    // ---- The x axis ---------------------------------------------------------------------------------------------------

    void xAxis_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<double>("fWished");
        QTest::addColumn<bool>("bWhole");
        QTest::addColumn<int>("nMost");
        QTest::addColumn<double>("fFirst");
        QTest::addColumn<double>("fStep");
        QTest::addColumn<int>("nTicks");
        QTest::newRow("four results, step 1") << 0.0 << 3.0 << 1.0 << true << 20 << 0.0 << 1.0 << 4;
        QTest::newRow("one result") << 0.0 << 0.0 << 1.0 << true << 20 << 0.0 << 1.0 << 1;
        QTest::newRow("no step wished, whole numbers") << 0.0 << 3.0 << 0.0 << true << 20 << 0.0 << 1.0 << 4;
        QTest::newRow("no step wished, fractions") << 0.0 << 1.0 << 0.0 << false << 5 << 0.0 << 0.2 << 6;
        QTest::newRow("no step wished, one value") << 7.0 << 7.0 << 0.0 << false << 5 << 7.0 << 1.0 << 1;
        QTest::newRow("step 1 would crowd") << 0.0 << 47.0 << 1.0 << true << 12 << 0.0 << 5.0 << 10;
        QTest::newRow("a step far too small") << 0.0 << 1e12 << 1.0 << true << 10 << 0.0 << 1e11 << 11;
        QTest::newRow("not from 0") << 3.0 << 9.0 << 2.0 << true << 20 << 4.0 << 2.0 << 3;
        QTest::newRow("a step that is not a number") << 0.0 << 4.0 << fNan << true << 20 << 0.0 << 1.0 << 5;
    }

    void xAxis()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(double, fWished);
        QFETCH(bool, bWhole);
        QFETCH(int, nMost);
        const COrmXYPlotAxis::SAxis sAxis = COrmXYPlotAxis::xAxis({fMin, fMax}, fWished, bWhole, nMost);
        QVERIFY(!sAxis.m_vecTicks.empty());
        QTEST(sAxis.m_vecTicks.front(), "fFirst");
        QTEST(static_cast<int>(sAxis.m_vecTicks.size()), "nTicks");
        QFETCH(double, fStep);
        for (std::size_t i = 1; i < sAxis.m_vecTicks.size(); ++i)
            QVERIFY(std::fabs(sAxis.m_vecTicks[i] - sAxis.m_vecTicks[i - 1] - fStep) <= 1e-9 * fStep);
        QVERIFY(sAxis.m_sRange.m_fLower < fMin);
        QVERIFY(sAxis.m_sRange.m_fUpper > fMax);
    }

    void xTicksOfAPart()
    {
        QVERIFY(areSame(COrmXYPlotAxis::xTicks({1.4, 4.6}, 1.0, true, 20), {2.0, 3.0, 4.0}));
        QVERIFY(areSame(COrmXYPlotAxis::xTicks({1.4, 1.6}, 1.0, true, 20), {}));
        QVERIFY(areSame(COrmXYPlotAxis::xTicks({1.4, 1.6}, 0.0, false, 2), {1.4, 1.5, 1.6}));
    }

    // ---- The y axis ---------------------------------------------------------------------------------------------------

    void yAxis_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<bool>("bFromZero");
        QTest::addColumn<QVector<double>>("vecTicks");
        QTest::newRow("round ends") << 0.0 << 4.0 << false << QVector<double>({0.0, 1.0, 2.0, 3.0, 4.0});
        QTest::newRow("up to a tick") << 0.3 << 3.7 << false << QVector<double>({0.0, 1.0, 2.0, 3.0, 4.0});
        QTest::newRow("away from 0") << 102.0 << 104.0 << false << QVector<double>({102.0, 102.5, 103.0, 103.5, 104.0});
        QTest::newRow("bars from 0") << 102.0 << 104.0 << true << QVector<double>({0.0, 50.0, 100.0, 150.0});
        QTest::newRow("bars below 0") << -9.0 << -6.0 << true << QVector<double>({-10.0, -8.0, -6.0, -4.0, -2.0, 0.0});
        QTest::newRow("bars on both sides") << -9.0 << 6.0 << true << QVector<double>({-10.0, -5.0, 0.0, 5.0, 10.0});
        QTest::newRow("one value") << 8.0 << 8.0 << false << QVector<double>({4.0, 6.0, 8.0, 10.0, 12.0});
        QTest::newRow("zero only") << 0.0 << 0.0 << false << QVector<double>({-0.6, -0.4, -0.2, 0.0, 0.2, 0.4, 0.6});
        QTest::newRow("large") << 1e6 << 5e6 << false << QVector<double>({1e6, 2e6, 3e6, 4e6, 5e6});
    }

    void yAxis()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(bool, bFromZero);
        QFETCH(QVector<double>, vecTicks);
        const SAxis sAxis = COrmXYPlotAxis::yAxis({fMin, fMax}, bFromZero, 5);
        QVERIFY2(areSame(sAxis.m_vecTicks, vecTicks), text(sAxis.m_vecTicks));
        QVERIFY(sAxis.m_sRange.m_fLower <= fMin && sAxis.m_sRange.m_fUpper >= fMax);
        // Points at the ends are seen whole; only bars stand on the end itself.
        QCOMPARE(sAxis.m_sRange.m_fLower < vecTicks.first(), !(bFromZero && vecTicks.first() == 0.0));
        QCOMPARE(sAxis.m_sRange.m_fUpper > vecTicks.last(), !(bFromZero && vecTicks.last() == 0.0));
    }

    void yAxisOfExtremesIsDrawable_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::newRow("whole range of doubles") << -fLargest << fLargest;
        QTest::newRow("largest") << fLargest << fLargest;
        QTest::newRow("most negative") << -fLargest << -fLargest;
        QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min() << std::numeric_limits<double>::denorm_min();
        QTest::newRow("neighbours") << 1.0 << std::nextafter(1.0, 2.0);
        QTest::newRow("large neighbours") << 1e300 << std::nextafter(1e300, 2e300);
    }

    void yAxisOfExtremesIsDrawable()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        for (const bool bFromZero : {false, true})
        {
            const SAxis sAxis = COrmXYPlotAxis::yAxis({fMin, fMax}, bFromZero, 8);
            QVERIFY(std::isfinite(sAxis.m_sRange.width()) && sAxis.m_sRange.width() > 1e-301);
            QVERIFY(!sAxis.m_vecTicks.empty() && sAxis.m_vecTicks.size() <= 12);
            for (std::size_t i = 0; i < sAxis.m_vecTicks.size(); ++i)
                QVERIFY(std::isfinite(sAxis.m_vecTicks[i]) && (i == 0 || sAxis.m_vecTicks[i] > sAxis.m_vecTicks[i - 1]));
        }
    }

    void logarithmicTicks_data()
    {
        QTest::addColumn<double>("fLower");
        QTest::addColumn<double>("fUpper");
        QTest::addColumn<int>("nMost");
        QTest::addColumn<QVector<double>>("vecTicks");
        QTest::newRow("decades") << 0.9 << 1.1e6 << 8 << QVector<double>({1.0, 10.0, 100.0, 1e3, 1e4, 1e5, 1e6});
        QTest::newRow("decades, some left out") << 0.9 << 1.1e12 << 8 << QVector<double>({1.0, 100.0, 1e4, 1e6, 1e8, 1e10, 1e12});
        QTest::newRow("two decades") << 9.0 << 1100.0 << 8 << QVector<double>({10.0, 20.0, 50.0, 100.0, 200.0, 500.0, 1000.0});
        QTest::newRow("one decade") << 0.9 << 11.0 << 12 << QVector<double>({0.9, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0});
        QTest::newRow("below 1") << 0.0011 << 0.09 << 4 << QVector<double>({0.003, 0.01, 0.03});
        QTest::newRow("less than a decade") << 2.2 << 5.4 << 8 << QVector<double>({3.0, 4.0, 5.0});
        QTest::newRow("much less") << 2.1 << 2.6 << 6 << QVector<double>({2.1, 2.2, 2.3, 2.4, 2.5, 2.6});
    }

    void logarithmicTicks()
    {
        QFETCH(double, fLower);
        QFETCH(double, fUpper);
        QFETCH(int, nMost);
        QFETCH(QVector<double>, vecTicks);
        const SAxis sAxis = COrmXYPlotAxis::logarithmicTicks({fLower, fUpper}, nMost);
        QVERIFY2(areSame(sAxis.m_vecTicks, vecTicks), text(sAxis.m_vecTicks));
        QVERIFY((sAxis.m_sRange == SRange{fLower, fUpper}));
    }

    void logarithmicAxisHoldsItsData_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::newRow("one value") << 12345.0 << 12345.0;
        QTest::newRow("decades") << 1e-3 << 1e9;
        QTest::newRow("all that can be shown") << 1e-140 << 1e140;
    }

    void logarithmicAxisHoldsItsData()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        const SAxis sAxis = COrmXYPlotAxis::logarithmicAxis({fMin, fMax}, 8);
        QVERIFY(sAxis.m_sRange.m_fLower > 0.0 && sAxis.m_sRange.m_fLower < fMin && sAxis.m_sRange.m_fUpper > fMax);
        QVERIFY2(sAxis.m_vecTicks.size() >= 2 && sAxis.m_vecTicks.size() <= 9, text(sAxis.m_vecTicks));
    }

    // ---- Ranges of the data -------------------------------------------------------------------------------------------

    void whatTheDataRangeOver()
    {
        SDataRanges sRanges;
        QCOMPARE(sRanges.m_nPoints, 0);
        sRanges.add({0.0, 1.0, 2.0, 3.0, fInfinity}, {5.0, fNan, -2.0, 0.0, 9.0});
        QCOMPARE(sRanges.m_nPoints, 3);
        QCOMPARE(sRanges.m_nMissing, 2);
        QVERIFY((sRanges.m_sX == SRange{0.0, 3.0}));
        QVERIFY((sRanges.m_sY == SRange{-2.0, 5.0}));
        QCOMPARE(sRanges.m_nLogarithmicPoints, 1);
        QVERIFY((sRanges.m_sYLogarithmic == SRange{5.0, 5.0}));
        QVERIFY(sRanges.m_bWholeX);
        const SDataRanges sBefore = sRanges;
        sRanges.add({1.5, 2.0}, {3.0, 4.0, 100.0}); // a number without its partner is nothing
        QVERIFY(!sRanges.m_bWholeX);
        QVERIFY(sRanges.hasSameRanges(sBefore));
        QVERIFY((sRanges.m_sYLogarithmic == SRange{3.0, 5.0}));
        sRanges.add({9.0}, {3.0});
        QVERIFY(!sRanges.hasSameRanges(sBefore));
    }

    void whatALogarithmicAxisCanShow()
    {
        for (const double fValue : {1e-140, 1.0, 1e140})
            QVERIFY(COrmXYPlotAxis::isLogarithmic(fValue));
        for (const double fValue : {0.0, -1.0, fNan, fInfinity, -fInfinity, 1e-141, 1e141})
            QVERIFY(!COrmXYPlotAxis::isLogarithmic(fValue));
    }

    // ---- Zooming and moving -------------------------------------------------------------------------------------------

    void zoomed_data()
    {
        QTest::addColumn<QVector<double>>("vecShown");
        QTest::addColumn<double>("fCentre");
        QTest::addColumn<double>("fFactor");
        QTest::addColumn<QVector<double>>("vecWanted");
        QTest::newRow("in, around the middle") << QVector<double>({0.0, 10.0}) << 5.0 << 0.5 << QVector<double>({2.5, 7.5});
        QTest::newRow("in, around an end") << QVector<double>({0.0, 10.0}) << 0.0 << 0.5 << QVector<double>({0.0, 5.0});
        QTest::newRow("out") << QVector<double>({4.0, 6.0}) << 5.0 << 2.0 << QVector<double>({3.0, 7.0});
        QTest::newRow("out, up to an end") << QVector<double>({0.0, 2.0}) << 1.0 << 2.0 << QVector<double>({0.0, 4.0});
        QTest::newRow("out, up to the whole") << QVector<double>({4.0, 6.0}) << 5.0 << 100.0 << QVector<double>({0.0, 10.0});
        QTest::newRow("in, no further") << QVector<double>({4.0, 6.0}) << 5.0 << 1e-9 << QVector<double>({4.5, 5.5});
    }

    void zoomed()
    {
        QFETCH(QVector<double>, vecShown);
        QFETCH(double, fCentre);
        QFETCH(double, fFactor);
        QFETCH(QVector<double>, vecWanted);
        const SRange sSeen = COrmXYPlotAxis::zoomed({vecShown.at(0), vecShown.at(1)}, {0.0, 10.0}, fCentre, fFactor, 1.0);
        QVERIFY2(areSame({sSeen.m_fLower + 100.0, sSeen.m_fUpper + 100.0}, {vecWanted.at(0) + 100.0, vecWanted.at(1) + 100.0}),
                 text({sSeen.m_fLower, sSeen.m_fUpper}));
    }

    void moved()
    {
        const SRange sWhole = {0.0, 10.0};
        QVERIFY((COrmXYPlotAxis::moved({2.0, 4.0}, sWhole, 1.0) == SRange{3.0, 5.0}));
        QVERIFY((COrmXYPlotAxis::moved({2.0, 4.0}, sWhole, -5.0) == SRange{0.0, 2.0}));
        QVERIFY((COrmXYPlotAxis::moved({2.0, 4.0}, sWhole, 50.0) == SRange{8.0, 10.0}));
        QVERIFY((COrmXYPlotAxis::moved(sWhole, sWhole, 3.0) == sWhole));
    }

    // ---- The table ----------------------------------------------------------------------------------------------------

    void table_data()
    {
        QTest::addColumn<QVector<QVector<double>>>("vecValues"); // x and y of each column
        QTest::addColumn<QString>("strYName");
        QTest::addColumn<QByteArray>("byTable");
        QTest::newRow("none") << QVector<QVector<double>>() << QString() << QByteArray("Results\r\n");
        QTest::newRow("one line") << QVector<QVector<double>>({{0.0, 1.0}, {1.5, 2e6}}) << QString()
                                  << QByteArray("Results,A\r\n0,1.5\r\n1,2e+06\r\n");
        QTest::newRow("with its unit") << QVector<QVector<double>>({{0.0}, {0.1}}) << QStringLiteral("VoxelSize mm")
                                       << QByteArray("Results,A (VoxelSize mm)\r\n0,0.1\r\n");
        QTest::newRow("two lines") << QVector<QVector<double>>({{0.0, 1.0}, {1.0, 2.0}, {0.0, 1.0}, {3.0, 4.0}}) << QString()
                                   << QByteArray("Results,A,B\r\n0,1,3\r\n1,2,4\r\n");
        QTest::newRow("lines over different x") << QVector<QVector<double>>({{0.0, 2.0}, {1.0, 2.0}, {1.0, 2.0}, {3.0, 4.0}}) << QString()
                                                << QByteArray("Results,A,B\r\n0,1,\r\n1,,3\r\n2,2,4\r\n");
        QTest::newRow("gaps") << QVector<QVector<double>>({{0.0, 1.0, 2.0, 3.0}, {1.0, fNan, fInfinity, 0.0}}) << QString()
                              << QByteArray("Results,A\r\n0,1\r\n1,\r\n2,\r\n3,0\r\n");
        QTest::newRow("several values at an x") << QVector<QVector<double>>({{1.0, 1.0, 0.0}, {5.0, 6.0, 7.0}, {1.0}, {8.0}}) << QString()
                                                << QByteArray("Results,A,B\r\n0,7,\r\n1,5,8\r\n1,6,\r\n");
        QTest::newRow("names with commas") << QVector<QVector<double>>({{0.0}, {1.0}}) << QStringLiteral("a, \"b\"")
                                           << QByteArray("Results,\"A (a, \"\"b\"\")\"\r\n0,1\r\n");
    }

    void table()
    {
        QFETCH(QVector<QVector<double>>, vecValues);
        QFETCH(QString, strYName);
        QVector<SColumn> vecColumns;
        for (int i = 0; i + 1 < vecValues.size(); i += 2)
            vecColumns.append({QString(QLatin1Char(static_cast<char>('A' + i / 2))), vecValues.at(i), vecValues.at(i + 1)});
        QTEST(COrmXYPlotTable::csv(QStringLiteral("Results"), strYName, vecColumns), "byTable");
    }
};

QTEST_APPLESS_MAIN(TestXYPlotAxis)
#include "tst_xyplotaxis.moc"
