#include "CSOLAView.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

/// A display without OpenGL: the view's place says why it is empty, and the rest of the window works.
class tst_solaview_without_opengl : public QObject
{
    Q_OBJECT

private slots:
    void reasonIsASentence();
    void placeSaysWhyAndTheRestIsShown();
    void operationsAreSafe();
    void noticeGoesWithTheView();
};

namespace
{
class CView : public CSOLAView
{
public:
    using CSOLAView::CSOLAView;
    int m_nPaints = 0;

protected:
    void paintGL() override { ++m_nPaints; }
};
} // namespace

void tst_solaview_without_opengl::reasonIsASentence()
{
    QString strReason;
    QTest::ignoreMessage(QtWarningMsg, "QXcbIntegration: Cannot create platform OpenGL context, neither GLX nor EGL are enabled");
    QVERIFY(!CSOLAView::openGLAvailable(&strReason)); // asks Qt once, which says so
    QVERIFY(!CSOLAView::openGLAvailable());
    QVERIFY(strReason.startsWith(QStringLiteral("The 3D view needs OpenGL")));
    QVERIFY(strReason.endsWith(QLatin1Char('.')));
}

void tst_solaview_without_opengl::placeSaysWhyAndTheRestIsShown()
{
    QWidget wnd;
    wnd.resize(500, 400);
    auto* pLayout = new QVBoxLayout(&wnd);
    auto* pFrame = new QFrame(&wnd);
    pFrame->setStyleSheet(QStringLiteral("QFrame { background: #00ff00 }"));
    auto* pButton = new QPushButton(QStringLiteral("Still here"), &wnd);
    pButton->setStyleSheet(QStringLiteral("QPushButton { background: #0000ff; border: none }"));
    pLayout->addWidget(pFrame, 1);
    pLayout->addWidget(pButton);
    auto* pFrameLayout = new QVBoxLayout(pFrame);
    auto* pView = new CView(pFrame);
    pFrameLayout->addWidget(pView);
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    pView->show();
    QVERIFY(!pView->isVisible());
    QCOMPARE(pView->m_nPaints, 0);
    auto* pNotice = pFrame->findChild<QLabel*>(QStringLiteral("openGLNotice"));
    QVERIFY(pNotice);
    QVERIFY(pNotice->isVisible());
    QCOMPARE(pNotice->textFormat(), Qt::PlainText);
    QString strReason;
    CSOLAView::openGLAvailable(&strReason);
    QCOMPARE(pNotice->text(), strReason);
    QCOMPARE(pNotice->geometry(), pFrame->rect());
    wnd.resize(700, 500);
    QTRY_COMPARE(pNotice->geometry(), pFrame->rect());
    // What is on the screen, not only in the widgets: the button's colour and, in the frame, letters on its ground.
    const auto fnScreen = [&](const QWidget* pWidget)
    {
        const QImage imgWindow = wnd.screen()->grabWindow(wnd.winId()).toImage();
        return imgWindow.copy(pWidget->geometry());
    };
    QTRY_COMPARE(fnScreen(pButton).pixel(5, 5), qRgb(0, 0, 255));
    const QImage img = fnScreen(pFrame);
    int nLetters = 0;
    for (int nY = 0; nY < img.height(); ++nY)
    {
        for (int nX = 0; nX < img.width(); ++nX)
        {
            nLetters += img.pixel(nX, nY) != qRgb(0, 255, 0) ? 1 : 0;
        }
    }
    QVERIFY(nLetters > 200 && nLetters < img.width() * img.height() / 4);
}

void tst_solaview_without_opengl::operationsAreSafe()
{
    QWidget wnd;
    CView view(&wnd);
    wnd.show();
    view.setRotation(1, 2, 3);
    view.renderText(1, 2, 3, QStringLiteral("nothing"), QFont(), 2000);
    view.changeMouseCursor(301);
    view.makeCurrent();
    view.update();
    view.resize(300, 200);
    QCOMPARE(view.settle(), 0);
    QCOMPARE(view.m_nPaints, 0);
}

void tst_solaview_without_opengl::noticeGoesWithTheView()
{
    QWidget wnd;
    auto* pView = new CView(&wnd);
    QVERIFY(wnd.findChild<QLabel*>(QStringLiteral("openGLNotice")));
    delete pView;
    QVERIFY(!wnd.findChild<QLabel*>(QStringLiteral("openGLNotice")));
    wnd.resize(50, 50);
}

int main(int argc, char** argv)
{
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    CSOLAView::setDefaultFormat();
    QApplication app(argc, argv);
    tst_solaview_without_opengl objTest;
    return QTest::qExec(&objTest, argc, argv);
}
#include "tst_solaview_without_opengl.moc"
