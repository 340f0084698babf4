#include "PluginFolder.h"
#include "RunningOrmelle.h"

#include <QtTest>

#include <memory>

namespace
{
QStringList linesWith(const QString& strText, const QString& strPart)
{
    return strText.split(QLatin1Char('\n')).filter(strPart);
}
} // namespace

/// The program itself, on displays with and without OpenGL and with Plugins folders of all sorts: it starts, says what is amiss, works
/// as far as it can, and ends.
class TestStartModes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void startsAndWorks_data();
    void startsAndWorks();
    void noDisplayEndsTheProgram();
    void badPluginsLeaveTheTool();
    void untrustedPluginsFolderLeavesTheProgram();

private:
    static QByteArray tool();
    QStringList withTool() const
    {
        return {QStringLiteral("--no-settings"), QStringLiteral("--tool"), QStringLiteral("Longitudinal Study"),
                m_objStudy.filePath(QStringLiteral("study"))};
    }
    QString program() const { return m_pProgramFolder->filePath(QStringLiteral("ormelle")); }

    QTemporaryDir m_objStudy;
    std::unique_ptr<CPluginFolder> m_pPlugins;
    std::unique_ptr<QDir> m_pProgramFolder; ///< the folder with a copy of the program
    std::unique_ptr<CDisplay> m_pWithGLX;
};

QByteArray TestStartModes::tool()
{
    QFile objFile(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray();
}

void TestStartModes::initTestCase()
{
    const QStringList lstSmall = {QStringLiteral("--timepoints"), QStringLiteral("2"),      QStringLiteral("--vertices"),
                                  QStringLiteral("300"),          QStringLiteral("--kind"), QStringLiteral("SOLA")};
    QCOMPARE(QProcess::execute(QStringLiteral(ORM_BINARY_DIR "/bin/ormphantom"), QStringList{m_objStudy.filePath("study")} + lstSmall), 0);
    m_pWithGLX = std::make_unique<CDisplay>(QStringList{QStringLiteral("+extension"), QStringLiteral("GLX")});
    QVERIFY(m_pWithGLX->name().size() > 1);
}

void TestStartModes::init()
{
    m_pPlugins = std::make_unique<CPluginFolder>();
    m_pProgramFolder = std::make_unique<QDir>(QFileInfo(m_pPlugins->path()).path());
    const QString strCopy = m_pProgramFolder->filePath(QStringLiteral("ormelle"));
    QVERIFY(QFile::copy(QStringLiteral(ORM_BINARY_DIR "/bin/ormelle"), strCopy));
    m_pPlugins->add(QStringLiteral("libormlongitudinalstudy.so"), tool());
}

void TestStartModes::startsAndWorks_data()
{
    QTest::addColumn<QStringList>("server");      // options of the X server; none: no server
    QTest::addColumn<QStringList>("environment"); // what else there is about the display
    QTest::addColumn<QString>("amiss");           // what the view's place says; empty: the view is there
    const QStringList lstGLX = {QStringLiteral("+extension"), QStringLiteral("GLX")};
    const QStringList lstNone;
    QTest::newRow("GLX") << lstGLX << lstNone << "";
    // EGL takes over.
    QTest::newRow("a server without GLX") << QStringList{"-extension", "GLX"} << lstNone << "";
    QTest::newRow("no OpenGL wanted") << lstGLX << QStringList{"QT_XCB_GL_INTEGRATION=none"} << "the display gives none";
    QTest::newRow("without a driver") << lstGLX << QStringList{"LIBGL_DRIVERS_PATH=/nonexistent"} << "the display gives none";
    QTest::newRow("an old driver") << lstGLX << QStringList{"MESA_GL_VERSION_OVERRIDE=2.0"} << "the display gives only version 2.0";
    QTest::newRow("offscreen") << lstNone << QStringList{"QT_QPA_PLATFORM=offscreen"} << "the display \"offscreen\" shows none in windows";
    QTest::newRow("minimal") << lstNone << QStringList{"QT_QPA_PLATFORM=minimal"} << "the display \"minimal\" shows none in windows";
}

void TestStartModes::startsAndWorks()
{
    QFETCH(QStringList, server);
    QFETCH(QStringList, environment);
    QFETCH(QString, amiss);
    std::unique_ptr<CDisplay> pDisplay;
    if (!server.isEmpty())
    {
        pDisplay = std::make_unique<CDisplay>(server);
        QVERIFY(pDisplay->name().size() > 1);
        environment.append(QStringLiteral("DISPLAY=") + pDisplay->name());
    }
    CRunningOrmelle objProgram(program(), withTool(), environment);
    const QString strSequences = QStringLiteral("m_pSequenceNameLW");
    const QString strResults = QStringLiteral("m_pResultWidget");
    QTRY_COMPARE_WITH_TIMEOUT(objProgram.rows(strSequences).size(), 2, s_nPatience);
    QTRY_VERIFY_WITH_TIMEOUT(!objProgram.look().isEmpty(), s_nPatience);

    const QString strNotice = objProgram.look().value(QStringLiteral("notice")).toString();
    QCOMPARE(strNotice,
             amiss.isEmpty()
                 ? QString()
                 : QStringLiteral("The 3D view needs OpenGL 2.1 with its fixed functions, but %1.\nEverything else works.").arg(amiss));
    QCOMPARE(objProgram.look().value(QStringLiteral("viewShown")).toBool(), amiss.isEmpty());
    QCOMPARE(objProgram.look().value(QStringLiteral("noticeFillsPlace")).toBool(), !amiss.isEmpty());
    QCOMPARE(linesWith(objProgram.log(), QStringLiteral("The 3D view needs OpenGL")).size(), amiss.isEmpty() ? 0 : 1);

    // What works without the view does: a result is chosen and loaded.
    QVERIFY(objProgram.ask({QStringLiteral("pick"), strSequences, objProgram.rows(strSequences).first()}).toBool());
    QTRY_VERIFY_WITH_TIMEOUT(!objProgram.rows(strResults).isEmpty(), s_nPatience);
    QVERIFY(objProgram.ask({QStringLiteral("pick"), strResults, objProgram.rows(strResults).first()}).toBool());
    QVERIFY(objProgram.ask({QStringLiteral("press"), QStringLiteral("m_pLoadButton")}).toBool());

    // What the display shows: letters in the lists and, in the view's place, letters or a shaded surface. One platform shows nothing at
    // all.
    if (objProgram.look().value(QStringLiteral("coloursOfList")).toInt() == -1)
    {
        QVERIFY(environment.contains(QStringLiteral("QT_QPA_PLATFORM=minimal")));
    }
    else
    {
        QTRY_VERIFY_WITH_TIMEOUT(objProgram.look().value(QStringLiteral("coloursOfList")).toInt() > 5, s_nPatience);
        QTRY_VERIFY_WITH_TIMEOUT(objProgram.look().value(QStringLiteral("coloursOfPlace")).toInt() > (amiss.isEmpty() ? 100 : 5),
                                 s_nPatience);
    }
    QCOMPARE(objProgram.close(), 0);
}

void TestStartModes::noDisplayEndsTheProgram()
{
    // Qt itself ends a program that has no display, and says so.
    CRunningOrmelle objProgram(program(), withTool(), {QStringLiteral("QT_QPA_PLATFORM=xcb")});
    QCOMPARE(objProgram.ask({QStringLiteral("look")}), QJsonValue(QJsonValue::Undefined));
    QTRY_VERIFY_WITH_TIMEOUT(!objProgram.running(), s_nPatience);
    QVERIFY(objProgram.complaints().contains(QStringLiteral("no Qt platform plugin could be initialized")));
}

void TestStartModes::badPluginsLeaveTheTool()
{
    const QStringList lstKinds = {"text",         "empty",       "cut",      "cut head",     "other machine",  "32 bits",
                                  "PlainLibrary", "ForeignTool", "NoTool",   "ThrowingTool", "Qt 6",           "folder",
                                  "link",         "device link", "dangling", "fifo",         "world-writable", "noise"};
    QVERIFY(tool().size() > 1000);
    for (const QString& strKind : lstKinds)
    {
        m_pPlugins->addBad(QStringLiteral("bad %1.so").arg(strKind), strKind, tool());
    }
    m_pPlugins->add(QStringLiteral("zz again.so"), tool());
    CRunningOrmelle objProgram(program(), withTool(), {QStringLiteral("DISPLAY=") + m_pWithGLX->name()});
    QTRY_COMPARE_WITH_TIMEOUT(objProgram.rows(QStringLiteral("m_pSequenceNameLW")).size(), 2, s_nPatience);
    const QString strLog = objProgram.log();
    for (const QString& strKind : lstKinds)
    {
        const QStringList lstLines = linesWith(strLog, QStringLiteral("bad %1.so was not loaded: ").arg(strKind));
        QVERIFY2(lstLines.size() == 1 && lstLines.first().endsWith(QLatin1Char('.')), qPrintable(strKind + QLatin1Char('\n') + strLog));
    }
    QCOMPARE(linesWith(strLog, QStringLiteral("was not loaded")).size(), lstKinds.size() + 1);
    QCOMPARE(
        linesWith(strLog, QStringLiteral("zz again.so was not loaded: the same tool is loaded from libormlongitudinalstudy.so already."))
            .size(),
        1);
    QCOMPARE(objProgram.close(), 0);
}

void TestStartModes::untrustedPluginsFolderLeavesTheProgram()
{
    CPluginFolder::setMode(m_pPlugins->path(), 0777);
    CRunningOrmelle objProgram(program(), withTool(), {QStringLiteral("DISPLAY=") + m_pWithGLX->name()});
    QTRY_VERIFY_WITH_TIMEOUT(objProgram.log().contains(QStringLiteral("There is no tool named Longitudinal Study.")), s_nPatience);
    QCOMPARE(linesWith(objProgram.log(), QStringLiteral("Plugins was not loaded: others than its owner may write to it.")).size(), 1);
    QVERIFY(objProgram.look().isEmpty());
    QCOMPARE(objProgram.close(), 0);
}

QTEST_GUILESS_MAIN(TestStartModes)
#include "tst_startmodes.moc"
