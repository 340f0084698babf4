// The view's life, its frame and the grid of tiles.
#include "LongitudinalStudyBrowserView.h"

#include "OrmMemory.h"
#include "Singleton.h"
#include "TileGrid.h"

#include <QAction>
#include <QFont>
#include <QFontMetrics>
#include <QMenu>

#include <GL/gl.h>

namespace
{
/// First display list of fonts that are made of lists.
constexpr int FontListBase = 2000;

/// Depths between which every tile is drawn, whatever the depth of the box.
constexpr float NearPlane = -1.0f;
constexpr float FarPlane = 1000.0f;
} // namespace

CLongitudinalStudyBrowserView::CLongitudinalStudyBrowserView(QWidget* pParent) : CSOLAView(pParent)
{
    setObjectName(QString::fromLatin1(staticMetaObject.className()));
    m_lstLoadedKeys.clear();
    m_strHighlightedResult.clear();
    m_fMeshOpacity = 0.5f;
    m_nContextResult = -1;
    m_pContextMenu = new QMenu(this);
    m_pRemoveAction = m_pContextMenu->addAction(QStringLiteral("Remove"));
    connect(m_pRemoveAction, SIGNAL(triggered()), this, SLOT(onClickRemoveAction()));
    setMouseTracking(true);
}

CLongitudinalStudyBrowserView::~CLongitudinalStudyBrowserView()
{
    // The meshes and volumes go before the palettes and lists.
    m_lstAnalysisParams.clear();
}

void CLongitudinalStudyBrowserView::initializeGL()
{
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
}

void CLongitudinalStudyBrowserView::resizeGL(int nWidth, int nHeight)
{
    m_nGLWidth = nWidth;
    m_nGLHeight = nHeight;
    update();
}

void CLongitudinalStudyBrowserView::paintGL()
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    paintBackground();
    glPushAttrib(0xfffff);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glShadeModel(GL_SMOOTH);
    renderResultName();
    renderAnalysisResult();
    if (!m_lstAnalysisParams.isEmpty())
    {
        renderColorBar();
    }
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glPopAttrib();
    glFlush();
    m_bResultsChanged = false;
    m_bUseCustomRange = false;
}

void CLongitudinalStudyBrowserView::setupView(int nX, int nY, int nWidth, int nHeight)
{
    const TileGrid::SRect rect = TileGrid::letterbox(nX, nY, nWidth, nHeight, m_dBoxMaxX - m_dBoxMinX, m_dBoxMaxY - m_dBoxMinY);
    createGlViewport(rect.nX, rect.nY, rect.width(), rect.height());
    createGlOrtho(static_cast<float>(m_dBoxMinX), static_cast<float>(m_dBoxMaxX), static_cast<float>(m_dBoxMinY),
                  static_cast<float>(m_dBoxMaxY), NearPlane, FarPlane);
}

void CLongitudinalStudyBrowserView::setupViewForResult(int nIndex)
{
    if (nIndex == -1)
    {
        return;
    }
    TileGrid::tileSize(m_lstAnalysisParams.size(), m_nGLWidth, m_nGLHeight, m_nTextHeight, m_nTileWidth, m_nTileHeight);
    setupView(TileGrid::tileLeft(nIndex, m_nTileWidth), TileGrid::tileBottom(nIndex, m_nGLHeight, m_nTileHeight, m_nTextHeight),
              m_nTileWidth, m_nTileHeight);
}

void CLongitudinalStudyBrowserView::createGlViewport(int nX, int nY, int nWidth, int nHeight)
{
    glViewport(nX, nY, nWidth, nHeight);
    Singleton::getInstance()->glViewport(nX, nY, nWidth, nHeight);
}

void CLongitudinalStudyBrowserView::createGlOrtho(float fLeft, float fRight, float fBottom, float fTop, float fNear, float fFar)
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(fLeft, fRight, fBottom, fTop, fNear, fFar);
    Singleton::getInstance()->glOrtho(fLeft, fRight, fBottom, fTop, fNear, fFar);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void CLongitudinalStudyBrowserView::renderResultName()
{
    for (int i = 0; i < m_lstAnalysisParams.size(); ++i)
    {
        // The tile size is the one of the frame before; where it has changed, another frame follows.
        const int nY = TileGrid::bandBottom(i, m_nGLHeight, m_nTileHeight, m_nTextHeight);
        createGlViewport(TileGrid::tileLeft(i, m_nTileWidth), nY, m_nTileWidth, m_nTextHeight);
        // The box runs from the band's place in the window to the band's height, so it may stand on its head or be empty. Text does
        // not mind: its own left lower corner is where the box begins.
        createGlOrtho(0.0f, static_cast<float>(m_nTileWidth), static_cast<float>(nY), static_cast<float>(m_nTextHeight), -1.0f, 1.0f);
        glColor3f(1.0f, 0.0f, 0.0f);
        const QString& strName = m_lstAnalysisParams.at(i).strResultName;
        const int nX = (m_nTileWidth - m_pFontMetrics->horizontalAdvance(strName)) / 2;
        renderText(nX, nY, 0.0, strName, QFont(), FontListBase);
    }
}

void CLongitudinalStudyBrowserView::getActiveViewParams(int& nX, int& nY, int& nWidth, int& nHeight) const
{
    nX = m_nActiveViewX;
    nY = m_nActiveViewY;
    nWidth = m_nActiveViewWidth;
    nHeight = m_nActiveViewHeight;
}

QImage CLongitudinalStudyBrowserView::getPrintImage()
{
    makeCurrent();
    update();
    return grabFramebuffer();
}

void CLongitudinalStudyBrowserView::clear3DView()
{
    m_lstAnalysisParams.clear();
    m_lstLoadedKeys.clear();
    emit upadteAnlysisParameters(QString(), QString());
    update();
    makeCurrent();
    glColor4f(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    OrmMemory::giveBack();
}
