#pragma once

#include "OrmDocumentLimits.h"

#include <QByteArray>
#include <QString>

/// Reads whole files of a study. Only regular files are read: a folder, FIFO, socket or device is refused without
/// waiting for it. A file above the size limit is refused before a byte of it is read, and one that changes while it
/// is read is refused rather than returned as a mix of old and new.
///
/// Every refusal gives one sentence with the file and the reason, and writes it to the host log at level 3.
namespace OrmFileReader
{
/// Reads @p strFile whole into @p baContent. On failure returns false, leaves @p baContent as it was and puts the
/// reason into @p pstrError if that is given. @p nMaxBytes is the largest size accepted, in bytes.
bool read(const QString& strFile, QByteArray& baContent, QString* pstrError = nullptr, qint64 nMaxBytes = OrmDocumentLimits::nFileBytes);

/// The same for @p strName, a name relative to @p strFolder that must not lead out of it: neither by an absolute path
/// nor through ".." nor through a link. A link to a file inside the folder is followed.
bool readBeneath(const QString& strFolder, const QString& strName, QByteArray& baContent, QString* pstrError = nullptr,
                 qint64 nMaxBytes = OrmDocumentLimits::nFileBytes);

/// Whether @p strName stays inside @p strFolder, in the sense of readBeneath(). A name of which nothing exists yet stays
/// inside as long as the name itself does. Nothing is read; on false @p pstrReason says why. Writes no log entry.
bool isBeneath(const QString& strFolder, const QString& strName, QString* pstrReason = nullptr);
} // namespace OrmFileReader
