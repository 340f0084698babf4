#pragma once

#include "CommandLine.h"

#include <QString>
#include <QStringList>

/// What was asked for on the command line.
struct SExportOptions : SUsualOptions
{
    QStringList m_lstFolders;  ///< in which sequences are searched
    QStringList m_lstPatterns; ///< of "KIND SEQUENCE/NAME"; empty: all results
    QString m_strSurface;      ///< file; empty: none
    QString m_strVolume;       ///< file; empty: none
    QString m_strVoxels;       ///< file; empty: none
    QString m_strOut;          ///< folder for the files of all results; empty: none
    bool m_bAsStored = false;  ///< amounts as results store them, not in their unit
};

namespace ExportOptions
{
/// Reads the command line. An empty text, or what is wrong with it.
QString read(const QStringList& lstArguments, SExportOptions& options);
QString help();
} // namespace ExportOptions
