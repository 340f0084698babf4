#include "ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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
    void framesAreMeasured();
    void lookChangesThePicture_data();
    void lookChangesThePicture();
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

void tst_Compare::unwritableFileIsAReason()
{
    const SProgramRun run = compare({"--load", "SOLA PM20260302_L/*mm", "--view", path("no/such/folder/view.png")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("view.png cannot be written"), qPrintable(run.m_strError));
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
    for (const char* pOption : {"--load", "--unit", "--view", "--window", "--report", "--size", "--rotate", "--colors", "--range", "--log",
                                "--frames", "--quiet", "--version"})
    {
        QVERIFY2(run.m_strOut.contains(QLatin1String(pOption)), pOption);
    }
}

QTEST_GUILESS_MAIN(tst_Compare)
#include "tst_compare.moc"
