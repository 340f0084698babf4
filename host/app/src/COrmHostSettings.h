#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What the main window remembers from one run to the next, in a file beside the preferences. With the preferences kept in memory
/// alone, nothing is read or written here either.
class COrmHostSettings
{
public:
    static constexpr int s_nMaxRecent = 8;

    /// The file in use; empty: none.
    static QString file();

    QByteArray value(const QString& strKey) const;
    void setValue(const QString& strKey, const QByteArray& arrValue);

    /// Folders that were opened last, the latest first.
    QStringList recentFolders() const;
    void addRecentFolder(const QString& strFolder);
    void clearRecentFolders();

private:
    void store(const QString& strKey, const QStringList& lstTexts);
    QStringList m_lstRecent; ///< in use where there is no file
};
