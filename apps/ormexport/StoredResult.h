#pragma once

#include "OpenWriters.h"

#include <QStringList>

/// A saved result of a study, by what the study's files say of it.
struct SResultPlace
{
    QString m_strKind;     ///< "SOLA" or "NOVA"
    QString m_strSequence; ///< ID
    QString m_strName;     ///< as it is listed
    QString m_strFile;     ///< the document; empty: the index names none that could be read
    QString m_strSubject;  ///< may be empty
    QString m_strDateTime; ///< as the sequence has it; may be empty

    QString text() const { return QStringLiteral("%1 %2/%3").arg(m_strKind, m_strSequence, m_strName); }
};

/// What is written of a saved result.
struct SStoredResult
{
    SOpenSurface m_surface;
    SCubicGrid m_grid;        ///< without a voxel: of size 0
    QString m_strUnit;        ///< of the amounts
    double m_fDivisor = 1.0;  ///< what stored amounts were divided by
    QByteArray m_baVoxels;    ///< the table
    QStringList m_lstRemarks; ///< where the result comes from
};

namespace StoredResults
{
/// All saved results of the sequences under the folders, in the order in which they are found. Problems are appended, a sentence each.
std::vector<SResultPlace> list(const QStringList& lstFolders, QStringList& lstProblems);

/// Reads a result by the tool's own reader. An empty text, or why it cannot be read.
/// @param bAsStored the amounts stay as they are stored
QString read(const SResultPlace& place, bool bAsStored, SStoredResult& result);
} // namespace StoredResults
