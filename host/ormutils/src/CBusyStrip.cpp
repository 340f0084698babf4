#include "CBusyStrip.h"

#include <QLinearGradient>
#include <QPainter>

namespace
{
constexpr qint64 g_nPeriodMs = 1600;   ///< for one run of the light
constexpr double g_fLightWidth = 0.35; ///< of the strip
} // namespace

CBusyStrip::CBusyStrip(QWidget* pParent) : QWidget(pParent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CBusyStrip::setElapsed(qint64 nMilliseconds)
{
    m_nElapsed = nMilliseconds;
    update();
}

QSize CBusyStrip::sizeHint() const
{
    return {120, 4};
}

void CBusyStrip::paintEvent(QPaintEvent*)
{
    QPainter objPainter(this);
    objPainter.setRenderHint(QPainter::Antialiasing);
    objPainter.setPen(Qt::NoPen);
    const QRectF rcStrip = rect();
    const double fRadius = rcStrip.height() / 2;
    objPainter.setBrush(palette().color(QPalette::Mid).lighter(125));
    objPainter.drawRoundedRect(rcStrip, fRadius, fRadius);

    const double fPhase = double((m_nElapsed + g_nPeriodMs / 4) % g_nPeriodMs) / double(g_nPeriodMs);
    const double fCentre = rcStrip.width() * (fPhase * (1 + g_fLightWidth) - g_fLightWidth / 2);
    const double fHalf = rcStrip.width() * g_fLightWidth / 2;
    QColor clrLight = palette().color(QPalette::Highlight);
    QLinearGradient objGradient(fCentre - fHalf, 0, fCentre + fHalf, 0);
    objGradient.setColorAt(0.5, clrLight);
    clrLight.setAlpha(0);
    objGradient.setColorAt(0, clrLight);
    objGradient.setColorAt(1, clrLight);
    objPainter.setBrush(objGradient);
    objPainter.drawRoundedRect(rcStrip, fRadius, fRadius);
}
