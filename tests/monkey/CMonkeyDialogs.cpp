#include "CMonkeyDialogs.h"

#include "CMonkeyStudy.h"
#include "COrmMessageBox.h"
#include "MonkeyDiary.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QThread>
#include <QWindow>

namespace
{
constexpr int s_nLookInterval = 5;
/// A dialog that has not taken its answer by then is cancelled.
constexpr int s_nDialogLooks = 200;
} // namespace

const QStringList& CMonkeyDialogs::exportNames()
{
    static const QStringList s_lstNames = {QStringLiteral("picture.png"), QStringLiteral("picture"), QStringLiteral("scale.bmp"),
                                           QStringLiteral("a.b.c"), QStringLiteral("values.csv")};
    return s_lstNames;
}

CMonkeyDialogs::CMonkeyDialogs(const CMonkeyStudy& objStudy) : m_objStudy(objStudy), m_nLoopLevel(QThread::currentThread()->loopLevel())
{
    // Not from within the timer's own event: a timer does not go off again in a dialog that its answer has opened.
    QObject::connect(&m_objTimer, &QTimer::timeout, this, &CMonkeyDialogs::look, Qt::QueuedConnection);
    m_objTimer.start(s_nLookInterval);
    QApplication::instance()->installEventFilter(this);
}

void CMonkeyDialogs::beginEvent(quint32 nSeed)
{
    m_objRandom = CMonkeyRandom(nSeed);
}

/// A menu has an event loop of its own only where somebody waits for what is picked; one that merely popped up is the monkey's to answer.
bool CMonkeyDialogs::isWaitedFor() const
{
    return QThread::currentThread()->loopLevel() > m_nLoopLevel;
}

bool CMonkeyDialogs::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Show && qobject_cast<QMenu*>(pObject) != nullptr)
    {
        QMetaObject::invokeMethod(this, &CMonkeyDialogs::look, Qt::QueuedConnection);
    }
    const bool bRepeats = qobject_cast<QAbstractSpinBox*>(pObject) != nullptr || qobject_cast<QAbstractSlider*>(pObject) != nullptr;
    return pEvent->type() == QEvent::Timer && bRepeats;
}

int CMonkeyDialogs::answer(const SMessageRequest& objRequest)
{
    QList<int> lstAnswers;
    if (objRequest.bTextButtons)
    {
        for (int i = 0; i < objRequest.lstTexts.size(); ++i)
        {
            if (!objRequest.lstTexts.at(i).isEmpty())
            {
                lstAnswers.append(i);
            }
        }
    }
    else
    {
        for (const int nButton : objRequest.lstButtons)
        {
            const int nPlain = nButton & ~(int(QMessageBox::Default) | int(QMessageBox::Escape));
            if (nPlain != 0)
            {
                lstAnswers.append(nPlain);
            }
        }
    }
    const int nOnly = objRequest.bTextButtons ? 0 : int(QMessageBox::Ok);
    const int nAnswer = lstAnswers.isEmpty() ? nOnly : m_objRandom.oneOf(lstAnswers);
    MonkeyDiary::add(QStringLiteral("\"%1\" answered by %2").arg(objRequest.strText.left(40)).arg(nAnswer));
    return nAnswer;
}

void CMonkeyDialogs::look()
{
    if (QWidget* pMenu = QApplication::activePopupWidget())
    {
        if (isWaitedFor())
        {
            answerMenu(*pMenu);
        }
        return;
    }
    QWidget* pModal = QApplication::activeModalWidget();
    const QWindow* pWindow = pModal != nullptr ? pModal->windowHandle() : nullptr;
    if (pWindow == nullptr || !pWindow->isExposed()) // nobody answers what has not appeared
    {
        m_pSeen.clear();
        return;
    }
    m_nLooks = pModal == m_pSeen ? m_nLooks + 1 : 0;
    m_pSeen = pModal;
    auto* pFiles = qobject_cast<QFileDialog*>(pModal);
    if (pFiles != nullptr && m_nLooks < s_nDialogLooks)
    {
        answerFile(*pFiles);
    }
    else if (auto* pDialog = qobject_cast<QDialog*>(pModal))
    {
        MonkeyDiary::add(QStringLiteral("the dialog \"%1\" is given up").arg(pDialog->windowTitle()));
        pDialog->reject();
    }
}

void CMonkeyDialogs::answerFile(QFileDialog& objDialog)
{
    const bool bSaves = objDialog.acceptMode() == QFileDialog::AcceptSave;
    auto* pName = objDialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* pButtons = objDialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    if (pName == nullptr || pButtons == nullptr)
    {
        return;
    }
    if (m_nLooks == 0)
    {
        if (m_objRandom.oneIn(4))
        {
            MonkeyDiary::add(QStringLiteral("dialog cancelled"));
            objDialog.reject();
            return;
        }
        const QString strFile = bSaves ? m_objStudy.exportFolder() + QLatin1Char('/') + m_objRandom.oneOf(exportNames())
                                       : m_objRandom.oneOf(m_objStudy.filesToOpen());
        MonkeyDiary::add(QStringLiteral("dialog answered by ") + QFileInfo(strFile).fileName());
        pName->setText(strFile);
    }
    QPushButton* pAccept = pButtons->button(bSaves ? QDialogButtonBox::Save : QDialogButtonBox::Open);
    if (pAccept != nullptr && pAccept->isEnabled())
    {
        pAccept->click();
    }
}

void CMonkeyDialogs::answerMenu(QWidget& objMenu)
{
    auto* pMenu = qobject_cast<QMenu*>(&objMenu);
    const QList<QAction*> lstActions = pMenu != nullptr ? pMenu->actions() : QList<QAction*>();
    QAction* pAction = lstActions.isEmpty() ? nullptr : m_objRandom.oneOf(lstActions);
    const bool bPicks = pAction != nullptr && pAction->isEnabled() && !pAction->isSeparator() && !m_objRandom.oneIn(3);
    if (bPicks)
    {
        MonkeyDiary::add(QStringLiteral("menu: ") + pAction->text());
        pMenu->setActiveAction(pAction);
        pMenu->close();
        pAction->trigger();
    }
    else
    {
        MonkeyDiary::add(QStringLiteral("menu closed"));
        objMenu.close();
    }
}
