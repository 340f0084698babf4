#ifndef CORMLOG_H
#define CORMLOG_H

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

/// One entry of the log, as it was written.
struct SLogEntry
{
    QString strMessage;   ///< plain text
    QString strFile;      ///< source file of the writer; empty when the writer does not tell (tools)
    int nLine = 0;        ///< line in strFile; 0 when the writer does not tell
    QString strBuildTime; ///< build time of the writer as text; may be empty
    long nLevel = 0;      ///< 1 progress and read failures, 2 a refusal or skipped step, 3 what does not exist or cannot go on
    bool bFlag = false;   ///< as the writer passed it
    QDateTime dtWritten;  ///< when the log received it
    QString strCategory;  ///< who wrote it, as a Qt logging category: "orm.parser" for a host library, "orm.tool" for tools
};

/// The process-wide log. All operations may be called from any thread, and none of them fails: an exception of a sink is swallowed.
/// Every entry also goes to the Qt logging category of its library at debug level, which is off unless it is asked for, for instance with
/// QT_LOGGING_RULES="orm.*=true": "orm.utils", "orm.parser", "orm.image" and so on, "orm.app" for the application itself, "orm.tool" for
/// entries without a file name.
class COrmLog
{
public:
    using FnSink = std::function<void(const SLogEntry&)>;

    COrmLog();
    ~COrmLog();
    COrmLog(const COrmLog&) = delete;
    COrmLog& operator=(const COrmLog&) = delete;

    /// Writes one entry: hands it to every sink, on the caller's thread and in the order in which the sinks were added.
    void log(QString strMessage, QString strFile, int nLine, QString strBuildTime, long nLevel, bool bFlag);

    /// Writes an entry that somebody else gathered, such as a message of Qt's. An empty time becomes that of the call, an empty category
    /// that of the source file. Entries of categories that are not the log's own are not forwarded to Qt.
    void write(SLogEntry objEntry);

    /// Adds a receiver of all later entries. A sink may log, add and remove sinks itself; what a sink logs does not come back to it.
    /// @return the number to remove it by, above 0.
    int addSink(FnSink fnSink);
    /// After the return the sink is not called any more. An unknown number does nothing.
    void removeSink(int nSink);

private:
    struct SPrivate;
    std::unique_ptr<SPrivate> m_pPrivate;
};

/// The one log of the process.
COrmLog* getLogObject();

/// Logs for a host library, with file and line.
#define ORM_LOG(nLevel, strText) getLogObject()->log((strText), QStringLiteral(__FILE__), __LINE__, QString(), (nLevel), false)

#endif
