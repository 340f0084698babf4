#ifndef CSETTINGSSTORE_H
#define CSETTINGSSTORE_H

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// Settings by section and key, kept in a JSON file that is read when first needed and replaced as a whole at every change.
/// What this version does not know stays in the file. A file that cannot be understood is kept beside the new one as "<name>.unreadable".
class CSettingsStore
{
public:
    /// The file from now on; empty: memory alone. Forgets what was read.
    void setFile(const QString& strFile);
    QString file() const { return m_strFile; }

    /// Undefined where the store holds nothing.
    QJsonValue value(const QString& strSection, const QString& strKey);
    /// Stores, or with an undefined value removes, and writes the file if that changed anything.
    void setValue(const QString& strSection, const QString& strKey, const QJsonValue& objValue);

private:
    void load();
    void save();

    QString m_strFile;          ///< empty: memory alone
    QJsonObject m_objRoot;      ///< {"version": 1, section: {key: value}}
    bool m_bLoaded = false;     ///< m_objRoot stands for the file
    bool m_bUnreadable = false; ///< the file holds what could not be understood
};

#endif
