// This product includes color specifications and designs developed by Cynthia Brewer (http://colorbrewer.org/).
// Sources, authors and licences of all tables: ../COLORTABLES.md

#include "OrmColorTables.h"

#include "OrmColorScale.h"
#include "OrmTurboTable.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{
/// A table that is offered for volumes.
struct SVolumeTable
{
    const char* m_pName;
    ORM_COLORTABLE_TYPES m_eType;
};

/// In the order of the lists that show them; the types of 9 and 10 are not in the order of their numbers.
constexpr SVolumeTable arrVolumeTables[OrmColorTables::nVolumeTables] = {{"Grays", ORM_CT_GRAYS},
                                                                         {"Red", ORM_CT_RED},
                                                                         {"Green", ORM_CT_GREEN},
                                                                         {"Blue", ORM_CT_BLUE},
                                                                         {"Cyan", ORM_CT_CYAN},
                                                                         {"Yellow", ORM_CT_YELLOW},
                                                                         {"Magenta", ORM_CT_MAGENTA},
                                                                         {"Orange", ORM_CT_ORANGE},
                                                                         {"BlueYellow", ORM_CT_BLUEYELLOW},
                                                                         {"EosB", ORM_CT_EOSB},
                                                                         {"GreenPink", ORM_CT_GREENPINK},
                                                                         {"Rainbow", ORM_CT_RAINBOW},
                                                                         {"Jet", ORM_CT_JET}};

constexpr double fGamma = 2.2; ///< display gamma by which the ramps from black are linear in light

/// Three channels as fractions of full intensity.
struct SColor
{
    double m_fR;
    double m_fG;
    double m_fB;
};

QRgb toRgb(const SColor& sColor)
{
    return qRgb(OrmColorScale::toIndex(sColor.m_fR * 255.0, 256), OrmColorScale::toIndex(sColor.m_fG * 255.0, 256),
                OrmColorScale::toIndex(sColor.m_fB * 255.0, 256));
}

SColor fromRgb(QRgb nColor)
{
    return {qRed(nColor) / 255.0, qGreen(nColor) / 255.0, qBlue(nColor) / 255.0};
}

SColor mix(const SColor& s1, const SColor& s2, double fFraction)
{
    return {s1.m_fR + (s2.m_fR - s1.m_fR) * fFraction, s1.m_fG + (s2.m_fG - s1.m_fG) * fFraction,
            s1.m_fB + (s2.m_fB - s1.m_fB) * fFraction};
}

// ---- CIELAB, D65, of sRGB (IEC 61966-2-1; CIE 15) ------------------------------------------------------------------

double linearFromCode(double fCode)
{
    return fCode <= 0.04045 ? fCode / 12.92 : std::pow((fCode + 0.055) / 1.055, 2.4);
}

double codeFromLinear(double fLinear)
{
    const double fLight = std::clamp(fLinear, 0.0, 1.0);
    return fLight <= 0.0031308 ? 12.92 * fLight : 1.055 * std::pow(fLight, 1.0 / 2.4) - 0.055;
}

constexpr double fLabDelta = 6.0 / 29.0;
constexpr SColor sWhite = {0.95047, 1.0, 1.08883};

double labForward(double fT)
{
    return fT > fLabDelta * fLabDelta * fLabDelta ? std::cbrt(fT) : fT / (3.0 * fLabDelta * fLabDelta) + 4.0 / 29.0;
}

double labBackward(double fT)
{
    return fT > fLabDelta ? fT * fT * fT : 3.0 * fLabDelta * fLabDelta * (fT - 4.0 / 29.0);
}

/// L, a, b in the three places.
SColor labFromColor(const SColor& sColor)
{
    const double fR = linearFromCode(sColor.m_fR);
    const double fG = linearFromCode(sColor.m_fG);
    const double fB = linearFromCode(sColor.m_fB);
    const double fX = labForward((0.4124564 * fR + 0.3575761 * fG + 0.1804375 * fB) / sWhite.m_fR);
    const double fY = labForward((0.2126729 * fR + 0.7151522 * fG + 0.0721750 * fB) / sWhite.m_fG);
    const double fZ = labForward((0.0193339 * fR + 0.1191920 * fG + 0.9503041 * fB) / sWhite.m_fB);
    return {116.0 * fY - 16.0, 500.0 * (fX - fY), 200.0 * (fY - fZ)};
}

SColor colorFromLab(const SColor& sLab)
{
    const double fRootY = (sLab.m_fR + 16.0) / 116.0;
    const double fX = labBackward(fRootY + sLab.m_fG / 500.0) * sWhite.m_fR;
    const double fY = labBackward(fRootY) * sWhite.m_fG;
    const double fZ = labBackward(fRootY - sLab.m_fB / 200.0) * sWhite.m_fB;
    return {codeFromLinear(3.2404542 * fX - 1.5371385 * fY - 0.4985314 * fZ),
            codeFromLinear(-0.9692660 * fX + 1.8760108 * fY + 0.0415560 * fZ),
            codeFromLinear(0.0556434 * fX - 0.2040259 * fY + 1.0572252 * fZ)};
}

// ---- Tables by kind -------------------------------------------------------------------------------------------------

/// A ramp from black to a colour, linear in light.
SColor ramp(const SColor& sEnd, double fT)
{
    const double fCode = std::pow(fT, 1.0 / fGamma);
    return {sEnd.m_fR * fCode, sEnd.m_fG * fCode, sEnd.m_fB * fCode};
}

/// The hues from blue (240 degrees) to red (0) at full saturation and value.
SColor rainbow(double fT)
{
    const double fHue = (1.0 - fT) * 4.0; // in sixths of the circle
    const auto fnChannel = [fHue](double fCentre) { return std::clamp(2.0 - std::fabs(fHue - fCentre), 0.0, 1.0); };
    return {std::clamp(2.0 - fHue, 0.0, 1.0), fnChannel(2.0), fnChannel(4.0)};
}

/// Piecewise linear: dark blue, blue, cyan, yellow, red, dark red.
SColor jet(double fT)
{
    const auto fnChannel = [fT](double fCentre) { return std::clamp(1.5 - std::fabs(4.0 * fT - fCentre), 0.0, 1.0); };
    return {fnChannel(3.0), fnChannel(2.0), fnChannel(1.0)};
}

/// Anchor colours at even distances, interpolated in CIELAB.
SColor throughAnchors(const std::vector<QRgb>& vecAnchors, double fT)
{
    const double fPlace = fT * static_cast<double>(vecAnchors.size() - 1);
    const auto nFirst = static_cast<std::size_t>(OrmColorScale::toIndex(std::floor(fPlace), static_cast<int>(vecAnchors.size()) - 1));
    const SColor sLab =
        mix(labFromColor(fromRgb(vecAnchors[nFirst])), labFromColor(fromRgb(vecAnchors[nFirst + 1])), fPlace - static_cast<double>(nFirst));
    return colorFromLab(sLab);
}

/// The part of Turbo from dark blue to red, without its almost black first and its dark last entries.
SColor turboSection(double fT)
{
    constexpr int nFirst = 4;
    constexpr int nLast = 224;
    const double fPlace = nFirst + fT * (nLast - nFirst);
    const int nEntry = OrmColorScale::toIndex(std::floor(fPlace), nLast);
    return mix(fromRgb(arrTurboTable[nEntry]), fromRgb(arrTurboTable[nEntry + 1]), fPlace - nEntry);
}

/// ColorBrewer "YlGnBu", 9 classes, from its dark to its light end.
const std::vector<QRgb>& blueYellowAnchors()
{
    static const std::vector<QRgb> vecAnchors = {0xff081d58, 0xff253494, 0xff225ea8, 0xff1d91c0, 0xff41b6c4,
                                                 0xff7fcdbb, 0xffc7e9b4, 0xffedf8b1, 0xffffffd9};
    return vecAnchors;
}

/// ColorBrewer "PiYG", 11 classes, from its green to its pink end.
const std::vector<QRgb>& greenPinkAnchors()
{
    static const std::vector<QRgb> vecAnchors = {0xff276419, 0xff4d9221, 0xff7fbc41, 0xffb8e186, 0xffe6f5d0, 0xfff7f7f7,
                                                 0xfffde0ef, 0xfff1b6da, 0xffde77ae, 0xffc51b7d, 0xff8e0152};
    return vecAnchors;
}

SColor colorByFormula(ORM_COLORTABLE_TYPES eType, double fT)
{
    switch (eType)
    {
    case ORM_CT_GRAYS:
        return ramp({1.0, 1.0, 1.0}, fT);
    case ORM_CT_RAINBOW:
        return rainbow(fT);
    case ORM_CT_SURFACE:
        return mix({0.62, 0.62, 0.66}, {1.0, 1.0, 1.0}, fT);
    case ORM_CT_RED:
        return ramp({1.0, 0.0, 0.0}, fT);
    case ORM_CT_GREEN:
        return ramp({0.0, 1.0, 0.0}, fT);
    case ORM_CT_BLUE:
        return ramp({0.0, 0.0, 1.0}, fT);
    case ORM_CT_CYAN:
        return ramp({0.0, 1.0, 1.0}, fT);
    case ORM_CT_YELLOW:
        return ramp({1.0, 1.0, 0.0}, fT);
    case ORM_CT_MAGENTA:
        return ramp({1.0, 0.0, 1.0}, fT);
    case ORM_CT_ORANGE:
        return ramp({1.0, 0.5, 0.0}, fT);
    case ORM_CT_BLUEYELLOW:
        return throughAnchors(blueYellowAnchors(), fT);
    case ORM_CT_GREENPINK:
        return throughAnchors(greenPinkAnchors(), fT);
    case ORM_CT_EOSB:
        return turboSection(fT);
    case ORM_CT_JET:
        return jet(fT);
    }
    return ramp({1.0, 1.0, 1.0}, fT);
}

OrmColorTables::Table makeTable(ORM_COLORTABLE_TYPES eType)
{
    OrmColorTables::Table arrTable{};
    for (int i = 0; i < OrmColorTables::nTableSize; ++i)
        arrTable[static_cast<std::size_t>(i)] = toRgb(colorByFormula(eType, i / (OrmColorTables::nTableSize - 1.0)));
    return arrTable;
}
} // namespace

QString getCTNameForColorTable(ORM_COLORTABLE_TYPES eType)
{
    if (eType == ORM_CT_SURFACE)
        return QStringLiteral("Surface");
    const int nPosition = OrmColorTables::positionForType(eType);
    return nPosition < 0 ? QString() : QString::fromLatin1(arrVolumeTables[nPosition].m_pName);
}

namespace OrmColorTables
{
QStringList volumeTableNames()
{
    QStringList lstNames;
    for (const SVolumeTable& sTable : arrVolumeTables)
        lstNames.append(QString::fromLatin1(sTable.m_pName));
    return lstNames;
}

ORM_COLORTABLE_TYPES typeForPosition(int nPosition)
{
    return nPosition >= 0 && nPosition < nVolumeTables ? arrVolumeTables[nPosition].m_eType : ORM_CT_RED;
}

int positionForType(ORM_COLORTABLE_TYPES eType)
{
    for (int i = 0; i < nVolumeTables; ++i)
    {
        if (arrVolumeTables[i].m_eType == eType)
            return i;
    }
    return -1;
}

bool isKnownType(ORM_COLORTABLE_TYPES eType)
{
    return eType == ORM_CT_SURFACE || positionForType(eType) >= 0;
}

const Table& table(ORM_COLORTABLE_TYPES eType)
{
    static const Table arrSurface = makeTable(ORM_CT_SURFACE);
    static const std::array<Table, nVolumeTables> arrTables = []
    {
        std::array<Table, nVolumeTables> arrMade{};
        for (int i = 0; i < nVolumeTables; ++i)
            arrMade[static_cast<std::size_t>(i)] = makeTable(typeForPosition(i));
        return arrMade;
    }();
    if (eType == ORM_CT_SURFACE)
        return arrSurface;
    return arrTables[static_cast<std::size_t>(std::max(0, positionForType(eType)))];
}

QRgb colorAt(ORM_COLORTABLE_TYPES eType, double fFraction)
{
    const Table& arrTable = table(eType);
    const double fPlace = fFraction > 0.0 ? std::min(fFraction, 1.0) * (nTableSize - 1) : 0.0;
    const int nEntry = OrmColorScale::toIndex(std::floor(fPlace), nTableSize - 1);
    const auto nFirst = static_cast<std::size_t>(nEntry);
    return toRgb(mix(fromRgb(arrTable[nFirst]), fromRgb(arrTable[nFirst + 1]), fPlace - nEntry));
}
} // namespace OrmColorTables
