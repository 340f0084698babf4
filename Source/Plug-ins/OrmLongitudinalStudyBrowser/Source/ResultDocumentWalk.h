#pragma once

#include "ResultDocumentKinds.h"

#include <QString>
#include <QStringList>

class AnalysisResultXMLWrapper;

namespace ResultDocument
{

/// What the walk asks of the window it works for. All operations are called on the GUI thread, in the order of the walk.
class CWalkHost
{
public:
    virtual ~CWalkHost() = default;

    virtual void log(const QString& strMessage, long nLevel) = 0;
    virtual void hint(const QString& strMessage) = 0;
    virtual void progress(const QString& strMessage, int nStep) = 0;
    /// Stands for "%1" in the texts of the tables.
    virtual QString analysisName() const = 0;
    /// The unit that the user selected for this kind, as the readers compare it; empty: none.
    virtual QString selectedUnit() const = 0;
    /// The names of the document were read in full.
    virtual void namesRead(const QStringList& lstNames) = 0;

    // The host's own sections.
    virtual void readQuantification(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) = 0;
    virtual void readSoftwareVersion(AnalysisResultXMLWrapper& objXML, QString& strVersion) = 0;
    virtual bool readMesh(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) = 0;
    virtual bool readVolume(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord, QString& strKind) = 0;
    virtual void readMask(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) = 0;

    /// Waits until nobody holds the prompt that asks for saving results.
    virtual void waitForSavePrompt() = 0;
};

/// What the walk fills: the record, and of the derived record the two fields that both kinds have under different names.
struct STarget
{
    SAnalysisBase& objRecord;
    int& nNameCount;       ///< nWavelengthCount or nImageSourceCount
    QStringList& lstNames; ///< lstWavelengths or lstImageSources
};

/// Reads the document at the path into the target, step by step, and says through the host what it does and why it gives
/// up. A count of the document is believed only where the document holds the values. Memory that runs short ends in the
/// message of the step at work; nothing is thrown. False if the document was given up.
bool read(const SKind& objKind, CWalkHost& objHost, const QString& strPath, const STarget& objTarget);

/// The software version as it is kept: "N/A" for an empty text; of a text that holds the word version only what follows
/// the last colon.
QString normalisedSoftwareVersion(const QString& strVersion);

} // namespace ResultDocument
