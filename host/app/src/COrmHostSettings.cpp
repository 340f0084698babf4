#include "COrmHostSettings.h"

#include "COrmLog.h"
#include "COrmPreference.h"

#include <QFileInfo>
#include <QSettings>

namespace
{
const QString s_strRecentKey = QStringLiteral("recentFolders");
}

QString COrmHostSettings::file()
{
    const QString strStore = COrmPreference::getStore();
    return strStore.isEmpty() ? QString() : QFileInfo(strStore).absolutePath() + QStringLiteral("/window.ini");
}

QByteArray COrmHostSettings::value(const QString& strKey) const
{
    const QString strFile = file();
    return strFile.isEmpty() ? QByteArray() : QSettings(strFile, QSettings::IniFormat).value(strKey).toByteArray();
}

void COrmHostSettings::setValue(const QString& strKey, const QByteArray& arrValue)
{
    const QString strFile = file();
    if (strFile.isEmpty())
        return;
    QSettings objSettings(strFile, QSettings::IniFormat);
    objSettings.setValue(strKey, arrValue);
    objSettings.sync();
    if (objSettings.status() != QSettings::NoError)
        ORM_LOG(2, QStringLiteral("%1 could not be written.").arg(strFile));
}

void COrmHostSettings::store(const QString& strKey, const QStringList& lstTexts)
{
    m_lstRecent = lstTexts;
    const QString strFile = file();
    if (strFile.isEmpty())
        return;
    QSettings objSettings(strFile, QSettings::IniFormat);
    objSettings.setValue(strKey, lstTexts);
    objSettings.sync();
    if (objSettings.status() != QSettings::NoError)
        ORM_LOG(2, QStringLiteral("%1 could not be written.").arg(strFile));
}

QStringList COrmHostSettings::recentFolders() const
{
    const QString strFile = file();
    const QStringList lstStored =
        strFile.isEmpty() ? m_lstRecent : QSettings(strFile, QSettings::IniFormat).value(s_strRecentKey).toStringList();
    return lstStored.mid(0, s_nMaxRecent);
}

void COrmHostSettings::addRecentFolder(const QString& strFolder)
{
    QStringList lstFolders = recentFolders();
    lstFolders.removeAll(strFolder);
    lstFolders.prepend(strFolder);
    store(s_strRecentKey, lstFolders.mid(0, s_nMaxRecent));
}

void COrmHostSettings::clearRecentFolders()
{
    store(s_strRecentKey, {});
}
