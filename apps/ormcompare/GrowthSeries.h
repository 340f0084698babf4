#pragma once

#include "CompareReport.h"
#include "GrowthFit.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// The values of one kind in one subject over time, with the growth fitted to them.
struct SGrowthSeries
{
    QString m_strSubject;
    QString m_strKind;  ///< "SOLA" or "NOVA"
    QString m_strUnit;  ///< of the values; empty where none was loaded
    QString m_strValue; ///< column of the table that was fitted, "total" or "selected_total"
    SGrowthFit m_objFit;
};

namespace GrowthSeries
{
/// The series of a report, by subject and kind in the order of their first results. The value is the marked sum where a region was
/// measured, else the whole one. Results of one sequence come from the same pictures and are no repeated measurement: they count as one
/// point, at their geometric mean. A sequence with a value that is not above 0 is left out as a whole, and so is one without a value.
QVector<SGrowthSeries> of(const SCompareReport& report);

/// One line for each series as comma-separated values below a line of column names. Rates are per day, residuals those of ln(value); the
/// days and residuals of the points stand in one field each, separated by blanks. What cannot be known is empty, and the column
/// "doubling_time_interval" says why.
QByteArray csv(const QVector<SGrowthSeries>& lstSeries);
} // namespace GrowthSeries
