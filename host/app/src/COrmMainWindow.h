#pragma once

#include "COrmFolderCheck.h"
#include "COrmHostSettings.h"
#include "COrmSequenceOpener.h"

#include <QList>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>

class COrmDemoStudy;
class COrmImageOverlayWindow;
class COrmLogPanel;
class COrmPluginManager;
class COrmSequenceCollection;
class COrmSequenceView;
class COrmSystemMenus;
class COrmTool;
class QAction;
class QMenu;
class QProgressBar;
class QToolBar;
class QToolButton;
struct SCommandLine;

/// The main window of the host: the open sequences, the menus with the tools, the log.
class COrmMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @p fnFolderExists tells whether a recent study is there, see COrmFolderCheck.
    explicit COrmMainWindow(QWidget* pParent = nullptr, COrmFolderCheck::FExists fnFolderExists = {});
    ~COrmMainWindow() override;

    /// Loads the tools of a folder and places them in the Tools menu.
    void loadTools(const QString& strFolder);
    /// Opens what the command line names, and then the tool that it names.
    void start(const SCommandLine& sLine);
    /// Opens every sequence under the paths. @p bInteractive: a failure is told in a box, not only in the log.
    void openPaths(const QStringList& lstPaths, bool bInteractive);
    /// Opens the tool with that name, one of the host's own or one that was loaded. False, with the reason in the log, if that fails.
    bool openTool(const QString& strName);

    COrmSequenceCollection* sequences() const { return m_pSequences; }
    COrmPluginManager* plugins() const { return m_pPlugins; }

signals:
    /// The user closed the main window.
    void closed();

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dragLeaveEvent(QDragLeaveEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

    // ---- Construction and menus: COrmMainWindow_Menus.cpp ------------------
private:
    void makeMenus();
    void makeFileMenu();
    void makeEditMenu();
    void makeToolsMenu();
    void makeWindowAndHelpMenus();
    QAction* addTo(QMenu* pMenu, const QString& strText, const QString& strHint, const char* pObjectName);
    void fillWindowMenu();
    void addWindowAction(QWidget* pWindow, const QString& strText);
    /// Brings the window to the front that comes after the active one in the Window menu.
    void activateNextWindow();
    /// Puts the tools into the menu: each before the entry that it asks for, if that is there, else behind the others.
    void placeTools();
    bool placeTool(COrmTool& objTool, bool bAnywhere);

    COrmSystemMenus* m_pSystemMenus = nullptr;
    QMenu* m_pRecentMenu = nullptr;
    QMenu* m_pToolsMenu = nullptr;
    QMenu* m_pWindowMenu = nullptr;
    QMenu* m_pViewMenu = nullptr;
    QMenu* m_pSequenceMenu = nullptr; ///< on a sequence of the list
    QToolBar* m_pToolBar = nullptr;
    QAction* m_pCompareAction = nullptr;
    QAction* m_pCloseAction = nullptr;
    QAction* m_pCloseAllAction = nullptr;
    QAction* m_pRefreshAction = nullptr;
    QAction* m_pOverlayAction = nullptr;
    QAction* m_pToolsEnd = nullptr;   ///< behind the last tool
    QAction* m_pNextWindow = nullptr; ///< works in the tools' windows too

    // ---- What the user does: COrmMainWindow.cpp ----------------------------
private:
    void closeSelected();
    void refreshSelected();
    void refreshNext();
    void copy();
    void copySelection();
    void showOverlay();
    void resetLongitudinalStudy();
    void showAbout();
    void useTool(COrmTool& objTool);
    void addToolWindow(QWidget* pWindow);
    void updateControls();
    void showHint(const QString& strHint);
    void saveLayout();
    void restoreLayout();

    // ---- Opening studies and handing them on: COrmMainWindow_Opening.cpp ---
private:
    void connectOpening();
    void chooseStudy();
    /// The recent studies that are there, as far as they have answered.
    QStringList recentStudies() const;
    /// Shows those, and looks at all of them again.
    void updateRecent();
    void showRecent();
    void clearRecent();
    void fillRecentMenu();
    /// Shows in the status bar and on the welcome page that work goes on; @p nAll of 0: nobody knows how much there is to do.
    void showWork(const QString& strHeading, const QString& strText, int nDone = 0, int nAll = 0);
    void endWork();
    void stopOpening();
    void searchStarted();
    void searchProgress(qint64 nFolders, qint64 nSequences, const QString& strFolder);
    void searchFinished(const COrmSequenceOpener::SSummary& sSummary);
    void tellLater(const QString& strText);
    void demoProgress(int nDone, int nAll);
    void demoReady(const QString& strFolder);
    void demoFailed(const QString& strReason);
    /// Says in the preview, the menus and the notice whether there is a tool to compare results with.
    void offerTool();
    /// Opens that tool with the selected sequence.
    void compare();

    COrmSequenceCollection* m_pSequences;
    COrmSequenceOpener* m_pOpener;
    COrmDemoStudy* m_pDemo;
    COrmFolderCheck* m_pRecentCheck;
    COrmPluginManager* m_pPlugins;
    COrmSequenceView* m_pView;
    COrmLogPanel* m_pLogPanel;
    QPointer<COrmImageOverlayWindow> m_pOverlay; ///< made at its first use
    QProgressBar* m_pProgressBar = nullptr;
    QToolButton* m_pStopButton = nullptr;
    QList<QPointer<QWidget>> m_lstToolWindows; ///< in the order of registration
    QStringList m_lstOpening;                  ///< folders of the running search, in the order asked for
    QStringList m_lstToRefresh;                ///< IDs that wait to be read again
    int m_nToRefresh = 0;                      ///< how many there were
    bool m_bRefreshShown = false;              ///< the progress of that is shown
    QString m_strToolAtStart;                  ///< opened once the folders of the command line are
    bool m_bInteractive = false;               ///< the running search was asked for in the window
    COrmHostSettings m_objSettings;
};
