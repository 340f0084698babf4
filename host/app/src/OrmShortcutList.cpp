#include "OrmShortcutList.h"

#include "COrmPlainText.h"

#include <QAbstractButton>
#include <QAction>
#include <QSet>
#include <QShortcut>
#include <QWidget>

namespace
{
constexpr int s_nMaxText = 80; ///< characters of a command or title

/// A text of a menu or button as a user reads it.
QString readable(const QString& strText)
{
    QString strRead;
    for (int nPlace = 0; nPlace < strText.size(); ++nPlace)
    {
        if (strText.at(nPlace) == QLatin1Char('&') && ++nPlace == strText.size())
            break;
        strRead.append(strText.at(nPlace));
    }
    strRead = strRead.section(QLatin1Char('\t'), 0, 0).trimmed();
    if (strRead.endsWith(QLatin1String("...")))
        strRead.chop(3);
    return COrmPlainText::visible(COrmPlainText::shortened(strRead, s_nMaxText));
}
} // namespace

QList<SShortcut> OrmShortcutList::of(const QList<QWidget*>& lstWindows)
{
    QList<SShortcut> lstShortcuts;
    QSet<const QObject*> lstSeen;
    for (const QWidget* pWindow : lstWindows)
    {
        const QString strWindow = readable(QString(pWindow->windowTitle()).replace(QLatin1Char('&'), QLatin1String("&&")));
        const auto add = [&](const QString& strCommand, const QKeySequence& objKeys, Qt::ShortcutContext eContext)
        {
            if (!objKeys.isEmpty())
                lstShortcuts.append({eContext == Qt::ApplicationShortcut ? QString() : strWindow, strCommand, objKeys});
        };
        QList<const QWidget*> lstWidgets{pWindow};
        for (const QWidget* pWidget : pWindow->findChildren<QWidget*>())
            lstWidgets.append(pWidget);
        for (const QWidget* pWidget : qAsConst(lstWidgets))
        {
            const QList<QAction*> lstActions = pWidget->actions();
            for (const QAction* pAction : lstActions)
            {
                if (lstSeen.contains(pAction))
                    continue;
                lstSeen.insert(pAction);
                const QList<QKeySequence> lstKeys = pAction->shortcuts();
                for (const QKeySequence& objKeys : lstKeys)
                    add(readable(pAction->text()), objKeys, pAction->shortcutContext());
            }
            // The underlined letter of a button is seen on it.
            const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
            if (pButton != nullptr && pButton->shortcut() != QKeySequence::mnemonic(pButton->text()))
                add(readable(pButton->text()), pButton->shortcut(), Qt::WindowShortcut);
        }
        for (const QShortcut* pShortcut : pWindow->findChildren<QShortcut*>())
            add(readable(pShortcut->whatsThis()), pShortcut->key(), pShortcut->context());
    }
    return lstShortcuts;
}
