#pragma once

#include "Coord3d.h"
#include "RenderTextWidget.h"

#include <QFontMetrics>
#include <QOpenGLWidget>
#include <QPointer>

#include <memory>

class CSOLATextCache;
class QLabel;
class QOpenGLFramebufferObject;

/// The OpenGL view of the analyses: background, light, rotation, box and text. What is in the picture is the business of the
/// view that derives from it. One device-independent pixel is one pixel here, whatever scaling is forced on from outside, so that
/// drawing, picking and measuring agree.
///
/// Where OpenGL cannot be had the view stays hidden and a sentence in its place says why; all its operations remain safe to call.
class CSOLAView : public QOpenGLWidget, public RenderTextWidget
{
    Q_OBJECT

public:
    explicit CSOLAView(QWidget* pParent);
    ~CSOLAView() override;

    /// Makes the surface format that the views need the default one: OpenGL 2.1 with the fixed functions, 24 bits of depth, no
    /// alpha, no multisampling. To be called before the application object is made.
    static void setDefaultFormat();
    /// Whether views can draw on this display; probed once per process. If not, one sentence for the user in @p pReason.
    static bool openGLAvailable(QString* pReason = nullptr);

    /// Draws @p strText, made visible where it holds control characters, in the current colour, with its baseline's left end at a position
    /// in the box and viewport last recorded by Singleton. Text wider than the viewport is elided, the rest cut at its sides. Leaves all
    /// OpenGL state as it was. @p nListBase is the first display list of fonts made of lists, which these are not.
    void renderText(double dX, double dY, double dZ, const QString& strText, const QFont& font, int nListBase) override;
    /// Shows the cursor that belongs to the selection name. The base knows no names: the arrow.
    virtual void changeMouseCursor(long nHit);

    /// Fills the whole surface with the preferences' background colour.
    void paintBackground();
    /// Sets one light that stays with the viewer, and everything else that lighting depends on; with false puts lighting out.
    void setupLights(bool bOn);
    /// Multiplies the rotation onto the modelview matrix: about x, then y, then z.
    void transform();
    /// Stores the corners of the box, millimetres.
    void setBBox(Coord3d& objMin, Coord3d& objMax);
    /// Sets the three angles in degrees and asks for a repaint.
    void setRotation(double dX, double dY, double dZ);

    /// Paints until no further frame is asked for, so that picture, colour bar and names agree; to be called before a picture is
    /// grabbed. Returns the number of frames painted; gives up after @p nMaxFrames.
    int settle(int nMaxFrames = MaxFrames);

    /// Stays hidden while there is no OpenGL.
    void setVisible(bool bVisible) override;

protected:
    /// Paints, and asks for one more frame where this one changed a palette or the tile size while it was painted. While the user can do
    /// nothing, as during a load, a frame is only rehearsed: all that it decides is decided, and the picture on the screen stays
    /// until the user can do something again.
    void paintEvent(QPaintEvent* pEvent) override;
    /// Forgets the picture: it is lost with its size. What the new size decides is decided at once; it is drawn when events run.
    void resizeEvent(QResizeEvent* pEvent) override;
    int metric(PaintDeviceMetric eMetric) const override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

    int m_nGLWidth = 0; ///< drawing surface, pixels
    int m_nGLHeight = 0;
    float m_fRotationX = 0.0f; ///< degrees
    float m_fRotationY = 0.0f;
    float m_fRotationZ = 0.0f;
    double m_dBoxMinX = 0.0; ///< box of the orthographic projection, millimetres
    double m_dBoxMinY = 0.0;
    double m_dBoxMinZ = 0.0;
    double m_dBoxMaxX = 0.0;
    double m_dBoxMaxY = 0.0;
    double m_dBoxMaxZ = 0.0;
    int m_nTileWidth = 0; ///< drawing area in hand, pixels
    int m_nTileHeight = 0;
    QFontMetrics* m_pFontMetrics = nullptr; ///< of the default font
    int m_nTextHeight = 0;                  ///< reserved for a line of text above a tile, pixels

private:
    /// What a frame is drawn from and may change itself.
    struct SFrameInputs
    {
        quint64 nPaletteChanges;
        int nTileWidth;
        int nTileHeight;
        bool operator!=(const SFrameInputs& objOther) const
        {
            return nPaletteChanges != objOther.nPaletteChanges || nTileWidth != objOther.nTileWidth || nTileHeight != objOther.nTileHeight;
        }
    };
    SFrameInputs frameInputs() const;
    /// Runs frames without an effect on the screen until no further one is asked for, MaxFrames at most.
    void rehearse();
    void dropResources();

    static constexpr int MaxFrames = 8;

    std::unique_ptr<QFontMetrics> m_pOwnedFontMetrics;
    std::unique_ptr<CSOLATextCache> m_pText;                ///< made by the first text
    bool m_bUsable = true;                                  ///< there is OpenGL to draw with
    QPointer<QLabel> m_pNotice;                             ///< child of the parent; null where there is OpenGL
    quint64 m_nFrames = 0;                                  ///< painted to the screen so far
    bool m_bStale = false;                                  ///< the last frame asked for another one
    bool m_bHasPicture = false;                             ///< a frame of the present size is on the screen
    bool m_bOwed = false;                                   ///< frames were rehearsed since the last one painted
    bool m_bResizing = false;                               ///< a new size is being taken over
    std::unique_ptr<QOpenGLFramebufferObject> m_pRehearsal; ///< a pixel that nobody sees; made by the first rehearsal
};
