#include "ResultUnits.h"

#include <QObject>

#include <cmath>

namespace ResultUnits
{

namespace
{

const char g_strPmolPerMolarCm[] = "pmol M-\xC2\xB9 cm-\xC2\xB9";
const QLatin1String g_strCells("Cells");
const QLatin1String g_strDyeMolecules("Dye molecules");

double perUnit(const QString& strPerUnitValue)
{
    bool bNumber = false;
    const float fValue = strPerUnitValue.toFloat(&bNumber);
    return bNumber && std::isfinite(fValue) ? static_cast<double>(fValue) : 0.0;
}

} // namespace

QString comparedPmolPerMolarCm()
{
    return QString::fromLatin1(g_strPmolPerMolarCm);
}

QString unitOfCalibration(int nKind, const QString& strMeasurementType)
{
    if (strMeasurementType.isEmpty())
    {
        return nKind == 1 ? comparedPmolPerMolarCm() : QStringLiteral("photons/sec");
    }
    if (nKind == 1 && strMeasurementType == g_strDyeMolecules)
    {
        return QStringLiteral("pmol");
    }
    return strMeasurementType == g_strCells ? QStringLiteral("cells") : QString();
}

QString shownUnit(int nKind, const QString& strMeasurementType)
{
    if (strMeasurementType == g_strCells)
    {
        return QStringLiteral("cells");
    }
    if (nKind != 1)
    {
        return QStringLiteral("photons/sec");
    }
    return strMeasurementType == g_strDyeMolecules ? QStringLiteral("pmol") : QObject::tr(g_strPmolPerMolarCm);
}

double divisor(int nKind, const QString& strMeasurementType, const QString& strPerUnitValue)
{
    if (strMeasurementType == g_strCells)
    {
        return perUnit(strPerUnitValue);
    }
    if (nKind != 1)
    {
        return 1.0;
    }
    return strMeasurementType == g_strDyeMolecules ? perUnit(strPerUnitValue) * g_dMoleculesPerPmol : g_dUncalibratedYield;
}

} // namespace ResultUnits
