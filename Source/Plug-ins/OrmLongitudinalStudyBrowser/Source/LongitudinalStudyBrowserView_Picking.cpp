// The pointer: which tile is under it, what a press selects, which corner it picks, what the menu removes.
#include "LongitudinalStudyBrowserView.h"

#include "MeasuringRectangle.h"
#include "Singleton.h"
#include "TileGrid.h"

#include <QMenu>
#include <QMouseEvent>

#include <algorithm>
#include <array>
#include <vector>

#include <GL/gl.h>
#include <GL/glu.h>

namespace
{
/// Pixels around the pointer in which a corner is hit.
constexpr double PickSize = 10.0;

/// Words for the hits of a pass over four corners.
constexpr int PickWords = 100;

/// Depths of hit records are fractions of this half range.
constexpr double DepthUnit = 2147483648.0;
} // namespace

bool processHits(int nHits, unsigned int* pBuffer, QList<long>* pList, bool bSort)
{
    std::vector<HitSet> vecHits;
    const unsigned int* pWord = pBuffer;
    for (int i = 0; i < nHits; ++i)
    {
        const unsigned int nNames = pWord[0];
        const auto fNear = static_cast<float>(pWord[1] / DepthUnit);
        const auto fFar = static_cast<float>(pWord[2] / DepthUnit);
        pWord += 3;
        for (unsigned int n = 0; n < nNames; ++n, ++pWord)
        {
            const auto nName = static_cast<long>(*pWord);
            pList->append(nName);
            vecHits.push_back({nName, fNear, fFar});
        }
    }
    if (bSort)
    {
        std::sort(vecHits.begin(), vecHits.end());
        pList->clear();
        for (auto it = vecHits.rbegin(); it != vecHits.rend(); ++it)
        {
            if (it->nName > 0)
            {
                pList->append(it->nName);
            }
        }
    }
    return !pList->isEmpty();
}

void CLongitudinalStudyBrowserView::changeMouseCursor(long nHit)
{
    switch (nHit)
    {
    case MeasuringRectangle::CornerLeftTop:
    case MeasuringRectangle::CornerRightBottom:
        setCursor(Qt::SizeFDiagCursor);
        break;
    case MeasuringRectangle::CornerRightTop:
    case MeasuringRectangle::CornerLeftBottom:
        setCursor(Qt::SizeBDiagCursor);
        break;
    default:
        setCursor(m_bSelectVoxel ? Qt::CrossCursor : Qt::ArrowCursor);
        break;
    }
}

void CLongitudinalStudyBrowserView::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (m_lstLoadedKeys.isEmpty())
    {
        return;
    }
    makeCurrent();
    if (isToolDrag(pEvent))
    {
        dragTool(pEvent);
        return;
    }
    hover(pEvent);
}

void CLongitudinalStudyBrowserView::hover(QMouseEvent* pEvent)
{
    const double fX = pEvent->x();
    const double fY = m_nGLHeight - pEvent->y();
    for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
    {
        const int nLeft = TileGrid::tileLeft(i, m_nTileWidth);
        const int nBottom = TileGrid::tileBottom(i, m_nGLHeight, m_nTileHeight, m_nTextHeight);
        const TileGrid::SRect rect =
            TileGrid::letterbox(nLeft, nBottom, m_nTileWidth, m_nTileHeight, m_dBoxMaxX - m_dBoxMinX, m_dBoxMaxY - m_dBoxMinY);
        if (!rect.contains(fX, fY))
        {
            // For every tile passed over, so that only the first one keeps its drag while the pointer stays on it.
            forgetActiveResult();
            continue;
        }
        if (i != m_nActiveResult)
        {
            m_dragStart.x = m_dragStart.y = 0.0;
            m_dragEnd.x = m_dragEnd.y = 0.0;
        }
        m_nActiveResult = i;
        m_nActiveViewX = rect.nX;
        m_nActiveViewY = rect.nY;
        m_nActiveViewWidth = rect.width();
        m_nActiveViewHeight = rect.height();
        setupView(nLeft, nBottom, m_nTileWidth, m_nTileHeight);
        m_strHighlightedResult = m_lstAnalysisParams.at(i).strSequenceID + m_lstAnalysisParams.at(i).strResultName;
        if (m_bSelectVoxel && !m_bToolDragging)
        {
            changeMouseCursor(doSelection(pEvent));
        }
        update();
        return;
    }
    if (m_bSelectVoxel)
    {
        changeMouseCursor(0);
    }
    update();
}

void CLongitudinalStudyBrowserView::forgetActiveResult()
{
    m_nActiveResult = -1;
    m_nActiveViewX = 0;
    m_nActiveViewY = 0;
    m_nActiveViewWidth = 0;
    m_nActiveViewHeight = 0;
    m_strHighlightedResult.clear();
    m_dragStart.x = m_dragStart.y = 0.0;
    m_dragEnd.x = m_dragEnd.y = 0.0;
}

void CLongitudinalStudyBrowserView::mousePressEvent(QMouseEvent* pEvent)
{
    if (m_lstLoadedKeys.isEmpty())
    {
        return;
    }
    m_nContextResult = -1;
    if (m_bSelectVoxel)
    {
        if (m_bToolDragging)
        {
            return;
        }
        m_nToolHit = 0;
        if (isToolPress(pEvent))
        {
            pressTool(pEvent);
            return; // the selection stays as it is
        }
    }
    makeCurrent();
    // A removal can leave the active tile past the end until the pointer moves.
    if (hasActiveResult())
    {
        const QString strSequenceID = m_lstAnalysisParams.at(m_nActiveResult).strSequenceID;
        const QString strResult = m_lstAnalysisParams.at(m_nActiveResult).strResultName;
        m_lstSelectedResults.clear();
        m_lstSelectedResults.append(strSequenceID + strResult);
        if (pEvent->button() == Qt::RightButton && !m_bSelectVoxel)
        {
            m_pContextMenu->popup(pEvent->globalPos());
            m_nContextResult = m_nActiveResult;
        }
        if (pEvent->button() == Qt::LeftButton)
        {
            emit updateWavelengthCombo(strSequenceID, strResult);
        }
        update();
    }
    else
    {
        m_lstSelectedResults.clear();
        emit updateWavelengthCombo(QString(), QString());
    }
}

void CLongitudinalStudyBrowserView::mouseReleaseEvent(QMouseEvent* pEvent)
{
    m_bToolDragging = false;
    if (m_bSelectVoxel)
    {
        releaseTool(pEvent);
    }
}

long CLongitudinalStudyBrowserView::doSelection(QMouseEvent* pEvent)
{
    if (!hasActiveResult())
    {
        return 0;
    }
    const sAnalysisBase& objResult = m_lstAnalysisParams.at(m_nActiveResult);
    if (objResult.fSelectLeft == objResult.fSelectRight || objResult.fSelectTop == objResult.fSelectBottom)
    {
        return 0;
    }
    setupViewForResult(m_nActiveResult);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_LIGHT0);
    std::array<GLuint, PickWords> anHits{};
    std::array<GLint, 4> anViewport{};
    glSelectBuffer(PickWords, anHits.data());
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glGetIntegerv(GL_VIEWPORT, anViewport.data());
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glRenderMode(GL_SELECT);
    glLoadIdentity();
    gluPickMatrix(pEvent->x(), height() - pEvent->y(), PickSize, PickSize, anViewport.data());
    glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, m_dBoxMinZ, m_dBoxMaxZ);
    Singleton::getInstance()->glOrtho(m_dBoxMinX, m_dBoxMaxX, m_dBoxMinY, m_dBoxMaxY, m_dBoxMinZ, m_dBoxMaxZ);
    glMatrixMode(GL_MODELVIEW);
    glInitNames();
    glPushName(0);
    glPushMatrix();
    if (m_bSelectVoxel)
    {
        drawMeasurePoints(GL_SELECT);
    }
    const int nHits = glRenderMode(GL_RENDER);
    glPopMatrix();
    glPopName();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();
    // The name of the first record, without regard to depth: of two corners in the region the one drawn first wins.
    return nHits > 0 ? static_cast<long>(anHits[3]) : 0;
}

void CLongitudinalStudyBrowserView::removeResult(int nIndex)
{
    const QString strSequenceID = m_lstAnalysisParams.at(nIndex).strSequenceID;
    const QString strResult = m_lstAnalysisParams.at(nIndex).strResultName;
    m_lstAnalysisParams.removeAt(nIndex);
    const int nKey = m_lstLoadedKeys.indexOf(strSequenceID + strResult);
    if (nKey != -1)
    {
        m_lstLoadedKeys.removeAt(nKey);
    }
    update();
    emit upadteAnlysisParameters(strSequenceID, strResult);
    m_bResultsChanged = true;
}

void CLongitudinalStudyBrowserView::onClickRemoveAction()
{
    if (m_nContextResult >= 0 && m_nContextResult < m_lstAnalysisParams.size())
    {
        removeResult(m_nContextResult);
    }
}

void CLongitudinalStudyBrowserView::onClickRemoveSelectedAction()
{
    if (m_lstSelectedResults.isEmpty())
    {
        return;
    }
    for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
    {
        const sAnalysisBase& objResult = m_lstAnalysisParams.at(i);
        if (m_lstSelectedResults.contains(objResult.strSequenceID + objResult.strResultName))
        {
            removeResult(i);
            i = 0; // the walk goes on with the second result; one that has moved to the first place is passed over
        }
    }
}
