#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A folder of a test's own to write files to, empty at first.
class CTestFolder
{
public:
    QString folder() const { return m_objFolder.path(); }
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    void put(const QString& strName, const QByteArray& aContent) const
    {
        QFile objFile(path(strName));
        if (!objFile.open(QIODevice::WriteOnly) || objFile.write(aContent) != aContent.size())
        {
            qFatal("Cannot write %s", qPrintable(objFile.fileName()));
        }
    }
    /// What a file holds; "(no file)" where there is none.
    QByteArray get(const QString& strName) const
    {
        QFile objFile(path(strName));
        return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArrayLiteral("(no file)");
    }
    /// Everything in it, hidden or not.
    QStringList entries() const
    {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir m_objFolder;
};
