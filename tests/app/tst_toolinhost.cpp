#include "COrmImageOverlayWindow.h"
#include "COrmMainWindow.h"
#include "COrmPluginManager.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmTool.h"
#include "CRecordingHost.h"
#include "CSaveDialogUser.h"
#include "CStudyWriter.h"
#include "OrmTestMain.h"
#include "PluginFolder.h"
#include "TestWidgets.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QListWidget>
#include <QMenu>
#include <QOpenGLWidget>
#include <QSignalSpy>
#include <QTabWidget>

#include <memory>

/// The tool as a plug-in in the application: what Edit > Copy and the export do from there.
class tst_toolinhost : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void copyReachesTheActiveTool_data();
    void copyReachesTheActiveTool();
    void copyInAnotherWindowIsNotMeantForTheTool();
    void hiddenToolCopiesNothing();
    void exportWritesTheView();
    void exportTellsAFailure();
    void aSequenceIsTakenUp_data();
    void aSequenceIsTakenUp();

private:
    QAction* action(const char* pName) const { return TestWidgets::get<QAction>(m_pWindow.get(), pName); }
    void activate(QWidget* pWidget) const;

    std::unique_ptr<CRecordingHost> m_pHost;
    std::unique_ptr<CPluginFolder> m_pPlugins;
    std::unique_ptr<QTemporaryDir> m_pFolder;
    std::unique_ptr<COrmMainWindow> m_pWindow;
    QWidget* m_pTool = nullptr; ///< the tool's window
};

void tst_toolinhost::init()
{
    COrmPreference::setStore(QString());
    m_pHost = std::make_unique<CRecordingHost>();
    m_pPlugins = std::make_unique<CPluginFolder>();
    m_pFolder = std::make_unique<QTemporaryDir>();
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));

    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    QVERIFY(objLibrary.open(QIODevice::ReadOnly));
    m_pPlugins->add(QStringLiteral("libormlongitudinalstudy.so"), objLibrary.readAll());
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(m_pWindow->plugins()->refusals(), QStringList());
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    TestWidgets::get<QMenu>(m_pWindow.get(), "menuTools")->actions().first()->trigger();
    QCOMPARE(objWindows.count(), 1);
    m_pTool = objWindows.first().first().value<QWidget*>();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool));
    m_pHost->clear();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
}

void tst_toolinhost::cleanup()
{
    m_pWindow.reset();
    m_pFolder.reset();
    m_pPlugins.reset();
    m_pHost.reset();
}

void tst_toolinhost::activate(QWidget* pWidget) const
{
    pWidget->activateWindow();
    QApplication::setActiveWindow(pWidget);
    QTRY_COMPARE(QApplication::activeWindow(), pWidget);
}

void tst_toolinhost::copyReachesTheActiveTool_data()
{
    QTest::addColumn<int>("nTab");
    QTest::addColumn<bool>("bByKey");
    QTest::newRow("view, menu") << 0 << false;
    QTest::newRow("view, key") << 0 << true;
    QTest::newRow("plot, menu") << 1 << false;
    QTest::newRow("plot, key") << 1 << true;
}

void tst_toolinhost::copyReachesTheActiveTool()
{
    QFETCH(int, nTab);
    QFETCH(bool, bByKey);
    TestWidgets::get<QTabWidget>(m_pTool, "m_p3DBrowserTabWidget")->setCurrentIndex(nTab);
    activate(m_pTool);
    if (bByKey)
    {
        QTest::keyClick(m_pTool, Qt::Key_C, Qt::ControlModifier);
    }
    else
    {
        action("actionCopy")->trigger();
    }
    const QImage imgByCommand = QGuiApplication::clipboard()->image();
    QVERIFY(!imgByCommand.isNull());
    // The same as by the tool's own button.
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    TestWidgets::click(TestWidgets::get<QAbstractButton>(m_pTool, "m_pCopyToClipboardButton"));
    QCOMPARE(imgByCommand, QGuiApplication::clipboard()->image());
    const QSize objViewSize = m_pTool->findChild<QOpenGLWidget*>()->size();
    QCOMPARE(imgByCommand.size() == objViewSize, nTab == 0);
}

void tst_toolinhost::copyInAnotherWindowIsNotMeantForTheTool()
{
    activate(m_pWindow.get());
    action("actionCopy")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    COrmImageOverlayWindow objOther;
    objOther.setObjectName(QStringLiteral("Longitudinal Study 2"));
    objOther.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objOther));
    activate(&objOther);
    action("actionCopy")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

void tst_toolinhost::hiddenToolCopiesNothing()
{
    m_pTool->hide();
    emit COrmPreference::getSignalHandler()->signalCopyToClipboard(QStringLiteral("Longitudinal Study"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

void tst_toolinhost::exportWritesTheView()
{
    CSaveDialogUser objUser(*m_pHost, {{QStringLiteral("tif"), m_pFolder->filePath(QStringLiteral("view"))}});
    TestWidgets::click(TestWidgets::get<QAbstractButton>(m_pTool, "m_pExportButton"));
    QCOMPARE(m_pHost->calls(), QStringList{QStringLiteral("dialog")});
    QCOMPARE(objUser.seen().first().strParent, QStringLiteral("Longitudinal Study"));
    QFile objFile(m_pFolder->filePath(QStringLiteral("view.tif")));
    QVERIFY(objFile.open(QIODevice::ReadOnly));
    QCOMPARE(objFile.read(4), QByteArray("II*\0", 4));
    QCOMPARE(COrmPreference::getSettings()->getRecentFilePath(), m_pFolder->path());
}

void tst_toolinhost::exportTellsAFailure()
{
    CSaveDialogUser objUser(*m_pHost, {{QStringLiteral("png"), m_pFolder->filePath(QStringLiteral("view.emf"))}});
    TestWidgets::click(TestWidgets::get<QAbstractButton>(m_pTool, "m_pExportButton"));
    QCOMPARE(m_pHost->calls(), (QStringList{"dialog", "box critical: The picture was not saved as \"view.emf\": only bmp, jpg, png, eps "
                                                      "and tif can be written; end the name in one of them."}));
    QVERIFY(QDir(m_pFolder->path()).isEmpty());
}

void tst_toolinhost::aSequenceIsTakenUp_data()
{
    QTest::addColumn<QString>("strSequence");
    QTest::addColumn<QString>("strEntry"); // null: the tool does not offer it
    QTest::addColumn<QString>("strResult");
    QTest::newRow("one kind") << "S1"
                              << "SOLA S1"
                              << "light";
    QTest::newRow("the other kind") << "N1"
                                    << "NOVA N1"
                                    << "dye";
    QTest::newRow("both kinds, results of both") << "B1"
                                                 << "SOLA B1"
                                                 << "light";
    QTest::newRow("both kinds, results of the second") << "B2"
                                                       << "NOVA B2"
                                                       << "dye";
    QTest::newRow("both kinds, no results") << "B3"
                                            << "SOLA B3" << QString();
    QTest::newRow("without a surface") << "F1" << QString() << QString();
}

void tst_toolinhost::aSequenceIsTakenUp()
{
    QFETCH(QString, strSequence);
    QFETCH(QString, strEntry);
    QFETCH(QString, strResult);
    CStudyWriter objStudy;
    SSequenceLook objBoth = SSequenceLook::fluorescent();
    objBoth.bLuminescent = true;
    SSequenceLook objFlat;
    objFlat.bStructuredLight = false;
    const SResultDocument objLight;
    const SResultDocument objDye(SResultDocument::NOVA);
    for (const auto& [strID, objLook] :
         {std::pair("S1", SSequenceLook::luminescent()), std::pair("N1", SSequenceLook::fluorescent()), std::pair("B1", objBoth),
          std::pair("B2", objBoth), std::pair("B3", objBoth), std::pair("F1", objFlat)})
        objStudy.addSequence(strID, objLook);
    for (const char* pID : {"S1", "B1"})
        objStudy.addResult(pID, QStringLiteral("light"), objLight);
    for (const char* pID : {"N1", "B1", "B2"})
        objStudy.addResult(pID, QStringLiteral("dye"), objDye);
    m_pWindow->sequences()->open({objStudy.folder()});
    QCOMPARE(m_pWindow->sequences()->sequences().size(), 6);

    const QList<COrmSequenceDataset*> lstOpen = m_pWindow->sequences()->sequences();
    const auto it =
        std::find_if(lstOpen.cbegin(), lstOpen.cend(), [&](const COrmSequenceDataset* p) { return p->getSequenceID() == strSequence; });
    QVERIFY(it != lstOpen.cend());
    COrmTool* pTool = m_pWindow->plugins()->tool(QStringLiteral("Longitudinal Study"));
    auto* pEntries = TestWidgets::get<QListWidget>(m_pTool, "m_pSequenceNameLW");
    pEntries->setCurrentRow(-1);
    QCOMPARE(pTool->select(*it), !strEntry.isNull());
    QCOMPARE(pEntries->currentItem() ? pEntries->currentItem()->text() : QString(), strEntry);
    auto* pResults = TestWidgets::get<QListWidget>(m_pTool, "m_pResultWidget");
    QCOMPARE(pResults->count() > 0 && !strEntry.isNull() ? pResults->item(0)->text() : QString(), strResult);
    QVERIFY(!pTool->select(nullptr));
}

ORM_TEST_MAIN(tst_toolinhost)
#include "tst_toolinhost.moc"
