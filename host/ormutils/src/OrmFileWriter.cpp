#include "OrmFileWriter.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <unistd.h>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmFileWriter)
};

QString reasonOf(const QFileDevice& objFile)
{
    return objFile.error() == QFileDevice::ResourceError ? OrmFileWriter::diskIsFull() : objFile.errorString();
}

/// Waits until the bytes are on the disk: some file systems notice only then that there is no room. False with errno set.
bool isOnDisk(const QFileDevice& objFile)
{
    // A file system that knows no such wait has not failed.
    return ::fsync(objFile.handle()) == 0 || errno == EINVAL || errno == ENOSYS;
}

/// False with the file's error set. A disk that fills up takes a part of the bytes first, and tells the reason only for the rest.
bool writeAll(QFileDevice& objFile, const QByteArray& baContent)
{
    qint64 nWritten = 0;
    while (nWritten < baContent.size())
    {
        const qint64 nNow = objFile.write(baContent.constData() + nWritten, baContent.size() - nWritten);
        if (nNow <= 0)
            return false;
        nWritten += nNow;
    }
    return true;
}
} // namespace

QString OrmFileWriter::replace(const QString& strFile, const QByteArray& baContent)
{
    // A device that is named for a file would be replaced like one, where the user may do that.
    const QFileInfo objOld(strFile);
    if (objOld.exists() && !objOld.isFile())
        return CText::tr("not a regular file");
    QSaveFile objFile(strFile);
    // Without a buffer: what its last piece met would be told by nobody.
    if (!objFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return objFile.errorString();
    // Whoever returns before commit() takes the new file away with him.
    if (!writeAll(objFile, baContent))
        return reasonOf(objFile);
    if (!isOnDisk(objFile))
        return qt_error_string(errno);
    return objFile.commit() ? QString() : reasonOf(objFile);
}

QString OrmFileWriter::diskIsFull()
{
    return CText::tr("the disk is full");
}
