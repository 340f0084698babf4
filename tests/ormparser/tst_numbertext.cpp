#include "OrmHexText.h"
#include "OrmNumberText.h"

#include <QLocale>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

Q_DECLARE_METATYPE(std::vector<float>)

namespace
{
std::string_view view(const QByteArray& baText)
{
    return {baText.constData(), static_cast<size_t>(baText.size())};
}

quint32 bitsOf(float fValue)
{
    quint32 nBits = 0;
    std::memcpy(&nBits, &fValue, sizeof(nBits));
    return nBits;
}
} // namespace

class tst_numbertext : public QObject
{
    Q_OBJECT

private slots:
    void integers_data();
    void integers();
    void unsignedIntegers_data();
    void unsignedIntegers();
    void decimalNumbers_data();
    void decimalNumbers();
    void floatsAtTheirLimits_data();
    void floatsAtTheirLimits();
    void numbersDoNotDependOnTheLocale_data();
    void numbersDoNotDependOnTheLocale();

    void hexTextOfKnownValues_data();
    void hexTextOfKnownValues();
    void hexTextOfEveryKindOfBitsComesBack();
    void everyCharacterIsADigitOrNot();
    void hexTextTooShort_data();
    void hexTextTooShort();
    void theFirstBadDigitIsFound_data();
    void theFirstBadDigitIsFound();
    void hexBytes();
    void swappedBytesAreNoticed_data();
    void swappedBytesAreNoticed();
};

void tst_numbertext::integers_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<bool>("bInt");
    QTest::addColumn<int>("nExpected");

    QTest::newRow("zero") << QByteArray("0") << true << 0;
    QTest::newRow("a number") << QByteArray("48") << true << 48;
    QTest::newRow("negative") << QByteArray("-1") << true << -1;
    QTest::newRow("the largest") << QByteArray("2147483647") << true << std::numeric_limits<int>::max();
    QTest::newRow("the smallest") << QByteArray("-2147483648") << true << std::numeric_limits<int>::min();
    for (const char* pText : {"",      "-",     "+3",    " 3",       "3 ",          "3\n",         "3.0",        "1e3",
                              "0x10",  "007",   "-0",    "--1",      "2147483648",  "-2147483649", "4294967296", "12345678901234567890",
                              "1,000", "1'000", "three", "\xD9\xA3", "\xEF\xBC\x93"})
        QTest::addRow("not \"%s\"", pText) << QByteArray(pText) << false << 0;
    QTest::newRow("not NUL behind") << QByteArray("3\0", 2) << false << 0;
}

void tst_numbertext::integers()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bInt);
    QFETCH(int, nExpected);

    int nValue = 77;
    QCOMPARE(OrmNumberText::toInt(view(baText), nValue), bInt);
    QCOMPARE(nValue, bInt ? nExpected : 77);
    nValue = 77;
    QCOMPARE(OrmNumberText::toInt(QString::fromUtf8(baText.constData(), baText.size()), nValue), bInt);
    QCOMPARE(nValue, bInt ? nExpected : 77);
}

void tst_numbertext::unsignedIntegers_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<bool>("bUInt");
    QTest::addColumn<quint32>("nExpected");

    QTest::newRow("zero") << QByteArray("0") << true << 0U;
    QTest::newRow("the largest") << QByteArray("4294967295") << true << 4294967295U;
    for (const char* pText : {"", "-1", "+1", "-0", "01", "4294967296", "1.0", " 1"})
        QTest::addRow("not \"%s\"", pText) << QByteArray(pText) << false << 0U;
}

void tst_numbertext::unsignedIntegers()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bUInt);
    QFETCH(quint32, nExpected);

    quint32 nValue = 77;
    QCOMPARE(OrmNumberText::toUInt(view(baText), nValue), bUInt);
    QCOMPARE(nValue, bUInt ? nExpected : 77U);
}

void tst_numbertext::decimalNumbers_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<bool>("bNumber");
    QTest::addColumn<double>("fExpected");

    QTest::newRow("zero") << QByteArray("0") << true << 0.0;
    QTest::newRow("a whole number") << QByteArray("12") << true << 12.0;
    QTest::newRow("a fraction") << QByteArray("-0.125") << true << -0.125;
    QTest::newRow("an exponent") << QByteArray("1.5e3") << true << 1500.0;
    QTest::newRow("another exponent") << QByteArray("25E-2") << true << 0.25;
    QTest::newRow("an exponent with a sign") << QByteArray("1e+2") << true << 100.0;
    QTest::newRow("no digit before the point") << QByteArray(".5") << true << 0.5;
    QTest::newRow("no digit behind the point") << QByteArray("5.") << true << 5.0;
    for (const char* pText : {"",
                              "-",
                              ".",
                              "e5",
                              "+3",
                              " 3",
                              "3 ",
                              "1,5",
                              "1.5.2",
                              "1e",
                              "1e1e1",
                              "0x10",
                              "nan",
                              "NaN",
                              "-nan",
                              "inf",
                              "-inf",
                              "infinity",
                              "1e999",
                              "-1e999",
                              "1.5f",
                              "1_000",
                              "\xD9\xA1\xD9\xAB\xD9\xA5"})
        QTest::addRow("not \"%s\"", pText) << QByteArray(pText) << false << 0.0;
}

void tst_numbertext::decimalNumbers()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bNumber);
    QFETCH(double, fExpected);

    float fValue = 77.0F;
    QCOMPARE(OrmNumberText::toFloat(view(baText), fValue), bNumber);
    QCOMPARE(fValue, bNumber ? static_cast<float>(fExpected) : 77.0F);
    double fWide = 77.0;
    QCOMPARE(OrmNumberText::toDouble(view(baText), fWide), bNumber);
    QCOMPARE(fWide, bNumber ? fExpected : 77.0);
    fWide = 77.0;
    QCOMPARE(OrmNumberText::toDouble(QString::fromUtf8(baText), fWide), bNumber);
    QCOMPARE(fWide, bNumber ? fExpected : 77.0);
}

void tst_numbertext::floatsAtTheirLimits_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<bool>("bFloat");
    QTest::addColumn<quint32>("nBits");

    QTest::newRow("the largest") << QByteArray("3.40282347e38") << true << 0x7F7FFFFFU;
    QTest::newRow("above the largest") << QByteArray("3.5e38") << false << 0U;
    QTest::newRow("far above") << QByteArray("-1e300") << false << 0U;
    QTest::newRow("the smallest normal") << QByteArray("1.17549435e-38") << true << 0x00800000U;
    QTest::newRow("a denormal") << QByteArray("1e-45") << true << 0x00000001U;
    QTest::newRow("below a denormal") << QByteArray("1e-60") << true << 0x00000000U;
    QTest::newRow("below a double") << QByteArray("1e-400") << true << 0x00000000U;
    QTest::newRow("below a double, without an exponent") << "0." + QByteArray(400, '0') + "1" << true << 0x00000000U;
    QTest::newRow("below a double, many digits") << QByteArray(400, '9') + "e-900" << true << 0x00000000U;
    QTest::newRow("an exponent beyond all numbers") << QByteArray("1e-99999999999999999999") << true << 0x00000000U;
    QTest::newRow("an exponent beyond all numbers upwards") << QByteArray("1e99999999999999999999") << false << 0U;
    QTest::newRow("two exponents, the first beyond all numbers") << QByteArray("1e-400e2") << false << 0U;
    QTest::newRow("above a double, with a sign") << QByteArray("1e+400") << false << 0U;
    QTest::newRow("below a double, raised by its exponent") << "0." + QByteArray(400, '0') + "1e+10" << true << 0x00000000U;
    QTest::newRow("above a double, many digits") << QByteArray(900, '9') + "e-100" << false << 0U;
    QTest::newRow("below a denormal, negative") << QByteArray("-1e-60") << true << 0x80000000U;
    QTest::newRow("negative zero") << QByteArray("-0.0") << true << 0x80000000U;
    QTest::newRow("many digits") << QByteArray("0.") + QByteArray(200, '3') << true << bitsOf(1.0F / 3.0F);
}

void tst_numbertext::floatsAtTheirLimits()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bFloat);
    QFETCH(quint32, nBits);

    float fValue = 0.0F;
    QCOMPARE(OrmNumberText::toFloat(view(baText), fValue), bFloat);
    QCOMPARE(bitsOf(fValue), nBits);
}

void tst_numbertext::numbersDoNotDependOnTheLocale_data()
{
    QTest::addColumn<QByteArray>("baLocale");
    QTest::addColumn<QString>("strComma"); // what the locale itself writes for 1.5
    QTest::addColumn<bool>("bCommaInC");   // the C library has a comma for it
    QTest::newRow("German") << QByteArray("de_DE") << QStringLiteral("1,5") << true;
    QTest::newRow("Persian") << QByteArray("fa_IR") << QString::fromUtf8("۱٫۵") << false;
    QTest::newRow("Arabic") << QByteArray("ar_EG") << QString::fromUtf8("١٫٥") << false;
}

void tst_numbertext::numbersDoNotDependOnTheLocale()
{
    QFETCH(QByteArray, baLocale);
    QFETCH(QString, strComma);
    QFETCH(bool, bCommaInC);

    QLocale::setDefault(QLocale(QString::fromLatin1(baLocale)));
    QCOMPARE(QLocale().toString(1.5), strComma); // the locale really differs

    // The C library's locale too. Where the system has not got it, it is made for this test out of the system's own definitions.
    QTemporaryDir objFolder;
    const QByteArray baFullName = baLocale + ".UTF-8";
    const QString strTool = QStandardPaths::findExecutable("localedef");
    if (bCommaInC && !setlocale(LC_ALL, baFullName.constData()) && !strTool.isEmpty())
    {
        const QString strTarget = objFolder.filePath(QString::fromLatin1(baFullName));
        QProcess::execute(strTool, {"--no-archive", "-c", "-i", QString::fromLatin1(baLocale), "-f", "UTF-8", strTarget});
        qputenv("LOCPATH", QFile::encodeName(objFolder.path()));
        if (setlocale(LC_ALL, baFullName.constData()))
            QCOMPARE(QByteArray(localeconv()->decimal_point), QByteArray(","));
    }
    const auto objRestore = qScopeGuard(
        []
        {
            setlocale(LC_ALL, "C");
            qunsetenv("LOCPATH");
            QLocale::setDefault(QLocale::c());
        });

    double fValue = 0.0;
    QVERIFY(OrmNumberText::toDouble(QStringLiteral("1.5"), fValue));
    QCOMPARE(fValue, 1.5);
    float fNarrow = 0.0F;
    QVERIFY(OrmNumberText::toFloat("1.5", fNarrow));
    QCOMPARE(fNarrow, 1.5F);
    QVERIFY(!OrmNumberText::toDouble(QStringLiteral("1,5"), fValue));
    QVERIFY(!OrmNumberText::toDouble(strComma, fValue));
    int nValue = 0;
    QVERIFY(!OrmNumberText::toInt(QLocale().toString(3000), nValue));
    QVERIFY(OrmNumberText::toInt(QStringLiteral("3000"), nValue));
    QCOMPARE(nValue, 3000);
}

void tst_numbertext::hexTextOfKnownValues_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<quint32>("nBits");

    QTest::newRow("1.0") << QByteArray("0000803F") << bitsOf(1.0F);
    QTest::newRow("-2.0") << QByteArray("000000C0") << bitsOf(-2.0F);
    QTest::newRow("12.5, lower case") << QByteArray("00004841") << bitsOf(12.5F);
    QTest::newRow("0.1, lower case") << QByteArray("cdcccc3d") << bitsOf(0.1F);
    QTest::newRow("0.1, mixed case") << QByteArray("cDCcCc3d") << bitsOf(0.1F);
    QTest::newRow("0") << QByteArray("00000000") << 0U;
    QTest::newRow("-0") << QByteArray("00000080") << 0x80000000U;
    QTest::newRow("NaN") << QByteArray("0000C07F") << 0x7FC00000U;
    QTest::newRow("a signalling NaN") << QByteArray("0100807F") << 0x7F800001U;
    QTest::newRow("infinity") << QByteArray("0000807F") << bitsOf(std::numeric_limits<float>::infinity());
    QTest::newRow("-infinity") << QByteArray("000080FF") << 0xFF800000U;
    QTest::newRow("the smallest denormal") << QByteArray("01000000") << 1U;
    QTest::newRow("the largest float") << QByteArray("FFFF7F7F") << bitsOf(std::numeric_limits<float>::max());
    QTest::newRow("each digit once") << QByteArray("01234567") << 0x67452301U;
    QTest::newRow("each other digit once") << QByteArray("89ABCDEF") << 0xEFCDAB89U;
}

void tst_numbertext::hexTextOfKnownValues()
{
    QFETCH(QByteArray, baText);
    QFETCH(quint32, nBits);

    float fValue = 0.0F;
    qint64 nOffset = -7;
    QVERIFY(OrmHexText::textBufToValueBuf(baText.constData(), baText.size(), 1, &fValue, &nOffset));
    QCOMPARE(bitsOf(fValue), nBits);
    QCOMPARE(nOffset, qint64(-7));
    quint32 nValue = 0;
    QVERIFY(OrmHexText::decodeUInts(baText.constData(), baText.size(), 1, &nValue));
    QCOMPARE(nValue, nBits);
    QCOMPARE(OrmHexText::encodeUInts(&nBits, 1), baText.toUpper());
    QCOMPARE(OrmHexText::encodeFloats(&fValue, 1), baText.toUpper());
}

void tst_numbertext::hexTextOfEveryKindOfBitsComesBack()
{
    std::vector<quint32> vecBits(100003);
    quint32 nState = 12345;
    for (quint32& nBits : vecBits)
        nBits = nState = nState * 1664525U + 1013904223U;
    const auto nCount = static_cast<qint64>(vecBits.size());
    const QByteArray baText = OrmHexText::encodeUInts(vecBits.data(), nCount);
    QCOMPARE(baText.size(), 8 * 100003);
    for (const QByteArray& baCase : {baText, baText.toLower()})
    {
        std::vector<quint32> vecRead(vecBits.size());
        QVERIFY(OrmHexText::decodeUInts(baCase.constData(), baCase.size(), nCount, vecRead.data()));
        QVERIFY(vecRead == vecBits);
        std::vector<float> vecFloats(vecBits.size());
        QVERIFY(OrmHexText::textBufToValueBuf(baCase.constData(), baCase.size(), nCount, vecFloats.data()));
        QCOMPARE(std::memcmp(vecFloats.data(), vecBits.data(), 4 * vecBits.size()), 0);
    }
}

void tst_numbertext::everyCharacterIsADigitOrNot()
{
    const QByteArray baDigits = "0123456789abcdefABCDEF";
    for (int nPlace = 0; nPlace < 8; ++nPlace)
    {
        for (int c = 0; c < 256; ++c)
        {
            QByteArray baText = "12345678";
            baText[nPlace] = static_cast<char>(c);
            const bool bDigit = baDigits.contains(static_cast<char>(c));
            quint32 nValue = 0;
            qint64 nOffset = -1;
            const QByteArray baWhere = QStringLiteral("character %1 at %2").arg(c).arg(nPlace).toLatin1();
            QVERIFY2(OrmHexText::decodeUInts(baText.constData(), 8, 1, &nValue, &nOffset) == bDigit, baWhere.constData());
            QVERIFY2(nOffset == (bDigit ? -1 : nPlace), baWhere.constData());
            quint8 anBytes[4];
            nOffset = -1;
            QVERIFY2(OrmHexText::hex2ascii(baText.constData(), 8, 4, anBytes, &nOffset) == bDigit, baWhere.constData());
            QVERIFY2(nOffset == (bDigit ? -1 : nPlace), baWhere.constData());
        }
    }
}

void tst_numbertext::hexTextTooShort_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<qint64>("nValues");
    QTest::addColumn<bool>("bEnough");

    QTest::newRow("nothing asked for") << QByteArray("0000803F") << qint64(0) << true;
    QTest::newRow("nothing asked for of nothing") << QByteArray("") << qint64(0) << true;
    QTest::newRow("nothing asked for of bad digits") << QByteArray("oops") << qint64(0) << true;
    QTest::newRow("one of nothing") << QByteArray("") << qint64(1) << false;
    QTest::newRow("7 digits") << QByteArray("0000803") << qint64(1) << false;
    QTest::newRow("8 digits") << QByteArray("0000803F") << qint64(1) << true;
    QTest::newRow("9 digits") << QByteArray("0000803F0") << qint64(1) << true;
    QTest::newRow("surplus that is no hex text") << QByteArray("0000803F\n<&zz") << qint64(1) << true;
    QTest::newRow("15 digits for two") << QByteArray("0000803F0000803") << qint64(2) << false;
    QTest::newRow("a negative count") << QByteArray("0000803F") << qint64(-1) << false;
    QTest::newRow("a count whose product wraps") << QByteArray("0000803F") << (std::numeric_limits<qint64>::max() / 8 + 2) << false;
    QTest::newRow("the largest count") << QByteArray("0000803F") << std::numeric_limits<qint64>::max() << false;
}

void tst_numbertext::hexTextTooShort()
{
    QFETCH(QByteArray, baText);
    QFETCH(qint64, nValues);
    QFETCH(bool, bEnough);

    float afValues[2] = {7.0F, 7.0F};
    qint64 nOffset = -1;
    QCOMPARE(OrmHexText::textBufToValueBuf(baText.constData(), baText.size(), nValues, afValues, &nOffset), bEnough);
    QCOMPARE(nOffset, bEnough ? qint64(-1) : qint64(baText.size()));
    QCOMPARE(afValues[0], bEnough && nValues > 0 ? 1.0F : 7.0F);
    QCOMPARE(OrmHexText::textBufToValueBuf(baText.constData(), baText.size(), nValues, afValues), bEnough);
}

void tst_numbertext::theFirstBadDigitIsFound_data()
{
    QTest::addColumn<int>("nBad");
    QTest::addColumn<int>("nValues");
    for (const int nBad : {0, 1, 7, 8, 511, 512, 513, 1023, 1599, 1600, 1607, 1608})
    {
        for (const int nValues : {1, 64, 65, 128, 200, 201})
            QTest::addRow("at %d of %d values", nBad, nValues) << nBad << nValues;
    }
}

void tst_numbertext::theFirstBadDigitIsFound()
{
    QFETCH(int, nBad);
    QFETCH(int, nValues);

    QByteArray baText(201 * 8 + 8, '1');
    baText[nBad] = 'g';
    baText[baText.size() - 1] = '-';
    std::vector<float> vecValues(static_cast<size_t>(nValues));
    qint64 nOffset = -1;
    const bool bGood = nBad >= 8 * nValues;
    QCOMPARE(OrmHexText::textBufToValueBuf(baText.constData(), baText.size(), nValues, vecValues.data(), &nOffset), bGood);
    QCOMPARE(nOffset, bGood ? qint64(-1) : qint64(nBad));
}

void tst_numbertext::hexBytes()
{
    std::vector<quint8> vecBytes(256);
    for (size_t i = 0; i < vecBytes.size(); ++i)
        vecBytes[i] = static_cast<quint8>(i);
    const QByteArray baText = OrmHexText::encodeBytes(vecBytes.data(), 256);
    QCOMPARE(baText.left(8), QByteArray("00010203"));
    QCOMPARE(baText.right(4), QByteArray("FEFF"));
    std::vector<quint8> vecRead(256);
    QVERIFY(OrmHexText::hex2ascii(baText.constData(), baText.size(), 256, vecRead.data()));
    QVERIFY(vecRead == vecBytes);
    qint64 nOffset = -1;
    QVERIFY(!OrmHexText::hex2ascii("012", 3, 2, vecRead.data(), &nOffset));
    QCOMPARE(nOffset, qint64(3));
}

void tst_numbertext::swappedBytesAreNoticed_data()
{
    QTest::addColumn<std::vector<float>>("vecValues");
    QTest::addColumn<bool>("bSwapped");

    const float fSwapped = 4.6006e-41F; // what 3F800000 reads as
    QTest::newRow("nothing") << std::vector<float>() << false;
    QTest::newRow("nothing but 0") << std::vector<float>{0.0F, -0.0F} << false;
    QTest::newRow("ordinary values") << std::vector<float>{1.0F, -2.5F, 1e-20F, 1e20F} << false;
    QTest::newRow("swapped ones") << std::vector<float>{fSwapped, fSwapped, 0.0F, 1.0F} << true;
    QTest::newRow("half of them") << std::vector<float>{fSwapped, 1.0F} << false;
    QTest::newRow("at the bounds") << std::vector<float>{1e-30F, 1e30F} << false;
    QTest::newRow("NaN") << std::vector<float>{std::nanf(""), std::nanf("")} << true;
}

void tst_numbertext::swappedBytesAreNoticed()
{
    QFETCH(std::vector<float>, vecValues);
    QFETCH(bool, bSwapped);
    QCOMPARE(OrmHexText::looksByteSwapped(vecValues.data(), static_cast<qint64>(vecValues.size())), bSwapped);
}

QTEST_GUILESS_MAIN(tst_numbertext)
#include "tst_numbertext.moc"
