#include "PlotValues.h"

#include "AnalysisRecords.h"

#include <QObject>

#include <numeric>

namespace PlotValues
{

const QStringList& lineNames()
{
    static const QStringList s_lstNames = {QStringLiteral("Quantification Profile"), QStringLiteral("Reduced Chi-Squared profile"),
                                           QStringLiteral("Final Voxel Size"), QStringLiteral("Starting Voxel Size")};
    return s_lstNames;
}

int kindOfEntry(int nIndex)
{
    return nIndex == 0 ? 0 : 1;
}

std::vector<int> runningNumbers(std::size_t nResults)
{
    std::vector<int> vecNumbers(nResults);
    std::iota(vecNumbers.begin(), vecNumbers.end(), 0);
    return vecNumbers;
}

std::vector<float> totals(QList<sAnalysisBase>& lstResults, int nKind, bool bMarkedOnly)
{
    std::vector<float> vecTotals;
    for (sAnalysisBase& objResult : lstResults)
    {
        if (objResult.nAnalysisType == nKind)
        {
            vecTotals.push_back(objResult.objVolume.getTotalFluxForSelectedVoxels(bMarkedOnly));
        }
    }
    return vecTotals;
}

std::vector<double> numbers(const QList<sAnalysisBase>& lstResults, int nKind, double sAnalysisBase::*pNumber)
{
    std::vector<double> vecNumbers;
    for (const sAnalysisBase& objResult : lstResults)
    {
        if (objResult.nAnalysisType == nKind)
        {
            vecNumbers.push_back(objResult.*pNumber);
        }
    }
    return vecNumbers;
}

QString yAxisLabel(int nMeasure, int nKind)
{
    switch (nMeasure)
    {
    case eQuantification:
        return nKind == 0 ? QObject::tr("Quantification photon/sec") : QObject::tr("Quantification pmol M-¹ cm-¹");
    case eReducedChi2:
        return QStringLiteral("Reduced Chi2");
    case eVoxelSize:
        return QStringLiteral("VoxelSize mm");
    default:
        return QString();
    }
}

} // namespace PlotValues
