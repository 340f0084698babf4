#pragma once

#include "OrmShortcutList.h"

#include <QDialog>

class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTreeView;

/// The keys that do something, as a list to search and to copy.
class COrmShortcutsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit COrmShortcutsDialog(QWidget* pParent = nullptr);

    void setShortcuts(const QList<SShortcut>& lstShortcuts);

private:
    /// Copies the selected lines, or all that are shown: command, keys and window, separated by tabs.
    void copy();

    QStandardItemModel* m_pModel;
    QSortFilterProxyModel* m_pShown;
    QTreeView* m_pList;
    QLineEdit* m_pFilter;
    QPushButton* m_pCopy = nullptr;
};
