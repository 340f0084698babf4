#include "PlainXml.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace
{
using PlainXml::EKey;
using PlainXml::SElement;

constexpr int nDeepest = 64;
constexpr std::size_t nMostAttributes = 256;
constexpr std::size_t nLongestName = 1024;
constexpr std::size_t nLongestValue = 65536;
constexpr std::size_t nLongestReference = 64; ///< between '&' and ';', both counted out
constexpr long nMostElementsOfRow = 1024;

/// Thrown where the document is not sound; caught by read() alone.
struct SUnsound
{
};

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool startsName(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

bool continuesName(char c)
{
    return startsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

std::string lower(std::string strText)
{
    for (char& c : strText)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return strText;
}

bool isCharacter(unsigned long nCode)
{
    return nCode == 9 || nCode == 10 || nCode == 13 || (nCode >= 0x20 && nCode <= 0xD7FF) || (nCode >= 0xE000 && nCode <= 0xFFFD) ||
           (nCode >= 0x10000 && nCode <= 0x10FFFF);
}

/// Every code of the text, one after the other; throws where there is none.
void checkCharacters(std::string_view strText)
{
    std::size_t i = 0;
    while (i < strText.size())
    {
        const unsigned c = static_cast<unsigned char>(strText[i]);
        const std::size_t nLength = c < 0x80 ? 1 : c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
        if (c >= 0xF8 || (c >= 0x80 && c < 0xC0) || i + nLength > strText.size())
            throw SUnsound();
        unsigned long nCode = nLength == 1 ? c : c & (0x7FU >> nLength);
        for (std::size_t k = 1; k < nLength; ++k)
        {
            const unsigned d = static_cast<unsigned char>(strText[i + k]);
            if (d < 0x80 || d > 0xBF)
                throw SUnsound();
            nCode = nCode * 64 + (d - 0x80);
        }
        const unsigned long anLowest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (nCode < anLowest[nLength] || !isCharacter(nCode))
            throw SUnsound();
        i += nLength;
    }
}

std::string utf8(unsigned long n)
{
    const auto part = [n](int nShift, unsigned nMark) { return static_cast<char>(nMark | ((n >> nShift) & 0x3FU)); };
    if (n < 0x80)
        return std::string(1, static_cast<char>(n));
    if (n < 0x800)
        return {static_cast<char>(0xC0U | (n >> 6)), part(0, 0x80)};
    if (n < 0x10000)
        return {static_cast<char>(0xE0U | (n >> 12)), part(6, 0x80), part(0, 0x80)};
    return {static_cast<char>(0xF0U | (n >> 18)), part(12, 0x80), part(6, 0x80), part(0, 0x80)};
}

class CReader
{
public:
    explicit CReader(std::string_view strText) : m_str(strText) {}

    SElement document()
    {
        if (m_str.empty())
            throw SUnsound();
        if (m_str.substr(0, 3) == "\xEF\xBB\xBF")
            m_i = 3;
        checkCharacters(m_str.substr(m_i));
        if (rest().substr(0, 5) == "<?xml" && rest().size() > 5 && isBlank(rest()[5]))
            declaration();
        aside();
        if (!at("<") || rest().size() < 2 || !startsName(rest()[1]))
            throw SUnsound();
        SElement objRoot = element(1);
        aside();
        if (m_i != m_str.size() || objRoot.m_strName != "Ormelle.Result")
            throw SUnsound();
        return objRoot;
    }

private:
    std::string_view rest() const { return m_str.substr(m_i); }
    bool at(std::string_view strWhat) const { return rest().substr(0, strWhat.size()) == strWhat; }
    bool take(std::string_view strWhat)
    {
        const bool bThere = at(strWhat);
        m_i += bThere ? strWhat.size() : 0;
        return bThere;
    }
    void need(std::string_view strWhat)
    {
        if (!take(strWhat))
            throw SUnsound();
    }
    void blanks()
    {
        while (m_i < m_str.size() && isBlank(m_str[m_i]))
            ++m_i;
    }
    /// What stands before the mark, which is taken too.
    std::string_view upTo(std::string_view strMark)
    {
        const std::size_t nFound = m_str.find(strMark, m_i);
        if (nFound == std::string_view::npos)
            throw SUnsound();
        const std::string_view strBefore = m_str.substr(m_i, nFound - m_i);
        m_i = nFound + strMark.size();
        return strBefore;
    }
    std::string name()
    {
        const std::size_t nStart = m_i;
        while (m_i < m_str.size() && continuesName(m_str[m_i]))
            ++m_i;
        if (m_i == nStart || m_i - nStart > nLongestName)
            throw SUnsound();
        return std::string(m_str.substr(nStart, m_i - nStart));
    }

    void declaration()
    {
        const std::string_view strInside = upTo("?>");
        const std::size_t nEnd = m_i;
        CReader objInside(strInside);
        objInside.m_i = 5;
        for (objInside.blanks(); objInside.m_i < strInside.size(); objInside.blanks())
        {
            const std::string strName = objInside.name();
            objInside.blanks();
            objInside.need("=");
            objInside.blanks();
            const bool bDouble = objInside.at("\"");
            if (!bDouble && !objInside.at("'"))
                throw SUnsound();
            ++objInside.m_i;
            const std::string strValue(objInside.upTo(bDouble ? "\"" : "'"));
            if ((strName == "encoding" && lower(strValue) != "utf-8") || (strName == "version" && strValue != "1.0"))
                throw SUnsound();
        }
        m_i = nEnd;
    }

    /// Blanks, comments and instructions.
    void aside()
    {
        for (blanks(); at("<!--") || at("<?"); blanks())
            commentOrInstruction();
    }

    void commentOrInstruction()
    {
        if (take("<!--"))
        {
            upTo("--");
            need(">");
            return;
        }
        need("<?");
        if (m_i == m_str.size() || !startsName(m_str[m_i]))
            throw SUnsound();
        const std::string strTarget = name();
        const std::string_view strInside = upTo("?>");
        if (lower(strTarget) == "xml" || (!strInside.empty() && !isBlank(strInside.front())))
            throw SUnsound();
    }

    /// A reference, from its '&' on, as the character that it stands for.
    std::string reference()
    {
        need("&");
        const std::size_t nEnd = rest().substr(0, nLongestReference - 1).find(';');
        if (nEnd == std::string_view::npos)
            throw SUnsound();
        const std::string strName(rest().substr(0, nEnd));
        m_i += nEnd + 1;
        const std::pair<const char*, const char*> aKnown[] = {{"lt", "<"}, {"gt", ">"}, {"amp", "&"}, {"quot", "\""}, {"apos", "'"}};
        for (const auto& [pName, pCharacter] : aKnown)
        {
            if (strName == pName)
                return pCharacter;
        }
        const bool bHex = strName.substr(0, 2) == "#x";
        const std::string strDigits = strName.substr(std::min<std::size_t>(strName.size(), bHex ? 2 : 1));
        const char* pAllowed = bHex ? "0123456789abcdefABCDEF" : "0123456789";
        if (strName.substr(0, 1) != "#" || strDigits.empty() || strDigits.find_first_not_of(pAllowed) != std::string::npos)
            throw SUnsound();
        unsigned long nCode = 0;
        for (const char c : strDigits)
            nCode = std::min(0x7FFFFFFFUL, nCode * (bHex ? 16 : 10) + std::stoul(std::string(1, c), nullptr, 16));
        if (!isCharacter(nCode))
            throw SUnsound();
        return utf8(nCode);
    }

    /// A line end of whatever form.
    bool takeLineEnd() { return take("\r\n") || take("\r") || take("\n"); }

    std::pair<std::string, std::string> attribute()
    {
        if (!startsName(m_str[m_i]))
            throw SUnsound();
        const std::string strName = name();
        blanks();
        need("=");
        blanks();
        const bool bDouble = at("\"");
        if (!bDouble && !at("'"))
            throw SUnsound();
        ++m_i;
        const std::size_t nStart = m_i;
        std::string strValue;
        while (m_i < m_str.size() && m_str[m_i] != (bDouble ? '"' : '\''))
        {
            if (at("<"))
                throw SUnsound();
            if (at("&"))
                strValue += reference();
            else if (takeLineEnd() || take("\t"))
                strValue += ' ';
            else
                strValue += m_str[m_i++];
        }
        if (m_i == m_str.size() || m_i - nStart > nLongestValue)
            throw SUnsound();
        ++m_i;
        return {strName, strValue};
    }

    SElement element(int nDepth)
    {
        if (nDepth > nDeepest)
            throw SUnsound();
        need("<");
        SElement objElement;
        objElement.m_strName = name();
        while (true)
        {
            const std::size_t nBefore = m_i;
            blanks();
            if (at(">") || at("/"))
                break;
            if (m_i == nBefore || m_i == m_str.size())
                throw SUnsound();
            objElement.m_vecAttributes.push_back(attribute());
            const std::string& strNew = objElement.m_vecAttributes.back().first;
            const auto isNew = [&](const auto& objOther) { return objOther.first == strNew; };
            if (objElement.m_vecAttributes.size() > nMostAttributes ||
                std::count_if(objElement.m_vecAttributes.begin(), objElement.m_vecAttributes.end(), isNew) > 1)
                throw SUnsound();
        }
        if (take("/>"))
            return objElement;
        need(">");
        while (!take("</"))
            content(objElement, nDepth);
        need(objElement.m_strName);
        blanks();
        need(">");
        return objElement;
    }

    void content(SElement& objElement, int nDepth)
    {
        if (m_i == m_str.size())
            throw SUnsound();
        if (at("<!--") || at("<?"))
        {
            commentOrInstruction();
        }
        else if (take("<![CDATA["))
        {
            CReader objInside(upTo("]]>"));
            while (objInside.m_i < objInside.m_str.size())
                objElement.m_strText += objInside.takeLineEnd() ? '\n' : objInside.m_str[objInside.m_i++];
        }
        else if (at("<"))
        {
            if (rest().size() < 2 || !startsName(rest()[1]))
                throw SUnsound();
            objElement.m_vecChildren.push_back(element(nDepth + 1));
        }
        else if (at("&"))
        {
            objElement.m_strText += reference();
        }
        else
        {
            objElement.m_strText += takeLineEnd() ? '\n' : m_str[m_i++];
        }
    }

    std::string_view m_str;
    std::size_t m_i = 0; ///< what comes next
};

EKey keyOf(const SElement& objElement, const std::string& strKey, std::string& strText)
{
    if (const std::string* pValue = objElement.attribute(strKey))
    {
        strText = *pValue;
        return EKey::Found;
    }
    const SElement* pChild = objElement.child(strKey);
    if (!pChild)
        return EKey::Absent;
    strText = pChild->m_strText;
    return EKey::Found;
}
} // namespace

namespace PlainXml
{
const std::string* SElement::attribute(const std::string& strName) const
{
    for (const auto& objAttribute : m_vecAttributes)
    {
        if (objAttribute.first == strName)
            return &objAttribute.second;
    }
    return nullptr;
}

const SElement* SElement::child(const std::string& strName) const
{
    const std::vector<const SElement*> vecAll = children(strName);
    return vecAll.empty() ? nullptr : vecAll.front();
}

std::vector<const SElement*> SElement::children(const std::string& strName) const
{
    std::vector<const SElement*> vecFound;
    for (const SElement& objChild : m_vecChildren)
    {
        if (objChild.m_strName == strName)
            vecFound.push_back(&objChild);
    }
    return vecFound;
}

long SElement::elementsWithin() const
{
    long nCount = 0;
    for (const SElement& objChild : m_vecChildren)
        nCount += 1 + objChild.elementsWithin();
    return nCount;
}

EKey SSection::ownKey(const std::string& strKey, std::string& strText) const
{
    const EKey eKey = keyOf(*m_pElement, strKey, strText);
    if (eKey == EKey::Found && !m_pElement->attribute(strKey) && m_pElement->child(strKey)->elementsWithin() > nMostElementsOfRow)
        return EKey::TooLarge;
    return eKey;
}

EKey SSection::rowKey(const std::string& strTag, long nIndex, const std::string& strKey, std::string& strText) const
{
    const std::vector<const SElement*> vecRows = m_pElement ? m_pElement->children(strTag) : std::vector<const SElement*>();
    if (nIndex < 0 || nIndex >= static_cast<long>(vecRows.size()))
        return EKey::Absent;
    const SElement& objRow = *vecRows[static_cast<std::size_t>(nIndex)];
    return objRow.elementsWithin() > nMostElementsOfRow ? EKey::TooLarge : keyOf(objRow, strKey, strText);
}

long SSection::rows(const std::string& strTag) const
{
    return m_pElement ? static_cast<long>(m_pElement->children(strTag).size()) : 0;
}

SSection SDocument::section(const std::string& strFirst, const std::string& strSecond) const
{
    const SElement* pFirst = m_bSound ? m_objRoot.child(strFirst) : nullptr;
    return {pFirst ? pFirst->child(strSecond) : nullptr};
}

SDocument read(std::string_view strText)
{
    SDocument objDocument;
    try
    {
        objDocument.m_objRoot = CReader(strText).document();
        objDocument.m_bSound = true;
    }
    catch (const SUnsound&)
    {
        objDocument.m_bSound = false;
    }
    return objDocument;
}
} // namespace PlainXml
