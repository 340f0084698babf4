#include "C3DMesh.h"
#include "CPLResultXMLWrapper.h"
#include "CProcessorMeter.h"
#include "MeshTopology.h"
#include "ResultText.h"
#include "SFMatrix.h"
#include "Shapes.h"
#include "Singleton.h"

#include <QMap>
#include <QtTest>

#include <limits>

using ResultText::CFiles;
using ResultText::CLogLines;
using Shapes::SSurface;

namespace
{
/// Loads the mesh of a document with these sections.
bool load(CFiles& objFiles, C3DMesh& objMesh, const QByteArray& strSections, const QByteArray& strVersion)
{
    CPLResultXMLWrapper objWrapper;
    if (!objWrapper.loadXMLFile(objFiles.write(ResultText::document(strSections, strVersion))))
        QTest::qFail("the test's own document does not open", __FILE__, __LINE__);
    return objMesh.loadFromXML(&objWrapper);
}

const std::vector<float> vecTetraVertices = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
const std::vector<quint32> vecTetraTriangles = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
} // namespace

class tst_mesh : public QObject
{
    Q_OBJECT

private slots:
    void readsBothVersions_data();
    void readsBothVersions();
    void refusesDamagedSurfaces_data();
    void refusesDamagedSurfaces();
    void aLyingCountCostsNoMemory();
    void aMissingSectionIsRefused();
    void anEmptySurfaceHasAZeroBox();
    void aCopySharesItsArrays();
    void loadingACopyLeavesTheOriginal();
    void newVerticesDropTheDensityMap();
    void aMapSetsTheRangeOfTheMeshsOwnPalette();
    void aGivenPaletteIsTakenAsItIs();
    void closednessIsDecided_data();
    void closednessIsDecided();
    void manyTrianglesAtOneVertexCostNoSquare();
    void volumeHasASign();
    void theViewRecordStoresAndIsOne();
    void matricesAreValues();
};

void tst_mesh::readsBothVersions_data()
{
    QTest::addColumn<bool>("bText");
    QTest::newRow("1.0") << true;
    QTest::newRow("2.0") << false;
}

void tst_mesh::readsBothVersions()
{
    QFETCH(bool, bText);
    CFiles objFiles;
    const SSurface sBall = Shapes::ball(12.5, 3, 1.0, -2.0, 30.0);
    C3DMesh objMesh(QStringLiteral("Surface"));
    QVERIFY(load(objFiles, objMesh, ResultText::surface(sBall.m_vecVertices, sBall.m_vecTriangles, bText), bText ? "1.0" : "2.0"));
    QCOMPARE(objMesh.name(), QStringLiteral("Surface"));
    QCOMPARE(objMesh.getNumOfVertices(), static_cast<long>(sBall.m_vecVertices.size() / 3));
    QCOMPARE(objMesh.m_nVertices, objMesh.getNumOfVertices());
    QCOMPARE(objMesh.vertices(), sBall.m_vecVertices);
    QCOMPARE(objMesh.triangles(), sBall.m_vecTriangles);
    QVERIFY(objMesh.isClosed());
    Coord3d objMin;
    Coord3d objMax;
    objMesh.getBBox(objMin, objMax);
    QVERIFY(qAbs(objMin.x + 11.5) < 1e-5 && qAbs(objMax.x - 13.5) < 1e-5);
    QVERIFY(qAbs(objMin.y + 14.5) < 1e-5 && qAbs(objMax.y - 10.5) < 1e-5);
    QVERIFY(qAbs(objMin.z - 17.5) < 1e-5 && qAbs(objMax.z - 42.5) < 1e-5);
}

void tst_mesh::refusesDamagedSurfaces_data()
{
    QTest::addColumn<QByteArray>("strSections");
    QTest::addColumn<QByteArray>("strVersion");
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const float fInf = std::numeric_limits<float>::infinity();
    const auto rows = [&](const char* pName, const std::vector<float>& vecVertices, const std::vector<quint32>& vecTriangles, int nVertices,
                          int nTriangles)
    {
        for (const bool bText : {true, false})
        {
            QTest::addRow("%s, %s", pName, bText ? "1.0" : "2.0")
                << ResultText::surface(vecVertices, vecTriangles, bText, nVertices, nTriangles) << QByteArray(bText ? "1.0" : "2.0");
        }
    };
    rows("index equal to the count", vecTetraVertices, {0, 1, 4}, -1, -1);
    rows("largest index", vecTetraVertices, {0, 1, 4294967295U}, -1, -1);
    rows("more vertices counted than there are", vecTetraVertices, vecTetraTriangles, 5, -1);
    rows("more triangles counted than there are", vecTetraVertices, vecTetraTriangles, -1, 5);
    rows("largest count", vecTetraVertices, vecTetraTriangles, 2147483647, -1);
    rows("largest count of triangles", vecTetraVertices, vecTetraTriangles, -1, 2147483647);
    rows("NaN", {0, 0, 0, 1, fNaN, 0, 0, 1, 0}, {0, 1, 2}, -1, -1);
    rows("infinite", {0, 0, 0, 1, 0, 0, 0, 1, -fInf}, {0, 1, 2}, -1, -1);
    rows("fewer vertices counted than triangles name", vecTetraVertices, vecTetraTriangles, 3, -1);

    QByteArray strGood = ResultText::surface(vecTetraVertices, vecTetraTriangles, false);
    QTest::newRow("bad digit") << QByteArray(strGood).replace("0000803F", "0000G03F") << QByteArray("2.0");
    QTest::newRow("negative count") << QByteArray(strGood).replace("Count=\"4\"", "Count=\"-4\"") << QByteArray("2.0");
    QTest::newRow("count with a blank") << QByteArray(strGood).replace("Count=\"4\"", "Count=\"4 \"") << QByteArray("2.0");
    QTest::newRow("no count") << QByteArray(strGood).replace(" Count=\"4\"", "") << QByteArray("2.0");
    QTest::newRow("unknown version") << strGood << QByteArray("3.0");
    QTest::newRow("no version") << strGood << QByteArray("");
    QTest::newRow("values of the other version") << strGood << QByteArray("1.0");
}

void tst_mesh::refusesDamagedSurfaces()
{
    QFETCH(QByteArray, strSections);
    QFETCH(QByteArray, strVersion);
    CFiles objFiles;
    C3DMesh objMesh(QStringLiteral("Surface"));
    QVERIFY(objMesh.loadMeshData(vecTetraVertices, vecTetraTriangles));
    const CLogLines objLog;
    QVERIFY(!load(objFiles, objMesh, strSections, strVersion));
    QCOMPARE(objLog.lines().size(), 1);
    QCOMPARE(objMesh.vertices(), vecTetraVertices); // what was there stays
    QCOMPARE(objMesh.triangles(), vecTetraTriangles);
}

void tst_mesh::aLyingCountCostsNoMemory()
{
    // 4 vertices, said to be two thousand million: three times that many floats would be 24 gigabytes.
    CFiles objFiles;
    C3DMesh objMesh{QString()};
    const CProcessorMeter objMeter;
    QVERIFY(!load(objFiles, objMesh, ResultText::surface(vecTetraVertices, vecTetraTriangles, false, 2000000000), "2.0"));
    QVERIFY(objMeter.isWithinPatience());
}

void tst_mesh::aMissingSectionIsRefused()
{
    CFiles objFiles;
    C3DMesh objMesh{QString()};
    const CLogLines objLog;
    QVERIFY(!load(objFiles, objMesh, "<Orm3.0.Surface.Data></Orm3.0.Surface.Data>", "2.0"));
    QVERIFY(!load(objFiles, objMesh, "", "2.0"));
    QCOMPARE(objLog.lines().size(), 2);
    QVERIFY(objLog.lines().constFirst().contains(QStringLiteral("Orm3.0.Surface.Vertices")));
    QVERIFY(!objMesh.loadFromXML(nullptr));
}

void tst_mesh::anEmptySurfaceHasAZeroBox()
{
    C3DMesh objMesh{QString()};
    Coord3d objMin(1, 2, 3);
    Coord3d objMax(4, 5, 6);
    objMesh.getBBox(objMin, objMax);
    QCOMPARE(objMin.x + objMin.y + objMin.z + objMax.x + objMax.y + objMax.z, 0.0);
    QCOMPARE(objMesh.getNumOfVertices(), 0L);
    QVERIFY(!objMesh.isClosed());
    QVERIFY(objMesh.m_bShown);
    QVERIFY(!objMesh.m_bAnchored);
    CFiles objFiles;
    QVERIFY(load(objFiles, objMesh, ResultText::surface({}, {}, true), "1.0"));
    QVERIFY(load(objFiles, objMesh, ResultText::surface({}, {}, false), "2.0"));
    QCOMPARE(objMesh.getNumOfVertices(), 0L);
}

void tst_mesh::aCopySharesItsArrays()
{
    C3DMesh objMesh(QStringLiteral("Surface"));
    QVERIFY(objMesh.loadMeshData(vecTetraVertices, vecTetraTriangles));
    C3DMesh objCopy(objMesh);
    C3DMesh objAssigned{QString()};
    objAssigned = objCopy;
    objCopy.setOpacity(0.25f);
    objCopy.showPhotonDensity(true);
    objCopy.getColorPalette()->setReversed(1);
    QCOMPARE(objCopy.vertices().data(), objMesh.vertices().data());
    QCOMPARE(objAssigned.triangles().data(), objMesh.triangles().data());
    QCOMPARE(objAssigned.name(), QStringLiteral("Surface"));
    QCOMPARE(objMesh.m_fOpacity, 1.0f); // fields are each mesh's own
    QVERIFY(!objMesh.m_bShowPhotonDensity);
    QCOMPARE(objMesh.getColorPalette()->reversed(), 0);
}

void tst_mesh::loadingACopyLeavesTheOriginal()
{
    C3DMesh objMesh{QString()};
    QVERIFY(objMesh.loadMeshData(vecTetraVertices, vecTetraTriangles));
    C3DMesh objCopy(objMesh);
    const SSurface sBox = Shapes::box(0, 0, 0, 1, 2, 3);
    QVERIFY(objCopy.loadMeshData(sBox.m_vecVertices, sBox.m_vecTriangles));
    QCOMPARE(objCopy.getNumOfVertices(), 8L);
    QCOMPARE(objCopy.getNumOfTriangles(), 12L);
    QCOMPARE(objMesh.vertices(), vecTetraVertices);
    QCOMPARE(objMesh.getNumOfVertices(), 4L);
}

void tst_mesh::newVerticesDropTheDensityMap()
{
    // Four densities must not be read for eight vertices: the sanitizers would see it when the mesh is drawn, this checks the range alone.
    C3DMesh objMesh{QString()};
    float afDensity[4] = {1, 2, 3, 4};
    objMesh.setPhotonDensityMapping(afDensity, nullptr); // no vertices yet
    QCOMPARE(objMesh.getColorPalette()->imageMax(), 1.0);
    QVERIFY(objMesh.loadMeshData(vecTetraVertices, vecTetraTriangles));
    objMesh.setPhotonDensityMapping(afDensity, nullptr);
    QCOMPARE(objMesh.getColorPalette()->imageMax(), 4.0);
    objMesh.setPhotonDensityMapping(nullptr, nullptr);
    QCOMPARE(objMesh.getColorPalette()->imageMax(), 4.0);
}

void tst_mesh::aMapSetsTheRangeOfTheMeshsOwnPalette()
{
    C3DMesh objMesh{QString()};
    QVERIFY(objMesh.loadMeshData(vecTetraVertices, vecTetraTriangles));
    QCOMPARE(objMesh.getColorPalette(), objMesh.m_objColorMapImage.getPalette());
    QCOMPARE(int(objMesh.getColorPalette()->colorTableType()), 2);
    float afDensity[4] = {std::numeric_limits<float>::quiet_NaN(), 5.0f, -2.0f, std::numeric_limits<float>::infinity()};
    objMesh.setPhotonDensityMapping(afDensity, nullptr);
    QCOMPARE(objMesh.getColorPalette()->imageMin(), -2.0);
    QCOMPARE(objMesh.getColorPalette()->imageMax(), 5.0);
    float afNothing[4] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()};
    objMesh.setPhotonDensityMapping(afNothing, nullptr); // no range to take
    QCOMPARE(objMesh.getColorPalette()->imageMax(), 5.0);
}

void tst_mesh::aGivenPaletteIsTakenAsItIs()
{
    C3DMesh objMesh{QString()};
    QVERIFY(objMesh.loadMeshData(vecTetraVertices, vecTetraTriangles));
    float afDensity[4] = {1, 2, 3, 4};
    COrmPalette objPalette;
    objPalette.SetImageMinMax(0.0, 100.0);
    objMesh.setPhotonDensityMapping(afDensity, &objPalette);
    QCOMPARE(objPalette.imageMax(), 100.0);
    QCOMPARE(objMesh.getColorPalette()->imageMax(), 1.0);
}

void tst_mesh::closednessIsDecided_data()
{
    QTest::addColumn<std::vector<quint32>>("vecTriangles");
    QTest::addColumn<int>("nVertices");
    QTest::addColumn<bool>("bClosed");
    const auto row = [](const char* pName, const std::vector<quint32>& vecTriangles, int nVertices, bool bClosed)
    { QTest::newRow(pName) << vecTriangles << nVertices << bClosed; };
    row("nothing", {}, 0, false);
    row("tetrahedron", vecTetraTriangles, 4, true);
    row("one face missing", {vecTetraTriangles.begin(), vecTetraTriangles.end() - 3}, 4, false);
    row("one face turned", {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 3, 2}, 4, false);
    row("one face twice", {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3, 1, 2, 3}, 4, false);
    row("a face without area", {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3, 0, 0, 1}, 4, true);
    row("two sharing an edge", {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3, 0, 4, 1, 0, 1, 5, 0, 5, 4, 1, 4, 5}, 6, true);
    SSurface sBall = Shapes::ball(1.0, 4);
    row("ball", sBall.m_vecTriangles, static_cast<int>(sBall.m_vecVertices.size() / 3), true);
    sBall.invert();
    row("ball inside out", sBall.m_vecTriangles, static_cast<int>(sBall.m_vecVertices.size() / 3), true);
    const SSurface sTorus = Shapes::torus(3.0, 1.0, 12, 7);
    row("torus", sTorus.m_vecTriangles, 84, true);
}

void tst_mesh::closednessIsDecided()
{
    QFETCH(std::vector<quint32>, vecTriangles);
    QFETCH(int, nVertices);
    QFETCH(bool, bClosed);
    QCOMPARE(MeshTopology::isClosed(vecTriangles.data(), static_cast<qint64>(vecTriangles.size() / 3), nVertices), bClosed);
}

void tst_mesh::manyTrianglesAtOneVertexCostNoSquare()
{
    // A double cone of half a million sides: all triangles meet in two vertices.
    constexpr quint32 nSides = 500000;
    std::vector<quint32> vecTriangles;
    for (quint32 i = 0; i < nSides; ++i)
    {
        const quint32 nNext = (i + 1) % nSides;
        vecTriangles.insert(vecTriangles.end(), {0, 2 + i, 2 + nNext, 1, 2 + nNext, 2 + i});
    }
    const CProcessorMeter objMeter;
    QVERIFY(MeshTopology::isClosed(vecTriangles.data(), 2 * qint64(nSides), nSides + 2));
    QVERIFY2(objMeter.isWithinPatience(static_cast<qint64>(vecTriangles.size() * sizeof(quint32))),
             qPrintable(QString::number(objMeter.seconds())));
}

void tst_mesh::volumeHasASign()
{
    SSurface sBox = Shapes::box(1000, 1000, 1000, 1002, 1003, 1004);
    const auto volume = [&] { return MeshTopology::signedVolume(sBox.m_vecVertices.data(), sBox.m_vecTriangles.data(), 12); };
    QVERIFY(qAbs(volume() - 24.0) < 1e-9);
    sBox.invert();
    QVERIFY(qAbs(volume() + 24.0) < 1e-9);
}

void tst_mesh::theViewRecordStoresAndIsOne()
{
    Singleton* pRecord = Singleton::getInstance();
    QCOMPARE(Singleton::getInstance(), pRecord);
    QCOMPARE(Singleton::mpInstance, pRecord);
    pRecord->glViewport(1, 2, 3, 4);
    pRecord->glOrtho(5.0, 6.0, 7.0, 8.0, 9.0, 10.0);
    QCOMPARE(Singleton::getInstance()->m_nX, 1);
    QCOMPARE(pRecord->m_nY, 2);
    QCOMPARE(pRecord->m_nWidth, 3);
    QCOMPARE(pRecord->m_nHeight, 4);
    QCOMPARE(pRecord->m_fLeft, 5.0);
    QCOMPARE(pRecord->m_fRight, 6.0);
    QCOMPARE(pRecord->m_fBottom, 7.0);
    QCOMPARE(pRecord->m_fTop, 8.0);
    QCOMPARE(pRecord->m_fNear, 9.0);
    QCOMPARE(pRecord->m_fFar, 10.0);
}

void tst_mesh::matricesAreValues()
{
    QMap<int, _SFMatrix> mapMatrices;
    QCOMPARE(mapMatrices[3].at(2, 2), 1.0);
    QCOMPARE(mapMatrices[3].at(2, 1), 0.0);
    mapMatrices[4] = _SFMatrix({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
    const QMap<int, _SFMatrix> mapCopy = mapMatrices;
    mapMatrices.clear();
    QCOMPARE(mapCopy[4].at(1, 2), 6.0);
    QCOMPARE(mapCopy[4].values()[15], 15.0);
}

QTEST_GUILESS_MAIN(tst_mesh)
#include "tst_mesh.moc"
