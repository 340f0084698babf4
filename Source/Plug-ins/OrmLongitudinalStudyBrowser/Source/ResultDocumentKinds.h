#pragma once

#include "SAnalysisBase.h"

#include <QStringList>

#include <array>

/// How result documents of the two kinds differ: tag names, messages, where each message goes, and which absences are
/// tolerated. One walk reads both kinds; everything in which they part stands in the two tables of the source.
namespace ResultDocument
{

/// Where a message of the walk goes.
enum class EChannel
{
    None, ///< nothing is said
    Log,  ///< an entry of level 1
    Hint  ///< the status hint of the palette
};

/// One message; "%1" in a text stands for the palette's analysis name.
struct SMessage
{
    EChannel eChannel = EChannel::None;
    const char* pText = "";
};

/// A block with a "Count" and one child per entry.
struct SListBlock
{
    const char* pBlock = nullptr;                 ///< second tag; null: the kind has no such block
    const char* pEntry = "";                      ///< child tag
    const char* pKey = "";                        ///< key of the child
    SMessage objNoCount;                          ///< the block or its count can't be read; the walk goes on
    SMessage objNoEntry;                          ///< an entry can't be read; the walk ends
    int nStride = 1;                              ///< distance of the indexes that are read
    QStringList SAnalysisBase::*pField = nullptr; ///< where the entries go
};

/// A block of photon densities: one row per name, one value per vertex.
struct SDensityBlock
{
    const char* pBlock = "";  ///< second tag
    const char* pValue = "";  ///< child tag of version 1.0, one per value
    const char* pValues = ""; ///< child tag of version 2.0, one per row
    SMessage objNoHeader;     ///< the two counts can't be read; the walk goes on
    SMessage objMismatch;     ///< the counts don't agree with what was read before; the walk ends
    SMessage objNoMemory10;   ///< version 1.0: no memory for a row
    SMessage objNoValue10;    ///< version 1.0: a value can't be read
    SMessage objNoMemory20;   ///< version 2.0: no memory for a row
    SMessage objNoValue20;    ///< version 2.0: a row can't be read
};

/// Everything in which the kinds differ, in the order in which the walk comes by.
struct SKind // NOLINT(clang-analyzer-optin.performance.Padding): two objects, to be read from top to bottom
{
    int nKind = 0;          ///< 0 SOLA, 1 NOVA
    const char* pName = ""; ///< "SOLA" or "NOVA", as the host's section readers know it
    const char* pFirstTag = "";

    const char* pProgressFile = "";
    SMessage objNoDocument; ///< the file can't be read, or its version isn't known

    const char* pProgressUnit = "";
    const char* pUnitMismatch = ""; ///< level 2; %1 the result's unit, %2 the selected one

    const char* pProgressMesh = "";
    SMessage objReadingMesh;
    SMessage objNoMesh10; ///< version 2.0 has no message

    const char* pSequenceBlock = "";
    const char* pSequenceEntry = "";
    SMessage objNoSequence; ///< tolerated

    SListBlock objNames;          ///< wavelengths or image sources; pField isn't used
    bool bNamesHaveViews = false; ///< the block has a second count, "Views", which tells the number of names unless it is 0
    std::array<SListBlock, 2> lstFilters;
    SListBlock objClicks;

    const char* pOpticalBlock = nullptr; ///< null: the kind has none
    const char* pOpticalEntry = "";
    SMessage objNoOptical; ///< tolerated

    SMessage objReadingHeightMap;
    const char* pHeightMapBlock = "";
    const char* pHeightMapEntry = "";
    SMessage objNoHeightMap; ///< tolerated
    SMessage objBadHeightMap;

    const char* pProgressDensity = "";
    SMessage objReadingDensity;
    const char* pDensityCountKey = "";
    SDensityBlock objSimulated;
    const char* pProgressMeasured = "";
    SDensityBlock objMeasured;

    const char* pProgressVolume = "";
    SMessage objReadingVolume;
    SMessage objNoVolume;

    bool bMaskAndRegistration = false; ///< mask and registration matrices are read too
    SMessage objNoRegistration;        ///< tolerated

    const char* pProgressDisplay = nullptr; ///< posted as step 8 before step 7; null: not posted
    const char* pProgressResults = "";
    SMessage objReadingResults;
    const char* pResultsBlock = "";
    const char* pResultsEntry = "";
    bool bResultsRequired = false; ///< a table that can't be found ends the walk
    SMessage objNoResults;
    SMessage objBadResultsRow;
    const char* pDroppedKey = ""; ///< rows whose key contains this are left out
    bool bVersionRow = false;     ///< a row "Version" with the software version is added
};

/// Luminescent results.
const SKind& sola();
/// Fluorescent results.
const SKind& nova();

} // namespace ResultDocument
