#include "FormatGrammar.h"

#include "FuzzInput.h"

#include <cstring>
#include <vector>
#include <zlib.h>

namespace
{
const std::vector<std::string> vecClaims = {"4",
                                            "0",
                                            "-1",
                                            "5",
                                            "3",
                                            "1000000",
                                            "2147483648",
                                            "04",
                                            "4294967300",
                                            "4294967295",
                                            "99999999999999999999",
                                            "4.",
                                            "9223372036854775807",
                                            "x"};
const std::vector<std::string> vecNumbers = {"0",    "1",  "-1.5", "+2",  "nan", "inf", "-INF",   "1e39", "1e-46",        "1e400", "1,5",
                                             "0.1f", "1e", "--1",  "+-1", ".5",  "5.",  "1e-400", "0x1",  "3.4028235e38", "00.5"};
const std::vector<float> vecFloats = {0.0F, -0.0F, 1.0F, 0.3F, -2.5F, 1e30F, 1e-30F, 3.4e38F};

template <typename T>
std::string bytes(T value, bool bBig)
{
    std::string strBytes(sizeof(T), '\0');
    std::memcpy(strBytes.data(), &value, sizeof(T));
    return bBig ? std::string(strBytes.rbegin(), strBytes.rend()) : strBytes;
}

std::string packed(const std::string& strBytes, bool bGzip)
{
    z_stream stream = {};
    deflateInit2(&stream, 1, Z_DEFLATED, bGzip ? 31 : 15, 8, Z_DEFAULT_STRATEGY);
    std::string strOut(deflateBound(&stream, strBytes.size()) + 32, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(strBytes.data()));
    stream.avail_in = static_cast<uInt>(strBytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(strOut.data());
    stream.avail_out = static_cast<uInt>(strOut.size());
    deflate(&stream, Z_FINISH);
    strOut.resize(stream.total_out);
    deflateEnd(&stream);
    return strOut;
}

class CBuilder
{
public:
    CBuilder(const std::uint8_t* pData, std::size_t nSize) : m_objIn(pData, nSize) {}

    std::string surface()
    {
        const int nFormat = m_objIn.below(6);
        m_bBig = nFormat == 2;
        std::string strFile = nFormat < 3 ? ply(nFormat == 0) : nFormat == 3 ? textStl() : nFormat == 4 ? binaryStl() : obj();
        m_objIn.damage(strFile);
        return strFile;
    }

    FormatGrammar::SBuilt volume()
    {
        const int nFormat = m_objIn.below(3);
        m_bBig = m_objIn.rarely(2);
        FormatGrammar::SBuilt built = nFormat == 0 ? nifti() : nFormat == 1 ? metaImage() : nrrd();
        m_objIn.damage(built.m_strFile);
        return built;
    }

private:
    /// A count that is true, or one that lies.
    std::string count(int nTrue) { return m_objIn.rarely(16) ? m_objIn.oneOf(vecClaims) : std::to_string(nTrue); }
    std::string number(const std::string& strPlain) { return m_objIn.rarely(32) ? m_objIn.oneOf(vecNumbers) : strPlain; }
    float floatNumber(float fPlain)
    {
        if (m_objIn.rarely(32))
        {
            const std::uint32_t nBits = m_objIn.bits32();
            std::memcpy(&fPlain, &nBits, 4);
            return fPlain;
        }
        return m_objIn.rarely(8) ? m_objIn.oneOf(vecFloats) : fPlain;
    }
    std::string lineEnd() { return m_bReturns ? "\r\n" : "\n"; }

    struct SType
    {
        const char* m_pPly;
        char m_cFamily;
        int m_nBytes;
    };

    std::string scalar(const SType& type, int nValue)
    {
        const float fValue = floatNumber(static_cast<float>(nValue));
        if (type.m_cFamily == 'f')
            return type.m_nBytes == 4 ? bytes(fValue, m_bBig) : bytes(static_cast<double>(fValue), m_bBig);
        const std::string strAll = bytes(static_cast<std::int64_t>(nValue), false).substr(0, static_cast<std::size_t>(type.m_nBytes));
        return m_bBig ? std::string(strAll.rbegin(), strAll.rend()) : strAll;
    }

    std::string ply(bool bAscii)
    {
        static const std::vector<SType> vecTypes = {{"float", 'f', 4}, {"double", 'f', 8}, {"char", 'i', 1},   {"uchar", 'u', 1},
                                                    {"short", 'i', 2}, {"ushort", 'u', 2}, {"int", 'i', 4},    {"uint", 'u', 4},
                                                    {"int8", 'i', 1},  {"uint16", 'u', 2}, {"float64", 'f', 8}};
        static const std::vector<SType> vecWhole = {{"uchar", 'u', 1}, {"int", 'i', 4},  {"uint", 'u', 4},
                                                    {"short", 'i', 2}, {"char", 'i', 1}, {"float", 'f', 4}};
        m_bReturns = m_objIn.rarely(4);
        const int nVertices = 3 + m_objIn.below(5);
        const int nFaces = 1 + m_objIn.below(4);
        const int nMore = m_objIn.below(4);
        std::vector<SType> vecProperties(3, vecTypes[0]);
        const SType length = m_objIn.oneOf(vecWhole);
        const SType corner = m_objIn.rarely(2) ? m_objIn.oneOf(vecWhole) : vecWhole[1];
        const bool bCamera = m_objIn.rarely(4);
        std::string strHeader = "ply" + lineEnd() + "format " +
                                (bAscii   ? "ascii"
                                 : m_bBig ? "binary_big_endian"
                                          : "binary_little_endian") +
                                " 1.0" + lineEnd();
        if (bCamera)
            strHeader +=
                "element camera " + count(2) + lineEnd() + "property uchar a" + lineEnd() + "property list uchar short b" + lineEnd();
        strHeader += "element vertex " + count(nVertices) + lineEnd();
        const std::vector<std::string> vecAxes = {"x", "y", "z"};
        for (std::size_t n = 0; n < 3; ++n)
        {
            vecProperties[n] = m_objIn.rarely(4) ? m_objIn.oneOf(vecTypes) : vecTypes[0];
            strHeader += std::string("property ") + vecProperties[n].m_pPly + " " +
                         (m_objIn.rarely(64) ? m_objIn.oneOf(vecAxes) : vecAxes[n]) + lineEnd();
        }
        const std::vector<std::string> vecNames = {"d560", "red", "nx", "quality", "s", "d560"};
        for (int n = 0; n < nMore; ++n)
        {
            vecProperties.push_back(m_objIn.oneOf(vecTypes));
            strHeader += std::string("property ") + vecProperties.back().m_pPly + " " + m_objIn.oneOf(vecNames) +
                         (m_objIn.rarely(4) ? "" : std::to_string(n)) + lineEnd();
        }
        strHeader += "element face " + count(nFaces) + lineEnd() + "property list " + length.m_pPly + " " + corner.m_pPly + " " +
                     (m_objIn.rarely(4) ? "vertex_index" : "vertex_indices") + lineEnd() + "end_header" + lineEnd();
        std::string strBody;
        for (int n = 0; n < (bCamera ? 2 : 0); ++n)
            strBody +=
                bAscii ? "7 2 1 2" + lineEnd() : std::string("\7\2") + bytes<std::int16_t>(1, m_bBig) + bytes<std::int16_t>(2, m_bBig);
        for (int n = 0; n < nVertices; ++n)
        {
            for (std::size_t i = 0; i < vecProperties.size(); ++i)
                strBody += bAscii ? number(std::to_string(n * static_cast<int>(i))) + (m_objIn.rarely(64) ? "\t " : " ")
                                  : scalar(vecProperties[i], n + static_cast<int>(i));
            strBody += bAscii ? lineEnd() : "";
        }
        for (int n = 0; n < nFaces; ++n)
        {
            const int nCorners = m_objIn.rarely(8) ? m_objIn.below(6) : 3;
            strBody += bAscii ? count(nCorners) : scalar(length, m_objIn.rarely(32) ? m_objIn.byte() : nCorners);
            for (int i = 0; i < nCorners; ++i)
                strBody += bAscii ? " " + count((n + i) % nVertices)
                                  : scalar(corner, m_objIn.rarely(32) ? m_objIn.byte() - 9 : (n + i) % nVertices);
            strBody += bAscii ? lineEnd() : "";
        }
        return strHeader + strBody;
    }

    std::string textStl()
    {
        m_bReturns = m_objIn.rarely(4);
        std::string strFile = "solid a" + lineEnd();
        for (int n = 1 + m_objIn.below(4); n > 0; --n)
        {
            strFile += (m_objIn.rarely(32) ? "FACET Normal 0 0 nan" : "facet normal 0 0 1") + lineEnd() + " outer loop" + lineEnd();
            for (int i = m_objIn.rarely(32) ? 2 : 3; i > 0; --i)
                strFile += "  vertex " + number(std::to_string(m_objIn.below(3))) + " " + number(std::to_string(i)) + " " +
                           number(std::to_string(n % 2)) + lineEnd();
            strFile += " endloop" + lineEnd() + (m_objIn.rarely(32) ? "" : "endfacet" + lineEnd());
        }
        return strFile + (m_objIn.rarely(4) ? "" : "endsolid a" + lineEnd());
    }

    std::string binaryStl()
    {
        const int nTriangles = 1 + m_objIn.below(5);
        std::string strFile = (m_objIn.rarely(2) ? "solid" : "bytes") + std::string(75, ' ');
        strFile += bytes<std::uint32_t>(m_objIn.rarely(16) ? m_objIn.bits32() : static_cast<std::uint32_t>(nTriangles), false);
        for (int n = 0; n < nTriangles; ++n)
        {
            for (int i = 0; i < 12; ++i)
                strFile += bytes(floatNumber(static_cast<float>(i < 3 ? 0 : m_objIn.below(3) + i % 3)), false);
            strFile += std::string(2, '\0');
        }
        return strFile;
    }

    std::string obj()
    {
        m_bReturns = m_objIn.rarely(4);
        std::string strFile = "# a" + lineEnd();
        const int nVertices = 3 + m_objIn.below(5);
        for (int n = 0; n < nVertices; ++n)
            strFile +=
                "v " + number(std::to_string(n)) + " " + number("0.5") + " " + number("-1") + (m_objIn.rarely(8) ? " 1.0" : "") + lineEnd();
        for (int n = 1 + m_objIn.below(4); n > 0; --n)
        {
            strFile += m_objIn.rarely(16) ? "vn 0 0 1" + lineEnd() : "";
            strFile += "f";
            for (int i = m_objIn.rarely(8) ? m_objIn.below(6) : 3; i > 0; --i)
                strFile += " " + (m_objIn.rarely(8) ? std::to_string(-1 - m_objIn.below(8)) : count(1 + (n + i) % nVertices)) +
                           (m_objIn.rarely(8)   ? "/1"
                            : m_objIn.rarely(8) ? "//2"
                                                : "");
            strFile += (m_objIn.rarely(64) ? " \\" : "") + lineEnd();
        }
        return strFile;
    }

    struct SNumbers
    {
        const char* m_pMeta;
        const char* m_pNrrd;
        std::int16_t m_nNifti;
        char m_cFamily;
        int m_nBytes;
    };

    const SNumbers& numbers()
    {
        static const std::vector<SNumbers> vecTypes = {{"MET_FLOAT", "float", 16, 'f', 4},
                                                       {"MET_UCHAR", "uchar", 2, 'u', 1},
                                                       {"MET_SHORT", "short", 4, 'i', 2},
                                                       {"MET_INT", "int32", 8, 'i', 4},
                                                       {"MET_DOUBLE", "double", 64, 'f', 8},
                                                       {"MET_CHAR", "signed char", 256, 'i', 1},
                                                       {"MET_USHORT", "uint16_t", 512, 'u', 2},
                                                       {"MET_UINT", "UINT", 768, 'u', 4},
                                                       {"MET_LONG_LONG", "long long", 1024, 'i', 8},
                                                       {"MET_ULONG_LONG", "ulonglong", 1280, 'u', 8},
                                                       {"MET_LONG", "block", 128, 'i', 4}};
        return m_objIn.oneOf(vecTypes);
    }

    /// The numbers of a volume, rarely one byte too few or too many.
    std::string values(const SNumbers& type, const int (&anSize)[3])
    {
        std::string strValues;
        for (int n = 0; n < anSize[0] * anSize[1] * anSize[2]; ++n)
            strValues +=
                m_objIn.left() > 0 && m_objIn.rarely(4)
                    ? bytes<std::uint64_t>(m_objIn.bits32() * 0x100000001ULL, m_bBig).substr(0, static_cast<std::size_t>(type.m_nBytes))
                    : scalar({"", type.m_cFamily, type.m_nBytes}, n);
        if (m_objIn.rarely(16))
            strValues.resize(strValues.size() + (m_objIn.rarely(2) ? 1 : -1));
        return strValues;
    }

    void sizes(int (&anSize)[3])
    {
        for (int& nSize : anSize)
            nSize = 1 + m_objIn.below(4);
    }

    std::string triple(const char* pOne, const char* pTwo, const char* pThree, const char* pBetween)
    {
        const std::string strOne = number(pOne);
        const std::string strTwo = number(pTwo);
        return strOne + pBetween + strTwo + pBetween + number(pThree);
    }

    FormatGrammar::SBuilt nifti()
    {
        int anSize[3] = {};
        const SNumbers& type = numbers();
        sizes(anSize);
        const bool bTwo = m_objIn.rarely(4);
        const int nDimensions = m_objIn.rarely(8) ? m_objIn.below(9) : 3;
        std::string strHeader(352, '\0');
        const auto put = [&](std::size_t nAt, const std::string& strBytes) { strHeader.replace(nAt, strBytes.size(), strBytes); };
        const auto putShort = [&](std::size_t nAt, int nValue) { put(nAt, bytes(static_cast<std::int16_t>(nValue), m_bBig)); };
        put(0, bytes<std::int32_t>(348, m_bBig));
        putShort(40, nDimensions);
        for (std::size_t n = 0; n < 7; ++n)
        {
            const int nTrue = n < 3 ? anSize[n] : 1;
            putShort(42 + 2 * n, m_objIn.rarely(32) ? static_cast<int>(m_objIn.bits32() & 0xFFFFU) : nTrue);
        }
        putShort(70, type.m_nNifti);
        putShort(72, 8 * type.m_nBytes);
        for (std::size_t n = 0; n < 8; ++n)
            put(76 + 4 * n, bytes(floatNumber(1.0F), m_bBig));
        put(108, bytes(m_objIn.rarely(16) ? floatNumber(400.0F) : bTwo ? 0.0F : 352.0F, m_bBig));
        put(112, bytes(m_objIn.rarely(4) ? floatNumber(0.5F) : 0.0F, m_bBig));
        put(116, bytes(m_objIn.rarely(4) ? floatNumber(3.0F) : 0.0F, m_bBig));
        strHeader[123] = static_cast<char>(m_objIn.rarely(4) ? m_objIn.byte() : 2);
        putShort(252, m_objIn.rarely(8) ? 1 : 0);
        putShort(254, m_objIn.rarely(2) ? 1 : 0);
        for (std::size_t n = 0; n < 18; ++n) // quaternion, offset, and three rows
            put(256 + 4 * n, bytes(floatNumber(n == 6 || n == 11 || n == 16 ? 0.3F : 0.0F), m_bBig));
        put(344, std::string(bTwo ? "ni1\0" : "n+1\0", 4));
        const std::string strValues = values(type, anSize);
        FormatGrammar::SBuilt built = {bTwo ? strHeader : strHeader + strValues, bTwo ? strValues : std::string()};
        if (m_objIn.rarely(4))
            built = {packed(built.m_strFile, true), bTwo ? packed(built.m_strOther, true) : std::string()};
        return built;
    }

    FormatGrammar::SBuilt metaImage()
    {
        int anSize[3] = {};
        const SNumbers& type = numbers();
        sizes(anSize);
        const bool bPacked = m_objIn.rarely(4);
        const bool bOther = m_objIn.rarely(4);
        m_bReturns = m_objIn.rarely(8);
        std::string strFile = (m_objIn.rarely(16) ? "objecttype = image" : "ObjectType = Image") + lineEnd() +
                              "NDims = " + (m_objIn.rarely(32) ? "2" : "3") + lineEnd();
        strFile += m_bBig ? "BinaryDataByteOrderMSB = True" + lineEnd() : "";
        strFile += bPacked ? "CompressedData = True" + lineEnd() : "";
        if (m_objIn.rarely(2))
            strFile += "ElementSpacing = " + triple("0.3", "0.3", "0.5", " ") + lineEnd();
        if (m_objIn.rarely(2))
            strFile += "Offset = " + triple("1", "-2", "1e2", " ") + lineEnd();
        if (m_objIn.rarely(4))
            strFile += "TransformMatrix = " + triple("0", "1", "0", " ") + " " + triple("0", "0", "1", " ") + " " +
                       triple("-1", "0", "0", " ") + lineEnd();
        const int nSkip = m_objIn.rarely(8) ? m_objIn.below(4) : 0;
        if (nSkip > 0)
            strFile += "HeaderSize = " + std::string(m_objIn.rarely(2) ? "-1" : count(nSkip)) + lineEnd();
        strFile += "DimSize = " + count(anSize[0]) + " " + count(anSize[1]) + " " + count(anSize[2]) + lineEnd() +
                   "ElementType = " + type.m_pMeta + lineEnd() + "ElementDataFile = " + (bOther ? "a.raw" : "LOCAL") + lineEnd();
        std::string strValues = values(type, anSize);
        strValues = std::string(static_cast<std::size_t>(nSkip), '#') + (bPacked ? packed(strValues, m_objIn.rarely(2)) : strValues);
        return {bOther ? strFile : strFile + strValues, bOther ? strValues : std::string()};
    }

    FormatGrammar::SBuilt nrrd()
    {
        int anSize[3] = {};
        const SNumbers& type = numbers();
        sizes(anSize);
        const bool bPacked = m_objIn.rarely(4);
        const bool bOther = m_objIn.rarely(4);
        std::string strFile = std::string("NRRD000") + (m_objIn.rarely(32) ? '9' : '4') + "\n# a: b\ntype: " + type.m_pNrrd +
                              "\ndimension: 3\nsizes: " + count(anSize[0]) + " " + count(anSize[1]) + " " + count(anSize[2]) +
                              "\nendian: " + (m_bBig ? "big" : "little") + "\nencoding: " + (bPacked ? "gzip" : "raw") + "\n";
        if (m_objIn.rarely(2))
            strFile += "space directions: (" + triple("0.3", "0", "0", ",") + ") (" + triple("0", "0", "0.3", ", ") + ")(" +
                       triple("0", "1", "0", ",") + ")\n";
        else if (m_objIn.rarely(2))
            strFile += "spacings: " + triple("0.3", "0.3", "0.5", " ") + "\n";
        if (m_objIn.rarely(2))
            strFile += "Space Origin: (" + triple("1", "-2", "1e2", ",") + ")\n";
        if (m_objIn.rarely(4))
            strFile += std::string("space units: \"mm\" \"") + (m_objIn.rarely(4) ? "inch" : "cm") + "\" \"um\"\n";
        if (m_objIn.rarely(8))
            strFile += "key:=value\nspace: LPS\n";
        const int nLines = m_objIn.rarely(8) ? m_objIn.below(3) : 0;
        const int nSkip = m_objIn.rarely(8) ? m_objIn.below(4) : 0;
        strFile += nLines > 0 ? "line skip: " + count(nLines) + "\n" : "";
        strFile += nSkip > 0 ? "byte skip: " + std::string(m_objIn.rarely(2) ? "-1" : count(nSkip)) + "\n" : "";
        strFile += bOther ? "data file: a.raw\n" : "";
        std::string strValues = values(type, anSize);
        strValues = std::string(static_cast<std::size_t>(nLines), '\n') + std::string(static_cast<std::size_t>(nSkip), '#') +
                    (bPacked ? packed(strValues, true) : strValues);
        return {bOther ? strFile : strFile + "\n" + strValues, bOther ? strValues : std::string()};
    }

    CFuzzInput m_objIn;
    bool m_bBig = false;
    bool m_bReturns = false;
};
} // namespace

std::string FormatGrammar::surface(const std::uint8_t* pData, std::size_t nSize)
{
    return CBuilder(pData, nSize).surface();
}

FormatGrammar::SBuilt FormatGrammar::volume(const std::uint8_t* pData, std::size_t nSize)
{
    return CBuilder(pData, nSize).volume();
}
