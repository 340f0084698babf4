#include "OrmCsv.h"

#include <QLocale>

#include <cmath>

namespace
{
QString quoted(QString strField)
{
    const bool bPlain = !strField.contains(QLatin1Char(',')) && !strField.contains(QLatin1Char('"')) &&
                        !strField.contains(QLatin1Char('\n')) && !strField.contains(QLatin1Char('\r'));
    if (bPlain)
    {
        return strField;
    }
    return QLatin1Char('"') + strField.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}
} // namespace

QByteArray OrmCsv::line(const QStringList& lstFields)
{
    QStringList lstQuoted;
    lstQuoted.reserve(lstFields.size());
    for (const QString& strField : lstFields)
    {
        lstQuoted.append(quoted(strField));
    }
    return lstQuoted.join(QLatin1Char(',')).toUtf8() + "\r\n";
}

QString OrmCsv::number(double fValue)
{
    return std::isfinite(fValue) ? QLocale::c().toString(fValue, 'g', QLocale::FloatingPointShortest) : QString();
}
