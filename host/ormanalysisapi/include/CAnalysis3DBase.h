#pragma once

#include "CAnalysis2DBase.h"
#include "IA3DMesh.h"
#include "SFMatrix.h"

#include <QMap>
#include <QStringList>

class C3DMesh;
class C3DVolume;
class COrmSequenceWindow;
class CPLXMLReader;
class CPLXMLWriter;
class ReconstructionBase;
struct SAnalysisBase;

/// Base of the tomographic analyses. What it declares is the work of analyses that reconstruct; the base itself does none of it:
/// operations with a result return false, the others leave their arguments alone, and exports say so in the log.
class CAnalysis3DBase : public CAnalysis2DBase
{
    Q_OBJECT

public:
    explicit CAnalysis3DBase(QObject* pParent = nullptr);
    ~CAnalysis3DBase() override;

    virtual bool loadData(C3DMesh* pMesh, QMap<int, _SFMatrix>* pMatrices, QString strFirst, QString strSecond);
    virtual bool applyAnalysisResults(COrmSequenceDataset* pSequence, COrmSequenceWindow* pWindow, bool bShow, int nIndex);
    virtual void loadAnalysisResults(C3DMesh* pMesh, float** ppMeasured, float** ppSimulated, int nRows, QStringList& lstFirst,
                                     QStringList& lstSecond, const QStringList& lstKeys, const QStringList& lstValues);
    virtual void loadAnalysisResults(SAnalysisBase* pAnalysis, C3DMesh* pMesh);
    virtual bool getResultsOutput(QStringList& lstKeys, QStringList& lstValues);
    virtual int getSelectedClickNumbers(QStringList& lstClickNumbers);
    virtual bool save3DSurfaceMesh(QWidget* pParent, QString strFile);
    virtual bool saveSourceVolume(QWidget* pParent, QString strFile);
    virtual void saveOptimizedFitparameters(QWidget* pParent, QString strFile);
    virtual bool savePhotonDensityMaps(QWidget* pParent, QString strFile);
    virtual bool exportPhotonDensityMaps2CSV(QWidget* pParent, QString strFile);
    virtual bool exportVoxels2CSV(QWidget* pParent, QString strFile, QString strName);
    virtual void interpolateSourceVoxels(C3DVolume* pVolume, IA3D::mesh& mesh, IA3D::mesh_utils::viewinfo& info, float fFactor);
    /// Remembers @p pObject if it is a ReconstructionBase; otherwise nothing changes. The analysis does not own it.
    virtual void setup3DreconPointer(QObject* pObject);
    virtual void saveAnalysisParamsToXML(CPLXMLWriter* pWriter, const QString& strTag);
    virtual void readAnalysisParamsFromXML(CPLXMLReader* pReader, const QString& strTag);
    virtual bool loadPhotonDensityMapDataToSequence(COrmSequenceWindow* pWindow, bool bMeasured, int nIndex);

    /// What setup3DreconPointer() remembered; null before.
    ReconstructionBase* reconstruction() const { return m_pReconstruction; }

protected:
    ReconstructionBase* m_pReconstruction = nullptr; ///< not owned
};
