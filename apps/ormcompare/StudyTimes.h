#pragma once

#include <QString>
#include <QVector>

/// When a time point of a study was taken.
struct STimePoint
{
    QString m_strSubject; ///< as the sequence has it; may be empty
    QString m_strDate;    ///< as the sequence has it; may be empty or no date at all
};

/// The calendar of a study.
namespace StudyTimes
{
/// Days of each time point since the first one of its subject, with the time of day as a fraction. NaN where that cannot be known: the
/// subject has no name, the date is not ISO 8601 (YYYY-MM-DD, with or without hh:mm[:ss] and an offset from UTC), or other dates of the
/// subject state an offset and this one does not, or the other way round. Dates without an offset are taken as they stand, 24 hours a day.
QVector<double> days(const QVector<STimePoint>& lstTimePoints);
} // namespace StudyTimes
