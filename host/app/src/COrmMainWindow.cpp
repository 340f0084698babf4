#include "COrmMainWindow.h"

#include "COrmBasePalette.h"
#include "COrmDemoStudy.h"
#include "COrmImageOverlayWindow.h"
#include "COrmListKeys.h"
#include "COrmLog.h"
#include "COrmLogPanel.h"
#include "COrmMessageBox.h"
#include "COrmPlainText.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceList.h"
#include "COrmSequenceView.h"
#include "COrmSystemMenus.h"
#include "COrmTool.h"
#include "COrmUtilityFns.h"
#include "OrmAbout.h"
#include "OrmCommandLine.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <utility>

namespace
{
constexpr int s_nHintLength = 300; ///< characters of a hint
constexpr qint64 s_nSliceMs = 20;  ///< work that goes on in the window's thread gives way after that long

const QString s_strGeometryKey = QStringLiteral("geometry");
const QString s_strStateKey = QStringLiteral("state");
const QString s_strSplitterKey = QStringLiteral("splitter");
const QString s_strColumnsKey = QStringLiteral("columns");

} // namespace

COrmMainWindow::COrmMainWindow(QWidget* pParent, COrmFolderCheck::FExists fnFolderExists)
    : QMainWindow(pParent),
      m_pSequences(new COrmSequenceCollection(this)),
      m_pOpener(new COrmSequenceOpener(m_pSequences, this)),
      m_pDemo(new COrmDemoStudy(this)),
      m_pRecentCheck(new COrmFolderCheck(std::move(fnFolderExists), this)),
      m_pPlugins(new COrmPluginManager(this)),
      m_pView(new COrmSequenceView(m_pSequences, this)),
      m_pLogPanel(new COrmLogPanel(this))
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(COrmUtilityFns::getAppName());
    setAcceptDrops(true);
    setCentralWidget(m_pView);
    addDockWidget(Qt::BottomDockWidgetArea, m_pLogPanel);
    m_pLogPanel->hide();
    makeMenus();

    m_pProgressBar = new QProgressBar(this);
    m_pProgressBar->setRange(0, 0);
    m_pProgressBar->setTextVisible(false);
    m_pProgressBar->setFixedWidth(8 * fontMetrics().height());
    m_pStopButton = new QToolButton(this);
    m_pStopButton->setObjectName(QStringLiteral("stopSearch"));
    m_pStopButton->setText(tr("Stop"));
    m_pStopButton->setStatusTip(tr("Stop looking for sequences; what was opened stays open"));
    for (QWidget* pWidget : {static_cast<QWidget*>(m_pProgressBar), static_cast<QWidget*>(m_pStopButton)})
    {
        statusBar()->addPermanentWidget(pWidget);
        pWidget->hide();
    }

    connectOpening();
    connect(m_pView->list(), &COrmSequenceList::activated, this, &COrmMainWindow::showOverlay);
    connect(m_pView->list(), &COrmSequenceList::selectionChanged, this, &COrmMainWindow::updateControls);
    connect(m_pView->list(), &COrmSequenceList::menuRequested, this, [this](const QPoint& pt) { m_pSequenceMenu->popup(pt); });
    connect(m_pSequences, &COrmSequenceCollection::added, this, &COrmMainWindow::updateControls);
    connect(m_pSequences, &COrmSequenceCollection::closed, this, &COrmMainWindow::updateControls);
    connect(m_pSequences, &COrmSequenceCollection::changed, this,
            [this]
            {
                if (m_pOverlay)
                    m_pOverlay->setSequence(nullptr); // its images may be others now
                updateControls();
            });

    COrmSignalHandler* pHub = COrmPreference::getSignalHandler();
    connect(pHub, &COrmSignalHandler::signalAddWidgetToWorkspace, this, &COrmMainWindow::addToolWindow);
    connect(pHub, &COrmSignalHandler::signalCopyToClipboard, this,
            [this](const QString& strObjectName)
            {
                if (strObjectName == objectName())
                    copySelection();
                else if (m_pOverlay)
                    m_pOverlay->copyToClipboard(strObjectName);
            });

    resize(90 * fontMetrics().averageCharWidth() + 300, 42 * fontMetrics().height());
    restoreLayout();
    updateControls();
}

COrmMainWindow::~COrmMainWindow()
{
    // Nobody is told any more of sequences that go, and the tools go while everything that they may ask for is still there.
    delete m_pOpener;
    delete m_pDemo;
    delete m_pPlugins;
    delete m_pOverlay;
    m_pSequences->disconnect(this);
    m_pView->list()->disconnect(this);
}

void COrmMainWindow::loadTools(const QString& strFolder)
{
    m_pPlugins->loadFolder(strFolder);
    placeTools();
    offerTool();
    const int nRefused = m_pPlugins->refusals().size();
    if (nRefused > 0)
        showHint(nRefused == 1 ? m_pPlugins->refusals().first() : tr("%n tools were not loaded: View > Log says why.", nullptr, nRefused));
}

void COrmMainWindow::start(const SCommandLine& sLine)
{
    m_strToolAtStart = sLine.m_strTool;
    if (!sLine.m_lstFolders.isEmpty())
        openPaths(sLine.m_lstFolders, false);
    else if (!m_strToolAtStart.isEmpty())
        openTool(std::exchange(m_strToolAtStart, QString()));
}

bool COrmMainWindow::openTool(const QString& strName)
{
    if (strName.compare(COrmImageOverlayWindow::toolName(), Qt::CaseInsensitive) == 0 ||
        strName.compare(COrmImageOverlayWindow::title(), Qt::CaseInsensitive) == 0)
    {
        showOverlay();
        return true;
    }
    QString strReason = tr("There is no tool named %1.").arg(strName);
    COrmTool* pTool = m_pPlugins->tool(strName);
    if (pTool != nullptr && pTool->use(&strReason))
        return true;
    ORM_LOG(2, strReason);
    showHint(strReason);
    m_pLogPanel->show();
    return false;
}

void COrmMainWindow::useTool(COrmTool& objTool)
{
    QString strReason;
    if (!objTool.use(&strReason))
        COrmMessageBox::warning(this, QString(), strReason, QMessageBox::Ok);
}

void COrmMainWindow::addToolWindow(QWidget* pWindow)
{
    if (pWindow == nullptr || m_lstToolWindows.contains(pWindow))
        return;
    m_lstToolWindows.removeAll(nullptr);
    m_lstToolWindows.append(pWindow);
    new COrmListKeys(pWindow);
    auto* pClose = new QShortcut(COrmSystemMenus::keys(QKeySequence::Close, COrmSystemMenus::control(Qt::Key_W)), pWindow);
    pClose->setWhatsThis(tr("Close Window"));
    connect(pClose, &QShortcut::activated, pWindow, &QWidget::close);
    if (auto* pPalette = qobject_cast<COrmBasePalette*>(pWindow))
        connect(pPalette, &COrmBasePalette::statusHintChanged, this, &COrmMainWindow::showHint);
}

void COrmMainWindow::showHint(const QString& strHint)
{
    statusBar()->showMessage(COrmPlainText::visible(COrmPlainText::shortened(strHint, s_nHintLength)));
}

void COrmMainWindow::closeSelected()
{
    const QStringList lstIDs = m_pView->selectedIDs();
    for (const QString& strID : lstIDs)
        m_pSequences->close(strID);
    if (!lstIDs.isEmpty())
        showHint(lstIDs.size() == 1 ? tr("Closed %1.").arg(lstIDs.first()) : tr("Closed %n sequences.", nullptr, lstIDs.size()));
}

void COrmMainWindow::refreshSelected()
{
    m_lstToRefresh = m_pView->selectedIDs();
    if (m_lstToRefresh.isEmpty())
    {
        const QList<COrmSequenceDataset*> lstSequences = m_pSequences->sequences();
        for (const COrmSequenceDataset* pSequence : lstSequences)
            m_lstToRefresh.append(pSequence->getSequenceID());
    }
    m_nToRefresh = m_lstToRefresh.size();
    if (!m_lstToRefresh.isEmpty())
        refreshNext();
}

void COrmMainWindow::refreshNext()
{
    QElapsedTimer objTimer;
    objTimer.start();
    while (!m_lstToRefresh.isEmpty() && objTimer.elapsed() < s_nSliceMs)
    {
        const QString strID = m_lstToRefresh.takeFirst();
        if (COrmSequenceDataset::getSequenceDataset(strID) == nullptr)
            continue; // closed meanwhile
        const QString strReason = m_pSequences->refresh(strID);
        showHint(strReason.isEmpty() ? tr("Read %1 again.").arg(strID) : strReason);
    }
    if (m_lstToRefresh.isEmpty())
    {
        if (m_bRefreshShown)
            endWork();
        m_bRefreshShown = false;
        return;
    }
    // Work that is over at once shows no progress.
    m_bRefreshShown = true;
    showWork(tr("Reading sequences again..."), QString(), m_nToRefresh - m_lstToRefresh.size(), m_nToRefresh);
    QTimer::singleShot(1, this, &COrmMainWindow::refreshNext); // a call queued from here would leave the window no turn
}

void COrmMainWindow::copy()
{
    const QWidget* pActive = QApplication::activeWindow();
    emit COrmPreference::getSignalHandler()->signalCopyToClipboard(pActive != nullptr ? pActive->objectName() : objectName());
}

void COrmMainWindow::copySelection()
{
    QWidget* pFocus = focusWidget();
    if (auto* pLine = qobject_cast<QLineEdit*>(pFocus); pLine != nullptr && pLine->hasSelectedText())
        pLine->copy();
    else if (auto* pText = qobject_cast<QPlainTextEdit*>(pFocus); pText != nullptr && pText->textCursor().hasSelection())
        pText->copy();
    else if (const QStringList lstIDs = m_pView->selectedIDs(); !lstIDs.isEmpty())
        QApplication::clipboard()->setText(lstIDs.join(QLatin1Char('\n')));
}

void COrmMainWindow::showOverlay()
{
    if (!m_pOverlay)
    {
        m_pOverlay = new COrmImageOverlayWindow; // a top-level window like those of other tools
        addToolWindow(m_pOverlay);
    }
    m_pOverlay->setSequence(COrmSequenceDataset::getSequenceDataset(m_pView->currentID()));
    m_pOverlay->showNormal();
    m_pOverlay->raise();
    m_pOverlay->activateWindow();
}

void COrmMainWindow::resetLongitudinalStudy()
{
    emit COrmPreference::getSignalHandler()->signalToolsMenuLongiStudyUpdate();
}

void COrmMainWindow::showAbout()
{
    COrmMessageBox::information(this, tr("About %1").arg(COrmUtilityFns::getAppName()), OrmAbout::text(*m_pPlugins), QMessageBox::Ok);
}

void COrmMainWindow::updateControls()
{
    m_pCloseAction->setEnabled(!m_pView->selectedIDs().isEmpty());
    m_pCloseAllAction->setEnabled(!m_pSequences->sequences().isEmpty());
    m_pRefreshAction->setEnabled(!m_pSequences->sequences().isEmpty());
    if (m_pOverlay && m_pOverlay->isVisible())
        m_pOverlay->setSequence(COrmSequenceDataset::getSequenceDataset(m_pView->currentID()));
}

void COrmMainWindow::closeEvent(QCloseEvent* pEvent)
{
    if (COrmProcess::isUserInteractionDisabled())
    {
        pEvent->ignore(); // a tool is at work and will need the host once more
        showHint(tr("A tool is still working."));
        return;
    }
    saveLayout();
    pEvent->accept();
    emit closed();
}

void COrmMainWindow::saveLayout()
{
    m_objSettings.setValue(s_strGeometryKey, saveGeometry());
    m_objSettings.setValue(s_strStateKey, saveState());
    m_objSettings.setValue(s_strColumnsKey, m_pView->columnState());
    m_objSettings.setValue(s_strSplitterKey, m_pView->splitterState());
}

void COrmMainWindow::restoreLayout()
{
    // Values of another version or damaged ones are refused by Qt and leave the layout as it is.
    restoreGeometry(m_objSettings.value(s_strGeometryKey));
    restoreState(m_objSettings.value(s_strStateKey));
    m_pView->restoreState(m_objSettings.value(s_strColumnsKey), m_objSettings.value(s_strSplitterKey));
}
