#include "GrowthFit.h"
#include "GrowthSeries.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace
{
constexpr double g_fNone = std::numeric_limits<double>::quiet_NaN();

/// A straight line with the figures that its publisher certifies.
struct SReference
{
    QVector<double> m_lstX;
    QVector<double> m_lstY;
    double m_fSlope, m_fIntercept, m_fSlopeError, m_fR2;
};

bool near(double fIs, double fShould, double fRelative)
{
    return std::abs(fIs - fShould) <= fRelative * std::abs(fShould);
}

/// The share of Student's distribution below t, by Simpson's rule on its density: no table, and not the way the program takes.
double studentBelow(double fT, int nFreedom)
{
    const double fNorm = std::exp(std::lgamma(0.5 * (nFreedom + 1)) - std::lgamma(0.5 * nFreedom)) / std::sqrt(nFreedom * M_PI);
    const auto density = [&](double f) { return fNorm * std::pow(1.0 + f * f / nFreedom, -0.5 * (nFreedom + 1)); };
    constexpr int kSteps = 200'000;
    const double fStep = fT / kSteps;
    double fSum = density(0.0) + density(fT);
    for (int nStep = 1; nStep < kSteps; ++nStep)
    {
        fSum += (nStep % 2 == 1 ? 4.0 : 2.0) * density(nStep * fStep);
    }
    return 0.5 + fSum * fStep / 3.0;
}

SLoadedResult result(const QString& strKind, const QString& strSequence, const QString& strSubject, double fDays, double fTotal,
                     double fSelected = 0.0)
{
    SLoadedResult loaded;
    loaded.m_strKind = strKind;
    loaded.m_strSequence = strSequence;
    loaded.m_strUnit = strKind == "SOLA" ? "photons/sec" : "pmol";
    loaded.m_objTime = {strSubject, "some day", fDays};
    loaded.m_fTotal = fTotal;
    loaded.m_fSelectedTotal = fSelected;
    return loaded;
}
} // namespace

Q_DECLARE_METATYPE(SReference)

class tst_Growth : public QObject
{
    Q_OBJECT

private slots:
    void lineHasTheCertifiedFigures_data();
    void lineHasTheCertifiedFigures();
    void lineNeedsTwoDifferentPlaces_data();
    void lineNeedsTwoDifferentPlaces();
    void intervalHasStudentsShare_data();
    void intervalHasStudentsShare();
    void exactGrowthIsFound_data();
    void exactGrowthIsFound();
    void fitAgreesWithNormalEquations();
    void whatHasNoLogarithmIsLeftOut();
    void intervalOfTheDoublingTime_data();
    void intervalOfTheDoublingTime();
    void equalValuesDoNotGrow();
    void seriesAreBySubjectAndKind();
    void resultsOfASequenceAreOnePoint();
    void tableLeavesEmptyWhatIsUnknown();
};

void tst_Growth::lineHasTheCertifiedFigures_data()
{
    QTest::addColumn<SReference>("reference");
    // NIST Statistical Reference Datasets, linear regression, dataset Norris.
    QTest::newRow("Norris") << SReference{
        {0.2,   337.4, 118.2, 884.6, 10.1,  226.5, 666.3, 996.3, 448.6, 777.0, 558.2, 0.4,   0.6,  775.5, 666.9, 338.0, 447.5, 11.6,
         556.0, 228.1, 995.8, 887.6, 120.2, 0.3,   0.3,   556.8, 339.1, 887.2, 999.0, 779.0, 11.1, 118.3, 229.2, 669.1, 448.9, 0.5},
        {0.1,   338.8, 118.1, 888.0, 9.2,   228.1, 668.5, 998.5, 449.1, 778.9, 559.2, 0.3,   0.1,  778.1, 668.8, 339.3, 448.9, 10.8,
         557.7, 228.3, 998.0, 888.8, 119.6, 0.3,   0.6,   557.6, 339.3, 888.0, 998.5, 778.9, 10.2, 117.6, 228.9, 668.4, 449.2, 0.2},
        1.00211681802045,
        -0.262323073774029,
        0.429796848199937e-3,
        0.999993745883712};
    // F. J. Anscombe, Graphs in Statistical Analysis, The American Statistician 27 (1973): the exact sums of its first and fourth set.
    const QVector<double> lstX{10.0, 8.0, 13.0, 9.0, 11.0, 14.0, 6.0, 4.0, 12.0, 7.0, 5.0};
    QTest::newRow("Anscombe 1") << SReference{lstX,
                                              {8.04, 6.95, 7.58, 8.81, 8.33, 9.96, 7.24, 4.26, 10.84, 4.82, 5.68},
                                              0.500090909090909,
                                              3.00009090909091,
                                              0.117905500597,
                                              0.666542459508775};
    QTest::newRow("Anscombe 4") << SReference{{8.0, 8.0, 8.0, 8.0, 8.0, 8.0, 8.0, 19.0, 8.0, 8.0, 8.0},
                                              {6.58, 5.76, 7.71, 8.84, 8.47, 7.04, 5.25, 12.50, 5.56, 7.91, 6.89},
                                              0.499909090909091,
                                              3.00172727272727,
                                              0.117818941729686,
                                              0.666707256898465};
}

void tst_Growth::lineHasTheCertifiedFigures()
{
    QFETCH(SReference, reference);
    const std::optional<SLineFit> fit = GrowthFit::line(reference.m_lstX, reference.m_lstY);
    QVERIFY(fit);
    QCOMPARE(fit->m_nPoints, reference.m_lstX.size());
    QVERIFY2(near(fit->m_fSlope, reference.m_fSlope, 1.0e-12), qPrintable(QString::number(fit->m_fSlope, 'g', 15)));
    QVERIFY2(near(fit->m_fIntercept, reference.m_fIntercept, 1.0e-11), qPrintable(QString::number(fit->m_fIntercept, 'g', 15)));
    QVERIFY2(near(*fit->m_fSlopeError, reference.m_fSlopeError, 1.0e-7), qPrintable(QString::number(*fit->m_fSlopeError, 'g', 15)));
    QVERIFY2(near(fit->m_fR2, reference.m_fR2, 1.0e-12), qPrintable(QString::number(fit->m_fR2, 'g', 15)));
    double fSum = 0.0;
    for (int nAt = 0; nAt < fit->m_nPoints; ++nAt)
    {
        const double fLine = fit->m_fIntercept + fit->m_fSlope * reference.m_lstX.at(nAt);
        QVERIFY(std::abs(fit->m_lstResiduals.at(nAt) - (reference.m_lstY.at(nAt) - fLine)) < 1.0e-10);
        fSum += fit->m_lstResiduals.at(nAt);
    }
    QVERIFY(std::abs(fSum) < 1.0e-9);
}

void tst_Growth::lineNeedsTwoDifferentPlaces_data()
{
    QTest::addColumn<QVector<double>>("lstX");
    QTest::addColumn<bool>("bFit");
    QTest::newRow("none") << QVector<double>{} << false;
    QTest::newRow("one") << QVector<double>{1.0} << false;
    QTest::newRow("two at one place") << QVector<double>{1.0, 1.0} << false;
    QTest::newRow("many at one place") << QVector<double>(9, 0.1) << false;
    QTest::newRow("two") << QVector<double>{1.0, 2.0} << true;
    QTest::newRow("three, two at one place") << QVector<double>{1.0, 2.0, 1.0} << true;
}

void tst_Growth::lineNeedsTwoDifferentPlaces()
{
    QFETCH(QVector<double>, lstX);
    QTEST(GrowthFit::line(lstX, QVector<double>(lstX.size(), 5.0)).has_value(), "bFit");
}

void tst_Growth::intervalHasStudentsShare_data()
{
    QTest::addColumn<int>("nPoints");
    QTest::addColumn<double>("fQuantile");
    // The table in every textbook, 97.5 %.
    QTest::newRow("1 degree of freedom") << 3 << 12.706;
    QTest::newRow("2 degrees") << 4 << 4.303;
    QTest::newRow("3 degrees") << 5 << 3.182;
    QTest::newRow("10 degrees") << 12 << 2.228;
    QTest::newRow("30 degrees") << 32 << 2.042;
}

void tst_Growth::intervalHasStudentsShare()
{
    QFETCH(int, nPoints);
    QFETCH(double, fQuantile);
    SLineFit fit;
    fit.m_nPoints = nPoints;
    fit.m_fSlopeError = 1.0;
    const std::optional<double> fHalf = GrowthFit::halfInterval(fit);
    QVERIFY(fHalf);
    QVERIFY2(std::abs(*fHalf - fQuantile) < 5.1e-4, qPrintable(QString::number(*fHalf, 'g', 10)));
    QVERIFY(std::abs(studentBelow(*fHalf, nPoints - 2) - 0.975) < 1.0e-9);
}

void tst_Growth::exactGrowthIsFound_data()
{
    QTest::addColumn<double>("fStart");
    QTest::addColumn<double>("fDoubling");
    QTest::newRow("photons") << 2.4e7 << 4.5;
    QTest::newRow("picomoles") << 3.0e-13 << 6.0;
    QTest::newRow("slow") << 1.0 << 4000.0;
    QTest::newRow("hours") << 5.0e30 << 0.05;
    QTest::newRow("halving") << 7.0e5 << -3.0;
}

void tst_Growth::exactGrowthIsFound()
{
    QFETCH(double, fStart);
    QFETCH(double, fDoubling);
    QVector<SGrowthPoint> lstPoints;
    for (const double fDay : {0.0, 3.25, 7.0, 10.5, 14.0})
    {
        lstPoints.append({fDay, fStart * std::exp2(fDay / fDoubling)});
    }
    const SGrowthFit fit = GrowthFit::fit(lstPoints);
    QVERIFY(fit.m_objLine);
    QCOMPARE(fit.m_nLeftOut, 0);
    QVERIFY(near(fit.m_objLine->m_fSlope, std::log(2.0) / fDoubling, 1.0e-9));
    QVERIFY(near(fit.start(), fStart, 1.0e-9));
    QVERIFY(near(fit.m_objLine->m_fR2, 1.0, 1.0e-9));
    QCOMPARE(fit.doublingTime().has_value(), fDoubling > 0.0);
    QCOMPARE(fit.doublingTimeInterval().has_value(), fDoubling > 0.0);
    QVERIFY(fDoubling < 0.0 || near(*fit.doublingTime(), fDoubling, 1.0e-9));
}

void tst_Growth::fitAgreesWithNormalEquations()
{
    // Values that scatter, solved by Cramer's rule on the normal equations in long double, with the raw sums.
    const QVector<double> lstDays{0.0, 3.0, 7.0, 10.0, 14.0, 17.0};
    const QVector<double> lstValues{2.1e6, 3.9e6, 5.0e6, 1.3e7, 1.6e7, 4.4e7};
    long double fN = 0, fX = 0, fY = 0, fXX = 0, fXY = 0, fYY = 0;
    QVector<SGrowthPoint> lstPoints;
    for (int nAt = 0; nAt < lstDays.size(); ++nAt)
    {
        const long double fDay = lstDays.at(nAt);
        const long double fLog = std::log(static_cast<long double>(lstValues.at(nAt)));
        fN += 1, fX += fDay, fY += fLog, fXX += fDay * fDay, fXY += fDay * fLog, fYY += fLog * fLog;
        lstPoints.append({lstDays.at(nAt), lstValues.at(nAt)});
    }
    const long double fRate = (fN * fXY - fX * fY) / (fN * fXX - fX * fX);
    const long double fStart = (fXX * fY - fX * fXY) / (fN * fXX - fX * fX);
    const long double fSquares = fYY - fStart * fY - fRate * fXY;
    const long double fError = std::sqrt(fSquares / (fN - 2) * fN / (fN * fXX - fX * fX));
    constexpr double kT4 = 2.7764451051977987; // 97.5 % of Student's t with 4 degrees of freedom, from tables
    const SGrowthFit fit = GrowthFit::fit(lstPoints);
    QVERIFY(near(fit.m_objLine->m_fSlope, static_cast<double>(fRate), 1.0e-12));
    QVERIFY(near(fit.start(), static_cast<double>(std::exp(fStart)), 1.0e-12));
    QVERIFY(near(*fit.m_objLine->m_fSlopeError, static_cast<double>(fError), 1.0e-10));
    QVERIFY(near(fit.m_objLine->m_fR2, static_cast<double>(1 - fSquares / (fYY - fY * fY / fN)), 1.0e-12));
    QVERIFY(near(fit.m_objRate->m_fLow, static_cast<double>(fRate - kT4 * fError), 1.0e-10));
    QVERIFY(near(fit.m_objRate->m_fHigh, static_cast<double>(fRate + kT4 * fError), 1.0e-10));
    QVERIFY(near(fit.doublingTimeInterval()->m_fLow, std::log(2.0) / fit.m_objRate->m_fHigh, 1.0e-14));
    QVERIFY(near(fit.doublingTimeInterval()->m_fHigh, std::log(2.0) / fit.m_objRate->m_fLow, 1.0e-14));
}

void tst_Growth::whatHasNoLogarithmIsLeftOut()
{
    const double fInfinite = std::numeric_limits<double>::infinity();
    const SGrowthFit fit =
        GrowthFit::fit({{0.0, 1.0}, {1.0, 0.0}, {2.0, -5.0}, {3.0, g_fNone}, {4.0, fInfinite}, {g_fNone, 9.0}, {5.0, 32.0}});
    QCOMPARE(fit.m_nLeftOut, 5);
    QCOMPARE(fit.m_lstUsed.size(), 2);
    QVERIFY(near(*fit.doublingTime(), 1.0, 1.0e-12));
    QVERIFY(!fit.m_objRate);
    QVERIFY(!fit.doublingTimeInterval());
    QVERIFY(!GrowthFit::fit({}).m_objLine);
}

void tst_Growth::intervalOfTheDoublingTime_data()
{
    QTest::addColumn<QVector<double>>("lstValues");
    QTest::addColumn<bool>("bInterval");
    QTest::addColumn<bool>("bBounded");
    QTest::newRow("growth without doubt") << QVector<double>{1.0, 2.0, 4.1, 8.0} << true << true;
    QTest::newRow("growth in doubt") << QVector<double>{1.0, 4.0, 1.5, 4.0} << true << false;
    QTest::newRow("loss in doubt") << QVector<double>{4.0, 1.5, 4.0, 1.0} << true << false;
    QTest::newRow("loss without doubt") << QVector<double>{8.0, 4.1, 2.0, 1.0} << false << false;
    QTest::newRow("two points") << QVector<double>{1.0, 2.0} << false << false;
}

void tst_Growth::intervalOfTheDoublingTime()
{
    QFETCH(QVector<double>, lstValues);
    QVector<SGrowthPoint> lstPoints;
    for (int nAt = 0; nAt < lstValues.size(); ++nAt)
    {
        lstPoints.append({static_cast<double>(nAt), lstValues.at(nAt)});
    }
    const SGrowthFit fit = GrowthFit::fit(lstPoints);
    const std::optional<SInterval> interval = fit.doublingTimeInterval();
    QTEST(interval.has_value(), "bInterval");
    QTEST(interval.has_value() && std::isfinite(interval->m_fHigh), "bBounded");
    QVERIFY(!interval || !fit.doublingTime() || (interval->m_fLow < *fit.doublingTime() && *fit.doublingTime() < interval->m_fHigh));
}

void tst_Growth::equalValuesDoNotGrow()
{
    const SGrowthFit fit = GrowthFit::fit({{0.0, 0.3}, {0.1, 0.3}, {0.7, 0.3}, {5.0, 0.3}});
    QCOMPARE(fit.m_objLine->m_fSlope, 0.0);
    QCOMPARE(*fit.m_objLine->m_fSlopeError, 0.0);
    QVERIFY(std::isnan(fit.m_objLine->m_fR2));
    QVERIFY(!fit.doublingTime());
    QVERIFY(!fit.doublingTimeInterval());
}

void tst_Growth::seriesAreBySubjectAndKind()
{
    SCompareReport report;
    report.m_lstResults = {result("SOLA", "A1", "A", 0.0, 1.0, 10.0), result("SOLA", "B1", "B", 0.0, 5.0, 20.0),
                           result("SOLA", "A2", "A", 2.0, 2.0, 80.0), result("NOVA", "A3", "A", 1.0, 7.0, 30.0)};
    report.m_lstFailed = {{"SOLA", "A4", "x", "damaged", {"A", "day", 5.0}}, {"NOVA", "C1", "x", "damaged", {"C", "day", 0.0}}};
    report.m_lstEmpty = {{"SOLA", "A5", {"A", "day", 6.0}}};
    const QVector<SGrowthSeries> lstSeries = GrowthSeries::of(report);
    QCOMPARE(lstSeries.size(), 4);
    QCOMPARE(lstSeries.at(0).m_strSubject + lstSeries.at(0).m_strKind + lstSeries.at(0).m_strUnit, QString("ASOLAphotons/sec"));
    QCOMPARE(lstSeries.at(0).m_strValue, QString("total"));
    QCOMPARE(lstSeries.at(0).m_objFit.m_lstUsed.size(), 2);
    QCOMPARE(lstSeries.at(0).m_objFit.m_nLeftOut, 2);
    QVERIFY(near(*lstSeries.at(0).m_objFit.doublingTime(), 2.0, 1.0e-12));
    QCOMPARE(lstSeries.at(1).m_strSubject, QString("B"));
    QCOMPARE(lstSeries.at(2).m_strSubject + lstSeries.at(2).m_strKind + lstSeries.at(2).m_strUnit, QString("ANOVApmol"));
    QCOMPARE(lstSeries.at(3).m_strSubject, QString("C"));
    QCOMPARE(lstSeries.at(3).m_objFit.m_nLeftOut, 1);

    report.m_bMeasured = true;
    const SGrowthSeries measured = GrowthSeries::of(report).constFirst();
    QCOMPARE(measured.m_strValue, QString("selected_total"));
    QVERIFY(near(measured.m_objFit.m_objLine->m_fSlope, std::log(8.0) / 2.0, 1.0e-12));
}

void tst_Growth::resultsOfASequenceAreOnePoint()
{
    // Two reconstructions of the same pictures are no repeated measurement.
    SCompareReport report;
    report.m_lstResults = {result("SOLA", "S1", "A", 0.0, 2.0), result("SOLA", "S1", "A", 0.0, 8.0), result("SOLA", "S2", "A", 3.0, 16.0),
                           result("SOLA", "S3", "A", 4.0, 5.0), result("SOLA", "S3", "A", 4.0, 0.0)};
    const SGrowthFit fit = GrowthSeries::of(report).constFirst().m_objFit;
    QCOMPARE(fit.m_lstUsed.size(), 2);
    QVERIFY(near(fit.m_lstUsed.at(0).m_fValue, 4.0, 1.0e-14));
    QCOMPARE(fit.m_lstUsed.at(1).m_fValue, 16.0);
    QCOMPARE(fit.m_nLeftOut, 1);
}

void tst_Growth::tableLeavesEmptyWhatIsUnknown()
{
    SCompareReport report;
    report.m_lstResults = {result("SOLA", "S1", "A, \"the\" first", 0.0, 1.0), result("SOLA", "S2", "A, \"the\" first", 2.0, 4.0),
                           result("NOVA", "S3", "", g_fNone, 4.0)};
    const QList<QByteArray> lstLines = GrowthSeries::csv(GrowthSeries::of(report)).split('\n');
    QCOMPARE(lstLines.size(), 4);
    const QList<QByteArray> lstColumns = lstLines.at(0).trimmed().split(',');
    QCOMPARE(lstColumns.size(), 18);
    QCOMPARE(
        lstLines.at(1).trimmed(),
        QByteArray(
            "\"A, \"\"the\"\" first\",SOLA,photons/sec,total,2,0,0.6931471805599453,,,,1,1,,,none: fewer than three points,1,0 2,0 0"));
    QCOMPARE(lstLines.at(2).trimmed(), QByteArray(",NOVA,pmol,total,0,1,,,,,,,,,no fit: fewer than two days with a value,,,"));
    for (const char* pszColumn : {"rate_per_day", "doubling_time_days", "doubling_time_low_95", "r2", "residuals", "left_out"})
    {
        QVERIFY2(lstColumns.contains(pszColumn), pszColumn);
    }
}

QTEST_GUILESS_MAIN(tst_Growth)
#include "tst_growth.moc"
