#include "PlainRefinement.h"
#include "VolumeInterp.h"
#include "VolumeSmoothingAverage.h"
#include "VolumeSurfaceConversion.h"

#include "../orm3d/ResultText.h"
#include "../orm3d/Shapes.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <tuple>

namespace
{
using Voxel = C3DVolume::Voxel;

/// Voxels of random values in a box of cells, some of them missing.
QVector<Voxel> randomVoxels(QRandomGenerator& objRandom, std::array<int, 3> anCells, float fPitch, double fFilled)
{
    QVector<Voxel> vecVoxels;
    const float fStart = static_cast<float>(objRandom.bounded(40)) * 0.25f - 5.0f;
    for (int nZ = 0; nZ < anCells[2]; ++nZ)
    {
        for (int nY = 0; nY < anCells[1]; ++nY)
        {
            for (int nX = 0; nX < anCells[0]; ++nX)
            {
                if (objRandom.generateDouble() < fFilled)
                    vecVoxels.append({fStart + static_cast<float>(nX) * fPitch, fStart + static_cast<float>(nY) * fPitch,
                                      static_cast<float>(nZ) * fPitch, vecVoxels.size() + 1,
                                      static_cast<float>(std::pow(10.0, 6.0 * objRandom.generateDouble()))});
            }
        }
    }
    return vecVoxels;
}

C3DVolume volumeOf(const QVector<Voxel>& vecVoxels, float fPitch)
{
    C3DVolume objVolume(QStringLiteral("Source"));
    if (!objVolume.takeVoxelData(fPitch, vecVoxels, 0.0f, 1.0f))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    return objVolume;
}

double total(const C3DVolume& objVolume)
{
    double fSum = 0.0;
    for (const Voxel& voxel : objVolume.voxels())
        fSum += std::max(0.0, static_cast<double>(voxel.fValue));
    return fSum;
}

/// The whole way that a result's source volume goes.
bool refine(C3DVolume& objVolume, C3DMesh& objMesh, unsigned long nParts, bool bAllCells = false)
{
    IA3D::mesh objSurface;
    IA3D::mesh_utils::viewinfo sView;
    fVolumeGrid objGrid;
    if (!VolumeSurfaceConversion::convert(objMesh, objSurface) || !VolumeSurfaceConversion::convert(objVolume, objGrid))
        return false;
    objGrid.paddingVoxels(2);
    VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(nParts);
    objGrid.update(0.0);
    VolumeSmoothingAverage(objGrid).process(5);
    return objSurface.is_empty() ? VolumeSurfaceConversion::convert(objGrid, objVolume, bAllCells)
                                 : VolumeSurfaceConversion::convert(objGrid, objVolume, objSurface, sView, bAllCells);
}

bool refine(C3DVolume& objVolume, unsigned long nParts, bool bAllCells = false)
{
    C3DMesh objNone{QString()};
    return refine(objVolume, objNone, nParts, bAllCells);
}

bool refine(C3DVolume& objVolume, const Shapes::SSurface& sSurface, unsigned long nParts)
{
    C3DMesh objMesh{QString()};
    return objMesh.loadMeshData(sSurface.m_vecVertices, sSurface.m_vecTriangles) && refine(objVolume, objMesh, nParts);
}

PlainRefinement::SGrid plainGrid(const C3DVolume& objVolume, CVoxelLattice& objLattice)
{
    if (!objLattice.fit(objVolume, nullptr))
        QTest::qFail("the test's own volume is off any grid", __FILE__, __LINE__);
    PlainRefinement::SGrid sGrid;
    sGrid.m_anCells = {static_cast<long>(objLattice.cells(0)), static_cast<long>(objLattice.cells(1)),
                       static_cast<long>(objLattice.cells(2))};
    sGrid.m_vecAmounts.assign(static_cast<std::size_t>(objLattice.cellCount()), 0.0);
    for (const Voxel& voxel : objVolume.voxels())
        sGrid.m_vecAmounts[objLattice.cellOf(voxel.x, voxel.y, voxel.z)] = std::max(0.0, static_cast<double>(voxel.fValue));
    return sGrid;
}
} // namespace

class tst_refinement : public QObject
{
    Q_OBJECT

private slots:
    void equalsPassByPass_data();
    void equalsPassByPass();
    void anyOrderOfStepsEqualsPassByPass();
    void totalsAreKept_data();
    void totalsAreKept();
    void voxelsStandWhereTheirCellsAre();
    void aSingleVoxelSpreadsEvenly();
    void whatIsBelowAThousandthIsLeftOut();
    void negativeValuesCountAsNothing();
    void aVolumeOfZerosStaysOne();
    void anEmptyVolumeStaysEmpty();
    void whatLiesOutsideTheSurfaceIsLeftOut();
    void aSourceOutsideTheSurfaceIsKeptWhole();
    void partsOutsideASurfaceCanBeCleared();
    void updateClearsWhatIsBelowAMinimum();
    void theHighestFloatsStayFinite();
    void voxelsOffAnyGridHaveNone();
    void aGridTooLargeIsRefused();
    void aCopyIsNotRefinedWithIt();
    void numbersAreTakenOnePerVoxel();
    void aFarSmallBoxKeepsItsPlace();
    void viewsStartAtTheirDefaults();
    void aSurfaceIsConvertedWhole();
    void aLongThinBoxIsNoTrouble();
};

void tst_refinement::equalsPassByPass_data()
{
    QTest::addColumn<int>("nX");
    QTest::addColumn<int>("nY");
    QTest::addColumn<int>("nZ");
    QTest::addColumn<int>("nParts");
    QTest::addColumn<double>("fFilled");
    QTest::addColumn<float>("fFactor");
    QTest::newRow("one voxel by 4") << 1 << 1 << 1 << 4 << 1.0 << 1.0f;
    QTest::newRow("one voxel by 2") << 1 << 1 << 1 << 2 << 1.0 << 1.0f;
    QTest::newRow("a row by 4") << 7 << 1 << 1 << 4 << 1.0 << 1.0f;
    QTest::newRow("a plane by 2") << 5 << 1 << 6 << 2 << 0.5 << 1.0f;
    QTest::newRow("a box by 4") << 6 << 5 << 4 << 4 << 0.6 << 1.0f;
    QTest::newRow("a box by 2") << 4 << 7 << 5 << 2 << 0.6 << 1.0f;
    QTest::newRow("a box by 3") << 4 << 3 << 5 << 3 << 0.8 << 1.0f;
    QTest::newRow("higher than a band is wide, by 4") << 2 << 3 << 13 << 4 << 0.7 << 1.0f;
    QTest::newRow("higher than a band is wide, by 2") << 3 << 2 << 17 << 2 << 0.7 << 1.0f;
    QTest::newRow("a box by 1") << 9 << 8 << 7 << 1 << 0.7 << 1.0f;
    QTest::newRow("values near the smallest floats") << 6 << 5 << 4 << 4 << 0.6 << 1e-30f;
    QTest::newRow("values near the highest floats") << 6 << 5 << 4 << 4 << 0.6 << 1e32f;
    QTest::newRow("some hundred thousand cells") << 13 << 12 << 14 << 4 << 0.9 << 1.0f;
}

void tst_refinement::equalsPassByPass()
{
    QFETCH(int, nX);
    QFETCH(int, nY);
    QFETCH(int, nZ);
    QFETCH(int, nParts);
    QFETCH(double, fFilled);
    QFETCH(float, fFactor);
    QRandomGenerator objRandom(static_cast<quint32>(nX + 10 * nY + 100 * nZ));
    QVector<Voxel> vecVoxels = randomVoxels(objRandom, {nX, nY, nZ}, 1.5f, fFilled);
    for (Voxel& voxel : vecVoxels)
        voxel.fValue *= fFactor;
    C3DVolume objVolume = volumeOf(vecVoxels, 1.5f);
    CVoxelLattice objLattice;
    const PlainRefinement::SGrid sPlain = PlainRefinement::refined(plainGrid(objVolume, objLattice), 2, nParts, 5);
    const double fTotal = total(objVolume);
    const double fPlainTotal = std::accumulate(sPlain.m_vecAmounts.begin(), sPlain.m_vecAmounts.end(), 0.0);

    QVERIFY(refine(objVolume, static_cast<unsigned long>(nParts), true));
    QCOMPARE(objVolume.getNoOfVoxels(), static_cast<long>(sPlain.m_vecAmounts.size()));
    const double fHighest = *std::max_element(sPlain.m_vecAmounts.begin(), sPlain.m_vecAmounts.end());
    for (long i = 0; i < objVolume.getNoOfVoxels(); ++i)
    {
        const double fExpected = sPlain.m_vecAmounts[static_cast<std::size_t>(i)] * fTotal / fPlainTotal;
        const double fSeen = static_cast<double>(objVolume.getVoxelByNum(static_cast<int>(i))->fValue);
        QVERIFY2(std::abs(fSeen - fExpected) <= 1e-6 * std::max(fExpected, 1e-6 * fHighest),
                 qPrintable(QStringLiteral("cell %1: %2 instead of %3").arg(i).arg(fSeen).arg(fExpected)));
    }
    QCOMPARE(objVolume.getVoxelSize(), 1.5f / static_cast<float>(nParts));
}

void tst_refinement::anyOrderOfStepsEqualsPassByPass()
{
    QRandomGenerator objRandom(7);
    C3DVolume objVolume = volumeOf(randomVoxels(objRandom, {4, 3, 5}, 1.0f, 0.7), 1.0f);
    CVoxelLattice objLattice;
    PlainRefinement::SGrid sPlain = plainGrid(objVolume, objLattice);
    sPlain = PlainRefinement::averaged(sPlain);
    sPlain = PlainRefinement::subdivided(sPlain, 2);
    sPlain = PlainRefinement::averaged(PlainRefinement::averaged(sPlain));
    sPlain = PlainRefinement::padded(sPlain, 1);
    sPlain = PlainRefinement::subdivided(sPlain, 3);

    fVolumeGrid objGrid;
    QVERIFY(VolumeSurfaceConversion::convert(objVolume, objGrid));
    VolumeSmoothingAverage(objGrid).process(1);
    QVERIFY(VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(2));
    VolumeSmoothingAverage(objGrid).process(2);
    VolumeSmoothingAverage(objGrid).process(0);
    VolumeSmoothingAverage(objGrid).process(-3);
    QVERIFY(objGrid.paddingVoxels(1));
    QVERIFY(VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(3));
    QCOMPARE(objGrid.cellCount(), static_cast<qint64>(sPlain.m_vecAmounts.size()));
    for (long nZ = 0; nZ < objGrid.cells(2); ++nZ)
    {
        for (long nY = 0; nY < objGrid.cells(1); ++nY)
        {
            for (long nX = 0; nX < objGrid.cells(0); ++nX)
            {
                const double fExpected = sPlain.at(nX, nY, nZ);
                QVERIFY(std::abs(objGrid.value(nX, nY, nZ) - fExpected) <= 1e-9 * std::max(fExpected, 1.0));
            }
        }
    }
    QCOMPARE(objGrid.value(-1, 0, 0), 0.0);
    QCOMPARE(objGrid.value(0, 0, objGrid.cells(2)), 0.0);
}

void tst_refinement::totalsAreKept_data()
{
    QTest::addColumn<int>("nSeed");
    for (int i = 0; i < 60; ++i)
        QTest::addRow("volume %d", i) << i;
}

void tst_refinement::totalsAreKept()
{
    QFETCH(int, nSeed);
    QRandomGenerator objRandom(static_cast<quint32>(nSeed));
    const bool bFine = nSeed % 2 != 0;
    const float fPitch = bFine ? 0.5f : 1.0f + static_cast<float>(objRandom.bounded(12)) * 0.25f;
    const std::array<int, 3> anCells = {objRandom.bounded(1, 11), objRandom.bounded(1, 11), objRandom.bounded(1, 11)};
    QVector<Voxel> vecVoxels = randomVoxels(objRandom, anCells, fPitch, 0.05 + 0.95 * objRandom.generateDouble());
    if (vecVoxels.isEmpty())
        vecVoxels.append({0, 0, 0, 1, 3.0f});
    C3DVolume objVolume = volumeOf(vecVoxels, fPitch);
    const double fTotal = total(objVolume);
    const Shapes::SSurface sBall = Shapes::ball(1.0 + 10.0 * objRandom.generateDouble(), 3, vecVoxels[0].x, vecVoxels[0].y, vecVoxels[0].z);
    QVERIFY(nSeed % 3 == 0 ? refine(objVolume, bFine ? 2 : 4) : refine(objVolume, sBall, bFine ? 2 : 4));
    QVERIFY(std::abs(total(objVolume) - fTotal) <= 1e-5 * fTotal);
    QVERIFY(std::abs(static_cast<double>(objVolume.getTotalFluxForSelectedVoxels(false)) - fTotal) <= 1e-5 * fTotal);
    QVERIFY(objVolume.getAttribMinValue() >= objVolume.getAttribMaxValue() * 0.000999f);
    const auto isLess = [](const Voxel& voxel1, const Voxel& voxel2) { return voxel1.fValue < voxel2.fValue; };
    const auto pairEnds = std::minmax_element(objVolume.voxels().begin(), objVolume.voxels().end(), isLess);
    QCOMPARE(objVolume.getAttribMinValue(), pairEnds.first->fValue);
    QCOMPARE(objVolume.getAttribMaxValue(), pairEnds.second->fValue);
}

void tst_refinement::voxelsStandWhereTheirCellsAre()
{
    // A voxel of 1 mm from 9.5 to 10.5 in x: its four parts are centred at 9.625, 9.875, 10.125, 10.375.
    C3DVolume objVolume = volumeOf({{10.0f, -3.0f, 0.5f, 1, 1.0f}}, 1.0f);
    QVERIFY(refine(objVolume, 4, true));
    QCOMPARE(objVolume.getVoxelSize(), 0.25f);
    QCOMPARE(objVolume.getNoOfVoxels(), 20L * 20 * 20);
    QCOMPARE(objVolume.getVoxelByNum(0)->x, 9.625f - 2.0f);
    QCOMPARE(objVolume.getVoxelByNum(0)->y, -3.375f - 2.0f);
    QCOMPARE(objVolume.getVoxelByNum(0)->z, 0.125f - 2.0f);
    QCOMPARE(objVolume.getVoxelByNum(1)->x, 9.875f - 2.0f);
    QCOMPARE(objVolume.getVoxelByNum(20)->y, -3.125f - 2.0f);
    QCOMPARE(objVolume.getVoxelByNum(400)->z, 0.375f - 2.0f);
    // Centre of mass and place of the peak are those of the voxel.
    double afSum[3] = {0, 0, 0};
    for (const Voxel& voxel : objVolume.voxels())
    {
        afSum[0] += static_cast<double>(voxel.x * voxel.fValue);
        afSum[1] += static_cast<double>(voxel.y * voxel.fValue);
        afSum[2] += static_cast<double>(voxel.z * voxel.fValue);
    }
    QVERIFY(std::abs(afSum[0] - 10.0) < 1e-5);
    QVERIFY(std::abs(afSum[1] + 3.0) < 1e-5);
    QVERIFY(std::abs(afSum[2] - 0.5) < 1e-5);
}

void tst_refinement::aSingleVoxelSpreadsEvenly()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 100.0f}}, 1.0f);
    QVERIFY(refine(objVolume, 4));
    std::map<std::tuple<float, float, float>, float> mapByPlace;
    for (const Voxel& voxel : objVolume.voxels())
        mapByPlace[{voxel.x, voxel.y, voxel.z}] = voxel.fValue;
    for (const auto& [place, fValue] : mapByPlace)
    {
        const auto [fX, fY, fZ] = place;
        for (const auto& mirrored : {std::make_tuple(-fX, fY, fZ), std::make_tuple(fX, -fY, -fZ), std::make_tuple(fY, fZ, fX)})
        {
            QVERIFY(mapByPlace.count(mirrored) == 1);
            QVERIFY(std::abs(mapByPlace[mirrored] - fValue) <= 1e-6f * fValue);
        }
    }
}

void tst_refinement::whatIsBelowAThousandthIsLeftOut()
{
    QVector<Voxel> vecVoxels = {{0, 0, 0, 1, 1000.0f}, {20, 0, 0, 2, 0.5f}, {40, 0, 0, 3, 2.0f}};
    C3DVolume objVolume = volumeOf(vecVoxels, 1.0f);
    QVERIFY(refine(objVolume, 4));
    QVERIFY(std::any_of(objVolume.voxels().begin(), objVolume.voxels().end(), [](const Voxel& v) { return v.x < 5.0f; }));
    QVERIFY(std::none_of(objVolume.voxels().begin(), objVolume.voxels().end(), [](const Voxel& v) { return v.x > 10.0f && v.x < 30.0f; }));
    QVERIFY(std::any_of(objVolume.voxels().begin(), objVolume.voxels().end(), [](const Voxel& v) { return v.x > 30.0f; }));
    QVERIFY(std::abs(total(objVolume) - 1002.5) < 0.01); // of what was left out nothing is lost
}

void tst_refinement::negativeValuesCountAsNothing()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 10.0f}, {1, 0, 0, 2, -1000.0f}, {2, 0, 0, 3, 10.0f}}, 1.0f);
    QVERIFY(refine(objVolume, 4));
    QVERIFY(std::abs(total(objVolume) - 20.0) < 1e-4);
    QVERIFY(objVolume.getAttribMinValue() > 0.0f);
}

void tst_refinement::aVolumeOfZerosStaysOne()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 0.0f}, {30, 30, 30, 2, -1.0f}}, 1.0f);
    QVERIFY(refine(objVolume, 4));
    QCOMPARE(objVolume.getNoOfVoxels(), 2L * 64); // the parts of its voxels, not all cells of its box
    QCOMPARE(objVolume.getAttribMaxValue(), 0.0f);
    QCOMPARE(objVolume.getAttribMinValue(), 0.0f);
    QCOMPARE(objVolume.getVoxelSize(), 0.25f);
    QCOMPARE(objVolume.getVoxelByNum(0)->x, -0.375f);
    QCOMPARE(objVolume.getVoxelByNum(127)->z, 30.375f);
    // In a surface around one of them, only that one.
    C3DVolume objInside = volumeOf({{0, 0, 0, 1, 0.0f}, {30, 30, 30, 2, 0.0f}}, 1.0f);
    QVERIFY(refine(objInside, Shapes::box(-5, -5, -5, 5, 5, 5), 4));
    QCOMPARE(objInside.getNoOfVoxels(), 64L);
}

void tst_refinement::anEmptyVolumeStaysEmpty()
{
    C3DVolume objVolume = volumeOf({}, 1.0f);
    QVERIFY(refine(objVolume, 4));
    QCOMPARE(objVolume.getNoOfVoxels(), 0L);
    QCOMPARE(objVolume.getVoxelSize(), 0.25f);
    QCOMPARE(objVolume.getAttribMaxValue(), 0.0f);
}

void tst_refinement::whatLiesOutsideTheSurfaceIsLeftOut()
{
    QRandomGenerator objRandom(11);
    C3DVolume objVolume = volumeOf(randomVoxels(objRandom, {8, 8, 8}, 1.0f, 1.0), 1.0f);
    const Voxel first = *objVolume.getVoxelByNum(0);
    const double fTotal = total(objVolume);
    const double fX = first.x + 3.5;
    QVERIFY(refine(objVolume, Shapes::ball(3.0, 5, fX, fX, 3.5), 4));
    QVERIFY(std::abs(total(objVolume) - fTotal) < 1e-5 * fTotal);
    QVERIFY(objVolume.getNoOfVoxels() > 1000);
    for (const Voxel& voxel : objVolume.voxels())
        QVERIFY(std::hypot(voxel.x - fX, voxel.y - fX, voxel.z - 3.5) < 3.0);
}

void tst_refinement::aSourceOutsideTheSurfaceIsKeptWhole()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 5.0f}, {1, 0, 0, 2, 7.0f}}, 1.0f);
    C3DVolume objUnmasked(objVolume);
    QVERIFY(refine(objUnmasked, 4));
    QVERIFY(refine(objVolume, Shapes::ball(2.0, 3, 100.0, 0.0, 0.0), 4)); // beside the grid
    QCOMPARE(objVolume.getNoOfVoxels(), objUnmasked.getNoOfVoxels());
    QVERIFY(std::abs(total(objVolume) - 12.0) < 1e-4);
    // In the margin of the grid, where the source does not reach.
    C3DVolume objMargin = volumeOf({{0, 0, 0, 1, 5.0f}}, 1.0f);
    QVERIFY(refine(objMargin, Shapes::box(-2.6, -2.6, -2.6, -2.3, -2.3, -2.3), 4));
    QVERIFY(std::abs(total(objMargin) - 5.0) < 1e-4);
    QVERIFY(objMargin.getNoOfVoxels() > 64);
}

void tst_refinement::partsOutsideASurfaceCanBeCleared()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 64.0f}, {1, 0, 0, 2, 64.0f}, {2, 0, 0, 3, 64.0f}}, 1.0f);
    fVolumeGrid objGrid;
    QVERIFY(VolumeSurfaceConversion::convert(objVolume, objGrid));
    C3DMesh objMesh{QString()};
    const Shapes::SSurface sBox = Shapes::box(0.6, -3, -3, 1.4, 3, 3);
    QVERIFY(objMesh.loadMeshData(sBox.m_vecVertices, sBox.m_vecTriangles));
    IA3D::mesh objSurface;
    QVERIFY(VolumeSurfaceConversion::convert(objMesh, objSurface));
    QVERIFY(VolumeInterp(objGrid, &objSurface, 0.0).triLinearInterp(4));
    QCOMPARE(objGrid.cells(0), 12L);
    for (long nX = 0; nX < 12; ++nX)
    {
        const double fX = objGrid.cellCentre(nX, 1, 1).x;
        QCOMPARE(objGrid.value(nX, 1, 1) > 0.0, fX > 0.6 && fX < 1.4);
    }
}

void tst_refinement::updateClearsWhatIsBelowAMinimum()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}, {1, 0, 0, 2, 2.0f}, {2, 0, 0, 3, 3.0f}}, 1.0f);
    fVolumeGrid objGrid;
    QVERIFY(VolumeSurfaceConversion::convert(objVolume, objGrid));
    objGrid.update(0.0);
    QCOMPARE(objGrid.value(0, 0, 0), 1.0);
    objGrid.update(2.0);
    QCOMPARE(objGrid.value(0, 0, 0), 0.0);
    QCOMPARE(objGrid.value(1, 0, 0), 2.0);
    QVERIFY(objGrid.paddingVoxels(1)); // and goes on from there
    QCOMPARE(objGrid.value(2, 1, 1), 2.0);
    QCOMPARE(objGrid.cells(0), 5L);
    QVERIFY(objGrid.isFilled(1, 1, 1)); // it did hold a voxel
    QVERIFY(!objGrid.isFilled(0, 1, 1));
    QCOMPARE(objGrid.filledCells().size(), 3);
}

void tst_refinement::theHighestFloatsStayFinite()
{
    const float fMost = std::numeric_limits<float>::max();
    QVector<Voxel> vecVoxels;
    for (int i = 0; i < 5; ++i)
        vecVoxels.append({static_cast<float>(i), 0, 0, i + 1, fMost});
    C3DVolume objVolume = volumeOf(vecVoxels, 1.0f);
    QVERIFY(refine(objVolume, 1));
    QVERIFY(std::all_of(objVolume.voxels().begin(), objVolume.voxels().end(), [](const Voxel& v) { return std::isfinite(v.fValue); }));
    QVERIFY(std::abs(total(objVolume) / (5.0 * static_cast<double>(fMost)) - 1.0) < 1e-5);
    // A surface that leaves a single cell of them: it cannot hold the total, but it holds a number.
    C3DVolume objCut = volumeOf(vecVoxels, 1.0f);
    QVERIFY(refine(objCut, Shapes::box(1.6, -0.4, -0.4, 2.4, 0.4, 0.4), 1));
    QCOMPARE(objCut.getNoOfVoxels(), 1L);
    QCOMPARE(objCut.getAttribMaxValue(), fMost);
}

void tst_refinement::voxelsOffAnyGridHaveNone()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}, {1.3f, 0, 0, 2, 2.0f}}, 1.0f);
    const ResultText::CLogLines objLog;
    fVolumeGrid objGrid;
    QVERIFY(!VolumeSurfaceConversion::convert(objVolume, objGrid));
    QCOMPARE(objGrid.cellCount(), qint64(0));
    QCOMPARE(objLog.lines().size(), 1);
}

void tst_refinement::aGridTooLargeIsRefused()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}, {9, 9, 9, 2, 1.0f}}, 1.0f);
    fVolumeGrid objGrid;
    QVERIFY(VolumeSurfaceConversion::convert(objVolume, objGrid));
    const ResultText::CLogLines objLog;
    QVERIFY(!objGrid.paddingVoxels(200));
    QVERIFY(!objGrid.paddingVoxels(std::numeric_limits<unsigned long>::max()));
    QVERIFY(!objGrid.paddingVoxels(1UL << 62));
    QVERIFY(!VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(41));
    QVERIFY(!VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(0));
    QVERIFY(!VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(std::numeric_limits<unsigned long>::max()));
    QCOMPARE(objLog.lines().size(), 6);
    QCOMPARE(objGrid.cellCount(), qint64(1000));
    QVERIFY(VolumeInterp(objGrid, nullptr, 0.0).triLinearInterp(40)); // 400 x 400 x 400, the last that is allowed
    QCOMPARE(objGrid.cellCount(), qint64(64000000));
}

void tst_refinement::aCopyIsNotRefinedWithIt()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}, {1, 0, 0, 2, 2.0f}}, 1.0f);
    C3DVolume objRaw(objVolume);
    QVERIFY(refine(objVolume, 4));
    QCOMPARE(objRaw.getNoOfVoxels(), 2L);
    QCOMPARE(objRaw.getVoxelSize(), 1.0f);
    QCOMPARE(objRaw.getVoxelByNum(1)->fValue, 2.0f);
}

void tst_refinement::numbersAreTakenOnePerVoxel()
{
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}}, 1.0f);
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(refine(objVolume, 4));
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext + objVolume.getNoOfVoxels());
    QCOMPARE(objVolume.getVoxelByNum(0)->nID, nNext);
    QCOMPARE(objVolume.getVoxelByNum(5)->nID, nNext + 5);
}

void tst_refinement::aFarSmallBoxKeepsItsPlace()
{
    C3DVolume objVolume = volumeOf({{-4000.25f, 12000.5f, 0.75f, 1, 9.0f}}, 0.5f);
    QVERIFY(refine(objVolume, 2));
    double fX = 0.0;
    double fY = 0.0;
    for (const Voxel& voxel : objVolume.voxels())
    {
        fX += static_cast<double>(voxel.x) * static_cast<double>(voxel.fValue) / 9.0;
        fY += static_cast<double>(voxel.y) * static_cast<double>(voxel.fValue) / 9.0;
    }
    QVERIFY(std::abs(fX + 4000.25) < 1e-2);
    QVERIFY(std::abs(fY - 12000.5) < 1e-2);
}

void tst_refinement::viewsStartAtTheirDefaults()
{
    const IA3D::mesh_utils::viewinfo sView;
    QCOMPARE(sView.nView, 1);
    QCOMPARE(sView.dCenterX + sView.dCenterY + sView.dFieldOfView + sView.dRotation + sView.dDistance, 0.0);
    QCOMPARE(sView.nImageSize + sView.nBinning, 0);
}

void tst_refinement::aSurfaceIsConvertedWhole()
{
    C3DMesh objMesh{QString()};
    const Shapes::SSurface sBall = Shapes::ball(2.0, 2, 1.0, 2.0, 3.0);
    QVERIFY(objMesh.loadMeshData(sBall.m_vecVertices, sBall.m_vecTriangles));
    IA3D::mesh objSurface;
    QVERIFY(objSurface.is_empty());
    QVERIFY(VolumeSurfaceConversion::convert(objMesh, objSurface));
    QVERIFY(!objSurface.is_empty());
    QCOMPARE(objSurface.get_num_points(), static_cast<unsigned long>(objMesh.getNumOfVertices()));
    QCOMPARE(objSurface.m_vecTriangles.size(), objMesh.triangles().size() / 3);
    QCOMPARE(objSurface.m_pairRangeZ, std::make_pair(1.0, 5.0));
    QCOMPARE(objSurface.m_objColor.a, 0.0);
    for (std::size_t i = 0; i < objSurface.m_vecPoints.size(); ++i)
    {
        const IA3D::mesh::_Point& p = objSurface.m_vecPoints[i];
        const IA3D::mesh::_Vector& n = objSurface.m_vecPointNormals[i];
        QVERIFY(((p.x - 1.0) * n.x + (p.y - 2.0) * n.y + (p.z - 3.0) * n.z) / 2.0 > 0.95); // outwards
    }
    for (const IA3D::mesh::_Vector& n : objSurface.m_vecTriangleNormals)
        QVERIFY(std::abs(std::hypot(n.x, n.y, n.z) - 1.0) < 1e-9);
    C3DMesh objEmpty{QString()};
    QVERIFY(VolumeSurfaceConversion::convert(objEmpty, objSurface));
    QVERIFY(objSurface.is_empty());
}

void tst_refinement::aLongThinBoxIsNoTrouble()
{
    // 30,000 voxels in a row: 48 million cells when refined, of which hardly any holds anything.
    C3DVolume objVolume = volumeOf({{0, 0, 0, 1, 1.0f}, {0, 0, 29999, 2, 1.0f}}, 1.0f);
    QVERIFY(refine(objVolume, 4));
    QVERIFY(std::abs(total(objVolume) - 2.0) < 1e-5);
    QVERIFY(objVolume.getNoOfVoxels() < 20000);
}

QTEST_GUILESS_MAIN(tst_refinement)
#include "tst_refinement.moc"
