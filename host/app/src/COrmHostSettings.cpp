#include "COrmHostSettings.h"

#include "COrmPreference.h"

#include <QFileInfo>
#include <QJsonArray>

namespace
{
const QString s_strWindow = QStringLiteral("window");
const QString s_strRecent = QStringLiteral("recent");
const QString s_strFolders = QStringLiteral("folders");
const QString s_strTexts = QStringLiteral("texts");
const QString s_strLanguage = QStringLiteral("language");
} // namespace

QString COrmHostSettings::file()
{
    const QString strStore = COrmPreference::getStore();
    return strStore.isEmpty() ? QString() : QFileInfo(strStore).absolutePath() + QStringLiteral("/window.json");
}

CSettingsStore& COrmHostSettings::store() const
{
    if (const QString strFile = file(); m_objStore.file() != strFile)
        m_objStore.setFile(strFile);
    return m_objStore;
}

QByteArray COrmHostSettings::value(const QString& strKey) const
{
    return QByteArray::fromBase64(store().value(s_strWindow, strKey).toString().toLatin1());
}

void COrmHostSettings::setValue(const QString& strKey, const QByteArray& arrValue)
{
    if (!file().isEmpty())
        store().setValue(s_strWindow, strKey, QString::fromLatin1(arrValue.toBase64()));
}

QStringList COrmHostSettings::recentFolders() const
{
    QStringList lstFolders;
    const QJsonArray lstStored = store().value(s_strRecent, s_strFolders).toArray();
    for (const QJsonValue& objFolder : lstStored)
    {
        if (const QString strFolder = objFolder.toString(); !strFolder.isEmpty() && !lstFolders.contains(strFolder))
            lstFolders.append(strFolder);
        if (lstFolders.size() == s_nMaxRecent)
            break;
    }
    return lstFolders;
}

void COrmHostSettings::addRecentFolder(const QString& strFolder)
{
    QStringList lstFolders = recentFolders();
    lstFolders.removeAll(strFolder);
    lstFolders.prepend(strFolder);
    setRecentFolders(lstFolders);
}

void COrmHostSettings::setRecentFolders(const QStringList& lstFolders)
{
    store().setValue(s_strRecent, s_strFolders, QJsonArray::fromStringList(lstFolders.mid(0, s_nMaxRecent)));
}

void COrmHostSettings::clearRecentFolders()
{
    setRecentFolders({});
}

QString COrmHostSettings::language() const
{
    return store().value(s_strTexts, s_strLanguage).toString();
}

void COrmHostSettings::setLanguage(const QString& strCode)
{
    store().setValue(s_strTexts, s_strLanguage, strCode.isEmpty() ? QJsonValue() : QJsonValue(strCode));
}
