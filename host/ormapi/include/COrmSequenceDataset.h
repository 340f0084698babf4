#pragma once

#include "COrmDataset.h"
#include "SSequenceFacts.h"

#include <QList>
#include <QObject>
#include <QPointer>

/// One image sequence that is open in the host: an object of this class is an open sequence from its construction until
/// markClosed() or its destruction. Lives on the window's thread.
class COrmSequenceDataset : public QObject
{
    Q_OBJECT

public:
    explicit COrmSequenceDataset(const SSequenceFacts& sFacts, QObject* pParent = nullptr);
    ~COrmSequenceDataset() override;

    /// The open sequence with that ID (upper and lower case differ), or null when the host has none.
    static COrmSequenceDataset* getSequenceDataset(QString strSequenceID);
    /// Takes the sequence out of the open ones. The object stays usable, so that those who watch can be told of it.
    void markClosed();

    QString getSequenceID() const { return m_sFacts.m_strSequenceID; }
    /// The sequence's folder, with its closing separator.
    QString getSequenceInfoPath() const { return m_sFacts.m_strInfoPath; }
    const SSequenceFacts& getFacts() const { return m_sFacts; }
    /// The images of the sequence in the order of its file; at least one, none of them null.
    QList<COrmDataset*> getDatasets() const { return m_lstDatasets; }

    /// True for a sequence with a structured-light surface.
    bool isSLASequence() const { return m_bStructuredLight; }
    /// True for a sequence with a CT surface. With @p bReread the sequence file is looked at again first, so that a surface
    /// acquired after the sequence was opened counts; otherwise the answer is that of the opening or of the last refresh.
    bool isCTSequence(bool bReread) const;
    bool isLuminescentSequence() const { return m_bLuminescent; }
    bool isFluorescentSequence() const { return m_bFluorescent; }
    bool isTransIlluminationSequence() const { return m_bTransIllumination; }
    /// True for a trans-illumination overview result.
    bool isTransIllumOverviewResultSequence() const { return m_sFacts.m_bOverview; }

    /// What a refresh changed.
    struct SChanges
    {
        bool m_bSequence = false;                  ///< anything of the sequence
        QList<QPointer<COrmDataset>> m_lstChanged; ///< images whose information changed, and images that are new
        QList<QPointer<COrmDataset>> m_lstRemoved; ///< images that are gone; the caller deletes them
    };
    /// Takes over what was read again of the same sequence.
    SChanges update(const SSequenceFacts& sFacts);

private:
    void updateFlags();

    SSequenceFacts m_sFacts;           ///< as read when the sequence was opened or last refreshed
    QList<COrmDataset*> m_lstDatasets; ///< owned as children
    bool m_bStructuredLight = false;
    bool m_bLuminescent = false;
    bool m_bFluorescent = false;
    bool m_bTransIllumination = false;
};
