#include "COrmClickModel.h"
#include "COrmElidedLabel.h"
#include "COrmPictureWidget.h"
#include "COrmPreviewLoader.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmSequencePreview.h"
#include "CStudyWriter.h"
#include "OrmPreviewReader.h"
#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QBuffer>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeView>

#include <memory>

/// The preview of the selected sequence, and what it reads from the disk.
class TestSequencePreview : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nothingSelectedAsksForASelection();
    void sequenceIsShown();
    void photographIsShown();
    void largePhotographIsMadeSmall();
    void missingAndBadPhotographsAreTold_data();
    void missingAndBadPhotographsAreTold();
    void unreadableIndexIsTold();
    void excitationIsShownWhereThereIsOne();
    void quantitiesHaveUnits_data();
    void quantitiesHaveUnits();
    void lastSequenceAskedForIsShown();
    void changedSequenceIsReadAgain();
    void compareNeedsAToolAndResults();
    void strangeNamesAreShownPlainly();
    void manyImagesAndResultsScroll();
    void loaderMayGoWhileItReads();
    void whatIsForgottenIsNotShown();

private:
    /// Opens what was written.
    void open();
    const COrmSequenceDataset* sequence(const char* pID) const { return COrmSequenceDataset::getSequenceDataset(QLatin1String(pID)); }
    /// Writes the file of a sequence's first click.
    void writeClick(const QString& strSequenceID, const QByteArray& byText) const;
    QString clickFolder(const QString& strSequenceID) const
    {
        return m_pStudy->sequenceFolder(strSequenceID) + strSequenceID + QStringLiteral("_001/");
    }
    static QByteArray picture(const QSize& sz, const QColor& clr);
    QStringList results() const { return TestWidgets::texts(TestWidgets::get<QListWidget>(m_pPreview.get(), "previewResults")); }
    QString text(const char* pLabel) const { return TestWidgets::get<COrmElidedLabel>(m_pPreview.get(), pLabel)->text(); }
    QString heading(const char* pLabel) const { return TestWidgets::get<QLabel>(m_pPreview.get(), pLabel)->text(); }
    COrmPictureWidget* pictureWidget() const { return TestWidgets::get<COrmPictureWidget>(m_pPreview.get(), "previewPicture"); }
    QTreeView* clicks() const { return TestWidgets::get<QTreeView>(m_pPreview.get(), "previewClicks"); }

    std::unique_ptr<CStudyWriter> m_pStudy;
    std::unique_ptr<COrmSequenceCollection> m_pCollection;
    std::unique_ptr<COrmSequencePreview> m_pPreview;
};

void TestSequencePreview::init()
{
    m_pStudy = std::make_unique<CStudyWriter>();
    m_pCollection = std::make_unique<COrmSequenceCollection>();
    m_pPreview = std::make_unique<COrmSequencePreview>();
    m_pPreview->setTool(QStringLiteral("Some Tool"), QString());
    m_pPreview->resize(360, 700);
    m_pPreview->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pPreview.get()));
}

void TestSequencePreview::cleanup()
{
    m_pPreview.reset();
    m_pCollection.reset();
    m_pStudy.reset();
}

void TestSequencePreview::open()
{
    m_pCollection->open({m_pStudy->folder()});
}

void TestSequencePreview::writeClick(const QString& strSequenceID, const QByteArray& byText) const
{
    CStudyWriter::writeFile(clickFolder(strSequenceID) + QStringLiteral("ClickInfo.txt"), byText);
}

QByteArray TestSequencePreview::picture(const QSize& sz, const QColor& clr)
{
    QImage imgPicture(sz, QImage::Format_RGB32);
    imgPicture.fill(clr);
    QByteArray arrFile;
    QBuffer objBuffer(&arrFile);
    objBuffer.open(QIODevice::WriteOnly);
    imgPicture.save(&objBuffer, "PNG");
    return arrFile;
}

void TestSequencePreview::nothingSelectedAsksForASelection()
{
    const auto* pNothing = TestWidgets::get<QLabel>(m_pPreview.get(), "previewNothing");
    QVERIFY(pNothing->isVisible());
    QCOMPARE(pNothing->text(), QStringLiteral("Select a sequence to see what it holds."));
    m_pStudy->addSequence(QStringLiteral("A"));
    open();
    m_pPreview->setSequence(sequence("A"));
    QVERIFY(!pNothing->isVisible());
    m_pPreview->setSequence(nullptr);
    QVERIFY(pNothing->isVisible());
}

void TestSequencePreview::sequenceIsShown()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 1"), QStringLiteral("b.xml"));
    m_pStudy->addIndexEntry(QStringLiteral("A"), 1, QStringLiteral("Day 0"), QStringLiteral("c.xml"));
    open();
    m_pPreview->setSequence(sequence("A"));
    QCOMPARE(text("previewTitle"), QStringLiteral("A"));
    QCOMPARE(text("previewSubject"), QStringLiteral("Test, 2026-08-01 09:30"));
    QCOMPARE(text("previewKind"), QStringLiteral("luminescent, structured-light surface"));
    QCOMPARE(heading("previewResultsHeading"), QStringLiteral("Saved results (2 SOLA, 1 NOVA)"));
    QCOMPARE(heading("previewClicksHeading"), QStringLiteral("Images (2)"));
    QTRY_COMPARE(results(), (QStringList{"SOLA Day 0", "SOLA Day 1", "NOVA Day 0"}));
    const QAbstractItemModel* pModel = clicks()->model();
    QCOMPARE(pModel->rowCount(), 2);
    QCOMPARE(pModel->index(0, COrmClickModel::eClick).data().toString(), QStringLiteral("A_001"));
    QCOMPARE(pModel->index(1, COrmClickModel::eEmission).data().toString(), QStringLiteral("600 nm"));
    QCOMPARE(pModel->index(0, COrmClickModel::eExposure).data().toString(), QStringLiteral("60 s"));
    QVERIFY(clicks()->isColumnHidden(COrmClickModel::eExcitation));
    QTRY_COMPARE(pictureWidget()->text(), QStringLiteral("This sequence has no photograph."));
}

void TestSequencePreview::photographIsShown()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    writeClick(QStringLiteral("A"), "[photographic image]\nImage File=p.png\n[luminescent image]\n");
    CStudyWriter::writeFile(clickFolder(QStringLiteral("A")) + QStringLiteral("p.png"), picture({40, 20}, Qt::red));
    open();
    m_pPreview->setSequence(sequence("A"));
    QTRY_VERIFY(!pictureWidget()->picture().isNull());
    QCOMPARE(pictureWidget()->picture().size(), QSize(40, 20));
    QCOMPARE(pictureWidget()->picture().pixelColor(20, 10), QColor(Qt::red));
    QCOMPARE(pictureWidget()->text(), QStringLiteral("Photograph of A_001"));
    QVERIFY(!pictureWidget()->accessibleName().isEmpty());
    QVERIFY(m_pPreview->grab().toImage().pixelColor(pictureWidget()->mapTo(m_pPreview.get(), pictureWidget()->rect().center())) ==
            QColor(Qt::red));
}

void TestSequencePreview::largePhotographIsMadeSmall()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    writeClick(QStringLiteral("A"), "[photographic image]\nImage File=p.png\n");
    CStudyWriter::writeFile(clickFolder(QStringLiteral("A")) + QStringLiteral("p.png"), picture({3000, 1500}, Qt::blue));
    open();
    const SSequencePreview sPreview = OrmPreviewReader::read(sequence("A")->getFacts());
    QCOMPARE(sPreview.m_imgPhotograph.size(), QSize(640, 320));
}

void TestSequencePreview::missingAndBadPhotographsAreTold_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("none named") << QByteArray() << "has no photograph.";
    QTest::newRow("not there") << QByteArray("other.png") << "The photograph of A_001 is not in its folder.";
    QTest::newRow("outside") << QByteArray("../outside.png") << "The photograph of A_001 is not in its folder.";
    QTest::newRow("a folder") << QByteArray(".") << "The photograph of A_001 is not in its folder.";
    QTest::newRow("no picture") << QByteArray("text.png") << "text.png cannot be shown: ";
    QTest::newRow("empty") << QByteArray("empty.png") << "empty.png";
    QTest::newRow("cut") << QByteArray("cut.png") << "cut.png cannot be shown: ";
}

void TestSequencePreview::missingAndBadPhotographsAreTold()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    m_pStudy->addSequence(QStringLiteral("A"));
    writeClick(QStringLiteral("A"), "[photographic image]\nImage File=" + name + "\n[luminescent image]\n");
    const QString strFolder = clickFolder(QStringLiteral("A"));
    const QByteArray arrPicture = picture({200, 200}, Qt::green);
    CStudyWriter::writeFile(strFolder + QStringLiteral("../outside.png"), arrPicture);
    CStudyWriter::writeFile(strFolder + QStringLiteral("text.png"), "no picture");
    CStudyWriter::writeFile(strFolder + QStringLiteral("empty.png"), "");
    CStudyWriter::writeFile(strFolder + QStringLiteral("cut.png"), arrPicture.left(60));
    open();
    m_pPreview->setSequence(sequence("A"));
    QTRY_VERIFY2(pictureWidget()->text().contains(text), qPrintable(pictureWidget()->text()));
    QVERIFY(pictureWidget()->picture().isNull());
}

void TestSequencePreview::unreadableIndexIsTold()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    QVERIFY(QDir().mkpath(m_pStudy->sequenceFolder(QStringLiteral("A")) + QStringLiteral("XML/SOLA.txt"))); // a folder in its place
    open();
    m_pPreview->setSequence(sequence("A"));
    QTRY_VERIFY(text("compareHint").startsWith(QStringLiteral("The list of saved results cannot be read: ")));
    QVERIFY(results().isEmpty());
}

void TestSequencePreview::excitationIsShownWhereThereIsOne()
{
    m_pStudy->addSequence(QStringLiteral("F"), SSequenceLook::fluorescent());
    m_pStudy->addSequence(QStringLiteral("L"));
    open();
    m_pPreview->setSequence(sequence("F"));
    QVERIFY(!clicks()->isColumnHidden(COrmClickModel::eExcitation));
    QVERIFY(clicks()->model()->index(0, COrmClickModel::eExcitation).data().toString().endsWith(QStringLiteral(" nm")));
    m_pPreview->setSequence(sequence("L"));
    QVERIFY(clicks()->isColumnHidden(COrmClickModel::eExcitation));
}

void TestSequencePreview::quantitiesHaveUnits_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("number") << "620"
                            << "620 nm";
    QTest::newRow("fraction") << "0.5"
                              << "0.5 nm";
    QTest::newRow("word") << "open"
                          << "open";
    QTest::newRow("with its unit") << "620 nm"
                                   << "620 nm";
    QTest::newRow("none") << ""
                          << "";
}

void TestSequencePreview::quantitiesHaveUnits()
{
    QFETCH(QString, value);
    COrmClickModel objModel;
    SClickFacts sClick;
    sClick.m_strEmissionFilter = value;
    objModel.setClicks({sClick});
    QTEST(objModel.index(0, COrmClickModel::eEmission).data().toString(), "text");
    QVERIFY(!objModel.index(0, COrmClickModel::eClick).data(Qt::DecorationRole).value<QIcon>().pixmap(16).isNull());
    for (int nColumn = 0; nColumn < objModel.columnCount(); ++nColumn)
        QVERIFY(!objModel.headerData(nColumn, Qt::Horizontal).toString().isEmpty());
}

void TestSequencePreview::lastSequenceAskedForIsShown()
{
    for (int nSequence = 0; nSequence < 40; ++nSequence)
    {
        const QString strID = QStringLiteral("S%1").arg(nSequence);
        m_pStudy->addSequence(strID);
        m_pStudy->addIndexEntry(strID, 0, strID, QStringLiteral("a.xml"));
    }
    open();
    QSignalSpy objLoaded(m_pPreview->findChild<COrmPreviewLoader*>(), &COrmPreviewLoader::loaded);
    for (int nSequence = 0; nSequence < 40; ++nSequence)
        m_pPreview->setSequence(COrmSequenceDataset::getSequenceDataset(QStringLiteral("S%1").arg(nSequence)));
    QTRY_COMPARE(results(), QStringList{"SOLA S39"});
    QCOMPARE(objLoaded.count(), 1); // what was passed over is not read
    // The same again changes nothing, and reads nothing.
    m_pPreview->setSequence(sequence("S39"));
    QVERIFY(!m_pPreview->findChild<COrmPreviewLoader*>()->isBusy());
}

void TestSequencePreview::changedSequenceIsReadAgain()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    open();
    m_pPreview->setSequence(sequence("A"));
    QTRY_COMPARE(results(), QStringList{"SOLA Day 0"});
    m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Day 1"), QStringLiteral("b.xml"));
    QCOMPARE(m_pCollection->refresh(QStringLiteral("A")), QString());
    m_pPreview->refresh(sequence("A"));
    QTRY_COMPARE(results(), (QStringList{"SOLA Day 0", "SOLA Day 1"}));
}

void TestSequencePreview::compareNeedsAToolAndResults()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    m_pStudy->addSequence(QStringLiteral("B"));
    m_pStudy->addIndexEntry(QStringLiteral("B"), 1, QStringLiteral("Day 0"), QStringLiteral("a.xml"));
    open();
    const auto* pButton = TestWidgets::get<QPushButton>(m_pPreview.get(), "compareButton");
    const auto* pHint = TestWidgets::get<COrmElidedLabel>(m_pPreview.get(), "compareHint");
    m_pPreview->setSequence(sequence("A"));
    QVERIFY(!pButton->isEnabled());
    QCOMPARE(pHint->text(), QStringLiteral("No saved results to compare yet."));
    QVERIFY(pHint->isVisible());
    m_pPreview->setSequence(sequence("B"));
    QVERIFY(pButton->isEnabled());
    QVERIFY(!pHint->isVisible());
    QCOMPARE(pButton->text(), QStringLiteral("&Compare in Some Tool"));
    m_pPreview->setTool(QString(), QStringLiteral("The tool is gone."));
    QVERIFY(!pButton->isEnabled());
    QCOMPARE(pHint->text(), QStringLiteral("The tool is gone."));
    m_pPreview->setTool(QStringLiteral("Some Tool"), QString());
    QSignalSpy objCompare(m_pPreview.get(), &COrmSequencePreview::compareRequested);
    TestWidgets::click(TestWidgets::get<QPushButton>(m_pPreview.get(), "compareButton"));
    QCOMPARE(objCompare.count(), 1);
}

void TestSequencePreview::strangeNamesAreShownPlainly()
{
    const QString strEvil = QString::fromUtf8("<img src=x>\xE2\x80\xAE&amp;");
    SSequenceFacts sFacts;
    sFacts.m_strSequenceID = strEvil;
    sFacts.m_strSubject = QString(65000, QLatin1Char('m'));
    sFacts.m_strInfoPath = m_pStudy->folder() + QLatin1Char('/');
    sFacts.m_lstClicks.resize(1);
    sFacts.m_lstClicks[0].m_strClickNumber = QString(65000, QLatin1Char('c'));
    sFacts.m_lstClicks[0].m_strEmissionFilter = QString(65000, QLatin1Char('9'));
    const COrmSequenceDataset* pSequence = m_pCollection->add(sFacts);
    QVERIFY(pSequence != nullptr);
    m_pPreview->setSequence(pSequence);
    QTRY_VERIFY(!m_pPreview->findChild<COrmPreviewLoader*>()->isBusy());
    QVERIFY(!m_pPreview->grab().isNull());
    const auto* pTitle = TestWidgets::get<COrmElidedLabel>(m_pPreview.get(), "previewTitle");
    QCOMPARE(pTitle->text(), strEvil);
    QCOMPARE(pTitle->accessibleName(), QStringLiteral("<img src=x>\\u202E&amp;"));
    QVERIFY(pTitle->toolTip().contains(QStringLiteral("&lt;img src=x&gt;\\u202E")));
    const auto* pSubject = TestWidgets::get<COrmElidedLabel>(m_pPreview.get(), "previewSubject");
    QVERIFY(pSubject->width() <= m_pPreview->width());
    QVERIFY(pSubject->accessibleName().size() <= 300);
    QVERIFY(pSubject->toolTip().size() < 3000);
}

void TestSequencePreview::manyImagesAndResultsScroll()
{
    SSequenceLook sLook;
    sLook.nClicks = 60;
    m_pStudy->addSequence(QStringLiteral("A"), sLook);
    for (int nResult = 0; nResult < 40; ++nResult)
        m_pStudy->addIndexEntry(QStringLiteral("A"), 0, QStringLiteral("Result %1").arg(nResult), QStringLiteral("a.xml"));
    open();
    m_pPreview->setSequence(sequence("A"));
    QTRY_COMPARE(results().size(), 40);
    QCOMPARE(clicks()->model()->rowCount(), 60);
    const auto* pResults = TestWidgets::get<QListWidget>(m_pPreview.get(), "previewResults");
    QVERIFY(pResults->height() < m_pPreview->height() / 2);
    QVERIFY(clicks()->height() < m_pPreview->height() / 2);
    // Low and wide, the lists stand beside the head.
    const auto* pTitle = TestWidgets::get<COrmElidedLabel>(m_pPreview.get(), "previewTitle");
    QVERIFY(pResults->mapTo(m_pPreview.get(), QPoint()).x() < pTitle->mapTo(m_pPreview.get(), QPoint()).x() + pTitle->width());
    m_pPreview->resize(900, 200);
    QTRY_VERIFY(pResults->mapTo(m_pPreview.get(), QPoint()).x() > pTitle->mapTo(m_pPreview.get(), QPoint()).x() + pTitle->width());
}

void TestSequencePreview::loaderMayGoWhileItReads()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    writeClick(QStringLiteral("A"), "[photographic image]\nImage File=p.png\n");
    CStudyWriter::writeFile(clickFolder(QStringLiteral("A")) + QStringLiteral("p.png"), picture({700, 700}, Qt::blue));
    open();
    for (int nTime = 0; nTime < 20; ++nTime)
    {
        auto pLoader = std::make_unique<COrmPreviewLoader>();
        pLoader->request(sequence("A")->getFacts());
        pLoader.reset();
    }
    COrmPreviewLoader objLast;
    QSignalSpy objLoaded(&objLast, &COrmPreviewLoader::loaded);
    objLast.request(sequence("A")->getFacts());
    QTRY_COMPARE(objLoaded.count(), 1);
    QCOMPARE(objLoaded.first().first().value<SSequencePreview>().m_imgPhotograph.width(), 640);
}

void TestSequencePreview::whatIsForgottenIsNotShown()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    open();
    COrmPreviewLoader objLoader;
    QSignalSpy objLoaded(&objLoader, &COrmPreviewLoader::loaded);
    objLoader.request(sequence("A")->getFacts());
    QVERIFY(objLoader.isBusy());
    objLoader.forget();
    QVERIFY(!objLoader.isBusy());
    objLoader.request(sequence("A")->getFacts());
    QTRY_COMPARE(objLoaded.count(), 1); // of the second request alone
    QVERIFY(!objLoader.isBusy());
}

ORM_TEST_MAIN(TestSequencePreview)
#include "tst_sequencepreview.moc"
