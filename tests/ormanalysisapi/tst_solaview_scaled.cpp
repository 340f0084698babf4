#include "CSOLAView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>

#include <GL/gl.h>

namespace
{
/// Red in its right upper quarter, green elsewhere.
class CView : public CSOLAView
{
public:
    using CSOLAView::CSOLAView;
    QSize m_size;
    QPoint m_ptPressed;

protected:
    void resizeGL(int nWidth, int nHeight) override { m_size = QSize(nWidth, nHeight); }
    void mousePressEvent(QMouseEvent* pEvent) override { m_ptPressed = pEvent->pos(); }
    void paintGL() override
    {
        glDisable(GL_SCISSOR_TEST);
        glClearColor(0, 1, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        glEnable(GL_SCISSOR_TEST);
        glScissor(m_size.width() / 2, m_size.height() / 2, m_size.width(), m_size.height());
        glClearColor(1, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        glDisable(GL_SCISSOR_TEST);
    }
};
} // namespace

/// Where scaling is forced on from outside, drawing, picking and grabbing all count in the same pixels.
class tst_solaview_scaled : public QObject
{
    Q_OBJECT

private slots:
    void drawingPickingAndGrabbingAgree();
};

void tst_solaview_scaled::drawingPickingAndGrabbingAgree()
{
    QWidget wnd;
    wnd.resize(400, 300);
    CView view(&wnd);
    view.setGeometry(0, 0, 400, 300);
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    QCOMPARE(wnd.devicePixelRatio(), 2); // the scaling is on
    QCOMPARE(view.devicePixelRatio(), 1);
    QCOMPARE(view.devicePixelRatioF(), 1.0);
    QCOMPARE(view.m_size, QSize(400, 300));
    const QImage img = view.grabFramebuffer();
    QCOMPARE(img.size(), QSize(400, 300));
    QCOMPARE(img.pixel(201, 140), qRgb(255, 0, 0));
    QCOMPARE(img.pixel(198, 140), qRgb(0, 255, 0));
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, QPoint(390, 290));
    QCOMPARE(view.m_ptPressed, QPoint(390, 290));
    // On the screen the picture fills the whole of the widget, twice as many device pixels in each direction.
    const auto fnScreen = [&](int nX, int nY)
    {
        const QImage imgScreen = wnd.screen()->grabWindow(wnd.winId()).toImage();
        return imgScreen.size() == QSize(800, 600) ? imgScreen.pixel(nX, nY) : 0;
    };
    QTRY_COMPARE(fnScreen(790, 10), qRgb(255, 0, 0));
    QCOMPARE(fnScreen(410, 290), qRgb(255, 0, 0));
    QCOMPARE(fnScreen(390, 290), qRgb(0, 255, 0));
    QCOMPARE(fnScreen(790, 310), qRgb(0, 255, 0));
    QCOMPARE(fnScreen(10, 590), qRgb(0, 255, 0));
}

int main(int argc, char** argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    CSOLAView::setDefaultFormat();
    QApplication app(argc, argv);
    tst_solaview_scaled objTest;
    return QTest::qExec(&objTest, argc, argv);
}
#include "tst_solaview_scaled.moc"
