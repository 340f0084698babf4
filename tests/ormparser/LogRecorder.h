#pragma once

#include "COrmLog.h"

#include <QStringList>
#include <QVector>

/// Keeps what is written to the log while it lives.
class LogRecorder
{
public:
    LogRecorder()
    {
        m_nSink = getLogObject()->addSink([this](const SLogEntry& objEntry) { m_vecEntries.append(objEntry); });
    }
    ~LogRecorder() { getLogObject()->removeSink(m_nSink); }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    QStringList messages() const
    {
        QStringList lstMessages;
        for (const SLogEntry& objEntry : m_vecEntries)
            lstMessages.append(objEntry.strMessage);
        return lstMessages;
    }
    const QVector<SLogEntry>& entries() const { return m_vecEntries; }
    void clear() { m_vecEntries.clear(); }

    /// Exactly one entry, of that level, by a host library, that says the text.
    bool isOne(long nLevel, const QString& strText) const
    {
        return m_vecEntries.size() == 1 && m_vecEntries.first().nLevel == nLevel && !m_vecEntries.first().strFile.isEmpty() &&
               m_vecEntries.first().nLine > 0 && m_vecEntries.first().strMessage.contains(strText);
    }

private:
    int m_nSink = 0;
    QVector<SLogEntry> m_vecEntries;
};
