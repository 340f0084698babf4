#include "ui_LongitudinalStudyBrowserDlg.h"

#include "OrmTestMain.h"
#include "TestWidgets.h"

#include <QFile>
#include <QRegularExpression>

namespace
{
/// All members of the form's class in the order of their declaration and creation; a spacer has no name.
QStringList memberNames()
{
    return QStringLiteral(
               "gridLayout_7 frame_2 horizontalLayout_3 m_pOpenButton spacer horizontalLayout_5 horizontalLayout_7 spacer label_4 "
               "m_pThumWheel spacer line5_2 m_pCopyToClipboardButton m_pExportButton frame verticalLayout_5 verticalLayout label "
               "m_pSequenceNameLW label_2 m_pResultWidget horizontalLayout_2 spacer m_pLoadButton verticalLayout_3 m_pSOLAGB gridLayout_3 "
               "m_pPhotonsPerSecRB m_pSOLACellsRB m_pNOVAGB gridLayout_2 m_pPmolMcmRB m_pPmolRB m_pNOVACellsRB m_pDisplayVoxelsGB "
               "gridLayout_8 groupBox_2 gridLayout verticalLayout_4 horizontalLayout_4 label_5 m_pColorBarMinSpinbox label_6 "
               "m_pColorBarMaxSpinbox m_pResetColorBarMaxMinButton m_pColorBarMinMaxSlider m_pColorTableCB verticalLayout_2 "
               "m_pGLPalettePixmapFrame m_pSourceColorTableSlider m_pReverseColorMapCheck m_pLogarithmicScaleCheck m_pMIPCheck "
               "m_pDisplaySurfaceGB gridLayout_9 horizontalLayout label_13 m_pOpacitySlider m_pOpacitySpinBox m_pDisplayPhotonDensityMap "
               "m_p3DBrowserTabWidget m_p3DViewTab gridLayout_10 widget gridLayout_4 m_pSelectVoxelButton line5_3 m_pWaveLengthCB label_3 "
               "m_pClear3DViewButton spacer m_pResultViewFrame m_p3DPlotTab gridLayout_6 widget_2 gridLayout_5 spacer line5_4 "
               "m_pPlotSelectionLabel m_pAnalysisSelectionLabel m_pPlotSelectCB m_pAnalysisSelectCB m_pPlotViewFrame")
        .split(QLatin1Char(' '));
}

QStringList objectNames()
{
    QStringList lstNames = memberNames();
    lstNames.removeAll(QStringLiteral("spacer"));
    return lstNames;
}

/// What the class that was made of the form names in lines of that pattern, spacers without their names.
QStringList namesInGeneratedClass(const QString& strPattern)
{
    QFile objFile(QStringLiteral(ORM_BINARY_DIR "/Source/Plug-ins/OrmLongitudinalStudyBrowser/ui_LongitudinalStudyBrowserDlg.h"));
    if (!objFile.open(QIODevice::ReadOnly))
    {
        TestWidgets::fail(QStringLiteral("Cannot read %1").arg(objFile.fileName()));
    }
    const QString strText = QString::fromUtf8(objFile.readAll());
    const QRegularExpression objPattern(strPattern, QRegularExpression::MultilineOption);
    QStringList lstNames;
    for (QRegularExpressionMatchIterator it = objPattern.globalMatch(strText); it.hasNext();)
    {
        const QString strName = it.next().captured(1);
        lstNames.append(strName.contains(QLatin1String("Spacer")) ? QStringLiteral("spacer") : strName);
    }
    return lstNames;
}

/// A widget with the form on it.
struct SForm
{
    SForm() { objForm.setupUi(&objWidget); }
    QObject* object(const QString& strName)
    {
        QObject* pObject = objWidget.objectName() == strName ? &objWidget : objWidget.findChild<QObject*>(strName);
        if (pObject == nullptr)
        {
            TestWidgets::fail(QStringLiteral("Nothing is named %1").arg(strName));
        }
        return pObject;
    }

    QWidget objWidget;
    Ui_LongitudinalStudyBrowserDlg objForm;
};

/// Finds the layout that holds the child, and the child's place in it.
QLayout* layoutOf(const QObject* pRoot, const QObject* pChild, int& nPlace)
{
    for (QLayout* pLayout : pRoot->findChildren<QLayout*>())
    {
        for (int i = 0; i < pLayout->count(); ++i)
        {
            QLayoutItem* pItem = pLayout->itemAt(i);
            if ((pItem->widget() != nullptr && pItem->widget() == pChild) || (pItem->layout() != nullptr && pItem->layout() == pChild))
            {
                nPlace = i;
                return pLayout;
            }
        }
    }
    return nullptr;
}

QString policyText(const QSizePolicy& objPolicy)
{
    const QMetaEnum objEnum = QMetaEnum::fromType<QSizePolicy::Policy>();
    return QStringLiteral("%1/%2 %3/%4")
        .arg(QLatin1String(objEnum.valueToKey(objPolicy.horizontalPolicy())), QLatin1String(objEnum.valueToKey(objPolicy.verticalPolicy())))
        .arg(objPolicy.horizontalStretch())
        .arg(objPolicy.verticalStretch());
}

const QString s_strUntouched = QStringLiteral("(untouched)");
} // namespace

/// The static widget tree of the tool's window.
class tst_form : public QObject
{
    Q_OBJECT

private slots:
    void membersAreDeclaredInTheirOrder();
    void membersAreCreatedInTheirOrder();
    void namedObjectsAreFoundByName();
    void spacersBearNoName();
    void nameOfAFormIsKept();
    void formWithoutNameIsNamed();
    void formHasItsSize();
    void texts_data();
    void texts();
    void textsStandInOneContextWithTheirComments();
    void untouchedTextsAreEmpty();
    void tabsHaveTheirTitles();
    void layouts_data();
    void layouts();
    void places_data();
    void places();
    void spacers_data();
    void spacers();
    void properties_data();
    void properties();
    void iconsAreThere_data();
    void iconsAreThere();
    void policies_data();
    void policies();
    void heightForWidthIsLeftToTheWidget();
    void slidersSpanTheirWholeRange();
    void firstTabIsShown();
    void radioButtonsChooseWithinTheirBox();
    void nothingElseIsSet();
};

void tst_form::membersAreDeclaredInTheirOrder()
{
    const QStringList lstMembers = namesInGeneratedClass(QStringLiteral("^    \\w+ \\*(\\w+);$"));
    QCOMPARE(memberNames().size(), 83);
    QCOMPARE(lstMembers, memberNames());
}

void tst_form::membersAreCreatedInTheirOrder()
{
    QCOMPARE(namesInGeneratedClass(QStringLiteral("^        (\\w+) = new ")), memberNames());
}

void tst_form::namedObjectsAreFoundByName()
{
    SForm objForm;
    const QStringList lstExpected = objectNames();
    QCOMPARE(lstExpected.size(), 77);
    for (const QString& strName : lstExpected)
    {
        QCOMPARE(objForm.objWidget.findChildren<QObject*>(strName).size(), 1);
    }
    // Nothing else is named but what widgets name inside themselves.
    QStringList lstFound;
    for (const QObject* pObject : objForm.objWidget.findChildren<QObject*>())
    {
        const bool bOfTabBar = qobject_cast<const QTabBar*>(pObject->parent()) != nullptr;
        if (!bOfTabBar && !pObject->objectName().isEmpty() && !pObject->objectName().startsWith(QLatin1String("qt_")))
        {
            lstFound.append(pObject->objectName());
        }
    }
    QStringList lstSorted = lstExpected;
    lstSorted.sort();
    lstFound.sort();
    QCOMPARE(lstFound.join(QLatin1Char(' ')), lstSorted.join(QLatin1Char(' ')));
}

void tst_form::spacersBearNoName()
{
    SForm objForm;
    int nSpacers = 0;
    for (QLayout* pLayout : objForm.objWidget.findChildren<QLayout*>())
    {
        for (int i = 0; objectNames().contains(pLayout->objectName()) && i < pLayout->count(); ++i)
        {
            nSpacers += pLayout->itemAt(i)->spacerItem() != nullptr ? 1 : 0;
        }
    }
    QCOMPARE(nSpacers, 6);
    QCOMPARE(objForm.objWidget.findChildren<QObject*>(QRegularExpression(QStringLiteral("[sS]pacer"))).size(), 0);
}

void tst_form::nameOfAFormIsKept()
{
    QWidget objWidget;
    objWidget.setObjectName(QStringLiteral("Mine"));
    Ui_LongitudinalStudyBrowserDlg objForm;
    objForm.setupUi(&objWidget);
    QCOMPARE(objWidget.objectName(), QStringLiteral("Mine"));
    for (const QString& strName : objectNames())
    {
        QVERIFY2(objWidget.findChild<QObject*>(strName) != nullptr, qPrintable(strName));
    }
}

void tst_form::formWithoutNameIsNamed()
{
    SForm objForm;
    QCOMPARE(objForm.objWidget.objectName(), QStringLiteral("LongitudinalStudyBrowserDlg"));
}

void tst_form::formHasItsSize()
{
    SForm objForm;
    QCOMPARE(objForm.objWidget.size(), QSize(1011, 719));
}

void tst_form::texts_data()
{
    QTest::addColumn<QString>("strProperty");
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QString>("strToolTip");
    QTest::addColumn<QString>("strWhatsThis");
    const auto row =
        [](const char* pName, const char* pProperty, const QString& strText, const QString& strToolTip, const QString& strWhatsThis)
    { QTest::newRow(pName) << QString::fromLatin1(pProperty) << strText << strToolTip << strWhatsThis; };
    const QString strNone = s_strUntouched;
    const QString strAngle =
        QStringLiteral("<b>Angel of view:</b><br> Allows to change the angle of view of the 3d surface rendering.</br>");
    const QString strTable = QStringLiteral("<b>Color Table : </b>\nLists different kinds of color palettes. Sets the color map of source "
                                            "volume to the selected color palette.");
    const QString strMIP = QStringLiteral("<b>Maximum Intensity Projection :</b> Turns on the maximum intensity projection.");
    const QString strOpacity = QStringLiteral("<b>Opacity :</b> <br>Adjusts the opacity of the highlighted image in the list.</br>");
    row("LongitudinalStudyBrowserDlg", "windowTitle", QStringLiteral("Longitudinal Study Window"), strNone, strNone);
    row("m_pOpenButton", "", strNone, QStringLiteral("open"), QStringLiteral("Click this button to open SOLA/NOVA sequence."));
    row("label_4", "text", QStringLiteral("Angle Of View:"), strNone, strAngle);
    row("m_pThumWheel", "", strNone, strNone, strAngle);
    row("m_pCopyToClipboardButton", "text", QString(), QStringLiteral("Copy to clipboard (Ctrl+C)"),
        QStringLiteral("<b>Copy To Clipboard :</b> Copies the current view as an image."));
    row("m_pExportButton", "text", QString(), QStringLiteral("Export"),
        QStringLiteral("<b>Export Graphics :</b> Click this button to export the contents of the dataset window as an image."));
    row("label", "text", QStringLiteral("Select a Sequence:"), strNone, strNone);
    row("label_2", "text", QStringLiteral("Select Analysis Result:"), strNone, strNone);
    row("m_pLoadButton", "text", QStringLiteral("Load"), strNone,
        QStringLiteral("<b>Load:</b><br>Load the selected analysis result.</br>"));
    row("m_pSOLAGB", "title", QStringLiteral("Unit [SOLA]"), strNone, strNone);
    row("m_pPhotonsPerSecRB", "text", QStringLiteral("photons/sec"), strNone, strNone);
    row("m_pSOLACellsRB", "text", QStringLiteral("cells"), strNone, strNone);
    row("m_pNOVAGB", "title", QStringLiteral("Unit [NOVA]"), strNone, strNone);
    row("m_pPmolMcmRB", "text", QString::fromUtf8("pmol M-\xC2\xB9 cm-\xC2\xB9"), strNone, strNone);
    row("m_pPmolRB", "text", QStringLiteral("pmol"), strNone, strNone);
    row("m_pNOVACellsRB", "text", QStringLiteral("cells"), strNone, strNone);
    row("m_pDisplayVoxelsGB", "title", QStringLiteral("Display Voxels"), strNone,
        QStringLiteral("<b>Display voxels:</b><br>Show/Hide voxel rendering in the 3D view.</br>"));
    row("groupBox_2", "title", QStringLiteral("Color Scale"), strNone, strNone);
    row("label_5", "text", QStringLiteral("Min:"), strNone, strNone);
    row("m_pColorBarMinSpinbox", "", strNone, strNone,
        QStringLiteral("<b>Min Color Scale :</b> Sets the minimum value for the Source Intensity color bar."));
    row("label_6", "text", QStringLiteral("Max:"), strNone, strNone);
    row("m_pColorBarMaxSpinbox", "", strNone, strNone,
        QStringLiteral("<b>Max Color Scale :</b> Sets the maximum value for the Source Intensity color bar."));
    row("m_pResetColorBarMaxMinButton", "", strNone, strNone,
        QStringLiteral("<b>Reset:</b><br>Resets the min and max value to the default value.</br>"));
    row("m_pColorTableCB", "", strNone, strNone, strTable);
    row("m_pGLPalettePixmapFrame", "", strNone, strNone, strTable);
    row("m_pSourceColorTableSlider", "", strNone, strNone,
        QStringLiteral("<b>Voxels Color Sliders:</b><br>Move the sliders to adjust the color scale\nminimum and maximum values.</br>"));
    row("m_pReverseColorMapCheck", "text", QStringLiteral("Reverse"), strNone,
        QStringLiteral("<b>Reverse :</b> Reverses the color map of the source volume."));
    row("m_pLogarithmicScaleCheck", "text", QStringLiteral("Log Scale"), strNone,
        QStringLiteral("<b>Loagarithmic Scale :</b> Sets the color map of the source volume to logarithmic scale ."));
    row("m_pMIPCheck", "text", QStringLiteral("MIP"), strMIP, strMIP);
    row("m_pDisplaySurfaceGB", "title", QStringLiteral("Display Surface"), strNone,
        QStringLiteral("<b>Display Surface:</b><br>Show/Hide 3D surface rendering in the 3D view.</br>"));
    row("label_13", "text", QStringLiteral("Opacity:"), strNone,
        QStringLiteral("<b>Opacity :</b><br> Adjusts the opacity of the highlighted image in the list.</br>"));
    row("m_pOpacitySlider", "", strNone, strNone, strOpacity);
    row("m_pOpacitySpinBox", "", strNone, strNone, strOpacity);
    row("m_pDisplayPhotonDensityMap", "text", QStringLiteral("Display Photon Density Map"), strNone,
        QStringLiteral("<b>Display Photon Density Map:</b><br>Show/Hide Photon Density Map on the 3D Surface.</br>"));
    row("m_p3DBrowserTabWidget", "", strNone, strNone, QString());
    row("m_pSelectVoxelButton", "text", QString(), QStringLiteral("Measure Voxels"),
        QStringLiteral("<b>Measure Source: </b><br>Enables/Disables source measurement tool. The measured values are displayed in the "
                       "<b>Plots tab</b>.</br>"));
    row("m_pWaveLengthCB", "", strNone, strNone,
        QStringLiteral("<b>Wave Length:</b><br>Lists the wavelengths available for the selected analysis result.</br>"));
    row("label_3", "text", QStringLiteral("Wavelength:"), strNone, QString());
    row("m_pClear3DViewButton", "text", QStringLiteral("Remove"), strNone,
        QStringLiteral("<b>Remove: </b>\n<br>Remove Selected - Removes selected analysis result from the Longitudinal Study "
                       "window.</br>\n<br>Remove All - Removes all results from the Longitudinal Study window.</br>\n"));
    row("m_pPlotSelectionLabel", "text", QStringLiteral("Plot:"), strNone, QString());
    row("m_pAnalysisSelectionLabel", "text", QStringLiteral("Analysis Type:"), strNone, QString());
    row("m_pPlotSelectCB", "", strNone, strNone,
        QStringLiteral("<b>Plot:</b><br>Lists supported plots for loaded analysis results (Quantification Profile, Reduced Chi-Squared "
                       "Profile, Voxel Size).</br>"));
    row("m_pAnalysisSelectCB", "", strNone, strNone,
        QStringLiteral("<b>Analysis Type:</b><br>Lists supported analysis types (SOLA and NOVA).</br>"));
}

void tst_form::texts()
{
    QFETCH(QString, strProperty);
    QFETCH(QString, strText);
    QFETCH(QString, strToolTip);
    QFETCH(QString, strWhatsThis);
    SForm objForm;
    auto* pWidget = qobject_cast<QWidget*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pWidget != nullptr);
    if (!strProperty.isEmpty())
    {
        QCOMPARE(pWidget->property(strProperty.toLatin1().constData()).toString(), strText);
    }
    QCOMPARE(pWidget->toolTip(), strToolTip == s_strUntouched ? QString() : strToolTip);
    QCOMPARE(pWidget->whatsThis(), strWhatsThis == s_strUntouched ? QString() : strWhatsThis);
}

void tst_form::textsStandInOneContextWithTheirComments()
{
    // A translator sees every text in the context of the form, two of them with a comment.
    struct STranslator : public QTranslator
    {
        QString translate(const char* pContext, const char* pText, const char* pComment, int nCount) const override
        {
            if (qstrcmp(pContext, "LongitudinalStudyBrowserDlg") != 0)
            {
                return QString();
            }
            ++nTexts;
            bCounted = bCounted || nCount != -1;
            if (pComment != nullptr)
            {
                lstComments.append(QString::fromUtf8(pText) + QLatin1Char('|') + QString::fromUtf8(pComment));
            }
            return QStringLiteral("~") + QString::fromUtf8(pText);
        }
        bool isEmpty() const override { return false; }

        mutable int nTexts = 0;
        mutable bool bCounted = false;
        mutable QStringList lstComments;
    };
    STranslator objTranslator;
    QCoreApplication::installTranslator(&objTranslator);
    {
        SForm objForm;
        QCOMPARE(objForm.objForm.m_pLoadButton->text(), QStringLiteral("~Load"));
        QCOMPARE(objForm.objForm.m_p3DBrowserTabWidget->tabText(1), QStringLiteral("~Plots"));
    }
    QCoreApplication::removeTranslator(&objTranslator);
    QVERIFY(!objTranslator.bCounted);
    // 26 texts and titles, 5 tool tips, 26 what's-this, 2 tabs; empty texts ask for no translation.
    QCOMPARE(objTranslator.nTexts, 26 + 5 + 26 + 2);
    const QString strComment = QStringLiteral("|User can adjust the threshold here to filter the voxels to be displayed in the 3D view");
    const QStringList lstExpected = {
        QStringLiteral("<b>Min Color Scale :</b> Sets the minimum value for the Source Intensity color bar.") + strComment,
        QStringLiteral("<b>Max Color Scale :</b> Sets the maximum value for the Source Intensity color bar.") + strComment};
    QCOMPARE(objTranslator.lstComments, lstExpected);
}

void tst_form::untouchedTextsAreEmpty()
{
    SForm objForm;
    for (const QWidget* pWidget : objForm.objWidget.findChildren<QWidget*>())
    {
        if (objectNames().contains(pWidget->objectName()) && pWidget->objectName() != QLatin1String("m_pMIPCheck"))
        {
            QVERIFY2(!pWidget->toolTip().contains(QLatin1Char('<')), qPrintable(pWidget->objectName()));
        }
    }
    for (const char* pName : {"m_pResultWidget", "m_pSequenceNameLW", "m_pPhotonsPerSecRB", "m_pSOLACellsRB", "m_pPmolMcmRB", "m_pPmolRB",
                              "m_pNOVACellsRB", "frame", "frame_2", "line5_2", "line5_3", "line5_4", "widget", "widget_2",
                              "m_pResultViewFrame", "m_pPlotViewFrame", "m_p3DViewTab", "m_p3DPlotTab"})
    {
        const auto* pWidget = TestWidgets::get<QWidget>(&objForm.objWidget, pName);
        QCOMPARE(pWidget->toolTip(), QString());
        QCOMPARE(pWidget->whatsThis(), QString());
    }
}

void tst_form::tabsHaveTheirTitles()
{
    SForm objForm;
    const QTabWidget* pTabs = objForm.objForm.m_p3DBrowserTabWidget;
    QCOMPARE(pTabs->count(), 2);
    QCOMPARE(pTabs->widget(0), objForm.objForm.m_p3DViewTab);
    QCOMPARE(pTabs->widget(1), objForm.objForm.m_p3DPlotTab);
    QCOMPARE(pTabs->tabText(0), QStringLiteral("3D View"));
    QCOMPARE(pTabs->tabText(1), QStringLiteral("Plots"));
}

void tst_form::layouts_data()
{
    // -1: as the style, or the layout around it, has it.
    QTest::addColumn<QByteArray>("byClass");
    QTest::addColumn<QString>("strParent");
    QTest::addColumn<int>("nSpacing");
    QTest::addColumn<int>("nMargin");
    const auto row = [](const char* pName, const char* pClass, const char* pParent, int nSpacing, int nMargin)
    { QTest::newRow(pName) << QByteArray(pClass) << QString::fromLatin1(pParent) << nSpacing << nMargin; };
    row("gridLayout_7", "QGridLayout", "LongitudinalStudyBrowserDlg", 2, 2);
    row("horizontalLayout_3", "QHBoxLayout", "gridLayout_7", 2, 0);
    row("horizontalLayout_5", "QHBoxLayout", "horizontalLayout_3", -1, 0);
    row("horizontalLayout_7", "QHBoxLayout", "horizontalLayout_5", -1, 0);
    row("verticalLayout_5", "QVBoxLayout", "gridLayout_7", 9, 0);
    row("verticalLayout", "QVBoxLayout", "verticalLayout_5", 2, 0);
    row("horizontalLayout_2", "QHBoxLayout", "verticalLayout", 0, 0);
    row("verticalLayout_3", "QVBoxLayout", "verticalLayout_5", -1, 0);
    row("gridLayout_3", "QGridLayout", "m_pSOLAGB", 1, 1);
    row("gridLayout_2", "QGridLayout", "m_pNOVAGB", 1, 1);
    row("gridLayout_8", "QGridLayout", "m_pDisplayVoxelsGB", 2, 2);
    row("gridLayout", "QGridLayout", "groupBox_2", 2, 2);
    row("verticalLayout_4", "QVBoxLayout", "gridLayout", 2, 0);
    row("horizontalLayout_4", "QHBoxLayout", "verticalLayout_4", 2, 0);
    row("verticalLayout_2", "QVBoxLayout", "gridLayout", -1, 0);
    row("gridLayout_9", "QGridLayout", "m_pDisplaySurfaceGB", 1, 1);
    row("horizontalLayout", "QHBoxLayout", "gridLayout_9", -1, 0);
    row("gridLayout_10", "QGridLayout", "m_p3DViewTab", 1, 1);
    row("gridLayout_4", "QGridLayout", "widget", 3, 3);
    row("gridLayout_6", "QGridLayout", "m_p3DPlotTab", -1, -1);
    row("gridLayout_5", "QGridLayout", "widget_2", 3, 3);
}

void tst_form::layouts()
{
    QFETCH(QByteArray, byClass);
    QFETCH(QString, strParent);
    QFETCH(int, nSpacing);
    QFETCH(int, nMargin);
    SForm objForm;
    auto* pLayout = qobject_cast<QLayout*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pLayout != nullptr);
    QCOMPARE(QByteArray(pLayout->metaObject()->className()), byClass);
    QCOMPARE(pLayout->parent()->objectName(), strParent);

    // A layout of the same class and kind that nobody touched shows what the style has.
    QWidget objWindow;
    QWidget objReference(&objWindow);
    const auto* pReference = new QGridLayout(&objReference);
    if (byClass == "QGridLayout")
    {
        auto* pGrid = static_cast<QGridLayout*>(pLayout);
        const int nExpected = nSpacing < 0 ? pReference->horizontalSpacing() : nSpacing;
        QCOMPARE(pGrid->horizontalSpacing(), nExpected);
        QCOMPARE(pGrid->verticalSpacing(), nSpacing < 0 ? pReference->verticalSpacing() : nSpacing);
    }
    else
    {
        QCOMPARE(pLayout->spacing(), nSpacing < 0 ? qobject_cast<QLayout*>(pLayout->parent())->spacing() : nSpacing);
    }
    const QMargins objMargins = nMargin < 0 ? pReference->contentsMargins() : QMargins(nMargin, nMargin, nMargin, nMargin);
    QCOMPARE(pLayout->contentsMargins(), objMargins);
}

void tst_form::places_data()
{
    QTest::addColumn<QString>("strLayout");
    QTest::addColumn<QVector<int>>("vecPlace");
    const auto row = [](const char* pName, const char* pLayout, const QVector<int>& vecPlace)
    { QTest::newRow(pName) << QString::fromLatin1(pLayout) << vecPlace; };
    // Grids: row, column, row span, column span. Boxes: number from 0, spacers counted.
    row("frame_2", "gridLayout_7", {0, 0, 1, 2});
    row("horizontalLayout_3", "gridLayout_7", {1, 0, 1, 2});
    row("m_pOpenButton", "horizontalLayout_3", {0});
    row("horizontalLayout_5", "horizontalLayout_3", {2});
    row("horizontalLayout_7", "horizontalLayout_5", {0});
    row("label_4", "horizontalLayout_5", {2});
    row("m_pThumWheel", "horizontalLayout_5", {3});
    row("line5_2", "horizontalLayout_5", {5});
    row("m_pCopyToClipboardButton", "horizontalLayout_5", {6});
    row("m_pExportButton", "horizontalLayout_5", {7});
    row("frame", "gridLayout_7", {2, 0, 1, 2});
    row("verticalLayout_5", "gridLayout_7", {3, 0, 1, 1});
    row("verticalLayout", "verticalLayout_5", {0});
    row("label", "verticalLayout", {0});
    row("m_pSequenceNameLW", "verticalLayout", {1});
    row("label_2", "verticalLayout", {2});
    row("m_pResultWidget", "verticalLayout", {3});
    row("horizontalLayout_2", "verticalLayout", {4});
    row("m_pLoadButton", "horizontalLayout_2", {1});
    row("verticalLayout_3", "verticalLayout_5", {1});
    row("m_pSOLAGB", "verticalLayout_3", {0});
    row("m_pPhotonsPerSecRB", "gridLayout_3", {0, 0, 1, 1});
    row("m_pSOLACellsRB", "gridLayout_3", {1, 0, 1, 1});
    row("m_pNOVAGB", "verticalLayout_3", {1});
    row("m_pPmolMcmRB", "gridLayout_2", {0, 0, 1, 1});
    row("m_pPmolRB", "gridLayout_2", {1, 0, 1, 1});
    row("m_pNOVACellsRB", "gridLayout_2", {2, 0, 1, 1});
    row("m_pDisplayVoxelsGB", "verticalLayout_5", {2});
    row("groupBox_2", "gridLayout_8", {0, 0, 1, 1});
    row("verticalLayout_4", "gridLayout", {0, 0, 1, 2});
    row("horizontalLayout_4", "verticalLayout_4", {0});
    row("label_5", "horizontalLayout_4", {0});
    row("m_pColorBarMinSpinbox", "horizontalLayout_4", {1});
    row("label_6", "horizontalLayout_4", {2});
    row("m_pColorBarMaxSpinbox", "horizontalLayout_4", {3});
    row("m_pResetColorBarMaxMinButton", "horizontalLayout_4", {4});
    row("m_pColorBarMinMaxSlider", "verticalLayout_4", {1});
    row("m_pColorTableCB", "gridLayout", {1, 0, 1, 1});
    row("verticalLayout_2", "gridLayout", {1, 1, 2, 1});
    row("m_pGLPalettePixmapFrame", "verticalLayout_2", {0});
    row("m_pSourceColorTableSlider", "verticalLayout_2", {1});
    row("m_pReverseColorMapCheck", "gridLayout", {2, 0, 1, 1});
    row("m_pLogarithmicScaleCheck", "gridLayout", {3, 0, 1, 1});
    row("m_pMIPCheck", "gridLayout", {3, 1, 1, 1});
    row("m_pDisplaySurfaceGB", "verticalLayout_5", {3});
    row("horizontalLayout", "gridLayout_9", {0, 0, 1, 1});
    row("label_13", "horizontalLayout", {0});
    row("m_pOpacitySlider", "horizontalLayout", {1});
    row("m_pOpacitySpinBox", "horizontalLayout", {2});
    row("m_pDisplayPhotonDensityMap", "gridLayout_9", {1, 0, 1, 1});
    row("m_p3DBrowserTabWidget", "gridLayout_7", {3, 1, 1, 1});
    row("widget", "gridLayout_10", {0, 0, 1, 1});
    row("label_3", "gridLayout_4", {0, 0, 1, 1});
    row("m_pWaveLengthCB", "gridLayout_4", {0, 1, 1, 1});
    row("line5_3", "gridLayout_4", {0, 3, 1, 1});
    row("m_pClear3DViewButton", "gridLayout_4", {0, 4, 1, 1});
    row("m_pSelectVoxelButton", "gridLayout_4", {0, 5, 1, 1});
    row("m_pResultViewFrame", "gridLayout_10", {1, 0, 1, 1});
    row("widget_2", "gridLayout_6", {0, 0, 1, 1});
    row("m_pAnalysisSelectionLabel", "gridLayout_5", {0, 1, 1, 1});
    row("m_pAnalysisSelectCB", "gridLayout_5", {0, 2, 1, 1});
    row("line5_4", "gridLayout_5", {0, 3, 1, 1});
    row("m_pPlotSelectionLabel", "gridLayout_5", {0, 5, 1, 1});
    row("m_pPlotSelectCB", "gridLayout_5", {0, 6, 1, 1});
    row("m_pPlotViewFrame", "gridLayout_6", {1, 0, 1, 1});
}

void tst_form::places()
{
    QFETCH(QString, strLayout);
    QFETCH(QVector<int>, vecPlace);
    SForm objForm;
    QObject* pChild = objForm.object(QString::fromLatin1(QTest::currentDataTag()));
    int nPlace = -1;
    QLayout* pLayout = layoutOf(&objForm.objWidget, pChild, nPlace);
    QVERIFY(pLayout != nullptr);
    QCOMPARE(pLayout->objectName(), strLayout);
    QCOMPARE(pLayout->itemAt(nPlace)->alignment(), Qt::Alignment());
    if (auto* pGrid = qobject_cast<QGridLayout*>(pLayout))
    {
        QVector<int> vecSeen(4);
        pGrid->getItemPosition(nPlace, &vecSeen[0], &vecSeen[1], &vecSeen[2], &vecSeen[3]);
        QCOMPARE(vecSeen, vecPlace);
    }
    else
    {
        QCOMPARE(QVector<int>{nPlace}, vecPlace);
        QCOMPARE(static_cast<QBoxLayout*>(pLayout)->stretch(nPlace), 0);
    }
    // A widget's parent is the nearest widget that encloses it.
    if (pChild->isWidgetType())
    {
        QCOMPARE(pChild->parent(), static_cast<QObject*>(pLayout->parentWidget()));
    }
}

void tst_form::spacers_data()
{
    QTest::addColumn<QString>("strLayout");
    QTest::addColumn<int>("nPlace");
    QTest::addColumn<QSize>("objHint");
    QTest::addColumn<QString>("strPolicy");
    const auto row = [](const char* pLayout, int nPlace, int nWidth, int nHeight, const char* pPolicy)
    {
        QTest::addRow("%s %d", pLayout, nPlace)
            << QString::fromLatin1(pLayout) << nPlace << QSize(nWidth, nHeight) << QString::fromLatin1(pPolicy);
    };
    row("horizontalLayout_3", 1, 72, 20, "Expanding/Minimum 0/0");
    row("horizontalLayout_5", 1, 0, 0, "Preferred/Minimum 0/0");
    row("horizontalLayout_5", 4, 100, 20, "Expanding/Minimum 0/0");
    row("horizontalLayout_2", 0, 0, 0, "Preferred/Minimum 0/0");
    row("gridLayout_4", -1, 520, 21, "Expanding/Minimum 0/0");
    row("gridLayout_5", -1, 520, 21, "Expanding/Minimum 0/0");
}

void tst_form::spacers()
{
    QFETCH(QString, strLayout);
    QFETCH(int, nPlace);
    QFETCH(QSize, objHint);
    QFETCH(QString, strPolicy);
    SForm objForm;
    auto* pLayout = qobject_cast<QLayout*>(objForm.object(strLayout));
    QVERIFY(pLayout != nullptr);
    QLayoutItem* pItem = nullptr;
    if (auto* pGrid = qobject_cast<QGridLayout*>(pLayout))
    {
        pItem = pGrid->itemAtPosition(0, strLayout == QLatin1String("gridLayout_4") ? 2 : 0);
    }
    else
    {
        pItem = pLayout->itemAt(nPlace);
    }
    QVERIFY(pItem != nullptr);
    QVERIFY(pItem->spacerItem() != nullptr);
    QCOMPARE(pItem->sizeHint(), objHint);
    QCOMPARE(policyText(pItem->spacerItem()->sizePolicy()), strPolicy);
}

void tst_form::properties_data()
{
    QTest::addColumn<QByteArray>("byProperty");
    QTest::addColumn<QVariant>("varValue");
    const auto row = [](const char* pName, const char* pProperty, const QVariant& varValue)
    { QTest::addRow("%s %s", pName, pProperty) << QByteArray(pProperty) << varValue; };
    const int nNoLimit = 16777215;
    for (const char* pName : {"frame_2", "frame"})
    {
        row(pName, "maximumSize", QSize(nNoLimit, 1));
        row(pName, "frameShape", static_cast<int>(QFrame::HLine));
        row(pName, "frameShadow", static_cast<int>(QFrame::Sunken));
        row(pName, "lineWidth", 1);
        row(pName, "midLineWidth", 0);
    }
    for (const char* pName : {"line5_2", "line5_3", "line5_4"})
    {
        row(pName, "frameShape", static_cast<int>(QFrame::VLine));
        row(pName, "frameShadow", static_cast<int>(QFrame::Sunken));
    }
    row("m_pOpenButton", "iconSize", QSize(20, 20));
    row("m_pOpenButton", "autoRaise", true);
    row("m_pThumWheel", "minimumSize", QSize(319, 26));
    for (const char* pName : {"m_pCopyToClipboardButton", "m_pExportButton", "m_pSelectVoxelButton"})
    {
        const bool bCopy = qstrcmp(pName, "m_pCopyToClipboardButton") == 0;
        row(pName, "minimumSize", QSize(0, 0));
        row(pName, "maximumSize", qstrcmp(pName, "m_pSelectVoxelButton") == 0 ? QSize(29, 30) : QSize(30, 30));
        row(pName, "focusPolicy", static_cast<int>(Qt::TabFocus));
        row(pName, "iconSize", bCopy ? QSize(20, 20) : QSize(19, 19));
        row(pName, "autoRaise", true);
    }
    row("m_pSequenceNameLW", "selectionMode", static_cast<int>(QAbstractItemView::SingleSelection));
    row("m_pResultWidget", "selectionMode", static_cast<int>(QAbstractItemView::ExtendedSelection));
    row("m_pPhotonsPerSecRB", "checked", true);
    row("m_pSOLACellsRB", "checked", false);
    row("m_pPmolMcmRB", "checked", true);
    row("m_pPmolRB", "checked", false);
    row("m_pNOVACellsRB", "checked", false);
    row("m_pDisplayVoxelsGB", "checkable", true);
    row("m_pDisplayVoxelsGB", "checked", true);
    for (const char* pName : {"m_pColorBarMinSpinbox", "m_pColorBarMaxSpinbox"})
    {
        row(pName, "minimumSize", QSize(60, 0));
        row(pName, "maximumSize", QSize(nNoLimit, nNoLimit));
    }
    row("m_pColorBarMinMaxSlider", "minimumSize", QSize(200, 0));
    row("m_pColorTableCB", "focusPolicy", static_cast<int>(Qt::TabFocus));
    row("m_pGLPalettePixmapFrame", "minimumSize", QSize(0, 20));
    row("m_pGLPalettePixmapFrame", "frameShape", static_cast<int>(QFrame::NoFrame));
    row("m_pGLPalettePixmapFrame", "frameShadow", static_cast<int>(QFrame::Plain));
    for (const char* pName : {"m_pColorBarMinMaxSlider", "m_pSourceColorTableSlider"})
    {
        row(pName, "minimum", 0);
        row(pName, "maximum", 100);
        row(pName, "orientation", static_cast<int>(Qt::Horizontal));
    }
    row("m_pReverseColorMapCheck", "maximumSize", QSize(100, nNoLimit));
    row("m_pReverseColorMapCheck", "checked", false);
    row("m_pLogarithmicScaleCheck", "checked", false);
    row("m_pMIPCheck", "checked", false);
    row("m_pDisplaySurfaceGB", "checkable", true);
    row("m_pDisplaySurfaceGB", "checked", true);
    row("m_pOpacitySlider", "minimumSize", QSize(135, 0));
    row("m_pOpacitySlider", "orientation", static_cast<int>(Qt::Horizontal));
    row("m_pDisplayPhotonDensityMap", "checked", true);
    row("widget", "minimumSize", QSize(0, 30));
    row("widget", "maximumSize", QSize(nNoLimit, 30));
    row("m_pClear3DViewButton", "minimumSize", QSize(0, 24));
    row("m_pClear3DViewButton", "maximumSize", QSize(110, nNoLimit));
    row("m_pClear3DViewButton", "iconSize", QSize(17, 17));
    row("m_pClear3DViewButton", "popupMode", static_cast<int>(QToolButton::InstantPopup));
    row("m_pClear3DViewButton", "toolButtonStyle", static_cast<int>(Qt::ToolButtonTextBesideIcon));
    row("m_pResultViewFrame", "frameShape", static_cast<int>(QFrame::StyledPanel));
    row("m_pResultViewFrame", "frameShadow", static_cast<int>(QFrame::Raised));
    row("widget_2", "minimumSize", QSize(565, 30));
    row("widget_2", "maximumSize", QSize(nNoLimit, 30));
    for (const char* pName : {"m_pPlotSelectCB", "m_pAnalysisSelectCB"})
    {
        row(pName, "minimumSize", QSize(100, 0));
        row(pName, "maximumSize", QSize(125, 30));
        row(pName, "count", 0);
    }
    row("m_pPlotViewFrame", "minimumSize", QSize(565, 440));
    row("m_pPlotViewFrame", "frameShape", static_cast<int>(QFrame::StyledPanel));
    row("m_pPlotViewFrame", "frameShadow", static_cast<int>(QFrame::Raised));
}

void tst_form::properties()
{
    QFETCH(QByteArray, byProperty);
    QFETCH(QVariant, varValue);
    SForm objForm;
    const QString strName = QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(' '), 0, 0);
    QVariant varSeen = objForm.object(strName)->property(byProperty.constData());
    QVERIFY(varSeen.isValid());
    if (varValue.type() == QVariant::Int)
    {
        QCOMPARE(varSeen.toInt(), varValue.toInt());
    }
    else
    {
        QCOMPARE(varSeen, varValue);
    }
}

void tst_form::iconsAreThere_data()
{
    QTest::addColumn<QString>("strPicture");
    QTest::newRow("m_pOpenButton") << QStringLiteral(":/Resource/fileopen_enabled.xpm");
    QTest::newRow("m_pCopyToClipboardButton") << QStringLiteral(":/Resource/filecopy_enabled.xpm");
    QTest::newRow("m_pExportButton") << QStringLiteral(":/Resource/export_graphics.xpm");
    QTest::newRow("m_pResetColorBarMaxMinButton") << QStringLiteral(":/resource/undoArrow.xpm");
    QTest::newRow("m_pClear3DViewButton") << QStringLiteral(":/Resource/tbRoiDelete.xpm");
    QTest::newRow("m_pSelectVoxelButton") << QStringLiteral(":/Resource/VoxelMeasurement.xpm");
}

void tst_form::iconsAreThere()
{
    QFETCH(QString, strPicture);
    SForm objForm;
    auto* pButton = qobject_cast<QToolButton*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pButton != nullptr);
    const QPixmap objPicture(strPicture);
    QVERIFY(!objPicture.isNull());
    const QImage imgSeen = pButton->icon().pixmap(objPicture.size()).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(imgSeen, objPicture.toImage().convertToFormat(QImage::Format_ARGB32));
    if (pButton->objectName() == QLatin1String("m_pResetColorBarMaxMinButton"))
    {
        QCOMPARE(pButton->iconSize(), QToolButton().iconSize());
    }
}

void tst_form::policies_data()
{
    QTest::addColumn<QString>("strPolicy");
    const auto row = [](const char* pName, const char* pPolicy) { QTest::newRow(pName) << QString::fromLatin1(pPolicy); };
    row("m_pThumWheel", "Expanding/Fixed 0/0");
    row("m_pCopyToClipboardButton", "Fixed/Fixed 0/0");
    row("m_pExportButton", "Fixed/Fixed 0/0");
    row("m_pSequenceNameLW", "Preferred/Expanding 0/0");
    row("m_pResultWidget", "Preferred/Expanding 0/0");
    row("m_pLoadButton", "Fixed/Fixed 0/0");
    row("m_pColorBarMinSpinbox", "Fixed/Fixed 1/0");
    row("m_pColorBarMaxSpinbox", "Fixed/Fixed 1/0");
    row("m_pColorBarMinMaxSlider", "Preferred/Preferred 200/0");
    row("m_pColorTableCB", "Minimum/Fixed 0/0");
    row("m_pGLPalettePixmapFrame", "Preferred/Fixed 0/0");
    row("m_pSourceColorTableSlider", "Preferred/Fixed 0/0");
    row("label_13", "Fixed/Maximum 0/0");
    row("m_pOpacitySlider", "Maximum/Fixed 0/0");
    row("m_pOpacitySpinBox", "Fixed/Fixed 0/0");
    row("m_pSelectVoxelButton", "Fixed/Fixed 0/0");
}

void tst_form::policies()
{
    QFETCH(QString, strPolicy);
    SForm objForm;
    const auto* pWidget = qobject_cast<QWidget*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pWidget != nullptr);
    QCOMPARE(policyText(pWidget->sizePolicy()), strPolicy);
}

void tst_form::heightForWidthIsLeftToTheWidget()
{
    SForm objForm;
    QCOMPARE(objForm.objForm.m_pThumWheel->sizePolicy().hasHeightForWidth(), QtThumbWheel().sizePolicy().hasHeightForWidth());
    QCOMPARE(objForm.objForm.label_13->sizePolicy().hasHeightForWidth(), QLabel().sizePolicy().hasHeightForWidth());
    // Every policy of the form takes the bit over from its widget.
    const QStringList lstPolicies = namesInGeneratedClass(QStringLiteral("^        (\\w+)->setSizePolicy\\("));
    QCOMPARE(lstPolicies.size(), 16);
    QCOMPARE(namesInGeneratedClass(QStringLiteral("setHeightForWidth\\((\\w+)->sizePolicy\\(\\)\\.hasHeightForWidth\\(\\)\\)")),
             lstPolicies);
}

void tst_form::slidersSpanTheirWholeRange()
{
    SForm objForm;
    for (const QSpanSlider* pSlider : {objForm.objForm.m_pColorBarMinMaxSlider, objForm.objForm.m_pSourceColorTableSlider})
    {
        QCOMPARE(pSlider->minimum(), 0);
        QCOMPARE(pSlider->maximum(), 100);
        QCOMPARE(pSlider->lowerValue(), 0);
        QCOMPARE(pSlider->upperValue(), 100);
    }
}

void tst_form::firstTabIsShown()
{
    SForm objForm;
    QCOMPARE(objForm.objForm.m_p3DBrowserTabWidget->currentIndex(), 0);
    QCOMPARE(objForm.objForm.m_p3DBrowserTabWidget->currentWidget(), objForm.objForm.m_p3DViewTab);
}

void tst_form::radioButtonsChooseWithinTheirBox()
{
    SForm objForm;
    objForm.objForm.m_pSOLACellsRB->click();
    QVERIFY(!objForm.objForm.m_pPhotonsPerSecRB->isChecked());
    QVERIFY(objForm.objForm.m_pPmolMcmRB->isChecked());
    objForm.objForm.m_pNOVACellsRB->click();
    QVERIFY(!objForm.objForm.m_pPmolMcmRB->isChecked());
    QVERIFY(objForm.objForm.m_pSOLACellsRB->isChecked());
}

void tst_form::nothingElseIsSet()
{
    SForm objForm;
    for (const QWidget* pWidget : objForm.objWidget.findChildren<QWidget*>())
    {
        QVERIFY2(pWidget->styleSheet().isEmpty(), qPrintable(pWidget->objectName()));
        QVERIFY2(!pWidget->testAttribute(Qt::WA_ForceDisabled), qPrintable(pWidget->objectName()));
    }
    for (const char* pName : {"m_pOpenButton", "m_pLoadButton", "m_pWaveLengthCB", "m_pDisplayVoxelsGB"})
    {
        QVERIFY2(TestWidgets::get<QWidget>(&objForm.objWidget, pName)->isEnabledTo(&objForm.objWidget), pName);
    }
    const QSpinBox objSpin;
    QCOMPARE(objForm.objForm.m_pOpacitySpinBox->minimum(), objSpin.minimum());
    QCOMPARE(objForm.objForm.m_pOpacitySpinBox->maximum(), objSpin.maximum());
    QCOMPARE(objForm.objForm.m_pColorTableCB->count(), 0);
    QCOMPARE(objForm.objForm.m_pWaveLengthCB->count(), 0);
    QVERIFY(objForm.objForm.horizontalLayout_7->isEmpty());
    QVERIFY(objForm.objForm.gridLayout_5->itemAtPosition(0, 4) == nullptr);
}

ORM_TEST_MAIN(tst_form)
#include "tst_form.moc"
