#pragma once

#include <QStringList>
#include <QWidget>

class COrmSequenceCollection;
class COrmSequenceModel;
class COrmSequenceSortModel;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTreeView;

/// The list of open sequences; with none open, a page that says what to do.
class COrmSequenceView : public QWidget
{
    Q_OBJECT

public:
    explicit COrmSequenceView(COrmSequenceCollection* pCollection, QWidget* pParent = nullptr);

    /// IDs of the selected sequences, in the order shown.
    QStringList selectedIDs() const;
    /// The sequence with the keyboard's mark, if it is selected, else the first selected one; null: none.
    QString currentID() const;
    void selectAll();
    /// Has the empty page say that a search is going on.
    void setSearching(bool bSearching);

    QByteArray columnState() const;
    void restoreColumnState(const QByteArray& arrState);

signals:
    void openRequested();
    void activated(const QString& strSequenceID);
    void selectionChanged();
    void menuRequested(const QPoint& ptGlobal);

private:
    QWidget* makeEmptyPage();
    QWidget* makeListPage();
    void updatePage();

    COrmSequenceModel* m_pModel;
    COrmSequenceSortModel* m_pSorted;
    QStackedWidget* m_pPages = nullptr;
    QTreeView* m_pTree = nullptr;
    QLineEdit* m_pFilter = nullptr;
    QLabel* m_pEmptyHeading = nullptr;
    QLabel* m_pEmptyText = nullptr;
    QPushButton* m_pOpenButton = nullptr;
};
