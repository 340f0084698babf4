#include "OrmTexts.h"

#include "COrmPlainText.h"

namespace
{
constexpr int s_nMenuTextLength = 80; ///< characters of a path or title in a menu
}

QString OrmTexts::counted(qint64 nCount, const QString& strOne, const QString& strMany)
{
    return QStringLiteral("%1 %2").arg(nCount).arg(nCount == 1 ? strOne : strMany);
}

QString OrmTexts::menuText(const QString& strText)
{
    return COrmPlainText::visible(COrmPlainText::shortened(strText, s_nMenuTextLength)).replace(QLatin1Char('&'), QLatin1String("&&"));
}
