#pragma once

#include "SClickFacts.h"

#include <QAbstractTableModel>
#include <QVector>

/// The images of one sequence as a table: how each was taken.
class COrmClickModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        eClick,
        eEmission,
        eExcitation,
        eExposure,
        eColumns
    };

    explicit COrmClickModel(QObject* pParent = nullptr);

    void setClicks(const QVector<SClickFacts>& lstClicks);
    bool hasExcitation() const;

    int rowCount(const QModelIndex& objParent = QModelIndex()) const override;
    int columnCount(const QModelIndex& objParent = QModelIndex()) const override;
    QVariant data(const QModelIndex& objIndex, int nRole = Qt::DisplayRole) const override;
    QVariant headerData(int nSection, Qt::Orientation eOrientation, int nRole = Qt::DisplayRole) const override;

private:
    QVector<SClickFacts> m_lstClicks;
};
