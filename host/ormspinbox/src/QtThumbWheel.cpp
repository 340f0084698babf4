#include "QtThumbWheel.h"

#include "OrmWheelNotches.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int g_nStepsPerNotch = 3;     ///< single steps of one notch
constexpr int g_nLength = 120;          ///< preferred length in pixels
constexpr int g_nThickness = 20;        ///< preferred thickness in pixels
constexpr double g_fRidgeDegrees = 7.5; ///< from one ridge to the next

QColor mixed(const QColor& clrFrom, const QColor& clrTo, double fTo)
{
    const auto mix = [fTo](int nFrom, int nTo) { return int(nFrom + (nTo - nFrom) * fTo); };
    return {mix(clrFrom.red(), clrTo.red()), mix(clrFrom.green(), clrTo.green()), mix(clrFrom.blue(), clrTo.blue())};
}
} // namespace

QtThumbWheel::QtThumbWheel(QWidget* pParent) : QAbstractSlider(pParent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed); // lying at first, as the base class is
    setAttribute(Qt::WA_WState_OwnSizePolicy, false);          // turned with the orientation
    connect(this, &QAbstractSlider::actionTriggered, this, &QtThumbWheel::onAction);
    updateCursor();
}

void QtThumbWheel::setWrapsAround(bool bWraps)
{
    m_bWraps = bWraps;
}

QSize QtThumbWheel::sizeHint() const
{
    return orientation() == Qt::Horizontal ? QSize(g_nLength, g_nThickness) : QSize(g_nThickness, g_nLength);
}

QSize QtThumbWheel::minimumSizeHint() const
{
    return orientation() == Qt::Horizontal ? QSize(g_nLength / 3, g_nThickness - 6) : QSize(g_nThickness - 6, g_nLength / 3);
}

// ---- Values --------------------------------------------------------------------------------------------------------

/// The value for a target that may lie outside the range: beyond one end the circle goes on at the other, a line stops.
int QtThumbWheel::stepped(qint64 nTarget) const
{
    const qint64 nValues = qint64(maximum()) - minimum() + 1;
    if (!m_bWraps)
        return int(std::clamp<qint64>(nTarget, minimum(), maximum()));
    return int(minimum() + ((nTarget - minimum()) % nValues + nValues) % nValues);
}

/// The base class has stopped at the end of the range before it announces an action: a wheel that wraps goes on instead.
void QtThumbWheel::onAction(int nAction)
{
    if (!m_bWraps)
        return;
    switch (nAction)
    {
    case SliderSingleStepAdd:
        return setSliderPosition(stepped(qint64(value()) + singleStep()));
    case SliderSingleStepSub:
        return setSliderPosition(stepped(qint64(value()) - singleStep()));
    case SliderPageStepAdd:
        return setSliderPosition(stepped(qint64(value()) + pageStep()));
    case SliderPageStepSub:
        return setSliderPosition(stepped(qint64(value()) - pageStep()));
    default:
        break;
    }
}

/// One whole turn of the wheel is the whole range, and the surface follows the pointer where it is nearest to the eye.
double QtThumbWheel::degreesPerPixel() const
{
    const double fRadius = std::max(1.0, (orientation() == Qt::Horizontal ? width() : height()) / 2.0);
    return qRadiansToDegrees(1.0 / fRadius);
}

// ---- Pointer -------------------------------------------------------------------------------------------------------

void QtThumbWheel::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton || maximum() == minimum())
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    m_bPressed = true;
    m_nDragStart = orientation() == Qt::Horizontal ? pEvent->pos().x() : -pEvent->pos().y();
    m_nDragValue = value();
    setSliderDown(true);
    updateCursor();
    update();
}

void QtThumbWheel::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!m_bPressed)
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    const int nPixels = (orientation() == Qt::Horizontal ? pEvent->pos().x() : -pEvent->pos().y()) - m_nDragStart;
    const double fValues = double(maximum()) - minimum() + 1;
    const qint64 nMoved = std::llround(nPixels * degreesPerPixel() * fValues / 360);
    setSliderPosition(stepped(m_nDragValue + (invertedAppearance() ? -nMoved : nMoved)));
}

void QtThumbWheel::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (!m_bPressed || pEvent->button() != Qt::LeftButton)
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    m_bPressed = false;
    setSliderDown(false);
    updateCursor();
    update();
}

void QtThumbWheel::wheelEvent(QWheelEvent* pEvent)
{
    const int nTurn = OrmWheelNotches::turnOf(*pEvent);
    if (nTurn == 0 || m_bPressed)
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    const int nNotches = OrmWheelNotches::take(nTurn, m_nWheelRest);
    const bool bPage = pEvent->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    const qint64 nStep = bPage ? pageStep() : qint64(singleStep()) * g_nStepsPerNotch;
    setValue(stepped(value() + nNotches * nStep * (invertedControls() ? -1 : 1)));
}

bool QtThumbWheel::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::HoverEnter || pEvent->type() == QEvent::HoverLeave)
    {
        m_bHover = pEvent->type() == QEvent::HoverEnter;
        update();
    }
    return QAbstractSlider::event(pEvent);
}

void QtThumbWheel::changeEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::EnabledChange)
    {
        m_bPressed = m_bPressed && isEnabled();
        updateCursor();
    }
    QAbstractSlider::changeEvent(pEvent);
}

void QtThumbWheel::updateCursor()
{
    if (!isEnabled())
        unsetCursor();
    else
        setCursor(m_bPressed ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void QtThumbWheel::paintEvent(QPaintEvent*)
{
    QPainter objPainter(this);
    objPainter.setRenderHint(QPainter::Antialiasing);
    // Drawn lying; a standing wheel is the same turned by a quarter, so that up is forward.
    const bool bHorizontal = orientation() == Qt::Horizontal;
    if (!bHorizontal)
    {
        objPainter.translate(0, height());
        objPainter.rotate(-90);
    }
    const QRectF rcWhole(0, 0, bHorizontal ? width() : height(), bHorizontal ? height() : width());
    const QRectF rcWheel = rcWhole.adjusted(1.5, 1.5, -1.5, -1.5);
    if (rcWheel.width() < 4 || rcWheel.height() < 4)
        return;

    const QPalette& objPalette = palette();
    const QColor clrBase = objPalette.color(QPalette::Button);
    const QColor clrDark = mixed(clrBase, Qt::black, isEnabled() ? 0.55 : 0.25);
    const QColor clrFace = mixed(clrBase, Qt::black, isEnabled() ? (m_bPressed ? 0.14 : m_bHover ? 0.02 : 0.07) : 0.03);
    const QColor clrLight = mixed(clrBase, Qt::white, isEnabled() ? 0.7 : 0.3);

    // A drum seen from the side: bright where it faces the eye, dark where it turns away.
    QLinearGradient objDrum(rcWheel.topLeft(), rcWheel.topRight());
    for (int i = 0; i <= 8; ++i)
    {
        const double fSide = i / 4.0 - 1; // -1 left rim, 1 right rim
        objDrum.setColorAt(i / 8.0, mixed(clrDark, clrFace, std::sqrt(std::max(0.0, 1 - fSide * fSide)) * 0.85 + 0.15));
    }
    QPainterPath objOutline;
    objOutline.addRoundedRect(rcWheel, 3, 3);
    objPainter.setPen(Qt::NoPen);
    objPainter.fillPath(objOutline, objDrum);

    // The ridges: each a groove with a lit edge, closer together towards the rims as on a real drum.
    objPainter.setClipPath(objOutline);
    const double fRadius = rcWheel.width() / 2;
    const double fValues = double(maximum()) - minimum() + 1;
    const double fTurn = (double(sliderPosition()) - minimum()) / fValues * 360 * (invertedAppearance() ? -1 : 1);
    const double fFirst = std::fmod(fTurn, g_fRidgeDegrees) - 90 - g_fRidgeDegrees;
    constexpr int nRidges = int(180 / g_fRidgeDegrees) + 2;
    for (int i = 0; i <= nRidges; ++i)
    {
        const double fAngle = fFirst + i * g_fRidgeDegrees;
        if (fAngle <= -88 || fAngle >= 88)
            continue;
        const double fFacing = std::cos(qDegreesToRadians(fAngle));
        const double fX = rcWheel.center().x() + fRadius * std::sin(qDegreesToRadians(fAngle));
        const double fWidth = std::max(0.6, 1.6 * fFacing);
        QColor clrGroove = clrDark;
        clrGroove.setAlphaF(0.25 + 0.6 * fFacing);
        QColor clrEdge = clrLight;
        clrEdge.setAlphaF(0.75 * fFacing);
        objPainter.fillRect(QRectF(fX - fWidth / 2, rcWheel.top() + 2, fWidth, rcWheel.height() - 4), clrGroove);
        objPainter.fillRect(QRectF(fX + fWidth / 2, rcWheel.top() + 2, fWidth * 0.8, rcWheel.height() - 4), clrEdge);
    }
    objPainter.setClipping(false);

    objPainter.setBrush(Qt::NoBrush);
    const bool bFocus = hasFocus() && isEnabled();
    objPainter.setPen(QPen(bFocus ? objPalette.color(QPalette::Highlight) : mixed(clrBase, Qt::black, 0.5), bFocus ? 2 : 1));
    objPainter.drawPath(objOutline);
}
