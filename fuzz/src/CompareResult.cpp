#include "CompareResult.h"

#include "AnalysisResultXMLWrapper.h"
#include "COrmBasePalette.h"
#include "FuzzTarget.h"
#include "PlainResult.h"
#include "ResultDocumentWalk.h"
#include "ResultUnits.h"

#include <cstring>

namespace
{
constexpr long long nAllowedMemory = 32LL * 1024 * 1024; ///< beyond the size of the document

using FuzzTarget::demand;

/// Lets the walk read the host's sections as a palette does, and keeps quiet.
class CQuietHost : public ResultDocument::CWalkHost
{
public:
    CQuietHost(COrmBasePalette& objPalette, const QString& strUnit) : m_objPalette(objPalette), m_strUnit(strUnit) {}

    void log(const QString& strMessage, long /*nLevel*/) override { m_strLast = strMessage; }
    void hint(const QString& strMessage) override { m_strLast = strMessage; }
    void progress(const QString& /*strMessage*/, int /*nStep*/) override {}
    QString analysisName() const override { return QString(); }
    QString selectedUnit() const override { return m_strUnit; }
    void namesRead(const QStringList& /*lstNames*/) override {}
    void readQuantification(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override
    {
        m_objPalette.readWellPlateQuantification(objXML, &objRecord);
    }
    void readSoftwareVersion(AnalysisResultXMLWrapper& objXML, QString& strVersion) override
    {
        m_objPalette.readVersionInformation(objXML, strVersion);
    }
    bool readMesh(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override { return m_objPalette.readMesh(objXML, &objRecord); }
    bool readVolume(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord, QString& strKind) override
    {
        return m_objPalette.readVolumeData(objXML, &objRecord, strKind);
    }
    void readMask(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override { m_objPalette.readMask(objXML, &objRecord); }
    void waitForSavePrompt() override {}

    QString m_strLast; ///< message of whatever kind

private:
    COrmBasePalette& m_objPalette;
    QString m_strUnit;
};

COrmBasePalette& palette()
{
    static COrmBasePalette s_objPalette(nullptr, "fuzz", false, Qt::WindowFlags());
    return s_objPalette;
}

/// Both texts through Qt's own decoding.
void same(const QString& strRead, const std::string& strPlain, const char* pWhat)
{
    demand(strRead == QString::fromStdString(strPlain),
           std::string(pWhat) + ": read \"" + strRead.toStdString() + "\", should be \"" + strPlain + "\"");
}

void same(const QStringList& lstRead, const std::vector<std::string>& vecPlain, const char* pWhat)
{
    demand(lstRead.size() == static_cast<int>(vecPlain.size()), std::string(pWhat) + ": another number of texts");
    for (int i = 0; i < lstRead.size(); ++i)
        same(lstRead.at(i), vecPlain[static_cast<std::size_t>(i)], pWhat);
}

/// Bit by bit, so that what is no number compares too.
void sameBits(const void* pRead, std::size_t nRead, const std::vector<std::uint32_t>& vecPlain, const char* pWhat)
{
    demand(nRead == vecPlain.size(),
           std::string(pWhat) + ": " + std::to_string(nRead) + " values, should be " + std::to_string(vecPlain.size()));
    for (std::size_t i = 0; i < nRead; ++i)
    {
        std::uint32_t nBits = 0;
        std::memcpy(&nBits, static_cast<const char*>(pRead) + 4 * i, sizeof(nBits));
        demand(nBits == vecPlain[i], std::string(pWhat) + ": value " + std::to_string(i) + " differs");
    }
}

void sameRows(const std::vector<std::vector<float>>& vecRead, const std::vector<std::vector<std::uint32_t>>& vecPlain, const char* pWhat)
{
    demand(vecRead.size() == vecPlain.size(), std::string(pWhat) + ": another number of rows");
    for (std::size_t i = 0; i < vecRead.size(); ++i)
        sameBits(vecRead[i].data(), vecRead[i].size(), vecPlain[i], pWhat);
}

void sameVolume(const C3DVolume& objVolume, const PlainResult::SRecord& objPlain)
{
    std::vector<float> vecNumbers;
    for (const C3DVolume::Voxel& voxel : objVolume.voxels())
        vecNumbers.insert(vecNumbers.end(), {voxel.x, voxel.y, voxel.z, voxel.fValue});
    sameBits(vecNumbers.data(), vecNumbers.size(), objPlain.m_vecVoxels, "voxels");
    sameBits(&objVolume.m_fVoxelSize, 1, {objPlain.m_nVoxelSize}, "voxel size");
    demand(objVolume.m_nVoxels == objVolume.voxels().size(), "the number of voxels");
}

void sameMatrices(const QMap<int, _SFMatrix>& mapRead, const std::map<int, std::array<double, 16>>& mapPlain)
{
    demand(mapRead.size() == static_cast<int>(mapPlain.size()), "another number of matrices");
    for (const auto& [nIndex, afPlain] : mapPlain)
        demand(mapRead.contains(nIndex) && mapRead[nIndex].values() == afPlain, "matrix " + std::to_string(nIndex));
}

void sameRecord(const SAnalysisBase& objRead, int nNames, const QStringList& lstNames, const PlainResult::SRecord& objPlain)
{
    const CWPQuantData& objData = objRead.objQuantData;
    const std::pair<const char*, const QString*> aFields[] = {{"Name", &objData.strName},
                                                              {"Date", &objData.strDate},
                                                              {"MeasurementType", &objData.strMeasurementType},
                                                              {"Probe", &objData.strProbe},
                                                              {"PlateType", &objData.strPlateType},
                                                              {"Unit", &objData.strUnit},
                                                              {"PerUnitValue", &objData.strPerUnitValue}};
    for (const auto& [pKey, pstrRead] : aFields)
    {
        const auto it = objPlain.m_mapCalibration.find(pKey);
        same(*pstrRead, it == objPlain.m_mapCalibration.end() ? std::string() : it->second, pKey);
    }
    sameBits(objRead.objMesh.vertices().data(), objRead.objMesh.vertices().size(), objPlain.m_vecVertices, "vertices");
    sameBits(objRead.objMesh.triangles().data(), objRead.objMesh.triangles().size(), objPlain.m_vecTriangles, "triangles");
    same(objRead.strSequenceID, objPlain.m_strSequence, "sequence ID");
    demand(nNames == objPlain.m_nNames, "the number of names");
    same(lstNames, objPlain.m_vecNames, "names");
    same(objRead.lstEmissionFilters, objPlain.m_vecEmission, "emission filters");
    same(objRead.lstExcitationFilters, objPlain.m_vecExcitation, "excitation filters");
    same(objRead.lstClickNumbers, objPlain.m_vecClicks, "click numbers");
    same(objRead.strSourceDatabase, objPlain.m_strSourceDatabase, "source database");
    same(objRead.strTissueDatabase, objPlain.m_strTissueDatabase, "tissue database");
    demand(objRead.imgHeightMap.width() == objPlain.m_nMapWidth && objRead.imgHeightMap.height() == objPlain.m_nMapHeight,
           "height map's size");
    if (objPlain.m_nMapWidth > 0)
        sameBits(objRead.imgHeightMap.constData(), static_cast<std::size_t>(objRead.imgHeightMap.byteCount()) / 4, objPlain.m_vecMap,
                 "height map");
    demand(objRead.nTotalVertices == objPlain.m_nVertices, "the number of vertices of the densities");
    sameRows(objRead.vecSimulatedPhotonDensity, objPlain.m_vecSimulated, "simulated densities");
    sameRows(objRead.vecMeasuredPhotonDensity, objPlain.m_vecMeasured, "measured densities");
    sameVolume(objRead.objVolume, objPlain);
    demand(objRead.imgMask.width() == objPlain.m_nMaskWidth && objRead.imgMask.height() == objPlain.m_nMaskHeight, "mask's size");
    if (objPlain.m_nMaskWidth > 0)
        demand(std::memcmp(objRead.imgMask.constData(), objPlain.m_vecMask.data(), objPlain.m_vecMask.size()) == 0, "mask");
    sameMatrices(objRead.mapRegistrationMatrices, objPlain.m_mapMatrices);
    same(objRead.lstResultKeys, objPlain.m_vecKeys, "keys of the table");
    same(objRead.lstResultValues, objPlain.m_vecValues, "values of the table");
}
} // namespace

namespace CompareResult
{
bool readBothWays(const std::string& strDocument, bool bNova, const std::string& strUnit)
{
    const PlainResult::SRecord objPlain = PlainResult::read(strDocument, bNova, strUnit);
    const QString strPath = FuzzTarget::fileWith(QByteArray(strDocument.data(), static_cast<int>(strDocument.size())));
    CQuietHost objHost(palette(), strUnit == "uncalibrated" ? ResultUnits::comparedPmolPerMolarCm() : QString::fromStdString(strUnit));
    SSOLAAnalysis objSola;
    SNOVAAnalysis objNova;
    SAnalysisBase& objRecord = bNova ? static_cast<SAnalysisBase&>(objNova) : objSola;
    int& nNames = bNova ? objNova.nImageSourceCount : objSola.nWavelengthCount;
    QStringList& lstNames = bNova ? objNova.lstImageSources : objSola.lstWavelengths;
    bool bRead = false;
    {
        const CMemoryBound objBound(static_cast<long long>(strDocument.size()) + nAllowedMemory);
        bRead =
            ResultDocument::read(bNova ? ResultDocument::nova() : ResultDocument::sola(), objHost, strPath, {objRecord, nNames, lstNames});
    }
    using PlainResult::EOutcome;
    demand(objPlain.m_eOutcome == EOutcome::Unsure || bRead == (objPlain.m_eOutcome == EOutcome::Read),
           bRead ? "read, but should be refused after step " + std::to_string(objPlain.m_nLastStep)
                 : "refused with \"" + objHost.m_strLast.toStdString() + "\", but should be read");
    if (bRead)
        sameRecord(objRecord, nNames, lstNames, objPlain);
    return bRead;
}
} // namespace CompareResult
