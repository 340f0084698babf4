#pragma once

#include "OrmSequenceScanner.h"

#include <QList>
#include <QObject>

class COrmDataset;
class COrmSequenceDataset;

/// The sequences that are open in the host. Owns them, and tells the host's signal hub of every one that comes, changes or goes.
/// Lives on the window's thread.
class COrmSequenceCollection : public QObject
{
    Q_OBJECT

public:
    explicit COrmSequenceCollection(QObject* pParent = nullptr);
    /// Closes what is open, telling the hub.
    ~COrmSequenceCollection() override;

    /// Opens the sequence unless its ID is open already. Returns it, or null with one sentence in @p pstrReason; a folder that is
    /// open already gives null without a reason.
    COrmSequenceDataset* add(const SSequenceFacts& sFacts, QString* pstrReason = nullptr);
    /// Searches @p lstPaths and opens what is found, all in one call. The problems of the outcome are logged too.
    SScanOutcome open(const QStringList& lstPaths, const OrmSequenceScanner::FnProgress& fnProgress = OrmSequenceScanner::FnProgress());
    /// Closes the sequence with that ID; false when none is open. The object itself goes when control returns to the event loop.
    bool close(const QString& strSequenceID);
    /// Closes all, the last one opened first.
    void closeAll();
    /// Reads the files of the sequence again and tells the hub what changed. A sequence that cannot be read any more stays open as it
    /// is; the sentence that says so is returned.
    QString refresh(const QString& strSequenceID);

    /// The open sequences in the order of opening.
    QList<COrmSequenceDataset*> sequences() const { return m_lstSequences; }

signals:
    void added(COrmSequenceDataset* pSequence);        ///< after the hub was told
    void changed(COrmSequenceDataset* pSequence);      ///< after the hub was told
    void aboutToClose(COrmSequenceDataset* pSequence); ///< before the hub is told
    void closed(const QString& strSequenceID);         ///< after the hub was told

private:
    QList<COrmSequenceDataset*> m_lstSequences; ///< owned as children
};
