#include "CVoxelBlock.h"

#include <algorithm>

CVoxelBlock::CVoxelBlock() : m_pCoordinates(std::make_shared<const SVoxelArrays::Coordinates>()) {}

CVoxelBlock::CVoxelBlock(float fVoxelSize, QVector<C3DVolume::Voxel> vecVoxels)
    : m_fVoxelSize(fVoxelSize), m_vecVoxels(std::move(vecVoxels))
{
    const auto nVoxels = static_cast<std::size_t>(m_vecVoxels.size());
    const C3DVolume::Voxel* pVoxels = m_vecVoxels.constData();
    SVoxelArrays::Coordinates avecCoordinates;
    for (OrmArray<float>& vecCoordinates : avecCoordinates)
        vecCoordinates.resize(nVoxels);
    m_vecValues.resize(nVoxels);
    bool bConsecutive = true;
    for (std::size_t i = 0; i < nVoxels; ++i)
    {
        avecCoordinates[0][i] = pVoxels[i].x;
        avecCoordinates[1][i] = pVoxels[i].y;
        avecCoordinates[2][i] = pVoxels[i].z;
        m_vecValues[i] = pVoxels[i].fValue;
        bConsecutive = bConsecutive && (i == 0 || (pVoxels[i - 1].nID < pVoxels[i].nID && pVoxels[i].nID - 1 == pVoxels[i - 1].nID));
    }
    m_pCoordinates = std::make_shared<const SVoxelArrays::Coordinates>(std::move(avecCoordinates));
    if (nVoxels > 0)
        m_nFirstID = pVoxels[0].nID;
    if (!bConsecutive)
        std::transform(pVoxels, pVoxels + nVoxels, std::back_inserter(m_vecIDs), [](const C3DVolume::Voxel& voxel) { return voxel.nID; });
}

CVoxelBlock::CVoxelBlock(float fVoxelSize, PCoordinates pCoordinates, OrmArray<float> vecValues, long nFirstID)
    : m_fVoxelSize(fVoxelSize), m_pCoordinates(std::move(pCoordinates)), m_vecValues(std::move(vecValues)), m_nFirstID(nFirstID)
{
}

const QVector<C3DVolume::Voxel>& CVoxelBlock::voxels() const
{
    if (m_vecVoxels.isEmpty() && size() > 0)
    {
        m_vecVoxels.reserve(static_cast<int>(size()));
        for (std::size_t i = 0; i < size(); ++i)
            m_vecVoxels.append({coordinates(0)[i], coordinates(1)[i], coordinates(2)[i], id(i), m_vecValues[i]});
    }
    return m_vecVoxels;
}

const CVolumeGeometry& CVoxelBlock::geometry() const
{
    if (!m_pGeometry)
        m_pGeometry = std::make_unique<const CVolumeGeometry>(*this, m_fVoxelSize);
    return *m_pGeometry;
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
