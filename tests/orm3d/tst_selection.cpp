#include "C3DMesh.h"
#include "C3DVolume.h"
#include "COffscreenGl.h"
#include "GlState.h"
#include "Shapes.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <set>
#include <vector>

#include <GL/glu.h>

namespace
{
using Voxel = C3DVolume::Voxel;
constexpr int nWidth = 320;
constexpr int nHeight = 240;

/// A hit record of one name.
struct SHit
{
    unsigned int m_nNames;
    unsigned int m_nNear;
    unsigned int m_nFar;
    unsigned int m_nName;
};

/// A view of a volume: a box about the origin that does not turn, and the volume turned and moved in it.
struct SView
{
    double m_afHalf[3] = {10, 8, 9}; ///< of the box, millimetres
    float m_afTurn[3] = {0, 0, 0};   ///< degrees about x, then y, then z
    double m_afCentre[3] = {0, 0, 0};
};

/// Picks the voxels under a rectangle of window pixels, in the order of calls of a measuring tool.
std::vector<SHit> pick(C3DVolume& objVolume, const SView& sView, double fX, double fY, double fPickWidth, double fPickHeight,
                       bool bDraw = false, long nRoom = -1)
{
    std::vector<unsigned int> vecBuffer(static_cast<std::size_t>(4 * (nRoom < 0 ? objVolume.getNoOfVoxels() : nRoom)), 0U);
    GLint anViewport[4];
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glSelectBuffer(static_cast<GLsizei>(vecBuffer.size()), vecBuffer.data());
    glGetIntegerv(GL_VIEWPORT, anViewport);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glRenderMode(GL_SELECT);
    glLoadIdentity();
    gluPickMatrix(fX, fY, fPickWidth, fPickHeight, anViewport);
    glOrtho(-sView.m_afHalf[0], sView.m_afHalf[0], -sView.m_afHalf[1], sView.m_afHalf[1], -sView.m_afHalf[2], sView.m_afHalf[2]);
    glRotatef(sView.m_afTurn[0], 1, 0, 0);
    glRotatef(sView.m_afTurn[1], 0, 1, 0);
    glRotatef(sView.m_afTurn[2], 0, 0, 1);
    glTranslated(-sView.m_afCentre[0], -sView.m_afCentre[1], -sView.m_afCentre[2]);
    glMatrixMode(GL_MODELVIEW);
    glInitNames();
    glPushName(0);
    glPushMatrix();
    objVolume.render(bDraw, GL_SELECT);
    const GLint nHits = glRenderMode(GL_RENDER);
    glPopMatrix();
    glPopName();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();
    if (nHits < 0)
        return {{0, 0, 0, 0}};
    std::vector<SHit> vecHits;
    for (std::size_t i = 0; i < static_cast<std::size_t>(nHits); ++i)
        vecHits.push_back({vecBuffer[4 * i], vecBuffer[4 * i + 1], vecBuffer[4 * i + 2], vecBuffer[4 * i + 3]});
    return vecHits;
}

/// How far a voxel's centre is inside the picked part of the box, in pixels (in parts of the depth for the third axis);
/// below 0: outside. All in double precision, without OpenGL.
double inside(const Voxel& voxel, const SView& sView, double fX, double fY, double fPickWidth, double fPickHeight)
{
    double af[3] = {double(voxel.x) - sView.m_afCentre[0], double(voxel.y) - sView.m_afCentre[1], double(voxel.z) - sView.m_afCentre[2]};
    for (int nAxis = 2; nAxis >= 0; --nAxis) // the turn about z comes first
    {
        const double fAngle = double(sView.m_afTurn[nAxis]) * 3.141592653589793 / 180.0;
        double& fFirst = af[(nAxis + 1) % 3];
        double& fSecond = af[(nAxis + 2) % 3];
        const double fTurned = std::cos(fAngle) * fFirst - std::sin(fAngle) * fSecond;
        fSecond = std::sin(fAngle) * fFirst + std::cos(fAngle) * fSecond;
        fFirst = fTurned;
    }
    const double fWindowX = (af[0] / sView.m_afHalf[0] + 1.0) * nWidth / 2.0;
    const double fWindowY = (af[1] / sView.m_afHalf[1] + 1.0) * nHeight / 2.0;
    return std::min({fPickWidth / 2.0 - std::abs(fWindowX - fX), fPickHeight / 2.0 - std::abs(fWindowY - fY),
                     (1.0 - std::abs(af[2]) / sView.m_afHalf[2]) * nWidth});
}

C3DVolume cloud(QRandomGenerator& objRandom, const double* pCentre, int nVoxels)
{
    QVector<Voxel> vecVoxels;
    for (int i = 0; i < nVoxels; ++i)
    {
        vecVoxels.append({static_cast<float>(pCentre[0]) + 0.25f * static_cast<float>(objRandom.bounded(-48, 49)),
                          static_cast<float>(pCentre[1]) + 0.25f * static_cast<float>(objRandom.bounded(-40, 41)),
                          static_cast<float>(pCentre[2]) + 0.25f * static_cast<float>(objRandom.bounded(-44, 45)),
                          C3DSGNode::m_nObjectCount++, static_cast<float>(objRandom.bounded(1, 1000))});
    }
    C3DVolume objVolume(QStringLiteral("Source"));
    if (!objVolume.loadVoxelData(0.25f, static_cast<unsigned long>(nVoxels), vecVoxels.data(), 1.0f, 1000.0f))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    return objVolume;
}
} // namespace

class tst_selection : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void hitsAreTheCentresUnderTheRectangle_data();
    void hitsAreTheCentresUnderTheRectangle();
    void everyVoxelIsOneHitWithRoomForJustThese();
    void tooLittleRoomIsToldAsAlways();
    void thresholdPaletteAndMarksDoNotMatter();
    void voxelsOnTheEdgeAreHits();
    void depthPlaysNoPartButForTheBox();
    void anEmptyNameStackIsNoTrouble();
    void hiddenVolumesHaveNoNames();
    void surfacesHaveNoNames();
    void namesComeBackAsMarks();
    void coordinatesOfNoNumberAreNoHits();
    void stateIsAsBefore();

private:
    std::unique_ptr<COffscreenGl> m_pGl;
};

void tst_selection::init()
{
    m_pGl = std::make_unique<COffscreenGl>(nWidth, nHeight);
    m_pGl->begin(Qt::black, 10, 8);
}

void tst_selection::cleanup()
{
    QCOMPARE(COffscreenGl::error(), 0U);
    m_pGl.reset();
}

void tst_selection::hitsAreTheCentresUnderTheRectangle_data()
{
    QTest::addColumn<int>("nSeed");
    for (int i = 0; i < 20; ++i)
        QTest::addRow("volume %d", i) << i;
}

void tst_selection::hitsAreTheCentresUnderTheRectangle()
{
    QFETCH(int, nSeed);
    QRandomGenerator objRandom(static_cast<quint32>(nSeed));
    SView sView;
    for (double& f : sView.m_afHalf)
        f = 5.0 + 10.0 * objRandom.generateDouble();
    for (double& f : sView.m_afCentre)
        f = nSeed % 4 == 0 ? 0.0 : 300.0 * (objRandom.generateDouble() - 0.5);
    C3DVolume objVolume = cloud(objRandom, sView.m_afCentre, 3000);
    for (int nCase = 0; nCase < 15; ++nCase)
    {
        for (float& f : sView.m_afTurn)
            f = nCase == 0 ? 0.0f : 360.0f * static_cast<float>(objRandom.generateDouble());
        const double fX = nWidth * objRandom.generateDouble();
        const double fY = nHeight * objRandom.generateDouble();
        const double fPickWidth = 1.0 + (nCase % 3 == 0 ? 0.0 : nWidth * objRandom.generateDouble());
        const double fPickHeight = 1.0 + (nCase % 3 == 0 ? 0.0 : nHeight * objRandom.generateDouble());
        std::multiset<unsigned int> setHits;
        for (const SHit& sHit : pick(objVolume, sView, fX, fY, fPickWidth, fPickHeight))
        {
            QCOMPARE(sHit.m_nNames, 1U);
            setHits.insert(sHit.m_nName);
        }
        for (const Voxel& voxel : objVolume.voxels())
        {
            const double fInside = inside(voxel, sView, fX, fY, fPickWidth, fPickHeight);
            const std::size_t nExpected = fInside > 0.0 ? 1 : 0;
            if (std::abs(fInside) < 0.01)
                continue; // the last bit of single precision decides
            QVERIFY2(setHits.count(static_cast<unsigned int>(voxel.nID)) == nExpected,
                     qPrintable(QStringLiteral("case %1: %2 pixels inside").arg(nCase).arg(fInside)));
        }
    }
}

void tst_selection::everyVoxelIsOneHitWithRoomForJustThese()
{
    QRandomGenerator objRandom(1);
    const double afCentre[3] = {0, 0, 0};
    C3DVolume objVolume = cloud(objRandom, afCentre, 5000);
    SView sView;
    for (double& f : sView.m_afHalf)
        f = 20.0;
    const std::vector<SHit> vecHits = pick(objVolume, sView, nWidth / 2.0, nHeight / 2.0, nWidth, nHeight);
    QCOMPARE(vecHits.size(), std::size_t(5000));
    std::set<unsigned int> setNames;
    for (const SHit& sHit : vecHits)
    {
        QCOMPARE(sHit.m_nNames, 1U);
        QCOMPARE(sHit.m_nNear, sHit.m_nFar);
        setNames.insert(sHit.m_nName);
    }
    QCOMPARE(setNames.size(), std::size_t(5000));
    QCOMPARE(*setNames.begin(), static_cast<unsigned int>(objVolume.getVoxelByNum(0)->nID));
}

void tst_selection::tooLittleRoomIsToldAsAlways()
{
    QRandomGenerator objRandom(1);
    const double afCentre[3] = {0, 0, 0};
    C3DVolume objVolume = cloud(objRandom, afCentre, 50);
    SView sView;
    sView.m_afHalf[0] = sView.m_afHalf[1] = sView.m_afHalf[2] = 20.0;
    const std::vector<SHit> vecHits = pick(objVolume, sView, nWidth / 2.0, nHeight / 2.0, nWidth, nHeight, false, 49);
    QCOMPARE(vecHits.size(), std::size_t(1));
    QCOMPARE(vecHits[0].m_nNames, 0U);
}

void tst_selection::thresholdPaletteAndMarksDoNotMatter()
{
    QRandomGenerator objRandom(2);
    const double afCentre[3] = {0, 0, 0};
    C3DVolume objVolume = cloud(objRandom, afCentre, 1000);
    SView sView;
    const std::size_t nAll = pick(objVolume, sView, 100, 100, 120, 90).size();
    QVERIFY(nAll > 50);
    objVolume.setDisplayThreshold(0.9);
    objVolume.m_objPalette.SetImageMinMax(900.0, 1000.0);
    objVolume.setMIP(true);
    objVolume.addToVoxelSelection(objVolume.getVoxelByNum(3)->nID);
    objVolume.render(true, GL_RENDER);
    QCOMPARE(pick(objVolume, sView, 100, 100, 120, 90).size(), nAll);
    QCOMPARE(pick(objVolume, sView, 100, 100, 120, 90, true).size(), nAll);
}

void tst_selection::voxelsOnTheEdgeAreHits()
{
    // Centres on the edges of the box, in the middle of a pixel, and beyond the edge by a thousandth of a millimetre.
    QVector<Voxel> vecVoxels = {{10, 0, 0, 1, 1}, {0, -8, 0, 2, 1},      {0, 0, 9, 3, 1},      {0, 0, -9, 4, 1},
                                {10, 8, 9, 5, 1}, {10.001f, 0, 0, 6, 1}, {0, 8.001f, 0, 7, 1}, {0, 0, -9.001f, 8, 1}};
    C3DVolume objVolume{QString()};
    QVERIFY(objVolume.loadVoxelData(1.0f, 8, vecVoxels.data(), 1.0f, 1.0f));
    std::set<unsigned int> setNames;
    for (const SHit& sHit : pick(objVolume, SView(), nWidth / 2.0, nHeight / 2.0, nWidth, nHeight))
        setNames.insert(sHit.m_nName);
    QCOMPARE(setNames, (std::set<unsigned int>{1, 2, 3, 4, 5}));
}

void tst_selection::depthPlaysNoPartButForTheBox()
{
    QVector<Voxel> vecVoxels;
    for (int i = -12; i <= 12; ++i)
        vecVoxels.append({0, 0, static_cast<float>(i), i + 100, 1.0f});
    C3DVolume objVolume{QString()};
    QVERIFY(objVolume.loadVoxelData(1.0f, 25, vecVoxels.data(), 1.0f, 1.0f));
    const std::vector<SHit> vecHits = pick(objVolume, SView(), nWidth / 2.0, nHeight / 2.0, 1, 1);
    QCOMPARE(vecHits.size(), std::size_t(19)); // from -9 to 9
}

void tst_selection::anEmptyNameStackIsNoTrouble()
{
    C3DVolume objVolume{QString()};
    Voxel sVoxel = {0, 0, 0, 42, 1.0f};
    QVERIFY(objVolume.loadVoxelData(1.0f, 1, &sVoxel, 1.0f, 1.0f));
    unsigned int anBuffer[16] = {};
    glSelectBuffer(16, anBuffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    objVolume.render(false, GL_SELECT);
    GLint nNames = -1;
    glGetIntegerv(GL_NAME_STACK_DEPTH, &nNames);
    QCOMPARE(glRenderMode(GL_RENDER), 1);
    QCOMPARE(nNames, 0);
    QCOMPARE(anBuffer[0], 1U);
    QCOMPARE(anBuffer[3], 42U);
    objVolume.render(false, GL_SELECT); // outside of a selection pass it does nothing
    QCOMPARE(COffscreenGl::error(), 0U);
}

void tst_selection::hiddenVolumesHaveNoNames()
{
    QRandomGenerator objRandom(2);
    const double afCentre[3] = {0, 0, 0};
    C3DVolume objVolume = cloud(objRandom, afCentre, 100);
    objVolume.show(false);
    QVERIFY(pick(objVolume, SView(), nWidth / 2.0, nHeight / 2.0, nWidth, nHeight).empty());
}

void tst_selection::surfacesHaveNoNames()
{
    C3DMesh objMesh{QString()};
    const Shapes::SSurface sBall = Shapes::ball(5, 2);
    QVERIFY(objMesh.loadMeshData(sBall.m_vecVertices, sBall.m_vecTriangles));
    unsigned int anBuffer[64] = {};
    glSelectBuffer(64, anBuffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(7);
    objMesh.render(false, GL_SELECT);
    objMesh.render(true, GL_SELECT);
    QCOMPARE(glRenderMode(GL_RENDER), 0);
}

void tst_selection::namesComeBackAsMarks()
{
    QRandomGenerator objRandom(8);
    const double afCentre[3] = {0, 0, 0};
    C3DVolume objVolume = cloud(objRandom, afCentre, 2000);
    SView sView;
    sView.m_afHalf[0] = sView.m_afHalf[1] = sView.m_afHalf[2] = 16.0;
    double fHalves = 0.0;
    for (const double fX : {nWidth / 4.0, nWidth * 3.0 / 4.0}) // the left and the right half of the picture
    {
        objVolume.clearAllVoxelSelection();
        double fExpected = 0.0;
        for (const Voxel& voxel : objVolume.voxels())
            fExpected += inside(voxel, sView, fX, nHeight / 2.0, nWidth / 2.0 - 0.1, nHeight) > 0.0 ? double(voxel.fValue) : 0.0;
        for (const SHit& sHit : pick(objVolume, sView, fX, nHeight / 2.0, nWidth / 2.0 - 0.1, nHeight))
            objVolume.addToVoxelSelection(sHit.m_nName);
        QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), static_cast<float>(fExpected));
        fHalves += fExpected;
    }
    for (const Voxel& voxel : objVolume.voxels()) // those on the line between the halves
        fHalves += voxel.x == 0.0f ? double(voxel.fValue) : 0.0;
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), static_cast<float>(fHalves));
}

void tst_selection::coordinatesOfNoNumberAreNoHits()
{
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const float fInf = std::numeric_limits<float>::infinity();
    QVector<Voxel> vecVoxels = {{fNaN, 0, 0, 1, 1}, {0, fInf, 0, 2, 1}, {0, 0, 0, 3, fNaN}, {1, 0, 0, 4, 1}};
    C3DVolume objVolume{QString()};
    QVERIFY(objVolume.loadVoxelData(1.0f, 4, vecVoxels.data(), 1.0f, 1.0f));
    std::set<unsigned int> setNames;
    for (const SHit& sHit : pick(objVolume, SView(), nWidth / 2.0, nHeight / 2.0, nWidth, nHeight))
        setNames.insert(sHit.m_nName);
    QCOMPARE(setNames, (std::set<unsigned int>{3, 4}));
}

void tst_selection::stateIsAsBefore()
{
    QRandomGenerator objRandom(4);
    const double afCentre[3] = {0, 0, 0};
    C3DVolume objVolume = cloud(objRandom, afCentre, 1000);
    SView sView;
    glColor3f(0.3f, 0.4f, 0.5f);
    glRasterPos3f(0.5f, 0.25f, 0.0f);
    const std::size_t nHits = pick(objVolume, sView, 160, 120, 200, 100).size();
    QVERIFY(nHits > 50);
    const QStringList lstBefore = GlState::all();
    pick(objVolume, sView, 160, 120, 200, 100);
    QCOMPARE(GlState::difference(lstBefore, GlState::all()), QString());

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    {
        const GlState::CHostile objHostile;
        glMatrixMode(GL_MODELVIEW);
        const QStringList lstHostile = GlState::all();
        QCOMPARE(pick(objVolume, sView, 160, 120, 200, 100).size(), nHits);
        QCOMPARE(GlState::difference(lstHostile, GlState::all()), QString());
        glMatrixMode(GL_TEXTURE);
        glLoadIdentity();
    }
    glPopClientAttrib();
    glPopAttrib();
}

QTEST_MAIN(tst_selection)
#include "tst_selection.moc"
