#ifndef CORMSETTINGS_H
#define CORMSETTINGS_H

#include <QString>

class CSettingsStore;

/// Folders that the application remembers. The browse path, the export path and the flag are kept in the store of COrmPreference;
/// the recent file path lives for the process only.
class COrmSettings
{
public:
    explicit COrmSettings(CSettingsStore& objStore);

    /// Folder from which to browse for sequences; a null string if the settings hold none.
    QString getBrowsePath() const;
    /// An empty path removes the entry.
    void setBrowsePath(const QString& strPath);

    /// Folder of the last export. While the object holds none this is the *name* of the desktop's enumerator as QVariant gives it,
    /// not the desktop's folder: a first save dialog then opens in the current folder.
    QString getRecentFilePath() const;
    /// Stores the path in the object and calls setExportPath() with it.
    void setRecentFilePath(const QString& strPath);

    /// Folder of exports that outlives the process; a null string if the settings hold none.
    QString getExportPath() const;
    /// Stores the path if keepExportPath() is on, otherwise does nothing.
    void setExportPath(const QString& strPath);
    /// Whether setExportPath() stores; off by default.
    bool keepExportPath() const;
    void setKeepExportPath(bool bKeep);

    /// Forgets what the object alone holds (a new store starts with no recent path).
    void forgetRecentFilePath();

private:
    CSettingsStore& m_objStore;
    QString m_strRecentFilePath; ///< folder of the last export of this process; empty: none yet
};

#endif
