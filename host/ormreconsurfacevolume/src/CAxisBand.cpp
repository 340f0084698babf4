#include "CAxisBand.h"

#include <algorithm>
#include <cmath>
#include <limits>

CAxisBand::CAxisBand(long nSource)
    : m_nStride(1),
      m_vecFirst(static_cast<std::size_t>(nSource)),
      m_vecCount(static_cast<std::size_t>(nSource), 1),
      m_vecWeights(static_cast<std::size_t>(nSource), 1.0)
{
    for (long i = 0; i < nSource; ++i)
        m_vecFirst[static_cast<std::size_t>(i)] = i;
}

/// Makes each new cell the weighted sum of some present ones.
template <typename FnTerms>
void CAxisBand::combine(long nCells, FnTerms fnTerms)
{
    const auto isDependent = [this](const std::pair<long, double>& term)
    { return term.first >= 0 && term.first < size() && term.second != 0.0 && count(term.first) > 0; };

    CAxisBand objResult;
    objResult.m_nStride = 0;
    objResult.m_vecFirst.assign(static_cast<std::size_t>(nCells), 0);
    objResult.m_vecCount.assign(static_cast<std::size_t>(nCells), 0);
    for (long i = 0; i < nCells; ++i)
    {
        long nBegin = std::numeric_limits<long>::max();
        long nEnd = 0;
        for (const auto& term : fnTerms(i))
        {
            if (!isDependent(term))
                continue;
            nBegin = std::min(nBegin, first(term.first));
            nEnd = std::max(nEnd, first(term.first) + count(term.first));
        }
        if (nEnd == 0)
            continue;
        objResult.m_vecFirst[static_cast<std::size_t>(i)] = nBegin;
        objResult.m_vecCount[static_cast<std::size_t>(i)] = nEnd - nBegin;
        objResult.m_nStride = std::max(objResult.m_nStride, nEnd - nBegin);
    }
    objResult.m_vecWeights.assign(static_cast<std::size_t>(nCells * objResult.m_nStride), 0.0);
    for (long i = 0; i < nCells; ++i)
    {
        double* pWeights = objResult.m_vecWeights.data() + i * objResult.m_nStride;
        for (const auto& term : fnTerms(i))
        {
            if (!isDependent(term))
                continue;
            double* pOut = pWeights + (first(term.first) - objResult.first(i));
            const double* pTerm = weights(term.first);
            for (long t = 0; t < count(term.first); ++t)
                pOut[t] += term.second * pTerm[t];
        }
    }
    *this = std::move(objResult);
}

void CAxisBand::widen(long nMargin)
{
    combine(size() + 2 * nMargin, [=](long i) { return Terms{{{i - nMargin, 1.0}, {-1, 0.0}, {-1, 0.0}}}; });
}

void CAxisBand::subdivide(long nParts)
{
    combine(size() * nParts,
            [=](long i)
            {
                const double fPlace = (static_cast<double>(i) + 0.5) / static_cast<double>(nParts) - 0.5;
                const double fBelow = std::floor(fPlace);
                const auto nBelow = static_cast<long>(fBelow);
                return Terms{{{nBelow, 1.0 - (fPlace - fBelow)}, {nBelow + 1, fPlace - fBelow}, {-1, 0.0}}};
            });
}

void CAxisBand::average()
{
    combine(size(), [](long i) { return Terms{{{i - 1, 1.0 / 3.0}, {i, 1.0 / 3.0}, {i + 1, 1.0 / 3.0}}}; });
}
