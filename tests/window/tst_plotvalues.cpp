#include "AnalysisRecords.h"
#include "OrmTestMain.h"
#include "PlotValues.h"

namespace
{
/// A record with voxels of these values, numbered from 1001 on.
sAnalysisBase record(int nKind, const std::vector<float>& vecValues)
{
    QVector<C3DVolume::Voxel> vecVoxels;
    for (std::size_t i = 0; i < vecValues.size(); ++i)
    {
        vecVoxels.append({static_cast<float>(i), 0.0f, 0.0f, 1001 + static_cast<long>(i), vecValues[i]});
    }
    sAnalysisBase objRecord;
    objRecord.nAnalysisType = nKind;
    if (!vecVoxels.isEmpty())
    {
        objRecord.objVolume.takeVoxelData(1.0f, vecVoxels, 0.0f, 1000.0f);
    }
    return objRecord;
}
} // namespace

/// What the plots compare, without a window.
class tst_plotvalues : public QObject
{
    Q_OBJECT

private slots:
    void lineNamesStandInTheirOrder();
    void firstEntryIsSOLA_data();
    void firstEntryIsSOLA();
    void runningNumbersBeginAtZero();
    void valuesAreThoseOfOneKind_data();
    void valuesAreThoseOfOneKind();
    void totalsAreOfMarkedVoxelsOrOfAll();
    void labelsNameOneUnitPerKind_data();
    void labelsNameOneUnitPerKind();
};

void tst_plotvalues::lineNamesStandInTheirOrder()
{
    QCOMPARE(PlotValues::lineNames(), QStringList({QStringLiteral("Quantification Profile"), QStringLiteral("Reduced Chi-Squared profile"),
                                                   QStringLiteral("Final Voxel Size"), QStringLiteral("Starting Voxel Size")}));
}

void tst_plotvalues::firstEntryIsSOLA_data()
{
    QTest::addColumn<int>("nEntry");
    QTest::addColumn<int>("nKind");
    QTest::newRow("SOLA") << 0 << 0;
    QTest::newRow("NOVA") << 1 << 1;
    QTest::newRow("none") << -1 << 1;
    QTest::newRow("beyond") << 2 << 1;
}

void tst_plotvalues::firstEntryIsSOLA()
{
    QFETCH(int, nEntry);
    QTEST(PlotValues::kindOfEntry(nEntry), "nKind");
}

void tst_plotvalues::runningNumbersBeginAtZero()
{
    QCOMPARE(PlotValues::runningNumbers(0), std::vector<int>());
    QCOMPARE(PlotValues::runningNumbers(1), std::vector<int>({0}));
    QCOMPARE(PlotValues::runningNumbers(4), std::vector<int>({0, 1, 2, 3}));
}

void tst_plotvalues::valuesAreThoseOfOneKind_data()
{
    QTest::addColumn<QVector<int>>("vecKinds");
    QTest::addColumn<QVector<double>>("vecSOLA"); // indexes in the list
    QTest::addColumn<QVector<double>>("vecNOVA");
    QTest::newRow("none") << QVector<int>() << QVector<double>() << QVector<double>();
    QTest::newRow("one SOLA") << QVector<int>({0}) << QVector<double>({0.0}) << QVector<double>();
    QTest::newRow("one NOVA") << QVector<int>({1}) << QVector<double>() << QVector<double>({0.0});
    QTest::newRow("SOLA before NOVA") << QVector<int>({0, 0, 1, 1, 1}) << QVector<double>({0.0, 1.0}) << QVector<double>({2.0, 3.0, 4.0});
    QTest::newRow("in any order") << QVector<int>({1, 0, 1, 0}) << QVector<double>({1.0, 3.0}) << QVector<double>({0.0, 2.0});
    QTest::newRow("of neither kind") << QVector<int>({2, 0, -1}) << QVector<double>({1.0}) << QVector<double>();
}

void tst_plotvalues::valuesAreThoseOfOneKind()
{
    QFETCH(QVector<int>, vecKinds);
    QFETCH(QVector<double>, vecSOLA);
    QFETCH(QVector<double>, vecNOVA);
    QList<sAnalysisBase> lstResults;
    for (int i = 0; i < vecKinds.size(); ++i)
    {
        lstResults.append(record(vecKinds.at(i), {static_cast<float>(i)}));
        lstResults.last().dReducedChi2 = i;
        lstResults.last().dFinalVoxelSize = i + 100;
    }
    for (const int nKind : {0, 1})
    {
        const QVector<double>& vecWanted = nKind == 0 ? vecSOLA : vecNOVA;
        const std::vector<double> vecChi2 = PlotValues::numbers(lstResults, nKind, &sAnalysisBase::dReducedChi2);
        QCOMPARE(QVector<double>(vecChi2.begin(), vecChi2.end()), vecWanted);
        const std::vector<float> vecTotals = PlotValues::totals(lstResults, nKind, false);
        QCOMPARE(QVector<double>(vecTotals.begin(), vecTotals.end()), vecWanted);
        const std::vector<double> vecFinal = PlotValues::numbers(lstResults, nKind, &sAnalysisBase::dFinalVoxelSize);
        QCOMPARE(static_cast<int>(vecFinal.size()), vecWanted.size());
        for (int i = 0; i < vecWanted.size(); ++i)
        {
            QCOMPARE(vecFinal.at(static_cast<std::size_t>(i)), vecWanted.at(i) + 100.0);
        }
    }
}

void tst_plotvalues::totalsAreOfMarkedVoxelsOrOfAll()
{
    QList<sAnalysisBase> lstResults = {record(0, {1.0f, 2.0f, 4.0f}), record(0, {}), record(0, {8.0f})};
    lstResults[0].objVolume.addToVoxelSelection(1001);
    lstResults[0].objVolume.addToVoxelSelection(1003);
    QCOMPARE(PlotValues::totals(lstResults, 0, false), std::vector<float>({7.0f, 0.0f, 8.0f}));
    QCOMPARE(PlotValues::totals(lstResults, 0, true), std::vector<float>({5.0f, 0.0f, 0.0f}));
}

void tst_plotvalues::labelsNameOneUnitPerKind_data()
{
    QTest::addColumn<int>("nMeasure");
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strLabel");
    QTest::newRow("SOLA totals") << 0 << 0 << QStringLiteral("Quantification photon/sec");
    QTest::newRow("NOVA totals") << 0 << 1 << QStringLiteral("Quantification pmol M-\u00B9 cm-\u00B9");
    QTest::newRow("SOLA fit") << 1 << 0 << QStringLiteral("Reduced Chi2");
    QTest::newRow("NOVA fit") << 1 << 1 << QStringLiteral("Reduced Chi2");
    QTest::newRow("SOLA sizes") << 2 << 0 << QStringLiteral("VoxelSize mm");
    QTest::newRow("NOVA sizes") << 2 << 1 << QStringLiteral("VoxelSize mm");
    QTest::newRow("unknown") << 3 << 0 << QString();
    QTest::newRow("none") << -1 << 0 << QString();
}

void tst_plotvalues::labelsNameOneUnitPerKind()
{
    QFETCH(int, nMeasure);
    QFETCH(int, nKind);
    QTEST(PlotValues::yAxisLabel(nMeasure, nKind), "strLabel");
}

ORM_TEST_MAIN(tst_plotvalues)
#include "tst_plotvalues.moc"
