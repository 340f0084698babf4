#pragma once

#include <QtGlobal>

/// What the readers of this library accept at most. Study files come from anywhere, so every size that a file can
/// claim has a bound; a file above one is refused with a message that names the bound. Each value is still accepted.
namespace OrmDocumentLimits
{
constexpr qint64 nFileBytes = 1073741824;       ///< any file that is read whole, in bytes
constexpr int nXmlDepth = 64;                   ///< nested elements, the outermost one counted
constexpr qint64 nXmlElements = 10000000;       ///< elements of one document
constexpr int nXmlAttributes = 256;             ///< attributes of one element
constexpr qint64 nXmlNameBytes = 1024;          ///< name of an element or attribute
constexpr qint64 nXmlValueBytes = 65536;        ///< attribute value as written
constexpr int nXmlSections = 100000;            ///< second tags of different names under one document
constexpr qint64 nXmlRowBytes = 20971520;       ///< one third tag without its long texts
constexpr int nXmlRowElements = 1024;           ///< elements inside one third tag
constexpr qint64 nXmlComposedText = 8388608;    ///< a text that is interrupted by references, comments or CDATA
constexpr qint64 nSettingsTextBytes = 16777216; ///< settings text
constexpr qint64 nSettingsLineBytes = 65536;    ///< one line of it, without its line end
constexpr qint64 nSettingsEntries = 100000;     ///< lines with a key, and lines with a section, each
constexpr int nListedResults = 10000;           ///< saved results that an index lists
} // namespace OrmDocumentLimits
