#include "COrmSequenceSortModel.h"

#include "COrmSequenceModel.h"
#include "OrmNaturalOrder.h"

#include <QDateTime>
#include <algorithm>

namespace
{
/// The date of the row's sequence, whatever the column.
QDateTime dateOf(const QModelIndex& objIndex)
{
    return objIndex.sibling(objIndex.row(), COrmSequenceModel::eDate).data(COrmSequenceModel::eSortRole).toDateTime();
}
} // namespace

COrmSequenceSortModel::COrmSequenceSortModel(QObject* pParent) : QSortFilterProxyModel(pParent)
{
    setSortRole(COrmSequenceModel::eSortRole);
    setDynamicSortFilter(true);
}

void COrmSequenceSortModel::setFilterText(const QString& strText)
{
    m_lstWords = strText.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    invalidateFilter();
}

bool COrmSequenceSortModel::lessThan(const QModelIndex& objLeft, const QModelIndex& objRight) const
{
    const QVariant varLeft = objLeft.data(COrmSequenceModel::eSortRole);
    const QVariant varRight = objRight.data(COrmSequenceModel::eSortRole);
    if (objLeft.column() == COrmSequenceModel::eResults)
    {
        if (varLeft.toInt() != varRight.toInt())
            return varLeft.toInt() < varRight.toInt();
    }
    else if (objLeft.column() != COrmSequenceModel::eDate)
    {
        const int nOrder = OrmNaturalOrder::compare(varLeft.toString(), varRight.toString());
        if (nOrder != 0)
            return nOrder < 0;
    }
    if (objLeft.column() == COrmSequenceModel::eDate || objLeft.column() == COrmSequenceModel::eSubject)
    {
        const QDateTime objLeftDate = dateOf(objLeft);
        const QDateTime objRightDate = dateOf(objRight);
        // What has no date stands at the end in both directions of sorting.
        if (objLeftDate.isValid() != objRightDate.isValid())
            return objLeftDate.isValid() == (sortOrder() == Qt::AscendingOrder);
        if (objLeftDate != objRightDate)
            return objLeftDate < objRightDate;
    }
    // What is equal stands in the order of the IDs.
    return OrmNaturalOrder::compare(objLeft.data(COrmSequenceModel::eSequenceIDRole).toString(),
                                    objRight.data(COrmSequenceModel::eSequenceIDRole).toString()) < 0;
}

bool COrmSequenceSortModel::filterAcceptsRow(int nRow, const QModelIndex& objParent) const
{
    if (m_lstWords.isEmpty())
        return true;
    const QString strText = sourceModel()->index(nRow, COrmSequenceModel::eID, objParent).data(COrmSequenceModel::eFilterRole).toString();
    return std::all_of(m_lstWords.cbegin(), m_lstWords.cend(),
                       [&strText](const QString& strWord) { return strText.contains(strWord, Qt::CaseInsensitive); });
}
