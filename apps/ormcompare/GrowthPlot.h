#pragma once

#include "GrowthSeries.h"

#include <QImage>

namespace GrowthPlot
{
/// The points of the series with the lines fitted to them over the days, on a logarithmic axis: one plot for each kind that has a point,
/// one below the other. Null where no series has a point. Needs an application with windows.
QImage draw(const QVector<SGrowthSeries>& lstSeries);
} // namespace GrowthPlot
