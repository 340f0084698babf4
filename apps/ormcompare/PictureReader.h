#pragma once

#include "PictureState.h"

/// Reads what pictures say about how they were made, so that they can be made again.
namespace PictureReader
{
/// Reads a state, which may be anything. Returns an empty text, or one sentence on what is wrong with it.
QString fromJson(const QByteArray& aJson, SPictureState& state);

/// Reads the state that a PNG picture carries; the picture itself is not decoded. Returns an empty text, or one sentence on why there is
/// none that can be repeated.
QString fromFile(const QString& strFile, SPictureState& state);
} // namespace PictureReader
