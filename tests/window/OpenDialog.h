#pragma once

// The dialog that asks for a file to open, used as a person uses it.

#include "CToolWindow.h"

#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include <functional>

namespace OpenDialog
{
/// What the dialog looked like when it came up.
struct SSeen
{
    bool bShown = false;
    QString strCaption;
    QString strFolder;
    QStringList lstFilters;
    QStringList lstFiles; ///< names of the files and folders that it lists, in its order
    QFileDialog::AcceptMode eAcceptMode = QFileDialog::AcceptSave;
    QFileDialog::FileMode eFileMode = QFileDialog::AnyFile;
    QFileDialog::Options eOptions;
    const QWidget* pParent = nullptr;
};

/// Does something with the dialog that comes up; true: it is done with it.
using Act = std::function<bool(QFileDialog&)>;

/// Presses the open button and hands the dialog to the act until that is done. The test ends if the dialog stays after twenty seconds.
inline SSeen press(CToolWindow& objTool, const Act& fnAct)
{
    SSeen sSeen;
    bool bStuck = false;
    QElapsedTimer objWaiting;
    objWaiting.start();
    QTimer objLook;
    objLook.setInterval(5);
    QObject::connect(&objLook, &QTimer::timeout,
                     [&]
                     {
                         auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                         if (pDialog == nullptr || !pDialog->isVisible())
                         {
                             return;
                         }
                         if (!sSeen.bShown)
                         {
                             sSeen = {true,
                                      pDialog->windowTitle(),
                                      pDialog->directory().absolutePath(),
                                      pDialog->nameFilters(),
                                      {},
                                      pDialog->acceptMode(),
                                      pDialog->fileMode(),
                                      pDialog->options(),
                                      pDialog->parentWidget()};
                         }
                         if (objWaiting.elapsed() > 20000)
                         {
                             bStuck = true;
                             pDialog->reject();
                             objLook.stop();
                         }
                         else if (fnAct(*pDialog))
                         {
                             objLook.stop();
                         }
                     });
    objLook.start();
    TestWidgets::click(objTool.get<QToolButton>("m_pOpenButton"));
    if (bStuck)
    {
        TestWidgets::fail(QStringLiteral("The dialog could not be done with"));
    }
    return sSeen;
}

/// Types the path of a file and presses Open. What is done with the file when it has been chosen, before the tool looks at it, is up to
/// the caller.
inline SSeen pick(CToolWindow& objTool, const QString& strFile, const std::function<void()>& fnChosen = {})
{
    bool bTyped = false;
    return press(objTool,
                 [&](QFileDialog& objDialog)
                 {
                     auto* pName = TestWidgets::get<QLineEdit>(&objDialog, "fileNameEdit");
                     if (!bTyped)
                     {
                         pName->setText(strFile);
                         bTyped = true;
                         if (fnChosen)
                         {
                             QObject::connect(&objDialog, &QDialog::accepted, fnChosen);
                         }
                     }
                     auto* pOpen = TestWidgets::get<QDialogButtonBox>(&objDialog, "buttonBox")->button(QDialogButtonBox::Open);
                     if (!pOpen->isEnabled())
                     {
                         return false; // it has not found the file yet
                     }
                     TestWidgets::click(pOpen);
                     return true;
                 });
}

/// Presses Cancel.
inline SSeen cancel(CToolWindow& objTool)
{
    return press(objTool,
                 [](QFileDialog& objDialog)
                 {
                     TestWidgets::click(TestWidgets::get<QDialogButtonBox>(&objDialog, "buttonBox")->button(QDialogButtonBox::Cancel));
                     return true;
                 });
}
} // namespace OpenDialog
