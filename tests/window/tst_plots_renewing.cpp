#include "OrmTestMain.h"
#include "PlotsTabTools.h"

using namespace PlotsTabTest;
using WindowTest::call;

/// The plots tab: when it is built again, and when it is emptied.
class tst_plots_renewing : public QObject
{
    Q_OBJECT

private slots:
    // ---- When it is built again
    void nothingLoadedLeavesThePlotAsItIs();
    void firstLoadPlotsNothing();
    void secondLoadPlotsQuantification();
    void eachTabSwitchPlotsAgain();
    void removalOfATilePlotsQuantification();
    void removalDownToOneEmptiesThePlotUntilTheTabIsSwitched();
    void closeAndResetEmptyThePlot();

    // ---- Measuring
    void measuredVoxelsAreSummed();
    void endOfMeasuringChangesNothingUntilThePlotIsBuiltAgain();
};

// ---- When it is built again ---------------------------------------------------------------------------------------------

void tst_plots_renewing::nothingLoadedLeavesThePlotAsItIs()
{
    CPlotWindow objTool;
    int nX = 0;
    double fY = 1.0;
    QVERIFY(objTool.plot().addDataLine(QStringLiteral("line"), &nX, &fY, 1));
    objTool.plot().setXAxisRangeStep(2.0);
    objTool.showPlots();
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 0));
    QCOMPARE(lines(objTool.plot()), QStringList({QStringLiteral("line")}));
    QCOMPARE(objTool.plot().xAxisLabel(), QString());
    QCOMPARE(objTool.plot().xAxisRangeStep(), 2.0);
}

void tst_plots_renewing::firstLoadPlotsNothing()
{
    CPlotWindow objTool;
    objTool.loadSOLA(1);
    QCOMPARE(lines(objTool.plot()), QStringList());
    objTool.showPlots();
    QCOMPARE(lines(objTool.plot()), QStringList({g_strQuantification}));
}

void tst_plots_renewing::secondLoadPlotsQuantification()
{
    CPlotWindow objTool;
    objTool.loadSOLA(1);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 2);
    QCOMPARE(lines(objTool.plot()), QStringList({g_strFinal, g_strStarting}));
    objTool.load({QStringLiteral("r2")});
    QCOMPARE(objTool.measures()->currentIndex(), 0);
    QCOMPARE(objTool.tabs()->currentIndex(), 0);
    QCOMPARE(lines(objTool.plot()), QStringList({g_strQuantification}));
    QCOMPARE(yValues(objTool.plot(), g_strQuantification).size(), 2);
}

void tst_plots_renewing::eachTabSwitchPlotsAgain()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    for (const int nTab : {1, 0})
    {
        objTool.plot().clear();
        objTool.tabs()->setCurrentIndex(nTab);
        QCOMPARE(xValues(objTool.plot(), g_strQuantification), QVector<double>({0.0, 1.0, 2.0}));
    }
}

void tst_plots_renewing::removalOfATilePlotsQuantification()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r2"));
    QCOMPARE(objTool.measures()->currentIndex(), 0);
    QCOMPARE(lines(objTool.plot()), QStringList({g_strQuantification}));
    QCOMPARE(yValues(objTool.plot(), g_strQuantification).size(), 2);
    QVERIFY(objTool.measures()->isEnabled());
}

void tst_plots_renewing::removalDownToOneEmptiesThePlotUntilTheTabIsSwitched()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.showPlots();
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r1"));
    QCOMPARE(lines(objTool.plot()), QStringList());
    QVERIFY(!objTool.measures()->isEnabled());
    objTool.tabs()->setCurrentIndex(0);
    QCOMPARE(xValues(objTool.plot(), g_strQuantification), QVector<double>({0.0}));
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r2"));
    QCOMPARE(lines(objTool.plot()), QStringList());
    objTool.showPlots();
    QCOMPARE(lines(objTool.plot()), QStringList());
}

void tst_plots_renewing::closeAndResetEmptyThePlot()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    QVERIFY(!objTool.plot().dataLines().isEmpty());
    objTool.window().clearViews();
    QCOMPARE(lines(objTool.plot()), QStringList());
    objTool.loadSOLA(2);
    QVERIFY(!objTool.plot().dataLines().isEmpty());
    QVERIFY(objTool.window().close());
    QCOMPARE(lines(objTool.plot()), QStringList());
    QVERIFY(!objTool.measures()->isEnabled());
}

// ---- Measuring ----------------------------------------------------------------------------------------------------------

void tst_plots_renewing::measuredVoxelsAreSummed()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.showPlots();
    const QVector<double> vecTotals = yValues(objTool.plot(), g_strQuantification);
    TestWidgets::get<QAbstractButton>(&objTool.window(), "m_pSelectVoxelButton")->setChecked(true);
    QCOMPARE(yValues(objTool.plot(), g_strQuantification), vecTotals); // the button alone builds nothing
    QVector<double> vecMarked;
    for (sAnalysisBase& objResult : objTool.view().getAnalysisParams())
    {
        const C3DVolume::Voxel* pFirst = objResult.objVolume.getVoxelByNum(0);
        const C3DVolume::Voxel* pThird = objResult.objVolume.getVoxelByNum(2);
        vecMarked.append(static_cast<double>(pFirst->fValue + pThird->fValue));
        objResult.objVolume.addToVoxelSelection(pFirst->nID);
        objResult.objVolume.addToVoxelSelection(pThird->nID);
    }
    emit objTool.view().updatePlotTab();
    QCOMPARE(lines(objTool.plot()), QStringList({g_strQuantification}));
    QCOMPARE(yValues(objTool.plot(), g_strQuantification), vecMarked);
    QVERIFY(vecMarked.at(0) < vecTotals.at(0));
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification photon/sec"));
    // The other measures know nothing of it.
    CPlotWindow::choose(objTool.measures(), 1);
    emit objTool.view().updatePlotTab();
    QCOMPARE(yValues(objTool.plot(), g_strChi2), QVector<double>({1.25, 2.25}));
}

void tst_plots_renewing::endOfMeasuringChangesNothingUntilThePlotIsBuiltAgain()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    auto* pButton = TestWidgets::get<QAbstractButton>(&objTool.window(), "m_pSelectVoxelButton");
    const QVector<double> vecTotals = yValues(objTool.plot(), g_strQuantification);
    pButton->setChecked(true);
    objTool.showPlots();
    QCOMPARE(yValues(objTool.plot(), g_strQuantification), QVector<double>({0.0, 0.0})); // nothing is marked
    pButton->setChecked(false);
    QCOMPARE(yValues(objTool.plot(), g_strQuantification), QVector<double>({0.0, 0.0}));
    objTool.tabs()->setCurrentIndex(0);
    QCOMPARE(yValues(objTool.plot(), g_strQuantification), vecTotals);
}

ORM_TEST_MAIN(tst_plots_renewing)
#include "tst_plots_renewing.moc"
