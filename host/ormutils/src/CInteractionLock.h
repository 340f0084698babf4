#ifndef CINTERACTIONLOCK_H
#define CINTERACTIONLOCK_H

#include <QObject>
#include <QTimer>

/// Keeps user input from the application's windows while it is locked. What the window system queued during the lock is dropped
/// after it as well: it is delivered only when the event loop runs again, and would otherwise act on a finished work's window (a second
/// click on a button whose first click started the work).
class CInteractionLock : public QObject
{
    Q_OBJECT

public:
    explicit CInteractionLock(QObject* pParent = nullptr);

    void setLocked(bool bLocked);
    bool isLocked() const { return m_bLocked; }

    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

    /// Name of the property that lets a top-level widget answer during the lock.
    static const char* exemptProperty();

private:
    bool isExempt(QObject* pObject) const;

    bool m_bLocked = false;
    QTimer m_objDrained; ///< fires when the queued input has been delivered
};

#endif
