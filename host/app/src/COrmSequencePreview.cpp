#include "COrmSequencePreview.h"

#include "COrmClickModel.h"
#include "COrmElidedLabel.h"
#include "COrmPictureWidget.h"
#include "COrmPlainText.h"
#include "COrmPlainTextDelegate.h"
#include "COrmPreviewLoader.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceModel.h"
#include "COrmSystemMenus.h"
#include "OrmIcons.h"

#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

namespace
{
constexpr int s_nMostRows = 8;  ///< rows of a list that are shown without scrolling it
constexpr int s_nLongText = 50; ///< characters in place of a photograph that need several lines

QLabel* makeHeading(QWidget* pParent)
{
    auto* pLabel = new QLabel(pParent);
    pLabel->setTextFormat(Qt::PlainText);
    QFont objFont = pLabel->font();
    objFont.setBold(true);
    pLabel->setFont(objFont);
    return pLabel;
}
} // namespace

COrmSequencePreview::COrmSequencePreview(QWidget* pParent)
    : QWidget(pParent), m_pLoader(new COrmPreviewLoader(this)), m_pClicks(new COrmClickModel(this))
{
    setObjectName(QStringLiteral("sequencePreview"));
    auto* pNothing = new QLabel(tr("Select a sequence to see what it holds."), this);
    pNothing->setObjectName(QStringLiteral("previewNothing"));
    pNothing->setAlignment(Qt::AlignCenter);
    pNothing->setWordWrap(true);
    m_pPages = new QStackedWidget(this);
    m_pPages->addWidget(pNothing);
    m_pPages->addWidget(makeContent());
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pPages);
    setMinimumWidth(12 * fontMetrics().height());

    connect(m_pCompareButton, &QPushButton::clicked, this, &COrmSequencePreview::compareRequested);
    connect(m_pLoader, &COrmPreviewLoader::loaded, this, &COrmSequencePreview::showPreview);
    setTool(QString(), QString());
}

COrmSequencePreview::~COrmSequencePreview() = default;

QWidget* COrmSequencePreview::makeContent()
{
    auto* pContent = new QWidget(this);
    const int nGap = fontMetrics().height() / 2;
    m_pParts = new QBoxLayout(QBoxLayout::TopToBottom, pContent);
    m_pParts->setContentsMargins(nGap, 0, nGap, 0);
    m_pParts->addLayout(makeHead(pContent), 1);
    m_pParts->addLayout(makeLists(pContent));
    auto* pScroll = new QScrollArea(this);
    pScroll->setFrameShape(QFrame::NoFrame);
    pScroll->setWidgetResizable(true);
    pScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pScroll->setFocusPolicy(Qt::NoFocus);
    pScroll->setWidget(pContent);
    return pScroll;
}

QLayout* COrmSequencePreview::makeHead(QWidget* pContent)
{
    m_pTitle = new COrmElidedLabel(pContent);
    m_pTitle->setObjectName(QStringLiteral("previewTitle"));
    QFont objFont = m_pTitle->font();
    objFont.setPixelSize(qRound(m_pTitle->fontInfo().pixelSize() * 1.25));
    objFont.setBold(true);
    m_pTitle->setFont(objFont);
    m_pSubject = new COrmElidedLabel(pContent);
    m_pSubject->setObjectName(QStringLiteral("previewSubject"));
    m_pKind = new COrmElidedLabel(pContent);
    m_pKind->setObjectName(QStringLiteral("previewKind"));
    m_pCompareButton = new QPushButton(pContent);
    m_pCompareButton->setObjectName(QStringLiteral("compareButton"));
    m_pCompareButton->setIcon(OrmIcons::drawing(QStringLiteral("compare")));
    m_pCompareHint = new COrmElidedLabel(pContent);
    m_pCompareHint->setObjectName(QStringLiteral("compareHint"));
    m_pPicture = new COrmPictureWidget(pContent);
    m_pPicture->setObjectName(QStringLiteral("previewPicture"));
    m_pPicture->setAccessibleName(tr("Photograph"));
    m_pPicture->setBackgroundRole(QPalette::Window);

    auto* pLayout = new QVBoxLayout;
    for (QWidget* pWidget : {static_cast<QWidget*>(m_pTitle), static_cast<QWidget*>(m_pSubject), static_cast<QWidget*>(m_pKind),
                             static_cast<QWidget*>(m_pCompareButton), static_cast<QWidget*>(m_pCompareHint)})
        pLayout->addWidget(pWidget);
    pLayout->addWidget(m_pPicture, 1000);
    pLayout->addStretch(1);
    return pLayout;
}

QLayout* COrmSequencePreview::makeLists(QWidget* pContent)
{
    m_pResultsLabel = makeHeading(pContent);
    m_pResultsLabel->setObjectName(QStringLiteral("previewResultsHeading"));
    m_pResults = new QListWidget(pContent);
    m_pResults->setObjectName(QStringLiteral("previewResults"));
    m_pResults->setAccessibleName(tr("Saved results of the sequence"));
    m_pResults->setItemDelegate(new COrmPlainTextDelegate(m_pResults));
    m_pResults->setUniformItemSizes(true);
    m_pResults->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pClicksLabel = makeHeading(pContent);
    m_pClicksLabel->setObjectName(QStringLiteral("previewClicksHeading"));
    m_pClickTable = new QTreeView(pContent);
    m_pClickTable->setObjectName(QStringLiteral("previewClicks"));
    m_pClickTable->setAccessibleName(tr("Images of the sequence"));
    m_pClickTable->setModel(m_pClicks);
    m_pClickTable->setItemDelegate(new COrmPlainTextDelegate(m_pClickTable));
    m_pClickTable->setRootIsDecorated(false);
    m_pClickTable->setUniformRowHeights(true);
    m_pClickTable->setAllColumnsShowFocus(true);
    m_pClickTable->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QHeaderView* pHeader = m_pClickTable->header();
    pHeader->setStretchLastSection(false);
    pHeader->setMinimumSectionSize(3 * fontMetrics().height());
    pHeader->setSectionResizeMode(QHeaderView::ResizeToContents);
    pHeader->setResizeContentsPrecision(s_nMostRows);
    pHeader->setSectionResizeMode(COrmClickModel::eClick, QHeaderView::Stretch);
    auto* pLayout = new QVBoxLayout;
    for (QWidget* pWidget : {static_cast<QWidget*>(m_pResultsLabel), static_cast<QWidget*>(m_pResults),
                             static_cast<QWidget*>(m_pClicksLabel), static_cast<QWidget*>(m_pClickTable)})
        pLayout->addWidget(pWidget);
    pLayout->addStretch(1);
    return pLayout;
}

void COrmSequencePreview::arrange()
{
    // A photograph takes the height that is left; without one the lists follow at once.
    m_pParts->setDirection(m_bLow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    const bool bPicture = !m_pPicture->picture().isNull();
    m_pParts->setStretch(0, m_bLow || bPicture ? 2 : 0);
    m_pParts->setStretch(1, m_bLow || !bPicture ? 3 : 0);
}

void COrmSequencePreview::resizeEvent(QResizeEvent* pEvent)
{
    m_bLow = pEvent->size().width() > std::max(2 * pEvent->size().height(), 2 * minimumWidth());
    arrange();
    QWidget::resizeEvent(pEvent);
}

void COrmSequencePreview::setTool(const QString& strName, const QString& strReason)
{
    m_strTool = strName;
    m_strNoTool = strReason;
    const QString strText = strName.isEmpty() ? tr("&Compare") : tr("&Compare in %1").arg(strName);
    m_pCompareButton->setText(strText);
    m_pCompareButton->setToolTip(tr("Open the tool with this sequence selected (%1)")
                                     .arg(COrmSystemMenus::control(Qt::Key_Return).toString(QKeySequence::NativeText)));
    updateCompare();
}

void COrmSequencePreview::updateCompare()
{
    const bool bResults = m_sFacts.m_nSOLAResults + m_sFacts.m_nNOVAResults > 0;
    m_pCompareButton->setEnabled(!m_strTool.isEmpty() && bResults);
    QString strHint;
    if (m_strTool.isEmpty())
        strHint = m_strNoTool;
    else if (!bResults)
        strHint = tr("No saved results to compare yet.");
    m_pCompareHint->setText(strHint);
    m_pCompareHint->setVisible(!strHint.isEmpty());
}

void COrmSequencePreview::setSequence(const COrmSequenceDataset* pSequence)
{
    const SSequenceFacts sFacts = pSequence != nullptr ? pSequence->getFacts() : SSequenceFacts();
    if (sFacts != m_sFacts)
        refresh(pSequence);
}

void COrmSequencePreview::refresh(const COrmSequenceDataset* pSequence)
{
    m_sFacts = pSequence != nullptr ? pSequence->getFacts() : SSequenceFacts();
    m_pPages->setCurrentIndex(pSequence != nullptr ? 1 : 0);
    if (pSequence == nullptr)
    {
        m_pLoader->forget();
        return;
    }
    m_pTitle->setText(m_sFacts.m_strSequenceID);
    const QString strDate = COrmSequenceModel::dateText(m_sFacts.m_strDateTime);
    m_pSubject->setText(m_sFacts.m_strSubject.isEmpty() || strDate.isEmpty() ? m_sFacts.m_strSubject + strDate
                                                                             : m_sFacts.m_strSubject + QStringLiteral(", ") + strDate);
    m_pSubject->setVisible(!m_pSubject->text().isEmpty());
    m_pKind->setText(COrmSequenceModel::kindText(*pSequence));
    m_pClicks->setClicks(m_sFacts.m_lstClicks);
    m_pClickTable->setColumnHidden(COrmClickModel::eExcitation, !m_pClicks->hasExcitation());
    m_pClicksLabel->setText(tr("Images (%1)").arg(m_sFacts.m_lstClicks.size()));
    fit(m_pClickTable, m_pClickTable->header()->sizeHint().height());
    m_pResultsLabel->setText(
        tr("Saved results (%1)").arg(COrmSequenceModel::resultsText(m_sFacts.m_nSOLAResults, m_sFacts.m_nNOVAResults)));
    m_pResults->clear();
    m_pResults->setVisible(m_sFacts.m_nSOLAResults + m_sFacts.m_nNOVAResults > 0);
    showPicture(QImage(), QString());
    updateCompare();
    m_pLoader->request(m_sFacts);
}

void COrmSequencePreview::fit(QAbstractItemView* pView, int nHeader) const
{
    // Lists this long scroll by themselves; shorter ones are as high as what they show.
    const int nRows = std::clamp(pView->model()->rowCount(), 1, s_nMostRows);
    pView->setFixedHeight(nHeader + nRows * std::max(pView->sizeHintForRow(0), fontMetrics().height()) + 2 * pView->frameWidth());
}

void COrmSequencePreview::showPicture(const QImage& imgPicture, const QString& strText)
{
    // Without a photograph a line or a few are enough to say so.
    const int nHeight = (!imgPicture.isNull() ? 7 : strText.size() > s_nLongText ? 7 : 3) * fontMetrics().height();
    m_pPicture->setPicture(imgPicture);
    m_pPicture->setText(strText);
    m_pPicture->setToolTip(strText.isEmpty() ? QString() : COrmPlainText::toolTip(strText));
    m_pPicture->setMinimumHeight(nHeight);
    m_pPicture->setMaximumHeight(imgPicture.isNull() ? nHeight : QWIDGETSIZE_MAX);
    m_pPicture->setPreferredSize({minimumWidth(), nHeight});
    arrange();
}

void COrmSequencePreview::showPreview(const SSequencePreview& sPreview)
{
    showPicture(sPreview.m_imgPhotograph, sPreview.m_strPictureText);
    const auto fnAdd = [this](const QStringList& lstNames, const QString& strKind, const QIcon& objIcon)
    {
        for (const QString& strName : lstNames)
        {
            auto* pItem = new QListWidgetItem(objIcon, strKind + QLatin1Char(' ') + strName, m_pResults);
            pItem->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        }
    };
    m_pResults->clear();
    fnAdd(sPreview.m_lstSOLA, QStringLiteral("SOLA"), OrmIcons::kindIcon(true, false));
    fnAdd(sPreview.m_lstNOVA, QStringLiteral("NOVA"), OrmIcons::kindIcon(false, true));
    if (!sPreview.m_strResultsText.isEmpty())
    {
        m_pCompareHint->setText(sPreview.m_strResultsText);
        m_pCompareHint->show();
    }
    fit(m_pResults, 0);
    m_pResults->setVisible(m_pResults->count() > 0);
}
