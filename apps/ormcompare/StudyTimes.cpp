#include "StudyTimes.h"

#include <QDateTime>
#include <QHash>
#include <QRegularExpression>

#include <limits>
#include <optional>

namespace
{
constexpr double kMillisecondsPerDay = 86'400'000.0;
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

/// A date that could be read.
struct SMoment
{
    qint64 m_nMilliseconds = 0; ///< since 1970, of UTC or, without an offset, of the place's clock
    bool m_bOffset = false;     ///< an offset from UTC is stated
};

/// What the dates of one subject have in common.
struct SSubject
{
    qint64 m_nFirst = std::numeric_limits<qint64>::max();
    bool m_bWithOffset = false;
    bool m_bWithoutOffset = false;
};

std::optional<SMoment> read(const QString& strDate)
{
    // Date and time are read apart: the clock of this machine has hours that do not exist, that of the study may have had them.
    static const QRegularExpression s_objForm(
        QStringLiteral("^([0-9]{4}-[0-9]{2}-[0-9]{2})(?:[T ]([0-9]{2}:[0-9]{2}(?::[0-9]{2}(?:[.,][0-9]{1,9})?)?)"
                       "(?:(Z)|([+-])([0-9]{2}):?([0-9]{2}))?)?$"));
    const QRegularExpressionMatch match = s_objForm.match(strDate.trimmed());
    const QDate date = QDate::fromString(match.captured(1), Qt::ISODate);
    const QTime time = match.captured(2).isEmpty() ? QTime(0, 0) : QTime::fromString(match.captured(2), Qt::ISODate);
    const int nHours = match.captured(5).toInt();
    const int nMinutes = match.captured(6).toInt();
    if (!date.isValid() || !time.isValid() || nHours > 23 || nMinutes > 59)
    {
        return std::nullopt;
    }
    const qint64 nOffset = (match.captured(4) == QLatin1String("-") ? -1 : 1) * (nHours * 60LL + nMinutes) * 60'000LL;
    const bool bOffset = !match.captured(3).isEmpty() || !match.captured(4).isEmpty();
    return SMoment{QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch() - nOffset, bOffset};
}
} // namespace

QVector<double> StudyTimes::days(const QVector<STimePoint>& lstTimePoints)
{
    QVector<std::optional<SMoment>> lstMoments;
    QHash<QString, SSubject> mapSubjects;
    for (const STimePoint& timePoint : lstTimePoints)
    {
        lstMoments.append(timePoint.m_strSubject.isEmpty() ? std::nullopt : read(timePoint.m_strDate));
        if (const std::optional<SMoment>& moment = lstMoments.constLast())
        {
            SSubject& subject = mapSubjects[timePoint.m_strSubject];
            subject.m_nFirst = qMin(subject.m_nFirst, moment->m_nMilliseconds);
            (moment->m_bOffset ? subject.m_bWithOffset : subject.m_bWithoutOffset) = true;
        }
    }
    QVector<double> lstDays;
    for (int nAt = 0; nAt < lstTimePoints.size(); ++nAt)
    {
        const SSubject subject = mapSubjects.value(lstTimePoints.at(nAt).m_strSubject);
        const bool bKnown = lstMoments.at(nAt) && subject.m_bWithOffset != subject.m_bWithoutOffset;
        lstDays.append(bKnown ? static_cast<double>(lstMoments.at(nAt)->m_nMilliseconds - subject.m_nFirst) / kMillisecondsPerDay
                              : kUnknown);
    }
    return lstDays;
}
