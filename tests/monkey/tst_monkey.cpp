// A monkey at the window: random events, and what must hold after each of them.

#include "CMonkey.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "MonkeyDiary.h"
#include "OrmTestMain.h"

#include <QApplication>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>

#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>

#include <GL/gl.h>

/// Does something to the window that must not happen.
using Break = std::function<void(CToolWindow&)>;
Q_DECLARE_METATYPE(Break)

/// The buttons that are held at each press and release.
class CButtonsSeen : public QObject
{
public:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::MouseButtonPress || pEvent->type() == QEvent::MouseButtonRelease)
        {
            m_lstButtons.append(static_cast<QMouseEvent*>(pEvent)->buttons());
        }
        return QObject::eventFilter(pObject, pEvent);
    }

    QList<Qt::MouseButtons> m_lstButtons;
};

class tst_Monkey : public QObject
{
    Q_OBJECT

private slots:
    void rules_data();
    void rules();
    void sharedKey();
    void unitOfSharedKey();
    void orderWithoutFrames();
    void askedTwice();
    void menuThatGoes_data();
    void menuThatGoes();
    void play_data();
    void play();
    void sameSeed();
    void widestView();
};

namespace
{
constexpr int s_nEvents = 2000;
constexpr quint32 s_nSeed = 1;
/// After so many events everything has come about, whatever the seed.
constexpr int s_nEnough = 20000;

/// A number from the environment, so that anyone can play as long as wished and with any seed.
quint32 fromEnvironment(const char* pName, quint32 nOtherwise)
{
    if (!qEnvironmentVariableIsSet(pName))
    {
        return nOtherwise;
    }
    bool bNumber = false;
    const quint32 nValue = qEnvironmentVariable(pName).toUInt(&bNumber);
    if (!bNumber)
    {
        qFatal("%s is no number", pName);
    }
    return nValue;
}

/// The tool with results of sequence M1 loaded, whose result "2a" has the same key as the result "a" of the sequence M12.
class CSharedKey
{
public:
    CMonkeyStudy objStudy;
    CToolWindow objTool;

    explicit CSharedKey(const QStringList& lstResults) : m_objRules(objTool, CMonkeyStudy::sharedKeys())
    {
        objTool.host().setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
        objTool.open(objStudy.folder());
        load(lstResults);
    }

    void load(const QStringList& lstResults)
    {
        objTool.chooseSequence(QStringLiteral("SOLA M1"));
        objTool.host().clear();
        objTool.load(lstResults);
    }

    /// Removes M12: the shared key goes with it.
    void loseKey()
    {
        objTool.chooseSequence(QStringLiteral("SOLA M12"));
        objTool.host().clear();
        QMetaObject::invokeMethod(&objTool.window(), "onClickRemoveAction");
    }

    QStringList tiles() { return objTool.tiles(); }
    QString broken() { return m_objRules.broken(); }

private:
    CMonkeyRules m_objRules;
};
} // namespace

void tst_Monkey::rules_data()
{
    QTest::addColumn<Break>("fnBreak");
    QTest::addColumn<QString>("strSays");
    const auto row = [](const char* pName, const Break& fnBreak, const QString& strSays) { QTest::newRow(pName) << fnBreak << strSays; };
    row(
        "nothing", [](CToolWindow&) {}, QString());
    row(
        "a key is lost", [](CToolWindow& objTool) { objTool.view().getLoadedResult().removeFirst(); },
        QStringLiteral("a tile without its key"));
    row(
        "a key comes twice", [](CToolWindow& objTool) { objTool.view().getLoadedResult().append(objTool.tiles().first()); },
        QStringLiteral("twice the same key"));
    row(
        "a tile is lost", [](CToolWindow& objTool) { objTool.view().getAnalysisParams().removeLast(); }, QStringLiteral("has no tile"));
    row(
        "tiles out of order",
        [](CToolWindow& objTool)
        {
            QList<sAnalysisBase>& lstRecords = objTool.view().getAnalysisParams();
            lstRecords.swapItemsAt(0, lstRecords.size() - 1);
        },
        QStringLiteral("behind a NOVA one"));
    row(
        "a range upside down", [](CToolWindow& objTool) { objTool.view().setCurrentMinMax(2.0f, 1.0f, 0.0f, 1.0f); },
        QStringLiteral("not ordered"));
    row(
        "a range of no number", [](CToolWindow& objTool) { objTool.view().setCurrentMinMax(0.0f, std::nanf(""), 0.0f, 1.0f); },
        QStringLiteral("not ordered"));
    row(
        "a rectangle without place",
        [](CToolWindow& objTool) { objTool.view().getAnalysisParams().first().fSelectTop = std::numeric_limits<float>::infinity(); },
        QStringLiteral("has no place"));
    row(
        "load on",
        [](CToolWindow& objTool)
        {
            objTool.get<QListWidget>("m_pResultWidget")->clearSelection();
            objTool.get<QWidget>("m_pLoadButton")->setEnabled(true);
        },
        QStringLiteral("m_pLoadButton should be off"));
    row(
        "remove off", [](CToolWindow& objTool) { objTool.get<QWidget>("m_pClear3DViewButton")->setEnabled(false); },
        QStringLiteral("m_pClear3DViewButton should be on"));
    row(
        "wheel off", [](CToolWindow& objTool) { objTool.get<QWidget>("m_pThumWheel")->setEnabled(false); },
        QStringLiteral("the wheel is off"));
    row(
        "a unit free", [](CToolWindow& objTool) { objTool.get<QWidget>("m_pNOVAGB")->setEnabled(true); },
        QStringLiteral("the unit in m_pNOVAGB is free"));
    row(
        "the interface locked", [](CToolWindow&) { COrmProcess::disableUserInteraction(true); }, QStringLiteral("locked"));
    row(
        "a load without end", [](CToolWindow&) { COrmProcess::setProcessInProgress(eLongProcessAnalysis, true); },
        QStringLiteral("still runs"));
    row(
        "the wait cursor", [](CToolWindow&) { QApplication::setOverrideCursor(Qt::WaitCursor); }, QStringLiteral("wait cursor"));
    row(
        "an OpenGL error",
        [](CToolWindow& objTool)
        {
            objTool.view().makeCurrent();
            glEnable(GL_VENDOR);
        },
        QStringLiteral("OpenGL reports error 0x0500"));
    row(
        "a size that OpenGL refuses",
        [](CToolWindow& objTool)
        {
            objTool.view().makeCurrent();
            glViewport(0, 0, -1, -1);
        },
        QString());
    row(
        "a stack left full",
        [](CToolWindow& objTool)
        {
            objTool.view().makeCurrent();
            glPushAttrib(GL_CURRENT_BIT);
        },
        QStringLiteral("stacks are not empty"));
}

/// Each rule sees when it is broken: a monkey that finds nothing has looked.
void tst_Monkey::rules()
{
    QFETCH(Break, fnBreak);
    QFETCH(QString, strSays);
    const CMonkeyStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    CMonkeyRules objRules(objTool, CMonkeyStudy::sharedKeys());
    objTool.chooseSequence(QStringLiteral("SOLA M1"));
    objTool.load({QStringLiteral("a"), QStringLiteral("b")});
    objTool.chooseSequence(QStringLiteral("NOVA FL"));
    objTool.load({QStringLiteral("a")});
    CMonkeyHands::settle();
    QCOMPARE(objTool.tiles().size(), 3);
    const QString strBefore = objRules.brokenWhenSettled();
    QVERIFY2(strBefore.isNull(), qPrintable(strBefore));

    fnBreak(objTool);
    const QString strBroken = objRules.broken();
    COrmProcess::disableUserInteraction(false);
    COrmProcess::setProcessInProgress(eLongProcessAnalysis, false);
    QApplication::restoreOverrideCursor();
    QCOMPARE(strBroken.isNull(), strSays.isNull());
    QVERIFY2(strBroken.contains(strSays), qPrintable(strBroken));
}

/// Of two results with one key, the one whose sequence stays keeps its tile when the key goes. The rules know this, and of this key alone.
void tst_Monkey::sharedKey()
{
    CSharedKey objShared({QStringLiteral("2a"), QStringLiteral("b")});
    QCOMPARE(objShared.tiles(), QStringList({QStringLiteral("M12a"), QStringLiteral("M1b")}));
    QCOMPARE(objShared.broken(), QString());

    objShared.loseKey();
    QCOMPARE(objShared.objTool.view().getLoadedResult(), QStringList({QStringLiteral("M1b")}));
    QCOMPARE(objShared.tiles(), QStringList({QStringLiteral("M12a"), QStringLiteral("M1b")}));
    QCOMPARE(objShared.broken(), QString());

    objShared.load({QStringLiteral("2a")});
    QCOMPARE(objShared.tiles().count(QStringLiteral("M12a")), 2);
    QCOMPARE(objShared.broken(), QString());

    objShared.objTool.view().getLoadedResult().removeAll(QStringLiteral("M1b"));
    QVERIFY(objShared.broken().contains(QStringLiteral("a tile without its key")));
}

/// The tile whose key went with another sequence holds no unit any more; a result that has its key does, and the rules see to that.
void tst_Monkey::unitOfSharedKey()
{
    CSharedKey objShared({QStringLiteral("2a")});
    QCOMPARE(objShared.broken(), QString());
    auto* pUnit = objShared.objTool.get<QWidget>("m_pSOLAGB");
    QVERIFY(!pUnit->isEnabled());

    objShared.loseKey();
    QCOMPARE(objShared.tiles(), QStringList({QStringLiteral("M12a")}));
    QVERIFY(pUnit->isEnabled());
    QCOMPARE(objShared.broken(), QString());

    objShared.load({QStringLiteral("b")});
    QVERIFY(!pUnit->isEnabled());
    QCOMPARE(objShared.broken(), QString());
    pUnit->setEnabled(true);
    QVERIFY(objShared.broken().startsWith(QStringLiteral("the unit in m_pSOLAGB is free: tiles M12a, M1b, keys M1b")));
}

/// A view without extent paints no frame, so a SOLA result that is loaded behind a NOVA one stays behind it; the rules know this.
void tst_Monkey::orderWithoutFrames()
{
    const CMonkeyStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    CMonkeyRules objRules(objTool, CMonkeyStudy::sharedKeys());
    objTool.view().resize(0, 1);
    CMonkeyHands::settle();
    objTool.chooseSequence(QStringLiteral("NOVA FL"));
    objTool.load({QStringLiteral("a")});
    QCOMPARE(objRules.broken(), QString());
    objTool.chooseSequence(QStringLiteral("SOLA M1"));
    objTool.load({QStringLiteral("b")});
    QCOMPARE(objTool.tiles(), QStringList({QStringLiteral("FLa"), QStringLiteral("M1b")}));
    QCOMPARE(objRules.broken(), QString());

    objTool.view().resize(300, 200);
    QCOMPARE(objRules.brokenWhenSettled(), QString());
    objTool.load({QStringLiteral("a")}); // now the frame has seen both kinds
    QCOMPARE(objTool.tiles(), QStringList({QStringLiteral("M1a"), QStringLiteral("FLa"), QStringLiteral("M1b")}));
    QCOMPARE(objRules.broken(), QString());
}

/// A dialog that asks before it replaces a file asks from within the answer to its first question. That one is answered too.
void tst_Monkey::askedTwice()
{
    const CMonkeyStudy objStudy;
    for (const QString& strName : CMonkeyDialogs::exportNames())
    {
        CStudyWriter::writeFile(objStudy.exportFolder() + QLatin1Char('/') + strName, QByteArray("old"));
    }
    CMonkeyDialogs objDialogs(objStudy);
    MonkeyDiary::begin(1);
    MonkeyDiary::write(QStringLiteral("a name is asked for"));
    objDialogs.beginEvent(1);
    QFileDialog objDialog(nullptr, QString(), objStudy.exportFolder());
    objDialog.setAcceptMode(QFileDialog::AcceptSave);
    const int nAnswer = objDialog.exec();
    const QString strDiary = MonkeyDiary::lastEntries();
    MonkeyDiary::end();
    QCOMPARE(nAnswer, int(QDialog::Rejected));
    QVERIFY2(strDiary.contains(QStringLiteral("dialog answered")) && strDiary.contains(QStringLiteral("is given up")),
             qPrintable(strDiary));
}

void tst_Monkey::menuThatGoes_data()
{
    QTest::addColumn<bool>("bClick");
    QTest::newRow("left by a key") << false;
    QTest::newRow("clicked beside") << true;
}

/// The plot's menu is deleted by the very key or press that closes it; the hands must not touch it again.
void tst_Monkey::menuThatGoes()
{
    QFETCH(bool, bClick);
    QPointer<QMenu> pMenu(new QMenu);
    pMenu->setAttribute(Qt::WA_DeleteOnClose);
    pMenu->addAction(QStringLiteral("an entry"));
    pMenu->popup(QPoint(100, 100));
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));
    CMonkeyHands objHands;
    if (bClick)
    {
        objHands.click(pMenu, QPoint(-50, -50), Qt::LeftButton);
    }
    else
    {
        objHands.key(pMenu, Qt::Key_Escape);
    }
    QVERIFY(pMenu.isNull());

    // Nothing is held any more: the next click is one.
    QWidget objWindow;
    objWindow.resize(50, 50);
    objWindow.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
    CButtonsSeen objSeen;
    objWindow.installEventFilter(&objSeen);
    objHands.click(&objWindow, QPoint(20, 20), Qt::RightButton);
    QCOMPARE(objSeen.m_lstButtons, QList<Qt::MouseButtons>({Qt::RightButton, Qt::NoButton}));
}

void tst_Monkey::play_data()
{
    QTest::addColumn<quint32>("nSeed");
    QTest::addColumn<int>("nEvents");
    if (qEnvironmentVariableIsSet("ORM_MONKEY_EVENTS") || qEnvironmentVariableIsSet("ORM_MONKEY_SEED"))
    {
        QTest::newRow("as wished") << fromEnvironment("ORM_MONKEY_SEED", s_nSeed)
                                   << static_cast<int>(fromEnvironment("ORM_MONKEY_EVENTS", s_nEvents));
        return;
    }
    QTest::newRow("any") << s_nSeed << s_nEvents;
}

void tst_Monkey::play()
{
    QFETCH(quint32, nSeed);
    QFETCH(int, nEvents);
    CMonkey objMonkey(nSeed);
    const QString strBroken = objMonkey.run(nEvents);
    if (!strBroken.isNull())
    {
        std::fprintf(stderr, "%s\n", qPrintable(strBroken)); // whole: a message of the test library is cut
        QFAIL("a rule was broken");
    }

    const CMonkey::SMet& sMet = objMonkey.met();
    qInfo("%d events: up to %d tiles, %d loads, %d refused, %d closes in the middle of one, %d sequences and %d times results removed, "
          "%d events with both kinds, %d with selected voxels",
          nEvents, sMet.nMostTiles, sMet.nLoads, sMet.nRefusals, sMet.nClosesRefused, sMet.nSequencesRemoved, sMet.nTilesRemoved,
          sMet.nBothKinds, sMet.nMeasured);
    if (nEvents < (nSeed == s_nSeed ? s_nEvents : s_nEnough))
    {
        return; // too few to demand anything of
    }
    QVERIFY(sMet.nMostTiles > 4);
    QVERIFY(sMet.nLoads > 0);
    QVERIFY(sMet.nRefusals > 0);
    QVERIFY(sMet.nClosesRefused > 0);
    QVERIFY(sMet.nSequencesRemoved > 0);
    QVERIFY(sMet.nTilesRemoved > 0);
    QVERIFY(sMet.nBothKinds > 0);
    QVERIFY(sMet.nMeasured > 0);
}

/// What a seed did once it does again: a broken rule can be looked at a second time.
void tst_Monkey::sameSeed()
{
    constexpr quint32 nSeed = 5;
    constexpr int nEvents = 250;
    std::array<QStringList, 2> alstDiaries;
    for (QStringList& lstDiary : alstDiaries)
    {
        COrmPreference::setStore(QString()); // the monkey changes preferences
        CMonkey objMonkey(nSeed);
        const QString strBroken = objMonkey.run(nEvents, &lstDiary);
        QVERIFY2(strBroken.isNull(), qPrintable(strBroken));
        QCOMPARE(lstDiary.size(), nEvents - 1);
    }
    QCOMPARE(alstDiaries[0], alstDiaries[1]);
}

/// Wider than a viewport of OpenGL can be, and with hardly any height.
void tst_Monkey::widestView()
{
    const CMonkeyStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA M1"));
    objTool.load({QStringLiteral("a"), QStringLiteral("b")});
    objTool.chooseSequence(QStringLiteral("NOVA FL"));
    objTool.load({QStringLiteral("a")});
    QCOMPARE(objTool.tiles().size(), 3);

    CLongitudinalStudyBrowserView objView(nullptr);
    for (sAnalysisBase& objRecord : objTool.view().getAnalysisParams())
    {
        objView.setAnalysisParms(objRecord);
        objView.getLoadedResult().append(objRecord.strSequenceID + objRecord.strResultName);
    }
    objView.resize(17000, 64);
    objView.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objView));
    objView.settle();
    QCOMPARE(objView.getGLWidth(), 17000);
    CMonkeyHands objHands;
    for (const int nX : {0, 5000, 12000, 16390, 16999})
    {
        objHands.move(&objView, QPoint(nX, 40));
        objHands.click(&objView, QPoint(nX, 40), Qt::LeftButton);
    }
    QVERIFY(objView.containsSOLAResults());
    QVERIFY(objView.containsNOVAResults());
    objView.resize(400, 300);
    objView.settle();
    QVERIFY(!objView.getPrintImage().isNull());
    for (const QString& strEntry : objTool.host().hostLog())
    {
        QVERIFY2(!strEntry.contains(QStringLiteral("OpenGL reports error")), qPrintable(strEntry));
    }
}

ORM_TEST_MAIN(tst_Monkey)
#include "tst_monkey.moc"
