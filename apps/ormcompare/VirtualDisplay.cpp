#include "VirtualDisplay.h"

#include "ChildSetup.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr int kStartLimitMs = 60'000;
constexpr int kKeyBytes = 16;

/// Windows may be larger than the screen: views are drawn off it.
constexpr const char* kScreen = "1600x1200x24";

void appendCounted(QByteArray& aEntry, const QByteArray& aText)
{
    aEntry += static_cast<char>(aText.size() / 256);
    aEntry += static_cast<char>(aText.size() % 256);
    aEntry += aText;
}
} // namespace

CVirtualDisplay::~CVirtualDisplay()
{
    connected();
    if (m_nServer > 0)
    {
        ::kill(m_nServer, SIGTERM);
        ::waitpid(m_nServer, nullptr, 0);
    }
}

bool CVirtualDisplay::isNeeded()
{
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

void CVirtualDisplay::connected()
{
    if (!m_strKeyFile.isEmpty())
    {
        QFile::remove(m_strKeyFile);
        m_strKeyFile.clear();
    }
}

QString CVirtualDisplay::writeKey()
{
    // An entry of an X authority file, valid for any display: family, address, number, name of the method, key.
    QByteArray aKey(kKeyBytes, '\0');
    for (char& cByte : aKey)
    {
        cByte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    }
    QByteArray aEntry("\xff\xff", 2);
    appendCounted(aEntry, QByteArray());
    appendCounted(aEntry, QByteArray());
    appendCounted(aEntry, "MIT-MAGIC-COOKIE-1");
    appendCounted(aEntry, aKey);
    QTemporaryFile file(QDir::tempPath() + QStringLiteral("/ormcompare-display-XXXXXX")); // for the owner's eyes only
    file.setAutoRemove(false);
    if (!file.open())
    {
        return QStringLiteral("There is no display, and none can be made: %1.").arg(file.errorString());
    }
    m_strKeyFile = file.fileName();
    if (file.write(aEntry) != aEntry.size() || !file.flush())
    {
        return QStringLiteral("There is no display, and none can be made: %1.").arg(file.errorString());
    }
    return {};
}

QString CVirtualDisplay::start()
{
    const QString strServer = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (strServer.isEmpty())
    {
        return QStringLiteral("There is no display, and Xvfb, which makes one, is missing: install the package xvfb.");
    }
    const QString strWrong = writeKey();
    if (!strWrong.isEmpty())
    {
        return strWrong;
    }
    int arrPipe[2] = {-1, -1};
    if (::pipe2(arrPipe, O_CLOEXEC) != 0)
    {
        return QStringLiteral("There is no display, and none can be made: %1.").arg(qt_error_string(errno));
    }
    const QByteArray aServer = QFile::encodeName(strServer);
    const QByteArray aKeyFile = QFile::encodeName(m_strKeyFile);
    const QByteArray aPipe = QByteArray::number(arrPipe[1]);
    const pid_t nParent = ::getpid();
    m_nServer = ::fork();
    if (m_nServer == 0)
    {
        ChildSetup::endWithParent(nParent);
        ::fcntl(arrPipe[1], F_SETFD, 0);
        const int nNowhere = ::open("/dev/null", O_RDWR);
        for (const int nStream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        {
            ::dup2(nNowhere, nStream);
        }
        ::execl(aServer.constData(), "Xvfb", "-displayfd", aPipe.constData(), "-screen", "0", kScreen, "-auth", aKeyFile.constData(),
                "-nolisten", "tcp", "-noreset", nullptr);
        ::_exit(127);
    }
    ::close(arrPipe[1]);
    const QString strNumber = m_nServer > 0 ? readNumber(arrPipe[0]) : QString();
    ::close(arrPipe[0]);
    if (strNumber.isEmpty())
    {
        return QStringLiteral("There is no display, and Xvfb, which makes one, does not start; try it by hand: %1.").arg(strServer);
    }
    qputenv("DISPLAY", ':' + strNumber.toLatin1());
    qputenv("XAUTHORITY", aKeyFile);
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1"); // the server has no graphics card to look for
    return {};
}

QString CVirtualDisplay::readNumber(int nPipe)
{
    QByteArray aNumber;
    QElapsedTimer clock;
    clock.start();
    while (!aNumber.endsWith('\n'))
    {
        pollfd poll = {nPipe, POLLIN, 0};
        const int nLeft = kStartLimitMs - static_cast<int>(clock.elapsed());
        char cByte = 0;
        if (nLeft <= 0 || (::poll(&poll, 1, nLeft) < 0 && errno != EINTR))
        {
            return {};
        }
        if ((poll.revents & (POLLIN | POLLHUP)) == 0)
        {
            continue;
        }
        if (::read(nPipe, &cByte, 1) != 1)
        {
            return {};
        }
        aNumber += cByte;
    }
    return QString::fromLatin1(aNumber.trimmed());
}
