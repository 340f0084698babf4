#include "ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
const QString g_strSnakefile = QStringLiteral(ORM_SOURCE_DIR "/examples/snakemake/Snakefile");
const QString g_strSlurmScript = QStringLiteral(ORM_SOURCE_DIR "/examples/slurm/compare-studies.sh");
const QString g_strProgram = QStringLiteral(ORM_BINARY_DIR "/bin/ormcompare");

QByteArray contents(const QString& strFile)
{
    QFile file(strFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Runs a program of the system. All that it says goes to m_strOut.
SProgramRun runTool(const QString& strTool, const QStringList& lstArguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(environment);
    process.start(strTool, lstArguments);
    SProgramRun run;
    if (process.waitForFinished(200'000) && process.exitStatus() == QProcess::NormalExit)
    {
        run.m_nExit = process.exitCode();
    }
    run.m_strOut = QString::fromUtf8(process.readAll());
    return run;
}
} // namespace

/// The files for engines that spread work work as they stand.
class tst_Examples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { QDir(path("out")).removeRecursively(); }
    void snakemakeMakesAllStudies();
    void shellRulesOfTheSnakefileWork();
    void slurmScriptIsSound();
    void slurmTasksMakeTheirStudies();

private:
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    void verifyAllIsMade() const;
    QTemporaryDir m_objFolder;
};

void tst_Examples::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    QVERIFY(QDir().mkpath(path("studies/notes")));
    for (const char* pszName : {"mouse 1", "mouse2"})
    {
        QCOMPARE(runProgram("ormphantom", {path(QString("studies/") + pszName), "--timepoints", "2", "--vertices", "60", "--kind", "SOLA"})
                     .m_nExit,
                 0);
    }
}

void tst_Examples::verifyAllIsMade() const
{
    QVERIFY(QFile::exists(path("out/mouse 1/figure.png")));
    QVERIFY(QFile::exists(path("out/mouse2/figure.png")));
    const QByteArray aAll = contents(path("out/all.csv"));
    QCOMPARE(aAll.count("\r\nmouse 1,SOLA,"), 2);
    QCOMPARE(aAll.count("\r\nmouse2,SOLA,"), 2);
    QCOMPARE(contents(path("out/growth.csv")).count("\r\n"), 3);
}

void tst_Examples::snakemakeMakesAllStudies()
{
    // A package of hundreds of megabytes, which a plain run does without: the rules run below in any case.
    const QString strSnakemake = QStandardPaths::findExecutable("snakemake");
    if (strSnakemake.isEmpty())
    {
        QVERIFY2(qEnvironmentVariableIsEmpty("ORM_TEST_ALL"), "Snakemake is missing: install the package snakemake");
        QVERIFY(contents(g_strSnakefile).contains("rule sum_up:"));
        return;
    }
    const QStringList lstArguments{"--snakefile",
                                   g_strSnakefile,
                                   "--directory",
                                   path("work"),
                                   "--cores",
                                   "2",
                                   "--config",
                                   "root=" + path("studies"),
                                   "out=" + path("out"),
                                   "program=" + g_strProgram,
                                   "options=--rotate 90 --size 300x200"};
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", m_objFolder.path());
    environment.insert("XDG_CACHE_HOME", path("cache"));
    SProgramRun run = runTool(strSnakemake, lstArguments, environment);
    QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strOut));
    verifyAllIsMade();
    QVERIFY2(run.m_strOut.contains("2 studies: 0 made, 2 up to date, 0 failed"), qPrintable(run.m_strOut));
    run = runTool(strSnakemake, lstArguments, environment);
    QVERIFY2(run.m_nExit == 0 && run.m_strOut.contains("Nothing to be done"), qPrintable(run.m_strOut));
}

void tst_Examples::shellRulesOfTheSnakefileWork()
{
    QStringList lstRules;
    QRegularExpressionMatchIterator it =
        QRegularExpression("shell:\\s*\"([^\"]+)\"").globalMatch(QString::fromUtf8(contents(g_strSnakefile)));
    while (it.hasNext())
    {
        lstRules.append(it.next().captured(1));
    }
    QCOMPARE(lstRules.size(), 2);
    const auto filled = [this](QString strRule, const QString& strStudy)
    {
        const auto quoted = [](const QString& strText) { return '\'' + strText + '\''; };
        strRule.replace("{PROGRAM:q}", quoted(g_strProgram));
        strRule.replace("{ROOT:q}", quoted(path("studies")));
        strRule.replace("{OUT:q}", quoted(path("out")));
        strRule.replace("{OPTIONS}", "--rotate 90 --size 300x200");
        strRule.replace("{params.folder:q}", quoted(path("studies/" + strStudy)));
        return strRule.replace("{params.out:q}", quoted(path("out/" + strStudy)));
    };
    for (const QString& strStudy : {QString("mouse 1"), QString("mouse2")})
    {
        const QString strCommand = filled(lstRules.at(1), strStudy);
        QVERIFY2(!strCommand.contains('{'), qPrintable(strCommand));
        const SProgramRun run = runTool("bash", {"-euc", strCommand}, QProcessEnvironment::systemEnvironment());
        QVERIFY2(run.m_nExit == 0 && run.m_strOut.isEmpty(), qPrintable(run.m_strOut));
    }
    const SProgramRun run = runTool("bash", {"-euc", filled(lstRules.at(0), QString())}, QProcessEnvironment::systemEnvironment());
    QVERIFY2(run.m_nExit == 0 && run.m_strOut.contains("2 studies: 0 made, 2 up to date, 0 failed"), qPrintable(run.m_strOut));
    verifyAllIsMade();
}

void tst_Examples::slurmScriptIsSound()
{
    const QString strShellcheck = QStandardPaths::findExecutable("shellcheck");
    QVERIFY2(!strShellcheck.isEmpty() || qEnvironmentVariableIsEmpty("ORM_TEST_ALL"), "shellcheck is missing: install its package");
    const SProgramRun run = strShellcheck.isEmpty() ? runTool("bash", {"-n", g_strSlurmScript}, QProcessEnvironment::systemEnvironment())
                                                    : runTool(strShellcheck, {g_strSlurmScript}, QProcessEnvironment::systemEnvironment());
    QVERIFY2(run.m_nExit == 0 && run.m_strOut.isEmpty(), qPrintable(run.m_strOut));
}

void tst_Examples::slurmTasksMakeTheirStudies()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ORMCOMPARE", g_strProgram);
    QVERIFY2(runTool("bash", {g_strSlurmScript, path("studies"), path("out")}, environment).m_nExit != 0, "no task");
    for (const int nTask : {1, 2, 3})
    {
        environment.insert("SLURM_ARRAY_TASK_ID", QString::number(nTask));
        const SProgramRun run =
            runTool("bash", {g_strSlurmScript, path("studies"), path("out"), "--rotate", "90", "--size", "300x200"}, environment);
        QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strOut));
        QCOMPARE(run.m_strOut, nTask < 3 ? QString() : QString("There are 2 studies: nothing to do for task 3.\n"));
        QCOMPARE(QFile::exists(path("out/mouse2/figure.png")), nTask >= 2);
    }
    const SProgramRun run =
        runProgram("ormcompare", {"--study-per-folder", path("studies"), "--out", path("out"), "--rotate", "90", "--size", "300x200"});
    QVERIFY2(run.m_nExit == 0 && run.m_strOut.contains("0 made, 2 up to date"), qPrintable(run.m_strOut));
    verifyAllIsMade();
}

QTEST_GUILESS_MAIN(tst_Examples)
#include "tst_examples.moc"
