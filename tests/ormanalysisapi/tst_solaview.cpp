#include "SOLAViewTestTools.h"

#include "COrmLog.h"
#include "COrmPalette.h"

#include <QSurfaceFormat>

using namespace SOLAViewTest;

/// The base of the OpenGL views.
class tst_solaview : public QObject
{
    Q_OBJECT

private slots:
    void formatServesTheViews();
    void startsWithMeasuresOfTheDefaultFont();
    void rotationIsAboutXThenYThenZ();
    void boxIsStored();
    void backgroundIsThePreferredColor();
    void lightsStayWithTheViewer();
    void lightsCanBePutOut();
    void changedFramesArePaintedAgain();
    void settlePaintsUntilNothingMoves();
    void settleGivesUp();
    void hiddenViewsSettleToo();
    void pixelRatioIsOne();
    void arrowIsTheCursor();
    void errorsOfAFrameAreTakenOff();
};

void tst_solaview::formatServesTheViews()
{
    QString strReason = QStringLiteral("old");
    QVERIFY(CSOLAView::openGLAvailable(&strReason));
    QVERIFY(strReason.isEmpty());
    QVERIFY(CSOLAView::openGLAvailable());
    CView view;
    showView(view);
    const QSurfaceFormat objFormat = view.format();
    QVERIFY(objFormat.depthBufferSize() >= 24);
    QVERIFY(objFormat.alphaBufferSize() <= 0);
    QVERIFY(objFormat.samples() <= 0);
    QVERIFY(objFormat.profile() != QSurfaceFormat::CoreProfile);
    QVERIFY(!view.grabFramebuffer().hasAlphaChannel());
}

void tst_solaview::startsWithMeasuresOfTheDefaultFont()
{
    CView view;
    QCOMPARE(*view.m_pFontMetrics, QFontMetrics(QFont()));
    QCOMPARE(view.m_nTextHeight, QFontMetrics(QFont()).height() + 2);
    QCOMPARE(view.m_fRotationX, 0.0f);
    QCOMPARE(view.m_fRotationY, 0.0f);
    QCOMPARE(view.m_fRotationZ, 0.0f);
    QCOMPARE(view.m_nGLWidth, 0);
    QCOMPARE(view.m_nTileWidth, 0);
}

void tst_solaview::rotationIsAboutXThenYThenZ()
{
    CView view;
    showView(view);
    const int nPaints = view.m_nPaints;
    view.setRotation(10.0, 20.0, 30.0);
    QCOMPARE(view.m_fRotationX, 10.0f);
    QCOMPARE(view.m_fRotationY, 20.0f);
    QCOMPARE(view.m_fRotationZ, 30.0f);
    QTRY_VERIFY(view.m_nPaints > nPaints);
    std::array<double, 16> adSeen{};
    std::array<double, 16> adExpected{};
    view.paint(
        [&]()
        {
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            glTranslatef(1, 2, 3);
            view.transform();
            glGetDoublev(GL_MODELVIEW_MATRIX, adSeen.data());
            glLoadIdentity();
            glTranslatef(1, 2, 3);
            glRotatef(10, 1, 0, 0);
            glRotatef(20, 0, 1, 0);
            glRotatef(30, 0, 0, 1);
            glGetDoublev(GL_MODELVIEW_MATRIX, adExpected.data());
        });
    QCOMPARE(adSeen, adExpected);
    QVERIFY(adSeen[1] != 0.0);
}

void tst_solaview::boxIsStored()
{
    CView view;
    Coord3d objMin(-1, -2, -3);
    Coord3d objMax(4, 5, 6);
    view.setBBox(objMin, objMax);
    QCOMPARE(view.m_dBoxMinX, -1.0);
    QCOMPARE(view.m_dBoxMinY, -2.0);
    QCOMPARE(view.m_dBoxMinZ, -3.0);
    QCOMPARE(view.m_dBoxMaxX, 4.0);
    QCOMPARE(view.m_dBoxMaxY, 5.0);
    QCOMPARE(view.m_dBoxMaxZ, 6.0);
}

void tst_solaview::backgroundIsThePreferredColor()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    const S3DViewSettings objKept = objSettings;
    QCOMPARE(objSettings.clrBackground, QColor(Qt::black));
    objSettings.clrBackground = QColor(10, 20, 200);
    COrmPreference::set3DViewPreferences(objSettings);
    CView view;
    showView(view);
    std::vector<double> vecBefore;
    std::vector<double> vecAfter;
    const QImage img = view.paint(
        [&]()
        {
            // Even where the caller draws in a corner alone.
            glEnable(GL_SCISSOR_TEST);
            glScissor(0, 0, 5, 5);
            glViewport(3, 3, 20, 20);
            vecBefore = glState();
            view.paintBackground();
            vecAfter = glState();
            glDisable(GL_SCISSOR_TEST);
        });
    COrmPreference::set3DViewPreferences(objKept);
    QCOMPARE(vecAfter, vecBefore);
    for (const QPoint& pt : {QPoint(0, 0), QPoint(399, 0), QPoint(0, 299), QPoint(399, 299), QPoint(200, 150)})
    {
        QCOMPARE(img.pixel(pt), qRgb(10, 20, 200));
    }
}

void tst_solaview::lightsStayWithTheViewer()
{
    CView view;
    showView(view);
    std::array<float, 4> afPosition{};
    std::array<float, 4> afTurned{};
    std::array<float, 4> afAmbient{};
    bool bOtherLight = true;
    GLint nMode = 0;
    view.paint(
        [&]()
        {
            glEnable(GL_LIGHT3);
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            view.setupLights(true);
            glGetLightfv(GL_LIGHT0, GL_POSITION, afPosition.data());
            glRotatef(77, 0, 1, 0);
            glMatrixMode(GL_PROJECTION);
            view.setupLights(true);
            glGetLightfv(GL_LIGHT0, GL_POSITION, afTurned.data());
            glGetFloatv(GL_LIGHT_MODEL_AMBIENT, afAmbient.data());
            glGetIntegerv(GL_MATRIX_MODE, &nMode);
            bOtherLight = glIsEnabled(GL_LIGHT3);
            glMatrixMode(GL_MODELVIEW);
        });
    QCOMPARE(afTurned, afPosition);
    QCOMPARE(afPosition[3], 0.0f); // a direction
    QVERIFY(afPosition[2] > 0.0f);
    QCOMPARE(afAmbient[0], 0.3f);
    QVERIFY(!bOtherLight);
    QCOMPARE(nMode, GL_PROJECTION);
}

void tst_solaview::lightsCanBePutOut()
{
    CView view;
    showView(view);
    std::vector<bool> vecLit;
    view.paint(
        [&]()
        {
            view.setupLights(true);
            vecLit.push_back(glIsEnabled(GL_LIGHTING) && glIsEnabled(GL_LIGHT0));
            view.setupLights(false);
            vecLit.push_back(glIsEnabled(GL_LIGHTING) || glIsEnabled(GL_LIGHT0));
        });
    QCOMPARE(vecLit, (std::vector<bool>{true, false}));
}

void tst_solaview::changedFramesArePaintedAgain()
{
    CView view;
    showView(view);
    COrmPalette objPalette;
    double fMax = 1.0;
    const auto fnRest = [&]()
    {
        for (int i = 0; i < 50; ++i)
        {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
        return view.m_nPaints;
    };
    view.m_fnPaint = [&]() { objPalette.SetImageMinMax(0.0, fMax); };
    view.update();
    QTRY_VERIFY(view.m_nPaints > 0);
    int nAtRest = fnRest();
    fMax = 2.0;
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 2);
    QCOMPARE(fnRest(), nAtRest + 2);
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 3);
    QCOMPARE(fnRest(), nAtRest + 3);
    // The same for the tile size.
    view.m_fnPaint = [&]() { view.m_nTileHeight = 55; };
    nAtRest = view.m_nPaints;
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 2);
    QCOMPARE(fnRest(), nAtRest + 2);
    // A copy of a palette is no change.
    COrmPalette objCopy;
    view.m_fnPaint = [&]() { objCopy = objPalette; };
    nAtRest = view.m_nPaints;
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 1);
    QCOMPARE(fnRest(), nAtRest + 1);
    view.m_fnPaint = nullptr;
}

void tst_solaview::settlePaintsUntilNothingMoves()
{
    CView view;
    showView(view);
    view.settle();
    const int nPaints = view.m_nPaints;
    int nLeft = 3;
    view.m_fnPaint = [&]()
    {
        if (nLeft > 0)
        {
            --nLeft;
            ++view.m_nTileWidth;
        }
    };
    QCOMPARE(view.settle(), 4);
    QCOMPARE(view.m_nPaints, nPaints + 4);
    QCOMPARE(view.settle(), 1);
    view.m_fnPaint = nullptr;
}

void tst_solaview::settleGivesUp()
{
    CView view;
    showView(view);
    view.m_fnPaint = [&]() { ++view.m_nTileWidth; };
    QCOMPARE(view.settle(), 8);
    QCOMPARE(view.settle(3), 3);
    view.m_fnPaint = nullptr;
}

void tst_solaview::hiddenViewsSettleToo()
{
    QWidget wnd;
    wnd.resize(400, 300);
    CView view(&wnd);
    view.resize(400, 300);
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    wnd.hide();
    const int nPaints = view.m_nPaints;
    int nLeft = 2;
    view.m_fnPaint = [&]()
    {
        if (nLeft > 0)
        {
            --nLeft;
            ++view.m_nTileWidth;
        }
    };
    QCOMPARE(view.settle(), 3);
    QCOMPARE(view.m_nPaints, nPaints + 3);
    view.m_fnPaint = nullptr;
}

void tst_solaview::pixelRatioIsOne()
{
    CView view;
    showView(view, QSize(250, 130));
    QCOMPARE(view.devicePixelRatio(), 1);
    QCOMPARE(view.devicePixelRatioF(), 1.0);
    QCOMPARE(view.grabFramebuffer().size(), QSize(250, 130));
}

void tst_solaview::arrowIsTheCursor()
{
    CView view;
    view.setCursor(Qt::CrossCursor);
    view.changeMouseCursor(301);
    QCOMPARE(view.cursor().shape(), Qt::ArrowCursor);
}

void tst_solaview::errorsOfAFrameAreTakenOff()
{
    QStringList lstErrors;
    const int nSink = getLogObject()->addSink([&](const SLogEntry& objEntry) { lstErrors.append(objEntry.strMessage); });
    CView view;
    showView(view);
    view.settle();
    int nPaints = view.m_nPaints;
    view.m_fnPaint = []() { glOrtho(0, 0, 0, 0, 0, 0); };
    view.update();
    QTRY_VERIFY(view.m_nPaints > nPaints);
    view.makeCurrent();
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
    QCOMPARE(lstErrors, QStringList()); // expected from windows without room
    nPaints = view.m_nPaints;
    view.m_fnPaint = []() { glEnable(0xffff); };
    view.update();
    QTRY_VERIFY(view.m_nPaints > nPaints);
    view.m_fnPaint = nullptr;
    view.makeCurrent();
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
    getLogObject()->removeSink(nSink);
    QVERIFY(!lstErrors.isEmpty());
    QVERIFY(lstErrors.first().contains(QStringLiteral("0x0500")));
}

ORM_TEST_MAIN(tst_solaview)
#include "tst_solaview.moc"
