#include "OrmXmlScanner.h"

#include "COrmProcess.h"
#include "OrmExcerpt.h"
#include "OrmTextCheck.h"

#include <QHash>
#include <algorithm>
#include <charconv>
#include <cstring>

namespace
{
constexpr std::string_view strRootTag = "Ormelle.Result";
constexpr qint64 nTextChunk = 16384;       ///< searched at once, so that the second search finds the bytes in the cache
constexpr qint64 nLongText = 4096;         ///< a text of so many bytes is left where it stands when its row is parsed
constexpr qint64 nBytesPerAlive = 8388608; ///< between two chances for the progress display
constexpr int nLinearNames = 8;            ///< so many attribute names are compared one by one

enum ECharacter : quint8
{
    eNameStart = 1,
    eNamePart = 2,
    eBlank = 4,
    eValueStop = 8 ///< a quote, '<' or '&'
};

constexpr std::array<quint8, 256> makeCharacterTable()
{
    std::array<quint8, 256> aTable = {};
    for (int c = 0; c < 256; ++c)
    {
        const bool bLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c >= 0x80;
        const bool bPart = bLetter || (c >= '0' && c <= '9') || c == '-' || c == '.';
        const bool bSpace = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        const bool bStop = c == '"' || c == '\'' || c == '<' || c == '&';
        aTable[static_cast<size_t>(c)] =
            static_cast<quint8>((bLetter ? eNameStart : 0) | (bPart ? eNamePart : 0) | (bSpace ? eBlank : 0) | (bStop ? eValueStop : 0));
    }
    return aTable;
}

constexpr std::array<quint8, 256> aCharacters = makeCharacterTable();

inline bool isA(char c, quint8 nClass)
{
    return (aCharacters[static_cast<unsigned char>(c)] & nClass) != 0;
}

const char* findByte(const char* pFrom, const char* pTo, char c)
{
    const void* pFound = std::memchr(pFrom, c, static_cast<size_t>(pTo - pFrom));
    return pFound ? static_cast<const char*>(pFound) : pTo;
}

std::string_view view(const char* pFrom, const char* pTo)
{
    return {pFrom, static_cast<size_t>(pTo - pFrom)};
}

/// Whether a character reference stands for a character that XML allows.
bool isCharacter(quint32 nCode)
{
    if (nCode < 0x20)
        return nCode == '\t' || nCode == '\n' || nCode == '\r';
    return nCode < 0xD800 || (nCode > 0xDFFF && nCode < 0xFFFE) || (nCode > 0xFFFF && nCode <= 0x10FFFF);
}

bool equalsIgnoringCase(std::string_view strFirst, std::string_view strSecond)
{
    return strFirst.size() == strSecond.size() && qstrnicmp(strFirst.data(), strSecond.data(), static_cast<uint>(strFirst.size())) == 0;
}
} // namespace

OrmXmlScanner::OrmXmlScanner(const char* pText, qint64 nLength, SXmlLayout& objLayout)
    : m_pBegin(pText), m_pEnd(pText + nLength), m_p(pText), m_pChecked(pText), m_pLastAlive(pText), m_objBuilder(objLayout)
{
}

QString OrmXmlScanner::error() const
{
    return m_strError;
}

bool OrmXmlScanner::scan()
{
    if (!scanProlog())
        return false;
    while (m_p < m_pEnd)
    {
        if (m_p - m_pLastAlive >= nBytesPerAlive)
        {
            COrmProcess::keepAlive();
            m_pLastAlive = m_p;
        }
        if (m_p - m_pChecked >= nTextChunk && !checkCharacters(m_p))
            return false;
        if (*m_p == '<' ? !scanMarkup() : !(m_nDepth > 0 ? scanText() : scanOutside()))
            return false;
    }
    return finish();
}

bool OrmXmlScanner::finish()
{
    if (!checkCharacters(m_pEnd))
        return false;
    if (m_nDepth > 0 || !m_bRootSeen)
        return failEnd();
    if (m_strRoot != strRootTag)
        return fail(QStringLiteral("not a result document, its outermost tag is \"%1\"").arg(OrmExcerpt::of(m_strRoot)), m_pBegin);
    return true;
}

bool OrmXmlScanner::scanProlog()
{
    if (m_pBegin == m_pEnd)
    {
        m_strError = QStringLiteral("the file is empty");
        return false;
    }
    if (OrmTextCheck::looksWide(m_pBegin, m_pEnd - m_pBegin))
        return fail(QStringLiteral("encoding not supported, it must be UTF-8"), m_pBegin);
    m_p += OrmTextCheck::markLength(m_pBegin, m_pEnd - m_pBegin);
    m_pChecked = m_p;
    constexpr std::string_view strStart = "<?xml";
    const std::string_view strHead = view(m_p, m_pEnd).substr(0, strStart.size() + 1);
    if (strHead.size() > strStart.size() && strHead.substr(0, strStart.size()) == strStart && isA(strHead.back(), eBlank))
        return scanDeclaration();
    return true;
}

/// Takes version and encoding out of the XML declaration; the rest of it does not matter.
bool OrmXmlScanner::scanDeclaration()
{
    const char* pClose = nullptr;
    if (!skipUntil(m_p, "?>", pClose))
        return false;
    const char* pStart = m_p;
    m_p += 5;
    m_nAttributes = 0;
    for (skipBlanks(); m_p < pClose; skipBlanks())
    {
        std::string_view strName;
        if (!scanName(strName))
            return false;
        skipBlanks();
        if (m_p >= pClose || *m_p != '=')
            return fail(QStringLiteral("the XML declaration is damaged"), pStart);
        ++m_p;
        skipBlanks();
        const char cQuote = *m_p;
        const char* pValueEnd = cQuote == '"' || cQuote == '\'' ? findByte(m_p + 1, pClose, cQuote) : pClose;
        if (pValueEnd == pClose)
            return fail(QStringLiteral("the XML declaration is damaged"), pStart);
        const std::string_view strValue = view(m_p + 1, pValueEnd);
        if (strName == "encoding" && !equalsIgnoringCase(strValue, "UTF-8"))
            return fail(QStringLiteral("encoding not supported: \"%1\", it must be UTF-8").arg(OrmExcerpt::of(strValue)), m_p);
        if (strName == "version" && strValue != "1.0")
            return fail(QStringLiteral("XML version not supported: \"%1\"").arg(OrmExcerpt::of(strValue)), m_p);
        m_p = pValueEnd + 1;
    }
    m_p = pClose + 2;
    return true;
}

/// Blanks before and after the outermost element.
bool OrmXmlScanner::scanOutside()
{
    skipBlanks();
    if (m_p == m_pEnd || *m_p == '<')
        return true;
    if (view(m_p, m_pEnd) == std::string_view("\xEF\xBB\xBF").substr(0, static_cast<size_t>(m_pEnd - m_pBegin)))
        return failEnd(); // a byte-order mark that is cut off
    if (!m_bRootSeen)
        return fail(QStringLiteral("not a result document"), m_p);
    return fail(QStringLiteral("content after the end of the document"), m_p);
}

/// Text within an element. Runs without references that are long are noted.
bool OrmXmlScanner::scanText()
{
    const char* pRun = m_p;
    skipBlanks();            // mostly there is nothing else between two tags
    const char* pStop = m_p; // up to here no tag begins: sought once, not anew behind each reference
    while (m_p < m_pEnd && *m_p != '<')
    {
        if (m_p >= pStop)
            pStop = findByte(m_p, m_p + std::min<qint64>(nTextChunk, m_pEnd - m_p), '<');
        const char* pReference = findByte(m_p, pStop, '&');
        m_p = pReference;
        if (m_p - m_pChecked >= nTextChunk && !checkCharacters(m_p))
            return false;
        if (pReference != pStop)
        {
            noteLongText(pRun, m_p, true);
            if (!scanReference(m_p))
                return false;
            pRun = m_p;
        }
        if (m_p - m_pLastAlive >= nBytesPerAlive)
        {
            COrmProcess::keepAlive();
            m_pLastAlive = m_p;
        }
    }
    noteLongText(pRun, m_p, true);
    return true;
}

bool OrmXmlScanner::scanMarkup()
{
    if (m_p + 1 == m_pEnd)
        return failEnd();
    const char c = m_p[1];
    if (isA(c, eNameStart))
        return scanStartTag();
    if (c == '/')
        return scanEndTag();
    if (c == '?')
        return scanInstruction();
    if (c != '!')
        return fail(QStringLiteral("'<' is not followed by a tag"), m_p);
    const std::string_view strRest = view(m_p, m_pEnd);
    // A document that ends within one of the openings below just ends early.
    for (const std::string_view strOpening : {std::string_view("<!--"), std::string_view("<![CDATA["), std::string_view("<!DOCTYPE")})
    {
        if (strRest.size() < strOpening.size() && strOpening.substr(0, strRest.size()) == strRest)
            return failEnd();
    }
    if (strRest.substr(0, 4) == "<!--")
        return scanComment();
    if (strRest.substr(0, 9) == "<!DOCTYPE")
        return fail(QStringLiteral("document type declarations (DOCTYPE) are not allowed"), m_p);
    if (strRest.substr(0, 9) == "<![CDATA[" && m_nDepth > 0)
        return scanCData();
    return fail(QStringLiteral("markup declarations are not allowed"), m_p);
}

bool OrmXmlScanner::scanStartTag()
{
    const char* pStart = m_p++;
    if (m_nDepth == 0 && m_bRootSeen)
        return fail(QStringLiteral("content after the end of the document"), pStart);
    if (m_nDepth == OrmDocumentLimits::nXmlDepth)
        return fail(QStringLiteral("nested deeper than %1").arg(OrmDocumentLimits::nXmlDepth), pStart);
    if (m_nElements == OrmDocumentLimits::nXmlElements)
        return fail(QStringLiteral("more than %1 elements").arg(OrmDocumentLimits::nXmlElements), pStart);
    ++m_nElements;
    std::string_view strName;
    if (!scanName(strName))
        return false;

    m_nAttributes = 0;
    while (true)
    {
        const char* pBlank = m_p;
        skipBlanks();
        if (m_p == m_pEnd)
            return failEnd();
        if (*m_p == '>' || *m_p == '/')
            break;
        if (m_p == pBlank || !isA(*m_p, eNameStart))
            return fail(QStringLiteral("the tag \"%1\" is damaged").arg(OrmExcerpt::of(strName)), m_p);
        if (!scanAttribute())
            return false;
    }
    if (m_nAttributes > nLinearNames)
        m_aNameSlots.fill(0);

    const bool bEmpty = *m_p == '/';
    if (bEmpty && ++m_p == m_pEnd)
        return failEnd();
    if (*m_p != '>')
        return fail(QStringLiteral("the tag \"%1\" is damaged").arg(OrmExcerpt::of(strName)), m_p);
    ++m_p;
    if (m_nDepth == 0)
    {
        m_bRootSeen = true;
        m_strRoot = strName;
    }
    if (!m_objBuilder.startTag(m_nDepth + 1, strName, range(pStart, m_p)))
        return fail(QStringLiteral("more than %1 sections").arg(OrmDocumentLimits::nXmlSections), pStart);
    if (bEmpty)
        m_objBuilder.endElement(m_nDepth + 1, range(m_pBegin, m_p).m_nEnd);
    else
        m_aOpenTags[static_cast<size_t>(++m_nDepth)] = strName;
    return true;
}

bool OrmXmlScanner::scanAttribute()
{
    const char* pStart = m_p;
    std::string_view strName;
    if (!scanName(strName))
        return false;
    if (m_nAttributes == OrmDocumentLimits::nXmlAttributes)
        return fail(QStringLiteral("more than %1 attributes").arg(OrmDocumentLimits::nXmlAttributes), pStart);
    if (!isNewAttribute(strName))
        return fail(QStringLiteral("the attribute \"%1\" is given twice").arg(OrmExcerpt::of(strName)), pStart);
    skipBlanks();
    if (m_p == m_pEnd)
        return failEnd();
    if (*m_p != '=')
        return fail(QStringLiteral("the attribute \"%1\" has no value").arg(OrmExcerpt::of(strName)), pStart);
    ++m_p;
    skipBlanks();
    if (m_p == m_pEnd)
        return failEnd();
    const char cQuote = *m_p;
    if (cQuote != '"' && cQuote != '\'')
        return fail(QStringLiteral("the value of the attribute \"%1\" is not in quotes").arg(OrmExcerpt::of(strName)), m_p);
    const char* pValue = ++m_p;
    const char* pLimit = m_pEnd - pValue > OrmDocumentLimits::nXmlValueBytes ? pValue + OrmDocumentLimits::nXmlValueBytes : m_pEnd;
    while (true)
    {
        while (m_p < pLimit && !isA(*m_p, eValueStop))
            ++m_p;
        if (m_p == m_pEnd)
            return failEnd();
        if (m_p > pLimit || (m_p == pLimit && *m_p != cQuote))
            return fail(QStringLiteral("the value of the attribute \"%1\" is longer than %2 bytes")
                            .arg(OrmExcerpt::of(strName))
                            .arg(OrmDocumentLimits::nXmlValueBytes),
                        pStart);
        if (*m_p == cQuote)
            break;
        if (*m_p == '<')
            return fail(QStringLiteral("'<' in the value of the attribute \"%1\"").arg(OrmExcerpt::of(strName)), m_p);
        if (*m_p != '&')
            ++m_p; // the other kind of quote
        else if (!scanReference(m_p))
            return false;
    }
    ++m_p;
    return true;
}

/// Notes the name; false if the start tag has it already. Many names are compared through a hash table that starts at another place in
/// every process, so that no document can make this slow.
bool OrmXmlScanner::isNewAttribute(std::string_view strName)
{
    const auto itEnd = m_aAttributes.begin() + m_nAttributes;
    if (m_nAttributes < nLinearNames)
    {
        if (std::find(m_aAttributes.begin(), itEnd, strName) != itEnd)
            return false;
        m_aAttributes[static_cast<size_t>(m_nAttributes++)] = strName;
        return true;
    }
    const auto slotOf = [this](std::string_view strKey)
    {
        size_t nSlot = qHashBits(strKey.data(), strKey.size(), static_cast<uint>(qGlobalQHashSeed())) % nNameSlots;
        while (m_aNameSlots[nSlot] != 0 && m_aAttributes[m_aNameSlots[nSlot] - 1U] != strKey)
            nSlot = (nSlot + 1) % nNameSlots;
        return nSlot;
    };
    if (m_nAttributes == nLinearNames)
    {
        for (quint16 i = 0; i < nLinearNames; ++i)
            m_aNameSlots[slotOf(m_aAttributes[i])] = static_cast<quint16>(i + 1);
    }
    const size_t nSlot = slotOf(strName);
    if (m_aNameSlots[nSlot] != 0)
        return false;
    m_aAttributes[static_cast<size_t>(m_nAttributes++)] = strName;
    m_aNameSlots[nSlot] = static_cast<quint16>(m_nAttributes);
    return true;
}

bool OrmXmlScanner::scanEndTag()
{
    const char* pStart = m_p;
    m_p += 2;
    if (m_p == m_pEnd)
        return failEnd();
    if (m_nDepth == 0)
        return fail(QStringLiteral("an end tag without a start tag"), pStart);
    const std::string_view strOpen = m_aOpenTags[static_cast<size_t>(m_nDepth)];
    const std::string_view strRest = view(m_p, m_pEnd);
    if (strRest.substr(0, strOpen.size()) != strOpen)
    {
        if (strRest.size() < strOpen.size() && strOpen.substr(0, strRest.size()) == strRest)
            return failEnd();
        return fail(QStringLiteral("the tag \"%1\" is not closed").arg(OrmExcerpt::of(strOpen)), pStart);
    }
    m_p += strOpen.size();
    skipBlanks();
    if (m_p == m_pEnd)
        return failEnd();
    if (*m_p != '>')
        return fail(QStringLiteral("the tag \"%1\" is not closed").arg(OrmExcerpt::of(strOpen)), pStart);
    ++m_p;
    m_objBuilder.endElement(m_nDepth--, range(m_pBegin, m_p).m_nEnd);
    return true;
}

bool OrmXmlScanner::scanComment()
{
    const char* pStart = m_p;
    const char* pText = m_p + 4;
    const char* pDashes = nullptr;
    if (!skipUntil(pText, "--", pDashes))
        return false;
    if (pDashes + 2 == m_pEnd)
        return failEnd();
    if (pDashes[2] != '>')
        return fail(QStringLiteral("\"--\" within a comment"), pStart);
    noteLongText(pText, pDashes, false);
    m_p = pDashes + 3;
    return true;
}

bool OrmXmlScanner::scanInstruction()
{
    const char* pStart = m_p;
    m_p += 2;
    if (m_p == m_pEnd)
        return failEnd();
    std::string_view strTarget;
    if (!isA(*m_p, eNameStart))
        return fail(QStringLiteral("a processing instruction without a name"), pStart);
    if (!scanName(strTarget))
        return false;
    const char* pText = m_p;
    const char* pClose = nullptr;
    if (!skipUntil(pText, "?>", pClose))
        return false;
    if (equalsIgnoringCase(strTarget, "xml"))
        return fail(QStringLiteral("an XML declaration that is not at the beginning"), pStart);
    if (pClose != pText && !isA(*pText, eBlank))
        return fail(QStringLiteral("a processing instruction is damaged"), pStart);
    if (pClose != pText)
        noteLongText(pText + 1, pClose, false); // the blank stays, so that the rest is still well-formed
    m_p = pClose + 2;
    return true;
}

bool OrmXmlScanner::scanCData()
{
    const char* pText = m_p + 9;
    const char* pClose = nullptr;
    if (!skipUntil(pText, "]]>", pClose))
        return false;
    noteLongText(pText, pClose, true);
    m_p = pClose + 3;
    return true;
}

/// One of the five named references, or a character's number.
bool OrmXmlScanner::scanReference(const char*& p)
{
    constexpr qint64 nLongest = 64; // a number may have leading zeros
    const char* pEnd = findByte(p, std::min(m_pEnd, p + std::min<qint64>(nLongest, m_pEnd - p)), ';');
    if (pEnd == m_pEnd)
        return failEnd();
    const std::string_view strName = view(p + 1, pEnd);
    bool bKnown = *pEnd == ';';
    if (bKnown && strName.substr(0, 1) == "#")
    {
        const bool bHex = strName.substr(1, 1) == "x";
        const char* pDigits = p + (bHex ? 3 : 2);
        quint32 nCode = 0;
        const auto objResult = std::from_chars(pDigits, pEnd, nCode, bHex ? 16 : 10);
        bKnown = pDigits < pEnd && objResult.ec == std::errc() && objResult.ptr == pEnd && isCharacter(nCode);
    }
    else if (bKnown)
    {
        bKnown = strName == "lt" || strName == "gt" || strName == "amp" || strName == "quot" || strName == "apos";
    }
    if (!bKnown)
        return fail(QStringLiteral("unknown reference \"%1\"").arg(OrmExcerpt::of(view(p, std::min(pEnd + 1, m_pEnd)))), p);
    p = pEnd + 1;
    return true;
}

bool OrmXmlScanner::scanName(std::string_view& strName)
{
    const char* pStart = m_p;
    while (m_p < m_pEnd && isA(*m_p, eNamePart))
        ++m_p;
    if (m_p - pStart > OrmDocumentLimits::nXmlNameBytes)
        return fail(QStringLiteral("a name longer than %1 bytes").arg(OrmDocumentLimits::nXmlNameBytes), pStart);
    if (m_p == m_pEnd)
        return failEnd();
    if (m_p == pStart)
        return fail(QStringLiteral("a name is missing"), pStart);
    strName = view(pStart, m_p);
    return true;
}

/// Searches in growing steps: most ends are near, and the display stays alive where one is far.
bool OrmXmlScanner::skipUntil(const char* pFrom, std::string_view strEnd, const char*& pFound)
{
    const char* p = pFrom;
    qint64 nStep = 256;
    while (m_pEnd - p >= static_cast<qint64>(strEnd.size()))
    {
        const char* pStop = p + std::min(nStep, static_cast<qint64>(m_pEnd - p));
        const void* pHit = memmem(p, static_cast<size_t>(pStop - p), strEnd.data(), strEnd.size());
        if (pHit)
        {
            pFound = static_cast<const char*>(pHit);
            return true;
        }
        if (nStep == nBytesPerAlive)
            COrmProcess::keepAlive();
        nStep = std::min(2 * nStep, nBytesPerAlive);
        p = pStop == m_pEnd ? m_pEnd : pStop - strEnd.size() + 1;
    }
    return failEnd();
}

void OrmXmlScanner::skipBlanks()
{
    while (m_p < m_pEnd && isA(*m_p, eBlank))
        ++m_p;
}

/// Checks what was not checked yet. A character that is cut off at the end waits for the rest of it; where the document itself ends there,
/// it ends early in any case.
bool OrmXmlScanner::checkCharacters(const char* pTo)
{
    if (m_pChecked >= pTo)
        return true;
    OrmTextCheck::EFault eFault = OrmTextCheck::EFault::None;
    m_pChecked = OrmTextCheck::findFault(m_pChecked, pTo, eFault);
    if (eFault == OrmTextCheck::EFault::None || eFault == OrmTextCheck::EFault::Incomplete)
        return true;
    const int nByte = static_cast<unsigned char>(*m_pChecked);
    const QString strByte = QStringLiteral("0x%1").arg(nByte, 2, 16, QLatin1Char('0'));
    if (eFault == OrmTextCheck::EFault::Nul)
        setError(QStringLiteral("NUL byte"), m_pChecked);
    else if (eFault == OrmTextCheck::EFault::Control)
        setError(QStringLiteral("control character %1").arg(strByte), m_pChecked);
    else
        setError(QStringLiteral("byte %1 is not UTF-8").arg(strByte), m_pChecked);
    return false;
}

void OrmXmlScanner::noteLongText(const char* pFrom, const char* pTo, bool bText)
{
    // Line ends that must be converted are left to the parser.
    if (pTo - pFrom < nLongText || (bText && findByte(pFrom, pTo, '\r') != pTo))
        return;
    m_objBuilder.longText(m_nDepth, range(pFrom, pTo), bText);
}

/// Characters that are not allowed come first: they often are the cause of what follows.
bool OrmXmlScanner::fail(const QString& strReason, const char* pWhere)
{
    if (checkCharacters(pWhere))
        setError(strReason, pWhere);
    return false;
}

bool OrmXmlScanner::failEnd()
{
    return fail(QStringLiteral("the file ends early"), m_pEnd);
}

void OrmXmlScanner::setError(const QString& strReason, const char* pWhere)
{
    const auto nLine = std::count(m_pBegin, pWhere, '\n') + 1;
    m_strError = QStringLiteral("%1 (line %2, offset %3)").arg(strReason).arg(nLine).arg(pWhere - m_pBegin);
}

SXmlRange OrmXmlScanner::range(const char* pFrom, const char* pTo) const
{
    return {static_cast<quint32>(pFrom - m_pBegin), static_cast<quint32>(pTo - m_pBegin)};
}
