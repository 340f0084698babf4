#include "COrmImage.h"
#include "COrmLog.h"
#include "COrmPalettePixmapView.h"
#include "OrmColorTables.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QTest>

#include <climits>
#include <functional>
#include <vector>

namespace
{
QStringList loggedBy(const std::function<void()>& fnAction)
{
    QStringList lstMessages;
    const int nSink = getLogObject()->addSink([&lstMessages](const SLogEntry& sEntry) { lstMessages.append(sEntry.strMessage); });
    fnAction();
    getLogObject()->removeSink(nSink);
    return lstMessages;
}

bool isLike(QRgb n1, QRgb n2, int nTolerance)
{
    return std::abs(qRed(n1) - qRed(n2)) <= nTolerance && std::abs(qGreen(n1) - qGreen(n2)) <= nTolerance &&
           std::abs(qBlue(n1) - qBlue(n2)) <= nTolerance;
}
} // namespace

class TestImageParts : public QObject
{
    Q_OBJECT

private slots:
    // ---- Pictures -------------------------------------------------------------------------------------------------

    void picturesOfTheLibraryAreThere_data()
    {
        QTest::addColumn<QString>("strPath");
        for (const char* pPath : {":/Resource/fileopen_enabled.xpm", ":/Resource/filecopy_enabled.xpm", ":/Resource/export_graphics.xpm",
                                  ":/resource/undoArrow.xpm", ":/Resource/tbRoiDelete.xpm", ":/Resource/VoxelMeasurement.xpm",
                                  ":/Resource/luminescent_icon.xpm", ":/Resource/fluorescent_icon.xpm"})
            QTest::newRow(pPath) << QString::fromLatin1(pPath);
    }

    void picturesOfTheLibraryAreThere()
    {
        QFETCH(QString, strPath);
        QVERIFY(QFile::exists(strPath));
        const QImage imgPicture(strPath);
        QCOMPARE(imgPicture.size(), QSize(20, 20));
        QVERIFY(!QPixmap(strPath).isNull());
        int nOpaque = 0;
        for (int y = 0; y < imgPicture.height(); ++y)
        {
            for (int x = 0; x < imgPicture.width(); ++x)
                nOpaque += qAlpha(imgPicture.pixel(x, y)) == 255 ? 1 : 0;
        }
        QVERIFY(nOpaque > 80);
        QVERIFY(nOpaque < 360); // the rest shows what is behind it
        QCOMPARE(qAlpha(imgPicture.pixel(19, 0)), 0);
    }

    // ---- Image ----------------------------------------------------------------------------------------------------

    void anImageCopiesItsPixels()
    {
        std::vector<float> vecPixels = {1.5f, 2.5f, -3.5f, 4.0f, 5.0f, 6.0f};
        COrmImage objImage;
        QVERIFY(objImage.isEmpty());
        QCOMPARE(objImage.constData(), static_cast<const void*>(nullptr));
        QVERIFY(objImage.initWithData(static_cast<OrmDataTypes>(4), 3, 2, vecPixels.data()));
        vecPixels.assign(6, 0.0f);
        QCOMPARE(objImage.dataType(), ORM_DATA_FLOAT32);
        QCOMPARE(objImage.width(), 3L);
        QCOMPARE(objImage.height(), 2L);
        QCOMPARE(objImage.byteCount(), qint64(24));
        QCOMPARE(objImage.valueAt(2, 0), -3.5);
        QCOMPARE(objImage.valueAt(0, 1), 4.0);
        QCOMPARE(objImage.valueAt(2, 1), 6.0);
        QCOMPARE(objImage.valueAt(3, 0), 0.0);
        QCOMPARE(objImage.valueAt(0, -1), 0.0);
    }

    void copiesOfAnImageShareThePixelsButNotThePalette()
    {
        float fPixel = 1.0f;
        COrmImage objImage;
        QVERIFY(objImage.initWithData(ORM_DATA_FLOAT32, 1, 1, &fPixel));
        COrmImage objCopy = objImage;
        QCOMPARE(objCopy.constData(), objImage.constData());
        objCopy.getPalette()->setColorTableType(ORM_CT_SURFACE, 0.0f, 1.0f);
        QCOMPARE(objImage.getPalette()->colorTableType(), ORM_CT_GRAYS);
        fPixel = 2.0f;
        QVERIFY(objCopy.initWithData(ORM_DATA_FLOAT32, 1, 1, &fPixel));
        QCOMPARE(objImage.valueAt(0, 0), 1.0);
        QCOMPARE(objCopy.valueAt(0, 0), 2.0);
        QCOMPARE(objCopy.getPalette()->colorTableType(), ORM_CT_SURFACE);
    }

    void pixelTypes_data()
    {
        QTest::addColumn<int>("nType");
        QTest::addColumn<QByteArray>("arrPixel");
        QTest::addColumn<double>("fValue");
        const auto fnBytes = [](const auto value) { return QByteArray(reinterpret_cast<const char*>(&value), sizeof(value)); };
        QTest::newRow("8 bits") << 0 << fnBytes(quint8(200)) << 200.0;
        QTest::newRow("16 bits with sign") << 1 << fnBytes(qint16(-300)) << -300.0;
        QTest::newRow("16 bits") << 2 << fnBytes(quint16(65000)) << 65000.0;
        QTest::newRow("32 bits with sign") << 3 << fnBytes(qint32(-70000)) << -70000.0;
        QTest::newRow("float") << 4 << fnBytes(0.25f) << 0.25;
        QTest::newRow("double") << 5 << fnBytes(0.1) << 0.1;
    }

    void pixelTypes()
    {
        QFETCH(int, nType);
        QFETCH(QByteArray, arrPixel);
        QFETCH(double, fValue);
        COrmImage objImage;
        QCOMPARE(ormBytesPerPixel(static_cast<OrmDataTypes>(nType)), arrPixel.size());
        QVERIFY(objImage.initWithData(static_cast<OrmDataTypes>(nType), 1, 1, arrPixel.data()));
        QCOMPARE(objImage.valueAt(0, 0), fValue);
    }

    void sizesThatCannotBeAreRefused_data()
    {
        QTest::addColumn<int>("nType");
        QTest::addColumn<qlonglong>("nWidth");
        QTest::addColumn<qlonglong>("nHeight");
        QTest::addColumn<bool>("bBuffer");
        QTest::newRow("negative width") << 4 << -1LL << 1LL << true;
        QTest::newRow("negative height") << 4 << 1LL << -1LL << true;
        QTest::newRow("both negative") << 4 << -1LL << -1LL << true;
        QTest::newRow("product overflows") << 4 << 4294967296LL << 4294967296LL << true;
        QTest::newRow("bytes overflow") << 4 << 3037000499LL << 3037000499LL << true;
        QTest::newRow("largest width") << 5 << LLONG_MAX << 1LL << true;
        QTest::newRow("unknown type") << 17 << 1LL << 1LL << true;
        QTest::newRow("no buffer") << 4 << 1LL << 1LL << false;
    }

    void sizesThatCannotBeAreRefused()
    {
        QFETCH(int, nType);
        QFETCH(qlonglong, nWidth);
        QFETCH(qlonglong, nHeight);
        QFETCH(bool, bBuffer);
        float fPixel = 7.0f;
        COrmImage objImage;
        QVERIFY(objImage.initWithData(ORM_DATA_FLOAT32, 1, 1, &fPixel));
        bool bTaken = true;
        const QStringList lstLogged = loggedBy(
            [&]()
            {
                bTaken = objImage.initWithData(static_cast<OrmDataTypes>(nType), static_cast<long>(nWidth), static_cast<long>(nHeight),
                                               bBuffer ? &fPixel : nullptr);
            });
        QVERIFY(!bTaken);
        QCOMPARE(lstLogged.size(), 1);
        QVERIFY(lstLogged.first().contains(QStringLiteral("%1 x %2").arg(nWidth).arg(nHeight)));
        QCOMPARE(objImage.valueAt(0, 0), 7.0);
    }

    void anEmptySizeMakesTheImageEmpty()
    {
        float fPixel = 7.0f;
        COrmImage objImage;
        QVERIFY(objImage.initWithData(ORM_DATA_FLOAT32, 1, 1, &fPixel));
        QVERIFY(objImage.initWithData(ORM_DATA_FLOAT32, 0, 5, nullptr));
        QVERIFY(objImage.isEmpty());
        QCOMPARE(objImage.height(), 5L);
        QCOMPARE(objImage.valueAt(0, 0), 0.0);
    }

    // ---- Strip ----------------------------------------------------------------------------------------------------

    void aStripShowsItsTable_data()
    {
        QTest::addColumn<int>("nWidth");
        QTest::addColumn<float>("fLow");
        QTest::addColumn<float>("fHigh");
        QTest::addColumn<bool>("bReversed");
        for (const int nWidth : {20, 157, 256, 1000})
        {
            QTest::addRow("%d wide, whole", nWidth) << nWidth << 0.0f << 1.0f << false;
            QTest::addRow("%d wide, reversed", nWidth) << nWidth << 0.0f << 1.0f << true;
            QTest::addRow("%d wide, a part", nWidth) << nWidth << 0.25f << 0.5f << false;
            QTest::addRow("%d wide, beyond the ends", nWidth) << nWidth << -1.0f << 9.0f << false;
        }
    }

    void aStripShowsItsTable()
    {
        QFETCH(int, nWidth);
        QFETCH(float, fLow);
        QFETCH(float, fHigh);
        QFETCH(bool, bReversed);
        COrmPalettePixmapView objStrip;
        objStrip.resize(nWidth, 24);
        objStrip.setPaletteCT(ORM_CT_JET, fLow, fHigh);
        objStrip.setPaletteCTReverse(bReversed);
        const QImage imgStrip = objStrip.grab().toImage();
        QCOMPARE(imgStrip.size(), QSize(nWidth, 24));
        const double fFirst = qBound(0.0f, fLow, 1.0f);
        const double fLast = qBound(0.0f, fHigh, 1.0f);
        for (int x = 0; x < nWidth; ++x)
        {
            const double fAlong = static_cast<double>(x) / (nWidth - 1);
            const QRgb nExpected = OrmColorTables::colorAt(ORM_CT_JET, fFirst + (fLast - fFirst) * (bReversed ? 1.0 - fAlong : fAlong));
            for (const int y : {0, 12, 23})
                QVERIFY2(isLike(imgStrip.pixel(x, y), nExpected, 1), qPrintable(QString::number(x)));
        }
    }

    void aStripFillsAWindowOfAnySize()
    {
        COrmPalettePixmapView objStrip;
        objStrip.setPaletteCT(ORM_CT_RED, 0.0f, 1.0f);
        for (const QSize objSize : {QSize(1, 1), QSize(2, 300), QSize(3000, 1)})
        {
            objStrip.resize(objSize);
            const QImage imgStrip = objStrip.grab().toImage();
            QCOMPARE(imgStrip.pixel(0, objSize.height() - 1), qRgb(0, 0, 0));
            if (objSize.width() > 1)
                QCOMPARE(imgStrip.pixel(objSize.width() - 1, 0), qRgb(255, 0, 0));
        }
    }

    void aStripTellsWhatItShows()
    {
        COrmPalettePixmapView objStrip;
        QCOMPARE(objStrip.accessibleName(), QStringLiteral("Color table"));
        objStrip.setPaletteCT(ORM_CT_EOSB, 0.0f, 1.0f);
        QCOMPARE(objStrip.accessibleDescription(), QStringLiteral("EosB"));
        objStrip.setPaletteCTReverse(true);
        QCOMPARE(objStrip.accessibleDescription(), QStringLiteral("EosB, reversed"));
        QCOMPARE(objStrip.focusPolicy(), Qt::NoFocus);
        QVERIFY(objStrip.minimumSizeHint().height() <= 20);
    }
};

QTEST_MAIN(TestImageParts)
#include "tst_imageparts.moc"
