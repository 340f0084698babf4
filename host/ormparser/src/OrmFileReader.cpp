#include "OrmFileReader.h"

#include "COrmLog.h"
#include "COrmProcess.h"
#include "OrmArray.h"
#include "OrmBeneath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmFileReader)
};

constexpr qint64 nChunkBytes = 8388608; ///< read at once, so that the progress display stays alive on a slow disk
constexpr int nMaxInterrupts = 1000;    ///< interruptions in a row without a byte; more are taken for a broken disk

/// A descriptor that is closed with the object.
class CDescriptor
{
public:
    explicit CDescriptor(int nDescriptor) : m_nDescriptor(nDescriptor) {}
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    ~CDescriptor()
    {
        if (m_nDescriptor >= 0)
            close(m_nDescriptor);
    }
    int get() const { return m_nDescriptor; }
    bool isOpen() const { return m_nDescriptor >= 0; }

private:
    int m_nDescriptor;
};

QString notRegular()
{
    return CText::tr("not a regular file");
}

/// Why opening failed. A socket or a device without a driver cannot even be opened, which says nothing to a user.
QString openError(int nError)
{
    if (nError == ENXIO || nError == ENODEV || nError == EISDIR)
        return notRegular();
    if (nError == EXDEV)
        return CText::tr("leads outside the study folder");
    return qt_error_string(nError);
}

QString sizeError(qint64 nBytes, qint64 nMaxBytes)
{
    return CText::tr("too large: %1 bytes, of at most %2").arg(nBytes).arg(nMaxBytes);
}

bool sameFile(const struct stat& objBefore, const struct stat& objAfter)
{
    return objBefore.st_dev == objAfter.st_dev && objBefore.st_ino == objAfter.st_ino && objBefore.st_size == objAfter.st_size &&
           objBefore.st_mtim.tv_sec == objAfter.st_mtim.tv_sec && objBefore.st_mtim.tv_nsec == objAfter.st_mtim.tv_nsec;
}

/// Fills the buffer. Returns an empty text, or why that failed.
QString readAll(int nDescriptor, char* pBuffer, qint64 nBytes)
{
    qint64 nDone = 0;
    int nInterrupts = 0;
    while (nDone < nBytes)
    {
        const ssize_t nRead = ::read(nDescriptor, pBuffer + nDone, static_cast<size_t>(qMin(nChunkBytes, nBytes - nDone)));
        if (nRead > 0)
        {
            nDone += nRead;
            nInterrupts = 0;
            COrmProcess::keepAlive();
        }
        else if (nRead == 0)
        {
            return CText::tr("changed while reading");
        }
        else if (errno != EINTR || ++nInterrupts > nMaxInterrupts)
        {
            return CText::tr("read error: %1").arg(qt_error_string(errno));
        }
    }
    return QString();
}

/// Reads what the descriptor has open. Returns an empty text, or why that failed.
QString readDescriptor(int nDescriptor, QByteArray& baContent, qint64 nMaxBytes)
{
    struct stat objBefore = {};
    if (fstat(nDescriptor, &objBefore) != 0)
        return CText::tr("read error: %1").arg(qt_error_string(errno));
    if (!S_ISREG(objBefore.st_mode))
        return notRegular();
    const qint64 nBytes = objBefore.st_size;
    if (nBytes > qMin(nMaxBytes, OrmDocumentLimits::nFileBytes))
        return sizeError(nBytes, qMin(nMaxBytes, OrmDocumentLimits::nFileBytes));
    try
    {
        QByteArray baRead(static_cast<int>(nBytes), Qt::Uninitialized);
        OrmLargePages::prefer(baRead.data(), nBytes);
        const QString strError = readAll(nDescriptor, baRead.data(), nBytes);
        if (!strError.isEmpty())
            return strError;
        struct stat objAfter = {};
        if (fstat(nDescriptor, &objAfter) != 0)
            return CText::tr("read error: %1").arg(qt_error_string(errno));
        if (!sameFile(objBefore, objAfter))
            return CText::tr("changed while reading");
        baContent = std::move(baRead);
    }
    catch (const std::bad_alloc&)
    {
        return CText::tr("not enough memory (needs %1 MB)").arg(nBytes / 1048576 + 1);
    }
    return QString();
}

bool finish(const QString& strFile, const QString& strReason, QString* pstrError)
{
    if (strReason.isEmpty())
        return true;
    const QString strMessage = QStringLiteral("%1: %2").arg(strFile, strReason);
    ORM_LOG(3, strMessage);
    if (pstrError)
        *pstrError = strMessage;
    return false;
}
} // namespace

namespace OrmFileReader
{
bool read(const QString& strFile, QByteArray& baContent, QString* pstrError, qint64 nMaxBytes)
{
    if (strFile.isEmpty() || strFile.contains(QChar(0)))
        return finish(strFile, CText::tr("no file name"), pstrError);
    // Opened without blocking: the other end of a FIFO may never come.
    const CDescriptor objFile(open(QFile::encodeName(strFile).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!objFile.isOpen())
        return finish(strFile, openError(errno), pstrError);
    return finish(strFile, readDescriptor(objFile.get(), baContent, nMaxBytes), pstrError);
}

bool readBeneath(const QString& strFolder, const QString& strName, QByteArray& baContent, QString* pstrError, qint64 nMaxBytes)
{
    const QString strFile = CText::tr("%1 in %2").arg(strName, strFolder);
    const QString strProblem = OrmBeneath::problemOfName(strName);
    if (!strProblem.isEmpty())
        return finish(strFile, strProblem, pstrError);
    const CDescriptor objFolder(open(QFile::encodeName(strFolder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!objFolder.isOpen())
        return finish(strFile, openError(errno), pstrError);
    const CDescriptor objFile(OrmBeneath::openBeneath(objFolder.get(), QFile::encodeName(strName), O_RDONLY | O_NONBLOCK | O_NOCTTY));
    if (!objFile.isOpen())
        return finish(strFile, openError(errno), pstrError);
    return finish(strFile, readDescriptor(objFile.get(), baContent, nMaxBytes), pstrError);
}

bool isBeneath(const QString& strFolder, const QString& strName, QString* pstrReason)
{
    QString strReason = OrmBeneath::problemOfName(strName);
    if (strReason.isEmpty())
    {
        const CDescriptor objFolder(open(QFile::encodeName(strFolder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (objFolder.isOpen())
        {
            const CDescriptor objFile(OrmBeneath::openBeneath(objFolder.get(), QFile::encodeName(strName), O_PATH));
            // What is missing or not permitted lies inside all the same; reading it tells the rest.
            if (!objFile.isOpen() && (errno == EXDEV || errno == ELOOP))
                strReason = openError(errno);
        }
    }
    if (pstrReason && !strReason.isEmpty())
        *pstrReason = strReason;
    return strReason.isEmpty();
}
} // namespace OrmFileReader
