#include "COrmToolNotifier.h"

#include "COrmDataset.h"
#include "COrmPreference.h"
#include "COrmSequenceDataset.h"
#include "COrmSignalHandler.h"
#include "COrmToolPluginBase.h"
#include "OrmGuard.h"

#include <QMetaMethod>

COrmToolNotifier::COrmToolNotifier(QObject* pParent) : QObject(pParent)
{
    using CHub = COrmSignalHandler;
    CHub* pHub = COrmPreference::getSignalHandler();
    connect(pHub, &CHub::signalDatasetChanged, this,
            [this](COrmDataset* p) { tell("onSignalDatasetChanged(COrmDataset*)", Q_ARG(COrmDataset*, p)); });
    connect(pHub, &CHub::signalDatasetRemoved, this,
            [this](COrmDataset* p) { tell("onSignalDatasetRemoved(COrmDataset*)", Q_ARG(COrmDataset*, p)); });
    connect(pHub, &CHub::signalSequenceAdded, this,
            [this](COrmSequenceDataset* p) { tell("onSignalSequenceAdded(COrmSequenceDataset*)", Q_ARG(COrmSequenceDataset*, p)); });
    connect(pHub, &CHub::signalSequenceChanged, this,
            [this](COrmSequenceDataset* p) { tell("onSignalSequenceChanged(COrmSequenceDataset*)", Q_ARG(COrmSequenceDataset*, p)); });
    connect(pHub, &CHub::signalSequenceRemoved, this,
            [this](COrmSequenceDataset* p) { tell("onSignalSequenceRemoved(COrmSequenceDataset*)", Q_ARG(COrmSequenceDataset*, p)); });
    connect(pHub, &CHub::signalROIModified, this,
            [this](const QString& str) { tell("onSignalROIModified(QString)", Q_ARG(QString, str)); });
    connect(pHub, &CHub::signalROIDeleted, this, [this] { tell("onSignalROIDeleted()"); });
    connect(pHub, &CHub::signalupdateROIList, this, [this] { tell("onSignalupdateROIList()"); });
    connect(pHub, &CHub::signalCopyToClipboard, this,
            [this](const QString& str) { tell("onSignalCopyToClipboard(QString)", Q_ARG(QString, str)); });
    connect(pHub, &CHub::signalToolsMenuLongiStudyUpdate, this, [this] { tell("onSignalToolsMenuLongiStudyUpdate()"); });
}

void COrmToolNotifier::addTool(COrmToolPluginBase* pTool)
{
    m_lstTools.append(pTool);
}

void COrmToolNotifier::tell(const char* pSlot, QGenericArgument objArgument)
{
    const QList<QPointer<COrmToolPluginBase>> lstTools = m_lstTools; // a tool may change the list while it is told
    for (const QPointer<COrmToolPluginBase>& pTool : lstTools)
    {
        if (!pTool)
            continue;
        const int nSlot = pTool->metaObject()->indexOfSlot(pSlot);
        if (nSlot < 0)
            continue;
        OrmGuard::run(QStringLiteral("%1 of %2").arg(QLatin1String(pSlot), QLatin1String(pTool->metaObject()->className())),
                      [&] { pTool->metaObject()->method(nSlot).invoke(pTool, Qt::DirectConnection, objArgument); });
    }
}
