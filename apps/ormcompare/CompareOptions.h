#pragma once

#include "CommandLine.h"
#include "PictureState.h"

#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// A range of values.
struct SValueRange
{
    double m_fMin = 0.0;
    double m_fMax = 0.0;
};

/// A plot that is to be written.
struct SPlotRequest
{
    int m_nKind = -1;   ///< 0 SOLA, 1 NOVA, -1 the first kind that is loaded
    int m_nMeasure = 0; ///< entry of the window's list of measures
    QString m_strFile;
};

/// What the command line asks for.
struct SCompareOptions : SUsualOptions
{
    QStringList m_lstFolders;              ///< at least one, but for a folder of studies
    QStringList m_lstPatterns;             ///< empty: all results that the unit fits
    QString m_strUnit;                     ///< text of a unit button; empty: the form's own choices
    QString m_strViewFile;                 ///< picture of the view; empty: none
    QString m_strWindowFile;               ///< picture of the window; empty: none
    QString m_strReportFile;               ///< JSON report; empty: none
    QString m_strTableFile;                ///< table of the results, CSV; empty: none
    QStringList m_lstGrowthFiles;          ///< growth over time, tables (csv) or pictures by their extensions
    QString m_strOutFolder;                ///< folder for the usual files of a study, or of each study; empty: none
    QString m_strRoot;                     ///< folder whose subfolders are studies; empty: the folders are one study
    bool m_bUsualFiles = false;            ///< the files are the usual ones of a study: what it has nothing for is left out
    int m_nJobs = 1;                       ///< studies at a time
    QString m_strLike;                     ///< picture to repeat; empty: none
    QStringList m_lstLook;                 ///< the options that decide what pictures show, as arguments; the size is always among them
    QVector<SResultKey> m_lstKeys;         ///< if not empty, exactly these results
    QVector<SResultKey> m_lstTried;        ///< and these are tried, where they are
    QVector<SPlotRequest> m_lstPlots;      ///< plots to write
    QSize m_objSize = QSize(1200, 800);    ///< of the view, pixels
    std::optional<int> m_nRotate;          ///< degrees, 0 to 360
    QString m_strColors;                   ///< name of a colour table; empty: as the window sets it
    std::optional<SValueRange> m_objRange; ///< colour range of the kinds that are shown
    bool m_bLog = false;                   ///< logarithmic colour scale
    QString m_strWavelength;               ///< density map for the surfaces, by its name; empty: as loaded
    std::optional<QRectF> m_objRegion;     ///< region to measure, its corners as fractions of the first picture, origin bottom left
    int m_nFrames = 0;                     ///< repaints to measure
};

namespace CompareOptions
{
/// Reads the arguments (the program's name first). Returns an empty text, or one sentence on what is wrong.
QString read(const QStringList& lstArguments, SCompareOptions& options);

/// The arguments that decide what files of a study show, whatever the study.
QStringList contentArguments(const SCompareOptions& options);

/// Takes the look of another picture.
/// @param lstLook arguments as in SCompareOptions::m_lstLook, from a file that anyone may have changed
/// @return an empty text, or what is wrong with an argument
QString takeLook(const QStringList& lstLook, SCompareOptions& options);

/// The text that --help prints.
QString help();
} // namespace CompareOptions
