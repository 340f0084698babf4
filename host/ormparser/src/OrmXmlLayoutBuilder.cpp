#include "OrmXmlLayoutBuilder.h"

#include "OrmDocumentLimits.h"

namespace
{
// A batch is small enough that its nodes stay in the processor's cache, and large enough that starting a parse does not count.
constexpr quint32 nBatchBytes = 65536;
constexpr int nBatchElements = 512;
constexpr int nLargeRowElements = 256; ///< a row of more gets a batch of its own

constexpr int nRootDepth = 1;
constexpr int nFirstTagDepth = 2;
constexpr int nSecondTagDepth = 3;
constexpr int nRowDepth = 4;
} // namespace

OrmXmlLayoutBuilder::OrmXmlLayoutBuilder(SXmlLayout& objLayout) : m_objLayout(objLayout) {}

bool OrmXmlLayoutBuilder::startTag(int nDepth, std::string_view strName, const SXmlRange& objTag)
{
    if (nDepth >= nRowDepth)
    {
        if (!m_pSection)
            return true;
        if (nDepth == nRowDepth)
            startRow(objTag.m_nStart);
        ++m_objRow.m_nElements;
        return true;
    }
    if (nDepth == nSecondTagDepth)
        return startSection(strName, objTag);
    if (nDepth == nRootDepth)
    {
        m_objLayout.m_objRootTag = objTag;
        return true;
    }
    const auto nKnown = static_cast<quint32>(m_objLayout.m_mapFirstTags.size());
    const auto objInserted = m_objLayout.m_mapFirstTags.try_emplace(strName, nKnown);
    m_bFirstTagCounts = objInserted.second;
    m_nFirstTag = objInserted.first->second;
    return m_objLayout.m_mapFirstTags.size() <= static_cast<size_t>(OrmDocumentLimits::nXmlSections);
}

bool OrmXmlLayoutBuilder::startSection(std::string_view strName, const SXmlRange& objTag)
{
    m_pSection = nullptr;
    if (!m_bFirstTagCounts)
        return true;
    const auto objInserted = m_objLayout.m_mapSections.try_emplace({m_nFirstTag, strName});
    if (!objInserted.second)
        return true;
    m_pSection = &objInserted.first->second;
    m_pSection->m_objTag = objTag;
    m_pSection->m_nFirstBatch = static_cast<quint32>(m_objLayout.m_vecBatches.size());
    return m_objLayout.m_mapSections.size() <= static_cast<size_t>(OrmDocumentLimits::nXmlSections);
}

void OrmXmlLayoutBuilder::endElement(int nDepth, quint32 nEnd)
{
    if (nDepth == nFirstTagDepth)
        m_bFirstTagCounts = false;
    if (!m_pSection)
        return;
    if (nDepth == nRowDepth)
    {
        endRow(nEnd);
    }
    else if (nDepth == nSecondTagDepth)
    {
        if (m_bBatchOpen)
            closeBatch(m_objBatch, false);
        m_pSection->m_nBatches = static_cast<quint32>(m_objLayout.m_vecBatches.size()) - m_pSection->m_nFirstBatch;
        m_pSection->m_nBytes = nEnd - m_pSection->m_objTag.m_nStart;
        m_pSection = nullptr;
    }
}

void OrmXmlLayoutBuilder::longText(int nDepth, const SXmlRange& objText, bool bText)
{
    if (!m_pSection || nDepth < nSecondTagDepth)
        return;
    m_objLayout.m_vecHoles.push_back({objText, bText});
    (nDepth == nSecondTagDepth ? m_nGapHoles : m_objRow.m_nHoles) += objText.size();
}

void OrmXmlLayoutBuilder::startRow(quint32 nStart)
{
    if (m_bBatchOpen)
    {
        const quint32 nBytes = nStart - m_objBatch.m_nStart - m_objBatch.m_nHoles - m_nGapHoles;
        if (nBytes >= nBatchBytes || m_objBatch.m_nElements >= nBatchElements)
            closeBatch(m_objBatch, false);
    }
    if (!m_bBatchOpen)
    {
        m_bBatchOpen = true;
        m_objBatch = {nStart, nStart, 0, 0};
        m_nGapHoles = 0;
    }
    ++m_pSection->m_nRows;
    m_objRow = {nStart, nStart, 0, 0};
}

void OrmXmlLayoutBuilder::endRow(quint32 nEnd)
{
    m_objRow.m_nEnd = nEnd;
    const quint32 nBytes = nEnd - m_objRow.m_nStart - m_objRow.m_nHoles;
    if (nBytes < nBatchBytes && m_objRow.m_nElements <= nLargeRowElements)
    {
        m_objBatch.m_nEnd = nEnd;
        m_objBatch.m_nHoles += m_nGapHoles + m_objRow.m_nHoles;
        m_objBatch.m_nElements += m_objRow.m_nElements;
        m_nGapHoles = 0;
        return;
    }
    if (m_objBatch.m_nEnd > m_objBatch.m_nStart)
        closeBatch(m_objBatch, false);
    const int nInside = m_objRow.m_nElements - 1; // the row itself was counted too
    closeBatch(m_objRow, nBytes > OrmDocumentLimits::nXmlRowBytes || nInside > OrmDocumentLimits::nXmlRowElements);
}

void OrmXmlLayoutBuilder::closeBatch(const SLoad& objLoad, bool bOversized)
{
    m_objLayout.m_vecBatches.push_back({{objLoad.m_nStart, objLoad.m_nEnd}, bOversized});
    m_bBatchOpen = false;
    m_nGapHoles = 0;
}
