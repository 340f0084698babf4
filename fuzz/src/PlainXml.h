#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A second reader of XML documents, for comparison with the one under test: it makes a whole tree, step by step, as plainly as can be,
/// and shares no line with the other. It is slow and takes as much memory as it likes.
namespace PlainXml
{
/// One element.
struct SElement
{
    std::string m_strName;
    std::vector<std::pair<std::string, std::string>> m_vecAttributes;
    std::string m_strText; ///< all text directly inside, CDATA included
    std::vector<SElement> m_vecChildren;

    const std::string* attribute(const std::string& strName) const; ///< null without such an attribute
    const SElement* child(const std::string& strName) const;        ///< the first of that name; null without one
    std::vector<const SElement*> children(const std::string& strName) const;
    long elementsWithin() const; ///< of any depth, this one not counted
};

/// What became of looking for a key.
enum class EKey
{
    Found,
    Absent,
    TooLarge ///< it is, or may be, inside a row that has too many elements to be read
};

/// A second tag: the first one of its name under the first first tag of its name.
struct SSection
{
    const SElement* m_pElement = nullptr; ///< null: absent

    EKey ownKey(const std::string& strKey, std::string& strText) const;
    EKey rowKey(const std::string& strTag, long nIndex, const std::string& strKey, std::string& strText) const;
    long rows(const std::string& strTag) const;
};

struct SDocument
{
    bool m_bSound = false;
    SElement m_objRoot;

    SSection section(const std::string& strFirst, const std::string& strSecond) const;
};

SDocument read(std::string_view strText);
} // namespace PlainXml
