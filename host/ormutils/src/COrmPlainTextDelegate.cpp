#include "COrmPlainTextDelegate.h"

#include "COrmPlainText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace
{
constexpr int g_nLongestItem = 1000; ///< characters of an item that are ever laid out
}

COrmPlainTextDelegate::COrmPlainTextDelegate(QObject* pParent) : QStyledItemDelegate(pParent) {}

QString COrmPlainTextDelegate::displayText(const QVariant& varValue, const QLocale& objLocale) const
{
    const QString strText =
        varValue.type() == QVariant::String ? varValue.toString() : QStyledItemDelegate::displayText(varValue, objLocale);
    return COrmPlainText::visible(COrmPlainText::shortened(strText, g_nLongestItem));
}

void COrmPlainTextDelegate::initStyleOption(QStyleOptionViewItem* pOption, const QModelIndex& objIndex) const
{
    QStyledItemDelegate::initStyleOption(pOption, objIndex);
    pOption->textElideMode = Qt::ElideMiddle;
}

bool COrmPlainTextDelegate::helpEvent(QHelpEvent* pEvent, QAbstractItemView* pView, const QStyleOptionViewItem& objOption,
                                      const QModelIndex& objIndex)
{
    if (!pEvent || !pView || pEvent->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(pEvent, pView, objOption, objIndex);
    const QRect rcItem = pView->visualRect(objIndex);
    QString strToolTip = objIndex.data(Qt::ToolTipRole).toString();
    if (strToolTip.isEmpty() && sizeHint(objOption, objIndex).width() > rcItem.intersected(pView->viewport()->rect()).width())
        strToolTip = objIndex.data(Qt::DisplayRole).toString();
    QToolTip::showText(pEvent->globalPos(), strToolTip.isEmpty() ? QString() : COrmPlainText::toolTip(strToolTip), pView->viewport(),
                       rcItem);
    return true;
}
