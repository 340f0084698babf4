#ifndef CORMPROCESS_H
#define CORMPROCESS_H

#include "COrmProcessNotifier.h"

#include <QString>

class QWidget;

/// Kinds of long process.
enum tag_eLongProcessTypes : int
{
    eLongProcessGeneral = 1,
    eLongProcessAnalysis = 8,
    eLongProcessAcquisition = 4096
};

/// The one long process of the application and its display, and the lock of the application's interface.
/// While a long process works no event loop runs: the display is painted synchronously, by each message and by keepAlive().
/// Everything but requestRepaint() belongs to the GUI thread; a call from another thread does nothing but log.
/// Without a QApplication there is no display and no lock, but states and notifications are the same.
class COrmProcess
{
public:
    COrmProcess() = delete;

    /// True while a process of that kind runs.
    static bool isProcessInProgress(tag_eLongProcessTypes eType);
    /// Opens the progress display; with one open it starts anew.
    /// @param nSteps       number of steps, above 0 (otherwise the bar shows no measure)
    /// @param bMayAbort    offers a button to abort
    /// @param strAbortText what the display says once that button was pressed
    static void startLongProcess(int nSteps, tag_eLongProcessTypes eType, bool bMayAbort, QString strAbortText);
    /// Shows a step. Without an open process only the notification goes out.
    /// @param pbAbort if not null, receives whether the user asked to abort
    static void setProcessMessage(const QString& strMessage, int nStep, int nSteps, bool* pbAbort);
    /// Closes the display, whatever its kind, and paints what is due. With none open it only paints.
    static void endLongProcess(tag_eLongProcessTypes eType);

    /// True locks the interface: the application's windows receive no mouse, key, wheel, touch or drop events, apart from the host's own
    /// message boxes and the progress display. Requests to close still arrive: the window decides. A plain flag, not a count. After
    /// false, input of the window system that came in during the lock is dropped too.
    static void disableUserInteraction(bool bDisable);
    static bool isUserInteractionDisabled();
    /// Lets a window and what it holds answer during the lock (the host's message boxes do this themselves).
    static void exemptFromLock(QWidget* pWindow);

    /// For loops of the host that take long: paints the display if a repaint was asked for since. Costs one atomic read otherwise.
    static void keepAlive();
    /// Asks for a repaint by the next keepAlive(). Any thread.
    static void requestRepaint();
    /// Paints all windows that wait for it, and delivers no other event.
    static void paintDue();

    /// Heading of the display; kept until the process ends. May be set before the start.
    static void setProcessTitle(const QString& strTitle);
    /// False keeps the display from being shown at all (programs that report elsewhere). True at first.
    static void setDisplayEnabled(bool bEnabled);
    /// Declares a process of that kind running, or not, without a display.
    static void setProcessInProgress(tag_eLongProcessTypes eType, bool bInProgress);

    static COrmProcessNotifier* notifier();
};

#endif
