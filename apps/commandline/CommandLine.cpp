#include "CommandLine.h"

#include "ResultPattern.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

void CommandLine::addHelpAndVersion(QCommandLineParser& parser)
{
    parser.addOptions({{{"h", "help"}, "Displays this help."}, {"version", "Displays the version."}});
}

QString CommandLine::parse(const QStringList& lstArguments, FnSetUp fnSetUp, QCommandLineParser& parser, SUsualOptions& usual)
{
    fnSetUp(parser);
    if (!parser.parse(lstArguments))
    {
        return parser.errorText();
    }
    usual.m_bHelp = parser.isSet(QStringLiteral("help"));
    usual.m_bVersion = parser.isSet(QStringLiteral("version"));
    usual.m_bQuiet = parser.isSet(QStringLiteral("quiet"));
    return {};
}

std::optional<int> CommandLine::wholeNumber(const QCommandLineParser& parser, const QString& strOption, int nMin, int nMax)
{
    bool bNumber = false;
    const int nValue = parser.value(strOption).toInt(&bNumber);
    return bNumber && nValue >= nMin && nValue <= nMax ? std::optional<int>(nValue) : std::nullopt;
}

QString CommandLine::readPatterns(const QCommandLineParser& parser, QStringList& lstPatterns)
{
    lstPatterns = parser.values(QStringLiteral("load"));
    for (const QString& strPattern : qAsConst(lstPatterns))
    {
        if (!ResultPattern::expression(strPattern).isValid())
        {
            return QStringLiteral("--load %1 is no pattern.").arg(strPattern);
        }
    }
    return {};
}

QString CommandLine::help(FnSetUp fnSetUp)
{
    QCommandLineParser parser;
    fnSetUp(parser);
    return parser.helpText();
}

void CommandLine::introduce(const QString& strProgram)
{
    QCoreApplication::setApplicationName(strProgram);
    QCoreApplication::setApplicationVersion(QStringLiteral(ORM_VERSION));
}

QString CommandLine::oneLine(QString strText)
{
    std::replace_if(
        strText.begin(), strText.end(), [](QChar character) { return character.category() == QChar::Other_Control; }, QLatin1Char('?'));
    return strText;
}

int CommandLine::tell(const QStringList& lstReasons)
{
    for (const QString& strReason : lstReasons)
    {
        std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName()), qPrintable(oneLine(strReason)));
    }
    return lstReasons.isEmpty() ? kDone : kFailed;
}

std::optional<int> CommandLine::answer(const QString& strWrong, const SUsualOptions& usual, QString (*fnHelp)())
{
    const QString strProgram = QCoreApplication::applicationName();
    if (!strWrong.isEmpty())
    {
        tell({strWrong});
        std::fprintf(stderr, "Try %s --help.\n", qPrintable(strProgram));
        return kWrongUsage;
    }
    if (!usual.isTextOnly())
    {
        return std::nullopt;
    }
    std::printf("%s", usual.m_bHelp
                          ? qPrintable(fnHelp())
                          : qPrintable(strProgram + QLatin1Char(' ') + QCoreApplication::applicationVersion() + QLatin1Char('\n')));
    return kDone;
}
