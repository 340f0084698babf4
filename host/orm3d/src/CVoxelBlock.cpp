#include "CVoxelBlock.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

CVoxelBlock::CVoxelBlock() : m_pPositions(std::make_shared<const OrmArray<float>>()), m_pValues(std::make_shared<const OrmArray<float>>())
{
}

CVoxelBlock::CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels)
    : m_fVoxelSize(fVoxelSize), m_vecVoxels(std::move(vecVoxels))
{
    const auto nVoxels = static_cast<std::size_t>(m_vecVoxels.size());
    const C3DVolume::Voxel* pVoxels = m_vecVoxels.constData();
    OrmArray<float> vecPositions;
    OrmArray<float> vecValues;
    vecPositions.reserve(3 * nVoxels);
    vecValues.reserve(nVoxels);
    bool bConsecutive = true;
    for (std::size_t i = 0; i < nVoxels; ++i)
    {
        vecPositions.insert(vecPositions.end(), {pVoxels[i].x, pVoxels[i].y, pVoxels[i].z});
        vecValues.push_back(pVoxels[i].fValue);
        bConsecutive = bConsecutive && (i == 0 || (pVoxels[i - 1].nID < pVoxels[i].nID && pVoxels[i].nID - 1 == pVoxels[i - 1].nID));
    }
    m_pPositions = std::make_shared<const OrmArray<float>>(std::move(vecPositions));
    m_pValues = std::make_shared<const OrmArray<float>>(std::move(vecValues));
    if (nVoxels > 0)
        m_nFirstID = pVoxels[0].nID;
    if (!bConsecutive)
        std::transform(pVoxels, pVoxels + nVoxels, std::back_inserter(m_vecIDs), [](const C3DVolume::Voxel& voxel) { return voxel.nID; });
}

CVoxelBlock::CVoxelBlock(float fVoxelSize, PArray pPositions, PArray pValues, long nFirstID)
    : m_fVoxelSize(fVoxelSize), m_pPositions(std::move(pPositions)), m_pValues(std::move(pValues)), m_nFirstID(nFirstID)
{
}

const QVector<C3DVolume::Voxel>& CVoxelBlock::voxels() const
{
    if (m_vecVoxels.isEmpty() && size() > 0)
    {
        m_vecVoxels.reserve(static_cast<int>(size()));
        for (std::size_t i = 0; i < size(); ++i)
            m_vecVoxels.append({position(i)[0], position(i)[1], position(i)[2], id(i), values()[i]});
    }
    return m_vecVoxels;
}

float CVoxelBlock::highest() const
{
    if (!m_fHighest)
    {
        constexpr float fLowest = std::numeric_limits<float>::lowest();
        float fHighest = fLowest;
        for (const float fValue : values())
            fHighest = fValue > fHighest && std::isfinite(fValue) ? fValue : fHighest;
        m_fHighest = fHighest > fLowest ? fHighest : 0.0f;
    }
    return *m_fHighest;
}

const std::array<float, 3>& CVoxelBlock::extent() const
{
    if (!m_afExtent)
    {
        m_afExtent = {0.0f, 0.0f, 0.0f};
        for (std::size_t i = 0; i < size(); ++i)
        {
            for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            {
                const float fDistance = std::abs(position(i)[nAxis]);
                (*m_afExtent)[nAxis] = std::max((*m_afExtent)[nAxis], std::isfinite(fDistance) ? fDistance : 0.0f);
            }
        }
    }
    return *m_afExtent;
}

const CGridOrder& CVoxelBlock::gridOrder() const
{
    if (!m_pGridOrder)
        m_pGridOrder = std::make_unique<const CGridOrder>(*this, m_fVoxelSize);
    return *m_pGridOrder;
}

const CValueOrder& CVoxelBlock::valueOrder() const
{
    if (!m_pValueOrder)
        m_pValueOrder = std::make_unique<const CValueOrder>(*this);
    return *m_pValueOrder;
}

std::vector<quint32> CVoxelBlock::voxelsNamed(quint32 nName) const
{
    if (m_vecIDs.empty())
    {
        const quint32 nVoxel = nName - static_cast<quint32>(m_nFirstID); // wraps as the names do
        return nVoxel < size() ? std::vector<quint32>{nVoxel} : std::vector<quint32>{};
    }
    if (m_vecNames.empty())
    {
        for (std::size_t i = 0; i < size(); ++i)
            m_vecNames.emplace_back(name(i), static_cast<quint32>(i));
        std::sort(m_vecNames.begin(), m_vecNames.end());
    }
    std::vector<quint32> vecFound;
    for (auto it = std::lower_bound(m_vecNames.cbegin(), m_vecNames.cend(), std::make_pair(nName, 0U));
         it != m_vecNames.cend() && it->first == nName; ++it)
        vecFound.push_back(it->second);
    return vecFound;
}
