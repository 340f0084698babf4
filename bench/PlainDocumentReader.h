#pragma once

#include <pugixml.hpp>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

/// What a straightforward program would do to read a result document: the file into a buffer, the whole of it through the parser in place,
/// hex text through a table of digits, decimal text through from_chars. It checks nothing; the host's reader is measured against it.
namespace PlainDocumentReader
{
using DigitTable = std::array<uint8_t, 256>;

inline DigitTable makeDigitTable()
{
    DigitTable aDigits = {};
    for (uint8_t i = 0; i < 10; ++i)
        aDigits[size_t{'0'} + i] = i;
    for (uint8_t i = 0; i < 6; ++i)
    {
        aDigits[size_t{'a'} + i] = static_cast<uint8_t>(10 + i);
        aDigits[size_t{'A'} + i] = static_cast<uint8_t>(10 + i);
    }
    return aDigits;
}

/// @p nValues values of 8 digits each, least significant byte first.
inline void decodeHex(const char* pText, size_t nValues, float* pOut)
{
    static const DigitTable aDigits = makeDigitTable();
    for (size_t i = 0; i < nValues; ++i)
    {
        uint32_t nBits = 0;
        for (unsigned nByte = 0; nByte < 4; ++nByte)
        {
            const unsigned nHigh = aDigits[static_cast<unsigned char>(*pText++)];
            const unsigned nLow = aDigits[static_cast<unsigned char>(*pText++)];
            nBits |= (nHigh << 4 | nLow) << (8 * nByte);
        }
        std::memcpy(pOut + i, &nBits, sizeof(nBits));
    }
}

inline std::vector<char> readFile(const std::string& strFile)
{
    std::vector<char> vecText;
    FILE* pFile = std::fopen(strFile.c_str(), "rb");
    if (!pFile)
        return vecText;
    std::fseek(pFile, 0, SEEK_END);
    vecText.resize(static_cast<size_t>(std::ftell(pFile)));
    std::fseek(pFile, 0, SEEK_SET);
    vecText.resize(std::fread(vecText.data(), 1, vecText.size(), pFile));
    std::fclose(pFile);
    return vecText;
}

/// Appends all numbers below a second tag: attributes of rows, or their hex text.
inline void appendNumbers(const pugi::xml_node& objSection, std::vector<float>& vecNumbers)
{
    for (const pugi::xml_node& objRow : objSection.children())
    {
        const pugi::xml_node objText = objRow.child("Text.Data");
        if (objText)
        {
            const char* pText = objText.child_value();
            const size_t nValues = std::strlen(pText) / 8;
            const size_t nBefore = vecNumbers.size();
            vecNumbers.resize(nBefore + nValues);
            decodeHex(pText, nValues, vecNumbers.data() + nBefore);
        }
        for (const pugi::xml_attribute& objAttribute : objRow.attributes())
        {
            float fValue = 0.0F;
            std::from_chars(objAttribute.value(), objAttribute.value() + std::strlen(objAttribute.value()), fValue);
            vecNumbers.push_back(fValue);
        }
    }
}

/// All numbers below all second tags of the document.
inline std::vector<float> readNumbers(const std::string& strFile)
{
    std::vector<char> vecText = readFile(strFile);
    pugi::xml_document objDocument;
    std::vector<float> vecNumbers;
    if (!objDocument.load_buffer_inplace(vecText.data(), vecText.size()))
        return vecNumbers;
    for (const pugi::xml_node& objFirst : objDocument.first_child().children())
    {
        for (const pugi::xml_node& objSection : objFirst.children())
            appendNumbers(objSection, vecNumbers);
    }
    return vecNumbers;
}
} // namespace PlainDocumentReader
