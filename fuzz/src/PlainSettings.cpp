#include "PlainSettings.h"

#include "PlainText.h"

#include <cstdint>
#include <limits>

namespace
{
constexpr std::size_t nLongestLine = 65536;
constexpr long nMostEntries = 100000;
constexpr const char* pBlanks = " \t\v\f";

std::string trimmed(const std::string& strText)
{
    const std::size_t nFirst = strText.find_first_not_of(pBlanks);
    return nFirst == std::string::npos ? "" : strText.substr(nFirst, strText.find_last_not_of(pBlanks) - nFirst + 1);
}

/// Lines that end in LF, CRLF or CR.
std::vector<std::string> linesOf(std::string_view strText)
{
    std::vector<std::string> vecLines;
    std::string strLine;
    for (std::size_t i = 0; i < strText.size(); ++i)
    {
        const bool bPair = strText.substr(i, 2) == "\r\n";
        if (strText[i] != '\n' && strText[i] != '\r')
        {
            strLine += strText[i];
            continue;
        }
        i += bPair ? 1 : 0;
        vecLines.push_back(strLine);
        strLine.clear();
    }
    if (!strLine.empty())
        vecLines.push_back(strLine);
    return vecLines;
}

/// Texts of which every other byte is 0 at their beginning, and those with a mark that says so.
bool looksWide(std::string_view strText)
{
    if (strText.size() < 2)
        return false;
    const bool bMark = strText.substr(0, 2) == "\xFF\xFE" || strText.substr(0, 2) == "\xFE\xFF";
    return bMark || (strText[0] == '\0') != (strText[1] == '\0');
}
} // namespace

namespace PlainSettings
{
const std::string* SSection::value(const std::string& strKey) const
{
    for (const auto& objKey : m_vecKeys)
    {
        if (objKey.first == strKey)
            return &objKey.second;
    }
    return nullptr;
}

const SSection* SText::section(const std::string& strName) const
{
    for (const SSection& objSection : m_vecSections)
    {
        if (objSection.m_strName == strName)
            return &objSection;
    }
    return nullptr;
}

SText read(std::string_view strText, const FnDecode& fnDecode)
{
    SText objText;
    if (looksWide(strText) || strText.find('\0') != std::string_view::npos)
        return objText;
    if (strText.substr(0, 3) == "\xEF\xBB\xBF")
        strText.remove_prefix(3);
    long nKeys = 0;
    long nSections = 0;
    std::size_t nCurrent = std::numeric_limits<std::size_t>::max();
    const auto open = [&](const std::string& strName)
    {
        for (nCurrent = 0; nCurrent < objText.m_vecSections.size() && objText.m_vecSections[nCurrent].m_strName != strName;)
            ++nCurrent;
        if (nCurrent == objText.m_vecSections.size())
            objText.m_vecSections.push_back({strName, {}});
    };
    for (const std::string& strRaw : linesOf(strText))
    {
        if (strRaw.size() > nLongestLine)
            return SText();
        const std::string strLine = trimmed(strRaw);
        if (strLine.empty() || strLine[0] == '#' || strLine[0] == ';')
            continue;
        // The last character closes the name; where it does not, the first bracket does, and a remark follows.
        const std::size_t nClose = strLine.back() == ']' ? strLine.size() - 1 : strLine.find(']');
        if (strLine[0] == '[' && nClose != std::string::npos)
        {
            ++nSections;
            open(fnDecode(trimmed(strLine.substr(1, nClose - 1))));
            continue;
        }
        const std::size_t nEqual = strLine.find('=');
        if (nEqual == std::string::npos || trimmed(strLine.substr(0, nEqual)).empty())
            continue;
        ++nKeys;
        const std::string strKey = fnDecode(trimmed(strLine.substr(0, nEqual)));
        const std::string strValue = fnDecode(trimmed(strLine.substr(nEqual + 1)));
        if (nCurrent == std::numeric_limits<std::size_t>::max())
            open("");
        auto& vecKeys = objText.m_vecSections[nCurrent].m_vecKeys;
        std::size_t nKey = 0;
        while (nKey < vecKeys.size() && vecKeys[nKey].first != strKey)
            ++nKey;
        if (nKey == vecKeys.size())
            vecKeys.emplace_back(strKey, "");
        vecKeys[nKey].second = strValue;
    }
    if (nKeys > nMostEntries || nSections > nMostEntries)
        return SText();
    objText.m_bReadable = true;
    return objText;
}

std::vector<std::string> clickNumbers(const SText& objText)
{
    std::vector<std::string> vecClicks;
    const SSection* pSection = objText.section("Click Numbers");
    const std::string* pCount = pSection ? pSection->value("Count") : nullptr;
    std::int64_t nCount = 0;
    if (!pCount || !PlainText::wholeNumber(*pCount, 0, std::numeric_limits<int>::max(), nCount))
        return vecClicks;
    // A count is a claim: no more of the numbers up to it can be there than there are keys, but they may be far apart.
    for (std::int64_t nAfter = 0; nAfter < nCount;)
    {
        std::int64_t nNext = nCount + 1;
        for (const auto& objKey : pSection->m_vecKeys)
        {
            std::int64_t nNumber = 0;
            if (PlainText::wholeNumber(objKey.first, nAfter + 1, nNext - 1, nNumber))
                nNext = nNumber;
        }
        if (nNext <= nCount)
            vecClicks.push_back(*pSection->value(std::to_string(nNext)));
        nAfter = nNext;
    }
    return vecClicks;
}
} // namespace PlainSettings
