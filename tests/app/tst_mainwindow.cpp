#include "COrmImageOverlayWindow.h"
#include "COrmLog.h"
#include "COrmMainWindow.h"
#include "COrmPictureWidget.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceModel.h"
#include "COrmTool.h"
#include "COrmToolPluginBase.h"
#include "CRecordingHost.h"
#include "CStudyWriter.h"
#include "OrmCommandLine.h"
#include "OrmTestMain.h"
#include "PluginFolder.h"
#include "TestWidgets.h"

#include <QAction>
#include <QClipboard>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProcessEnvironment>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStyledItemDelegate>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>

#include <memory>

namespace
{
QStringList shownColumn(const QWidget* pRoot, int nColumn)
{
    const auto* pList = TestWidgets::get<QTreeView>(pRoot, "sequenceList");
    QStringList lstTexts;
    for (int nRow = 0; nRow < pList->model()->rowCount(); ++nRow)
        lstTexts.append(pList->model()->index(nRow, nColumn).data().toString());
    return lstTexts;
}

QStringList entries(const QMenu* pMenu)
{
    QStringList lstTexts;
    const QList<QAction*> lstActions = pMenu->actions();
    for (const QAction* pAction : lstActions)
        lstTexts.append(pAction->isSeparator() ? QStringLiteral("-") : pAction->text());
    return lstTexts;
}

QStringList takeCalls(COrmToolPluginBase* pTool)
{
    const QStringList lstCalls = pTool->property("calls").toStringList();
    pTool->setProperty("calls", QVariant());
    return lstCalls;
}

/// Drags URLs over the window and lets them fall; whether they were welcome.
bool dropUrls(QWidget* pWindow, const QList<QUrl>& lstUrls)
{
    QMimeData objData;
    objData.setUrls(lstUrls);
    QDragEnterEvent objEnter(QPoint(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pWindow, &objEnter);
    if (!objEnter.isAccepted())
        return false;
    QDropEvent objDrop(QPointF(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pWindow, &objDrop);
    return objDrop.isAccepted();
}

/// A tool made inside the test.
class CLocalTool : public COrmToolPluginBase
{
public:
    CLocalTool(const QString& strName, const QString& strBefore, bool bMenu = false) : m_strName(strName), m_strBefore(strBefore)
    {
        if (bMenu)
        {
            m_pMenu = std::make_unique<QMenu>(strName);
            m_pMenu->addAction(QStringLiteral("Part of ") + strName);
        }
    }
    QMenu* pluginMenu() override { return m_pMenu.get(); }
    QAction* pluginAction() override { return nullptr; }
    QString PluginMenuItem() override { return m_strName; }
    QString MenuItemBefore() override { return m_strBefore; }
    void init() override {}
    void show() override { m_lstCalls.append(QStringLiteral("show")); }
    bool createObject() override
    {
        m_lstCalls.append(QStringLiteral("createObject"));
        return true;
    }
    QStringList m_lstCalls;

private:
    QString m_strName;
    QString m_strBefore;
    std::unique_ptr<QMenu> m_pMenu;
};
} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptyWindowSaysWhatToDo();
    void openStudyOpensEverySequenceOfTheFolder();
    void listShowsWhatTheSequencesAre();
    void recentFoldersOpenAgain();
    void droppedFoldersAreOpened();
    void droppedTextAndUrlsAreNotWelcome();
    void failureToOpenIsTold();
    void partialFailureIsNoBox();
    void searchCanBeStopped();
    void selectedSequencesAreClosed();
    void refreshReadsAgain();
    void toolsStandWhereTheyAskTo();
    void toolWithoutAPlaceStandsBehindTheOthers();
    void menuEntryUsesTheTool();
    void failingToolIsToldInABox();
    void toolWindowsAreListed();
    void copyNamesTheActiveWindow();
    void copyInTheMainWindowCopiesTheSelection();
    void resetIsBroadcast();
    void overlayFollowsTheSelection();
    void logPanelShowsWhatIsReported();
    void refusedToolsAreNamedInTheStatusBar();
    void commandLineOpensFoldersAndThenTheTool();
    void unknownToolOpensTheLog();
    void aboutNamesTheLoadedTools();
    void namesAreShownAsPlainText();
    void layoutIsRestored();
    void damagedSettingsAreNoHindrance();
    void windowStaysOpenWhileAToolWorks();
    void toolsGoBeforeTheWindow();
    void longitudinalStudyIsPlacedAndOpens();
    void programAnswersWithoutAWindow_data();
    void programAnswersWithoutAWindow();

private:
    void openStudy(const QStringList& lstIDs);
    QAction* action(const char* pName) const { return TestWidgets::get<QAction>(m_pWindow.get(), pName); }
    QMenu* menu(const char* pName) const { return TestWidgets::get<QMenu>(m_pWindow.get(), pName); }
    COrmToolPluginBase* loadRecordingTool();
    void select(const QStringList& lstIDs) const;

    std::unique_ptr<QTemporaryDir> m_pSettings;
    std::unique_ptr<CRecordingHost> m_pHost;
    std::unique_ptr<CStudyWriter> m_pStudy;
    std::unique_ptr<CPluginFolder> m_pPlugins;
    std::unique_ptr<COrmMainWindow> m_pWindow;
};

void TestMainWindow::init()
{
    m_pSettings = std::make_unique<QTemporaryDir>();
    COrmPreference::setStore(m_pSettings->filePath(QStringLiteral("preferences.json")));
    m_pHost = std::make_unique<CRecordingHost>();
    m_pStudy = std::make_unique<CStudyWriter>();
    m_pPlugins = std::make_unique<CPluginFolder>();
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
}

void TestMainWindow::cleanup()
{
    m_pWindow.reset();
    m_pPlugins.reset();
    m_pStudy.reset();
    m_pHost.reset();
    COrmPreference::setStore(QString());
    m_pSettings.reset();
}

void TestMainWindow::openStudy(const QStringList& lstIDs)
{
    for (const QString& strID : lstIDs)
        m_pStudy->addSequence(strID);
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_VERIFY(!TestWidgets::get<QToolButton>(m_pWindow.get(), "stopSearch")->isVisible());
    for (const QString& strID : lstIDs)
        QVERIFY2(COrmSequenceDataset::getSequenceDataset(strID) != nullptr, qPrintable(strID));
}

COrmToolPluginBase* TestMainWindow::loadRecordingTool()
{
    m_pPlugins->addLibrary(QStringLiteral("RecordingTool"));
    m_pWindow->loadTools(m_pPlugins->path());
    const COrmTool* pTool = m_pWindow->plugins()->tool(QStringLiteral("Recording Tool"));
    if (pTool == nullptr)
        TestWidgets::fail(m_pWindow->plugins()->refusals().join(QLatin1Char('\n')));
    takeCalls(pTool->plugin());
    return pTool->plugin();
}

void TestMainWindow::select(const QStringList& lstIDs) const
{
    auto* pList = TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList");
    pList->clearSelection();
    for (const QString& strID : lstIDs)
    {
        const int nRow = shownColumn(m_pWindow.get(), 0).indexOf(strID);
        QVERIFY2(nRow >= 0, qPrintable(strID));
        const QRect rcRow = pList->visualRect(pList->model()->index(nRow, 0));
        QTest::mouseClick(pList->viewport(), Qt::LeftButton, Qt::ControlModifier, rcRow.center());
    }
}

void TestMainWindow::emptyWindowSaysWhatToDo()
{
    QCOMPARE(m_pWindow->windowTitle(), QStringLiteral("Ormelle"));
    const auto* pText = TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText");
    QVERIFY(pText->isVisible());
    QCOMPARE(pText->textFormat(), Qt::PlainText);
    QVERIFY(pText->text().contains(QStringLiteral("Open the folder of a study")));
    QVERIFY(!TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList")->isVisible());
    QVERIFY(!action("actionClose")->isEnabled());
    QVERIFY(!action("actionCloseAll")->isEnabled());
    QVERIFY(!action("actionRefresh")->isEnabled());
    QVERIFY(action("actionOpenStudy")->isEnabled());
    QCOMPARE(action("actionOpenStudy")->shortcut(), QKeySequence(QStringLiteral("Ctrl+O")));
    // Every entry of the menus says in the status bar what it does.
    for (const char* pName : {"actionOpenStudy", "actionRefresh", "actionClose", "actionCloseAll", "actionQuit", "actionCopy",
                              "actionSelectAll", "actionLog", "actionImageOverlay", "actionReset", "actionAbout"})
        QVERIFY2(!action(pName)->statusTip().isEmpty(), pName);
}

void TestMainWindow::openStudyOpensEverySequenceOfTheFolder()
{
    m_pStudy->addSequence(QStringLiteral("B"));
    m_pStudy->addSequence(QStringLiteral("A"));
    TestWidgets::click(TestWidgets::get<QPushButton>(m_pWindow.get(), "openStudyButton"));
    auto* pDialog = m_pWindow->findChild<QFileDialog*>(QStringLiteral("openStudyDialog"));
    QVERIFY(pDialog != nullptr);
    QCOMPARE(pDialog->fileMode(), QFileDialog::Directory);
    pDialog->setDirectory(m_pStudy->folder());
    auto* pName = TestWidgets::get<QLineEdit>(pDialog, "fileNameEdit");
    pName->setText(m_pStudy->folder());
    QTest::keyClick(pName, Qt::Key_Return);
    QTRY_COMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eID), (QStringList{"A", "B"}));
    QTRY_VERIFY(m_pWindow->statusBar()->currentMessage() == QStringLiteral("Opened 2 sequences."));
    QVERIFY(!TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText")->isVisible());
    QVERIFY(action("actionCloseAll")->isEnabled());
    QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), m_pStudy->folder());
    // The same study again changes nothing, and says so.
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("No further sequence was opened."));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindow::listShowsWhatTheSequencesAre()
{
    m_pStudy->addSequence(QStringLiteral("M10"), SSequenceLook::fluorescent());
    m_pStudy->addIndexEntry(QStringLiteral("M10"), 1, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("M10"), 1, QStringLiteral("Day 1"), QStringLiteral("b.xml"));
    openStudy({"M10", "M9"});
    QCOMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eID), (QStringList{"M9", "M10"}));
    QCOMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eSubject), (QStringList{"Test", "Test"}));
    QCOMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eDate), (QStringList{"2026-08-01 09:30", "2026-08-01 09:30"}));
    QCOMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eResults).first(), QStringLiteral("none"));
    auto* pFilter = TestWidgets::get<QLineEdit>(m_pWindow.get(), "sequenceFilter");
    QTest::keyClicks(pFilter, QStringLiteral("10"));
    QCOMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eID), QStringList{"M10"});
}

void TestMainWindow::recentFoldersOpenAgain()
{
    openStudy({"A"});
    action("actionCloseAll")->trigger();
    QVERIFY(m_pWindow->sequences()->sequences().isEmpty());
    QMenu* pRecent = menu("menuRecent");
    emit pRecent->aboutToShow();
    QCOMPARE(entries(pRecent).first(), m_pStudy->folder());
    pRecent->actions().first()->trigger();
    QTRY_COMPARE(shownColumn(m_pWindow.get(), 0), QStringList{"A"});
    pRecent->actions().last()->trigger(); // Clear This List
    emit pRecent->aboutToShow();
    QVERIFY(!entries(pRecent).contains(m_pStudy->folder()));
}

void TestMainWindow::droppedFoldersAreOpened()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addSequence(QStringLiteral("B"));
    m_pStudy->addSequence(QStringLiteral("C"));
    const QList<QUrl> lstUrls = {QUrl::fromLocalFile(m_pStudy->sequenceFolder(QStringLiteral("A"))),
                                 QUrl::fromLocalFile(m_pStudy->sequenceFolder(QStringLiteral("C")) + QStringLiteral("SequenceInfo.txt")),
                                 QUrl(QStringLiteral("https://example.org/study"))};
    QVERIFY(dropUrls(m_pWindow.get(), lstUrls));
    QTRY_COMPARE(shownColumn(m_pWindow.get(), 0), (QStringList{"A", "C"}));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindow::droppedTextAndUrlsAreNotWelcome()
{
    QVERIFY(!dropUrls(m_pWindow.get(), {QUrl(QStringLiteral("https://example.org/study"))}));
    QVERIFY(!dropUrls(m_pWindow.get(), {}));
    QMimeData objData;
    objData.setText(QStringLiteral("/tmp"));
    QDragEnterEvent objEnter(QPoint(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pWindow.get(), &objEnter);
    QVERIFY(!objEnter.isAccepted());
}

void TestMainWindow::failureToOpenIsTold()
{
    const QString strFile = m_pStudy->folder() + QStringLiteral("/notes.txt");
    CStudyWriter::writeFile(strFile, "x");
    QVERIFY(dropUrls(m_pWindow.get(), {QUrl::fromLocalFile(strFile)}));
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    const SMessageRequest sBox = m_pHost->boxes().first();
    QCOMPARE(sBox.eKind, QMessageBox::Warning);
    QCOMPARE(sBox.strText,
             QStringLiteral("No sequence was opened.\n\n%1 is neither a folder nor a sequence file (Sequence*.txt).").arg(strFile));
    QVERIFY(TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText")->isVisible());

    // Many reasons do not make an endless box.
    m_pHost->clear();
    QList<QUrl> lstUrls;
    for (int nFile = 0; nFile < 1000; ++nFile)
        lstUrls.append(QUrl::fromLocalFile(m_pStudy->folder() + QStringLiteral("/none %1").arg(nFile)));
    QVERIFY(dropUrls(m_pWindow.get(), lstUrls));
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    QCOMPARE(m_pHost->boxes().first().strText.count(QStringLiteral("does not exist.")), 5);
    QVERIFY(m_pHost->boxes().first().strText.endsWith(QStringLiteral("The log names 995 more.")));
}

void TestMainWindow::partialFailureIsNoBox()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    CStudyWriter::writeFile(m_pStudy->folder() + QStringLiteral("/bad/SequenceInfo.txt"), "bad");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("Opened 1 sequence. View > Log names 1 problem."));
    QVERIFY(m_pHost->boxes().isEmpty());
    QVERIFY(m_pHost->hostLog().join(QLatin1Char('\n')).contains(QStringLiteral("bad/SequenceInfo.txt")));
}

void TestMainWindow::searchCanBeStopped()
{
    for (int nSequence = 0; nSequence < 200; ++nSequence)
        m_pStudy->addSequence(QStringLiteral("S%1").arg(nSequence));
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    auto* pStop = TestWidgets::get<QToolButton>(m_pWindow.get(), "stopSearch");
    QVERIFY(pStop->isVisible());
    QVERIFY(TestWidgets::get<QLabel>(m_pWindow.get(), "emptyHeading")->text().startsWith(QStringLiteral("Looking for sequences")));
    TestWidgets::click(pStop);
    QVERIFY(!pStop->isVisible());
    QVERIFY(m_pWindow->statusBar()->currentMessage().startsWith(QStringLiteral("The search was stopped.")));
    QVERIFY(m_pWindow->sequences()->sequences().size() < 200);
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindow::selectedSequencesAreClosed()
{
    openStudy({"A", "B", "C", "D"});
    select({"B", "D"});
    QVERIFY(action("actionClose")->isEnabled());
    QApplication::setActiveWindow(m_pWindow.get());
    QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
    QTest::keyClick(m_pWindow.get(), Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(shownColumn(m_pWindow.get(), 0), (QStringList{"A", "C"}));
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("B")) == nullptr);
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("Closed 2 sequences."));
    QVERIFY(QFile::exists(m_pStudy->sequenceFolder(QStringLiteral("B")) + QStringLiteral("SequenceInfo.txt")));
    action("actionSelectAll")->trigger();
    action("actionClose")->trigger();
    QVERIFY(m_pWindow->sequences()->sequences().isEmpty());
    QVERIFY(!action("actionClose")->isEnabled());
    QVERIFY(TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText")->isVisible());
}

void TestMainWindow::refreshReadsAgain()
{
    openStudy({"A", "B"});
    COrmToolPluginBase* pTool = loadRecordingTool();
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("B"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    select({"B"});
    action("actionRefresh")->trigger();
    QTRY_COMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eResults), (QStringList{"none", "1 SOLA"}));
    QCOMPARE(takeCalls(pTool), QStringList{"sequence changed B"});
    select({});
    action("actionRefresh")->trigger();
    QTRY_COMPARE(shownColumn(m_pWindow.get(), COrmSequenceModel::eResults), (QStringList{"1 SOLA", "1 SOLA"}));
    QCOMPARE(takeCalls(pTool), QStringList{"sequence changed A"});
}

void TestMainWindow::toolsStandWhereTheyAskTo()
{
    QCOMPARE(entries(menu("menuTools")), (QStringList{"Image Overlay", "-", "Reset Longitudinal Study"}));
    m_pPlugins->addLibrary(QStringLiteral("RecordingTool"));
    m_pPlugins->addLibrary(QStringLiteral("OrderedTool")); // loaded first, and asks for a place before the other
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(entries(menu("menuTools")),
             (QStringList{"Ordered Tool", "Recording &Tool", "Image Overlay", "-", "Reset Longitudinal Study"}));
    QVERIFY(!m_pWindow->plugins()->tools().front()->action()->statusTip().isEmpty());
    // Loading once more places nothing twice.
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(entries(menu("menuTools")).size(), 5);
}

void TestMainWindow::toolWithoutAPlaceStandsBehindTheOthers()
{
    CLocalTool objAnywhere(QStringLiteral("Anywhere"), QString());
    CLocalTool objNowhere(QStringLiteral("Nowhere"), QStringLiteral("No Such Entry"));
    CLocalTool objReset(QStringLiteral("Near Reset"), QStringLiteral("reset longitudinal study"));
    CLocalTool objMenu(QStringLiteral("Sub Menu"), QStringLiteral("Anywhere"), true);
    int nTool = 0;
    for (CLocalTool* pTool : {&objNowhere, &objAnywhere, &objReset, &objMenu})
        QCOMPARE(m_pWindow->plugins()->addTool(pTool, QString::number(++nTool)), QString());
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(entries(menu("menuTools")),
             (QStringList{"Image Overlay", "Sub Menu", "Anywhere", "Nowhere", "-", "Near Reset", "Reset Longitudinal Study"}));
    // A tool without an action of its own gets one.
    for (QAction* pAction : menu("menuTools")->actions())
    {
        if (pAction->text() == QStringLiteral("Nowhere"))
            pAction->trigger();
    }
    QCOMPARE(objNowhere.m_lstCalls, (QStringList{"createObject", "show"}));
    QCOMPARE(m_pWindow->plugins()->addTool(&objNowhere, QString()), QStringLiteral("there is a tool named Nowhere already."));
    m_pWindow.reset(); // before the tools, which are the test's
}

void TestMainWindow::menuEntryUsesTheTool()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    QAction* pAction = pTool->pluginAction();
    pAction->trigger();
    QCOMPARE(takeCalls(pTool), (QStringList{"createObject", "show"}));
    pAction->trigger();
    QCOMPARE(takeCalls(pTool), QStringList{"createObject"});
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindow::failingToolIsToldInABox()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    pTool->setProperty("trouble", QStringLiteral("throw"));
    pTool->pluginAction()->trigger();
    pTool->setProperty("trouble", QStringLiteral("refuse"));
    pTool->pluginAction()->trigger();
    QCOMPARE(m_pHost->callsOf(QStringLiteral("box")),
             (QStringList{"box warning: Recording Tool failed: out of order.", "box warning: Recording Tool could not open its window."}));
}

void TestMainWindow::toolWindowsAreListed()
{
    QMenu* pMenu = menu("menuWindow");
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"Ormelle", "-"}));
    COrmToolPluginBase* pTool = loadRecordingTool();
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    pTool->pluginAction()->trigger();
    QCOMPARE(objWindows.count(), 1);
    auto* pToolWindow = objWindows.first().first().value<QWidget*>();
    QVERIFY(pToolWindow->isWindow());
    QVERIFY(pToolWindow->parent() == nullptr);
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"Ormelle", "-", "Recording && Tool"}));
    pToolWindow->showMinimized();
    pMenu->actions().last()->trigger();
    QTRY_VERIFY(!pToolWindow->isMinimized());
    pToolWindow->hide(); // the tool's own business
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"Ormelle", "-"}));
    delete pToolWindow;
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"Ormelle", "-"}));
}

void TestMainWindow::copyNamesTheActiveWindow()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    pTool->pluginAction()->trigger();
    auto* pToolWindow = objWindows.first().first().value<QWidget*>();
    QVERIFY(QTest::qWaitForWindowExposed(pToolWindow));
    takeCalls(pTool);
    pToolWindow->activateWindow();
    QApplication::setActiveWindow(pToolWindow);
    QTRY_COMPARE(QApplication::activeWindow(), pToolWindow);
    QTest::keyClick(pToolWindow, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(takeCalls(pTool), QStringList{"copy Recording Tool"});

    QApplication::setActiveWindow(m_pWindow.get());
    QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
    action("actionCopy")->trigger();
    QCOMPARE(takeCalls(pTool), QStringList{QStringLiteral("copy ") + m_pWindow->objectName()});
}

void TestMainWindow::copyInTheMainWindowCopiesTheSelection()
{
    openStudy({"A", "B", "C"});
    QApplication::setActiveWindow(m_pWindow.get());
    QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    select({});
    action("actionCopy")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    select({"C", "A"});
    action("actionCopy")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("A\nC"));
    auto* pFilter = TestWidgets::get<QLineEdit>(m_pWindow.get(), "sequenceFilter");
    pFilter->setFocus();
    pFilter->setText(QStringLiteral("some text"));
    pFilter->selectAll();
    action("actionCopy")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("some text"));
}

void TestMainWindow::resetIsBroadcast()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    action("actionReset")->trigger();
    QCOMPARE(takeCalls(pTool), QStringList{"reset"});
}

void TestMainWindow::overlayFollowsTheSelection()
{
    openStudy({"A", "B"});
    select({"A"});
    action("actionImageOverlay")->trigger();
    COrmImageOverlayWindow* pOverlay = nullptr;
    for (QWidget* pWidget : QApplication::topLevelWidgets())
    {
        if (auto* pFound = qobject_cast<COrmImageOverlayWindow*>(pWidget))
            pOverlay = pFound;
    }
    if (pOverlay == nullptr)
        TestWidgets::fail(QStringLiteral("The overlay window did not come."));
    QVERIFY(pOverlay->isVisible());
    QCOMPARE(pOverlay->windowTitle(), QStringLiteral("Image Overlay - A"));
    select({"B"});
    QCOMPARE(pOverlay->windowTitle(), QStringLiteral("Image Overlay - B"));
    QMenu* pMenu = menu("menuWindow");
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu).last(), QStringLiteral("Image Overlay - B"));
    // A picture that is taken while the window is open is seen after a refresh.
    const auto* pPicture = TestWidgets::get<COrmPictureWidget>(pOverlay, "overlayPicture");
    QVERIFY(pPicture->picture().isNull());
    const QString strClick = m_pStudy->sequenceFolder(QStringLiteral("B")) + QStringLiteral("B_001/");
    QImage imgPhotograph(8, 6, QImage::Format_Grayscale8);
    imgPhotograph.fill(100);
    QVERIFY(imgPhotograph.save(strClick + QStringLiteral("photograph.png")));
    CStudyWriter::writeFile(strClick + QStringLiteral("ClickInfo.txt"), "[photographic image]\nImage File=photograph.png\n");
    action("actionRefresh")->trigger();
    QTRY_COMPARE(pPicture->picture().size(), QSize(8, 6));
    action("actionClose")->trigger();
    QCOMPARE(pOverlay->windowTitle(), QStringLiteral("Image Overlay"));
    QVERIFY(pPicture->picture().isNull());
    QVERIFY(m_pWindow->openTool(QStringLiteral("image overlay")));
}

void TestMainWindow::logPanelShowsWhatIsReported()
{
    auto* pPanel = TestWidgets::get<QDockWidget>(m_pWindow.get(), "logPanel");
    QVERIFY(!pPanel->isVisible());
    action("actionLog")->trigger();
    QVERIFY(pPanel->isVisible());
    getLogObject()->log(QStringLiteral("from a <b>tool</b>"), QString(), 0, QString(), 2, false);
    const auto* pText = TestWidgets::get<QPlainTextEdit>(m_pWindow.get(), "logText");
    QTRY_VERIFY(pText->toPlainText().endsWith(QStringLiteral("Note: from a <b>tool</b>")));
    action("actionLog")->trigger();
    QVERIFY(!pPanel->isVisible());
}

void TestMainWindow::refusedToolsAreNamedInTheStatusBar()
{
    m_pPlugins->add(QStringLiteral("bad.so"), QByteArray());
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("bad.so was not loaded: it is empty."));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindow::commandLineOpensFoldersAndThenTheTool()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addSequence(QStringLiteral("B"));
    SCommandLine sLine;
    sLine.m_lstFolders = QStringList{m_pStudy->folder()};
    sLine.m_strTool = QStringLiteral("recording tool");
    m_pWindow->start(sLine);
    QTRY_VERIFY(pTool->property("calls").toStringList().contains(QStringLiteral("show")));
    QCOMPARE(takeCalls(pTool), (QStringList{"sequence added A", "sequence added B", "createObject", "show"}));
    // Without folders the tool opens at once.
    m_pWindow->start(OrmCommandLine::parse({"ormelle", "--tool", "Recording Tool"}));
    QCOMPARE(takeCalls(pTool), QStringList{"createObject"});
}

void TestMainWindow::unknownToolOpensTheLog()
{
    m_pWindow->start(OrmCommandLine::parse({"ormelle", "--tool", "Crystal Ball"}));
    QVERIFY(TestWidgets::get<QDockWidget>(m_pWindow.get(), "logPanel")->isVisible());
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("There is no tool named Crystal Ball."));
    // So does a folder that is not there: a person may not be looking for a box at the start.
    TestWidgets::get<QDockWidget>(m_pWindow.get(), "logPanel")->hide();
    m_pWindow->start(OrmCommandLine::parse({"ormelle", "/no/such/folder"}));
    QTRY_VERIFY(TestWidgets::get<QDockWidget>(m_pWindow.get(), "logPanel")->isVisible());
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindow::aboutNamesTheLoadedTools()
{
    m_pPlugins->add(QStringLiteral("bad.so"), QByteArray());
    loadRecordingTool();
    action("actionAbout")->trigger();
    QCOMPARE(m_pHost->boxes().size(), 1);
    const QString strText = m_pHost->boxes().first().strText;
    QVERIFY2(strText.contains(QStringLiteral("Recording Tool, ") + m_pPlugins->file(QStringLiteral("RecordingTool.so"))),
             qPrintable(strText));
    QVERIFY(strText.contains(QStringLiteral("bad.so was not loaded: it is empty.")));
    QVERIFY(strText.startsWith(OrmCommandLine::version()));
}

void TestMainWindow::namesAreShownAsPlainText()
{
    const QString strID = QString::fromUtf8("<b>fat</b> \xE2\x80\xAE&x");
    CStudyWriter::writeFile(m_pStudy->folder() + QStringLiteral("/odd/SequenceInfo.txt"),
                            "Sequence=" + strID.toUtf8() + "\n[Click Numbers]\nCount=1\n1=c\n");
    CStudyWriter::writeFile(m_pStudy->folder() + QStringLiteral("/odd/c/ClickInfo.txt"), "[photographic image]\n");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(shownColumn(m_pWindow.get(), 0), QStringList{strID}); // the data stay as they are
    const auto* pList = TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList");
    const auto* pDelegate = qobject_cast<QStyledItemDelegate*>(pList->itemDelegate());
    QVERIFY(pDelegate != nullptr);
    QCOMPARE(pDelegate->displayText(strID, QLocale()), QStringLiteral("<b>fat</b> \\u202E&x")); // what is painted
    select({strID});
    action("actionClose")->trigger();
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("Closed <b>fat</b> \\u202E&x."));
}

void TestMainWindow::layoutIsRestored()
{
    action("actionLog")->trigger();
    m_pWindow->resize(777, 555);
    TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList")->setColumnWidth(0, 123);
    QSignalSpy objClosed(m_pWindow.get(), &COrmMainWindow::closed);
    QVERIFY(m_pWindow->close());
    QCOMPARE(objClosed.count(), 1);
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    QTRY_COMPARE(m_pWindow->size(), QSize(777, 555));
    QVERIFY(TestWidgets::get<QDockWidget>(m_pWindow.get(), "logPanel")->isVisible());
    QCOMPARE(TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList")->columnWidth(0), 123);
}

void TestMainWindow::damagedSettingsAreNoHindrance()
{
    CStudyWriter::writeFile(COrmHostSettings::file(),
                            "[General]\ngeometry=@ByteArray(nonsense)\nstate=12\ncolumns=12\nrecentFolders=@Invalid()\n");
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    QVERIFY(m_pWindow->width() > 200);
    CStudyWriter::writeFile(COrmHostSettings::file(), QByteArray(5000, '\xff'));
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    openStudy({"A"});
}

void TestMainWindow::windowStaysOpenWhileAToolWorks()
{
    COrmProcess::disableUserInteraction(true);
    QSignalSpy objClosed(m_pWindow.get(), &COrmMainWindow::closed);
    const bool bClosed = m_pWindow->close();
    COrmProcess::disableUserInteraction(false);
    QVERIFY(!bClosed);
    QVERIFY(m_pWindow->isVisible());
    QCOMPARE(objClosed.count(), 0);
    QVERIFY(m_pWindow->close());
}

void TestMainWindow::toolsGoBeforeTheWindow()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    const QPointer<COrmToolPluginBase> pGuard(pTool);
    pTool->pluginAction()->trigger();
    openStudy({"A"});
    const int nTopLevel = QApplication::topLevelWidgets().size();
    m_pWindow.reset();
    QVERIFY(!pGuard);
    QVERIFY(QApplication::topLevelWidgets().size() < nTopLevel);
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("A")) == nullptr);
}

void TestMainWindow::longitudinalStudyIsPlacedAndOpens()
{
    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    QVERIFY(objLibrary.open(QIODevice::ReadOnly));
    m_pPlugins->add(QStringLiteral("libormlongitudinalstudy.so"), objLibrary.readAll());
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(m_pWindow->plugins()->refusals(), QStringList());
    QCOMPARE(entries(menu("menuTools")), (QStringList{"Longitudinal Study", "Image Overlay", "-", "Reset Longitudinal Study"}));
    m_pStudy->addSequence(QStringLiteral("Fluorescent"), SSequenceLook::fluorescent());
    openStudy({"Luminescent"});

    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    menu("menuTools")->actions().first()->trigger();
    QCOMPARE(objWindows.count(), 1);
    auto* pTool = objWindows.first().first().value<QWidget*>();
    QTRY_VERIFY(pTool->isVisible());
    const auto* pSequences = TestWidgets::get<QListWidget>(pTool, "m_pSequenceNameLW");
    QCOMPARE(TestWidgets::texts(pSequences), (QStringList{"SOLA Luminescent", "NOVA Fluorescent"}));
    QMenu* pMenu = menu("menuWindow");
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu).size(), 3);
    // What is opened later reaches the window, and the reset hides it.
    m_pStudy->addSequence(QStringLiteral("Later"));
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(TestWidgets::texts(pSequences), (QStringList{"SOLA Luminescent", "SOLA Later", "NOVA Fluorescent"}));
    action("actionReset")->trigger();
    QVERIFY(!pTool->isVisible());
    menu("menuTools")->actions().first()->trigger();
    QTRY_VERIFY(pTool->isVisible());
}

void TestMainWindow::programAnswersWithoutAWindow_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("display");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("error");
    QTest::newRow("help") << QStringList{"--help"} << false << 0 << "Usage: ormelle [--tool NAME]"
                          << "";
    QTest::newRow("version") << QStringList{"-v"} << false << 0 << OrmCommandLine::version() + QLatin1Char('\n') << "";
    QTest::newRow("wrong usage") << QStringList{"--bogus"} << true << 2 << ""
                                 << "Unknown option 'bogus'.";
    QTest::newRow("tool without a name") << QStringList{"--tool", ""} << true << 2 << ""
                                         << "--tool needs the name of a tool.";
}

void TestMainWindow::programAnswersWithoutAWindow()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, display);
    QFETCH(int, code);
    QFETCH(QString, output);
    QFETCH(QString, error);
    QProcess objProgram;
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    if (!display)
        objEnvironment.remove(QStringLiteral("DISPLAY"));
    objProgram.setProcessEnvironment(objEnvironment);
    objProgram.start(QStringLiteral(ORM_BINARY_DIR "/bin/ormelle"), arguments);
    QVERIFY(objProgram.waitForFinished(60000));
    QCOMPARE(objProgram.exitStatus(), QProcess::NormalExit);
    QCOMPARE(objProgram.exitCode(), code);
    const QString strOutput = QString::fromLocal8Bit(objProgram.readAllStandardOutput());
    const QString strError = QString::fromLocal8Bit(objProgram.readAllStandardError());
    QCOMPARE(strOutput.left(output.size()), output);
    QCOMPARE(strOutput.isEmpty(), output.isEmpty());
    QCOMPARE(strError.left(error.size()), error);
}

ORM_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
