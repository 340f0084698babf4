#pragma once

#include "OrmXmlLayout.h"

#include <QString>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

/// The piece of a document that is parsed at the moment: one batch of rows, or one start tag. A document has one such object, so that it
/// never costs more than the largest of its rows. Long texts are not parsed but read where they stand in the document.
class COrmXMLFragment
{
public:
    /// Refers to the bytes of the document and to its layout, which outlive it.
    COrmXMLFragment(const char* pDocument, const SXmlLayout& objLayout);

    /// Parses a batch of the layout, unless it is what is parsed already. False for a row that is too large.
    bool parseRows(quint32 nBatch);

    /// Parses a start tag as an element without content.
    void parseTag(const SXmlRange& objTag);

    /// Counts the parses, from 1. Nodes and texts are good as long as it stays.
    quint64 number() const { return m_nParse; }

    /// The parsed elements, one after the other.
    const pugi::xml_document& nodes() const { return m_objNodes; }

    /// The text directly inside an element, as if references, comments and CDATA were written plainly. False for one that is interrupted by
    /// such and too long to be put together.
    bool text(const pugi::xml_node& objElement, std::string_view& strText);

private:
    void copyWithoutLongTexts(const SXmlRange& objRange);
    void parseScratch();
    std::string_view longText(std::string_view strMark) const;
    template <typename FnPiece>
    void forEachPiece(const pugi::xml_node& objElement, FnPiece fnPiece) const;

    const char* m_pDocument;
    const SXmlLayout& m_objLayout;
    pugi::xml_document m_objNodes;
    std::vector<char> m_vecScratch; ///< what m_objNodes points into
    std::string m_strComposed;      ///< a text that is not in one piece
    quint64 m_nParse = 0;
    quint32 m_nBatch = 0;     ///< that is parsed; only good if m_bRows
    bool m_bRows = false;     ///< what is parsed is a batch
    bool m_bTooLarge = false; ///< the batch is one that is not parsed
};
