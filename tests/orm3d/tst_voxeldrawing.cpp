#include "COffscreenGl.h"
#include "DrawingScene.h"
#include "OrmColorTables.h"

#include <QMatrix4x4>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace DrawingScene;
using Voxel = C3DVolume::Voxel;

class tst_voxeldrawing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theNearPlaneCutsNoVolume();
    void mipShowsTheHighestValueInTheBarsColour_data();
    void mipShowsTheHighestValueInTheBarsColour();
    void mipShowsTheHighestValueBehindEachPixel_data();
    void mipShowsTheHighestValueBehindEachPixel();
    void mipHasNoGaps();
    void mipIgnoresWhatIsInFront();
    void translucentVoxelsKeepTheirHue();
    void aSourceIsNearlyOpaqueThroughItsThickness_data();
    void aSourceIsNearlyOpaqueThroughItsThickness();
    void translucentSquaresAreOfExactSize();
    void raisingTheMinimumKeepsTheOrder();
    void nearerVoxelsLieOverFartherOnes_data();
    void nearerVoxelsLieOverFartherOnes();
    void whatIsBelowTheThresholdIsNotDrawn_data();
    void whatIsBelowTheThresholdIsNotDrawn();
    void aPaletteChangeIsSeenInTheNextFrame();
    void voxelsStayInTheirTile();
    void markedVoxelsAreOutlinedAndKeepTheirColours();
    void marksAreSeenWithoutAStencilBuffer();
    void valuesOfNoNumberAreNotDrawn();

private:
    std::unique_ptr<COffscreenGl> m_pGl;
};

void tst_voxeldrawing::init()
{
    m_pGl = std::make_unique<COffscreenGl>(nSize, nSize);
}

void tst_voxeldrawing::cleanup()
{
    QCOMPARE(COffscreenGl::error(), 0U);
    m_pGl.reset();
}

void tst_voxeldrawing::theNearPlaneCutsNoVolume()
{
    // Voxels from -8 to 8 mm in depth, the nearest one the highest: the tile's projection ends 1 mm before the centre.
    QVector<Voxel> vecVoxels;
    for (int i = -8; i <= 8; ++i)
        vecVoxels.append({static_cast<float>(i), 0, static_cast<float>(i), i + 9, static_cast<float>(10 + i)});
    C3DVolume objVolume = volumeOf(vecVoxels);
    for (const bool bMIP : {true, false})
    {
        objVolume.setMIP(bMIP);
        m_pGl->begin(colorGround, 10, 10);
        objVolume.render(true, GL_RENDER);
        const QImage imgSeen = m_pGl->grab();
        for (int i = -8; i <= 8; ++i)
            QVERIFY(imgSeen.pixel(nSize / 2 + i * nSize / 20, nSize / 2) != colorGround.rgb());
    }
}

void tst_voxeldrawing::mipShowsTheHighestValueInTheBarsColour_data()
{
    QTest::addColumn<int>("nTable");
    for (int i = 0; i < OrmColorTables::nVolumeTables; ++i)
        QTest::newRow(qPrintable(OrmColorTables::volumeTableNames().at(i))) << i;
}

void tst_voxeldrawing::mipShowsTheHighestValueInTheBarsColour()
{
    QFETCH(int, nTable);
    QRandomGenerator objRandom(static_cast<quint32>(nTable));
    // A cloud with the peak in its middle, at the origin.
    C3DVolume objVolume = volumeOf(
        cube(15, 0.5f,
             [](int nX, int nY, int nZ)
             { return static_cast<float>(1000.0 * std::exp(-0.02 * (std::pow(nX - 7, 2) + std::pow(nY - 7, 2) + std::pow(nZ - 7, 2)))); }),
        0.5f);
    objVolume.setColorTable(nTable, 0.0f, 1.0f);
    objVolume.setMIP(true);
    for (int nTurn = 0; nTurn < 6; ++nTurn)
    {
        const float afTurn[3] = {nTurn == 0 ? 0.0f : 360.0f * float(objRandom.generateDouble()), 360.0f * float(objRandom.generateDouble()),
                                 360.0f * float(objRandom.generateDouble())};
        for (const QColor& colorBack : {QColor(Qt::black), QColor(Qt::white), colorGround})
        {
            m_pGl->begin(colorBack, 10, 10, afTurn[0], afTurn[1], afTurn[2]);
            objVolume.render(true, GL_RENDER);
            QCOMPARE(QColor(m_pGl->grab().pixel(nSize / 2, nSize / 2)), QColor(objVolume.m_objPalette.colorForValue(1000.0)));
        }
    }
}

void tst_voxeldrawing::mipShowsTheHighestValueBehindEachPixel_data()
{
    QTest::addColumn<float>("fX");
    QTest::addColumn<float>("fY");
    QTest::addColumn<float>("fZ");
    QTest::newRow("from the front") << 0.0f << 0.0f << 0.0f;
    QTest::newRow("from above") << 90.0f << 0.0f << 0.0f;
    QTest::newRow("turned") << 25.0f << 40.0f << 10.0f;
    QTest::newRow("turned further") << 200.0f << -75.0f << 130.0f;
}

void tst_voxeldrawing::mipShowsTheHighestValueBehindEachPixel()
{
    QFETCH(float, fX);
    QFETCH(float, fY);
    QFETCH(float, fZ);
    QRandomGenerator objRandom(99);
    C3DVolume objVolume = volumeOf(cube(9, 1.0f, [&](int, int, int) { return float(1.0 + 99.0 * objRandom.generateDouble()); }));
    objVolume.setMIP(true);
    objVolume.setDisplayThreshold(0.0);
    m_pGl->begin(colorGround, 10, 10, fX, fY, fZ);
    objVolume.render(true, GL_RENDER);
    const QImage imgSeen = m_pGl->grab();

    // The same by hand: each voxel a square of whole pixels about its centre, kept where no higher one is.
    QMatrix4x4 objTurn;
    objTurn.rotate(fX, 1, 0, 0);
    objTurn.rotate(fY, 0, 1, 0);
    objTurn.rotate(fZ, 0, 0, 1);
    const double fScale = nSize / 20.0;
    const auto rowSum = [&](int nRow)
    { return std::abs(double(objTurn(nRow, 0))) + std::abs(double(objTurn(nRow, 1))) + std::abs(double(objTurn(nRow, 2))); };
    const double fSquare = std::ceil(fScale * std::max(rowSum(0), rowSum(1)) - 1e-3);
    std::vector<float> vecHighest(nSize * nSize, 0.0f);
    std::vector<bool> vecEdge(nSize * nSize, false); // where rounding decides
    for (const Voxel& voxel : objVolume.voxels())
    {
        const QVector3D objEye = objTurn.map(QVector3D(voxel.x, voxel.y, voxel.z));
        const double fCentreX = nSize / 2.0 + fScale * double(objEye.x());
        const double fCentreY = nSize / 2.0 - fScale * double(objEye.y());
        for (int nY = int(fCentreY - fSquare); nY <= int(fCentreY + fSquare); ++nY)
        {
            for (int nX = int(fCentreX - fSquare); nX <= int(fCentreX + fSquare); ++nX)
            {
                const double fOff = std::max(std::abs(nX + 0.5 - fCentreX), std::abs(nY + 0.5 - fCentreY)) - fSquare / 2.0;
                const std::size_t nAt = static_cast<std::size_t>(nY) * nSize + static_cast<std::size_t>(nX);
                if (std::abs(fOff) < 0.51)
                    vecEdge[nAt] = true;
                else if (fOff < 0.0)
                    vecHighest[nAt] = std::max(vecHighest[nAt], voxel.fValue);
            }
        }
    }
    int nCompared = 0;
    for (int nAt = 0; nAt < nSize * nSize; ++nAt)
    {
        const float fHighest = vecHighest[static_cast<std::size_t>(nAt)];
        if (vecEdge[static_cast<std::size_t>(nAt)])
            continue;
        const QRgb nExpected = fHighest > 0.0f ? objVolume.m_objPalette.colorForValue(double(fHighest)) : colorGround.rgb();
        QCOMPARE(QColor(imgSeen.pixel(nAt % nSize, nAt / nSize)), QColor(nExpected));
        nCompared += fHighest > 0.0f ? 1 : 0;
    }
    if (fX == 0.0f || fX == 90.0f)
        QVERIFY(nCompared > 4000);
}

void tst_voxeldrawing::mipHasNoGaps()
{
    C3DVolume objVolume = volumeOf(cube(12, 0.613f, [](int, int, int) { return 1.0f; }), 0.613f);
    objVolume.setMIP(true);
    QRandomGenerator objRandom(5);
    for (int nTurn = 0; nTurn < 30; ++nTurn)
    {
        const double fHalf = 5.0 + nTurn * 0.13; // voxels of 12.3 to 7 pixels
        const auto turn = [&] { return nTurn < 15 ? 0.0f : 360.0f * float(objRandom.generateDouble()); };
        m_pGl->begin(colorGround, fHalf, fHalf, turn(), turn(), turn());
        objVolume.render(true, GL_RENDER);
        const QImage imgSeen = m_pGl->grab();
        for (int nY = 0; nY < nSize; ++nY) // a turned cube is convex: nothing shows through between the first and the last pixel of a row
        {
            int nFirst = nSize;
            int nLast = -1;
            int nCovered = 0;
            for (int nX = 0; nX < nSize; ++nX)
            {
                if (imgSeen.pixel(nX, nY) == colorGround.rgb())
                    continue;
                nFirst = std::min(nFirst, nX);
                nLast = nX;
                ++nCovered;
            }
            QVERIFY2(nCovered == 0 || nCovered == nLast - nFirst + 1, qPrintable(QStringLiteral("turn %1, row %2").arg(nTurn).arg(nY)));
        }
    }
}

void tst_voxeldrawing::mipIgnoresWhatIsInFront()
{
    C3DVolume objVolume = volumeOf({{0, 0, -3, 1, 9.0f}, {0, 0, 3, 2, 2.0f}});
    objVolume.setMIP(true);
    for (const float fTurn : {0.0f, 180.0f})
    {
        m_pGl->begin(colorGround, 10, 10, 0, fTurn, 0);
        objVolume.render(true, GL_RENDER);
        QCOMPARE(QColor(m_pGl->grab().pixel(nSize / 2, nSize / 2)), QColor(objVolume.m_objPalette.colorForValue(9.0)));
    }
}

void tst_voxeldrawing::translucentVoxelsKeepTheirHue()
{
    C3DVolume objVolume = volumeOf(
        cube(11, 0.7f,
             [](int nX, int nY, int nZ)
             { return static_cast<float>(100.0 * std::exp(-0.05 * (std::pow(nX - 5, 2) + std::pow(nY - 5, 2) + std::pow(nZ - 5, 2)))); }),
        0.7f);
    const int nGreen = OrmColorTables::positionForType(ORM_CT_GREEN);
    objVolume.setColorTable(nGreen, 0.0f, 1.0f);
    m_pGl->begin(Qt::black, 10, 10, 30, 40, 0);
    objVolume.render(true, GL_RENDER);
    const QImage imgSeen = m_pGl->grab();
    int nBrightest = 0;
    for (int nY = 0; nY < nSize; ++nY)
    {
        for (int nX = 0; nX < nSize; ++nX)
        {
            const QColor colorSeen(imgSeen.pixel(nX, nY));
            QVERIFY(colorSeen.red() <= colorSeen.green() && colorSeen.blue() <= colorSeen.green());
            nBrightest = std::max(nBrightest, colorSeen.green());
        }
    }
    const QColor colorCentre(imgSeen.pixel(nSize / 2, nSize / 2));
    QVERIFY2(colorCentre.green() > 100 && colorCentre.green() + 12 > nBrightest, qPrintable(colorCentre.name())); // brightest at the peak
    QCOMPARE(QColor(imgSeen.pixel(3, 3)), QColor(Qt::black));
}

void tst_voxeldrawing::aSourceIsNearlyOpaqueThroughItsThickness_data()
{
    QTest::addColumn<int>("nCells");
    QTest::addColumn<float>("fVoxel");
    QTest::addColumn<float>("fValue");
    QTest::newRow("8 voxels of 1 mm") << 8 << 1.0f << 5.0f;
    QTest::newRow("8 voxels, another range") << 8 << 1.0f << 5.0e9f;
    QTest::newRow("16 voxels of 0.5 mm") << 16 << 0.5f << 5.0f;
}

void tst_voxeldrawing::aSourceIsNearlyOpaqueThroughItsThickness()
{
    QFETCH(int, nCells);
    QFETCH(float, fVoxel);
    QFETCH(float, fValue);
    C3DVolume objVolume = volumeOf(cube(nCells, fVoxel, [=](int, int, int) { return fValue; }), fVoxel);
    objVolume.m_objPalette.SetImageMinMax(0.0, double(fValue));
    const QColor colorVoxel(objVolume.m_objPalette.colorForValue(double(fValue)));
    QCOMPARE(colorVoxel, QColor(128, 0, 0));
    m_pGl->begin(Qt::white, 10, 10);
    objVolume.render(true, GL_RENDER);
    // Averaged over the middle: squares of two voxels ripple a little.
    const QImage imgSeen = m_pGl->grab();
    double fSum = 0.0;
    for (int nY = -20; nY < 20; ++nY)
    {
        for (int nX = -20; nX < 20; ++nX)
            fSum += qGreen(imgSeen.pixel(nSize / 2 + nX, nSize / 2 + nY));
    }
    const double fOpacity = 1.0 - fSum / 1600.0 / 255.0; // dark red over white
    QVERIFY2(fOpacity > 0.92 && fOpacity < 0.98, qPrintable(QString::number(fOpacity)));
}

void tst_voxeldrawing::translucentSquaresAreOfExactSize()
{
    // Voxels of 3.4 pixels, so squares of 6.8: on average over their places they cover that, not 7 x 7 or 6 x 6 pixels.
    double fCovered = 0.0;
    QRandomGenerator objRandom(6);
    constexpr int nPlaces = 150;
    for (int i = 0; i < nPlaces; ++i)
    {
        C3DVolume objVolume =
            volumeOf({{static_cast<float>(objRandom.generateDouble()), static_cast<float>(objRandom.generateDouble()), 0, 1, 1}}, 0.34f);
        m_pGl->begin(colorGround, 10, 10, 0, 0, i % 2 == 0 ? 0.0f : 45.0f); // no larger when turned
        objVolume.render(true, GL_RENDER);
        fCovered += countNot(m_pGl->grab(), colorGround.rgb());
    }
    QVERIFY2(std::abs(fCovered / nPlaces / (6.8 * 6.8) - 1.0) < 0.02, qPrintable(QString::number(fCovered / nPlaces)));
}

void tst_voxeldrawing::raisingTheMinimumKeepsTheOrder()
{
    QRandomGenerator objRandom(12);
    const QVector<Voxel> vecVoxels = cube(7, 1.0f, [&](int, int, int) { return static_cast<float>(objRandom.bounded(10, 100)); });
    C3DVolume objVolume = volumeOf(vecVoxels);
    const auto draw = [&](C3DVolume& objShown)
    {
        m_pGl->begin(colorGround, 10, 10, 30, 40, 10);
        objShown.render(true, GL_RENDER);
        return m_pGl->grab();
    };
    for (const double fMin : {0.0, 40.0, 70.0, 20.0})
    {
        objVolume.m_objPalette.SetImageMinMax(fMin, 100.0);
        C3DVolume objFresh = volumeOf(vecVoxels);
        objFresh.m_objPalette.SetImageMinMax(fMin, 100.0);
        QCOMPARE(draw(objVolume), draw(objFresh));
    }
}

void tst_voxeldrawing::nearerVoxelsLieOverFartherOnes_data()
{
    QTest::addColumn<QVector3D>("objStep"); // from the low voxel to the high one
    for (const QVector3D& objStep : {QVector3D(3, 0, 0), QVector3D(0, 3, 0), QVector3D(0, 0, 3), QVector3D(1, 2, 3), QVector3D(-3, 1, 2),
                                     QVector3D(2, -3, 1), QVector3D(3, 2, -1), QVector3D(-2, -2, 3)})
        QTest::addRow("%g %g %g", double(objStep.x()), double(objStep.y()), double(objStep.z())) << objStep;
}

void tst_voxeldrawing::nearerVoxelsLieOverFartherOnes()
{
    QFETCH(QVector3D, objStep);
    // Two voxels seen along the line through them, from either end. A look-at rotation brings the line into the depth.
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 60.0f}, {objStep.x(), objStep.y(), objStep.z(), 2, 100.0f}});
    objVolume.m_objPalette.SetImageMinMax(0.0, 100.0);
    const QColor colorLow(objVolume.m_objPalette.colorForValue(60.0));
    const QColor colorHigh(objVolume.m_objPalette.colorForValue(100.0));
    const double fThickness = std::cbrt(2.0);
    const auto opacity = [=](double fPart) { return std::lround(255.0 * (1.0 - std::pow(0.05, fPart / (4.0 * fThickness)))) / 255.0; };
    for (const bool bHighNearer : {true, false})
    {
        m_pGl->begin(Qt::black, 10, 10);
        QMatrix4x4 objLook;
        objLook.lookAt(bHighNearer ? objStep : -objStep, QVector3D(0, 0, 0), QVector3D(0.3f, 0.5f, -0.7f));
        glLoadMatrixf(objLook.constData());
        objVolume.render(true, GL_RENDER);
        const QColor colorExpected = bHighNearer ? over(colorHigh, over(colorLow, Qt::black, opacity(0.6)), opacity(1.0))
                                                 : over(colorLow, over(colorHigh, Qt::black, opacity(1.0)), opacity(0.6));
        const QColor colorSeen(m_pGl->grab().pixel(nSize / 2, nSize / 2));
        QVERIFY2(isNear(colorSeen.rgb(), colorExpected, 2), qPrintable(colorSeen.name() + QStringLiteral(", not ") + colorExpected.name()));
    }
}

void tst_voxeldrawing::whatIsBelowTheThresholdIsNotDrawn_data()
{
    QTest::addColumn<bool>("bMIP");
    QTest::addColumn<bool>("bLog");
    QTest::addColumn<double>("fMin");
    QTest::addColumn<double>("fThreshold");
    QTest::addColumn<QVector<int>>("vecDrawn");
    // Values 0, 1, 4.9, 5, 50, 100 at the places 0 to 5; 5 % of the highest is 5.
    for (const bool bMIP : {true, false})
    {
        const QByteArray strWay = bMIP ? "MIP" : "translucent";
        QTest::newRow(strWay + ", linear") << bMIP << false << 0.0 << 0.05 << QVector<int>{3, 4, 5};
        QTest::newRow(strWay + ", linear, whatever the common range") << bMIP << false << -7.0 << 0.05 << QVector<int>{3, 4, 5};
        QTest::newRow(strWay + ", linear, minimum raised") << bMIP << false << 50.0 << 0.05 << QVector<int>{4, 5};
        QTest::newRow(strWay + ", linear, minimum above all") << bMIP << false << 101.0 << 0.05 << QVector<int>{};
        QTest::newRow(strWay + ", linear, no threshold") << bMIP << false << 0.0 << 0.0 << QVector<int>{1, 2, 3, 4, 5};
        QTest::newRow(strWay + ", linear, high threshold") << bMIP << false << 0.0 << 0.6 << QVector<int>{5};
        QTest::newRow(strWay + ", log") << bMIP << true << 0.5 << 0.05 << QVector<int>{1, 2, 3, 4, 5};
        QTest::newRow(strWay + ", log, minimum raised") << bMIP << true << 4.95 << 0.05 << QVector<int>{3, 4, 5};
        QTest::newRow(strWay + ", log from 0") << bMIP << true << 0.0 << 0.05 << QVector<int>{1, 2, 3, 4, 5};
    }
}

void tst_voxeldrawing::whatIsBelowTheThresholdIsNotDrawn()
{
    QFETCH(bool, bMIP);
    QFETCH(bool, bLog);
    QFETCH(double, fMin);
    QFETCH(double, fThreshold);
    QFETCH(QVector<int>, vecDrawn);
    const float afValues[6] = {0.0f, 1.0f, 4.9f, 5.0f, 50.0f, 100.0f};
    QVector<Voxel> vecVoxels;
    for (int i = 0; i < 6; ++i)
        vecVoxels.append({-7.5f + 3.0f * static_cast<float>(i), 0, 0, i + 1, afValues[i]});
    C3DVolume objVolume = volumeOf(vecVoxels);
    objVolume.setMIP(bMIP);
    objVolume.setLogScale(bLog ? 1 : 0);
    objVolume.setDisplayThreshold(fThreshold);
    objVolume.m_objPalette.SetImageMinMax(fMin, 1000.0);
    objVolume.m_objPalette.setColorTableType(ORM_CT_GRAYS, 0.0f, 1.0f);
    objVolume.setColorMapReversed(1); // low values bright, so that they would be seen
    m_pGl->begin(Qt::black, 10, 10);
    objVolume.render(true, GL_RENDER);
    const QImage imgSeen = m_pGl->grab();
    for (int i = 0; i < 6; ++i)
    {
        // One step of 255 is all that a voxel of a hundredth of the highest shows when it is translucent.
        const int nSeen = qRed(imgSeen.pixel(nSize / 2 + int((-7.5 + 3.0 * i) * nSize / 20.0), nSize / 2));
        QVERIFY2((nSeen > 0) == vecDrawn.contains(i), qPrintable(QStringLiteral("voxel %1: %2").arg(i).arg(nSeen)));
    }
}

void tst_voxeldrawing::aPaletteChangeIsSeenInTheNextFrame()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 10.0f}, {5, 0, 0, 2, 2.0f}});
    objVolume.setMIP(true);
    C3DVolume objCopy(objVolume);
    const auto pixel = [&](C3DVolume& objShown)
    {
        m_pGl->begin(colorGround, 10, 10);
        objShown.render(true, GL_RENDER);
        return QColor(m_pGl->grab().pixel(nSize / 2, nSize / 2));
    };
    const QColor colorFirst = pixel(objVolume);
    const auto isShown = [&] { return pixel(objVolume) == QColor(objVolume.m_objPalette.colorForValue(10.0)); };
    QVERIFY(isShown());
    objVolume.m_objPalette.SetImageMinMax(2.0, 20.0);
    QVERIFY(isShown() && pixel(objVolume) != colorFirst);
    objVolume.setColorMapReversed(1);
    QVERIFY(isShown());
    objVolume.setLogScale(1);
    QVERIFY(isShown());
    objVolume.setColorTable(3, 0.0f, 0.5f);
    QVERIFY(isShown());
    COrmPalette objOther;
    objOther.SetImageMinMax(0.0, 10.0);
    objVolume.m_objPalette = objOther; // as a whole
    QVERIFY(isShown());
    QCOMPARE(pixel(objCopy), colorFirst); // a copy has its own
    objVolume.setMIP(false);
    QVERIFY(!isShown());
    Voxel sVoxel = {0, 0, 0, 3, 5.0f};
    objVolume.setMIP(true);
    QVERIFY(objVolume.loadVoxelData(1.0f, 1, &sVoxel, 0.0f, 10.0f));
    QCOMPARE(pixel(objVolume), QColor(objVolume.m_objPalette.colorForValue(5.0)));
}

void tst_voxeldrawing::voxelsStayInTheirTile()
{
    // Large voxels with their centres close to the edge of a tile in the middle of the frame.
    C3DVolume objVolume = volumeOf(cube(3, 9.0f, [](int, int, int) { return 1.0f; }), 9.0f);
    for (const bool bMIP : {true, false})
    {
        objVolume.setMIP(bMIP);
        objVolume.addToVoxelSelection(1);
        m_pGl->begin(colorGround, 10, 10);
        glViewport(50, 60, 100, 80);
        glEnable(GL_SCISSOR_TEST);
        glScissor(0, 0, 130, nSize); // and somebody else's limit
        objVolume.render(true, GL_RENDER);
        glDisable(GL_SCISSOR_TEST);
        glViewport(0, 0, nSize, nSize);
        const QImage imgSeen = m_pGl->grab();
        for (int nY = 0; nY < nSize; ++nY)
        {
            for (int nX = 0; nX < nSize; ++nX)
            {
                const bool bInTile = nX >= 50 && nX < 130 && nY >= nSize - 140 && nY < nSize - 60;
                QCOMPARE(imgSeen.pixel(nX, nY) != colorGround.rgb(), bInTile);
            }
        }
    }
}

void tst_voxeldrawing::markedVoxelsAreOutlinedAndKeepTheirColours()
{
    for (const bool bMIP : {true, false})
    {
        C3DVolume objVolume = volumeOf(cube(10, 1.0f, [](int nX, int, int) { return 50.0f + static_cast<float>(nX); }));
        objVolume.setMIP(bMIP);
        m_pGl->begin(colorGround, 10, 10);
        objVolume.render(true, GL_RENDER);
        const QImage imgPlain = m_pGl->grab();
        // The voxels of x 3 to 6 and y 3 to 6, all depths: 40 x 40 pixels in the middle of the frame.
        for (const Voxel& voxel : objVolume.voxels())
        {
            if (std::abs(voxel.x) < 2.0f && std::abs(voxel.y) < 2.0f)
                objVolume.addToVoxelSelection(voxel.nID);
        }
        m_pGl->begin(colorGround, 10, 10);
        objVolume.render(true, GL_RENDER);
        const QImage imgMarked = m_pGl->grab();
        for (int nY = 0; nY < nSize; ++nY)
        {
            for (int nX = 0; nX < nSize; ++nX)
            {
                const int nOut = std::max({80 - nX, nX - 119, 80 - nY, nY - 119}); // pixels from the marked square
                const QRgb nExpected = nOut == 1 || nOut == 2 ? qRgb(255, 255, 255) : imgPlain.pixel(nX, nY);
                QVERIFY2(imgMarked.pixel(nX, nY) == nExpected, qPrintable(QStringLiteral("%1 %2").arg(nX).arg(nY)));
            }
        }
        objVolume.clearAllVoxelSelection();
        m_pGl->begin(colorGround, 10, 10);
        objVolume.render(true, GL_RENDER);
        QCOMPARE(m_pGl->grab(), imgPlain);
    }
}

void tst_voxeldrawing::marksAreSeenWithoutAStencilBuffer()
{
    m_pGl->resize(nSize, nSize, false);
    C3DVolume objVolume = volumeOf({{0, 0, 0, 7, 10.0f}});
    objVolume.setMIP(true);
    objVolume.addToVoxelSelection(7);
    m_pGl->begin(colorGround, 10, 10);
    objVolume.render(true, GL_RENDER);
    const QImage imgSeen = m_pGl->grab();
    QCOMPARE(QColor(imgSeen.pixel(nSize / 2, nSize / 2)), QColor(objVolume.m_objPalette.colorForValue(10.0)));
    QCOMPARE(QColor(imgSeen.pixel(nSize / 2 + 6, nSize / 2)), QColor(Qt::white));
    QCOMPARE(QColor(imgSeen.pixel(nSize / 2 + 9, nSize / 2)), colorGround);
}

void tst_voxeldrawing::valuesOfNoNumberAreNotDrawn()
{
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const float fInf = std::numeric_limits<float>::infinity();
    QVector<Voxel> vecVoxels = {{-5, 0, 0, 1, fNaN}, {0, 0, 0, 2, 10.0f},   {5, 0, 0, 3, fInf},
                                {0, 5, 0, 4, -fInf}, {fNaN, 0, 0, 5, 9.0f}, {fInf, fInf, fInf, 6, 9.0f}};
    C3DVolume objVolume{QString()};
    QVERIFY(objVolume.loadVoxelData(1.0f, 6, vecVoxels.data(), 9.0f, 10.0f));
    objVolume.setColorTable(12, 0.0f, 1.0f);
    for (const bool bMIP : {true, false})
    {
        objVolume.setMIP(bMIP);
        m_pGl->begin(colorGround, 10, 10);
        objVolume.render(true, GL_RENDER);
        const QImage imgSeen = m_pGl->grab();
        QVERIFY(imgSeen.pixel(nSize / 2, nSize / 2) != colorGround.rgb());
        QVERIFY(imgSeen.pixel(nSize / 2 - 50, nSize / 2) == colorGround.rgb());
        QVERIFY(imgSeen.pixel(nSize / 2 + 50, nSize / 2) == colorGround.rgb());
    }
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), 28.0f);
}

QTEST_MAIN(tst_voxeldrawing)
#include "tst_voxeldrawing.moc"
