// ormfaultdriver WORK FAULT once|ever STRIDE [FROM]: does the work again and again, each time with another call failing, until a run needs
// fewer calls. FAULT is "memory", "short" or an errno name. Ends with 0 and one line of figures; with 1 and a line for each run that came
// out wrong. ormfaultdriver life|leak: the life of a window, or a leak, for the search for leaks.

#include "CFaultWork.h"
#include "WindowLife.h"

#include "COrmPreference.h"
#include "CSOLAView.h"

#include <QApplication>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <execinfo.h>
#include <unistd.h>

namespace
{
constexpr int g_nMostReported = 10;

/// The number of the call that fails, in digits for a handler that may do next to nothing.
std::array<char, 24> g_acFailing = {};

void sayWhere(int nSignal)
{
    const ssize_t nWritten = write(STDERR_FILENO, g_acFailing.data(), std::strlen(g_acFailing.data()));
    static_cast<void>(nWritten);
    const OrmFaults::CHold objHold;
    std::array<void*, 64> apFrames = {};
    backtrace_symbols_fd(apFrames.data(), backtrace(apFrames.data(), static_cast<int>(apFrames.size())), STDERR_FILENO);
    std::signal(nSignal, SIG_DFL);
    std::raise(nSignal);
}

/// What is painted and what events do to Qt and to the drawing libraries is left alone.
class CDriverApplication : public QApplication
{
public:
    using QApplication::QApplication;
    bool notify(QObject* pReceiver, QEvent* pEvent) override
    {
        const OrmFaults::CHold objHold;
        return QApplication::notify(pReceiver, pEvent);
    }
};

struct SErrorName
{
    const char* pName;
    int nError;
};
constexpr std::array<SErrorName, 4> g_lstErrors = {{{"EIO", EIO}, {"ENOSPC", ENOSPC}, {"EINTR", EINTR}, {"ESTALE", ESTALE}}};

bool readFault(const QString& strFault, OrmFaults::SPlan& sPlan)
{
    if (strFault == QLatin1String("memory"))
        sPlan.eKind = OrmFaults::EKind::Memory;
    else if (strFault == QLatin1String("short"))
        sPlan.eKind = OrmFaults::EKind::Short;
    else
        sPlan.eKind = OrmFaults::EKind::File;
    for (const SErrorName& sError : g_lstErrors)
    {
        if (strFault == QLatin1String(sError.pName))
            sPlan.nError = sError.nError;
    }
    return sPlan.eKind != OrmFaults::EKind::File || sPlan.nError != 0;
}

/// One run. Empty, or what came out wrong.
QString doOnce(CFaultWork& objWork, const OrmFaults::SPlan& sPlan, OrmFaults::SRun& sRun)
{
    objWork.prepare();
    std::snprintf(g_acFailing.data(), g_acFailing.size(), "\nat call %ld\n", sPlan.nFirst);
    const char* pThrown = nullptr;
    OrmFaults::begin(sPlan);
    try
    {
        objWork.run();
    }
    catch (...)
    {
        pThrown = "an exception came out";
    }
    sRun = OrmFaults::end();
    const QString strWrong = objWork.wrongOutcome(sPlan, sRun);
    return pThrown ? QString::fromLatin1(pThrown) + QStringLiteral("; ") + strWrong : strWrong;
}

/// @param nFrom the first call that fails
int doAll(CFaultWork& objWork, OrmFaults::SPlan sPlan, long nFrom, long nStride)
{
    const QByteArray baFolder = objWork.folder();
    sPlan.pFolder = baFolder.constData();
    sPlan.nLeastBytes = objWork.leastBytes();
    OrmFaults::SRun sClean;
    for (int nTime = 0; nTime < 2; ++nTime) // the first one also fills caches
    {
        const QString strWrong = doOnce(objWork, sPlan, sClean);
        if (!strWrong.isEmpty() || objWork.isRefused() || sClean.nCalls == 0)
        {
            std::printf("without a fault: %s (%ld calls)\n", qPrintable(strWrong), sClean.nCalls);
            return 1;
        }
    }
    int nRuns = 0;
    int nRefused = 0;
    int nWrong = 0;
    OrmFaults::SRun sRun;
    for (sPlan.nFirst = nFrom;; sPlan.nFirst = sRun.nHit + nStride)
    {
        const QString strWrong = doOnce(objWork, sPlan, sRun);
        if (!strWrong.isEmpty() && ++nWrong <= g_nMostReported)
            std::printf("call %ld of %ld: %s\n", sRun.nHit, sClean.nCalls, qPrintable(strWrong));
        if (sRun.nHit == 0)
            break;
        ++nRuns;
        nRefused += objWork.isRefused() ? 1 : 0;
    }
    std::printf("%ld calls, %d runs, %d refused, %d unharmed, %d wrong\n", sClean.nCalls, nRuns, nRefused, nRuns - nRefused, nWrong);
    return nWrong == 0 && nRuns > 0 ? 0 : 1;
}
} // namespace

int main(int nArguments, char** ppArguments)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    for (const int nSignal : {SIGABRT, SIGSEGV, SIGALRM})
        std::signal(nSignal, &sayWhere);
    CSOLAView::setDefaultFormat();
    const CDriverApplication objApplication(nArguments, ppArguments);
    COrmPreference::setStore(QString());

    const QStringList lstArguments = QCoreApplication::arguments();
    if (lstArguments.value(1) == QLatin1String("leak"))
    {
        loseMemory();
        return 0;
    }
    if (lstArguments.value(1) == QLatin1String("life"))
        return liveOnce() ? 0 : 1;
    OrmFaults::SPlan sPlan;
    const std::unique_ptr<CFaultWork> pWork = CFaultWork::byName(lstArguments.value(1));
    const long nStride = lstArguments.value(4).toLong();
    if (!pWork || !readFault(lstArguments.value(2), sPlan) || nStride < 1)
    {
        std::fprintf(stderr, "usage: ormfaultdriver WORK memory|short|EIO|ENOSPC|EINTR|ESTALE once|ever STRIDE\n");
        return 2;
    }
    sPlan.bForEver = lstArguments.value(3) == QLatin1String("ever");
    const long nFrom = std::max(1L, lstArguments.value(5).toLong());
    return doAll(*pWork, sPlan, nFrom, nStride);
}

std::unique_ptr<CFaultWork> CFaultWork::byName(const QString& strName)
{
    for (const auto fnMake : {&readingWork, &documentWork, &pressWork, &writingWork})
    {
        if (std::unique_ptr<CFaultWork> pWork = fnMake(strName))
            return pWork;
    }
    return nullptr;
}
