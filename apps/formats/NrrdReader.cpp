#include "TextLines.h"
#include "VolumeHeader.h"
#include "VolumeParts.h"

namespace
{
/// The fields by their names, blanks left out of them.
QString readHeader(const QByteArray& baContent, SVolumeHeader& header)
{
    CTextLines lines(VolumeHeader::textOf(baContent));
    std::string_view strLine;
    if (!lines.next(strLine) || strLine.substr(0, 7) != "NRRD000" || strLine.size() < 8 || strLine[7] < '1' || strLine[7] > '5')
        return OpenText::atLine(1, QStringLiteral("the file does not begin like NRRD 1 to 5"));
    while (lines.next(strLine))
    {
        header.m_nBodyAt = lines.position();
        header.m_nLines = lines.number();
        if (strLine.empty())
            return {};
        const std::size_t nColon = strLine.find(':');
        if (strLine[0] == '#' || (nColon != std::string_view::npos && strLine.substr(nColon, 2) == ":="))
            continue;
        if (nColon == std::string_view::npos)
            return OpenText::atLine(lines.number(), QStringLiteral("\"%1\" is no field").arg(OpenText::shown(strLine)));
        const QString strName = VolumeParts::nameOf(strLine.substr(0, nColon)).toLower().remove(QLatin1Char(' '));
        if (header.m_mapFields.contains(strName))
            return OpenText::atLine(lines.number(),
                                    QStringLiteral("the field \"%1\" occurs twice").arg(OpenText::shown(strLine.substr(0, nColon))));
        header.m_mapFields.insert(strName, {OpenText::trimmed(strLine.substr(nColon + 1)), lines.number()});
    }
    return {}; // a header of its own may end without an empty line
}

bool scalarOf(std::string_view strName, EScalar& eType)
{
    struct SNames
    {
        EScalar m_eType;
        std::vector<const char*> m_vecNames;
    };
    static const std::vector<SNames> vecTypes = {
        {EScalar::Int8, {"signed char", "int8", "int8_t"}},
        {EScalar::UInt8, {"uchar", "unsigned char", "uint8", "uint8_t"}},
        {EScalar::Int16, {"short", "short int", "signed short", "signed short int", "int16", "int16_t"}},
        {EScalar::UInt16, {"ushort", "unsigned short", "unsigned short int", "uint16", "uint16_t"}},
        {EScalar::Int32, {"int", "signed int", "int32", "int32_t"}},
        {EScalar::UInt32, {"uint", "unsigned int", "uint32", "uint32_t"}},
        {EScalar::Int64, {"longlong", "long long", "long long int", "signed long long", "signed long long int", "int64", "int64_t"}},
        {EScalar::UInt64, {"ulonglong", "unsigned long long", "unsigned long long int", "uint64", "uint64_t"}},
        {EScalar::Float, {"float"}},
        {EScalar::Double, {"double"}}};
    for (const SNames& names : vecTypes)
    {
        for (const char* pName : names.m_vecNames)
        {
            if (OpenText::isSameIgnoringCase(strName, pName))
            {
                eType = names.m_eType;
                return true;
            }
        }
    }
    return false;
}

/// "(1,0,0) (0,1,0) (0,0,1)": vectors of three numbers each.
bool vectors(std::string_view strText, std::size_t nVectors, std::vector<SOpenVolume::Vector>& vecVectors)
{
    vecVectors.clear();
    while (!(strText = OpenText::trimmed(strText)).empty())
    {
        const std::size_t nEnd = strText.find(')');
        if (strText.front() != '(' || nEnd == std::string_view::npos || vecVectors.size() == nVectors)
            return false;
        std::string strInside(strText.substr(1, nEnd - 1));
        std::size_t nCommas = 0;
        for (char& c : strInside)
        {
            nCommas += c == ',' ? 1 : 0;
            c = c == ',' ? ' ' : c;
        }
        std::vector<double> vecNumbers;
        if (nCommas != 2 || !VolumeParts::numbers(strInside, 3, vecNumbers))
            return false;
        vecVectors.push_back({vecNumbers[0], vecNumbers[1], vecNumbers[2]});
        strText.remove_prefix(nEnd + 1);
    }
    return vecVectors.size() == nVectors;
}

/// Millimetres of each axis of the space; words in quotation marks.
QString readUnits(const SVolumeHeader& header, std::array<double, 3>& afUnit, SOpenVolume& volume)
{
    const bool bSpace = header.find("spaceunits") != nullptr;
    const char* pName = bSpace ? "spaceunits" : "units";
    const SVolumeHeader::SField* pField = header.find(pName);
    afUnit = {1.0, 1.0, 1.0};
    if (pField == nullptr)
    {
        volume.m_lstNotes.append(QStringLiteral("The volume names no unit of length: millimetres were taken."));
        return {};
    }
    QStringList lstUnits = VolumeParts::nameOf(pField->m_strValue).split(QLatin1Char('"'));
    if (lstUnits.size() != 7)
        return header.at(pName, QStringLiteral("three units in quotation marks are needed"));
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        const QString strUnit = lstUnits.at(2 * static_cast<int>(nAxis) + 1).trimmed().toLower();
        if (strUnit == QLatin1String("mm") || strUnit == QLatin1String("millimeter") || strUnit == QLatin1String("millimetre"))
            continue;
        afUnit[nAxis] = strUnit == QLatin1String("m")                                                 ? 1000.0
                        : strUnit == QLatin1String("cm")                                              ? 10.0
                        : strUnit == QLatin1String("um") || strUnit == QString::fromUtf8("\xC2\xB5m") ? 0.001
                                                                                                      : 0.0;
        if (afUnit[nAxis] == 0.0)
            return header.at(pName,
                             QStringLiteral("the unit \"%1\" is none of m, cm, mm and um").arg(OpenText::shown(strUnit.toStdString())));
    }
    if (afUnit != std::array<double, 3>{1.0, 1.0, 1.0})
        volume.m_lstNotes.append(QStringLiteral("Lengths of the volume were brought to millimetres."));
    return {};
}

QString readSpace(const SVolumeHeader& header, SOpenVolume& volume)
{
    const SVolumeHeader::SField* pSpace = header.find("space");
    if (pSpace == nullptr)
        return {};
    struct SName
    {
        const char* m_pName;
        const char* m_pShort;
        ESpace m_eSpace;
    };
    static constexpr SName aNames[] = {{"right-anterior-superior", "RAS", ESpace::RAS},
                                       {"left-anterior-superior", "LAS", ESpace::LAS},
                                       {"left-posterior-superior", "LPS", ESpace::LPS}};
    for (const SName& name : aNames)
    {
        if (OpenText::isSameIgnoringCase(pSpace->m_strValue, name.m_pName) ||
            OpenText::isSameIgnoringCase(pSpace->m_strValue, name.m_pShort))
            volume.m_eSpace = name.m_eSpace;
    }
    return {};
}

QString readPlaces(const SVolumeHeader& header, SOpenVolume& volume)
{
    std::array<double, 3> afUnit = {};
    QString strProblem = readUnits(header, afUnit, volume);
    if (strProblem.isEmpty())
        strProblem = readSpace(header, volume);
    if (!strProblem.isEmpty())
        return strProblem;
    std::vector<SOpenVolume::Vector> vecVectors;
    if (const SVolumeHeader::SField* pDirections = header.find("spacedirections"))
    {
        if (!vectors(pDirections->m_strValue, 3, vecVectors))
            return header.at("spacedirections", QStringLiteral("three vectors of three numbers are needed"));
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            volume.m_avecStep[nAxis] = vecVectors[nAxis];
    }
    else
    {
        std::vector<double> vecSpacing = {1.0, 1.0, 1.0};
        const SVolumeHeader::SField* pSpacing = header.find("spacings");
        if (pSpacing == nullptr)
            volume.m_lstNotes.append(QStringLiteral("The volume names no spacing: 1 was taken."));
        else if (!VolumeParts::numbers(pSpacing->m_strValue, 3, vecSpacing))
            return header.at("spacings", QStringLiteral("three numbers are needed"));
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            volume.m_avecStep[nAxis][nAxis] = vecSpacing[nAxis];
    }
    if (const SVolumeHeader::SField* pOrigin = header.find("spaceorigin"))
    {
        if (!vectors(pOrigin->m_strValue, 1, vecVectors))
            return header.at("spaceorigin", QStringLiteral("a vector of three numbers is needed"));
        volume.m_vecOrigin = vecVectors[0];
    }
    else
        volume.m_lstNotes.append(QStringLiteral("The volume says nothing of its place: its first voxel was put at 0, 0, 0."));
    for (std::size_t n = 0; n < 3; ++n)
    {
        volume.m_vecOrigin[n] *= afUnit[n];
        for (SOpenVolume::Vector& vecStep : volume.m_avecStep)
            vecStep[n] *= afUnit[n];
    }
    strProblem = VolumeParts::problemOfGrid(volume);
    return strProblem.isEmpty() ? QString() : header.at("sizes", strProblem);
}

QString readType(const SVolumeHeader& header, SOpenVolume& volume)
{
    const SVolumeHeader::SField* pDimension = header.find("dimension");
    if (pDimension == nullptr || pDimension->m_strValue != "3")
        return header.at("dimension", QStringLiteral("the dimension is not 3"));
    const SVolumeHeader::SField* pType = header.find("type");
    if (pType == nullptr || !scalarOf(pType->m_strValue, volume.m_eType))
        return header.at("type", QStringLiteral("the type of the numbers is not known"));
    const QString strProblem = VolumeHeader::readSizes(header, "sizes", QStringLiteral("three sizes are needed"), volume);
    if (!strProblem.isEmpty())
        return strProblem;
    const SVolumeHeader::SField* pEndian = header.find("endian");
    volume.m_bBigEndian = pEndian != nullptr && OpenText::isSameIgnoringCase(pEndian->m_strValue, "big");
    if (!volume.m_bBigEndian && ScalarBytes::size(volume.m_eType) > 1 &&
        (pEndian == nullptr || !OpenText::isSameIgnoringCase(pEndian->m_strValue, "little")))
        return header.at("endian", QStringLiteral("the byte order is neither little nor big"));
    return {};
}

/// A number of lines or bytes to be passed over before the numbers; 0 where there is none.
bool skipOf(const SVolumeHeader& header, const char* pName, qint64& nSkip)
{
    const SVolumeHeader::SField* pField = header.find(pName);
    nSkip = 0;
    return pField == nullptr || OpenText::toInteger(pField->m_strValue, nSkip);
}

/// Where the numbers begin in their file.
QString findNumbers(const SVolumeHeader& header, const QByteArray& baNumbers, bool bCompressed, qint64 nBytes, qint64& nAt)
{
    qint64 nLines = 0;
    qint64 nSkip = 0;
    if (!skipOf(header, "lineskip", nLines) || nLines < 0)
        return header.at("lineskip", QStringLiteral("this is no number of lines"));
    if (!skipOf(header, "byteskip", nSkip) || nSkip < -1 || (nSkip != 0 && bCompressed))
        return header.at("byteskip", QStringLiteral("this is no number of bytes that can be passed over"));
    for (; nLines > 0; --nLines)
    {
        const int nEnd = baNumbers.indexOf('\n', static_cast<int>(nAt));
        if (nEnd < 0)
            return header.at("lineskip", QStringLiteral("the file has fewer lines"));
        nAt = nEnd + 1;
    }
    const QString strProblem = VolumeHeader::passOver(nSkip, bCompressed, nBytes, baNumbers, nAt);
    return strProblem.isEmpty() ? QString() : header.at("byteskip", strProblem);
}
} // namespace

QString VolumeReaders::readNrrd(const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume)
{
    volume = SOpenVolume();
    SVolumeHeader header;
    QString strProblem = readHeader(baContent, header);
    if (strProblem.isEmpty())
        strProblem = readType(header, volume);
    if (strProblem.isEmpty())
        strProblem = readPlaces(header, volume);
    if (!strProblem.isEmpty())
        return strProblem;
    const SVolumeHeader::SField* pEncoding = header.find("encoding");
    const std::string_view strEncoding = pEncoding != nullptr ? pEncoding->m_strValue : std::string_view();
    const bool bCompressed = OpenText::isSameIgnoringCase(strEncoding, "gzip") || OpenText::isSameIgnoringCase(strEncoding, "gz");
    if (!bCompressed && !OpenText::isSameIgnoringCase(strEncoding, "raw"))
        return header.at("encoding", QStringLiteral("the encoding is neither raw nor gzip"));
    qint64 nBytes = 0;
    if (!VolumeParts::bytesOf(volume, nBytes, strProblem))
        return header.at("sizes", strProblem);

    QByteArray baNumbers = baContent;
    qint64 nAt = header.m_nBodyAt;
    if (header.find("datafile") != nullptr)
        strProblem = VolumeHeader::openFile(header, "datafile", fnSibling, baNumbers, nAt);
    if (strProblem.isEmpty())
        strProblem = findNumbers(header, baNumbers, bCompressed, nBytes, nAt);
    return strProblem.isEmpty() ? VolumeHeader::takeNumbers(baNumbers, nAt, bCompressed, volume) : strProblem;
}
