#include "OpenDialog.h"
#include "WindowTestTools.h"

#include "COrmSequenceDataset.h"
#include "OrmTestMain.h"

#include <QGroupBox>
#include <QTemporaryDir>

#include <sys/stat.h>

using OpenDialog::pick;
using WindowTest::call;
using WindowTest::CStudy;

namespace
{
const QString g_strNoResults = QStringLiteral("log 2: The sequence does not contain any analysis results to load");
const QString g_strNoKind = QStringLiteral("box information: The Selected Sequence is not a SOLA/NOVA Sequence");
const QString g_strUnreadable = QStringLiteral("error 65: ");

QStringList listed(CToolWindow& objTool)
{
    return TestWidgets::texts(objTool.get<QListWidget>("m_pSequenceNameLW"));
}

/// The texts of the marked rows.
QStringList marked(CToolWindow& objTool)
{
    QStringList lstTexts;
    for (const QListWidgetItem* pItem : objTool.get<QListWidget>("m_pSequenceNameLW")->selectedItems())
    {
        lstTexts.append(pItem->text());
    }
    return lstTexts;
}

QString fileOf(const CStudyWriter& objStudy, const QString& strSequenceID)
{
    return objStudy.sequenceFolder(strSequenceID) + QStringLiteral("SequenceInfo.txt");
}

/// Shows the window as it is before anything is listed; an empty list would hide it.
void showEmpty(CToolWindow& objTool)
{
    objTool.window().resize(1200, 800);
    objTool.window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&objTool.window()));
    objTool.host().clear();
}

/// An index that names no file.
void addIndex(CStudyWriter& objStudy, const QString& strSequenceID, int nKind, const QString& strName)
{
    objStudy.addIndexEntry(strSequenceID, nKind, strName, QStringLiteral("nothing.xml"));
}

SSequenceLook lookOf(bool bLuminescent, bool bFluorescent)
{
    SSequenceLook sLook;
    sLook.bLuminescent = bLuminescent;
    sLook.bFluorescent = bFluorescent;
    sLook.bTransIllumination = bFluorescent;
    return sLook;
}
} // namespace

/// The open button: the file dialog, which sequence gets on the list under which kind, and what is said when none does.
class tst_opening : public QObject
{
    Q_OBJECT

private slots:
    void dialogAsksForASequenceFile();
    void cancellingDoesNothing();
    void firstSequenceIsListedAndChosen();
    void kindAndIndexDecide_data();
    void kindAndIndexDecide();
    void singleClickWithAnIndexIsListed();
    void lastEntryOfTheWholeListIsChosen();
    void openedEntryIsInSight();
    void sequenceAlreadyListedChangesNothing();
    void equalIdElsewhereKeepsTheFirstPath();
    void sequenceOfBothKindsGetsOntoOneList();
    void anyNameBeginningWithSequenceWill();
    void openedSequenceGoesForGood();
    void resultsOfAnOpenedSequenceLoad();
    void vanishedFileIsReported();
    void fileWithoutAnIdEndsSilently_data();
    void fileWithoutAnIdEndsSilently();
    void hostileFilesAreNoSequence_data();
    void hostileFilesAreNoSequence();
    void idsOfAnyTextAreListed_data();
    void idsOfAnyTextAreListed();
};

void tst_opening::dialogAsksForASequenceFile()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&objTool.window()));
    const QStringList lstBefore = listed(objTool);
    const OpenDialog::SSeen sSeen = OpenDialog::cancel(objTool);
    QVERIFY(sSeen.bShown);
    QCOMPARE(sSeen.strCaption, QStringLiteral("Choose a file to open"));
    QCOMPARE(sSeen.lstFilters, QStringList(QStringLiteral("Ormelle Files(Sequence*.txt)")));
    QCOMPARE(sSeen.eAcceptMode, QFileDialog::AcceptOpen);
    QCOMPARE(sSeen.eFileMode, QFileDialog::ExistingFile);
    QCOMPARE(sSeen.eOptions & ~QFileDialog::DontUseNativeDialog, QFileDialog::Options());
    QCOMPARE(sSeen.pParent, &objTool.window());
    QCOMPARE(listed(objTool), lstBefore);
}

void tst_opening::cancellingDoesNothing()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    objTool.host().clear();
    const QStringList lstBefore = listed(objTool);
    OpenDialog::cancel(objTool);
    QCOMPARE(listed(objTool), lstBefore);
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("SOLA S2")));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("one")));
    QCOMPARE(objTool.host().calls(), QStringList());
}

void tst_opening::firstSequenceIsListedAndChosen()
{
    CStudy objStudy;
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA S1")));
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("SOLA S1")));
    const QStringList lstResults = {QStringLiteral("one"), QStringLiteral("two")};
    QCOMPARE(objTool.savedResults(), lstResults);
    QVERIFY(objTool.get<QGroupBox>("m_pSOLAGB")->isVisible());
    QCOMPARE(objTool.host().calls(), QStringList());
    QVERIFY(objTool.window().isVisible());
}

void tst_opening::kindAndIndexDecide_data()
{
    QTest::addColumn<bool>("bLuminescent");
    QTest::addColumn<bool>("bFluorescent");
    QTest::addColumn<bool>("bHasSOLA");
    QTest::addColumn<bool>("bHasNOVA");
    QTest::addColumn<QString>("strListed");    // null: not listed
    QTest::addColumn<QStringList>("lstCalls"); // of the host
    const QString strSOLA = QStringLiteral("SOLA X");
    const QString strNOVA = QStringLiteral("NOVA X");
    const QStringList lstNoResults = {g_strNoResults};
    const QStringList lstNoKind = {g_strNoKind};
    const QStringList lstNothing;
    const auto row = [](const char* pName, int nKinds, int nFiles, const QString& strListed, const QStringList& lstCalls)
    {
        QTest::newRow(pName) << ((nKinds & 1) != 0) << ((nKinds & 2) != 0) << ((nFiles & 1) != 0) << ((nFiles & 2) != 0) << strListed
                             << lstCalls;
    };
    row("luminescent, no index", 1, 0, strSOLA, lstNoResults);
    row("luminescent, SOLA index", 1, 1, strSOLA, lstNothing);
    row("luminescent, NOVA index", 1, 2, strSOLA, lstNoResults);
    row("luminescent, both", 1, 3, strSOLA, lstNothing);
    row("fluorescent, no index", 2, 0, strNOVA, lstNoResults);
    row("fluorescent, SOLA index", 2, 1, strSOLA, lstNothing);
    row("fluorescent, NOVA index", 2, 2, strNOVA, lstNothing);
    row("fluorescent, both", 2, 3, strSOLA, lstNothing);
    row("mixed, no index", 3, 0, QString(), lstNoKind);
    row("mixed, SOLA index", 3, 1, strSOLA, lstNothing);
    row("mixed, NOVA index", 3, 2, strNOVA, lstNothing);
    row("mixed, both", 3, 3, strSOLA, lstNothing);
}

void tst_opening::kindAndIndexDecide()
{
    QFETCH(bool, bLuminescent);
    QFETCH(bool, bFluorescent);
    QFETCH(bool, bHasSOLA);
    QFETCH(bool, bHasNOVA);
    QFETCH(QString, strListed);
    QFETCH(QStringList, lstCalls);
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("X"), lookOf(bLuminescent, bFluorescent));
    QStringList lstResults;
    if (bHasSOLA)
    {
        addIndex(objStudy, QStringLiteral("X"), 0, QStringLiteral("light"));
    }
    if (bHasNOVA)
    {
        addIndex(objStudy, QStringLiteral("X"), 1, QStringLiteral("dye"));
    }
    if (strListed.startsWith(QLatin1String("SOLA")) && bHasSOLA)
    {
        lstResults.append(QStringLiteral("light"));
    }
    if (strListed.startsWith(QLatin1String("NOVA")) && bHasNOVA)
    {
        lstResults.append(QStringLiteral("dye"));
    }
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy, QStringLiteral("X")));
    const QStringList lstExpected = strListed.isNull() ? QStringList() : QStringList(strListed);
    QCOMPARE(listed(objTool), lstExpected);
    QCOMPARE(marked(objTool), lstExpected);
    QCOMPARE(objTool.savedResults(), lstResults);
    QCOMPARE(objTool.host().calls(), lstCalls);
    if (lstCalls.contains(g_strNoKind))
    {
        const SMessageRequest& sBox = objTool.host().boxes().first();
        QVERIFY(sBox.strCaption.isNull());
        QCOMPARE(sBox.pParent, &objTool.window());
        QVERIFY(sBox.bTextButtons);
        QCOMPARE(sBox.lstTexts, QStringList({QString(), QString(), QString()}));
        QCOMPARE(sBox.nDefault, 0);
        QCOMPARE(sBox.nEscape, -1);
    }
}

void tst_opening::singleClickWithAnIndexIsListed()
{
    CStudyWriter objStudy;
    SSequenceLook sLook;
    sLook.nClicks = 1;
    objStudy.addSequence(QStringLiteral("X"), sLook);
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy, QStringLiteral("X")));
    QCOMPARE(listed(objTool), QStringList());
    QCOMPARE(objTool.host().calls(), QStringList(g_strNoKind));
    addIndex(objStudy, QStringLiteral("X"), 0, QStringLiteral("light"));
    pick(objTool, fileOf(objStudy, QStringLiteral("X")));
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA X")));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("light")));
}

void tst_opening::lastEntryOfTheWholeListIsChosen()
{
    CStudy objStudy;
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("N1")));
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("NOVA N1")));
    // A SOLA sequence stands before it: the last entry is still that of the NOVA one.
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    const QStringList lstTwo = {QStringLiteral("SOLA S1"), QStringLiteral("NOVA N1")};
    QCOMPARE(listed(objTool), lstTwo);
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("NOVA N1")));
    const QStringList lstDyes = {QStringLiteral("dye"), QStringLiteral("dye 2")};
    QCOMPARE(objTool.savedResults(), lstDyes);
    QVERIFY(objTool.get<QGroupBox>("m_pNOVAGB")->isVisible());
}

void tst_opening::openedEntryIsInSight()
{
    CStudy objStudy;
    QList<QString> lstSOLA = {QStringLiteral("SOLA")};
    for (int i = 0; i < 50; ++i)
    {
        lstSOLA.append(QStringLiteral("sequence %1").arg(i));
    }
    CToolWindow objTool;
    objTool.window().updateSequenceNameList(lstSOLA);
    showEmpty(objTool);
    auto* pList = objTool.get<QListWidget>("m_pSequenceNameLW");
    QVERIFY(pList->visualItemRect(pList->item(49)).top() > pList->viewport()->height());
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("SOLA S1")));
    QVERIFY(pList->viewport()->rect().contains(pList->visualItemRect(pList->item(50))));
}

void tst_opening::sequenceAlreadyListedChangesNothing()
{
    CStudy objStudy;
    CStudyWriter objEmpty; // with a sequence that has no results
    objEmpty.addSequence(QStringLiteral("S3"));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.open(objEmpty.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    TestWidgets::selectEntries(objTool.get<QListWidget>("m_pResultWidget"), {QStringLiteral("one")});
    objTool.host().clear();
    const QStringList lstBefore = listed(objTool);
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    QCOMPARE(objTool.host().calls(), QStringList());
    // That there are no results is said all the same.
    pick(objTool, fileOf(objEmpty, QStringLiteral("S3")));
    QCOMPARE(objTool.host().calls(), QStringList(g_strNoResults));
    QCOMPARE(listed(objTool), lstBefore);
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("SOLA S2")));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("one")));
    QCOMPARE(objTool.get<QListWidget>("m_pResultWidget")->selectedItems().size(), 1);
}

void tst_opening::equalIdElsewhereKeepsTheFirstPath()
{
    CStudyWriter objFirst;
    objFirst.addSequence(QStringLiteral("X"));
    addIndex(objFirst, QStringLiteral("X"), 0, QStringLiteral("of the first"));
    CStudyWriter objSecond;
    objSecond.addSequence(QStringLiteral("X"));
    addIndex(objSecond, QStringLiteral("X"), 0, QStringLiteral("of the second"));
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objFirst, QStringLiteral("X")));
    pick(objTool, fileOf(objSecond, QStringLiteral("X")));
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA X")));
    objTool.chooseSequence(QStringLiteral("SOLA X"));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("of the first")));
    // An ID is another one in other case.
    CStudyWriter objThird;
    objThird.addSequence(QStringLiteral("x"));
    pick(objTool, fileOf(objThird, QStringLiteral("x")));
    QCOMPARE(listed(objTool).size(), 2);
}

void tst_opening::sequenceOfBothKindsGetsOntoOneList()
{
    // First a fluorescent sequence, then the same one with results of the other kind as well: it stands on both lists now.
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("X"), SSequenceLook::fluorescent());
    addIndex(objStudy, QStringLiteral("X"), 1, QStringLiteral("dye"));
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy, QStringLiteral("X")));
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("NOVA X")));
    addIndex(objStudy, QStringLiteral("X"), 0, QStringLiteral("light"));
    pick(objTool, fileOf(objStudy, QStringLiteral("X")));
    const QStringList lstBoth = {QStringLiteral("SOLA X"), QStringLiteral("NOVA X")};
    QCOMPARE(listed(objTool), lstBoth);
    objTool.chooseSequence(QStringLiteral("SOLA X"));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("light")));
}

void tst_opening::anyNameBeginningWithSequenceWill()
{
    CStudy objStudy;
    const QString strFile = objStudy.writer().sequenceFolder(QStringLiteral("S1")) + QStringLiteral("Sequence of April.txt");
    QVERIFY(QFile::rename(fileOf(objStudy.writer(), QStringLiteral("S1")), strFile));
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, strFile);
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA S1")));
    QCOMPARE(objTool.savedResults().size(), 2);
}

void tst_opening::openedSequenceGoesForGood()
{
    CStudy objStudy;
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S2")));
    // It outlives a close and the next show, which only the user's removal ends.
    QVERIFY(objTool.window().close());
    call(objTool, "onInitialUpdate");
    objTool.window().show();
    QCOMPARE(listed(objTool).size(), 2);
    objTool.host().setAnswer([](const SMessageRequest&) { return int(QMessageBox::Yes); });
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    call(objTool, "onClickRemoveAction");
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA S2")));
    call(objTool, "onInitialUpdate");
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA S2")));
    // It can be opened again.
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("SOLA S1")));
}

void tst_opening::resultsOfAnOpenedSequenceLoad()
{
    CStudy objStudy;
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("S1")));
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("S1")) == nullptr);
    objTool.load({QStringLiteral("one"), QStringLiteral("two")});
    const QStringList lstTiles = {QStringLiteral("S1one"), QStringLiteral("S1two")};
    QCOMPARE(objTool.tiles(), lstTiles);
    QCOMPARE(objTool.host().callsOf(QStringLiteral("box")), QStringList());
    // Another one is opened beside it, and the tiles stay.
    pick(objTool, fileOf(objStudy.writer(), QStringLiteral("N1")));
    QCOMPARE(objTool.tiles(), lstTiles);
    objTool.load({QStringLiteral("dye")});
    QCOMPARE(objTool.tiles(), lstTiles + QStringList(QStringLiteral("N1dye")));
}

void tst_opening::vanishedFileIsReported()
{
    CStudy objStudy;
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA S2"));
    objTool.host().clear();
    CStudyWriter objOther;
    objOther.addSequence(QStringLiteral("X"));
    const QString strFile = fileOf(objOther, QStringLiteral("X"));
    const QStringList lstBefore = listed(objTool);
    pick(objTool, strFile, [strFile] { QVERIFY(QFile::remove(strFile)); });
    QCOMPARE(objTool.host().calls(), QStringList(g_strUnreadable));
    QCOMPARE(listed(objTool), lstBefore);
    QCOMPARE(marked(objTool), QStringList(QStringLiteral("SOLA S2")));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("one")));
}

void tst_opening::fileWithoutAnIdEndsSilently_data()
{
    QTest::addColumn<QByteArray>("byText");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no key") << QByteArray("[Sequence Information]\nSubject=M\n[Click Numbers]\nCount=2\n1=X_001\n2=X_002\n");
    QTest::newRow("empty value") << QByteArray("[Sequence Information]\nSequence=\n[Click Numbers]\nCount=2\n1=X_001\n2=X_002\n");
    QTest::newRow("blanks alone") << QByteArray("[Sequence Information]\nSequence=   \n");
    QTest::newRow("key in other case") << QByteArray("[Sequence Information]\nsequence=X\n[Click Numbers]\nCount=2\n1=X_001\n2=X_002\n");
    QTest::newRow("picture") << QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFES\0e\0q\0u\0e\0n\0c\0e\0=\0X\0", 22);
}

void tst_opening::fileWithoutAnIdEndsSilently()
{
    QFETCH(QByteArray, byText);
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("X"));
    addIndex(objStudy, QStringLiteral("X"), 0, QStringLiteral("light")); // not even an index helps
    CStudyWriter::writeFile(fileOf(objStudy, QStringLiteral("X")), byText);
    CToolWindow objTool;
    showEmpty(objTool);
    pick(objTool, fileOf(objStudy, QStringLiteral("X")));
    QCOMPARE(listed(objTool), QStringList());
    QCOMPARE(objTool.host().calls(), QStringList());
}

void tst_opening::hostileFilesAreNoSequence_data()
{
    QTest::addColumn<int>("nWhat");
    QTest::addColumn<QStringList>("lstCalls");
    QTest::newRow("a pipe") << 0 << QStringList();
    QTest::newRow("a folder") << 1 << QStringList();
    QTest::newRow("claims 1 GiB") << 2 << QStringList();
    QTest::newRow("link to an endless device") << 3 << QStringList();
    QTest::newRow("dangling link") << 4 << QStringList(g_strUnreadable);
    QTest::newRow("loop of links") << 5 << QStringList(g_strUnreadable);
}

void tst_opening::hostileFilesAreNoSequence()
{
    QFETCH(int, nWhat);
    QFETCH(QStringList, lstCalls);
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("X"));
    const QString strFile = fileOf(objStudy, QStringLiteral("X"));
    CToolWindow objTool;
    showEmpty(objTool);
    // Somebody puts it in the place of a sound file at the very moment of the choice.
    const auto replace = [&]
    {
        if (nWhat == 2)
        {
            QVERIFY(QFile::resize(strFile, qint64(1) << 30));
            return;
        }
        QVERIFY(QFile::remove(strFile));
        switch (nWhat)
        {
        case 0:
            QCOMPARE(mkfifo(qPrintable(strFile), 0600), 0);
            break;
        case 1:
            QVERIFY(QDir().mkpath(strFile));
            break;
        case 3:
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), strFile));
            break;
        case 4:
            QVERIFY(QFile::link(QStringLiteral("nothing.txt"), strFile));
            break;
        default:
            QVERIFY(QFile::link(QStringLiteral("SequenceInfo.txt"), strFile));
            break;
        }
    };
    pick(objTool, strFile, replace);
    QCOMPARE(listed(objTool), QStringList());
    QCOMPARE(objTool.host().calls(), lstCalls);
    if (lstCalls.isEmpty())
    {
        QVERIFY2(!objTool.host().hostLog().isEmpty(), "nobody said why");
    }
}

void tst_opening::idsOfAnyTextAreListed_data()
{
    QTest::addColumn<QString>("strSequenceID");
    QTest::newRow("blanks and signs") << QStringLiteral("a = b; c, \"d\" 100% #1");
    QTest::newRow("markup") << QStringLiteral("<img src=file:///etc/passwd>");
    QTest::newRow("other scripts") << QString::fromUtf8("\xE5\xBA\x8F\xE5\x88\x97 \xD7\xA1\xD7\x93\xD7\xA8\xD7\x94 \xF0\x9F\x90\xAD");
    QTest::newRow("marks that turn the direction") << QString::fromUtf8("a\xE2\x80\xAE"
                                                                        "b");
    QTest::newRow("long") << QString(60000, QLatin1Char('x'));
}

void tst_opening::idsOfAnyTextAreListed()
{
    QFETCH(QString, strSequenceID);
    QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("SequenceInfo.txt"));
    CStudyWriter::writeFile(strFile, "[Sequence Information]\nSequence=" + strSequenceID.toUtf8() + "\n");
    CStudyWriter::writeFile(objFolder.filePath(QStringLiteral("XML/SOLA.txt")), "[SOLA_1]\nMenuName=R\nFileName=r.xml\n");
    CToolWindow objTool;
    showEmpty(objTool);
    const QSize szBefore = objTool.window().size();
    pick(objTool, strFile);
    QCOMPARE(listed(objTool), QStringList(QStringLiteral("SOLA ") + strSequenceID));
    QCOMPARE(objTool.savedResults(), QStringList(QStringLiteral("R")));
    QCOMPARE(objTool.window().size(), szBefore);
    QVERIFY(!objTool.window().grab().isNull());
}

ORM_TEST_MAIN(tst_opening)
#include "tst_opening.moc"
