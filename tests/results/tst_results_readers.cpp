#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "ExpectedLoad.h"
#include "OrmTestMain.h"
#include "ReaderCases.h"

#include "COrmLog.h"
#include "COrmProcess.h"
#include "PaletteWalkHost.h"
#include "ResultDocumentKinds.h"
#include "ResultUnits.h"

#include <QGroupBox>
#include <QRadioButton>

/// Both readers of result documents through the window: every message with its channel, level and place among all calls of the host,
/// each brought about by one damaged document; which absences are tolerated; what the record holds.
class tst_results_readers : public QObject
{
    Q_OBJECT

private slots:
    void soundDocumentsLoadInTheStatedOrder_data();
    void soundDocumentsLoadInTheStatedOrder();
    void everyMessageOfTheTablesHasARow_data();
    void everyMessageOfTheTablesHasARow();
    void everyMessageHasItsPlace_data();
    void everyMessageHasItsPlace();
    void unitsThatDontFitAreRefused_data();
    void unitsThatDontFitAreRefused();
    void loadingWaitsForTheSavePrompt();
    void entriesOfTheToolNameNoPlace();
    void transientRecordsMirrorTheDocument_data();
    void transientRecordsMirrorTheDocument();
    void theNameOfTheAnalysisStandsInTheTexts();
    void fluorescentTablesGainAVersion_data();
    void fluorescentTablesGainAVersion();
};

namespace
{

QByteArray kindName(int nKind)
{
    return nKind == 1 ? "NOVA" : "SOLA";
}

/// The sequence "SEQ1" with the document as its one result "R".
void loadDocument(CToolWindow& objTool, const SResultDocument& objDocument)
{
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1", objDocument.nKind == 1 ? SSequenceLook::fluorescent() : SSequenceLook::luminescent());
    objStudy.addResult("SEQ1", "R", objDocument);
    objTool.open(objStudy.folder());
    objTool.chooseSequence(kindName(objDocument.nKind) + " SEQ1");
    objTool.host().clear();
    objTool.load({"R"});
}

/// The host's calls where something differs after an entry. An entry "?10 ..." is said in that version only.
QStringList expectedCalls(const ReaderCases::SCase& objCase, const QString& strVersion)
{
    QStringList lstReading = ExpectedLoad::reading(objCase.nKind);
    if (!objCase.strAfter.isEmpty())
    {
        const int nAt = lstReading.indexOf(objCase.strAfter) + 1;
        const QStringList lstRest = lstReading.mid(nAt);
        lstReading = lstReading.mid(0, nAt);
        const QString strOther = strVersion == "1.0" ? "?20 " : "?10 ";
        for (const QString& strThen : objCase.lstThen)
        {
            if (!strThen.startsWith(strOther))
            {
                lstReading.append(strThen.startsWith('?') ? strThen.mid(4) : strThen);
            }
        }
        lstReading += objCase.eEnd == ReaderCases::SCase::Ends ? QStringList() : lstRest;
    }
    QStringList lst = ExpectedLoad::beginning() + lstReading;
    lst += objCase.eEnd == ReaderCases::SCase::Continues ? ExpectedLoad::application(objCase.nKind) + QStringList("cursor restored")
                                                         : ExpectedLoad::failedReading();
    return lst + ExpectedLoad::closing();
}

} // namespace

void tst_results_readers::soundDocumentsLoadInTheStatedOrder_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strVersion");
    QTest::newRow("SOLA 1.0") << 0 << "1.0";
    QTest::newRow("SOLA 2.0") << 0 << "2.0";
    QTest::newRow("NOVA 1.0") << 1 << "1.0";
    QTest::newRow("NOVA 2.0") << 1 << "2.0";
}

void tst_results_readers::soundDocumentsLoadInTheStatedOrder()
{
    QFETCH(int, nKind);
    QFETCH(QString, strVersion);
    CToolWindow objTool;
    loadDocument(objTool, SResultDocument(nKind, strVersion));
    const QString strDifference = ExpectedLoad::difference(objTool.host().calls(), ExpectedLoad::success(nKind));
    QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));
    QCOMPARE(objTool.tiles(), QStringList("SEQ1R"));
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
    QVERIFY(!COrmProcess::isUserInteractionDisabled());
}

void tst_results_readers::everyMessageOfTheTablesHasARow_data()
{
    QTest::addColumn<int>("nKind");
    QTest::newRow("SOLA") << 0;
    QTest::newRow("NOVA") << 1;
}

void tst_results_readers::everyMessageOfTheTablesHasARow()
{
    QFETCH(int, nKind);
    const ResultDocument::SKind& k = nKind == 1 ? ResultDocument::nova() : ResultDocument::sola();
    QList<ResultDocument::SMessage> lstMessages = {k.objNoDocument,     k.objReadingMesh,      k.objNoMesh10,     k.objNoSequence,
                                                   k.objNoOptical,      k.objReadingHeightMap, k.objNoHeightMap,  k.objBadHeightMap,
                                                   k.objReadingDensity, k.objReadingVolume,    k.objNoVolume,     k.objNoRegistration,
                                                   k.objReadingResults, k.objNoResults,        k.objBadResultsRow};
    for (const ResultDocument::SListBlock& objBlock : {k.objNames, k.lstFilters[0], k.lstFilters[1], k.objClicks})
    {
        lstMessages.append({objBlock.objNoCount, objBlock.objNoEntry});
    }
    for (const ResultDocument::SDensityBlock& objBlock : {k.objSimulated, k.objMeasured})
    {
        lstMessages.append({objBlock.objNoHeader, objBlock.objMismatch, objBlock.objNoValue10, objBlock.objNoValue20});
    }
    QStringList lstSaid = ExpectedLoad::reading(nKind);
    for (const ReaderCases::SCase& objCase : ReaderCases::allCases())
    {
        for (const QString& strThen : objCase.nKind == nKind ? objCase.lstThen : QStringList())
        {
            lstSaid.append(strThen.startsWith('?') ? strThen.mid(4) : strThen);
        }
    }
    int nMessages = 0;
    for (const ResultDocument::SMessage& objMessage : lstMessages)
    {
        if (objMessage.eChannel != ResultDocument::EChannel::None)
        {
            const QString strChannel = objMessage.eChannel == ResultDocument::EChannel::Log ? "log 1: " : "hint: ";
            const QString strEntry = strChannel + QString(objMessage.pText).replace("%1", "");
            QVERIFY2(lstSaid.contains(strEntry), qPrintable(strEntry));
            ++nMessages;
        }
    }
    QCOMPARE(nMessages, nKind == 1 ? 30 : 26);
}

void tst_results_readers::everyMessageHasItsPlace_data()
{
    QTest::addColumn<int>("nCase");
    QTest::addColumn<QString>("strVersion");
    const QList<ReaderCases::SCase> lstCases = ReaderCases::allCases();
    for (int i = 0; i < lstCases.size(); ++i)
    {
        for (const char* pVersion : {"1.0", "2.0"})
        {
            if (lstCases.at(i).pVersion == nullptr || QByteArray(lstCases.at(i).pVersion) == pVersion)
            {
                QTest::addRow("%s %s: %s", kindName(lstCases.at(i).nKind).constData(), pVersion, lstCases.at(i).pName)
                    << i << QString(pVersion);
            }
        }
    }
}

void tst_results_readers::everyMessageHasItsPlace()
{
    QFETCH(int, nCase);
    QFETCH(QString, strVersion);
    const ReaderCases::SCase objCase = ReaderCases::allCases().at(nCase);
    SResultDocument objDocument(objCase.nKind, strVersion);
    objCase.fnDamage(objDocument);
    CToolWindow objTool;
    loadDocument(objTool, objDocument);
    const QString strDifference = ExpectedLoad::difference(objTool.host().calls(), expectedCalls(objCase, strVersion));
    QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));

    // The state that is left: no cursor, no process, a free interface, and a tile only of what was loaded.
    const bool bLoaded = objCase.eEnd == ReaderCases::SCase::Continues;
    QCOMPARE(objTool.tiles(), bLoaded ? QStringList("SEQ1R") : QStringList());
    QCOMPARE(objTool.view().getLoadedResult(), bLoaded ? QStringList("SEQ1R") : QStringList());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
    QVERIFY(!COrmProcess::isUserInteractionDisabled());
    // The unit is locked as soon as a reader has got past the names, whether or not the load then failed.
    const QStringList lstReading = ExpectedLoad::reading(objCase.nKind);
    const bool bNamesRead = objTool.host().calls().contains(lstReading.at(4)) &&
                            !objTool.host().calls().join('\n').contains("wavelength information") &&
                            !objTool.host().calls().join('\n').contains("Image Source information");
    const char* pGroup = objCase.nKind == 1 ? "m_pNOVAGB" : "m_pSOLAGB";
    if (bNamesRead)
    {
        QVERIFY(!objTool.get<QGroupBox>(pGroup)->isEnabled());
    }
}

void tst_results_readers::unitsThatDontFitAreRefused_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QString>("strType"); // of the result's calibration
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<QString>("strLog"); // empty: it loads
    const QString strSOLA = "The SOLA result Measurement Type '%1' is not compatible with the Selected Unit '%2'.";
    const QString strNOVA = "The NOVA result Measurement Type '%1' is not compatible with the Selected Unit '%2'.";
    const QString strMolar = QString::fromLatin1("pmol M-\xC2\xB9 cm-\xC2\xB9");
    QTest::newRow("SOLA plain, photons") << 0 << QString() << "m_pPhotonsPerSecRB" << QString();
    QTest::newRow("SOLA plain, cells") << 0 << QString() << "m_pSOLACellsRB" << strSOLA.arg("photons/sec", "cells");
    QTest::newRow("SOLA cells, cells") << 0 << "Cells"
                                       << "m_pSOLACellsRB" << QString();
    QTest::newRow("SOLA cells, photons") << 0 << "Cells"
                                         << "m_pPhotonsPerSecRB" << strSOLA.arg("cells", "photons/sec");
    QTest::newRow("SOLA dye, photons") << 0 << "Dye molecules"
                                       << "m_pPhotonsPerSecRB" << strSOLA.arg("", "photons/sec");
    QTest::newRow("SOLA dye, cells") << 0 << "Dye molecules"
                                     << "m_pSOLACellsRB" << strSOLA.arg("", "cells");
    QTest::newRow("NOVA plain, molar") << 1 << QString() << "m_pPmolMcmRB" << QString();
    QTest::newRow("NOVA plain, pmol") << 1 << QString() << "m_pPmolRB" << strNOVA.arg(strMolar, "pmol");
    QTest::newRow("NOVA plain, cells") << 1 << QString() << "m_pNOVACellsRB" << strNOVA.arg(strMolar, "cells");
    QTest::newRow("NOVA dye, pmol") << 1 << "Dye molecules"
                                    << "m_pPmolRB" << QString();
    QTest::newRow("NOVA dye, molar") << 1 << "Dye molecules"
                                     << "m_pPmolMcmRB" << strNOVA.arg("pmol", strMolar);
    QTest::newRow("NOVA dye, cells") << 1 << "Dye molecules"
                                     << "m_pNOVACellsRB" << strNOVA.arg("pmol", "cells");
    QTest::newRow("NOVA cells, cells") << 1 << "Cells"
                                       << "m_pNOVACellsRB" << QString();
    QTest::newRow("NOVA cells, pmol") << 1 << "Cells"
                                      << "m_pPmolRB" << strNOVA.arg("cells", "pmol");
    QTest::newRow("NOVA unknown, molar") << 1 << "cells"
                                         << "m_pPmolMcmRB" << strNOVA.arg("", strMolar);
}

void tst_results_readers::unitsThatDontFitAreRefused()
{
    QFETCH(int, nKind);
    QFETCH(QString, strType);
    QFETCH(QString, strButton);
    QFETCH(QString, strLog);
    SResultDocument objDocument(nKind);
    objDocument.strMeasurementType = strType;
    if (!strType.isNull())
    {
        objDocument.strPerUnitValue = "2";
    }
    CToolWindow objTool;
    objTool.get<QRadioButton>(qPrintable(strButton))->setChecked(true);
    loadDocument(objTool, objDocument);
    QStringList lstExpected = ExpectedLoad::success(nKind);
    if (!strLog.isEmpty())
    {
        // Refused before any mesh is read.
        lstExpected = ExpectedLoad::beginning() + ExpectedLoad::reading(nKind).mid(0, 2) + QStringList("log 2: " + strLog) +
                      ExpectedLoad::failedReading() + ExpectedLoad::closing();
    }
    const QString strDifference = ExpectedLoad::difference(objTool.host().calls(), lstExpected);
    QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));
    QCOMPARE(objTool.tiles().size(), strLog.isEmpty() ? 1 : 0);
}

void tst_results_readers::loadingWaitsForTheSavePrompt()
{
    // Somebody is asking whether to save, so one permit is out. He stays at it until the load goes on without him, or long enough to see
    // that it doesn't.
    COrmBasePalette::lockAskSavingResults(1);
    QSemaphore objTableRead;
    QSemaphore objWentOn;
    bool bWentOn = false;
    QScopedPointer<QThread> pPrompt(QThread::create(
        [&]
        {
            objTableRead.acquire();
            bWentOn = objWentOn.tryAcquire(1, 250);
            COrmBasePalette::unlockAskSavingResults(1);
        }));
    pPrompt->start();
    CToolWindow objTool;
    connect(&objTool.window(), &COrmBasePalette::statusHintChanged, &objTool.host(),
            [&](const QString& strHint)
            {
                if (strHint == "Reading results output...")
                {
                    objTableRead.release();
                }
                else if (strHint == "Updating surface mesh...")
                {
                    objWentOn.release();
                }
            });
    loadDocument(objTool, SResultDocument());
    pPrompt->wait();
    QVERIFY(!bWentOn);
    QCOMPARE(objTool.tiles(), QStringList("SEQ1R"));
}

void tst_results_readers::entriesOfTheToolNameNoPlace()
{
    QList<SLogEntry> lstEntries;
    const int nSink = getLogObject()->addSink(
        [&](const SLogEntry& objEntry)
        {
            if (objEntry.strMessage == "Reading source volume..." || objEntry.strMessage.startsWith("Unable to load "))
            {
                lstEntries.append(objEntry);
            }
        });
    CToolWindow objTool;
    loadDocument(objTool, SResultDocument());
    objTool.load({"R"}); // its files are gone by now
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstEntries.size(), 2);
    for (const SLogEntry& objEntry : lstEntries)
    {
        QVERIFY(objEntry.strFile.isEmpty());
        QCOMPARE(objEntry.nLine, 0);
        QVERIFY(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d$").match(objEntry.strBuildTime).hasMatch());
        QVERIFY(!objEntry.bFlag);
    }
}

/// Reads the document through a plain palette into the record.
template <class TRecord>
bool readInto(TRecord& objRecord, int& nCount, QStringList& lstNames, const SResultDocument& objDocument,
              QMap<QString, QStringList>& mapNames, const QString& strAnalysisName = QString())
{
    CStudyWriter objStudy;
    const QString strFile = objStudy.addResult("SEQ1", "R", objDocument);
    COrmBasePalette objPalette(nullptr, nullptr, false, Qt::WindowFlags());
    CPaletteWalkHost objHost(objPalette, strAnalysisName,
                             ResultUnits::unitOfCalibration(objDocument.nKind, objDocument.strMeasurementType));
    objHost.keepNames(mapNames, "SEQ1R");
    return ResultDocument::read(objDocument.nKind == 1 ? ResultDocument::nova() : ResultDocument::sola(), objHost, strFile,
                                {objRecord, nCount, lstNames});
}

void tst_results_readers::transientRecordsMirrorTheDocument_data()
{
    soundDocumentsLoadInTheStatedOrder_data();
}

void tst_results_readers::transientRecordsMirrorTheDocument()
{
    QFETCH(int, nKind);
    QFETCH(QString, strVersion);
    SResultDocument objDocument(nKind, strVersion);
    objDocument.setNames({" first", "second "});
    objDocument.strMeasurementType = "Cells";
    objDocument.strPerUnitValue = "250";
    const QString strTotal = nKind == 1 ? "Total fluorescence yield" : "Total source flux";
    objDocument.lstResults.append({"The " + strTotal + " of all", "1"}); // dropped, as the plain one is
    objDocument.lstResults.append({strTotal.toLower(), "2"});            // kept
    SSOLAAnalysis objSOLA;
    SNOVAAnalysis objNOVA;
    SAnalysisBase& objRecord = nKind == 1 ? static_cast<SAnalysisBase&>(objNOVA) : objSOLA;
    int& nCount = nKind == 1 ? objNOVA.nImageSourceCount : objSOLA.nWavelengthCount;
    QStringList& lstNames = nKind == 1 ? objNOVA.lstImageSources : objSOLA.lstWavelengths;
    QMap<QString, QStringList> mapNames;
    QVERIFY(readInto(objRecord, nCount, lstNames, objDocument, mapNames));

    QCOMPARE(objRecord.strSequenceID, QString("SEQ1"));
    QCOMPARE(nCount, 2);
    QCOMPARE(lstNames, QStringList({" first", "second "}));
    QCOMPARE(mapNames.value("SEQ1R"), lstNames);
    QCOMPARE(objRecord.lstClickNumbers, QStringList({"C1", "C3", "C5"})); // of five
    QCOMPARE(objRecord.nTotalVertices, objDocument.vertexCount());
    QVERIFY(objRecord.vecSimulatedPhotonDensity == objDocument.vecSimulated);
    QVERIFY(objRecord.vecMeasuredPhotonDensity == objDocument.vecMeasured);
    QCOMPARE(objRecord.objMesh.getNumOfVertices(), long(objDocument.vertexCount()));
    QVERIFY(objRecord.objMesh.vertices() == objDocument.vecVertices);
    QCOMPARE(objRecord.objVolume.getNoOfVoxels(), 64L);
    QCOMPARE(double(objRecord.objVolume.getTotalFluxForSelectedVoxels(false)), objDocument.total());
    QCOMPARE(objRecord.objQuantData.strMeasurementType, QString("Cells"));
    QCOMPARE(objRecord.objQuantData.strPerUnitValue, QString("250"));
    QCOMPARE(objRecord.imgHeightMap.width(), 4L);
    QCOMPARE(objRecord.imgHeightMap.height(), 3L);
    QCOMPARE(objRecord.imgHeightMap.valueAt(3, 2), 5.5);

    QStringList lstKeys = {"Final voxel size (mm)", nKind == 1 ? "Starting vsize" : "Starting vsize (best)", "Reduced Chi2",
                           strTotal.toLower()};
    QStringList lstValues = {"1.0", "4.0", "1.25", "2"};
    if (nKind == 1)
    {
        lstKeys.append("Version");
        lstValues.append(" 4.2.1");
    }
    QCOMPARE(objRecord.lstResultKeys, lstKeys);
    QCOMPARE(objRecord.lstResultValues, lstValues);

    QCOMPARE(objRecord.lstEmissionFilters, nKind == 1 ? QStringList({"620", "640"}) : QStringList());
    QCOMPARE(objRecord.lstExcitationFilters, nKind == 1 ? QStringList({"570", "580"}) : QStringList());
    QCOMPARE(objRecord.strSourceDatabase, nKind == 1 ? QString("sources") : QString());
    QCOMPARE(objRecord.strTissueDatabase, nKind == 1 ? QString("tissues") : QString());
    QCOMPARE(objRecord.mapRegistrationMatrices.size(), nKind == 1 ? 0 : 1);
    QCOMPARE(objRecord.imgMask.width() * objRecord.imgMask.height(), nKind == 1 ? 0L : 4L);
}

void tst_results_readers::theNameOfTheAnalysisStandsInTheTexts()
{
    CRecordingHost objHost;
    SResultDocument objDocument;
    objDocument.bRegistration = false;
    SSOLAAnalysis objRecord;
    QMap<QString, QStringList> mapNames;
    QVERIFY(readInto(objRecord, objRecord.nWavelengthCount, objRecord.lstWavelengths, objDocument, mapNames, "100 %1"));
    QCOMPARE(objHost.callsOf("progress 5/15"), QStringList("progress 5/15: Loading 100 %1 analysis: reading measured photon densities..."));
    QCOMPARE(objHost.callsOf("progress 8/15"), QStringList("progress 8/15: Loading 100 %1 analysis: Displaying read data..."));
    QCOMPARE(objHost.callsOf("progress 7/15"), QStringList("progress 7/15: Loading 100 %1 analysis: Reading results..."));
    QCOMPARE(objHost.callsOf("log 1: Registration"),
             QStringList("log 1: Registration matrices are not present in the 100 %1 result XML file."));
}

void tst_results_readers::fluorescentTablesGainAVersion_data()
{
    QTest::addColumn<QString>("strSoftware");
    QTest::addColumn<bool>("bTable");
    QTest::addColumn<QString>("strVersion");
    QTest::newRow("with a colon") << "Ormelle version: 4.2.1" << true << " 4.2.1";
    QTest::newRow("no section") << QString() << true << "N/A";
    QTest::newRow("no table") << "4.2.1" << false << "4.2.1";
}

void tst_results_readers::fluorescentTablesGainAVersion()
{
    QFETCH(QString, strSoftware);
    QFETCH(bool, bTable);
    QFETCH(QString, strVersion);
    SResultDocument objDocument(SResultDocument::NOVA);
    objDocument.strSoftware = strSoftware;
    if (!bTable)
    {
        objDocument.leaveOut("Orm3.0.NOVA.Results");
    }
    SNOVAAnalysis objRecord;
    QMap<QString, QStringList> mapNames;
    QVERIFY(readInto(objRecord, objRecord.nImageSourceCount, objRecord.lstImageSources, objDocument, mapNames));
    QCOMPARE(objRecord.lstResultKeys.size(), bTable ? 4 : 1);
    QCOMPARE(objRecord.lstResultKeys.last(), QString("Version"));
    QCOMPARE(objRecord.lstResultValues.last(), strVersion);
}

ORM_TEST_MAIN(tst_results_readers)
#include "tst_results_readers.moc"
