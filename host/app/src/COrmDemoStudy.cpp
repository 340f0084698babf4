#include "COrmDemoStudy.h"

#include "COrmLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>
#include <utility>

namespace
{
constexpr int s_nTimePoints = 5;
constexpr int s_nSequences = 2 * s_nTimePoints; ///< one of each kind at each time point
constexpr int s_nLookMs = 100;                  ///< between two looks at how far the making has come
constexpr int s_nErrorLength = 1000;            ///< characters of the maker's own words

const QString s_strName = QStringLiteral("demo-study");

/// Sequences directly below a folder.
int sequencesIn(const QString& strFolder)
{
    int nSequences = 0;
    QDirIterator it(strFolder, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    while (it.hasNext())
        nSequences += QFileInfo::exists(it.next() + QStringLiteral("/SequenceInfo.txt")) ? 1 : 0;
    return nSequences;
}
} // namespace

COrmDemoStudy::COrmDemoStudy(const QString& strPrograms, const QString& strData, QObject* pParent)
    : QObject(pParent), m_strPrograms(strPrograms), m_strData(strData)
{
    m_objTimer.setInterval(s_nLookMs);
    connect(&m_objTimer, &QTimer::timeout, this, &COrmDemoStudy::count);
}

COrmDemoStudy::COrmDemoStudy(QObject* pParent)
    : COrmDemoStudy(QCoreApplication::applicationDirPath(), QStandardPaths::writableLocation(QStandardPaths::AppDataLocation), pParent)
{
}

COrmDemoStudy::~COrmDemoStudy()
{
    if (m_pProcess == nullptr)
        return;
    m_pProcess->disconnect(this);
    m_pProcess->kill();
    m_pProcess->waitForFinished(1000); // it writes into the folder that goes next
}

QString COrmDemoStudy::existing() const
{
    for (const QString& strFolder : {m_strPrograms + QLatin1Char('/') + s_strName, m_strPrograms + QStringLiteral("/../") + s_strName,
                                     m_strData + QLatin1Char('/') + s_strName})
    {
        if (sequencesIn(strFolder) > 0)
            return QDir::cleanPath(strFolder);
    }
    return {};
}

QString COrmDemoStudy::maker() const
{
    const QFileInfo objProgram(m_strPrograms + QStringLiteral("/ormphantom"));
    return objProgram.isFile() && objProgram.isExecutable() ? objProgram.filePath() : QString();
}

bool COrmDemoStudy::isOffered() const
{
    return !maker().isEmpty() || !existing().isEmpty();
}

void COrmDemoStudy::start()
{
    if (isBusy())
        return;
    const QString strExisting = existing();
    if (!strExisting.isEmpty())
    {
        emit ready(strExisting);
        return;
    }
    const QString strMaker = maker();
    if (strMaker.isEmpty())
    {
        emit failed(tr("There is no demo study, and the program ormphantom that makes one is not in %1. "
                       "Open a study of your own, or install Ormelle again.")
                        .arg(m_strPrograms));
        return;
    }
    // Made under a name of its own: what has the right name is complete.
    QDir().mkpath(m_strData);
    m_pUnfinished = std::make_unique<QTemporaryDir>(m_strData + QLatin1Char('/') + s_strName + QStringLiteral("-XXXXXX"));
    if (!m_pUnfinished->isValid())
    {
        const QString strReason = m_pUnfinished->errorString();
        m_pUnfinished.reset();
        emit failed(tr("The demo study cannot be written to %1 (%2). Make room or give yourself the right to write there, "
                       "or open a study of your own.")
                        .arg(m_strData, strReason));
        return;
    }
    m_pProcess = new QProcess(this);
    m_pProcess->setProcessChannelMode(QProcess::MergedChannels);
    connect(m_pProcess, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &COrmDemoStudy::made);
    connect(m_pProcess, &QProcess::errorOccurred, this,
            [this](QProcess::ProcessError eError)
            {
                if (eError == QProcess::FailedToStart)
                    made();
            });
    emit started();
    emit progress(0, s_nSequences);
    m_objTimer.start();
    m_pProcess->start(strMaker, {QStringLiteral("--timepoints"), QString::number(s_nTimePoints), QStringLiteral("--kind"),
                                 QStringLiteral("both"), m_pUnfinished->filePath(s_strName)});
}

void COrmDemoStudy::cancel()
{
    if (!isBusy())
        return;
    m_pProcess->disconnect(this);
    m_pProcess->kill();
    m_pProcess->waitForFinished(1000);
    finish(QString(), QString());
}

void COrmDemoStudy::count()
{
    if (isBusy())
        emit progress(qMin(sequencesIn(m_pUnfinished->filePath(s_strName)), s_nSequences), s_nSequences);
}

void COrmDemoStudy::made()
{
    const bool bDone =
        m_pProcess->error() != QProcess::FailedToStart && m_pProcess->exitStatus() == QProcess::NormalExit && m_pProcess->exitCode() == 0;
    const QString strFinal = m_strData + QLatin1Char('/') + s_strName;
    if (bDone && (QDir().rename(m_pUnfinished->filePath(s_strName), strFinal) || sequencesIn(strFinal) > 0))
    {
        finish(strFinal, QString());
        return;
    }
    const QString strWords = QString::fromLocal8Bit(m_pProcess->readAll().left(s_nErrorLength)).trimmed();
    finish(QString(), tr("The demo study could not be made in %1: %2\n\nMake room or give yourself the right to write there, "
                         "or open a study of your own.")
                          .arg(m_strData, strWords.isEmpty() ? m_pProcess->errorString() : strWords));
}

void COrmDemoStudy::finish(const QString& strFolder, const QString& strReason)
{
    m_objTimer.stop();
    std::exchange(m_pProcess, nullptr)->deleteLater();
    m_pUnfinished.reset();
    if (!strFolder.isEmpty())
    {
        emit ready(strFolder);
        return;
    }
    if (!strReason.isEmpty())
        ORM_LOG(2, strReason);
    emit failed(strReason);
}
