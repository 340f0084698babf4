#include "TextLines.h"
#include "VolumeParts.h"

#include <QMap>

namespace
{
constexpr qint64 nMostHeaderBytes = 1048576;

/// The lines "Key = Value" up to the one that says where the numbers are.
struct SHeader
{
    struct SEntry
    {
        std::string_view m_strValue;
        qint64 m_nLine = 0;
    };
    QMap<QString, SEntry> m_mapEntries; ///< by the key in lower case
    qint64 m_nBodyAt = 0;               ///< first byte behind the header

    const SEntry* find(std::initializer_list<const char*> lstKeys) const
    {
        for (const char* pKey : lstKeys)
        {
            const auto it = m_mapEntries.constFind(QLatin1String(pKey));
            if (it != m_mapEntries.constEnd())
                return &it.value();
        }
        return nullptr;
    }
    bool isTrue(std::initializer_list<const char*> lstKeys) const
    {
        const SEntry* pEntry = find(lstKeys);
        return pEntry != nullptr && (OpenText::isSameIgnoringCase(pEntry->m_strValue, "true") || pEntry->m_strValue == "1");
    }
};

QString readHeader(const QByteArray& baContent, SHeader& header)
{
    CTextLines lines(std::string_view(baContent.constData(), static_cast<std::size_t>(qMin<qint64>(baContent.size(), nMostHeaderBytes))));
    std::string_view strLine;
    while (lines.next(strLine))
    {
        const std::size_t nEquals = strLine.find('=');
        if (OpenText::trimmed(strLine).empty())
            continue;
        if (nEquals == std::string_view::npos)
            return OpenText::atLine(lines.number(), QStringLiteral("\"%1\" is no \"key = value\"").arg(OpenText::shown(strLine)));
        const QString strKey = VolumeParts::nameOf(OpenText::trimmed(strLine.substr(0, nEquals))).toLower();
        header.m_mapEntries.insert(strKey, {OpenText::trimmed(strLine.substr(nEquals + 1)), lines.number()});
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
QString readGrid(const SHeader& header, SOpenVolume& volume)
{
    std::vector<double> vecNumbers;
    const SHeader::SEntry* pSize = header.find({"dimsize"});
    std::vector<std::string_view> vecWords;
    if (pSize != nullptr)
        OpenText::split(pSize->m_strValue, vecWords);
    if (vecWords.size() != 3)
        return OpenText::atLine(pSize != nullptr ? pSize->m_nLine : 1, QStringLiteral("three numbers of voxels are needed as \"DimSize\""));
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        if (!OpenText::toInteger(vecWords[nAxis], volume.m_anSize[nAxis]))
            return OpenText::atLine(pSize->m_nLine, QStringLiteral("\"%1\" is no number of voxels").arg(OpenText::shown(vecWords[nAxis])));
    }
    const auto read = [&](std::initializer_list<const char*> lstKeys, std::vector<double> vecDefault, QString& strProblem)
    {
        const SHeader::SEntry* pEntry = header.find(lstKeys);
        if (pEntry == nullptr)
            return vecDefault;
        if (!VolumeParts::numbers(pEntry->m_strValue, vecDefault.size(), vecNumbers))
            strProblem = OpenText::atLine(pEntry->m_nLine, QStringLiteral("%1 numbers are needed").arg(vecDefault.size()));
        return vecNumbers;
    };
    QString strProblem;
    if (header.find({"elementspacing", "elementsize"}) == nullptr)
        volume.m_lstNotes.append(QStringLiteral("The volume names no spacing: 1 mm was taken."));
    const std::vector<double> vecSpacing = read({"elementspacing", "elementsize"}, {1, 1, 1}, strProblem);
    const std::vector<double> vecOrigin = read({"offset", "position", "origin"}, {0, 0, 0}, strProblem);
    const std::vector<double> vecTurn = read({"transformmatrix", "rotation", "orientation"}, {1, 0, 0, 0, 1, 0, 0, 0, 1}, strProblem);
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
    return strProblem.isEmpty() ? QString() : OpenText::atLine(pSize->m_nLine, strProblem);
}

/// What cannot be read although it is MetaImage.
QString problemOfKind(const SHeader& header)
{
    const auto is = [&](const char* pKey, const char* pValue)
    {
        const SHeader::SEntry* pEntry = header.find({pKey});
        return pEntry == nullptr || OpenText::isSameIgnoringCase(pEntry->m_strValue, pValue);
    };
    if (header.find({"ndims"}) == nullptr || !is("ndims", "3"))
        return QStringLiteral("line 1: \"NDims\" is not 3");
    if (!is("objecttype", "Image"))
        return QStringLiteral("line 1: \"ObjectType\" is not Image");
    if (!is("elementnumberofchannels", "1"))
        return QStringLiteral("line 1: \"ElementNumberOfChannels\" is not 1");
    if (header.find({"binarydata"}) != nullptr && !header.isTrue({"binarydata"}))
        return QStringLiteral("line 1: numbers as text are not read");
    return {};
}
} // namespace

QString VolumeReaders::readMetaImage(const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume)
{
    volume = SOpenVolume();
    SHeader header;
    QString strProblem = readHeader(baContent, header);
    if (strProblem.isEmpty())
        strProblem = problemOfKind(header);
    if (strProblem.isEmpty())
        strProblem = readGrid(header, volume);
    if (!strProblem.isEmpty())
        return strProblem;
    const SHeader::SEntry* pType = header.find({"elementtype"});
    if (pType == nullptr || !scalarOf(pType->m_strValue, volume.m_eType))
        return OpenText::atLine(pType != nullptr ? pType->m_nLine : 1, QStringLiteral("the type of the numbers is not known"));
    volume.m_bBigEndian = header.isTrue({"binarydatabyteordermsb", "elementbyteordermsb"});

    const SHeader::SEntry* pFile = header.find({"elementdatafile"});
    const std::string_view strFile = pFile->m_strValue;
    if (OpenText::isSameIgnoringCase(strFile.substr(0, 4), "list") || strFile.find('%') != std::string_view::npos)
        return OpenText::atLine(pFile->m_nLine, QStringLiteral("numbers in several files are not read"));
    QByteArray baNumbers = baContent;
    qint64 nAt = header.m_nBodyAt;
    if (!OpenText::isSameIgnoringCase(strFile, "local"))
    {
        nAt = 0;
        strProblem = fnSibling(VolumeParts::nameOf(strFile), baNumbers);
        if (!strProblem.isEmpty())
            return OpenText::atLine(pFile->m_nLine, strProblem);
    }
    const bool bCompressed = header.isTrue({"compresseddata"});
    qint64 nSkip = 0;
    qint64 nBytes = 0;
    const SHeader::SEntry* pSkip = header.find({"headersize"});
    if (pSkip != nullptr && !OpenText::toInteger(pSkip->m_strValue, nSkip))
        return OpenText::atLine(pSkip->m_nLine, QStringLiteral("\"%1\" is no number of bytes").arg(OpenText::shown(pSkip->m_strValue)));
    if (!VolumeParts::bytesOf(volume, nBytes, strProblem))
        return OpenText::atLine(header.find({"dimsize"})->m_nLine, strProblem);
    if (nSkip == -1 && !bCompressed) // the numbers are what the file ends with
        nSkip = qMax<qint64>(0, baNumbers.size() - nAt - nBytes);
    if (nSkip < 0 || nSkip > baNumbers.size() - nAt)
        return OpenText::atLine(pSkip->m_nLine, QStringLiteral("the numbers would begin outside the file"));
    strProblem = VolumeParts::takeValues(baNumbers, nAt + nSkip, bCompressed, false, volume);
    return strProblem.isEmpty() ? QString() : QStringLiteral("byte %1 of the numbers: %2").arg(nAt + nSkip).arg(strProblem);
}
