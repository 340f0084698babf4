#include "COrmRecentList.h"

#include "COrmPlainText.h"
#include "OrmIcons.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStyledItemDelegate>

namespace
{
constexpr int s_nFolderRole = Qt::UserRole;
constexpr int s_nFewestRows = 2; ///< rows shown where there is little room

QString nameOf(const QString& strFolder)
{
    const QString strName = QDir(strFolder).dirName();
    return strName.isEmpty() ? strFolder : strName;
}

/// Name above, path below, both elided in the middle.
class CRecentDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& objOption, const QModelIndex& /*objIndex*/) const override
    {
        const int nLine = objOption.fontMetrics.height();
        return {20 * nLine, 2 * nLine + nLine / 2};
    }

    void paint(QPainter* pPainter, const QStyleOptionViewItem& objOption, const QModelIndex& objIndex) const override
    {
        QStyleOptionViewItem objFrame = objOption;
        initStyleOption(&objFrame, objIndex);
        objFrame.text.clear();
        objFrame.icon = QIcon();
        QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &objFrame, pPainter, objOption.widget);

        const bool bSelected = (objOption.state & QStyle::State_Selected) != 0;
        const int nLine = objOption.fontMetrics.height();
        const QRect rc = objOption.rect.adjusted(nLine / 2, nLine / 4, -nLine / 2, -nLine / 4);
        const int nIcon = nLine * 3 / 2;
        const QRect rcText = rc.adjusted(nIcon + nLine / 2, 0, 0, 0);
        const QPalette::ColorGroup eGroup = (objOption.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
        OrmIcons::drawing(QStringLiteral("open"))
            .paint(pPainter, QRect(rc.left(), rc.center().y() - nIcon / 2, nIcon, nIcon), Qt::AlignCenter,
                   bSelected ? QIcon::Selected : QIcon::Normal);
        QColor clrText = objOption.palette.color(eGroup, bSelected ? QPalette::HighlightedText : QPalette::Text);
        const QString strFolder = objIndex.data(s_nFolderRole).toString();
        pPainter->save();
        pPainter->setFont(objOption.font);
        pPainter->setPen(clrText);
        pPainter->drawText(QRect(rcText.left(), rcText.top(), rcText.width(), nLine), Qt::AlignVCenter | Qt::AlignLeft,
                           COrmPlainText::elided(nameOf(strFolder), objOption.fontMetrics, rcText.width()));
        clrText.setAlphaF(0.7);
        pPainter->setPen(clrText);
        pPainter->drawText(QRect(rcText.left(), rcText.top() + nLine, rcText.width(), nLine), Qt::AlignVCenter | Qt::AlignLeft,
                           COrmPlainText::elided(strFolder, objOption.fontMetrics, rcText.width()));
        pPainter->restore();
    }
};
} // namespace

COrmRecentList::COrmRecentList(QWidget* pParent) : QListWidget(pParent)
{
    setItemDelegate(new CRecentDelegate(this));
    setAccessibleName(tr("Recent studies"));
    setUniformItemSizes(true);
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setWhatsThis(tr("Folders that were opened before. A click opens one again."));
    const auto fnChoose = [this](const QListWidgetItem* pItem) { emit chosen(pItem->data(s_nFolderRole).toString()); };
    connect(this, &QListWidget::itemActivated, this, fnChoose);
    // Some styles count a click as activation.
    if (style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, this) == 0)
        connect(this, &QListWidget::itemClicked, this, fnChoose);
}

void COrmRecentList::setFolders(const QStringList& lstFolders)
{
    clear();
    for (const QString& strFolder : lstFolders)
    {
        auto* pItem = new QListWidgetItem(nameOf(strFolder), this);
        pItem->setData(s_nFolderRole, strFolder);
        pItem->setData(Qt::AccessibleTextRole, COrmPlainText::visible(nameOf(strFolder) + QStringLiteral(", ") + strFolder));
        pItem->setToolTip(COrmPlainText::toolTip(strFolder));
    }
    setMaximumHeight(heightFor(qMax(1, count()))); // no empty rows where there is room for all
    updateGeometry();
}

int COrmRecentList::heightFor(int nRows) const
{
    const int nRow = count() > 0 ? sizeHintForRow(0) : fontMetrics().height();
    return nRows * nRow + 2 * frameWidth();
}

QSize COrmRecentList::sizeHint() const
{
    return {20 * fontMetrics().height(), heightFor(qBound(1, count(), s_nFewestRows))};
}

QSize COrmRecentList::minimumSizeHint() const
{
    return sizeHint();
}
