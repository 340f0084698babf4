#include "COrmMainWindow.h"

#include "COrmBasePalette.h"
#include "COrmImageOverlayWindow.h"
#include "COrmLog.h"
#include "COrmLogPanel.h"
#include "COrmMessageBox.h"
#include "COrmPlainText.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceView.h"
#include "COrmTool.h"
#include "COrmUtilityFns.h"
#include "OrmAbout.h"
#include "OrmCommandLine.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>
#include <utility>

namespace
{
constexpr qint64 s_nSliceMs = 20;     ///< work that goes on in the window's thread gives way after that long
constexpr int s_nProblemsTold = 5;    ///< problems that a box names one by one
constexpr int s_nProblemLength = 300; ///< characters of each

const QString s_strGeometryKey = QStringLiteral("geometry");
const QString s_strStateKey = QStringLiteral("state");
const QString s_strColumnsKey = QStringLiteral("columns");

QString counted(qint64 nCount, const QString& strOne, const QString& strMany)
{
    return QStringLiteral("%1 %2").arg(nCount).arg(nCount == 1 ? strOne : strMany);
}

QString sequencesText(qint64 nCount)
{
    return counted(nCount, QStringLiteral("sequence"), QStringLiteral("sequences"));
}

/// Local paths of what is dragged.
QStringList localPaths(const QMimeData* pData)
{
    QStringList lstPaths;
    const QList<QUrl> lstUrls = pData->urls();
    for (const QUrl& objUrl : lstUrls)
    {
        if (objUrl.isLocalFile())
            lstPaths.append(objUrl.toLocalFile());
    }
    return lstPaths;
}
} // namespace

COrmMainWindow::COrmMainWindow(QWidget* pParent)
    : QMainWindow(pParent),
      m_pSequences(new COrmSequenceCollection(this)),
      m_pOpener(new COrmSequenceOpener(m_pSequences, this)),
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
    m_pStopButton->setText(QStringLiteral("Stop"));
    m_pStopButton->setStatusTip(QStringLiteral("Stop looking for sequences; what was opened stays open"));
    for (QWidget* pWidget : {static_cast<QWidget*>(m_pProgressBar), static_cast<QWidget*>(m_pStopButton)})
    {
        statusBar()->addPermanentWidget(pWidget);
        pWidget->hide();
    }

    connect(m_pStopButton, &QToolButton::clicked, m_pOpener, &COrmSequenceOpener::cancel);
    connect(m_pOpener, &COrmSequenceOpener::started, this, &COrmMainWindow::searchStarted);
    connect(m_pOpener, &COrmSequenceOpener::progress, this, &COrmMainWindow::searchProgress);
    connect(m_pOpener, &COrmSequenceOpener::finished, this, &COrmMainWindow::searchFinished);
    connect(m_pView, &COrmSequenceView::openRequested, this, &COrmMainWindow::chooseStudy);
    connect(m_pView, &COrmSequenceView::activated, this, &COrmMainWindow::showOverlay);
    connect(m_pView, &COrmSequenceView::selectionChanged, this, &COrmMainWindow::updateControls);
    connect(m_pView, &COrmSequenceView::menuRequested, this, [this](const QPoint& pt) { m_pSequenceMenu->popup(pt); });
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

    resize(60 * fontMetrics().averageCharWidth() + 300, 30 * fontMetrics().height());
    restoreLayout();
    updateControls();
}

COrmMainWindow::~COrmMainWindow()
{
    // Nobody is told any more of sequences that go, and the tools go while everything that they may ask for is still there.
    delete m_pOpener;
    delete m_pPlugins;
    delete m_pOverlay;
    m_pSequences->disconnect(this);
    m_pView->disconnect(this);
}

void COrmMainWindow::loadTools(const QString& strFolder)
{
    m_pPlugins->loadFolder(strFolder);
    placeTools();
    const int nRefused = m_pPlugins->refusals().size();
    if (nRefused > 0)
        showHint(nRefused == 1 ? m_pPlugins->refusals().first()
                               : QStringLiteral("%1 tools were not loaded: View > Log says why.").arg(nRefused));
}

void COrmMainWindow::start(const SCommandLine& sLine)
{
    m_strToolAtStart = sLine.m_strTool;
    if (!sLine.m_lstFolders.isEmpty())
        openPaths(sLine.m_lstFolders, false);
    else if (!m_strToolAtStart.isEmpty())
        openTool(std::exchange(m_strToolAtStart, QString()));
}

void COrmMainWindow::openPaths(const QStringList& lstPaths, bool bInteractive)
{
    for (auto it = lstPaths.crbegin(); it != lstPaths.crend(); ++it)
    {
        const QFileInfo objInfo(*it);
        if (!it->isEmpty() && objInfo.isDir())
            m_objSettings.addRecentFolder(QDir::cleanPath(objInfo.absoluteFilePath()));
    }
    m_bInteractive = bInteractive;
    m_pOpener->open(lstPaths);
}

bool COrmMainWindow::openTool(const QString& strName)
{
    if (strName.compare(COrmImageOverlayWindow::toolName(), Qt::CaseInsensitive) == 0)
    {
        showOverlay();
        return true;
    }
    QString strReason = QStringLiteral("There is no tool named %1.").arg(strName);
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
    if (auto* pPalette = qobject_cast<COrmBasePalette*>(pWindow))
        connect(pPalette, &COrmBasePalette::statusHintChanged, this, &COrmMainWindow::showHint);
}

void COrmMainWindow::showHint(const QString& strHint)
{
    statusBar()->showMessage(COrmPlainText::visible(COrmPlainText::shortened(strHint, s_nProblemLength)));
}

void COrmMainWindow::chooseStudy()
{
    auto* pDialog = new QFileDialog(this, QStringLiteral("Open Study"), COrmPreference::getSettings()->getBrowsePath());
    pDialog->setObjectName(QStringLiteral("openStudyDialog"));
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setFileMode(QFileDialog::Directory);
    pDialog->setOption(QFileDialog::ShowDirsOnly);
    connect(pDialog, &QFileDialog::fileSelected, this,
            [this](const QString& strFolder)
            {
                COrmPreference::getSettings()->setBrowsePath(strFolder);
                openPaths({strFolder}, true);
            });
    pDialog->open();
}

void COrmMainWindow::closeSelected()
{
    const QStringList lstIDs = m_pView->selectedIDs();
    for (const QString& strID : lstIDs)
        m_pSequences->close(strID);
    if (!lstIDs.isEmpty())
        showHint(QStringLiteral("Closed %1.").arg(lstIDs.size() == 1 ? lstIDs.first() : sequencesText(lstIDs.size())));
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
        showHint(strReason.isEmpty() ? QStringLiteral("Read %1 again.").arg(strID) : strReason);
    }
    if (!m_lstToRefresh.isEmpty())
        QMetaObject::invokeMethod(this, &COrmMainWindow::refreshNext, Qt::QueuedConnection);
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
    COrmMessageBox::information(this, QStringLiteral("About %1").arg(COrmUtilityFns::getAppName()), OrmAbout::text(*m_pPlugins),
                                QMessageBox::Ok);
}

void COrmMainWindow::updateControls()
{
    m_pCloseAction->setEnabled(!m_pView->selectedIDs().isEmpty());
    m_pCloseAllAction->setEnabled(!m_pSequences->sequences().isEmpty());
    m_pRefreshAction->setEnabled(!m_pSequences->sequences().isEmpty());
    if (m_pOverlay && m_pOverlay->isVisible())
        m_pOverlay->setSequence(COrmSequenceDataset::getSequenceDataset(m_pView->currentID()));
}

void COrmMainWindow::searchStarted()
{
    m_pProgressBar->show();
    m_pStopButton->show();
    m_pView->setSearching(true);
    showHint(QStringLiteral("Looking for sequences..."));
}

void COrmMainWindow::searchProgress(qint64 nFolders, qint64 nSequences, const QString& strFolder)
{
    showHint(QStringLiteral("Looking for sequences: %1, %2 so far, in %3")
                 .arg(sequencesText(nSequences), counted(nFolders, QStringLiteral("folder"), QStringLiteral("folders")), strFolder));
}

void COrmMainWindow::searchFinished(const COrmSequenceOpener::SSummary& sSummary)
{
    m_pProgressBar->hide();
    m_pStopButton->hide();
    m_pView->setSearching(false);
    const int nProblems = sSummary.m_lstProblems.size();
    QString strHint = sSummary.m_nOpened > 0 ? QStringLiteral("Opened %1.").arg(sequencesText(sSummary.m_nOpened))
                                             : QStringLiteral("No further sequence was opened.");
    if (sSummary.m_bCancelled)
        strHint.prepend(QStringLiteral("The search was stopped. "));
    if (nProblems > 0)
        strHint += QStringLiteral(" View > Log names %1.").arg(counted(nProblems, QStringLiteral("problem"), QStringLiteral("problems")));
    showHint(strHint);
    if (!m_strToolAtStart.isEmpty())
        openTool(std::exchange(m_strToolAtStart, QString()));
    if (sSummary.m_nOpened > 0 || nProblems == 0)
        return;
    if (!m_bInteractive)
    {
        m_pLogPanel->show();
        return;
    }
    QStringList lstTold;
    for (const QString& strProblem : sSummary.m_lstProblems.mid(0, s_nProblemsTold))
        lstTold.append(COrmPlainText::shortened(strProblem, s_nProblemLength));
    if (nProblems > s_nProblemsTold)
        lstTold.append(QStringLiteral("The log names %1 more.").arg(nProblems - s_nProblemsTold));
    // Not from inside the search's own signal, which would wait for the answer.
    const QString strText = QStringLiteral("No sequence was opened.\n\n") + lstTold.join(QLatin1Char('\n'));
    QMetaObject::invokeMethod(
        this, [this, strText] { COrmMessageBox::warning(this, QString(), strText, QMessageBox::Ok); }, Qt::QueuedConnection);
}

void COrmMainWindow::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls() && !localPaths(pEvent->mimeData()).isEmpty())
        pEvent->acceptProposedAction();
}

void COrmMainWindow::dropEvent(QDropEvent* pEvent)
{
    const QStringList lstPaths = localPaths(pEvent->mimeData());
    if (lstPaths.isEmpty())
        return;
    pEvent->acceptProposedAction();
    openPaths(lstPaths, true);
}

void COrmMainWindow::closeEvent(QCloseEvent* pEvent)
{
    if (COrmProcess::isUserInteractionDisabled())
    {
        pEvent->ignore(); // a tool is at work and will need the host once more
        showHint(QStringLiteral("A tool is still working."));
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
}

void COrmMainWindow::restoreLayout()
{
    // Values of another version or damaged ones are refused by Qt and leave the layout as it is.
    restoreGeometry(m_objSettings.value(s_strGeometryKey));
    restoreState(m_objSettings.value(s_strStateKey));
    m_pView->restoreColumnState(m_objSettings.value(s_strColumnsKey));
}
