#pragma once

#include "OrmXmlLayout.h"

#include <QString>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

class COrmXMLFragment;

/// A second tag of a document and its rows, the third tags. What an operation gives is valid until the next one on the same document.
class COrmXMLSection
{
public:
    enum class EOutcome
    {
        Found,
        Absent,
        Unreadable ///< there, but not to be read; the reason says why
    };

    /// Refers to its document, the layout and what parses it; all of them outlive it.
    COrmXMLSection(const char* pDocument, const SXmlLayout& objLayout, const SXmlSectionPlace& objPlace, COrmXMLFragment& objFragment);

    /// The attribute of the second tag itself or, where it has none, the text of its first child element of that name.
    EOutcome ownKey(const std::string& strKey, std::string_view& strText, QString& strReason);

    /// The row at the index among those of that tag.
    EOutcome find(std::string_view strTag, qint64 nIndex, pugi::xml_node& objRow, QString& strReason);

    /// The row's attribute or, where it has none, the text of its first child element of that name.
    EOutcome key(const pugi::xml_node& objRow, const char* pKey, std::string_view& strText, QString& strReason);

    /// How many rows of that tag there are.
    qint64 count(std::string_view strTag);

    qint64 rowCount() const;  ///< rows of whatever tag
    qint64 byteCount() const; ///< of the section in the document

private:
    /// The rows of one tag: how many there are before each batch, as far as batches were read, and those in one batch.
    struct STagRows
    {
        std::string m_strTag;
        std::vector<quint32> m_vecBefore = {0}; ///< entry i: rows in the batches before i
        quint64 m_nParse = 0;                   ///< the parse that m_vecNodes belong to; 0: none
        std::vector<pugi::xml_node> m_vecNodes; ///< null nodes for rows that are too large
    };

    STagRows& rowsOf(std::string_view strTag);
    void skipBatchesWithout(STagRows& objRows);
    void takeNodes(STagRows& objRows, quint32 nBatch);
    void readNextBatch(STagRows& objRows);
    EOutcome elementText(const pugi::xml_node& objElement, std::string_view& strText, QString& strReason);
    bool startsWithTag(quint32 nBatch, std::string_view strTag) const;

    const char* m_pDocument;
    const SXmlLayout& m_objLayout;
    const SXmlSectionPlace& m_objPlace;
    COrmXMLFragment& m_objFragment;
    std::vector<std::unique_ptr<STagRows>> m_lstTags;
    STagRows* m_pLastTag = nullptr; ///< the one asked for last
};
