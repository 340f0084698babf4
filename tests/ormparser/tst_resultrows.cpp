#include "COrmProcess.h"
#include "LogRecorder.h"
#include "OpenResult.h"
#include "OrmDocumentLimits.h"
#include "OrmHexText.h"
#include "TestDocuments.h"

#include <QtTest>

#include <limits>
#include <numeric>

Q_DECLARE_METATYPE(std::vector<float>)

using TestDocuments::numberedRows;
using TestDocuments::repeated;
using TestDocuments::section;

namespace
{
int g_nAlive = 0; ///< how often the progress display was given a chance

QByteArray hexOf(const std::vector<float>& vecValues)
{
    return OrmHexText::encodeFloats(vecValues.data(), static_cast<qint64>(vecValues.size()));
}
} // namespace

/// Stands in front of the host's own: counts.
void COrmProcess::keepAlive()
{
    ++g_nAlive;
}

class tst_resultrows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { g_nAlive = 0; }

    void rowsAreFoundInAnyOrder_data();
    void rowsAreFoundInAnyOrder();
    void rowsOfSeveralTagsAreCountedApart();
    void longTextsAreReadWhereTheyStand_data();
    void longTextsAreReadWhereTheyStand();
    void interruptedTextsAreOneText_data();
    void interruptedTextsAreOneText();
    void interruptedTextsHaveALimit_data();
    void interruptedTextsHaveALimit();
    void interruptedNumbersHaveALimit();
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

void tst_resultrows::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
}

void tst_resultrows::rowsAreFoundInAnyOrder_data()
{
    QTest::addColumn<int>("nRows");
    for (const int nRows : {0, 1, 2, 511, 512, 513, 1024, 1025, 5000})
        QTest::addRow("%d rows", nRows) << nRows;
}

void tst_resultrows::rowsAreFoundInAnyOrder()
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

void tst_resultrows::rowsOfSeveralTagsAreCountedApart()
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

void tst_resultrows::longTextsAreReadWhereTheyStand_data()
{
    QTest::addColumn<int>("nValues");
    for (const int nValues : {1, 511, 512, 513, 8191, 8192, 8193, 100000, 3000000})
        QTest::addRow("%d values", nValues) << nValues;
}

void tst_resultrows::longTextsAreReadWhereTheyStand()
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

void tst_resultrows::interruptedTextsAreOneText_data()
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

void tst_resultrows::interruptedTextsAreOneText()
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

void tst_resultrows::interruptedTextsHaveALimit_data()
{
    QTest::addColumn<int>("nBytes");
    QTest::addColumn<bool>("bRead");
    const int nLimit = static_cast<int>(OrmDocumentLimits::nXmlComposedText);
    QTest::newRow("just below") << nLimit - 1 << true;
    QTest::newRow("at the limit") << nLimit << true;
    QTest::newRow("above") << nLimit + 1 << false;
}

void tst_resultrows::interruptedTextsHaveALimit()
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

/// Wherever a number is read from an element, and each way says which key it is.
void tst_resultrows::interruptedNumbersHaveALimit()
{
    const QByteArray baKey = "<Key>" + QByteArray(static_cast<int>(OrmDocumentLimits::nXmlComposedText), '0') + "&#x31;</Key>";
    const QString strReason = QStringLiteral("Key: its text is interrupted and longer than 8388608 bytes");
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", baKey + "<Row>" + baKey + "</Row><Row Key=\"2\"/>")));

    QString strText = QStringLiteral("before");
    QVERIFY(!objXML.currentKeyText("Key", strText));
    QVERIFY2(objXML.lastError().endsWith("Second: " + strReason), qPrintable(objXML.lastError()));
    QCOMPARE(strText, QStringLiteral("before"));

    int nValue = 7;
    QVERIFY(!objXML.Read2ndTagKeyValues("First", "Second", QStringLiteral("Key"), nValue));
    QVERIFY2(objXML.lastError().endsWith("Second: " + strReason), qPrintable(objXML.lastError()));
    QCOMPARE(nValue, 7);

    std::vector<quint32> vecWhole = {7};
    QVERIFY(!objXML.readCurrentUInts("Row", {"Key"}, 2, vecWhole));
    QVERIFY2(objXML.lastError().endsWith("Row[0]: " + strReason.mid(5)), qPrintable(objXML.lastError()));
    QCOMPARE(vecWhole, std::vector<quint32>{7});
    std::vector<float> vecFloat = {7.0F};
    QVERIFY(!objXML.readCurrentNumbers("Row", {"Key"}, 2, vecFloat));
    QVERIFY2(objXML.lastError().endsWith("Row[0]: " + strReason.mid(5)), qPrintable(objXML.lastError()));
    QCOMPARE(vecFloat, std::vector<float>{7.0F});
    QCOMPARE(objXML.row(1), QStringLiteral("2"));
}

void tst_resultrows::rowsHaveALimit_data()
{
    QTest::addColumn<QByteArray>("baInside");
    QTest::addColumn<bool>("bRead");

    const int nElements = OrmDocumentLimits::nXmlRowElements;
    QTest::newRow("elements of a large row") << repeated("<x/>", 300) << true;
    QTest::newRow("elements at the limit") << repeated("<x/>", nElements - 1) << true; // its key is one too
    QTest::newRow("elements just below it") << repeated("<x/>", nElements - 2) << true;
    QTest::newRow("elements above it") << repeated("<x/>", nElements) << false;
    QTest::newRow("nested elements above it") << repeated("<x><y/></x>", nElements / 2) << false;
    QTest::newRow("bytes of a large row") << repeated("<!-- remark -->", 100000) << true;
    // Around the inside stand the row's own tags and its key.
    const auto remarks = [](qint64 nRowBytes)
    {
        const auto nBytes = static_cast<int>(nRowBytes) - static_cast<int>(qstrlen("<Row><Key>large</Key></Row>"));
        const QByteArray baRemarks = repeated("<!-- remark -->", nBytes / 15 - 1);
        return baRemarks + "<!--" + QByteArray(nBytes - baRemarks.size() - 7, 'x') + "-->";
    };
    QTest::newRow("bytes just below the limit") << remarks(OrmDocumentLimits::nXmlRowBytes - 1) << true;
    QTest::newRow("bytes at the limit") << remarks(OrmDocumentLimits::nXmlRowBytes) << true;
    QTest::newRow("bytes above the limit") << remarks(OrmDocumentLimits::nXmlRowBytes + 1) << false;
    QTest::newRow("bytes of one long remark") << QByteArray("<!--" + QByteArray(30000000, 'x') + "-->") << true;
    QTest::newRow("bytes of one long instruction") << QByteArray("<?x " + QByteArray(30000000, 'x') + "?>") << true;
    QTest::newRow("bytes of one long text") << QByteArray(30000000, 'x') << true;
}

void tst_resultrows::rowsHaveALimit()
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

void tst_resultrows::numbersOfRows_data()
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

void tst_resultrows::numbersOfRows()
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

void tst_resultrows::unsignedNumbersOfRows()
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

void tst_resultrows::hexTextOfRows_data()
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

void tst_resultrows::hexTextOfRows()
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

void tst_resultrows::hexTextWithMarkup_data()
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

void tst_resultrows::hexTextWithMarkup()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bRead);
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row><Text.Data>" + baText + "</Text.Data></Row>")));
    std::vector<float> vecValues;
    QCOMPARE(objXML.readCurrentHexFloats("Row", 0, 1, vecValues), bRead);
    QVERIFY(vecValues == (bRead ? std::vector<float>{1.0F} : std::vector<float>()));
}

void tst_resultrows::hexUnsignedAndBytes()
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

void tst_resultrows::swappedBytesAreNoticedAndReadAsWritten()
{
    OpenResult objXML;
    QVERIFY(objXML.open(m_objFiles, section("", "<Row Text.Data=\"3F8000003F800000\"/>")));
    LogRecorder objLog;
    std::vector<float> vecValues;
    QVERIFY(objXML.readCurrentHexFloats("Row", 0, 2, vecValues));
    QVERIFY(vecValues[0] > 0.0F && vecValues[0] < 1e-40F);
    QVERIFY(objLog.isOne(2, "result.xml: Row[0]: values look byte-swapped"));
}

void tst_resultrows::theDisplayIsKeptAlive()
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

QTEST_GUILESS_MAIN(tst_resultrows)
#include "tst_resultrows.moc"
