#pragma once

#include <QList>
#include <QString>

class COrmSequenceDataset;

/// Which sequences the tool lists, under which kind, and how an entry of the list leads back to its sequence.
namespace SequenceEntries
{
/// What decides on the kind of a sequence.
struct SFlags
{
    bool m_bTomographic = false;       ///< has a surface: of structured light or of CT
    bool m_bLuminescent = false;       ///< has luminescent images
    bool m_bFluorescent = false;       ///< has fluorescent images
    bool m_bTransIllumination = false; ///< lit from below, spot by spot
    bool m_bOverview = false;          ///< only the overview of a trans-illumination
};

/// The flags of an open sequence.
SFlags flagsOf(const COrmSequenceDataset& objSequence);

/// A sequence can be both; each caller settles for itself what follows from that.
bool isSOLA(const SFlags& sFlags);
bool isNOVA(const SFlags& sFlags);

/// What the text of an entry of the kind begins with, before the sequence ID: 0 SOLA, 1 NOVA.
QString prefixOf(int nKind);

/// What a list entry stands for.
struct SSelection
{
    int m_nKind = -1;        ///< 0 SOLA, 1 NOVA; -1: the text names no kind
    QString m_strKind;       ///< "SOLA" or "NOVA"; null: the text names no kind
    QString m_strSequenceID; ///< null: the text names no kind
};

/// Reads the text of an entry: the kind word, a blank, the sequence ID. Every occurrence of the kind word and its blank is taken out,
/// and SOLA is looked for before NOVA, whose kind wins where both stand; the ID loses the blanks at its ends.
SSelection selectionOf(const QString& strEntryText);

/// Appends to @p lstTarget, in order, what it does not hold yet. Upper and lower case differ.
void appendMissing(QList<QString>& lstTarget, const QList<QString>& lstSource);
} // namespace SequenceEntries
