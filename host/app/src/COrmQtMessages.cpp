#include "COrmQtMessages.h"

#include "COrmLog.h"

#include <QtGlobal>
#include <cstring>

namespace
{
QtMessageHandler s_pfnBefore = nullptr;

long levelOf(QtMsgType eType)
{
    switch (eType)
    {
    case QtWarningMsg:
        return 2;
    case QtCriticalMsg:
    case QtFatalMsg:
        return 3;
    default:
        return 1;
    }
}

void takeMessage(QtMsgType eType, const QMessageLogContext& objContext, const QString& strText)
{
    static thread_local bool s_bInside = false; // what a receiver of the log reports is not logged again
    const char* pszCategory = objContext.category != nullptr ? objContext.category : "default";
    // Entries of the log itself come by here, too.
    if (!s_bInside && std::strncmp(pszCategory, "orm.", 4) != 0)
    {
        s_bInside = true;
        SLogEntry sEntry;
        sEntry.strMessage = strText;
        sEntry.strFile = QString::fromUtf8(objContext.file);
        sEntry.nLine = objContext.line;
        sEntry.nLevel = levelOf(eType);
        sEntry.strCategory = std::strcmp(pszCategory, "default") == 0 ? QStringLiteral("qt") : QString::fromUtf8(pszCategory);
        getLogObject()->write(sEntry);
        s_bInside = false;
    }
    if (s_pfnBefore != nullptr)
        s_pfnBefore(eType, objContext, strText);
}
} // namespace

COrmQtMessages::COrmQtMessages()
{
    getLogObject(); // is there before, and so gone after, whatever reports
    s_pfnBefore = qInstallMessageHandler(takeMessage);
}

COrmQtMessages::~COrmQtMessages()
{
    qInstallMessageHandler(s_pfnBefore);
}
