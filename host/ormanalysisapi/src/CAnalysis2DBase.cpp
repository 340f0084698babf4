#include "CAnalysis2DBase.h"

CAnalysis2DBase::CAnalysis2DBase(QObject* pParent) : QThread(pParent) {}

CAnalysis2DBase::~CAnalysis2DBase() = default;

void CAnalysis2DBase::run()
{
    doReconstruction();
}

bool CAnalysis2DBase::doReconstruction()
{
    return false;
}

bool CAnalysis2DBase::loadSequence(COrmSequenceDataset* /*pSequence*/)
{
    return false;
}

void CAnalysis2DBase::reset() {}

void CAnalysis2DBase::saveAnalysisResults(QWidget* /*pParent*/, QString /*strName*/) {}

bool CAnalysis2DBase::computeDynamicRange(COrmDataset* /*pDataset*/, float& /*fRange*/)
{
    return false;
}
