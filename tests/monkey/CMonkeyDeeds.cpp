// What the monkey can do.
#include "CMonkey.h"

#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmSequenceDataset.h"
#include "MonkeyDiary.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolButton>

namespace
{
struct SKey
{
    int nKey;
    const char* pText;
};
/// Neither Alt nor anything that an application around the window would take for itself.
constexpr SKey s_aKeys[] = {{Qt::Key_Escape, ""},   {Qt::Key_Return, "\r"}, {Qt::Key_Tab, "\t"},     {Qt::Key_Backtab, ""},
                            {Qt::Key_Space, " "},   {Qt::Key_Up, ""},       {Qt::Key_Down, ""},      {Qt::Key_Left, ""},
                            {Qt::Key_Right, ""},    {Qt::Key_Home, ""},     {Qt::Key_End, ""},       {Qt::Key_PageUp, ""},
                            {Qt::Key_PageDown, ""}, {Qt::Key_Delete, ""},   {Qt::Key_Backspace, ""}, {Qt::Key_0, "0"},
                            {Qt::Key_7, "7"},       {Qt::Key_E, "e"},       {Qt::Key_Minus, "-"},    {Qt::Key_Period, "."},
                            {Qt::Key_A, "a"},       {Qt::Key_F4, ""},       {Qt::Key_Menu, ""}};

const QStringList s_lstNumbers = {QStringLiteral("0"),    QStringLiteral("1"),           QStringLiteral("12.5"),
                                  QStringLiteral("1e30"), QStringLiteral("-5"),          QStringLiteral("1e-12"),
                                  QStringLiteral("nan"),  QStringLiteral("99999999999"), QStringLiteral("1e+09")};

constexpr int s_nFar = 4000;

QString placeText(const QPoint& ptAt)
{
    return QStringLiteral("(%1,%2)").arg(ptAt.x()).arg(ptAt.y());
}
} // namespace

// ---- Choosing ------------------------------------------------------------------------------------------------------------

QWidget* CMonkey::anyControl()
{
    QList<QWidget*> lstControls;
    for (QWidget* pWidget : m_objTool.window().findChildren<QWidget*>())
    {
        if (pWidget->isVisible() && pWidget->window() == &m_objTool.window() && !pWidget->size().isEmpty())
        {
            lstControls.append(pWidget);
        }
    }
    return lstControls.isEmpty() ? nullptr : m_objRandom.oneOf(lstControls);
}

/// Mostly on the widget, sometimes beside it.
QPoint CMonkey::placeOn(const QWidget& objWidget)
{
    if (m_objRandom.oneIn(20))
    {
        return {m_objRandom.between(-200, objWidget.width() + 200), m_objRandom.between(-200, objWidget.height() + 200)};
    }
    return {m_objRandom.below(objWidget.width()), m_objRandom.below(objWidget.height())};
}

Qt::KeyboardModifiers CMonkey::modifiers()
{
    switch (m_objRandom.below(8))
    {
    case 0:
    case 1:
        return Qt::ControlModifier;
    case 2:
        return Qt::ShiftModifier;
    default:
        return Qt::NoModifier;
    }
}

// ---- What a user does ----------------------------------------------------------------------------------------------------

void CMonkey::clickControl()
{
    QWidget* pControl = anyControl();
    if (pControl == nullptr)
    {
        note(QStringLiteral("nothing to click"));
        return;
    }
    // A dialog takes time: what opens one has a deed of its own.
    const QString strName = nameOf(*pControl);
    if (strName == QLatin1String("m_pOpenButton") || strName == QLatin1String("m_pExportButton"))
    {
        note(QStringLiteral("passes ") + strName);
        return;
    }
    const QPoint ptAt = placeOn(*pControl);
    const Qt::MouseButton eButton = m_objRandom.oneIn(10) ? Qt::RightButton : Qt::LeftButton;
    note(QStringLiteral("click %1 at %2 %3").arg(int(eButton)).arg(strName, placeText(ptAt)));
    m_objHands.click(pControl, ptAt, eButton, m_objRandom.oneIn(8) ? modifiers() : Qt::NoModifier);
}

void CMonkey::chooseSequence()
{
    auto* pList = m_objTool.get<QListWidget>("m_pSequenceNameLW");
    if (pList->count() == 0)
    {
        note(QStringLiteral("no sequence to choose"));
        return;
    }
    QListWidgetItem* pItem = pList->item(m_objRandom.below(pList->count()));
    note(QStringLiteral("choose ") + pItem->text());
    pList->scrollToItem(pItem);
    m_objHands.click(pList->viewport(), pList->visualItemRect(pItem).center(), Qt::LeftButton);
}

void CMonkey::chooseResults()
{
    auto* pList = m_objTool.get<QListWidget>("m_pResultWidget");
    if (pList->count() == 0)
    {
        note(QStringLiteral("no result to choose"));
        return;
    }
    QListWidgetItem* pItem = pList->item(m_objRandom.below(pList->count()));
    note(QStringLiteral("choose the result ") + pItem->text());
    pList->scrollToItem(pItem);
    m_objHands.click(pList->viewport(), pList->visualItemRect(pItem).center(), Qt::LeftButton, modifiers());
}

void CMonkey::pressLoad()
{
    auto* pButton = m_objTool.get<QPushButton>("m_pLoadButton");
    note(QStringLiteral("load"));
    m_objHands.click(pButton, pButton->rect().center(), Qt::LeftButton);
}

void CMonkey::loadSomething()
{
    chooseSequence();
    ++m_nDepth;
    chooseResults();
    pressLoad();
    --m_nDepth;
}

void CMonkey::clickTile()
{
    const CLongitudinalStudyBrowserView& objView = m_objTool.view();
    const QPoint ptAt = placeOn(objView);
    const Qt::KeyboardModifiers eModifiers = modifiers();
    note(QStringLiteral("click in the view at %1 %2").arg(placeText(ptAt)).arg(int(eModifiers), 0, 16));
    m_objHands.move(&objView, ptAt);
    m_objHands.click(&objView, ptAt, Qt::LeftButton, eModifiers);
}

void CMonkey::hover()
{
    const QPoint ptAt = placeOn(m_objTool.view());
    note(QStringLiteral("move over the view to ") + placeText(ptAt));
    m_objHands.move(&m_objTool.view(), ptAt, m_objRandom.oneIn(6) ? modifiers() : Qt::NoModifier);
}

/// A drag, often beyond the edge, and sometimes with something else in its middle.
void CMonkey::dragOverTiles()
{
    const QWidget* pWidget = &m_objTool.view();
    if (m_objRandom.oneIn(4))
    {
        pWidget = anyControl();
    }
    if (pWidget == nullptr || nameOf(*pWidget).endsWith(QLatin1String("portButton")) || nameOf(*pWidget) == QLatin1String("m_pOpenButton"))
    {
        note(QStringLiteral("nothing to drag"));
        return;
    }
    const Qt::KeyboardModifiers eModifiers = modifiers();
    QPoint ptAt = placeOn(*pWidget);
    note(QStringLiteral("drag on %1 from %2 %3").arg(nameOf(*pWidget), placeText(ptAt)).arg(int(eModifiers), 0, 16));
    m_objHands.move(pWidget, ptAt, eModifiers);
    m_objHands.press(pWidget, ptAt, Qt::LeftButton, eModifiers);
    for (int nMoves = m_objRandom.below(5); nMoves > 0; --nMoves)
    {
        if (m_nDepth == 0 && m_objRandom.oneIn(12))
        {
            ++m_nDepth;
            doSomething();
            --m_nDepth;
        }
        ptAt += QPoint(m_objRandom.between(-150, 150), m_objRandom.between(-150, 150));
        m_objHands.move(pWidget, ptAt, eModifiers);
    }
    m_objHands.release(pWidget, ptAt, Qt::LeftButton, m_objRandom.oneIn(10) ? modifiers() : eModifiers);
}

void CMonkey::turnWheel()
{
    QWidget* pControl = anyControl();
    if (pControl == nullptr)
    {
        note(QStringLiteral("nothing to turn"));
        return;
    }
    const bool bUp = m_objRandom.oneIn(2);
    note(QStringLiteral("wheel %1 on %2").arg(bUp ? QStringLiteral("up") : QStringLiteral("down"), nameOf(*pControl)));
    m_objHands.wheel(pControl, pControl->rect().center(), bUp, m_objRandom.oneIn(4) ? modifiers() : Qt::NoModifier);
}

void CMonkey::pressKey()
{
    const SKey& sKey = s_aKeys[m_objRandom.below(static_cast<int>(std::size(s_aKeys)))];
    const Qt::KeyboardModifiers eModifiers = modifiers();
    QWidget* pControl = anyControl();
    if (m_objRandom.oneIn(2) && pControl != nullptr && pControl->focusPolicy() != Qt::NoFocus && pControl->isEnabled())
    {
        pControl->setFocus();
    }
    const QWidget* pFocus = m_objTool.window().focusWidget();
    const QString strAt = pFocus != nullptr ? nameOf(*pFocus) : QStringLiteral("the window");
    note(QStringLiteral("key %1 with %2 at %3").arg(sKey.nKey, 0, 16).arg(int(eModifiers), 0, 16).arg(strAt));
    if (strAt == QLatin1String("m_pOpenButton") || strAt == QLatin1String("m_pExportButton"))
    {
        return;
    }
    m_objHands.key(&m_objTool.window(), sKey.nKey, eModifiers, QString::fromLatin1(sKey.pText));
}

void CMonkey::typeNumber()
{
    const QList<QAbstractSpinBox*> lstBoxes = m_objTool.window().findChildren<QAbstractSpinBox*>();
    QAbstractSpinBox* pBox = m_objRandom.oneOf(lstBoxes);
    const QString strNumber = m_objRandom.oneOf(s_lstNumbers);
    note(QStringLiteral("type %1 into %2").arg(strNumber, nameOf(*pBox)));
    if (!pBox->isVisible() || !pBox->isEnabled())
    {
        return;
    }
    pBox->setFocus();
    pBox->selectAll();
    for (const QChar cSign : strNumber)
    {
        m_objHands.key(pBox, cSign.toUpper().unicode(), Qt::NoModifier, QString(cSign));
    }
    m_objHands.key(pBox, m_objRandom.oneIn(2) ? Qt::Key_Return : Qt::Key_Tab);
}

void CMonkey::switchTab()
{
    auto* pTabs = m_objTool.get<QTabWidget>("m_p3DBrowserTabWidget");
    const int nTab = m_objRandom.below(pTabs->count());
    note(QStringLiteral("tab %1").arg(nTab));
    m_objHands.click(pTabs->tabBar(), pTabs->tabBar()->tabRect(nTab).center(), Qt::LeftButton);
}

void CMonkey::openContextMenu()
{
    const bool bView = m_objRandom.oneIn(2);
    const QWidget* pWidget = bView ? static_cast<QWidget*>(&m_objTool.view()) : m_objTool.get<QListWidget>("m_pSequenceNameLW")->viewport();
    const QPoint ptAt = placeOn(*pWidget);
    note(QStringLiteral("right click in the %1 at %2").arg(bView ? QStringLiteral("view") : QStringLiteral("sequences"), placeText(ptAt)));
    m_objHands.move(pWidget, ptAt);
    m_objHands.click(pWidget, ptAt, Qt::RightButton);
}

void CMonkey::openClearMenu()
{
    auto* pButton = m_objTool.get<QToolButton>("m_pClear3DViewButton");
    note(QStringLiteral("the remove button"));
    m_objHands.click(pButton, pButton->rect().center(), Qt::LeftButton);
}

void CMonkey::answerPopup(QWidget& objPopup)
{
    auto* pMenu = qobject_cast<QMenu*>(&objPopup);
    if (m_objRandom.oneIn(4))
    {
        note(QStringLiteral("escape from a popup"));
        m_objHands.key(&objPopup, Qt::Key_Escape);
    }
    else if (pMenu != nullptr && !pMenu->actions().isEmpty())
    {
        QAction* pAction = m_objRandom.oneOf(pMenu->actions());
        note(QStringLiteral("menu entry ") + pAction->text());
        m_objHands.click(pMenu, pMenu->actionGeometry(pAction).center(), Qt::LeftButton);
    }
    else if (auto* pView = objPopup.findChild<QAbstractItemView*>())
    {
        const int nRow = m_objRandom.below(pView->model()->rowCount());
        note(QStringLiteral("entry %1 of a list").arg(nRow));
        const QModelIndex objIndex = pView->model()->index(nRow, 0);
        pView->scrollTo(objIndex);
        m_objHands.move(pView->viewport(), pView->visualRect(objIndex).center());
        m_objHands.click(pView->viewport(), pView->visualRect(objIndex).center(), Qt::LeftButton);
    }
    else
    {
        note(QStringLiteral("click on a popup"));
        m_objHands.click(&objPopup, placeOn(objPopup), Qt::LeftButton);
    }
    if (QApplication::activePopupWidget() == &objPopup && m_objRandom.oneIn(3))
    {
        objPopup.close();
    }
}

void CMonkey::useTool()
{
    auto* pButton = m_objTool.get<QToolButton>("m_pSelectVoxelButton");
    note(QStringLiteral("the measuring tool"));
    m_objHands.click(pButton, pButton->rect().center(), Qt::LeftButton);
}

/// A drag over the middle of a tile, where its voxels are.
void CMonkey::measure()
{
    const CLongitudinalStudyBrowserView& objView = m_objTool.view();
    note(QStringLiteral("measure"));
    ++m_nDepth;
    if (!m_objTool.get<QToolButton>("m_pSelectVoxelButton")->isChecked())
    {
        useTool();
    }
    m_objHands.move(&objView, placeOn(objView));
    int nX = 0;
    int nY = 0;
    int nWidth = 0;
    int nHeight = 0;
    objView.getActiveViewParams(nX, nY, nWidth, nHeight);
    if (nWidth > 0 && nHeight > 0)
    {
        const QPoint ptCenter(nX + nWidth / 2, objView.height() - nY - nHeight / 2);
        const QPoint ptHalf(m_objRandom.below(nWidth / 2), m_objRandom.below(nHeight / 2));
        dragAcross(objView, ptCenter - ptHalf, ptHalf * 2);
    }
    --m_nDepth;
}

void CMonkey::dragAcross(const QWidget& objWidget, QPoint ptAt, const QPoint& ptStep)
{
    const Qt::KeyboardModifiers eModifiers = m_objRandom.oneIn(4) ? Qt::ControlModifier : Qt::NoModifier;
    note(QStringLiteral("from %1 by %2 %3").arg(placeText(ptAt), placeText(ptStep)).arg(int(eModifiers), 0, 16));
    m_objHands.move(&objWidget, ptAt);
    m_objHands.press(&objWidget, ptAt, Qt::LeftButton, eModifiers);
    ptAt += ptStep;
    m_objHands.move(&objWidget, ptAt, eModifiers);
    m_objHands.release(&objWidget, ptAt, Qt::LeftButton, eModifiers);
}

void CMonkey::resizeWindow()
{
    const QSize objSize(m_objRandom.oneIn(4) ? 0 : m_objRandom.below(1100), m_objRandom.oneIn(4) ? 0 : m_objRandom.below(800));
    note(QStringLiteral("resize to %1 x %2").arg(objSize.width()).arg(objSize.height()));
    m_objTool.window().resize(objSize);
}

/// As a splitter around the window could: the layout would not make the view so small.
void CMonkey::resizeView()
{
    const QSize objSize(m_objRandom.oneOf(QList<int>{0, 1, 60, 200, 800}), m_objRandom.oneOf(QList<int>{0, 1, 20, 200, 600}));
    note(QStringLiteral("the view to %1 x %2").arg(objSize.width()).arg(objSize.height()));
    m_objTool.view().resize(objSize);
}

void CMonkey::resizeFar()
{
    if (m_nDepth > 0 || m_objRandom.oneIn(2))
    {
        note(QStringLiteral("does nothing"));
        return;
    }
    note(QStringLiteral("resize to %1").arg(s_nFar));
    m_objTool.window().resize(s_nFar, s_nFar);
    m_nFar = 3;
}

void CMonkey::closeWindow()
{
    note(QStringLiteral("close"));
    if (m_objTool.window().isVisible() && !m_objTool.window().close())
    {
        m_strBroken = QStringLiteral("the window does not close");
    }
}

void CMonkey::openOrExport()
{
    const char* pName = m_objRandom.oneOf(QList<const char*>{"m_pOpenButton", "m_pExportButton"});
    auto* pButton = m_objTool.get<QToolButton>(pName);
    note(QLatin1String(pName));
    m_objHands.click(pButton, pButton->rect().center(), Qt::LeftButton);
}

// ---- What the host and the world do --------------------------------------------------------------------------------------

void CMonkey::closeOrOpenSequence()
{
    const QString strSequence = m_objRandom.oneOf(m_objStudy.sequences());
    if (COrmSequenceDataset::getSequenceDataset(strSequence) != nullptr)
    {
        note(QStringLiteral("the host closes ") + strSequence);
        m_objTool.close(strSequence);
        return;
    }
    note(QStringLiteral("the host opens ") + strSequence);
    m_objTool.sequences().open({m_objStudy.folder() + QLatin1Char('/') + strSequence});
    if (COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequence))
    {
        QMetaObject::invokeMethod(&m_objTool.window(), "onSequenceAdded", Q_ARG(COrmSequenceDataset*, pSequence));
    }
}

void CMonkey::changePreferences()
{
    SDefaultColorBar sColorBar;
    sColorBar.bReversed = m_objRandom.oneIn(2);
    sColorBar.nColorTable = m_objRandom.below(13);
    note(QStringLiteral("preferences: table %1").arg(sColorBar.nColorTable));
    COrmPreference::setDefaultColorBar(sColorBar);
}

void CMonkey::changeIndex()
{
    note(m_objStudy.changeIndex(m_objRandom));
}

/// A load that is refused because the camera is at work.
void CMonkey::acquire()
{
    note(QStringLiteral("acquisition"));
    COrmProcess::setProcessInProgress(eLongProcessAcquisition, true);
    ++m_nDepth;
    pressLoad();
    --m_nDepth;
    COrmProcess::setProcessInProgress(eLongProcessAcquisition, false);
}
