#include "COrmPalettePixmapView.h"

#include "OrmColorTables.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
float clampedFraction(float fFraction)
{
    return fFraction > 0.0f ? std::min(fFraction, 1.0f) : 0.0f;
}
} // namespace

COrmPalettePixmapView::COrmPalettePixmapView(QWidget* pParent) : QWidget(pParent), m_eType(ORM_CT_GRAYS)
{
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Color table"));
    updateDescription();
}

COrmPalettePixmapView::~COrmPalettePixmapView() = default;

void COrmPalettePixmapView::setPaletteCT(ORM_COLORTABLE_TYPES eType, float fLow, float fHigh)
{
    m_eType = eType;
    m_fLow = clampedFraction(fLow);
    m_fHigh = clampedFraction(fHigh);
    updateDescription();
    update();
}

void COrmPalettePixmapView::setPaletteCTReverse(bool bReverse)
{
    m_bReverse = bReverse;
    updateDescription();
    update();
}

QSize COrmPalettePixmapView::sizeHint() const
{
    return {160, 20};
}

QSize COrmPalettePixmapView::minimumSizeHint() const
{
    return {20, 8};
}

void COrmPalettePixmapView::paintEvent(QPaintEvent* /*pEvent*/)
{
    // One image column for each column of the device, so that no colour is made by scaling.
    const int nColumns = std::max(1, static_cast<int>(std::lround(width() * devicePixelRatioF())));
    QImage imgRow(nColumns, 1, QImage::Format_RGB32);
    auto* pRow = reinterpret_cast<QRgb*>(imgRow.scanLine(0));
    for (int i = 0; i < nColumns; ++i)
    {
        const double fAlong = nColumns > 1 ? static_cast<double>(i) / (nColumns - 1) : 0.0;
        const double fFraction = m_fLow + (m_fHigh - m_fLow) * (m_bReverse ? 1.0 - fAlong : fAlong);
        pRow[i] = OrmColorTables::colorAt(m_eType, fFraction);
    }
    QPainter objPainter(this);
    objPainter.drawImage(rect(), imgRow);
}

void COrmPalettePixmapView::updateDescription()
{
    const QString strName = getCTNameForColorTable(m_eType);
    setAccessibleDescription(m_bReverse ? tr("%1, reversed").arg(strName) : strName);
}
