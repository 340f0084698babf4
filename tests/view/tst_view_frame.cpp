#include "GLRecorder.h"
#include "ViewTestTools.h"

#include "COrmLog.h"
#include "TileGrid.h"

#include <QAction>
#include <QMenu>
#include <QMetaMethod>
#include <QSignalSpy>

using namespace ViewTest;

Q_DECLARE_METATYPE(Coord3d)

namespace
{
/// Where in a list of calls the expected ones stand in their order, others in between; the first one missing otherwise.
QString firstMissing(const QStringList& lstCalls, const QStringList& lstExpected)
{
    int nNext = 0;
    for (const QString& strCall : lstCalls)
    {
        if (nNext < lstExpected.size() && strCall == lstExpected[nNext])
        {
            ++nNext;
        }
    }
    return nNext == lstExpected.size() ? QString() : QStringLiteral("%1 (number %2)").arg(lstExpected[nNext]).arg(nNext);
}

QStringList callsOfAFrame(CRecordingView& view)
{
    view.settle();
    s_lstCalls.clear();
    s_bRecording = true;
    view.grabFramebuffer();
    s_bRecording = false;
    return s_lstCalls;
}
} // namespace

/// What one frame of the view shows, and in which order it is drawn.
class tst_view_frame : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startsEmptyWithItsMenu();
    void metaObjectKeepsItsOrder();
    void noResultsShowBackgroundOnly();
    void frameSetsItsStateInOrder();
    void tileIsDrawnInOrder();
    void measuringRectangleIsDrawnInOrder();
    void sizeOfFiveIsThatOfEight();
    void namesStandInTheirBands_data();
    void namesStandInTheirBands();
    void namesShowWhateverTheirBox_data();
    void namesShowWhateverTheirBox();
    void namesAreThoseOfTheResults();
    void firstFrameHealsItself();
    void recordAfterAFrameIsThatOfTheBar();
    void setupViewForResultRestoresATile();
    void narrowWindowIsSurvived_data();
    void narrowWindowIsSurvived();
    void flatBoxesAreSurvived_data();
    void flatBoxesAreSurvived();
    void activeRectangleIsGiven();
    void printImageIsWhatTheScreenShows();
};

void tst_view_frame::init()
{
    Singleton::getInstance()->glViewport(0, 0, 0, 0);
    Singleton::getInstance()->glOrtho(0, 0, 0, 0, 0, 0);
}

void tst_view_frame::startsEmptyWithItsMenu()
{
    CRecordingView view;
    // The name is that of the class under construction.
    QCOMPARE(view.objectName(), QStringLiteral("CLongitudinalStudyBrowserView"));
    QVERIFY(view.getLoadedResult().isEmpty());
    QVERIFY(view.getAnalysisParams().isEmpty());
    QVERIFY(view.getSelectedList().isEmpty());
    QVERIFY(view.getHighListedResult().isEmpty());
    QVERIFY(view.m_lstToolPoints.isEmpty());
    QCOMPARE(view.m_fMeshOpacity, 0.5f);
    QCOMPARE(view.m_nContextResult, -1);
    QCOMPARE(view.m_nActiveResult, -1);
    QCOMPARE(view.m_pContextMenu->parent(), &view);
    QCOMPARE(view.m_pContextMenu->actions(), QList<QAction*>{view.m_pRemoveAction});
    QCOMPARE(view.m_pRemoveAction->text(), QStringLiteral("Remove"));
    QVERIFY(view.hasMouseTracking());
    QVERIFY(view.m_bShowPhotonDensity);
    QVERIFY(!view.containsSOLAResults());
    QVERIFY(!view.containsNOVAResults());
    float afRange[4] = {};
    view.getMinMax(&afRange[0], &afRange[1], &afRange[2], &afRange[3]);
    for (const float fEnd : afRange)
    {
        QCOMPARE(fEnd, -1.0f);
    }
}

void tst_view_frame::metaObjectKeepsItsOrder()
{
    const QMetaObject& objMeta = CLongitudinalStudyBrowserView::staticMetaObject;
    QStringList lstMethods;
    for (int i = objMeta.methodOffset(); i < objMeta.methodCount(); ++i)
    {
        const QMetaMethod objMethod = objMeta.method(i);
        lstMethods.append(QStringLiteral("%1 %2 [%3]")
                              .arg(objMethod.methodType() == QMetaMethod::Signal ? QStringLiteral("signal") : QStringLiteral("slot"),
                                   QString::fromLatin1(objMethod.methodSignature()),
                                   QString::fromLatin1(objMethod.parameterNames().join(' '))));
    }
    const QStringList lstExpected = {QStringLiteral("signal upadteAnlysisParameters(QString,QString) [strSequenceID strResult]"),
                                     QStringLiteral("signal updateWavelengthCombo(QString,QString) [strSequenceID strResult]"),
                                     QStringLiteral("signal updatePlotTab() []"),
                                     QStringLiteral("slot onClickRemoveAction() []"),
                                     QStringLiteral("slot onClickRemoveSelectedAction() []"),
                                     QStringLiteral("slot onStateChangeDisplaySurfaceCB(bool) [bShow]"),
                                     QStringLiteral("slot onStateChangePhotonDensityMapCB(int) [nState]"),
                                     QStringLiteral("slot onStateChangeDisplayVoxels(bool) [bShow]")};
    QCOMPARE(lstMethods, lstExpected);
}

void tst_view_frame::noResultsShowBackgroundOnly()
{
    CRecordingView view;
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const int nTileWidth = view.tileWidth();
    const int nTileHeight = view.tileHeight();
    const QImage img = view.picture();
    QCOMPARE(img.size(), QSize(400, 300));
    QCOMPARE(countOf(img, QRect(0, 0, 400, 300), isNotBlack), 0);
    QVERIFY(view.textsOfAFrame().isEmpty());
    QCOMPARE(view.tileWidth(), nTileWidth);
    QCOMPARE(view.tileHeight(), nTileHeight);

    // With results gone again the size of the last tiles stays.
    view.load(result(QStringLiteral("A")));
    view.picture();
    const int nWidthOfOne = view.tileWidth();
    QCOMPARE(nWidthOfOne, 400 - 110 - 5);
    view.clear3DView();
    QCOMPARE(countOf(view.picture(), QRect(0, 0, 400, 300), isNotBlack), 0);
    QCOMPARE(view.tileWidth(), nWidthOfOne);
}

void tst_view_frame::frameSetsItsStateInOrder()
{
    CRecordingView view;
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QStringList lstEmptyFrame = {QStringLiteral("clear 4100"),        // colour and depth
                                       QStringLiteral("clear 4000"),        // the background
                                       QStringLiteral("pop"),               //
                                       QStringLiteral("push fffff"),        // everything
                                       QStringLiteral("disable de1"),       // texture
                                       QStringLiteral("enable b71"),        // depth test
                                       QStringLiteral("depthfunc 203"),     // less or equal
                                       QStringLiteral("enable be2"),        // blending
                                       QStringLiteral("blendfunc 302 303"), // by alpha
                                       QStringLiteral("shade 1d01"),        // smooth
                                       QStringLiteral("disable be2"),       //
                                       QStringLiteral("disable b71"),       //
                                       QStringLiteral("pop"),               //
                                       QStringLiteral("flush")};
    const QStringList lstCalls = callsOfAFrame(view);
    QCOMPARE(firstMissing(lstCalls, lstEmptyFrame), QString());
    QVERIFY2(!lstCalls.contains(QStringLiteral("begin 2")), "a line loop without a result");
    QVERIFY(lstCalls.filter(QStringLiteral("ortho")).isEmpty());
}

void tst_view_frame::tileIsDrawnInOrder()
{
    CRecordingView view;
    view.resize(410, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    SResultRecipe objRecipe;
    objRecipe.objSize = Coord3d(20.0, 20.0, 20.0);
    objRecipe.objCenter = Coord3d(5.0, -7.0, 9.0);
    view.load(result(QStringLiteral("A"), objRecipe));
    view.getSelectedList().append(QStringLiteral("SEQA"));
    view.setRotation(10.0, 20.0, 30.0);
    const QStringList lstCalls = callsOfAFrame(view);
    const int nText = view.textHeight();
    const int nTile = 300 - nText - 5;
    // The name first, then the tile with light, rotation and centre, its volume before its surface, its frame after both, last the bar.
    const QStringList lstExpected = {QStringLiteral("shade 1d01"),
                                     QStringLiteral("viewport 0 %1 295 %2").arg(300 - nText).arg(nText),
                                     QStringLiteral("ortho 0 295 %1 %2 -1 1").arg(300 - nText).arg(nText),
                                     QStringLiteral("color 1 0 0"),
                                     QStringLiteral("begin 7"), // the quad of the name
                                     QStringLiteral("viewport %1 3 %2 %2").arg((295 - nTile) / 2).arg(nTile),
                                     QStringLiteral("ortho -10 10 -10 10 -1 1000"),
                                     QStringLiteral("enable b50"), // lighting
                                     QStringLiteral("rotate 10 1 0 0"),
                                     QStringLiteral("rotate 20 0 1 0"),
                                     QStringLiteral("rotate 30 0 0 1"),
                                     QStringLiteral("translate -5 7 -9"),
                                     QStringLiteral("push bff"),
                                     QStringLiteral("enable b57"),             // colours are materials
                                     QStringLiteral("colormaterial 408 1602"), // front and back, ambient and diffuse
                                     QStringLiteral("arrays 0"),               // points: the volume
                                     QStringLiteral("elements 4"),             // triangles: the surface
                                     QStringLiteral("pop"),
                                     QStringLiteral("linewidth 2"),
                                     QStringLiteral("disable b50"),
                                     QStringLiteral("disable 4000"), // the light
                                     QStringLiteral("color 1 0 0"),
                                     QStringLiteral("begin 2"),    // the frame
                                     QStringLiteral("push 42048"), // texture, enable, lighting, polygon
                                     QStringLiteral("disable b71"),
                                     QStringLiteral("disable b50"),
                                     QStringLiteral("disable de1"),
                                     QStringLiteral("viewport 320 0 110 300"),
                                     QStringLiteral("ortho 0 110 0 300 -1 1"),
                                     QStringLiteral("pop"),
                                     QStringLiteral("disable be2"),
                                     QStringLiteral("disable b71"),
                                     QStringLiteral("pop"),
                                     QStringLiteral("flush")};
    QStringList lstSeen = lstCalls;
    // The volume may be drawn by elements as well; which one it is, is its own business.
    const int nVolume = lstSeen.indexOf(QStringLiteral("elements 0"));
    if (nVolume != -1)
    {
        lstSeen[nVolume] = QStringLiteral("arrays 0");
    }
    QCOMPARE(firstMissing(lstSeen, lstExpected), QString());
    QCOMPARE(lstCalls.count(QStringLiteral("push bff")), 1);
    QCOMPARE(lstCalls.count(QStringLiteral("begin 2")), 1);
}

void tst_view_frame::measuringRectangleIsDrawnInOrder()
{
    CRecordingView view;
    view.resize(410, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    sAnalysisBase objResult = result(QStringLiteral("A"));
    objResult.fSelectLeft = -5.0f;
    objResult.fSelectRight = 5.0f;
    objResult.fSelectTop = 4.0f;
    objResult.fSelectBottom = -4.0f;
    view.load(objResult);
    view.getHighListedResult() = QStringLiteral("SEQA");
    view.setSelectVoxel(true);
    view.m_nActiveResult = 0;
    const QStringList lstExpected = {QStringLiteral("linewidth 2"),  QStringLiteral("color 0 0 1"),
                                     QStringLiteral("begin 2"), // the frame
                                     QStringLiteral("disable b71"),  QStringLiteral("disable be2"), QStringLiteral("disable b50"),
                                     QStringLiteral("disable 4000"), QStringLiteral("color 0 1 0"), QStringLiteral("stipple 2 aaaa"),
                                     QStringLiteral("enable b24"),
                                     QStringLiteral("begin 2"), // the rectangle
                                     QStringLiteral("linewidth 1"),  QStringLiteral("disable b24"), QStringLiteral("enable be2"),
                                     QStringLiteral("push 2000"), // the handles
                                     QStringLiteral("color 0 1 0"),  QStringLiteral("begin 0"),     QStringLiteral("begin 0"),
                                     QStringLiteral("begin 0"),      QStringLiteral("begin 0"),     QStringLiteral("pop")};
    const QStringList lstCalls = callsOfAFrame(view);
    QCOMPARE(firstMissing(lstCalls, lstExpected), QString());
    // The depth test is not switched on again behind the rectangle.
    const QStringList lstBehind = lstCalls.mid(lstCalls.indexOf(QStringLiteral("stipple 2 aaaa")));
    const int nBar = lstBehind.indexOf(QStringLiteral("push 42048"));
    QVERIFY(nBar > 0);
    QVERIFY(!lstBehind.mid(0, nBar).contains(QStringLiteral("enable b71")));
}

void tst_view_frame::sizeOfFiveIsThatOfEight()
{
    CRecordingView view;
    view.resize(800, 600);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    for (int i = 0; i < 5; ++i)
    {
        view.load(result(QString(QLatin1Char(static_cast<char>('A' + i)))));
    }
    view.picture();
    const QSize sizeOfFive(view.tileWidth(), view.tileHeight());
    for (int i = 5; i < 8; ++i)
    {
        view.load(result(QString(QLatin1Char(static_cast<char>('A' + i)))));
    }
    view.picture();
    QCOMPARE(QSize(view.tileWidth(), view.tileHeight()), sizeOfFive);
    QCOMPARE(sizeOfFive, QSize((800 - 110) / 4 - 5, (600 - 2 * view.textHeight()) / 2 - 5));
}

void tst_view_frame::namesStandInTheirBands_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<QSize>("size");
    for (const int n : {1, 3, 4, 5, 8, 9, 13})
    {
        QTest::addRow("%d in 1200x800", n) << n << QSize(1200, 800);
        QTest::addRow("%d in 731x557", n) << n << QSize(731, 557);
    }
}

/// Every name is drawn with the band as viewport, the band's place and height as box, centred by its width, in red; and where nothing else
/// is red in the picture, the red pixels are in the bands, and in each of them.
void tst_view_frame::namesStandInTheirBands()
{
    QFETCH(int, nResults);
    QFETCH(QSize, size);
    CRecordingView view;
    view.resize(size);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    for (int i = 0; i < nResults; ++i)
    {
        sAnalysisBase objResult = result(QStringLiteral("Day %1").arg(i));
        objResult.objVolume.getColorPalette()->setColorTableType(ORM_CT_GRAYS, 0.0f, 1.0f);
        view.load(objResult);
    }
    const QList<STextCall> lstTexts = view.textsOfAFrame();
    QVERIFY(lstTexts.size() >= nResults);
    const int nText = view.textHeight();
    const QFontMetrics objMetrics{QFont()};
    const QImage img = view.picture();
    int nRedInBands = 0;
    for (int i = 0; i < nResults; ++i)
    {
        const STextCall& objCall = lstTexts[i];
        const int nY = TileGrid::bandBottom(i, size.height(), view.tileHeight(), nText);
        QCOMPARE(objCall.strText, QStringLiteral("Day %1").arg(i));
        QCOMPARE(objCall.rectViewport, QRect(TileGrid::tileLeft(i, view.tileWidth()), nY, view.tileWidth(), nText));
        QCOMPARE(objCall.fLeft, 0.0);
        QCOMPARE(objCall.fRight, double(view.tileWidth()));
        QCOMPARE(objCall.fBottom, double(nY));
        QCOMPARE(objCall.fTop, double(nText));
        QCOMPARE(objCall.fNear, -1.0);
        QCOMPARE(objCall.fFar, 1.0);
        const int nX = (view.tileWidth() - objMetrics.horizontalAdvance(objCall.strText)) / 2;
        QCOMPARE(objCall.fX, double(nX));
        QCOMPARE(objCall.fY, double(nY));
        QCOMPARE(objCall.fZ, 0.0);
        QCOMPARE(objCall.font, QFont());
        QCOMPARE(objCall.nListBase, 2000);
        QCOMPARE(objCall.clr, QColor(Qt::red));
        const int nRed = countOf(img, objCall.rectViewport, isRed);
        QVERIFY2(nRed > 10, qPrintable(QStringLiteral("no name above tile %1").arg(i)));
        nRedInBands += nRed;
        // In the middle of the band, not only somewhere in it.
        const QRect rectName = boundsOf(img, objCall.rectViewport, isRed);
        QVERIFY(qAbs(rectName.center().x() - objCall.rectViewport.center().x()) <= 3);
    }
    QCOMPARE(countOf(img, img.rect(), isRed), nRedInBands);
}

void tst_view_frame::namesShowWhateverTheirBox_data()
{
    QTest::addColumn<int>("nHeight");
    const int nText = CRecordingView().textHeight();
    QTest::newRow("box on its head") << 300;
    QTest::newRow("box without height") << 2 * nText;
    QTest::newRow("box upright") << 2 * nText - 4;
    QTest::newRow("box from zero") << nText + 12;
}

void tst_view_frame::namesShowWhateverTheirBox()
{
    QFETCH(int, nHeight);
    CRecordingView view;
    view.resize(400, nHeight);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    sAnalysisBase objResult = result(QStringLiteral("Day 0"));
    objResult.objVolume.getColorPalette()->setColorTableType(ORM_CT_GRAYS, 0.0f, 1.0f);
    view.load(objResult);
    const QImage img = view.picture();
    const QRect rectBand(0, nHeight - view.textHeight(), view.tileWidth(), view.textHeight());
    const QRect rectName = boundsOf(img, rectBand, isRed);
    QVERIFY(rectName.height() >= 7);
    QVERIFY(qAbs(rectName.center().x() - rectBand.center().x()) <= 3);
    QCOMPARE(countOf(img, img.rect(), isRed), countOf(img, rectBand, isRed));
    const STextCall objCall = view.textsOfAFrame().first();
    QCOMPARE(objCall.fBottom, double(nHeight - view.textHeight()));
    QCOMPARE(objCall.fTop, double(view.textHeight()));
}

void tst_view_frame::namesAreThoseOfTheResults()
{
    CRecordingView view;
    view.resize(700, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QString strHostile = QStringLiteral("a\u202Eb\nc");
    view.load(result(QStringLiteral("One")));
    view.load(result(strHostile));
    const QList<STextCall> lstTexts = view.textsOfAFrame();
    QCOMPARE(lstTexts[0].strText, QStringLiteral("One"));
    QCOMPARE(lstTexts[1].strText, strHostile); // handed on unchanged; making it visible is the text's own business
}

void tst_view_frame::firstFrameHealsItself()
{
    CRecordingView view;
    view.resize(500, 300);
    view.load(result(QStringLiteral("A")));
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.m_nPaints >= 2);
    const int nAtRest = restOf(view);
    // One more result changes the tile size: the frame that finds it asks for one more, and that is the end of it.
    view.load(result(QStringLiteral("B")));
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 2);
    QCOMPARE(restOf(view), nAtRest + 2);
    const QList<STextCall> lstTexts = view.m_lstTexts;
    const auto fnIsName = [](const STextCall& objCall) { return objCall.strText == QStringLiteral("B"); };
    const auto itName = std::find_if(lstTexts.rbegin(), lstTexts.rend(), fnIsName);
    QVERIFY(itName != lstTexts.rend());
    QCOMPARE(itName->rectViewport.width(), (500 - 110) / 2 - 5);
    // Nothing changed: one paint, and no other.
    view.update();
    QTRY_COMPARE(view.m_nPaints, nAtRest + 3);
    QCOMPARE(restOf(view), nAtRest + 3);
}

void tst_view_frame::recordAfterAFrameIsThatOfTheBar()
{
    CRecordingView view;
    view.resize(500, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.load(result(QStringLiteral("A")));
    view.picture();
    const Singleton* pRecord = Singleton::getInstance();
    QCOMPARE(QRect(pRecord->m_nX, pRecord->m_nY, pRecord->m_nWidth, pRecord->m_nHeight), QRect(410, 0, 110, 300));
    QCOMPARE(pRecord->m_fRight, 110.0);
    QCOMPARE(pRecord->m_fTop, 300.0);
    QCOMPARE(pRecord->m_fNear, -1.0);
    QCOMPARE(pRecord->m_fFar, 1.0);
}

void tst_view_frame::setupViewForResultRestoresATile()
{
    CRecordingView view;
    view.resize(800, 600);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    SResultRecipe objRecipe;
    objRecipe.objSize = Coord3d(40.0, 20.0, 10.0);
    for (int i = 0; i < 6; ++i)
    {
        view.load(result(QStringLiteral("R%1").arg(i), objRecipe));
    }
    view.picture();
    view.makeCurrent();
    const Singleton* pRecord = Singleton::getInstance();
    view.setupViewForResult(-1);
    QCOMPARE(pRecord->m_nX, 710); // still the bar
    view.setupViewForResult(5);
    const int nWidth = (800 - 110) / 4 - 5;
    const int nHeight = (600 - 2 * view.textHeight()) / 2 - 5;
    const TileGrid::SRect rect =
        TileGrid::letterbox(nWidth, TileGrid::tileBottom(5, 600, nHeight, view.textHeight()), nWidth, nHeight, 40.0, 20.0);
    const QRect rectExpected(rect.nX, rect.nY, rect.width(), rect.height());
    QCOMPARE(QRect(pRecord->m_nX, pRecord->m_nY, pRecord->m_nWidth, pRecord->m_nHeight), rectExpected);
    GLint anViewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, anViewport);
    QCOMPARE(QRect(anViewport[0], anViewport[1], anViewport[2], anViewport[3]), rectExpected);
    QCOMPARE(pRecord->m_fLeft, -20.0);
    QCOMPARE(pRecord->m_fRight, 20.0);
    QCOMPARE(pRecord->m_fBottom, -10.0);
    QCOMPARE(pRecord->m_fTop, 10.0);
    QCOMPARE(pRecord->m_fNear, -1.0);
    QCOMPARE(pRecord->m_fFar, 1000.0);
}

void tst_view_frame::narrowWindowIsSurvived_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("nResults");
    QTest::newRow("200 pixels, eight") << QSize(200, 800) << 8;
    QTest::newRow("no tile width") << QSize(130, 200) << 4;
    QTest::newRow("negative tile width") << QSize(60, 200) << 4;
    QTest::newRow("one pixel") << QSize(1, 1) << 5;
    QTest::newRow("flat") << QSize(900, 30) << 8;
    QTest::newRow("many in a small window") << QSize(300, 200) << 48;
}

void tst_view_frame::narrowWindowIsSurvived()
{
    QFETCH(QSize, size);
    QFETCH(int, nResults);
    QStringList lstErrors;
    const int nSink = getLogObject()->addSink(
        [&lstErrors](const SLogEntry& objEntry)
        {
            if (objEntry.strMessage.contains(QStringLiteral("OpenGL reports")))
            {
                lstErrors.append(objEntry.strMessage);
            }
        });
    QWidget wnd; // the window manager keeps its hands off a child's size
    wnd.resize(1000, 900);
    CRecordingView view(&wnd);
    view.resize(size);
    const sAnalysisBase objResult = result(QStringLiteral("A result with a name"));
    for (int i = 0; i < nResults; ++i)
    {
        view.load(objResult);
    }
    view.getSelectedList().append(QStringLiteral("SEQA result with a name"));
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    QCOMPARE(view.picture().size(), size);
    QCOMPARE(view.tileWidth(), (size.width() - 110) / 4 - 5);
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstErrors, QStringList());
    // And back to a window with room.
    view.resize(800, 600);
    QVERIFY(countOf(view.picture(), QRect(0, 0, 800, 600), isRed) > 0);
}

void tst_view_frame::flatBoxesAreSurvived_data()
{
    QTest::addColumn<Coord3d>("objSize");
    QTest::newRow("no height") << Coord3d(20.0, 0.0, 20.0);
    QTest::newRow("no width") << Coord3d(0.0, 20.0, 20.0);
    QTest::newRow("a point") << Coord3d(0.0, 0.0, 0.0);
}

void tst_view_frame::flatBoxesAreSurvived()
{
    QFETCH(Coord3d, objSize);
    CRecordingView view;
    view.resize(500, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    SResultRecipe objRecipe;
    objRecipe.objSize = objSize;
    view.load(result(QStringLiteral("Flat"), objRecipe));
    sAnalysisBase objEmpty;
    objEmpty.strResultName = QStringLiteral("Empty");
    view.load(objEmpty);
    const QImage img = view.picture();
    QCOMPARE(view.m_dBoxMaxX, objSize.x / 2.0);
    QCOMPARE(view.m_dBoxMaxY, objSize.y / 2.0);
    // The names, at least, are there.
    QVERIFY(countOf(img, QRect(0, 300 - view.textHeight(), 500 - 110, view.textHeight()), isRed) > 10);
}

void tst_view_frame::activeRectangleIsGiven()
{
    CRecordingView view;
    int nX = 7;
    int nY = 7;
    int nWidth = 7;
    int nHeight = 7;
    view.getActiveViewParams(nX, nY, nWidth, nHeight);
    QCOMPARE(QRect(nX, nY, nWidth, nHeight), QRect(0, 0, 0, 0));
}

void tst_view_frame::printImageIsWhatTheScreenShows()
{
    CRecordingView view;
    view.resize(500, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.load(result(QStringLiteral("A")));
    const QImage img = view.picture();
    QVERIFY(!img.hasAlphaChannel());
    QCOMPARE(view.getGLWidth(), 500);
    QCOMPARE(view.getGLHeight(), 300);
    const int nPaints = view.m_nPaints;
    QCOMPARE(view.getPrintImage(), img);
    QCOMPARE(view.m_nPaints, nPaints + 1);
    QTRY_COMPARE(view.m_nPaints, nPaints + 2); // the update that was asked for
}

ORM_TEST_MAIN(tst_view_frame)
#include "tst_view_frame.moc"
