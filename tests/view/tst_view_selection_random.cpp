// The voxels that a measuring rectangle selects, beside a computation of their centres without OpenGL: random rectangles, rotations and
// window sizes.

#include "MeasuringTestTools.h"

#include <QRandomGenerator>

#include <array>

using namespace ViewTest;

namespace
{
constexpr int kWindows = 25;
constexpr int kRectangles = 44; ///< in each window
constexpr double kEdge = 0.02;  ///< pixels about the rectangle's edge within which single precision decides
constexpr double kDepth = 1e-3; ///< the same in millimetres at the ends of the box

using Matrix = std::array<std::array<double, 3>, 3>;

Matrix product(const Matrix& a, const Matrix& b)
{
    Matrix c{};
    for (std::size_t i = 0; i < 3; ++i)
    {
        for (std::size_t j = 0; j < 3; ++j)
        {
            c[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
        }
    }
    return c;
}

/// The rotation about an axis (0 x, 1 y, 2 z), counter-clockwise seen from its positive end.
Matrix rotation(std::size_t nAxis, double fDegrees)
{
    const double fAngle = fDegrees * 3.14159265358979323846 / 180.0;
    const std::size_t nNext = (nAxis + 1) % 3;
    const std::size_t nLast = (nAxis + 2) % 3;
    Matrix m{};
    m[nAxis][nAxis] = 1.0;
    m[nNext][nNext] = m[nLast][nLast] = std::cos(fAngle);
    m[nLast][nNext] = std::sin(fAngle);
    m[nNext][nLast] = -std::sin(fAngle);
    return m;
}

/// Two opposite corners in window pixels.
struct SCorners
{
    QPointF ptFirst;
    QPointF ptSecond;
};

/// What was compared so far.
struct STally
{
    qint64 nVoxels = 0;
    qint64 nSelected = 0;
    qint64 nUnsure = 0;   ///< left out of the comparison
    qint64 nCutByBox = 0; ///< under the rectangle, but beyond an end of the box
    qint64 nMissed = 0;
    qint64 nAdded = 0;
    double fWorst = 0.0; ///< how far from the edge, pixels or millimetres, a wrong one was at most
};

/// Compares the selection of one result with the centres of its voxels.
void compare(const CRecordingView& view, sAnalysisBase& objResult, int nResult, const SCorners& objCorners, const Matrix& mTurn,
             STally& objTally)
{
    Coord3d objMin;
    Coord3d objMax;
    objResult.objMesh.getBBox(objMin, objMax);
    const std::array<double, 3> afCenter = {(objMin.x + objMax.x) / 2.0, (objMin.y + objMax.y) / 2.0, (objMin.z + objMax.z) / 2.0};
    const QRect rectPicture = pictureOf(view, nResult);
    const double fPixelsX = rectPicture.width() / (view.m_dBoxMaxX - view.m_dBoxMinX);
    const double fPixelsY = rectPicture.height() / (view.m_dBoxMaxY - view.m_dBoxMinY);
    // A rectangle is at least one pixel wide and high, about its middle.
    const QPointF ptMiddle = (objCorners.ptFirst + objCorners.ptSecond) / 2.0;
    const double fHalfWidth = std::max(std::fabs(objCorners.ptFirst.x() - objCorners.ptSecond.x()), 1.0) / 2.0;
    const double fHalfHeight = std::max(std::fabs(objCorners.ptFirst.y() - objCorners.ptSecond.y()), 1.0) / 2.0;
    for (int i = 0; i < objResult.objVolume.getNoOfVoxels(); ++i)
    {
        const C3DVolume::Voxel* pVoxel = objResult.objVolume.getVoxelByNum(i);
        const std::array<double, 3> af = {double(pVoxel->x) - afCenter[0], double(pVoxel->y) - afCenter[1],
                                          double(pVoxel->z) - afCenter[2]};
        const auto fnTurned = [&](std::size_t nRow) { return mTurn[nRow][0] * af[0] + mTurn[nRow][1] * af[1] + mTurn[nRow][2] * af[2]; };
        const double fX = rectPicture.x() + (fnTurned(0) - view.m_dBoxMinX) * fPixelsX;
        const double fY = rectPicture.y() + (fnTurned(1) - view.m_dBoxMinY) * fPixelsY;
        const double fInRectangle = std::min(fHalfWidth - std::fabs(fX - ptMiddle.x()), fHalfHeight - std::fabs(fY - ptMiddle.y()));
        const double fInBox = view.m_dBoxMaxZ - std::fabs(fnTurned(2));
        const bool bSelected = objResult.objVolume.isVoxelSelected(i);
        ++objTally.nVoxels;
        objTally.nSelected += bSelected ? 1 : 0;
        if ((std::fabs(fInRectangle) < kEdge && fInBox > -kDepth) || (std::fabs(fInBox) < kDepth && fInRectangle > -kEdge))
        {
            ++objTally.nUnsure;
            continue;
        }
        objTally.nCutByBox += fInRectangle > 0.0 && fInBox < 0.0 ? 1 : 0;
        const bool bExpected = fInRectangle > 0.0 && fInBox > 0.0;
        if (bSelected != bExpected)
        {
            ++(bExpected ? objTally.nMissed : objTally.nAdded);
            objTally.fWorst = std::max(objTally.fWorst, std::fabs(std::min(fInRectangle, fInBox)));
        }
    }
}

/// Two corners in a tile's picture: of any size, of the whole picture, or less than a pixel apart.
SCorners randomCorners(QRandomGenerator& objRandom, const QRect& rectPicture)
{
    const auto fnPoint = [&]
    {
        return QPointF(rectPicture.x() + objRandom.generateDouble() * rectPicture.width(),
                       rectPicture.y() + objRandom.generateDouble() * rectPicture.height());
    };
    const QPointF pt = fnPoint();
    switch (objRandom.bounded(8))
    {
    case 0:
        return {QRectF(rectPicture).topLeft(), QRectF(rectPicture).bottomRight()};
    case 1:
        return {pt, pt + QPointF(objRandom.generateDouble(), objRandom.generateDouble())};
    default:
        return {pt, fnPoint()};
    }
}
} // namespace

class tst_view_selection_random : public QObject
{
    Q_OBJECT

private slots:
    void selectsTheCentresUnderTheRectangle();
};

void tst_view_selection_random::selectsTheCentresUnderTheRectangle()
{
    // Three results of different size and place, their surfaces full of voxels, so that turned ones reach beyond the box.
    SResultRecipe objFull;
    objFull.nVoxelEdge = 20;
    SResultRecipe objSmall;
    objSmall.objSize = Coord3d(14.0, 11.0, 16.0);
    objSmall.objCenter = Coord3d(2.5, -3.25, 1.5);
    objSmall.nVoxelEdge = 11;
    SResultRecipe objWide;
    objWide.objSize = Coord3d(24.0, 18.0, 13.0);
    objWide.objCenter = Coord3d(-4.0, 6.125, 0.75);
    objWide.nVoxelEdge = 16;
    CRecordingView view;
    showMeasuring(view,
                  {result(QStringLiteral("A"), objFull), result(QStringLiteral("B"), objSmall), result(QStringLiteral("C"), objWide)});

    QRandomGenerator objRandom(20261121);
    STally objTally;
    int nPasses = 0;
    for (int nWindow = 0; nWindow < kWindows; ++nWindow)
    {
        view.resize(objRandom.bounded(300, 1200), objRandom.bounded(200, 800));
        QCoreApplication::processEvents();
        view.picture();
        for (int n = 0; n < kRectangles; ++n)
        {
            std::array<double, 3> afDegrees = {0.0, double(objRandom.bounded(360)), 0.0}; // as the wheel turns
            if (n % 2 == 1)
            {
                afDegrees = {objRandom.bounded(360.0), objRandom.bounded(360.0), objRandom.bounded(360.0)};
            }
            else if (n % 8 == 0)
            {
                afDegrees[1] = 90.0 * objRandom.bounded(4);
            }
            view.setRotation(afDegrees[0], afDegrees[1], afDegrees[2]);
            const int nActive = objRandom.bounded(3);
            view.m_nActiveResult = nActive;
            const SCorners objCorners = randomCorners(objRandom, pictureOf(view, nActive));
            view.makeCurrent();
            QVERIFY(view.doVoxelSelection(objCorners.ptFirst.x(), objCorners.ptFirst.y(), objCorners.ptSecond.x(), objCorners.ptSecond.y(),
                                          false));
            const Matrix mTurn = product(product(rotation(0, afDegrees[0]), rotation(1, afDegrees[1])), rotation(2, afDegrees[2]));
            for (int i = 0; i < 3; ++i)
            {
                // The other tiles are measured at the same place of the scene.
                const SCorners objHere = i == nActive ? objCorners
                                                      : SCorners{windowPlace(view, i, scenePlace(view, nActive, objCorners.ptFirst)),
                                                                 windowPlace(view, i, scenePlace(view, nActive, objCorners.ptSecond))};
                compare(view, view.getAnalysisParams()[i], i, objHere, mTurn, objTally);
                ++nPasses;
            }
            QVERIFY2(objTally.nMissed == 0 && objTally.nAdded == 0,
                     qPrintable(QStringLiteral("%1 missed, %2 added, up to %3 from the edge, in pass %4: %5 x %6, turned %7 %8 %9")
                                    .arg(objTally.nMissed)
                                    .arg(objTally.nAdded)
                                    .arg(objTally.fWorst)
                                    .arg(nPasses)
                                    .arg(view.width())
                                    .arg(view.height())
                                    .arg(afDegrees[0])
                                    .arg(afDegrees[1])
                                    .arg(afDegrees[2])));
        }
    }
    QCOMPARE(nPasses, 3 * kWindows * kRectangles);
    QVERIFY(objTally.nSelected > objTally.nVoxels / 20);
    QVERIFY(objTally.nCutByBox > 10000);
    QVERIFY2(objTally.nUnsure * 200 < objTally.nVoxels, qPrintable(QString::number(objTally.nUnsure)));
}

ORM_TEST_MAIN(tst_view_selection_random)
#include "tst_view_selection_random.moc"
