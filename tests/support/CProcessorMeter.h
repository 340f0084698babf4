#pragma once

#include <ctime>

/// Seconds of processor time that this process has used since the meter was made. Not those of the clock: others may use the machine too.
class CProcessorMeter
{
public:
    CProcessorMeter() : m_dStart(now()) {}

    double seconds() const { return now() - m_dStart; }

    /// Whether reading this many bytes took no longer than is promised: a second for a small file, and for a large one a tenth of a second
    /// per megabyte more. That is ten times what sound reading needs, so that a slow machine passes, and work that grows with the
    /// square of the bytes does not.
    bool isWithinPatience(long long nBytes = 0) const
    {
#ifdef __SANITIZE_ADDRESS__
        constexpr double dSlower = 20.0; // the sanitizers take their time
#else
        constexpr double dSlower = 1.0;
#endif
        constexpr double dSecondsPerByte = 1e-7;
        return seconds() < dSlower * (1.0 + dSecondsPerByte * static_cast<double>(nBytes));
    }

private:
    static double now()
    {
        timespec objTime = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &objTime);
        return static_cast<double>(objTime.tv_sec) + static_cast<double>(objTime.tv_nsec) * 1e-9;
    }

    double m_dStart;
};
