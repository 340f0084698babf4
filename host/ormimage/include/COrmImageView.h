#pragma once

class COrmPalette;
class RenderTextWidget;

/// Drawing operations that image views share.
class COrmImageView
{
public:
    /// Draws a vertical colour bar of a palette with the current matrices: left edge, bottom edge, width and height in units of the current
    /// (orthographic, not turned) box. Each row of pixels has the palette's colour of the value that the row stands for.
    /// With bLabels tick marks and labels stand to its right, up to 55 pixels from the bar, in the text colour and one point below the font
    /// size of the 3D preferences; the lowest label does not sink below the bar. Without a text widget there are no labels.
    /// A bar less than one unit high, or without a palette, is not drawn. The OpenGL state is left as found; a context must be current.
    static void renderColorBar(COrmPalette* pPalette, RenderTextWidget* pTextWidget, float fLeft, float fBottom, float fWidth,
                               float fHeight, bool bLabels);
};
