#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <functional>
#include <vector>

/// Measuring a work beside a plain reference in the same run.
namespace BenchRatio
{
/// Processor time of this process: on a machine that others share, the clock on the wall measures them too.
inline double secondsOf(const std::function<void()>& fnWork)
{
    const auto fnNow = []
    {
        timespec objTime = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &objTime);
        return static_cast<double>(objTime.tv_sec) + static_cast<double>(objTime.tv_nsec) * 1e-9;
    };
    const double fStart = fnNow();
    fnWork();
    return fnNow() - fStart;
}

/// Runs the works in turn, reports the time of the first, and returns the median of each in seconds. Before that all are run
/// @p nWarmUps times unmeasured.
inline std::vector<double> medians(benchmark::State& state, const std::vector<std::function<void()>>& vecWorks, int nWarmUps = 0)
{
    for (int i = 0; i < nWarmUps; ++i)
    {
        for (const auto& fnWork : vecWorks)
        {
            fnWork();
        }
    }
    std::vector<std::vector<double>> vecTimes(vecWorks.size());
    for (auto objUnused : state)
    {
        static_cast<void>(objUnused);
        for (std::size_t i = 0; i < vecWorks.size(); ++i)
        {
            vecTimes[i].push_back(secondsOf(vecWorks[i]));
        }
        state.SetIterationTime(vecTimes.front().back());
    }
    std::vector<double> vecMedians;
    for (std::vector<double>& vecOfWork : vecTimes)
    {
        const auto itMiddle = vecOfWork.begin() + static_cast<std::ptrdiff_t>(vecOfWork.size() / 2);
        std::nth_element(vecOfWork.begin(), itMiddle, vecOfWork.end());
        vecMedians.push_back(*itMiddle);
    }
    return vecMedians;
}

/// Runs both works in turn and reports the time of the first, with the ratio of the medians as a counter. Before that both are run
/// @p nWarmUps times unmeasured.
inline void compare(benchmark::State& state, const char* pszCounter, const std::function<void()>& fnOurs,
                    const std::function<void()>& fnOther, int nWarmUps = 0)
{
    const std::vector<double> vecMedians = medians(state, {fnOurs, fnOther}, nWarmUps);
    state.counters[pszCounter] = vecMedians[0] / vecMedians[1];
}
} // namespace BenchRatio
