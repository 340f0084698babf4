#pragma once

#include "COrmTableModel.h"

#include <QList>

class COrmSequenceCollection;
class COrmSequenceDataset;

/// The open sequences of a collection as a table.
class COrmSequenceModel : public COrmTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        eID,
        eSubject,
        eDate,
        eResults,
        eColumns
    };
    enum ERole
    {
        eSortRole = Qt::UserRole, ///< what a column is sorted by
        eSequenceIDRole,          ///< the ID, in every column
        eFilterRole               ///< all that a filter looks at, one text per line
    };

    explicit COrmSequenceModel(COrmSequenceCollection* pCollection, QObject* pParent = nullptr);

    QVariant data(const QModelIndex& objIndex, int nRole = Qt::DisplayRole) const override;

    /// The kind of a sequence in words.
    static QString kindText(const COrmSequenceDataset& objSequence);
    /// "2 SOLA, 1 NOVA", "none".
    static QString resultsText(int nSOLA, int nNOVA);
    /// The date as "2026-08-01 09:30", without a time where there is none; a text that is no date is given back as it is.
    static QString dateText(const QString& strDateTime);

protected:
    int rows() const override { return m_lstSequences.size(); }

private:
    void insertLast(COrmSequenceDataset* pSequence);
    void remove(COrmSequenceDataset* pSequence);
    void update(COrmSequenceDataset* pSequence);
    QString text(const COrmSequenceDataset& objSequence, int nColumn) const;
    static QVariant sortKey(const COrmSequenceDataset& objSequence, int nColumn);

    QList<COrmSequenceDataset*> m_lstSequences; ///< the collection's
};
