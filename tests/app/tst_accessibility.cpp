#include "COrmMainWindow.h"
#include "COrmPluginManager.h"
#include "COrmTool.h"
#include "CStudyWriter.h"
#include "OrmAccessibleNames.h"
#include "OrmTestMain.h"
#include "PluginFolder.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>

#include <memory>

/// What assistive technology is told of the windows.
class tst_accessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void namesComeFromWhatStandsBeside();
    void namesComeFromExplanations_data();
    void namesComeFromExplanations();
    void ownNamesStay();
    void nothingInAnyWindowIsUnnamed_data();
    void nothingInAnyWindowIsUnnamed();

private:
    static void walk(QAccessibleInterface* pInterface, const QString& strPath, QStringList& lstUnnamed, int& nControls);
};

void tst_accessibility::initTestCase()
{
    OrmAccessibleNames::install();
    QAccessible::setActive(true);
}

void tst_accessibility::namesComeFromWhatStandsBeside()
{
    QWidget objWindow;
    auto* pGrid = new QGridLayout(&objWindow);
    const auto add = [&](QWidget* pWidget, int nRow, int nColumn)
    {
        pGrid->addWidget(pWidget, nRow, nColumn);
        return pWidget;
    };
    add(new QLabel(QStringLiteral("&Width:")), 0, 0);
    const QWidget* pBeside = add(new QSpinBox, 0, 1);
    const QWidget* pBelow = add(new QSlider, 1, 0);
    add(new QLabel(QStringLiteral("List :")), 2, 0);
    const QWidget* pBelowLabel = add(new QLineEdit, 3, 0);
    auto* pRow = new QHBoxLayout;
    pRow->addWidget(new QLabel(QStringLiteral("Deep")));
    auto* pDeep = new QSlider;
    auto* pBehind = new QSlider;
    pRow->addWidget(pDeep);
    pRow->addWidget(pBehind);
    pGrid->addLayout(pRow, 4, 0);

    QCOMPARE(OrmAccessibleNames::nameFor(pBeside), QStringLiteral("Width"));
    QCOMPARE(OrmAccessibleNames::nameFor(pBeside->findChild<QLineEdit*>()), QStringLiteral("Width"));
    QCOMPARE(OrmAccessibleNames::nameFor(pBelow), QStringLiteral("Width"));
    QCOMPARE(OrmAccessibleNames::nameFor(pBelowLabel), QStringLiteral("List"));
    QCOMPARE(OrmAccessibleNames::nameFor(pDeep), QStringLiteral("Deep"));
    QCOMPARE(OrmAccessibleNames::nameFor(pBehind), QString());
    QCOMPARE(OrmAccessibleNames::nameFor(&objWindow), QString());
}

void tst_accessibility::namesComeFromExplanations_data()
{
    QTest::addColumn<QString>("explanation");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("name");
    QTest::newRow("heading") << "<b>Export Graphics :</b> Click this button."
                             << "Save"
                             << "Export Graphics";
    QTest::newRow("heading and a break") << "<b>Reset:</b><br>Resets.</br>"
                                         << ""
                                         << "Reset";
    QTest::newRow("no heading") << "Click this <b>button</b>."
                                << "Copy to clipboard (Ctrl+C)"
                                << "Copy to clipboard";
    QTest::newRow("tooltip of two lines") << ""
                                          << "<p>Open\nand more</p>"
                                          << "Open";
    QTest::newRow("nothing") << ""
                             << ""
                             << "";
}

void tst_accessibility::namesComeFromExplanations()
{
    QFETCH(QString, explanation);
    QFETCH(QString, toolTip);
    QFETCH(QString, name);
    QWidget objWindow;
    auto* pButton = new QToolButton(&objWindow);
    pButton->setWhatsThis(explanation);
    pButton->setToolTip(toolTip);
    QCOMPARE(OrmAccessibleNames::nameFor(pButton), name);
    QAccessible::queryAccessibleInterface(&objWindow);
    QCOMPARE(pButton->accessibleName(), name);
}

void tst_accessibility::ownNamesStay()
{
    QWidget objWindow;
    auto* pNamed = new QSlider(&objWindow);
    pNamed->setAccessibleName(QStringLiteral("Opacity"));
    pNamed->setToolTip(QStringLiteral("Something else"));
    auto* pButton = new QToolButton(&objWindow);
    pButton->setText(QStringLiteral("Remove"));
    pButton->setToolTip(QStringLiteral("Takes it out"));
    QAccessible::queryAccessibleInterface(&objWindow);
    QCOMPARE(pNamed->accessibleName(), QStringLiteral("Opacity"));
    QCOMPARE(QAccessible::queryAccessibleInterface(pButton)->text(QAccessible::Name), QStringLiteral("Remove"));
}

/// Notes the controls below an interface that have no name, by the way that leads there.
void tst_accessibility::walk(QAccessibleInterface* pInterface, const QString& strPath, QStringList& lstUnnamed, int& nControls)
{
    static const QSet<int> s_setControls = {
        QAccessible::PushButton, QAccessible::CheckBox,   QAccessible::RadioButton,    QAccessible::ComboBox, QAccessible::SpinBox,
        QAccessible::Slider,     QAccessible::Dial,       QAccessible::EditableText,   QAccessible::List,     QAccessible::Table,
        QAccessible::Tree,       QAccessible::ButtonMenu, QAccessible::ButtonDropDown, QAccessible::MenuItem, QAccessible::PageTab,
        QAccessible::Graphic,    QAccessible::Chart,      QAccessible::Canvas};
    if (pInterface == nullptr || !pInterface->isValid())
        return;
    const QString strName = pInterface->text(QAccessible::Name);
    const QObject* pObject = pInterface->object();
    const QString strHere =
        strPath + QLatin1Char('/') +
        (strName.isEmpty() && pObject != nullptr ? pObject->metaObject()->className() + (QLatin1Char('#') + pObject->objectName())
                                                 : strName);
    const bool bDrawn = pObject != nullptr && (pObject->inherits("CSOLAView") || pObject->inherits("COrmXYPlot"));
    if (s_setControls.contains(pInterface->role()) || bDrawn)
    {
        ++nControls;
        if (strName.trimmed().isEmpty())
            lstUnnamed.append(strHere);
    }
    // What stands in lists is as many as the data; their entries' names are their texts.
    if (pInterface->role() == QAccessible::List || pInterface->role() == QAccessible::Table || pInterface->role() == QAccessible::Tree)
        return;
    for (int n = 0; n < pInterface->childCount(); ++n)
        walk(pInterface->child(n), strHere, lstUnnamed, nControls);
}

void tst_accessibility::nothingInAnyWindowIsUnnamed_data()
{
    QTest::addColumn<bool>("study");
    QTest::newRow("empty") << false;
    QTest::newRow("with a study") << true;
}

void tst_accessibility::nothingInAnyWindowIsUnnamed()
{
    QFETCH(bool, study);
    COrmPreference::setStore(QString());
    CPluginFolder objPlugins;
    QFile objLibrary(QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so"));
    QVERIFY(objLibrary.open(QIODevice::ReadOnly));
    objPlugins.add(QStringLiteral("libormlongitudinalstudy.so"), objLibrary.readAll());
    COrmMainWindow objWindow;
    objWindow.loadTools(objPlugins.path());
    objWindow.show();
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("S1"));
    objStudy.addResult(QStringLiteral("S1"), QStringLiteral("one"), SResultDocument());
    if (study)
    {
        objWindow.openPaths({objStudy.folder()}, false);
        QTRY_COMPARE(objWindow.findChild<QAbstractItemView*>(QStringLiteral("sequenceList"))->model()->rowCount(), 1);
    }
    QVERIFY(objWindow.plugins()->tool(QStringLiteral("Longitudinal Study"))->use());

    // The tool's form says nothing of names; what stands there otherwise does.
    const QMap<QString, QString> mapNames = {
        {QStringLiteral("m_pThumWheel"), QStringLiteral("Angle Of View")},
        {QStringLiteral("m_pSequenceNameLW"), QStringLiteral("Select a Sequence")},
        {QStringLiteral("m_pResultWidget"), QStringLiteral("Select Analysis Result")},
        {QStringLiteral("m_pOpenButton"), QStringLiteral("open")},
        {QStringLiteral("m_pExportButton"), QStringLiteral("Export Graphics")},
        {QStringLiteral("m_pSelectVoxelButton"), QStringLiteral("Measure Source")},
        {QStringLiteral("m_pColorBarMinSpinbox"), QStringLiteral("Min")},
        {QStringLiteral("m_pColorBarMaxSpinbox"), QStringLiteral("Max")},
        {QStringLiteral("m_pOpacitySlider"), QStringLiteral("Opacity")},
        {QStringLiteral("m_pOpacitySpinBox"), QStringLiteral("Opacity")},
        {QStringLiteral("m_pWaveLengthCB"), QStringLiteral("Wavelength")},
        {QStringLiteral("m_pColorTableCB"), QStringLiteral("Color Table")},
        {QStringLiteral("m_pSourceColorTableSlider"), QStringLiteral("Voxels Color Sliders")},
    };

    QStringList lstUnnamed;
    int nControls = 0;
    int nWindows = 0;
    const QWidgetList lstWindows = QApplication::topLevelWidgets();
    for (QWidget* pWindow : lstWindows)
    {
        if (!pWindow->isVisible())
            continue;
        ++nWindows;
        walk(QAccessible::queryAccessibleInterface(pWindow), QString(), lstUnnamed, nControls);
    }
    QVERIFY(nWindows >= 2);
    for (auto it = mapNames.cbegin(); it != mapNames.cend(); ++it)
    {
        const auto fnNamed = [&](const QWidget* p) { return p->objectName() == it.key(); };
        const QWidgetList lstWidgets = QApplication::allWidgets();
        const auto itWidget = std::find_if(lstWidgets.cbegin(), lstWidgets.cend(), fnNamed);
        QVERIFY2(itWidget != lstWidgets.cend(), qPrintable(it.key()));
        QVERIFY2((*itWidget)->accessibleName() == it.value(), qPrintable(it.key() + QStringLiteral(": ") + (*itWidget)->accessibleName()));
    }
    QVERIFY2(nControls > 60, qPrintable(QString::number(nControls)));
    QVERIFY2(lstUnnamed.isEmpty(), qPrintable(lstUnnamed.join(QLatin1Char('\n'))));
}

ORM_TEST_MAIN(tst_accessibility)
#include "tst_accessibility.moc"
