#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>
#include <functional>
#include <memory>

/// Finds out which folders are there without ever waiting for one: each is looked at on a thread of its own, so that a folder on a server
/// that does not answer holds up neither a window nor another folder.
class COrmFolderCheck : public QObject
{
    Q_OBJECT

public:
    using FExists = std::function<bool(const QString& strFolder)>;

    /// @p fnExists is called on other threads; without it the folder is looked for on the disk.
    explicit COrmFolderCheck(FExists fnExists = {}, QObject* pParent = nullptr);
    /// Does not wait for a folder that does not answer.
    ~COrmFolderCheck() override;

    /// Looks at the folders; changed() follows if one is there that was not, or the other way round.
    void check(const QStringList& lstFolders);
    /// Takes a folder for being there until it is looked at.
    void setThere(const QString& strFolder) { m_setThere.insert(strFolder); }
    /// Whether the folder was there when it was last looked at; what was never looked at, or has not answered yet, was not.
    bool isThere(const QString& strFolder) const { return m_setThere.contains(strFolder); }

signals:
    void changed();

private:
    struct SShared;

    void take(const QString& strFolder, bool bThere);

    std::shared_ptr<SShared> m_pShared; ///< with the threads
    FExists m_fnExists;
    QSet<QString> m_setThere;
    QSet<QString> m_setAsked; ///< folders that have not answered yet
};
