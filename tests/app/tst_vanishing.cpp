#include "COrmElidedLabel.h"
#include "COrmImageOverlayWindow.h"
#include "COrmLog.h"
#include "COrmPictureWidget.h"
#include "COrmRecentList.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceModel.h"
#include "CToolWindow.h"
#include "MainWindowTest.h"
#include "OrmSequenceScanner.h"
#include "OrmTestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QImage>
#include <QListWidget>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>

#include <functional>

namespace
{
bool removeFile(const QString& strFile)
{
    return QFile::remove(strFile);
}

bool removeFolder(const QString& strFolder)
{
    return QDir(strFolder).removeRecursively();
}

QString clickFile(const CStudyWriter& objStudy, const QString& strSequenceID)
{
    return objStudy.sequenceFolder(strSequenceID) + strSequenceID + QStringLiteral("_001/ClickInfo.txt");
}
} // namespace

/// Takes something away from the study: its writer, the kind of the results.
using Removal = std::function<void(const CStudyWriter&, const QString& strKind)>;
Q_DECLARE_METATYPE(Removal)

/// What is listed, or seen a moment ago, and has gone when it is asked for. Each way in says so, or has read it already, and what was there
/// before stays.
class TestVanishing : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void cleanup() { removeWindow(); }

    void listedResultIsGone_data();
    void listedResultIsGone();
    void openedSequenceIsGone_data();
    void openedSequenceIsGone();
    void foundSequenceIsGone();
    void photographIsGoneBeforeThePreview();
    void pictureIsGoneBeforeTheOverlay();
    void indexIsGoneBeforeThePreview();
    void draggedFolderIsGoneAtTheDrop();
    void recentStudyIsGoneAtTheClick();
    void toolIsGoneBeforeItIsLoaded();

private:
    /// Gives the first click of a sequence a photograph. Returns its file.
    QString addPhotograph(const QString& strSequenceID, const QString& strClick) const;
    QString picturesText() const { return TestWidgets::get<COrmPictureWidget>(m_pWindow.get(), "previewPicture")->text(); }
    QString message() const { return m_pWindow->statusBar()->currentMessage(); }
};

QString TestVanishing::addPhotograph(const QString& strSequenceID, const QString& strClick) const
{
    const QString strFolder = m_pStudy->sequenceFolder(strSequenceID) + strClick + QLatin1Char('/');
    CStudyWriter::writeFile(strFolder + QStringLiteral("ClickInfo.txt"), "[photographic image]\nImage File=p.png\n");
    QImage imgPicture(20, 20, QImage::Format_RGB32);
    imgPicture.fill(Qt::green);
    if (!imgPicture.save(strFolder + QStringLiteral("p.png")))
        TestWidgets::fail(strFolder);
    return strFolder + QStringLiteral("p.png");
}

void TestVanishing::listedResultIsGone_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<Removal>("fnRemove");
    const QList<QPair<const char*, Removal>> lstRemovals = {
        {"its file", [](const CStudyWriter& objStudy, const QString& strKind)
         { QVERIFY(removeFile(objStudy.sequenceFolder("SEQ1") + "XML/" + strKind + "_2.xml")); }},
        {"the index", [](const CStudyWriter& objStudy, const QString& strKind)
         { QVERIFY(removeFile(objStudy.sequenceFolder("SEQ1") + "XML/" + strKind + ".txt")); }},
        {"the folder of results",
         [](const CStudyWriter& objStudy, const QString&) { QVERIFY(removeFolder(objStudy.sequenceFolder("SEQ1") + "XML")); }},
        {"the sequence", [](const CStudyWriter& objStudy, const QString&) { QVERIFY(removeFolder(objStudy.sequenceFolder("SEQ1"))); }},
        {"the study", [](const CStudyWriter& objStudy, const QString&) { QVERIFY(removeFolder(objStudy.folder())); }}};
    for (const int nKind : {0, 1})
    {
        for (const auto& [pWhat, fnRemove] : lstRemovals)
            QTest::addRow("%s, %s", nKind == 0 ? "SOLA" : "NOVA", pWhat) << nKind << fnRemove;
    }
}

void TestVanishing::listedResultIsGone()
{
    QFETCH(int, nKind);
    QFETCH(Removal, fnRemove);
    const QString strKind = nKind == 0 ? QStringLiteral("SOLA") : QStringLiteral("NOVA");
    CStudyWriter objStudy;
    objStudy.addSequence("SEQ1", nKind == 0 ? SSequenceLook::luminescent() : SSequenceLook::fluorescent());
    objStudy.addResult("SEQ1", "before", SResultDocument(nKind));
    const QString strFile = objStudy.addResult("SEQ1", "gone", SResultDocument(nKind));
    QVERIFY2(strFile.endsWith(strKind + "_2.xml"), qPrintable(strFile));
    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(strKind + " SEQ1");
    objTool.load({"before"});
    TestWidgets::selectEntries(objTool.get<QListWidget>("m_pResultWidget"), {"gone"});
    objTool.host().clear();
    fnRemove(objStudy, strKind);
    QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
    QCOMPARE(objTool.host().callsOf("box"), QStringList("box information: Unable to load analysis data"));
    QVERIFY2(!objTool.host().hostLog().isEmpty() || !objTool.host().callsOf("log").isEmpty(), "nobody said why");
    QCOMPARE(objTool.tiles(), QStringList("SEQ1before"));
    QVERIFY(QApplication::overrideCursor() == nullptr);
    // Another press ends as the first one did.
    objTool.host().clear();
    QMetaObject::invokeMethod(&objTool.window(), "onClickLoadButton");
    QCOMPARE(objTool.host().callsOf("box").size(), 1);
    QCOMPARE(objTool.tiles(), QStringList("SEQ1before"));
}

void TestVanishing::openedSequenceIsGone_data()
{
    QTest::addColumn<Removal>("fnRemove");
    QTest::addColumn<QString>("strTold"); // in the log or the status bar
    QTest::newRow("sequence information") << Removal([](const CStudyWriter& objStudy, const QString&)
                                                     { QVERIFY(removeFile(objStudy.sequenceFolder("A") + "SequenceInfo.txt")); })
                                          << "SequenceInfo.txt";
    QTest::newRow("click information") << Removal([](const CStudyWriter& objStudy, const QString&)
                                                  { QVERIFY(removeFile(clickFile(objStudy, "A"))); })
                                       << "A_001";
    QTest::newRow("the sequence") << Removal([](const CStudyWriter& objStudy, const QString&)
                                             { QVERIFY(removeFolder(objStudy.sequenceFolder("A"))); })
                                  << "SequenceInfo.txt";
    QTest::newRow("the study") << Removal([](const CStudyWriter& objStudy, const QString&) { QVERIFY(removeFolder(objStudy.folder())); })
                               << "SequenceInfo.txt";
}

/// The sequence is in the list, and is read again.
void TestVanishing::openedSequenceIsGone()
{
    QFETCH(Removal, fnRemove);
    QFETCH(QString, strTold);
    makeWindow();
    openStudy({"A", "B"});
    select({"A"});
    m_pHost->clear();
    fnRemove(*m_pStudy, QString());
    action("actionRefresh")->trigger();
    const QString strSaid = m_pHost->hostLog().join(QLatin1Char('\n')) + message();
    QVERIFY2(strSaid.contains(strTold), qPrintable(strSaid));
    QCOMPARE(shownColumn(COrmSequenceModel::eID), (QStringList{"A", "B"}));
    QVERIFY(COrmSequenceDataset::getSequenceDataset("A") != nullptr);
    QVERIFY(m_pHost->boxes().isEmpty());
}

/// The folder was listed by the search and is gone when the search comes to it.
void TestVanishing::foundSequenceIsGone()
{
    makeWindow();
    for (const char* pID : {"A", "B", "C"})
        m_pStudy->addSequence(pID);
    QStringList lstFound;
    const SScanOutcome sOutcome = OrmSequenceScanner::scan({m_pStudy->folder()},
                                                           [&](const SSequenceFacts& sFacts)
                                                           {
                                                               lstFound.append(sFacts.m_strSequenceID);
                                                               if (lstFound.size() == 1)
                                                                   QVERIFY(removeFolder(m_pStudy->sequenceFolder("B")));
                                                           },
                                                           {});
    QCOMPARE(lstFound, (QStringList{"A", "C"}));
    QCOMPARE(sOutcome.m_lstProblems, QStringList(m_pStudy->folder() + "/B cannot be looked into: No such file or directory."));
}

void TestVanishing::photographIsGoneBeforeThePreview()
{
    makeWindow();
    m_pStudy->addSequence("A");
    m_pStudy->addSequence("B");
    const QString strPicture = addPhotograph("B", "B_001");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eID), (QStringList{"A", "B"}));
    QVERIFY(removeFile(strPicture));
    select({"B"});
    QTRY_COMPARE(picturesText(), QString("The photograph of B_001 is not in its folder."));
    QVERIFY(m_pHost->boxes().isEmpty());
}

void TestVanishing::pictureIsGoneBeforeTheOverlay()
{
    makeWindow();
    m_pStudy->addSequence("A");
    addPhotograph("A", "A_001");
    const QString strSecond = addPhotograph("A", "A_002");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"A"});
    COrmImageOverlayWindow objOverlay;
    objOverlay.setSequence(COrmSequenceDataset::getSequenceDataset("A"));
    const auto* pPicture = TestWidgets::get<COrmPictureWidget>(&objOverlay, "overlayPicture");
    QVERIFY(!pPicture->picture().isNull());
    QVERIFY(removeFile(strSecond));
    TestWidgets::get<QComboBox>(&objOverlay, "overlayImage")->setCurrentIndex(1);
    QVERIFY(pPicture->picture().isNull());
    QCOMPARE(pPicture->text(), QString("Image A_002 has no picture."));
    TestWidgets::get<QComboBox>(&objOverlay, "overlayImage")->setCurrentIndex(0);
    QVERIFY(!pPicture->picture().isNull());
}

void TestVanishing::indexIsGoneBeforeThePreview()
{
    makeWindow();
    m_pStudy->addSequence("A");
    m_pStudy->addSequence("B");
    m_pStudy->addIndexEntry("B", 0, "Day 0", "a.xml");
    m_pWindow->openPaths({m_pStudy->folder()}, true);
    QTRY_COMPARE(shownColumn(COrmSequenceModel::eResults), (QStringList{"none", "1 SOLA"}));
    QVERIFY(removeFile(m_pStudy->sequenceFolder("B") + "XML/SOLA.txt"));
    select({"B"});
    QTRY_COMPARE(TestWidgets::get<COrmElidedLabel>(m_pWindow.get(), "previewTitle")->text(), QString("B"));
    QTRY_COMPARE(picturesText(), QString("This sequence has no photograph."));
    QCOMPARE(TestWidgets::get<QListWidget>(m_pWindow.get(), "previewResults")->count(), 0);
}

void TestVanishing::draggedFolderIsGoneAtTheDrop()
{
    makeWindow();
    openStudy({"A"});
    const auto pOther = std::make_unique<CStudyWriter>();
    pOther->addSequence("B");
    QMimeData objData;
    objData.setUrls({QUrl::fromLocalFile(pOther->folder())});
    QDragEnterEvent objEnter(QPoint(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pWindow.get(), &objEnter);
    QVERIFY(objEnter.isAccepted());
    QVERIFY(removeFolder(pOther->folder()));
    QDropEvent objDrop(QPointF(20, 20), Qt::CopyAction, &objData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pWindow.get(), &objDrop);
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    QVERIFY2(m_pHost->boxes().first().strText.contains(pOther->folder() + " does not exist."),
             qPrintable(m_pHost->boxes().first().strText));
    QCOMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"A"});
}

void TestVanishing::recentStudyIsGoneAtTheClick()
{
    makeWindow();
    openStudy({"A"});
    m_pWindow->sequences()->closeAll();
    const auto* pRecent = TestWidgets::get<COrmRecentList>(m_pWindow.get(), "recentStudies");
    QTRY_VERIFY(pRecent->isVisible());
    QCOMPARE(pRecent->count(), 1);
    QVERIFY(removeFolder(m_pStudy->folder()));
    QTest::mouseClick(pRecent->viewport(), Qt::LeftButton, Qt::NoModifier, pRecent->visualItemRect(pRecent->item(0)).center());
    QTRY_COMPARE(m_pHost->boxes().size(), 1);
    QVERIFY2(m_pHost->boxes().first().strText.contains(m_pStudy->folder() + " does not exist."),
             qPrintable(m_pHost->boxes().first().strText));
    QVERIFY(shownColumn(COrmSequenceModel::eID).isEmpty());
    QTRY_VERIFY(!pRecent->isVisible()); // it is offered no more
}

/// The folder's files are listed before the first one is loaded.
void TestVanishing::toolIsGoneBeforeItIsLoaded()
{
    makeWindow();
    m_pPlugins->add("a.so", "no library");
    m_pPlugins->addLibrary("RecordingTool", "b");
    m_pPlugins->addLibrary("OrderedTool", "c");
    const int nSink = getLogObject()->addSink(
        [this](const SLogEntry& sEntry)
        {
            if (sEntry.strMessage.startsWith("a.so was not loaded"))
                QVERIFY(removeFile(m_pPlugins->file("b.so")));
        });
    m_pWindow->loadTools(m_pPlugins->path());
    getLogObject()->removeSink(nSink);
    const QStringList lstRefusals = m_pWindow->plugins()->refusals();
    QCOMPARE(lstRefusals.size(), 2);
    QCOMPARE(lstRefusals.last(), QString("b.so was not loaded: No such file or directory."));
    QVERIFY(m_pWindow->plugins()->tool("Recording Tool") == nullptr);
    QCOMPARE(m_pWindow->plugins()->tools().size(), size_t(1));
}

ORM_TEST_MAIN(TestVanishing)
#include "tst_vanishing.moc"
