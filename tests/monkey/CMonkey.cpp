#include "CMonkey.h"

#include "COrmProcess.h"
#include "MonkeyDiary.h"

#include <QApplication>
#include <QTabWidget>

namespace
{
/// Sizes of a window that is not being tortured.
constexpr int s_nWidth = 900;
constexpr int s_nHeight = 620;
/// Every so many events the rules that need a painted frame are looked at too.
constexpr int s_nSettleEvery = 25;

QStringList* s_pWarnings = nullptr;
QtMessageHandler s_pHandlerBefore = nullptr;

/// Qt gave the keyboard to a window which the window system had not shown yet, or no longer showed: nobody's fault, and harmless.
bool isLateFocus(const QString& strMessage)
{
    return strMessage.startsWith(QLatin1String("QXcbConnection: XCB error: 8")) && strMessage.contains(QLatin1String("(SetInputFocus)"));
}

/// Qt's warnings count as broken rules of the event in which they come.
void onMessage(QtMsgType eType, const QMessageLogContext& objContext, const QString& strMessage)
{
    if (s_pWarnings != nullptr && (eType == QtWarningMsg || eType == QtCriticalMsg))
    {
        if (!isLateFocus(strMessage))
        {
            s_pWarnings->append(strMessage);
        }
        return;
    }
    s_pHandlerBefore(eType, objContext, strMessage);
}
} // namespace

CMonkey::CMonkey(quint32 nSeed)
    : m_nSeed(nSeed), m_objRandom(nSeed), m_objRules(m_objTool, m_objStudy.sharedKeys()), m_objDialogs(m_objStudy)
{
    m_objTool.host().setAnswer(
        [this](const SMessageRequest& objRequest)
        {
            duringLoad();
            return m_objDialogs.answer(objRequest);
        });
    // Which click or key belongs to the one before it must not hang on the machine's pace.
    QApplication::setDoubleClickInterval(0);
    QApplication::setKeyboardInputInterval(0);
    m_objLoadConnection =
        QObject::connect(COrmProcess::notifier(), &COrmProcessNotifier::message, [this](const QString&, int, int) { duringLoad(); });
    show();
    m_objTool.window().resize(s_nWidth, s_nHeight);
    CMonkeyHands::settle();
}

CMonkey::~CMonkey()
{
    QObject::disconnect(m_objLoadConnection);
    m_objTool.host().setAnswer({});
}

QString CMonkey::run(int nEvents, QStringList* pDiary)
{
    QStringList lstWarnings;
    s_pWarnings = &lstWarnings;
    s_pHandlerBefore = qInstallMessageHandler(onMessage);
    MonkeyDiary::begin(m_nSeed);
    MonkeyDiary::keepAll(pDiary);
    for (int i = 0; i < nEvents && m_strBroken.isNull(); ++i)
    {
        m_objTool.host().clear();
        m_objDialogs.beginEvent(m_objRandom.word());
        doSomething();
        QGuiApplication::sync(); // what the window system has to say to an event comes before the next one
        CMonkeyHands::settle();
        lookAround();
        if (m_strBroken.isNull())
        {
            m_strBroken = m_objRules.broken();
        }
        if (m_strBroken.isNull() && i % s_nSettleEvery == s_nSettleEvery - 1)
        {
            MonkeyDiary::add(QStringLiteral("settled"));
            m_strBroken = m_objRules.brokenWhenSettled();
        }
        if (m_strBroken.isNull() && !lstWarnings.isEmpty())
        {
            m_strBroken = QStringLiteral("a warning: ") + lstWarnings.first();
        }
    }
    MonkeyDiary::end();
    qInstallMessageHandler(s_pHandlerBefore);
    s_pWarnings = nullptr;
    return m_strBroken.isNull()
               ? QString()
               : QStringLiteral("%1\nafter event %2. %3").arg(m_strBroken).arg(MonkeyDiary::eventIndex()).arg(MonkeyDiary::lastEntries());
}

const QList<CMonkey::SDeed>& CMonkey::deeds()
{
    static const QList<SDeed> s_lstDeeds = {
        {180, &CMonkey::clickControl},
        {60, &CMonkey::chooseSequence},
        {60, &CMonkey::chooseResults},
        {30, &CMonkey::pressLoad},
        {60, &CMonkey::loadSomething},
        {100, &CMonkey::clickTile},
        {80, &CMonkey::hover},
        {80, &CMonkey::dragOverTiles},
        {60, &CMonkey::turnWheel},
        {80, &CMonkey::pressKey},
        {30, &CMonkey::typeNumber},
        {20, &CMonkey::switchTab},
        {30, &CMonkey::openContextMenu},
        {10, &CMonkey::openClearMenu},
        {20, &CMonkey::useTool},
        {15, &CMonkey::resizeWindow},
        {10, &CMonkey::resizeView},
        {1, &CMonkey::resizeFar},
        {6, &CMonkey::closeWindow},
        {2, &CMonkey::openOrExport},
        {30, &CMonkey::measure},
        {10, &CMonkey::closeOrOpenSequence},
        {4, &CMonkey::changePreferences},
        {8, &CMonkey::changeIndex},
        {4, &CMonkey::acquire},
    };
    return s_lstDeeds;
}

void CMonkey::doSomething()
{
    QWidget& objWindow = m_objTool.window();
    if (m_nFar > 0 && --m_nFar == 0)
    {
        note(QStringLiteral("back to a common size"));
        objWindow.resize(s_nWidth, s_nHeight);
        return;
    }
    QWidget* pPopup = QApplication::activePopupWidget();
    if (pPopup != nullptr && !m_objRandom.oneIn(4))
    {
        answerPopup(*pPopup);
        return;
    }
    if (!objWindow.isVisible() && !m_objRandom.oneIn(3))
    {
        note(QStringLiteral("show"));
        show();
        return;
    }
    int nAll = 0;
    for (const SDeed& sDeed : deeds())
    {
        nAll += sDeed.nWeight;
    }
    int nChosen = m_objRandom.below(nAll);
    for (const SDeed& sDeed : deeds())
    {
        nChosen -= sDeed.nWeight;
        if (nChosen < 0)
        {
            (this->*sDeed.pDeed)();
            return;
        }
    }
}

/// The interface is locked, or a message is shown. Requests to close arrive all the same, and so does the window system.
void CMonkey::duringLoad()
{
    CLongitudinalStudyBrowserWnd& objWindow = m_objTool.window();
    if (!COrmProcess::isProcessInProgress(eLongProcessAnalysis) || !objWindow.isVisible())
    {
        return;
    }
    switch (m_objRandom.below(24))
    {
    case 0:
        MonkeyDiary::add(QStringLiteral("close during the load"));
        ++m_sMet.nClosesRefused;
        if (objWindow.close() || !objWindow.isVisible())
        {
            m_strBroken = QStringLiteral("the window was closed in the middle of a load");
        }
        break;
    case 1:
        MonkeyDiary::add(QStringLiteral("resize during the load"));
        objWindow.resize(m_objRandom.between(0, s_nWidth), m_objRandom.between(0, s_nHeight));
        break;
    case 2:
        MonkeyDiary::add(QStringLiteral("a second press of Load"));
        QMetaObject::invokeMethod(&objWindow, "onClickLoadButton");
        break;
    default:
        break;
    }
}

void CMonkey::lookAround()
{
    const QList<sAnalysisBase>& lstRecords = m_objTool.view().getAnalysisParams();
    const CRecordingHost& objHost = m_objTool.host();
    bool abKinds[2] = {false, false};
    bool bMeasured = false;
    for (const sAnalysisBase& objRecord : lstRecords)
    {
        abKinds[objRecord.nAnalysisType == 0 ? 0 : 1] = true;
        for (int i = 0; i < static_cast<int>(objRecord.objVolume.getNoOfVoxels()); ++i)
        {
            bMeasured = bMeasured || objRecord.objVolume.isVoxelSelected(i);
        }
    }
    const int nTiles = lstRecords.size();
    const bool bSequenceRemoved = !objHost.callsOf(QStringLiteral("box warning: Are you sure you want to remove")).isEmpty();
    m_sMet.nMostTiles = qMax(m_sMet.nMostTiles, nTiles);
    m_sMet.nBothKinds += abKinds[0] && abKinds[1] ? 1 : 0;
    m_sMet.nMeasured += bMeasured ? 1 : 0;
    m_sMet.nLoads += nTiles > m_nTilesBefore ? 1 : 0;
    m_sMet.nRefusals += objHost.callsOf(QStringLiteral("box information: Unable to load")).isEmpty() ? 0 : 1;
    m_sMet.nSequencesRemoved += bSequenceRemoved ? 1 : 0;
    m_sMet.nTilesRemoved += nTiles < m_nTilesBefore && !bSequenceRemoved ? 1 : 0;
    m_nTilesBefore = nTiles;
}

void CMonkey::note(const QString& strWhat)
{
    if (m_nDepth == 0)
    {
        MonkeyDiary::write(strWhat);
    }
    else
    {
        MonkeyDiary::add(QStringLiteral("meanwhile ") + strWhat);
    }
}

void CMonkey::show()
{
    m_objTool.window().hide(); // one show is one show, whatever was there before
    m_objTool.sequences().open({m_objStudy.folder()});
    for (COrmSequenceDataset* pSequence : m_objTool.sequences().sequences())
    {
        QMetaObject::invokeMethod(&m_objTool.window(), "onSequenceAdded", Q_ARG(COrmSequenceDataset*, pSequence));
    }
    QMetaObject::invokeMethod(&m_objTool.window(), "onInitialUpdate");
    m_objTool.window().show();
    if (!QTest::qWaitForWindowExposed(&m_objTool.window()))
    {
        m_strBroken = QStringLiteral("the window does not show");
    }
}

QString CMonkey::nameOf(const QWidget& objWidget)
{
    QString strName = objWidget.objectName();
    for (const QWidget* pParent = objWidget.parentWidget(); strName.isEmpty() || strName.startsWith(QLatin1String("qt_"));
         pParent = pParent->parentWidget())
    {
        if (pParent == nullptr)
        {
            return QLatin1String(objWidget.metaObject()->className());
        }
        strName = pParent->objectName();
    }
    return strName;
}
