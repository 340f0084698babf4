#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
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

/// Runs both works in turn and reports the time of the first, with the ratio of the medians as a counter. Before that both are run
/// @p nWarmUps times unmeasured.
inline void compare(benchmark::State& state, const char* pszCounter, const std::function<void()>& fnOurs,
                    const std::function<void()>& fnOther, int nWarmUps = 0)
{
    for (int i = 0; i < nWarmUps; ++i)
    {
        fnOurs();
        fnOther();
    }
    std::vector<double> vecOurs;
    std::vector<double> vecOther;
    for (auto objUnused : state)
    {
        static_cast<void>(objUnused);
        vecOther.push_back(secondsOf(fnOther));
        vecOurs.push_back(secondsOf(fnOurs));
        state.SetIterationTime(vecOurs.back());
    }
    const auto fnMedian = [](std::vector<double>& vecTimes)
    {
        std::nth_element(vecTimes.begin(), vecTimes.begin() + static_cast<std::ptrdiff_t>(vecTimes.size() / 2), vecTimes.end());
        return vecTimes[vecTimes.size() / 2];
    };
    state.counters[pszCounter] = fnMedian(vecOurs) / fnMedian(vecOther);
}
} // namespace BenchRatio
