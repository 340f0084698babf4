#include "CompareSettings.h"
#include "DamageTools.h"

#include <QtTest>

using DamageTools::bytes;
using DamageTools::CMutator;

/// Sequence, click and index files that were damaged anywhere: what is read of them is what a plain second reader finds. A difference ends
/// the program with what it is.
class tst_damage_texts : public QObject
{
    Q_OBJECT

private slots:
    void everyBeginningIsReadAsItStands_data();
    void everyBeginningIsReadAsItStands();
    void mutantsAreReadAsTheyStandOrRefused_data();
    void mutantsAreReadAsTheyStandOrRefused();
};

namespace
{

void addSamples()
{
    QTest::addColumn<QByteArray>("bySound");
    QTest::newRow("a sequence") << QByteArray(
        "# phantom\n[Sequence Information]\nSequence=MH20260801\nSubject=M\xC3\xBCller \xF0\x9F\x90\xAD\n"
        "Date Time=2026-08-01T09:30:00\n\n[Click Numbers]\r\nCount=3\r\n1=MH20260801_001\n"
        "2=MH20260801_002\n3 = MH20260801_003\n[CT Acquisition Parameters]\nVoltage=50\n");
    QTest::newRow("a click") << QByteArray(
        "\xEF\xBB\xBF[photographic image]\nImage File=photograph.png\nField of View=13.6\n[structure image]\n"
        "[reference image]\n[luminescent image]\nImage Subtype=Fluorescent\nEmission Filter=620\n"
        "FL x-spot=1.25\nFL y-spot=0.50;2\nFL y-spot=0.5\nField of View=12.5\n");
    QTest::newRow("an index") << QByteArray(
        "[SOLA_1]\nMenuName=Day 0, 5 wavelengths\nFileName=SOLA_1.xml\n[SOLA_2]\nFileName=below/SOLA_2.xml\r\r"
        "[other]\nMenuName=Day 0\nFileName=../outside.xml\n[SOLA_1]\nComment=a=b; c\n");
}

} // namespace

void tst_damage_texts::everyBeginningIsReadAsItStands_data()
{
    addSamples();
}

void tst_damage_texts::everyBeginningIsReadAsItStands()
{
    QFETCH(QByteArray, bySound);
    for (int nLength = 0; nLength <= bySound.size(); ++nLength)
    {
        // A text that ends early is a shorter text.
        QVERIFY(CompareSettings::textBothWays(bytes(bySound.left(nLength))));
        QVERIFY(CompareSettings::filesBothWays(bytes(bySound.left(nLength))));
    }
}

void tst_damage_texts::mutantsAreReadAsTheyStandOrRefused_data()
{
    addSamples();
}

void tst_damage_texts::mutantsAreReadAsTheyStandOrRefused()
{
    QFETCH(QByteArray, bySound);
    const int nMutants = 3400; // of each sample
    CMutator objMutator(static_cast<quint32>(bySound.size()));
    int nRead = 0;
    for (int i = 0; i < nMutants; ++i)
    {
        const std::string strMutant = bytes(objMutator.mutant(bySound));
        const bool bRead = CompareSettings::textBothWays(strMutant);
        QCOMPARE(CompareSettings::filesBothWays(strMutant), bRead);
        nRead += bRead ? 1 : 0;
    }
    QVERIFY2(nRead > nMutants / 2 && nRead < nMutants, qPrintable(QString::number(nRead)));
}

QTEST_GUILESS_MAIN(tst_damage_texts)
#include "tst_damage_texts.moc"
