#pragma once

#include "CMonkeyRandom.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

class CMonkeyStudy;
class QFileDialog;
class QWidget;
struct SMessageRequest;

/// Ends what would wait for a user for ever: dialogs for files, any other modal window, and menus that are run from within an event. While
/// it lives, no time passes for what a held button repeats: a machine that is busy between press and release changes nothing.
class CMonkeyDialogs : public QObject
{
public:
    explicit CMonkeyDialogs(const CMonkeyStudy& objStudy);

    /// What is answered from here on follows from the number alone.
    void beginEvent(quint32 nSeed);
    /// One of the buttons that a message box offers.
    int answer(const SMessageRequest& objRequest);
    /// The names under which it saves.
    static const QStringList& exportNames();

    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    void look();
    bool isWaitedFor() const;
    void answerFile(QFileDialog& objDialog);
    void answerMenu(QWidget& objMenu);

    const CMonkeyStudy& m_objStudy;
    CMonkeyRandom m_objRandom{0};
    QPointer<QWidget> m_pSeen; ///< the modal window that was there at the last look
    int m_nLooks = 0;          ///< at it
    int m_nLoopLevel;          ///< of event loops, while nobody waits
    QTimer m_objTimer;
};
