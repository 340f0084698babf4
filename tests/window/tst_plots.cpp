#include "OrmTestMain.h"
#include "PlotValues.h"
#include "PlotsTabTools.h"

#include <QDir>

#include <cmath>
#include <limits>

using namespace PlotsTabTest;
using WindowTest::call;

/// The plots tab: what it compares, and how the lines look.
class tst_plots : public QObject
{
    Q_OBJECT

private slots:
    // ---- The three measures
    void quantificationIsTheTotalOfEachResult();
    void chiSquaredIsThatOfTheResultsTable();
    void voxelSizesAreTwoLines();
    void aMissingRowIsPlottedAsZero();
    void aRowThatIsNoNumberIsAGap();
    void onlyGapsGiveAnEmptyPlot();
    void unknownMeasuresMakeNoLine_data();
    void unknownMeasuresMakeNoLine();
    void unitOfTheLabelStaysWhateverIsChosen();

    // ---- Kinds
    void numbersOfAKindBeginAtZero();
    void onlyNOVAUnderSOLAIsEmptyAndKeepsTheLabel();
    void oneResultOfAKindIsOnePoint();

    // ---- Steps and modes
    void upToFourResultsTheStepIsOne();
    void fromFiveResultsTheStepStays();
    void resultsOfBothKindsCountForTheStep();
    void modeOfThePlotSurvives_data();
    void modeOfThePlotSurvives();
    void modeOfAnyLineSurvives();
    void withoutALineTheStoredModeStands();
    void coloursAreNeverTakenFromThePlot();

    // ---- What is seen
    void linesAreSeenInTheWindow();
};

// ---- The three measures -------------------------------------------------------------------------------------------------

void tst_plots::quantificationIsTheTotalOfEachResult()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    COrmXYPlot& objPlot = objTool.plot();
    QCOMPARE(lines(objPlot), QStringList({g_strQuantification}));
    QCOMPARE(xValues(objPlot, g_strQuantification), QVector<double>({0.0, 1.0, 2.0}));
    const QVector<double> vecTotals = yValues(objPlot, g_strQuantification);
    QCOMPARE(vecTotals.size(), 3);
    for (int i = 0; i < 3; ++i)
    {
        const double fTotal = objTool.total(i);
        QVERIFY(fTotal > 0.0);
        QVERIFY2(std::fabs(vecTotals.at(i) - fTotal) <= 1e-6 * fTotal, qPrintable(QString::number(vecTotals.at(i))));
        QCOMPARE(static_cast<double>(static_cast<float>(vecTotals.at(i))), vecTotals.at(i)); // a sum in single precision
    }
    // Result k holds k times the values of the first.
    QVERIFY(std::fabs(vecTotals.at(1) / vecTotals.at(0) - 2.0) < 1e-4);
    QVERIFY(std::fabs(vecTotals.at(2) / vecTotals.at(0) - 3.0) < 1e-4);
    QCOMPARE(objPlot.xAxisLabel(), QStringLiteral("Results"));
    QCOMPARE(objPlot.yAxisLabel(), QStringLiteral("Quantification photon/sec"));
    QCOMPARE(lookOf(objPlot, g_strQuantification), firstLook());
}

void tst_plots::chiSquaredIsThatOfTheResultsTable()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    COrmXYPlot& objPlot = objTool.plot();
    QCOMPARE(lines(objPlot), QStringList({g_strChi2}));
    QCOMPARE(xValues(objPlot, g_strChi2), QVector<double>({0.0, 1.0, 2.0}));
    QCOMPARE(yValues(objPlot, g_strChi2), QVector<double>({1.25, 2.25, 3.25}));
    QCOMPARE(objPlot.xAxisLabel(), QStringLiteral("Results"));
    QCOMPARE(objPlot.yAxisLabel(), QStringLiteral("Reduced Chi2"));
    QCOMPARE(lookOf(objPlot, g_strChi2), firstLook());
}

void tst_plots::voxelSizesAreTwoLines()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 2);
    COrmXYPlot& objPlot = objTool.plot();
    QCOMPARE(lines(objPlot), QStringList({g_strFinal, g_strStarting}));
    QCOMPARE(yValues(objPlot, g_strFinal), QVector<double>({0.125, 0.25, 0.375}));
    QCOMPARE(yValues(objPlot, g_strStarting), QVector<double>({1.0, 2.0, 3.0}));
    QCOMPARE(xValues(objPlot, g_strStarting), QVector<double>({0.0, 1.0, 2.0}));
    QCOMPARE(objPlot.yAxisLabel(), QStringLiteral("VoxelSize mm"));
    QCOMPARE(lookOf(objPlot, g_strFinal), firstLook());
    QStringList lstSecond = firstLook();
    lstSecond[0] = QColor(Qt::green).name();
    lstSecond[2] = QColor(Qt::darkRed).name();
    QCOMPARE(lookOf(objPlot, g_strStarting), lstSecond);
}

void tst_plots::aMissingRowIsPlottedAsZero()
{
    CPlotWindow objTool([](CPlotStudy& objStudy) { objStudy.addResult(SResultDocument::SOLA, 7, QString()); });
    objTool.loadEach(QStringLiteral("SOLA S1"), {QStringLiteral("r1"), QStringLiteral("r7"), QStringLiteral("r2")});
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    QCOMPARE(yValues(objTool.plot(), g_strChi2), QVector<double>({1.25, 0.0, 2.25}));
}

void tst_plots::aRowThatIsNoNumberIsAGap()
{
    CPlotWindow objTool([](CPlotStudy& objStudy) { objStudy.addResult(SResultDocument::SOLA, 7, QStringLiteral("nan")); });
    objTool.loadEach(QStringLiteral("SOLA S1"), {QStringLiteral("r1"), QStringLiteral("r7"), QStringLiteral("r2")});
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    const QVector<double> vecChi2 = yValues(objTool.plot(), g_strChi2);
    QCOMPARE(vecChi2.size(), 3);
    QCOMPARE(vecChi2.at(0), 1.25);
    QVERIFY(std::isnan(vecChi2.at(1)));
    QCOMPARE(vecChi2.at(2), 2.25);
}

void tst_plots::onlyGapsGiveAnEmptyPlot()
{
    CPlotWindow objTool(
        [](CPlotStudy& objStudy)
        {
            objStudy.addResult(SResultDocument::SOLA, 7, QStringLiteral("nan"));
            objStudy.addResult(SResultDocument::SOLA, 8, QStringLiteral("inf"));
        });
    objTool.loadEach(QStringLiteral("SOLA S1"), {QStringLiteral("r7"), QStringLiteral("r8")});
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    QCOMPARE(lines(objTool.plot()), QStringList());
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Reduced Chi2")); // there were results to plot
    CPlotWindow::choose(objTool.measures(), 0);
    QCOMPARE(lines(objTool.plot()), QStringList({g_strQuantification}));
}

void tst_plots::unknownMeasuresMakeNoLine_data()
{
    QTest::addColumn<int>("nMeasure");
    QTest::newRow("none") << -1;
    QTest::newRow("beyond") << 3;
    QTest::newRow("far beyond") << std::numeric_limits<int>::max();
}

void tst_plots::unknownMeasuresMakeNoLine()
{
    QFETCH(int, nMeasure);
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    QCOMPARE(lines(objTool.plot()), QStringList({g_strQuantification}));
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, nMeasure));
    QCOMPARE(lines(objTool.plot()), QStringList());
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification photon/sec"));
}

void tst_plots::unitOfTheLabelStaysWhateverIsChosen()
{
    CPlotWindow objTool;
    TestWidgets::click(objTool.get<QWidget>("m_pSOLACellsRB"));
    objTool.loadSOLA(2);
    objTool.showPlots();
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification photon/sec"));
    QVERIFY(std::fabs(yValues(objTool.plot(), g_strQuantification).value(0) - objTool.total(0)) <= 1e-6 * objTool.total(0));
}

// ---- Kinds --------------------------------------------------------------------------------------------------------------

void tst_plots::numbersOfAKindBeginAtZero()
{
    CPlotWindow objTool;
    objTool.loadNOVA(2);
    objTool.loadSOLA(3); // stand before those of NOVA
    objTool.showPlots();
    QVERIFY(objTool.kinds()->isEnabled());
    CPlotWindow::choose(objTool.measures(), 1);
    CPlotWindow::choose(objTool.kinds(), 1);
    QCOMPARE(xValues(objTool.plot(), g_strChi2), QVector<double>({0.0, 1.0}));
    QCOMPARE(yValues(objTool.plot(), g_strChi2), QVector<double>({1.25, 2.25}));
    CPlotWindow::choose(objTool.measures(), 0);
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification pmol M-\u00B9 cm-\u00B9"));
    QVERIFY(std::fabs(yValues(objTool.plot(), g_strQuantification).value(0) - objTool.total(3)) <= 1e-6 * objTool.total(3));
    CPlotWindow::choose(objTool.kinds(), 0);
    QCOMPARE(xValues(objTool.plot(), g_strQuantification), QVector<double>({0.0, 1.0, 2.0}));
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification photon/sec"));
}

void tst_plots::onlyNOVAUnderSOLAIsEmptyAndKeepsTheLabel()
{
    CPlotWindow objTool;
    objTool.loadNOVA(2);
    objTool.kinds()->setCurrentIndex(0);
    objTool.plot().setYAxisLabel(QStringLiteral("before"));
    objTool.showPlots();
    QVERIFY(!objTool.kinds()->isEnabled());
    QCOMPARE(lines(objTool.plot()), QStringList());
    QCOMPARE(objTool.plot().xAxisLabel(), QStringLiteral("Results"));
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("before"));
    QCOMPARE(pixelsOf(objTool.plot().getPrintImage(), Qt::blue), 0);
    // With the kind in step there is a line.
    objTool.window().updateUIControls();
    QCOMPARE(objTool.kinds()->currentIndex(), 1);
    objTool.tabs()->setCurrentIndex(0);
    QCOMPARE(xValues(objTool.plot(), g_strQuantification), QVector<double>({0.0, 1.0}));
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification pmol M-\u00B9 cm-\u00B9"));
}

void tst_plots::oneResultOfAKindIsOnePoint()
{
    CPlotWindow objTool;
    objTool.loadSOLA(1);
    objTool.showPlots();
    for (const int nMeasure : {0, 1, 2})
    {
        CPlotWindow::choose(objTool.measures(), nMeasure);
        const QString strLine = PlotValues::lineNames().at(nMeasure);
        QCOMPARE(xValues(objTool.plot(), strLine), QVector<double>({0.0}));
        QCOMPARE(yValues(objTool.plot(), strLine).size(), 1);
        QVERIFY(pixelsOf(objTool.plot().getPrintImage(), Qt::red) > 20);
    }
}

// ---- Steps and modes ----------------------------------------------------------------------------------------------------

void tst_plots::upToFourResultsTheStepIsOne()
{
    CPlotWindow objTool;
    objTool.plot().setXAxisRangeStep(2.0);
    objTool.loadSOLA(4);
    QCOMPARE(objTool.plot().xAxisRangeStep(), 1.0);
    objTool.plot().setXAxisRangeStep(2.0);
    objTool.showPlots();
    QCOMPARE(objTool.plot().xAxisRangeStep(), 1.0);
}

void tst_plots::fromFiveResultsTheStepStays()
{
    CPlotWindow objTool;
    objTool.loadSOLA(5);
    QCOMPARE(objTool.plot().xAxisRangeStep(), 1.0); // from the loads before
    objTool.plot().setXAxisRangeStep(3.0);
    objTool.showPlots();
    QCOMPARE(yValues(objTool.plot(), g_strQuantification).size(), 5);
    QCOMPARE(objTool.plot().xAxisRangeStep(), 3.0);
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r1"));
    QCOMPARE(objTool.plot().xAxisRangeStep(), 1.0);
}

void tst_plots::resultsOfBothKindsCountForTheStep()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.loadNOVA(2);
    objTool.plot().setXAxisRangeStep(3.0);
    objTool.showPlots();
    QCOMPARE(objTool.plot().xAxisRangeStep(), 3.0);
    objTool.remove(QStringLiteral("N1"), QStringLiteral("n1"));
    QCOMPARE(objTool.plot().xAxisRangeStep(), 1.0);
}

void tst_plots::modeOfThePlotSurvives_data()
{
    QTest::addColumn<int>("nMode");
    QTest::newRow("line") << 1;
    QTest::newRow("line and points") << 2;
    QTest::newRow("points") << 3;
    QTest::newRow("bars") << 4;
}

void tst_plots::modeOfThePlotSurvives()
{
    QFETCH(int, nMode);
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.showPlots();
    QCOMPARE(objTool.plot().getCurrentDisplayMode(), 2);
    objTool.plot().setCurrentDisplayMode(nMode);
    for (const int nMeasure : {1, 2, 0})
    {
        CPlotWindow::choose(objTool.measures(), nMeasure);
        QCOMPARE(objTool.plot().getCurrentDisplayMode(), nMode);
        QCOMPARE(lookOf(objTool.plot(), PlotValues::lineNames().at(nMeasure)), firstLook(nMode));
    }
    // Kept by the window from then on, without a line in the plot.
    objTool.window().clearViews();
    objTool.loadSOLA(2);
    QCOMPARE(lookOf(objTool.plot(), g_strQuantification), firstLook(nMode));
}

void tst_plots::modeOfAnyLineSurvives()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    int nX = 0;
    double fY = 1.0;
    for (const QString& strLine : PlotValues::lineNames())
    {
        objTool.plot().clear();
        QVERIFY(objTool.plot().addDataLine(strLine, &nX, &fY, 1));
        objTool.plot().setCurrentDisplayMode(3);
        call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 0));
        QCOMPARE(lookOf(objTool.plot(), g_strQuantification), firstLook(3));
        objTool.plot().setCurrentDisplayMode(2);
        call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 0));
        QCOMPARE(lookOf(objTool.plot(), g_strQuantification), firstLook(2));
    }
    // A line of another name is nobody's.
    objTool.plot().clear();
    QVERIFY(objTool.plot().addDataLine(QStringLiteral("other"), &nX, &fY, 1));
    objTool.plot().setCurrentDisplayMode(3);
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 0));
    QCOMPARE(lookOf(objTool.plot(), g_strQuantification), firstLook(2));
}

void tst_plots::withoutALineTheStoredModeStands()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.plot().setCurrentDisplayMode(3);
    objTool.plot().clear();
    objTool.showPlots();
    QCOMPARE(objTool.plot().getCurrentDisplayMode(), 2);
    QCOMPARE(lookOf(objTool.plot(), g_strQuantification), firstLook(2));
}

void tst_plots::coloursAreNeverTakenFromThePlot()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    DISPLAY_SETTINGS sOther;
    sOther.lineColor = Qt::magenta;
    sOther.nDisplayMode = 3;
    sOther.objPointProperties.nPointSize = 20;
    objTool.plot().setDisplaySettings(g_strQuantification, sOther);
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 2));
    QCOMPARE(lookOf(objTool.plot(), g_strFinal), firstLook(3));
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 2));
    QCOMPARE(lookOf(objTool.plot(), g_strFinal), firstLook(3));
    QCOMPARE(lookOf(objTool.plot(), g_strStarting).value(1), QStringLiteral("3"));
}

// ---- What is seen -------------------------------------------------------------------------------------------------------

void tst_plots::linesAreSeenInTheWindow()
{
    CPlotWindow objTool;
    objTool.loadSOLA(6);
    objTool.showPlots();
    const QString strFolder = qEnvironmentVariable("ORM_TEST_PICTURES");
    for (const int nMeasure : {0, 1, 2})
    {
        CPlotWindow::choose(objTool.measures(), nMeasure);
        QCoreApplication::processEvents();
        const QImage imgSeen = objTool.plot().grab().toImage();
        QVERIFY(pixelsOf(imgSeen, Qt::blue) > 100);
        QVERIFY(pixelsOf(imgSeen, Qt::red) > 6 * 20);
        QCOMPARE(pixelsOf(imgSeen, Qt::green) > 100, nMeasure == 2);
        QCOMPARE(pixelsOf(imgSeen, Qt::darkRed) > 6 * 20, nMeasure == 2);
        if (!strFolder.isEmpty())
        {
            objTool.window().grab().save(QDir(strFolder).filePath(QStringLiteral("tab-%1.png").arg(nMeasure)));
        }
    }
}

ORM_TEST_MAIN(tst_plots)
#include "tst_plots.moc"
