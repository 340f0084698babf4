#pragma once

#include "CSettingsStore.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What the main window remembers from one run to the next, in a file beside the preferences that is kept as safely as they are. With
/// the preferences kept in memory alone, nothing is read or written here either.
class COrmHostSettings
{
public:
    static constexpr int s_nMaxRecent = 10;

    /// The file in use; empty: none.
    static QString file();

    QByteArray value(const QString& strKey) const;
    void setValue(const QString& strKey, const QByteArray& arrValue);
    /// Values set from here on are written together by the matching release().
    void hold() { store().hold(); }
    void release() { store().release(); }

    /// Folders that were opened last, the latest first.
    QStringList recentFolders() const;
    void addRecentFolder(const QString& strFolder);
    void setRecentFolders(const QStringList& lstFolders);
    void clearRecentFolders();

    /// The code of the language that the user chose for the windows; empty: the system's.
    QString language() const;
    void setLanguage(const QString& strCode);

private:
    CSettingsStore& store() const;
    mutable CSettingsStore m_objStore; ///< follows the place of the preferences
};
