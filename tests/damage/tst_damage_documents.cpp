#include "CompareResult.h"
#include "DamageTools.h"
#include "OrmTestMain.h"

using DamageTools::bytes;
using DamageTools::CMutator;
using DamageTools::plainUnit;
using DamageTools::smallResult;

/// Results that were damaged anywhere: the tool's readers and a plain second reader come to the same end and the same values, within bounds
/// of memory. A difference ends the program with what it is.
class tst_damage_documents : public QObject
{
    Q_OBJECT

private slots:
    void everyBeginningIsRefused_data();
    void everyBeginningIsRefused();
    void mutantsAreReadAsTheyStandOrRefused_data();
    void mutantsAreReadAsTheyStandOrRefused();
};

namespace
{

void addSamples()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QByteArray>("bySound");
    for (const int nKind : {0, 1})
    {
        for (const char* pVersion : {"1.0", "2.0"})
        {
            QTest::addRow("%s %s", nKind == 1 ? "NOVA" : "SOLA", pVersion) << nKind << smallResult(nKind, pVersion).toXml();
        }
    }
}

} // namespace

void tst_damage_documents::everyBeginningIsRefused_data()
{
    addSamples();
}

void tst_damage_documents::everyBeginningIsRefused()
{
    QFETCH(int, nKind);
    QFETCH(QByteArray, bySound);
    QVERIFY(CompareResult::readBothWays(bytes(bySound), nKind == 1, plainUnit(nKind)));
    const int nWhole = bySound.trimmed().size(); // only the last line end may be missing
    for (int nLength = 0; nLength < nWhole; ++nLength)
    {
        QVERIFY2(!CompareResult::readBothWays(bytes(bySound.left(nLength)), nKind == 1, plainUnit(nKind)),
                 qPrintable(QStringLiteral("%1 of %2 bytes were accepted").arg(nLength).arg(nWhole)));
    }
    QVERIFY(CompareResult::readBothWays(bytes(bySound.left(nWhole)), nKind == 1, plainUnit(nKind)));
}

void tst_damage_documents::mutantsAreReadAsTheyStandOrRefused_data()
{
    addSamples();
}

void tst_damage_documents::mutantsAreReadAsTheyStandOrRefused()
{
    QFETCH(int, nKind);
    QFETCH(QByteArray, bySound);
    const int nMutants = 2500; // of each sample
    CMutator objMutator(static_cast<quint32>(2026 + bySound.size()));
    int nRead = 0;
    for (int i = 0; i < nMutants; ++i)
    {
        nRead += CompareResult::readBothWays(bytes(objMutator.mutant(bySound)), nKind == 1, plainUnit(nKind)) ? 1 : 0;
    }
    QVERIFY2(nRead > nMutants / 50 && nRead < nMutants / 2, qPrintable(QString::number(nRead)));
}

ORM_TEST_MAIN(tst_damage_documents)
#include "tst_damage_documents.moc"
