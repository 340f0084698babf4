#include "FiniteSum.h"

#include <array>
#include <cmath>
#include <numeric>

double FiniteSum::of(const float* pValues, std::size_t nValues)
{
    // Several sums side by side: one alone waits for each of its additions to end.
    std::array<double, 16> afSums{};
    std::size_t nValue = 0;
    for (; nValue + afSums.size() <= nValues; nValue += afSums.size())
    {
        for (std::size_t i = 0; i < afSums.size(); ++i)
            afSums[i] += static_cast<double>(pValues[nValue + i]);
    }
    const auto add = [](double fSum, float fValue) { return fSum + static_cast<double>(fValue); };
    const double fSides = std::accumulate(afSums.begin(), afSums.end(), 0.0);
    const double fSum = std::accumulate(pValues + nValue, pValues + nValues, fSides, add);
    if (std::isfinite(fSum))
        return fSum;
    // No number of finite ones gets there: some are to be left out.
    return std::accumulate(pValues, pValues + nValues, 0.0,
                           [](double f, float fValue) { return std::isfinite(fValue) ? f + static_cast<double>(fValue) : f; });
}
