#include "OpenWriters.h"

#include "ScalarBytes.h"
#include "TextLines.h"

#include <QSet>
#include <QtEndian>

namespace
{
/// Appends a number with its lowest byte first.
template <typename T>
void append(QByteArray& baOut, T value)
{
    char acBytes[sizeof(T)];
    std::memcpy(acBytes, &value, sizeof(T));
    if (Q_BYTE_ORDER == Q_BIG_ENDIAN)
        std::reverse(acBytes, acBytes + sizeof(T));
    baOut.append(acBytes, sizeof(T));
}

/// Numbers as VTK takes them: the number of their bytes and the bytes themselves, in base64.
template <typename T, typename Values>
QByteArray inBase64(const Values& vecValues)
{
    QByteArray baBytes;
    baBytes.reserve(static_cast<int>(8 + vecValues.size() * sizeof(T)));
    append<quint64>(baBytes, vecValues.size() * sizeof(T));
    for (const auto value : vecValues)
        append(baBytes, static_cast<T>(value));
    return baBytes.toBase64();
}

/// A text as a value of an XML attribute; what XML cannot hold becomes '?'.
QByteArray attribute(const QString& strText)
{
    QString strSafe;
    for (const QChar c : strText)
        strSafe += c < QLatin1Char(' ') || c.unicode() >= 0xFFFE ? QLatin1Char('?') : c;
    return strSafe.toHtmlEscaped().toUtf8();
}

/// One line per remark. Neither a line break nor two hyphens may be in it.
QByteArray remarks(const QStringList& lstRemarks, const QByteArray& baBefore, const QByteArray& baAfter)
{
    QByteArray baOut;
    for (const QString& strRemark : lstRemarks)
        baOut += baBefore + attribute(strRemark).replace("--", "- -") + baAfter + '\n';
    return baOut;
}

QByteArray vtkFile(const char* pType, const QStringList& lstRemarks, const QByteArray& baInside)
{
    return QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + remarks(lstRemarks, "<!-- ", " -->") + "<VTKFile type=\"" + pType +
           "\" version=\"1.0\" byte_order=\"LittleEndian\" header_type=\"UInt64\">\n" + baInside + "</VTKFile>\n";
}

template <typename T, typename Values>
QByteArray dataArray(const char* pType, const QString& strName, int nComponents, const Values& vecValues)
{
    return QByteArray("<DataArray type=\"") + pType + "\" Name=\"" + attribute(strName) + "\" NumberOfComponents=\"" +
           QByteArray::number(nComponents) + "\" format=\"binary\">" + inBase64<T>(vecValues) + "</DataArray>\n";
}

QByteArray triple(double fOne, double fTwo, double fThree, const char* pBetween)
{
    return OpenText::number(fOne) + pBetween + OpenText::number(fTwo) + pBetween + OpenText::number(fThree);
}

/// The name of a property of a PLY file, which no other one has.
QByteArray propertyName(const QString& strName, QSet<QByteArray>& setTaken)
{
    QByteArray baName;
    for (const char c : strName.toUtf8())
        baName += static_cast<unsigned char>(c) > ' ' && c != '\x7F' ? c : '_';
    if (baName.isEmpty() || setTaken.contains(baName))
    {
        baName = "map_" + baName;
        for (int n = 2; setTaken.contains(baName); ++n)
            baName = "map" + QByteArray::number(n) + baName.mid(baName.indexOf('_'));
    }
    setTaken.insert(baName);
    return baName;
}
} // namespace

QByteArray OpenWriters::vtp(const SOpenSurface& surface, const QStringList& lstRemarks)
{
    std::vector<qint64> vecOffsets(surface.m_vecTriangles.size() / 3);
    for (std::size_t i = 0; i < vecOffsets.size(); ++i)
        vecOffsets[i] = 3 * static_cast<qint64>(i + 1);
    QByteArray baOut = "<PolyData>\n<Piece NumberOfPoints=\"" + QByteArray::number(surface.vertexCount()) +
                       "\" NumberOfVerts=\"0\" NumberOfLines=\"0\" NumberOfStrips=\"0\" NumberOfPolys=\"" +
                       QByteArray::number(surface.triangleCount()) + "\">\n<PointData";
    if (!surface.m_vecMaps.empty())
        baOut += " Scalars=\"" + attribute(surface.m_vecMaps.front().m_strName) + '"';
    baOut += ">\n";
    for (const SOpenMap& map : surface.m_vecMaps)
        baOut += dataArray<float>("Float32", map.m_strName, 1, map.m_vecValues);
    baOut += "</PointData>\n<Points>\n" + dataArray<float>("Float32", QStringLiteral("Points"), 3, surface.m_vecVertices) +
             "</Points>\n<Polys>\n" + dataArray<qint64>("Int64", QStringLiteral("connectivity"), 1, surface.m_vecTriangles) +
             dataArray<qint64>("Int64", QStringLiteral("offsets"), 1, vecOffsets) + "</Polys>\n</Piece>\n</PolyData>\n";
    return vtkFile("PolyData", lstRemarks, baOut);
}

QByteArray OpenWriters::vti(const SCubicGrid& grid, const QStringList& lstRemarks)
{
    QByteArray baExtent;
    for (const qint64 nSize : grid.m_anSize)
        baExtent += (baExtent.isEmpty() ? "0 " : " 0 ") + QByteArray::number(nSize - 1);
    const QByteArray baOut = "<ImageData WholeExtent=\"" + baExtent + "\" Origin=\"" +
                             triple(grid.m_afOrigin[0], grid.m_afOrigin[1], grid.m_afOrigin[2], " ") + "\" Spacing=\"" +
                             triple(grid.m_fPitch, grid.m_fPitch, grid.m_fPitch, " ") + "\">\n<Piece Extent=\"" + baExtent +
                             "\">\n<PointData Scalars=\"" + attribute(grid.m_strName) + "\">\n" +
                             (grid.m_bSingle ? dataArray<float>("Float32", grid.m_strName, 1, grid.m_vecValues)
                                             : dataArray<double>("Float64", grid.m_strName, 1, grid.m_vecValues)) +
                             "</PointData>\n</Piece>\n</ImageData>\n";
    return vtkFile("ImageData", lstRemarks, baOut);
}

QByteArray OpenWriters::ply(const SOpenSurface& surface, const QStringList& lstRemarks)
{
    QSet<QByteArray> setTaken = {"x", "y", "z", "nx", "ny", "nz", "red", "green", "blue", "alpha", "r", "g", "b", "a", "s", "t", "u", "v"};
    QByteArray baOut = "ply\nformat binary_little_endian 1.0\n" + remarks(lstRemarks, "comment ", "") + "element vertex " +
                       QByteArray::number(surface.vertexCount()) + "\nproperty float x\nproperty float y\nproperty float z\n";
    for (const SOpenMap& map : surface.m_vecMaps)
        baOut += "property float " + propertyName(map.m_strName, setTaken) + '\n';
    baOut += "element face " + QByteArray::number(surface.triangleCount()) + "\nproperty list uchar int vertex_indices\nend_header\n";
    for (std::size_t nVertex = 0; nVertex < surface.m_vecVertices.size() / 3; ++nVertex)
    {
        for (std::size_t i = 0; i < 3; ++i)
            append(baOut, surface.m_vecVertices[3 * nVertex + i]);
        for (const SOpenMap& map : surface.m_vecMaps)
            append(baOut, map.m_vecValues[nVertex]);
    }
    for (std::size_t nCorner = 0; nCorner < surface.m_vecTriangles.size(); ++nCorner)
    {
        if (nCorner % 3 == 0)
            baOut += '\3';
        append(baOut, surface.m_vecTriangles[nCorner]);
    }
    return baOut;
}

QByteArray OpenWriters::nrrd(const SCubicGrid& grid, const QStringList& lstRemarks)
{
    const QByteArray baPitch = OpenText::number(grid.m_fPitch);
    QByteArray baOut = "NRRD0004\n" + remarks(lstRemarks, "# ", "") + "type: " + (grid.m_bSingle ? "float" : "double") +
                       "\ndimension: 3\nspace dimension: 3\nsizes: " + QByteArray::number(grid.m_anSize[0]) + ' ' +
                       QByteArray::number(grid.m_anSize[1]) + ' ' + QByteArray::number(grid.m_anSize[2]) + "\nspace directions: (" +
                       baPitch + ",0,0) (0," + baPitch + ",0) (0,0," + baPitch +
                       ")\nkinds: domain domain domain\nendian: little\nencoding: raw\nspace units: \"mm\" \"mm\" \"mm\"\nspace origin: (" +
                       triple(grid.m_afOrigin[0], grid.m_afOrigin[1], grid.m_afOrigin[2], ",") + ")\n\n";
    for (const double fValue : grid.m_vecValues)
    {
        if (grid.m_bSingle)
            append(baOut, static_cast<float>(fValue));
        else
            append(baOut, fValue);
    }
    return baOut;
}
