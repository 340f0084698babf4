#include "CPLSettingsFileWrapper.h"

#include "COrmLog.h"
#include "OrmDocumentLimits.h"
#include "OrmFileReader.h"

#include <QFileInfo>
#include <QSet>

CPLSettingsFileWrapper::CPLSettingsFileWrapper() = default;

void CPLSettingsFileWrapper::setAutoMenuNameTag(const QString& strTag)
{
    m_strAutoMenuNameTag = strTag;
}

void CPLSettingsFileWrapper::setMenuNameTag(const QString& strTag)
{
    m_strMenuNameTag = strTag;
}

void CPLSettingsFileWrapper::setFileNameTag(const QString& strTag)
{
    m_strFileNameTag = strTag;
}

void CPLSettingsFileWrapper::setSettingsFileName(const QString& strFile)
{
    m_strSettingsFile = strFile;
}

int CPLSettingsFileWrapper::load()
{
    return m_objText.load(m_strSettingsFile) ? 0 : -1;
}

int CPLSettingsFileWrapper::load(const QString& strFile)
{
    setSettingsFileName(strFile);
    return load();
}

/// The name under which a section is listed; empty if it is not.
QString CPLSettingsFileWrapper::menuName(const CPLSection& objSection) const
{
    const QString strGiven = objSection.value(m_strMenuNameTag);
    if (!strGiven.isEmpty())
        return strGiven;
    return objSection.name().startsWith(m_strAutoMenuNameTag) ? objSection.name() : QString();
}

QStringList CPLSettingsFileWrapper::getMenuNames(const QString& strKind) const
{
    QStringList lstNames;
    QSet<QString> setNames;
    int nLeftOut = 0;
    QString strTwice;
    for (int i = 0; i < m_objText.sectionCount(); ++i)
    {
        const QString strName = menuName(m_objText.sectionAt(i));
        if (strName.isEmpty())
            continue;
        if (lstNames.size() == OrmDocumentLimits::nListedResults)
        {
            ++nLeftOut;
            continue;
        }
        if (setNames.contains(strName) && strTwice.isEmpty())
            strTwice = strName;
        setNames.insert(strName);
        lstNames.append(strName);
    }
    if (!strTwice.isEmpty())
        ORM_LOG(2, QStringLiteral("%1: several %2 results are named \"%3\"; the first one is the one that loads")
                       .arg(m_strSettingsFile, strKind, strTwice));
    if (nLeftOut > 0)
        ORM_LOG(2, QStringLiteral("%1: %2 %3 results beyond the first %4 are not listed")
                       .arg(m_strSettingsFile)
                       .arg(nLeftOut)
                       .arg(strKind)
                       .arg(OrmDocumentLimits::nListedResults));
    return lstNames;
}

const CPLSection* CPLSettingsFileWrapper::sectionForMenuName(const QString& strMenuName) const
{
    if (strMenuName.isEmpty())
        return nullptr;
    const CPLSection* pLike = nullptr;
    for (int i = 0; i < m_objText.sectionCount(); ++i)
    {
        const CPLSection& objSection = m_objText.sectionAt(i);
        const QString strName = menuName(objSection);
        if (strName == strMenuName)
            return &objSection;
        if (!pLike && strName.toLower() == strMenuName.toLower())
            pLike = &objSection;
    }
    return pLike;
}

QString CPLSettingsFileWrapper::getFileNameForMenuName(const QString& strMenuName, const QString& strNone) const
{
    const CPLSection* pSection = sectionForMenuName(strMenuName);
    if (!pSection)
        return QString();
    const QString strFileName = pSection->value(m_strFileNameTag);
    if (strFileName.isEmpty() || strFileName == strNone)
        return QString();
    QString strReason;
    if (!OrmFileReader::isBeneath(QFileInfo(m_strSettingsFile).path(), strFileName, &strReason))
    {
        ORM_LOG(
            3, QStringLiteral("%1: [%2] %3=\"%4\": %5").arg(m_strSettingsFile, pSection->name(), m_strFileNameTag, strFileName, strReason));
        return QString();
    }
    return strFileName;
}

QString CPLSettingsFileWrapper::lastError() const
{
    return m_objText.lastError();
}
