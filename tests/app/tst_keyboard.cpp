#include "COrmLog.h"
#include "COrmSequenceCollection.h"
#include "COrmXYPlot.h"
#include "MainWindowTest.h"
#include "OrmTestMain.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QWindow>

#include <algorithm>

/// The main window and the Longitudinal Study tool as somebody uses them who has no pointer. Keys go to the window that the display has
/// made active, and from there wherever the keyboard is.
class TestKeyboard : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { removeWindow(); }

    void everyControlIsReached_data();
    void everyControlIsReached();
    void aStudyIsOpenedAndHandedToTheTool();
    void resultsAreChosenLoadedAndRemoved();
    void aHeldKeyChoosesOnce();
    void aSequenceIsTakenOffTheList();
    void displayIsChanged();
    void plotIsChosenReadAndCopied();
    void pictureIsExported();
    void windowsAreReachedAndClosed();
    void logIsFilteredAndCopied();
    void menusAndDialogsOpenAndClose();

private:
    /// Where keys go at the moment; null without an active window.
    static QWindow* target();
    static void key(int nKey, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);
    static void type(const QString& strText);
    static QString focusName() { return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(); }
    /// Moves on by Tab until the widget with that name has the keyboard.
    static bool tabTo(const char* pszName);
    /// What the system makes of the menu key.
    static void menuKey();
    /// Chooses an entry of the menu that is open.
    static void chooseEntry(const QString& strText);
    /// The same in a menu that opens inside the next key's press.
    static void chooseEntryLater(const QString& strText);
    /// Whether what has the keyboard looks otherwise than without it.
    static void activate(QWidget* pWindow);
    QWidget* openTool();
    /// Two sequences with two results each, and the tool with all of them listed.
    void openStudyInTool();
    /// Goes to a list of the tool and chooses the entry.
    void choose(const char* pszList, const QString& strEntry) const;
    void loadAll();
    /// The names of the loaded results, as the plot's table has them.
    QStringList loaded() const;
    /// What Tab leads to from the widget that has the keyboard until it comes back, or with Shift.
    static QList<QWidget*> round(bool bBack = false);
    /// What can be given the keyboard.
    static QSet<QWidget*> controls(const QWidget* pWindow);

    template <class T>
    T* tool(const char* pName) const
    {
        return TestWidgets::get<T>(m_pTool, pName);
    }

    QWidget* m_pTool = nullptr;
};

void TestKeyboard::init()
{
    makeWindow();
    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    QVERIFY(objLibrary.open(QIODevice::ReadOnly));
    m_pPlugins->add(QStringLiteral("libormlongitudinalstudy.so"), objLibrary.readAll());
    m_pWindow->loadTools(m_pPlugins->path());
    activate(m_pWindow.get());
}

QWindow* TestKeyboard::target()
{
    for (QWidget* pWidget : {QApplication::activePopupWidget(), QApplication::activeWindow()})
        if (pWidget != nullptr)
            return pWidget->windowHandle();
    return nullptr;
}

void TestKeyboard::key(int nKey, Qt::KeyboardModifiers eModifiers)
{
    if (target() == nullptr)
        TestWidgets::fail(QStringLiteral("No window takes keys."));
    QTest::keyPress(target(), Qt::Key(nKey), eModifiers);
    if (target() != nullptr) // the press may have closed the window, or its menu
        QTest::keyRelease(target(), Qt::Key(nKey), eModifiers);
}

void TestKeyboard::type(const QString& strText)
{
    for (const QChar cLetter : strText)
        QTest::keyClick(target(), cLetter.toLatin1());
}

bool TestKeyboard::tabTo(const char* pszName)
{
    for (int nTry = 0; nTry < 100 && focusName() != QLatin1String(pszName); ++nTry)
        key(Qt::Key_Tab);
    return focusName() == QLatin1String(pszName);
}

void TestKeyboard::activate(QWidget* pWindow)
{
    pWindow->activateWindow();
    QApplication::setActiveWindow(pWindow);
    QTRY_COMPARE(QApplication::activeWindow(), pWindow);
}

QWidget* TestKeyboard::openTool()
{
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    m_pWindow->openTool(QStringLiteral("Longitudinal Study"));
    if (objWindows.count() != 1)
        TestWidgets::fail(QStringLiteral("The tool's window did not come."));
    m_pTool = objWindows.first().first().value<QWidget*>();
    activate(m_pTool);
    return m_pTool;
}

QList<QWidget*> TestKeyboard::round(bool bBack)
{
    QList<QWidget*> lstRound;
    key(bBack ? Qt::Key_Backtab : Qt::Key_Tab, bBack ? Qt::ShiftModifier : Qt::NoModifier);
    while (lstRound.size() < 200 && (lstRound.isEmpty() || QApplication::focusWidget() != lstRound.first()))
    {
        if (lstRound.isEmpty() || lstRound.last() != QApplication::focusWidget()) // some have two places for the keyboard
            lstRound.append(QApplication::focusWidget());
        key(bBack ? Qt::Key_Backtab : Qt::Key_Tab, bBack ? Qt::ShiftModifier : Qt::NoModifier);
    }
    return lstRound;
}

QSet<QWidget*> TestKeyboard::controls(const QWidget* pWindow)
{
    QSet<QWidget*> setControls;
    for (QWidget* pWidget : pWindow->findChildren<QWidget*>())
        if (pWidget->window() == pWindow && pWidget->isVisible() && pWidget->isEnabled() && (pWidget->focusPolicy() & Qt::TabFocus) &&
            pWidget->focusProxy() == nullptr)
            setControls.insert(pWidget);
    return setControls;
}

void TestKeyboard::menuKey()
{
    QWidget* pFocus = QApplication::focusWidget();
    QVERIFY(pFocus != nullptr);
    const QPoint pt = pFocus->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent objEvent(QContextMenuEvent::Keyboard, pt, pFocus->mapToGlobal(pt));
    QApplication::sendEvent(pFocus, &objEvent);
}

void TestKeyboard::chooseEntry(const QString& strText)
{
    auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY2(pMenu != nullptr, qPrintable(strText));
    const auto atEntry = [&] { return pMenu->activeAction() != nullptr && pMenu->activeAction()->text() == strText; };
    for (int nTry = 0; nTry < 30 && !atEntry(); ++nTry)
        key(Qt::Key_Down);
    QVERIFY2(atEntry(), qPrintable(strText));
    key(Qt::Key_Return);
}

void TestKeyboard::chooseEntryLater(const QString& strText)
{
    auto* pTimer = new QTimer(qApp);
    connect(pTimer, &QTimer::timeout, qApp,
            [pTimer, strText]
            {
                if (QApplication::activePopupWidget() == nullptr)
                    return;
                delete pTimer;
                chooseEntry(strText);
            });
    pTimer->start(1);
}

void TestKeyboard::openStudyInTool()
{
    for (const char* pszID : {"A", "B"})
    {
        m_pStudy->addSequence(QLatin1String(pszID));
        for (const char* pszResult : {"one", "two"})
        {
            SResultDocument objDocument;
            objDocument.strSequenceID = QLatin1String(pszID);
            objDocument.setNames({QStringLiteral("580"), QStringLiteral("600")});
            m_pStudy->addResult(QLatin1String(pszID), QLatin1String(pszResult), objDocument);
        }
    }
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(shownColumn(0), (QStringList{"A", "B"}));
    openTool();
    QTRY_COMPARE(TestWidgets::texts(tool<QListWidget>("m_pSequenceNameLW")), (QStringList{"SOLA A", "SOLA B"}));
}

void TestKeyboard::choose(const char* pszList, const QString& strEntry) const
{
    QVERIFY(tabTo(pszList));
    const auto* pList = tool<QListWidget>(pszList);
    key(Qt::Key_Home);
    for (int nTry = 0; nTry < pList->count() && pList->currentItem()->text() != strEntry; ++nTry)
        key(Qt::Key_Down);
    QCOMPARE(pList->currentItem()->text(), strEntry);
    key(Qt::Key_Space);
    QVERIFY(pList->currentItem()->isSelected());
}

void TestKeyboard::loadAll()
{
    for (const char* pszSequence : {"SOLA A", "SOLA B"})
    {
        choose("m_pSequenceNameLW", QLatin1String(pszSequence));
        choose("m_pResultWidget", QStringLiteral("one"));
        key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(tool<QListWidget>("m_pResultWidget")->selectedItems().size(), 2);
        QVERIFY(tabTo("m_pLoadButton"));
        key(Qt::Key_Space);
    }
}

QStringList TestKeyboard::loaded() const
{
    auto* pPlot = m_pTool->findChild<COrmXYPlot*>();
    QStringList lstNames;
    for (const QString& strLine : QString::fromUtf8(pPlot->numbers()).split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(1))
        lstNames.append(strLine.section(QLatin1Char(','), 0, -2));
    return lstNames;
}

void TestKeyboard::everyControlIsReached_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("theme");
    for (const char* pszTheme : {"system", "dark"})
        for (const char* pszPlace : {"welcome", "list", "log", "preferences", "shortcuts", "tool, view"})
            QTest::addRow("%s, %s", pszPlace, pszTheme) << QString::fromLatin1(pszPlace) << QString::fromLatin1(pszTheme);
}

void TestKeyboard::everyControlIsReached()
{
    QFETCH(QString, place);
    QFETCH(QString, theme);
    action(qPrintable(QStringLiteral("theme-") + theme))->trigger();
    if (place == QLatin1String("list"))
        openStudy({"A", "B"});
    if (place == QLatin1String("log"))
        key(Qt::Key_L, Qt::ControlModifier);
    if (place == QLatin1String("preferences") || place == QLatin1String("shortcuts"))
    {
        const bool bPreferences = place == QLatin1String("preferences");
        bPreferences ? key(Qt::Key_Comma, Qt::ControlModifier) : key(Qt::Key_F1);
        activate(TestWidgets::get<QDialog>(m_pWindow.get(), bPreferences ? "preferencesDialog" : "shortcutsDialog"));
    }
    if (place.startsWith(QLatin1String("tool")))
    {
        openStudyInTool();
        loadAll();
        tool<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(place == QLatin1String("tool, plots") ? 1 : 0);
    }

    const QWidget* pWindow = QApplication::activeWindow();
    const QList<QWidget*> lstForward = round();
    QList<QWidget*> lstBack = round(true);
    const auto names = [](const QList<QWidget*>& lstWidgets)
    {
        QStringList lstNames;
        for (const QWidget* pWidget : lstWidgets)
            lstNames.append(pWidget->objectName().isEmpty() ? pWidget->metaObject()->className() : pWidget->objectName());
        return lstNames.join(QLatin1Char(' '));
    };
    const QSet<QWidget*> setControls = controls(pWindow);
    QList<QWidget*> lstMissed;
    for (QWidget* pWidget : setControls)
        if (!lstForward.contains(pWidget) && qobject_cast<QRadioButton*>(pWidget) == nullptr)
            lstMissed.append(pWidget);
    QVERIFY2(lstMissed.isEmpty(), qPrintable(names(lstMissed)));
    // The way back is the same one.
    std::reverse(lstBack.begin(), lstBack.end());
    std::rotate(lstBack.begin(), std::find(lstBack.begin(), lstBack.end(), lstForward.first()), lstBack.end());
    QVERIFY2(lstBack == lstForward, qPrintable(names(lstBack)));
    QList<QWidget*> lstUnseen;
    for (QWidget* pWidget : lstForward)
    {
        pWidget->setFocus(Qt::TabFocusReason);
        if (!TestWidgets::showsFocus(pWidget))
            lstUnseen.append(pWidget);
    }
    QVERIFY2(lstUnseen.isEmpty(), qPrintable(names(lstUnseen)));
}

void TestKeyboard::aStudyIsOpenedAndHandedToTheTool()
{
    for (const char* pszID : {"First", "Second"})
    {
        m_pStudy->addSequence(QLatin1String(pszID));
        m_pStudy->addResult(QLatin1String(pszID), QLatin1String(pszID), SResultDocument());
    }
    key(Qt::Key_O, Qt::ControlModifier);
    auto* pDialog = TestWidgets::get<QFileDialog>(m_pWindow.get(), "openStudyDialog");
    activate(pDialog);
    type(m_pStudy->folder());
    key(Qt::Key_Return);
    QTRY_COMPARE(shownColumn(0), (QStringList{"First", "Second"}));
    activate(m_pWindow.get());
    key(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(focusName(), QStringLiteral("sequenceFilter"));
    type(QStringLiteral("sec"));
    QTRY_COMPARE(shownColumn(0), QStringList{"Second"});
    key(Qt::Key_Return);
    QCOMPARE(focusName(), QStringLiteral("sequenceList"));
    key(Qt::Key_Home);
    QVERIFY(tabTo("compareButton"));
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    key(Qt::Key_Space);
    QCOMPARE(objWindows.count(), 1);
    m_pTool = objWindows.first().first().value<QWidget*>();
    QCOMPARE(tool<QListWidget>("m_pSequenceNameLW")->currentItem()->text(), QStringLiteral("SOLA Second"));
    QCOMPARE(TestWidgets::texts(tool<QListWidget>("m_pResultWidget")), QStringList{"Second"});
    // The menu on a sequence of the list.
    activate(m_pWindow.get());
    QVERIFY(tabTo("sequenceList"));
    menuKey();
    chooseEntry(QStringLiteral("&Close Sequence"));
    QTRY_VERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("Second")) == nullptr);
}

void TestKeyboard::resultsAreChosenLoadedAndRemoved()
{
    openStudyInTool();
    loadAll();
    QCOMPARE(loaded().size(), 4);
    // The last entry that the keyboard chose is the selected result.
    choose("m_pSequenceNameLW", QStringLiteral("SOLA A"));
    choose("m_pResultWidget", QStringLiteral("two"));
    QVERIFY(tabTo("m_pClear3DViewButton"));
    chooseEntryLater(QStringLiteral("Selected Result"));
    key(Qt::Key_Space);
    QCOMPARE(loaded().size(), 3);
    QVERIFY2(loaded().filter(QRegularExpression(QStringLiteral("A.*two"))).isEmpty(), qPrintable(loaded().join('\n')));
    QVERIFY(tabTo("m_pClear3DViewButton"));
    chooseEntryLater(QStringLiteral("All Results"));
    key(Qt::Key_Space);
    QCOMPARE(loaded().size(), 0);
}

void TestKeyboard::aHeldKeyChoosesOnce()
{
    openStudyInTool();
    QVERIFY(tabTo("m_pSequenceNameLW"));
    auto* pList = tool<QListWidget>("m_pSequenceNameLW");
    QSignalSpy objClicks(pList, &QAbstractItemView::clicked);
    key(Qt::Key_Home); // arrives nowhere
    QCOMPARE(objClicks.count(), 0);
    key(Qt::Key_Space);
    key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(objClicks.count(), 1);
    QTest::keyPress(target(), Qt::Key_Down);
    for (const auto eType : {QEvent::KeyRelease, QEvent::KeyPress})
    {
        QKeyEvent objRepeated(eType, Qt::Key_Down, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(pList, &objRepeated);
    }
    QCOMPARE(objClicks.count(), 1);
    QTest::keyRelease(target(), Qt::Key_Down);
    QCOMPARE(objClicks.count(), 2);
    QCOMPARE(pList->currentItem()->text(), QStringLiteral("SOLA B"));
    QVERIFY(tool<QListWidget>("m_pResultWidget")->count() == 2);
    for (const int nKey : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        key(nKey);
    QCOMPARE(objClicks.count(), 5);
    // A key that was pressed elsewhere chooses nothing here.
    QTest::keyRelease(target(), Qt::Key_Space);
    QCOMPARE(objClicks.count(), 5);
}

void TestKeyboard::aSequenceIsTakenOffTheList()
{
    openStudyInTool();
    m_pHost->setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
    choose("m_pSequenceNameLW", QStringLiteral("SOLA B"));
    menuKey();
    chooseEntry(QStringLiteral("Remove"));
    QCOMPARE(m_pHost->callsOf(QStringLiteral("box")).size(), 1);
    QVERIFY2(m_pHost->callsOf(QStringLiteral("box")).first().contains(QStringLiteral("SOLA B")),
             qPrintable(m_pHost->callsOf(QStringLiteral("box")).first()));
    QCOMPARE(TestWidgets::texts(tool<QListWidget>("m_pSequenceNameLW")), QStringList{"SOLA A"});
}

void TestKeyboard::displayIsChanged()
{
    openStudyInTool();
    // The unit can be chosen as long as nothing is loaded.
    QVERIFY(tabTo("m_pPhotonsPerSecRB"));
    key(Qt::Key_Down);
    QVERIFY(tool<QRadioButton>("m_pSOLACellsRB")->isChecked());
    key(Qt::Key_Up);
    QVERIFY(tool<QRadioButton>("m_pPhotonsPerSecRB")->isChecked());
    loadAll();

    const auto changes = [this](const char* pszName, int nKey, auto fnValue)
    {
        auto* pWidget = m_pTool->findChild<QWidget*>(QLatin1String(pszName));
        const auto before = fnValue(pWidget);
        const bool bReached = tabTo(pszName);
        key(nKey);
        return bReached && fnValue(pWidget) != before;
    };
    const auto sliderValue = [](QWidget* p) { return qobject_cast<QAbstractSlider*>(p)->value(); };
    const auto comboIndex = [](QWidget* p) { return qobject_cast<QComboBox*>(p)->currentIndex(); };
    const auto isChecked = [](QWidget* p) { return p->property("checked").toBool(); };
    const auto span = [](QWidget* p) { return QPoint(p->property("lowerValue").toInt(), p->property("upperValue").toInt()); };
    const auto number = [](QWidget* p) { return qobject_cast<QDoubleSpinBox*>(p)->value(); };

    QVERIFY(changes("m_pThumWheel", Qt::Key_Right, sliderValue));
    QVERIFY(changes("m_pColorBarMinSpinbox", Qt::Key_Up, number));
    QVERIFY(changes("m_pColorBarMaxSpinbox", Qt::Key_Down, number));
    const double fMax = number(tool<QWidget>("m_pColorBarMaxSpinbox"));
    QVERIFY(tabTo("m_pResetColorBarMaxMinButton"));
    key(Qt::Key_Space);
    QVERIFY(number(tool<QWidget>("m_pColorBarMaxSpinbox")) > fMax);
    QVERIFY(tabTo("m_pColorBarMaxSpinbox"));
    key(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("50"));
    key(Qt::Key_Return);
    QCOMPARE(number(tool<QWidget>("m_pColorBarMaxSpinbox")), 50.0);
    QVERIFY(changes("m_pColorBarMinMaxSlider", Qt::Key_Right, span));
    key(Qt::Key_Tab); // to the upper handle
    QCOMPARE(focusName(), QStringLiteral("m_pColorBarMinMaxSlider"));
    const QPoint ptSpan = span(QApplication::focusWidget());
    key(Qt::Key_Left);
    QVERIFY(span(QApplication::focusWidget()).y() < ptSpan.y());
    QVERIFY(changes("m_pColorTableCB", Qt::Key_Down, comboIndex));
    QVERIFY(changes("m_pSourceColorTableSlider", Qt::Key_Right, span));
    for (const char* pszBox : {"m_pReverseColorMapCheck", "m_pLogarithmicScaleCheck", "m_pMIPCheck", "m_pDisplayPhotonDensityMap",
                               "m_pDisplayVoxelsGB", "m_pDisplaySurfaceGB", "m_pSelectVoxelButton"})
        QVERIFY2(changes(pszBox, Qt::Key_Space, isChecked) && changes(pszBox, Qt::Key_Space, isChecked), pszBox);
    QVERIFY(changes("m_pOpacitySlider", Qt::Key_Right, sliderValue));
    QCOMPARE(tool<QSpinBox>("m_pOpacitySpinBox")->value(), 51);
    QVERIFY(tabTo("m_pOpacitySpinBox"));
    key(Qt::Key_Down);
    QCOMPARE(tool<QSlider>("m_pOpacitySlider")->value(), 50);
    QVERIFY(changes("m_pWaveLengthCB", Qt::Key_Down, comboIndex));
    QCOMPARE(tool<QComboBox>("m_pWaveLengthCB")->currentText(), QStringLiteral("600"));
}

void TestKeyboard::plotIsChosenReadAndCopied()
{
    openStudyInTool();
    loadAll();
    QVERIFY(tabTo("qt_tabwidget_tabbar"));
    key(Qt::Key_Right);
    QCOMPARE(tool<QTabWidget>("m_p3DBrowserTabWidget")->currentIndex(), 1);
    QVERIFY(tabTo("m_pPlotSelectCB"));
    QSignalSpy objChosen(tool<QComboBox>("m_pPlotSelectCB"), QOverload<int>::of(&QComboBox::activated));
    key(Qt::Key_Down);
    QCOMPARE(objChosen.count(), 1);
    auto* pPlot = m_pTool->findChild<COrmXYPlot*>();
    for (int nTry = 0; nTry < 100 && QApplication::focusWidget() != pPlot; ++nTry)
        key(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), pPlot);
    menuKey();
    chooseEntry(QStringLiteral("Bars"));
    QCOMPARE(pPlot->getCurrentDisplayMode(), int(COrmXYPlot::BarsMode));
    menuKey();
    chooseEntry(QStringLiteral("Copy Numbers"));
    QCOMPARE(QApplication::clipboard()->text(), QString::fromUtf8(pPlot->numbers()));
    QCOMPARE(loaded().size(), 4);
}

void TestKeyboard::pictureIsExported()
{
    openStudyInTool();
    loadAll();
    const QString strFile = m_pSettings->filePath(QStringLiteral("figure.png"));
    QTimer objTyping;
    connect(&objTyping, &QTimer::timeout, this,
            [&]
            {
                const auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                if (pDialog == nullptr || QApplication::activeWindow() != pDialog)
                    return;
                objTyping.stop();
                key(Qt::Key_A, Qt::ControlModifier);
                type(strFile);
                key(Qt::Key_Return);
            });
    QVERIFY(tabTo("m_pExportButton"));
    objTyping.start(1);
    key(Qt::Key_Space);
    QVERIFY(!QImage(strFile).isNull());
    activate(m_pTool);
    QVERIFY(tabTo("m_pCopyToClipboardButton"));
    key(Qt::Key_Space);
    QVERIFY(!QApplication::clipboard()->image().isNull());
}

void TestKeyboard::windowsAreReachedAndClosed()
{
    openStudyInTool();
    key(Qt::Key_F6, Qt::ControlModifier);
    QTRY_COMPARE(QApplication::activeWindow(), m_pWindow.get());
    key(Qt::Key_F6, Qt::ControlModifier);
    QTRY_COMPARE(QApplication::activeWindow(), m_pTool);
    key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!m_pTool->isVisible());
    activate(m_pWindow.get());
    key(Qt::Key_F6, Qt::ControlModifier); // there is no other window
    QCOMPARE(QApplication::activeWindow(), m_pWindow.get());
    QCOMPARE(m_pWindow->sequences()->sequences().size(), 2);
    // The menu of the tools opens it again.
    key(Qt::Key_T, Qt::AltModifier);
    chooseEntry(QStringLiteral("Longitudinal Study"));
    QTRY_VERIFY(m_pTool->isVisible());
}

void TestKeyboard::logIsFilteredAndCopied()
{
    key(Qt::Key_L, Qt::ControlModifier);
    ORM_LOG(2, QStringLiteral("the one to find"));
    ORM_LOG(2, QStringLiteral("another"));
    QVERIFY(tabTo("logFilter"));
    type(QStringLiteral("one to"));
    const auto* pText = TestWidgets::get<QPlainTextEdit>(m_pWindow.get(), "logText");
    QTRY_VERIFY(pText->toPlainText().endsWith(QStringLiteral("the one to find")) && pText->blockCount() == 1);
    QVERIFY(tabTo("logCopy"));
    key(Qt::Key_Space);
    QCOMPARE(QApplication::clipboard()->text().trimmed(), pText->toPlainText());
    QVERIFY(tabTo("logText"));
    menuKey();
    chooseEntry(QStringLiteral("Clear Log"));
    QTRY_VERIFY(pText->toPlainText().isEmpty());
    QVERIFY(tabTo("logLevel")); // the text lets the keyboard go
    key(Qt::Key_L, Qt::ControlModifier);
    QVERIFY(!pText->isVisible());
}

void TestKeyboard::menusAndDialogsOpenAndClose()
{
    key(Qt::Key_Comma, Qt::ControlModifier);
    auto* pPreferences = TestWidgets::get<QDialog>(m_pWindow.get(), "preferencesDialog");
    activate(pPreferences);
    QVERIFY(tabTo("preferredTable"));
    const int nTable = COrmPreference::getDefaultColorBar().nColorTable;
    key(Qt::Key_Down);
    QVERIFY(COrmPreference::getDefaultColorBar().nColorTable != nTable);
    key(Qt::Key_Escape);
    QTRY_VERIFY(!pPreferences->isVisible());
    activate(m_pWindow.get());
    key(Qt::Key_F1);
    auto* pShortcuts = TestWidgets::get<QDialog>(m_pWindow.get(), "shortcutsDialog");
    activate(pShortcuts);
    key(Qt::Key_Escape);
    QTRY_VERIFY(!pShortcuts->isVisible());
    activate(m_pWindow.get());
    m_pHost->clear();
    key(Qt::Key_H, Qt::AltModifier);
    chooseEntry(QStringLiteral("&About"));
    QCOMPARE(m_pHost->callsOf(QStringLiteral("box information")).size(), 1);
}

ORM_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
