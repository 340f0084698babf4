// Decoders and encoders of hexadecimal text, and the numbers of the files.

#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "OrmHexText.h"
#include "OrmNumberText.h"
#include "PlainText.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace
{
using FuzzTarget::demand;

/// The text without room behind it, so that a read beyond its end is seen; and so the values.
void decodeBothWays(const std::string& strText, std::int64_t nValues)
{
    const auto nLength = static_cast<std::int64_t>(strText.size());
    const std::unique_ptr<char[]> pText(new char[strText.size()]);
    std::memcpy(pText.get(), strText.data(), strText.size());
    const std::size_t nRoom = nValues > 0 && nValues <= nLength ? static_cast<std::size_t>(nValues) : 0; // a lie gets no room at all

    std::vector<std::uint32_t> vecWords;
    const bool bWords = nValues >= 0 && nValues <= nLength && PlainText::hexWords(strText, nValues, vecWords);
    const std::unique_ptr<quint32[]> pWords(new quint32[nRoom]);
    const std::unique_ptr<float[]> pFloats(new float[nRoom]);
    qint64 nBadWord = -7;
    qint64 nBadFloat = -7;
    demand(OrmHexText::decodeUInts(pText.get(), nLength, nValues, pWords.get(), &nBadWord) == bWords, "whether words can be decoded");
    demand(OrmHexText::textBufToValueBuf(pText.get(), nLength, nValues, pFloats.get(), &nBadFloat) == bWords,
           "whether floats can be decoded");
    demand(nBadWord == nBadFloat && (nBadWord == -7) == bWords, "the offset of a bad digit");
    FuzzTarget::tookInput(bWords && nValues > 0);
    if (bWords && nValues > 0)
    {
        demand(std::memcmp(pWords.get(), vecWords.data(), 4 * vecWords.size()) == 0, "words");
        demand(std::memcmp(pFloats.get(), vecWords.data(), 4 * vecWords.size()) == 0, "floats");
        const QByteArray baText = OrmHexText::encodeUInts(pWords.get(), nValues);
        demand(baText == OrmHexText::encodeFloats(pFloats.get(), nValues) && baText == QByteArray(pText.get(), baText.size()).toUpper(),
               "encoded words");
    }
    if (!bWords && nValues > 0 && nValues <= nLength / 8)
        demand(nBadWord >= 0 && nBadWord < 8 * nValues &&
                   !std::isxdigit(static_cast<unsigned char>(strText[static_cast<std::size_t>(nBadWord)])) &&
                   strText.find_first_not_of("0123456789abcdefABCDEF") == static_cast<std::size_t>(nBadWord),
               "the offset of the first bad digit");

    std::vector<std::uint8_t> vecBytes;
    const bool bBytes = nValues >= 0 && nValues <= nLength && PlainText::hexBytes(strText, nValues, vecBytes);
    const std::unique_ptr<quint8[]> pBytes(new quint8[nRoom]);
    demand(OrmHexText::hex2ascii(pText.get(), nLength, nValues, pBytes.get()) == bBytes, "whether bytes can be decoded");
    demand(!bBytes || vecBytes.empty() || std::memcmp(pBytes.get(), vecBytes.data(), vecBytes.size()) == 0, "bytes");
    if (bBytes)
        demand(OrmHexText::encodeBytes(pBytes.get(), nValues) == QByteArray(pText.get(), static_cast<int>(2 * nValues)).toUpper(),
               "encoded bytes");
}

void numbersBothWays(const std::string& strText)
{
    int nInt = 7;
    quint32 nUInt = 7;
    float fFloat = 7.0F;
    double fDouble = 7.0;
    std::int64_t nPlain = 7;
    const bool bInt = PlainText::wholeNumber(strText, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), nPlain);
    demand(OrmNumberText::toInt(strText, nInt) == bInt && nInt == nPlain, "int \"" + strText + "\"");
    nPlain = 7;
    const bool bUInt = PlainText::wholeNumber(strText, 0, std::numeric_limits<quint32>::max(), nPlain);
    demand(OrmNumberText::toUInt(strText, nUInt) == bUInt && nUInt == nPlain, "unsigned number \"" + strText + "\"");
    float fPlainFloat = 7.0F;
    demand(OrmNumberText::toFloat(strText, fFloat) == PlainText::floatNumber(strText, fPlainFloat), "float \"" + strText + "\"");
    demand(fFloat == fPlainFloat, "float \"" + strText + "\"");
    double fPlainDouble = 7.0;
    demand(OrmNumberText::toDouble(strText, fDouble) == PlainText::decimalNumber(strText, fPlainDouble), "double \"" + strText + "\"");
    demand(fDouble == fPlainDouble, "double \"" + strText + "\"");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (!FuzzTarget::isChoices(pData, nSize))
    {
        const std::string strText(reinterpret_cast<const char*>(pData), nSize);
        numbersBothWays(strText);
        decodeBothWays(strText, static_cast<std::int64_t>(nSize) / 8);
        return 0;
    }
    CFuzzInput objIn(pData + 1, nSize - 1);
    const int nWords = objIn.byte();
    const int nHow = objIn.byte();
    const std::size_t nBadPlace = objIn.bits32();
    const char cBad = static_cast<char>(objIn.byte());
    std::string strText;
    for (int i = 0; i < 8 * nWords; ++i)
        strText += "0123456789ABCDEFabcdef"[objIn.left() > 0 ? objIn.below(22) : i % 22];
    if ((nHow & 1) != 0 && !strText.empty())
        strText[nBadPlace % strText.size()] = cBad;
    if ((nHow & 2) != 0 && !strText.empty())
        strText.resize(strText.size() - 1U - nBadPlace % std::min<std::size_t>(strText.size(), 9U));
    const std::vector<std::int64_t> vecClaims = {nWords,
                                                 nWords,
                                                 nWords + 1,
                                                 nWords - 1,
                                                 4 * nWords,
                                                 4 * nWords + 1,
                                                 0,
                                                 -1,
                                                 1LL << 61,
                                                 (1LL << 61) + nWords,
                                                 1LL << 32,
                                                 std::numeric_limits<std::int64_t>::max(),
                                                 std::numeric_limits<std::int64_t>::min()};
    decodeBothWays(strText, vecClaims[static_cast<std::size_t>(nHow >> 2) % vecClaims.size()]);
    return 0;
}
