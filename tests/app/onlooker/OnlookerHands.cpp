#include "OnlookerHands.h"

#include "OnlookerEyes.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHash>
#include <QJsonArray>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <functional>

namespace
{
using OnlookerEyes::find;

QPoint placeIn(const QWidget* pWidget, const QString& strX, const QString& strY)
{
    return {qRound(strX.toDouble() * (pWidget->width() - 1)), qRound(strY.toDouble() * (pWidget->height() - 1))};
}

bool press(const QStringList& lstWords)
{
    auto* pWidget = find<QWidget>(lstWords.value(1));
    const bool bReady = pWidget != nullptr && pWidget->isVisible() && pWidget->isEnabled();
    if (bReady)
        QTest::mouseClick(pWidget, Qt::LeftButton);
    return bReady;
}

bool later(const QStringList& lstWords)
{
    const QStringList lstDeed = lstWords.mid(1);
    QTimer::singleShot(0, [lstDeed] { OnlookerHands::act(lstDeed); });
    return true;
}

bool pick(const QStringList& lstWords)
{
    auto* pView = find<QAbstractItemView>(lstWords.value(1));
    for (int nText = 2; pView != nullptr && nText < lstWords.size(); ++nText)
    {
        const QAbstractItemModel* pModel = pView->model();
        QModelIndex objEntry;
        for (int nColumn = 0; nColumn < pModel->columnCount() && !objEntry.isValid(); ++nColumn)
            objEntry = pModel->match(pModel->index(0, nColumn), Qt::DisplayRole, lstWords.at(nText), 1, Qt::MatchExactly).value(0);
        if (!objEntry.isValid())
            return false;
        pView->scrollTo(objEntry);
        QTest::mouseClick(pView->viewport(), Qt::LeftButton, nText > 2 ? Qt::ControlModifier : Qt::NoModifier,
                          pView->visualRect(objEntry).center());
    }
    return pView != nullptr;
}

QJsonValue rows(const QStringList& lstWords)
{
    QJsonArray arrRows;
    const auto* pView = find<QAbstractItemView>(lstWords.value(1));
    for (int nRow = 0; pView != nullptr && nRow < pView->model()->rowCount(); ++nRow)
        arrRows.append(pView->model()->index(nRow, 0).data().toString());
    return arrRows;
}

bool choose(const QStringList& lstWords)
{
    auto* pBox = find<QComboBox>(lstWords.value(1));
    const int nEntry = pBox != nullptr ? pBox->findText(lstWords.value(2)) : -1;
    if (nEntry < 0 || !pBox->isEnabled())
        return false;
    pBox->setCurrentIndex(nEntry);
    emit pBox->activated(nEntry);
    return true;
}

bool tab(const QStringList& lstWords)
{
    auto* pTabs = find<QTabWidget>(lstWords.value(1));
    if (pTabs == nullptr)
        return false;
    pTabs->setCurrentIndex(lstWords.value(2).toInt());
    return pTabs->currentIndex() == lstWords.value(2).toInt();
}

bool type(const QStringList& lstWords)
{
    auto* pWidget = find<QWidget>(lstWords.value(1));
    if (pWidget == nullptr || !pWidget->isEnabled())
        return false;
    pWidget->setFocus();
    QTest::keyClick(pWidget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(pWidget, Qt::Key_Delete);
    QTest::keyClicks(pWidget, lstWords.value(2));
    return true;
}

bool trigger(const QStringList& lstWords)
{
    const QWidgetList lstWindows = QApplication::topLevelWidgets();
    for (const QWidget* pWindow : lstWindows)
    {
        auto* pAction = pWindow->findChild<QAction*>(lstWords.value(1));
        if (pAction != nullptr && pAction->isEnabled())
        {
            pAction->trigger();
            return true;
        }
    }
    return false;
}

bool context(const QStringList& lstWords)
{
    auto* pWidget = find<QWidget>(lstWords.value(1));
    if (pWidget == nullptr || !pWidget->isVisible())
        return false;
    const QPoint ptMiddle = pWidget->rect().center();
    QContextMenuEvent objEvent(QContextMenuEvent::Mouse, ptMiddle, pWidget->mapToGlobal(ptMiddle));
    return QApplication::sendEvent(pWidget, &objEvent);
}

bool entry(const QStringList& lstWords)
{
    auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (pMenu == nullptr)
        return false;
    const QList<QAction*> lstEntries = pMenu->actions();
    for (QAction* pEntry : lstEntries)
    {
        if (pEntry->text().remove(QLatin1Char('&')) == lstWords.value(1) && pEntry->isEnabled())
        {
            QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier, pMenu->actionGeometry(pEntry).center());
            return true;
        }
    }
    return false;
}

bool drag(const QStringList& lstWords)
{
    constexpr int nSteps = 8;
    auto* pWidget = find<QWidget>(lstWords.value(1));
    if (pWidget == nullptr || !pWidget->isVisible())
        return false;
    const QPoint ptFrom = placeIn(pWidget, lstWords.value(2), lstWords.value(3));
    const QPoint ptTo = placeIn(pWidget, lstWords.value(4), lstWords.value(5));
    const auto send = [&](QEvent::Type eType, const QPoint& pt, Qt::MouseButton eButton, Qt::MouseButtons eHeld)
    {
        QMouseEvent objEvent(eType, pt, pWidget->mapToGlobal(pt), eButton, eHeld, Qt::NoModifier);
        QApplication::sendEvent(pWidget, &objEvent);
    };
    send(QEvent::MouseMove, ptFrom, Qt::NoButton, Qt::NoButton);
    send(QEvent::MouseButtonPress, ptFrom, Qt::LeftButton, Qt::LeftButton);
    for (int nStep = 1; nStep <= nSteps; ++nStep)
        send(QEvent::MouseMove, ptFrom + (ptTo - ptFrom) * nStep / nSteps, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, ptTo, Qt::LeftButton, Qt::NoButton);
    return true;
}

bool point(const QStringList& lstWords)
{
    auto* pWidget = find<QWidget>(lstWords.value(1));
    if (pWidget != nullptr)
        QTest::mouseMove(pWidget, placeIn(pWidget, lstWords.value(2), lstWords.value(3)));
    return pWidget != nullptr;
}

bool size(const QStringList& lstWords)
{
    auto* pWindow = find<QWidget>(lstWords.value(1));
    if (pWindow != nullptr)
        pWindow->resize(lstWords.value(2).toInt(), lstWords.value(3).toInt());
    return pWindow != nullptr;
}

bool save(const QStringList& lstWords)
{
    const auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (pDialog == nullptr)
        return false;
    pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(lstWords.value(1));
    const auto* pButtons = pDialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    QTest::mouseClick(pButtons->button(QDialogButtonBox::Save), Qt::LeftButton);
    return true;
}

QWidget* activeWindow()
{
    return QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget() : QApplication::activeWindow();
}

QJsonValue title(const QStringList& /*lstWords*/)
{
    const QWidget* pWindow = activeWindow();
    return pWindow != nullptr ? pWindow->windowTitle() : QString();
}

QJsonValue propertyOf(const QStringList& lstWords)
{
    const auto* pWidget = find<QWidget>(lstWords.value(1));
    const QVariant varValue = pWidget != nullptr ? pWidget->property(lstWords.value(2).toUtf8().constData()) : QVariant();
    return varValue.isValid() ? QJsonValue(varValue.toString()) : QJsonValue();
}

bool visible(const QStringList& lstWords)
{
    const auto* pWidget = find<QWidget>(lstWords.value(1));
    return pWidget != nullptr && pWidget->isVisible();
}

bool picture(const QStringList& lstWords)
{
    const QWidget* pWidget = lstWords.size() > 2 ? find<QWidget>(lstWords.at(2)) : activeWindow();
    return pWidget != nullptr && OnlookerEyes::screenOf(pWidget->window()).save(lstWords.value(1));
}
} // namespace

QJsonValue OnlookerHands::act(const QStringList& lstWords)
{
    static const QHash<QString, std::function<QJsonValue(const QStringList&)>> s_hashDeeds = {
        {QStringLiteral("press"), &press},         {QStringLiteral("later"), &later},     {QStringLiteral("pick"), &pick},
        {QStringLiteral("rows"), &rows},           {QStringLiteral("choose"), &choose},   {QStringLiteral("tab"), &tab},
        {QStringLiteral("type"), &type},           {QStringLiteral("trigger"), &trigger}, {QStringLiteral("context"), &context},
        {QStringLiteral("entry"), &entry},         {QStringLiteral("drag"), &drag},       {QStringLiteral("point"), &point},
        {QStringLiteral("size"), &size},           {QStringLiteral("save"), &save},       {QStringLiteral("title"), &title},
        {QStringLiteral("property"), &propertyOf}, {QStringLiteral("visible"), &visible}, {QStringLiteral("picture"), &picture}};
    const auto fnDeed = s_hashDeeds.value(lstWords.value(0));
    return fnDeed ? fnDeed(lstWords) : QJsonValue(QJsonValue::Undefined);
}
