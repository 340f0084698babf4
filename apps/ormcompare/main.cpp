#include "BatchRun.h"
#include "CompareOptions.h"
#include "CompareRun.h"
#include "PictureReader.h"
#include "StopSignals.h"
#include "StudyFiles.h"
#include "VirtualDisplay.h"

#include "CSOLAView.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <langinfo.h>
#include <memory>
#include <optional>
#include <unistd.h>

namespace
{
constexpr int kSignalBase = 128; ///< what a shell adds to the number of the signal that ended a program

/// Jobs of batch systems often run without a locale, where names of files are ASCII alone. Takes UTF-8 then, as most file names are.
void leaveAscii()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(::nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0)
    {
        qputenv(qEnvironmentVariableIsEmpty("LC_ALL") ? "LC_CTYPE" : "LC_ALL", "C.UTF-8");
    }
}

/// Compares every study below a folder.
int runBatch(const SCompareOptions& options, int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CBatchRun batch(options);
    const CStopSignals stopSignals([&batch](int) { QMetaObject::invokeMethod(&batch, &CBatchRun::stop, Qt::QueuedConnection); });
    batch.run();
    return CommandLine::tell(batch.reasons());
}

/// Opens the window and does what the options ask for. @return the reasons why something was not done
QStringList runWindow(const SCompareOptions& options, const std::optional<SPictureState>& like, CVirtualDisplay& display, int argc,
                      char* argv[])
{
    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling);
    CSOLAView::setDefaultFormat();
    const QApplication application(argc, argv);
    display.connected();
    std::setlocale(LC_NUMERIC, "C");
    const std::unique_ptr<CCompareRun> pRun = like ? std::make_unique<CCompareRun>(options, *like) : std::make_unique<CCompareRun>(options);
    pRun->run();
    return pRun->reasons();
}

/// The options with the usual files of a study, where the folder takes new ones.
SCompareOptions withUsualFiles(SCompareOptions options, const CStudyFolder& folder)
{
    options.m_bUsualFiles = true;
    options.m_strViewFile = folder.newFile(StudyFiles::figure());
    options.m_strTableFile = folder.newFile(StudyFiles::table());
    options.m_lstGrowthFiles = QStringList{folder.newFile(StudyFiles::growthTable()), folder.newFile(StudyFiles::growthPicture())};
    for (const int nKind : {0, 1})
    {
        for (int nMeasure = 0; nMeasure < StudyFiles::s_nMeasures; ++nMeasure)
        {
            options.m_lstPlots.append({nKind, nMeasure, folder.newFile(StudyFiles::plot(nKind, nMeasure))});
        }
    }
    return options;
}

/// Compares the folders as one study, into a folder of its own.
int runStudy(const SCompareOptions& options, CVirtualDisplay& display, int argc, char* argv[])
{
    CStudyFolder folder(options.m_strOutFolder);
    const CStopSignals stopSignals(
        [&folder, &display](int nSignal)
        {
            folder.abandon();
            display.connected();
            ::_exit(kSignalBase + nSignal);
        });
    const QString strWrong = folder.begin();
    if (!strWrong.isEmpty())
    {
        return CommandLine::tell({strWrong});
    }
    const QString strFingerprint = StudyFiles::fingerprint(options.m_lstFolders, CompareOptions::contentArguments(options));
    QStringList lstReasons = runWindow(withUsualFiles(options, folder), std::nullopt, display, argc, argv);
    const QString strNotKept = folder.commit(strFingerprint, lstReasons.isEmpty());
    if (!strNotKept.isEmpty())
    {
        lstReasons.append(strNotKept);
    }
    return CommandLine::tell(lstReasons);
}
} // namespace

int main(int argc, char* argv[])
{
    leaveAscii();
    QStringList lstArguments;
    for (int nArgument = 0; nArgument < argc; ++nArgument)
    {
        lstArguments.append(QString::fromLocal8Bit(argv[nArgument]));
    }
    CommandLine::introduce(QStringLiteral("ormcompare"));

    // Usage is looked at before a display is needed.
    SCompareOptions options;
    QString strWrong = CompareOptions::read(lstArguments, options);
    const auto pForHelp = options.m_bHelp ? std::make_unique<QCoreApplication>(argc, argv) : nullptr;
    if (const std::optional<int> nExit = CommandLine::answer(strWrong, options, CompareOptions::help))
    {
        return *nExit;
    }
    if (!options.m_strRoot.isEmpty())
    {
        return runBatch(options, argc, argv);
    }

    std::optional<SPictureState> like;
    if (!options.m_strLike.isEmpty())
    {
        like.emplace();
        strWrong = PictureReader::fromFile(options.m_strLike, *like);
        if (strWrong.isEmpty())
        {
            strWrong = CompareOptions::takeLook(like->m_lstLook, options);
            options.m_lstKeys = like->m_lstResults;
            options.m_lstTried = like->m_lstRefused;
        }
        if (!strWrong.isEmpty())
        {
            return CommandLine::tell({strWrong});
        }
    }
    CVirtualDisplay display;
    strWrong = CVirtualDisplay::isNeeded() ? display.start() : QString();
    if (!strWrong.isEmpty())
    {
        return CommandLine::tell({strWrong});
    }
    return options.m_strOutFolder.isEmpty() ? CommandLine::tell(runWindow(options, like, display, argc, argv))
                                            : runStudy(options, display, argc, argv);
}
