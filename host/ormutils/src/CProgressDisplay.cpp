#include "CProgressDisplay.h"

#include "CBusyStrip.h"
#include "CInteractionLock.h"
#include "COrmPlainText.h"
#include "COrmUtilityFns.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace
{
constexpr int g_nTextWidth = 380;
}

CProgressDisplay::CProgressDisplay()
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_pTitle(new QLabel(this)),
      m_pMessage(new QLabel(this)),
      m_pBar(new QProgressBar(this)),
      m_pStrip(new CBusyStrip(this)),
      m_pTime(new QLabel(this)),
      m_pAbort(new QPushButton(tr("Abort"), this))
{
    setObjectName(QStringLiteral("ormProgressDisplay"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setProperty(CInteractionLock::exemptProperty(), true);

    m_pTitle->setObjectName(QStringLiteral("ormProgressTitle"));
    m_pMessage->setObjectName(QStringLiteral("ormProgressMessage"));
    m_pTime->setObjectName(QStringLiteral("ormProgressTime"));
    for (QLabel* pLabel : {m_pTitle, m_pMessage, m_pTime})
        pLabel->setTextFormat(Qt::PlainText);
    QFont objBold = font();
    objBold.setBold(true);
    m_pTitle->setFont(objBold);
    m_pTitle->setFixedWidth(g_nTextWidth);
    m_pMessage->setFixedWidth(g_nTextWidth);
    m_pBar->setTextVisible(true);
    m_pBar->setAlignment(Qt::AlignCenter);
    m_pTime->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_pTime->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00:00:00")));
    connect(m_pAbort, &QPushButton::clicked, this, &CProgressDisplay::abort);

    auto* pLayout = new QGridLayout(this);
    pLayout->setContentsMargins(18, 16, 18, 14);
    pLayout->setVerticalSpacing(9);
    pLayout->addWidget(m_pTitle, 0, 0, 1, 2);
    pLayout->addWidget(m_pMessage, 1, 0, 1, 2);
    pLayout->addWidget(m_pBar, 2, 0, 1, 2);
    pLayout->addWidget(m_pStrip, 3, 0);
    pLayout->addWidget(m_pTime, 3, 1);
    pLayout->addWidget(m_pAbort, 4, 1, Qt::AlignRight);
    pLayout->setSizeConstraint(QLayout::SetFixedSize);
}

void CProgressDisplay::start(const QString& strTitle, int nSteps, bool bMayAbort, const QString& strAbortText)
{
    m_objElapsed.start();
    m_strAbortText = strAbortText;
    m_bAbort = false;
    m_pAbort->setVisible(bMayAbort);
    m_pAbort->setEnabled(true);
    setTitle(strTitle);
    m_pMessage->clear();
    setSteps(0, nSteps);
    if (!isVisible())
    {
        place();
        show();
    }
    raise();
    paintNow();
}

void CProgressDisplay::setTitle(const QString& strTitle)
{
    setWindowTitle(COrmUtilityFns::getAppName());
    m_pTitle->setText(COrmPlainText::elided(strTitle, m_pTitle->fontMetrics(), g_nTextWidth));
    m_pTitle->setVisible(!strTitle.isEmpty());
}

void CProgressDisplay::setStep(const QString& strMessage, int nStep, int nSteps)
{
    m_pMessage->setText(COrmPlainText::elided(m_bAbort ? m_strAbortText : strMessage, m_pMessage->fontMetrics(), g_nTextWidth));
    setSteps(nStep, nSteps);
    paintNow();
}

void CProgressDisplay::setSteps(int nStep, int nSteps)
{
    // Without a number of steps the bar shows nothing rather than a guess; the strip tells that work goes on.
    m_pBar->setRange(0, std::max(nSteps, 1));
    m_pBar->setValue(nSteps > 0 ? std::clamp(nStep, 0, nSteps) : 0);
    m_pBar->setFormat(nSteps > 0 ? tr("%v of %m") : QString());
}

void CProgressDisplay::paintNow()
{
    const qint64 nElapsed = m_objElapsed.elapsed();
    m_pStrip->setElapsed(nElapsed);
    const qint64 nSeconds = nElapsed / 1000;
    const QString strSeconds = QStringLiteral("%1:%2")
                                   .arg(nSeconds / 60 % 60, nSeconds < 3600 ? 1 : 2, 10, QLatin1Char('0'))
                                   .arg(nSeconds % 60, 2, 10, QLatin1Char('0'));
    m_pTime->setText(nSeconds < 3600 ? strSeconds : QStringLiteral("%1:%2").arg(nSeconds / 3600).arg(strSeconds));
    if (!isVisible())
        return;
    layout()->activate(); // new texts ask for a layout by an event, which nobody delivers now
    // A late notice that the display was closed before makes the toolkit hold back every paint until the notice of its new appearance
    // comes, and nobody receives that one during a long process. Painting too early costs nothing.
    setAttribute(Qt::WA_Mapped);
    repaint();
}

void CProgressDisplay::abort()
{
    m_bAbort = true;
    m_pAbort->setEnabled(false);
    m_pMessage->setText(COrmPlainText::elided(m_strAbortText, m_pMessage->fontMetrics(), g_nTextWidth));
}

void CProgressDisplay::place()
{
    const QWidget* pActive = QApplication::activeWindow();
    adjustSize();
    winId();
    windowHandle()->setTransientParent(pActive && pActive != this ? pActive->windowHandle() : nullptr);
    const QScreen* pScreen = pActive && pActive->windowHandle() ? pActive->windowHandle()->screen() : QGuiApplication::primaryScreen();
    if (!pScreen)
        return;
    const QRect rcScreen = pScreen->availableGeometry();
    QRect rcPlace(QPoint(0, 0), size());
    rcPlace.moveCenter(pActive ? pActive->frameGeometry().center() : rcScreen.center());
    rcPlace.moveLeft(std::max(rcScreen.left(), std::min(rcPlace.left(), rcScreen.right() - rcPlace.width())));
    rcPlace.moveTop(std::max(rcScreen.top(), std::min(rcPlace.top(), rcScreen.bottom() - rcPlace.height())));
    move(rcPlace.topLeft());
}

void CProgressDisplay::closeEvent(QCloseEvent* pEvent)
{
    pEvent->ignore(); // the process ends it
}
