#include "COrmImageExporter.h"

#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "COrmUtilityFns.h"
#include "OrmImageFile.h"

#include <QApplication>

bool COrmImageExporter::saveImage(QImage& image, QString& strPath)
{
    const QString strReason = OrmImageFile::write(image, strPath);
    if (strReason.isEmpty())
        return true;
    ORM_LOG(2, strReason);
    COrmMessageBox::critical(QApplication::activeWindow(), COrmUtilityFns::getAppName(), strReason,
                             int(QMessageBox::Ok) | int(QMessageBox::Default));
    return false;
}
