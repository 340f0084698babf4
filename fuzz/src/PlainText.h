#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Second readers of numbers and hexadecimal text, one character after the other.
namespace PlainText
{
/// A whole number: an optional '-', then digits without a leading zero; "-0" is none. False beyond @p nLowest to @p nHighest.
bool wholeNumber(const std::string& strText, std::int64_t nLowest, std::int64_t nHighest, std::int64_t& nValue);

/// A decimal number that is finite as a double: an optional '-', digits with at most one '.', an optional exponent.
bool decimalNumber(const std::string& strText, double& fValue);

/// The same as a float. Beyond the largest float there is none.
bool floatNumber(const std::string& strText, float& fValue);

/// The first @p nBytes bytes that hexadecimal digits stand for; false if there are too few or one is none.
bool hexBytes(const std::string& strText, std::int64_t nBytes, std::vector<std::uint8_t>& vecBytes);

/// The same as 32-bit numbers, the lowest byte first.
bool hexWords(const std::string& strText, std::int64_t nWords, std::vector<std::uint32_t>& vecWords);
} // namespace PlainText
