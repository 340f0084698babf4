#pragma once

// What the tests of the export share: a user of the window with a folder of his own.

#include "COrmPreference.h"
#include "CSaveDialogUser.h"
#include "WindowTestTools.h"

#include <QAbstractButton>

#include <unistd.h>

namespace ExportTest
{
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
