#include "COrmSequenceView.h"

#include "COrmPlainTextDelegate.h"
#include "COrmSequenceModel.h"
#include "COrmSequenceSortModel.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

COrmSequenceView::COrmSequenceView(COrmSequenceCollection* pCollection, QWidget* pParent)
    : QWidget(pParent), m_pModel(new COrmSequenceModel(pCollection, this)), m_pSorted(new COrmSequenceSortModel(this))
{
    m_pSorted->setSourceModel(m_pModel);
    m_pPages = new QStackedWidget(this);
    m_pPages->addWidget(makeEmptyPage());
    m_pPages->addWidget(makeListPage());
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pPages);

    connect(m_pModel, &QAbstractItemModel::rowsInserted, this, &COrmSequenceView::updatePage);
    connect(m_pModel, &QAbstractItemModel::rowsRemoved, this, &COrmSequenceView::updatePage);
    setSearching(false);
    updatePage();
}

QWidget* COrmSequenceView::makeEmptyPage()
{
    auto* pPage = new QWidget(this);
    pPage->setObjectName(QStringLiteral("emptyPage"));
    m_pEmptyHeading = new QLabel(pPage);
    m_pEmptyHeading->setObjectName(QStringLiteral("emptyHeading"));
    QFont objFont = m_pEmptyHeading->font();
    objFont.setPointSizeF(objFont.pointSizeF() * 1.5);
    m_pEmptyHeading->setFont(objFont);
    m_pEmptyText = new QLabel(pPage);
    m_pEmptyText->setObjectName(QStringLiteral("emptyText"));
    for (QLabel* pLabel : {m_pEmptyHeading, m_pEmptyText})
    {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setAlignment(Qt::AlignCenter);
        pLabel->setWordWrap(true);
    }
    m_pOpenButton = new QPushButton(QStringLiteral("&Open Study..."), pPage);
    m_pOpenButton->setObjectName(QStringLiteral("openStudyButton"));
    connect(m_pOpenButton, &QPushButton::clicked, this, &COrmSequenceView::openRequested);

    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addStretch(2);
    pLayout->addWidget(m_pEmptyHeading);
    pLayout->addWidget(m_pEmptyText);
    pLayout->addSpacing(fontMetrics().height());
    pLayout->addWidget(m_pOpenButton, 0, Qt::AlignHCenter);
    pLayout->addStretch(3);
    return pPage;
}

QWidget* COrmSequenceView::makeListPage()
{
    auto* pPage = new QWidget(this);
    m_pFilter = new QLineEdit(pPage);
    m_pFilter->setObjectName(QStringLiteral("sequenceFilter"));
    m_pFilter->setPlaceholderText(QStringLiteral("Show only sequences and subjects that contain..."));
    m_pFilter->setClearButtonEnabled(true);
    connect(m_pFilter, &QLineEdit::textChanged, m_pSorted, &COrmSequenceSortModel::setFilterText);

    m_pTree = new QTreeView(pPage);
    m_pTree->setObjectName(QStringLiteral("sequenceList"));
    m_pTree->setAccessibleName(QStringLiteral("Open sequences"));
    m_pTree->setModel(m_pSorted);
    m_pTree->setItemDelegate(new COrmPlainTextDelegate(m_pTree));
    m_pTree->setRootIsDecorated(false);
    m_pTree->setUniformRowHeights(true);
    m_pTree->setAllColumnsShowFocus(true);
    m_pTree->setAlternatingRowColors(true);
    m_pTree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pTree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_pTree->setSortingEnabled(true);
    m_pTree->sortByColumn(COrmSequenceModel::eID, Qt::AscendingOrder);
    // Wide enough for usual names; the user's widths are remembered.
    const int nEm = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    m_pTree->setColumnWidth(COrmSequenceModel::eID, 18 * nEm);
    m_pTree->setColumnWidth(COrmSequenceModel::eSubject, 14 * nEm);
    m_pTree->setColumnWidth(COrmSequenceModel::eDate, 12 * nEm);
    connect(m_pTree->selectionModel(), &QItemSelectionModel::selectionChanged, this, &COrmSequenceView::selectionChanged);
    connect(m_pTree, &QTreeView::activated, this,
            [this](const QModelIndex& objIndex) { emit activated(objIndex.data(COrmSequenceModel::eSequenceIDRole).toString()); });
    connect(m_pTree, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pt)
            {
                if (m_pTree->indexAt(pt).isValid())
                    emit menuRequested(m_pTree->viewport()->mapToGlobal(pt));
            });

    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addWidget(m_pFilter);
    pLayout->addWidget(m_pTree);
    return pPage;
}

void COrmSequenceView::updatePage()
{
    const int nPage = m_pModel->rowCount() > 0 ? 1 : 0;
    if (nPage == m_pPages->currentIndex())
        return;
    m_pPages->setCurrentIndex(nPage);
    if (nPage == 1)
        m_pTree->setFocus(); // the list, not the filter above it, is what the keyboard is for first
}

void COrmSequenceView::setSearching(bool bSearching)
{
    m_pEmptyHeading->setText(bSearching ? QStringLiteral("Looking for sequences...") : QStringLiteral("No sequence is open"));
    m_pEmptyText->setText(bSearching ? QStringLiteral("They appear here as they are found.")
                                     : QStringLiteral("Open the folder of a study, or drop folders here. "
                                                      "Every sequence below them is opened."));
    m_pOpenButton->setVisible(!bSearching);
}

QStringList COrmSequenceView::selectedIDs() const
{
    QModelIndexList lstRows = m_pTree->selectionModel()->selectedRows();
    std::sort(lstRows.begin(), lstRows.end(), [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    QStringList lstIDs;
    for (const QModelIndex& objRow : qAsConst(lstRows))
        lstIDs.append(objRow.data(COrmSequenceModel::eSequenceIDRole).toString());
    return lstIDs;
}

QString COrmSequenceView::currentID() const
{
    const QModelIndex objCurrent = m_pTree->currentIndex();
    if (objCurrent.isValid() && m_pTree->selectionModel()->isRowSelected(objCurrent.row(), QModelIndex()))
        return objCurrent.data(COrmSequenceModel::eSequenceIDRole).toString();
    return selectedIDs().value(0);
}

void COrmSequenceView::selectAll()
{
    m_pTree->selectAll();
}

QByteArray COrmSequenceView::columnState() const
{
    return m_pTree->header()->saveState();
}

void COrmSequenceView::restoreColumnState(const QByteArray& arrState)
{
    if (!arrState.isEmpty())
        m_pTree->header()->restoreState(arrState);
}
