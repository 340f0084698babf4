#pragma once

#include <QIcon>

/// The small drawings of the main window. They are drawn with strokes in the colours of the palette in use, so that they are crisp at
/// every size and fit a light theme as well as a dark one.
namespace OrmGlyphs
{
enum EGlyph
{
    eStudy,      ///< an open folder
    eDemo,       ///< a mouse
    eDrop,       ///< something falls into a tray
    eCompare,    ///< tiles with bars that grow
    ePhotograph, ///< a camera
    eNotice      ///< an exclamation mark in a triangle
};

QIcon icon(EGlyph eGlyph);
/// The mark of what was taken: luminescence before fluorescence, a camera where it is neither.
QIcon kindIcon(bool bLuminescent, bool bFluorescent);
} // namespace OrmGlyphs
