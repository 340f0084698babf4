#ifndef CORMMESSAGEBOX_H
#define CORMMESSAGEBOX_H

#include <QList>
#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>

/// What a message box asks.
struct SMessageRequest
{
    QMessageBox::Icon eKind = QMessageBox::NoIcon; ///< Information, Warning or Critical
    QWidget* pParent = nullptr;                    ///< may be null
    QString strCaption;                            ///< as passed; null: the application's name is shown
    QString strText;                               ///< as passed; plain text
    bool bTextButtons = false;                     ///< buttons are lstTexts, and the answer is an index
    QStringList lstTexts;                          ///< the three texts as passed; null or empty: no such button
    QList<int> lstButtons;                         ///< the three numbers as passed, with QMessageBox::Default and Escape bits; 0: none
    int nDefault = 0;                              ///< text buttons: index of the button for Return
    int nEscape = -1;                              ///< text buttons: index that Esc answers; -1: the only button, if there is one
};

/// Modal messages of the host, in plain text. They answer even while the interface is locked. Without any button there is "OK".
class COrmMessageBox
{
public:
    /// Answers a request in place of the user: the index for text buttons, else the QMessageBox::StandardButton without flag bits.
    using FnResponder = std::function<int(const SMessageRequest&)>;

    COrmMessageBox() = delete;

    /// @return the index of the pressed button
    static int information(QWidget* pParent, const QString& strCaption, const QString& strText, const QString& strButton0,
                           const QString& strButton1 = QString(), const QString& strButton2 = QString(), int nDefault = 0,
                           int nEscape = -1);
    /// @return the pressed QMessageBox::StandardButton
    static int information(QWidget* pParent, const QString& strCaption, const QString& strText, int nButton0, int nButton1 = 0,
                           int nButton2 = 0);
    /// @return the pressed QMessageBox::StandardButton
    static int warning(QWidget* pParent, const QString& strCaption, const QString& strText, int nButton0, int nButton1 = 0,
                       int nButton2 = 0);
    /// @return the pressed QMessageBox::StandardButton
    static int critical(QWidget* pParent, const QString& strCaption, const QString& strText, int nButton0, int nButton1 = 0,
                        int nButton2 = 0);

    /// Replaces the modal box; an empty function brings it back.
    static void setResponder(FnResponder fnResponder);
};

#endif
