#include "COrmSequenceOpener.h"

#include "COrmLog.h"
#include "COrmSequenceCollection.h"
#include "OrmBackground.h"

#include <QElapsedTimer>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

namespace
{
constexpr size_t s_nMostWaiting = 256; ///< the search waits when that many sequences are not opened yet
constexpr qint64 s_nSliceMs = 60;      ///< the window gets its turn after that long; a turn that paints a tool costs about as much
constexpr std::chrono::milliseconds s_nFarewell(500);
} // namespace

/// What the search and the window share. It outlives both: a search that hangs in the system cannot be ended.
struct COrmSequenceOpener::SShared
{
    std::atomic<bool> m_bStop{false};
    std::mutex m_objMutex;
    std::condition_variable m_objChanged;
    COrmSequenceOpener* m_pReceiver = nullptr; ///< null once the receiver is gone
    std::deque<SSequenceFacts> m_lstFound;     ///< not opened yet
    SScanProgress m_sProgress;
    SScanOutcome m_sOutcome;
    bool m_bNotified = false; ///< the receiver has been called and has not come yet
    bool m_bEnded = false;

    /// Has the receiver look, on its own thread and after the window had its turn. With the mutex held.
    void notify()
    {
        if (m_pReceiver != nullptr && !std::exchange(m_bNotified, true))
            QMetaObject::invokeMethod(
                m_pReceiver, [p = m_pReceiver] { p->m_objPause.start(0); }, Qt::QueuedConnection);
    }

    void found(const SSequenceFacts& sFacts)
    {
        std::unique_lock<std::mutex> objLock(m_objMutex);
        m_objChanged.wait(objLock, [this] { return m_lstFound.size() < s_nMostWaiting || m_bStop; });
        if (m_bStop)
            return;
        m_lstFound.push_back(sFacts);
        notify();
    }

    bool report(const SScanProgress& sProgress)
    {
        const std::lock_guard<std::mutex> objLock(m_objMutex);
        m_sProgress = sProgress;
        notify();
        return !m_bStop;
    }

    void run(const QStringList& lstPaths)
    {
        SScanOutcome sOutcome;
        try
        {
            sOutcome = OrmSequenceScanner::scan(
                lstPaths, [this](const SSequenceFacts& s) { found(s); }, [this](const SScanProgress& s) { return report(s); });
        }
        catch (const std::exception& objError)
        {
            sOutcome.m_lstProblems.append(
                COrmSequenceOpener::tr("The search for sequences ended early: %1.").arg(QString::fromLocal8Bit(objError.what())));
        }
        end(sOutcome);
    }

    void end(const SScanOutcome& sOutcome)
    {
        const std::lock_guard<std::mutex> objLock(m_objMutex);
        m_sOutcome = sOutcome;
        m_bEnded = true;
        notify();
        m_objChanged.notify_all();
    }
};

COrmSequenceOpener::COrmSequenceOpener(COrmSequenceCollection* pCollection, QObject* pParent) : QObject(pParent), m_pCollection(pCollection)
{
    m_objPause.setSingleShot(true);
    connect(&m_objPause, &QTimer::timeout, this, &COrmSequenceOpener::takeIn);
}

COrmSequenceOpener::~COrmSequenceOpener()
{
    if (!m_pShared)
        return;
    std::unique_lock<std::mutex> objLock(m_pShared->m_objMutex);
    m_pShared->m_pReceiver = nullptr;
    m_pShared->m_bStop = true;
    m_pShared->m_objChanged.notify_all();
    m_pShared->m_objChanged.wait_for(objLock, s_nFarewell, [this] { return m_pShared->m_bEnded; });
}

void COrmSequenceOpener::open(const QStringList& lstPaths)
{
    m_lstWaiting += lstPaths;
    if (!m_bBusy && !m_lstWaiting.isEmpty())
    {
        m_bBusy = true;
        m_sSummary = SSummary();
        emit started();
        startNext();
    }
}

void COrmSequenceOpener::startNext()
{
    m_pShared = std::make_shared<SShared>();
    m_pShared->m_pReceiver = this;
    // The thread is let go at once, since nobody may have to wait for a folder that does not answer.
    if (!OrmBackground::run([pShared = m_pShared, lstPaths = std::exchange(m_lstWaiting, {})] { pShared->run(lstPaths); }))
    {
        SScanOutcome sOutcome;
        sOutcome.m_lstProblems.append(tr("The search for sequences could not begin: close other programs and try again."));
        m_pShared->end(sOutcome);
    }
}

void COrmSequenceOpener::cancel()
{
    if (!m_bBusy)
        return;
    m_lstWaiting.clear();
    m_sSummary.m_bCancelled = true;
    {
        const std::lock_guard<std::mutex> objLock(m_pShared->m_objMutex);
        m_pShared->m_bStop = true;
        m_pShared->m_pReceiver = nullptr; // nothing that it may still find is wanted
        m_pShared->m_objChanged.notify_all();
    }
    scanEnded();
}

void COrmSequenceOpener::takeIn()
{
    if (!m_pShared)
        return;
    QElapsedTimer objTimer;
    objTimer.start();
    const std::shared_ptr<SShared> pShared = m_pShared;
    SScanProgress sProgress;
    for (;;)
    {
        SSequenceFacts sFacts;
        {
            const std::lock_guard<std::mutex> objLock(pShared->m_objMutex);
            pShared->m_bNotified = false;
            sProgress = pShared->m_sProgress;
            if (pShared->m_lstFound.empty())
                break;
            if (objTimer.elapsed() > s_nSliceMs)
            {
                pShared->m_bNotified = true;
                m_objPause.start(0);
                break;
            }
            sFacts = std::move(pShared->m_lstFound.front());
            pShared->m_lstFound.pop_front();
            pShared->m_objChanged.notify_all();
        }
        QString strReason;
        ++m_sSummary.m_nOpened; // before anybody who is told of the sequence may cancel
        const bool bOpened = m_pCollection->add(sFacts, &strReason) != nullptr;
        if (!bOpened)
            --m_sSummary.m_nOpened;
        if (!bOpened && !strReason.isEmpty())
        {
            m_sSummary.m_lstProblems.append(strReason);
            ORM_LOG(2, strReason);
        }
        if (m_pShared != pShared)
            return; // cancelled by somebody who was told of the sequence
    }
    emit progress(sProgress.m_nFolders, sProgress.m_nSequences, sProgress.m_strFolder);
    bool bDone = false;
    {
        const std::lock_guard<std::mutex> objLock(pShared->m_objMutex);
        bDone = pShared->m_bEnded && pShared->m_lstFound.empty();
    }
    if (bDone && m_pShared == pShared)
        scanEnded();
}

void COrmSequenceOpener::scanEnded()
{
    {
        const std::lock_guard<std::mutex> objLock(m_pShared->m_objMutex);
        for (const QString& strProblem : qAsConst(m_pShared->m_sOutcome.m_lstProblems))
        {
            m_sSummary.m_lstProblems.append(strProblem);
            ORM_LOG(2, strProblem);
        }
    }
    m_pShared.reset();
    if (!m_lstWaiting.isEmpty())
    {
        startNext();
        return;
    }
    m_bBusy = false;
    emit finished(m_sSummary);
}
