#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

/// A Plugins folder of a test's own, that only its owner may write to, with copies of the test libraries.
class CPluginFolder
{
public:
    CPluginFolder()
    {
        QDir(m_objRoot.path()).mkdir(QStringLiteral("Plugins"));
        setMode(path(), 0700);
    }

    QString path() const { return m_objRoot.filePath(QStringLiteral("Plugins")); }
    QString file(const QString& strName) const { return path() + QLatin1Char('/') + strName; }

    /// The bytes of a test library, for instance "RecordingTool".
    static QByteArray library(const QString& strName)
    {
        QFile objFile(QStringLiteral(ORM_BINARY_DIR "/tests/testplugins/%1.so").arg(strName));
        return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray();
    }
    /// Writes a file that only its owner may write to.
    void add(const QString& strName, const QByteArray& arrContent) const
    {
        QFile objFile(file(strName));
        QVERIFY2(objFile.open(QIODevice::WriteOnly), qPrintable(objFile.fileName()));
        QCOMPARE(objFile.write(arrContent), qint64(arrContent.size()));
        objFile.close();
        setMode(file(strName), 0644);
    }
    /// Copies a test library under the name of its own, or another one.
    void addLibrary(const QString& strName, const QString& strAs = QString()) const
    {
        const QByteArray arrLibrary = library(strName);
        QVERIFY2(arrLibrary.size() > 1000, qPrintable(strName));
        add((strAs.isEmpty() ? strName : strAs) + QStringLiteral(".so"), arrLibrary);
    }
    static void setMode(const QString& strPath, unsigned nMode);

private:
    QTemporaryDir m_objRoot;
};

inline void CPluginFolder::setMode(const QString& strPath, unsigned nMode)
{
    QCOMPARE(chmod(QFile::encodeName(strPath).constData(), nMode), 0);
}
