#include "OrmNumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace
{
/// Only what a decimal number is made of: keeps out "inf", "nan" and hexadecimal forms, which from_chars would take.
bool hasOnlyNumberCharacters(std::string_view strText)
{
    return !strText.empty() && strText.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
}

/// One spelling per integer: neither leading zeros nor a negative zero.
bool isPlainInteger(std::string_view strDigits)
{
    return !strDigits.empty() && strDigits.front() >= '0' && strDigits.front() <= '9' &&
           (strDigits.front() != '0' || strDigits.size() == 1);
}

template <typename T>
std::errc wholeNumber(std::string_view strText, T& value)
{
    const char* pEnd = strText.data() + strText.size();
    const auto objResult = std::from_chars(strText.data(), pEnd, value);
    return objResult.ptr == pEnd ? objResult.ec : std::errc::invalid_argument;
}

/// Whether a decimal number that is out of range is so because it is too small: its first digit other than 0 stands behind the point.
bool isTooSmall(std::string_view strText)
{
    const size_t nMantissa = std::min(strText.find_first_of("eE"), strText.size());
    const std::string_view strMantissa = strText.substr(0, nMantissa);
    const auto nPoint = static_cast<qint64>(std::min(strMantissa.find('.'), nMantissa));
    const auto nFirst = static_cast<qint64>(std::min(strMantissa.find_first_of("123456789"), nMantissa));
    std::string_view strPower = strText.substr(std::min(nMantissa + 1, strText.size()));
    const bool bNegative = strPower.substr(0, 1) == "-";
    if (strPower.substr(0, 1) == "+")
        strPower.remove_prefix(1);
    qint64 nPower = 0;
    if (wholeNumber(strPower, nPower) == std::errc::result_out_of_range)
        return bNegative;
    return nFirst - nPoint > nPower;
}

/// A finite number of either width. What is too small for it is a 0 of its sign.
template <typename T>
bool toFinite(std::string_view strText, T& fValue)
{
    if (!hasOnlyNumberCharacters(strText))
        return false;
    T fRead = 0;
    const std::errc eError = wholeNumber(strText, fRead);
    const bool bTooSmall = eError == std::errc::result_out_of_range && isTooSmall(strText);
    if ((eError != std::errc() && !bTooSmall) || !std::isfinite(fRead))
        return false;
    fValue = bTooSmall ? std::copysign(T(0), strText.front() == '-' ? T(-1) : T(1)) : fRead;
    return true;
}
} // namespace

namespace OrmNumberText
{
bool toInt(std::string_view strText, int& nValue)
{
    const bool bNegative = !strText.empty() && strText.front() == '-';
    const std::string_view strDigits = bNegative ? strText.substr(1) : strText;
    if (!isPlainInteger(strDigits) || (bNegative && strDigits == "0"))
        return false;
    int nRead = 0;
    if (wholeNumber(strText, nRead) != std::errc())
        return false;
    nValue = nRead;
    return true;
}

bool toInt(const QString& strText, int& nValue)
{
    const QByteArray baText = strText.toUtf8();
    return toInt(std::string_view(baText.constData(), static_cast<size_t>(baText.size())), nValue);
}

bool toUInt(std::string_view strText, quint32& nValue)
{
    if (!isPlainInteger(strText))
        return false;
    quint32 nRead = 0;
    if (wholeNumber(strText, nRead) != std::errc())
        return false;
    nValue = nRead;
    return true;
}

bool toFloat(std::string_view strText, float& fValue)
{
    return toFinite(strText, fValue);
}

bool toDouble(std::string_view strText, double& fValue)
{
    return toFinite(strText, fValue);
}

bool toDouble(const QString& strText, double& fValue)
{
    const QByteArray baText = strText.toUtf8();
    return toDouble(std::string_view(baText.constData(), static_cast<size_t>(baText.size())), fValue);
}
} // namespace OrmNumberText
