#include "COrmDisplayCheck.h"

#include <QGuiApplication>

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr int s_nPatienceMs = 20000; ///< of silence; a display that does not answer is none
constexpr int s_nMaxText = 4096;     ///< bytes of the reason
constexpr char s_cGood = '\0';       ///< said by the process that has the display

[[noreturn]] void tryDisplay(int nReport, int nArguments, char** ppArguments)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit sNoCore = {0, 0};
    ::setrlimit(RLIMIT_CORE, &sNoCore);
    ::dup2(nReport, STDERR_FILENO);
    // Qt ends the process where there is no display.
    const QGuiApplication objApplication(nArguments, ppArguments);
    if (QGuiApplication::primaryScreen() == nullptr || ::write(nReport, &s_cGood, 1) != 1)
        ::_exit(1);
    for (;;)
        ::pause();
}

/// Reads what the other process says until it is done. True if it has the display.
bool listen(int nReport, QByteArray& baText)
{
    pollfd sPoll = {nReport, POLLIN, 0};
    for (;;)
    {
        const int nReady = ::poll(&sPoll, 1, s_nPatienceMs);
        if (nReady < 0 && errno == EINTR)
            continue;
        if (nReady == 0)
            baText = "the display does not answer";
        char acBytes[512];
        const ssize_t nBytes = nReady <= 0 ? 0 : ::read(nReport, acBytes, sizeof acBytes);
        if (nBytes <= 0)
            return false;
        baText.append(acBytes, int(nBytes));
        if (baText.contains(s_cGood))
            return true;
        baText.truncate(s_nMaxText);
    }
}
} // namespace

COrmDisplayCheck::COrmDisplayCheck(int nArguments, char** ppArguments)
{
    int anPipe[2] = {-1, -1};
    m_nProcess = ::pipe(anPipe) == 0 ? ::fork() : -1;
    if (m_nProcess < 0)
    {
        m_strRefusal = qt_error_string(errno);
        return;
    }
    if (m_nProcess == 0)
    {
        ::close(anPipe[0]);
        tryDisplay(anPipe[1], nArguments, ppArguments);
    }
    ::close(anPipe[1]);
    QByteArray baText;
    if (!listen(anPipe[0], baText))
    {
        m_strRefusal = QString::fromLocal8Bit(baText).trimmed().section(QLatin1Char('\n'), 0, 0);
        if (m_strRefusal.isEmpty())
            m_strRefusal = QStringLiteral("no reason was given");
    }
    ::close(anPipe[0]);
}

COrmDisplayCheck::~COrmDisplayCheck()
{
    if (m_nProcess <= 0)
        return;
    ::kill(m_nProcess, SIGKILL);
    while (::waitpid(m_nProcess, nullptr, 0) < 0 && errno == EINTR)
    {
    }
}
