#pragma once

#include "OrmSettingsText.h"

#include <QString>
#include <QStringList>

/// Reader of a click's info file: one section per kind of image, each with its keys.
class CPLClickInfo
{
public:
    CPLClickInfo();
    ~CPLClickInfo();

    /// Reads one key from a file, out of the first section that has it. Returns 0 and fills @p pstrValue on success; another value
    /// leaves @p pstrValue as it was.
    static int obtainValueFromClickInfoFile(const QString& strFile, const QString& strKey, QString* pstrValue);

    /// Reads the file. Returns 0 on success; a file that cannot be read leaves the parser without sections. The flag is not used.
    int loadClickInfo(const QString& strFile, bool bReserved);

    bool isSectionPresent(const QString& strSection) const;

    /// Returns 0 and fills the value on success; another value leaves @p pstrValue as it was.
    int getValue(const QString& strSection, const QString& strKey, QString* pstrValue) const;

    /// The section of that name, or null; valid until the next load.
    const CPLSection* section(const QString& strSection) const;
    QStringList sectionNames() const; ///< in file order
    QString lastError() const;        ///< why the last load failed; empty if it did not

private:
    OrmSettingsText m_objText;
};
