#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// The numbers of a plot as a table.
namespace COrmXYPlotTable
{
/// A line of the plot.
struct SColumn
{
    QString m_strName;
    QVector<double> m_vecX;
    QVector<double> m_vecY;
};

/// One row for each x value, upwards, and one column for each line behind it. A field is empty where a line has no value, or none that
/// is finite. Where a line has several values at an x value, there are as many rows.
/// @param strXName heads the first column
/// @param strYName what is measured, with its unit; stands behind the name of each line
QByteArray csv(const QString& strXName, const QString& strYName, const QVector<SColumn>& vecColumns);
} // namespace COrmXYPlotTable
