#pragma once

#include <QString>

/// What to make.
struct SPhantomOptions
{
    QString m_strFolder;         ///< study folder; made where it is missing
    int m_nTimePoints = 5;       ///< at least 1
    bool m_bSola = true;         ///< luminescent sequences with SOLA results
    bool m_bNova = true;         ///< fluorescent sequences with NOVA results
    int m_nVertices = 2500;      ///< of the surface, about
    double m_fVoxelSize = 1.0;   ///< mm
    QString m_strFormat = "2.0"; ///< format version of the documents, "1.0" or "2.0"
    unsigned int m_nSeed = 1;    ///< the same seed makes the same bytes
};

/// Writes a study: one mouse-like subject at several time points, with two sources that grow from one time point to the next.
class CPhantomStudy
{
public:
    explicit CPhantomStudy(const SPhantomOptions& options);

    /// Writes everything. False on the first file that cannot be written; @p strError then names it and says why.
    bool write(QString& strError) const;

private:
    bool writeSequence(int nTimePoint, bool bNova, QString& strError) const;

    SPhantomOptions m_options;
};
