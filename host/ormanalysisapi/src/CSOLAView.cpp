#include "CSOLAView.h"

#include "CDrawRehearsal.h"
#include "COrmLog.h"
#include "COrmPalette.h"
#include "COrmPlainText.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmProcessNotifier.h"
#include "CSOLATextCache.h"
#include "Singleton.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QPaintEvent>
#include <QScopedValueRollback>
#include <QSurfaceFormat>

#include <cmath>
#include <utility>

#include <GL/gl.h>

namespace
{
/// Room above and below a line of text, pixels.
constexpr int TextMargin = 2;

/// Room kept free at both ends of a text that had to be cut short, pixels.
constexpr int ElisionMargin = 3;

/// Beyond a fault in every frame there is no more than this to hear of in one.
constexpr int MaxErrorsDrained = 32;

/// Takes the frame's errors off OpenGL's record, so that the next one starts clean. A window without room for its tiles makes sizes that
/// OpenGL refuses as invalid values, and the matrices then stay what they are: that is expected, anything else is logged.
void drainErrors()
{
    for (int i = 0; i < MaxErrorsDrained; ++i)
    {
        const GLenum eError = glGetError();
        if (eError == GL_NO_ERROR)
        {
            return;
        }
        if (eError != GL_INVALID_VALUE)
        {
            ORM_LOG(2, QStringLiteral("OpenGL reports error 0x%1 after a frame.").arg(eError, 4, 16, QLatin1Char('0')));
        }
    }
}

/// Where a recorded box has a position: scaled to the viewport, or the viewport's corner if the box has no extent.
double windowPosition(int nCorner, int nExtent, double fLow, double fHigh, double fPosition)
{
    const double fExtent = fHigh - fLow;
    return fExtent == 0.0 ? nCorner : nCorner + (fPosition - fLow) * nExtent / fExtent;
}
} // namespace

// Without OpenGL the view is a window of its own that is never shown: as part of its parent's it would make Qt compose the whole window by
// OpenGL, and leave all of it blank.
CSOLAView::CSOLAView(QWidget* pParent)
    : QOpenGLWidget(pParent, openGLAvailable() ? Qt::WindowFlags() : Qt::WindowFlags(Qt::Window)),
      m_pOwnedFontMetrics(std::make_unique<QFontMetrics>(QFont()))
{
    m_pFontMetrics = m_pOwnedFontMetrics.get();
    m_nTextHeight = m_pFontMetrics->height() + TextMargin;
    connect(COrmProcess::notifier(), &COrmProcessNotifier::userInteractionDisabled, this,
            [this](bool bDisabled)
            {
                if (!bDisabled && m_bOwed)
                {
                    update();
                }
            });
    QString strReason;
    if (!openGLAvailable(&strReason))
    {
        ORM_LOG(2, strReason);
        m_bUsable = false;
        CSOLAView::setVisible(false);
        if (pParent)
        {
            m_pNotice = new QLabel(strReason, pParent);
            m_pNotice->setObjectName(QStringLiteral("openGLNotice"));
            m_pNotice->setTextFormat(Qt::PlainText);
            m_pNotice->setAlignment(Qt::AlignCenter);
            m_pNotice->setWordWrap(true);
            m_pNotice->setMargin(12);
            m_pNotice->setGeometry(pParent->rect());
            pParent->installEventFilter(this);
        }
    }
}

CSOLAView::~CSOLAView()
{
    // The context goes with the base, when there is nobody left here to hear of it.
    if (context())
    {
        disconnect(context(), nullptr, this, nullptr);
    }
    dropResources();
    delete m_pNotice;
}

bool CSOLAView::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (m_pNotice && pObject == m_pNotice->parent() && pEvent->type() == QEvent::Resize)
    {
        m_pNotice->setGeometry(m_pNotice->parentWidget()->rect());
    }
    return QOpenGLWidget::eventFilter(pObject, pEvent);
}

void CSOLAView::setVisible(bool bVisible)
{
    QOpenGLWidget::setVisible(bVisible && m_bUsable);
}

int CSOLAView::metric(PaintDeviceMetric eMetric) const
{
    switch (eMetric)
    {
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    default:
        return QOpenGLWidget::metric(eMetric);
    }
}

void CSOLAView::changeMouseCursor(long /*nHit*/)
{
    setCursor(Qt::ArrowCursor);
}

void CSOLAView::paintBackground()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    const QColor& clr = objSettings.clrBackground;
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearColor(static_cast<float>(clr.redF()), static_cast<float>(clr.greenF()), static_cast<float>(clr.blueF()), 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glPopAttrib();
}

void CSOLAView::setupLights(bool bOn)
{
    if (!bOn)
    {
        glDisable(GL_LIGHTING);
        glDisable(GL_LIGHT0);
        return;
    }
    // Strong enough to show form, weak enough to leave a source readable through a translucent surface.
    static const float s_afDirection[] = {0.25f, 0.4f, 1.0f, 0.0f};
    static const float s_afBlack[] = {0.0f, 0.0f, 0.0f, 1.0f};
    static const float s_afDiffuse[] = {0.72f, 0.72f, 0.72f, 1.0f};
    static const float s_afAmbient[] = {0.30f, 0.30f, 0.30f, 1.0f};

    GLint nMatrixMode = GL_MODELVIEW;
    glGetIntegerv(GL_MATRIX_MODE, &nMatrixMode);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity(); // the light stays with the viewer
    glLightfv(GL_LIGHT0, GL_POSITION, s_afDirection);
    glPopMatrix();
    glMatrixMode(static_cast<GLenum>(nMatrixMode));

    glLightfv(GL_LIGHT0, GL_AMBIENT, s_afBlack);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, s_afDiffuse);
    glLightfv(GL_LIGHT0, GL_SPECULAR, s_afBlack);
    glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 180.0f);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, s_afAmbient);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_FALSE);
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, GL_FALSE);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, s_afBlack);
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, s_afBlack);
    for (GLenum eLight = GL_LIGHT1; eLight <= GL_LIGHT7; ++eLight)
    {
        glDisable(eLight);
    }
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHTING);
}

void CSOLAView::transform()
{
    glRotatef(m_fRotationX, 1.0f, 0.0f, 0.0f);
    glRotatef(m_fRotationY, 0.0f, 1.0f, 0.0f);
    glRotatef(m_fRotationZ, 0.0f, 0.0f, 1.0f);
}

void CSOLAView::setBBox(Coord3d& objMin, Coord3d& objMax)
{
    m_dBoxMinX = objMin.x;
    m_dBoxMinY = objMin.y;
    m_dBoxMinZ = objMin.z;
    m_dBoxMaxX = objMax.x;
    m_dBoxMaxY = objMax.y;
    m_dBoxMaxZ = objMax.z;
}

void CSOLAView::setRotation(double dX, double dY, double dZ)
{
    m_fRotationX = static_cast<float>(dX);
    m_fRotationY = static_cast<float>(dY);
    m_fRotationZ = static_cast<float>(dZ);
    update();
}

void CSOLAView::renderText(double dX, double dY, double /*dZ*/, const QString& strText, const QFont& font, int /*nListBase*/)
{
    const Singleton* pRecord = Singleton::getInstance();
    if (strText.isEmpty() || pRecord->m_nWidth <= 0 || !QOpenGLContext::currentContext())
    {
        return;
    }
    const QFontMetrics objMetrics(font);
    double fX = windowPosition(pRecord->m_nX, pRecord->m_nWidth, pRecord->m_fLeft, pRecord->m_fRight, dX);
    double fY = windowPosition(pRecord->m_nY, pRecord->m_nHeight, pRecord->m_fBottom, pRecord->m_fTop, dY);
    // No text of more characters than pixels fits, so it need not be measured.
    QString strShown = strText.size() > pRecord->m_nWidth ? QString() : COrmPlainText::visible(strText);
    int nWidth = objMetrics.horizontalAdvance(strShown);
    if (strShown.isEmpty() || nWidth > pRecord->m_nWidth)
    {
        // Too wide for its place: cut short and centred, so that it is kept apart from its neighbours'.
        strShown = COrmPlainText::elided(strText, objMetrics, qMax(1, pRecord->m_nWidth - 2 * ElisionMargin));
        nWidth = objMetrics.horizontalAdvance(strShown);
        fX = pRecord->m_nX + (pRecord->m_nWidth - nWidth) / 2.0;
    }
    // Nothing stands beside its viewport, and no descender in what lies beneath it.
    fX = qMax<double>(qMin<double>(fX, pRecord->m_nX + pRecord->m_nWidth - nWidth), pRecord->m_nX);
    fY = qMax<double>(fY, pRecord->m_nY + objMetrics.descent());

    if (!m_pText)
    {
        m_pText = std::make_unique<CSOLATextCache>();
        connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &CSOLAView::dropResources, Qt::UniqueConnection);
    }
    m_pText->draw(strShown, font, static_cast<int>(std::lround(fX)), static_cast<int>(std::lround(fY)), qMax(1, width()),
                  qMax(1, height()));
}

void CSOLAView::dropResources()
{
    if (m_pText || m_pRehearsal)
    {
        makeCurrent();
        m_pText.reset();
        m_pRehearsal.reset();
    }
}

void CSOLAView::paintEvent(QPaintEvent* pEvent)
{
    if (m_bResizing || (m_bHasPicture && COrmProcess::isUserInteractionDisabled()))
    {
        rehearse();
        m_bOwed = true;
        if (m_bResizing)
        {
            update();
        }
        return;
    }
    if (m_bOwed)
    {
        rehearse(); // so that the one frame that follows is the last one
        m_bOwed = false;
    }
    const SFrameInputs objBefore = frameInputs();
    QOpenGLWidget::paintEvent(pEvent);
    if (QOpenGLContext::currentContext())
    {
        drainErrors();
        m_bHasPicture = true;
    }
    ++m_nFrames;
    // What was drawn early in the frame has not seen what was decided late in it.
    m_bStale = frameInputs() != objBefore;
    if (m_bStale)
    {
        update();
    }
}

void CSOLAView::resizeEvent(QResizeEvent* pEvent)
{
    m_bHasPicture = false;
    // What is painted in here is painted once more before the window is put together.
    const QScopedValueRollback<bool> objResizing(m_bResizing, true);
    QOpenGLWidget::resizeEvent(pEvent);
}

void CSOLAView::rehearse()
{
    makeCurrent();
    if (!QOpenGLContext::currentContext())
    {
        return;
    }
    if (!m_pRehearsal)
    {
        m_pRehearsal = std::make_unique<QOpenGLFramebufferObject>(1, 1, QOpenGLFramebufferObject::CombinedDepthStencil);
        connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &CSOLAView::dropResources, Qt::UniqueConnection);
    }
    const CDrawRehearsal objRehearsal;
    bool bAgain = true;
    for (int nFrame = 0; bAgain && nFrame < MaxFrames; ++nFrame)
    {
        const SFrameInputs objBefore = frameInputs();
        m_pRehearsal->bind();
        paintGL();
        drainErrors();
        bAgain = frameInputs() != objBefore;
    }
    makeCurrent(); // back to what is on the screen
}

int CSOLAView::settle(int nMaxFrames)
{
    int nFrames = 0;
    if (!m_bUsable)
    {
        return nFrames;
    }
    do
    {
        const quint64 nPainted = m_nFrames;
        const SFrameInputs objBefore = frameInputs();
        repaint();
        if (m_nFrames == nPainted)
        {
            // Not on the screen, or painted to it a moment ago.
            grabFramebuffer();
            m_bStale = frameInputs() != objBefore;
        }
        ++nFrames;
    } while (m_bStale && nFrames < nMaxFrames);
    return nFrames;
}

CSOLAView::SFrameInputs CSOLAView::frameInputs() const
{
    return {COrmPalette::changeCount(), m_nTileWidth, m_nTileHeight};
}
