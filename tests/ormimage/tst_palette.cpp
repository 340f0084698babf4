#include "COrmLog.h"
#include "COrmPalette.h"
#include "OrmColorScale.h"
#include "OrmColorTables.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

using OrmColorScale::SRange;

namespace
{
const double fNan = std::numeric_limits<double>::quiet_NaN();
const double fInfinity = std::numeric_limits<double>::infinity();

/// Collects what is logged while it lives.
class CLogged
{
public:
    CLogged() : m_nSink(getLogObject()->addSink([this](const SLogEntry& sEntry) { m_lstEntries.append(sEntry); })) {}
    ~CLogged() { getLogObject()->removeSink(m_nSink); }
    CLogged(const CLogged&) = delete;
    CLogged& operator=(const CLogged&) = delete;
    QList<SLogEntry> m_lstEntries;

private:
    int m_nSink;
};

COrmPalette paletteOf(ORM_COLORTABLE_TYPES eType, double fMin, double fMax, bool bLog = false, bool bReversed = false, float fLow = 0.0f,
                      float fHigh = 1.0f)
{
    COrmPalette objPalette;
    objPalette.setColorTableType(eType, fLow, fHigh);
    objPalette.SetImageMinMax(fMin, fMax);
    objPalette.setLogScale(bLog ? 1 : 0);
    objPalette.setReversed(bReversed ? 1 : 0);
    return objPalette;
}

int lightnessOf(QRgb nColor)
{
    return qRed(nColor) * 299 + qGreen(nColor) * 587 + qBlue(nColor) * 114;
}
} // namespace

class TestPalette : public QObject
{
    Q_OBJECT

private slots:
    // ---- Tables ---------------------------------------------------------------------------------------------------

    void placesNamesAndTypesOfTheVolumeTables_data()
    {
        QTest::addColumn<int>("nPosition");
        QTest::addColumn<QString>("strName");
        QTest::addColumn<int>("nType");
        QTest::newRow("0") << 0 << "Grays" << 0;
        QTest::newRow("1") << 1 << "Red" << 8;
        QTest::newRow("2") << 2 << "Green" << 9;
        QTest::newRow("3") << 3 << "Blue" << 10;
        QTest::newRow("4") << 4 << "Cyan" << 11;
        QTest::newRow("5") << 5 << "Yellow" << 12;
        QTest::newRow("6") << 6 << "Magenta" << 13;
        QTest::newRow("7") << 7 << "Orange" << 14;
        QTest::newRow("8") << 8 << "BlueYellow" << 23;
        QTest::newRow("9") << 9 << "EosB" << 25;
        QTest::newRow("10") << 10 << "GreenPink" << 24;
        QTest::newRow("11") << 11 << "Rainbow" << 1;
        QTest::newRow("12") << 12 << "Jet" << 26;
    }

    void placesNamesAndTypesOfTheVolumeTables()
    {
        QFETCH(int, nPosition);
        QFETCH(QString, strName);
        QFETCH(int, nType);
        const auto eType = static_cast<ORM_COLORTABLE_TYPES>(nType);
        QCOMPARE(OrmColorTables::volumeTableNames().size(), 13);
        QCOMPARE(OrmColorTables::volumeTableNames().at(nPosition), strName);
        QCOMPARE(static_cast<int>(OrmColorTables::typeForPosition(nPosition)), nType);
        QCOMPARE(OrmColorTables::positionForType(eType), nPosition);
        QCOMPARE(getCTNameForColorTable(eType), strName);
        QVERIFY(OrmColorTables::isKnownType(eType));
    }

    void placesOutsideTheListGiveRed()
    {
        QCOMPARE(static_cast<int>(OrmColorTables::typeForPosition(-1)), 8);
        QCOMPARE(static_cast<int>(OrmColorTables::typeForPosition(13)), 8);
    }

    void unknownTypesHaveNoNameAndLookLikeGrays()
    {
        const auto eUnknown = static_cast<ORM_COLORTABLE_TYPES>(7);
        QCOMPARE(getCTNameForColorTable(eUnknown), QString());
        QVERIFY(!OrmColorTables::isKnownType(eUnknown));
        QCOMPARE(OrmColorTables::positionForType(eUnknown), -1);
        QVERIFY(OrmColorTables::table(eUnknown) == OrmColorTables::table(ORM_CT_GRAYS));
    }

    void surfaceTableIsALightRampOfLowChroma()
    {
        QCOMPARE(getCTNameForColorTable(ORM_CT_SURFACE), QStringLiteral("Surface"));
        QCOMPARE(OrmColorTables::positionForType(ORM_CT_SURFACE), -1);
        const OrmColorTables::Table& arrTable = OrmColorTables::table(ORM_CT_SURFACE);
        QCOMPARE(arrTable.front(), qRgb(158, 158, 168));
        QCOMPARE(arrTable.back(), qRgb(255, 255, 255));
        for (std::size_t i = 1; i < arrTable.size(); ++i)
        {
            QVERIFY(lightnessOf(arrTable[i]) >= lightnessOf(arrTable[i - 1]));
            QVERIFY(qBlue(arrTable[i]) - qRed(arrTable[i]) <= 11);
        }
    }

    void rampsAreLinearInLight_data()
    {
        QTest::addColumn<int>("nType");
        QTest::addColumn<QColor>("clrEnd");
        QTest::newRow("Grays") << 0 << QColor(255, 255, 255);
        QTest::newRow("Red") << 8 << QColor(255, 0, 0);
        QTest::newRow("Green") << 9 << QColor(0, 255, 0);
        QTest::newRow("Blue") << 10 << QColor(0, 0, 255);
        QTest::newRow("Cyan") << 11 << QColor(0, 255, 255);
        QTest::newRow("Yellow") << 12 << QColor(255, 255, 0);
        QTest::newRow("Magenta") << 13 << QColor(255, 0, 255);
        QTest::newRow("Orange") << 14 << QColor(255, 128, 0);
    }

    void rampsAreLinearInLight()
    {
        QFETCH(int, nType);
        QFETCH(QColor, clrEnd);
        const OrmColorTables::Table& arrTable = OrmColorTables::table(static_cast<ORM_COLORTABLE_TYPES>(nType));
        QCOMPARE(arrTable.front(), qRgb(0, 0, 0));
        QCOMPARE(arrTable.back(), clrEnd.rgb());
        for (int i = 0; i < 256; ++i)
        {
            const double fCode = std::pow(i / 255.0, 1.0 / 2.2);
            const QRgb nColor = arrTable[static_cast<std::size_t>(i)];
            QVERIFY(std::fabs(qRed(nColor) - clrEnd.red() * fCode) <= 1.0);
            QVERIFY(std::fabs(qGreen(nColor) - clrEnd.green() * fCode) <= 1.0);
            QVERIFY(std::fabs(qBlue(nColor) - clrEnd.blue() * fCode) <= 1.0);
        }
    }

    void colorsOfTheOtherTables_data()
    {
        QTest::addColumn<int>("nType");
        QTest::addColumn<double>("fFraction");
        QTest::addColumn<QColor>("clrExpected");
        const int nRainbow = 1;
        QTest::newRow("Rainbow begins blue") << nRainbow << 0.0 << QColor(0, 0, 255);
        QTest::newRow("Rainbow, a quarter, cyan") << nRainbow << 0.25 << QColor(0, 255, 255);
        QTest::newRow("Rainbow, middle, green") << nRainbow << 0.5 << QColor(0, 255, 0);
        QTest::newRow("Rainbow, three quarters, yellow") << nRainbow << 0.75 << QColor(255, 255, 0);
        QTest::newRow("Rainbow ends red") << nRainbow << 1.0 << QColor(255, 0, 0);
        const int nJet = 26;
        QTest::newRow("Jet begins dark blue") << nJet << 0.0 << QColor(0, 0, 128);
        QTest::newRow("Jet, three eighths, cyan") << nJet << 0.375 << QColor(0, 255, 255);
        QTest::newRow("Jet, five eighths, yellow") << nJet << 0.625 << QColor(255, 255, 0);
        QTest::newRow("Jet ends dark red") << nJet << 1.0 << QColor(128, 0, 0);
        const int nBlueYellow = 23;
        QTest::newRow("BlueYellow begins as published") << nBlueYellow << 0.0 << QColor(0x08, 0x1d, 0x58);
        QTest::newRow("BlueYellow, middle, as published") << nBlueYellow << 0.5 << QColor(0x41, 0xb6, 0xc4);
        QTest::newRow("BlueYellow ends as published") << nBlueYellow << 1.0 << QColor(0xff, 0xff, 0xd9);
        const int nGreenPink = 24;
        QTest::newRow("GreenPink begins as published") << nGreenPink << 0.0 << QColor(0x27, 0x64, 0x19);
        QTest::newRow("GreenPink, a fifth, as published") << nGreenPink << 0.2 << QColor(0x7f, 0xbc, 0x41);
        QTest::newRow("GreenPink, middle, as published") << nGreenPink << 0.5 << QColor(0xf7, 0xf7, 0xf7);
        QTest::newRow("GreenPink ends as published") << nGreenPink << 1.0 << QColor(0x8e, 0x01, 0x52);
        const int nEosB = 25;
        QTest::newRow("EosB begins dark blue, entry 4 of the published table") << nEosB << 0.0 << QColor(53, 30, 88);
        QTest::newRow("EosB, entry 184 of the published table") << nEosB << 180.0 / 220.0 << QColor(254, 150, 43);
        QTest::newRow("EosB ends red, entry 224 of the published table") << nEosB << 1.0 << QColor(208, 47, 5);
    }

    void colorsOfTheOtherTables()
    {
        QFETCH(int, nType);
        QFETCH(double, fFraction);
        QFETCH(QColor, clrExpected);
        const QColor clrSeen(OrmColorTables::colorAt(static_cast<ORM_COLORTABLE_TYPES>(nType), fFraction));
        const QString strSeen = clrSeen.name();
        QVERIFY2(std::abs(clrSeen.red() - clrExpected.red()) <= 1, qPrintable(strSeen));
        QVERIFY2(std::abs(clrSeen.green() - clrExpected.green()) <= 1, qPrintable(strSeen));
        QVERIFY2(std::abs(clrSeen.blue() - clrExpected.blue()) <= 1, qPrintable(strSeen));
    }

    void everyTableIsSmoothAndItsOwn()
    {
        QList<OrmColorTables::Table> lstSeen;
        for (int i = 0; i < OrmColorTables::nVolumeTables; ++i)
        {
            const OrmColorTables::Table& arrTable = OrmColorTables::table(OrmColorTables::typeForPosition(i));
            QVERIFY(!lstSeen.contains(arrTable));
            lstSeen.append(arrTable);
            for (std::size_t j = 0; j < arrTable.size(); ++j)
                QCOMPARE(qAlpha(arrTable[j]), 255);
            for (std::size_t j = 4; j < arrTable.size(); ++j) // the ramps begin steeply by nature
            {
                QVERIFY(std::abs(qRed(arrTable[j]) - qRed(arrTable[j - 1])) <= 10);
                QVERIFY(std::abs(qGreen(arrTable[j]) - qGreen(arrTable[j - 1])) <= 10);
                QVERIFY(std::abs(qBlue(arrTable[j]) - qBlue(arrTable[j - 1])) <= 10);
            }
        }
    }

    void fractionsOutsideATableAreClamped()
    {
        QCOMPARE(OrmColorTables::colorAt(ORM_CT_JET, -3.0), OrmColorTables::table(ORM_CT_JET).front());
        QCOMPARE(OrmColorTables::colorAt(ORM_CT_JET, 7.0), OrmColorTables::table(ORM_CT_JET).back());
        QCOMPARE(OrmColorTables::colorAt(ORM_CT_JET, fNan), OrmColorTables::table(ORM_CT_JET).front());
    }

    // ---- Scale ----------------------------------------------------------------------------------------------------

    void placesOfValues_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<bool>("bLog");
        QTest::addColumn<double>("fValue");
        QTest::addColumn<double>("fPosition");
        QTest::addColumn<bool>("bBelow");
        QTest::newRow("minimum") << 10.0 << 20.0 << false << 10.0 << 0.0 << false;
        QTest::newRow("between") << 10.0 << 20.0 << false << 12.5 << 0.25 << false;
        QTest::newRow("maximum") << 10.0 << 20.0 << false << 20.0 << 1.0 << false;
        QTest::newRow("below") << 10.0 << 20.0 << false << 9.0 << 0.0 << true;
        QTest::newRow("above") << 10.0 << 20.0 << false << 21.0 << 1.0 << false;
        QTest::newRow("not a number") << 10.0 << 20.0 << false << fNan << 0.0 << true;
        QTest::newRow("infinite") << 10.0 << 20.0 << false << fInfinity << 1.0 << false;
        QTest::newRow("minus infinite") << 10.0 << 20.0 << false << -fInfinity << 0.0 << true;
        QTest::newRow("through zero") << -1.0 << 1.0 << false << 0.0 << 0.5 << false;
        QTest::newRow("downwards, lower end") << 20.0 << 10.0 << false << 20.0 << 0.0 << false;
        QTest::newRow("downwards, between") << 20.0 << 10.0 << false << 12.5 << 0.75 << false;
        QTest::newRow("downwards, below both") << 20.0 << 10.0 << false << 9.0 << 1.0 << true;
        QTest::newRow("one value, the value") << 5.0 << 5.0 << false << 5.0 << 0.5 << false;
        QTest::newRow("one value, less") << 5.0 << 5.0 << false << 4.0 << 0.0 << true;
        QTest::newRow("one value, more") << 5.0 << 5.0 << false << 6.0 << 1.0 << false;
        QTest::newRow("log, minimum") << 1.0 << 1e4 << true << 1.0 << 0.0 << false;
        QTest::newRow("log, a decade") << 1.0 << 1e4 << true << 10.0 << 0.25 << false;
        QTest::newRow("log, maximum") << 1.0 << 1e4 << true << 1e4 << 1.0 << false;
        QTest::newRow("log, below") << 1.0 << 1e4 << true << 0.5 << 0.0 << true;
        QTest::newRow("log, zero") << 1.0 << 1e4 << true << 0.0 << 0.0 << true;
        QTest::newRow("log, negative") << 1.0 << 1e4 << true << -7.0 << 0.0 << true;
        QTest::newRow("log, not a number") << 1.0 << 1e4 << true << fNan << 0.0 << true;
        QTest::newRow("log, minimum 0: begins at a thousandth") << 0.0 << 1000.0 << true << 1.0 << 0.0 << false;
        QTest::newRow("log, minimum 0: a third") << 0.0 << 1000.0 << true << 10.0 << 1.0 / 3.0 << false;
        QTest::newRow("log, minimum 0: zero itself") << 0.0 << 1000.0 << true << 0.0 << 0.0 << true;
        QTest::newRow("log, minimum below 0") << -5.0 << 1000.0 << true << 100.0 << 2.0 / 3.0 << false;
        QTest::newRow("log, downwards") << 1e4 << 1.0 << true << 10.0 << 0.75 << false;
        QTest::newRow("log, downwards, zero") << 1e4 << 1.0 << true << 0.0 << 1.0 << true;
        QTest::newRow("log, downwards to 0") << 1000.0 << 0.0 << true << 1.0 << 1.0 << false;
        QTest::newRow("log, nothing above 0: linear") << -10.0 << 0.0 << true << -5.0 << 0.5 << false;
        QTest::newRow("log, one value") << 5.0 << 5.0 << true << 5.0 << 0.5 << false;
        QTest::newRow("log, no result") << -1.0 << -1.0 << true << -1.0 << 0.5 << false;
    }

    void placesOfValues()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(bool, bLog);
        QFETCH(double, fValue);
        QFETCH(double, fPosition);
        QFETCH(bool, bBelow);
        const COrmPalette objPalette = paletteOf(ORM_CT_JET, fMin, fMax, bLog);
        QVERIFY2(std::fabs(objPalette.position(fValue) - fPosition) < 1e-12, qPrintable(QString::number(objPalette.position(fValue))));
        QCOMPARE(objPalette.isBelowRange(fValue), bBelow);
        QCOMPARE(objPalette.colorForValue(fValue), objPalette.lut()[qRound(fPosition * 255.0)]);
    }

    void manyValuesGetTheSameColorsAsOneByOne()
    {
        std::vector<float> vecValues = {
            0.0f, -1.0f, static_cast<float>(fNan), static_cast<float>(fInfinity), static_cast<float>(-fInfinity), 1e-45f, 3e38f};
        for (int i = 0; i < 5000; ++i)
            vecValues.push_back(0.01f * static_cast<float>(i * i));
        for (const bool bLog : {false, true})
        {
            for (const auto& [fMin, fMax] : {std::pair(0.0, 250000.0), std::pair(21.0, 2.5e5), std::pair(900.0, 3.0), std::pair(5.0, 5.0)})
            {
                const COrmPalette objPalette = paletteOf(ORM_CT_EOSB, fMin, fMax, bLog, true, 0.1f, 0.8f);
                std::vector<QRgb> vecColors(vecValues.size());
                objPalette.colorsForValues(vecValues.data(), static_cast<qint64>(vecValues.size()), vecColors.data());
                for (std::size_t i = 0; i < vecValues.size(); ++i)
                    QCOMPARE(vecColors[i], objPalette.colorForValue(static_cast<double>(vecValues[i])));
            }
        }
    }

    void valuesAtPlacesAreTheReverse_data()
    {
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<bool>("bLog");
        QTest::newRow("linear") << 21.0 << 2.5e5 << false;
        QTest::newRow("log") << 21.0 << 2.5e5 << true;
        QTest::newRow("log from 0") << 0.0 << 2.5e5 << true;
        QTest::newRow("downwards") << 7.0 << -3.0 << false;
        QTest::newRow("log, downwards") << 7.0 << 0.01 << true;
    }

    void valuesAtPlacesAreTheReverse()
    {
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(bool, bLog);
        const SRange sRange = {fMin, fMax, bLog};
        for (int i = 0; i <= 100; ++i)
            QVERIFY(std::fabs(OrmColorScale::position(sRange, OrmColorScale::valueAt(sRange, i / 100.0)) - i / 100.0) < 1e-9);
    }

    void floatsBecomeIndexesWithoutLeavingTheTable_data()
    {
        QTest::addColumn<double>("fValue");
        QTest::addColumn<int>("nExpected");
        QTest::newRow("rounded down") << 3.4 << 3;
        QTest::newRow("rounded up") << 3.5 << 4;
        QTest::newRow("negative") << -1.0 << 0;
        QTest::newRow("last") << 255.0 << 255;
        QTest::newRow("beyond") << 1e30 << 255;
        QTest::newRow("infinite") << fInfinity << 255;
        QTest::newRow("minus infinite") << -fInfinity << 0;
        QTest::newRow("not a number") << fNan << 0;
    }

    void floatsBecomeIndexesWithoutLeavingTheTable()
    {
        QFETCH(double, fValue);
        QFETCH(int, nExpected);
        QCOMPARE(OrmColorScale::toIndex(fValue, 256), nExpected);
    }

    // ---- Palette --------------------------------------------------------------------------------------------------

    void aNewPaletteShowsGraysFrom0To1()
    {
        const COrmPalette objPalette;
        QCOMPARE(static_cast<int>(objPalette.colorTableType()), 0);
        QCOMPARE(objPalette.getColorTableLow(), 0.0f);
        QCOMPARE(objPalette.getColorTableHigh(), 1.0f);
        QCOMPARE(objPalette.imageMin(), 0.0);
        QCOMPARE(objPalette.imageMax(), 1.0);
        QCOMPARE(objPalette.reversed(), 0);
        QCOMPARE(objPalette.logScale(), 0);
        QCOMPARE(objPalette.lut()[0], qRgb(0, 0, 0));
        QCOMPARE(objPalette.lut()[255], qRgb(255, 255, 255));
    }

    void setColorTableTypeStoresItsThreeFields()
    {
        COrmPalette objPalette;
        objPalette.setColorTableType(ORM_CT_JET, 0.25f, 0.75f);
        QCOMPARE(static_cast<int>(objPalette.m_eColorTableType), 26);
        QCOMPARE(objPalette.m_fColorTableLow, 0.25f);
        QCOMPARE(objPalette.m_fColorTableHigh, 0.75f);
        QCOMPARE(objPalette.colorTableType(), ORM_CT_JET);
        QCOMPARE(objPalette.getColorTableLow(), 0.25f);
        QCOMPARE(objPalette.getColorTableHigh(), 0.75f);
    }

    void setCLUTinfoTakesTheStoredFields()
    {
        COrmPalette objPalette;
        objPalette.m_eColorTableType = ORM_CT_ORANGE;
        QCOMPARE(objPalette.lut()[255], qRgb(255, 255, 255));
        objPalette.setCLUTinfo();
        QCOMPARE(objPalette.lut()[255], qRgb(255, 128, 0));
    }

    void wholeTableIsTakenEntryByEntry()
    {
        for (int i = 0; i < OrmColorTables::nVolumeTables; ++i)
        {
            const ORM_COLORTABLE_TYPES eType = OrmColorTables::typeForPosition(i);
            const COrmPalette objPalette = paletteOf(eType, 0.0, 1.0);
            const COrmPalette objReversed = paletteOf(eType, 0.0, 1.0, false, true);
            for (std::size_t j = 0; j < 256; ++j)
            {
                QCOMPARE(objPalette.lut()[j], OrmColorTables::table(eType)[j]);
                QCOMPARE(objReversed.lut()[j], OrmColorTables::table(eType)[255 - j]);
            }
        }
    }

    void spannedTables_data()
    {
        QTest::addColumn<float>("fLow");
        QTest::addColumn<float>("fHigh");
        QTest::addColumn<bool>("bReversed");
        QTest::addColumn<double>("fPosition");
        QTest::addColumn<double>("fFraction"); // of the table
        QTest::newRow("below the low end") << 0.2f << 0.6f << false << 0.1 << 0.0;
        QTest::newRow("at the low end") << 0.2f << 0.6f << false << 0.2 << 0.0;
        QTest::newRow("stretched between") << 0.2f << 0.6f << false << 0.4 << 0.5;
        QTest::newRow("at the high end") << 0.2f << 0.6f << false << 0.6 << 1.0;
        QTest::newRow("above the high end") << 0.2f << 0.6f << false << 0.9 << 1.0;
        QTest::newRow("reversed, below") << 0.2f << 0.6f << true << 0.1 << 1.0;
        QTest::newRow("reversed, between") << 0.2f << 0.6f << true << 0.3 << 0.75;
        QTest::newRow("reversed, above") << 0.2f << 0.6f << true << 0.9 << 0.0;
        QTest::newRow("empty span, below") << 0.4f << 0.4f << false << 0.2 << 0.0;
        QTest::newRow("empty span, above") << 0.4f << 0.4f << false << 0.6 << 1.0;
        QTest::newRow("wrong order, below the low end") << 0.6f << 0.2f << false << 0.4 << 0.0;
        QTest::newRow("wrong order, above the low end") << 0.6f << 0.2f << false << 0.8 << 1.0;
        QTest::newRow("ends outside") << -1.0f << 2.0f << false << 0.4 << 0.4;
        QTest::newRow("ends not numbers") << std::numeric_limits<float>::quiet_NaN() << std::numeric_limits<float>::quiet_NaN() << false
                                          << 0.4 << 0.4;
    }

    void spannedTables()
    {
        QFETCH(float, fLow);
        QFETCH(float, fHigh);
        QFETCH(bool, bReversed);
        QFETCH(double, fPosition);
        QFETCH(double, fFraction);
        const COrmPalette objPalette = paletteOf(ORM_CT_SURFACE, 0.0, 1000.0, false, bReversed, fLow, fHigh);
        const QRgb nSeen = objPalette.colorForValue(fPosition * 1000.0);
        const QRgb nExpected = OrmColorTables::colorAt(ORM_CT_SURFACE, fFraction);
        QVERIFY2(std::abs(qRed(nSeen) - qRed(nExpected)) <= 1, qPrintable(QStringLiteral("%1 %2").arg(nSeen, 0, 16).arg(nExpected, 0, 16)));
    }

    void spanOnALogScaleIsInDecades()
    {
        const COrmPalette objPalette = paletteOf(ORM_CT_GRAYS, 1.0, 1e4, true, false, 0.25f, 0.75f);
        QCOMPARE(objPalette.colorForValue(9.0), qRgb(0, 0, 0));
        QCOMPARE(objPalette.colorForValue(1100.0), qRgb(255, 255, 255));
        const QRgb nMiddle = objPalette.colorForValue(100.0);
        QVERIFY(qRed(nMiddle) > 0 && qRed(nMiddle) < 255);
    }

    void rangesThatAreNoNumbersAreRefusedAndLogged()
    {
        COrmPalette objPalette = paletteOf(ORM_CT_JET, 2.0, 3.0);
        const quint64 nBefore = COrmPalette::changeCount();
        const CLogged objLogged;
        objPalette.SetImageMinMax(fNan, 1.0);
        objPalette.SetImageMinMax(0.0, fInfinity);
        QCOMPARE(objPalette.imageMin(), 2.0);
        QCOMPARE(objPalette.imageMax(), 3.0);
        QCOMPARE(COrmPalette::changeCount(), nBefore);
        QCOMPARE(objLogged.m_lstEntries.size(), 2);
        QVERIFY(objLogged.m_lstEntries.first().strMessage.contains(QStringLiteral("finite")));
        QVERIFY(objLogged.m_lstEntries.first().nLine > 0);
    }

    void flagsAreKeptAsGiven()
    {
        COrmPalette objPalette;
        objPalette.setReversed(2);
        objPalette.setLogScale(-1);
        QCOMPARE(objPalette.reversed(), 2);
        QCOMPARE(objPalette.logScale(), -1);
        QVERIFY(objPalette.range().m_bLog);
        QCOMPARE(objPalette.lut()[0], qRgb(255, 255, 255));
    }

    void copiesAreIndependent()
    {
        COrmPalette objOriginal = paletteOf(ORM_CT_JET, 1.0, 100.0, true, true, 0.1f, 0.9f);
        COrmPalette objCopy = objOriginal;
        QCOMPARE(objCopy.lut(), objOriginal.lut()); // shared until one is written
        objOriginal.setColorTableType(ORM_CT_RED, 0.0f, 1.0f);
        objOriginal.SetImageMinMax(5.0, 6.0);
        objOriginal.setLogScale(0);
        objOriginal.setReversed(0);
        QCOMPARE(objCopy.colorTableType(), ORM_CT_JET);
        QCOMPARE(objCopy.getColorTableLow(), 0.1f);
        QCOMPARE(objCopy.imageMin(), 1.0);
        QCOMPARE(objCopy.imageMax(), 100.0);
        QCOMPARE(objCopy.logScale(), 1);
        QCOMPARE(objCopy.reversed(), 1);
        QCOMPARE(objCopy.lut()[0], qRgb(128, 0, 0));
        QCOMPARE(objOriginal.lut()[255], qRgb(255, 0, 0));
        objCopy = objOriginal;
        QCOMPARE(objCopy.lut()[255], qRgb(255, 0, 0));
        QCOMPARE(objCopy.imageMax(), 6.0);
    }

    void changeCountMovesOnlyWhenAValueReallyChanges()
    {
        COrmPalette objPalette = paletteOf(ORM_CT_JET, 1.0, 100.0);
        quint64 nCount = COrmPalette::changeCount();
        const auto fnMoved = [&nCount]()
        {
            const quint64 nBefore = nCount;
            nCount = COrmPalette::changeCount();
            return nCount - nBefore;
        };

        objPalette.SetImageMinMax(1.0, 100.0);
        objPalette.setColorTableType(ORM_CT_JET, 0.0f, 1.0f);
        objPalette.setCLUTinfo();
        objPalette.setReversed(0);
        objPalette.setLogScale(0);
        QCOMPARE(fnMoved(), quint64(0));

        COrmPalette objCopy(objPalette);
        const COrmPalette objDefault;
        objCopy = objDefault;
        objCopy = objPalette;
        QCOMPARE(fnMoved(), quint64(0));

        objPalette.SetImageMinMax(1.0, 101.0);
        QCOMPARE(fnMoved(), quint64(1));
        objPalette.SetImageMinMax(2.0, 101.0);
        QCOMPARE(fnMoved(), quint64(1));
        objPalette.setColorTableType(ORM_CT_RED, 0.0f, 1.0f);
        QCOMPARE(fnMoved(), quint64(1));
        objPalette.setColorTableType(ORM_CT_RED, 0.0f, 0.5f);
        QCOMPARE(fnMoved(), quint64(1));
        objPalette.setReversed(1);
        QCOMPARE(fnMoved(), quint64(1));
        objPalette.setReversed(2);
        QCOMPARE(fnMoved(), quint64(0));
        objPalette.setLogScale(1);
        QCOMPARE(fnMoved(), quint64(1));
        objPalette.setLogScale(3);
        QCOMPARE(fnMoved(), quint64(0));
        objPalette.setColorTableType(ORM_CT_RED, -1.0f, 0.5f); // clamped, looks the same
        QCOMPARE(fnMoved(), quint64(0));
    }
};

QTEST_APPLESS_MAIN(TestPalette)
#include "tst_palette.moc"
