#include "COrmProcess.h"

#include "CInteractionLock.h"
#include "COrmLog.h"
#include "CProgressDisplay.h"

#include <QApplication>
#include <QPointer>
#include <QSet>
#include <QThread>

#include <atomic>

namespace
{
struct SState
{
    bool bOpen = false;          ///< a long process runs
    int nType = 0;               ///< its kind
    QSet<int> setDeclared;       ///< kinds declared running without a display
    QString strTitle;            ///< heading of the display
    bool bDisplayEnabled = true; ///< programs without a user to look at it switch it off
    bool bPainting = false;      ///< paintDue() is under way
    bool bDisabled = false;      ///< interface locked
    QPointer<CProgressDisplay> pDisplay;
    QPointer<CInteractionLock> pLock;
    COrmProcessNotifier objNotifier;
};

SState& state()
{
    static SState s_objState;
    return s_objState;
}

std::atomic<bool> g_bRepaint{false}; ///< somebody asked for a repaint

/// No widget may outlive the application object.
void deleteWidgets()
{
    delete state().pDisplay;
    delete state().pLock;
}

/// True with a GUI application. The first time, arranges for the end.
bool hasGui()
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return false;
    if (!state().pLock)
    {
        state().pLock = new CInteractionLock;
        qAddPostRoutine(deleteWidgets);
    }
    return true;
}

/// Everything here belongs to the thread of the application object. Without one, whoever calls is it.
bool isGuiThread()
{
    return !QCoreApplication::instance() || QThread::currentThread() == QCoreApplication::instance()->thread();
}

bool refused(const char* pszCall)
{
    if (isGuiThread())
        return false;
    ORM_LOG(
        3,
        QStringLiteral("COrmProcess::%1 was called on a thread that is not the GUI thread; nothing was done.").arg(QLatin1String(pszCall)));
    return true;
}
} // namespace

bool COrmProcess::isProcessInProgress(tag_eLongProcessTypes eType)
{
    if (refused("isProcessInProgress"))
        return false;
    return (state().bOpen && state().nType == eType) || state().setDeclared.contains(eType);
}

void COrmProcess::startLongProcess(int nSteps, tag_eLongProcessTypes eType, bool bMayAbort, QString strAbortText)
{
    if (refused("startLongProcess"))
        return;
    SState& objState = state();
    objState.bOpen = true;
    objState.nType = eType;
    g_bRepaint.store(false); // what was asked for before belongs to an earlier process
    if (objState.bDisplayEnabled && hasGui())
    {
        if (!objState.pDisplay)
            objState.pDisplay = new CProgressDisplay;
        objState.pDisplay->start(objState.strTitle, nSteps, bMayAbort, strAbortText);
    }
    emit objState.objNotifier.started(nSteps, eType, bMayAbort, strAbortText);
}

void COrmProcess::setProcessMessage(const QString& strMessage, int nStep, int nSteps, bool* pbAbort)
{
    if (refused("setProcessMessage"))
        return;
    SState& objState = state();
    const bool bShown = objState.bOpen && objState.pDisplay && objState.bDisplayEnabled;
    if (bShown)
        objState.pDisplay->setStep(strMessage, nStep, nSteps);
    if (pbAbort)
        *pbAbort = bShown && objState.pDisplay->isAbortRequested();
    emit objState.objNotifier.message(strMessage, nStep, nSteps);
}

void COrmProcess::endLongProcess(tag_eLongProcessTypes eType)
{
    if (refused("endLongProcess"))
        return;
    SState& objState = state();
    if (objState.bOpen)
    {
        objState.bOpen = false;
        objState.strTitle.clear();
        if (objState.pDisplay)
            objState.pDisplay->hide();
    }
    emit objState.objNotifier.ended(eType);
    paintDue();
}

void COrmProcess::disableUserInteraction(bool bDisable)
{
    if (refused("disableUserInteraction"))
        return;
    state().bDisabled = bDisable;
    if (hasGui())
        state().pLock->setLocked(bDisable);
    emit state().objNotifier.userInteractionDisabled(bDisable);
}

bool COrmProcess::isUserInteractionDisabled()
{
    return state().bDisabled;
}

void COrmProcess::exemptFromLock(QWidget* pWindow)
{
    if (pWindow)
        pWindow->window()->setProperty(CInteractionLock::exemptProperty(), true);
}

void COrmProcess::keepAlive()
{
    if (!g_bRepaint.load(std::memory_order_relaxed) || !isGuiThread() || !g_bRepaint.exchange(false))
        return;
    const SState& objState = state();
    if (objState.bOpen && objState.pDisplay && objState.pDisplay->isVisible())
        objState.pDisplay->paintNow();
}

void COrmProcess::requestRepaint()
{
    g_bRepaint.store(true);
}

void COrmProcess::paintDue()
{
    SState& objState = state();
    if (objState.bPainting || !isGuiThread() || !hasGui())
        return;
    objState.bPainting = true;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    objState.bPainting = false;
}

void COrmProcess::setProcessTitle(const QString& strTitle)
{
    if (refused("setProcessTitle"))
        return;
    state().strTitle = strTitle;
    if (state().bOpen && state().pDisplay)
        state().pDisplay->setTitle(strTitle);
    emit state().objNotifier.titled(strTitle);
}

void COrmProcess::setDisplayEnabled(bool bEnabled)
{
    if (refused("setDisplayEnabled"))
        return;
    state().bDisplayEnabled = bEnabled;
    if (!bEnabled && state().pDisplay)
        state().pDisplay->hide();
}

void COrmProcess::setProcessInProgress(tag_eLongProcessTypes eType, bool bInProgress)
{
    if (refused("setProcessInProgress"))
        return;
    if (bInProgress)
        state().setDeclared.insert(eType);
    else
        state().setDeclared.remove(eType);
}

COrmProcessNotifier* COrmProcess::notifier()
{
    return &state().objNotifier;
}
