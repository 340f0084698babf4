#pragma once

#include <functional>

/// Work that may hang in the system, such as a look at a folder on a server that does not answer, off the window's thread.
namespace OrmBackground
{
/// Does the work on a thread of its own, for which nobody waits, not even the end of the program. The work must not throw.
/// @return false where the system gives no further thread; the work is not begun then
bool run(const std::function<void()>& fnWork);
} // namespace OrmBackground
