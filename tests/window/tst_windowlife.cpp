#include "WindowTestTools.h"

#include "COrmPalettePixmapView.h"
#include "COrmXYPlot.h"
#include "OrmTestMain.h"
#include "QSpanSlider.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QSpinBox>
#include <QToolButton>

using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::paint;
using WindowTest::sequenceMenu;
using WindowTest::SViewNumbers;

/// Showing, resizing, closing and showing again: what stays, and what the window forgets.
class tst_windowlife : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { COrmPreference::setStore(QString()); }

    void withoutSequencesTheWindowStaysHidden();
    void escapeLeavesTheWindowOpen_data();
    void escapeLeavesTheWindowOpen();
    void resizeClosesPopups_data();
    void resizeClosesPopups();
    void closeIsRefusedDuringALoad();
    void closePutsTheDefaultsBack();
    void closeEmptiesTheWindow();
    void closedSequencesGoWithTheWindow();
    void reopenedSequenceOfBothKindsStays();
    void nextShowListsWhatIsKnown();
    void windowsComeAndGo();
};

void tst_windowlife::withoutSequencesTheWindowStaysHidden()
{
    CToolWindow objTool;
    QVERIFY(!objTool.window().isVisible());
    objTool.window().show();
    QList<QString> lstNone = {QStringLiteral("SOLA")};
    objTool.window().updateSequenceNameList(lstNone);
    QVERIFY(!objTool.window().isVisible());
}

void tst_windowlife::escapeLeavesTheWindowOpen_data()
{
    QTest::addColumn<QByteArray>("byFocus");
    QTest::newRow("window") << QByteArray();
    QTest::newRow("sequence list") << QByteArray("m_pSequenceNameLW");
    QTest::newRow("result list") << QByteArray("m_pResultWidget");
    QTest::newRow("spin box") << QByteArray("m_pOpacitySpinBox");
}

void tst_windowlife::escapeLeavesTheWindowOpen()
{
    QFETCH(QByteArray, byFocus);
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    QSignalSpy objRejected(&objTool.window(), SIGNAL(rejected()));
    QSignalSpy objFinished(&objTool.window(), SIGNAL(finished(int)));
    QWidget* pFocus = byFocus.isEmpty() ? &objTool.window() : objTool.get<QWidget>(byFocus.constData());
    QTest::keyClick(pFocus, Qt::Key_Escape);
    QVERIFY(objTool.window().isVisible());
    QCOMPARE(objRejected.size() + objFinished.size(), 0);
}

void tst_windowlife::resizeClosesPopups_data()
{
    QTest::addColumn<QByteArray>("byPopup");
    for (const char* pName :
         {"m_pWaveLengthCB", "m_pColorTableCB", "m_pPlotSelectCB", "m_pAnalysisSelectCB", "clear menu", "sequence menu"})
    {
        QTest::newRow(pName) << QByteArray(pName);
    }
}

void tst_windowlife::resizeClosesPopups()
{
    QFETCH(QByteArray, byPopup);
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one")});
    QWidget* pPopup = nullptr;
    if (byPopup == "clear menu" || byPopup == "sequence menu")
    {
        QMenu* pMenu = byPopup == "clear menu" ? objTool.get<QToolButton>("m_pClear3DViewButton")->menu() : sequenceMenu(objTool);
        pMenu->popup(objTool.window().mapToGlobal(QPoint(50, 50)));
        pPopup = pMenu;
    }
    else
    {
        auto* pCombo = objTool.get<QComboBox>(byPopup.constData());
        objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(byPopup.endsWith("SelectCB") ? 1 : 0);
        pCombo->showPopup();
        pPopup = pCombo->view();
    }
    QTRY_VERIFY(pPopup->isVisible());
    objTool.window().resize(objTool.window().width() + 20, objTool.window().height());
    QTRY_VERIFY(!pPopup->isVisible());
}

void tst_windowlife::closeIsRefusedDuringALoad()
{
    CStudy objStudy;
    objStudy.writer().addResultFile(QStringLiteral("S1"), 0, QStringLiteral("broken"), "no document");
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    // The message about the damaged file stands while the load is under way.
    int nAsked = 0;
    objTool.host().setAnswer(
        [&](const SMessageRequest&)
        {
            ++nAsked;
            const bool bClosed = objTool.window().close();
            return bClosed || !objTool.window().isVisible() ? 100 : 0;
        });
    objTool.load({QStringLiteral("one"), QStringLiteral("broken")});
    QCOMPARE(nAsked, 1);
    QVERIFY(objTool.window().isVisible());
    QCOMPARE(objTool.tiles(), QStringList{QStringLiteral("S1one")});
    QVERIFY(objTool.window().close());
    QVERIFY(!objTool.window().isVisible());
    QCOMPARE(objTool.tiles(), QStringList());
}

void tst_windowlife::closePutsTheDefaultsBack()
{
    COrmPreference::setDefaultColorBar({11, true});
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one"), QStringLiteral("two")});
    paint(objTool);
    objTool.window().updateUIControls();
    objTool.get<QSpanSlider>("m_pSourceColorTableSlider")->setSpan(20, 70);
    objTool.get<QSlider>("m_pOpacitySlider")->setValue(80);
    QCOMPARE(SViewNumbers::meshOpacity(objTool.view()), 0.8f);
    objTool.get<QCheckBox>("m_pLogarithmicScaleCheck")->click();
    objTool.get<QToolButton>("m_pSelectVoxelButton")->click();
    objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->setChecked(false);
    objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    objTool.get<QCheckBox>("m_pDisplayPhotonDensityMap")->setChecked(false);
    objTool.get<QCheckBox>("m_pMIPCheck")->setChecked(false);
    QVERIFY(SViewNumbers::selectsVoxels(objTool.view()));

    QVERIFY(objTool.window().close());
    QVERIFY(!objTool.window().isVisible());
    QCOMPARE(objTool.get<QComboBox>("m_pColorTableCB")->currentIndex(), 11);
    QVERIFY(objTool.get<QCheckBox>("m_pReverseColorMapCheck")->isChecked());
    const auto* pStrip = objTool.window().findChild<COrmPalettePixmapView*>();
    QCOMPARE(pStrip->paletteCT(), ORM_CT_RAINBOW);
    QVERIFY(pStrip->isPaletteCTReversed());
    QCOMPARE(objTool.get<QSpanSlider>("m_pSourceColorTableSlider")->lowerValue(), 0);
    QCOMPARE(objTool.get<QSpanSlider>("m_pSourceColorTableSlider")->upperValue(), 100);
    QCOMPARE(objTool.get<QSlider>("m_pOpacitySlider")->value(), 50);
    QCOMPARE(objTool.get<QSpinBox>("m_pOpacitySpinBox")->value(), 50);
    QCOMPARE(SViewNumbers::meshOpacity(objTool.view()), 0.5f);
    QVERIFY(!objTool.get<QCheckBox>("m_pLogarithmicScaleCheck")->isChecked());
    QVERIFY(objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->isChecked());
    QVERIFY(objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->isChecked());
    QVERIFY(objTool.get<QCheckBox>("m_pDisplayPhotonDensityMap")->isChecked());
    QVERIFY(SViewNumbers::showsVoxels(objTool.view()));
    QVERIFY(SViewNumbers::showsSurface(objTool.view()));
    QVERIFY(SViewNumbers::showsDensity(objTool.view()));
    QVERIFY(!objTool.get<QToolButton>("m_pSelectVoxelButton")->isChecked());
    QVERIFY(!objTool.get<QToolButton>("m_pSelectVoxelButton")->isEnabled());
    QVERIFY(!SViewNumbers::selectsVoxels(objTool.view()));
    QVERIFY(objTool.get<QCheckBox>("m_pMIPCheck")->isChecked());
    QVERIFY(!objTool.get<QComboBox>("m_pPlotSelectCB")->isEnabled());
}

void tst_windowlife::closeEmptiesTheWindow()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one"), QStringLiteral("two")});
    QVERIFY(!objTool.get<QGroupBox>("m_pSOLAGB")->isEnabled());
    QVERIFY(objTool.window().close());
    QCOMPARE(objTool.savedResults(), QStringList());
    QCOMPARE(objTool.tiles(), QStringList());
    QCOMPARE(objTool.view().getLoadedResult(), QStringList());
    QVERIFY(objTool.window().findChild<COrmXYPlot*>()->dataLines().isEmpty());
    // The unit is free again.
    QVERIFY(objTool.get<QGroupBox>("m_pSOLAGB")->isEnabledTo(&objTool.window()));
    // What was loaded can be loaded again, and counts as the first result: the plot's choice stays.
    objTool.get<QComboBox>("m_pPlotSelectCB")->setCurrentIndex(1);
    objTool.window().show();
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one")});
    QCOMPARE(objTool.tiles(), QStringList{QStringLiteral("S1one")});
    QCOMPARE(objTool.get<QComboBox>("m_pPlotSelectCB")->currentIndex(), 1);
    QCOMPARE(objTool.host().boxes().size(), 0);
}

void tst_windowlife::closedSequencesGoWithTheWindow()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.close(QStringLiteral("S1"));
    objTool.close(QStringLiteral("N1"));
    const auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    const QStringList lstAll = {QStringLiteral("SOLA S1"), QStringLiteral("SOLA S2"), QStringLiteral("NOVA N1")};
    QCOMPARE(TestWidgets::texts(pList), lstAll);
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QCOMPARE(TestWidgets::texts(pList), QStringList{QStringLiteral("SOLA S2")});
}

void tst_windowlife::reopenedSequenceOfBothKindsStays()
{
    CStudyWriter objStudy;
    SSequenceLook sLook = SSequenceLook::fluorescent();
    sLook.bLuminescent = true;
    objStudy.addSequence(QStringLiteral("X"), sLook);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const QStringList lstBoth = {QStringLiteral("SOLA X"), QStringLiteral("NOVA X")};
    const auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    QCOMPARE(TestWidgets::texts(pList), lstBoth);
    objTool.close(QStringLiteral("X"));
    QVERIFY(objTool.window().close());
    objTool.open(objStudy.folder());
    QCOMPARE(TestWidgets::texts(pList), lstBoth);
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QCOMPARE(TestWidgets::texts(pList), lstBoth);
    // Closed again, it goes for good.
    objTool.close(QStringLiteral("X"));
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QCOMPARE(TestWidgets::texts(pList), QStringList());
}

void tst_windowlife::nextShowListsWhatIsKnown()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const QStringList lstListed = TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW"));
    QCOMPARE(lstListed.size(), 3);
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    call(objTool, "onInitialUpdate");
    QCOMPARE(TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW")), lstListed);
}

void tst_windowlife::windowsComeAndGo()
{
    CStudy objStudy;
    for (int i = 0; i < 5; ++i)
    {
        CToolWindow objTool;
        objTool.open(objStudy.folder());
        objTool.chooseSequence(QStringLiteral("SOLA S1"));
        objTool.load({QStringLiteral("one")});
        QCOMPARE(objTool.tiles().size(), 1);
    }
}

ORM_TEST_MAIN(tst_windowlife)
#include "tst_windowlife.moc"
