#include "COrmDemoStudy.h"
#include "COrmLogPanel.h"
#include "COrmMainWindow.h"
#include "COrmMessageBox.h"
#include "COrmNoticeBar.h"
#include "COrmPlainText.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceList.h"
#include "COrmSequencePreview.h"
#include "COrmSequenceView.h"
#include "COrmTool.h"
#include "COrmWelcomePanel.h"
#include "OrmTexts.h"

#include <QAction>
#include <QDir>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QToolButton>
#include <QUrl>
#include <algorithm>
#include <utility>

namespace
{
constexpr int s_nProblemsTold = 5;    ///< problems that a box names one by one
constexpr int s_nProblemLength = 300; ///< characters of each
constexpr int s_nHintMargin = 30;     ///< pixels around the text of the status bar
constexpr int s_nLeastRoom = 80;      ///< pixels below which no folder is named there

/// The tool to which a sequence is handed from the list.
const QString s_strCompareTool = QStringLiteral("Longitudinal Study");

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

void COrmMainWindow::connectOpening()
{
    connect(m_pStopButton, &QToolButton::clicked, this, &COrmMainWindow::stopOpening);
    connect(m_pOpener, &COrmSequenceOpener::started, this, &COrmMainWindow::searchStarted);
    connect(m_pOpener, &COrmSequenceOpener::progress, this, &COrmMainWindow::searchProgress);
    connect(m_pOpener, &COrmSequenceOpener::finished, this, &COrmMainWindow::searchFinished);
    connect(m_pDemo, &COrmDemoStudy::progress, this, &COrmMainWindow::demoProgress);
    connect(m_pDemo, &COrmDemoStudy::ready, this, &COrmMainWindow::demoReady);
    connect(m_pDemo, &COrmDemoStudy::failed, this, &COrmMainWindow::demoFailed);

    COrmWelcomePanel* pWelcome = m_pView->welcome();
    connect(pWelcome, &COrmWelcomePanel::openRequested, this, &COrmMainWindow::chooseStudy);
    connect(pWelcome, &COrmWelcomePanel::demoRequested, m_pDemo, &COrmDemoStudy::start);
    connect(pWelcome, &COrmWelcomePanel::recentRequested, this, [this](const QString& strFolder) { openPaths({strFolder}, true); });
    connect(pWelcome, &COrmWelcomePanel::clearRecentRequested, this, &COrmMainWindow::clearRecent);
    connect(pWelcome, &COrmWelcomePanel::stopRequested, this, &COrmMainWindow::stopOpening);
    connect(m_pView->preview(), &COrmSequencePreview::compareRequested, this, &COrmMainWindow::compare);
    connect(m_pView->notice(), &COrmNoticeBar::logRequested, m_pLogPanel, &QWidget::show);
    pWelcome->setDemoOffered(m_pDemo->isOffered());
    connect(m_pRecentCheck, &COrmFolderCheck::changed, this, &COrmMainWindow::showRecent);
    updateRecent();
}

void COrmMainWindow::openPaths(const QStringList& lstPaths, bool bInteractive)
{
    for (const QString& strPath : lstPaths)
    {
        const QFileInfo objInfo(strPath);
        if (!strPath.isEmpty() && objInfo.isDir())
            m_lstOpening.append(QDir::cleanPath(objInfo.absoluteFilePath()));
    }
    m_bInteractive = bInteractive;
    m_pOpener->open(lstPaths);
}

void COrmMainWindow::chooseStudy()
{
    auto* pDialog = new QFileDialog(this, tr("Open Study"), COrmPreference::getSettings()->getBrowsePath());
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

QStringList COrmMainWindow::recentStudies() const
{
    // What is not there is not shown, but kept: a disk may be plugged in again.
    QStringList lstFolders = m_objSettings.recentFolders();
    lstFolders.erase(
        std::remove_if(lstFolders.begin(), lstFolders.end(), [this](const QString& str) { return !m_pRecentCheck->isThere(str); }),
        lstFolders.end());
    return lstFolders;
}

void COrmMainWindow::updateRecent()
{
    m_pRecentCheck->check(m_objSettings.recentFolders());
    showRecent();
}

void COrmMainWindow::showRecent()
{
    const QStringList lstFolders = recentStudies();
    m_pView->welcome()->setRecentStudies(lstFolders);
    m_pRecentMenu->menuAction()->setEnabled(!lstFolders.isEmpty());
    if (m_pRecentMenu->isVisible())
        fillRecentMenu();
}

void COrmMainWindow::clearRecent()
{
    m_objSettings.clearRecentFolders();
    updateRecent();
}

void COrmMainWindow::fillRecentMenu()
{
    m_pRecentMenu->clear();
    const QStringList lstFolders = recentStudies();
    for (const QString& strFolder : lstFolders)
    {
        QAction* pAction = m_pRecentMenu->addAction(OrmTexts::menuText(strFolder));
        pAction->setStatusTip(tr("Open every sequence below this folder"));
        connect(pAction, &QAction::triggered, this, [this, strFolder] { openPaths({strFolder}, true); });
    }
    m_pRecentMenu->addSeparator();
    QAction* pClear = m_pRecentMenu->addAction(tr("&Clear List"));
    pClear->setStatusTip(tr("Forget the recent studies; no folder is changed"));
    connect(pClear, &QAction::triggered, this, &COrmMainWindow::clearRecent);
}

void COrmMainWindow::showWork(const QString& strHeading, const QString& strText, int nDone, int nAll)
{
    m_pProgressBar->setRange(0, nAll);
    m_pProgressBar->setValue(nDone);
    m_pProgressBar->show();
    m_pStopButton->show();
    m_pView->welcome()->showWork(strHeading, strText, nDone, nAll);
}

void COrmMainWindow::endWork()
{
    m_pProgressBar->hide();
    m_pStopButton->hide();
    m_pView->welcome()->showChoices();
}

void COrmMainWindow::stopOpening()
{
    m_pDemo->cancel();
    m_pOpener->cancel();
    if (!m_lstToRefresh.isEmpty())
        showHint(m_lstToRefresh.size() == 1 ? tr("Stopped; 1 sequence was not read again.")
                                            : tr("Stopped; %n sequences were not read again.", nullptr, m_lstToRefresh.size()));
    m_lstToRefresh.clear();
}

void COrmMainWindow::searchStarted()
{
    showWork(tr("Looking for sequences..."), tr("They appear here as they are found."));
    showHint(tr("Looking for sequences..."));
}

void COrmMainWindow::searchProgress(qint64 nFolders, qint64 nSequences, const QString& strFolder)
{
    const QString strSequences = nSequences == 1 ? tr("1 sequence") : tr("%n sequences", nullptr, int(nSequences));
    const QString strFolders = nFolders == 1 ? tr("1 folder") : tr("%n folders", nullptr, int(nFolders));
    m_pView->welcome()->showWork(tr("Looking for sequences..."), tr("%1, %2 so far, in %3").arg(strSequences, strFolders, strFolder));
    // The folder takes what room the progress bar leaves in the status bar.
    const QString strWithFolder = tr("Looking for sequences: %1, %2 so far, in %3").arg(strSequences, strFolders);
    const int nRoom = m_pProgressBar->x() - fontMetrics().horizontalAdvance(strWithFolder.arg(QString())) - s_nHintMargin;
    showHint(nRoom > s_nLeastRoom ? strWithFolder.arg(COrmPlainText::elided(strFolder, fontMetrics(), nRoom))
                                  : tr("Looking for sequences: %1, %2 so far").arg(strSequences, strFolders));
}

void COrmMainWindow::searchFinished(const COrmSequenceOpener::SSummary& sSummary)
{
    endWork();
    const int nProblems = sSummary.m_lstProblems.size();
    const QStringList lstOpened = std::exchange(m_lstOpening, {});
    // A folder without sequences is no study to come back to.
    for (auto it = lstOpened.crbegin(); it != lstOpened.crend() && (sSummary.m_nOpened > 0 || nProblems == 0); ++it)
    {
        m_objSettings.addRecentFolder(*it);
        m_pRecentCheck->setThere(*it);
    }
    updateRecent();
    if (sSummary.m_nOpened > 0)
        m_pView->list()->selectFirst();

    QString strHint = sSummary.m_nOpened > 1    ? tr("Opened %n sequences.", nullptr, int(sSummary.m_nOpened))
                      : sSummary.m_nOpened == 1 ? tr("Opened 1 sequence.")
                                                : tr("No further sequence was opened.");
    if (sSummary.m_bCancelled)
        strHint.prepend(tr("The search was stopped.") + QLatin1Char(' '));
    if (nProblems > 0)
        strHint += QLatin1Char(' ') +
                   (nProblems == 1 ? tr("View > Log names 1 problem.") : tr("View > Log names %n problems.", nullptr, nProblems));
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
        lstTold.append(tr("The log names %n more.", nullptr, nProblems - s_nProblemsTold));
    tellLater(tr("No sequence was opened.") + QStringLiteral("\n\n") + lstTold.join(QLatin1Char('\n')) + QStringLiteral("\n\n") +
              tr("A sequence is a folder that holds a file SequenceInfo.txt. Open such a folder, or any folder above it."));
}

void COrmMainWindow::tellLater(const QString& strText)
{
    // Not from inside a signal of the work that ended, which would wait for the answer.
    QMetaObject::invokeMethod(
        this, [this, strText] { COrmMessageBox::warning(this, QString(), strText, QMessageBox::Ok); }, Qt::QueuedConnection);
}

void COrmMainWindow::demoProgress(int nDone, int nAll)
{
    const QString strText = tr("%1 of %2 sequences are written.").arg(nDone).arg(nAll);
    showWork(tr("Making the demo study..."), strText, nDone, nAll);
    showHint(tr("Making the demo study: %1").arg(strText));
}

void COrmMainWindow::demoReady(const QString& strFolder)
{
    endWork();
    openPaths({strFolder}, true);
}

void COrmMainWindow::demoFailed(const QString& strReason)
{
    endWork();
    showHint(strReason.isEmpty() ? tr("The demo study was not made.") : strReason);
    if (!strReason.isEmpty())
        tellLater(strReason);
}

void COrmMainWindow::offerTool()
{
    const bool bThere = m_pPlugins->tool(s_strCompareTool) != nullptr;
    m_pCompareAction->setEnabled(bThere);
    m_pView->preview()->setTool(bThere ? s_strCompareTool : QString(),
                                tr("The tool %1 is not there: View > Log says why.").arg(s_strCompareTool));
    m_pView->notice()->setText(bThere ? QString()
                                      : tr("The tool %1 is not there, so results cannot be compared. The log says why. "
                                           "Install Ormelle again, or ask whoever installed it.")
                                            .arg(s_strCompareTool));
}

void COrmMainWindow::compare()
{
    COrmTool* pTool = m_pPlugins->tool(s_strCompareTool);
    if (pTool == nullptr)
        return;
    const QString strID = m_pView->currentID();
    useTool(*pTool);
    const COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strID);
    if (pSequence == nullptr || pTool->select(pSequence))
        return;
    COrmMessageBox::information(this, QString(),
                                tr("%1 does not list the sequence %2. It compares luminescent sequences, and fluorescent ones with "
                                   "trans-illumination, that have a structured-light or CT surface. Choose such a sequence.")
                                    .arg(s_strCompareTool, COrmPlainText::shortened(strID, s_nProblemLength)),
                                QMessageBox::Ok);
}

void COrmMainWindow::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (!pEvent->mimeData()->hasUrls() || localPaths(pEvent->mimeData()).isEmpty())
        return;
    pEvent->acceptProposedAction();
    m_pView->welcome()->setDropWelcome(true);
}

void COrmMainWindow::dragLeaveEvent(QDragLeaveEvent* pEvent)
{
    m_pView->welcome()->setDropWelcome(false);
    pEvent->accept();
}

void COrmMainWindow::dropEvent(QDropEvent* pEvent)
{
    m_pView->welcome()->setDropWelcome(false);
    const QStringList lstPaths = localPaths(pEvent->mimeData());
    if (lstPaths.isEmpty())
        return;
    pEvent->acceptProposedAction();
    openPaths(lstPaths, true);
}
