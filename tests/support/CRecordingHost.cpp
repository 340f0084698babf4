#include "CRecordingHost.h"

#include "COrmBasePalette.h"
#include "COrmLog.h"
#include "COrmProcess.h"

#include <QMessageBox>
#include <QThread>

namespace
{

QString kindOfBox(QMessageBox::Icon eKind)
{
    switch (eKind)
    {
    case QMessageBox::Information:
        return QStringLiteral("information");
    case QMessageBox::Warning:
        return QStringLiteral("warning");
    case QMessageBox::Critical:
        return QStringLiteral("critical");
    default:
        return QStringLiteral("of no kind");
    }
}

} // namespace

CRecordingHost::CRecordingHost(QObject* pParent) : QObject(pParent)
{
    m_nSink = getLogObject()->addSink(
        [this](const SLogEntry& objEntry)
        {
            if (QThread::currentThread() != thread())
            {
                return; // the host's search for sequences has a thread of its own, and no place in the order of calls
            }
            if (objEntry.strFile.isEmpty())
            {
                m_lstCalls.append(QStringLiteral("log %1: %2").arg(objEntry.nLevel).arg(objEntry.strMessage));
            }
            else
            {
                m_lstHostLog.append(objEntry.strMessage);
            }
        });
    COrmMessageBox::setResponder([this](const SMessageRequest& objRequest) { return answer(objRequest); });
    COrmErrorHandler::setResponder([this](const SErrorRequest& objRequest)
                                   { note(QStringLiteral("error %1: %2").arg(int(objRequest.eStatus)).arg(objRequest.strExtra)); });

    const COrmProcessNotifier* pNotifier = COrmProcess::notifier();
    connect(pNotifier, &COrmProcessNotifier::started, this,
            [this](int nSteps, int nType, bool bMayAbort, const QString& strAbortText)
            { note(QStringLiteral("process start %1 %2 %3 ").arg(nSteps).arg(nType).arg(bMayAbort ? "true" : "false") + strAbortText); });
    connect(pNotifier, &COrmProcessNotifier::message, this,
            [this](const QString& strMessage, int nStep, int nSteps)
            { note(QStringLiteral("progress %1/%2: ").arg(nStep).arg(nSteps) + strMessage); });
    connect(pNotifier, &COrmProcessNotifier::ended, this, [this](int nType) { note(QStringLiteral("process end %1").arg(nType)); });
    connect(pNotifier, &COrmProcessNotifier::titled, this, [this](const QString& strTitle) { note(QStringLiteral("title: ") + strTitle); });
    connect(pNotifier, &COrmProcessNotifier::userInteractionDisabled, this,
            [this](bool bDisabled) { note(bDisabled ? QStringLiteral("interface locked") : QStringLiteral("interface free")); });
    connect(pNotifier, &COrmProcessNotifier::cursorSet, this, [this](int nShape) { note(QStringLiteral("cursor set %1").arg(nShape)); });
    connect(pNotifier, &COrmProcessNotifier::cursorRestored, this, [this] { note(QStringLiteral("cursor restored")); });
}

CRecordingHost::~CRecordingHost()
{
    getLogObject()->removeSink(m_nSink);
    COrmMessageBox::setResponder({});
    COrmErrorHandler::setResponder({});
}

QStringList CRecordingHost::callsOf(const QString& strBegin) const
{
    QStringList lstFound;
    for (const QString& strCall : m_lstCalls)
    {
        if (strCall.startsWith(strBegin))
        {
            lstFound.append(strCall);
        }
    }
    return lstFound;
}

void CRecordingHost::clear()
{
    m_lstCalls.clear();
    m_lstHostLog.clear();
    m_lstBoxes.clear();
}

void CRecordingHost::note(const QString& strEntry)
{
    m_lstCalls.append(strEntry);
}

void CRecordingHost::watchHints(COrmBasePalette& objPalette)
{
    connect(&objPalette, &COrmBasePalette::statusHintChanged, this,
            [this](const QString& strHint) { note(QStringLiteral("hint: ") + strHint); });
}

int CRecordingHost::answer(const SMessageRequest& objRequest)
{
    note(QStringLiteral("box ") + kindOfBox(objRequest.eKind) + QStringLiteral(": ") + objRequest.strText);
    m_lstBoxes.append(objRequest);
    if (m_fnAnswer)
    {
        return m_fnAnswer(objRequest);
    }
    return objRequest.bTextButtons ? 0 : int(QMessageBox::Ok);
}
