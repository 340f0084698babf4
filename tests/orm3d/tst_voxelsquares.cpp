#include "COffscreenGl.h"
#include "DrawingScene.h"

#include <QMatrix4x4>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

using namespace DrawingScene;

namespace
{
constexpr int nLeft = 30; ///< corner of the tile in the frame
constexpr int nBottom = 20;

/// A view of a volume in a tile.
struct SShot
{
    double m_fHalf;                ///< half of the box, millimetres
    std::array<float, 3> m_afTurn; ///< degrees about x, y and z
    std::array<float, 3> m_afMove; ///< millimetres, before the turn
    int m_nWidth;                  ///< of the tile, pixels
    int m_nHeight;
};

void begin(COffscreenGl& objGl, const SShot& sShot)
{
    objGl.begin(colorGround, sShot.m_fHalf, sShot.m_fHalf, sShot.m_afTurn[0], sShot.m_afTurn[1], sShot.m_afTurn[2]);
    glTranslatef(sShot.m_afMove[0], sShot.m_afMove[1], sShot.m_afMove[2]);
    glViewport(nLeft, nBottom, sShot.m_nWidth, sShot.m_nHeight);
}

QImage seen(COffscreenGl& objGl, C3DVolume& objVolume, const SShot& sShot)
{
    begin(objGl, sShot);
    objVolume.render(true, GL_RENDER);
    return objGl.grab();
}

/// Pixels that an edge of a voxel takes, as the larger side of the box around it.
int squareSize(const SShot& sShot, float fVoxelSize)
{
    QMatrix4x4 objTurn;
    objTurn.rotate(sShot.m_afTurn[0], 1, 0, 0);
    objTurn.rotate(sShot.m_afTurn[1], 0, 1, 0);
    objTurn.rotate(sShot.m_afTurn[2], 0, 0, 1);
    const int anPixels[2] = {sShot.m_nWidth, sShot.m_nHeight};
    double fMost = 0.0;
    for (int nRow = 0; nRow < 2; ++nRow)
    {
        const double fSum = std::abs(double(objTurn(nRow, 0))) + std::abs(double(objTurn(nRow, 1))) + std::abs(double(objTurn(nRow, 2)));
        fMost = std::max(fMost, double(fVoxelSize) * fSum * anPixels[nRow] / (2.0 * sShot.m_fHalf));
    }
    return std::max(1, int(std::ceil(fMost - 1e-3)));
}

/// The plain way: a square for each voxel, later ones over earlier ones.
void drawPlainly(const SShot& sShot, const std::vector<Voxel>& vecVoxels, int nSquare, const std::function<QColor(const Voxel&)>& fnColor)
{
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-sShot.m_fHalf, sShot.m_fHalf, -sShot.m_fHalf, sShot.m_fHalf, -500.5, 500.5);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_SCISSOR_TEST);
    glScissor(nLeft, nBottom, sShot.m_nWidth, sShot.m_nHeight);
    glPointSize(static_cast<float>(nSquare));
    glBegin(GL_POINTS);
    for (const Voxel& voxel : vecVoxels)
    {
        const QColor color = fnColor(voxel);
        glColor3ub(static_cast<GLubyte>(color.red()), static_cast<GLubyte>(color.green()), static_cast<GLubyte>(color.blue()));
        glVertex3f(voxel.x, voxel.y, voxel.z);
    }
    glEnd();
    glPopAttrib();
}

/// Every voxel that has a value, in ascending order.
QImage plain(COffscreenGl& objGl, C3DVolume& objVolume, const SShot& sShot)
{
    begin(objGl, sShot);
    std::vector<Voxel> vecVoxels(objVolume.voxels().cbegin(), objVolume.voxels().cend());
    std::stable_sort(vecVoxels.begin(), vecVoxels.end(), [](const Voxel& a, const Voxel& b) { return a.fValue < b.fValue; });
    drawPlainly(sShot, vecVoxels, squareSize(sShot, objVolume.getVoxelSize()),
                [&](const Voxel& voxel) { return QColor(objVolume.m_objPalette.colorForValue(double(voxel.fValue))); });
    return objGl.grab();
}

/// How many pixels differ by more than two steps of 255.
int differences(const QImage& imgSeen, const QImage& imgExpected)
{
    int nDifferent = 0;
    for (int nY = 0; nY < imgSeen.height(); ++nY)
    {
        for (int nX = 0; nX < imgSeen.width(); ++nX)
            nDifferent += isNear(imgSeen.pixel(nX, nY), QColor(imgExpected.pixel(nX, nY)), 2) ? 0 : 1;
    }
    return nDifferent;
}

/// A cube with a peak, some noise and holes.
QVector<Voxel> cloud(int nSide, float fSize, double fNoise, quint32 nSeed)
{
    QRandomGenerator objRandom(nSeed);
    const double fMiddle = 0.5 * (nSide - 1);
    QVector<Voxel> vecVoxels = cube(nSide, fSize,
                                    [&](int nX, int nY, int nZ)
                                    {
                                        const double fSquare =
                                            std::pow(nX - fMiddle, 2) + std::pow(nY - fMiddle, 2) + std::pow(nZ - fMiddle, 2);
                                        const double fPeak = std::exp(-4.0 * fSquare / (fMiddle * fMiddle));
                                        return float(1.0 + 99.0 * ((1.0 - fNoise) * fPeak + fNoise * objRandom.generateDouble()));
                                    });
    vecVoxels.erase(std::remove_if(vecVoxels.begin(), vecVoxels.end(), [&](const Voxel&) { return objRandom.bounded(10) == 0; }),
                    vecVoxels.end());
    return vecVoxels;
}
} // namespace

class tst_voxelsquares : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatIsSeenIsThePictureOfAll_data();
    void whatIsSeenIsThePictureOfAll();
    void theOutlineIsThatOfAllMarkedVoxels();
    void centresBeyondTheTileAreNotSeen();
    void whatTheDepthsCutHidesNothing();
    void squaresBeyondSixtyFourPixelsCoverWhatTheyCover();

private:
    std::unique_ptr<COffscreenGl> m_pGl;
};

void tst_voxelsquares::init()
{
    m_pGl = std::make_unique<COffscreenGl>(320, 280);
}

void tst_voxelsquares::cleanup()
{
    QCOMPARE(COffscreenGl::error(), 0U);
    m_pGl.reset();
}

void tst_voxelsquares::whatIsSeenIsThePictureOfAll_data()
{
    QTest::addColumn<int>("nSide");
    QTest::addColumn<float>("fVoxel");
    QTest::addColumn<double>("fNoise");
    QTest::addColumn<double>("fHalf");
    QTest::newRow("a pixel for many voxels") << 40 << 0.25f << 0.0 << 60.0;
    QTest::newRow("a pixel a voxel") << 30 << 0.25f << 0.05 << 30.0;
    QTest::newRow("a pixel a voxel, wild values") << 30 << 0.25f << 1.0 << 30.0;
    QTest::newRow("four pixels a voxel") << 30 << 0.25f << 0.05 << 8.0;
    QTest::newRow("four pixels a voxel, wild values") << 30 << 0.25f << 1.0 << 8.0;
    QTest::newRow("larger than the tile") << 20 << 1.0f << 0.3 << 5.0;
    QTest::newRow("larger than the tile by far") << 16 << 2.0f << 0.5 << 2.5;
}

void tst_voxelsquares::whatIsSeenIsThePictureOfAll()
{
    QFETCH(int, nSide);
    QFETCH(float, fVoxel);
    QFETCH(double, fNoise);
    QFETCH(double, fHalf);
    QRandomGenerator objRandom(static_cast<quint32>(nSide));
    C3DVolume objVolume = volumeOf(cloud(nSide, fVoxel, fNoise, 17), fVoxel);
    objVolume.setDisplayThreshold(0.0);
    objVolume.setMIP(true);
    int nAll = 0;
    int nDifferent = 0;
    int nShown = 0;
    for (int nShot = 0; nShot < 12; ++nShot)
    {
        const auto number = [&](double fFrom, double fTo) { return float(fFrom + (fTo - fFrom) * objRandom.generateDouble()); };
        const SShot sShot = {fHalf * double(number(0.9, 1.1)),
                             {nShot % 2 == 0 ? 0.0f : number(0, 360), number(0, 360), nShot % 2 == 0 ? 0.0f : number(0, 360)},
                             {number(-1, 1), number(-1, 1), number(-1, 1)},
                             objRandom.bounded(180, 260),
                             objRandom.bounded(180, 240)};
        const QImage imgSeen = seen(*m_pGl, objVolume, sShot);
        const QImage imgPlain = plain(*m_pGl, objVolume, sShot);
        nDifferent += differences(imgSeen, imgPlain);
        nShown += countNot(imgPlain, colorGround.rgb());
        nAll += sShot.m_nWidth * sShot.m_nHeight;
    }
    QVERIFY2(nDifferent * 1000 < nAll, qPrintable(QStringLiteral("%1 of %2 pixels, %3 shown").arg(nDifferent).arg(nAll).arg(nShown)));
    QVERIFY(nShown > nAll / 400);
}

void tst_voxelsquares::theOutlineIsThatOfAllMarkedVoxels()
{
    C3DVolume objVolume = volumeOf(cloud(24, 0.5f, 0.3, 5), 0.5f);
    objVolume.setMIP(true);
    std::vector<Voxel> vecMarked;
    for (const Voxel& voxel : objVolume.voxels())
    {
        if (std::abs(voxel.x - 1.0f) < 3.0f && voxel.y > -2.0f)
        {
            vecMarked.push_back(voxel);
            objVolume.addToVoxelSelection(voxel.nID);
        }
    }
    int nOutline = 0;
    for (const float fTurn : {0.0f, 33.0f, 147.0f, 260.0f})
    {
        const SShot sShot = {9.0, {0.3f * fTurn, fTurn, 0.1f * fTurn}, {0.1f, 0.2f, 0.3f}, 230, 210};
        const QImage imgSeen = seen(*m_pGl, objVolume, sShot);
        const int nSquare = squareSize(sShot, 0.5f);
        begin(*m_pGl, sShot);
        drawPlainly(sShot, vecMarked, nSquare + 4, [](const Voxel&) { return QColor(Qt::white); });
        drawPlainly(sShot, vecMarked, nSquare, [](const Voxel&) { return QColor(Qt::black); });
        const QImage imgPlain = m_pGl->grab();
        int nDifferent = 0;
        for (int nY = 0; nY < imgSeen.height(); ++nY)
        {
            for (int nX = 0; nX < imgSeen.width(); ++nX)
            {
                const bool bOutline = imgPlain.pixel(nX, nY) == qRgb(255, 255, 255); // no table of this volume has white
                nDifferent += bOutline != (imgSeen.pixel(nX, nY) == qRgb(255, 255, 255)) ? 1 : 0;
                nOutline += bOutline ? 1 : 0;
            }
        }
        QVERIFY2(nDifferent * 1000 < sShot.m_nWidth * sShot.m_nHeight, qPrintable(QString::number(nDifferent)));
    }
    QVERIFY2(nOutline > 1000, qPrintable(QString::number(nOutline)));
}

void tst_voxelsquares::centresBeyondTheTileAreNotSeen()
{
    // Voxels of 10 pixels with their centres a little inside and a little beyond each edge of a tile of 200 x 200 pixels.
    for (const bool bInside : {true, false})
    {
        const float fPlace = bInside ? 9.99f : 10.01f;
        QVector<Voxel> vecVoxels = {{fPlace, 0, 0, 1, 1}, {-fPlace, 0, 0, 2, 1}, {0, fPlace, 0, 3, 1}, {0, -fPlace, 0, 4, 1}};
        C3DVolume objVolume = volumeOf(vecVoxels);
        objVolume.setMIP(true);
        const SShot sShot = {10.0, {0, 0, 0}, {0, 0, 0}, 200, 200};
        const int nShown = countNot(seen(*m_pGl, objVolume, sShot), colorGround.rgb());
        QCOMPARE(nShown, bInside ? 4 * 10 * 5 : 0); // half of each
    }
}

void tst_voxelsquares::whatTheDepthsCutHidesNothing()
{
    // The highest lies so far in front that the view cuts it off.
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 60.0f}, {0, 0, 700, 2, 100.0f}, {0, 0, -700, 3, 90.0f}});
    objVolume.setMIP(true);
    const SShot sShot = {10.0, {0, 0, 0}, {0, 0, 0}, 200, 200};
    const QImage imgSeen = seen(*m_pGl, objVolume, sShot);
    QCOMPARE(QColor(imgSeen.pixel(nLeft + 100, m_pGl->height() - nBottom - 100)), QColor(objVolume.m_objPalette.colorForValue(60.0)));
}

void tst_voxelsquares::squaresBeyondSixtyFourPixelsCoverWhatTheyCover()
{
    // Squares of 100 pixels: a low one between two high ones shows only in the strip that they leave.
    C3DVolume objVolume =
        volumeOf({{-0.55f, 0, 0, 1, 100.0f}, {0.55f, 0, 0, 2, 100.0f}, {0, 0, 0, 3, 50.0f}, {0.02f, 0, 0, 4, 20.0f}}, 1.0f);
    objVolume.setMIP(true);
    const SShot sShot = {1.0, {0, 0, 0}, {0, 0, 0}, 200, 200};
    const QImage imgSeen = seen(*m_pGl, objVolume, sShot);
    for (int nX = 0; nX < 200; ++nX)
    {
        const double fValue = nX >= 95 && nX < 105 ? 50.0 : 100.0;
        QCOMPARE(QColor(imgSeen.pixel(nLeft + nX, m_pGl->height() - nBottom - 100)), QColor(objVolume.m_objPalette.colorForValue(fValue)));
    }
}

QTEST_MAIN(tst_voxelsquares)
#include "tst_voxelsquares.moc"
