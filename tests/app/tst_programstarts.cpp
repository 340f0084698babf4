#include "OrmCommandLine.h"
#include "PluginFolder.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
constexpr int s_nPatience = 60000; ///< milliseconds; only a program that hangs takes so long

struct SRun
{
    int nCode = -1;
    QString strOutput;
    QString strErrors;
};

QByteArray contents(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray("cannot be opened");
}
} // namespace

/// The program with options that need no window: settings put aside, diagnosis, log file.
class TestProgramStarts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void versionNamesTheBuild();
    void resetKeepsCopies();
    void resetWithoutSettingsSaysSo();
    void resetThatFailsSaysSo();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();
    void diagnosisSaysWhatThereIs_data();
    void diagnosisSaysWhatThereIs();
    void diagnosisNamesRefusedPlugins();
    void diagnosisTouchesNoSettings();
    void logFileHasTheFirstLine();
    void logFileThatCannotBeOpenedEndsTheProgram();

private:
    SRun run(const QStringList& lstArguments, const QStringList& lstEnvironment = {}, const QString& strProgram = {}) const;
    QString settings(const QString& strName) const { return m_pHome->filePath(QStringLiteral("config/Ormelle/") + strName); }
    void writeSettings(const QString& strName, const QByteArray& baContent) const;

    std::unique_ptr<QTemporaryDir> m_pHome;
};

void TestProgramStarts::init()
{
    m_pHome = std::make_unique<QTemporaryDir>();
}

/// Runs the program with a home of its own and without a display, unless the environment names one.
SRun TestProgramStarts::run(const QStringList& lstArguments, const QStringList& lstEnvironment, const QString& strProgram) const
{
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    for (const char* pszName : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        objEnvironment.remove(QLatin1String(pszName));
    objEnvironment.insert(QStringLiteral("HOME"), m_pHome->path());
    objEnvironment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_pHome->filePath(QStringLiteral("config")));
    for (const QString& strSetting : lstEnvironment)
        objEnvironment.insert(strSetting.section(QLatin1Char('='), 0, 0), strSetting.section(QLatin1Char('='), 1));
    QProcess objProgram;
    objProgram.setProcessEnvironment(objEnvironment);
    objProgram.start(strProgram.isEmpty() ? QStringLiteral(ORM_BINARY_DIR "/bin/ormelle") : strProgram, lstArguments);
    SRun sRun;
    if (!objProgram.waitForFinished(s_nPatience))
        objProgram.kill();
    else if (objProgram.exitStatus() == QProcess::NormalExit)
        sRun.nCode = objProgram.exitCode();
    sRun.strOutput = QString::fromLocal8Bit(objProgram.readAllStandardOutput());
    sRun.strErrors = QString::fromLocal8Bit(objProgram.readAllStandardError());
    return sRun;
}

void TestProgramStarts::writeSettings(const QString& strName, const QByteArray& baContent) const
{
    QVERIFY(QDir().mkpath(settings(QString())));
    QFile objFile(settings(strName));
    QVERIFY(objFile.open(QIODevice::WriteOnly));
    QCOMPARE(objFile.write(baContent), qint64(baContent.size()));
}

void TestProgramStarts::versionNamesTheBuild()
{
    const SRun sRun = run({QStringLiteral("--version")});
    QCOMPARE(sRun.nCode, 0);
    const QRegularExpression objForm(QStringLiteral("^Ormelle \\d+\\.\\d+\\.\\d+, build [A-Za-z0-9._+-]+\n$"));
    QVERIFY2(objForm.match(sRun.strOutput).hasMatch(), qPrintable(sRun.strOutput));
}

void TestProgramStarts::resetKeepsCopies()
{
    for (const char* pszRound : {"", "-2"})
    {
        const QByteArray baBytes = QByteArray("bytes ") + pszRound; // they are not looked at
        writeSettings(QStringLiteral("preferences.json"), baBytes);
        writeSettings(QStringLiteral("window.json"), baBytes);
        const SRun sRun = run({QStringLiteral("--reset-settings")});
        QCOMPARE(sRun.nCode, 0);
        QCOMPARE(sRun.strErrors, QString());
        QString strExpected;
        for (const char* pszFile : {"preferences.json", "window.json"})
        {
            const QString strCopy = settings(QLatin1String(pszFile)) + QStringLiteral(".before-reset") + QLatin1String(pszRound);
            strExpected += QStringLiteral("Removed %1; a copy is kept as %2.\n").arg(settings(QLatin1String(pszFile)), strCopy);
            QVERIFY(!QFile::exists(settings(QLatin1String(pszFile))));
            QCOMPARE(contents(strCopy), baBytes);
        }
        QCOMPARE(sRun.strOutput, strExpected);
    }
}

void TestProgramStarts::resetWithoutSettingsSaysSo()
{
    const SRun sRun = run({QStringLiteral("--reset-settings")});
    QCOMPARE(sRun.nCode, 0);
    QCOMPARE(sRun.strOutput, QStringLiteral("There are no settings: %1 is not there.\n").arg(settings(QStringLiteral("preferences.json"))));
    QVERIFY(QDir(m_pHome->path()).isEmpty());
}

void TestProgramStarts::resetThatFailsSaysSo()
{
    // The name of the file is as long as the system allows, so that none is left for a copy.
    writeSettings(QStringLiteral("preferences.json"), "kept");
    QString strPath = m_pHome->path();
    while (strPath.size() + 1 + 200 + int(qstrlen("/Ormelle/preferences.json")) < 4090)
        strPath += QLatin1Char('/') + QString(200, QLatin1Char('x'));
    strPath += QLatin1Char('/') + QString(4095 - 1 - strPath.size() - int(qstrlen("/Ormelle/preferences.json")), QLatin1Char('y'));
    QVERIFY(QDir().mkpath(strPath + QStringLiteral("/Ormelle")));
    const QString strFile = strPath + QStringLiteral("/Ormelle/preferences.json");
    QCOMPARE(strFile.size(), 4095);
    QVERIFY(QFile::copy(settings(QStringLiteral("preferences.json")), strFile));
    const SRun sRun = run({QStringLiteral("--reset-settings")}, {QStringLiteral("XDG_CONFIG_HOME=") + strPath});
    QCOMPARE(sRun.nCode, 1);
    QVERIFY2(sRun.strErrors.contains(strFile + QStringLiteral(" could not be removed: ")), qPrintable(sRun.strErrors));
    QCOMPARE(contents(strFile), QByteArray("kept"));
}

void TestProgramStarts::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("reset of nothing") << QStringList{"--reset-settings", "--no-settings"}
                                      << "--reset-settings and --no-settings cannot be given together.";
    QTest::newRow("unknown beside reset") << QStringList{"--reset-settings", "--bogus"} << "Unknown option 'bogus'.";
    QTest::newRow("unknown beside diagnosis") << QStringList{"--diagnose", "--bogus", "-platform", "offscreen"}
                                              << "Unknown option 'bogus'.";
    QTest::newRow("log file twice") << QStringList{"--reset-settings", "--log-file", "/dev/null", "--log-file", "/dev/null"}
                                    << "--log-file may be given once.";
    QTest::newRow("log file without a name") << QStringList{"--reset-settings", "--log-file", ""} << "--log-file needs the name of a file.";
}

void TestProgramStarts::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    writeSettings(QStringLiteral("preferences.json"), "{}");
    const SRun sRun = run(arguments);
    QCOMPARE(sRun.nCode, 2);
    QCOMPARE(sRun.strErrors.section(QLatin1Char('\n'), 0, 0), error);
    QCOMPARE(sRun.strOutput, QString());
    QVERIFY(QFile::exists(settings(QStringLiteral("preferences.json"))));
}

void TestProgramStarts::diagnosisSaysWhatThereIs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<QString>("platform");
    QTest::addColumn<bool>("display");
    QTest::newRow("no display") << QStringList{} << QStringList{} << "offscreen" << false;
    QTest::newRow("a display that is gone") << QStringList{} << QStringList{"DISPLAY=:7777"} << "offscreen" << false;
    QTest::newRow("a platform that is not there") << QStringList{"-platform", "nonsense"} << QStringList{} << "offscreen" << false;
    QTest::newRow("a platform in memory") << QStringList{"-platform", "minimal"} << QStringList{} << "minimal" << true;
    QTest::newRow("the display of this test") << QStringList{} << QStringList{QStringLiteral("DISPLAY=") + qEnvironmentVariable("DISPLAY")}
                                              << "xcb" << true;
}

void TestProgramStarts::diagnosisSaysWhatThereIs()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, environment);
    QFETCH(QString, platform);
    QFETCH(bool, display);
    const SRun sRun = run(QStringList{QStringLiteral("--diagnose")} + arguments, environment);
    QCOMPARE(sRun.nCode, 0);
    const QStringList lstLines = sRun.strOutput.split(QLatin1Char('\n'));
    QCOMPARE(lstLines.first(), OrmCommandLine::version());
    QCOMPARE(lstLines.filter(QRegularExpression(QStringLiteral("^No display: .+"))).size(), display ? 0 : 1);
    for (const QString& strPattern :
         {QStringLiteral("^Program: /.*ormelle$"), QStringLiteral("^System: .+"),
          QStringLiteral("^Qt: built with 5\\.\\d+\\.\\d+, running on 5\\.\\d+\\.\\d+$"), QStringLiteral("^libtiff: \\d+\\.\\d+\\.\\d+$"),
          QStringLiteral("^Qwt: \\d+\\.\\d+\\.\\d+$"), QStringLiteral("^pugixml: 1\\.\\d+$"),
          QStringLiteral("^Platform: %1$").arg(platform), QStringLiteral("^Environment: .+"),
          QStringLiteral("^Screen: .+ \\d+ x \\d+ pixels at .+ scaling 1$"), QStringLiteral("^OpenGL: .+"), QStringLiteral("^3D view: .+"),
          QStringLiteral("^Locale: .+"),
          QStringLiteral("^Preferences: %1 \\(not there\\)$").arg(settings(QStringLiteral("preferences.json"))),
          QStringLiteral("^Windows: %1 \\(not there\\)$").arg(settings(QStringLiteral("window.json"))),
          QStringLiteral("^Plug-ins: /.+/Plugins$"),
          QStringLiteral("^Accepted: Longitudinal Study, tdl\\.ormelle\\.ormlongitudinalstudybrowser, /.+\\.so$")})
        QVERIFY2(lstLines.filter(QRegularExpression(strPattern)).size() == 1, qPrintable(strPattern + QLatin1Char('\n') + sRun.strOutput));
    QCOMPARE(lstLines.contains(QStringLiteral("3D view: works")), platform == QLatin1String("xcb"));
    QVERIFY(QDir(m_pHome->path()).isEmpty());
}

void TestProgramStarts::diagnosisNamesRefusedPlugins()
{
    const CPluginFolder objPlugins;
    const QString strProgram = QFileInfo(objPlugins.path()).path() + QStringLiteral("/ormelle");
    QVERIFY(QFile::copy(QStringLiteral(ORM_BINARY_DIR "/bin/ormelle"), strProgram));
    objPlugins.add(QStringLiteral("empty.so"), QByteArray());
    objPlugins.addLibrary(QStringLiteral("RecordingTool"));
    const SRun sRun = run({QStringLiteral("--diagnose")}, {}, strProgram);
    QCOMPARE(sRun.nCode, 0);
    QVERIFY2(sRun.strOutput.contains(QStringLiteral("\nRefused: empty.so was not loaded: it is empty.\n")), qPrintable(sRun.strOutput));
    QVERIFY2(sRun.strOutput.contains(QStringLiteral("\nAccepted: Recording Tool, ")), qPrintable(sRun.strOutput));
}

void TestProgramStarts::diagnosisTouchesNoSettings()
{
    writeSettings(QStringLiteral("preferences.json"), "{ damaged");
    const SRun sRun = run({QStringLiteral("--diagnose")});
    QCOMPARE(sRun.nCode, 0);
    QVERIFY2(sRun.strOutput.contains(QStringLiteral("preferences.json (9 bytes, readable)")), qPrintable(sRun.strOutput));
    QCOMPARE(contents(settings(QStringLiteral("preferences.json"))), QByteArray("{ damaged"));
    QCOMPARE(QDir(settings(QString())).entryList(QDir::Files), QStringList{"preferences.json"});
    QVERIFY(run({QStringLiteral("--diagnose"), QStringLiteral("--no-settings")})
                .strOutput.contains(QStringLiteral("\nPreferences: kept in memory alone\n")));
}

void TestProgramStarts::logFileHasTheFirstLine()
{
    const QString strFile = m_pHome->filePath(QStringLiteral("a.log"));
    for (const QStringList& lstForm : {QStringList{"--log-file", strFile}, QStringList{QStringLiteral("--log-file=") + strFile}})
    {
        QCOMPARE(run(QStringList{QStringLiteral("--reset-settings")} + lstForm).nCode, 0);
        const QStringList lstLines = QString::fromUtf8(contents(strFile)).split(QLatin1Char('\n'));
        QCOMPARE(lstLines.size(), 2);
        const QRegularExpression objForm(
            QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\S+\tinfo\torm\\.app\t%1 starts\\.$")
                .arg(QRegularExpression::escape(OrmCommandLine::version())));
        QVERIFY2(objForm.match(lstLines.first()).hasMatch(), qPrintable(lstLines.first()));
        QVERIFY(QFile::remove(strFile));
    }
    // What Qt says before it ends the program is there, too.
    const SRun sRun = run({QStringLiteral("--log-file"), strFile, QStringLiteral("-platform"), QStringLiteral("nonsense")});
    QCOMPARE(sRun.nCode, -1);
    QVERIFY2(contents(strFile).contains("\terror\tqt"), contents(strFile).constData());
}

void TestProgramStarts::logFileThatCannotBeOpenedEndsTheProgram()
{
    const QString strFile = m_pHome->filePath(QStringLiteral("none/a.log"));
    const SRun sRun = run({QStringLiteral("--log-file"), strFile});
    QCOMPARE(sRun.nCode, 1);
    QCOMPARE(sRun.strErrors, QStringLiteral("The log file %1 cannot be written: No such file or directory.\n").arg(strFile));
}

QTEST_GUILESS_MAIN(TestProgramStarts)
#include "tst_programstarts.moc"
