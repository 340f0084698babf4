#pragma once

#include <QIcon>
#include <QList>
#include <QStringList>

/// The icons of the host, one family drawn for this project: crisp at every size, in the colours of the palette in use. While the program
/// runs in the desktop's own colours, the desktop's icon theme comes first where it has all that stand together.
namespace OrmIcons
{
/// The drawing of that name in icons.qrc; an unknown one gives an empty icon.
QIcon drawing(const QString& strName);
/// The mark of what was taken: luminescence before fluorescence, a camera where it is neither.
QIcon kindIcon(bool bLuminescent, bool bFluorescent);
/// The icons of commands that stand together, by the names of their drawings: those of the desktop's theme if it comes first and has every
/// one of them, else the drawings, so that no menu or tool bar mixes two families.
QList<QIcon> family(const QStringList& lstNames);
/// Makes the drawings known to this program, which has them in a library; to be called before they are read.
void init();
/// Whether family() looks into the desktop's icon theme first.
void setThemeFirst(bool bThemeFirst);
} // namespace OrmIcons
