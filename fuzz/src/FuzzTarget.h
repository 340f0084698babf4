#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>

/// What every target has, and what runs it: libFuzzer in the fuzz preset, a small main() that replays files in the others.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize);

namespace FuzzTarget
{
/// The first byte of an input that is no document but a list of choices from which the target builds one. No text begins with it.
constexpr std::uint8_t nChoices = 1;

inline bool isChoices(const std::uint8_t* pData, std::size_t nSize)
{
    return nSize > 0 && pData[0] == nChoices;
}

/// The text that an input is, or that is built from its choices by @p fnBuild, which is given them and their number.
template <typename FnBuild>
std::string textOf(const std::uint8_t* pData, std::size_t nSize, const FnBuild& fnBuild)
{
    return isChoices(pData, nSize) ? fnBuild(pData + 1, nSize - 1) : std::string(reinterpret_cast<const char*>(pData), nSize);
}

/// Ends the program with the message unless the demand is met; the runner then keeps the input.
void demand(bool bMet, const std::string& strMessage);

/// Counts how the readers under test took an input. A replay in which they took all or refused all has shown little, and fails.
void tookInput(bool bTaken);
long takenInputs();
long refusedInputs();

/// Writes the bytes to the one file that this process uses for documents, and returns its path.
QString fileWith(const QByteArray& baContent);

std::string text(const QString& strText);
} // namespace FuzzTarget

/// Demands at its end that what was allocated in between stayed within a bound, whatever the input claimed.
class CMemoryBound
{
public:
    /// @p nBytes more than was allocated at the beginning.
    explicit CMemoryBound(long long nBytes);
    ~CMemoryBound();
    CMemoryBound(const CMemoryBound&) = delete;
    CMemoryBound& operator=(const CMemoryBound&) = delete;

private:
    long long m_nBound;
};
