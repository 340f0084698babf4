#pragma once

// A view that paints what a test asks for, readers of its pictures, and a record of OpenGL's state.

#include "../support/OrmTestMain.h"
#include "COrmPreference.h"
#include "CSOLAView.h"
#include "Singleton.h"

#include <QApplication>
#include <QImage>
#include <QTest>

#include <array>
#include <functional>
#include <vector>

#include <GL/gl.h>

namespace SOLAViewTest
{
/// A view that paints what a test asks for.
class CView : public CSOLAView
{
public:
    explicit CView(QWidget* pParent = nullptr) : CSOLAView(pParent) {}

    /// The picture of a frame that does this on black ground.
    QImage paint(const std::function<void()>& fnPaint)
    {
        m_fnPaint = fnPaint;
        const QImage img = grabFramebuffer();
        m_fnPaint = nullptr;
        return img;
    }
    /// Viewport and box, as the views of the host record them.
    void place(const QRect& rectViewport, double fLeft, double fRight, double fBottom, double fTop)
    {
        Singleton::getInstance()->glViewport(rectViewport.x(), rectViewport.y(), rectViewport.width(), rectViewport.height());
        Singleton::getInstance()->glOrtho(fLeft, fRight, fBottom, fTop, -1, 1);
    }

    using CSOLAView::m_dBoxMaxX;
    using CSOLAView::m_dBoxMaxY;
    using CSOLAView::m_dBoxMaxZ;
    using CSOLAView::m_dBoxMinX;
    using CSOLAView::m_dBoxMinY;
    using CSOLAView::m_dBoxMinZ;
    using CSOLAView::m_fRotationX;
    using CSOLAView::m_fRotationY;
    using CSOLAView::m_fRotationZ;
    using CSOLAView::m_nGLHeight;
    using CSOLAView::m_nGLWidth;
    using CSOLAView::m_nTextHeight;
    using CSOLAView::m_nTileHeight;
    using CSOLAView::m_nTileWidth;
    using CSOLAView::m_pFontMetrics;

    std::function<void()> m_fnPaint;
    int m_nPaints = 0;

protected:
    void paintGL() override
    {
        ++m_nPaints;
        glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (m_fnPaint)
        {
            m_fnPaint();
        }
    }
};

inline void showView(CView& view, const QSize& size = QSize(400, 300))
{
    view.resize(size);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
}

/// The rectangle of all pixels that are not black, origin at the bottom left.
inline QRect drawn(const QImage& img)
{
    QRect rectFound;
    for (int nY = 0; nY < img.height(); ++nY)
    {
        for (int nX = 0; nX < img.width(); ++nX)
        {
            if (img.pixel(nX, nY) != qRgb(0, 0, 0))
            {
                rectFound = rectFound.united(QRect(nX, img.height() - 1 - nY, 1, 1));
            }
        }
    }
    return rectFound;
}

/// A great many values of OpenGL's state, by number.
inline std::vector<double> glState()
{
    static const GLenum s_aeNames[] = {GL_CURRENT_COLOR,
                                       GL_CURRENT_NORMAL,
                                       GL_CURRENT_TEXTURE_COORDS,
                                       GL_CURRENT_RASTER_POSITION,
                                       GL_CURRENT_RASTER_COLOR,
                                       GL_CURRENT_RASTER_POSITION_VALID,
                                       GL_POINT_SIZE,
                                       GL_POINT_SMOOTH,
                                       GL_LINE_WIDTH,
                                       GL_LINE_SMOOTH,
                                       GL_LINE_STIPPLE,
                                       GL_LINE_STIPPLE_PATTERN,
                                       GL_LINE_STIPPLE_REPEAT,
                                       GL_POLYGON_MODE,
                                       GL_POLYGON_SMOOTH,
                                       GL_POLYGON_STIPPLE,
                                       GL_EDGE_FLAG,
                                       GL_CULL_FACE,
                                       GL_CULL_FACE_MODE,
                                       GL_FRONT_FACE,
                                       GL_LIGHTING,
                                       GL_LIGHT0,
                                       GL_LIGHT1,
                                       GL_LIGHT_MODEL_AMBIENT,
                                       GL_LIGHT_MODEL_TWO_SIDE,
                                       GL_LIGHT_MODEL_LOCAL_VIEWER,
                                       GL_SHADE_MODEL,
                                       GL_COLOR_MATERIAL,
                                       GL_COLOR_MATERIAL_FACE,
                                       GL_COLOR_MATERIAL_PARAMETER,
                                       GL_FOG,
                                       GL_FOG_MODE,
                                       GL_FOG_DENSITY,
                                       GL_DEPTH_RANGE,
                                       GL_DEPTH_TEST,
                                       GL_DEPTH_WRITEMASK,
                                       GL_DEPTH_CLEAR_VALUE,
                                       GL_DEPTH_FUNC,
                                       GL_ACCUM_CLEAR_VALUE,
                                       GL_STENCIL_TEST,
                                       GL_STENCIL_FUNC,
                                       GL_STENCIL_REF,
                                       GL_STENCIL_FAIL,
                                       GL_STENCIL_WRITEMASK,
                                       GL_MATRIX_MODE,
                                       GL_NORMALIZE,
                                       GL_VIEWPORT,
                                       GL_MODELVIEW_STACK_DEPTH,
                                       GL_PROJECTION_STACK_DEPTH,
                                       GL_TEXTURE_STACK_DEPTH,
                                       GL_MODELVIEW_MATRIX,
                                       GL_PROJECTION_MATRIX,
                                       GL_TEXTURE_MATRIX,
                                       GL_ATTRIB_STACK_DEPTH,
                                       GL_CLIENT_ATTRIB_STACK_DEPTH,
                                       GL_ALPHA_TEST,
                                       GL_ALPHA_TEST_FUNC,
                                       GL_ALPHA_TEST_REF,
                                       GL_DITHER,
                                       GL_BLEND,
                                       GL_BLEND_SRC,
                                       GL_BLEND_DST,
                                       GL_BLEND_EQUATION_RGB,
                                       GL_LOGIC_OP_MODE,
                                       GL_COLOR_LOGIC_OP,
                                       GL_SCISSOR_BOX,
                                       GL_SCISSOR_TEST,
                                       GL_COLOR_CLEAR_VALUE,
                                       GL_COLOR_WRITEMASK,
                                       GL_UNPACK_SWAP_BYTES,
                                       GL_UNPACK_LSB_FIRST,
                                       GL_UNPACK_ROW_LENGTH,
                                       GL_UNPACK_SKIP_ROWS,
                                       GL_UNPACK_SKIP_PIXELS,
                                       GL_UNPACK_ALIGNMENT,
                                       GL_PACK_ALIGNMENT,
                                       GL_PACK_ROW_LENGTH,
                                       GL_MAP_COLOR,
                                       GL_ALPHA_SCALE,
                                       GL_ALPHA_BIAS,
                                       GL_RED_SCALE,
                                       GL_ZOOM_X,
                                       GL_ZOOM_Y,
                                       GL_TEXTURE_1D,
                                       GL_TEXTURE_2D,
                                       GL_TEXTURE_BINDING_2D,
                                       GL_TEXTURE_GEN_S,
                                       GL_TEXTURE_GEN_T,
                                       GL_ACTIVE_TEXTURE,
                                       GL_CLIENT_ACTIVE_TEXTURE,
                                       GL_VERTEX_ARRAY,
                                       GL_NORMAL_ARRAY,
                                       GL_COLOR_ARRAY,
                                       GL_TEXTURE_COORD_ARRAY,
                                       GL_ARRAY_BUFFER_BINDING,
                                       GL_ELEMENT_ARRAY_BUFFER_BINDING,
                                       GL_PIXEL_UNPACK_BUFFER_BINDING,
                                       GL_POINT_SPRITE,
                                       GL_MULTISAMPLE,
                                       GL_POLYGON_OFFSET_FILL,
                                       GL_RENDER_MODE,
                                       GL_NAME_STACK_DEPTH,
                                       GL_LIST_BASE,
                                       GL_CURRENT_PROGRAM};
    std::vector<double> vecState;
    for (const GLenum eName : s_aeNames)
    {
        std::array<GLdouble, 16> adValues{};
        glGetDoublev(eName, adValues.data());
        vecState.insert(vecState.end(), adValues.begin(), adValues.end());
    }
    for (const GLenum eName : {GL_TEXTURE_ENV_MODE})
    {
        GLint nValue = 0;
        glGetTexEnviv(GL_TEXTURE_ENV, eName, &nValue);
        vecState.push_back(nValue);
    }
    for (const GLenum eName : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_POSITION})
    {
        std::array<GLfloat, 4> afValues{};
        glGetLightfv(GL_LIGHT0, eName, afValues.data());
        vecState.insert(vecState.end(), afValues.begin(), afValues.end());
    }
    return vecState;
}

/// The worst that a caller can have set.
inline void setHostileState(GLuint nTexture)
{
    glBindTexture(GL_TEXTURE_2D, nTexture);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_NEVER);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 333);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 3);
    glPixelTransferf(GL_ALPHA_SCALE, 0.0f);
    glEnable(GL_LIGHTING);
    glEnable(GL_FOG);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.99f);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glEnable(GL_STENCIL_TEST);
    glStencilFunc(GL_NEVER, 0, 0);
    glEnable(GL_POLYGON_STIPPLE);
    glEnable(GL_TEXTURE_GEN_S);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glDisable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_ZERO);
    glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
    glMatrixMode(GL_TEXTURE);
    glTranslatef(0.3f, 0.4f, 0.0f);
    glMatrixMode(GL_MODELVIEW);
    glRotatef(33.0f, 1.0f, 1.0f, 0.0f);
    glMatrixMode(GL_PROJECTION);
    glScalef(0.1f, -3.0f, 1.0f);
    glViewport(7, 9, 11, 13);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glDepthMask(GL_FALSE);
}
} // namespace SOLAViewTest
