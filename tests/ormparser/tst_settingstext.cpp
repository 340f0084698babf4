#include "CPLClickInfo.h"
#include "CPLSequenceInfo.h"
#include "CPLSettingsFileWrapper.h"
#include "LogRecorder.h"
#include "OrmDocumentLimits.h"
#include "OrmFileReader.h"
#include "OrmSettingsText.h"
#include "TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QtTest>

#include <unistd.h>

namespace
{
/// All entries of a text in one line each, in order: "[section] key=value".
QStringList entriesOf(const OrmSettingsText& objText)
{
    QStringList lstEntries;
    for (int i = 0; i < objText.sectionCount(); ++i)
    {
        const CPLSection& objSection = objText.sectionAt(i);
        const QStringList lstKeys = objSection.keys();
        if (lstKeys.isEmpty())
            lstEntries.append(QStringLiteral("[%1]").arg(objSection.name()));
        for (const QString& strKey : lstKeys)
            lstEntries.append(QStringLiteral("[%1] %2=%3").arg(objSection.name(), strKey, objSection.value(strKey)));
    }
    return lstEntries;
}

QByteArray repeated(const QByteArray& baText, int nTimes)
{
    QByteArray baResult;
    baResult.reserve(baText.size() * nTimes);
    for (int i = 0; i < nTimes; ++i)
        baResult += baText;
    return baResult;
}

/// An index of so many results, each with a file name of its own.
QByteArray indexOf(int nResults)
{
    QByteArray baText;
    for (int i = 0; i < nResults; ++i)
        baText += "[SOLA_" + QByteArray::number(i) + "]\nMenuName=Day " + QByteArray::number(i) + "\nFileName=SOLA_" +
                  QByteArray::number(i) + ".xml\n";
    return baText;
}

constexpr auto pMenuNameTag = "MenuName";
constexpr auto pFileNameTag = "FileName";
} // namespace

class tst_settingstext : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void entriesAreTakenVerbatim_data();
    void entriesAreTakenVerbatim();
    void lineEndsDoNotMatter_data();
    void lineEndsDoNotMatter();
    void ignoredLinesAreReportedOnce();
    void refusedTexts_data();
    void refusedTexts();
    void limitsAreAcceptedAndWhatExceedsThemIsRefused_data();
    void limitsAreAcceptedAndWhatExceedsThemIsRefused();
    void wrongBytesAreShownAsReplacementMarks();
    void sectionsStayWhereTheyAre();
    void aFailedLoadForgetsTheTextBefore();

    void clickInfoGivesSectionsAndValues();
    void oneKeyIsReadFromAFile_data();
    void oneKeyIsReadFromAFile();
    void aMissingClickInfoHasNoSections();
    void clickNumbersInOrder_data();
    void clickNumbersInOrder();
    void aHugeClickCountCostsNothing();
    void sequenceInfoLooksUpSections();

    void resultsAreListedInFileOrder();
    void tagsMayBeSetBeforeOrAfterLoading_data();
    void tagsMayBeSetBeforeOrAfterLoading();
    void automaticMenuNames_data();
    void automaticMenuNames();
    void fileNamesAreFoundByMenuName_data();
    void fileNamesAreFoundByMenuName();
    void equalMenuNamesAreAllListedAndTheFirstCounts();
    void fileNamesStayInTheFolder_data();
    void fileNamesStayInTheFolder();
    void atMostTenThousandResultsAreListed_data();
    void atMostTenThousandResultsAreListed();
    void anUnreadableIndexFails_data();
    void anUnreadableIndexFails();

private:
    TestFiles m_objFiles;
};

void tst_settingstext::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
}

void tst_settingstext::entriesAreTakenVerbatim_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QStringList>("lstExpected");

    QTest::newRow("0 bytes") << QByteArray() << QStringList();
    QTest::newRow("only comments") << QByteArray("# one\n  ; two\n\t#three") << QStringList();
    QTest::newRow("a section without keys") << QByteArray("[a]\n") << QStringList{"[a]"};
    QTest::newRow("keys before the first section") << QByteArray("k=v\n[a]\nk=w") << QStringList{"[] k=v", "[a] k=w"};
    QTest::newRow("blanks around everything") << QByteArray(" \t[ a  b\t] \n  k 1 =  v  w \t\n") << QStringList{"[a  b] k 1=v  w"};
    QTest::newRow("an empty value") << QByteArray("[a]\nk=\nl= ") << QStringList{"[a] k=", "[a] l="};
    QTest::newRow("equal signs in the value") << QByteArray("[a]\nk=a=b==c") << QStringList{"[a] k=a=b==c"};
    QTest::newRow("no lists") << QByteArray("[a]\nk=1.5;2.0,3") << QStringList{"[a] k=1.5;2.0,3"};
    QTest::newRow("no quotes") << QByteArray("[a]\nk=\"v\"") << QStringList{"[a] k=\"v\""};
    QTest::newRow("no escapes") << QByteArray("[a]\nk=\\n\\x41%41C:\\x") << QStringList{"[a] k=\\n\\x41%41C:\\x"};
    QTest::newRow("comment marks in a value") << QByteArray("[a]\nk=v # w ; x") << QStringList{"[a] k=v # w ; x"};
    QTest::newRow("a bracket in a value") << QByteArray("[a]\nk=[v]") << QStringList{"[a] k=[v]"};
    QTest::newRow("nothing is interpreted") << QByteArray("[a]\nk=@Variant(abc)\nl=%n ${HOME} $(id)")
                                            << QStringList{"[a] k=@Variant(abc)", "[a] l=%n ${HOME} $(id)"};
    QTest::newRow("a section occurs again") << QByteArray("[a]\nk=1\n[b]\nk=2\n[a]\nl=3") << QStringList{"[a] k=1", "[a] l=3", "[b] k=2"};
    QTest::newRow("a key occurs again") << QByteArray("[a]\nk=1\nl=2\nk=3") << QStringList{"[a] k=3", "[a] l=2"};
    QTest::newRow("case matters") << QByteArray("[a]\nk=1\nK=2\n[A]\nk=3") << QStringList{"[a] k=1", "[a] K=2", "[A] k=3"};
    QTest::newRow("a byte-order mark") << QByteArray("\xEF\xBB\xBF[a]\nk=1") << QStringList{"[a] k=1"};
    QTest::newRow("a remark behind a section") << QByteArray("[a] # first\nk=1") << QStringList{"[a] k=1"};
    QTest::newRow("a bracket in a section name") << QByteArray("[a]b]\nk=1") << QStringList{"[a]b] k=1"};
    QTest::newRow("the nameless section again") << QByteArray("[]\nk=1") << QStringList{"[] k=1"};
    QTest::newRow("other scripts") << QByteArray("[\xC3\xA4]\n\xE6\x97\xA5=\xF0\x9F\x90\xAD") << QStringList{QString::fromUtf8("[ä] 日=🐭")};
    QTest::newRow("blanks of other scripts stay")
        << QByteArray("[a]\nk=\xC2\xA0v\xE3\x80\x80") << QStringList{QString::fromUtf8("[a] k=\xC2\xA0v\xE3\x80\x80")};
    QTest::newRow("a tab within a value") << QByteArray("[a]\nk=v\tw") << QStringList{"[a] k=v\tw"};
    QTest::newRow("an opening bracket alone, but a key") << QByteArray("[a\n[k=1") << QStringList{"[] [k=1"};
}

void tst_settingstext::entriesAreTakenVerbatim()
{
    QFETCH(QByteArray, baText);
    QFETCH(QStringList, lstExpected);

    OrmSettingsText objText;
    QVERIFY2(objText.load(m_objFiles.write("verbatim.txt", baText)), qPrintable(objText.lastError()));
    QCOMPARE(entriesOf(objText), lstExpected);
    QVERIFY(objText.lastError().isEmpty());
}

void tst_settingstext::lineEndsDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("baEnd");
    QTest::addColumn<bool>("bFinal");
    for (const bool bFinal : {true, false})
    {
        const QByteArray baTail = bFinal ? "" : ", none at the end";
        QTest::newRow("LF" + baTail) << QByteArray("\n") << bFinal;
        QTest::newRow("CRLF" + baTail) << QByteArray("\r\n") << bFinal;
        QTest::newRow("CR" + baTail) << QByteArray("\r") << bFinal;
        QTest::newRow("mixed" + baTail) << QByteArray("mixed") << bFinal;
        QTest::newRow("blank lines" + baTail) << QByteArray("\n \r\n\r") << bFinal;
    }
}

void tst_settingstext::lineEndsDoNotMatter()
{
    QFETCH(QByteArray, baEnd);
    QFETCH(bool, bFinal);

    const QList<QByteArray> lstLines = {"[a]", "k=1", "# remark", "l = 2", "[b]", "k=3"};
    const QList<QByteArray> lstMixed = {"\n", "\r\n", "\r"};
    QByteArray baText;
    for (int i = 0; i < lstLines.size(); ++i)
    {
        baText += lstLines.at(i);
        if (bFinal || i + 1 < lstLines.size())
            baText += baEnd == "mixed" ? lstMixed.at(i % 3) : baEnd;
    }
    OrmSettingsText objText;
    QVERIFY(objText.parse(baText, "text"));
    QCOMPARE(entriesOf(objText), (QStringList{"[a] k=1", "[a] l=2", "[b] k=3"}));
}

void tst_settingstext::ignoredLinesAreReportedOnce()
{
    LogRecorder objLog;
    OrmSettingsText objText;
    QVERIFY(objText.parse("[a]\r\nk=1\rneither\r\n=no key\n[open\nl=2\n", "settings"));
    QCOMPARE(entriesOf(objText), (QStringList{"[a] k=1", "[a] l=2"}));
    QVERIFY2(objLog.isOne(2, "settings: line 3 is neither a section nor a key and is ignored (3 such lines)"),
             qPrintable(objLog.messages().join('\n')));
}

void tst_settingstext::refusedTexts_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strReason");

    QTest::newRow("UTF-16, low byte first, with a mark") << QByteArray("\xFF\xFE[\0a\0]\0", 8) << "encoding not supported";
    QTest::newRow("UTF-16, high byte first, with a mark") << QByteArray("\xFE\xFF\0[\0a\0]", 8) << "encoding not supported";
    QTest::newRow("UTF-16, low byte first") << QByteArray("[\0a\0]\0", 6) << "encoding not supported";
    QTest::newRow("UTF-16, high byte first") << QByteArray("\0[\0a\0]", 6) << "encoding not supported";
    QTest::newRow("NUL in a value") << QByteArray("[a]\nk=1\0002\n", 10) << "NUL byte in line 2";
    QTest::newRow("nothing but NUL") << QByteArray(1000, '\0') << "NUL byte in line 1";
}

void tst_settingstext::refusedTexts()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strReason);

    const QString strFile = m_objFiles.write("refused.txt", baText);
    LogRecorder objLog;
    OrmSettingsText objText;
    QVERIFY(!objText.load(strFile));
    QCOMPARE(objText.sectionCount(), 0);
    QVERIFY2(objText.lastError().startsWith(strFile + ": " + strReason), qPrintable(objText.lastError()));
    QVERIFY(objLog.isOne(3, objText.lastError()));
}

void tst_settingstext::limitsAreAcceptedAndWhatExceedsThemIsRefused_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strReason"); // null: accepted

    const int nLine = static_cast<int>(OrmDocumentLimits::nSettingsLineBytes);
    const int nEntries = static_cast<int>(OrmDocumentLimits::nSettingsEntries);
    const int nBytes = static_cast<int>(OrmDocumentLimits::nSettingsTextBytes);
    for (const int nMore : {-1, 0})
    {
        QTest::addRow("a line of the limit %+d", nMore) << "k=" + QByteArray(nLine - 2 + nMore, 'v') << QString();
        QTest::addRow("keys of the limit %+d", nMore) << repeated("k=v\n", nEntries + nMore) << QString();
        QTest::addRow("sections of the limit %+d", nMore) << repeated("[s]\n", nEntries + nMore) << QString();
        QTest::addRow("a text of the limit %+d", nMore)
            << repeated("#23456789012345\n", nBytes / 16 - 1) + QByteArray(16 + nMore, '#') << QString();
    }
    QTest::newRow("a line too long") << "[a]\nk=" + QByteArray(nLine - 1, 'v') << "line 2 is longer than 65536 bytes";
    QTest::newRow("a line of 50 MB") << "k=" + QByteArray(50000000, 'v') << "too large: 50000002 bytes, of at most 16777216";
    QTest::newRow("too many keys") << repeated("k=v\n", nEntries + 1) << "more than 100000 entries";
    QTest::newRow("300000 keys") << repeated("k=v\n", 300000) << "more than 100000 entries";
    QTest::newRow("too many sections") << repeated("[s]\n", nEntries + 1) << "more than 100000 entries";
    QTest::newRow("a text too large") << repeated("#23456789012345\n", nBytes / 16) + "#"
                                      << "too large: 16777217 bytes, of at most 16777216";
}

void tst_settingstext::limitsAreAcceptedAndWhatExceedsThemIsRefused()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strReason);

    const QString strFile = m_objFiles.write("limits.txt", baText);
    OrmSettingsText objText;
    QCOMPARE(objText.load(strFile), strReason.isNull());
    QVERIFY2(strReason.isNull() || objText.lastError() == strFile + ": " + strReason, qPrintable(objText.lastError()));
    OrmSettingsText objParsed;
    QCOMPARE(objParsed.parse(baText, strFile), strReason.isNull());
    QCOMPARE(objParsed.lastError(), objText.lastError());
}

void tst_settingstext::wrongBytesAreShownAsReplacementMarks()
{
    LogRecorder objLog;
    OrmSettingsText objText;
    QVERIFY(objText.parse("[a]\nk=Schm\xFCtz\nl=good\nm=\xC3", "settings"));
    QCOMPARE(objText.section("a")->value("k"), QString::fromUtf8("Schm\xEF\xBF\xBDtz"));
    QCOMPARE(objText.section("a")->value("l"), QStringLiteral("good"));
    QVERIFY2(objLog.isOne(2, "settings: line 2 is not UTF-8"), qPrintable(objLog.messages().join('\n')));
}

void tst_settingstext::sectionsStayWhereTheyAre()
{
    OrmSettingsText objText;
    QVERIFY(objText.parse("[first]\nk=1\n" + repeated("[s]\nk=2\n", 100) + indexOf(2000), "text"));
    const CPLSection* pSection = objText.section("first");
    QVERIFY(pSection);
    QCOMPARE(objText.section("SOLA_1999")->value(pMenuNameTag), QStringLiteral("Day 1999"));
    QCOMPARE(pSection, &objText.sectionAt(0));
    QString strName = "before";
    QCOMPARE(pSection->getSectionName(&strName, false), 0);
    QCOMPARE(strName, QStringLiteral("first"));
    QVERIFY(pSection->getSectionName(nullptr, false) != 0);
    QString strValue = "before";
    QVERIFY(pSection->getValue("none", &strValue) != 0);
    QCOMPARE(strValue, QStringLiteral("before"));
    QVERIFY(pSection->value("none").isNull());
    QVERIFY(!objText.section("none"));
}

void tst_settingstext::aFailedLoadForgetsTheTextBefore()
{
    OrmSettingsText objText;
    QVERIFY(objText.parse("[a]\nk=1", "text"));
    QVERIFY(!objText.load(m_objFiles.path("none.txt")));
    QCOMPARE(objText.sectionCount(), 0);
    QVERIFY(!objText.section("a"));
    QVERIFY(objText.lastError().contains("none.txt: No such file or directory"));
    QVERIFY(objText.parse("[b]\nk=1", "text"));
    QVERIFY(objText.lastError().isEmpty());
}

void tst_settingstext::clickInfoGivesSectionsAndValues()
{
    const QString strFile = m_objFiles.write("ClickInfo.txt", "[photographic image]\nImage File=photograph.png\n[luminescent image]\n"
                                                              "Image Subtype=fluorescent\nFL x-spot=1.25;2.0\nFL y-spot=0.50\n");
    CPLClickInfo objInfo;
    QVERIFY(!objInfo.isSectionPresent("luminescent image"));
    QCOMPARE(objInfo.loadClickInfo(strFile, false), 0);
    QVERIFY(objInfo.isSectionPresent("luminescent image"));
    QVERIFY(objInfo.isSectionPresent("photographic image"));
    QVERIFY(!objInfo.isSectionPresent("Luminescent image"));
    QVERIFY(!objInfo.isSectionPresent("structure image"));
    QCOMPARE(objInfo.sectionNames(), (QStringList{"photographic image", "luminescent image"}));
    QString strValue;
    QCOMPARE(objInfo.getValue("luminescent image", "FL x-spot", &strValue), 0);
    QCOMPARE(strValue, QStringLiteral("1.25;2.0"));
    QVERIFY(objInfo.getValue("luminescent image", "FL z-spot", &strValue) != 0);
    QVERIFY(objInfo.getValue("structure image", "FL x-spot", &strValue) != 0);
    QCOMPARE(strValue, QStringLiteral("1.25;2.0"));
    QVERIFY(objInfo.getValue("luminescent image", "FL x-spot", nullptr) != 0);
    QCOMPARE(objInfo.section("luminescent image")->keyCount(), 3);
    QVERIFY(!objInfo.section("structure image"));
}

void tst_settingstext::oneKeyIsReadFromAFile_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strExpected"); // null: not found

    QTest::newRow("in the first section") << QByteArray("[Sequence Information]\nSequence=MH20260801") << "MH20260801";
    QTest::newRow("in a later section") << QByteArray("[a]\nk=1\n[b]\nSequence=MH2") << "MH2";
    QTest::newRow("before any section") << QByteArray("Sequence=MH3\n[b]\nSequence=MH4") << "MH3";
    QTest::newRow("in two sections, the first counts") << QByteArray("[b]\nSequence=MH5\n[a]\nSequence=MH6") << "MH5";
    QTest::newRow("empty") << QByteArray("[b]\nSequence=\n[a]\nSequence=MH6") << "";
    QTest::newRow("in other case") << QByteArray("[b]\nsequence=MH5") << QString();
    QTest::newRow("as a section") << QByteArray("[Sequence]\nk=1") << QString();
}

void tst_settingstext::oneKeyIsReadFromAFile()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strExpected);

    QString strValue = "before";
    const int nResult = CPLClickInfo::obtainValueFromClickInfoFile(m_objFiles.write("SequenceInfo.txt", baText), "Sequence", &strValue);
    QCOMPARE(nResult == 0, !strExpected.isNull());
    QCOMPARE(strValue, strExpected.isNull() ? QStringLiteral("before") : strExpected);
}

void tst_settingstext::aMissingClickInfoHasNoSections()
{
    LogRecorder objLog;
    CPLClickInfo objInfo;
    QVERIFY(objInfo.loadClickInfo(m_objFiles.path("none/ClickInfo.txt"), false) != 0);
    QVERIFY(!objInfo.isSectionPresent("luminescent image"));
    QVERIFY(objInfo.sectionNames().isEmpty());
    QVERIFY(objLog.isOne(3, "none/ClickInfo.txt: No such file or directory"));
    QVERIFY(objInfo.lastError().contains("none/ClickInfo.txt"));
    QString strValue = "before";
    QVERIFY(CPLClickInfo::obtainValueFromClickInfoFile(m_objFiles.path("none.txt"), "Sequence", &strValue) != 0);
    QCOMPARE(strValue, QStringLiteral("before"));
}

void tst_settingstext::clickNumbersInOrder_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QStringList>("lstExpected");
    QTest::addColumn<QString>("strLog"); // null: nothing

    const QByteArray baHead = "[Click Numbers]\n";
    QTest::newRow("two") << baHead + "Count=2\n1=A_001\n2=A_002" << QStringList{"A_001", "A_002"} << QString();
    QTest::newRow("by number, not by place") << baHead + "3=c\n10=j\n1=a\nCount=10\n2=b\n4=d\n5=e\n6=f\n7=g\n8=h\n9=i"
                                             << QStringList{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"} << QString();
    QTest::newRow("a gap") << baHead + "Count=3\n1=a\n3=c" << QStringList{"a", "c"}
                           << "says 3 clicks but has 2; the first one missing is 2";
    QTest::newRow("one too few") << baHead + "Count=3\n1=a\n2=b" << QStringList{"a", "b"} << "the first one missing is 3";
    QTest::newRow("one too many") << baHead + "Count=3\n1=a\n2=b\n3=c\n4=d" << QStringList{"a", "b", "c"}
                                  << "has 1 clicks more than the 3 it says";
    QTest::newRow("number 0 is none") << baHead + "Count=1\n0=z\n1=a" << QStringList{"a"} << QString();
    QTest::newRow("other spellings are none") << baHead + "Count=2\n1=a\n02=x\n+2=y\n 2 =b\n2.0=z" << QStringList{"a", "b"} << QString();
    QTest::newRow("a number given twice") << baHead + "Count=1\n1=a\n1=b" << QStringList{"b"} << QString();
    QTest::newRow("no clicks") << baHead + "Count=0" << QStringList() << QString();
    QTest::newRow("no count") << baHead + "1=a\n2=b" << QStringList() << "Count=\"\" is no count";
    QTest::newRow("a negative count") << baHead + "Count=-1\n1=a" << QStringList() << "Count=\"-1\" is no count";
    QTest::newRow("a count with a fraction") << baHead + "Count=2.0\n1=a\n2=b" << QStringList() << "Count=\"2.0\" is no count";
    QTest::newRow("a count of 20 digits") << baHead + "Count=12345678901234567890\n1=a" << QStringList() << "is no count";
    QTest::newRow("no section") << QByteArray("[Clicks]\nCount=1\n1=a") << QStringList() << QString();
}

void tst_settingstext::clickNumbersInOrder()
{
    QFETCH(QByteArray, baText);
    QFETCH(QStringList, lstExpected);
    QFETCH(QString, strLog);

    CPLSequenceInfo objInfo;
    QCOMPARE(objInfo.loadFile(m_objFiles.write("SequenceInfo.txt", baText)), 0);
    LogRecorder objLog;
    QCOMPARE(objInfo.getClickNumberList(), lstExpected);
    QVERIFY2(strLog.isNull() ? objLog.entries().isEmpty() : objLog.isOne(2, strLog), qPrintable(objLog.messages().join('\n')));
}

void tst_settingstext::aHugeClickCountCostsNothing()
{
    CPLSequenceInfo objInfo;
    QCOMPARE(objInfo.loadFile(m_objFiles.write("SequenceInfo.txt", "[Click Numbers]\nCount=2147483647\n1=a\n2147483647=z\n")), 0);
    QElapsedTimer objTimer;
    objTimer.start();
    QCOMPARE(objInfo.getClickNumberList(), (QStringList{"a", "z"}));
    QVERIFY(objTimer.elapsed() < 1000);
}

void tst_settingstext::sequenceInfoLooksUpSections()
{
    CPLSequenceInfo objInfo;
    QVERIFY(objInfo.loadFile(m_objFiles.path("none.txt")) != 0);
    QVERIFY(objInfo.getClickNumberList().isEmpty());
    QVERIFY(!objInfo["CT Acquisition Parameters"]);
    QCOMPARE(objInfo.loadFile(m_objFiles.write("SequenceInfo.txt", "[Sequence Information]\nSequence=MH\n[CT Acquisition Parameters]\n")),
             0);
    QVERIFY(objInfo.isSectionPresent("CT Acquisition Parameters"));
    CPLSection* pSection = objInfo["CT Acquisition Parameters"];
    QVERIFY(pSection);
    QString strName;
    QCOMPARE(pSection->getSectionName(&strName, false), 0);
    QCOMPARE(strName, QStringLiteral("CT Acquisition Parameters"));
    QVERIFY(!strName.isNull());
    QVERIFY(!objInfo["CT"]);
    QCOMPARE(objInfo.value("Sequence Information", "Sequence"), QStringLiteral("MH"));
    QVERIFY(objInfo.value("Sequence Information", "Subject").isNull());
    QVERIFY(objInfo.value("none", "Sequence").isNull());
    QVERIFY(objInfo.lastError().isEmpty());
}

void tst_settingstext::resultsAreListedInFileOrder()
{
    const QString strFile = m_objFiles.write(
        "SOLA.txt", "[SOLA_2]\nMenuName=Day 4, 5 wavelengths\nFileName=SOLA_2.xml\n[SOLA_1]\nFileName=SOLA_1.xml\nMenuName= Day 0 \n");
    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag("SOLA_");
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    objIndex.setSettingsFileName(strFile);
    QVERIFY(objIndex.getMenuNames("SOLA").isEmpty());
    QCOMPARE(objIndex.load(), 0);
    QCOMPARE(objIndex.getMenuNames("SOLA"), (QStringList{"Day 4, 5 wavelengths", "Day 0"}));
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), QStringLiteral("SOLA_1.xml"));
}

void tst_settingstext::tagsMayBeSetBeforeOrAfterLoading_data()
{
    QTest::addColumn<bool>("bBefore");
    QTest::newRow("before") << true;
    QTest::newRow("after") << false;
}

void tst_settingstext::tagsMayBeSetBeforeOrAfterLoading()
{
    QFETCH(bool, bBefore);

    const QString strFile = m_objFiles.write("NOVA.txt", "[NOVA_1]\nTitle=Day 0\nPlace=NOVA_1.xml\n");
    CPLSettingsFileWrapper objIndex;
    const auto setTags = [&]
    {
        objIndex.setMenuNameTag("Title");
        objIndex.setFileNameTag("Place");
    };
    if (bBefore)
        setTags();
    QCOMPARE(objIndex.load(strFile), 0);
    if (!bBefore)
        setTags();
    QCOMPARE(objIndex.getMenuNames("NOVA"), QStringList{"Day 0"});
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), QStringLiteral("NOVA_1.xml"));
}

void tst_settingstext::automaticMenuNames_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strTag");
    QTest::addColumn<QStringList>("lstExpected");

    QTest::newRow("a name is given") << QByteArray("[SOLA_1]\nMenuName=Day 0") << "SOLA_" << QStringList{"Day 0"};
    QTest::newRow("a name under any section") << QByteArray("[Result]\nMenuName=Day 0") << "SOLA_" << QStringList{"Day 0"};
    QTest::newRow("none") << QByteArray("[SOLA_1]\nFileName=a.xml") << "SOLA_" << QStringList{"SOLA_1"};
    QTest::newRow("an empty one") << QByteArray("[SOLA_1]\nMenuName=\nFileName=a.xml") << "SOLA_" << QStringList{"SOLA_1"};
    QTest::newRow("none under another section")
        << QByteArray("[General]\nVersion=1\n[SOLA_1]\nFileName=a.xml") << "SOLA_" << QStringList{"SOLA_1"};
    QTest::newRow("the tag of the other kind") << QByteArray("[SOLA_1]\nFileName=a.xml") << "NOVA_" << QStringList();
    QTest::newRow("the tag in other case") << QByteArray("[sola_1]\nFileName=a.xml") << "SOLA_" << QStringList();
    QTest::newRow("no tag is set") << QByteArray("[SOLA_1]\nFileName=a.xml") << QString() << QStringList{"SOLA_1"};
    QTest::newRow("the nameless section has no name") << QByteArray("FileName=a.xml") << QString() << QStringList();
    QTest::newRow("an empty section") << QByteArray("[SOLA_9]") << "SOLA_" << QStringList{"SOLA_9"};
}

void tst_settingstext::automaticMenuNames()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strTag);
    QFETCH(QStringList, lstExpected);

    CPLSettingsFileWrapper objIndex;
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", baText)), 0);
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    if (!strTag.isNull())
        objIndex.setAutoMenuNameTag(strTag);
    QCOMPARE(objIndex.getMenuNames("SOLA"), lstExpected);
}

void tst_settingstext::fileNamesAreFoundByMenuName_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strExpected");

    QTest::newRow("exact") << "Day 0"
                           << "zero.xml";
    QTest::newRow("exact comes before the first like it") << "DAY 0"
                                                          << "upper.xml";
    QTest::newRow("in other case") << "dAY 0"
                                   << "zero.xml";
    QTest::newRow("by its section") << "SOLA_4"
                                    << "four.xml";
    QTest::newRow("by its section in other case") << "sola_4"
                                                  << "four.xml";
    QTest::newRow("unknown") << "Day 9"
                             << "";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("without a file name") << "no file"
                                         << "";
    QTest::newRow("with an empty file name") << "empty file"
                                             << "";
    QTest::newRow("with the mark for none") << "dash"
                                            << "";
    QTest::newRow("plain text, not a pattern") << "Day *"
                                               << "";
}

void tst_settingstext::fileNamesAreFoundByMenuName()
{
    QFETCH(QString, strName);
    QFETCH(QString, strExpected);

    CPLSettingsFileWrapper objIndex;
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", "[SOLA_1]\nMenuName=Day 0\nFileName=zero.xml\n"
                                                        "[SOLA_2]\nMenuName=DAY 0\nFileName=upper.xml\n"
                                                        "[SOLA_4]\nFileName=four.xml\n[SOLA_5]\nMenuName=no file\n"
                                                        "[SOLA_6]\nMenuName=empty file\nFileName=\n[SOLA_7]\nMenuName=dash\nFileName=-\n")),
             0);
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    QCOMPARE(objIndex.getFileNameForMenuName(strName, "-"), strExpected);
}

void tst_settingstext::equalMenuNamesAreAllListedAndTheFirstCounts()
{
    CPLSettingsFileWrapper objIndex;
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", "[SOLA_1]\nMenuName=Day 0\nFileName=one.xml\n"
                                                        "[SOLA_2]\nMenuName=Day 0\nFileName=two.xml\n"
                                                        "[SOLA_3]\nMenuName=Day 4\nFileName=one.xml\n")),
             0);
    LogRecorder objLog;
    QCOMPARE(objIndex.getMenuNames("SOLA"), (QStringList{"Day 0", "Day 0", "Day 4"}));
    QVERIFY2(objLog.isOne(2, "several SOLA results are named \"Day 0\"; the first one is the one that loads"),
             qPrintable(objLog.messages().join('\n')));
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), QStringLiteral("one.xml"));
    QCOMPARE(objIndex.getFileNameForMenuName("Day 4", "-"), QStringLiteral("one.xml"));
}

void tst_settingstext::fileNamesStayInTheFolder_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bAccepted");

    QTest::newRow("a file") << "good.xml" << true;
    QTest::newRow("a file that is missing") << "none.xml" << true;
    QTest::newRow("a file in a folder below") << "below/good.xml" << true;
    QTest::newRow("up and down again") << "below/../good.xml" << true;
    QTest::newRow("here") << "./good.xml" << true;
    QTest::newRow("two points in a name") << "a..b.xml" << true;
    QTest::newRow("255 bytes") << QString(251, 'n') + ".xml" << true;
    QTest::newRow("a link to a sibling") << "sibling.xml" << true;
    QTest::newRow("a link to a link to a sibling") << "chain.xml" << true;
    QTest::newRow("through a linked folder that is inside") << "linkbelow/good.xml" << true;
    QTest::newRow("up") << "../outside.xml" << false;
    QTest::newRow("far up") << "../../../etc/passwd" << false;
    QTest::newRow("up through a folder") << "below/../../outside.xml" << false;
    QTest::newRow("up through a folder that is missing") << "a/../../x" << false;
    QTest::newRow("absolute") << "/etc/passwd" << false;
    QTest::newRow("absolute, twice") << "//etc/passwd" << false;
    QTest::newRow("absolute, though inside") << m_objFiles.path("XML/good.xml") << false;
    QTest::newRow("a drive") << "C:\\x" << false;
    QTest::newRow("a drive with a slash") << "C:/x" << false;
    QTest::newRow("a server") << "\\\\srv\\x" << false;
    QTest::newRow("backwards up") << "..\\outside.xml" << false;
    QTest::newRow("an address") << "file:///etc/passwd" << false;
    QTest::newRow("a home") << "~/x" << false;
    QTest::newRow("the folder itself") << "." << false;
    QTest::newRow("the folder above") << ".." << false;
    QTest::newRow("the folder itself the long way") << "below/.." << false;
    QTest::newRow("a folder") << "below/" << false;
    QTest::newRow("a link to outside") << "outside.xml" << false;
    QTest::newRow("an absolute link to outside") << "absolute.xml" << false;
    QTest::newRow("a link to outside that is missing") << "dangling.xml" << false;
    QTest::newRow("a link in a circle") << "loop.xml" << false;
    QTest::newRow("through a linked folder outside") << "linkoutside/outside.xml" << false;
    QTest::newRow("through a link to process descriptors") << "fd/0" << false;
}

void tst_settingstext::fileNamesStayInTheFolder()
{
    QFETCH(QString, strName);
    QFETCH(bool, bAccepted);

    QDir objTop(m_objFiles.folder());
    if (!objTop.exists("XML"))
    {
        QVERIFY(objTop.mkpath("XML/below"));
        QVERIFY(objTop.mkpath("other"));
        for (const char* pName : {"XML/good.xml", "XML/below/good.xml", "outside.xml", "other/outside.xml"})
            QVERIFY(!m_objFiles.write(pName, "x").isNull());
        const auto link = [&](const QString& strTarget, const QString& strLink) {
            return symlink(QFile::encodeName(strTarget).constData(), QFile::encodeName(m_objFiles.path("XML/" + strLink)).constData()) == 0;
        };
        QVERIFY(link("good.xml", "sibling.xml") && link("sibling.xml", "chain.xml") && link("below", "linkbelow"));
        QVERIFY(link("../outside.xml", "outside.xml") && link(m_objFiles.path("outside.xml"), "absolute.xml"));
        QVERIFY(link("../none.xml", "dangling.xml") && link("loop.xml", "loop.xml") && link("../other", "linkoutside"));
        QVERIFY(link("/proc/self/fd", "fd"));
    }
    CPLSettingsFileWrapper objIndex;
    QCOMPARE(objIndex.load(m_objFiles.write("XML/SOLA.txt", "[SOLA_1]\nMenuName=Day 0\nFileName=" + strName.toUtf8() + "\n")), 0);
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    LogRecorder objLog;
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), bAccepted ? strName : QString());
    QVERIFY2(bAccepted ? objLog.entries().isEmpty() : objLog.isOne(3, "XML/SOLA.txt: [SOLA_1] FileName=\"" + strName + "\": "),
             qPrintable(objLog.messages().join('\n')));

    // Reading by that name keeps to the same rule.
    QByteArray baContent = "before";
    const bool bThere = bAccepted && QFile::exists(m_objFiles.path("XML/" + strName));
    QCOMPARE(OrmFileReader::readBeneath(m_objFiles.path("XML"), strName, baContent), bThere);
    QCOMPARE(baContent, bThere ? QByteArray("x") : QByteArray("before"));
}

void tst_settingstext::atMostTenThousandResultsAreListed_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<int>("nListed");
    QTest::newRow("just below") << 9999 << 9999;
    QTest::newRow("at the limit") << 10000 << 10000;
    QTest::newRow("one more") << 10001 << 10000;
    QTest::newRow("many more") << 40000 << 10000;
}

void tst_settingstext::atMostTenThousandResultsAreListed()
{
    QFETCH(int, nResults);
    QFETCH(int, nListed);

    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag("SOLA_");
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", indexOf(nResults))), 0);
    LogRecorder objLog;
    const QStringList lstNames = objIndex.getMenuNames("SOLA");
    QCOMPARE(lstNames.size(), nListed);
    QCOMPARE(lstNames.last(), QStringLiteral("Day %1").arg(nListed - 1));
    if (nResults > nListed)
        QVERIFY(objLog.isOne(2, QStringLiteral("%1 SOLA results beyond the first 10000 are not listed").arg(nResults - nListed)));
    else
        QVERIFY(objLog.entries().isEmpty());
    QCOMPARE(objIndex.getFileNameForMenuName(lstNames.last(), "-"), QStringLiteral("SOLA_%1.xml").arg(nListed - 1));
}

void tst_settingstext::anUnreadableIndexFails_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("a missing one") << m_objFiles.path("XML2/SOLA.txt") << "No such file or directory";
    QTest::newRow("a folder") << m_objFiles.folder() << "not a regular file";
    QTest::newRow("no name") << QString() << "no file name";
    QTest::newRow("a device") << "/dev/zero"
                              << "not a regular file";
}

void tst_settingstext::anUnreadableIndexFails()
{
    QFETCH(QString, strPath);
    QFETCH(QString, strReason);

    CPLSettingsFileWrapper objIndex;
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setSettingsFileName(strPath);
    QVERIFY(objIndex.load() != 0);
    QVERIFY(objIndex.load(strPath) != 0);
    QVERIFY2(objIndex.lastError().contains(strReason), qPrintable(objIndex.lastError()));
    QVERIFY(objIndex.getMenuNames("SOLA").isEmpty());
    QVERIFY(objIndex.getFileNameForMenuName("Day 0", "-").isEmpty());
}

QTEST_GUILESS_MAIN(tst_settingstext)
#include "tst_settingstext.moc"
