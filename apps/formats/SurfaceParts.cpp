#include "SurfaceParts.h"

#include <algorithm>
#include <cmath>

bool SurfaceParts::addCoordinate(double fValue, std::vector<float>& vecVertices)
{
    const auto fKept = static_cast<float>(fValue);
    vecVertices.push_back(fKept);
    return std::isfinite(fKept);
}

void SurfaceParts::addPolygon(const std::vector<qint64>& vecCorners, std::vector<quint32>& vecTriangles)
{
    for (std::size_t i = 2; i < vecCorners.size(); ++i)
    {
        for (const std::size_t nCorner : {std::size_t{0}, i - 1, i})
            vecTriangles.push_back(static_cast<quint32>(vecCorners[nCorner]));
    }
}

QString SurfaceParts::problemOf(const SOpenSurface& surface)
{
    if (surface.m_vecVertices.empty())
        return QStringLiteral("end of the file: there are no vertices");
    if (surface.m_vecTriangles.empty())
        return QStringLiteral("end of the file: there are no faces");
    if (qMax(surface.vertexCount(), surface.triangleCount()) > nMostParts)
        return QStringLiteral("end of the file: more than %1 vertices or triangles").arg(nMostParts);
    const auto itCorner = std::find_if(surface.m_vecTriangles.begin(), surface.m_vecTriangles.end(),
                                       [&](quint32 nCorner) { return static_cast<qint64>(nCorner) >= surface.vertexCount(); });
    if (itCorner != surface.m_vecTriangles.end())
        return QStringLiteral("triangle %1: its corner %2 is not one of the %3 vertices")
            .arg((itCorner - surface.m_vecTriangles.begin()) / 3)
            .arg(*itCorner)
            .arg(surface.vertexCount());
    return {};
}
