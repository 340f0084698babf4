#include "C3DVolume.h"
#include "CVoxelLattice.h"
#include "OrmColorTables.h"
#include "ResultText.h"
#include "VolumeRow.h"

#include <QRandomGenerator>
#include <QtTest>

#include <limits>
#include <set>

using ResultText::CLogLines;

namespace
{
using Voxel = C3DVolume::Voxel;
} // namespace

class tst_volume : public QObject
{
    Q_OBJECT

private slots:
    void voxelDataIsCopiedAndItsNumbersKept();
    void voxelDataThatCannotBeIsRefused_data();
    void voxelDataThatCannotBeIsRefused();
    void separateArraysAreTheVoxels();
    void arraysOfDifferentLengthsAreRefused();
    void newValuesKeepThePlaces();
    void sharedVoxelsHaveNumbersOfTheirOwn();
    void lowestAndHighestAreWhatWasGiven();
    void aCopySharesItsVoxels();
    void marksAreEachCopysOwn();
    void totalsAreSummedInDoublePrecision();
    void totalsOfAnyLengthAreThoseOfAPlainSum();
    void marksFollowNumbersInAnyOrder();
    void aNameBeyondThirtyTwoBitsStillFindsItsVoxel();
    void theTableIsTheOneAtThatPlaceInTheList_data();
    void theTableIsTheOneAtThatPlaceInTheList();
    void thresholdReturnsToItsDefault();
    void fieldsAndSettersAreThePalettesOwn();
    void latticeFindsCells();
    void subdivisionFollowsTheVoxelSize();
};

void tst_volume::voxelDataIsCopiedAndItsNumbersKept()
{
    C3DVolume objVolume{QString()};
    Voxel asVoxels[2] = {{1, 2, 3, 77, 4.5f}, {2, 2, 3, 5, 0.5f}};
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(objVolume.loadVoxelData(1.0f, 2, asVoxels, 0.5f, 4.5f));
    asVoxels[0].fValue = 0.0f;
    QCOMPARE(objVolume.getVoxelByNum(0)->fValue, 4.5f);
    QCOMPARE(objVolume.getVoxelByNum(0)->nID, 77L);
    QCOMPARE(objVolume.getVoxelByNum(1)->nID, 5L);
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext);
    // Its own voxels are as good as any other's.
    QVERIFY(objVolume.loadVoxelData(2.0f, 1, objVolume.getVoxelByNum(1), 0.5f, 0.5f));
    QCOMPARE(objVolume.getNoOfVoxels(), 1L);
    QCOMPARE(objVolume.getVoxelByNum(0)->nID, 5L);
    QCOMPARE(objVolume.getVoxelSize(), 2.0f);
    QVERIFY(objVolume.loadVoxelData(2.0f, 0, nullptr, 0.0f, 0.0f));
    QCOMPARE(objVolume.getNoOfVoxels(), 0L);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), 0.0f);
}

void tst_volume::voxelDataThatCannotBeIsRefused_data()
{
    QTest::addColumn<float>("fSize");
    QTest::addColumn<qulonglong>("nCount");
    QTest::addColumn<bool>("bArray");
    QTest::newRow("no array") << 1.0f << qulonglong(1) << false;
    QTest::newRow("size 0") << 0.0f << qulonglong(1) << true;
    QTest::newRow("size below 0") << -1.0f << qulonglong(1) << true;
    QTest::newRow("size of no number") << std::numeric_limits<float>::quiet_NaN() << qulonglong(1) << true;
    QTest::newRow("infinite size") << std::numeric_limits<float>::infinity() << qulonglong(1) << true;
    QTest::newRow("more than can be held") << 1.0f << (qulonglong(1) << 63) << true;
}

void tst_volume::voxelDataThatCannotBeIsRefused()
{
    QFETCH(float, fSize);
    QFETCH(qulonglong, nCount);
    QFETCH(bool, bArray);
    C3DVolume objVolume = volumeRow({1.0f, 2.0f, 3.0f});
    Voxel sVoxel = {0, 0, 0, 1, 1.0f};
    QVERIFY(!objVolume.loadVoxelData(fSize, nCount, bArray ? &sVoxel : nullptr, 1.0f, 1.0f));
    QCOMPARE(objVolume.getNoOfVoxels(), 3L);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), 6.0f);
}

void tst_volume::separateArraysAreTheVoxels()
{
    C3DVolume objVolume{QString()};
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(objVolume.takeVoxels(0.5f, {{1, 4, 7, 2, 5, 8, 3, 6, 9}, {10, 20, 30}}, 10.0f, 30.0f));
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext + 3);
    QCOMPARE(objVolume.getNoOfVoxels(), 3L);
    QCOMPARE(objVolume.getVoxelSize(), 0.5f);
    QCOMPARE(objVolume.getAttribMaxValue(), 30.0f);
    QCOMPARE(objVolume.m_objPalette.imageMax(), 30.0);
    QCOMPARE(objVolume.voxels().size(), 3);
    for (int i = 0; i < 3; ++i)
    {
        const Voxel* pVoxel = objVolume.getVoxelByNum(i);
        QCOMPARE(pVoxel, objVolume.voxels().constData() + i); // made once
        QCOMPARE(pVoxel->x, 1.0f + static_cast<float>(i));
        QCOMPARE(pVoxel->y, 4.0f + static_cast<float>(i));
        QCOMPARE(pVoxel->z, 7.0f + static_cast<float>(i));
        QCOMPARE(pVoxel->nID, nNext + i);
        QCOMPARE(pVoxel->fValue, 10.0f * static_cast<float>(i + 1));
    }
    objVolume.addToVoxelSelection(nNext + 1);
    QVERIFY(objVolume.isVoxelSelected(1) && !objVolume.isVoxelSelected(0) && !objVolume.isVoxelSelected(3));
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 20.0f);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), 60.0f);

    // Records become the same arrays.
    const C3DVolume objRow = volumeRow({5.0f, 6.0f});
    QVERIFY(objRow.values() == (OrmArray<float>{5.0f, 6.0f}));
    QVERIFY(objRow.positions() == (OrmArray<float>{0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f}));
}

void tst_volume::arraysOfDifferentLengthsAreRefused()
{
    C3DVolume objVolume = volumeRow({5.0f, 6.0f});
    const long nNext = C3DSGNode::m_nObjectCount;
    const CLogLines objLog;
    QVERIFY(!objVolume.takeVoxels(1.0f, {{1, 4, 7, 2, 5, 8, 3, 6}, {10, 20, 30}}, 10.0f, 30.0f));
    QVERIFY(!objVolume.takeVoxels(1.0f, {{1, 4, 7}, {}}, 0.0f, 0.0f));
    QVERIFY(!objVolume.takeVoxels(0.0f, {{1, 4, 7}, {10}}, 10.0f, 10.0f));
    QVERIFY(!objVolume.takeValues({1.0f, 2.0f, 3.0f}, 1.0f, 3.0f));
    QVERIFY(!objVolume.takeValues({}, 0.0f, 0.0f));
    QCOMPARE(objLog.lines().size(), 5);
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext);
    QCOMPARE(objVolume.getNoOfVoxels(), 2L);
    QCOMPARE(objVolume.getVoxelByNum(1)->fValue, 6.0f);
    QCOMPARE(objVolume.getAttribMaxValue(), 6.0f);
}

void tst_volume::newValuesKeepThePlaces()
{
    C3DVolume objVolume = volumeRow({5.0f, 6.0f, 7.0f});
    objVolume.addToVoxelSelection(1001);
    C3DVolume objRaw(objVolume);
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(objVolume.takeValues({0.5f, 0.25f, 0.75f}, 0.25f, 0.75f));
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext + 3);
    QCOMPARE(objVolume.positions().data(), objRaw.positions().data()); // shared
    QCOMPARE(objVolume.getVoxelByNum(2)->x, 2.0f);
    QCOMPARE(objVolume.getVoxelByNum(2)->fValue, 0.75f);
    QCOMPARE(objVolume.getVoxelByNum(2)->nID, nNext + 2);
    QCOMPARE(objVolume.getAttribMinValue(), 0.25f);
    QCOMPARE(objVolume.m_objPalette.imageMax(), 0.75);
    QCOMPARE(objVolume.getVoxelSize(), 1.0f);
    QVERIFY(!objVolume.isVoxelSelected(1));
    QVERIFY(objRaw.isVoxelSelected(1));
    QCOMPARE(objRaw.getVoxelByNum(2)->fValue, 7.0f);
}

void tst_volume::sharedVoxelsHaveNumbersOfTheirOwn()
{
    const C3DVolume objRaw = volumeRow({5.0f, 6.0f, 7.0f});
    C3DVolume objVolume = volumeRow({1.0f});
    objVolume.setMIP(true);
    objVolume.addToVoxelSelection(1000);
    const long nNext = C3DSGNode::m_nObjectCount;
    objVolume.shareVoxels(objRaw);
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext + 3);
    QCOMPARE(objVolume.positions().data(), objRaw.positions().data());
    QCOMPARE(objVolume.values().data(), objRaw.values().data());
    QCOMPARE(objVolume.getNoOfVoxels(), 3L);
    QCOMPARE(objVolume.getVoxelByNum(2)->fValue, 7.0f);
    QCOMPARE(objVolume.getVoxelByNum(2)->nID, nNext + 2);
    QCOMPARE(objRaw.voxels().at(2).nID, 1002L);
    QCOMPARE(objVolume.getAttribMinValue(), objRaw.getAttribMinValue());
    QCOMPARE(objVolume.getAttribMaxValue(), objRaw.getAttribMaxValue());
    QCOMPARE(objVolume.m_objPalette.imageMax(), static_cast<double>(objRaw.getAttribMaxValue()));
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 0.0f);
    QVERIFY(objVolume.m_bMIP);
}

void tst_volume::lowestAndHighestAreWhatWasGiven()
{
    C3DVolume objVolume = volumeRow({1.0f, 2.0f});
    Voxel asVoxels[2] = {{0, 0, 0, 1, 4.0f}, {1, 0, 0, 2, 5.0f}};
    QVERIFY(objVolume.loadVoxelData(1.0f, 2, asVoxels, 0.0f, 50.0f));
    QCOMPARE(objVolume.getAttribMinValue(), 0.0f);
    QCOMPARE(objVolume.getAttribMaxValue(), 50.0f);
    QCOMPARE(objVolume.getColorPalette()->imageMin(), 0.0);
    QCOMPARE(objVolume.getColorPalette()->imageMax(), 50.0);
    // Values that overflowed have no place on a colour scale, which then stays.
    QVERIFY(objVolume.loadVoxelData(1.0f, 2, asVoxels, 0.0f, std::numeric_limits<float>::infinity()));
    QCOMPARE(objVolume.getColorPalette()->imageMax(), 50.0);
}

void tst_volume::aCopySharesItsVoxels()
{
    C3DVolume objVolume = volumeRow({1.0f, 2.0f, 3.0f});
    C3DVolume objCopy(objVolume);
    C3DVolume objAssigned{QString()};
    objAssigned = objVolume;
    QCOMPARE(objCopy.getVoxelByNum(2), objVolume.getVoxelByNum(2));
    QCOMPARE(objAssigned.getVoxelByNum(0), objVolume.getVoxelByNum(0));
    QCOMPARE(objAssigned.name(), QStringLiteral("Source"));
    objCopy.setMIP(true);
    objCopy.setColorMapReversed(1);
    objCopy.show(false);
    QCOMPARE(objCopy.getVoxelByNum(2), objVolume.getVoxelByNum(2)); // fields are each volume's own, the voxels still one
    QVERIFY(!objVolume.m_bMIP && objVolume.m_bShown);
    QCOMPARE(objVolume.m_objPalette.reversed(), 0);
    Voxel sVoxel = {0, 0, 0, 9, 8.0f};
    QVERIFY(objCopy.loadVoxelData(1.0f, 1, &sVoxel, 8.0f, 8.0f));
    QCOMPARE(objVolume.getNoOfVoxels(), 3L);
    QCOMPARE(objVolume.getVoxelByNum(2)->fValue, 3.0f);
    QCOMPARE(objAssigned.getVoxelByNum(2), objVolume.getVoxelByNum(2));
}

void tst_volume::marksAreEachCopysOwn()
{
    C3DVolume objVolume = volumeRow({1.0f, 2.0f, 3.0f});
    objVolume.addToVoxelSelection(1001);
    C3DVolume objCopy(objVolume);
    QCOMPARE(objCopy.getTotalFluxForSelectedVoxels(true), 2.0f);
    objCopy.addToVoxelSelection(1002);
    QCOMPARE(objCopy.getTotalFluxForSelectedVoxels(true), 5.0f);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 2.0f);
    QCOMPARE(objCopy.getVoxelByNum(0), objVolume.getVoxelByNum(0)); // marking is no change of voxels
    objVolume.clearAllVoxelSelection();
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 0.0f);
    QCOMPARE(objCopy.getTotalFluxForSelectedVoxels(true), 5.0f);
    Voxel sVoxel = {0, 0, 0, 1001, 8.0f};
    QVERIFY(objCopy.loadVoxelData(1.0f, 1, &sVoxel, 8.0f, 8.0f));
    QCOMPARE(objCopy.getTotalFluxForSelectedVoxels(true), 0.0f); // new voxels are unmarked
}

void tst_volume::totalsAreSummedInDoublePrecision()
{
    // A million ones after a hundred million: in single precision none of them would count.
    std::vector<float> vecValues(1000001, 1.0f);
    vecValues[0] = 1.0e8f;
    C3DVolume objVolume = volumeRow(vecValues, 1);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), 1.01e8f);
    for (long nID = 1; nID <= 1000001; ++nID)
        objVolume.addToVoxelSelection(nID);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 1.01e8f);

    const float fMost = std::numeric_limits<float>::max();
    C3DVolume objHuge = volumeRow({fMost, fMost, 1.0f});
    QCOMPARE(objHuge.getTotalFluxForSelectedVoxels(false), fMost); // a number even beyond the type
}

void tst_volume::totalsOfAnyLengthAreThoseOfAPlainSum()
{
    QRandomGenerator objRandom(20260805);
    std::vector<float> vecValues;
    double fPlain = 0.0;
    for (int nValues = 1; nValues <= 100; ++nValues)
    {
        const bool bMissing = nValues % 13 == 0;
        vecValues.push_back(bMissing ? (nValues % 2 == 0 ? std::numeric_limits<float>::infinity() : std::numeric_limits<float>::quiet_NaN())
                                     : static_cast<float>(objRandom.bounded(2.0) - 1.0));
        fPlain += bMissing ? 0.0 : static_cast<double>(vecValues.back());
        C3DVolume objVolume = volumeRow(vecValues);
        const double fTotal = objVolume.getTotalFluxForSelectedVoxels(false);
        QVERIFY2(std::fabs(fTotal - fPlain) <= 1e-6 * std::max(1.0, std::fabs(fPlain)),
                 qPrintable(QStringLiteral("%1 values: %2 instead of %3").arg(nValues).arg(fTotal).arg(fPlain)));
    }
}

void tst_volume::marksFollowNumbersInAnyOrder()
{
    QRandomGenerator objRandom(20260801);
    std::set<long> setNumbers;
    while (setNumbers.size() < 500)
        setNumbers.insert(objRandom.bounded(1, 100000));
    std::vector<long> vecNumbers(setNumbers.begin(), setNumbers.end());
    std::shuffle(vecNumbers.begin(), vecNumbers.end(), objRandom);
    QVector<Voxel> vecVoxels;
    for (std::size_t i = 0; i < vecNumbers.size(); ++i)
        vecVoxels.append({static_cast<float>(i), 0, 0, vecNumbers[i], static_cast<float>(i)});
    vecVoxels[499].nID = vecVoxels[0].nID; // two of one number are marked together
    C3DVolume objVolume{QString()};
    QVERIFY(objVolume.loadVoxelData(1.0f, 500, vecVoxels.data(), 0.0f, 499.0f));
    double fExpected = 0.0;
    for (int i = 0; i < 499; i += 7)
    {
        objVolume.addToVoxelSelection(vecVoxels[i].nID);
        objVolume.addToVoxelSelection(vecVoxels[i].nID); // twice is once
        fExpected += i == 0 ? 499.0 : i;
    }
    for (const long nUnknown : {0L, -1L, 100001L})
        objVolume.addToVoxelSelection(nUnknown);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), static_cast<float>(fExpected));
    QVERIFY(objVolume.isVoxelSelected(7) && objVolume.isVoxelSelected(499) && !objVolume.isVoxelSelected(8));
    QVERIFY(!objVolume.isVoxelSelected(-1) && !objVolume.isVoxelSelected(500));
}

void tst_volume::aNameBeyondThirtyTwoBitsStillFindsItsVoxel()
{
    // Names of OpenGL have 32 bits, numbers have 64: the name is what comes back from a selection pass.
    const long nFirst = (1L << 32) - 2;
    C3DVolume objVolume = volumeRow({1.0f, 2.0f, 4.0f, 8.0f}, nFirst);
    objVolume.addToVoxelSelection(static_cast<long>(static_cast<quint32>(nFirst + 3)));
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 8.0f);
    objVolume.addToVoxelSelection(nFirst + 1);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 10.0f);
}

void tst_volume::theTableIsTheOneAtThatPlaceInTheList_data()
{
    QTest::addColumn<int>("nPosition");
    for (int i = 0; i < OrmColorTables::nVolumeTables; ++i)
        QTest::newRow(qPrintable(OrmColorTables::volumeTableNames().at(i))) << i;
}

void tst_volume::theTableIsTheOneAtThatPlaceInTheList()
{
    QFETCH(int, nPosition);
    C3DVolume objVolume{QString()};
    objVolume.setColorTable(nPosition, 0.25f, 0.75f);
    QCOMPARE(getCTNameForColorTable(objVolume.getColorPalette()->colorTableType()), OrmColorTables::volumeTableNames().at(nPosition));
    QCOMPARE(objVolume.m_objPalette.getColorTableLow(), 0.25f);
    QCOMPARE(objVolume.m_objPalette.getColorTableHigh(), 0.75f);
}

void tst_volume::thresholdReturnsToItsDefault()
{
    C3DVolume objVolume{QString()};
    QCOMPARE(objVolume.displayThreshold(), 0.05);
    objVolume.setDisplayThreshold(0.5);
    objVolume.setAllDefaultThreshold(false);
    QCOMPARE(objVolume.displayThreshold(), 0.5);
    objVolume.setAllDefaultThreshold(true);
    QCOMPARE(objVolume.displayThreshold(), 0.05);
    objVolume.setDisplayThreshold(7.0);
    QCOMPARE(objVolume.displayThreshold(), 1.0);
    objVolume.setDisplayThreshold(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(objVolume.displayThreshold(), 0.0);
}

void tst_volume::fieldsAndSettersAreThePalettesOwn()
{
    C3DVolume objVolume{QString()};
    QCOMPARE(objVolume.getColorPalette(), &objVolume.m_objPalette);
    objVolume.setLogScale(1);
    objVolume.setColorMapReversed(3);
    objVolume.setMIP(true);
    objVolume.setAnchor(true);
    objVolume.show(false);
    QCOMPARE(objVolume.m_objPalette.logScale(), 1);
    QCOMPARE(objVolume.m_objPalette.reversed(), 3);
    QVERIFY(objVolume.m_bMIP && objVolume.m_bAnchored && !objVolume.m_bShown);
}

void tst_volume::latticeFindsCells()
{
    CVoxelLattice objLattice;
    QString strReason;
    const QVector<Voxel> vecVoxels = {{10.5f, -2.0f, 3.0f, 1, 1}, {11.0f, -3.0f, 3.0f, 2, 1}, {12.5f, -2.0f, 4.0f, 3, 1}};
    const auto fit = [&](double fPitch) { return objLattice.fit(&vecVoxels[0].x, 3, sizeof(Voxel) / sizeof(float), fPitch, &strReason); };
    QVERIFY2(fit(0.5), qPrintable(strReason));
    QCOMPARE(objLattice.cells(0), qint64(5));
    QCOMPARE(objLattice.cells(1), qint64(3));
    QCOMPARE(objLattice.cells(2), qint64(3));
    QCOMPARE(objLattice.origin(0), 10.5);
    QCOMPARE(objLattice.origin(1), -3.0);
    QCOMPARE(objLattice.cellOf(vecVoxels[0].x, vecVoxels[0].y, vecVoxels[0].z), quint32(2 * 5));
    QCOMPARE(objLattice.cellOf(vecVoxels[1].x, vecVoxels[1].y, vecVoxels[1].z), quint32(1));
    QCOMPARE(objLattice.cellOf(vecVoxels[2].x, vecVoxels[2].y, vecVoxels[2].z), quint32(2 * 15 + 2 * 5 + 4));
    QCOMPARE(objLattice.refinedCellCount(2, 4), qint64(36) * 28 * 28);
    QCOMPARE(objLattice.refinedCellCount(0, 1000000), qint64(-1));
    QCOMPARE(objLattice.refinedCellCount(std::numeric_limits<qint64>::max(), 4), qint64(-1));
    QVERIFY(!fit(0.0));
    QVERIFY(!fit(std::numeric_limits<double>::quiet_NaN()));
}

void tst_volume::subdivisionFollowsTheVoxelSize()
{
    QCOMPARE(CVoxelLattice::subdivision(4.0f), 4);
    QCOMPARE(CVoxelLattice::subdivision(1.0f), 4);
    QCOMPARE(CVoxelLattice::subdivision(0.99999f), 2);
    QCOMPARE(CVoxelLattice::subdivision(0.5f), 2);
    QCOMPARE(CVoxelLattice::subdivision(0.49999f), 1);
}

QTEST_GUILESS_MAIN(tst_volume)
#include "tst_volume.moc"
