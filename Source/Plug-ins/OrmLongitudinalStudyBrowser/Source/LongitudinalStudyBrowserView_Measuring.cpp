// The measuring tool: a rectangle over the tiles, and the voxels that lie under it.
#include "LongitudinalStudyBrowserView.h"

#include "C3DMesh.h"
#include "C3DVolume.h"
#include "MeasuringRectangle.h"
#include "Singleton.h"

#include <QMouseEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>

#include <GL/gl.h>
#include <GL/glu.h>

namespace
{
/// Words of a hit record with one name: count, two depths, the name.
constexpr long WordsPerHit = 4;

/// A selection pass over less than a pixel is one over a pixel.
constexpr double SmallestPick = 1.0;

/// A rectangle by two opposite corners, in scene coordinates or in window pixels.
struct SRectangle
{
    double fX1 = 0.0;
    double fY1 = 0.0;
    double fX2 = 0.0;
    double fY2 = 0.0;
};

SRectangle rectangleOf(const sAnalysisBase& objResult)
{
    return {objResult.fSelectLeft, objResult.fSelectTop, objResult.fSelectRight, objResult.fSelectBottom};
}

void setRectangle(sAnalysisBase& objResult, const SRectangle& rect)
{
    objResult.fSelectLeft = static_cast<float>(rect.fX1);
    objResult.fSelectTop = static_cast<float>(rect.fY1);
    objResult.fSelectRight = static_cast<float>(rect.fX2);
    objResult.fSelectBottom = static_cast<float>(rect.fY2);
}

/// Whether a rectangle has no area, and so neither corners to pick nor voxels to be selected again.
bool isFlat(const sAnalysisBase& objResult)
{
    return objResult.fSelectLeft == objResult.fSelectRight || objResult.fSelectTop == objResult.fSelectBottom;
}

/// The matrices and the viewport that OpenGL has when it is made.
class CTileProjection
{
public:
    CTileProjection()
    {
        glGetDoublev(GL_MODELVIEW_MATRIX, m_afModelview.data());
        glGetDoublev(GL_PROJECTION_MATRIX, m_afProjection.data());
        glGetIntegerv(GL_VIEWPORT, m_anViewport.data());
    }

    SRectangle toWindow(const SRectangle& rect) const
    {
        SRectangle rectWindow;
        project(rect.fX1, rect.fY1, rectWindow.fX1, rectWindow.fY1);
        project(rect.fX2, rect.fY2, rectWindow.fX2, rectWindow.fY2);
        return rectWindow;
    }

    /// Nothing where a tile has no extent, and so no place in the scene.
    std::optional<SRectangle> toScene(const SRectangle& rect) const
    {
        SRectangle rectScene;
        if (!unproject(rect.fX1, rect.fY1, rectScene.fX1, rectScene.fY1) || !unproject(rect.fX2, rect.fY2, rectScene.fX2, rectScene.fY2))
        {
            return std::nullopt;
        }
        return rectScene;
    }

private:
    void project(double fX, double fY, double& fWindowX, double& fWindowY) const
    {
        double fDepth = 0.0;
        gluProject(fX, fY, 0.0, m_afModelview.data(), m_afProjection.data(), m_anViewport.data(), &fWindowX, &fWindowY, &fDepth);
    }

    bool unproject(double fX, double fY, double& fSceneX, double& fSceneY) const
    {
        double fDepth = 0.0;
        return gluUnProject(fX, fY, 0.0, m_afModelview.data(), m_afProjection.data(), m_anViewport.data(), &fSceneX, &fSceneY, &fDepth) ==
                   GL_TRUE &&
               std::isfinite(fSceneX) && std::isfinite(fSceneY);
    }

    std::array<double, 16> m_afModelview{};
    std::array<double, 16> m_afProjection{};
    std::array<int, 4> m_anViewport{};
};

/// Without modifiers the tool works on all tiles, with exactly Control on the active one; any others are not the tool's.
bool isForAllTiles(const QMouseEvent* pEvent)
{
    return pEvent->modifiers() == Qt::NoModifier;
}
bool isForActiveTile(const QMouseEvent* pEvent)
{
    return pEvent->modifiers() == Qt::ControlModifier;
}

void drawPoint(double fX, double fY)
{
    glBegin(GL_POINTS);
    glVertex2f(static_cast<float>(fX), static_cast<float>(fY));
    glEnd();
}
} // namespace

void CLongitudinalStudyBrowserView::onSelectVoxelS(bool bOn)
{
    if (bOn)
    {
        setCursor(Qt::CrossCursor);
        updateVoxelSelections();
    }
    else
    {
        clearVoxelSelection(false);
        setCursor(Qt::ArrowCursor);
    }
    setSelectVoxel(bOn);
    update();
}

bool CLongitudinalStudyBrowserView::isToolPress(const QMouseEvent* pEvent)
{
    return pEvent->button() == Qt::LeftButton && (isForAllTiles(pEvent) || isForActiveTile(pEvent));
}

bool CLongitudinalStudyBrowserView::isToolDrag(const QMouseEvent* pEvent) const
{
    // With Control a drag needs no press before it.
    return m_bSelectVoxel && pEvent->buttons() == Qt::LeftButton && ((m_bToolDragging && isForAllTiles(pEvent)) || isForActiveTile(pEvent));
}

void CLongitudinalStudyBrowserView::pressTool(QMouseEvent* pEvent)
{
    using namespace MeasuringRectangle;
    m_bToolDragging = true;
    if (m_nActiveResult != -1)
    {
        if (hasActiveResult())
        {
            const sAnalysisBase& objResult = m_lstAnalysisParams.at(m_nActiveResult);
            emit updateWavelengthCombo(objResult.strSequenceID, objResult.strResultName);
        }
        // A removal can leave the active tile past the end until the pointer moves.
        if (m_nActiveResult >= m_lstAnalysisParams.size())
        {
            m_nActiveResult = m_lstAnalysisParams.size() - 1;
        }
    }
    makeCurrent();
    const long nHit = doSelection(pEvent);
    changeMouseCursor(nHit);

    SEdges objEdges = edgesBetween(m_dragStart, m_dragEnd);
    if (hasActiveResult())
    {
        const SRectangle rect = rectangleOf(m_lstAnalysisParams.at(m_nActiveResult));
        const SRectangle rectWindow = CTileProjection().toWindow(
            {std::min(rect.fX1, rect.fX2), std::max(rect.fY1, rect.fY2), std::max(rect.fX1, rect.fX2), std::min(rect.fY1, rect.fY2)});
        objEdges = {rectWindow.fX1, rectWindow.fY1, rectWindow.fX2, rectWindow.fY2};
    }
    const double fX = pEvent->x();
    const double fY = height() - pEvent->y();
    if (oppositeCorner(nHit, objEdges, m_dragStart))
    {
        m_dragEnd.x = fX;
        m_dragEnd.y = fY;
    }
    else if (STile{m_nActiveViewX, m_nActiveViewY, m_nActiveViewWidth, m_nActiveViewHeight}.contains(fX, fY))
    {
        m_dragStart.x = fX;
        m_dragStart.y = fY;
    }
}

void CLongitudinalStudyBrowserView::dragTool(QMouseEvent* pEvent)
{
    m_bToolMoved = true;
    const MeasuringRectangle::STile objTile = {m_nActiveViewX, m_nActiveViewY, m_nActiveViewWidth, m_nActiveViewHeight};
    if (objTile.isNone())
    {
        return;
    }
    m_dragEnd.x = pEvent->x();
    m_dragEnd.y = height() - pEvent->y();
    objTile.clamp(m_dragEnd);
    updateSelectToolPosition(m_dragStart.x, m_dragStart.y, m_dragEnd.x, m_dragEnd.y, isForActiveTile(pEvent));
    update();
}

void CLongitudinalStudyBrowserView::releaseTool(QMouseEvent* pEvent)
{
    makeCurrent();
    const bool bMoved = m_bToolMoved;
    m_bToolMoved = false;
    m_nToolHit = 0;
    if (!isToolPress(pEvent))
    {
        return;
    }
    if (bMoved)
    {
        if (std::fabs(m_dragEnd.x - m_dragStart.x) < 1.0 || std::fabs(m_dragEnd.y - m_dragStart.y) < 1.0)
        {
            return;
        }
    }
    else
    {
        // A click selects what lies under its pixel; on a corner of the rectangle it leaves the opposite one of it.
        m_dragEnd.x = m_dragStart.x;
        m_dragEnd.y = m_dragStart.y;
    }
    const bool bActiveOnly = isForActiveTile(pEvent);
    clearVoxelSelection(bActiveOnly);
    doVoxelSelection(m_dragStart.x, m_dragStart.y, m_dragEnd.x, m_dragEnd.y, bActiveOnly);
    update();
    emit updatePlotTab();
}

bool CLongitudinalStudyBrowserView::updateSelectToolPosition(double dX1, double dY1, double dX2, double dY2, bool bActiveOnly)
{
    setupViewForResult(m_nActiveResult);
    const std::optional<SRectangle> rect = CTileProjection().toScene({dX1, dY1, dX2, dY2});
    if (!rect)
    {
        return true;
    }
    // Lower left corner first, while the selection pass puts the upper left one first. Whoever reads a rectangle minds neither.
    const SRectangle rectSorted = {std::min(rect->fX1, rect->fX2), std::min(rect->fY1, rect->fY2), std::max(rect->fX1, rect->fX2),
                                   std::max(rect->fY1, rect->fY2)};
    if (!bActiveOnly)
    {
        for (sAnalysisBase& objResult : m_lstAnalysisParams)
        {
            setRectangle(objResult, rectSorted);
        }
    }
    else if (hasActiveResult())
    {
        setRectangle(m_lstAnalysisParams[m_nActiveResult], rectSorted);
    }
    return true;
}

void CLongitudinalStudyBrowserView::clearVoxelSelection(bool bActiveOnly)
{
    if (!bActiveOnly)
    {
        for (sAnalysisBase& objResult : m_lstAnalysisParams)
        {
            objResult.objVolume.clearAllVoxelSelection();
        }
    }
    else if (hasActiveResult())
    {
        m_lstAnalysisParams[m_nActiveResult].objVolume.clearAllVoxelSelection();
    }
}

void CLongitudinalStudyBrowserView::updateVoxelSelections()
{
    makeCurrent();
    for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
    {
        setupViewForResult(i);
        if (!isFlat(m_lstAnalysisParams.at(i)))
        {
            const SRectangle rect = CTileProjection().toWindow(rectangleOf(m_lstAnalysisParams.at(i)));
            doVoxelSelection(rect.fX1, rect.fY1, rect.fX2, rect.fY2, i);
        }
    }
}

bool CLongitudinalStudyBrowserView::doVoxelSelection(double dX1, double dY1, double dX2, double dY2, bool bActiveOnly)
{
    if (!hasActiveResult())
    {
        return false;
    }
    doVoxelSelection(dX1, dY1, dX2, dY2, m_nActiveResult);
    SRectangle rect = rectangleOf(m_lstAnalysisParams.at(m_nActiveResult));
    for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
    {
        if (i == m_nActiveResult)
        {
            continue;
        }
        setupViewForResult(i);
        if (bActiveOnly)
        {
            rect = rectangleOf(m_lstAnalysisParams.at(i));
        }
        const SRectangle rectWindow = CTileProjection().toWindow(rect);
        doVoxelSelection(rectWindow.fX1, rectWindow.fY1, rectWindow.fX2, rectWindow.fY2, i);
    }
    return true;
}

bool CLongitudinalStudyBrowserView::doVoxelSelection(double dX1, double dY1, double dX2, double dY2, int nIndex)
{
    if (nIndex < 0 || nIndex >= m_lstAnalysisParams.size())
    {
        return false;
    }
    setupViewForResult(nIndex);
    sAnalysisBase& objResult = m_lstAnalysisParams[nIndex];
    const std::optional<SRectangle> rect = CTileProjection().toScene({dX1, dY1, dX2, dY2});
    if (!rect)
    {
        return false;
    }
    setRectangle(objResult, {std::min(rect->fX1, rect->fX2), std::max(rect->fY1, rect->fY2), std::max(rect->fX1, rect->fX2),
                             std::min(rect->fY1, rect->fY2)});

    const double fCenterX = std::fabs(dX1 + dX2) / 2.0;
    const double fCenterY = std::fabs(dY1 + dY2) / 2.0;
    const double fWidth = std::max(std::fabs(dX2 - dX1), SmallestPick);
    const double fHeight = std::max(std::fabs(dY2 - dY1), SmallestPick);
    const int nCapacity = static_cast<int>(objResult.objVolume.getNoOfVoxels() * WordsPerHit);
    if (nCapacity <= 0)
    {
        return false;
    }
    const std::unique_ptr<unsigned int[]> pBuffer(new (std::nothrow) unsigned int[static_cast<std::size_t>(nCapacity)]());
    if (!pBuffer)
    {
        return false;
    }
    std::array<GLint, 4> anViewport{};
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glSelectBuffer(nCapacity, pBuffer.get());
    glGetIntegerv(GL_VIEWPORT, anViewport.data());
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glRenderMode(GL_SELECT);
    glLoadIdentity();
    gluPickMatrix(fCenterX, fCenterY, fWidth, fHeight, anViewport.data());
    glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, m_dBoxMinZ, m_dBoxMaxZ);
    Singleton::getInstance()->glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, m_dBoxMinZ, m_dBoxMaxZ);
    // The rotation and the place of the tile's picture, here on top of the projection.
    const Coord3d objCenter = centerOf(objResult.objMesh);
    glRotatef(m_fRotationX, 1.0f, 0.0f, 0.0f);
    glRotatef(m_fRotationY, 0.0f, 1.0f, 0.0f);
    glRotatef(m_fRotationZ, 0.0f, 0.0f, 1.0f);
    glTranslatef(static_cast<float>(-objCenter.x), static_cast<float>(-objCenter.y), static_cast<float>(-objCenter.z));
    glMatrixMode(GL_MODELVIEW);
    glInitNames();
    glPushName(0);
    glPushMatrix();
    objResult.objVolume.render(false, GL_SELECT);
    const int nHits = glRenderMode(GL_RENDER);
    glPopMatrix();
    glPopName();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();

    // Where the hits did not fit, OpenGL reports fewer than none, and none is selected.
    QList<long> lstVoxels;
    const bool bSelected = nHits > 0 && processHits(nHits, pBuffer.get(), &lstVoxels, true);
    processVoxelSelection(&lstVoxels, nIndex);
    return bSelected;
}

void CLongitudinalStudyBrowserView::processVoxelSelection(QList<long>* pVoxels, int nIndex)
{
    if (nIndex == -1)
    {
        return;
    }
    C3DVolume& objVolume = m_lstAnalysisParams[nIndex].objVolume;
    objVolume.clearAllVoxelSelection();
    for (const long nVoxel : qAsConst(*pVoxels))
    {
        objVolume.addToVoxelSelection(nVoxel);
    }
}

void CLongitudinalStudyBrowserView::drawMeasurePoints(unsigned int nMode)
{
    using namespace MeasuringRectangle;
    if (!hasActiveResult() || isFlat(m_lstAnalysisParams.at(m_nActiveResult)))
    {
        return;
    }
    const SRectangle rect = rectangleOf(m_lstAnalysisParams.at(m_nActiveResult));
    struct SHandle
    {
        long nName;
        double fX;
        double fY;
    };
    const SHandle aHandles[] = {{CornerLeftTop, rect.fX1, rect.fY1},
                                {CornerRightBottom, rect.fX2, rect.fY2},
                                {CornerRightTop, rect.fX2, rect.fY1},
                                {CornerLeftBottom, rect.fX1, rect.fY2}};
    glPushAttrib(GL_ENABLE_BIT);
    glInitNames();
    glPushName(0);
    glColor3f(0.0f, 1.0f, 0.0f);
    glPointSize(5.0f);
    for (const SHandle& objHandle : aHandles)
    {
        if (nMode == GL_SELECT)
        {
            glLoadName(static_cast<GLuint>(objHandle.nName));
        }
        drawPoint(objHandle.fX, objHandle.fY);
    }
    glPopName();
    glPopAttrib();
}
