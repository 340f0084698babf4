#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>
#include <vector>

/// A text in memory, line by line. Lines end in LF, CRLF or CR.
class CTextLines
{
public:
    explicit CTextLines(std::string_view strText) : m_strText(strText) {}

    /// The next line without its end. False behind the last one.
    bool next(std::string_view& strLine);
    /// The next line that holds anything but blanks, as its words. False where there is none.
    bool nextWords(std::vector<std::string_view>& vecWords);

    qint64 number() const { return m_nLine; }                                          ///< of the line last given, from 1
    qint64 position() const { return static_cast<qint64>(m_nAt); }                     ///< of what follows it, in bytes
    qint64 bytesLeft() const { return static_cast<qint64>(m_strText.size() - m_nAt); } ///< behind it

private:
    std::string_view m_strText;
    std::size_t m_nAt = 0;
    qint64 m_nLine = 0;
};

/// Words and numbers of the headers and texts of open formats, whatever the locale.
namespace OpenText
{
/// What stands between blanks.
void split(std::string_view strLine, std::vector<std::string_view>& vecWords);
std::string_view trimmed(std::string_view strText);
bool isSameIgnoringCase(std::string_view strText, std::string_view strOther);

/// A decimal number, the whole text. Beside the host's own numbers a '+' may stand before it.
bool toDouble(std::string_view strText, double& fValue);
/// The same, or "nan", "inf" or "infinity" with or without a sign, in either case.
bool toAnyDouble(std::string_view strText, double& fValue);
/// A decimal whole number, the whole text; zeros and a '+' may stand before it.
bool toInteger(std::string_view strText, qint64& nValue);

/// The double that the shortest decimal text of the float stands for: 0.3 of 0.3f, so that steps of 0.3 stay on multiples of it.
double decimalOf(float fValue);
/// The shortest text that reads back as the same number; "nan" and "inf" for what is none.
QByteArray number(double fValue);
QByteArray number(float fValue);

/// A piece of a file for a message: short, and without anything unprintable.
QString shown(std::string_view strText);
/// "line 12: reason"
QString atLine(qint64 nLine, const QString& strReason);
} // namespace OpenText
