#include "bVolumeGrid.h"

bVolumeGrid::bVolumeGrid() = default;

bVolumeGrid::~bVolumeGrid() = default;

qint64 bVolumeGrid::cellCount() const
{
    return static_cast<qint64>(m_anCells[0]) * m_anCells[1] * m_anCells[2];
}

Coord3d bVolumeGrid::cellCentre(long nX, long nY, long nZ) const
{
    return {m_afOrigin[0] + static_cast<double>(nX) * m_fCellSize, m_afOrigin[1] + static_cast<double>(nY) * m_fCellSize,
            m_afOrigin[2] + static_cast<double>(nZ) * m_fCellSize};
}

bool bVolumeGrid::isFilled(long nX, long nY, long nZ) const
{
    const long anCell[3] = {nX, nY, nZ};
    std::size_t nSource = 0;
    for (std::size_t nAxis = 3; nAxis-- > 0;)
    {
        const long nFromSource = anCell[nAxis] - m_nMargin;
        if (nFromSource < 0 || nFromSource / m_nParts >= m_anSourceCells[nAxis])
            return false;
        nSource = nSource * static_cast<std::size_t>(m_anSourceCells[nAxis]) + static_cast<std::size_t>(nFromSource / m_nParts);
    }
    return m_vecFilled[nSource];
}

void bVolumeGrid::growBox(long nMargin)
{
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        m_anCells[nAxis] += 2 * nMargin;
        m_afOrigin[nAxis] -= static_cast<double>(nMargin) * m_fCellSize;
    }
    m_nMargin += nMargin;
}

void bVolumeGrid::splitCells(long nParts)
{
    const double fPart = m_fCellSize / static_cast<double>(nParts);
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        m_anCells[nAxis] *= nParts;
        m_afOrigin[nAxis] += (fPart - m_fCellSize) / 2.0;
    }
    m_fCellSize = fPart;
    m_nMargin *= nParts;
    m_nParts *= nParts;
}
