#pragma once

#include "SResultDocument.h"

#include <QMap>
#include <QString>
#include <QTemporaryDir>

/// How a sequence was acquired, as far as its files tell. A sequence may be both luminescent and fluorescent.
struct SSequenceLook
{
    bool bStructuredLight = true;
    bool bCT = false;
    bool bLuminescent = true;
    bool bFluorescent = false;
    bool bTransIllumination = false; ///< a single spot
    bool bOverview = false;          ///< overview of a trans-illumination
    double dFieldOfView = 13.6;      ///< cm
    int nClicks = 2;

    /// What the tool lists as SOLA, or as NOVA.
    static SSequenceLook luminescent() { return {}; }
    static SSequenceLook fluorescent();
};

/// Writes a study into a folder of its own that goes away with the object: sequences with their clicks, saved results, and the indexes
/// of both kinds.
class CStudyWriter
{
public:
    CStudyWriter();

    /// The folder with the sequences' folders, without a closing separator.
    QString folder() const { return m_objFolder.path(); }
    /// The folder of a sequence, with its closing separator.
    QString sequenceFolder(const QString& strSequenceID) const;

    /// Writes the files of a sequence, without results.
    void addSequence(const QString& strSequenceID, const SSequenceLook& objLook = SSequenceLook());
    /// Writes a result and its entry in the index of its kind. Returns the path of its file.
    QString addResult(const QString& strSequenceID, const QString& strMenuName, const SResultDocument& objDocument);
    /// The same with any bytes for a document.
    QString addResultFile(const QString& strSequenceID, int nKind, const QString& strMenuName, const QByteArray& byContent);
    /// An entry of the index alone.
    void addIndexEntry(const QString& strSequenceID, int nKind, const QString& strMenuName, const QString& strFileName);
    /// Takes an entry out of the index again; the file stays.
    void removeIndexEntry(const QString& strSequenceID, int nKind, const QString& strMenuName);

    /// Writes any file, with the folders it needs; the test ends where that fails.
    static void writeFile(const QString& strFile, const QByteArray& byContent);

private:
    struct SEntry
    {
        QString strMenuName;
        QString strFileName;
    };
    void writeIndex(const QString& strSequenceID, int nKind);
    QList<SEntry>& entries(const QString& strSequenceID, int nKind) { return m_mapEntries[strSequenceID + QString::number(nKind)]; }

    QTemporaryDir m_objFolder;
    QMap<QString, QList<SEntry>> m_mapEntries; ///< by sequence and kind
    int m_nFiles = 0;                          ///< results written, for their file names
};
