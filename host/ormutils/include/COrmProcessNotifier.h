#ifndef CORMPROCESSNOTIFIER_H
#define CORMPROCESSNOTIFIER_H

#include <QObject>
#include <QString>

/// Tells what COrmProcess was told, and COrmUtilityFns about the cursor: one signal for each call, in call order, whether or not the
/// call changed anything.
class COrmProcessNotifier : public QObject
{
    Q_OBJECT

public:
    explicit COrmProcessNotifier(QObject* pParent = nullptr);

signals:
    /// startLongProcess() with its four arguments.
    void started(int nSteps, int nType, bool bMayAbort, QString strAbortText);
    /// setProcessMessage().
    void message(QString strMessage, int nStep, int nSteps);
    /// endLongProcess().
    void ended(int nType);
    /// disableUserInteraction().
    void userInteractionDisabled(bool bDisabled);
    /// setProcessTitle().
    void titled(QString strTitle);
    /// COrmUtilityFns::setCursor() with the cursor's shape (Qt::CursorShape).
    void cursorSet(int nShape);
    /// COrmUtilityFns::restoreCursor().
    void cursorRestored();
};

#endif
