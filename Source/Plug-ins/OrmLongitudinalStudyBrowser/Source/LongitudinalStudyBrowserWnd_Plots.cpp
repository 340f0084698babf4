#include "LongitudinalStudyBrowserWnd.h"

#include "LongitudinalStudyBrowserView.h"
#include "PlotValues.h"

namespace
{
/// With fewer loaded results every one of them gets its tick; from here on the plot keeps the step that it has.
constexpr int s_nManyResults = 5;

/// Adds a line over the running numbers of its values; false if there are none.
template <class Y>
bool addLine(COrmXYPlot& objPlot, const QString& strName, std::vector<Y> vecValues)
{
    if (vecValues.empty())
    {
        return false;
    }
    std::vector<int> vecNumbers = PlotValues::runningNumbers(vecValues.size());
    objPlot.addDataLine<int, Y>(strName, vecNumbers.data(), vecValues.data(), static_cast<int>(vecValues.size()));
    return true;
}
} // namespace

void CLongitudinalStudyBrowserWnd::onActivatePlotSelectCB(int nIndex)
{
    const int nResults = m_pView->getAnalysisParams().size(); // of both kinds
    if (nResults < 1)
    {
        return;
    }
    m_pPlot->setXAxisLabel(QStringLiteral("Results"));
    // The mode that the user chose in the plot survives; colours stay the window's own.
    DISPLAY_SETTINGS sShown;
    for (const QString& strName : PlotValues::lineNames())
    {
        if (m_pPlot->getDisplaySettings(strName, sShown))
        {
            m_objPlotDisplaySettings.nDisplayMode = m_pPlot->getCurrentDisplayMode();
            break;
        }
    }
    m_pPlot->clear();
    plotMeasure(nIndex, PlotValues::kindOfEntry(m_objForm.m_pAnalysisSelectCB->currentIndex()));
    if (nResults < s_nManyResults)
    {
        m_pPlot->setXAxisRangeStep(1.0);
    }
    m_pPlot->update();
}

/// Adds the lines of a measure over the results of a kind. Without such a result there is no line, and the label stays as it was.
void CLongitudinalStudyBrowserWnd::plotMeasure(int nMeasure, int nKind)
{
    QList<sAnalysisBase>& lstResults = m_pView->getAnalysisParams();
    const QString strFirst = PlotValues::lineNames().value(nMeasure);
    const QString strSecond = PlotValues::lineNames().last();
    bool bAdded = false;
    switch (nMeasure)
    {
    case PlotValues::eQuantification:
        bAdded = addLine(*m_pPlot, strFirst, PlotValues::totals(lstResults, nKind, m_bSelectVoxelMode));
        break;
    case PlotValues::eReducedChi2:
        bAdded = addLine(*m_pPlot, strFirst, PlotValues::numbers(lstResults, nKind, &sAnalysisBase::dReducedChi2));
        break;
    case PlotValues::eVoxelSize:
        bAdded = addLine(*m_pPlot, strFirst, PlotValues::numbers(lstResults, nKind, &sAnalysisBase::dFinalVoxelSize)) &&
                 addLine(*m_pPlot, strSecond, PlotValues::numbers(lstResults, nKind, &sAnalysisBase::dStartingVoxelSize));
        break;
    default:
        break;
    }
    if (!bAdded)
    {
        return;
    }
    m_pPlot->setYAxisLabel(PlotValues::yAxisLabel(nMeasure, nKind));
    m_pPlot->setDisplaySettings(strFirst, m_objPlotDisplaySettings);
    if (nMeasure == PlotValues::eVoxelSize)
    {
        DISPLAY_SETTINGS sSecond = m_objPlotDisplaySettings;
        sSecond.lineColor = Qt::green;
        sSecond.objPointProperties.pointColor = Qt::darkRed;
        m_pPlot->setDisplaySettings(strSecond, sSecond);
    }
}

void CLongitudinalStudyBrowserWnd::onActivateAnalysisSelectCB(int)
{
    onSignalUpdatePlotTab();
}

void CLongitudinalStudyBrowserWnd::onSignalUpdatePlotTab()
{
    onActivatePlotSelectCB(m_objForm.m_pPlotSelectCB->currentIndex());
}
