#pragma once

// What the tests of Ormelle's main window share: a window over a study of its own, with a Plugins folder and settings of its own.

#include "COrmMainWindow.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmSequenceDataset.h"
#include "COrmTool.h"
#include "COrmToolPluginBase.h"
#include "CRecordingHost.h"
#include "CStudyWriter.h"
#include "PluginFolder.h"
#include "TestWidgets.h"

#include <QAction>
#include <QElapsedTimer>
#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeView>

#include <memory>

class CMainWindowTest : public QObject
{
protected:
    void makeWindow();
    void removeWindow();

    /// Adds sequences to the study, opens it and waits until all are open.
    void openStudy(const QStringList& lstIDs);
    /// Selects sequences by clicks into the list.
    void select(const QStringList& lstIDs) const;
    /// A column of the list, from top to bottom.
    QStringList shownColumn(int nColumn) const;
    QAction* action(const char* pName) const { return TestWidgets::get<QAction>(m_pWindow.get(), pName); }
    QMenu* menu(const char* pName) const { return TestWidgets::get<QMenu>(m_pWindow.get(), pName); }
    /// The texts of a menu; "-" is a separator.
    static QStringList entries(const QMenu* pMenu);
    /// Loads the tool that records what is called.
    COrmToolPluginBase* loadRecordingTool();
    /// What was called on the recording tool since the last look.
    static QStringList takeCalls(COrmToolPluginBase* pTool);

    std::unique_ptr<QTemporaryDir> m_pSettings;
    std::unique_ptr<CRecordingHost> m_pHost;
    std::unique_ptr<CStudyWriter> m_pStudy;
    std::unique_ptr<CPluginFolder> m_pPlugins;
    std::unique_ptr<COrmMainWindow> m_pWindow;
};

inline void CMainWindowTest::makeWindow()
{
    m_pSettings = std::make_unique<QTemporaryDir>();
    COrmPreference::setStore(m_pSettings->filePath(QStringLiteral("preferences.json")));
    m_pHost = std::make_unique<CRecordingHost>();
    m_pStudy = std::make_unique<CStudyWriter>();
    m_pPlugins = std::make_unique<CPluginFolder>();
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
}

inline void CMainWindowTest::removeWindow()
{
    m_pWindow.reset();
    m_pPlugins.reset();
    m_pStudy.reset();
    m_pHost.reset();
    COrmPreference::setStore(QString());
    m_pSettings.reset();
}

/// Keeps the processor busy for two milliseconds, so that no machine is too fast to be seen at work.
inline void dawdle()
{
    QElapsedTimer objTimer;
    objTimer.start();
    while (objTimer.elapsed() < 2)
    {
    }
}

inline void CMainWindowTest::openStudy(const QStringList& lstIDs)
{
    for (const QString& strID : lstIDs)
        m_pStudy->addSequence(strID);
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_VERIFY(!TestWidgets::get<QToolButton>(m_pWindow.get(), "stopSearch")->isVisible());
    for (const QString& strID : lstIDs)
        QVERIFY2(COrmSequenceDataset::getSequenceDataset(strID) != nullptr, qPrintable(strID));
}

inline void CMainWindowTest::select(const QStringList& lstIDs) const
{
    auto* pList = TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList");
    pList->clearSelection();
    for (const QString& strID : lstIDs)
    {
        const int nRow = shownColumn(0).indexOf(strID);
        QVERIFY2(nRow >= 0, qPrintable(strID));
        const QRect rcRow = pList->visualRect(pList->model()->index(nRow, 0));
        QTest::mouseClick(pList->viewport(), Qt::LeftButton, Qt::ControlModifier, rcRow.center());
    }
}

inline QStringList CMainWindowTest::shownColumn(int nColumn) const
{
    const auto* pList = TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList");
    QStringList lstTexts;
    for (int nRow = 0; nRow < pList->model()->rowCount(); ++nRow)
        lstTexts.append(pList->model()->index(nRow, nColumn).data().toString());
    return lstTexts;
}

inline QStringList CMainWindowTest::entries(const QMenu* pMenu)
{
    QStringList lstTexts;
    const QList<QAction*> lstActions = pMenu->actions();
    for (const QAction* pAction : lstActions)
        lstTexts.append(pAction->isSeparator() ? QStringLiteral("-") : pAction->text());
    return lstTexts;
}

inline COrmToolPluginBase* CMainWindowTest::loadRecordingTool()
{
    m_pPlugins->addLibrary(QStringLiteral("RecordingTool"));
    m_pWindow->loadTools(m_pPlugins->path());
    const COrmTool* pTool = m_pWindow->plugins()->tool(QStringLiteral("Recording Tool"));
    if (pTool == nullptr)
        TestWidgets::fail(m_pWindow->plugins()->refusals().join(QLatin1Char('\n')));
    takeCalls(pTool->plugin());
    return pTool->plugin();
}

inline QStringList CMainWindowTest::takeCalls(COrmToolPluginBase* pTool)
{
    const QStringList lstCalls = pTool->property("calls").toStringList();
    pTool->setProperty("calls", QVariant());
    return lstCalls;
}
