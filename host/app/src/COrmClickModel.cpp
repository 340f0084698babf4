#include "COrmClickModel.h"

#include "OrmIcons.h"

#include <algorithm>

namespace
{
/// A quantity with its unit; what is no number stands as it is.
QString quantity(const QString& strValue, const QString& strUnit)
{
    bool bNumber = false;
    strValue.toDouble(&bNumber);
    return bNumber ? strValue + QLatin1Char(' ') + strUnit : strValue;
}
} // namespace

COrmClickModel::COrmClickModel(QObject* pParent) : COrmTableModel({tr("Image"), tr("Emission"), tr("Excitation"), tr("Exposure")}, pParent)
{
}

void COrmClickModel::setClicks(const QVector<SClickFacts>& lstClicks)
{
    beginResetModel();
    m_lstClicks = lstClicks;
    endResetModel();
}

bool COrmClickModel::hasExcitation() const
{
    return std::any_of(m_lstClicks.cbegin(), m_lstClicks.cend(), [](const SClickFacts& s) { return !s.m_strExcitationFilter.isEmpty(); });
}

QVariant COrmClickModel::data(const QModelIndex& objIndex, int nRole) const
{
    if (!objIndex.isValid() || objIndex.row() >= m_lstClicks.size())
        return {};
    const SClickFacts& sClick = m_lstClicks.at(objIndex.row());
    if (nRole == Qt::DecorationRole && objIndex.column() == eClick)
        return OrmIcons::kindIcon(OrmClickFacts::isLuminescent(sClick), OrmClickFacts::isFluorescent(sClick));
    if (nRole != Qt::DisplayRole)
        return {};
    switch (objIndex.column())
    {
    case eClick:
        return sClick.m_strClickNumber;
    case eEmission:
        return quantity(sClick.m_strEmissionFilter, QStringLiteral("nm"));
    case eExcitation:
        return quantity(sClick.m_strExcitationFilter, QStringLiteral("nm"));
    case eExposure:
        return quantity(sClick.m_strExposureTime, QStringLiteral("s"));
    default:
        return {};
    }
}
