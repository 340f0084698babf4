#include "CFaultRecorder.h"

#include "COrmBasePalette.h"
#include "COrmErrorHandler.h"
#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "OrmFaults.h"

#include <QMessageBox>
#include <QThread>

CFaultRecorder::CFaultRecorder()
{
    m_nSink = getLogObject()->addSink(
        [this](const SLogEntry& objEntry)
        {
            const OrmFaults::CHold objHold;
            if (QThread::currentThread() == thread() && (objEntry.nLevel > 1 || objEntry.strFile.isEmpty()))
            {
                keepReason(objEntry.strMessage);
            }
        });
    COrmMessageBox::setResponder(
        [this](const SMessageRequest& objRequest)
        {
            const OrmFaults::CHold objHold;
            m_lstBoxes.append(objRequest.strText);
            return objRequest.bTextButtons ? 0 : int(QMessageBox::Yes);
        });
    COrmErrorHandler::setResponder(
        [this](const SErrorRequest& objRequest)
        {
            const OrmFaults::CHold objHold;
            m_lstBoxes.append(QStringLiteral("status %1").arg(int(objRequest.eStatus)));
        });
}

CFaultRecorder::~CFaultRecorder()
{
    getLogObject()->removeSink(m_nSink);
    COrmMessageBox::setResponder({});
    COrmErrorHandler::setResponder({});
}

void CFaultRecorder::watchHints(COrmBasePalette& objPalette)
{
    connect(&objPalette, &COrmBasePalette::statusHintChanged, this,
            [this](const QString& strHint)
            {
                const OrmFaults::CHold objHold;
                keepReason(strHint);
            });
}

void CFaultRecorder::clear()
{
    m_lstBoxes.clear();
    m_lstReasons.clear();
}

/// Steps are told on the same ways; they end in points.
void CFaultRecorder::keepReason(const QString& strText)
{
    if (!strText.isEmpty() && !strText.endsWith(QLatin1String("...")))
    {
        m_lstReasons.append(strText);
    }
}
