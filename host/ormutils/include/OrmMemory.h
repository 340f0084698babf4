#pragma once

/// The memory of the process as a whole.
namespace OrmMemory
{
/// Gives what was freed back to the system: the C library keeps most of it otherwise. For after something large has gone; it takes some
/// milliseconds for each hundred megabytes.
void giveBack();
} // namespace OrmMemory
