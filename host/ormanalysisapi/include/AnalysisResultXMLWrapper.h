#pragma once

#include "CPLResultXMLWrapper.h"
#include "SFMatrix.h"

#include <QMap>

/// Result document of an analysis: the reader of documents plus the sections that belong to analyses alone.
class AnalysisResultXMLWrapper : public CPLResultXMLWrapper
{
public:
    AnalysisResultXMLWrapper();
    ~AnalysisResultXMLWrapper() override;

    /// Fills @p pMatrices with the registration matrices of the data tag @p strFirstTag (for instance "Orm3.0.SOLA.Data") by
    /// their "Index"; a repeated index keeps the last one. The section is the data tag's name with "Registration.Matrices" in
    /// place of "Data". False, with the map as it was, where there is no such section or where it is damaged (fewer matrices than it
    /// counts, an index that is no int, anything but 16 decimal numbers separated by single blanks).
    bool getRegistrationMatrices(const QString& strFirstTag, QMap<int, _SFMatrix>* pMatrices);
};
