#pragma once

// What the tests of the ways out of the window share: each is used as a person uses it.

#include "WindowTestTools.h"

#include "COrmMessageBox.h"
#include "COrmXYPlot.h"

#include <QGroupBox>

namespace RemovingTest
{
inline QStringList listed(CToolWindow& objTool)
{
    return TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW"));
}

inline QString question(const QString& strEntry)
{
    return QStringLiteral("box warning: Are you sure you want to remove the sequence %1 from the list?").arg(strEntry);
}

inline bool isFree(CToolWindow& objTool, const char* pUnitBox)
{
    return objTool.get<QGroupBox>(pUnitBox)->isEnabled();
}

/// Adds sequences of SOLA, each with a result "R".
inline void addSequences(CStudyWriter& objStudy, const QStringList& lstIDs)
{
    for (const QString& strID : lstIDs)
    {
        objStudy.addSequence(strID);
        SResultDocument objDocument;
        objDocument.strSequenceID = strID;
        objStudy.addResult(strID, QStringLiteral("R"), objDocument);
    }
}

/// Chooses a sequence and loads results of it.
inline void load(CToolWindow& objTool, const QString& strEntry, const QStringList& lstNames)
{
    objTool.chooseSequence(strEntry);
    objTool.load(lstNames);
    WindowTest::paint(objTool);
    objTool.host().clear();
}

/// Chooses a sequence and takes it off the list through the list's menu; the question is answered with Yes.
inline void remove(CToolWindow& objTool, const QString& strEntry)
{
    objTool.chooseSequence(strEntry);
    auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    QContextMenuEvent objEvent(QContextMenuEvent::Mouse, pList->visualItemRect(pList->currentItem()).center());
    QApplication::sendEvent(pList->viewport(), &objEvent);
    auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (pMenu == nullptr)
    {
        TestWidgets::fail(QStringLiteral("No menu opens"));
    }
    objTool.host().setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
    QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier, pMenu->actionGeometry(pMenu->actions().first()).center());
    objTool.host().setAnswer({});
}

inline QStringList lines(CToolWindow& objTool)
{
    QStringList lstNames = objTool.window().findChild<COrmXYPlot*>()->dataLines().keys();
    lstNames.sort();
    return lstNames;
}

const QPoint g_pntHome(0, 70);
const QPoint g_pntElsewhere(150, 120);
} // namespace RemovingTest
