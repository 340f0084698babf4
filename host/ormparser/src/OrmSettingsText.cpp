#include "OrmSettingsText.h"

#include "COrmLog.h"
#include "OrmDocumentLimits.h"
#include "OrmFileReader.h"
#include "OrmTextCheck.h"

#include <QCoreApplication>

#include <cstring>
#include <new>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmSettingsText)
};

/// Bytes of a line, or of a part of one.
struct SPiece
{
    const char* m_pText = nullptr;
    int m_nLength = 0;
};

/// Goes through the lines of a text; they end in LF, CRLF or CR.
class CLineReader
{
public:
    CLineReader(const char* pText, const char* pEnd) : m_pText(pText), m_pEnd(pEnd) {}

    bool next(SPiece& objLine)
    {
        if (m_pText == m_pEnd)
            return false;
        ++m_nLine;
        const char* pStop = m_pText;
        while (pStop != m_pEnd && *pStop != '\n' && *pStop != '\r')
            ++pStop;
        objLine = {m_pText, static_cast<int>(pStop - m_pText)};
        m_pText = pStop;
        if (m_pText != m_pEnd && *m_pText++ == '\r' && m_pText != m_pEnd && *m_pText == '\n')
            ++m_pText;
        return true;
    }
    int number() const { return m_nLine; } ///< of the line last given, from 1

private:
    const char* m_pText;
    const char* m_pEnd;
    int m_nLine = 0;
};

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

SPiece trimmed(SPiece objPiece)
{
    while (objPiece.m_nLength > 0 && isBlank(objPiece.m_pText[objPiece.m_nLength - 1]))
        --objPiece.m_nLength;
    while (objPiece.m_nLength > 0 && isBlank(*objPiece.m_pText))
    {
        ++objPiece.m_pText;
        --objPiece.m_nLength;
    }
    return objPiece;
}

SPiece part(const SPiece& objPiece, int nFrom, int nTo)
{
    return trimmed({objPiece.m_pText + nFrom, nTo - nFrom});
}

QString text(const SPiece& objPiece)
{
    return QString::fromUtf8(objPiece.m_pText, objPiece.m_nLength);
}

int find(const SPiece& objPiece, char c)
{
    const void* pFound = std::memchr(objPiece.m_pText, c, static_cast<size_t>(objPiece.m_nLength));
    return pFound ? static_cast<int>(static_cast<const char*>(pFound) - objPiece.m_pText) : -1;
}

/// What a line is.
struct SEntry
{
    enum class EKind
    {
        Nothing, ///< blank or a comment
        Section,
        Key,
        Unknown
    };
    EKind m_eKind = EKind::Nothing;
    SPiece m_objName;
    SPiece m_objValue;
};

SEntry entryOfLine(const SPiece& objRawLine)
{
    const SPiece objLine = trimmed(objRawLine);
    if (objLine.m_nLength == 0 || *objLine.m_pText == '#' || *objLine.m_pText == ';')
        return {};
    if (*objLine.m_pText == '[')
    {
        // A remark behind the bracket must not turn the section's keys into keys of the section before.
        const int nLast = objLine.m_nLength - 1;
        const int nClose = objLine.m_pText[nLast] == ']' ? nLast : find(objLine, ']');
        if (nClose > 0)
            return {SEntry::EKind::Section, part(objLine, 1, nClose), {}};
    }
    const int nEqual = find(objLine, '=');
    if (nEqual < 0)
        return {SEntry::EKind::Unknown, {}, {}};
    const SPiece objKey = part(objLine, 0, nEqual);
    if (objKey.m_nLength == 0)
        return {SEntry::EKind::Unknown, {}, {}};
    return {SEntry::EKind::Key, objKey, part(objLine, nEqual + 1, objLine.m_nLength)};
}
} // namespace

bool OrmSettingsText::load(const QString& strFile)
{
    m_lstSections.clear();
    m_mapSectionRows.clear();
    m_strLastError.clear();
    QByteArray baText;
    if (!OrmFileReader::read(strFile, baText, &m_strLastError, OrmDocumentLimits::nSettingsTextBytes))
        return false;
    return parse(baText, strFile);
}

bool OrmSettingsText::parse(const QByteArray& baText, const QString& strPlace)
{
    m_lstSections.clear();
    m_mapSectionRows.clear();
    m_strLastError.clear();
    const int nStart = OrmTextCheck::markLength(baText.constData(), baText.size());
    if (!checkLimits(baText, nStart, strPlace))
        return false;
    try
    {
        CPLSection* pSection = nullptr;
        SPiece objLine;
        CLineReader objLines(baText.constData() + nStart, baText.constData() + baText.size());
        int nIgnored = 0;
        int nFirstIgnored = 0;
        while (objLines.next(objLine))
        {
            const SEntry objEntry = entryOfLine(objLine);
            if (objEntry.m_eKind == SEntry::EKind::Section)
            {
                pSection = &sectionForName(text(objEntry.m_objName));
            }
            else if (objEntry.m_eKind == SEntry::EKind::Key)
            {
                if (!pSection)
                    pSection = &sectionForName(QString());
                pSection->setValue(text(objEntry.m_objName), text(objEntry.m_objValue));
            }
            else if (objEntry.m_eKind == SEntry::EKind::Unknown && nIgnored++ == 0)
            {
                nFirstIgnored = objLines.number();
            }
        }
        if (nIgnored > 0)
            ORM_LOG(2, QStringLiteral("%1: line %2 is neither a section nor a key and is ignored (%3 such lines)")
                           .arg(strPlace)
                           .arg(nFirstIgnored)
                           .arg(nIgnored));
    }
    catch (const std::bad_alloc&)
    {
        return refuse(strPlace, CText::tr("not enough memory"));
    }
    return true;
}

/// Everything that makes a text unreadable is found before anything of it is kept.
bool OrmSettingsText::checkLimits(const QByteArray& baText, int nStart, const QString& strPlace)
{
    if (baText.size() > OrmDocumentLimits::nSettingsTextBytes)
        return refuse(strPlace,
                      CText::tr("too large: %1 bytes, of at most %2").arg(baText.size()).arg(OrmDocumentLimits::nSettingsTextBytes));
    if (OrmTextCheck::looksWide(baText.constData(), baText.size()))
        return refuse(strPlace, CText::tr("encoding not supported, it must be UTF-8"));
    const char* pText = baText.constData() + nStart;
    const char* pEnd = baText.constData() + baText.size();
    SPiece objLine;
    CLineReader objLines(pText, pEnd);
    qint64 nKeys = 0;
    qint64 nSections = 0;
    int nBadLine = 0;
    while (objLines.next(objLine))
    {
        if (objLine.m_nLength > OrmDocumentLimits::nSettingsLineBytes)
            return refuse(strPlace,
                          CText::tr("line %1 is longer than %2 bytes").arg(objLines.number()).arg(OrmDocumentLimits::nSettingsLineBytes));
        if (find(objLine, '\0') >= 0)
            return refuse(strPlace, CText::tr("NUL byte in line %1").arg(objLines.number()));
        const SEntry::EKind eKind = entryOfLine(objLine).m_eKind;
        nKeys += eKind == SEntry::EKind::Key ? 1 : 0;
        nSections += eKind == SEntry::EKind::Section ? 1 : 0;
        if (nKeys > OrmDocumentLimits::nSettingsEntries || nSections > OrmDocumentLimits::nSettingsEntries)
            return refuse(strPlace, CText::tr("more than %1 entries").arg(OrmDocumentLimits::nSettingsEntries));
        if (nBadLine == 0 && !OrmTextCheck::isUtf8(objLine.m_pText, objLine.m_pText + objLine.m_nLength))
            nBadLine = objLines.number();
    }
    if (nBadLine > 0)
        ORM_LOG(2,
                QStringLiteral("%1: line %2 is not UTF-8; what cannot be read is shown as a replacement mark").arg(strPlace).arg(nBadLine));
    return true;
}

bool OrmSettingsText::refuse(const QString& strPlace, const QString& strReason)
{
    m_lstSections.clear();
    m_mapSectionRows.clear();
    m_strLastError = QStringLiteral("%1: %2").arg(strPlace, strReason);
    ORM_LOG(3, m_strLastError);
    return false;
}

CPLSection& OrmSettingsText::sectionForName(const QString& strName)
{
    const auto it = m_mapSectionRows.constFind(strName);
    if (it != m_mapSectionRows.constEnd())
        return m_lstSections[static_cast<size_t>(it.value())];
    m_mapSectionRows.insert(strName, static_cast<int>(m_lstSections.size()));
    m_lstSections.emplace_back(strName);
    return m_lstSections.back();
}

CPLSection* OrmSettingsText::section(const QString& strName)
{
    const auto it = m_mapSectionRows.constFind(strName);
    return it == m_mapSectionRows.constEnd() ? nullptr : &m_lstSections[static_cast<size_t>(it.value())];
}

const CPLSection* OrmSettingsText::section(const QString& strName) const
{
    const auto it = m_mapSectionRows.constFind(strName);
    return it == m_mapSectionRows.constEnd() ? nullptr : &m_lstSections[static_cast<size_t>(it.value())];
}

int OrmSettingsText::sectionCount() const
{
    return static_cast<int>(m_lstSections.size());
}

const CPLSection& OrmSettingsText::sectionAt(int nIndex) const
{
    return m_lstSections[static_cast<size_t>(nIndex)];
}

QStringList OrmSettingsText::sectionNames() const
{
    QStringList lstNames;
    for (const CPLSection& objSection : m_lstSections)
        lstNames.append(objSection.name());
    return lstNames;
}

bool OrmSettingsText::findInAnySection(const QString& strKey, QString& strValue) const
{
    for (const CPLSection& objSection : m_lstSections)
    {
        if (objSection.getValue(strKey, &strValue) == 0)
            return true;
    }
    return false;
}

QString OrmSettingsText::lastError() const
{
    return m_strLastError;
}
