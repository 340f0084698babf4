#include "COrmXYPlot.h"
#include "COrmXYPlotAxis.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

namespace
{
constexpr int nLegendRows = 32; ///< pixels at the top of a plot that the legend takes
constexpr double fNan = std::numeric_limits<double>::quiet_NaN();
constexpr double fInfinity = std::numeric_limits<double>::infinity();

bool isLike(QRgb n1, QRgb n2)
{
    return std::abs(qRed(n1) - qRed(n2)) < 40 && std::abs(qGreen(n1) - qGreen(n2)) < 40 && std::abs(qBlue(n1) - qBlue(n2)) < 40;
}

/// Number of pixels of about this colour, below the legend.
int pixelsLike(const QImage& imgSeen, const QColor& clrWanted, int nFromRow = nLegendRows)
{
    int nPixels = 0;
    for (int y = nFromRow; y < imgSeen.height(); ++y)
    {
        for (int x = 0; x < imgSeen.width(); ++x)
            nPixels += isLike(imgSeen.pixel(x, y), clrWanted.rgb()) ? 1 : 0;
    }
    return nPixels;
}

/// Leftmost and rightmost column with a pixel of about this colour, below the legend; -1 if there is none.
std::pair<int, int> columnsLike(const QImage& imgSeen, const QColor& clrWanted)
{
    std::pair<int, int> pairColumns(-1, -1);
    for (int x = 0; x < imgSeen.width(); ++x)
    {
        for (int y = nLegendRows; y < imgSeen.height(); ++y)
        {
            if (!isLike(imgSeen.pixel(x, y), clrWanted.rgb()))
                continue;
            pairColumns.first = pairColumns.first < 0 ? x : pairColumns.first;
            pairColumns.second = x;
        }
    }
    return pairColumns;
}

/// The plot's picture; kept in the folder ORM_TEST_PICTURES names, if it does.
QImage pictureOf(COrmXYPlot& objPlot)
{
    const QImage imgSeen = objPlot.getPrintImage();
    const QString strFolder = qEnvironmentVariable("ORM_TEST_PICTURES");
    if (!strFolder.isEmpty())
        imgSeen.save(QDir(strFolder).filePath(
            QStringLiteral("plot-%1-%2.png").arg(QLatin1String(QTest::currentTestFunction())).arg(imgSeen.width())));
    return imgSeen;
}

DISPLAY_SETTINGS lookOfFirstLine()
{
    DISPLAY_SETTINGS sSettings;
    sSettings.lineColor = Qt::blue;
    sSettings.nDisplayMode = 2;
    sSettings.objPointProperties.pointColor = Qt::red;
    sSettings.objPointProperties.bPointVisible = true;
    return sSettings;
}

template <typename Y>
bool add(COrmXYPlot& objPlot, const QString& strName, std::vector<Y> vecY)
{
    std::vector<int> vecX(vecY.size());
    for (std::size_t i = 0; i < vecX.size(); ++i)
        vecX[i] = static_cast<int>(i);
    return objPlot.addDataLine<int, Y>(strName, vecX.data(), vecY.data(), static_cast<int>(vecY.size()));
}
} // namespace

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

    // ---- Axis -----------------------------------------------------------------------------------------------------

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
