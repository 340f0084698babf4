#pragma once

#include <cstddef>
#include <vector>

/// Refinement of a cube of amounts as one would write it down: a grid with a margin, trilinear interpolation at the centres of the parts of
/// each cell, then means of three along each axis, as often as said. Beyond the grid there are zeros.
namespace PlainRefinement
{
struct SCube
{
    int m_nEdge = 0;
    std::vector<float> m_vecAmounts; ///< x fastest, then y, then z

    explicit SCube(int nEdge) : m_nEdge(nEdge), m_vecAmounts(static_cast<std::size_t>(nEdge) * nEdge * nEdge, 0.0f) {}
    float& at(int nX, int nY, int nZ) { return m_vecAmounts[(static_cast<std::size_t>(nZ) * m_nEdge + nY) * m_nEdge + nX]; }
    float at(int nX, int nY, int nZ) const { return m_vecAmounts[(static_cast<std::size_t>(nZ) * m_nEdge + nY) * m_nEdge + nX]; }
};

inline SCube padded(const SCube& sCube, int nMargin)
{
    SCube sPadded(sCube.m_nEdge + 2 * nMargin);
    for (int nZ = 0; nZ < sCube.m_nEdge; ++nZ)
    {
        for (int nY = 0; nY < sCube.m_nEdge; ++nY)
        {
            for (int nX = 0; nX < sCube.m_nEdge; ++nX)
                sPadded.at(nX + nMargin, nY + nMargin, nZ + nMargin) = sCube.at(nX, nY, nZ);
        }
    }
    return sPadded;
}

inline SCube subdivided(const SCube& sCube, int nParts)
{
    SCube sFine(sCube.m_nEdge * nParts);
    // The cells below and above the centre of each part, and the weight of the one above; cells beyond the end have no weight.
    std::vector<int> vecBelow;
    std::vector<int> vecAbove;
    std::vector<float> vecWeightBelow;
    std::vector<float> vecWeightAbove;
    for (int i = 0; i < sFine.m_nEdge; ++i)
    {
        const float fPlace = (static_cast<float>(i) + 0.5f) / static_cast<float>(nParts) + 0.5f; // one cell further, to stay above 0
        const int nAbove = static_cast<int>(fPlace);
        const float fPart = fPlace - static_cast<float>(nAbove);
        const bool bBelow = nAbove > 0;
        const bool bAbove = nAbove < sCube.m_nEdge;
        vecBelow.push_back(bBelow ? nAbove - 1 : 0);
        vecAbove.push_back(bAbove ? nAbove : 0);
        vecWeightBelow.push_back(bBelow ? 1.0f - fPart : 0.0f);
        vecWeightAbove.push_back(bAbove ? fPart : 0.0f);
    }
    const float fShare = 1.0f / static_cast<float>(nParts * nParts * nParts);
    for (int nZ = 0; nZ < sFine.m_nEdge; ++nZ)
    {
        for (int nY = 0; nY < sFine.m_nEdge; ++nY)
        {
            const float* pRow00 =
                &sCube.m_vecAmounts[(static_cast<std::size_t>(vecBelow[nZ]) * sCube.m_nEdge + vecBelow[nY]) * sCube.m_nEdge];
            const float* pRow01 =
                &sCube.m_vecAmounts[(static_cast<std::size_t>(vecBelow[nZ]) * sCube.m_nEdge + vecAbove[nY]) * sCube.m_nEdge];
            const float* pRow10 =
                &sCube.m_vecAmounts[(static_cast<std::size_t>(vecAbove[nZ]) * sCube.m_nEdge + vecBelow[nY]) * sCube.m_nEdge];
            const float* pRow11 =
                &sCube.m_vecAmounts[(static_cast<std::size_t>(vecAbove[nZ]) * sCube.m_nEdge + vecAbove[nY]) * sCube.m_nEdge];
            const float f00 = fShare * vecWeightBelow[nZ] * vecWeightBelow[nY];
            const float f01 = fShare * vecWeightBelow[nZ] * vecWeightAbove[nY];
            const float f10 = fShare * vecWeightAbove[nZ] * vecWeightBelow[nY];
            const float f11 = fShare * vecWeightAbove[nZ] * vecWeightAbove[nY];
            float* pOut = &sFine.at(0, nY, nZ);
            for (int nX = 0; nX < sFine.m_nEdge; ++nX)
            {
                const int i = vecBelow[nX];
                const int j = vecAbove[nX];
                pOut[nX] = vecWeightBelow[nX] * (f00 * pRow00[i] + f01 * pRow01[i] + f10 * pRow10[i] + f11 * pRow11[i]) +
                           vecWeightAbove[nX] * (f00 * pRow00[j] + f01 * pRow01[j] + f10 * pRow10[j] + f11 * pRow11[j]);
            }
        }
    }
    return sFine;
}

/// Replaces each cell by the mean of itself and its two neighbours nStep cells away, in lines of nLine cells.
inline void averageAlong(std::vector<float>& vecAmounts, std::size_t nStep, std::size_t nLine)
{
    const std::vector<float> vecBefore = vecAmounts;
    const std::size_t nBlock = nStep * nLine;
    for (std::size_t nFirst = 0; nFirst < vecAmounts.size(); nFirst += nBlock)
    {
        for (std::size_t i = 0; i < nBlock; ++i)
        {
            const float fLeft = i >= nStep ? vecBefore[nFirst + i - nStep] : 0.0f;
            const float fRight = i + nStep < nBlock ? vecBefore[nFirst + i + nStep] : 0.0f;
            vecAmounts[nFirst + i] = (fLeft + vecBefore[nFirst + i] + fRight) / 3.0f;
        }
    }
}

inline SCube refined(const SCube& sCube, int nMargin, int nParts, int nPasses)
{
    SCube sFine = subdivided(padded(sCube, nMargin), nParts);
    const auto nEdge = static_cast<std::size_t>(sFine.m_nEdge);
    for (int i = 0; i < nPasses; ++i)
    {
        averageAlong(sFine.m_vecAmounts, 1, nEdge);
        averageAlong(sFine.m_vecAmounts, nEdge, nEdge);
        averageAlong(sFine.m_vecAmounts, nEdge * nEdge, nEdge);
    }
    return sFine;
}
} // namespace PlainRefinement
