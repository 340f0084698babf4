#include "CGLDrawScope.h"

#include <QtGui/qopengl.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cstdlib>

namespace
{
/// The major version of the current context.
int contextVersion()
{
    const auto* pText = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    return pText ? std::atoi(pText) : 0;
}

void disableTextures()
{
    GLint nUnits = 1;
    glGetIntegerv(GL_MAX_TEXTURE_UNITS, &nUnits);
    for (GLint i = 0; i < nUnits; ++i)
    {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glDisable(GL_TEXTURE_1D);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_TEXTURE_3D);
        glDisable(GL_TEXTURE_CUBE_MAP);
        glClientActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    glActiveTexture(GL_TEXTURE0);
}

void disableArrays(int nVersion)
{
    if (nVersion >= 3)
        glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    for (const GLenum eArray : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_INDEX_ARRAY, GL_EDGE_FLAG_ARRAY, GL_FOG_COORD_ARRAY,
                                GL_SECONDARY_COLOR_ARRAY})
        glDisableClientState(eArray);
    if (nVersion >= 2)
    {
        GLint nAttributes = 0;
        glGetIntegerv(GL_MAX_VERTEX_ATTRIBS, &nAttributes);
        for (GLint i = 0; i < nAttributes; ++i)
            glDisableVertexAttribArray(static_cast<GLuint>(i));
    }
}
} // namespace

CGLDrawScope::CGLDrawScope()
{
    glGetFloatv(GL_PROJECTION_MATRIX, m_afProjection.data());
    m_afProjectionBefore = m_afProjection;
    glGetFloatv(GL_MODELVIEW_MATRIX, m_afModelview.data());
    glGetIntegerv(GL_VIEWPORT, m_anViewport.data());
    const int nVersion = contextVersion();
    m_bColorSum = glIsEnabled(GL_COLOR_SUM) != GL_FALSE;

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);

    m_bPrograms = nVersion >= 2;
    if (m_bPrograms)
    {
        GLint nProgram = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &nProgram);
        m_nProgram = static_cast<unsigned int>(nProgram);
        if (m_nProgram != 0)
            glUseProgram(0);
    }
    disableArrays(nVersion);
    disableTextures();
    for (const GLenum eState : {GL_LIGHTING,
                                GL_FOG,
                                GL_COLOR_SUM,
                                GL_COLOR_MATERIAL,
                                GL_NORMALIZE,
                                GL_RESCALE_NORMAL,
                                GL_ALPHA_TEST,
                                GL_STENCIL_TEST,
                                GL_BLEND,
                                GL_COLOR_LOGIC_OP,
                                GL_INDEX_LOGIC_OP,
                                GL_DITHER,
                                GL_CULL_FACE,
                                GL_POLYGON_SMOOTH,
                                GL_POLYGON_STIPPLE,
                                GL_POLYGON_OFFSET_FILL,
                                GL_POINT_SMOOTH,
                                GL_SAMPLE_ALPHA_TO_COVERAGE,
                                GL_SAMPLE_ALPHA_TO_ONE,
                                GL_SAMPLE_COVERAGE})
        glDisable(eState);
    if (m_bPrograms)
    {
        glDisable(GL_POINT_SPRITE);
        glDisable(GL_VERTEX_PROGRAM_POINT_SIZE);
    }
    if (nVersion >= 3)
        glDisable(GL_DEPTH_CLAMP);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glShadeModel(GL_SMOOTH);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBlendEquation(GL_FUNC_ADD);
}

CGLDrawScope::~CGLDrawScope()
{
    if (m_bPixels)
        toScene();
    if (m_afProjection != m_afProjectionBefore)
    {
        glMatrixMode(GL_PROJECTION);
        glLoadMatrixf(m_afProjectionBefore.data());
    }
    if (m_nProgram != 0)
        glUseProgram(m_nProgram);
    glPopClientAttrib();
    glPopAttrib(); // with the matrix mode
    if (m_bColorSum)
        glEnable(GL_COLOR_SUM);
}

void CGLDrawScope::centreDepth()
{
    std::array<float, 16>& af = m_afProjection;
    const bool bOrthographic = af[3] == 0.0f && af[7] == 0.0f && af[11] == 0.0f && af[15] == 1.0f;
    if (!bOrthographic || af[14] == 0.0f)
        return;
    af[14] = 0.0f;
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(af.data());
}

void CGLDrawScope::clipToViewport()
{
    int nLeft = m_anViewport[0];
    int nBottom = m_anViewport[1];
    int nRight = nLeft + m_anViewport[2];
    int nTop = nBottom + m_anViewport[3];
    if (glIsEnabled(GL_SCISSOR_TEST))
    {
        std::array<GLint, 4> anBox{};
        glGetIntegerv(GL_SCISSOR_BOX, anBox.data());
        nLeft = std::max(nLeft, anBox[0]);
        nBottom = std::max(nBottom, anBox[1]);
        nRight = std::min(nRight, anBox[0] + anBox[2]);
        nTop = std::min(nTop, anBox[1] + anBox[3]);
    }
    glScissor(nLeft, nBottom, std::max(0, nRight - nLeft), std::max(0, nTop - nBottom));
    glEnable(GL_SCISSOR_TEST);
}

void CGLDrawScope::toPixels()
{
    const int nWidth = m_anViewport[2];
    const int nHeight = m_anViewport[3];
    glViewport(m_anViewport[0] - 1, m_anViewport[1] - 1, nWidth + 2, nHeight + 2);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-1.0, nWidth + 1.0, -1.0, nHeight + 1.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    m_bPixels = true;
}

void CGLDrawScope::toScene()
{
    glViewport(m_anViewport[0], m_anViewport[1], m_anViewport[2], m_anViewport[3]);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(m_afProjection.data());
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixf(m_afModelview.data());
    m_bPixels = false;
}
