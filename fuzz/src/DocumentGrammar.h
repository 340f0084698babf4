#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Saved results built from the bytes of a fuzzing input: whole documents whose blocks have the right shape, with counts that lie, texts
/// that are cut, keys in either place, and the rest of what XML allows. Byte by byte no fuzzer finds two counts whose product wraps.
namespace DocumentGrammar
{
struct SBuilt
{
    std::string m_strText;
    bool m_bNova = false;
    std::string m_strUnit; ///< to be selected: "photons/sec", "uncalibrated", "cells" or "pmol"
};

SBuilt build(const std::uint8_t* pData, std::size_t nSize);
} // namespace DocumentGrammar
