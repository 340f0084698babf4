#ifndef CAUTOPROGRESSUPDATE_H
#define CAUTOPROGRESSUPDATE_H

#include <QMutex>
#include <QString>
#include <QThread>
#include <QWaitCondition>

/// Keeps the progress display moving while the GUI thread is busy. The thread touches no widget: at short intervals it asks for a
/// repaint, which COrmProcess::keepAlive() carries out on the GUI thread.
class CAutoProgressUpdate : public QThread
{
    Q_OBJECT

public:
    /// @param strTitle heading of the progress display, shown from now on or from the next start of a long process
    explicit CAutoProgressUpdate(QString strTitle);
    /// Ends the thread if it runs.
    ~CAutoProgressUpdate() override;

    /// Ends the thread, if it runs, and waits for it; then paints what is due (COrmProcess::paintDue()). GUI thread.
    void stop();

protected:
    void run() override;

private:
    void halt();

    QMutex m_objMutex;          ///< guards m_bStop
    QWaitCondition m_objWakeUp; ///< ends the pause of run()
    bool m_bStop = false;       ///< run() is to return
};

#endif
