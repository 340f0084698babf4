#include "OrmColorBarTicks.h"

#include <algorithm>
#include <cmath>

namespace OrmColorBarTicks
{
namespace
{
constexpr double fSmallestPointSize = 6.5; ///< below it digits cannot be told apart
constexpr double fPointSizeStep = 0.5;
constexpr double fMostLinearSteps = 8.0;
constexpr double fLinearSpacing = 2.2;    ///< in label heights, between the labels of a linear scale
constexpr double fLogSpacing = 1.15;      ///< in label heights, between neighbours on a logarithmic scale
constexpr double fDecadeSpacing = 1.3;    ///< in label heights, where decades are left out
constexpr double fCrowded = 1.1;          ///< in label heights; linear ticks on a logarithmic scale that come nearer are dropped
constexpr double fDecadeWithMarks = 20.0; ///< pixels of a decade that has marks at 2 .. 9
constexpr int nPlainExponent = 3;         ///< exponents from -3 to 3 are written out
constexpr int nEndFigures = 2;            ///< figures of the labels at the ends
constexpr int nMostEndFigures = 8;        ///< more would not be read; floats hold no more
constexpr int nPointFigures = 4;          ///< figures of the one label of a scale of one value
constexpr int nMostTicks = 64;            ///< of a linear scale; the spacing allows far fewer

/// What all ways of labelling a bar need to know.
struct SBar
{
    OrmColorScale::SRange m_sRange; ///< as drawn
    double m_fHeight;
    double m_fRoom;
    const SFont& m_sFont;

    double low() const { return std::min(m_sRange.m_fMin, m_sRange.m_fMax); }
    double high() const { return std::max(m_sRange.m_fMin, m_sRange.m_fMax); }
    double labelHeight() const { return m_sFont.m_fAscent + 2.0; }
    bool fits(const QString& strLabel) const { return m_sFont.m_fnWidth(strLabel) <= m_fRoom; }
};

/// Power of ten of a number above 0.
int exponentOf(double fValue)
{
    return static_cast<int>(std::floor(std::log10(fValue) + 1e-12));
}

bool isPlain(int nExponent)
{
    return nExponent >= -nPlainExponent && nExponent <= nPlainExponent;
}

STick tickAt(const SBar& sBar, double fPosition, const QString& strLabel)
{
    STick sTick;
    sTick.m_fPosition = fPosition;
    sTick.m_fBaseline = std::max(0.0, fPosition * sBar.m_fHeight - sBar.m_sFont.m_fDigitHeight / 2.0);
    sTick.m_strLabel = strLabel;
    return sTick;
}

STick tickFor(const SBar& sBar, double fValue, const QString& strLabel)
{
    return tickAt(sBar, OrmColorScale::position(sBar.m_sRange, fValue), strLabel);
}

/// One label in the middle, with as many figures as have room.
std::vector<STick> middleTick(const SBar& sBar, double fValue, int nFigures)
{
    for (int n = nFigures; n >= 1; --n)
    {
        const QString strLabel = text(fValue, n);
        if (sBar.fits(strLabel))
            return {tickAt(sBar, 0.5, strLabel)};
    }
    return {};
}

/// Both ends with two figures, with more only where they would read alike, with fewer where there is no room. The lower one
/// needs a bar that is as high as a label.
std::vector<STick> endTicks(const SBar& sBar)
{
    QString strMin;
    QString strMax;
    for (int n = 1; n <= nMostEndFigures; ++n)
    {
        const QString strNextMin = text(sBar.m_sRange.m_fMin, n);
        const QString strNextMax = text(sBar.m_sRange.m_fMax, n);
        if (!sBar.fits(strNextMin) || !sBar.fits(strNextMax))
            break;
        strMin = strNextMin;
        strMax = strNextMax;
        if (n >= nEndFigures && strMin != strMax)
            break;
    }
    if (strMin.isEmpty())
        return {};
    if (strMin == strMax)
        return {tickAt(sBar, 0.5, strMin)};
    std::vector<STick> vecTicks;
    if (sBar.m_fHeight >= sBar.labelHeight())
        vecTicks.push_back(tickAt(sBar, 0.0, strMin));
    vecTicks.push_back(tickAt(sBar, 1.0, strMax));
    return vecTicks;
}

/// Multiples of a round step; on a logarithmic scale at their places there.
std::vector<STick> roundTicks(const SBar& sBar)
{
    const double fSteps = std::clamp(sBar.m_fHeight / (fLinearSpacing * sBar.labelHeight()), 1.0, fMostLinearSteps);
    const double fStep = niceStep((sBar.high() - sBar.low()) / fSteps);
    const SNumberFormat sFormat = formatFor(sBar.low(), sBar.high(), fStep);
    const double fFirst = std::ceil(sBar.low() / fStep - 1e-6);
    const double fLast = std::floor(sBar.high() / fStep + 1e-6);
    std::vector<STick> vecTicks;
    for (int i = 0; i < nMostTicks && fFirst + i <= fLast; ++i)
    {
        const double fValue = (fFirst + i) * fStep;
        vecTicks.push_back(tickFor(sBar, fValue, text(fValue, sFormat)));
    }
    return vecTicks;
}

/// Labels at 1, 2, 5 or 1, 3 or 1 of each decade, or at every m-th decade, whatever is the densest with room; marks between them.
std::vector<STick> decadeTicks(const SBar& sBar)
{
    const double fLow = std::log10(sBar.low());
    const double fHigh = std::log10(sBar.high());
    const double fDecade = sBar.m_fHeight / (fHigh - fLow); // pixels
    const double fLabel = sBar.labelHeight();
    const bool bPlain = isPlain(exponentOf(sBar.low())) && isPlain(exponentOf(sBar.high()));

    std::vector<int> vecLabelled = {1};
    int nEvery = 1;
    if (std::log10(2.0) * fDecade >= fLogSpacing * fLabel)
        vecLabelled = {1, 2, 5};
    else if (std::log10(3.0) * fDecade >= fLogSpacing * fLabel)
        vecLabelled = {1, 3};
    else if (fDecade < fLogSpacing * fLabel)
        nEvery = static_cast<int>(std::ceil(fDecadeSpacing * fLabel / fDecade));

    constexpr double fTolerance = 1e-9; // in decades, for ends that are tick values themselves
    std::vector<STick> vecTicks;
    for (int nExponent = static_cast<int>(std::floor(fLow)); nExponent <= static_cast<int>(std::floor(fHigh + fTolerance)); ++nExponent)
    {
        for (int nDigit = 1; nDigit <= 9; ++nDigit)
        {
            const double fPlace = nExponent + std::log10(static_cast<double>(nDigit));
            if (fPlace < fLow - fTolerance || fPlace > fHigh + fTolerance)
                continue;
            const bool bLabelled =
                nExponent % nEvery == 0 && std::find(vecLabelled.begin(), vecLabelled.end(), nDigit) != vecLabelled.end();
            if (!bLabelled && (nDigit == 1 || fDecade < fDecadeWithMarks))
                continue;
            const double fValue = nDigit * std::pow(10.0, nExponent);
            const SNumberFormat sFormat = {nExponent, bPlain ? std::max(0, -nExponent) : 0, !bPlain};
            vecTicks.push_back(tickFor(sBar, fValue, bLabelled ? text(fValue, sFormat) : QString()));
        }
    }
    return vecTicks;
}

int labelCount(const std::vector<STick>& vecTicks)
{
    return static_cast<int>(
        std::count_if(vecTicks.begin(), vecTicks.end(), [](const STick& sTick) { return !sTick.m_strLabel.isEmpty(); }));
}

void sortByPosition(std::vector<STick>& vecTicks)
{
    std::sort(vecTicks.begin(), vecTicks.end(), [](const STick& s1, const STick& s2) { return s1.m_fPosition < s2.m_fPosition; });
}

/// Drops labelled ticks that come nearer than so many pixels to the one below.
void dropCrowded(std::vector<STick>& vecTicks, double fHeight, double fDistance)
{
    std::vector<STick> vecKept;
    for (const STick& sTick : vecTicks)
    {
        if (vecKept.empty() || (sTick.m_fPosition - vecKept.back().m_fPosition) * fHeight >= fDistance)
            vecKept.push_back(sTick);
    }
    vecTicks = std::move(vecKept);
}

std::vector<STick> ticksWithFont(const SBar& sBar)
{
    std::vector<STick> vecTicks;
    if (sBar.m_sRange.m_bLog && sBar.high() >= 10.0 * sBar.low())
    {
        vecTicks = decadeTicks(sBar);
        sortByPosition(vecTicks);
    }
    else
    {
        vecTicks = roundTicks(sBar);
        sortByPosition(vecTicks);
        dropCrowded(vecTicks, sBar.m_fHeight, fCrowded * sBar.labelHeight());
    }
    return labelCount(vecTicks) < 2 ? endTicks(sBar) : vecTicks;
}

/// Significant figures of a number: its decimal mantissa and exponent after rounding.
struct SDecimal
{
    double m_fMantissa;
    int m_nExponent;
};

SDecimal rounded(double fValue, int nFigures)
{
    const QString strNumber = QString::number(fValue, 'e', nFigures - 1);
    const int nSplit = strNumber.indexOf(QLatin1Char('e'));
    return {strNumber.leftRef(nSplit).toDouble(), strNumber.midRef(nSplit + 1).toInt()};
}

/// Takes zeros behind the decimal point away.
QString trimmed(QString strNumber)
{
    if (!strNumber.contains(QLatin1Char('.')))
        return strNumber;
    while (strNumber.endsWith(QLatin1Char('0')))
        strNumber.chop(1);
    if (strNumber.endsWith(QLatin1Char('.')))
        strNumber.chop(1);
    return strNumber;
}
} // namespace

double niceStep(double fLength)
{
    if (!(fLength > 0.0) || !std::isfinite(fLength))
        return 1.0;
    const double fPower = std::pow(10.0, exponentOf(fLength));
    for (const double fFactor : {1.0, 2.0, 5.0})
    {
        if (fFactor * fPower >= fLength * (1.0 - 1e-9))
            return fFactor * fPower;
    }
    return 10.0 * fPower;
}

SNumberFormat formatFor(double fEnd1, double fEnd2, double fStep)
{
    SNumberFormat sFormat;
    const double fGreater = std::max(std::fabs(fEnd1), std::fabs(fEnd2));
    if (!(fGreater > 0.0) || !std::isfinite(fGreater) || !(fStep > 0.0) || !std::isfinite(fStep))
        return sFormat;
    sFormat.m_nExponent = exponentOf(fGreater);
    sFormat.m_bExponent = !isPlain(sFormat.m_nExponent);
    sFormat.m_nDecimals = std::max(0, (sFormat.m_bExponent ? sFormat.m_nExponent : 0) - exponentOf(fStep));
    return sFormat;
}

QString text(double fValue, const SNumberFormat& sFormat)
{
    const double fMantissa = sFormat.m_bExponent ? fValue / std::pow(10.0, sFormat.m_nExponent) : fValue;
    const QString strNumber = QString::number(fMantissa, 'f', sFormat.m_nDecimals);
    if (strNumber.toDouble() == 0.0)
        return QStringLiteral("0");
    return sFormat.m_bExponent ? strNumber + QLatin1Char('e') + QString::number(sFormat.m_nExponent) : strNumber;
}

QString text(double fValue, int nFigures)
{
    if (fValue == 0.0 || !std::isfinite(fValue))
        return fValue == 0.0 ? QStringLiteral("0") : QString::number(fValue);
    const int nDigits = std::max(1, nFigures);
    const SDecimal sDecimal = rounded(fValue, nDigits);
    if (!isPlain(sDecimal.m_nExponent))
        return trimmed(QString::number(sDecimal.m_fMantissa, 'f', nDigits - 1)) + QLatin1Char('e') + QString::number(sDecimal.m_nExponent);
    const double fRounded = sDecimal.m_fMantissa * std::pow(10.0, sDecimal.m_nExponent);
    return trimmed(QString::number(fRounded, 'f', std::max(0, nDigits - 1 - sDecimal.m_nExponent)));
}

SLayout layout(const OrmColorScale::SRange& sRange, double fHeight, double fRoom, double fPointSize, const FnFont& fnFont)
{
    SLayout sLayout;
    const OrmColorScale::SRange sDrawn = OrmColorScale::drawnRange(sRange);
    for (double fSize = fPointSize;; fSize = std::max(fSmallestPointSize, fSize - fPointSizeStep))
    {
        const SFont sFont = fnFont(fSize);
        const SBar sBar{sDrawn, fHeight, fRoom, sFont};
        sLayout.m_fPointSize = fSize;
        if (sDrawn.m_fMin == sDrawn.m_fMax)
        {
            sLayout.m_vecTicks = middleTick(sBar, sDrawn.m_fMin, nPointFigures);
            return sLayout;
        }
        sLayout.m_vecTicks = ticksWithFont(sBar);
        const auto fnFits = [&sBar](const STick& sTick) { return sBar.fits(sTick.m_strLabel); };
        if (std::all_of(sLayout.m_vecTicks.begin(), sLayout.m_vecTicks.end(), fnFits))
            return sLayout;
        if (fSize <= fSmallestPointSize)
        {
            sLayout.m_vecTicks = endTicks(sBar);
            return sLayout;
        }
    }
}
} // namespace OrmColorBarTicks
