#include "CClipVolume.h"

#include <cmath>

namespace
{
constexpr double fClipSlack = 1e-5;     ///< of the clip volume
constexpr double fRoundingSlack = 2e-6; ///< for the single precision of both computations, relative to their largest term
} // namespace

CClipVolume::CClipVolume(const std::array<double, 16>& afClip, const std::array<float, 3>& afExtent)
{
    double afLargest[4];
    for (std::size_t nRow = 0; nRow < 4; ++nRow)
    {
        afLargest[nRow] = std::abs(afClip[12 + nRow]);
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            afLargest[nRow] += std::abs(afClip[4 * nAxis + nRow]) * static_cast<double>(afExtent[nAxis]);
        for (std::size_t i = 0; i < 4; ++i)
            m_afRows[nRow][i] = static_cast<float>(afClip[4 * i + nRow]);
    }
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
        m_afSlack[nAxis] = static_cast<float>(fClipSlack + fRoundingSlack * (afLargest[3] + afLargest[nAxis]));
}

std::size_t CClipVolume::inside(const float* pPositions, std::size_t nFrom, std::size_t nTo, quint32* pInside) const
{
    // Apart, because several of a kind are computed with at once.
    std::array<std::array<float, nAtOnce>, 3> afPlaces;
    const std::size_t nPoints = nTo - nFrom;
    const float* pPoint = pPositions + 3 * nFrom;
    for (std::size_t i = 0; i < nPoints; ++i, pPoint += 3)
    {
        afPlaces[0][i] = pPoint[0];
        afPlaces[1][i] = pPoint[1];
        afPlaces[2][i] = pPoint[2];
    }
    const auto dot = [&](std::size_t nRow, std::size_t i)
    {
        return m_afRows[nRow][0] * afPlaces[0][i] + m_afRows[nRow][1] * afPlaces[1][i] + m_afRows[nRow][2] * afPlaces[2][i] +
               m_afRows[nRow][3];
    };
    std::array<quint32, nAtOnce> anFlags;
    for (std::size_t i = 0; i < nPoints; ++i)
    {
        const float fEdge = dot(3, i);
        // Without short cuts, for the same reason. What is no number is outside.
        anFlags[i] = static_cast<quint32>(std::abs(dot(0, i)) <= fEdge + m_afSlack[0]) &
                     static_cast<quint32>(std::abs(dot(1, i)) <= fEdge + m_afSlack[1]) &
                     static_cast<quint32>(std::abs(dot(2, i)) <= fEdge + m_afSlack[2]);
    }
    std::size_t nInside = 0;
    for (std::size_t i = 0; i < nPoints; ++i)
    {
        pInside[nInside] = static_cast<quint32>(nFrom + i);
        nInside += anFlags[i];
    }
    return nInside;
}
