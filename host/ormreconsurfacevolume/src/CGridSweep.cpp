#include "CGridSweep.h"

#include <algorithm>

CGridSweep::CGridSweep(const fVolumeGrid& objGrid)
    : m_objGrid(objGrid),
      m_nWidth(objGrid.cells(0)),
      m_nHeight(objGrid.cells(1)),
      m_nSourceWidth(objGrid.sourceCells(0)),
      m_nSourceHeight(objGrid.sourceCells(1)),
      m_vecSpread(static_cast<std::size_t>(std::max(1L, objGrid.band(2).width()))),
      m_vecSpreadZ(m_vecSpread.size(), -1)
{
    const std::size_t nPlane = static_cast<std::size_t>(m_nSourceWidth) * static_cast<std::size_t>(m_nSourceHeight);
    auto itPlane = objGrid.source().cbegin();
    for (long nZ = 0; nZ < objGrid.sourceCells(2); ++nZ, itPlane += static_cast<std::ptrdiff_t>(nPlane))
        m_vecEmpty.push_back(std::all_of(itPlane, itPlane + static_cast<std::ptrdiff_t>(nPlane), [](float f) { return f == 0.0f; }));
    m_vecPlane.resize(static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nHeight));
    m_vecRows.resize(static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nSourceHeight));
}

bool CGridSweep::isEmpty(long nZ) const
{
    const CAxisBand& objBand = m_objGrid.band(2);
    const auto itFirst = m_vecEmpty.cbegin() + objBand.first(nZ);
    return std::all_of(itFirst, itFirst + objBand.count(nZ), [](bool bEmpty) { return bEmpty; });
}

const double* CGridSweep::plane(long nZ)
{
    const CAxisBand& objBand = m_objGrid.band(2);
    std::fill(m_vecPlane.begin(), m_vecPlane.end(), 0.0);
    for (long t = 0; t < objBand.count(nZ); ++t)
    {
        const long nSourceZ = objBand.first(nZ) + t;
        if (m_vecEmpty[static_cast<std::size_t>(nSourceZ)])
            continue;
        const double fWeight = objBand.weights(nZ)[t] * m_objGrid.factor();
        const double* pSpread = spreadPlane(nSourceZ);
        double* pOut = m_vecPlane.data();
        for (std::size_t i = 0; i < m_vecPlane.size(); ++i)
            pOut[i] += fWeight * pSpread[i];
    }
    return m_vecPlane.data();
}

const double* CGridSweep::spreadPlane(long nSourceZ)
{
    const std::size_t nSlot = static_cast<std::size_t>(nSourceZ) % m_vecSpread.size();
    std::vector<double>& vecSpread = m_vecSpread[nSlot];
    if (m_vecSpreadZ[nSlot] == nSourceZ)
        return vecSpread.data();
    m_vecSpreadZ[nSlot] = nSourceZ;

    const CAxisBand& objAlongX = m_objGrid.band(0);
    const float* pSource = m_objGrid.source().data() + nSourceZ * m_nSourceHeight * m_nSourceWidth;
    double* pRow = m_vecRows.data();
    for (long nY = 0; nY < m_nSourceHeight; ++nY, pSource += m_nSourceWidth)
    {
        for (long nX = 0; nX < m_nWidth; ++nX)
        {
            const float* pFirst = pSource + objAlongX.first(nX);
            const double* pWeights = objAlongX.weights(nX);
            double fSum = 0.0;
            for (long t = 0; t < objAlongX.count(nX); ++t)
                fSum += pWeights[t] * static_cast<double>(pFirst[t]);
            *pRow++ = fSum;
        }
    }

    const CAxisBand& objAlongY = m_objGrid.band(1);
    vecSpread.assign(m_vecPlane.size(), 0.0);
    for (long nY = 0; nY < m_nHeight; ++nY)
    {
        double* pOut = vecSpread.data() + nY * m_nWidth;
        for (long t = 0; t < objAlongY.count(nY); ++t)
        {
            const double fWeight = objAlongY.weights(nY)[t];
            const double* pTerm = m_vecRows.data() + (objAlongY.first(nY) + t) * m_nWidth;
            for (long nX = 0; nX < m_nWidth; ++nX)
                pOut[nX] += fWeight * pTerm[nX];
        }
    }
    return vecSpread.data();
}
