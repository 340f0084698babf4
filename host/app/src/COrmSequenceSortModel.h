#pragma once

#include <QSortFilterProxyModel>

/// Sorts sequences: numbers inside IDs count as numbers, what has no readable date stands at the end. Shows those of which the ID or the
/// subject contains the filter text.
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
    QString m_strFilter;
};
