// Voxels on the screen and in selection passes.

#include "C3DVolume.h"

#include "CClipVolume.h"
#include "CGLDrawScope.h"
#include "CHighestLook.h"
#include "CTranslucentLook.h"
#include "CVolumeMarks.h"
#include "CVoxelBlock.h"
#include "VoxelSquares.h"

#include <QtGui/qopengl.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr int nRingPixels = 2;           ///< width of the outline of marked voxels
constexpr GLuint nRingBit = 0x80;        ///< bit of the stencil buffer that tells the outline from what it surrounds
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

/// The size nearest to this one that points can have.
float pointSize(double fPixels)
{
    GLfloat afRange[2] = {1.0f, 1.0f};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, afRange);
    return static_cast<float>(std::clamp(fPixels, 1.0, std::max(1.0, static_cast<double>(afRange[1]))));
}

/// Whole pixels that leave no gap between neighbouring voxels.
int closedSize(const SVoxelPixels& sPixels)
{
    return static_cast<int>(pointSize(std::ceil(sPixels.m_fBox - fPixelTolerance)));
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

/// What is seen of the scene, in pixels.
VoxelSquares::SView viewOf(const CGLDrawScope& objScope)
{
    return {clipMatrix(objScope), objScope.viewport()[2], objScope.viewport()[3]};
}

/// Draws squares one over the other, whatever is there.
void drawSquares(CGLDrawScope& objScope, const std::vector<VoxelSquares::SSquare>& vecSquares, int nPixels)
{
    if (vecSquares.empty())
        return;
    objScope.toPixels();
    glDisable(GL_DEPTH_TEST);
    glPointSize(static_cast<float>(nPixels));
    glVertexPointer(2, GL_FLOAT, sizeof vecSquares.front(), &vecSquares.front().m_fX);
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof vecSquares.front(), vecSquares.front().m_anColor);
    glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(vecSquares.size()));
    glEnable(GL_DEPTH_TEST);
    objScope.toScene();
}
} // namespace

void C3DVolume::drawVoxels()
{
    CGLDrawScope objScope;
    objScope.centreDepth();
    objScope.clipToViewport();
    setUpPoints();
    const SVoxelPixels sPixels = voxelPixels(objScope, m_fVoxelSize);
    GLint nStencilBits = 0;
    glGetIntegerv(GL_STENCIL_BITS, &nStencilBits);
    const bool bRing = nStencilBits >= 8;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    if (!bRing)
        drawMarks(objScope, closedSize(sPixels), false);
    if (m_bMIP)
        drawHighest(objScope, closedSize(sPixels));
    else
        drawTranslucent(objScope, sPixels.m_fEdge);
    if (bRing)
        drawMarks(objScope, closedSize(sPixels), true);
}

/// Every pixel keeps what is drawn last there: the highest value behind it, in just the colour of the bar.
void C3DVolume::drawHighest(CGLDrawScope& objScope, int nPixels)
{
    const SVolumeLook sLook{m_objPalette, m_fDisplayThreshold};
    if (!m_pHighestLook || !(m_pHighestLook->look() == sLook))
        m_pHighestLook = std::make_shared<const CHighestLook>(*m_pBlock, sLook);
    m_pTranslucentLook.reset();
    const CValueOrder& objOrder = m_pBlock->valueOrder();
    const std::size_t nFirst = m_pHighestLook->first();
    drawSquares(objScope,
                VoxelSquares::seen({{objOrder.coordinates(0) + nFirst, objOrder.coordinates(1) + nFirst, objOrder.coordinates(2) + nFirst},
                                    m_pHighestLook->colors(),
                                    objOrder.size() - nFirst},
                                   viewOf(objScope), nPixels),
                nPixels);
}

/// Squares of two voxels, the farthest first.
void C3DVolume::drawTranslucent(CGLDrawScope& objScope, double fPixels)
{
    const SVolumeLook sLook{m_objPalette, m_fDisplayThreshold};
    if (!m_pTranslucentLook || !(m_pTranslucentLook->look() == sLook))
        m_pTranslucentLook = std::make_shared<const CTranslucentLook>(*m_pBlock, sLook, m_pTranslucentLook.get());
    m_pHighestLook.reset();
    const std::array<float, 16>& af = objScope.modelview();
    const OrmArray<quint32>& vecOrder = m_pTranslucentLook->backToFront(*m_pBlock, af[2] >= 0.0f, af[6] >= 0.0f, af[10] >= 0.0f);
    glEnable(GL_BLEND);
    glEnable(GL_POINT_SPRITE); // sizes are exact fractions of pixels then
    glPointSize(pointSize(2.0 * fPixels));
    glVertexPointer(3, GL_FLOAT, 0, m_pBlock->position(0));
    glColorPointer(4, GL_UNSIGNED_BYTE, 0, m_pTranslucentLook->colors());
    glDrawElements(GL_POINTS, static_cast<GLsizei>(vecOrder.size()), GL_UNSIGNED_INT, vecOrder.data());
    glDisable(GL_POINT_SPRITE);
}

/// Draws a white line around the marked voxels as they are seen together; their own colours stay. Without a ring, a white ground for them.
void C3DVolume::drawMarks(CGLDrawScope& objScope, int nPixels, bool bRing)
{
    if (!m_pMarks)
        return;
    const CVolumeMarks& objMarks = *m_pMarks.constData();
    const VoxelSquares::SCentres sCentres = {
        {objMarks.coordinates(0).data(), objMarks.coordinates(1).data(), objMarks.coordinates(2).data()},
        nullptr,
        objMarks.voxels().size()};
    const int nRound = static_cast<int>(pointSize(nPixels + 2 * nRingPixels));
    const std::vector<VoxelSquares::SSquare> vecRound = VoxelSquares::seen(sCentres, viewOf(objScope), nRound);
    glDisable(GL_BLEND);
    if (bRing)
    {
        glEnable(GL_STENCIL_TEST);
        glStencilMask(nRingBit);
        glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        glStencilFunc(GL_ALWAYS, 0, nRingBit);
        drawSquares(objScope, vecRound, nRound);
        glStencilFunc(GL_ALWAYS, static_cast<GLint>(nRingBit), nRingBit);
        drawSquares(objScope, VoxelSquares::seen(sCentres, viewOf(objScope), nPixels), nPixels);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glStencilFunc(GL_EQUAL, 0, nRingBit);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    }
    drawSquares(objScope, vecRound, nRound);
}

void C3DVolume::nameVoxels() const
{
    const CVoxelBlock& objVoxels = *m_pBlock;
    CGLDrawScope objScope;
    GLint nNames = 0;
    glGetIntegerv(GL_NAME_STACK_DEPTH, &nNames);
    if (nNames == 0)
        glPushName(0);

    // What lies clearly outside is dropped here, since a name costs OpenGL many times as much as this test.
    const CClipVolume objClip(clipMatrix(objScope), objVoxels.extent());
    std::array<quint32, CClipVolume::nAtOnce> anInside;
    for (std::size_t nFrom = 0; nFrom < objVoxels.size(); nFrom += CClipVolume::nAtOnce)
    {
        const std::size_t nTo = std::min(nFrom + CClipVolume::nAtOnce, objVoxels.size());
        const std::size_t nInside = objClip.inside(objVoxels.position(0), nFrom, nTo, anInside.data());
        for (std::size_t i = 0; i < nInside; ++i)
        {
            const std::size_t nVoxel = anInside[i];
            glLoadName(objVoxels.name(nVoxel));
            glRasterPos3fv(objVoxels.position(nVoxel));
        }
    }
    if (nNames == 0)
        glPopName();
}
