#include "StudyFiles.h"

#include "OrmFileWriter.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

namespace
{
constexpr qint64 kMaxRecordBytes = 100'000;
const char* const kRecord = ".made.json";
const char* const kLock = ".lock";
const char* const kNew = ".new";
const char* const kKinds[] = {"SOLA", "NOVA"};
const char* const kMeasures[] = {"quantification", "chi2", "voxelsize"};
constexpr int kLockWaitMs = 200;

/// Place, size and time of change of a file, in the order of a hash's pieces.
QByteArray describe(const QString& strRelative, const QByteArray& aPath)
{
    struct stat facts = {};
    const bool bThere = ::stat(aPath.constData(), &facts) == 0;
    return strRelative.toUtf8() + '\0' +
           (bThere ? QByteArray::number(static_cast<qint64>(facts.st_size)) + ' ' +
                         QByteArray::number(static_cast<qint64>(facts.st_mtim.tv_sec)) + '.' +
                         QByteArray::number(static_cast<qint64>(facts.st_mtim.tv_nsec))
                   : QByteArray("gone")) +
           '\0';
}
} // namespace

QString StudyFiles::figure()
{
    return QStringLiteral("figure.png");
}

QString StudyFiles::table()
{
    return QStringLiteral("table.csv");
}

QString StudyFiles::growthTable()
{
    return QStringLiteral("growth.csv");
}

QString StudyFiles::growthPicture()
{
    return QStringLiteral("growth.png");
}

QString StudyFiles::plot(int nKind, int nMeasure)
{
    return QStringLiteral("plot-%1-%2.png").arg(QLatin1String(kKinds[nKind]), QLatin1String(kMeasures[nMeasure]));
}

QStringList StudyFiles::all()
{
    QStringList lstNames{figure(), table(), growthTable(), growthPicture()};
    for (const int nKind : {0, 1})
    {
        for (int nMeasure = 0; nMeasure < s_nMeasures; ++nMeasure)
        {
            lstNames.append(plot(nKind, nMeasure));
        }
    }
    return lstNames;
}

QString StudyFiles::fingerprint(const QStringList& lstFolders, const QStringList& lstArguments)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData((QCoreApplication::applicationVersion() + QChar(QChar::Null) + lstArguments.join(QChar(QChar::Null))).toUtf8());
    for (const QString& strFolder : lstFolders)
    {
        const QString strRoot = QFileInfo(strFolder).canonicalFilePath();
        QStringList lstFiles;
        QDirIterator it(strRoot, QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
        {
            lstFiles.append(it.next());
        }
        std::sort(lstFiles.begin(), lstFiles.end());
        hash.addData("\n", 1);
        for (const QString& strFile : qAsConst(lstFiles))
        {
            hash.addData(describe(strFile.mid(strRoot.size()), QFile::encodeName(strFile)));
        }
    }
    return QString::fromLatin1(hash.result().toHex());
}

CStudyFolder::CStudyFolder(const QString& strFolder) : m_strFolder(strFolder), m_objLock(path(QLatin1String(kLock)))
{
    // A lock of a program that no longer runs is taken over, however young; one of a program that runs never is, however old.
    m_objLock.setStaleLockTime(0);
}

QString CStudyFolder::path(const QString& strName) const
{
    return m_strFolder + QLatin1Char('/') + strName;
}

QString CStudyFolder::newFile(const QString& strName) const
{
    return path(QLatin1String(kNew)) + QLatin1Char('/') + strName;
}

QString CStudyFolder::begin()
{
    const std::lock_guard<std::mutex> guard(m_objGuard);
    if (m_bAbandoned)
    {
        return QStringLiteral("Stopped.");
    }
    if (!QDir().mkpath(m_strFolder))
    {
        return QStringLiteral("The folder %1 cannot be made.").arg(m_strFolder);
    }
    if (!m_objLock.tryLock(kLockWaitMs))
    {
        return m_objLock.error() == QLockFile::LockFailedError
                   ? QStringLiteral("Another run is writing to %1; wait for its end.").arg(m_strFolder)
                   : QStringLiteral("The folder %1 cannot be written to.").arg(m_strFolder);
    }
    discard();
    if (!QDir().mkpath(path(QLatin1String(kNew))))
    {
        return QStringLiteral("The folder %1 cannot be written to.").arg(m_strFolder);
    }
    return {};
}

QString CStudyFolder::commit(const QString& strFingerprint, bool bComplete)
{
    // Without a record the files count as nobody's, so an end at any moment of the following is seen by the next run.
    QFile::remove(path(QLatin1String(kRecord)));
    QString strWrong;
    QJsonObject sizes;
    for (const QString& strName : StudyFiles::all())
    {
        const QFileInfo file(newFile(strName));
        if (!file.exists())
        {
            QFile::remove(path(strName));
            continue;
        }
        sizes.insert(strName, static_cast<double>(file.size()));
        if (std::rename(QFile::encodeName(file.filePath()).constData(), QFile::encodeName(path(strName)).constData()) != 0)
        {
            strWrong = QStringLiteral("%1 cannot be written: %2.").arg(path(strName), QString::fromLocal8Bit(std::strerror(errno)));
        }
    }
    discard();
    if (strWrong.isEmpty())
    {
        const QJsonObject object{{"fingerprint", strFingerprint}, {"complete", bComplete}, {"files", sizes}};
        const QString strReason = OrmFileWriter::replace(path(QLatin1String(kRecord)), QJsonDocument(object).toJson());
        strWrong =
            strReason.isEmpty() ? QString() : QStringLiteral("%1 cannot be written: %2.").arg(path(QLatin1String(kRecord)), strReason);
    }
    return strWrong;
}

void CStudyFolder::discard()
{
    QDir(path(QLatin1String(kNew))).removeRecursively();
}

void CStudyFolder::abandon()
{
    const std::lock_guard<std::mutex> guard(m_objGuard);
    m_bAbandoned = true;
    discard();
    m_objLock.unlock();
}

void CStudyFolder::forget()
{
    if (!m_objLock.tryLock(0))
    {
        return;
    }
    QFile::remove(path(QLatin1String(kRecord)));
    discard();
    for (const QString& strName : StudyFiles::all())
    {
        QFile::remove(path(strName));
    }
    m_objLock.unlock();
}

std::optional<CStudyFolder::SRecord> CStudyFolder::record() const
{
    QFile file(path(QLatin1String(kRecord)));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
    {
        return std::nullopt;
    }
    const QJsonObject object = QJsonDocument::fromJson(file.read(kMaxRecordBytes)).object();
    SRecord record;
    record.m_strFingerprint = object.value(QLatin1String("fingerprint")).toString();
    record.m_bComplete = object.value(QLatin1String("complete")).toBool();
    const QJsonObject sizes = object.value(QLatin1String("files")).toObject();
    record.m_bUnharmed = sizes.contains(StudyFiles::table());
    for (auto it = sizes.constBegin(); it != sizes.constEnd(); ++it)
    {
        const QFileInfo made(path(it.key()));
        record.m_bUnharmed = record.m_bUnharmed && made.isFile() && static_cast<double>(made.size()) == it.value().toDouble(-1.0);
    }
    return record;
}

bool CStudyFolder::isOf(const QString& strFingerprint) const
{
    const std::optional<SRecord> found = record();
    return found && found->m_bUnharmed && found->m_strFingerprint == strFingerprint;
}

bool CStudyFolder::isUpToDate(const QString& strFingerprint) const
{
    const std::optional<SRecord> found = record();
    return found && found->m_bComplete && found->m_bUnharmed && found->m_strFingerprint == strFingerprint;
}
