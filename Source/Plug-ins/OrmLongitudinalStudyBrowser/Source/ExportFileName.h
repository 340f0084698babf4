#pragma once

#include <QString>

/// What the export makes of the path that a user enters: everything but asking him. Paths have "/" between their parts.
namespace ExportFileName
{

/// The formats that the save dialog offers, as its filters, joined with ";;".
QString offeredFilters();

/// True for the extensions that are left as they stand, in any case of letters. Windows metafiles are among them, though not offered.
bool isKnownExtension(const QString& strExtension);

/// The extension that a filter stands for, without its dot; a null text for an unknown filter.
QString extensionOfFilter(const QString& strFilter);

/// What stands before the last "/"; the whole path where there is none.
QString folder(const QString& strPath);

/// The format to remember: what stands behind the first dot of the whole path, be it in a folder's name; the whole path without a dot.
QString formatToRemember(const QString& strPath);

/// The extension of the path's file name, in lower case; empty without one.
QString suffix(const QString& strPath);

/// The path without the dot that ends it; any other path as it is.
QString withoutClosingDot(const QString& strPath);

/// The path with an extension behind it, unless its suffix is that extension already. An extension that is none leaves a dot.
/// @param strSuffix of the path as it was entered, in lower case
QString withExtension(const QString& strPath, const QString& strSuffix, const QString& strExtension);

/// More than 185 characters; the folder doesn't count.
bool isTooLong(const QString& strFileName);

/// The refusal of a name that is too long, broken in its middle so that the box stays narrow.
QString tooLongText(const QString& strFileName);

/// The question before a file is overwritten.
QString overwriteText(const QString& strFileName);

} // namespace ExportFileName
