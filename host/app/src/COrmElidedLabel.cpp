#include "COrmElidedLabel.h"

#include "COrmPlainText.h"

#include <QPainter>

namespace
{
constexpr int s_nLongest = 300; ///< characters that are ever laid out, or read out
}

COrmElidedLabel::COrmElidedLabel(QWidget* pParent) : QFrame(pParent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void COrmElidedLabel::setText(const QString& strText)
{
    m_strText = strText;
    setAccessibleName(COrmPlainText::visible(COrmPlainText::shortened(strText, s_nLongest)));
    setToolTip(strText.isEmpty() ? QString() : COrmPlainText::toolTip(strText));
    updateGeometry();
    update();
}

QSize COrmElidedLabel::sizeHint() const
{
    const QString strText = COrmPlainText::visible(COrmPlainText::shortened(m_strText, s_nLongest));
    return {fontMetrics().horizontalAdvance(strText), fontMetrics().height()};
}

QSize COrmElidedLabel::minimumSizeHint() const
{
    return {4 * fontMetrics().height(), fontMetrics().height()};
}

void COrmElidedLabel::paintEvent(QPaintEvent* /*pEvent*/)
{
    QPainter objPainter(this);
    objPainter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    objPainter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, COrmPlainText::elided(m_strText, fontMetrics(), width()));
}
