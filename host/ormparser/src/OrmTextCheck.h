#pragma once

#include <QtGlobal>

/// Checks that bytes are UTF-8 text.
namespace OrmTextCheck
{
enum class EFault
{
    None,
    Nul,       ///< a NUL byte
    Control,   ///< another control character that XML does not allow
    Encoding,  ///< bytes that are no UTF-8, or a code that is no character
    Incomplete ///< the bytes end within a character
};

/// The first byte from @p pText to @p pEnd that is at fault, and how; @p pEnd and EFault::None if none is.
const char* findFault(const char* pText, const char* pEnd, EFault& eFault);

/// Whether the bytes are UTF-8, whatever control characters they hold.
bool isUtf8(const char* pText, const char* pEnd);

/// Length in bytes of the byte-order mark of UTF-8 at the beginning, 0 or 3.
int markLength(const char* pText, qint64 nLength);

/// Whether the text is recognisably UTF-16 or UTF-32, with or without a mark.
bool looksWide(const char* pText, qint64 nLength);
} // namespace OrmTextCheck
