#pragma once

#include <sys/types.h>

/// What a process does between its birth and exec.
namespace ChildSetup
{
/// Makes this process end when the one that started it does, in whatever way, and leaves the keys of the terminal to that one. Signals that
/// the parent keeps back are let through again. Only calls that are safe after a fork.
void endWithParent(pid_t nParent);
} // namespace ChildSetup
