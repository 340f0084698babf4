#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

class QAbstractItemView;
class QWidget;

/// Lets keys choose in the lists of a tool's window what a click chooses there, for tools that listen to clicks alone. The entry at which
/// a key has arrived when it is let go counts as clicked, so that a key held down chooses once; the space bar and Return choose the entry
/// that they are pressed on.
class COrmListKeys : public QObject
{
    Q_OBJECT

public:
    /// Looks after every list that the window holds now, and goes with it.
    explicit COrmListKeys(QWidget* pWindow);

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QPointer<QAbstractItemView> m_pPressedIn; ///< the list that got the press of a key
    QPersistentModelIndex m_objBefore;        ///< its current entry at that time
    bool m_bSelectedBefore = false;
};
