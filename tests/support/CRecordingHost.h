#pragma once

#include "COrmErrorHandler.h"
#include "COrmMessageBox.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class COrmBasePalette;

/// Stands in the place of the user and of the host's displays, and writes down in one list what the host is asked for, in
/// the order of the calls. Only one may live at a time. The forms of the entries:
///
///     log 2: <message>                        the host's own entries, which carry a file name, are left out
///     hint: <text>                            of a palette that is watched
///     progress 3/15: <text>
///     process start 15 8 false <abort text>   steps, kind, whether it may be aborted
///     process end 1
///     title: <heading of the progress display>
///     interface locked | interface free
///     cursor set <shape> | cursor restored    shape 3 is the wait cursor
///     box information: <text>                 or warning, critical
///     error 65: <extra text>
class CRecordingHost : public QObject
{
    Q_OBJECT

public:
    explicit CRecordingHost(QObject* pParent = nullptr);
    ~CRecordingHost() override;

    /// Everything since the last clear().
    const QStringList& calls() const { return m_lstCalls; }
    /// The entries that begin with the text.
    QStringList callsOf(const QString& strBegin) const;
    void clear();
    /// Writes an entry of the test's own.
    void note(const QString& strEntry);

    /// Writes down the status hints of the palette too.
    void watchHints(COrmBasePalette& objPalette);

    /// The message boxes asked for since the last clear().
    const QList<SMessageRequest>& boxes() const { return m_lstBoxes; }
    /// Answers boxes in place of the user; without it every box is answered with 0 or OK.
    void setAnswer(std::function<int(const SMessageRequest&)> fnAnswer) { m_fnAnswer = std::move(fnAnswer); }

    /// What the host's own libraries logged since the last clear(): reasons, with file and place.
    const QStringList& hostLog() const { return m_lstHostLog; }

private:
    int answer(const SMessageRequest& objRequest);

    QStringList m_lstCalls;
    QStringList m_lstHostLog;
    QList<SMessageRequest> m_lstBoxes;
    std::function<int(const SMessageRequest&)> m_fnAnswer;
    int m_nSink = 0; ///< number of the log's sink
};
