#include "TileGrid.h"

#include <QRect>
#include <QSet>
#include <QTest>

#include <cmath>
#include <limits>

/// The arithmetic of tiles, name bands and the picture inside a tile.
class tst_tilegrid : public QObject
{
    Q_OBJECT

private slots:
    void columnsAndRows_data();
    void columnsAndRows();
    void tilesOfEveryCount_data();
    void tilesOfEveryCount();
    void knownPlaces_data();
    void knownPlaces();
    void sizeStaysWithoutResults();
    void narrowWindowsGiveNoOrNegativeSize_data();
    void narrowWindowsGiveNoOrNegativeSize();
    void letterbox_data();
    void letterbox();
    void letterboxWithoutExtentIsHarmless_data();
    void letterboxWithoutExtentIsHarmless();
    void edgesAreOutside();
};

void tst_tilegrid::columnsAndRows_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<int>("nColumns");
    QTest::addColumn<int>("nRows");
    const int aanExpected[][3] = {{0, 0, 0}, {1, 1, 1},  {2, 2, 1},  {3, 3, 1},  {4, 4, 1},  {5, 4, 2},   {8, 4, 2},
                                  {9, 4, 3}, {12, 4, 3}, {13, 4, 4}, {16, 4, 4}, {17, 4, 5}, {61, 4, 16}, {64, 4, 16}};
    for (const auto& anRow : aanExpected)
    {
        QTest::addRow("%d results", anRow[0]) << anRow[0] << anRow[1] << anRow[2];
    }
}

void tst_tilegrid::columnsAndRows()
{
    QFETCH(int, nResults);
    QTEST(TileGrid::columns(nResults), "nColumns");
    QTEST(TileGrid::rows(nResults), "nRows");
}

void tst_tilegrid::tilesOfEveryCount_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<int>("nWidth");
    QTest::addColumn<int>("nHeight");
    for (int n = 1; n <= 64; ++n)
    {
        QTest::addRow("%d in 1200x800", n) << n << 1200 << 800;
        QTest::addRow("%d in 997x613", n) << n << 997 << 613;
        QTest::addRow("%d in 640x1999", n) << n << 640 << 1999;
    }
}

/// What must hold for any number of results: sizes by the truncating divisions, tiles and bands beside and above each other without
/// overlap.
void tst_tilegrid::tilesOfEveryCount()
{
    QFETCH(int, nResults);
    QFETCH(int, nWidth);
    QFETCH(int, nHeight);
    constexpr int TextHeight = 19;
    const int nColumns = nResults < 4 ? nResults : 4;
    const int nRows = static_cast<int>(std::ceil(nResults / 4.0));
    int nTileWidth = 0;
    int nTileHeight = 0;
    TileGrid::tileSize(nResults, nWidth, nHeight, TextHeight, nTileWidth, nTileHeight);
    QCOMPARE(nTileWidth, static_cast<int>(std::floor((nWidth - 110.0) / nColumns)) - 5);
    QCOMPARE(nTileHeight, static_cast<int>(std::floor((nHeight - nRows * 19.0) / nRows)) - 5);
    for (int i = 0; i < nResults; ++i)
    {
        const int nColumn = i % 4;
        const int nRow = i / 4;
        QCOMPARE(TileGrid::tileLeft(i, nTileWidth), nColumn * nTileWidth);
        const int nBottom = TileGrid::tileBottom(i, nHeight, nTileHeight, TextHeight);
        const int nBand = TileGrid::bandBottom(i, nHeight, nTileHeight, TextHeight);
        QCOMPARE(nBottom, nHeight - nTileHeight - TextHeight - nRow * (nTileHeight + TextHeight) - 2);
        QCOMPARE(nBand - (nBottom + nTileHeight), 2);
        // The last band's upper edge is the window's; nothing reaches into the strip of the bars or below the window.
        QCOMPARE(nBand + TextHeight, nHeight - nRow * (nTileHeight + TextHeight));
        QVERIFY(TileGrid::tileLeft(i, nTileWidth) + nTileWidth <= nWidth - 110 - 5 * nColumns);
        QVERIFY(nBottom >= 0);
    }
}

void tst_tilegrid::knownPlaces_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<int>("nResult");
    QTest::addColumn<QRect>("rectTile");
    QTest::addColumn<int>("nBand");
    // A surface of 1200 x 800 with 20 pixels for a name; origin at the bottom left.
    QTest::newRow("one") << 1 << 0 << QRect(0, 3, 1085, 775) << 780;
    QTest::newRow("second of two") << 2 << 1 << QRect(540, 3, 540, 775) << 780;
    QTest::newRow("third of three") << 3 << 2 << QRect(716, 3, 358, 775) << 780;
    QTest::newRow("fourth of four") << 4 << 3 << QRect(801, 3, 267, 775) << 780;
    QTest::newRow("first of five") << 5 << 0 << QRect(0, 403, 267, 375) << 780;
    QTest::newRow("fifth of five") << 5 << 4 << QRect(0, 8, 267, 375) << 385;
    QTest::newRow("eighth of eight") << 8 << 7 << QRect(801, 8, 267, 375) << 385;
    QTest::newRow("twelfth of twelve") << 12 << 11 << QRect(801, 15, 267, 241) << 258;
}

void tst_tilegrid::knownPlaces()
{
    QFETCH(int, nResults);
    QFETCH(int, nResult);
    QFETCH(QRect, rectTile);
    int nWidth = -1;
    int nHeight = -1;
    TileGrid::tileSize(nResults, 1200, 800, 20, nWidth, nHeight);
    QCOMPARE(QRect(TileGrid::tileLeft(nResult, nWidth), TileGrid::tileBottom(nResult, 800, nHeight, 20), nWidth, nHeight), rectTile);
    QTEST(TileGrid::bandBottom(nResult, 800, nHeight, 20), "nBand");
}

void tst_tilegrid::sizeStaysWithoutResults()
{
    int nWidth = 123;
    int nHeight = 45;
    TileGrid::tileSize(0, 1200, 800, 19, nWidth, nHeight);
    QCOMPARE(nWidth, 123);
    QCOMPARE(nHeight, 45);
}

void tst_tilegrid::narrowWindowsGiveNoOrNegativeSize_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<int>("nWidth");
    QTest::addColumn<int>("nTileWidth");
    QTest::newRow("one pixel left") << 4 << 134 << 1;
    QTest::newRow("nothing left") << 4 << 130 << 0;
    QTest::newRow("truncation towards zero") << 4 << 129 << -1;
    QTest::newRow("below the strip") << 4 << 107 << -5;
    QTest::newRow("far below the strip") << 4 << 10 << -30;
    QTest::newRow("no width at all") << 1 << 0 << -115;
}

void tst_tilegrid::narrowWindowsGiveNoOrNegativeSize()
{
    QFETCH(int, nResults);
    QFETCH(int, nWidth);
    int nTileWidth = 0;
    int nTileHeight = 0;
    TileGrid::tileSize(nResults, nWidth, 0, 19, nTileWidth, nTileHeight);
    QTEST(nTileWidth, "nTileWidth");
    QCOMPARE(nTileHeight, -24);
}

void tst_tilegrid::letterbox_data()
{
    QTest::addColumn<QRect>("rectTile");
    QTest::addColumn<double>("fBoxWidth");
    QTest::addColumn<double>("fBoxHeight");
    QTest::addColumn<QRect>("rectPicture");
    QTest::newRow("same proportions") << QRect(10, 20, 200, 100) << 40.0 << 20.0 << QRect(10, 20, 200, 100);
    QTest::newRow("wide box") << QRect(10, 20, 200, 100) << 40.0 << 10.0 << QRect(10, 45, 200, 50);
    QTest::newRow("high box") << QRect(10, 20, 200, 100) << 10.0 << 20.0 << QRect(85, 20, 50, 100);
    QTest::newRow("truncated size and place") << QRect(0, 0, 100, 100) << 30.0 << 20.0 << QRect(0, 16, 100, 66);
    QTest::newRow("odd room") << QRect(0, 0, 101, 100) << 20.0 << 20.0 << QRect(0, 0, 100, 100);
    QTest::newRow("box corners the wrong way round") << QRect(0, 0, 200, 100) << -40.0 << 10.0 << QRect(0, 25, 200, 50);
    QTest::newRow("tile outside the window") << QRect(-300, -7, 200, 100) << 40.0 << 10.0 << QRect(-300, 18, 200, 50);
}

void tst_tilegrid::letterbox()
{
    QFETCH(QRect, rectTile);
    QFETCH(double, fBoxWidth);
    QFETCH(double, fBoxHeight);
    const TileGrid::SRect rect =
        TileGrid::letterbox(rectTile.x(), rectTile.y(), rectTile.width(), rectTile.height(), fBoxWidth, fBoxHeight);
    QTEST(QRect(rect.nX, rect.nY, rect.width(), rect.height()), "rectPicture");
}

void tst_tilegrid::letterboxWithoutExtentIsHarmless_data()
{
    QTest::addColumn<QRect>("rectTile");
    QTest::addColumn<double>("fBoxWidth");
    QTest::addColumn<double>("fBoxHeight");
    QTest::addColumn<QRect>("rectPicture");
    const double fInfinite = std::numeric_limits<double>::infinity();
    QTest::newRow("box of no height") << QRect(0, 0, 200, 100) << 40.0 << 0.0 << QRect(0, 50, 200, 0);
    QTest::newRow("box of no width") << QRect(0, 0, 200, 100) << 0.0 << 40.0 << QRect(100, 0, 0, 100);
    QTest::newRow("box of no extent") << QRect(0, 0, 200, 100) << 0.0 << 0.0 << QRect(0, 0, 0, 100);
    QTest::newRow("tile of no height") << QRect(0, 0, 200, 0) << 40.0 << 20.0 << QRect(100, 0, 0, 0);
    QTest::newRow("tile of no width") << QRect(0, 0, 0, 100) << 40.0 << 20.0 << QRect(0, 50, 0, 0);
    QTest::newRow("tile of negative width") << QRect(0, 0, -30, 100) << 40.0 << 20.0 << QRect(0, 57, -30, -15);
    QTest::newRow("endless box") << QRect(0, 0, 200, 100) << fInfinite << 1.0 << QRect(0, 50, 200, 0);
}

void tst_tilegrid::letterboxWithoutExtentIsHarmless()
{
    letterbox();
}

void tst_tilegrid::edgesAreOutside()
{
    const TileGrid::SRect rect = TileGrid::letterbox(10, 20, 200, 100, 40.0, 20.0);
    QVERIFY(rect.contains(11, 21));
    QVERIFY(rect.contains(209, 119));
    QVERIFY(!rect.contains(10, 50));
    QVERIFY(!rect.contains(210, 50));
    QVERIFY(!rect.contains(50, 20));
    QVERIFY(!rect.contains(50, 120));
}

QTEST_APPLESS_MAIN(tst_tilegrid)
#include "tst_tilegrid.moc"
