#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Settings texts built from the bytes of a fuzzing input: sequence, click and index files with the keys that their readers look for,
/// counts that lie, file names that lead elsewhere, and lines of every form.
namespace SettingsGrammar
{
std::string build(const std::uint8_t* pData, std::size_t nSize);
} // namespace SettingsGrammar
