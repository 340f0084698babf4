#ifndef CPROGRESSDISPLAY_H
#define CPROGRESSDISPLAY_H

#include <QElapsedTimer>
#include <QWidget>

class CBusyStrip;
class QLabel;
class QProgressBar;
class QPushButton;

/// The window of a long process: a heading, the step's text, a bar that counts the steps, the time that has gone by and a strip that
/// moves with it. It paints itself at once whenever it is told something, since no event loop runs meanwhile.
class CProgressDisplay : public QWidget
{
    Q_OBJECT

public:
    CProgressDisplay();

    /// Starts anew and shows the window, without taking the focus from anybody.
    void start(const QString& strTitle, int nSteps, bool bMayAbort, const QString& strAbortText);
    void setTitle(const QString& strTitle);
    void setStep(const QString& strMessage, int nStep, int nSteps);
    /// Brings strip and time up to date and paints, in this call.
    void paintNow();
    bool isAbortRequested() const { return m_bAbort; }

protected:
    void closeEvent(QCloseEvent* pEvent) override;

private:
    void setSteps(int nStep, int nSteps);
    void abort();
    void place();

    QLabel* m_pTitle;
    QLabel* m_pMessage;
    QProgressBar* m_pBar;
    CBusyStrip* m_pStrip;
    QLabel* m_pTime;
    QPushButton* m_pAbort;
    QElapsedTimer m_objElapsed; ///< since start()
    QString m_strAbortText;     ///< shown once the user asked to abort
    bool m_bAbort = false;      ///< the user asked to abort
};

#endif
