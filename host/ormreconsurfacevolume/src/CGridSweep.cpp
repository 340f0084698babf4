#include "CGridSweep.h"

#include <algorithm>
#include <cmath>

namespace
{
/// pOut[i] becomes the sum of the lines of nLength numbers that fnLine(t) gives, weighted by pWeights[t]; a null line counts as zeros.
template <typename FnLine>
void combineLines(float* pOut, long nLength, const double* pWeights, long nLines, FnLine fnLine)
{
    std::fill(pOut, pOut + nLength, 0.0f);
    for (long t = 0; t < nLines; ++t)
    {
        const auto fWeight = static_cast<float>(pWeights[t]);
        const float* pLine = fnLine(t);
        for (long i = 0; pLine && i < nLength; ++i)
            pOut[i] += fWeight * pLine[i];
    }
}
} // namespace

CGridSweep::CGridSweep(const fVolumeGrid& objGrid)
    : m_objGrid(objGrid),
      m_nWidth(objGrid.cells(0)),
      m_nHeight(objGrid.cells(1)),
      m_nSourceWidth(objGrid.sourceCells(0)),
      m_nSourceHeight(objGrid.sourceCells(1)),
      m_vecRow(static_cast<std::size_t>(m_nWidth)),
      m_vecRows(static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nSourceHeight)),
      m_vecSpread(static_cast<std::size_t>(std::max(1L, objGrid.band(2).width()))),
      m_vecSpreadZ(m_vecSpread.size(), -1)
{
    const long nPlane = m_nSourceWidth * m_nSourceHeight;
    const float* pPlane = objGrid.source().data();
    float fHighest = 0.0f;
    for (long nZ = 0; nZ < objGrid.sourceCells(2); ++nZ, pPlane += nPlane)
    {
        const float fOfPlane = nPlane > 0 ? *std::max_element(pPlane, pPlane + nPlane) : 0.0f;
        m_vecEmpty.push_back(!(fOfPlane > 0.0f));
        fHighest = std::max(fHighest, fOfPlane);
    }
    int nExponent = 0;
    std::frexp(static_cast<double>(fHighest), &nExponent);
    m_fSourceUnit = std::ldexp(1.0, nExponent); // a power of two: dividing by it changes no digit
}

const float* CGridSweep::row(long nY, long nZ)
{
    const CAxisBand& objBand = m_objGrid.band(2);
    combineLines(m_vecRow.data(), m_nWidth, objBand.weights(nZ), objBand.count(nZ),
                 [&](long t) -> const float*
                 {
                     const long nSourceZ = objBand.first(nZ) + t;
                     return m_vecEmpty[static_cast<std::size_t>(nSourceZ)] ? nullptr : spreadPlane(nSourceZ) + nY * m_nWidth;
                 });
    return m_vecRow.data();
}

const float* CGridSweep::spreadPlane(long nSourceZ)
{
    const std::size_t nSlot = static_cast<std::size_t>(nSourceZ) % m_vecSpread.size();
    std::vector<float>& vecSpread = m_vecSpread[nSlot];
    if (m_vecSpreadZ[nSlot] == nSourceZ)
        return vecSpread.data();
    m_vecSpreadZ[nSlot] = nSourceZ;

    const float* pSource = m_objGrid.source().data() + nSourceZ * m_nSourceHeight * m_nSourceWidth;
    for (long nY = 0; nY < m_nSourceHeight; ++nY)
        spreadRow(pSource + nY * m_nSourceWidth, m_vecRows.data() + nY * m_nWidth);
    const CAxisBand& objBand = m_objGrid.band(1);
    vecSpread.resize(static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nHeight));
    for (long nY = 0; nY < m_nHeight; ++nY)
        combineLines(vecSpread.data() + nY * m_nWidth, m_nWidth, objBand.weights(nY), objBand.count(nY),
                     [&](long t) { return m_vecRows.data() + (objBand.first(nY) + t) * m_nWidth; });
    return vecSpread.data();
}

/// Spreads a row of source cells along x.
void CGridSweep::spreadRow(const float* pSource, float* pOut) const
{
    const CAxisBand& objBand = m_objGrid.band(0);
    for (long nX = 0; nX < m_nWidth; ++nX)
    {
        const float* pFirst = pSource + objBand.first(nX);
        const double* pWeights = objBand.weights(nX);
        double fSum = 0.0;
        for (long t = 0; t < objBand.count(nX); ++t)
            fSum += pWeights[t] * static_cast<double>(pFirst[t]);
        pOut[nX] = static_cast<float>(fSum / m_fSourceUnit);
    }
}
