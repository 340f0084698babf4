#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Files of open formats built from the bytes of a fuzzing input: sound where the choices run out, with counts that lie, numbers that are
/// none, types and byte orders of every kind, and rarely a few bytes changed.
namespace FormatGrammar
{
/// A file and the one with its numbers, which may be empty.
struct SBuilt
{
    std::string m_strFile;
    std::string m_strOther;
};

std::string surface(const std::uint8_t* pData, std::size_t nSize);
SBuilt volume(const std::uint8_t* pData, std::size_t nSize);
} // namespace FormatGrammar
