#include "COrmWelcomePanel.h"

#include "COrmDropPlace.h"
#include "COrmPlainText.h"
#include "COrmRecentList.h"
#include "OrmIcons.h"

#include <QBoxLayout>
#include <QCommandLinkButton>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>

namespace
{
constexpr int s_nWidestEm = 46;     ///< a wider panel is not easier to read
constexpr int s_nSideBySideEm = 34; ///< from that width on the choices stand side by side
constexpr int s_nTextLength = 300;  ///< characters of a text from elsewhere
constexpr int s_nIconPoints = 2;    ///< lines of text that a choice's picture is high

/// A large button that shows that it has the keyboard, which styles leave out.
class CChoiceButton : public QCommandLinkButton
{
public:
    using QCommandLinkButton::QCommandLinkButton;

protected:
    void paintEvent(QPaintEvent* pEvent) override
    {
        QCommandLinkButton::paintEvent(pEvent);
        if (!hasFocus())
            return;
        QPainter objPainter(this);
        objPainter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        objPainter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

/// A large button with a picture and a description, in a frame, which is its parent.
QCommandLinkButton* makeChoice(QWidget* pParent, const QString& strText, const QString& strDescription, const char* pszDrawing)
{
    auto* pFrame = new QFrame(pParent); // the style shows no edge of its own around such a button
    pFrame->setFrameShape(QFrame::StyledPanel);
    auto* pButton = new CChoiceButton(strText, strDescription, pFrame);
    auto* pLayout = new QVBoxLayout(pFrame);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pButton);
    const int nIcon = s_nIconPoints * pParent->fontMetrics().height();
    pButton->setIcon(OrmIcons::drawing(QLatin1String(pszDrawing)));
    pButton->setIconSize(QSize(nIcon, nIcon));
    pButton->setToolTip(strDescription);
    pButton->setAccessibleDescription(strDescription);
    return pButton;
}
} // namespace

COrmWelcomePanel::COrmWelcomePanel(QWidget* pParent) : QWidget(pParent)
{
    setObjectName(QStringLiteral("emptyPage"));
    auto* pColumn = new QWidget(this);
    pColumn->setMaximumWidth(s_nWidestEm * fontMetrics().horizontalAdvance(QLatin1Char('M')));
    auto* pColumnLayout = new QVBoxLayout(pColumn);
    pColumnLayout->addStretch(2);
    pColumnLayout->addWidget(makeTexts());
    pColumnLayout->addWidget(makeChoices());
    pColumnLayout->addWidget(makeWork());
    pColumnLayout->addWidget(makeRecent(), 1000); // up to its full height
    pColumnLayout->addStretch(3);

    auto* pCentred = new QWidget(this);
    auto* pCentredLayout = new QHBoxLayout(pCentred);
    pCentredLayout->setContentsMargins(0, 0, 0, 0);
    pCentredLayout->addStretch(1);
    pCentredLayout->addWidget(pColumn, 1000);
    pCentredLayout->addStretch(1);
    auto* pScroll = new QScrollArea(this);
    pScroll->setFrameShape(QFrame::NoFrame);
    pScroll->setWidgetResizable(true);
    pScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pScroll->setFocusPolicy(Qt::NoFocus);
    pScroll->setWidget(pCentred);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pScroll);
    setRecentStudies({});
    showChoices();
}

QWidget* COrmWelcomePanel::makeTexts()
{
    auto* pTexts = new QWidget(this);
    m_pHeading = new QLabel(pTexts);
    m_pHeading->setObjectName(QStringLiteral("emptyHeading"));
    QFont objFont = m_pHeading->font();
    objFont.setPixelSize(qRound(m_pHeading->fontInfo().pixelSize() * 1.7));
    m_pHeading->setFont(objFont);
    m_pText = new QLabel(pTexts);
    m_pText->setObjectName(QStringLiteral("emptyText"));
    for (QLabel* pLabel : {m_pHeading, m_pText})
    {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setAlignment(Qt::AlignCenter);
        pLabel->setWordWrap(true);
    }
    auto* pLayout = new QVBoxLayout(pTexts);
    pLayout->setContentsMargins(0, 0, 0, fontMetrics().height() / 2);
    pLayout->addWidget(m_pHeading);
    pLayout->addWidget(m_pText);
    return pTexts;
}

QWidget* COrmWelcomePanel::makeChoices()
{
    m_pChoices = new QWidget(this);
    auto* pOpenButton = makeChoice(m_pChoices, tr("&Open Study..."), tr("Choose a folder: every sequence below it is opened."), "open");
    pOpenButton->setObjectName(QStringLiteral("openStudyButton"));
    m_pDemoButton = makeChoice(m_pChoices, tr("Try the &Demo Study"), tr("A made-up mouse at five time points, ready to compare."), "demo");
    m_pDemoButton->setObjectName(QStringLiteral("demoStudyButton"));
    m_pDropPlace = new COrmDropPlace(tr("or drop folders here"), m_pChoices);
    m_pDropPlace->setObjectName(QStringLiteral("dropPlace"));
    connect(pOpenButton, &QPushButton::clicked, this, &COrmWelcomePanel::openRequested);
    connect(m_pDemoButton, &QPushButton::clicked, this, &COrmWelcomePanel::demoRequested);

    m_pButtonLayout = new QBoxLayout(QBoxLayout::LeftToRight);
    m_pButtonLayout->addWidget(pOpenButton->parentWidget(), 1);
    m_pButtonLayout->addWidget(m_pDemoButton->parentWidget(), 1);
    auto* pLayout = new QVBoxLayout(m_pChoices);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addLayout(m_pButtonLayout);
    pLayout->addWidget(m_pDropPlace);
    return m_pChoices;
}

QWidget* COrmWelcomePanel::makeRecent()
{
    m_pRecent = new QWidget(this);
    m_pRecentList = new COrmRecentList(m_pRecent);
    m_pRecentList->setObjectName(QStringLiteral("recentStudies"));
    auto* pLabel = new QLabel(tr("&Recent studies"), m_pRecent);
    pLabel->setBuddy(m_pRecentList);
    QFont objFont = pLabel->font();
    objFont.setBold(true);
    pLabel->setFont(objFont);
    auto* pClearButton = new QPushButton(tr("Clear &List"), m_pRecent);
    pClearButton->setObjectName(QStringLiteral("clearRecentButton"));
    pClearButton->setToolTip(tr("Forget the recent studies; no folder is changed"));
    connect(pClearButton, &QPushButton::clicked, this, &COrmWelcomePanel::clearRecentRequested);
    connect(m_pRecentList, &COrmRecentList::chosen, this, &COrmWelcomePanel::recentRequested);

    auto* pHead = new QHBoxLayout;
    pHead->addWidget(pLabel);
    pHead->addStretch(1);
    pHead->addWidget(pClearButton);
    auto* pLayout = new QVBoxLayout(m_pRecent);
    pLayout->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
    pLayout->addLayout(pHead);
    pLayout->addWidget(m_pRecentList);
    return m_pRecent;
}

QWidget* COrmWelcomePanel::makeWork()
{
    m_pWork = new QWidget(this);
    m_pProgressBar = new QProgressBar(m_pWork);
    m_pProgressBar->setObjectName(QStringLiteral("emptyProgress"));
    m_pProgressBar->setAccessibleName(tr("Progress"));
    m_pProgressBar->setTextVisible(false);
    m_pStopButton = new QPushButton(tr("&Cancel"), m_pWork);
    m_pStopButton->setObjectName(QStringLiteral("emptyStop"));
    connect(m_pStopButton, &QPushButton::clicked, this, &COrmWelcomePanel::stopRequested);
    auto* pLayout = new QHBoxLayout(m_pWork);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pProgressBar, 1);
    pLayout->addWidget(m_pStopButton);
    return m_pWork;
}

void COrmWelcomePanel::setRecentStudies(const QStringList& lstFolders)
{
    m_pRecentList->setFolders(lstFolders);
    m_pRecent->setMaximumHeight(m_pRecent->minimumSizeHint().height() - m_pRecentList->minimumSizeHint().height() +
                                m_pRecentList->maximumHeight());
    m_pRecent->setVisible(!lstFolders.isEmpty() && !m_pChoices->isHidden());
}

void COrmWelcomePanel::setDemoOffered(bool bOffered)
{
    m_pDemoButton->parentWidget()->setVisible(bOffered);
}

void COrmWelcomePanel::showWork(const QString& strHeading, const QString& strText, int nDone, int nAll)
{
    m_pHeading->setText(strHeading);
    m_pText->setText(COrmPlainText::visible(COrmPlainText::shortened(strText, s_nTextLength)));
    m_pProgressBar->setRange(0, nAll);
    m_pProgressBar->setValue(nDone);
    m_pChoices->hide();
    m_pRecent->hide();
    m_pWork->show();
}

void COrmWelcomePanel::showChoices()
{
    m_pHeading->setText(tr("Welcome to Ormelle"));
    m_pText->setText(tr("Open the folder of a study to see its sequences and to compare their saved results over time."));
    m_pWork->hide();
    m_pChoices->show();
    m_pRecent->setVisible(m_pRecentList->count() > 0);
}

void COrmWelcomePanel::setDropWelcome(bool bWelcome)
{
    m_pDropPlace->setWelcome(bWelcome);
}

void COrmWelcomePanel::resizeEvent(QResizeEvent* pEvent)
{
    const bool bWide = pEvent->size().width() >= s_nSideBySideEm * fontMetrics().horizontalAdvance(QLatin1Char('M'));
    m_pButtonLayout->setDirection(bWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QWidget::resizeEvent(pEvent);
}
