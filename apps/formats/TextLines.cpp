#include "TextLines.h"

#include "OrmNumberText.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace
{
constexpr std::size_t nShownBytes = 40;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\r' || c == '\n' || c == '\0';
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view withoutPlus(std::string_view strText)
{
    return strText.size() > 1 && strText[0] == '+' && strText[1] != '-' && strText[1] != '+' ? strText.substr(1) : strText;
}

template <typename T>
QByteArray shortest(T fValue)
{
    char acText[64];
    const auto [pEnd, error] = std::to_chars(acText, acText + sizeof acText, fValue);
    return QByteArray(acText, error == std::errc() ? static_cast<int>(pEnd - acText) : 0);
}
} // namespace

bool CTextLines::next(std::string_view& strLine)
{
    if (m_nAt >= m_strText.size())
        return false;
    std::size_t nEnd = m_strText.find_first_of("\r\n", m_nAt);
    nEnd = nEnd == std::string_view::npos ? m_strText.size() : nEnd;
    strLine = m_strText.substr(m_nAt, nEnd - m_nAt);
    if (nEnd < m_strText.size())
        nEnd += m_strText[nEnd] == '\r' && nEnd + 1 < m_strText.size() && m_strText[nEnd + 1] == '\n' ? 2 : 1;
    m_nAt = nEnd;
    ++m_nLine;
    return true;
}

bool CTextLines::nextWords(std::vector<std::string_view>& vecWords)
{
    std::string_view strLine;
    while (next(strLine))
    {
        OpenText::split(strLine, vecWords);
        if (!vecWords.empty())
            return true;
    }
    vecWords.clear();
    return false;
}

void OpenText::split(std::string_view strLine, std::vector<std::string_view>& vecWords)
{
    vecWords.clear();
    std::size_t nAt = 0;
    while (nAt < strLine.size())
    {
        std::size_t nEnd = nAt;
        while (nEnd < strLine.size() && !isBlank(strLine[nEnd]))
            ++nEnd;
        if (nEnd > nAt)
            vecWords.push_back(strLine.substr(nAt, nEnd - nAt));
        nAt = nEnd + 1;
    }
}

std::string_view OpenText::trimmed(std::string_view strText)
{
    while (!strText.empty() && isBlank(strText.front()))
        strText.remove_prefix(1);
    while (!strText.empty() && isBlank(strText.back()))
        strText.remove_suffix(1);
    return strText;
}

bool OpenText::isSameIgnoringCase(std::string_view strText, std::string_view strOther)
{
    if (strText.size() != strOther.size())
        return false;
    for (std::size_t i = 0; i < strText.size(); ++i)
    {
        if (lower(strText[i]) != lower(strOther[i]))
            return false;
    }
    return true;
}

bool OpenText::toDouble(std::string_view strText, double& fValue)
{
    return OrmNumberText::toDouble(withoutPlus(strText), fValue);
}

bool OpenText::toAnyDouble(std::string_view strText, double& fValue)
{
    if (toDouble(strText, fValue))
        return true;
    const bool bMinus = !strText.empty() && strText[0] == '-';
    const std::string_view strName = bMinus ? strText.substr(1) : withoutPlus(strText);
    if (isSameIgnoringCase(strName, "nan"))
        fValue = std::numeric_limits<double>::quiet_NaN();
    else if (isSameIgnoringCase(strName, "inf") || isSameIgnoringCase(strName, "infinity"))
        fValue = bMinus ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    else
        return false;
    return true;
}

bool OpenText::toInteger(std::string_view strText, qint64& nValue)
{
    const std::string_view strNumber = withoutPlus(strText);
    qint64 nRead = 0;
    const auto [pEnd, error] = std::from_chars(strNumber.data(), strNumber.data() + strNumber.size(), nRead);
    if (error != std::errc() || pEnd != strNumber.data() + strNumber.size() || strNumber.empty())
        return false;
    nValue = nRead;
    return true;
}

double OpenText::decimalOf(float fValue)
{
    const QByteArray baText = shortest(fValue);
    double fDecimal = static_cast<double>(fValue);
    std::from_chars(baText.constData(), baText.constData() + baText.size(), fDecimal);
    return fDecimal;
}

QByteArray OpenText::number(double fValue)
{
    return shortest(fValue);
}

QByteArray OpenText::number(float fValue)
{
    return shortest(fValue);
}

QString OpenText::shown(std::string_view strText)
{
    QString strShown;
    for (const char c : strText.substr(0, nShownBytes))
        strShown += c >= ' ' && c <= '~' ? QLatin1Char(c) : QLatin1Char('?');
    return strText.size() > nShownBytes ? strShown + QLatin1String("...") : strShown;
}

QString OpenText::atLine(qint64 nLine, const QString& strReason)
{
    return QStringLiteral("line %1: %2").arg(nLine).arg(strReason);
}
