#include "COrmPalette.h"

#include "COrmLog.h"
#include "OrmColorTables.h"

#include <QSharedData>
#include <QString>

#include <algorithm>
#include <atomic>
#include <cmath>

/// What makes a table out of a colour table: its type, its ends in use and its order.
struct SPaletteTableKey
{
    ORM_COLORTABLE_TYPES m_eType = ORM_CT_GRAYS;
    float m_fLow = 0.0f;
    float m_fHigh = 1.0f;
    bool m_bReversed = false;

    bool operator==(const SPaletteTableKey& sOther) const
    {
        return m_eType == sOther.m_eType && m_fLow == sOther.m_fLow && m_fHigh == sOther.m_fHigh && m_bReversed == sOther.m_bReversed;
    }
};

class COrmPaletteTable : public QSharedData
{
public:
    SPaletteTableKey m_sKey;             ///< what the colours were made of
    OrmColorTables::Table m_arrColors{}; ///< from the lower to the upper end of the scale
};

namespace
{
std::atomic<quint64> nPaletteChanges{0};

void fillTable(COrmPaletteTable& objTable, const SPaletteTableKey& sKey)
{
    const OrmColorTables::Table& arrSource = OrmColorTables::table(sKey.m_eType);
    const bool bWhole = sKey.m_fLow <= 0.0f && sKey.m_fHigh >= 1.0f;
    const double fSpan = static_cast<double>(sKey.m_fHigh) - static_cast<double>(sKey.m_fLow);
    for (int i = 0; i < OrmColorTables::nTableSize; ++i)
    {
        const double fPosition = i / (OrmColorTables::nTableSize - 1.0);
        double fFraction = fPosition;
        if (!bWhole)
            fFraction = fSpan > 0.0 ? (fPosition - sKey.m_fLow) / fSpan : (fPosition < sKey.m_fLow ? 0.0 : 1.0);
        fFraction = std::clamp(fFraction, 0.0, 1.0);
        if (sKey.m_bReversed)
            fFraction = 1.0 - fFraction;
        const auto nEntry = static_cast<std::size_t>(i);
        objTable.m_arrColors[nEntry] = bWhole ? arrSource[sKey.m_bReversed ? arrSource.size() - 1 - nEntry : nEntry]
                                              : OrmColorTables::colorAt(sKey.m_eType, fFraction);
    }
    objTable.m_sKey = sKey;
}

/// The table of a palette as it is made, one for all.
COrmPaletteTable* defaultTable()
{
    static const QSharedDataPointer<COrmPaletteTable> pDefault = []
    {
        QSharedDataPointer<COrmPaletteTable> pTable(new COrmPaletteTable);
        fillTable(*pTable, SPaletteTableKey());
        return pTable;
    }();
    return const_cast<COrmPaletteTable*>(pDefault.constData());
}

/// The entry of a table for a place on the scale.
int entryAt(double fPosition)
{
    return OrmColorScale::toIndex(fPosition * (OrmColorTables::nTableSize - 1), OrmColorTables::nTableSize);
}

float clampedEnd(float fEnd, float fDefault)
{
    return std::isnan(fEnd) ? fDefault : std::clamp(fEnd, 0.0f, 1.0f);
}
} // namespace

COrmPalette::COrmPalette() : m_pTable(defaultTable()) {}

COrmPalette::COrmPalette(const COrmPalette& objOther) = default;
COrmPalette& COrmPalette::operator=(const COrmPalette& objOther) = default;
COrmPalette::~COrmPalette() = default;

void COrmPalette::SetImageMinMax(double fMin, double fMax)
{
    if (!std::isfinite(fMin) || !std::isfinite(fMax))
    {
        ORM_LOG(2, QStringLiteral("A colour scale from %1 to %2 was refused: its ends must be finite numbers.").arg(fMin).arg(fMax));
        return;
    }
    if (fMin == m_sRange.m_fMin && fMax == m_sRange.m_fMax)
        return;
    m_sRange.m_fMin = fMin;
    m_sRange.m_fMax = fMax;
    ++nPaletteChanges;
}

double COrmPalette::imageMin() const
{
    return m_sRange.m_fMin;
}

double COrmPalette::imageMax() const
{
    return m_sRange.m_fMax;
}

void COrmPalette::setColorTableType(ORM_COLORTABLE_TYPES eType, float fLow, float fHigh)
{
    m_eColorTableType = eType;
    m_fColorTableLow = fLow;
    m_fColorTableHigh = fHigh;
    setCLUTinfo();
}

void COrmPalette::setCLUTinfo()
{
    SPaletteTableKey sKey;
    sKey.m_eType = m_eColorTableType;
    sKey.m_fLow = clampedEnd(m_fColorTableLow, 0.0f);
    sKey.m_fHigh = std::max(sKey.m_fLow, clampedEnd(m_fColorTableHigh, 1.0f));
    sKey.m_bReversed = m_nReversed != 0;
    if (m_pTable.constData()->m_sKey == sKey)
        return;
    QSharedDataPointer<COrmPaletteTable> pTable(new COrmPaletteTable);
    fillTable(*pTable, sKey);
    if (pTable.constData()->m_arrColors != m_pTable.constData()->m_arrColors)
        ++nPaletteChanges;
    m_pTable = pTable;
}

void COrmPalette::setReversed(int nReversed)
{
    m_nReversed = nReversed;
    setCLUTinfo();
}

int COrmPalette::reversed() const
{
    return m_nReversed;
}

void COrmPalette::setLogScale(int nLogScale)
{
    m_nLogScale = nLogScale;
    const bool bLog = nLogScale != 0;
    if (bLog == m_sRange.m_bLog)
        return;
    m_sRange.m_bLog = bLog;
    ++nPaletteChanges;
}

int COrmPalette::logScale() const
{
    return m_nLogScale;
}

OrmColorScale::SRange COrmPalette::range() const
{
    return m_sRange;
}

double COrmPalette::position(double fValue) const
{
    return OrmColorScale::position(m_sRange, fValue);
}

bool COrmPalette::isBelowRange(double fValue) const
{
    return OrmColorScale::isBelow(m_sRange, fValue);
}

const QRgb* COrmPalette::lut() const
{
    return m_pTable.constData()->m_arrColors.data();
}

QRgb COrmPalette::colorForValue(double fValue) const
{
    return lut()[entryAt(position(fValue))];
}

void COrmPalette::colorsForValues(const float* pValues, qint64 nCount, QRgb* pColors) const
{
    const OrmColorScale::CPlaces objPlaces(m_sRange);
    const QRgb* pLut = lut();
    for (qint64 i = 0; i < nCount; ++i)
        pColors[i] = pLut[entryAt(objPlaces.position(static_cast<double>(pValues[i])))];
}

quint64 COrmPalette::changeCount()
{
    return nPaletteChanges;
}
