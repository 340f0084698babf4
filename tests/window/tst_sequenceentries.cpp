#include "SequenceEntries.h"

#include <QtTest>

/// Which sequences the tool lists, and how an entry of the list leads back to its sequence.
class tst_sequenceentries : public QObject
{
    Q_OBJECT

private slots:
    void kindOfFlags_data();
    void kindOfFlags();
    void selectionOfEntries_data();
    void selectionOfEntries();
    void missingEntriesAreAppended_data();
    void missingEntriesAreAppended();
};

void tst_sequenceentries::kindOfFlags_data()
{
    QTest::addColumn<int>("nFlags");
    for (int nFlags = 0; nFlags < 32; ++nFlags)
    {
        QTest::addRow("surface %d, luminescent %d, fluorescent %d, trans-illumination %d, overview %d", nFlags & 1, (nFlags >> 1) & 1,
                      (nFlags >> 2) & 1, (nFlags >> 3) & 1, (nFlags >> 4) & 1)
            << nFlags;
    }
}

void tst_sequenceentries::kindOfFlags()
{
    QFETCH(int, nFlags);
    SequenceEntries::SFlags sFlags;
    sFlags.m_bTomographic = (nFlags & 1) != 0;
    sFlags.m_bLuminescent = (nFlags & 2) != 0;
    sFlags.m_bFluorescent = (nFlags & 4) != 0;
    sFlags.m_bTransIllumination = (nFlags & 8) != 0;
    sFlags.m_bOverview = (nFlags & 16) != 0;
    QCOMPARE(SequenceEntries::isSOLA(sFlags), (nFlags & 3) == 3);
    QCOMPARE(SequenceEntries::isNOVA(sFlags), (nFlags & (1 | 4 | 8 | 16)) == (1 | 4 | 8));
}

void tst_sequenceentries::selectionOfEntries_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strKind");
    QTest::addColumn<QString>("strSequenceID");
    QTest::newRow("SOLA") << QStringLiteral("SOLA S1") << 0 << QStringLiteral("SOLA") << QStringLiteral("S1");
    QTest::newRow("NOVA") << QStringLiteral("NOVA N1") << 1 << QStringLiteral("NOVA") << QStringLiteral("N1");
    QTest::newRow("no kind") << QStringLiteral("S1") << -1 << QString() << QString();
    QTest::newRow("lower case is no kind") << QStringLiteral("sola S1") << -1 << QString() << QString();
    QTest::newRow("word without blank") << QStringLiteral("SOLAS1") << -1 << QString() << QString();
    QTest::newRow("kind word in the ID goes") << QStringLiteral("SOLA a SOLA b") << 0 << QStringLiteral("SOLA") << QStringLiteral("a b");
    QTest::newRow("kind word at the ID's end stays")
        << QStringLiteral("SOLA a SOLA") << 0 << QStringLiteral("SOLA") << QStringLiteral("a SOLA");
    QTest::newRow("other kind in the ID wins") << QStringLiteral("SOLA a NOVA b") << 1 << QStringLiteral("NOVA") << QStringLiteral("a b");
    QTest::newRow("first kind in a NOVA entry's ID")
        << QStringLiteral("NOVA a SOLA b") << 1 << QStringLiteral("NOVA") << QStringLiteral("a b");
    QTest::newRow("word made by taking one out")
        << QStringLiteral("SOLA NOSOLA VA x") << 1 << QStringLiteral("NOVA") << QStringLiteral("x");
    QTest::newRow("blanks around the ID") << QStringLiteral("SOLA   S1  ") << 0 << QStringLiteral("SOLA") << QStringLiteral("S1");
    QTest::newRow("blanks inside stay") << QStringLiteral("SOLA S  1") << 0 << QStringLiteral("SOLA") << QStringLiteral("S  1");
}

void tst_sequenceentries::selectionOfEntries()
{
    QFETCH(QString, strText);
    QFETCH(int, nKind);
    QFETCH(QString, strKind);
    QFETCH(QString, strSequenceID);
    const SequenceEntries::SSelection sSelection = SequenceEntries::selectionOf(strText);
    QCOMPARE(sSelection.m_nKind, nKind);
    QCOMPARE(sSelection.m_strKind, strKind);
    QCOMPARE(sSelection.m_strKind.isNull(), nKind < 0);
    QCOMPARE(sSelection.m_strSequenceID, strSequenceID);
    QCOMPARE(sSelection.m_strSequenceID.isNull(), nKind < 0);
}

void tst_sequenceentries::missingEntriesAreAppended_data()
{
    QTest::addColumn<QStringList>("lstTarget");
    QTest::addColumn<QStringList>("lstSource");
    QTest::addColumn<QStringList>("lstExpected");
    const QStringList lstAB = {QStringLiteral("A"), QStringLiteral("B")};
    const QStringList lstBA = {QStringLiteral("B"), QStringLiteral("A")};
    QTest::newRow("into nothing") << QStringList() << lstAB << lstAB;
    QTest::newRow("of nothing") << lstAB << QStringList() << lstAB;
    QTest::newRow("all there") << lstAB << lstBA << lstAB;
    QTest::newRow("case differs") << lstAB << QStringList{QStringLiteral("a")} << (lstAB + QStringList{QStringLiteral("a")});
    QTest::newRow("twice in the source") << QStringList() << (lstAB + lstAB) << lstAB;
    QTest::newRow("order of the source") << QStringList{QStringLiteral("C")} << lstBA << (QStringList{QStringLiteral("C")} + lstBA);
}

void tst_sequenceentries::missingEntriesAreAppended()
{
    QFETCH(QStringList, lstTarget);
    QFETCH(QStringList, lstSource);
    QFETCH(QStringList, lstExpected);
    QList<QString> lstSeen = lstTarget;
    SequenceEntries::appendMissing(lstSeen, lstSource);
    QCOMPARE(QStringList(lstSeen), lstExpected);
}

QTEST_GUILESS_MAIN(tst_sequenceentries)
#include "tst_sequenceentries.moc"
