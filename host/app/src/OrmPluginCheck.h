#pragma once

#include <QJsonObject>
#include <QString>

/// What can be told of a tool library before any code of it runs. Each function gives an empty text where nothing speaks against it, else
/// the second half of a sentence that begins with the file's name.
namespace OrmPluginCheck
{
/// A folder that nobody but the user and the system's administrator can put files into; no link.
QString folderRefusal(const QString& strFolder);
/// A regular file that nobody but the user and the system's administrator can change; no link, no pipe, no device.
QString fileRefusal(const QString& strFile);
/// Readable metadata, the Qt major version of this host, an IID of this host's tools. @p strError is the loader's own reason.
QString metaDataRefusal(const QJsonObject& objMetaData, const QString& strError);
/// The "IID" of the metadata.
QString identifier(const QJsonObject& objMetaData);
/// True for the name of a library.
bool isLibraryName(const QString& strFileName);
} // namespace OrmPluginCheck
