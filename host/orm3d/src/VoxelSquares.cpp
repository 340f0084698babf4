#include "VoxelSquares.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int nPixelBits = 8; ///< centres are rounded to this many binary places of a pixel, so that rounding errors decide nothing
constexpr int nMostBits = 56; ///< of a row that are looked at together, wherever in a byte they begin
constexpr std::size_t nAtOnce = 512;

/// Pixels of which each is covered or not.
class CPixelCover
{
public:
    CPixelCover(int nWidth, int nHeight)
        : m_nStride(static_cast<std::size_t>(nWidth) / 8 + sizeof(quint64)),
          m_vecRows(m_nStride * static_cast<std::size_t>(nHeight), quint8(0))
    {
    }

    /// Covers a square. Returns whether any of it was not covered before.
    bool add(int nLeft, int nBottom, int nSize)
    {
        bool bSeen = false;
        for (int nDone = 0; nDone < nSize; nDone += nMostBits)
        {
            const int nFirst = nLeft + nDone;
            const quint64 nMask = ((quint64(1) << std::min(nSize - nDone, nMostBits)) - 1) << (nFirst % 8);
            quint8* pRow = m_vecRows.data() + static_cast<std::size_t>(nBottom) * m_nStride + static_cast<std::size_t>(nFirst / 8);
            if (isCovered(pRow, nSize, nMask))
                continue;
            bSeen = true;
            for (int nRow = 0; nRow < nSize; ++nRow, pRow += m_nStride)
                qToLittleEndian(qFromLittleEndian<quint64>(pRow) | nMask, pRow);
        }
        return bSeen;
    }

private:
    bool isCovered(const quint8* pRow, int nRows, quint64 nMask) const
    {
        quint64 nCovered = nMask;
        for (int nRow = 0; nRow < nRows; ++nRow, pRow += m_nStride)
            nCovered &= qFromLittleEndian<quint64>(pRow);
        return nCovered == nMask;
    }

    std::size_t m_nStride; ///< bytes from one row to the next; more than the width needs
    std::vector<quint8> m_vecRows;
};

/// The pixels in which centres are, for a stretch of them at a time.
class CCentrePixels
{
public:
    CCentrePixels(const VoxelSquares::SCentres& sCentres, const VoxelSquares::SView& sView, int nSize)
        : m_sCentres(sCentres), m_nShift(nSize % 2 == 0 ? 1 << (nPixelBits - 1) : 0)
    {
        const double afScale[3] = {0.5 * sView.m_nWidth * (1 << nPixelBits), 0.5 * sView.m_nHeight * (1 << nPixelBits), 1.0};
        for (std::size_t nRow = 0; nRow < 3; ++nRow)
        {
            for (std::size_t i = 0; i < 4; ++i)
                m_afRows[nRow][i] = static_cast<float>(afScale[nRow] * sView.m_afClip[4 * i + nRow]);
        }
        for (std::size_t nRow = 0; nRow < 2; ++nRow)
        {
            m_afRows[nRow][3] = static_cast<float>(afScale[nRow] * (sView.m_afClip[12 + nRow] + 1.0) + 0.5);
            m_afMost[nRow] = static_cast<float>(2.0 * afScale[nRow] + 0.5);
        }
    }

    /// Goes to the centres from nFrom on to before nTo, no more than nAtOnce.
    void goTo(std::size_t nFrom, std::size_t nTo)
    {
        const float* pX = m_sCentres.m_apCoordinates[0] + nFrom;
        const float* pY = m_sCentres.m_apCoordinates[1] + nFrom;
        const float* pZ = m_sCentres.m_apCoordinates[2] + nFrom;
        const auto dot = [&](std::size_t nRow, std::size_t i)
        { return m_afRows[nRow][0] * pX[i] + m_afRows[nRow][1] * pY[i] + m_afRows[nRow][2] * pZ[i] + m_afRows[nRow][3]; };
        for (std::size_t i = 0; i < nTo - nFrom; ++i)
        {
            const float fX = dot(0, i);
            const float fY = dot(1, i);
            const float fDepth = dot(2, i);
            // Without short cuts, so that several are computed at once. What is no number is outside.
            const bool bInside = (fX >= 0.0f) & (fX <= m_afMost[0]) & (fY >= 0.0f) & (fY <= m_afMost[1]) & (std::abs(fDepth) <= 1.0f);
            m_anX[i] = bInside ? (static_cast<int>(bInside ? fX : 0.0f) + m_nShift) >> nPixelBits : -1;
            m_anY[i] = (static_cast<int>(bInside ? fY : 0.0f) + m_nShift) >> nPixelBits;
        }
    }
    /// Column of the centre of one of them, or of the pixel to the right of it where squares have an even size; -1 outside of the view.
    int x(std::size_t i) const { return m_anX[i]; }
    int y(std::size_t i) const { return m_anY[i]; }

private:
    VoxelSquares::SCentres m_sCentres;
    int m_nShift;
    float m_afRows[3][4] = {};
    float m_afMost[2] = {};
    std::array<int, nAtOnce> m_anX;
    std::array<int, nAtOnce> m_anY;
};
} // namespace

std::vector<VoxelSquares::SSquare> VoxelSquares::seen(const SCentres& sCentres, const SView& sView, int nSize)
{
    constexpr quint8 anWhite[4] = {255, 255, 255, 255};
    std::vector<SSquare> vecSquares;
    CPixelCover objCover(sView.m_nWidth + nSize, sView.m_nHeight + nSize); // squares about centres on the edge lie half outside
    CCentrePixels objPixels(sCentres, sView, nSize);
    const float fMiddle = nSize % 2 == 0 ? 0.0f : 0.5f;
    for (std::size_t nTo = sCentres.m_nCentres; nTo > 0;)
    {
        const std::size_t nFrom = nTo - std::min(nAtOnce, nTo);
        objPixels.goTo(nFrom, nTo);
        for (; nTo > nFrom; --nTo) // what covers comes before what is covered
        {
            const int nX = objPixels.x(nTo - 1 - nFrom);
            const int nY = objPixels.y(nTo - 1 - nFrom);
            if (nX < 0 || !objCover.add(nX, nY, nSize))
                continue;
            const quint8* pColor = sCentres.m_pColors ? sCentres.m_pColors + 4 * (nTo - 1) : anWhite;
            vecSquares.push_back(
                {static_cast<float>(nX) + fMiddle, static_cast<float>(nY) + fMiddle, {pColor[0], pColor[1], pColor[2], pColor[3]}});
        }
    }
    std::reverse(vecSquares.begin(), vecSquares.end());
    return vecSquares;
}
