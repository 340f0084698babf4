#include "ResultDocumentWalk.h"

#include "AnalysisResultXMLWrapper.h"
#include "OrmHexText.h"
#include "ResultUnits.h"

#include <QFileInfo>

#include <exception>
#include <memory>
#include <new>
#include <vector>

namespace ResultDocument
{

namespace
{

/// Type number of 32-bit float pixels.
constexpr OrmDataTypes g_ePixelFloat = static_cast<OrmDataTypes>(4);

const char g_strCount[] = "Count";

enum class EFormat
{
    Unknown,
    V10, ///< one element per value
    V20  ///< one hex text per row
};

EFormat formatOf(const QString& strVersion)
{
    const QString strLower = strVersion.toLower();
    if (strLower == QLatin1String("1.0"))
    {
        return EFormat::V10;
    }
    return strLower == QLatin1String("2.0") ? EFormat::V20 : EFormat::Unknown;
}

QString tag(const char* pText)
{
    return QString::fromLatin1(pText);
}

/// Whether that many floats can be had.
bool hasMemoryFor(qint64 nFloats)
{
    const std::unique_ptr<float[]> pFloats(new (std::nothrow) float[static_cast<size_t>(nFloats)]);
    return pFloats != nullptr;
}

/// One reading of one document. Each step says its own messages and returns false where the walk ends.
class CWalk
{
public:
    CWalk(const SKind& objKind, CWalkHost& objHost, const STarget& objTarget)
        : m_objKind(objKind), m_objHost(objHost), m_objTarget(objTarget), m_objRecord(objTarget.objRecord)
    {
    }

    bool run(const QString& strPath)
    {
        return readDocument(strPath) && readUnit() && isWhole() && readVersions() && readMesh() && readSequenceID() && readNames() &&
               isWhole() && readList(m_objKind.lstFilters[0]) && readList(m_objKind.lstFilters[1]) && readList(m_objKind.objClicks) &&
               readOpticalProperties() && readHeightMap() && readSimulatedDensity() && readMeasuredDensity() && readVolume() &&
               readResults() && isWhole();
    }

    /// Says what the step that was interrupted says of a failure.
    void sayInterrupted() { say(m_objOnException); }

private:
    void say(const SMessage& objMessage)
    {
        if (objMessage.eChannel == EChannel::Log)
        {
            m_objHost.log(text(objMessage.pText), 1);
        }
        else if (objMessage.eChannel == EChannel::Hint)
        {
            m_objHost.hint(text(objMessage.pText));
        }
    }

    /// A block that may be absent must not pass for absent because there was no memory to read it: a calibration that is missed
    /// would show cells as photons.
    bool isWhole() { return !m_objXML.ranOutOfMemory() || fail(m_objKind.objNoDocument); }

    bool fail(const SMessage& objMessage)
    {
        say(objMessage);
        return false;
    }

    void progress(const char* pText, int nStep) { m_objHost.progress(text(pText), nStep); }

    QString text(const char* pText) const { return QString::fromLatin1(pText).replace(QLatin1String("%1"), m_objHost.analysisName()); }

    bool readDocument(const QString& strPath)
    {
        m_objOnException = m_objKind.objNoDocument;
        progress(m_objKind.pProgressFile, 1);
        m_nFileBytes = QFileInfo(strPath).size();
        return m_objXML.loadXMLFile(strPath) || fail(m_objKind.objNoDocument);
    }

    bool readUnit()
    {
        progress(m_objKind.pProgressUnit, 2);
        const QString strSelected = m_objHost.selectedUnit();
        m_objHost.readQuantification(m_objXML, m_objRecord);
        const QString strOfResult = ResultUnits::unitOfCalibration(m_objKind.nKind, m_objRecord.objQuantData.strMeasurementType);
        if (strOfResult == strSelected)
        {
            return true;
        }
        m_objHost.log(QString::fromLatin1(m_objKind.pUnitMismatch).arg(strOfResult, strSelected), 2);
        return false;
    }

    bool readVersions()
    {
        m_eFormat = formatOf(m_objXML.getVersion());
        if (m_eFormat == EFormat::Unknown)
        {
            return fail(m_objKind.objNoDocument);
        }
        m_objHost.readSoftwareVersion(m_objXML, m_strSoftware);
        m_strSoftware = normalisedSoftwareVersion(m_strSoftware);
        return true;
    }

    bool readMesh()
    {
        progress(m_objKind.pProgressMesh, 3);
        say(m_objKind.objReadingMesh);
        if (m_eFormat == EFormat::V10)
        {
            m_objOnException = m_objKind.objNoMesh10;
            return m_objRecord.objMesh.loadFromXML(&m_objXML) || fail(m_objKind.objNoMesh10);
        }
        m_objOnException = SMessage();
        return m_objHost.readMesh(m_objXML, m_objRecord);
    }

    bool readSequenceID()
    {
        m_objOnException = m_objKind.objNoSequence;
        if (!m_objXML.Read3rdTagKeyValues(tag(m_objKind.pFirstTag), tag(m_objKind.pSequenceBlock), tag(m_objKind.pSequenceEntry),
                                          QStringLiteral("SequenceID"), m_objRecord.strSequenceID, 0))
        {
            say(m_objKind.objNoSequence);
        }
        return true;
    }

    bool readNames()
    {
        const SListBlock& objBlock = m_objKind.objNames;
        m_objOnException = objBlock.objNoEntry;
        int nNames = 0;
        if (!readNameCount(nNames))
        {
            say(objBlock.objNoCount);
            return true;
        }
        if (!readEntries(objBlock, nNames, m_objTarget.lstNames))
        {
            return fail(objBlock.objNoEntry);
        }
        m_objHost.namesRead(m_objTarget.lstNames);
        return true;
    }

    /// Fills the name count of the record and gives the number of names that the document lists.
    bool readNameCount(int& nNames)
    {
        const SListBlock& objBlock = m_objKind.objNames;
        if (!m_objKind.bNamesHaveViews)
        {
            if (!m_objXML.Read2ndTagKeyValues(tag(m_objKind.pFirstTag), tag(objBlock.pBlock), tag(g_strCount), m_objTarget.nNameCount))
            {
                return false;
            }
            nNames = m_objTarget.nNameCount;
            return true;
        }
        QStringList lstKeys = {tag(g_strCount), QStringLiteral("Views")};
        std::vector<int> vecCounts;
        if (!m_objXML.Read2ndTagKeyValues(tag(m_objKind.pFirstTag), tag(objBlock.pBlock), lstKeys, vecCounts) || vecCounts.size() < 2)
        {
            return false;
        }
        m_objTarget.nNameCount = vecCounts[0];
        nNames = vecCounts[1] != 0 ? vecCounts[1] : vecCounts[0];
        return true;
    }

    bool readList(const SListBlock& objBlock)
    {
        if (objBlock.pBlock == nullptr)
        {
            return true;
        }
        m_objOnException = objBlock.objNoEntry;
        int nCount = 0;
        if (!m_objXML.Read2ndTagKeyValues(tag(m_objKind.pFirstTag), tag(objBlock.pBlock), tag(g_strCount), nCount))
        {
            say(objBlock.objNoCount);
            return true;
        }
        return readEntries(objBlock, nCount, m_objRecord.*objBlock.pField) || fail(objBlock.objNoEntry);
    }

    /// The list grows with the entries that are there, never with the count that is claimed.
    bool readEntries(const SListBlock& objBlock, int nCount, QStringList& lstEntries)
    {
        const QString strEntry = tag(objBlock.pEntry);
        const QString strKey = tag(objBlock.pKey);
        for (qint64 i = 0; i < nCount; i += objBlock.nStride)
        {
            QString strValue;
            if (!m_objXML.ReadCurrentKeyValues(static_cast<int>(i), strEntry, strKey, strValue))
            {
                return false;
            }
            lstEntries.append(strValue);
        }
        return true;
    }

    bool readOpticalProperties()
    {
        if (m_objKind.pOpticalBlock == nullptr)
        {
            return true;
        }
        m_objOnException = m_objKind.objNoOptical;
        QStringList lstKeys = {QStringLiteral("Source.Database"), QStringLiteral("Tissue.Database")};
        QStringList lstValues;
        const bool bRead = m_objXML.Read3rdTagKeyValues(tag(m_objKind.pFirstTag), tag(m_objKind.pOpticalBlock),
                                                        tag(m_objKind.pOpticalEntry), lstKeys, lstValues, 0);
        m_objRecord.strSourceDatabase = lstValues.value(0);
        m_objRecord.strTissueDatabase = lstValues.value(1);
        if (!bRead)
        {
            say(m_objKind.objNoOptical);
        }
        return true;
    }

    bool readHeightMap()
    {
        say(m_objKind.objReadingHeightMap);
        m_objOnException = m_objKind.objBadHeightMap;
        m_vecSizes.clear();
        if (!readSizes(m_objKind.pHeightMapBlock, "Width", "Height"))
        {
            say(m_objKind.objNoHeightMap);
            return true;
        }
        const long nWidth = m_vecSizes[0];
        const long nHeight = m_vecSizes[1];
        const qint64 nPixels = qint64(nWidth) * nHeight; // both are 32-bit numbers
        if (nPixels <= 0)
        {
            return true;
        }
        if (nPixels <= m_nFileBytes / OrmHexText::nDigitsPerValue && !hasMemoryFor(nPixels))
        {
            return true; // nobody looks at the height map: a result does without it
        }
        std::vector<float> vecPixels;
        if (!m_objXML.readCurrentHexFloats(tag(m_objKind.pHeightMapEntry), 0, nPixels, vecPixels))
        {
            return fail(m_objKind.objBadHeightMap);
        }
        m_objRecord.imgHeightMap.initWithData(g_ePixelFloat, nWidth, nHeight, vecPixels.data());
        return true;
    }

    /// Reads two ints of a block. Where that fails the sizes stay what they were before.
    bool readSizes(const char* pBlock, const char* pFirst, const char* pSecond)
    {
        QStringList lstKeys = {tag(pFirst), tag(pSecond)};
        return m_objXML.Read2ndTagKeyValues(tag(m_objKind.pFirstTag), tag(pBlock), lstKeys, m_vecSizes) && m_vecSizes.size() >= 2;
    }

    bool readSimulatedDensity()
    {
        progress(m_objKind.pProgressDensity, 4);
        say(m_objKind.objReadingDensity);
        const SDensityBlock& objBlock = m_objKind.objSimulated;
        readDensityHeader(objBlock);
        if (m_vecSizes[0] != m_objTarget.nNameCount)
        {
            return fail(objBlock.objMismatch);
        }
        if (m_vecSizes[0] < 1 || m_vecSizes[1] < 1)
        {
            return true;
        }
        m_objRecord.nTotalVertices = m_vecSizes[1];
        return readDensityRows(objBlock, m_objRecord.vecSimulatedPhotonDensity);
    }

    bool readMeasuredDensity()
    {
        progress(m_objKind.pProgressMeasured, 5);
        const SDensityBlock& objBlock = m_objKind.objMeasured;
        readDensityHeader(objBlock);
        if (m_vecSizes[0] != m_objTarget.nNameCount || m_vecSizes[1] != m_objRecord.nTotalVertices)
        {
            return fail(objBlock.objMismatch);
        }
        if (m_vecSizes[0] < 1 || m_vecSizes[1] < 1)
        {
            return true;
        }
        return readDensityRows(objBlock, m_objRecord.vecMeasuredPhotonDensity);
    }

    /// The sizes aren't emptied before: a block that can't be read goes by the sizes of the block before it.
    void readDensityHeader(const SDensityBlock& objBlock)
    {
        m_objOnException = objBlock.objNoHeader;
        m_vecSizes.resize(2);
        if (!readSizes(objBlock.pBlock, m_objKind.pDensityCountKey, "Total.Vertices"))
        {
            say(objBlock.objNoHeader);
            m_vecSizes.resize(2);
        }
    }

    bool readDensityRows(const SDensityBlock& objBlock, std::vector<std::vector<float>>& vecRows)
    {
        const qint64 nRows = m_vecSizes[0];
        const qint64 nVertices = m_vecSizes[1];
        return m_eFormat == EFormat::V10 ? readRowsByValue(objBlock, nRows, nVertices, vecRows)
                                         : readRowsByText(objBlock, nRows, nVertices, vecRows);
    }

    bool readRowsByValue(const SDensityBlock& objBlock, qint64 nRows, qint64 nVertices, std::vector<std::vector<float>>& vecRows)
    {
        m_objOnException = objBlock.objNoMemory10;
        std::vector<float> vecValues;
        if (!m_objXML.readCurrentNumbers(tag(objBlock.pValue), {QStringLiteral("Photon.Density")}, nRows * nVertices, vecValues))
        {
            return fail(objBlock.objNoValue10);
        }
        for (qint64 nRow = 0; nRow < nRows; ++nRow)
        {
            const auto itRow = vecValues.begin() + nRow * nVertices;
            vecRows.emplace_back(itRow, itRow + nVertices);
        }
        return true;
    }

    /// A row joins the record when its text was found to fill it.
    bool readRowsByText(const SDensityBlock& objBlock, qint64 nRows, qint64 nVertices, std::vector<std::vector<float>>& vecRows)
    {
        const QString strValues = tag(objBlock.pValues);
        std::vector<float> vecScratch;
        for (qint64 nRow = 0; nRow < nRows; ++nRow)
        {
            m_objOnException = objBlock.objNoValue20;
            if (!m_objXML.readCurrentHexFloats(strValues, static_cast<int>(nRow), nVertices, vecScratch))
            {
                return fail(objBlock.objNoValue20);
            }
            m_objOnException = objBlock.objNoMemory20;
            vecRows.push_back(vecScratch);
        }
        return true;
    }

    bool readVolume()
    {
        progress(m_objKind.pProgressVolume, 6);
        say(m_objKind.objReadingVolume);
        m_objOnException = m_objKind.objNoVolume;
        QString strKind = tag(m_objKind.pName);
        const bool bRead = m_eFormat == EFormat::V10 ? m_objRecord.objVolume.loadFromXML(&m_objXML, strKind)
                                                     : m_objHost.readVolume(m_objXML, m_objRecord, strKind);
        if (!bRead)
        {
            return fail(m_objKind.objNoVolume);
        }
        if (m_objKind.bMaskAndRegistration)
        {
            m_objHost.readMask(m_objXML, m_objRecord);
            m_objOnException = m_objKind.objNoRegistration;
            if (!m_objXML.getRegistrationMatrices(tag(m_objKind.pFirstTag), &m_objRecord.mapRegistrationMatrices))
            {
                say(m_objKind.objNoRegistration);
            }
        }
        return true;
    }

    bool readResults()
    {
        if (m_objKind.pProgressDisplay != nullptr)
        {
            progress(m_objKind.pProgressDisplay, 8);
        }
        progress(m_objKind.pProgressResults, 7);
        say(m_objKind.objReadingResults);
        m_objOnException = m_objKind.objNoResults;
        int nCount = 0;
        if (!m_objXML.Read2ndTagKeyValues(tag(m_objKind.pFirstTag), tag(m_objKind.pResultsBlock), tag(g_strCount), nCount))
        {
            say(m_objKind.objNoResults);
            if (m_objKind.bResultsRequired)
            {
                return false;
            }
            nCount = 0;
        }
        m_objOnException = m_objKind.objBadResultsRow;
        if (!readResultRows(nCount))
        {
            return fail(m_objKind.objBadResultsRow);
        }
        m_objHost.waitForSavePrompt();
        return true;
    }

    bool readResultRows(int nCount)
    {
        const QString strEntry = tag(m_objKind.pResultsEntry);
        QStringList lstColumns = {QStringLiteral("Key"), QStringLiteral("Value")};
        QStringList lstKeys;
        QStringList lstValues;
        for (int i = 0; i < nCount; ++i)
        {
            QStringList lstRow;
            if (!m_objXML.ReadCurrentKeyValues(i, strEntry, lstColumns, lstRow))
            {
                return false;
            }
            if (!lstRow.value(0).contains(QLatin1String(m_objKind.pDroppedKey)))
            {
                lstKeys.append(lstRow.value(0));
                lstValues.append(lstRow.value(1));
            }
        }
        if (m_objKind.bVersionRow)
        {
            lstKeys.append(QStringLiteral("Version"));
            lstValues.append(m_strSoftware);
        }
        m_objRecord.lstResultKeys = lstKeys;
        m_objRecord.lstResultValues = lstValues;
        return true;
    }

    const SKind& m_objKind;
    CWalkHost& m_objHost;
    const STarget& m_objTarget;
    SAnalysisBase& m_objRecord;
    AnalysisResultXMLWrapper m_objXML;
    qint64 m_nFileBytes = 0; ///< what a document of this size can hold bounds what is asked of the memory
    EFormat m_eFormat = EFormat::Unknown;
    QString m_strSoftware;
    std::vector<int> m_vecSizes; ///< the two sizes of the block last read
    SMessage m_objOnException;   ///< how the step at work reports that it was interrupted
};

} // namespace

bool read(const SKind& objKind, CWalkHost& objHost, const QString& strPath, const STarget& objTarget)
{
    try
    {
        CWalk objWalk(objKind, objHost, objTarget);
        try
        {
            return objWalk.run(strPath);
        }
        catch (const std::exception&)
        {
            objWalk.sayInterrupted(); // in practice memory ran short
            objHost.log(QStringLiteral("There is not enough memory to read this result."), 3);
        }
    }
    catch (const std::exception&)
    {
        // Not even memory for a message.
    }
    return false;
}

QString normalisedSoftwareVersion(const QString& strVersion)
{
    if (strVersion.isEmpty())
    {
        return QStringLiteral("N/A");
    }
    if (!strVersion.toLower().contains(QLatin1String("version")))
    {
        return strVersion;
    }
    return strVersion.mid(strVersion.lastIndexOf(QLatin1Char(':')) + 1);
}

} // namespace ResultDocument
