#include "COrmProcess.h"
#include "CPLResultXMLWrapper.h"
#include "LogRecorder.h"
#include "OrmDocumentLimits.h"
#include "OrmHexText.h"
#include "TestDocuments.h"
#include "TestFiles.h"

#include <QtTest>

#include <limits>
#include <numeric>

Q_DECLARE_METATYPE(std::vector<float>)
Q_DECLARE_METATYPE(std::vector<int>)

using TestDocuments::document;
using TestDocuments::repeated;
using TestDocuments::section;

namespace
{
int g_nAlive = 0; ///< how often the progress display was given a chance

const QString strFirst = QStringLiteral("First");
const QString strSecond = QStringLiteral("Second");

/// Rows <Row Key="0"/>, <Row Key="1"/> and so on.
QByteArray numberedRows(int nRows, const QByteArray& baBetween = QByteArray())
{
    QByteArray baRows;
    for (int i = 0; i < nRows; ++i)
        baRows += "<Row Key=\"" + QByteArray::number(i) + "\"/>" + baBetween;
    return baRows;
}

QByteArray hexOf(const std::vector<float>& vecValues)
{
    return OrmHexText::encodeFloats(vecValues.data(), static_cast<qint64>(vecValues.size()));
}

/// An open document with its first section the current one.
class OpenResult : public CPLResultXMLWrapper
{
public:
    bool open(const TestFiles& objFiles, const QByteArray& baDocument)
    {
        return loadXMLFile(objFiles.write("result.xml", baDocument)) && openSection(strFirst, strSecond);
    }
    QString row(int nIndex, const QString& strTag = "Row", const QString& strKey = "Key")
    {
        QString strValue;
        return ReadCurrentKeyValues(nIndex, strTag, strKey, strValue) ? strValue : QString();
    }
};
} // namespace

/// Stands in front of the host's own: counts.
void COrmProcess::keepAlive()
{
    ++g_nAlive;
}

class tst_resultxml : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { g_nAlive = 0; }

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

    void rowsAreFoundInAnyOrder_data();
    void rowsAreFoundInAnyOrder();
    void rowsOfSeveralTagsAreCountedApart();
    void longTextsAreReadWhereTheyStand_data();
    void longTextsAreReadWhereTheyStand();
    void interruptedTextsAreOneText_data();
    void interruptedTextsAreOneText();
    void interruptedTextsHaveALimit_data();
    void interruptedTextsHaveALimit();
    void rowsHaveALimit_data();
    void rowsHaveALimit();

    void numbersOfRows_data();
    void numbersOfRows();
    void unsignedNumbersOfRows();
    void hexTextOfRows_data();
    void hexTextOfRows();
    void hexTextWithMarkup_data();
    void hexTextWithMarkup();
    void hexUnsignedAndBytes();
    void swappedBytesAreNoticedAndReadAsWritten();
    void theDisplayIsKeptAlive();

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

void tst_resultxml::rowsAreFoundInAnyOrder_data()
{
    QTest::addColumn<int>("nRows");
    for (const int nRows : {0, 1, 2, 511, 512, 513, 1024, 1025, 5000})
        QTest::addRow("%d rows", nRows) << nRows;
}

void tst_resultxml::rowsAreFoundInAnyOrder()
{
    QFETCH(int, nRows);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", numberedRows(nRows, "\n  "))));
    for (int i = 0; i < nRows; ++i)
        QCOMPARE(objXML.row(i), QString::number(i));
    for (int i = nRows - 1; i >= 0; i -= 7)
        QCOMPARE(objXML.row(i), QString::number(i));
    for (int i = 0; i < qMin(nRows, 200); ++i) // from one end to the other and back
        QCOMPARE(objXML.row(i % 2 == 0 ? i : nRows - i), QString::number(i % 2 == 0 ? i : nRows - i));
    QVERIFY(objXML.row(nRows).isNull());
    QVERIFY(objXML.row(std::numeric_limits<int>::max()).isNull());
    QCOMPARE(objXML.currentChildCount("Row"), qint64(nRows));

    OpenResult objLast;
    QVERIFY(objLast.open(m_objFiles, section("", numberedRows(nRows))));
    QCOMPARE(objLast.row(nRows - 1), nRows == 0 ? QString() : QString::number(nRows - 1));
    std::vector<float> vecValues;
    QVERIFY(objLast.readCurrentNumbers("Row", {"Key"}, nRows, vecValues));
    std::vector<float> vecExpected(static_cast<size_t>(nRows));
    std::iota(vecExpected.begin(), vecExpected.end(), 0.0F);
    QVERIFY(vecValues == vecExpected);
}

void tst_resultxml::rowsOfSeveralTagsAreCountedApart()
{
    QByteArray baRows;
    for (int i = 0; i < 3000; ++i)
    {
        const QByteArray baNumber = QByteArray::number(i);
        baRows += "<A Key=\"a" + baNumber + "\"/>";
        if (i % 3 == 0)
            baRows += "<B><Key>b" + baNumber + "</Key><A Key=\"inner\"/></B>";
        if (i == 2999)
            baRows += "<C Key=\"c\"/>";
    }
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", baRows)));
    QCOMPARE(objXML.row(0, "C"), QStringLiteral("c"));
    for (int i = 0; i < 1000; ++i)
    {
        QCOMPARE(objXML.row(i, "B"), QStringLiteral("b%1").arg(3 * i));
        QCOMPARE(objXML.row(3 * i + 1, "A"), QStringLiteral("a%1").arg(3 * i + 1));
    }
    QCOMPARE(objXML.currentChildCount("A"), qint64(3000));
    QCOMPARE(objXML.currentChildCount("B"), qint64(1000));
    QCOMPARE(objXML.currentChildCount("C"), qint64(1));
    QCOMPARE(objXML.currentChildCount("D"), qint64(0));
}

void tst_resultxml::longTextsAreReadWhereTheyStand_data()
{
    QTest::addColumn<int>("nValues");
    for (const int nValues : {1, 511, 512, 513, 8191, 8192, 8193, 100000, 3000000})
        QTest::addRow("%d values", nValues) << nValues;
}

void tst_resultxml::longTextsAreReadWhereTheyStand()
{
    QFETCH(int, nValues);

    // Rows of long and short texts side by side, in either way of writing them.
    std::vector<float> vecValues(static_cast<size_t>(nValues));
    std::iota(vecValues.begin(), vecValues.end(), -3.5F);
    const QByteArray baLong = hexOf(vecValues);
    const QByteArray baRemark =
        "<!--" + QByteArray(nValues, 'r') + "--><?note " + QByteArray(nValues, 'n') + "?>" + QByteArray(nValues, ' ');
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", baRemark + "<Row><Text.Data>0000803F</Text.Data></Row>" + baRemark + "<Row><Text.Data>" +
                                                    baLong + "</Text.Data><Note>behind</Note></Row><Row Text.Data=\"000000C0\"/>" +
                                                    baRemark + "<Row>" + baRemark + "<Text.Data><![CDATA[" + baLong + "]]></Text.Data>" +
                                                    baRemark + "</Row><Row><Text.Data/></Row>")));
    std::vector<float> vecRead;
    for (const int nRow : {1, 3, 1})
    {
        QVERIFY2(objXML.readCurrentHexFloats("Row", nRow, nValues, vecRead), qPrintable(objXML.lastError()));
        QVERIFY(vecRead == vecValues);
        QCOMPARE(objXML.row(nRow, "Row", "Text.Data"), QString::fromLatin1(baLong));
        QVERIFY(!objXML.readCurrentHexFloats("Row", nRow, nValues + 1, vecRead));
    }
    QVERIFY(objXML.readCurrentHexFloats("Row", 0, 1, vecRead));
    QVERIFY(vecRead == std::vector<float>{1.0F});
    QVERIFY(objXML.readCurrentHexFloats("Row", 2, 1, vecRead));
    QVERIFY(vecRead == std::vector<float>{-2.0F});
    QCOMPARE(objXML.row(1, "Row", "Note"), QStringLiteral("behind"));
    QCOMPARE(objXML.row(4, "Row", "Text.Data"), QString(""));
    QCOMPARE(objXML.currentChildCount("Row"), qint64(5));
}

void tst_resultxml::interruptedTextsAreOneText_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QByteArray>("baExpected");

    const QByteArray baLong = QByteArray(5000, 'a') + "b";
    QTest::newRow("a remark within") << QByteArray("00<!-- x -->11") << QByteArray("0011");
    QTest::newRow("an instruction within") << QByteArray("00<?x y?>11") << QByteArray("0011");
    QTest::newRow("CDATA within") << QByteArray("00<![CDATA[<&]]>11") << QByteArray("00<&11");
    QTest::newRow("CDATA alone, twice") << QByteArray("<![CDATA[00]]><![CDATA[11]]>") << QByteArray("0011");
    QTest::newRow("a reference within") << QByteArray("00&#48;&#x31;11") << QByteArray("000111");
    QTest::newRow("blanks next to a remark stay") << QByteArray("00 <!-- x --> <!-- y --> 11") << QByteArray("00   11");
    QTest::newRow("long, with a remark") << baLong + "<!-- x -->" + baLong << baLong + baLong;
    QTest::newRow("long, with a reference") << baLong + "&amp;" + baLong << baLong + "&" + baLong;
    QTest::newRow("long, then short") << baLong + "&lt;0" << baLong + "<0";
    QTest::newRow("short, then long") << "0&gt;" + baLong << "0>" + baLong;
    QTest::newRow("long, with CDATA") << baLong + "<![CDATA[" + baLong + "]]>" + baLong << baLong + baLong + baLong;
    QTest::newRow("long, with an element") << baLong + "<In>" + baLong + "</In>" + baLong << baLong + baLong;
    QTest::newRow("long, with line ends to convert") << baLong + "\r\n" + baLong + "\r" << baLong + "\n" + baLong + "\n";
    QTest::newRow("line ends to convert") << QByteArray("a\r\nb\rc\n") << QByteArray("a\nb\nc\n");
}

void tst_resultxml::interruptedTextsAreOneText()
{
    QFETCH(QByteArray, baText);
    QFETCH(QByteArray, baExpected);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row><Key>x</Key></Row><Row><Key>" + baText + "</Key></Row><Key>" + baText + "</Key>")));
    QCOMPARE(objXML.row(1), QString::fromLatin1(baExpected));
    QCOMPARE(objXML.row(0), QStringLiteral("x"));
    QString strOwn;
    QVERIFY(objXML.currentKeyText("Key", strOwn));
    QCOMPARE(strOwn, QString::fromLatin1(baExpected));
}

void tst_resultxml::interruptedTextsHaveALimit_data()
{
    QTest::addColumn<int>("nBytes");
    QTest::addColumn<bool>("bRead");
    const int nLimit = static_cast<int>(OrmDocumentLimits::nXmlComposedText);
    QTest::newRow("just below") << nLimit - 1 << true;
    QTest::newRow("at the limit") << nLimit << true;
    QTest::newRow("above") << nLimit + 1 << false;
}

void tst_resultxml::interruptedTextsHaveALimit()
{
    QFETCH(int, nBytes);
    QFETCH(bool, bRead);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row><Key>" + QByteArray(nBytes - 1, 'x') + "&#x79;</Key></Row><Row Key=\"good\"/>")));
    const QString strText = objXML.row(0);
    QCOMPARE(strText.size(), bRead ? nBytes : 0);
    QCOMPARE(strText.endsWith("xy"), bRead);
    QVERIFY(bRead || objXML.lastError().endsWith("Row[0]: Key: its text is interrupted and longer than 8388608 bytes"));
    QCOMPARE(objXML.row(1), QStringLiteral("good"));
}

void tst_resultxml::rowsHaveALimit_data()
{
    QTest::addColumn<QByteArray>("baInside");
    QTest::addColumn<bool>("bRead");

    const int nElements = OrmDocumentLimits::nXmlRowElements;
    QTest::newRow("elements of a large row") << repeated("<x/>", 300) << true;
    QTest::newRow("elements at the limit") << repeated("<x/>", nElements - 2) << true; // the row itself and its key count too
    QTest::newRow("elements above it") << repeated("<x/>", nElements - 1) << false;
    QTest::newRow("nested elements above it") << repeated("<x><y/></x>", nElements / 2) << false;
    QTest::newRow("bytes of a large row") << repeated("<!-- remark -->", 100000) << true;
    QTest::newRow("bytes above the limit") << repeated("<!-- remark -->", 1400000) << false;
    QTest::newRow("bytes of one long remark") << QByteArray("<!--" + QByteArray(30000000, 'x') + "-->") << true;
    QTest::newRow("bytes of one long instruction") << QByteArray("<?x " + QByteArray(30000000, 'x') + "?>") << true;
    QTest::newRow("bytes of one long text") << QByteArray(30000000, 'x') << true;
}

void tst_resultxml::rowsHaveALimit()
{
    QFETCH(QByteArray, baInside);
    QFETCH(bool, bRead);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Key=\"first\"/><Row>" + baInside + "<Key>large</Key></Row><Row Key=\"last\"/><RowX>" +
                                                    baInside + "</RowX>")));
    QCOMPARE(objXML.row(2), QStringLiteral("last"));
    QCOMPARE(objXML.row(1), bRead ? QStringLiteral("large") : QString());
    QVERIFY(bRead || objXML.lastError().endsWith("Row[1]: Key: too large, with more than 1024 elements or 20971520 bytes"));
    QCOMPARE(objXML.row(0), QStringLiteral("first"));
    QCOMPARE(objXML.currentChildCount("Row"), qint64(3));
    QCOMPARE(objXML.currentChildCount("RowX"), qint64(1));
}

void tst_resultxml::numbersOfRows_data()
{
    QTest::addColumn<QByteArray>("baRows");
    QTest::addColumn<qint64>("nCount");
    QTest::addColumn<QString>("strError"); // null: read
    QTest::addColumn<std::vector<float>>("vecExpected");

    const QByteArray baRow = "<Row X=\"1\" Y=\"2.5\"/>";
    QTest::newRow("one") << baRow << qint64(1) << QString() << std::vector<float>{1.0F, 2.5F};
    QTest::newRow("in the order of the keys") << QByteArray("<Row Y=\"2.5\" X=\"1\"/>") << qint64(1) << QString()
                                              << std::vector<float>{1.0F, 2.5F};
    QTest::newRow("children") << QByteArray("<Row><Y>2.5</Y><X>1</X></Row>") << qint64(1) << QString() << std::vector<float>{1.0F, 2.5F};
    QTest::newRow("fewer than there are") << baRow + baRow << qint64(1) << QString() << std::vector<float>{1.0F, 2.5F};
    QTest::newRow("none") << baRow << qint64(0) << QString() << std::vector<float>();
    QTest::newRow("none of none") << QByteArray() << qint64(0) << QString() << std::vector<float>();
    QTest::newRow("others between") << "<Other/>" + baRow + "<Other X=\"9\"/>" + baRow << qint64(2) << QString()
                                    << std::vector<float>{1.0F, 2.5F, 1.0F, 2.5F};
    QTest::newRow("one too many") << baRow + QByteArray(100, ' ') << qint64(2) << "Row: declares 2 elements, holds 1"
                                  << std::vector<float>();
    QTest::newRow("others are not counted") << baRow + "<Other X=\"1\" Y=\"2.5\"/>" << qint64(2) << "Row: declares 2 elements, holds 1"
                                            << std::vector<float>();
    QTest::newRow("of none") << QByteArray() << qint64(1) << "Row: declares 1 elements, holds 0" << std::vector<float>();
    QTest::newRow("a negative count") << baRow << qint64(-1) << "Row: declares -1 elements, holds 1" << std::vector<float>();
    QTest::newRow("a huge count") << baRow << qint64(25000000) << "Row: declares 25000000 elements, holds 1" << std::vector<float>();
    QTest::newRow("a count that wraps") << baRow << std::numeric_limits<qint64>::max()
                                        << "Row: declares 9223372036854775807 elements, holds 1" << std::vector<float>();
    QTest::newRow("a key is absent") << "<Row X=\"1\"/>" + QByteArray(100, ' ') << qint64(1) << "Row[0]: has no Y" << std::vector<float>();
    QTest::newRow("a key is no number") << baRow + "<Row X=\"1\" Y=\"nan\"/>" << qint64(2) << "Row[1]: Y=\"nan\" is no number of its kind"
                                        << std::vector<float>();
    QTest::newRow("a row is too large") << baRow + "<Row X=\"1\" Y=\"2\">" + repeated("<x/>", 2000) + "</Row>" << qint64(2)
                                        << "Row[1]: too large, with more than 1024 elements or 20971520 bytes" << std::vector<float>();
}

void tst_resultxml::numbersOfRows()
{
    QFETCH(QByteArray, baRows);
    QFETCH(qint64, nCount);
    QFETCH(QString, strError);
    QFETCH(std::vector<float>, vecExpected);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", baRows)));
    std::vector<float> vecValues = {7.0F};
    QVERIFY2(objXML.readCurrentNumbers("Row", {"X", "Y"}, nCount, vecValues) == strError.isNull(), qPrintable(objXML.lastError()));
    QVERIFY(vecValues == (strError.isNull() ? vecExpected : std::vector<float>{7.0F}));
    QCOMPARE(objXML.lastError(), strError.isNull() ? QString() : m_objFiles.path("result.xml") + ": " + strError);
}

void tst_resultxml::unsignedNumbersOfRows()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row A=\"0\" B=\"4294967295\"/><Row A=\"-1\" B=\"1\"/><Row A=\"1.0\" B=\"1\"/>")));
    std::vector<quint32> vecValues = {7};
    QVERIFY(objXML.readCurrentUInts("Row", {"B", "A"}, 1, vecValues));
    QVERIFY(vecValues == std::vector<quint32>({4294967295U, 0U}));
    QVERIFY(!objXML.readCurrentUInts("Row", {"B", "A"}, 2, vecValues));
    QVERIFY(objXML.lastError().endsWith("Row[1]: A=\"-1\" is no number of its kind"));
    QVERIFY(!objXML.readCurrentUInts("Row", {"B", "A"}, 3, vecValues));
    QVERIFY(vecValues == std::vector<quint32>({4294967295U, 0U}));
}

void tst_resultxml::hexTextOfRows_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<qint64>("nValues");
    QTest::addColumn<QString>("strError"); // null: read

    const QString strShort = "declares %1 values, holds %2";
    QTest::newRow("one") << QByteArray("0000803F") << qint64(1) << QString();
    QTest::newRow("lower case") << QByteArray("0000803f") << qint64(1) << QString();
    QTest::newRow("surplus") << QByteArray("0000803F000000C0") << qint64(1) << QString();
    QTest::newRow("an odd surplus") << QByteArray("0000803F0") << qint64(1) << QString();
    QTest::newRow("surplus blanks") << QByteArray("0000803F \n") << qint64(1) << QString();
    QTest::newRow("7 digits") << QByteArray("0000803") << qint64(1) << strShort.arg(1).arg(0);
    QTest::newRow("15 digits") << QByteArray("0000803F0000803") << qint64(2) << strShort.arg(2).arg(1);
    QTest::newRow("25 million") << QByteArray("0000803F") << qint64(25000000) << strShort.arg(25000000).arg(1);
    QTest::newRow("65536 x 65536") << QByteArray("0000803F") << qint64(4294967296) << strShort.arg(4294967296).arg(1);
    QTest::newRow("46341 x 46341") << QByteArray("0000803F") << qint64(46341) * 46341 << strShort.arg(qint64(46341) * 46341).arg(1);
    QTest::newRow("2147483648 x 2") << QByteArray("0000803F") << qint64(4294967296) << strShort.arg(4294967296).arg(1);
    QTest::newRow("2 to the 61") << QByteArray("0000803F") << (qint64(1) << 61) << strShort.arg(qint64(1) << 61).arg(1);
    QTest::newRow("the largest number") << QByteArray("0000803F") << std::numeric_limits<qint64>::max()
                                        << strShort.arg(std::numeric_limits<qint64>::max()).arg(1);
    QTest::newRow("a negative number") << QByteArray("0000803F") << qint64(-1) << "declares -1 values";
    QTest::newRow("a bad digit") << QByteArray("0000803g") << qint64(1) << "no hexadecimal digit at offset 7";
    QTest::newRow("a sign") << QByteArray("-000803F") << qint64(1) << "no hexadecimal digit at offset 0";
    QTest::newRow("a prefix") << QByteArray("0x00803F") << qint64(1) << "no hexadecimal digit at offset 1";
    QTest::newRow("a full-width digit") << QByteArray("00008\xEF\xBC\x90"
                                                      "F00")
                                        << qint64(1) << "no hexadecimal digit at offset 5";
    QTest::newRow("a line end") << QByteArray("0000\n803F") << qint64(1) << "no hexadecimal digit at offset 4";
    QTest::newRow("a CRLF") << QByteArray("0000\r\n803F") << qint64(1) << "no hexadecimal digit at offset 4";
    QTest::newRow("a blank before") << QByteArray(" 0000803F") << qint64(1) << "no hexadecimal digit at offset 0";
    QTest::newRow("a bad digit among the surplus") << QByteArray("0000803Fxyz") << qint64(1) << QString();
}

void tst_resultxml::hexTextOfRows()
{
    QFETCH(QByteArray, baText);
    QFETCH(qint64, nValues);
    QFETCH(QString, strError);

    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row><Text.Data>" + baText + "</Text.Data></Row>")));
    std::vector<float> vecValues = {7.0F};
    QVERIFY2(objXML.readCurrentHexFloats("Row", 0, nValues, vecValues) == strError.isNull(), qPrintable(objXML.lastError()));
    QVERIFY(vecValues == std::vector<float>{strError.isNull() ? 1.0F : 7.0F});
    QVERIFY2(strError.isNull() ? objXML.lastError().isEmpty() : objXML.lastError().endsWith(strError), qPrintable(objXML.lastError()));
    // Nothing asked for is always there.
    QVERIFY(objXML.readCurrentHexFloats("Row", 0, 0, vecValues));
    QVERIFY(vecValues.empty());
    QVERIFY(objXML.readCurrentHexFloats("none", 5, 0, vecValues));
    QVERIFY(!objXML.readCurrentHexFloats("none", 0, 1, vecValues));
}

void tst_resultxml::hexTextWithMarkup_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<bool>("bRead");
    const QByteArray baLong = repeated("0000803F", 1000);
    QTest::newRow("a remark within") << QByteArray("0000<!-- x -->803F") << true;
    QTest::newRow("a reference within") << QByteArray("000&#48;803F") << true;
    QTest::newRow("CDATA within") << QByteArray("0000<![CDATA[80]]>3F") << true;
    QTest::newRow("an instruction within") << QByteArray("0000<?x?>803F") << true;
    QTest::newRow("a blank next to a remark") << QByteArray("0000<!-- x --> 803F") << false;
    QTest::newRow("an element within") << QByteArray("0000<In>80</In>3F") << false;
    QTest::newRow("a remark within a long text") << "0000<!-- x -->803F" + baLong << true;
    QTest::newRow("a remark behind a long text") << baLong + "<!-- x -->" << true;
}

void tst_resultxml::hexTextWithMarkup()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bRead);
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row><Text.Data>" + baText + "</Text.Data></Row>")));
    std::vector<float> vecValues;
    QCOMPARE(objXML.readCurrentHexFloats("Row", 0, 1, vecValues), bRead);
    QVERIFY(vecValues == (bRead ? std::vector<float>{1.0F} : std::vector<float>()));
}

void tst_resultxml::hexUnsignedAndBytes()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Text.Data=\"01000000FFFFFFFF0a0B0c0D\"/><Row Text.Data=\"00ff7F\"/>")));
    std::vector<quint32> vecValues;
    QVERIFY(objXML.readCurrentHexUInts("Row", 0, 3, vecValues));
    QVERIFY(vecValues == std::vector<quint32>({1U, 4294967295U, 0x0D0C0B0AU}));
    QVERIFY(!objXML.readCurrentHexUInts("Row", 1, 1, vecValues));
    QVERIFY(vecValues.size() == 3);
    QByteArray baBytes = "before";
    QVERIFY(objXML.readCurrentHexBytes("Row", 1, 3, baBytes));
    QCOMPARE(baBytes, QByteArray("\x00\xFF\x7F", 3));
    QVERIFY(!objXML.readCurrentHexBytes("Row", 1, 4, baBytes));
    QVERIFY(objXML.lastError().endsWith("Row[1]: declares 4 values, holds 3"));
    QCOMPARE(baBytes.size(), 3);
    QVERIFY(objXML.readCurrentHexBytes("Row", 1, 0, baBytes));
    QVERIFY(baBytes.isEmpty());
}

void tst_resultxml::swappedBytesAreNoticedAndReadAsWritten()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Text.Data=\"3F8000003F800000\"/>")));
    LogRecorder objLog;
    std::vector<float> vecValues;
    QVERIFY(objXML.readCurrentHexFloats("Row", 0, 2, vecValues));
    QVERIFY(vecValues[0] > 0.0F && vecValues[0] < 1e-40F);
    QVERIFY(objLog.isOne(2, "result.xml: Row[0]: values look byte-swapped"));
}

void tst_resultxml::theDisplayIsKeptAlive()
{
    const std::vector<float> vecValues(1000000, 1.0F);
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row><Text.Data>" + hexOf(vecValues) + "</Text.Data></Row>" + numberedRows(200000) +
                                                    repeated("<!-- " + QByteArray(9000000, 'x') + " -->", 2))));
    QVERIFY(g_nAlive >= 4); // reading and the forward pass
    g_nAlive = 0;
    std::vector<float> vecRead;
    QVERIFY(objXML.readCurrentHexFloats("Row", 0, 1000000, vecRead));
    QVERIFY(g_nAlive >= 15);
    g_nAlive = 0;
    QVERIFY(!objXML.readCurrentNumbers("Row", {"Key"}, 200001, vecRead));
    QVERIFY(objXML.lastError().contains("Row[0]: has no Key"));
    QVERIFY(objXML.open(m_objFiles, section("", numberedRows(200000))));
    g_nAlive = 0;
    QVERIFY(objXML.readCurrentNumbers("Row", {"Key"}, 200000, vecRead));
    QVERIFY(g_nAlive >= 3);
}

QTEST_GUILESS_MAIN(tst_resultxml)
#include "tst_resultxml.moc"
