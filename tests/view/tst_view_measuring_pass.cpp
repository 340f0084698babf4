#include "GLRecorder.h"
#include "MeasuringTestTools.h"

#include <QRegularExpression>

#include <GL/glu.h>

using namespace ViewTest;

// The calls of selection passes, beside those that the recorder knows.
extern "C"
{
    void glSelectBuffer(GLsizei nSize, GLuint* pBuffer)
    {
        HANDED_ON(glSelectBuffer);
        record(QStringLiteral("buffer %1%2").arg(nSize).arg(std::count(pBuffer, pBuffer + nSize, 0u) == nSize ? "" : " not zeroed"));
        s_pNext(nSize, pBuffer);
    }
    GLint glRenderMode(GLenum eMode)
    {
        HANDED_ON(glRenderMode);
        record(eMode == GL_SELECT ? QStringLiteral("select") : QStringLiteral("render"));
        return s_pNext(eMode);
    }
    void glMatrixMode(GLenum eMode)
    {
        HANDED_ON(glMatrixMode);
        record(eMode == GL_PROJECTION ? QStringLiteral("projection") : QStringLiteral("modelview"));
        s_pNext(eMode);
    }
    void glPushMatrix()
    {
        HANDED_ON(glPushMatrix);
        record(QStringLiteral("push matrix"));
        s_pNext();
    }
    void glPopMatrix()
    {
        HANDED_ON(glPopMatrix);
        record(QStringLiteral("pop matrix"));
        s_pNext();
    }
    void glLoadIdentity()
    {
        HANDED_ON(glLoadIdentity);
        record(QStringLiteral("identity"));
        s_pNext();
    }
    void glInitNames()
    {
        HANDED_ON(glInitNames);
        record(QStringLiteral("init names"));
        s_pNext();
    }
    void glPushName(GLuint nName)
    {
        HANDED_ON(glPushName);
        record(QStringLiteral("push name %1").arg(nName));
        s_pNext(nName);
    }
    void glPopName()
    {
        HANDED_ON(glPopName);
        record(QStringLiteral("pop name"));
        s_pNext();
    }
    void glLoadName(GLuint nName)
    {
        HANDED_ON(glLoadName);
        record(QStringLiteral("name %1").arg(nName));
        s_pNext(nName);
    }
    void glVertex2f(GLfloat fX, GLfloat fY)
    {
        HANDED_ON(glVertex2f);
        record(QStringLiteral("vertex %1 %2").arg(number(double(fX)), number(double(fY))));
        s_pNext(fX, fY);
    }
    void glPointSize(GLfloat fSize)
    {
        HANDED_ON(glPointSize);
        record(QStringLiteral("point size %1").arg(number(double(fSize))));
        s_pNext(fSize);
    }
    void gluPickMatrix(GLdouble fX, GLdouble fY, GLdouble fWidth, GLdouble fHeight, GLint* pnViewport)
    {
        HANDED_ON(gluPickMatrix);
        record(QStringLiteral("pick %1 %2 %3 %4").arg(number(fX), number(fY), number(fWidth), number(fHeight)));
        const bool bRecording = s_bRecording;
        s_bRecording = false; // it is made of other calls itself
        s_pNext(fX, fY, fWidth, fHeight, pnViewport);
        s_bRecording = bRecording;
    }
}

namespace
{
template <class Function>
QStringList callsOf(CRecordingView& view, Function fnDo)
{
    view.makeCurrent();
    s_lstCalls.clear();
    s_bRecording = true;
    fnDo();
    s_bRecording = false;
    return s_lstCalls;
}

/// What comes before both kinds of pass: the tile's own viewport and projection.
QStringList tileCalls(const CRecordingView& view, int nResult)
{
    const QRect rect = pictureOf(view, nResult);
    return {QStringLiteral("viewport %1 %2 %3 %4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()),
            QStringLiteral("projection"),
            QStringLiteral("identity"),
            QStringLiteral("ortho -10 10 -10 10 -1 1000"),
            QStringLiteral("modelview"),
            QStringLiteral("identity")};
}
} // namespace

/// What OpenGL is told in the selection passes of the measuring tool, and in which order.
class tst_view_measuring_pass : public QObject
{
    Q_OBJECT

private slots:
    void voxelPass();
    void smallestVoxelPass();
    void cornerPass();
    void noCornerPassWithoutCorners();
    void cornersAreDrawnAsPoints();
    void aDragMakesNoPass();
    void aReleaseMakesOnePassForEachResult();
};

void tst_view_measuring_pass::voxelPass()
{
    SResultRecipe objRecipe;
    objRecipe.objCenter = Coord3d(3.0, -4.0, 5.0);
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A")), result(QStringLiteral("B"), objRecipe)});
    view.setRotation(10.0, 20.0, 30.0);
    view.settle();
    // The volume itself is silent, so that only the view's own calls are seen; its places are told by its number of voxels, 64.
    view.getAnalysisParams()[1].objVolume.show(false);
    const QRect rect = pictureOf(view, 1);
    const QStringList lstCalls =
        callsOf(view, [&] { QVERIFY(!view.doVoxelSelection(rect.x() + 90.0, rect.y() + 20.0, rect.x() + 30.0, rect.y() + 60.0, 1)); });
    const QStringList lstExpected =
        tileCalls(view, 1) + QStringList{QStringLiteral("push 4000"),
                                         QStringLiteral("buffer 256"),
                                         QStringLiteral("projection"),
                                         QStringLiteral("push matrix"),
                                         QStringLiteral("select"),
                                         QStringLiteral("identity"),
                                         QStringLiteral("pick %1 %2 60 40").arg(rect.x() + 60).arg(rect.y() + 40),
                                         QStringLiteral("ortho %1 %2 %3 %4 %5 %6")
                                             .arg(view.m_dBoxMinX)
                                             .arg(view.m_dBoxMaxX)
                                             .arg(view.m_dBoxMinY)
                                             .arg(view.m_dBoxMaxY)
                                             .arg(view.m_dBoxMinZ)
                                             .arg(view.m_dBoxMaxZ),
                                         QStringLiteral("rotate 10 1 0 0"),
                                         QStringLiteral("rotate 20 0 1 0"),
                                         QStringLiteral("rotate 30 0 0 1"),
                                         QStringLiteral("translate -3 4 -5"),
                                         QStringLiteral("modelview"),
                                         QStringLiteral("init names"),
                                         QStringLiteral("push name 0"),
                                         QStringLiteral("push matrix"),
                                         QStringLiteral("render"),
                                         QStringLiteral("pop matrix"),
                                         QStringLiteral("pop name"),
                                         QStringLiteral("projection"),
                                         QStringLiteral("pop matrix"),
                                         QStringLiteral("modelview"),
                                         QStringLiteral("pop")};
    QCOMPARE(lstCalls.mid(6), lstExpected.mid(6));
    QCOMPARE(lstCalls.first(), lstExpected.first());
    // What host drawing code may ask for is the box of the pass.
    QCOMPARE(Singleton::getInstance()->m_fNear, view.m_dBoxMinZ);
    QCOMPARE(Singleton::getInstance()->m_fFar, view.m_dBoxMaxZ);
}

void tst_view_measuring_pass::smallestVoxelPass()
{
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A"))});
    const QRect rect = pictureOf(view, 0);
    const auto fnPick = [&](double fWidth, double fHeight)
    {
        const QStringList lstCalls = callsOf(
            view, [&] { view.doVoxelSelection(rect.x() + 30.0, rect.y() + 20.0, rect.x() + 30.0 + fWidth, rect.y() + 20.0 + fHeight, 0); });
        return lstCalls.filter(QStringLiteral("pick")).join(QLatin1Char('|'));
    };
    const auto fnExpected = [&](double fX, double fY, const char* pszSize)
    { return QStringLiteral("pick %1 %2 %3").arg(number(rect.x() + fX), number(rect.y() + fY), QLatin1String(pszSize)); };
    QCOMPARE(fnPick(0.0, 0.0), fnExpected(30.0, 20.0, "1 1"));
    QCOMPARE(fnPick(0.5, 12.0), fnExpected(30.25, 26.0, "1 12"));
    QCOMPARE(fnPick(-8.0, 0.25), fnExpected(26.0, 20.125, "8 1"));
}

void tst_view_measuring_pass::cornerPass()
{
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A"))});
    setRectangle(view.getAnalysisParams()[0], -5.0f, 4.0f, 6.0f, -3.0f);
    const QPoint pt = pictureOf(view, 0).center();
    CPointer pointer(view);
    const QStringList lstCalls = callsOf(view, [&] { pointer.moveTo(pt); });
    const int nPass = lstCalls.indexOf(QStringLiteral("disable b71")); // depth test
    QVERIFY(nPass >= 6);
    QCOMPARE(lstCalls.mid(nPass - 6, 6), tileCalls(view, 0));
    QStringList lstExpected = {QStringLiteral("disable b71"),
                               QStringLiteral("disable b50"),
                               QStringLiteral("disable 4000"),
                               QStringLiteral("buffer 100"),
                               QStringLiteral("push 4000"),
                               QStringLiteral("projection"),
                               QStringLiteral("push matrix"),
                               QStringLiteral("select"),
                               QStringLiteral("identity"),
                               QStringLiteral("pick %1 %2 10 10").arg(pt.x()).arg(pt.y()),
                               QStringLiteral("ortho -10 10 -10 10 -10 10"),
                               QStringLiteral("modelview"),
                               QStringLiteral("init names"),
                               QStringLiteral("push name 0"),
                               QStringLiteral("push matrix"),
                               QStringLiteral("push 2000"),
                               QStringLiteral("init names"),
                               QStringLiteral("push name 0"),
                               QStringLiteral("color 0 1 0"),
                               QStringLiteral("point size 5")};
    const struct
    {
        int nName;
        const char* pszPlace;
    } aCorners[] = {{301, "-5 4"}, {303, "6 -3"}, {302, "6 4"}, {304, "-5 -3"}};
    for (const auto& objCorner : aCorners)
    {
        lstExpected += {QStringLiteral("name %1").arg(objCorner.nName), QStringLiteral("begin 0"),
                        QStringLiteral("vertex %1").arg(QLatin1String(objCorner.pszPlace))};
    }
    lstExpected += {QStringLiteral("pop name"),   QStringLiteral("pop"),       QStringLiteral("render"),
                    QStringLiteral("pop matrix"), QStringLiteral("pop name"),  QStringLiteral("projection"),
                    QStringLiteral("pop matrix"), QStringLiteral("modelview"), QStringLiteral("pop")};
    QCOMPARE(lstCalls.mid(nPass), lstExpected);
}

void tst_view_measuring_pass::noCornerPassWithoutCorners()
{
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A"))});
    CPointer pointer(view);
    const auto fnPasses = [&](const QPoint& pt) { return callsOf(view, [&] { pointer.moveTo(pt); }).count(QStringLiteral("select")); };
    const QPoint pt = pictureOf(view, 0).center();
    QCOMPARE(fnPasses(pt), 0);
    setRectangle(view.getAnalysisParams()[0], -5.0f, 4.0f, -5.0f, -3.0f);
    QCOMPARE(fnPasses(pt), 0);
    setRectangle(view.getAnalysisParams()[0], -5.0f, 4.0f, 5.0f, 4.0f);
    QCOMPARE(fnPasses(pt), 0);
    setRectangle(view.getAnalysisParams()[0], -5.0f, 4.0f, 5.0f, -3.0f);
    QCOMPARE(fnPasses(pt), 1);
    QCOMPARE(fnPasses(QPoint(880, 200)), 0); // no tile
    view.onSelectVoxelS(false);
    QCOMPARE(fnPasses(pt), 0);
}

void tst_view_measuring_pass::cornersAreDrawnAsPoints()
{
    CRecordingView view;
    showMeasuring(view, {result(QStringLiteral("A"))});
    setRectangle(view.getAnalysisParams()[0], -5.0f, 4.0f, 6.0f, -3.0f);
    const auto fnPoints = [&]
    {
        const QStringList lstCalls = callsOf(view, [&] { view.drawMeasurePoints(GL_RENDER); });
        QStringList lstPoints = lstCalls.filter(QStringLiteral("vertex"));
        lstPoints += lstCalls.filter(QRegularExpression(QStringLiteral("^name")));
        return lstPoints;
    };
    QCOMPARE(fnPoints(), QStringList());
    view.m_nActiveResult = 0;
    QCOMPARE(fnPoints(), (QStringList{QStringLiteral("vertex -5 4"), QStringLiteral("vertex 6 -3"), QStringLiteral("vertex 6 4"),
                                      QStringLiteral("vertex -5 -3")}));
    view.m_nActiveResult = 1;
    QCOMPARE(fnPoints(), QStringList());
}

void tst_view_measuring_pass::aDragMakesNoPass()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 1).center();
    pointer.drag(pt - QPoint(40, 40), pt + QPoint(40, 40));
    pointer.moveTo(pt);
    pointer.press();
    const QStringList lstCalls = callsOf(view,
                                         [&]
                                         {
                                             for (int i = 1; i < 20; ++i)
                                             {
                                                 pointer.moveTo(pt + QPoint(i, i));
                                             }
                                         });
    QVERIFY(!lstCalls.isEmpty());
    QVERIFY(!lstCalls.contains(QStringLiteral("select")));
}

void tst_view_measuring_pass::aReleaseMakesOnePassForEachResult()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    CPointer pointer(view);
    const QPoint pt = pictureOf(view, 1).center();
    pointer.moveTo(pt);
    pointer.press();
    pointer.moveTo(pt + QPoint(20, 20));
    const QStringList lstCalls = callsOf(view, [&] { pointer.release(); });
    QCOMPARE(lstCalls.count(QStringLiteral("select")), 3);
    // Four words for each voxel; the active tile comes first.
    QCOMPARE(lstCalls.filter(QStringLiteral("buffer")),
             (QStringList{QStringLiteral("buffer 864"), QStringLiteral("buffer 2916"), QStringLiteral("buffer 1372")}));
}

ORM_TEST_MAIN(tst_view_measuring_pass)
#include "tst_view_measuring_pass.moc"
