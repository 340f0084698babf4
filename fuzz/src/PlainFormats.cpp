#include "PlainFormats.h"

#include "PlainText.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace
{
bool isBlank(char c)
{
    return std::strchr(" \t\v\f\r\n", c) != nullptr; // the closing zero of the list counts too
}

std::string withoutPlus(const std::string& strText)
{
    const bool bPlus = strText.size() > 1 && strText[0] == '+' && strText[1] != '+' && strText[1] != '-';
    return bPlus ? strText.substr(1) : strText;
}
} // namespace

namespace PlainFormats
{
bool nextLine(const std::string& strText, std::size_t nAt, SLine& line)
{
    if (nAt >= strText.size())
        return false;
    line.m_nBegin = nAt;
    while (nAt < strText.size() && strText[nAt] != '\r' && strText[nAt] != '\n')
        ++nAt;
    line.m_nEnd = nAt;
    if (strText.compare(nAt, 2, "\r\n") == 0)
        nAt += 2;
    else if (nAt < strText.size())
        nAt += 1;
    line.m_nNext = nAt;
    return true;
}

std::vector<std::string> words(const std::string& strText)
{
    std::vector<std::string> vecWords(1);
    for (const char c : strText)
    {
        if (!isBlank(c))
            vecWords.back() += c;
        else if (!vecWords.back().empty())
            vecWords.emplace_back();
    }
    if (vecWords.back().empty())
        vecWords.pop_back();
    return vecWords;
}

std::string bare(const std::string& strText)
{
    std::size_t nFrom = 0;
    std::size_t nTo = strText.size();
    while (nFrom < nTo && isBlank(strText[nFrom]))
        ++nFrom;
    while (nTo > nFrom && isBlank(strText[nTo - 1]))
        --nTo;
    return strText.substr(nFrom, nTo - nFrom);
}

std::string lower(std::string strText)
{
    for (char& c : strText)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return strText;
}

bool number(std::string strText, double& fValue)
{
    return PlainText::decimalNumber(withoutPlus(strText), fValue);
}

bool anyNumber(std::string strText, double& fValue)
{
    if (number(strText, fValue))
        return true;
    std::string strName = lower(withoutPlus(strText));
    const bool bMinus = !strName.empty() && strName[0] == '-';
    strName = bMinus ? strName.substr(1) : strName;
    if (strName == "nan")
        fValue = std::numeric_limits<double>::quiet_NaN();
    else if (strName == "inf" || strName == "infinity")
        fValue = bMinus ? -HUGE_VAL : HUGE_VAL;
    else
        return false;
    return true;
}

bool whole(std::string strText, std::int64_t& nValue)
{
    strText = withoutPlus(strText);
    const bool bMinus = !strText.empty() && strText[0] == '-';
    std::string strDigits = strText.substr(bMinus ? 1 : 0);
    if (strDigits.empty() || strDigits.find_first_not_of("0123456789") != std::string::npos)
        return false;
    strDigits.erase(0, std::min(strDigits.find_first_not_of('0'), strDigits.size() - 1));
    const std::string strMost = bMinus ? "9223372036854775808" : "9223372036854775807";
    if (strDigits.size() > strMost.size() || (strDigits.size() == strMost.size() && strDigits > strMost))
        return false;
    std::uint64_t nDigits = 0;
    for (const char c : strDigits)
        nDigits = 10 * nDigits + static_cast<std::uint64_t>(c - '0');
    nValue = static_cast<std::int64_t>(bMinus ? 0 - nDigits : nDigits);
    return true;
}

std::uint64_t bits(const std::string& strBytes, std::size_t nAt, int nBytes, bool bBig)
{
    std::uint64_t nBits = 0;
    for (int n = 0; n < nBytes; ++n)
        nBits = nBits << 8U | static_cast<unsigned char>(strBytes[nAt + static_cast<std::size_t>(bBig ? n : nBytes - 1 - n)]);
    return nBits;
}

bool scalar(const std::string& strBytes, std::size_t nAt, const std::string& strType, bool bBig, double& fValue)
{
    const int nBytes = strType[1] - '0';
    if (nAt > strBytes.size() || strBytes.size() - nAt < static_cast<std::size_t>(nBytes))
        return false;
    const std::uint64_t nBits = bits(strBytes, nAt, nBytes, bBig);
    if (strType == "f4")
    {
        const auto nWord = static_cast<std::uint32_t>(nBits);
        float fFloat = 0.0F;
        std::memcpy(&fFloat, &nWord, 4);
        fValue = static_cast<double>(fFloat);
    }
    else if (strType == "f8")
        std::memcpy(&fValue, &nBits, 8);
    else if (strType[0] == 'u')
        fValue = static_cast<double>(nBits);
    else
        fValue = static_cast<double>(static_cast<std::int64_t>(nBits << (64 - 8 * nBytes)) >> (64 - 8 * nBytes));
    return true;
}
} // namespace PlainFormats
