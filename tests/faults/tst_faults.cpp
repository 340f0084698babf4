#include "DriverRun.h"
#include "OrmTestMain.h"

#include <QtTest>

/// Every allocation and every call about a file fails, one after the other, once and for ever, in each piece of work that reads or writes
/// files. What is right then is told by the works of the driver.
class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void aFaultLeavesAllAsItWasOrDone_data();
    void aFaultLeavesAllAsItWasOrDone();
    void theDriverNoticesWhatIsWrong();
};

void TestFaults::aFaultLeavesAllAsItWasOrDone_data()
{
    QTest::addColumn<QString>("strWork");
    QTest::addColumn<QString>("strFault");
    QTest::addColumn<QString>("strHowOften");
    QTest::addColumn<int>("nStride"); // in a plain run
    const auto add = [](const char* pWork, const char* pFault, const char* pHowOften, int nStride)
    { QTest::addRow("%s, %s, %s", pWork, pFault, pHowOften) << pWork << pFault << pHowOften << nStride; };
    for (const char* pHowOften : {"once", "ever"})
    {
        for (const char* pWork : {"read-sola-1.0", "read-sola-2.0", "read-nova-1.0", "read-nova-2.0", "read-sola-2.0-cells",
                                  "read-sola-2.0-mismatch", "read-nova-2.0-mismatch", "refine", "index", "sequence", "click"})
            add(pWork, "memory", pHowOften, 1);
        for (const char* pWork : {"press-sola", "press-nova"})
            add(pWork, "memory", pHowOften, 97);
        for (const char* pWork : {"picture-png", "picture-jpg", "picture-bmp", "picture-tif", "picture-eps"})
            add(pWork, "memory", pHowOften, 1);
        for (const char* pWork : {"read-sola-2.0", "read-nova-2.0", "index", "sequence", "click", "press-sola", "press-nova", "settings",
                                  "picture-png", "picture-jpg", "picture-bmp", "picture-tif", "picture-eps"})
        {
            for (const char* pFault : {"EIO", "ENOSPC"})
                add(pWork, pFault, pHowOften, 1);
        }
        for (const char* pWork : {"read-sola-1.0", "index", "press-sola", "press-nova"})
        {
            for (const char* pFault : {"ESTALE", "EINTR"})
                add(pWork, pFault, pHowOften, 1);
        }
    }
    // Qt's JSON objects end the program where there is no memory for ever.
    add("settings", "memory", "once", 1);
    for (const char* pFault : {"ESTALE", "EINTR"})
        add("picture-eps", pFault, "once", 1);
    for (const char* pWork : {"read-sola-1.0", "index", "press-sola", "press-nova", "picture-eps"})
        add(pWork, "short", "once", 1);
    for (const char* pWork : {"read-nova-2.0", "settings", "picture-bmp", "press-sola"})
        add(pWork, "short", "ever", 1);
}

void TestFaults::aFaultLeavesAllAsItWasOrDone()
{
    QFETCH(QString, strWork);
    QFETCH(QString, strFault);
    QFETCH(QString, strHowOften);
    QFETCH(int, nStride);
    const SDriverRun objRun = runDriver({strWork, strFault, strHowOften, QString::number(triesAll() ? 1 : nStride)});
    QVERIFY2(objRun.nExit == 0, qPrintable(objRun.strOutput));
    QVERIFY2(objRun.strOutput.contains(", 0 wrong"), qPrintable(objRun.strOutput));
}

void TestFaults::theDriverNoticesWhatIsWrong()
{
    const SDriverRun objWrong = runDriver({"careless", "EIO", "once", "1"});
    QCOMPARE(objWrong.nExit, 1);
    QVERIFY2(objWrong.strOutput.contains("it passes for written and is not"), qPrintable(objWrong.strOutput));
    QCOMPARE(runDriver({"nothing", "EIO", "once", "1"}).nExit, 2);
}

int main(int nArguments, char** ppArguments)
{
    allowLongFunctions();
    // An application with windows: a virtual display starts anew, deaf for a moment, whenever its last client goes.
    return runOrmTest<TestFaults>(nArguments, ppArguments);
}

#include "tst_faults.moc"
