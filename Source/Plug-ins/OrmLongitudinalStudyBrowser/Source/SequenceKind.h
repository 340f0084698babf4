#pragma once

#include <QString>

class CPLClickInfo;
class CPLSequenceInfo;

/// The kind of a sequence on disk, told from its information files alone: no image of it is read.
namespace SequenceKind
{
/// What decides on the kind, over all clicks of a sequence.
struct SFlags
{
    bool m_bStructure = false;   ///< some click has a surface by structured light
    bool m_bCT = false;          ///< the sequence has a surface by CT
    bool m_bLuminescent = false; ///< some click is luminescent
    bool m_bFluorescent = false; ///< some click is fluorescent
    bool m_bMultiSpot = false;   ///< some click was lit from below at several spots
    bool m_bSpot = false;        ///< some click was lit from below at a spot whose coordinates are both above 0
};

/// The kind: "SOLA" with a surface and luminescent clicks alone, none lit from below; "NOVA" with a surface and fluorescent clicks
/// alone, lit from below at single spots; otherwise a null string.
QString kindOf(const SFlags& sFlags);

/// Adds what a click says. A click without sections, such as one that could not be read, says nothing.
void addClick(SFlags& sFlags, const CPLClickInfo& objClick);

/// Adds the position of a click's spot as its file gives it, in cm. The x value decides whether there are several spots, separated by
/// ';'; of several the first counts. What is no number counts as 0.
void addSpot(SFlags& sFlags, const QString& strX, const QString& strY);

/// Whether the sequence has the section of a CT surface.
bool hasCTSection(CPLSequenceInfo& objSequence);

/// The kind of the sequence of that file, whose clicks lie in folders beside it: "SOLA", "NOVA", or null. A sequence of fewer than two
/// clicks, and one whose file cannot be read, is of no kind.
QString ofFile(const QString& strSequenceFile);
} // namespace SequenceKind
