#pragma once

#include "OrmSettingsText.h"

#include <QString>
#include <QStringList>

/// Reader of a sequence's info file: the sequence ID, what the host shows of it, and the numbers of its clicks.
class CPLSequenceInfo
{
public:
    CPLSequenceInfo();
    virtual ~CPLSequenceInfo();

    /// Reads the file. Returns 0 on success; another value leaves the parser without sections.
    int loadFile(const QString& strFile);

    /// The click numbers: the values of the keys 1 to "Count" of the section "Click Numbers" that are there, in that order.
    /// A "Count" that is no number gives none. The log names what is missing or surplus.
    QStringList getClickNumberList() const;

    bool isSectionPresent(const QString& strSection) const;

    /// The section of that name, or null; valid until the next load.
    CPLSection* operator[](const QString& strSection);
    const CPLSection* section(const QString& strSection) const;

    /// The value of a key; a null string where there is no such key.
    QString value(const QString& strSection, const QString& strKey) const;

    QStringList sectionNames() const; ///< in file order
    QString lastError() const;        ///< why the last load failed; empty if it did not

private:
    OrmSettingsText m_objText;
    QString m_strFile;
};
