#include "WindowTestTools.h"

#include "COrmPalettePixmapView.h"
#include "COrmPlainTextDelegate.h"
#include "COrmUtilityFns.h"
#include "COrmXYPlot.h"
#include "OrmTestMain.h"
#include "QSpanSlider.h"
#include "QtThumbWheel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QMetaMethod>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>

using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::entries;
using WindowTest::paint;
using WindowTest::SViewNumbers;

namespace
{
/// Counts events of one type.
class CEventCount : public QObject
{
public:
    CEventCount(QObject* pWatched, QEvent::Type eType) : m_eType(eType) { pWatched->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        if (pEvent->type() == m_eType)
        {
            ++m_nCount;
            if (m_eType == QEvent::Resize)
            {
                m_lstSizes.append(static_cast<QResizeEvent*>(pEvent)->size());
            }
        }
        return false;
    }
    int m_nCount = 0;
    QList<QSize> m_lstSizes;

private:
    QEvent::Type m_eType;
};

QStringList menuTexts(const QMenu* pMenu)
{
    QStringList lstTexts;
    for (const QAction* pAction : pMenu->actions())
    {
        lstTexts.append(pAction->text());
    }
    return lstTexts;
}

/// The context menu of the sequence list: the window's menu that no button has.
QMenu* sequenceMenu(CToolWindow& objTool)
{
    for (QMenu* pMenu : objTool.window().findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
    {
        if (menuTexts(pMenu) == QStringList{QStringLiteral("Remove")})
        {
            return pMenu;
        }
    }
    TestWidgets::fail(QStringLiteral("The sequence list has no menu"));
}
} // namespace

/// The window itself: how it is built and wired, how its controls follow from what is loaded, and what closing it does.
class tst_window : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { COrmPreference::setStore(QString()); }

    void slotsStandInTheirOrder();
    void freshWindow();
    void viewAndPlotFillTheirFrames();
    void menusHaveTheirEntries();
    void combosHaveTheirEntries();
    void slidersHaveTheirRanges();
    void selectedTabHasItsLook();
    void fontsAreTheHosts();
    void connections_data();
    void connections();
    void sequencesAndResultsAreShownAsPlainText();
    void controls_data();
    void controls();
    void freshLookOfAKindWithoutResults();
    void resultSelectionEnablesLoading();
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
    void preferencesReachTheStrip();
    void tabSwitchesTheWheel();
    void wheelTurnsTheTiles();
    void displayBoxesReachTheView();
    void measuringButtonReachesTheView();
    void selectionChangeEnablesLoading();
    void emptyHooksChangeNothing();
    void windowsComeAndGo();
};

void tst_window::slotsStandInTheirOrder()
{
    const QStringList lstExpected = {QStringLiteral("onClickRemoveAction() ()"),
                                     QStringLiteral("onDatasetChanged(COrmDataset*) ()"),
                                     QStringLiteral("onSequenceChanged(COrmSequenceDataset*) ()"),
                                     QStringLiteral("onDatasetRemoved(COrmDataset*) ()"),
                                     QStringLiteral("onSequenceAdded(COrmSequenceDataset*) ()"),
                                     QStringLiteral("onSequenceRemoved(COrmSequenceDataset*) ()"),
                                     QStringLiteral("onClickSOLASeqListWidgetItem(QListWidgetItem*) (item)"),
                                     QStringLiteral("onClickNOVASeqListWidgetItem(QListWidgetItem*) (item)"),
                                     QStringLiteral("onClickLoadButton() ()"),
                                     QStringLiteral("onClickClearButton(QAction*) ()"),
                                     QStringLiteral("aboutToShowClearMenu() ()"),
                                     QStringLiteral("onOpacitySliderChanged(int) ()"),
                                     QStringLiteral("onChangeColorTableCB(int) ()"),
                                     QStringLiteral("onChangeWavelengthCB(QString) ()"),
                                     QStringLiteral("sourceColorspanSliderChanged(int,int) (,)"),
                                     QStringLiteral("onClickReverseCheckBox() ()"),
                                     QStringLiteral("onClickLogrithmicScaleCheckBox() ()"),
                                     QStringLiteral("onClickExportButton() ()"),
                                     QStringLiteral("onClickCopyGraphics() ()"),
                                     QStringLiteral("onChangeThumbwheelValue(int) ()"),
                                     QStringLiteral("onSignalUpdateAnlaysisParameters(QString,QString) (,)"),
                                     QStringLiteral("onSignalUpdateWavelengthCB(QString,QString) (,)"),
                                     QStringLiteral("onActivatePlotSelectCB(int) ()"),
                                     QStringLiteral("onActivateAnalysisSelectCB(int) ()"),
                                     QStringLiteral("onTabChanged(int) ()"),
                                     QStringLiteral("onClickSelectVoxelBtn(bool) ()"),
                                     QStringLiteral("loadAnalysisResult() ()"),
                                     QStringLiteral("onSlectionChange() ()"),
                                     QStringLiteral("updateUserPreferences() ()"),
                                     QStringLiteral("onClickCopyToClipboard() ()"),
                                     QStringLiteral("onSignalUpdatePlotTab() ()"),
                                     QStringLiteral("onInitialUpdate() ()"),
                                     QStringLiteral("onClickOpenButton() ()"),
                                     QStringLiteral("updateColorPaletteForCurrentTab() ()"),
                                     QStringLiteral("onCheckMIP(int) (nState)"),
                                     QStringLiteral("onColorBarSpinBoxMinValueChanged(double) (value)"),
                                     QStringLiteral("onColorBarSpinBoxMaxValueChanged(double) (value)"),
                                     QStringLiteral("onColorBarSliderUpperValueChanged(int) (value)"),
                                     QStringLiteral("onColorBarSliderLowerValueChanged(int) (value)"),
                                     QStringLiteral("onClickSequenceNameWidgetItem(QListWidgetItem*) ()"),
                                     QStringLiteral("onClickResultWidgetItem(QListWidgetItem*) ()"),
                                     QStringLiteral("onItemSelectionWidgetItem() ()"),
                                     QStringLiteral("onMouseClicked(QPoint) (p)"),
                                     QStringLiteral("onClickResetColorBarMaxMinButton() ()")};
    QCOMPARE(lstExpected.size(), 44);
    const QMetaObject* pMeta = &CLongitudinalStudyBrowserWnd::staticMetaObject;
    QCOMPARE(pMeta->className(), "CLongitudinalStudyBrowserWnd");
    QCOMPARE(pMeta->superClass()->className(), "COrmBasePalette");
    QStringList lstSeen;
    for (int i = pMeta->methodOffset(); i < pMeta->methodCount(); ++i)
    {
        const QMetaMethod objMethod = pMeta->method(i);
        QCOMPARE(objMethod.methodType(), QMetaMethod::Slot);
        QCOMPARE(objMethod.access(), QMetaMethod::Protected);
        const bool bAnswers = objMethod.name() == "loadAnalysisResult";
        QCOMPARE(QByteArray(objMethod.typeName()), QByteArray(bAnswers ? "bool" : "void"));
        lstSeen.append(QStringLiteral("%1 (%2)").arg(QString::fromLatin1(objMethod.methodSignature()),
                                                     QString::fromLatin1(objMethod.parameterNames().join(','))));
    }
    QCOMPARE(lstSeen, lstExpected);
}

void tst_window::freshWindow()
{
    CLongitudinalStudyBrowserWnd objWindow(nullptr);
    QVERIFY(!objWindow.isVisible());
    QVERIFY(!objWindow.isModal());
    QCOMPARE(objWindow.objectName(), QStringLiteral("Longitudinal Study"));
    QCOMPARE(objWindow.windowTitle(), QStringLiteral("Longitudinal Study Window"));
    QCOMPARE(objWindow.size(), QSize(1011, 719));
    // A window without flags of its own: no tool window, no dialog.
    QVERIFY(!(objWindow.windowFlags() & (Qt::Tool | Qt::WindowStaysOnTopHint) & ~Qt::Window));
    QCOMPARE(TestWidgets::get<QComboBox>(&objWindow, "m_pColorTableCB")->currentText(), QStringLiteral("EosB"));
    QVERIFY(TestWidgets::get<QCheckBox>(&objWindow, "m_pMIPCheck")->isChecked());
    QVERIFY(TestWidgets::get<QToolButton>(&objWindow, "m_pSelectVoxelButton")->isCheckable());
    for (const char* pName : {"m_pSelectVoxelButton", "m_pWaveLengthCB", "m_pLoadButton", "m_pClear3DViewButton", "m_pPlotSelectCB"})
    {
        QVERIFY2(!TestWidgets::get<QWidget>(&objWindow, pName)->isEnabled(), pName);
    }
    QVERIFY(!TestWidgets::get<QToolButton>(&objWindow, "m_pSelectVoxelButton")->isChecked());
    const auto* pStrip = objWindow.findChild<COrmPalettePixmapView*>();
    QVERIFY(pStrip != nullptr);
    QCOMPARE(pStrip->paletteCT(), ORM_CT_EOSB);
    QVERIFY(!pStrip->isPaletteCTReversed());
    const auto* pWheel = TestWidgets::get<QtThumbWheel>(&objWindow, "m_pThumWheel");
    QCOMPARE(pWheel->minimumSize(), QSize(200, 20));
    QCOMPARE(pWheel->orientation(), Qt::Horizontal);
    QCOMPARE(pWheel->minimum(), 0);
    QCOMPARE(pWheel->maximum(), 360);
    QCOMPARE(pWheel->value(), 0);
    QVERIFY(pWheel->wrapsAround());
}

void tst_window::viewAndPlotFillTheirFrames()
{
    CLongitudinalStudyBrowserWnd objWindow(nullptr);
    const QList<QPair<const char*, QWidget*>> lstFilled = {{"m_pResultViewFrame", objWindow.findChild<CLongitudinalStudyBrowserView*>()},
                                                           {"m_pPlotViewFrame", objWindow.findChild<COrmXYPlot*>()}};
    for (const auto& [pFrameName, pWidget] : lstFilled)
    {
        const auto* pFrame = TestWidgets::get<QFrame>(&objWindow, pFrameName);
        QVERIFY(pWidget != nullptr);
        QCOMPARE(pWidget->parent(), pFrame);
        auto* pGrid = qobject_cast<QGridLayout*>(pFrame->layout());
        QVERIFY(pGrid != nullptr);
        QCOMPARE(pGrid->contentsMargins(), QMargins(0, 0, 0, 0));
        int nRow = -1;
        int nColumn = -1;
        int nRows = -1;
        int nColumns = -1;
        pGrid->getItemPosition(pGrid->indexOf(pWidget), &nRow, &nColumn, &nRows, &nColumns);
        QCOMPARE(QList<int>({nRow, nColumn, nRows, nColumns}), QList<int>({0, 0, 1, 1}));
    }
    QVERIFY(objWindow.findChild<COrmXYPlot*>()->objectName().isEmpty());
    const auto* pStripFrame = TestWidgets::get<QFrame>(&objWindow, "m_pGLPalettePixmapFrame");
    auto* pBox = qobject_cast<QVBoxLayout*>(pStripFrame->layout());
    QVERIFY(pBox != nullptr);
    QCOMPARE(pBox->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(pBox->spacing(), 0);
    QCOMPARE(pBox->itemAt(0)->widget(), objWindow.findChild<COrmPalettePixmapView*>());
    QCOMPARE(pBox->stretch(0), 1);
}

void tst_window::menusHaveTheirEntries()
{
    CToolWindow objTool;
    const QMenu* pClear = objTool.get<QToolButton>("m_pClear3DViewButton")->menu();
    QVERIFY(pClear != nullptr);
    QCOMPARE(pClear->parent(), &objTool.window());
    const QStringList lstExpected = {QStringLiteral("Selected Result"), QStringLiteral("All Results")};
    QCOMPARE(menuTexts(pClear), lstExpected);
    QCOMPARE(objTool.get<QListWidget>("m_pSequenceNameLW")->contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(sequenceMenu(objTool)->parent(), &objTool.window());
}

void tst_window::combosHaveTheirEntries()
{
    CToolWindow objTool;
    const QStringList lstTables = {QStringLiteral("Grays"),   QStringLiteral("Red"),       QStringLiteral("Green"),
                                   QStringLiteral("Blue"),    QStringLiteral("Cyan"),      QStringLiteral("Yellow"),
                                   QStringLiteral("Magenta"), QStringLiteral("Orange"),    QStringLiteral("BlueYellow"),
                                   QStringLiteral("EosB"),    QStringLiteral("GreenPink"), QStringLiteral("Rainbow"),
                                   QStringLiteral("Jet")};
    QCOMPARE(entries(objTool.get<QComboBox>("m_pColorTableCB")), lstTables);
    const QStringList lstPlots = {QStringLiteral("Quantification"), QStringLiteral("Reduced Chi-Squared"), QStringLiteral("Voxel Size")};
    QCOMPARE(entries(objTool.get<QComboBox>("m_pPlotSelectCB")), lstPlots);
    const QStringList lstKinds = {QStringLiteral("SOLA"), QStringLiteral("NOVA")};
    QCOMPARE(entries(objTool.get<QComboBox>("m_pAnalysisSelectCB")), lstKinds);
    QCOMPARE(objTool.get<QComboBox>("m_pWaveLengthCB")->count(), 0);
}

void tst_window::slidersHaveTheirRanges()
{
    CToolWindow objTool;
    const auto* pSlider = objTool.get<QSlider>("m_pOpacitySlider");
    const auto* pBox = objTool.get<QSpinBox>("m_pOpacitySpinBox");
    QCOMPARE(QList<int>({pSlider->minimum(), pSlider->maximum(), pSlider->value()}), QList<int>({0, 100, 50}));
    QCOMPARE(QList<int>({pBox->minimum(), pBox->maximum(), pBox->value()}), QList<int>({0, 100, 50}));
    QCOMPARE(SViewNumbers::meshOpacity(objTool.view()), 0.5f);
}

void tst_window::selectedTabHasItsLook()
{
    CToolWindow objTool;
    const QString strTabs(8, QLatin1Char('\t'));
    QCOMPARE(objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->tabBar()->styleSheet(),
             QStringLiteral("QTabBar::tab:selected {%1background-color: rgb(62,153,246);%1}").arg(strTabs));
}

void tst_window::fontsAreTheHosts()
{
    // Dialogs have a font of their own here: the window shows the host's all the same.
    const QFont objBefore = QApplication::font();
    QFont objFont(objBefore.family());
    objFont.setPointSize(9);
    QFont objDialogFont = objFont;
    objDialogFont.setPointSize(13);
    QApplication::setFont(objFont);
    QApplication::setFont(objDialogFont, "QDialog");
    {
        CToolWindow objTool;
        objTool.window().ensurePolished();
        QDialog objOther;
        objOther.ensurePolished();
        QCOMPARE(objOther.font().pointSize(), 13);
        QCOMPARE(getMACDefaultFont().pointSize(), 9);
        QCOMPARE(objTool.window().font().pointSize(), 9);
        for (const char* pName : {"m_pDisplayVoxelsGB", "m_pDisplaySurfaceGB"})
        {
            QCOMPARE(objTool.get<QGroupBox>(pName)->font().pointSize(), 9);
            QVERIFY2(objTool.get<QGroupBox>(pName)->testAttribute(Qt::WA_SetFont), pName);
        }
        QVERIFY(!objTool.get<QGroupBox>("m_pSOLAGB")->testAttribute(Qt::WA_SetFont));
    }
    QApplication::setFont(objBefore, "QDialog");
    QApplication::setFont(objBefore);
}

void tst_window::connections_data()
{
    QTest::addColumn<QByteArray>("bySender");
    QTest::addColumn<QByteArray>("bySignal");
    QTest::addColumn<QByteArray>("byReceiver");
    QTest::addColumn<QByteArray>("bySlot");
    const auto row = [](const char* pSender, const char* pSignal, const char* pReceiver, const char* pSlot)
    {
        QTest::addRow("%s %s %s", pSender, pSignal + 1, pSlot + 1)
            << QByteArray(pSender) << QByteArray(pSignal) << QByteArray(pReceiver) << QByteArray(pSlot);
    };
    row("m_pSequenceNameLW", SIGNAL(customContextMenuRequested(QPoint)), "window", SLOT(onMouseClicked(QPoint)));
    row("remove action", SIGNAL(triggered()), "window", SLOT(onClickRemoveAction()));
    row("view", SIGNAL(upadteAnlysisParameters(QString, QString)), "window", SLOT(onSignalUpdateAnlaysisParameters(QString, QString)));
    row("view", SIGNAL(updateWavelengthCombo(QString, QString)), "window", SLOT(onSignalUpdateWavelengthCB(QString, QString)));
    row("m_pDisplaySurfaceGB", SIGNAL(toggled(bool)), "view", SLOT(onStateChangeDisplaySurfaceCB(bool)));
    row("m_pDisplayPhotonDensityMap", SIGNAL(stateChanged(int)), "view", SLOT(onStateChangePhotonDensityMapCB(int)));
    row("m_pDisplayVoxelsGB", SIGNAL(toggled(bool)), "view", SLOT(onStateChangeDisplayVoxels(bool)));
    row("view", SIGNAL(updatePlotTab()), "window", SLOT(onSignalUpdatePlotTab()));
    row("m_pSequenceNameLW", SIGNAL(itemClicked(QListWidgetItem*)), "window", SLOT(onClickSequenceNameWidgetItem(QListWidgetItem*)));
    row("m_pResultWidget", SIGNAL(itemClicked(QListWidgetItem*)), "window", SLOT(onClickResultWidgetItem(QListWidgetItem*)));
    row("m_pResultWidget", SIGNAL(itemSelectionChanged()), "window", SLOT(onItemSelectionWidgetItem()));
    row("m_pLoadButton", SIGNAL(clicked()), "window", SLOT(onClickLoadButton()));
    row("clear menu", SIGNAL(triggered(QAction*)), "window", SLOT(onClickClearButton(QAction*)));
    row("clear menu", SIGNAL(aboutToShow()), "window", SLOT(aboutToShowClearMenu()));
    row("m_pSourceColorTableSlider", SIGNAL(spanChanged(int, int)), "window", SLOT(sourceColorspanSliderChanged(int, int)));
    row("m_pReverseColorMapCheck", SIGNAL(clicked()), "window", SLOT(onClickReverseCheckBox()));
    row("m_pLogarithmicScaleCheck", SIGNAL(clicked()), "window", SLOT(onClickLogrithmicScaleCheckBox()));
    row("m_pOpenButton", SIGNAL(clicked()), "window", SLOT(onClickOpenButton()));
    row("m_pMIPCheck", SIGNAL(stateChanged(int)), "window", SLOT(onCheckMIP(int)));
    row("m_pColorBarMinSpinbox", SIGNAL(valueChanged(double)), "window", SLOT(onColorBarSpinBoxMinValueChanged(double)));
    row("m_pColorBarMaxSpinbox", SIGNAL(valueChanged(double)), "window", SLOT(onColorBarSpinBoxMaxValueChanged(double)));
    row("m_pColorBarMinMaxSlider", SIGNAL(upperValueChanged(int)), "window", SLOT(onColorBarSliderUpperValueChanged(int)));
    row("m_pColorBarMinMaxSlider", SIGNAL(lowerValueChanged(int)), "window", SLOT(onColorBarSliderLowerValueChanged(int)));
    row("m_pResetColorBarMaxMinButton", SIGNAL(clicked()), "window", SLOT(onClickResetColorBarMaxMinButton()));
    row("m_pColorTableCB", SIGNAL(currentIndexChanged(int)), "window", SLOT(onChangeColorTableCB(int)));
    row("m_pOpacitySlider", SIGNAL(valueChanged(int)), "window", SLOT(onOpacitySliderChanged(int)));
    row("m_pOpacitySpinBox", SIGNAL(valueChanged(int)), "window", SLOT(onOpacitySliderChanged(int)));
    row("m_pOpacitySlider", SIGNAL(valueChanged(int)), "m_pOpacitySpinBox", SLOT(setValue(int)));
    row("m_pOpacitySpinBox", SIGNAL(valueChanged(int)), "m_pOpacitySlider", SLOT(setValue(int)));
    row("m_pExportButton", SIGNAL(clicked()), "window", SLOT(onClickExportButton()));
    row("m_pCopyToClipboardButton", SIGNAL(clicked()), "window", SLOT(onClickCopyGraphics()));
    row("m_pThumWheel", SIGNAL(valueChanged(int)), "window", SLOT(onChangeThumbwheelValue(int)));
    row("m_pSelectVoxelButton", SIGNAL(toggled(bool)), "window", SLOT(onClickSelectVoxelBtn(bool)));
    row("m_pWaveLengthCB", SIGNAL(currentIndexChanged(QString)), "window", SLOT(onChangeWavelengthCB(QString)));
    row("m_pPlotSelectCB", SIGNAL(activated(int)), "window", SLOT(onActivatePlotSelectCB(int)));
    row("m_pAnalysisSelectCB", SIGNAL(activated(int)), "window", SLOT(onActivateAnalysisSelectCB(int)));
    row("m_p3DBrowserTabWidget", SIGNAL(currentChanged(int)), "window", SLOT(onTabChanged(int)));
    row("hub", SIGNAL(updatePreferenceSetting()), "window", SLOT(updateUserPreferences()));
}

void tst_window::connections()
{
    QFETCH(QByteArray, bySender);
    QFETCH(QByteArray, bySignal);
    QFETCH(QByteArray, byReceiver);
    QFETCH(QByteArray, bySlot);
    CToolWindow objTool;
    const auto object = [&](const QByteArray& byName) -> QObject*
    {
        if (byName == "window")
        {
            return &objTool.window();
        }
        if (byName == "view")
        {
            return &objTool.view();
        }
        if (byName == "hub")
        {
            return COrmPreference::getSignalHandler();
        }
        if (byName == "clear menu")
        {
            return objTool.get<QToolButton>("m_pClear3DViewButton")->menu();
        }
        if (byName == "remove action")
        {
            return sequenceMenu(objTool)->actions().first();
        }
        return objTool.get<QWidget>(byName.constData());
    };
    // What can be taken apart was there, and after that it is not there a second time.
    QVERIFY(QObject::disconnect(object(bySender), bySignal.constData(), object(byReceiver), bySlot.constData()));
    QVERIFY(!QObject::disconnect(object(bySender), bySignal.constData(), object(byReceiver), bySlot.constData()));
}

void tst_window::sequencesAndResultsAreShownAsPlainText()
{
    const QString strName = QStringLiteral("<b>x</b>\u202Egnp\ttail");
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("S1"));
    SResultDocument objDocument;
    objDocument.strSequenceID = QStringLiteral("S1");
    objStudy.addResult(QStringLiteral("S1"), strName, objDocument);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    // The text stays the key; what is painted is its visible form.
    QCOMPARE(objTool.savedResults(), QStringList{strName});
    for (const char* pName : {"m_pSequenceNameLW", "m_pResultWidget"})
    {
        const auto* pDelegate = qobject_cast<COrmPlainTextDelegate*>(objTool.get<QListWidget>(pName)->itemDelegate());
        QVERIFY2(pDelegate != nullptr, pName);
        const QString strShown = pDelegate->displayText(strName, QLocale::c());
        QVERIFY(!strShown.contains(QChar(0x202E)));
        QVERIFY(!strShown.contains(QLatin1Char('\t')));
        QVERIFY(strShown.contains(QStringLiteral("<b>x</b>")));
    }
}

void tst_window::controls_data()
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

void tst_window::controls()
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

void tst_window::freshLookOfAKindWithoutResults()
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

void tst_window::resultSelectionEnablesLoading()
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

void tst_window::withoutSequencesTheWindowStaysHidden()
{
    CToolWindow objTool;
    QVERIFY(!objTool.window().isVisible());
    objTool.window().show();
    QList<QString> lstNone = {QStringLiteral("SOLA")};
    objTool.window().updateSequenceNameList(lstNone);
    QVERIFY(!objTool.window().isVisible());
}

void tst_window::escapeLeavesTheWindowOpen_data()
{
    QTest::addColumn<QByteArray>("byFocus");
    QTest::newRow("window") << QByteArray();
    QTest::newRow("sequence list") << QByteArray("m_pSequenceNameLW");
    QTest::newRow("result list") << QByteArray("m_pResultWidget");
    QTest::newRow("spin box") << QByteArray("m_pOpacitySpinBox");
}

void tst_window::escapeLeavesTheWindowOpen()
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

void tst_window::resizeClosesPopups_data()
{
    QTest::addColumn<QByteArray>("byPopup");
    for (const char* pName :
         {"m_pWaveLengthCB", "m_pColorTableCB", "m_pPlotSelectCB", "m_pAnalysisSelectCB", "clear menu", "sequence menu"})
    {
        QTest::newRow(pName) << QByteArray(pName);
    }
}

void tst_window::resizeClosesPopups()
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

void tst_window::closeIsRefusedDuringALoad()
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

void tst_window::closePutsTheDefaultsBack()
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

void tst_window::closeEmptiesTheWindow()
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

void tst_window::closedSequencesGoWithTheWindow()
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

void tst_window::reopenedSequenceOfBothKindsStays()
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

void tst_window::nextShowListsWhatIsKnown()
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

void tst_window::preferencesReachTheStrip()
{
    CToolWindow objTool;
    const auto* pStrip = objTool.window().findChild<COrmPalettePixmapView*>();
    objTool.get<QCheckBox>("m_pReverseColorMapCheck")->setChecked(true); // not by a click
    QVERIFY(!pStrip->isPaletteCTReversed());
    COrmPreference::setDefaultColorBar({3, false}); // the hub tells of it
    QVERIFY(pStrip->isPaletteCTReversed());
}

void tst_window::tabSwitchesTheWheel()
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

void tst_window::wheelTurnsTheTiles()
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

void tst_window::displayBoxesReachTheView()
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

void tst_window::measuringButtonReachesTheView()
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

void tst_window::selectionChangeEnablesLoading()
{
    CToolWindow objTool;
    QVERIFY(!objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
    call(objTool, "onSlectionChange");
    QVERIFY(objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
    call(objTool, "onSlectionChange");
    QVERIFY(objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
}

void tst_window::emptyHooksChangeNothing()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const QStringList lstListed = TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW"));
    call(objTool, "onDatasetChanged", Q_ARG(COrmDataset*, nullptr));
    call(objTool, "onSequenceChanged", Q_ARG(COrmSequenceDataset*, nullptr));
    call(objTool, "onDatasetRemoved", Q_ARG(COrmDataset*, nullptr));
    QCOMPARE(TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW")), lstListed);
    QVERIFY(objTool.window().isVisible());
    QCOMPARE(objTool.host().calls(), QStringList());
}

void tst_window::windowsComeAndGo()
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

ORM_TEST_MAIN(tst_window)
#include "tst_window.moc"
