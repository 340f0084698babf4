#pragma once

// What the tests of the plot's use share: a plot on the screen, and a user's hands.

#include "PlotTestTools.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

namespace PlotTest
{
const QString g_strLine = QStringLiteral("Quantification Profile");

/// A plot on the screen: six points of 1e6, 2e6 ... 6e6, without a line between them.
class CShownPlot
{
public:
    explicit CShownPlot(int nMode = COrmXYPlot::PointsMode)
    {
        m_objPlot.resize(640, 440);
        m_objPlot.setXAxisLabel(QStringLiteral("Results"));
        m_objPlot.setYAxisLabel(QStringLiteral("Quantification photon/sec"));
        addLine(g_strLine, {1e6f, 2e6f, 3e6f, 4e6f, 5e6f, 6.0000005e6f}, nMode);
        m_objPlot.show();
        if (!QTest::qWaitForWindowExposed(&m_objPlot))
            qFatal("The plot does not show");
        m_pCanvas = PlotTest::canvas(m_objPlot);
    }

    void addLine(const QString& strName, const std::vector<float>& vecY, int nMode)
    {
        add<float>(m_objPlot, strName, vecY);
        DISPLAY_SETTINGS sLook = lookOfFirstLine();
        sLook.nDisplayMode = nMode;
        m_objPlot.setDisplaySettings(strName, sLook);
    }

    COrmXYPlot& plot() { return m_objPlot; }
    QWidget* canvas() { return m_pCanvas; }
    /// The points that are seen, from left to right, in pixels of the canvas.
    QVector<QPoint> points()
    {
        QVector<QPoint> vecPoints;
        for (const QRect& rectBlob : blobsLike(m_objPlot.getPrintImage(), Qt::red))
            vecPoints.append(m_pCanvas->mapFrom(&m_objPlot, rectBlob.center()));
        return vecPoints;
    }
    void send(QEvent::Type eType, const QPoint& ptPlace, Qt::MouseButton eButton, Qt::MouseButtons eHeld,
              Qt::KeyboardModifiers eKeys = Qt::NoModifier)
    {
        QMouseEvent objEvent(eType, ptPlace, m_pCanvas->mapToGlobal(ptPlace), eButton, eHeld, eKeys);
        QApplication::sendEvent(m_pCanvas, &objEvent);
    }
    void pointAt(const QPoint& ptPlace) { send(QEvent::MouseMove, ptPlace, Qt::NoButton, Qt::NoButton); }
    void drag(const QPoint& ptFrom, const QPoint& ptTo, Qt::MouseButton eButton, Qt::KeyboardModifiers eKeys = Qt::NoModifier)
    {
        send(QEvent::MouseButtonPress, ptFrom, eButton, eButton, eKeys);
        send(QEvent::MouseMove, (ptFrom + ptTo) / 2, Qt::NoButton, eButton, eKeys);
        send(QEvent::MouseMove, ptTo, Qt::NoButton, eButton, eKeys);
        send(QEvent::MouseButtonRelease, ptTo, eButton, Qt::NoButton, eKeys);
    }
    void turnWheel(const QPoint& ptPlace, int nNotches)
    {
        QWheelEvent objEvent(ptPlace, m_pCanvas->mapToGlobal(ptPlace), QPoint(), QPoint(0, 120 * nNotches), Qt::NoButton, Qt::NoModifier,
                             Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_pCanvas, &objEvent);
    }
    /// What is told about the point under the pointer.
    QString told() const { return m_objPlot.accessibleDescription(); }
    /// Opens the context menu.
    QMenu* menu()
    {
        const QPoint ptPlace(100, 100);
        QContextMenuEvent objEvent(QContextMenuEvent::Mouse, ptPlace, m_objPlot.mapToGlobal(ptPlace));
        QApplication::sendEvent(&m_objPlot, &objEvent);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    static QAction* entry(const QMenu* pMenu, const QString& strText)
    {
        for (QAction* pAction : pMenu->actions())
        {
            if (pAction->text() == strText)
                return pAction;
        }
        qFatal("The menu has no such entry");
    }
    /// Chooses an entry of the context menu as a click does.
    void choose(const QString& strText)
    {
        QMenu* pMenu = menu();
        if (pMenu == nullptr)
            qFatal("No menu opens");
        QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier, pMenu->actionGeometry(entry(pMenu, strText)).center());
    }

private:
    COrmXYPlot m_objPlot;
    QWidget* m_pCanvas = nullptr;
};
} // namespace PlotTest
