#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
const QString s_strRoot = QStringLiteral(ORM_SOURCE_DIR "/");
const QString s_strTool = s_strRoot + QStringLiteral("Source/Plug-ins/OrmLongitudinalStudyBrowser/Source");
const QString s_strCommon = s_strRoot + QStringLiteral("Source/COMMON/Source");

/// One #include of a source.
struct SInclude
{
    QString m_strName;
    bool m_bAngled = false;
};

QByteArray contents(const QString& strFile)
{
    QFile objFile(strFile);
    if (!objFile.open(QIODevice::ReadOnly))
    {
        qFatal("Cannot read %s", qPrintable(strFile));
    }
    return objFile.readAll();
}

QList<SInclude> includesOf(const QString& strFile)
{
    static const QRegularExpression s_objPattern(QStringLiteral("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"),
                                                 QRegularExpression::MultilineOption);
    QList<SInclude> lstIncludes;
    for (QRegularExpressionMatchIterator it = s_objPattern.globalMatch(QString::fromUtf8(contents(strFile))); it.hasNext();)
    {
        const QRegularExpressionMatch objMatch = it.next();
        lstIncludes.append({objMatch.captured(2), objMatch.captured(1) == QLatin1String("<")});
    }
    return lstIncludes;
}

/// All C++ files below the folders.
QStringList sourcesBelow(const QStringList& lstFolders)
{
    QStringList lstFiles;
    for (const QString& strFolder : lstFolders)
    {
        QDirIterator it(strFolder, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
        {
            lstFiles.append(it.next());
        }
    }
    lstFiles.sort();
    return lstFiles;
}

QStringList hostIncludeFolders()
{
    QStringList lstFolders;
    for (const QFileInfo& objLibrary : QDir(s_strRoot + QStringLiteral("host")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
    {
        const QString strFolder = objLibrary.filePath() + QStringLiteral("/include");
        if (QFileInfo(strFolder).isDir())
        {
            lstFolders.append(strFolder);
        }
    }
    return lstFolders;
}

/// File name to path of the headers in the folders.
QMap<QString, QString> headersIn(const QStringList& lstFolders)
{
    QMap<QString, QString> mapHeaders;
    for (const QString& strFolder : lstFolders)
    {
        for (const QFileInfo& objFile : QDir(strFolder).entryInfoList({QStringLiteral("*.h")}, QDir::Files))
        {
            mapHeaders.insert(objFile.fileName(), objFile.filePath());
        }
    }
    return mapHeaders;
}

/// True for the tool's sources that are about widgets: window, view, plug-in, and what lends the readers the window.
bool isAboutWidgets(const QString& strFileName)
{
    return strFileName.startsWith(QLatin1String("LongitudinalStudyBrowserWnd")) ||
           strFileName.startsWith(QLatin1String("LongitudinalStudyBrowserView")) ||
           strFileName.startsWith(QLatin1String("OrmLongitudinalStudyBrowserPlugin")) ||
           strFileName.startsWith(QLatin1String("PaletteWalkHost")) || strFileName.startsWith(QLatin1String("ShownState"));
}

bool isWidgetHeader(const QString& strName)
{
    static const QString s_strQtWidgets = QLibraryInfo::location(QLibraryInfo::HeadersPath) + QStringLiteral("/QtWidgets/");
    const QString strPlain = strName.section(QLatin1Char('/'), -1);
    return strName.startsWith(QLatin1String("ui_")) || strPlain == QLatin1String("QOpenGLWidget") ||
           QFileInfo::exists(s_strQtWidgets + strPlain);
}

/// The way by which a source reaches a widget's header through the headers of the repository; empty if it does not.
QString wayToWidget(const QString& strFile, const QMap<QString, QString>& mapHeaders, QSet<QString>& setSeen)
{
    for (const SInclude& sInclude : includesOf(strFile))
    {
        if (isWidgetHeader(sInclude.m_strName))
        {
            return sInclude.m_strName;
        }
        const QString strNext = mapHeaders.value(sInclude.m_strName);
        if (!strNext.isEmpty() && !setSeen.contains(strNext))
        {
            setSeen.insert(strNext);
            const QString strWay = wayToWidget(strNext, mapHeaders, setSeen);
            if (!strWay.isEmpty())
            {
                return sInclude.m_strName + QStringLiteral(" > ") + strWay;
            }
        }
    }
    return QString();
}

/// Configures a project with that text behind the repository's own target functions. Returns what CMake says.
QString configure(const QString& strText, bool& bDone)
{
    QTemporaryDir objFolder;
    const QString strProject = objFolder.filePath(QStringLiteral("project"));
    QDir().mkpath(strProject + QStringLiteral("/src"));
    const auto write = [](const QString& strFile, const QString& strContent)
    {
        QFile objFile(strFile);
        if (!objFile.open(QIODevice::WriteOnly) || objFile.write(strContent.toUtf8()) < 0)
        {
            qFatal("Cannot write %s", qPrintable(strFile));
        }
    };
    write(strProject + QStringLiteral("/src/nothing.cpp"), QStringLiteral("int nothing() { return 0; }\n"));
    write(strProject + QStringLiteral("/CMakeLists.txt"),
          QStringLiteral("cmake_minimum_required(VERSION 3.21)\nproject(Levels LANGUAGES CXX)\ninclude(") + s_strRoot +
              QStringLiteral("cmake/OrmTargets.cmake)\n") + strText);
    QProcess objCMake;
    objCMake.setProcessChannelMode(QProcess::MergedChannels);
    objCMake.start(QStringLiteral("cmake"), {QStringLiteral("-G"), QStringLiteral("Ninja"), QStringLiteral("-S"), strProject,
                                             QStringLiteral("-B"), objFolder.filePath(QStringLiteral("build"))});
    if (!objCMake.waitForFinished(120000))
    {
        qFatal("CMake does not end: %s", qPrintable(objCMake.errorString()));
    }
    bDone = objCMake.exitStatus() == QProcess::NormalExit && objCMake.exitCode() == 0;
    QString strOutput = QString::fromUtf8(objCMake.readAll());
    return strOutput.simplified();
}
} // namespace

/// The sources keep to their places: what may include and link what.
class tst_architecture : public QObject
{
    Q_OBJECT

private slots:
    void smallModulesKnowNoWidget_data();
    void smallModulesKnowNoWidget();
    void wayToAWidgetIsFound();
    void hostKnowsNoTool_data();
    void hostKnowsNoTool();
    void toolKnowsTheHostByItsHeaders_data();
    void toolKnowsTheHostByItsHeaders();
    void hostApplicationKnowsToolsByTheirBase();
    void linksGoDownwardsOnly_data();
    void linksGoDownwardsOnly();
    void everyTargetStatesItsLevel();
};

void tst_architecture::smallModulesKnowNoWidget_data()
{
    QTest::addColumn<QString>("strFile");
    int nModules = 0;
    for (const QString& strFile : sourcesBelow({s_strTool}))
    {
        const QString strName = QFileInfo(strFile).fileName();
        if (!isAboutWidgets(strName))
        {
            QTest::newRow(qPrintable(strName)) << strFile;
            ++nModules;
        }
    }
    QVERIFY2(nModules > 10, "The tool's small modules are not where they are looked for");
}

void tst_architecture::smallModulesKnowNoWidget()
{
    QFETCH(QString, strFile);
    const QMap<QString, QString> mapHeaders = headersIn(hostIncludeFolders() + QStringList{s_strTool, s_strCommon});
    QSet<QString> setSeen;
    QCOMPARE(wayToWidget(strFile, mapHeaders, setSeen), QString());
}

void tst_architecture::wayToAWidgetIsFound()
{
    // What the check above looks for is there where widgets are at work.
    const QMap<QString, QString> mapHeaders = headersIn(hostIncludeFolders() + QStringList{s_strTool, s_strCommon});
    QSet<QString> setSeen;
    QVERIFY(wayToWidget(s_strTool + QStringLiteral("/OrmLongitudinalStudyBrowserPlugin.cpp"), mapHeaders, setSeen)
                .contains(QLatin1String(" > ")));
    QVERIFY(isWidgetHeader(QStringLiteral("QListWidget")));
    QVERIFY(isWidgetHeader(QStringLiteral("QtWidgets/QLabel")));
    QVERIFY(isWidgetHeader(QStringLiteral("ui_LongitudinalStudyBrowserDlg.h")));
    QVERIFY(!isWidgetHeader(QStringLiteral("QImage")));
    QVERIFY(!isWidgetHeader(QStringLiteral("ColorRangeMath.h")));
}

void tst_architecture::hostKnowsNoTool_data()
{
    QTest::addColumn<QString>("strFile");
    const QString strHost = s_strRoot + QStringLiteral("host/");
    for (const QString& strFile : sourcesBelow({strHost}))
    {
        QTest::newRow(qPrintable(strFile.mid(strHost.size()))) << strFile;
    }
}

void tst_architecture::hostKnowsNoTool()
{
    QFETCH(QString, strFile);
    const QMap<QString, QString> mapToolHeaders = headersIn({s_strTool, s_strCommon});
    QVERIFY(mapToolHeaders.contains(QStringLiteral("LongitudinalStudyBrowserWnd.h")));
    for (const SInclude& sInclude : includesOf(strFile))
    {
        const QString strName = QFileInfo(sInclude.m_strName).fileName();
        QVERIFY2(!mapToolHeaders.contains(strName), qPrintable(strName));
        QVERIFY2(!sInclude.m_strName.contains(QLatin1String("Plug-ins")), qPrintable(sInclude.m_strName));
    }
}

void tst_architecture::toolKnowsTheHostByItsHeaders_data()
{
    QTest::addColumn<QString>("strFile");
    for (const QString& strFile : sourcesBelow({s_strTool, s_strCommon}))
    {
        QTest::newRow(qPrintable(QFileInfo(strFile).fileName())) << strFile;
    }
}

void tst_architecture::toolKnowsTheHostByItsHeaders()
{
    QFETCH(QString, strFile);
    const QMap<QString, QString> mapAllowed = headersIn(hostIncludeFolders() + QStringList{s_strTool, s_strCommon});
    for (const SInclude& sInclude : includesOf(strFile))
    {
        if (!sInclude.m_bAngled)
        {
            const bool bForm = sInclude.m_strName == QLatin1String("ui_LongitudinalStudyBrowserDlg.h");
            QVERIFY2(bForm || mapAllowed.contains(sInclude.m_strName), qPrintable(sInclude.m_strName));
        }
        else
        {
            // Angled names are those of the system's libraries.
            QVERIFY2(!sInclude.m_strName.startsWith(QLatin1String("COrm")), qPrintable(sInclude.m_strName));
        }
    }
}

void tst_architecture::hostApplicationKnowsToolsByTheirBase()
{
    for (const QString& strFile : sourcesBelow({s_strRoot + QStringLiteral("host/app")}))
    {
        const QByteArray byText = contents(strFile);
        QVERIFY2(!byText.contains("CLongitudinalStudyBrowser"), qPrintable(strFile));
        QVERIFY2(!byText.contains("COrmLongitudinalStudyBrowserPlugin"), qPrintable(strFile));
    }
}

void tst_architecture::linksGoDownwardsOnly_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QString>("strRefusal");
    const QString strLow = QStringLiteral("orm_add_library(ormlow LEVEL 1 DEPENDS)\n");
    QTest::newRow("down") << strLow + QStringLiteral("orm_add_library(ormhigh LEVEL 2 DEPENDS ormlow)\n") << QString();
    QTest::newRow("down, as a program") << strLow + QStringLiteral("orm_add_program(program LEVEL 2 SUMMARY text DEPENDS ormlow)\n")
                                        << QString();
    QTest::newRow("up") << QStringLiteral("orm_add_library(ormhigh LEVEL 2 DEPENDS)\norm_add_library(ormlow LEVEL 1 DEPENDS ormhigh)\n")
                        << QStringLiteral("ormlow (level 1) must not link ormhigh (level 2): links go downwards only");
    QTest::newRow("up, in private") << QStringLiteral("orm_add_library(ormhigh LEVEL 2 DEPENDS)\n"
                                                      "orm_add_library(ormlow LEVEL 1 DEPENDS PRIVATE_DEPENDS ormhigh)\n")
                                    << QStringLiteral("ormlow (level 1) must not link ormhigh (level 2): links go downwards only");
    QTest::newRow("sideways") << strLow + QStringLiteral("orm_add_library(ormother LEVEL 1 DEPENDS ormlow)\n")
                              << QStringLiteral("ormother (level 1) must not link ormlow (level 1): links go downwards only");
    QTest::newRow("ahead") << QStringLiteral("orm_add_library(ormlow LEVEL 1 DEPENDS ormlater)\n")
                           << QStringLiteral("ormlow links ormlater, which is not known yet");
}

void tst_architecture::linksGoDownwardsOnly()
{
    QFETCH(QString, strText);
    QFETCH(QString, strRefusal);
    bool bDone = false;
    const QString strOutput = configure(strText, bDone);
    QVERIFY2(bDone == strRefusal.isEmpty(), qPrintable(strOutput));
    QVERIFY2(strOutput.contains(strRefusal), qPrintable(strOutput));
}

void tst_architecture::everyTargetStatesItsLevel()
{
    // Libraries and programs are made by the functions that check levels, and by nothing else but the plug-in's module, which
    // calls the same check by hand.
    static const QRegularExpression s_objOther(
        QStringLiteral("^\\s*(add_library|add_executable|target_link_libraries)\\s*\\(\\s*(\\S+)([^)]*)"),
        QRegularExpression::MultilineOption);
    for (const QString& strFolder : {QStringLiteral("host"), QStringLiteral("Source"), QStringLiteral("apps")})
    {
        QDirIterator it(s_strRoot + strFolder, {QStringLiteral("CMakeLists.txt")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
        {
            const QString strText = QString::fromUtf8(contents(it.next()));
            for (QRegularExpressionMatchIterator itMatch = s_objOther.globalMatch(strText); itMatch.hasNext();)
            {
                const QRegularExpressionMatch objMatch = itMatch.next();
                if (objMatch.captured(1) == QLatin1String("target_link_libraries"))
                {
                    QVERIFY2(!objMatch.captured(3).contains(QRegularExpression(QStringLiteral("\\b(orm\\w+|longitudinalstudy)\\b"))),
                             qPrintable(it.filePath() + QStringLiteral(": ") + objMatch.captured(0)));
                    continue;
                }
                const QString strTarget = objMatch.captured(2);
                QVERIFY2(strText.contains(QRegularExpression(QStringLiteral("_orm_setup\\(%1 \\d+\\)").arg(strTarget))),
                         qPrintable(it.filePath() + QStringLiteral(": ") + strTarget));
            }
        }
    }
}

QTEST_GUILESS_MAIN(tst_architecture)
#include "tst_architecture.moc"
