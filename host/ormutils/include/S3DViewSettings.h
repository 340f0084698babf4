#ifndef S3DVIEWSETTINGS_H
#define S3DVIEWSETTINGS_H

#include <QColor>
#include <QString>

/// Preferences of the 3D views. A default-constructed record has invalid colours and empty strings;
/// COrmPreference::get3DViewPreferences() fills it. The order of the fields is part of the record's layout.
struct S3DViewSettings
{
    QColor clrBackground;          ///< behind the scene
    QColor clrAxes;                ///< coordinate axes
    QColor clrBoundingBox;         ///< box around the scene
    bool bShowAxes = false;        ///< whether the axes are drawn
    bool bShowBoundingBox = false; ///< whether the box is drawn
    QString strAxisX;              ///< label of the x axis
    QString strAxisY;              ///< label of the y axis
    QString strAxisZ;              ///< label of the z axis
    QColor clrGrid;                ///< grid lines
    QColor clrGridText;            ///< numbers at the grid
    bool bShowGrid = false;        ///< whether the grid is drawn
    QString strGridUnit;           ///< unit written at the grid
    QColor clrHighlight;           ///< what the pointer is over
    QColor clrText;                ///< text on the colour bars
    QColor clrSelection;           ///< what is selected
    QColor clrSurface;             ///< surfaces without a density map
    int nFontSize = 8;             ///< point size of text in 3D views
    QString strFontFamily;         ///< font of text in 3D views; empty: the application's
};

#endif
