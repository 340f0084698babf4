#include "StudyTimes.h"

#include <QtTest>

#include <cmath>

class tst_StudyTimes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("TZ", "Europe/Berlin"); }
    void daysAreCountedFromTheFirst_data();
    void daysAreCountedFromTheFirst();
    void everySubjectHasItsOwnFirst();
};

void tst_StudyTimes::daysAreCountedFromTheFirst_data()
{
    QTest::addColumn<QStringList>("lstDates");
    QTest::addColumn<QStringList>("lstDays"); // "-" for unknown
    QTest::newRow("whole days") << QStringList{"2026-03-02T09:30:00", "2026-03-05T09:30:00"} << QStringList{"0", "3"};
    QTest::newRow("dates alone") << QStringList{"2026-02-27", "2026-03-01"} << QStringList{"0", "2"};
    QTest::newRow("leap year") << QStringList{"2028-02-27", "2028-03-01"} << QStringList{"0", "3"};
    QTest::newRow("hours") << QStringList{"2026-03-02T09:30:00", "2026-03-02T15:30:00"} << QStringList{"0", "0.25"};
    QTest::newRow("blank instead of T, no seconds") << QStringList{"2026-03-02 00:00", "2026-03-02 12:00"} << QStringList{"0", "0.5"};
    QTest::newRow("parts of seconds") << QStringList{"2026-03-02T00:00:00.000", "2026-03-02T00:01:26.400"} << QStringList{"0", "0.001"};
    QTest::newRow("first one last") << QStringList{"2026-03-05", "2026-03-02"} << QStringList{"3", "0"};
    QTest::newRow("year change") << QStringList{"2025-12-31", "2026-01-01"} << QStringList{"0", "1"};
    QTest::newRow("clocks go forward: 24 hours all the same")
        << QStringList{"2026-03-28T12:00:00", "2026-03-29T12:00:00"} << QStringList{"0", "1"};
    QTest::newRow("an hour that this clock leaves out")
        << QStringList{"2026-03-29T02:30:00", "2026-03-30T02:30:00"} << QStringList{"0", "1"};
    QTest::newRow("with offsets") << QStringList{"2026-03-28T12:00:00+01:00", "2026-03-29T12:00:00+0200", "2026-03-28T11:00:00Z"}
                                  << QStringList{"0", "0.9583333333333334", "0"};
    QTest::newRow("with and without offset cannot be compared")
        << QStringList{"2026-03-28T12:00:00Z", "2026-03-29T12:00:00"} << QStringList{"-", "-"};
    QTest::newRow("unreadable ones are unknown")
        << QStringList{"", "yesterday", "2026-13-01", "2026-02-29", "01/03/2026", "2026-03-02T25:00", "2026-03-02"}
        << QStringList{"-", "-", "-", "-", "-", "-", "0"};
    QTest::newRow("no half of a date") << QStringList{"2026-03", "2026-03-02T", "2026-03-02T9:30", "2026-03-02Z", "2026-03-02T09:30+99:00"}
                                       << QStringList{"-", "-", "-", "-", "-"};
    QTest::newRow("other digits are none") << QStringList{QString::fromUtf8("٢٠٢٦-٠٣-٠٢"), "2026-03-02"} << QStringList{"-", "0"};
    QTest::newRow("none") << QStringList{} << QStringList{};
}

void tst_StudyTimes::daysAreCountedFromTheFirst()
{
    QFETCH(QStringList, lstDates);
    QVector<STimePoint> lstTimePoints;
    for (const QString& strDate : lstDates)
    {
        lstTimePoints.append({"subject", strDate});
    }
    QStringList lstTexts;
    for (const double fDays : StudyTimes::days(lstTimePoints))
    {
        lstTexts.append(std::isnan(fDays) ? QString("-") : QString::number(fDays, 'g', 16));
    }
    QTEST(lstTexts, "lstDays");
}

void tst_StudyTimes::everySubjectHasItsOwnFirst()
{
    const QVector<double> lstDays =
        StudyTimes::days({{"A", "2026-03-02"}, {"B", "2026-03-05"}, {"", "2026-03-01"}, {"A", "2026-03-09"}, {"B", "2026-03-06T12:00Z"}});
    QCOMPARE(lstDays.at(0), 0.0);
    QCOMPARE(lstDays.at(3), 7.0);
    QVERIFY2(std::isnan(lstDays.at(2)), "who has no name has no first time point");
    QVERIFY2(std::isnan(lstDays.at(1)) && std::isnan(lstDays.at(4)), "one of them states an offset, the other does not");
}

QTEST_GUILESS_MAIN(tst_StudyTimes)
#include "tst_studytimes.moc"
