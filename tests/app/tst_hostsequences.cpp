#include "COrmDataset.h"
#include "COrmLog.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceModel.h"
#include "COrmSequenceOpener.h"
#include "COrmSequenceSortModel.h"
#include "CStudyWriter.h"
#include "OrmNaturalOrder.h"
#include "OrmTestMain.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTimer>

namespace
{
SSequenceFacts facts(const QString& strID, const QString& strSubject = QString(), const QString& strDate = QString(), int nSOLA = 0)
{
    SSequenceFacts sFacts;
    sFacts.m_strSequenceID = strID;
    sFacts.m_strSubject = strSubject;
    sFacts.m_strDateTime = strDate;
    sFacts.m_nSOLAResults = nSOLA;
    sFacts.m_strInfoPath = QStringLiteral("/study/%1/").arg(strID);
    sFacts.m_lstClicks.append(SClickFacts());
    return sFacts;
}

QStringList column(const QAbstractItemModel& objModel, int nColumn)
{
    QStringList lstTexts;
    for (int nRow = 0; nRow < objModel.rowCount(); ++nRow)
        lstTexts.append(objModel.index(nRow, nColumn).data().toString());
    return lstTexts;
}
} // namespace

class TestHostSequences : public QObject
{
    Q_OBJECT

private slots:
    void modelFollowsTheCollection();
    void kindAndPathStandInTheToolTip();
    void resultsAreCountedInWords_data();
    void resultsAreCountedInWords();
    void datesAreShownReadably_data();
    void datesAreShownReadably();
    void columnsAreSorted_data();
    void columnsAreSorted();
    void numbersInNamesCountAsNumbers_data();
    void numbersInNamesCountAsNumbers();
    void filterLooksAtIDAndSubject();
    void openerOpensWithoutBlockingTheWindow();
    void openerSearchesLaterPathsAfterTheFirst();
    void openerStops();
    void openerMayGoDuringASearch();
    void openerTellsProblemsOnceInTheLog();
};

void TestHostSequences::modelFollowsTheCollection()
{
    COrmSequenceCollection objCollection;
    objCollection.add(facts(QStringLiteral("before")));
    COrmSequenceModel objModel(&objCollection);
    const QAbstractItemModelTester objTester(&objModel, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(column(objModel, COrmSequenceModel::eID), QStringList{"before"});
    objCollection.add(facts(QStringLiteral("A"), QStringLiteral("Mouse"), QStringLiteral("2026-08-01T09:30:00"), 2));
    objCollection.add(facts(QStringLiteral("B")));
    QCOMPARE(column(objModel, COrmSequenceModel::eID), (QStringList{"before", "A", "B"}));
    QCOMPARE(objModel.index(1, COrmSequenceModel::eSubject).data().toString(), QStringLiteral("Mouse"));
    QCOMPARE(objModel.index(1, COrmSequenceModel::eDate).data().toString(), QStringLiteral("2026-08-01 09:30"));
    QCOMPARE(objModel.index(1, COrmSequenceModel::eResults).data().toString(), QStringLiteral("2 SOLA"));
    QVERIFY(objCollection.close(QStringLiteral("A")));
    QCOMPARE(column(objModel, COrmSequenceModel::eID), (QStringList{"before", "B"}));
    objCollection.closeAll();
    QCOMPARE(objModel.rowCount(), 0);
    QStringList lstHeads;
    for (int nColumn = 0; nColumn < objModel.columnCount(); ++nColumn)
        lstHeads.append(objModel.headerData(nColumn, Qt::Horizontal).toString());
    QCOMPARE(lstHeads, (QStringList{"Sequence", "Subject", "Date", "Saved results"}));
}

void TestHostSequences::kindAndPathStandInTheToolTip()
{
    SSequenceFacts sFacts = facts(QStringLiteral("A"));
    sFacts.m_bCT = true;
    sFacts.m_lstClicks[0].m_bLuminescent = true;
    COrmSequenceCollection objCollection;
    objCollection.add(sFacts);
    objCollection.add(facts(QStringLiteral("B")));
    const COrmSequenceModel objModel(&objCollection);
    QCOMPARE(objModel.index(0, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("/study/A/ (luminescent, CT surface)"));
    QCOMPARE(objModel.index(1, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("/study/B/ (images only)"));
    QVERIFY(!objModel.index(0, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(16).isNull());
    QVERIFY(!objModel.index(1, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(16).isNull());
    QCOMPARE(objModel.index(0, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("A, luminescent, CT surface"));
}

void TestHostSequences::resultsAreCountedInWords_data()
{
    QTest::addColumn<int>("sola");
    QTest::addColumn<int>("nova");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << 0 << "none";
    QTest::newRow("SOLA") << 2 << 0 << "2 SOLA";
    QTest::newRow("NOVA") << 0 << 1 << "1 NOVA";
    QTest::newRow("both") << 10 << 3 << "10 SOLA, 3 NOVA";
}

void TestHostSequences::resultsAreCountedInWords()
{
    QFETCH(int, sola);
    QFETCH(int, nova);
    QTEST(COrmSequenceModel::resultsText(sola, nova), "text");
}

void TestHostSequences::datesAreShownReadably_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("text");
    QTest::newRow("usual") << "2026-08-01T09:30:00"
                           << "2026-08-01 09:30";
    QTest::newRow("with a zone") << "2026-08-01T09:30:00Z"
                                 << "2026-08-01 09:30";
    QTest::newRow("a day alone") << "2026-08-01"
                                 << "2026-08-01";
    QTest::newRow("no such day") << "2026-02-31T00:00:00"
                                 << "2026-02-31T00:00:00";
    QTest::newRow("words") << "last Tuesday"
                           << "last Tuesday";
    QTest::newRow("none") << ""
                          << "";
}

void TestHostSequences::datesAreShownReadably()
{
    QFETCH(QString, stored);
    QTEST(COrmSequenceModel::dateText(stored), "text");
}

void TestHostSequences::columnsAreSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("ids");
    QTest::newRow("ID") << int(COrmSequenceModel::eID) << int(Qt::AscendingOrder) << QStringList{"M2", "m10", "M11", "Z"};
    QTest::newRow("ID, downwards") << int(COrmSequenceModel::eID) << int(Qt::DescendingOrder) << QStringList{"Z", "M11", "m10", "M2"};
    QTest::newRow("subject, then date") << int(COrmSequenceModel::eSubject) << int(Qt::AscendingOrder)
                                        << QStringList{"Z", "M11", "M2", "m10"};
    QTest::newRow("subject, downwards, dateless last")
        << int(COrmSequenceModel::eSubject) << int(Qt::DescendingOrder) << QStringList{"m10", "M2", "Z", "M11"};
    QTest::newRow("date, unreadable last") << int(COrmSequenceModel::eDate) << int(Qt::AscendingOrder)
                                           << QStringList{"Z", "M2", "m10", "M11"};
    QTest::newRow("date, downwards, unreadable last")
        << int(COrmSequenceModel::eDate) << int(Qt::DescendingOrder) << QStringList{"M2", "Z", "M11", "m10"};
    QTest::newRow("results as numbers") << int(COrmSequenceModel::eResults) << int(Qt::AscendingOrder)
                                        << QStringList{"m10", "M2", "Z", "M11"};
}

void TestHostSequences::columnsAreSorted()
{
    QFETCH(int, column);
    QFETCH(int, order);
    QFETCH(QStringList, ids);
    COrmSequenceCollection objCollection;
    objCollection.add(facts(QStringLiteral("Z"), QStringLiteral("a"), QStringLiteral("2025-01-01"), 9));
    objCollection.add(facts(QStringLiteral("m10"), QStringLiteral("c"), QStringLiteral("soon"), 0));
    objCollection.add(facts(QStringLiteral("M2"), QStringLiteral("b"), QStringLiteral("2026-01-01"), 2));
    objCollection.add(facts(QStringLiteral("M11"), QStringLiteral("a"), QString(), 10));
    COrmSequenceModel objModel(&objCollection);
    COrmSequenceSortModel objSorted;
    objSorted.setSourceModel(&objModel);
    objSorted.sort(column, Qt::SortOrder(order));
    QCOMPARE(::column(objSorted, COrmSequenceModel::eID), ids);
}

void TestHostSequences::numbersInNamesCountAsNumbers_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("number of digits") << "M2"
                                      << "M10";
    QTest::newRow("leading zeros") << "M009"
                                   << "M10";
    QTest::newRow("same number") << "M01"
                                 << "M1";
    QTest::newRow("longer than any number type") << "M99999999999999999999998"
                                                 << "M99999999999999999999999";
    QTest::newRow("case aside") << "a"
                                << "B";
    QTest::newRow("case last") << "M"
                               << "m";
    QTest::newRow("a part of the other") << "M1"
                                         << "M1a";
    QTest::newRow("nothing first") << ""
                                   << "0";
    QTest::newRow("digits before letters") << "1"
                                           << "a";
    QTest::newRow("later numbers") << "a1b2"
                                   << "a1b10";
    QTest::newRow("other digits are letters") << "9" << QString::fromUtf8("\xD9\xA3");
}

void TestHostSequences::numbersInNamesCountAsNumbers()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(OrmNaturalOrder::compare(first, second) < 0);
    QVERIFY(OrmNaturalOrder::compare(second, first) > 0);
    QCOMPARE(OrmNaturalOrder::compare(first, first), 0);
    QCOMPARE(OrmNaturalOrder::compare(second, second), 0);
}

void TestHostSequences::filterLooksAtIDAndSubject()
{
    COrmSequenceCollection objCollection;
    objCollection.add(facts(QStringLiteral("MH1"), QStringLiteral("left flank")));
    objCollection.add(facts(QStringLiteral("MH2"), QStringLiteral("liver")));
    objCollection.add(facts(QStringLiteral("L3"), QStringLiteral(".*")));
    COrmSequenceModel objModel(&objCollection);
    COrmSequenceSortModel objSorted;
    objSorted.setSourceModel(&objModel);
    objSorted.sort(0);
    objSorted.setFilterText(QStringLiteral("mh"));
    QCOMPARE(column(objSorted, 0), (QStringList{"MH1", "MH2"}));
    objSorted.setFilterText(QStringLiteral("LIV"));
    QCOMPARE(column(objSorted, 0), QStringList{"MH2"});
    objSorted.setFilterText(QStringLiteral(".*"));
    QCOMPARE(column(objSorted, 0), QStringList{"L3"}); // no pattern, plain text
    objSorted.setFilterText(QString());
    QCOMPARE(objSorted.rowCount(), 3);
}

void TestHostSequences::openerOpensWithoutBlockingTheWindow()
{
    CStudyWriter objStudy;
    const int nSequences = 300; // more than wait at once between the search and the window
    for (int nSequence = 0; nSequence < nSequences; ++nSequence)
        objStudy.addSequence(QStringLiteral("S%1").arg(nSequence));
    COrmSequenceCollection objCollection;
    COrmSequenceOpener objOpener(&objCollection);
    QList<COrmSequenceOpener::SSummary> lstDone;
    connect(&objOpener, &COrmSequenceOpener::finished, this, [&lstDone](const COrmSequenceOpener::SSummary& s) { lstDone.append(s); });
    int nTurns = 0; // of the event loop while the search went on
    QTimer objTimer;
    connect(&objTimer, &QTimer::timeout, this, [&nTurns] { ++nTurns; });
    objTimer.start(0);
    objOpener.open({objStudy.folder()});
    QVERIFY(objOpener.isBusy());
    QVERIFY(objCollection.sequences().isEmpty()); // nothing happens inside the call
    QTRY_COMPARE_WITH_TIMEOUT(lstDone.size(), 1, 60000);
    QVERIFY(!objOpener.isBusy());
    QCOMPARE(objCollection.sequences().size(), nSequences);
    QCOMPARE(lstDone.first().m_nOpened, nSequences);
    QVERIFY(lstDone.first().m_lstProblems.isEmpty());
    QVERIFY(!lstDone.first().m_bCancelled);
    QVERIFY2(nTurns > 5, qPrintable(QString::number(nTurns)));
}

void TestHostSequences::openerSearchesLaterPathsAfterTheFirst()
{
    CStudyWriter objFirst;
    CStudyWriter objSecond;
    objFirst.addSequence(QStringLiteral("B"));
    objSecond.addSequence(QStringLiteral("A"));
    COrmSequenceCollection objCollection;
    COrmSequenceOpener objOpener(&objCollection);
    QSignalSpy objStarted(&objOpener, &COrmSequenceOpener::started);
    int nFinished = 0;
    connect(&objOpener, &COrmSequenceOpener::finished, this, [&nFinished] { ++nFinished; });
    objOpener.open({objFirst.folder()});
    objOpener.open({objSecond.folder()});
    QTRY_COMPARE(objCollection.sequences().size(), 2);
    QTRY_COMPARE(nFinished, 1);
    QCOMPARE(objStarted.count(), 1);
    QCOMPARE(objCollection.sequences().first()->getSequenceID(), QStringLiteral("B"));
    // Nothing to search is no search.
    objOpener.open({});
    QVERIFY(!objOpener.isBusy());
}

void TestHostSequences::openerStops()
{
    CStudyWriter objStudy;
    for (int nSequence = 0; nSequence < 100; ++nSequence)
        objStudy.addSequence(QStringLiteral("S%1").arg(nSequence));
    COrmSequenceCollection objCollection;
    COrmSequenceOpener objOpener(&objCollection);
    QList<COrmSequenceOpener::SSummary> lstDone;
    connect(&objOpener, &COrmSequenceOpener::finished, this, [&lstDone](const COrmSequenceOpener::SSummary& s) { lstDone.append(s); });
    connect(&objCollection, &COrmSequenceCollection::added, &objOpener,
            [&]
            {
                if (objCollection.sequences().size() == 3)
                    objOpener.cancel(); // by somebody who is told of a sequence
            });
    objOpener.open({objStudy.folder(), objStudy.folder()});
    QTRY_COMPARE(lstDone.size(), 1);
    QVERIFY(lstDone.first().m_bCancelled);
    QCOMPARE(objCollection.sequences().size(), 3); // what was opened stays open
    objOpener.cancel();
    QCOMPARE(lstDone.size(), 1);
    // The next search is not touched by the one that was stopped.
    objCollection.disconnect(&objOpener);
    objOpener.open({objStudy.folder()});
    QTRY_COMPARE_WITH_TIMEOUT(lstDone.size(), 2, 60000);
    QVERIFY(!lstDone.last().m_bCancelled);
    QCOMPARE(objCollection.sequences().size(), 100);
}

void TestHostSequences::openerMayGoDuringASearch()
{
    CStudyWriter objStudy;
    for (int nSequence = 0; nSequence < 50; ++nSequence)
        objStudy.addSequence(QStringLiteral("S%1").arg(nSequence));
    COrmSequenceCollection objCollection;
    for (int nRound = 0; nRound < 50; ++nRound)
    {
        COrmSequenceOpener objOpener(&objCollection);
        objOpener.open({objStudy.folder()});
        if (nRound % 2 == 1)
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    QVERIFY(objCollection.sequences().size() <= 50);
}

void TestHostSequences::openerTellsProblemsOnceInTheLog()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("A"));
    CStudyWriter::writeFile(objStudy.folder() + QStringLiteral("/twin/SequenceInfo.txt"), "Sequence=A\n[Click Numbers]\nCount=1\n1=c\n");
    CStudyWriter::writeFile(objStudy.folder() + QStringLiteral("/twin/c/ClickInfo.txt"), "[photographic image]\n");
    COrmSequenceCollection objCollection;
    COrmSequenceOpener objOpener(&objCollection);
    QStringList lstProblems;
    connect(&objOpener, &COrmSequenceOpener::finished, this,
            [&lstProblems](const COrmSequenceOpener::SSummary& s) { lstProblems = s.m_lstProblems; });
    QStringList lstLogged;
    const int nSink = getLogObject()->addSink(
        [&lstLogged](const SLogEntry& sEntry)
        {
            if (sEntry.nLevel == 2)
                lstLogged.append(sEntry.strMessage);
        });
    objOpener.open({objStudy.folder(), objStudy.folder() + QStringLiteral("/none")});
    QTRY_COMPARE(lstProblems.size(), 2);
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstLogged, lstProblems);
    QVERIFY(lstProblems.first().contains(QStringLiteral("Sequence A is open")));
    QVERIFY(lstProblems.last().endsWith(QStringLiteral("/none does not exist.")));
}

ORM_TEST_MAIN(TestHostSequences)
#include "tst_hostsequences.moc"
