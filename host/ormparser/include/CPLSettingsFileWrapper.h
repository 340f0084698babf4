#pragma once

#include "OrmSettingsText.h"

#include <QString>
#include <QStringList>

/// Reader of an index of saved results: a settings text with one section per result. The tags say which keys hold the display
/// name and the file name of a result; they may be set before or after the file is read.
///
/// A result without a display name, or with an empty one, goes by its section's name if that begins with the automatic menu-name
/// tag (with no such tag set, every section's name does).
class CPLSettingsFileWrapper
{
public:
    CPLSettingsFileWrapper();

    void setAutoMenuNameTag(const QString& strTag);
    void setMenuNameTag(const QString& strTag);
    void setFileNameTag(const QString& strTag);
    void setSettingsFileName(const QString& strFile); ///< full path

    /// Reads the file set by setSettingsFileName(). Returns 0 if it could be read, another value if not; then no result is known.
    int load();
    int load(const QString& strFile); ///< sets the file name and reads it

    /// The display names of the results, in file order, at most OrmDocumentLimits::nListedResults. An index is of one kind, so
    /// @p strKind selects nothing; it appears in messages.
    QStringList getMenuNames(const QString& strKind) const;

    /// The file name of the result with that display name, relative to the folder of the index. The exact name is looked for first,
    /// then, ignoring case, the first like it; of several results with one name the first counts.
    /// Empty if there is none, if the file name is @p strNone, or if it is absolute or leads out of the folder of the index.
    QString getFileNameForMenuName(const QString& strMenuName, const QString& strNone) const;

    QString lastError() const; ///< why the last load failed; empty if it did not

private:
    QString menuName(const CPLSection& objSection) const;
    const CPLSection* sectionForMenuName(const QString& strMenuName) const;

    QString m_strAutoMenuNameTag;
    QString m_strMenuNameTag;
    QString m_strFileNameTag;
    QString m_strSettingsFile;
    OrmSettingsText m_objText;
};
