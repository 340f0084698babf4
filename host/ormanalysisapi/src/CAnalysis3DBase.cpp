#include "CAnalysis3DBase.h"

#include "COrmLog.h"
#include "ReconstructionBase.h"

namespace
{
bool notWritten(const QString& strWhat, const QString& strFile)
{
    ORM_LOG(2, QStringLiteral("This analysis has no %1 to write to \"%2\".").arg(strWhat, strFile));
    return false;
}
} // namespace

CAnalysis3DBase::CAnalysis3DBase(QObject* pParent) : CAnalysis2DBase(pParent) {}

CAnalysis3DBase::~CAnalysis3DBase() = default;

bool CAnalysis3DBase::loadData(C3DMesh* /*pMesh*/, QMap<int, _SFMatrix>* /*pMatrices*/, QString /*strFirst*/, QString /*strSecond*/)
{
    return false;
}

bool CAnalysis3DBase::applyAnalysisResults(COrmSequenceDataset* /*pSequence*/, COrmSequenceWindow* /*pWindow*/, bool /*bShow*/,
                                           int /*nIndex*/)
{
    return false;
}

void CAnalysis3DBase::loadAnalysisResults(C3DMesh* /*pMesh*/, float** /*ppMeasured*/, float** /*ppSimulated*/, int /*nRows*/,
                                          QStringList& /*lstFirst*/, QStringList& /*lstSecond*/, const QStringList& /*lstKeys*/,
                                          const QStringList& /*lstValues*/)
{
}

void CAnalysis3DBase::loadAnalysisResults(SAnalysisBase* /*pAnalysis*/, C3DMesh* /*pMesh*/) {}

bool CAnalysis3DBase::getResultsOutput(QStringList& /*lstKeys*/, QStringList& /*lstValues*/)
{
    return false;
}

int CAnalysis3DBase::getSelectedClickNumbers(QStringList& /*lstClickNumbers*/)
{
    return 0;
}

bool CAnalysis3DBase::save3DSurfaceMesh(QWidget* /*pParent*/, QString strFile)
{
    return notWritten(QStringLiteral("surface"), strFile);
}

bool CAnalysis3DBase::saveSourceVolume(QWidget* /*pParent*/, QString strFile)
{
    return notWritten(QStringLiteral("source volume"), strFile);
}

void CAnalysis3DBase::saveOptimizedFitparameters(QWidget* /*pParent*/, QString strFile)
{
    notWritten(QStringLiteral("fit parameters"), strFile);
}

bool CAnalysis3DBase::savePhotonDensityMaps(QWidget* /*pParent*/, QString strFile)
{
    return notWritten(QStringLiteral("photon density maps"), strFile);
}

bool CAnalysis3DBase::exportPhotonDensityMaps2CSV(QWidget* /*pParent*/, QString strFile)
{
    return notWritten(QStringLiteral("photon density maps"), strFile);
}

bool CAnalysis3DBase::exportVoxels2CSV(QWidget* /*pParent*/, QString strFile, QString /*strName*/)
{
    return notWritten(QStringLiteral("voxels"), strFile);
}

void CAnalysis3DBase::interpolateSourceVoxels(C3DVolume* /*pVolume*/, IA3D::mesh& /*mesh*/, IA3D::mesh_utils::viewinfo& /*info*/,
                                              float /*fFactor*/)
{
}

void CAnalysis3DBase::setup3DreconPointer(QObject* pObject)
{
    if (auto* pReconstruction = dynamic_cast<ReconstructionBase*>(pObject))
    {
        m_pReconstruction = pReconstruction;
    }
}

void CAnalysis3DBase::saveAnalysisParamsToXML(CPLXMLWriter* /*pWriter*/, const QString& /*strTag*/) {}

void CAnalysis3DBase::readAnalysisParamsFromXML(CPLXMLReader* /*pReader*/, const QString& /*strTag*/) {}

bool CAnalysis3DBase::loadPhotonDensityMapDataToSequence(COrmSequenceWindow* /*pWindow*/, bool /*bMeasured*/, int /*nIndex*/)
{
    return false;
}
