#pragma once

#include "COrmPalette.h"
#include "OrmColorScale.h"
#include "SVolumeLook.h"

#include <QtGlobal>

#include <cstring>
#include <vector>

/// The colours of voxels: an entry of the palette's table and an opacity. Neither turns back while values rise, so that two values of the
/// same colour have it for all between them: the colours are computed for the ends of small ranges of values, and for a value itself
/// only where the ends of its range differ.
class CVoxelColors
{
public:
    /// @param sDrawn       the values that colours are asked for
    /// @param fOpacityRate the opacity of a value v is 1 - exp(fOpacityRate * v)
    CVoxelColors(const COrmPalette& objPalette, const SDrawnValues& sDrawn, double fOpacityRate);

    /// Writes red, green, blue, alpha of a value.
    void write(float fValue, quint8* pColor) const
    {
        const int nInRange = m_vecColors[(bitsOf(fValue) - m_nFirst) >> m_nShift];
        const int nColor = nInRange >= 0 ? nInRange : compute(fValue);
        const QRgb nEntry = m_objPalette.lut()[nColor / nOpacities];
        pColor[0] = static_cast<quint8>(qRed(nEntry));
        pColor[1] = static_cast<quint8>(qGreen(nEntry));
        pColor[2] = static_cast<quint8>(qBlue(nEntry));
        pColor[3] = static_cast<quint8>(nColor % nOpacities);
    }

private:
    static constexpr int nOpacities = 256;

    /// A number that rises with the value, for values from 0 on.
    static quint32 bitsOf(float fValue)
    {
        quint32 nBits = 0;
        std::memcpy(&nBits, &fValue, sizeof nBits);
        return nBits;
    }
    int compute(float fValue) const;

    COrmPalette m_objPalette;
    OrmColorScale::CPlaces m_objPlaces;
    double m_fOpacityRate;
    quint32 m_nFirst;             ///< bits of the least value
    int m_nShift = 0;             ///< a range is that many bits wide
    std::vector<int> m_vecColors; ///< entry * nOpacities + opacity of each range; -1 for one of several colours
};
