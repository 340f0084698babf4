#include "OrmTexts.h"

#include "COrmPlainText.h"

namespace
{
constexpr int s_nMenuTextLength = 80; ///< characters of a path or title in a menu
}

QString OrmTexts::menuText(const QString& strText)
{
    return COrmPlainText::visible(COrmPlainText::shortened(strText, s_nMenuTextLength)).replace(QLatin1Char('&'), QLatin1String("&&"));
}
