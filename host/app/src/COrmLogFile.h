#pragma once

#include <QFile>
#include <QString>

struct SLogEntry;

/// The log as a file, for who wants to send or search it. Each entry is one line: time with offset from UTC, level, category and message,
/// separated by tabs; it is in the file when the call that logged it returns. What the file held before stays.
class COrmLogFile
{
public:
    COrmLogFile() = default;
    ~COrmLogFile();
    COrmLogFile(const COrmLogFile&) = delete;
    COrmLogFile& operator=(const COrmLogFile&) = delete;

    /// Writes all later entries of the log to the end of the file. An empty text, or one sentence why nothing will be written.
    QString open(const QString& strFile);

    /// One entry as the file has it, without the line's end.
    static QString lineFor(const SLogEntry& sEntry);

private:
    void write(const SLogEntry& sEntry);

    QFile m_objFile;
    QString m_strFile;      ///< its name
    bool m_bFailed = false; ///< was told
    int m_nSink = 0;
};
