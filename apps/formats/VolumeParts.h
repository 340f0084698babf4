#pragma once

#include "SOpenVolume.h"
#include "VolumeReaders.h"

#include <string_view>
#include <vector>

/// What the readers of volumes share.
namespace VolumeParts
{
/// Most bytes of the numbers of a volume, also when they come out of a compressed file.
constexpr qint64 nMostBytes = 1073741824;

/// Bytes of the numbers by size and type of the volume. False with the reason where a size is not above 0 or the product is too large.
bool bytesOf(const SOpenVolume& volume, qint64& nBytes, QString& strReason);

/// An empty text where steps and origin are finite and span a space, else what is wrong with them.
QString problemOfGrid(const SOpenVolume& volume);

/// Takes the numbers from the bytes behind @p nAt: as they are, or out of a zlib or gzip stream. They must be exactly those that size
/// and type ask for, or at least those with @p bMayBeMore. An empty text, or the reason.
QString takeValues(const QByteArray& baContent, qint64 nAt, bool bCompressed, bool bMayBeMore, SOpenVolume& volume);

/// Whole text as numbers between blanks, as many as asked for.
bool numbers(std::string_view strText, std::size_t nCount, std::vector<double>& vecNumbers);

/// The name of a file from a header, as UTF-8.
QString nameOf(std::string_view strText);
} // namespace VolumeParts

/// Streams of zlib or gzip.
namespace Inflating
{
/// Whether the bytes begin like a gzip stream.
bool isGzip(const QByteArray& baContent);

/// Puts at most the first @p nWanted bytes that the stream behind @p nAt holds into @p baOut; it grows with what comes. Several gzip
/// members after each other count as one stream. @p bMore tells whether there would be more. An empty text, or the reason.
QString inflate(const QByteArray& baContent, qint64 nAt, qint64 nWanted, QByteArray& baOut, bool& bMore);
} // namespace Inflating
