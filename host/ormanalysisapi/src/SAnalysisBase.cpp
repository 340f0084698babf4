#include "SAnalysisBase.h"

// The destructors stand here so that the tables of the polymorphic records exist once.
ParamsTabData::~ParamsTabData() = default;

DataPreviewToReconParams::~DataPreviewToReconParams() = default;

SAnalysisBase::~SAnalysisBase() = default;
void SAnalysisBase::whoamI() {}

SSOLAAnalysis::~SSOLAAnalysis() = default;
void SSOLAAnalysis::whoamI() {}

SNOVAAnalysis::~SNOVAAnalysis() = default;
void SNOVAAnalysis::whoamI() {}
