#include "COrmSequenceDataset.h"

#include "COrmDataset.h"

#include <QHash>

namespace
{
/// The open sequences by ID.
QHash<QString, COrmSequenceDataset*>& openSequences()
{
    static QHash<QString, COrmSequenceDataset*> s_mapOpen;
    return s_mapOpen;
}
} // namespace

COrmSequenceDataset::COrmSequenceDataset(const SSequenceFacts& sFacts, QObject* pParent) : QObject(pParent), m_sFacts(sFacts)
{
    for (const SClickFacts& sClick : m_sFacts.m_lstClicks)
        m_lstDatasets.append(new COrmDataset(sClick, this));
    updateFlags();
    // The first one with an ID keeps it.
    if (!m_sFacts.m_strSequenceID.isEmpty() && !openSequences().contains(m_sFacts.m_strSequenceID))
        openSequences().insert(m_sFacts.m_strSequenceID, this);
}

COrmSequenceDataset::~COrmSequenceDataset()
{
    COrmSequenceDataset::markClosed();
}

COrmSequenceDataset* COrmSequenceDataset::getSequenceDataset(QString strSequenceID)
{
    return openSequences().value(strSequenceID, nullptr);
}

void COrmSequenceDataset::markClosed()
{
    const auto it = openSequences().find(m_sFacts.m_strSequenceID);
    if (it != openSequences().end() && it.value() == this)
        openSequences().erase(it);
}

bool COrmSequenceDataset::isCTSequence(bool bReread) const
{
    if (!bReread)
        return m_sFacts.m_bCT;
    SSequenceFacts sFresh;
    return OrmSequenceFacts::read(m_sFacts.m_strSequenceFile, sFresh).isEmpty() ? sFresh.m_bCT : m_sFacts.m_bCT;
}

COrmSequenceDataset::SChanges COrmSequenceDataset::update(const SSequenceFacts& sFacts)
{
    SChanges sChanges;
    if (sFacts == m_sFacts)
        return sChanges;
    sChanges.m_bSequence = true;

    QHash<QString, COrmDataset*> mapOld;
    for (COrmDataset* pDataset : qAsConst(m_lstDatasets))
        mapOld.insert(pDataset->getClickNumber(), pDataset);
    QList<COrmDataset*> lstDatasets;
    for (const SClickFacts& sClick : sFacts.m_lstClicks)
    {
        COrmDataset* pDataset = mapOld.take(sClick.m_strClickNumber);
        if (pDataset == nullptr)
        {
            pDataset = new COrmDataset(sClick, this);
            sChanges.m_lstChanged.append(pDataset);
        }
        else if (pDataset->getFacts() != sClick)
        {
            pDataset->setFacts(sClick);
            sChanges.m_lstChanged.append(pDataset);
        }
        lstDatasets.append(pDataset);
    }
    for (COrmDataset* pDataset : qAsConst(m_lstDatasets))
    {
        if (mapOld.contains(pDataset->getClickNumber()))
            sChanges.m_lstRemoved.append(pDataset);
    }
    m_lstDatasets = lstDatasets;
    m_sFacts = sFacts;
    updateFlags();
    return sChanges;
}

void COrmSequenceDataset::updateFlags()
{
    m_bStructuredLight = OrmSequenceFacts::hasStructuredLight(m_sFacts);
    m_bLuminescent = OrmSequenceFacts::isLuminescent(m_sFacts);
    m_bFluorescent = OrmSequenceFacts::isFluorescent(m_sFacts);
    m_bTransIllumination = OrmSequenceFacts::isTransIllumination(m_sFacts);
}
