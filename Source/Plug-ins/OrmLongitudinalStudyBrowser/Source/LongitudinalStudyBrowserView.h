#pragma once

#include "AnalysisRecords.h"
#include "COrmPalette.h"
#include "CSOLAView.h"
#include "Coord3d.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>

class QAction;
class QMenu;

/// One record of a selection pass.
struct HitSet
{
    long nName;
    float fNear; ///< 0 to 2
    float fFar;
    bool operator<(const HitSet& objOther) const { return fNear < objOther.fNear; }
};

/// Reads the records of a selection pass. Without sorting @p pList gets all names in the order of the records; with it the deepest
/// hit first and no name 0. True if there is a name.
bool processHits(int nHits, unsigned int* pBuffer, QList<long>* pList, bool bSort);

/// The comparative view: every loaded result is one tile of a grid, with its name above it, all at one scale, turned by one rotation,
/// under one colour scale for each kind; a strip at the right holds a colour bar for each kind that is loaded.
///
/// The view owns the loaded results. Setters store and do not repaint: whoever changes something calls update(). What a setter asks
/// for is done by the next frame. A key is a result's sequence ID directly followed by its name. Kinds: 0 SOLA, 1 NOVA. Colour ranges are
/// four numbers in the order SOLA minimum, SOLA maximum, NOVA minimum, NOVA maximum; -1 and -1 stand for a kind without results. Window
/// pixels have their origin at the bottom left. GUI thread only.
class CLongitudinalStudyBrowserView : public CSOLAView
{
    Q_OBJECT

signals:
    /// A result has left the view; two empty strings: all have.
    void upadteAnlysisParameters(QString strSequenceID, QString strResult);
    /// A result has been picked; two empty strings: none is.
    void updateWavelengthCombo(QString strSequenceID, QString strResult);
    /// Other voxels have been selected.
    void updatePlotTab();

public slots:
    /// Removes the result on which the context menu was opened.
    void onClickRemoveAction();
    /// Removes the selected results.
    void onClickRemoveSelectedAction();
    void onStateChangeDisplaySurfaceCB(bool bShow);
    /// Density maps on the surfaces, or their plain colour for state 0.
    void onStateChangePhotonDensityMapCB(int nState);
    void onStateChangeDisplayVoxels(bool bShow);

public:
    explicit CLongitudinalStudyBrowserView(QWidget* pParent);
    ~CLongitudinalStudyBrowserView() override;

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void initializeGL() override;
    void resizeGL(int nWidth, int nHeight) override;
    void paintGL() override;

public:
    void changeMouseCursor(long nHit) override;

    // ---- Frame, tiles and lists: LongitudinalStudyBrowserView.cpp ---------------------------------------------------------------
    /// The keys of the loaded results in the order in which they were loaded; the caller appends to it, the view removes.
    QStringList& getLoadedResult() { return m_lstLoadedKeys; }
    /// The loaded results in tile order, all SOLA before all NOVA.
    QList<sAnalysisBase>& getAnalysisParams() { return m_lstAnalysisParams; }
    /// The keys of the selected results.
    QStringList& getSelectedList() { return m_lstSelectedResults; }
    /// The key of the result under the pointer; empty for none.
    QString& getHighListedResult() { return m_strHighlightedResult; }
    int getGLWidth() const { return m_nGLWidth; }
    int getGLHeight() const { return m_nGLHeight; }
    /// The drawing rectangle of the tile under the pointer; all 0 for none.
    void getActiveViewParams(int& nX, int& nY, int& nWidth, int& nHeight) const;
    /// The picture as it would be painted now. After a change of range or layout it is complete only when the view has settled.
    QImage getPrintImage();
    /// Forgets all results and says so.
    void clear3DView();

    // ---- Results and their drawing: LongitudinalStudyBrowserView_Rendering.cpp --------------------------------------------------
    /// Adds a copy of a result at its place in the tile order. The keys stay the caller's business.
    void setAnalysisParms(sAnalysisBase& objAnalysis);
    /// Opacity of all surfaces, 0 to 1.
    void setMeshOpacity(float fOpacity) { m_fMeshOpacity = fOpacity; }
    /// Whether results of the kind were there in the last frame.
    bool containsSOLAResults() const { return m_bContainsSOLA; }
    bool containsNOVAResults() const { return m_bContainsNOVA; }
    /// Shows the density map of a wavelength or image source on the surface of a result, compared without case; the map's name is
    /// compared exactly. Where there is no such result or map only a repaint follows.
    void applyPhotonDensityMap(QString strSequenceID, QString strResult, QString strWavelength);

    // ---- Colour ranges and bars: LongitudinalStudyBrowserView_ColorBars.cpp -----------------------------------------------------
    /// The extreme values over the loaded results.
    void getAggregateMinMax(float* pfSOLAMin, float* pfSOLAMax, float* pfNOVAMin, float* pfNOVAMax) const;
    /// Gives the range in force to the palette of every volume.
    void updateAggregateMinMax();
    /// The current range, never the custom one.
    void getMinMax(float* pfSOLAMin, float* pfSOLAMax, float* pfNOVAMin, float* pfNOVAMax) const;
    /// Sets the current range; it comes into force unless a custom one does.
    void setCurrentMinMax(float fSOLAMin, float fSOLAMax, float fNOVAMin, float fNOVAMax);
    /// Sets the range that the next frame gives to the volumes.
    void setCustomRange(float fSOLAMin, float fSOLAMax, float fNOVAMin, float fNOVAMax);
    /// The palette of a volume has changed: the bars take it over in the next frame.
    void setColorPaletteModified(bool bModified) { m_bColorPaletteModified = bModified; }
    /// The palettes that the bars show, as of the last frame. Changing them changes no volume.
    COrmPalette* getSOLAColorPalette() { return &m_SOLAPalette; }
    COrmPalette* getNOVAColorPalette() { return &m_NOVAPalette; }
    /// Unit texts beside the bars.
    void setSOLAUnit(QString strUnit) { m_strSOLAUnit = strUnit; }
    void setNOVAUnit(QString strUnit) { m_strNOVAUnit = strUnit; }

    // ---- Measuring tool: LongitudinalStudyBrowserView_Measuring.cpp -------------------------------------------------------------
    /// Switches the measuring tool. On selects again under the rectangles that the results still have; off unselects all voxels and keeps
    /// the rectangles. Says nothing of other voxels.
    void onSelectVoxelS(bool bOn);
    /// Stores whether the measuring tool is on, with no other effect.
    void setSelectVoxel(bool bOn) { m_bSelectVoxel = bOn; }

protected:
    // ---- Frame, tiles and lists: LongitudinalStudyBrowserView.cpp ---------------------------------------------------------------
    /// Fits the view box into a tile with its proportions kept.
    void setupView(int nX, int nY, int nWidth, int nHeight);
    /// Restores the projection of a tile outside of painting. Nothing for -1.
    void setupViewForResult(int nIndex);
    /// Viewport and projection; both are recorded for whoever draws text.
    void createGlViewport(int nX, int nY, int nWidth, int nHeight);
    void createGlOrtho(float fLeft, float fRight, float fBottom, float fTop, float fNear, float fFar);
    void renderResultName();
    /// Drops a result with its key and tells the window.
    void removeResult(int nIndex);

    // ---- Results and their drawing: LongitudinalStudyBrowserView_Rendering.cpp --------------------------------------------------
    void renderAnalysisResult();
    void updateCommonBox();
    /// What a result turns about, and what is in the middle of its tile.
    static Coord3d centerOf(const C3DMesh& objMesh);
    void renderResult(sAnalysisBase& objResult, float* pSurfaceColor);
    void renderFrames(const sAnalysisBase& objResult);
    void renderMeasuringRectangle(const sAnalysisBase& objResult);

    // ---- Colour ranges and bars: LongitudinalStudyBrowserView_ColorBars.cpp -----------------------------------------------------
    struct SBar
    {
        COrmPalette* pPalette;
        QString strUnit;
        QString strTitle;
    };
    struct SBarLook
    {
        QFont fontTitle;
        QFont fontUnit;
        int nTitleHeight; ///< pixels
        QColor clrText;
    };
    void renderColorBar();
    void updateBarPalettes();
    /// Draws a bar with its texts. The viewport is in window pixels, the box and the bar have their own heights.
    void renderBar(const SBar& objBar, const SBarLook& objLook, const QRect& rectViewport, int nBoxHeight, int nBarHeight);

    // ---- Pointer: LongitudinalStudyBrowserView_Picking.cpp ----------------------------------------------------------------------
    /// The name of the measuring rectangle's corner under the pointer; 0 for none.
    long doSelection(QMouseEvent* pEvent);
    /// Finds the tile under the pointer and what follows from it.
    void hover(QMouseEvent* pEvent);
    void forgetActiveResult();
    /// Whether there is a result in the tile under the pointer. After a removal the index can be past the end.
    bool hasActiveResult() const { return m_nActiveResult >= 0 && m_nActiveResult < m_lstAnalysisParams.size(); }

    // ---- Measuring tool: LongitudinalStudyBrowserView_Measuring.cpp -------------------------------------------------------------
    // Corners are window pixels, two opposite ones in any order. All but the questions need the view's context to be current.
    static bool isToolPress(const QMouseEvent* pEvent);
    bool isToolDrag(const QMouseEvent* pEvent) const;
    void pressTool(QMouseEvent* pEvent);
    void dragTool(QMouseEvent* pEvent);
    void releaseTool(QMouseEvent* pEvent);
    /// Unselects the voxels of all results, or of the active one if there is one.
    void clearVoxelSelection(bool bActiveOnly);
    /// Selects the voxels of the active tile under a rectangle, then those of every other tile: under the same place of the scene, or with
    /// bActiveOnly under the rectangle that the tile has itself. False where no tile is active.
    bool doVoxelSelection(double dX1, double dY1, double dX2, double dY2, bool bActiveOnly);
    /// Stores the rectangle of one result and selects what lies under it through the whole depth, shown or not. False where nothing does,
    /// and where the pass could not be made; then the selection stays as it was.
    bool doVoxelSelection(double dX1, double dY1, double dX2, double dY2, int nIndex);
    /// Selects again in all tiles under the rectangles that they have.
    void updateVoxelSelections();
    /// Selects these voxels of one result and no others.
    void processVoxelSelection(QList<long>* pVoxels, int nIndex);
    /// Puts the rectangle of all results, or of the active one, at the same place of the scene. True.
    bool updateSelectToolPosition(double dX1, double dY1, double dX2, double dY2, bool bActiveOnly);
    /// Marks the corners of the active result's measuring rectangle, or names them in a selection pass.
    void drawMeasurePoints(unsigned int nMode);

    bool m_bUseCustomRange = false;           ///< the next update of the ranges takes the custom one; for one frame
    int m_nContextResult = -1;                ///< result on which the context menu was opened; -1: none
    float m_fMeshOpacity = 0.5f;              ///< of all surfaces, 0 to 1
    QStringList m_lstLoadedKeys;              ///< in the order of loading
    QMenu* m_pContextMenu = nullptr;          ///< of the right button; a child of the view
    QAction* m_pRemoveAction = nullptr;       ///< its only entry
    QList<sAnalysisBase> m_lstAnalysisParams; ///< the loaded results, in tile order
    QStringList m_lstSelectedResults;         ///< keys with a red frame
    QString m_strHighlightedResult;           ///< key with a blue frame: under the pointer
    bool m_bSelectVoxel = false;              ///< the measuring tool is on
    bool m_bShowSurface = true;
    bool m_bShowVoxels = true;
    bool m_bShowPhotonDensity = true; ///< surfaces with their density map instead of a plain colour
    int m_nActiveViewX = 0;           ///< drawing rectangle of the tile under the pointer, window pixels; all 0: none
    int m_nActiveViewY = 0;
    int m_nActiveViewWidth = 0;
    int m_nActiveViewHeight = 0;
    bool m_bToolDragging = false; ///< measuring tool: a drag is under way
    bool m_bToolMoved = false;    ///< the pointer moved during it
    Coord3d m_dragStart;          ///< corners of the drag, window pixels
    Coord3d m_dragEnd;
    QList<Coord2d> m_lstToolPoints; ///< empty; no tool works with single points
    int m_nActiveResult = -1;       ///< tile under the pointer; -1: none
    int m_nToolHit = 0;             ///< zeroed by every press and release of the tool
    bool m_bContainsNOVA = false;   ///< as of the last frame
    bool m_bContainsSOLA = false;
    float m_fSOLAMin = -1.0f; ///< current ranges of the two kinds
    float m_fSOLAMax = -1.0f;
    float m_fNOVAMin = -1.0f;
    float m_fNOVAMax = -1.0f;
    float m_fCustomSOLAMin = 0.0f; ///< custom ranges; without meaning until set
    float m_fCustomSOLAMax = 0.0f;
    float m_fCustomNOVAMin = 0.0f;
    float m_fCustomNOVAMax = 0.0f;
    bool m_bResultsChanged = false;       ///< the list of results changed since the last frame
    bool m_bColorPaletteModified = false; ///< a volume's palette changed: copy it again
    COrmPalette m_SOLAPalette;            ///< what the colour bars show
    COrmPalette m_NOVAPalette;
    QString m_strSOLAUnit; ///< texts beside the bars
    QString m_strNOVAUnit;
};
