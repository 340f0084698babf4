#include "COrmSequenceCollection.h"
#include "COrmSequenceList.h"
#include "COrmSequenceModel.h"
#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTreeView>

#include <memory>

/// The list of open sequences by itself: what it shows, how it is filtered, and how the keyboard goes through it.
class TestSequenceList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void sequencesStandBySubjectAndDate();
    void everyWordOfTheFilterMustOccur_data();
    void everyWordOfTheFilterMustOccur();
    void countTellsShownAndAll();
    void escapeShowsAllAndThenLeaves();
    void keysLeadFromTheFilterToTheTable_data();
    void keysLeadFromTheFilterToTheTable();
    void nothingLeftSaysSo();
    void selectionFollowsTheFilter();
    void firstSequenceWithResultsIsSelected();
    void kindsHavePicturesOfTheirOwn();
    void columnsFitTheWidth();
    void ownWidthsStay();
    void strangeNamesAreShownPlainly();
    void manySequencesAreFiltered();

private:
    void add(const QString& strID, const QString& strSubject = QString(), const QString& strDate = QString(), int nSOLA = 0, int nNOVA = 0,
             bool bFluorescent = false);
    QStringList shown() const;
    QTreeView* tree() const { return TestWidgets::get<QTreeView>(m_pList.get(), "sequenceList"); }
    QLineEdit* filter() const { return TestWidgets::get<QLineEdit>(m_pList.get(), "sequenceFilter"); }
    QLabel* count() const { return TestWidgets::get<QLabel>(m_pList.get(), "sequenceCount"); }
    /// Shows the list in an active window.
    void show();

    std::unique_ptr<COrmSequenceCollection> m_pCollection;
    std::unique_ptr<COrmSequenceModel> m_pModel;
    std::unique_ptr<COrmSequenceList> m_pList;
};

void TestSequenceList::init()
{
    m_pCollection = std::make_unique<COrmSequenceCollection>();
    m_pModel = std::make_unique<COrmSequenceModel>(m_pCollection.get());
    m_pList = std::make_unique<COrmSequenceList>(m_pModel.get());
}

void TestSequenceList::cleanup()
{
    m_pList.reset();
    m_pModel.reset();
    m_pCollection.reset();
}

void TestSequenceList::add(const QString& strID, const QString& strSubject, const QString& strDate, int nSOLA, int nNOVA, bool bFluorescent)
{
    SSequenceFacts sFacts;
    sFacts.m_strSequenceID = strID;
    sFacts.m_strInfoPath = QStringLiteral("/study/") + QString::number(m_pCollection->sequences().size()) + QLatin1Char('/');
    sFacts.m_strSequenceFile = sFacts.m_strInfoPath + QStringLiteral("SequenceInfo.txt");
    sFacts.m_strSubject = strSubject;
    sFacts.m_strDateTime = strDate;
    sFacts.m_nSOLAResults = nSOLA;
    sFacts.m_nNOVAResults = nNOVA;
    SClickFacts sClick;
    sClick.m_strClickNumber = QStringLiteral("1");
    sClick.m_bLuminescent = true;
    sClick.m_strImageSubtype = bFluorescent ? QStringLiteral("fluorescent") : QStringLiteral("luminescent");
    sFacts.m_lstClicks.append(sClick);
    QVERIFY(m_pCollection->add(sFacts) != nullptr);
}

QStringList TestSequenceList::shown() const
{
    QStringList lstIDs;
    for (int nRow = 0; nRow < tree()->model()->rowCount(); ++nRow)
        lstIDs.append(tree()->model()->index(nRow, COrmSequenceModel::eID).data().toString());
    return lstIDs;
}

void TestSequenceList::show()
{
    m_pList->resize(700, 400);
    m_pList->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pList.get()));
    QApplication::setActiveWindow(m_pList.get());
    QTRY_COMPARE(QApplication::activeWindow(), m_pList.get());
}

void TestSequenceList::sequencesStandBySubjectAndDate()
{
    add(QStringLiteral("a"), QStringLiteral("Mouse 10"), QStringLiteral("2026-01-01"));
    add(QStringLiteral("b"), QStringLiteral("Mouse 9"), QStringLiteral("2026-03-01"));
    add(QStringLiteral("c"), QStringLiteral("Mouse 9"), QStringLiteral("2026-02-01"));
    add(QStringLiteral("d"), QStringLiteral("Mouse 9"), QStringLiteral("soon"));
    add(QStringLiteral("e"), QString(), QStringLiteral("2026-05-01"));
    QCOMPARE(shown(), (QStringList{"e", "c", "b", "d", "a"}));
    QCOMPARE(tree()->header()->sortIndicatorSection(), int(COrmSequenceModel::eSubject));
}

void TestSequenceList::everyWordOfTheFilterMustOccur_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("ids");
    QTest::newRow("none") << "" << QStringList{"PM1_F", "PM1_L", "PM2_L"};
    QTest::newRow("blanks") << "  \t " << QStringList{"PM1_F", "PM1_L", "PM2_L"};
    QTest::newRow("ID") << "pm2" << QStringList{"PM2_L"};
    QTest::newRow("subject") << "GREY" << QStringList{"PM1_F", "PM1_L"};
    QTest::newRow("date") << "2026-03-05" << QStringList{"PM1_F", "PM1_L"};
    QTest::newRow("hour") << "09:30" << QStringList{"PM1_F", "PM1_L"};
    QTest::newRow("kind") << "fluorescent" << QStringList{"PM1_F"};
    QTest::newRow("kinds of results") << "sola" << QStringList{"PM1_L"};
    QTest::newRow("two words") << "grey lumin" << QStringList{"PM1_L"};
    QTest::newRow("the other way round") << "  lumin   grey " << QStringList{"PM1_L"};
    QTest::newRow("one of two") << "grey PM2" << QStringList();
    QTest::newRow("words across two columns") << "PM1_LGrey" << QStringList();
    QTest::newRow("not an expression") << ".*" << QStringList();
}

void TestSequenceList::everyWordOfTheFilterMustOccur()
{
    QFETCH(QString, words);
    add(QStringLiteral("PM1_L"), QStringLiteral("Grey mouse"), QStringLiteral("2026-03-05T09:30:00"), 2);
    add(QStringLiteral("PM1_F"), QStringLiteral("Grey mouse"), QStringLiteral("2026-03-05T09:30:00"), 0, 1, true);
    add(QStringLiteral("PM2_L"), QStringLiteral("White mouse"), QStringLiteral("2026-04-05T10:00:00"));
    filter()->setText(words);
    QTEST(shown(), "ids");
}

void TestSequenceList::countTellsShownAndAll()
{
    add(QStringLiteral("A"));
    QCOMPARE(count()->text(), QStringLiteral("1 sequence"));
    add(QStringLiteral("B"));
    QCOMPARE(count()->text(), QStringLiteral("2 sequences"));
    filter()->setText(QStringLiteral("a"));
    QCOMPARE(count()->text(), QStringLiteral("1 of 2"));
    QCOMPARE(count()->accessibleName(), QStringLiteral("1 of 2 sequences are shown"));
    // What comes and goes meanwhile counts.
    add(QStringLiteral("AA"));
    QCOMPARE(count()->text(), QStringLiteral("2 of 3"));
    m_pCollection->close(QStringLiteral("B"));
    QCOMPARE(count()->text(), QStringLiteral("2 of 2"));
    filter()->setText(QStringLiteral(" "));
    QCOMPARE(count()->text(), QStringLiteral("2 sequences"));
}

void TestSequenceList::escapeShowsAllAndThenLeaves()
{
    add(QStringLiteral("A"));
    add(QStringLiteral("B"));
    show();
    m_pList->find();
    QVERIFY(filter()->hasFocus());
    QTest::keyClicks(filter(), QStringLiteral("a"));
    QCOMPARE(shown(), QStringList{"A"});
    QTest::keyClick(filter(), Qt::Key_Escape);
    QCOMPARE(filter()->text(), QString());
    QCOMPARE(shown(), (QStringList{"A", "B"}));
    QVERIFY(filter()->hasFocus());
    QTest::keyClick(filter(), Qt::Key_Escape);
    QVERIFY(tree()->hasFocus());
    // Coming back selects what was typed, so that new words replace it.
    filter()->setText(QStringLiteral("b"));
    m_pList->find();
    QCOMPARE(filter()->selectedText(), QStringLiteral("b"));
}

void TestSequenceList::keysLeadFromTheFilterToTheTable_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("down") << int(Qt::Key_Down);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void TestSequenceList::keysLeadFromTheFilterToTheTable()
{
    QFETCH(int, key);
    add(QStringLiteral("A"));
    show();
    m_pList->find();
    QTest::keyClick(filter(), Qt::Key(key));
    QVERIFY(tree()->hasFocus());
    QCOMPARE(filter()->text(), QString());
}

void TestSequenceList::nothingLeftSaysSo()
{
    add(QStringLiteral("A"));
    show();
    filter()->setFocus();
    filter()->setText(QString::fromUtf8("no such \xE2\x80\xAEmouse"));
    const auto* pNothing = TestWidgets::get<QLabel>(m_pList.get(), "nothingMatches");
    QVERIFY(pNothing->isVisible());
    QVERIFY(!tree()->isVisible());
    QCOMPARE(pNothing->text(), QStringLiteral("No sequence has every word of \"no such \\u202Emouse\"."));
    QCOMPARE(pNothing->textFormat(), Qt::PlainText);
    QVERIFY(filter()->hasFocus()); // typing goes on
    QTest::keyClick(filter(), Qt::Key_Down);
    QVERIFY(filter()->hasFocus());
    TestWidgets::click(TestWidgets::get<QPushButton>(m_pList.get(), "showAllButton"));
    QVERIFY(tree()->isVisible());
    QCOMPARE(shown(), QStringList{"A"});
    QVERIFY(tree()->hasFocus());
    // With no sequence at all the filter is not to blame.
    filter()->setText(QStringLiteral("x"));
    m_pCollection->closeAll();
    QVERIFY(tree()->isVisible());
}

void TestSequenceList::selectionFollowsTheFilter()
{
    add(QStringLiteral("A"), QString(), QString(), 1);
    add(QStringLiteral("B"), QString(), QString(), 1);
    add(QStringLiteral("BB"), QString(), QString(), 1);
    m_pList->selectFirst();
    QCOMPARE(m_pList->currentID(), QStringLiteral("A"));
    filter()->setText(QStringLiteral("b"));
    QCOMPARE(m_pList->selectedIDs(), QStringList{"B"});
    filter()->setText(QStringLiteral("bb"));
    QCOMPARE(m_pList->selectedIDs(), QStringList{"BB"});
    // What stays in sight stays selected.
    filter()->clear();
    QCOMPARE(m_pList->selectedIDs(), QStringList{"BB"});
    filter()->setText(QStringLiteral("zz"));
    QCOMPARE(m_pList->currentID(), QString());
}

void TestSequenceList::firstSequenceWithResultsIsSelected()
{
    m_pList->selectFirst(); // with nothing to select
    QCOMPARE(m_pList->currentID(), QString());
    add(QStringLiteral("A"));
    add(QStringLiteral("B"));
    m_pList->selectFirst();
    QCOMPARE(m_pList->currentID(), QStringLiteral("A"));
    tree()->clearSelection();
    add(QStringLiteral("C"), QString(), QString(), 0, 3);
    m_pList->selectFirst();
    QCOMPARE(m_pList->currentID(), QStringLiteral("C"));
    add(QStringLiteral("AA"), QString(), QString(), 1);
    m_pList->selectFirst(); // there is a selection already
    QCOMPARE(m_pList->currentID(), QStringLiteral("C"));
}

void TestSequenceList::kindsHavePicturesOfTheirOwn()
{
    add(QStringLiteral("A"));
    add(QStringLiteral("B"), QString(), QString(), 0, 0, true);
    SSequenceFacts sFacts;
    sFacts.m_strSequenceID = QStringLiteral("C");
    sFacts.m_strInfoPath = QStringLiteral("/study/C/");
    sFacts.m_lstClicks.resize(1);
    QVERIFY(m_pCollection->add(sFacts) != nullptr);
    QList<QImage> lstPictures;
    for (int nRow = 0; nRow < 3; ++nRow)
    {
        lstPictures.append(tree()->model()->index(nRow, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage());
        QVERIFY(!lstPictures.last().isNull());
    }
    QVERIFY(lstPictures.at(0) != lstPictures.at(1));
    QVERIFY(lstPictures.at(0) != lstPictures.at(2));
    QVERIFY(lstPictures.at(1) != lstPictures.at(2));
}

void TestSequenceList::columnsFitTheWidth()
{
    add(QStringLiteral("A"), QStringLiteral("Mouse"), QStringLiteral("2026-03-05T09:30:00"), 10, 12);
    show();
    for (const int nWidth : {1200, 640, 900})
    {
        m_pList->resize(nWidth, 300);
        QTRY_COMPARE(tree()->header()->length(), tree()->viewport()->width()); // no more, no less
        const QString strDate = tree()->model()->index(0, COrmSequenceModel::eDate).data().toString();
        QVERIFY(tree()->columnWidth(COrmSequenceModel::eDate) > tree()->fontMetrics().horizontalAdvance(strDate));
        QVERIFY(tree()->columnWidth(COrmSequenceModel::eID) > tree()->columnWidth(COrmSequenceModel::eSubject));
    }
    QVERIFY(m_pList->columnState().isEmpty());
}

void TestSequenceList::ownWidthsStay()
{
    show();
    tree()->setColumnWidth(COrmSequenceModel::eID, 150);
    m_pList->resize(900, 300);
    QTRY_COMPARE(m_pList->width(), 900);
    QCOMPARE(tree()->columnWidth(COrmSequenceModel::eID), 150);
    const QByteArray arrState = m_pList->columnState();
    QVERIFY(!arrState.isEmpty());
    COrmSequenceList objNext(m_pModel.get());
    objNext.restoreColumnState(arrState);
    objNext.resize(1000, 300);
    objNext.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objNext));
    QCOMPARE(TestWidgets::get<QTreeView>(&objNext, "sequenceList")->columnWidth(COrmSequenceModel::eID), 150);
    // Damaged ones are no hindrance.
    COrmSequenceList objDamaged(m_pModel.get());
    objDamaged.restoreColumnState(QByteArray("\0\1\2damaged", 10));
    objDamaged.resize(1000, 300);
    objDamaged.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objDamaged));
    const auto* pDamagedTree = TestWidgets::get<QTreeView>(&objDamaged, "sequenceList");
    QTRY_COMPARE(pDamagedTree->header()->length(), pDamagedTree->viewport()->width());
}

void TestSequenceList::strangeNamesAreShownPlainly()
{
    const QString strLong(65000, QLatin1Char('x'));
    const QString strEvil = QString::fromUtf8("<b>bold</b>\n\xE2\x80\xAE\xC2\xADtxt");
    add(strLong, strLong, strLong);
    add(strEvil, strEvil, strEvil);
    show();
    QVERIFY(!m_pList->grab().isNull());
    const auto* pDelegate = qobject_cast<QStyledItemDelegate*>(tree()->itemDelegate());
    QVERIFY(pDelegate != nullptr);
    QCOMPARE(pDelegate->displayText(strEvil, QLocale()), QStringLiteral("<b>bold</b>\\n\\u202E\\u00ADtxt"));
    QVERIFY(pDelegate->displayText(strLong, QLocale()).size() <= 1000);
    QVERIFY(shown().contains(strEvil)); // the key itself is untouched
    filter()->setText(QStringLiteral("bold"));
    QCOMPARE(shown(), QStringList{strEvil});
    QCOMPARE(filter()->maxLength(), 200);
}

void TestSequenceList::manySequencesAreFiltered()
{
    for (int nSequence = 0; nSequence < 500; ++nSequence)
        add(QStringLiteral("S%1").arg(nSequence), QStringLiteral("Mouse %1").arg(nSequence % 7));
    QCOMPARE(count()->text(), QStringLiteral("500 sequences"));
    filter()->setText(QStringLiteral("s49 \"mouse\"")); // quotes are characters like others
    QCOMPARE(shown(), QStringList());
    filter()->setText(QStringLiteral("s49 mouse"));
    QCOMPARE(shown().size(), 11);
    filter()->clear();
    QCOMPARE(shown().first(), QStringLiteral("S0"));
    QCOMPARE(shown().last(), QStringLiteral("S496")); // the last of subject 6
}

ORM_TEST_MAIN(TestSequenceList)
#include "tst_sequencelist.moc"
