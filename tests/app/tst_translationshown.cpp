#include "COrmHostSettings.h"
#include "MainWindowTest.h"
#include "OrmColorTables.h"
#include "OrmLanguage.h"
#include "OrmTestMain.h"
#include "OrmTheme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDialog>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QStatusBar>

#include <algorithm>
#include <functional>

/// What a person reads in the host's windows in each language.
class TestTranslationShown : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void cleanup();

    void nothingIsLeftInEnglish();
    void englishIsAsItWas();
    void nothingIsCutOff();
    void noLetterMeansTwoThings();
    void toolsFindTheirPlace();
    void languageIsChosenInThePreferences();

private:
    /// Makes a window in that language; empty: with no translation at all.
    void start(const QString& strCode);
    /// Goes through the windows; what stops at each place sees what is shown there.
    void walk(const std::function<void(const QString& strPlace, QWidget* pWindow)>& fnStop);
    /// Without what differs from run to run: folders of the test, and how many lines the log has.
    QString neutral(const QString& strText) const;
    /// Everything that can be read, each with the place where it stands.
    QStringList readEverything(const QString& strCode);
    QDialog* open(const char* pAction, const char* pDialog) const;
    void loadLongitudinalStudy();
};

namespace
{
/// Whether it is the menu of what found no place in a menu bar, which depends on the window's width of the moment, or belongs to scroll
/// bars, whose order is that in which they were shown.
bool isRest(const QWidget* pWidget)
{
    for (const QWidget* pBars : {pWidget, static_cast<const QWidget*>(pWidget->parentWidget())})
    {
        if (pBars != nullptr && pBars->objectName().startsWith(QLatin1String("qt_scrollarea_")))
            return true;
    }
    const auto* pMenu = qobject_cast<const QMenu*>(pWidget);
    return pMenu != nullptr && pMenu->title().isEmpty() && qobject_cast<const QMenuBar*>(pMenu->parentWidget()) != nullptr;
}

/// The texts of a widget itself, as a person reads or hears them.
QStringList textsOf(const QWidget* pWidget)
{
    QStringList lstTexts{pWidget->toolTip(), pWidget->statusTip(), pWidget->whatsThis(), pWidget->accessibleName(),
                         pWidget->accessibleDescription()};
    if (pWidget->isWindow())
        lstTexts << pWidget->windowTitle();
    if (const auto* pLabel = qobject_cast<const QLabel*>(pWidget))
        lstTexts << pLabel->text();
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget))
        lstTexts << pButton->text();
    if (const auto* pLink = qobject_cast<const QCommandLinkButton*>(pWidget))
        lstTexts << pLink->description();
    if (const auto* pGroup = qobject_cast<const QGroupBox*>(pWidget))
        lstTexts << pGroup->title();
    if (const auto* pLine = qobject_cast<const QLineEdit*>(pWidget))
        lstTexts << pLine->placeholderText();
    if (const auto* pSpin = qobject_cast<const QSpinBox*>(pWidget))
        lstTexts << pSpin->suffix();
    if (const auto* pMenu = qobject_cast<const QMenu*>(pWidget))
        lstTexts << pMenu->title();
    if (const auto* pCombo = qobject_cast<const QComboBox*>(pWidget))
    {
        for (int nItem = 0; nItem < pCombo->count(); ++nItem)
            lstTexts << pCombo->itemText(nItem);
    }
    if (const auto* pView = qobject_cast<const QTreeView*>(pWidget))
    {
        const QAbstractItemModel* pModel = pView->model();
        for (int nColumn = 0; nColumn < pModel->columnCount(); ++nColumn)
        {
            lstTexts << pModel->headerData(nColumn, Qt::Horizontal).toString();
            for (int nRow = 0; nRow < pModel->rowCount(); ++nRow)
            {
                for (const int nRole : {int(Qt::DisplayRole), int(Qt::ToolTipRole), int(Qt::AccessibleTextRole)})
                    lstTexts << pModel->index(nRow, nColumn).data(nRole).toString();
            }
        }
    }
    const QList<QAction*> lstActions = pWidget->actions();
    for (const QAction* pAction : lstActions)
        lstTexts << pAction->text() << pAction->toolTip() << pAction->statusTip() << pAction->shortcut().toString(QKeySequence::NativeText);
    return lstTexts;
}

/// What of a widget's text has no room; empty: all of it can be read.
QString lackOf(const QWidget* pWidget)
{
    const auto tell = [pWidget](const QString& strText, int nIs, int nShould)
    {
        return nIs >= nShould ? QString()
                              : QStringLiteral("%1 %2 \"%3\" has %4 of %5 pixels")
                                    .arg(QLatin1String(pWidget->metaObject()->className()), pWidget->objectName(), strText)
                                    .arg(nIs)
                                    .arg(nShould);
    };
    if (const auto* pLabel = qobject_cast<const QLabel*>(pWidget))
        return pLabel->wordWrap() ? tell(pLabel->text(), pLabel->height(), pLabel->heightForWidth(pLabel->width()))
                                  : tell(pLabel->text(), pLabel->width(), pLabel->minimumSizeHint().width());
    if (const auto* pLink = qobject_cast<const QCommandLinkButton*>(pWidget))
        return tell(pLink->text(), pLink->height(), pWidget->heightForWidth(pLink->width()));
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget); pButton != nullptr && !pButton->text().isEmpty())
        return tell(pButton->text(), pButton->width(), pButton->minimumSizeHint().width());
    if (const auto* pGroup = qobject_cast<const QGroupBox*>(pWidget))
        return tell(pGroup->title(), pGroup->width(), pGroup->minimumSizeHint().width());
    if (const auto* pCombo = qobject_cast<const QComboBox*>(pWidget))
        return tell(pCombo->currentText(), pCombo->width(), pCombo->minimumSizeHint().width());
    if (const auto* pLine = qobject_cast<const QLineEdit*>(pWidget); pLine != nullptr && pLine->text().isEmpty())
        return tell(pLine->placeholderText(), pLine->width(), pLine->fontMetrics().horizontalAdvance(pLine->placeholderText()));
    if (const auto* pTree = qobject_cast<const QTreeView*>(pWidget))
    {
        QString strLack;
        for (int nColumn = 0; nColumn < pTree->model()->columnCount() && strLack.isEmpty(); ++nColumn)
        {
            if (!pTree->isColumnHidden(nColumn))
                strLack = tell(pTree->model()->headerData(nColumn, Qt::Horizontal).toString(), pTree->columnWidth(nColumn),
                               pTree->fontMetrics().horizontalAdvance(pTree->model()->headerData(nColumn, Qt::Horizontal).toString()));
        }
        return strLack;
    }
    return {};
}

/// Names, those of colour tables among them, file formats and words that are the same in both languages.
bool mayBeTheSame(const QString& strText)
{
    static const QStringList s_lstSame{
        QStringLiteral("Ormelle"),
        QStringLiteral("Longitudinal Study"),
        QStringLiteral("English"),
        QStringLiteral("Deutsch"),
        QStringLiteral("&System"),
        QStringLiteral("System"),
        QStringLiteral("Te&xt:"),
        QStringLiteral("Emission"),
        QStringLiteral("PNG (.png)"),
        QStringLiteral("TIFF (.tif)"),
        QStringLiteral("JPEG (.jpg)"),
        QStringLiteral("Bitmap (.bmp)"),
        QStringLiteral("Encapsulated PostScript (.eps)"),
        QStringLiteral("OK"),
        QStringLiteral("&OK"),
        QStringLiteral("Qt 0.0.0"),
        QStringLiteral("Test"),
    };
    // Keys, colours, dates, sequences, results, measures and paths are no words; digits are 0 here.
    static const QRegularExpression s_reNoWord(
        QStringLiteral("^(F0|#[0-9A-Fa-f]{6}|0 (SOLA|NOVA|nm|s)|(SOLA|NOVA) .*|(Longitudinal Study, )?/.*|"
                       "(<span>)?(M0[LF](_0)?|Test, [-0: ]+)(</span>)?|[^A-Za-z]*)$"));
    return s_lstSame.contains(strText) || OrmColorTables::volumeTableNames().contains(strText) || s_reNoWord.match(strText).hasMatch();
}
} // namespace

void TestTranslationShown::cleanup()
{
    removeWindow();
    OrmLanguage::use(QStringLiteral("en"));
}

void TestTranslationShown::start(const QString& strCode)
{
    removeWindow();
    if (!strCode.isEmpty())
        OrmLanguage::use(strCode);
    makeWindow();
}

QString TestTranslationShown::neutral(const QString& strText) const
{
    static const QRegularExpression s_reDigits(QStringLiteral("\\d+"));
    QString strNeutral =
        QString(strText).replace(m_pStudy->folder(), QStringLiteral("/study")).replace(m_pPlugins->path(), QStringLiteral("/tools"));
    return strNeutral.replace(s_reDigits, QStringLiteral("0"));
}

void TestTranslationShown::loadLongitudinalStudy()
{
    const QString strName = QStringLiteral("libormlongitudinalstudy.so");
    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/") + strName);
    QVERIFY(objLibrary.open(QIODevice::ReadOnly));
    m_pPlugins->add(strName, objLibrary.readAll());
    m_pWindow->loadTools(m_pPlugins->path());
}

QDialog* TestTranslationShown::open(const char* pAction, const char* pDialog) const
{
    action(pAction)->trigger();
    auto* pShown = TestWidgets::get<QDialog>(m_pWindow.get(), pDialog);
    if (!QTest::qWaitForWindowExposed(pShown))
        TestWidgets::fail(QStringLiteral("The dialog is not shown."));
    return pShown;
}

void TestTranslationShown::walk(const std::function<void(const QString& strPlace, QWidget* pWindow)>& fnStop)
{
    fnStop(QStringLiteral("without tools"), m_pWindow.get());
    loadLongitudinalStudy();
    fnStop(QStringLiteral("with tools"), m_pWindow.get());
    SSequenceLook objFluorescent;
    objFluorescent.bLuminescent = false;
    objFluorescent.bFluorescent = true;
    objFluorescent.bTransIllumination = true;
    m_pStudy->addSequence(QStringLiteral("M1F"), objFluorescent);
    SResultDocument objResult;
    m_pStudy->addSequence(QStringLiteral("M2L"));
    m_pStudy->addResult(QStringLiteral("M2L"), QStringLiteral("first"), objResult);
    openStudy({QStringLiteral("M3L")});
    select({QStringLiteral("M2L")});
    const auto* pPicture = TestWidgets::get<QWidget>(m_pWindow.get(), "previewPicture");
    QTRY_VERIFY(!pPicture->toolTip().isEmpty());
    fnStop(QStringLiteral("with a study"), m_pWindow.get());
    select({QStringLiteral("M1F")});
    QTRY_VERIFY(!pPicture->toolTip().isEmpty());
    fnStop(QStringLiteral("with a fluorescent sequence"), m_pWindow.get());
    TestWidgets::get<QLineEdit>(m_pWindow.get(), "sequenceFilter")->setText(QStringLiteral("123456"));
    fnStop(QStringLiteral("with a filter that nothing passes"), m_pWindow.get());
    TestWidgets::get<QPushButton>(m_pWindow.get(), "showAllButton")->click();
    action("actionLog")->trigger();
    fnStop(QStringLiteral("with the log"), TestWidgets::get<QWidget>(m_pWindow.get(), "logPanel"));
    action("actionLog")->trigger();
    action("actionImageOverlay")->trigger();
    QWidget* pOverlay = nullptr;
    const QWidgetList lstWindows = QApplication::topLevelWidgets();
    for (QWidget* pWindow : lstWindows)
    {
        if (pWindow->objectName() == QLatin1String("Image Overlay"))
            pOverlay = pWindow;
    }
    QVERIFY(pOverlay != nullptr);
    fnStop(QStringLiteral("image overlay"), pOverlay);
    pOverlay->close();
    QDialog* pDialog = open("actionPreferences", "preferencesDialog");
    fnStop(QStringLiteral("preferences"), pDialog);
    pDialog->close();
    pDialog = open("actionShortcuts", "shortcutsDialog");
    fnStop(QStringLiteral("shortcuts"), pDialog);
    pDialog->close();
}

QStringList TestTranslationShown::readEverything(const QString& strCode)
{
    start(strCode);
    QStringList lstRead;
    walk(
        [this, &lstRead](const QString& strPlace, QWidget* pWindow)
        {
            QList<QWidget*> lstWidgets{pWindow};
            lstWidgets << pWindow->findChildren<QWidget*>();
            for (const QWidget* pWidget : qAsConst(lstWidgets))
            {
                const QStringList lstTexts = isRest(pWidget) ? QStringList() : textsOf(pWidget);
                for (const QString& strText : lstTexts)
                    lstRead << strPlace + QLatin1Char('\t') + QLatin1String(pWidget->metaObject()->className()) + QLatin1Char(' ') +
                                   pWidget->objectName() + QLatin1Char('\t') + neutral(strText);
            }
        });
    m_pHost->clear();
    action("actionAbout")->trigger();
    m_pWindow->openPaths({m_pStudy->folder() + QStringLiteral("/nowhere")}, true);
    if (!QTest::qWaitFor([this] { return m_pHost->boxes().size() == 2; }, 30000))
        TestWidgets::fail(QStringLiteral("The boxes were not shown."));
    const QList<SMessageRequest> lstBoxes = m_pHost->boxes();
    for (const SMessageRequest& sBox : lstBoxes)
    {
        const QStringList lstLines = (sBox.strCaption + QLatin1Char('\n') + sBox.strText).split(QLatin1Char('\n'));
        for (const QString& strLine : lstLines)
            lstRead << QStringLiteral("box\t\t") + neutral(strLine);
    }
    lstRead << QStringLiteral("hint\t\t") + neutral(m_pWindow->statusBar()->currentMessage());
    return lstRead;
}

void TestTranslationShown::nothingIsLeftInEnglish()
{
    const QStringList lstEnglish = readEverything(QStringLiteral("en"));
    const QStringList lstGerman = readEverything(QStringLiteral("de"));
    QVERIFY(lstEnglish.size() > 1000);
    QStringList lstLeft;
    for (int nText = 0; nText < std::min(lstEnglish.size(), lstGerman.size()); ++nText)
    {
        QCOMPARE(lstGerman.at(nText).section(QLatin1Char('\t'), 0, 1), lstEnglish.at(nText).section(QLatin1Char('\t'), 0, 1));
        if (lstGerman.at(nText) == lstEnglish.at(nText) && !mayBeTheSame(lstEnglish.at(nText).section(QLatin1Char('\t'), 2)))
            lstLeft << lstEnglish.at(nText);
    }
    lstLeft.removeDuplicates();
    QVERIFY2(lstLeft.isEmpty(), qPrintable(QStringLiteral("\n") + lstLeft.join(QLatin1Char('\n'))));
    QCOMPARE(lstGerman.size(), lstEnglish.size());
}

void TestTranslationShown::englishIsAsItWas()
{
    const QStringList lstWithout = readEverything(QString());
    readEverything(QStringLiteral("de"));
    QCOMPARE(readEverything(QStringLiteral("en")), lstWithout);
    QVERIFY(lstWithout.contains(QStringLiteral("hint\t\tNo further sequence was opened. View > Log names 0 problem.")));
}

void TestTranslationShown::nothingIsCutOff()
{
    for (const OrmTheme::ETheme eTheme : {OrmTheme::eLight, OrmTheme::eDark})
    {
        start(QStringLiteral("de"));
        OrmTheme::apply(eTheme);
        int nLooked = 0;
        QStringList lstCut;
        walk(
            [&](const QString& strPlace, QWidget* pWindow)
            {
                QCoreApplication::processEvents(); // the layout has its turn
                const QList<QWidget*> lstWidgets = pWindow->findChildren<QWidget*>();
                for (const QWidget* pWidget : lstWidgets)
                {
                    if (!pWidget->isVisible() || pWidget->inherits("COrmElidedLabel"))
                        continue;
                    ++nLooked;
                    const QString strLack = lackOf(pWidget);
                    if (!strLack.isEmpty())
                        lstCut << strPlace + QStringLiteral(": ") + strLack;
                }
            });
        QVERIFY(nLooked > 100);
        QVERIFY2(lstCut.isEmpty(), qPrintable(QStringLiteral("\n") + lstCut.join(QLatin1Char('\n'))));
        OrmTheme::apply(OrmTheme::eSystem);
    }
}

void TestTranslationShown::noLetterMeansTwoThings()
{
    start(QStringLiteral("de"));
    int nLetters = 0;
    walk(
        [&](const QString& strPlace, QWidget* pWindow)
        {
            // The letters of a window and of its menu bar are pressed with the same key; each menu has letters of its own.
            QList<QPair<QString, QStringList>> lstSets{{strPlace, {}}};
            const QList<QWidget*> lstWidgets = pWindow->findChildren<QWidget*>();
            for (QWidget* pWidget : lstWidgets)
            {
                const auto* pMenu = qobject_cast<const QMenu*>(pWidget);
                const bool bBar = qobject_cast<const QMenuBar*>(pWidget) != nullptr;
                if (pMenu != nullptr)
                    lstSets.append({pMenu->title(), {}});
                QStringList& lstSet = pMenu != nullptr ? lstSets.last().second : lstSets.first().second;
                const QList<QAction*> lstActions = pMenu != nullptr || bBar ? pWidget->actions() : QList<QAction*>();
                for (const QAction* pAction : lstActions)
                    lstSet << pAction->text();
                if (!pWidget->isVisible())
                    continue;
                if (const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget))
                    lstSet << pButton->text();
                if (const auto* pLabel = qobject_cast<const QLabel*>(pWidget); pLabel != nullptr && pLabel->buddy() != nullptr)
                    lstSet << pLabel->text();
            }
            for (const auto& objSet : qAsConst(lstSets))
            {
                QHash<QKeySequence, QString> mapSeen;
                for (const QString& strText : objSet.second)
                {
                    const QKeySequence objLetter = QKeySequence::mnemonic(strText);
                    if (objLetter.isEmpty())
                        continue;
                    ++nLetters;
                    QVERIFY2(!mapSeen.contains(objLetter), qPrintable(objSet.first + QStringLiteral(": ") + strText +
                                                                      QStringLiteral(" and ") + mapSeen.value(objLetter)));
                    mapSeen.insert(objLetter, strText);
                }
            }
        });
    QVERIFY(nLetters > 100);
}

void TestTranslationShown::toolsFindTheirPlace()
{
    // A tool names the entry before which it stands in English.
    start(QStringLiteral("de"));
    loadLongitudinalStudy();
    const QStringList lstEntries = entries(menu("menuTools"));
    QCOMPARE(lstEntries.mid(0, 2), QStringList({QStringLiteral("Longitudinal Study"), QStringLiteral("Bildüberlagerung")}));
    QVERIFY(m_pWindow->openTool(QStringLiteral("image overlay")));
    QVERIFY(m_pWindow->openTool(QStringLiteral("bildüberlagerung")));
}

void TestTranslationShown::languageIsChosenInThePreferences()
{
    start(QStringLiteral("en"));
    const QDialog* pDialog = open("actionPreferences", "preferencesDialog");
    auto* pLanguage = TestWidgets::get<QComboBox>(pDialog, "language");
    const auto* pNotice = TestWidgets::get<QLabel>(pDialog, "preferencesNotice");
    QCOMPARE(pLanguage->currentText(), QStringLiteral("The system's"));
    QVERIFY(!pNotice->isVisible());
    pLanguage->setCurrentIndex(pLanguage->findText(QStringLiteral("Deutsch")));
    QCOMPARE(COrmHostSettings().language(), QStringLiteral("de"));
    QVERIFY(pNotice->isVisible());
    QCOMPARE(pNotice->text(), QStringLiteral("The language changes when Ormelle is started again."));
    QCOMPARE(menu("menuTools")->title(), QStringLiteral("&Tools")); // no window speaks two languages
    pLanguage->setCurrentIndex(pLanguage->findText(QStringLiteral("English")));
    QCOMPARE(COrmHostSettings().language(), QStringLiteral("en"));
    QVERIFY(!pNotice->isVisible());
    TestWidgets::get<QPushButton>(pDialog, "restoreDefaults")->click();
    QCOMPARE(COrmHostSettings().language(), QString());
    QCOMPARE(pLanguage->currentIndex(), 0);
}

ORM_TEST_MAIN(TestTranslationShown)
#include "tst_translationshown.moc"
