#include "COrmSequenceView.h"

#include "COrmNoticeBar.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceList.h"
#include "COrmSequenceModel.h"
#include "COrmSequencePreview.h"
#include "COrmWelcomePanel.h"

#include <QResizeEvent>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace
{
constexpr int s_nListShare = 200;    ///< of the width, as long as the user has not moved the border
constexpr int s_nPreviewShare = 110; ///< likewise
constexpr int s_nSideBySideEm = 66;  ///< in a narrower window the preview stands below the list
} // namespace

COrmSequenceView::COrmSequenceView(COrmSequenceCollection* pCollection, QWidget* pParent)
    : QWidget(pParent), m_pModel(new COrmSequenceModel(pCollection, this))
{
    m_pNotice = new COrmNoticeBar(this);
    m_pWelcome = new COrmWelcomePanel(this);
    m_pSplitter = new QSplitter(Qt::Horizontal, this);
    m_pSplitter->setObjectName(QStringLiteral("sequenceSplitter"));
    m_pList = new COrmSequenceList(m_pModel, m_pSplitter);
    m_pPreview = new COrmSequencePreview(m_pSplitter);
    m_pSplitter->addWidget(m_pList);
    m_pSplitter->addWidget(m_pPreview);
    m_pSplitter->setCollapsible(0, false);
    m_pSplitter->setSizes({s_nListShare, s_nPreviewShare});
    m_pSplitter->setStretchFactor(0, s_nListShare);
    m_pSplitter->setStretchFactor(1, s_nPreviewShare);
    auto* pListPage = new QWidget(this);
    auto* pListLayout = new QVBoxLayout(pListPage);
    pListLayout->addWidget(m_pSplitter);
    m_pPages = new QStackedWidget(this);
    m_pPages->addWidget(m_pWelcome);
    m_pPages->addWidget(pListPage);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pNotice);
    pLayout->addWidget(m_pPages, 1);

    connect(m_pModel, &QAbstractItemModel::rowsInserted, this, &COrmSequenceView::updatePage);
    connect(m_pModel, &QAbstractItemModel::rowsRemoved, this, &COrmSequenceView::updatePage);
    connect(m_pList, &COrmSequenceList::selectionChanged, this, &COrmSequenceView::updatePreview);
    connect(pCollection, &COrmSequenceCollection::changed, this,
            [this](const COrmSequenceDataset* pSequence)
            {
                if (pSequence->getSequenceID() == currentID())
                    m_pPreview->refresh(pSequence);
            });
    updatePage();
}

void COrmSequenceView::resizeEvent(QResizeEvent* pEvent)
{
    const bool bWide = pEvent->size().width() >= s_nSideBySideEm * fontMetrics().horizontalAdvance(QLatin1Char('M'));
    const Qt::Orientation eOrientation = bWide ? Qt::Horizontal : Qt::Vertical;
    if (m_pSplitter->orientation() != eOrientation)
    {
        m_pSplitter->setOrientation(eOrientation);
        m_pSplitter->setSizes({s_nListShare, bWide ? s_nPreviewShare : s_nListShare});
    }
    QWidget::resizeEvent(pEvent);
}

void COrmSequenceView::updatePage()
{
    const int nPage = m_pModel->rowCount() > 0 ? 1 : 0;
    if (nPage == m_pPages->currentIndex())
        return;
    m_pPages->setCurrentIndex(nPage);
    if (nPage == 1)
        m_pList->focusTable(); // the list, not the filter above it, is what the keyboard is for first
}

void COrmSequenceView::updatePreview()
{
    m_pPreview->setSequence(COrmSequenceDataset::getSequenceDataset(currentID()));
}

QStringList COrmSequenceView::selectedIDs() const
{
    return m_pList->selectedIDs();
}

QString COrmSequenceView::currentID() const
{
    return m_pList->currentID();
}

QByteArray COrmSequenceView::columnState() const
{
    return m_pList->columnState();
}

QByteArray COrmSequenceView::splitterState() const
{
    return m_pSplitter->saveState();
}

void COrmSequenceView::restoreState(const QByteArray& arrColumns, const QByteArray& arrSplitter)
{
    m_pList->restoreColumnState(arrColumns);
    if (!arrSplitter.isEmpty())
        m_pSplitter->restoreState(arrSplitter);
}
