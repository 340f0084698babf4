#pragma once

#include "COrmXYPlot.h"
#include "CPlotPointer.h"
#include "CPlotSheet.h"

/// The sources of the plot share this.
struct COrmXYPlot::SPrivate
{
    CPlotSheet* m_pSheet = nullptr;     ///< child of the plot
    CPlotPointer* m_pPointer = nullptr; ///< child of the plot, over the sheet
    int m_nDisplayMode = COrmXYPlot::LineMode;
    QString m_strFolder; ///< where numbers were saved last
};
