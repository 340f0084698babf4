#include "COrmXYPlotAxis.h"

#include "OrmColorBarTicks.h"

#include <algorithm>
#include <cmath>

namespace COrmXYPlotAxis
{
namespace
{
constexpr double fFewSteps = 20.0; ///< up to here points stand in the middle of a step's width
constexpr double fEdgePart = 0.02; ///< of the range, kept free at both ends otherwise
} // namespace

SXAxis layout(double fMin, double fMax, double fStep, bool bWhole, int nMostTicks)
{
    const double fRange = fMax - fMin;
    const double fMost = std::max(1, nMostTicks);
    double fWished = fStep;
    if (!(fWished > 0.0) || !std::isfinite(fWished))
    {
        fWished = OrmColorBarTicks::niceStep(fRange > 0.0 ? fRange / fMost : 1.0);
        if (bWhole)
            fWished = std::max(1.0, fWished);
    }
    const double fExcess = fRange / fWished / fMost;
    SXAxis sAxis;
    sAxis.m_fStep = fExcess > 1.0 ? fWished * OrmColorBarTicks::niceStep(fExcess) : fWished;
    const double fEdge = fRange <= fFewSteps * fWished ? fWished / 2.0 : fRange * fEdgePart;
    sAxis.m_fLower = fMin - fEdge;
    sAxis.m_fUpper = fMax + fEdge;
    const double fFirst = std::ceil(fMin / sAxis.m_fStep - 1e-6);
    const double fLast = std::floor(fMax / sAxis.m_fStep + 1e-6);
    sAxis.m_fFirst = fFirst * sAxis.m_fStep;
    sAxis.m_nTicks = static_cast<int>(std::clamp(fLast - fFirst + 1.0, 0.0, fMost + 1.0));
    return sAxis;
}
} // namespace COrmXYPlotAxis
