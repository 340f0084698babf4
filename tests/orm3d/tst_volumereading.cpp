#include "C3DVolume.h"
#include "CPLResultXMLWrapper.h"
#include "CProcessorMeter.h"
#include "CVoxelLattice.h"
#include "ResultText.h"
#include "VolumeRow.h"

#include <QtTest>

#include <limits>

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
} // namespace

/// The source volume of a result document.
class tst_volumereading : public QObject
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
};

void tst_volumereading::readsBothVersions_data()
{
    QTest::addColumn<bool>("bText");
    QTest::addColumn<QString>("strKind");
    QTest::newRow("1.0, SOLA") << true << QStringLiteral("SOLA");
    QTest::newRow("2.0, SOLA") << false << QStringLiteral("SOLA");
    QTest::newRow("1.0, NOVA") << true << QStringLiteral("NOVA");
    QTest::newRow("2.0, NOVA") << false << QStringLiteral("NOVA");
}

void tst_volumereading::readsBothVersions()
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

void tst_volumereading::refusesDamagedVolumes_data()
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

void tst_volumereading::refusesDamagedVolumes()
{
    QFETCH(QByteArray, strSections);
    QFETCH(QByteArray, strVersion);
    QFETCH(QString, strReason);
    CFiles objFiles;
    C3DVolume objVolume = volumeRow({1.0f, 2.0f});
    const long nNext = C3DSGNode::m_nObjectCount;
    const CLogLines objLog;
    QVERIFY(!load(objFiles, objVolume, strSections, strVersion));
    QCOMPARE(objLog.lines().size(), 1);
    QVERIFY2(objLog.lines().constFirst().contains(strReason), qPrintable(objLog.lines().constFirst()));
    QCOMPARE(objVolume.getNoOfVoxels(), 2L); // what was there stays
    QCOMPARE(objVolume.getVoxelByNum(1)->fValue, 2.0f);
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext);
}

void tst_volumereading::takesVoxelsNearTheGrid_data()
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

void tst_volumereading::takesVoxelsNearTheGrid()
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

void tst_volumereading::theLargestBoxIsTheLastOne_data()
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

void tst_volumereading::theLargestBoxIsTheLastOne()
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

void tst_volumereading::aLyingCountCostsNoMemory()
{
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    const CProcessorMeter objMeter;
    QVERIFY(!load(objFiles, objVolume, ResultText::volume({0, 0, 0, 1}, attributes(2000000000), false), "2.0"));
    QVERIFY(objMeter.isWithinPatience());
}

void tst_volumereading::aMissingSectionIsRefused()
{
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    const CLogLines objLog;
    QVERIFY(!load(objFiles, objVolume, "", "2.0"));
    QCOMPARE(objLog.lines().size(), 1);
    QVERIFY(!objVolume.loadFromXML(nullptr, QStringLiteral("SOLA")));
}

void tst_volumereading::numbersComeFromTheCounterOfTheProcess()
{
    QVERIFY(C3DSGNode::m_nObjectCount >= 1);
    CFiles objFiles;
    C3DVolume objVolume{QString()};
    const long nNext = C3DSGNode::m_nObjectCount;
    QVERIFY(load(objFiles, objVolume, ResultText::volume({0, 0, 0, 1, 1, 0, 0, 2}, attributes(2), false), "2.0"));
    QCOMPARE(C3DSGNode::m_nObjectCount, nNext + 2);
}

QTEST_GUILESS_MAIN(tst_volumereading)
#include "tst_volumereading.moc"
