#include "WindowTestTools.h"

#include "COrmPalettePixmapView.h"
#include "OrmTestMain.h"
#include "QtThumbWheel.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>

using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::paint;
using WindowTest::SViewNumbers;

/// The controls of the window: how they follow from what is loaded, and what they reach.
class tst_windowcontrols : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { COrmPreference::setStore(QString()); }

    void controls_data();
    void controls();
    void freshLookOfAKindWithoutResults();
    void resultSelectionEnablesLoading();
    void preferencesReachTheStrip();
    void tabSwitchesTheWheel();
    void wheelTurnsTheTiles();
    void displayBoxesReachTheView();
    void measuringButtonReachesTheView();
    void selectionChangeEnablesLoading();
};

void tst_windowcontrols::controls_data()
{
    QTest::addColumn<bool>("bSequences");
    QTest::addColumn<QStringList>("lstLoaded"); // entry of the sequence list | result
    QTest::addColumn<QString>("strChosen");     // entry of the sequence list that is clicked last
    QTest::addColumn<QString>("strEnabled");
    QTest::addColumn<QString>("strKindOfPlot");
    const QString strSOLA = QStringLiteral("SOLA S1|one");
    const QString strNOVA = QStringLiteral("NOVA N1|dye");
    const QString strResult = QStringLiteral("m_pClear3DViewButton m_pPlotSelectCB m_pSelectVoxelButton");
    QTest::newRow("no sequences") << false << QStringList() << QString() << QStringLiteral("m_pAnalysisSelectCB") << QStringLiteral("SOLA");
    QTest::newRow("sequences alone") << true << QStringList() << QStringLiteral("SOLA S1") << QString() << QStringLiteral("SOLA");
    QTest::newRow("SOLA loaded, its list is chosen anew") << true << QStringList{strSOLA} << QStringLiteral("SOLA S1")
                                                          << strResult + QStringLiteral(" m_pWaveLengthCB") << QStringLiteral("SOLA");
    QTest::newRow("NOVA loaded, SOLA chosen") << true << QStringList{strNOVA} << QStringLiteral("SOLA S1")
                                              << strResult + QStringLiteral(" m_pWaveLengthCB") << QStringLiteral("NOVA");
    QTest::newRow("both loaded") << true << QStringList{strSOLA, strNOVA} << QStringLiteral("NOVA N1")
                                 << strResult + QStringLiteral(" m_pWaveLengthCB m_pAnalysisSelectCB") << QStringLiteral("SOLA");
}

void tst_windowcontrols::controls()
{
    QFETCH(bool, bSequences);
    QFETCH(QStringList, lstLoaded);
    QFETCH(QString, strChosen);
    QFETCH(QString, strEnabled);
    QFETCH(QString, strKindOfPlot);
    CStudy objStudy;
    CToolWindow objTool;
    if (bSequences)
    {
        objTool.open(objStudy.folder());
    }
    for (const QString& strLoaded : lstLoaded)
    {
        objTool.chooseSequence(strLoaded.section(QLatin1Char('|'), 0, 0));
        objTool.load({strLoaded.section(QLatin1Char('|'), 1)});
        paint(objTool);
    }
    QCOMPARE(objTool.tiles().size(), lstLoaded.size());
    if (!strChosen.isEmpty())
    {
        objTool.chooseSequence(strChosen);
    }
    objTool.window().updateUIControls();
    const QStringList lstEnabled = strEnabled.split(QLatin1Char(' '));
    for (const char* pName :
         {"m_pLoadButton", "m_pClear3DViewButton", "m_pPlotSelectCB", "m_pSelectVoxelButton", "m_pWaveLengthCB", "m_pAnalysisSelectCB"})
    {
        const bool bEnabled = objTool.get<QWidget>(pName)->isEnabledTo(&objTool.window());
        // The tab page of the plots is not shown: what counts is the control's own state.
        QVERIFY2(bEnabled == lstEnabled.contains(QLatin1String(pName)), pName);
    }
    QCOMPARE(objTool.get<QComboBox>("m_pAnalysisSelectCB")->currentText(), strKindOfPlot);
    QVERIFY(!objTool.get<QToolButton>("m_pSelectVoxelButton")->isChecked());
}

void tst_windowcontrols::freshLookOfAKindWithoutResults()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    auto* pTable = objTool.get<QComboBox>("m_pColorTableCB");
    auto* pMIP = objTool.get<QCheckBox>("m_pMIPCheck");
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    QCOMPARE(pTable->currentText(), QStringLiteral("Green"));
    QVERIFY(!pMIP->isChecked());
    pMIP->setChecked(true);
    objTool.chooseSequence(QStringLiteral("NOVA N1"));
    QCOMPARE(pTable->currentText(), QStringLiteral("Red"));
    QVERIFY(!pMIP->isChecked());
    // From the first result of the kind on, the user's choice stands.
    objTool.load({QStringLiteral("dye")});
    paint(objTool);
    objTool.window().updateUIControls();
    pMIP->setChecked(true);
    pTable->setCurrentText(QStringLiteral("Jet"));
    paint(objTool);
    objTool.window().updateUIControls();
    QCOMPARE(pTable->currentText(), QStringLiteral("Jet"));
    QVERIFY(pMIP->isChecked());
    // The other kind has a look of its own.
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    QCOMPARE(pTable->currentText(), QStringLiteral("Green"));
    objTool.load({QStringLiteral("one")});
    paint(objTool);
    objTool.window().updateUIControls();
    pMIP->setChecked(true);
    pTable->setCurrentText(QStringLiteral("Rainbow"));
    paint(objTool);
    objTool.window().updateUIControls();
    QCOMPARE(pTable->currentText(), QStringLiteral("Rainbow"));
    QVERIFY(pMIP->isChecked());
}

void tst_windowcontrols::resultSelectionEnablesLoading()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    const auto* pLoad = objTool.get<QPushButton>("m_pLoadButton");
    auto* pResults = objTool.get<QListWidget>("m_pResultWidget");
    QVERIFY(!pLoad->isEnabled());
    TestWidgets::clickEntry(pResults, QStringLiteral("one"));
    QVERIFY(pLoad->isEnabled());
    TestWidgets::clickEntry(pResults, QStringLiteral("two"), Qt::ControlModifier);
    QCOMPARE(pResults->selectedItems().size(), 2);
    QVERIFY(pLoad->isEnabled());
    pResults->clearSelection();
    QVERIFY(!pLoad->isEnabled());
}

void tst_windowcontrols::preferencesReachTheStrip()
{
    CToolWindow objTool;
    const auto* pStrip = objTool.window().findChild<COrmPalettePixmapView*>();
    objTool.get<QCheckBox>("m_pReverseColorMapCheck")->setChecked(true); // not by a click
    QVERIFY(!pStrip->isPaletteCTReversed());
    COrmPreference::setDefaultColorBar({3, false}); // the hub tells of it
    QVERIFY(pStrip->isPaletteCTReversed());
}

void tst_windowcontrols::tabSwitchesTheWheel()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const auto* pWheel = objTool.get<QtThumbWheel>("m_pThumWheel");
    QTabBar* pTabs = objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->tabBar();
    QVERIFY(pWheel->isEnabled());
    QTest::mouseClick(pTabs, Qt::LeftButton, Qt::NoModifier, pTabs->tabRect(1).center());
    QVERIFY(!pWheel->isEnabled());
    call(objTool, "onTabChanged", Q_ARG(int, 2));
    QVERIFY(!pWheel->isEnabled());
    QTest::mouseClick(pTabs, Qt::LeftButton, Qt::NoModifier, pTabs->tabRect(0).center());
    QVERIFY(pWheel->isEnabled());
    call(objTool, "onTabChanged", Q_ARG(int, -1));
    QVERIFY(pWheel->isEnabled());
}

void tst_windowcontrols::wheelTurnsTheTiles()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.view().getHighListedResult() = QStringLiteral("S1one");
    auto* pWheel = objTool.get<QtThumbWheel>("m_pThumWheel");
    pWheel->setValue(90);
    QCOMPARE(objTool.view().getHighListedResult(), QString());
    QCOMPARE(SViewNumbers::rotationX(objTool.view()), 0.0f);
    QCOMPARE(SViewNumbers::rotationY(objTool.view()), 90.0f);
    QCOMPARE(SViewNumbers::rotationZ(objTool.view()), 0.0f);
    pWheel->setValue(360);
    QCOMPARE(SViewNumbers::rotationY(objTool.view()), 360.0f);
    pWheel->setFocus();
    pWheel->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QVERIFY(pWheel->value() < 360); // past the end it begins anew
    QCOMPARE(SViewNumbers::rotationY(objTool.view()), static_cast<float>(pWheel->value()));
}

void tst_windowcontrols::displayBoxesReachTheView()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one")});
    paint(objTool);
    objTool.window().updateUIControls();
    objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    QVERIFY(!SViewNumbers::showsSurface(objTool.view()));
    objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->setChecked(false);
    QVERIFY(!SViewNumbers::showsVoxels(objTool.view()));
    objTool.get<QCheckBox>("m_pDisplayPhotonDensityMap")->setChecked(false);
    QVERIFY(!SViewNumbers::showsDensity(objTool.view()));
    objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(true);
    QVERIFY(SViewNumbers::showsSurface(objTool.view()));
}

void tst_windowcontrols::measuringButtonReachesTheView()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one")});
    auto* pButton = objTool.get<QToolButton>("m_pSelectVoxelButton");
    TestWidgets::click(pButton);
    QVERIFY(SViewNumbers::selectsVoxels(objTool.view()));
    TestWidgets::click(pButton);
    QVERIFY(!SViewNumbers::selectsVoxels(objTool.view()));
}

void tst_windowcontrols::selectionChangeEnablesLoading()
{
    CToolWindow objTool;
    QVERIFY(!objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
    call(objTool, "onSlectionChange");
    QVERIFY(objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
    call(objTool, "onSlectionChange");
    QVERIFY(objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
}

ORM_TEST_MAIN(tst_windowcontrols)
#include "tst_windowcontrols.moc"
