#pragma once

/// Arithmetic of the x axis of a plot, without any drawing.
namespace COrmXYPlotAxis
{
/// The x axis of a plot.
struct SXAxis
{
    double m_fLower = 0.0; ///< value at the left edge
    double m_fUpper = 1.0; ///< value at the right edge
    double m_fFirst = 0.0; ///< first tick
    double m_fStep = 1.0;  ///< between ticks
    int m_nTicks = 0;      ///< number of ticks
};

/// Lays out an x axis over data from fMin to fMax with room for nMostTicks labels.
/// @param fStep wished step; where it gives too many labels, a multiple of it by 2, 5, 10, 20 ... is taken. 0 or less: a round step, at
/// least 1
///              for data at whole numbers.
/// @param bWhole whether all data stand at whole numbers
SXAxis layout(double fMin, double fMax, double fStep, bool bWhole, int nMostTicks);
} // namespace COrmXYPlotAxis
