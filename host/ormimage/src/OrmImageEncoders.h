#pragma once

#include <QIODevice>
#include <QImage>
#include <QString>

/// The file formats of pictures, each written to an open device that can seek. The picture is opaque, of the type QImage::Format_RGB32, and
/// has a resolution. Each operation returns an empty text, or why it failed.
namespace OrmImageEncoders
{
/// Windows bitmap: 24 bits a pixel, uncompressed.
QString encodeBmp(const QImage& image, QIODevice& device);

/// JPEG, the one format with loss: quality 95 of 100.
QString encodeJpeg(const QImage& image, QIODevice& device);

/// PNG: RGB, 8 bits a sample.
QString encodePng(const QImage& image, QIODevice& device);

/// Encapsulated PostScript, language level 3: one picture of the printed size that resolution and pixels give, its pixels compressed
/// without loss, drawn unsmoothed. Source: Adobe, "Encapsulated PostScript File Format Specification", version 3.0.
QString encodeEps(const QImage& image, QIODevice& device);

/// TIFF 6.0: RGB, 8 bits a sample, LZW with horizontal differencing, resolution in dots per inch.
QString encodeTiff(const QImage& image, QIODevice& device);

/// Dots per inch of a picture that stores dots per metre: the whole number that is meant where rounding to metres hides one.
double dotsPerInch(int nDotsPerMeter);
} // namespace OrmImageEncoders
