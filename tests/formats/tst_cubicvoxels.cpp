#include "CubicVoxels.h"
#include "FormatBytes.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace
{
/// A volume of doubles along x, y and z.
SOpenVolume volumeOf(std::array<qint64, 3> anSize, std::array<double, 3> afSpacing, const std::vector<double>& vecValues)
{
    SOpenVolume volume;
    volume.m_anSize = anSize;
    volume.m_eType = EScalar::Double;
    for (std::size_t n = 0; n < 3; ++n)
    {
        volume.m_avecStep[n][n] = afSpacing[n];
    }
    for (const double fValue : vecValues)
    {
        volume.m_baValues += FormatBytes::of(fValue, Q_BYTE_ORDER == Q_BIG_ENDIAN);
    }
    volume.m_bBigEndian = Q_BYTE_ORDER == Q_BIG_ENDIAN;
    return volume;
}

double total(const SCubicVoxels& voxels)
{
    double fTotal = 0.0;
    for (const SCubicVoxels::SVoxel& voxel : voxels.m_vecVoxels)
    {
        fTotal += voxel.m_fAmount;
    }
    return fTotal;
}

QString text(const SCubicVoxels& voxels)
{
    QStringList lstVoxels;
    for (const SCubicVoxels::SVoxel& voxel : voxels.m_vecVoxels)
    {
        lstVoxels.append(QStringLiteral("%1,%2,%3=%4")
                             .arg(static_cast<double>(voxel.m_afPlace[0]))
                             .arg(static_cast<double>(voxel.m_afPlace[1]))
                             .arg(static_cast<double>(voxel.m_afPlace[2]))
                             .arg(voxel.m_fAmount));
    }
    return lstVoxels.join(' ');
}

/// The centre of mass, mm.
std::array<double, 3> centre(const SCubicVoxels& voxels)
{
    std::array<double, 3> afCentre = {};
    for (const SCubicVoxels::SVoxel& voxel : voxels.m_vecVoxels)
    {
        for (std::size_t n = 0; n < 3; ++n)
        {
            afCentre[n] += static_cast<double>(voxel.m_afPlace[n]) * voxel.m_fAmount / total(voxels);
        }
    }
    return afCentre;
}
} // namespace

/// Volumes on the cubic grids of saved results.
class tst_cubicvoxels : public QObject
{
    Q_OBJECT

private slots:
    void cubesStayAsTheyAre();
    void axesInAnyOrderAndDirection();
    void whatIsNoAmountIsEmpty();
    void infiniteNumbersAreRefused();
    void boxesAreSpread_data();
    void boxesAreSpread();
    void spreadingKeepsTheTotal_data();
    void spreadingKeepsTheTotal();
    void roundingOfSpacingsIsNoDifference();
    void tooManyCellsAreRefused();
    void spacesAreTurned_data();
    void spacesAreTurned();
};

void tst_cubicvoxels::cubesStayAsTheyAre()
{
    SOpenVolume volume = volumeOf({2, 2, 1}, {0.3, 0.3, 0.3}, {1, 0, 3, 4});
    volume.m_vecOrigin = {-0.1, 2.0, 5.0};
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volume, 0.0, voxels), QString());
    QCOMPARE(text(voxels), QString("-0.1,2,5=1 -0.1,2.3,5=3 0.2,2.3,5=4"));
    QCOMPARE(voxels.m_fPitch, 0.3);
    QVERIFY(!voxels.m_bResampled);
    QVERIFY(voxels.m_lstNotes.isEmpty());
    QCOMPARE(CubicVoxels::from(volume, 0.3, voxels), QString());
    QVERIFY(!voxels.m_bResampled);
}

void tst_cubicvoxels::axesInAnyOrderAndDirection()
{
    SOpenVolume volume = volumeOf({3, 1, 2}, {1, 1, 1}, {1, 2, 3, 4, 5, 6});
    volume.m_avecStep = {{{0, 0, -1}, {1, 0, 0}, {0, 1, 0}}}; // the first index runs down z, the second along x, the third along y
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volume, 0.0, voxels), QString());
    QCOMPARE(text(voxels), QString("0,0,-2=3 0,1,-2=6 0,0,-1=2 0,1,-1=5 0,0,0=1 0,1,0=4"));
    QVERIFY(!voxels.m_bResampled);
}

void tst_cubicvoxels::whatIsNoAmountIsEmpty()
{
    const double fNaN = std::numeric_limits<double>::quiet_NaN();
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volumeOf({5, 1, 1}, {1, 1, 1}, {fNaN, -2, 7, -0.5, 0}), 0.0, voxels), QString());
    QCOMPARE(text(voxels), QString("2,0,0=7"));
    QCOMPARE(voxels.m_lstNotes, (QStringList{"1 voxels whose number is NaN were taken for empty.",
                                             "2 voxels with a number below 0 (-2.5 in all) were taken for empty."}));
    QCOMPARE(CubicVoxels::from(volumeOf({2, 1, 1}, {1, 1, 1}, {0, 0}), 0.0, voxels), QString());
    QCOMPARE(voxels.m_lstNotes, QStringList{"The volume has no number above 0: the result has no source."});
    QVERIFY(voxels.m_vecVoxels.empty());
}

void tst_cubicvoxels::infiniteNumbersAreRefused()
{
    SCubicVoxels voxels;
    QCOMPARE(
        CubicVoxels::from(volumeOf({2, 2, 2}, {1, 1, 1}, {0, 0, 0, 0, 0, 0, 0, -std::numeric_limits<double>::infinity()}), 0.0, voxels),
        QString("voxel 1, 1, 1: its number is infinite"));
}

void tst_cubicvoxels::boxesAreSpread_data()
{
    QTest::addColumn<double>("fSpacing");
    QTest::addColumn<double>("fPitch");
    QTest::addColumn<QString>("strVoxels");
    // Two voxels of spacing 1 x 1 x S with 6 and 12 in them, the second one above the first.
    QTest::newRow("into two each") << 2.0 << 0.0 << "0,0,-0.5=3 0,0,0.5=3 0,0,1.5=6 0,0,2.5=6";
    QTest::newRow("into one and a half each") << 1.5 << 0.0 << "0,0,-0.25=4 0,0,0.75=6 0,0,1.75=8";
    QTest::newRow("a rest at the end") << 1.25 << 0.0 << "0,0,-0.125=4.8 0,0,0.875=8.4 0,0,1.875=4.8";
    QTest::newRow("joined") << 1.0 << 2.0 << "0.5,0.5,0.5=18";
}

void tst_cubicvoxels::boxesAreSpread()
{
    QFETCH(double, fSpacing);
    QFETCH(double, fPitch);
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volumeOf({1, 1, 2}, {1.0, 1.0, fSpacing}, {6, 12}), fPitch, voxels), QString());
    QTEST(text(voxels), "strVoxels");
    QVERIFY(voxels.m_bResampled);
    QVERIFY2(voxels.m_lstNotes.value(0).contains("onto a cubic grid of"), qPrintable(voxels.m_lstNotes.join(' ')));
}

void tst_cubicvoxels::spreadingKeepsTheTotal_data()
{
    QTest::addColumn<double>("fAngle");
    QTest::addColumn<double>("fPitch");
    for (const double fAngle : {0.0, 0.3, 1.0, 90.0, 33.0})
    {
        for (const double fPitch : {0.0, 0.17, 0.5, 2.0})
        {
            QTest::addRow("%g degrees, %g mm", fAngle, fPitch) << fAngle << fPitch;
        }
    }
}

void tst_cubicvoxels::spreadingKeepsTheTotal()
{
    QFETCH(double, fAngle);
    QFETCH(double, fPitch);
    std::vector<double> vecValues;
    double fTotal = 0.0;
    std::array<double, 3> afCentre = {};
    const double fCosine = std::cos(fAngle / 180.0 * M_PI);
    const double fSine = std::sin(fAngle / 180.0 * M_PI);
    SOpenVolume volume = volumeOf({7, 6, 5}, {0.4, 0.5, 0.9}, {});
    volume.m_avecStep[0] = {0.4 * fCosine, 0.4 * fSine, 0.0};
    volume.m_avecStep[1] = {-0.5 * fSine, 0.5 * fCosine, 0.0};
    volume.m_vecOrigin = {10, -20, 30};
    for (int n = 0; n < 7 * 6 * 5; ++n)
    {
        const double fValue = n % 4 == 0 ? 0.0 : 1.0 + n * n % 37;
        volume.m_baValues += FormatBytes::of(fValue, Q_BYTE_ORDER == Q_BIG_ENDIAN);
        fTotal += fValue;
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
        {
            afCentre[nAxis] += fValue * (volume.m_vecOrigin[nAxis] + n % 7 * volume.m_avecStep[0][nAxis] +
                                         n / 7 % 6 * volume.m_avecStep[1][nAxis] + n / 42 * volume.m_avecStep[2][nAxis]);
        }
    }
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volume, fPitch, voxels), QString());
    QVERIFY(voxels.m_bResampled);
    QCOMPARE(voxels.m_lstNotes.value(0).contains("tilted"), fAngle > 0.0 && fAngle < 90.0);
    QVERIFY(std::abs(total(voxels) - fTotal) < 1e-9 * fTotal);
    QCOMPARE(voxels.m_fTotalRead, fTotal);
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        QVERIFY(std::abs(centre(voxels)[nAxis] - afCentre[nAxis] / fTotal) < 0.1 * voxels.m_fPitch); // each amount went to where it was
    }
}

void tst_cubicvoxels::roundingOfSpacingsIsNoDifference()
{
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volumeOf({2, 1, 1}, {0.3, 0.3000001, 0.2999999}, {1, 2}), 0.0, voxels), QString());
    QVERIFY(!voxels.m_bResampled);
    QCOMPARE(CubicVoxels::from(volumeOf({2, 1, 1}, {0.3, 0.31, 0.3}, {1, 2}), 0.0, voxels), QString());
    QVERIFY(voxels.m_bResampled);
    SOpenVolume volume = volumeOf({2, 1, 1}, {1, 1, 1}, {1, 2});
    volume.m_avecStep[0] = {1, 1e-7, -1e-7};
    QCOMPARE(CubicVoxels::from(volume, 0.0, voxels), QString());
    QVERIFY(!voxels.m_bResampled);
}

/// The cells around the numbers above 0 count, not those of the file.
void tst_cubicvoxels::tooManyCellsAreRefused()
{
    SOpenVolume volume = volumeOf({200, 200, 60}, {1, 1, 1}, {});
    volume.m_eType = EScalar::UInt8;
    volume.m_baValues = QByteArray(200 * 200 * 60, '\0');
    volume.m_baValues[0] = 1;
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volume, 0.0, voxels), QString());
    QCOMPARE(voxels.m_vecVoxels.size(), std::size_t(1));
    volume.m_baValues[volume.m_baValues.size() - 1] = 1;
    QVERIFY(CubicVoxels::from(volume, 0.0, voxels)
                .startsWith("volume: 200 x 200 x 60 cells of 1 mm around its numbers above 0 are more than a result can have"));
    QCOMPARE(CubicVoxels::from(volume, 4.0, voxels), QString());
    // A single long voxel must not ask for boundless memory.
    QVERIFY(CubicVoxels::from(volumeOf({1, 1, 1}, {1e-3, 1e-3, 1e8}, {1}), 0.0, voxels).startsWith("volume: "));
}

void tst_cubicvoxels::spacesAreTurned_data()
{
    QTest::addColumn<int>("nFrom");
    QTest::addColumn<int>("nTo");
    QTest::addColumn<QString>("strVoxels");
    const auto row = [](const char* pName, ESpace eFrom, ESpace eTo, const char* pVoxels)
    { QTest::newRow(pName) << int(eFrom) << int(eTo) << QString(pVoxels); };
    row("none asked for", ESpace::LPS, ESpace::Unknown, "1,2,3=5 2,2,3=6");
    row("none said", ESpace::Unknown, ESpace::LPS, "1,2,3=5 2,2,3=6");
    row("the same", ESpace::RAS, ESpace::RAS, "1,2,3=5 2,2,3=6");
    row("LPS to RAS", ESpace::LPS, ESpace::RAS, "-2,-2,3=6 -1,-2,3=5");
    row("RAS to LPS", ESpace::RAS, ESpace::LPS, "-2,-2,3=6 -1,-2,3=5");
    row("LAS to RAS", ESpace::LAS, ESpace::RAS, "-2,2,3=6 -1,2,3=5");
    row("LAS to LPS", ESpace::LAS, ESpace::LPS, "1,-2,3=5 2,-2,3=6");
}

void tst_cubicvoxels::spacesAreTurned()
{
    QFETCH(int, nFrom);
    QFETCH(int, nTo);
    SOpenVolume volume = volumeOf({2, 1, 1}, {1, 1, 1}, {5, 6});
    volume.m_vecOrigin = {1, 2, 3};
    volume.m_eSpace = static_cast<ESpace>(nFrom);
    CubicVoxels::turnTo(static_cast<ESpace>(nTo), volume);
    SCubicVoxels voxels;
    QCOMPARE(CubicVoxels::from(volume, 0.0, voxels), QString());
    QTEST(text(voxels), "strVoxels");
}

QTEST_GUILESS_MAIN(tst_cubicvoxels)
#include "tst_cubicvoxels.moc"
