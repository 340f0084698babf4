#include "ColorRangeMath.h"

#include <cmath>
#include <limits>

namespace ColorRangeMath
{
int toInt(double fValue)
{
    if (std::isnan(fValue))
    {
        return 0;
    }
    if (fValue <= static_cast<double>(std::numeric_limits<int>::min()))
    {
        return std::numeric_limits<int>::min();
    }
    if (fValue >= static_cast<double>(std::numeric_limits<int>::max()))
    {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(fValue);
}

int lowerPosition(float fMinimum, float fLow, float fHigh)
{
    return toInt((fMinimum - fLow) / (fHigh - fLow) * 100.0f);
}

int upperPosition(float fMaximum, float fLow, float fHigh)
{
    return toInt(100.0f - (fHigh - fMaximum) / (fHigh - fLow) * 100.0f);
}

int lowerPositionOfTyped(double fMinimum, float fLow, float fHigh)
{
    const float fWidth = fHigh - fLow;
    return toInt((fMinimum - fLow) / fWidth * 100.0);
}

int upperPositionOfTyped(double fMaximum, float fLow, float fHigh)
{
    const float fWidth = fHigh - fLow;
    return toInt(100.0 - (fHigh - fMaximum) / fWidth * 100.0);
}

float valueAt(int nPosition, float fLow, float fHigh)
{
    return (fHigh - fLow) * static_cast<float>(nPosition) / static_cast<float>(s_nPositions);
}

float storedValueAt(int nPosition, float fLow, float fHigh)
{
    const float fValue = valueAt(nPosition, fLow, fHigh);
    return fValue < fLow ? fLow : fValue;
}

float minimumStep(int nKind, float fLow, float fHigh)
{
    return (fHigh - fLow) / (nKind == 0 ? 1000.0f : 100.0f);
}

float maximumStep(int nKind, float fLow, float fHigh, float fHighestValue)
{
    float fFactor = 10.0f * fHigh / fHighestValue;
    if (fFactor < 1.0f)
    {
        fFactor = 1.0f;
    }
    return minimumStep(nKind, fLow, fHigh) * fFactor;
}

double maximumStepOfTyped(double fMaximum)
{
    const double fStep = fMaximum / 50.0;
    return fStep < 1.0 ? 1.0 : fStep;
}

int positionOfFraction(float fFraction, float fRange)
{
    return toInt(fFraction * fRange);
}

float fractionOfPosition(int nPosition, float fRange)
{
    return static_cast<float>(nPosition) / fRange;
}
} // namespace ColorRangeMath
