#include "COrmDemoStudy.h"
#include "OrmTestMain.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

/// Where the demo study comes from, and what becomes of a making that ends early.
class TestDemoStudy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nothingThereOffersNothing();
    void studyBesideTheProgramIsUsed_data();
    void studyBesideTheProgramIsUsed();
    void studyIsMadeOnce();
    void makingCanBeCancelled();
    void makingEndsWithTheProgram();
    void failureIsTold_data();
    void failureIsTold();
    void emptyFolderIsNoStudy();

private:
    QString programs() const { return m_pFolder->filePath(QStringLiteral("build/bin")); }
    QString data() const { return m_pFolder->filePath(QStringLiteral("home/data/Ormelle")); }
    QStringList inData() const { return QDir(data()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot); }
    /// Puts a script in the place of ormphantom; its last argument is the folder.
    void setMaker(const QByteArray& byScript) const;
    static void addSequence(const QString& strStudy);

    std::unique_ptr<QTemporaryDir> m_pFolder;
    std::unique_ptr<COrmDemoStudy> m_pDemo;
};

void TestDemoStudy::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(programs()));
    m_pDemo = std::make_unique<COrmDemoStudy>(programs(), data());
}

void TestDemoStudy::cleanup()
{
    m_pDemo.reset();
    m_pFolder.reset();
}

void TestDemoStudy::setMaker(const QByteArray& byScript) const
{
    QFile objFile(programs() + QStringLiteral("/ormphantom"));
    QVERIFY(objFile.open(QIODevice::WriteOnly));
    objFile.write("#!/bin/sh\nfor out in \"$@\"; do :; done\n" + byScript);
    QVERIFY(objFile.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void TestDemoStudy::addSequence(const QString& strStudy)
{
    QVERIFY(QDir().mkpath(strStudy + QStringLiteral("/A")));
    QFile objFile(strStudy + QStringLiteral("/A/SequenceInfo.txt"));
    QVERIFY(objFile.open(QIODevice::WriteOnly));
}

void TestDemoStudy::nothingThereOffersNothing()
{
    QVERIFY(!m_pDemo->isOffered());
    QSignalSpy objFailed(m_pDemo.get(), &COrmDemoStudy::failed);
    m_pDemo->start();
    QCOMPARE(objFailed.count(), 1);
    QVERIFY(objFailed.first().first().toString().contains(QStringLiteral("Open a study of your own")));
    QVERIFY(!QFile::exists(data()));
}

void TestDemoStudy::studyBesideTheProgramIsUsed_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("beside it") << "build/bin/demo-study";
    QTest::newRow("above it") << "build/demo-study";
    QTest::newRow("in the user's data") << "home/data/Ormelle/demo-study";
}

void TestDemoStudy::studyBesideTheProgramIsUsed()
{
    QFETCH(QString, place);
    addSequence(m_pFolder->filePath(place));
    QVERIFY(m_pDemo->isOffered());
    QSignalSpy objReady(m_pDemo.get(), &COrmDemoStudy::ready);
    QSignalSpy objStarted(m_pDemo.get(), &COrmDemoStudy::started);
    m_pDemo->start();
    QCOMPARE(objReady.count(), 1);
    QCOMPARE(objReady.first().first().toString(), m_pFolder->filePath(place));
    QCOMPARE(objStarted.count(), 0);
    QVERIFY(!m_pDemo->isBusy());
}

void TestDemoStudy::studyIsMadeOnce()
{
    QVERIFY(QFile::link(QStringLiteral(ORM_BINARY_DIR "/bin/ormphantom"), programs() + QStringLiteral("/ormphantom")));
    QVERIFY(m_pDemo->isOffered());
    QSignalSpy objReady(m_pDemo.get(), &COrmDemoStudy::ready);
    QSignalSpy objStarted(m_pDemo.get(), &COrmDemoStudy::started);
    QSignalSpy objFailed(m_pDemo.get(), &COrmDemoStudy::failed);
    QSignalSpy objProgress(m_pDemo.get(), &COrmDemoStudy::progress);
    m_pDemo->start();
    m_pDemo->start(); // a second press while it works
    QVERIFY(m_pDemo->isBusy());
    QTRY_COMPARE_WITH_TIMEOUT(objReady.count() + objFailed.count(), 1, 60000);
    QCOMPARE(objFailed.count(), 0);
    const QString strStudy = data() + QStringLiteral("/demo-study");
    QCOMPARE(objReady.first().first().toString(), strStudy);
    QCOMPARE(QDir(strStudy).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 10);
    QCOMPARE(inData(), QStringList{"demo-study"});
    QCOMPARE(objStarted.count(), 1);
    for (const QList<QVariant>& lstArguments : objProgress)
    {
        QVERIFY(lstArguments.at(0).toInt() <= 10);
        QCOMPARE(lstArguments.at(1).toInt(), 10);
    }
    m_pDemo->start();
    QCOMPARE(objReady.count(), 2);
    QCOMPARE(objStarted.count(), 1);
}

void TestDemoStudy::makingCanBeCancelled()
{
    setMaker("mkdir -p \"$out/A\" && touch \"$out/A/SequenceInfo.txt\" && exec sleep 1000\n");
    QSignalSpy objFailed(m_pDemo.get(), &COrmDemoStudy::failed);
    QSignalSpy objProgress(m_pDemo.get(), &COrmDemoStudy::progress);
    m_pDemo->start();
    QTRY_COMPARE(objProgress.isEmpty() ? -1 : objProgress.last().first().toInt(), 1); // what is written counts
    m_pDemo->cancel();
    QCOMPARE(objFailed.count(), 1);
    QCOMPARE(objFailed.first().first().toString(), QString());
    QVERIFY(!m_pDemo->isBusy());
    QCOMPARE(inData(), QStringList());
    m_pDemo->cancel(); // nothing left to cancel
    QCOMPARE(objFailed.count(), 1);
    // And it can be begun again.
    m_pDemo->start();
    QVERIFY(m_pDemo->isBusy());
}

void TestDemoStudy::makingEndsWithTheProgram()
{
    setMaker("mkdir -p \"$out/A\" && touch \"$out/A/SequenceInfo.txt\" && exec sleep 1000\n");
    QSignalSpy objProgress(m_pDemo.get(), &COrmDemoStudy::progress);
    m_pDemo->start();
    QTRY_COMPARE(objProgress.isEmpty() ? -1 : objProgress.last().first().toInt(), 1);
    m_pDemo.reset();
    QCOMPARE(inData(), QStringList());
}

void TestDemoStudy::failureIsTold_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<bool>("writable");
    QTest::addColumn<QString>("words");
    QTest::newRow("says why") << QByteArray("echo 'ormphantom: no room' >&2; exit 1\n") << true << "ormphantom: no room";
    QTest::newRow("says nothing") << QByteArray("exit 3\n") << true << "";
    QTest::newRow("dies") << QByteArray("kill -9 $$\n") << true << "";
    QTest::newRow("does nothing") << QByteArray("exit 0\n") << true << "";
    QTest::newRow("talks too much") << QByteArray("head -c 1000000 /dev/zero | tr '\\0' x; exit 1\n") << true << "xxx";
    QTest::newRow("nowhere to write") << QByteArray("exit 0\n") << false << "cannot be written";
}

void TestDemoStudy::failureIsTold()
{
    QFETCH(QByteArray, script);
    QFETCH(bool, writable);
    QFETCH(QString, words);
    setMaker(script);
    if (!writable)
    {
        QFile objFile(m_pFolder->filePath(QStringLiteral("home"))); // a file where the folders should go
        QVERIFY(objFile.open(QIODevice::WriteOnly));
    }
    QSignalSpy objFailed(m_pDemo.get(), &COrmDemoStudy::failed);
    QSignalSpy objReady(m_pDemo.get(), &COrmDemoStudy::ready);
    m_pDemo->start();
    QTRY_COMPARE(objFailed.count(), 1);
    const QString strReason = objFailed.first().first().toString();
    QVERIFY2(strReason.contains(words), qPrintable(strReason));
    QVERIFY2(strReason.contains(QStringLiteral("open a study of your own.")), qPrintable(strReason));
    QVERIFY(strReason.contains(data()));
    QVERIFY(strReason.size() < 2000);
    QCOMPARE(objReady.count(), 0);
    QCOMPARE(inData(), QStringList());
    QVERIFY(!m_pDemo->isBusy());
}

void TestDemoStudy::emptyFolderIsNoStudy()
{
    QVERIFY(QDir().mkpath(m_pFolder->filePath(QStringLiteral("build/demo-study/A"))));
    QVERIFY(!m_pDemo->isOffered());
}

ORM_TEST_MAIN(TestDemoStudy)
#include "tst_demostudy.moc"
