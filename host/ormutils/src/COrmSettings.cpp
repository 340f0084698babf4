#include "COrmSettings.h"

#include "CSettingsStore.h"

#include <QStandardPaths>
#include <QVariant>

namespace
{
const QString g_strFolders = QStringLiteral("folders");

/// An empty path removes the entry instead of storing it.
QJsonValue entry(const QString& strPath)
{
    return strPath.isEmpty() ? QJsonValue(QJsonValue::Undefined) : QJsonValue(strPath);
}

QString path(const QJsonValue& objValue)
{
    const QString strPath = objValue.toString();
    return strPath.isEmpty() ? QString() : strPath;
}
} // namespace

COrmSettings::COrmSettings(CSettingsStore& objStore) : m_objStore(objStore) {}

QString COrmSettings::getBrowsePath() const
{
    return path(m_objStore.value(g_strFolders, QStringLiteral("browse")));
}

void COrmSettings::setBrowsePath(const QString& strPath)
{
    m_objStore.setValue(g_strFolders, QStringLiteral("browse"), entry(strPath));
}

QString COrmSettings::getRecentFilePath() const
{
    if (m_strRecentFilePath.isEmpty())
        return QVariant::fromValue(QStandardPaths::DesktopLocation).value<QString>();
    return m_strRecentFilePath;
}

void COrmSettings::setRecentFilePath(const QString& strPath)
{
    m_strRecentFilePath = strPath;
    setExportPath(strPath);
}

QString COrmSettings::getExportPath() const
{
    return path(m_objStore.value(g_strFolders, QStringLiteral("export")));
}

void COrmSettings::setExportPath(const QString& strPath)
{
    if (keepExportPath())
        m_objStore.setValue(g_strFolders, QStringLiteral("export"), entry(strPath));
}

bool COrmSettings::keepExportPath() const
{
    return m_objStore.value(g_strFolders, QStringLiteral("keepExport")).toBool(false);
}

void COrmSettings::setKeepExportPath(bool bKeep)
{
    m_objStore.setValue(g_strFolders, QStringLiteral("keepExport"), bKeep);
}

void COrmSettings::forgetRecentFilePath()
{
    m_strRecentFilePath.clear();
}
