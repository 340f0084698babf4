#include "OrmTextCheck.h"

#include <cstring>

namespace
{
constexpr quint64 nOnes = 0x0101010101010101ULL;
constexpr quint64 nHighBits = 0x8080808080808080ULL;

using OrmTextCheck::EFault;

bool isContinuation(unsigned char c)
{
    return (c & 0xC0U) == 0x80U;
}

/// Steps over one character of several bytes. Returns null, with the fault, where it is none.
const char* skipCharacter(const char* pText, const char* pEnd, EFault& eFault)
{
    const auto* p = reinterpret_cast<const unsigned char*>(pText);
    int nMore = 0;
    quint32 nCode = 0;
    quint32 nLowest = 0;
    if ((p[0] & 0xE0U) == 0xC0U)
    {
        nMore = 1;
        nCode = p[0] & 0x1FU;
        nLowest = 0x80;
    }
    else if ((p[0] & 0xF0U) == 0xE0U)
    {
        nMore = 2;
        nCode = p[0] & 0x0FU;
        nLowest = 0x800;
    }
    else if ((p[0] & 0xF8U) == 0xF0U)
    {
        nMore = 3;
        nCode = p[0] & 0x07U;
        nLowest = 0x10000;
    }
    eFault = EFault::Encoding;
    if (nMore == 0)
        return nullptr;
    for (int i = 1; i <= nMore; ++i)
    {
        if (pText + i == pEnd)
        {
            eFault = EFault::Incomplete;
            return nullptr;
        }
        if (!isContinuation(p[i]))
            return nullptr;
        nCode = (nCode << 6) | (p[i] & 0x3FU);
    }
    const bool bSurrogate = nCode >= 0xD800 && nCode <= 0xDFFF;
    if (nCode < nLowest || nCode > 0x10FFFF || bSurrogate || nCode == 0xFFFE || nCode == 0xFFFF)
        return nullptr;
    eFault = EFault::None;
    return pText + nMore + 1;
}
} // namespace

namespace OrmTextCheck
{
const char* findFault(const char* pText, const char* pEnd, EFault& eFault)
{
    eFault = EFault::None;
    while (pText < pEnd)
    {
        // Eight bytes at once as long as all of them are printable ASCII.
        while (pEnd - pText >= 8)
        {
            quint64 nBytes = 0;
            std::memcpy(&nBytes, pText, sizeof(nBytes));
            const quint64 nBelowBlank = (nBytes - nOnes * 0x20) & ~nBytes;
            if (((nBelowBlank | nBytes) & nHighBits) != 0)
                break;
            pText += 8;
        }
        const char* pStop = pEnd - pText > 8 ? pText + 8 : pEnd;
        while (pText < pStop)
        {
            const auto c = static_cast<unsigned char>(*pText);
            if (c >= 0x80)
            {
                const char* pNext = skipCharacter(pText, pEnd, eFault);
                if (!pNext)
                    return pText;
                pText = pNext;
                continue;
            }
            if (c < 0x20 && c != '\n' && c != '\r' && c != '\t')
            {
                eFault = c == 0 ? EFault::Nul : EFault::Control;
                return pText;
            }
            ++pText;
        }
    }
    return pEnd;
}

bool isUtf8(const char* pText, const char* pEnd)
{
    EFault eFault = EFault::None;
    while (pText < pEnd)
    {
        pText = findFault(pText, pEnd, eFault);
        if (eFault == EFault::Encoding || eFault == EFault::Incomplete)
            return false;
        if (eFault != EFault::None)
            ++pText;
    }
    return true;
}

int markLength(const char* pText, qint64 nLength)
{
    return nLength >= 3 && std::memcmp(pText, "\xEF\xBB\xBF", 3) == 0 ? 3 : 0;
}

bool looksWide(const char* pText, qint64 nLength)
{
    if (nLength < 2)
        return false;
    const bool bMark = std::memcmp(pText, "\xFF\xFE", 2) == 0 || std::memcmp(pText, "\xFE\xFF", 2) == 0;
    const bool bZeroOfTwo = (pText[0] == '\0') != (pText[1] == '\0');
    const bool bZeroOfFour = nLength >= 4 && std::memcmp(pText, "\0\0", 2) == 0 && (pText[3] != '\0' || pText[2] != '\0');
    return bMark || bZeroOfTwo || bZeroOfFour;
}
} // namespace OrmTextCheck
