#pragma once

#include <QString>
#include <QStringList>

/// Units of the tool as they are given on a command line.
namespace ResultUnitNames
{
/// The units of a kind, its usual one first.
QStringList ofKind(bool bNova);

/// The unit as the tool writes it; "pmol M-1 cm-1" stands for the one with raised figures. Any other text stays as it is.
QString written(const QString& strUnit);

/// The measurement type of a calibration that makes the tool show the unit; empty: no calibration.
QString measurementType(const QString& strUnit);
} // namespace ResultUnitNames
