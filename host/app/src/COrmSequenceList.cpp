#include "COrmSequenceList.h"

#include "COrmFilterEdit.h"
#include "COrmPlainText.h"
#include "COrmPlainTextDelegate.h"
#include "COrmSequenceModel.h"
#include "COrmSequenceSortModel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

namespace
{
constexpr int s_nFilterLength = 200; ///< characters of a filter, and no more than these are told back
}

COrmSequenceList::COrmSequenceList(COrmSequenceModel* pModel, QWidget* pParent)
    : QWidget(pParent), m_pSorted(new COrmSequenceSortModel(this))
{
    m_pSorted->setSourceModel(pModel);
    m_pFilter = new COrmFilterEdit(this);
    m_pFilter->setObjectName(QStringLiteral("sequenceFilter"));
    m_pFilter->setMaxLength(s_nFilterLength);
    m_pFilter->setPlaceholderText(tr("Filter by sequence, subject, date or kind"));
    m_pFilter->setAccessibleName(tr("Filter of the sequences"));
    m_pFilter->setToolTip(
        tr("Shows the sequences in which every word occurs, for instance \"mouse 2026-08 fluorescent\". Escape shows all."));
    m_pCount = new QLabel(this);
    m_pCount->setObjectName(QStringLiteral("sequenceCount"));
    m_pCount->setTextFormat(Qt::PlainText);
    m_pCount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_pCount->setMinimumWidth(fontMetrics().horizontalAdvance(tr("%n sequences", nullptr, 8888))); // does not jump while they are counted
    m_pPages = new QStackedWidget(this);
    m_pPages->addWidget(makeTable());
    m_pPages->addWidget(makeNothing());

    auto* pHead = new QHBoxLayout;
    pHead->addWidget(m_pFilter, 1);
    pHead->addWidget(m_pCount);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addLayout(pHead);
    pLayout->addWidget(m_pPages);

    connect(m_pFilter, &QLineEdit::textChanged, m_pSorted, &COrmSequenceSortModel::setFilterText);
    connect(m_pFilter, &QLineEdit::textChanged, this, &COrmSequenceList::filterChanged);
    connect(m_pFilter, &COrmFilterEdit::leaveRequested, this, &COrmSequenceList::focusTable);
    for (const auto fnSignal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_pSorted, fnSignal, this, &COrmSequenceList::updateCount);
    connect(pModel, &QAbstractItemModel::rowsInserted, this, &COrmSequenceList::updateCount);
    connect(pModel, &QAbstractItemModel::rowsRemoved, this, &COrmSequenceList::updateCount);
    fitColumns();
    updateCount();
}

QWidget* COrmSequenceList::makeTable()
{
    m_pTree = new QTreeView(this);
    m_pTree->setObjectName(QStringLiteral("sequenceList"));
    m_pTree->setAccessibleName(tr("Open sequences"));
    m_pTree->setModel(m_pSorted);
    m_pTree->viewport()->installEventFilter(this);
    m_pTree->setItemDelegate(new COrmPlainTextDelegate(m_pTree));
    m_pTree->setRootIsDecorated(false);
    m_pTree->setUniformRowHeights(true);
    m_pTree->setAllColumnsShowFocus(true);
    m_pTree->setAlternatingRowColors(true);
    m_pTree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pTree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_pTree->setSortingEnabled(true);
    m_pTree->sortByColumn(COrmSequenceModel::eSubject, Qt::AscendingOrder);
    connect(m_pTree->header(), &QHeaderView::sortIndicatorChanged, this, [this] { m_bOwnOrder = true; });
    connect(m_pTree->selectionModel(), &QItemSelectionModel::selectionChanged, this, &COrmSequenceList::selectionChanged);
    connect(m_pTree->selectionModel(), &QItemSelectionModel::currentChanged, this, &COrmSequenceList::selectionChanged);
    connect(m_pTree, &QTreeView::activated, this,
            [this](const QModelIndex& objIndex) { emit activated(objIndex.data(COrmSequenceModel::eSequenceIDRole).toString()); });
    connect(m_pTree, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pt)
            {
                if (m_pTree->indexAt(pt).isValid())
                    emit menuRequested(m_pTree->viewport()->mapToGlobal(pt));
            });
    return m_pTree;
}

QWidget* COrmSequenceList::makeNothing()
{
    auto* pPage = new QWidget(this);
    m_pNothing = new QLabel(pPage);
    m_pNothing->setObjectName(QStringLiteral("nothingMatches"));
    m_pNothing->setTextFormat(Qt::PlainText);
    m_pNothing->setAlignment(Qt::AlignCenter);
    m_pNothing->setWordWrap(true);
    auto* pButton = new QPushButton(tr("&Show All"), pPage);
    pButton->setObjectName(QStringLiteral("showAllButton"));
    pButton->setToolTip(tr("Empty the filter"));
    connect(pButton, &QPushButton::clicked, this,
            [this]
            {
                m_pFilter->clear();
                focusTable();
            });
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addStretch(2);
    pLayout->addWidget(m_pNothing);
    pLayout->addWidget(pButton, 0, Qt::AlignHCenter);
    pLayout->addStretch(3);
    return pPage;
}

QVector<int> COrmSequenceList::widths() const
{
    // The last column follows the window.
    QVector<int> lstWidths;
    for (int nColumn = 0; nColumn < COrmSequenceModel::eColumns - 1; ++nColumn)
        lstWidths.append(m_pTree->columnWidth(nColumn));
    return lstWidths;
}

void COrmSequenceList::fitColumns()
{
    if (hasOwnWidths())
        return;
    // Date and results as wide as they are, names share the rest.
    const int nEm = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    const int nDate = fontMetrics().horizontalAdvance(QStringLiteral("2000-00-00 00:00")) + nEm;
    const int nResults = m_pTree->header()->sectionSizeHint(COrmSequenceModel::eResults) + nEm;
    const int nNames = m_pTree->viewport()->width() - nDate - nResults;
    m_pTree->setColumnWidth(COrmSequenceModel::eID, std::max(9 * nEm, nNames * 6 / 11));
    m_pTree->setColumnWidth(COrmSequenceModel::eSubject, std::max(6 * nEm, nNames * 5 / 11));
    m_pTree->setColumnWidth(COrmSequenceModel::eDate, nDate);
    m_lstFitted = widths();
}

bool COrmSequenceList::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Resize && pWatched == m_pTree->viewport())
        fitColumns();
    return QWidget::eventFilter(pWatched, pEvent);
}

void COrmSequenceList::filterChanged()
{
    updateCount();
    selectFirst();
}

void COrmSequenceList::updateCount()
{
    const int nAll = m_pSorted->sourceModel()->rowCount();
    const int nShown = m_pSorted->rowCount();
    m_pCount->setText(m_pFilter->text().trimmed().isEmpty() ? (nAll == 1 ? tr("1 sequence") : tr("%n sequences", nullptr, nAll))
                                                            : tr("%1 of %2").arg(nShown).arg(nAll));
    m_pCount->setAccessibleName(tr("%1 of %2 sequences are shown").arg(nShown).arg(nAll));
    const bool bNothing = nAll > 0 && nShown == 0;
    if (bNothing)
        m_pNothing->setText(tr("No sequence has every word of \"%1\".").arg(COrmPlainText::visible(m_pFilter->text().trimmed())));
    m_pPages->setCurrentIndex(bNothing ? 1 : 0);
}

QStringList COrmSequenceList::selectedIDs() const
{
    QModelIndexList lstRows = m_pTree->selectionModel()->selectedRows();
    std::sort(lstRows.begin(), lstRows.end(), [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    QStringList lstIDs;
    for (const QModelIndex& objRow : qAsConst(lstRows))
        lstIDs.append(objRow.data(COrmSequenceModel::eSequenceIDRole).toString());
    return lstIDs;
}

QString COrmSequenceList::currentID() const
{
    const QModelIndex objCurrent = m_pTree->currentIndex();
    if (objCurrent.isValid() && m_pTree->selectionModel()->isRowSelected(objCurrent.row(), QModelIndex()))
        return objCurrent.data(COrmSequenceModel::eSequenceIDRole).toString();
    return selectedIDs().value(0);
}

void COrmSequenceList::selectAll()
{
    m_pTree->selectAll();
}

void COrmSequenceList::selectFirst()
{
    if (m_pTree->selectionModel()->hasSelection())
        return;
    QModelIndex objChosen = m_pSorted->index(0, 0);
    for (int nRow = 0; nRow < m_pSorted->rowCount(); ++nRow)
    {
        if (m_pSorted->index(nRow, COrmSequenceModel::eResults).data(COrmSequenceModel::eSortRole).toInt() == 0)
            continue;
        objChosen = m_pSorted->index(nRow, COrmSequenceModel::eID);
        break;
    }
    if (!objChosen.isValid())
        return;
    m_pTree->setCurrentIndex(objChosen);
    m_pTree->scrollTo(objChosen);
}

void COrmSequenceList::find()
{
    m_pFilter->setFocus(Qt::ShortcutFocusReason);
    m_pFilter->selectAll();
}

void COrmSequenceList::focusTable()
{
    if (m_pPages->currentIndex() == 0)
        m_pTree->setFocus();
}

QByteArray COrmSequenceList::columnState() const
{
    return hasOwnWidths() || m_bOwnOrder ? m_pTree->header()->saveState() : QByteArray();
}

void COrmSequenceList::restoreColumnState(const QByteArray& arrState)
{
    if (!arrState.isEmpty() && m_pTree->header()->restoreState(arrState))
        m_lstFitted = {0}; // whatever they are, they are the user's
}
