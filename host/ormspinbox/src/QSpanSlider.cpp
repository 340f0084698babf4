#include "QSpanSlider.h"

#include "CSpanSliderAccessible.h"
#include "OrmWheelNotches.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionSlider>
#include <QStylePainter>

#include <algorithm>
#include <cstdlib>

QSpanSlider::QSpanSlider(QWidget* pParent) : QSpanSlider(Qt::Vertical, pParent) {}

QSpanSlider::QSpanSlider(Qt::Orientation eOrientation, QWidget* pParent)
    : QSlider(eOrientation, pParent), m_nLower(minimum()), m_nUpper(maximum()), m_nShownLower(m_nLower), m_nShownUpper(m_nUpper)
{
    CSpanSliderAccessible::install();
    setAttribute(Qt::WA_Hover);
}

// ---- Values --------------------------------------------------------------------------------------------------------

void QSpanSlider::setLowerValue(int nLower)
{
    apply(nLower, std::max(nLower, m_nUpper));
}

void QSpanSlider::setUpperValue(int nUpper)
{
    apply(std::min(m_nLower, nUpper), nUpper);
}

void QSpanSlider::setSpan(int nLower, int nUpper)
{
    apply(std::min(nLower, nUpper), std::max(nLower, nUpper));
}

void QSpanSlider::apply(int nLower, int nUpper)
{
    nLower = std::clamp(nLower, minimum(), maximum());
    nUpper = std::clamp(nUpper, nLower, maximum());
    const bool bLower = nLower != m_nLower;
    const bool bUpper = nUpper != m_nUpper;
    m_nShownLower = m_nLower = nLower;
    m_nShownUpper = m_nUpper = nUpper;
    update();
    if (!bLower && !bUpper)
        return;
    if (bLower)
        emit lowerValueChanged(nLower);
    if (bUpper)
        emit upperValueChanged(nUpper);
    emit spanChanged(nLower, nUpper);
    QAccessibleValueChangeEvent objEvent(this, m_eActive == PartUpper ? m_nUpper : m_nLower);
    QAccessible::updateAccessibility(&objEvent);
}

void QSpanSlider::sliderChange(SliderChange eChange)
{
    QSlider::sliderChange(eChange);
    if (eChange == SliderRangeChange)
        apply(m_nLower, m_nUpper);
}

void QSpanSlider::place(qint64 nLower, qint64 nUpper)
{
    m_nShownLower = int(std::clamp<qint64>(nLower, minimum(), maximum()));
    m_nShownUpper = int(std::clamp<qint64>(nUpper, m_nShownLower, maximum()));
    if (hasTracking() || m_ePressed == PartNone)
        apply(m_nShownLower, m_nShownUpper);
    else
        update();
}

void QSpanSlider::moveTo(EPart eHandle, qint64 nValue)
{
    if (eHandle == PartLower)
        place(std::min<qint64>(nValue, m_nShownUpper), m_nShownUpper);
    else if (eHandle == PartUpper)
        place(m_nShownLower, std::max<qint64>(nValue, m_nShownLower));
}

void QSpanSlider::moveActive(qint64 nDelta, bool bSpan)
{
    if (bSpan)
    {
        nDelta = std::clamp<qint64>(nDelta, qint64(minimum()) - m_nShownLower, qint64(maximum()) - m_nShownUpper);
        place(m_nShownLower + nDelta, m_nShownUpper + nDelta);
    }
    else
        moveTo(m_eActive, (m_eActive == PartLower ? m_nShownLower : m_nShownUpper) + nDelta);
}

void QSpanSlider::setActiveHandle(EPart eHandle)
{
    if ((eHandle != PartLower && eHandle != PartUpper) || eHandle == m_eActive)
        return;
    m_eActive = eHandle;
    update();
    QAccessibleValueChangeEvent objEvent(this, m_eActive == PartUpper ? m_nUpper : m_nLower);
    QAccessible::updateAccessibility(&objEvent);
}

// ---- Geometry ------------------------------------------------------------------------------------------------------

QSize QSpanSlider::minimumSizeHint() const
{
    const int nHandle = style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
    const QSize szBase = QSlider::minimumSizeHint();
    return orientation() == Qt::Horizontal ? QSize(std::max(szBase.width(), 3 * nHandle), szBase.height())
                                           : QSize(szBase.width(), std::max(szBase.height(), 3 * nHandle));
}

QStyleOptionSlider QSpanSlider::handleOption(EPart ePart) const
{
    QStyleOptionSlider objOption;
    initStyleOption(&objOption);
    objOption.sliderPosition = objOption.sliderValue = ePart == PartUpper ? m_nShownUpper : m_nShownLower;
    objOption.subControls = QStyle::SC_SliderHandle;
    objOption.activeSubControls = ePart == m_ePressed || ePart == m_eHover ? QStyle::SC_SliderHandle : QStyle::SC_None;
    objOption.state.setFlag(QStyle::State_Sunken, ePart == m_ePressed);
    objOption.state.setFlag(QStyle::State_MouseOver, ePart == m_eHover);
    objOption.state.setFlag(QStyle::State_HasFocus, hasFocus() && ePart == m_eActive);
    return objOption;
}

QRect QSpanSlider::partRect(EPart ePart) const
{
    if (ePart == PartNone)
        return {};
    const QStyleOptionSlider objOption = handleOption(ePart);
    if (ePart != PartSpan)
        return style()->subControlRect(QStyle::CC_Slider, &objOption, QStyle::SC_SliderHandle, this);
    const QPoint ptLower = partRect(PartLower).center();
    const QPoint ptUpper = partRect(PartUpper).center();
    constexpr int nHalf = 2; // a strip of five pixels
    const QRect rcLine = QRect(ptLower, ptUpper).normalized();
    return orientation() == Qt::Horizontal ? QRect(rcLine.left(), ptLower.y() - nHalf, rcLine.width(), 2 * nHalf + 1)
                                           : QRect(ptLower.x() - nHalf, rcLine.top(), 2 * nHalf + 1, rcLine.height());
}

int QSpanSlider::along(const QPoint& ptPosition) const
{
    return orientation() == Qt::Horizontal ? ptPosition.x() : ptPosition.y();
}

int QSpanSlider::valueAt(int nHandleStart) const
{
    const QStyleOptionSlider objOption = handleOption(PartLower);
    const QRect rcGroove = style()->subControlRect(QStyle::CC_Slider, &objOption, QStyle::SC_SliderGroove, this);
    const QRect rcHandle = partRect(PartLower);
    const bool bHorizontal = orientation() == Qt::Horizontal;
    const int nStart = bHorizontal ? rcGroove.left() : rcGroove.top();
    const int nRoom = bHorizontal ? rcGroove.width() - rcHandle.width() : rcGroove.height() - rcHandle.height();
    return QStyle::sliderValueFromPosition(minimum(), maximum(), nHandleStart - nStart, nRoom, objOption.upsideDown);
}

QSpanSlider::EPart QSpanSlider::partAt(const QPoint& ptPosition) const
{
    const EPart eOther = m_eActive == PartLower ? PartUpper : PartLower;
    for (const EPart ePart : {m_eActive, eOther}) // the active handle lies on top
        if (partRect(ePart).contains(ptPosition))
            return ePart;
    const QRect rcSpan = partRect(PartSpan);
    const int nAlong = along(ptPosition);
    const bool bHorizontal = orientation() == Qt::Horizontal;
    const bool bInside =
        bHorizontal ? nAlong >= rcSpan.left() && nAlong <= rcSpan.right() : nAlong >= rcSpan.top() && nAlong <= rcSpan.bottom();
    return bInside ? PartSpan : PartNone;
}

QSpanSlider::EPart QSpanSlider::nearestHandle(const QPoint& ptPosition) const
{
    const int nToLower = std::abs(along(ptPosition) - along(partRect(PartLower).center()));
    const int nToUpper = std::abs(along(ptPosition) - along(partRect(PartUpper).center()));
    if (nToLower == nToUpper)
        return m_eActive;
    return nToLower < nToUpper ? PartLower : PartUpper;
}

// ---- Pointer -------------------------------------------------------------------------------------------------------

void QSpanSlider::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton || m_ePressed != PartNone || minimum() == maximum())
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    m_nGrabLower = m_nLower;
    m_nGrabUpper = m_nUpper;
    m_ePressed = partAt(pEvent->pos());
    m_bUndecided = m_ePressed != PartSpan && m_nShownLower == m_nShownUpper;
    if (m_ePressed == PartNone) // beside the span: the nearer handle comes to the pointer
    {
        m_ePressed = nearestHandle(pEvent->pos());
        const QRect rcHandle = partRect(m_ePressed);
        m_nGrab = (orientation() == Qt::Horizontal ? rcHandle.width() : rcHandle.height()) / 2;
        if (m_bUndecided)
            m_ePressed = valueAt(along(pEvent->pos()) - m_nGrab) < m_nShownLower ? PartLower : PartUpper;
        m_bUndecided = false;
        setActiveHandle(m_ePressed);
        setSliderDown(true);
        moveTo(m_ePressed, valueAt(along(pEvent->pos()) - m_nGrab));
        return;
    }
    const EPart eReference = m_ePressed == PartSpan ? PartLower : m_ePressed;
    m_nGrab = along(pEvent->pos()) - along(partRect(eReference).topLeft());
    setActiveHandle(m_ePressed);
    setSliderDown(true);
    update();
}

void QSpanSlider::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (m_ePressed == PartNone)
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    const int nValue = valueAt(along(pEvent->pos()) - m_nGrab);
    if (m_ePressed == PartSpan)
    {
        const qint64 nWidth = qint64(m_nGrabUpper) - m_nGrabLower;
        const qint64 nLower = std::clamp<qint64>(nValue, minimum(), maximum() - nWidth);
        place(nLower, nLower + nWidth);
        return;
    }
    if (m_bUndecided && nValue != m_nShownLower)
    {
        m_bUndecided = false;
        m_ePressed = nValue < m_nShownLower ? PartLower : PartUpper;
        setActiveHandle(m_ePressed);
    }
    moveTo(m_ePressed, nValue);
}

void QSpanSlider::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (m_ePressed == PartNone || pEvent->button() != Qt::LeftButton)
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    m_ePressed = PartNone;
    m_bUndecided = false;
    setSliderDown(false);
    apply(m_nShownLower, m_nShownUpper);
    setHover(partAt(pEvent->pos()));
}

void QSpanSlider::wheelEvent(QWheelEvent* pEvent)
{
    const int nTurn = OrmWheelNotches::turnOf(*pEvent);
    if (nTurn == 0 || m_ePressed != PartNone)
    {
        pEvent->ignore();
        return;
    }
    pEvent->accept();
    const int nNotches = OrmWheelNotches::take(nTurn, m_nWheelRest);
    if (nNotches == 0)
        return;
    const bool bSpan = partAt(pEvent->position().toPoint()) == PartSpan;
    if (!bSpan)
        setActiveHandle(nearestHandle(pEvent->position().toPoint()));
    const int nStep = pEvent->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier) ? pageStep() : singleStep();
    moveActive(qint64(nNotches) * nStep * (invertedControls() ? -1 : 1), bSpan);
}

void QSpanSlider::setHover(EPart ePart)
{
    if (ePart == m_eHover)
        return;
    m_eHover = ePart;
    update();
}

bool QSpanSlider::event(QEvent* pEvent)
{
    switch (pEvent->type())
    {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        setHover(partAt(static_cast<QHoverEvent*>(pEvent)->pos()));
        break;
    case QEvent::HoverLeave:
        setHover(PartNone);
        break;
    default:
        break;
    }
    return QSlider::event(pEvent);
}

// ---- Keyboard ------------------------------------------------------------------------------------------------------

void QSpanSlider::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bSpan = pEvent->modifiers() & Qt::ShiftModifier;
    const qint64 nSign = invertedControls() ? -1 : 1;
    const qint64 nForward = isRightToLeft() && orientation() == Qt::Horizontal ? -nSign : nSign;
    const qint64 nRange = qint64(maximum()) - minimum();
    pEvent->accept();
    switch (pEvent->key())
    {
    case Qt::Key_Right:
        return moveActive(nForward * singleStep(), bSpan);
    case Qt::Key_Left:
        return moveActive(-nForward * singleStep(), bSpan);
    case Qt::Key_Up:
        return moveActive(nSign * singleStep(), bSpan);
    case Qt::Key_Down:
        return moveActive(-nSign * singleStep(), bSpan);
    case Qt::Key_PageUp:
        return moveActive(nSign * pageStep(), bSpan);
    case Qt::Key_PageDown:
        return moveActive(-nSign * pageStep(), bSpan);
    case Qt::Key_Home:
        return moveActive(-nRange, bSpan);
    case Qt::Key_End:
        return moveActive(nRange, bSpan);
    case Qt::Key_Escape: // gives back what was there before the drag
        if (m_ePressed != PartNone)
        {
            m_ePressed = PartNone;
            setSliderDown(false);
            return apply(m_nGrabLower, m_nGrabUpper);
        }
        break;
    default:
        break;
    }
    pEvent->ignore();
}

bool QSpanSlider::focusNextPrevChild(bool bNext)
{
    if (hasFocus() && m_eActive == (bNext ? PartLower : PartUpper))
    {
        setActiveHandle(bNext ? PartUpper : PartLower);
        return true;
    }
    return QSlider::focusNextPrevChild(bNext);
}

void QSpanSlider::focusInEvent(QFocusEvent* pEvent)
{
    if (pEvent->reason() == Qt::TabFocusReason)
        setActiveHandle(PartLower);
    else if (pEvent->reason() == Qt::BacktabFocusReason)
        setActiveHandle(PartUpper);
    QSlider::focusInEvent(pEvent);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void QSpanSlider::paintEvent(QPaintEvent*)
{
    QStylePainter objPainter(this);

    // The groove of an empty slider (position at the end from which it would fill), and the marks.
    QStyleOptionSlider objGroove;
    initStyleOption(&objGroove);
    objGroove.sliderPosition = objGroove.sliderValue = minimum();
    objGroove.subControls = QStyle::SC_SliderGroove;
    if (tickPosition() != NoTicks)
        objGroove.subControls |= QStyle::SC_SliderTickmarks;
    objGroove.activeSubControls = QStyle::SC_None;
    objGroove.state.setFlag(QStyle::State_HasFocus, false);
    objPainter.drawComplexControl(QStyle::CC_Slider, objGroove);

    const QRect rcSpan = partRect(PartSpan);
    QColor clrSpan = palette().color(isEnabled() ? QPalette::Highlight : QPalette::Mid);
    if (isEnabled() && (m_ePressed == PartSpan || m_eHover == PartSpan))
        clrSpan = clrSpan.lighter(115);
    objPainter.setRenderHint(QPainter::Antialiasing);
    objPainter.setPen(clrSpan.darker(130));
    objPainter.setBrush(clrSpan);
    objPainter.drawRoundedRect(QRectF(rcSpan).adjusted(0.5, 0.5, -0.5, -0.5), 1, 1);
    objPainter.setRenderHint(QPainter::Antialiasing, false);

    for (const EPart ePart : {m_eActive == PartLower ? PartUpper : PartLower, m_eActive})
        objPainter.drawComplexControl(QStyle::CC_Slider, handleOption(ePart));

    if (hasFocus())
    {
        QColor clrFocus = palette().color(QPalette::Highlight);
        objPainter.setRenderHint(QPainter::Antialiasing);
        objPainter.setPen(QPen(clrFocus, 2));
        objPainter.setBrush(Qt::NoBrush);
        objPainter.drawRoundedRect(QRectF(partRect(m_eActive)).adjusted(1, 1, -1, -1), 2, 2);
    }
}
