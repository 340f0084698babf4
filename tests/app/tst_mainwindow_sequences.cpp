#include "COrmSequenceCollection.h"
#include "COrmSequenceModel.h"
#include "MainWindowTest.h"
#include "OrmTestMain.h"

#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QUrl>

namespace
{
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
} // namespace

class TestMainWindowSequences : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }
    void cleanup() { removeWindow(); }

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
};

void TestMainWindowSequences::openStudyOpensEverySequenceOfTheFolder()
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
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eID), (QStringList{"A", "B"}));
    QTRY_VERIFY(m_pWindow->statusBar()->currentMessage() == QStringLiteral("Opened 2 sequences."));
    QVERIFY(!TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText")->isVisible());
    QVERIFY(action("actionCloseAll")->isEnabled());
    QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), m_pStudy->folder());
    // The same study again changes nothing, and says so.
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("No further sequence was opened."));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindowSequences::listShowsWhatTheSequencesAre()
{
    m_pStudy->addSequence(QStringLiteral("M10"), SSequenceLook::fluorescent());
    m_pStudy->addIndexEntry(QStringLiteral("M10"), 1, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("M10"), 1, QStringLiteral("Day 1"), QStringLiteral("b.xml"));
    openStudy({"M10", "M9"});
    QCOMPARE(shownColumn(COrmSequenceModel::eID), (QStringList{"M9", "M10"}));
    QCOMPARE(shownColumn(COrmSequenceModel::eSubject), (QStringList{"Test", "Test"}));
    QCOMPARE(shownColumn(COrmSequenceModel::eDate), (QStringList{"2026-08-01 09:30", "2026-08-01 09:30"}));
    QCOMPARE(shownColumn(COrmSequenceModel::eResults).first(), QStringLiteral("none"));
    auto* pFilter = TestWidgets::get<QLineEdit>(m_pWindow.get(), "sequenceFilter");
    QTest::keyClicks(pFilter, QStringLiteral("10"));
    QCOMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"M10"});
}

void TestMainWindowSequences::recentFoldersOpenAgain()
{
    openStudy({"A"});
    action("actionCloseAll")->trigger();
    QVERIFY(m_pWindow->sequences()->sequences().isEmpty());
    QMenu* pRecent = menu("menuRecent");
    emit pRecent->aboutToShow();
    QCOMPARE(entries(pRecent).first(), m_pStudy->folder());
    pRecent->actions().first()->trigger();
    QTRY_COMPARE(shownColumn(0), QStringList{"A"});
    pRecent->actions().last()->trigger(); // Clear This List
    emit pRecent->aboutToShow();
    QVERIFY(!entries(pRecent).contains(m_pStudy->folder()));
}

void TestMainWindowSequences::droppedFoldersAreOpened()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addSequence(QStringLiteral("B"));
    m_pStudy->addSequence(QStringLiteral("C"));
    const QList<QUrl> lstUrls = {QUrl::fromLocalFile(m_pStudy->sequenceFolder(QStringLiteral("A"))),
                                 QUrl::fromLocalFile(m_pStudy->sequenceFolder(QStringLiteral("C")) + QStringLiteral("SequenceInfo.txt")),
                                 QUrl(QStringLiteral("https://example.org/study"))};
    QVERIFY(dropUrls(m_pWindow.get(), lstUrls));
    QTRY_COMPARE(shownColumn(0), (QStringList{"A", "C"}));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestMainWindowSequences::droppedTextAndUrlsAreNotWelcome()
{
    QVERIFY(!dropUrls(m_pWindow.get(), {QUrl(QStringLiteral("https://example.org/study"))}));
    QVERIFY(!dropUrls(m_pWindow.get(), {}));
    QMimeData objData;
    objData.setText(QStringLiteral("/tmp"));
    QDragEnterEvent objEnter(QPoint(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pWindow.get(), &objEnter);
    QVERIFY(!objEnter.isAccepted());
}

void TestMainWindowSequences::failureToOpenIsTold()
{
    const QString strFile = m_pStudy->folder() + QStringLiteral("/notes.txt");
    CStudyWriter::writeFile(strFile, "x");
    QVERIFY(dropUrls(m_pWindow.get(), {QUrl::fromLocalFile(strFile)}));
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    const SMessageRequest sBox = m_pHost->boxes().first();
    QCOMPARE(sBox.eKind, QMessageBox::Warning);
    QCOMPARE(sBox.strText,
             QStringLiteral("No sequence was opened.\n\n%1 is neither a folder nor a sequence file (Sequence*.txt).\n\nA sequence is a "
                            "folder that holds a file SequenceInfo.txt. Open such a folder, or any folder above it.")
                 .arg(strFile));
    QVERIFY(TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText")->isVisible());

    // Many reasons do not make an endless box.
    m_pHost->clear();
    QList<QUrl> lstUrls;
    for (int nFile = 0; nFile < 1000; ++nFile)
        lstUrls.append(QUrl::fromLocalFile(m_pStudy->folder() + QStringLiteral("/none %1").arg(nFile)));
    QVERIFY(dropUrls(m_pWindow.get(), lstUrls));
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    QCOMPARE(m_pHost->boxes().first().strText.count(QStringLiteral("does not exist.")), 5);
    QVERIFY(m_pHost->boxes().first().strText.contains(QStringLiteral("The log names 995 more.")));
}

void TestMainWindowSequences::partialFailureIsNoBox()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    CStudyWriter::writeFile(m_pStudy->folder() + QStringLiteral("/bad/SequenceInfo.txt"), "bad");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("Opened 1 sequence. View > Log names 1 problem."));
    QVERIFY(m_pHost->boxes().isEmpty());
    QVERIFY(m_pHost->hostLog().join(QLatin1Char('\n')).contains(QStringLiteral("bad/SequenceInfo.txt")));
}

void TestMainWindowSequences::searchCanBeStopped()
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

void TestMainWindowSequences::selectedSequencesAreClosed()
{
    openStudy({"A", "B", "C", "D"});
    select({"B", "D"});
    QVERIFY(action("actionClose")->isEnabled());
    QApplication::setActiveWindow(m_pWindow.get());
    QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
    QTest::keyClick(m_pWindow.get(), Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(shownColumn(0), (QStringList{"A", "C"}));
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("B")) == nullptr);
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("Closed 2 sequences."));
    QVERIFY(QFile::exists(m_pStudy->sequenceFolder(QStringLiteral("B")) + QStringLiteral("SequenceInfo.txt")));
    action("actionSelectAll")->trigger();
    action("actionClose")->trigger();
    QVERIFY(m_pWindow->sequences()->sequences().isEmpty());
    QVERIFY(!action("actionClose")->isEnabled());
    QVERIFY(TestWidgets::get<QLabel>(m_pWindow.get(), "emptyText")->isVisible());
}

void TestMainWindowSequences::refreshReadsAgain()
{
    openStudy({"A", "B"});
    COrmToolPluginBase* pTool = loadRecordingTool();
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("B"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    select({"B"});
    action("actionRefresh")->trigger();
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eResults), (QStringList{"none", "1 SOLA"}));
    QCOMPARE(takeCalls(pTool), QStringList{"sequence changed B"});
    select({});
    action("actionRefresh")->trigger();
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eResults), (QStringList{"1 SOLA", "1 SOLA"}));
    QCOMPARE(takeCalls(pTool), QStringList{"sequence changed A"});
}

ORM_TEST_MAIN(TestMainWindowSequences)
#include "tst_mainwindow_sequences.moc"
