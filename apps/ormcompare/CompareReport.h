#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <limits>

/// When the sequence of a result was taken, and of whom.
struct SResultTime
{
    QString m_strSubject;                                      ///< as the sequence has it
    QString m_strDate;                                         ///< as the sequence has it
    double m_fDays = std::numeric_limits<double>::quiet_NaN(); ///< since the subject's first time point; NaN: unknown
};

/// A result that was loaded, in the figures of the report.
struct SLoadedResult
{
    QString m_strKind;              ///< "SOLA" or "NOVA"
    QString m_strSequence;          ///< sequence ID
    QString m_strName;              ///< result name
    QString m_strUnit;              ///< unit of its values
    SResultTime m_objTime;          ///< of its sequence
    qint64 m_nVertices = 0;         ///< of the surface
    qint64 m_nTriangles = 0;        ///< of the surface
    qint64 m_nVoxels = 0;           ///< of the displayed volume
    double m_fVoxelSize = 0.0;      ///< of the displayed volume, mm
    double m_fMin = 0.0;            ///< lowest voxel value
    double m_fMax = 0.0;            ///< highest voxel value
    double m_fTotal = 0.0;          ///< sum of the voxels
    double m_fSelectedTotal = 0.0;  ///< sum of the marked voxels
    double m_fReducedChi2 = 0.0;    ///< of the reconstruction
    double m_fFinalVoxelSize = 0.0; ///< of the reconstruction, mm
    double m_fStartVoxelSize = 0.0; ///< of the reconstruction, mm
    QStringList m_lstWavelengths;   ///< of its photon density maps
    double m_fLoadMs = 0.0;         ///< reading alone
    double m_fPressMs = 0.0;        ///< the whole press of Load
};

/// A result that could not be loaded.
struct SFailedResult
{
    QString m_strKind;     ///< "SOLA" or "NOVA"
    QString m_strSequence; ///< sequence ID
    QString m_strName;     ///< result name
    QString m_strReason;   ///< the log line or box text
    SResultTime m_objTime; ///< of its sequence
};

/// A time point that was asked for and gave no result.
struct SEmptyTimePoint
{
    QString m_strKind;     ///< "SOLA" or "NOVA"
    QString m_strSequence; ///< sequence ID
    SResultTime m_objTime; ///< of the sequence
};

/// Lowest and highest value of each kind; -1 and -1 for a kind without results.
struct SKindRanges
{
    double m_fSolaMin = -1.0, m_fSolaMax = -1.0;
    double m_fNovaMin = -1.0, m_fNovaMax = -1.0;
};

/// All that a run of the program found out.
struct SCompareReport
{
    QVector<SLoadedResult> m_lstResults; ///< in tile order
    QVector<SFailedResult> m_lstFailed;  ///< in the order of loading
    QVector<SEmptyTimePoint> m_lstEmpty; ///< in the order of the window's list
    bool m_bMeasured = false;            ///< a region was marked: its sums are the values of interest
    SKindRanges m_objRange;              ///< over the loaded results
    SKindRanges m_objBar;                ///< what the colour bars say
    QVector<double> m_lstFrameMs;        ///< of each measured repaint
    double m_fPeakRssMb = 0.0;           ///< highest resident memory so far
};

namespace CompareReport
{
/// The report as JSON text.
QByteArray json(const SCompareReport& report);

/// The results as comma-separated values, one line for each below a line of column names: those that were loaded, then those that
/// could not be, then the time points without any. What there is no value of is empty.
QByteArray csv(const SCompareReport& report);

/// The middle of the numbers (the lower one of two), 0 where there are none.
double median(QVector<double> lstNumbers);
} // namespace CompareReport
