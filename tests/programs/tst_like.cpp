#include "ProgramRun.h"

#include <QFile>
#include <QHash>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
QByteArray contents(const QString& strFile)
{
    QFile file(strFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

/// Pictures say how they were made, and can be made again from that.
class tst_Like : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void pictureSaysHowItWasMade();
    void otherFormatsSayNothing();
    void pictureIsRepeated_data();
    void pictureIsRepeated();
    void plotAndGrowthAreRepeated();
    void usualFilesAreRepeated();
    void missingResultIsAReason();
    void changedValuesAreAReason();
    void pictureOfNothingKnownIsRefused();

private:
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    QTemporaryDir m_objFolder;
};

void tst_Like::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    QCOMPARE(runProgram("ormphantom", {path("study"), "--timepoints", "2", "--vertices", "200"}).m_nExit, 0);
}

void tst_Like::pictureSaysHowItWasMade()
{
    const SProgramRun run = runProgram("ormcompare", {path("study"), "--size", "500x300", "--rotate", "40", "--colors", "Rainbow", "--log",
                                                      "--measure", "0.2,0.2,0.8,0.8", "--view", path("said.png")});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    const QImage picture(path("said.png"));
    QVERIFY2(picture.text("Software").startsWith("ormcompare "), qPrintable(picture.text("Software")));
    const QString strState = picture.text("OrmelleState");
    for (const char* pszPart : {"\"results\":[{\"kind\":\"SOLA\",\"name\":\"Day 0, 1 mm\",\"sequence\":\"PM20260302_L\"}",
                                "\"rotation\":40", "\"colors\":\"Rainbow\"", "\"log\":true", "\"mip\":", "\"unit\":\"photons/sec\"",
                                "\"min\":", "\"max\":", "\"region\":\"0.2,0.2,0.8,0.8\"", "\"version\":\"", "--size=500x300",
                                "\"wavelength\":", "\"picture\":\"view\""})
    {
        QVERIFY2(strState.contains(QLatin1String(pszPart)), qPrintable(pszPart + QString(" in ") + strState));
    }
}

void tst_Like::otherFormatsSayNothing()
{
    const SProgramRun run =
        runProgram("ormcompare", {path("study"), "--size", "300x200", "--view", path("view.jpg"), "--window", path("window.tif")});
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
    QVERIFY(!contents(path("view.jpg")).contains("OrmelleState"));
    QVERIFY(!contents(path("window.tif")).contains("OrmelleState"));
}

void tst_Like::pictureIsRepeated_data()
{
    QTest::addColumn<QStringList>("lstLook");
    QTest::newRow("as it comes") << QStringList{};
    QTest::newRow("all of a look") << QStringList{"--size", "640x350",   "--rotate",       "213", "--colors", "Rainbow",
                                                  "--log",  "--measure", "0.3,0.1,0.9,0.6"};
    QTest::newRow("one kind, range, density map") << QStringList{"--load", "SOLA*mm", "--range", "1e3:2.345e4", "--wavelength", "620"};
    QTest::newRow("one result, other unit") << QStringList{"--load", "NOVA *L/Day 0*", "--load", "SOLA PM20260305_L/*", "--unit", "cells"};
}

void tst_Like::pictureIsRepeated()
{
    QFETCH(QStringList, lstLook);
    const SProgramRun first =
        runProgram("ormcompare", QStringList{path("study"), "--view", path("a.png"), "--window", path("aw.png")} + lstLook);
    const SProgramRun second =
        runProgram("ormcompare", {path("study"), "--like", path("a.png"), "--view", path("b.png"), "--window", path("bw.png")});
    QCOMPARE(second.m_nExit, lstLook.contains("NOVA *L/Day 0*") ? 0 : first.m_nExit); // what was not there is no part of the picture
    QVERIFY(!contents(path("a.png")).isEmpty());
    QVERIFY(QImage(path("a.png")) == QImage(path("b.png")));
    QVERIFY(QImage(path("aw.png")) == QImage(path("bw.png")));
    QVERIFY2(contents(path("a.png")) == contents(path("b.png")), "the text too");
    QVERIFY2(contents(path("aw.png")) == contents(path("bw.png")), "the text too");
    QVERIFY(QImage(path("aw.png")).text("OrmelleState").contains("\"picture\":\"window\""));
}

void tst_Like::plotAndGrowthAreRepeated()
{
    QCOMPARE(runProgram("ormcompare", {path("study"), "--measure", "0.1,0,1,0.9", "--plot", "NOVA:quantification=" + path("p.png"),
                                       "--growth", path("g.png")})
                 .m_nExit,
             0);
    QCOMPARE(runProgram("ormcompare", {path("study"), "--like", path("p.png"), "--plot", "NOVA:quantification=" + path("q.png"), "--growth",
                                       path("h.png")})
                 .m_nExit,
             0);
    QVERIFY(!contents(path("p.png")).isEmpty() && contents(path("p.png")) == contents(path("q.png")));
    QVERIFY(!contents(path("g.png")).isEmpty() && contents(path("g.png")) == contents(path("h.png")));
}

void tst_Like::usualFilesAreRepeated()
{
    QCOMPARE(runProgram("ormcompare", {path("study"), "--out", path("out"), "--size", "300x200", "--rotate", "30", "--quiet"}).m_nExit, 0);
    const QHash<QString, QString> mapShows = {{"figure.png", "view"},
                                              {"growth.png", "growth"},
                                              {"plot-SOLA-chi2.png", "plot of SOLA Reduced Chi-Squared"},
                                              {"plot-NOVA-voxelsize.png", "plot of NOVA Voxel Size"}};
    for (auto it = mapShows.cbegin(); it != mapShows.cend(); ++it)
    {
        const QString strState = QImage(path("out/" + it.key())).text("OrmelleState");
        QVERIFY2(strState.contains(QString("\"picture\":\"%1").arg(it.value())), qPrintable(it.key() + ": " + strState));
    }
    // Any of them makes all of them again.
    QCOMPARE(
        runProgram("ormcompare", {path("study"), "--like", path("out/plot-SOLA-chi2.png"), "--view", path("v.png"), "--plot",
                                  "SOLA:chi2=" + path("c.png"), "--plot", "NOVA:voxelsize=" + path("x.png"), "--growth", path("w.png")})
            .m_nExit,
        0);
    const QHash<QString, QString> mapAgain = {
        {"figure.png", "v.png"}, {"growth.png", "w.png"}, {"plot-SOLA-chi2.png", "c.png"}, {"plot-NOVA-voxelsize.png", "x.png"}};
    for (auto it = mapAgain.cbegin(); it != mapAgain.cend(); ++it)
    {
        QVERIFY2(contents(path("out/" + it.key())) == contents(path(it.value())), qPrintable(it.key()));
    }
}

void tst_Like::missingResultIsAReason()
{
    QCOMPARE(runProgram("ormcompare", {path("study"), "--load", "SOLA*mm", "--view", path("m.png")}).m_nExit, 0);
    const SProgramRun run = runProgram("ormcompare", {path("study/PM20260302_L"), "--like", path("m.png"), "--view", path("n.png")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("The picture shows SOLA PM20260305_L/Day 3, 1 mm, which is not under the folders."),
             qPrintable(run.m_strError));
}

void tst_Like::changedValuesAreAReason()
{
    for (const char* pszSeed : {"1", "2"})
    {
        QCOMPARE(runProgram("ormphantom",
                            {path(QString("seed") + pszSeed), "--timepoints", "1", "--vertices", "60", "--kind", "SOLA", "--seed", pszSeed})
                     .m_nExit,
                 0);
    }
    QCOMPARE(runProgram("ormcompare", {path("seed1"), "--view", path("s.png")}).m_nExit, 0);
    const SProgramRun run = runProgram("ormcompare", {path("seed2"), "--like", path("s.png"), "--view", path("t.png")});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains("The values of SOLA have changed since the picture was made"), qPrintable(run.m_strError));
}

void tst_Like::pictureOfNothingKnownIsRefused()
{
    QImage plain(20, 10, QImage::Format_RGB32);
    plain.fill(Qt::white);
    QVERIFY(plain.save(path("plain.png")));
    plain.setText("OrmelleState", "{\"look\":[\"--size=1000000x1000000\"]}");
    QVERIFY(plain.save(path("damaged.png")));
    for (const char* pszName : {"plain.png", "damaged.png", "none.png"})
    {
        const SProgramRun run = runProgram("ormcompare", {path("study"), "--like", path(QLatin1String(pszName)), "--view", path("no.png")});
        QCOMPARE(run.m_nExit, 1);
        QCOMPARE(run.m_strError.count('\n'), 1);
        QVERIFY2(run.m_strError.contains("cannot be repeated: "), qPrintable(run.m_strError));
        QVERIFY(!QFile::exists(path("no.png")));
    }
}

QTEST_GUILESS_MAIN(tst_Like)
#include "tst_like.moc"
