#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A second reader of settings text, for comparison with the one under test: line by line, into plain lists that are searched from their
/// beginning.
namespace PlainSettings
{
struct SSection
{
    std::string m_strName;
    std::vector<std::pair<std::string, std::string>> m_vecKeys;

    const std::string* value(const std::string& strKey) const; ///< null without such a key
};

struct SText
{
    bool m_bReadable = false;
    std::vector<SSection> m_vecSections;

    const SSection* section(const std::string& strName) const; ///< null without such a section
};

/// How bytes become text: names and values go through this before they are compared.
using FnDecode = std::function<std::string(const std::string&)>;

SText read(std::string_view strText, const FnDecode& fnDecode);

/// The click numbers that a text lists.
std::vector<std::string> clickNumbers(const SText& objText);
} // namespace PlainSettings
