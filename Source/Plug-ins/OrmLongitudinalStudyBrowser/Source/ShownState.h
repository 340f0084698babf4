#pragma once

#include "PictureState.h"

class QImage;
class QWidget;

/// What the tool's window shows now.
namespace ShownState
{
/// The unit that is selected for the results of a kind, 0 or 1.
QString unitOf(const QWidget& window, int nKind);

/// What is seen on the tab in front, in words: "view", or which plot.
QString pictureOf(const QWidget& window);

/// Results, units, colours, rotation and projection.
/// @param strPicture what a picture of it shows, in words
SPictureState of(const QWidget& window, const QString& strPicture);

/// Gives a picture of the tab in front the program and the state as texts. Where memory is too short for them it stays as it is: a picture
/// without texts is worth more than none.
void sign(const QWidget& window, QImage& image);
} // namespace ShownState
