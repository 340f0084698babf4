#pragma once

#include "OrmXmlLayout.h"

/// Notes where sections and rows lie while a document is passed over. Of several first tags, or second tags of one first tag, with the same
/// name only the first is noted. Depths count the outermost element as 1, so rows have the depth 4.
class OrmXmlLayoutBuilder
{
public:
    explicit OrmXmlLayoutBuilder(SXmlLayout& objLayout);

    /// A start tag was read; false if there are too many sections.
    bool startTag(int nDepth, std::string_view strName, const SXmlRange& objTag);

    /// The element of that depth ends before @p nEnd.
    void endElement(int nDepth, quint32 nEnd);

    /// A long text ends, within an element of that depth.
    void longText(int nDepth, const SXmlRange& objText, bool bText);

private:
    /// What has been gathered since a place in the document.
    struct SLoad
    {
        quint32 m_nStart = 0;
        quint32 m_nEnd = 0;
        quint32 m_nHoles = 0; ///< bytes of long texts
        int m_nElements = 0;
    };

    bool startSection(std::string_view strName, const SXmlRange& objTag);
    void startRow(quint32 nStart);
    void endRow(quint32 nEnd);
    void closeBatch(const SLoad& objLoad, bool bOversized);

    SXmlLayout& m_objLayout;
    quint32 m_nFirstTag = 0;                ///< number of the first tag that is open
    bool m_bFirstTagCounts = false;         ///< false within a repetition of an earlier one
    SXmlSectionPlace* m_pSection = nullptr; ///< null outside of second tags and within repetitions
    bool m_bBatchOpen = false;
    SLoad m_objBatch;        ///< complete rows of the open batch
    SLoad m_objRow;          ///< of the row being read
    quint32 m_nGapHoles = 0; ///< long texts since the last row
};
