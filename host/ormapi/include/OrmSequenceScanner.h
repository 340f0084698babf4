#pragma once

#include "SSequenceFacts.h"

#include <QStringList>
#include <functional>

/// How far a search for sequences has come.
struct SScanProgress
{
    qint64 m_nFolders = 0;   ///< folders looked at so far
    qint64 m_nSequences = 0; ///< sequences found so far
    QString m_strFolder;     ///< the folder that is looked at
};

/// How a search for sequences ended.
struct SScanOutcome
{
    bool m_bCancelled = false; ///< the caller asked to stop
    qint64 m_nFolders = 0;     ///< folders looked at
    qint64 m_nSequences = 0;   ///< sequences found
    QStringList m_lstProblems; ///< one sentence per file or folder that could not be used
};

/// Searches folders for sequences. No object of the window's is touched, so a search may run on any thread.
namespace OrmSequenceScanner
{
constexpr int s_nMaxDepth = 32;           ///< folders nested deeper below a given one are not looked at
constexpr qint64 s_nMaxFolders = 200000;  ///< a search ends, with a problem told, after that many folders
constexpr qint64 s_nMaxSequences = 20000; ///< likewise
constexpr int s_nMaxProblems = 1000;      ///< more problems are counted, not told one by one

using FnFound = std::function<void(const SSequenceFacts&)>;
using FnProgress = std::function<bool(const SScanProgress&)>; ///< returns false to stop the search

/// True for the name of a sequence information file.
bool isSequenceFileName(const QString& strFileName);

/// Hands every sequence under @p lstPaths to @p fnFound, in the order of the paths and, below each, by name. A path is a
/// folder or a sequence information file. Links below a given folder are not followed. @p fnProgress is asked at each folder
/// and may be empty.
SScanOutcome scan(const QStringList& lstPaths, const FnFound& fnFound, const FnProgress& fnProgress = FnProgress());
} // namespace OrmSequenceScanner
