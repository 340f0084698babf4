#pragma once

#include <QString>
#include <string_view>

/// Numbers in the host's files. They are written with '.', whatever the locale, and the whole text must be the number:
/// no blank, no '+', no thousands separator, no "nan" or "inf". On failure the operations return false and leave the
/// value as it was.
namespace OrmNumberText
{
/// A decimal integer without leading zeros ("0", "12", "-3").
bool toInt(std::string_view strText, int& nValue);
bool toInt(const QString& strText, int& nValue);

/// The same for an unsigned 32-bit number; a sign is refused.
bool toUInt(std::string_view strText, quint32& nValue);

/// A finite decimal number. What is too small for the type becomes 0 or the nearest denormal; what is too large is refused.
bool toFloat(std::string_view strText, float& fValue);
bool toDouble(std::string_view strText, double& fValue);
bool toDouble(const QString& strText, double& fValue);
} // namespace OrmNumberText
