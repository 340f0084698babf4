#include "COrmClickModel.h"

#include "OrmGlyphs.h"

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

COrmClickModel::COrmClickModel(QObject* pParent) : QAbstractTableModel(pParent) {}

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

int COrmClickModel::rowCount(const QModelIndex& objParent) const
{
    return objParent.isValid() ? 0 : m_lstClicks.size();
}

int COrmClickModel::columnCount(const QModelIndex& objParent) const
{
    return objParent.isValid() ? 0 : eColumns;
}

QVariant COrmClickModel::data(const QModelIndex& objIndex, int nRole) const
{
    if (!objIndex.isValid() || objIndex.row() >= m_lstClicks.size())
        return {};
    const SClickFacts& sClick = m_lstClicks.at(objIndex.row());
    if (nRole == Qt::DecorationRole && objIndex.column() == eClick)
    {
        if (OrmClickFacts::isLuminescent(sClick))
            return QIcon(QStringLiteral(":/Resource/luminescent_icon.xpm"));
        if (OrmClickFacts::isFluorescent(sClick))
            return QIcon(QStringLiteral(":/Resource/fluorescent_icon.xpm"));
        return OrmGlyphs::icon(OrmGlyphs::ePhotograph);
    }
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

QVariant COrmClickModel::headerData(int nSection, Qt::Orientation eOrientation, int nRole) const
{
    if (eOrientation != Qt::Horizontal || nRole != Qt::DisplayRole)
        return {};
    switch (nSection)
    {
    case eClick:
        return tr("Image");
    case eEmission:
        return tr("Emission");
    case eExcitation:
        return tr("Excitation");
    case eExposure:
        return tr("Exposure");
    default:
        return {};
    }
}
