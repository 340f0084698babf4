#pragma once

#include <QCache>
#include <QFont>
#include <QString>

/// The texts of one OpenGL context as textures, the last used ones kept. Every operation but the constructor needs the context to
/// be current, and leaves OpenGL's state as it was but for what draw() is told to draw.
class CSOLATextCache
{
public:
    CSOLATextCache();
    ~CSOLATextCache();
    CSOLATextCache(const CSOLATextCache&) = delete;
    CSOLATextCache& operator=(const CSOLATextCache&) = delete;

    /// Draws the text in the current colour with its baseline starting at a pixel of a surface of nSurfaceWidth x nSurfaceHeight.
    void draw(const QString& strText, const QFont& font, int nX, int nY, int nSurfaceWidth, int nSurfaceHeight);

private:
    struct SGlyphs;
    SGlyphs* glyphs(const QString& strText, const QFont& font);

    QCache<QString, SGlyphs> m_objGlyphs; ///< by font key and text
};
