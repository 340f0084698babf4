#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>

class COrmHostSettings;
class COrmPreferencesDialog;
class COrmShortcutsDialog;
class QAction;
class QMainWindow;
class QMenu;

/// The entries of the main window's menus that are about the program itself: preferences, theme and shortcuts; and the icons of all its
/// entries, which follow the theme.
class COrmSystemMenus : public QObject
{
    Q_OBJECT

public:
    /// @p objSettings keeps the theme and lives as long as this object.
    COrmSystemMenus(QMainWindow* pWindow, COrmHostSettings& objSettings);

    void addPreferences(QMenu* pMenu);
    void addThemes(QMenu* pMenu);
    void addShortcuts(QMenu* pMenu);
    /// Gives the window's entries their icons; to be called once all are there.
    void giveIcons();

    /// The keys for a standard command where the desktop has such, else the given ones.
    static QKeySequence keys(QKeySequence::StandardKey eKey, const QKeySequence& objElse);
    /// A key with Ctrl.
    static QKeySequence control(Qt::Key eKey) { return {static_cast<int>(Qt::CTRL) | eKey}; }

private:
    void showPreferences();
    void showShortcuts();

    QMainWindow* m_pWindow;
    COrmHostSettings& m_objSettings;
    QPointer<COrmPreferencesDialog> m_pPreferences; ///< made at its first use
    QPointer<COrmShortcutsDialog> m_pShortcuts;     ///< likewise
};
