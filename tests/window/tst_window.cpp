#include "WindowTestTools.h"

#include "COrmPalettePixmapView.h"
#include "COrmPlainTextDelegate.h"
#include "COrmUtilityFns.h"
#include "COrmXYPlot.h"
#include "OrmTestMain.h"
#include "QtThumbWheel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QMetaMethod>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>

using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::entries;
using WindowTest::menuTexts;
using WindowTest::sequenceMenu;
using WindowTest::SViewNumbers;

/// The window itself: how it is built and wired.
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
    void emptyHooksChangeNothing();
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

ORM_TEST_MAIN(tst_window)
#include "tst_window.moc"
