#pragma once

#include <QtGlobal>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

/// Bytes of a document, from the first to behind the last. A document has at most 1 GiB, so 32 bits hold a place in it.
struct SXmlRange
{
    quint32 m_nStart = 0;
    quint32 m_nEnd = 0;

    quint32 size() const { return m_nEnd - m_nStart; }
};

/// A long text inside a row. It is left out when the row is parsed and read where it stands.
struct SXmlHole
{
    SXmlRange m_objRange;
    bool m_bText = true; ///< text or CDATA; otherwise the inside of a comment or an instruction
};

/// Rows (third tags) that lie one after the other and are parsed together.
struct SXmlBatch
{
    SXmlRange m_objRange;
    bool m_bOversized = false; ///< a single row that is too large to be parsed
};

/// A second tag.
struct SXmlSectionPlace
{
    SXmlRange m_objTag; ///< its start tag
    quint32 m_nFirstBatch = 0;
    quint32 m_nBatches = 0;
    quint32 m_nRows = 0;  ///< its children of whatever name
    quint32 m_nBytes = 0; ///< from the start tag to the end tag
};

/// Where things are in a document that was found sound. Names point into the document's bytes.
struct SXmlLayout
{
    SXmlRange m_objRootTag;                                                         ///< start tag of the outermost element
    std::map<std::string_view, quint32> m_mapFirstTags;                             ///< number of a first tag, by its name
    std::map<std::pair<quint32, std::string_view>, SXmlSectionPlace> m_mapSections; ///< by number of the first tag and own name
    std::vector<SXmlBatch> m_vecBatches;                                            ///< in document order
    std::vector<SXmlHole> m_vecHoles;                                               ///< in document order
};
