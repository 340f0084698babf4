#pragma once

#include "OrmColorScale.h"

#include <QString>

#include <functional>
#include <vector>

/// Places and texts of the ticks of a colour bar; plain arithmetic without any drawing.
namespace OrmColorBarTicks
{
/// What a font in one size needs. Lengths in pixels.
struct SFont
{
    double m_fPointSize = 7.0;                       ///< size in points
    double m_fAscent = 10.0;                         ///< height of the tallest letters above the baseline
    double m_fDigitHeight = 7.0;                     ///< height of a digit above the baseline
    std::function<double(const QString&)> m_fnWidth; ///< width of a text
};

/// Gives the font in a size in points.
using FnFont = std::function<SFont(double fPointSize)>;

/// One tick.
struct STick
{
    double m_fPosition = 0.0; ///< place on the bar, 0 at its bottom, 1 at its top
    double m_fBaseline = 0.0; ///< pixels of the label's baseline above the bar's bottom; never below 0
    QString m_strLabel;       ///< empty for a mark without a number
};

/// All ticks of a bar, from bottom to top, and the font size in which the labels fit.
struct SLayout
{
    std::vector<STick> m_vecTicks;
    double m_fPointSize = 7.0;
};

/// Lays out a bar.
/// @param sRange the palette's range
/// @param fHeight height of the bar in pixels
/// @param fRoom width left for labels in pixels
/// @param fPointSize preferred font size in points; labels that are too wide bring it down, not below 6.5
SLayout layout(const OrmColorScale::SRange& sRange, double fHeight, double fRoom, double fPointSize, const FnFont& fnFont);

/// How the numbers along one linear scale are written.
struct SNumberFormat
{
    int m_nExponent = 0;      ///< common power of ten, written behind as "e7"; only if m_bExponent
    int m_nDecimals = 0;      ///< digits behind the decimal point
    bool m_bExponent = false; ///< with a power of ten
};

/// The format for a linear scale between two ends with labels every fStep: plain decimals where the greater end is between 0.001 and
/// 10000, else one common exponent.
SNumberFormat formatFor(double fEnd1, double fEnd2, double fStep);

/// A number in a format; 0 is "0". No plus sign, no leading zeros in the exponent.
QString text(double fValue, const SNumberFormat& sFormat);

/// A number with so many figures, by the same rules.
QString text(double fValue, int nFigures);

/// The step of 1, 2 or 5 times a power of ten at or above a length; 1 for a length that is 0 or not finite.
double niceStep(double fLength);
} // namespace OrmColorBarTicks
