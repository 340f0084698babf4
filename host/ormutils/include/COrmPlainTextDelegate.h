#ifndef CORMPLAINTEXTDELEGATE_H
#define CORMPLAINTEXTDELEGATE_H

#include <QStyledItemDelegate>

/// Shows the texts of an item view in their visible form, elided in the middle. The items' data stay as they are; an elided text
/// is told in full by the tool tip.
class COrmPlainTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit COrmPlainTextDelegate(QObject* pParent = nullptr);

    QString displayText(const QVariant& varValue, const QLocale& objLocale) const override;
    bool helpEvent(QHelpEvent* pEvent, QAbstractItemView* pView, const QStyleOptionViewItem& objOption,
                   const QModelIndex& objIndex) override;

protected:
    void initStyleOption(QStyleOptionViewItem* pOption, const QModelIndex& objIndex) const override;
};

#endif
