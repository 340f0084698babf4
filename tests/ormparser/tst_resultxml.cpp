#include "LogRecorder.h"
#include "OpenResult.h"
#include "TestDocuments.h"

#include <QtTest>

Q_DECLARE_METATYPE(std::vector<int>)

using TestDocuments::document;
using TestDocuments::numberedRows;
using TestDocuments::repeated;
using TestDocuments::section;

namespace
{
const QString strFirst = QStringLiteral("First");
const QString strSecond = QStringLiteral("Second");
} // namespace

class tst_resultxml : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void samplesOfBothVersionsAreRead();
    void versionStandsAsWritten_data();
    void versionStandsAsWritten();
    void keysAreAttributesOrChildTexts_data();
    void keysAreAttributesOrChildTexts();
    void keysOfTheSecondTagItself_data();
    void keysOfTheSecondTagItself();
    void theFirstOfEqualTagsCounts();
    void tagNamesAreComparedWhole();

    void intsAreStrict_data();
    void intsAreStrict();
    void severalIntsAtOnce_data();
    void severalIntsAtOnce();
    void aVectorOfTheRightSizeIsWrittenInPlace();
    void floatsAreStrict_data();
    void floatsAreStrict();
    void severalKeysMustAllBeThere();
    void thirdTagsAreReadWithoutChangingTheCurrentOne();
    void aMissingSecondTagLeavesNoneCurrent();
    void withoutADocumentEverythingFails();
    void aFailedLoadClosesTheDocumentBefore();
    void eachFailureIsLoggedOnce_data();
    void eachFailureIsLoggedOnce();
    void noResultsAreWritten();

private:
    TestFiles m_objFiles;
};

void tst_resultxml::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
}

void tst_resultxml::samplesOfBothVersionsAreRead()
{
    const QString strData = "Orm3.0.SOLA.Data";
    CPLResultXMLWrapper objOld;
    QVERIFY2(objOld.loadXMLFile(m_objFiles.write("old.xml", TestDocuments::sample10())), qPrintable(objOld.lastError()));
    QCOMPARE(objOld.getVersion(), QStringLiteral("1.0"));
    QString strText;
    QVERIFY(objOld.Read3rdTagKeyValues(strData, "Orm3.0.SOLA.SequenceID", "Orm3.0.SOLA.SequenceID.Name", "SequenceID", strText, 0));
    QCOMPARE(strText, QStringLiteral("MH20260801 & more"));
    std::vector<int> vecCounts;
    const QStringList lstCounts = {"Count", "Views"};
    QVERIFY(objOld.Read2ndTagKeyValues(strData, "Orm3.0.SOLA.Wavelengths", lstCounts, vecCounts));
    QVERIFY(vecCounts == std::vector<int>({2, 3}));
    QStringList lstWavelengths;
    for (int i = 0; i < 3; ++i)
    {
        QVERIFY(objOld.ReadCurrentKeyValues(i, "Orm3.0.SOLA.Wavelength.Name", "Wavelength", strText));
        lstWavelengths.append(strText);
    }
    QCOMPARE(lstWavelengths, (QStringList{"560", " 620 ", QString::fromUtf8("µm")}));
    QVERIFY(objOld.openSection(strData, "Orm3.0.SOLA.Measured.Photon.Density.Data"));
    std::vector<float> vecValues;
    QVERIFY(objOld.readCurrentNumbers("Orm3.0.SOLA.Measured.Photon.Density.Value", {"Photon.Density"}, 4, vecValues));
    QVERIFY(vecValues == std::vector<float>({1.5F, -2000.0F, 0.25F, 4.0F}));
    float fValue = 0.0F;
    QVERIFY(objOld.ReadCurrentKeyValues(2, "Orm3.0.SOLA.Measured.Photon.Density.Value", "Photon.Density", fValue));
    QCOMPARE(fValue, 0.25F);

    CPLResultXMLWrapper objNew;
    QVERIFY2(objNew.loadXMLFile(m_objFiles.write("new.xml", TestDocuments::sample20())), qPrintable(objNew.lastError()));
    QCOMPARE(objNew.getVersion(), QStringLiteral("2.0"));
    QVERIFY(objNew.Read2ndTagKeyValues(strData, "Orm3.0.SOLA.HeightMap.Data", QStringList{"Width", "Height"}, vecCounts));
    QVERIFY(vecCounts == std::vector<int>({2, 1}));
    QVERIFY(objNew.ReadCurrentKeyValues("Orm3.0.SOLA.HeightMap.Pixel", "Text.Data", strText));
    QCOMPARE(strText, QStringLiteral("0000803F000000C0"));
    QVERIFY(objNew.readCurrentHexFloats("Orm3.0.SOLA.HeightMap.Pixel", 0, 2, vecValues));
    QVERIFY(vecValues == std::vector<float>({1.0F, -2.0F}));
    int nCount = 0;
    QVERIFY(objNew.Read2ndTagKeyValues(strData, "Orm3.0.SOLA.Results", "Count", nCount));
    QCOMPARE(nCount, 2);
    QStringList lstValues;
    const QStringList lstKeys = {"Key", "Value"};
    QVERIFY(objNew.ReadCurrentKeyValues(0, "Orm.3.0.SOLA.Results", lstKeys, lstValues));
    QCOMPARE(lstValues, (QStringList{"Reduced Chi2", QString::fromUtf8("1.02 < α")}));
    QVERIFY(objNew.ReadCurrentKeyValues(1, "Orm.3.0.SOLA.Results", lstKeys, lstValues));
    QCOMPARE(lstValues, (QStringList{"Final voxel size (mm)", "100"}));
    // One form of the tag's name does not stand for the other.
    QVERIFY(!objNew.ReadCurrentKeyValues(0, "Orm3.0.SOLA.Results", lstKeys, lstValues));
}

void tst_resultxml::versionStandsAsWritten_data()
{
    QTest::addColumn<QByteArray>("baAttribute");
    QTest::addColumn<QString>("strExpected");
    QTest::newRow("1.0") << QByteArray("Version=\"1.0\"") << "1.0";
    QTest::newRow("with a blank") << QByteArray("Version=\"1.0 \"") << "1.0 ";
    QTest::newRow("unknown") << QByteArray("Version='3.0'") << "3.0";
    QTest::newRow("empty") << QByteArray("Version=\"\"") << "";
    QTest::newRow("absent") << QByteArray() << QString();
    QTest::newRow("in other case") << QByteArray("version=\"1.0\"") << QString();
}

void tst_resultxml::versionStandsAsWritten()
{
    QFETCH(QByteArray, baAttribute);
    QFETCH(QString, strExpected);
    CPLResultXMLWrapper objXML;
    QVERIFY(objXML.getVersion().isNull());
    QVERIFY(objXML.loadXMLFile(m_objFiles.write("result.xml", "<Ormelle.Result " + baAttribute + "/>")));
    QCOMPARE(objXML.getVersion(), strExpected);
    QCOMPARE(objXML.getVersion().isNull(), strExpected.isNull());
}

void tst_resultxml::keysAreAttributesOrChildTexts_data()
{
    QTest::addColumn<QByteArray>("baRow");
    QTest::addColumn<QString>("strExpected"); // null: absent

    QTest::newRow("an attribute") << QByteArray("<Row Key=\"v\"/>") << "v";
    QTest::newRow("an attribute in single quotes") << QByteArray("<Row Key='v \"w\"'/>") << "v \"w\"";
    QTest::newRow("blanks around the equal sign") << QByteArray("<Row\tKey = \n\"v\" ></Row >") << "v";
    QTest::newRow("a child") << QByteArray("<Row><Key>v</Key></Row>") << "v";
    QTest::newRow("the attribute comes first") << QByteArray("<Row Key=\"v\"><Key>w</Key></Row>") << "v";
    QTest::newRow("the first child counts") << QByteArray("<Row><Other>u</Other><Key>v</Key><Key>w</Key></Row>") << "v";
    QTest::newRow("an empty attribute") << QByteArray("<Row Key=\"\"><Key>w</Key></Row>") << "";
    QTest::newRow("an empty child") << QByteArray("<Row><Key/></Row>") << "";
    QTest::newRow("blanks stay") << QByteArray("<Row><Key> v\n </Key></Row>") << " v\n ";
    QTest::newRow("nothing but blanks") << QByteArray("<Row><Key>  </Key></Row>") << "  ";
    QTest::newRow("references in an attribute") << QByteArray("<Row Key=\"&lt;&#65;&#x42;&gt;&amp;&quot;&apos;\"/>") << "<AB>&\"'";
    QTest::newRow("references in a child") << QByteArray("<Row><Key>&lt;&#65;&#x42;&gt;&amp;&quot;&apos;</Key></Row>") << "<AB>&\"'";
    QTest::newRow("a reference is not read twice") << QByteArray("<Row Key=\"&amp;lt;\"/>") << "&lt;";
    QTest::newRow("line ends in an attribute") << QByteArray("<Row Key=\"a\nb\tc\"/>") << "a b c";
    QTest::newRow("CDATA") << QByteArray("<Row><Key><![CDATA[<v>&amp;]]></Key></Row>") << "<v>&amp;";
    QTest::newRow("inner elements are not the text") << QByteArray("<Row><Key>a<In>b</In>c</Key></Row>") << "ac";
    QTest::newRow("a deeper element is not the child") << QByteArray("<Row><In><Key>v</Key></In></Row>") << QString();
    QTest::newRow("another case") << QByteArray("<Row key=\"v\"><KEY>w</KEY></Row>") << QString();
    QTest::newRow("no key") << QByteArray("<Row/>") << QString();
    QTest::newRow("no row") << QByteArray("<Raw Key=\"v\"/>") << QString();
    QTest::newRow("other scripts") << QByteArray("<Row Key=\"\xE6\x97\xA5\xF0\x9F\x90\xAD\"/>") << QString::fromUtf8("日🐭");
}

void tst_resultxml::keysAreAttributesOrChildTexts()
{
    QFETCH(QByteArray, baRow);
    QFETCH(QString, strExpected);

    OpenResult objXML;
    QVERIFY2(objXML.open(m_objFiles, section("Count=\"1\"", baRow)), qPrintable(objXML.lastError()));
    QString strValue = "before";
    QCOMPARE(objXML.ReadCurrentKeyValues("Row", "Key", strValue), !strExpected.isNull());
    QCOMPARE(strValue, strExpected.isNull() ? QStringLiteral("before") : strExpected);
    strValue = "before";
    QCOMPARE(objXML.Read3rdTagKeyValues(strFirst, strSecond, "Row", "Key", strValue, 0), !strExpected.isNull());
    QCOMPARE(strValue, strExpected.isNull() ? QStringLiteral("before") : strExpected);
}

void tst_resultxml::keysOfTheSecondTagItself_data()
{
    QTest::addColumn<QByteArray>("baKeys");
    QTest::addColumn<QByteArray>("baRows");
    QTest::addColumn<QString>("strExpected"); // null: absent

    QTest::newRow("an attribute") << QByteArray("Count=\"5\"") << QByteArray("<Row/>") << "5";
    QTest::newRow("a child") << QByteArray() << QByteArray("<Row/><Count>5</Count>") << "5";
    QTest::newRow("a child far behind") << QByteArray() << repeated("<Row Key=\"1\"/>", 5000) + "<Count>5</Count><Count>6</Count>"
                                        << "5";
    QTest::newRow("the attribute comes first") << QByteArray("Count=\"5\"") << QByteArray("<Count>6</Count>") << "5";
    QTest::newRow("absent") << QByteArray("Views=\"5\"") << QByteArray("<Row Count=\"5\"><Count>6</Count></Row>") << QString();
    QTest::newRow("only in a remark") << QByteArray() << QByteArray("<!--<Count>5</Count>--><Row/>") << QString();
}

void tst_resultxml::keysOfTheSecondTagItself()
{
    QFETCH(QByteArray, baKeys);
    QFETCH(QByteArray, baRows);
    QFETCH(QString, strExpected);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section(baKeys, baRows)));
    LogRecorder objLog;
    QString strValue = "before";
    QCOMPARE(objXML.currentKeyText("Count", strValue), !strExpected.isNull());
    QCOMPARE(strValue, strExpected.isNull() ? QStringLiteral("before") : strExpected);
    QVERIFY(objLog.entries().isEmpty()); // what may be absent is no failure
    QCOMPARE(objXML.lastError().isEmpty(), !strExpected.isNull());
    int nValue = -7;
    QCOMPARE(objXML.Read2ndTagKeyValues(strFirst, strSecond, "Count", nValue), !strExpected.isNull());
    QCOMPARE(nValue, strExpected.isNull() ? -7 : strExpected.toInt());
}

void tst_resultxml::theFirstOfEqualTagsCounts()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles,
                        document("<First><Other><Row Key=\"other\"/></Other>"
                                 "<Second Count=\"1\"><Row Key=\"a\"/></Second><Second Count=\"2\"><Row Key=\"b\"/></Second></First>"
                                 "<First><Second Count=\"3\"><Row Key=\"c\"/></Second><Third><Row Key=\"d\"/></Third></First>"
                                 "<Last><Second Count=\"4\"><Row Key=\"e\"/></Second></Last>")));
    QCOMPARE(objXML.row(0), QStringLiteral("a"));
    QVERIFY(objXML.row(1).isNull());
    QString strCount;
    QVERIFY(objXML.currentKeyText("Count", strCount));
    QCOMPARE(strCount, QStringLiteral("1"));
    QVERIFY(!objXML.openSection(strFirst, "Third")); // it is in a repetition of the first tag
    QVERIFY(objXML.openSection("Last", strSecond));
    QCOMPARE(objXML.row(0), QStringLiteral("e"));
}

void tst_resultxml::tagNamesAreComparedWhole()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, document("<FirstX><Second><Row Key=\"x\"/></Second></FirstX><First><Second2><Row Key=\"y\"/></Second2>"
                                             "<Second><RowX Key=\"z\"/><Ro Key=\"w\"/><Row KeyX=\"q\" Key=\"v\"/></Second></First>")));
    QCOMPARE(objXML.row(0), QStringLiteral("v"));
    QVERIFY(objXML.row(1).isNull());
    QVERIFY(!objXML.openSection("Firs", strSecond) && !objXML.openSection("first", strSecond) && !objXML.openSection(strFirst, "Sec"));
    QVERIFY(!objXML.openSection(QString(), QString()));
}

void tst_resultxml::intsAreStrict_data()
{
    QTest::addColumn<QByteArray>("baCount");
    QTest::addColumn<bool>("bInt");
    QTest::addColumn<int>("nExpected");
    QTest::newRow("0") << QByteArray("0") << true << 0;
    QTest::newRow("negative") << QByteArray("-1") << true << -1;
    QTest::newRow("the largest") << QByteArray("2147483647") << true << 2147483647;
    for (const char* pText :
         {"+3", " 3", "3 ", "3.0", "1e3", "0x10", "007", "", "\xD9\xA3", "12345678901234567890", "2147483648", "4294967296", "8.0"})
        QTest::addRow("\"%s\"", pText) << QByteArray(pText) << false << 0;
}

void tst_resultxml::intsAreStrict()
{
    QFETCH(QByteArray, baCount);
    QFETCH(bool, bInt);
    QFETCH(int, nExpected);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("Count=\"" + baCount + "\" Views=\"2\"", "")));
    LogRecorder objLog;
    int nValue = -7;
    QCOMPARE(objXML.Read2ndTagKeyValues(strFirst, strSecond, "Count", nValue), bInt);
    QCOMPARE(nValue, bInt ? nExpected : -7);
    std::vector<int> vecValues = {-7, -7};
    QCOMPARE(objXML.Read2ndTagKeyValues(strFirst, strSecond, QStringList{"Views", "Count"}, vecValues), bInt);
    QVERIFY(vecValues == (bInt ? std::vector<int>{2, nExpected} : std::vector<int>{-7, -7}));
    QCOMPARE(objLog.entries().size(), bInt ? 0 : 2);
    if (!bInt)
        QCOMPARE(objXML.lastError(), m_objFiles.path("result.xml") + ": Second: Count=\"" + QString::fromUtf8(baCount) + "\" is no int");
}

void tst_resultxml::severalIntsAtOnce_data()
{
    QTest::addColumn<QByteArray>("baKeys");
    QTest::addColumn<QStringList>("lstKeys");
    QTest::addColumn<bool>("bRead");
    QTest::addColumn<std::vector<int>>("vecExpected");

    QTest::newRow("in the order asked for") << QByteArray("Count=\"2\" Views=\"3\"") << QStringList{"Views", "Count"} << true
                                            << std::vector<int>{3, 2};
    QTest::newRow("an absent one is 0") << QByteArray("Count=\"2\"") << QStringList{"Count", "Views"} << true << std::vector<int>{2, 0};
    QTest::newRow("all absent") << QByteArray() << QStringList{"Count", "Views"} << true << std::vector<int>{0, 0};
    QTest::newRow("one asked for") << QByteArray("Count=\"2\"") << QStringList{"Count"} << true << std::vector<int>{2};
    QTest::newRow("none asked for") << QByteArray("Count=\"2\"") << QStringList() << true << std::vector<int>();
    QTest::newRow("one is no int") << QByteArray("Count=\"2\" Views=\"x\"") << QStringList{"Count", "Views"} << false << std::vector<int>();
}

void tst_resultxml::severalIntsAtOnce()
{
    QFETCH(QByteArray, baKeys);
    QFETCH(QStringList, lstKeys);
    QFETCH(bool, bRead);
    QFETCH(std::vector<int>, vecExpected);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section(baKeys, "")));
    for (const std::vector<int>& vecBefore :
         {std::vector<int>(), std::vector<int>(static_cast<size_t>(lstKeys.size()), -7), std::vector<int>(9, -7)})
    {
        std::vector<int> vecValues = vecBefore;
        QCOMPARE(objXML.Read2ndTagKeyValues(strFirst, strSecond, lstKeys, vecValues), bRead);
        QVERIFY(vecValues == (bRead ? vecExpected : vecBefore));
    }
    std::vector<int> vecValues(2, -7);
    QVERIFY(!objXML.Read2ndTagKeyValues(strFirst, "none", lstKeys, vecValues));
    QVERIFY(vecValues == std::vector<int>(2, -7));
}

void tst_resultxml::aVectorOfTheRightSizeIsWrittenInPlace()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("Width=\"64\" Height=\"48\"", "")));
    std::vector<int> vecValues(2, 0);
    const int* pWidth = &vecValues[0];
    const int* pHeight = &vecValues[1];
    QVERIFY(objXML.Read2ndTagKeyValues(strFirst, strSecond, QStringList{"Width", "Height"}, vecValues));
    QCOMPARE(*pWidth, 64);
    QCOMPARE(*pHeight, 48);
    QCOMPARE(pWidth, vecValues.data());
}

void tst_resultxml::floatsAreStrict_data()
{
    QTest::addColumn<QByteArray>("baValue");
    QTest::addColumn<bool>("bFloat");
    QTest::addColumn<float>("fExpected");
    QTest::newRow("a number") << QByteArray("-1.5e-3") << true << -1.5e-3F;
    QTest::newRow("an integer") << QByteArray("4") << true << 4.0F;
    for (const char* pText : {"", " 1.5", "1.5 ", "+1.5", "1,5", "nan", "inf", "1e99", "0x1p3", "1.5;2"})
        QTest::addRow("\"%s\"", pText) << QByteArray(pText) << false << 0.0F;
}

void tst_resultxml::floatsAreStrict()
{
    QFETCH(QByteArray, baValue);
    QFETCH(bool, bFloat);
    QFETCH(float, fExpected);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Key=\"" + baValue + "\"/>")));
    float fValue = 7.0F;
    QCOMPARE(objXML.ReadCurrentKeyValues(0, "Row", "Key", fValue), bFloat);
    QCOMPARE(fValue, bFloat ? fExpected : 7.0F);
    std::vector<float> vecValues = {7.0F};
    QCOMPARE(objXML.readCurrentNumbers("Row", {"Key"}, 1, vecValues), bFloat);
    QCOMPARE(vecValues[0], bFloat ? fExpected : 7.0F);
}

void tst_resultxml::severalKeysMustAllBeThere()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Key=\"a\" Value=\"1\"/><Row Key=\"b\"/><Row><Value>3</Value><Key>c</Key></Row>")));
    const QStringList lstKeys = {"Key", "Value"};
    QStringList lstValues = {"before"};
    QVERIFY(objXML.ReadCurrentKeyValues(0, "Row", lstKeys, lstValues));
    QCOMPARE(lstValues, (QStringList{"a", "1"}));
    QVERIFY(!objXML.ReadCurrentKeyValues(1, "Row", lstKeys, lstValues));
    QCOMPARE(lstValues, (QStringList{"a", "1"}));
    QCOMPARE(objXML.lastError(), m_objFiles.path("result.xml") + ": Row[1]: has no Value");
    QVERIFY(objXML.ReadCurrentKeyValues(2, "Row", lstKeys, lstValues));
    QCOMPARE(lstValues, (QStringList{"c", "3"}));
    QVERIFY(objXML.Read3rdTagKeyValues(strFirst, strSecond, "Row", lstKeys, lstValues, 0));
    QCOMPARE(lstValues, (QStringList{"a", "1"}));
    QVERIFY(!objXML.Read3rdTagKeyValues(strFirst, strSecond, "Row", lstKeys, lstValues, 1));
    QVERIFY(!objXML.Read3rdTagKeyValues(strFirst, "none", "Row", lstKeys, lstValues, 0));
    QCOMPARE(lstValues, (QStringList{"a", "1"}));
}

void tst_resultxml::thirdTagsAreReadWithoutChangingTheCurrentOne()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles,
                        document("<First><Second><Row Key=\"a\"/><Row Key=\"b\"/></Second><Third><Row Key=\"c\"/></Third></First>")));
    QCOMPARE(objXML.row(0), QStringLiteral("a"));
    QString strValue;
    QVERIFY(objXML.Read3rdTagKeyValues(strFirst, "Third", "Row", "Key", strValue, 0));
    QCOMPARE(strValue, QStringLiteral("c"));
    QVERIFY(!objXML.Read3rdTagKeyValues(strFirst, "none", "Row", "Key", strValue, 0));
    QVERIFY(!objXML.Read3rdTagKeyValues(strFirst, "Third", "Row", "Key", strValue, 1));
    QCOMPARE(objXML.row(1), QStringLiteral("b"));
    int nValue = 0;
    QVERIFY(!objXML.Read2ndTagKeyValues(strFirst, "Third", "Count", nValue)); // absent, but the tag is the current one now
    QCOMPARE(objXML.row(0), QStringLiteral("c"));
}

void tst_resultxml::aMissingSecondTagLeavesNoneCurrent()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", numberedRows(3))));
    std::vector<int> vecValues;
    QVERIFY(!objXML.Read2ndTagKeyValues(strFirst, "none", QStringList{"Count"}, vecValues));
    QVERIFY(objXML.row(0).isNull());
    QCOMPARE(objXML.currentChildCount("Row"), qint64(0));
    QVERIFY(objXML.openSection(strFirst, strSecond));
    QCOMPARE(objXML.row(0), QStringLiteral("0"));
}

void tst_resultxml::withoutADocumentEverythingFails()
{
    CPLResultXMLWrapper objXML;
    int nValue = 0;
    float fValue = 0.0F;
    QString strValue;
    QStringList lstValues;
    std::vector<int> vecInts;
    std::vector<float> vecFloats;
    std::vector<quint32> vecUInts;
    QByteArray baBytes;
    QVERIFY(objXML.getVersion().isNull());
    QVERIFY(!objXML.Read2ndTagKeyValues(strFirst, strSecond, "Count", nValue));
    QVERIFY(!objXML.Read2ndTagKeyValues(strFirst, strSecond, QStringList{"Count"}, vecInts));
    QVERIFY(!objXML.Read3rdTagKeyValues(strFirst, strSecond, "Row", "Key", strValue, 0));
    QVERIFY(!objXML.Read3rdTagKeyValues(strFirst, strSecond, "Row", QStringList{"Key"}, lstValues, 0));
    QVERIFY(!objXML.ReadCurrentKeyValues("Row", "Key", strValue));
    QVERIFY(!objXML.ReadCurrentKeyValues(0, "Row", "Key", strValue));
    QVERIFY(!objXML.ReadCurrentKeyValues(0, "Row", "Key", fValue));
    QVERIFY(!objXML.ReadCurrentKeyValues(0, "Row", QStringList{"Key"}, lstValues));
    QVERIFY(!objXML.openSection(strFirst, strSecond));
    QVERIFY(!objXML.currentKeyText("Count", strValue));
    QCOMPARE(objXML.currentChildCount("Row"), qint64(0));
    QVERIFY(!objXML.readCurrentNumbers("Row", {"Key"}, 1, vecFloats));
    QVERIFY(!objXML.readCurrentUInts("Row", {"Key"}, 1, vecUInts));
    QVERIFY(!objXML.readCurrentHexFloats("Row", 0, 1, vecFloats));
    QVERIFY(!objXML.readCurrentHexUInts("Row", 0, 1, vecUInts));
    QVERIFY(!objXML.readCurrentHexBytes("Row", 0, 1, baBytes));
    QVERIFY(objXML.lastError().startsWith("no document is open: "));
}

void tst_resultxml::aFailedLoadClosesTheDocumentBefore()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", numberedRows(3))));
    QVERIFY(!objXML.loadXMLFile(m_objFiles.path("none.xml")));
    QCOMPARE(objXML.lastError(), m_objFiles.path("none.xml") + ": No such file or directory");
    QVERIFY(objXML.getVersion().isNull());
    QVERIFY(objXML.row(0).isNull());
    QVERIFY(!objXML.openSection(strFirst, strSecond));
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Key=\"x\"/>")));
    QCOMPARE(objXML.row(0), QStringLiteral("x"));
    QVERIFY(!objXML.loadXMLFile(m_objFiles.write("bad.xml", "<Ormelle.Result>")));
    QVERIFY(objXML.row(0).isNull());
    QVERIFY(objXML.loadXMLFile(m_objFiles.path("result.xml")));
    QVERIFY(objXML.lastError().isEmpty());
    QVERIFY(objXML.row(0).isNull()); // no section is the current one yet
}

void tst_resultxml::eachFailureIsLoggedOnce_data()
{
    QTest::addColumn<QString>("strWhat");
    QTest::addColumn<QString>("strMessage"); // behind the file
    QTest::newRow("second tag") << "second"
                                << "First/none: absent";
    QTest::newRow("key of the second tag") << "secondkey"
                                           << "Second: has no none";
    QTest::newRow("third tag") << "third"
                               << "none[0]: absent";
    QTest::newRow("third tag beyond the last") << "beyond"
                                               << "Row[3]: absent";
    QTest::newRow("third tag before the first") << "before"
                                                << "Row[-1]: absent";
    QTest::newRow("key of the third tag") << "thirdkey"
                                          << "Row[1]: has no none";
    QTest::newRow("float") << "float"
                           << "Text[0]: Key=\"oops\" is no number";
    QTest::newRow("rows of numbers") << "numbers"
                                     << "Row: declares 4 elements, holds 3";
    QTest::newRow("a number of a row") << "number"
                                       << "Text[0]: Key=\"oops\" is no number of its kind";
    QTest::newRow("hex text") << "hex"
                              << "Hex[0]: declares 2 values, holds 1";
    QTest::newRow("hex digit") << "digit"
                               << "Bad[0]: Text.Data: no hexadecimal digit at offset 3";
}

void tst_resultxml::eachFailureIsLoggedOnce()
{
    QFETCH(QString, strWhat);
    QFETCH(QString, strMessage);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles,
                        section("", numberedRows(3) + "<Text Key=\"oops\"/><Hex Text.Data=\"0000803F\"/><Bad Text.Data=\"000x803F\"/>" +
                                        QByteArray(200, ' '))));
    LogRecorder objLog;
    int nValue = 0;
    float fValue = 0.0F;
    QString strValue;
    std::vector<float> vecValues;
    bool bRead = true;
    if (strWhat == "second")
        bRead = objXML.Read2ndTagKeyValues(strFirst, "none", "Count", nValue);
    else if (strWhat == "secondkey")
        bRead = objXML.Read2ndTagKeyValues(strFirst, strSecond, "none", nValue);
    else if (strWhat == "third")
        bRead = objXML.ReadCurrentKeyValues("none", "Key", strValue);
    else if (strWhat == "beyond")
        bRead = objXML.ReadCurrentKeyValues(3, "Row", "Key", strValue);
    else if (strWhat == "before")
        bRead = objXML.ReadCurrentKeyValues(-1, "Row", "Key", strValue);
    else if (strWhat == "thirdkey")
        bRead = objXML.Read3rdTagKeyValues(strFirst, strSecond, "Row", "none", strValue, 1);
    else if (strWhat == "float")
        bRead = objXML.ReadCurrentKeyValues(0, "Text", "Key", fValue);
    else if (strWhat == "numbers")
        bRead = objXML.readCurrentNumbers("Row", {"Key"}, 4, vecValues);
    else if (strWhat == "number")
        bRead = objXML.readCurrentNumbers("Text", {"Key"}, 1, vecValues);
    else if (strWhat == "hex")
        bRead = objXML.readCurrentHexFloats("Hex", 0, 2, vecValues);
    else if (strWhat == "digit")
        bRead = objXML.readCurrentHexFloats("Bad", 0, 1, vecValues);
    QVERIFY(!bRead);
    QCOMPARE(objXML.lastError(), m_objFiles.path("result.xml") + ": " + strMessage);
    QVERIFY2(objLog.isOne(3, objXML.lastError()), qPrintable(objLog.messages().join('\n')));
}

void tst_resultxml::noResultsAreWritten()
{
    LogRecorder objLog;
    CPLResultXMLWrapper objXML;
    const QString strFile = m_objFiles.path("written.xml");
    QVERIFY(!objXML.createXMLFile(strFile, "2.0", true));
    QVERIFY(!QFile::exists(strFile));
    QVERIFY(objLog.isOne(3, strFile + ": not written, the host writes no results"));
}

QTEST_GUILESS_MAIN(tst_resultxml)
#include "tst_resultxml.moc"
