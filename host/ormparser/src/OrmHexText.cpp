#include "OrmHexText.h"

#include <QtEndian>
#include <cmath>
#include <cstring>

namespace
{
constexpr quint64 nOnes = 0x0101010101010101ULL;
constexpr quint64 nHighBits = 0x8080808080808080ULL;
constexpr qint64 nValuesPerCheck = 64; ///< how many values are decoded before one looks whether a digit was wrong

/// Bit 7 of each byte of @p nBytes (all below 128) that lies from cLow to cHigh.
constexpr quint64 bytesWithin(quint64 nBytes, quint64 cLow, quint64 cHigh)
{
    return (nBytes + nOnes * (128 - cLow)) & ~(nBytes + nOnes * (127 - cHigh)) & nHighBits;
}

/// The 32 bits that 8 digits stand for. @p nBad collects a bit for each character that is no digit.
inline quint32 textToValue(const char* pText, quint64& nBad)
{
    const quint64 nText = qFromLittleEndian<quint64>(pText); // first character in the lowest byte on every machine
    const quint64 nSeven = nText & ~nHighBits;
    const quint64 nDigits = bytesWithin(nSeven, '0', '9');
    const quint64 nLetters = bytesWithin(nSeven | (nOnes * 0x20), 'a', 'f');
    nBad |= (nText & nHighBits) | ((nDigits | nLetters) ^ nHighBits);

    const quint64 nNibbles = (nSeven & (nOnes * 0x0F)) + ((nSeven >> 6) & nOnes) * 9;
    quint64 nPacked = ((nNibbles << 4) | (nNibbles >> 8)) & 0x00FF00FF00FF00FFULL;
    nPacked = (nPacked | (nPacked >> 8)) & 0x0000FFFF0000FFFFULL;
    return static_cast<quint32>(nPacked | (nPacked >> 16));
}

int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char cLower = static_cast<char>(c | 0x20);
    return cLower >= 'a' && cLower <= 'f' ? cLower - 'a' + 10 : -1;
}

void setOffset(qint64* pnOffset, qint64 nOffset)
{
    if (pnOffset)
        *pnOffset = nOffset;
}

/// False, with the offset, if @p nDigits digits cannot be taken from the text.
bool checkLength(qint64 nLength, qint64 nValues, qint64 nDigits, qint64* pnBadOffset)
{
    if (nValues >= 0 && nValues <= nLength / nDigits)
        return true;
    setOffset(pnBadOffset, nLength);
    return false;
}

/// Where the first character that is no digit stands, from @p nFrom on; @p nTo if there is none.
qint64 findBadDigit(const char* pText, qint64 nFrom, qint64 nTo)
{
    while (nFrom < nTo && digitValue(pText[nFrom]) >= 0)
        ++nFrom;
    return nFrom;
}

/// Decodes into any type of 4 bytes.
template <typename T>
bool decodeWords(const char* pText, qint64 nLength, qint64 nValues, T* pOut, qint64* pnBadOffset)
{
    static_assert(sizeof(T) == sizeof(quint32), "a value is 32 bits");
    if (!checkLength(nLength, nValues, OrmHexText::nDigitsPerValue, pnBadOffset))
        return false;
    for (qint64 nStart = 0; nStart < nValues; nStart += nValuesPerCheck)
    {
        const qint64 nEnd = qMin(nValues, nStart + nValuesPerCheck);
        quint64 nBad = 0;
        for (qint64 i = nStart; i < nEnd; ++i)
        {
            const quint32 nBits = textToValue(pText + i * OrmHexText::nDigitsPerValue, nBad);
            std::memcpy(pOut + i, &nBits, sizeof(nBits));
        }
        if (nBad != 0)
        {
            setOffset(pnBadOffset, findBadDigit(pText, nStart * OrmHexText::nDigitsPerValue, nEnd * OrmHexText::nDigitsPerValue));
            return false;
        }
    }
    return true;
}

void appendByte(char*& pOut, unsigned nByte)
{
    static const char acDigits[] = "0123456789ABCDEF";
    *pOut++ = acDigits[nByte >> 4];
    *pOut++ = acDigits[nByte & 15U];
}

template <typename T>
QByteArray encodeWords(const T* pValues, qint64 nValues)
{
    QByteArray baText(static_cast<int>(nValues * OrmHexText::nDigitsPerValue), Qt::Uninitialized);
    char* pOut = baText.data();
    for (qint64 i = 0; i < nValues; ++i)
    {
        quint32 nBits = 0;
        std::memcpy(&nBits, pValues + i, sizeof(nBits));
        for (int nShift = 0; nShift < 32; nShift += 8)
            appendByte(pOut, (nBits >> nShift) & 255U);
    }
    return baText;
}
} // namespace

namespace OrmHexText
{
bool textBufToValueBuf(const char* pText, qint64 nLength, qint64 nValues, float* pOut, qint64* pnBadOffset)
{
    return decodeWords(pText, nLength, nValues, pOut, pnBadOffset);
}

bool decodeUInts(const char* pText, qint64 nLength, qint64 nValues, quint32* pOut, qint64* pnBadOffset)
{
    return decodeWords(pText, nLength, nValues, pOut, pnBadOffset);
}

bool hex2ascii(const char* pText, qint64 nLength, qint64 nValues, quint8* pOut, qint64* pnBadOffset)
{
    if (!checkLength(nLength, nValues, nDigitsPerByte, pnBadOffset))
        return false;
    for (qint64 i = 0; i < nValues; ++i)
    {
        const int nHigh = digitValue(pText[2 * i]);
        const int nLow = digitValue(pText[2 * i + 1]);
        if (nHigh < 0 || nLow < 0)
        {
            setOffset(pnBadOffset, nHigh < 0 ? 2 * i : 2 * i + 1);
            return false;
        }
        pOut[i] = static_cast<quint8>(nHigh * 16 + nLow);
    }
    return true;
}

QByteArray encodeFloats(const float* pValues, qint64 nValues)
{
    return encodeWords(pValues, nValues);
}

QByteArray encodeUInts(const quint32* pValues, qint64 nValues)
{
    return encodeWords(pValues, nValues);
}

QByteArray encodeBytes(const quint8* pValues, qint64 nValues)
{
    QByteArray baText(static_cast<int>(nValues * nDigitsPerByte), Qt::Uninitialized);
    char* pOut = baText.data();
    for (qint64 i = 0; i < nValues; ++i)
        appendByte(pOut, pValues[i]);
    return baText;
}

bool looksByteSwapped(const float* pValues, qint64 nValues)
{
    qint64 nOther = 0;
    qint64 nStrange = 0;
    for (qint64 i = 0; i < nValues; ++i)
    {
        const float fSize = std::fabs(pValues[i]);
        if (fSize == 0.0F)
            continue;
        ++nOther;
        if (!(fSize >= 1e-30F && fSize <= 1e30F)) // also true of what is no number
            ++nStrange;
    }
    return nStrange > nOther / 2;
}
} // namespace OrmHexText
