#include "VolumeSmoothingAverage.h"

VolumeSmoothingAverage::VolumeSmoothingAverage(fVolumeGrid& objGrid) : m_objGrid(objGrid) {}

void VolumeSmoothingAverage::process(long nPasses)
{
    m_objGrid.average(nPasses);
}
