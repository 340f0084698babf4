#pragma once

#include <QSharedData>

#include <array>
#include <cstddef>
#include <vector>

/// The marked voxels of a volume.
class CVolumeMarks : public QSharedData
{
public:
    /// None of nVoxels voxels is marked.
    explicit CVolumeMarks(std::size_t nVoxels) : m_vecMarked(nVoxels, false) {}

    bool isMarked(quint32 nVoxel) const { return m_vecMarked[nVoxel]; }
    /// @param pPosition x, y, z
    void add(quint32 nVoxel, const float* pPosition)
    {
        if (m_vecMarked[nVoxel])
            return;
        m_vecMarked[nVoxel] = true;
        m_vecVoxels.push_back(nVoxel);
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            m_avecCoordinates[nAxis].push_back(pPosition[nAxis]);
    }
    /// The marked voxels, in the order in which they were marked.
    const std::vector<quint32>& voxels() const { return m_vecVoxels; }
    /// Their centres along an axis (0 x, 1 y, 2 z).
    const std::vector<float>& coordinates(std::size_t nAxis) const { return m_avecCoordinates[nAxis]; }

private:
    std::vector<bool> m_vecMarked;
    std::vector<quint32> m_vecVoxels;
    std::array<std::vector<float>, 3> m_avecCoordinates;
};
