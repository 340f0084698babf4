#pragma once

#include <QColor>
#include <QImage>
#include <QMatrix4x4>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QString>

#include <memory>
#include <stdexcept>

#include <GL/gl.h>

/// A frame buffer to draw into with the fixed-function interface, without a window.
class COffscreenGl
{
public:
    COffscreenGl(int nWidth, int nHeight)
    {
        QSurfaceFormat objFormat;
        objFormat.setVersion(2, 1);
        objFormat.setProfile(QSurfaceFormat::CompatibilityProfile);
        objFormat.setDepthBufferSize(24);
        objFormat.setStencilBufferSize(8);
        m_objSurface.setFormat(objFormat);
        m_objSurface.create();
        m_objContext.setFormat(objFormat);
        if (!m_objContext.create() || !m_objContext.makeCurrent(&m_objSurface))
            throw std::runtime_error("there is no OpenGL");
        resize(nWidth, nHeight);
    }
    ~COffscreenGl()
    {
        m_pBuffer.reset();
        m_objContext.doneCurrent();
    }
    COffscreenGl(const COffscreenGl&) = delete;
    COffscreenGl& operator=(const COffscreenGl&) = delete;

    void resize(int nWidth, int nHeight, bool bStencil = true)
    {
        // Without alpha, as windows are: with it, what is translucent would be read back brighter than it is seen.
        m_pBuffer = std::make_unique<QOpenGLFramebufferObject>(
            nWidth, nHeight, bStencil ? QOpenGLFramebufferObject::CombinedDepthStencil : QOpenGLFramebufferObject::Depth, GL_TEXTURE_2D,
            GL_RGB8);
        m_pBuffer->bind();
        glViewport(0, 0, nWidth, nHeight);
    }
    int width() const { return m_pBuffer->width(); }
    int height() const { return m_pBuffer->height(); }

    /// Clears the frame and sets up the matrices of a tile: a box of half the size along x and y around the origin, cut one millimetre
    /// before it, and a turned object.
    void begin(const QColor& colorBack, double fHalfX, double fHalfY, float fTurnX = 0.0f, float fTurnY = 0.0f, float fTurnZ = 0.0f)
    {
        glClearColor(static_cast<float>(colorBack.redF()), static_cast<float>(colorBack.greenF()), static_cast<float>(colorBack.blueF()),
                     1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-fHalfX, fHalfX, -fHalfY, fHalfY, -1.0, 1000.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        light();
        glRotatef(fTurnX, 1, 0, 0);
        glRotatef(fTurnY, 0, 1, 0);
        glRotatef(fTurnZ, 0, 0, 1);
    }

    /// One light that stays with the viewer.
    static void light()
    {
        const float afDirection[4] = {0.25f, 0.4f, 1.0f, 0.0f};
        const float afDiffuse[4] = {0.72f, 0.72f, 0.72f, 1.0f};
        const float afNone[4] = {0.0f, 0.0f, 0.0f, 1.0f};
        const float afAmbient[4] = {0.3f, 0.3f, 0.3f, 1.0f};
        glLightfv(GL_LIGHT0, GL_POSITION, afDirection);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, afDiffuse);
        glLightfv(GL_LIGHT0, GL_AMBIENT, afNone);
        glLightfv(GL_LIGHT0, GL_SPECULAR, afNone);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, afAmbient);
        glEnable(GL_LIGHT0);
    }

    /// The frame with row 0 at the top.
    QImage grab() const { return m_pBuffer->toImage(true).convertToFormat(QImage::Format_RGB32); }
    /// What OpenGL complains about since the last time; 0 for nothing.
    static unsigned int error()
    {
        const unsigned int eFirst = glGetError();
        while (glGetError() != GL_NO_ERROR)
        {
        }
        return eFirst;
    }

private:
    QOffscreenSurface m_objSurface;
    QOpenGLContext m_objContext;
    std::unique_ptr<QOpenGLFramebufferObject> m_pBuffer;
};
