#pragma once

#include <QPalette>
#include <QString>

/// The colours of all windows: the desktop's, or light or dark ones of the host's own.
namespace OrmTheme
{
enum ETheme
{
    eSystem,
    eLight,
    eDark
};

/// Gives all windows, those of tools included, that look at once.
void apply(ETheme eTheme);
ETheme current();

/// The colours of a theme of the host's own.
QPalette palette(bool bDark);

/// The word by which a theme is kept: "system", "light" or "dark". Any other word stands for the desktop's.
QString name(ETheme eTheme);
ETheme fromName(const QString& strName);
} // namespace OrmTheme
