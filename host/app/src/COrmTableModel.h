#pragma once

#include <QAbstractTableModel>
#include <QStringList>

/// A table whose rows have no children, with titles above its columns.
class COrmTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    int rowCount(const QModelIndex& objParent = QModelIndex()) const override;
    int columnCount(const QModelIndex& objParent = QModelIndex()) const override;
    QVariant headerData(int nSection, Qt::Orientation eOrientation, int nRole = Qt::DisplayRole) const override;

protected:
    /// @param lstTitles one for each column
    COrmTableModel(QStringList lstTitles, QObject* pParent);

    virtual int rows() const = 0;

private:
    const QStringList m_lstTitles;
};
