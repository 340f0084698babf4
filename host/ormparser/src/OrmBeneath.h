#pragma once

#include <QByteArray>
#include <QString>

/// Opening of names that must stay inside a folder.
namespace OrmBeneath
{
/// Why the name itself, whatever lies on disk, cannot be one inside a folder; empty if it can.
QString problemOfName(const QString& strName);

/// Opens @p baName beneath the open folder @p nFolder with the flags of open(2). No path or link on the way may lead out of the folder.
/// Returns the descriptor, or -1 with errno: EXDEV or ELOOP for what leads out, goes in circles or is no ordinary link.
int openBeneath(int nFolder, const QByteArray& baName, int nFlags);
} // namespace OrmBeneath
