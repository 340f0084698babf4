#include "COrmPluginManager.h"
#include "COrmTool.h"
#include "COrmToolPluginBase.h"
#include "InstalledTree.h"
#include "OrmTestMain.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QTemporaryDir>

/// What `cmake --install` leaves, after it was moved to another place.
class TestInstalled : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void programsRun_data() { everyProgram(); }
    void programsRun();
    void manualPagesTellEveryOption_data() { everyProgram(); }
    void manualPagesTellEveryOption();
    void completionOffersEveryOption_data() { everyProgram(); }
    void completionOffersEveryOption();
    void aStudyIsMadeAndCompared();
    void theDesktopKnowsIt();
    void aResultHasATypeOfItsOwn();
    void aToolOfOnesOwnIsBuiltAndLoaded();
    void nobodyElseMayWriteWhereToolsAre();

private:
    static void everyProgram();
    QString installed(const QString& strPath) const { return m_strPrefix + QLatin1Char('/') + strPath; }
    /// Options that begin with two dashes, as the program's help lists them.
    QStringList options(const QString& strProgram) const;

    QTemporaryDir m_objFolder;
    QString m_strPrefix;
};

void TestInstalled::everyProgram()
{
    QTest::addColumn<QString>("program");
    for (const QString& strName : filesOf(QStringLiteral(ORM_BINARY_DIR "/bin")))
        QTest::newRow(qPrintable(strName)) << strName;
}

QStringList TestInstalled::options(const QString& strProgram) const
{
    const SRun sRun = run(installed(QStringLiteral("bin/") + strProgram), {QStringLiteral("--help")});
    QStringList lstOptions;
    const QRegularExpression reOption(QStringLiteral("^ +(?:-\\w, )?(--[a-z-]+)"), QRegularExpression::MultilineOption);
    for (auto it = reOption.globalMatch(sRun.m_strOut); it.hasNext();)
        lstOptions.append(it.next().captured(1));
    return lstOptions;
}

void TestInstalled::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    const QString strFirst = m_objFolder.filePath(QStringLiteral("first"));
    const SRun sRun =
        run(QStringLiteral("cmake"), {QStringLiteral("--install"), QStringLiteral(ORM_BINARY_DIR), QStringLiteral("--prefix"), strFirst});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    m_strPrefix = m_objFolder.filePath(QStringLiteral("another place"));
    QVERIFY(QDir().rename(strFirst, m_strPrefix));
    QCOMPARE(filesOf(installed(QStringLiteral("bin"))), filesOf(QStringLiteral(ORM_BINARY_DIR "/bin")));
}

void TestInstalled::programsRun()
{
    QFETCH(QString, program);
    const SRun sRun = run(installed(QStringLiteral("bin/") + program), {QStringLiteral("--version")});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    QVERIFY2(sRun.m_strOut.contains(QRegularExpression(QStringLiteral("^\\w+ \\d+\\.\\d+\\.\\d+"))), qPrintable(sRun.m_strOut));
}

void TestInstalled::manualPagesTellEveryOption()
{
    QFETCH(QString, program);
    const SRun sRun = run(QStringLiteral("zcat"), {installed(QStringLiteral("share/man/man1/%1.1.gz").arg(program))});
    QCOMPARE(sRun.m_nExit, 0);
    QString strPage = sRun.m_strOut;
    strPage.remove(QLatin1Char('\\'));
    const QStringList lstOptions = options(program);
    QVERIFY(lstOptions.contains(QStringLiteral("--version")));
    for (const QString& strOption : lstOptions)
        QVERIFY2(strPage.contains(strOption), qPrintable(strOption));
}

void TestInstalled::completionOffersEveryOption()
{
    QFETCH(QString, program);
    const QString strScript =
        QStringLiteral(". /usr/share/bash-completion/bash_completion; . \"$1\"; COMP_WORDS=(%1 --); COMP_CWORD=1; "
                       "COMP_LINE='%1 --'; COMP_POINT=${#COMP_LINE}; _ormelle %1 -- %1; printf '%s\\n' \"${COMPREPLY[@]}\"")
            .arg(program);
    const SRun sRun = run(QStringLiteral("bash"),
                          {QStringLiteral("-c"), strScript, QStringLiteral("bash"),
                           installed(QStringLiteral("share/bash-completion/completions/") + program)},
                          {{QStringLiteral("PATH"), installed(QStringLiteral("bin")) + QStringLiteral(":/usr/bin:/bin")}});
    const QStringList lstOffered = sRun.m_strOut.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& strOption : options(program))
        QVERIFY2(lstOffered.contains(strOption), qPrintable(strOption + QStringLiteral(" is missing in: ") + sRun.m_strOut));
}

void TestInstalled::aStudyIsMadeAndCompared()
{
    const QString strStudy = m_objFolder.filePath(QStringLiteral("study"));
    const QString strReport = m_objFolder.filePath(QStringLiteral("report.json"));
    SRun sRun = run(installed(QStringLiteral("bin/ormphantom")),
                    {strStudy, QStringLiteral("--timepoints"), QStringLiteral("2"), QStringLiteral("--kind"), QStringLiteral("SOLA"),
                     QStringLiteral("--vertices"), QStringLiteral("300"), QStringLiteral("--voxel-size"), QStringLiteral("3")});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    sRun = run(installed(QStringLiteral("bin/ormcompare")),
               {strStudy, QStringLiteral("--load"), QStringLiteral("SOLA *mm"), QStringLiteral("--report"), strReport});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    QFile objReport(strReport);
    QVERIFY(objReport.open(QIODevice::ReadOnly));
    QCOMPARE(QJsonDocument::fromJson(objReport.readAll())[QStringLiteral("results")].toArray().size(), 2);
}

void TestInstalled::theDesktopKnowsIt()
{
    const QString strEntry = installed(QStringLiteral("share/applications/org.ormelle.Ormelle.desktop"));
    SRun sRun = run(QStringLiteral("desktop-file-validate"), {strEntry});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    sRun = run(QStringLiteral("appstreamcli"), {QStringLiteral("validate"), QStringLiteral("--no-net"),
                                                installed(QStringLiteral("share/metainfo/org.ormelle.Ormelle.metainfo.xml"))});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    QVERIFY(QFile::exists(installed(QStringLiteral("share/icons/hicolor/scalable/apps/org.ormelle.Ormelle.svg"))));
}

void TestInstalled::aResultHasATypeOfItsOwn()
{
    // Beside the types of the system, as in /usr/share.
    const QString strTypes = installed(QStringLiteral("share/mime/packages/"));
    QVERIFY(QFile::copy(QStringLiteral("/usr/share/mime/packages/freedesktop.org.xml"), strTypes + QStringLiteral("freedesktop.org.xml")));
    const SRun sRun = run(QStringLiteral("update-mime-database"), {installed(QStringLiteral("share/mime"))});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(installed(QStringLiteral("share"))));
    const QMimeDatabase objTypes;
    const QString strResult = QStringLiteral("application/x-ormelle-result+xml");
    const QString strXml = QStringLiteral("application/xml");
    QCOMPARE(objTypes.mimeTypeForFile(QStringLiteral("SOLA_1.xml"), QMimeDatabase::MatchExtension).name(), strResult);
    QCOMPARE(objTypes.mimeTypeForFile(QStringLiteral("other.xml"), QMimeDatabase::MatchExtension).name(), strXml);
    QCOMPARE(objTypes.mimeTypeForData("<?xml version=\"1.0\"?>\n<Ormelle.Result Version=\"2.0\">").name(), strResult);
    QCOMPARE(objTypes.mimeTypeForData("<?xml version=\"1.0\"?>\n<Other.Result/>").name(), strXml);
}

void TestInstalled::aToolOfOnesOwnIsBuiltAndLoaded()
{
    const QString strBuild = m_objFolder.filePath(QStringLiteral("build"));
    SRun sRun = run(QStringLiteral("cmake"), {QStringLiteral("-S"), installed(QStringLiteral("share/doc/ormelle-dev/examples/tool-plugin")),
                                              QStringLiteral("-B"), strBuild, QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_strPrefix});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    sRun = run(QStringLiteral("cmake"), {QStringLiteral("--build"), strBuild});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    sRun = run(QStringLiteral("cmake"), {QStringLiteral("--install"), strBuild});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));

    COrmPluginManager objManager;
    objManager.loadFolder(installed(QStringLiteral("lib/ormelle/Plugins")));
    QCOMPARE(objManager.refusals(), QStringList());
    QVERIFY(objManager.tool(QStringLiteral("Longitudinal Study")) != nullptr);
    COrmTool* pTool = objManager.tool(QStringLiteral("Sequence Counter"));
    QVERIFY(pTool != nullptr);
    QVERIFY(QMetaObject::invokeMethod(pTool->plugin(), "onSignalSequenceAdded", Q_ARG(COrmSequenceDataset*, nullptr)));
    QVERIFY(pTool->use());
    const QWidgetList lstWindows = QApplication::topLevelWidgets();
    const auto it = std::find_if(lstWindows.cbegin(), lstWindows.cend(),
                                 [](const QWidget* p) { return p->windowTitle() == QLatin1String("Sequence Counter"); });
    QVERIFY(it != lstWindows.cend());
    QVERIFY((*it)->isVisible());
    QCOMPARE(qobject_cast<QLabel*>(*it)->text(), QStringLiteral("Open sequences: 1"));
}

void TestInstalled::nobodyElseMayWriteWhereToolsAre()
{
    const QFile::Permissions eOthers = QFile::WriteGroup | QFile::WriteOther;
    const QString strFolder = installed(QStringLiteral("lib/ormelle/Plugins"));
    QVERIFY((QFile::permissions(strFolder) & eOthers) == 0);
    const QStringList lstFiles = filesOf(strFolder);
    QVERIFY(!lstFiles.isEmpty());
    for (const QString& strFile : lstFiles)
        QVERIFY2((QFile::permissions(strFolder + QLatin1Char('/') + strFile) & eOthers) == 0, qPrintable(strFile));
}

ORM_TEST_MAIN(TestInstalled)
#include "tst_installed.moc"
