#include "COrmImageOverlayWindow.h"
#include "COrmLog.h"
#include "COrmPictureWidget.h"
#include "MainWindowTest.h"
#include "OrmCommandLine.h"
#include "OrmTestMain.h"

#include <QClipboard>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStyledItemDelegate>

class TestMainWindow : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }
    void cleanup() { removeWindow(); }

    void emptyWindowSaysWhatToDo();
    void copyInTheMainWindowCopiesTheSelection();
    void overlayFollowsTheSelection();
    void logPanelShowsWhatIsReported();
    void namesAreShownAsPlainText();
    void layoutIsRestored();
    void damagedSettingsAreNoHindrance();
    void programAnswersWithoutAWindow_data();
    void programAnswersWithoutAWindow();
};

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

void TestMainWindow::namesAreShownAsPlainText()
{
    const QString strID = QString::fromUtf8("<b>fat</b> \xE2\x80\xAE&x");
    CStudyWriter::writeFile(m_pStudy->folder() + QStringLiteral("/odd/SequenceInfo.txt"),
                            "Sequence=" + strID.toUtf8() + "\n[Click Numbers]\nCount=1\n1=c\n");
    CStudyWriter::writeFile(m_pStudy->folder() + QStringLiteral("/odd/c/ClickInfo.txt"), "[photographic image]\n");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(shownColumn(0), QStringList{strID}); // the data stay as they are
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
