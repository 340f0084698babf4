#include "LogRecorder.h"
#include "OrmFileReader.h"
#include "TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QtTest>

#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <functional>
#include <limits>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/// What goes wrong in the calls below. They stand in front of those of the C library for every library of this program.
struct SFaults
{
    size_t nMostBytes = 0;          ///< a read gives at most so many; 0: as asked
    int nErrorAtRead = 0;           ///< number of the read that fails, from 1; 0: none
    int nLastErrorAtRead = 0;       ///< up to this one; 0: only that one
    int nError = 0;                 ///< with this error
    bool bNoOpenAt2 = false;        ///< the kernel does not know openat2
    std::function<void()> fnAtRead; ///< is run in the middle, before the second read
    int nReads = 0;                 ///< reads so far
    int nRefusedOpenAt2 = 0;        ///< calls of openat2 that were answered so
};
constexpr rlim_t nMostMemory = 900000000; ///< bytes, where memory is to run out
SFaults* g_pFaults = nullptr;             ///< null: nothing goes wrong

template <typename Fn>
Fn original(const char* pName)
{
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, pName));
}

/// Lets things go wrong while it lives.
class FaultGuard
{
public:
    explicit FaultGuard(SFaults& objFaults) { g_pFaults = &objFaults; }
    ~FaultGuard() { g_pFaults = nullptr; }
    FaultGuard(const FaultGuard&) = delete;
    FaultGuard& operator=(const FaultGuard&) = delete;
};

/// Runs the check in a child process, as an ordinary user where this one is the administrator. Returns its result, -1 if it crashed.
int inChild(bool bAsOrdinaryUser, const std::function<int()>& fnCheck)
{
    const pid_t nChild = fork();
    if (nChild == 0)
    {
        constexpr uid_t nNobody = 65534;
        if (bAsOrdinaryUser && geteuid() == 0 && (setgid(nNobody) != 0 || setuid(nNobody) != 0))
            _exit(100);
        _exit(fnCheck());
    }
    int nStatus = 0;
    if (nChild < 0 || waitpid(nChild, &nStatus, 0) != nChild || !WIFEXITED(nStatus))
        return -1;
    return WEXITSTATUS(nStatus);
}
} // namespace

/// The address sanitizer needs all of its address space, so its own limit stands in for that of the process.
extern "C" const char* __asan_default_options(); // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options()  // NOLINT(bugprone-reserved-identifier)
{
    return "max_allocation_size_mb=900:allocator_may_return_null=1";
}

extern "C" ssize_t read(int nDescriptor, void* pBuffer, size_t nBytes)
{
    static const auto fnRead = original<ssize_t (*)(int, void*, size_t)>("read");
    SFaults* pFaults = g_pFaults;
    if (!pFaults)
        return fnRead(nDescriptor, pBuffer, nBytes);
    const int nRead = ++pFaults->nReads;
    if (nRead == 2 && pFaults->fnAtRead)
    {
        g_pFaults = nullptr;
        pFaults->fnAtRead();
        g_pFaults = pFaults;
    }
    if (pFaults->nErrorAtRead > 0 && nRead >= pFaults->nErrorAtRead && nRead <= qMax(pFaults->nErrorAtRead, pFaults->nLastErrorAtRead))
    {
        errno = pFaults->nError;
        return -1;
    }
    return fnRead(nDescriptor, pBuffer, pFaults->nMostBytes > 0 ? qMin(nBytes, pFaults->nMostBytes) : nBytes);
}

extern "C" long syscall(long nNumber, ...) noexcept
{
    static const auto fnSyscall = original<long (*)(long, ...)>("syscall");
    va_list objArguments;
    va_start(objArguments, nNumber);
    long anArguments[6];
    for (long& nArgument : anArguments)
        nArgument = va_arg(objArguments, long);
    va_end(objArguments);
    if (g_pFaults && g_pFaults->bNoOpenAt2 && nNumber == SYS_openat2)
    {
        ++g_pFaults->nRefusedOpenAt2;
        errno = ENOSYS;
        return -1;
    }
    return fnSyscall(nNumber, anArguments[0], anArguments[1], anArguments[2], anArguments[3], anArguments[4], anArguments[5]);
}

class tst_filereader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void filesAreReadWhole_data();
    void filesAreReadWhole();
    void whatIsNoReadableFileIsRefusedAtOnce_data();
    void whatIsNoReadableFileIsRefusedAtOnce();
    void aFileAboveTheLimitIsNotRead_data();
    void aFileAboveTheLimitIsNotRead();
    void permissionsAreRespected_data();
    void permissionsAreRespected();
    void interruptedAndShortReadsGoOn_data();
    void interruptedAndShortReadsGoOn();
    void diskErrorsEndTheRead_data();
    void diskErrorsEndTheRead();
    void aFileThatChangesIsRefused_data();
    void aFileThatChangesIsRefused();
    void aFileThatIsReplacedIsReadAsItWas();
    void tooLittleMemoryIsSaid();
    void theSystemClockDoesNotMatter();

    void namesAreResolvedBeneathTheFolder_data();
    void namesAreResolvedBeneathTheFolder();
    void aMissingFolderHasNoFiles();

private:
    TestFiles m_objFiles;
};

void tst_filereader::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
    QVERIFY(QFile::setPermissions(m_objFiles.folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther |
                                                           QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup));

    // The stand-ins are really in the way of the library.
    const QString strFile = m_objFiles.write("probe", "abc");
    SFaults objFaults;
    FaultGuard objGuard(objFaults);
    QByteArray baContent;
    QVERIFY(OrmFileReader::read(strFile, baContent));
    QVERIFY(objFaults.nReads > 0);
}

void tst_filereader::filesAreReadWhole_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QByteArray>("baContent");

    QByteArray baAllBytes;
    for (int i = 0; i < 256; ++i)
        baAllBytes += static_cast<char>(i);
    QTest::newRow("0 bytes") << "empty" << QByteArray();
    QTest::newRow("1 byte") << "one" << QByteArray("x");
    QTest::newRow("every byte there is") << "bytes" << baAllBytes;
    QTest::newRow("more than one piece") << "large" << QByteArray(20000003, 'x');
    QTest::newRow("a name that ends in a blank") << "blank " << QByteArray("x");
    QTest::newRow("a name that ends in a point") << "point." << QByteArray("x");
    QTest::newRow("a name of 255 bytes") << QString(255, 'n') << QByteArray("x");
    QTest::newRow("a name with a line end") << "line\nend" << QByteArray("x");
}

void tst_filereader::filesAreReadWhole()
{
    QFETCH(QString, strName);
    QFETCH(QByteArray, baContent);

    const QString strFile = m_objFiles.write(strName, baContent);
    QVERIFY(!strFile.isNull());
    LogRecorder objLog;
    QByteArray baRead = "before";
    QString strError = "before";
    QVERIFY(OrmFileReader::read(strFile, baRead, &strError));
    QVERIFY(baRead == baContent);
    QCOMPARE(strError, QStringLiteral("before"));
    QVERIFY(objLog.entries().isEmpty());
}

void tst_filereader::whatIsNoReadableFileIsRefusedAtOnce_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QString>("strReason");

    const QByteArray baFifo = QFile::encodeName(m_objFiles.path("fifo"));
    QVERIFY(mkfifo(baFifo.constData(), 0600) == 0);
    sockaddr_un objAddress = {};
    objAddress.sun_family = AF_UNIX;
    const QByteArray baSocket = QFile::encodeName(m_objFiles.path("socket"));
    qstrncpy(objAddress.sun_path, baSocket.constData(), sizeof(objAddress.sun_path));
    const int nSocket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    QVERIFY(bind(nSocket, reinterpret_cast<const sockaddr*>(&objAddress), sizeof(objAddress)) == 0);
    QVERIFY(symlink("fifo", QFile::encodeName(m_objFiles.path("tofifo")).constData()) == 0);
    QVERIFY(symlink("circle", QFile::encodeName(m_objFiles.path("circle")).constData()) == 0);
    QVERIFY(symlink("nowhere", QFile::encodeName(m_objFiles.path("dangling")).constData()) == 0);

    const QString strNotRegular = "not a regular file";
    QTest::newRow("a folder") << m_objFiles.folder() << strNotRegular;
    QTest::newRow("a FIFO") << m_objFiles.path("fifo") << strNotRegular;
    QTest::newRow("a link to a FIFO") << m_objFiles.path("tofifo") << strNotRegular;
    QTest::newRow("a socket") << m_objFiles.path("socket") << strNotRegular;
    QTest::newRow("an endless device") << "/dev/zero" << strNotRegular;
    QTest::newRow("an empty device") << "/dev/null" << strNotRegular;
    QTest::newRow("a link in a circle") << m_objFiles.path("circle") << "Too many levels of symbolic links";
    QTest::newRow("a link to nothing") << m_objFiles.path("dangling") << "No such file or directory";
    QTest::newRow("nothing") << m_objFiles.path("none") << "No such file or directory";
    QTest::newRow("a file as folder") << m_objFiles.path("probe/file") << "Not a directory";
    QTest::newRow("a path of 5000 bytes") << "/" + QString(5000, 'p') << "File name too long";
    QTest::newRow("no name") << QString() << "no file name";
    QTest::newRow("NUL in the name") << m_objFiles.path("probe") + QChar(0) + "x"
                                     << "no file name";
}

void tst_filereader::whatIsNoReadableFileIsRefusedAtOnce()
{
    QFETCH(QString, strFile);
    QFETCH(QString, strReason);

    LogRecorder objLog;
    QByteArray baContent = "before";
    QString strError;
    QElapsedTimer objTimer;
    objTimer.start();
    QVERIFY(!OrmFileReader::read(strFile, baContent, &strError));
    QVERIFY(objTimer.elapsed() < 5000); // nothing waits for the other end of a pipe
    QCOMPARE(strError, strFile + ": " + strReason);
    QCOMPARE(baContent, QByteArray("before"));
    QVERIFY(objLog.isOne(3, strError));
    QVERIFY(!OrmFileReader::read(strFile, baContent));
}

void tst_filereader::aFileAboveTheLimitIsNotRead_data()
{
    QTest::addColumn<qint64>("nBytes");
    QTest::addColumn<qint64>("nLimit");
    QTest::addColumn<bool>("bRead");
    const qint64 nMost = OrmDocumentLimits::nFileBytes;
    QTest::newRow("just below a limit") << qint64(999) << qint64(1000) << true;
    QTest::newRow("at a limit") << qint64(1000) << qint64(1000) << true;
    QTest::newRow("above a limit") << qint64(1001) << qint64(1000) << false;
    QTest::newRow("above the limit of all files") << nMost + 1 << nMost << false;
    QTest::newRow("5 GB without content") << qint64(5000000000) << nMost << false;
    QTest::newRow("above it, whatever is asked") << nMost + 1 << qint64(1) << false;
    QTest::newRow("a limit above that of all files") << nMost + 1 << 4 * nMost << false;
}

void tst_filereader::aFileAboveTheLimitIsNotRead()
{
    QFETCH(qint64, nBytes);
    QFETCH(qint64, nLimit);
    QFETCH(bool, bRead);

    const QString strFile = m_objFiles.write("sparse", QByteArray());
    QVERIFY(truncate(QFile::encodeName(strFile).constData(), nBytes) == 0);
    SFaults objFaults;
    FaultGuard objGuard(objFaults);
    QByteArray baContent;
    QString strError;
    QCOMPARE(OrmFileReader::read(strFile, baContent, &strError, nLimit), bRead);
    QCOMPARE(objFaults.nReads > 0, bRead);
    QCOMPARE(static_cast<qint64>(baContent.size()), bRead ? nBytes : 0);
    const QString strExpected =
        QStringLiteral("%1: too large: %2 bytes, of at most %3").arg(strFile).arg(nBytes).arg(qMin(nLimit, OrmDocumentLimits::nFileBytes));
    QCOMPARE(strError, bRead ? QString() : strExpected);
}

void tst_filereader::permissionsAreRespected_data()
{
    QTest::addColumn<int>("nFolderMode");
    QTest::addColumn<int>("nFileMode");
    QTest::addColumn<bool>("bRead");
    QTest::newRow("readable") << 0755 << 0644 << true;
    QTest::newRow("a file nobody may read") << 0755 << 0000 << false;
    QTest::newRow("a folder nobody may enter") << 0666 << 0644 << false;
    QTest::newRow("a folder nobody may list") << 0333 << 0644 << true;
}

void tst_filereader::permissionsAreRespected()
{
    QFETCH(int, nFolderMode);
    QFETCH(int, nFileMode);
    QFETCH(bool, bRead);

    const QString strFolder = m_objFiles.path("guarded");
    QVERIFY(QDir().mkpath(strFolder));
    const QByteArray baFolder = QFile::encodeName(strFolder);
    QVERIFY(chmod(baFolder.constData(), 0755) == 0);
    const QString strFile = m_objFiles.write("guarded/file", "x");
    QVERIFY(chmod(QFile::encodeName(strFile).constData(), static_cast<mode_t>(nFileMode)) == 0);
    QVERIFY(chmod(baFolder.constData(), static_cast<mode_t>(nFolderMode)) == 0);
    const int nResult = inChild(true,
                                [&]
                                {
                                    QByteArray baContent;
                                    QString strError;
                                    if (OrmFileReader::read(strFile, baContent, &strError))
                                        return baContent == "x" ? 1 : 2;
                                    return strError == strFile + ": Permission denied" ? 3 : 4;
                                });
    QVERIFY(chmod(baFolder.constData(), 0755) == 0);
    QVERIFY(QFile::remove(strFile));
    QCOMPARE(nResult, bRead ? 1 : 3);
}

void tst_filereader::interruptedAndShortReadsGoOn_data()
{
    QTest::addColumn<int>("nMostBytes");
    QTest::addColumn<int>("nErrorAtRead");
    QTest::addColumn<int>("nLastErrorAtRead");
    QTest::newRow("7 bytes at a time") << 7 << 0 << 0;
    QTest::newRow("1 byte at a time") << 1 << 0 << 0;
    QTest::newRow("131072 bytes at a time") << 131072 << 0 << 0;
    QTest::newRow("interrupted at first") << 0 << 1 << 0;
    QTest::newRow("interrupted in the middle") << 100000 << 2 << 0;
    QTest::newRow("interrupted for a while") << 100000 << 2 << 501;
}

void tst_filereader::interruptedAndShortReadsGoOn()
{
    QFETCH(int, nMostBytes);
    QFETCH(int, nErrorAtRead);
    QFETCH(int, nLastErrorAtRead);

    QByteArray baContent;
    for (int i = 0; i < 300007; ++i)
        baContent += static_cast<char>(i % 251);
    const QString strFile = m_objFiles.write("short", baContent);
    SFaults objFaults;
    objFaults.nMostBytes = static_cast<size_t>(nMostBytes);
    objFaults.nErrorAtRead = nErrorAtRead;
    objFaults.nLastErrorAtRead = nLastErrorAtRead;
    objFaults.nError = EINTR;
    FaultGuard objGuard(objFaults);
    QByteArray baRead;
    QVERIFY(OrmFileReader::read(strFile, baRead));
    QVERIFY(baRead == baContent);
}

void tst_filereader::diskErrorsEndTheRead_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<int>("nFirst");
    QTest::addColumn<int>("nLast");
    constexpr int nForEver = std::numeric_limits<int>::max();
    QTest::newRow("EIO at once") << EIO << 1 << 0;
    QTest::newRow("EIO in the middle") << EIO << 3 << 0;
    QTest::newRow("EIO for ever") << EIO << 1 << nForEver;
    QTest::newRow("ESTALE") << ESTALE << 2 << 0;
    QTest::newRow("interrupted for ever") << EINTR << 2 << nForEver;
}

void tst_filereader::diskErrorsEndTheRead()
{
    QFETCH(int, nError);
    QFETCH(int, nFirst);
    QFETCH(int, nLast);

    const QString strFile = m_objFiles.write("broken", QByteArray(1000, 'x'));
    SFaults objFaults;
    objFaults.nMostBytes = 100;
    objFaults.nErrorAtRead = nFirst;
    objFaults.nLastErrorAtRead = nLast;
    objFaults.nError = nError;
    FaultGuard objGuard(objFaults);
    LogRecorder objLog;
    QByteArray baContent = "before";
    QString strError;
    QVERIFY(!OrmFileReader::read(strFile, baContent, &strError));
    QCOMPARE(strError, strFile + ": read error: " + qt_error_string(nError));
    QCOMPARE(baContent, QByteArray("before"));
    QVERIFY(objLog.isOne(3, strError));
}

void tst_filereader::aFileThatChangesIsRefused_data()
{
    QTest::addColumn<QString>("strChange");
    QTest::newRow("it grows") << "append";
    QTest::newRow("it shrinks") << "truncate";
    QTest::newRow("it is rewritten at the same size") << "rewrite";
    QTest::newRow("it is emptied") << "empty";
}

void tst_filereader::aFileThatChangesIsRefused()
{
    QFETCH(QString, strChange);

    const QString strFile = m_objFiles.write("changing", QByteArray(1000, 'x'));
    const QByteArray baFile = QFile::encodeName(strFile);
    const timespec aLongAgo[2] = {{1000000000, 0}, {1000000000, 0}};
    QVERIFY(utimensat(AT_FDCWD, baFile.constData(), aLongAgo, 0) == 0);
    SFaults objFaults;
    objFaults.nMostBytes = 100;
    bool bChanged = false;
    objFaults.fnAtRead = [&]
    {
        QFile objFile(strFile);
        if (strChange == "truncate")
            bChanged = truncate(baFile.constData(), 500) == 0;
        else if (strChange == "empty")
            bChanged = truncate(baFile.constData(), 0) == 0;
        else if (strChange == "append")
            bChanged = objFile.open(QIODevice::Append) && objFile.write("y") == 1;
        else
            bChanged = objFile.open(QIODevice::ReadWrite) && objFile.write(QByteArray(1000, 'y')) == 1000;
    };
    FaultGuard objGuard(objFaults);
    LogRecorder objLog;
    QByteArray baContent = "before";
    QString strError;
    QVERIFY(!OrmFileReader::read(strFile, baContent, &strError));
    QVERIFY(bChanged);
    QCOMPARE(strError, strFile + ": changed while reading");
    QCOMPARE(baContent, QByteArray("before"));
    QVERIFY(objLog.isOne(3, strError));
}

void tst_filereader::aFileThatIsReplacedIsReadAsItWas()
{
    const QString strFile = m_objFiles.write("replaced", QByteArray(1000, 'x'));
    const QString strOther = m_objFiles.write("other", QByteArray(2000, 'y'));
    SFaults objFaults;
    objFaults.nMostBytes = 100;
    objFaults.fnAtRead = [&] { QCOMPARE(rename(QFile::encodeName(strOther).constData(), QFile::encodeName(strFile).constData()), 0); };
    FaultGuard objGuard(objFaults);
    QByteArray baContent;
    QVERIFY(OrmFileReader::read(strFile, baContent));
    QCOMPARE(baContent, QByteArray(1000, 'x'));
    QVERIFY(OrmFileReader::read(strFile, baContent));
    QCOMPARE(baContent, QByteArray(2000, 'y'));
}

void tst_filereader::tooLittleMemoryIsSaid()
{
    const QString strFile = m_objFiles.write("huge", QByteArray());
    QVERIFY(truncate(QFile::encodeName(strFile).constData(), OrmDocumentLimits::nFileBytes) == 0);
    const int nResult = inChild(false,
                                [&]
                                {
#ifndef __SANITIZE_ADDRESS__
                                    const rlimit objLimit = {nMostMemory, nMostMemory};
                                    if (setrlimit(RLIMIT_AS, &objLimit) != 0)
                                        return 2;
#endif
                                    QByteArray baContent = "before";
                                    QString strError;
                                    if (OrmFileReader::read(strFile, baContent, &strError) || baContent != "before")
                                        return 3;
                                    return strError == strFile + ": not enough memory (needs 1025 MB)" ? 1 : 4;
                                });
    QCOMPARE(nResult, 1);
}

void tst_filereader::theSystemClockDoesNotMatter()
{
    const QString strFile = m_objFiles.write("future", "x");
    const timespec aIn2106[2] = {{4294967297, 5}, {4294967297, 5}};
    QVERIFY(utimensat(AT_FDCWD, QFile::encodeName(strFile).constData(), aIn2106, 0) == 0);
    QByteArray baContent;
    QVERIFY(OrmFileReader::read(strFile, baContent));
    const timespec aBefore1970[2] = {{-5, 0}, {-5, 0}};
    QVERIFY(utimensat(AT_FDCWD, QFile::encodeName(strFile).constData(), aBefore1970, 0) == 0);
    QVERIFY(OrmFileReader::read(strFile, baContent));
    QCOMPARE(baContent, QByteArray("x"));
}

void tst_filereader::namesAreResolvedBeneathTheFolder_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bNoOpenAt2");
    QTest::addColumn<QString>("strReason"); // null: read

    const QString strOutside = "leads outside the study folder";
    struct SRow
    {
        const char* pTitle;
        const char* pName;
        QString strReason;
    };
    const SRow aRows[] = {
        {"a file", "file", QString()},
        {"in a folder", "sub/file", QString()},
        {"a link to its own folder", "self", "not a regular file"},
        {"slashes and points", "./sub//./file", QString()},
        {"down and up", "sub/../file", QString()},
        {"a sibling link", "sibling", QString()},
        {"a link up to a sibling", "sub/up", QString()},
        {"a chain of links", "chain", QString()},
        {"a linked folder", "linksub/file", QString()},
        {"40 links", "link40", QString()},
        {"41 links", "link41", "Too many levels of symbolic links"},
        {"up from a linked folder", "linksub/../file", QString()},
        {"a folder", "sub", "not a regular file"},
        {"a FIFO", "fifo", "not a regular file"},
        {"a missing file", "none", "No such file or directory"},
        {"a missing folder", "none/file", "No such file or directory"},
        {"a file as folder", "file/file", "Not a directory"},
        {"a link to nothing", "dangling", "No such file or directory"},
        {"up", "../secret", strOutside},
        {"up in the middle", "sub/../../secret", strOutside},
        {"a link up", "out", strOutside},
        {"an absolute link", "absolute", strOutside},
        {"a linked folder outside", "linkout/secret", strOutside},
        {"up from a folder through its link", "deep/up/secret", strOutside},
        {"a circle", "circle", "Too many levels of symbolic links"},
        {"a circle of two", "ping", "Too many levels of symbolic links"},
        {"process descriptors", "fd/0", strOutside},
        {"an absolute name", "/etc/passwd", strOutside},
        {"no name", "", "names no file"},
        {"the folder", ".", "names a folder"},
        {"a closing slash", "file/", "names a folder"},
    };
    for (const SRow& objRow : aRows)
    {
        for (const bool bNoOpenAt2 : {false, true})
            QTest::addRow("%s%s", objRow.pTitle, bNoOpenAt2 ? ", by walking" : "") << objRow.pName << bNoOpenAt2 << objRow.strReason;
    }
}

void tst_filereader::namesAreResolvedBeneathTheFolder()
{
    QFETCH(QString, strName);
    QFETCH(bool, bNoOpenAt2);
    QFETCH(QString, strReason);

    const QString strStudy = m_objFiles.path("study");
    if (!QDir(strStudy).exists())
    {
        QVERIFY(QDir().mkpath(strStudy + "/sub") && QDir().mkpath(strStudy + "/deep"));
        QVERIFY(!m_objFiles.write("study/file", "good").isNull() && !m_objFiles.write("study/sub/file", "good").isNull());
        QVERIFY(!m_objFiles.write("secret", "secret").isNull());
        const auto link = [&](const QString& strTarget, const char* pLink)
        { return symlink(QFile::encodeName(strTarget).constData(), QFile::encodeName(strStudy + "/" + pLink).constData()) == 0; };
        QVERIFY(link("file", "sibling") && link("../file", "sub/up") && link("sibling", "chain") && link("sub", "linksub"));
        QVERIFY(link(".", "self") && link("none", "dangling") && link("../secret", "out") && link(m_objFiles.path("secret"), "absolute"));
        QVERIFY(link("..", "linkout") && link("../..", "deep/up") && link("circle", "circle") && link("pong", "ping") &&
                link("ping", "pong"));
        QVERIFY(link("file", "link1"));
        for (int i = 2; i <= 41; ++i)
            QVERIFY(link(QStringLiteral("link%1").arg(i - 1), qPrintable(QStringLiteral("link%1").arg(i))));
        QVERIFY(link("/proc/self/fd", "fd"));
        QVERIFY(mkfifo(QFile::encodeName(strStudy + "/fifo").constData(), 0600) == 0);
    }
    SFaults objFaults;
    objFaults.bNoOpenAt2 = bNoOpenAt2;
    FaultGuard objGuard(objFaults);
    QByteArray baContent = "before";
    QString strError;
    QCOMPARE(OrmFileReader::readBeneath(strStudy, strName, baContent, &strError), strReason.isNull());
    const bool bByName = strName.isEmpty() || strName.startsWith("/") || strName.startsWith("..") || strName.contains("../..") ||
                         strName == "." || strName.endsWith("/"); // refused before anything is opened
    QCOMPARE(objFaults.nRefusedOpenAt2, bNoOpenAt2 && !bByName ? 1 : 0);
    QCOMPARE(baContent, strReason.isNull() ? QByteArray("good") : QByteArray("before"));
    QCOMPARE(strError, strReason.isNull() ? QString() : QStringLiteral("%1 in %2: %3").arg(strName, strStudy, strReason));

    // What is merely missing, or no file, lies inside all the same.
    const QStringList lstOutside = {"leads outside the study folder", "Too many levels of symbolic links", "names no file",
                                    "names a folder"};
    QString strWhy;
    QCOMPARE(OrmFileReader::isBeneath(strStudy, strName, &strWhy), !lstOutside.contains(strReason));
    QCOMPARE(strWhy, lstOutside.contains(strReason) ? strReason : QString());
}

void tst_filereader::aMissingFolderHasNoFiles()
{
    QByteArray baContent;
    QString strError;
    QVERIFY(!OrmFileReader::readBeneath(m_objFiles.path("none"), "file", baContent, &strError));
    QVERIFY(strError.endsWith("none: No such file or directory"));
    QVERIFY(OrmFileReader::isBeneath(m_objFiles.path("none"), "file"));
    QVERIFY(!OrmFileReader::isBeneath(m_objFiles.path("none"), "../file"));
    QVERIFY(!OrmFileReader::readBeneath(m_objFiles.folder(), QString("a") + QChar(0), baContent, &strError));
    QVERIFY(strError.endsWith("holds a NUL character"));
}

QTEST_GUILESS_MAIN(tst_filereader)
#include "tst_filereader.moc"
