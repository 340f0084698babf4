#include "OrmNumberText.h"

#include <cfloat>
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
    if (objResult.ec == std::errc() && objResult.ptr != pEnd)
        return std::errc::invalid_argument;
    return objResult.ec;
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
    if (!hasOnlyNumberCharacters(strText))
        return false;
    float fRead = 0.0F;
    const std::errc eError = wholeNumber(strText, fRead);
    if (eError == std::errc::result_out_of_range)
    {
        // Too small or too large for a float: a double tells which, and gives the nearest denormal of the small ones.
        double fWide = 0.0;
        if (wholeNumber(strText, fWide) != std::errc() || std::fabs(fWide) > 1.0)
            return false;
        fRead = static_cast<float>(fWide);
    }
    else if (eError != std::errc())
    {
        return false;
    }
    if (!std::isfinite(fRead))
        return false;
    fValue = fRead;
    return true;
}

bool toDouble(std::string_view strText, double& fValue)
{
    if (!hasOnlyNumberCharacters(strText))
        return false;
    double fRead = 0.0;
    if (wholeNumber(strText, fRead) != std::errc() || !std::isfinite(fRead))
        return false;
    fValue = fRead;
    return true;
}

bool toDouble(const QString& strText, double& fValue)
{
    const QByteArray baText = strText.toUtf8();
    return toDouble(std::string_view(baText.constData(), static_cast<size_t>(baText.size())), fValue);
}
} // namespace OrmNumberText
