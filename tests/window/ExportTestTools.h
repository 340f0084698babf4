#pragma once

// What the tests of the export share: a user in front of the save dialog, and the window before it.

#include "COrmPreference.h"
#include "WindowTestTools.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

#include <unistd.h>

namespace ExportTest
{
/// What the user does with one save dialog.
struct SSaveAnswer
{
    QString strFilter; ///< extension of the filter to choose; empty: the one that is preselected
    QString strName;   ///< what is typed; a null text: the dialog is cancelled
};

/// What a save dialog shows when it opens.
struct SSaveDialog
{
    QString strCaption;
    QString strFolder;
    QString strName;        ///< in the line for the name
    QStringList lstFilters; ///< extensions, in the order shown
    QString strFilter;      ///< extension of the preselected one
    QString strParent;      ///< object name of the window before which it stands
    bool bConfirmsOverwrite = false;
    bool bSaves = false;
};

/// Answers save dialogs one after another as a user does, by typing and clicking. One dialog too many is cancelled and noted as
/// "unexpected dialog".
class CSaveDialogUser
{
public:
    CSaveDialogUser(CRecordingHost& objHost, const QList<SSaveAnswer>& lstAnswers) : m_objHost(objHost), m_lstAnswers(lstAnswers)
    {
        QObject::connect(&m_objTimer, &QTimer::timeout, [this] { look(); });
        m_objTimer.start(1);
    }

    const QList<SSaveDialog>& seen() const { return m_lstSeen; }
    bool isDone() const { return m_lstAnswers.isEmpty(); }

private:
    static QString extension(const QString& strFilter) { return strFilter.section(QStringLiteral("(*."), 1).chopped(1); }

    void look()
    {
        auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (pDialog == nullptr || pDialog == m_pAnswered || pDialog->windowHandle() == nullptr || !pDialog->windowHandle()->isExposed())
        {
            return;
        }
        m_pAnswered = pDialog;
        SSaveDialog objSeen;
        objSeen.strCaption = pDialog->windowTitle();
        objSeen.strFolder = pDialog->directory().absolutePath();
        objSeen.strName = pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
        for (const QString& strFilter : pDialog->nameFilters())
        {
            objSeen.lstFilters.append(extension(strFilter));
        }
        objSeen.strFilter = extension(pDialog->selectedNameFilter());
        objSeen.strParent = pDialog->parentWidget() != nullptr ? pDialog->parentWidget()->objectName() : QString();
        objSeen.bConfirmsOverwrite = !pDialog->testOption(QFileDialog::DontConfirmOverwrite);
        objSeen.bSaves = pDialog->acceptMode() == QFileDialog::AcceptSave;
        m_lstSeen.append(objSeen);
        if (m_lstAnswers.isEmpty())
        {
            m_objHost.note(QStringLiteral("unexpected dialog"));
            pDialog->reject();
            return;
        }
        m_objHost.note(QStringLiteral("dialog"));
        answer(pDialog, m_lstAnswers.takeFirst());
    }

    void answer(QFileDialog* pDialog, const SSaveAnswer& objAnswer)
    {
        auto* pButtons = pDialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
        if (objAnswer.strName.isNull())
        {
            QTest::mouseClick(pButtons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
            return;
        }
        if (!objAnswer.strFilter.isEmpty())
        {
            auto* pCombo = pDialog->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            const int nFilter = pCombo->findText(QStringLiteral("(*.%1)").arg(objAnswer.strFilter), Qt::MatchEndsWith);
            if (nFilter < 0)
            {
                m_objHost.note(QStringLiteral("no filter for ") + objAnswer.strFilter);
            }
            pCombo->setCurrentIndex(nFilter);
            emit pCombo->activated(nFilter);
        }
        pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(objAnswer.strName);
        QTest::mouseClick(pButtons->button(QDialogButtonBox::Save), Qt::LeftButton);
        if (pDialog->isVisible())
        {
            m_objHost.note(QStringLiteral("the dialog did not take ") + objAnswer.strName);
            pDialog->reject();
        }
    }

    CRecordingHost& m_objHost;
    QList<SSaveAnswer> m_lstAnswers;
    QList<SSaveDialog> m_lstSeen;
    QPointer<QFileDialog> m_pAnswered; ///< the dialog that was answered last
    QTimer m_objTimer;
};

/// A user of the tool's window with an empty folder for exports. Preferences start empty, and the window shows the view.
class CExport
{
public:
    explicit CExport(CToolWindow& objTool) : m_objTool(objTool)
    {
        COrmPreference::setStore(QString());
        if (!objTool.window().isVisible())
        {
            QTemporaryDir objNothing;
            objTool.open(objNothing.path());
        }
        objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(0);
        m_objTool.host().clear();
        m_objTool.host().setAnswer([this](const SMessageRequest&) { return answer(); });
    }

    ~CExport() { m_objTool.host().setAnswer({}); }
    CExport(const CExport&) = delete;
    CExport& operator=(const CExport&) = delete;

    CToolWindow& tool() { return m_objTool; }
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    QString folder() const { return m_objFolder.path(); }

    /// The answers of the boxes to come, in order; then 0.
    void answerBoxes(const QList<int>& lstAnswers) { m_lstBoxAnswers = lstAnswers; }

    /// Presses the export button and answers the save dialogs.
    /// @return what the dialogs showed
    QList<SSaveDialog> exportBy(const QList<SSaveAnswer>& lstAnswers)
    {
        CSaveDialogUser objUser(m_objTool.host(), lstAnswers);
        TestWidgets::click(m_objTool.get<QAbstractButton>("m_pExportButton"));
        if (!objUser.isDone())
        {
            m_objTool.host().note(QStringLiteral("a dialog less than expected"));
        }
        return objUser.seen();
    }

    /// Everything that was asked, in order: "dialog", boxes, each with what was remembered when it stood, and errors. "FOLDER" stands
    /// for the folder's path.
    QStringList calls()
    {
        QStringList lstCalls = m_objTool.host().calls();
        return lstCalls.replaceInStrings(m_objFolder.path(), QStringLiteral("FOLDER"));
    }

    void put(const QString& strName, const QByteArray& aContent)
    {
        QFile objFile(path(strName));
        if (!objFile.open(QIODevice::WriteOnly) || objFile.write(aContent) != aContent.size())
        {
            TestWidgets::fail(QStringLiteral("Cannot write %1").arg(objFile.fileName()));
        }
    }
    QByteArray get(const QString& strName) const
    {
        QFile objFile(path(strName));
        return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArrayLiteral("(no file)");
    }
    /// All files and folders in the folder for exports.
    QStringList entries() const
    {
        return QDir(m_objFolder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    int answer()
    {
        m_objTool.host().note(QStringLiteral("  remembered: %1, %2")
                                  .arg(COrmPreference::getSettings()->getRecentFilePath(), COrmPreference::getUsersPreferredFormat()));
        return m_lstBoxAnswers.isEmpty() ? 0 : m_lstBoxAnswers.takeFirst();
    }

    CToolWindow& m_objTool;
    QTemporaryDir m_objFolder;
    QList<int> m_lstBoxAnswers;
};

/// As long as it lives, files are asked about for a user who owns nothing: root may write everywhere.
class CAskedAsPlainUser
{
public:
    CAskedAsPlainUser()
    {
        if (m_nUser == 0 && setresuid(s_nNobody, 0, 0) != 0)
        {
            qFatal("Cannot ask as another user");
        }
    }
    ~CAskedAsPlainUser()
    {
        if (m_nUser == 0 && setresuid(0, 0, 0) != 0)
        {
            qFatal("Cannot ask as root again");
        }
    }
    CAskedAsPlainUser(const CAskedAsPlainUser&) = delete;
    CAskedAsPlainUser& operator=(const CAskedAsPlainUser&) = delete;

private:
    static constexpr uid_t s_nNobody = 65534;
    uid_t m_nUser = getuid();
};
} // namespace ExportTest
