#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "ExpectedLoad.h"
#include "OrmTestMain.h"

#include "C3DSGNode.h"
#include "COrmDataset.h"
#include "COrmSequenceDataset.h"
#include "ResultUnits.h"
#include "SourceVoxels.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>

#include <algorithm>
#include <cmath>

/// From a record that was read to a tile: what is accepted, refinement, what the lasting record holds, units and rescaling.
class tst_results_application : public QObject
{
    Q_OBJECT

private slots:
    void refinementFollowsTheVoxelSizeAndKeepsTheTotal_data();
    void refinementFollowsTheVoxelSizeAndKeepsTheTotal();
    void refinedVoxelsLieInsideTheSurface();
    void theFieldOfViewOfAnOpenSequenceIsWorkedOut();
    void sequenceIDsOfOtherCaseAreAcceptedAndKept();
    void withoutNamesTheLoadSucceedsButNothingShows();
    void recordsHoldTheResultsTable_data();
    void recordsHoldTheResultsTable();
    void densityMapsAreTheMeasuredOnesByTrimmedName();
    void fewerNamesThanRowsLeaveRowsOut();
    void moreViewsThanCountReadMoreNames();
    void densityMapsOutliveTheView();
    void selectionRectanglesStartAtZero();
    void projectionFollowsTheCheckBox();
    void luminescentTilesStandBeforeFluorescentOnes();

    void quantificationFollowsTheTable_data();
    void quantificationFollowsTheTable();
    void everyVoxelTakesANewNumber();
    void anotherRecordIsRescaledWhereTheCaseDiffers();
};

namespace
{

/// Opens the view's protected unit texts to the tests.
struct SViewPeek : public CLongitudinalStudyBrowserView
{
    static QString unit(const CLongitudinalStudyBrowserView& objView, int nKind)
    {
        return objView.*(nKind == 1 ? &SViewPeek::m_strNOVAUnit : &SViewPeek::m_strSOLAUnit);
    }
};

QString entryOf(int nKind, const QString& strSequenceID)
{
    return (nKind == 1 ? QStringLiteral("NOVA ") : QStringLiteral("SOLA ")) + strSequenceID;
}

/// A study whose one sequence "SEQ1" has the documents as results "R0", "R1" and so on, opened, all results loaded.
class CLoaded
{
public:
    explicit CLoaded(const QList<SResultDocument>& lstDocuments, const QString& strButton = QString(),
                     SSequenceLook objLook = SSequenceLook::luminescent())
    {
        const int nKind = lstDocuments.first().nKind;
        if (nKind == 1)
        {
            const double dFieldOfView = objLook.dFieldOfView;
            objLook = SSequenceLook::fluorescent();
            objLook.dFieldOfView = dFieldOfView;
        }
        m_objStudy.addSequence("SEQ1", objLook);
        QStringList lstNames;
        for (const SResultDocument& objDocument : lstDocuments)
        {
            lstNames.append(QStringLiteral("R%1").arg(lstNames.size()));
            m_objStudy.addResult("SEQ1", lstNames.last(), objDocument);
        }
        if (!strButton.isEmpty())
        {
            m_objTool.get<QRadioButton>(qPrintable(strButton))->setChecked(true);
        }
        m_objTool.open(m_objStudy.folder());
        m_objTool.chooseSequence(entryOf(nKind, "SEQ1"));
        m_objTool.host().clear();
        m_objTool.load(lstNames);
    }

    CToolWindow* operator->() { return &m_objTool; }
    sAnalysisBase& record(int nTile = 0)
    {
        QList<sAnalysisBase>& lstRecords = m_objTool.view().getAnalysisParams();
        if (nTile >= lstRecords.size())
        {
            TestWidgets::fail("No such tile; the host was asked: " + m_objTool.host().calls().join(" | ") +
                              m_objTool.host().hostLog().join(" | "));
        }
        return lstRecords[nTile];
    }

private:
    CStudyWriter m_objStudy;
    CToolWindow m_objTool;
};

double sum(C3DVolume& objVolume)
{
    double dSum = 0.0;
    for (int i = 0; i < objVolume.getNoOfVoxels(); ++i)
    {
        dSum += static_cast<double>(objVolume.getVoxelByNum(i)->fValue);
    }
    return dSum;
}

bool isNear(double dValue, double dExpected, double dRelative)
{
    return std::abs(dValue - dExpected) <= dRelative * std::abs(dExpected);
}

} // namespace

void tst_results_application::refinementFollowsTheVoxelSizeAndKeepsTheTotal_data()
{
    QTest::addColumn<double>("dStored");
    QTest::addColumn<double>("dShown");
    QTest::newRow("2") << 2.0 << 0.5;
    QTest::newRow("exactly 1") << 1.0 << 0.25;
    QTest::newRow("below 1") << 0.96875 << 0.484375;
    QTest::newRow("exactly a half") << 0.5 << 0.25;
    QTest::newRow("below a half") << 0.484375 << 0.484375;
}

void tst_results_application::refinementFollowsTheVoxelSizeAndKeepsTheTotal()
{
    QFETCH(double, dStored);
    QFETCH(double, dShown);
    for (const int nKind : {0, 1})
    {
        SResultDocument objDocument(nKind);
        objDocument.setCube(4, dStored);
        CLoaded objLoaded({objDocument});
        sAnalysisBase& objRecord = objLoaded.record();
        QCOMPARE(double(objRecord.objVolume.getVoxelSize()), dShown);
        QCOMPARE(double(objRecord.objRawVolume.getVoxelSize()), dShown);
        if (dStored < 0.5)
        {
            QCOMPARE(objRecord.objVolume.getNoOfVoxels(), 64L);
        }
        else
        {
            QVERIFY(objRecord.objVolume.getNoOfVoxels() > 64L);
        }
        QVERIFY(isNear(sum(objRecord.objRawVolume), objDocument.total(), 1e-4));
        const double f = nKind == 1 ? ResultUnits::g_dUncalibratedYield : 1.0;
        QVERIFY(isNear(sum(objRecord.objVolume), objDocument.total() / f, 1e-4));
    }
}

void tst_results_application::refinedVoxelsLieInsideTheSurface()
{
    SResultDocument objDocument;
    objDocument.setSphere(3, 2.0f); // the cube's corners reach out of the sphere
    CLoaded objLoaded({objDocument});
    sAnalysisBase& objRecord = objLoaded.record();
    QVERIFY(objRecord.objVolume.getNoOfVoxels() > 100);
    for (int i = 0; i < objRecord.objVolume.getNoOfVoxels(); ++i)
    {
        const C3DVolume::Voxel* pVoxel = objRecord.objVolume.getVoxelByNum(i);
        QVERIFY(std::hypot(double(pVoxel->x), double(pVoxel->y), double(pVoxel->z)) <= 2.0);
    }
    QVERIFY(isNear(sum(objRecord.objVolume), objDocument.total(), 1e-4));
}

void tst_results_application::theFieldOfViewOfAnOpenSequenceIsWorkedOut()
{
    CStudyWriter objStudy;
    SSequenceLook objLook;
    objLook.dFieldOfView = 20.5;
    objStudy.addSequence("SEQ1", objLook);
    objStudy.addResult("SEQ1", "R", SResultDocument());
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset("SEQ1");
    QCOMPARE(pSequence->getDatasets().first()->getImageFOV(), COrmDataset::s_fDefaultFOV);
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"R"});
    QCOMPARE(pSequence->getDatasets().first()->getImageFOV(), 20.5);
    QCOMPARE(pSequence->getDatasets().last()->getImageFOV(), COrmDataset::s_fDefaultFOV); // the first image alone is asked
}

void tst_results_application::sequenceIDsOfOtherCaseAreAcceptedAndKept()
{
    SResultDocument objDocument;
    objDocument.strSequenceID = "seq1";
    CLoaded objLoaded({objDocument});
    QCOMPARE(objLoaded.record().strSequenceID, QString("seq1"));
    QCOMPARE(objLoaded->view().getLoadedResult(), QStringList("SEQ1R0"));
    QCOMPARE(objLoaded->host().callsOf("box"), QStringList());
}

void tst_results_application::withoutNamesTheLoadSucceedsButNothingShows()
{
    for (const int nKind : {0, 1})
    {
        SResultDocument objDocument(nKind);
        if (nKind == 0)
        {
            objDocument.nViews = -1; // the key is written below
            objDocument.replace("<Orm3.0.SOLA.Wavelengths Count=\"2\"", "<Orm3.0.SOLA.Wavelengths Count=\"2\" Views=\"-1\"");
        }
        else
        {
            // No names and no densities fit a surface without vertices alone.
            objDocument.vecVertices.clear();
            objDocument.vecTriangles.clear();
            objDocument.setNames({});
        }
        CLoaded objLoaded({objDocument});
        QCOMPARE(objLoaded->tiles(), QStringList());
        QCOMPARE(objLoaded->view().getLoadedResult(), QStringList("SEQ1R0"));
        QCOMPARE(objLoaded->view().getSelectedList(), QStringList("SEQ1R0"));
        const QStringList lstExpected = ExpectedLoad::beginning() + ExpectedLoad::reading(nKind) +
                                        ExpectedLoad::application(nKind).mid(0, 4) + QStringList("cursor restored") +
                                        ExpectedLoad::closing();
        const QString strDifference = ExpectedLoad::difference(objLoaded->host().calls(), lstExpected);
        QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));
    }
}

void tst_results_application::recordsHoldTheResultsTable_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QStringList>("lstKeys"); // each with its place from 1 on as value
    QTest::addColumn<double>("dFinal");
    QTest::addColumn<double>("dStarting");
    QTest::addColumn<double>("dChi2");
    QTest::newRow("SOLA all") << 0 << QStringList{"Final voxel size (mm)", "Starting vsize (best)", "Starting voxel size:", "Reduced Chi2"}
                              << 1.0 << 2.0 << 4.0;
    QTest::newRow("SOLA fallback") << 0 << QStringList{"Starting voxel size:", "Starting vsize"} << 0.0 << 1.0 << 0.0;
    QTest::newRow("SOLA none") << 0 << QStringList() << 0.0 << 0.0 << 0.0;
    QTest::newRow("NOVA all") << 1 << QStringList{"Reduced Chi2", "Final voxel size (mm)", "Starting voxel size:", "Starting vsize"} << 2.0
                              << 4.0 << 1.0;
    QTest::newRow("NOVA doesn't ask for the best")
        << 1 << QStringList{"Starting vsize (best)", "Starting voxel size:"} << 0.0 << 2.0 << 0.0;
    QTest::newRow("NOVA only the best") << 1 << QStringList{"Starting vsize (best)"} << 0.0 << 0.0 << 0.0;
    QTest::newRow("SOLA rows with the total are dropped")
        << 0 << QStringList{"Final voxel size (mm)", "My Total source flux of Reduced Chi2", "Reduced Chi2"} << 1.0 << 0.0 << 3.0;
}

void tst_results_application::recordsHoldTheResultsTable()
{
    QFETCH(int, nKind);
    QFETCH(QStringList, lstKeys);
    QFETCH(double, dFinal);
    QFETCH(double, dStarting);
    QFETCH(double, dChi2);
    SResultDocument objDocument(nKind);
    objDocument.lstResults.clear();
    for (int i = 0; i < lstKeys.size(); ++i)
    {
        objDocument.lstResults.append({lstKeys.at(i), QString::number(i + 1)});
    }
    CLoaded objLoaded({objDocument});
    QCOMPARE(objLoaded.record().dFinalVoxelSize, dFinal);
    QCOMPARE(objLoaded.record().dStartingVoxelSize, dStarting);
    QCOMPARE(objLoaded.record().dReducedChi2, dChi2);
    QCOMPARE(objLoaded.record().nAnalysisType, nKind);
    QCOMPARE(objLoaded.record().strResultName, QString("R0"));
}

void tst_results_application::densityMapsAreTheMeasuredOnesByTrimmedName()
{
    for (const int nKind : {0, 1})
    {
        for (const char* pVersion : {"1.0", "2.0"})
        {
            SResultDocument objDocument(nKind, pVersion);
            objDocument.setNames({" 560 ", "620"});
            CLoaded objLoaded({objDocument});
            const sAnalysisBase& objRecord = objLoaded.record();
            QCOMPARE(objRecord.mapPhotonDensity.keys(), QStringList({"560", "620"}));
            for (int nRow = 0; nRow < 2; ++nRow)
            {
                const float* pMap = objRecord.mapPhotonDensity.value(nRow == 0 ? "560" : "620");
                const std::vector<float>& vecStored = objDocument.vecMeasured[static_cast<size_t>(nRow)];
                QVERIFY(std::equal(vecStored.begin(), vecStored.end(), pMap));
            }
            // The combo shows the names as the file has them.
            QCOMPARE(objLoaded->get<QComboBox>("m_pWaveLengthCB")->itemText(0), QString(" 560 "));
        }
    }
}

void tst_results_application::fewerNamesThanRowsLeaveRowsOut()
{
    SResultDocument objDocument;
    objDocument.nViews = 1; // of two wavelengths
    CLoaded objLoaded({objDocument});
    QCOMPARE(objLoaded.record().mapPhotonDensity.keys(), QStringList("560"));
}

void tst_results_application::moreViewsThanCountReadMoreNames()
{
    SResultDocument objDocument;
    objDocument.nViews = 3;
    objDocument.replace("<Orm3.0.SOLA.Wavelength.Name Wavelength=\"620\"/>",
                        "<Orm3.0.SOLA.Wavelength.Name Wavelength=\"620\"/><Orm3.0.SOLA.Wavelength.Name Wavelength=\"640\"/>");
    CLoaded objLoaded({objDocument});
    QCOMPARE(objLoaded->get<QComboBox>("m_pWaveLengthCB")->count(), 3);
    QCOMPARE(objLoaded.record().mapPhotonDensity.keys(), QStringList({"560", "620"})); // the densities still say 2
}

void tst_results_application::densityMapsOutliveTheView()
{
    SResultDocument objDocument;
    CLoaded objLoaded({objDocument});
    const sAnalysisBase objCopy = objLoaded.record();
    const float* pMap = objLoaded.record().mapPhotonDensity.value("620");
    QCOMPARE(objCopy.mapPhotonDensity.value("620"), static_cast<float*>(const_cast<float*>(pMap)));
    objLoaded->view().clear3DView();
    QVERIFY(objLoaded->tiles().isEmpty());
    QVERIFY(std::equal(objDocument.vecMeasured[1].begin(), objDocument.vecMeasured[1].end(), objCopy.mapPhotonDensity.value("620")));
}

void tst_results_application::selectionRectanglesStartAtZero()
{
    for (const int nKind : {0, 1})
    {
        CLoaded objLoaded({SResultDocument(nKind)});
        const sAnalysisBase& objRecord = objLoaded.record();
        QCOMPARE(objRecord.fSelectLeft, 0.0f);
        QCOMPARE(objRecord.fSelectTop, 0.0f);
        QCOMPARE(objRecord.fSelectRight, 0.0f);
        QCOMPARE(objRecord.fSelectBottom, 0.0f);
    }
}

void tst_results_application::projectionFollowsTheCheckBox()
{
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1");
    objStudy.addResult("SEQ1", "plain", SResultDocument());
    objStudy.addResult("SEQ1", "projected", SResultDocument());
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"plain"});
    QVERIFY(!objTool.view().getAnalysisParams().at(0).objVolume.m_bMIP); // without a loaded result the box is unchecked
    objTool.get<QCheckBox>("m_pMIPCheck")->setChecked(true);
    objTool.load({"projected"});
    QVERIFY(objTool.view().getAnalysisParams().at(1).objVolume.m_bMIP);
}

void tst_results_application::luminescentTilesStandBeforeFluorescentOnes()
{
    CStudyWriter objStudy;
    objStudy.addSequence("L");
    objStudy.addSequence("F", SSequenceLook::fluorescent());
    SResultDocument objSOLA(0);
    SResultDocument objNOVA(1);
    objSOLA.strSequenceID = "L";
    objNOVA.strSequenceID = "F";
    objStudy.addResult("L", "1", objSOLA);
    objStudy.addResult("L", "2", objSOLA);
    objStudy.addResult("F", "1", objNOVA);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA L");
    objTool.load({"1"});
    objTool.chooseSequence("NOVA F");
    objTool.load({"1"});
    objTool.chooseSequence("SOLA L");
    objTool.load({"2"});
    QCOMPARE(objTool.tiles(), QStringList({"L1", "L2", "F1"}));
    QCOMPARE(objTool.view().getLoadedResult(), QStringList({"L1", "F1", "L2"})); // in the order of loading
}

void tst_results_application::quantificationFollowsTheTable_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strType");
    QTest::addColumn<QString>("strPerUnit");
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<QString>("strUnit");
    QTest::addColumn<double>("f"); // 0: the values stay
    const QString strMolar = QString::fromUtf8("pmol M-\u00B9 cm-\u00B9");
    QTest::newRow("SOLA none") << 0 << QString() << QString() << "m_pPhotonsPerSecRB"
                               << "photons/sec" << 1.0;
    QTest::newRow("SOLA cells") << 0 << "Cells"
                                << "250"
                                << "m_pSOLACellsRB"
                                << "cells" << 250.0;
    QTest::newRow("SOLA cells, fraction") << 0 << "Cells"
                                          << "0.125"
                                          << "m_pSOLACellsRB"
                                          << "cells" << 0.125;
    QTest::newRow("SOLA cells, 0") << 0 << "Cells"
                                   << "0"
                                   << "m_pSOLACellsRB"
                                   << "cells" << 0.0;
    QTest::newRow("SOLA cells, text") << 0 << "Cells"
                                      << "many"
                                      << "m_pSOLACellsRB"
                                      << "cells" << 0.0;
    QTest::newRow("SOLA cells, absent") << 0 << "Cells" << QString() << "m_pSOLACellsRB"
                                        << "cells" << 0.0;
    QTest::newRow("SOLA cells, below 0") << 0 << "Cells"
                                         << "-2"
                                         << "m_pSOLACellsRB"
                                         << "cells" << 0.0;
    QTest::newRow("NOVA none") << 1 << QString() << QString() << "m_pPmolMcmRB" << strMolar << 1e-7;
    QTest::newRow("NOVA dye") << 1 << "Dye molecules"
                              << "2"
                              << "m_pPmolRB"
                              << "pmol" << 2.0 * 6.022e11;
    QTest::newRow("NOVA dye, 0") << 1 << "Dye molecules"
                                 << "0"
                                 << "m_pPmolRB"
                                 << "pmol" << 0.0;
    QTest::newRow("NOVA cells") << 1 << "Cells"
                                << "4"
                                << "m_pNOVACellsRB"
                                << "cells" << 4.0;
}

void tst_results_application::quantificationFollowsTheTable()
{
    QFETCH(int, nKind);
    QFETCH(QString, strType);
    QFETCH(QString, strPerUnit);
    QFETCH(QString, strButton);
    QFETCH(QString, strUnit);
    QFETCH(double, f);
    SResultDocument objDocument(nKind);
    objDocument.strMeasurementType = strType;
    objDocument.strPerUnitValue = strPerUnit;
    objDocument.setCube(4, 0.25); // isn't refined: the stored values are the raw ones
    CLoaded objLoaded({objDocument}, strButton);
    sAnalysisBase& objRecord = objLoaded.record();
    QCOMPARE(objRecord.objVolume.getNoOfVoxels(), 64L);
    const double dDivisor = f > 0.0 ? f : 1.0;
    for (int i = 0; i < 64; ++i)
    {
        const C3DVolume::Voxel* pShown = objRecord.objVolume.getVoxelByNum(i);
        const C3DVolume::Voxel* pRaw = objRecord.objRawVolume.getVoxelByNum(i);
        const float fStored = objDocument.vecVoxels[4 * static_cast<size_t>(i) + 3];
        QCOMPARE(pRaw->fValue, fStored);
        QCOMPARE(pShown->fValue, static_cast<float>(static_cast<double>(fStored) / dDivisor));
        QCOMPARE(pShown->x, objDocument.vecVoxels[4 * static_cast<size_t>(i)]);
        QCOMPARE(pShown->z, objDocument.vecVoxels[4 * static_cast<size_t>(i) + 2]);
    }
    QCOMPARE(objRecord.objVolume.getAttribMinValue(), static_cast<float>(1.0 / dDivisor));
    QCOMPARE(objRecord.objVolume.getAttribMaxValue(), static_cast<float>(64.0 / dDivisor));
    QCOMPARE(SViewPeek::unit(objLoaded->view(), nKind), strUnit);
    QCOMPARE(SViewPeek::unit(objLoaded->view(), 1 - nKind), QString());
}

void tst_results_application::everyVoxelTakesANewNumber()
{
    for (const bool bScaled : {true, false})
    {
        SResultDocument objDocument;
        objDocument.setCube(4, 0.25);
        objDocument.strMeasurementType = "Cells";
        objDocument.strPerUnitValue = bScaled ? "2" : "0";
        CLoaded objLoaded({objDocument}, "m_pSOLACellsRB");
        sAnalysisBase& objRecord = objLoaded.record();
        const long nFirstRaw = objRecord.objRawVolume.getVoxelByNum(0)->nID;
        const long nFirst = objRecord.objVolume.getVoxelByNum(0)->nID;
        QCOMPARE(objRecord.objRawVolume.getVoxelByNum(63)->nID, nFirstRaw + 63);
        QCOMPARE(objRecord.objVolume.getVoxelByNum(63)->nID, nFirst + 63);
        QCOMPARE(nFirst, bScaled ? nFirstRaw + 64 : nFirstRaw); // rescaling takes as many as there are voxels, otherwise none
        QCOMPARE(C3DSGNode::m_nObjectCount, nFirst + 64);
    }
}

void tst_results_application::anotherRecordIsRescaledWhereTheCaseDiffers()
{
    SResultDocument objFirst;
    objFirst.setCube(4, 0.25);
    objFirst.strMeasurementType = "Cells";
    objFirst.strPerUnitValue = "2";
    SResultDocument objSecond = objFirst;
    objSecond.strSequenceID = "seq1";
    objSecond.strPerUnitValue = "8";
    CLoaded objLoaded({objFirst, objSecond}, "m_pSOLACellsRB");
    // The first tile is derived anew from its stored values with the second one's divisor, nothing compounds; the second one stays as read.
    QCOMPARE(objLoaded.record(0).strSequenceID, QString("SEQ1"));
    QCOMPARE(objLoaded.record(0).objVolume.getVoxelByNum(63)->fValue, 8.0f);
    QCOMPARE(objLoaded.record(0).objRawVolume.getVoxelByNum(63)->fValue, 64.0f);
    QCOMPARE(objLoaded.record(1).strSequenceID, QString("seq1"));
    QCOMPARE(objLoaded.record(1).objVolume.getVoxelByNum(63)->fValue, 64.0f);
}

ORM_TEST_MAIN(tst_results_application)
#include "tst_results_application.moc"
