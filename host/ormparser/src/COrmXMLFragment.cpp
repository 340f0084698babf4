#include "COrmXMLFragment.h"

#include "OrmDocumentLimits.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>

namespace
{
/// Blanks are part of a text, also next to a comment.
constexpr unsigned nParseFlags =
    pugi::parse_cdata | pugi::parse_escapes | pugi::parse_wconv_attribute | pugi::parse_eol | pugi::parse_ws_pcdata | pugi::parse_fragment;

// A long text is stood in for by a mark: a character that no sound document holds, the text's number in 8 hexadecimal digits, a semicolon.
constexpr char cMark = '\x01';
constexpr size_t nMarkLength = 10;
constexpr size_t nKeptScratch = 1048576; ///< a larger buffer is given back after use

bool isText(const pugi::xml_node& objNode)
{
    return objNode.type() == pugi::node_pcdata || objNode.type() == pugi::node_cdata;
}
} // namespace

COrmXMLFragment::COrmXMLFragment(const char* pDocument, const SXmlLayout& objLayout) : m_pDocument(pDocument), m_objLayout(objLayout) {}

bool COrmXMLFragment::parseRows(quint32 nBatch)
{
    if (m_bRows && m_nBatch == nBatch)
        return !m_bTooLarge;
    m_bRows = false;
    const SXmlBatch& objBatch = m_objLayout.m_vecBatches[nBatch];
    m_objNodes.reset();
    m_vecScratch.clear();
    if (!objBatch.m_bOversized)
        copyWithoutLongTexts(objBatch.m_objRange);
    parseScratch();
    m_bRows = true;
    m_nBatch = nBatch;
    m_bTooLarge = objBatch.m_bOversized;
    return !m_bTooLarge;
}

void COrmXMLFragment::parseTag(const SXmlRange& objTag)
{
    m_bRows = false;
    m_objNodes.reset();
    m_vecScratch.assign(m_pDocument + objTag.m_nStart, m_pDocument + objTag.m_nEnd);
    if (m_vecScratch[m_vecScratch.size() - 2] != '/')
    {
        m_vecScratch.back() = '/';
        m_vecScratch.push_back('>');
    }
    parseScratch();
}

void COrmXMLFragment::copyWithoutLongTexts(const SXmlRange& objRange)
{
    if (m_vecScratch.capacity() > nKeptScratch && objRange.size() < nKeptScratch)
        std::vector<char>().swap(m_vecScratch);
    const auto itEnd = m_objLayout.m_vecHoles.end();
    auto it = std::lower_bound(m_objLayout.m_vecHoles.begin(), itEnd, objRange.m_nStart,
                               [](const SXmlHole& objHole, quint32 nStart) { return objHole.m_objRange.m_nStart < nStart; });
    const char* p = m_pDocument + objRange.m_nStart;
    for (; it != itEnd && it->m_objRange.m_nStart < objRange.m_nEnd; ++it)
    {
        m_vecScratch.insert(m_vecScratch.end(), p, m_pDocument + it->m_objRange.m_nStart);
        if (it->m_bText)
        {
            char acMark[nMarkLength] = {cMark, '0', '0', '0', '0', '0', '0', '0', '0', ';'};
            auto nNumber = static_cast<quint32>(it - m_objLayout.m_vecHoles.begin());
            for (char* pDigit = acMark + nMarkLength - 2; nNumber != 0; nNumber >>= 4)
                *pDigit-- = "0123456789abcdef"[nNumber & 15U];
            m_vecScratch.insert(m_vecScratch.end(), acMark, acMark + nMarkLength);
        }
        p = m_pDocument + it->m_objRange.m_nEnd;
    }
    m_vecScratch.insert(m_vecScratch.end(), p, m_pDocument + objRange.m_nEnd);
}

void COrmXMLFragment::parseScratch()
{
    ++m_nParse;
    m_strComposed.clear();
    if (m_vecScratch.empty())
        return;
    const pugi::xml_parse_result objResult =
        m_objNodes.load_buffer_inplace(m_vecScratch.data(), m_vecScratch.size(), nParseFlags, pugi::encoding_utf8);
    if (objResult.status == pugi::status_out_of_memory)
        throw std::bad_alloc();
    // Anything else that is wrong was found when the document was passed over.
    Q_ASSERT_X(objResult, "COrmXMLFragment", objResult.description());
}

template <typename FnPiece>
void COrmXMLFragment::forEachPiece(const pugi::xml_node& objElement, FnPiece fnPiece) const
{
    for (const pugi::xml_node& objNode : objElement.children())
    {
        if (!isText(objNode))
            continue;
        std::string_view strRest = objNode.value();
        while (!strRest.empty())
        {
            const bool bMark = strRest.front() == cMark;
            const size_t nLength = bMark ? nMarkLength : std::min(strRest.find(cMark), strRest.size());
            const std::string_view strPiece = strRest.substr(0, nLength);
            fnPiece(bMark ? longText(strPiece) : strPiece);
            strRest.remove_prefix(nLength);
        }
    }
}

bool COrmXMLFragment::text(const pugi::xml_node& objElement, std::string_view& strText)
{
    int nPieces = 0;
    size_t nBytes = 0;
    m_strComposed.clear();
    std::string_view strOnly = m_strComposed;
    forEachPiece(objElement,
                 [&](std::string_view strPiece)
                 {
                     ++nPieces;
                     nBytes += strPiece.size();
                     strOnly = strPiece;
                 });
    if (nPieces > 1)
    {
        if (nBytes > static_cast<size_t>(OrmDocumentLimits::nXmlComposedText))
            return false;
        m_strComposed.reserve(nBytes);
        forEachPiece(objElement, [this](std::string_view strPiece) { m_strComposed.append(strPiece); });
        strOnly = m_strComposed;
    }
    strText = strOnly;
    return true;
}

std::string_view COrmXMLFragment::longText(std::string_view strMark) const
{
    quint32 nNumber = 0;
    std::from_chars(strMark.data() + 1, strMark.data() + nMarkLength - 1, nNumber, 16);
    const SXmlRange& objRange = m_objLayout.m_vecHoles[nNumber].m_objRange;
    return {m_pDocument + objRange.m_nStart, objRange.size()};
}
