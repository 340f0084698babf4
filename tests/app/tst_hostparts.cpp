#include "COrmDataset.h"
#include "COrmHostSettings.h"
#include "COrmImageOverlayWindow.h"
#include "COrmLog.h"
#include "COrmLogPanel.h"
#include "COrmPictureWidget.h"
#include "COrmPreference.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequenceModel.h"
#include "COrmSequenceOpener.h"
#include "COrmSequenceSortModel.h"
#include "CStudyWriter.h"
#include "OrmCommandLine.h"
#include "OrmNaturalOrder.h"
#include "OrmOverlay.h"
#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QAbstractItemModelTester>
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/stat.h>
#include <thread>

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

QImage greyPicture(int nWidth, int nHeight, int nLeft, int nRight)
{
    QImage img(nWidth, nHeight, QImage::Format_Grayscale8);
    for (int y = 0; y < nHeight; ++y)
    {
        for (int x = 0; x < nWidth; ++x)
            img.scanLine(y)[x] = uchar(x < nWidth / 2 ? nLeft : nRight);
    }
    return img;
}

QByteArray png(const QImage& img)
{
    QByteArray arr;
    QBuffer objBuffer(&arr);
    objBuffer.open(QIODevice::WriteOnly);
    img.save(&objBuffer, "PNG");
    return arr;
}
} // namespace

class TestHostParts : public QObject
{
    Q_OBJECT

private slots:
    void init() { COrmPreference::setStore(QString()); }
    void commandLineIsUnderstood_data();
    void commandLineIsUnderstood();
    void textOptionsNeedNoDisplay_data();
    void textOptionsNeedNoDisplay();
    void usageNamesEveryOption();
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
    void logLinesArePlainAndSayTheirWeight_data();
    void logLinesArePlainAndSayTheirWeight();
    void logPanelTakesEntriesFromAnyThread();
    void logPanelKeepsABoundedNumberOfLines();
    void overlayIsMadeOfBothPictures();
    void unreadablePicturesAreTold_data();
    void unreadablePicturesAreTold();
    void overlayWindowShowsTheImagesOfItsSequence();
    void settingsOutliveTheProcess();
    void withoutAStoreNothingIsWritten();
};

void TestHostParts::commandLineIsUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<bool>("noSettings");
    QTest::addColumn<bool>("wrong");
    QTest::newRow("nothing") << QStringList() << QStringList() << QString() << false << false;
    QTest::newRow("folders") << QStringList{"a", "b c"} << QStringList{"a", "b c"} << QString() << false << false;
    QTest::newRow("tool") << QStringList{"--tool", "Longitudinal Study", "a"} << QStringList{"a"} << "Longitudinal Study" << false << false;
    QTest::newRow("tool with =") << QStringList{"a", "--tool=X"} << QStringList{"a"} << "X" << false << false;
    QTest::newRow("no settings") << QStringList{"--no-settings", "a"} << QStringList{"a"} << QString() << true << false;
    QTest::newRow("folder like an option") << QStringList{"--", "--tool"} << QStringList{"--tool"} << QString() << false << false;
    QTest::newRow("tool without a name") << QStringList{"--tool"} << QStringList() << QString() << false << true;
    QTest::newRow("tool with an empty name") << QStringList{"--tool", " "} << QStringList() << " " << false << true;
    QTest::newRow("two tools") << QStringList{"--tool", "a", "--tool", "b"} << QStringList() << "b" << false << true;
    QTest::newRow("unknown option") << QStringList{"--bogus"} << QStringList() << QString() << false << true;
}

void TestHostParts::commandLineIsUnderstood()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, folders);
    QFETCH(QString, tool);
    QFETCH(bool, noSettings);
    QFETCH(bool, wrong);
    const SCommandLine sLine = OrmCommandLine::parse(QStringList{"ormelle"} + arguments);
    QCOMPARE(sLine.m_lstFolders, folders);
    QCOMPARE(sLine.m_strTool, tool);
    QCOMPARE(sLine.m_bNoSettings, noSettings);
    QCOMPARE(!sLine.m_strError.isEmpty(), wrong);
}

void TestHostParts::textOptionsNeedNoDisplay_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("textOnly");
    QTest::newRow("none") << QStringList() << false;
    QTest::newRow("help") << QStringList{"--help"} << true;
    QTest::newRow("short help") << QStringList{"a", "-h"} << true;
    QTest::newRow("version") << QStringList{"--version"} << true;
    QTest::newRow("short version") << QStringList{"-v"} << true;
    QTest::newRow("a folder of that name") << QStringList{"--", "--help"} << false;
    QTest::newRow("a part of it") << QStringList{"--helpful"} << false;
}

void TestHostParts::textOptionsNeedNoDisplay()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, textOnly);
    QCOMPARE(OrmCommandLine::wantsTextOnly(QStringList{"--help"} + arguments), textOnly);
}

void TestHostParts::usageNamesEveryOption()
{
    for (const char* pOption : {"--tool NAME", "--no-settings", "--help", "--version", "FOLDER"})
        QVERIFY2(OrmCommandLine::usage().contains(QLatin1String(pOption)), pOption);
    QVERIFY(OrmCommandLine::version().startsWith(QStringLiteral("Ormelle ")));
}

void TestHostParts::modelFollowsTheCollection()
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

void TestHostParts::kindAndPathStandInTheToolTip()
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
    QVERIFY(objModel.index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(objModel.index(0, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("A, luminescent, CT surface"));
}

void TestHostParts::resultsAreCountedInWords_data()
{
    QTest::addColumn<int>("sola");
    QTest::addColumn<int>("nova");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << 0 << "none";
    QTest::newRow("SOLA") << 2 << 0 << "2 SOLA";
    QTest::newRow("NOVA") << 0 << 1 << "1 NOVA";
    QTest::newRow("both") << 10 << 3 << "10 SOLA, 3 NOVA";
}

void TestHostParts::resultsAreCountedInWords()
{
    QFETCH(int, sola);
    QFETCH(int, nova);
    QTEST(COrmSequenceModel::resultsText(sola, nova), "text");
}

void TestHostParts::datesAreShownReadably_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("text");
    QTest::newRow("usual") << "2026-08-01T09:30:00"
                           << "2026-08-01 09:30";
    QTest::newRow("with a zone") << "2026-08-01T09:30:00Z"
                                 << "2026-08-01 09:30";
    QTest::newRow("a day alone") << "2026-08-01"
                                 << "2026-08-01 00:00";
    QTest::newRow("no such day") << "2026-02-31T00:00:00"
                                 << "2026-02-31T00:00:00";
    QTest::newRow("words") << "last Tuesday"
                           << "last Tuesday";
    QTest::newRow("none") << ""
                          << "";
}

void TestHostParts::datesAreShownReadably()
{
    QFETCH(QString, stored);
    QTEST(COrmSequenceModel::dateText(stored), "text");
}

void TestHostParts::columnsAreSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("ids");
    QTest::newRow("ID") << int(COrmSequenceModel::eID) << int(Qt::AscendingOrder) << QStringList{"M2", "m10", "M11", "Z"};
    QTest::newRow("ID, downwards") << int(COrmSequenceModel::eID) << int(Qt::DescendingOrder) << QStringList{"Z", "M11", "m10", "M2"};
    QTest::newRow("subject, then ID") << int(COrmSequenceModel::eSubject) << int(Qt::AscendingOrder)
                                      << QStringList{"M11", "Z", "M2", "m10"};
    QTest::newRow("date, unreadable last") << int(COrmSequenceModel::eDate) << int(Qt::AscendingOrder)
                                           << QStringList{"Z", "M2", "m10", "M11"};
    QTest::newRow("date, downwards, unreadable last")
        << int(COrmSequenceModel::eDate) << int(Qt::DescendingOrder) << QStringList{"M2", "Z", "M11", "m10"};
    QTest::newRow("results as numbers") << int(COrmSequenceModel::eResults) << int(Qt::AscendingOrder)
                                        << QStringList{"m10", "M2", "Z", "M11"};
}

void TestHostParts::columnsAreSorted()
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

void TestHostParts::numbersInNamesCountAsNumbers_data()
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

void TestHostParts::numbersInNamesCountAsNumbers()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(OrmNaturalOrder::compare(first, second) < 0);
    QVERIFY(OrmNaturalOrder::compare(second, first) > 0);
    QCOMPARE(OrmNaturalOrder::compare(first, first), 0);
    QCOMPARE(OrmNaturalOrder::compare(second, second), 0);
}

void TestHostParts::filterLooksAtIDAndSubject()
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

void TestHostParts::openerOpensWithoutBlockingTheWindow()
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

void TestHostParts::openerSearchesLaterPathsAfterTheFirst()
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

void TestHostParts::openerStops()
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

void TestHostParts::openerMayGoDuringASearch()
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

void TestHostParts::openerTellsProblemsOnceInTheLog()
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

void TestHostParts::logLinesArePlainAndSayTheirWeight_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("line");
    QTest::newRow("progress") << "Opened a." << 1 << "09:30:05  Opened a.";
    QTest::newRow("refusal") << "No." << 2 << "09:30:05  Note: No.";
    QTest::newRow("failure") << "Gone." << 3 << "09:30:05  Error: Gone.";
    QTest::newRow("markup stays markup") << "<b>x</b>" << 1 << "09:30:05  <b>x</b>";
    QTest::newRow("one entry, one line") << "a\nb" << 1 << "09:30:05  a\\nb";
    QTest::newRow("reading direction") << QString::fromUtf8("a\xE2\x80\xAE"
                                                            "b")
                                       << 1 << "09:30:05  a\\u202Eb";
}

void TestHostParts::logLinesArePlainAndSayTheirWeight()
{
    QFETCH(QString, message);
    QFETCH(int, level);
    SLogEntry sEntry;
    sEntry.strMessage = message;
    sEntry.nLevel = level;
    sEntry.dtWritten = QDateTime(QDate(2026, 8, 1), QTime(9, 30, 5));
    QTEST(COrmLogPanel::lineFor(sEntry), "line");
}

void TestHostParts::logPanelTakesEntriesFromAnyThread()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    ORM_LOG(2, QStringLiteral("from the window"));
    std::thread(
        []
        {
            for (int nEntry = 0; nEntry < 100; ++nEntry)
                ORM_LOG(1, QStringLiteral("from elsewhere %1").arg(nEntry));
        })
        .join();
    QTRY_COMPARE(pText->blockCount(), 101);
    const QStringList lstLines = pText->toPlainText().split(QLatin1Char('\n'));
    QVERIFY(lstLines.first().endsWith(QStringLiteral("Note: from the window")));
    QVERIFY(lstLines.last().endsWith(QStringLiteral("from elsewhere 99")));
}

void TestHostParts::logPanelKeepsABoundedNumberOfLines()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    const int nEntries = COrmLogPanel::s_nMaxLines + 500;
    for (int nEntry = 0; nEntry < nEntries; ++nEntry)
        ORM_LOG(1, QString::number(nEntry));
    QTRY_COMPARE(pText->blockCount(), int(COrmLogPanel::s_nMaxLines));
    QVERIFY(pText->toPlainText().endsWith(QStringLiteral("  %1").arg(nEntries - 1)));
}

void TestHostParts::overlayIsMadeOfBothPictures()
{
    const QImage imgPhotograph = greyPicture(40, 20, 100, 100);
    const QImage imgLuminescent = greyPicture(20, 10, 0, 200);
    QVERIFY(OrmOverlay::compose(QImage(), QImage(), 1.0).isNull());
    const QImage imgAlone = OrmOverlay::compose(imgPhotograph, QImage(), 1.0);
    QCOMPARE(imgAlone.size(), imgPhotograph.size());
    QCOMPARE(imgAlone.pixel(30, 10), qRgb(100, 100, 100));

    const QImage imgBoth = OrmOverlay::compose(imgPhotograph, imgLuminescent, 1.0);
    QCOMPARE(imgBoth.size(), imgPhotograph.size());
    QCOMPARE(imgBoth.pixel(5, 10), qRgb(100, 100, 100)); // nothing glows there
    QVERIFY(qRed(imgBoth.pixel(35, 10)) != qGreen(imgBoth.pixel(35, 10)));
    QCOMPARE(OrmOverlay::compose(imgPhotograph, imgLuminescent, 0.0).pixel(35, 10), qRgb(100, 100, 100));
    QCOMPARE(OrmOverlay::compose(imgPhotograph, greyPicture(20, 10, 7, 7), 1.0).pixel(35, 10), qRgb(100, 100, 100));
    QCOMPARE(OrmOverlay::compose(QImage(), imgLuminescent, 1.0).pixel(2, 5), qRgb(0, 0, 0));
}

void TestHostParts::unreadablePicturesAreTold_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* pKind : {"missing", "empty", "text", "cut", "folder", "fifo"})
        QTest::newRow(pKind) << QString::fromLatin1(pKind);
}

void TestHostParts::unreadablePicturesAreTold()
{
    QFETCH(QString, kind);
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("p.png"));
    const QByteArray arrGood = png(greyPicture(64, 64, 0, 255));
    if (kind == QLatin1String("empty"))
        CStudyWriter::writeFile(strFile, QByteArray());
    else if (kind == QLatin1String("text"))
        CStudyWriter::writeFile(strFile, "no picture");
    else if (kind == QLatin1String("cut"))
        CStudyWriter::writeFile(strFile, arrGood.left(20));
    else if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(strFile));
    else if (kind == QLatin1String("fifo"))
        QCOMPARE(mkfifo(QFile::encodeName(strFile).constData(), 0600), 0);
    QString strReason;
    QVERIFY(OrmOverlay::load(strFile, &strReason).isNull());
    QVERIFY2(strReason.contains(strFile), qPrintable(strReason));
    CStudyWriter::writeFile(objFolder.filePath(QStringLiteral("good.png")), arrGood);
    QCOMPARE(OrmOverlay::load(objFolder.filePath(QStringLiteral("good.png")), &strReason).size(), QSize(64, 64));
}

void TestHostParts::overlayWindowShowsTheImagesOfItsSequence()
{
    CStudyWriter objStudy;
    const QString strFolder = objStudy.folder() + QStringLiteral("/s/");
    CStudyWriter::writeFile(strFolder + QStringLiteral("SequenceInfo.txt"), "Sequence=S\n[Click Numbers]\nCount=3\n1=c1\n2=c2\n3=c3\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c1/ClickInfo.txt"),
                            "[photographic image]\nImage File=p.png\n[luminescent image]\nImage File=l.png\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c1/p.png"), png(greyPicture(40, 40, 90, 90)));
    CStudyWriter::writeFile(strFolder + QStringLiteral("c1/l.png"), png(greyPicture(40, 40, 0, 255)));
    CStudyWriter::writeFile(strFolder + QStringLiteral("c2/ClickInfo.txt"), "[photographic image]\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c3/ClickInfo.txt"), "[photographic image]\nImage File=bad.png\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c3/bad.png"), "bad");
    COrmSequenceCollection objCollection;
    QCOMPARE(objCollection.open({objStudy.folder()}).m_nSequences, 1);

    COrmImageOverlayWindow objWindow;
    const auto* pPicture = TestWidgets::get<COrmPictureWidget>(&objWindow, "overlayPicture");
    auto* pImage = TestWidgets::get<QComboBox>(&objWindow, "overlayImage");
    auto* pOpacity = TestWidgets::get<QSlider>(&objWindow, "overlayOpacity");
    objWindow.setSequence(nullptr);
    QVERIFY(pPicture->picture().isNull());
    QVERIFY(pPicture->text().contains(QStringLiteral("Select a sequence")));
    QVERIFY(!pImage->isEnabled());

    objWindow.setSequence(objCollection.sequences().first());
    QCOMPARE(pImage->count(), 3);
    QCOMPARE(pPicture->picture().size(), QSize(40, 40));
    QVERIFY(pOpacity->isEnabled());
    const QRgb nMixed = pPicture->picture().pixel(30, 20);
    pOpacity->setValue(0);
    QCOMPARE(pPicture->picture().pixel(30, 20), qRgb(90, 90, 90));
    QVERIFY(nMixed != qRgb(90, 90, 90));

    QGuiApplication::clipboard()->clear();
    objWindow.copyToClipboard(QStringLiteral("something else"));
    QVERIFY(QGuiApplication::clipboard()->image().isNull());
    objWindow.copyToClipboard(QStringLiteral("IMAGE overlay"));
    QCOMPARE(QGuiApplication::clipboard()->image().size(), QSize(40, 40));

    pImage->setCurrentIndex(1);
    QVERIFY(pPicture->picture().isNull());
    QCOMPARE(pPicture->text(), QStringLiteral("Image c2 has no picture."));
    QVERIFY(!pOpacity->isEnabled());
    pImage->setCurrentIndex(2);
    QVERIFY2(pPicture->text().contains(QStringLiteral("bad.png")), qPrintable(pPicture->text()));
    // The sequence may be closed while it is shown.
    objCollection.closeAll();
    pImage->setCurrentIndex(0);
    QVERIFY(pPicture->picture().isNull());
}

void TestHostParts::settingsOutliveTheProcess()
{
    const QTemporaryDir objFolder;
    COrmPreference::setStore(objFolder.filePath(QStringLiteral("sub/preferences.json")));
    {
        COrmHostSettings objSettings;
        QVERIFY(objSettings.recentFolders().isEmpty());
        QVERIFY(objSettings.value(QStringLiteral("geometry")).isEmpty());
        objSettings.setValue(QStringLiteral("geometry"), QByteArray("\0\1,;\"x", 7));
        for (int nFolder = 0; nFolder < 10; ++nFolder)
            objSettings.addRecentFolder(QStringLiteral("/study, %1\\").arg(nFolder));
        objSettings.addRecentFolder(QStringLiteral("/study, 5\\"));
    }
    COrmHostSettings objSettings;
    QCOMPARE(objSettings.value(QStringLiteral("geometry")), QByteArray("\0\1,;\"x", 7));
    const QStringList lstRecent = objSettings.recentFolders();
    QCOMPARE(lstRecent.size(), int(COrmHostSettings::s_nMaxRecent));
    QCOMPARE(lstRecent.mid(0, 3), (QStringList{"/study, 5\\", "/study, 9\\", "/study, 8\\"}));
    QCOMPARE(lstRecent.count(QStringLiteral("/study, 5\\")), 1);
    objSettings.clearRecentFolders();
    QVERIFY(COrmHostSettings().recentFolders().isEmpty());
}

void TestHostParts::withoutAStoreNothingIsWritten()
{
    COrmPreference::setStore(QString());
    QVERIFY(COrmHostSettings::file().isEmpty());
    COrmHostSettings objSettings;
    objSettings.setValue(QStringLiteral("geometry"), "x");
    QVERIFY(objSettings.value(QStringLiteral("geometry")).isEmpty());
    objSettings.addRecentFolder(QStringLiteral("/a")); // known for the process alone
    QCOMPARE(objSettings.recentFolders(), QStringList{"/a"});
    QVERIFY(COrmHostSettings().recentFolders().isEmpty());
}

ORM_TEST_MAIN(TestHostParts)
#include "tst_hostparts.moc"
