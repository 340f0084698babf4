#pragma once

#include <QSharedData>

#include <cstddef>
#include <vector>

/// The marked voxels of a volume.
class CVolumeMarks : public QSharedData
{
public:
    /// None of nVoxels voxels is marked.
    explicit CVolumeMarks(std::size_t nVoxels) : m_vecMarked(nVoxels, false) {}

    bool isMarked(quint32 nVoxel) const { return m_vecMarked[nVoxel]; }
    void add(quint32 nVoxel, float fX, float fY, float fZ)
    {
        if (m_vecMarked[nVoxel])
            return;
        m_vecMarked[nVoxel] = true;
        m_vecVoxels.push_back(nVoxel);
        m_vecPositions.insert(m_vecPositions.end(), {fX, fY, fZ});
    }
    /// The marked voxels, in the order in which they were marked.
    const std::vector<quint32>& voxels() const { return m_vecVoxels; }
    /// x, y, z of each of them: a vertex array.
    const std::vector<float>& positions() const { return m_vecPositions; }

private:
    std::vector<bool> m_vecMarked;
    std::vector<quint32> m_vecVoxels;
    std::vector<float> m_vecPositions;
};
