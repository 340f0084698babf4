// Voxels on the screen and in selection passes.

#include "C3DVolume.h"

#include "CGLDrawScope.h"
#include "CVolumeLook.h"
#include "CVolumeMarks.h"
#include "CVoxelBlock.h"

#include <QtGui/qopengl.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr float fRingPixels = 2.0f;      ///< width of the outline of marked voxels
constexpr GLuint nRingBit = 0x80;        ///< bit of the stencil buffer that tells the outline from what it surrounds
constexpr float fClipSlack = 1e-5f;      ///< of the clip volume: OpenGL itself decides about what is on its edge
constexpr float fRoundingSlack = 2e-6f;  ///< the same for the single precision of both computations, relative to their largest term
constexpr double fPixelTolerance = 1e-3; ///< a size this much above a whole number of pixels is not rounded up

using Matrix = std::array<double, 16>;

/// Projection times modelview, column by column.
Matrix clipMatrix(const CGLDrawScope& objScope)
{
    Matrix afResult{};
    for (std::size_t nColumn = 0; nColumn < 4; ++nColumn)
    {
        for (std::size_t nRow = 0; nRow < 4; ++nRow)
        {
            for (std::size_t i = 0; i < 4; ++i)
                afResult[4 * nColumn + nRow] +=
                    static_cast<double>(objScope.projection()[4 * i + nRow]) * static_cast<double>(objScope.modelview()[4 * nColumn + i]);
        }
    }
    return afResult;
}

/// How large a voxel is on the screen, in pixels.
struct SVoxelPixels
{
    double m_fEdge = 0.0; ///< its edge
    double m_fBox = 0.0;  ///< the larger side of the box around it, however it is turned
};

SVoxelPixels voxelPixels(const CGLDrawScope& objScope, float fVoxelSize)
{
    const Matrix af = clipMatrix(objScope);
    SVoxelPixels sPixels;
    for (std::size_t nRow = 0; nRow < 2; ++nRow)
    {
        const double fScale = static_cast<double>(fVoxelSize) * objScope.viewport()[2 + nRow] / 2.0;
        sPixels.m_fEdge = std::max(sPixels.m_fEdge, fScale * std::hypot(af[nRow], af[4 + nRow], af[8 + nRow]));
        sPixels.m_fBox = std::max(sPixels.m_fBox, fScale * (std::abs(af[nRow]) + std::abs(af[4 + nRow]) + std::abs(af[8 + nRow])));
    }
    return sPixels;
}

/// Whole pixels that leave no gap between neighbouring voxels.
float closedSize(const SVoxelPixels& sPixels)
{
    return static_cast<float>(std::max(1.0, std::ceil(sPixels.m_fBox - fPixelTolerance)));
}

void setPointSize(float fPixels)
{
    GLfloat afRange[2] = {1.0f, 1.0f};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, afRange);
    glPointSize(std::clamp(fPixels, afRange[0], std::max(afRange[0], afRange[1])));
}

/// Points whose size depends on nothing but the size that is set.
void setUpPoints()
{
    const GLfloat afConstant[3] = {1.0f, 0.0f, 0.0f};
    GLfloat afRange[2] = {1.0f, 1.0f};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, afRange);
    glPointParameterfv(GL_POINT_DISTANCE_ATTENUATION, afConstant);
    glPointParameterf(GL_POINT_SIZE_MIN, 0.0f);
    glPointParameterf(GL_POINT_SIZE_MAX, afRange[1]);
    glPointParameterf(GL_POINT_FADE_THRESHOLD_SIZE, 1.0f);
    glDisable(GL_MULTISAMPLE); // it would round the squares off
    glDepthMask(GL_FALSE);
}
} // namespace

const CVolumeLook& C3DVolume::look()
{
    const CVolumeLook::SState sState{m_objPalette, m_fDisplayThreshold, m_bMIP};
    if (!m_pLook || !(m_pLook->state() == sState))
        m_pLook = std::make_shared<const CVolumeLook>(m_pBlock->geometry(), sState, m_pLook.get());
    return *m_pLook;
}

void C3DVolume::drawVoxels()
{
    const CVolumeGeometry& objGeometry = m_pBlock->geometry();
    const CVolumeLook& objLook = look();
    const std::size_t nDrawn = objGeometry.size() - objLook.first();

    CGLDrawScope objScope;
    objScope.centreDepth();
    objScope.clipToViewport();
    setUpPoints();
    const SVoxelPixels sPixels = voxelPixels(objScope, m_fVoxelSize);
    GLint nStencilBits = 0;
    glGetIntegerv(GL_STENCIL_BITS, &nStencilBits);
    const bool bRing = nStencilBits >= 8;
    if (!bRing)
        drawMarks(closedSize(sPixels), false);

    if (nDrawn > 0)
    {
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, objGeometry.positions() + 3 * objLook.first());
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_UNSIGNED_BYTE, 0, objLook.colors());
        if (m_bMIP)
        {
            // Every pixel keeps what is drawn last there: the highest value behind it, in just the colour of the bar.
            glDisable(GL_DEPTH_TEST);
            setPointSize(closedSize(sPixels));
            glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(nDrawn));
        }
        else
        {
            const std::array<float, 16>& af = objScope.modelview();
            const std::vector<quint32>& vecOrder = objLook.backToFront(objGeometry, af[2] >= 0.0f, af[6] >= 0.0f, af[10] >= 0.0f);
            glEnable(GL_BLEND);
            glEnable(GL_POINT_SPRITE); // sizes are exact fractions of pixels then
            setPointSize(static_cast<float>(2.0 * sPixels.m_fEdge));
            glDrawElements(GL_POINTS, static_cast<GLsizei>(nDrawn), GL_UNSIGNED_INT, vecOrder.data());
            glDisable(GL_POINT_SPRITE);
        }
        glDisableClientState(GL_COLOR_ARRAY);
    }
    if (bRing)
        drawMarks(closedSize(sPixels), true);
}

/// Draws a white line around the marked voxels as they are seen together; their own colours stay. Without a ring, a white ground for them.
void C3DVolume::drawMarks(float fPixels, bool bRing)
{
    if (!m_pMarks)
        return;
    const std::vector<float>& vecPositions = m_pMarks.constData()->positions();
    const auto drawSquares = [&](float fSize)
    {
        setPointSize(fSize);
        glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(vecPositions.size() / 3));
    };
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, vecPositions.data());
    glColor4ub(255, 255, 255, 255);
    if (bRing)
    {
        glEnable(GL_STENCIL_TEST);
        glStencilMask(nRingBit);
        glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        glStencilFunc(GL_ALWAYS, 0, nRingBit);
        drawSquares(fPixels + 2.0f * fRingPixels);
        glStencilFunc(GL_ALWAYS, static_cast<GLint>(nRingBit), nRingBit);
        drawSquares(fPixels);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glStencilFunc(GL_EQUAL, 0, nRingBit);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    }
    drawSquares(fPixels + 2.0f * fRingPixels);
}

void C3DVolume::nameVoxels() const
{
    const CVolumeGeometry& objGeometry = m_pBlock->geometry();
    CGLDrawScope objScope;
    GLint nNames = 0;
    glGetIntegerv(GL_NAME_STACK_DEPTH, &nNames);
    if (nNames == 0)
        glPushName(0);

    // What lies clearly outside is dropped here, since a name costs OpenGL ten times as much as this test.
    const Matrix af = clipMatrix(objScope);
    float afRows[4][4];
    float afSlack[4];
    for (std::size_t nRow = 0; nRow < 4; ++nRow)
    {
        double fLargest = std::abs(af[12 + nRow]);
        for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
            fLargest += std::abs(af[4 * nAxis + nRow]) * static_cast<double>(objGeometry.extent()[nAxis]);
        for (std::size_t i = 0; i < 4; ++i)
            afRows[nRow][i] = static_cast<float>(af[4 * i + nRow]);
        afSlack[nRow] = fRoundingSlack * static_cast<float>(fLargest);
    }
    const auto dot = [&](std::size_t nRow, const float* p)
    { return afRows[nRow][0] * p[0] + afRows[nRow][1] * p[1] + afRows[nRow][2] * p[2] + afRows[nRow][3]; };
    const float* pPosition = objGeometry.positions();
    for (std::size_t nPlace = 0; nPlace < objGeometry.size(); ++nPlace, pPosition += 3)
    {
        const float fEdge = dot(3, pPosition) + afSlack[3] + fClipSlack;
        if (!(std::abs(dot(0, pPosition)) <= fEdge + afSlack[0]) || !(std::abs(dot(1, pPosition)) <= fEdge + afSlack[1]) ||
            !(std::abs(dot(2, pPosition)) <= fEdge + afSlack[2]))
            continue;
        glLoadName(m_pBlock->name(static_cast<int>(objGeometry.voxel(nPlace))));
        glRasterPos3fv(pPosition);
    }
    if (nNames == 0)
        glPopName();
}
