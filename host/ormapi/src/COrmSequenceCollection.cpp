#include "COrmSequenceCollection.h"

#include "COrmDataset.h"
#include "COrmLog.h"
#include "COrmPreference.h"
#include "COrmSequenceDataset.h"
#include "COrmSignalHandler.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(COrmSequenceCollection)
};

COrmSignalHandler* hub()
{
    return qobject_cast<COrmSignalHandler*>(COrmPreference::getSignalHandler());
}

bool isSameFolder(const QString& strFirst, const QString& strSecond)
{
    if (strFirst == strSecond)
        return true;
    const QString strCanonical = QFileInfo(strFirst).canonicalFilePath();
    return !strCanonical.isEmpty() && strCanonical == QFileInfo(strSecond).canonicalFilePath();
}
} // namespace

COrmSequenceCollection::COrmSequenceCollection(QObject* pParent) : QObject(pParent) {}

COrmSequenceCollection::~COrmSequenceCollection()
{
    closeAll();
}

COrmSequenceDataset* COrmSequenceCollection::add(const SSequenceFacts& sFacts, QString* pstrReason)
{
    QString strReason;
    if (sFacts.m_strSequenceID.isEmpty())
        strReason = CText::tr("%1 names no sequence.").arg(sFacts.m_strSequenceFile);
    else if (sFacts.m_lstClicks.isEmpty())
        strReason = CText::tr("Sequence %1 has no click that can be read.").arg(sFacts.m_strSequenceID);
    const COrmSequenceDataset* pOpen = COrmSequenceDataset::getSequenceDataset(sFacts.m_strSequenceID);
    if (strReason.isEmpty() && pOpen != nullptr && !isSameFolder(pOpen->getSequenceInfoPath(), sFacts.m_strInfoPath))
        strReason = CText::tr("Sequence %1 is open from %2 already: the one in %3 was left out.")
                        .arg(sFacts.m_strSequenceID, pOpen->getSequenceInfoPath(), sFacts.m_strInfoPath);
    if (!strReason.isEmpty() || pOpen != nullptr)
    {
        if (pstrReason != nullptr)
            *pstrReason = strReason;
        return nullptr;
    }

    auto* pSequence = new COrmSequenceDataset(sFacts, this);
    m_lstSequences.append(pSequence);
    ORM_LOG(1, QStringLiteral("Opened sequence %1 from %2.").arg(pSequence->getSequenceID(), pSequence->getSequenceInfoPath()));
    if (COrmSignalHandler* pHub = hub())
        emit pHub->signalSequenceAdded(pSequence);
    emit added(pSequence);
    return pSequence;
}

SScanOutcome COrmSequenceCollection::open(const QStringList& lstPaths, const OrmSequenceScanner::FnProgress& fnProgress)
{
    QStringList lstRefused;
    SScanOutcome sOutcome = OrmSequenceScanner::scan(
        lstPaths,
        [this, &lstRefused](const SSequenceFacts& sFacts)
        {
            QString strReason;
            if (add(sFacts, &strReason) == nullptr && !strReason.isEmpty() && lstRefused.size() < OrmSequenceScanner::s_nMaxProblems)
                lstRefused.append(strReason);
        },
        fnProgress);
    sOutcome.m_lstProblems += lstRefused;
    for (const QString& strProblem : qAsConst(sOutcome.m_lstProblems))
        ORM_LOG(2, strProblem);
    return sOutcome;
}

bool COrmSequenceCollection::close(const QString& strSequenceID)
{
    COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequenceID);
    if (pSequence == nullptr || pSequence->parent() != this)
        return false;
    const QString strID = pSequence->getSequenceID(); // the argument may be the sequence's own
    emit aboutToClose(pSequence);
    m_lstSequences.removeAt(m_lstSequences.lastIndexOf(pSequence)); // closing all goes from the end
    pSequence->markClosed();
    if (COrmSignalHandler* pHub = hub())
    {
        const QList<COrmDataset*> lstDatasets = pSequence->getDatasets();
        for (COrmDataset* pDataset : lstDatasets)
            emit pHub->signalDatasetRemoved(pDataset);
        emit pHub->signalSequenceRemoved(pSequence);
    }
    pSequence->deleteLater(); // somebody may be told of it just now: whoever else is told still needs it
    ORM_LOG(1, QStringLiteral("Closed sequence %1.").arg(strID));
    emit closed(strID);
    return true;
}

void COrmSequenceCollection::closeAll()
{
    while (!m_lstSequences.isEmpty())
    {
        if (!close(m_lstSequences.last()->getSequenceID()))
            break;
    }
}

QString COrmSequenceCollection::refresh(const QString& strSequenceID)
{
    COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequenceID);
    if (pSequence == nullptr || pSequence->parent() != this)
        return CText::tr("Sequence %1 is not open.").arg(strSequenceID);

    SSequenceFacts sFacts;
    QString strReason = OrmSequenceFacts::read(pSequence->getFacts().m_strSequenceFile, sFacts);
    if (strReason.isEmpty() && sFacts.m_strSequenceID != pSequence->getSequenceID())
        strReason = CText::tr("%1 names another sequence now: %2.").arg(sFacts.m_strSequenceFile, sFacts.m_strSequenceID);
    if (!strReason.isEmpty())
    {
        ORM_LOG(2, strReason);
        return strReason;
    }
    for (const QString& strProblem : qAsConst(sFacts.m_lstProblems))
        ORM_LOG(2, strProblem);

    const COrmSequenceDataset::SChanges sChanges = pSequence->update(sFacts);
    COrmSignalHandler* pHub = hub();
    // Whoever is told may close the sequence; then there is nothing left to tell.
    const auto isOpen = [&strSequenceID, pSequence] { return COrmSequenceDataset::getSequenceDataset(strSequenceID) == pSequence; };
    for (const QPointer<COrmDataset>& pDataset : sChanges.m_lstRemoved)
    {
        if (pHub != nullptr && pDataset && isOpen())
            emit pHub->signalDatasetRemoved(pDataset);
        if (pDataset)
            pDataset->deleteLater();
    }
    for (const QPointer<COrmDataset>& pDataset : sChanges.m_lstChanged)
    {
        if (pHub != nullptr && pDataset && isOpen())
            emit pHub->signalDatasetChanged(pDataset);
    }
    if (sChanges.m_bSequence && isOpen())
    {
        if (pHub != nullptr)
            emit pHub->signalSequenceChanged(pSequence);
        if (isOpen())
            emit changed(pSequence);
    }
    return {};
}
