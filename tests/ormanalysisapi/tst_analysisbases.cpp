#include "AnalysisResultXMLWrapper.h"
#include "CAnalysis3DBase.h"
#include "COrmBasePalette.h"
#include "COrmLog.h"
#include "ReconstructionBase.h"
#include "SAnalysisBase.h"

#include <QApplication>
#include <QFile>
#include <QMetaMethod>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <thread>
#include <type_traits>

namespace
{
const QString s_strMatrix = QStringLiteral("1 0 0 5.5 0 1 0 -2 0 0 1 1e3 0 0 0 1");

/// A document around sections, opened.
class CDocument
{
public:
    explicit CDocument(const QByteArray& bySections, const QByteArray& byVersion = "2.0")
    {
        QFile file(m_dir.filePath(QStringLiteral("result.xml")));
        if (!file.open(QIODevice::WriteOnly))
        {
            qFatal("the test's document cannot be written");
        }
        file.write("<Ormelle.Result Version=\"" + byVersion + "\">" + bySections + "</Ormelle.Result>");
        file.close();
        if (!m_objWrapper.loadXMLFile(file.fileName()))
        {
            qFatal("the test's document cannot be read");
        }
    }
    AnalysisResultXMLWrapper& wrapper() { return m_objWrapper; }

private:
    QTemporaryDir m_dir;
    AnalysisResultXMLWrapper m_objWrapper;
};

QByteArray matrices(const QByteArray& byCount, const QByteArray& byChildren, const QByteArray& byKind = "SOLA")
{
    return "<Orm3.0." + byKind + ".Data><Orm3.0." + byKind + ".Registration.Matrices Count=\"" + byCount + "\">" + byChildren +
           "</Orm3.0." + byKind + ".Registration.Matrices></Orm3.0." + byKind + ".Data>";
}

QByteArray matrix(const QByteArray& byIndex, const QByteArray& byValues)
{
    return "<Orm3.0.SOLA.Registration.Matrix Index=\"" + byIndex + "\" Values=\"" + byValues + "\"/>";
}

/// Counts what the log receives from now on.
class CLogCounter
{
public:
    CLogCounter()
    {
        m_nSink = getLogObject()->addSink([this](const SLogEntry& objEntry) { m_lstEntries.append(objEntry); });
    }
    ~CLogCounter() { getLogObject()->removeSink(m_nSink); }
    QList<SLogEntry> m_lstEntries;

private:
    int m_nSink;
};

/// A tetrahedron and one voxel in the newer version.
const char* const s_pszSurface = "<Orm3.0.Surface.Data><Orm3.0.Surface.Vertices Count=\"4\"><Orm3.0.Surface.Vertices.Values><Text.Data>"
                                 "000000000000000000000000"
                                 "0000803f0000000000000000"
                                 "000000000000803f00000000"
                                 "00000000000000000000803f"
                                 "</Text.Data></Orm3.0.Surface.Vertices.Values></Orm3.0.Surface.Vertices>"
                                 "<Orm3.0.Surface.Triangles Count=\"4\"><Orm3.0.Surface.Triangles.Values><Text.Data>"
                                 "000000000200000001000000"
                                 "000000000100000003000000"
                                 "000000000300000002000000"
                                 "010000000200000003000000"
                                 "</Text.Data></Orm3.0.Surface.Triangles.Values></Orm3.0.Surface.Triangles></Orm3.0.Surface.Data>";
const char* const s_pszVolume = "<Orm3.0.Volume.Data><Orm3.0.Volume.Voxels Kind=\"SOLA\" Count=\"1\" VoxelSize=\"0.5\">"
                                "<Orm3.0.Volume.Voxels.Values><Text.Data>0000003f0000003f0000003f00002041</Text.Data>"
                                "</Orm3.0.Volume.Voxels.Values></Orm3.0.Volume.Voxels></Orm3.0.Volume.Data>";

class CAnalysis : public CAnalysis3DBase
{
public:
    bool doReconstruction() override
    {
        ++m_nReconstructions;
        return false;
    }
    int m_nReconstructions = 0;
};

class CPalette : public COrmBasePalette
{
public:
    using COrmBasePalette::COrmBasePalette;
    using COrmBasePalette::m_strAnalysisName;
};
} // namespace

/// The records of results being read, the sections that every analysis has, the palette and the analyses.
class tst_analysisbases : public QObject
{
    Q_OBJECT

private slots:
    void recordsStartEmpty();
    void recordsTellThemselvesApart();
    void registrationMatrices();
    void damagedMatricesLeaveTheMap_data();
    void damagedMatricesLeaveTheMap();
    void matricesOfTheOtherKind();
    void wellPlateSection_data();
    void wellPlateSection();
    void versionInformation_data();
    void versionInformation();
    void maskSection();
    void damagedMaskLeavesNone_data();
    void damagedMaskLeavesNone();
    void surfaceAndVolume();
    void volumeOfTheWrongKindIsRefused();
    void unreadKindsSaySo();
    void paletteIsAnOrdinaryDialog();
    void statusHints();
    void savePromptIsOneForAll();
    void runReconstructs();
    void baseAnalysisDoesNothing();
    void reconstructionPointer();
};

void tst_analysisbases::recordsStartEmpty()
{
    SSOLAAnalysis objSOLA;
    QVERIFY(objSOLA.strSequenceID.isEmpty());
    QCOMPARE(objSOLA.nTotalVertices, 0);
    QCOMPARE(objSOLA.nWavelengthCount, 0);
    QVERIFY(objSOLA.lstWavelengths.isEmpty());
    QVERIFY(objSOLA.mapRegistrationMatrices.isEmpty());
    QVERIFY(objSOLA.vecMeasuredPhotonDensity.empty());
    QVERIFY(objSOLA.vecSimulatedPhotonDensity.empty());
    QVERIFY(objSOLA.imgHeightMap.isEmpty());
    QVERIFY(objSOLA.imgMask.isEmpty());
    QCOMPARE(objSOLA.objMesh.getNumOfVertices(), 0L);
    QCOMPARE(objSOLA.objVolume.getNoOfVoxels(), 0L);
    QCOMPARE(objSOLA.objMesh.name(), QString());
    QVERIFY(objSOLA.objReconParams.mapNameToIndex.isEmpty());
    QVERIFY(objSOLA.objReconParams.mapIndexToImage.isEmpty());
    QCOMPARE(objSOLA.objParamsTabData.fDefaultValue, 0.0f);
    QCOMPARE(objSOLA.objParamsTabData.nDefaultIndex, 0);
    QCOMPARE(objSOLA.objParamsTabData.nDefaultState, 1);
    const CWPQuantData& objData = objSOLA.objQuantData;
    for (const QString* pstr : {&objData.strName, &objData.strDate, &objData.strMeasurementType, &objData.strProbe, &objData.strPlateType,
                                &objData.strUnit, &objData.strPerUnitValue})
    {
        QVERIFY(pstr->isNull());
    }
    SNOVAAnalysis objNOVA;
    QCOMPARE(objNOVA.nImageSourceCount, 0);
    QVERIFY(objNOVA.lstImageSources.isEmpty());
}

void tst_analysisbases::recordsTellThemselvesApart()
{
    SSOLAAnalysis objSOLA;
    SNOVAAnalysis objNOVA;
    SAnalysisBase* pSOLA = &objSOLA;
    SAnalysisBase* pNOVA = &objNOVA;
    pSOLA->whoamI();
    pNOVA->whoamI();
    QVERIFY(dynamic_cast<SSOLAAnalysis*>(pSOLA));
    QVERIFY(!dynamic_cast<SSOLAAnalysis*>(pNOVA));
    QVERIFY(dynamic_cast<SNOVAAnalysis*>(pNOVA));
    QVERIFY(std::has_virtual_destructor<SAnalysisBase>::value);
    QVERIFY(std::has_virtual_destructor<ParamsTabData>::value);
    QVERIFY(std::has_virtual_destructor<DataPreviewToReconParams>::value);
    QVERIFY(!std::is_polymorphic<CWPQuantData>::value);
}

void tst_analysisbases::registrationMatrices()
{
    const QByteArray byOne = matrix("3", s_strMatrix.toLatin1());
    const QByteArray byTwo = matrix("-1", "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15");
    const QByteArray byAgain = matrix("3", "16 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15");
    QMap<int, _SFMatrix> mapMatrices;
    CDocument objDocument(matrices("2", byOne + byTwo));
    QVERIFY(objDocument.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), &mapMatrices));
    QCOMPARE(mapMatrices.keys(), (QList<int>{-1, 3}));
    QCOMPARE(mapMatrices[3].at(0, 3), 5.5);
    QCOMPARE(mapMatrices[3].at(1, 3), -2.0);
    QCOMPARE(mapMatrices[3].at(2, 3), 1000.0);
    QCOMPARE(mapMatrices[-1].at(3, 2), 14.0);

    CDocument objRepeated(matrices("2", byOne + byAgain));
    QVERIFY(objRepeated.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), &mapMatrices));
    QCOMPARE(mapMatrices.keys(), QList<int>{3});
    QCOMPARE(mapMatrices[3].at(0, 0), 16.0);

    CDocument objFewer(matrices("1", byOne + byTwo));
    QVERIFY(objFewer.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), &mapMatrices));
    QCOMPARE(mapMatrices.keys(), QList<int>{3});

    CDocument objNone(matrices("0", ""));
    QVERIFY(objNone.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), &mapMatrices));
    QVERIFY(mapMatrices.isEmpty());
}

void tst_analysisbases::damagedMatricesLeaveTheMap_data()
{
    QTest::addColumn<QByteArray>("bySections");
    const QByteArray byGood = matrix("0", s_strMatrix.toLatin1());
    QTest::newRow("no section") << QByteArray("<Orm3.0.SOLA.Data/>");
    QTest::newRow("no document content") << QByteArray();
    QTest::newRow("more counted than there are") << matrices("2", byGood);
    QTest::newRow("count beyond reason") << matrices("2147483647", byGood);
    QTest::newRow("negative count") << matrices("-1", byGood);
    QTest::newRow("count no number") << matrices("two", byGood);
    QTest::newRow("15 numbers") << matrices("1", matrix("0", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15"));
    QTest::newRow("17 numbers") << matrices("1", matrix("0", s_strMatrix.toLatin1() + " 1"));
    QTest::newRow("two blanks") << matrices("1", matrix("0", "1  2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"));
    QTest::newRow("no number") << matrices("1", matrix("0", "1 x 3 4 5 6 7 8 9 10 11 12 13 14 15 16"));
    QTest::newRow("not finite") << matrices("1", matrix("0", "1 nan 3 4 5 6 7 8 9 10 11 12 13 14 15 16"));
    QTest::newRow("comma for point") << matrices("1", matrix("0", "1,5 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"));
    QTest::newRow("no index") << matrices("1", "<Orm3.0.SOLA.Registration.Matrix Values=\"" + s_strMatrix.toLatin1() + "\"/>");
    QTest::newRow("index no int") << matrices("1", matrix("1.0", s_strMatrix.toLatin1()));
}

void tst_analysisbases::damagedMatricesLeaveTheMap()
{
    QFETCH(QByteArray, bySections);
    CDocument objDocument(bySections);
    QMap<int, _SFMatrix> mapMatrices;
    mapMatrices.insert(77, _SFMatrix());
    QVERIFY(!objDocument.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), &mapMatrices));
    QCOMPARE(mapMatrices.keys(), QList<int>{77});
    QVERIFY(!objDocument.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), nullptr));
}

void tst_analysisbases::matricesOfTheOtherKind()
{
    const QByteArray byChild = "<Orm3.0.NOVA.Registration.Matrix Index=\"0\" Values=\"" + s_strMatrix.toLatin1() + "\"/>";
    CDocument objDocument(matrices("1", byChild, "NOVA"));
    QMap<int, _SFMatrix> mapMatrices;
    QVERIFY(!objDocument.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.SOLA.Data"), &mapMatrices));
    QVERIFY(objDocument.wrapper().getRegistrationMatrices(QStringLiteral("Orm3.0.NOVA.Data"), &mapMatrices));
    QCOMPARE(mapMatrices.size(), 1);
}

void tst_analysisbases::wellPlateSection_data()
{
    QTest::addColumn<QByteArray>("bySections");
    QTest::addColumn<QStringList>("lstFields");
    const auto fnSection = [](const QByteArray& byInner)
    { return "<Orm3.0.WellPlate.Data><Orm3.0.WellPlate.Quantification" + byInner + "</Orm3.0.WellPlate.Data>"; };
    QTest::newRow("absent") << QByteArray() << QStringList{"", "", "", "", "", "", ""};
    QTest::newRow("attributes") << fnSection(" Name=\"n\" Date=\"2026-08-01\" MeasurementType=\"Cells\" Probe=\"p\" PlateType=\"96\" "
                                             "Unit=\"u\" PerUnitValue=\"2.5\"/>")
                                << QStringList{"n", "2026-08-01", "Cells", "p", "96", "u", "2.5"};
    QTest::newRow("child elements") << fnSection("><MeasurementType>Dye molecules</MeasurementType><PerUnitValue>7</PerUnitValue>"
                                                 "</Orm3.0.WellPlate.Quantification>")
                                    << QStringList{"", "", "Dye molecules", "", "", "", "7"};
    QTest::newRow("some only") << fnSection(" MeasurementType=\"Cells\"/>") << QStringList{"", "", "Cells", "", "", "", ""};
}

void tst_analysisbases::wellPlateSection()
{
    QFETCH(QByteArray, bySections);
    QFETCH(QStringList, lstFields);
    CDocument objDocument(bySections);
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    SSOLAAnalysis objAnalysis;
    objAnalysis.objQuantData.strName = QStringLiteral("of another document");
    QVERIFY(objPalette.readWellPlateQuantification(objDocument.wrapper(), &objAnalysis));
    const CWPQuantData& objData = objAnalysis.objQuantData;
    QCOMPARE((QStringList{objData.strName, objData.strDate, objData.strMeasurementType, objData.strProbe, objData.strPlateType,
                          objData.strUnit, objData.strPerUnitValue}),
             lstFields);
    QCOMPARE(objData.strName.isNull(), lstFields[0].isEmpty());
    QVERIFY(!objPalette.readWellPlateQuantification(objDocument.wrapper(), nullptr));
}

void tst_analysisbases::versionInformation_data()
{
    QTest::addColumn<QByteArray>("bySections");
    QTest::addColumn<QString>("strVersion");
    QTest::newRow("absent") << QByteArray() << QString();
    QTest::newRow("without the key") << QByteArray("<Orm3.0.Version.Data><Orm3.0.Version/></Orm3.0.Version.Data>") << QString();
    QTest::newRow("given") << QByteArray("<Orm3.0.Version.Data><Orm3.0.Version Software=\"Ormelle Version: 3.1\"/></Orm3.0.Version.Data>")
                           << QStringLiteral("Ormelle Version: 3.1");
}

void tst_analysisbases::versionInformation()
{
    QFETCH(QByteArray, bySections);
    QFETCH(QString, strVersion);
    CDocument objDocument(bySections);
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    QString strRead = QStringLiteral("old");
    QCOMPARE(objPalette.readVersionInformation(objDocument.wrapper(), strRead), !strVersion.isEmpty());
    QCOMPARE(strRead, strVersion);
}

void tst_analysisbases::maskSection()
{
    CDocument objDocument("<Orm3.0.Mask.Data><Orm3.0.Mask.Image Width=\"3\" Height=\"2\"><Orm3.0.Mask.Pixel><Text.Data>0001ff00Ff80"
                          "</Text.Data></Orm3.0.Mask.Pixel></Orm3.0.Mask.Image></Orm3.0.Mask.Data>");
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    SSOLAAnalysis objAnalysis;
    QVERIFY(objPalette.readMask(objDocument.wrapper(), &objAnalysis));
    QCOMPARE(objAnalysis.imgMask.width(), 3L);
    QCOMPARE(objAnalysis.imgMask.height(), 2L);
    QCOMPARE(objAnalysis.imgMask.valueAt(2, 0), 255.0);
    QCOMPARE(objAnalysis.imgMask.valueAt(1, 0), 1.0);
    QCOMPARE(objAnalysis.imgMask.valueAt(1, 1), 255.0);
    QCOMPARE(objAnalysis.imgMask.valueAt(2, 1), 128.0);
    QVERIFY(!objPalette.readMask(objDocument.wrapper(), nullptr));
}

void tst_analysisbases::damagedMaskLeavesNone_data()
{
    QTest::addColumn<QByteArray>("bySections");
    const auto fnMask = [](const QByteArray& bySize, const QByteArray& byText)
    {
        return "<Orm3.0.Mask.Data><Orm3.0.Mask.Image " + bySize + "><Orm3.0.Mask.Pixel><Text.Data>" + byText +
               "</Text.Data></Orm3.0.Mask.Pixel></Orm3.0.Mask.Image></Orm3.0.Mask.Data>";
    };
    QTest::newRow("absent") << QByteArray();
    QTest::newRow("too short") << fnMask("Width=\"3\" Height=\"2\"", "0001ff00Ff");
    QTest::newRow("bad digit") << fnMask("Width=\"1\" Height=\"1\"", "0g");
    QTest::newRow("size that wraps") << fnMask("Width=\"65536\" Height=\"65536\"", "00");
    QTest::newRow("huge size") << fnMask("Width=\"2147483647\" Height=\"2147483647\"", "00");
    QTest::newRow("no width") << fnMask("Height=\"2\"", "0001");
    QTest::newRow("negative") << fnMask("Width=\"-1\" Height=\"-2\"", "0001");
    QTest::newRow("no pixels") << QByteArray("<Orm3.0.Mask.Data><Orm3.0.Mask.Image Width=\"1\" Height=\"1\"/></Orm3.0.Mask.Data>");
}

void tst_analysisbases::damagedMaskLeavesNone()
{
    QFETCH(QByteArray, bySections);
    CDocument objDocument(bySections);
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    SSOLAAnalysis objAnalysis;
    quint8 nPixel = 1;
    objAnalysis.imgMask.initWithData(ORM_DATA_UINT8, 1, 1, &nPixel);
    QVERIFY(!objPalette.readMask(objDocument.wrapper(), &objAnalysis));
    QVERIFY(objAnalysis.imgMask.isEmpty());
}

void tst_analysisbases::surfaceAndVolume()
{
    CDocument objDocument(QByteArray(s_pszSurface) + s_pszVolume);
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    SSOLAAnalysis objAnalysis;
    QString strKind = QStringLiteral("SOLA");
    QVERIFY(objPalette.readMesh(objDocument.wrapper(), &objAnalysis));
    QVERIFY(objPalette.readVolumeData(objDocument.wrapper(), &objAnalysis, strKind));
    QCOMPARE(objAnalysis.objMesh.getNumOfVertices(), 4L);
    QCOMPARE(objAnalysis.objVolume.getNoOfVoxels(), 1L);
    QCOMPARE(objAnalysis.objVolume.getVoxelSize(), 0.5f);
    QCOMPARE(objAnalysis.objVolume.getVoxelByNum(0)->fValue, 10.0f);
    QVERIFY(!objPalette.readMesh(objDocument.wrapper(), nullptr));
    QVERIFY(!objPalette.readVolumeData(objDocument.wrapper(), nullptr, strKind));
}

void tst_analysisbases::volumeOfTheWrongKindIsRefused()
{
    CDocument objDocument(s_pszVolume);
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    SNOVAAnalysis objAnalysis;
    QString strKind = QStringLiteral("NOVA");
    QVERIFY(!objPalette.readVolumeData(objDocument.wrapper(), &objAnalysis, strKind));
    QVERIFY(!objPalette.readMesh(objDocument.wrapper(), &objAnalysis));
    QCOMPARE(objAnalysis.objVolume.getNoOfVoxels(), 0L);
}

void tst_analysisbases::unreadKindsSaySo()
{
    CDocument objDocument("");
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    SSOLAAnalysis objAnalysis;
    CLogCounter objLog;
    QVERIFY(!objPalette.readSourceMeshes(objDocument.wrapper(), &objAnalysis));
    QVERIFY(!objPalette.ReadRegisteredSurface(objDocument.wrapper(), &objAnalysis));
    QCOMPARE(objLog.m_lstEntries.size(), 2);
    for (const SLogEntry& objEntry : objLog.m_lstEntries)
    {
        QVERIFY(objEntry.strMessage.contains(QStringLiteral("this host reads none")));
        QVERIFY(!objEntry.strFile.isEmpty());
    }
}

void tst_analysisbases::paletteIsAnOrdinaryDialog()
{
    QWidget wndParent;
    CPalette objPalette(&wndParent, "named", true, Qt::Tool);
    QCOMPARE(objPalette.parentWidget(), &wndParent);
    QCOMPARE(objPalette.objectName(), QStringLiteral("named"));
    QVERIFY(objPalette.isModal());
    QVERIFY(objPalette.windowFlags().testFlag(Qt::Tool));
    CPalette objPlain(nullptr, nullptr, false, Qt::WindowFlags());
    QVERIFY(objPlain.objectName().isEmpty());
    QVERIFY(!objPlain.isModal());
    QVERIFY(objPlain.m_strAnalysisName.isEmpty());
    objPlain.show();
    QVERIFY(objPlain.isVisible());
    QVERIFY(objPlain.close());
    QVERIFY(!objPlain.isVisible());
    // What the host tells is no slot here: the palettes that listen make it one.
    for (int i = 0; i < COrmBasePalette::staticMetaObject.methodCount(); ++i)
    {
        QVERIFY(!QByteArray(COrmBasePalette::staticMetaObject.method(i).name()).startsWith("onSequence"));
    }
}

void tst_analysisbases::statusHints()
{
    CPalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    QSignalSpy spy(&objPalette, &COrmBasePalette::statusHintChanged);
    CLogCounter objLog;
    objPalette.setStatusHint(QStringLiteral("Reading mesh surface..."));
    objPalette.setStatusHint(QStringLiteral("Reading mesh surface..."));
    QCOMPARE(objPalette.statusHint(), QStringLiteral("Reading mesh surface..."));
    objPalette.cleanupStatusHint();
    QVERIFY(objPalette.statusHint().isEmpty());
    QCOMPARE(spy.size(), 3);
    QCOMPARE(spy[1].first().toString(), QStringLiteral("Reading mesh surface..."));
    QCOMPARE(spy[2].first().toString(), QString());
    QCOMPARE(objLog.m_lstEntries.size(), 2);
    QCOMPARE(objLog.m_lstEntries[0].strMessage, QStringLiteral("Reading mesh surface..."));
    QVERIFY(!objLog.m_lstEntries[0].strFile.isEmpty());
}

void tst_analysisbases::savePromptIsOneForAll()
{
    // All five can be had again and again, and nobody gets past a lock of all.
    for (int i = 0; i < 3; ++i)
    {
        COrmBasePalette::lockAskSavingResults(5);
        COrmBasePalette::unlockAskSavingResults(5);
    }
    COrmBasePalette::lockAskSavingResults(2);
    COrmBasePalette::lockAskSavingResults(3);
    QSemaphore objStarted;
    QAtomicInt nPassed(0);
    std::thread objOther(
        [&]()
        {
            objStarted.release();
            COrmBasePalette::lockAskSavingResults(5);
            nPassed.storeRelease(1);
            COrmBasePalette::unlockAskSavingResults(5);
        });
    objStarted.acquire();
    COrmBasePalette::unlockAskSavingResults(2);
    QCOMPARE(nPassed.loadAcquire(), 0); // three are still held
    COrmBasePalette::unlockAskSavingResults(3);
    objOther.join();
    QCOMPARE(nPassed.loadAcquire(), 1);
}

void tst_analysisbases::runReconstructs()
{
    CAnalysis objAnalysis;
    objAnalysis.run();
    QCOMPARE(objAnalysis.m_nReconstructions, 1);
    QVERIFY(!objAnalysis.isRunning());
    QThread* pThread = &objAnalysis;
    QVERIFY(dynamic_cast<CAnalysis2DBase*>(pThread));
}

void tst_analysisbases::baseAnalysisDoesNothing()
{
    CAnalysis3DBase objAnalysis;
    float fRange = 3.0f;
    QStringList lstTexts = {QStringLiteral("kept")};
    QVERIFY(!objAnalysis.doReconstruction());
    QVERIFY(!objAnalysis.loadSequence(nullptr));
    QVERIFY(!objAnalysis.computeDynamicRange(nullptr, fRange));
    QCOMPARE(fRange, 3.0f);
    QVERIFY(!objAnalysis.applyAnalysisResults(nullptr, nullptr, false, 0));
    QVERIFY(!objAnalysis.getResultsOutput(lstTexts, lstTexts));
    QCOMPARE(objAnalysis.getSelectedClickNumbers(lstTexts), 0);
    QCOMPARE(lstTexts, QStringList{QStringLiteral("kept")});
    CLogCounter objLog;
    QVERIFY(!objAnalysis.exportVoxels2CSV(nullptr, QStringLiteral("voxels.csv"), QString()));
    QCOMPARE(objLog.m_lstEntries.size(), 1);
    QVERIFY(objLog.m_lstEntries[0].strMessage.contains(QStringLiteral("voxels.csv")));
}

void tst_analysisbases::reconstructionPointer()
{
    CAnalysis3DBase objAnalysis;
    QVERIFY(!objAnalysis.reconstruction());
    ReconstructionBase objReconstruction;
    QObject objOther;
    objAnalysis.setup3DreconPointer(&objOther);
    QVERIFY(!objAnalysis.reconstruction());
    objAnalysis.setup3DreconPointer(&objReconstruction);
    QCOMPARE(objAnalysis.reconstruction(), &objReconstruction);
    objAnalysis.setup3DreconPointer(&objOther);
    QCOMPARE(objAnalysis.reconstruction(), &objReconstruction);
    objAnalysis.setup3DreconPointer(nullptr);
    QCOMPARE(objAnalysis.reconstruction(), &objReconstruction);
}

QTEST_MAIN(tst_analysisbases)
#include "tst_analysisbases.moc"
