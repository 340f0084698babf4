#include "COrmPreference.h"
#include "OrmFileWriter.h"
#include "OrmImageFile.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <functional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr int g_nDiskBytes = 262144;

QByteArray bytesOf(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray("(no file)");
}

bool put(const QString& strFile, const QByteArray& baContent)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::WriteOnly) && objFile.write(baContent) == baContent.size() && objFile.flush();
}

QStringList entries(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QImage picture(int nSeed)
{
    QImage imgPicture(300, 290, QImage::Format_RGB32);
    quint32 nState = static_cast<quint32>(nSeed);
    for (int y = 0; y < imgPicture.height(); ++y)
    {
        for (int x = 0; x < imgPicture.width(); ++x)
        {
            nState = nState * 1664525U + 1013904223U;
            imgPicture.setPixel(x, y, nState >> 8);
        }
    }
    return imgPicture;
}

pid_t startChild(const std::function<int()>& fnWork)
{
    const pid_t nChild = fork();
    if (nChild == 0)
        _exit(fnWork());
    return nChild;
}

/// The child's exit code; -1 if it did not come to its end.
int resultOf(pid_t nChild)
{
    int nStatus = 0;
    return nChild > 0 && waitpid(nChild, &nStatus, 0) == nChild && WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}

/// Makes a small disk of the folder, for this process alone. False without the right to do so, as in many containers.
bool mountDisk(const QString& strFolder)
{
    const QByteArray baSize = "size=" + QByteArray::number(g_nDiskBytes);
    return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", QFile::encodeName(strFolder).constData(), "tmpfs", 0, baSize.constData()) == 0;
}

/// Lets no file of this process grow beyond so many bytes: where no disk can be made, this stands in for a full one.
bool limitFiles(rlim_t nBytes)
{
    rlimit objLimit = {};
    signal(SIGXFSZ, SIG_IGN); // the write fails instead
    if (getrlimit(RLIMIT_FSIZE, &objLimit) != 0)
        return false;
    objLimit.rlim_cur = nBytes;
    return setrlimit(RLIMIT_FSIZE, &objLimit) == 0;
}

/// Writes to a folder with room for this part of a disk. 0, or the number of what went wrong.
int writeWithoutRoom(const QString& strFolder, double fRoom)
{
    const QDir objFolder(strFolder);
    const QString strPicture = objFolder.filePath("picture.bmp");
    const QString strTable = objFolder.filePath("table.csv");
    const QString strFiller = objFolder.filePath("filler");
    const QImage imgPicture = picture(1);
    const bool bDisk = mountDisk(strFolder);
    const int nDisk = g_nDiskBytes - 3 * 4096;
    if (3 * imgPicture.width() * imgPicture.height() <= nDisk || !put(strPicture, "old") || !put(strTable, "old"))
        return 2;
    const auto nRoom = static_cast<int>(fRoom * nDisk);
    if (!(bDisk ? put(strFiller, QByteArray((nDisk - nRoom) / 4096 * 4096, 'f')) : limitFiles(static_cast<rlim_t>(nRoom))))
        return 3;
    const QStringList lstBefore = entries(strFolder);
    const QString strOfPicture = OrmImageFile::write(imgPicture, strPicture);
    const QString strOfTable = OrmFileWriter::replace(strTable, QByteArray(2 * g_nDiskBytes, 't'));
    if (strOfPicture.isEmpty() || strOfTable.isEmpty())
        return 4;
    if (bDisk && (!strOfPicture.contains(OrmFileWriter::diskIsFull()) || strOfTable != OrmFileWriter::diskIsFull()))
        return 5;
    if (bytesOf(strPicture) != "old" || bytesOf(strTable) != "old" || entries(strFolder) != lstBefore)
        return 6;
    // With room again all is as it should be.
    if (!(bDisk ? QFile::remove(strFiller) : limitFiles(RLIM_INFINITY)))
        return 7;
    return OrmFileWriter::replace(strTable, QByteArray(100000, 't')).isEmpty() && bytesOf(strTable).size() == 100000 ? 0 : 8;
}
} // namespace

/// What is written to a disk that is full, to what is no file, and by a program that is killed.
class TestFaultsDisk : public QObject
{
    Q_OBJECT

private slots:
    void aFullDiskLeavesTheOldFile_data();
    void aFullDiskLeavesTheOldFile();
    void aDeviceIsNotReplaced();
    void aProgramThatIsKilledLeavesTheOldOrTheNewFile();
};

void TestFaultsDisk::aFullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<double>("fRoom"); // part of the picture that finds room
    QTest::newRow("no room") << 0.0;
    QTest::newRow("room for a half") << 0.5;
    QTest::newRow("room for nearly all") << 0.95;
}

void TestFaultsDisk::aFullDiskLeavesTheOldFile()
{
    QFETCH(double, fRoom);
    const QTemporaryDir objFolder;
    QVERIFY(objFolder.isValid());
    QCOMPARE(resultOf(startChild([&] { return writeWithoutRoom(objFolder.path(), fRoom); })), 0);
}

void TestFaultsDisk::aDeviceIsNotReplaced()
{
    const QTemporaryDir objFolder;
    const QString strLink = objFolder.filePath("full.png");
    const QString strPipe = objFolder.filePath("pipe.png");
    QVERIFY(QFile::link("/dev/full", strLink));
    QVERIFY(mkfifo(QFile::encodeName(strPipe).constData(), 0600) == 0);
    for (const QString& strFile : {QStringLiteral("/dev/full"), strLink, strPipe, objFolder.path()})
    {
        QCOMPARE(OrmFileWriter::replace(strFile, "x"), QString("not a regular file"));
        QVERIFY(!OrmImageFile::write(picture(1), strFile).isEmpty());
    }
    struct stat objStat = {};
    QVERIFY(stat("/dev/full", &objStat) == 0 && S_ISCHR(objStat.st_mode));
    QVERIFY(stat(QFile::encodeName(strPipe).constData(), &objStat) == 0 && S_ISFIFO(objStat.st_mode));
    QCOMPARE(entries(objFolder.path()), QStringList({"full.png", "pipe.png"}));
}

void TestFaultsDisk::aProgramThatIsKilledLeavesTheOldOrTheNewFile()
{
    constexpr int nKills = 40;
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath("picture.png");
    const QImage aPictures[] = {picture(1), picture(2)};
    QByteArray abaWhole[2];
    for (int i = 0; i < 2; ++i)
    {
        QCOMPARE(OrmImageFile::write(aPictures[i], strFile), QString());
        abaWhole[i] = bytesOf(strFile);
    }
    QVERIFY(abaWhole[0] != abaWhole[1] && abaWhole[0].size() > 100000);
    int nOfEach[2] = {0, 0};
    for (int nKill = 0; nKill < nKills; ++nKill)
    {
        int anStarted[2];
        QVERIFY(pipe(anStarted) == 0);
        const pid_t nChild = startChild(
            [&]
            {
                for (int nTurn = nKill;; ++nTurn)
                {
                    if (!OrmImageFile::write(aPictures[nTurn % 2], strFile).isEmpty() ||
                        (nTurn == nKill && ::write(anStarted[1], "x", 1) != 1))
                        return 1;
                }
            });
        char cStarted = 0;
        QVERIFY(::read(anStarted[0], &cStarted, 1) == 1); // it is at work
        // The moment is what is varied, so that each kill falls on another place of a write. Nothing is waited for: whatever the place, and
        // however slow the machine, the file must be whole.
        usleep(static_cast<useconds_t>(700 * nKill));
        QVERIFY(kill(nChild, SIGKILL) == 0);
        QCOMPARE(resultOf(nChild), -1);
        close(anStarted[0]);
        close(anStarted[1]);
        const QByteArray baNow = bytesOf(strFile);
        QVERIFY2(baNow == abaWhole[0] || baNow == abaWhole[1], qPrintable(QStringLiteral("%1 bytes").arg(baNow.size())));
        ++nOfEach[baNow == abaWhole[0] ? 0 : 1];
    }
    QVERIFY(nOfEach[0] > 0 && nOfEach[1] > 0);
    // What a killed program could not take away stands beside the file, and the next export is not disturbed by it.
    QCOMPARE(OrmImageFile::write(aPictures[0], strFile), QString());
    QCOMPARE(bytesOf(strFile), abaWhole[0]);
}

QTEST_GUILESS_MAIN(TestFaultsDisk)
#include "tst_faults_disk.moc"
