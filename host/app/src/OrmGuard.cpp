#include "OrmGuard.h"

#include "COrmLog.h"

#include <QCoreApplication>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmGuard)
};

} // namespace

QString OrmGuard::reportFailure(const QString& strWhat, const char* pReason)
{
    const QString strReason = pReason != nullptr ? QString::fromLocal8Bit(pReason) : CText::tr("it gave no reason");
    //: %1 is a tool or something that the host does with one, such as "Loading libtool.so"
    const QString strText = CText::tr("%1 failed: %2.").arg(strWhat, strReason);
    ORM_LOG(3, strText);
    return strText;
}
