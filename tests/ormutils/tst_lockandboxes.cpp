// The lock of the interface, and the real message boxes, which answer during it.

#include "COrmErrorHandler.h"
#include "COrmMessageBox.h"
#include "COrmProcess.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <functional>

// Queues an event as the window system does; QTest itself uses it.
extern Q_GUI_EXPORT void qt_handleMouseEvent(QWindow*, const QPointF&, const QPointF&, Qt::MouseButtons, Qt::MouseButton, QEvent::Type,
                                             Qt::KeyboardModifiers, int);

namespace
{
/// A window that refuses to be closed and counts the requests.
class CStubborn : public QWidget
{
public:
    using QWidget::QWidget;
    int m_nCloses = 0;

protected:
    void closeEvent(QCloseEvent* pEvent) override
    {
        ++m_nCloses;
        pEvent->ignore();
    }
};

/// Runs a function on the modal box as soon as one shows.
void onBox(const std::function<void(QMessageBox*)>& fnDo)
{
    auto* pTimer = new QTimer(qApp);
    pTimer->setInterval(5);
    QObject::connect(pTimer, &QTimer::timeout, pTimer,
                     [pTimer, fnDo]
                     {
                         auto* pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                         if (!pBox || !pBox->isVisible())
                             return;
                         pTimer->stop();
                         pTimer->deleteLater();
                         fnDo(pBox);
                     });
    pTimer->start();
}
} // namespace

class CLockAndBoxesTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        COrmProcess::disableUserInteraction(false);
        QCoreApplication::processEvents();
    }

    // ---- Lock ---------------------------------------------------------------------------------------------------

    void lockKeepsInputFromWindowsAndLetsItBackIn()
    {
        QWidget objWindow;
        auto* pLayout = new QVBoxLayout(&objWindow);
        auto* pButton = new QPushButton("Load");
        auto* pEdit = new QLineEdit;
        pLayout->addWidget(pButton);
        pLayout->addWidget(pEdit);
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        const QSignalSpy objClicks(pButton, &QPushButton::clicked);
        COrmProcess::disableUserInteraction(true);
        QVERIFY(COrmProcess::isUserInteractionDisabled());
        QTest::mouseClick(pButton, Qt::LeftButton);
        QTest::mouseDClick(pButton, Qt::LeftButton);
        QTest::keyClick(pButton, Qt::Key_Space);
        QTest::keyClicks(pEdit, "abc");
        QTest::mouseClick(objWindow.windowHandle(), Qt::LeftButton, Qt::NoModifier, pButton->geometry().center());
        QCOMPARE(objClicks.count(), 0);
        QVERIFY(pEdit->text().isEmpty());
        QVERIFY(!pButton->isDown());

        COrmProcess::disableUserInteraction(true); // a flag, no count
        COrmProcess::disableUserInteraction(false);
        QVERIFY(!COrmProcess::isUserInteractionDisabled());
        QTest::mouseClick(pButton, Qt::LeftButton);
        QTest::keyClick(pButton, Qt::Key_Space);
        QTest::keyClicks(pEdit, "abc");
        QCOMPARE(objClicks.count(), 2);
        QCOMPARE(pEdit->text(), QString("abc"));
        COrmProcess::disableUserInteraction(false); // not locked
        QTest::mouseClick(pButton, Qt::LeftButton);
        QCOMPARE(objClicks.count(), 3);
    }

    void lockStopsShortcutsAndMenuEntries()
    {
        QWidget objWindow;
        int nActivated = 0;
        QAction objAction("Copy");
        objAction.setShortcut(QKeySequence("Ctrl+C"));
        objAction.setShortcutContext(Qt::ApplicationShortcut);
        objWindow.addAction(&objAction);
        connect(&objAction, &QAction::triggered, &objWindow, [&] { ++nActivated; });
        QShortcut objShortcut(QKeySequence("Ctrl+R"), &objWindow);
        objShortcut.setContext(Qt::ApplicationShortcut);
        connect(&objShortcut, &QShortcut::activated, &objWindow, [&] { ++nActivated; });
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        QApplication::setActiveWindow(&objWindow); // there may be no window manager to do it
        COrmProcess::disableUserInteraction(true);
        QTest::keyClick(objWindow.windowHandle(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(objWindow.windowHandle(), Qt::Key_R, Qt::ControlModifier);
        QTest::keyClick(&objWindow, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(nActivated, 0);
        COrmProcess::disableUserInteraction(false);
        QTest::keyClick(&objWindow, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(&objWindow, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(nActivated, 2);
    }

    void requestToCloseReachesTheWindowDuringTheLock()
    {
        CStubborn objWindow;
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        COrmProcess::disableUserInteraction(true);
        objWindow.windowHandle()->close(); // as the window manager asks
        QCOMPARE(objWindow.m_nCloses, 1);
        QVERIFY(objWindow.isVisible());
    }

    /// The second click of a double click arrives from the window system while the first one's work blocks the thread.
    void secondPressThatWaitedDuringTheWorkHasNoEffect()
    {
        QWidget objWindow;
        auto* pLayout = new QVBoxLayout(&objWindow);
        auto* pButton = new QPushButton("Load");
        pLayout->addWidget(pButton);
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        QWindow* pHandle = objWindow.windowHandle();
        const QPointF ptButton = pButton->mapTo(&objWindow, pButton->rect().center());
        const QPointF ptGlobal = pButton->mapToGlobal(pButton->rect().center());
        int nTime = 1000;
        const auto queueClick = [&](QEvent::Type eFirst)
        {
            qt_handleMouseEvent(pHandle, ptButton, ptGlobal, Qt::LeftButton, Qt::LeftButton, eFirst, Qt::NoModifier, ++nTime);
            qt_handleMouseEvent(pHandle, ptButton, ptGlobal, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease, Qt::NoModifier,
                                ++nTime);
        };
        int nLoads = 0;
        connect(pButton, &QPushButton::clicked, &objWindow,
                [&]
                {
                    ++nLoads;
                    COrmProcess::disableUserInteraction(true);
                    if (nLoads < 10)
                        queueClick(QEvent::MouseButtonPress); // the user presses again, nobody looks at the queue yet
                    COrmProcess::disableUserInteraction(false);
                });
        queueClick(QEvent::MouseButtonPress);
        QTRY_COMPARE(nLoads, 1);
        bool bIdle = false;
        QTimer objIdle;
        objIdle.setSingleShot(true);
        connect(&objIdle, &QTimer::timeout, &objWindow, [&] { bIdle = true; });
        objIdle.start(0);
        QTRY_VERIFY(bIdle);
        QCOMPARE(nLoads, 1);
        nLoads = 100;
        queueClick(QEvent::MouseButtonPress); // once the queue has been emptied the button works again
        QTRY_COMPARE(nLoads, 101);
    }

    void messageBoxAnswersDuringTheLock()
    {
        QWidget objWindow;
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        COrmProcess::disableUserInteraction(true);
        onBox([](QMessageBox* pBox) { QTest::mouseClick(pBox->buttons().constFirst(), Qt::LeftButton); });
        QCOMPARE(COrmMessageBox::information(&objWindow, QString(), "text", QString()), 0);
        onBox([](QMessageBox* pBox) { QTest::keyClick(pBox, Qt::Key_Escape); });
        QCOMPARE(
            COrmMessageBox::warning(&objWindow, "c", "t", QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel | QMessageBox::Escape),
            int(QMessageBox::Cancel));
        onBox(
            [](QMessageBox* pBox)
            {
                const QAbstractButton* pButton = pBox->buttons().constFirst();
                const QPoint ptButton = pButton->mapTo(pBox, pButton->rect().center());
                QTest::mouseClick(pBox->windowHandle(), Qt::LeftButton, Qt::NoModifier, ptButton);
            });
        QCOMPARE(COrmMessageBox::information(&objWindow, "c", "t", int(QMessageBox::Ok)), int(QMessageBox::Ok));
    }

    // ---- Real message boxes -------------------------------------------------------------------------------------

    void boxShowsPlainTextWithTheApplicationsNameAndOneButton()
    {
        QString strTitle, strText;
        Qt::TextFormat eFormat = Qt::RichText;
        QMessageBox::Icon eIcon = QMessageBox::NoIcon;
        QStringList lstButtons;
        bool bModal = false;
        onBox(
            [&](QMessageBox* pBox)
            {
                strTitle = pBox->windowTitle();
                strText = pBox->text();
                eFormat = pBox->textFormat();
                eIcon = pBox->icon();
                bModal = pBox->isModal();
                for (const QAbstractButton* pButton : pBox->buttons())
                    lstButtons << QString(pButton->text()).remove('&');
                const QString strKeep = QString::fromLocal8Bit(qgetenv("ORM_KEEP_PICTURES"));
                if (!strKeep.isEmpty())
                    pBox->grab().save(strKeep + "/box.png");
                pBox->accept();
            });
        const QString strName = QString("File: <b>x</b>") + QChar(0x202E) + "gpj.exe exists\nOverwrite?";
        QCOMPARE(COrmMessageBox::information(nullptr, QString(), strName, QString(), QString(), QString(), 0, -1), 0);
        QCOMPARE(strTitle, QString("Ormelle"));
        QCOMPARE(strText, QString("File: <b>x</b>\\u202Egpj.exe exists\nOverwrite?"));
        QCOMPARE(eFormat, Qt::PlainText);
        QCOMPARE(eIcon, QMessageBox::Information);
        QCOMPARE(lstButtons, QStringList("OK"));
        QVERIFY(bModal);
    }

    void endlessTextStillFitsTheScreen()
    {
        int nHeight = 0;
        onBox(
            [&](QMessageBox* pBox)
            {
                nHeight = pBox->height();
                pBox->accept();
            });
        COrmMessageBox::warning(nullptr, "c", QString(65000, QChar('n')), QMessageBox::Ok);
        QVERIFY(nHeight > 50 && nHeight < QGuiApplication::primaryScreen()->availableGeometry().height());
    }

    void textButtonsAnswerTheirPlace_data()
    {
        QTest::addColumn<QStringList>("lstTexts");
        QTest::addColumn<int>("nDefault");
        QTest::addColumn<int>("nEscape");
        QTest::addColumn<QString>("strPress"); // text of a button, "Esc" or "Return"
        QTest::addColumn<int>("nExpected");
        const QStringList lstThree{"Red", "Green", "Blue"};
        QTest::newRow("first") << lstThree << 0 << -1 << "Red" << 0;
        QTest::newRow("third") << lstThree << 0 << -1 << "Blue" << 2;
        QTest::newRow("escape") << lstThree << 0 << 1 << "Esc" << 1;
        QTest::newRow("default") << lstThree << 2 << -1 << "Return" << 2;
        QTest::newRow("gap keeps places") << QStringList{"Red", "", "Blue"} << 0 << 2 << "Blue" << 2;
        QTest::newRow("none: escape of the only button") << QStringList{"", "", ""} << 0 << -1 << "Esc" << 0;
        QTest::newRow("none: OK") << QStringList{"", "", ""} << 0 << -1 << "OK" << 0;
    }
    void textButtonsAnswerTheirPlace()
    {
        QFETCH(QStringList, lstTexts);
        QFETCH(int, nDefault);
        QFETCH(int, nEscape);
        QFETCH(QString, strPress);
        QFETCH(int, nExpected);
        onBox([=](QMessageBox* pBox) { press(pBox, strPress); });
        QCOMPARE(COrmMessageBox::information(nullptr, "Ormelle", "text", lstTexts[0], lstTexts[1], lstTexts[2], nDefault, nEscape),
                 nExpected);
    }

    void standardButtonsAnswerTheirNumber_data()
    {
        QTest::addColumn<QList<int>>("lstButtons");
        QTest::addColumn<QString>("strPress");
        QTest::addColumn<int>("nExpected");
        const QList<int> lstOverwrite{QMessageBox::Yes, QMessageBox::No | QMessageBox::Default, QMessageBox::Cancel | QMessageBox::Escape};
        QTest::newRow("yes") << lstOverwrite << "Yes" << int(QMessageBox::Yes);
        QTest::newRow("default") << lstOverwrite << "Return" << int(QMessageBox::No);
        QTest::newRow("escape") << lstOverwrite << "Esc" << int(QMessageBox::Cancel);
        QTest::newRow("one with its flag") << QList<int>{QMessageBox::Ok | QMessageBox::Default, 0, 0} << "Return" << int(QMessageBox::Ok);
        QTest::newRow("none") << QList<int>{0, 0, 0} << "OK" << int(QMessageBox::Ok);
        QTest::newRow("no such button") << QList<int>{3, 0, 0} << "OK" << int(QMessageBox::Ok);
    }
    void standardButtonsAnswerTheirNumber()
    {
        QFETCH(QList<int>, lstButtons);
        QFETCH(QString, strPress);
        QFETCH(int, nExpected);
        onBox([=](QMessageBox* pBox) { press(pBox, strPress); });
        QCOMPARE(COrmMessageBox::warning(nullptr, "Ormelle", "text", lstButtons[0], lstButtons[1], lstButtons[2]), nExpected);
    }

    void parentMayGoWhileTheBoxIsOpen()
    {
        auto* pParent = new QWidget;
        onBox([=](QMessageBox*) { delete pParent; });
        QCOMPARE(COrmMessageBox::warning(pParent, "c", "t", QMessageBox::Yes, QMessageBox::Cancel | QMessageBox::Escape),
                 int(QMessageBox::Cancel));
    }

    void errorDialogIsARealBox()
    {
        QString strText;
        onBox(
            [&](QMessageBox* pBox)
            {
                strText = pBox->text();
                pBox->accept();
            });
        COrmErrorHandler::errorMessage(nullptr, tag_estatus(64), QString());
        QCOMPARE(strText, QString("The file cannot be written."));
    }

    void boxFromAnotherThreadAnswersWithoutTheUser()
    {
        int nAnswer = 0;
        QThread* pThread = QThread::create(
            [&] { nAnswer = COrmMessageBox::warning(nullptr, "c", "t", QMessageBox::Yes, QMessageBox::No | QMessageBox::Escape); });
        pThread->start();
        QVERIFY(pThread->wait());
        delete pThread;
        QCOMPARE(nAnswer, int(QMessageBox::No));
    }

private:
    static void press(QMessageBox* pBox, const QString& strWhat)
    {
        if (strWhat == QLatin1String("Esc"))
            return QTest::keyClick(pBox, Qt::Key_Escape);
        if (strWhat == QLatin1String("Return"))
            return QTest::keyClick(pBox, Qt::Key_Return);
        const QList<QAbstractButton*> lstButtons = pBox->buttons();
        for (QAbstractButton* pButton : lstButtons)
            if (QString(pButton->text()).remove('&') == strWhat)
                return QTest::mouseClick(pButton, Qt::LeftButton);
        pBox->reject();
        QFAIL(qPrintable("no button " + strWhat));
    }
};

QTEST_MAIN(CLockAndBoxesTest)
#include "tst_lockandboxes.moc"
