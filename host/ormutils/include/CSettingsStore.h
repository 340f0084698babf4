#ifndef CSETTINGSSTORE_H
#define CSETTINGSSTORE_H

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// Settings by section and key, kept in a JSON file that is read when first needed and replaced as a whole at every change: whatever
/// happens while it is written, the old file or the new one is there. Other processes may use the same file; each change is brought into
/// what the file holds at that moment, so that none undoes another's.
///
/// What this version does not know stays in the file. Before a file of a newer version is changed for the first time, a copy of it is put
/// beside it as "<name>.version-<number>". A file that cannot be understood is put aside as "<name>.unreadable" (or "-2", "-3"...), and
/// one sentence in the log says so. A file that cannot be read stays as it is. A change that cannot be written counts for the process and
/// is tried again with the next one. GUI thread only.
class CSettingsStore
{
public:
    CSettingsStore() = default;
    explicit CSettingsStore(const QString& strFile) : m_strFile(strFile) {}

    /// The file from now on; empty: memory alone. Forgets what was read, and changes that could not be written.
    void setFile(const QString& strFile);
    QString file() const { return m_strFile; }

    /// Undefined where the store holds nothing.
    QJsonValue value(const QString& strSection, const QString& strKey);
    /// Stores, or with an undefined value removes, and writes the file if that changed anything. True if it did.
    bool setValue(const QString& strSection, const QString& strKey, const QJsonValue& objValue);

    /// Changes wait until the matching release(), which writes them at once. Calls may be nested.
    void hold() { ++m_nHeld; }
    void release();

    /// A name beside the file that nothing has yet: the name with the ending, or with "-2", "-3"... behind it. Empty: all are taken.
    static QString freeName(const QString& strFile, const QString& strEnding);

private:
    enum class EState
    {
        eMissing,
        eGood,
        eUnreadable, ///< damaged, or nothing that a store can be
        eOutOfReach  ///< whole perhaps, but the system does not let it be read now
    };
    EState read(QJsonObject& objRoot, QString& strReason) const;
    void load();
    void save();
    QString write();
    bool putAside();
    bool keepCopyOfNewer(const QJsonObject& objRoot);

    QString m_strFile;      ///< empty: memory alone
    QJsonObject m_objRoot;  ///< what this process goes by: {"version": 1, section: {key: value}}
    QJsonObject m_objTodo;  ///< changes that the file does not have yet, by section and key; null: to be removed
    QString m_strComplaint; ///< last reason why the file was not written; empty: it was
    bool m_bLoaded = false; ///< the file was read
    int m_nHeld = 0;
};

#endif
