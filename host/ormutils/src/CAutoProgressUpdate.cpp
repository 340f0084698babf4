#include "CAutoProgressUpdate.h"

#include "COrmProcess.h"

#include <QMutexLocker>

namespace
{
constexpr unsigned long g_nIntervalMs = 100;
}

CAutoProgressUpdate::CAutoProgressUpdate(QString strTitle)
{
    COrmProcess::setProcessTitle(strTitle);
}

CAutoProgressUpdate::~CAutoProgressUpdate()
{
    halt();
}

void CAutoProgressUpdate::stop()
{
    halt();
    COrmProcess::paintDue();
}

void CAutoProgressUpdate::halt()
{
    {
        const QMutexLocker objLock(&m_objMutex);
        m_bStop = true;
        m_objWakeUp.wakeAll();
    }
    wait();
    m_bStop = false; // nobody else is left to see it, and the thread may be started again
}

void CAutoProgressUpdate::run()
{
    QMutexLocker objLock(&m_objMutex);
    while (!m_bStop)
    {
        COrmProcess::requestRepaint();
        m_objWakeUp.wait(&m_objMutex, g_nIntervalMs);
    }
}
