#pragma once

#include "OrmSequenceScanner.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <memory>

class COrmSequenceCollection;

/// Searches folders for sequences on a thread of its own and opens what is found, on the window's thread and bit by bit, so that the
/// window stays usable. Paths that are given while a search runs are searched after it.
class COrmSequenceOpener : public QObject
{
    Q_OBJECT

public:
    explicit COrmSequenceOpener(COrmSequenceCollection* pCollection, QObject* pParent = nullptr);
    /// Asks a running search to stop and waits for it no longer than half a second: a folder that does not answer may hold it up.
    ~COrmSequenceOpener() override;

    void open(const QStringList& lstPaths);
    /// Stops the search and forgets the paths that wait. What was opened stays open.
    void cancel();
    bool isBusy() const { return m_bBusy; }

    /// What came of all that was searched in one go.
    struct SSummary
    {
        bool m_bCancelled = false;
        int m_nOpened = 0;         ///< sequences opened
        QStringList m_lstProblems; ///< one sentence per thing that could not be used; logged already
    };

signals:
    void started();
    void progress(qint64 nFolders, qint64 nSequences, const QString& strFolder);
    /// Nothing is left to search.
    void finished(const COrmSequenceOpener::SSummary& sSummary);

private:
    struct SShared;

    void startNext();
    void takeIn();
    void scanEnded();

    COrmSequenceCollection* m_pCollection;
    QTimer m_objPause; ///< ends after the window had its turn: calls that are queued one after the other would leave it none
    QStringList m_lstWaiting;
    std::shared_ptr<SShared> m_pShared; ///< of the running search; the thread holds it too
    SSummary m_sSummary;
    bool m_bBusy = false;
};
