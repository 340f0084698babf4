#include "ExportFileName.h"

#include <QtTest>

/// What the export makes of names and paths, without any window.
class tst_exportnames : public QObject
{
    Q_OBJECT

private slots:
    void filtersOfferFiveFormats();
    void knownExtensions_data();
    void knownExtensions();
    void extensionOfFilter_data();
    void extensionOfFilter();
    void partsOfPaths_data();
    void partsOfPaths();
    void extensionIsAppended_data();
    void extensionIsAppended();
    void longNamesAreCountedByCharacters_data();
    void longNamesAreCountedByCharacters();
    void longNamesAreBrokenInTheMiddle_data();
    void longNamesAreBrokenInTheMiddle();
};

void tst_exportnames::filtersOfferFiveFormats()
{
    QCOMPARE(ExportFileName::offeredFilters(),
             QString("Bitmap Image (*.bmp);;JPEG Image (*.jpg);;PNG Image (*.png);;Postscript Enhanced Metafile (*.eps);;Tagged Image File "
                     "Format (*.tif)"));
}

void tst_exportnames::knownExtensions_data()
{
    QTest::addColumn<QString>("strExtension");
    QTest::addColumn<bool>("bKnown");
    for (const char* pKnown : {"bmp", "jpg", "png", "eps", "emf", "wmf", "tif", "tiff", "BMP", "Jpg", "TIFF", "eMf"})
    {
        QTest::newRow(pKnown) << QString::fromLatin1(pKnown) << true;
    }
    for (const char* pUnknown : {"", "jpeg", "gif", "raw", "pn", "pngx", ".png", " png", "png ", "ti", "bmp;jpg", "svg"})
    {
        QTest::addRow("not %s", pUnknown) << QString::fromLatin1(pUnknown) << false;
    }
    QTest::newRow("no text") << QString() << false;
}

void tst_exportnames::knownExtensions()
{
    QFETCH(QString, strExtension);
    QFETCH(bool, bKnown);
    QCOMPARE(ExportFileName::isKnownExtension(strExtension), bKnown);
}

void tst_exportnames::extensionOfFilter_data()
{
    QTest::addColumn<QString>("strFilter");
    QTest::addColumn<QString>("strExtension");
    QTest::newRow("bmp") << "Bitmap Image (*.bmp)"
                         << "bmp";
    QTest::newRow("jpg") << "JPEG Image (*.jpg)"
                         << "jpg";
    QTest::newRow("png") << "PNG Image (*.png)"
                         << "png";
    QTest::newRow("wmf") << "Windows Metafile Format (*.wmf)"
                         << "wmf";
    QTest::newRow("emf") << "Enhanced Metafile Format (*.emf)"
                         << "emf";
    QTest::newRow("eps") << "Postscript Enhanced Metafile (*.eps)"
                         << "eps";
    QTest::newRow("tif") << "Tagged Image File Format (*.tif)"
                         << "tif";
    QTest::newRow("other letters") << "tagged IMAGE file FORMAT (*.TIF)"
                                   << "tif";
    QTest::newRow("other name") << "TIFF Image (*.tif)" << QString();
    QTest::newRow("pattern alone") << "*.png" << QString();
    QTest::newRow("extension alone") << "png" << QString();
    QTest::newRow("blank behind") << "PNG Image (*.png) " << QString();
    QTest::newRow("empty") << "" << QString();
    QTest::newRow("no text") << QString() << QString();
}

void tst_exportnames::extensionOfFilter()
{
    QFETCH(QString, strFilter);
    QFETCH(QString, strExtension);
    QCOMPARE(ExportFileName::extensionOfFilter(strFilter), strExtension);
    QCOMPARE(ExportFileName::extensionOfFilter(strFilter).isNull(), strExtension.isNull());
}

void tst_exportnames::partsOfPaths_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QString>("strFolder");
    QTest::addColumn<QString>("strFormat");
    QTest::addColumn<QString>("strSuffix");
    QTest::newRow("plain") << "/data/view.png"
                           << "/data"
                           << "png"
                           << "png";
    QTest::newRow("capitals") << "/data/View.PNG"
                              << "/data"
                              << "PNG"
                              << "png";
    QTest::newRow("two dots") << "/data/view.2.png"
                              << "/data"
                              << "2.png"
                              << "png";
    QTest::newRow("no extension") << "/data/view"
                                  << "/data"
                                  << "/data/view"
                                  << "";
    QTest::newRow("dot at the end") << "/data/view."
                                    << "/data"
                                    << ""
                                    << "";
    QTest::newRow("two dots at the end") << "/data/view.."
                                         << "/data"
                                         << "."
                                         << "";
    QTest::newRow("dot in the folder") << "/data.new/view.png"
                                       << "/data.new"
                                       << "new/view.png"
                                       << "png";
    QTest::newRow("dot in the folder alone") << "/data.new/view"
                                             << "/data.new"
                                             << "new/view"
                                             << "";
    QTest::newRow("extension alone") << "/data/.png"
                                     << "/data"
                                     << "png"
                                     << "png";
    QTest::newRow("top folder") << "/view.png"
                                << ""
                                << "png"
                                << "png";
    QTest::newRow("no folder") << "view.png"
                               << "view.png"
                               << "png"
                               << "png";
    QTest::newRow("letters of many languages") << QString::fromUtf8("/Mäuse/小鼠.Ä.tif") << QString::fromUtf8("/Mäuse")
                                               << QString::fromUtf8("Ä.tif") << "tif";
    QTest::newRow("backslash") << "/data/a\\b.png"
                               << "/data"
                               << "png"
                               << "png";
}

void tst_exportnames::partsOfPaths()
{
    QFETCH(QString, strPath);
    QTEST(ExportFileName::folder(strPath), "strFolder");
    QTEST(ExportFileName::formatToRemember(strPath), "strFormat");
    QTEST(ExportFileName::suffix(strPath), "strSuffix");
}

void tst_exportnames::extensionIsAppended_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QString>("strSuffix");
    QTest::addColumn<QString>("strExtension");
    QTest::addColumn<QString>("strResult");
    QTest::newRow("no suffix") << "/a/view"
                               << ""
                               << "jpg"
                               << "/a/view.jpg";
    QTest::newRow("unknown suffix") << "/a/view.raw"
                                    << "raw"
                                    << "png"
                                    << "/a/view.raw.png";
    QTest::newRow("its own suffix") << "/a/view.png"
                                    << "png"
                                    << "png"
                                    << "/a/view.png";
    QTest::newRow("its own suffix in capitals") << "/a/view.PNG"
                                                << "png"
                                                << "png"
                                                << "/a/view.PNG";
    QTest::newRow("no filter, no suffix") << "/a/view"
                                          << "" << QString() << "/a/view.";
    QTest::newRow("no filter, unknown suffix") << "/a/view.raw"
                                               << "raw" << QString() << "/a/view.raw.";
    QTest::newRow("dot in the folder") << "/a.b/view"
                                       << ""
                                       << "tif"
                                       << "/a.b/view.tif";
}

void tst_exportnames::extensionIsAppended()
{
    QFETCH(QString, strPath);
    QFETCH(QString, strSuffix);
    QFETCH(QString, strExtension);
    QTEST(ExportFileName::withExtension(strPath, strSuffix, strExtension), "strResult");
    QCOMPARE(ExportFileName::withoutClosingDot(strPath), strPath);
    QCOMPARE(ExportFileName::withoutClosingDot(strPath + "."), strPath);
    QCOMPARE(ExportFileName::withoutClosingDot(strPath + ".."), strPath + ".");
}

void tst_exportnames::longNamesAreCountedByCharacters_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bTooLong");
    QTest::newRow("185") << QString(185, 'n') << false;
    QTest::newRow("186") << QString(186, 'n') << true;
    QTest::newRow("185 that take three bytes each") << QString(185, QChar(0x9f20)) << false;
    QTest::newRow("186 that take three bytes each") << QString(186, QChar(0x9f20)) << true;
    QTest::newRow("none") << QString() << false;
}

void tst_exportnames::longNamesAreCountedByCharacters()
{
    QFETCH(QString, strName);
    QTEST(ExportFileName::isTooLong(strName), "bTooLong");
}

void tst_exportnames::longNamesAreBrokenInTheMiddle_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strText");
    QTest::newRow("even") << "abcdef"
                          << "The path you entered, \n'abc\ndef',\nis too long. Enter a shorter path";
    QTest::newRow("odd") << "abcde"
                         << "The path you entered, \n'ab\ncde',\nis too long. Enter a shorter path";
    QTest::newRow("with a place mark") << "a%1%2b"
                                       << "The path you entered, \n'a%1\n%2b',\nis too long. Enter a shorter path";
}

void tst_exportnames::longNamesAreBrokenInTheMiddle()
{
    QFETCH(QString, strName);
    QTEST(ExportFileName::tooLongText(strName), "strText");
    QCOMPARE(ExportFileName::overwriteText(strName), "File: " + strName + " exists in the specified path.\nOverwrite existing file?");
}

QTEST_GUILESS_MAIN(tst_exportnames)
#include "tst_exportnames.moc"
