#pragma once

#include <QString>

/// Units of results and what a stored value is divided by to be shown in them. A kind is 0 for SOLA, 1 for NOVA.
namespace ResultUnits
{

/// Molecules in a picomole: the number of dye molecules that one pmol holds.
constexpr double g_dMoleculesPerPmol = 6.022e11;
/// Stored fluorescence yields without calibration are shown in units of this.
constexpr double g_dUncalibratedYield = 1e-7;

/// The unit that a reader compares with the selected one: by the calibration of the result; empty for a calibration that
/// the kind doesn't know.
QString unitOfCalibration(int nKind, const QString& strMeasurementType);

/// The unit of uncalibrated fluorescent results as the readers compare and log it: its bytes are read as Latin-1, so each
/// superscript shows as two characters.
QString comparedPmolPerMolarCm();

/// The unit that the view shows for the result. A calibration that the kind doesn't know counts as none.
QString shownUnit(int nKind, const QString& strMeasurementType);

/// What stored values are divided by to be shown in shownUnit(); 0 where the calibration holds no usable number.
double divisor(int nKind, const QString& strMeasurementType, const QString& strPerUnitValue);

} // namespace ResultUnits
