// Surface section of result documents.

#include "C3DMesh.h"

#include "COrmLog.h"
#include "CPLResultXMLWrapper.h"
#include "OrmNumberText.h"

#include <QStringList>

#include <new>
#include <utility>

namespace
{
const QLatin1String strData("Orm3.0.Surface.Data");
const QLatin1String strVertices("Orm3.0.Surface.Vertices");
const QLatin1String strVertex("Orm3.0.Surface.Vertex");
const QLatin1String strVertexValues("Orm3.0.Surface.Vertices.Values");
const QLatin1String strTriangles("Orm3.0.Surface.Triangles");
const QLatin1String strTriangle("Orm3.0.Surface.Triangle");
const QLatin1String strTriangleValues("Orm3.0.Surface.Triangles.Values");

/// Makes the block of the surface section the current one and gives its count, as the document claims it.
bool openBlock(CPLResultXMLWrapper& objWrapper, QLatin1String strBlock, int& nCount)
{
    QString strCount;
    if (!objWrapper.openSection(strData, strBlock))
    {
        ORM_LOG(3, QStringLiteral("The surface cannot be read: there is no \"%1\".").arg(strBlock));
        return false;
    }
    if (!objWrapper.currentKeyText(QStringLiteral("Count"), strCount) || !OrmNumberText::toInt(strCount, nCount) || nCount < 0)
    {
        ORM_LOG(3, QStringLiteral("The surface cannot be read: the count \"%1\" of \"%2\" is no number of elements.")
                       .arg(strCount.left(40), QString(strBlock)));
        return false;
    }
    return true;
}

bool readSurface(CPLResultXMLWrapper& objWrapper, std::vector<float>& vecVertices, std::vector<quint32>& vecTriangles)
{
    const QString strVersion = objWrapper.getVersion();
    const bool bText = strVersion == QLatin1String("1.0");
    if (!bText && strVersion != QLatin1String("2.0"))
    {
        ORM_LOG(3, QStringLiteral("The surface cannot be read: version \"%1\" of the document is not known.").arg(strVersion.left(40)));
        return false;
    }
    int nCount = 0;
    if (!openBlock(objWrapper, strVertices, nCount))
        return false;
    const QStringList lstCoordinates{QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
    if (!(bText ? objWrapper.readCurrentNumbers(strVertex, lstCoordinates, nCount, vecVertices)
                : objWrapper.readCurrentHexFloats(strVertexValues, 0, 3 * static_cast<qint64>(nCount), vecVertices)))
        return false;
    if (!openBlock(objWrapper, strTriangles, nCount))
        return false;
    const QStringList lstCorners{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")};
    return bText ? objWrapper.readCurrentUInts(strTriangle, lstCorners, nCount, vecTriangles)
                 : objWrapper.readCurrentHexUInts(strTriangleValues, 0, 3 * static_cast<qint64>(nCount), vecTriangles);
}
} // namespace

bool C3DMesh::loadFromXML(CPLResultXMLWrapper* pWrapper)
{
    if (!pWrapper)
        return false;
    try
    {
        std::vector<float> vecVertices;
        std::vector<quint32> vecTriangles;
        return readSurface(*pWrapper, vecVertices, vecTriangles) && loadMeshData(std::move(vecVertices), std::move(vecTriangles));
    }
    catch (const std::bad_alloc&)
    {
        ORM_LOG(3, QStringLiteral("The surface cannot be read: there is not enough memory for it."));
        return false;
    }
}
