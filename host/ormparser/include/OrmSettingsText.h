#pragma once

#include "CPLSection.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <deque>

/// The host's settings text: sections in brackets, lines of key=value, comments that begin with '#' or ';'.
///
/// The text is UTF-8, with or without a byte-order mark; lines end in LF, CRLF or CR. Names and values are trimmed of blanks
/// and otherwise taken verbatim: no quotes, no escapes, no lists. Section and key names compare exactly. A section that occurs
/// again continues the first one; a key that occurs again replaces the earlier value in place. Keys before the first section
/// belong to the nameless section "". Any other line is ignored, and the log says where the first one stands.
class OrmSettingsText
{
public:
    /// Reads a file. On failure returns false, has no sections, and says why in lastError() and in the log.
    bool load(const QString& strFile);

    /// Reads a text; @p strPlace is what messages call it.
    bool parse(const QByteArray& baText, const QString& strPlace);

    /// The section of that name, or null. It stays where it is until the next load.
    CPLSection* section(const QString& strName);
    const CPLSection* section(const QString& strName) const;

    int sectionCount() const;
    const CPLSection& sectionAt(int nIndex) const; ///< in file order, from 0
    QStringList sectionNames() const;              ///< in file order

    /// Finds the key in the first section that has it, in file order. Without one returns false and leaves @p strValue.
    bool findInAnySection(const QString& strKey, QString& strValue) const;

    QString lastError() const; ///< empty after a load that succeeded

private:
    bool checkLimits(const QByteArray& baText, int nStart, const QString& strPlace);
    bool refuse(const QString& strPlace, const QString& strReason);
    CPLSection& sectionForName(const QString& strName);

    std::deque<CPLSection> m_lstSections; ///< a deque, since callers keep pointers to sections
    QHash<QString, int> m_mapSectionRows;
    QString m_strLastError;
};
