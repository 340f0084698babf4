#include "COrmSequenceModel.h"

#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "OrmIcons.h"

#include <QDateTime>

namespace
{
QDateTime dateOf(const QString& strDateTime)
{
    return QDateTime::fromString(strDateTime, Qt::ISODate);
}
} // namespace

COrmSequenceModel::COrmSequenceModel(COrmSequenceCollection* pCollection, QObject* pParent)
    : COrmTableModel({tr("Sequence"), tr("Subject"), tr("Date"), tr("Saved results")}, pParent), m_lstSequences(pCollection->sequences())
{
    connect(pCollection, &COrmSequenceCollection::added, this, &COrmSequenceModel::insertLast);
    connect(pCollection, &COrmSequenceCollection::changed, this, &COrmSequenceModel::update);
    connect(pCollection, &COrmSequenceCollection::aboutToClose, this, &COrmSequenceModel::remove);
}

QVariant COrmSequenceModel::data(const QModelIndex& objIndex, int nRole) const
{
    if (!objIndex.isValid() || objIndex.row() >= m_lstSequences.size())
        return {};
    const COrmSequenceDataset& objSequence = *m_lstSequences.at(objIndex.row());
    switch (nRole)
    {
    case Qt::DisplayRole:
        return text(objSequence, objIndex.column());
    case Qt::DecorationRole:
        return objIndex.column() == eID
                   ? QVariant(OrmIcons::kindIcon(objSequence.isLuminescentSequence(), objSequence.isFluorescentSequence()))
                   : QVariant();
    case Qt::AccessibleTextRole:
        return objIndex.column() == eID ? text(objSequence, eID) + QStringLiteral(", ") + kindText(objSequence)
                                        : text(objSequence, objIndex.column());
    case Qt::ToolTipRole:
        // Plain text in one line: the view's delegate makes the tip of it.
        return QStringLiteral("%1 (%2)").arg(objSequence.getSequenceInfoPath(), kindText(objSequence));
    case eSortRole:
        return sortKey(objSequence, objIndex.column());
    case eSequenceIDRole:
        return objSequence.getSequenceID();
    case eFilterRole:
        return QStringList{text(objSequence, eID), text(objSequence, eSubject), text(objSequence, eDate), text(objSequence, eResults),
                           kindText(objSequence)}
            .join(QLatin1Char('\n'));
    default:
        return {};
    }
}

QString COrmSequenceModel::text(const COrmSequenceDataset& objSequence, int nColumn) const
{
    const SSequenceFacts& sFacts = objSequence.getFacts();
    switch (nColumn)
    {
    case eID:
        return sFacts.m_strSequenceID;
    case eSubject:
        return sFacts.m_strSubject;
    case eDate:
        return dateText(sFacts.m_strDateTime);
    case eResults:
        return resultsText(sFacts.m_nSOLAResults, sFacts.m_nNOVAResults);
    default:
        return {};
    }
}

QVariant COrmSequenceModel::sortKey(const COrmSequenceDataset& objSequence, int nColumn)
{
    const SSequenceFacts& sFacts = objSequence.getFacts();
    switch (nColumn)
    {
    case eID:
        return sFacts.m_strSequenceID;
    case eSubject:
        return sFacts.m_strSubject;
    case eDate:
        return dateOf(sFacts.m_strDateTime);
    case eResults:
        return sFacts.m_nSOLAResults + sFacts.m_nNOVAResults;
    default:
        return {};
    }
}

QString COrmSequenceModel::kindText(const COrmSequenceDataset& objSequence)
{
    QStringList lstWords;
    if (objSequence.isLuminescentSequence())
        lstWords.append(tr("luminescent"));
    if (objSequence.isFluorescentSequence())
        lstWords.append(tr("fluorescent"));
    if (objSequence.isTransIlluminationSequence())
        lstWords.append(tr("trans-illumination"));
    if (objSequence.isTransIllumOverviewResultSequence())
        lstWords.append(tr("overview result"));
    if (objSequence.isSLASequence())
        lstWords.append(tr("structured-light surface"));
    if (objSequence.isCTSequence(false))
        lstWords.append(tr("CT surface"));
    return lstWords.isEmpty() ? tr("images only") : lstWords.join(QStringLiteral(", "));
}

QString COrmSequenceModel::resultsText(int nSOLA, int nNOVA)
{
    QStringList lstWords;
    if (nSOLA > 0)
        lstWords.append(QStringLiteral("%1 SOLA").arg(nSOLA));
    if (nNOVA > 0)
        lstWords.append(QStringLiteral("%1 NOVA").arg(nNOVA));
    return lstWords.isEmpty() ? tr("none") : lstWords.join(QStringLiteral(", "));
}

QString COrmSequenceModel::dateText(const QString& strDateTime)
{
    const QDateTime objDate = dateOf(strDateTime);
    const bool bDayAlone = !strDateTime.contains(QLatin1Char(':')); // what no file says is not shown as midnight
    return objDate.isValid() ? objDate.toString(bDayAlone ? QStringLiteral("yyyy-MM-dd") : QStringLiteral("yyyy-MM-dd HH:mm"))
                             : strDateTime;
}

void COrmSequenceModel::insertLast(COrmSequenceDataset* pSequence)
{
    beginInsertRows(QModelIndex(), m_lstSequences.size(), m_lstSequences.size());
    m_lstSequences.append(pSequence);
    endInsertRows();
}

void COrmSequenceModel::remove(COrmSequenceDataset* pSequence)
{
    const int nRow = m_lstSequences.lastIndexOf(pSequence);
    if (nRow < 0)
        return;
    beginRemoveRows(QModelIndex(), nRow, nRow);
    m_lstSequences.removeAt(nRow);
    endRemoveRows();
}

void COrmSequenceModel::update(COrmSequenceDataset* pSequence)
{
    const int nRow = m_lstSequences.lastIndexOf(pSequence);
    if (nRow >= 0)
        emit dataChanged(index(nRow, 0), index(nRow, eColumns - 1));
}
