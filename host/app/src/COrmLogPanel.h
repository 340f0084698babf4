#pragma once

#include "COrmLog.h"

#include <QColor>
#include <QDockWidget>
#include <deque>
#include <mutex>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QToolButton;

/// The log as a panel of the main window: time, writer, weight and message of each entry, the latest at the end, with a choice of what is
/// shown. The end stays in view for whoever is looking at it.
class COrmLogPanel : public QDockWidget
{
    Q_OBJECT

public:
    static constexpr int s_nMaxLines = 5000; ///< older entries are dropped

    explicit COrmLogPanel(QWidget* pParent = nullptr);
    ~COrmLogPanel() override;

    /// One entry as it is shown, in one line of plain text.
    static QString lineFor(const SLogEntry& sEntry);
    /// The word for a level, as files have it: "info", "note" or "error".
    static QString levelName(long nLevel);

    /// Copies the marked text, or every line that is shown.
    void copy();
    void clear();
    /// Brings the latest entry into view.
    void jumpToLast();

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    QWidget* makeControls();
    void receive(const SLogEntry& sEntry);
    void takeIn();
    void showAgain();
    void append(const std::deque<SLogEntry>& lstEntries);
    bool isWanted(const SLogEntry& sEntry) const;
    void updateCount();
    QColor colourFor(long nLevel) const;

    QPlainTextEdit* m_pText;
    QComboBox* m_pLevel;
    QLineEdit* m_pFilter;
    QLabel* m_pCount;
    QToolButton* m_pCopy;
    QToolButton* m_pLast;
    std::deque<SLogEntry> m_lstEntries; ///< all that are kept, shown or not
    int m_nShown = 0;
    int m_nSink = 0;
    std::mutex m_objMutex;
    std::deque<SLogEntry> m_lstWaiting; ///< entries come from any thread; guarded by the mutex
    bool m_bNotified = false;           ///< likewise
};
