#pragma once

/// Where a value stands on a colour scale. Palette, colour bar and tick labels all use these functions,
/// so that they cannot disagree.
namespace OrmColorScale
{
/// On a logarithmic scale an end that is not above 0 stands at this fraction of the other end.
constexpr double fLogFloor = 1e-3;

/// A data range and how it is spread over the scale. The minimum may lie above the maximum: the scale then runs downwards.
struct SRange
{
    double m_fMin = 0.0; ///< value at the lower end of the scale
    double m_fMax = 1.0; ///< value at the upper end
    bool m_bLog = false; ///< spread by the logarithm of the value
};

/// The range as it is really drawn. On a logarithmic scale an end at or below 0 is moved to a thousandth of the other end;
/// a range without any value above 0 has no logarithm and becomes linear.
SRange drawnRange(const SRange& sRange);

/// Whether both ends of the drawn range are the same value.
bool isPoint(const SRange& sRange);

/// A range prepared for finding the places of many values.
class CPlaces
{
public:
    explicit CPlaces(const SRange& sRange);
    /// The same as OrmColorScale::position() of the range.
    double position(double fValue) const;

private:
    SRange m_sDrawn;      ///< as drawn
    double m_fWidth;      ///< of the range, or the logarithm of the quotient of its ends
    double m_fWithoutLog; ///< place of a value without a logarithm
};

/// The place of a value on the scale, 0 at the lower end, 1 at the upper, clamped. Linear: (v - min) / (max - min);
/// logarithmic: log(v / min) / log(max / min), 0 for a value at or below 0 (1 where the scale runs downwards).
/// On a scale of one value this value stands at 0.5, smaller ones at 0, greater ones at 1. Not a number gives 0.
double position(const SRange& sRange, double fValue);

/// The value at a place on the scale, the reverse of position().
double valueAt(const SRange& sRange, double fPosition);

/// Whether a value has no place of its own on the scale because it lies below the drawn range or is not a number. It is
/// drawn in the scale's lowest colour; whoever draws may leave it out instead.
bool isBelow(const SRange& sRange, double fValue);

/// A float as an index 0 .. nCount - 1, rounded to the nearest and clamped. Not a number gives 0.
int toIndex(double fValue, int nCount);
} // namespace OrmColorScale
