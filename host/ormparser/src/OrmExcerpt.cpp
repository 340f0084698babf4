#include "OrmExcerpt.h"

namespace OrmExcerpt
{
QString of(std::string_view strText)
{
    constexpr size_t nLongest = 40;
    const std::string_view strShort = strText.substr(0, nLongest);
    QString strResult = QString::fromUtf8(strShort.data(), static_cast<int>(strShort.size()));
    for (QChar& c : strResult)
    {
        if (!c.isPrint())
            c = QLatin1Char('?');
    }
    return strText.size() > nLongest ? strResult + QStringLiteral("...") : strResult;
}
} // namespace OrmExcerpt
