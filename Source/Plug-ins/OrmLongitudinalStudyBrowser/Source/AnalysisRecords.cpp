#include "AnalysisRecords.h"

#include <cstdlib>
#include <cstring>

void sAnalysisBase::addPhotonDensity(const QString& strName, const std::vector<float>& vecRow)
{
    const size_t nBytes = vecRow.size() * sizeof(float);
    if (nBytes == 0)
    {
        return;
    }
    std::shared_ptr<float> pBlock(static_cast<float*>(std::malloc(nBytes)), [](float* p) { std::free(p); });
    if (!pBlock)
    {
        return;
    }
    std::memcpy(pBlock.get(), vecRow.data(), nBytes);
    mapPhotonDensity.insert(strName, pBlock.get());
    lstDensityBlocks.append(pBlock);
}
