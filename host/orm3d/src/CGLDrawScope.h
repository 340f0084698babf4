#pragma once

#include <array>

/// Makes a place to draw in a fixed-function frame of somebody else: whatever state that frame is in, the drawing is not
/// disturbed by it, and nothing of it is different afterwards. Everything is pushed, not only what is known to be changed: a narrow
/// push inside another one can lose what the outer one should restore.
class CGLDrawScope
{
public:
    /// Saves all state and switches off what could get between a vertex array and the pixels: texturing, lighting, tests, masks,
    /// stipples, programs, arrays, buffers. The depth test is on for what is nearer or as near, and all colours and depths are written.
    /// Viewport, scissor, clip planes, lights and matrices stay as they are.
    CGLDrawScope();
    /// Brings all state back.
    ~CGLDrawScope();
    CGLDrawScope(const CGLDrawScope&) = delete;
    CGLDrawScope& operator=(const CGLDrawScope&) = delete;

    /// Moves the depth range of an orthographic projection until eye depth 0 is in its middle, so that near and far do not cut what lies
    /// around the origin. x and y are not touched; other projections stay as they are.
    void centreDepth();
    /// Draws nothing outside of the viewport, not even a part of a large point.
    void clipToViewport();
    /// From here on coordinates are pixels, from the lower left corner of the viewport on; what is just beyond its edge is not dropped.
    void toPixels();
    /// Coordinates are those of the scene again.
    void toScene();

    /// The matrices of the scene, column by column.
    const std::array<float, 16>& projection() const { return m_afProjection; }
    const std::array<float, 16>& modelview() const { return m_afModelview; }
    /// x, y, width, height in pixels.
    const std::array<int, 4>& viewport() const { return m_anViewport; }

private:
    std::array<float, 16> m_afProjection;
    std::array<float, 16> m_afProjectionBefore; ///< at the start
    std::array<float, 16> m_afModelview;
    std::array<int, 4> m_anViewport;
    unsigned int m_nProgram = 0; ///< shader program at the start
    bool m_bColorSum = false;    ///< colour sum at the start, which the attribute stack of Mesa 22 forgets
    bool m_bPrograms = false;    ///< the context knows shader programs
    bool m_bPixels = false;      ///< coordinates are pixels
};
