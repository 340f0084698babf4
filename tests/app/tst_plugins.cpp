#include "COrmDataset.h"
#include "COrmLog.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmSequenceDataset.h"
#include "COrmTool.h"
#include "COrmToolPluginBase.h"
#include "OrmPluginCheck.h"
#include "OrmTestMain.h"
#include "PluginFolder.h"

#include <QAction>
#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>

#include <unistd.h>

namespace
{
QStringList toolNames(const COrmPluginManager& objManager)
{
    QStringList lstNames;
    for (const auto& pTool : objManager.tools())
        lstNames.append(pTool->name());
    return lstNames;
}

QStringList takeCalls(COrmToolPluginBase* pTool)
{
    const QStringList lstCalls = pTool->property("calls").toStringList();
    pTool->setProperty("calls", QVariant());
    return lstCalls;
}

/// Sequence data without files.
SSequenceFacts facts(const QString& strID)
{
    SSequenceFacts sFacts;
    sFacts.m_strSequenceID = strID;
    SClickFacts sClick;
    sClick.m_strClickNumber = strID + QStringLiteral("_001");
    sFacts.m_lstClicks.append(sClick);
    return sFacts;
}
} // namespace

class TestPlugins : public QObject
{
    Q_OBJECT

private slots:
    void goodToolIsLoadedAndSetUp();
    void badFileIsRefusedInOneSentence_data();
    void badFileIsRefusedInOneSentence();
    void libraryCutAnywhereIsRefused();
    void badFilesDoNotStopTheGoodOnes();
    void duplicateIsSkipped();
    void untrustedFolderIsRefused_data();
    void untrustedFolderIsRefused();
    void folderThatIsNotThereHoldsNoTools();
    void otherFilesInTheFolderAreNoConcern();
    void foreignOwnerIsRefused();
    void thousandFilesAreTheLimit();
    void defaultFolderStandsBesideTheProgram();
    void everyNotificationReachesTheSlotOfItsName();
    void throwingToolDoesNotKeepOthersFromHearing();
    void firstUseCreatesAndShowsLaterUsesCreate();
    void failureOfAToolIsASentence_data();
    void failureOfAToolIsASentence();
    void managerDestroysItsToolsAndTheyLoadAgain();
};

void TestPlugins::goodToolIsLoadedAndSetUp()
{
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    QCOMPARE(objManager.refusals(), QStringList());
    QCOMPARE(toolNames(objManager), QStringList{"Recording Tool"});
    const COrmTool& objTool = *objManager.tools().front();
    QCOMPARE(objTool.menuBefore(), QStringLiteral("Image Overlay"));
    QCOMPARE(objTool.identifier(), QStringLiteral("tdl.ormelle.test.recording"));
    QCOMPARE(objTool.file(), objFolder.file(QStringLiteral("RecordingTool.so")));
    QVERIFY(objTool.action() != nullptr);
    QVERIFY(objTool.action()->isVisible());
    QVERIFY(objTool.menu() == nullptr);
    QCOMPARE(takeCalls(objTool.plugin()), QStringList{"init"});
    QCOMPARE(objManager.tool(QStringLiteral("recording tool")), &objTool);
    QVERIFY(objManager.tool(QStringLiteral("recording")) == nullptr);
}

void TestPlugins::badFileIsRefusedInOneSentence_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("reason");
    QTest::newRow("text") << "text"
                          << "it holds no tool";
    QTest::newRow("empty") << "empty"
                           << "it is empty.";
    QTest::newRow("one byte") << "one byte"
                              << "it holds no tool";
    QTest::newRow("cut in the middle") << "cut"
                                       << "it holds no tool";
    QTest::newRow("cut behind its first page") << "cut page"
                                               << "it holds no tool";
    QTest::newRow("without its last byte") << "cut end"
                                           << "it holds no tool";
    QTest::newRow("cut in its head") << "cut head"
                                     << "it holds no tool";
    QTest::newRow("other machine") << "other machine"
                                   << "it cannot be loaded";
    QTest::newRow("32 bits") << "32 bits"
                             << "it holds no tool";
    QTest::newRow("a library that is no plug-in") << "PlainLibrary"
                                                  << "it holds no tool";
    QTest::newRow("another host's tool") << "ForeignTool"
                                         << "it was made for another host (it calls itself \"com.example.foreign\").";
    QTest::newRow("a plug-in that is no tool") << "NoTool"
                                               << "it does not offer what this host asks of a tool.";
    QTest::newRow("a tool that throws") << "ThrowingTool"
                                        << "Setting the tool up failed: the laser is off.";
    QTest::newRow("Qt 6") << "Qt 6"
                          << "it was built with Qt 6, and this host runs on Qt 5.";
    QTest::newRow("folder") << "folder"
                            << "it is not a regular file.";
    QTest::newRow("link to a tool") << "link"
                                    << "it is a link.";
    QTest::newRow("link to a device") << "device link"
                                      << "it is a link.";
    QTest::newRow("link to nowhere") << "dangling"
                                     << "it is a link.";
    QTest::newRow("pipe") << "fifo"
                          << "it is not a regular file.";
    QTest::newRow("world-writable") << "world-writable"
                                    << "others than its owner may write to it.";
    QTest::newRow("group-writable") << "group-writable"
                                    << "others than its owner may write to it.";
    QTest::newRow("random bytes behind a good head") << "noise"
                                                     << "";
}

void TestPlugins::badFileIsRefusedInOneSentence()
{
    QFETCH(QString, kind);
    QFETCH(QString, reason);
    const CPluginFolder objFolder;
    objFolder.addBad(QStringLiteral("bad.so"), kind, CPluginFolder::library(QStringLiteral("RecordingTool")));
    QStringList lstLogged;
    const int nSink = getLogObject()->addSink(
        [&lstLogged](const SLogEntry& sEntry)
        {
            if (sEntry.nLevel == 2)
                lstLogged.append(sEntry.strMessage);
        });
    COrmPluginManager objManager;
    QElapsedTimer objTimer;
    objTimer.start();
    objManager.loadFolder(objFolder.path());
    getLogObject()->removeSink(nSink);
    QVERIFY(objTimer.elapsed() < 5000);
    QVERIFY(objManager.tools().empty());
    QCOMPARE(objManager.refusals().size(), 1);
    const QString strRefusal = objManager.refusals().first();
    QVERIFY2(strRefusal.startsWith(QStringLiteral("bad.so was not loaded: ") + reason), qPrintable(strRefusal));
    QVERIFY2(!strRefusal.contains(QLatin1Char('\n')), qPrintable(strRefusal));
    QVERIFY2(strRefusal.endsWith(QLatin1Char('.')), qPrintable(strRefusal));
    QCOMPARE(lstLogged, objManager.refusals());
}

void TestPlugins::libraryCutAnywhereIsRefused()
{
    // The system would map what is not there and end the program at its first use.
    const QByteArray arrGood = CPluginFolder::library(QStringLiteral("RecordingTool"));
    QVERIFY(arrGood.size() > 1000);
    const int nStep = 499;
    for (int nSize = 1; nSize < arrGood.size(); nSize += nSize < 128 ? 1 : nStep)
    {
        const CPluginFolder objFolder;
        objFolder.add(QStringLiteral("cut.so"), arrGood.left(nSize));
        COrmPluginManager objManager;
        objManager.loadFolder(objFolder.path());
        QVERIFY2(objManager.tools().empty(), qPrintable(QString::number(nSize)));
        QCOMPARE(objManager.refusals().size(), 1);
        QVERIFY2(objManager.refusals().first().startsWith(QStringLiteral("cut.so was not loaded: it holds no tool (")),
                 qPrintable(objManager.refusals().first()));
    }
}

void TestPlugins::badFilesDoNotStopTheGoodOnes()
{
    const CPluginFolder objFolder;
    const QStringList lstKinds = {"text",         "empty",  "cut head", "other machine", "PlainLibrary", "ForeignTool",    "NoTool",
                                  "ThrowingTool", "folder", "link",     "device link",   "fifo",         "world-writable", "Qt 6"};
    for (int nKind = 0; nKind < lstKinds.size(); ++nKind)
        objFolder.addBad(QStringLiteral("%1 %2.so").arg(nKind % 2 == 0 ? QStringLiteral("a") : QStringLiteral("z")).arg(nKind),
                         lstKinds.at(nKind), CPluginFolder::library(QStringLiteral("RecordingTool")));
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    objFolder.addLibrary(QStringLiteral("OrderedTool"));
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    QCOMPARE(toolNames(objManager), (QStringList{"Ordered Tool", "Recording Tool"}));
    QCOMPARE(objManager.refusals().size(), lstKinds.size());
}

void TestPlugins::duplicateIsSkipped()
{
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"), QStringLiteral("a"));
    objFolder.addLibrary(QStringLiteral("RecordingTool"), QStringLiteral("b"));
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    QCOMPARE(toolNames(objManager), QStringList{"Recording Tool"});
    QCOMPARE(objManager.refusals(), QStringList{"b.so was not loaded: the same tool is loaded from a.so already."});
    QCOMPARE(takeCalls(objManager.tools().front()->plugin()), QStringList{"init"});
}

void TestPlugins::untrustedFolderIsRefused_data()
{
    QTest::addColumn<unsigned>("mode");
    QTest::addColumn<bool>("loads");
    QTest::newRow("owner alone") << 0700U << true;
    QTest::newRow("readable by all") << 0755U << true;
    QTest::newRow("writable by the group") << 0775U << false;
    QTest::newRow("writable by all") << 0707U << false;
    QTest::newRow("writable by all, sticky") << 01777U << false;
}

void TestPlugins::untrustedFolderIsRefused()
{
    QFETCH(unsigned, mode);
    QFETCH(bool, loads);
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    CPluginFolder::setMode(objFolder.path(), mode);
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    QCOMPARE(objManager.tools().size(), size_t(loads ? 1 : 0));
    QCOMPARE(objManager.refusals(), loads ? QStringList() : QStringList{"Plugins was not loaded: others than its owner may write to it."});

    const QString strLink = QDir(objFolder.path()).filePath(QStringLiteral("../link"));
    QVERIFY(QFile::link(objFolder.path(), strLink));
    COrmPluginManager objOther;
    objOther.loadFolder(strLink);
    QVERIFY(objOther.tools().empty());
    QCOMPARE(objOther.refusals(), QStringList{"link was not loaded: it is a link."});
}

void TestPlugins::folderThatIsNotThereHoldsNoTools()
{
    const QTemporaryDir objRoot;
    COrmPluginManager objManager;
    objManager.loadFolder(objRoot.filePath(QStringLiteral("Plugins")));
    QVERIFY(objManager.tools().empty());
    QVERIFY(objManager.refusals().isEmpty());
    // A file in its place is told.
    QFile objFile(objRoot.filePath(QStringLiteral("Plugins")));
    QVERIFY(objFile.open(QIODevice::WriteOnly));
    objManager.loadFolder(objFile.fileName());
    QCOMPARE(objManager.refusals(), QStringList{"Plugins was not loaded: it is not a folder."});
}

void TestPlugins::otherFilesInTheFolderAreNoConcern()
{
    const CPluginFolder objFolder;
    objFolder.add(QStringLiteral("README.txt"), "x");
    objFolder.add(QStringLiteral("tool.so.bak"), CPluginFolder::library(QStringLiteral("RecordingTool")));
    objFolder.add(QStringLiteral("so"), "x");
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    QVERIFY(objManager.tools().empty());
    QVERIFY(objManager.refusals().isEmpty());
}

void TestPlugins::foreignOwnerIsRefused()
{
    // The system's own files belong to the administrator, who may put tools anywhere.
    QCOMPARE(OrmPluginCheck::fileRefusal(QStringLiteral("/etc/passwd")), QString());
    QCOMPARE(OrmPluginCheck::folderRefusal(QStringLiteral("/usr")), QString());
    const CPluginFolder objFolder;
    objFolder.add(QStringLiteral("mine.so"), "x");
    QCOMPARE(OrmPluginCheck::fileRefusal(objFolder.file(QStringLiteral("mine.so"))), QString());
    // Only the administrator can give a file away.
    const int nGiven = chown(QFile::encodeName(objFolder.file(QStringLiteral("mine.so"))).constData(), 12345, 12345);
    QCOMPARE(OrmPluginCheck::fileRefusal(objFolder.file(QStringLiteral("mine.so"))),
             nGiven == 0 ? QStringLiteral("it belongs to another user.") : QString());
    QCOMPARE(nGiven == 0, geteuid() == 0);
}

void TestPlugins::thousandFilesAreTheLimit()
{
    const CPluginFolder objFolder;
    for (int nFile = 0; nFile < COrmPluginManager::s_nMaxFiles; ++nFile)
        objFolder.add(QStringLiteral("%1.so").arg(nFile, 4, 10, QLatin1Char('0')), "x");
    objFolder.addLibrary(QStringLiteral("RecordingTool"), QStringLiteral("0500"));
    {
        COrmPluginManager objManager;
        objManager.loadFolder(objFolder.path());
        QCOMPARE(toolNames(objManager), QStringList{"Recording Tool"});
        QCOMPARE(objManager.refusals().size(), COrmPluginManager::s_nMaxFiles - 1);
    }
    objFolder.add(QStringLiteral("z.so"), "x");
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    QCOMPARE(toolNames(objManager), QStringList{"Recording Tool"});
    QCOMPARE(objManager.refusals().size(), COrmPluginManager::s_nMaxFiles);
    QVERIFY(objManager.refusals().last().contains(QStringLiteral("no more than 1000 are looked at")));
}

void TestPlugins::defaultFolderStandsBesideTheProgram()
{
    QCOMPARE(COrmPluginManager::defaultFolder(), QCoreApplication::applicationDirPath() + QStringLiteral("/Plugins"));
}

void TestPlugins::everyNotificationReachesTheSlotOfItsName()
{
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    objFolder.addLibrary(QStringLiteral("OrderedTool")); // has none of the slots
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    COrmToolPluginBase* pTool = objManager.tool(QStringLiteral("Recording Tool"))->plugin();
    takeCalls(pTool);

    COrmSequenceDataset objSequence(facts(QStringLiteral("S")));
    COrmDataset* pDataset = objSequence.getDatasets().first();
    COrmSignalHandler* pHub = COrmPreference::getSignalHandler();
    const QList<QPair<std::function<void()>, QString>> lstCases = {
        {[&] { emit pHub->signalDatasetChanged(pDataset); }, QStringLiteral("dataset changed S_001")},
        {[&] { emit pHub->signalDatasetRemoved(pDataset); }, QStringLiteral("dataset removed S_001")},
        {[&] { emit pHub->signalSequenceAdded(&objSequence); }, QStringLiteral("sequence added S")},
        {[&] { emit pHub->signalSequenceChanged(&objSequence); }, QStringLiteral("sequence changed S")},
        {[&] { emit pHub->signalSequenceRemoved(&objSequence); }, QStringLiteral("sequence removed S")},
        {[&] { emit pHub->signalROIModified(QStringLiteral("liver")); }, QStringLiteral("ROI modified liver")},
        {[&] { emit pHub->signalROIDeleted(); }, QStringLiteral("ROI deleted")},
        {[&] { emit pHub->signalupdateROIList(); }, QStringLiteral("ROI list")},
        {[&] { emit pHub->signalCopyToClipboard(QStringLiteral("Some Window")); }, QStringLiteral("copy Some Window")},
        {[&] { emit pHub->signalToolsMenuLongiStudyUpdate(); }, QStringLiteral("reset")},
    };
    for (const auto& objCase : lstCases)
    {
        objCase.first();
        QCOMPARE(takeCalls(pTool), QStringList{objCase.second});
    }
    // Every signal of the hub is in the table above but the two that are not for tools to hear by name.
    const QMetaObject* pMeta = pHub->metaObject();
    int nSignals = 0;
    for (int nMethod = pMeta->methodOffset(); nMethod < pMeta->methodCount(); ++nMethod)
        nSignals += pMeta->method(nMethod).methodType() == QMetaMethod::Signal ? 1 : 0;
    QCOMPARE(nSignals, lstCases.size() + 2);
}

void TestPlugins::throwingToolDoesNotKeepOthersFromHearing()
{
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    COrmToolPluginBase* pTool = objManager.tools().front()->plugin();
    takeCalls(pTool);
    QStringList lstLogged;
    const int nSink = getLogObject()->addSink([&lstLogged](const SLogEntry& sEntry) { lstLogged.append(sEntry.strMessage); });
    QSignalSpy objLater(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalROIDeleted); // connected behind the tools
    pTool->setProperty("trouble", QStringLiteral("throw"));
    emit COrmPreference::getSignalHandler()->signalROIDeleted();
    emit COrmPreference::getSignalHandler()->signalROIDeleted();
    getLogObject()->removeSink(nSink);
    QCOMPARE(objLater.count(), 2);
    QCOMPARE(takeCalls(pTool), (QStringList{"ROI deleted", "ROI deleted"}));
    QCOMPARE(lstLogged, QStringList{"onSignalROIDeleted() of CRecordingTool failed: out of order."});
}

void TestPlugins::firstUseCreatesAndShowsLaterUsesCreate()
{
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    COrmTool& objTool = *objManager.tools().front();
    takeCalls(objTool.plugin());
    objTool.plugin()->setProperty("trouble", QStringLiteral("refuse"));
    QVERIFY(!objTool.use());
    QCOMPARE(takeCalls(objTool.plugin()), QStringList{"createObject"});
    // A use that failed is none: the next one is the first.
    objTool.plugin()->setProperty("trouble", QVariant());
    QVERIFY(objTool.use());
    QCOMPARE(takeCalls(objTool.plugin()), (QStringList{"createObject", "show"}));
    QVERIFY(objTool.use());
    QVERIFY(objTool.use());
    QCOMPARE(takeCalls(objTool.plugin()), (QStringList{"createObject", "createObject"}));
}

void TestPlugins::failureOfAToolIsASentence_data()
{
    QTest::addColumn<QString>("trouble");
    QTest::addColumn<QString>("reason");
    QTest::newRow("refuses") << "refuse"
                             << "Recording Tool could not open its window.";
    QTest::newRow("throws") << "throw"
                            << "Recording Tool failed: out of order.";
}

void TestPlugins::failureOfAToolIsASentence()
{
    QFETCH(QString, trouble);
    QFETCH(QString, reason);
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    COrmPluginManager objManager;
    objManager.loadFolder(objFolder.path());
    COrmTool& objTool = *objManager.tools().front();
    objTool.plugin()->setProperty("trouble", trouble);
    QString strReason;
    QVERIFY(!objTool.use(&strReason));
    QCOMPARE(strReason, reason);
}

void TestPlugins::managerDestroysItsToolsAndTheyLoadAgain()
{
    const CPluginFolder objFolder;
    objFolder.addLibrary(QStringLiteral("RecordingTool"));
    for (int nRound = 0; nRound < 100; ++nRound)
    {
        QPointer<COrmToolPluginBase> pTool;
        QPointer<QWidget> pWindow;
        {
            COrmPluginManager objManager;
            QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
            objManager.loadFolder(objFolder.path());
            QCOMPARE(objManager.tools().size(), size_t(1));
            pTool = objManager.tools().front()->plugin();
            QCOMPARE(takeCalls(pTool), QStringList{"init"}); // a new object each time
            QVERIFY(objManager.tools().front()->use());
            QCOMPARE(objWindows.count(), 1);
            pWindow = objWindows.first().first().value<QWidget*>();
            QVERIFY(pWindow);
        }
        QVERIFY(!pTool);
        QVERIFY(!pWindow);
        emit COrmPreference::getSignalHandler()->signalROIDeleted(); // nobody is left to hear it
    }
}

ORM_TEST_MAIN(TestPlugins)
#include "tst_plugins.moc"
