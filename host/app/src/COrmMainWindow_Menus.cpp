#include "COrmDemoStudy.h"
#include "COrmImageOverlayWindow.h"
#include "COrmLogPanel.h"
#include "COrmMainWindow.h"
#include "COrmPluginManager.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceList.h"
#include "COrmSequenceView.h"
#include "COrmSystemMenus.h"
#include "COrmTool.h"
#include "OrmTexts.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>
#include <iterator>
#include <vector>

namespace
{
/// The text of a menu entry as a user reads it.
QString readable(const QString& strActionText)
{
    QString strText = strActionText.section(QLatin1Char('\t'), 0, 0);
    strText.remove(QLatin1Char('&'));
    if (strText.endsWith(QLatin1String("...")))
        strText.chop(3);
    return strText.trimmed();
}

/// The entry that a tool means. The host's own are known to tools by their English names, which are their data.
QAction* entryNamed(const QMenu* pMenu, const QString& strName)
{
    const QList<QAction*> lstActions = pMenu->actions();
    for (QAction* pAction : lstActions)
    {
        const QString strOwn = pAction->data().toString().isEmpty() ? pAction->text() : pAction->data().toString();
        if (!pAction->isSeparator() && readable(strOwn).compare(readable(strName), Qt::CaseInsensitive) == 0)
            return pAction;
    }
    return nullptr;
}

void bringToFront(QWidget* pWindow)
{
    if (pWindow->isMinimized())
        pWindow->showNormal();
    pWindow->raise();
    pWindow->activateWindow();
}
} // namespace

QAction* COrmMainWindow::addTo(QMenu* pMenu, const QString& strText, const QString& strHint, const char* pObjectName)
{
    QAction* pAction = pMenu->addAction(strText);
    pAction->setStatusTip(strHint);
    pAction->setObjectName(QLatin1String(pObjectName));
    return pAction;
}

void COrmMainWindow::makeMenus()
{
    m_pToolBar = addToolBar(tr("Tools"));
    m_pToolBar->setObjectName(QStringLiteral("toolBar"));
    m_pToolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_pSystemMenus = new COrmSystemMenus(this, m_objSettings);
    makeFileMenu();
    makeEditMenu();
    m_pViewMenu = menuBar()->addMenu(tr("&View"));
    QAction* pLog = m_pLogPanel->toggleViewAction();
    pLog->setText(tr("&Log"));
    pLog->setObjectName(QStringLiteral("actionLog"));
    pLog->setShortcut(QKeySequence(QStringLiteral("Ctrl+L")));
    pLog->setStatusTip(tr("Show or hide what the host and its tools have reported"));
    m_pViewMenu->addAction(pLog);
    m_pViewMenu->addAction(m_pToolBar->toggleViewAction());
    m_pToolBar->toggleViewAction()->setText(tr("Tool &Bar"));
    m_pToolBar->toggleViewAction()->setStatusTip(tr("Show or hide the buttons under the menus"));
    m_pSystemMenus->addThemes(m_pViewMenu);
    makeToolsMenu();
    makeWindowAndHelpMenus();
    m_pSystemMenus->giveIcons();

    m_pSequenceMenu = new QMenu(this);
    m_pSequenceMenu->addAction(m_pCompareAction);
    m_pSequenceMenu->addAction(m_pOverlayAction);
    m_pSequenceMenu->addAction(m_pRefreshAction);
    m_pSequenceMenu->addSeparator();
    m_pSequenceMenu->addAction(m_pCloseAction);
}

void COrmMainWindow::makeFileMenu()
{
    QMenu* pFile = menuBar()->addMenu(tr("&File"));
    QAction* pOpen = addTo(pFile, tr("&Open Study..."), tr("Open every sequence below a folder"), "actionOpenStudy");
    pOpen->setShortcut(QKeySequence::Open);
    connect(pOpen, &QAction::triggered, this, &COrmMainWindow::chooseStudy);

    m_pRecentMenu = pFile->addMenu(tr("Open &Recent"));
    m_pRecentMenu->setObjectName(QStringLiteral("menuRecent"));
    m_pRecentMenu->menuAction()->setStatusTip(tr("Open a folder that was opened before"));
    connect(m_pRecentMenu, &QMenu::aboutToShow, this, &COrmMainWindow::fillRecentMenu);
    connect(pFile, &QMenu::aboutToShow, this, &COrmMainWindow::updateRecent);

    QAction* pDemo = addTo(pFile, tr("Open &Demo Study"), tr("Open a study of a made-up mouse at five time points"), "actionOpenDemo");
    pDemo->setEnabled(m_pDemo->isOffered());
    connect(pDemo, &QAction::triggered, m_pDemo, &COrmDemoStudy::start);

    m_pCompareAction =
        addTo(pFile, tr("Co&mpare Sequence"),
              tr("Open the Longitudinal Study tool with the selected sequence, to compare its saved results"), "actionCompare");
    m_pCompareAction->setShortcut(COrmSystemMenus::control(Qt::Key_Return));
    m_pCompareAction->setEnabled(false);
    connect(m_pCompareAction, &QAction::triggered, this, &COrmMainWindow::compare);
    m_pRefreshAction = addTo(pFile, tr("Re&fresh"), tr("Read the selected sequences again, or all if none is selected"), "actionRefresh");
    m_pRefreshAction->setShortcut(QKeySequence::Refresh);
    connect(m_pRefreshAction, &QAction::triggered, this, &COrmMainWindow::refreshSelected);
    pFile->addSeparator();

    m_pCloseAction = addTo(pFile, tr("&Close Sequence"), tr("Close the selected sequences; no file is changed"), "actionClose");
    m_pCloseAction->setShortcut(COrmSystemMenus::keys(QKeySequence::Close, COrmSystemMenus::control(Qt::Key_W)));
    connect(m_pCloseAction, &QAction::triggered, this, &COrmMainWindow::closeSelected);
    m_pCloseAllAction = addTo(pFile, tr("Close &All Sequences"), tr("Close all sequences; no file is changed"), "actionCloseAll");
    connect(m_pCloseAllAction, &QAction::triggered, this, [this] { m_pSequences->closeAll(); });
    pFile->addSeparator();

    QAction* pQuit = addTo(pFile, tr("&Quit"), tr("Close all windows and end the program"), "actionQuit");
    pQuit->setShortcut(COrmSystemMenus::keys(QKeySequence::Quit, COrmSystemMenus::control(Qt::Key_Q)));
    connect(pQuit, &QAction::triggered, this, &QWidget::close);

    m_pToolBar->addAction(pOpen);
    m_pToolBar->addSeparator();
}

void COrmMainWindow::makeEditMenu()
{
    QMenu* pEdit = menuBar()->addMenu(tr("&Edit"));
    QAction* pCopy = addTo(pEdit, tr("&Copy"), tr("Copy what the active window shows or has selected"), "actionCopy");
    pCopy->setShortcut(QKeySequence::Copy);
    pCopy->setShortcutContext(Qt::ApplicationShortcut); // the windows of tools are windows of their own
    connect(pCopy, &QAction::triggered, this, &COrmMainWindow::copy);
    QAction* pSelectAll = addTo(pEdit, tr("Select &All"), tr("Select all sequences of the list"), "actionSelectAll");
    pSelectAll->setShortcut(QKeySequence::SelectAll);
    connect(pSelectAll, &QAction::triggered, m_pView->list(), &COrmSequenceList::selectAll);
    QAction* pFind = addTo(pEdit, tr("&Find Sequence"), tr("Type words to show only the sequences that have them"), "actionFind");
    pFind->setShortcut(QKeySequence::Find);
    connect(pFind, &QAction::triggered, m_pView->list(), &COrmSequenceList::find);
    pEdit->addSeparator();
    m_pSystemMenus->addPreferences(pEdit);
}

void COrmMainWindow::makeToolsMenu()
{
    m_pToolsMenu = menuBar()->addMenu(tr("&Tools"));
    m_pToolsMenu->setObjectName(QStringLiteral("menuTools"));
    m_pOverlayAction = addTo(m_pToolsMenu, COrmImageOverlayWindow::title(),
                             tr("Show the photograph of the selected sequence with its luminescent image"), "actionImageOverlay");
    m_pOverlayAction->setData(COrmImageOverlayWindow::toolName());
    connect(m_pOverlayAction, &QAction::triggered, this, &COrmMainWindow::showOverlay);
    m_pToolsEnd = m_pToolsMenu->addSeparator();
    QAction* pReset = addTo(m_pToolsMenu, tr("Reset Longitudinal Study"),
                            tr("Take all results out of the Longitudinal Study tool and hide its window"), "actionReset");
    pReset->setData(QStringLiteral("Reset Longitudinal Study"));
    connect(pReset, &QAction::triggered, this, &COrmMainWindow::resetLongitudinalStudy);
}

bool COrmMainWindow::placeTool(COrmTool& objTool, bool bAnywhere)
{
    QAction* pBefore = objTool.menuBefore().isEmpty() ? nullptr : entryNamed(m_pToolsMenu, objTool.menuBefore());
    if (pBefore == nullptr && !bAnywhere && !objTool.menuBefore().isEmpty())
        return false;
    if (pBefore == nullptr)
        pBefore = m_pToolsEnd;
    if (objTool.menu() != nullptr)
        m_pToolsMenu->insertMenu(pBefore, objTool.menu());
    else if (QAction* pAction = objTool.action())
    {
        m_pToolsMenu->insertAction(pBefore, pAction);
        m_pToolBar->addAction(pAction);
        if (pAction->statusTip().isEmpty())
            pAction->setStatusTip(tr("Open the tool %1").arg(objTool.name()));
        connect(pAction, &QAction::triggered, this, [this, pTool = &objTool] { useTool(*pTool); });
    }
    return true;
}

void COrmMainWindow::placeTools()
{
    std::vector<COrmTool*> lstTools;
    for (const auto& pTool : m_pPlugins->tools())
    {
        const bool bPlaced = (pTool->action() != nullptr && m_pToolsMenu->actions().contains(pTool->action())) ||
                             (pTool->menu() != nullptr && m_pToolsMenu->actions().contains(pTool->menu()->menuAction()));
        if (!bPlaced)
            lstTools.push_back(pTool.get());
    }
    // A tool may want to stand before one that comes later.
    size_t nBefore = 0;
    do
    {
        nBefore = lstTools.size();
        lstTools.erase(std::remove_if(lstTools.begin(), lstTools.end(), [this](COrmTool* pTool) { return placeTool(*pTool, false); }),
                       lstTools.end());
    } while (!lstTools.empty() && lstTools.size() < nBefore);
    for (COrmTool* pTool : lstTools)
        placeTool(*pTool, true);
}

void COrmMainWindow::makeWindowAndHelpMenus()
{
    m_pWindowMenu = menuBar()->addMenu(tr("&Window"));
    m_pWindowMenu->setObjectName(QStringLiteral("menuWindow"));
    connect(m_pWindowMenu, &QMenu::aboutToShow, this, &COrmMainWindow::fillWindowMenu);
    m_pNextWindow = new QAction(tr("&Next Window"), this);
    m_pNextWindow->setObjectName(QStringLiteral("actionNextWindow"));
    m_pNextWindow->setStatusTip(tr("Go from this window to the next one"));
    m_pNextWindow->setShortcut(COrmSystemMenus::control(Qt::Key_F6));
    m_pNextWindow->setShortcutContext(Qt::ApplicationShortcut);
    connect(m_pNextWindow, &QAction::triggered, this, &COrmMainWindow::activateNextWindow);
    addAction(m_pNextWindow); // also while the menu is being filled
    fillWindowMenu();

    QMenu* pHelp = menuBar()->addMenu(tr("&Help"));
    m_pSystemMenus->addShortcuts(pHelp);
    pHelp->addSeparator();
    QAction* pAbout = addTo(pHelp, tr("&About"), tr("Version and loaded tools"), "actionAbout");
    connect(pAbout, &QAction::triggered, this, &COrmMainWindow::showAbout);
}

void COrmMainWindow::addWindowAction(QWidget* pWindow, const QString& strText)
{
    QAction* pAction = m_pWindowMenu->addAction(OrmTexts::menuText(strText));
    pAction->setCheckable(true);
    pAction->setChecked(pWindow == QApplication::activeWindow());
    pAction->setStatusTip(tr("Bring this window to the front"));
    connect(pAction, &QAction::triggered, pWindow, [pWindow] { bringToFront(pWindow); });
}

void COrmMainWindow::activateNextWindow()
{
    QList<QWidget*> lstWindows{this};
    std::copy_if(m_lstToolWindows.cbegin(), m_lstToolWindows.cend(), std::back_inserter(lstWindows),
                 [](const QPointer<QWidget>& pWindow) { return pWindow && pWindow->isVisible(); });
    bringToFront(lstWindows.at((lstWindows.indexOf(QApplication::activeWindow()) + 1) % lstWindows.size()));
}

void COrmMainWindow::fillWindowMenu()
{
    m_pWindowMenu->clear();
    m_pWindowMenu->addAction(m_pNextWindow);
    m_pWindowMenu->addSeparator();
    addWindowAction(this, windowTitle());
    m_pWindowMenu->addSeparator();
    // Hiding and showing its window is a tool's own business: what is hidden is opened through the Tools menu.
    for (const QPointer<QWidget>& pWindow : qAsConst(m_lstToolWindows))
    {
        if (pWindow && pWindow->isVisible())
            addWindowAction(pWindow, pWindow->windowTitle().isEmpty() ? pWindow->objectName() : pWindow->windowTitle());
    }
}
