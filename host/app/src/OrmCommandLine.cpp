#include "OrmCommandLine.h"

#include "COrmUtilityFns.h"
#include "OrmVersion.h"

#include <QCommandLineParser>

SCommandLine OrmCommandLine::parse(const QStringList& lstArguments)
{
    const QCommandLineOption objHelp(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption objVersion(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    const QCommandLineOption objTool(QStringLiteral("tool"), QString(), QStringLiteral("NAME"));
    const QCommandLineOption objNoSettings(QStringLiteral("no-settings"));
    QCommandLineParser objParser;
    objParser.addOptions({objHelp, objVersion, objTool, objNoSettings});

    SCommandLine sLine;
    if (!objParser.parse(lstArguments))
        sLine.m_strError = objParser.errorText();
    sLine.m_bHelp = objParser.isSet(objHelp);
    sLine.m_bVersion = objParser.isSet(objVersion);
    sLine.m_bNoSettings = objParser.isSet(objNoSettings);
    sLine.m_strTool = objParser.value(objTool);
    sLine.m_lstFolders = objParser.positionalArguments();
    if (sLine.m_strError.isEmpty() && objParser.isSet(objTool) && sLine.m_strTool.trimmed().isEmpty())
        sLine.m_strError = QStringLiteral("--tool needs the name of a tool.");
    if (sLine.m_strError.isEmpty() && objParser.values(objTool).size() > 1)
        sLine.m_strError = QStringLiteral("--tool may be given once.");
    return sLine;
}

QString OrmCommandLine::usage()
{
    return QStringLiteral("Usage: ormelle [--tool NAME] [--no-settings] [FOLDER...]\n"
                          "\n"
                          "Opens every sequence found under the folders, at any depth.\n"
                          "\n"
                          "  --tool NAME     open that tool once the sequences are open, for instance\n"
                          "                  --tool \"Longitudinal Study\"\n"
                          "  --no-settings   read and write no settings of the user's\n"
                          "  -h, --help      print this text\n"
                          "  -v, --version   print the version\n"
                          "\n"
                          "A display is needed. The options of Qt programs, such as -platform and -style, work too.\n");
}

QString OrmCommandLine::version()
{
    return COrmUtilityFns::getAppName() + QLatin1Char(' ') + QLatin1String(OrmVersion::s_pText);
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
