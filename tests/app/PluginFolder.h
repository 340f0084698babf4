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
    /// Puts something there that must not be loaded: a good library damaged in a way that is named, something that is no file, or a test
    /// library. The names are those of the table in tst_plugins.
    void addBad(const QString& strName, const QString& strKind, QByteArray arrGood) const;
    static void setMode(const QString& strPath, unsigned nMode);

private:
    QTemporaryDir m_objRoot;
};

inline void CPluginFolder::setMode(const QString& strPath, unsigned nMode)
{
    QCOMPARE(chmod(QFile::encodeName(strPath).constData(), nMode), 0);
}

inline void CPluginFolder::addBad(const QString& strName, const QString& strKind, QByteArray arrGood) const
{
    const QString strFile = file(strName);
    QVERIFY(arrGood.size() > 1000);
    if (strKind == QLatin1String("text"))
        add(strName, "This is not a library.\n");
    else if (strKind == QLatin1String("empty"))
        add(strName, QByteArray());
    else if (strKind == QLatin1String("one byte"))
        add(strName, "\x7f");
    else if (strKind == QLatin1String("cut"))
        add(strName, arrGood.left(arrGood.size() / 2));
    else if (strKind == QLatin1String("cut page"))
        add(strName, arrGood.left(4096));
    else if (strKind == QLatin1String("cut end"))
        add(strName, arrGood.left(arrGood.size() - 1));
    else if (strKind == QLatin1String("cut head"))
        add(strName, arrGood.left(60));
    else if (strKind == QLatin1String("other machine"))
    {
        arrGood[18] = char(arrGood.at(18) == char(0xb7) ? 0x3e : 0xb7);
        add(strName, arrGood);
    }
    else if (strKind == QLatin1String("32 bits"))
    {
        arrGood[4] = 1;
        add(strName, arrGood);
    }
    else if (strKind == QLatin1String("Qt 6"))
    {
        // The description begins with a mark and has the major version two bytes behind it.
        const int nMark = arrGood.indexOf("QTMETADATA !");
        QVERIFY(nMark > 0);
        QCOMPARE(int(arrGood.at(nMark + 13)), QT_VERSION_MAJOR);
        arrGood[nMark + 13] = 6;
        add(strName, arrGood);
    }
    else if (strKind == QLatin1String("noise"))
    {
        for (int nByte = 64; nByte < arrGood.size(); ++nByte)
            arrGood[nByte] = char((nByte * 2654435761U) >> 24);
        add(strName, arrGood);
    }
    else if (strKind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(strFile));
    else if (strKind == QLatin1String("link"))
    {
        add(QStringLiteral("aside"), arrGood);
        QVERIFY(QFile::link(file(QStringLiteral("aside")), strFile));
    }
    else if (strKind == QLatin1String("device link"))
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), strFile));
    else if (strKind == QLatin1String("dangling"))
        QVERIFY(QFile::link(QStringLiteral("/nowhere/at/all.so"), strFile));
    else if (strKind == QLatin1String("fifo"))
        QCOMPARE(mkfifo(QFile::encodeName(strFile).constData(), 0600), 0);
    else if (strKind.endsWith(QLatin1String("writable")))
    {
        add(strName, arrGood);
        setMode(strFile, strKind.startsWith(QLatin1String("world")) ? 0602 : 0620);
    }
    else
        add(strName, library(strKind));
}
