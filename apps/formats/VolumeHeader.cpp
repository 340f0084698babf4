#include "VolumeHeader.h"

#include "TextLines.h"
#include "VolumeParts.h"

#include <vector>

namespace
{
constexpr qint64 nMostHeaderBytes = 1048576;
} // namespace

const SVolumeHeader::SField* SVolumeHeader::find(const char* pName) const
{
    const auto it = m_mapFields.constFind(QLatin1String(pName));
    return it != m_mapFields.constEnd() ? &it.value() : nullptr;
}

QString SVolumeHeader::at(const char* pName, const QString& strReason) const
{
    const SField* pField = find(pName);
    return OpenText::atLine(pField != nullptr ? pField->m_nLine : m_nLines, strReason);
}

std::string_view VolumeHeader::textOf(const QByteArray& baContent)
{
    return {baContent.constData(), static_cast<std::size_t>(qMin<qint64>(baContent.size(), nMostHeaderBytes))};
}

QString VolumeHeader::readSizes(const SVolumeHeader& header, const char* pName, const QString& strNotThree, SOpenVolume& volume)
{
    const SVolumeHeader::SField* pSizes = header.find(pName);
    std::vector<std::string_view> vecWords;
    if (pSizes != nullptr)
        OpenText::split(pSizes->m_strValue, vecWords);
    if (vecWords.size() != 3)
        return header.at(pName, strNotThree);
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        if (!OpenText::toInteger(vecWords[nAxis], volume.m_anSize[nAxis]))
            return header.at(pName, QStringLiteral("\"%1\" is no number of voxels").arg(OpenText::shown(vecWords[nAxis])));
    }
    return {};
}

QString VolumeHeader::openFile(const SVolumeHeader& header, const char* pName, const VolumeReaders::FnSibling& fnSibling,
                               QByteArray& baNumbers, qint64& nAt)
{
    const SVolumeHeader::SField* pFile = header.find(pName);
    const std::string_view strFile = pFile != nullptr ? pFile->m_strValue : std::string_view();
    // "LIST", which a number may follow, and a pattern of names stand for several; a file may have a name that begins like that.
    const std::string_view strWord = strFile.substr(0, strFile.find_first_of(" \t"));
    if (OpenText::isSameIgnoringCase(strWord, "list") || strFile.find('%') != std::string_view::npos)
        return header.at(pName, QStringLiteral("numbers in several files are not read"));
    nAt = 0;
    const QString strProblem = fnSibling(VolumeParts::nameOf(strFile), baNumbers);
    return strProblem.isEmpty() ? QString() : header.at(pName, strProblem);
}

QString VolumeHeader::passOver(qint64 nSkip, bool bCompressed, qint64 nBytes, const QByteArray& baNumbers, qint64& nAt)
{
    const qint64 nHeld = baNumbers.size() - nAt;
    const qint64 nOver = nSkip == -1 && !bCompressed ? qMax<qint64>(0, nHeld - nBytes) : nSkip;
    if (nOver < 0 || nOver > nHeld)
        return QStringLiteral("the numbers would begin outside the file");
    nAt += nOver;
    return {};
}

QString VolumeHeader::takeNumbers(const QByteArray& baNumbers, qint64 nAt, bool bCompressed, SOpenVolume& volume)
{
    const QString strProblem = VolumeParts::takeValues(baNumbers, nAt, bCompressed, false, volume);
    return strProblem.isEmpty() ? QString() : QStringLiteral("byte %1 of the numbers: %2").arg(nAt).arg(strProblem);
}
