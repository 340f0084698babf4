#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Choices taken from the bytes of a fuzzing input, one after the other. Where the bytes have run out every choice is the first one, so
/// that an empty input makes the plainest case and each further byte changes it.
class CFuzzInput
{
public:
    CFuzzInput(const std::uint8_t* pData, std::size_t nSize) : m_pData(pData), m_nSize(nSize) {}

    std::size_t left() const { return m_nSize - m_nUsed; }

    std::uint8_t byte() { return m_nUsed < m_nSize ? m_pData[m_nUsed++] : std::uint8_t(0); }

    /// A number from 0 to @p nBelow - 1; @p nBelow is at most 256.
    int below(int nBelow) { return byte() % nBelow; }

    /// True for about one in @p nOneIn bytes, never for a byte of 0.
    bool rarely(int nOneIn) { return byte() % nOneIn == nOneIn - 1; }

    /// So many bits, the low byte first.
    std::uint32_t bits32()
    {
        std::uint32_t nValue = 0;
        for (int nShift = 0; nShift < 32; nShift += 8)
            nValue |= std::uint32_t(byte()) << nShift;
        return nValue;
    }

    template <typename T>
    const T& oneOf(const std::vector<T>& vecChoices)
    {
        return vecChoices[static_cast<std::size_t>(byte()) % vecChoices.size()];
    }

    std::string text(std::size_t nMax)
    {
        const std::size_t nLength = left() < nMax ? left() : nMax;
        const std::string strText(reinterpret_cast<const char*>(m_pData) + m_nUsed, nLength);
        m_nUsed += nLength;
        return strText;
    }

    /// Rarely cuts a text, takes some bytes out, changes one or puts some in: most of what is built is to be well-formed.
    void damage(std::string& strText)
    {
        if (!rarely(8) || strText.empty())
            return;
        const std::size_t nPlace = bits32() % strText.size();
        const int nHow = below(4);
        if (nHow == 0)
            strText.resize(nPlace);
        else if (nHow == 1)
            strText.erase(nPlace, 1U + byte());
        else if (nHow == 2)
            strText[nPlace] = static_cast<char>(byte());
        else
            strText.insert(nPlace, text(byte() % 40U));
    }

private:
    const std::uint8_t* m_pData;
    std::size_t m_nSize;
    std::size_t m_nUsed = 0;
};
