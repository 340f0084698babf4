#pragma once

#include <QImage>
#include <QString>

/// A photograph with a luminescent image laid over it.
namespace OrmOverlay
{
constexpr qint64 s_nMaxFileBytes = 268435456; ///< image files above that are refused
constexpr qint64 s_nMaxPixels = 100000000;    ///< images of more pixels are refused

/// Reads an image file. A null image with one sentence in @p pstrReason where that does not work.
QImage load(const QString& strFile, QString* pstrReason);
/// The photograph in grey with the luminescent image in colour over it: from its lowest value (not seen) to its highest (opaque, times
/// @p fOpacity of 0 to 1), scaled to the photograph's size. One of the two may be null; with none the result is null.
QImage compose(const QImage& imgPhotograph, const QImage& imgLuminescent, double fOpacity);
} // namespace OrmOverlay
