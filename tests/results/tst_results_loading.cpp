#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "ExpectedLoad.h"
#include "OrmTestMain.h"

#include "COrmProcess.h"
#include "COrmSequenceDataset.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

#include <functional>

#include <sys/stat.h>

/// From the index of saved results to the tiles: listing and pruning, the load flow with its guards.
class tst_results_loading : public QObject
{
    Q_OBJECT

private slots:
    void theIndexFillsTheListInItsOrder();
    void anUnreadableIndexShowsAnEmptyList();
    void aClosedSequenceKeepsItsResults();
    void anOpenSequenceIsReadWhereItLiesNow();
    void listingPrunesWhatIsGone();
    void listingOneKindPrunesTheOther();
    void pruningTellsCaseApart();
    void sameNameInTwoSequencesGivesTwoResults();

    void failuresBeforeReadingLeaveTheStatedState_data();
    void failuresBeforeReadingLeaveTheStatedState();
    void fluorescentFailuresNameTheirOwnIndex();
    void theBoxIsAskedAsStated();
    void anAcquisitionRefusesEverySelectedResultUntold();
    void aFailureLeavesTheOtherResultsAlone();
    void aLoadedResultIsRefusedButItsNeighboursLoad();
    void aNameOfOtherCaseIsFoundInTheIndex();
    void withoutASelectionOnlyTheClosingStepsRun();
    void aPressDuringALoadHasNoEffect();
    void closingDuringALoadIsRefused();
    void aLoadedResultIsTheOneSelected();
    void aRemovedResultLoadsAgain();
    void aFailureAfterTheNamesLocksTheUnit();
};

namespace
{

const QString g_strUnable = QStringLiteral("Unable to load analysis data");

/// Two luminescent sequences with some results each.
struct SStudy
{
    CStudyWriter objWriter;

    SStudy()
    {
        for (const QString& strID : {QStringLiteral("SEQ1"), QStringLiteral("SEQ2")})
        {
            objWriter.addSequence(strID);
            SResultDocument objDocument;
            objDocument.strSequenceID = strID;
            for (const char* pName : {"day 3", "day 1", "day 2"})
            {
                objWriter.addResult(strID, pName, objDocument);
            }
        }
    }
};

QString indexPath(const CStudyWriter& objStudy, const QString& strSequenceID, const QString& strFile = QStringLiteral("SOLA.txt"))
{
    return objStudy.sequenceFolder(strSequenceID) + "XML/" + strFile;
}

void checkAtRest()
{
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessAnalysis));
    QVERIFY(!COrmProcess::isProcessInProgress(eLongProcessGeneral));
    QVERIFY(!COrmProcess::isUserInteractionDisabled());
}

void checkCalls(CToolWindow& objTool, const QStringList& lstExpected)
{
    const QString strDifference = ExpectedLoad::difference(objTool.host().calls(), lstExpected);
    QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));
}

} // namespace

void tst_results_loading::theIndexFillsTheListInItsOrder()
{
    SStudy objStudy;
    objStudy.objWriter.addIndexEntry("SEQ1", 0, "", "SOLA_9.xml"); // goes by its section's name
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    QCOMPARE(objTool.savedResults(), QStringList()); // nothing is listed before a click
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.savedResults(), QStringList({"day 3", "day 1", "day 2", "SOLA_4"}));
    objTool.chooseSequence("SOLA SEQ2");
    QCOMPARE(objTool.savedResults(), QStringList({"day 3", "day 1", "day 2"}));
    QCOMPARE(objTool.host().calls(), QStringList()); // listing says nothing
}

void tst_results_loading::anUnreadableIndexShowsAnEmptyList()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.savedResults().size(), 3);
    QVERIFY(QFile::remove(indexPath(objStudy.objWriter, "SEQ1")));
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.savedResults(), QStringList());
    QVERIFY(QDir().mkpath(indexPath(objStudy.objWriter, "SEQ1"))); // a folder where the index should be
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.savedResults(), QStringList());
    QCOMPARE(objTool.host().calls(), QStringList());
}

void tst_results_loading::aClosedSequenceKeepsItsResults()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.close("SEQ1");
    QVERIFY(COrmSequenceDataset::getSequenceDataset("SEQ1") == nullptr);
    objTool.chooseSequence("SOLA SEQ2");
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.savedResults(), QStringList({"day 3", "day 1", "day 2"}));
    objTool.load({"day 1"}); // and it loads from where it lay
    QCOMPARE(objTool.tiles(), QStringList("SEQ1day 1"));
}

void tst_results_loading::anOpenSequenceIsReadWhereItLiesNow()
{
    SStudy objStudy;
    CStudyWriter objElsewhere;
    objElsewhere.addSequence("SEQ1");
    SResultDocument objDocument;
    objElsewhere.addResult("SEQ1", "moved", objDocument);
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.close("SEQ1");
    objTool.sequences().open({objElsewhere.folder()}); // the window isn't told, and wouldn't change the path it knows
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.savedResults(), QStringList("moved"));
    objTool.sequences().close("SEQ1");
    objTool.chooseSequence("SOLA SEQ1"); // closed again: the path known first
    QCOMPARE(objTool.savedResults(), QStringList({"day 3", "day 1", "day 2"}));
}

void tst_results_loading::listingPrunesWhatIsGone()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ2");
    objTool.load({"day 1"});
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"day 1", "day 2"});
    QCOMPARE(objTool.tiles(), QStringList({"SEQ2day 1", "SEQ1day 1", "SEQ1day 2"}));
    objStudy.objWriter.removeIndexEntry("SEQ1", 0, "day 1");
    QSignalSpy objFrames(&objTool.view(), &QOpenGLWidget::aboutToCompose);
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.tiles(), QStringList({"SEQ2day 1", "SEQ1day 2"}));
    QCOMPARE(objTool.view().getLoadedResult(), QStringList({"SEQ2day 1", "SEQ1day 2"}));
    QTRY_VERIFY(!objFrames.isEmpty()); // the view repaints
}

void tst_results_loading::listingOneKindPrunesTheOther()
{
    CStudyWriter objStudy;
    SSequenceLook objBoth = SSequenceLook::fluorescent();
    objBoth.bLuminescent = true;
    objStudy.addSequence("BOTH", objBoth);
    SResultDocument objSOLA(SResultDocument::SOLA);
    SResultDocument objNOVA(SResultDocument::NOVA);
    objSOLA.strSequenceID = objNOVA.strSequenceID = "BOTH";
    objStudy.addResult("BOTH", "only luminescent", objSOLA);
    objStudy.addResult("BOTH", "both", objSOLA);
    objStudy.addResult("BOTH", "both", objNOVA);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA BOTH");
    objTool.load({"only luminescent", "both"});
    QCOMPARE(objTool.tiles(), QStringList({"BOTHonly luminescent", "BOTHboth"}));
    objTool.chooseSequence("NOVA BOTH");
    QCOMPARE(objTool.tiles(), QStringList("BOTHboth"));
    QCOMPARE(objTool.view().getLoadedResult(), QStringList("BOTHboth"));
}

void tst_results_loading::pruningTellsCaseApart()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"day 1"});
    objStudy.objWriter.removeIndexEntry("SEQ1", 0, "day 1");
    objStudy.objWriter.addIndexEntry("SEQ1", 0, "Day 1", "SOLA_2.xml");
    objTool.chooseSequence("SOLA SEQ1");
    QCOMPARE(objTool.tiles(), QStringList());
}

void tst_results_loading::sameNameInTwoSequencesGivesTwoResults()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"day 1"});
    objTool.chooseSequence("SOLA SEQ2");
    objTool.load({"day 1"});
    QCOMPARE(objTool.tiles(), QStringList({"SEQ1day 1", "SEQ2day 1"}));
    objStudy.objWriter.removeIndexEntry("SEQ2", 0, "day 1");
    objTool.chooseSequence("SOLA SEQ2");
    QCOMPARE(objTool.tiles(), QStringList("SEQ1day 1"));
}

/// What is done to the study after its results are listed and before Load is pressed.
using Damage = std::function<void(CStudyWriter&)>;
Q_DECLARE_METATYPE(Damage)

void tst_results_loading::failuresBeforeReadingLeaveTheStatedState_data()
{
    QTest::addColumn<Damage>("fnDamage");
    QTest::addColumn<QString>("strLog"); // %1: the path of the index
    QTest::newRow("index gone") << Damage([](CStudyWriter& w) { QFile::remove(indexPath(w, "SEQ1")); }) << "log 1: Unable to load %1file";
    QTest::newRow("index a folder") << Damage(
                                           [](CStudyWriter& w)
                                           {
                                               QFile::remove(indexPath(w, "SEQ1"));
                                               QDir().mkpath(indexPath(w, "SEQ1"));
                                           })
                                    << "log 1: Unable to load %1file";
    QTest::newRow("index a pipe") << Damage(
                                         [](CStudyWriter& w)
                                         {
                                             const QString strIndex = indexPath(w, "SEQ1");
                                             QFile::remove(strIndex);
                                             QCOMPARE(mkfifo(strIndex.toLocal8Bit().constData(), 0600), 0);
                                         })
                                  << "log 1: Unable to load %1file";
    QTest::newRow("name gone") << Damage([](CStudyWriter& w) { w.removeIndexEntry("SEQ1", 0, "day 1"); })
                               << "log 3: No results exist with this name.";
    QTest::newRow("index empty") << Damage([](CStudyWriter& w) { CStudyWriter::writeFile(indexPath(w, "SEQ1"), QByteArray()); })
                                 << "log 3: No results exist with this name.";
    for (const char* pFile : {"", "../SEQ2/XML/SOLA_4.xml", "/etc/passwd", "a/../../x"})
    {
        QTest::addRow("file name \"%s\"", pFile) << Damage(
                                                        [pFile](CStudyWriter& w)
                                                        {
                                                            w.removeIndexEntry("SEQ1", 0, "day 1");
                                                            w.addIndexEntry("SEQ1", 0, "day 1", pFile);
                                                        })
                                                 << "log 3: No result file exist for this result: day 1";
    }
    QTest::newRow("file a link out of the folder") << Damage(
                                                          [](CStudyWriter& w)
                                                          {
                                                              const QString strFile = indexPath(w, "SEQ1", "SOLA_2.xml");
                                                              QFile::remove(strFile);
                                                              QVERIFY(QFile::link(indexPath(w, "SEQ2", "SOLA_5.xml"), strFile));
                                                          })
                                                   << "log 3: No result file exist for this result: day 1";
}

void tst_results_loading::failuresBeforeReadingLeaveTheStatedState()
{
    QFETCH(Damage, fnDamage);
    QFETCH(QString, strLog);
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    fnDamage(objStudy.objWriter);
    objTool.host().clear();
    QString strAtBox;
    objTool.host().setAnswer(
        [&](const SMessageRequest&)
        {
            strAtBox = QStringLiteral("cursor %1, process %2, interface %3")
                           .arg(QApplication::overrideCursor() != nullptr)
                           .arg(COrmProcess::isProcessInProgress(eLongProcessAnalysis))
                           .arg(COrmProcess::isUserInteractionDisabled());
            return 0;
        });
    objTool.load({"day 1"});
    if (strLog.contains("%1"))
    {
        strLog = strLog.arg(indexPath(objStudy.objWriter, "SEQ1"));
    }
    checkCalls(objTool, QStringList({"interface locked", "cursor set 3", strLog}) + ExpectedLoad::report() + ExpectedLoad::closing());
    QCOMPARE(strAtBox, QString("cursor 0, process 0, interface 0"));
    QCOMPARE(objTool.tiles(), QStringList());
    QCOMPARE(objTool.view().getLoadedResult(), QStringList());
    QVERIFY(objTool.get<QGroupBox>("m_pSOLAGB")->isEnabled());
    checkAtRest();
}

void tst_results_loading::fluorescentFailuresNameTheirOwnIndex()
{
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1", SSequenceLook::fluorescent());
    objStudy.addResult("SEQ1", "R", SResultDocument(SResultDocument::NOVA));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("NOVA SEQ1");
    const QString strIndex = indexPath(objStudy, "SEQ1", "NOVA.txt");
    QVERIFY(QFile::remove(strIndex));
    objTool.host().clear();
    objTool.load({"R"});
    checkCalls(objTool, QStringList({"interface locked", "cursor set 3", "log 1: Unable to load " + strIndex + "file"}) +
                            ExpectedLoad::report() + ExpectedLoad::closing());
    checkAtRest();
}

void tst_results_loading::theBoxIsAskedAsStated()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objStudy.objWriter.removeIndexEntry("SEQ1", 0, "day 1");
    objTool.load({"day 1"});
    QCOMPARE(objTool.host().boxes().size(), 1);
    const SMessageRequest& objBox = objTool.host().boxes().first();
    QCOMPARE(objBox.eKind, QMessageBox::Information);
    QCOMPARE(objBox.pParent, &objTool.window());
    QVERIFY(objBox.strCaption.isNull());
    QCOMPARE(objBox.strText, g_strUnable);
    QVERIFY(objBox.bTextButtons);
    QCOMPARE(objBox.lstTexts, QStringList({QString(), QString(), QString()}));
    QCOMPARE(objBox.nDefault, 0);
    QCOMPARE(objBox.nEscape, -1);
}

void tst_results_loading::anAcquisitionRefusesEverySelectedResultUntold()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    COrmProcess::setProcessInProgress(eLongProcessAcquisition, true);
    objTool.load({"day 1", "day 2"});
    COrmProcess::setProcessInProgress(eLongProcessAcquisition, false);
    const QString strLog = "log 2: Unable to proceed with loading Analysis results - acquisition in progress. Try again later.";
    checkCalls(objTool, QStringList({"interface locked", strLog, strLog}) + ExpectedLoad::closing());
    QCOMPARE(objTool.tiles(), QStringList());
    checkAtRest();
    objTool.host().clear();
    objTool.load({"day 1"});
    QCOMPARE(objTool.tiles(), QStringList("SEQ1day 1"));
}

void tst_results_loading::aFailureLeavesTheOtherResultsAlone()
{
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1");
    SResultDocument objBroken;
    objBroken.leaveOut("Orm3.0.Volume.Voxels");
    objStudy.addResult("SEQ1", "a", SResultDocument());
    objStudy.addResult("SEQ1", "b", objBroken);
    objStudy.addResult("SEQ1", "c", SResultDocument());
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"a", "b", "c"});
    QCOMPARE(objTool.tiles(), QStringList({"SEQ1a", "SEQ1c"}));
    QCOMPARE(objTool.host().boxes().size(), 1);
    // One process per result; on success it ends with the button only, after a failure at once and then again with the button.
    QStringList lstProcess;
    for (const QString& strCall : objTool.host().calls())
    {
        if (strCall.startsWith("process") || strCall.startsWith("cursor") || strCall.startsWith("interface") || strCall.startsWith("box"))
        {
            lstProcess.append(strCall);
        }
    }
    const QString strStart = "process start 15 8 false Aborting...";
    QCOMPARE(lstProcess, QStringList({"interface locked", "cursor set 3", strStart, "cursor restored", "cursor set 3", strStart}) +
                             ExpectedLoad::failedReading() + QStringList({"cursor set 3", strStart, "cursor restored"}) +
                             ExpectedLoad::closing());
    checkAtRest();
}

void tst_results_loading::aLoadedResultIsRefusedButItsNeighboursLoad()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"day 1"});
    objTool.host().clear();
    objTool.load({"day 1"});
    checkCalls(objTool, QStringList({"interface locked", "cursor set 3", "log 2: day 1  is already loaded"}) +
                            ExpectedLoad::report("day 1  is already loaded") + ExpectedLoad::closing());
    objTool.host().clear();
    objTool.load({"day 3", "day 1", "day 2"});
    QCOMPARE(objTool.tiles(), QStringList({"SEQ1day 1", "SEQ1day 3", "SEQ1day 2"}));
    QCOMPARE(objTool.host().callsOf("box"), QStringList("box information: day 1  is already loaded"));
}

void tst_results_loading::aNameOfOtherCaseIsFoundInTheIndex()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objStudy.objWriter.removeIndexEntry("SEQ1", 0, "day 1");
    objStudy.objWriter.addIndexEntry("SEQ1", 0, "DAY 1", "SOLA_2.xml");
    objTool.load({"day 1"});
    // Found, loaded, and then pruned by the listing that follows a load, since its key keeps the case of the entry that was clicked.
    QCOMPARE(objTool.host().callsOf("box"), QStringList());
    QVERIFY(objTool.host().calls().contains("progress 13/15: Loading  analysis: Updating results view..."));
    QCOMPARE(objTool.savedResults(), QStringList({"day 3", "day 2", "DAY 1"}));
    QCOMPARE(objTool.tiles(), QStringList());
    // The exact name isn't loaded, so it may be.
    objTool.load({"DAY 1"});
    QCOMPARE(objTool.tiles(), QStringList("SEQ1DAY 1"));
}

void tst_results_loading::withoutASelectionOnlyTheClosingStepsRun()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    QVERIFY(!objTool.get<QPushButton>("m_pLoadButton")->isEnabled());
    objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(1);
    objTool.host().clear();
    QVERIFY(QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton"));
    checkCalls(objTool, QStringList("interface locked") + ExpectedLoad::closing());
    QCOMPARE(objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->currentIndex(), 0);
}

void tst_results_loading::aPressDuringALoadHasNoEffect()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objStudy.objWriter.removeIndexEntry("SEQ1", 0, "day 1");
    objTool.host().setAnswer(
        [&](const SMessageRequest&)
        {
            if (!objTool.host().calls().contains("pressed again"))
            {
                objTool.host().note("pressed again");
                QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
            }
            return 0;
        });
    objTool.load({"day 1"});
    const QStringList lstCalls = objTool.host().calls();
    const int nPressed = lstCalls.indexOf("pressed again");
    QVERIFY(nPressed > 0);
    QCOMPARE(lstCalls.value(nPressed + 1), QString("interface locked")); // the first load goes on, no second one began
    QCOMPARE(lstCalls.count("process end 1"), 1);
}

void tst_results_loading::closingDuringALoadIsRefused()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    bool bClosed = true;
    connect(&objTool.window(), &COrmBasePalette::statusHintChanged, this,
            [&](const QString& strHint)
            {
                if (strHint == "Updating source volume...")
                {
                    bClosed = objTool.window().close();
                }
            });
    objTool.load({"day 1"});
    QVERIFY(!bClosed);
    QVERIFY(objTool.window().isVisible());
    QCOMPARE(objTool.tiles(), QStringList("SEQ1day 1"));
    QVERIFY(objTool.window().close());
}

void tst_results_loading::aLoadedResultIsTheOneSelected()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"day 3", "day 1"});
    QCOMPARE(objTool.view().getLoadedResult(), QStringList({"SEQ1day 3", "SEQ1day 1"}));
    QCOMPARE(objTool.view().getSelectedList(), QStringList("SEQ1day 1"));
    const auto* pWavelengths = objTool.get<QComboBox>("m_pWaveLengthCB");
    QVERIFY(pWavelengths->isEnabled());
    QCOMPARE(pWavelengths->count(), 2);
    QCOMPARE(pWavelengths->itemText(0), QString("560"));
    QCOMPARE(pWavelengths->itemText(1), QString("620"));
    QVERIFY(!objTool.get<QGroupBox>("m_pSOLAGB")->isEnabled());
    QVERIFY(objTool.get<QGroupBox>("m_pNOVAGB")->isEnabled());
}

void tst_results_loading::aRemovedResultLoadsAgain()
{
    SStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.objWriter.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"day 1"});
    objTool.view().clear3DView();
    QCOMPARE(objTool.tiles(), QStringList());
    QVERIFY(objTool.get<QGroupBox>("m_pSOLAGB")->isEnabled());
    objTool.host().clear();
    objTool.load({"day 1"});
    QCOMPARE(objTool.host().callsOf("box"), QStringList());
    QCOMPARE(objTool.tiles(), QStringList("SEQ1day 1"));
}

void tst_results_loading::aFailureAfterTheNamesLocksTheUnit()
{
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1");
    SResultDocument objNoMesh;
    objNoMesh.leaveOut("Orm3.0.Surface.Vertices");
    SResultDocument objNoVolume;
    objNoVolume.leaveOut("Orm3.0.Volume.Voxels");
    objStudy.addResult("SEQ1", "fails before the names", objNoMesh);
    objStudy.addResult("SEQ1", "fails after them", objNoVolume);
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence("SOLA SEQ1");
    objTool.load({"fails before the names"});
    QVERIFY(objTool.get<QGroupBox>("m_pSOLAGB")->isEnabled());
    objTool.load({"fails after them"});
    QVERIFY(!objTool.get<QGroupBox>("m_pSOLAGB")->isEnabled());
    QCOMPARE(objTool.tiles(), QStringList());
}

ORM_TEST_MAIN(tst_results_loading)
#include "tst_results_loading.moc"
