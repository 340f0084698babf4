#include "PlainFormats.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <zlib.h>

using namespace PlainFormats;

namespace
{
constexpr std::int64_t nMostBytes = 1LL << 30;

/// What a packed stream holds, byte by byte: as many as wanted, and whether there would be one more. False for a damaged one.
bool unpack(const std::string& strPacked, std::int64_t nWanted, std::string& strOut, bool& bMore)
{
    z_stream stream = {};
    strOut.clear();
    bMore = false;
    inflateInit2(&stream, 47);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(strPacked.data()));
    stream.avail_in = static_cast<uInt>(strPacked.size());
    int nResult = Z_OK;
    while (nResult == Z_OK && !bMore)
    {
        char c = 0;
        stream.next_out = reinterpret_cast<Bytef*>(&c);
        stream.avail_out = 1;
        nResult = inflate(&stream, Z_NO_FLUSH);
        if (stream.avail_out == 0)
        {
            bMore = static_cast<std::int64_t>(strOut.size()) == nWanted;
            if (!bMore)
                strOut += c;
        }
        else if (nResult == Z_OK && stream.avail_in == 0)
            nResult = Z_BUF_ERROR; // nothing more comes out
        if (nResult == Z_STREAM_END && stream.avail_in >= 2 && std::memcmp(stream.next_in, "\x1F\x8B", 2) == 0)
            nResult = inflateReset(&stream);
    }
    inflateEnd(&stream);
    return bMore || nResult == Z_STREAM_END;
}

bool isGzip(const std::string& strFile)
{
    return strFile.compare(0, 2, "\x1F\x8B") == 0;
}

/// Bytes of all numbers; 0 where the sizes are none or too large.
std::int64_t bytesOf(const SVolume& volume, const std::string& strType)
{
    long double fBytes = strType[1] - '0';
    for (const std::int64_t nSize : volume.m_anSize)
        fBytes *= nSize < 1 ? 0.0L : static_cast<long double>(nSize);
    return fBytes <= static_cast<long double>(nMostBytes) ? static_cast<std::int64_t>(fBytes) : 0;
}

bool takeNumbers(const std::string& strBytes, const std::string& strType, bool bBig, double fSlope, double fIntercept, SVolume& volume)
{
    const std::int64_t nBytes = bytesOf(volume, strType);
    if (nBytes == 0 || static_cast<std::int64_t>(strBytes.size()) != nBytes)
        return false;
    for (std::int64_t n = 0; n < nBytes; n += strType[1] - '0')
    {
        double fValue = 0.0;
        scalar(strBytes, static_cast<std::size_t>(n), strType, bBig, fValue);
        volume.m_vecValues.push_back(fSlope == 1.0 && fIntercept == 0.0 ? fValue : fValue * fSlope + fIntercept);
    }
    return true;
}

/// Whether the voxels span a space; notes where that hangs on rounding.
bool isPlaced(SVolume& volume)
{
    const auto below = [&](double fOne, double fOther)
    {
        volume.m_bUnsure = volume.m_bUnsure || std::fabs(fOne - fOther) <= 1e-6 * std::fabs(fOther);
        return fOne <= fOther;
    };
    double fProduct = 1.0;
    for (std::size_t n = 0; n < 3; ++n)
    {
        const auto& afStep = volume.m_aafStep[n];
        if (!std::isfinite(afStep[0]) || !std::isfinite(afStep[1]) || !std::isfinite(afStep[2]) || !std::isfinite(volume.m_afOrigin[n]))
            return false;
        const double fLength = std::hypot(std::hypot(afStep[0], afStep[1]), afStep[2]);
        if (!below(std::fabs(volume.m_afOrigin[n]), 1e9) || !below(fLength, 1e9) || !below(1e-9, fLength))
            return false;
        fProduct *= fLength;
    }
    const auto& m = volume.m_aafStep;
    long double fSpanned = 0.0L;
    for (std::size_t n = 0; n < 3; ++n)
    {
        const std::size_t i = (n + 1) % 3;
        const std::size_t j = (n + 2) % 3;
        fSpanned +=
            static_cast<long double>(m[0][n]) * (static_cast<long double>(m[1][i]) * m[2][j] - static_cast<long double>(m[1][j]) * m[2][i]);
    }
    return below(1e-3 * fProduct, std::fabs(static_cast<double>(fSpanned)));
}

/// The decimal of fewest figures that is the float.
double decimal(double fFloat)
{
    for (int nFigures = 1; nFigures <= 9; ++nFigures)
    {
        char acText[40];
        std::snprintf(acText, sizeof acText, "%.*g", nFigures, fFloat);
        if (static_cast<double>(std::strtof(acText, nullptr)) == fFloat)
            return std::strtod(acText, nullptr);
    }
    return fFloat;
}

/// A header of NIfTI as fields at their places.
class CNifti
{
public:
    CNifti(const std::string& strHeader, bool bBig) : m_strHeader(strHeader), m_bBig(bBig) {}

    double at(std::size_t nAt, const char* pType) const
    {
        double fValue = 0.0;
        scalar(m_strHeader, nAt, pType, m_bBig, fValue);
        return fValue;
    }
    int shortAt(std::size_t nAt) const { return static_cast<int>(at(nAt, "i2")); }

    bool hasSoundSizes() const
    {
        const int nDimensions = shortAt(40);
        if (nDimensions < 1 || nDimensions > 7)
            return false;
        for (std::size_t n = 1; n <= static_cast<std::size_t>(nDimensions); ++n)
        {
            const int nSize = shortAt(40 + 2 * n);
            const double fSpacing = at(76 + 4 * n, "f4");
            if (nSize < 1 || (n > 3 && nSize != 1) || (n <= 3 && (!std::isfinite(fSpacing) || fSpacing == 0.0)))
                return false;
        }
        return true;
    }

    std::string type() const
    {
        static const std::map<int, std::string> mapTypes = {{2, "u1"},   {4, "i2"},   {8, "i4"},   {16, "f4"},   {64, "f8"},
                                                            {256, "i1"}, {512, "u2"}, {768, "u4"}, {1024, "i8"}, {1280, "u8"}};
        const auto it = mapTypes.find(shortAt(70));
        return it != mapTypes.end() ? it->second : std::string();
    }

    void place(SVolume& volume) const
    {
        const int nUnit = m_strHeader[123] & 7;
        const double fLength = nUnit == 1 ? 1000.0 : nUnit == 3 ? 0.001 : 1.0;
        const int nDimensions = shortAt(40);
        for (std::size_t n = 0; n < 3; ++n)
            volume.m_anSize[n] = static_cast<int>(n) < nDimensions ? shortAt(42 + 2 * n) : 1;
        if (shortAt(254) <= 0)
        {
            volume.m_bUnsure = shortAt(252) > 0 || nDimensions < 3; // what a quaternion or a missing axis makes is the library's
            for (std::size_t n = 0; n < 3; ++n)
                volume.m_aafStep[n][n] = fLength * decimal(at(80 + 4 * n, "f4"));
            return;
        }
        for (std::size_t nRow = 0; nRow < 3; ++nRow)
        {
            for (std::size_t n = 0; n < 3; ++n)
                volume.m_aafStep[n][nRow] = fLength * decimal(at(280 + 16 * nRow + 4 * n, "f4"));
            volume.m_afOrigin[nRow] = fLength * decimal(at(292 + 16 * nRow, "f4"));
        }
    }

private:
    const std::string& m_strHeader;
    bool m_bBig;
};

using Fields = std::map<std::string, std::string>;

/// Whether a value in lower case names more than one file.
bool isSeveral(const std::string& strName)
{
    const bool bList = strName == "list" || strName.rfind("list ", 0) == 0 || strName.rfind("list\t", 0) == 0;
    return bList || strName.find('%') != std::string::npos;
}

const std::string* find(const Fields& mapFields, std::initializer_list<const char*> lstNames)
{
    for (const char* pName : lstNames)
    {
        const auto it = mapFields.find(pName);
        if (it != mapFields.end())
            return &it->second;
    }
    return nullptr;
}

bool numbers(const std::string& strText, std::size_t nCount, std::vector<double>& vecNumbers)
{
    const std::vector<std::string> vecWords = words(strText);
    vecNumbers.assign(nCount, 0.0);
    if (vecWords.size() != nCount)
        return false;
    for (std::size_t n = 0; n < nCount; ++n)
    {
        if (!number(vecWords[n], vecNumbers[n]))
            return false;
    }
    return true;
}

bool sizes(const std::string* pText, SVolume& volume)
{
    const std::vector<std::string> vecWords = pText != nullptr ? words(*pText) : std::vector<std::string>();
    return vecWords.size() == 3 && whole(vecWords[0], volume.m_anSize[0]) && whole(vecWords[1], volume.m_anSize[1]) &&
           whole(vecWords[2], volume.m_anSize[2]);
}

/// The bytes behind a place, packed or not, exactly as many as there must be.
bool takeRest(const std::string& strFile, std::size_t nAt, bool bPacked, const std::string& strType, bool bBig, SVolume& volume)
{
    std::string strBytes = strFile.substr(nAt);
    if (bPacked)
    {
        bool bMore = false;
        const std::string strPacked = strBytes;
        if (!unpack(strPacked, bytesOf(volume, strType), strBytes, bMore) || bMore)
            return false;
    }
    return takeNumbers(strBytes, strType, bBig, 1.0, 0.0, volume);
}

bool isTrue(const std::string* pText)
{
    return pText != nullptr && (lower(*pText) == "true" || *pText == "1");
}

bool readMetaImage(const std::string& strFile, const std::string& strOther, SVolume& volume)
{
    Fields mapFields;
    SLine line = {};
    while (mapFields.count("elementdatafile") == 0)
    {
        if (!nextLine(strFile, line.m_nNext, line))
            return false;
        const std::string strLine = strFile.substr(line.m_nBegin, line.m_nEnd - line.m_nBegin);
        const std::size_t nEquals = strLine.find('=');
        if (bare(strLine).empty())
            continue;
        if (nEquals == std::string::npos)
            return false;
        mapFields[lower(bare(strLine.substr(0, nEquals)))] = bare(strLine.substr(nEquals + 1));
    }
    const auto is = [&](const char* pName, const char* pValue)
    {
        const std::string* pText = find(mapFields, {pName});
        return pText == nullptr || lower(*pText) == pValue;
    };
    static const std::map<std::string, std::string> mapTypes = {{"MET_CHAR", "i1"},       {"MET_UCHAR", "u1"}, {"MET_SHORT", "i2"},
                                                                {"MET_USHORT", "u2"},     {"MET_INT", "i4"},   {"MET_UINT", "u4"},
                                                                {"MET_LONG", "i4"},       {"MET_ULONG", "u4"}, {"MET_LONG_LONG", "i8"},
                                                                {"MET_ULONG_LONG", "u8"}, {"MET_FLOAT", "f4"}, {"MET_DOUBLE", "f8"}};
    const std::string* pType = find(mapFields, {"elementtype"});
    if (find(mapFields, {"ndims"}) == nullptr || !is("ndims", "3") || !is("objecttype", "image") || !is("elementnumberofchannels", "1") ||
        (find(mapFields, {"binarydata"}) != nullptr && !isTrue(find(mapFields, {"binarydata"}))) || pType == nullptr ||
        mapTypes.count(*pType) == 0 || !sizes(find(mapFields, {"dimsize"}), volume))
        return false;
    const std::string& strType = mapTypes.at(*pType);
    std::vector<double> vecSpacing = {1, 1, 1};
    std::vector<double> vecOrigin = {0, 0, 0};
    std::vector<double> vecTurn = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const std::string* pSpacing = find(mapFields, {"elementspacing", "elementsize"});
    const std::string* pOrigin = find(mapFields, {"offset", "position", "origin"});
    const std::string* pTurn = find(mapFields, {"transformmatrix", "rotation", "orientation"});
    if ((pSpacing != nullptr && !numbers(*pSpacing, 3, vecSpacing)) || (pOrigin != nullptr && !numbers(*pOrigin, 3, vecOrigin)) ||
        (pTurn != nullptr && !numbers(*pTurn, 9, vecTurn)))
        return false;
    for (std::size_t n = 0; n < 9; ++n)
        volume.m_aafStep[n / 3][n % 3] = vecSpacing[n / 3] * vecTurn[n];
    std::copy(vecOrigin.begin(), vecOrigin.end(), volume.m_afOrigin.begin());
    const std::string strName = lower(mapFields["elementdatafile"]);
    if (!isPlaced(volume) || isSeveral(strName))
        return false;
    const bool bLocal = strName == "local";
    const std::string strNumbers = bLocal ? strFile.substr(line.m_nNext) : strOther;
    const bool bPacked = isTrue(find(mapFields, {"compresseddata"}));
    const std::string* pSkip = find(mapFields, {"headersize"});
    std::int64_t nSkip = 0;
    if (pSkip != nullptr && !whole(*pSkip, nSkip))
        return false;
    const std::int64_t nBytes = bytesOf(volume, strType);
    const auto nHeld = static_cast<std::int64_t>(strNumbers.size());
    if (nSkip == -1 && !bPacked)
        nSkip = std::max<std::int64_t>(0, nHeld - nBytes);
    return nBytes > 0 && nSkip >= 0 && nSkip <= nHeld &&
           takeRest(strNumbers, static_cast<std::size_t>(nSkip), bPacked, strType,
                    isTrue(find(mapFields, {"binarydatabyteordermsb", "elementbyteordermsb"})), volume);
}

/// "(1,2,3)" so many times.
bool vectors(const std::string& strText, std::size_t nCount, std::vector<std::array<double, 3>>& vecVectors)
{
    vecVectors.clear();
    std::string strRest = bare(strText);
    while (!strRest.empty())
    {
        const std::size_t nEnd = strRest.find(')');
        if (strRest[0] != '(' || nEnd == std::string::npos)
            return false;
        std::string strInside = strRest.substr(1, nEnd - 1);
        if (std::count(strInside.begin(), strInside.end(), ',') != 2)
            return false;
        std::replace(strInside.begin(), strInside.end(), ',', ' ');
        std::vector<double> vecNumbers;
        if (!numbers(strInside, 3, vecNumbers))
            return false;
        vecVectors.push_back({vecNumbers[0], vecNumbers[1], vecNumbers[2]});
        strRest = bare(strRest.substr(nEnd + 1));
    }
    return vecVectors.size() == nCount;
}

bool nrrdPlaces(const Fields& mapFields, SVolume& volume)
{
    std::array<double, 3> afUnit = {1, 1, 1};
    if (const std::string* pUnits = find(mapFields, {"spaceunits", "units"}))
    {
        std::vector<std::string> vecParts(1);
        for (const char c : *pUnits)
        {
            if (c == '"')
                vecParts.emplace_back();
            else
                vecParts.back() += c;
        }
        if (vecParts.size() != 7)
            return false;
        for (std::size_t n = 0; n < 3; ++n)
        {
            const std::string strUnit = lower(bare(vecParts[2 * n + 1]));
            static const std::map<std::string, double> mapUnits = {{"mm", 1.0},  {"millimeter", 1.0}, {"millimetre", 1.0}, {"m", 1000.0},
                                                                   {"cm", 10.0}, {"um", 0.001},       {"\xC2\xB5m", 0.001}};
            const auto it = mapUnits.find(strUnit);
            if (it == mapUnits.end())
                return false;
            afUnit[n] = it->second;
        }
    }
    std::vector<std::array<double, 3>> vecVectors;
    if (const std::string* pDirections = find(mapFields, {"spacedirections"}))
    {
        if (!vectors(*pDirections, 3, vecVectors))
            return false;
        std::copy(vecVectors.begin(), vecVectors.end(), volume.m_aafStep.begin());
    }
    else
    {
        std::vector<double> vecSpacing = {1, 1, 1};
        const std::string* pSpacings = find(mapFields, {"spacings"});
        if (pSpacings != nullptr && !numbers(*pSpacings, 3, vecSpacing))
            return false;
        for (std::size_t n = 0; n < 3; ++n)
            volume.m_aafStep[n][n] = vecSpacing[n];
    }
    if (const std::string* pOrigin = find(mapFields, {"spaceorigin"}))
    {
        if (!vectors(*pOrigin, 1, vecVectors))
            return false;
        volume.m_afOrigin = vecVectors[0];
    }
    for (std::size_t n = 0; n < 3; ++n)
    {
        volume.m_afOrigin[n] *= afUnit[n];
        for (auto& afStep : volume.m_aafStep)
            afStep[n] *= afUnit[n];
    }
    return isPlaced(volume);
}

std::string nrrdType(const std::string& strName)
{
    static const std::map<std::string, std::vector<std::string>> mapTypes = {
        {"i1", {"signed char", "int8", "int8_t"}},
        {"u1", {"uchar", "unsigned char", "uint8", "uint8_t"}},
        {"i2", {"short", "short int", "signed short", "signed short int", "int16", "int16_t"}},
        {"u2", {"ushort", "unsigned short", "unsigned short int", "uint16", "uint16_t"}},
        {"i4", {"int", "signed int", "int32", "int32_t"}},
        {"u4", {"uint", "unsigned int", "uint32", "uint32_t"}},
        {"i8", {"longlong", "long long", "long long int", "signed long long", "signed long long int", "int64", "int64_t"}},
        {"u8", {"ulonglong", "unsigned long long", "unsigned long long int", "uint64", "uint64_t"}},
        {"f4", {"float"}},
        {"f8", {"double"}}};
    for (const auto& [strType, vecNames] : mapTypes)
    {
        if (std::find(vecNames.begin(), vecNames.end(), lower(strName)) != vecNames.end())
            return strType;
    }
    return {};
}

bool readNrrd(const std::string& strFile, const std::string& strOther, SVolume& volume)
{
    Fields mapFields;
    SLine line = {};
    if (strFile.compare(0, 7, "NRRD000") != 0 || strFile.size() < 8 || strFile[7] < '1' || strFile[7] > '5' || !nextLine(strFile, 0, line))
        return false;
    std::size_t nBody = 0;
    while (nextLine(strFile, line.m_nNext, line))
    {
        const std::string strLine = strFile.substr(line.m_nBegin, line.m_nEnd - line.m_nBegin);
        nBody = line.m_nNext;
        if (strLine.empty())
            break;
        const std::size_t nColon = strLine.find(':');
        if (strLine[0] == '#' || (nColon != std::string::npos && strLine.compare(nColon, 2, ":=") == 0))
            continue;
        if (nColon == std::string::npos)
            return false;
        std::string strName = lower(strLine.substr(0, nColon));
        strName.erase(std::remove(strName.begin(), strName.end(), ' '), strName.end());
        if (!mapFields.emplace(strName, bare(strLine.substr(nColon + 1))).second)
            return false;
    }
    const std::string* pDimension = find(mapFields, {"dimension"});
    const std::string* pTypeName = find(mapFields, {"type"});
    const std::string strType = pTypeName != nullptr ? nrrdType(*pTypeName) : std::string();
    const std::string* pEndian = find(mapFields, {"endian"});
    const std::string* pEncoding = find(mapFields, {"encoding"});
    if (pDimension == nullptr || *pDimension != "3" || strType.empty() || !sizes(find(mapFields, {"sizes"}), volume) ||
        (strType[1] != '1' && (pEndian == nullptr || (lower(*pEndian) != "little" && lower(*pEndian) != "big"))) || pEncoding == nullptr)
        return false;
    const bool bBig = pEndian != nullptr && lower(*pEndian) == "big";
    const bool bPacked = lower(*pEncoding) == "gzip" || lower(*pEncoding) == "gz";
    const std::int64_t nBytes = bytesOf(volume, strType);
    if (!nrrdPlaces(mapFields, volume) || (!bPacked && lower(*pEncoding) != "raw") || nBytes == 0)
        return false;
    std::string strNumbers = strFile.substr(nBody);
    if (const std::string* pFile = find(mapFields, {"datafile"}))
    {
        if (isSeveral(lower(*pFile)))
            return false;
        strNumbers = strOther;
    }
    std::int64_t nLines = 0;
    std::int64_t nSkip = 0;
    const std::string* pLines = find(mapFields, {"lineskip"});
    const std::string* pBytes = find(mapFields, {"byteskip"});
    if ((pLines != nullptr && !whole(*pLines, nLines)) || nLines < 0 || (pBytes != nullptr && !whole(*pBytes, nSkip)) || nSkip < -1 ||
        (nSkip != 0 && bPacked))
        return false;
    for (; nLines > 0; --nLines)
    {
        const std::size_t nEnd = strNumbers.find('\n');
        if (nEnd == std::string::npos)
            return false;
        strNumbers.erase(0, nEnd + 1);
    }
    const auto nHeld = static_cast<std::int64_t>(strNumbers.size());
    nSkip = nSkip == -1 ? std::max<std::int64_t>(0, nHeld - nBytes) : nSkip;
    return nSkip <= nHeld && takeRest(strNumbers, static_cast<std::size_t>(nSkip), bPacked, strType, bBig, volume);
}

bool readNifti(const std::string& strFile, const std::string& strOther, SVolume& volume)
{
    const auto plain = [](const std::string& strBytes, std::int64_t nWanted, std::string& strOut)
    {
        bool bMore = false;
        strOut = strBytes;
        return !isGzip(strBytes) || unpack(strBytes, nWanted, strOut, bMore);
    };
    std::string strHeader;
    if (!plain(strFile, 348, strHeader) || strHeader.size() < 348)
        return false;
    const bool bBig = bits(strHeader, 0, 4, true) == 348;
    const bool bSingle = strHeader.compare(344, 4, std::string("n+1\0", 4)) == 0;
    const CNifti header(strHeader, bBig);
    const double fOffset = header.at(108, "f4");
    if ((!bBig && bits(strHeader, 0, 4, false) != 348) || (!bSingle && strHeader.compare(344, 4, std::string("ni1\0", 4)) != 0) ||
        !header.hasSoundSizes() || header.type().empty() || !(fOffset >= (bSingle ? 352.0 : 0.0) && fOffset <= 67108864.0) ||
        fOffset != std::floor(fOffset))
        return false;
    header.place(volume);
    const std::string strType = header.type();
    const std::int64_t nBytes = bytesOf(volume, strType);
    if ((!volume.m_bUnsure && !isPlaced(volume)) || nBytes == 0)
        return false;
    std::string strBytes;
    const auto nOffset = static_cast<std::int64_t>(fOffset);
    if (!plain(bSingle ? strFile : strOther, nOffset + nBytes, strBytes) || static_cast<std::int64_t>(strBytes.size()) < nOffset + nBytes)
        return false;
    const double fSlope = header.at(112, "f4");
    const double fIntercept = header.at(116, "f4");
    const bool bScaled = fSlope != 0.0 && std::isfinite(fSlope);
    return (!bScaled || std::isfinite(fIntercept)) &&
           takeNumbers(strBytes.substr(static_cast<std::size_t>(nOffset), static_cast<std::size_t>(nBytes)), strType, bBig,
                       bScaled ? decimal(fSlope) : 1.0, bScaled ? decimal(fIntercept) : 0.0, volume);
}

SVolume read(bool (*fnRead)(const std::string&, const std::string&, SVolume&), const std::string& strFile, const std::string& strOther)
{
    SVolume volume;
    volume.m_bSound = fnRead(strFile, strOther, volume);
    return volume;
}
} // namespace

namespace PlainFormats
{
SVolume nifti(const std::string& strFile, const std::string& strOther)
{
    return read(readNifti, strFile, strOther);
}

SVolume metaImage(const std::string& strFile, const std::string& strOther)
{
    return read(readMetaImage, strFile, strOther);
}

SVolume nrrd(const std::string& strFile, const std::string& strOther)
{
    return read(readNrrd, strFile, strOther);
}
} // namespace PlainFormats
