#include "COrmPictureWidget.h"

#include "COrmPlainText.h"

#include <QPainter>

COrmPictureWidget::COrmPictureWidget(QWidget* pParent) : QWidget(pParent)
{
    setMinimumSize(160, 120);
    setBackgroundRole(QPalette::Base);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void COrmPictureWidget::setPicture(const QImage& imgPicture)
{
    m_imgPicture = imgPicture;
    update();
}

void COrmPictureWidget::setText(const QString& strText)
{
    m_strText = strText;
    setAccessibleDescription(COrmPlainText::visible(strText));
    update();
}

QSize COrmPictureWidget::sizeHint() const
{
    return m_szPreferred;
}

void COrmPictureWidget::setPreferredSize(const QSize& szPreferred)
{
    m_szPreferred = szPreferred;
    updateGeometry();
}

void COrmPictureWidget::paintEvent(QPaintEvent* /*pEvent*/)
{
    QPainter objPainter(this);
    objPainter.fillRect(rect(), palette().color(backgroundRole()));
    if (m_imgPicture.isNull())
    {
        objPainter.setPen(palette().color(foregroundRole()));
        const int nMargin = fontMetrics().height();
        objPainter.drawText(rect().adjusted(nMargin, nMargin, -nMargin, -nMargin), Qt::AlignCenter | Qt::TextWordWrap,
                            COrmPlainText::visible(COrmPlainText::shortened(m_strText, 600)));
        return;
    }
    QRect rcPicture(QPoint(), m_imgPicture.size().scaled(size(), Qt::KeepAspectRatio));
    rcPicture.moveCenter(rect().center());
    objPainter.setRenderHint(QPainter::SmoothPixmapTransform);
    objPainter.drawImage(rcPicture, m_imgPicture);
}
