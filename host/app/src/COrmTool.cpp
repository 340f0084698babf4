#include "COrmTool.h"

#include "COrmToolPluginBase.h"
#include "OrmGuard.h"

#include <QAction>
#include <QMenu>
#include <QPluginLoader>
#include <utility>

COrmTool::COrmTool(COrmToolPluginBase* pTool, QString strFile, QString strIdentifier, std::unique_ptr<QPluginLoader> pLoader)
    : m_pTool(pTool), m_strFile(std::move(strFile)), m_strIdentifier(std::move(strIdentifier)), m_pLoader(std::move(pLoader))
{
}

COrmTool::~COrmTool()
{
    if (m_pLoader)
        OrmGuard::run(QStringLiteral("Unloading %1").arg(m_strName), [this] { m_pLoader->unload(); });
}

COrmToolPluginBase* COrmTool::plugin() const
{
    return m_pTool;
}

QAction* COrmTool::action() const
{
    return m_pAction;
}

QMenu* COrmTool::menu() const
{
    return m_pMenu;
}

QString COrmTool::setUp()
{
    QString strReason;
    const bool bDone = OrmGuard::run(
        tr("Setting the tool up"),
        [this]
        {
            m_pTool->init();
            m_strName = m_pTool->PluginMenuItem();
            m_strBefore = m_pTool->MenuItemBefore();
            m_pMenu = m_pTool->pluginMenu();
            m_pAction = m_pTool->pluginAction();
            if (m_strName.isEmpty() && m_pAction)
                m_strName = m_pAction->text().remove(QLatin1Char('&'));
            if (!m_pMenu && !m_pAction && !m_strName.isEmpty())
            {
                m_pOwnAction = std::make_unique<QAction>(m_strName);
                m_pAction = m_pOwnAction.get();
            }
            const QIcon objIcon = m_pTool->pluginIcon();
            const bool bVisible = m_pTool->defaultVisibilityForPluggin();
            for (QAction* pAction : {m_pAction.data(), m_pMenu ? m_pMenu->menuAction() : nullptr})
            {
                if (pAction == nullptr)
                    continue;
                pAction->setVisible(bVisible);
                if (!objIcon.isNull())
                    pAction->setIcon(objIcon);
            }
        },
        &strReason);
    if (!bDone)
        return strReason;
    return m_strName.isEmpty() ? tr("The tool has no name.") : QString();
}

bool COrmTool::use(QString* pstrReason)
{
    bool bMade = false;
    QString strReason;
    const bool bReturned = OrmGuard::run(
        m_strName,
        [this, &bMade]
        {
            if (!m_pTool)
                return;
            bMade = m_pTool->createObject();
            if (bMade && !std::exchange(m_bUsed, true))
                m_pTool->show();
        },
        &strReason);
    if (bReturned && bMade)
        return true;
    if (pstrReason != nullptr)
        *pstrReason = bReturned ? tr("%1 could not open its window.").arg(m_strName) : strReason;
    return false;
}

bool COrmTool::select(const COrmSequenceDataset* pSequence)
{
    bool bSelected = false;
    OrmGuard::run(m_strName, [&] { bSelected = m_pTool && m_pTool->selectSequence(pSequence); });
    return bSelected;
}
