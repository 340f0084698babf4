#include "ReconstructionBase.h"

ReconstructionBase::ReconstructionBase(QObject* pParent) : QObject(pParent) {}

ReconstructionBase::~ReconstructionBase() = default;
