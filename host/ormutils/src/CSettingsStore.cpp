#include "CSettingsStore.h"

#include "COrmLog.h"
#include "OrmFileWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace
{
constexpr int g_nVersion = 1;
constexpr qint64 g_nMaximumBytes = 1024 * 1024;
} // namespace

void CSettingsStore::setFile(const QString& strFile)
{
    m_strFile = strFile;
    m_objRoot = QJsonObject();
    m_bLoaded = false;
    m_bUnreadable = false;
}

QJsonValue CSettingsStore::value(const QString& strSection, const QString& strKey)
{
    load();
    const QJsonValue objSection = m_objRoot.value(strSection);
    return objSection.isObject() ? objSection.toObject().value(strKey) : QJsonValue(QJsonValue::Undefined);
}

void CSettingsStore::setValue(const QString& strSection, const QString& strKey, const QJsonValue& objValue)
{
    if (value(strSection, strKey) == objValue)
        return;
    QJsonObject objSection = m_objRoot.value(strSection).toObject();
    if (objValue.isUndefined())
        objSection.remove(strKey);
    else
        objSection.insert(strKey, objValue);
    m_objRoot.insert(strSection, objSection);
    save();
}

void CSettingsStore::load()
{
    if (m_bLoaded)
        return;
    m_bLoaded = true;
    const QFileInfo objInfo(m_strFile);
    if (m_strFile.isEmpty() || !objInfo.exists())
        return;
    QString strReason;
    QFile objFile(m_strFile);
    if (!objInfo.isFile())
        strReason = QStringLiteral("not a regular file");
    else if (objInfo.size() > g_nMaximumBytes)
        strReason = QStringLiteral("more than %1 bytes").arg(g_nMaximumBytes);
    else if (!objFile.open(QIODevice::ReadOnly))
        strReason = objFile.errorString();
    else
    {
        QJsonParseError objError;
        const QJsonDocument objDocument = QJsonDocument::fromJson(objFile.read(g_nMaximumBytes), &objError);
        if (objDocument.isObject())
            m_objRoot = objDocument.object();
        else
            strReason = QStringLiteral("offset %1: %2").arg(objError.offset).arg(objError.errorString());
    }
    m_bUnreadable = !strReason.isEmpty();
    if (m_bUnreadable)
        ORM_LOG(2, QStringLiteral("Preferences %1 cannot be read, defaults are used: %2").arg(m_strFile, strReason));
}

void CSettingsStore::save()
{
    if (m_strFile.isEmpty())
        return;
    const QFileInfo objInfo(m_strFile);
    if (m_bUnreadable && objInfo.isFile())
    {
        const QString strAside = m_strFile + QStringLiteral(".unreadable");
        QFile::remove(strAside);
        if (!QFile::rename(m_strFile, strAside))
        {
            ORM_LOG(2, QStringLiteral("Preferences %1 are not written: what is there cannot be put aside.").arg(m_strFile));
            return;
        }
    }
    m_bUnreadable = false;
    if (!m_objRoot.contains(QStringLiteral("version")))
        m_objRoot.insert(QStringLiteral("version"), g_nVersion);
    if (!QDir().mkpath(objInfo.absolutePath()))
    {
        ORM_LOG(2, QStringLiteral("Preferences %1 cannot be written: their folder cannot be made.").arg(m_strFile));
        return;
    }
    const QString strReason = OrmFileWriter::replace(m_strFile, QJsonDocument(m_objRoot).toJson());
    if (!strReason.isEmpty())
        ORM_LOG(2, QStringLiteral("Preferences %1 cannot be written: %2").arg(m_strFile, strReason));
}
