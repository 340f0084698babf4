#pragma once

/// Arithmetic of the colour scale panel: a range of values on a slider of 100 positions. Linear throughout, whatever scale the
/// palettes use.
///
/// The two directions are inverses only where the range begins at 0: a position stands for a part of the range's width, to which the
/// range's lower end is not added. The panel relies on that.
namespace ColorRangeMath
{
/// Slider positions of a whole range.
constexpr int s_nPositions = 100;

/// The whole part of a number, at most as far from 0 as an int goes; not a number gives 0.
int toInt(double fValue);

/// Position of the lower handle for a stored minimum on the range from @p fLow to @p fHigh. An empty range gives a position as
/// toInt() has it, which a slider takes as one of its ends.
int lowerPosition(float fMinimum, float fLow, float fHigh);
/// Position of the upper handle for a stored maximum; likewise.
int upperPosition(float fMaximum, float fLow, float fHigh);
/// The same for a typed minimum, which keeps its double precision.
int lowerPositionOfTyped(double fMinimum, float fLow, float fHigh);
/// The same for a typed maximum.
int upperPositionOfTyped(double fMaximum, float fLow, float fHigh);

/// The value of a handle's position: its part of the range's width.
float valueAt(int nPosition, float fLow, float fHigh);
/// That value as it is stored: never below the range's lower end.
float storedValueAt(int nPosition, float fLow, float fHigh);

/// Step of the minimum's spin box: finer for SOLA (kind 0) than for NOVA.
float minimumStep(int nKind, float fLow, float fHigh);
/// Step of the maximum's spin box: the minimum's, multiplied by ten times the part that the range's upper end is of the highest
/// value loaded, but never made smaller.
float maximumStep(int nKind, float fLow, float fHigh, float fHighestValue);
/// Step of the maximum's spin box after a maximum was typed: follows the value, at least 1.
double maximumStepOfTyped(double fMaximum);

/// The position on a slider of @p fRange positions for a fraction of a colour table, and the other way round.
int positionOfFraction(float fFraction, float fRange);
float fractionOfPosition(int nPosition, float fRange);
} // namespace ColorRangeMath
