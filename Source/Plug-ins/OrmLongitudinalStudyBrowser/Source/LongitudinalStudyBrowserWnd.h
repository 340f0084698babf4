#pragma once

#include "Analysis.h"
#include "COrmBasePalette.h"
#include "COrmXYPlot.h"
#include "ui_LongitudinalStudyBrowserDlg.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class CLongitudinalStudyBrowserView;
class COrmDataset;
class COrmPalettePixmapView;
class COrmSequenceDataset;
class QAction;
class QCloseEvent;
class QEvent;
class QGridLayout;
class QGroupBox;
class QListWidgetItem;
class QMenu;
class QPoint;
class QResizeEvent;
struct SAnalysisBase;
struct SNOVAAnalysis;
struct SSOLAAnalysis;
struct sAnalysisBase;

/// The tool's only window: sequences and saved results on the left, the comparative view and the plots on the right.
/// Owns the view and the plot. The records of the loaded results belong to the view; the window reaches them through it.
/// A loaded result is known by its key, which is the sequence ID followed directly by the result's name.
class CLongitudinalStudyBrowserWnd : public COrmBasePalette
{
    Q_OBJECT

    /// Hands the host's notifications over.
    friend class COrmLongitudinalStudyBrowserPlugin;

public:
    explicit CLongitudinalStudyBrowserWnd(QWidget* pParent);
    ~CLongitudinalStudyBrowserWnd() override;

    /// Takes over a whole list of sequences whose first entry is its marker, "SOLA" or "NOVA"; any other list is ignored.
    void updateSequenceNameList(QList<QString>& lstSequences);
    /// Builds the visible list again; the argument names the kind that changed. Hides the window when nothing is listed.
    void updateSequenceNameList(QString strType);
    /// Brings the enabled state of the controls into line with the lists and the view.
    void updateUIControls();
    /// Empties the view and the plot.
    void clearViews();

    // The order of the slots is the order of the meta-object.
protected slots:
    void onClickRemoveAction();
    void onDatasetChanged(COrmDataset*) override;
    void onSequenceChanged(COrmSequenceDataset*) override;
    void onDatasetRemoved(COrmDataset*) override;
    void onSequenceAdded(COrmSequenceDataset*) override;
    void onSequenceRemoved(COrmSequenceDataset*) override;
    void onClickSOLASeqListWidgetItem(QListWidgetItem* item);
    void onClickNOVASeqListWidgetItem(QListWidgetItem* item);
    void onClickLoadButton();
    void onClickClearButton(QAction*);
    void aboutToShowClearMenu();
    void onOpacitySliderChanged(int);
    void onChangeColorTableCB(int);
    void onChangeWavelengthCB(QString);
    void sourceColorspanSliderChanged(int, int);
    void onClickReverseCheckBox();
    void onClickLogrithmicScaleCheckBox();
    void onClickExportButton();
    void onClickCopyGraphics();
    void onChangeThumbwheelValue(int);
    void onSignalUpdateAnlaysisParameters(QString, QString);
    void onSignalUpdateWavelengthCB(QString, QString);
    void onActivatePlotSelectCB(int);
    void onActivateAnalysisSelectCB(int);
    void onTabChanged(int);
    void onClickSelectVoxelBtn(bool);
    bool loadAnalysisResult();
    void onSlectionChange();
    void updateUserPreferences();
    void onClickCopyToClipboard();
    void onSignalUpdatePlotTab();
    void onInitialUpdate();
    void onClickOpenButton();
    void updateColorPaletteForCurrentTab();
    void onCheckMIP(int nState);
    void onColorBarSpinBoxMinValueChanged(double value);
    void onColorBarSpinBoxMaxValueChanged(double value);
    void onColorBarSliderUpperValueChanged(int value);
    void onColorBarSliderLowerValueChanged(int value);
    void onClickSequenceNameWidgetItem(QListWidgetItem*);
    void onClickResultWidgetItem(QListWidgetItem*);
    void onItemSelectionWidgetItem();
    void onMouseClicked(const QPoint& p) override;
    void onClickResetColorBarMaxMinButton();

    // The order of the members is the order of their construction.
private:
    Ui_LongitudinalStudyBrowserDlg m_objForm;              ///< the form's widgets, by their object names
    QList<QString> m_lstSOLASequences;                     ///< IDs listed as SOLA; index 0 is the marker "SOLA"
    QList<QString> m_lstNOVASequences;                     ///< IDs listed as NOVA; index 0 is the marker "NOVA"
    QList<QString> m_lstAllSOLASequences;                  ///< SOLA sequences that the host has: refills the list on each show
    QList<QString> m_lstAllNOVASequences;                  ///< NOVA sequences that the host has: refills the list on each show
    QStringList m_lstSavedResultNames;                     ///< saved results of the sequence last listed
    CLongitudinalStudyBrowserView* m_pView = nullptr;      ///< the comparative view; owned
    QGridLayout* m_pResultViewLayout = nullptr;            ///< holds the view
    QString m_strSelectedSOLAResult;                       ///< SOLA result being loaded or last picked
    QString m_strSelectedNOVAResult;                       ///< NOVA result being loaded or last picked
    QString m_strSelectedSequenceID;                       ///< sequence last chosen
    CSOLAAnalysis m_objSOLAAnalysis;                       ///< lives with the window; nothing runs it
    COrmPalettePixmapView* m_pPalettePixmapView = nullptr; ///< the colour strip; owned by its frame
    QMap<QString, QStringList> m_mapSOLAWavelengths;       ///< key to the wavelengths of a loaded SOLA result
    QMap<QString, QStringList> m_mapNOVAImageSources;      ///< key to the image sources of a loaded NOVA result
    QMap<QString, QString> m_mapSequenceInfoPaths;         ///< sequence ID to its folder, with the closing separator
    QStringList m_lstLoadedResults;                        ///< keys of the results loaded through the window
    QListWidgetItem* m_pCurrentResultItem = nullptr;       ///< result last clicked; not owned
    int m_nResultKind = -1;                                ///< 0 SOLA, 1 NOVA; -1 until a sequence is chosen
    COrmXYPlot* m_pPlot = nullptr;                         ///< the plot; owned
    QGridLayout* m_pPlotLayout = nullptr;                  ///< holds the plot
    bool m_bSelectVoxelMode = false;                       ///< the measuring tool is on
    DISPLAY_SETTINGS m_objPlotDisplaySettings;             ///< look of a plot's first line
    bool m_bLoadInProgress = false;                        ///< the load button's work runs: the window must not close
    QStringList m_lstClosedSequences;                      ///< closed by the host, still listed here
    QMenu* m_pClearMenu = nullptr;                         ///< menu of the remove button
    QMenu* m_pSequenceContextMenu = nullptr;               ///< context menu of the sequence list
    QAction* m_pRemoveSequenceAction = nullptr;            ///< its only entry
    float m_fSOLAColorMin = -1.0f;                         ///< the user's colour range, four that always go together
    float m_fSOLAColorMax = -1.0f;
    float m_fNOVAColorMin = -1.0f;
    float m_fNOVAColorMax = -1.0f;

    // ---- Life cycle and wiring: LongitudinalStudyBrowserWnd.cpp --------------------------------------------------
protected:
    bool event(QEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    void init() override;

private:
    void connectListsAndColorScale();
    void connectOpacityAndTools();

    // ---- Sequence lists: LongitudinalStudyBrowserWnd_SequenceLists.cpp ------------------------------------------
    void addSequenceItems(const QList<QString>& lstSequences, const QString& strPrefix, const QString& strIcon);

    // ---- Opening sequences from disk: LongitudinalStudyBrowserWnd_Opening.cpp ------------------------------------
    QString getSequenceInfoType(QString strFilePath);
    void listSequenceFromDisk(QList<QString>& lstSequences, const QString& strKind, bool bHasResults, const QString& strSequenceID,
                              const QString& strFolder);

    // ---- Removing sequences and results: LongitudinalStudyBrowserWnd_Removing.cpp --------------------------------
    void removeSelectedSequence(QList<QString>& lstSequences, const QString& strKind, QMap<QString, QStringList>& mapNames,
                                QGroupBox* pUnitBox);
    void removeTilesOf(const QString& strSequenceID);
    void finishRemoving();

    // ---- Saved results and load flow: LongitudinalStudyBrowserWnd_LoadFlow.cpp -----------------------------------
    void updateSavedResult(QString strSequenceID, QString strKind);
    void removeVanishedResults(const QString& strSequenceID);
    void loadSelectedResults(QString& strSelectedResult);
    void loadByKind();
    bool loadNamedResult();
    /// What was loaded before a load began.
    struct SLoadedBefore
    {
        int nTiles;              ///< records in the view
        int nLoaded;             ///< keys in m_lstLoadedResults
        int nKeys;               ///< keys in the view's list
        QStringList lstSelected; ///< the view's selected list
    };
    void takeBackResult(const SLoadedBefore& objBefore);
    void finishLoading();
    void lookAfterLoading();
    void reportLoadFailure(const QString& strText);
    void takeOverLoadedResult(const QString& strKey, const QString& strResult);

    // ---- Result documents: LongitudinalStudyBrowserWnd_SOLAReader.cpp, _NOVAReader.cpp ---------------------------
    bool loadSOLAAnalysisDataFromXML(QString strPath);
    bool loadNOVAAnalysisDataFromXML(QString strPath);

    // ---- From a record that was read to a tile: LongitudinalStudyBrowserWnd_Application.cpp ----------------------
    bool loadSOLAAnalysis(SSOLAAnalysis* pAnalysis);
    bool loadNOVAAnalysis(SNOVAAnalysis* pAnalysis);
    void updateSOLAAnalysisParameters(SSOLAAnalysis* pAnalysis);
    void updateNOVAAnalysisParameters(SNOVAAnalysis* pAnalysis);
    void applyQuantification(QString strSequenceID, QString strResult, SAnalysisBase* pAnalysis);
    bool isOfSelectedSequence(const SAnalysisBase* pAnalysis) const;
    void tellStep(const QString& strProgress, int nStep, const QString& strHint);
    void refineSourceVolume(SAnalysisBase& objAnalysis);
    void fillRecord(const SAnalysisBase& objAnalysis, const QStringList& lstNames, const QString& strStartKey, sAnalysisBase& objRecord);
    void showInView(SAnalysisBase& objAnalysis, const QString& strResult, const QString& strFirstName);

    // ---- Colour scale: LongitudinalStudyBrowserWnd_ColorScale.cpp ------------------------------------------------
    void UpdateSlider(bool bReset);
    void updateColorMapLabel(int nIndex);
    void getCurrentDataMaxMin(float& fMin, float& fMax);

    // ---- Wavelengths and the active result: LongitudinalStudyBrowserWnd_Wavelength.cpp ---------------------------
    void showResultOfView(const QString& strSequenceID, const QString& strResult, const QString& strPrefix, const QStringList& lstNames,
                          QString& strSelectedResult);
    void fillWavelengths(const QStringList& lstNames);

    // ---- Plots: LongitudinalStudyBrowserWnd_Plots.cpp ------------------------------------------------------------
    void plotMeasure(int nMeasure, int nKind);

    // ---- Export and clipboard: LongitudinalStudyBrowserWnd_Export.cpp --------------------------------------------
    QImage getPrintImage();
    bool isKnownExtension(QString strExtension);
    QString getSelectedFilter(QString strFilter);
};
