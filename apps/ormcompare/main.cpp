#include "CompareOptions.h"
#include "CompareRun.h"

#include "CSOLAView.h"

#include <QApplication>

#include <clocale>
#include <cstdio>

namespace
{
constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;
} // namespace

int main(int argc, char* argv[])
{
    QStringList lstArguments;
    for (int nArgument = 0; nArgument < argc; ++nArgument)
    {
        lstArguments.append(QString::fromLocal8Bit(argv[nArgument]));
    }
    QCoreApplication::setApplicationName(QStringLiteral("ormcompare"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORM_VERSION));

    // Usage is looked at before a display is needed.
    SCompareOptions options;
    const QString strWrong = CompareOptions::read(lstArguments, options);
    if (!strWrong.isEmpty())
    {
        std::fprintf(stderr, "ormcompare: %s\nTry ormcompare --help.\n", qPrintable(strWrong));
        return kWrongUsage;
    }
    if (options.m_bHelp)
    {
        const QCoreApplication application(argc, argv); // the text begins with the program's name, which only it knows
        std::printf("%s", qPrintable(CompareOptions::help()));
        return kDone;
    }
    if (options.m_bVersion)
    {
        std::printf("ormcompare %s\n", ORM_VERSION);
        return kDone;
    }

    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling);
    CSOLAView::setDefaultFormat();
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");

    CCompareRun run(options);
    if (run.run())
    {
        return kDone;
    }
    for (const QString& strReason : run.reasons())
    {
        std::fprintf(stderr, "ormcompare: %s\n", qPrintable(strReason));
    }
    return kFailed;
}
