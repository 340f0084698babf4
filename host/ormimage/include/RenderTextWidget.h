#pragma once

class QFont;
class QString;

/// Something that writes text at a scene position, such as an OpenGL view.
class RenderTextWidget
{
public:
    /// Draws the text with its baseline beginning at the scene position, in the current colour, and leaves the OpenGL state as it was.
    /// The number is the base of the display lists that an implementation may use for its glyphs.
    virtual void renderText(double fX, double fY, double fZ, const QString& strText, const QFont& objFont, int nListBase) = 0;

protected:
    RenderTextWidget() = default;
    RenderTextWidget(const RenderTextWidget&) = default;
    RenderTextWidget& operator=(const RenderTextWidget&) = default;
    ~RenderTextWidget() = default;
};
