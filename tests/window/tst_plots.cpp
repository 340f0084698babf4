#include "WindowTestTools.h"

#include "COrmXYPlot.h"
#include "OrmTestMain.h"
#include "PlotValues.h"

#include <QDir>
#include <QPushButton>

#include <cmath>
#include <limits>

using WindowTest::call;
using WindowTest::paint;

namespace
{
const QString s_strQuantification = QStringLiteral("Quantification Profile");
const QString s_strChi2 = QStringLiteral("Reduced Chi-Squared profile");
const QString s_strFinal = QStringLiteral("Final Voxel Size");
const QString s_strStarting = QStringLiteral("Starting Voxel Size");

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

/// What is seen of a line's look.
QStringList lookOf(COrmXYPlot& objPlot, const QString& strLine)
{
    DISPLAY_SETTINGS sLook;
    if (!objPlot.getDisplaySettings(strLine, sLook))
    {
        return {};
    }
    return {sLook.lineColor.name(),
            QString::number(sLook.nDisplayMode),
            sLook.objPointProperties.pointColor.name(),
            sLook.objPointProperties.bPointVisible ? QStringLiteral("points") : QStringLiteral("no points"),
            QString::number(sLook.objPointProperties.nPointStyle),
            QString::number(sLook.objPointProperties.nPointSize)};
}

/// The look of every first line in a display mode.
QStringList firstLook(int nMode = 2)
{
    return {QColor(Qt::blue).name(),  QString::number(nMode), QColor(Qt::red).name(),
            QStringLiteral("points"), QStringLiteral("0"),    QStringLiteral("7")};
}

QStringList lines(const COrmXYPlot& objPlot)
{
    QStringList lstNames = objPlot.dataLines().keys();
    lstNames.sort();
    return lstNames;
}

QVector<double> yValues(const COrmXYPlot& objPlot, const QString& strLine)
{
    const COrmXYPlot::DATALINE_INFO* pLine = objPlot.dataLines().value(strLine);
    return pLine != nullptr ? pLine->vecY : QVector<double>();
}

QVector<double> xValues(const COrmXYPlot& objPlot, const QString& strLine)
{
    const COrmXYPlot::DATALINE_INFO* pLine = objPlot.dataLines().value(strLine);
    return pLine != nullptr ? pLine->vecX : QVector<double>();
}

/// Number of pixels of exactly this colour.
int pixelsOf(const QImage& imgSeen, const QColor& clrWanted)
{
    int nPixels = 0;
    for (int y = 0; y < imgSeen.height(); ++y)
    {
        for (int x = 0; x < imgSeen.width(); ++x)
        {
            nPixels += imgSeen.pixel(x, y) == clrWanted.rgb() ? 1 : 0;
        }
    }
    return nPixels;
}

/// A study of six luminescent results in S1 ("r1" ... "r6") and three fluorescent ones in N1 ("n1" ...). Result k of a kind has k times
/// the plain voxel values, a reduced chi-squared of k + 0.25, a final voxel size of k / 8 and a starting one of k.
class CPlotStudy
{
public:
    CPlotStudy()
    {
        m_objWriter.addSequence(QStringLiteral("S1"));
        m_objWriter.addSequence(QStringLiteral("N1"), SSequenceLook::fluorescent());
        for (int k = 1; k <= 6; ++k)
        {
            addResult(SResultDocument::SOLA, k, QString::number(k + 0.25));
        }
        for (int k = 1; k <= 3; ++k)
        {
            addResult(SResultDocument::NOVA, k, QString::number(k + 0.25));
        }
    }

    /// Adds result k of a kind with this text as its reduced chi-squared; null leaves the row out.
    void addResult(int nKind, int k, const QString& strChi2)
    {
        const bool bNOVA = nKind == SResultDocument::NOVA;
        SResultDocument objDocument(nKind);
        objDocument.strSequenceID = bNOVA ? QStringLiteral("N1") : QStringLiteral("S1");
        objDocument.setCube(4, 1.0, static_cast<float>(k));
        objDocument.lstResults = {{QStringLiteral("Final voxel size (mm)"), QString::number(k / 8.0)},
                                  {bNOVA ? QStringLiteral("Starting vsize") : QStringLiteral("Starting vsize (best)"), QString::number(k)}};
        if (!strChi2.isNull())
        {
            objDocument.lstResults.append({QStringLiteral("Reduced Chi2"), strChi2});
        }
        m_objWriter.addResult(objDocument.strSequenceID, (bNOVA ? QStringLiteral("n") : QStringLiteral("r")) + QString::number(k),
                              objDocument);
    }

    QString folder() const { return m_objWriter.folder(); }

private:
    CStudyWriter m_objWriter;
};

/// The window on that study, with its plot at hand.
class CPlotWindow : public CToolWindow
{
public:
    CPlotWindow() { open(m_objStudy.folder()); }
    explicit CPlotWindow(const std::function<void(CPlotStudy&)>& fnChange)
    {
        fnChange(m_objStudy);
        open(m_objStudy.folder());
    }

    /// Loads results one press each, and lets a frame be painted after each.
    void loadEach(const QString& strEntry, const QStringList& lstNames)
    {
        chooseSequence(strEntry);
        for (const QString& strName : lstNames)
        {
            load({strName});
            paint(*this);
        }
        window().updateUIControls();
    }
    void loadSOLA(int nResults)
    {
        QStringList lstNames;
        for (int k = 1; k <= nResults; ++k)
        {
            lstNames.append(QStringLiteral("r%1").arg(k));
        }
        loadEach(QStringLiteral("SOLA S1"), lstNames);
    }
    void loadNOVA(int nResults)
    {
        QStringList lstNames;
        for (int k = 1; k <= nResults; ++k)
        {
            lstNames.append(QStringLiteral("n%1").arg(k));
        }
        loadEach(QStringLiteral("NOVA N1"), lstNames);
    }
    /// Takes a result out of the view as its own menu does, and tells the window.
    void remove(const QString& strSequenceID, const QString& strResult)
    {
        QList<sAnalysisBase>& lstResults = view().getAnalysisParams();
        for (int i = lstResults.size() - 1; i >= 0; --i)
        {
            if (lstResults.at(i).strSequenceID == strSequenceID && lstResults.at(i).strResultName == strResult)
            {
                lstResults.removeAt(i);
            }
        }
        view().getLoadedResult().removeOne(strSequenceID + strResult);
        emit view().upadteAnlysisParameters(strSequenceID, strResult);
        paint(*this);
    }

    COrmXYPlot& plot() { return *window().findChild<COrmXYPlot*>(); }
    QComboBox* measures() { return get<QComboBox>("m_pPlotSelectCB"); }
    QComboBox* kinds() { return get<QComboBox>("m_pAnalysisSelectCB"); }
    QTabWidget* tabs() { return get<QTabWidget>("m_p3DBrowserTabWidget"); }
    void showPlots() { tabs()->setCurrentIndex(1); }

    /// Chooses an entry with the keyboard, as a user does.
    static void choose(QComboBox* pCombo, int nIndex)
    {
        if (!pCombo->isEnabled())
        {
            TestWidgets::fail(QStringLiteral("The combo is off"));
        }
        pCombo->setFocus();
        while (pCombo->currentIndex() != nIndex)
        {
            QTest::keyClick(pCombo, pCombo->currentIndex() < nIndex ? Qt::Key_Down : Qt::Key_Up);
        }
    }

    /// The sum of the voxel values of a tile, added up here.
    double total(int nTile)
    {
        double fSum = 0.0;
        for (const C3DVolume::Voxel& objVoxel : view().getAnalysisParams().at(nTile).objVolume.voxels())
        {
            fSum += static_cast<double>(objVoxel.fValue);
        }
        return fSum;
    }

private:
    CPlotStudy m_objStudy;
};
} // namespace

/// The plots tab: what it compares, when it is built again, and when it is emptied.
class tst_plots : public QObject
{
    Q_OBJECT

private slots:
    // ---- Values, without a window
    void lineNamesStandInTheirOrder();
    void firstEntryIsSOLA_data();
    void firstEntryIsSOLA();
    void runningNumbersBeginAtZero();
    void valuesAreThoseOfOneKind_data();
    void valuesAreThoseOfOneKind();
    void totalsAreOfMarkedVoxelsOrOfAll();
    void labelsNameOneUnitPerKind_data();
    void labelsNameOneUnitPerKind();

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

    // ---- What is seen
    void linesAreSeenInTheWindow();
};

// ---- Values, without a window -------------------------------------------------------------------------------------------

void tst_plots::lineNamesStandInTheirOrder()
{
    QCOMPARE(PlotValues::lineNames(), QStringList({s_strQuantification, s_strChi2, s_strFinal, s_strStarting}));
}

void tst_plots::firstEntryIsSOLA_data()
{
    QTest::addColumn<int>("nEntry");
    QTest::addColumn<int>("nKind");
    QTest::newRow("SOLA") << 0 << 0;
    QTest::newRow("NOVA") << 1 << 1;
    QTest::newRow("none") << -1 << 1;
    QTest::newRow("beyond") << 2 << 1;
}

void tst_plots::firstEntryIsSOLA()
{
    QFETCH(int, nEntry);
    QTEST(PlotValues::kindOfEntry(nEntry), "nKind");
}

void tst_plots::runningNumbersBeginAtZero()
{
    QCOMPARE(PlotValues::runningNumbers(0), std::vector<int>());
    QCOMPARE(PlotValues::runningNumbers(1), std::vector<int>({0}));
    QCOMPARE(PlotValues::runningNumbers(4), std::vector<int>({0, 1, 2, 3}));
}

void tst_plots::valuesAreThoseOfOneKind_data()
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

void tst_plots::valuesAreThoseOfOneKind()
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

void tst_plots::totalsAreOfMarkedVoxelsOrOfAll()
{
    QList<sAnalysisBase> lstResults = {record(0, {1.0f, 2.0f, 4.0f}), record(0, {}), record(0, {8.0f})};
    lstResults[0].objVolume.addToVoxelSelection(1001);
    lstResults[0].objVolume.addToVoxelSelection(1003);
    QCOMPARE(PlotValues::totals(lstResults, 0, false), std::vector<float>({7.0f, 0.0f, 8.0f}));
    QCOMPARE(PlotValues::totals(lstResults, 0, true), std::vector<float>({5.0f, 0.0f, 0.0f}));
}

void tst_plots::labelsNameOneUnitPerKind_data()
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

void tst_plots::labelsNameOneUnitPerKind()
{
    QFETCH(int, nMeasure);
    QFETCH(int, nKind);
    QTEST(PlotValues::yAxisLabel(nMeasure, nKind), "strLabel");
}

// ---- The three measures -------------------------------------------------------------------------------------------------

void tst_plots::quantificationIsTheTotalOfEachResult()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    COrmXYPlot& objPlot = objTool.plot();
    QCOMPARE(lines(objPlot), QStringList({s_strQuantification}));
    QCOMPARE(xValues(objPlot, s_strQuantification), QVector<double>({0.0, 1.0, 2.0}));
    const QVector<double> vecTotals = yValues(objPlot, s_strQuantification);
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
    QCOMPARE(lookOf(objPlot, s_strQuantification), firstLook());
}

void tst_plots::chiSquaredIsThatOfTheResultsTable()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    COrmXYPlot& objPlot = objTool.plot();
    QCOMPARE(lines(objPlot), QStringList({s_strChi2}));
    QCOMPARE(xValues(objPlot, s_strChi2), QVector<double>({0.0, 1.0, 2.0}));
    QCOMPARE(yValues(objPlot, s_strChi2), QVector<double>({1.25, 2.25, 3.25}));
    QCOMPARE(objPlot.xAxisLabel(), QStringLiteral("Results"));
    QCOMPARE(objPlot.yAxisLabel(), QStringLiteral("Reduced Chi2"));
    QCOMPARE(lookOf(objPlot, s_strChi2), firstLook());
}

void tst_plots::voxelSizesAreTwoLines()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 2);
    COrmXYPlot& objPlot = objTool.plot();
    QCOMPARE(lines(objPlot), QStringList({s_strFinal, s_strStarting}));
    QCOMPARE(yValues(objPlot, s_strFinal), QVector<double>({0.125, 0.25, 0.375}));
    QCOMPARE(yValues(objPlot, s_strStarting), QVector<double>({1.0, 2.0, 3.0}));
    QCOMPARE(xValues(objPlot, s_strStarting), QVector<double>({0.0, 1.0, 2.0}));
    QCOMPARE(objPlot.yAxisLabel(), QStringLiteral("VoxelSize mm"));
    QCOMPARE(lookOf(objPlot, s_strFinal), firstLook());
    QStringList lstSecond = firstLook();
    lstSecond[0] = QColor(Qt::green).name();
    lstSecond[2] = QColor(Qt::darkRed).name();
    QCOMPARE(lookOf(objPlot, s_strStarting), lstSecond);
}

void tst_plots::aMissingRowIsPlottedAsZero()
{
    CPlotWindow objTool([](CPlotStudy& objStudy) { objStudy.addResult(SResultDocument::SOLA, 7, QString()); });
    objTool.loadEach(QStringLiteral("SOLA S1"), {QStringLiteral("r1"), QStringLiteral("r7"), QStringLiteral("r2")});
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    QCOMPARE(yValues(objTool.plot(), s_strChi2), QVector<double>({1.25, 0.0, 2.25}));
}

void tst_plots::aRowThatIsNoNumberIsAGap()
{
    CPlotWindow objTool([](CPlotStudy& objStudy) { objStudy.addResult(SResultDocument::SOLA, 7, QStringLiteral("nan")); });
    objTool.loadEach(QStringLiteral("SOLA S1"), {QStringLiteral("r1"), QStringLiteral("r7"), QStringLiteral("r2")});
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    const QVector<double> vecChi2 = yValues(objTool.plot(), s_strChi2);
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
    QCOMPARE(lines(objTool.plot()), QStringList({s_strQuantification}));
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
    QCOMPARE(lines(objTool.plot()), QStringList({s_strQuantification}));
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
    QVERIFY(std::fabs(yValues(objTool.plot(), s_strQuantification).value(0) - objTool.total(0)) <= 1e-6 * objTool.total(0));
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
    QCOMPARE(xValues(objTool.plot(), s_strChi2), QVector<double>({0.0, 1.0}));
    QCOMPARE(yValues(objTool.plot(), s_strChi2), QVector<double>({1.25, 2.25}));
    CPlotWindow::choose(objTool.measures(), 0);
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification pmol M-\u00B9 cm-\u00B9"));
    QVERIFY(std::fabs(yValues(objTool.plot(), s_strQuantification).value(0) - objTool.total(3)) <= 1e-6 * objTool.total(3));
    CPlotWindow::choose(objTool.kinds(), 0);
    QCOMPARE(xValues(objTool.plot(), s_strQuantification), QVector<double>({0.0, 1.0, 2.0}));
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
    QCOMPARE(xValues(objTool.plot(), s_strQuantification), QVector<double>({0.0, 1.0}));
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
    QCOMPARE(yValues(objTool.plot(), s_strQuantification).size(), 5);
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
    QCOMPARE(lookOf(objTool.plot(), s_strQuantification), firstLook(nMode));
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
        QCOMPARE(lookOf(objTool.plot(), s_strQuantification), firstLook(3));
        objTool.plot().setCurrentDisplayMode(2);
        call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 0));
        QCOMPARE(lookOf(objTool.plot(), s_strQuantification), firstLook(2));
    }
    // A line of another name is nobody's.
    objTool.plot().clear();
    QVERIFY(objTool.plot().addDataLine(QStringLiteral("other"), &nX, &fY, 1));
    objTool.plot().setCurrentDisplayMode(3);
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 0));
    QCOMPARE(lookOf(objTool.plot(), s_strQuantification), firstLook(2));
}

void tst_plots::withoutALineTheStoredModeStands()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.plot().setCurrentDisplayMode(3);
    objTool.plot().clear();
    objTool.showPlots();
    QCOMPARE(objTool.plot().getCurrentDisplayMode(), 2);
    QCOMPARE(lookOf(objTool.plot(), s_strQuantification), firstLook(2));
}

void tst_plots::coloursAreNeverTakenFromThePlot()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    DISPLAY_SETTINGS sOther;
    sOther.lineColor = Qt::magenta;
    sOther.nDisplayMode = 3;
    sOther.objPointProperties.nPointSize = 20;
    objTool.plot().setDisplaySettings(s_strQuantification, sOther);
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 2));
    QCOMPARE(lookOf(objTool.plot(), s_strFinal), firstLook(3));
    call(objTool, "onActivatePlotSelectCB", Q_ARG(int, 2));
    QCOMPARE(lookOf(objTool.plot(), s_strFinal), firstLook(3));
    QCOMPARE(lookOf(objTool.plot(), s_strStarting).value(1), QStringLiteral("3"));
}

// ---- When it is built again ---------------------------------------------------------------------------------------------

void tst_plots::nothingLoadedLeavesThePlotAsItIs()
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

void tst_plots::firstLoadPlotsNothing()
{
    CPlotWindow objTool;
    objTool.loadSOLA(1);
    QCOMPARE(lines(objTool.plot()), QStringList());
    objTool.showPlots();
    QCOMPARE(lines(objTool.plot()), QStringList({s_strQuantification}));
}

void tst_plots::secondLoadPlotsQuantification()
{
    CPlotWindow objTool;
    objTool.loadSOLA(1);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 2);
    QCOMPARE(lines(objTool.plot()), QStringList({s_strFinal, s_strStarting}));
    objTool.load({QStringLiteral("r2")});
    QCOMPARE(objTool.measures()->currentIndex(), 0);
    QCOMPARE(objTool.tabs()->currentIndex(), 0);
    QCOMPARE(lines(objTool.plot()), QStringList({s_strQuantification}));
    QCOMPARE(yValues(objTool.plot(), s_strQuantification).size(), 2);
}

void tst_plots::eachTabSwitchPlotsAgain()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    for (const int nTab : {1, 0})
    {
        objTool.plot().clear();
        objTool.tabs()->setCurrentIndex(nTab);
        QCOMPARE(xValues(objTool.plot(), s_strQuantification), QVector<double>({0.0, 1.0, 2.0}));
    }
}

void tst_plots::removalOfATilePlotsQuantification()
{
    CPlotWindow objTool;
    objTool.loadSOLA(3);
    objTool.showPlots();
    CPlotWindow::choose(objTool.measures(), 1);
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r2"));
    QCOMPARE(objTool.measures()->currentIndex(), 0);
    QCOMPARE(lines(objTool.plot()), QStringList({s_strQuantification}));
    QCOMPARE(yValues(objTool.plot(), s_strQuantification).size(), 2);
    QVERIFY(objTool.measures()->isEnabled());
}

void tst_plots::removalDownToOneEmptiesThePlotUntilTheTabIsSwitched()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.showPlots();
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r1"));
    QCOMPARE(lines(objTool.plot()), QStringList());
    QVERIFY(!objTool.measures()->isEnabled());
    objTool.tabs()->setCurrentIndex(0);
    QCOMPARE(xValues(objTool.plot(), s_strQuantification), QVector<double>({0.0}));
    objTool.remove(QStringLiteral("S1"), QStringLiteral("r2"));
    QCOMPARE(lines(objTool.plot()), QStringList());
    objTool.showPlots();
    QCOMPARE(lines(objTool.plot()), QStringList());
}

void tst_plots::closeAndResetEmptyThePlot()
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

void tst_plots::measuredVoxelsAreSummed()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    objTool.showPlots();
    const QVector<double> vecTotals = yValues(objTool.plot(), s_strQuantification);
    TestWidgets::get<QAbstractButton>(&objTool.window(), "m_pSelectVoxelButton")->setChecked(true);
    QCOMPARE(yValues(objTool.plot(), s_strQuantification), vecTotals); // the button alone builds nothing
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
    QCOMPARE(lines(objTool.plot()), QStringList({s_strQuantification}));
    QCOMPARE(yValues(objTool.plot(), s_strQuantification), vecMarked);
    QVERIFY(vecMarked.at(0) < vecTotals.at(0));
    QCOMPARE(objTool.plot().yAxisLabel(), QStringLiteral("Quantification photon/sec"));
    // The other measures know nothing of it.
    CPlotWindow::choose(objTool.measures(), 1);
    emit objTool.view().updatePlotTab();
    QCOMPARE(yValues(objTool.plot(), s_strChi2), QVector<double>({1.25, 2.25}));
}

void tst_plots::endOfMeasuringChangesNothingUntilThePlotIsBuiltAgain()
{
    CPlotWindow objTool;
    objTool.loadSOLA(2);
    auto* pButton = TestWidgets::get<QAbstractButton>(&objTool.window(), "m_pSelectVoxelButton");
    const QVector<double> vecTotals = yValues(objTool.plot(), s_strQuantification);
    pButton->setChecked(true);
    objTool.showPlots();
    QCOMPARE(yValues(objTool.plot(), s_strQuantification), QVector<double>({0.0, 0.0})); // nothing is marked
    pButton->setChecked(false);
    QCOMPARE(yValues(objTool.plot(), s_strQuantification), QVector<double>({0.0, 0.0}));
    objTool.tabs()->setCurrentIndex(0);
    QCOMPARE(yValues(objTool.plot(), s_strQuantification), vecTotals);
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
