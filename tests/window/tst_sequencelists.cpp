#include "WindowTestTools.h"

#include "COrmSequenceDataset.h"
#include "COrmXYPlot.h"
#include "OrmTestMain.h"
#include "SSequenceFacts.h"

#include <QGroupBox>
#include <QToolButton>

#include <memory>

using WindowTest::call;
using WindowTest::CStudy;

namespace
{
QStringList listed(CToolWindow& objTool)
{
    return TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW"));
}

void tellAdded(CToolWindow& objTool, COrmSequenceDataset* pSequence)
{
    call(objTool, "onSequenceAdded", Q_ARG(COrmSequenceDataset*, pSequence));
}

void tellRemoved(CToolWindow& objTool, COrmSequenceDataset* pSequence)
{
    call(objTool, "onSequenceRemoved", Q_ARG(COrmSequenceDataset*, pSequence));
}

/// Opens the sequence of a folder without telling anybody.
std::unique_ptr<COrmSequenceDataset> openQuietly(const QString& strFolder)
{
    SSequenceFacts sFacts;
    const QString strReason = OrmSequenceFacts::read(strFolder + QStringLiteral("SequenceInfo.txt"), sFacts);
    if (!strReason.isEmpty())
    {
        TestWidgets::fail(strReason);
    }
    return std::make_unique<COrmSequenceDataset>(sFacts);
}

bool isSOLAShown(CToolWindow& objTool)
{
    return objTool.get<QGroupBox>("m_pSOLAGB")->isVisibleTo(&objTool.window());
}

bool isNOVAShown(CToolWindow& objTool)
{
    return objTool.get<QGroupBox>("m_pNOVAGB")->isVisibleTo(&objTool.window());
}
} // namespace

/// The list of sequences: who gets on it, in what order, and what a click on an entry selects.
class tst_sequencelists : public QObject
{
    Q_OBJECT

private slots:
    void wholeListIsTakenOver();
    void otherListsChangeNothing_data();
    void otherListsChangeNothing();
    void entriesStandByKindThenInOrder();
    void entriesHaveTheIconOfTheirKind();
    void entriesCarryNoData();
    void firstEntryIsSelectedWithoutAMark();
    void rebuildSelectsTheFirstAgain();
    void rebuildNudgesTheWindow();
    void emptyListsHideTheWindow();
    void groupBoxesFollowTheList();
    void eligibleSequencesAreListed_data();
    void eligibleSequencesAreListed();
    void sequenceReportedTwiceKeepsItsPath();
    void firstPathOutlivesTheList();
    void closedSequenceStaysReadable();
    void reopenedSequenceStaysBeyondTheClose();
    void closedTwiceIsClosedOnce();
    void unknownSequenceIsNotClosed();
    void clickSelectsSequenceAndKind();
    void entryOfNoKindChangesNoSelection();
    void namesThatHoldKindWords();
    void blankAtTheEndIsLost();
    void keptSlotsKeepThePrefix();
    void manySequencesAreListedQuickly();
};

void tst_sequencelists::wholeListIsTakenOver()
{
    CToolWindow objTool;
    QList<QString> lstSOLA = {QStringLiteral("SOLA"), QStringLiteral("B"), QStringLiteral("A")};
    QList<QString> lstNOVA = {QStringLiteral("NOVA"), QStringLiteral("D"), QStringLiteral("C")};
    objTool.window().updateSequenceNameList(lstNOVA);
    objTool.window().updateSequenceNameList(lstSOLA);
    const QStringList lstExpected = {QStringLiteral("SOLA B"), QStringLiteral("SOLA A"), QStringLiteral("NOVA D"),
                                     QStringLiteral("NOVA C")};
    QCOMPARE(listed(objTool), lstExpected);
    // The window has copies.
    lstSOLA.clear();
    call(objTool, "onInitialUpdate");
    QCOMPARE(listed(objTool), lstExpected);
    QList<QString> lstOther = {QStringLiteral("SOLA"), QStringLiteral("E")};
    objTool.window().updateSequenceNameList(lstOther);
    const QStringList lstReplaced = {QStringLiteral("SOLA E"), QStringLiteral("NOVA D"), QStringLiteral("NOVA C")};
    QCOMPARE(listed(objTool), lstReplaced);
    call(objTool, "onInitialUpdate"); // nothing of the former list is left
    QCOMPARE(listed(objTool), lstReplaced);
}

void tst_sequencelists::otherListsChangeNothing_data()
{
    QTest::addColumn<QStringList>("lstSequences");
    QTest::newRow("empty") << QStringList();
    QTest::newRow("without marker") << QStringList{QStringLiteral("A"), QStringLiteral("SOLA")};
    QTest::newRow("marker in lower case") << QStringList{QStringLiteral("sola"), QStringLiteral("A")};
    QTest::newRow("marker with a blank") << QStringList{QStringLiteral("SOLA "), QStringLiteral("A")};
}

void tst_sequencelists::otherListsChangeNothing()
{
    QFETCH(QStringList, lstSequences);
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const QStringList lstBefore = listed(objTool);
    QList<QString> lstGiven = lstSequences;
    objTool.window().updateSequenceNameList(lstGiven);
    QCOMPARE(listed(objTool), lstBefore);
    QVERIFY(objTool.window().isVisible());
    call(objTool, "onInitialUpdate");
    QCOMPARE(listed(objTool), lstBefore);
}

void tst_sequencelists::entriesStandByKindThenInOrder()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("1F"), SSequenceLook::fluorescent());
    objStudy.addSequence(QStringLiteral("2L"));
    objStudy.addSequence(QStringLiteral("3F"), SSequenceLook::fluorescent());
    objStudy.addSequence(QStringLiteral("4L"));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const QStringList lstExpected = {QStringLiteral("SOLA 2L"), QStringLiteral("SOLA 4L"), QStringLiteral("NOVA 1F"),
                                     QStringLiteral("NOVA 3F")};
    QCOMPARE(listed(objTool), lstExpected);
}

void tst_sequencelists::entriesHaveTheIconOfTheirKind()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    for (int i = 0; i < pList->count(); ++i)
    {
        const bool bSOLA = pList->item(i)->text().startsWith(QLatin1String("SOLA "));
        const QPixmap objPicture(bSOLA ? QStringLiteral(":/Resource/luminescent_icon.xpm")
                                       : QStringLiteral(":/Resource/fluorescent_icon.xpm"));
        QVERIFY(!objPicture.isNull());
        QCOMPARE(pList->item(i)->icon().pixmap(objPicture.size()).toImage().convertToFormat(QImage::Format_ARGB32),
                 objPicture.toImage().convertToFormat(QImage::Format_ARGB32));
    }
}

void tst_sequencelists::entriesCarryNoData()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    for (int i = 0; i < pList->count(); ++i)
    {
        QVERIFY(!pList->item(i)->data(Qt::UserRole).isValid());
    }
}

void tst_sequencelists::firstEntryIsSelectedWithoutAMark()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    const auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    QVERIFY(pList->selectedItems().isEmpty());
    QVERIFY(pList->currentItem() == nullptr);
    QCOMPARE(objTool.savedResults(), QStringList());
    QVERIFY(isSOLAShown(objTool));
    QVERIFY(!isNOVAShown(objTool));
    // It is selected all the same: its results load once their list is there.
    objTool.chooseSequence(QStringLiteral("NOVA N1"));
    QVERIFY(isNOVAShown(objTool));
    objTool.window().updateSequenceNameList(QStringLiteral("NOVA"));
    QVERIFY(isSOLAShown(objTool));
    QVERIFY(!isNOVAShown(objTool));
    QCOMPARE(objTool.savedResults(), QStringList());
}

void tst_sequencelists::rebuildSelectsTheFirstAgain()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("one")});
    CStudyWriter objMore;
    objMore.addSequence(QStringLiteral("S3"));
    objTool.open(objMore.folder());
    QCOMPARE(listed(objTool).size(), 4);
    QCOMPARE(objTool.savedResults(), QStringList());
    QVERIFY(objTool.get<QListWidget>("m_pSequenceNameLW")->selectedItems().isEmpty());
}

void tst_sequencelists::rebuildNudgesTheWindow()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    struct SFilter : public QObject
    {
        bool eventFilter(QObject*, QEvent* pEvent) override
        {
            if (pEvent->type() == QEvent::Resize)
            {
                lstSizes.append(static_cast<QResizeEvent*>(pEvent)->size());
            }
            return false;
        }
        QList<QSize> lstSizes;
    };
    SFilter objFilter;
    const QSize szBefore = objTool.window().size();
    objTool.window().installEventFilter(&objFilter);
    objTool.window().updateSequenceNameList(QStringLiteral("SOLA"));
    const QList<QSize> lstExpected = {szBefore + QSize(1, 0), szBefore};
    QCOMPARE(objFilter.lstSizes, lstExpected);
    QCOMPARE(objTool.window().size(), szBefore);
}

void tst_sequencelists::emptyListsHideTheWindow()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one")});
    objTool.get<QToolButton>("m_pSelectVoxelButton")->click();
    QVERIFY(objTool.window().isVisible());
    int nX = 0;
    float fY = 1.0f;
    QVERIFY(objTool.window().findChild<COrmXYPlot*>()->addDataLine(QStringLiteral("line"), &nX, &fY, 1));
    QList<QString> lstSOLA = {QStringLiteral("SOLA")};
    objTool.window().updateSequenceNameList(lstSOLA);
    QVERIFY(objTool.window().isVisible()); // a NOVA sequence is left
    QList<QString> lstNOVA = {QStringLiteral("NOVA")};
    objTool.window().updateSequenceNameList(lstNOVA);
    QVERIFY(!objTool.window().isVisible());
    QCOMPARE(listed(objTool), QStringList());
    QCOMPARE(objTool.tiles(), QStringList());
    QVERIFY(objTool.window().findChild<COrmXYPlot*>()->dataLines().isEmpty());
    QVERIFY(!objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    QVERIFY(!objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->isEnabled());
    QVERIFY(!objTool.get<QToolButton>("m_pSelectVoxelButton")->isEnabled());
    QVERIFY(!objTool.get<QToolButton>("m_pSelectVoxelButton")->isChecked());
    // Whatever shows it, the next look at the lists hides it again.
    objTool.window().show();
    call(objTool, "onInitialUpdate");
    QVERIFY(!objTool.window().isVisible());
}

void tst_sequencelists::groupBoxesFollowTheList()
{
    CStudy objStudy;
    CToolWindow objTool;
    QVERIFY(!objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->isEnabled());
    QVERIFY(!objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
    objTool.open(objStudy.folder());
    QVERIFY(objTool.get<QGroupBox>("m_pDisplaySurfaceGB")->isEnabled());
    QVERIFY(!objTool.get<QGroupBox>("m_pDisplayVoxelsGB")->isEnabled());
}

void tst_sequencelists::eligibleSequencesAreListed_data()
{
    QTest::addColumn<int>("nLook");
    QTest::addColumn<QStringList>("lstExpected");
    // Bits: structured light, CT, luminescent, fluorescent, trans-illumination, overview.
    const auto row = [](const char* pName, int nLook, const QStringList& lstExpected) { QTest::newRow(pName) << nLook << lstExpected; };
    const QStringList lstSOLA = {QStringLiteral("SOLA X")};
    const QStringList lstNOVA = {QStringLiteral("NOVA X")};
    row("luminescent, structured light", 0b000101, lstSOLA);
    row("luminescent, CT", 0b000110, lstSOLA);
    row("luminescent, no surface", 0b000100, {});
    row("fluorescent, trans-illumination", 0b011001, lstNOVA);
    row("fluorescent, trans-illumination, CT", 0b011010, lstNOVA);
    row("fluorescent, lit from above", 0b001001, {});
    row("fluorescent overview", 0b111001, {});
    row("fluorescent, no surface", 0b011000, {});
    row("both", 0b011101, lstSOLA + lstNOVA);
    row("both, overview", 0b111101, lstSOLA);
}

void tst_sequencelists::eligibleSequencesAreListed()
{
    QFETCH(int, nLook);
    QFETCH(QStringList, lstExpected);
    SSequenceLook sLook;
    sLook.bStructuredLight = (nLook & 1) != 0;
    sLook.bCT = (nLook & 2) != 0;
    sLook.bLuminescent = (nLook & 4) != 0;
    sLook.bFluorescent = (nLook & 8) != 0;
    sLook.bTransIllumination = (nLook & 16) != 0;
    sLook.bOverview = (nLook & 32) != 0;
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("X"), sLook);
    CToolWindow objTool;
    const std::unique_ptr<COrmSequenceDataset> pSequence = openQuietly(objStudy.sequenceFolder(QStringLiteral("X")));
    tellAdded(objTool, pSequence.get());
    QCOMPARE(listed(objTool), lstExpected);
}

void tst_sequencelists::sequenceReportedTwiceKeepsItsPath()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    // The same ID in another folder, with another result.
    CStudyWriter objOther;
    objOther.addSequence(QStringLiteral("S2"));
    objOther.addIndexEntry(QStringLiteral("S2"), 0, QStringLiteral("elsewhere"), QStringLiteral("x.xml"));
    objTool.close(QStringLiteral("S2"));
    {
        const std::unique_ptr<COrmSequenceDataset> pOther = openQuietly(objOther.sequenceFolder(QStringLiteral("S2")));
        tellAdded(objTool, pOther.get());
        QCOMPARE(listed(objTool).count(QStringLiteral("SOLA S2")), 1);
        tellAdded(objTool, pOther.get());
        QCOMPARE(listed(objTool).count(QStringLiteral("SOLA S2")), 1);
        // While it is open its own folder counts.
        objTool.chooseSequence(QStringLiteral("SOLA S2"));
        QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("elsewhere")});
    }
    // Nothing is open any more: the first path is the one that was kept.
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("S2")) == nullptr);
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("one")});
}

void tst_sequencelists::firstPathOutlivesTheList()
{
    CStudy objStudy;
    CStudyWriter objOther;
    objOther.addSequence(QStringLiteral("S2"));
    objOther.addIndexEntry(QStringLiteral("S2"), 0, QStringLiteral("elsewhere"), QStringLiteral("x.xml"));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.close(QStringLiteral("S2"));
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QVERIFY(!listed(objTool).contains(QStringLiteral("SOLA S2")));
    {
        const std::unique_ptr<COrmSequenceDataset> pOther = openQuietly(objOther.sequenceFolder(QStringLiteral("S2")));
        tellAdded(objTool, pOther.get());
    }
    objTool.window().show();
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("one")});
}

void tst_sequencelists::closedSequenceStaysReadable()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.close(QStringLiteral("S1"));
    QVERIFY(listed(objTool).contains(QStringLiteral("SOLA S1")));
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    const QStringList lstResults = {QStringLiteral("one"), QStringLiteral("two")};
    QCOMPARE(objTool.savedResults(), lstResults);
    // The list is built anew by every show; the sequence stays on it until the window is closed.
    call(objTool, "onInitialUpdate");
    QVERIFY(listed(objTool).contains(QStringLiteral("SOLA S1")));
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QVERIFY(!listed(objTool).contains(QStringLiteral("SOLA S1")));
}

void tst_sequencelists::reopenedSequenceStaysBeyondTheClose()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.close(QStringLiteral("S1"));
    const std::unique_ptr<COrmSequenceDataset> pAgain = openQuietly(objStudy.writer().sequenceFolder(QStringLiteral("S1")));
    tellAdded(objTool, pAgain.get());
    QCOMPARE(listed(objTool).count(QStringLiteral("SOLA S1")), 1);
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QVERIFY(listed(objTool).contains(QStringLiteral("SOLA S1")));
}

void tst_sequencelists::closedTwiceIsClosedOnce()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(QStringLiteral("S1"));
    tellRemoved(objTool, pSequence);
    tellRemoved(objTool, pSequence);
    // Once told that it is back, it is back.
    tellAdded(objTool, pSequence);
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QVERIFY(listed(objTool).contains(QStringLiteral("SOLA S1")));
}

void tst_sequencelists::unknownSequenceIsNotClosed()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    CStudyWriter objOther;
    objOther.addSequence(QStringLiteral("X"));
    const std::unique_ptr<COrmSequenceDataset> pOther = openQuietly(objOther.sequenceFolder(QStringLiteral("X")));
    const QStringList lstBefore = listed(objTool);
    tellRemoved(objTool, pOther.get());
    QCOMPARE(listed(objTool), lstBefore);
    tellAdded(objTool, pOther.get());
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    QVERIFY(listed(objTool).contains(QStringLiteral("SOLA X")));
}

void tst_sequencelists::clickSelectsSequenceAndKind()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("NOVA N1"));
    const QStringList lstDyes = {QStringLiteral("dye"), QStringLiteral("dye 2")};
    QCOMPARE(objTool.savedResults(), lstDyes);
    QVERIFY(isNOVAShown(objTool));
    QVERIFY(!isSOLAShown(objTool));
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("one")});
    QVERIFY(isSOLAShown(objTool));
    QVERIFY(!isNOVAShown(objTool));
    objTool.load({QStringLiteral("one")});
    QCOMPARE(objTool.tiles(), QStringList{QStringLiteral("S2one")});
}

void tst_sequencelists::entryOfNoKindChangesNoSelection()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("NOVA N1"));
    QListWidgetItem objItem(QStringLiteral("S1"));
    call(objTool, "onClickSequenceNameWidgetItem", Q_ARG(QListWidgetItem*, &objItem));
    // The kind stays, and the sequence too; without a kind no index is found.
    QVERIFY(isNOVAShown(objTool));
    QCOMPARE(objTool.savedResults(), QStringList());
    objTool.chooseSequence(QStringLiteral("NOVA N1"));
    QCOMPARE(objTool.savedResults().size(), 2);
}

void tst_sequencelists::namesThatHoldKindWords()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("a NOVA b"));
    objStudy.addSequence(QStringLiteral("a b"), SSequenceLook::fluorescent());
    objStudy.addIndexEntry(QStringLiteral("a b"), 1, QStringLiteral("of the other"), QStringLiteral("x.xml"));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA a NOVA b"));
    QVERIFY(isNOVAShown(objTool));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("of the other")});
}

void tst_sequencelists::blankAtTheEndIsLost()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    QList<QString> lstSOLA = {QStringLiteral("SOLA"), QStringLiteral("S1 ")};
    objTool.window().updateSequenceNameList(lstSOLA);
    const QStringList lstExpected = {QStringLiteral("SOLA S1 "), QStringLiteral("NOVA N1")};
    QCOMPARE(listed(objTool), lstExpected);
    objTool.chooseSequence(QStringLiteral("SOLA S1 "));
    QCOMPARE(objTool.savedResults().size(), 2); // those of "S1"
}

void tst_sequencelists::keptSlotsKeepThePrefix()
{
    CStudy objStudy;
    // A sequence whose ID is what an entry shows.
    objStudy.writer().addSequence(QStringLiteral("SOLA S1"));
    objStudy.writer().addIndexEntry(QStringLiteral("SOLA S1"), 0, QStringLiteral("with prefix"), QStringLiteral("x.xml"));
    objStudy.writer().addIndexEntry(QStringLiteral("SOLA S1"), 1, QStringLiteral("dye with prefix"), QStringLiteral("y.xml"));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    QListWidgetItem objItem(QStringLiteral("SOLA S1"));
    call(objTool, "onClickSOLASeqListWidgetItem", Q_ARG(QListWidgetItem*, &objItem));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("with prefix")});
    call(objTool, "onClickNOVASeqListWidgetItem", Q_ARG(QListWidgetItem*, &objItem));
    QCOMPARE(objTool.savedResults(), QStringList{QStringLiteral("dye with prefix")});
    QVERIFY(isSOLAShown(objTool)); // the kind is that of the last click
}

void tst_sequencelists::manySequencesAreListedQuickly()
{
    QList<QString> lstSOLA = {QStringLiteral("SOLA")};
    for (int i = 0; i < 10000; ++i)
    {
        lstSOLA.append(QStringLiteral("sequence %1").arg(i));
    }
    CToolWindow objTool;
    QElapsedTimer objTimer;
    objTimer.start();
    objTool.window().updateSequenceNameList(lstSOLA);
    call(objTool, "onInitialUpdate");
    QCOMPARE(listed(objTool).size(), 10000);
    QVERIFY2(objTimer.elapsed() < 20000, qPrintable(QString::number(objTimer.elapsed())));
}

ORM_TEST_MAIN(tst_sequencelists)
#include "tst_sequencelists.moc"
