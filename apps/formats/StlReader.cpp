#include "ScalarBytes.h"
#include "SurfaceParts.h"
#include "SurfaceReaders.h"
#include "TextLines.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace
{
constexpr qint64 nHeaderBytes = 84;   ///< remark and number of triangles
constexpr qint64 nTriangleBytes = 50; ///< normal, three corners, attribute
constexpr qint64 nNormalBytes = 12;

/// Makes one vertex of equal corners. The vertices stand in the order in which they first occur.
void weld(SOpenSurface& surface)
{
    std::vector<float>& vecPlaces = surface.m_vecVertices;
    for (float& fPlace : vecPlaces)
        fPlace += 0.0F; // of the two zeros one
    std::vector<quint32> vecOrder(vecPlaces.size() / 3);
    std::iota(vecOrder.begin(), vecOrder.end(), 0U);
    const auto compare = [&](quint32 nOne, quint32 nOther)
    {
        return std::lexicographical_compare(&vecPlaces[3 * std::size_t{nOne}], &vecPlaces[3 * std::size_t{nOne}] + 3,
                                            &vecPlaces[3 * std::size_t{nOther}], &vecPlaces[3 * std::size_t{nOther}] + 3);
    };
    std::sort(vecOrder.begin(), vecOrder.end(),
              [&](quint32 nOne, quint32 nOther) { return compare(nOne, nOther) || (!compare(nOther, nOne) && nOne < nOther); });
    std::vector<quint32> vecFirst(vecOrder.size()); // the first corner at the same place
    for (std::size_t i = 0; i < vecOrder.size(); ++i)
        vecFirst[vecOrder[i]] = i > 0 && !compare(vecOrder[i - 1], vecOrder[i]) ? vecFirst[vecOrder[i - 1]] : vecOrder[i];

    std::vector<float> vecVertices;
    std::vector<quint32>& vecVertexOf = vecOrder; // of a corner
    for (std::size_t nCorner = 0; nCorner < vecFirst.size(); ++nCorner)
    {
        if (vecFirst[nCorner] == nCorner)
        {
            vecVertexOf[nCorner] = static_cast<quint32>(vecVertices.size() / 3);
            vecVertices.insert(vecVertices.end(), vecPlaces.begin() + 3 * static_cast<std::ptrdiff_t>(nCorner),
                               vecPlaces.begin() + 3 * static_cast<std::ptrdiff_t>(nCorner) + 3);
        }
        else
            vecVertexOf[nCorner] = vecVertexOf[vecFirst[nCorner]];
    }
    qint64 nDropped = 0;
    for (std::size_t nCorner = 0; nCorner + 2 < vecVertexOf.size(); nCorner += 3)
    {
        const quint32* pCorners = &vecVertexOf[nCorner];
        if (pCorners[0] == pCorners[1] || pCorners[1] == pCorners[2] || pCorners[2] == pCorners[0])
            ++nDropped;
        else
            surface.m_vecTriangles.insert(surface.m_vecTriangles.end(), pCorners, pCorners + 3);
    }
    vecPlaces.swap(vecVertices);
    if (nDropped > 0)
        surface.m_lstNotes.append(QStringLiteral("%1 triangles with two equal corners were left out.").arg(nDropped));
}

QString readBinary(const QByteArray& baContent, qint64 nTriangles, SOpenSurface& surface)
{
    for (qint64 nTriangle = 0; nTriangle < nTriangles; ++nTriangle)
    {
        const char* pCorners = baContent.constData() + nHeaderBytes + nTriangle * nTriangleBytes + nNormalBytes;
        for (int i = 0; i < 9; ++i)
        {
            if (!SurfaceParts::addCoordinate(static_cast<double>(ScalarBytes::read<float>(pCorners + 4 * i, false)), surface.m_vecVertices))
                return QStringLiteral("byte %1: triangle %2 has a coordinate that is not finite")
                    .arg(pCorners + 4 * i - baContent.constData())
                    .arg(nTriangle);
        }
    }
    return {};
}

/// The words of each line of a facet, and how often it stands there. "#": a number follows.
struct SFacetLine
{
    std::vector<const char*> m_vecWords;
    int m_nNumbers;
};

QString readAscii(const QByteArray& baContent, SOpenSurface& surface)
{
    static const std::vector<SFacetLine> vecFacet = {{{"facet", "normal"}, 3}, {{"outer", "loop"}, 0}, {{"vertex"}, 3},  {{"vertex"}, 3},
                                                     {{"vertex"}, 3},          {{"endloop"}, 0},       {{"endfacet"}, 0}};
    CTextLines lines(std::string_view(baContent.constData(), static_cast<std::size_t>(baContent.size())));
    std::vector<std::string_view> vecWords;
    std::size_t nLine = vecFacet.size(); // of the facet at hand; behind its last one: between facets
    while (lines.nextWords(vecWords))
    {
        if (nLine == vecFacet.size())
        {
            if (OpenText::isSameIgnoringCase(vecWords[0], "solid") || OpenText::isSameIgnoringCase(vecWords[0], "endsolid"))
                continue;
            nLine = 0;
        }
        const SFacetLine& expected = vecFacet[nLine];
        const std::size_t nNames = expected.m_vecWords.size();
        bool bMatches = vecWords.size() == nNames + static_cast<std::size_t>(expected.m_nNumbers);
        for (std::size_t i = 0; bMatches && i < nNames; ++i)
            bMatches = OpenText::isSameIgnoringCase(vecWords[i], expected.m_vecWords[i]);
        double fValue = 0.0;
        for (std::size_t i = nNames; bMatches && i < vecWords.size(); ++i)
        {
            bMatches = OpenText::toAnyDouble(vecWords[i], fValue); // a normal may be no number: it is not used
            if (bMatches && nNames == 1 && !SurfaceParts::addCoordinate(fValue, surface.m_vecVertices))
                return OpenText::atLine(lines.number(), QStringLiteral("a coordinate is not finite"));
        }
        if (!bMatches)
            return OpenText::atLine(lines.number(), QStringLiteral("\"%1\" stands where a \"%2\" belongs")
                                                        .arg(OpenText::shown(vecWords[0]), QLatin1String(expected.m_vecWords[0])));
        ++nLine;
    }
    return nLine == vecFacet.size() ? QString() : OpenText::atLine(lines.number(), QStringLiteral("the file ends within a facet"));
}
} // namespace

QString SurfaceReaders::readStl(const QByteArray& baContent, SOpenSurface& surface)
{
    surface = SOpenSurface();
    const bool bLong = baContent.size() >= nHeaderBytes;
    const qint64 nTriangles = bLong ? ScalarBytes::read<quint32>(baContent.constData() + nHeaderBytes - 4, false) : 0;
    // The remark of a binary file may begin with "solid" too: its size tells.
    const bool bBinary = bLong && baContent.size() == nHeaderBytes + nTriangles * nTriangleBytes;
    QString strProblem;
    if (bBinary)
        strProblem = readBinary(baContent, nTriangles, surface);
    else if (OpenText::isSameIgnoringCase(std::string_view(baContent.constData(), static_cast<std::size_t>(qMin(baContent.size(), 5))),
                                          "solid"))
        strProblem = readAscii(baContent, surface);
    else
        strProblem = bLong ? QStringLiteral("byte 80: %1 triangles would take %2 bytes, the file has %3")
                                 .arg(nTriangles)
                                 .arg(nHeaderBytes + nTriangles * nTriangleBytes)
                                 .arg(baContent.size())
                           : QStringLiteral("byte 0: this is neither the text nor the bytes of a surface");
    if (!strProblem.isEmpty())
        return strProblem;
    if (surface.m_vecVertices.empty())
        return SurfaceParts::problemOf(surface);
    if (surface.vertexCount() > SurfaceParts::nMostParts)
        return QStringLiteral("end of the file: more than %1 corners").arg(SurfaceParts::nMostParts);
    weld(surface);
    return SurfaceParts::problemOf(surface);
}
