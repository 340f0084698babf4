#include "../support/CFileSizeLimit.h"
#include "../support/CPlainUser.h"
#include "../support/CTestFolder.h"
#include "COrmImageExporter.h"
#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "COrmUtilityFns.h"
#include "ImageExporterTools.h"
#include "OrmImageFile.h"

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>

#include <cerrno>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace ImageExporterTools;

namespace
{
/// The call of the system that fails from now on, and how.
struct SFault
{
    long nCall = 0;       ///< SYS_write, SYS_fsync or SYS_rename; 0: none
    int nError = 0;       ///< errno
    bool bPartly = false; ///< SYS_write: a part of the bytes is taken before, as by a disk that fills up
    bool bMet = false;
};
SFault s_objFault;

/// True for the call that is to fail, on any file but the standard ones.
bool fails(long nCall, int nFile = -1)
{
    if (s_objFault.nCall != nCall || (nFile >= 0 && nFile <= 2))
    {
        return false;
    }
    s_objFault.bMet = true;
    errno = s_objFault.nError;
    return true;
}
} // namespace

// The program's own calls of the system stand before those of the C library for Qt too.
extern "C" ssize_t write(int nFile, const void* pBytes, size_t nBytes)
{
    if (s_objFault.bPartly && s_objFault.nCall == SYS_write && nFile > 2 && nBytes > 1)
    {
        s_objFault.bPartly = false;
        return ssize_t(syscall(SYS_write, nFile, pBytes, nBytes / 2));
    }
    return fails(SYS_write, nFile) ? -1 : ssize_t(syscall(SYS_write, nFile, pBytes, nBytes));
}
extern "C" int fsync(int nFile)
{
    return fails(SYS_fsync) ? -1 : int(syscall(SYS_fsync, nFile));
}
extern "C" int rename(const char* pOld, const char* pNew) noexcept
{
    return fails(SYS_rename) ? -1 : int(syscall(SYS_rename, pOld, pNew));
}

class TestImageExporter : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    // ---- What files hold ------------------------------------------------------------------------------------------
    void losslessFormatsKeepEveryPixel_data();
    void losslessFormatsKeepEveryPixel();
    void jpegStaysClose();
    void namesOfTheSameFormatGiveTheSameFile();
    void tiffIsCompressedAndHasAResolution();
    void resolutionIsKept_data();
    void resolutionIsKept();
    void epsIsOnePageOfThePrintedSize_data();
    void epsIsOnePageOfThePrintedSize();
    void epsIsDrawnPixelByPixel();
    void transparencyBecomesPaper_data();
    void transparencyBecomesPaper();
    void everyTypeOfPictureIsWritten_data();
    void everyTypeOfPictureIsWritten();
    void extensionsNameAllFormats();

    // ---- Replacing a file -----------------------------------------------------------------------------------------
    void anOldFileIsReplaced();
    void aLinkStaysALink();
    void unusualNamesAreWritten_data();
    void unusualNamesAreWritten();

    // ---- Failures -------------------------------------------------------------------------------------------------
    void refusalsSayWhyAndLeaveAllAsItWas_data();
    void refusalsSayWhyAndLeaveAllAsItWas();
    void protectedPlacesAreRefused();
    void aDiskThatFillsUpLeavesTheOldFile_data();
    void aDiskThatFillsUpLeavesTheOldFile();
    void aFailingCallLeavesTheOldFile_data();
    void aFailingCallLeavesTheOldFile();
    void theExporterTellsTheUserOnce();
    void theExporterIsSilentWhenItWrites();
};

void TestImageExporter::cleanup()
{
    s_objFault = SFault();
    COrmMessageBox::setResponder({});
}

void TestImageExporter::losslessFormatsKeepEveryPixel_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QSize>("objSize");
    for (const char* pName : {"view.bmp", "view.png", "view.tif", "view.tiff", "VIEW.TIF", "view.Png"})
    {
        QTest::addRow("%s", pName) << QString::fromLatin1(pName) << QSize(61, 37);
        QTest::addRow("%s, one pixel", pName) << QString::fromLatin1(pName) << QSize(1, 1);
        QTest::addRow("%s, one row", pName) << QString::fromLatin1(pName) << QSize(4001, 1);
        QTest::addRow("%s, many strips", pName) << QString::fromLatin1(pName) << QSize(333, 401);
    }
}

void TestImageExporter::losslessFormatsKeepEveryPixel()
{
    QFETCH(QString, strName);
    QFETCH(QSize, objSize);
    const CTestFolder objFolder;
    const QImage img = noise(objSize.width(), objSize.height());
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), QString());
    const bool bTiff = strName.contains(QStringLiteral(".tif"), Qt::CaseInsensitive);
    const QImage imgRead = bTiff ? readTiff(objFolder.path(strName)).imgPicture : QImage(objFolder.path(strName));
    QCOMPARE(difference(imgRead, img), 0);
    QCOMPARE(objFolder.entries(), QStringList{strName});
}

void TestImageExporter::jpegStaysClose()
{
    const CTestFolder objFolder;
    const QImage img = gradient(200, 150);
    QCOMPARE(OrmImageFile::write(img, objFolder.path("view.jpg")), QString());
    QVERIFY(objFolder.get("view.jpg").startsWith("\xff\xd8\xff"));
    QVERIFY2(difference(QImage(objFolder.path("view.jpg")), img) <= 6, "JPEG is too far from the picture");
}

void TestImageExporter::namesOfTheSameFormatGiveTheSameFile()
{
    const CTestFolder objFolder;
    const QImage img = gradient(64, 48);
    for (const char* pName : {"a.jpg", "a.jpeg", "a.JPG", "a.tif", "a.tiff"})
    {
        QCOMPARE(OrmImageFile::write(img, objFolder.path(pName)), QString());
    }
    QCOMPARE(objFolder.get("a.jpeg"), objFolder.get("a.jpg"));
    QCOMPARE(objFolder.get("a.JPG"), objFolder.get("a.jpg"));
    QCOMPARE(objFolder.get("a.tiff"), objFolder.get("a.tif"));
}

void TestImageExporter::tiffIsCompressedAndHasAResolution()
{
    const CTestFolder objFolder;
    QImage img = gradient(640, 480);
    img.setDotsPerMeterX(11811); // 300 dots per inch
    img.setDotsPerMeterY(5906);  // 150
    QCOMPARE(OrmImageFile::write(img, objFolder.path("view.tif")), QString());
    const STiffFile objTiff = readTiff(objFolder.path("view.tif"));
    QCOMPARE(objTiff.nCompression, int(COMPRESSION_LZW));
    QCOMPARE(objTiff.nUnit, int(RESUNIT_INCH));
    QCOMPARE(objTiff.fDotsX, 300.0f);
    QCOMPARE(objTiff.fDotsY, 150.0f);
    QCOMPARE(objTiff.nDirectories, 1);
    const int nRaw = 640 * 480 * 3;
    QVERIFY2(objFolder.get("view.tif").size() < nRaw / 10, "The slow changes of this picture take next to no room");
}

void TestImageExporter::resolutionIsKept_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nTolerance"); // dots per metre: JPEG counts whole dots per inch
    QTest::newRow("bmp") << "view.bmp" << 0;
    QTest::newRow("png") << "view.png" << 0;
    QTest::newRow("jpg") << "view.jpg" << 20;
}

void TestImageExporter::resolutionIsKept()
{
    QFETCH(QString, strName);
    QFETCH(int, nTolerance);
    const CTestFolder objFolder;
    QImage img = noise(16, 16);
    img.setDotsPerMeterX(7874); // 200 dots per inch
    img.setDotsPerMeterY(7874);
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), QString());
    QVERIFY(std::abs(QImage(objFolder.path(strName)).dotsPerMeterX() - 7874) <= nTolerance);
    QVERIFY(std::abs(QImage(objFolder.path(strName)).dotsPerMeterY() - 7874) <= nTolerance);
    // A picture without a usable resolution gets that of a screen.
    img.setDotsPerMeterX(-1);
    img.setDotsPerMeterY(-1);
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), QString());
    QVERIFY(std::abs(QImage(objFolder.path(strName)).dotsPerMeterX() - 3780) <= nTolerance);
}

void TestImageExporter::epsIsOnePageOfThePrintedSize_data()
{
    QTest::addColumn<int>("nDotsPerMeter");
    QTest::addColumn<QByteArray>("aBox");
    QTest::newRow("no resolution: a screen's") << -1 << QByteArray("0 0 150 75");
    QTest::newRow("96 dots per inch") << 3780 << QByteArray("0 0 150 75");
    QTest::newRow("72 dots per inch") << 2835 << QByteArray("0 0 200 100");
    QTest::newRow("288 dots per inch") << 11339 << QByteArray("0 0 50 25");
}

void TestImageExporter::epsIsOnePageOfThePrintedSize()
{
    QFETCH(int, nDotsPerMeter);
    QFETCH(QByteArray, aBox);
    const CTestFolder objFolder;
    QImage img = noise(200, 100);
    img.setDotsPerMeterX(nDotsPerMeter);
    img.setDotsPerMeterY(nDotsPerMeter);
    QCOMPARE(OrmImageFile::write(img, objFolder.path("view.eps")), QString());
    const QList<QByteArray> lstLines = objFolder.get("view.eps").split('\n');
    QCOMPARE(lstLines.first(), QByteArray("%!PS-Adobe-3.0 EPSF-3.0"));
    QVERIFY2(lstLines.contains("%%BoundingBox: " + aBox), lstLines.mid(0, 12).join('\n').constData());
    QVERIFY(lstLines.contains("%%Pages: 1"));
    QCOMPARE(lstLines.count("showpage"), 1);
    QCOMPARE(lstLines.mid(lstLines.size() - 3), (QList<QByteArray>{"%%Trailer", "%%EOF", ""}));
}

void TestImageExporter::epsIsDrawnPixelByPixel()
{
    const QString strGhostscript = QStandardPaths::findExecutable(QStringLiteral("gs"));
    QVERIFY2(!strGhostscript.isEmpty(), "Ghostscript is not installed");
    const CTestFolder objFolder;
    const QImage img = noise(160, 120);
    QCOMPARE(OrmImageFile::write(img, objFolder.path("view.eps")), QString());
    QProcess objProcess;
    objProcess.start(strGhostscript, {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dEPSCrop", "-sDEVICE=png16m", "-r96",
                                      "-sOutputFile=" + objFolder.path("seen.png"), objFolder.path("view.eps")});
    QVERIFY(objProcess.waitForFinished(60000));
    QCOMPARE(objProcess.readAllStandardError() + objProcess.readAllStandardOutput(), QByteArray());
    QCOMPARE(objProcess.exitCode(), 0);
    QCOMPARE(difference(QImage(objFolder.path("seen.png")).convertToFormat(QImage::Format_RGB32), img), 0);
}

void TestImageExporter::transparencyBecomesPaper_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nFormat");
    for (const char* pName : {"view.bmp", "view.png", "view.tif"})
    {
        QTest::addRow("%s, ARGB32", pName) << QString::fromLatin1(pName) << int(QImage::Format_ARGB32);
        QTest::addRow("%s, premultiplied", pName) << QString::fromLatin1(pName) << int(QImage::Format_ARGB32_Premultiplied);
        QTest::addRow("%s, RGBA8888", pName) << QString::fromLatin1(pName) << int(QImage::Format_RGBA8888);
    }
}

void TestImageExporter::transparencyBecomesPaper()
{
    QFETCH(QString, strName);
    QFETCH(int, nFormat);
    const CTestFolder objFolder;
    QImage img(4, 1, QImage::Format_ARGB32);
    img.setPixel(0, 0, qRgba(10, 20, 30, 255));
    img.setPixel(1, 0, qRgba(255, 0, 0, 128));
    img.setPixel(2, 0, qRgba(0, 0, 0, 0));
    img.setPixel(3, 0, qRgba(0, 0, 0, 51)); // a fifth
    img = img.convertToFormat(QImage::Format(nFormat));
    const QImage imgBefore = img.copy();
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), QString());
    QCOMPARE(img, imgBefore);
    const QImage imgRead = strName.endsWith("tif") ? readTiff(objFolder.path(strName)).imgPicture : QImage(objFolder.path(strName));
    QVERIFY(!imgRead.hasAlphaChannel());
    QCOMPARE(imgRead.pixel(0, 0), qRgb(10, 20, 30));
    QCOMPARE(imgRead.pixel(1, 0), qRgb(255, 127, 127));
    QCOMPARE(imgRead.pixel(2, 0), qRgb(255, 255, 255));
    QCOMPARE(imgRead.pixel(3, 0), qRgb(204, 204, 204));
}

void TestImageExporter::everyTypeOfPictureIsWritten_data()
{
    QTest::addColumn<int>("nFormat");
    for (int nFormat = QImage::Format_Mono; nFormat < QImage::NImageFormats; ++nFormat)
    {
        QTest::addRow("type %d", nFormat) << nFormat;
    }
}

void TestImageExporter::everyTypeOfPictureIsWritten()
{
    QFETCH(int, nFormat);
    const CTestFolder objFolder;
    QImage img = gradient(21, 9).convertToFormat(QImage::Format(nFormat));
    if (nFormat == QImage::Format_Alpha8)
    {
        img.fill(0xff);
    }
    const QImage imgSeen = img.convertToFormat(QImage::Format_RGB32);
    for (const QString& strExtension : OrmImageFile::extensions())
    {
        QCOMPARE(OrmImageFile::write(img, objFolder.path("view." + strExtension)), QString());
    }
    QCOMPARE(difference(QImage(objFolder.path("view.png")), imgSeen), 0);
    QCOMPARE(difference(QImage(objFolder.path("view.bmp")), imgSeen), 0);
    QCOMPARE(difference(readTiff(objFolder.path("view.tif")).imgPicture, imgSeen), 0);
}

void TestImageExporter::extensionsNameAllFormats()
{
    QCOMPARE(OrmImageFile::extensions(), (QStringList{"bmp", "jpg", "jpeg", "png", "eps", "tif", "tiff"}));
}

void TestImageExporter::anOldFileIsReplaced()
{
    const CTestFolder objFolder;
    for (const QString& strExtension : OrmImageFile::extensions())
    {
        const QString strName = "view." + strExtension;
        objFolder.put(strName, QByteArray(100000, 'x'));
        QVERIFY(QFile::setPermissions(objFolder.path(strName), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
        QCOMPARE(OrmImageFile::write(noise(8, 8), objFolder.path(strName)), QString());
        QVERIFY(objFolder.get(strName).size() < 20000);
        QVERIFY(!objFolder.get(strName).contains("xxxx"));
        QVERIFY(!(QFile::permissions(objFolder.path(strName)) & QFile::ReadOther));
    }
    QCOMPARE(objFolder.entries().size(), OrmImageFile::extensions().size());
}

void TestImageExporter::aLinkStaysALink()
{
    const CTestFolder objFolder;
    objFolder.put("real.png", "old");
    QVERIFY(QFile::link(objFolder.path("real.png"), objFolder.path("link.png")));
    QCOMPARE(OrmImageFile::write(noise(8, 8), objFolder.path("link.png")), QString());
    QVERIFY(QFileInfo(objFolder.path("link.png")).isSymLink());
    QCOMPARE(difference(QImage(objFolder.path("real.png")), noise(8, 8)), 0);
}

void TestImageExporter::unusualNamesAreWritten_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("letters of many languages") << QString::fromUtf8("Maus Größe 小鼠 мышь.png");
    QTest::newRow("beyond the first plane") << QString::fromUtf8("mouse \xf0\x9f\x90\xad.png");
    QTest::newRow("dots") << "a.b..c.png";
    QTest::newRow("nothing but an extension") << ".png";
    QTest::newRow("blank at the end") << "view .png";
    QTest::newRow("percent and quotes") << "50 %1 \"x\" 'y'.png";
    QTest::newRow("a name as long as disks take") << QString(251, 'n') + ".png";
    QTest::newRow("a name as long as the tool lets through") << QString(181, 'n') + ".png";
}

void TestImageExporter::unusualNamesAreWritten()
{
    QFETCH(QString, strName);
    const CTestFolder objFolder;
    QCOMPARE(OrmImageFile::write(noise(8, 8), objFolder.path(strName)), QString());
    QCOMPARE(objFolder.entries(), QStringList{strName});
    QCOMPARE(difference(QImage(objFolder.path(strName)), noise(8, 8)), 0);
}

void TestImageExporter::refusalsSayWhyAndLeaveAllAsItWas_data()
{
    QTest::addColumn<QImage>("img");
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strReason"); // %1 is the folder
    const QImage img = noise(8, 8);
    const QString strFormats = "only bmp, jpg, png, eps and tif can be written; end the name in one of them.";
    QTest::newRow("no picture") << QImage() << "old.png"
                                << "The picture was not saved as \"old.png\": there is no picture, because the view is empty or OpenGL is "
                                   "missing.";
    for (const char* pName : {"old", "old.emf", "old.wmf", "old.gif", "old.png.", "old.tif "})
    {
        QTest::addRow("no format: %s", pName) << img << QString::fromLatin1(pName)
                                              << QStringLiteral("The picture was not saved as \"%2\": ").arg(pName) + strFormats;
    }
    QTest::newRow("folder gone") << img << "gone/new.png"
                                 << "The picture was not saved as \"new.png\": the folder \"%1/gone\" does not exist; choose another one.";
    QTest::newRow("a folder has the name") << img << "folder.png"
                                           << "The picture was not saved as \"folder.png\": there is a folder of this name; choose another "
                                              "name.";
    QTest::newRow("a pipe has the name") << img << "pipe.png"
                                         << "The picture was not saved as \"pipe.png\": what has this name is not an ordinary file; choose "
                                            "another name.";
    QTest::newRow("a file stands where a folder should")
        << img << "old.png/new.png"
        << "The picture was not saved as \"new.png\": Not a directory; choose another name or folder.";
    QTest::newRow("too long for the disk") << img << QString(150, QChar(0x5c0f)) + ".png"
                                           << "The picture was not saved as \"" + QString(150, QChar(0x5c0f)) +
                                                  ".png\": File name too long; choose another name or folder.";
    QTest::newRow("too wide for JPEG")
        << QImage(65501, 1, QImage::Format_RGB32) << "old.jpg"
        << "The picture was not saved as \"old.jpg\": JPEG holds at most 65500 pixels a side, and this picture "
           "has 65501; choose another format.";
    QTest::newRow("too high for EPS") << QImage(1, 1000001, QImage::Format_RGB32) << "old.eps"
                                      << "The picture was not saved as \"old.eps\": EPS holds at most 1000000 pixels a side, and this "
                                         "picture has 1000001; choose another format.";
    QTest::newRow("too wide for PNG") << QImage(1000001, 1, QImage::Format_RGB32) << "old.png"
                                      << "The picture was not saved as \"old.png\": PNG holds at most 1000000 pixels a side, and this "
                                         "picture has 1000001; choose another format.";
}

void TestImageExporter::refusalsSayWhyAndLeaveAllAsItWas()
{
    QFETCH(QImage, img);
    QFETCH(QString, strName);
    QFETCH(QString, strReason);
    const CTestFolder objFolder;
    for (const char* pName : {"old", "old.png", "old.jpg", "old.eps", "old.emf", "old.wmf", "old.gif", "old.png.", "old.tif "})
    {
        objFolder.put(pName, QByteArray("old ") + pName);
    }
    QVERIFY(QDir(objFolder.path(".")).mkdir("folder.png"));
    QCOMPARE(mkfifo(QFile::encodeName(objFolder.path("pipe.png")).constData(), 0600), 0);
    const QStringList lstBefore = objFolder.entries();
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), strReason.replace("%1", objFolder.path(QStringLiteral("x")).chopped(2)));
    QCOMPARE(objFolder.entries(), lstBefore);
    for (const char* pName : {"old", "old.png", "old.jpg", "old.eps", "old.emf", "old.wmf", "old.gif", "old.png.", "old.tif "})
    {
        QCOMPARE(objFolder.get(pName), QByteArray("old ") + pName);
    }
    QVERIFY(QDir(objFolder.path("folder.png")).isEmpty());
}

void TestImageExporter::protectedPlacesAreRefused()
{
    const CTestFolder objFolder;
    objFolder.put("old.png", "old");
    QVERIFY(QFile::setPermissions(objFolder.path("old.png"), QFile::ReadOwner | QFile::ReadOther));
    QCOMPARE(::chmod(QFile::encodeName(objFolder.path(".")).constData(), 0555), 0);
    QString strOld;
    QString strNew;
    {
        const CPlainUser objUser(CPlainUser::Acts);
        strOld = OrmImageFile::write(noise(8, 8), objFolder.path("old.png"));
        strNew = OrmImageFile::write(noise(8, 8), objFolder.path("new.png"));
    }
    QCOMPARE(::chmod(QFile::encodeName(objFolder.path(".")).constData(), 0755), 0);
    QCOMPARE(strOld, QString("The picture was not saved as \"old.png\": the file of this name is write-protected; choose another name."));
    QCOMPARE(strNew, QString("The picture was not saved as \"new.png\": Permission denied; choose another name or folder."));
    QCOMPARE(objFolder.entries(), QStringList{"old.png"});
    QCOMPARE(objFolder.get("old.png"), QByteArray("old"));
}

void TestImageExporter::aDiskThatFillsUpLeavesTheOldFile_data()
{
    QTest::addColumn<QString>("strExtension");
    for (const QString& strExtension : OrmImageFile::extensions())
    {
        QTest::newRow(qPrintable(strExtension)) << strExtension;
    }
}

void TestImageExporter::aDiskThatFillsUpLeavesTheOldFile()
{
    QFETCH(QString, strExtension);
    const CTestFolder objFolder;
    const QString strName = "view." + strExtension;
    const QImage img = noise(120, 90);
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), QString());
    const QByteArray aWhole = objFolder.get(strName);
    QVERIFY(aWhole.size() > 1000);
    for (int nPart = 0; nPart <= 64; ++nPart)
    {
        const qint64 nRoom = nPart == 64 ? aWhole.size() - 1 : aWhole.size() * nPart / 64;
        for (const bool bOldFile : {true, false})
        {
            QFile::remove(objFolder.path(strName));
            if (bOldFile)
            {
                objFolder.put(strName, "old");
            }
            QString strReason;
            {
                const CFileSizeLimit objLimit(nRoom);
                strReason = OrmImageFile::write(img, objFolder.path(strName));
            }
            QCOMPARE(strReason,
                     QStringLiteral("The picture was not saved as \"%1\": File too large; choose another name or folder.").arg(strName));
            QCOMPARE(objFolder.entries(), bOldFile ? QStringList{strName} : QStringList());
            QCOMPARE(objFolder.get(strName), bOldFile ? QByteArray("old") : QByteArray("(no file)"));
        }
    }
    const CFileSizeLimit objLimit(aWhole.size());
    QCOMPARE(OrmImageFile::write(img, objFolder.path(strName)), QString());
    QCOMPARE(objFolder.get(strName), aWhole);
}

void TestImageExporter::aFailingCallLeavesTheOldFile_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<int>("nError");
    QTest::addColumn<bool>("bPartly");
    QTest::addColumn<QString>("strReason");
    const QString strFull = "the disk is full; make room or choose another folder";
    QTest::newRow("no room") << int(SYS_write) << ENOSPC << false << strFull;
    QTest::newRow("room for a part") << int(SYS_write) << ENOSPC << true << strFull;
    QTest::newRow("broken disk") << int(SYS_write) << EIO << false << "Input/output error; choose another name or folder";
    QTest::newRow("disk that breaks") << int(SYS_write) << EIO << true << "Input/output error; choose another name or folder";
    QTest::newRow("quota") << int(SYS_write) << EDQUOT << true << "Disk quota exceeded; choose another name or folder";
    QTest::newRow("no room when the bytes reach the disk")
        << int(SYS_fsync) << ENOSPC << false << "No space left on device; choose another name or folder";
    QTest::newRow("broken disk when the bytes reach it")
        << int(SYS_fsync) << EIO << false << "Input/output error; choose another name or folder";
    QTest::newRow("the name can not be given") << int(SYS_rename) << EACCES << false << "Permission denied; choose another name or folder";
}

void TestImageExporter::aFailingCallLeavesTheOldFile()
{
    QFETCH(int, nCall);
    QFETCH(int, nError);
    QFETCH(bool, bPartly);
    QFETCH(QString, strReason);
    const CTestFolder objFolder;
    for (const QString& strExtension : OrmImageFile::extensions())
    {
        objFolder.put("view." + strExtension, "old");
    }
    const QStringList lstBefore = objFolder.entries();
    for (const QString& strExtension : OrmImageFile::extensions())
    {
        const QString strName = "view." + strExtension;
        s_objFault = SFault{nCall, nError, bPartly, false};
        QCOMPARE(OrmImageFile::write(noise(120, 90), objFolder.path(strName)),
                 QStringLiteral("The picture was not saved as \"%1\": %2.").arg(strName, strReason));
        QVERIFY(s_objFault.bMet);
        QCOMPARE(objFolder.get(strName), QByteArray("old"));
        QCOMPARE(objFolder.entries(), lstBefore);
    }
}

void TestImageExporter::theExporterTellsTheUserOnce()
{
    const CTestFolder objFolder;
    QList<SMessageRequest> lstBoxes;
    QStringList lstLog;
    COrmMessageBox::setResponder(
        [&](const SMessageRequest& objRequest)
        {
            lstBoxes.append(objRequest);
            return int(QMessageBox::Ok);
        });
    const int nSink = getLogObject()->addSink([&](const SLogEntry& objEntry) { lstLog.append(objEntry.strMessage); });
    QImage img = noise(8, 8);
    QString strPath = objFolder.path("view.emf");
    const QString strText =
        "The picture was not saved as \"view.emf\": only bmp, jpg, png, eps and tif can be written; end the name in one of them.";
    QVERIFY(!COrmImageExporter().saveImage(img, strPath));
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstBoxes.size(), 1);
    QCOMPARE(int(lstBoxes.first().eKind), int(QMessageBox::Critical));
    QCOMPARE(lstBoxes.first().strCaption, COrmUtilityFns::getAppName());
    QCOMPARE(lstBoxes.first().strText, strText);
    QCOMPARE(lstBoxes.first().lstButtons, (QList<int>{int(QMessageBox::Ok) | int(QMessageBox::Default), 0, 0}));
    QCOMPARE(lstLog, QStringList{strText});
    QCOMPARE(strPath, objFolder.path("view.emf"));
    QCOMPARE(img, noise(8, 8));
    QCOMPARE(objFolder.entries(), QStringList());
}

void TestImageExporter::theExporterIsSilentWhenItWrites()
{
    const CTestFolder objFolder;
    int nBoxes = 0;
    COrmMessageBox::setResponder([&](const SMessageRequest&) { return ++nBoxes; });
    QImage img = noise(8, 8);
    QString strPath = objFolder.path("view.tif");
    QVERIFY(COrmImageExporter().saveImage(img, strPath));
    QCOMPARE(nBoxes, 0);
    QCOMPARE(strPath, objFolder.path("view.tif"));
    QCOMPARE(img, noise(8, 8));
    QCOMPARE(difference(readTiff(strPath).imgPicture, img), 0);
}

QTEST_MAIN(TestImageExporter)
#include "tst_imageexporter.moc"
