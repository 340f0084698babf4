#include "BatchRun.h"

#include "BatchTables.h"
#include "ChildSetup.h"
#include "OrmFileWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace
{
constexpr int kLockWaitMs = 200;
constexpr int kEndLimitMs = 10'000;    ///< from the request to end to force
constexpr int kMaxErrorBytes = 65'536; ///< of what a study has to say
constexpr int kMaxLines = 1000;        ///< of it
const char* const kProgram = "ormcompare: ";

/// A child that ends with this program.
class CStudyProcess : public QProcess
{
public:
    explicit CStudyProcess(QObject* pParent) : QProcess(pParent), m_nParent(::getpid()) {}

protected:
    void setupChildProcess() override { ChildSetup::endWithParent(m_nParent); }

private:
    pid_t m_nParent;
};

bool holdsSequences(const QString& strFolder)
{
    return QDirIterator(strFolder, {QStringLiteral("Sequence*.txt")}, QDir::Files, QDirIterator::Subdirectories).hasNext();
}

QString duration(qint64 nSeconds)
{
    if (nSeconds < 60)
    {
        return QStringLiteral("%1 s").arg(nSeconds);
    }
    return nSeconds < 3600 ? QStringLiteral("%1 min").arg((nSeconds + 30) / 60)
                           : QStringLiteral("%1 h %2 min").arg(nSeconds / 3600).arg(nSeconds % 3600 / 60);
}
} // namespace

CBatchRun::CBatchRun(const SCompareOptions& options)
    : m_options(options), m_objLock(options.m_strOutFolder + QStringLiteral("/.ormcompare.lock"))
{
    m_objLock.setStaleLockTime(0);
}

CBatchRun::~CBatchRun() = default;

bool CBatchRun::run()
{
    if (!begin())
    {
        return false;
    }
    findStudies();
    m_objClock.start();
    QEventLoop loop;
    startSome();
    while (m_nRunning > 0)
    {
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    if (m_bStopped)
    {
        fail(QStringLiteral("Stopped: %1 of %2 studies are not done.").arg(m_lstToMake.size() - m_nMade).arg(m_lstStudies.size()));
        return false;
    }
    sumUp();
    return m_lstReasons.isEmpty();
}

bool CBatchRun::begin()
{
    if (!QFileInfo(m_options.m_strRoot).isDir())
    {
        fail(QStringLiteral("%1 is no folder.").arg(m_options.m_strRoot));
    }
    else if (!QDir().mkpath(m_options.m_strOutFolder))
    {
        fail(QStringLiteral("The folder %1 cannot be made.").arg(m_options.m_strOutFolder));
    }
    else if (!m_objLock.tryLock(kLockWaitMs))
    {
        fail(m_objLock.error() == QLockFile::LockFailedError
                 ? QStringLiteral("Another run is writing to %1; wait for its end.").arg(m_options.m_strOutFolder)
                 : QStringLiteral("The folder %1 cannot be written to.").arg(m_options.m_strOutFolder));
    }
    return m_lstReasons.isEmpty();
}

CStudyFolder CBatchRun::folderOf(const SStudy& study) const
{
    return CStudyFolder(QDir(m_options.m_strOutFolder).absoluteFilePath(study.m_strName));
}

void CBatchRun::findStudies()
{
    const QStringList lstArguments = CompareOptions::contentArguments(m_options);
    const QFileInfoList lstFolders = QDir(m_options.m_strRoot).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& folder : lstFolders)
    {
        QCoreApplication::processEvents();
        if (m_bStopped)
        {
            return;
        }
        if (!holdsSequences(folder.filePath()))
        {
            ++m_nOther;
            continue;
        }
        const SStudy study{folder.fileName(), folder.absoluteFilePath(), StudyFiles::fingerprint({folder.filePath()}, lstArguments)};
        if (!folderOf(study).isUpToDate(study.m_strFingerprint))
        {
            m_lstToMake.append(m_lstStudies.size());
        }
        m_lstStudies.append(study);
    }
    if (m_lstStudies.isEmpty())
    {
        fail(QStringLiteral("No folder in %1 holds sequences.").arg(m_options.m_strRoot));
    }
}

void CBatchRun::startSome()
{
    while (!m_bStopped && m_nRunning < m_options.m_nJobs && m_nNext < m_lstToMake.size())
    {
        start(m_lstToMake.at(m_nNext++));
    }
}

void CBatchRun::start(int nStudy)
{
    const SStudy& study = m_lstStudies.at(nStudy);
    auto* pProcess = new CStudyProcess(this);
    pProcess->setStandardInputFile(QProcess::nullDevice());
    pProcess->setStandardOutputFile(QProcess::nullDevice());
    connect(pProcess, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this, nStudy, pProcess] { finish(nStudy, *pProcess); });
    connect(pProcess, &QProcess::errorOccurred, this,
            [this, nStudy, pProcess](QProcess::ProcessError error)
            {
                if (error == QProcess::FailedToStart)
                {
                    finish(nStudy, *pProcess);
                }
            });
    ++m_nRunning;
    pProcess->start(QStringLiteral("/proc/self/exe"),
                    CompareOptions::contentArguments(m_options) +
                        QStringList{QStringLiteral("--quiet"),
                                    QStringLiteral("--out=") + QDir(m_options.m_strOutFolder).absoluteFilePath(study.m_strName),
                                    QStringLiteral("--"), study.m_strFolder});
}

void CBatchRun::finish(int nStudy, QProcess& process)
{
    const SStudy& study = m_lstStudies.at(nStudy);
    --m_nRunning;
    process.deleteLater();
    const bool bStarted = process.error() != QProcess::FailedToStart;
    const bool bEnded = bStarted && process.exitStatus() == QProcess::NormalExit && (process.exitCode() == 0 || process.exitCode() == 1);
    if (bEnded && process.exitCode() == 0)
    {
        ++m_nMade;
        progress(study, QStringLiteral("done"));
    }
    else if (!m_bStopped)
    {
        ++m_nFailed;
        if (!bEnded)
        {
            // What lies there is of older inputs, or half of the new ones.
            folderOf(study).forget();
            fail(bStarted ? QStringLiteral("%1: the program ended early, with %2 %3.")
                                .arg(study.m_strName,
                                     process.exitStatus() == QProcess::CrashExit ? QStringLiteral("signal") : QStringLiteral("code"))
                                .arg(process.exitCode())
                          : QStringLiteral("%1: the program could not be started: %2.").arg(study.m_strName, process.errorString()));
        }
        told(study, process.readAllStandardError().left(kMaxErrorBytes));
        progress(study, QStringLiteral("failed"));
    }
    else
    {
        tidy(study);
    }
    startSome();
}

void CBatchRun::tidy(const SStudy& study) const
{
    // Beginning takes away what an earlier run left unfinished; the old files stay as they were.
    CStudyFolder folder = folderOf(study);
    if (folder.begin().isEmpty())
    {
        folder.abandon();
    }
}

void CBatchRun::told(const SStudy& study, const QByteArray& aErrors)
{
    int nLines = 0;
    for (const QByteArray& aLine : aErrors.split('\n'))
    {
        if (aLine.startsWith(kProgram) && ++nLines <= kMaxLines)
        {
            fail(QStringLiteral("%1: %2").arg(study.m_strName, QString::fromLocal8Bit(aLine.mid(static_cast<int>(qstrlen(kProgram))))));
        }
    }
}

void CBatchRun::progress(const SStudy& study, const QString& strOutcome)
{
    if (m_options.m_bQuiet)
    {
        return;
    }
    const int nEnded = m_nMade + m_nFailed;
    const int nLeft = m_lstToMake.size() - nEnded;
    const qint64 nSecondsLeft = m_objClock.elapsed() * nLeft / nEnded / 1000;
    const QString strLeft = nLeft > 0 ? QStringLiteral(", about %1 left").arg(duration(nSecondsLeft)) : QString();
    std::printf("[%d/%d] %s: %s%s\n", nEnded, m_lstToMake.size(), qPrintable(CommandLine::oneLine(study.m_strName)), qPrintable(strOutcome),
                qPrintable(strLeft));
    std::fflush(stdout);
}

void CBatchRun::sumUp()
{
    writeTable(QStringLiteral("all.csv"), StudyFiles::table());
    writeTable(StudyFiles::growthTable(), StudyFiles::growthTable());
    if (!m_options.m_bQuiet)
    {
        std::printf("%d studies: %d made, %d up to date, %d failed", m_lstStudies.size(), m_nMade, m_lstStudies.size() - m_lstToMake.size(),
                    m_nFailed);
        std::printf(m_nOther == 0 ? "\n" : "; %d other folders hold no sequence\n", m_nOther);
        std::fflush(stdout);
    }
}

void CBatchRun::writeTable(const QString& strName, const QString& strFile)
{
    QVector<SStudyTable> lstTables;
    for (const SStudy& study : qAsConst(m_lstStudies))
    {
        QFile file(QDir(m_options.m_strOutFolder).filePath(study.m_strName) + QLatin1Char('/') + strFile);
        if (folderOf(study).isOf(study.m_strFingerprint) && file.open(QIODevice::ReadOnly))
        {
            lstTables.append({study.m_strName, file.readAll()});
        }
    }
    QStringList lstStrange;
    const QByteArray aAll = BatchTables::joined(lstTables, lstStrange);
    for (const QString& strStudy : qAsConst(lstStrange))
    {
        fail(QStringLiteral("%1: its %2 has other columns than the others and was left out.").arg(strStudy, strFile));
    }
    const QString strAll = QDir(m_options.m_strOutFolder).filePath(strName);
    if (aAll.isEmpty())
    {
        QFile::remove(strAll);
        return;
    }
    const QString strReason = OrmFileWriter::replace(strAll, aAll);
    if (!strReason.isEmpty())
    {
        fail(QStringLiteral("%1 cannot be written: %2.").arg(strAll, strReason));
    }
}

void CBatchRun::stop()
{
    if (m_bStopped)
    {
        return;
    }
    m_bStopped = true;
    for (auto* pProcess : findChildren<QProcess*>())
    {
        pProcess->terminate();
        QTimer::singleShot(kEndLimitMs, pProcess, &QProcess::kill);
    }
}
