#include "MeasuringRectangle.h"

#include <QTest>

using namespace MeasuringRectangle;

/// The arithmetic of the measuring tool's rectangle under the pointer.
class tst_measuringrectangle : public QObject
{
    Q_OBJECT

private slots:
    void edgesAreSorted();
    void oppositeCorners_data();
    void oppositeCorners();
    void noTile_data();
    void noTile();
    void edgesAreOutside();
    void clamping_data();
    void clamping();
};

void tst_measuringrectangle::edgesAreSorted()
{
    for (const bool bSwapped : {false, true})
    {
        const Coord3d ptFirst(3.0, 9.0, 1.0);
        const Coord3d ptSecond(7.0, 2.0, 5.0);
        const SEdges objEdges = bSwapped ? edgesBetween(ptSecond, ptFirst) : edgesBetween(ptFirst, ptSecond);
        QCOMPARE(objEdges.fLeft, 3.0);
        QCOMPARE(objEdges.fTop, 9.0);
        QCOMPARE(objEdges.fRight, 7.0);
        QCOMPARE(objEdges.fBottom, 2.0);
    }
}

void tst_measuringrectangle::oppositeCorners_data()
{
    QTest::addColumn<int>("nCorner");
    QTest::addColumn<bool>("bFound");
    QTest::addColumn<double>("fX");
    QTest::addColumn<double>("fY");
    QTest::newRow("left top") << 301 << true << 30.0 << 10.0;
    QTest::newRow("right top") << 302 << true << 20.0 << 10.0;
    QTest::newRow("right bottom") << 303 << true << 20.0 << 40.0;
    QTest::newRow("left bottom") << 304 << true << 30.0 << 40.0;
    for (const int nOther : {0, 300, 305, -1})
    {
        QTest::addRow("%d", nOther) << nOther << false << -1.0 << -2.0;
    }
}

void tst_measuringrectangle::oppositeCorners()
{
    QFETCH(int, nCorner);
    Coord3d pt(-1.0, -2.0, -3.0);
    QTEST(oppositeCorner(nCorner, {20.0, 40.0, 30.0, 10.0}, pt), "bFound");
    QTEST(pt.x, "fX");
    QTEST(pt.y, "fY");
    QCOMPARE(pt.z, -3.0);
}

void tst_measuringrectangle::noTile_data()
{
    QTest::addColumn<int>("nX");
    QTest::addColumn<int>("nY");
    QTest::addColumn<int>("nWidth");
    QTest::addColumn<int>("nHeight");
    QTest::addColumn<bool>("bNone");
    QTest::newRow("all 0") << 0 << 0 << 0 << 0 << true;
    QTest::newRow("a tile") << 10 << 20 << 100 << 90 << false;
    QTest::newRow("a tile in the corner") << 0 << 0 << 100 << 90 << false;
    QTest::newRow("as far from the left as it is wide") << 100 << 20 << 100 << 90 << false;
    // What a test for four zeros would tell otherwise.
    QTest::newRow("one pixel high on the lower edge") << 10 << 0 << 100 << 1 << true;
    QTest::newRow("one pixel high above it") << 10 << 1 << 100 << 1 << false;
    QTest::newRow("without height") << 10 << 20 << 100 << 0 << true;
    QTest::newRow("without height on the lower edge") << 10 << 0 << 100 << 0 << false;
    QTest::newRow("square at 1") << 50 << 1 << 50 << 1 << true;
    QTest::newRow("square at 2") << 50 << 2 << 50 << 1 << false;
    QTest::newRow("without height at 1") << 50 << 1 << 50 << 0 << false;
}

void tst_measuringrectangle::noTile()
{
    QFETCH(int, nX);
    QFETCH(int, nY);
    QFETCH(int, nWidth);
    QFETCH(int, nHeight);
    const STile objTile = {nX, nY, nWidth, nHeight};
    QTEST(objTile.isNone(), "bNone");
}

void tst_measuringrectangle::edgesAreOutside()
{
    const STile objTile = {10, 20, 100, 50};
    QVERIFY(objTile.contains(11, 21));
    QVERIFY(objTile.contains(109, 69));
    QVERIFY(!objTile.contains(10, 30));
    QVERIFY(!objTile.contains(110, 30));
    QVERIFY(!objTile.contains(50, 20));
    QVERIFY(!objTile.contains(50, 70));
    QVERIFY(!STile().contains(0, 0));
}

void tst_measuringrectangle::clamping_data()
{
    QTest::addColumn<double>("fX");
    QTest::addColumn<double>("fY");
    QTest::addColumn<double>("fClampedX");
    QTest::addColumn<double>("fClampedY");
    QTest::newRow("inside") << 50.0 << 30.0 << 50.0 << 30.0;
    QTest::newRow("left") << -5.0 << 30.0 << 10.0 << 30.0;
    QTest::newRow("right") << 500.0 << 30.0 << 110.0 << 30.0;
    QTest::newRow("below") << 50.0 << -3.0 << 50.0 << 20.0;
    QTest::newRow("above") << 50.0 << 300.0 << 50.0 << 70.0;
    QTest::newRow("over a corner") << 111.0 << 71.0 << 110.0 << 70.0;
    QTest::newRow("on the edge") << 10.0 << 30.0 << 10.0 << 30.0;
}

void tst_measuringrectangle::clamping()
{
    QFETCH(double, fX);
    QFETCH(double, fY);
    const STile objTile = {10, 20, 100, 50};
    Coord3d pt(fX, fY, 4.0);
    objTile.clamp(pt);
    QTEST(pt.x, "fClampedX");
    QTEST(pt.y, "fClampedY");
    QCOMPARE(pt.z, 4.0);
}

QTEST_GUILESS_MAIN(tst_measuringrectangle)
#include "tst_measuringrectangle.moc"
