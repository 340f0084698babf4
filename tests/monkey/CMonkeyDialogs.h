#pragma once

#include "CMonkeyRandom.h"

#include <QPointer>
#include <QTimer>

class CMonkeyStudy;
class QFileDialog;
class QWidget;
struct SMessageRequest;

/// Ends what would wait for a user for ever: dialogs for files, any other modal window, and menus that are run from within an event.
class CMonkeyDialogs
{
public:
    explicit CMonkeyDialogs(const CMonkeyStudy& objStudy);

    /// What is answered from here on follows from the number alone.
    void beginEvent(quint32 nSeed);
    /// One of the buttons that a message box offers.
    int answer(const SMessageRequest& objRequest);
    /// A menu that is open when the event has ended was not run from within it.
    void endEvent() { m_pMenu.clear(); }

private:
    void look();
    void answerFile(QFileDialog& objDialog);
    void answerMenu(QWidget& objMenu);

    const CMonkeyStudy& m_objStudy;
    CMonkeyRandom m_objRandom{0};
    QPointer<QWidget> m_pSeen; ///< the modal window that was there at the last look
    int m_nLooks = 0;          ///< at it
    QPointer<QWidget> m_pMenu; ///< the popup that was there at the last look
    int m_nMenuLooks = 0;      ///< at it
    QTimer m_objTimer;
};
