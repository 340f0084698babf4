#include "Analysis.h"
#include "AnalysisRecords.h"
#include "ResultDocumentWalk.h"
#include "ResultUnits.h"
#include "ResultsTable.h"
#include "SAnalysisBase.h"
#include "SourceVoxels.h"

#include <QtTest>

#include <limits>
#include <type_traits>

/// The logic of loading results that needs no window: records, driver stubs, units, results table, refinement rule.
class tst_results_modules : public QObject
{
    Q_OBJECT

private slots:
    void comparedUnitFollowsTheCalibration_data();
    void comparedUnitFollowsTheCalibration();
    void shownUnitAndDivisorFollowTheCalibration_data();
    void shownUnitAndDivisorFollowTheCalibration();
    void numbersComeFromTheFirstKeyThatIsThere_data();
    void numbersComeFromTheFirstKeyThatIsThere();
    void softwareVersionIsNormalised_data();
    void softwareVersionIsNormalised();
    void refinementFollowsTheVoxelSize_data();
    void refinementFollowsTheVoxelSize();
    void recordsStartEmpty();
    void copiesOfARecordShareItsDensityBlocks();
    void aRepeatedNameReplacesItsMap();
    void transientRecordsStartEmptyAndTellThemselvesApart();
    void driversDoNothing();
    void fluorescentDriverIsAbstract();
    void bothKindsHaveTheirOwnTexts();
};

static const QString g_strMolarShown = QString::fromUtf8("pmol M-\u00B9 cm-\u00B9");
static const QString g_strMolarCompared = QString::fromLatin1("pmol M-\xC2\xB9 cm-\xC2\xB9");

void tst_results_modules::comparedUnitFollowsTheCalibration_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strType");
    QTest::addColumn<QString>("strExpected");
    QTest::newRow("luminescent, none") << 0 << QString() << "photons/sec";
    QTest::newRow("luminescent, empty") << 0 << QString("") << "photons/sec";
    QTest::newRow("luminescent, cells") << 0 << "Cells"
                                        << "cells";
    QTest::newRow("luminescent, dye") << 0 << "Dye molecules" << QString();
    QTest::newRow("luminescent, other case") << 0 << "cells" << QString();
    QTest::newRow("fluorescent, none") << 1 << QString() << g_strMolarCompared;
    QTest::newRow("fluorescent, cells") << 1 << "Cells"
                                        << "cells";
    QTest::newRow("fluorescent, dye") << 1 << "Dye molecules"
                                      << "pmol";
    QTest::newRow("fluorescent, other case") << 1 << "dye molecules" << QString();
    QTest::newRow("fluorescent, blank behind") << 1 << "Cells " << QString();
}

void tst_results_modules::comparedUnitFollowsTheCalibration()
{
    QFETCH(int, nKind);
    QFETCH(QString, strType);
    QFETCH(QString, strExpected);
    QCOMPARE(ResultUnits::unitOfCalibration(nKind, strType), strExpected);
    QCOMPARE(g_strMolarCompared.size(), g_strMolarShown.size() + 2); // each superscript is two characters there
}

void tst_results_modules::shownUnitAndDivisorFollowTheCalibration_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strType");
    QTest::addColumn<QString>("strPerUnit");
    QTest::addColumn<QString>("strUnit");
    QTest::addColumn<double>("dDivisor");
    QTest::newRow("luminescent, none") << 0 << QString() << QString() << "photons/sec" << 1.0;
    QTest::newRow("luminescent, none but a number") << 0 << QString() << "7"
                                                    << "photons/sec" << 1.0;
    QTest::newRow("luminescent, cells") << 0 << "Cells"
                                        << "2.5"
                                        << "cells" << 2.5;
    QTest::newRow("luminescent, cells as a float") << 0 << "Cells"
                                                   << "0.1"
                                                   << "cells" << double(0.1f);
    QTest::newRow("luminescent, unknown") << 0 << "Dye molecules"
                                          << "2.5"
                                          << "photons/sec" << 1.0;
    QTest::newRow("fluorescent, none") << 1 << QString() << QString() << g_strMolarShown << 1e-7;
    QTest::newRow("fluorescent, unknown") << 1 << "dye"
                                          << "2" << g_strMolarShown << 1e-7;
    QTest::newRow("fluorescent, cells") << 1 << "Cells"
                                        << "1e3"
                                        << "cells" << 1000.0;
    QTest::newRow("fluorescent, dye") << 1 << "Dye molecules"
                                      << "2"
                                      << "pmol" << 2.0 * 6.022e11;
    QTest::newRow("zero") << 1 << "Dye molecules"
                          << "0"
                          << "pmol" << 0.0;
    QTest::newRow("absent") << 0 << "Cells" << QString() << "cells" << 0.0;
    QTest::newRow("text") << 0 << "Cells"
                          << "many"
                          << "cells" << 0.0;
    QTest::newRow("comma") << 0 << "Cells"
                           << "2,5"
                           << "cells" << 0.0;
    QTest::newRow("not a number") << 0 << "Cells"
                                  << "nan"
                                  << "cells" << 0.0;
    QTest::newRow("infinite") << 0 << "Cells"
                              << "inf"
                              << "cells" << 0.0;
    QTest::newRow("beyond a float") << 0 << "Cells"
                                    << "1e39"
                                    << "cells" << 0.0;
    QTest::newRow("below zero") << 0 << "Cells"
                                << "-3"
                                << "cells" << -3.0;
}

void tst_results_modules::shownUnitAndDivisorFollowTheCalibration()
{
    QFETCH(int, nKind);
    QFETCH(QString, strType);
    QFETCH(QString, strPerUnit);
    QFETCH(QString, strUnit);
    QFETCH(double, dDivisor);
    QCOMPARE(ResultUnits::shownUnit(nKind, strType), strUnit);
    QCOMPARE(ResultUnits::divisor(nKind, strType, strPerUnit), dDivisor);
}

void tst_results_modules::numbersComeFromTheFirstKeyThatIsThere_data()
{
    QTest::addColumn<QStringList>("lstKeys");
    QTest::addColumn<QStringList>("lstValues");
    QTest::addColumn<QStringList>("lstWanted");
    QTest::addColumn<double>("dExpected");
    const QStringList lstWanted = {"Starting vsize", "Starting voxel size:"};
    QTest::newRow("first") << QStringList{"a", "Starting vsize", "Starting voxel size:"} << QStringList{"1", "2", "3"} << lstWanted << 2.0;
    QTest::newRow("first, though later") << QStringList{"Starting voxel size:", "Starting vsize"} << QStringList{"1", "2"} << lstWanted
                                         << 2.0;
    QTest::newRow("fallback") << QStringList{"a", "Starting voxel size:"} << QStringList{"1", "3.5"} << lstWanted << 3.5;
    QTest::newRow("none") << QStringList{"a"} << QStringList{"1"} << lstWanted << 0.0;
    QTest::newRow("empty table") << QStringList() << QStringList() << lstWanted << 0.0;
    QTest::newRow("other case") << QStringList{"starting vsize"} << QStringList{"1"} << lstWanted << 0.0;
    QTest::newRow("longer key") << QStringList{"Starting vsize (best)"} << QStringList{"1"} << lstWanted << 0.0;
    QTest::newRow("no number, no fallback") << QStringList{"Starting vsize", "Starting voxel size:"} << QStringList{"x", "3"} << lstWanted
                                            << 0.0;
    QTest::newRow("repeated key") << QStringList{"Starting vsize", "Starting vsize"} << QStringList{"4", "5"} << lstWanted << 4.0;
    QTest::newRow("value missing") << QStringList{"a", "Starting vsize"} << QStringList{"4"} << lstWanted << 0.0;
}

void tst_results_modules::numbersComeFromTheFirstKeyThatIsThere()
{
    QFETCH(QStringList, lstKeys);
    QFETCH(QStringList, lstValues);
    QFETCH(QStringList, lstWanted);
    QFETCH(double, dExpected);
    QCOMPARE(ResultsTable::number(lstKeys, lstValues, lstWanted), dExpected);
}

void tst_results_modules::softwareVersionIsNormalised_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QString>("strExpected");
    QTest::newRow("empty") << QString() << "N/A";
    QTest::newRow("plain") << "4.2.1"
                           << "4.2.1";
    QTest::newRow("after the colon, blank kept") << "Ormelle version: 4.2.1"
                                                 << " 4.2.1";
    QTest::newRow("after the last colon") << "Version: a:b:4"
                                          << "4";
    QTest::newRow("upper case") << "VERSION:4"
                                << "4";
    QTest::newRow("no colon") << "Version 4"
                              << "Version 4";
    QTest::newRow("colon but no version") << "Build: 4"
                                          << "Build: 4";
    QTest::newRow("nothing after the colon") << "Version:"
                                             << "";
}

void tst_results_modules::softwareVersionIsNormalised()
{
    QFETCH(QString, strText);
    QFETCH(QString, strExpected);
    QCOMPARE(ResultDocument::normalisedSoftwareVersion(strText), strExpected);
}

void tst_results_modules::refinementFollowsTheVoxelSize_data()
{
    QTest::addColumn<float>("fVoxelSize");
    QTest::addColumn<float>("fFactor");
    QTest::newRow("coarse") << 4.0f << 0.25f;
    QTest::newRow("exactly 1") << 1.0f << 0.25f;
    QTest::newRow("just below 1") << std::nextafter(1.0f, 0.0f) << 0.5f;
    QTest::newRow("exactly a half") << 0.5f << 0.5f;
    QTest::newRow("just below a half") << std::nextafter(0.5f, 0.0f) << 0.0f;
    QTest::newRow("fine") << 0.1f << 0.0f;
    QTest::newRow("no number") << std::numeric_limits<float>::quiet_NaN() << 0.0f;
}

void tst_results_modules::refinementFollowsTheVoxelSize()
{
    QFETCH(float, fVoxelSize);
    QFETCH(float, fFactor);
    QCOMPARE(refinementFactor(fVoxelSize), fFactor);
}

void tst_results_modules::recordsStartEmpty()
{
    const sAnalysisBase objRecord;
    QVERIFY(objRecord.strSequenceID.isEmpty() && objRecord.strResultName.isEmpty() && objRecord.mapPhotonDensity.isEmpty());
    QCOMPARE(objRecord.nAnalysisType, 0);
    QCOMPARE(objRecord.objMesh.getNumOfVertices(), 0L);
    QCOMPARE(objRecord.objVolume.getNoOfVoxels(), 0L);
    QCOMPARE(objRecord.objRawVolume.getNoOfVoxels(), 0L);
    QCOMPARE(objRecord.dFinalVoxelSize + objRecord.dStartingVoxelSize + objRecord.dReducedChi2, 0.0);
    QCOMPARE(objRecord.fSelectLeft + objRecord.fSelectTop + objRecord.fSelectRight + objRecord.fSelectBottom, 0.0f);
    static_assert(!std::is_polymorphic_v<sAnalysisBase> && std::is_copy_constructible_v<sAnalysisBase>);
}

void tst_results_modules::copiesOfARecordShareItsDensityBlocks()
{
    std::weak_ptr<float> pWatch;
    {
        sAnalysisBase objKept;
        {
            sAnalysisBase objFirst;
            objFirst.addPhotonDensity("560", {1.0f, 2.0f, 3.0f});
            objFirst.addPhotonDensity("620", {4.0f, 5.0f, 6.0f});
            objFirst.addPhotonDensity("640", {}); // nothing to keep
            QCOMPARE(objFirst.mapPhotonDensity.keys(), QStringList({"560", "620"}));
            pWatch = objFirst.lstDensityBlocks.at(1);
            objKept = objFirst;
            QCOMPARE(objKept.mapPhotonDensity.value("620"), objFirst.mapPhotonDensity.value("620"));
        }
        const sAnalysisBase objCopy(objKept);
        QVERIFY(!pWatch.expired());
        QCOMPARE(objCopy.mapPhotonDensity.value("560")[2], 3.0f);
        QCOMPARE(objCopy.mapPhotonDensity.value("620")[0], 4.0f);
    }
    QVERIFY2(pWatch.expired(), "the block outlived every copy of its record");
}

void tst_results_modules::aRepeatedNameReplacesItsMap()
{
    sAnalysisBase objRecord;
    objRecord.addPhotonDensity("560", {1.0f});
    objRecord.addPhotonDensity("560", {2.0f});
    QCOMPARE(objRecord.mapPhotonDensity.size(), 1);
    QCOMPARE(objRecord.mapPhotonDensity.value("560")[0], 2.0f);
}

void tst_results_modules::transientRecordsStartEmptyAndTellThemselvesApart()
{
    SSOLAAnalysis objSOLA;
    SNOVAAnalysis objNOVA;
    SAnalysisBase* pSOLA = &objSOLA;
    SAnalysisBase* pNOVA = &objNOVA;
    QVERIFY(dynamic_cast<SSOLAAnalysis*>(pSOLA) != nullptr && dynamic_cast<SSOLAAnalysis*>(pNOVA) == nullptr);
    QVERIFY(dynamic_cast<SNOVAAnalysis*>(pNOVA) != nullptr && dynamic_cast<SNOVAAnalysis*>(pSOLA) == nullptr);
    pSOLA->whoamI();
    QCOMPARE(pSOLA->nTotalVertices, 0);
    QVERIFY(pSOLA->objQuantData.strMeasurementType.isNull() && pSOLA->objQuantData.strPerUnitValue.isNull());
    QCOMPARE(objSOLA.objParamsTabData.nDefaultState, 1);
    QCOMPARE(objNOVA.objParamsTabData.fDefaultValue, 0.0f);
    QCOMPARE(objNOVA.objParamsTabData.nDefaultIndex, 0);
}

/// Makes the abstract driver usable by the one operation that it leaves open.
class CConcreteNOVAAnalysis : public CNOVAAnalysis
{
public:
    using CNOVAAnalysis::doReconstruction;
    void saveAnalysisResults(QWidget*, QString) override {}
};

template <class TAnalysis>
void checkDriver(TAnalysis& objAnalysis)
{
    QStringList lstKeys = {"key"};
    QStringList lstValues = {"value"};
    QVERIFY(!objAnalysis.doReconstruction());
    QVERIFY(!objAnalysis.loadSequence(nullptr));
    QVERIFY(!objAnalysis.getResultsOutput(lstKeys, lstValues));
    QCOMPARE(objAnalysis.getSelectedClickNumbers(lstKeys), 0);
    QVERIFY(!objAnalysis.exportPhotonDensityMaps2CSV(nullptr, QString()));
    QVERIFY(!objAnalysis.loadPhotonDensityMapDataToSequence(nullptr, true, 0));
    objAnalysis.saveAnalysisResults(nullptr, QString());
    objAnalysis.saveOptimizedFitparameters(nullptr, QString());
    QCOMPARE(lstKeys, QStringList({"key"}));
    QCOMPARE(lstValues, QStringList({"value"}));
    objAnalysis.run(); // the whole work of the thread, done here
    QVERIFY(!objAnalysis.isRunning());
    static_assert(std::is_base_of_v<CAnalysis3DBase, TAnalysis> && std::is_base_of_v<QThread, TAnalysis>);
}

void tst_results_modules::driversDoNothing()
{
    CSOLAAnalysis objSOLA;
    checkDriver(objSOLA);
    CConcreteNOVAAnalysis objNOVA;
    checkDriver(objNOVA);
    SAnalysisBase objRecord;
    C3DMesh objMesh{QString()};
    objNOVA.loadAnalysisResults(&objRecord, &objMesh);
    QCOMPARE(objMesh.getNumOfVertices(), 0L);
    QVERIFY(!objNOVA.applyAnalysisResults(nullptr, nullptr, true, 0));
}

void tst_results_modules::fluorescentDriverIsAbstract()
{
    QVERIFY(std::is_abstract_v<CNOVAAnalysis>);
    QVERIFY(!std::is_abstract_v<CSOLAAnalysis>);
}

void tst_results_modules::bothKindsHaveTheirOwnTexts()
{
    // The dotted child tag of the results table beside its undotted block.
    QCOMPARE(QByteArray(ResultDocument::sola().pResultsBlock), QByteArray("Orm3.0.SOLA.Results"));
    QCOMPARE(QByteArray(ResultDocument::sola().pResultsEntry), QByteArray("Orm.3.0.SOLA.Results"));
    QCOMPARE(QByteArray(ResultDocument::nova().pResultsBlock), QByteArray("Orm3.0.NOVA.Results"));
    QCOMPARE(QByteArray(ResultDocument::nova().pResultsEntry), QByteArray("Orm.3.0.NOVA.Results"));
    // The format's own double m.
    QCOMPARE(QByteArray(ResultDocument::nova().lstFilters[0].pBlock), QByteArray("Orm3.0.NOVA.EmmissionFilter"));
    QCOMPARE(QByteArray(ResultDocument::nova().lstFilters[0].pEntry), QByteArray("Orm3.0.NOVA.EmmissionFilter.Name"));
    QVERIFY(ResultDocument::sola().lstFilters[0].pBlock == nullptr);
}

QTEST_GUILESS_MAIN(tst_results_modules)
#include "tst_results_modules.moc"
