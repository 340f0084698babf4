#include "CVoxelBlock.h"

#include <algorithm>

CVoxelBlock::CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels)
    : m_fVoxelSize(fVoxelSize), m_vecVoxels(std::move(vecVoxels))
{
    const auto isGap = [](const C3DVolume::Voxel& voxel, const C3DVolume::Voxel& voxelNext)
    { return static_cast<quint32>(voxelNext.nID) != static_cast<quint32>(voxel.nID) + 1U; };
    m_bConsecutive = std::adjacent_find(m_vecVoxels.cbegin(), m_vecVoxels.cend(), isGap) == m_vecVoxels.cend();
}

const CVolumeGeometry& CVoxelBlock::geometry() const
{
    if (!m_pGeometry)
        m_pGeometry = std::make_unique<const CVolumeGeometry>(m_vecVoxels, m_fVoxelSize);
    return *m_pGeometry;
}

std::vector<quint32> CVoxelBlock::voxelsNamed(quint32 nName) const
{
    if (m_vecVoxels.isEmpty())
        return {};
    if (m_bConsecutive) // as loaders number them; the difference wraps as the names do
    {
        const quint32 nVoxel = nName - name(0);
        return nVoxel < static_cast<quint32>(m_vecVoxels.size()) ? std::vector<quint32>{nVoxel} : std::vector<quint32>{};
    }
    if (m_vecNames.empty())
    {
        m_vecNames.reserve(static_cast<std::size_t>(m_vecVoxels.size()));
        for (int i = 0; i < m_vecVoxels.size(); ++i)
            m_vecNames.emplace_back(name(i), static_cast<quint32>(i));
        std::sort(m_vecNames.begin(), m_vecNames.end());
    }
    std::vector<quint32> vecFound;
    for (auto it = std::lower_bound(m_vecNames.cbegin(), m_vecNames.cend(), std::make_pair(nName, 0U));
         it != m_vecNames.cend() && it->first == nName; ++it)
        vecFound.push_back(it->second);
    return vecFound;
}
