#include "PlainText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool hasDecimalForm(const std::string& strText)
{
    std::size_t i = 0;
    const auto digits = [&]
    {
        const std::size_t nStart = i;
        while (i < strText.size() && isDigit(strText[i]))
            ++i;
        return i - nStart;
    };
    const auto take = [&](char c)
    {
        const bool bThere = i < strText.size() && strText[i] == c;
        i += bThere ? 1 : 0;
        return bThere;
    };
    take('-');
    std::size_t nDigits = digits();
    if (take('.'))
        nDigits += digits();
    if (nDigits == 0)
        return false;
    if (take('e') || take('E'))
    {
        if (!take('-'))
            take('+');
        if (digits() == 0)
            return false;
    }
    return i == strText.size();
}
} // namespace

namespace PlainText
{
bool wholeNumber(const std::string& strText, std::int64_t nLowest, std::int64_t nHighest, std::int64_t& nValue)
{
    const bool bNegative = !strText.empty() && strText[0] == '-';
    const std::string strDigits = bNegative ? strText.substr(1) : strText;
    if (strDigits.empty() || strDigits.size() > 18 || (strDigits[0] == '0' && (strDigits.size() > 1 || bNegative)))
        return false;
    std::int64_t nRead = 0;
    for (const char c : strDigits)
    {
        if (!isDigit(c))
            return false;
        nRead = nRead * 10 + (c - '0');
    }
    nRead = bNegative ? -nRead : nRead;
    if (nRead < nLowest || nRead > nHighest)
        return false;
    nValue = nRead;
    return true;
}

bool decimalNumber(const std::string& strText, double& fValue)
{
    if (!hasDecimalForm(strText))
        return false;
    const double fRead = std::strtod(strText.c_str(), nullptr);
    if (!std::isfinite(fRead))
        return false;
    fValue = fRead;
    return true;
}

bool floatNumber(const std::string& strText, float& fValue)
{
    if (!hasDecimalForm(strText))
        return false;
    const float fRead = std::strtof(strText.c_str(), nullptr);
    if (!std::isfinite(fRead))
        return false;
    fValue = fRead;
    return true;
}

bool hexBytes(const std::string& strText, std::int64_t nBytes, std::vector<std::uint8_t>& vecBytes)
{
    const std::string strDigits = "0123456789abcdef";
    vecBytes.clear();
    for (std::int64_t i = 0; i < nBytes; ++i)
    {
        unsigned nByte = 0;
        for (std::int64_t k = 2 * i; k < 2 * i + 2; ++k)
        {
            if (k >= static_cast<std::int64_t>(strText.size()))
                return false;
            char c = strText[static_cast<std::size_t>(k)];
            c = c >= 'A' && c <= 'F' ? static_cast<char>(c + ('a' - 'A')) : c;
            const std::size_t nDigit = strDigits.find(c);
            if (nDigit == std::string::npos)
                return false;
            nByte = nByte * 16 + static_cast<unsigned>(nDigit);
        }
        vecBytes.push_back(static_cast<std::uint8_t>(nByte));
    }
    return true;
}

bool hexWords(const std::string& strText, std::int64_t nWords, std::vector<std::uint32_t>& vecWords)
{
    vecWords.clear();
    for (std::int64_t i = 0; i < nWords; ++i)
    {
        std::vector<std::uint8_t> vecBytes;
        if (i > static_cast<std::int64_t>(strText.size()) ||
            !hexBytes(strText.substr(std::min(strText.size(), static_cast<std::size_t>(8 * i))), 4, vecBytes))
            return false;
        vecWords.push_back(vecBytes[0] + 256U * (vecBytes[1] + 256U * (vecBytes[2] + 256U * vecBytes[3])));
    }
    return true;
}
} // namespace PlainText
