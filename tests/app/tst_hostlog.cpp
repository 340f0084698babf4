#include "CFileSizeLimit.h"
#include "COrmLog.h"
#include "COrmLogFile.h"
#include "COrmLogPanel.h"
#include "COrmQtMessages.h"
#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QToolButton>

#include <memory>
#include <sys/stat.h>
#include <thread>

namespace
{
QByteArray contents(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray("cannot be opened");
}

/// Three entries of three weights and writers.
void logThree()
{
    getLogObject()->log(QStringLiteral("alpha of a tool"), QString(), 0, QString(), 1, false);
    getLogObject()->log(QStringLiteral("beta"), QStringLiteral("/x/host/ormparser/src/A.cpp"), 1, QString(), 2, false);
    getLogObject()->log(QStringLiteral("gamma Alpha"), QStringLiteral("/x/host/ormimage/src/A.cpp"), 1, QString(), 3, false);
}

int shownLines(const QPlainTextEdit* pText)
{
    return pText->document()->isEmpty() ? 0 : pText->blockCount();
}
} // namespace

/// The log as the user has it: the panel, the file, and what Qt reports.
class TestHostLog : public QObject
{
    Q_OBJECT

private slots:
    void panelShowsWhatIsAskedFor_data();
    void panelShowsWhatIsAskedFor();
    void panelSaysWhoWrote();
    void panelCopiesMarkedTextOrAll();
    void panelFollowsTheEndUntilTheUserLooksElsewhere();
    void panelIsCleared();
    void panelKeepsItsBoundUnderAFilter();
    void panelIsReadableOnBothGrounds();

    void fileGetsEachEntryAtOnce();
    void fileKeepsWhatItHeld();
    void fileThatCannotBeWrittenIsRefused_data();
    void fileThatCannotBeWrittenIsRefused();
    void fileSurvivesAFullDisk();
    void fileTakesEntriesFromAnyThread();

    void messagesOfQtAreLogged();
    void entriesOfTheLogAreNotLoggedTwice();
};

void TestHostLog::panelShowsWhatIsAskedFor_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QString>("count");
    QTest::newRow("all") << 0 << "" << QStringList{"alpha", "beta", "gamma"} << "3 lines";
    QTest::newRow("notes and errors") << 1 << "" << QStringList{"beta", "gamma"} << "2 of 3 lines";
    QTest::newRow("errors") << 2 << "" << QStringList{"gamma"} << "1 of 3 lines";
    QTest::newRow("filter, case aside") << 0 << "ALPHA" << QStringList{"alpha", "gamma"} << "2 of 3 lines";
    QTest::newRow("both") << 1 << "alpha" << QStringList{"gamma"} << "1 of 3 lines";
    QTest::newRow("writer") << 0 << "orm.parser" << QStringList{"beta"} << "1 of 3 lines";
    QTest::newRow("weight") << 0 << "error:" << QStringList{"gamma"} << "1 of 3 lines";
    QTest::newRow("nothing") << 0 << "*" << QStringList{} << "0 of 3 lines";
}

void TestHostLog::panelShowsWhatIsAskedFor()
{
    QFETCH(int, level);
    QFETCH(QString, filter);
    QFETCH(QStringList, shown);
    QFETCH(QString, count);
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    const auto* pCount = TestWidgets::get<QLabel>(&objPanel, "logCount");
    auto* pLevel = TestWidgets::get<QComboBox>(&objPanel, "logLevel");
    auto* pFilter = TestWidgets::get<QLineEdit>(&objPanel, "logFilter");
    const auto check = [&]
    {
        QTRY_COMPARE(pCount->text(), count);
        QCOMPARE(shownLines(pText), shown.size());
        for (int nLine = 0; nLine < shown.size(); ++nLine)
            QVERIFY2(pText->toPlainText().section(QLatin1Char('\n'), nLine, nLine).contains(shown.at(nLine)),
                     qPrintable(pText->toPlainText()));
    };
    logThree();
    QTRY_COMPARE(pCount->text(), QStringLiteral("3 lines"));
    pLevel->setCurrentIndex(level);
    QTest::keyClicks(pFilter, filter);
    check(); // what is there is chosen from
    TestWidgets::get<QToolButton>(&objPanel, "logClear")->click();
    logThree();
    check(); // and so is what comes later
    QCOMPARE(TestWidgets::get<QToolButton>(&objPanel, "logCopy")->isEnabled(), !shown.isEmpty());
    pFilter->clear();
    pLevel->setCurrentIndex(0);
    QCOMPARE(shownLines(pText), 3); // what was not shown is not lost
}

void TestHostLog::panelSaysWhoWrote()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    ORM_LOG(2, QStringLiteral("from a test"));
    logThree();
    QTRY_COMPARE(shownLines(pText), 4);
    const QStringList lstLines = pText->toPlainText().split(QLatin1Char('\n'));
    QVERIFY(lstLines.at(0).endsWith(QStringLiteral("  orm.host  Note: from a test")));
    QVERIFY(lstLines.at(1).endsWith(QStringLiteral("  orm.tool  alpha of a tool")));
    QVERIFY(lstLines.at(2).endsWith(QStringLiteral("  orm.parser  Note: beta")));
    QVERIFY(lstLines.at(3).endsWith(QStringLiteral("  orm.image  Error: gamma Alpha")));
}

void TestHostLog::panelCopiesMarkedTextOrAll()
{
    COrmLogPanel objPanel;
    auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    logThree();
    QTRY_COMPARE(shownLines(pText), 3);
    TestWidgets::get<QComboBox>(&objPanel, "logLevel")->setCurrentIndex(1);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    auto* pCopy = TestWidgets::get<QToolButton>(&objPanel, "logCopy");
    pCopy->click();
    const QString strAll = QGuiApplication::clipboard()->text();
    QCOMPARE(strAll.count(QLatin1Char('\n')), 2);
    QVERIFY(strAll.contains(QStringLiteral("beta\n")) && !strAll.contains(QStringLiteral("alpha of")));
    QTextCursor objCursor = pText->document()->find(QStringLiteral("beta"));
    pText->setTextCursor(objCursor);
    pCopy->click();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("beta"));
}

void TestHostLog::panelFollowsTheEndUntilTheUserLooksElsewhere()
{
    COrmLogPanel objPanel;
    objPanel.setFloating(true);
    objPanel.resize(600, 300);
    objPanel.show();
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    QScrollBar* pBar = pText->verticalScrollBar();
    const auto logMany = [](int nLines)
    {
        for (int nLine = 0; nLine < nLines; ++nLine)
            ORM_LOG(1, QStringLiteral("line %1").arg(nLine));
    };
    logMany(100);
    QTRY_COMPARE(shownLines(pText), 100);
    QVERIFY(pBar->maximum() > 0);
    QCOMPARE(pBar->value(), pBar->maximum());
    pBar->setValue(10);
    logMany(50);
    QTRY_COMPARE(shownLines(pText), 150);
    QCOMPARE(pBar->value(), 10);
    TestWidgets::get<QToolButton>(&objPanel, "logLast")->click();
    QCOMPARE(pBar->value(), pBar->maximum());
    logMany(50);
    QTRY_COMPARE(shownLines(pText), 200);
    QCOMPARE(pBar->value(), pBar->maximum());
}

void TestHostLog::panelIsCleared()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    logThree();
    QTRY_COMPARE(shownLines(pText), 3);
    TestWidgets::get<QToolButton>(&objPanel, "logClear")->click();
    QCOMPARE(shownLines(pText), 0);
    QCOMPARE(TestWidgets::get<QLabel>(&objPanel, "logCount")->text(), QStringLiteral("0 lines"));
    QVERIFY(!TestWidgets::get<QToolButton>(&objPanel, "logLast")->isEnabled());
    TestWidgets::get<QComboBox>(&objPanel, "logLevel")->setCurrentIndex(2);
    TestWidgets::get<QComboBox>(&objPanel, "logLevel")->setCurrentIndex(0);
    QCOMPARE(shownLines(pText), 0);
}

void TestHostLog::panelKeepsItsBoundUnderAFilter()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    const auto* pCount = TestWidgets::get<QLabel>(&objPanel, "logCount");
    TestWidgets::get<QComboBox>(&objPanel, "logLevel")->setCurrentIndex(2);
    ORM_LOG(3, QStringLiteral("the first, soon dropped"));
    QTRY_COMPARE(pCount->text(), QStringLiteral("1 line"));
    for (int nRound = 0; nRound < 2; ++nRound)
    {
        for (int nLine = 0; nLine < COrmLogPanel::s_nMaxLines / 2; ++nLine)
            ORM_LOG(1, QStringLiteral("x"));
        QCoreApplication::processEvents();
    }
    ORM_LOG(3, QStringLiteral("the last"));
    QTRY_COMPARE(pCount->text(), QStringLiteral("1 of %1 lines").arg(COrmLogPanel::s_nMaxLines));
    TestWidgets::get<QComboBox>(&objPanel, "logLevel")->setCurrentIndex(0);
    QCOMPARE(shownLines(pText), int(COrmLogPanel::s_nMaxLines));
    QCOMPARE(pCount->text(), QStringLiteral("%1 lines").arg(COrmLogPanel::s_nMaxLines));
    TestWidgets::get<QComboBox>(&objPanel, "logLevel")->setCurrentIndex(2);
    QCOMPARE(shownLines(pText), 1);
    QVERIFY(pText->toPlainText().endsWith(QStringLiteral("the last")));
}

void TestHostLog::panelIsReadableOnBothGrounds()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    logThree();
    QTRY_COMPARE(shownLines(pText), 3);
    for (const bool bDark : {false, true, false})
    {
        QPalette objPalette = objPanel.palette();
        objPalette.setColor(QPalette::Base, bDark ? QColor(30, 30, 30) : Qt::white);
        objPalette.setColor(QPalette::Text, bDark ? Qt::white : Qt::black);
        objPanel.setPalette(objPalette);
        QCOMPARE(shownLines(pText), 3);
        for (QTextBlock objBlock = pText->document()->begin(); objBlock.isValid(); objBlock = objBlock.next())
        {
            const int nLightness = objBlock.begin().fragment().charFormat().foreground().color().lightness();
            QVERIFY2(bDark ? nLightness > 150 : nLightness < 110, qPrintable(objBlock.text()));
        }
    }
}

void TestHostLog::fileGetsEachEntryAtOnce()
{
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("a.log"));
    COrmLogFile objLog;
    QCOMPARE(objLog.open(strFile), QString());
    QCOMPARE(contents(strFile), QByteArray());
    SLogEntry sEntry;
    sEntry.strMessage = QStringLiteral("one\ntwo\tthree");
    sEntry.nLevel = 2;
    sEntry.strCategory = QStringLiteral("orm.parser");
    sEntry.dtWritten = QDateTime(QDate(2026, 8, 1), QTime(9, 30, 5, 7), Qt::OffsetFromUTC, 7200);
    getLogObject()->write(sEntry);
    QCOMPARE(contents(strFile), QByteArray("2026-08-01T09:30:05.007+02:00\tnote\torm.parser\tone\\ntwo\\tthree\n"));
    logThree();
    const QList<QByteArray> lstLines = contents(strFile).split('\n');
    QCOMPARE(lstLines.size(), 5);
    const QRegularExpression objForm(QStringLiteral(
        "^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}(Z|[+-]\\d\\d:\\d\\d)\t(info|note|error)\torm\\.(tool|parser|image)\t.+$"));
    for (int nLine = 1; nLine < 4; ++nLine)
        QVERIFY2(objForm.match(QString::fromUtf8(lstLines.at(nLine))).hasMatch(), lstLines.at(nLine).constData());
}

void TestHostLog::fileKeepsWhatItHeld()
{
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("results.csv"));
    for (int nRun = 0; nRun < 2; ++nRun)
    {
        COrmLogFile objLog;
        QCOMPARE(objLog.open(strFile), QString());
        ORM_LOG(1, QStringLiteral("run %1").arg(nRun));
    }
    ORM_LOG(1, QStringLiteral("after"));
    const QByteArray baText = contents(strFile);
    QCOMPARE(baText.count('\n'), 2);
    QVERIFY(baText.indexOf("run 0") > 0 && baText.indexOf("run 0") < baText.indexOf("run 1"));
}

void TestHostLog::fileThatCannotBeWrittenIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no folder") << "none/a.log"
                               << "No such file or directory";
    QTest::newRow("a folder") << "."
                              << "Is a directory";
    QTest::newRow("a pipe without a reader") << "pipe"
                                             << "No such device or address";
    QTest::newRow("a name without end") << QString(300, QLatin1Char('x')) << "File name too long";
}

void TestHostLog::fileThatCannotBeWrittenIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const QTemporaryDir objFolder;
    QCOMPARE(mkfifo(QFile::encodeName(objFolder.filePath(QStringLiteral("pipe"))).constData(), 0600), 0);
    COrmLogFile objLog;
    const QString strFile = objFolder.path() + QLatin1Char('/') + name;
    QCOMPARE(objLog.open(strFile), QStringLiteral("The log file %1 cannot be written: %2.").arg(strFile, reason));
    ORM_LOG(1, QStringLiteral("goes nowhere"));
}

void TestHostLog::fileSurvivesAFullDisk()
{
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("a.log"));
    QStringList lstTold;
    const int nSink = getLogObject()->addSink(
        [&lstTold](const SLogEntry& sEntry)
        {
            if (sEntry.nLevel == 3)
                lstTold.append(sEntry.strMessage);
        });
    COrmLogFile objLog;
    QCOMPARE(objLog.open(strFile), QString());
    ORM_LOG(1, QStringLiteral("fits"));
    const QByteArray baBefore = contents(strFile);
    {
        const CFileSizeLimit objLimit(baBefore.size());
        for (int nEntry = 0; nEntry < 3; ++nEntry)
            ORM_LOG(1, QStringLiteral("does not fit"));
    }
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstTold.size(), 1);
    QVERIFY2(lstTold.first().startsWith(QStringLiteral("The log file %1 misses lines: ").arg(strFile)), qPrintable(lstTold.first()));
    QCOMPARE(contents(strFile), baBefore);
    ORM_LOG(1, QStringLiteral("fits again"));
    QVERIFY(contents(strFile).endsWith("fits again\n"));
}

void TestHostLog::fileTakesEntriesFromAnyThread()
{
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("a.log"));
    COrmLogFile objLog;
    QCOMPARE(objLog.open(strFile), QString());
    const auto logMany = []
    {
        for (int nEntry = 0; nEntry < 500; ++nEntry)
            ORM_LOG(1, QStringLiteral("entry %1 end").arg(nEntry));
    };
    std::thread objOther(logMany);
    logMany();
    objOther.join();
    const QList<QByteArray> lstLines = contents(strFile).split('\n');
    QCOMPARE(lstLines.size(), 1001);
    for (int nLine = 0; nLine < 1000; ++nLine)
        QVERIFY2(lstLines.at(nLine).endsWith(" end") && lstLines.at(nLine).count('\t') == 3, lstLines.at(nLine).constData());
}

void TestHostLog::messagesOfQtAreLogged()
{
    QList<SLogEntry> lstSeen;
    const int nSink = getLogObject()->addSink([&lstSeen](const SLogEntry& sEntry) { lstSeen.append(sEntry); });
    {
        const COrmQtMessages objMessages;
        QTest::ignoreMessage(QtWarningMsg, "from the toolkit");
        QTest::ignoreMessage(QtCriticalMsg, "from a part of it");
        qWarning("from the toolkit");
        const QLoggingCategory objCategory("some.part");
        qCCritical(objCategory, "from a part of it");
    }
    QTest::ignoreMessage(QtWarningMsg, "not any more");
    qWarning("not any more");
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstSeen.size(), 2);
    QCOMPARE(lstSeen.at(0).strMessage, QStringLiteral("from the toolkit"));
    QCOMPARE(lstSeen.at(0).strCategory, QStringLiteral("qt"));
    QCOMPARE(lstSeen.at(0).nLevel, 2L);
    QVERIFY(lstSeen.at(0).dtWritten.isValid());
    QCOMPARE(lstSeen.at(1).strCategory, QStringLiteral("some.part"));
    QCOMPARE(lstSeen.at(1).nLevel, 3L);
}

void TestHostLog::entriesOfTheLogAreNotLoggedTwice()
{
    int nSeen = 0;
    const int nSink = getLogObject()->addSink(
        [&nSeen](const SLogEntry&)
        {
            ++nSeen;
            qWarning("a receiver complains"); // must not come back
        });
    QLoggingCategory::setFilterRules(QStringLiteral("orm.*=true"));
    {
        const COrmQtMessages objMessages;
        QTest::ignoreMessage(QtWarningMsg, "a receiver complains");
        QTest::ignoreMessage(QtDebugMsg, "2: once");
        ORM_LOG(2, QStringLiteral("once"));
    }
    QLoggingCategory::setFilterRules(QString());
    getLogObject()->removeSink(nSink);
    QCOMPARE(nSeen, 1);
}

ORM_TEST_MAIN(TestHostLog)
#include "tst_hostlog.moc"
