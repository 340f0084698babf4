#include "CPLResultXMLWrapper.h"
#include "CPLSettingsFileWrapper.h"
#include "CostMeter.h"
#include "TestDocuments.h"
#include "TestFiles.h"

#include <QtTest>

#include <limits>

using TestDocuments::repeated;
using TestDocuments::section;

/// What large documents and those that lie about their size cost the reader.
class tst_documentcosts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void countsThatLieCostNothing_data();
    void countsThatLieCostNothing();
    void documentsOfManyElementsCostLittleMoreThanTheirSize_data();
    void documentsOfManyElementsCostLittleMoreThanTheirSize();
    void absentKeysAreNoticedQuickly();
    void refusedIndexesCostLittle_data();
    void refusedIndexesCostLittle();

private:
    TestFiles m_objFiles;
};

void tst_documentcosts::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
    QVERIFY(costMeterSeesQt());
}

void tst_documentcosts::countsThatLieCostNothing_data()
{
    QTest::addColumn<qint64>("nCount");
    for (const qint64 nCount :
         {qint64(25000000), qint64(4294967296), qint64(46341) * 46341, std::numeric_limits<qint64>::max(), qint64(-1)})
        QTest::addRow("%lld", static_cast<long long>(nCount)) << nCount;
}

void tst_documentcosts::countsThatLieCostNothing()
{
    QFETCH(qint64, nCount);

    const QString strFile =
        m_objFiles.write("lies.xml", section("Width=\"5000\" Height=\"5000\"", "<Row Key=\"1\"><Text.Data>0000803F</Text.Data></Row>"));
    CPLResultXMLWrapper objXML;
    std::vector<float> vecFloats;
    std::vector<quint32> vecUInts;
    QByteArray baBytes;
    const CostMeter objMeter;
    QVERIFY(objXML.loadXMLFile(strFile));
    QVERIFY(objXML.openSection("First", "Second"));
    QVERIFY(!objXML.readCurrentHexFloats("Row", 0, nCount, vecFloats));
    QVERIFY(!objXML.readCurrentHexUInts("Row", 0, nCount, vecUInts));
    QVERIFY(!objXML.readCurrentHexBytes("Row", 0, nCount, baBytes));
    QVERIFY(!objXML.readCurrentNumbers("Row", {"Key"}, nCount, vecFloats));
    QVERIFY(!objXML.readCurrentUInts("Row", {"Key"}, nCount, vecUInts));
    QVERIFY2(objMeter.bytes() < nMegabyte, qPrintable(QString::number(objMeter.bytes())));
    QVERIFY(vecFloats.empty() && vecUInts.empty() && baBytes.isEmpty());
}

void tst_documentcosts::documentsOfManyElementsCostLittleMoreThanTheirSize_data()
{
    QTest::addColumn<FnDocument>("fnDocument");
    QTest::addColumn<bool>("bRead");
    const auto rows = [](const QByteArray& baRow, int nRows) { return FnDocument([=] { return section("", repeated(baRow, nRows)); }); };
    QTest::newRow("rows with their key") << rows("<Row Key=\"12.5\"/>\n", 1000000) << true;
    QTest::newRow("rows without their key") << rows("<Row Kex=\"12.5\"/>\n", 1000000) << false;
    QTest::newRow("empty rows") << rows("<Row/>", 3000000) << false;
    QTest::newRow("rows of another tag") << rows("<Raw Key=\"12.5\"/>", 1000000) << false;
    QTest::newRow("rows of many attributes") << rows("<Row" + attributes(255) + " Key=\"1\"/>", 10000) << true;
    QTest::newRow("rows of many elements") << rows("<Row>" + repeated("<x/>", 1000) + "<Key>1</Key></Row>", 5000) << true;
    QTest::newRow("rows of large attributes") << rows("<Row a=\"" + QByteArray(60000, 'a') + "\" Key=\"1\"/>", 500) << true;
    QTest::newRow("one row of many elements") << FnDocument(
                                                     [] { return section("", "<Row>" + repeated("<x/>", 3000000) + "<Key>1</Key></Row>"); })
                                              << false;
    QTest::newRow("one row of many large attributes")
        << FnDocument(
               []
               {
                   QByteArray baAttributes;
                   for (int i = 0; i < 255; ++i)
                       baAttributes += " a" + QByteArray::number(i) + "=\"" + QByteArray(65000, 'a') + "\"";
                   return section(baAttributes, "<Row" + baAttributes + " Key=\"1\"/>");
               })
        << true;
    QTest::newRow("a text full of references") << FnDocument(
                                                      []
                                                      { return section("", "<Row><Key>" + repeated("&amp;", 4000000) + "</Key></Row>"); })
                                               << false;
}

void tst_documentcosts::documentsOfManyElementsCostLittleMoreThanTheirSize()
{
    QFETCH(FnDocument, fnDocument);
    QFETCH(bool, bRead);

    QByteArray baDocument = fnDocument();
    const long long nSize = baDocument.size();
    const QString strFile = m_objFiles.write("many.xml", baDocument);
    baDocument.clear();
    CPLResultXMLWrapper objXML;
    const CostMeter objMeter;
    QVERIFY2(objXML.loadXMLFile(strFile), qPrintable(objXML.lastError()));
    QVERIFY(objXML.openSection("First", "Second"));
    const qint64 nRows = objXML.currentChildCount("Row");
    QString strAbsent;
    QVERIFY(!objXML.currentKeyText("Count", strAbsent));
    float fValue = 0.0F;
    const bool bFirst = objXML.ReadCurrentKeyValues(0, "Row", "Key", fValue);
    const bool bLast = objXML.ReadCurrentKeyValues(static_cast<int>(nRows) - 1, "Row", "Key", fValue);
    QVERIFY2(bFirst == bRead && bLast == bRead, qPrintable(objXML.lastError()));
    const long long nBytes = objMeter.bytes();
    QVERIFY2(nBytes < nSize + nAllowedMemory, qPrintable(QStringLiteral("%1 beyond %2").arg(nBytes - nSize).arg(nSize)));
    std::vector<float> vecValues;
    QVERIFY2(objXML.readCurrentNumbers("Row", {"Key"}, qMax(nRows, qint64(1)), vecValues) == bRead, qPrintable(objXML.lastError()));
    const long long nRecord = bRead ? 4 * nRows : 0;
    QVERIFY2(objMeter.bytes() < nSize + nRecord + nAllowedMemory, qPrintable(QString::number(objMeter.bytes() - nSize)));
    QVERIFY2(objMeter.isWithinPatience(nSize), qPrintable(QString::number(objMeter.seconds())));
}

void tst_documentcosts::absentKeysAreNoticedQuickly()
{
    CPLResultXMLWrapper objXML;
    const QByteArray baDocument = section("", repeated("<Row Key=\"12.5\"/>\n", 1000000));
    QVERIFY(objXML.loadXMLFile(m_objFiles.write("absent.xml", baDocument)));
    const CostMeter objMeter;
    for (int i = 0; i < 100; ++i)
    {
        std::vector<int> vecValues;
        QVERIFY(objXML.Read2ndTagKeyValues("First", "Second", QStringList{QStringLiteral("Absent%1").arg(i)}, vecValues));
        QCOMPARE(vecValues.at(0), 0);
    }
    QVERIFY2(objMeter.isWithinPatience(baDocument.size()), qPrintable(QString::number(objMeter.seconds())));
}

void tst_documentcosts::refusedIndexesCostLittle_data()
{
    QTest::addColumn<FnDocument>("fnDocument");
    QTest::newRow("keys") << FnDocument(
        []
        {
            QByteArray baText;
            for (int i = 0; i < 300000; ++i)
                baText += "k" + QByteArray::number(i) + "=v\n";
            return baText;
        });
    QTest::newRow("sections") << FnDocument([] { return repeated("[s]", 1) + repeated("\n[abc]", 200000); });
    QTest::newRow("one line") << FnDocument([] { return QByteArray(50000000, 'x'); });
    QTest::newRow("nothing but line ends") << FnDocument([] { return QByteArray(16777217, '\n'); });
}

void tst_documentcosts::refusedIndexesCostLittle()
{
    QFETCH(FnDocument, fnDocument);
    QByteArray baText = fnDocument();
    const long long nSize = baText.size();
    const QString strFile = m_objFiles.write("SOLA.txt", baText);
    baText.clear();
    CPLSettingsFileWrapper objIndex;
    const CostMeter objMeter;
    QVERIFY(objIndex.load(strFile) != 0);
    QVERIFY2(objMeter.bytes() < nSize + nMegabyte, qPrintable(QString::number(objMeter.bytes())));
    QVERIFY2(objMeter.isWithinPatience(nSize), qPrintable(QString::number(objMeter.seconds())));
}

QTEST_GUILESS_MAIN(tst_documentcosts)
#include "tst_documentcosts.moc"
