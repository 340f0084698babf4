#pragma once

#include <QString>
#include <QStringList>

/// Look-up in the table of results that a reconstruction wrote: parallel lists of keys and values.
namespace ResultsTable
{

/// The number under the first of the keys that the table has; keys compare exactly. 0 where the table has none of them, or
/// where the value isn't a number.
double number(const QStringList& lstKeys, const QStringList& lstValues, const QStringList& lstWanted);

} // namespace ResultsTable
