#include "PlotTestTools.h"

#include <QApplication>
#include <QProcess>

using PlotTest::add;
using PlotTest::columnsLike;
using PlotTest::fInfinity;
using PlotTest::fNan;
using PlotTest::lookOfFirstLine;
using PlotTest::pictureOf;
using PlotTest::pixelsLike;

class TestXYPlot : public QObject
{
    Q_OBJECT

private slots:
    void looksHaveTheirDefaults()
    {
        const DISPLAY_SETTINGS sSettings;
        QCOMPARE(sSettings.lineColor, QColor(Qt::black));
        QCOMPARE(sSettings.nDisplayMode, 1);
        QCOMPARE(sSettings.objPointProperties.nPointStyle, 0);
        QCOMPARE(sSettings.objPointProperties.nPointSize, 7);
        QCOMPARE(sSettings.objPointProperties.pointColor, QColor(Qt::black));
        QVERIFY(!sSettings.objPointProperties.bPointVisible);
    }

    void aNewPlotIsEmpty()
    {
        COrmXYPlot objPlot(nullptr, nullptr);
        QCOMPARE(objPlot.objectName(), QString());
        QCOMPARE(objPlot.getCurrentDisplayMode(), 1);
        QVERIFY(objPlot.dataLines().isEmpty());
        QVERIFY(!objPlot.determineRanges());
        const COrmXYPlot objNamed(nullptr, "profile");
        QCOMPARE(objNamed.objectName(), QStringLiteral("profile"));
    }

    void aLineKeepsItsValuesAsDoubles()
    {
        COrmXYPlot objPlot;
        int arrX[] = {0, 1, 2};
        float arrY[] = {0.5f, 2.0f, 8.25f};
        QVERIFY((objPlot.addDataLine<int, float>(QStringLiteral("Quantification Profile"), arrX, arrY, 3)));
        const COrmXYPlot::DATALINE_INFO* pLine = objPlot.dataLines().value(QStringLiteral("Quantification Profile"));
        QVERIFY(pLine != nullptr);
        QCOMPARE(pLine->nVals, 3);
        QCOMPARE(pLine->vecX, QVector<double>({0.0, 1.0, 2.0}));
        QCOMPARE(pLine->vecY, QVector<double>({0.5, 2.0, 8.25}));
        QCOMPARE(pLine->nExtraA, 0);
        QCOMPARE(pLine->nExtraB, 0);
        QVERIFY(pLine->vecExtraA.isEmpty() && pLine->vecExtraB.isEmpty());
        QCOMPARE(pLine->objDisplaySettings.nDisplayMode, 1);
    }

    void aNameThatIsThereGetsNewValuesAndKeepsItsLook()
    {
        COrmXYPlot objPlot;
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0, 3.0}));
        objPlot.setDisplaySettings(QStringLiteral("A"), lookOfFirstLine());
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {5.0}));
        QCOMPARE(objPlot.dataLines().size(), 1);
        QCOMPARE(objPlot.dataLines().value(QStringLiteral("A"))->nVals, 1);
        QCOMPARE(objPlot.dataLines().value(QStringLiteral("A"))->vecY, QVector<double>({5.0}));
        QCOMPARE(objPlot.dataLines().value(QStringLiteral("A"))->objDisplaySettings.lineColor, QColor(Qt::blue));
    }

    void withoutAFiniteNumberAllLinesAreDropped()
    {
        COrmXYPlot objPlot;
        QVERIFY(!add<double>(objPlot, QStringLiteral("A"), {fNan, fInfinity, -fInfinity}));
        QVERIFY(objPlot.dataLines().isEmpty());
        QVERIFY(add<double>(objPlot, QStringLiteral("B"), {1.0}));
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {fNan})); // the plot has a usable range
        QCOMPARE(objPlot.dataLines().size(), 2);
        QVERIFY(!add<double>(objPlot, QStringLiteral("B"), {fNan}));
        QVERIFY(objPlot.dataLines().isEmpty());
    }

    void settingsAreCopiedByName()
    {
        COrmXYPlot objPlot;
        DISPLAY_SETTINGS sSettings = lookOfFirstLine();
        QVERIFY(!objPlot.getDisplaySettings(QStringLiteral("A"), sSettings));
        QCOMPARE(sSettings.lineColor, QColor(Qt::blue)); // left alone
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0}));
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        DISPLAY_SETTINGS sRead;
        QVERIFY(objPlot.getDisplaySettings(QStringLiteral("A"), sRead));
        QCOMPARE(sRead.lineColor, QColor(Qt::blue));
        QCOMPARE(sRead.nDisplayMode, 2);
        QCOMPARE(sRead.objPointProperties.pointColor, QColor(Qt::red));
        QVERIFY(sRead.objPointProperties.bPointVisible);
        QCOMPARE(objPlot.getCurrentDisplayMode(), 2);
    }

    void settingsOfAnUnknownLineChangeNothing()
    {
        COrmXYPlot objPlot;
        objPlot.setDisplaySettings(QStringLiteral("A"), lookOfFirstLine());
        QCOMPARE(objPlot.getCurrentDisplayMode(), 1);
        QVERIFY(objPlot.dataLines().isEmpty());
    }

    void theDisplayModeOutlivesTheLines()
    {
        COrmXYPlot objPlot;
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0}));
        QVERIFY(add<double>(objPlot, QStringLiteral("B"), {2.0, 1.0}));
        objPlot.setCurrentDisplayMode(3);
        DISPLAY_SETTINGS sRead;
        QVERIFY(objPlot.getDisplaySettings(QStringLiteral("B"), sRead));
        QCOMPARE(sRead.nDisplayMode, 3);
        objPlot.clear();
        QVERIFY(objPlot.dataLines().isEmpty());
        QVERIFY(!objPlot.getDisplaySettings(QStringLiteral("B"), sRead));
        QCOMPARE(objPlot.getCurrentDisplayMode(), 3);
    }

    void labelsOutliveTheLines()
    {
        COrmXYPlot objPlot;
        objPlot.setXAxisLabel(QStringLiteral("Results"));
        objPlot.setYAxisLabel(QStringLiteral("Quantification photon/sec"));
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0}));
        objPlot.clear();
        QCOMPARE(objPlot.xAxisLabel(), QStringLiteral("Results"));
        QCOMPARE(objPlot.yAxisLabel(), QStringLiteral("Quantification photon/sec"));
    }

    // ---- Assertions: the program stops, so they run in a process of their own ------------------------------------------

    void wrongArgumentsStopTheProgram_data()
    {
        QTest::addColumn<QString>("strCase");
        QTest::addColumn<QString>("strExpected");
        QTest::newRow("no values") << "count"
                                   << "ASSERT failure in addDataLine: \"nVals >= 1\", file OrmXYPlot, line 189";
        QTest::newRow("no x") << "x"
                              << "ASSERT failure in addDataLine: \"pXVals != NULL\", file OrmXYPlot, line 190";
        QTest::newRow("no y") << "y"
                              << "ASSERT failure in addDataLine: \"pYVals != NULL\", file OrmXYPlot, line 191";
    }

    void wrongArgumentsStopTheProgram()
    {
        QFETCH(QString, strCase);
        QFETCH(QString, strExpected);
        QProcess objProcess;
        objProcess.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--wrong-argument"), strCase});
        QVERIFY(objProcess.waitForFinished(60000));
        QCOMPARE(objProcess.exitStatus(), QProcess::CrashExit);
        QVERIFY(QString::fromLocal8Bit(objProcess.readAllStandardError()).contains(strExpected));
    }

    // ---- Pictures -------------------------------------------------------------------------------------------------

    void linesAndPointsAreDrawnInTheirColors()
    {
        COrmXYPlot objPlot;
        objPlot.resize(700, 500);
        objPlot.setXAxisLabel(QStringLiteral("Results"));
        QVERIFY(add<double>(objPlot, QStringLiteral("Final Voxel Size"), {1.0, 0.5, 0.5, 0.25, 0.3}));
        QVERIFY(add<double>(objPlot, QStringLiteral("Starting Voxel Size"), {4.0, 4.0, 2.0, 4.0, 1.5}));
        objPlot.setYAxisLabel(QStringLiteral("VoxelSize mm"));
        objPlot.setXAxisRangeStep(1.0);
        objPlot.setDisplaySettings(QStringLiteral("Final Voxel Size"), lookOfFirstLine());
        DISPLAY_SETTINGS sSecond = lookOfFirstLine();
        sSecond.lineColor = Qt::green;
        sSecond.objPointProperties.pointColor = Qt::darkRed;
        objPlot.setDisplaySettings(QStringLiteral("Starting Voxel Size"), sSecond);
        const QImage imgSeen = pictureOf(objPlot);
        QCOMPARE(imgSeen.size(), QSize(700, 500));
        QCOMPARE(QColor(imgSeen.pixel(1, 1)), QColor(Qt::white));
        QVERIFY(pixelsLike(imgSeen, Qt::blue) > 100);
        QVERIFY(pixelsLike(imgSeen, Qt::red) > 5 * 20);
        QVERIFY(pixelsLike(imgSeen, Qt::green) > 100);
        QVERIFY(pixelsLike(imgSeen, Qt::darkRed) > 5 * 20);
        QVERIFY(pixelsLike(imgSeen, Qt::black) > 200); // axes and labels
        // The legend above shows both lines, too.
        QVERIFY(pixelsLike(imgSeen, Qt::blue, 0) > pixelsLike(imgSeen, Qt::blue));
        QVERIFY(pixelsLike(imgSeen, Qt::green, 0) > pixelsLike(imgSeen, Qt::green));
    }

    void modesDecideWhatIsDrawn()
    {
        COrmXYPlot objPlot;
        objPlot.resize(500, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 3.0, 2.0}));
        DISPLAY_SETTINGS sSettings = lookOfFirstLine();
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        QVERIFY(pixelsLike(objPlot.getPrintImage(), Qt::blue) > 50);
        QVERIFY(pixelsLike(objPlot.getPrintImage(), Qt::red) > 50);
        objPlot.setCurrentDisplayMode(COrmXYPlot::LineMode);
        QVERIFY(pixelsLike(objPlot.getPrintImage(), Qt::blue) > 50);
        QCOMPARE(pixelsLike(objPlot.getPrintImage(), Qt::red), 0);
        objPlot.setCurrentDisplayMode(COrmXYPlot::PointsMode);
        QCOMPARE(pixelsLike(objPlot.getPrintImage(), Qt::blue), 0);
        QVERIFY(pixelsLike(objPlot.getPrintImage(), Qt::red) > 50);
        sSettings.objPointProperties.bPointVisible = false;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        QCOMPARE(pixelsLike(objPlot.getPrintImage(), Qt::red), 0);
    }

    void aSinglePointIsSeenInEveryMode()
    {
        COrmXYPlot objPlot;
        objPlot.resize(500, 400);
        QVERIFY(add<float>(objPlot, QStringLiteral("Quantification Profile"), {1.25e7f}));
        for (const int nMode : {1, 2, 3})
        {
            DISPLAY_SETTINGS sSettings;
            sSettings.nDisplayMode = nMode;
            sSettings.objPointProperties.pointColor = Qt::red;
            objPlot.setDisplaySettings(QStringLiteral("Quantification Profile"), sSettings);
            QVERIFY(pixelsLike(pictureOf(objPlot), Qt::red) > 20);
        }
    }

    void aMissingValueInterruptsItsLine()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 1.0, fNan, 1.0, 1.0}));
        QVERIFY(add<double>(objPlot, QStringLiteral("B"), {0.0, 0.0, 0.0, 0.0, 0.0}));
        DISPLAY_SETTINGS sSettings;
        sSettings.lineColor = Qt::blue;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        sSettings.lineColor = Qt::green;
        objPlot.setDisplaySettings(QStringLiteral("B"), sSettings);
        const QImage imgSeen = pictureOf(objPlot);
        const auto [nFirstA, nLastA] = columnsLike(imgSeen, Qt::blue);
        const auto [nFirstB, nLastB] = columnsLike(imgSeen, Qt::green);
        QVERIFY(std::abs(nFirstA - nFirstB) <= 1 && std::abs(nLastA - nLastB) <= 1); // both span the x axis
        const int nBlue = pixelsLike(imgSeen, Qt::blue);
        const int nGreen = pixelsLike(imgSeen, Qt::green);
        QVERIFY2(nBlue > 0 && nBlue < 0.6 * nGreen, qPrintable(QStringLiteral("%1 %2").arg(nBlue).arg(nGreen))); // two of its four pieces
    }

    void thePictureIsCompleteAtOnceShownOrNot()
    {
        COrmXYPlot objHidden;
        objHidden.resize(640, 420);
        COrmXYPlot objShown;
        objShown.resize(640, 420);
        objShown.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objShown));
        for (COrmXYPlot* pPlot : {&objHidden, &objShown})
        {
            pPlot->setXAxisLabel(QStringLiteral("Results"));
            pPlot->setYAxisLabel(QStringLiteral("Quantification photon/sec"));
            QVERIFY(add<float>(*pPlot, QStringLiteral("Quantification Profile"),
                               {1.2e6f, 4.4e6f, 1.7e7f, 5.1e7f, 1.3e8f, 1.2e8f, 1.9e8f, 2.4e8f}));
            pPlot->setDisplaySettings(QStringLiteral("Quantification Profile"), lookOfFirstLine());
        }
        const QImage imgHidden = pictureOf(objHidden);
        const QImage imgShown = objShown.getPrintImage();
        QVERIFY(imgHidden.convertToFormat(QImage::Format_RGB32) == imgShown.convertToFormat(QImage::Format_RGB32));
        QCoreApplication::processEvents();
        QVERIFY(imgShown == objShown.getPrintImage()); // nothing was still waiting
    }

    void whoPaintsAtOnceSeesTheChange()
    {
        COrmXYPlot objPlot;
        objPlot.resize(640, 420);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0}));
        objPlot.setDisplaySettings(QStringLiteral("A"), lookOfFirstLine());
        objPlot.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objPlot));
        const QImage imgBefore = objPlot.grab().toImage();
        QVERIFY(imgBefore == objPlot.getPrintImage());
        objPlot.clear();
        objPlot.setYAxisLabel(QStringLiteral("Reduced Chi2"));
        QVERIFY(add<double>(objPlot, QStringLiteral("Reduced Chi-Squared profile"), {5e6, 1e3, 7e6, 2e6}));
        objPlot.setDisplaySettings(QStringLiteral("Reduced Chi-Squared profile"), lookOfFirstLine());
        const QImage imgSeen = objPlot.grab().toImage(); // no event ran since
        QVERIFY(imgSeen != imgBefore);
        const QVector<QRect> vecPoints = PlotTest::blobsLike(imgSeen, Qt::red);
        QCOMPARE(vecPoints.size(), 4);
        QCOMPARE(vecPoints, PlotTest::blobsLike(objPlot.getPrintImage(), Qt::red)); // on the axes that belong to them
        QCoreApplication::processEvents();
        QVERIFY(objPlot.grab().toImage() == objPlot.getPrintImage());
    }

    void anEmptyPlotAfterLinesHasNoneLeft()
    {
        COrmXYPlot objPlot;
        objPlot.resize(500, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0}));
        objPlot.setDisplaySettings(QStringLiteral("A"), lookOfFirstLine());
        objPlot.clear();
        const QImage imgSeen = pictureOf(objPlot);
        QCOMPARE(pixelsLike(imgSeen, Qt::blue, 0), 0);
        QCOMPARE(pixelsLike(imgSeen, Qt::red, 0), 0);
    }

    void aPlotOfAnySizeHasAPicture()
    {
        COrmXYPlot objPlot;
        std::vector<double> vecMany(48, 1.0);
        for (std::size_t i = 0; i < vecMany.size(); ++i)
            vecMany[i] = 1.0 + 0.1 * std::sin(0.4 * static_cast<double>(i));
        QVERIFY(add<double>(objPlot, QStringLiteral("Reduced Chi-Squared profile"), vecMany));
        objPlot.setXAxisRangeStep(1.0);
        objPlot.setXAxisLabel(QStringLiteral("Results"));
        objPlot.setYAxisLabel(QStringLiteral("Reduced Chi2"));
        objPlot.setDisplaySettings(QStringLiteral("Reduced Chi-Squared profile"), lookOfFirstLine());
        for (const QSize objSize : {QSize(1, 1), QSize(30, 500), QSize(300, 200), QSize(1200, 700)})
        {
            objPlot.resize(objSize);
            QCOMPARE(pictureOf(objPlot).size(), objPlot.size());
        }
        objPlot.resize(0, 0);
        QVERIFY(!objPlot.getPrintImage().isNull());
    }

    void extremeValuesAreSurvived_data()
    {
        QTest::addColumn<QVector<double>>("vecY");
        constexpr double fMost = std::numeric_limits<double>::max();
        QTest::newRow("whole range of doubles") << QVector<double>({-fMost, 0.0, fMost});
        QTest::newRow("largest only") << QVector<double>({fMost});
        QTest::newRow("smallest only") << QVector<double>({std::numeric_limits<double>::denorm_min()});
        QTest::newRow("zero only") << QVector<double>({0.0});
        QTest::newRow("next to each other") << QVector<double>({1.0, std::nextafter(1.0, 2.0)});
        QTest::newRow("next to each other, large") << QVector<double>({1e300, std::nextafter(1e300, 2e300)});
        QTest::newRow("beside infinity") << QVector<double>({1.0, fInfinity, 2.0, -fInfinity});
    }

    void extremeValuesAreSurvived()
    {
        QFETCH(QVector<double>, vecY);
        COrmXYPlot objPlot;
        objPlot.resize(400, 300);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), std::vector<double>(vecY.begin(), vecY.end())));
        objPlot.setDisplaySettings(QStringLiteral("A"), lookOfFirstLine());
        const QImage imgSeen = objPlot.getPrintImage();
        QCOMPARE(imgSeen.size(), QSize(400, 300));
        QVERIFY(pixelsLike(imgSeen, Qt::red) > 20);
    }

    void namesAreShownAsTheyAre()
    {
        COrmXYPlot objPlot;
        objPlot.resize(500, 300);
        QVERIFY(add<double>(objPlot, QStringLiteral("<font color=red size=7>A</font>"), {1.0, 2.0}));
        objPlot.setYAxisLabel(QStringLiteral("<font color=red>B</font>"));
        QCOMPARE(pixelsLike(pictureOf(objPlot), Qt::red, 0), 0);
    }

    // ---- Bars, logarithmic axis, gaps ---------------------------------------------------------------------------------

    void barsStandOnZeroAndLeaveGapsEmpty()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {2.0, fNan, 4.0, 0.0}));
        DISPLAY_SETTINGS sSettings = lookOfFirstLine();
        sSettings.nDisplayMode = COrmXYPlot::BarsMode;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        const QImage imgSeen = pictureOf(objPlot);
        QCOMPARE(pixelsLike(imgSeen, Qt::red), 0);
        const QVector<QRect> vecBars = PlotTest::blobsLike(imgSeen, Qt::blue);
        QCOMPARE(vecBars.size(), 3); // nothing where the value is missing, a flat bar for 0
        QVERIFY(std::abs(vecBars.at(0).bottom() - vecBars.at(1).bottom()) <= 1);
        QVERIFY(std::abs(vecBars.at(0).bottom() - vecBars.at(2).bottom()) <= 1);
        QVERIFY(vecBars.at(2).height() <= 4);
        // Heights are in proportion only where bars begin at 0.
        QVERIFY(std::abs(2 * vecBars.at(0).height() - vecBars.at(1).height()) <= 3);
        const double fStep = (vecBars.at(2).center().x() - vecBars.at(0).center().x()) / 3.0;
        QVERIFY(std::fabs(vecBars.at(1).center().x() - vecBars.at(0).center().x() - 2.0 * fStep) <= 2.0);
    }

    void barsOfTwoLinesStandSideBySide()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {2.0, 3.0}));
        QVERIFY(add<double>(objPlot, QStringLiteral("B"), {4.0, -1.0}));
        DISPLAY_SETTINGS sSettings;
        sSettings.lineColor = Qt::blue;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        sSettings.lineColor = Qt::green;
        objPlot.setDisplaySettings(QStringLiteral("B"), sSettings);
        objPlot.setCurrentDisplayMode(COrmXYPlot::BarsMode);
        const QImage imgSeen = pictureOf(objPlot);
        const QVector<QRect> vecBlue = PlotTest::blobsLike(imgSeen, Qt::blue);
        const QVector<QRect> vecGreen = PlotTest::blobsLike(imgSeen, Qt::green);
        QCOMPARE(vecBlue.size(), 2);
        QCOMPARE(vecGreen.size(), 2);
        for (int i = 0; i < 2; ++i)
        {
            QVERIFY(vecBlue.at(i).right() <= vecGreen.at(i).left() + 1);
            QVERIFY(std::abs(vecBlue.at(i).width() - vecGreen.at(i).width()) <= 2);
        }
        QVERIFY(vecGreen.at(0).right() < vecBlue.at(1).left());
        QVERIFY(vecGreen.at(1).top() >= vecBlue.at(1).bottom() - 1); // below 0 it hangs
    }

    void aLogarithmicAxisSpacesPowersEvenly()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        QVERIFY(!objPlot.isLogarithmic());
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1e3, 1e5, 1e7}));
        DISPLAY_SETTINGS sSettings = lookOfFirstLine();
        sSettings.nDisplayMode = COrmXYPlot::PointsMode;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        objPlot.setLogarithmic(true);
        QVERIFY(objPlot.isLogarithmic());
        QVector<QRect> vecPoints = PlotTest::blobsLike(pictureOf(objPlot), Qt::red);
        QCOMPARE(vecPoints.size(), 3);
        const int nFirst = vecPoints.at(0).center().y() - vecPoints.at(1).center().y();
        const int nSecond = vecPoints.at(1).center().y() - vecPoints.at(2).center().y();
        QVERIFY(nFirst > 50 && std::abs(nFirst - nSecond) <= 1);
        objPlot.setLogarithmic(false);
        vecPoints = PlotTest::blobsLike(objPlot.getPrintImage(), Qt::red);
        QCOMPARE(vecPoints.size(), 3);
        QVERIFY(std::abs(vecPoints.at(0).center().y() - vecPoints.at(1).center().y()) < 8);
    }

    void valuesWithoutALogarithmAreLeftOutAndCounted()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {10.0, 0.0, 100.0, -5.0, 1000.0, fNan}));
        DISPLAY_SETTINGS sSettings = lookOfFirstLine();
        sSettings.nDisplayMode = COrmXYPlot::PointsMode;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        QCOMPARE(PlotTest::blobsLike(objPlot.getPrintImage(), Qt::red).size(), 5);
        QCOMPARE(PlotTest::remark(objPlot), QStringLiteral("1 value is missing."));
        objPlot.setLogarithmic(true);
        QCOMPARE(PlotTest::blobsLike(pictureOf(objPlot), Qt::red).size(), 3);
        QCOMPARE(PlotTest::remark(objPlot), QStringLiteral("1 value is missing. 2 values have no place on the logarithmic axis."));
        QCOMPARE(objPlot.dataLines().value(QStringLiteral("A"))->vecY.size(), 6); // nothing is lost
        objPlot.setLogarithmic(false);
        QCOMPARE(PlotTest::blobsLike(objPlot.getPrintImage(), Qt::red).size(), 5);
    }

    void withoutAnyLogarithmThePlotSaysSoAndKeepsItsLines()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        objPlot.setLogarithmic(true);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {0.0, 0.0}));
        objPlot.setDisplaySettings(QStringLiteral("A"), lookOfFirstLine());
        QCOMPARE(objPlot.dataLines().size(), 1);
        const QImage imgSeen = pictureOf(objPlot);
        QCOMPARE(pixelsLike(imgSeen, Qt::blue), 0);
        QVERIFY(pixelsLike(imgSeen, QColor(96, 96, 96)) > 50); // the message
        objPlot.setLogarithmic(false);
        QVERIFY(pixelsLike(objPlot.getPrintImage(), Qt::blue) > 50);
    }

    void aPointBetweenGapsIsSeenInEveryMode()
    {
        COrmXYPlot objPlot;
        objPlot.resize(600, 400);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, 2.0, fNan, 3.0, fNan, fNan, 2.0, 1.0}));
        DISPLAY_SETTINGS sSettings = lookOfFirstLine();
        sSettings.nDisplayMode = COrmXYPlot::LineMode;
        objPlot.setDisplaySettings(QStringLiteral("A"), sSettings);
        QCOMPARE(PlotTest::blobsLike(pictureOf(objPlot), Qt::red).size(), 1);
        QCOMPARE(PlotTest::blobsLike(objPlot.getPrintImage(), Qt::blue).size(), 2);
        QCOMPARE(PlotTest::remark(objPlot), QStringLiteral("3 values are missing."));
        objPlot.setCurrentDisplayMode(COrmXYPlot::LineAndPointsMode);
        QCOMPARE(PlotTest::blobsLike(objPlot.getPrintImage(), Qt::red).size(), 5);
    }

    void anEmptyPlotSaysThatItIs()
    {
        COrmXYPlot objPlot;
        objPlot.resize(500, 400);
        const QRect rectMiddle(150, 150, 200, 80);
        QVERIFY(PlotTest::pixelsNotLike(pictureOf(objPlot).copy(rectMiddle), Qt::white) > 50);
        QVERIFY(add<double>(objPlot, QStringLiteral("A"), {1.0, fNan, fNan, 2.0}));
        objPlot.setXAxisRangeStep(5.0);
        QVERIFY(PlotTest::pixelsNotLike(objPlot.getPrintImage().copy(rectMiddle), QColor(255, 255, 255)) < 500); // a few lines of the grid
        QCOMPARE(pixelsLike(objPlot.getPrintImage().copy(rectMiddle), QColor(96, 96, 96), 0), 0);
    }

    // ---- Sizes and names ----------------------------------------------------------------------------------------------

    void typeGrowsWithThePicture()
    {
        QVector<int> vecPoint;
        QVector<int> vecType;
        for (const QSize objSize : {QSize(400, 300), QSize(1000, 700), QSize(3000, 2000)})
        {
            COrmXYPlot objPlot;
            objPlot.resize(objSize);
            objPlot.setXAxisLabel(QStringLiteral("Results"));
            objPlot.setYAxisLabel(QStringLiteral("Quantification photon/sec"));
            QVERIFY(add<float>(objPlot, QStringLiteral("Quantification Profile"), {1.2e6f, 4.4e6f, 1.7e7f, 5.1e7f}));
            DISPLAY_SETTINGS sSettings = lookOfFirstLine();
            sSettings.nDisplayMode = COrmXYPlot::PointsMode;
            objPlot.setDisplaySettings(QStringLiteral("Quantification Profile"), sSettings);
            const QImage imgSeen = pictureOf(objPlot);
            QCOMPARE(imgSeen.size(), objSize);
            const QVector<QRect> vecPoints = PlotTest::blobsLike(imgSeen, Qt::red, objSize.height() / 8);
            QCOMPARE(vecPoints.size(), 4);
            vecPoint.append(vecPoints.at(0).width());
            // The label of the x axis is the lowest text.
            vecType.append(PlotTest::rowsOfLowestText(imgSeen));
            // Points use the picture: no band of it is left blank.
            QVERIFY(vecPoints.at(3).center().x() - vecPoints.at(0).center().x() > objSize.width() / 2);
            QVERIFY(vecPoints.at(0).center().y() - vecPoints.at(3).center().y() > objSize.height() / 2);
        }
        QVERIFY(vecPoint.at(0) >= 6 && vecPoint.at(1) == vecPoint.at(0));
        QVERIFY(vecPoint.at(2) >= 2 * vecPoint.at(1));
        QVERIFY(vecType.at(0) >= 7);
        QVERIFY(vecType.at(2) >= 2 * vecType.at(1));
    }

    void longNamesLeaveRoomForTheLines_data()
    {
        QTest::addColumn<QSize>("objSize");
        QTest::newRow("small") << QSize(400, 300);
        QTest::newRow("medium") << QSize(700, 500);
        QTest::newRow("large") << QSize(3000, 2000);
    }

    void longNamesLeaveRoomForTheLines()
    {
        QFETCH(QSize, objSize);
        COrmXYPlot objPlot;
        objPlot.resize(objSize);
        const QString strLong = QString(200, QLatin1Char('W'));
        QVERIFY(add<double>(objPlot, strLong, {1.0, 2.0, 3.0}));
        QVERIFY(add<double>(objPlot, strLong + QLatin1Char('2'), {3.0, 2.0, 1.0}));
        objPlot.setXAxisLabel(strLong);
        objPlot.setYAxisLabel(strLong);
        objPlot.setDisplaySettings(strLong, lookOfFirstLine());
        const QImage imgSeen = pictureOf(objPlot);
        const auto [nFirst, nLast] = columnsLike(imgSeen, Qt::blue, objSize.height() / 4);
        QVERIFY(nLast - nFirst > objSize.width() / 2);
        // Nothing touches the edges, so nothing is cut off.
        for (const QRect& rectEdge :
             {QRect(0, 0, objSize.width(), 2), QRect(0, 0, 2, objSize.height()), QRect(objSize.width() - 2, 0, 2, objSize.height()),
              QRect(0, objSize.height() - 2, objSize.width(), 2)})
            QCOMPARE(PlotTest::pixelsNotLike(imgSeen.copy(rectEdge), Qt::white), 0);
        QCOMPARE(objPlot.dataLines().value(strLong)->nVals, 3); // the name itself is as it was
    }
};

/// Calls addDataLine() wrongly, as told.
static int callWrongly(const QString& strCase)
{
    COrmXYPlot objPlot;
    int nX = 0;
    double fY = 0.0;
    objPlot.addDataLine<int, double>(QStringLiteral("A"), strCase == QLatin1String("x") ? nullptr : &nX,
                                     strCase == QLatin1String("y") ? nullptr : &fY, strCase == QLatin1String("count") ? 0 : 1);
    return 0;
}

int main(int nArguments, char** ppArguments)
{
    QApplication objApplication(nArguments, ppArguments);
    if (nArguments == 3 && QLatin1String(ppArguments[1]) == QLatin1String("--wrong-argument"))
        return callWrongly(QString::fromLocal8Bit(ppArguments[2]));
    TestXYPlot objTest;
    return QTest::qExec(&objTest, nArguments, ppArguments);
}
#include "tst_xyplot.moc"
