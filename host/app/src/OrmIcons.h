#pragma once

#include <QIcon>
#include <QString>

/// The icons of the host, one family drawn for this project: crisp at every size, in the colours of the palette in use. While the program
/// runs in the desktop's own colours, the desktop's icon theme comes first.
namespace OrmIcons
{
/// @p strName is that of a drawing in icons.qrc. An unknown one gives an empty icon.
QIcon icon(const QString& strName);
/// Makes the drawings known to this program, which has them in a library; to be called before they are read.
void init();
/// Whether icon() looks into the desktop's icon theme first.
void setThemeFirst(bool bThemeFirst);
} // namespace OrmIcons
