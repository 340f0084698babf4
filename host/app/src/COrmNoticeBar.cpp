#include "COrmNoticeBar.h"

#include "COrmPlainText.h"
#include "OrmIcons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace
{
constexpr int s_nTextLength = 500; ///< characters that are shown
}

COrmNoticeBar::COrmNoticeBar(QWidget* pParent) : QFrame(pParent), m_pText(new QLabel(this))
{
    setObjectName(QStringLiteral("noticeBar"));
    setFrameShape(QFrame::StyledPanel);
    m_pText->setObjectName(QStringLiteral("noticeText"));
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setWordWrap(true);
    auto* pPicture = new QLabel(this);
    const int nIcon = fontMetrics().height() * 3 / 2;
    pPicture->setPixmap(OrmIcons::drawing(QStringLiteral("notice")).pixmap(nIcon, nIcon));
    pPicture->setAccessibleName(tr("Notice"));
    auto* pLogButton = new QPushButton(tr("Show Lo&g"), this);
    pLogButton->setObjectName(QStringLiteral("noticeLogButton"));
    auto* pCloseButton = new QPushButton(tr("Close"), this);
    pCloseButton->setObjectName(QStringLiteral("noticeCloseButton"));
    pCloseButton->setAccessibleName(tr("Close the notice"));
    connect(pLogButton, &QPushButton::clicked, this, &COrmNoticeBar::logRequested);
    connect(pCloseButton, &QPushButton::clicked, this, &QWidget::hide);

    auto* pLayout = new QHBoxLayout(this);
    pLayout->addWidget(pPicture);
    pLayout->addWidget(m_pText, 1);
    pLayout->addWidget(pLogButton);
    pLayout->addWidget(pCloseButton);
    hide();
}

void COrmNoticeBar::setText(const QString& strText)
{
    m_pText->setText(COrmPlainText::visible(COrmPlainText::shortened(strText, s_nTextLength)));
    setVisible(!strText.isEmpty());
}
