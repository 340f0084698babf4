#include "PlainFormats.h"

#include <cmath>
#include <cstring>
#include <map>
#include <set>

using namespace PlainFormats;

namespace
{
using Words = std::vector<std::string>;

struct SProperty
{
    std::string m_strName;
    std::string m_strLength; ///< type of a list's length; empty: a number
    std::string m_strType;
};

struct SElement
{
    std::string m_strName;
    std::int64_t m_nCount = 0;
    std::vector<SProperty> m_vecProperties;
};

std::string typeOf(const std::string& strName)
{
    static const std::map<std::string, std::string> mapTypes = {{"char", "i1"},  {"int8", "i1"},    {"uchar", "u1"},  {"uint8", "u1"},
                                                                {"short", "i2"}, {"int16", "i2"},   {"ushort", "u2"}, {"uint16", "u2"},
                                                                {"int", "i4"},   {"int32", "i4"},   {"uint", "u4"},   {"uint32", "u4"},
                                                                {"float", "f4"}, {"float32", "f4"}, {"double", "f8"}, {"float64", "f8"}};
    const auto it = mapTypes.find(strName);
    return it != mapTypes.end() ? it->second : std::string();
}

/// The surface has vertices and faces, and each corner is a vertex.
bool isWhole(const SSurface& surface)
{
    bool bWhole = !surface.m_vecPlaces.empty() && !surface.m_vecCorners.empty();
    for (const std::uint32_t nCorner : surface.m_vecCorners)
        bWhole = bWhole && nCorner < surface.m_vecPlaces.size() / 3;
    return bWhole;
}

bool addPlace(double fPlace, SSurface& surface)
{
    surface.m_vecPlaces.push_back(static_cast<float>(fPlace));
    return std::isfinite(surface.m_vecPlaces.back());
}

void addFan(const std::vector<std::int64_t>& vecCorners, SSurface& surface)
{
    for (std::size_t n = 1; n + 1 < vecCorners.size(); ++n)
    {
        surface.m_vecCorners.push_back(static_cast<std::uint32_t>(vecCorners[0]));
        surface.m_vecCorners.push_back(static_cast<std::uint32_t>(vecCorners[n]));
        surface.m_vecCorners.push_back(static_cast<std::uint32_t>(vecCorners[n + 1]));
    }
}

class CPly
{
public:
    explicit CPly(const std::string& strFile) : m_strFile(strFile) {}

    bool read(SSurface& surface)
    {
        bool bVertices = false;
        bool bFaces = false;
        if (!header())
            return false;
        for (const SElement& element : m_vecElements)
        {
            const bool bVertex = element.m_strName == "vertex";
            const bool bFace = element.m_strName == "face";
            bVertices = bVertices || bVertex;
            bFaces = bFaces || bFace;
            if (element.m_nCount > 0 && element.m_vecProperties.empty())
                return false;
            if ((bVertex && !isPlaced(element)) || (bFace && corners(element) == nullptr))
                return false;
            if (bVertex)
                nameMaps(element, surface);
            for (std::int64_t n = 0; n < element.m_nCount; ++n)
            {
                if (!(bVertex ? vertex(element, surface) : bFace ? face(element, surface) : row(element, nullptr, nullptr)))
                    return false;
            }
        }
        return bVertices && bFaces && isWhole(surface);
    }

private:
    bool header()
    {
        SLine line = {};
        if (!nextLine(m_strFile, 0, line) || bare(m_strFile.substr(0, line.m_nEnd)) != "ply")
            return false;
        bool bFormat = false;
        while (nextLine(m_strFile, line.m_nNext, line))
        {
            const Words vecWords = words(m_strFile.substr(line.m_nBegin, line.m_nEnd - line.m_nBegin));
            if (vecWords.empty() || vecWords[0] == "comment" || vecWords[0] == "obj_info")
                continue;
            m_nAt = line.m_nNext;
            if (vecWords[0] == "end_header")
                return bFormat;
            if (vecWords[0] == "format")
                bFormat = true;
            if (!(vecWords[0] == "format"     ? format(vecWords)
                  : vecWords[0] == "element"  ? element(vecWords)
                  : vecWords[0] == "property" ? property(vecWords)
                                              : false))
                return false;
        }
        return false;
    }

    bool format(const Words& vecWords)
    {
        if (vecWords.size() != 3 || vecWords[2] != "1.0")
            return false;
        m_bAscii = vecWords[1] == "ascii";
        m_bBig = vecWords[1] == "binary_big_endian";
        return m_bAscii || m_bBig || vecWords[1] == "binary_little_endian";
    }

    bool element(const Words& vecWords)
    {
        SElement made;
        if (vecWords.size() != 3 || !whole(vecWords[2], made.m_nCount) || made.m_nCount < 0 || m_vecElements.size() >= 64)
            return false;
        made.m_strName = vecWords[1];
        for (const SElement& other : m_vecElements)
        {
            if (other.m_strName == made.m_strName)
                return false;
        }
        m_vecElements.push_back(made);
        return true;
    }

    bool property(const Words& vecWords)
    {
        const bool bList = vecWords.size() == 5 && vecWords[1] == "list";
        if (m_vecElements.empty() || (vecWords.size() != 3 && !bList) || m_vecElements.back().m_vecProperties.size() >= 1024)
            return false;
        const SProperty made = {vecWords.back(), bList ? typeOf(vecWords[2]) : std::string(), typeOf(vecWords[vecWords.size() - 2])};
        if (made.m_strType.empty() || (bList && (made.m_strLength.empty() || made.m_strLength[0] == 'f')))
            return false;
        for (const SProperty& other : m_vecElements.back().m_vecProperties)
        {
            if (other.m_strName == made.m_strName)
                return false;
        }
        m_vecElements.back().m_vecProperties.push_back(made);
        return true;
    }

    static bool isPlaced(const SElement& element)
    {
        int nFound = 0;
        for (const SProperty& property : element.m_vecProperties)
            nFound += property.m_strLength.empty() && (property.m_strName == "x" || property.m_strName == "y" || property.m_strName == "z")
                          ? 1
                          : 0;
        return nFound == 3;
    }

    static bool isMap(const SProperty& property)
    {
        static const std::set<std::string> setPlain = {"x",
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
        return property.m_strLength.empty() && setPlain.count(property.m_strName) == 0;
    }

    static void nameMaps(const SElement& element, SSurface& surface)
    {
        for (const SProperty& property : element.m_vecProperties)
        {
            if (isMap(property))
                surface.m_vecMaps.push_back({property.m_strName, {}});
        }
    }

    static const SProperty* corners(const SElement& element)
    {
        for (const char* pName : {"vertex_indices", "vertex_index"})
        {
            for (const SProperty& property : element.m_vecProperties)
            {
                if (property.m_strName == pName)
                    return property.m_strLength.empty() ? nullptr : &property;
            }
        }
        return nullptr;
    }

    /// One value as a number, or as a whole number where one is asked for.
    bool value(const std::string& strType, double* pfValue, std::int64_t* pnValue)
    {
        double fValue = 0.0;
        if (m_bAscii)
        {
            if (m_nWord >= m_vecWords.size())
                return false;
            const std::string& strWord = m_vecWords[m_nWord++];
            if (pnValue != nullptr)
                return strType[0] != 'f' && whole(strWord, *pnValue);
            return anyNumber(strWord, *pfValue);
        }
        if (!scalar(m_strFile, m_nAt, strType, m_bBig, fValue) || (pnValue != nullptr && strType[0] == 'f'))
            return false;
        m_nAt += static_cast<std::size_t>(strType[1] - '0');
        if (pnValue != nullptr)
            *pnValue = static_cast<std::int64_t>(fValue); // of at most 32 bits
        else
            *pfValue = fValue;
        return true;
    }

    /// The values of an element: those of its numbers, and of the list that holds corners.
    bool row(const SElement& element, std::vector<double>* pvecNumbers, std::vector<std::int64_t>* pvecCorners)
    {
        m_nWord = 0;
        m_vecWords.clear();
        SLine line = {};
        while (m_bAscii && m_vecWords.empty())
        {
            if (!nextLine(m_strFile, m_nAt, line))
                return false;
            m_vecWords = words(m_strFile.substr(line.m_nBegin, line.m_nEnd - line.m_nBegin));
            m_nAt = line.m_nNext;
        }
        for (const SProperty& property : element.m_vecProperties)
        {
            double fValue = 0.0;
            std::int64_t nLength = 1;
            const bool bList = !property.m_strLength.empty();
            const bool bCorners = pvecCorners != nullptr && &property == corners(element);
            if (bList && (!value(property.m_strLength, nullptr, &nLength) || nLength < 0))
                return false;
            for (std::int64_t n = 0; n < nLength; ++n)
            {
                std::int64_t nCorner = 0;
                if (!(bCorners ? value(property.m_strType, nullptr, &nCorner) : value(property.m_strType, &fValue, nullptr)))
                    return false;
                if (bCorners)
                    pvecCorners->push_back(nCorner);
            }
            if (pvecNumbers != nullptr)
                pvecNumbers->push_back(fValue);
        }
        return true;
    }

    bool vertex(const SElement& element, SSurface& surface)
    {
        std::vector<double> vecNumbers;
        if (!row(element, &vecNumbers, nullptr) || (m_bAscii && m_nWord != m_vecWords.size()))
            return false;
        std::size_t nMap = 0;
        double afPlace[3] = {};
        for (std::size_t n = 0; n < vecNumbers.size(); ++n)
        {
            const SProperty& property = element.m_vecProperties[n];
            if (isMap(property))
                surface.m_vecMaps[nMap++].second.push_back(static_cast<float>(vecNumbers[n]));
            else if (property.m_strLength.empty() && property.m_strName.size() == 1 && property.m_strName[0] >= 'x' &&
                     property.m_strName[0] <= 'z')
                afPlace[property.m_strName[0] - 'x'] = vecNumbers[n];
        }
        bool bFinite = true;
        for (const double fPlace : afPlace)
            bFinite = addPlace(fPlace, surface) && bFinite;
        return bFinite;
    }

    bool face(const SElement& element, SSurface& surface)
    {
        std::vector<std::int64_t> vecCorners;
        if (!row(element, nullptr, &vecCorners) || (m_bAscii && m_nWord != m_vecWords.size()) || vecCorners.size() < 3)
            return false;
        for (const std::int64_t nCorner : vecCorners)
        {
            if (nCorner < 0 || nCorner > 2147483647)
                return false;
        }
        addFan(vecCorners, surface);
        return true;
    }

    const std::string& m_strFile;
    std::vector<SElement> m_vecElements;
    bool m_bAscii = false;
    bool m_bBig = false;
    std::size_t m_nAt = 0;
    Words m_vecWords;
    std::size_t m_nWord = 0;
};

/// Triangles of corners that were read one by one; equal ones become one vertex.
void weld(const std::vector<float>& vecPlaces, SSurface& surface)
{
    std::vector<std::uint32_t> vecTriangle;
    surface.m_vecPlaces.clear();
    for (std::size_t n = 0; n < vecPlaces.size(); n += 3)
    {
        std::size_t nVertex = 0;
        while (nVertex < surface.m_vecPlaces.size() / 3 &&
               !(surface.m_vecPlaces[3 * nVertex] == vecPlaces[n] && surface.m_vecPlaces[3 * nVertex + 1] == vecPlaces[n + 1] &&
                 surface.m_vecPlaces[3 * nVertex + 2] == vecPlaces[n + 2]))
            ++nVertex;
        const bool bNew = nVertex == surface.m_vecPlaces.size() / 3;
        for (std::size_t i = 0; i < 3 && bNew; ++i)
            surface.m_vecPlaces.push_back(vecPlaces[n + i] == 0.0F ? 0.0F : vecPlaces[n + i]); // of the two zeros one
        vecTriangle.push_back(static_cast<std::uint32_t>(nVertex));
        if (vecTriangle.size() == 3)
        {
            if (vecTriangle[0] != vecTriangle[1] && vecTriangle[1] != vecTriangle[2] && vecTriangle[0] != vecTriangle[2])
                surface.m_vecCorners.insert(surface.m_vecCorners.end(), vecTriangle.begin(), vecTriangle.end());
            vecTriangle.clear();
        }
    }
}

bool binaryStl(const std::string& strFile, SSurface& surface)
{
    for (std::size_t nTriangle = 84; nTriangle + 50 <= strFile.size(); nTriangle += 50)
    {
        for (std::size_t n = 12; n < 48; n += 4)
        {
            double fPlace = 0.0;
            scalar(strFile, nTriangle + n, "f4", false, fPlace);
            if (!addPlace(fPlace, surface))
                return false;
        }
    }
    return true;
}

bool textStl(const std::string& strFile, SSurface& surface)
{
    static const std::vector<Words> vecFacet = {{"facet", "normal", "#", "#", "#"},
                                                {"outer", "loop"},
                                                {"vertex", "#", "#", "#"},
                                                {"vertex", "#", "#", "#"},
                                                {"vertex", "#", "#", "#"},
                                                {"endloop"},
                                                {"endfacet"}};
    SLine line = {};
    std::size_t nState = 0;
    while (nextLine(strFile, line.m_nNext, line))
    {
        const Words vecWords = words(strFile.substr(line.m_nBegin, line.m_nEnd - line.m_nBegin));
        if (vecWords.empty())
            continue;
        if (nState == 0 && (lower(vecWords[0]) == "solid" || lower(vecWords[0]) == "endsolid"))
            continue;
        if (vecWords.size() != vecFacet[nState].size())
            return false;
        for (std::size_t n = 0; n < vecWords.size(); ++n)
        {
            double fValue = 0.0;
            if (vecFacet[nState][n] != "#" ? lower(vecWords[n]) != vecFacet[nState][n] : !anyNumber(vecWords[n], fValue))
                return false;
            if (vecFacet[nState][n] == "#" && vecFacet[nState][0] == "vertex" && !addPlace(fValue, surface))
                return false;
        }
        nState = (nState + 1) % vecFacet.size();
    }
    return nState == 0;
}
} // namespace

namespace PlainFormats
{
SSurface ply(const std::string& strFile)
{
    SSurface surface;
    surface.m_bSound = CPly(strFile).read(surface);
    return surface;
}

SSurface stl(const std::string& strFile)
{
    SSurface surface;
    const bool bBinary = strFile.size() >= 84 && strFile.size() == 84 + 50 * bits(strFile, 80, 4, false);
    if (!(bBinary ? binaryStl(strFile, surface) : lower(strFile.substr(0, 5)) == "solid" && textStl(strFile, surface)))
        return surface;
    const std::vector<float> vecPlaces = surface.m_vecPlaces;
    weld(vecPlaces, surface);
    surface.m_bSound = isWhole(surface);
    return surface;
}

SSurface obj(const std::string& strFile)
{
    SSurface surface;
    SLine line = {};
    while (nextLine(strFile, line.m_nNext, line))
    {
        const Words vecWords = words(strFile.substr(line.m_nBegin, line.m_nEnd - line.m_nBegin));
        if (vecWords.empty() || (vecWords[0] != "v" && vecWords[0] != "f"))
            continue;
        if (vecWords.size() < 4 || vecWords.back().back() == '\\')
            return surface;
        std::vector<std::int64_t> vecCorners;
        for (std::size_t n = 1; n < vecWords.size(); ++n)
        {
            double fPlace = 0.0;
            std::int64_t nCorner = 0;
            if (vecWords[0] == "v")
            {
                if (n < 4 && (!number(vecWords[n], fPlace) || !addPlace(fPlace, surface)))
                    return surface;
                continue;
            }
            if (!whole(vecWords[n].substr(0, vecWords[n].find('/')), nCorner) || nCorner == 0 || nCorner > 2147483647)
                return surface;
            if (nCorner < 0 && nCorner < -static_cast<std::int64_t>(surface.m_vecPlaces.size() / 3))
                return surface;
            vecCorners.push_back(nCorner > 0 ? nCorner - 1 : static_cast<std::int64_t>(surface.m_vecPlaces.size() / 3) + nCorner);
        }
        addFan(vecCorners, surface);
    }
    surface.m_bSound = isWhole(surface);
    return surface;
}
} // namespace PlainFormats
