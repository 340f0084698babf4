#include "ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

/// ormcompare as its user runs it, on studies of the phantom.
class tst_Compare : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void resultsOfTheUnitAreLoaded();
    void otherUnitIsRefusedWithTheReason();
    void patternWithoutMatchIsAReason();
    void damagedResultLeavesTheOthers();
    void picturesHaveTheirSize();
    void picturesAreWrittenInEveryFormat_data();
    void picturesAreWrittenInEveryFormat();
    void framesAreMeasured();
    void lookChangesThePicture_data();
    void lookChangesThePicture();
    void unknownDensityMapIsAReason();
    void measuredPartsAddUp();
    void tableAgreesWithTheReport();
    void timePointWithoutAValueIsEmpty();
    void growthIsWritten();
    void growthWithoutDaysIsAReason();
    void plotsAreWritten();
    void plotOfAMissingKindIsAReason();
    void unwritableFileIsAReason();
    void folderWithoutSequencesIsAReason();
    void wrongUsageNeedsNoDisplay();
    void helpNamesEveryOption();

private:
    QJsonObject report() const;
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    SProgramRun compare(const QStringList& lstArguments) const
    {
        return runProgram("ormcompare", QStringList{path("study"), "--report", path("report.json")} + lstArguments);
    }
    QTemporaryDir m_objFolder;
};

void tst_Compare::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    QCOMPARE(runProgram("ormphantom", {path("study"), "--timepoints", "3", "--vertices", "600"}).m_nExit, 0);
}

QJsonObject tst_Compare::report() const
{
    QFile file(path("report.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

void tst_Compare::resultsOfTheUnitAreLoaded()
{
    const SProgramRun run = compare({"--unit", "photons/sec"});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    const QJsonArray lstResults = report().value("results").toArray();
    QCOMPARE(lstResults.size(), 6);
    const double lstTotals[] = {3.3e7, 5.0826e7, 9.0752e7};
    for (int nResult = 0; nResult < 3; ++nResult)
    {
        const QJsonObject result = lstResults.at(nResult).toObject();
        QCOMPARE(result.value("kind").toString(), QString("SOLA"));
        QCOMPARE(result.value("unit").toString(), QString("photons/sec"));
        QCOMPARE(result.value("voxel_size_mm").toDouble(), 0.25);
        QCOMPARE(result.value("starting_voxel_size_mm").toDouble(), 4.0);
        QCOMPARE(result.value("wavelengths").toArray().size(), 5);
        QVERIFY(std::abs(result.value("total").toDouble() - lstTotals[nResult]) < 1.0e-3 * lstTotals[nResult]);
        QVERIFY(result.value("load_ms").toDouble() > 0.0);
        QVERIFY(result.value("press_ms").toDouble() >= result.value("load_ms").toDouble());
    }
    QCOMPARE(lstResults.at(3).toObject().value("kind").toString(), QString("NOVA"));
    QVERIFY(report().value("failed").toArray().isEmpty());
}

void tst_Compare::otherUnitIsRefusedWithTheReason()
{
    const SProgramRun run = compare({"--load", "SOLA *", "--unit", "photons/sec", "--quiet"});
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(run.m_strOut, QString());
    QCOMPARE(report().value("results").toArray().size(), 3);
    const QJsonArray lstFailed = report().value("failed").toArray();
    QCOMPARE(lstFailed.size(), 3);
    for (const QJsonValue& failed : lstFailed)
    {
        QCOMPARE(failed.toObject().value("reason").toString(),
                 QString("The SOLA result Measurement Type 'cells' is not compatible with the Selected Unit 'photons/sec'."));
    }
    QCOMPARE(run.m_strError.count("ormcompare: "), 3);
}

void tst_Compare::patternWithoutMatchIsAReason()
{
    const SProgramRun run = compare({"--load", "SOLA PM20260302_L/Day 0, 1 mm", "--load", "nothing like this"});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("nothing like this"), qPrintable(run.m_strError));
    QCOMPARE(report().value("results").toArray().size(), 1);
}

void tst_Compare::damagedResultLeavesTheOthers()
{
    const QString strStudy = path("damaged");
    QCOMPARE(runProgram("ormphantom", {strStudy, "--timepoints", "3", "--vertices", "100", "--kind", "SOLA"}).m_nExit, 0);
    QFile file(strStudy + "/PM20260305_L/XML/SOLA_1.xml");
    QVERIFY(file.resize(file.size() / 2));
    const SProgramRun run = runProgram("ormcompare", {strStudy, "--load", "SOLA *mm", "--report", path("report.json")});
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(report().value("results").toArray().size(), 2);
    const QJsonArray lstFailed = report().value("failed").toArray();
    QCOMPARE(lstFailed.size(), 1);
    QCOMPARE(lstFailed.at(0).toObject().value("sequence").toString(), QString("PM20260305_L"));
    QCOMPARE(lstFailed.at(0).toObject().value("reason").toString(), QString("Unable to read analysis data."));
}

void tst_Compare::picturesHaveTheirSize()
{
    const SProgramRun run =
        compare({"--load", "SOLA *mm", "--size", "700x430", "--view", path("view.png"), "--window", path("window.png")});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    const QImage view(path("view.png"));
    QCOMPARE(view.size(), QSize(700, 430));
    const QImage window(path("window.png"));
    QVERIFY(window.width() > 700 && window.height() > 430);
}

void tst_Compare::picturesAreWrittenInEveryFormat_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QByteArray>("aBegin");
    QTest::newRow("bmp") << "view.bmp" << QByteArray("BM");
    QTest::newRow("jpg") << "view.jpg" << QByteArray("\xFF\xD8\xFF");
    QTest::newRow("png") << "view.PNG" << QByteArray("\x89PNG");
    QTest::newRow("eps") << "view.eps" << QByteArray("%!PS-Adobe-3");
    QTest::newRow("tif") << "view.tif" << QByteArray("II*");
    QTest::newRow("tiff") << "view.tiff" << QByteArray("II*");
}

void tst_Compare::picturesAreWrittenInEveryFormat()
{
    QFETCH(QString, strName);
    QFETCH(QByteArray, aBegin);
    const SProgramRun run = compare({"--load", "SOLA PM20260302_L/*mm", "--size", "300x200", "--view", path(strName)});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    QFile file(path(strName));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(aBegin.size()), aBegin);
    QVERIFY(file.size() > 1000);
}

void tst_Compare::framesAreMeasured()
{
    const SProgramRun run = compare({"--load", "SOLA *mm", "--frames", "4"});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    const QJsonObject frames = report().value("frame_ms").toObject();
    QVERIFY(frames.value("median").toDouble() > 0.0);
    QVERIFY(frames.value("max").toDouble() >= frames.value("median").toDouble());
}

void tst_Compare::lookChangesThePicture_data()
{
    QTest::addColumn<QStringList>("lstLook");
    QTest::newRow("table") << QStringList{"--colors", "Rainbow"};
    QTest::newRow("range") << QStringList{"--range", "1000:90000"};
    QTest::newRow("log") << QStringList{"--log"};
    QTest::newRow("quarter turn") << QStringList{"--rotate", "90"};
    QTest::newRow("density map") << QStringList{"--wavelength", "620"};
    QTest::newRow("region") << QStringList{"--measure", "0.2,0.2,0.8,0.8"};
}

void tst_Compare::lookChangesThePicture()
{
    QFETCH(QStringList, lstLook);
    const QStringList lstCommon = {"--load", "SOLA *mm", "--size", "600x400", "--view"};
    QCOMPARE(compare(lstCommon + QStringList{path("plain.png")}).m_nExit, 0);
    const SProgramRun run = compare(lstCommon + QStringList{path("look.png")} + lstLook);
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    QVERIFY(QImage(path("plain.png")) != QImage(path("look.png")));
    const QJsonArray range = report().value("range").toObject().value("SOLA").toArray();
    const QJsonArray bar = report().value("bar").toObject().value("SOLA").toArray();
    if (lstLook.constFirst() == "--range")
    {
        QVERIFY(std::abs(bar.at(0).toDouble() - 1000.0) < 0.01 && std::abs(bar.at(1).toDouble() - 90000.0) < 0.1);
        QVERIFY(range != bar);
    }
    else
    {
        QCOMPARE(bar, range);
    }
}

void tst_Compare::unknownDensityMapIsAReason()
{
    const SProgramRun run = compare({"--load", "SOLA *mm", "--wavelength", "none such"});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("No result has a density map \"none such\"."), qPrintable(run.m_strError));
    QCOMPARE(report().value("results").toArray().size(), 3);
}

void tst_Compare::measuredPartsAddUp()
{
    // The place of the left half's right edge and that of the right half's left edge are the same pixel.
    QVector<QVector<double>> lstSums;
    for (const char* pszRegion : {"0,0,1,1", "0,0,0.5,1", "0.5,0,1,1"})
    {
        const SProgramRun run = compare({"--load", "SOLA *mm", "--size", "600x400", "--measure", QString(pszRegion)});
        QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
        QVector<double> lstSelected;
        const QJsonArray lstResults = report().value("results").toArray();
        for (const QJsonValue& value : lstResults)
        {
            lstSelected.append(value.toObject().value("selected_total").toDouble());
        }
        lstSums.append(lstSelected);
    }
    const QJsonArray lstResults = report().value("results").toArray();
    QCOMPARE(lstResults.size(), 3);
    for (int nResult = 0; nResult < lstResults.size(); ++nResult)
    {
        const double fTotal = lstResults.at(nResult).toObject().value("total").toDouble();
        const double fLeft = lstSums.at(1).at(nResult);
        const double fRight = lstSums.at(2).at(nResult);
        QVERIFY(fTotal > 0.0);
        QVERIFY(std::abs(lstSums.at(0).at(nResult) - fTotal) < 1.0e-4 * fTotal);
        QVERIFY2(std::abs(fLeft + fRight - fTotal) < 1.0e-4 * fTotal, qPrintable(QString("%1 + %2").arg(fLeft).arg(fRight)));
    }
}

void tst_Compare::tableAgreesWithTheReport()
{
    const SProgramRun run = compare({"--table", path("table.csv"), "--measure", "0.4,0,1,1"});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    QFile file(path("table.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lstLines = file.readAll().split('\n');
    const QJsonArray lstResults = report().value("results").toArray();
    QCOMPARE(lstLines.size(), lstResults.size() + 2);
    for (int nResult = 0; nResult < lstResults.size(); ++nResult)
    {
        const QJsonObject result = lstResults.at(nResult).toObject();
        const QByteArray& aLine = lstLines.at(nResult + 1);
        // The names hold commas and are quoted; the figures stand behind them.
        const QList<QByteArray> lstFigures = aLine.mid(aLine.lastIndexOf('"') + 2).trimmed().split(',');
        QVERIFY(aLine.startsWith((result.value("kind").toString() + "," + result.value("sequence").toString() + ",\"").toUtf8()));
        QCOMPARE(lstFigures.size(), 11);
        const char* const pszKeys[] = {
            "total", "selected_total", "reduced_chi2", "voxel_size_mm", "final_voxel_size_mm", "starting_voxel_size_mm", "voxels"};
        for (int nFigure = 0; nFigure < 7; ++nFigure)
        {
            QCOMPARE(lstFigures.at(nFigure + 1).toDouble(), result.value(QLatin1String(pszKeys[nFigure])).toDouble());
        }
        QCOMPARE(lstFigures.at(8), QByteArray("Phantom mouse"));
        QCOMPARE(lstFigures.at(9), result.value("date").toString().toUtf8());
        QCOMPARE(lstFigures.at(10).toDouble(), QList<double>({0.0, 3.0, 7.0}).at(nResult % 3));
        QCOMPARE(lstFigures.at(10).toDouble(), result.value("days").toDouble(-1.0));
    }
}

void tst_Compare::timePointWithoutAValueIsEmpty()
{
    // One result cannot be read, one sequence has none, and nobody knows when a third one was taken.
    const QString strStudy = path("gaps");
    QCOMPARE(runProgram("ormphantom", {strStudy, "--timepoints", "5", "--vertices", "60", "--kind", "SOLA"}).m_nExit, 0);
    QFile damaged(strStudy + "/PM20260305_L/XML/SOLA_1.xml");
    QVERIFY(damaged.resize(damaged.size() / 2));
    QVERIFY(QFile::remove(strStudy + "/PM20260309_L/XML/SOLA.txt"));
    QFile undated(strStudy + "/PM20260312_L/SequenceInfo.txt");
    QVERIFY(undated.open(QIODevice::ReadWrite));
    const QByteArray aInfo = undated.readAll().replace("2026-03-12T09:30:00", "12.3.2026");
    QVERIFY(undated.resize(0) && undated.seek(0) && undated.write(aInfo) == aInfo.size());
    undated.close();
    const SProgramRun run = runProgram("ormcompare", {strStudy, "--table", path("gaps.csv"), "--growth", path("gaps-growth.csv")});
    QCOMPARE(run.m_nExit, 1);
    QFile table(path("gaps.csv"));
    QVERIFY(table.open(QIODevice::ReadOnly));
    const QByteArray aTable = table.readAll();
    QCOMPARE(aTable.count("\r\n"), 6);
    QVERIFY2(aTable.contains("\r\nSOLA,PM20260312_L,\"Day 10, 1 mm\",photons/sec,"), aTable);
    QVERIFY2(aTable.contains(",Phantom mouse,12.3.2026,\r\n"), aTable);
    QVERIFY2(aTable.contains(",Phantom mouse,2026-03-16T09:30:00,14\r\n"), aTable);
    QVERIFY2(aTable.contains("\r\nSOLA,PM20260305_L,\"Day 3, 1 mm\",,,,,,,,,Phantom mouse,2026-03-05T09:30:00,3\r\n"), aTable);
    QVERIFY2(aTable.contains("\r\nSOLA,PM20260309_L,,,,,,,,,,Phantom mouse,2026-03-09T09:30:00,7\r\n"), aTable);
    QFile growth(path("gaps-growth.csv"));
    QVERIFY(growth.open(QIODevice::ReadOnly));
    const QByteArray aGrowth = growth.readAll();
    QVERIFY2(aGrowth.contains("\r\nPhantom mouse,SOLA,photons/sec,total,2,3,"), aGrowth);
}

void tst_Compare::growthIsWritten()
{
    const SProgramRun run = compare({"--growth", path("growth.csv"), "--growth", path("growth.PNG"), "--growth", path("growth.jpg")});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    QFile file(path("growth.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lstLines = file.readAll().split('\n');
    QCOMPARE(lstLines.size(), 4);
    const QList<QByteArray> lstColumns = lstLines.at(0).trimmed().split(',');
    const QJsonArray lstResults = report().value("results").toArray();
    for (const int nKind : {0, 1})
    {
        // The slope of ln(value) over the days 0, 3 and 7 by hand: the sum of (day - 10/3) ln(value), divided by 74/3.
        double fSlope = 0.0;
        for (int nDay = 0; nDay < 3; ++nDay)
        {
            const double fTotal = lstResults.at(3 * nKind + nDay).toObject().value("total").toDouble();
            fSlope += (QList<double>({0.0, 3.0, 7.0}).at(nDay) - 10.0 / 3.0) * std::log(fTotal) / (74.0 / 3.0);
        }
        const QList<QByteArray> lstFields = lstLines.at(1 + nKind).trimmed().split(',');
        QCOMPARE(lstFields.size(), lstColumns.size());
        QCOMPARE(lstFields.at(lstColumns.indexOf("kind")), QByteArray(nKind == 0 ? "SOLA" : "NOVA"));
        const double fRate = lstFields.at(lstColumns.indexOf("rate_per_day")).toDouble();
        QVERIFY(std::abs(fRate - fSlope) < 1.0e-9);
        QCOMPARE(lstFields.at(lstColumns.indexOf("doubling_time_days")).toDouble(), std::log(2.0) / fRate);
        QCOMPARE(lstFields.at(lstColumns.indexOf("doubling_time_interval")), QByteArray("bounded"));
        QCOMPARE(lstFields.at(lstColumns.indexOf("days")), QByteArray("0 3 7"));
    }
    const QImage plot(path("growth.PNG"));
    QVERIFY(plot.width() > 400 && plot.height() > 800);
    QCOMPARE(QImage(path("growth.jpg")).size(), plot.size());
    // Each of the two plots has points and line of its series in the first colour.
    for (const int nPlot : {0, 1})
    {
        int nColored = 0;
        for (int nY = nPlot * plot.height() / 2; nY < (nPlot + 1) * plot.height() / 2; ++nY)
        {
            for (int nX = 0; nX < plot.width(); ++nX)
            {
                nColored += plot.pixel(nX, nY) == 0xff0072b2 ? 1 : 0;
            }
        }
        QVERIFY2(nColored > 500, qPrintable(QString::number(nColored)));
    }
}

void tst_Compare::growthWithoutDaysIsAReason()
{
    const QString strStudy = path("timeless");
    QCOMPARE(runProgram("ormphantom", {strStudy, "--timepoints", "1", "--vertices", "60", "--kind", "SOLA"}).m_nExit, 0);
    QVERIFY(runProgram("ormcompare", {strStudy, "--growth", path("one.png")}).m_nExit == 0);
    QFile info(strStudy + "/PM20260302_L/SequenceInfo.txt");
    QVERIFY(info.open(QIODevice::ReadWrite));
    const QByteArray aInfo = info.readAll().replace("Subject", "Nobody");
    QVERIFY(info.resize(0) && info.seek(0) && info.write(aInfo) == aInfo.size());
    info.close();
    const SProgramRun run = runProgram("ormcompare", {strStudy, "--growth", path("none.png")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("there is no value with a known day to plot"), qPrintable(run.m_strError));
    QVERIFY(!QFile::exists(path("none.png")));
}

void tst_Compare::plotsAreWritten()
{
    const SProgramRun run =
        compare({"--plot", "quantification=" + path("quantification.png"), "--plot", "chi2=" + path("chi2.png"), "--plot",
                 "SOLA:voxelsize=" + path("voxelsize.png"), "--plot", "NOVA:quantification=" + path("nova.png")});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    QSet<QByteArray> lstPictures;
    for (const char* pszName : {"quantification.png", "chi2.png", "voxelsize.png", "nova.png"})
    {
        const QImage plot(path(QLatin1String(pszName)));
        QVERIFY2(plot.width() > 200 && plot.height() > 200, pszName);
        lstPictures.insert(QByteArray::fromRawData(reinterpret_cast<const char*>(plot.constBits()), int(plot.sizeInBytes())).toHex());
    }
    QCOMPARE(lstPictures.size(), 4);
}

void tst_Compare::plotOfAMissingKindIsAReason()
{
    const SProgramRun run = compare({"--load", "SOLA *mm", "--plot", "NOVA:chi2=" + path("missing.png")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("there is no NOVA result to plot"), qPrintable(run.m_strError));
    QVERIFY(!QFile::exists(path("missing.png")));
}

void tst_Compare::unwritableFileIsAReason()
{
    const SProgramRun run = compare({"--load", "SOLA PM20260302_L/*mm", "--view", path("no/such/folder/view.png")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("The picture was not saved as \"view.png\""), qPrintable(run.m_strError));
}

void tst_Compare::folderWithoutSequencesIsAReason()
{
    QVERIFY(QDir().mkpath(path("empty")));
    const SProgramRun run = runProgram("ormcompare", {path("empty")});
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(run.m_strError.count("ormcompare: "), 1);
}

void tst_Compare::wrongUsageNeedsNoDisplay()
{
    const QByteArray aDisplay = qgetenv("DISPLAY");
    qunsetenv("DISPLAY");
    const SProgramRun run = runProgram("ormcompare", {"--size", "big"});
    qputenv("DISPLAY", aDisplay);
    QCOMPARE(run.m_nExit, 2);
    QVERIFY(run.m_strError.startsWith("ormcompare: "));
}

void tst_Compare::helpNamesEveryOption()
{
    const SProgramRun run = runProgram("ormcompare", {"--help"});
    QCOMPARE(run.m_nExit, 0);
    QCOMPARE(run.m_strError, QString());
    for (const char* pOption :
         {"--load", "--unit",       "--view",    "--window", "--report", "--size",   "--rotate", "--colors", "--range",
          "--log",  "--wavelength", "--measure", "--plot",   "--table",  "--growth", "--like",   "--out",    "--study-per-folder",
          "--jobs", "--frames",     "--quiet",   "--version"})
    {
        QVERIFY2(run.m_strOut.contains(QLatin1String(pOption)), pOption);
    }
}

QTEST_GUILESS_MAIN(tst_Compare)
#include "tst_compare.moc"
