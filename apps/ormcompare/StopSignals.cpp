#include "StopSignals.h"

#include <csignal>
#include <pthread.h>
#include <utility>

namespace
{
/// Ends the thread; nobody else sends it.
constexpr int kEnd = SIGUSR2;

/// The signals to watch: not those that whoever started the program had it ignore, as nohup does.
sigset_t watched()
{
    sigset_t setSignals;
    ::sigemptyset(&setSignals);
    ::sigaddset(&setSignals, kEnd);
    for (const int nSignal : {SIGHUP, SIGINT, SIGTERM})
    {
        struct sigaction action = {};
        if (::sigaction(nSignal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
        {
            ::sigaddset(&setSignals, nSignal);
        }
    }
    return setSignals;
}
} // namespace

CStopSignals::CStopSignals(std::function<void(int nSignal)> fnStop)
{
    const sigset_t setSignals = watched();
    ::pthread_sigmask(SIG_BLOCK, &setSignals, nullptr);
    m_objThread = std::thread(
        [fnStop = std::move(fnStop), setSignals]
        {
            int nSignal = 0;
            while (::sigwait(&setSignals, &nSignal) == 0 && nSignal != kEnd)
            {
                fnStop(nSignal);
            }
        });
}

CStopSignals::~CStopSignals()
{
    ::pthread_kill(m_objThread.native_handle(), kEnd);
    m_objThread.join();
    const sigset_t setSignals = watched();
    ::pthread_sigmask(SIG_UNBLOCK, &setSignals, nullptr);
}
