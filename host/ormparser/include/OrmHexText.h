#pragma once

#include <QByteArray>
#include <QtGlobal>

/// Hex text of the result documents: 8 digits per 32-bit value, 2 per byte, the least significant byte first, no
/// separators; the float 1.0 is "0000803F". Digits of either case are read.
///
/// The decoders read the first @p nValues values of the @p nLength characters at @p pText and ignore the rest. They
/// return false if the text is too short or one of the digits asked for is none; @p pnBadOffset, if given, is then the
/// offset of the first character that is wrong or missing, and what was written to @p pOut is of no meaning. The result
/// is the same on a machine of either byte order.
namespace OrmHexText
{
constexpr int nDigitsPerValue = 8; ///< of a float or an unsigned number
constexpr int nDigitsPerByte = 2;

bool textBufToValueBuf(const char* pText, qint64 nLength, qint64 nValues, float* pOut, qint64* pnBadOffset = nullptr);
bool decodeUInts(const char* pText, qint64 nLength, qint64 nValues, quint32* pOut, qint64* pnBadOffset = nullptr);
bool hex2ascii(const char* pText, qint64 nLength, qint64 nValues, quint8* pOut, qint64* pnBadOffset = nullptr);

/// The text of @p nValues values, with upper-case digits.
QByteArray encodeFloats(const float* pValues, qint64 nValues);
QByteArray encodeUInts(const quint32* pValues, qint64 nValues);
QByteArray encodeBytes(const quint8* pValues, qint64 nValues);

/// Whether most of the values other than 0 lie outside 1e-30 to 1e30, as they do in a text that was written with the most
/// significant byte first. Such values are still what the text says; this is good for a notice only.
bool looksByteSwapped(const float* pValues, qint64 nValues);
} // namespace OrmHexText
