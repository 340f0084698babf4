#include "C3DMesh.h"
#include "C3DVolume.h"
#include "COffscreenGl.h"
#include "GlState.h"
#include "OrmColorTables.h"
#include "Shapes.h"

#include <QMainWindow>
#include <QOpenGLWidget>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>

Q_DECLARE_METATYPE(Shapes::SSurface)

namespace
{
using Voxel = C3DVolume::Voxel;
constexpr int nSize = 200;            ///< pixels of a frame
const QColor colorGround(10, 20, 30); ///< that no table has
const float afPlain[3] = {0.5f, 0.75f, 0.25f};

C3DMesh meshOf(const Shapes::SSurface& sSurface, float fOpacity = 0.5f)
{
    C3DMesh objMesh(QStringLiteral("Surface"));
    if (!objMesh.loadMeshData(sSurface.m_vecVertices, sSurface.m_vecTriangles))
        QTest::qFail("the test's own surface does not load", __FILE__, __LINE__);
    float afColor[3] = {afPlain[0], afPlain[1], afPlain[2]};
    objMesh.setFaceSetColor(afColor);
    objMesh.setOpacity(fOpacity);
    return objMesh;
}

C3DVolume volumeOf(QVector<Voxel> vecVoxels, float fSize = 1.0f)
{
    float fMin = std::numeric_limits<float>::max();
    float fMax = std::numeric_limits<float>::lowest();
    for (const Voxel& voxel : vecVoxels)
    {
        fMin = std::min(fMin, voxel.fValue);
        fMax = std::max(fMax, voxel.fValue);
    }
    C3DVolume objVolume(QStringLiteral("Source"));
    if (!objVolume.loadVoxelData(fSize, static_cast<unsigned long>(vecVoxels.size()), vecVoxels.data(), fMin, fMax))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    objVolume.setColorTable(12, 0.0f, 1.0f);
    return objVolume;
}

/// A cube of n x n x n voxels about the origin.
QVector<Voxel> cube(int n, float fSize, const std::function<float(int, int, int)>& fnValue)
{
    QVector<Voxel> vecVoxels;
    const float fFirst = -0.5f * static_cast<float>(n - 1) * fSize;
    for (int nZ = 0; nZ < n; ++nZ)
    {
        for (int nY = 0; nY < n; ++nY)
        {
            for (int nX = 0; nX < n; ++nX)
                vecVoxels.append({fFirst + static_cast<float>(nX) * fSize, fFirst + static_cast<float>(nY) * fSize,
                                  fFirst + static_cast<float>(nZ) * fSize, vecVoxels.size() + 1, fnValue(nX, nY, nZ)});
        }
    }
    return vecVoxels;
}

/// Light from everywhere: a surface has just its own colour.
void lightEvenly()
{
    const float afAmbient[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, afAmbient);
    glDisable(GL_LIGHT0);
}

bool isNear(QRgb nSeen, const QColor& colorExpected, int nTolerance)
{
    return std::abs(qRed(nSeen) - colorExpected.red()) <= nTolerance && std::abs(qGreen(nSeen) - colorExpected.green()) <= nTolerance &&
           std::abs(qBlue(nSeen) - colorExpected.blue()) <= nTolerance;
}

/// A colour over another one.
QColor over(const QColor& colorFront, const QColor& colorBack, double fOpacity)
{
    const auto mix = [=](int nFront, int nBack) { return qRound(fOpacity * nFront + (1.0 - fOpacity) * nBack); };
    return {mix(colorFront.red(), colorBack.red()), mix(colorFront.green(), colorBack.green()), mix(colorFront.blue(), colorBack.blue())};
}

QColor plainColor()
{
    return {qRound(255 * afPlain[0]), qRound(255 * afPlain[1]), qRound(255 * afPlain[2])};
}

int countNot(const QImage& imgFrame, QRgb nColor)
{
    int nCount = 0;
    for (int nY = 0; nY < imgFrame.height(); ++nY)
    {
        for (int nX = 0; nX < imgFrame.width(); ++nX)
            nCount += imgFrame.pixel(nX, nY) != nColor ? 1 : 0;
    }
    return nCount;
}

/// Whether two pictures agree but for the last bit of a few pixels, which depends on the order of the terms of a colour.
bool isSamePicture(const QImage& imgSeen, const QImage& imgExpected)
{
    int nDifferent = 0;
    for (int nY = 0; nY < imgSeen.height(); ++nY)
    {
        for (int nX = 0; nX < imgSeen.width(); ++nX)
        {
            if (!isNear(imgSeen.pixel(nX, nY), QColor(imgExpected.pixel(nX, nY)), 1))
                return false;
            nDifferent += imgSeen.pixel(nX, nY) != imgExpected.pixel(nX, nY) ? 1 : 0;
        }
    }
    return imgSeen.size() == imgExpected.size() && nDifferent * 1000 < imgSeen.width() * imgSeen.height();
}

/// A quad towards the viewer, 8 x 8 mm.
Shapes::SSurface quad()
{
    Shapes::SSurface sQuad;
    sQuad.add(-4, -4, 0);
    sQuad.add(4, -4, 0);
    sQuad.add(4, 4, 0);
    sQuad.add(-4, 4, 0);
    sQuad.addTriangle(0, 1, 2);
    sQuad.addTriangle(0, 2, 3);
    return sQuad;
}
} // namespace

class tst_drawing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theNearPlaneCutsNoSurface_data();
    void theNearPlaneCutsNoSurface();
    void theNearPlaneCutsNoVolume();
    void aTranslucentSurfaceIsOneLayer_data();
    void aTranslucentSurfaceIsOneLayer();
    void theSourceShowsThroughTheSurface();
    void opacityZeroDrawsNothing_data();
    void opacityZeroDrawsNothing();
    void anOpaqueSurfaceHidesWhatIsBehind();
    void surfacesAreLitFromOutside_data();
    void surfacesAreLitFromOutside();
    void theInsideOfAnOpenSurfaceIsLit();
    void densitiesColourTheSurface();
    void densityColoursFollowTheirPalette();
    void densitiesOfNoNumberArePlain();
    void aCopyShowsTheSameDensities();
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
    void hiddenObjectsAreNotDrawn();
    void onlyTrueAndRenderDraws();
    void emptyObjectsDrawNothing();
    void valuesOfNoNumberAreNotDrawn();
    void stateIsAsBefore_data();
    void stateIsAsBefore();
    void anotherContextShowsTheSame();
    void aWidgetShowsTheSame();

private:
    std::unique_ptr<COffscreenGl> m_pGl;
};

void tst_drawing::init()
{
    m_pGl = std::make_unique<COffscreenGl>(nSize, nSize);
}

void tst_drawing::cleanup()
{
    QCOMPARE(COffscreenGl::error(), 0U);
    m_pGl.reset();
}

void tst_drawing::theNearPlaneCutsNoSurface_data()
{
    QTest::addColumn<float>("fOpacity");
    QTest::newRow("opaque") << 1.0f;
    QTest::newRow("translucent") << 0.5f;
}

void tst_drawing::theNearPlaneCutsNoSurface()
{
    QFETCH(float, fOpacity);
    C3DMesh objMesh = meshOf(Shapes::torus(6.0, 2.5, 32, 16), fOpacity);
    for (const float fTurn : {0.0f, 40.0f, 90.0f, 215.0f})
    {
        m_pGl->begin(colorGround, 10, 10, fTurn, 0.5f * fTurn, 0);
        objMesh.render(true, GL_RENDER);
        const QImage imgSeen = m_pGl->grab();
        m_pGl->begin(colorGround, 10, 10, fTurn, 0.5f * fTurn, 0);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-10, 10, -10, 10, -500.5, 500.5); // the whole of it lies inside
        glMatrixMode(GL_MODELVIEW);
        objMesh.render(true, GL_RENDER);
        QCOMPARE(imgSeen, m_pGl->grab());
        QVERIFY(countNot(imgSeen, colorGround.rgb()) > nSize * nSize / 10);
    }
}

void tst_drawing::theNearPlaneCutsNoVolume()
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

void tst_drawing::aTranslucentSurfaceIsOneLayer_data()
{
    QTest::addColumn<Shapes::SSurface>("sSurface");
    QTest::newRow("torus") << Shapes::torus(6.0, 2.5, 32, 16);
    Shapes::SSurface sInverted = Shapes::torus(6.0, 2.5, 32, 16);
    sInverted.invert();
    QTest::newRow("torus inside out") << sInverted;
    Shapes::SSurface sOpen = Shapes::torus(6.0, 2.5, 32, 16);
    sOpen.m_vecTriangles.resize(3 * 680);
    QTest::newRow("two thirds of a torus") << sOpen;
    Shapes::SSurface sTwo = Shapes::ball(4, 3, 0, 0, -5);
    sTwo.append(Shapes::ball(3, 3, 1, 1, 5));
    QTest::newRow("two balls") << sTwo;
}

void tst_drawing::aTranslucentSurfaceIsOneLayer()
{
    QFETCH(Shapes::SSurface, sSurface);
    C3DMesh objMesh = meshOf(sSurface, 0.5f);
    for (const float fTurn : {0.0f, 60.0f, 90.0f, 155.0f})
    {
        m_pGl->begin(colorGround, 10, 10, fTurn, 0, fTurn);
        lightEvenly();
        objMesh.render(true, GL_RENDER);
        const QImage imgSeen = m_pGl->grab();
        const QColor colorExpected = over(plainColor(), colorGround, 128.0 / 255.0);
        int nCovered = 0;
        for (int nY = 0; nY < nSize; ++nY)
        {
            for (int nX = 0; nX < nSize; ++nX)
            {
                const QRgb nSeen = imgSeen.pixel(nX, nY);
                if (nSeen == colorGround.rgb())
                    continue;
                ++nCovered;
                QVERIFY2(isNear(nSeen, colorExpected, 2), qPrintable(QColor(nSeen).name() + QStringLiteral(" at %1 %2").arg(nX).arg(nY)));
            }
        }
        QVERIFY(nCovered > 2000);
    }
}

void tst_drawing::theSourceShowsThroughTheSurface()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}}, 2.0f);
    objVolume.setMIP(true);
    C3DMesh objMesh = meshOf(Shapes::ball(8, 4), 0.5f);
    m_pGl->begin(colorGround, 10, 10);
    lightEvenly();
    objVolume.render(true, GL_RENDER);
    objMesh.render(true, GL_RENDER);
    const QImage imgSeen = m_pGl->grab();
    const QColor colorVoxel(objVolume.m_objPalette.colorForValue(1.0));
    QVERIFY(isNear(imgSeen.pixel(nSize / 2, nSize / 2), over(plainColor(), colorVoxel, 128.0 / 255.0), 2));
    QVERIFY(isNear(imgSeen.pixel(nSize / 2 + 40, nSize / 2), over(plainColor(), colorGround, 128.0 / 255.0), 2));
}

void tst_drawing::opacityZeroDrawsNothing_data()
{
    QTest::addColumn<float>("fOpacity");
    QTest::newRow("0") << 0.0f;
    QTest::newRow("below 0") << -1.0f;
    QTest::newRow("no number") << std::numeric_limits<float>::quiet_NaN();
}

void tst_drawing::opacityZeroDrawsNothing()
{
    QFETCH(float, fOpacity);
    C3DMesh objMesh = meshOf(Shapes::ball(8, 3), fOpacity);
    C3DMesh objBehind = meshOf(Shapes::ball(2, 3, 0, 0, -8), 1.0f);
    m_pGl->begin(colorGround, 10, 10);
    objMesh.render(true, GL_RENDER);
    QCOMPARE(countNot(m_pGl->grab(), colorGround.rgb()), 0);
    objBehind.render(true, GL_RENDER); // not even a depth was left to hide it
    QVERIFY(countNot(m_pGl->grab(), colorGround.rgb()) > 500);
}

void tst_drawing::anOpaqueSurfaceHidesWhatIsBehind()
{
    C3DMesh objNear = meshOf(Shapes::ball(5, 4, 0, 0, 4), 1.0f);
    C3DMesh objFar = meshOf(Shapes::ball(5, 4, 0, 0, -4), 1.0f);
    float afRed[3] = {1, 0, 0};
    objFar.setFaceSetColor(afRed);
    for (const bool bNearFirst : {true, false})
    {
        m_pGl->begin(colorGround, 10, 10);
        lightEvenly();
        (bNearFirst ? objNear : objFar).render(true, GL_RENDER);
        (bNearFirst ? objFar : objNear).render(true, GL_RENDER);
        QVERIFY(isNear(m_pGl->grab().pixel(nSize / 2, nSize / 2), plainColor(), 1));
    }
}

void tst_drawing::surfacesAreLitFromOutside_data()
{
    QTest::addColumn<Shapes::SSurface>("sSurface");
    Shapes::SSurface sBall = Shapes::ball(8, 4);
    QTest::newRow("closed") << sBall;
    sBall.invert();
    QTest::newRow("closed, inside out") << sBall;
    sBall.invert();
    sBall.m_vecTriangles.resize(sBall.m_vecTriangles.size() / 2); // the half towards the viewer is in the first four octants
    QTest::newRow("half of it") << sBall;
}

void tst_drawing::surfacesAreLitFromOutside()
{
    QFETCH(Shapes::SSurface, sSurface);
    C3DMesh objMesh = meshOf(sSurface, 1.0f);
    m_pGl->begin(Qt::black, 10, 10);
    objMesh.render(true, GL_RENDER);
    const QImage imgSeen = m_pGl->grab();
    // The light comes from above right: brighter there than below left, and never as dark as the ambient light alone on the side of the
    // light.
    const int nBright = qGreen(imgSeen.pixel(nSize / 2 + 18, nSize / 2 - 28));
    const int nDim = qGreen(imgSeen.pixel(nSize / 2 - 40, nSize / 2 + 50));
    QVERIFY2(nBright > 170, qPrintable(QString::number(nBright)));
    QVERIFY2(nDim < nBright - 40, qPrintable(QString::number(nDim)));
}

void tst_drawing::theInsideOfAnOpenSurfaceIsLit()
{
    C3DMesh objMesh = meshOf(quad(), 1.0f);
    for (const float fTurn : {0.0f, 180.0f}) // from before and from behind
    {
        m_pGl->begin(Qt::black, 10, 10, 0, fTurn, 0);
        objMesh.render(true, GL_RENDER);
        const int nSeen = qGreen(m_pGl->grab().pixel(nSize / 2, nSize / 2));
        QVERIFY2(nSeen > 150, qPrintable(QString::number(nSeen))); // ambient light alone gives 57
    }
}

void tst_drawing::densitiesColourTheSurface()
{
    C3DMesh objMesh = meshOf(quad(), 1.0f);
    float afDensity[4] = {3.0f, 3.0f, 7.0f, 7.0f}; // below and above
    objMesh.setPhotonDensityMapping(afDensity, nullptr);
    const auto draw = [&]
    {
        m_pGl->begin(colorGround, 10, 10);
        lightEvenly();
        objMesh.render(true, GL_RENDER);
        return m_pGl->grab();
    };
    QVERIFY(isNear(draw().pixel(nSize / 2, nSize / 2), plainColor(), 1)); // the map is not shown yet
    objMesh.showPhotonDensity(true);
    const QImage imgMap = draw();
    const COrmPalette& objPalette = *objMesh.getColorPalette();
    QVERIFY(isNear(imgMap.pixel(nSize / 2, nSize / 2 + 39), QColor(objPalette.colorForValue(3.0)), 4));
    QVERIFY(isNear(imgMap.pixel(nSize / 2, nSize / 2 - 39), QColor(objPalette.colorForValue(7.0)), 4));
    objMesh.setOpacity(0.25f);
    QVERIFY(isNear(draw().pixel(nSize / 2, nSize / 2 - 39), over(QColor(objPalette.colorForValue(7.0)), colorGround, 64.0 / 255.0), 4));
    objMesh.setOpacity(1.0f);
    objMesh.setPhotonDensityMapping(nullptr, nullptr);
    QVERIFY(isNear(draw().pixel(nSize / 2, nSize / 2), plainColor(), 1)); // no map to show
}

void tst_drawing::densityColoursFollowTheirPalette()
{
    C3DMesh objMesh = meshOf(quad(), 1.0f);
    float afDensity[4] = {5.0f, 5.0f, 5.0f, 5.0f};
    objMesh.setPhotonDensityMapping(afDensity, nullptr);
    objMesh.showPhotonDensity(true);
    const auto pixel = [&]
    {
        m_pGl->begin(colorGround, 10, 10);
        lightEvenly();
        objMesh.render(true, GL_RENDER);
        return m_pGl->grab().pixel(nSize / 2, nSize / 2);
    };
    COrmPalette& objOwn = *objMesh.getColorPalette();
    objOwn.setColorTableType(ORM_CT_JET, 0.0f, 1.0f);
    QVERIFY(isNear(pixel(), QColor(objOwn.colorForValue(5.0)), 1));
    objOwn.SetImageMinMax(0.0, 5.0);
    QVERIFY(isNear(pixel(), QColor(objOwn.colorForValue(5.0)), 1));
    const QRgb nHigh = pixel();
    objOwn.setReversed(1);
    QVERIFY(isNear(pixel(), QColor(objOwn.colorForValue(5.0)), 1));
    QVERIFY(pixel() != nHigh);

    COrmPalette objGiven;
    objGiven.setColorTableType(ORM_CT_GREEN, 0.0f, 1.0f);
    objGiven.SetImageMinMax(0.0, 10.0);
    objMesh.setPhotonDensityMapping(afDensity, &objGiven);
    QVERIFY(isNear(pixel(), QColor(objGiven.colorForValue(5.0)), 1));
    objGiven.setColorTableType(ORM_CT_RED, 0.0f, 1.0f); // it was taken as it was
    QVERIFY(qGreen(pixel()) > 0 && qRed(pixel()) == 0);
    afDensity[0] = afDensity[1] = afDensity[2] = afDensity[3] = 10.0f;
    objMesh.setPhotonDensityMapping(afDensity, &objGiven);
    QVERIFY(isNear(pixel(), QColor(objGiven.colorForValue(10.0)), 1));
}

void tst_drawing::densitiesOfNoNumberArePlain()
{
    C3DMesh objMesh = meshOf(quad(), 1.0f);
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    float afDensity[4] = {fNaN, -std::numeric_limits<float>::infinity(), fNaN, fNaN};
    objMesh.setPhotonDensityMapping(afDensity, nullptr);
    objMesh.showPhotonDensity(true);
    m_pGl->begin(colorGround, 10, 10);
    lightEvenly();
    objMesh.render(true, GL_RENDER);
    QVERIFY(isNear(m_pGl->grab().pixel(nSize / 2, nSize / 2), plainColor(), 1));
    float afRed[3] = {1, 0, 0};
    objMesh.setFaceSetColor(afRed);
    objMesh.setFaceSetColor(nullptr);
    objMesh.render(true, GL_RENDER);
    QVERIFY(isNear(m_pGl->grab().pixel(nSize / 2, nSize / 2), Qt::red, 1));
}

void tst_drawing::aCopyShowsTheSameDensities()
{
    float afDensity[4] = {5.0f, 6.0f, 7.0f, 8.0f};
    C3DMesh objCopy{QString()};
    QImage imgOriginal;
    {
        C3DMesh objMesh = meshOf(quad(), 1.0f);
        objMesh.setPhotonDensityMapping(afDensity, nullptr);
        objMesh.showPhotonDensity(true);
        m_pGl->begin(colorGround, 10, 10);
        objMesh.render(true, GL_RENDER);
        imgOriginal = m_pGl->grab();
        objCopy = objMesh;
    }
    m_pGl->begin(colorGround, 10, 10);
    objCopy.render(true, GL_RENDER);
    QCOMPARE(m_pGl->grab(), imgOriginal);
}

void tst_drawing::mipShowsTheHighestValueInTheBarsColour_data()
{
    QTest::addColumn<int>("nTable");
    for (int i = 0; i < OrmColorTables::nVolumeTables; ++i)
        QTest::newRow(qPrintable(OrmColorTables::volumeTableNames().at(i))) << i;
}

void tst_drawing::mipShowsTheHighestValueInTheBarsColour()
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

void tst_drawing::mipShowsTheHighestValueBehindEachPixel_data()
{
    QTest::addColumn<float>("fX");
    QTest::addColumn<float>("fY");
    QTest::addColumn<float>("fZ");
    QTest::newRow("from the front") << 0.0f << 0.0f << 0.0f;
    QTest::newRow("from above") << 90.0f << 0.0f << 0.0f;
    QTest::newRow("turned") << 25.0f << 40.0f << 10.0f;
    QTest::newRow("turned further") << 200.0f << -75.0f << 130.0f;
}

void tst_drawing::mipShowsTheHighestValueBehindEachPixel()
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

void tst_drawing::mipHasNoGaps()
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

void tst_drawing::mipIgnoresWhatIsInFront()
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

void tst_drawing::translucentVoxelsKeepTheirHue()
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

void tst_drawing::aSourceIsNearlyOpaqueThroughItsThickness_data()
{
    QTest::addColumn<int>("nCells");
    QTest::addColumn<float>("fVoxel");
    QTest::addColumn<float>("fValue");
    QTest::newRow("8 voxels of 1 mm") << 8 << 1.0f << 5.0f;
    QTest::newRow("8 voxels, another range") << 8 << 1.0f << 5.0e9f;
    QTest::newRow("16 voxels of 0.5 mm") << 16 << 0.5f << 5.0f;
}

void tst_drawing::aSourceIsNearlyOpaqueThroughItsThickness()
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

void tst_drawing::translucentSquaresAreOfExactSize()
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

void tst_drawing::raisingTheMinimumKeepsTheOrder()
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

void tst_drawing::nearerVoxelsLieOverFartherOnes_data()
{
    QTest::addColumn<QVector3D>("objStep"); // from the low voxel to the high one
    for (const QVector3D& objStep : {QVector3D(3, 0, 0), QVector3D(0, 3, 0), QVector3D(0, 0, 3), QVector3D(1, 2, 3), QVector3D(-3, 1, 2),
                                     QVector3D(2, -3, 1), QVector3D(3, 2, -1), QVector3D(-2, -2, 3)})
        QTest::addRow("%g %g %g", double(objStep.x()), double(objStep.y()), double(objStep.z())) << objStep;
}

void tst_drawing::nearerVoxelsLieOverFartherOnes()
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

void tst_drawing::whatIsBelowTheThresholdIsNotDrawn_data()
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

void tst_drawing::whatIsBelowTheThresholdIsNotDrawn()
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

void tst_drawing::aPaletteChangeIsSeenInTheNextFrame()
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

void tst_drawing::voxelsStayInTheirTile()
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

void tst_drawing::markedVoxelsAreOutlinedAndKeepTheirColours()
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

void tst_drawing::marksAreSeenWithoutAStencilBuffer()
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

void tst_drawing::hiddenObjectsAreNotDrawn()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 10.0f}});
    C3DMesh objMesh = meshOf(Shapes::ball(5, 2), 1.0f);
    objVolume.show(false);
    objMesh.show(false);
    m_pGl->begin(colorGround, 10, 10);
    objVolume.render(true, GL_RENDER);
    objMesh.render(true, GL_RENDER);
    QCOMPARE(countNot(m_pGl->grab(), colorGround.rgb()), 0);
    objMesh.show(true);
    objMesh.render(true, GL_RENDER);
    QVERIFY(countNot(m_pGl->grab(), colorGround.rgb()) > 0);
}

void tst_drawing::onlyTrueAndRenderDraws()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 10.0f}});
    C3DMesh objMesh = meshOf(Shapes::ball(5, 2), 1.0f);
    m_pGl->begin(colorGround, 10, 10);
    objVolume.render(false, GL_RENDER);
    objMesh.render(false, GL_RENDER);
    objMesh.render(true, GL_SELECT);
    objVolume.render(true, GL_FEEDBACK);
    QCOMPARE(countNot(m_pGl->grab(), colorGround.rgb()), 0);
}

void tst_drawing::emptyObjectsDrawNothing()
{
    C3DVolume objVolume(QStringLiteral("Source"));
    C3DMesh objMesh(QStringLiteral("Surface"));
    m_pGl->begin(colorGround, 10, 10);
    objVolume.render(true, GL_RENDER);
    objMesh.render(true, GL_RENDER);
    objMesh.setPhotonDensityMapping(nullptr, nullptr);
    objMesh.showPhotonDensity(true);
    objMesh.render(true, GL_RENDER);
    QCOMPARE(countNot(m_pGl->grab(), colorGround.rgb()), 0);
}

void tst_drawing::valuesOfNoNumberAreNotDrawn()
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

void tst_drawing::stateIsAsBefore_data()
{
    QTest::addColumn<QString>("strObject");
    for (const char* pObject :
         {"opaque mesh", "translucent mesh", "open mesh", "mesh with map", "MIP", "translucent voxels", "marked voxels"})
        QTest::newRow(pObject) << QString::fromLatin1(pObject);
}

void tst_drawing::stateIsAsBefore()
{
    QFETCH(QString, strObject);
    Shapes::SSurface sTorus = Shapes::torus(6.0, 2.5, 24, 12);
    if (strObject == QLatin1String("open mesh"))
        sTorus.m_vecTriangles.resize(3 * 300);
    C3DMesh objMesh = meshOf(sTorus, strObject == QLatin1String("opaque mesh") ? 1.0f : 0.5f);
    std::vector<float> vecDensity(static_cast<std::size_t>(objMesh.getNumOfVertices()), 1.0f);
    vecDensity[7] = 3.0f;
    if (strObject == QLatin1String("mesh with map"))
    {
        objMesh.setPhotonDensityMapping(vecDensity.data(), nullptr);
        objMesh.showPhotonDensity(true);
    }
    C3DVolume objVolume = volumeOf(cube(6, 1.5f, [](int nX, int nY, int nZ) { return static_cast<float>(10 + nX + nY + nZ); }), 1.5f);
    objVolume.setMIP(strObject == QLatin1String("MIP"));
    if (strObject == QLatin1String("marked voxels"))
        objVolume.addToVoxelSelection(5);
    const auto draw = [&]
    {
        if (strObject.contains(QLatin1String("mesh")))
            objMesh.render(true, GL_RENDER);
        else
            objVolume.render(true, GL_RENDER);
    };

    m_pGl->begin(colorGround, 10, 10, 30, 20, 10);
    const QStringList lstClean = GlState::all();
    draw();
    QCOMPARE(GlState::difference(lstClean, GlState::all()), QString());
    const QImage imgClean = m_pGl->grab();
    QVERIFY(countNot(imgClean, colorGround.rgb()) > 1000);
    QVERIFY(lstClean.size() > 150);

    m_pGl->begin(colorGround, 10, 10, 30, 20, 10);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    {
        const GlState::CHostile objHostile;
        const QStringList lstHostile = GlState::all();
        QVERIFY(lstHostile != lstClean);
        glPushAttrib(0xbff); // as around a tile
        draw();
        glPopAttrib();
        QCOMPARE(GlState::difference(lstHostile, GlState::all()), QString());
        glMatrixMode(GL_TEXTURE);
        glLoadIdentity();
    }
    glPopClientAttrib();
    glPopAttrib();
    QVERIFY(isSamePicture(m_pGl->grab(), imgClean));
}

void tst_drawing::anotherContextShowsTheSame()
{
    C3DMesh objMesh = meshOf(Shapes::ball(8, 3), 0.5f);
    C3DVolume objVolume = volumeOf(cube(5, 1.0f, [](int nX, int, int) { return static_cast<float>(1 + nX); }));
    const auto draw = [&]
    {
        m_pGl->begin(colorGround, 10, 10, 30, 20, 10);
        objVolume.render(true, GL_RENDER);
        objMesh.render(true, GL_RENDER);
        return m_pGl->grab();
    };
    const QImage imgFirst = draw();
    m_pGl.reset();
    m_pGl = std::make_unique<COffscreenGl>(nSize, nSize);
    QCOMPARE(draw(), imgFirst);
}

namespace
{
/// A view of two objects.
class CView : public QOpenGLWidget
{
public:
    CView(C3DVolume& objVolume, C3DMesh& objMesh) : m_objVolume(objVolume), m_objMesh(objMesh)
    {
        QSurfaceFormat objFormat;
        objFormat.setVersion(2, 1);
        objFormat.setProfile(QSurfaceFormat::CompatibilityProfile);
        objFormat.setDepthBufferSize(24);
        setFormat(objFormat);
    }
    unsigned int m_eError = 0;

protected:
    void paintGL() override
    {
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-10, 10, -10, 10, -1, 1000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        lightEvenly();
        m_objVolume.render(true, GL_RENDER);
        m_objMesh.render(true, GL_RENDER);
        m_eError |= COffscreenGl::error();
    }

private:
    C3DVolume& m_objVolume;
    C3DMesh& m_objMesh;
};
} // namespace

void tst_drawing::aWidgetShowsTheSame()
{
    m_pGl.reset();
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 10.0f}}, 4.0f);
    objVolume.setMIP(true);
    objVolume.addToVoxelSelection(1);
    C3DMesh objMesh = meshOf(Shapes::ball(8, 4), 0.5f);
    QImage imgFirst;
    for (int nWindow = 0; nWindow < 2; ++nWindow) // closed and made again: another context
    {
        CView objView(objVolume, objMesh);
        objView.resize(200, 200);
        objView.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objView));
        const QImage imgSeen = objView.grabFramebuffer();
        QCOMPARE(objView.m_eError, 0U);
        const QColor colorVoxel(objVolume.m_objPalette.colorForValue(10.0));
        QVERIFY(isNear(imgSeen.pixel(100, 100), over(plainColor(), colorVoxel, 128.0 / 255.0), 2));
        QVERIFY(isNear(imgSeen.pixel(121, 100), over(plainColor(), Qt::white, 128.0 / 255.0), 2)); // the outline
        QVERIFY(isNear(imgSeen.pixel(150, 100), over(plainColor(), Qt::black, 128.0 / 255.0), 2));
        QCOMPARE(QColor(imgSeen.pixel(5, 5)), QColor(Qt::black));
        if (nWindow == 0)
            imgFirst = imgSeen;
        else
            QCOMPARE(imgSeen, imgFirst);
    }
    init();
}

QTEST_MAIN(tst_drawing)
#include "tst_drawing.moc"
