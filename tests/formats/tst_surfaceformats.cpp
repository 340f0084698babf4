#include "FormatBytes.h"
#include "OpenWriters.h"
#include "SurfaceReaders.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace
{
using FormatBytes::of;

/// A tetrahedron, for which every test file stands.
const std::vector<float> s_vecVertices = {0, 0, 0, 1.5F, 0, 0, 0, 2.25F, 0, 0, 0, -3.125F};
const std::vector<quint32> s_vecTriangles = {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3};

const QByteArray s_baAsciiPly = "ply\nformat ascii 1.0\ncomment made by hand\nelement vertex 4\nproperty float x\nproperty float y\n"
                                "property float z\nproperty uchar red\nproperty float d560\nproperty double d580\n"
                                "element face 4\nproperty list uchar int vertex_indices\nend_header\n"
                                "0 0 0 255 1 10.5\n1.5 0 0 255 2 -1e3\n0 2.25 0 0 nan 0\n0 0 -3.125 0 0.1 4e-3\n"
                                "3 0 2 1\n3 0 1 3\n3 1 2 3\n3 2 0 3\n";

/// The same tetrahedron with two maps, in bytes.
QByteArray binaryPly(bool bBig)
{
    QByteArray ba =
        QByteArray("ply\r\nformat binary_") + (bBig ? "big" : "little") +
        "_endian 1.0\r\nelement camera 1\r\nproperty short exposure\r\nproperty list uint8 float lens\r\nelement vertex 4\r\n"
        "property double x\r\nproperty list char ushort seen\r\nproperty float32 y\r\nproperty float z\r\nproperty int16 count\r\n"
        "property float d560\r\nelement face 4\r\nproperty uchar flags\r\nproperty list uint uint vertex_index\r\nend_header\r\n";
    ba += of<qint16>(7, bBig) + of<quint8>(2) + of(0.5F, bBig) + of(0.25F, bBig);
    for (int n = 0; n < 4; ++n)
    {
        const std::size_t nAt = 3 * static_cast<std::size_t>(n);
        ba += of(static_cast<double>(s_vecVertices[nAt]), bBig) + of<qint8>(static_cast<qint8>(n)) + QByteArray(2 * n, 'x') +
              of(s_vecVertices[nAt + 1], bBig) + of(s_vecVertices[nAt + 2], bBig) + of<qint16>(static_cast<qint16>(-n), bBig) +
              of(0.1F * static_cast<float>(n), bBig);
    }
    for (std::size_t n = 0; n < 12; n += 3)
    {
        ba += of<quint8>(1) + of<quint32>(3, bBig);
        for (std::size_t i = 0; i < 3; ++i)
        {
            ba += of(s_vecTriangles[n + i], bBig);
        }
    }
    return ba;
}

/// A text again and again, each time with another number in place of its '#'.
QByteArray numbered(const QByteArray& baText, int nTimes)
{
    QByteArray baAll;
    for (int n = 0; n < nTimes; ++n)
    {
        baAll += QByteArray(baText).replace('#', QByteArray::number(n));
    }
    return baAll;
}

QByteArray asciiStl()
{
    QByteArray ba = "solid made by hand\n";
    for (std::size_t n = 0; n < 12; n += 3)
    {
        ba += "  facet normal 0 0 nan\n    outer loop\n";
        for (std::size_t i = 0; i < 3; ++i)
        {
            const float* pPlace = &s_vecVertices[3 * s_vecTriangles[n + i]];
            ba += "      vertex " + QByteArray::number(static_cast<double>(pPlace[0])) + ' ' +
                  QByteArray::number(static_cast<double>(pPlace[1])) + ' ' + QByteArray::number(static_cast<double>(pPlace[2]), 'e', 9) +
                  '\n';
        }
        ba += "    endloop\n  ENDFACET\n";
    }
    return ba + "endsolid\n";
}

QByteArray binaryStl()
{
    QByteArray ba = QByteArray("solid, though binary").leftJustified(80, ' ') + of<quint32>(4);
    for (std::size_t n = 0; n < 12; n += 3)
    {
        ba += of(0.0F) + of(0.0F) + of(std::numeric_limits<float>::quiet_NaN());
        for (std::size_t i = 0; i < 9; ++i)
        {
            const float fPlace = s_vecVertices[3 * s_vecTriangles[n + i / 3] + i % 3];
            ba += of(fPlace == 0.0F && n == 6 ? -0.0F : fPlace); // both zeros are one place
        }
        ba += of<quint16>(0);
    }
    return ba;
}

const QByteArray s_baObj =
    "# made by hand\nmtllib a.mtl\no part\nv 0 0 0\nv +1.5 0 0 1.0\nv 0 2.25 0 0.5 0.5 0.5\nvn 0 0 1\nvt 0 1\nv 0 0 -3.125\n"
    "s off\nf 1 3 2\nf 1/1 2/1/1 4//1\nf -3 -2 -1\nusemtl b\nf 3 1 4\n";

/// The places of the corners of all triangles, which do not depend on how the vertices are numbered.
std::vector<float> corners(const SOpenSurface& surface)
{
    std::vector<float> vecCorners;
    for (const quint32 nCorner : surface.m_vecTriangles)
    {
        vecCorners.insert(vecCorners.end(), &surface.m_vecVertices[3 * std::size_t{nCorner}],
                          &surface.m_vecVertices[3 * std::size_t{nCorner}] + 3);
    }
    return vecCorners;
}

std::vector<float> expectedCorners()
{
    SOpenSurface surface;
    surface.m_vecVertices = s_vecVertices;
    surface.m_vecTriangles = s_vecTriangles;
    return corners(surface);
}
} // namespace

/// Readers of surfaces of other programs, and what writes them.
class tst_surfaceformats : public QObject
{
    Q_OBJECT

private slots:
    void surfacesAreRead_data();
    void surfacesAreRead();
    void mapsAreThePropertiesThatAreLeft();
    void plyValuesOfEveryType_data();
    void plyValuesOfEveryType();
    void plyCornersOfEveryType_data();
    void plyCornersOfEveryType();
    void textsAreReadAsTheyAreWrittenElsewhere();
    void polygonsBecomeFans();
    void cornersAreWelded();
    void damagedFilesAreRefused_data();
    void damagedFilesAreRefused();
    void aCutFileIsNeverTaken_data();
    void aCutFileIsNeverTaken();
    void aWrittenSurfaceComesBack();
    void writtenNamesStayApart();
};

void tst_surfaceformats::surfacesAreRead_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    QTest::newRow("PLY, text") << "a.ply" << s_baAsciiPly;
    QTest::newRow("PLY, text, other line ends") << "A.PLY" << QByteArray(s_baAsciiPly).replace("\n", "\r\n");
    QTest::newRow("PLY, little endian") << "a.ply" << binaryPly(false);
    QTest::newRow("PLY, big endian") << "a.ply" << binaryPly(true);
    QTest::newRow("STL, text") << "a.stl" << asciiStl();
    QTest::newRow("STL, bytes") << "a.STL" << binaryStl();
    QTest::newRow("OBJ") << "a.obj" << s_baObj;
}

void tst_surfaceformats::surfacesAreRead()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::read(strFile, baContent, surface), QString());
    QCOMPARE(surface.vertexCount(), qint64(4));
    QCOMPARE(surface.triangleCount(), qint64(4));
    QVERIFY(corners(surface) == expectedCorners());
    for (const SOpenMap& map : surface.m_vecMaps)
    {
        QCOMPARE(map.m_vecValues.size(), std::size_t(4));
    }
}

void tst_surfaceformats::mapsAreThePropertiesThatAreLeft()
{
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::readPly(s_baAsciiPly, surface), QString());
    QCOMPARE(surface.m_vecMaps.size(), std::size_t(2));
    QCOMPARE(surface.m_vecMaps[0].m_strName, QString("d560"));
    QCOMPARE(surface.m_vecMaps[1].m_strName, QString("d580"));
    QVERIFY(std::isnan(surface.m_vecMaps[0].m_vecValues[2]));
    QCOMPARE(surface.m_vecMaps[0].m_vecValues[3], 0.1F);
    QVERIFY((surface.m_vecMaps[1].m_vecValues == std::vector<float>{10.5F, -1000.0F, 0.0F, 0.004F}));
    QCOMPARE(SurfaceReaders::readPly(binaryPly(true), surface), QString());
    QCOMPARE(surface.m_vecMaps.size(), std::size_t(2));
    QVERIFY((surface.m_vecMaps[0].m_vecValues == std::vector<float>{0, -1, -2, -3}));
    QVERIFY((surface.m_vecMaps[1].m_vecValues == std::vector<float>{0.0F, 0.1F, 0.2F, 0.1F * 3.0F}));
}

void tst_surfaceformats::plyValuesOfEveryType_data()
{
    QTest::addColumn<QByteArray>("baType");
    QTest::addColumn<QByteArray>("baValue");
    QTest::addColumn<double>("fValue");
    for (const bool bBig : {false, true})
    {
        const auto add = [&](const char* pType, const QByteArray& baValue, double fValue)
        { QTest::addRow("%s, %s", pType, bBig ? "big" : "little") << QByteArray(bBig ? "big " : "little ") + pType << baValue << fValue; };
        add("char", of<qint8>(-100), -100.0);
        add("int8", of<qint8>(-100), -100.0);
        add("uchar", of<quint8>(200), 200.0);
        add("uint8", of<quint8>(200), 200.0);
        add("short", of<qint16>(-30000, bBig), -30000.0);
        add("int16", of<qint16>(-30000, bBig), -30000.0);
        add("ushort", of<quint16>(60000, bBig), 60000.0);
        add("uint16", of<quint16>(60000, bBig), 60000.0);
        add("int", of<qint32>(-2000000, bBig), -2000000.0);
        add("int32", of<qint32>(-2000000, bBig), -2000000.0);
        add("uint", of<quint32>(4000000000U, bBig), 4.0e9);
        add("uint32", of<quint32>(4000000000U, bBig), 4.0e9);
        add("float", of(0.1F, bBig), static_cast<double>(0.1F));
        add("float32", of(0.1F, bBig), static_cast<double>(0.1F));
        add("double", of(1e30, bBig), static_cast<double>(1e30F));
        add("float64", of(-0.25, bBig), -0.25);
    }
}

void tst_surfaceformats::plyValuesOfEveryType()
{
    QFETCH(QByteArray, baType);
    QFETCH(QByteArray, baValue);
    QFETCH(double, fValue);
    const bool bBig = baType.startsWith("big");
    const QByteArray baVertex = QByteArray(12, '\0') + baValue;
    const QByteArray ba = "ply\nformat binary_" + QByteArray(bBig ? "big" : "little") +
                          "_endian 1.0\nelement vertex 1\nproperty float x\nproperty float y\nproperty float z\nproperty " +
                          baType.split(' ').at(1) + " m\nelement face 1\nproperty list uchar uchar vertex_indices\nend_header\n" +
                          baVertex + QByteArray("\3\0\0\0", 4);
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::readPly(ba, surface), QString());
    QCOMPARE(static_cast<double>(surface.m_vecMaps.at(0).m_vecValues.at(0)), fValue);
}

void tst_surfaceformats::plyCornersOfEveryType_data()
{
    QTest::addColumn<QByteArray>("baType");
    QTest::addColumn<int>("nBytes");
    QTest::newRow("char") << QByteArray("char") << 1;
    QTest::newRow("uchar") << QByteArray("uchar") << 1;
    QTest::newRow("short") << QByteArray("short") << 2;
    QTest::newRow("ushort") << QByteArray("ushort") << 2;
    QTest::newRow("int") << QByteArray("int") << 4;
    QTest::newRow("uint") << QByteArray("uint") << 4;
}

/// Lengths and corners of the faces, in either byte order.
void tst_surfaceformats::plyCornersOfEveryType()
{
    QFETCH(QByteArray, baType);
    QFETCH(int, nBytes);
    for (const bool bBig : {false, true})
    {
        const auto whole = [&](quint32 nValue)
        {
            const QByteArray baFour = of<quint32>(nValue, bBig);
            return bBig ? baFour.right(nBytes) : baFour.left(nBytes);
        };
        QByteArray ba =
            QByteArray("ply\nformat binary_") + (bBig ? "big" : "little") +
            "_endian 1.0\nelement vertex 4\nproperty float x\nproperty float y\nproperty float z\nelement face 4\nproperty list " + baType +
            " " + baType + " vertex_indices\nend_header\n";
        for (const float fPlace : s_vecVertices)
        {
            ba += of(fPlace, bBig);
        }
        for (std::size_t n = 0; n < 12; ++n)
        {
            ba += (n % 3 == 0 ? whole(3) : QByteArray()) + whole(s_vecTriangles[n]);
        }
        SOpenSurface surface;
        QCOMPARE(SurfaceReaders::readPly(ba, surface), QString());
        QVERIFY(surface.m_vecTriangles == s_vecTriangles);
    }
}

/// Blanks of every kind, remarks, empty lines, signs and words for numbers that are none.
void tst_surfaceformats::textsAreReadAsTheyAreWrittenElsewhere()
{
    QByteArray ba = s_baAsciiPly;
    ba.replace("element face", "obj_info made by hand\n\ncomment face 9\nelement face");
    ba.replace("0 0 0 255 1 10.5\n", "+0\t0\v0\f255  1 +inf \r\n").replace(" -1e3\n", " -Infinity\n").replace("0.1 4e-3", "INF +4e-3");
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::readPly(ba, surface), QString());
    QVERIFY(corners(surface) == expectedCorners());
    constexpr float fInfinity = std::numeric_limits<float>::infinity();
    QVERIFY((surface.m_vecMaps[1].m_vecValues == std::vector<float>{fInfinity, -fInfinity, 0.0F, 0.004F}));
    QCOMPARE(surface.m_vecMaps[0].m_vecValues[3], fInfinity);
}

void tst_surfaceformats::polygonsBecomeFans()
{
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::readObj("v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv -1 0.5 0\nf 1 2 3 4 5\n", surface), QString());
    QVERIFY((surface.m_vecTriangles == std::vector<quint32>{0, 1, 2, 0, 2, 3, 0, 3, 4}));
    QCOMPARE(SurfaceReaders::readPly("ply\nformat ascii 1.0\nelement vertex 4\nproperty float x\nproperty float y\nproperty float z\n"
                                     "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
                                     "0 0 0\n1 0 0\n1 1 0\n0 1 0\n4 3 2 1 0\n",
                                     surface),
             QString());
    QVERIFY((surface.m_vecTriangles == std::vector<quint32>{3, 2, 1, 3, 1, 0}));
}

void tst_surfaceformats::cornersAreWelded()
{
    // Of four triangles, three fall together; the vertices stand in the order in which they are met.
    QByteArray ba = "solid\n";
    for (const char* pCorners : {"vertex 5 5 5\nvertex 1 0 0\nvertex 0 1 0\n", "vertex 1 0 0\nvertex 1 0 0\nvertex 9 9 9\n",
                                 "vertex 9 9 9\nvertex 1 0 0\nvertex 1 0 0\n", "vertex 1 0 0\nvertex 9 9 9\nvertex 1 0 0\n"})
    {
        ba += QByteArray("facet normal 0 0 1\nouter loop\n") + pCorners + "endloop\nendfacet\n";
    }
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::readStl(ba + "endsolid\n", surface), QString());
    QVERIFY((surface.m_vecVertices == std::vector<float>{5, 5, 5, 1, 0, 0, 0, 1, 0, 9, 9, 9}));
    QVERIFY((surface.m_vecTriangles == std::vector<quint32>{0, 1, 2}));
    QCOMPARE(surface.m_lstNotes, QStringList{"3 triangles with two equal corners were left out."});
}

void tst_surfaceformats::damagedFilesAreRefused_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strProblem");
    const auto ply = [](const char* pOld, const char* pNew) { return QByteArray(s_baAsciiPly).replace(pOld, pNew); };
    QTest::newRow("nothing") << "a.ply" << QByteArray() << "line 1: the file does not begin with \"ply\"";
    QTest::newRow("no PLY") << "a.ply" << QByteArray("solid") << "line 1: the file does not begin with \"ply\"";
    QTest::newRow("no end of the header") << "a.ply" << QByteArray("ply\nformat ascii 1.0\n") << "line 2: the header has no end";
    QTest::newRow("other format") << "a.ply" << ply("ascii", "packed") << "line 2: the format \"packed\" is not known";
    QTest::newRow("other version") << "a.ply" << ply("ascii 1.0", "ascii 2.0") << "line 2: the format is not one of version 1.0";
    QTest::newRow("no format") << "a.ply" << ply("format ascii 1.0\n", "") << "line 12: the header names no format";
    QTest::newRow("count is no number") << "a.ply" << ply("vertex 4", "vertex many") << "line 4: an element needs a name and a count";
    QTest::newRow("count below 0") << "a.ply" << ply("vertex 4", "vertex -4") << "line 4: an element needs a name and a count";
    QTest::newRow("too many vertices") << "a.ply" << ply("vertex 4", "vertex 99999999999999")
                                       << "line 13: the file is too short for its 99999999999999 elements \"vertex\"";
    QTest::newRow("more vertices than lines") << "a.ply" << ply("vertex 4", "vertex 9") << "line 18: vertex 4 has no number for \"d560\"";
    QTest::newRow("unknown type") << "a.ply" << ply("double d580", "quad d580") << "line 10: the type \"quad\" is not known";
    QTest::newRow("property twice") << "a.ply" << ply("d580", "d560") << "line 10: the property \"d560\" occurs twice";
    QTest::newRow("element twice") << "a.ply" << ply("element face", "element vertex") << "line 11: the element \"vertex\" occurs twice";
    QTest::newRow("list of fractions") << "a.ply" << ply("list uchar int", "list float int")
                                       << "line 12: \"float\" is no type for the length of a list";
    QTest::newRow("too many properties") << "a.ply" << ply("property double d580\n", numbered("property int more#\n", 1024))
                                         << "line 1029: more than 1024 properties";
    QTest::newRow("too many elements") << "a.ply" << ply("element face", numbered("element more# 0\n", 64) + "element face")
                                       << "line 74: more than 64 elements";
    QTest::newRow("two signs") << "a.ply" << ply("2.25", "+-2.25") << "line 16: vertex 2 has no number for \"y\"";
    QTest::newRow("plus twice") << "a.ply" << ply("2.25", "++2.25") << "line 16: vertex 2 has no number for \"y\"";
    QTest::newRow("a property before any element")
        << "a.ply" << ply("element vertex", "property int a\nelement vertex") << "line 4: \"property\" is not known in a header";
    QTest::newRow("five words that are no list")
        << "a.ply" << ply("list uchar int", "pair uchar int") << "line 12: a property needs a type and a name";
    QTest::newRow("list of an unknown type") << "a.ply" << ply("list uchar int", "list quad int")
                                             << "line 12: \"quad\" is no type for the length of a list";
    QTest::newRow("list below 0") << "a.ply" << ply("3 0 2 1", "-3 0 2 1") << "line 18: face 0 has no number for \"vertex_indices\"";
    QTest::newRow("corners are no list") << "a.ply" << ply("property list uchar int vertex_indices", "property int vertex_indices")
                                         << "line 17: the faces have no list \"vertex_indices\"";
    QTest::newRow("corner is no number") << "a.ply" << ply("3 0 2 1", "3 0 two 1")
                                         << "line 18: face 0 has no number for \"vertex_indices\"";
    QTest::newRow("corner beyond 32 bits") << "a.ply" << ply("3 0 2 1", "3 0 4294967296 1")
                                           << "line 18: face 0 has the corner 4294967296, which is no vertex";
    QTest::newRow("a line without a count") << "a.ply" << ply("3 0 2 1", "") << "line 21: the file ends before face 3 of 4";
    QTest::newRow("neither vertices nor faces")
        << "a.ply" << ply("element vertex", "element edge") << "line 13: the header has no element \"vertex\"";
    QTest::newRow("a long word") << "a.ply"
                                 << ply("double d580",
                                        "d\x7F\xC3\xBC"
                                        "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa d580")
                                 << "line 10: the type \"d???aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...\" is not known";
    QTest::newRow("OBJ, too large") << "a.obj" << QByteArray(s_baObj).replace("2.25", "1e39")
                                    << "line 6: the coordinate \"1e39\" is no finite number";
    QTest::newRow("corners that are fractions")
        << "a.ply" << ply("list uchar int", "list uchar float") << "line 18: face 0 has no number for \"vertex_indices\"";
    QTest::newRow("elements that are passed over are too few")
        << "a.ply"
        << QByteArray("ply\nformat ascii 1.0\nelement edge 3\nproperty int a\nelement vertex 1\nproperty float x\nproperty float y\n"
                      "property float z\nelement face 1\nproperty list uchar int vertex_index\nend_header\n100000\n200000\n")
        << "line 13: the file ends before edge 2 of 3";
    QTest::newRow("no z") << "a.ply" << ply("float z", "float w") << "line 13: the vertices have no property \"z\"";
    QTest::newRow("no faces") << "a.ply" << ply("element face", "element edge") << "line 13: the header has no element \"face\"";
    QTest::newRow("no corners") << "a.ply" << ply("vertex_indices", "edges") << "line 17: the faces have no list \"vertex_indices\"";
    QTest::newRow("no number") << "a.ply" << ply("2.25", "2,25") << "line 16: vertex 2 has no number for \"y\"";
    QTest::newRow("number too much") << "a.ply" << ply("10.5\n", "10.5 6\n") << "line 14: vertex 0 has more values than properties";
    QTest::newRow("coordinate is NaN") << "a.ply" << ply("2.25", "nan") << "line 16: vertex 2 has a coordinate that is not finite";
    QTest::newRow("coordinate too large") << "a.ply" << ply("2.25", "1e39") << "line 16: vertex 2 has a coordinate that is not finite";
    QTest::newRow("corner below 0") << "a.ply" << ply("3 0 2 1", "3 0 -2 1") << "line 18: face 0 has the corner -2, which is no vertex";
    QTest::newRow("corner at the count") << "a.ply" << ply("3 0 2 1", "3 0 4 1") << "triangle 0: its corner 4 is not one of the 4 vertices";
    QTest::newRow("two corners") << "a.ply" << ply("3 0 2 1", "2 0 1") << "line 18: face 0 has only 2 corners";
    QTest::newRow("list is longer than said") << "a.ply" << ply("3 0 2 1", "3 0 2 1 0")
                                              << "line 18: face 0 has more values than properties";
    QTest::newRow("list is shorter than said") << "a.ply" << ply("3 0 2 1", "9 0 2 1")
                                               << "line 18: face 0 has no number for \"vertex_indices\"";
    QTest::newRow("list of a billion") << "a.ply" << binaryPly(false).replace(of<quint32>(3), of<quint32>(1000000000U))
                                       << "byte 531: face 0 has no number for \"vertex_index\"";
    QTest::newRow("no STL") << "a.stl" << QByteArray("facets") << "byte 0: this is neither the text nor the bytes of a surface";
    QTest::newRow("STL, count too large") << "a.stl" << QByteArray(80, ' ') + of<quint32>(4000000000U) + QByteArray(100, ' ')
                                          << "byte 80: 4000000000 triangles would take 200000000084 bytes, the file has 184";
    QTest::newRow("STL, no triangles") << "a.stl" << QByteArray(80, ' ') + of<quint32>(0) << "end of the file: there are no vertices";
    QTest::newRow("STL, infinite") << "a.stl" << binaryStl().replace(of(1.5F), of(std::numeric_limits<float>::infinity()))
                                   << "byte 120: triangle 0 has a coordinate that is not finite";
    QTest::newRow("STL, word missing") << "a.stl" << asciiStl().replace("outer loop", "outer")
                                       << "line 3: \"outer\" stands where a \"outer\" belongs";
    QTest::newRow("STL, corner missing") << "a.stl" << asciiStl().replace("    endloop", "      vertex 1 2 3\n    endloop")
                                         << "line 7: \"vertex\" stands where a \"endloop\" belongs";
    QTest::newRow("STL, no number") << "a.stl" << asciiStl().replace("vertex 1.5", "vertex 1.5x")
                                    << "line 6: \"vertex\" stands where a \"vertex\" belongs";
    QTest::newRow("STL, too large") << "a.stl" << asciiStl().replace("vertex 1.5", "vertex 1e99") << "line 6: a coordinate is not finite";
    QTest::newRow("OBJ, nothing") << "a.obj" << QByteArray() << "end of the file: there are no vertices";
    QTest::newRow("OBJ, anything") << "a.obj" << QByteArray(1000, '\x80') << "end of the file: there are no vertices";
    QTest::newRow("OBJ, no faces") << "a.obj" << QByteArray("v 1 2 3\n") << "end of the file: there are no faces";
    QTest::newRow("OBJ, no number") << "a.obj" << QByteArray(s_baObj).replace("2.25", "2.25a")
                                    << "line 6: the coordinate \"2.25a\" is no finite number";
    QTest::newRow("OBJ, NaN") << "a.obj" << QByteArray(s_baObj).replace("2.25", "nan")
                              << "line 6: the coordinate \"nan\" is no finite number";
    QTest::newRow("OBJ, corner 0") << "a.obj" << QByteArray(s_baObj).replace("f 1 3 2", "f 0 3 2")
                                   << "line 11: the corner \"0\" is no vertex";
    QTest::newRow("OBJ, corner too far back") << "a.obj" << QByteArray(s_baObj).replace("f -3", "f -5")
                                              << "line 13: the corner \"-5\" is no vertex";
    QTest::newRow("OBJ, corner too large") << "a.obj" << QByteArray(s_baObj).replace("f 1 3 2", "f 5 3 2")
                                           << "triangle 0: its corner 4 is not one of the 4 vertices";
    QTest::newRow("OBJ, corner wraps") << "a.obj" << QByteArray(s_baObj).replace("f 1 3 2", "f 4294967297 3 2")
                                       << "line 11: the corner \"4294967297\" is no vertex";
    QTest::newRow("OBJ, two corners") << "a.obj" << QByteArray(s_baObj).replace("f 1 3 2", "f 1 3")
                                      << "line 11: a face needs three corners";
    QTest::newRow("OBJ, continued") << "a.obj" << QByteArray(s_baObj).replace("f 1 3 2", "f 1 3 2 \\")
                                    << "line 11: a statement that goes on in the next line is not read";
    QTest::newRow("another format") << "a.vtk" << s_baObj << "name: the extension is none of .ply, .stl and .obj";
}

void tst_surfaceformats::damagedFilesAreRefused()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    QFETCH(QString, strProblem);
    SOpenSurface surface;
    QCOMPARE(SurfaceReaders::read(strFile, baContent, surface), strProblem);
}

void tst_surfaceformats::aCutFileIsNeverTaken_data()
{
    surfacesAreRead_data();
}

/// The last bytes may be missing where they say nothing: a line end, or the end of a solid. A number must not be cut.
void tst_surfaceformats::aCutFileIsNeverTaken()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    int nRefused = 0;
    for (int nSize = 0; nSize < baContent.size(); ++nSize)
    {
        SOpenSurface surface;
        if (!SurfaceReaders::read(strFile, baContent.left(nSize), surface).isEmpty())
        {
            ++nRefused;
            continue;
        }
        const bool bLines = strFile.endsWith("obj") || (strFile.endsWith("stl") && baContent.startsWith("solid made"));
        QVERIFY2(bLines || nSize >= baContent.size() - 2,
                 qPrintable(QString::number(nSize))); // formats of lines without a count end anywhere
        for (const quint32 nCorner : surface.m_vecTriangles)
        {
            QVERIFY(nCorner < surface.vertexCount());
        }
    }
    QVERIFY(nRefused > baContent.size() / 4);
}

void tst_surfaceformats::aWrittenSurfaceComesBack()
{
    SOpenSurface surface;
    surface.m_vecVertices = {0.1F, -3.4e38F, 1e-42F, 1.0F / 3.0F, 123456.789F, -0.0F, 7, 8, 9};
    surface.m_vecTriangles = {2, 1, 0, 0, 1, 2};
    surface.m_vecMaps = {{"560", {0.1F, std::numeric_limits<float>::quiet_NaN(), 3e38F}}, {"580", {1e-42F, 0.0F, -1.0F}}};
    SOpenSurface read;
    QCOMPARE(SurfaceReaders::readPly(OpenWriters::ply(surface, {"a remark"}), read), QString());
    // Byte for byte: a value that is no number equals nothing.
    const auto bytes = [](const std::vector<float>& vecValues)
    { return QByteArray(reinterpret_cast<const char*>(vecValues.data()), static_cast<int>(vecValues.size() * sizeof(float))); };
    QCOMPARE(bytes(read.m_vecVertices), bytes(surface.m_vecVertices));
    QVERIFY(read.m_vecTriangles == surface.m_vecTriangles);
    QCOMPARE(read.m_vecMaps.size(), std::size_t(2));
    for (std::size_t n = 0; n < 2; ++n)
    {
        QCOMPARE(read.m_vecMaps[n].m_strName, surface.m_vecMaps[n].m_strName);
        QCOMPARE(bytes(read.m_vecMaps[n].m_vecValues), bytes(surface.m_vecMaps[n].m_vecValues));
    }
}

void tst_surfaceformats::writtenNamesStayApart()
{
    SOpenSurface surface;
    surface.m_vecVertices = s_vecVertices;
    surface.m_vecTriangles = s_vecTriangles;
    for (const char* pName : {"Image 1", "Image_1", "x", "red", "", "Image\t1", QT_TR_NOOP("M\xC3\xA4use")})
    {
        surface.m_vecMaps.push_back({QString::fromUtf8(pName), std::vector<float>(4, static_cast<float>(surface.m_vecMaps.size()))});
    }
    SOpenSurface read;
    QCOMPARE(SurfaceReaders::readPly(OpenWriters::ply(surface, {"two\nlines"}), read), QString());
    QStringList lstNames;
    for (std::size_t n = 0; n < read.m_vecMaps.size(); ++n)
    {
        lstNames.append(read.m_vecMaps[n].m_strName);
        QCOMPARE(read.m_vecMaps[n].m_vecValues, surface.m_vecMaps[n].m_vecValues);
    }
    QCOMPARE(lstNames,
             (QStringList{"Image_1", "map_Image_1", "map_x", "map_red", "map_", "map2_Image_1", QString::fromUtf8("M\xC3\xA4use")}));
}

QTEST_GUILESS_MAIN(tst_surfaceformats)
#include "tst_surfaceformats.moc"
