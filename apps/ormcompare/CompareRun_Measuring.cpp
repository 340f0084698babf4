#include "CompareRun.h"

#include "TileGrid.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QMouseEvent>

#include <GL/gl.h>

namespace
{
/// A frame that takes longer will not come.
constexpr int kFrameLimitMs = 60000;

/// Pixels between the places at which the first tile is looked for.
constexpr int kSearchStep = 2;
} // namespace

void CCompareRun::measureFrames()
{
    if (m_options.m_nFrames == 0)
    {
        return;
    }
    auto* pWheel = widget<QAbstractSlider>("m_pThumWheel");
    const int nStart = pWheel->value();
    // A repaint that follows the last one too closely is put off by the toolkit, so a frame is over when it has been shown.
    bool bShown = false;
    connect(m_pView, &QOpenGLWidget::frameSwapped, this, [&bShown] { bShown = true; });
    for (int nFrame = 1; nFrame <= m_options.m_nFrames; ++nFrame)
    {
        QCoreApplication::processEvents();
        bShown = false;
        QElapsedTimer clock;
        clock.start();
        pWheel->setValue((nStart + 360 * nFrame / m_options.m_nFrames) % 360);
        m_pView->update();
        while (!bShown && clock.elapsed() < kFrameLimitMs)
        {
            QCoreApplication::processEvents(QEventLoop::AllEvents, kFrameLimitMs);
        }
        if (!bShown)
        {
            fail(QStringLiteral("The view was not painted within %1 s.").arg(kFrameLimitMs / 1000));
            break;
        }
        m_pView->makeCurrent();
        glFinish();
        m_objReport.m_lstFrameMs.append(milliseconds(clock));
    }
    disconnect(m_pView, &QOpenGLWidget::frameSwapped, this, nullptr);
    pWheel->setValue(nStart);
    say(QStringLiteral("%1 frames, median %2 ms").arg(m_options.m_nFrames).arg(CompareReport::median(m_objReport.m_lstFrameMs), 0, 'f', 1));
}

void CCompareRun::sendMouse(QEvent::Type type, const QPoint& position, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, position, m_pView->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(m_pView, &event);
}

QRect CCompareRun::firstTile()
{
    // Down the middle of the first column the first picture met is the first tile's.
    const int nColumns = TileGrid::columns(m_pView->getAnalysisParams().size());
    if (nColumns == 0)
    {
        return {};
    }
    const int nX = (m_pView->width() - TileGrid::StripRoom) / nColumns / 2;
    for (int nY = 0; nY < m_pView->height(); nY += kSearchStep)
    {
        sendMouse(QEvent::MouseMove, {nX, nY}, Qt::NoButton, Qt::NoButton);
        int nLeft = 0;
        int nBottom = 0;
        int nWidth = 0;
        int nHeight = 0;
        m_pView->getActiveViewParams(nLeft, nBottom, nWidth, nHeight);
        if (nWidth > 0 && nHeight > 0)
        {
            return {nLeft, nBottom, nWidth, nHeight};
        }
    }
    return {};
}

void CCompareRun::measureRegion()
{
    if (!m_options.m_objRegion)
    {
        return;
    }
    paint();
    const QRect rectTile = firstTile();
    if (rectTile.width() < 3 || rectTile.height() < 3)
    {
        fail(QStringLiteral("There is no picture to measure in."));
        return;
    }
    // The edge of the picture counts as outside, so the region ends one pixel before it.
    const auto toPixel = [&rectTile, this](const QPointF& fraction)
    {
        const int nX = rectTile.x() + qBound(1, qRound(fraction.x() * rectTile.width()), rectTile.width() - 1);
        const int nY = rectTile.y() + qBound(1, qRound(fraction.y() * rectTile.height()), rectTile.height() - 1);
        return QPoint(nX, m_pView->height() - nY);
    };
    const QPoint start = toPixel(m_options.m_objRegion->topLeft());
    const QPoint end = toPixel(m_options.m_objRegion->bottomRight());
    if (start.x() == end.x() || start.y() == end.y())
    {
        fail(QStringLiteral("The region to measure is narrower than a pixel of the first picture (%1 x %2).")
                 .arg(rectTile.width())
                 .arg(rectTile.height()));
        return;
    }
    auto* pTool = widget<QAbstractButton>("m_pSelectVoxelButton");
    if (!pTool->isChecked())
    {
        pTool->click();
    }
    sendMouse(QEvent::MouseMove, start, Qt::NoButton, Qt::NoButton);
    sendMouse(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
    sendMouse(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton);
    sendMouse(QEvent::MouseButtonRelease, end, Qt::LeftButton, Qt::NoButton);
    // Beside the tiles the pointer highlights none of them.
    sendMouse(QEvent::MouseMove, {m_pView->width() - 1, m_pView->height() - 1}, Qt::NoButton, Qt::NoButton);
    paint();
}
