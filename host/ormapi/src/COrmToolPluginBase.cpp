#include "COrmToolPluginBase.h"

#include "COrmLog.h"
#include "COrmPreference.h"
#include "COrmSignalHandler.h"

COrmToolPluginBase::COrmToolPluginBase() : m_pAction(nullptr) {}

COrmToolPluginBase::~COrmToolPluginBase() = default;

QMenu* COrmToolPluginBase::pluginMenu()
{
    return nullptr;
}

QIcon COrmToolPluginBase::pluginIcon()
{
    return {};
}

QString COrmToolPluginBase::MenuItemBefore()
{
    return {};
}

bool COrmToolPluginBase::isVisible()
{
    return m_bVisible;
}

void COrmToolPluginBase::signalAddWidgetToWorkspace(QWidget* pWidget)
{
    addWidgetToWorkspace(pWidget);
}

void COrmToolPluginBase::signalUpdateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked)
{
    updateToolPluginValidity(pAction, bEnabled, bChecked);
}

bool COrmToolPluginBase::defaultVisibilityForPluggin()
{
    return true;
}

void COrmToolPluginBase::onSignalDatasetChanged(COrmDataset* /*pDataset*/) {}

void COrmToolPluginBase::onSignalSequenceChanged(COrmSequenceDataset* /*pSequence*/) {}

void COrmToolPluginBase::onSignalDatasetRemoved(COrmDataset* /*pDataset*/) {}

void COrmToolPluginBase::onSignalSequenceAdded(COrmSequenceDataset* /*pSequence*/) {}

void COrmToolPluginBase::onSignalSequenceRemoved(COrmSequenceDataset* /*pSequence*/) {}

void COrmToolPluginBase::onSignalROIModified(QString /*strName*/) {}

void COrmToolPluginBase::onSignalROIDeleted() {}

void COrmToolPluginBase::onSignalupdateROIList() {}

void COrmToolPluginBase::onSignalCopyToClipboard(QString /*strObjectName*/) {}

bool COrmToolPluginBase::selectSequence(const COrmSequenceDataset* /*pSequence*/)
{
    return false;
}

void COrmToolPluginBase::addWidgetToWorkspace(QWidget* pWidget)
{
    if (pWidget == nullptr)
        return;
    if (auto* pHub = qobject_cast<COrmSignalHandler*>(COrmPreference::getSignalHandler()))
        emit pHub->signalAddWidgetToWorkspace(pWidget);
}

void COrmToolPluginBase::updateToolPluginValidity(QAction* pAction, bool bEnabled, bool /*bChecked*/)
{
    if (pAction == nullptr)
        return;
    // A tool can open sequences from disk by itself, so its entry is usable with nothing open in the host.
    pAction->setEnabled(true);
    ORM_LOG(1, QStringLiteral("%1 asked for its menu entry to be %2: it stays enabled.")
                   .arg(pAction->text(), bEnabled ? QStringLiteral("enabled") : QStringLiteral("disabled")));
}
