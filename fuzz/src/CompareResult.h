#pragma once

#include <string>

/// Reads saved results with the tool's readers and with the plain second one, and demands that both agree.
namespace CompareResult
{
/// Returns whether the document was read. Needs an application object, since the host reads sections through a palette.
/// @param strUnit  the unit selected: "photons/sec", "uncalibrated" (the fluorescent one without calibration), "cells" or "pmol"
bool readBothWays(const std::string& strDocument, bool bNova, const std::string& strUnit);
} // namespace CompareResult
