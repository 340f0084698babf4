#include "CPLSection.h"

CPLSection::CPLSection(const QString& strName) : m_strName(strName) {}

int CPLSection::getSectionName(QString* pstrName, bool /*bReserved*/) const
{
    if (!pstrName)
        return -1;
    *pstrName = m_strName;
    return 0;
}

int CPLSection::getValue(const QString& strKey, QString* pstrValue) const
{
    const auto it = m_mapKeyRows.constFind(strKey);
    if (it == m_mapKeyRows.constEnd() || !pstrValue)
        return -1;
    *pstrValue = m_vecValues.at(it.value());
    return 0;
}

QString CPLSection::value(const QString& strKey) const
{
    QString strValue;
    getValue(strKey, &strValue);
    return strValue;
}

bool CPLSection::contains(const QString& strKey) const
{
    return m_mapKeyRows.contains(strKey);
}

QString CPLSection::name() const
{
    return m_strName;
}

QStringList CPLSection::keys() const
{
    QStringList lstKeys;
    lstKeys.reserve(m_vecKeys.size());
    for (const QString& strKey : m_vecKeys)
        lstKeys.append(strKey);
    return lstKeys;
}

int CPLSection::keyCount() const
{
    return m_vecKeys.size();
}

void CPLSection::setValue(const QString& strKey, const QString& strValue)
{
    const auto it = m_mapKeyRows.constFind(strKey);
    if (it != m_mapKeyRows.constEnd())
    {
        m_vecValues[it.value()] = strValue;
        return;
    }
    m_mapKeyRows.insert(strKey, m_vecKeys.size());
    m_vecKeys.append(strKey);
    m_vecValues.append(strValue);
}
