#include "SurfaceParts.h"
#include "SurfaceReaders.h"
#include "TextLines.h"

#include <limits>

namespace
{
/// The vertex of a corner "v", "v/t", "v//n" or "v/t/n", counted from 0; of a negative one, from the last vertex so far.
bool cornerOf(std::string_view strCorner, qint64 nVertices, qint64& nCorner)
{
    if (!OpenText::toInteger(strCorner.substr(0, strCorner.find('/')), nCorner) || nCorner == 0 ||
        nCorner > std::numeric_limits<qint32>::max())
        return false;
    nCorner = nCorner > 0 ? nCorner - 1 : nVertices + nCorner;
    return nCorner >= 0;
}
} // namespace

QString SurfaceReaders::readObj(const QByteArray& baContent, SOpenSurface& surface)
{
    surface = SOpenSurface();
    CTextLines lines(std::string_view(baContent.constData(), static_cast<std::size_t>(baContent.size())));
    std::vector<std::string_view> vecWords;
    std::vector<qint64> vecCorners;
    while (lines.nextWords(vecWords))
    {
        const bool bVertex = vecWords[0] == "v";
        if (!bVertex && vecWords[0] != "f")
            continue;
        if (vecWords.back().back() == '\\')
            return OpenText::atLine(lines.number(), QStringLiteral("a statement that goes on in the next line is not read"));
        if (vecWords.size() < 4)
            return OpenText::atLine(lines.number(), bVertex ? QStringLiteral("a vertex needs three coordinates")
                                                            : QStringLiteral("a face needs three corners"));
        for (std::size_t i = 1; bVertex && i < 4; ++i)
        {
            double fValue = 0.0;
            if (!OpenText::toDouble(vecWords[i], fValue) || !SurfaceParts::addCoordinate(fValue, surface.m_vecVertices))
                return OpenText::atLine(lines.number(),
                                        QStringLiteral("the coordinate \"%1\" is no finite number").arg(OpenText::shown(vecWords[i])));
        }
        vecCorners.clear();
        for (std::size_t i = 1; !bVertex && i < vecWords.size(); ++i)
        {
            qint64 nCorner = 0;
            if (!cornerOf(vecWords[i], surface.vertexCount(), nCorner))
                return OpenText::atLine(lines.number(), QStringLiteral("the corner \"%1\" is no vertex").arg(OpenText::shown(vecWords[i])));
            vecCorners.push_back(nCorner);
        }
        SurfaceParts::addPolygon(vecCorners, surface.m_vecTriangles);
    }
    return SurfaceParts::problemOf(surface);
}
