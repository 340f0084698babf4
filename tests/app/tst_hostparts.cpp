#include "COrmHostSettings.h"
#include "COrmImageOverlayWindow.h"
#include "COrmLog.h"
#include "COrmLogPanel.h"
#include "COrmPictureWidget.h"
#include "COrmPreference.h"
#include "COrmSequenceCollection.h"
#include "CStudyWriter.h"
#include "OrmCommandLine.h"
#include "OrmOverlay.h"
#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <thread>

namespace
{
QImage greyPicture(int nWidth, int nHeight, int nLeft, int nRight)
{
    QImage img(nWidth, nHeight, QImage::Format_Grayscale8);
    for (int y = 0; y < nHeight; ++y)
    {
        for (int x = 0; x < nWidth; ++x)
            img.scanLine(y)[x] = uchar(x < nWidth / 2 ? nLeft : nRight);
    }
    return img;
}

QByteArray png(const QImage& img)
{
    QByteArray arr;
    QBuffer objBuffer(&arr);
    objBuffer.open(QIODevice::WriteOnly);
    img.save(&objBuffer, "PNG");
    return arr;
}
} // namespace

class TestHostParts : public QObject
{
    Q_OBJECT

private slots:
    void init() { COrmPreference::setStore(QString()); }
    void commandLineIsUnderstood_data();
    void commandLineIsUnderstood();
    void textOptionsNeedNoDisplay_data();
    void textOptionsNeedNoDisplay();
    void usageNamesEveryOption();
    void logLinesArePlainAndSayTheirWeight_data();
    void logLinesArePlainAndSayTheirWeight();
    void logPanelTakesEntriesFromAnyThread();
    void logPanelKeepsABoundedNumberOfLines();
    void overlayIsMadeOfBothPictures();
    void unreadablePicturesAreTold_data();
    void unreadablePicturesAreTold();
    void overlayWindowShowsTheImagesOfItsSequence();
    void settingsOutliveTheProcess();
    void withoutAStoreNothingIsWritten();
};

void TestHostParts::commandLineIsUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<bool>("noSettings");
    QTest::addColumn<bool>("wrong");
    QTest::newRow("nothing") << QStringList() << QStringList() << QString() << false << false;
    QTest::newRow("folders") << QStringList{"a", "b c"} << QStringList{"a", "b c"} << QString() << false << false;
    QTest::newRow("tool") << QStringList{"--tool", "Longitudinal Study", "a"} << QStringList{"a"} << "Longitudinal Study" << false << false;
    QTest::newRow("tool with =") << QStringList{"a", "--tool=X"} << QStringList{"a"} << "X" << false << false;
    QTest::newRow("no settings") << QStringList{"--no-settings", "a"} << QStringList{"a"} << QString() << true << false;
    QTest::newRow("folder like an option") << QStringList{"--", "--tool"} << QStringList{"--tool"} << QString() << false << false;
    QTest::newRow("tool without a name") << QStringList{"--tool"} << QStringList() << QString() << false << true;
    QTest::newRow("tool with an empty name") << QStringList{"--tool", " "} << QStringList() << " " << false << true;
    QTest::newRow("two tools") << QStringList{"--tool", "a", "--tool", "b"} << QStringList() << "b" << false << true;
    QTest::newRow("unknown option") << QStringList{"--bogus"} << QStringList() << QString() << false << true;
}

void TestHostParts::commandLineIsUnderstood()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, folders);
    QFETCH(QString, tool);
    QFETCH(bool, noSettings);
    QFETCH(bool, wrong);
    const SCommandLine sLine = OrmCommandLine::parse(QStringList{"ormelle"} + arguments);
    QCOMPARE(sLine.m_lstFolders, folders);
    QCOMPARE(sLine.m_strTool, tool);
    QCOMPARE(sLine.m_bNoSettings, noSettings);
    QCOMPARE(!sLine.m_strError.isEmpty(), wrong);
}

void TestHostParts::textOptionsNeedNoDisplay_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("textOnly");
    QTest::newRow("none") << QStringList() << false;
    QTest::newRow("help") << QStringList{"--help"} << true;
    QTest::newRow("short help") << QStringList{"a", "-h"} << true;
    QTest::newRow("version") << QStringList{"--version"} << true;
    QTest::newRow("short version") << QStringList{"-v"} << true;
    QTest::newRow("a folder of that name") << QStringList{"--", "--help"} << false;
    QTest::newRow("a part of it") << QStringList{"--helpful"} << false;
}

void TestHostParts::textOptionsNeedNoDisplay()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, textOnly);
    QCOMPARE(OrmCommandLine::wantsTextOnly(QStringList{"--help"} + arguments), textOnly);
}

void TestHostParts::usageNamesEveryOption()
{
    for (const char* pOption : {"--tool NAME", "--no-settings", "--help", "--version", "FOLDER"})
        QVERIFY2(OrmCommandLine::usage().contains(QLatin1String(pOption)), pOption);
    QVERIFY(OrmCommandLine::version().startsWith(QStringLiteral("Ormelle ")));
}

void TestHostParts::logLinesArePlainAndSayTheirWeight_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("line");
    QTest::newRow("progress") << "Opened a." << 1 << "09:30:05  Opened a.";
    QTest::newRow("refusal") << "No." << 2 << "09:30:05  Note: No.";
    QTest::newRow("failure") << "Gone." << 3 << "09:30:05  Error: Gone.";
    QTest::newRow("markup stays markup") << "<b>x</b>" << 1 << "09:30:05  <b>x</b>";
    QTest::newRow("one entry, one line") << "a\nb" << 1 << "09:30:05  a\\nb";
    QTest::newRow("reading direction") << QString::fromUtf8("a\xE2\x80\xAE"
                                                            "b")
                                       << 1 << "09:30:05  a\\u202Eb";
}

void TestHostParts::logLinesArePlainAndSayTheirWeight()
{
    QFETCH(QString, message);
    QFETCH(int, level);
    SLogEntry sEntry;
    sEntry.strMessage = message;
    sEntry.nLevel = level;
    sEntry.dtWritten = QDateTime(QDate(2026, 8, 1), QTime(9, 30, 5));
    QTEST(COrmLogPanel::lineFor(sEntry), "line");
}

void TestHostParts::logPanelTakesEntriesFromAnyThread()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    ORM_LOG(2, QStringLiteral("from the window"));
    std::thread(
        []
        {
            for (int nEntry = 0; nEntry < 100; ++nEntry)
                ORM_LOG(1, QStringLiteral("from elsewhere %1").arg(nEntry));
        })
        .join();
    QTRY_COMPARE(pText->blockCount(), 101);
    const QStringList lstLines = pText->toPlainText().split(QLatin1Char('\n'));
    QVERIFY(lstLines.first().endsWith(QStringLiteral("Note: from the window")));
    QVERIFY(lstLines.last().endsWith(QStringLiteral("from elsewhere 99")));
}

void TestHostParts::logPanelKeepsABoundedNumberOfLines()
{
    COrmLogPanel objPanel;
    const auto* pText = TestWidgets::get<QPlainTextEdit>(&objPanel, "logText");
    const int nEntries = COrmLogPanel::s_nMaxLines + 500;
    for (int nEntry = 0; nEntry < nEntries; ++nEntry)
        ORM_LOG(1, QString::number(nEntry));
    QTRY_COMPARE(pText->blockCount(), int(COrmLogPanel::s_nMaxLines));
    QVERIFY(pText->toPlainText().endsWith(QStringLiteral("  %1").arg(nEntries - 1)));
}

void TestHostParts::overlayIsMadeOfBothPictures()
{
    const QImage imgPhotograph = greyPicture(40, 20, 100, 100);
    const QImage imgLuminescent = greyPicture(20, 10, 0, 200);
    QVERIFY(OrmOverlay::compose(QImage(), QImage(), 1.0).isNull());
    const QImage imgAlone = OrmOverlay::compose(imgPhotograph, QImage(), 1.0);
    QCOMPARE(imgAlone.size(), imgPhotograph.size());
    QCOMPARE(imgAlone.pixel(30, 10), qRgb(100, 100, 100));

    const QImage imgBoth = OrmOverlay::compose(imgPhotograph, imgLuminescent, 1.0);
    QCOMPARE(imgBoth.size(), imgPhotograph.size());
    QCOMPARE(imgBoth.pixel(5, 10), qRgb(100, 100, 100)); // nothing glows there
    QVERIFY(qRed(imgBoth.pixel(35, 10)) != qGreen(imgBoth.pixel(35, 10)));
    QCOMPARE(OrmOverlay::compose(imgPhotograph, imgLuminescent, 0.0).pixel(35, 10), qRgb(100, 100, 100));
    QCOMPARE(OrmOverlay::compose(imgPhotograph, greyPicture(20, 10, 7, 7), 1.0).pixel(35, 10), qRgb(100, 100, 100));
    QCOMPARE(OrmOverlay::compose(QImage(), imgLuminescent, 1.0).pixel(2, 5), qRgb(0, 0, 0));
}

void TestHostParts::unreadablePicturesAreTold_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* pKind : {"missing", "empty", "text", "cut", "folder", "fifo"})
        QTest::newRow(pKind) << QString::fromLatin1(pKind);
}

void TestHostParts::unreadablePicturesAreTold()
{
    QFETCH(QString, kind);
    const QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("p.png"));
    const QByteArray arrGood = png(greyPicture(64, 64, 0, 255));
    if (kind == QLatin1String("empty"))
        CStudyWriter::writeFile(strFile, QByteArray());
    else if (kind == QLatin1String("text"))
        CStudyWriter::writeFile(strFile, "no picture");
    else if (kind == QLatin1String("cut"))
        CStudyWriter::writeFile(strFile, arrGood.left(20));
    else if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(strFile));
    else if (kind == QLatin1String("fifo"))
        QCOMPARE(mkfifo(QFile::encodeName(strFile).constData(), 0600), 0);
    QString strReason;
    QVERIFY(OrmOverlay::load(strFile, &strReason).isNull());
    QVERIFY2(strReason.contains(strFile), qPrintable(strReason));
    CStudyWriter::writeFile(objFolder.filePath(QStringLiteral("good.png")), arrGood);
    QCOMPARE(OrmOverlay::load(objFolder.filePath(QStringLiteral("good.png")), &strReason).size(), QSize(64, 64));
}

void TestHostParts::overlayWindowShowsTheImagesOfItsSequence()
{
    CStudyWriter objStudy;
    const QString strFolder = objStudy.folder() + QStringLiteral("/s/");
    CStudyWriter::writeFile(strFolder + QStringLiteral("SequenceInfo.txt"), "Sequence=S\n[Click Numbers]\nCount=3\n1=c1\n2=c2\n3=c3\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c1/ClickInfo.txt"),
                            "[photographic image]\nImage File=p.png\n[luminescent image]\nImage File=l.png\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c1/p.png"), png(greyPicture(40, 40, 90, 90)));
    CStudyWriter::writeFile(strFolder + QStringLiteral("c1/l.png"), png(greyPicture(40, 40, 0, 255)));
    CStudyWriter::writeFile(strFolder + QStringLiteral("c2/ClickInfo.txt"), "[photographic image]\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c3/ClickInfo.txt"), "[photographic image]\nImage File=bad.png\n");
    CStudyWriter::writeFile(strFolder + QStringLiteral("c3/bad.png"), "bad");
    COrmSequenceCollection objCollection;
    QCOMPARE(objCollection.open({objStudy.folder()}).m_nSequences, 1);

    COrmImageOverlayWindow objWindow;
    const auto* pPicture = TestWidgets::get<COrmPictureWidget>(&objWindow, "overlayPicture");
    auto* pImage = TestWidgets::get<QComboBox>(&objWindow, "overlayImage");
    auto* pOpacity = TestWidgets::get<QSlider>(&objWindow, "overlayOpacity");
    objWindow.setSequence(nullptr);
    QVERIFY(pPicture->picture().isNull());
    QVERIFY(pPicture->text().contains(QStringLiteral("Select a sequence")));
    QVERIFY(!pImage->isEnabled());

    objWindow.setSequence(objCollection.sequences().first());
    QCOMPARE(pImage->count(), 3);
    QCOMPARE(pPicture->picture().size(), QSize(40, 40));
    QVERIFY(pOpacity->isEnabled());
    const QRgb nMixed = pPicture->picture().pixel(30, 20);
    pOpacity->setValue(0);
    QCOMPARE(pPicture->picture().pixel(30, 20), qRgb(90, 90, 90));
    QVERIFY(nMixed != qRgb(90, 90, 90));

    QGuiApplication::clipboard()->clear();
    objWindow.copyToClipboard(QStringLiteral("something else"));
    QVERIFY(QGuiApplication::clipboard()->image().isNull());
    objWindow.copyToClipboard(QStringLiteral("IMAGE overlay"));
    QCOMPARE(QGuiApplication::clipboard()->image().size(), QSize(40, 40));

    pImage->setCurrentIndex(1);
    QVERIFY(pPicture->picture().isNull());
    QCOMPARE(pPicture->text(), QStringLiteral("Image c2 has no picture."));
    QVERIFY(!pOpacity->isEnabled());
    pImage->setCurrentIndex(2);
    QVERIFY2(pPicture->text().contains(QStringLiteral("bad.png")), qPrintable(pPicture->text()));
    // The sequence may be closed while it is shown.
    objCollection.closeAll();
    pImage->setCurrentIndex(0);
    QVERIFY(pPicture->picture().isNull());
}

void TestHostParts::settingsOutliveTheProcess()
{
    const QTemporaryDir objFolder;
    COrmPreference::setStore(objFolder.filePath(QStringLiteral("sub/preferences.json")));
    {
        COrmHostSettings objSettings;
        QVERIFY(objSettings.recentFolders().isEmpty());
        QVERIFY(objSettings.value(QStringLiteral("geometry")).isEmpty());
        objSettings.setValue(QStringLiteral("geometry"), QByteArray("\0\1,;\"x", 7));
        for (int nFolder = 0; nFolder < 10; ++nFolder)
            objSettings.addRecentFolder(QStringLiteral("/study, %1\\").arg(nFolder));
        objSettings.addRecentFolder(QStringLiteral("/study, 5\\"));
    }
    COrmHostSettings objSettings;
    QCOMPARE(objSettings.value(QStringLiteral("geometry")), QByteArray("\0\1,;\"x", 7));
    const QStringList lstRecent = objSettings.recentFolders();
    QCOMPARE(lstRecent.size(), int(COrmHostSettings::s_nMaxRecent));
    QCOMPARE(lstRecent.mid(0, 3), (QStringList{"/study, 5\\", "/study, 9\\", "/study, 8\\"}));
    QCOMPARE(lstRecent.count(QStringLiteral("/study, 5\\")), 1);
    objSettings.clearRecentFolders();
    QVERIFY(COrmHostSettings().recentFolders().isEmpty());
}

void TestHostParts::withoutAStoreNothingIsWritten()
{
    COrmPreference::setStore(QString());
    QVERIFY(COrmHostSettings::file().isEmpty());
    COrmHostSettings objSettings;
    objSettings.setValue(QStringLiteral("geometry"), "x");
    QVERIFY(objSettings.value(QStringLiteral("geometry")).isEmpty());
    objSettings.addRecentFolder(QStringLiteral("/a")); // known for the process alone
    QCOMPARE(objSettings.recentFolders(), QStringList{"/a"});
    QVERIFY(COrmHostSettings().recentFolders().isEmpty());
}

ORM_TEST_MAIN(TestHostParts)
#include "tst_hostparts.moc"
