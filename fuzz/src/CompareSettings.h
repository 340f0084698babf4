#pragma once

#include <string>

/// Reads settings text with the readers under test and with the plain second one, and demands that both agree.
namespace CompareSettings
{
/// Every section, key and value of the text. Returns whether it could be read.
bool textBothWays(const std::string& strText);

/// What the host and the tool ask of the text as sequence information, click information and index of saved results. Returns whether it
/// could be read.
bool filesBothWays(const std::string& strText);
} // namespace CompareSettings
