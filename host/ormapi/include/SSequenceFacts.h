#pragma once

#include "SClickFacts.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>

/// What the host keeps of one sequence folder. Plain values, so that a folder can be read on another thread than the window's.
struct SSequenceFacts
{
    QString m_strSequenceID;          ///< the key of the sequence everywhere; never empty in a sequence that can be opened
    QString m_strSequenceFile;        ///< absolute path of the sequence information file
    QString m_strInfoPath;            ///< absolute folder of that file, with its closing separator
    QString m_strSubject;             ///< as the file has it; may be empty
    QString m_strDateTime;            ///< as the file has it; may be empty or no date at all
    bool m_bCT = false;               ///< the file has the section "CT Acquisition Parameters"
    bool m_bOverview = false;         ///< "Trans-illumination Overview" is 1
    int m_nSOLAResults = 0;           ///< saved results listed in XML/SOLA.txt
    int m_nNOVAResults = 0;           ///< saved results listed in XML/NOVA.txt
    QVector<SClickFacts> m_lstClicks; ///< the readable clicks, in the order of the file
    QStringList m_lstProblems;        ///< one sentence per click that was left out

    bool operator==(const SSequenceFacts& other) const;
    bool operator!=(const SSequenceFacts& other) const { return !(*this == other); }
};

namespace OrmSequenceFacts
{
/// Some click has a structured-light surface.
bool hasStructuredLight(const SSequenceFacts& sSequence);
/// Some click is fluorescent.
bool isFluorescent(const SSequenceFacts& sSequence);
/// Some click is luminescent.
bool isLuminescent(const SSequenceFacts& sSequence);
/// Some click has a single trans-illumination spot.
bool isTransIllumination(const SSequenceFacts& sSequence);

/// Reads the sequence that @p strSequenceFile describes, its clicks and the number of its saved results.
/// Returns an empty text, or one sentence that says why the sequence cannot be opened: the file cannot be read,
/// it names no sequence, or not one of its clicks can be read. Opens regular files only; safe on any thread.
/// @p fnGoOn, when given, is asked at each click; when it says false, reading ends early with a sentence that says so.
QString read(const QString& strSequenceFile, SSequenceFacts& sSequence, const std::function<bool()>& fnGoOn = std::function<bool()>());
} // namespace OrmSequenceFacts
