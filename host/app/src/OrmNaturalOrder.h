#pragma once

#include <QString>

namespace OrmNaturalOrder
{
/// Below, equal to or above 0 as @p strLeft stands before, with or behind @p strRight: case aside, and with runs of digits compared as
/// numbers of any length. The same in every locale.
int compare(const QString& strLeft, const QString& strRight);
} // namespace OrmNaturalOrder
