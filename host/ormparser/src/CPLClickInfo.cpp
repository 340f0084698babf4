#include "CPLClickInfo.h"

CPLClickInfo::CPLClickInfo() = default;

CPLClickInfo::~CPLClickInfo() = default;

int CPLClickInfo::obtainValueFromClickInfoFile(const QString& strFile, const QString& strKey, QString* pstrValue)
{
    OrmSettingsText objText;
    return pstrValue && objText.load(strFile) && objText.findInAnySection(strKey, *pstrValue) ? 0 : -1;
}

int CPLClickInfo::loadClickInfo(const QString& strFile, bool /*bReserved*/)
{
    return m_objText.load(strFile) ? 0 : -1;
}

bool CPLClickInfo::isSectionPresent(const QString& strSection) const
{
    return m_objText.section(strSection) != nullptr;
}

int CPLClickInfo::getValue(const QString& strSection, const QString& strKey, QString* pstrValue) const
{
    const CPLSection* pSection = m_objText.section(strSection);
    return pSection ? pSection->getValue(strKey, pstrValue) : -1;
}

const CPLSection* CPLClickInfo::section(const QString& strSection) const
{
    return m_objText.section(strSection);
}

QStringList CPLClickInfo::sectionNames() const
{
    return m_objText.sectionNames();
}

QString CPLClickInfo::lastError() const
{
    return m_objText.lastError();
}
