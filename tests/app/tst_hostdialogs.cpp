#include "COrmColorButton.h"
#include "COrmHostSettings.h"
#include "COrmSequenceCollection.h"
#include "CStudyWriter.h"
#include "MainWindowTest.h"
#include "OrmIcons.h"
#include "OrmShortcutList.h"
#include "OrmTestMain.h"
#include "OrmTheme.h"

#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QOpenGLWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTreeView>
#include <algorithm>
#include <cmath>

/// Preferences, theme and shortcuts as the user meets them in the main window.
class TestHostDialogs : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }
    void cleanup();

    void preferencesCountAtOnce();
    void colourIsTriedAndTakenBack();
    void coloursAreNotWrittenWhileTheyAreTried();
    void defaultsComeBack();
    void returnPressesNothing();
    void folderThatIsNotThereIsTold();
    void unreadableTextIsTold();
    void dialogFollowsChangesFromElsewhere();
    void openToolShowsTheChange();
    void themeIsAppliedAndKept();
    void themeWithoutSettingsIsForThisRun();
    void textIsReadableInEveryTheme_data();
    void textIsReadableInEveryTheme();
    void iconsFollowTheTheme();
    void iconsAreOfOneFamily();
    void oneMenuDoesNotMixFamilies();
    void shortcutsAreListedFilteredAndCopied();
    void noKeyMeansTwoThings();
    void noLetterOfAMenuMeansTwoThings();
    void windowComesBackOnTheScreen_data();
    void windowComesBackOnTheScreen();
    void readingAgainShowsProgressAndCanBeStopped();

private:
    QDialog* openPreferences();
    QWidget* openTool();
    QJsonObject stored(const QString& strSection) const;
};

void TestHostDialogs::cleanup()
{
    removeWindow();
    OrmTheme::apply(OrmTheme::eSystem);
}

QDialog* TestHostDialogs::openPreferences()
{
    action("actionPreferences")->trigger();
    return TestWidgets::get<QDialog>(m_pWindow.get(), "preferencesDialog");
}

QWidget* TestHostDialogs::openTool()
{
    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    if (!objLibrary.open(QIODevice::ReadOnly))
        TestWidgets::fail(QStringLiteral("The tool is not there."));
    m_pPlugins->add(QStringLiteral("libormlongitudinalstudy.so"), objLibrary.readAll());
    m_pWindow->loadTools(m_pPlugins->path());
    QSignalSpy objWindows(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    if (!m_pWindow->openTool(QStringLiteral("Longitudinal Study")) || objWindows.count() != 1)
        TestWidgets::fail(m_pWindow->plugins()->refusals().join(QLatin1Char('\n')));
    return objWindows.first().first().value<QWidget*>();
}

QJsonObject TestHostDialogs::stored(const QString& strSection) const
{
    QFile objFile(COrmPreference::getStore());
    return objFile.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(objFile.readAll()).object().value(strSection).toObject()
                                             : QJsonObject();
}

void TestHostDialogs::preferencesCountAtOnce()
{
    const QDialog* pDialog = openPreferences();
    QVERIFY(pDialog->isVisible());
    QVERIFY(!pDialog->isModal());
    QSignalSpy objTold(COrmPreference::getSignalHandler(), &COrmSignalHandler::updatePreferenceSetting);
    auto* pTable = TestWidgets::get<QComboBox>(pDialog, "preferredTable");
    QCOMPARE(pTable->currentText(), QStringLiteral("EosB"));
    QCOMPARE(pTable->count(), 13);
    QTest::keyClick(pTable, Qt::Key_Home);
    QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 0);
    QCOMPARE(objTold.count(), 1);
    TestWidgets::get<QCheckBox>(pDialog, "preferredReversed")->click();
    QVERIFY(COrmPreference::getDefaultColorBar().bReversed);
    QCOMPARE(objTold.count(), 2);
    auto* pSize = TestWidgets::get<QSpinBox>(pDialog, "preferredFontSize");
    QTest::keyClick(pSize, Qt::Key_Up);
    S3DViewSettings objView;
    COrmPreference::get3DViewPreferences(objView);
    QCOMPARE(objView.nFontSize, 9);
    QCOMPARE(objTold.count(), 3);
    auto* pFormat = TestWidgets::get<QComboBox>(pDialog, "preferredFormat");
    pFormat->setCurrentIndex(pFormat->findText(QStringLiteral("TIFF (.tif)")));
    QCOMPARE(COrmPreference::getUsersPreferredFormat(), QStringLiteral("tif"));
    QCOMPARE(objTold.count(), 4);
    auto* pFolder = TestWidgets::get<QLineEdit>(pDialog, "browseFolder");
    pFolder->setText(m_pStudy->folder());
    QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), m_pStudy->folder());
    QCOMPARE(objTold.count(), 5);
    // All is in the file already.
    QCOMPARE(stored(QStringLiteral("colorBar")), (QJsonObject{{"table", 0}, {"reversed", true}}));
    QCOMPARE(stored(QStringLiteral("view3D")), (QJsonObject{{"fontSize", 9}}));
    QCOMPARE(stored(QStringLiteral("export")), (QJsonObject{{"format", "tif"}}));
    QCOMPARE(stored(QStringLiteral("folders")), (QJsonObject{{"browse", m_pStudy->folder()}}));
    // The search for studies begins there.
    action("actionOpenStudy")->trigger();
    QCOMPARE(TestWidgets::get<QFileDialog>(m_pWindow.get(), "openStudyDialog")->directory().path(), m_pStudy->folder());
}

void TestHostDialogs::colourIsTriedAndTakenBack()
{
    const QDialog* pDialog = openPreferences();
    auto* pButton = TestWidgets::get<COrmColorButton>(pDialog, "colorSurface");
    S3DViewSettings objView;
    COrmPreference::get3DViewPreferences(objView);
    const QColor clrBefore = objView.clrSurface;
    QCOMPARE(pButton->color(), clrBefore);
    for (const bool bAccept : {false, true})
    {
        pButton->click();
        auto* pColors = TestWidgets::get<QColorDialog>(pButton, "colorDialog");
        pColors->setCurrentColor(QColor(10, 200, 30));
        COrmPreference::get3DViewPreferences(objView);
        QCOMPARE(objView.clrSurface, QColor(10, 200, 30)); // seen before it is chosen
        QCOMPARE(pButton->text(), QStringLiteral("#0AC81E"));
        bAccept ? pColors->accept() : pColors->reject();
        COrmPreference::get3DViewPreferences(objView);
        QCOMPARE(objView.clrSurface, bAccept ? QColor(10, 200, 30) : clrBefore);
        QCOMPARE(pButton->color(), objView.clrSurface);
        QTRY_VERIFY(pButton->findChild<QColorDialog*>() == nullptr);
    }
    QCOMPARE(stored(QStringLiteral("view3D")), (QJsonObject{{"surface", "#0ac81e"}}));
}

void TestHostDialogs::coloursAreNotWrittenWhileTheyAreTried()
{
    const QDialog* pDialog = openPreferences();
    auto* pButton = TestWidgets::get<COrmColorButton>(pDialog, "colorBackground");
    pButton->click();
    auto* pColors = TestWidgets::get<QColorDialog>(pButton, "colorDialog");
    for (int nStep = 1; nStep < 200; ++nStep)
        pColors->setCurrentColor(QColor(nStep, 0, 0));
    QVERIFY(!QFile::exists(COrmPreference::getStore()));
    pColors->accept();
    QCOMPARE(stored(QStringLiteral("view3D")), (QJsonObject{{"background", "#c70000"}}));
}

void TestHostDialogs::defaultsComeBack()
{
    COrmPreference::setDefaultColorBar({3, true});
    COrmPreference::setUsersPreferredFormat(QStringLiteral("eps"));
    COrmPreference::getSettings()->setBrowsePath(m_pStudy->folder());
    const QDialog* pDialog = openPreferences();
    const auto* pTable = TestWidgets::get<QComboBox>(pDialog, "preferredTable");
    const auto* pFormat = TestWidgets::get<QComboBox>(pDialog, "preferredFormat");
    const auto* pFolder = TestWidgets::get<QLineEdit>(pDialog, "browseFolder");
    QCOMPARE(pTable->currentIndex(), 3);
    QCOMPARE(pFormat->currentText(), QStringLiteral("Encapsulated PostScript (.eps)"));
    QCOMPARE(pFolder->text(), m_pStudy->folder());
    TestWidgets::click(TestWidgets::get<QPushButton>(pDialog, "restoreDefaults"));
    QCOMPARE(pTable->currentIndex(), 9);
    QVERIFY(!TestWidgets::get<QCheckBox>(pDialog, "preferredReversed")->isChecked());
    QCOMPARE(pFormat->currentText(), QStringLiteral("No preference"));
    QCOMPARE(pFolder->text(), QString());
    QVERIFY(COrmPreference::getUsersPreferredFormat().isEmpty());
}

void TestHostDialogs::returnPressesNothing()
{
    COrmPreference::setDefaultColorBar({3, true});
    QDialog* pDialog = openPreferences();
    QVERIFY(QTest::qWaitForWindowExposed(pDialog));
    auto* pFolder = TestWidgets::get<QLineEdit>(pDialog, "browseFolder");
    pFolder->setFocus();
    QTest::keyClick(pFolder, Qt::Key_Return);
    QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 3);
    QVERIFY(pDialog->isVisible());
    QTest::keyClick(pDialog, Qt::Key_Escape);
    QVERIFY(!pDialog->isVisible());
    QCOMPARE(openPreferences(), pDialog); // the same one again
}

void TestHostDialogs::folderThatIsNotThereIsTold()
{
    COrmPreference::getSettings()->setBrowsePath(m_pStudy->folder());
    const QDialog* pDialog = openPreferences();
    const auto* pNotice = TestWidgets::get<QLabel>(pDialog, "preferencesNotice");
    auto* pFolder = TestWidgets::get<QLineEdit>(pDialog, "browseFolder");
    QVERIFY(!pNotice->isVisible());
    pFolder->setText(m_pStudy->folder() + QStringLiteral("/none"));
    QVERIFY(pNotice->isVisible());
    QVERIFY(pNotice->text().startsWith(QStringLiteral("There is no such folder")));
    QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), m_pStudy->folder());
    pFolder->clear();
    QVERIFY(!pNotice->isVisible());
    QVERIFY(COrmPreference::getSettings()->getBrowsePath().isNull());
}

void TestHostDialogs::unreadableTextIsTold()
{
    const QDialog* pDialog = openPreferences();
    const auto* pNotice = TestWidgets::get<QLabel>(pDialog, "preferencesNotice");
    S3DViewSettings objView;
    COrmPreference::get3DViewPreferences(objView);
    objView.clrText = QColor(40, 40, 40);
    COrmPreference::set3DViewPreferences(objView);
    QCOMPARE(pNotice->text(), QStringLiteral("Text is hard to read on this background."));
    objView.clrBackground = Qt::white;
    COrmPreference::set3DViewPreferences(objView);
    QVERIFY(!pNotice->isVisible());
}

void TestHostDialogs::dialogFollowsChangesFromElsewhere()
{
    QDialog* pDialog = openPreferences();
    COrmPreference::setDefaultColorBar({5, true});
    QCOMPARE(TestWidgets::get<QComboBox>(pDialog, "preferredTable")->currentIndex(), 5);
    QVERIFY(TestWidgets::get<QCheckBox>(pDialog, "preferredReversed")->isChecked());
    // An export remembers its format without telling; the dialog shows it when it comes again.
    pDialog->close();
    COrmPreference::setUsersPreferredFormat(QStringLiteral("jpg"));
    openPreferences();
    QCOMPARE(TestWidgets::get<QComboBox>(pDialog, "preferredFormat")->currentText(), QStringLiteral("JPEG (.jpg)"));
    // A table that no list has is shown as none, and stays.
    COrmPreference::setDefaultColorBar({77, false});
    QCOMPARE(TestWidgets::get<QComboBox>(pDialog, "preferredTable")->currentIndex(), -1);
    QCOMPARE(COrmPreference::getDefaultColorBar().nColorTable, 77);
}

void TestHostDialogs::openToolShowsTheChange()
{
    QWidget* pTool = openTool();
    QVERIFY(QTest::qWaitForWindowExposed(pTool));
    auto* pView = pTool->findChild<QOpenGLWidget*>();
    const auto corner = [pView] { return pView->grabFramebuffer().pixelColor(3, 3); };
    QCOMPARE(corner(), QColor(Qt::black));
    const QDialog* pDialog = openPreferences();
    QSignalSpy objFrames(pView, &QOpenGLWidget::frameSwapped);
    auto* pButton = TestWidgets::get<COrmColorButton>(pDialog, "colorBackground");
    pButton->click();
    TestWidgets::get<QColorDialog>(pButton, "colorDialog")->setCurrentColor(QColor(0, 0, 255));
    QTRY_VERIFY(objFrames.count() > 0); // painted again by itself
    QCOMPARE(corner(), QColor(Qt::blue));
    TestWidgets::get<QColorDialog>(pButton, "colorDialog")->reject();
    QCOMPARE(corner(), QColor(Qt::black));
}

void TestHostDialogs::themeIsAppliedAndKept()
{
    QWidget* pTool = openTool();
    const QPalette objDesktop = m_pWindow->palette();
    QVERIFY(action("theme-system")->isChecked());
    action("theme-dark")->trigger();
    for (const QWidget* pWidget : {static_cast<QWidget*>(m_pWindow.get()), pTool})
    {
        QVERIFY(pWidget->palette().color(QPalette::Window).lightness() < 80);
        QVERIFY(pWidget->palette().color(QPalette::WindowText).lightness() > 200);
    }
    m_pWindow = std::make_unique<COrmMainWindow>();
    QVERIFY(action("theme-dark")->isChecked());
    QCOMPARE(OrmTheme::current(), OrmTheme::eDark);
    action("theme-light")->trigger();
    QVERIFY(m_pWindow->palette().color(QPalette::Window).lightness() > 200);
    action("theme-system")->trigger();
    QCOMPARE(m_pWindow->palette().color(QPalette::Window), objDesktop.color(QPalette::Window));
    m_pWindow = std::make_unique<COrmMainWindow>();
    QVERIFY(action("theme-system")->isChecked());
    QVERIFY(!action("theme-dark")->isChecked());
}

void TestHostDialogs::themeWithoutSettingsIsForThisRun()
{
    COrmPreference::setStore(QString());
    action("theme-dark")->trigger();
    QCOMPARE(OrmTheme::current(), OrmTheme::eDark);
    QCOMPARE(QDir(m_pSettings->path()).entryList(QDir::Files), QStringList());
    QCOMPARE(OrmTheme::fromName(QStringLiteral("purple")), OrmTheme::eSystem);
}

void TestHostDialogs::textIsReadableInEveryTheme_data()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestHostDialogs::textIsReadableInEveryTheme()
{
    QFETCH(bool, dark);
    const QPalette objPalette = OrmTheme::palette(dark);
    const auto linear = [](double f) { return f <= 0.04045 ? f / 12.92 : std::pow((f + 0.055) / 1.055, 2.4); };
    const auto contrast = [&](QPalette::ColorRole eText, QPalette::ColorRole eGround)
    {
        double afLight[2];
        int nColour = 0;
        for (const QColor& clr : {objPalette.color(eText), objPalette.color(eGround)})
            afLight[nColour++] = 0.2126 * linear(clr.redF()) + 0.7152 * linear(clr.greenF()) + 0.0722 * linear(clr.blueF()) + 0.05;
        return std::max(afLight[0], afLight[1]) / std::min(afLight[0], afLight[1]);
    };
    QVERIFY(contrast(QPalette::WindowText, QPalette::Window) >= 7.0);
    QVERIFY(contrast(QPalette::Text, QPalette::Base) >= 7.0);
    QVERIFY(contrast(QPalette::Text, QPalette::AlternateBase) >= 7.0);
    QVERIFY(contrast(QPalette::ButtonText, QPalette::Button) >= 7.0);
    QVERIFY(contrast(QPalette::ToolTipText, QPalette::ToolTipBase) >= 4.5);
    QVERIFY(contrast(QPalette::Link, QPalette::Window) >= 4.5);
    // Fusion's own light colours have 3.6 here.
    QVERIFY(contrast(QPalette::HighlightedText, QPalette::Highlight) >= (dark ? 4.5 : 3.5));
}

void TestHostDialogs::iconsFollowTheTheme()
{
    const auto darkest = [](const QIcon& objIcon, QIcon::Mode eMode, int nEdge)
    {
        const QImage img = objIcon.pixmap(nEdge, nEdge, eMode).toImage().convertToFormat(QImage::Format_ARGB32);
        int nDarkest = 256;
        for (int y = 0; y < img.height(); ++y)
        {
            for (int x = 0; x < img.width(); ++x)
            {
                if (qAlpha(img.pixel(x, y)) > 200)
                    nDarkest = std::min(nDarkest, qGray(img.pixel(x, y)));
            }
        }
        return img.width() == nEdge ? nDarkest : -1;
    };
    for (const char* pszTheme : {"theme-light", "theme-dark", "theme-light"})
    {
        action(pszTheme)->trigger();
        const bool bDark = OrmTheme::current() == OrmTheme::eDark;
        for (const char* pszAction : {"actionOpenStudy", "actionCopy", "actionRefresh", "actionClose", "actionQuit", "actionSelectAll",
                                      "actionFind", "actionPreferences", "actionImageOverlay", "actionShortcuts", "actionAbout"})
        {
            const QIcon objIcon = action(pszAction)->icon();
            QVERIFY2(!objIcon.isNull(), pszAction);
            for (const int nEdge : {16, 40, 96})
            {
                const int nDarkest = darkest(objIcon, QIcon::Normal, nEdge);
                QVERIFY2(bDark ? nDarkest > 110 && nDarkest < 256 : nDarkest >= 0 && nDarkest < 100, pszAction);
            }
            QVERIFY(objIcon.pixmap(32, QIcon::Disabled).toImage() != objIcon.pixmap(32, QIcon::Normal).toImage());
        }
    }
    QVERIFY(OrmIcons::drawing(QStringLiteral("no such drawing")).isNull());
}

void TestHostDialogs::iconsAreOfOneFamily()
{
    OrmIcons::init();
    const QStringList lstFiles = QDir(QStringLiteral(":/icons")).entryList();
    QVERIFY(lstFiles.size() >= 20);
    const QRegularExpression reColour(QStringLiteral("#[0-9a-fA-F]+"));
    for (const QString& strFile : lstFiles)
    {
        QFile objFile(QStringLiteral(":/icons/") + strFile);
        QVERIFY(objFile.open(QIODevice::ReadOnly));
        const QString strDrawing = QString::fromUtf8(objFile.readAll());
        QVERIFY2(strDrawing.startsWith(QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\" "
                                                      "viewBox=\"0 0 24 24\" fill=\"none\" stroke-width=\"1.7\" stroke-linecap=\"round\" "
                                                      "stroke-linejoin=\"round\">")),
                 qPrintable(strFile));
        for (auto it = reColour.globalMatch(strDrawing); it.hasNext();)
        {
            const QString strColour = it.next().captured();
            QVERIFY2(QStringList({"#202020", "#3f7d14", "#b8480c"}).contains(strColour), qPrintable(strFile + strColour));
        }
        for (const int nEdge : {16, 20, 24, 30, 32, 48})
            QCOMPARE(OrmIcons::drawing(QFileInfo(strFile).completeBaseName()).pixmap(nEdge).size(), QSize(nEdge, nEdge));
    }
}

void TestHostDialogs::oneMenuDoesNotMixFamilies()
{
    // A theme of the desktop that has one picture only.
    const QTemporaryDir objThemes;
    CStudyWriter::writeFile(objThemes.filePath(QStringLiteral("sparse/index.theme")),
                            "[Icon Theme]\nName=Sparse\nComment=-\nDirectories=16\n\n[16]\nSize=16\nType=Fixed\n");
    QImage imgPicture(16, 16, QImage::Format_ARGB32);
    imgPicture.fill(Qt::magenta);
    QVERIFY(QDir(objThemes.filePath(QStringLiteral("sparse"))).mkdir(QStringLiteral("16")));
    QVERIFY(imgPicture.save(objThemes.filePath(QStringLiteral("sparse/16/document-open.png"))));
    const QStringList lstPaths = QIcon::themeSearchPaths();
    const QString strTheme = QIcon::themeName();
    QIcon::setThemeSearchPaths({objThemes.path()});
    QIcon::setThemeName(QStringLiteral("sparse"));
    OrmIcons::setThemeFirst(true);
    const auto picture = [](const QIcon& objIcon) { return objIcon.pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32); };
    const QImage imgDrawn = picture(OrmIcons::drawing(QStringLiteral("open")));
    const QImage imgAlone = picture(OrmIcons::family({"open"}).first());
    const QImage imgBesideCopy = picture(OrmIcons::family({"open", "copy"}).first());
    const QImage imgBesideOverlay = picture(OrmIcons::family({"overlay", "open"}).last());
    OrmIcons::setThemeFirst(false);
    const QImage imgOwnColours = picture(OrmIcons::family({"open"}).first());
    QIcon::setThemeSearchPaths(lstPaths);
    QIcon::setThemeName(strTheme);
    OrmIcons::setThemeFirst(OrmTheme::current() == OrmTheme::eSystem);
    QCOMPARE(imgAlone, imgPicture);
    QCOMPARE(imgBesideCopy, imgDrawn);
    QCOMPARE(imgBesideOverlay, imgDrawn);
    QCOMPARE(imgOwnColours, imgDrawn);
}

void TestHostDialogs::shortcutsAreListedFilteredAndCopied()
{
    QWidget* pTool = openTool();
    action("actionShortcuts")->trigger();
    const auto* pDialog = TestWidgets::get<QDialog>(m_pWindow.get(), "shortcutsDialog");
    QVERIFY(pDialog->isVisible());
    const auto* pList = TestWidgets::get<QTreeView>(pDialog, "shortcutsList");
    const auto rows = [pList]
    {
        QStringList lstRows;
        for (int nRow = 0; nRow < pList->model()->rowCount(); ++nRow)
        {
            QStringList lstCells;
            for (int nColumn = 0; nColumn < 3; ++nColumn)
                lstCells << pList->model()->index(nRow, nColumn).data().toString();
            lstRows << lstCells.join(QLatin1Char('\t'));
        }
        return lstRows;
    };
    for (const char* pszRow : {"Open Study\tCtrl+O\tOrmelle", "Copy\tCtrl+C\tAll windows", "Select All\tCtrl+A\tOrmelle",
                               "Find Sequence\tCtrl+F\tOrmelle", "Preferences\tCtrl+,\tOrmelle", "Keyboard Shortcuts\tF1\tOrmelle",
                               "Quit\tCtrl+Q\tOrmelle", "Close Sequence\tCtrl+W\tOrmelle", "Log\tCtrl+L\tOrmelle"})
        QVERIFY2(rows().contains(QLatin1String(pszRow)), qPrintable(rows().join(QLatin1Char('\n'))));
    // Whatever the actions have is in the list.
    int nKeys = 0;
    for (const QAction* pAction : m_pWindow->findChildren<QAction*>() + pTool->findChildren<QAction*>())
        nKeys += pAction->shortcut().isEmpty() ? 0 : 1;
    QVERIFY(rows().size() >= nKeys);
    auto* pFilter = TestWidgets::get<QLineEdit>(pDialog, "shortcutsFilter");
    QTest::keyClicks(pFilter, QStringLiteral("FIND"));
    QCOMPARE(rows(), QStringList{"Find Sequence\tCtrl+F\tOrmelle"});
    TestWidgets::click(TestWidgets::get<QPushButton>(pDialog, "shortcutsCopy"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("Find Sequence\tCtrl+F\tOrmelle\n"));
    pFilter->clear();
    TestWidgets::click(TestWidgets::get<QPushButton>(pDialog, "shortcutsCopy"));
    QCOMPARE(QGuiApplication::clipboard()->text(), rows().join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void TestHostDialogs::noKeyMeansTwoThings()
{
    QWidget* pTool = openTool();
    action("actionImageOverlay")->trigger();
    const QList<SShortcut> lstShortcuts = OrmShortcutList::of({m_pWindow.get(), pTool});
    QVERIFY(lstShortcuts.size() >= 11);
    for (int nOne = 0; nOne < lstShortcuts.size(); ++nOne)
    {
        for (int nOther = 0; nOther < nOne; ++nOther)
        {
            const SShortcut& sOne = lstShortcuts.at(nOne);
            const SShortcut& sOther = lstShortcuts.at(nOther);
            const bool bMeet = sOne.m_strWindow == sOther.m_strWindow || sOne.m_strWindow.isEmpty() || sOther.m_strWindow.isEmpty();
            const bool bSame = sOne.m_objKeys.matches(sOther.m_objKeys) != QKeySequence::NoMatch ||
                               sOther.m_objKeys.matches(sOne.m_objKeys) != QKeySequence::NoMatch;
            QVERIFY2(!bMeet || !bSame, qPrintable(sOne.m_strCommand + QStringLiteral(" and ") + sOther.m_strCommand));
        }
    }
}

void TestHostDialogs::noLetterOfAMenuMeansTwoThings()
{
    QList<QList<QAction*>> lstMenus{m_pWindow->menuBar()->actions()};
    for (const QMenu* pMenu : m_pWindow->findChildren<QMenu*>())
        lstMenus << pMenu->actions();
    QVERIFY(lstMenus.size() > 6);
    for (const QList<QAction*>& lstActions : qAsConst(lstMenus))
    {
        QHash<QKeySequence, QString> mapSeen;
        for (const QAction* pAction : lstActions)
        {
            const QKeySequence objLetter = QKeySequence::mnemonic(pAction->text());
            if (objLetter.isEmpty())
                continue;
            QVERIFY2(!mapSeen.contains(objLetter), qPrintable(pAction->text() + QStringLiteral(" and ") + mapSeen.value(objLetter)));
            mapSeen.insert(objLetter, pAction->text());
        }
    }
}

void TestHostDialogs::windowComesBackOnTheScreen_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("where it was") << QPoint(120, 90);
    QTest::newRow("right of all screens") << QPoint(9000, 100);
    QTest::newRow("below all screens") << QPoint(100, 9000);
    QTest::newRow("left and above") << QPoint(-5000, -5000);
}

void TestHostDialogs::windowComesBackOnTheScreen()
{
    QFETCH(QPoint, place);
    m_pWindow->resize(700, 500);
    m_pWindow->move(place);
    action("actionLog")->trigger();
    QTRY_COMPARE(m_pWindow->pos(), place);
    m_pWindow->close();
    m_pWindow = std::make_unique<COrmMainWindow>();
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    const QRect rcScreen = QGuiApplication::primaryScreen()->availableGeometry();
    QTRY_VERIFY(rcScreen.contains(m_pWindow->geometry()));
    if (rcScreen.contains(place))
        QCOMPARE(m_pWindow->pos(), place);
    QCOMPARE(m_pWindow->size(), QSize(700, 500));
    QVERIFY(TestWidgets::get<QDockWidget>(m_pWindow.get(), "logPanel")->isVisible());
}

void TestHostDialogs::readingAgainShowsProgressAndCanBeStopped()
{
    QStringList lstIDs;
    for (int nSequence = 0; nSequence < 300; ++nSequence)
        lstIDs << QStringLiteral("S%1").arg(nSequence);
    openStudy(lstIDs);
    auto* pStop = TestWidgets::get<QToolButton>(m_pWindow.get(), "stopSearch");
    const auto* pBar = m_pWindow->statusBar()->findChild<QProgressBar*>();
    QVERIFY(!pStop->isVisible());
    QObject objGuard;
    connect(m_pWindow->statusBar(), &QStatusBar::messageChanged, &objGuard, &dawdle); // it names each sequence
    for (const bool bStop : {false, true})
    {
        TestWidgets::get<QTreeView>(m_pWindow.get(), "sequenceList")->clearSelection();
        action("actionRefresh")->trigger();
        QVERIFY(pStop->isVisible());
        QVERIFY(pBar->isVisible());
        QCOMPARE(pBar->maximum(), 300);
        QVERIFY(pBar->value() > 0 && pBar->value() < 300);
        if (bStop)
        {
            TestWidgets::click(pStop);
            QVERIFY2(m_pWindow->statusBar()->currentMessage().endsWith(QStringLiteral("sequences were not read again.")),
                     qPrintable(m_pWindow->statusBar()->currentMessage()));
        }
        QTRY_VERIFY(!pStop->isVisible());
        QVERIFY(!pBar->isVisible());
        QCOMPARE(m_pWindow->sequences()->sequences().size(), 300);
    }
}

ORM_TEST_MAIN(TestHostDialogs)
#include "tst_hostdialogs.moc"
