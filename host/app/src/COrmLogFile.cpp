#include "COrmLogFile.h"

#include "COrmLog.h"
#include "COrmLogPanel.h"
#include "COrmPlainText.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

COrmLogFile::~COrmLogFile()
{
    getLogObject()->removeSink(m_nSink);
}

QString COrmLogFile::open(const QString& strFile)
{
    const QString strFailure = QStringLiteral("The log file %1 cannot be written: %2.");
    // A pipe that nobody reads must not hold the program up.
    const int nFile =
        ::open(QFile::encodeName(strFile).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0644);
    if (nFile < 0)
        return strFailure.arg(strFile, qt_error_string(errno));
    struct stat sStat = {};
    if (::fstat(nFile, &sStat) != 0 || !(S_ISREG(sStat.st_mode) || S_ISCHR(sStat.st_mode)))
    {
        ::close(nFile);
        return strFailure.arg(strFile, QStringLiteral("it is not a regular file"));
    }
    m_strFile = strFile;
    if (!m_objFile.open(nFile, QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return strFailure.arg(strFile, m_objFile.errorString());
    m_nSink = getLogObject()->addSink([this](const SLogEntry& sEntry) { write(sEntry); });
    return {};
}

QString COrmLogFile::lineFor(const SLogEntry& sEntry)
{
    const QDateTime dtWritten = sEntry.dtWritten.toOffsetFromUtc(sEntry.dtWritten.offsetFromUtc());
    return QStringList{dtWritten.toString(Qt::ISODateWithMs), COrmLogPanel::levelName(sEntry.nLevel), sEntry.strCategory,
                       COrmPlainText::visible(sEntry.strMessage)}
        .join(QLatin1Char('\t'));
}

void COrmLogFile::write(const SLogEntry& sEntry)
{
    // One call for the whole line, so that lines of two programs that write to one file do not mix.
    const QByteArray baLine = lineFor(sEntry).toUtf8() + '\n';
    if (m_objFile.write(baLine) == baLine.size() || m_bFailed)
        return;
    m_bFailed = true;
    ORM_LOG(3, QStringLiteral("The log file %1 misses lines: %2").arg(m_strFile, m_objFile.errorString()));
}
