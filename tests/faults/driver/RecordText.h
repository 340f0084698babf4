#pragma once

#include <QByteArray>

struct SAnalysisBase;
struct sAnalysisBase;

/// What a result says, as a digest: two records with the same digest show the same tile and the same numbers.
namespace RecordText
{
/// Of a record as the readers fill it: surface, source, densities, results table, calibration, sequence.
QByteArray digest(SAnalysisBase& objRecord);

/// Of a record as the view shows it.
QByteArray digest(sAnalysisBase& objRecord);
} // namespace RecordText
