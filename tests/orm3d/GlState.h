#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <utility>

#include <GL/gl.h>
#include <GL/glext.h>

/// OpenGL state as a list of texts that can be compared, and a state in which nothing is as a drawing would wish it.
namespace GlState
{
/// Everything that a program may ask about the fixed-function state, "name: value".
inline QStringList all()
{
    QStringList lstState;
    const auto add = [&](const QString& strName, const QVector<double>& vecValues)
    {
        QStringList lstValues;
        for (const double f : vecValues)
            lstValues.append(QString::number(f, 'g', 12));
        lstState.append(strName + QStringLiteral(": ") + lstValues.join(QLatin1Char(' ')));
    };
    const auto get = [&](GLenum eName, int nValues)
    {
        QVector<double> vecValues(qMax(nValues, 16), 0.0);
        glGetDoublev(eName, vecValues.data());
        vecValues.resize(nValues);
        add(QString::number(eName, 16), vecValues);
    };
    for (const GLenum eFlag : {GL_ALPHA_TEST,
                               GL_AUTO_NORMAL,
                               GL_BLEND,
                               GL_CLIP_PLANE0,
                               GL_CLIP_PLANE1,
                               GL_CLIP_PLANE5,
                               GL_COLOR_LOGIC_OP,
                               GL_COLOR_MATERIAL,
                               GL_COLOR_SUM,
                               GL_CULL_FACE,
                               GL_DEPTH_TEST,
                               GL_DITHER,
                               GL_FOG,
                               GL_INDEX_LOGIC_OP,
                               GL_LIGHT0,
                               GL_LIGHT1,
                               GL_LIGHT7,
                               GL_LIGHTING,
                               GL_LINE_SMOOTH,
                               GL_LINE_STIPPLE,
                               GL_MULTISAMPLE,
                               GL_NORMALIZE,
                               GL_POINT_SMOOTH,
                               GL_POINT_SPRITE,
                               GL_POLYGON_OFFSET_FILL,
                               GL_POLYGON_OFFSET_LINE,
                               GL_POLYGON_OFFSET_POINT,
                               GL_POLYGON_SMOOTH,
                               GL_POLYGON_STIPPLE,
                               GL_RESCALE_NORMAL,
                               GL_SAMPLE_ALPHA_TO_COVERAGE,
                               GL_SAMPLE_ALPHA_TO_ONE,
                               GL_SAMPLE_COVERAGE,
                               GL_SCISSOR_TEST,
                               GL_STENCIL_TEST,
                               GL_VERTEX_PROGRAM_POINT_SIZE,
                               GL_DEPTH_CLAMP,
                               GL_VERTEX_ARRAY,
                               GL_NORMAL_ARRAY,
                               GL_COLOR_ARRAY,
                               GL_INDEX_ARRAY,
                               GL_EDGE_FLAG_ARRAY,
                               GL_FOG_COORD_ARRAY,
                               GL_SECONDARY_COLOR_ARRAY})
        add(QStringLiteral("flag ") + QString::number(eFlag, 16), {glIsEnabled(eFlag) != GL_FALSE ? 1.0 : 0.0});
    for (const GLenum eSingle : {GL_ACTIVE_TEXTURE,
                                 GL_CLIENT_ACTIVE_TEXTURE,
                                 GL_ALPHA_TEST_FUNC,
                                 GL_ALPHA_TEST_REF,
                                 GL_BLEND_DST_ALPHA,
                                 GL_BLEND_DST_RGB,
                                 GL_BLEND_SRC_ALPHA,
                                 GL_BLEND_SRC_RGB,
                                 GL_BLEND_EQUATION_RGB,
                                 GL_BLEND_EQUATION_ALPHA,
                                 GL_COLOR_MATERIAL_FACE,
                                 GL_COLOR_MATERIAL_PARAMETER,
                                 GL_CULL_FACE_MODE,
                                 GL_CURRENT_FOG_COORD,
                                 GL_CURRENT_PROGRAM,
                                 GL_CURRENT_RASTER_POSITION_VALID,
                                 GL_CURRENT_RASTER_DISTANCE,
                                 GL_DEPTH_CLEAR_VALUE,
                                 GL_DEPTH_FUNC,
                                 GL_DEPTH_WRITEMASK,
                                 GL_EDGE_FLAG,
                                 GL_FOG_DENSITY,
                                 GL_FOG_MODE,
                                 GL_FRONT_FACE,
                                 GL_LIGHT_MODEL_COLOR_CONTROL,
                                 GL_LIGHT_MODEL_LOCAL_VIEWER,
                                 GL_LIGHT_MODEL_TWO_SIDE,
                                 GL_LINE_STIPPLE_PATTERN,
                                 GL_LINE_STIPPLE_REPEAT,
                                 GL_LINE_WIDTH,
                                 GL_LOGIC_OP_MODE,
                                 GL_MATRIX_MODE,
                                 GL_NAME_STACK_DEPTH,
                                 GL_MODELVIEW_STACK_DEPTH,
                                 GL_PROJECTION_STACK_DEPTH,
                                 GL_TEXTURE_STACK_DEPTH,
                                 GL_ATTRIB_STACK_DEPTH,
                                 GL_CLIENT_ATTRIB_STACK_DEPTH,
                                 GL_PACK_ALIGNMENT,
                                 GL_PACK_ROW_LENGTH,
                                 GL_UNPACK_ALIGNMENT,
                                 GL_UNPACK_ROW_LENGTH,
                                 GL_UNPACK_SKIP_ROWS,
                                 GL_UNPACK_SWAP_BYTES,
                                 GL_POINT_FADE_THRESHOLD_SIZE,
                                 GL_POINT_SIZE,
                                 GL_POINT_SIZE_MAX,
                                 GL_POINT_SIZE_MIN,
                                 GL_POINT_SPRITE_COORD_ORIGIN,
                                 GL_POLYGON_OFFSET_FACTOR,
                                 GL_POLYGON_OFFSET_UNITS,
                                 GL_RENDER_MODE,
                                 GL_SAMPLE_COVERAGE_VALUE,
                                 GL_SHADE_MODEL,
                                 GL_STENCIL_CLEAR_VALUE,
                                 GL_STENCIL_FAIL,
                                 GL_STENCIL_FUNC,
                                 GL_STENCIL_PASS_DEPTH_FAIL,
                                 GL_STENCIL_PASS_DEPTH_PASS,
                                 GL_STENCIL_REF,
                                 GL_STENCIL_VALUE_MASK,
                                 GL_STENCIL_WRITEMASK,
                                 GL_STENCIL_BACK_FUNC,
                                 GL_STENCIL_BACK_WRITEMASK,
                                 GL_ARRAY_BUFFER_BINDING,
                                 GL_ELEMENT_ARRAY_BUFFER_BINDING,
                                 GL_VERTEX_ARRAY_BINDING,
                                 GL_VERTEX_ARRAY_SIZE,
                                 GL_VERTEX_ARRAY_STRIDE,
                                 GL_VERTEX_ARRAY_TYPE,
                                 GL_COLOR_ARRAY_SIZE,
                                 GL_COLOR_ARRAY_TYPE,
                                 GL_NORMAL_ARRAY_TYPE,
                                 GL_DRAW_BUFFER,
                                 GL_READ_BUFFER,
                                 GL_DRAW_FRAMEBUFFER_BINDING})
        get(eSingle, 1);
    for (const auto& [eName, nValues] : std::initializer_list<std::pair<GLenum, int>>{
             {GL_BLEND_COLOR, 4},
             {GL_COLOR_CLEAR_VALUE, 4},
             {GL_COLOR_WRITEMASK, 4},
             {GL_CURRENT_COLOR, 4},
             {GL_CURRENT_SECONDARY_COLOR, 4},
             {GL_CURRENT_NORMAL, 3},
             {GL_CURRENT_RASTER_COLOR, 4},
             {GL_CURRENT_RASTER_POSITION, 4},
             {GL_CURRENT_TEXTURE_COORDS, 4},
             {GL_DEPTH_RANGE, 2},
             {GL_FOG_COLOR, 4},
             {GL_LIGHT_MODEL_AMBIENT, 4},
             {GL_MODELVIEW_MATRIX, 16},
             {GL_PROJECTION_MATRIX, 16},
             {GL_TEXTURE_MATRIX, 16},
             {GL_POINT_DISTANCE_ATTENUATION, 3},
             {GL_POLYGON_MODE, 2},
             {GL_SCISSOR_BOX, 4},
             {GL_VIEWPORT, 4},
         })
        get(eName, nValues);
    const auto getFloats = [&](const QString& strName, int nValues, auto fnGet)
    {
        std::array<GLfloat, 4> af{};
        fnGet(af.data());
        add(strName, QVector<double>(af.begin(), af.begin() + nValues));
    };
    for (const GLenum eFace : {GL_FRONT, GL_BACK})
    {
        for (const GLenum eName : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION})
            getFloats(QStringLiteral("material %1 %2").arg(eFace, 0, 16).arg(eName, 0, 16), 4,
                      [=](GLfloat* p) { glGetMaterialfv(eFace, eName, p); });
        getFloats(QStringLiteral("shininess %1").arg(eFace, 0, 16), 1, [=](GLfloat* p) { glGetMaterialfv(eFace, GL_SHININESS, p); });
    }
    for (const GLenum eName : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_POSITION})
        getFloats(QStringLiteral("light %1").arg(eName, 0, 16), 4, [=](GLfloat* p) { glGetLightfv(GL_LIGHT0, eName, p); });
    GLint nActive = 0;
    GLint nClientActive = 0;
    GLint nUnits = 0;
    glGetIntegerv(GL_ACTIVE_TEXTURE, &nActive);
    glGetIntegerv(GL_CLIENT_ACTIVE_TEXTURE, &nClientActive);
    glGetIntegerv(GL_MAX_TEXTURE_UNITS, &nUnits);
    for (int nUnit = 0; nUnit < nUnits; ++nUnit)
    {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(nUnit));
        glClientActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(nUnit));
        GLint nBinding = 0;
        GLint nMode = 0;
        GLint nReplace = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &nBinding);
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &nMode);
        glGetTexEnviv(GL_POINT_SPRITE, GL_COORD_REPLACE, &nReplace);
        QVector<double> vecUnit = {double(nBinding), double(nMode), double(nReplace)};
        for (const GLenum eTarget :
             {GL_TEXTURE_1D, GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP, GL_TEXTURE_GEN_S, GL_TEXTURE_COORD_ARRAY})
            vecUnit.append(glIsEnabled(eTarget) != GL_FALSE ? 1.0 : 0.0);
        add(QStringLiteral("unit %1").arg(nUnit), vecUnit);
    }
    glActiveTexture(static_cast<GLenum>(nActive));
    glClientActiveTexture(static_cast<GLenum>(nClientActive));
    void* pArray = nullptr;
    glGetPointerv(GL_VERTEX_ARRAY_POINTER, &pArray);
    lstState.append(QStringLiteral("vertex array: %1").arg(reinterpret_cast<quintptr>(pArray)));
    glGetPointerv(GL_COLOR_ARRAY_POINTER, &pArray);
    lstState.append(QStringLiteral("colour array: %1").arg(reinterpret_cast<quintptr>(pArray)));
    return lstState;
}

/// What is in one list and not in the other.
inline QString difference(const QStringList& lstBefore, const QStringList& lstAfter)
{
    QStringList lstDifferent;
    for (int i = 0; i < qMax(lstBefore.size(), lstAfter.size()); ++i)
    {
        if (lstBefore.value(i) != lstAfter.value(i))
            lstDifferent.append(lstBefore.value(i) + QStringLiteral(" -> ") + lstAfter.value(i));
    }
    return lstDifferent.join(QStringLiteral("; "));
}

/// Makes everything odd that a drawing may depend on, but for matrices, viewport, lights and buffers.
class CHostile
{
public:
    CHostile()
    {
        const GLubyte anTexel[4] = {0, 0, 0, 255};
        glGenTextures(1, &m_nTexture);
        for (const GLenum eUnit : {GL_TEXTURE1, GL_TEXTURE0})
        {
            glActiveTexture(eUnit);
            glBindTexture(GL_TEXTURE_2D, m_nTexture);
            glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, anTexel);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
            glEnable(GL_TEXTURE_2D);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
        }
        glActiveTexture(GL_TEXTURE1);
        glGenBuffers(1, &m_nBuffer);
        glBindBuffer(GL_ARRAY_BUFFER, m_nBuffer);
        glBufferData(GL_ARRAY_BUFFER, 64, nullptr, GL_STATIC_DRAW);
        glVertexPointer(2, GL_SHORT, 6, nullptr);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glEnableClientState(GL_EDGE_FLAG_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_nBuffer);
        for (const GLenum eFlag : {GL_ALPHA_TEST, GL_COLOR_LOGIC_OP, GL_COLOR_SUM, GL_CULL_FACE, GL_FOG, GL_LINE_STIPPLE, GL_NORMALIZE,
                                   GL_POINT_SMOOTH, GL_POINT_SPRITE, GL_POLYGON_OFFSET_FILL, GL_POLYGON_SMOOTH, GL_POLYGON_STIPPLE,
                                   GL_STENCIL_TEST, GL_BLEND, GL_LIGHTING, GL_SAMPLE_ALPHA_TO_COVERAGE, GL_VERTEX_PROGRAM_POINT_SIZE})
            glEnable(eFlag);
        glDisable(GL_DEPTH_TEST);
        glDepthFunc(GL_NEVER);
        glDepthMask(GL_FALSE);
        glAlphaFunc(GL_NEVER, 0.5f);
        glLogicOp(GL_INVERT);
        glCullFace(GL_FRONT);
        glFrontFace(GL_CW);
        glBlendFunc(GL_ONE, GL_ONE);
        glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
        glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
        glStencilFunc(GL_NEVER, 3, 0x55);
        glStencilMask(0x0F);
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        glPolygonOffset(-3.0f, 7.0f);
        glPointSize(7.0f);
        const GLfloat afAttenuation[3] = {1.0f, 2.0f, 3.0f};
        glPointParameterfv(GL_POINT_DISTANCE_ATTENUATION, afAttenuation);
        glPointParameterf(GL_POINT_SIZE_MAX, 3.0f);
        glPointParameterf(GL_POINT_FADE_THRESHOLD_SIZE, 50.0f);
        glLineWidth(4.0f);
        glShadeModel(GL_FLAT);
        glColor4f(0.1f, 0.9f, 0.3f, 0.2f);
        glSecondaryColor3f(0.5f, 0.5f, 0.5f);
        const GLfloat afGlare[4] = {1.0f, 0.0f, 1.0f, 0.5f};
        glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, afGlare);
        glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, afGlare);
        glColorMaterial(GL_BACK, GL_SPECULAR);
        glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_TRUE);
        glFogf(GL_FOG_DENSITY, 9.0f);
        const GLubyte anNoStipple[128] = {};
        glPolygonStipple(anNoStipple);
        m_nProgram = program();
        glUseProgram(m_nProgram);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 333);
        glMatrixMode(GL_TEXTURE);
        glTranslatef(0.3f, 0.2f, 0.1f);
        glMatrixMode(GL_PROJECTION);
    }
    ~CHostile()
    {
        glUseProgram(0);
        glDeleteProgram(m_nProgram);
        glDeleteTextures(1, &m_nTexture);
        glDeleteBuffers(1, &m_nBuffer);
    }
    CHostile(const CHostile&) = delete;
    CHostile& operator=(const CHostile&) = delete;

private:
    /// A program that puts everything into one corner, in one colour.
    static GLuint program()
    {
        const GLuint nProgram = glCreateProgram();
        for (const auto& [eKind, pSource] : std::initializer_list<std::pair<GLenum, const char*>>{
                 {GL_VERTEX_SHADER, "void main() { gl_Position = vec4(0.9, 0.9, 0.0, 1.0); }"},
                 {GL_FRAGMENT_SHADER, "void main() { gl_FragColor = vec4(1.0, 0.0, 1.0, 1.0); }"}})
        {
            const GLuint nShader = glCreateShader(eKind);
            glShaderSource(nShader, 1, &pSource, nullptr);
            glCompileShader(nShader);
            glAttachShader(nProgram, nShader);
            glDeleteShader(nShader);
        }
        glLinkProgram(nProgram);
        return nProgram;
    }

    GLuint m_nProgram = 0;
    GLuint m_nTexture = 0;
    GLuint m_nBuffer = 0;
};
} // namespace GlState
