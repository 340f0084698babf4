#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

/// A folder of its own for files of a test.
class TestFiles
{
public:
    bool isValid() const { return m_objFolder.isValid(); }
    QString folder() const { return m_objFolder.path(); }
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }

    /// Writes the file anew and returns its path; a null string if that failed. (Some file systems wait for the disk when an old file is
    /// overwritten.)
    QString write(const QString& strName, const QByteArray& baContent) const
    {
        QFile objFile(path(strName));
        objFile.remove();
        if (!objFile.open(QIODevice::WriteOnly) || objFile.write(baContent) != baContent.size())
            return QString();
        return objFile.fileName();
    }

private:
    QTemporaryDir m_objFolder;
};
