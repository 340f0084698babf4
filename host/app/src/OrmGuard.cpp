#include "OrmGuard.h"

#include "COrmLog.h"

QString OrmGuard::reportFailure(const QString& strWhat, const char* pReason)
{
    const QString strReason = pReason != nullptr ? QString::fromLocal8Bit(pReason) : QStringLiteral("it gave no reason");
    const QString strText = QStringLiteral("%1 failed: %2.").arg(strWhat, strReason);
    ORM_LOG(3, strText);
    return strText;
}
