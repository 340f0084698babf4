#include "COrmDemoStudy.h"
#include "COrmElidedLabel.h"
#include "COrmHostSettings.h"
#include "COrmRecentList.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceModel.h"
#include "MainWindowTest.h"
#include "OrmTestMain.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QSignalSpy>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>

#include <atomic>

/// What a new user meets: the empty window, the first study, and the way from a sequence to the tool.
class TestFirstMinutes : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }
    void cleanup() { removeWindow(); }

    void emptyWindowOffersWhatCanBeDone();
    void recentStudiesAreListed();
    void recentStudyIsOpenedByClickAndKey_data();
    void recentStudyIsOpenedByClickAndKey();
    void vanishedStudiesAreNotShown();
    void studyThatDoesNotAnswerHoldsNothingUp();
    void folderWithoutSequencesIsNoStudy();
    void listOfRecentStudiesIsCleared();
    void noMoreThanTenStudiesAreRemembered();
    void makingOfTheDemoStudyIsShown();
    void failureToMakeTheDemoStudyIsTold();
    void placeToDropShowsAWelcome();
    void firstSequenceIsSelectedAndPreviewed();
    void findLeadsToTheFilter();
    void manySequencesLeaveTheWindowAlive();
    void missingToolIsToldInANotice();
    void compareOpensTheToolWithTheSequence_data();
    void compareOpensTheToolWithTheSequence();
    void sequenceThatTheToolDoesNotListIsTold();
    void failingToolIsToldWhenComparing();
    void previewStandsBelowInANarrowWindow();
    void shortcutsDoNotClash();
    void everythingThatTakesTheKeyboardHasAName();

private:
    template <class T>
    T* get(const char* pName) const
    {
        return TestWidgets::get<T>(m_pWindow.get(), pName);
    }
    COrmRecentList* recent() const { return get<COrmRecentList>("recentStudies"); }
    QStringList recentFolders() const;
    void waitUntilOpened() const { QTRY_VERIFY(!get<QToolButton>("stopSearch")->isVisible()); }
    void loadLongitudinalStudy();
};

QStringList TestFirstMinutes::recentFolders() const
{
    QStringList lstFolders;
    for (int nRow = 0; nRow < recent()->count(); ++nRow)
        lstFolders.append(recent()->item(nRow)->data(Qt::UserRole).toString());
    return lstFolders;
}

void TestFirstMinutes::loadLongitudinalStudy()
{
    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    QVERIFY(objLibrary.open(QIODevice::ReadOnly));
    m_pPlugins->add(QStringLiteral("libormlongitudinalstudy.so"), objLibrary.readAll());
    m_pWindow->loadTools(m_pPlugins->path());
    QCOMPARE(m_pWindow->plugins()->refusals(), QStringList());
}

void TestFirstMinutes::emptyWindowOffersWhatCanBeDone()
{
    QCOMPARE(get<QLabel>("emptyHeading")->text(), QStringLiteral("Welcome to Ormelle"));
    QVERIFY(get<QPushButton>("openStudyButton")->isVisible());
    QVERIFY(!get<QPushButton>("openStudyButton")->toolTip().isEmpty());
    QVERIFY(get<QLabel>("dropPlace")->isVisible());
    QVERIFY(!recent()->isVisible()); // there are none
    // Beside this program there is neither a demo study nor what makes one.
    QVERIFY(!get<QPushButton>("demoStudyButton")->isVisible());
    QVERIFY(!action("actionOpenDemo")->isEnabled());
}

void TestFirstMinutes::recentStudiesAreListed()
{
    CStudyWriter objSecond;
    objSecond.addSequence(QStringLiteral("B"));
    openStudy({"A"});
    m_pWindow->openPaths({objSecond.folder()}, true);
    waitUntilOpened();
    m_pWindow->sequences()->closeAll();
    QVERIFY(recent()->isVisible());
    QCOMPARE(recentFolders(), (QStringList{objSecond.folder(), m_pStudy->folder()}));
    emit menu("menuRecent")->aboutToShow();
    QCOMPARE(entries(menu("menuRecent")), (QStringList{objSecond.folder(), m_pStudy->folder(), "-", "&Clear List"}));
    QVERIFY(recent()->item(0)->data(Qt::AccessibleTextRole).toString().contains(objSecond.folder()));
    QVERIFY(!recent()->item(0)->toolTip().isEmpty());
    // The next window knows them, too.
    const COrmMainWindow objNext;
    QTRY_COMPARE(TestWidgets::get<COrmRecentList>(&objNext, "recentStudies")->count(), 2);
}

void TestFirstMinutes::recentStudyIsOpenedByClickAndKey_data()
{
    QTest::addColumn<bool>("bByKey");
    QTest::newRow("click") << false;
    QTest::newRow("key") << true;
}

void TestFirstMinutes::recentStudyIsOpenedByClickAndKey()
{
    QFETCH(bool, bByKey);
    openStudy({"A"});
    m_pWindow->sequences()->closeAll();
    QSignalSpy objChosen(recent(), &COrmRecentList::chosen);
    if (bByKey)
    {
        recent()->setCurrentRow(0);
        QTest::keyClick(recent(), Qt::Key_Return);
    }
    else
        QTest::mouseClick(recent()->viewport(), Qt::LeftButton, Qt::NoModifier, recent()->visualItemRect(recent()->item(0)).center());
    QCOMPARE(objChosen.count(), 1);
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"A"});
}

void TestFirstMinutes::vanishedStudiesAreNotShown()
{
    auto pGone = std::make_unique<CStudyWriter>();
    pGone->addSequence(QStringLiteral("B"));
    openStudy({"A"});
    m_pWindow->openPaths({pGone->folder()}, true);
    waitUntilOpened();
    const QString strGone = pGone->folder();
    pGone.reset();
    // The next look into the menus finds it gone.
    const auto recentEntries = [this]
    {
        for (const QAction* pMenu : m_pWindow->menuBar()->actions())
            emit pMenu->menu()->aboutToShow();
        emit menu("menuRecent")->aboutToShow();
        return entries(menu("menuRecent"));
    };
    QTRY_COMPARE(recentEntries(), (QStringList{m_pStudy->folder(), "-", "&Clear List"}));
    QTRY_COMPARE(recentFolders(), QStringList{m_pStudy->folder()});
    const COrmMainWindow objNext;
    QTRY_COMPARE(TestWidgets::get<COrmRecentList>(&objNext, "recentStudies")->count(), 1);
    QVERIFY(m_pHost->boxes().isEmpty());
    // It comes back with its disk.
    QVERIFY(QDir().mkpath(strGone));
    QTRY_COMPARE(recentEntries().first(), strGone);
    QVERIFY(QDir().rmdir(strGone));
}

void TestFirstMinutes::studyThatDoesNotAnswerHoldsNothingUp()
{
    CStudyWriter objDead;
    objDead.addSequence(QStringLiteral("B"));
    openStudy({"A"});
    m_pWindow->openPaths({objDead.folder()}, true);
    waitUntilOpened();
    // What the threads share with the test may be looked at after its end.
    struct SServer
    {
        QSemaphore m_objAnswer;
        std::atomic<int> m_nAsked{0};
    };
    const auto pServer = std::make_shared<SServer>();
    const auto exists = [pServer, strDead = objDead.folder()](const QString& strFolder)
    {
        if (strFolder != strDead)
            return true;
        ++pServer->m_nAsked;
        pServer->m_objAnswer.acquire();
        return true;
    };
    {
        COrmMainWindow objNext(nullptr, exists);
        objNext.show();
        const auto* pRecent = TestWidgets::get<COrmRecentList>(&objNext, "recentStudies");
        QTRY_COMPARE(pRecent->count(), 1);
        QTRY_COMPARE(pServer->m_nAsked.load(), 1);
        QCOMPARE(pRecent->item(0)->data(Qt::UserRole).toString(), m_pStudy->folder());
        // The window goes on working, and nobody waits a second time.
        for (const QAction* pMenu : objNext.menuBar()->actions())
            emit pMenu->menu()->aboutToShow();
        objNext.openPaths({m_pStudy->folder()}, false);
        QTRY_VERIFY(!TestWidgets::get<QToolButton>(&objNext, "stopSearch")->isVisible());
        QCOMPARE(pServer->m_nAsked.load(), 1);
        pServer->m_objAnswer.release();
        QTRY_COMPARE(pRecent->count(), 2);
        for (const QAction* pMenu : objNext.menuBar()->actions())
            emit pMenu->menu()->aboutToShow();
        QTRY_COMPARE(pServer->m_nAsked.load(), 2);
    }
    pServer->m_objAnswer.release(); // after the window
}

void TestFirstMinutes::folderWithoutSequencesIsNoStudy()
{
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    QCOMPARE(m_pHost->boxes().first().strText,
             QStringLiteral("No sequence was opened.\n\nThere is no sequence under %1.\n\nA sequence is a folder that holds a file "
                            "SequenceInfo.txt. Open such a folder, or any folder above it.")
                 .arg(m_pStudy->folder()));
    QCOMPARE(recentFolders(), QStringList());
}

void TestFirstMinutes::listOfRecentStudiesIsCleared()
{
    openStudy({"A"});
    m_pWindow->sequences()->closeAll();
    TestWidgets::click(get<QPushButton>("clearRecentButton"));
    QVERIFY(!recent()->isVisible());
    QCOMPARE(COrmHostSettings().recentFolders(), QStringList());
    QVERIFY(QFile::exists(m_pStudy->sequenceFolder(QStringLiteral("A"))));
}

void TestFirstMinutes::noMoreThanTenStudiesAreRemembered()
{
    QStringList lstFolders;
    for (int nStudy = 0; nStudy < 12; ++nStudy)
    {
        lstFolders.prepend(m_pStudy->folder() + QStringLiteral("/Study %1").arg(nStudy));
        QVERIFY(QDir().mkpath(lstFolders.first()));
        COrmHostSettings().addRecentFolder(lstFolders.first());
    }
    const COrmMainWindow objNext;
    const auto* pList = TestWidgets::get<COrmRecentList>(&objNext, "recentStudies");
    QTRY_COMPARE(pList->count(), 10);
    QCOMPARE(pList->item(0)->data(Qt::UserRole).toString(), lstFolders.at(0));
    QCOMPARE(pList->item(9)->data(Qt::UserRole).toString(), lstFolders.at(9));
}

void TestFirstMinutes::makingOfTheDemoStudyIsShown()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    auto* pDemo = m_pWindow->findChild<COrmDemoStudy*>();
    emit pDemo->progress(3, 10);
    QCOMPARE(get<QLabel>("emptyHeading")->text(), QStringLiteral("Making the demo study..."));
    QCOMPARE(get<QLabel>("emptyText")->text(), QStringLiteral("3 of 10 sequences are written."));
    const auto* pBar = get<QProgressBar>("emptyProgress");
    QVERIFY(pBar->isVisible());
    QCOMPARE(pBar->value(), 3);
    QCOMPARE(pBar->maximum(), 10);
    QVERIFY(get<QPushButton>("emptyStop")->isVisible());
    QVERIFY(!get<QPushButton>("openStudyButton")->isVisible());
    emit pDemo->ready(m_pStudy->folder());
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"A"});
    waitUntilOpened();
    m_pWindow->sequences()->closeAll();
    QVERIFY(get<QPushButton>("openStudyButton")->isVisible());
    QVERIFY(!pBar->isVisible());
}

void TestFirstMinutes::failureToMakeTheDemoStudyIsTold()
{
    auto* pDemo = m_pWindow->findChild<COrmDemoStudy*>();
    emit pDemo->progress(3, 10);
    emit pDemo->failed(QStringLiteral("The disk is full. Make room."));
    QVERIFY(get<QPushButton>("openStudyButton")->isVisible());
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    QCOMPARE(m_pHost->boxes().first().strText, QStringLiteral("The disk is full. Make room."));
    // Having it stopped is no failure.
    emit pDemo->failed(QString());
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("The demo study was not made."));
    QCoreApplication::processEvents();
    QCOMPARE(m_pHost->boxes().size(), 1);
}

void TestFirstMinutes::placeToDropShowsAWelcome()
{
    const auto* pPlace = get<QLabel>("dropPlace");
    const QImage imgBefore = m_pWindow->grab(QRect(pPlace->mapTo(m_pWindow.get(), QPoint()), pPlace->size())).toImage();
    const auto picture = [&] { return m_pWindow->grab(QRect(pPlace->mapTo(m_pWindow.get(), QPoint()), pPlace->size())).toImage(); };
    QMimeData objData;
    objData.setUrls({QUrl::fromLocalFile(m_pStudy->folder())});
    QDragEnterEvent objEnter(QPoint(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pWindow.get(), &objEnter);
    QVERIFY(objEnter.isAccepted());
    QVERIFY(picture() != imgBefore);
    QDragLeaveEvent objLeave;
    QApplication::sendEvent(m_pWindow.get(), &objLeave);
    QCOMPARE(picture(), imgBefore);
    // What is not welcome is not welcomed.
    objData.setUrls({QUrl(QStringLiteral("https://example.org/"))});
    QDragEnterEvent objOther(QPoint(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pWindow.get(), &objOther);
    QCOMPARE(picture(), imgBefore);
}

void TestFirstMinutes::firstSequenceIsSelectedAndPreviewed()
{
    m_pStudy->addSequence(QStringLiteral("B"));
    m_pStudy->addIndexEntry(QStringLiteral("B"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    openStudy({"A", "C"});
    QCOMPARE(get<COrmElidedLabel>("previewTitle")->text(), QStringLiteral("B"));
    select({"C"});
    QCOMPARE(get<COrmElidedLabel>("previewTitle")->text(), QStringLiteral("C"));
    // Opening more leaves the selection alone.
    openStudy({"D"});
    QCOMPARE(get<COrmElidedLabel>("previewTitle")->text(), QStringLiteral("C"));
    m_pWindow->sequences()->close(QStringLiteral("C"));
    QVERIFY(get<COrmElidedLabel>("previewTitle")->text() != QStringLiteral("C") || get<QLabel>("previewNothing")->isVisible());
    // A refresh shows what was saved since.
    select({"B"});
    auto* pResults = get<QListWidget>("previewResults");
    QTRY_COMPARE(TestWidgets::texts(pResults), QStringList{"SOLA Day 0"});
    m_pStudy->addIndexEntry(QStringLiteral("B"), 0, QStringLiteral("Day 1"), QStringLiteral("b.xml"));
    action("actionRefresh")->trigger();
    QTRY_COMPARE(TestWidgets::texts(pResults), (QStringList{"SOLA Day 0", "SOLA Day 1"}));
}

void TestFirstMinutes::findLeadsToTheFilter()
{
    openStudy({"A", "B"});
    QApplication::setActiveWindow(m_pWindow.get());
    QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
    QCOMPARE(action("actionFind")->shortcut(), QKeySequence(QKeySequence::Find));
    QTest::keyClick(m_pWindow.get(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(get<QLineEdit>("sequenceFilter")->hasFocus());
    QTest::keyClicks(get<QLineEdit>("sequenceFilter"), QStringLiteral("b"));
    QCOMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"B"});
}

void TestFirstMinutes::manySequencesLeaveTheWindowAlive()
{
    SSequenceLook sLook;
    sLook.nClicks = 1;
    for (int nSequence = 0; nSequence < 500; ++nSequence)
        m_pStudy->addSequence(QStringLiteral("S%1").arg(nSequence), sLook);
    const auto count = [this] { return m_pWindow->sequences()->sequences().size(); };

    // Stopped halfway: what is open stays open.
    QObject objGuard;
    connect(m_pWindow->sequences(), &COrmSequenceCollection::added, &objGuard,
            [&]
            {
                if (count() == 100)
                    get<QToolButton>("stopSearch")->click();
            });
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QVERIFY(get<QToolButton>("stopSearch")->isVisible());
    waitUntilOpened();
    QCOMPARE(count(), 100);
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("The search was stopped. Opened 100 sequences."));
    QVERIFY(m_pHost->boxes().isEmpty());
    QCOMPARE(get<COrmElidedLabel>("previewTitle")->text(), shownColumn(COrmSequenceModel::eID).first());

    // Opened again, the rest comes; meanwhile the window gets its turn.
    int nTurns = 0;
    QTimer objTimer;
    connect(&objTimer, &QTimer::timeout, &objGuard, [&] { nTurns += count() > 100 && count() < 500 ? 1 : 0; });
    objTimer.start(0);
    connect(m_pWindow->sequences(), &COrmSequenceCollection::added, &objGuard, &dawdle);
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE_WITH_TIMEOUT(count(), 500, 60000);
    QVERIFY(nTurns > 0);
    waitUntilOpened();
    QCOMPARE(get<QLabel>("sequenceCount")->text(), QStringLiteral("500 sequences"));
    QCOMPARE(m_pWindow->statusBar()->currentMessage(), QStringLiteral("Opened 400 sequences."));
}

void TestFirstMinutes::missingToolIsToldInANotice()
{
    m_pWindow->loadTools(m_pPlugins->path());
    const auto* pNotice = get<QFrame>("noticeBar");
    QVERIFY(pNotice->isVisible());
    QCOMPARE(get<QLabel>("noticeText")->text(),
             QStringLiteral("The tool Longitudinal Study is not there, so results cannot be compared. The "
                            "log says why. Install Ormelle again, or ask whoever installed it."));
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    openStudy({});
    QVERIFY(!get<QPushButton>("compareButton")->isEnabled());
    QCOMPARE(get<COrmElidedLabel>("compareHint")->text(), QStringLiteral("The tool Longitudinal Study is not there: View > Log says why."));
    QVERIFY(!action("actionCompare")->isEnabled());
    TestWidgets::click(get<QPushButton>("noticeLogButton"));
    QVERIFY(get<QWidget>("logPanel")->isVisible());
    TestWidgets::click(get<QPushButton>("noticeCloseButton"));
    QVERIFY(!pNotice->isVisible());
}

void TestFirstMinutes::compareOpensTheToolWithTheSequence_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QStringList>("results");
    QTest::addColumn<int>("way");
    QTest::newRow("luminescent, by the button") << "L"
                                                << "SOLA L" << QStringList{"Day 0", "Day 1"} << 0;
    QTest::newRow("fluorescent, by the menu") << "F"
                                              << "NOVA F" << QStringList{"Day 2"} << 1;
    QTest::newRow("luminescent, by the key") << "L"
                                             << "SOLA L" << QStringList{"Day 0", "Day 1"} << 2;
    QTest::newRow("a name that ends like another") << "X L"
                                                   << "SOLA X L" << QStringList{"Day 3"} << 0;
}

void TestFirstMinutes::compareOpensTheToolWithTheSequence()
{
    QFETCH(QString, id);
    QFETCH(int, way);
    loadLongitudinalStudy();
    QVERIFY(!get<QFrame>("noticeBar")->isVisible());
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addSequence(QStringLiteral("L"));
    m_pStudy->addSequence(QStringLiteral("X L"));
    m_pStudy->addSequence(QStringLiteral("F"), SSequenceLook::fluorescent());
    m_pStudy->addIndexEntry(QStringLiteral("L"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("L"), 0, QStringLiteral("Day 1"), QStringLiteral("b.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("X L"), 0, QStringLiteral("Day 3"), QStringLiteral("d.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("F"), 1, QStringLiteral("Day 2"), QStringLiteral("c.xml"));
    openStudy({});
    select({id});
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    if (way == 0)
        TestWidgets::click(get<QPushButton>("compareButton"));
    else if (way == 1)
        action("actionCompare")->trigger();
    else
    {
        QApplication::setActiveWindow(m_pWindow.get());
        QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
        QTest::keyClick(m_pWindow.get(), Qt::Key_Return, Qt::ControlModifier);
    }
    QCOMPARE(objWindows.count(), 1);
    const auto* pTool = objWindows.first().first().value<QWidget*>();
    QVERIFY(pTool->isVisible());
    const auto* pSequences = TestWidgets::get<QListWidget>(pTool, "m_pSequenceNameLW");
    QCOMPARE(pSequences->selectedItems().size(), 1);
    QTEST(pSequences->selectedItems().first()->text(), "entry");
    QTEST(TestWidgets::texts(TestWidgets::get<QListWidget>(pTool, "m_pResultWidget")), "results");
    // A second time the same window shows another sequence.
    m_pWindow->activateWindow();
    select({"L"});
    action("actionCompare")->trigger();
    QCOMPARE(objWindows.count(), 1);
    QCOMPARE(pSequences->selectedItems().first()->text(), QStringLiteral("SOLA L"));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestFirstMinutes::sequenceThatTheToolDoesNotListIsTold()
{
    loadLongitudinalStudy();
    SSequenceLook sLook;
    sLook.bStructuredLight = false; // no surface
    m_pStudy->addSequence(QStringLiteral("Flat"), sLook);
    m_pStudy->addIndexEntry(QStringLiteral("Flat"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    openStudy({"Other"});
    select({"Flat"});
    TestWidgets::click(get<QPushButton>("compareButton"));
    QCOMPARE(m_pHost->boxes().size(), 1);
    QCOMPARE(
        m_pHost->boxes().first().strText,
        QStringLiteral("Longitudinal Study does not list the sequence Flat. It compares luminescent sequences, and fluorescent ones with "
                       "trans-illumination, that have a structured-light or CT surface. Choose such a sequence."));
}

void TestFirstMinutes::failingToolIsToldWhenComparing()
{
    // Without the tool the action does nothing, and a sequence need not be selected with it.
    action("actionCompare")->trigger();
    QVERIFY(m_pHost->boxes().isEmpty());
    loadLongitudinalStudy();
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    action("actionCompare")->trigger();
    QCOMPARE(objWindows.count(), 1);
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestFirstMinutes::previewStandsBelowInANarrowWindow()
{
    openStudy({"A", "B"});
    const auto* pSplitter = get<QSplitter>("sequenceSplitter");
    for (const QSize& sz : {QSize(1280, 800), QSize(640, 400), QSize(1280, 800)})
    {
        m_pWindow->resize(sz);
        QTRY_COMPARE(m_pWindow->size(), sz);
        QTRY_COMPARE(pSplitter->orientation(), sz.width() > 1000 ? Qt::Horizontal : Qt::Vertical);
        QVERIFY(get<QPushButton>("compareButton")->isVisible());
        const auto* pTree = get<QTreeView>("sequenceList");
        QVERIFY(pTree->visualRect(pTree->model()->index(1, 0)).bottom() < pTree->viewport()->height());
    }
}

void TestFirstMinutes::shortcutsDoNotClash()
{
    loadLongitudinalStudy();
    QMap<QString, QString> mapOwners;
    for (const QAction* pAction : m_pWindow->findChildren<QAction*>())
    {
        for (const QKeySequence& objKeys : pAction->shortcuts())
        {
            const QString strKeys = objKeys.toString();
            QVERIFY2(!mapOwners.contains(strKeys) || mapOwners.value(strKeys) == pAction->text(),
                     qPrintable(strKeys + QStringLiteral(": ") + mapOwners.value(strKeys) + QStringLiteral(", ") + pAction->text()));
            mapOwners.insert(strKeys, pAction->text());
        }
    }
    QVERIFY(mapOwners.contains(QStringLiteral("Ctrl+F")));
    QVERIFY(mapOwners.contains(QStringLiteral("Ctrl+Return")));
    // Nor do the letters behind Alt, among what is seen at a time.
    openStudy({"A"});
    for (const bool bList : {true, false})
    {
        if (!bList)
            m_pWindow->sequences()->closeAll();
        QStringList lstTexts;
        for (const QAction* pAction : m_pWindow->menuBar()->actions())
            lstTexts.append(pAction->text());
        for (const QAbstractButton* pButton : m_pWindow->findChildren<QAbstractButton*>())
        {
            if (pButton->isVisible() && !qobject_cast<const QToolButton*>(pButton))
                lstTexts.append(pButton->text());
        }
        for (const QLabel* pLabel : m_pWindow->findChildren<QLabel*>())
        {
            if (pLabel->isVisible() && pLabel->buddy() != nullptr)
                lstTexts.append(pLabel->text());
        }
        QMap<QString, QString> mapLetters;
        for (const QString& strText : qAsConst(lstTexts))
        {
            const QString strLetter = QKeySequence::mnemonic(strText).toString();
            if (strLetter.isEmpty())
                continue;
            QVERIFY2(!mapLetters.contains(strLetter), qPrintable(strText + QStringLiteral(" and ") + mapLetters.value(strLetter)));
            mapLetters.insert(strLetter, strText);
        }
        QVERIFY(mapLetters.size() > 5);
    }
}

void TestFirstMinutes::everythingThatTakesTheKeyboardHasAName()
{
    m_pWindow->loadTools(m_pPlugins->path());
    openStudy({"A"});
    for (const bool bList : {true, false})
    {
        if (!bList)
            m_pWindow->sequences()->closeAll();
        int nSeen = 0;
        for (QWidget* pWidget : m_pWindow->findChildren<QWidget*>())
        {
            if (!pWidget->isVisible() || (pWidget->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            const QAccessibleInterface* pAccessible = QAccessible::queryAccessibleInterface(pWidget);
            QVERIFY2(pAccessible != nullptr && !pAccessible->text(QAccessible::Name).isEmpty(),
                     qPrintable(QLatin1String(pWidget->metaObject()->className()) + QLatin1Char(' ') + pWidget->objectName()));
            ++nSeen;
        }
        QVERIFY(nSeen > 3);
    }
}

ORM_TEST_MAIN(TestFirstMinutes)
#include "tst_firstminutes.moc"
