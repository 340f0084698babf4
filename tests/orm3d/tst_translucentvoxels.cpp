#include "COffscreenGl.h"
#include "DrawingScene.h"

#include <QVector3D>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <tuple>

#include <GL/glext.h>

using namespace DrawingScene;

namespace
{
/// Draws the voxels one by one with the current matrices, of which the modelview is a rotation: those from a least value on, the farthest
/// first, each in its own colour.
void drawOneByOne(const C3DVolume& objVolume, double fLeast)
{
    float afModelview[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, afModelview);
    const auto signOf = [&](int nAxis) { return afModelview[4 * nAxis + 2] >= 0.0f ? 1.0f : -1.0f; };
    const float afSigns[3] = {signOf(0), signOf(1), signOf(2)};
    QVector<Voxel> vecDrawn;
    std::copy_if(objVolume.voxels().begin(), objVolume.voxels().end(), std::back_inserter(vecDrawn),
                 [=](const Voxel& voxel) { return voxel.fValue > 0.0f && double(voxel.fValue) >= fLeast; });
    const auto key = [&](const Voxel& voxel) { return std::make_tuple(afSigns[2] * voxel.z, afSigns[1] * voxel.y, afSigns[0] * voxel.x); };
    std::sort(vecDrawn.begin(), vecDrawn.end(), [&](const Voxel& v1, const Voxel& v2) { return key(v1) < key(v2); });
    const auto fHighest = double(objVolume.getAttribMaxValue());
    const double fThickness = std::cbrt(std::count_if(objVolume.voxels().begin(), objVolume.voxels().end(),
                                                      [=](const Voxel& voxel) { return double(voxel.fValue) >= fHighest / 2.0; }));

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_POINT_SPRITE);
    glPointSize(2.0f * objVolume.getVoxelSize() * static_cast<float>(nSize) / 20.0f);
    glBegin(GL_POINTS);
    for (const Voxel& voxel : qAsConst(vecDrawn))
    {
        const QColor color(objVolume.m_objPalette.colorForValue(double(voxel.fValue)));
        const double fOpacity = 1.0 - std::pow(0.05, double(voxel.fValue) / fHighest / (4.0 * fThickness));
        glColor4ub(static_cast<GLubyte>(color.red()), static_cast<GLubyte>(color.green()), static_cast<GLubyte>(color.blue()),
                   static_cast<GLubyte>(std::lround(255.0 * fOpacity)));
        glVertex3f(voxel.x, voxel.y, voxel.z);
    }
    glEnd();
    glPopAttrib();
}
} // namespace

class tst_translucentvoxels : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void thePictureIsThatOfPlainSteps_data();
    void thePictureIsThatOfPlainSteps();

private:
    std::unique_ptr<COffscreenGl> m_pGl;
};

void tst_translucentvoxels::init()
{
    m_pGl = std::make_unique<COffscreenGl>(nSize, nSize);
}

void tst_translucentvoxels::cleanup()
{
    QCOMPARE(COffscreenGl::error(), 0U);
    m_pGl.reset();
}

void tst_translucentvoxels::thePictureIsThatOfPlainSteps_data()
{
    QTest::addColumn<bool>("bShuffled");
    QTest::addColumn<bool>("bLog");
    QTest::addColumn<double>("fMin");
    QTest::addColumn<double>("fMax");
    QTest::addColumn<double>("fThreshold");
    QTest::addColumn<double>("fLeast"); // value that is drawn
    QTest::newRow("linear") << false << false << 0.0 << 1000.0 << 0.05 << 50.0;
    QTest::newRow("linear, voxels in no order") << true << false << 0.0 << 1000.0 << 0.05 << 50.0;
    QTest::newRow("linear, no threshold") << false << false << 0.0 << 1000.0 << 0.0 << 0.0;
    QTest::newRow("linear, minimum raised") << true << false << 300.0 << 800.0 << 0.05 << 300.0;
    QTest::newRow("linear, downwards") << false << false << 900.0 << 100.0 << 0.05 << 100.0;
    QTest::newRow("one value") << false << false << 500.0 << 500.0 << 0.05 << 500.0;
    QTest::newRow("log") << true << true << 2.0 << 1000.0 << 0.05 << 2.0;
    QTest::newRow("log from 0") << false << true << 0.0 << 1000.0 << 0.05 << 1.0;
    QTest::newRow("log, downwards") << false << true << 800.0 << 20.0 << 0.05 << 20.0;
}

void tst_translucentvoxels::thePictureIsThatOfPlainSteps()
{
    QFETCH(bool, bShuffled);
    QFETCH(bool, bLog);
    QFETCH(double, fMin);
    QFETCH(double, fMax);
    QFETCH(double, fThreshold);
    QFETCH(double, fLeast);
    std::mt19937 objRandom(31);
    std::uniform_real_distribution<double> objExponent(-3.5, 3.0); // values from far below 1 to 1000
    QVector<Voxel> vecVoxels =
        cube(17, 0.5f, [&](int nX, int, int) { return nX == 8 ? 1000.0f : float(std::pow(10.0, objExponent(objRandom))); });
    const auto isGap = [&](const Voxel&) { return objRandom() % 5 == 0; };
    vecVoxels.erase(std::remove_if(vecVoxels.begin(), vecVoxels.end(), isGap), vecVoxels.end());
    if (bShuffled)
        std::shuffle(vecVoxels.begin(), vecVoxels.end(), objRandom);
    C3DVolume objVolume = volumeOf(vecVoxels, 0.5f);
    objVolume.setLogScale(bLog ? 1 : 0);
    objVolume.setDisplayThreshold(fThreshold);
    objVolume.m_objPalette.SetImageMinMax(fMin, fMax);
    for (const QVector3D& objTurn : {QVector3D(0, 0, 0), QVector3D(30, 40, 10), QVector3D(200, -75, 130), QVector3D(-20, 160, 85)})
    {
        const auto draw = [&](const std::function<void()>& fnDraw)
        {
            m_pGl->begin(colorGround, 10, 10, objTurn.x(), objTurn.y(), objTurn.z());
            glMatrixMode(GL_PROJECTION);
            glLoadIdentity();
            glOrtho(-10, 10, -10, 10, -500, 500);
            glMatrixMode(GL_MODELVIEW);
            fnDraw();
            return m_pGl->grab();
        };
        const QImage imgSeen = draw([&] { objVolume.render(true, GL_RENDER); });
        QVERIFY(countNot(imgSeen, colorGround.rgb()) > 5000);
        QVERIFY(isSamePicture(imgSeen, draw([&] { drawOneByOne(objVolume, fLeast); })));
    }
}

QTEST_MAIN(tst_translucentvoxels)
#include "tst_translucentvoxels.moc"
