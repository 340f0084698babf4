#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

/// Refinement as one would write it down: a whole grid per step. Slow, and meant to be obviously right.
namespace PlainRefinement
{
struct SGrid
{
    std::array<long, 3> m_anCells = {0, 0, 0};
    std::vector<double> m_vecAmounts; ///< x fastest, then y, then z

    double at(long nX, long nY, long nZ) const
    {
        if (nX < 0 || nY < 0 || nZ < 0 || nX >= m_anCells[0] || nY >= m_anCells[1] || nZ >= m_anCells[2])
            return 0.0;
        return m_vecAmounts[static_cast<std::size_t>((nZ * m_anCells[1] + nY) * m_anCells[0] + nX)];
    }
};

template <typename FnAmount>
SGrid make(std::array<long, 3> anCells, FnAmount fnAmount)
{
    SGrid sGrid;
    sGrid.m_anCells = anCells;
    sGrid.m_vecAmounts.reserve(static_cast<std::size_t>(anCells[0] * anCells[1] * anCells[2]));
    for (long nZ = 0; nZ < anCells[2]; ++nZ)
    {
        for (long nY = 0; nY < anCells[1]; ++nY)
        {
            for (long nX = 0; nX < anCells[0]; ++nX)
                sGrid.m_vecAmounts.push_back(fnAmount(nX, nY, nZ));
        }
    }
    return sGrid;
}

inline SGrid padded(const SGrid& sGrid, long nMargin)
{
    return make({sGrid.m_anCells[0] + 2 * nMargin, sGrid.m_anCells[1] + 2 * nMargin, sGrid.m_anCells[2] + 2 * nMargin},
                [&](long nX, long nY, long nZ) { return sGrid.at(nX - nMargin, nY - nMargin, nZ - nMargin); });
}

/// Densities, trilinear between cell centres, at the centres of n x n x n parts of each cell.
inline SGrid subdivided(const SGrid& sGrid, long n)
{
    return make({sGrid.m_anCells[0] * n, sGrid.m_anCells[1] * n, sGrid.m_anCells[2] * n},
                [&](long nX, long nY, long nZ)
                {
                    const std::array<long, 3> anPart = {nX, nY, nZ};
                    std::array<long, 3> anBelow{};
                    std::array<double, 3> afAbove{};
                    for (std::size_t i = 0; i < 3; ++i)
                    {
                        const double fPlace = (static_cast<double>(anPart[i]) + 0.5) / static_cast<double>(n) - 0.5;
                        anBelow[i] = static_cast<long>(std::floor(fPlace));
                        afAbove[i] = fPlace - std::floor(fPlace);
                    }
                    double fSum = 0.0;
                    for (int i = 0; i < 8; ++i)
                    {
                        const long nI = i & 1;
                        const long nJ = (i >> 1) & 1;
                        const long nK = (i >> 2) & 1;
                        fSum += (nI != 0 ? afAbove[0] : 1.0 - afAbove[0]) * (nJ != 0 ? afAbove[1] : 1.0 - afAbove[1]) *
                                (nK != 0 ? afAbove[2] : 1.0 - afAbove[2]) * sGrid.at(anBelow[0] + nI, anBelow[1] + nJ, anBelow[2] + nK);
                    }
                    return fSum / static_cast<double>(n * n * n);
                });
}

/// The mean of the 3 x 3 x 3 neighbourhood; outside there are zeros.
inline SGrid averaged(const SGrid& sGrid)
{
    return make(sGrid.m_anCells,
                [&](long nX, long nY, long nZ)
                {
                    double fSum = 0.0;
                    for (long k = -1; k <= 1; ++k)
                    {
                        for (long j = -1; j <= 1; ++j)
                        {
                            for (long i = -1; i <= 1; ++i)
                                fSum += sGrid.at(nX + i, nY + j, nZ + k);
                        }
                    }
                    return fSum / 27.0;
                });
}

inline SGrid refined(const SGrid& sGrid, long nMargin, long nParts, int nPasses)
{
    SGrid sResult = subdivided(padded(sGrid, nMargin), nParts);
    for (int i = 0; i < nPasses; ++i)
        sResult = averaged(sResult);
    return sResult;
}
} // namespace PlainRefinement
