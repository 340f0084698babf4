#include "TextLines.h"
#include "VolumeParts.h"

#include <nifti1_io.h>

#include <cmath>
#include <memory>

namespace
{
static_assert(sizeof(nifti_1_header) == 348);

constexpr qint64 nHeaderBytes = 348;
constexpr int nSingleFileOffset = 352; ///< header, and whether extensions follow
constexpr int nSizeOfNifti2 = 540;
constexpr float fMostOffset = 67108864.0F; ///< bytes before the numbers: header and extensions

/// The library's description of an image, which goes away with the object.
using ImagePointer = std::unique_ptr<nifti_image, decltype(&nifti_image_free)>;

QString atByte(int nByte, const QString& strReason)
{
    return QStringLiteral("byte %1: %2").arg(nByte).arg(strReason);
}

bool scalarOf(int nType, EScalar& eType)
{
    switch (nType)
    {
    case NIFTI_TYPE_INT8:
        eType = EScalar::Int8;
        return true;
    case NIFTI_TYPE_UINT8:
        eType = EScalar::UInt8;
        return true;
    case NIFTI_TYPE_INT16:
        eType = EScalar::Int16;
        return true;
    case NIFTI_TYPE_UINT16:
        eType = EScalar::UInt16;
        return true;
    case NIFTI_TYPE_INT32:
        eType = EScalar::Int32;
        return true;
    case NIFTI_TYPE_UINT32:
        eType = EScalar::UInt32;
        return true;
    case NIFTI_TYPE_INT64:
        eType = EScalar::Int64;
        return true;
    case NIFTI_TYPE_UINT64:
        eType = EScalar::UInt64;
        return true;
    case NIFTI_TYPE_FLOAT32:
        eType = EScalar::Float;
        return true;
    case NIFTI_TYPE_FLOAT64:
        eType = EScalar::Double;
        return true;
    default:
        return false;
    }
}

/// Everything that the library would believe, or complain about on the terminal. The header is in the machine's byte order.
QString problemOf(const nifti_1_header& header)
{
    if (header.dim[0] < 1 || header.dim[0] > 7)
        return atByte(40, QStringLiteral("%1 dimensions").arg(header.dim[0]));
    for (int nAxis = 1; nAxis <= header.dim[0]; ++nAxis)
    {
        if (header.dim[nAxis] < 1)
            return atByte(40 + 2 * nAxis, QStringLiteral("a size of %1 voxels").arg(header.dim[nAxis]));
        if (nAxis > 3 && header.dim[nAxis] != 1)
            return atByte(40 + 2 * nAxis, QStringLiteral("%1 numbers per voxel, of which only one can be read").arg(header.dim[nAxis]));
        if (nAxis <= 3 && (!std::isfinite(header.pixdim[nAxis]) || header.pixdim[nAxis] == 0.0F))
            return atByte(76 + 4 * nAxis, QStringLiteral("the spacing is no length"));
    }
    // The library takes 0 for it. A slope that is no number is how some programs say that there is no scale.
    if (std::isfinite(header.scl_slope) && header.scl_slope != 0.0F && !std::isfinite(header.scl_inter))
        return atByte(116, QStringLiteral("what is to be added to the numbers is not finite"));
    EScalar eType = EScalar::Float;
    if (!scalarOf(header.datatype, eType))
        return atByte(70, QStringLiteral("the type %1 is no plain number").arg(header.datatype));
    const float fOffset = header.vox_offset;
    if (!(fOffset >= 0.0F && fOffset <= fMostOffset) || fOffset != std::floor(fOffset))
        return atByte(108, QStringLiteral("the numbers begin at no byte of a file"));
    return {};
}

double millimetresOf(int nUnit, SOpenVolume& volume)
{
    if (nUnit == NIFTI_UNITS_METER || nUnit == NIFTI_UNITS_MICRON)
    {
        volume.m_lstNotes.append(QStringLiteral("Lengths of the volume in %1 were brought to millimetres.")
                                     .arg(nUnit == NIFTI_UNITS_METER ? QLatin1String("metres") : QLatin1String("micrometres")));
        return nUnit == NIFTI_UNITS_METER ? 1000.0 : 0.001;
    }
    if (nUnit != NIFTI_UNITS_MM)
        volume.m_lstNotes.append(QStringLiteral("The volume names no unit of length: millimetres were taken."));
    return 1.0;
}

/// Where the voxels lie, by the best that the header says.
void placeVoxels(const nifti_image& image, SOpenVolume& volume)
{
    const bool bSform = image.sform_code > 0;
    const mat44& matrix = bSform ? image.sto_xyz : image.qto_xyz;
    const double fLength = millimetresOf(image.xyz_units, volume);
    for (std::size_t nRow = 0; nRow < 3; ++nRow)
    {
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            volume.m_avecStep[nAxis][nRow] = fLength * OpenText::decimalOf(matrix.m[nRow][nAxis]);
        volume.m_vecOrigin[nRow] = fLength * OpenText::decimalOf(matrix.m[nRow][3]);
    }
    if (bSform || image.qform_code > 0)
        volume.m_eSpace = ESpace::RAS;
    else
        volume.m_lstNotes.append(QStringLiteral("The volume says nothing of its place: its first voxel was put at 0, 0, 0."));
}

/// The file with the numbers that belongs to a header file.
QString imageNameOf(const QString& strFile)
{
    QString strName = strFile.section(QLatin1Char('/'), -1);
    const bool bCompressed = strName.endsWith(QLatin1String(".gz"), Qt::CaseInsensitive);
    const int nLetters = bCompressed ? 7 : 4;
    const bool bCapitals = strName.at(strName.size() - nLetters + 1).isUpper();
    return strName.left(strName.size() - nLetters) + (bCapitals ? QLatin1String(".IMG") : QLatin1String(".img")) +
           (bCompressed ? strName.right(3) : QString());
}

QString unpacked(const QByteArray& baContent, qint64 nMost, QByteArray& baOut, bool& bMore)
{
    bMore = false;
    if (Inflating::isGzip(baContent))
        return Inflating::inflate(baContent, 0, nMost, baOut, bMore);
    baOut = baContent;
    return {};
}
} // namespace

QString VolumeReaders::readNifti(const QString& strFile, const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume)
{
    volume = SOpenVolume();
    QByteArray baHeader;
    bool bMore = false;
    QString strProblem = unpacked(baContent, nHeaderBytes, baHeader, bMore);
    if (!strProblem.isEmpty())
        return atByte(0, strProblem);
    if (baHeader.size() < nHeaderBytes)
        return atByte(baHeader.size(), QStringLiteral("the file ends within the header"));
    nifti_1_header header;
    std::memcpy(&header, baHeader.constData(), sizeof header);
    const bool bSwapped = ScalarBytes::read<qint32>(baHeader.constData(), Q_BYTE_ORDER != Q_BIG_ENDIAN) == nHeaderBytes;
    if (header.sizeof_hdr == nSizeOfNifti2)
        return atByte(0, QStringLiteral("this is NIfTI-2, of which only version 1 can be read"));
    if (!bSwapped && header.sizeof_hdr != nHeaderBytes)
        return atByte(0, QStringLiteral("this is no NIfTI-1 header"));
    if (bSwapped)
        swap_nifti_header(&header, 1);
    const bool bSingle = std::memcmp(header.magic, "n+1", 4) == 0;
    if (!bSingle && std::memcmp(header.magic, "ni1", 4) != 0)
        return atByte(344, QStringLiteral("the mark of NIfTI-1 is missing"));
    strProblem = problemOf(header);
    if (!strProblem.isEmpty())
        return strProblem;
    if (bSingle && header.vox_offset < static_cast<float>(nSingleFileOffset))
        return atByte(108, QStringLiteral("the numbers begin within the header"));

    const ImagePointer pImage(nifti_convert_nhdr2nim(header, nullptr), nifti_image_free);
    if (!pImage)
        return atByte(0, QStringLiteral("the header cannot be read"));
    volume.m_anSize = {qMax(1, pImage->nx), qMax(1, pImage->ny), qMax(1, pImage->nz)};
    scalarOf(pImage->datatype, volume.m_eType);
    volume.m_bBigEndian = (Q_BYTE_ORDER == Q_BIG_ENDIAN) != bSwapped;
    if (pImage->scl_slope != 0.0F)
    {
        volume.m_fSlope = OpenText::decimalOf(pImage->scl_slope);
        volume.m_fIntercept = OpenText::decimalOf(pImage->scl_inter);
    }
    placeVoxels(*pImage, volume);
    strProblem = VolumeParts::problemOfGrid(volume);
    qint64 nBytes = 0;
    if (!strProblem.isEmpty() || !VolumeParts::bytesOf(volume, nBytes, strProblem))
        return atByte(40, strProblem);

    const auto nOffset = static_cast<qint64>(header.vox_offset);
    QByteArray baNumbers = baContent;
    if (!bSingle)
    {
        strProblem = fnSibling(imageNameOf(strFile), baNumbers);
        if (!strProblem.isEmpty())
            return strProblem;
    }
    QByteArray baPlain;
    strProblem = unpacked(baNumbers, nOffset + nBytes, baPlain, bMore);
    if (strProblem.isEmpty())
        strProblem = VolumeParts::takeValues(baPlain, nOffset, false, true, volume);
    return strProblem.isEmpty() ? QString() : atByte(static_cast<int>(nOffset), strProblem);
}
