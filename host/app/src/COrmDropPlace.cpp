#include "COrmDropPlace.h"

#include "OrmIcons.h"

#include <QPainter>

namespace
{
constexpr double s_fCorner = 5.0; ///< radius of the frame's corners in pixels
}

COrmDropPlace::COrmDropPlace(const QString& strText, QWidget* pParent) : QLabel(strText, pParent)
{
    const int nMargin = fontMetrics().height() * 3 / 4;
    setTextFormat(Qt::PlainText);
    setMinimumHeight(fontMetrics().height() + 2 * nMargin);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void COrmDropPlace::setWelcome(bool bWelcome)
{
    m_bWelcome = bWelcome;
    update();
}

void COrmDropPlace::paintEvent(QPaintEvent* /*pEvent*/)
{
    QPainter objPainter(this);
    objPainter.setRenderHint(QPainter::Antialiasing);
    const QColor clrText = palette().color(QPalette::WindowText);
    QColor clrFrame = m_bWelcome ? palette().color(QPalette::Highlight) : clrText;
    if (!m_bWelcome)
        clrFrame.setAlphaF(0.4);
    objPainter.setPen(QPen(clrFrame, m_bWelcome ? 2.0 : 1.0, m_bWelcome ? Qt::SolidLine : Qt::DashLine));
    objPainter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), s_fCorner, s_fCorner);

    // Picture and text stand together in the middle.
    const int nIcon = fontMetrics().height() * 3 / 2;
    const int nGap = fontMetrics().height() / 2;
    const int nText = fontMetrics().horizontalAdvance(text());
    const int nLeft = qMax(nGap, (width() - nIcon - nGap - nText) / 2);
    OrmIcons::drawing(QStringLiteral("drop")).paint(&objPainter, nLeft, (height() - nIcon) / 2, nIcon, nIcon);
    objPainter.setPen(clrText);
    objPainter.drawText(QRect(nLeft + nIcon + nGap, 0, width() - nLeft - nIcon - nGap, height()), Qt::AlignVCenter | Qt::AlignLeft, text());
}
