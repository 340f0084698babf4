#include "CDrawRehearsal.h"
#include "COrmPalette.h"
#include "COrmProcess.h"
#include "SOLAViewTestTools.h"

#include <QtTest>

#include <functional>

using namespace SOLAViewTest;

/// What a view paints while its user can do nothing.
class tst_solaview_rehearsal : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { COrmProcess::disableUserInteraction(false); }
    void lockedViewsDecideWithoutShowing();
    void oneFrameFollowsTheLock();
    void framesAreRehearsedUntilNothingMoves();
    void rehearsalsEnd();
    void aNewSizeIsDrawnWhenAllIsDecided();
    void picturesOfTheLock_data();
    void picturesOfTheLock();

private:
    static int framesDueInALock(const std::function<void(CView&)>& fnFrame);
    /// Lets all posted work be done, as COrmProcess does without other events.
    static void paintDue()
    {
        for (int i = 0; i < 20; ++i)
        {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
        }
    }
    static void paintAll()
    {
        for (int i = 0; i < 50; ++i)
        {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }
};

namespace
{
/// The colour of a frame's ground; the tests tell frames apart by it.
void fill(const QColor& color)
{
    glClearColor(float(color.redF()), float(color.greenF()), float(color.blueF()), 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

/// What the view's own surface holds now, without a new frame.
QColor shown(CView& view)
{
    unsigned char anPixel[4] = {};
    view.makeCurrent();
    glReadPixels(view.width() / 2, view.height() / 2, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, anPixel);
    return QColor(anPixel[0], anPixel[1], anPixel[2]);
}
} // namespace

void tst_solaview_rehearsal::lockedViewsDecideWithoutShowing()
{
    CView view;
    QColor color = Qt::red;
    int nDecided = 0;
    view.m_fnPaint = [&]()
    {
        fill(color);
        ++nDecided;
    };
    showView(view);
    paintAll();
    QCOMPARE(shown(view), QColor(Qt::red));

    COrmProcess::disableUserInteraction(true);
    color = Qt::blue;
    nDecided = 0;
    view.update();
    paintDue();
    QCOMPARE(nDecided, 1);
    QCOMPARE(shown(view), QColor(Qt::red));

    COrmProcess::disableUserInteraction(false);
    paintAll();
    QCOMPARE(shown(view), QColor(Qt::blue));
    view.m_fnPaint = nullptr;
}

void tst_solaview_rehearsal::oneFrameFollowsTheLock()
{
    CView view;
    showView(view);
    int nShown = 0;
    connect(&view, &QOpenGLWidget::frameSwapped, &view, [&nShown]() { ++nShown; });
    paintAll();
    COrmProcess::disableUserInteraction(true);
    for (int i = 0; i < 5; ++i)
    {
        view.update();
        paintDue();
    }
    // A change that only a frame decides asks for no second one.
    COrmPalette objPalette;
    view.m_fnPaint = [&]() { objPalette.SetImageMinMax(0.0, 2.0); };
    nShown = 0;
    int nPaints = view.m_nPaints;
    COrmProcess::disableUserInteraction(false);
    paintAll();
    QCOMPARE(nShown, 1);
    QCOMPARE(view.m_nPaints, nPaints + 3); // changed, at rest, painted
    nPaints = view.m_nPaints;
    view.update();
    QTRY_COMPARE(view.m_nPaints, nPaints + 1);
    view.m_fnPaint = nullptr;
}

/// Paints due once in a lock with frames that do this, and counts them.
int tst_solaview_rehearsal::framesDueInALock(const std::function<void(CView&)>& fnFrame)
{
    CView view;
    showView(view);
    paintAll();
    COrmProcess::disableUserInteraction(true);
    view.m_fnPaint = [&]() { fnFrame(view); };
    const int nPaints = view.m_nPaints;
    view.update();
    paintDue();
    view.m_fnPaint = nullptr;
    return view.m_nPaints - nPaints;
}

void tst_solaview_rehearsal::framesAreRehearsedUntilNothingMoves()
{
    int nLeft = 3;
    const auto fnFrame = [&nLeft](CView& view) { view.m_nTileWidth += nLeft-- > 0 ? 1 : 0; };
    QCOMPARE(framesDueInALock(fnFrame), 4);
}

void tst_solaview_rehearsal::rehearsalsEnd()
{
    QCOMPARE(framesDueInALock([](CView& view) { ++view.m_nTileWidth; }), 8);
}

void tst_solaview_rehearsal::aNewSizeIsDrawnWhenAllIsDecided()
{
    CView view;
    showView(view);
    paintAll();
    int nDecided = 0;
    int nDrawn = 0;
    view.m_fnPaint = [&]()
    {
        fill(Qt::green);
        ++(CDrawRehearsal::isUnderWay() ? nDecided : nDrawn);
    };
    view.resize(view.width() + 40, view.height() + 20);
    QVERIFY(nDecided > 0); // whoever asks for the tile size now gets the new one
    QCOMPARE(nDrawn, 0);
    paintAll();
    QVERIFY(nDrawn > 0);
    QCOMPARE(shown(view), QColor(Qt::green));
    view.m_fnPaint = nullptr;
}

void tst_solaview_rehearsal::picturesOfTheLock_data()
{
    QTest::addColumn<bool>("bLockedFromTheBeginning");
    QTest::newRow("lost with its size") << false;
    QTest::newRow("not painted yet") << true;
}

void tst_solaview_rehearsal::picturesOfTheLock()
{
    QFETCH(bool, bLockedFromTheBeginning);
    CView view;
    view.m_fnPaint = []() { fill(Qt::blue); };
    COrmProcess::disableUserInteraction(bLockedFromTheBeginning);
    showView(view);
    paintAll();
    COrmProcess::disableUserInteraction(true);
    QCOMPARE(shown(view), QColor(Qt::blue));
    if (!bLockedFromTheBeginning)
    {
        view.m_fnPaint = []() { fill(Qt::green); };
        view.resize(300, 200);
        QTRY_COMPARE(shown(view), QColor(Qt::green));
    }
    view.m_fnPaint = []() { fill(Qt::red); };
    QCOMPARE(QColor(view.grabFramebuffer().pixel(10, 10)), QColor(Qt::red)); // whoever asks for the picture gets the present one
    view.m_fnPaint = nullptr;
}

ORM_TEST_MAIN(tst_solaview_rehearsal)
#include "tst_solaview_rehearsal.moc"
