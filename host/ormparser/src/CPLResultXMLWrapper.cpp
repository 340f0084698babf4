#include "CPLResultXMLWrapper.h"

#include "COrmLog.h"
#include "COrmXMLSection.h"
#include "CPLResultXMLWrapper_p.h"
#include "OrmExcerpt.h"
#include "OrmNumberText.h"

#include <algorithm>

namespace
{
using EOutcome = COrmXMLSection::EOutcome;

QString toText(std::string_view strText)
{
    return QString::fromUtf8(strText.data(), static_cast<int>(strText.size()));
}

QString rowPlace(const QString& strTag, int nIndex)
{
    return QStringLiteral("%1[%2]").arg(strTag).arg(nIndex);
}

QString tagPlace(const QString& strFirst, const QString& strSecond)
{
    return QStringLiteral("%1/%2").arg(strFirst, strSecond);
}
} // namespace

CPLResultXMLWrapper::CPLResultXMLWrapper() = default;

CPLResultXMLWrapper::~CPLResultXMLWrapper() = default;

bool CPLResultXMLWrapper::createXMLFile(const QString& strFile, const QString& /*strVersion*/, bool /*bOverwrite*/)
{
    m_strLastError = QStringLiteral("%1: not written, the host writes no results").arg(strFile);
    ORM_LOG(3, m_strLastError);
    return false;
}

bool CPLResultXMLWrapper::loadXMLFile(const QString& strFile)
{
    m_pCurrent = nullptr;
    m_strLastError.clear();
    m_bOutOfMemory = false;
    return m_objReader.loadFile(strFile, m_strLastError);
}

QString CPLResultXMLWrapper::getVersion()
{
    return m_objReader.version();
}

bool CPLResultXMLWrapper::Read2ndTagKeyValues(const QString& strFirst, const QString& strSecond, const QString& strKey, int& nValue)
{
    return guarded(strSecond,
                   [&]
                   {
                       if (!openSection(strFirst, strSecond))
                           return fail(tagPlace(strFirst, strSecond), QStringLiteral("absent"));
                       return ownInt(strSecond, strKey, false, nValue);
                   });
}

bool CPLResultXMLWrapper::Read2ndTagKeyValues(const QString& strFirst, const QString& strSecond, const QStringList& lstKeys,
                                              std::vector<int>& vecValues)
{
    return guarded(strSecond,
                   [&]
                   {
                       if (!openSection(strFirst, strSecond))
                           return fail(tagPlace(strFirst, strSecond), QStringLiteral("absent"));
                       std::vector<int> vecRead(static_cast<size_t>(lstKeys.size()), 0);
                       for (size_t i = 0; i < vecRead.size(); ++i)
                       {
                           if (!ownInt(strSecond, lstKeys.at(static_cast<int>(i)), true, vecRead[i]))
                               return false;
                       }
                       // Callers hold pointers to the elements of a vector that has the right size.
                       vecValues.resize(vecRead.size());
                       std::copy(vecRead.begin(), vecRead.end(), vecValues.begin());
                       return true;
                   });
}

bool CPLResultXMLWrapper::Read3rdTagKeyValues(const QString& strFirst, const QString& strSecond, const QString& strThird,
                                              const QString& strKey, QString& strValue, int nIndex)
{
    return guarded(strThird,
                   [&]
                   {
                       COrmXMLSection* pSection = m_objReader.section(strFirst, strSecond);
                       if (!pSection)
                           return fail(tagPlace(strFirst, strSecond), QStringLiteral("absent"));
                       std::string_view strText;
                       if (!rowKey(pSection, strThird, nIndex, strKey, strText))
                           return false;
                       strValue = toText(strText);
                       return true;
                   });
}

bool CPLResultXMLWrapper::Read3rdTagKeyValues(const QString& strFirst, const QString& strSecond, const QString& strThird,
                                              const QStringList& lstKeys, QStringList& lstValues, int nIndex)
{
    return guarded(strThird,
                   [&]
                   {
                       COrmXMLSection* pSection = m_objReader.section(strFirst, strSecond);
                       return pSection ? rowKeys(pSection, strThird, nIndex, lstKeys, lstValues)
                                       : fail(tagPlace(strFirst, strSecond), QStringLiteral("absent"));
                   });
}

bool CPLResultXMLWrapper::ReadCurrentKeyValues(const QString& strTag, const QString& strKey, QString& strValue)
{
    return ReadCurrentKeyValues(0, strTag, strKey, strValue);
}

bool CPLResultXMLWrapper::ReadCurrentKeyValues(int nIndex, const QString& strTag, const QString& strKey, QString& strValue)
{
    return guarded(strTag,
                   [&]
                   {
                       std::string_view strText;
                       if (!rowKey(m_pCurrent, strTag, nIndex, strKey, strText))
                           return false;
                       strValue = toText(strText);
                       return true;
                   });
}

bool CPLResultXMLWrapper::ReadCurrentKeyValues(int nIndex, const QString& strTag, const QString& strKey, float& fValue)
{
    return guarded(strTag,
                   [&]
                   {
                       std::string_view strText;
                       if (!rowKey(m_pCurrent, strTag, nIndex, strKey, strText))
                           return false;
                       if (OrmNumberText::toFloat(strText, fValue))
                           return true;
                       return fail(rowPlace(strTag, nIndex), QStringLiteral("%1=\"%2\" is no number").arg(strKey, OrmExcerpt::of(strText)));
                   });
}

bool CPLResultXMLWrapper::ReadCurrentKeyValues(int nIndex, const QString& strTag, const QStringList& lstKeys, QStringList& lstValues)
{
    return guarded(strTag, [&] { return rowKeys(m_pCurrent, strTag, nIndex, lstKeys, lstValues); });
}

bool CPLResultXMLWrapper::openSection(const QString& strFirst, const QString& strSecond)
{
    return guarded(strSecond,
                   [&]
                   {
                       m_pCurrent = m_objReader.section(strFirst, strSecond);
                       m_strCurrent = strSecond;
                       return m_pCurrent || absent(tagPlace(strFirst, strSecond), QStringLiteral("absent"));
                   });
}

bool CPLResultXMLWrapper::currentKeyText(const QString& strKey, QString& strValue)
{
    return guarded(m_strCurrent,
                   [&]
                   {
                       if (!m_pCurrent)
                           return absent(strKey, QStringLiteral("no second tag is the current one"));
                       std::string_view strText;
                       QString strReason;
                       const EOutcome eOutcome = m_pCurrent->ownKey(strKey.toStdString(), strText, strReason);
                       if (eOutcome == EOutcome::Absent)
                           return absent(m_strCurrent, QStringLiteral("has no %1").arg(strKey));
                       if (eOutcome == EOutcome::Unreadable)
                           return fail(m_strCurrent, QStringLiteral("%1: %2").arg(strKey, strReason));
                       strValue = toText(strText);
                       return true;
                   });
}

QString CPLResultXMLWrapper::lastError() const
{
    return m_strLastError;
}

bool CPLResultXMLWrapper::fail(const QString& strPlace, const QString& strReason)
{
    absent(strPlace, strReason);
    ORM_LOG(3, m_strLastError);
    return false;
}

/// Notes what is not there, for callers that may do without it.
bool CPLResultXMLWrapper::absent(const QString& strPlace, const QString& strReason)
{
    const QString strFile = m_objReader.isOpen() ? m_objReader.fileName() : QStringLiteral("no document is open");
    m_strLastError = QStringLiteral("%1: %2: %3").arg(strFile, strPlace, strReason);
    return false;
}

/// A key of the current second tag as int.
bool CPLResultXMLWrapper::ownInt(const QString& strSecond, const QString& strKey, bool bMayBeAbsent, int& nValue)
{
    std::string_view strText;
    QString strReason;
    const EOutcome eOutcome = m_pCurrent->ownKey(strKey.toStdString(), strText, strReason);
    if (eOutcome == EOutcome::Absent)
        return bMayBeAbsent || fail(strSecond, QStringLiteral("has no %1").arg(strKey));
    if (eOutcome == EOutcome::Unreadable)
        return fail(strSecond, QStringLiteral("%1: %2").arg(strKey, strReason));
    return OrmNumberText::toInt(strText, nValue) ||
           fail(strSecond, QStringLiteral("%1=\"%2\" is no int").arg(strKey, OrmExcerpt::of(strText)));
}

bool CPLResultXMLWrapper::rowKey(COrmXMLSection* pSection, const QString& strTag, int nIndex, const QString& strKey,
                                 std::string_view& strText)
{
    if (!pSection)
        return fail(rowPlace(strTag, nIndex), QStringLiteral("no second tag is the current one"));
    const QByteArray baTag = strTag.toUtf8();
    const QByteArray baKey = strKey.toUtf8();
    pugi::xml_node objRow;
    QString strReason;
    EOutcome eOutcome = pSection->find({baTag.constData(), static_cast<size_t>(baTag.size())}, nIndex, objRow, strReason);
    if (eOutcome == EOutcome::Absent)
        return fail(rowPlace(strTag, nIndex), QStringLiteral("absent"));
    if (eOutcome == EOutcome::Found)
        eOutcome = pSection->key(objRow, baKey.constData(), strText, strReason);
    if (eOutcome == EOutcome::Absent)
        return fail(rowPlace(strTag, nIndex), QStringLiteral("has no %1").arg(strKey));
    return eOutcome == EOutcome::Found || fail(rowPlace(strTag, nIndex), QStringLiteral("%1: %2").arg(strKey, strReason));
}

bool CPLResultXMLWrapper::rowKeys(COrmXMLSection* pSection, const QString& strTag, int nIndex, const QStringList& lstKeys,
                                  QStringList& lstValues)
{
    QStringList lstRead;
    for (const QString& strKey : lstKeys)
    {
        std::string_view strText;
        if (!rowKey(pSection, strTag, nIndex, strKey, strText))
            return false;
        lstRead.append(toText(strText));
    }
    lstValues = lstRead;
    return true;
}
