#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstring>
#include <zlib.h>

/// Bytes of files of open formats, made by plain means.
namespace FormatBytes
{
/// A number in the byte order asked for.
template <typename T>
QByteArray of(T value, bool bBigEndian = false)
{
    QByteArray baBytes(static_cast<int>(sizeof(T)), '\0');
    std::memcpy(baBytes.data(), &value, sizeof(T));
    if (bBigEndian != (Q_BYTE_ORDER == Q_BIG_ENDIAN))
    {
        std::reverse(baBytes.begin(), baBytes.end());
    }
    return baBytes;
}

template <typename T>
void put(QByteArray& baBytes, int nAt, T value, bool bBigEndian = false)
{
    baBytes.replace(nAt, static_cast<int>(sizeof(T)), of(value, bBigEndian));
}

/// Packed as gzip, or as a plain zlib stream.
inline QByteArray packed(const QByteArray& baBytes, bool bGzip = true)
{
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, bGzip ? 15 + 16 : 15, 8, Z_DEFAULT_STRATEGY);
    QByteArray baOut(static_cast<int>(deflateBound(&stream, static_cast<uLong>(baBytes.size()))) + 32, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(baBytes.constData()));
    stream.avail_in = static_cast<uInt>(baBytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(baOut.data());
    stream.avail_out = static_cast<uInt>(baOut.size());
    deflate(&stream, Z_FINISH);
    baOut.resize(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return baOut;
}

/// How a NIfTI-1 file begins: its header and the four bytes behind it.
struct SNifti
{
    std::int16_t m_anSize[3] = {2, 3, 4};
    std::int16_t m_nType =
        16; ///< 2 uint8, 4 int16, 8 int32, 16 float, 64 double, 256 int8, 512 uint16, 768 uint32, 1024 int64, 1280 uint64
    float m_afSpacing[3] = {1.0F, 1.0F, 1.0F};
    float m_fSlope = 0.0F;
    float m_fIntercept = 0.0F;
    char m_nUnits = 2; ///< 1 m, 2 mm, 3 um
    std::int16_t m_nQform = 0;
    float m_afQuaternion[3] = {};
    float m_afOffset[3] = {};
    float m_fQfac = 1.0F;
    std::int16_t m_nSform = 0;
    float m_afRows[12] = {};
    bool m_bBigEndian = false;
    bool m_bTwoFiles = false;

    QByteArray header() const
    {
        const bool bBig = m_bBigEndian;
        QByteArray ba(352, '\0');
        put<std::int32_t>(ba, 0, 348, bBig);
        put<std::int16_t>(ba, 40, 3, bBig);
        put(ba, 76, m_fQfac, bBig);
        for (int n = 0; n < 3; ++n)
        {
            put(ba, 42 + 2 * n, m_anSize[n], bBig);
            put(ba, 80 + 4 * n, m_afSpacing[n], bBig);
            put(ba, 256 + 4 * n, m_afQuaternion[n], bBig);
            put(ba, 268 + 4 * n, m_afOffset[n], bBig);
        }
        for (int n = 3; n < 7; ++n)
        {
            put<std::int16_t>(ba, 42 + 2 * n, 1, bBig);
        }
        put(ba, 70, m_nType, bBig);
        put(ba, 108, m_bTwoFiles ? 0.0F : 352.0F, bBig);
        put(ba, 112, m_fSlope, bBig);
        put(ba, 116, m_fIntercept, bBig);
        ba[123] = m_nUnits;
        put(ba, 252, m_nQform, bBig);
        put(ba, 254, m_nSform, bBig);
        for (int n = 0; n < 12; ++n)
        {
            put(ba, 280 + 4 * n, m_afRows[n], bBig);
        }
        ba.replace(344, 4, m_bTwoFiles ? QByteArray("ni1\0", 4) : QByteArray("n+1\0", 4));
        return ba;
    }
};
} // namespace FormatBytes
