#pragma once

#include <QVector>

#include <vector>

/// Arithmetic of the axes of a plot, without any drawing.
namespace COrmXYPlotAxis
{
/// From one end of an axis to the other.
struct SRange
{
    double m_fLower = 0.0;
    double m_fUpper = 1.0;

    double width() const { return m_fUpper - m_fLower; }
    bool operator==(const SRange& sOther) const { return m_fLower == sOther.m_fLower && m_fUpper == sOther.m_fUpper; }
};

/// An axis as it is drawn.
struct SAxis
{
    SRange m_sRange;
    std::vector<double> m_vecTicks;      ///< with numbers, upwards
    std::vector<double> m_vecMinorTicks; ///< without
};

/// What the points of a plot range over. A point counts only if both of its numbers are finite.
struct SDataRanges
{
    SRange m_sX;
    SRange m_sY;
    SRange m_sYLogarithmic; ///< of the values that a logarithmic axis can show
    int m_nPoints = 0;
    int m_nLogarithmicPoints = 0; ///< of them, those that a logarithmic axis can show
    int m_nMissing = 0;           ///< points that do not count
    bool m_bWholeX = true;        ///< all x values are whole numbers

    void add(const QVector<double>& vecX, const QVector<double>& vecY);
    /// Whether the same axes fit.
    bool hasSameRanges(const SDataRanges& sOther) const { return m_sX == sOther.m_sX && m_sY == sOther.m_sY; }
};

/// Whether a logarithmic axis can show the value: above 0, and not beyond what its drawing can tell apart.
bool isLogarithmic(double fValue);

/// Lays out an x axis over data with room for nMostTicks labels. Ticks stand between the first and the last point only.
/// @param fStep wished step; where it gives too many labels, a multiple of it by 2, 5, 10, 20 ... is taken. 0 or less: a round step, at
/// least 1 for data at whole numbers.
/// @param bWhole whether all data stand at whole numbers
SAxis xAxis(const SRange& sData, double fStep, bool bWhole, int nMostTicks);
/// The ticks of an x axis of which only a part is shown.
std::vector<double> xTicks(const SRange& sShown, double fStep, bool bWhole, int nMostTicks);

/// Lays out a linear y axis over data: from a tick to a tick and a little beyond, so that points at the ends are seen whole.
/// @param bFromZero the axis begins at 0, or ends there where all data are below
SAxis yAxis(const SRange& sData, bool bFromZero, int nMostTicks);
/// The ticks of a linear axis of which only a part is shown: multiples of a round step.
std::vector<double> yTicks(const SRange& sShown, int nMostTicks);

/// Lays out a logarithmic axis over data above 0.
SAxis logarithmicAxis(const SRange& sData, int nMostTicks);
/// The same for a range that is shown as it is: powers of ten, and with room for more their multiples; in a range narrower than these,
/// round steps. The minor ticks, which have no numbers, tell the decades apart.
SAxis logarithmicTicks(const SRange& sShown, int nMostTicks);

// Zooming and moving, in the coordinate in which an axis is drawn evenly: its value, or its value's decimal logarithm.

/// The range after a change of its width by a factor around a place that stays where it is; never narrower than fNarrowest and never
/// beyond the whole.
SRange zoomed(const SRange& sShown, const SRange& sWhole, double fCentre, double fFactor, double fNarrowest);
/// The range moved, as far as the whole goes.
SRange moved(const SRange& sShown, const SRange& sWhole, double fBy);
} // namespace COrmXYPlotAxis
