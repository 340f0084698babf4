#pragma once

#include "ORM_COLORTABLE_TYPES.h"
#include "OrmColorScale.h"

#include <QRgb>
#include <QSharedDataPointer>

class COrmPaletteTable;

/// A colour table with the data range that it spans. A copy is a full, independent palette; the table itself is
/// shared until one of the two changes.
///
/// The ends of the table in use are fractions of the scale: below the low end everything has the table's first colour, above the high
/// end its last one, between them the whole table is stretched. Reversal flips the colours within this span. On a logarithmic scale the
/// fractions are fractions of the scale's length, too, so decades. Values at or below 0 have no logarithm: they get the lowest entry
/// and are told apart by isBelowRange().
class COrmPalette
{
public:
    /// Grays, whole table, range 0 to 1, linear, not reversed.
    COrmPalette();
    COrmPalette(const COrmPalette& objOther);
    COrmPalette& operator=(const COrmPalette& objOther);
    ~COrmPalette();

    ORM_COLORTABLE_TYPES m_eColorTableType = ORM_CT_GRAYS; ///< table type
    float m_fColorTableLow = 0.0f;                         ///< low end of the table in use, 0 to 1
    float m_fColorTableHigh = 1.0f;                        ///< high end of the table in use, 0 to 1

    /// Sets the data range that the table spans. A minimum above the maximum is taken as it is: the scale then runs downwards.
    /// A pair with an end that is not finite is refused and logged; the range stays.
    void SetImageMinMax(double fMin, double fMax);
    double imageMin() const;
    double imageMax() const;

    /// Stores type and ends, then calls setCLUTinfo().
    void setColorTableType(ORM_COLORTABLE_TYPES eType, float fLow, float fHigh);
    /// Rebuilds the table from the stored fields. Ends outside 0 .. 1 are clamped, ends in the wrong order are taken as the low end alone.
    void setCLUTinfo();
    ORM_COLORTABLE_TYPES colorTableType() const { return m_eColorTableType; }
    float getColorTableLow() const { return m_fColorTableLow; }
    float getColorTableHigh() const { return m_fColorTableHigh; }

    /// Colour order flag: any value but 0 reverses.
    void setReversed(int nReversed);
    int reversed() const;
    /// Log scale flag: any value but 0 switches the logarithmic scale on.
    void setLogScale(int nLogScale);
    int logScale() const;

    /// The data range with the kind of scale.
    OrmColorScale::SRange range() const;
    /// The place of a value on the scale, 0 to 1; see OrmColorScale::position().
    double position(double fValue) const;
    /// Whether a value lies below the range as drawn, has no logarithm on a logarithmic scale, or is not a number.
    bool isBelowRange(double fValue) const;
    /// The 256 colours of the scale from its lower to its upper end, after span and reversal. Valid until the palette changes or goes.
    const QRgb* lut() const;
    /// The entry of lut() for a value: the one nearest to position(fValue).
    QRgb colorForValue(double fValue) const;
    /// colorForValue() of each of nCount values, faster than one by one.
    void colorsForValues(const float* pValues, qint64 nCount, QRgb* pColors) const;

    /// Number of changes of range, scale or table of all palettes of the process. It moves only when a value really changes;
    /// making, copying and assigning palettes does not count.
    static quint64 changeCount();

private:
    OrmColorScale::SRange m_sRange;                ///< data range, linear or logarithmic
    int m_nReversed = 0;                           ///< as it was given
    int m_nLogScale = 0;                           ///< as it was given
    QSharedDataPointer<COrmPaletteTable> m_pTable; ///< the colours; never null
};
