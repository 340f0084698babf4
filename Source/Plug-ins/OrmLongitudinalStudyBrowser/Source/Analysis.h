#pragma once

#include "CAnalysis3DBase.h"

/// Stand-in for the driver of luminescent reconstructions. The tool shows saved results and reconstructs, saves and exports
/// nothing: operations with a result answer false or 0, the others leave everything as it is. No thread is ever started.
class CSOLAAnalysis : public CAnalysis3DBase
{
    Q_OBJECT

public:
    bool doReconstruction() override;
    bool loadSequence(COrmSequenceDataset* pSequence) override;
    void saveAnalysisResults(QWidget* pParent, QString strName) override;
    bool getResultsOutput(QStringList& lstKeys, QStringList& lstValues) override;
    int getSelectedClickNumbers(QStringList& lstClickNumbers) override;
    void saveOptimizedFitparameters(QWidget* pParent, QString strFile) override;
    bool exportPhotonDensityMaps2CSV(QWidget* pParent, QString strFile) override;
    bool loadPhotonDensityMapDataToSequence(COrmSequenceWindow* pWindow, bool bMeasured, int nIndex) override;
};

/// Stand-in for the driver of fluorescent reconstructions. Abstract, since nobody saves through it.
class CNOVAAnalysis : public CAnalysis3DBase
{
    Q_OBJECT

public:
    bool doReconstruction() override;
    bool loadSequence(COrmSequenceDataset* pSequence) override;
    void saveAnalysisResults(QWidget* pParent, QString strName) override = 0;
    bool applyAnalysisResults(COrmSequenceDataset* pSequence, COrmSequenceWindow* pWindow, bool bShow, int nIndex) override;
    using CAnalysis3DBase::loadAnalysisResults;
    void loadAnalysisResults(SAnalysisBase* pAnalysis, C3DMesh* pMesh) override;
    bool getResultsOutput(QStringList& lstKeys, QStringList& lstValues) override;
    int getSelectedClickNumbers(QStringList& lstClickNumbers) override;
    void saveOptimizedFitparameters(QWidget* pParent, QString strFile) override;
    bool exportPhotonDensityMaps2CSV(QWidget* pParent, QString strFile) override;
    bool loadPhotonDensityMapDataToSequence(COrmSequenceWindow* pWindow, bool bMeasured, int nIndex) override;
};
