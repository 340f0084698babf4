#include "../support/CFileSizeLimit.h"
#include "COrmLog.h"
#include "COrmPreference.h"
#include "CSettingsStore.h"

#include <QDir>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
QByteArray contents(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray("cannot be opened");
}

QJsonObject parsed(const QString& strFile)
{
    return QJsonDocument::fromJson(contents(strFile)).object();
}

void writeFile(const QString& strFile, const QByteArray& baContent)
{
    QFile objFile(strFile);
    QVERIFY2(objFile.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(strFile));
    QCOMPARE(objFile.write(baContent), qint64(baContent.size()));
}

/// What is logged while it lives.
class CLogRecorder
{
public:
    CLogRecorder()
    {
        m_nSink = getLogObject()->addSink([this](const SLogEntry& sEntry) { m_lstMessages.append(sEntry.strMessage); });
    }
    ~CLogRecorder() { getLogObject()->removeSink(m_nSink); }
    QStringList m_lstMessages;

private:
    int m_nSink;
};
} // namespace

/// The file that settings are kept in: what survives damage, other processes, newer versions and full disks.
class TestSettingsStore : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void changesOfTwoProcessesAreBothKept();
    void damageIsPutAsideUnderANameOfItsOwn();
    void damageMeanwhileLosesNothingKnown();
    void newerFileIsCopiedOnceBeforeItIsChanged();
    void newerFileThatIsOnlyReadStays();
    void heldChangesAreWrittenOnce();
    void fullDiskKeepsTheOldFileAndTheChange();
    void unwritableFolderIsToldOnce();
    void pipeIsNotWaitedFor();
    void killedWhileWriting();
    void defaultsAreRestored();

private:
    std::unique_ptr<QTemporaryDir> m_pFolder;
    QString m_strFile;
};

void TestSettingsStore::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    m_strFile = m_pFolder->filePath(QStringLiteral("settings.json"));
}

void TestSettingsStore::changesOfTwoProcessesAreBothKept()
{
    CSettingsStore objOne(m_strFile);
    CSettingsStore objOther(m_strFile);
    QVERIFY(objOne.value(QStringLiteral("a"), QStringLiteral("x")).isUndefined());
    QVERIFY(objOther.value(QStringLiteral("a"), QStringLiteral("y")).isUndefined());
    QVERIFY(objOne.setValue(QStringLiteral("a"), QStringLiteral("x"), 1));
    QVERIFY(objOther.setValue(QStringLiteral("a"), QStringLiteral("y"), 2));
    QVERIFY(objOne.setValue(QStringLiteral("b"), QStringLiteral("z"), 3));
    QVERIFY(!objOne.setValue(QStringLiteral("b"), QStringLiteral("z"), 3));
    QCOMPARE(contents(m_strFile),
             QJsonDocument(QJsonObject{{QStringLiteral("version"), 1},
                                       {QStringLiteral("a"), QJsonObject{{QStringLiteral("x"), 1}, {QStringLiteral("y"), 2}}},
                                       {QStringLiteral("b"), QJsonObject{{QStringLiteral("z"), 3}}}})
                 .toJson());
    // What another process chose does not change this one while it runs.
    QVERIFY(objOne.value(QStringLiteral("a"), QStringLiteral("y")).isUndefined());
    QVERIFY(objOther.setValue(QStringLiteral("a"), QStringLiteral("y"), QJsonValue(QJsonValue::Undefined)));
    QVERIFY(!parsed(m_strFile).value(QStringLiteral("a")).toObject().contains(QStringLiteral("y")));
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"settings.json"}); // no lock stays
}

void TestSettingsStore::damageIsPutAsideUnderANameOfItsOwn()
{
    for (const char* pszDamage : {"first {", "second {", "third {"})
    {
        writeFile(m_strFile, pszDamage);
        CLogRecorder objLog;
        CSettingsStore(m_strFile).setValue(QStringLiteral("a"), QStringLiteral("x"), 1);
        QCOMPARE(objLog.m_lstMessages.size(), 2);
        QVERIFY(objLog.m_lstMessages.first().startsWith(QStringLiteral("Settings %1 cannot be read, defaults are used: ").arg(m_strFile)));
        QVERIFY(objLog.m_lstMessages.last().startsWith(
            QStringLiteral("Settings %1 could not be understood and were put aside as %1.unreadable").arg(m_strFile)));
        QCOMPARE(parsed(m_strFile).value(QStringLiteral("a")).toObject().value(QStringLiteral("x")).toInt(), 1);
    }
    QCOMPARE(contents(m_strFile + QStringLiteral(".unreadable")), QByteArray("first {"));
    QCOMPARE(contents(m_strFile + QStringLiteral(".unreadable-2")), QByteArray("second {"));
    QCOMPARE(contents(m_strFile + QStringLiteral(".unreadable-3")), QByteArray("third {"));
}

void TestSettingsStore::damageMeanwhileLosesNothingKnown()
{
    CSettingsStore objStore(m_strFile);
    objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 1);
    writeFile(m_strFile, "\xff");
    objStore.setValue(QStringLiteral("a"), QStringLiteral("y"), 2);
    QCOMPARE(parsed(m_strFile).value(QStringLiteral("a")).toObject(), (QJsonObject{{QStringLiteral("x"), 1}, {QStringLiteral("y"), 2}}));
    QCOMPARE(contents(m_strFile + QStringLiteral(".unreadable")), QByteArray("\xff"));
}

void TestSettingsStore::newerFileIsCopiedOnceBeforeItIsChanged()
{
    const QByteArray baNewer = R"({"version":2,"a":{"x":5,"future":[1,2]}})";
    writeFile(m_strFile, baNewer);
    CLogRecorder objLog;
    CSettingsStore objStore(m_strFile);
    QCOMPARE(objStore.value(QStringLiteral("a"), QStringLiteral("x")).toInt(), 5);
    objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 6);
    objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 7);
    const QString strCopy = m_strFile + QStringLiteral(".version-2");
    QCOMPARE(contents(strCopy), baNewer);
    QCOMPARE(objLog.m_lstMessages,
             QStringList{QStringLiteral("Settings %1 are of a newer version, a copy of them is kept as %2").arg(m_strFile, strCopy)});
    const QJsonObject objSection = parsed(m_strFile).value(QStringLiteral("a")).toObject();
    QCOMPARE(objSection.value(QStringLiteral("x")).toInt(), 7);
    QCOMPARE(objSection.value(QStringLiteral("future")).toArray().size(), 2);
    QCOMPARE(parsed(m_strFile).value(QStringLiteral("version")).toInt(), 2);
}

void TestSettingsStore::newerFileThatIsOnlyReadStays()
{
    writeFile(m_strFile, R"({"version":2,"a":{"x":5}})");
    CSettingsStore objStore(m_strFile);
    QCOMPARE(objStore.value(QStringLiteral("a"), QStringLiteral("x")).toInt(), 5);
    QVERIFY(!objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 5));
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files), QStringList{"settings.json"});
}

void TestSettingsStore::heldChangesAreWrittenOnce()
{
    CSettingsStore objStore(m_strFile);
    objStore.hold();
    objStore.hold();
    for (int nValue = 0; nValue < 100; ++nValue)
        objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), nValue);
    QCOMPARE(objStore.value(QStringLiteral("a"), QStringLiteral("x")).toInt(), 99);
    objStore.release();
    QVERIFY(!QFile::exists(m_strFile));
    objStore.release();
    QCOMPARE(parsed(m_strFile).value(QStringLiteral("a")).toObject().value(QStringLiteral("x")).toInt(), 99);
    objStore.release(); // one too many does nothing
    objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 1);
    QCOMPARE(parsed(m_strFile).value(QStringLiteral("a")).toObject().value(QStringLiteral("x")).toInt(), 1);
}

void TestSettingsStore::fullDiskKeepsTheOldFileAndTheChange()
{
    CSettingsStore objStore(m_strFile);
    objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 1);
    const QByteArray baBefore = contents(m_strFile);
    CLogRecorder objLog;
    {
        const CFileSizeLimit objLimit(20);
        objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 2);
        objStore.setValue(QStringLiteral("a"), QStringLiteral("y"), 3);
    }
    QCOMPARE(contents(m_strFile), baBefore);
    QCOMPARE(objLog.m_lstMessages.size(), 1); // the same trouble is told once
    QVERIFY2(objLog.m_lstMessages.first().startsWith(
                 QStringLiteral("Settings %1 cannot be written, the changes count for this run only: ").arg(m_strFile)),
             qPrintable(objLog.m_lstMessages.first()));
    QCOMPARE(objStore.value(QStringLiteral("a"), QStringLiteral("x")).toInt(), 2);
    // With room again, all that could not be written is.
    objStore.setValue(QStringLiteral("b"), QStringLiteral("z"), 4);
    QCOMPARE(parsed(m_strFile).value(QStringLiteral("a")).toObject(), (QJsonObject{{QStringLiteral("x"), 2}, {QStringLiteral("y"), 3}}));
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"settings.json"});
}

void TestSettingsStore::unwritableFolderIsToldOnce()
{
    const QString strFile = m_pFolder->filePath(QStringLiteral("a file"));
    writeFile(strFile, "x");
    CLogRecorder objLog;
    CSettingsStore objStore(strFile + QStringLiteral("/settings.json")); // no folder can be made there, whoever runs this
    for (int nValue = 0; nValue < 5; ++nValue)
        objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), nValue);
    QCOMPARE(objLog.m_lstMessages.size(), 1);
    QCOMPARE(objStore.value(QStringLiteral("a"), QStringLiteral("x")).toInt(), 4);
    QCOMPARE(contents(strFile), QByteArray("x"));
}

void TestSettingsStore::pipeIsNotWaitedFor()
{
    QCOMPARE(mkfifo(QFile::encodeName(m_strFile).constData(), 0600), 0);
    CLogRecorder objLog;
    CSettingsStore objStore(m_strFile);
    objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), 1);
    QCOMPARE(objLog.m_lstMessages.size(), 2);
    QVERIFY(objLog.m_lstMessages.first().endsWith(QStringLiteral("not a regular file")));
    QCOMPARE(objStore.value(QStringLiteral("a"), QStringLiteral("x")).toInt(), 1);
}

void TestSettingsStore::killedWhileWriting()
{
    // Each child writes without end until it is killed at a moment that nobody chose; the file is whole every time.
    for (int nChild = 0; nChild < 10; ++nChild)
    {
        int anPipe[2] = {-1, -1};
        QCOMPARE(pipe(anPipe), 0);
        const pid_t nProcess = fork();
        QVERIFY(nProcess >= 0);
        if (nProcess == 0)
        {
            CSettingsStore objStore(m_strFile);
            for (int nValue = 0;; ++nValue)
            {
                objStore.setValue(QStringLiteral("a"), QStringLiteral("x"), QString(1 + nValue % 5000, QLatin1Char('x')));
                if (nValue >= nChild && write(anPipe[1], "x", 1) != 1)
                    _exit(1);
            }
        }
        close(anPipe[1]);
        char cByte = 0;
        QCOMPARE(read(anPipe[0], &cByte, 1), ssize_t(1));
        kill(nProcess, SIGKILL);
        int nStatus = 0;
        QCOMPARE(waitpid(nProcess, &nStatus, 0), nProcess);
        QVERIFY(WIFSIGNALED(nStatus));
        close(anPipe[0]);
        QVERIFY(parsed(m_strFile).value(QStringLiteral("a")).toObject().value(QStringLiteral("x")).toString().startsWith(QLatin1Char('x')));
    }
    // A lock that a dead process left holds nobody up.
    CLogRecorder objLog;
    CSettingsStore(m_strFile).setValue(QStringLiteral("b"), QStringLiteral("y"), 1);
    QCOMPARE(objLog.m_lstMessages, QStringList());
    QCOMPARE(parsed(m_strFile).value(QStringLiteral("b")).toObject().value(QStringLiteral("y")).toInt(), 1);
    QVERIFY(!QFile::exists(m_strFile + QStringLiteral(".lock")));
}

void TestSettingsStore::defaultsAreRestored()
{
    COrmPreference::setStore(m_strFile);
    COrmPreference::setDefaultColorBar({4, true});
    S3DViewSettings objView;
    COrmPreference::get3DViewPreferences(objView);
    const S3DViewSettings objDefaults = objView;
    objView.clrText = Qt::red;
    objView.nFontSize = 20;
    objView.bShowGrid = true;
    objView.strAxisX = QStringLiteral("east");
    COrmPreference::set3DViewPreferences(objView);
    COrmPreference::setUsersPreferredFormat(QStringLiteral("tif"));
    COrmPreference::getSettings()->setBrowsePath(QStringLiteral("/studies"));
    COrmPreference::getSettings()->setKeepExportPath(true);
    QSignalSpy objTold(COrmPreference::getSignalHandler(), &COrmSignalHandler::updatePreferenceSetting);
    COrmPreference::restoreDefaults();
    QCOMPARE(objTold.count(), 1);
    COrmPreference::restoreDefaults();
    QCOMPARE(objTold.count(), 1);
    COrmPreference::setStore(m_strFile); // read again
    QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, SDefaultColorBar().nColorTable);
    QVERIFY(!COrmPreference::getDefaultColorBar().bReversed);
    COrmPreference::get3DViewPreferences(objView);
    QCOMPARE(objView.clrText, objDefaults.clrText);
    QCOMPARE(objView.nFontSize, objDefaults.nFontSize);
    QVERIFY(!objView.bShowGrid);
    QCOMPARE(objView.strAxisX, objDefaults.strAxisX);
    QVERIFY(COrmPreference::getUsersPreferredFormat().isEmpty());
    QVERIFY(COrmPreference::getSettings()->getBrowsePath().isNull());
    QVERIFY(COrmPreference::getSettings()->keepExportPath()); // not a choice of the dialog
    COrmPreference::setStore(QString());
}

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settingsstore.moc"
