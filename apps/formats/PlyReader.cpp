#include "PlyHeader.h"
#include "SurfaceParts.h"
#include "SurfaceReaders.h"
#include "TextLines.h"

#include <QSet>

#include <limits>

namespace
{
/// Properties of vertices that are no map: coordinates, normals, colours and places in a picture.
const QSet<QString>& plainProperties()
{
    static const QSet<QString> setNames = {"x",
                                           "y",
                                           "z",
                                           "nx",
                                           "ny",
                                           "nz",
                                           "red",
                                           "green",
                                           "blue",
                                           "alpha",
                                           "r",
                                           "g",
                                           "b",
                                           "a",
                                           "diffuse_red",
                                           "diffuse_green",
                                           "diffuse_blue",
                                           "diffuse_alpha",
                                           "ambient_red",
                                           "ambient_green",
                                           "ambient_blue",
                                           "specular_red",
                                           "specular_green",
                                           "specular_blue",
                                           "s",
                                           "t",
                                           "u",
                                           "v",
                                           "texture_u",
                                           "texture_v",
                                           "texture_s",
                                           "texture_t"};
    return setNames;
}

/// Gives the values of the body in the order of the header, from text or bytes.
class CBody
{
public:
    CBody(const QByteArray& baContent, const SPlyHeader& header)
        : m_header(header),
          m_strBytes(baContent.constData() + header.m_nBodyAt, static_cast<std::size_t>(baContent.size() - header.m_nBodyAt)),
          m_lines(m_strBytes)
    {
    }

    qint64 bytesLeft() const { return m_header.m_bAscii ? m_lines.bytesLeft() : static_cast<qint64>(m_strBytes.size() - m_nAt); }

    /// In a text each element has a line. False where there is none.
    bool beginElement()
    {
        m_nWord = 0;
        return !m_header.m_bAscii || m_lines.nextWords(m_vecWords);
    }
    /// A text must not say more than the header.
    bool isElementDone() const { return !m_header.m_bAscii || m_nWord == m_vecWords.size(); }

    bool number(EScalar eType, double& fValue)
    {
        if (m_header.m_bAscii)
            return m_nWord < m_vecWords.size() && OpenText::toAnyDouble(m_vecWords[m_nWord++], fValue);
        const char* pBytes = take(eType);
        if (pBytes != nullptr)
            fValue = ScalarBytes::toDouble(pBytes, eType, m_header.m_bBigEndian);
        return pBytes != nullptr;
    }

    bool integer(EScalar eType, qint64& nValue)
    {
        if (ScalarBytes::isFloat(eType))
            return false;
        if (m_header.m_bAscii)
            return m_nWord < m_vecWords.size() && OpenText::toInteger(m_vecWords[m_nWord++], nValue);
        const char* pBytes = take(eType);
        if (pBytes != nullptr)
            nValue = ScalarBytes::toInteger(pBytes, eType, m_header.m_bBigEndian);
        return pBytes != nullptr;
    }

    /// "reason" with the place where reading stands.
    QString at(const QString& strReason) const
    {
        return m_header.m_bAscii ? OpenText::atLine(m_header.m_nLines + m_lines.number(), strReason)
                                 : QStringLiteral("byte %1: %2").arg(m_header.m_nBodyAt + static_cast<qint64>(m_nAt)).arg(strReason);
    }

private:
    const char* take(EScalar eType)
    {
        const auto nBytes = static_cast<std::size_t>(ScalarBytes::size(eType));
        if (m_strBytes.size() - m_nAt < nBytes)
            return nullptr;
        const char* pBytes = m_strBytes.data() + m_nAt;
        m_nAt += nBytes;
        return pBytes;
    }

    const SPlyHeader& m_header;
    std::string_view m_strBytes;
    CTextLines m_lines;
    std::vector<std::string_view> m_vecWords; ///< of the element at hand
    std::size_t m_nWord = 0;                  ///< the next one of them
    std::size_t m_nAt = 0;                    ///< the next byte
};

/// Where the properties of the vertices and faces go.
class CPlyReading
{
public:
    CPlyReading(const QByteArray& baContent, const SPlyHeader& header, SOpenSurface& surface)
        : m_body(baContent, header), m_surface(surface)
    {
    }

    QString run(const SPlyHeader& header)
    {
        bool bVertices = false;
        bool bFaces = false;
        for (const SPlyElement& element : header.m_vecElements)
        {
            if (element.m_nCount > 0 && !canHold(element, header.m_bAscii))
                return m_body.at(QStringLiteral("the file is too short for its %1 elements \"%2\"")
                                     .arg(element.m_nCount)
                                     .arg(OpenText::shown(element.m_strName.toStdString())));
            const bool bVertex = element.m_strName == QLatin1String("vertex");
            const bool bFace = element.m_strName == QLatin1String("face");
            bVertices = bVertices || bVertex;
            bFaces = bFaces || bFace;
            const QString strProblem = bVertex ? readVertices(element) : bFace ? readFaces(element) : pass(element);
            if (!strProblem.isEmpty())
                return strProblem;
        }
        if (!bVertices || !bFaces)
            return OpenText::atLine(
                header.m_nLines,
                QStringLiteral("the header has no element \"%1\"").arg(bVertices ? QLatin1String("face") : QLatin1String("vertex")));
        return SurfaceParts::problemOf(m_surface);
    }

private:
    /// Elements without properties take no bytes, and none are there.
    bool canHold(const SPlyElement& element, bool bAscii) const
    {
        const qint64 nLeast = bAscii ? 2 * static_cast<qint64>(element.m_vecProperties.size()) : element.leastBytes();
        // The last line of a text may lack its end.
        return nLeast > 0 && element.m_nCount <= (m_body.bytesLeft() + 1) / nLeast;
    }

    QString readVertices(const SPlyElement& element)
    {
        constexpr int nMap = 4; // below it the three coordinates, from 1
        std::vector<int> vecTarget;
        for (const SPlyProperty& property : element.m_vecProperties)
        {
            const int nAxis = QStringList{"x", "y", "z"}.indexOf(property.m_strName);
            vecTarget.push_back(property.m_bList ? 0 : nAxis + 1);
            if (!property.m_bList && !plainProperties().contains(property.m_strName))
            {
                vecTarget.back() = nMap + static_cast<int>(m_surface.m_vecMaps.size());
                m_surface.m_vecMaps.push_back({property.m_strName, {}});
            }
        }
        for (const int nAxis : {1, 2, 3})
        {
            if (!std::count(vecTarget.begin(), vecTarget.end(), nAxis))
                return m_body.at(QStringLiteral("the vertices have no property \"%1\"").arg(QLatin1Char("?xyz"[nAxis])));
        }
        for (qint64 nVertex = 0; nVertex < element.m_nCount; ++nVertex)
        {
            double afPlace[3] = {};
            if (!m_body.beginElement())
                return tooShort(QStringLiteral("vertex"), nVertex, element.m_nCount);
            for (std::size_t i = 0; i < vecTarget.size(); ++i)
            {
                const SPlyProperty& property = element.m_vecProperties[i];
                double fValue = 0.0;
                if (property.m_bList ? !passList(property) : !m_body.number(property.m_eType, fValue))
                    return noNumber(QStringLiteral("vertex"), nVertex, property);
                if (vecTarget[i] >= nMap)
                    m_surface.m_vecMaps[static_cast<std::size_t>(vecTarget[i] - nMap)].m_vecValues.push_back(static_cast<float>(fValue));
                else if (vecTarget[i] > 0)
                    afPlace[vecTarget[i] - 1] = fValue;
            }
            if (!m_body.isElementDone())
                return m_body.at(QStringLiteral("vertex %1 has more values than properties").arg(nVertex));
            for (const double fPlace : afPlace)
            {
                if (!SurfaceParts::addCoordinate(fPlace, m_surface.m_vecVertices))
                    return m_body.at(QStringLiteral("vertex %1 has a coordinate that is not finite").arg(nVertex));
            }
        }
        return {};
    }

    QString readFaces(const SPlyElement& element)
    {
        int nCorners = element.find(QStringLiteral("vertex_indices"));
        if (nCorners < 0)
            nCorners = element.find(QStringLiteral("vertex_index"));
        if (nCorners < 0 || !element.m_vecProperties[static_cast<std::size_t>(nCorners)].m_bList)
            return m_body.at(QStringLiteral("the faces have no list \"vertex_indices\""));
        std::vector<qint64> vecCorners;
        for (qint64 nFace = 0; nFace < element.m_nCount; ++nFace)
        {
            if (!m_body.beginElement())
                return tooShort(QStringLiteral("face"), nFace, element.m_nCount);
            for (std::size_t i = 0; i < element.m_vecProperties.size(); ++i)
            {
                const SPlyProperty& property = element.m_vecProperties[i];
                double fValue = 0.0;
                const bool bRead = static_cast<int>(i) == nCorners ? readCorners(property, vecCorners)
                                   : property.m_bList              ? passList(property)
                                                                   : m_body.number(property.m_eType, fValue);
                if (!bRead)
                    return noNumber(QStringLiteral("face"), nFace, property);
            }
            if (!m_body.isElementDone())
                return m_body.at(QStringLiteral("face %1 has more values than properties").arg(nFace));
            if (vecCorners.size() < 3)
                return m_body.at(QStringLiteral("face %1 has only %2 corners").arg(nFace).arg(vecCorners.size()));
            for (const qint64 nCorner : vecCorners)
            {
                if (nCorner < 0 || nCorner > std::numeric_limits<qint32>::max())
                    return m_body.at(QStringLiteral("face %1 has the corner %2, which is no vertex").arg(nFace).arg(nCorner));
            }
            SurfaceParts::addPolygon(vecCorners, m_surface.m_vecTriangles);
        }
        return {};
    }

    QString pass(const SPlyElement& element)
    {
        for (qint64 nElement = 0; nElement < element.m_nCount; ++nElement)
        {
            if (!m_body.beginElement())
                return tooShort(element.m_strName, nElement, element.m_nCount);
            for (const SPlyProperty& property : element.m_vecProperties)
            {
                double fValue = 0.0;
                if (property.m_bList ? !passList(property) : !m_body.number(property.m_eType, fValue))
                    return noNumber(element.m_strName, nElement, property);
            }
        }
        return {};
    }

    /// The length of a list is a claim: its numbers are taken one by one.
    bool readCorners(const SPlyProperty& property, std::vector<qint64>& vecCorners)
    {
        vecCorners.clear();
        qint64 nLength = 0;
        if (!m_body.integer(property.m_eLength, nLength) || nLength < 0)
            return false;
        for (qint64 i = 0; i < nLength; ++i)
        {
            qint64 nCorner = 0;
            if (!m_body.integer(property.m_eType, nCorner))
                return false;
            vecCorners.push_back(nCorner);
        }
        return true;
    }

    bool passList(const SPlyProperty& property)
    {
        qint64 nLength = 0;
        if (!m_body.integer(property.m_eLength, nLength) || nLength < 0)
            return false;
        double fValue = 0.0;
        for (qint64 i = 0; i < nLength; ++i)
        {
            if (!m_body.number(property.m_eType, fValue))
                return false;
        }
        return true;
    }

    QString tooShort(const QString& strElement, qint64 nElement, qint64 nCount) const
    {
        return m_body.at(QStringLiteral("the file ends before %1 %2 of %3").arg(strElement).arg(nElement).arg(nCount));
    }
    QString noNumber(const QString& strElement, qint64 nElement, const SPlyProperty& property) const
    {
        return m_body.at(QStringLiteral("%1 %2 has no number for \"%3\"")
                             .arg(OpenText::shown(strElement.toStdString()))
                             .arg(nElement)
                             .arg(OpenText::shown(property.m_strName.toStdString())));
    }

    CBody m_body;
    SOpenSurface& m_surface;
};
} // namespace

QString SurfaceReaders::readPly(const QByteArray& baContent, SOpenSurface& surface)
{
    surface = SOpenSurface();
    SPlyHeader header;
    const QString strProblem = header.read(baContent);
    return strProblem.isEmpty() ? CPlyReading(baContent, header, surface).run(header) : strProblem;
}
