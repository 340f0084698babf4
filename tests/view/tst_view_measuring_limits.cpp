#include "MeasuringTestTools.h"

#include <cstdlib>
#include <memory>
#include <new>

using namespace ViewTest;

namespace
{
bool s_bMemoryIsOut = false;
}

/// The allocation that asks first, so that the tests can run out of memory.
void* operator new[](std::size_t nSize, const std::nothrow_t&) noexcept
{
    return s_bMemoryIsOut ? nullptr : ::operator new[](nSize);
}

/// Measuring where there is little to measure with: flat rectangles, results without voxels, no memory, tiles without extent.
class tst_view_measuring_limits : public QObject
{
    Q_OBJECT

private slots:
    void aFlatRectangleIsNotPickedAgain();
    void aResultWithoutVoxelsGetsItsRectangle();
    void moreHitsThanExpectedSelectNone();
    void withoutMemoryTheSelectionStands();
    void aTileWithoutExtentKeepsWhatItHas();
    void aViewThatWasNeverShown();
    void manyTilesInANarrowView();
    void theViewGoesDuringADrag();
    void thePassLeavesNothingBehind();
};

void tst_view_measuring_limits::aFlatRectangleIsNotPickedAgain()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    setRectangle(view.getAnalysisParams()[0], -5.0f, 5.0f, -5.0f, -5.0f);
    setRectangle(view.getAnalysisParams()[1], -5.0f, 3.0f, 5.0f, 3.0f);
    setRectangle(view.getAnalysisParams()[2], -5.0f, 5.0f, 5.0f, -5.0f);
    C3DVolume& objVolume = view.getAnalysisParams()[0].objVolume;
    objVolume.addToVoxelSelection(objVolume.getVoxelByNum(7)->nID);
    view.updateVoxelSelections();
    QCOMPARE(selectedVoxels(view, 0), QSet<int>{7});
    QVERIFY(selectedVoxels(view, 1).isEmpty());
    QCOMPARE(selectedVoxels(view, 2).size(), int(view.getAnalysisParams()[2].objVolume.getNoOfVoxels()));
}

void tst_view_measuring_limits::aResultWithoutVoxelsGetsItsRectangle()
{
    QList<sAnalysisBase> lstResults = threeResults();
    lstResults[1].objVolume = C3DVolume(QString());
    CRecordingView view;
    showMeasuring(view, lstResults);
    const QRectF rect = partOf(view, 1, QRectF(QPointF(43, 31), QPointF(57, 64)));
    drag(view, rect);
    QVERIFY(isAbout(rectangleOf(view.getAnalysisParams()[1]), rectangleOf(view.getAnalysisParams()[0])));
    QVERIFY(view.getAnalysisParams()[1].fSelectTop > view.getAnalysisParams()[1].fSelectBottom);
    QVERIFY(!view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 1));
    for (const int i : {0, 2})
    {
        QCOMPARE(selectedVoxels(view, i), voxelsUnder(view, i, movedTo(view, rect, 1, i)).setVoxels);
    }
}

void tst_view_measuring_limits::moreHitsThanExpectedSelectNone()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    const QRectF rect = partOf(view, 0, QRectF(QPointF(43, 31), QPointF(57, 64)));
    drag(view, rect);
    QVERIFY(!selectedVoxels(view, 0).isEmpty());
    // A volume that tells of fewer voxels than it has gets room for fewer hits; the pass runs over, and selects nothing.
    view.getAnalysisParams()[0].objVolume.m_nVoxels = 2;
    QVERIFY(!view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 0));
    view.getAnalysisParams()[0].objVolume.m_nVoxels = 729;
    QVERIFY(selectedVoxels(view, 0).isEmpty());
    QVERIFY(view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 0));
    view.makeCurrent();
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
}

void tst_view_measuring_limits::withoutMemoryTheSelectionStands()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    drag(view, partOf(view, 0, QRectF(QPointF(43, 31), QPointF(57, 64))));
    const QSet<int> setSelected = selectedVoxels(view, 0);
    const QRectF rect = partOf(view, 0, QRectF(QPointF(2, 2), QPointF(90, 90)));
    s_bMemoryIsOut = true;
    const bool bSelected = view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 0);
    s_bMemoryIsOut = false;
    QVERIFY(!bSelected);
    QCOMPARE(selectedVoxels(view, 0), setSelected);
    GLint nMode = 0;
    view.makeCurrent();
    glGetIntegerv(GL_RENDER_MODE, &nMode);
    QCOMPARE(nMode, int(GL_RENDER));
    // More voxels than an int can count words for are refused likewise.
    C3DVolume& objVolume = view.getAnalysisParams()[0].objVolume;
    const long nVoxels = objVolume.m_nVoxels;
    objVolume.m_nVoxels = 0x30000000;
    QVERIFY(!view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 0));
    objVolume.m_nVoxels = nVoxels;
    QCOMPARE(selectedVoxels(view, 0), setSelected);
}

void tst_view_measuring_limits::aTileWithoutExtentKeepsWhatItHas()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    drag(view, partOf(view, 0, QRectF(QPointF(43, 31), QPointF(57, 64))));
    const QSet<int> setSelected = selectedVoxels(view, 0);
    const QVector<float> vecRectangle = rectangleOf(view.getAnalysisParams()[0]);
    for (const int nWidth : {125, 127, 60}) // tiles of no, of no and of negative width
    {
        view.resize(nWidth, 300);
        QTRY_COMPARE(view.getGLWidth(), nWidth);
        view.picture();
        view.updateVoxelSelections();
        QVERIFY(view.updateSelectToolPosition(1.0, 1.0, 5.0, 5.0, true));
        CPointer pointer(view);
        pointer.drag(QPoint(1, 100), QPoint(50, 200));
        pointer.click(QPoint(3, 150));
        for (const float fEdge : rectangleOf(view.getAnalysisParams()[0]))
        {
            QVERIFY(std::isfinite(fEdge));
        }
        view.makeCurrent();
        while (glGetError() != GL_NO_ERROR)
        {
        }
    }
    view.resize(900, 400);
    QTRY_COMPARE(view.getGLWidth(), 900);
    view.picture();
    setRectangle(view.getAnalysisParams()[0], vecRectangle[0], vecRectangle[1], vecRectangle[2], vecRectangle[3]);
    view.updateVoxelSelections();
    QCOMPARE(selectedVoxels(view, 0), setSelected);
}

void tst_view_measuring_limits::aViewThatWasNeverShown()
{
    CRecordingView view;
    view.load(result(QStringLiteral("A")));
    setRectangle(view.getAnalysisParams()[0], -5.0f, 5.0f, 5.0f, -5.0f);
    view.onSelectVoxelS(true);
    QVERIFY(selectedVoxels(view, 0).isEmpty());
    QCOMPARE(rectangleOf(view.getAnalysisParams()[0]), (QVector<float>{-5.0f, 5.0f, 5.0f, -5.0f}));
    view.onSelectVoxelS(false);
    QVERIFY(!view.m_bSelectVoxel);
}

void tst_view_measuring_limits::manyTilesInANarrowView()
{
    QList<sAnalysisBase> lstResults;
    for (int i = 0; i < 14; ++i)
    {
        SResultRecipe objRecipe;
        objRecipe.nVoxelEdge = 6;
        objRecipe.objSize = Coord3d(8.0, 8.0, 8.0);
        lstResults.append(result(QStringLiteral("R%1").arg(i), objRecipe));
    }
    CRecordingView view;
    showMeasuring(view, lstResults, QSize(200, 300));
    const QRect rectPicture = pictureOf(view, 9);
    QVERIFY(rectPicture.width() < 20);
    const QRectF rect(rectPicture.x() + 3.0, rectPicture.y() + 4.0, 7.0, 6.0);
    drag(view, rect);
    for (int i = 0; i < 14; ++i)
    {
        const SUnder objUnder = voxelsUnder(view, i, movedTo(view, rect, 9, i));
        QCOMPARE(objUnder.nUnsure, 0);
        QVERIFY(!objUnder.setVoxels.isEmpty());
        QCOMPARE(selectedVoxels(view, i), objUnder.setVoxels);
    }
}

void tst_view_measuring_limits::theViewGoesDuringADrag()
{
    auto pView = std::make_unique<CRecordingView>();
    showMeasuring(*pView, threeResults());
    CPointer pointer(*pView);
    pointer.moveTo(pictureOf(*pView, 0).center());
    pointer.press();
    pointer.moveTo(pictureOf(*pView, 0).center() + QPoint(20, 20));
    pView->hide();
    pointer.moveTo(pictureOf(*pView, 0).center() + QPoint(30, 30));
    pointer.release();
    QVERIFY(!pView->m_bToolDragging);
    QVERIFY(!selectedVoxels(*pView, 1).isEmpty());
    pView->show();
    pointer.press();
    pView.reset(); // what is under way goes with it
    QVERIFY(QApplication::allWidgets().isEmpty());
}

void tst_view_measuring_limits::thePassLeavesNothingBehind()
{
    CRecordingView view;
    showMeasuring(view, threeResults());
    view.makeCurrent();
    while (glGetError() != GL_NO_ERROR)
    {
    }
    const auto fnState = []
    {
        QVector<int> vecState;
        for (const GLenum eState : {GL_RENDER_MODE, GL_MATRIX_MODE, GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH,
                                    GL_ATTRIB_STACK_DEPTH, GL_CLIENT_ATTRIB_STACK_DEPTH, GL_NAME_STACK_DEPTH})
        {
            GLint nValue = 0;
            glGetIntegerv(eState, &nValue);
            vecState.append(nValue);
        }
        return vecState;
    };
    const QVector<int> vecBefore = fnState();
    const QRectF rect = partOf(view, 0, QRectF(QPointF(43, 31), QPointF(57, 64)));
    QVERIFY(view.doVoxelSelection(rect.left(), rect.top(), rect.right(), rect.bottom(), 0));
    QCOMPARE(fnState(), vecBefore);
    GLint anViewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, anViewport);
    QCOMPARE(QRect(anViewport[0], anViewport[1], anViewport[2], anViewport[3]), pictureOf(view, 0));
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
    // Hundreds of passes do not use up a stack.
    for (int i = 0; i < 300; ++i)
    {
        view.doVoxelSelection(rect.left(), rect.top(), rect.left() + 2.0, rect.top() + 2.0, i % 3);
    }
    QCOMPARE(fnState(), vecBefore);
    QCOMPARE(int(glGetError()), int(GL_NO_ERROR));
}

ORM_TEST_MAIN(tst_view_measuring_limits)
#include "tst_view_measuring_limits.moc"
