#include "ResultUnitNames.h"

namespace
{
const QString& uncalibratedYield()
{
    static const QString strUnit = QString::fromUtf8("pmol M-\xC2\xB9 cm-\xC2\xB9");
    return strUnit;
}
} // namespace

QStringList ResultUnitNames::ofKind(bool bNova)
{
    return bNova ? QStringList{uncalibratedYield(), QStringLiteral("cells"), QStringLiteral("pmol")}
                 : QStringList{QStringLiteral("photons/sec"), QStringLiteral("cells")};
}

QString ResultUnitNames::written(const QString& strUnit)
{
    return strUnit == QLatin1String("pmol M-1 cm-1") ? uncalibratedYield() : strUnit;
}

QString ResultUnitNames::measurementType(const QString& strUnit)
{
    if (strUnit == QLatin1String("cells"))
    {
        return QStringLiteral("Cells");
    }
    return strUnit == QLatin1String("pmol") ? QStringLiteral("Dye molecules") : QString();
}
