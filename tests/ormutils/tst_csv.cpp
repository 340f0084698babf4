// Tables as other programs read them.

#include "OrmCsv.h"

#include <QLocale>
#include <QTest>

#include <limits>

class CCsvTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAreQuotedWhereNeeded_data()
    {
        QTest::addColumn<QStringList>("lstFields");
        QTest::addColumn<QByteArray>("aLine");
        QTest::newRow("plain") << QStringList{"a", "b c", ""} << QByteArray("a,b c,\r\n");
        QTest::newRow("comma") << QStringList{"Day 0, 1 mm", "2"} << QByteArray("\"Day 0, 1 mm\",2\r\n");
        QTest::newRow("quotation mark") << QStringList{"3\" lens"} << QByteArray("\"3\"\" lens\"\r\n");
        QTest::newRow("line feed") << QStringList{"a\nb"} << QByteArray("\"a\nb\"\r\n");
        QTest::newRow("carriage return") << QStringList{"a\rb"} << QByteArray("\"a\rb\"\r\n");
        QTest::newRow("beyond ASCII") << QStringList{QString::fromUtf8("pmol M-¹")} << QByteArray("pmol M-¹\r\n");
        QTest::newRow("no field") << QStringList{} << QByteArray("\r\n");
    }

    void fieldsAreQuotedWhereNeeded()
    {
        QFETCH(QStringList, lstFields);
        QTEST(OrmCsv::line(lstFields), "aLine");
    }

    void numbersReadBackInEveryLocale_data()
    {
        QTest::addColumn<double>("fValue");
        QTest::addColumn<QString>("strText");
        QTest::newRow("whole") << 3.0 << "3";
        QTest::newRow("thousands") << 1234567.0 << "1234567";
        QTest::newRow("fraction") << 0.1 << "0.1";
        QTest::newRow("all digits") << 0.1 + 0.2 << "0.30000000000000004";
        QTest::newRow("negative") << -2.5e-9 << "-2.5e-09";
        QTest::newRow("large") << 3.2e20 << "3.2e+20";
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << "";
        QTest::newRow("infinite") << -std::numeric_limits<double>::infinity() << "";
    }

    void numbersReadBackInEveryLocale()
    {
        QFETCH(double, fValue);
        QFETCH(QString, strText);
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German));
        const QString strNumber = OrmCsv::number(fValue);
        QLocale::setDefault(before);
        QCOMPARE(strNumber, strText);
        if (!strText.isEmpty())
        {
            QCOMPARE(QLocale::c().toDouble(strNumber), fValue);
        }
    }
};

QTEST_GUILESS_MAIN(CCsvTest)
#include "tst_csv.moc"
