#include "CVoxelBlock.h"

#include <algorithm>

CVoxelBlock::CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels)
    : m_fVoxelSize(fVoxelSize), m_vecVoxels(std::move(vecVoxels))
{
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
    // Loaders number voxels one after the other. The difference wraps as the names do.
    const quint32 nGuess = nName - name(0);
    if (isConsecutive())
        return nGuess < static_cast<quint32>(m_vecVoxels.size()) ? std::vector<quint32>{nGuess} : std::vector<quint32>{};
    std::vector<quint32> vecFound;
    for (auto it = std::lower_bound(m_vecNames.cbegin(), m_vecNames.cend(), std::make_pair(nName, 0U));
         it != m_vecNames.cend() && it->first == nName; ++it)
        vecFound.push_back(it->second);
    return vecFound;
}

/// Looked up once; where it is not so, the names are sorted.
bool CVoxelBlock::isConsecutive() const
{
    if (m_eNames == ENames::Unknown)
    {
        const auto isGap = [](const C3DVolume::Voxel& voxel, const C3DVolume::Voxel& voxelNext)
        { return static_cast<quint32>(voxelNext.nID) != static_cast<quint32>(voxel.nID) + 1U; };
        const bool bGap = std::adjacent_find(m_vecVoxels.cbegin(), m_vecVoxels.cend(), isGap) != m_vecVoxels.cend();
        m_eNames = bGap ? ENames::Sorted : ENames::Consecutive;
        for (int i = 0; bGap && i < m_vecVoxels.size(); ++i)
            m_vecNames.emplace_back(name(i), static_cast<quint32>(i));
        std::sort(m_vecNames.begin(), m_vecNames.end());
    }
    return m_eNames == ENames::Consecutive;
}
