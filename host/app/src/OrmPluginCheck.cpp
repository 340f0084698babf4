#include "OrmPluginCheck.h"

#include <QCoreApplication>
#include <QFile>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmPluginCheck)
};

const QLatin1String s_strIdentifierStart("tdl.ormelle.");

/// Why others could change what stands there; empty: they cannot.
QString trustRefusal(const struct stat& sStat)
{
    if (sStat.st_uid != 0 && sStat.st_uid != geteuid())
        return CText::tr("it belongs to another user.");
    if ((sStat.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return CText::tr("others than its owner may write to it.");
    return {};
}

QString systemReason()
{
    return QString::fromLocal8Bit(std::strerror(errno)) + QLatin1Char('.');
}
} // namespace

QString OrmPluginCheck::folderRefusal(const QString& strFolder)
{
    struct stat sStat = {};
    if (lstat(QFile::encodeName(strFolder).constData(), &sStat) != 0)
        return systemReason();
    if (S_ISLNK(sStat.st_mode))
        return CText::tr("it is a link.");
    if (!S_ISDIR(sStat.st_mode))
        return CText::tr("it is not a folder.");
    return trustRefusal(sStat);
}

QString OrmPluginCheck::fileRefusal(const QString& strFile)
{
    struct stat sStat = {};
    if (lstat(QFile::encodeName(strFile).constData(), &sStat) != 0)
        return systemReason();
    if (S_ISLNK(sStat.st_mode))
        return CText::tr("it is a link.");
    if (!S_ISREG(sStat.st_mode))
        return CText::tr("it is not a regular file.");
    if (sStat.st_size == 0)
        return CText::tr("it is empty.");
    return trustRefusal(sStat);
}

QString OrmPluginCheck::identifier(const QJsonObject& objMetaData)
{
    return objMetaData.value(QStringLiteral("IID")).toString();
}

QString OrmPluginCheck::metaDataRefusal(const QJsonObject& objMetaData, const QString& strError)
{
    if (objMetaData.isEmpty())
        return CText::tr("it holds no tool (%1).").arg(strError.isEmpty() ? CText::tr("no description found") : strError);
    const int nVersion = objMetaData.value(QStringLiteral("version")).toInt();
    const int nMajor = (nVersion >> 16) & 0xff;
    if (nMajor != QT_VERSION_MAJOR)
        return CText::tr("it was built with Qt %1, and this host runs on Qt %2.").arg(nMajor).arg(QT_VERSION_MAJOR);
    const QString strIdentifier = identifier(objMetaData);
    if (!strIdentifier.startsWith(s_strIdentifierStart))
        return CText::tr("it was made for another host (it calls itself \"%1\").").arg(strIdentifier);
    return {};
}

bool OrmPluginCheck::isLibraryName(const QString& strFileName)
{
    return strFileName.endsWith(QLatin1String(".so"));
}
