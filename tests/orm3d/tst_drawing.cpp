#include "CDrawRehearsal.h"
#include "COffscreenGl.h"
#include "DrawingScene.h"
#include "GlState.h"

#include <QOpenGLWidget>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

Q_DECLARE_METATYPE(Shapes::SSurface)

using namespace DrawingScene;

class tst_drawing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theNearPlaneCutsNoSurface_data();
    void theNearPlaneCutsNoSurface();
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
    void hiddenObjectsAreNotDrawn();
    void nothingIsDrawnInARehearsal();
    void onlyTrueAndRenderDraws();
    void emptyObjectsDrawNothing();
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

void tst_drawing::nothingIsDrawnInARehearsal()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 10.0f}});
    C3DMesh objMesh = meshOf(Shapes::ball(5, 2), 1.0f);
    m_pGl->begin(colorGround, 10, 10);
    QVERIFY(!CDrawRehearsal::isUnderWay());
    {
        const CDrawRehearsal objRehearsal;
        {
            const CDrawRehearsal objInner;
        }
        QVERIFY(CDrawRehearsal::isUnderWay());
        objVolume.render(true, GL_RENDER);
        objMesh.render(true, GL_RENDER);
        QCOMPARE(countNot(m_pGl->grab(), colorGround.rgb()), 0);
    }
    objVolume.render(true, GL_RENDER);
    const int nVolume = countNot(m_pGl->grab(), colorGround.rgb());
    QVERIFY(nVolume > 0);
    objMesh.render(true, GL_RENDER);
    QVERIFY(countNot(m_pGl->grab(), colorGround.rgb()) > nVolume);
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
