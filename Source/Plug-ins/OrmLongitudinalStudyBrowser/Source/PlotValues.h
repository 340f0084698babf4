#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

struct sAnalysisBase;

/// What the plots tab compares, without the plot: one value per loaded result of a kind, in tile order.
namespace PlotValues
{
/// The entries of the combo of plots.
enum EMeasure
{
    eQuantification = 0,
    eReducedChi2 = 1,
    eVoxelSize = 2
};

/// The names of the plot's lines: the first three by measure, the last one beside that of the voxel sizes.
const QStringList& lineNames();

/// The kind that an entry of the combo of kinds stands for: 0 SOLA, 1 NOVA. Every entry but the first is NOVA, and so is none.
int kindOfEntry(int nIndex);

/// The running numbers 0, 1, 2 ... of results.
std::vector<int> runningNumbers(std::size_t nResults);

/// The total of each result of the kind in the unit that its volume has, over its marked voxels or over all. The results stay as they
/// are.
std::vector<float> totals(QList<sAnalysisBase>& lstResults, int nKind, bool bMarkedOnly);

/// A number of each result of the kind.
std::vector<double> numbers(const QList<sAnalysisBase>& lstResults, int nKind, double sAnalysisBase::*pNumber);

/// The label of the y axis for a measure; empty for an unknown one. It names one unit per kind, whichever the user has chosen.
QString yAxisLabel(int nMeasure, int nKind);
} // namespace PlotValues
