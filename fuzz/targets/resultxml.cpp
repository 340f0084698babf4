// The reader of result documents: what it refuses, and every value that it gives, against a plain tree of the same document.

#include "CPLResultXMLWrapper.h"
#include "DocumentGrammar.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "PlainText.h"
#include "PlainXml.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <set>

namespace
{
constexpr long long nAllowedMemory = 32LL * 1024 * 1024; ///< beyond the size of the document
constexpr int nManySections = 6; ///< of a document of more only every third one is compared, beginning at one of the input's choice
constexpr int nSectionStride = 3;
constexpr long nMostRows = 5; ///< of one section

using FuzzTarget::demand;
using PlainXml::EKey;
using PlainXml::SElement;
using PlainXml::SSection;

QString text(const std::string& strText)
{
    return QString::fromStdString(strText);
}

std::set<std::string> namesOf(const std::vector<SElement>& vecElements)
{
    std::set<std::string> setNames;
    for (const SElement& objElement : vecElements)
        setNames.insert(objElement.m_strName);
    return setNames;
}

/// The keys that an element has, and one that it has not.
std::set<std::string> keysOf(const SElement& objElement)
{
    std::set<std::string> setKeys = namesOf(objElement.m_vecChildren);
    for (const auto& objAttribute : objElement.m_vecAttributes)
        setKeys.insert(objAttribute.first);
    setKeys.insert("Absent");
    return setKeys;
}

/// How many values an element is said to have: what it has, or what its text can not fill.
std::int64_t claimedCount(CFuzzInput& objChoices, std::int64_t nHeld)
{
    const std::vector<std::int64_t> vecClaims = {nHeld,
                                                 nHeld,
                                                 nHeld + 1,
                                                 nHeld - 1,
                                                 0,
                                                 -1,
                                                 25000000,
                                                 4294967296LL,
                                                 46341LL * 46341,
                                                 1LL << 61,
                                                 (1LL << 61) + 1,
                                                 std::numeric_limits<std::int64_t>::max(),
                                                 std::numeric_limits<std::int64_t>::min()};
    return objChoices.oneOf(vecClaims);
}

/// One result document, open in the reader under test and as a tree.
class CComparison
{
public:
    CComparison(const std::string& strDocument, CFuzzInput& objChoices)
        : m_objChoices(objChoices),
          m_objTree(PlainXml::read(strDocument)),
          m_bOpen(m_objXML.loadXMLFile(FuzzTarget::fileWith(QByteArray(strDocument.data(), static_cast<int>(strDocument.size())))))
    {
    }

    void run()
    {
        FuzzTarget::tookInput(m_bOpen);
        demand(m_bOpen == m_objTree.m_bSound,
               m_bOpen ? "opened, but is not sound" : "sound, but refused: " + m_objXML.lastError().toStdString());
        demand(m_bOpen == m_objXML.lastError().isEmpty(), "a refusal without a reason, or a reason without one");
        const std::string* pVersion = m_bOpen ? m_objTree.m_objRoot.attribute("Version") : nullptr;
        demand(m_objXML.getVersion() == (pVersion ? text(*pVersion) : QString()), "version");
        std::vector<std::pair<std::string, std::string>> vecSections;
        for (const std::string& strFirst : namesOf(m_objTree.m_objRoot.m_vecChildren))
        {
            for (const std::string& strSecond : namesOf(m_objTree.m_objRoot.child(strFirst)->m_vecChildren))
                vecSections.emplace_back(strFirst, strSecond);
        }
        const bool bMany = vecSections.size() > static_cast<std::size_t>(nManySections);
        const auto nFirst = static_cast<std::size_t>(bMany ? m_objChoices.below(nSectionStride) : 0);
        for (std::size_t i = nFirst; i < vecSections.size(); i += bMany ? nSectionStride : 1)
            compareSection(vecSections[i].first, vecSections[i].second);
        demand(!m_objXML.openSection("Absent", "Absent") && m_objXML.currentChildCount("Absent") == 0, "a section that is not there");
    }

private:
    void compareSection(const std::string& strFirst, const std::string& strSecond)
    {
        const SSection objPlain = m_objTree.section(strFirst, strSecond);
        demand(m_objXML.openSection(text(strFirst), text(strSecond)), "section " + strSecond);
        for (const std::string& strKey : keysOf(*objPlain.m_pElement))
        {
            std::string strExpected;
            QString strRead;
            const bool bFound = objPlain.ownKey(strKey, strExpected) == EKey::Found;
            demand(m_objXML.currentKeyText(text(strKey), strRead) == bFound && strRead == text(bFound ? strExpected : std::string()),
                   "key " + strKey);
            int nRead = 7;
            std::int64_t nExpected = 7;
            const bool bInt =
                bFound && PlainText::wholeNumber(strExpected, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), nExpected);
            demand(m_objXML.Read2ndTagKeyValues(text(strFirst), text(strSecond), text(strKey), nRead) == bInt && nRead == nExpected,
                   "int " + strKey);
        }
        for (const std::string& strTag : namesOf(objPlain.m_pElement->m_vecChildren))
            compareRows(strFirst, strSecond, strTag, objPlain);
    }

    void compareRows(const std::string& strFirst, const std::string& strSecond, const std::string& strTag, const SSection& objPlain)
    {
        const long nRows = objPlain.rows(strTag);
        demand(m_objXML.currentChildCount(text(strTag)) == nRows, "the number of rows " + strTag);
        const std::vector<const SElement*> vecRows = objPlain.m_pElement->children(strTag);
        for (long nRow = 0; nRow <= std::min(nRows, nMostRows); ++nRow)
        {
            const SElement& objLike = *vecRows[static_cast<std::size_t>(std::min(nRow, nRows - 1))];
            for (const std::string& strKey : keysOf(objLike))
                compareKey(strFirst, strSecond, strTag, nRow, strKey, objPlain);
            compareHex(strTag, nRow, objPlain);
        }
        compareNumbers(strTag, objPlain);
    }

    void compareKey(const std::string& strFirst, const std::string& strSecond, const std::string& strTag, long nRow,
                    const std::string& strKey, const SSection& objPlain)
    {
        std::string strExpected;
        const bool bFound = objPlain.rowKey(strTag, nRow, strKey, strExpected) == EKey::Found;
        const QString strWanted = bFound ? text(strExpected) : QStringLiteral("before");
        QString strRead = QStringLiteral("before");
        QString strThird = QStringLiteral("before");
        const auto nIndex = static_cast<int>(nRow);
        demand(m_objXML.ReadCurrentKeyValues(nIndex, text(strTag), text(strKey), strRead) == bFound && strRead == strWanted,
               "text " + strKey);
        demand(m_objXML.Read3rdTagKeyValues(text(strFirst), text(strSecond), text(strTag), text(strKey), strThird, nIndex) == bFound &&
                   strThird == strWanted,
               "third tag's " + strKey);
        float fRead = 7.0F;
        float fExpected = 7.0F;
        const bool bFloat = bFound && PlainText::floatNumber(strExpected, fExpected);
        demand(m_objXML.ReadCurrentKeyValues(nIndex, text(strTag), text(strKey), fRead) == bFloat && fRead == fExpected, "float " + strKey);
    }

    void compareHex(const std::string& strTag, long nRow, const SSection& objPlain)
    {
        std::string strText;
        const bool bText = objPlain.rowKey(strTag, nRow, "Text.Data", strText) == EKey::Found;
        if (!bText && !m_objChoices.rarely(4))
            return;
        const auto nIndex = static_cast<int>(nRow);
        const std::int64_t nWords = claimedCount(m_objChoices, static_cast<std::int64_t>(strText.size()) / 8);
        std::vector<std::uint32_t> vecExpected;
        std::vector<quint32> vecWords = {7};
        std::vector<float> vecFloats = {7.0F};
        const bool bWords = nWords == 0 || (nWords > 0 && bText && PlainText::hexWords(strText, nWords, vecExpected));
        demand(m_objXML.readCurrentHexUInts(text(strTag), nIndex, nWords, vecWords) == bWords, "whether words can be read");
        demand(m_objXML.readCurrentHexFloats(text(strTag), nIndex, nWords, vecFloats) == bWords, "whether floats can be read");
        if (bWords)
            demand(vecWords == vecExpected && vecFloats.size() == vecExpected.size() &&
                       (vecExpected.empty() || std::memcmp(vecFloats.data(), vecExpected.data(), 4 * vecExpected.size()) == 0),
                   "words of hexadecimal text");
        const std::int64_t nBytes = claimedCount(m_objChoices, static_cast<std::int64_t>(strText.size()) / 2);
        std::vector<std::uint8_t> vecBytes;
        QByteArray baBytes("before");
        const bool bBytes = nBytes == 0 || (nBytes > 0 && bText && PlainText::hexBytes(strText, nBytes, vecBytes));
        demand(m_objXML.readCurrentHexBytes(text(strTag), nIndex, nBytes, baBytes) == bBytes, "whether bytes can be read");
        demand(!bBytes || baBytes == QByteArray(reinterpret_cast<const char*>(vecBytes.data()), static_cast<int>(vecBytes.size())),
               "bytes of hexadecimal text");
    }

    /// All rows of a tag at once, by the keys of the first one.
    void compareNumbers(const std::string& strTag, const SSection& objPlain)
    {
        const long nRows = objPlain.rows(strTag);
        QStringList lstKeys;
        for (const std::string& strKey : keysOf(*objPlain.m_pElement->child(strTag)))
        {
            if (strKey != "Absent" || m_objChoices.rarely(8))
                lstKeys.append(text(strKey));
        }
        if (nRows > nMostRows || lstKeys.isEmpty())
            return;
        const std::int64_t nCount = claimedCount(m_objChoices, nRows);
        std::vector<float> vecExpected;
        std::vector<quint32> vecWhole;
        bool bFloats = nCount >= 0 && nCount <= nRows;
        bool bWhole = bFloats;
        for (long nRow = 0; nRow < nCount && (bFloats || bWhole); ++nRow)
        {
            for (const QString& strKey : lstKeys)
            {
                std::string strText;
                float fValue = 0.0F;
                std::int64_t nValue = 0;
                const bool bFound = objPlain.rowKey(strTag, nRow, strKey.toStdString(), strText) == EKey::Found;
                bFloats = bFloats && bFound && PlainText::floatNumber(strText, fValue);
                bWhole = bWhole && bFound && PlainText::wholeNumber(strText, 0, std::numeric_limits<quint32>::max(), nValue);
                vecExpected.push_back(fValue);
                vecWhole.push_back(static_cast<quint32>(nValue));
            }
        }
        std::vector<float> vecFloats = {7.0F};
        std::vector<quint32> vecUInts = {7};
        demand(m_objXML.readCurrentNumbers(text(strTag), lstKeys, nCount, vecFloats) == bFloats, "whether numbers of rows can be read");
        demand(vecFloats == (bFloats ? vecExpected : std::vector<float>{7.0F}), "numbers of rows");
        demand(m_objXML.readCurrentUInts(text(strTag), lstKeys, nCount, vecUInts) == bWhole, "whether whole numbers of rows can be read");
        demand(vecUInts == (bWhole ? vecWhole : std::vector<quint32>{7}), "whole numbers of rows");
    }

    CFuzzInput& m_objChoices;
    PlainXml::SDocument m_objTree;
    CPLResultXMLWrapper m_objXML;
    bool m_bOpen;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string strDocument =
        FuzzTarget::textOf(pData, nSize, [](const std::uint8_t* p, std::size_t n) { return DocumentGrammar::build(p, n).m_strText; });
    CFuzzInput objChoices(pData + nSize / 2, nSize - nSize / 2);
    const long long nTree = 200LL * static_cast<long long>(strDocument.size()); // what the second reader may take
    const CMemoryBound objBound(nTree + nAllowedMemory);
    CComparison(strDocument, objChoices).run();
    return 0;
}
