#pragma once

#include <QImage>
#include <QString>

/// Saves pictures for a user. GUI thread only.
class COrmImageExporter
{
public:
    COrmImageExporter() = default;
    ~COrmImageExporter() = default;

    /// Writes the picture in the format that the path's extension names, as OrmImageFile::write() does. A failure is logged and told in a
    /// message box. Neither picture nor path is changed.
    /// @return whether the file is written
    bool saveImage(QImage& image, QString& strPath);
};
