#include "CProcessorMeter.h"
#include "VolumeSurfaceConversion.h"

#include "../orm3d/ResultText.h"
#include "../orm3d/Shapes.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <tuple>

using Shapes::SSurface;
Q_DECLARE_METATYPE(Shapes::SSurface)

namespace
{
using Voxel = C3DVolume::Voxel;
using Cell = std::tuple<int, int, int>;

/// A cube of nCells cells of 1 mm along each axis, every cell with the same amount; the centre of the first one is at fFirst.
C3DVolume cube(int nCells, float fFirst)
{
    QVector<Voxel> vecVoxels;
    for (int nZ = 0; nZ < nCells; ++nZ)
    {
        for (int nY = 0; nY < nCells; ++nY)
        {
            for (int nX = 0; nX < nCells; ++nX)
                vecVoxels.append(
                    {fFirst + static_cast<float>(nX), fFirst + static_cast<float>(nY), fFirst + static_cast<float>(nZ), 1, 1.0f});
        }
    }
    C3DVolume objVolume{QString()};
    if (!objVolume.takeVoxelData(1.0f, vecVoxels, 1.0f, 1.0f))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    return objVolume;
}

/// The cells of such a cube that are kept inside the surface.
std::set<Cell> kept(int nCells, float fFirst, const SSurface& sSurface)
{
    C3DMesh objMesh{QString()};
    IA3D::mesh objSurface;
    IA3D::mesh_utils::viewinfo sView;
    fVolumeGrid objGrid;
    C3DVolume objVolume = cube(nCells, fFirst);
    if (!objMesh.loadMeshData(sSurface.m_vecVertices, sSurface.m_vecTriangles) || !VolumeSurfaceConversion::convert(objMesh, objSurface) ||
        !VolumeSurfaceConversion::convert(objVolume, objGrid) ||
        !VolumeSurfaceConversion::convert(objGrid, objVolume, objSurface, sView, true))
        QTest::qFail("a conversion failed", __FILE__, __LINE__);
    std::set<Cell> setKept;
    for (const Voxel& voxel : objVolume.voxels())
        setKept.insert({qRound(voxel.x - fFirst), qRound(voxel.y - fFirst), qRound(voxel.z - fFirst)});
    return setKept;
}

/// How often the surface winds around a point, by the solid angles of its triangles.
double winding(const SSurface& sSurface, double fX, double fY, double fZ)
{
    double fAngle = 0.0;
    for (std::size_t i = 0; i + 2 < sSurface.m_vecTriangles.size(); i += 3)
    {
        double af[3][3];
        double afLength[3];
        for (std::size_t nCorner = 0; nCorner < 3; ++nCorner)
        {
            const std::size_t nAt = 3 * static_cast<std::size_t>(sSurface.m_vecTriangles[i + nCorner]);
            af[nCorner][0] = static_cast<double>(sSurface.m_vecVertices[nAt]) - fX;
            af[nCorner][1] = static_cast<double>(sSurface.m_vecVertices[nAt + 1]) - fY;
            af[nCorner][2] = static_cast<double>(sSurface.m_vecVertices[nAt + 2]) - fZ;
            afLength[nCorner] = std::hypot(af[nCorner][0], af[nCorner][1], af[nCorner][2]);
        }
        const auto dot = [&](int a, int b) { return af[a][0] * af[b][0] + af[a][1] * af[b][1] + af[a][2] * af[b][2]; };
        const double fTriple = af[0][0] * (af[1][1] * af[2][2] - af[1][2] * af[2][1]) -
                               af[0][1] * (af[1][0] * af[2][2] - af[1][2] * af[2][0]) +
                               af[0][2] * (af[1][0] * af[2][1] - af[1][1] * af[2][0]);
        fAngle += 2.0 * std::atan2(fTriple, afLength[0] * afLength[1] * afLength[2] + dot(0, 1) * afLength[2] + dot(1, 2) * afLength[0] +
                                                dot(2, 0) * afLength[1]);
    }
    return fAngle / (4.0 * 3.141592653589793);
}

/// The surface turned about a random axis and moved.
SSurface turned(const SSurface& sSurface, QRandomGenerator& objRandom, double fMove)
{
    double q[4];
    double fLength = 0.0;
    for (double& f : q)
    {
        f = objRandom.generateDouble() - 0.5;
        fLength += f * f;
    }
    for (double& f : q)
        f /= std::sqrt(fLength);
    const double afMatrix[3][3] = {{1 - 2 * (q[2] * q[2] + q[3] * q[3]), 2 * (q[1] * q[2] - q[0] * q[3]), 2 * (q[1] * q[3] + q[0] * q[2])},
                                   {2 * (q[1] * q[2] + q[0] * q[3]), 1 - 2 * (q[1] * q[1] + q[3] * q[3]), 2 * (q[2] * q[3] - q[0] * q[1])},
                                   {2 * (q[1] * q[3] - q[0] * q[2]), 2 * (q[2] * q[3] + q[0] * q[1]), 1 - 2 * (q[1] * q[1] + q[2] * q[2])}};
    double afMove[3];
    for (double& f : afMove)
        f = fMove * (objRandom.generateDouble() - 0.5);
    SSurface sTurned = sSurface;
    for (std::size_t i = 0; i + 2 < sTurned.m_vecVertices.size(); i += 3)
    {
        for (std::size_t nRow = 0; nRow < 3; ++nRow)
        {
            double fSum = afMove[nRow];
            for (std::size_t nColumn = 0; nColumn < 3; ++nColumn)
                fSum += afMatrix[nRow][nColumn] * static_cast<double>(sSurface.m_vecVertices[i + nColumn]);
            sTurned.m_vecVertices[i + nRow] = static_cast<float>(fSum);
        }
    }
    return sTurned;
}
} // namespace

class tst_inside : public QObject
{
    Q_OBJECT

private slots:
    void equalsTheSolidAngle_data();
    void equalsTheSolidAngle();
    void facesThroughCentresBelongToOneSide_data();
    void facesThroughCentresBelongToOneSide();
    void cornersOnRaysCountOnce();
    void aBallIsABall();
    void smallGapsDoNotLeak();
    void missingFacesDoNotTurnInsideOut();
    void aBowlHasAnInside();
    void aSheetHasNone();
    void aSurfaceOfNothingLimitsNothing();
    void tooManyCrossingsLimitNothing();
    void finerSurfacesCostInProportion();
};

void tst_inside::equalsTheSolidAngle_data()
{
    QTest::addColumn<SSurface>("sSurface");
    QTest::addColumn<int>("nTurns");
    const auto row = [](const char* pName, const SSurface& sSurface, int nTurns)
    {
        QTest::newRow(pName) << sSurface << nTurns;
        SSurface sInverted = sSurface;
        sInverted.invert();
        QTest::addRow("%s, inside out", pName) << sInverted << 1;
    };
    row("ball", Shapes::ball(7.0, 3), 3);
    row("coarse ball", Shapes::ball(7.5, 1), 6);
    row("torus", Shapes::torus(6.0, 2.2, 20, 10), 4);
    row("box", Shapes::box(-5.3, -4.1, -6.7, 5.9, 3.3, 6.1), 8);
    row("thin plate", Shapes::box(-7, -7, -0.3, 7, 7, 0.4), 8);
    row("larger than the grid", Shapes::ball(30.0, 2), 2);
    row("partly beside the grid", Shapes::ball(7.0, 2, 9.0, -6.0, 4.0), 3);

    SSurface sTwo = Shapes::ball(4.0, 2, -5.0, 0.0, 0.0);
    sTwo.append(Shapes::ball(4.0, 2, 5.0, 0.0, 0.0));
    row("two balls", sTwo, 4);
    SSurface sOverlap = Shapes::ball(5.0, 2, -2.0, 0.0, 0.0);
    sOverlap.append(Shapes::ball(5.0, 2, 2.0, 0.0, 0.0));
    row("two balls that overlap", sOverlap, 4); // what both hold is inside
    SSurface sHollow = Shapes::ball(8.0, 2);
    SSurface sHole = Shapes::ball(4.0, 2);
    sHole.invert();
    sHollow.append(sHole);
    row("hollow ball", sHollow, 4);
}

void tst_inside::equalsTheSolidAngle()
{
    QFETCH(SSurface, sSurface);
    QFETCH(int, nTurns);
    constexpr int nCells = 18;
    constexpr float fFirst = -8.5f;
    QRandomGenerator objRandom(4711);
    for (int nTurn = 0; nTurn < nTurns; ++nTurn)
    {
        const SSurface sTurned = turned(sSurface, objRandom, 2.0);
        const std::set<Cell> setKept = kept(nCells, fFirst, sTurned);
        for (int nZ = 0; nZ < nCells; ++nZ)
        {
            for (int nY = 0; nY < nCells; ++nY)
            {
                for (int nX = 0; nX < nCells; ++nX)
                {
                    const double fWinding = winding(sTurned, static_cast<double>(fFirst) + nX, static_cast<double>(fFirst) + nY,
                                                    static_cast<double>(fFirst) + nZ);
                    QVERIFY2(
                        (std::abs(fWinding) > 0.5) == (setKept.count({nX, nY, nZ}) == 1),
                        qPrintable(QStringLiteral("turn %1, cell %2 %3 %4: winding %5").arg(nTurn).arg(nX).arg(nY).arg(nZ).arg(fWinding)));
                }
            }
        }
    }
}

void tst_inside::facesThroughCentresBelongToOneSide_data()
{
    QTest::addColumn<double>("fLow");
    QTest::addColumn<double>("fHigh");
    QTest::addColumn<int>("nFirst");
    QTest::addColumn<int>("nEnd");
    QTest::newRow("through centres") << 2.0 << 7.0 << 2 << 7;
    QTest::newRow("between centres") << 1.5 << 7.5 << 2 << 8;
    QTest::newRow("the whole grid") << -0.5 << 9.5 << 0 << 10;
    QTest::newRow("from the first centre to the last") << 0.0 << 9.0 << 0 << 9;
}

void tst_inside::facesThroughCentresBelongToOneSide()
{
    QFETCH(double, fLow);
    QFETCH(double, fHigh);
    QFETCH(int, nFirst);
    QFETCH(int, nEnd);
    for (const bool bInverted : {false, true})
    {
        SSurface sBox = Shapes::box(fLow, fLow, fLow, fHigh, fHigh, fHigh);
        if (bInverted)
            sBox.invert();
        std::set<Cell> setExpected;
        for (int nZ = nFirst; nZ < nEnd; ++nZ)
        {
            for (int nY = nFirst; nY < nEnd; ++nY)
            {
                for (int nX = nFirst; nX < nEnd; ++nX)
                    setExpected.insert({nX, nY, nZ});
            }
        }
        QCOMPARE(kept(10, 0.0f, sBox), setExpected);
    }
}

void tst_inside::cornersOnRaysCountOnce()
{
    // An octahedron with its corners on cell centres: rays run through corners and along edges.
    const SSurface sOctahedron = Shapes::ball(4.0, 0, 5.0, 5.0, 5.0);
    const std::set<Cell> setKept = kept(11, 0.0f, sOctahedron);
    for (int nZ = 0; nZ < 11; ++nZ)
    {
        for (int nY = 0; nY < 11; ++nY)
        {
            for (int nX = 0; nX < 11; ++nX)
            {
                const int nDistance = std::abs(nX - 5) + std::abs(nY - 5) + std::abs(nZ - 5);
                if (nDistance == 4)
                    continue; // on the surface itself
                QCOMPARE(setKept.count({nX, nY, nZ}) == 1, nDistance < 4);
            }
        }
    }
}

void tst_inside::aBallIsABall()
{
    const std::set<Cell> setKept = kept(30, -14.5f, Shapes::ball(12.0, 5));
    for (int nZ = 0; nZ < 30; ++nZ)
    {
        for (int nY = 0; nY < 30; ++nY)
        {
            for (int nX = 0; nX < 30; ++nX)
            {
                const double fDistance = std::hypot(nX - 14.5, nY - 14.5, nZ - 14.5);
                if (std::abs(fDistance - 12.0) > 0.02)
                    QCOMPARE(setKept.count({nX, nY, nZ}) == 1, fDistance < 12.0);
            }
        }
    }
}

void tst_inside::smallGapsDoNotLeak()
{
    SSurface sBall = Shapes::ball(9.0, 4);
    const std::set<Cell> setClosed = kept(20, -9.5f, sBall);
    QRandomGenerator objRandom(3);
    std::vector<quint32> vecTriangles;
    for (std::size_t i = 0; i + 2 < sBall.m_vecTriangles.size(); i += 3)
    {
        if (objRandom.bounded(100) >= 3) // three of a hundred triangles are missing
            vecTriangles.insert(vecTriangles.end(), sBall.m_vecTriangles.begin() + static_cast<std::ptrdiff_t>(i),
                                sBall.m_vecTriangles.begin() + static_cast<std::ptrdiff_t>(i + 3));
    }
    QVERIFY(vecTriangles.size() < sBall.m_vecTriangles.size());
    sBall.m_vecTriangles = vecTriangles;
    const std::set<Cell> setOpen = kept(20, -9.5f, sBall);
    std::size_t nDifferent = 0;
    for (int nCell = 0; nCell < 8000; ++nCell)
    {
        const Cell cell{nCell % 20, nCell / 20 % 20, nCell / 400};
        nDifferent += setOpen.count(cell) != setClosed.count(cell) ? 1 : 0;
    }
    QVERIFY2(nDifferent * 100 < setClosed.size(), qPrintable(QStringLiteral("%1 of %2 cells").arg(nDifferent).arg(setClosed.size())));
}

void tst_inside::missingFacesDoNotTurnInsideOut()
{
    // Without its faces of lowest x and lowest y, rays along x and y meet a single face each, on their way out.
    SSurface sBox = Shapes::box(1.5, 1.5, 1.5, 7.5, 7.5, 7.5);
    std::vector<quint32> vecTriangles;
    for (std::size_t i = 0; i + 2 < sBox.m_vecTriangles.size(); i += 3)
    {
        const auto isAt = [&](std::size_t nAxis)
        {
            return std::all_of(sBox.m_vecTriangles.begin() + static_cast<std::ptrdiff_t>(i),
                               sBox.m_vecTriangles.begin() + static_cast<std::ptrdiff_t>(i + 3),
                               [&](quint32 n) { return sBox.m_vecVertices[3 * static_cast<std::size_t>(n) + nAxis] == 1.5f; });
        };
        if (!isAt(0) && !isAt(1))
            vecTriangles.insert(vecTriangles.end(), {sBox.m_vecTriangles[i], sBox.m_vecTriangles[i + 1], sBox.m_vecTriangles[i + 2]});
    }
    QCOMPARE(vecTriangles.size(), std::size_t(24));
    sBox.m_vecTriangles = vecTriangles;
    const std::set<Cell> setKept = kept(10, 0.0f, sBox);
    QCOMPARE(setKept.size(), std::size_t(6 * 6 * 6));
    QVERIFY(setKept.count({2, 2, 2}) == 1 && setKept.count({7, 7, 7}) == 1);
}

void tst_inside::aBowlHasAnInside()
{
    // The lower half of a ball without a lid.
    SSurface sBall = Shapes::ball(9.0, 4);
    std::vector<quint32> vecTriangles;
    for (std::size_t i = 0; i + 2 < sBall.m_vecTriangles.size(); i += 3)
    {
        const auto height = [&](std::size_t n) { return sBall.m_vecVertices[3 * static_cast<std::size_t>(sBall.m_vecTriangles[n]) + 2]; };
        if (std::max({height(i), height(i + 1), height(i + 2)}) < 1e-4f)
            vecTriangles.insert(vecTriangles.end(), {sBall.m_vecTriangles[i], sBall.m_vecTriangles[i + 1], sBall.m_vecTriangles[i + 2]});
    }
    QCOMPARE(vecTriangles.size(), sBall.m_vecTriangles.size() / 2);
    sBall.m_vecTriangles = vecTriangles;
    const std::set<Cell> setKept = kept(20, -9.5f, sBall);
    for (const auto& [nX, nY, nZ] : setKept)
        QVERIFY(nZ < 10 && std::hypot(nX - 9.5, nY - 9.5, nZ - 9.5) < 9.01);
    QVERIFY(setKept.count({9, 9, 5}) == 1 && setKept.count({14, 9, 8}) == 1);
    QVERIFY(setKept.size() > 1400); // half a ball of radius 9 holds 1,527
}

void tst_inside::aSheetHasNone()
{
    SSurface sSheet;
    const quint32 a = sSheet.add(-20, -20, 0.2);
    const quint32 b = sSheet.add(20, -20, 0.2);
    const quint32 c = sSheet.add(0, 30, 0.2);
    sSheet.addTriangle(a, b, c);
    QCOMPARE(kept(8, -3.5f, sSheet).size(), std::size_t(512)); // nothing is inside, so that all is kept
}

void tst_inside::aSurfaceOfNothingLimitsNothing()
{
    SSurface sPoints;
    sPoints.add(0, 0, 0);
    sPoints.add(1, 0, 0);
    QCOMPARE(kept(4, -1.5f, sPoints).size(), std::size_t(64)); // vertices, no triangle
    sPoints.addTriangle(0, 0, 1);
    QCOMPARE(kept(4, -1.5f, sPoints).size(), std::size_t(64)); // a triangle without area
    QCOMPARE(kept(4, -1.5f, SSurface()).size(), std::size_t(64));
}

void tst_inside::tooManyCrossingsLimitNothing()
{
    // Boxes in boxes by the thousand: two million crossings for 400 rays.
    SSurface sBoxes;
    for (int i = 0; i < 3000; ++i)
        sBoxes.append(Shapes::box(-20 - i, -20 - i, -20 - i, 0.5, 20 + i, 20 + i));
    const ResultText::CLogLines objLog;
    const CProcessorMeter objMeter;
    QCOMPARE(kept(20, -9.5f, sBoxes).size(), std::size_t(8000));
    QVERIFY2(objMeter.seconds() < 10.0, qPrintable(QString::number(objMeter.seconds())));
    QCOMPARE(objLog.lines().size(), 1);
}

void tst_inside::finerSurfacesCostInProportion()
{
    const auto cost = [](int nSteps)
    {
        const SSurface sBall = Shapes::ball(9.0, nSteps);
        double dBest = std::numeric_limits<double>::max();
        for (int i = 0; i < 3; ++i)
        {
            const CProcessorMeter objMeter;
            if (kept(20, -9.5f, sBall).empty())
                return -1.0;
            dBest = std::min(dBest, objMeter.seconds());
        }
        return dBest;
    };
    const double dCoarse = cost(6); // 32,768 triangles
    const double dFine = cost(7);   // four times as many
    QVERIFY2(dCoarse > 0 && dFine < 16 * dCoarse, qPrintable(QStringLiteral("%1 s, %2 s").arg(dCoarse).arg(dFine)));
}

QTEST_GUILESS_MAIN(tst_inside)
#include "tst_inside.moc"
