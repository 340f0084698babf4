#include "LongitudinalStudyBrowserWnd.h"

#include "AnalysisRecords.h"
#include "COrmDataset.h"
#include "COrmProcess.h"
#include "COrmSequenceDataset.h"
#include "LongitudinalStudyBrowserView.h"
#include "ResultUnits.h"
#include "ResultsTable.h"
#include "SAnalysisBase.h"
#include "SourceVoxels.h"
#include "VolumeSurfaceConversion.h"

#include <new>
#include <utility>

namespace
{

constexpr int g_nProcessSteps = 15;
/// Field of view of a result whose sequence isn't open, millimetres.
constexpr double g_dDefaultFieldOfView = 136.0;
/// Pixels across the field of view.
constexpr int g_nViewPixels = 960;

/// Gives the shown volume the stored values divided by f. Each voxel takes a new object number. An f that isn't above 0
/// leaves the volume as it is.
void rescaleVolume(sAnalysisBase& objRecord, double f)
{
    if (objRecord.objRawVolume.values().empty() || !(f > 0.0))
    {
        return;
    }
    if (f == 1.0)
    {
        objRecord.objVolume.shareVoxels(objRecord.objRawVolume);
        return;
    }
    OrmArray<float> vecValues = objRecord.objRawVolume.values();
    float fMin = static_cast<float>(static_cast<double>(vecValues.front()) / f);
    float fMax = fMin;
    for (float& fValue : vecValues)
    {
        fValue = static_cast<float>(static_cast<double>(fValue) / f);
        fMin = fValue < fMin ? fValue : fMin;
        fMax = fValue > fMax ? fValue : fMax;
    }
    objRecord.objVolume.takeValues(std::move(vecValues), fMin, fMax);
}

} // namespace

bool CLongitudinalStudyBrowserWnd::isOfSelectedSequence(const SAnalysisBase* pAnalysis) const
{
    return pAnalysis != nullptr && pAnalysis->strSequenceID.toLower() == m_strSelectedSequenceID.toLower() &&
           pAnalysis->nTotalVertices == pAnalysis->objMesh.getNumOfVertices();
}

/// The step's text begins with the name of the analysis, which the palette may leave empty.
void CLongitudinalStudyBrowserWnd::tellStep(const QString& strProgress, int nStep, const QString& strHint)
{
    COrmProcess::setProcessMessage(QStringLiteral("Loading ") + m_strAnalysisName + strProgress, nStep, g_nProcessSteps, nullptr);
    setStatusHint(strHint);
}

bool CLongitudinalStudyBrowserWnd::loadSOLAAnalysis(SSOLAAnalysis* pAnalysis)
{
    if (!isOfSelectedSequence(pAnalysis))
    {
        return false;
    }
    tellStep(QStringLiteral(" Analysis: Updating surface..."), 8, QStringLiteral("Updating surface mesh..."));
    tellStep(QStringLiteral(" Analysis: Updating source volume..."), 9, QStringLiteral("Updating source volume..."));
    if (pAnalysis->lstWavelengths.isEmpty())
    {
        return true;
    }
    tellStep(QStringLiteral(" analysis: Updating results view..."), 13, QStringLiteral("Updating results view..."));
    refineSourceVolume(*pAnalysis);
    updateSOLAAnalysisParameters(pAnalysis);
    showInView(*pAnalysis, m_strSelectedSOLAResult, pAnalysis->lstWavelengths.first());
    return true;
}

bool CLongitudinalStudyBrowserWnd::loadNOVAAnalysis(SNOVAAnalysis* pAnalysis)
{
    if (!isOfSelectedSequence(pAnalysis))
    {
        return false;
    }
    tellStep(QStringLiteral(" Analysis: Updating surface..."), 8, QStringLiteral("Updating surface mesh..."));
    tellStep(QStringLiteral(" Analysis: Updating source volume..."), 9, QStringLiteral("Updating source volume..."));
    if (pAnalysis->lstImageSources.isEmpty())
    {
        return true;
    }
    tellStep(QStringLiteral(" analysis: Updating results view..."), 13, QStringLiteral("Updating results view..."));
    tellStep(QStringLiteral(" analysis: Updating results view..."), 14, QStringLiteral("Updating results view..."));
    refineSourceVolume(*pAnalysis);
    updateNOVAAnalysisParameters(pAnalysis);
    showInView(*pAnalysis, m_strSelectedNOVAResult, pAnalysis->lstImageSources.first());
    return true;
}

/// Makes the source smooth at a common voxel size and gives it the colour table of the panel.
void CLongitudinalStudyBrowserWnd::refineSourceVolume(SAnalysisBase& objAnalysis)
{
    IA3D::mesh objMesh;
    VolumeSurfaceConversion::convert(objAnalysis.objMesh, objMesh);

    IA3D::mesh_utils::viewinfo objView;
    objView.dCenterX = 0.0;
    objView.dCenterY = 0.0;
    objView.dFieldOfView = g_dDefaultFieldOfView;
    objView.dRotation = 0.0;
    objView.nImageSize = g_nViewPixels;
    if (const COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(m_strSelectedSequenceID))
    {
        if (COrmDataset* pDataset = pSequence->getDatasets().value(0))
        {
            pDataset->calculateFOV();
            objView.dFieldOfView = pDataset->getImageFOV() * 10.0; // centimetres
        }
    }

    const float fFactor = refinementFactor(objAnalysis.objVolume.getVoxelSize());
    if (fFactor > 0.0f)
    {
        interpolateSourceVoxels(&objAnalysis.objVolume, objMesh, objView, fFactor);
    }
    objAnalysis.objVolume.setColorTable(m_objForm.m_pColorTableCB->currentIndex(), 0.0f, 1.0f);
    m_pView->setColorPaletteModified(true);
}

/// What comes after the hand-over. Memory that runs short leaves the surface plain; where the values can't be brought into
/// their unit the load is undone, since they would be wrong.
void CLongitudinalStudyBrowserWnd::showInView(SAnalysisBase& objAnalysis, const QString& strResult, const QString& strFirstName)
{
    applyQuantification(m_strSelectedSequenceID, strResult, &objAnalysis);
    try
    {
        m_pView->applyPhotonDensityMap(m_strSelectedSequenceID, strResult, strFirstName);
    }
    catch (const std::bad_alloc&)
    {
    }
    objAnalysis.objVolume.show(true);
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::updateSOLAAnalysisParameters(SSOLAAnalysis* pAnalysis)
{
    sAnalysisBase objRecord;
    objRecord.strResultName = m_strSelectedSOLAResult;
    objRecord.nAnalysisType = 0;
    fillRecord(*pAnalysis, pAnalysis->lstWavelengths, QStringLiteral("Starting vsize (best)"), objRecord);
    objRecord.fSelectLeft = 0.0f;
    objRecord.fSelectTop = 0.0f;
    objRecord.fSelectRight = 0.0f;
    objRecord.fSelectBottom = 0.0f;
    m_pView->setAnalysisParms(objRecord);
}

void CLongitudinalStudyBrowserWnd::updateNOVAAnalysisParameters(SNOVAAnalysis* pAnalysis)
{
    sAnalysisBase objRecord;
    objRecord.strResultName = m_strSelectedNOVAResult;
    objRecord.nAnalysisType = 1;
    fillRecord(*pAnalysis, pAnalysis->lstImageSources, QStringLiteral("Starting vsize"), objRecord);
    m_pView->setAnalysisParms(objRecord);
}

/// Copies what both kinds have in common. The sequence ID is the file's, in its upper and lower case.
/// @param strStartKey the kind's first key of the starting voxel size
void CLongitudinalStudyBrowserWnd::fillRecord(const SAnalysisBase& objAnalysis, const QStringList& lstNames, const QString& strStartKey,
                                              sAnalysisBase& objRecord)
{
    const std::vector<std::vector<float>>& vecRows = objAnalysis.vecMeasuredPhotonDensity;
    for (int i = 0; i < lstNames.size() && static_cast<size_t>(i) < vecRows.size(); ++i)
    {
        objRecord.addPhotonDensity(lstNames.at(i).trimmed(), vecRows[static_cast<size_t>(i)]);
    }
    const QStringList& lstKeys = objAnalysis.lstResultKeys;
    const QStringList& lstValues = objAnalysis.lstResultValues;
    objRecord.dFinalVoxelSize = ResultsTable::number(lstKeys, lstValues, {QStringLiteral("Final voxel size (mm)")});
    objRecord.dStartingVoxelSize = ResultsTable::number(lstKeys, lstValues, {strStartKey, QStringLiteral("Starting voxel size:")});
    objRecord.dReducedChi2 = ResultsTable::number(lstKeys, lstValues, {QStringLiteral("Reduced Chi2")});
    objRecord.strSequenceID = objAnalysis.strSequenceID;
    objRecord.objMesh = objAnalysis.objMesh;
    objRecord.objVolume = objAnalysis.objVolume;
    objRecord.objVolume.setMIP(m_objForm.m_pMIPCheck->isChecked());
    objRecord.objRawVolume = objAnalysis.objVolume;
}

void CLongitudinalStudyBrowserWnd::applyQuantification(QString strSequenceID, QString strResult, SAnalysisBase* pAnalysis)
{
    const CWPQuantData& objQuantData = pAnalysis->objQuantData;
    if (m_pView == nullptr)
    {
        return;
    }
    const QString strUnit = ResultUnits::shownUnit(m_nResultKind, objQuantData.strMeasurementType);
    if (m_nResultKind == 0)
    {
        m_pView->setSOLAUnit(strUnit);
    }
    else if (m_nResultKind == 1)
    {
        m_pView->setNOVAUnit(strUnit);
    }

    QList<sAnalysisBase>& lstRecords = m_pView->getAnalysisParams();
    if (lstRecords.isEmpty())
    {
        return;
    }
    int nRecord = 0;
    while (nRecord < lstRecords.size() &&
           (lstRecords.at(nRecord).strSequenceID != strSequenceID || lstRecords.at(nRecord).strResultName != strResult))
    {
        ++nRecord;
    }
    // Where the file's sequence ID differs from the selection by case no record is found, and the first one stands in.
    sAnalysisBase& objRecord = lstRecords[nRecord < lstRecords.size() ? nRecord : 0];
    rescaleVolume(objRecord, ResultUnits::divisor(m_nResultKind, objQuantData.strMeasurementType, objQuantData.strPerUnitValue));
}
