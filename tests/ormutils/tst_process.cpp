// The long process and its display, the helper thread that keeps it moving, and painting what is due.

#include "CAutoProgressUpdate.h"
#include "COrmProcess.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QOpenGLWidget>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace
{
/// Counts its paints.
class CPaintedGL : public QOpenGLWidget
{
public:
    using QOpenGLWidget::QOpenGLWidget;
    int m_nPaints = 0;

protected:
    void paintGL() override { ++m_nPaints; }
};

class CPainted : public QWidget
{
public:
    using QWidget::QWidget;
    int m_nPaints = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++m_nPaints; }
};

QWidget* display()
{
    const QWidgetList lstWindows = QApplication::topLevelWidgets();
    for (QWidget* pWindow : lstWindows)
        if (pWindow->objectName() == QLatin1String("ormProgressDisplay"))
            return pWindow;
    return nullptr;
}

QString labelText(const char* pszName)
{
    const auto* pLabel = display() ? display()->findChild<QLabel*>(QLatin1String(pszName)) : nullptr;
    return pLabel ? pLabel->text() : QStringLiteral("no such label");
}

/// Works for at least that long as a host loop does: no event is processed, the process is kept alive.
void workWithoutEvents(qint64 nMilliseconds)
{
    QElapsedTimer objTimer;
    objTimer.start();
    while (objTimer.elapsed() < nMilliseconds)
        COrmProcess::keepAlive();
}

/// What another client of the display sees of a window's place on the screen.
QImage seenByAnotherClient(const QRect& rcScreen, const QString& strFile)
{
    QFile::remove(strFile);
    QProcess objProcess;
    objProcess.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--grab"), strFile});
    if (!objProcess.waitForFinished(30000) || objProcess.exitCode() != 0)
        return {};
    return QImage(strFile).copy(rcScreen);
}

int differingPixels(const QImage& imgA, const QImage& imgB)
{
    int nDiffering = imgA.size() == imgB.size() && !imgA.isNull() ? 0 : -1;
    for (int y = 0; nDiffering >= 0 && y < imgA.height(); ++y)
        for (int x = 0; x < imgA.width(); ++x)
            nDiffering += imgA.pixel(x, y) != imgB.pixel(x, y) ? 1 : 0;
    return nDiffering;
}
} // namespace

class CProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        COrmProcess::disableUserInteraction(false);
        COrmProcess::endLongProcess(eLongProcessGeneral);
        COrmProcess::setProcessInProgress(eLongProcessAcquisition, false);
        COrmProcess::setDisplayEnabled(true);
        QCoreApplication::processEvents();
    }

    // ---- States and notifications -------------------------------------------------------------------------------

    void everyCallIsToldInOrder()
    {
        QStringList lstCalls;
        QObject objContext;
        COrmProcessNotifier* pNotifier = COrmProcess::notifier();
        connect(pNotifier, &COrmProcessNotifier::started, &objContext,
                [&](int nSteps, int nType, bool bMayAbort, const QString& strAbort)
                { lstCalls << QStringLiteral("start %1 %2 %3 %4").arg(nSteps).arg(nType).arg(bMayAbort).arg(strAbort); });
        connect(pNotifier, &COrmProcessNotifier::message, &objContext,
                [&](const QString& strText, int nStep, int nSteps)
                { lstCalls << QStringLiteral("%1 %2 %3").arg(strText).arg(nStep).arg(nSteps); });
        connect(pNotifier, &COrmProcessNotifier::ended, &objContext, [&](int nType) { lstCalls << QStringLiteral("end %1").arg(nType); });
        connect(pNotifier, &COrmProcessNotifier::userInteractionDisabled, &objContext,
                [&](bool bDisabled) { lstCalls << QStringLiteral("disabled %1").arg(bDisabled); });
        COrmProcess::disableUserInteraction(true);
        COrmProcess::disableUserInteraction(true);
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, "Aborting...");
        COrmProcess::setProcessMessage("Reading", 1, 15, nullptr);
        COrmProcess::endLongProcess(eLongProcessGeneral);
        COrmProcess::endLongProcess(eLongProcessGeneral);
        COrmProcess::disableUserInteraction(false);
        QCOMPARE(lstCalls,
                 QStringList({"disabled 1", "disabled 1", "start 15 8 0 Aborting...", "Reading 1 15", "end 1", "end 1", "disabled 0"}));
    }

    void processIsInProgressByItsKind()
    {
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
        COrmProcess::startLongProcess(15, tag_eLongProcessTypes(8), false, "Aborting...");
        QVERIFY(COrmProcess::isProcessInProgress(eLongProcessAnalysis));
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessGeneral));
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAcquisition));
        COrmProcess::setProcessInProgress(eLongProcessAcquisition, true);
        QVERIFY(COrmProcess::isProcessInProgress(tag_eLongProcessTypes(4096)));
        COrmProcess::endLongProcess(eLongProcessGeneral); // another kind closes it too
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
        QVERIFY(COrmProcess::isProcessInProgress(eLongProcessAcquisition)); // a declared one ends only by declaration
        COrmProcess::setProcessInProgress(eLongProcessAcquisition, false);
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAcquisition));
    }

    void callsFromAnotherThreadDoNothing()
    {
        const QSignalSpy objSpy(COrmProcess::notifier(), &COrmProcessNotifier::started);
        QThread* pThread = QThread::create(
            []
            {
                COrmProcess::startLongProcess(3, eLongProcessGeneral, false, QString());
                COrmProcess::setProcessMessage("x", 1, 3, nullptr);
                COrmProcess::keepAlive();
                COrmProcess::paintDue();
                COrmProcess::disableUserInteraction(true);
            });
        pThread->start();
        QVERIFY(pThread->wait());
        delete pThread;
        QCOMPARE(objSpy.count(), 0);
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessGeneral));
        QVERIFY(!COrmProcess::isUserInteractionDisabled());
    }

    // ---- Display ------------------------------------------------------------------------------------------------

    void displayShowsTitleStepAndCount()
    {
        CAutoProgressUpdate objUpdate("Performing SOLA reconstruction...");
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, "Aborting...");
        QVERIFY(display() && display()->isVisible());
        QVERIFY(!display()->isModal());
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        QCOMPARE(display()->windowTitle(), QString("Ormelle"));
        QCOMPARE(labelText("ormProgressTitle"), QString("Performing SOLA reconstruction..."));
        auto* pBar = display()->findChild<QProgressBar*>();
        QCOMPARE(pBar->text(), QString("0 of 15"));
        QVERIFY(!display()->findChild<QPushButton*>()->isVisible());

        COrmProcess::setProcessMessage("Reading mesh", 3, 15, nullptr);
        QCOMPARE(labelText("ormProgressMessage"), QString("Reading mesh"));
        QCOMPARE(pBar->text(), QString("3 of 15"));
        COrmProcess::setProcessMessage("Done", 99, 15, nullptr);
        QCOMPARE(pBar->text(), QString("15 of 15"));
        COrmProcess::setProcessMessage(QString("<b>") + QString(5000, 'x') + QChar(0x202E), -4, 15, nullptr);
        QCOMPARE(pBar->text(), QString("0 of 15"));
        QVERIFY(labelText("ormProgressMessage").size() < 200);
        QVERIFY(labelText("ormProgressMessage").startsWith("<b>x") && labelText("ormProgressMessage").endsWith("\\u202E"));
        COrmProcess::setProcessMessage("unknown length", 1, 0, nullptr);
        QCOMPARE(pBar->text(), QString());

        COrmProcess::endLongProcess(eLongProcessGeneral);
        QVERIFY(!display()->isVisible());
        COrmProcess::startLongProcess(2, eLongProcessGeneral, false, QString());
        QCOMPARE(labelText("ormProgressTitle"), QString()); // the heading went with its process
        QCOMPARE(labelText("ormProgressMessage"), QString());
        QCOMPARE(pBar->text(), QString("0 of 2"));
    }

    void startWithOneOpenStartsAnew()
    {
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, QString());
        COrmProcess::setProcessMessage("first", 7, 15, nullptr);
        QWidget* pBefore = display();
        COrmProcess::startLongProcess(4, eLongProcessGeneral, false, QString());
        QCOMPARE(display(), pBefore);
        QVERIFY(display()->isVisible());
        QCOMPARE(labelText("ormProgressMessage"), QString());
        QCOMPARE(display()->findChild<QProgressBar*>()->text(), QString("0 of 4"));
        QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
        QVERIFY(COrmProcess::isProcessInProgress(eLongProcessGeneral));
        COrmProcess::endLongProcess(eLongProcessGeneral);
        QVERIFY(!display()->isVisible()); // one end for both starts
    }

    void messageWithoutAProcessShowsNothing()
    {
        bool bAbort = true;
        const QSignalSpy objSpy(COrmProcess::notifier(), &COrmProcessNotifier::message);
        COrmProcess::setProcessMessage("late", 2, 15, &bAbort);
        QCOMPARE(objSpy.count(), 1);
        QVERIFY(!bAbort);
        QVERIFY(!display() || !display()->isVisible());
    }

    void displayCanBeSwitchedOff()
    {
        COrmProcess::setDisplayEnabled(false);
        const QSignalSpy objSpy(COrmProcess::notifier(), &COrmProcessNotifier::started);
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, QString());
        COrmProcess::setProcessMessage("x", 1, 15, nullptr);
        QVERIFY(!display() || !display()->isVisible());
        QCOMPARE(objSpy.count(), 1);
        QVERIFY(COrmProcess::isProcessInProgress(eLongProcessAnalysis));
    }

    void userCanAskToAbortWhereThatIsOffered()
    {
        COrmProcess::startLongProcess(5, eLongProcessGeneral, true, "Aborting...");
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        auto* pButton = display()->findChild<QPushButton*>();
        QVERIFY(pButton->isVisible());
        bool bAbort = true;
        COrmProcess::setProcessMessage("working", 1, 5, &bAbort);
        QVERIFY(!bAbort);
        COrmProcess::disableUserInteraction(true); // the display answers all the same
        QTest::mouseClick(pButton, Qt::LeftButton);
        QCOMPARE(labelText("ormProgressMessage"), QString("Aborting..."));
        QVERIFY(!pButton->isEnabled());
        COrmProcess::setProcessMessage("working on", 2, 5, &bAbort);
        QVERIFY(bAbort);
        QCOMPARE(labelText("ormProgressMessage"), QString("Aborting..."));
        COrmProcess::startLongProcess(5, eLongProcessGeneral, true, "Aborting...");
        COrmProcess::setProcessMessage("again", 1, 5, &bAbort);
        QVERIFY(!bAbort);
    }

    void displayCannotBeClosedAndTakesNoFocus()
    {
        QLineEdit objEdit;
        objEdit.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objEdit));
        COrmProcess::startLongProcess(5, eLongProcessGeneral, false, QString());
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        QVERIFY(QApplication::activeWindow() != display());
        display()->close();
        QVERIFY(display()->isVisible());
        QVERIFY(!display()->parent()); // found among the children of nobody's window
    }

    void displayMovesOnTheScreenWhileNoEventsRun()
    {
        QTemporaryDir objFolder;
        CAutoProgressUpdate objUpdate("Performing SOLA reconstruction...");
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, "Aborting...");
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        const QRect rcDisplay = display()->geometry();
        objUpdate.start(QThread::InheritPriority);
        COrmProcess::setProcessMessage("Reading mesh", 3, 15, nullptr);
        const QImage imgFirst = seenByAnotherClient(rcDisplay, objFolder.filePath("1.png"));
        QVERIFY(!imgFirst.isNull());
        QCOMPARE(imgFirst.size(), rcDisplay.size());
        // No event is processed from here on: what changes on the screen was painted and sent by the calls alone.
        workWithoutEvents(350);
        const QImage imgSecond = seenByAnotherClient(rcDisplay, objFolder.filePath("2.png"));
        const int nMoved = differingPixels(imgFirst, imgSecond);
        QVERIFY2(nMoved > 50, qPrintable(QString::number(nMoved)));
        COrmProcess::setProcessMessage("Reading a longer section of the volume", 9, 15, nullptr);
        const QImage imgThird = seenByAnotherClient(rcDisplay, objFolder.filePath("3.png"));
        const int nStepped = differingPixels(imgSecond, imgThird);
        QVERIFY2(nStepped > 1000, qPrintable(QString::number(nStepped)));
        objUpdate.stop();
        QVERIFY(objUpdate.isFinished());
        const QString strKeep = QString::fromLocal8Bit(qgetenv("ORM_KEEP_PICTURES"));
        if (!strKeep.isEmpty())
        {
            imgSecond.save(strKeep + "/progress-3.png");
            imgThird.save(strKeep + "/progress-9.png");
        }
    }

    void displayThatWasJustClosedIsSeenAgainAtOnce()
    {
        QTemporaryDir objFolder;
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, QString());
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        const QRect rcDisplay = display()->geometry();
        COrmProcess::endLongProcess(eLongProcessGeneral);
        const QImage imgClosed = seenByAnotherClient(rcDisplay, objFolder.filePath("1.png"));
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, QString());
        QCoreApplication::processEvents();
        const QImage imgOpen = seenByAnotherClient(rcDisplay, objFolder.filePath("2.png"));
        const int nShown = differingPixels(imgClosed, imgOpen);
        QVERIFY2(nShown > rcDisplay.width() * rcDisplay.height() / 2, qPrintable(QString::number(nShown)));
        display()->setAttribute(Qt::WA_Mapped, false); // what a late notice of the closing leaves behind
        COrmProcess::setProcessMessage("Reading a longer section of the volume", 12, 15, nullptr);
        const int nStepped = differingPixels(imgOpen, seenByAnotherClient(rcDisplay, objFolder.filePath("3.png")));
        QVERIFY2(nStepped > 1000, qPrintable(QString::number(nStepped)));
    }

    void keepAlivePaintsOnlyWhenAsked()
    {
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, QString());
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        QCoreApplication::processEvents();
        struct SPaints : QObject
        {
            int nPaints = 0;
            bool eventFilter(QObject*, QEvent* pEvent) override
            {
                nPaints += pEvent->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        } objPaints;
        display()->installEventFilter(&objPaints);
        COrmProcess::keepAlive();
        QCOMPARE(objPaints.nPaints, 0);
        COrmProcess::requestRepaint();
        QCOMPARE(objPaints.nPaints, 0);
        COrmProcess::keepAlive();
        QCOMPARE(objPaints.nPaints, 1);
        COrmProcess::keepAlive();
        QCOMPARE(objPaints.nPaints, 1);
        COrmProcess::endLongProcess(eLongProcessGeneral);
        COrmProcess::requestRepaint();
        COrmProcess::keepAlive(); // nothing is open
        QCOMPARE(objPaints.nPaints, 1);
    }

    // ---- The helper thread --------------------------------------------------------------------------------------

    void helperThreadAsksAgainAndAgain()
    {
        COrmProcess::startLongProcess(15, eLongProcessAnalysis, false, QString());
        QVERIFY(QTest::qWaitForWindowExposed(display()));
        struct SPaints : QObject
        {
            int nPaints = 0;
            QThread* pThread = nullptr;
            bool eventFilter(QObject*, QEvent* pEvent) override
            {
                nPaints += pEvent->type() == QEvent::Paint ? 1 : 0;
                pThread = QThread::currentThread();
                return false;
            }
        } objPaints;
        display()->installEventFilter(&objPaints);
        CAutoProgressUpdate objUpdate("Reading");
        QElapsedTimer objTimer;
        objTimer.start();
        objUpdate.start(QThread::InheritPriority);
        while (objPaints.nPaints < 4 && objTimer.elapsed() < 20000)
            COrmProcess::keepAlive();
        QCOMPARE(objPaints.nPaints, 4);
        QVERIFY(objTimer.elapsed() >= 250); // three pauses lie between four paints
        QCOMPARE(objPaints.pThread, qApp->thread());
        objUpdate.stop();
        QVERIFY(!objUpdate.isRunning());
    }

    void helperThreadEndsInEveryOrder()
    {
        {
            CAutoProgressUpdate objNeverStarted("x");
        }
        {
            CAutoProgressUpdate objNeverStopped("x");
            objNeverStopped.start(QThread::InheritPriority);
        }
        CAutoProgressUpdate objUpdate("x");
        objUpdate.stop(); // before the start
        for (int i = 0; i < 3; ++i)
        {
            objUpdate.start(QThread::InheritPriority);
            QElapsedTimer objTimer;
            objTimer.start();
            objUpdate.stop(); // at once, perhaps before run() began
            QVERIFY(objTimer.elapsed() < 5000);
            QVERIFY(objUpdate.isFinished());
        }
        objUpdate.stop();
    }

    // ---- Painting what is due -----------------------------------------------------------------------------------

    void whatIsDueIsPaintedAndNothingElseHappens_data()
    {
        QTest::addColumn<int>("nWay");
        QTest::newRow("paintDue") << 0;
        QTest::newRow("endLongProcess with none open") << 1;
        QTest::newRow("endLongProcess") << 2;
        QTest::newRow("stop of the helper thread") << 3;
    }
    void whatIsDueIsPaintedAndNothingElseHappens()
    {
        QFETCH(int, nWay);
        QWidget objWindow;
        auto* pLayout = new QVBoxLayout(&objWindow);
        auto* pGL = new CPaintedGL;
        auto* pPainted = new CPainted;
        pLayout->addWidget(pGL);
        pLayout->addWidget(pPainted);
        objWindow.resize(300, 200);
        CPaintedGL objAlone; // a window of its own
        objAlone.resize(100, 100);
        objWindow.show();
        objAlone.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        QVERIFY(QTest::qWaitForWindowExposed(&objAlone));
        QTRY_VERIFY(pGL->m_nPaints > 0 && objAlone.m_nPaints > 0);
        CAutoProgressUpdate objUpdate("x");
        if (nWay == 2)
            COrmProcess::startLongProcess(3, eLongProcessGeneral, false, QString());
        objUpdate.start(QThread::InheritPriority);
        QCoreApplication::processEvents();

        bool bTimer = false;
        bool bPosted = false;
        QTimer::singleShot(0, &objWindow, [&] { bTimer = true; });
        QMetaObject::invokeMethod(
            &objWindow, [&] { bPosted = true; }, Qt::QueuedConnection);
        const int nGL = pGL->m_nPaints;
        const int nAlone = objAlone.m_nPaints;
        const int nPainted = pPainted->m_nPaints;
        pGL->update();
        objAlone.update();
        pPainted->update();
        QCOMPARE(pGL->m_nPaints, nGL);
        if (nWay == 0)
            COrmProcess::paintDue();
        else if (nWay == 3)
            objUpdate.stop();
        else
            COrmProcess::endLongProcess(eLongProcessGeneral);
        QCOMPARE(pGL->m_nPaints, nGL + 1);
        QCOMPARE(objAlone.m_nPaints, nAlone + 1);
        QCOMPARE(pPainted->m_nPaints, nPainted + 1);
        QVERIFY(!bTimer && !bPosted);
        COrmProcess::paintDue(); // nothing is due any more
        QCOMPARE(pGL->m_nPaints, nGL + 1);
        objUpdate.stop();
        QTRY_VERIFY(bTimer && bPosted);
    }

    void hiddenWidgetIsNotPainted()
    {
        CPainted objHidden;
        objHidden.update();
        COrmProcess::paintDue();
        QCOMPARE(objHidden.m_nPaints, 0);
    }
};

int main(int nArguments, char** ppszArguments)
{
    if (nArguments == 3 && qstrcmp(ppszArguments[1], "--grab") == 0) // the other client of the display
    {
        const QGuiApplication objApp(nArguments, ppszArguments);
        return QGuiApplication::primaryScreen()->grabWindow(0).save(QString::fromLocal8Bit(ppszArguments[2])) ? 0 : 1;
    }
    QApplication objApp(nArguments, ppszArguments);
    CProcessTest objTest;
    return QTest::qExec(&objTest, nArguments, ppszArguments);
}
#include "tst_process.moc"
