#pragma once

// What the tests of the export share: a user of the window with a folder of his own.

#include "COrmPreference.h"
#include "CSaveDialogUser.h"
#include "CTestFolder.h"
#include "WindowTestTools.h"

#include <QAbstractButton>

namespace ExportTest
{
/// A user of the tool's window with an empty folder for exports. Preferences start empty, and the window shows the view.
class CExport : public CTestFolder
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
        return lstCalls.replaceInStrings(folder(), QStringLiteral("FOLDER"));
    }

private:
    int answer()
    {
        m_objTool.host().note(QStringLiteral("  remembered: %1, %2")
                                  .arg(COrmPreference::getSettings()->getRecentFilePath(), COrmPreference::getUsersPreferredFormat()));
        return m_lstBoxAnswers.isEmpty() ? 0 : m_lstBoxAnswers.takeFirst();
    }

    CToolWindow& m_objTool;
    QList<int> m_lstBoxAnswers;
};

} // namespace ExportTest
