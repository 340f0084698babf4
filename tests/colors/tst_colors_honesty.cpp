#include "ColorsTestTools.h"
#include "OrmTestMain.h"

#include <QScreen>
#include <QSet>
#include <QSlider>
#include <QWindow>

using namespace ColorsTest;

namespace
{
/// A voxel beside the row of its bar that has its value.
struct SPair
{
    QPoint ptVoxel; ///< from the top left of the view
    QPoint ptBar;
    double fValue;
};

/// Both results, each with a voxel for kVoxels rows of its bar.
class CHonestTool : public CColorTool
{
public:
    CHonestTool(bool bSOLA, bool bNOVA, bool bLog) : m_bLog(bLog)
    {
        const bool abLoaded[] = {bSOLA, bNOVA};
        const QString astrNames[] = {QStringLiteral("source"), QStringLiteral("dye")};
        for (int nKind = 0; nKind < 2; ++nKind)
        {
            if (!abLoaded[nKind])
            {
                continue;
            }
            const SBarPlace objBar(view(), nKind, bSOLA && bNOVA);
            std::vector<float> vecValues;
            for (const int nRow : objBar.rows(kVoxels, 0.08))
            {
                vecValues.push_back(static_cast<float>(scale(nKind).valueAt(objBar.placeOf(nRow))));
            }
            write(nKind, astrNames[nKind], vecValues);
            load(nKind, {astrNames[nKind]});
        }
        for (int nKind = 0; nKind < 2; ++nKind)
        {
            if (abLoaded[nKind])
            {
                chooseKind(nKind);
                typeRange(scale(nKind).fMin, scale(nKind).fMax);
                setCheck("m_pMIPCheck", true);
                setCheck("m_pLogarithmicScaleCheck", bLog);
                settle();
            }
        }
        findPairs(bSOLA && bNOVA);
    }

    SScale scale(int nKind) const { return nKind == 0 ? SScale{10.0, 1000.0, m_bLog} : SScale{0.02, 1.5, m_bLog}; }
    const std::vector<SPair>& pairs() const { return m_vecPairs; }

    /// Compares each voxel with its bar in a picture whose view begins at a point; what differs first, or an empty text.
    QString difference(const QImage& img, const QPoint& ptView = QPoint())
    {
        for (const SPair& objPair : m_vecPairs)
        {
            const QRgb nVoxel = img.pixel(ptView + objPair.ptVoxel);
            const QRgb nBar = img.pixel(ptView + objPair.ptBar);
            if (nVoxel != nBar)
            {
                return QStringLiteral("voxel of %1: %2, its bar: %3").arg(objPair.fValue).arg(text(nVoxel), text(nBar));
            }
        }
        return QString();
    }

private:
    void findPairs(bool bTwo)
    {
        for (int nTile = 0; nTile < records().size(); ++nTile)
        {
            const sAnalysisBase& objRecord = records().at(nTile);
            const SBarPlace objBar(view(), objRecord.nAnalysisType, bTwo);
            const std::vector<int> vecRows = objBar.rows(kVoxels, 0.08);
            const QVector<C3DVolume::Voxel>& vecVoxels = objRecord.objVolume.voxels();
            for (int i = 0; i < vecVoxels.size(); ++i)
            {
                const int nRow = vecRows[static_cast<size_t>(i)];
                const double fExpected = scale(objRecord.nAnalysisType).valueAt(objBar.placeOf(nRow));
                if (std::abs(static_cast<double>(vecVoxels.at(i).fValue) / fExpected - 1.0) > 1e-6)
                {
                    TestWidgets::fail(QStringLiteral("A voxel has %1 instead of %2").arg(vecVoxels.at(i).fValue).arg(fExpected));
                }
                m_vecPairs.push_back({pixelOf(nTile, vecVoxels.at(i)), QPoint(objBar.nColumn, view().getGLHeight() - 1 - nRow), fExpected});
            }
        }
    }

    bool m_bLog;
    std::vector<SPair> m_vecPairs;
};

/// How far two colours are apart when both are made as bright as they can be; 0 to 1.
double hueDistance(QRgb nA, QRgb nB)
{
    const double fBrightA = std::max({qRed(nA), qGreen(nA), qBlue(nA)});
    const double fBrightB = std::max({qRed(nB), qGreen(nB), qBlue(nB)});
    return std::max({std::abs(qRed(nA) / fBrightA - qRed(nB) / fBrightB), std::abs(qGreen(nA) / fBrightA - qGreen(nB) / fBrightB),
                     std::abs(qBlue(nA) / fBrightA - qBlue(nB) / fBrightB)});
}
} // namespace

/// What a colour bar says is what the voxels are drawn with, whatever the panel is set to.
class tst_colors_honesty : public QObject
{
    Q_OBJECT

private slots:
    void projectedVoxelsHaveTheirBarsColor_data();
    void projectedVoxelsHaveTheirBarsColor();
    void projectedVoxelsBehindAClearSurface();
    void projectedVoxelsOnTheScreen_data();
    void projectedVoxelsOnTheScreen();
    void hottestVoxelHasTheBarsTop();
    void translucentVoxelsHaveTheirBarsHue_data();
    void translucentVoxelsHaveTheirBarsHue();
};

void tst_colors_honesty::projectedVoxelsHaveTheirBarsColor_data()
{
    QTest::addColumn<bool>("bSOLA");
    QTest::addColumn<bool>("bNOVA");
    QTest::addColumn<bool>("bLog");
    for (const bool bLog : {false, true})
    {
        const char* pScale = bLog ? "logarithmic" : "linear";
        QTest::addRow("SOLA, %s", pScale) << true << false << bLog;
        QTest::addRow("NOVA, %s", pScale) << false << true << bLog;
        QTest::addRow("both kinds, %s", pScale) << true << true << bLog;
    }
}

/// Every table, forwards and reversed, whole and spanned.
void tst_colors_honesty::projectedVoxelsHaveTheirBarsColor()
{
    QFETCH(bool, bSOLA);
    QFETCH(bool, bNOVA);
    QFETCH(bool, bLog);
    CHonestTool objTool(bSOLA, bNOVA, bLog);
    QCOMPARE(static_cast<int>(objTool.pairs().size()), kVoxels * ((bSOLA ? 1 : 0) + (bNOVA ? 1 : 0)));
    objTool.tool().get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    QSet<QString> setPictures;
    for (const bool bReversed : {false, true})
    {
        objTool.setCheck("m_pReverseColorMapCheck", bReversed);
        for (const bool bSpanned : {false, true})
        {
            objTool.tableSlider()->setSpan(bSpanned ? 23 : 0, bSpanned ? 81 : 100);
            for (int nTable = 0; nTable < objTool.table()->count(); ++nTable)
            {
                objTool.table()->setCurrentIndex(nTable);
                const QImage img = objTool.picture();
                const QString strDifference = objTool.difference(img);
                QVERIFY2(strDifference.isEmpty(), qPrintable(QStringLiteral("%1, %2, %3: %4")
                                                                 .arg(objTool.table()->currentText())
                                                                 .arg(bReversed ? "reversed" : "forwards", bSpanned ? "spanned" : "whole")
                                                                 .arg(strDifference)));
                // The setting shows: the voxels' colours differ among themselves and from those of any other setting.
                QSet<QRgb> setColors;
                QString strColors;
                for (const SPair& objPair : objTool.pairs())
                {
                    setColors.insert(img.pixel(objPair.ptVoxel));
                    strColors += text(img.pixel(objPair.ptVoxel)) + QLatin1Char('|');
                }
                QVERIFY2(setColors.size() > 8, qPrintable(objTool.table()->currentText()));
                QVERIFY(!setPictures.contains(strColors));
                setPictures.insert(strColors);
            }
        }
    }
    QCOMPARE(setPictures.size(), 4 * 13);
}

/// A surface of opacity 0 takes nothing of the voxels' colours.
void tst_colors_honesty::projectedVoxelsBehindAClearSurface()
{
    CHonestTool objTool(true, true, false);
    objTool.table()->setCurrentText(QStringLiteral("Rainbow"));
    QVERIFY(objTool.tool().get<QGroupBox>("m_pDisplaySurfaceGB")->isChecked());
    objTool.tool().get<QSlider>("m_pOpacitySlider")->setValue(100);
    QVERIFY(!objTool.difference(objTool.picture()).isEmpty()); // it covers them
    objTool.tool().get<QSlider>("m_pOpacitySlider")->setValue(0);
    QCOMPARE(objTool.difference(objTool.picture()), QString());
}

void tst_colors_honesty::projectedVoxelsOnTheScreen_data()
{
    QTest::addColumn<bool>("bLog");
    QTest::addColumn<bool>("bReversed");
    QTest::addColumn<int>("nLow");
    QTest::addColumn<int>("nHigh");
    QTest::newRow("linear") << false << false << 0 << 100;
    QTest::newRow("logarithmic") << true << false << 0 << 100;
    QTest::newRow("reversed") << false << true << 0 << 100;
    QTest::newRow("spanned") << false << false << 30 << 90;
    QTest::newRow("all of it") << true << true << 15 << 77;
}

/// The same in the pixels that the screen shows of the window.
void tst_colors_honesty::projectedVoxelsOnTheScreen()
{
    QFETCH(bool, bLog);
    QFETCH(bool, bReversed);
    QFETCH(int, nLow);
    QFETCH(int, nHigh);
    CHonestTool objTool(true, true, bLog);
    objTool.tool().get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    objTool.setCheck("m_pReverseColorMapCheck", bReversed);
    for (const char* pTable : {"Jet", "EosB"})
    {
        objTool.table()->setCurrentText(QLatin1String(pTable));
        objTool.tableSlider()->setSpan(nLow, nHigh);
        const QImage imgView = objTool.picture();
        QWidget& wnd = objTool.tool().window();
        const QPoint ptView = objTool.view().mapTo(&wnd, QPoint(0, 0));
        QImage imgScreen;
        const auto fnShown = [&]
        {
            imgScreen = wnd.windowHandle()->screen()->grabWindow(wnd.winId()).toImage();
            const SPair& objLast = objTool.pairs().back();
            return imgScreen.pixel(ptView + objLast.ptVoxel) == imgView.pixel(objLast.ptVoxel);
        };
        QTRY_VERIFY(fnShown());
        QCOMPARE(objTool.difference(imgScreen, ptView), QString());
        for (const SPair& objPair : objTool.pairs())
        {
            QCOMPARE(text(imgScreen.pixel(ptView + objPair.ptVoxel)), text(imgView.pixel(objPair.ptVoxel)));
        }
    }
}

/// With the range of the results themselves, which is what a load leaves.
void tst_colors_honesty::hottestVoxelHasTheBarsTop()
{
    CColorTool objTool;
    objTool.write(0, QStringLiteral("source"), ramp(3.0f, 700.0f));
    objTool.load(0, {QStringLiteral("source")});
    objTool.setCheck("m_pMIPCheck", true);
    objTool.tool().get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    const SBarPlace objBar(objTool.view(), 0, false);
    QVERIFY(objBar.lastRow() - objBar.firstRow() > 255); // a row for each colour
    QSet<QRgb> setTops;
    for (int nTable = 0; nTable < objTool.table()->count(); ++nTable)
    {
        for (const bool bReversed : {false, true})
        {
            objTool.table()->setCurrentIndex(nTable);
            objTool.setCheck("m_pReverseColorMapCheck", bReversed);
            const QImage img = objTool.picture();
            const C3DVolume::Voxel& objHottest = objTool.records().first().objVolume.voxels().last();
            QCOMPARE(objHottest.fValue, 700.0f);
            const QRgb nTop = img.pixel(objBar.nColumn, img.height() - 1 - objBar.lastRow());
            QCOMPARE(text(img.pixel(objTool.pixelOf(0, objHottest))), text(nTop));
            QVERIFY(img.pixel(objBar.nColumn, img.height() - 2 - objBar.lastRow()) != nTop || nTop == qRgb(255, 255, 255));
            setTops.insert(nTop);
        }
    }
    QVERIFY(setTops.size() > 10);
}

void tst_colors_honesty::translucentVoxelsHaveTheirBarsHue_data()
{
    QTest::addColumn<bool>("bLog");
    QTest::addColumn<bool>("bReversed");
    QTest::newRow("linear") << false << false;
    QTest::newRow("linear, reversed") << false << true;
    QTest::newRow("logarithmic") << true << false;
    QTest::newRow("logarithmic, reversed") << true << true;
}

void tst_colors_honesty::translucentVoxelsHaveTheirBarsHue()
{
    QFETCH(bool, bLog);
    QFETCH(bool, bReversed);
    CHonestTool objTool(true, true, bLog);
    objTool.tool().get<QGroupBox>("m_pDisplaySurfaceGB")->setChecked(false);
    objTool.setCheck("m_pMIPCheck", false);
    objTool.setCheck("m_pReverseColorMapCheck", bReversed);
    for (const char* pTable : {"Rainbow", "Jet", "BlueYellow", "GreenPink", "Cyan"})
    {
        objTool.table()->setCurrentText(QLatin1String(pTable));
        const QImage img = objTool.picture();
        int nCompared = 0;
        int nDimmer = 0;
        for (const SPair& objPair : objTool.pairs())
        {
            const QRgb nVoxel = img.pixel(objPair.ptVoxel);
            const QRgb nBar = img.pixel(objPair.ptBar);
            // The darker a colour, the less its rounded parts tell of its hue.
            const int nBright = std::max({qRed(nVoxel), qGreen(nVoxel), qBlue(nVoxel)});
            if (nBright < 16)
            {
                continue;
            }
            ++nCompared;
            nDimmer += nVoxel != nBar ? 1 : 0;
            QVERIFY2(hueDistance(nVoxel, nBar) < 0.01 + 1.0 / nBright, qPrintable(QStringLiteral("%1, voxel of %2: %3, its bar: %4")
                                                                                      .arg(QLatin1String(pTable))
                                                                                      .arg(objPair.fValue)
                                                                                      .arg(text(nVoxel), text(nBar))));
        }
        QVERIFY2(nCompared > 10, qPrintable(QStringLiteral("%1: %2").arg(QLatin1String(pTable)).arg(nCompared)));
        QVERIFY(nDimmer > 0); // translucent indeed
    }
}

ORM_TEST_MAIN(tst_colors_honesty)
#include "tst_colors_honesty.moc"
