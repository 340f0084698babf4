// The host services that need no window: log, preferences, settings, hub and small functions.

#include "COrmLog.h"
#include "COrmPreference.h"
#include "COrmUtilityFns.h"

#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

namespace
{
/// Keeps the entries of the log while it lives.
class CLogRecorder
{
public:
    CLogRecorder() : m_nSink(getLogObject()->addSink([this](const SLogEntry& objEntry) { m_lstEntries.append(objEntry); })) {}
    ~CLogRecorder() { getLogObject()->removeSink(m_nSink); }
    QList<SLogEntry> m_lstEntries;

private:
    int m_nSink;
};

QByteArray contents(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray("unreadable");
}

void writeFile(const QString& strFile, const QByteArray& strBytes)
{
    QFile objFile(strFile);
    QVERIFY(objFile.open(QIODevice::WriteOnly));
    QCOMPARE(objFile.write(strBytes), qint64(strBytes.size()));
}

QStringList g_lstQtMessages;
void keepQtMessage(QtMsgType eType, const QMessageLogContext& objContext, const QString& strMessage)
{
    g_lstQtMessages.append(QStringLiteral("%1|%2|%3").arg(int(eType)).arg(QLatin1String(objContext.category), strMessage));
}
} // namespace

/// Receives every notification of the hub by its name, as a tool does.
class CHubListener : public QObject
{
    Q_OBJECT

public slots:
    void updatePreferenceSetting() { m_lstCalls << QStringLiteral("updatePreferenceSetting"); }
    void onDatasetChanged(COrmDataset* p) { note("datasetChanged", p); }
    void onDatasetRemoved(COrmDataset* p) { note("datasetRemoved", p); }
    void onSequenceAdded(COrmSequenceDataset* p) { note("sequenceAdded", p); }
    void onSequenceChanged(COrmSequenceDataset* p) { note("sequenceChanged", p); }
    void onSequenceRemoved(COrmSequenceDataset* p) { note("sequenceRemoved", p); }
    void onROIModified(QString strName) { m_lstCalls << QStringLiteral("roiModified ") + strName; }
    void onROIDeleted() { m_lstCalls << QStringLiteral("roiDeleted"); }
    void onupdateROIList() { m_lstCalls << QStringLiteral("updateROIList"); }
    void onCopyToClipboard(QString strName) { m_lstCalls << QStringLiteral("copy ") + strName; }
    void onToolsMenuLongiStudyUpdate() { m_lstCalls << QStringLiteral("reset"); }
    void onAddWidgetToWorkspace(QWidget* p) { note("addWidget", p); }

public:
    QStringList m_lstCalls;
    QList<void*> m_lstPointers;

private:
    void note(const char* pszName, void* p)
    {
        m_lstCalls << QLatin1String(pszName);
        m_lstPointers << p;
    }
};

class CHostServicesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_objFolder.isValid());
        COrmPreference::setStore(QString());
    }
    void cleanup() { COrmPreference::setStore(QString()); }

    // ---- Log ----------------------------------------------------------------------------------------------------

    void logHandsEachEntryToEverySinkInOrder()
    {
        QStringList lstSeen;
        SLogEntry objSeen;
        const int nFirst = getLogObject()->addSink(
            [&](const SLogEntry& objEntry)
            {
                lstSeen << "first";
                objSeen = objEntry;
            });
        const int nSecond = getLogObject()->addSink([&](const SLogEntry&) { lstSeen << "second"; });
        QVERIFY(nFirst > 0 && nSecond > 0 && nFirst != nSecond);
        const QDateTime dtBefore = QDateTime::currentDateTime();
        getLogObject()->log("message", "", 0, "12:00:00", 3, false);
        QCOMPARE(lstSeen, QStringList({"first", "second"}));
        QCOMPARE(objSeen.strMessage, QString("message"));
        QVERIFY(objSeen.strFile.isEmpty());
        QCOMPARE(objSeen.nLine, 0);
        QCOMPARE(objSeen.strBuildTime, QString("12:00:00"));
        QCOMPARE(objSeen.nLevel, 3L);
        QCOMPARE(objSeen.bFlag, false);
        QVERIFY(objSeen.dtWritten >= dtBefore && objSeen.dtWritten <= QDateTime::currentDateTime());

        getLogObject()->removeSink(nFirst);
        getLogObject()->removeSink(nFirst); // gone already
        getLogObject()->log("again", "", 0, "", 1, true);
        QCOMPARE(lstSeen, QStringList({"first", "second", "second"}));
        getLogObject()->removeSink(nSecond);
    }

    void hostEntriesCarryFileAndLine()
    {
        CLogRecorder objLog;
        const int nLine = __LINE__ + 1;
        ORM_LOG(2, QStringLiteral("from the host"));
        QCOMPARE(objLog.m_lstEntries.size(), 1);
        QVERIFY2(objLog.m_lstEntries[0].strFile.endsWith("tst_hostservices.cpp"), qPrintable(objLog.m_lstEntries[0].strFile));
        QCOMPARE(objLog.m_lstEntries[0].nLine, nLine);
        QCOMPARE(objLog.m_lstEntries[0].nLevel, 2L);
    }

    void sinkThatThrowsOrLogsOrRemovesItselfHurtsNobody()
    {
        int nCalls = 0;
        int nSelf = 0;
        const int nThrows = getLogObject()->addSink([](const SLogEntry&) { throw std::runtime_error("broken"); });
        nSelf = getLogObject()->addSink(
            [&](const SLogEntry&)
            {
                ++nCalls;
                getLogObject()->removeSink(nSelf);
                getLogObject()->log("from within", "", 0, "", 1, false);
            });
        CLogRecorder objLog;
        getLogObject()->log("one", "", 0, "", 1, false);
        getLogObject()->log("two", "", 0, "", 1, false);
        QCOMPARE(nCalls, 1);
        QStringList lstMessages;
        for (const SLogEntry& objEntry : qAsConst(objLog.m_lstEntries))
            lstMessages << objEntry.strMessage;
        QCOMPARE(lstMessages, QStringList({"from within", "one", "two"}));
        const int nEmpty = getLogObject()->addSink({});
        getLogObject()->log("three", "", 0, "", 1, false);
        QCOMPARE(objLog.m_lstEntries.size(), 4);
        getLogObject()->removeSink(nThrows);
        getLogObject()->removeSink(nEmpty);
    }

    void logTakesEntriesAndSinksFromManyThreads()
    {
        std::atomic<int> nEntries{0};
        const int nSink = getLogObject()->addSink([&](const SLogEntry&) { ++nEntries; });
        std::vector<std::thread> vecThreads;
        vecThreads.reserve(4);
        for (int t = 0; t < 4; ++t)
            vecThreads.emplace_back(
                []
                {
                    for (int i = 0; i < 250; ++i)
                    {
                        const int nOwn = getLogObject()->addSink([](const SLogEntry&) {});
                        getLogObject()->log(QString::number(i), "", 0, "", 1, false);
                        getLogObject()->removeSink(nOwn);
                    }
                });
        for (std::thread& objThread : vecThreads)
            objThread.join();
        getLogObject()->removeSink(nSink);
        QCOMPARE(nEntries.load(), 1000);
    }

    void removedSinkIsNotRunningAfterTheReturn()
    {
        std::atomic<bool> bInside{false};
        std::atomic<bool> bLeave{false};
        std::atomic<bool> bLeft{false};
        const int nSink = getLogObject()->addSink(
            [&](const SLogEntry&)
            {
                bInside = true;
                while (!bLeave)
                    std::this_thread::yield();
                bLeft = true;
            });
        std::thread objLogging([] { getLogObject()->log("slow", "", 0, "", 1, false); });
        while (!bInside)
            std::this_thread::yield();
        std::thread objReleasing([&] { bLeave = true; });
        getLogObject()->removeSink(nSink);
        QVERIFY(bLeft);
        objLogging.join();
        objReleasing.join();
    }

    void logForwardsToQtOnlyWhereAsked_data()
    {
        QTest::addColumn<QString>("strRules");
        QTest::addColumn<QString>("strFile");
        QTest::addColumn<QStringList>("lstExpected");
        const QStringList lstNone;
        QTest::newRow("off by default") << ""
                                        << "/a/host/libA/src/X.cpp" << lstNone;
        QTest::newRow("a library") << "orm.*=true"
                                   << "/a/host/libB/src/X.cpp" << QStringList{"0|orm.libB|3: text 100%"};
        QTest::newRow("a library of this house") << "orm.parser=true"
                                                 << "../host/ormparser/src/X.cpp" << QStringList{"0|orm.parser|3: text 100%"};
        QTest::newRow("a tool") << "orm.*=true"
                                << "" << QStringList{"0|orm.tool|3: text 100%"};
        QTest::newRow("elsewhere") << "orm.*=true"
                                   << "/a/b.cpp" << QStringList{"0|orm.host|3: text 100%"};
        QTest::newRow("another's rule") << "orm.libD=true"
                                        << "/host/libC/x.cpp" << lstNone;
    }
    void logForwardsToQtOnlyWhereAsked()
    {
        QFETCH(QString, strRules);
        QFETCH(QString, strFile);
        QFETCH(QStringList, lstExpected);
        QLoggingCategory::setFilterRules(strRules);
        g_lstQtMessages.clear();
        const QtMessageHandler pfnBefore = qInstallMessageHandler(keepQtMessage);
        getLogObject()->log("text 100%", strFile, 7, "", 3, false);
        qInstallMessageHandler(pfnBefore);
        QLoggingCategory::setFilterRules(QString());
        QCOMPARE(g_lstQtMessages, lstExpected);
    }

    // ---- Preferences and settings -----------------------------------------------------------------------------------

    void defaultsWithoutAStore()
    {
        const SDefaultColorBar objColorBar = COrmPreference::getDefaultColorBar();
        QCOMPARE(objColorBar.nColorTable, 9);
        QCOMPARE(objColorBar.bReversed, false);
        S3DViewSettings objView;
        COrmPreference::get3DViewPreferences(objView);
        QCOMPARE(objView.nFontSize, 8);
        QCOMPARE(objView.clrText, QColor(Qt::white));
        QCOMPARE(objView.clrBackground, QColor(Qt::black));
        QVERIFY(objView.clrSurface.lightness() > 180 && objView.clrSurface.saturation() < 20);
        QVERIFY(COrmPreference::getSettings()->getBrowsePath().isNull());
        QVERIFY(COrmPreference::getSettings()->getExportPath().isNull());
        QVERIFY(!COrmPreference::getSettings()->keepExportPath());
    }

    void viewRecordIsEmptyUntilFilled()
    {
        const S3DViewSettings objView;
        for (const QColor& clr : {objView.clrBackground, objView.clrAxes, objView.clrBoundingBox, objView.clrGrid, objView.clrGridText,
                                  objView.clrHighlight, objView.clrText, objView.clrSelection, objView.clrSurface})
            QCOMPARE(clr, QColor());
        for (const QString& str : {objView.strAxisX, objView.strAxisY, objView.strAxisZ, objView.strGridUnit, objView.strFontFamily})
            QVERIFY(str.isEmpty());
    }

    void preferencesOutliveTheProcess()
    {
        const QString strStore = m_objFolder.filePath("new folder/preferences.json");
        COrmPreference::setStore(strStore);
        QCOMPARE(COrmPreference::getStore(), strStore);
        COrmPreference::setDefaultColorBar({4, true});
        S3DViewSettings objView;
        COrmPreference::get3DViewPreferences(objView);
        objView.clrText = QColor(10, 20, 30);
        objView.nFontSize = 11;
        objView.bShowAxes = true;
        objView.strFontFamily = QStringLiteral("Ünïcode \"quoted\" \\ family");
        COrmPreference::set3DViewPreferences(objView);
        COrmPreference::getSettings()->setBrowsePath("/studies/a, b; c=d");
        COrmPreference::setUsersPreferredFormat("png");

        COrmPreference::setStore(QString());
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 9); // nothing is carried over
        COrmPreference::setStore(strStore);
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 4);
        QCOMPARE(COrmPreference::getDefaultColorBar().bReversed, true);
        S3DViewSettings objRead;
        COrmPreference::get3DViewPreferences(objRead);
        QCOMPARE(objRead.clrText, QColor(10, 20, 30));
        QCOMPARE(objRead.nFontSize, 11);
        QCOMPARE(objRead.bShowAxes, true);
        QCOMPARE(objRead.strFontFamily, objView.strFontFamily);
        QCOMPARE(objRead.clrSurface, objView.clrSurface);
        QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), QString("/studies/a, b; c=d"));
        QCOMPARE(COrmPreference::getUsersPreferredFormat(), QString("png"));
        QCOMPARE(QJsonDocument::fromJson(contents(strStore)).object().value("version").toInt(), 1);
    }

    void onlyARealChangeOfAPreferenceIsAnnounced()
    {
        const QSignalSpy objSpy(COrmPreference::getSignalHandler(), SIGNAL(updatePreferenceSetting()));
        COrmPreference::setDefaultColorBar({9, false});
        S3DViewSettings objView;
        COrmPreference::get3DViewPreferences(objView);
        COrmPreference::set3DViewPreferences(objView);
        QCOMPARE(objSpy.count(), 0);
        COrmPreference::setDefaultColorBar({9, true});
        QCOMPARE(objSpy.count(), 1);
        objView.nFontSize = 14;
        objView.clrSurface = Qt::green;
        COrmPreference::set3DViewPreferences(objView);
        QCOMPARE(objSpy.count(), 2);
        COrmPreference::setUsersPreferredFormat("tif"); // a memory of the program, no preference of the user
        COrmPreference::getSettings()->setBrowsePath("/x");
        QCOMPARE(objSpy.count(), 2);
    }

    void impossibleViewPreferencesAreLeftOut()
    {
        S3DViewSettings objView;
        COrmPreference::get3DViewPreferences(objView);
        const QSignalSpy objSpy(COrmPreference::getSignalHandler(), &COrmSignalHandler::updatePreferenceSetting);
        for (const int nSize : {3, 73, 0, -8})
        {
            S3DViewSettings objWrong = objView;
            objWrong.nFontSize = nSize;
            objWrong.clrText = QColor();
            COrmPreference::set3DViewPreferences(objWrong);
        }
        S3DViewSettings objAfter;
        COrmPreference::get3DViewPreferences(objAfter);
        QCOMPARE(objAfter.nFontSize, 8);
        QCOMPARE(objAfter.clrText, QColor(Qt::white));
        QCOMPARE(objSpy.count(), 0);
        for (const int nSize : {4, 72})
        {
            objView.nFontSize = nSize;
            COrmPreference::set3DViewPreferences(objView);
            COrmPreference::get3DViewPreferences(objAfter);
            QCOMPARE(objAfter.nFontSize, nSize);
        }
    }

    void storeThatMakesNoSenseGivesDefaultsAndIsKeptAside_data()
    {
        QTest::addColumn<QByteArray>("strBytes");
        QTest::newRow("cut off") << QByteArray("{\"version\":1,\"colorBar\":{\"tab");
        QTest::newRow("not JSON") << QByteArray("[General]\ncolor=3\n");
        QTest::newRow("an array") << QByteArray("[1,2]");
        QTest::newRow("zeros") << QByteArray(64, '\0');
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("too long") << QByteArray(1024 * 1024 + 1, ' ');
    }
    void storeThatMakesNoSenseGivesDefaultsAndIsKeptAside()
    {
        QFETCH(QByteArray, strBytes);
        const QString strStore = m_objFolder.filePath(QString("bad %1.json").arg(QLatin1String(QTest::currentDataTag())));
        writeFile(strStore, strBytes);
        COrmPreference::setStore(strStore);
        CLogRecorder objLog;
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 9);
        QCOMPARE(objLog.m_lstEntries.size(), 1);
        QVERIFY(objLog.m_lstEntries[0].strMessage.contains(strStore));
        QCOMPARE(contents(strStore), strBytes); // reading changes nothing
        COrmPreference::setDefaultColorBar({2, false});
        QCOMPARE(contents(strStore + ".unreadable"), strBytes);
        COrmPreference::setStore(strStore);
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 2);
    }

    void valuesOfAWrongKindCountAsAbsent()
    {
        const QString strStore = m_objFolder.filePath("wrongkinds.json");
        writeFile(strStore,
                  R"({"version":1,"colorBar":{"table":"nine","reversed":7},"view3D":{"text":"no colour","fontSize":1e9,"showAxes":"x"},
                              "folders":5,"export":{"format":[1]}})");
        COrmPreference::setStore(strStore);
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 9);
        QCOMPARE(COrmPreference::getDefaultColorBar().bReversed, false);
        S3DViewSettings objView;
        COrmPreference::get3DViewPreferences(objView);
        QCOMPARE(objView.clrText, QColor(Qt::white));
        QCOMPARE(objView.nFontSize, 8);
        QVERIFY(COrmPreference::getSettings()->getBrowsePath().isNull());
        QVERIFY(COrmPreference::getUsersPreferredFormat().isEmpty());
    }

    void whatANewerVersionStoredSurvives()
    {
        const QString strStore = m_objFolder.filePath("newer.json");
        writeFile(strStore, R"({"version":7,"plots":{"grid":true},"colorBar":{"table":3,"shades":12}})");
        COrmPreference::setStore(strStore);
        COrmPreference::setDefaultColorBar({5, false});
        const QJsonObject objRoot = QJsonDocument::fromJson(contents(strStore)).object();
        QCOMPARE(objRoot.value("version").toInt(), 7);
        QCOMPARE(objRoot.value("plots").toObject().value("grid").toBool(), true);
        QCOMPARE(objRoot.value("colorBar").toObject().value("shades").toInt(), 12);
        QCOMPARE(objRoot.value("colorBar").toObject().value("table").toInt(), 5);
    }

    void storeThatCannotBeWrittenKeepsTheChangeForTheProcess()
    {
        const QString strBlocker = m_objFolder.filePath("a file");
        writeFile(strBlocker, "x");
        COrmPreference::setStore(strBlocker + "/preferences.json"); // no folder can be made there, whoever runs this
        CLogRecorder objLog;
        COrmPreference::setDefaultColorBar({1, true});
        QCOMPARE(objLog.m_lstEntries.size(), 1); // two values, one attempt
        QCOMPARE(objLog.m_lstEntries[0].nLevel, 2L);
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 1);
        QCOMPARE(contents(strBlocker), QByteArray("x"));
    }

    void storeThatIsAFolderIsRefused()
    {
        COrmPreference::setStore(m_objFolder.path());
        CLogRecorder objLog;
        QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 9);
        QCOMPARE(objLog.m_lstEntries.size(), 1);
    }

    void recentFilePathBeginsAsTheEnumerator()
    {
        COrmSettings* pSettings = COrmPreference::getSettings();
        QCOMPARE(pSettings->getRecentFilePath(), QVariant::fromValue(QStandardPaths::DesktopLocation).value<QString>());
        QCOMPARE(pSettings->getRecentFilePath(), QString("DesktopLocation"));
        QVERIFY(pSettings->getRecentFilePath() != QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
        pSettings->setRecentFilePath("/exports");
        QCOMPARE(pSettings->getRecentFilePath(), QString("/exports"));
        pSettings->setRecentFilePath(QString());
        QCOMPARE(pSettings->getRecentFilePath(), QVariant::fromValue(QStandardPaths::DesktopLocation).value<QString>());
    }

    void exportPathIsStoredOnlyWithItsFlag()
    {
        COrmSettings* pSettings = COrmPreference::getSettings();
        pSettings->setRecentFilePath("/one");
        QVERIFY(pSettings->getExportPath().isNull());
        pSettings->setKeepExportPath(true);
        pSettings->setRecentFilePath("/two");
        QCOMPARE(pSettings->getExportPath(), QString("/two"));
        pSettings->setKeepExportPath(false);
        pSettings->setRecentFilePath("/three");
        QCOMPARE(pSettings->getExportPath(), QString("/two"));
        QCOMPARE(pSettings->getRecentFilePath(), QString("/three"));
    }

    void emptyBrowsePathRemovesTheEntry()
    {
        COrmPreference::getSettings()->setBrowsePath("/studies");
        QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), QString("/studies"));
        COrmPreference::getSettings()->setBrowsePath("");
        QVERIFY(COrmPreference::getSettings()->getBrowsePath().isNull());
    }

    void preferredFormatLeadsTheSaveFilter_data()
    {
        QTest::addColumn<QString>("strFormat");
        QTest::addColumn<int>("nFirst");
        QTest::newRow("none") << "" << 0;
        QTest::newRow("bmp") << "bmp" << 0;
        QTest::newRow("jpg") << "jpg" << 1;
        QTest::newRow("jpeg") << "jpeg" << 1;
        QTest::newRow("PNG in capitals") << "PNG" << 2;
        QTest::newRow("eps") << "eps" << 3;
        QTest::newRow("tiff") << "tiff" << 4;
        QTest::newRow("tail of a path with a dot in a folder") << "5 mm/scan.png" << 2;
        QTest::newRow("a path without a dot") << "/home/user/sample" << 0;
        QTest::newRow("not offered") << "emf" << 0;
        QTest::newRow("pattern characters") << "*)" << 0;
    }
    void preferredFormatLeadsTheSaveFilter()
    {
        QFETCH(QString, strFormat);
        QFETCH(int, nFirst);
        QStringList lstEntries{"Bitmap Image (*.bmp)", "JPEG Image (*.jpg)", "PNG Image (*.png)", "Postscript Enhanced Metafile (*.eps)",
                               "Tagged Image File Format (*.tif)"};
        QString strFilter = lstEntries.join(";;");
        COrmPreference::setUsersPreferredFormat(strFormat);
        COrmPreference::modifySaveFilterByPreference(strFilter);
        lstEntries.move(nFirst, 0);
        QCOMPARE(strFilter, lstEntries.join(";;"));
        QCOMPARE(COrmPreference::getUsersPreferredFormat(), strFormat);
    }

    // ---- Hub --------------------------------------------------------------------------------------------------------

    void hubCarriesEveryNotification()
    {
        COrmSignalHandler* pHub = COrmPreference::getSignalHandler();
        QCOMPARE(pHub, COrmPreference::getSignalHandler());
        CHubListener objListener;
        const char* const lstPairs[][2] = {
            {SIGNAL(updatePreferenceSetting()), SLOT(updatePreferenceSetting())},
            {SIGNAL(signalDatasetChanged(COrmDataset*)), SLOT(onDatasetChanged(COrmDataset*))},
            {SIGNAL(signalDatasetRemoved(COrmDataset*)), SLOT(onDatasetRemoved(COrmDataset*))},
            {SIGNAL(signalSequenceAdded(COrmSequenceDataset*)), SLOT(onSequenceAdded(COrmSequenceDataset*))},
            {SIGNAL(signalSequenceChanged(COrmSequenceDataset*)), SLOT(onSequenceChanged(COrmSequenceDataset*))},
            {SIGNAL(signalSequenceRemoved(COrmSequenceDataset*)), SLOT(onSequenceRemoved(COrmSequenceDataset*))},
            {SIGNAL(signalROIModified(QString)), SLOT(onROIModified(QString))},
            {SIGNAL(signalROIDeleted()), SLOT(onROIDeleted())},
            {SIGNAL(signalupdateROIList()), SLOT(onupdateROIList())},
            {SIGNAL(signalCopyToClipboard(QString)), SLOT(onCopyToClipboard(QString))},
            {SIGNAL(signalToolsMenuLongiStudyUpdate()), SLOT(onToolsMenuLongiStudyUpdate())},
            {SIGNAL(signalAddWidgetToWorkspace(QWidget*)), SLOT(onAddWidgetToWorkspace(QWidget*))},
        };
        for (const auto& lstPair : lstPairs)
            QVERIFY2(connect(pHub, lstPair[0], &objListener, lstPair[1]), lstPair[0]);

        int nDataset = 0; // only the address is handed on
        int nSequence = 0;
        QWidget objWindow;
        auto* pDataset = reinterpret_cast<COrmDataset*>(&nDataset);
        auto* pSequence = reinterpret_cast<COrmSequenceDataset*>(&nSequence);
        COrmPreference::setDefaultColorBar({3, false}); // the preferences emit by themselves
        emit pHub->signalDatasetChanged(pDataset);
        emit pHub->signalDatasetRemoved(pDataset);
        emit pHub->signalSequenceAdded(pSequence);
        emit pHub->signalSequenceChanged(pSequence);
        emit pHub->signalSequenceRemoved(pSequence);
        emit pHub->signalROIModified("liver");
        emit pHub->signalROIDeleted();
        emit pHub->signalupdateROIList();
        emit pHub->signalCopyToClipboard("Longitudinal Study");
        emit pHub->signalToolsMenuLongiStudyUpdate();
        emit pHub->signalAddWidgetToWorkspace(&objWindow);
        QCOMPARE(objListener.m_lstCalls, QStringList({"updatePreferenceSetting", "datasetChanged", "datasetRemoved", "sequenceAdded",
                                                      "sequenceChanged", "sequenceRemoved", "roiModified liver", "roiDeleted",
                                                      "updateROIList", "copy Longitudinal Study", "reset", "addWidget"}));
        QCOMPARE(objListener.m_lstPointers, QList<void*>({pDataset, pDataset, pSequence, pSequence, pSequence, &objWindow}));
    }

    // ---- Small functions --------------------------------------------------------------------------------------------

    void applicationNameAndFont()
    {
        QCOMPARE(COrmUtilityFns::getAppName(), QString("Ormelle"));
        QCOMPARE(getMACDefaultFont(), QApplication::font());
        const quint16 nOne = 1;
        QCOMPARE(IsLittleEndian(), *reinterpret_cast<const quint8*>(&nOne) == 1);
    }

    void cursorsComeBackInPairs()
    {
        QVERIFY(!QApplication::overrideCursor());
        COrmUtilityFns::restoreCursor();
        QVERIFY(!QApplication::overrideCursor());
        COrmUtilityFns::setCursor(Qt::WaitCursor);
        COrmUtilityFns::setCursor(QCursor(Qt::CrossCursor));
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::CrossCursor);
        COrmUtilityFns::restoreCursor();
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        COrmUtilityFns::restoreCursor();
        QVERIFY(!QApplication::overrideCursor());
        QApplication::setOverrideCursor(Qt::ForbiddenCursor); // somebody else's
        COrmUtilityFns::restoreCursor();
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::ForbiddenCursor);
        QApplication::restoreOverrideCursor();
    }

    void comboSelectsExactlyThatText_data()
    {
        QTest::addColumn<QString>("strText");
        QTest::addColumn<int>("nExpected");
        QTest::newRow("there") << "NOVA" << 2;
        QTest::newRow("first of two") << "SOLA" << 1;
        QTest::newRow("other case") << "nova" << 0;
        QTest::newRow("part of an entry") << "NOV" << 0;
        QTest::newRow("absent") << "CT" << 0;
        QTest::newRow("null") << QString() << 0;
    }
    void comboSelectsExactlyThatText()
    {
        QFETCH(QString, strText);
        QFETCH(int, nExpected);
        QComboBox objCombo;
        objCombo.addItems({"none", "SOLA", "NOVA", "SOLA"});
        updateComboWidget(&objCombo, strText);
        QCOMPARE(objCombo.currentIndex(), nExpected);
        updateComboWidget(nullptr, strText);
    }

private:
    QTemporaryDir m_objFolder;
};

QTEST_MAIN(CHostServicesTest)
#include "tst_hostservices.moc"
