#pragma once

#include <QRectF>
#include <QRegularExpression>
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
struct SCompareOptions
{
    QStringList m_lstFolders;              ///< at least one
    QStringList m_lstPatterns;             ///< empty: all results that the unit fits
    QString m_strUnit;                     ///< text of a unit button; empty: the form's own choices
    QString m_strViewFile;                 ///< picture of the view; empty: none
    QString m_strWindowFile;               ///< picture of the window; empty: none
    QString m_strReportFile;               ///< JSON report; empty: none
    QString m_strTableFile;                ///< table of the results, CSV; empty: none
    QVector<SPlotRequest> m_lstPlots;      ///< plots to write
    QSize m_objSize = QSize(1200, 800);    ///< of the view, pixels
    std::optional<int> m_nRotate;          ///< degrees, 0 to 360
    QString m_strColors;                   ///< name of a colour table; empty: as the window sets it
    std::optional<SValueRange> m_objRange; ///< colour range of the kinds that are shown
    bool m_bLog = false;                   ///< logarithmic colour scale
    QString m_strWavelength;               ///< density map for the surfaces, by its name; empty: as loaded
    std::optional<QRectF> m_objRegion;     ///< region to measure, its corners as fractions of the first picture, origin bottom left
    int m_nFrames = 0;                     ///< repaints to measure
    bool m_bQuiet = false;                 ///< no progress on the terminal
    bool m_bHelp = false;                  ///< only the help was asked for
    bool m_bVersion = false;               ///< only the version was asked for
};

namespace CompareOptions
{
/// Reads the arguments (the program's name first). Returns an empty text, or one sentence on what is wrong.
QString read(const QStringList& lstArguments, SCompareOptions& options);

/// The text that --help prints.
QString help();

/// A pattern as an expression for a whole "KIND SEQUENCE/NAME" text: '*', '?' and '[...]' match any characters, '/' included; case counts.
QRegularExpression pattern(const QString& strPattern);
} // namespace CompareOptions
