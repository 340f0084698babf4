#include "COrmXMLSection.h"

#include "COrmXMLFragment.h"
#include "OrmDocumentLimits.h"

#include <algorithm>
#include <cstring>

COrmXMLSection::COrmXMLSection(const char* pDocument, const SXmlLayout& objLayout, const SXmlSectionPlace& objPlace,
                               COrmXMLFragment& objFragment)
    : m_pDocument(pDocument), m_objLayout(objLayout), m_objPlace(objPlace), m_objFragment(objFragment)
{
}

qint64 COrmXMLSection::rowCount() const
{
    return m_objPlace.m_nRows;
}

qint64 COrmXMLSection::byteCount() const
{
    return m_objPlace.m_nBytes;
}

COrmXMLSection::EOutcome COrmXMLSection::ownKey(const std::string& strKey, std::string_view& strText, QString& strReason)
{
    m_objFragment.parseTag(m_objPlace.m_objTag);
    const pugi::xml_attribute objAttribute = m_objFragment.nodes().first_child().attribute(strKey.c_str());
    if (objAttribute)
    {
        strText = objAttribute.value();
        return EOutcome::Found;
    }
    pugi::xml_node objElement;
    const EOutcome eOutcome = find(strKey, 0, objElement, strReason);
    return eOutcome == EOutcome::Found ? elementText(objElement, strText, strReason) : eOutcome;
}

COrmXMLSection::EOutcome COrmXMLSection::find(std::string_view strTag, qint64 nIndex, pugi::xml_node& objRow, QString& strReason)
{
    STagRows& objRows = rowsOf(strTag);
    while (nIndex >= objRows.m_vecBefore.back() && objRows.m_vecBefore.size() <= m_objPlace.m_nBatches)
        readNextBatch(objRows);
    if (nIndex < 0 || nIndex >= objRows.m_vecBefore.back())
        return EOutcome::Absent;
    const auto itAfter = std::upper_bound(objRows.m_vecBefore.begin(), objRows.m_vecBefore.end(), static_cast<quint32>(nIndex));
    const auto nBatch = static_cast<quint32>(itAfter - objRows.m_vecBefore.begin() - 1);
    takeNodes(objRows, nBatch);
    objRow = objRows.m_vecNodes[static_cast<size_t>(nIndex) - objRows.m_vecBefore[nBatch]];
    if (objRow)
        return EOutcome::Found;
    strReason = QStringLiteral("too large, with more than %1 elements or %2 bytes")
                    .arg(OrmDocumentLimits::nXmlRowElements)
                    .arg(OrmDocumentLimits::nXmlRowBytes);
    return EOutcome::Unreadable;
}

COrmXMLSection::EOutcome COrmXMLSection::key(const pugi::xml_node& objRow, const char* pKey, std::string_view& strText, QString& strReason)
{
    const pugi::xml_attribute objAttribute = objRow.attribute(pKey);
    if (objAttribute)
    {
        strText = objAttribute.value();
        return EOutcome::Found;
    }
    const pugi::xml_node objElement = objRow.child(pKey);
    return objElement ? elementText(objElement, strText, strReason) : EOutcome::Absent;
}

qint64 COrmXMLSection::count(std::string_view strTag)
{
    STagRows& objRows = rowsOf(strTag);
    while (objRows.m_vecBefore.size() <= m_objPlace.m_nBatches)
        readNextBatch(objRows);
    return objRows.m_vecBefore.back();
}

COrmXMLSection::STagRows& COrmXMLSection::rowsOf(std::string_view strTag)
{
    if (m_pLastTag && m_pLastTag->m_strTag == strTag)
        return *m_pLastTag;
    const auto it = std::find_if(m_lstTags.begin(), m_lstTags.end(), [&](const auto& pRows) { return pRows->m_strTag == strTag; });
    if (it != m_lstTags.end())
    {
        m_pLastTag = it->get();
    }
    else
    {
        m_lstTags.push_back(std::make_unique<STagRows>());
        m_pLastTag = m_lstTags.back().get();
        m_pLastTag->m_strTag = strTag;
        skipBatchesWithout(*m_pLastTag);
    }
    return *m_pLastTag;
}

/// The batches before the first place that looks like a row of the tag have none of them. So a key that is absent costs a search, not a
/// parse.
void COrmXMLSection::skipBatchesWithout(STagRows& objRows)
{
    const std::string strStart = "<" + objRows.m_strTag;
    const char* pContent = m_pDocument + m_objPlace.m_objTag.m_nEnd;
    const char* pEnd = m_pDocument + m_objPlace.m_objTag.m_nStart + m_objPlace.m_nBytes;
    const void* pFound = memmem(pContent, static_cast<size_t>(pEnd - pContent), strStart.data(), strStart.size());
    const auto nPlace = static_cast<quint32>((pFound ? static_cast<const char*>(pFound) : pEnd) - m_pDocument);
    const auto itFirst = m_objLayout.m_vecBatches.begin() + m_objPlace.m_nFirstBatch;
    const auto itBatch = std::upper_bound(itFirst, itFirst + m_objPlace.m_nBatches, nPlace,
                                          [](quint32 nWhere, const SXmlBatch& objBatch) { return nWhere < objBatch.m_objRange.m_nEnd; });
    objRows.m_vecBefore.assign(static_cast<size_t>(itBatch - itFirst) + 1, 0);
}

/// Makes the rows of the batch those at hand. Batches are counted within the section.
void COrmXMLSection::takeNodes(STagRows& objRows, quint32 nBatch)
{
    const quint32 nInDocument = m_objPlace.m_nFirstBatch + nBatch;
    const bool bParsed = m_objFragment.parseRows(nInDocument);
    if (objRows.m_nParse == m_objFragment.number())
        return;
    objRows.m_vecNodes.clear();
    objRows.m_nParse = m_objFragment.number();
    if (!bParsed)
    {
        if (startsWithTag(nInDocument, objRows.m_strTag))
            objRows.m_vecNodes.emplace_back();
        return;
    }
    for (const pugi::xml_node& objNode : m_objFragment.nodes().children())
    {
        if (objNode.type() == pugi::node_element && objRows.m_strTag == objNode.name())
            objRows.m_vecNodes.push_back(objNode);
    }
}

void COrmXMLSection::readNextBatch(STagRows& objRows)
{
    takeNodes(objRows, static_cast<quint32>(objRows.m_vecBefore.size() - 1));
    objRows.m_vecBefore.push_back(objRows.m_vecBefore.back() + static_cast<quint32>(objRows.m_vecNodes.size()));
}

COrmXMLSection::EOutcome COrmXMLSection::elementText(const pugi::xml_node& objElement, std::string_view& strText, QString& strReason)
{
    if (m_objFragment.text(objElement, strText))
        return EOutcome::Found;
    strReason = QStringLiteral("its text is interrupted and longer than %1 bytes").arg(OrmDocumentLimits::nXmlComposedText);
    return EOutcome::Unreadable;
}

bool COrmXMLSection::startsWithTag(quint32 nBatch, std::string_view strTag) const
{
    const SXmlRange& objRange = m_objLayout.m_vecBatches[nBatch].m_objRange;
    const std::string_view strRow(m_pDocument + objRange.m_nStart + 1, objRange.size() - 1);
    constexpr std::string_view strAfterName = " \t\r\n/>";
    return strRow.size() > strTag.size() && strRow.substr(0, strTag.size()) == strTag &&
           strAfterName.find(strRow[strTag.size()]) != std::string_view::npos;
}
