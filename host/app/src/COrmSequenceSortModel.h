#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

/// Sorts sequences: numbers inside IDs count as numbers, what has no readable date stands at the end, what has the same subject stands by
/// its date. Shows those in which every word of the filter occurs, case aside, in the ID, the subject, the date, the kind or the results.
class COrmSequenceSortModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit COrmSequenceSortModel(QObject* pParent = nullptr);

    void setFilterText(const QString& strText);

protected:
    bool lessThan(const QModelIndex& objLeft, const QModelIndex& objRight) const override;
    bool filterAcceptsRow(int nRow, const QModelIndex& objParent) const override;

private:
    QStringList m_lstWords; ///< of the filter
};
