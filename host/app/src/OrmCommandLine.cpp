#include "OrmCommandLine.h"

#include "COrmUtilityFns.h"
#include "OrmLanguage.h"
#include "OrmVersion.h"

#include <QCommandLineParser>

SCommandLine OrmCommandLine::parse(const QStringList& lstArguments)
{
    const QCommandLineOption objHelp(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption objVersion(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    const QCommandLineOption objTool(QStringLiteral("tool"), QString(), QStringLiteral("NAME"));
    const QCommandLineOption objLanguage(QStringLiteral("language"), QString(), QStringLiteral("CODE"));
    const QCommandLineOption objNoSettings(QStringLiteral("no-settings"));
    const QCommandLineOption objLogFile(QStringLiteral("log-file"), QString(), QStringLiteral("FILE"));
    const QCommandLineOption objReset(QStringLiteral("reset-settings"));
    const QCommandLineOption objDiagnose(QStringLiteral("diagnose"));
    QCommandLineParser objParser;
    objParser.addOptions({objHelp, objVersion, objTool, objLanguage, objNoSettings, objLogFile, objReset, objDiagnose});

    SCommandLine sLine;
    if (!objParser.parse(lstArguments))
        sLine.m_strError = objParser.errorText();
    sLine.m_bHelp = objParser.isSet(objHelp);
    sLine.m_bVersion = objParser.isSet(objVersion);
    sLine.m_bNoSettings = objParser.isSet(objNoSettings);
    sLine.m_bResetSettings = objParser.isSet(objReset);
    sLine.m_bDiagnose = objParser.isSet(objDiagnose);
    sLine.m_strLogFile = objParser.value(objLogFile);
    sLine.m_strTool = objParser.value(objTool);
    sLine.m_strLanguage = objParser.value(objLanguage);
    sLine.m_lstFolders = objParser.positionalArguments();
    if (sLine.m_strError.isEmpty() && objParser.isSet(objTool) && sLine.m_strTool.trimmed().isEmpty())
        sLine.m_strError = QStringLiteral("--tool needs the name of a tool.");
    if (sLine.m_strError.isEmpty() && objParser.values(objTool).size() > 1)
        sLine.m_strError = QStringLiteral("--tool may be given once.");
    if (sLine.m_strError.isEmpty() && objParser.isSet(objLogFile) && sLine.m_strLogFile.isEmpty())
        sLine.m_strError = QStringLiteral("--log-file needs the name of a file.");
    if (sLine.m_strError.isEmpty() && objParser.values(objLogFile).size() > 1)
        sLine.m_strError = QStringLiteral("--log-file may be given once.");
    if (sLine.m_strError.isEmpty() && objParser.isSet(objLanguage) && !OrmLanguage::codes().contains(sLine.m_strLanguage))
        sLine.m_strError = QStringLiteral("--language needs one of %1.").arg(OrmLanguage::codes().join(QStringLiteral(", ")));
    if (sLine.m_strError.isEmpty() && objParser.values(objLanguage).size() > 1)
        sLine.m_strError = QStringLiteral("--language may be given once.");
    if (sLine.m_strError.isEmpty() && sLine.m_bResetSettings && sLine.m_bNoSettings)
        sLine.m_strError = QStringLiteral("--reset-settings and --no-settings cannot be given together.");
    return sLine;
}

QString OrmCommandLine::usage()
{
    return QStringLiteral("Usage: ormelle [--tool NAME] [--language CODE] [OPTION...] [FOLDER...]\n"
                          "       ormelle --diagnose | --reset-settings | --help | --version\n"
                          "\n"
                          "Opens every sequence found under the folders, at any depth.\n"
                          "\n"
                          "  --tool NAME       open that tool once the sequences are open, for instance\n"
                          "                    --tool \"Longitudinal Study\"\n"
                          "  --language CODE   show the windows in that language: %1;\n"
                          "                    without it in the one that is chosen in the preferences,\n"
                          "                    or in the system's\n"
                          "  --no-settings     read and write no settings of the user's\n"
                          "  --log-file FILE   write the log to the end of that file, too\n"
                          "  --diagnose        print what a report of a fault needs, and end\n"
                          "  --reset-settings  put all settings aside, so that the next start finds the\n"
                          "                    defaults; a copy is kept\n"
                          "  -h, --help        print this text\n"
                          "  -v, --version     print version and build\n"
                          "\n"
                          "A display is needed, but for the last four. The options of Qt programs, such as\n"
                          "-platform and -style, work too. QT_LOGGING_RULES=\"orm.*=true\" prints the log.\n")
        .arg(OrmLanguage::codes().join(QStringLiteral(", ")));
}

QString OrmCommandLine::version()
{
    return QStringLiteral("%1 %2, build %3")
        .arg(COrmUtilityFns::getAppName(), QLatin1String(OrmVersion::s_pText), QLatin1String(OrmVersion::s_pBuild));
}

bool OrmCommandLine::wantsTextOnly(const QStringList& lstArguments)
{
    for (const QString& strArgument : lstArguments.mid(1))
    {
        if (strArgument == QLatin1String("--"))
            return false;
        for (const QLatin1String strText : {QLatin1String("-h"), QLatin1String("--help"), QLatin1String("-v"), QLatin1String("--version")})
        {
            if (strArgument == strText)
                return true;
        }
    }
    return false;
}

SCommandLine OrmCommandLine::parseEarly(const QStringList& lstArguments)
{
    SCommandLine sLine;
    const QString strLogFile = QStringLiteral("--log-file");
    for (int nArgument = 1; nArgument < lstArguments.size() && lstArguments.at(nArgument) != QLatin1String("--"); ++nArgument)
    {
        const QString& strArgument = lstArguments.at(nArgument);
        if (strArgument == strLogFile)
            sLine.m_strLogFile = lstArguments.value(++nArgument);
        else if (strArgument.startsWith(strLogFile + QLatin1Char('=')))
            sLine.m_strLogFile = strArgument.mid(strLogFile.size() + 1);
        sLine.m_bDiagnose = sLine.m_bDiagnose || strArgument == QLatin1String("--diagnose");
        sLine.m_bResetSettings = sLine.m_bResetSettings || strArgument == QLatin1String("--reset-settings");
    }
    return sLine;
}
