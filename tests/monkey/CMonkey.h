#pragma once

#include "CMonkeyDialogs.h"
#include "CMonkeyHands.h"
#include "CMonkeyRandom.h"
#include "CMonkeyRules.h"
#include "CMonkeyStudy.h"
#include "CToolWindow.h"

#include <QStringList>

/// Plays with the tool's window on the screen: events at random, the same ones for the same seed as far as neither the time nor another
/// program's window plays a part. After each event the rules must hold.
class CMonkey
{
public:
    explicit CMonkey(quint32 nSeed);
    ~CMonkey();

    /// How often something came about: without it the monkey would have played with nothing.
    struct SMet
    {
        int nMostTiles = 0;
        int nBothKinds = 0;     ///< events with results of both kinds
        int nLoads = 0;         ///< loads that added a result
        int nRefusals = 0;      ///< loads that were refused with a message
        int nClosesRefused = 0; ///< attempts to close in the middle of a load
        int nSequencesRemoved = 0;
        int nTilesRemoved = 0; ///< by the menus
        int nMeasured = 0;     ///< events with selected voxels
    };
    const SMet& met() const { return m_sMet; }

    /// Does that many events. Null if all rules held; otherwise what broke, with seed, number of the event and the last ones.
    /// What was done goes to the list, an entry for each event but the last.
    QString run(int nEvents, QStringList* pDiary = nullptr);

private:
    /// One of the things the monkey can do. It writes down in words what it does.
    using Deed = void (CMonkey::*)();
    struct SDeed
    {
        int nWeight;
        Deed pDeed;
    };
    static const QList<SDeed>& deeds();

    void doSomething();
    void duringLoad();
    void lookAround();
    void note(const QString& strWhat);

    // ---- What a user does ----
    void clickControl();
    void chooseSequence();
    void chooseResults();
    void pressLoad();
    void loadSomething();
    void clickTile();
    void hover();
    void dragOverTiles();
    void turnWheel();
    void pressKey();
    void typeNumber();
    void switchTab();
    void openContextMenu();
    void openClearMenu();
    void useTool();
    void resizeWindow();
    void resizeView();
    void resizeFar();
    void closeWindow();
    void openOrExport();
    void measure();
    void dragAcross(const QWidget& objWidget, QPoint ptAt, const QPoint& ptStep);

    // ---- What the host and the world do ----
    void closeOrOpenSequence();
    void changePreferences();
    void changeIndex();
    void acquire();

    QWidget* anyControl();
    QPoint placeOn(const QWidget& objWidget);
    Qt::KeyboardModifiers modifiers();
    void show();
    void answerPopup(QWidget& objPopup);
    static QString nameOf(const QWidget& objWidget);

    quint32 m_nSeed;
    CMonkeyRandom m_objRandom;
    CMonkeyStudy m_objStudy;
    CToolWindow m_objTool;
    CMonkeyRules m_objRules;
    CMonkeyDialogs m_objDialogs;
    CMonkeyHands m_objHands;
    SMet m_sMet;
    int m_nTilesBefore = 0;
    QString m_strBroken; ///< what was seen in the middle of an event
    int m_nFar = 0;      ///< events until a very large window is made small again
    int m_nDepth = 0;    ///< things done in the middle of another
    QMetaObject::Connection m_objLoadConnection;
};
