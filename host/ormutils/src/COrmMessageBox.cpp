#include "COrmMessageBox.h"

#include "COrmLog.h"
#include "COrmPlainText.h"
#include "COrmProcess.h"
#include "COrmUtilityFns.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QThread>

#include <array>

namespace
{
constexpr int g_nLongestText = 4000; ///< characters: a longer text would push the buttons off the screen

COrmMessageBox::FnResponder& responder()
{
    static COrmMessageBox::FnResponder s_fnResponder;
    return s_fnResponder;
}

int buttonNumber(int nButton)
{
    return nButton & ~int(QMessageBox::FlagMask);
}

/// Standard buttons are single bits within a range.
bool isStandardButton(int nNumber)
{
    return nNumber >= QMessageBox::FirstButton && nNumber <= QMessageBox::LastButton && (nNumber & (nNumber - 1)) == 0;
}

/// What is answered when nobody can be asked: what Esc would answer, else the default.
int answerWithoutUser(const SMessageRequest& objRequest)
{
    if (objRequest.bTextButtons)
        return objRequest.nEscape >= 0 ? objRequest.nEscape : objRequest.nDefault;
    for (const int nFlag : {int(QMessageBox::Escape), int(QMessageBox::Default)})
        for (const int nButton : objRequest.lstButtons)
            if (nButton & nFlag)
                return buttonNumber(nButton);
    return buttonNumber(objRequest.lstButtons.value(0)) != 0 ? buttonNumber(objRequest.lstButtons.value(0)) : int(QMessageBox::Ok);
}

/// Puts the buttons of the request into the box. @return what each button answers, by its place.
std::array<QAbstractButton*, 3> addButtons(QMessageBox& objBox, const SMessageRequest& objRequest)
{
    std::array<QAbstractButton*, 3> lstButtons{};
    for (int i = 0; i < 3; ++i)
    {
        QPushButton* pButton = nullptr;
        if (objRequest.bTextButtons)
        {
            const QString strText = objRequest.lstTexts.value(i);
            if (strText.isEmpty())
                continue;
            pButton = objBox.addButton(strText, QMessageBox::ActionRole);
            if (i == objRequest.nDefault)
                objBox.setDefaultButton(pButton);
            if (i == objRequest.nEscape)
                objBox.setEscapeButton(pButton);
        }
        else
        {
            const int nButton = objRequest.lstButtons.value(i);
            if (!isStandardButton(buttonNumber(nButton)))
                continue;
            pButton = objBox.addButton(QMessageBox::StandardButton(buttonNumber(nButton)));
            if (nButton & QMessageBox::Default)
                objBox.setDefaultButton(pButton);
            if (nButton & QMessageBox::Escape)
                objBox.setEscapeButton(pButton);
        }
        lstButtons[size_t(i)] = pButton;
    }
    if (objBox.buttons().isEmpty())
        lstButtons[0] = objBox.addButton(QMessageBox::Ok);
    return lstButtons;
}

int askUser(const SMessageRequest& objRequest)
{
    const auto* pApp = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!pApp || QThread::currentThread() != pApp->thread())
    {
        ORM_LOG(3, QStringLiteral("No user can be asked here: %1").arg(objRequest.strText));
        return answerWithoutUser(objRequest);
    }
    // On the heap and guarded: the parent may go away, and the box with it, while the user is asked.
    const QPointer<QMessageBox> pBox = new QMessageBox(objRequest.pParent);
    pBox->setIcon(objRequest.eKind);
    pBox->setTextFormat(Qt::PlainText);
    pBox->setWindowTitle(objRequest.strCaption.isNull() ? COrmUtilityFns::getAppName() : COrmPlainText::visible(objRequest.strCaption));
    pBox->setText(COrmPlainText::visible(COrmPlainText::shortened(objRequest.strText, g_nLongestText), true));
    const auto lstButtons = addButtons(*pBox, objRequest);
    COrmProcess::exemptFromLock(pBox);
    const int nStandard = pBox->exec();
    if (!pBox)
        return answerWithoutUser(objRequest);
    int nAnswer = nStandard;
    if (objRequest.bTextButtons)
    {
        nAnswer = answerWithoutUser(objRequest);
        for (int i = 0; i < 3; ++i)
            if (lstButtons[size_t(i)] && lstButtons[size_t(i)] == pBox->clickedButton())
                nAnswer = i;
    }
    delete pBox;
    return nAnswer;
}

int ask(const SMessageRequest& objRequest)
{
    const COrmMessageBox::FnResponder fnResponder = responder(); // a copy: it may replace itself
    return fnResponder ? fnResponder(objRequest) : askUser(objRequest);
}

int askStandard(QMessageBox::Icon eKind, QWidget* pParent, const QString& strCaption, const QString& strText, const QList<int>& lstButtons)
{
    SMessageRequest objRequest;
    objRequest.eKind = eKind;
    objRequest.pParent = pParent;
    objRequest.strCaption = strCaption;
    objRequest.strText = strText;
    objRequest.lstButtons = lstButtons;
    return ask(objRequest);
}
} // namespace

int COrmMessageBox::information(QWidget* pParent, const QString& strCaption, const QString& strText, const QString& strButton0,
                                const QString& strButton1, const QString& strButton2, int nDefault, int nEscape)
{
    SMessageRequest objRequest;
    objRequest.eKind = QMessageBox::Information;
    objRequest.pParent = pParent;
    objRequest.strCaption = strCaption;
    objRequest.strText = strText;
    objRequest.bTextButtons = true;
    objRequest.lstTexts = QStringList{strButton0, strButton1, strButton2};
    objRequest.nDefault = nDefault;
    objRequest.nEscape = nEscape;
    return ask(objRequest);
}

int COrmMessageBox::information(QWidget* pParent, const QString& strCaption, const QString& strText, int nButton0, int nButton1,
                                int nButton2)
{
    return askStandard(QMessageBox::Information, pParent, strCaption, strText, {nButton0, nButton1, nButton2});
}

int COrmMessageBox::warning(QWidget* pParent, const QString& strCaption, const QString& strText, int nButton0, int nButton1, int nButton2)
{
    return askStandard(QMessageBox::Warning, pParent, strCaption, strText, {nButton0, nButton1, nButton2});
}

int COrmMessageBox::critical(QWidget* pParent, const QString& strCaption, const QString& strText, int nButton0, int nButton1, int nButton2)
{
    return askStandard(QMessageBox::Critical, pParent, strCaption, strText, {nButton0, nButton1, nButton2});
}

void COrmMessageBox::setResponder(FnResponder fnResponder)
{
    responder() = std::move(fnResponder);
}
