#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class QWidget;

/// A key that does something in a window.
struct SShortcut
{
    QString m_strWindow;  ///< title of the window; empty: in all windows
    QString m_strCommand; ///< what it does, as a menu or button says it
    QKeySequence m_objKeys;
};

namespace OrmShortcutList
{
/// The shortcuts of all menus, buttons and windows beneath the given ones, gathered from the actions themselves, in their order.
QList<SShortcut> of(const QList<QWidget*>& lstWindows);
} // namespace OrmShortcutList
