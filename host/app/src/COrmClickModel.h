#pragma once

#include "COrmTableModel.h"
#include "SClickFacts.h"

#include <QVector>

/// The images of one sequence as a table: how each was taken.
class COrmClickModel : public COrmTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        eClick,
        eEmission,
        eExcitation,
        eExposure
    };

    explicit COrmClickModel(QObject* pParent = nullptr);

    void setClicks(const QVector<SClickFacts>& lstClicks);
    bool hasExcitation() const;

    QVariant data(const QModelIndex& objIndex, int nRole = Qt::DisplayRole) const override;

protected:
    int rows() const override { return m_lstClicks.size(); }

private:
    QVector<SClickFacts> m_lstClicks;
};
