#include "LongitudinalStudyBrowserWnd.h"

void CLongitudinalStudyBrowserWnd::onClickRemoveAction()
{
    // A sequence stays listed until the host closes it.
}

void CLongitudinalStudyBrowserWnd::onClickClearButton(QAction*)
{
    // Results leave the view with the window's closing, or when their saved result is gone.
}

void CLongitudinalStudyBrowserWnd::aboutToShowClearMenu()
{
    // Both entries stay enabled, since neither of them removes anything yet.
}
