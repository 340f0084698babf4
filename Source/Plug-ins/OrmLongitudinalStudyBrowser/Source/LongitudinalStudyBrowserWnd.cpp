#include "LongitudinalStudyBrowserWnd.h"

#include "COrmPalettePixmapView.h"
#include "COrmPlainTextDelegate.h"
#include "COrmPreference.h"
#include "COrmUtilityFns.h"
#include "LongitudinalStudyBrowserView.h"
#include "OrmGlobalConstants.h"
#include "SequenceEntries.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace
{
/// Opacity of the surfaces in percent, and the table of the volumes, that a window starts with.
constexpr int s_nFirstOpacity = 50;
constexpr int s_nFirstColorTable = 9;
/// Tables of a kind that has no results yet.
constexpr int s_nNOVAColorTable = 1;
constexpr int s_nSOLAColorTable = 2;
} // namespace

CLongitudinalStudyBrowserWnd::CLongitudinalStudyBrowserWnd(QWidget* pParent) : COrmBasePalette(pParent, nullptr, false, Qt::WindowFlags())
{
    m_objForm.setupUi(this);
    m_objForm.m_p3DBrowserTabWidget->tabBar()->setStyleSheet(QString::fromLatin1(OrmGlobalConstants::g_strTabStyleSheet.toLatin1()));
    CLongitudinalStudyBrowserWnd::init();
}

CLongitudinalStudyBrowserWnd::~CLongitudinalStudyBrowserWnd()
{
    if (m_pView != nullptr)
    {
        delete m_pView;
        m_pView = nullptr;
    }
    if (m_pPlot != nullptr)
    {
        delete m_pPlot;
        m_pPlot = nullptr;
    }
}

void CLongitudinalStudyBrowserWnd::init()
{
    m_pResultViewLayout = new QGridLayout(m_objForm.m_pResultViewFrame);
    m_pView = new CLongitudinalStudyBrowserView(m_objForm.m_pResultViewFrame);
    m_pResultViewLayout->addWidget(m_pView, 0, 0, 1, 1);
    m_pResultViewLayout->setContentsMargins(0, 0, 0, 0);

    m_pClearMenu = new QMenu(this);
    m_pClearMenu->addAction(QStringLiteral("Selected Result"));
    m_pClearMenu->addAction(QStringLiteral("All Results"));
    m_objForm.m_pClear3DViewButton->setMenu(m_pClearMenu);

    m_pSequenceContextMenu = new QMenu(this);
    m_pRemoveSequenceAction = m_pSequenceContextMenu->addAction(QStringLiteral("Remove"));
    m_objForm.m_pSequenceNameLW->setContextMenuPolicy(Qt::CustomContextMenu);

    connectListsAndColorScale();

    m_pPalettePixmapView = new COrmPalettePixmapView(m_objForm.m_pGLPalettePixmapFrame);
    auto* pStripLayout = new QVBoxLayout(m_objForm.m_pGLPalettePixmapFrame);
    pStripLayout->setContentsMargins(0, 0, 0, 0);
    pStripLayout->setSpacing(0);
    pStripLayout->addWidget(m_pPalettePixmapView, 1);

    setObjectName(QStringLiteral("Longitudinal Study"));

    connect(m_objForm.m_pColorTableCB, SIGNAL(currentIndexChanged(int)), this, SLOT(onChangeColorTableCB(int)));
    m_objForm.m_pColorTableCB->clear();
    {
        const QSignalBlocker objBlocker(m_objForm.m_pColorTableCB);
        for (int i = 0; i < OrmGlobalConstants::g_nVolumeColorTables; ++i)
        {
            m_objForm.m_pColorTableCB->insertItem(i, OrmGlobalConstants::g_strVolumeColorTable[i]);
        }
    }
    m_objForm.m_pColorTableCB->setCurrentIndex(s_nFirstColorTable);

    m_objForm.m_pThumWheel->setMinimumSize(200, 20);
    m_objForm.m_pThumWheel->setOrientation(Qt::Horizontal);
    m_objForm.m_pThumWheel->setRange(0, 360);
    m_objForm.m_pThumWheel->setValue(0);
    m_objForm.m_pThumWheel->setWrapsAround(true);

    connectOpacityAndTools();

    m_objForm.m_pSelectVoxelButton->setCheckable(true);
    m_objForm.m_pSelectVoxelButton->setChecked(false);
    m_objForm.m_pMIPCheck->setChecked(true);
    {
        const QSignalBlocker objBlocker(m_objForm.m_pOpacitySlider);
        m_objForm.m_pOpacitySlider->setMinimum(0);
        m_objForm.m_pOpacitySlider->setMaximum(100);
        m_objForm.m_pOpacitySlider->setValue(s_nFirstOpacity);
    }
    {
        const QSignalBlocker objBlocker(m_objForm.m_pOpacitySpinBox);
        m_objForm.m_pOpacitySpinBox->setMinimum(0);
        m_objForm.m_pOpacitySpinBox->setMaximum(100);
        m_objForm.m_pOpacitySpinBox->setValue(s_nFirstOpacity);
    }

    connect(m_objForm.m_pWaveLengthCB, SIGNAL(currentIndexChanged(const QString&)), this, SLOT(onChangeWavelengthCB(const QString&)));
    m_objForm.m_pWaveLengthCB->setEnabled(false);

    m_pPlot = nullptr;
    m_pPlotLayout = new QGridLayout(m_objForm.m_pPlotViewFrame);
    m_pPlot = new COrmXYPlot(m_objForm.m_pPlotViewFrame, nullptr);
    m_objPlotDisplaySettings.lineColor = Qt::blue;
    m_objPlotDisplaySettings.nDisplayMode = 2;
    m_objPlotDisplaySettings.objPointProperties.pointColor = Qt::red;
    m_objPlotDisplaySettings.objPointProperties.bPointVisible = true;
    m_pPlotLayout->addWidget(m_pPlot, 0, 0, 1, 1);
    m_pPlotLayout->setContentsMargins(0, 0, 0, 0);

    m_objForm.m_pPlotSelectCB->addItem(QStringLiteral("Quantification"));
    m_objForm.m_pPlotSelectCB->addItem(QStringLiteral("Reduced Chi-Squared"));
    m_objForm.m_pPlotSelectCB->addItem(QStringLiteral("Voxel Size"));
    m_objForm.m_pAnalysisSelectCB->addItem(QStringLiteral("SOLA"));
    m_objForm.m_pAnalysisSelectCB->addItem(QStringLiteral("NOVA"));
    connect(m_objForm.m_pPlotSelectCB, SIGNAL(activated(int)), this, SLOT(onActivatePlotSelectCB(int)));
    connect(m_objForm.m_pAnalysisSelectCB, SIGNAL(activated(int)), this, SLOT(onActivateAnalysisSelectCB(int)));

    m_objForm.m_pSelectVoxelButton->setEnabled(false);

    const QFont objFont = getMACDefaultFont();
    m_objForm.m_pDisplayVoxelsGB->setFont(objFont);
    m_objForm.m_pDisplaySurfaceGB->setFont(objFont);
    setFont(objFont);
    setWindowFlags(Qt::Widget);

    connect(m_objForm.m_p3DBrowserTabWidget, SIGNAL(currentChanged(int)), this, SLOT(onTabChanged(int)));

    m_fSOLAColorMin = -1.0f;
    m_fSOLAColorMax = -1.0f;
    m_fNOVAColorMin = -1.0f;
    m_fNOVAColorMax = -1.0f;
    updateUIControls();
    m_pCurrentResultItem = nullptr;
    m_bSelectVoxelMode = false;

    connect(COrmPreference::getSignalHandler(), SIGNAL(updatePreferenceSetting()), this, SLOT(updateUserPreferences()));
    updateUserPreferences();

    m_bLoadInProgress = false;

    // The left column gets the width that its numbers need, the tabs the rest; in the plot's row the blank at the left gives way
    // first, and the opacity stays at the left of its box. Without this the widths that spacers wish for would come before texts.
    m_objForm.gridLayout_7->setColumnStretch(1, 1);
    m_objForm.gridLayout_5->setColumnStretch(0, 1);
    m_objForm.gridLayout_9->setColumnStretch(1, 1);

    // Return ends a number that is typed into a box; a load pressed by it would take the range that was just typed away again.
    m_objForm.m_pLoadButton->setAutoDefault(false);

    // Names come from files: what they hold is shown, never interpreted.
    m_objForm.m_pSequenceNameLW->setItemDelegate(new COrmPlainTextDelegate(m_objForm.m_pSequenceNameLW));
    m_objForm.m_pResultWidget->setItemDelegate(new COrmPlainTextDelegate(m_objForm.m_pResultWidget));
    m_objForm.m_pWaveLengthCB->setItemDelegate(new COrmPlainTextDelegate(m_objForm.m_pWaveLengthCB));
}

void CLongitudinalStudyBrowserWnd::connectListsAndColorScale()
{
    const Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    connect(ui.m_pSequenceNameLW, SIGNAL(customContextMenuRequested(const QPoint&)), this, SLOT(onMouseClicked(const QPoint&)));
    connect(m_pRemoveSequenceAction, SIGNAL(triggered()), this, SLOT(onClickRemoveAction()));
    connect(m_pView, SIGNAL(upadteAnlysisParameters(QString, QString)), this, SLOT(onSignalUpdateAnlaysisParameters(QString, QString)));
    connect(m_pView, SIGNAL(updateWavelengthCombo(QString, QString)), this, SLOT(onSignalUpdateWavelengthCB(QString, QString)));
    connect(ui.m_pDisplaySurfaceGB, SIGNAL(toggled(bool)), m_pView, SLOT(onStateChangeDisplaySurfaceCB(bool)));
    connect(ui.m_pDisplayPhotonDensityMap, SIGNAL(stateChanged(int)), m_pView, SLOT(onStateChangePhotonDensityMapCB(int)));
    connect(ui.m_pDisplayVoxelsGB, SIGNAL(toggled(bool)), m_pView, SLOT(onStateChangeDisplayVoxels(bool)));
    connect(m_pView, SIGNAL(updatePlotTab()), this, SLOT(onSignalUpdatePlotTab()));
    connect(ui.m_pSequenceNameLW, SIGNAL(itemClicked(QListWidgetItem*)), this, SLOT(onClickSequenceNameWidgetItem(QListWidgetItem*)));
    connect(ui.m_pResultWidget, SIGNAL(itemClicked(QListWidgetItem*)), this, SLOT(onClickResultWidgetItem(QListWidgetItem*)));
    connect(ui.m_pResultWidget, SIGNAL(itemSelectionChanged()), this, SLOT(onItemSelectionWidgetItem()));
    connect(ui.m_pLoadButton, SIGNAL(clicked()), this, SLOT(onClickLoadButton()));
    connect(m_pClearMenu, SIGNAL(triggered(QAction*)), this, SLOT(onClickClearButton(QAction*)));
    connect(m_pClearMenu, SIGNAL(aboutToShow()), this, SLOT(aboutToShowClearMenu()));
    connect(ui.m_pSourceColorTableSlider, SIGNAL(spanChanged(int, int)), this, SLOT(sourceColorspanSliderChanged(int, int)));
    connect(ui.m_pReverseColorMapCheck, SIGNAL(clicked()), this, SLOT(onClickReverseCheckBox()));
    connect(ui.m_pLogarithmicScaleCheck, SIGNAL(clicked()), this, SLOT(onClickLogrithmicScaleCheckBox()));
    connect(ui.m_pOpenButton, SIGNAL(clicked()), this, SLOT(onClickOpenButton()));
    connect(ui.m_pMIPCheck, SIGNAL(stateChanged(int)), this, SLOT(onCheckMIP(int)));
    connect(ui.m_pColorBarMinSpinbox, SIGNAL(valueChanged(double)), this, SLOT(onColorBarSpinBoxMinValueChanged(double)));
    connect(ui.m_pColorBarMaxSpinbox, SIGNAL(valueChanged(double)), this, SLOT(onColorBarSpinBoxMaxValueChanged(double)));
    connect(ui.m_pColorBarMinMaxSlider, SIGNAL(upperValueChanged(int)), this, SLOT(onColorBarSliderUpperValueChanged(int)));
    connect(ui.m_pColorBarMinMaxSlider, SIGNAL(lowerValueChanged(int)), this, SLOT(onColorBarSliderLowerValueChanged(int)));
    connect(ui.m_pResetColorBarMaxMinButton, SIGNAL(clicked()), this, SLOT(onClickResetColorBarMaxMinButton()));
}

void CLongitudinalStudyBrowserWnd::connectOpacityAndTools()
{
    const Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    connect(ui.m_pOpacitySlider, SIGNAL(valueChanged(int)), this, SLOT(onOpacitySliderChanged(int)));
    connect(ui.m_pOpacitySpinBox, SIGNAL(valueChanged(int)), this, SLOT(onOpacitySliderChanged(int)));
    connect(ui.m_pOpacitySlider, SIGNAL(valueChanged(int)), ui.m_pOpacitySpinBox, SLOT(setValue(int)));
    connect(ui.m_pOpacitySpinBox, SIGNAL(valueChanged(int)), ui.m_pOpacitySlider, SLOT(setValue(int)));
    connect(ui.m_pExportButton, SIGNAL(clicked()), this, SLOT(onClickExportButton()));
    connect(ui.m_pCopyToClipboardButton, SIGNAL(clicked()), this, SLOT(onClickCopyGraphics()));
    connect(ui.m_pThumWheel, SIGNAL(valueChanged(int)), this, SLOT(onChangeThumbwheelValue(int)));
    connect(ui.m_pSelectVoxelButton, SIGNAL(toggled(bool)), this, SLOT(onClickSelectVoxelBtn(bool)));
}

void CLongitudinalStudyBrowserWnd::updateUIControls()
{
    Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    if (m_lstSOLASequences.size() < 2 && m_lstNOVASequences.size() < 2)
    {
        ui.m_pLoadButton->setEnabled(false);
        ui.m_pClear3DViewButton->setEnabled(false);
        ui.m_pPlotSelectCB->setEnabled(false);
        ui.m_pSelectVoxelButton->setChecked(false);
        ui.m_pSelectVoxelButton->setEnabled(false);
        ui.m_pWaveLengthCB->setEnabled(false);
        return;
    }

    if (m_pView->getLoadedResult().isEmpty())
    {
        ui.m_pClear3DViewButton->setEnabled(false);
        ui.m_pWaveLengthCB->setEnabled(false);
        ui.m_pPlotSelectCB->setEnabled(false);
        ui.m_pSelectVoxelButton->setChecked(false);
        ui.m_pSelectVoxelButton->setEnabled(false);
    }
    else
    {
        ui.m_pClear3DViewButton->setEnabled(true);
        ui.m_pPlotSelectCB->setEnabled(true);
        ui.m_pSelectVoxelButton->setEnabled(true);
    }
    ui.m_pLoadButton->setEnabled(!ui.m_pResultWidget->selectedItems().isEmpty());

    {
        const QSignalBlocker objBlocker(ui.m_pAnalysisSelectCB);
        ui.m_pAnalysisSelectCB->setEnabled(false);
        const bool bSOLA = m_pView->containsSOLAResults();
        const bool bNOVA = m_pView->containsNOVAResults();
        // A kind gets a fresh look until a result of it is loaded.
        if (m_nResultKind == 1 && !bNOVA)
        {
            ui.m_pMIPCheck->setChecked(false);
            ui.m_pColorTableCB->setCurrentIndex(s_nNOVAColorTable);
        }
        if (m_nResultKind == 0 && !bSOLA)
        {
            ui.m_pMIPCheck->setChecked(false);
            ui.m_pColorTableCB->setCurrentIndex(s_nSOLAColorTable);
        }
        if (bSOLA && bNOVA)
        {
            ui.m_pAnalysisSelectCB->setEnabled(true);
        }
        else if (bSOLA)
        {
            updateComboWidget(ui.m_pAnalysisSelectCB, QStringLiteral("SOLA"));
        }
        else if (bNOVA)
        {
            updateComboWidget(ui.m_pAnalysisSelectCB, QStringLiteral("NOVA"));
        }
    }

    updateColorPaletteForCurrentTab();
    UpdateSlider(false);
}

void CLongitudinalStudyBrowserWnd::onInitialUpdate()
{
    SequenceEntries::appendMissing(m_lstSOLASequences, m_lstAllSOLASequences);
    SequenceEntries::appendMissing(m_lstNOVASequences, m_lstAllNOVASequences);
    updateSequenceNameList(QStringLiteral("SOLA"));
    updateSequenceNameList(QStringLiteral("NOVA"));
}

void CLongitudinalStudyBrowserWnd::updateUserPreferences()
{
    onClickReverseCheckBox();
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::clearViews()
{
    m_pView->clear3DView();
    m_pPlot->clear();
}

void CLongitudinalStudyBrowserWnd::onTabChanged(int nIndex)
{
    if (nIndex == 0)
    {
        m_objForm.m_pThumWheel->setEnabled(true);
    }
    else if (nIndex == 1)
    {
        m_objForm.m_pThumWheel->setEnabled(false);
    }
    onSignalUpdatePlotTab();
}

void CLongitudinalStudyBrowserWnd::onDatasetChanged(COrmDataset*) {}

void CLongitudinalStudyBrowserWnd::onSequenceChanged(COrmSequenceDataset*) {}

void CLongitudinalStudyBrowserWnd::onDatasetRemoved(COrmDataset*) {}

bool CLongitudinalStudyBrowserWnd::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Escape)
    {
        pEvent->ignore();
        return true;
    }
    // Past the dialog's own handler, which would close on keys.
    return QWidget::event(pEvent); // NOLINT(bugprone-parent-virtual-call)
}

void CLongitudinalStudyBrowserWnd::resizeEvent(QResizeEvent* pEvent)
{
    m_objForm.m_pWaveLengthCB->hidePopup();
    m_objForm.m_pColorTableCB->hidePopup();
    m_objForm.m_pPlotSelectCB->hidePopup();
    m_objForm.m_pAnalysisSelectCB->hidePopup();
    m_pClearMenu->hide();
    m_pSequenceContextMenu->hide();
    COrmBasePalette::resizeEvent(pEvent);
}

void CLongitudinalStudyBrowserWnd::closeEvent(QCloseEvent* pEvent)
{
    if (m_bLoadInProgress)
    {
        pEvent->ignore();
        return;
    }

    Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    ui.m_pResultWidget->clear();
    m_lstSavedResultNames.clear();
    m_lstLoadedResults.clear();

    m_pView->clear3DView();
    m_pPlot->clear();
    ui.m_pPlotSelectCB->setEnabled(false);

    const SDefaultColorBar sColorBar = COrmPreference::getDefaultColorBar();
    ui.m_pReverseColorMapCheck->setChecked(sColorBar.bReversed);
    onClickReverseCheckBox();
    ui.m_pColorTableCB->setCurrentIndex(sColorBar.nColorTable);

    {
        const QSignalBlocker objBlocker(ui.m_pSourceColorTableSlider);
        ui.m_pSourceColorTableSlider->setLowerValue(0);
        ui.m_pSourceColorTableSlider->setUpperValue(100);
    }
    {
        // The span slider stays blocked, not the opacity's: the view and the spin box are to hear of the opacity.
        const QSignalBlocker objBlocker(ui.m_pSourceColorTableSlider);
        ui.m_pOpacitySlider->setValue(s_nFirstOpacity);
    }

    ui.m_pLogarithmicScaleCheck->setChecked(false);
    ui.m_pDisplayVoxelsGB->setChecked(true);
    ui.m_pDisplaySurfaceGB->setChecked(true);
    ui.m_pDisplayPhotonDensityMap->setChecked(true);
    ui.m_pSelectVoxelButton->setChecked(false);
    ui.m_pSelectVoxelButton->setEnabled(false);
    ui.m_pMIPCheck->setChecked(true);

    for (const QString& strSequenceID : qAsConst(m_lstClosedSequences))
    {
        m_lstSOLASequences.removeOne(strSequenceID);
        m_lstNOVASequences.removeOne(strSequenceID);
    }
    m_lstClosedSequences.clear();
}
