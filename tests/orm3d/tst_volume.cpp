#include "C3DVolume.h"
#include "CPLResultXMLWrapper.h"
#include "CVoxelLattice.h"
#include "OrmColorTables.h"
#include "ResultText.h"

#include <QRandomGenerator>
#include <QtTest>

#include <limits>
#include <set>

using ResultText::CFiles;
using ResultText::CLogLines;

namespace
{
using Voxel = C3DVolume::Voxel;

QByteArray attributes(int nCount, const QByteArray& strSize = "1", const QByteArray& strKind = "SOLA")
{
    return "Kind=\"" + strKind + "\" Count=\"" + QByteArray::number(nCount) + "\" VoxelSize=\"" + strSize + "\"";
}

bool load(CFiles& objFiles, C3DVolume& objVolume, const QByteArray& strSections, const QByteArray& strVersion,
          const QString& strKind = QStringLiteral("SOLA"))
{
    CPLResultXMLWrapper objWrapper;
    if (!objWrapper.loadXMLFile(objFiles.write(ResultText::document(strSections, strVersion))))
        QTest::qFail("the test's own document does not open", __FILE__, __LINE__);
    return objVolume.loadFromXML(&objWrapper, strKind);
}

/// A volume in one row along x with these values and numbers from nFirst on.
C3DVolume row(const std::vector<float>& vecValues, long nFirst = 1000)
{
    C3DVolume objVolume(QStringLiteral("Source"));
    QVector<Voxel> vecVoxels;
    for (std::size_t i = 0; i < vecValues.size(); ++i)
        vecVoxels.append({static_cast<float>(i), 0.0f, 0.0f, nFirst + static_cast<long>(i), vecValues[i]});
    const auto pairEnds = std::minmax_element(vecValues.begin(), vecValues.end());
    if (!objVolume.loadVoxelData(1.0f, vecValues.size(), vecVoxels.data(), *pairEnds.first, *pairEnds.second))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    return objVolume;
}
} // namespace

class tst_volume : public QObject
{
    Q_OBJECT

private slots:
    void readsBothVersions_data();
    void readsBothVersions();
    void refusesDamagedVolumes_data();
    void refusesDamagedVolumes();
    void takesVoxelsNearTheGrid_data();
    void takesVoxelsNearTheGrid();
    void theLargestBoxIsTheLastOne_data();
    void theLargestBoxIsTheLastOne();
    void aLyingCountCostsNoMemory();
    void aMissingSectionIsRefused();
    void numbersComeFromTheCounterOfTheProcess();
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

void tst_volume::readsBothVersions_data()
{
    QTest::addColumn<bool>("bText");
    QTest::addColumn<QString>("strKind");
    QTest::newRow("1.0, SOLA") << true << QStringLiteral("SOLA");
    QTest::newRow("2.0, SOLA") << false << QStringLiteral("SOLA");
    QTest::newRow("1.0, NOVA") << true << QStringLiteral("NOVA");
    QTest::newRow("2.0, NOVA") << false << QStringLiteral("NOVA");
}

void tst_volume::readsBothVersions()
{
    QFETCH(bool, bText);
    QFETCH(QString, strKind);
    CFiles objFiles;
    const std::vector<float> vecNumbers = {-3.25f, 7.5f, 0.125f, 2.5e6f, -2.25f, 7.5f, 0.125f, 0.0f, -3.25f, 8.5f, 1.125f, 1.0e-7f};
    C3DVolume objVolume(QStringLiteral("Source"));
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(load(objFiles, objVolume, ResultText::volume(vecNumbers, attributes(3, "1", strKind.toLatin1()), bText), bText ? "1.0" : "2.0",
                 strKind));
    QCOMPARE(objVolume.name(), QStringLiteral("Source"));
    QCOMPARE(objVolume.getNoOfVoxels(), 3L);
    QCOMPARE(objVolume.m_nVoxels, 3L);
    QCOMPARE(objVolume.getVoxelSize(), 1.0f);
    QCOMPARE(objVolume.m_fVoxelSize, 1.0f);
    QCOMPARE(objVolume.getAttribMinValue(), 0.0f);
    QCOMPARE(objVolume.getAttribMaxValue(), 2.5e6f);
    QCOMPARE(objVolume.m_objPalette.imageMin(), 0.0);
    QCOMPARE(objVolume.m_objPalette.imageMax(), 2.5e6);
    for (int i = 0; i < 3; ++i)
    {
        const Voxel* pVoxel = objVolume.getVoxelByNum(i);
        QVERIFY(pVoxel);
        const std::size_t nAt = 4 * static_cast<std::size_t>(i);
        QCOMPARE(pVoxel->x, vecNumbers[nAt]);
        QCOMPARE(pVoxel->y, vecNumbers[nAt + 1]);
        QCOMPARE(pVoxel->z, vecNumbers[nAt + 2]);
        QCOMPARE(pVoxel->fValue, vecNumbers[nAt + 3]);
        QCOMPARE(pVoxel->nID, nNext + i);
    }
    QVERIFY(!objVolume.getVoxelByNum(-1));
    QVERIFY(!objVolume.getVoxelByNum(3));
    QVERIFY(objVolume.m_bShown);
}

void tst_volume::refusesDamagedVolumes_data()
{
    QTest::addColumn<QByteArray>("strSections");
    QTest::addColumn<QByteArray>("strVersion");
    QTest::addColumn<QString>("strReason");
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const float fInf = std::numeric_limits<float>::infinity();
    const std::vector<float> vecGood = {0, 0, 0, 1, 1, 0, 0, 2, 2, 0, 0, 3, 3, 0, 0, 4, 4, 0, 0, 5};
    const auto changed = [&](std::size_t nAt, float fValue)
    {
        std::vector<float> vecChanged = vecGood;
        vecChanged[nAt] = fValue;
        return vecChanged;
    };
    const auto rows = [](const char* pName, const std::vector<float>& vecNumbers, const QByteArray& strAttributes, const char* pReason)
    {
        for (const bool bText : {true, false})
            QTest::addRow("%s, %s", pName, bText ? "1.0" : "2.0") << ResultText::volume(vecNumbers, strAttributes, bText)
                                                                  << QByteArray(bText ? "1.0" : "2.0") << QString::fromLatin1(pReason);
    };
    rows("another kind", vecGood, attributes(5, "1", "NOVA"), "kind");
    rows("kind in other letters", vecGood, attributes(5, "1", "sola"), "kind");
    rows("no kind", vecGood, "Count=\"5\" VoxelSize=\"1\"", "kind");
    rows("no count", vecGood, "Kind=\"SOLA\" VoxelSize=\"1\"", "count");
    rows("count below 0", vecGood, attributes(-1), "count");
    rows("no size", vecGood, "Kind=\"SOLA\" Count=\"5\"", "size");
    rows("size 0", vecGood, attributes(5, "0"), "size");
    rows("size below 0", vecGood, attributes(5, "-1"), "size");
    rows("size of no number", vecGood, attributes(5, "nan"), "size");
    rows("infinite size", vecGood, attributes(5, "inf"), "size");
    rows("size with a comma", vecGood, attributes(5, "1,0"), "size");
    rows("size beyond a float", vecGood, attributes(5, "1e300"), "size");
    rows("size that vanishes as a float", vecGood, attributes(5, "1e-300"), "size");
    rows("more counted than there are", vecGood, attributes(6), "");
    rows("largest count", vecGood, attributes(2147483647), "");
    rows("off the grid by more than a hundredth", changed(4, 1.011f), attributes(5), "off the grid");
    rows("the first off the grid", changed(0, 0.02f), attributes(5), "off the grid");
    rows("off the grid along y", changed(5, 0.5f), attributes(5), "off the grid");
    rows("off the grid along z", changed(18, -0.011f), attributes(5), "off the grid");
    rows("two in one cell", changed(4, 2.001f), attributes(5), "already has one");
    rows("box too long", changed(16, 63999999.0f), attributes(5), "cells");
    rows("refined box too large", {0, 0, 0, 1, 96, 96, 97, 2}, attributes(2), "cells");
    rows("coordinate beyond all cells", changed(16, 3.0e38f), attributes(5), "cells");
    for (const std::size_t nAt : {4U, 5U, 6U, 7U})
    {
        QTest::addRow("NaN, %d", int(nAt)) << ResultText::volume(changed(nAt, fNaN), attributes(5), false) << QByteArray("2.0")
                                           << QStringLiteral("not finite");
        QTest::addRow("infinite, %d", int(nAt))
            << ResultText::volume(changed(nAt, -fInf), attributes(5), false) << QByteArray("2.0") << QStringLiteral("not finite");
        QTest::addRow("NaN as text, %d", int(nAt))
            << ResultText::volume(changed(nAt, fNaN), attributes(5), true) << QByteArray("1.0") << QString();
    }
    QTest::newRow("unknown version") << ResultText::volume(vecGood, attributes(5), false) << QByteArray("2.1") << QStringLiteral("version");
    QTest::newRow("bad digit") << ResultText::volume(vecGood, attributes(5), false).replace("0000803F", "0000 03F") << QByteArray("2.0")
                               << QString();
    QTest::newRow("values of the other version") << ResultText::volume(vecGood, attributes(5), true) << QByteArray("2.0") << QString();
}

void tst_volume::refusesDamagedVolumes()
{
    QFETCH(QByteArray, strSections);
    QFETCH(QByteArray, strVersion);
    QFETCH(QString, strReason);
    CFiles objFiles;
    C3DVolume objVolume = row({1.0f, 2.0f});
    const long nNext = C3DSGNode::m_nObjectCount;
    const CLogLines objLog;
    QVERIFY(!load(objFiles, objVolume, strSections, strVersion));
    QCOMPARE(objLog.lines().size(), 1);
    QVERIFY2(objLog.lines().constFirst().contains(strReason), qPrintable(objLog.lines().constFirst()));
    QCOMPARE(objVolume.getNoOfVoxels(), 2L); // what was there stays
    QCOMPARE(objVolume.getVoxelByNum(1)->fValue, 2.0f);
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext);
}

void tst_volume::takesVoxelsNearTheGrid_data()
{
    QTest::addColumn<std::vector<float>>("vecNumbers");
    QTest::addColumn<QByteArray>("strSize");
    QTest::newRow("off by less than a hundredth")
        << std::vector<float>{0, 0, 0, 1, 1.009f, 0, 0, 2, 2, -0.009f, 0, 3, 3, 0, 0.009f, 4} << QByteArray("1");
    QTest::newRow("a third of a millimetre, far out")
        << std::vector<float>{1000.0f, 0, 0, 1, 1000.0f + 1.0f / 3.0f, 0, 0, 2, 1000.0f + 2.0f / 3.0f, 0, 0, 3, 1033.0f, 0, 0, 4}
        << QByteArray("0.33333333");
    QTest::newRow("in any order") << std::vector<float>{3, 0, 0, 1, 1, 5, -2, 2, -4, 0, 0, 3} << QByteArray("1");
    QTest::newRow("one voxel anywhere") << std::vector<float>{0.123f, 456.7f, -89.01f, 1} << QByteArray("0.0625");
    QTest::newRow("none") << std::vector<float>{} << QByteArray("2");
    QTest::newRow("negative values") << std::vector<float>{0, 0, 0, -1, 1, 0, 0, -5} << QByteArray("1");
}

void tst_volume::takesVoxelsNearTheGrid()
{
    QFETCH(std::vector<float>, vecNumbers);
    QFETCH(QByteArray, strSize);
    CFiles objFiles;
    const auto nCount = static_cast<int>(vecNumbers.size() / 4);
    for (const bool bText : {true, false})
    {
        C3DVolume objVolume{QString()};
        QVERIFY(load(objFiles, objVolume, ResultText::volume(vecNumbers, attributes(nCount, strSize), bText), bText ? "1.0" : "2.0"));
        QCOMPARE(objVolume.getNoOfVoxels(), static_cast<long>(nCount));
    }
}

void tst_volume::theLargestBoxIsTheLastOne_data()
{
    QTest::addColumn<QByteArray>("strSize");
    QTest::addColumn<int>("nX");
    QTest::addColumn<int>("nY");
    QTest::addColumn<int>("nZ");
    QTest::addColumn<bool>("bRead");
    // A margin of 2 on either side, then 4 parts from 1 mm on, 2 from 0.5 mm on: 64 million cells are 400 x 400 x 400.
    QTest::newRow("1 mm, at the limit") << QByteArray("1") << 96 << 96 << 96 << true;
    QTest::newRow("1 mm, above") << QByteArray("1") << 96 << 97 << 96 << false;
    QTest::newRow("0.5 mm, at the limit") << QByteArray("0.5") << 196 << 196 << 196 << true;
    QTest::newRow("0.5 mm, above") << QByteArray("0.5") << 197 << 196 << 196 << false;
    QTest::newRow("just below 0.5 mm, at the limit") << QByteArray("0.4999") << 396 << 396 << 396 << true;
    QTest::newRow("just below 0.5 mm, above") << QByteArray("0.4999") << 396 << 396 << 397 << false;
}

void tst_volume::theLargestBoxIsTheLastOne()
{
    QFETCH(QByteArray, strSize);
    QFETCH(int, nX);
    QFETCH(int, nY);
    QFETCH(int, nZ);
    QFETCH(bool, bRead);
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    const float fSize = strSize.toFloat();
    const std::vector<float> vecNumbers = {
        0, 0, 0, 1, static_cast<float>(nX - 1) * fSize, static_cast<float>(nY - 1) * fSize, static_cast<float>(nZ - 1) * fSize, 2};
    QCOMPARE(load(objFiles, objVolume, ResultText::volume(vecNumbers, attributes(2, strSize), false), "2.0"), bRead);
}

void tst_volume::aLyingCountCostsNoMemory()
{
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    QElapsedTimer objTimer;
    objTimer.start();
    QVERIFY(!load(objFiles, objVolume, ResultText::volume({0, 0, 0, 1}, attributes(2000000000), false), "2.0"));
    QVERIFY(objTimer.elapsed() < 1000);
}

void tst_volume::aMissingSectionIsRefused()
{
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    const CLogLines objLog;
    QVERIFY(!load(objFiles, objVolume, "", "2.0"));
    QCOMPARE(objLog.lines().size(), 1);
    QVERIFY(!objVolume.loadFromXML(nullptr, QStringLiteral("SOLA")));
}

void tst_volume::numbersComeFromTheCounterOfTheProcess()
{
    QVERIFY(C3DSGNode::m_nObjectCount >= 1);
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(load(objFiles, objVolume, ResultText::volume({0, 0, 0, 1, 1, 0, 0, 2}, attributes(2), false), "2.0"));
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext + 2);
}

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
    C3DVolume objVolume = row({1.0f, 2.0f, 3.0f});
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
    const C3DVolume objRow = row({5.0f, 6.0f});
    QVERIFY(objRow.values() == (OrmArray<float>{5.0f, 6.0f}));
    QVERIFY(objRow.positions() == (OrmArray<float>{0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f}));
}

void tst_volume::arraysOfDifferentLengthsAreRefused()
{
    C3DVolume objVolume = row({5.0f, 6.0f});
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
    C3DVolume objVolume = row({5.0f, 6.0f, 7.0f});
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
    const C3DVolume objRaw = row({5.0f, 6.0f, 7.0f});
    C3DVolume objVolume = row({1.0f});
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
    C3DVolume objVolume = row({1.0f, 2.0f});
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
    C3DVolume objVolume = row({1.0f, 2.0f, 3.0f});
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
    C3DVolume objVolume = row({1.0f, 2.0f, 3.0f});
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
    C3DVolume objVolume = row(vecValues, 1);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(false), 1.01e8f);
    for (long nID = 1; nID <= 1000001; ++nID)
        objVolume.addToVoxelSelection(nID);
    QCOMPARE(objVolume.getTotalFluxForSelectedVoxels(true), 1.01e8f);

    const float fMost = std::numeric_limits<float>::max();
    C3DVolume objHuge = row({fMost, fMost, 1.0f});
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
        C3DVolume objVolume = row(vecValues);
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
    C3DVolume objVolume = row({1.0f, 2.0f, 4.0f, 8.0f}, nFirst);
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
