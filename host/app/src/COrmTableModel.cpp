#include "COrmTableModel.h"

#include <utility>

COrmTableModel::COrmTableModel(QStringList lstTitles, QObject* pParent) : QAbstractTableModel(pParent), m_lstTitles(std::move(lstTitles)) {}

int COrmTableModel::rowCount(const QModelIndex& objParent) const
{
    return objParent.isValid() ? 0 : rows();
}

int COrmTableModel::columnCount(const QModelIndex& objParent) const
{
    return objParent.isValid() ? 0 : m_lstTitles.size();
}

QVariant COrmTableModel::headerData(int nSection, Qt::Orientation eOrientation, int nRole) const
{
    if (eOrientation != Qt::Horizontal || nRole != Qt::DisplayRole || nSection < 0 || nSection >= m_lstTitles.size())
        return {};
    return m_lstTitles.at(nSection);
}
