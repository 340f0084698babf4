#include "CompareReport.h"

#include "OrmCsv.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

#include <cmath>

namespace
{
/// A number, or null for one that is unknown.
QJsonValue jsonNumber(double fNumber)
{
    return std::isfinite(fNumber) ? QJsonValue(fNumber) : QJsonValue(QJsonValue::Null);
}

QJsonObject toJson(const SLoadedResult& result)
{
    return {{"kind", result.m_strKind},
            {"sequence", result.m_strSequence},
            {"name", result.m_strName},
            {"unit", result.m_strUnit},
            {"subject", result.m_objTime.m_strSubject},
            {"date", result.m_objTime.m_strDate},
            {"days", jsonNumber(result.m_objTime.m_fDays)},
            {"vertices", result.m_nVertices},
            {"triangles", result.m_nTriangles},
            {"voxels", result.m_nVoxels},
            {"voxel_size_mm", result.m_fVoxelSize},
            {"value_min", result.m_fMin},
            {"value_max", result.m_fMax},
            {"total", result.m_fTotal},
            {"selected_total", result.m_fSelectedTotal},
            {"reduced_chi2", result.m_fReducedChi2},
            {"final_voxel_size_mm", result.m_fFinalVoxelSize},
            {"starting_voxel_size_mm", result.m_fStartVoxelSize},
            {"wavelengths", QJsonArray::fromStringList(result.m_lstWavelengths)},
            {"load_ms", result.m_fLoadMs},
            {"press_ms", result.m_fPressMs}};
}

QJsonObject toJson(const SFailedResult& failed)
{
    return {{"kind", failed.m_strKind}, {"sequence", failed.m_strSequence}, {"name", failed.m_strName}, {"reason", failed.m_strReason}};
}

QJsonObject toJson(const SKindRanges& ranges)
{
    return {{"SOLA", QJsonArray{ranges.m_fSolaMin, ranges.m_fSolaMax}}, {"NOVA", QJsonArray{ranges.m_fNovaMin, ranges.m_fNovaMax}}};
}

template <class T>
QJsonArray toArray(const QVector<T>& lstRecords)
{
    QJsonArray array;
    for (const T& record : lstRecords)
    {
        array.append(toJson(record));
    }
    return array;
}
} // namespace

double CompareReport::median(QVector<double> lstNumbers)
{
    if (lstNumbers.isEmpty())
    {
        return 0.0;
    }
    const auto middle = lstNumbers.begin() + (lstNumbers.size() - 1) / 2;
    std::nth_element(lstNumbers.begin(), middle, lstNumbers.end());
    return *middle;
}

QByteArray CompareReport::json(const SCompareReport& report)
{
    QJsonObject object{{"results", toArray(report.m_lstResults)},
                       {"failed", toArray(report.m_lstFailed)},
                       {"range", toJson(report.m_objRange)},
                       {"bar", toJson(report.m_objBar)},
                       {"peak_rss_mb", report.m_fPeakRssMb}};
    if (!report.m_lstFrameMs.isEmpty())
    {
        object.insert(QStringLiteral("frame_ms"),
                      QJsonObject{{"median", median(report.m_lstFrameMs)},
                                  {"max", *std::max_element(report.m_lstFrameMs.constBegin(), report.m_lstFrameMs.constEnd())}});
    }
    return QJsonDocument(object).toJson();
}

QByteArray CompareReport::csv(const SCompareReport& report)
{
    // New columns stand behind the old ones, so that what reads by place goes on working.
    QByteArray aTable = OrmCsv::line({"kind", "sequence", "name", "unit", "total", "selected_total", "reduced_chi2", "voxel_size_mm",
                                      "final_voxel_size_mm", "starting_voxel_size_mm", "voxels", "subject", "date", "days"});
    const auto times = [](const SResultTime& time) { return QStringList{time.m_strSubject, time.m_strDate, OrmCsv::number(time.m_fDays)}; };
    for (const SLoadedResult& result : report.m_lstResults)
    {
        aTable += OrmCsv::line(QStringList{result.m_strKind, result.m_strSequence, result.m_strName, result.m_strUnit,
                                           OrmCsv::number(result.m_fTotal), OrmCsv::number(result.m_fSelectedTotal),
                                           OrmCsv::number(result.m_fReducedChi2), OrmCsv::number(result.m_fVoxelSize),
                                           OrmCsv::number(result.m_fFinalVoxelSize), OrmCsv::number(result.m_fStartVoxelSize),
                                           QString::number(result.m_nVoxels)} +
                               times(result.m_objTime));
    }
    const QStringList lstNoFigures{QString(), QString(), QString(), QString(), QString(), QString(), QString(), QString()};
    for (const SFailedResult& failed : report.m_lstFailed)
    {
        aTable +=
            OrmCsv::line(QStringList{failed.m_strKind, failed.m_strSequence, failed.m_strName} + lstNoFigures + times(failed.m_objTime));
    }
    for (const SEmptyTimePoint& empty : report.m_lstEmpty)
    {
        aTable += OrmCsv::line(QStringList{empty.m_strKind, empty.m_strSequence, QString()} + lstNoFigures + times(empty.m_objTime));
    }
    return aTable;
}
