#include "CPlotPointer.h"

#include "COrmPlainText.h"
#include "OrmCsv.h"

#include <qwt_plot_canvas.h>
#include <qwt_scale_map.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using COrmXYPlotAxis::SRange;

namespace
{
constexpr double fWheelStep = 1.25; ///< magnification per notch
constexpr int nNotch = 120;         ///< of the wheel, in its own unit
constexpr int nSmallestBand = 8;    ///< pixels; a side that is shorter leaves its axis alone
constexpr double fKeyPart = 0.1;    ///< of what is shown, per press of an arrow
constexpr double fWidestText = 0.7; ///< of the plot's width
const QColor clrBand(40, 90, 160);
const QColor clrPaper(255, 255, 240);

/// The part of a range between two fractions of it.
SRange part(const SRange& sRange, double fFrom, double fTo)
{
    return {sRange.m_fLower + fFrom * sRange.width(), sRange.m_fLower + fTo * sRange.width()};
}

} // namespace

CPlotPointer::CPlotPointer(QWidget* pPlot, CPlotSheet* pSheet) : QWidget(pPlot), m_pSheet(pSheet), m_pBack(new QToolButton(pPlot))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    connect(m_pSheet, &CPlotSheet::laidOut, this, &CPlotPointer::follow);
    m_pSheet->canvas()->setMouseTracking(true);
    m_pSheet->canvas()->installEventFilter(this);
    m_pBack->setObjectName(QStringLiteral("showEverything"));
    m_pBack->setText(tr("Show Everything"));
    m_pBack->setToolTip(tr("Ends the magnification (double click)"));
    m_pBack->setFocusPolicy(Qt::NoFocus);
    m_pBack->hide();
    connect(m_pBack, &QToolButton::clicked, this,
            [this]
            {
                m_pSheet->showEverything();
                follow();
            });
}

void CPlotPointer::reset()
{
    endDrag();
    tell({});
    follow();
}

void CPlotPointer::follow()
{
    setGeometry(parentWidget()->rect());
    m_pBack->setVisible(m_pSheet->isZoomed());
    if (m_pSheet->isZoomed())
    {
        m_pBack->adjustSize();
        // Above the lines, so that it hides none of them.
        const int nTop = static_cast<int>(canvasRect().top()) - m_pBack->height() - 2;
        m_pBack->move(std::max(0, width() - m_pBack->width() - 4), std::max(2, nTop));
    }
    raise();
    m_pBack->raise();
    update();
}

QRectF CPlotPointer::canvasRect() const
{
    const QWidget* pCanvas = m_pSheet->canvas();
    return {QPointF(pCanvas->mapTo(parentWidget(), QPoint())), QSizeF(pCanvas->size())};
}

// ---- Events -------------------------------------------------------------------------------------------------------------

bool CPlotPointer::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    switch (pEvent->type())
    {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseMove:
        return move(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent*>(pEvent)->button() != Qt::LeftButton)
            break;
        endDrag();
        m_pSheet->showEverything();
        reset();
        return true;
    case QEvent::Wheel:
    {
        const auto* pWheel = static_cast<QWheelEvent*>(pEvent);
        zoomAround(pWheel->position(), std::pow(fWheelStep, -static_cast<double>(pWheel->angleDelta().y()) / nNotch));
        return true;
    }
    case QEvent::Leave:
        if (m_eDrag == NoDrag)
            tell({});
        break;
    default:
        break;
    }
    return QWidget::eventFilter(pWatched, pEvent);
}

bool CPlotPointer::press(const QMouseEvent& objEvent)
{
    m_pSheet->settle();
    parentWidget()->setFocus(Qt::MouseFocusReason);
    if (m_eDrag != NoDrag)
        return true;
    const bool bMove =
        objEvent.button() == Qt::MiddleButton || (objEvent.button() == Qt::LeftButton && objEvent.modifiers().testFlag(Qt::ShiftModifier));
    if (!bMove && objEvent.button() != Qt::LeftButton)
        return false;
    m_eDrag = bMove ? MoveDrag : BandDrag;
    m_ptPress = objEvent.pos();
    m_ptLast = objEvent.pos();
    if (bMove)
        m_pSheet->canvas()->setCursor(Qt::ClosedHandCursor);
    return true;
}

bool CPlotPointer::move(const QMouseEvent& objEvent)
{
    m_pSheet->settle(); // what the pointer is at depends on it
    const QPoint ptBefore = m_ptLast;
    m_ptLast = objEvent.pos();
    if (m_eDrag == NoDrag)
    {
        tell(m_pSheet->pointsAt(objEvent.pos()));
        return false;
    }
    tell({});
    if (m_eDrag == MoveDrag)
        moveBy(m_ptLast - ptBefore);
    update();
    return true;
}

bool CPlotPointer::release(const QMouseEvent& objEvent)
{
    const bool bEnds = (m_eDrag == BandDrag && objEvent.button() == Qt::LeftButton) ||
                       (m_eDrag == MoveDrag && (objEvent.button() == Qt::MiddleButton || objEvent.button() == Qt::LeftButton));
    if (!bEnds)
        return m_eDrag != NoDrag;
    const bool bBand = m_eDrag == BandDrag;
    endDrag();
    if (bBand)
        zoomTo(QRectF(m_ptPress, objEvent.pos()).normalized());
    return true;
}

void CPlotPointer::endDrag()
{
    if (m_eDrag == MoveDrag)
        m_pSheet->canvas()->setCursor(Qt::CrossCursor);
    m_eDrag = NoDrag;
    update();
}

bool CPlotPointer::takeKey(const QKeyEvent& objKey)
{
    m_pSheet->settle();
    const QRectF rectCanvas = canvasRect();
    const QPointF ptMiddle(rectCanvas.width() / 2.0, rectCanvas.height() / 2.0);
    const bool bZoomed = m_pSheet->isZoomed();
    switch (objKey.key())
    {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomAround(ptMiddle, 1.0 / fWheelStep);
        return true;
    case Qt::Key_Minus:
        zoomAround(ptMiddle, fWheelStep);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
    {
        const int nStep = objKey.key() == Qt::Key_Left ? -1 : 1;
        if (objKey.modifiers().testFlag(Qt::ShiftModifier))
            moveBy(QPointF(-nStep * fKeyPart * rectCanvas.width(), 0.0));
        else
            tellNext(nStep);
        return true;
    }
    case Qt::Key_Up:
    case Qt::Key_Down:
        moveBy(QPointF(0.0, (objKey.key() == Qt::Key_Up ? 1.0 : -1.0) * fKeyPart * rectCanvas.height()));
        return true;
    case Qt::Key_Home:
        m_pSheet->showEverything();
        reset();
        return true;
    case Qt::Key_Escape:
        if (m_eDrag == NoDrag && m_lstFound.isEmpty() && !bZoomed)
            return false;
        if (m_eDrag == NoDrag && m_lstFound.isEmpty())
            m_pSheet->showEverything();
        reset();
        return true;
    default:
        return false;
    }
}

// ---- Zooming ------------------------------------------------------------------------------------------------------------

/// Shows what lies in a rectangle of the canvas.
void CPlotPointer::zoomTo(const QRectF& rectCanvas)
{
    const QSizeF objCanvas = canvasRect().size();
    const QRectF rectBand = rectCanvas & QRectF(QPointF(), objCanvas);
    const bool bX = rectBand.width() >= nSmallestBand;
    const bool bY = rectBand.height() >= nSmallestBand;
    const CPlotSheet::SView sWhole = m_pSheet->wholeView();
    if ((!bX && !bY) || m_pSheet->allPoints().isEmpty())
        return;
    CPlotSheet::SView sView = m_pSheet->view();
    if (bX)
    {
        const SRange sX = part(sView.m_sX, rectBand.left() / objCanvas.width(), rectBand.right() / objCanvas.width());
        sView.m_sX = COrmXYPlotAxis::zoomed(sX, sWhole.m_sX, (sX.m_fLower + sX.m_fUpper) / 2.0, 1.0, m_pSheet->narrowest().m_fX);
    }
    if (bY)
    {
        const SRange sEven = m_pSheet->evenY(sWhole.m_sY);
        const SRange sY =
            part(m_pSheet->evenY(sView.m_sY), 1.0 - rectBand.bottom() / objCanvas.height(), 1.0 - rectBand.top() / objCanvas.height());
        sView.m_sY =
            m_pSheet->yOfEven(COrmXYPlotAxis::zoomed(sY, sEven, (sY.m_fLower + sY.m_fUpper) / 2.0, 1.0, m_pSheet->narrowest().m_fEvenY));
    }
    m_pSheet->setView(sView);
    reset();
}

void CPlotPointer::zoomAround(const QPointF& ptCanvas, double fFactor)
{
    m_pSheet->settle();
    if (m_pSheet->allPoints().isEmpty())
        return;
    const QSizeF objCanvas = canvasRect().size();
    const CPlotSheet::SView sWhole = m_pSheet->wholeView();
    CPlotSheet::SView sView = m_pSheet->view();
    const SRange sEvenWhole = m_pSheet->evenY(sWhole.m_sY);
    const SRange sEven = m_pSheet->evenY(sView.m_sY);
    const double fX = sView.m_sX.m_fLower + ptCanvas.x() / std::max(1.0, objCanvas.width()) * sView.m_sX.width();
    const double fY = sEven.m_fUpper - ptCanvas.y() / std::max(1.0, objCanvas.height()) * sEven.width();
    sView.m_sX = COrmXYPlotAxis::zoomed(sView.m_sX, sWhole.m_sX, fX, fFactor, m_pSheet->narrowest().m_fX);
    const SRange sNew = COrmXYPlotAxis::zoomed(sEven, sEvenWhole, fY, fFactor, m_pSheet->narrowest().m_fEvenY);
    // All of both axes is no magnification.
    if (sView.m_sX == sWhole.m_sX && sNew == sEvenWhole)
        m_pSheet->showEverything();
    else
        m_pSheet->setView({sView.m_sX, sNew == sEvenWhole ? sWhole.m_sY : m_pSheet->yOfEven(sNew)});
    reset();
}

void CPlotPointer::moveBy(const QPointF& ptPixels)
{
    if (!m_pSheet->isZoomed())
        return;
    const QSizeF objCanvas = canvasRect().size();
    const CPlotSheet::SView sWhole = m_pSheet->wholeView();
    CPlotSheet::SView sView = m_pSheet->view();
    const SRange sEven = m_pSheet->evenY(sView.m_sY);
    sView.m_sX = COrmXYPlotAxis::moved(sView.m_sX, sWhole.m_sX, -ptPixels.x() / std::max(1.0, objCanvas.width()) * sView.m_sX.width());
    sView.m_sY = m_pSheet->yOfEven(
        COrmXYPlotAxis::moved(sEven, m_pSheet->evenY(sWhole.m_sY), ptPixels.y() / std::max(1.0, objCanvas.height()) * sEven.width()));
    m_pSheet->setView(sView);
    follow();
}

// ---- Numbers under the pointer ------------------------------------------------------------------------------------------

QStringList CPlotPointer::textOf(const CPlotSheet::SFound& sFound) const
{
    const QString strX = m_pSheet->xLabel().isEmpty() ? QStringLiteral("x") : m_pSheet->xLabel();
    const QString strY = m_pSheet->yLabel().isEmpty() ? QStringLiteral("y") : m_pSheet->yLabel();
    return {sFound.m_pCurve->name(), strX + QStringLiteral(": ") + OrmCsv::number(sFound.m_sPlace.m_ptNumber.x()),
            strY + QStringLiteral(": ") + OrmCsv::number(sFound.m_sPlace.m_ptNumber.y())};
}

void CPlotPointer::tell(const QList<CPlotSheet::SFound>& lstFound)
{
    m_nTold = -1;
    QStringList lstTold;
    for (const CPlotSheet::SFound& sFound : lstFound)
        lstTold.append(textOf(sFound));
    const bool bChanged = lstTold != m_lstTold;
    m_lstFound = lstFound;
    m_lstTold = lstTold;
    if (!bChanged)
        return;
    update();
    emit toldChanged();
}

/// The keys go from point to point.
void CPlotPointer::tellNext(int nStep)
{
    const QList<CPlotSheet::SFound> lstAll = m_pSheet->allPoints();
    if (lstAll.isEmpty())
        return;
    const int nFirst = nStep > 0 ? 0 : lstAll.size() - 1;
    const int nNext = m_nTold < 0 ? nFirst : std::clamp(m_nTold + nStep, 0, lstAll.size() - 1);
    tell({lstAll.at(nNext)});
    m_nTold = nNext;
}

void CPlotPointer::paintEvent(QPaintEvent*)
{
    QPainter objPainter(this);
    objPainter.setRenderHint(QPainter::Antialiasing);
    if (m_eDrag == BandDrag && m_ptPress != m_ptLast)
    {
        const QPointF ptOrigin = canvasRect().topLeft();
        const QRectF rectBand = QRectF(ptOrigin + m_ptPress, ptOrigin + m_ptLast).normalized() & canvasRect();
        objPainter.setPen(QPen(clrBand, 1.0, Qt::DashLine));
        objPainter.setBrush(QColor(clrBand.red(), clrBand.green(), clrBand.blue(), 40));
        objPainter.drawRect(rectBand);
    }
    if (!m_lstFound.isEmpty())
        paintTold(objPainter);
}

void CPlotPointer::paintTold(QPainter& objPainter) const
{
    const double fScale = m_pSheet->scale();
    const QPointF ptPoint = canvasRect().topLeft() + m_lstFound.first().m_sPlace.m_ptPixel;
    objPainter.setPen(QPen(Qt::black, 1.5 * fScale));
    objPainter.setBrush(Qt::NoBrush);
    objPainter.drawEllipse(ptPoint, 7.0 * fScale, 7.0 * fScale);

    QFont fontName = m_pSheet->typeFont();
    fontName.setBold(true);
    const QFontMetrics objName(fontName);
    const QFontMetrics objType(m_pSheet->typeFont());
    const int nWidest = std::max(1, static_cast<int>(width() * fWidestText));
    QStringList lstShown;
    int nWidth = 0;
    for (int i = 0; i < m_lstTold.size(); ++i)
    {
        const QFontMetrics& objMetrics = i % 3 == 0 ? objName : objType;
        // A long label gives way, never the number behind it.
        const int nNumber = i % 3 == 0 ? m_lstTold.at(i).size() : m_lstTold.at(i).lastIndexOf(QLatin1String(": "));
        const QString strNumber = m_lstTold.at(i).mid(nNumber);
        lstShown.append(
            COrmPlainText::elided(m_lstTold.at(i).left(nNumber), objMetrics, nWidest - objMetrics.horizontalAdvance(strNumber)) +
            strNumber);
        nWidth = std::max(nWidth, objMetrics.horizontalAdvance(lstShown.last()));
    }
    const int nPadding = objType.height() / 2;
    const int nHeight = objType.height() * lstShown.size();
    QRectF rectBox(0.0, 0.0, nWidth + 2 * nPadding, nHeight + 2 * nPadding);
    // Above the point at its right, or where there is room.
    const double fAway = 12.0 * fScale;
    rectBox.moveBottomLeft(ptPoint + QPointF(fAway, -fAway));
    if (rectBox.right() > width())
        rectBox.moveRight(std::min(ptPoint.x() - fAway, static_cast<double>(width())));
    if (rectBox.top() < 0.0)
        rectBox.moveTop(ptPoint.y() + fAway);
    rectBox.moveLeft(std::max(0.0, rectBox.left()));
    objPainter.setPen(QPen(QColor(120, 120, 120), fScale));
    objPainter.setBrush(clrPaper);
    objPainter.drawRoundedRect(rectBox, 3.0 * fScale, 3.0 * fScale);
    objPainter.setPen(Qt::black);
    for (int i = 0; i < lstShown.size(); ++i)
    {
        objPainter.setFont(i % 3 == 0 ? fontName : m_pSheet->typeFont());
        objPainter.drawText(QPointF(rectBox.left() + nPadding, rectBox.top() + nPadding + objType.height() * i + objType.ascent()),
                            lstShown.at(i));
    }
}
