#pragma once

#include <QStringList>
#include <QVector>
#include <QWidget>

class COrmFilterEdit;
class COrmSequenceModel;
class COrmSequenceSortModel;
class QLabel;
class QStackedWidget;
class QTreeView;

/// The open sequences as a table that can be sorted and filtered.
class COrmSequenceList : public QWidget
{
    Q_OBJECT

public:
    explicit COrmSequenceList(COrmSequenceModel* pModel, QWidget* pParent = nullptr);

    /// IDs of the selected sequences, in the order shown.
    QStringList selectedIDs() const;
    /// The sequence with the keyboard's mark, if it is selected, else the first selected one; null: none.
    QString currentID() const;
    void selectAll();
    /// Selects the first sequence shown that has saved results, else the first, unless something is selected.
    void selectFirst();
    /// Puts the keyboard into the filter, with its text selected.
    void find();
    /// Puts the keyboard into the table.
    void focusTable();

    /// Empty while the user has changed neither widths nor order.
    QByteArray columnState() const;
    void restoreColumnState(const QByteArray& arrState);

signals:
    void activated(const QString& strSequenceID);
    void selectionChanged();
    void menuRequested(const QPoint& ptGlobal);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QWidget* makeTable();
    QWidget* makeNothing();
    QVector<int> widths() const;
    bool hasOwnWidths() const { return !m_lstFitted.isEmpty() && widths() != m_lstFitted; }
    void fitColumns();
    void filterChanged();
    void updateCount();

    COrmSequenceSortModel* m_pSorted;
    COrmFilterEdit* m_pFilter = nullptr;
    QLabel* m_pCount = nullptr;
    QStackedWidget* m_pPages = nullptr;
    QTreeView* m_pTree = nullptr;
    QLabel* m_pNothing = nullptr; ///< says that the filter leaves nothing
    QVector<int> m_lstFitted;     ///< widths that fitColumns() gave; empty: none yet
    bool m_bOwnOrder = false;     ///< the user sorted
};
