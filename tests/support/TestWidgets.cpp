#include "TestWidgets.h"

#include <QApplication>
#include <QImage>
#include <QListWidget>
#include <QMouseEvent>
#include <QWidget>

namespace TestWidgets
{

void fail(const QString& strReason)
{
    QTest::qFail(qPrintable(strReason), __FILE__, __LINE__);
    throw std::runtime_error(strReason.toStdString());
}

QStringList names(const QWidget* pRoot, const char* pClassName)
{
    QStringList lstNames;
    for (const QWidget* pWidget : pRoot->findChildren<QWidget*>())
    {
        if (pWidget->inherits(pClassName) && !pWidget->objectName().isEmpty())
        {
            lstNames.append(pWidget->objectName());
        }
    }
    lstNames.sort();
    return lstNames;
}

void click(QWidget* pWidget)
{
    if (!pWidget->isVisible() || !pWidget->isEnabled())
    {
        fail(QStringLiteral("\"%1\" can't be clicked: it is %2").arg(pWidget->objectName(), pWidget->isVisible() ? "disabled" : "hidden"));
    }
    QTest::mouseClick(pWidget, Qt::LeftButton);
}

void moveOver(QWidget* pWidget, const QPoint& ptPlace)
{
    QMouseEvent objMove(QEvent::MouseMove, ptPlace, pWidget->mapToGlobal(ptPlace), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(pWidget, &objMove);
}

QStringList texts(const QListWidget* pList)
{
    QStringList lstTexts;
    for (int i = 0; i < pList->count(); ++i)
    {
        lstTexts.append(pList->item(i)->text());
    }
    return lstTexts;
}

void clickEntry(QListWidget* pList, const QString& strText, Qt::KeyboardModifiers eModifiers)
{
    const QList<QListWidgetItem*> lstItems = pList->findItems(strText, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (lstItems.isEmpty())
    {
        fail(QStringLiteral("\"%1\" has no entry \"%2\"; there are: %3")
                 .arg(pList->objectName(), strText, texts(pList).join(QStringLiteral(" | "))));
    }
    pList->scrollToItem(lstItems.first());
    const QRect rcItem = pList->visualItemRect(lstItems.first());
    QTest::mouseClick(pList->viewport(), Qt::LeftButton, eModifiers, QPoint(rcItem.left() + 5, rcItem.center().y()));
}

void selectEntries(QListWidget* pList, const QStringList& lstTexts)
{
    pList->clearSelection();
    for (const QString& strText : lstTexts)
    {
        clickEntry(pList, strText, Qt::ControlModifier);
    }
}

bool showsFocus(QWidget* pWidget)
{
    const QImage imgWith = pWidget->grab().toImage();
    QApplication::focusWidget()->clearFocus();
    const QImage imgWithout = pWidget->grab().toImage();
    pWidget->setFocus(Qt::TabFocusReason);
    int nOther = 0;
    for (int nY = 0; nY < imgWith.height(); ++nY)
        for (int nX = 0; nX < imgWith.width(); ++nX)
            nOther += imgWith.pixel(nX, nY) != imgWithout.pixel(nX, nY) ? 1 : 0;
    return nOther >= 10; // a text cursor alone has as many
}

} // namespace TestWidgets
