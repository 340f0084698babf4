#pragma once

#include <functional>
#include <thread>

/// Calls a function, on a thread of its own, when the program is told to stop (hang-up, interrupt, terminate); the program goes on unless
/// the function ends it. Made before any other thread, so that none of them takes the signals away. One at a time.
class CStopSignals
{
public:
    explicit CStopSignals(std::function<void(int nSignal)> fnStop);
    ~CStopSignals();
    CStopSignals(const CStopSignals&) = delete;
    CStopSignals& operator=(const CStopSignals&) = delete;

private:
    std::thread m_objThread;
};
