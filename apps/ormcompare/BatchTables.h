#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// A table of one study.
struct SStudyTable
{
    QString m_strStudy;
    QByteArray m_aTable; ///< comma-separated values as the program writes them, with a line of column names
};

namespace BatchTables
{
/// The tables of all studies as one, with the study in a new first column. Tables whose columns are not those of the first one are left
/// out and named in @p lstStrange.
QByteArray joined(const QVector<SStudyTable>& lstTables, QStringList& lstStrange);
} // namespace BatchTables
