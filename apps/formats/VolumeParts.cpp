#include "VolumeParts.h"

#include "TextLines.h"

#include <cmath>
#include <limits>
#include <zlib.h>

namespace
{
constexpr qint64 nFirstPiece = 65536;
constexpr int nAnyHeader = 15 + 32; ///< window bits of zlib: the largest window, zlib or gzip by what the stream says

/// A stream of zlib that is ended with the object.
class CStream
{
public:
    CStream() { m_bReady = inflateInit2(&m_stream, nAnyHeader) == Z_OK; }
    ~CStream()
    {
        if (m_bReady)
            inflateEnd(&m_stream);
    }
    CStream(const CStream&) = delete;
    CStream& operator=(const CStream&) = delete;

    z_stream m_stream = {};
    bool m_bReady = false;
};
} // namespace

bool Inflating::isGzip(const QByteArray& baContent)
{
    return baContent.size() >= 2 && static_cast<unsigned char>(baContent[0]) == 0x1F && static_cast<unsigned char>(baContent[1]) == 0x8B;
}

QString Inflating::inflate(const QByteArray& baContent, qint64 nAt, qint64 nWanted, QByteArray& baOut, bool& bMore)
{
    baOut.clear();
    bMore = false;
    CStream objStream;
    if (!objStream.m_bReady)
        return QStringLiteral("there is not enough memory");
    z_stream& stream = objStream.m_stream;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(baContent.constData() + nAt)); // zlib does not write there
    stream.avail_in = static_cast<uInt>(baContent.size() - nAt);
    qint64 nDone = 0;
    char cBeyond = 0;
    for (;;)
    {
        const bool bFull = nDone == nWanted; // one byte more shows whether there is more, and lets the check sum be seen
        if (!bFull && nDone == baOut.size())
            baOut.resize(static_cast<int>(qMin(nWanted, qMax(nFirstPiece, 2 * nDone))));
        const qint64 nRoom = bFull ? 1 : baOut.size() - nDone;
        stream.next_out = reinterpret_cast<Bytef*>(bFull ? &cBeyond : baOut.data() + nDone);
        stream.avail_out = static_cast<uInt>(nRoom);
        const int nResult = ::inflate(&stream, Z_NO_FLUSH);
        const qint64 nNow = nRoom - stream.avail_out;
        if (bFull && nNow > 0)
        {
            bMore = true;
            return {};
        }
        nDone += nNow;
        if (nResult == Z_STREAM_END)
        {
            const bool bNext = stream.avail_in >= 2 && stream.next_in[0] == 0x1F && stream.next_in[1] == 0x8B;
            if (bNext && inflateReset(&stream) == Z_OK)
                continue;
            baOut.resize(static_cast<int>(nDone));
            return {};
        }
        if (nResult == Z_BUF_ERROR || (nResult == Z_OK && stream.avail_in == 0 && stream.avail_out > 0))
            return QStringLiteral("the compressed data end too early");
        if (nResult != Z_OK)
            return nResult == Z_MEM_ERROR ? QStringLiteral("there is not enough memory")
                                          : QStringLiteral("the compressed data are damaged");
    }
}

bool VolumeParts::bytesOf(const SOpenVolume& volume, qint64& nBytes, QString& strReason)
{
    nBytes = ScalarBytes::size(volume.m_eType);
    for (const qint64 nSize : volume.m_anSize)
    {
        if (nSize < 1)
        {
            strReason = QStringLiteral("a size of %1 voxels").arg(nSize);
            return false;
        }
        if (nSize > nMostBytes || (nBytes *= nSize) > nMostBytes)
        {
            strReason = QStringLiteral("%1 x %2 x %3 voxels take more than %4 bytes")
                            .arg(volume.m_anSize[0])
                            .arg(volume.m_anSize[1])
                            .arg(volume.m_anSize[2])
                            .arg(nMostBytes);
            return false;
        }
    }
    return true;
}

QString VolumeParts::problemOfGrid(const SOpenVolume& volume)
{
    // Lengths that no scanner has; within them nothing that is computed with them leaves the range of numbers.
    constexpr double fShortest = 1e-9;
    constexpr double fLongest = 1e9;
    for (const double fOrigin : volume.m_vecOrigin)
    {
        if (!(std::abs(fOrigin) <= fLongest))
            return QStringLiteral("the origin is not finite or too far away");
    }
    double fVolume = 1.0;
    for (const SOpenVolume::Vector& vecStep : volume.m_avecStep)
    {
        const double fLength = std::hypot(vecStep[0], vecStep[1], vecStep[2]);
        if (!(fLength >= fShortest && fLength <= fLongest))
            return QStringLiteral("the spacing %1 mm is no length of a voxel").arg(fLength);
        fVolume *= fLength;
    }
    const auto& [i, j, k] = volume.m_avecStep;
    const double fSpanned = i[0] * (j[1] * k[2] - j[2] * k[1]) - i[1] * (j[0] * k[2] - j[2] * k[0]) + i[2] * (j[0] * k[1] - j[1] * k[0]);
    return std::abs(fSpanned) < 1e-3 * fVolume ? QStringLiteral("the axes lie in one plane") : QString();
}

QString VolumeParts::takeValues(const QByteArray& baContent, qint64 nAt, bool bCompressed, bool bMayBeMore, SOpenVolume& volume)
{
    qint64 nBytes = 0;
    QString strReason;
    if (!bytesOf(volume, nBytes, strReason))
        return strReason;
    const qint64 nHeld = baContent.size() - nAt;
    bool bMore = nHeld > nBytes;
    if (bCompressed)
        strReason = Inflating::inflate(baContent, nAt, nBytes, volume.m_baValues, bMore);
    else
        volume.m_baValues = nHeld < nBytes       ? QByteArray()
                            : nAt == 0 && !bMore ? baContent
                                                 : baContent.mid(static_cast<int>(nAt), static_cast<int>(nBytes));
    if (!strReason.isEmpty())
        return strReason;
    if (volume.m_baValues.size() != nBytes)
        return QStringLiteral("the numbers take %1 bytes, there are %2")
            .arg(nBytes)
            .arg(bCompressed ? volume.m_baValues.size() : qMax<qint64>(0, nHeld));
    if (bMore && !bMayBeMore)
        return QStringLiteral("there are more bytes than the %1 that the numbers take").arg(nBytes);
    if (bMore)
        volume.m_lstNotes.append(QStringLiteral("Bytes behind the numbers were not read."));
    return {};
}

bool VolumeParts::numbers(std::string_view strText, std::size_t nCount, std::vector<double>& vecNumbers)
{
    std::vector<std::string_view> vecWords;
    OpenText::split(strText, vecWords);
    vecNumbers.clear();
    for (const std::string_view strWord : vecWords)
    {
        double fValue = 0.0;
        if (vecNumbers.size() == nCount || !OpenText::toDouble(strWord, fValue))
            return false;
        vecNumbers.push_back(fValue);
    }
    return vecNumbers.size() == nCount;
}

QString VolumeParts::nameOf(std::string_view strText)
{
    return QString::fromUtf8(strText.data(), static_cast<int>(strText.size()));
}
