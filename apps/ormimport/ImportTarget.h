#pragma once

#include "ImportOptions.h"
#include "SavedResult.h"

/// The sequence that gets a result: one that a study has, or a new one. Everything is written whole or not at all.
class CImportTarget
{
public:
    explicit CImportTarget(const SImportOptions& options) : m_options(options) {}

    /// Looks for the sequence in the study. An empty text, or why it can get no such result: it is of another subject, date or kind,
    /// cannot be read, or has a result of that name.
    QString find();

    /// Writes the result, with the sequence where there is none yet. Nothing that exists is changed but the index of the results, which
    /// gets one entry more. An empty text, or why nothing was written.
    QString write(SSavedResult& result);

    bool isNew() const { return m_strFolder.isEmpty(); }
    QString documentFile() const { return m_strDocument; } ///< what was written

private:
    QString checkSequence(const QString& strSequenceFile);
    QString readIndex(QString& strEntry, QByteArray& baIndex) const;
    QString writeNew(SSavedResult& result);
    QString writeBeside(SSavedResult& result);
    QString kind() const { return m_options.m_bNova ? QStringLiteral("NOVA") : QStringLiteral("SOLA"); }

    const SImportOptions& m_options;
    QString m_strFolder;     ///< of the sequence; empty: it is new
    QString m_strSequenceID; ///< as the sequence has it
    QStringList m_lstClicks; ///< its clicks
    QString m_strDocument;
};
