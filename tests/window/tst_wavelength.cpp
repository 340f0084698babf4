#include "WindowTestTools.h"

#include "COrmXYPlot.h"
#include "CPaintCount.h"
#include "OrmTestMain.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

using WindowTest::CStudy;
using WindowTest::entries;
using WindowTest::paint;

namespace
{
const QStringList s_lstOne = {QStringLiteral("560"), QStringLiteral("580"), QStringLiteral("600")};
const QStringList s_lstTwo = {QStringLiteral("620"), QStringLiteral("640")};
const QStringList s_lstDye = {QStringLiteral("spot 1"), QStringLiteral("spot 2")};

/// The window with the results "one" and "two" of S1 and "dye" of N1, loaded in this order; tiles 0 to 2.
class CLoaded
{
public:
    CLoaded()
    {
        m_objTool.open(m_objStudy.folder());
        load(QStringLiteral("SOLA S1"), {QStringLiteral("one")});
        load(QStringLiteral("SOLA S1"), {QStringLiteral("two")});
        load(QStringLiteral("NOVA N1"), {QStringLiteral("dye")});
    }
    void load(const QString& strEntry, const QStringList& lstResults)
    {
        m_objTool.chooseSequence(strEntry);
        m_objTool.load(lstResults);
        paint(m_objTool);
        m_objTool.window().updateUIControls();
    }
    /// What a press on a tile tells the window.
    void tellPicked(const QString& strSequenceID, const QString& strResult)
    {
        emit m_objTool.view().updateWavelengthCombo(strSequenceID, strResult);
    }
    /// Takes a result out of the view as its own menu does, and tells the window.
    void remove(const QString& strSequenceID, const QString& strResult)
    {
        QList<sAnalysisBase>& lstResults = m_objTool.view().getAnalysisParams();
        for (int i = lstResults.size() - 1; i >= 0; --i)
        {
            if (lstResults.at(i).strSequenceID == strSequenceID && lstResults.at(i).strResultName == strResult)
            {
                lstResults.removeAt(i);
            }
        }
        m_objTool.view().getLoadedResult().removeOne(strSequenceID + strResult);
        emit m_objTool.view().upadteAnlysisParameters(strSequenceID, strResult);
        paint(m_objTool);
    }
    /// Presses the left button in the middle of a tile of three, or right of all of them.
    void pressTile(int nTile)
    {
        CLongitudinalStudyBrowserView& objView = m_objTool.view();
        const int nWidth = (objView.getGLWidth() - 110) / 3 - 5;
        const QPoint ptMiddle(nTile < 3 ? nTile * nWidth + nWidth / 2 : objView.getGLWidth() - 40, objView.getGLHeight() / 2);
        QTest::mouseMove(&objView, ptMiddle - QPoint(3, 3));
        QMouseEvent objMove(QEvent::MouseMove, ptMiddle, objView.mapToGlobal(ptMiddle), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&objView, &objMove);
        QTest::mouseClick(&objView, Qt::LeftButton, Qt::NoModifier, ptMiddle);
    }

    CToolWindow& tool() { return m_objTool; }
    QComboBox* combo() { return m_objTool.get<QComboBox>("m_pWaveLengthCB"); }
    QLabel* label() { return m_objTool.get<QLabel>("label_3"); }
    QGroupBox* box(const char* pName) { return m_objTool.get<QGroupBox>(pName); }
    bool isFree(const char* pName) { return box(pName)->isEnabledTo(&m_objTool.window()); }
    QString sequence()
    {
        const QListWidgetItem* pItem = m_objTool.get<QListWidget>("m_pSequenceNameLW")->currentItem();
        return pItem != nullptr ? pItem->text() : QString();
    }
    QString result()
    {
        const QListWidgetItem* pItem = m_objTool.get<QListWidget>("m_pResultWidget")->currentItem();
        return pItem != nullptr ? pItem->text() : QString();
    }
    /// The picture of the tiles, in which a surface shows its density map.
    QImage picture()
    {
        paint(m_objTool);
        return m_objTool.view().getPrintImage();
    }

private:
    CStudy m_objStudy;
    CToolWindow m_objTool;
};
} // namespace

/// The wavelength combo, and how lists and view keep in step.
class tst_wavelength : public QObject
{
    Q_OBJECT

private slots:
    void loadFillsTheCombo();
    void pickedSOLAResultIsShown();
    void pickedNOVAResultIsShown();
    void pressOnATileIsAPick();
    void pressOutsideDisablesTheCombo();
    void unknownResultDisablesTheCombo();
    void pickRefillsInSilence();
    void pickOfTheOtherKindSwitchesThePanel();
    void pickedNameIsFoundIgnoringCase();
    void choiceChangesTheDensityMap();
    void choiceGoesToTheSelectedResult();
    void sameEntryChangesNothing();
    void clickOnALoadedResultSelectsItsTile();
    void clickOnALoadedNOVAResultSelectsItsTile();
    void clickOnAnUnloadedResultSelectsNone();
    void clickLeavesTheLabel();
    void clickRepaints();
    void removedResultIsForgotten();
    void removalOfTheLastButOneEmptiesThePlot();
    void removalOfTheLastTurnsTheControlsOff();
    void removalSendsThePlotBack();
    void unitIsLockedWhileItsKindIsLoaded();
    void removalOfAKindFreesItsUnit();
    void clearedViewForgetsAll();
    void removedKeyCanBeLoadedAgain();
    void resultAfterAllOthersCountsAsTheFirst();
};

void tst_wavelength::loadFillsTheCombo()
{
    CLoaded objLoaded;
    QCOMPARE(entries(objLoaded.combo()), s_lstDye);
    QVERIFY(objLoaded.combo()->isEnabled());
    QCOMPARE(objLoaded.combo()->currentIndex(), 0);
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Image:"));
}

void tst_wavelength::pickedSOLAResultIsShown()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("two"));
    QCOMPARE(entries(objLoaded.combo()), s_lstTwo);
    QCOMPARE(objLoaded.combo()->currentText(), QStringLiteral("620"));
    QVERIFY(objLoaded.combo()->isEnabled());
    QCOMPARE(objLoaded.sequence(), QStringLiteral("SOLA S1"));
    QCOMPARE(objLoaded.result(), QStringLiteral("two"));
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Wavelength:"));
    const QStringList lstResults = {QStringLiteral("one"), QStringLiteral("two")};
    QCOMPARE(objLoaded.tool().savedResults(), lstResults);
}

void tst_wavelength::pickedNOVAResultIsShown()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    QCOMPARE(entries(objLoaded.combo()), s_lstOne);
    objLoaded.tellPicked(QStringLiteral("N1"), QStringLiteral("dye"));
    QCOMPARE(entries(objLoaded.combo()), s_lstDye);
    QCOMPARE(objLoaded.sequence(), QStringLiteral("NOVA N1"));
    QCOMPARE(objLoaded.result(), QStringLiteral("dye"));
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Image:"));
}

void tst_wavelength::pressOnATileIsAPick()
{
    CLoaded objLoaded;
    objLoaded.pressTile(1);
    QCOMPARE(entries(objLoaded.combo()), s_lstTwo);
    QCOMPARE(objLoaded.result(), QStringLiteral("two"));
    QCOMPARE(objLoaded.tool().view().getSelectedList(), QStringList{QStringLiteral("S1two")});
    objLoaded.pressTile(2);
    QCOMPARE(entries(objLoaded.combo()), s_lstDye);
    QCOMPARE(objLoaded.sequence(), QStringLiteral("NOVA N1"));
}

void tst_wavelength::pressOutsideDisablesTheCombo()
{
    CLoaded objLoaded;
    objLoaded.pressTile(0);
    QVERIFY(objLoaded.combo()->isEnabled());
    objLoaded.pressTile(3);
    QVERIFY(!objLoaded.combo()->isEnabled());
    QCOMPARE(entries(objLoaded.combo()), s_lstOne);
    QCOMPARE(objLoaded.sequence(), QStringLiteral("SOLA S1"));
    QCOMPARE(objLoaded.result(), QStringLiteral("one"));
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Wavelength:"));
}

void tst_wavelength::unknownResultDisablesTheCombo()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("three"));
    QVERIFY(!objLoaded.combo()->isEnabled());
    QCOMPARE(entries(objLoaded.combo()), s_lstDye);
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Image:"));
    QCOMPARE(objLoaded.sequence(), QStringLiteral("NOVA N1"));
}

void tst_wavelength::pickRefillsInSilence()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    objLoaded.combo()->setCurrentIndex(2);
    const QImage imgBefore = objLoaded.picture();
    QSignalSpy objSpy(objLoaded.combo(), SIGNAL(currentIndexChanged(QString)));
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    QCOMPARE(objSpy.size(), 0);
    // The first entry shows, the map stays the third.
    QCOMPARE(objLoaded.combo()->currentIndex(), 0);
    QCOMPARE(objLoaded.picture(), imgBefore);
    QVERIFY(!objLoaded.combo()->signalsBlocked());
}

void tst_wavelength::pickOfTheOtherKindSwitchesThePanel()
{
    CLoaded objLoaded;
    QVERIFY(objLoaded.box("m_pNOVAGB")->isVisible());
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    QVERIFY(objLoaded.box("m_pSOLAGB")->isVisible());
    QVERIFY(!objLoaded.box("m_pNOVAGB")->isVisible());
    QCOMPARE(objLoaded.box("m_pDisplayVoxelsGB")->title(), QStringLiteral("Display Voxels [SOLA]"));
    objLoaded.tellPicked(QStringLiteral("N1"), QStringLiteral("dye"));
    QVERIFY(objLoaded.box("m_pNOVAGB")->isVisible());
    QCOMPARE(objLoaded.box("m_pDisplayVoxelsGB")->title(), QStringLiteral("Display Voxels [NOVA]"));
}

void tst_wavelength::pickedNameIsFoundIgnoringCase()
{
    // The list may show another case than the key: the entry is found all the same.
    CLoaded objLoaded;
    auto* pSequences = objLoaded.tool().get<QListWidget>("m_pSequenceNameLW");
    pSequences->findItems(QStringLiteral("SOLA S1"), Qt::MatchExactly).first()->setText(QStringLiteral("SOLA s1"));
    // The list of that other ID holds no result: its tiles stay, since they are not its own.
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    QCOMPARE(objLoaded.sequence(), QStringLiteral("SOLA s1"));
    QCOMPARE(objLoaded.tool().tiles().size(), 3);
    // The selection is that of the tile.
    QCOMPARE(entries(objLoaded.combo()), s_lstOne);
}

void tst_wavelength::choiceChangesTheDensityMap()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    const sAnalysisBase& sOne = objLoaded.tool().view().getAnalysisParams().at(0);
    QVERIFY(sOne.mapPhotonDensity.contains(QStringLiteral("580")));
    // Make the second map one of its own, so that it shows.
    float* pSecond = sOne.mapPhotonDensity.value(QStringLiteral("580"));
    for (long i = 0; i < sOne.objMesh.getNumOfVertices(); ++i)
    {
        pSecond[i] = i % 2 == 0 ? 1.0f : 1000.0f;
    }
    const QImage imgFirst = objLoaded.picture();
    objLoaded.combo()->setCurrentIndex(1);
    const QImage imgSecond = objLoaded.picture();
    QVERIFY(imgFirst != imgSecond);
    objLoaded.combo()->setCurrentIndex(0);
    QCOMPARE(objLoaded.picture(), imgFirst);
}

void tst_wavelength::choiceGoesToTheSelectedResult()
{
    CLoaded objLoaded;
    // An entry of the same text in both kinds: only the selected result's surface changes.
    objLoaded.tellPicked(QStringLiteral("N1"), QStringLiteral("dye"));
    const sAnalysisBase& sDye = objLoaded.tool().view().getAnalysisParams().at(2);
    float* pSecond = sDye.mapPhotonDensity.value(QStringLiteral("spot 2"));
    QVERIFY(pSecond != nullptr);
    for (long i = 0; i < sDye.objMesh.getNumOfVertices(); ++i)
    {
        pSecond[i] = i % 3 == 0 ? 1.0f : 500.0f;
    }
    const QImage imgBefore = objLoaded.picture();
    objLoaded.combo()->setCurrentIndex(1);
    const QImage imgAfter = objLoaded.picture();
    const int nThird = (imgBefore.width() - 110) / 3;
    QCOMPARE(imgAfter.copy(0, 0, 2 * nThird - 12, imgAfter.height()), imgBefore.copy(0, 0, 2 * nThird - 12, imgBefore.height()));
    QVERIFY(imgAfter.copy(2 * nThird, 0, nThird, imgAfter.height()) != imgBefore.copy(2 * nThird, 0, nThird, imgBefore.height()));
}

void tst_wavelength::sameEntryChangesNothing()
{
    CLoaded objLoaded;
    QSignalSpy objSpy(objLoaded.combo(), SIGNAL(currentIndexChanged(QString)));
    objLoaded.combo()->setCurrentIndex(0);
    QCOMPARE(objSpy.size(), 0);
    objLoaded.combo()->setCurrentIndex(1);
    QCOMPARE(objSpy.size(), 1);
    QCOMPARE(objSpy.first().first().toString(), QStringLiteral("spot 2"));
}

void tst_wavelength::clickOnALoadedResultSelectsItsTile()
{
    CLoaded objLoaded;
    objLoaded.tool().chooseSequence(QStringLiteral("SOLA S1"));
    QSignalSpy objSpy(objLoaded.combo(), SIGNAL(currentIndexChanged(QString)));
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("two"));
    QCOMPARE(objLoaded.tool().view().getSelectedList(), QStringList{QStringLiteral("S1two")});
    QVERIFY(objLoaded.combo()->isEnabled());
    QCOMPARE(entries(objLoaded.combo()), s_lstTwo);
    QCOMPARE(objSpy.size(), 0);
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("one"));
    QCOMPARE(objLoaded.tool().view().getSelectedList(), QStringList{QStringLiteral("S1one")});
    QCOMPARE(entries(objLoaded.combo()), s_lstOne);
}

void tst_wavelength::clickOnALoadedNOVAResultSelectsItsTile()
{
    CLoaded objLoaded;
    objLoaded.tool().chooseSequence(QStringLiteral("SOLA S1"));
    objLoaded.tool().chooseSequence(QStringLiteral("NOVA N1"));
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("dye"));
    QCOMPARE(objLoaded.tool().view().getSelectedList(), QStringList{QStringLiteral("N1dye")});
    QCOMPARE(entries(objLoaded.combo()), s_lstDye);
    // A choice in the combo now belongs to the clicked result.
    objLoaded.combo()->setCurrentIndex(1);
    QCOMPARE(objLoaded.combo()->currentText(), QStringLiteral("spot 2"));
}

void tst_wavelength::clickOnAnUnloadedResultSelectsNone()
{
    CLoaded objLoaded;
    objLoaded.tool().chooseSequence(QStringLiteral("NOVA N1"));
    objLoaded.tool().view().getSelectedList() = QStringList{QStringLiteral("S1one"), QStringLiteral("N1dye")};
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("dye 2"));
    QCOMPARE(objLoaded.tool().view().getSelectedList(), QStringList());
    QVERIFY(!objLoaded.combo()->isEnabled());
    QCOMPARE(objLoaded.tool().tiles().size(), 3);
}

void tst_wavelength::clickLeavesTheLabel()
{
    CLoaded objLoaded;
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Image:"));
    objLoaded.tool().chooseSequence(QStringLiteral("SOLA S1"));
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("one"));
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Image:"));
    objLoaded.pressTile(0);
    QCOMPARE(objLoaded.label()->text(), QStringLiteral("Wavelength:"));
}

void tst_wavelength::clickRepaints()
{
    CLoaded objLoaded;
    objLoaded.tool().chooseSequence(QStringLiteral("SOLA S1"));
    paint(objLoaded.tool());
    QCoreApplication::processEvents();
    const CPaintCount objPaints(objLoaded.tool().view());
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("one"));
    QTRY_VERIFY(objPaints.count() > 0);
}

void tst_wavelength::removedResultIsForgotten()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("two"));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    QVERIFY(!objLoaded.combo()->isEnabled());
    QCOMPARE(entries(objLoaded.combo()), s_lstTwo); // as it stood
    // A click on its name finds it no longer loaded.
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("two"));
    QVERIFY(!objLoaded.combo()->isEnabled());
    QCOMPARE(objLoaded.tool().view().getSelectedList(), QStringList());
    TestWidgets::clickEntry(objLoaded.tool().get<QListWidget>("m_pResultWidget"), QStringLiteral("one"));
    QVERIFY(objLoaded.combo()->isEnabled());
    QCOMPARE(entries(objLoaded.combo()), s_lstOne);
}

void tst_wavelength::removalOfTheLastButOneEmptiesThePlot()
{
    CLoaded objLoaded;
    auto* pPlots = objLoaded.tool().get<QComboBox>("m_pPlotSelectCB");
    auto* pPlot = objLoaded.tool().window().findChild<COrmXYPlot*>();
    int nX = 0;
    float fY = 1.0f;
    QVERIFY(pPlot->addDataLine(QStringLiteral("line"), &nX, &fY, 1));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    QVERIFY(pPlots->isEnabledTo(&objLoaded.tool().window())); // two are left
    QVERIFY(!pPlot->dataLines().isEmpty());
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("one"));
    QVERIFY(!pPlots->isEnabledTo(&objLoaded.tool().window()));
    QVERIFY(pPlot->dataLines().isEmpty());
    QVERIFY(objLoaded.tool().get<QWidget>("m_pClear3DViewButton")->isEnabled()); // one is left
}

void tst_wavelength::removalOfTheLastTurnsTheControlsOff()
{
    CLoaded objLoaded;
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("one"));
    objLoaded.remove(QStringLiteral("N1"), QStringLiteral("dye"));
    for (const char* pName : {"m_pClear3DViewButton", "m_pPlotSelectCB", "m_pSelectVoxelButton", "m_pWaveLengthCB"})
    {
        QVERIFY2(!objLoaded.tool().get<QWidget>(pName)->isEnabledTo(&objLoaded.tool().window()), pName);
    }
}

void tst_wavelength::removalSendsThePlotBack()
{
    CLoaded objLoaded;
    auto* pPlots = objLoaded.tool().get<QComboBox>("m_pPlotSelectCB");
    pPlots->setCurrentIndex(2);
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    QCOMPARE(pPlots->currentText(), QStringLiteral("Quantification"));
    pPlots->setCurrentIndex(1);
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("one"));
    QCOMPARE(pPlots->currentIndex(), 1); // with a single one left it stays
}

void tst_wavelength::unitIsLockedWhileItsKindIsLoaded()
{
    CLoaded objLoaded;
    QVERIFY(!objLoaded.isFree("m_pSOLAGB"));
    QVERIFY(!objLoaded.isFree("m_pNOVAGB"));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    QVERIFY(!objLoaded.isFree("m_pSOLAGB"));
    QVERIFY(!objLoaded.isFree("m_pNOVAGB"));
}

void tst_wavelength::removalOfAKindFreesItsUnit()
{
    CLoaded objLoaded;
    objLoaded.remove(QStringLiteral("N1"), QStringLiteral("dye"));
    QVERIFY(!objLoaded.isFree("m_pSOLAGB"));
    QVERIFY(objLoaded.isFree("m_pNOVAGB"));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("one"));
    QVERIFY(!objLoaded.isFree("m_pSOLAGB"));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    QVERIFY(objLoaded.isFree("m_pSOLAGB"));
}

void tst_wavelength::clearedViewForgetsAll()
{
    CLoaded objLoaded;
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    objLoaded.tool().view().clear3DView();
    QVERIFY(objLoaded.isFree("m_pSOLAGB"));
    QVERIFY(objLoaded.isFree("m_pNOVAGB"));
    objLoaded.tellPicked(QStringLiteral("S1"), QStringLiteral("one"));
    QVERIFY(!objLoaded.combo()->isEnabled());
    // Neither combo nor lists were touched.
    QCOMPARE(entries(objLoaded.combo()), s_lstOne);
    QCOMPARE(objLoaded.result(), QStringLiteral("one"));
}

void tst_wavelength::removedKeyCanBeLoadedAgain()
{
    CLoaded objLoaded;
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    objLoaded.tool().chooseSequence(QStringLiteral("SOLA S1"));
    objLoaded.tool().load({QStringLiteral("two")});
    const QStringList lstExpected = {QStringLiteral("S1one"), QStringLiteral("S1two"), QStringLiteral("N1dye")};
    QCOMPARE(objLoaded.tool().tiles(), lstExpected);
    QCOMPARE(objLoaded.tool().host().boxes().size(), 0);
    QCOMPARE(entries(objLoaded.combo()), s_lstTwo);
}

void tst_wavelength::resultAfterAllOthersCountsAsTheFirst()
{
    CLoaded objLoaded;
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("one"));
    objLoaded.remove(QStringLiteral("S1"), QStringLiteral("two"));
    objLoaded.remove(QStringLiteral("N1"), QStringLiteral("dye"));
    auto* pPlots = objLoaded.tool().get<QComboBox>("m_pPlotSelectCB");
    pPlots->setCurrentIndex(1);
    objLoaded.load(QStringLiteral("SOLA S1"), {QStringLiteral("one")});
    QCOMPARE(pPlots->currentIndex(), 1); // a second result would have sent it back
    objLoaded.load(QStringLiteral("SOLA S1"), {QStringLiteral("two")});
    QCOMPARE(pPlots->currentIndex(), 0);
}

ORM_TEST_MAIN(tst_wavelength)
#include "tst_wavelength.moc"
