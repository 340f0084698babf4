#include "OrmGlobalConstants.h"
#include "OrmTestMain.h"
#include "OrmUtilityClasses.h"

#include <QAbstractItemView>
#include <QComboBox>

/// The constants that the tool shares with its host, and the two small widgets' helpers.
class tst_vocabulary : public QObject
{
    Q_OBJECT

private slots:
    void colorTablesHaveTheirNames();
    void imageSectionsHaveTheirNames();
    void clickKeysAreFoundByNumber();
    void singleNames();
    void styleSheetIsExact();
    void hashKeyIsEaten();
    void otherKeysPass();
    void everySecondPressOpensThePopup();
    void pressWithoutParentOnlyCounts();
    void bytesAreReversed_data();
    void bytesAreReversed();
    void otherSizesLeaveTheBuffer();
};

void tst_vocabulary::colorTablesHaveTheirNames()
{
    const QStringList lstExpected = {QStringLiteral("Grays"),   QStringLiteral("Red"),       QStringLiteral("Green"),
                                     QStringLiteral("Blue"),    QStringLiteral("Cyan"),      QStringLiteral("Yellow"),
                                     QStringLiteral("Magenta"), QStringLiteral("Orange"),    QStringLiteral("BlueYellow"),
                                     QStringLiteral("EosB"),    QStringLiteral("GreenPink"), QStringLiteral("Rainbow"),
                                     QStringLiteral("Jet")};
    QCOMPARE(OrmGlobalConstants::g_nVolumeColorTables, 13);
    QCOMPARE(lstExpected.size(), 13);
    for (int i = 0; i < lstExpected.size(); ++i)
    {
        QCOMPARE(OrmGlobalConstants::g_strVolumeColorTable[i], lstExpected.at(i));
    }
    QCOMPARE(static_cast<int>(std::size(OrmGlobalConstants::g_strVolumeColorTable)), 14);
    QVERIFY(OrmGlobalConstants::g_strVolumeColorTable[13].isNull());
}

void tst_vocabulary::imageSectionsHaveTheirNames()
{
    const QStringList lstExpected = {QStringLiteral("photographic image"),
                                     QStringLiteral("luminescent image"),
                                     QStringLiteral("readbias image"),
                                     QStringLiteral("readsigma image"),
                                     QStringLiteral("darkcharge image"),
                                     QStringLiteral("readbiasonly image"),
                                     QStringLiteral("reference image"),
                                     QStringLiteral("structure image"),
                                     QStringLiteral("fluorescent bkg image"),
                                     QStringLiteral("fluorescent reference image"),
                                     QStringLiteral("luminescent A image"),
                                     QStringLiteral("luminescent B image"),
                                     QStringLiteral("x-ray image")};
    QCOMPARE(static_cast<int>(std::size(OrmGlobalConstants::g_strImageSections)), 13);
    for (int i = 0; i < lstExpected.size(); ++i)
    {
        QCOMPARE(OrmGlobalConstants::g_strImageSections[i], lstExpected.at(i));
    }
}

void tst_vocabulary::clickKeysAreFoundByNumber()
{
    QCOMPARE(static_cast<int>(std::size(PLConstants::strClickInfoKeys)), 58);
    QCOMPARE(PLConstants::strClickInfoKeys[27], QStringLiteral("Image Subtype"));
}

void tst_vocabulary::singleNames()
{
    QCOMPARE(PLConstants::SEQUENCEINFO_KEY, QStringLiteral("Sequence"));
    QCOMPARE(PLConstants::CT_ACQUISITION_SECTION_KEY, QStringLiteral("CT Acquisition Parameters"));
    QCOMPARE(PLConstants::FLUORESCENT_LUMINESCENT_TAG, QStringLiteral("fluorescent"));
}

void tst_vocabulary::styleSheetIsExact()
{
    const QString strTabs(8, QLatin1Char('\t'));
    QCOMPARE(OrmGlobalConstants::g_strTabStyleSheet, QStringLiteral("QTabBar::tab:selected {") + strTabs +
                                                         QStringLiteral("background-color: rgb(62,153,246);") + strTabs +
                                                         QStringLiteral("}"));
}

void tst_vocabulary::hashKeyIsEaten()
{
    QLineEdit objEdit;
    COrmHashKeyEater objEater(nullptr, "unused");
    QVERIFY(objEater.objectName().isEmpty());
    objEdit.installEventFilter(&objEater);
    QTest::keyClicks(&objEdit, QStringLiteral("a#b"));
    QCOMPARE(objEdit.text(), QStringLiteral("ab"));
}

void tst_vocabulary::otherKeysPass()
{
    QLineEdit objEdit;
    COrmHashKeyEater objEater(&objEdit, nullptr);
    QCOMPARE(objEater.parent(), &objEdit);
    objEdit.installEventFilter(&objEater);
    QTest::keyClick(&objEdit, '3');
    QCOMPARE(objEdit.text(), QStringLiteral("3"));
}

void tst_vocabulary::everySecondPressOpensThePopup()
{
    QComboBox objCombo;
    objCombo.setEditable(true);
    objCombo.addItems({QStringLiteral("one"), QStringLiteral("two")});
    auto* pEdit = new COrmComboLineEdit(&objCombo, nullptr);
    objCombo.setLineEdit(pEdit);
    objCombo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objCombo));
    for (const bool bOpens : {true, false, true})
    {
        QTest::mousePress(pEdit, Qt::LeftButton);
        QCOMPARE(objCombo.view()->isVisible(), bOpens);
        objCombo.hidePopup();
        QVERIFY(!objCombo.view()->isVisible());
    }
}

void tst_vocabulary::pressWithoutParentOnlyCounts()
{
    COrmComboLineEdit objEdit(nullptr, "start");
    QCOMPARE(objEdit.text(), QStringLiteral("start"));
    objEdit.setCursorPosition(2);
    QTest::mousePress(&objEdit, Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
    QCOMPARE(objEdit.cursorPosition(), 2);
    // The next press is a second one: it opens nothing even where there is a combo box now.
    QComboBox objCombo;
    objCombo.addItem(QStringLiteral("one"));
    objEdit.setParent(&objCombo);
    objCombo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&objCombo));
    QTest::mousePress(&objEdit, Qt::LeftButton);
    QVERIFY(!objCombo.view()->isVisible());
    QTest::mousePress(&objEdit, Qt::LeftButton);
    QVERIFY(objCombo.view()->isVisible());
    objCombo.hidePopup();
    objEdit.setParent(nullptr);
}

void tst_vocabulary::bytesAreReversed_data()
{
    QTest::addColumn<int>("nSize");
    for (const int nSize : {2, 3, 4, 8, 16})
    {
        QTest::addRow("%d bytes", nSize) << nSize;
    }
}

void tst_vocabulary::bytesAreReversed()
{
    QFETCH(int, nSize);
    QByteArray byData;
    for (int i = 0; i < nSize; ++i)
    {
        byData.append(static_cast<char>(i + 1));
    }
    const QByteArray bySeen(static_cast<const char*>(SwapEndian(byData.data(), nSize)), nSize);
    QByteArray byExpected = byData;
    std::reverse(byExpected.begin(), byExpected.end());
    QCOMPARE(bySeen, byExpected);
}

void tst_vocabulary::otherSizesLeaveTheBuffer()
{
    QByteArray byData("0123456789abcdef");
    const QByteArray byLast(static_cast<const char*>(SwapEndian(byData.data(), 16)), 16);
    QCOMPARE(byLast, QByteArray("fedcba9876543210"));
    for (const int nSize : {1, 5, 0, 17})
    {
        QCOMPARE(QByteArray(static_cast<const char*>(SwapEndian(byData.data(), nSize)), 16), byLast);
    }
}

ORM_TEST_MAIN(tst_vocabulary)
#include "tst_vocabulary.moc"
