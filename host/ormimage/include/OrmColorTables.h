#pragma once

#include "ORM_COLORTABLE_TYPES.h"

#include <QRgb>
#include <QString>
#include <QStringList>

#include <array>

/// The display name of a colour table, the same text as in lists of tables; "Surface" for the ramp of surface maps.
/// An unknown type gives an empty text.
QString getCTNameForColorTable(ORM_COLORTABLE_TYPES eType);

/// The colours of the colour tables and the order in which tables are offered for volumes.
/// Sources, authors and licences of the tables: COLORTABLES.md in the folder of this library.
namespace OrmColorTables
{
/// Number of colours of a table as it is handed out.
constexpr int nTableSize = 256;

/// A table of opaque colours, from the colour of the lowest value to that of the highest.
using Table = std::array<QRgb, nTableSize>;

/// Number of tables offered for volumes.
constexpr int nVolumeTables = 13;

/// The names of the tables offered for volumes, in the order of the lists that show them.
QStringList volumeTableNames();

/// The type of the table at a place (0 to 12) in the list of names. Any other place gives ORM_CT_RED.
ORM_COLORTABLE_TYPES typeForPosition(int nPosition);

/// The place of a table in the list of names; -1 if it is not offered for volumes.
int positionForType(ORM_COLORTABLE_TYPES eType);

/// Whether the type is one of those above.
bool isKnownType(ORM_COLORTABLE_TYPES eType);

/// The colours of a table, made on the first use and shared by all. An unknown type gives those of ORM_CT_GRAYS.
const Table& table(ORM_COLORTABLE_TYPES eType);

/// The colour of a table at a fraction of its length, clamped to 0 .. 1; not a number counts as 0.
QRgb colorAt(ORM_COLORTABLE_TYPES eType, double fFraction);
} // namespace OrmColorTables
