#include "COrmProcess.h"
#include "MainWindowTest.h"
#include "OrmCommandLine.h"
#include "OrmTestMain.h"

#include <QDockWidget>
#include <QListWidget>
#include <QSignalSpy>
#include <QStatusBar>

namespace
{
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

class TestMainWindowTools : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }
    void cleanup() { removeWindow(); }

    void toolsStandWhereTheyAskTo();
    void toolWithoutAPlaceStandsBehindTheOthers();
    void menuEntryUsesTheTool();
    void failingToolIsToldInABox();
    void toolWindowsAreListed();
    void copyNamesTheActiveWindow();
    void resetIsBroadcast();
    void refusedToolsAreNamedInTheStatusBar();
    void commandLineOpensFoldersAndThenTheTool();
    void unknownToolOpensTheLog();
    void aboutNamesTheLoadedTools();
    void windowStaysOpenWhileAToolWorks();
    void toolsGoBeforeTheWindow();
    void longitudinalStudyIsPlacedAndOpens();
};

void TestMainWindowTools::toolsStandWhereTheyAskTo()
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

void TestMainWindowTools::toolWithoutAPlaceStandsBehindTheOthers()
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

void TestMainWindowTools::menuEntryUsesTheTool()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    QAction* pAction = pTool->pluginAction();
    pAction->trigger();
    QCOMPARE(takeCalls(pTool), (QStringList{"createObject", "show"}));
    pAction->trigger();
    QCOMPARE(takeCalls(pTool), QStringList{"createObject"});
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindowTools::failingToolIsToldInABox()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    pTool->setProperty("trouble", QStringLiteral("throw"));
    pTool->pluginAction()->trigger();
    pTool->setProperty("trouble", QStringLiteral("refuse"));
    pTool->pluginAction()->trigger();
    QCOMPARE(m_pHost->callsOf(QStringLiteral("box")),
             (QStringList{"box warning: Recording Tool failed: out of order.", "box warning: Recording Tool could not open its window."}));
}

void TestMainWindowTools::toolWindowsAreListed()
{
    QMenu* pMenu = menu("menuWindow");
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"&Next Window", "-", "Ormelle", "-"}));
    COrmToolPluginBase* pTool = loadRecordingTool();
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    pTool->pluginAction()->trigger();
    QCOMPARE(objWindows.count(), 1);
    auto* pToolWindow = objWindows.first().first().value<QWidget*>();
    QVERIFY(pToolWindow->isWindow());
    QVERIFY(pToolWindow->parent() == nullptr);
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"&Next Window", "-", "Ormelle", "-", "Recording && Tool"}));
    pToolWindow->showMinimized();
    pMenu->actions().last()->trigger();
    QTRY_VERIFY(!pToolWindow->isMinimized());
    pToolWindow->hide(); // the tool's own business
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"&Next Window", "-", "Ormelle", "-"}));
    delete pToolWindow;
    emit pMenu->aboutToShow();
    QCOMPARE(entries(pMenu), (QStringList{"&Next Window", "-", "Ormelle", "-"}));
}

void TestMainWindowTools::copyNamesTheActiveWindow()
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

void TestMainWindowTools::resetIsBroadcast()
{
    COrmToolPluginBase* pTool = loadRecordingTool();
    action("actionReset")->trigger();
    QCOMPARE(takeCalls(pTool), QStringList{"reset"});
}

void TestMainWindowTools::refusedToolsAreNamedInTheStatusBar()
{
    m_pPlugins->add(QStringLiteral("bad.so"), QByteArray());
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("bad.so was not loaded: it is empty."));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindowTools::commandLineOpensFoldersAndThenTheTool()
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

void TestMainWindowTools::unknownToolOpensTheLog()
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

void TestMainWindowTools::aboutNamesTheLoadedTools()
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

void TestMainWindowTools::windowStaysOpenWhileAToolWorks()
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

void TestMainWindowTools::toolsGoBeforeTheWindow()
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

void TestMainWindowTools::longitudinalStudyIsPlacedAndOpens()
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
    QCOMPARE(entries(pMenu).size(), 5);
    // What is opened later reaches the window, and the reset hides it.
    m_pStudy->addSequence(QStringLiteral("Later"));
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(TestWidgets::texts(pSequences), (QStringList{"SOLA Luminescent", "SOLA Later", "NOVA Fluorescent"}));
    action("actionReset")->trigger();
    QVERIFY(!pTool->isVisible());
    menu("menuTools")->actions().first()->trigger();
    QTRY_VERIFY(pTool->isVisible());
}

ORM_TEST_MAIN(TestMainWindowTools)
#include "tst_mainwindow_tools.moc"
