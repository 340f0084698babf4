#include "AnalysisResultXMLWrapper.h"

#include "OrmNumberText.h"

#include <array>

namespace
{
constexpr int NumbersPerMatrix = 16;

bool toMatrix(const QString& strValues, _SFMatrix& objMatrix)
{
    const QStringList lstNumbers = strValues.split(QLatin1Char(' '));
    if (lstNumbers.size() != NumbersPerMatrix)
    {
        return false;
    }
    std::array<double, NumbersPerMatrix> adValues{};
    for (int i = 0; i < NumbersPerMatrix; ++i)
    {
        if (!OrmNumberText::toDouble(lstNumbers[i], adValues[static_cast<size_t>(i)]))
        {
            return false;
        }
    }
    objMatrix = _SFMatrix(adValues);
    return true;
}
} // namespace

AnalysisResultXMLWrapper::AnalysisResultXMLWrapper() = default;

AnalysisResultXMLWrapper::~AnalysisResultXMLWrapper() = default;

bool AnalysisResultXMLWrapper::getRegistrationMatrices(const QString& strFirstTag, QMap<int, _SFMatrix>* pMatrices)
{
    const QString strData = QStringLiteral("Data");
    const QString strStem = strFirstTag.endsWith(strData) ? strFirstTag.chopped(strData.size()) : strFirstTag + QLatin1Char('.');
    const QString strSection = strStem + QStringLiteral("Registration.Matrices");
    const QString strChild = strStem + QStringLiteral("Registration.Matrix");
    if (!pMatrices || !openSection(strFirstTag, strSection))
    {
        return false;
    }
    int nCount = 0;
    if (!Read2ndTagKeyValues(strFirstTag, strSection, QStringLiteral("Count"), nCount))
    {
        return false;
    }
    if (nCount < 0 || nCount > currentChildCount(strChild))
    {
        return fail(strSection, QStringLiteral("\"Count\" says %1 matrices, there are %2").arg(nCount).arg(currentChildCount(strChild)));
    }
    QMap<int, _SFMatrix> mapRead;
    QStringList lstKeys{QStringLiteral("Index"), QStringLiteral("Values")};
    for (int i = 0; i < nCount; ++i)
    {
        QStringList lstValues;
        if (!ReadCurrentKeyValues(i, strChild, lstKeys, lstValues))
        {
            return false;
        }
        int nIndex = 0;
        _SFMatrix objMatrix;
        if (!OrmNumberText::toInt(lstValues[0], nIndex) || !toMatrix(lstValues[1], objMatrix))
        {
            return fail(strChild, QStringLiteral("matrix %1 is no index with 16 numbers").arg(i));
        }
        mapRead.insert(nIndex, objMatrix);
    }
    *pMatrices = mapRead;
    return true;
}
