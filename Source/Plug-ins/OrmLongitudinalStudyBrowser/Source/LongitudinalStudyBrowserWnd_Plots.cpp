#include "LongitudinalStudyBrowserWnd.h"

void CLongitudinalStudyBrowserWnd::onActivatePlotSelectCB(int)
{
    // No measure draws lines yet: the plot stays as it is.
}

void CLongitudinalStudyBrowserWnd::onActivateAnalysisSelectCB(int)
{
    onSignalUpdatePlotTab();
}

void CLongitudinalStudyBrowserWnd::onSignalUpdatePlotTab()
{
    onActivatePlotSelectCB(m_objForm.m_pPlotSelectCB->currentIndex());
}
