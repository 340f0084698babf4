#include "COrmSequenceSortModel.h"

#include "COrmSequenceModel.h"
#include "OrmNaturalOrder.h"

#include <QDateTime>

COrmSequenceSortModel::COrmSequenceSortModel(QObject* pParent) : QSortFilterProxyModel(pParent)
{
    setSortRole(COrmSequenceModel::eSortRole);
    setDynamicSortFilter(true);
}

void COrmSequenceSortModel::setFilterText(const QString& strText)
{
    m_strFilter = strText;
    invalidateFilter();
}

bool COrmSequenceSortModel::lessThan(const QModelIndex& objLeft, const QModelIndex& objRight) const
{
    const QVariant varLeft = objLeft.data(COrmSequenceModel::eSortRole);
    const QVariant varRight = objRight.data(COrmSequenceModel::eSortRole);
    if (objLeft.column() == COrmSequenceModel::eDate)
    {
        const QDateTime objLeftDate = varLeft.toDateTime();
        const QDateTime objRightDate = varRight.toDateTime();
        if (objLeftDate.isValid() != objRightDate.isValid())
        {
            // At the end in both directions of sorting.
            return objLeftDate.isValid() == (sortOrder() == Qt::AscendingOrder);
        }
        if (objLeftDate != objRightDate)
            return objLeftDate < objRightDate;
    }
    else if (objLeft.column() == COrmSequenceModel::eResults)
    {
        if (varLeft.toInt() != varRight.toInt())
            return varLeft.toInt() < varRight.toInt();
    }
    else
    {
        const int nOrder = OrmNaturalOrder::compare(varLeft.toString(), varRight.toString());
        if (nOrder != 0)
            return nOrder < 0;
    }
    // What is equal stands in the order of the IDs.
    return OrmNaturalOrder::compare(objLeft.data(COrmSequenceModel::eSequenceIDRole).toString(),
                                    objRight.data(COrmSequenceModel::eSequenceIDRole).toString()) < 0;
}

bool COrmSequenceSortModel::filterAcceptsRow(int nRow, const QModelIndex& objParent) const
{
    if (m_strFilter.isEmpty())
        return true;
    for (const int nColumn : {int(COrmSequenceModel::eID), int(COrmSequenceModel::eSubject)})
    {
        if (sourceModel()->index(nRow, nColumn, objParent).data().toString().contains(m_strFilter, Qt::CaseInsensitive))
            return true;
    }
    return false;
}
