#include "CPLSequenceInfo.h"

#include "COrmLog.h"
#include "OrmNumberText.h"

#include <QMap>

namespace
{
const QString strClickSection = QStringLiteral("Click Numbers");
const QString strCountKey = QStringLiteral("Count");

/// Position of the first click number that is missing, from 1; 0 if none is.
int firstMissing(const QMap<int, QString>& mapClicks, int nCount)
{
    int nExpected = 1;
    for (auto it = mapClicks.constBegin(); it != mapClicks.constEnd() && it.key() == nExpected; ++it)
        ++nExpected;
    return nExpected <= nCount ? nExpected : 0;
}
} // namespace

CPLSequenceInfo::CPLSequenceInfo() = default;

CPLSequenceInfo::~CPLSequenceInfo() = default;

int CPLSequenceInfo::loadFile(const QString& strFile)
{
    m_strFile = strFile;
    return m_objText.load(strFile) ? 0 : -1;
}

QStringList CPLSequenceInfo::getClickNumberList() const
{
    const CPLSection* pSection = m_objText.section(strClickSection);
    if (!pSection)
        return QStringList();
    int nCount = 0;
    if (!OrmNumberText::toInt(pSection->value(strCountKey), nCount) || nCount < 0)
    {
        ORM_LOG(
            2, QStringLiteral("%1: [%2] %3=\"%4\" is no count").arg(m_strFile, strClickSection, strCountKey, pSection->value(strCountKey)));
        return QStringList();
    }
    // The keys that are there, not the numbers up to the count, which is only a claim.
    QMap<int, QString> mapClicks;
    int nSurplus = 0;
    const QStringList lstKeys = pSection->keys();
    for (const QString& strKey : lstKeys)
    {
        int nNumber = 0;
        if (!OrmNumberText::toInt(strKey, nNumber) || nNumber < 1)
            continue;
        if (nNumber > nCount)
            ++nSurplus;
        else
            mapClicks.insert(nNumber, pSection->value(strKey));
    }
    const int nMissing = firstMissing(mapClicks, nCount);
    if (nMissing > 0)
        ORM_LOG(2, QStringLiteral("%1: [%2] says %3 clicks but has %4; the first one missing is %5")
                       .arg(m_strFile, strClickSection)
                       .arg(nCount)
                       .arg(mapClicks.size())
                       .arg(nMissing));
    if (nSurplus > 0)
        ORM_LOG(
            2, QStringLiteral("%1: [%2] has %3 clicks more than the %4 it says").arg(m_strFile, strClickSection).arg(nSurplus).arg(nCount));
    return mapClicks.values();
}

bool CPLSequenceInfo::isSectionPresent(const QString& strSection) const
{
    return m_objText.section(strSection) != nullptr;
}

CPLSection* CPLSequenceInfo::operator[](const QString& strSection)
{
    return m_objText.section(strSection);
}

const CPLSection* CPLSequenceInfo::section(const QString& strSection) const
{
    return m_objText.section(strSection);
}

QString CPLSequenceInfo::value(const QString& strSection, const QString& strKey) const
{
    const CPLSection* pSection = m_objText.section(strSection);
    return pSection ? pSection->value(strKey) : QString();
}

QStringList CPLSequenceInfo::sectionNames() const
{
    return m_objText.sectionNames();
}

QString CPLSequenceInfo::lastError() const
{
    return m_objText.lastError();
}
