#include "COrmLog.h"
#include "COrmPalette.h"
#include "COrmPreference.h"
#include "CSOLAView.h"
#include "Singleton.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QOpenGLContext>
#include <QSurfaceFormat>
#include <QTest>

#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include <GL/gl.h>

namespace
{
/// A view that paints what a test asks for.
class CView : public CSOLAView
{
public:
    explicit CView(QWidget* pParent = nullptr) : CSOLAView(pParent) {}

    /// The picture of a frame that does this on black ground.
    QImage paint(const std::function<void()>& fnPaint)
    {
        m_fnPaint = fnPaint;
        const QImage img = grabFramebuffer();
        m_fnPaint = nullptr;
        return img;
    }
    /// Viewport and box, as the views of the host record them.
    void place(const QRect& rectViewport, double fLeft, double fRight, double fBottom, double fTop)
    {
        Singleton::getInstance()->glViewport(rectViewport.x(), rectViewport.y(), rectViewport.width(), rectViewport.height());
        Singleton::getInstance()->glOrtho(fLeft, fRight, fBottom, fTop, -1, 1);
    }

    using CSOLAView::m_dBoxMaxX;
    using CSOLAView::m_dBoxMaxY;
    using CSOLAView::m_dBoxMaxZ;
    using CSOLAView::m_dBoxMinX;
    using CSOLAView::m_dBoxMinY;
    using CSOLAView::m_dBoxMinZ;
    using CSOLAView::m_fRotationX;
    using CSOLAView::m_fRotationY;
    using CSOLAView::m_fRotationZ;
    using CSOLAView::m_nGLHeight;
    using CSOLAView::m_nGLWidth;
    using CSOLAView::m_nTextHeight;
    using CSOLAView::m_nTileHeight;
    using CSOLAView::m_nTileWidth;
    using CSOLAView::m_pFontMetrics;

    std::function<void()> m_fnPaint;
    int m_nPaints = 0;

protected:
    void paintGL() override
    {
        ++m_nPaints;
        glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (m_fnPaint)
        {
            m_fnPaint();
        }
    }
};

void showView(CView& view, const QSize& size = QSize(400, 300))
{
    view.resize(size);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
}

/// The rectangle of all pixels that are not black, origin at the bottom left.
QRect drawn(const QImage& img)
{
    QRect rectFound;
    for (int nY = 0; nY < img.height(); ++nY)
    {
        for (int nX = 0; nX < img.width(); ++nX)
        {
            if (img.pixel(nX, nY) != qRgb(0, 0, 0))
            {
                rectFound = rectFound.united(QRect(nX, img.height() - 1 - nY, 1, 1));
            }
        }
    }
    return rectFound;
}

/// A great many values of OpenGL's state, by number.
std::vector<double> glState()
{
    static const GLenum s_aeNames[] = {GL_CURRENT_COLOR,
                                       GL_CURRENT_NORMAL,
                                       GL_CURRENT_TEXTURE_COORDS,
                                       GL_CURRENT_RASTER_POSITION,
                                       GL_CURRENT_RASTER_COLOR,
                                       GL_CURRENT_RASTER_POSITION_VALID,
                                       GL_POINT_SIZE,
                                       GL_POINT_SMOOTH,
                                       GL_LINE_WIDTH,
                                       GL_LINE_SMOOTH,
                                       GL_LINE_STIPPLE,
                                       GL_LINE_STIPPLE_PATTERN,
                                       GL_LINE_STIPPLE_REPEAT,
                                       GL_POLYGON_MODE,
                                       GL_POLYGON_SMOOTH,
                                       GL_POLYGON_STIPPLE,
                                       GL_EDGE_FLAG,
                                       GL_CULL_FACE,
                                       GL_CULL_FACE_MODE,
                                       GL_FRONT_FACE,
                                       GL_LIGHTING,
                                       GL_LIGHT0,
                                       GL_LIGHT1,
                                       GL_LIGHT_MODEL_AMBIENT,
                                       GL_LIGHT_MODEL_TWO_SIDE,
                                       GL_LIGHT_MODEL_LOCAL_VIEWER,
                                       GL_SHADE_MODEL,
                                       GL_COLOR_MATERIAL,
                                       GL_COLOR_MATERIAL_FACE,
                                       GL_COLOR_MATERIAL_PARAMETER,
                                       GL_FOG,
                                       GL_FOG_MODE,
                                       GL_FOG_DENSITY,
                                       GL_DEPTH_RANGE,
                                       GL_DEPTH_TEST,
                                       GL_DEPTH_WRITEMASK,
                                       GL_DEPTH_CLEAR_VALUE,
                                       GL_DEPTH_FUNC,
                                       GL_ACCUM_CLEAR_VALUE,
                                       GL_STENCIL_TEST,
                                       GL_STENCIL_FUNC,
                                       GL_STENCIL_REF,
                                       GL_STENCIL_FAIL,
                                       GL_STENCIL_WRITEMASK,
                                       GL_MATRIX_MODE,
                                       GL_NORMALIZE,
                                       GL_VIEWPORT,
                                       GL_MODELVIEW_STACK_DEPTH,
                                       GL_PROJECTION_STACK_DEPTH,
                                       GL_TEXTURE_STACK_DEPTH,
                                       GL_MODELVIEW_MATRIX,
                                       GL_PROJECTION_MATRIX,
                                       GL_TEXTURE_MATRIX,
                                       GL_ATTRIB_STACK_DEPTH,
                                       GL_CLIENT_ATTRIB_STACK_DEPTH,
                                       GL_ALPHA_TEST,
                                       GL_ALPHA_TEST_FUNC,
                                       GL_ALPHA_TEST_REF,
                                       GL_DITHER,
                                       GL_BLEND,
                                       GL_BLEND_SRC,
                                       GL_BLEND_DST,
                                       GL_BLEND_EQUATION_RGB,
                                       GL_LOGIC_OP_MODE,
                                       GL_COLOR_LOGIC_OP,
                                       GL_SCISSOR_BOX,
                                       GL_SCISSOR_TEST,
                                       GL_COLOR_CLEAR_VALUE,
                                       GL_COLOR_WRITEMASK,
                                       GL_UNPACK_SWAP_BYTES,
                                       GL_UNPACK_LSB_FIRST,
                                       GL_UNPACK_ROW_LENGTH,
                                       GL_UNPACK_SKIP_ROWS,
                                       GL_UNPACK_SKIP_PIXELS,
                                       GL_UNPACK_ALIGNMENT,
                                       GL_PACK_ALIGNMENT,
                                       GL_PACK_ROW_LENGTH,
                                       GL_MAP_COLOR,
                                       GL_ALPHA_SCALE,
                                       GL_ALPHA_BIAS,
                                       GL_RED_SCALE,
                                       GL_ZOOM_X,
                                       GL_ZOOM_Y,
                                       GL_TEXTURE_1D,
                                       GL_TEXTURE_2D,
                                       GL_TEXTURE_BINDING_2D,
                                       GL_TEXTURE_GEN_S,
                                       GL_TEXTURE_GEN_T,
                                       GL_ACTIVE_TEXTURE,
                                       GL_CLIENT_ACTIVE_TEXTURE,
                                       GL_VERTEX_ARRAY,
                                       GL_NORMAL_ARRAY,
                                       GL_COLOR_ARRAY,
                                       GL_TEXTURE_COORD_ARRAY,
                                       GL_ARRAY_BUFFER_BINDING,
                                       GL_ELEMENT_ARRAY_BUFFER_BINDING,
                                       GL_PIXEL_UNPACK_BUFFER_BINDING,
                                       GL_POINT_SPRITE,
                                       GL_MULTISAMPLE,
                                       GL_POLYGON_OFFSET_FILL,
                                       GL_RENDER_MODE,
                                       GL_NAME_STACK_DEPTH,
                                       GL_LIST_BASE,
                                       GL_CURRENT_PROGRAM};
    std::vector<double> vecState;
    for (const GLenum eName : s_aeNames)
    {
        std::array<GLdouble, 16> adValues{};
        glGetDoublev(eName, adValues.data());
        vecState.insert(vecState.end(), adValues.begin(), adValues.end());
    }
    for (const GLenum eName : {GL_TEXTURE_ENV_MODE})
    {
        GLint nValue = 0;
        glGetTexEnviv(GL_TEXTURE_ENV, eName, &nValue);
        vecState.push_back(nValue);
    }
    for (const GLenum eName : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_POSITION})
    {
        std::array<GLfloat, 4> afValues{};
        glGetLightfv(GL_LIGHT0, eName, afValues.data());
        vecState.insert(vecState.end(), afValues.begin(), afValues.end());
    }
    return vecState;
}

/// The worst that a caller can have set.
void setHostileState(GLuint nTexture)
{
    glBindTexture(GL_TEXTURE_2D, nTexture);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_NEVER);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 333);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 3);
    glPixelTransferf(GL_ALPHA_SCALE, 0.0f);
    glEnable(GL_LIGHTING);
    glEnable(GL_FOG);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.99f);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glEnable(GL_STENCIL_TEST);
    glStencilFunc(GL_NEVER, 0, 0);
    glEnable(GL_POLYGON_STIPPLE);
    glEnable(GL_TEXTURE_GEN_S);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glDisable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_ZERO);
    glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
    glMatrixMode(GL_TEXTURE);
    glTranslatef(0.3f, 0.4f, 0.0f);
    glMatrixMode(GL_MODELVIEW);
    glRotatef(33.0f, 1.0f, 1.0f, 0.0f);
    glMatrixMode(GL_PROJECTION);
    glScalef(0.1f, -3.0f, 1.0f);
    glViewport(7, 9, 11, 13);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glDepthMask(GL_FALSE);
}
} // namespace

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
    void textStandsWhereTheRecordSays_data();
    void textStandsWhereTheRecordSays();
    void textIsLiftedOffTheLowerEdge();
    void wideTextIsElidedInItsViewport();
    void wholeTextIsDrawn_data();
    void wholeTextIsDrawn();
    void textWithoutRoomIsNotDrawn();
    void controlCharactersAreMadeVisible();
    void textHasTheCurrentColor();
    void textMindsNoStateAndLeavesIt_data();
    void textMindsNoStateAndLeavesIt();
    void manyTextsAndANewContext();
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

void tst_solaview::textStandsWhereTheRecordSays_data()
{
    QTest::addColumn<QRect>("rectViewport");
    QTest::addColumn<QVector<double>>("vecBox"); // left, right, bottom, top
    QTest::addColumn<QPointF>("ptText");
    QTest::addColumn<QPoint>("ptWindow");
    const QRect rect(50, 100, 200, 80);
    QTest::newRow("pixels for pixels") << rect << QVector<double>{0, 200, 0, 80} << QPointF(30, 20) << QPoint(80, 120);
    QTest::newRow("scaled") << rect << QVector<double>{-10, 10, -4, 4} << QPointF(0, 0) << QPoint(150, 140);
    QTest::newRow("squeezed") << rect << QVector<double>{0, 200, 0, 160} << QPointF(30, 80) << QPoint(80, 140);
    QTest::newRow("on its head") << rect << QVector<double>{0, 200, 250, 40} << QPointF(30, 180) << QPoint(80, 127);
    QTest::newRow("on its head, at the beginning") << rect << QVector<double>{0, 200, 250, 40} << QPointF(30, 250) << QPoint(80, 100);
    QTest::newRow("no height") << rect << QVector<double>{0, 200, 40, 40} << QPointF(30, 40) << QPoint(80, 100);
    QTest::newRow("no width") << rect << QVector<double>{0, 0, 0, 80} << QPointF(30, 20) << QPoint(50, 120);
    QTest::newRow("no extent") << rect << QVector<double>{0, 0, 0, 0} << QPointF(30, 20) << QPoint(50, 100);
    QTest::newRow("backwards") << rect << QVector<double>{200, 0, 0, 80} << QPointF(160, 20) << QPoint(90, 120);
}

void tst_solaview::textStandsWhereTheRecordSays()
{
    QFETCH(QRect, rectViewport);
    QFETCH(QVector<double>, vecBox);
    QFETCH(QPointF, ptText);
    QFETCH(QPoint, ptWindow);
    CView view;
    showView(view);
    const QString strText = QStringLiteral("HE"); // straight feet on the baseline
    const QImage img = view.paint(
        [&]()
        {
            view.place(rectViewport, vecBox[0], vecBox[1], vecBox[2], vecBox[3]);
            glColor3f(1, 1, 1);
            view.renderText(ptText.x(), ptText.y(), 0, strText, QFont(), 2000);
        });
    const QRect rectDrawn = drawn(img);
    const QFontMetrics objMetrics{QFont()};
    const QRect rectTight = objMetrics.tightBoundingRect(strText);
    const int nBaseline = qMax(ptWindow.y(), rectViewport.y() + objMetrics.descent());
    QVERIFY2(qAbs(rectDrawn.left() - (ptWindow.x() + rectTight.left())) <= 1, qPrintable(QString::number(rectDrawn.left())));
    QVERIFY2(qAbs(rectDrawn.top() - nBaseline) <= 1, qPrintable(QString::number(rectDrawn.top())));
    QVERIFY(qAbs(rectDrawn.width() - rectTight.width()) <= 2);
    QVERIFY(qAbs(rectDrawn.height() - rectTight.height()) <= 2);
}

void tst_solaview::textIsLiftedOffTheLowerEdge()
{
    CView view;
    showView(view);
    const QImage img = view.paint(
        [&]()
        {
            view.place(QRect(50, 100, 200, 19), 0, 200, 100, 19);
            glColor3f(1, 1, 1);
            view.renderText(20, 100, 0, QStringLiteral("gjpq_"), QFont(), 2000);
        });
    // In a rectangle counted upwards, top is the lower edge. Fonts round their descent, which may cost a pixel; a tile's frame begins two
    // below.
    QVERIFY(drawn(img).top() >= 99);
}

void tst_solaview::wideTextIsElidedInItsViewport()
{
    CView view;
    showView(view);
    const QString strLong = QStringLiteral("A name that is far too long for the tile that it belongs to");
    const int nWidth = QFontMetrics(QFont()).horizontalAdvance(strLong);
    const auto fnPaint = [&](const QString& strText)
    {
        return view.paint(
            [&]()
            {
                view.place(QRect(100, 100, 150, 19), 0, 150, 100, 19);
                glColor3f(1, 1, 1);
                view.renderText((150 - nWidth) / 2.0, 100, 0, strText, QFont(), 2000);
            });
    };
    // Inside its viewport, apart from what stands beside it, and in the middle.
    const QRect rectDrawn = drawn(fnPaint(strLong));
    QVERIFY(rectDrawn.left() >= 102);
    QVERIFY(rectDrawn.right() <= 248);
    QVERIFY(rectDrawn.width() > 120);
    QVERIFY(qAbs(rectDrawn.center().x() - 175) <= 2);
    // Both ends are there: names of time points may differ at either.
    QVERIFY(fnPaint(QStringLiteral("B") + strLong.mid(1)) != fnPaint(strLong));
    QVERIFY(fnPaint(strLong.chopped(1) + QStringLiteral("X")) != fnPaint(strLong));
    // A name of any length costs no more than what can be seen of it.
    QVERIFY(!drawn(fnPaint(QString(60000, QLatin1Char('W')))).isNull());
}

void tst_solaview::wholeTextIsDrawn_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nPointSize");
    for (const QString& strText : {QStringLiteral("photons/sec"), QStringLiteral("SOLA Results"), QStringLiteral("1.25e7"),
                                   QStringLiteral("jfq_Wy"), QStringLiteral("cells")})
    {
        for (const int nPointSize : {6, 7, 8, 9, 11})
        {
            QTest::newRow(qPrintable(strText + QString::number(nPointSize))) << strText << nPointSize;
        }
    }
}

/// The last letter is as wide alone as at the end of the text: nothing is cut off with the texture.
void tst_solaview::wholeTextIsDrawn()
{
    QFETCH(QString, strText);
    QFETCH(int, nPointSize);
    CView view;
    showView(view);
    QFont font;
    font.setPointSize(nPointSize);
    const auto fnPaint = [&](const QString& str)
    {
        return drawn(view.paint(
            [&]()
            {
                view.place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
                glColor3f(1, 1, 1);
                view.renderText(20, 100, 0, str, font, 2000);
            }));
    };
    // With a letter more behind it the text's own end stays where it is.
    const QImage imgLonger = view.paint(
        [&]()
        {
            view.place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
            glColor3f(1, 1, 1);
            view.renderText(20, 100, 0, strText + QStringLiteral("     l"), font, 2000);
        });
    const QRect rectText = fnPaint(strText);
    const int nGap = QFontMetrics(font).horizontalAdvance(QStringLiteral("     "));
    const int nEnd = rectText.left() + QFontMetrics(font).horizontalAdvance(strText);
    QRect rectOwn;
    for (int nY = 0; nY < 300; ++nY)
    {
        for (int nX = 0; nX < nEnd + nGap / 2; ++nX)
        {
            if (imgLonger.pixel(nX, nY) != qRgb(0, 0, 0))
            {
                rectOwn = rectOwn.united(QRect(nX, 299 - nY, 1, 1));
            }
        }
    }
    QCOMPARE(rectText, rectOwn);
}

void tst_solaview::textWithoutRoomIsNotDrawn()
{
    CView view;
    showView(view);
    for (const int nWidth : {0, -30})
    {
        const QImage img = view.paint(
            [&]()
            {
                view.place(QRect(100, 100, nWidth, 19), 0, nWidth, 100, 19);
                glColor3f(1, 1, 1);
                view.renderText(0, 100, 0, QStringLiteral("Name"), QFont(), 2000);
            });
        QVERIFY(drawn(img).isNull());
    }
    const QImage img = view.paint(
        [&]()
        {
            view.place(QRect(100, 100, 100, 19), 0, 100, 100, 19);
            view.renderText(0, 100, 0, QString(), QFont(), 2000);
        });
    QVERIFY(drawn(img).isNull());
}

void tst_solaview::controlCharactersAreMadeVisible()
{
    CView view;
    showView(view);
    const auto fnPaint = [&](const QString& strText)
    {
        return view.paint(
            [&]()
            {
                view.place(QRect(50, 100, 300, 19), 0, 300, 100, 19);
                glColor3f(1, 1, 1);
                view.renderText(20, 100, 0, strText, QFont(), 2000);
            });
    };
    QCOMPARE(fnPaint(QStringLiteral("a\nb")), fnPaint(QStringLiteral("a\\nb")));
    QCOMPARE(fnPaint(QStringLiteral("a\u202Eb")), fnPaint(QStringLiteral("a\\u202Eb")));
}

void tst_solaview::textHasTheCurrentColor()
{
    CView view;
    showView(view);
    const QImage img = view.paint(
        [&]()
        {
            view.place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
            glColor3f(1, 0, 0);
            view.renderText(20, 100, 0, QStringLiteral("same"), QFont(), 2000);
            glColor3f(0, 1, 0);
            view.renderText(20, 200, 0, QStringLiteral("same"), QFont(), 2000);
            glColor4f(1, 1, 1, 0.5f);
            QFont fontBig; // thick enough for pixels that are covered wholly
            fontBig.setPointSize(30);
            view.renderText(200, 100, 0, QStringLiteral("HHH"), fontBig, 2000);
        });
    int nRed = 0;
    int nGreen = 0;
    int nBrightest = 0;
    for (int nY = 0; nY < 300; ++nY)
    {
        for (int nX = 0; nX < 400; ++nX)
        {
            const QRgb rgb = img.pixel(nX, nY);
            if (nX < 200)
            {
                nRed += qRed(rgb) > 200 ? 1 : 0;
                nGreen += qGreen(rgb) > 200 ? 1 : 0;
                QCOMPARE(qBlue(rgb), 0);
            }
            else
            {
                nBrightest = qMax(nBrightest, qRed(rgb));
            }
        }
    }
    QVERIFY(nRed > 10);
    QCOMPARE(nGreen, nRed);
    QVERIFY(qAbs(nBrightest - 127) <= 3);
}

void tst_solaview::textMindsNoStateAndLeavesIt_data()
{
    QTest::addColumn<bool>("bHostile");
    QTest::addColumn<bool>("bKnownText");
    QTest::newRow("friendly state, first time") << false << false;
    QTest::newRow("friendly state, again") << false << true;
    QTest::newRow("hostile state, first time") << true << false;
    QTest::newRow("hostile state, again") << true << true;
}

void tst_solaview::textMindsNoStateAndLeavesIt()
{
    QFETCH(bool, bHostile);
    QFETCH(bool, bKnownText);
    CView view;
    showView(view);
    const auto fnText = [&]()
    {
        view.place(QRect(50, 100, 300, 80), 0, 300, 0, 80);
        view.renderText(20, 30, 0, QStringLiteral("Day 0, weak source"), QFont(), 2000);
    };
    const QImage imgExpected = view.paint(
        [&]()
        {
            glColor3f(1, 1, 0);
            fnText();
        });
    QVERIFY(drawn(imgExpected).width() > 50);

    CView viewOther;
    showView(viewOther);
    if (bKnownText)
    {
        viewOther.paint(
            [&]()
            {
                viewOther.place(QRect(50, 100, 300, 80), 0, 300, 0, 80);
                viewOther.renderText(20, 30, 0, QStringLiteral("Day 0, weak source"), QFont(), 2000);
            });
    }
    std::vector<double> vecBefore;
    std::vector<double> vecAfter;
    GLenum eError = GL_NO_ERROR;
    const QImage img = viewOther.paint(
        [&]()
        {
            GLuint nTexture = 0;
            glGenTextures(1, &nTexture);
            glPushAttrib(GL_ALL_ATTRIB_BITS);
            glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
            if (bHostile)
            {
                setHostileState(nTexture);
            }
            glColor3f(1, 1, 0);
            glGetError();
            vecBefore = glState();
            viewOther.place(QRect(50, 100, 300, 80), 0, 300, 0, 80);
            viewOther.renderText(20, 30, 0, QStringLiteral("Day 0, weak source"), QFont(), 2000);
            vecAfter = glState();
            eError = glGetError();
            glPopClientAttrib();
            glPopAttrib();
            for (const GLenum eMatrix : {GL_TEXTURE, GL_PROJECTION, GL_MODELVIEW})
            {
                glMatrixMode(eMatrix);
                glLoadIdentity();
            }
            glDeleteTextures(1, &nTexture);
        });
    QVERIFY(vecBefore.size() > 1500);
    QCOMPARE(vecAfter, vecBefore);
    QCOMPARE(int(eError), int(GL_NO_ERROR));
    QCOMPARE(img, imgExpected);
}

void tst_solaview::manyTextsAndANewContext()
{
    QWidget wndFirst;
    QWidget wndSecond;
    auto* pView = new CView(&wndFirst);
    pView->resize(400, 300);
    wndFirst.resize(400, 300);
    wndSecond.resize(400, 300);
    wndFirst.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wndFirst));
    const auto fnTexts = [&](int nFrom, int nTo)
    {
        return pView->paint(
            [&]()
            {
                pView->place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
                glColor3f(1, 1, 1);
                for (int i = nFrom; i < nTo; ++i)
                {
                    pView->renderText(10 + i % 10 * 38, 10 + i / 10 % 28 * 10, 0, QString::number(i), QFont(), 2000);
                }
            });
    };
    const QImage imgFew = fnTexts(0, 280);
    QVERIFY(drawn(imgFew).width() > 300);
    fnTexts(280, 1200); // far more than are kept
    QCOMPARE(fnTexts(0, 280), imgFew);
    // A view that moves to another window gets a new context: the textures are made anew.
    pView->setParent(&wndSecond);
    pView->show();
    wndSecond.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wndSecond));
    QCOMPARE(fnTexts(0, 280), imgFew);
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

int main(int argc, char** argv)
{
    CSOLAView::setDefaultFormat();
    QApplication app(argc, argv);
    COrmPreference::setStore(QString());
    tst_solaview objTest;
    return QTest::qExec(&objTest, argc, argv);
}
#include "tst_solaview.moc"
