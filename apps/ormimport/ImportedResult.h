#pragma once

#include "CubicVoxels.h"
#include "ImportOptions.h"
#include "SOpenSurface.h"
#include "SavedResult.h"

/// Makes a saved result of what was read from open formats.
namespace ImportedResult
{
/// Puts the maps that were asked for into their order, with their names: see --maps. An empty text, or why that cannot be done.
QString chooseMaps(const QStringList& lstWanted, SOpenSurface& surface);

/// Fills everything but the sequence's ID and the click numbers. An empty text, or why no result can be made: the numbers do not fit.
QString fill(const SImportOptions& options, const SOpenSurface& surface, const SCubicVoxels& voxels, SSavedResult& result);

/// One sentence where all voxels lie beside the box around the surface; else empty.
QString misplaced(const SSavedResult& result);
} // namespace ImportedResult
