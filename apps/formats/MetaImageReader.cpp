#include "TextLines.h"
#include "VolumeHeader.h"
#include "VolumeParts.h"

#include <initializer_list>

namespace
{
using Names = std::initializer_list<const char*>;

/// A key may have several names; the first one that is there counts.
const SVolumeHeader::SField* find(const SVolumeHeader& header, Names lstNames)
{
    for (const char* pName : lstNames)
    {
        if (const SVolumeHeader::SField* pField = header.find(pName))
            return pField;
    }
    return nullptr;
}

bool isTrue(const SVolumeHeader& header, Names lstNames)
{
    const SVolumeHeader::SField* pField = find(header, lstNames);
    return pField != nullptr && (OpenText::isSameIgnoringCase(pField->m_strValue, "true") || pField->m_strValue == "1");
}

/// The lines "Key = Value" up to the one that says where the numbers are.
QString readHeader(const QByteArray& baContent, SVolumeHeader& header)
{
    CTextLines lines(VolumeHeader::textOf(baContent));
    std::string_view strLine;
    while (lines.next(strLine))
    {
        const std::size_t nEquals = strLine.find('=');
        if (OpenText::trimmed(strLine).empty())
            continue;
        if (nEquals == std::string_view::npos)
            return OpenText::atLine(lines.number(), QStringLiteral("\"%1\" is no \"key = value\"").arg(OpenText::shown(strLine)));
        const QString strKey = VolumeParts::nameOf(OpenText::trimmed(strLine.substr(0, nEquals))).toLower();
        header.m_mapFields.insert(strKey, {OpenText::trimmed(strLine.substr(nEquals + 1)), lines.number()});
        if (strKey == QLatin1String("elementdatafile"))
        {
            header.m_nBodyAt = lines.position();
            return {};
        }
    }
    return OpenText::atLine(lines.number(), QStringLiteral("the header has no \"ElementDataFile\""));
}

bool scalarOf(std::string_view strName, EScalar& eType)
{
    struct SName
    {
        const char* m_pName;
        EScalar m_eType;
    };
    static constexpr SName aNames[] = {
        {"MET_CHAR", EScalar::Int8},         {"MET_UCHAR", EScalar::UInt8},  {"MET_SHORT", EScalar::Int16},
        {"MET_USHORT", EScalar::UInt16},     {"MET_INT", EScalar::Int32},    {"MET_UINT", EScalar::UInt32},
        {"MET_LONG", EScalar::Int32},        {"MET_ULONG", EScalar::UInt32}, {"MET_LONG_LONG", EScalar::Int64},
        {"MET_ULONG_LONG", EScalar::UInt64}, {"MET_FLOAT", EScalar::Float},  {"MET_DOUBLE", EScalar::Double}};
    for (const SName& name : aNames)
    {
        if (strName == name.m_pName)
        {
            eType = name.m_eType;
            return true;
        }
    }
    return false;
}

/// Sizes, spacing, directions and origin.
QString readGrid(const SVolumeHeader& header, SOpenVolume& volume)
{
    std::vector<double> vecNumbers;
    QString strProblem =
        VolumeHeader::readSizes(header, "dimsize", QStringLiteral("three numbers of voxels are needed as \"DimSize\""), volume);
    if (!strProblem.isEmpty())
        return strProblem;
    const auto read = [&](Names lstNames, std::vector<double> vecDefault)
    {
        const SVolumeHeader::SField* pEntry = find(header, lstNames);
        if (pEntry == nullptr)
            return vecDefault;
        if (!VolumeParts::numbers(pEntry->m_strValue, vecDefault.size(), vecNumbers))
            strProblem = OpenText::atLine(pEntry->m_nLine, QStringLiteral("%1 numbers are needed").arg(vecDefault.size()));
        return vecNumbers;
    };
    if (find(header, {"elementspacing", "elementsize"}) == nullptr)
        volume.m_lstNotes.append(QStringLiteral("The volume names no spacing: 1 mm was taken."));
    const std::vector<double> vecSpacing = read({"elementspacing", "elementsize"}, {1, 1, 1});
    const std::vector<double> vecOrigin = read({"offset", "position", "origin"}, {0, 0, 0});
    const std::vector<double> vecTurn = read({"transformmatrix", "rotation", "orientation"}, {1, 0, 0, 0, 1, 0, 0, 0, 1});
    if (!strProblem.isEmpty())
        return strProblem;
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        volume.m_vecOrigin[nAxis] = vecOrigin[nAxis];
        for (std::size_t n = 0; n < 3; ++n)
            volume.m_avecStep[nAxis][n] = vecSpacing[nAxis] * vecTurn[3 * nAxis + n];
    }
    volume.m_eSpace = ESpace::LPS;
    strProblem = VolumeParts::problemOfGrid(volume);
    return strProblem.isEmpty() ? QString() : header.at("dimsize", strProblem);
}

/// What cannot be read although it is MetaImage.
QString problemOfKind(const SVolumeHeader& header)
{
    const auto is = [&](const char* pKey, const char* pValue)
    {
        const SVolumeHeader::SField* pEntry = header.find(pKey);
        return pEntry == nullptr || OpenText::isSameIgnoringCase(pEntry->m_strValue, pValue);
    };
    if (header.find("ndims") == nullptr || !is("ndims", "3"))
        return QStringLiteral("line 1: \"NDims\" is not 3");
    if (!is("objecttype", "Image"))
        return QStringLiteral("line 1: \"ObjectType\" is not Image");
    if (!is("elementnumberofchannels", "1"))
        return QStringLiteral("line 1: \"ElementNumberOfChannels\" is not 1");
    if (header.find("binarydata") != nullptr && !isTrue(header, {"binarydata"}))
        return QStringLiteral("line 1: numbers as text are not read");
    return {};
}
} // namespace

QString VolumeReaders::readMetaImage(const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume)
{
    volume = SOpenVolume();
    SVolumeHeader header;
    QString strProblem = readHeader(baContent, header);
    if (strProblem.isEmpty())
        strProblem = problemOfKind(header);
    if (strProblem.isEmpty())
        strProblem = readGrid(header, volume);
    if (!strProblem.isEmpty())
        return strProblem;
    const SVolumeHeader::SField* pType = header.find("elementtype");
    if (pType == nullptr || !scalarOf(pType->m_strValue, volume.m_eType))
        return header.at("elementtype", QStringLiteral("the type of the numbers is not known"));
    volume.m_bBigEndian = isTrue(header, {"binarydatabyteordermsb", "elementbyteordermsb"});

    QByteArray baNumbers = baContent;
    qint64 nAt = header.m_nBodyAt;
    if (!OpenText::isSameIgnoringCase(header.find("elementdatafile")->m_strValue, "local"))
        strProblem = VolumeHeader::openFile(header, "elementdatafile", fnSibling, baNumbers, nAt);
    if (!strProblem.isEmpty())
        return strProblem;
    const bool bCompressed = isTrue(header, {"compresseddata"});
    qint64 nSkip = 0;
    qint64 nBytes = 0;
    const SVolumeHeader::SField* pSkip = header.find("headersize");
    if (pSkip != nullptr && !OpenText::toInteger(pSkip->m_strValue, nSkip))
        return header.at("headersize", QStringLiteral("\"%1\" is no number of bytes").arg(OpenText::shown(pSkip->m_strValue)));
    if (!VolumeParts::bytesOf(volume, nBytes, strProblem))
        return header.at("dimsize", strProblem);
    strProblem = VolumeHeader::passOver(nSkip, bCompressed, nBytes, baNumbers, nAt);
    if (!strProblem.isEmpty())
        return header.at("headersize", strProblem);
    return VolumeHeader::takeNumbers(baNumbers, nAt, bCompressed, volume);
}
