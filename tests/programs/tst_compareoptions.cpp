#include "CompareOptions.h"
#include "CompareReport.h"
#include "ResultPattern.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <limits>

class tst_CompareOptions : public QObject
{
    Q_OBJECT

private slots:
    void patternsMatchWholeTexts_data();
    void patternsMatchWholeTexts();
    void wrongUsageIsNamed_data();
    void wrongUsageIsNamed();
    void optionsAreRead();
    void plotsAndRegionAreRead();
    void lookIsTakenOver();
    void studiesAreRead();
    void defaultsHold();
    void medianIsTheLowerMiddle_data();
    void medianIsTheLowerMiddle();
    void reportHasEveryFigure();
    void tableHasALineForEachResult();
};

void tst_CompareOptions::patternsMatchWholeTexts_data()
{
    QTest::addColumn<QString>("strPattern");
    QTest::addColumn<QString>("strText");
    QTest::addColumn<bool>("bMatches");
    QTest::newRow("plain") << "SOLA A/b"
                           << "SOLA A/b" << true;
    QTest::newRow("whole text only") << "SOLA A"
                                     << "SOLA A/b" << false;
    QTest::newRow("star crosses the slash") << "SOLA *"
                                            << "SOLA A/b/c" << true;
    QTest::newRow("star may be empty") << "SOLA A*/b"
                                       << "SOLA A/b" << true;
    QTest::newRow("question mark is one character") << "SOLA A?b"
                                                    << "SOLA A/b" << true;
    QTest::newRow("question mark is not none") << "SOLA A/b?"
                                               << "SOLA A/b" << false;
    QTest::newRow("set") << "SOLA A/[abc]"
                         << "SOLA A/b" << true;
    QTest::newRow("set that lacks it") << "SOLA A/[ac]"
                                       << "SOLA A/b" << false;
    QTest::newRow("range") << "SOLA A/Day [0-9]"
                           << "SOLA A/Day 7" << true;
    QTest::newRow("negated set") << "SOLA A/[!b]"
                                 << "SOLA A/b" << false;
    QTest::newRow("set with a slash") << "SOLA A[/]b"
                                      << "SOLA A/b" << true;
    QTest::newRow("bracket in a set") << "x[]]y"
                                      << "x]y" << true;
    QTest::newRow("bracket without an end") << "x[y"
                                            << "x[y" << true;
    QTest::newRow("case counts") << "sola *"
                                 << "SOLA A/b" << false;
    QTest::newRow("dot is a dot") << "SOLA A/b.c"
                                  << "SOLA A/bxc" << false;
    QTest::newRow("plus is a plus") << "SOLA A/b+"
                                    << "SOLA A/b+" << true;
    QTest::newRow("line break in a name") << "SOLA *"
                                          << "SOLA A/b\nc" << true;
    QTest::newRow("backslash in a set") << "x[\\d]"
                                        << "x5" << false;
}

void tst_CompareOptions::patternsMatchWholeTexts()
{
    QFETCH(QString, strPattern);
    QFETCH(QString, strText);
    const QRegularExpression expression = ResultPattern::expression(strPattern);
    QVERIFY2(expression.isValid(), qPrintable(expression.errorString()));
    QTEST(expression.match(strText).hasMatch(), "bMatches");
}

void tst_CompareOptions::wrongUsageIsNamed_data()
{
    QTest::addColumn<QStringList>("lstArguments");
    QTest::addColumn<QString>("strNamed");
    QTest::newRow("no folder") << QStringList{"--log"} << "folder";
    QTest::newRow("unknown option") << QStringList{"x", "--nonsense"} << "nonsense";
    QTest::newRow("unknown unit") << QStringList{"x", "--unit", "furlong"} << "--unit";
    QTest::newRow("size without height") << QStringList{"x", "--size", "800"} << "--size";
    QTest::newRow("size too small") << QStringList{"x", "--size", "800x10"} << "--size";
    QTest::newRow("size too large") << QStringList{"x", "--size", "90000x100"} << "--size";
    QTest::newRow("rotation no number") << QStringList{"x", "--rotate", "left"} << "--rotate";
    QTest::newRow("rotation beyond") << QStringList{"x", "--rotate", "361"} << "--rotate";
    QTest::newRow("range with one end") << QStringList{"x", "--range", "5"} << "--range";
    QTest::newRow("range turned round") << QStringList{"x", "--range", "5:1"} << "--range";
    QTest::newRow("range with a comma") << QStringList{"x", "--range", "0,5:1"} << "--range";
    QTest::newRow("range without end") << QStringList{"x", "--range", "1:inf"} << "--range";
    QTest::newRow("frames below 0") << QStringList{"x", "--frames=-1"} << "--frames";
    QTest::newRow("region with three numbers") << QStringList{"x", "--measure", "0,0,1"} << "--measure";
    QTest::newRow("region beyond the picture") << QStringList{"x", "--measure", "0,0,1,1.1"} << "--measure";
    QTest::newRow("region below 0") << QStringList{"x", "--measure", "-0.1,0,1,1"} << "--measure";
    QTest::newRow("region without width") << QStringList{"x", "--measure", "0.5,0,0.5,1"} << "--measure";
    QTest::newRow("region without height") << QStringList{"x", "--measure", "0,1,1,1"} << "--measure";
    QTest::newRow("region no numbers") << QStringList{"x", "--measure", "a,b,c,d"} << "--measure";
    QTest::newRow("plot without a file") << QStringList{"x", "--plot", "chi2"} << "--plot";
    QTest::newRow("plot of nothing known") << QStringList{"x", "--plot", "weight=p.png"} << "--plot";
    QTest::newRow("plot of an unknown kind") << QStringList{"x", "--plot", "ABCD:chi2=p.png"} << "--plot";
    QTest::newRow("growth in an unknown format") << QStringList{"x", "--growth", "g.txt"} << "--growth";
    QTest::newRow("growth without a format") << QStringList{"x", "--growth", "csv"} << "--growth";
    QTest::newRow("studies without a place") << QStringList{"--study-per-folder", "x"} << "--out";
    QTest::newRow("studies and a folder") << QStringList{"y", "--study-per-folder", "x", "--out", "o"} << "--study-per-folder";
    QTest::newRow("studies of nowhere") << QStringList{"--study-per-folder=", "--out", "o"} << "--study-per-folder";
    QTest::newRow("out of nowhere") << QStringList{"x", "--out="} << "--out";
    QTest::newRow("out and a file") << QStringList{"x", "--out", "o", "--table", "t.csv"} << "--out";
    QTest::newRow("jobs without studies") << QStringList{"x", "--jobs", "2"} << "--jobs";
    QTest::newRow("no jobs") << QStringList{"--study-per-folder", "x", "--out", "o", "--jobs", "0"} << "--jobs";
    QTest::newRow("too many jobs") << QStringList{"--study-per-folder", "x", "--out", "o", "--jobs", "1000"} << "--jobs";
    QTest::newRow("like with a look") << QStringList{"x", "--like", "p.png", "--rotate", "3"} << "--like";
    QTest::newRow("like with results") << QStringList{"x", "--like", "p.png", "--load", "*"} << "--like";
    QTest::newRow("like with studies") << QStringList{"--study-per-folder", "x", "--out", "o", "--like", "p.png"} << "--like";
    QTest::newRow("like nothing") << QStringList{"x", "--like="} << "--like";
    QTest::newRow("value missing") << QStringList{"x", "--view"} << "view";
}

void tst_CompareOptions::wrongUsageIsNamed()
{
    QFETCH(QStringList, lstArguments);
    QFETCH(QString, strNamed);
    SCompareOptions options;
    const QString strWrong = CompareOptions::read(QStringList("ormcompare") + lstArguments, options);
    QVERIFY2(strWrong.contains(strNamed), qPrintable(strWrong));
}

void tst_CompareOptions::optionsAreRead()
{
    SCompareOptions options;
    const QString strWrong =
        CompareOptions::read({"ormcompare", "a",        "b",        "--load",  "SOLA *",    "--load", "NOVA *",   "--unit",  "cells",
                              "--view",     "v.png",    "--window", "w.png",   "--report",  "r.json", "--size",   "640x480", "--rotate",
                              "90",         "--colors", "Rainbow",  "--range", "1e3:2.5e6", "--log",  "--frames", "7",       "--quiet"},
                             options);
    QCOMPARE(strWrong, QString());
    QCOMPARE(options.m_lstFolders, QStringList({"a", "b"}));
    QCOMPARE(options.m_lstPatterns, QStringList({"SOLA *", "NOVA *"}));
    QCOMPARE(options.m_strUnit, QString("cells"));
    QCOMPARE(options.m_strViewFile, QString("v.png"));
    QCOMPARE(options.m_strWindowFile, QString("w.png"));
    QCOMPARE(options.m_strReportFile, QString("r.json"));
    QCOMPARE(options.m_objSize, QSize(640, 480));
    QCOMPARE(options.m_nRotate.value(), 90);
    QCOMPARE(options.m_strColors, QString("Rainbow"));
    QCOMPARE(options.m_objRange.value().m_fMin, 1000.0);
    QCOMPARE(options.m_objRange.value().m_fMax, 2.5e6);
    QVERIFY(options.m_bLog);
    QCOMPARE(options.m_nFrames, 7);
    QVERIFY(options.m_bQuiet);
}

void tst_CompareOptions::plotsAndRegionAreRead()
{
    SCompareOptions options;
    QCOMPARE(CompareOptions::read({"ormcompare", "a", "--plot", "quantification=a=b.png", "--plot", "NOVA:chi2=c.eps", "--plot",
                                   "SOLA:voxelsize=d.tif", "--measure", "0.75,0,0.25,1e0", "--table", "t.csv", "--wavelength", "560"},
                                  options),
             QString());
    QCOMPARE(options.m_lstPlots.size(), 3);
    QCOMPARE(options.m_lstPlots.at(0).m_nKind, -1);
    QCOMPARE(options.m_lstPlots.at(0).m_nMeasure, 0);
    QCOMPARE(options.m_lstPlots.at(0).m_strFile, QString("a=b.png"));
    QCOMPARE(options.m_lstPlots.at(1).m_nKind, 1);
    QCOMPARE(options.m_lstPlots.at(1).m_nMeasure, 1);
    QCOMPARE(options.m_lstPlots.at(2).m_nKind, 0);
    QCOMPARE(options.m_lstPlots.at(2).m_nMeasure, 2);
    // The corners stay as they were given: a drag may go either way.
    QCOMPARE(options.m_objRegion->topLeft(), QPointF(0.75, 0.0));
    QCOMPARE(options.m_objRegion->bottomRight(), QPointF(0.25, 1.0));
    QCOMPARE(options.m_strTableFile, QString("t.csv"));
    QCOMPARE(options.m_strWavelength, QString("560"));
}

void tst_CompareOptions::lookIsTakenOver()
{
    SCompareOptions first;
    QCOMPARE(CompareOptions::read({"ormcompare", "a", "--log", "--range", "1e3:2.5e6", "--measure", "0,0,1,0.5", "--rotate", "7",
                                   "--colors", "Rainbow", "--wavelength=a=b c", "--unit", "cells", "--load", "S*", "--load", "-x"},
                                  first),
             QString());
    QCOMPARE(first.m_lstLook, (QStringList{"--unit=cells", "--size=1200x800", "--rotate=7", "--colors=Rainbow", "--range=1e3:2.5e6",
                                           "--log", "--wavelength=a=b c", "--measure=0,0,1,0.5"}));
    QCOMPARE(CompareOptions::contentArguments(first), first.m_lstLook + QStringList({"--load=S*", "--load=-x"}));
    SCompareOptions second;
    QCOMPARE(CompareOptions::takeLook(first.m_lstLook, second), QString());
    QCOMPARE(second.m_lstLook, first.m_lstLook);
    QCOMPARE(second.m_strUnit, QString("cells"));
    QCOMPARE(second.m_objSize, QSize(1200, 800));
    QCOMPARE(second.m_nRotate.value(), 7);
    QCOMPARE(second.m_strColors, QString("Rainbow"));
    QCOMPARE(second.m_objRange.value().m_fMax, 2.5e6);
    QVERIFY(second.m_bLog);
    QCOMPARE(second.m_strWavelength, QString("a=b c"));
    QCOMPARE(second.m_objRegion.value(), first.m_objRegion.value());
    SCompareOptions third;
    QVERIFY(!CompareOptions::takeLook({"--size=300x200", "--view=x.png"}, third).isEmpty());
    QVERIFY(!CompareOptions::takeLook({"--rotate=400", "--size=300x200"}, third).isEmpty());
    QCOMPARE(third.m_objSize, QSize(1200, 800));
}

void tst_CompareOptions::studiesAreRead()
{
    SCompareOptions options;
    QCOMPARE(CompareOptions::read({"ormcompare", "--study-per-folder", "r", "--out", "o", "--jobs", "3", "--log", "--quiet"}, options),
             QString());
    QCOMPARE(options.m_strRoot, QString("r"));
    QCOMPARE(options.m_strOutFolder, QString("o"));
    QCOMPARE(options.m_nJobs, 3);
    QCOMPARE(CommandLine::oneLine(QString("a\nb\r\x1b[31mc") + QChar(0x85) + QString::fromUtf8("ü")), QString::fromUtf8("a?b??[31mc?ü"));
}

void tst_CompareOptions::defaultsHold()
{
    SCompareOptions options;
    QCOMPARE(CompareOptions::read({"ormcompare", "a"}, options), QString());
    QCOMPARE(options.m_objSize, QSize(1200, 800));
    QVERIFY(options.m_lstPatterns.isEmpty());
    QVERIFY(!options.m_nRotate.has_value());
    QVERIFY(!options.m_objRange.has_value());
    QCOMPARE(options.m_nFrames, 0);
}

void tst_CompareOptions::medianIsTheLowerMiddle_data()
{
    QTest::addColumn<QVector<double>>("lstNumbers");
    QTest::addColumn<double>("fMedian");
    QTest::newRow("none") << QVector<double>() << 0.0;
    QTest::newRow("one") << QVector<double>{4.0} << 4.0;
    QTest::newRow("odd") << QVector<double>{9.0, 1.0, 5.0} << 5.0;
    QTest::newRow("even") << QVector<double>{4.0, 1.0, 3.0, 2.0} << 2.0;
}

void tst_CompareOptions::medianIsTheLowerMiddle()
{
    QFETCH(QVector<double>, lstNumbers);
    QTEST(CompareReport::median(lstNumbers), "fMedian");
}

void tst_CompareOptions::reportHasEveryFigure()
{
    SCompareReport report;
    SLoadedResult result;
    result.m_strKind = "SOLA";
    result.m_strSequence = "S1";
    result.m_strName = "Day 0";
    result.m_fTotal = 12.5;
    result.m_lstWavelengths = QStringList{"560", "580"};
    report.m_lstResults.append(result);
    report.m_lstFailed.append({"NOVA", "S2", "Day 3", "Unable to read analysis data.", {}});
    report.m_objRange = {0.5, 9.5, -1.0, -1.0};
    report.m_lstFrameMs = {3.0, 1.0, 2.0};
    const QJsonObject object = QJsonDocument::fromJson(CompareReport::json(report)).object();
    const QJsonObject first = object.value("results").toArray().at(0).toObject();
    for (const char* pszKey :
         {"kind", "sequence", "name", "unit", "vertices", "triangles", "voxels", "voxel_size_mm", "value_min", "value_max", "total",
          "selected_total", "reduced_chi2", "final_voxel_size_mm", "starting_voxel_size_mm", "wavelengths", "load_ms", "press_ms"})
    {
        QVERIFY2(first.contains(QLatin1String(pszKey)), pszKey);
    }
    QCOMPARE(first.value("total").toDouble(), 12.5);
    QCOMPARE(first.value("wavelengths").toArray().at(1).toString(), QString("580"));
    QCOMPARE(object.value("failed").toArray().at(0).toObject().value("reason").toString(), QString("Unable to read analysis data."));
    QCOMPARE(object.value("range").toObject().value("SOLA").toArray(), QJsonArray({0.5, 9.5}));
    QCOMPARE(object.value("range").toObject().value("NOVA").toArray(), QJsonArray({-1.0, -1.0}));
    QVERIFY(object.value("bar").isObject());
    QCOMPARE(object.value("frame_ms").toObject().value("median").toDouble(), 2.0);
    QCOMPARE(object.value("frame_ms").toObject().value("max").toDouble(), 3.0);
    QVERIFY(object.contains("peak_rss_mb"));
}

void tst_CompareOptions::tableHasALineForEachResult()
{
    SLoadedResult first;
    first.m_strKind = "SOLA";
    first.m_strSequence = "S1";
    first.m_strName = "Day 0, 1 mm";
    first.m_strUnit = "photons/sec";
    first.m_fTotal = 12.5;
    first.m_fSelectedTotal = 2.25;
    first.m_fReducedChi2 = 0.98;
    first.m_fVoxelSize = 0.25;
    first.m_fFinalVoxelSize = 1.0;
    first.m_fStartVoxelSize = 4.0;
    first.m_nVoxels = 7;
    SLoadedResult second = first;
    second.m_fReducedChi2 = std::numeric_limits<double>::quiet_NaN();
    SCompareReport report;
    first.m_objTime = {"Mouse 1", "2026-03-05T21:30:00", 3.5};
    second.m_objTime = {"", "one day", std::numeric_limits<double>::quiet_NaN()};
    report.m_lstResults = {first, second};
    report.m_lstFailed = {{"NOVA", "S2", "Day 3", "damaged", {"Mouse 1", "2026-03-06", 4.0}}};
    report.m_lstEmpty = {{"SOLA", "S3", {"Mouse 1", "2026-03-02", 0.0}}};
    QCOMPARE(CompareReport::csv(report),
             QByteArray("kind,sequence,name,unit,total,selected_total,reduced_chi2,voxel_size_mm,final_voxel_size_mm,"
                        "starting_voxel_size_mm,voxels,subject,date,days\r\n"
                        "SOLA,S1,\"Day 0, 1 mm\",photons/sec,12.5,2.25,0.98,0.25,1,4,7,Mouse 1,2026-03-05T21:30:00,3.5\r\n"
                        "SOLA,S1,\"Day 0, 1 mm\",photons/sec,12.5,2.25,,0.25,1,4,7,,one day,\r\n"
                        "NOVA,S2,Day 3,,,,,,,,,Mouse 1,2026-03-06,4\r\n"
                        "SOLA,S3,,,,,,,,,,Mouse 1,2026-03-02,0\r\n"));
}

QTEST_GUILESS_MAIN(tst_CompareOptions)
#include "tst_compareoptions.moc"
