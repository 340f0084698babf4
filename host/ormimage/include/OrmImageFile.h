#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

/// Pictures as files for reports and papers, in the format that a file's extension names: Windows bitmap, JPEG, PNG, Encapsulated
/// PostScript and TIFF. All but JPEG keep every pixel.
namespace OrmImageFile
{
/// The extensions, in lower case, that write() takes: "bmp", "jpg", "jpeg", "png", "eps", "tif", "tiff".
QStringList extensions();

/// Writes a picture, with 8 bits a colour and at its own resolution (96 dots per inch where it has none). Files have no transparency: what
/// shines through becomes paper, which is white. The file is replaced when the new one is complete and on the disk; whatever fails
/// before leaves the old file as it was and no other behind.
/// @param strPath file in an existing folder; its extension, in any case of letters, names the format
/// @return an empty text, or one sentence for the user that says why nothing was written and what can be done
QString write(const QImage& image, const QString& strPath);
} // namespace OrmImageFile
