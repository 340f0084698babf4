#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <initializer_list>
#include <optional>

/// What every command line may ask for besides the program's own work, or instead of it.
struct SUsualOptions
{
    bool m_bHelp = false;    ///< only the help was asked for
    bool m_bVersion = false; ///< only the version was asked for
    bool m_bQuiet = false;   ///< no progress on the terminal

    bool isTextOnly() const { return m_bHelp || m_bVersion; }
};

/// How the programs read their command lines, what they say, and how they end.
namespace CommandLine
{
/// Exit codes.
constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

/// Tells the parser what the program is for and which options it has.
using FnSetUp = void (*)(QCommandLineParser& parser);

/// Takes the values of some options, their texts being known to the parser. Returns an empty text, or one sentence on what is wrong.
template <typename TOptions>
using FnRead = QString (*)(const QCommandLineParser& parser, TOptions& options);

/// The options -h, --help and --version, which stand before a program's own.
void addHelpAndVersion(QCommandLineParser& parser);

/// Has the parser read the arguments (the program's name first) and takes the usual options. An empty text, or what is wrong.
QString parse(const QStringList& lstArguments, FnSetUp fnSetUp, QCommandLineParser& parser, SUsualOptions& usual);

/// Reads the arguments (the program's name first): the usual options, then, unless a text is all that is asked for, what the readers take,
/// one after the other. Returns an empty text, or one sentence on what is wrong.
template <typename TOptions>
QString read(const QStringList& lstArguments, FnSetUp fnSetUp, std::initializer_list<FnRead<TOptions>> lstReaders, TOptions& options)
{
    QCommandLineParser parser;
    QString strWrong = parse(lstArguments, fnSetUp, parser, options);
    for (const FnRead<TOptions> fnRead : lstReaders)
    {
        if (strWrong.isEmpty() && !options.isTextOnly())
        {
            strWrong = fnRead(parser, options);
        }
    }
    return strWrong;
}

/// The value of an option as a whole number; nothing where it is none, or outside the range.
std::optional<int> wholeNumber(const QCommandLineParser& parser, const QString& strOption, int nMin, int nMax);

/// The patterns that --load gives. An empty text, or which of them is none.
QString readPatterns(const QCommandLineParser& parser, QStringList& lstPatterns);

/// The text that --help prints. An application must be there: the text begins with the program's name, which only it knows.
QString help(FnSetUp fnSetUp);

/// Sets the program's name, with which everything that it says begins, and its version.
void introduce(const QString& strProgram);

/// A text for one line of the terminal: line breaks and other control characters become '?'.
QString oneLine(QString strText);

/// Says on the error output why not everything was done, a line for each reason. Returns the exit code.
int tell(const QStringList& lstReasons);

/// Answers a command line that asks for no work, because it is wrong or because it wants a text. Returns the exit code; nothing where
/// there is work to do.
/// @param fnHelp makes the text that --help prints
std::optional<int> answer(const QString& strWrong, const SUsualOptions& usual, QString (*fnHelp)());
} // namespace CommandLine
