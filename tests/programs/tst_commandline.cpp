#include "CommandLine.h"
#include "ProgramRun.h"

#include <QtTest>

namespace
{
struct STwoSteps : SUsualOptions
{
    int m_nJobs = 0;
    bool m_bSecond = false;
};

void setUp(QCommandLineParser& parser)
{
    CommandLine::addHelpAndVersion(parser);
    parser.addOptions({{"jobs", "At a time.", "N", "1"}, {"load", "Which.", "PATTERN"}, {"quiet", "Silent."}});
}

QString first(const QCommandLineParser& parser, STwoSteps& options)
{
    const std::optional<int> nJobs = CommandLine::wholeNumber(parser, QStringLiteral("jobs"), 1, 8);
    options.m_nJobs = nJobs.value_or(0);
    return nJobs ? QString() : QStringLiteral("no jobs");
}

QString second(const QCommandLineParser&, STwoSteps& options)
{
    options.m_bSecond = true;
    return {};
}
} // namespace

/// What the programs share of their command lines.
class tst_CommandLine : public QObject
{
    Q_OBJECT

private slots:
    void readersRunInOrder_data();
    void readersRunInOrder();
    void wholeNumbersHaveARange_data();
    void wholeNumbersHaveARange();
    void patternsAreTaken();
    void programsAnswerAlike_data();
    void programsAnswerAlike();
};

void tst_CommandLine::readersRunInOrder_data()
{
    QTest::addColumn<QStringList>("lstArguments");
    QTest::addColumn<QString>("strWrong");
    QTest::addColumn<bool>("bSecond");
    QTest::addColumn<bool>("bHelp");
    QTest::addColumn<bool>("bVersion");
    QTest::newRow("plain") << QStringList{} << "" << true << false << false;
    QTest::newRow("unknown option") << QStringList{"--nonsense"} << "Unknown option 'nonsense'." << false << false << false;
    QTest::newRow("the first finds something wrong") << QStringList{"--jobs", "9"} << "no jobs" << false << false << false;
    QTest::newRow("help") << QStringList{"--jobs", "9", "--help"} << "" << false << true << false;
    QTest::newRow("help in short") << QStringList{"-h"} << "" << false << true << false;
    QTest::newRow("version") << QStringList{"--jobs", "9", "--version"} << "" << false << false << true;
}

void tst_CommandLine::readersRunInOrder()
{
    QFETCH(QStringList, lstArguments);
    STwoSteps options;
    QTEST(CommandLine::read<STwoSteps>(QStringList{"program"} + lstArguments, setUp, {first, second}, options), "strWrong");
    QTEST(options.m_bSecond, "bSecond");
    QTEST(options.m_bHelp, "bHelp");
    QTEST(options.m_bVersion, "bVersion");
    QVERIFY(!options.m_bQuiet);
    QCOMPARE(CommandLine::read<STwoSteps>({"program", "--quiet"}, setUp, {first}, options), QString());
    QVERIFY(options.m_bQuiet);
}

void tst_CommandLine::wholeNumbersHaveARange_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nExpected"); // 0: none
    QTest::newRow("least") << "1" << 1;
    QTest::newRow("most") << "8" << 8;
    QTest::newRow("below") << "0" << 0;
    QTest::newRow("above") << "9" << 0;
    QTest::newRow("negative") << "-3" << 0;
    QTest::newRow("fraction") << "2.0" << 0;
    QTest::newRow("word") << "two" << 0;
    QTest::newRow("nothing") << "" << 0;
    QTest::newRow("more than a number holds") << "4294967298" << 0;
}

void tst_CommandLine::wholeNumbersHaveARange()
{
    QFETCH(QString, strText);
    QCommandLineParser parser;
    SUsualOptions usual;
    QCOMPARE(CommandLine::parse({"program", "--jobs=" + strText}, setUp, parser, usual), QString());
    QTEST(CommandLine::wholeNumber(parser, "jobs", 1, 8).value_or(0), "nExpected");
}

void tst_CommandLine::patternsAreTaken()
{
    QCommandLineParser parser;
    SUsualOptions usual;
    QCOMPARE(CommandLine::parse({"program", "--load", "SOLA *", "--load", "*[1"}, setUp, parser, usual), QString());
    QStringList lstPatterns;
    QCOMPARE(CommandLine::readPatterns(parser, lstPatterns), QString());
    QCOMPARE(lstPatterns, (QStringList{"SOLA *", "*[1"}));
    QCommandLineParser other;
    QCOMPARE(CommandLine::parse({"program", "--load", "[z-a]"}, setUp, other, usual), QString());
    QCOMPARE(CommandLine::readPatterns(other, lstPatterns), QString("--load [z-a] is no pattern."));
}

void tst_CommandLine::programsAnswerAlike_data()
{
    QTest::addColumn<QString>("strProgram");
    QTest::addColumn<QString>("strTry");
    QTest::newRow("ormcompare") << "ormcompare"
                                << "Try ormcompare --help.\n";
    QTest::newRow("ormexport") << "ormexport"
                               << "Try ormexport --help.\n";
    QTest::newRow("ormimport") << "ormimport"
                               << "Try ormimport --help.\n";
    QTest::newRow("ormphantom") << "ormphantom"
                                << "";
}

void tst_CommandLine::programsAnswerAlike()
{
    QFETCH(QString, strProgram);
    QFETCH(QString, strTry);
    const SProgramRun help = runProgram(strProgram, {"--help"});
    QCOMPARE(help.m_nExit, CommandLine::kDone);
    QVERIFY2(help.m_strOut.startsWith("Usage: ") && help.m_strOut.contains('/' + strProgram + " [options]"), qPrintable(help.m_strOut));
    QCOMPARE(help.m_strError, QString());
    const SProgramRun version = runProgram(strProgram, {"--version"});
    QCOMPARE(version.m_nExit, CommandLine::kDone);
    QVERIFY2(QRegularExpression("^" + strProgram + " [0-9]+\\.[0-9]+\\.[0-9]+\n$").match(version.m_strOut).hasMatch(),
             qPrintable(version.m_strOut));
    QCOMPARE(version.m_strError, QString());
    const SProgramRun wrong = runProgram(strProgram, {"--non\nsense"});
    QCOMPARE(wrong.m_nExit, CommandLine::kWrongUsage);
    QCOMPARE(wrong.m_strOut, QString());
    QCOMPARE(wrong.m_strError, strProgram + ": Unknown option 'non?sense'.\n" + strTry);
}

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
