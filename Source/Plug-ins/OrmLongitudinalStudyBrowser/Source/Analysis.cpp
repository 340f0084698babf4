#include "Analysis.h"

bool CSOLAAnalysis::doReconstruction()
{
    return false;
}

bool CSOLAAnalysis::loadSequence(COrmSequenceDataset*)
{
    return false;
}

void CSOLAAnalysis::saveAnalysisResults(QWidget*, QString) {}

bool CSOLAAnalysis::getResultsOutput(QStringList&, QStringList&)
{
    return false;
}

int CSOLAAnalysis::getSelectedClickNumbers(QStringList&)
{
    return 0;
}

void CSOLAAnalysis::saveOptimizedFitparameters(QWidget*, QString) {}

bool CSOLAAnalysis::exportPhotonDensityMaps2CSV(QWidget*, QString)
{
    return false;
}

bool CSOLAAnalysis::loadPhotonDensityMapDataToSequence(COrmSequenceWindow*, bool, int)
{
    return false;
}

bool CNOVAAnalysis::doReconstruction()
{
    return false;
}

bool CNOVAAnalysis::loadSequence(COrmSequenceDataset*)
{
    return false;
}

bool CNOVAAnalysis::applyAnalysisResults(COrmSequenceDataset*, COrmSequenceWindow*, bool, int)
{
    return false;
}

void CNOVAAnalysis::loadAnalysisResults(SAnalysisBase*, C3DMesh*) {}

bool CNOVAAnalysis::getResultsOutput(QStringList&, QStringList&)
{
    return false;
}

int CNOVAAnalysis::getSelectedClickNumbers(QStringList&)
{
    return 0;
}

void CNOVAAnalysis::saveOptimizedFitparameters(QWidget*, QString) {}

bool CNOVAAnalysis::exportPhotonDensityMaps2CSV(QWidget*, QString)
{
    return false;
}

bool CNOVAAnalysis::loadPhotonDensityMapDataToSequence(COrmSequenceWindow*, bool, int)
{
    return false;
}
