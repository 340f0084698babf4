#include "COrmShortcutsDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

COrmShortcutsDialog::COrmShortcutsDialog(QWidget* pParent)
    : QDialog(pParent),
      m_pModel(new QStandardItemModel(this)),
      m_pShown(new QSortFilterProxyModel(this)),
      m_pList(new QTreeView(this)),
      m_pFilter(new QLineEdit(this))
{
    setObjectName(QStringLiteral("shortcutsDialog"));
    setWindowTitle(tr("Keyboard Shortcuts"));
    m_pShown->setSourceModel(m_pModel);
    m_pShown->setFilterKeyColumn(-1);
    m_pShown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_pFilter->setObjectName(QStringLiteral("shortcutsFilter"));
    m_pFilter->setAccessibleName(tr("Filter of the shortcuts"));
    m_pFilter->setPlaceholderText(tr("Show only commands and keys that contain..."));
    m_pFilter->setClearButtonEnabled(true);
    m_pList->setObjectName(QStringLiteral("shortcutsList"));
    m_pList->setAccessibleName(tr("Shortcuts"));
    m_pList->setModel(m_pShown);
    m_pList->setRootIsDecorated(false);
    m_pList->setUniformRowHeights(true);
    m_pList->setAlternatingRowColors(true);
    m_pList->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    m_pCopy = pButtons->addButton(tr("C&opy"), QDialogButtonBox::ActionRole);
    m_pCopy->setObjectName(QStringLiteral("shortcutsCopy"));
    m_pCopy->setToolTip(tr("Copy the selected lines, or all that are shown"));
    m_pCopy->setAutoDefault(false);
    auto* pClose = pButtons->button(QDialogButtonBox::Close);
    pClose->setObjectName(QStringLiteral("closeShortcuts"));
    pClose->setAutoDefault(false); // Return in the filter closes nothing

    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pFilter);
    pLayout->addWidget(m_pList);
    pLayout->addWidget(pButtons);
    connect(m_pFilter, &QLineEdit::textChanged, m_pShown, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_pCopy, &QPushButton::clicked, this, &COrmShortcutsDialog::copy);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::close);
    resize(60 * fontMetrics().averageCharWidth() + 100, 26 * fontMetrics().height());
}

void COrmShortcutsDialog::setShortcuts(const QList<SShortcut>& lstShortcuts)
{
    m_pModel->clear();
    m_pModel->setHorizontalHeaderLabels({tr("Command"), tr("Keys"), tr("Window")});
    for (const SShortcut& sShortcut : lstShortcuts)
        m_pModel->appendRow({new QStandardItem(sShortcut.m_strCommand),
                             new QStandardItem(sShortcut.m_objKeys.toString(QKeySequence::NativeText)),
                             new QStandardItem(sShortcut.m_strWindow.isEmpty() ? tr("All windows") : sShortcut.m_strWindow)});
    m_pList->resizeColumnToContents(0);
    m_pList->resizeColumnToContents(1);
}

void COrmShortcutsDialog::copy()
{
    QModelIndexList lstRows = m_pList->selectionModel()->selectedRows();
    std::sort(lstRows.begin(), lstRows.end());
    if (lstRows.isEmpty())
    {
        for (int nRow = 0; nRow < m_pShown->rowCount(); ++nRow)
            lstRows.append(m_pShown->index(nRow, 0));
    }
    QString strText;
    for (const QModelIndex& objRow : qAsConst(lstRows))
        strText += objRow.data().toString() + QLatin1Char('\t') + objRow.siblingAtColumn(1).data().toString() + QLatin1Char('\t') +
                   objRow.siblingAtColumn(2).data().toString() + QLatin1Char('\n');
    QApplication::clipboard()->setText(strText);
}
