#include "WindowTestTools.h"

#include "COrmXYPlot.h"
#include "OrmTestMain.h"

#include <QMouseEvent>
#include <QSignalSpy>
#include <QToolButton>

using WindowTest::CStudy;
using WindowTest::entries;
using WindowTest::paint;
using WindowTest::SViewNumbers;

namespace
{
const QString s_strLine = QStringLiteral("Quantification Profile");

/// The window with the results "one" and "two" of S1 loaded, in two tiles.
class CMeasuring
{
public:
    CMeasuring()
    {
        m_objTool.open(m_objStudy.folder());
        m_objTool.chooseSequence(QStringLiteral("SOLA S1"));
        m_objTool.load({QStringLiteral("one"), QStringLiteral("two")});
        paint(m_objTool);
        m_objTool.window().updateUIControls();
    }

    CToolWindow& tool() { return m_objTool; }
    CLongitudinalStudyBrowserView& view() { return m_objTool.view(); }
    QToolButton* button() { return m_objTool.get<QToolButton>("m_pSelectVoxelButton"); }
    COrmXYPlot* plot() { return m_objTool.window().findChild<COrmXYPlot*>(); }

    void send(QEvent::Type eType, const QPoint& pt, Qt::MouseButton eButton, Qt::MouseButtons eButtons)
    {
        QMouseEvent objEvent(eType, pt, view().mapToGlobal(pt), eButton, eButtons, Qt::NoModifier);
        QCoreApplication::sendEvent(&view(), &objEvent);
    }
    void move(const QPoint& pt, Qt::MouseButtons eButtons = Qt::NoButton) { send(QEvent::MouseMove, pt, Qt::NoButton, eButtons); }
    void press(const QPoint& pt) { send(QEvent::MouseButtonPress, pt, Qt::LeftButton, Qt::LeftButton); }
    void release(const QPoint& pt) { send(QEvent::MouseButtonRelease, pt, Qt::LeftButton, Qt::NoButton); }

    /// The middle of a tile's picture, as a widget's position.
    QPoint middleOf(int nTile)
    {
        const int nWidth = (view().getGLWidth() - 110) / view().getAnalysisParams().size() - 5;
        return {nTile * nWidth + nWidth / 2, view().getGLHeight() / 2};
    }
    /// Draws over the whole picture of a tile, or over its right half.
    void draw(int nTile, bool bWhole)
    {
        move(middleOf(nTile));
        int nX = 0;
        int nY = 0;
        int nWidth = 0;
        int nHeight = 0;
        view().getActiveViewParams(nX, nY, nWidth, nHeight);
        const QPoint ptFrom(bWhole ? nX + 1 : nX + nWidth / 2, view().height() - nY - 1);
        move(ptFrom);
        press(ptFrom);
        move(QPoint(nX + 2 * nWidth, view().height() - nY - 2 * nHeight), Qt::LeftButton);
        release(QPoint(nX + 2 * nWidth, view().height() - nY - 2 * nHeight));
    }
    double total(int nTile, bool bSelected)
    {
        return double(view().getAnalysisParams()[nTile].objVolume.getTotalFluxForSelectedVoxels(bSelected));
    }
    QVector<double> plotted()
    {
        return plot()->dataLines().contains(s_strLine) ? plot()->dataLines().value(s_strLine)->vecY : QVector<double>();
    }

private:
    CStudy m_objStudy;
    CToolWindow m_objTool;
};
} // namespace

/// The measuring tool from the window: its button, the lists and the plot.
class tst_measuring : public QObject
{
    Q_OBJECT

private slots:
    void theButtonSwitchesTheTool();
    void theButtonLeavesThePlot();
    void aReleasePlotsWhatIsSelected();
    void aPressShowsTheResult();
    void aPressOffAllTilesKeepsTheCombo();
    void removingAllSwitchesTheToolOff();
    void closingDuringADrag();
};

void tst_measuring::theButtonSwitchesTheTool()
{
    CMeasuring objMeasuring;
    TestWidgets::click(objMeasuring.button());
    QVERIFY(SViewNumbers::selectsVoxels(objMeasuring.view()));
    QCOMPARE(int(objMeasuring.view().cursor().shape()), int(Qt::CrossCursor));
    objMeasuring.draw(0, false);
    const double fSelected = objMeasuring.total(1, true);
    QVERIFY(fSelected > 0.0);
    const float fLeft = objMeasuring.view().getAnalysisParams()[1].fSelectLeft;
    TestWidgets::click(objMeasuring.button());
    QVERIFY(!SViewNumbers::selectsVoxels(objMeasuring.view()));
    QCOMPARE(int(objMeasuring.view().cursor().shape()), int(Qt::ArrowCursor));
    QCOMPARE(objMeasuring.total(0, true), 0.0);
    QCOMPARE(objMeasuring.total(1, true), 0.0);
    QCOMPARE(objMeasuring.view().getAnalysisParams()[1].fSelectLeft, fLeft);
    TestWidgets::click(objMeasuring.button());
    QCOMPARE(objMeasuring.total(1, true), fSelected);
}

void tst_measuring::theButtonLeavesThePlot()
{
    CMeasuring objMeasuring;
    const QVector<double> vecWhole = objMeasuring.plotted();
    QCOMPARE(vecWhole, (QVector<double>{objMeasuring.total(0, false), objMeasuring.total(1, false)}));
    QSignalSpy objSpy(&objMeasuring.view(), SIGNAL(updatePlotTab()));
    TestWidgets::click(objMeasuring.button());
    QCOMPARE(objMeasuring.plotted(), vecWhole);
    objMeasuring.draw(0, false);
    const QVector<double> vecHalf = objMeasuring.plotted();
    QVERIFY(vecHalf != vecWhole);
    QCOMPARE(objSpy.size(), 1);
    TestWidgets::click(objMeasuring.button());
    QCOMPARE(objMeasuring.plotted(), vecHalf);
    QCOMPARE(objSpy.size(), 1);
    // The next look at the tab tells the whole volumes again.
    objMeasuring.tool().get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(1);
    QCOMPARE(objMeasuring.plotted(), vecWhole);
}

void tst_measuring::aReleasePlotsWhatIsSelected()
{
    CMeasuring objMeasuring;
    TestWidgets::click(objMeasuring.button());
    objMeasuring.draw(1, true);
    QCOMPARE(objMeasuring.plotted(), (QVector<double>{objMeasuring.total(0, false), objMeasuring.total(1, false)}));
    objMeasuring.draw(1, false);
    QVERIFY(objMeasuring.total(0, true) > 0.0);
    QVERIFY(objMeasuring.total(0, true) < objMeasuring.total(0, false));
    QCOMPARE(objMeasuring.plotted(), (QVector<double>{objMeasuring.total(0, true), objMeasuring.total(1, true)}));
}

void tst_measuring::aPressShowsTheResult()
{
    CMeasuring objMeasuring;
    TestWidgets::click(objMeasuring.button());
    const QStringList lstSelected = objMeasuring.view().getSelectedList();
    QCOMPARE(lstSelected, QStringList{QStringLiteral("S1two")});
    objMeasuring.move(objMeasuring.middleOf(0));
    objMeasuring.press(objMeasuring.middleOf(0));
    const QStringList lstWavelengths = {QStringLiteral("560"), QStringLiteral("580"), QStringLiteral("600")};
    QCOMPARE(entries(objMeasuring.tool().get<QComboBox>("m_pWaveLengthCB")), lstWavelengths);
    QCOMPARE(objMeasuring.tool().get<QListWidget>("m_pResultWidget")->currentItem()->text(), QStringLiteral("one"));
    QCOMPARE(objMeasuring.view().getSelectedList(), lstSelected); // its frame stays where it was
    objMeasuring.release(objMeasuring.middleOf(0));
}

void tst_measuring::aPressOffAllTilesKeepsTheCombo()
{
    CMeasuring objMeasuring;
    TestWidgets::click(objMeasuring.button());
    objMeasuring.draw(0, true);
    const QPoint ptOutside(objMeasuring.view().width() - 30, 100);
    objMeasuring.move(ptOutside);
    objMeasuring.press(ptOutside);
    objMeasuring.release(ptOutside);
    QVERIFY(objMeasuring.tool().get<QComboBox>("m_pWaveLengthCB")->isEnabled());
    // All voxels are unselected, and the plot says so.
    QCOMPARE(objMeasuring.plotted(), (QVector<double>{0.0, 0.0}));
}

void tst_measuring::removingAllSwitchesTheToolOff()
{
    CMeasuring objMeasuring;
    TestWidgets::click(objMeasuring.button());
    objMeasuring.draw(0, true);
    const QPoint ptMiddle = objMeasuring.middleOf(0);
    objMeasuring.move(ptMiddle);
    objMeasuring.press(ptMiddle);
    objMeasuring.move(ptMiddle + QPoint(20, 20), Qt::LeftButton);
    for (const char* pszName : {"two", "one"})
    {
        objMeasuring.view().getSelectedList() = QStringList{QStringLiteral("S1") + QLatin1String(pszName)};
        objMeasuring.view().onClickRemoveSelectedAction();
        paint(objMeasuring.tool());
    }
    objMeasuring.move(ptMiddle + QPoint(30, 30), Qt::LeftButton);
    objMeasuring.release(ptMiddle + QPoint(30, 30));
    paint(objMeasuring.tool());
    QVERIFY(!objMeasuring.button()->isChecked());
    QVERIFY(!objMeasuring.button()->isEnabled());
    QVERIFY(!SViewNumbers::selectsVoxels(objMeasuring.view()));
    // The tool is as good as new for the next result.
    objMeasuring.tool().chooseSequence(QStringLiteral("SOLA S1"));
    objMeasuring.tool().load({QStringLiteral("one")});
    paint(objMeasuring.tool());
    objMeasuring.tool().window().updateUIControls();
    TestWidgets::click(objMeasuring.button());
    objMeasuring.draw(0, true);
    QCOMPARE(objMeasuring.total(0, true), objMeasuring.total(0, false));
}

void tst_measuring::closingDuringADrag()
{
    CMeasuring objMeasuring;
    TestWidgets::click(objMeasuring.button());
    const QPoint ptMiddle = objMeasuring.middleOf(1);
    objMeasuring.move(ptMiddle);
    objMeasuring.press(ptMiddle);
    objMeasuring.move(ptMiddle + QPoint(20, 20), Qt::LeftButton);
    QVERIFY(objMeasuring.tool().window().close());
    objMeasuring.move(ptMiddle + QPoint(30, 30), Qt::LeftButton);
    objMeasuring.release(ptMiddle + QPoint(30, 30));
    QVERIFY(!objMeasuring.tool().window().isVisible());
    QVERIFY(!SViewNumbers::selectsVoxels(objMeasuring.view()));
    QVERIFY(objMeasuring.tool().tiles().isEmpty());
}

ORM_TEST_MAIN(tst_measuring)
#include "tst_measuring.moc"
