// Results enter the view and are drawn: one box for all, one tile each.
#include "LongitudinalStudyBrowserView.h"

#include "C3DMesh.h"
#include "C3DVolume.h"
#include "COrmPreference.h"
#include "TileGrid.h"

#include <cmath>

#include <GL/gl.h>

namespace
{
constexpr int KindSOLA = 0;
constexpr int KindNOVA = 1;

/// What a tile's drawing may change: everything from GL_CURRENT_BIT to GL_VIEWPORT_BIT without the stencil buffer.
constexpr GLbitfield TileState = 0xbff;

QString keyOf(const sAnalysisBase& objResult)
{
    return objResult.strSequenceID + objResult.strResultName;
}

/// Density maps of fluorescent results have a table of their own.
void setFluorescentPalette(COrmPalette* pPalette)
{
    pPalette->setColorTableType(static_cast<ORM_COLORTABLE_TYPES>(2), 0.0f, 1.0f);
    pPalette->setReversed(0);
}

void drawLoop(double fX1, double fY1, double fX2, double fY2)
{
    glBegin(GL_LINE_LOOP);
    glVertex3d(fX1, fY1, 0.0);
    glVertex3d(fX2, fY1, 0.0);
    glVertex3d(fX2, fY2, 0.0);
    glVertex3d(fX1, fY2, 0.0);
    glEnd();
}
} // namespace

void CLongitudinalStudyBrowserView::setAnalysisParms(sAnalysisBase& objAnalysis)
{
    if (objAnalysis.nAnalysisType == KindSOLA)
    {
        if (!m_bContainsNOVA)
        {
            m_lstAnalysisParams.append(objAnalysis);
        }
        else
        {
            // The flag is the last frame's. Where the list has no fluorescent result any more there is no place to insert at.
            for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
            {
                if (m_lstAnalysisParams.at(i).nAnalysisType == KindNOVA)
                {
                    m_lstAnalysisParams.insert(i, objAnalysis);
                    break;
                }
            }
        }
    }
    else if (objAnalysis.nAnalysisType == KindNOVA)
    {
        m_lstAnalysisParams.append(objAnalysis);
        setFluorescentPalette(m_lstAnalysisParams.last().objMesh.getColorPalette());
    }
    m_bResultsChanged = true;
}

void CLongitudinalStudyBrowserView::renderAnalysisResult()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    float afSurface[3] = {static_cast<float>(objSettings.clrSurface.red() / 255.0),
                          static_cast<float>(objSettings.clrSurface.green() / 255.0),
                          static_cast<float>(objSettings.clrSurface.blue() / 255.0)};
    TileGrid::tileSize(m_lstAnalysisParams.size(), m_nGLWidth, m_nGLHeight, m_nTextHeight, m_nTileWidth, m_nTileHeight);
    m_bContainsNOVA = false;
    m_bContainsSOLA = false;
    updateCommonBox();
    for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
    {
        sAnalysisBase& objResult = m_lstAnalysisParams[i];
        setupView(TileGrid::tileLeft(i, m_nTileWidth), TileGrid::tileBottom(i, m_nGLHeight, m_nTileHeight, m_nTextHeight), m_nTileWidth,
                  m_nTileHeight);
        setupLights(true);
        renderResult(objResult, afSurface);
        glLineWidth(2.0f);
        renderFrames(objResult);
        if (m_bSelectVoxel)
        {
            if (objResult.fSelectLeft == objResult.fSelectRight && objResult.fSelectTop == objResult.fSelectBottom)
            {
                continue;
            }
            renderMeasuringRectangle(objResult);
        }
        if (i == m_nActiveResult)
        {
            drawMeasurePoints(GL_RENDER);
        }
    }
}

Coord3d CLongitudinalStudyBrowserView::centerOf(const C3DMesh& objMesh)
{
    Coord3d objMin;
    Coord3d objMax;
    objMesh.getBBox(objMin, objMax);
    return {(objMin.x + objMax.x) / 2.0, (objMin.y + objMax.y) / 2.0, (objMin.z + objMax.z) / 2.0};
}

void CLongitudinalStudyBrowserView::updateCommonBox()
{
    Coord3d objMin;
    Coord3d objMax;
    bool bFirst = true;
    for (const sAnalysisBase& objResult : qAsConst(m_lstAnalysisParams))
    {
        Coord3d objMeshMin;
        Coord3d objMeshMax;
        objResult.objMesh.getBBox(objMeshMin, objMeshMax);
        if (bFirst)
        {
            objMin = objMeshMin;
            objMax = objMeshMax;
            bFirst = false;
        }
        else
        {
            objMin = Coord3d(qMin(objMin.x, objMeshMin.x), qMin(objMin.y, objMeshMin.y), qMin(objMin.z, objMeshMin.z));
            objMax = Coord3d(qMax(objMax.x, objMeshMax.x), qMax(objMax.y, objMeshMax.y), qMax(objMax.z, objMeshMax.z));
        }
        m_bContainsSOLA = m_bContainsSOLA || objResult.nAnalysisType == KindSOLA;
        m_bContainsNOVA = m_bContainsNOVA || objResult.nAnalysisType == KindNOVA;
    }
    Coord3d objHigh(std::fabs((objMax.x - objMin.x) / 2.0), std::fabs((objMax.y - objMin.y) / 2.0), std::fabs((objMax.z - objMin.z) / 2.0));
    Coord3d objLow(-objHigh.x, -objHigh.y, -objHigh.z);
    setBBox(objLow, objHigh);
}

void CLongitudinalStudyBrowserView::renderResult(sAnalysisBase& objResult, float* pSurfaceColor)
{
    glPushMatrix();
    transform();
    const Coord3d objCenter = centerOf(objResult.objMesh);
    glTranslatef(static_cast<float>(-objCenter.x), static_cast<float>(-objCenter.y), static_cast<float>(-objCenter.z));
    glPushAttrib(TileState);
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    objResult.objMesh.setAnchor(true);
    objResult.objVolume.setAnchor(true);
    objResult.objMesh.showPhotonDensity(m_bShowPhotonDensity);
    objResult.objMesh.setOpacity(m_fMeshOpacity);
    if (!m_bShowPhotonDensity)
    {
        objResult.objMesh.setFaceSetColor(pSurfaceColor);
    }
    // The volume goes first, so that the translucent surface blends over it.
    if (m_bShowVoxels)
    {
        objResult.objVolume.render(true, GL_RENDER);
    }
    if (m_bShowSurface)
    {
        objResult.objMesh.render(true, GL_RENDER);
    }
    glPopAttrib();
    glPopMatrix();
}

void CLongitudinalStudyBrowserView::renderFrames(const sAnalysisBase& objResult)
{
    const QString strKey = keyOf(objResult);
    const bool bHighlighted = strKey.toLower() == m_strHighlightedResult.toLower();
    bool bFramed = false;
    if (m_lstSelectedResults.contains(strKey, Qt::CaseSensitive) && m_fMeshOpacity != 0.0f)
    {
        glDisable(GL_LIGHTING);
        glDisable(GL_LIGHT0);
        glColor3f(1.0f, 0.0f, 0.0f);
        drawLoop(m_dBoxMinX, m_dBoxMinY, m_dBoxMaxX, m_dBoxMaxY);
        bFramed = bHighlighted;
    }
    if (bHighlighted && !bFramed && m_fMeshOpacity != 0.0f)
    {
        glDisable(GL_LIGHTING);
        glDisable(GL_LIGHT0);
        glColor3f(0.0f, 0.0f, 1.0f);
        drawLoop(m_dBoxMinX, m_dBoxMinY, m_dBoxMaxX, m_dBoxMaxY);
    }
}

void CLongitudinalStudyBrowserView::renderMeasuringRectangle(const sAnalysisBase& objResult)
{
    // The depth test stays off for the tiles that follow; what draws itself in them sets its own.
    glDisable(GL_DEPTH_TEST);
    const bool bBlended = glIsEnabled(GL_BLEND);
    if (bBlended)
    {
        glDisable(GL_BLEND);
    }
    glDisable(GL_LIGHTING);
    glDisable(GL_LIGHT0);
    glColor3f(0.0f, 1.0f, 0.0f);
    glLineStipple(2, 0xAAAA);
    glEnable(GL_LINE_STIPPLE);
    glBegin(GL_LINE_LOOP);
    glVertex2f(objResult.fSelectLeft, objResult.fSelectTop);
    glVertex2f(objResult.fSelectRight, objResult.fSelectTop);
    glVertex2f(objResult.fSelectRight, objResult.fSelectBottom);
    glVertex2f(objResult.fSelectLeft, objResult.fSelectBottom);
    glEnd();
    glLineWidth(1.0f);
    glDisable(GL_LINE_STIPPLE);
    if (bBlended)
    {
        glEnable(GL_BLEND);
    }
}

void CLongitudinalStudyBrowserView::applyPhotonDensityMap(QString strSequenceID, QString strResult, QString strWavelength)
{
    for (sAnalysisBase& objResult : m_lstAnalysisParams)
    {
        if (objResult.strSequenceID.toLower() != strSequenceID.toLower() || objResult.strResultName.toLower() != strResult.toLower() ||
            !objResult.mapPhotonDensity.contains(strWavelength))
        {
            continue;
        }
        objResult.objMesh.setPhotonDensityMapping(objResult.mapPhotonDensity.value(strWavelength), nullptr);
        objResult.objMesh.showPhotonDensity(m_bShowPhotonDensity);
        if (objResult.nAnalysisType == KindNOVA)
        {
            setFluorescentPalette(objResult.objMesh.getColorPalette());
        }
    }
    update();
}

void CLongitudinalStudyBrowserView::onStateChangeDisplaySurfaceCB(bool bShow)
{
    m_bShowSurface = bShow;
    update();
}

void CLongitudinalStudyBrowserView::onStateChangePhotonDensityMapCB(int nState)
{
    m_bShowPhotonDensity = nState != 0;
    update();
}

void CLongitudinalStudyBrowserView::onStateChangeDisplayVoxels(bool bShow)
{
    m_bShowVoxels = bShow;
    update();
}
