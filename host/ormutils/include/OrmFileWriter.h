#pragma once

#include <QByteArray>
#include <QString>

/// Writes files whole or not at all.
namespace OrmFileWriter
{
/// Puts the bytes in the place of @p strFile. The file is replaced when the new one is complete and on the disk; whatever fails before
/// leaves the old file as it was and no other behind.
/// @return an empty text, or why nothing was written: diskIsFull(), or what the system says
QString replace(const QString& strFile, const QByteArray& baContent);

/// The reason that the user can do most about.
QString diskIsFull();
} // namespace OrmFileWriter
