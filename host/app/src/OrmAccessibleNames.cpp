#include "OrmAccessibleNames.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

namespace
{
/// Without the mark of its key and the colon behind it.
QString plain(const QString& strText)
{
    QString strPlain = strText;
    strPlain.remove(QLatin1Char('&'));
    strPlain = strPlain.trimmed();
    while (strPlain.endsWith(QLatin1Char(':')))
        strPlain = strPlain.chopped(1).trimmed();
    return strPlain;
}

QString labelIn(const QLayoutItem* pItem)
{
    const auto* pLabel = pItem != nullptr ? qobject_cast<const QLabel*>(const_cast<QLayoutItem*>(pItem)->widget()) : nullptr;
    return pLabel != nullptr ? plain(pLabel->text()) : QString();
}

/// The label that stands before the widget in the layout or in one within it; null if the widget is not there.
QString labelBefore(const QLayout* pLayout, const QWidget* pWidget)
{
    const auto* pGrid = qobject_cast<const QGridLayout*>(pLayout);
    if (pGrid == nullptr && qobject_cast<const QBoxLayout*>(pLayout) == nullptr)
        return {}; // in others nothing stands before anything
    for (int nItem = 0; nItem < pLayout->count(); ++nItem)
    {
        QLayoutItem* pItem = pLayout->itemAt(nItem);
        if (pItem->layout() != nullptr)
        {
            const QString strLabel = labelBefore(pItem->layout(), pWidget);
            if (!strLabel.isNull())
                return strLabel;
        }
        if (pItem->widget() != pWidget)
            continue;
        QString strLabel;
        if (pGrid != nullptr)
        {
            int nRow = 0;
            int nColumn = 0;
            int nRows = 0;
            int nColumns = 0;
            pGrid->getItemPosition(nItem, &nRow, &nColumn, &nRows, &nColumns);
            strLabel = nColumn > 0 ? labelIn(pGrid->itemAtPosition(nRow, nColumn - 1)) : QString();
            if (strLabel.isEmpty() && nRow > 0)
                strLabel = labelIn(pGrid->itemAtPosition(nRow - 1, nColumn));
        }
        else if (nItem > 0)
        {
            strLabel = labelIn(pLayout->itemAt(nItem - 1));
        }
        return strLabel.isNull() ? QStringLiteral("") : strLabel;
    }
    return {};
}

/// "Export Graphics" of "<b>Export Graphics :</b> Click this button ..."; empty if it does not begin with a heading.
QString headingOf(const QString& strExplanation)
{
    static const QRegularExpression s_reHeading(QStringLiteral("^\\s*<b>([^<]+)</b>"));
    return plain(s_reHeading.match(strExplanation).captured(1));
}

/// The tooltip's first line, without markup and without the keys in brackets behind it.
QString firstLineOf(const QString& strToolTip)
{
    static const QRegularExpression s_reMarkup(QStringLiteral("<[^>]*>|\\s*\\([^)]*\\)\\s*$"));
    return plain(strToolTip.section(QLatin1Char('\n'), 0, 0).remove(s_reMarkup));
}

/// What a part that Qt puts into its controls does; the list that a combo box opens is named like the box. Empty for everything else.
QString nameOfPart(const QWidget* pWidget)
{
    if (pWidget->inherits("QLineEditIconButton"))
        return QCoreApplication::translate("OrmAccessibleNames", "Clear");
    if (pWidget->inherits("QToolBarExtension"))
        return QCoreApplication::translate("OrmAccessibleNames", "More");
    const QWidget* pOwner = pWidget->parentWidget();
    if (pWidget->inherits("QComboBoxListView") && pOwner != nullptr)
        pOwner = pOwner->parentWidget(); // the list stands in a frame of its own
    const bool bPart = pWidget->inherits("QComboBoxListView") || qobject_cast<const QLineEdit*>(pWidget) != nullptr;
    if (!bPart || (qobject_cast<const QAbstractSpinBox*>(pOwner) == nullptr && qobject_cast<const QComboBox*>(pOwner) == nullptr))
        return {};
    return pOwner->accessibleName().isEmpty() ? OrmAccessibleNames::nameFor(pOwner) : pOwner->accessibleName();
}

/// Whether a control's own text tells what it is.
bool speaksForItself(const QWidget* pWidget)
{
    if (!pWidget->accessibleName().isEmpty() || pWidget->isWindow())
        return true;
    const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
    return pButton != nullptr && !pButton->text().isEmpty();
}

void name(QWidget* pWidget)
{
    if (speaksForItself(pWidget))
        return;
    const QString strName = OrmAccessibleNames::nameFor(pWidget);
    if (!strName.isEmpty())
        pWidget->setAccessibleName(strName);
}

/// Called before an object's interface is made, which this never does itself.
QAccessibleInterface* nameOnTheWay(const QString& /*strClass*/, QObject* pObject)
{
    auto* pWidget = qobject_cast<QWidget*>(pObject);
    if (pWidget == nullptr)
        return nullptr;
    if (pWidget->isWindow())
    {
        // Not every control comes this way: some have interfaces of their own.
        const QList<QWidget*> lstWidgets = pWidget->findChildren<QWidget*>();
        for (QWidget* pChild : lstWidgets)
            name(pChild);
    }
    else
    {
        name(pWidget);
    }
    return nullptr;
}
} // namespace

void OrmAccessibleNames::install()
{
    QAccessible::installFactory(&nameOnTheWay);
}

QString OrmAccessibleNames::nameFor(const QWidget* pWidget)
{
    const QWidget* pParent = pWidget->parentWidget();
    if (pParent == nullptr || qobject_cast<const QLabel*>(pWidget) != nullptr)
        return {};
    QString strName = nameOfPart(pWidget);
    if (strName.isEmpty())
        strName = labelBefore(pParent->layout(), pWidget);
    if (strName.isEmpty())
        strName = headingOf(pWidget->whatsThis());
    if (strName.isEmpty())
        strName = firstLineOf(pWidget->toolTip());
    if (strName.isEmpty() && pWidget->inherits("CSOLAView"))
        strName = QCoreApplication::translate("OrmAccessibleNames", "3D view");
    return strName;
}
