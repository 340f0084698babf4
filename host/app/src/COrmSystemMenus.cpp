#include "COrmSystemMenus.h"

#include "COrmHostSettings.h"
#include "COrmPreferencesDialog.h"
#include "COrmShortcutsDialog.h"
#include "OrmIcons.h"
#include "OrmTheme.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <vector>

namespace
{
const QString s_strThemeKey = QStringLiteral("theme");

/// The drawing of an entry, by the entry's name.
struct SEntryIcon
{
    const char* pszAction;
    const char* pszDrawing;
};

/// The entries of each menu that have one.
const std::vector<std::vector<SEntryIcon>> s_lstMenus = {
    {{"actionOpenStudy", "open"},
     {"actionOpenDemo", "demo"},
     {"actionCompare", "compare"},
     {"actionRefresh", "refresh"},
     {"actionClose", "close"},
     {"actionQuit", "quit"}},
    {{"actionCopy", "copy"}, {"actionSelectAll", "selectall"}, {"actionFind", "find"}, {"actionPreferences", "preferences"}},
    {{"actionLog", "log"}},
    {{"actionImageOverlay", "overlay"}},
    {{"actionShortcuts", "keyboard"}, {"actionAbout", "about"}},
};
} // namespace

COrmSystemMenus::COrmSystemMenus(QMainWindow* pWindow, COrmHostSettings& objSettings)
    : QObject(pWindow), m_pWindow(pWindow), m_objSettings(objSettings)
{
}

QKeySequence COrmSystemMenus::keys(QKeySequence::StandardKey eKey, const QKeySequence& objElse)
{
    const QKeySequence objKeys(eKey);
    return objKeys.isEmpty() ? objElse : objKeys;
}

void COrmSystemMenus::addPreferences(QMenu* pMenu)
{
    QAction* pAction = pMenu->addAction(tr("&Preferences..."), this, &COrmSystemMenus::showPreferences);
    pAction->setObjectName(QStringLiteral("actionPreferences"));
    pAction->setStatusTip(tr("Choose colours, text size, image format, language and the folder where studies are looked for"));
    pAction->setShortcut(keys(QKeySequence::Preferences, control(Qt::Key_Comma)));
}

void COrmSystemMenus::addThemes(QMenu* pMenu)
{
    QMenu* pThemes = pMenu->addMenu(tr("&Theme"));
    pThemes->setObjectName(QStringLiteral("menuTheme"));
    pThemes->menuAction()->setStatusTip(tr("Choose the colours of all windows"));
    auto* pGroup = new QActionGroup(this);
    struct SEntry
    {
        OrmTheme::ETheme eTheme;
        QString strText;
        QString strHint;
    };
    OrmTheme::apply(OrmTheme::fromName(QString::fromLatin1(m_objSettings.value(s_strThemeKey))));
    for (const SEntry& sEntry : {SEntry{OrmTheme::eSystem, tr("&System"), tr("The colours of the desktop")},
                                 SEntry{OrmTheme::eLight, tr("&Light"), tr("Dark text on light windows")},
                                 SEntry{OrmTheme::eDark, tr("&Dark"), tr("Light text on dark windows")}})
    {
        QAction* pAction = pThemes->addAction(sEntry.strText);
        pAction->setObjectName(QStringLiteral("theme-") + OrmTheme::name(sEntry.eTheme));
        pAction->setStatusTip(sEntry.strHint);
        pAction->setCheckable(true);
        pAction->setChecked(OrmTheme::current() == sEntry.eTheme);
        pGroup->addAction(pAction);
        connect(pAction, &QAction::triggered, this,
                [this, eTheme = sEntry.eTheme]
                {
                    OrmTheme::apply(eTheme);
                    giveIcons();
                    m_objSettings.setValue(s_strThemeKey, OrmTheme::name(eTheme).toLatin1());
                });
    }
}

void COrmSystemMenus::addShortcuts(QMenu* pMenu)
{
    QAction* pAction = pMenu->addAction(tr("&Keyboard Shortcuts..."), this, &COrmSystemMenus::showShortcuts);
    pAction->setObjectName(QStringLiteral("actionShortcuts"));
    pAction->setStatusTip(tr("List the keys that do something"));
    pAction->setShortcut(keys(QKeySequence::HelpContents, QKeySequence(Qt::Key_F1)));
}

void COrmSystemMenus::giveIcons()
{
    for (const std::vector<SEntryIcon>& lstMenu : s_lstMenus)
    {
        QStringList lstNames;
        for (const SEntryIcon& sIcon : lstMenu)
            lstNames.append(QLatin1String(sIcon.pszDrawing));
        const QList<QIcon> lstIcons = OrmIcons::family(lstNames);
        for (size_t nEntry = 0; nEntry < lstMenu.size(); ++nEntry)
        {
            if (auto* pAction = m_pWindow->findChild<QAction*>(QLatin1String(lstMenu[nEntry].pszAction)))
                pAction->setIcon(lstIcons.at(int(nEntry)));
        }
    }
}

void COrmSystemMenus::showPreferences()
{
    if (!m_pPreferences)
        m_pPreferences = new COrmPreferencesDialog(m_objSettings, m_pWindow);
    m_pPreferences->show();
    m_pPreferences->raise();
    m_pPreferences->activateWindow();
}

void COrmSystemMenus::showShortcuts()
{
    if (!m_pShortcuts)
        m_pShortcuts = new COrmShortcutsDialog(m_pWindow);
    QList<QWidget*> lstWindows{m_pWindow};
    const QWidgetList lstTopLevel = QApplication::topLevelWidgets();
    for (QWidget* pWindow : lstTopLevel)
    {
        // Menus and dialogs of a window are reached through it.
        if (pWindow != m_pWindow && pWindow->parentWidget() == nullptr && !pWindow->windowTitle().isEmpty())
            lstWindows.append(pWindow);
    }
    m_pShortcuts->setShortcuts(OrmShortcutList::of(lstWindows));
    m_pShortcuts->show();
    m_pShortcuts->raise();
    m_pShortcuts->activateWindow();
}
