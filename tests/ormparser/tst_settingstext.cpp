#include "CPLClickInfo.h"
#include "CPLSequenceInfo.h"
#include "CProcessorMeter.h"
#include "LogRecorder.h"
#include "OrmDocumentLimits.h"
#include "OrmSettingsText.h"
#include "TestFiles.h"

#include <QtTest>

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
} // namespace

/// The text of settings, and the information files of clicks and sequences that are made of it.
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
    // A control character is shown as well, and does not hide what stands behind it.
    QVERIFY(objText.parse("[a]\nk=\x01Schm\xFCtz\nl=good\x02\nm=\xC3", "settings"));
    QCOMPARE(objText.section("a")->value("k"), QString::fromUtf8("\x01"
                                                                 "Schm\xEF\xBF\xBDtz"));
    QCOMPARE(objText.section("a")->value("l"), QStringLiteral("good\x02"));
    QVERIFY2(objLog.isOne(2, "settings: line 2 is not UTF-8"), qPrintable(objLog.messages().join('\n')));
}

void tst_settingstext::sectionsStayWhereTheyAre()
{
    OrmSettingsText objText;
    QByteArray baMany;
    for (int i = 0; i < 2000; ++i)
        baMany += "[section " + QByteArray::number(i) + "]\nk=" + QByteArray::number(i) + "\n";
    QVERIFY(objText.parse("[first]\nk=1\n" + repeated("[s]\nk=2\n", 100) + baMany, "text"));
    const CPLSection* pSection = objText.section("first");
    QVERIFY(pSection);
    QCOMPARE(objText.section("section 1999")->value("k"), QStringLiteral("1999"));
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
    const CProcessorMeter objMeter;
    QCOMPARE(objInfo.getClickNumberList(), (QStringList{"a", "z"}));
    QVERIFY(objMeter.isWithinPatience());
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

QTEST_GUILESS_MAIN(tst_settingstext)
#include "tst_settingstext.moc"
