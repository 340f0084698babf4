#include "CSOLATextCache.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QtGui/qopengl.h>

#include <algorithm>
#include <memory>

#include <GL/gl.h>

namespace
{
constexpr int TextsKept = 256;

/// What decides how a texture is filled, whatever the caller had set.
void setUnpacking()
{
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_FALSE);
    glPixelStorei(GL_UNPACK_LSB_FIRST, GL_FALSE);
    glPixelTransferf(GL_ALPHA_SCALE, 1.0f);
    glPixelTransferf(GL_ALPHA_BIAS, 0.0f);
    glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
}

/// What decides how a quad is drawn, but for its colour.
void setDrawing()
{
    for (const GLenum eCapability :
         {GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_ALPHA_TEST, GL_FOG, GL_COLOR_LOGIC_OP,
          GL_POLYGON_STIPPLE, GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP})
    {
        glDisable(eCapability);
    }
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glDepthMask(GL_FALSE);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void pushIdentity(GLenum eMatrix)
{
    glMatrixMode(eMatrix);
    glPushMatrix();
    glLoadIdentity();
}

void popMatrix(GLenum eMatrix)
{
    glMatrixMode(eMatrix);
    glPopMatrix();
}
} // namespace

/// A text as an alpha texture.
struct CSOLATextCache::SGlyphs
{
    GLuint nTexture = 0;
    int nWidth = 0; ///< pixels; 0: nothing to see
    int nHeight = 0;
    int nLeft = 0;   ///< from the start of the baseline to the left edge
    int nBottom = 0; ///< from the baseline to the lower edge, downwards negative

    SGlyphs() = default;
    SGlyphs(const SGlyphs&) = delete;
    SGlyphs& operator=(const SGlyphs&) = delete;
    ~SGlyphs()
    {
        if (nTexture)
        {
            glDeleteTextures(1, &nTexture);
        }
    }
};

CSOLATextCache::CSOLATextCache() : m_objGlyphs(TextsKept) {}

CSOLATextCache::~CSOLATextCache() = default;

CSOLATextCache::SGlyphs* CSOLATextCache::glyphs(const QString& strText, const QFont& font)
{
    const QString strKey = font.key() + QLatin1Char('\n') + strText;
    if (SGlyphs* pKnown = m_objGlyphs.object(strKey))
    {
        return pKnown;
    }
    // The bounding rectangle alone can be narrower than what hinted glyphs take; a margin is for what antialiasing adds.
    const QFontMetrics objMetrics(font);
    QRect rect = objMetrics.boundingRect(strText)
                     .united(QRect(0, -objMetrics.ascent(), objMetrics.horizontalAdvance(strText), objMetrics.height()))
                     .adjusted(-2, -1, 2, 1);
    GLint nLargest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &nLargest);
    rect.setSize(rect.size().boundedTo(QSize(nLargest, nLargest)));

    QImage img(rect.size(), QImage::Format_Alpha8);
    img.fill(0);
    {
        QFont fontDrawn(font);
        fontDrawn.setStyleStrategy(static_cast<QFont::StyleStrategy>(font.styleStrategy() | QFont::NoSubpixelAntialias));
        QPainter painter(&img);
        painter.setPen(Qt::white);
        painter.setFont(fontDrawn);
        painter.drawText(-rect.left(), -rect.top(), strText);
    }
    auto pGlyphs = std::make_unique<SGlyphs>();
    pGlyphs->nWidth = img.width();
    pGlyphs->nHeight = img.height();
    pGlyphs->nLeft = rect.left();
    pGlyphs->nBottom = -(rect.bottom() + 1);
    glGenTextures(1, &pGlyphs->nTexture);
    glBindTexture(GL_TEXTURE_2D, pGlyphs->nTexture);
    setUnpacking();
    glPixelStorei(GL_UNPACK_ROW_LENGTH, img.bytesPerLine());
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, img.width(), img.height(), 0, GL_ALPHA, GL_UNSIGNED_BYTE, img.constBits());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    m_objGlyphs.insert(strKey, pGlyphs.release());
    return m_objGlyphs.object(strKey);
}

void CSOLATextCache::draw(const QString& strText, const QFont& font, int nX, int nY, int nSurfaceWidth, int nSurfaceHeight)
{
    // Everything is saved here, on top of the stack, since a narrow push by somebody further out need not bring back what changes here.
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glActiveTexture(GL_TEXTURE0);
    const SGlyphs* pGlyphs = glyphs(strText, font);
    setDrawing();
    glBindTexture(GL_TEXTURE_2D, pGlyphs->nTexture);
    glViewport(0, 0, nSurfaceWidth, nSurfaceHeight);
    pushIdentity(GL_TEXTURE);
    pushIdentity(GL_MODELVIEW);
    pushIdentity(GL_PROJECTION);
    glOrtho(0.0, nSurfaceWidth, 0.0, nSurfaceHeight, -1.0, 1.0);

    const int nLeft = nX + pGlyphs->nLeft;
    const int nBottom = nY + pGlyphs->nBottom;
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2i(nLeft, nBottom);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2i(nLeft + pGlyphs->nWidth, nBottom);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2i(nLeft + pGlyphs->nWidth, nBottom + pGlyphs->nHeight);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2i(nLeft, nBottom + pGlyphs->nHeight);
    glEnd();

    popMatrix(GL_PROJECTION);
    popMatrix(GL_MODELVIEW);
    popMatrix(GL_TEXTURE);
    glPopClientAttrib();
    glPopAttrib();
}
