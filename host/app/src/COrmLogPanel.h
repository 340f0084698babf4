#pragma once

#include "COrmLog.h"

#include <QColor>
#include <QDockWidget>
#include <deque>
#include <mutex>

class QPlainTextEdit;

/// The log as a panel of the main window: time, weight and message of each entry, the latest at the end.
class COrmLogPanel : public QDockWidget
{
    Q_OBJECT

public:
    static constexpr int s_nMaxLines = 5000; ///< older lines are dropped

    explicit COrmLogPanel(QWidget* pParent = nullptr);
    ~COrmLogPanel() override;

    /// One entry as it is shown, in one line of plain text.
    static QString lineFor(const SLogEntry& sEntry);

private:
    void receive(const SLogEntry& sEntry);
    void takeIn();
    QColor colourFor(long nLevel) const;

    QPlainTextEdit* m_pText;
    int m_nSink = 0;
    std::mutex m_objMutex;
    std::deque<SLogEntry> m_lstWaiting; ///< entries come from any thread; guarded by the mutex
    bool m_bNotified = false;           ///< likewise
};
