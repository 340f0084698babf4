#include "OrmLongitudinalStudyBrowserPlugin.h"

#include "COrmSequenceDataset.h"
#include "SequenceEntries.h"

#include <QListWidget>

namespace
{
/// Where the window stands when it is shown.
constexpr int s_nWindowX = 0;
constexpr int s_nWindowY = 70;
/// Room added to the window's first size.
constexpr int s_nExtraWidth = 15;
constexpr int s_nExtraHeight = 40;
} // namespace

COrmLongitudinalStudyBrowserPlugin::COrmLongitudinalStudyBrowserPlugin() : m_pWnd(nullptr) {}

COrmLongitudinalStudyBrowserPlugin::~COrmLongitudinalStudyBrowserPlugin()
{
    delete m_pWnd.data();
}

QMenu* COrmLongitudinalStudyBrowserPlugin::pluginMenu()
{
    return nullptr;
}

QAction* COrmLongitudinalStudyBrowserPlugin::pluginAction()
{
    if (m_pAction == nullptr)
    {
        m_pAction = new QAction(QStringLiteral("Longitudinal Study"), this);
        m_pAction->setObjectName(QStringLiteral("Longitudinal Study"));
    }
    return m_pAction;
}

QIcon COrmLongitudinalStudyBrowserPlugin::pluginIcon()
{
    return QIcon();
}

QString COrmLongitudinalStudyBrowserPlugin::PluginMenuItem()
{
    return QStringLiteral("Longitudinal Study");
}

QString COrmLongitudinalStudyBrowserPlugin::MenuItemBefore()
{
    return QStringLiteral("Image Overlay");
}

void COrmLongitudinalStudyBrowserPlugin::init()
{
    m_pWnd = nullptr;
    m_bVisible = false;
}

void COrmLongitudinalStudyBrowserPlugin::show()
{
    m_pWnd->onInitialUpdate();
    m_pWnd->showNormal();
    m_pWnd->move(s_nWindowX, s_nWindowY);
    m_pWnd->activateWindow();
}

bool COrmLongitudinalStudyBrowserPlugin::createObject()
{
    if (m_pWnd)
    {
        show();
        m_pWnd->updateUIControls();
        return true;
    }

    m_pWnd = new CLongitudinalStudyBrowserWnd(nullptr);
    if (!m_pWnd)
    {
        return false;
    }
    signalAddWidgetToWorkspace(m_pWnd);
    m_pWnd->move(s_nWindowX, s_nWindowY);
    m_pWnd->resize(m_pWnd->frameSize().width() + s_nExtraWidth, m_pWnd->frameSize().height() + s_nExtraHeight);
    m_lstSOLASequences.insert(0, QStringLiteral("SOLA"));
    m_lstNOVASequences.insert(0, QStringLiteral("NOVA"));
    m_pWnd->updateSequenceNameList(m_lstSOLASequences);
    m_pWnd->updateSequenceNameList(m_lstNOVASequences);
    return true;
}

bool COrmLongitudinalStudyBrowserPlugin::isVisible()
{
    return m_bVisible;
}

void COrmLongitudinalStudyBrowserPlugin::signalAddWidgetToWorkspace(QWidget* pWidget)
{
    addWidgetToWorkspace(pWidget);
}

void COrmLongitudinalStudyBrowserPlugin::signalUpdateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked)
{
    updateToolPluginValidity(pAction, bEnabled, bChecked);
}

bool COrmLongitudinalStudyBrowserPlugin::defaultVisibilityForPluggin()
{
    return true;
}

bool COrmLongitudinalStudyBrowserPlugin::selectSequence(const COrmSequenceDataset* pSequence)
{
    if (!m_pWnd || pSequence == nullptr)
    {
        return false;
    }
    const QString strSequenceID = pSequence->getSequenceID();
    const SSequenceFacts& sFacts = pSequence->getFacts();
    QStringList lstEntries = {SequenceEntries::prefixOf(0) + strSequenceID, SequenceEntries::prefixOf(1) + strSequenceID};
    if (sFacts.m_nSOLAResults == 0 && sFacts.m_nNOVAResults > 0)
    {
        lstEntries.swapItemsAt(0, 1);
    }
    auto* pList = m_pWnd->findChild<QListWidget*>(QStringLiteral("m_pSequenceNameLW"));
    for (const QString& strEntry : qAsConst(lstEntries))
    {
        const QList<QListWidgetItem*> lstItems = pList->findItems(strEntry, Qt::MatchFixedString | Qt::MatchCaseSensitive);
        if (!lstItems.isEmpty())
        {
            pList->setCurrentItem(lstItems.first());
            pList->scrollToItem(lstItems.first());
            emit pList->itemClicked(lstItems.first());
            return true;
        }
    }
    return false;
}

void COrmLongitudinalStudyBrowserPlugin::onSignalDatasetChanged(COrmDataset*)
{
    signalUpdateToolPluginValidity(pluginAction(), true, false);
}

void COrmLongitudinalStudyBrowserPlugin::onSignalSequenceChanged(COrmSequenceDataset*)
{
    signalUpdateToolPluginValidity(pluginAction(), true, false);
}

void COrmLongitudinalStudyBrowserPlugin::onSignalDatasetRemoved(COrmDataset*) {}

void COrmLongitudinalStudyBrowserPlugin::onSignalSequenceAdded(COrmSequenceDataset* pSequence)
{
    if (m_pWnd)
    {
        m_pWnd->onSequenceAdded(pSequence);
    }
    else
    {
        // A sequence of both kinds goes into the first list alone, unlike in the window.
        const SequenceEntries::SFlags sFlags = SequenceEntries::flagsOf(*pSequence);
        if (SequenceEntries::isSOLA(sFlags))
        {
            SequenceEntries::appendMissing(m_lstSOLASequences, {pSequence->getSequenceID()});
        }
        else if (SequenceEntries::isNOVA(sFlags))
        {
            SequenceEntries::appendMissing(m_lstNOVASequences, {pSequence->getSequenceID()});
        }
    }
    signalUpdateToolPluginValidity(pluginAction(), true, false);
}

void COrmLongitudinalStudyBrowserPlugin::onSignalSequenceRemoved(COrmSequenceDataset* pSequence)
{
    if (m_pWnd)
    {
        m_pWnd->onSequenceRemoved(pSequence);
        return;
    }
    const QString strSequenceID = pSequence->getSequenceID();
    if (m_lstSOLASequences.contains(strSequenceID))
    {
        m_lstSOLASequences.removeOne(strSequenceID);
    }
    else if (m_lstNOVASequences.contains(strSequenceID))
    {
        m_lstNOVASequences.removeOne(strSequenceID);
    }
}

void COrmLongitudinalStudyBrowserPlugin::onSignalROIModified(QString) {}

void COrmLongitudinalStudyBrowserPlugin::onSignalROIDeleted() {}

void COrmLongitudinalStudyBrowserPlugin::onSignalupdateROIList() {}

void COrmLongitudinalStudyBrowserPlugin::onSignalCopyToClipboard(QString strObjectName)
{
    if (m_pWnd && m_pWnd->objectName().toLower() == strObjectName.toLower())
    {
        m_pWnd->onClickCopyToClipboard();
    }
}

void COrmLongitudinalStudyBrowserPlugin::onSignalToolsMenuLongiStudyUpdate()
{
    if (!m_pWnd)
    {
        return;
    }
    m_pWnd->clearViews();
    m_pWnd->hide();
    m_lstNOVASequences.clear();
    m_lstSOLASequences.clear();
}
